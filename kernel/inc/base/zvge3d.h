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
    ZvGeVector3d(double xx, double yy, double zz) : x(xx), y(yy), z(zz) { }
    static const ZvGeVector3d kXAxis;
    static const ZvGeVector3d kYAxis;
    static const ZvGeVector3d kZAxis;
    double length() const;
    double lengthSqrd() const { return x * x + y * y + z * z; }
    double dotProduct(const ZvGeVector3d &v) const { return x * v.x + y * v.y + z * v.z; }
    ZvGeVector3d crossProduct(const ZvGeVector3d &v) const;
    /// Of length 1; the zero vector stays as it is.
    ZvGeVector3d normal() const;
    /// By the arbitrary axis rule of drawing files: the X axis of the plane whose normal this is.
    ZvGeVector3d arbitraryXAxis() const;
    ZvGeVector3d operator+(const ZvGeVector3d &v) const { return {x + v.x, y + v.y, z + v.z}; }
    ZvGeVector3d operator-(const ZvGeVector3d &v) const { return {x - v.x, y - v.y, z - v.z}; }
    ZvGeVector3d operator-() const { return {-x, -y, -z}; }
    ZvGeVector3d operator*(double s) const { return {x * s, y * s, z * s}; }
    ZvGeVector3d operator/(double s) const { return {x / s, y / s, z / s}; }
    bool isEqualTo(const ZvGeVector3d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    ZvGeVector3d &transformBy(const ZvGeMatrix3d &m);

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

class ZV_EXPORT ZvGePoint3d
{
public:
    ZvGePoint3d() = default;
    ZvGePoint3d(double xx, double yy, double zz = 0.0) : x(xx), y(yy), z(zz) { }
    static const ZvGePoint3d kOrigin;
    ZvGeVector3d operator-(const ZvGePoint3d &p) const { return {x - p.x, y - p.y, z - p.z}; }
    ZvGePoint3d operator+(const ZvGeVector3d &v) const { return {x + v.x, y + v.y, z + v.z}; }
    ZvGePoint3d operator-(const ZvGeVector3d &v) const { return {x - v.x, y - v.y, z - v.z}; }
    ZvGeVector3d asVector() const { return {x, y, z}; }
    double distanceTo(const ZvGePoint3d &other) const;
    bool isEqualTo(const ZvGePoint3d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    ZvGePoint3d &transformBy(const ZvGeMatrix3d &m);

    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// Affine map of space: p' = M p with column vectors; entry[row][column].
class ZV_EXPORT ZvGeMatrix3d
{
public:
    ZvGeMatrix3d() = default;
    static const ZvGeMatrix3d kIdentity;
    /// (a * b) applies b first.
    ZvGeMatrix3d operator*(const ZvGeMatrix3d &m) const;
    ZvGeMatrix3d &postMultBy(const ZvGeMatrix3d &m);
    ZvGeMatrix3d &preMultBy(const ZvGeMatrix3d &m);
    double det() const;
    /// The inverse; identity, and \a ok false, for a singular map.
    ZvGeMatrix3d inverse(bool *ok = nullptr) const;
    /// Length of the longest of the three axes' images.
    double scale() const;
    bool isEqualTo(const ZvGeMatrix3d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    ZvGeMatrix3d &setCoordSystem(const ZvGePoint3d &origin, const ZvGeVector3d &x, const ZvGeVector3d &y, const ZvGeVector3d &z);
    static ZvGeMatrix3d translation(const ZvGeVector3d &v);
    static ZvGeMatrix3d scaling(double factor, const ZvGePoint3d &center = ZvGePoint3d());
    static ZvGeMatrix3d scaling(double sx, double sy, double sz);
    static ZvGeMatrix3d rotation(double angle, const ZvGeVector3d &axis, const ZvGePoint3d &center = ZvGePoint3d());
    static ZvGeMatrix3d mirroring(const ZvGePoint3d &point, const ZvGeVector3d &normal);
    /// From the object coordinates of the plane with \a normal to world coordinates, by the arbitrary axis rule.
    static ZvGeMatrix3d planeToWorld(const ZvGeVector3d &normal);
    double operator()(int row, int column) const { return entry[row][column]; }

    double entry[4][4] = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
};

/// Axis-parallel box; empty until a point is added.
class ZV_EXPORT ZvGeExtents3d
{
public:
    bool isEmpty() const { return minimum.x > maximum.x; }
    void add(const ZvGePoint3d &p);
    void add(const ZvGeExtents3d &other);
    /// The box around this box's eight corners after \a m.
    ZvGeExtents3d transformedBy(const ZvGeMatrix3d &m) const;

    ZvGePoint3d minimum {1e20, 1e20, 1e20};
    ZvGePoint3d maximum {-1e20, -1e20, -1e20};
};

#endif
