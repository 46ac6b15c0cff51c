// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

// ---- line

ZVRX_DEFINE_MEMBERS(ZvDbLine, ZvDbEntity)
ZvDbLine::ZvDbLine() = default;
ZvDbLine::ZvDbLine(const ZvGePoint3d &start, const ZvGePoint3d &end) : m_start(start), m_end(end) { }

Zv::ErrorStatus ZvDbLine::setStartPoint(const ZvGePoint3d &point)
{
    return store(m_start, point);
}

Zv::ErrorStatus ZvDbLine::setEndPoint(const ZvGePoint3d &point)
{
    return store(m_end, point);
}

Zv::ErrorStatus ZvDbLine::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_start.transformBy(matrix);
    m_end.transformBy(matrix);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbLine::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    addPoint(extents, m_start);
    addPoint(extents, m_end);
    return extentsStatus(extents);
}

void ZvDbLine::worldDraw(ZvGiWorldDraw &draw) const
{
    zvdbDrawLine(draw, m_start, m_end);
}

// ---- endless lines

ZVRX_DEFINE_MEMBERS(ZvDbRay, ZvDbEntity)
ZvDbRay::ZvDbRay() = default;

Zv::ErrorStatus ZvDbRay::setBasePoint(const ZvGePoint3d &point)
{
    return store(m_base, point);
}

Zv::ErrorStatus ZvDbRay::setUnitDir(const ZvGeVector3d &direction)
{
    const double length = direction.length();
    if (!(length > 0.0) || !isUsable(length))
        return Zv::eInvalidInput;
    return store(m_direction, direction / length);
}

Zv::ErrorStatus ZvDbRay::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    const ZvGeVector3d direction = ZvGeVector3d(m_direction).transformBy(matrix);
    if (!(direction.length() > 0.0))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_base.transformBy(matrix);
    m_direction = direction.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbRay::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    return Zv::eFailed;
}

void ZvDbRay::worldDraw(ZvGiWorldDraw &draw) const
{
    if (isUsable(m_base) && isUsable(m_direction) && m_direction.length() > 0.0)
        draw.ray(m_base, m_direction, false);
}

ZVRX_DEFINE_MEMBERS(ZvDbXline, ZvDbRay)

void ZvDbXline::worldDraw(ZvGiWorldDraw &draw) const
{
    if (isUsable(m_base) && isUsable(m_direction) && m_direction.length() > 0.0)
        draw.ray(m_base, m_direction, true);
}

// ---- point

ZVRX_DEFINE_MEMBERS(ZvDbPoint, ZvDbEntity)
ZvDbPoint::ZvDbPoint() = default;
ZvDbPoint::ZvDbPoint(const ZvGePoint3d &position) : m_position(position) { }

Zv::ErrorStatus ZvDbPoint::setPosition(const ZvGePoint3d &position)
{
    return store(m_position, position);
}

Zv::ErrorStatus ZvDbPoint::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    return store(m_position, ZvGePoint3d(m_position).transformBy(matrix));
}

Zv::ErrorStatus ZvDbPoint::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    addPoint(extents, m_position);
    return extentsStatus(extents);
}

void ZvDbPoint::worldDraw(ZvGiWorldDraw &draw) const
{
    if (isUsable(m_position))
        draw.point(m_position);
}

// ---- circle

ZVRX_DEFINE_MEMBERS(ZvDbCircle, ZvDbEntity)
ZvDbCircle::ZvDbCircle() = default;

ZvDbCircle::ZvDbCircle(const ZvGePoint3d &center, const ZvGeVector3d &normal, double radius)
    : m_center(Plane(normal).fromWorld(center)), m_normal(Plane(normal).z()), m_radius(radius)
{
}

ZvGePoint3d ZvDbCircle::center() const
{
    return Plane(m_normal).toWorld(m_center);
}

Zv::ErrorStatus ZvDbCircle::setCenter(const ZvGePoint3d &center)
{
    return store(m_center, Plane(m_normal).fromWorld(center));
}

Zv::ErrorStatus ZvDbCircle::setRadius(double radius)
{
    if (!(radius >= 0.0) || !isUsable(radius))
        return Zv::eInvalidInput;
    return store(m_radius, radius);
}

Zv::ErrorStatus ZvDbCircle::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid() || !map.isSimilar())
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_center = map.point(m_center);
    m_radius *= map.scale();
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbCircle::getGeomExtents(ZvGeExtents3d &extents) const
{
    const Plane plane(m_normal);
    extents = ZvGeExtents3d();
    addArcExtents(extents, plane.toWorld(m_center), plane.x() * m_radius, plane.y() * m_radius, 0.0, kTwoPi);
    return extentsStatus(extents);
}

void ZvDbCircle::worldDraw(ZvGiWorldDraw &draw) const
{
    const Plane plane(m_normal);
    if (isUsable(m_center) && isUsable(m_radius))
        draw.arc(plane.toWorld(m_center), std::fabs(m_radius), plane.z(), 0.0, kTwoPi);
}

// ---- arc

ZVRX_DEFINE_MEMBERS(ZvDbArc, ZvDbCircle)
ZvDbArc::ZvDbArc() = default;

ZvDbArc::ZvDbArc(const ZvGePoint3d &center, double radius, double startAngle, double endAngle)
    : ZvDbCircle(center, ZvGeVector3d::kZAxis, radius), m_startAngle(startAngle), m_endAngle(endAngle)
{
}

Zv::ErrorStatus ZvDbArc::setStartAngle(double angle)
{
    return isUsable(angle) ? store(m_startAngle, angle) : Zv::eInvalidInput;
}

Zv::ErrorStatus ZvDbArc::setEndAngle(double angle)
{
    return isUsable(angle) ? store(m_endAngle, angle) : Zv::eInvalidInput;
}

Zv::ErrorStatus ZvDbArc::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    const Zv::ErrorStatus status = ZvDbCircle::transformBy(matrix);
    if (status != Zv::eOk)
        return status;
    const double start = map.angle(m_startAngle);
    const double end = map.angle(m_endAngle);
    m_startAngle = map.isMirrored() ? end : start;
    m_endAngle = map.isMirrored() ? start : end;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbArc::getGeomExtents(ZvGeExtents3d &extents) const
{
    const Plane plane(m_normal);
    extents = ZvGeExtents3d();
    addArcExtents(extents, plane.toWorld(m_center), plane.x() * m_radius, plane.y() * m_radius, m_startAngle,
                  sweepOf(m_startAngle, m_endAngle));
    return extentsStatus(extents);
}

void ZvDbArc::worldDraw(ZvGiWorldDraw &draw) const
{
    const Plane plane(m_normal);
    if (isUsable(m_center) && isUsable(m_radius) && isUsable(m_startAngle) && isUsable(m_endAngle)) {
        draw.arc(plane.toWorld(m_center), std::fabs(m_radius), plane.z(), normalized(m_startAngle),
                 sweepOf(m_startAngle, m_endAngle));
    }
}

// ---- ellipse

ZVRX_DEFINE_MEMBERS(ZvDbEllipse, ZvDbEntity)
ZvDbEllipse::ZvDbEllipse() = default;

ZvGeVector3d ZvDbEllipse::minorAxis() const
{
    return Plane(m_normal).z().crossProduct(m_majorAxis) * m_ratio;
}

Zv::ErrorStatus ZvDbEllipse::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    // The images of the axes are conjugate radii of the image, which is an ellipse under every map.
    const ZvGeVector3d p = ZvGeVector3d(m_majorAxis).transformBy(matrix);
    const ZvGeVector3d q = minorAxis().transformBy(matrix);
    const ZvGeVector3d across = p.crossProduct(q);
    const double area = across.length();
    if (!(area > 0.0) || !isUsable(area))
        return Zv::eInvalidInput;
    double turn = 0.0;
    const double pp = p.dotProduct(p);
    const double qq = q.dotProduct(q);
    const double pq = p.dotProduct(q);
    if (std::fabs(pq) > 1e-12 * std::max(pp, qq))
        turn = 0.5 * std::atan2(2.0 * pq, pp - qq);
    else if (pp < qq * (1.0 - 1e-12))
        turn = 0.5 * kPi;
    const ZvGeVector3d major = turn == 0.0 ? p : p * std::cos(turn) + q * std::sin(turn);
    const double ratio = area / major.dotProduct(major);
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_center.transformBy(matrix);
    m_majorAxis = major;
    m_normal = across / area;
    m_ratio = std::min(ratio, 1.0);
    // A full ellipse keeps its 0 to 2 pi.
    if (turn != 0.0 && std::fabs(m_end - m_start) < kTwoPi - 1e-12) {
        const double sweep = sweepOf(m_start, m_end);
        m_start = normalized(m_start - turn);
        m_end = m_start + sweep;
    }
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbEllipse::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    addArcExtents(extents, m_center, m_majorAxis, minorAxis(), m_start, sweepOf(m_start, m_end));
    return extentsStatus(extents);
}

void ZvDbEllipse::worldDraw(ZvGiWorldDraw &draw) const
{
    const ZvGeVector3d minor = minorAxis();
    if (isUsable(m_center) && isUsable(m_majorAxis) && isUsable(minor) && isUsable(m_start) && isUsable(m_end))
        draw.ellipse(m_center, m_majorAxis, minor, m_start, sweepOf(m_start, m_end));
}
