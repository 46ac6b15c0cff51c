// SPDX-License-Identifier: MIT
#ifndef ZVGE2D_H
#define ZVGE2D_H

#include "base/zvarray.h"
#include "base/zvexport.h"

/// Tolerance of geometric comparisons.
struct ZV_EXPORT ZvGeTol
{
    double equalPoint = 1e-10; ///< Points closer than this are one.
    double equalVector = 1e-10; ///< Vectors whose difference is shorter than this are equal.
};

/// Settings that all geometry shares.
struct ZV_EXPORT ZvGeContext
{
    /// The global tolerance, default of all comparisons.
    static ZvGeTol gTol;
};

class ZvGeMatrix2d;

/// A direction with a length, in the plane.
class ZV_EXPORT ZvGeVector2d
{
public:
    ZvGeVector2d() = default;
    /// From its two components.
    ZvGeVector2d(double xx, double yy) : x(xx), y(yy) { }
    /// Never below 0.
    double length() const;
    /// The square of the length.
    double lengthSqrd() const { return x * x + y * y; }
    /// 0 for vectors at right angles.
    double dotProduct(const ZvGeVector2d &other) const { return x * other.x + y * other.y; }
    /// Of length 1; the zero vector stays as it is.
    ZvGeVector2d normal() const;
    /// Angle from the X axis, -pi to pi; 0 for the zero vector.
    double angle() const;
    /// Component by component.
    ZvGeVector2d operator+(const ZvGeVector2d &v) const { return {x + v.x, y + v.y}; }
    ZvGeVector2d operator-(const ZvGeVector2d &v) const { return {x - v.x, y - v.y}; }
    ZvGeVector2d operator-() const { return {-x, -y}; }
    ZvGeVector2d operator*(double s) const { return {x * s, y * s}; }
    ZvGeVector2d operator/(double s) const { return {x / s, y / s}; }
    /// Whether the difference is no longer than the tolerance for vectors.
    bool isEqualTo(const ZvGeVector2d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;

    /// A component.
    double x = 0.0;
    double y = 0.0;
};

/// A place in the plane.
class ZV_EXPORT ZvGePoint2d
{
public:
    ZvGePoint2d() = default;
    /// From its two coordinates.
    ZvGePoint2d(double xx, double yy) : x(xx), y(yy) { }
    static const ZvGePoint2d kOrigin; ///< The point (0, 0).
    /// The vector from \a p to here, or the point moved by a vector.
    ZvGeVector2d operator-(const ZvGePoint2d &p) const { return {x - p.x, y - p.y}; }
    ZvGePoint2d operator+(const ZvGeVector2d &v) const { return {x + v.x, y + v.y}; }
    ZvGePoint2d operator-(const ZvGeVector2d &v) const { return {x - v.x, y - v.y}; }
    /// Never below 0.
    double distanceTo(const ZvGePoint2d &other) const;
    /// Whether the distance is no larger than the tolerance for points.
    bool isEqualTo(const ZvGePoint2d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    /// In place; returns itself.
    ZvGePoint2d &transformBy(const ZvGeMatrix2d &m);

    /// A coordinate.
    double x = 0.0;
    double y = 0.0;
};

/// Affine map of the plane: p' = M p with column vectors; entry[row][column].
class ZV_EXPORT ZvGeMatrix2d
{
public:
    ZvGeMatrix2d() = default;
    /// (a * b) applies b first.
    ZvGeMatrix2d operator*(const ZvGeMatrix2d &m) const;
    /// this = m * this: \a m is applied after what stands here. The counterpart of postMultBy(), which takes the
    /// other side; callers choose between the two sides by choosing between these two operations.
    ZvGeMatrix2d &operator*=(const ZvGeMatrix2d &m);
    /// this = this * m: \a m is applied before what stands here.
    ZvGeMatrix2d &postMultBy(const ZvGeMatrix2d &m);
    /// this = m * this: \a m is applied after what stands here.
    ZvGeMatrix2d &preMultBy(const ZvGeMatrix2d &m);
    /// Length of the larger of the two axes' images; the scale of a uniform map.
    double scale() const;
    /// Determinant of the linear part; below 0 for a map that mirrors.
    double det() const;
    /// The inverse; identity, and \a ok false, for a singular map.
    ZvGeMatrix2d inverse(bool *ok = nullptr) const;
    /// Columns \a u, \a v and \a origin.
    ZvGeMatrix2d &setCoordSystem(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v);
    /// Maps the frame (fromOrigin, fromX, fromY) to the frame (toOrigin, toX, toY). The axes need not be of length 1.
    static ZvGeMatrix2d alignCoordSys(const ZvGePoint2d &fromOrigin, const ZvGeVector2d &fromX, const ZvGeVector2d &fromY,
                                      const ZvGePoint2d &toOrigin, const ZvGeVector2d &toX, const ZvGeVector2d &toY);
    /// Moves by \a v.
    static ZvGeMatrix2d translation(const ZvGeVector2d &v);
    /// Scales around \a center; a \a factor of 0 gives a singular map.
    static ZvGeMatrix2d scaling(double factor, const ZvGePoint2d &center = ZvGePoint2d());
    /// Turns around \a center by \a angle in radians, counter-clockwise.
    static ZvGeMatrix2d rotation(double angle, const ZvGePoint2d &center = ZvGePoint2d());
    /// An entry; both from 0 to 2.
    double operator()(int row, int column) const { return entry[row][column]; }

    /// Row by row; identity at the start. The last row is 0, 0, 1.
    double entry[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

/// Axis-parallel box; empty until a point is added.
class ZV_EXPORT ZvGeExtents2d
{
public:
    /// True until a point is added.
    bool isEmpty() const { return minimum.x > maximum.x || minimum.y > maximum.y; }
    /// Widens the box so that it holds \a p.
    void add(const ZvGePoint2d &p);

    /// Lower left and upper right corner; the other way round while the box is empty.
    ZvGePoint2d minimum {1e20, 1e20};
    ZvGePoint2d maximum {-1e20, -1e20};
};

/// A curve in the plane.
class ZV_EXPORT ZvGeCurve2d
{
public:
    virtual ~ZvGeCurve2d();
    /// \a count points evenly along the curve, both ends included on an open curve; a closed one starts and ends at
    /// its start. 0 gives none, 1 the start. Replaces the content of \a points.
    virtual void getSamplePoints(int count, ZvArray<ZvGePoint2d> &points) const = 0;
    /// Whether start and end are one point.
    virtual bool isClosed(const ZvGeTol &tol = ZvGeContext::gTol) const = 0;
};

/// Circular arc or full circle. Angles in radians, measured from the reference vector in the arc's direction.
class ZV_EXPORT ZvGeCircArc2d : public ZvGeCurve2d
{
public:
    /// A full circle of radius 0 at the origin.
    ZvGeCircArc2d() = default;
    /// Through three points, from the first to the third. Points on a line, or equal ones, give a radius of 0.
    ZvGeCircArc2d &set(const ZvGePoint2d &p1, const ZvGePoint2d &p2, const ZvGePoint2d &p3);
    /// Full circle, counter-clockwise.
    ZvGeCircArc2d &set(const ZvGePoint2d &center, double radius);
    /// Direction of the start point of a full circle.
    ZvGeCircArc2d &setRefVec(const ZvGeVector2d &vector);
    /// Centre of the circle.
    ZvGePoint2d center() const { return m_center; }
    /// 0 for points on a line.
    double radius() const { return m_radius; }
    /// From the reference vector, in radians, growing in the arc's direction.
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    /// On the circle; the centre for a radius of 0.
    ZvGePoint2d startPoint() const { return pointAt(m_startAngle); }
    ZvGePoint2d endPoint() const { return pointAt(m_endAngle); }
    /// Direction from start to end.
    bool isClockWise() const { return m_clockWise; }
    void getSamplePoints(int count, ZvArray<ZvGePoint2d> &points) const override;
    /// Whether the arc is a full circle.
    bool isClosed(const ZvGeTol &tol = ZvGeContext::gTol) const override;

private:
    ZvGePoint2d pointAt(double angle) const;

    ZvGePoint2d m_center;
    ZvGeVector2d m_refVec {1.0, 0.0};
    double m_radius = 0.0;
    double m_startAngle = 0.0;
    double m_endAngle = 6.283185307179586;
    bool m_clockWise = false;
};

#endif
