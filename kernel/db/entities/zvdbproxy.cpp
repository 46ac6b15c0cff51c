// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"
#include "zvdbdatabase_p.h"

using namespace zvdbgeo;

ZVRX_DEFINE_MEMBERS(ZvDbProxyEntity, ZvDbEntity)
ZvDbProxyEntity::ZvDbProxyEntity() = default;

ZvString ZvDbProxyEntity::originalFileName() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this);
    return database && database->source ? database->source->recordName(objectId().index()) : ZvString();
}

Zv::ErrorStatus ZvDbProxyEntity::transformBy(const ZvGeMatrix3d &)
{
    return Zv::eInvalidInput; // what the numbers of its record mean is not known
}

Zv::ErrorStatus ZvDbProxyEntity::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    for (const ZvGePoint3d &point : m_points)
        addPoint(extents, point);
    return extentsStatus(extents);
}

void ZvDbProxyEntity::worldDraw(ZvGiWorldDraw &draw) const
{
    ZvGeExtents3d box;
    if (getGeomExtents(box) != Zv::eOk)
        return;
    const ZvGePoint3d corners[4] = {box.minimum, {box.maximum.x, box.minimum.y, box.minimum.z}, box.maximum,
                                    {box.minimum.x, box.maximum.y, box.maximum.z}};
    // Dashes of its own: the drawing need not have a dashed line type.
    constexpr int kDashes = 8;
    for (int edge = 0; edge < 4; ++edge) {
        const ZvGePoint3d &from = corners[edge];
        const ZvGeVector3d along = corners[(edge + 1) % 4] - from;
        for (int i = 0; i < kDashes && along.length() > 0.0; ++i)
            zvdbDrawLine(draw, from + along * (i / double(kDashes)), from + along * ((i + 0.5) / kDashes));
    }
}
