// SPDX-License-Identifier: MIT
#ifndef ZVGE2D_H
#define ZVGE2D_H

#include "base/zvarray.h"
#include "base/zvexport.h"

/// Tolerance of geometric comparisons.
struct ZV_EXPORT ZvGeTol
{
    double equalPoint = 1e-10;
    double equalVector = 1e-10;
};

struct ZV_EXPORT ZvGeContext
{
    /// The global tolerance, default of all comparisons.
    static ZvGeTol gTol;
};

class ZvGeMatrix2d;

class ZV_EXPORT ZvGeVector2d
{
public:
    ZvGeVector2d() = default;
    ZvGeVector2d(double xx, double yy) : x(xx), y(yy) { }
    double length() const;
    double lengthSqrd() const { return x * x + y * y; }
    double dotProduct(const ZvGeVector2d &other) const { return x * other.x + y * other.y; }
    /// Of length 1; the zero vector stays as it is.
    ZvGeVector2d normal() const;
    /// Angle from the X axis, -pi to pi; 0 for the zero vector.
    double angle() const;
    ZvGeVector2d operator+(const ZvGeVector2d &v) const { return {x + v.x, y + v.y}; }
    ZvGeVector2d operator-(const ZvGeVector2d &v) const { return {x - v.x, y - v.y}; }
    ZvGeVector2d operator-() const { return {-x, -y}; }
    ZvGeVector2d operator*(double s) const { return {x * s, y * s}; }
    ZvGeVector2d operator/(double s) const { return {x / s, y / s}; }
    bool isEqualTo(const ZvGeVector2d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;

    double x = 0.0;
    double y = 0.0;
};

class ZV_EXPORT ZvGePoint2d
{
public:
    ZvGePoint2d() = default;
    ZvGePoint2d(double xx, double yy) : x(xx), y(yy) { }
    static const ZvGePoint2d kOrigin;
    ZvGeVector2d operator-(const ZvGePoint2d &p) const { return {x - p.x, y - p.y}; }
    ZvGePoint2d operator+(const ZvGeVector2d &v) const { return {x + v.x, y + v.y}; }
    ZvGePoint2d operator-(const ZvGeVector2d &v) const { return {x - v.x, y - v.y}; }
    double distanceTo(const ZvGePoint2d &other) const;
    bool isEqualTo(const ZvGePoint2d &other, const ZvGeTol &tol = ZvGeContext::gTol) const;
    /// In place; returns itself.
    ZvGePoint2d &transformBy(const ZvGeMatrix2d &m);

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
    ZvGeMatrix2d &preMultBy(const ZvGeMatrix2d &m);
    /// Length of the larger of the two axes' images; the scale of a uniform map.
    double scale() const;
    double det() const;
    /// The inverse; identity, and \a ok false, for a singular map.
    ZvGeMatrix2d inverse(bool *ok = nullptr) const;
    /// Columns \a u, \a v and \a origin.
    ZvGeMatrix2d &setCoordSystem(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v);
    /// Maps the frame (fromOrigin, fromX, fromY) to the frame (toOrigin, toX, toY). The axes need not be of length 1.
    static ZvGeMatrix2d alignCoordSys(const ZvGePoint2d &fromOrigin, const ZvGeVector2d &fromX, const ZvGeVector2d &fromY,
                                      const ZvGePoint2d &toOrigin, const ZvGeVector2d &toX, const ZvGeVector2d &toY);
    static ZvGeMatrix2d translation(const ZvGeVector2d &v);
    static ZvGeMatrix2d scaling(double factor, const ZvGePoint2d &center = ZvGePoint2d());
    static ZvGeMatrix2d rotation(double angle, const ZvGePoint2d &center = ZvGePoint2d());
    double operator()(int row, int column) const { return entry[row][column]; }

    double entry[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
};

/// Axis-parallel box; empty until a point is added.
class ZV_EXPORT ZvGeExtents2d
{
public:
    bool isEmpty() const { return minimum.x > maximum.x || minimum.y > maximum.y; }
    void add(const ZvGePoint2d &p);

    ZvGePoint2d minimum {1e20, 1e20};
    ZvGePoint2d maximum {-1e20, -1e20};
};

class ZV_EXPORT ZvGeCurve2d
{
public:
    virtual ~ZvGeCurve2d();
    /// \a count points evenly along the curve, both ends included on an open curve; a closed one starts and ends at
    /// its start. 0 gives none, 1 the start. Replaces the content of \a points.
    virtual void getSamplePoints(int count, ZvArray<ZvGePoint2d> &points) const = 0;
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
    ZvGePoint2d center() const { return m_center; }
    double radius() const { return m_radius; }
    double startAng() const { return m_startAngle; }
    double endAng() const { return m_endAngle; }
    ZvGePoint2d startPoint() const { return pointAt(m_startAngle); }
    ZvGePoint2d endPoint() const { return pointAt(m_endAngle); }
    bool isClockWise() const { return m_clockWise; }
    void getSamplePoints(int count, ZvArray<ZvGePoint2d> &points) const override;
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
