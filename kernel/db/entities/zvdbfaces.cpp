// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

// ---- filled triangle or quadrilateral

ZVRX_DEFINE_MEMBERS(ZvDbSolid, ZvDbEntity)
ZvDbSolid::ZvDbSolid() = default;

Zv::ErrorStatus ZvDbSolid::setPointAt(int i, const ZvGePoint3d &point)
{
    if (i < 0 || i > 3)
        return Zv::eInvalidInput;
    return store(m_points[i], point);
}

Zv::ErrorStatus ZvDbSolid::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid())
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (ZvGePoint3d &point : m_points)
        point = map.point(point);
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbSolid::getGeomExtents(ZvGeExtents3d &extents) const
{
    const Plane plane(m_normal);
    extents = ZvGeExtents3d();
    for (const ZvGePoint3d &point : m_points)
        addPoint(extents, plane.toWorld(point));
    return extentsStatus(extents);
}

void ZvDbSolid::worldDraw(ZvGiWorldDraw &draw) const
{
    const Plane plane(m_normal);
    ZvGiFill fill;
    fill.normal = plane.z();
    fill.elevation = m_points[0].z;
    fill.loops.emplace_back();
    for (int corner : {0, 1, 3, 2}) {
        const ZvGePoint3d point = plane.toWorld(m_points[corner]);
        if (!isUsable(point))
            return;
        fill.loops.front().push_back(point);
    }
    draw.fill(fill);
}

// ---- face in space

ZVRX_DEFINE_MEMBERS(ZvDbFace, ZvDbEntity)
ZvDbFace::ZvDbFace() = default;

Zv::ErrorStatus ZvDbFace::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (ZvGePoint3d &point : m_points)
        point.transformBy(matrix);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbFace::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    for (const ZvGePoint3d &point : m_points)
        addPoint(extents, point);
    return extentsStatus(extents);
}

void ZvDbFace::worldDraw(ZvGiWorldDraw &draw) const
{
    for (const ZvGePoint3d &point : m_points) {
        if (!isUsable(point))
            return;
    }
    // A triangle repeats its third corner as the fourth.
    const bool triangle = m_points[3].distanceTo(m_points[2]) == 0.0;
    const int corners = triangle ? 3 : 4;
    bool allVisible = true;
    for (int i = 0; i < corners; ++i)
        allVisible = allVisible && isEdgeVisible(triangle && i == 2 ? 3 : i);
    if (allVisible) {
        draw.polyline(m_points, corners, true);
        return;
    }
    for (int i = 0; i < corners; ++i) {
        if (isEdgeVisible(triangle && i == 2 ? 3 : i))
            zvdbDrawLine(draw, m_points[i], m_points[(i + 1) % corners]);
    }
}
