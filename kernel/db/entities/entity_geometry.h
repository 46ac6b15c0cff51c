// SPDX-License-Identifier: MIT
#ifndef ZVDB_ENTITY_GEOMETRY_H
#define ZVDB_ENTITY_GEOMETRY_H

#include "base/zverror.h"
#include "base/zvge3d.h"

#include <cmath>
#include <vector>

/// Geometry that several kinds of entity share. Damaged files bring numbers that are none, infinite or beyond all
/// measure: what is drawn and measured goes through isUsable(), so that they end here.
namespace zvdbgeo {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTwoPi = 2.0 * kPi;
/// Coordinates beyond this are no drawing any more; the empty box of ZvGeExtents3d lies at 1e20.
constexpr double kLargest = 1e18;
/// Most chords of one arc, and most points of one curve.
constexpr int kMostChords = 16384;
constexpr std::size_t kMostPoints = 200000;

inline bool isUsable(double value)
{
    return std::fabs(value) <= kLargest; // false for NaN
}
inline bool isUsable(const ZvGePoint2d &p)
{
    return isUsable(p.x) && isUsable(p.y);
}
inline bool isUsable(const ZvGePoint3d &p)
{
    return isUsable(p.x) && isUsable(p.y) && isUsable(p.z);
}
inline bool isUsable(const ZvGeVector3d &v)
{
    return isUsable(v.x) && isUsable(v.y) && isUsable(v.z);
}
bool isUsable(const ZvGeMatrix3d &matrix);

/// Adds the point unless it is not usable.
void addPoint(ZvGeExtents3d &extents, const ZvGePoint3d &p);
/// eOk only for a box that holds something.
inline Zv::ErrorStatus extentsStatus(const ZvGeExtents3d &extents)
{
    return extents.isEmpty() ? Zv::eFailed : Zv::eOk;
}

/// From 0 up to but not 2 pi.
double normalized(double angle);
/// Counter-clockwise from \a start to \a end: above 0, at most 2 pi. Equal angles are a full turn.
double sweepOf(double start, double end);

/// The coordinate system of a flat entity, by the arbitrary axis rule. A normal of no direction counts as Z.
class Plane
{
public:
    explicit Plane(const ZvGeVector3d &normal);
    const ZvGeVector3d &x() const { return m_x; }
    const ZvGeVector3d &y() const { return m_y; }
    const ZvGeVector3d &z() const { return m_z; }
    ZvGePoint3d toWorld(const ZvGePoint3d &p) const
    {
        if (m_isWorld)
            return p;
        return {m_x.x * p.x + m_y.x * p.y + m_z.x * p.z, m_x.y * p.x + m_y.y * p.y + m_z.y * p.z,
                m_x.z * p.x + m_y.z * p.y + m_z.z * p.z};
    }
    ZvGePoint3d toWorld(const ZvGePoint2d &p, double elevation) const { return toWorld(ZvGePoint3d(p.x, p.y, elevation)); }
    ZvGePoint3d fromWorld(const ZvGePoint3d &p) const
    {
        if (m_isWorld)
            return p;
        const ZvGeVector3d v = p.asVector();
        return {v.dotProduct(m_x), v.dotProduct(m_y), v.dotProduct(m_z)};
    }
    /// Unit vector of the plane in world coordinates.
    ZvGeVector3d direction(double angle) const { return m_x * std::cos(angle) + m_y * std::sin(angle); }
    /// Angle of a world vector from the X axis of the plane.
    double angleOf(const ZvGeVector3d &v) const { return normalized(std::atan2(v.dotProduct(m_y), v.dotProduct(m_x))); }

private:
    ZvGeVector3d m_x {1, 0, 0};
    ZvGeVector3d m_y {0, 1, 0};
    ZvGeVector3d m_z {0, 0, 1};
    bool m_isWorld = true;
};

/// What a map of space does to a plane: where the plane comes to lie, and the map between the coordinates of both.
class PlaneMap
{
public:
    PlaneMap(const ZvGeMatrix3d &matrix, const ZvGeVector3d &normal);
    /// False: the plane is crushed, or the map is none.
    bool isValid() const { return m_valid; }
    /// Circles stay circles.
    bool isSimilar() const { return m_similar; }
    /// Counter-clockwise becomes clockwise.
    bool isMirrored() const { return m_mirrored; }
    /// Nothing but a move.
    bool keepsDirections() const { return m_keepsDirections; }
    /// Square root of the change of areas; the scale where the map is similar.
    double scale() const { return m_scale; }
    const ZvGeVector3d &normal() const { return m_normal; }
    ZvGePoint3d point(const ZvGePoint3d &p) const;
    ZvGePoint2d point(const ZvGePoint2d &p, double elevation) const;
    ZvGeVector2d vector(const ZvGeVector2d &v) const { return {m_xx * v.x + m_xy * v.y, m_yx * v.x + m_yy * v.y}; }
    /// Of a direction in the plane.
    double angle(double a) const;
    double elevation(double z) const { return point(ZvGePoint3d(0, 0, z)).z; }

private:
    ZvGeMatrix3d m_map;
    ZvGeVector3d m_normal {0, 0, 1};
    double m_xx = 1, m_xy = 0, m_yx = 0, m_yy = 1;
    double m_scale = 1.0;
    bool m_valid = false;
    bool m_similar = false;
    bool m_mirrored = false;
    bool m_keepsDirections = false;
};

/// Chords that keep an arc within \a deviation of its circle. A deviation that is none gives a fine, fixed number.
int chordCount(double radius, double sweep, double deviation);
/// Points of center + u cos t + v sin t for t from \a start on, by chords within \a deviation. \a withStart adds the first
/// point too.
void sampleArc(const ZvGePoint3d &center, const ZvGeVector3d &u, const ZvGeVector3d &v, double start, double sweep,
               double deviation, bool withStart, std::vector<ZvGePoint3d> &points);
/// Exact box of the same curve.
void addArcExtents(ZvGeExtents3d &extents, const ZvGePoint3d &center, const ZvGeVector3d &u, const ZvGeVector3d &v,
                   double start, double sweep);

/// The arc that a bulge makes between two points; the sweep is below 0 for a clockwise one.
struct BulgeArc
{
    ZvGePoint2d center;
    double radius = 0.0;
    double start = 0.0;
    double sweep = 0.0;
};
/// False for a straight segment, and for one that is not to be told from it.
bool bulgeArc(const ZvGePoint2d &from, const ZvGePoint2d &to, double bulge, BulgeArc &arc);

/// A curve as files describe it: de Boor's scheme over control points, rational where there are weights.
/// \a points gets points within \a deviation of the curve. Descriptions that do not fit together (number of knots, order
/// of knots) are taken as an evenly knotted curve through the same control points.
void sampleSpline(int degree, const std::vector<double> &knots, const std::vector<double> &weights,
                  const std::vector<ZvGePoint3d> &controlPoints, double deviation, std::vector<ZvGePoint3d> &points);
/// A smooth curve through all of \a through.
void sampleThrough(const std::vector<ZvGePoint3d> &through, bool closed, double deviation, std::vector<ZvGePoint3d> &points);

/// A buffer for what is drawn next: kept between calls, so that plain entities are drawn without an allocation.
std::vector<ZvGePoint3d> &pointBuffer();
}

#endif
