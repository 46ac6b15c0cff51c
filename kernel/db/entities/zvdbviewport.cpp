// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

#include <algorithm>

using namespace zvdbgeo;

ZVRX_DEFINE_MEMBERS(ZvDbViewport, ZvDbEntity)
ZvDbViewport::ZvDbViewport() = default;

bool ZvDbViewport::isLayerFrozen(ZvDbObjectId layer) const
{
    return std::find(m_frozenLayers.begin(), m_frozenLayers.end(), layer) != m_frozenLayers.end();
}

Zv::ErrorStatus ZvDbViewport::freezeLayer(ZvDbObjectId layer, bool frozen)
{
    if (!layer.isValid())
        return Zv::eInvalidInput;
    if (isLayerFrozen(layer) == frozen)
        return Zv::eOk;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    if (frozen)
        m_frozenLayers.push_back(layer);
    else
        m_frozenLayers.erase(std::remove(m_frozenLayers.begin(), m_frozenLayers.end(), layer), m_frozenLayers.end());
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbViewport::transformBy(const ZvGeMatrix3d &matrix)
{
    // A viewport lies upright on the paper: it can be moved and scaled, not turned.
    const PlaneMap map(matrix, ZvGeVector3d::kZAxis);
    if (!map.isValid() || !map.isSimilar())
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_center.transformBy(matrix);
    m_width *= map.scale();
    m_height *= map.scale();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbViewport::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    if (m_number == 1) // the paper itself
        return Zv::eFailed;
    addPoint(extents, m_center - ZvGeVector3d(0.5 * m_width, 0.5 * m_height, 0.0));
    addPoint(extents, m_center + ZvGeVector3d(0.5 * m_width, 0.5 * m_height, 0.0));
    return extentsStatus(extents);
}

void ZvDbViewport::worldDraw(ZvGiWorldDraw &draw) const
{
    if (m_number == 1 || !isUsable(m_center) || !(m_width > 0.0) || !(m_height > 0.0) || !isUsable(m_width) || !isUsable(m_height))
        return;
    const ZvGeVector3d across(0.5 * m_width, 0.0, 0.0);
    const ZvGeVector3d up(0.0, 0.5 * m_height, 0.0);
    if (isOn())
        draw.viewport(objectId());
    const ZvGePoint3d frame[4] = {m_center - across - up, m_center + across - up, m_center + across + up, m_center - across + up};
    draw.polyline(frame, 4, true);
}
