// SPDX-License-Identifier: MIT
#ifndef ZVGE3D_H
#define ZVGE3D_H

#include "base/zvge2d.h"

class ZvGeMatrix3d;

/// Also the carrier of red, green, blue and of hue, saturation, lightness triples.
class ZV_EXPORT ZvGeVector3d
{
public:
    ZvGeVector3d() = default;
    /// From its three components.
    ZvGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) { }
    /// Of length 1 along this axis.
    static const ZvGeVector3d kXAxis;
    static const ZvGeVector3d kYAxis;
    static const ZvGeVector3d kZAxis;
    /// Never below 0.
    double length() const;
    /// The square of the length.
    double lengthSqrd() const { return x * x + y * y + z * z; }
    /// 0 for vectors at right angles.
    double dotProduct(const ZvGeVector3d &v) const { return x * v.x + y * v.y + z * v.z; }
    /// At right angles to both, by the right-hand rule.
    ZvGeVector3d crossProduct(const ZvGeVector3d &v) const;
    /// Of length 1; the zero vector stays as it is.
    ZvGeVector3d normal() const;
    /// By the arbitrary axis rule of drawing files: the X axis of the plane whose normal this is.
    ZvGeVector3d arbitraryXAxis() const;
    /// Component by component.
    ZvGeVector3d operator+(const ZvGeVector3d &v) const { return {x + v.x, y + v.y, z + v.z}; }
    ZvGeVector3d operator-(const ZvGeVector3d &v) const { return {x - v.x, y - v.y, z - v.z}; }
    ZvGeVector3d operator-() const { return {-x, -y, -z}; }
    ZvGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    ZvGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    /// Whether the difference is no longer than the tolerance for vectors.
    bool isEqualTo(const ZvGeVector3d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    /// By the linear part of \a m alone, in place; returns itself.
    ZvGeVector3d &transformBy(const ZvGeMatrix3d &m);

    /// A component.
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A place in space.
class ZV_EXPORT ZvGePoint3d
{
public:
    ZvGePoint3d() = default;
    /// From its coordinates.
    ZvGePoint3d(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) { }
    static const ZvGePoint3d kOrigin; ///< The point (0, 0, 0).
    /// The vector from \a p to here, or the point moved by a vector.
    ZvGeVector3d operator-(const ZvGePoint3d &p) const { return {x - p.x, y - p.y, z - p.z}; }
    ZvGePoint3d operator+(const ZvGeVector3d &v) const { return {x + v.x, y + v.y, z + v.z}; }
    ZvGePoint3d operator-(const ZvGeVector3d &v) const { return {x - v.x, y - v.y, z - v.z}; }
    /// The vector from the origin to here.
    ZvGeVector3d asVector() const { return {x, y, z}; }
    /// Never below 0.
    double distanceTo(const ZvGePoint3d &other) const;
    /// Whether the distance is no larger than the tolerance for points.
    bool isEqualTo(const ZvGePoint3d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    /// In place; returns itself.
    ZvGePoint3d &transformBy(const ZvGeMatrix3d &m);

    /// A coordinate.
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// Affine map of space: p' = M p with column vectors; entry[row][column].
class ZV_EXPORT ZvGeMatrix3d
{
public:
    ZvGeMatrix3d() = default;
    static const ZvGeMatrix3d kIdentity; ///< The map that changes nothing.
    /// (a * b) applies b first.
    ZvGeMatrix3d operator*(const ZvGeMatrix3d &m) const;
    /// this = this * m: \a m is applied before what stands here.
    ZvGeMatrix3d &postMultBy(const ZvGeMatrix3d &m);
    /// this = m * this: \a m is applied after what stands here.
    ZvGeMatrix3d &preMultBy(const ZvGeMatrix3d &m);
    /// Determinant of the linear part; below 0 for a map that mirrors.
    double det() const;
    /// The inverse; identity, and \a ok false, for a singular map.
    ZvGeMatrix3d inverse(bool *ok = nullptr) const;
    /// Length of the longest of the three axes' images.
    double scale() const;
    /// Entry by entry, by the tolerance for vectors.
    bool isEqualTo(const ZvGeMatrix3d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    /// Columns \a x, \a y, \a z and \a origin.
    ZvGeMatrix3d &setCoordSystem(const ZvGePoint3d &origin, const ZvGeVector3d &x, const ZvGeVector3d &y, const ZvGeVector3d &z);
    /// Moves by \a v.
    static ZvGeMatrix3d translation(const ZvGeVector3d &v);
    /// Scales around a point, or by a factor for each axis around the origin; a factor of 0 gives a singular map.
    static ZvGeMatrix3d scaling(double factor, const ZvGePoint3d &center = ZvGePoint3d());
    static ZvGeMatrix3d scaling(double sx, double sy, double sz);
    /// Turns around the line through \a center along \a axis by \a angle in radians, by the right-hand rule.
    static ZvGeMatrix3d rotation(double angle, const ZvGeVector3d &axis, const ZvGePoint3d &center = ZvGePoint3d());
    /// Mirrors at the plane through \a point across \a normal.
    static ZvGeMatrix3d mirroring(const ZvGePoint3d &point, const ZvGeVector3d &normal);
    /// From the object coordinates of the plane with \a normal to world coordinates, by the arbitrary axis rule.
    static ZvGeMatrix3d planeToWorld(const ZvGeVector3d &normal);
    /// An entry; both from 0 to 3.
    double operator()(int row, int column) const { return entry[row][column]; }

    /// Row by row; identity at the start.
    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

/// Axis-parallel box; empty until a point is added.
class ZV_EXPORT ZvGeExtents3d
{
public:
    /// True until a point is added.
    bool isEmpty() const { return minimum.x > maximum.x; }
    /// Widens the box so that it holds the argument; an empty box adds nothing.
    void add(const ZvGePoint3d &p);
    void add(const ZvGeExtents3d &other);
    /// The box around this box's eight corners after \a m.
    ZvGeExtents3d transformedBy(const ZvGeMatrix3d &m) const;

    /// Lowest and highest corner; the other way round while the box is empty.
    ZvGePoint3d minimum {1e20, 1e20, 1e20};
    ZvGePoint3d maximum {-1e20, -1e20, -1e20};
};

#endif
