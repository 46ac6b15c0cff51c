// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

ZVRX_DEFINE_MEMBERS(ZvDbSpline, ZvDbEntity)
ZvDbSpline::ZvDbSpline() = default;

void ZvDbSpline::sample(double deviation, std::vector<ZvGePoint3d> &points) const
{
    if (m_controlPoints.size() >= 2)
        sampleSpline(m_degree, m_knots, m_weights, m_controlPoints, deviation, points);
    else
        sampleThrough(m_fitPoints, isClosed(), deviation, points);
}

Zv::ErrorStatus ZvDbSpline::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (ZvGePoint3d &point : m_controlPoints)
        point.transformBy(matrix);
    for (ZvGePoint3d &point : m_fitPoints)
        point.transformBy(matrix);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbSpline::getGeomExtents(ZvGeExtents3d &extents) const
{
    return zvdbExtentsOfPicture(*this, extents);
}

void ZvDbSpline::worldDraw(ZvGiWorldDraw &draw) const
{
    std::vector<ZvGePoint3d> &points = pointBuffer();
    sample(draw.deviation(), points);
    if (points.size() > 1)
        draw.polyline(points.data(), int(points.size()), false);
    else if (points.size() == 1)
        draw.point(points.front());
}
