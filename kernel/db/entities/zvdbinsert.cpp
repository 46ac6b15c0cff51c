// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "entity_draw.h"
#include "entity_geometry.h"

#include <algorithm>

using namespace zvdbgeo;

namespace {
/// Damaged files ask for arrays of a thousand million.
constexpr long long kMostCopies = 100000;

double usableScale(double scale)
{
    return isUsable(scale) && scale != 0.0 ? scale : 1.0;
}

/// Frame of a reference: where its block's axes point, without the scale.
struct InsertFrame
{
    InsertFrame(const ZvGeVector3d &normal, double rotation)
        : plane(normal), u(plane.direction(isUsable(rotation) ? rotation : 0.0)), v(plane.z().crossProduct(u))
    {
    }
    Plane plane;
    ZvGeVector3d u;
    ZvGeVector3d v;
};

/// Calls \a visit with the attributes that the reference owns: those of a copied reference are its original's.
template<class Visit>
void forOwnAttributes(const ZvDbBlockReference &insert, ZvDb::OpenMode mode, Visit visit)
{
    if (insert.objectId().isNull())
        return;
    for (ZvDbObjectId id : insert.attributeIds()) {
        ZvDbObjectPointer<ZvDbAttribute> attribute(id, mode);
        if (attribute && attribute->ownerId() == insert.objectId())
            visit(*attribute);
    }
}
}

ZVRX_DEFINE_MEMBERS(ZvDbBlockReference, ZvDbEntity)
ZvDbBlockReference::ZvDbBlockReference() = default;

Zv::ErrorStatus ZvDbBlockReference::setBlockTableRecord(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbBlockTableRecord::desc()))
        return Zv::eInvalidInput;
    return store(m_block, id);
}

ZvGePoint3d ZvDbBlockReference::position() const
{
    return Plane(m_normal).toWorld(m_position);
}

Zv::ErrorStatus ZvDbBlockReference::setPosition(const ZvGePoint3d &position)
{
    return store(m_position, Plane(m_normal).fromWorld(position));
}

ZvGeMatrix3d ZvDbBlockReference::blockTransform() const
{
    const InsertFrame frame(m_normal, m_rotation);
    ZvGePoint3d origin;
    if (ZvDbObjectPointer<ZvDbBlockTableRecord> block(m_block, ZvDb::kForRead); block)
        origin = block->origin();
    const ZvGeVector3d x = frame.u * usableScale(m_scale.x);
    const ZvGeVector3d y = frame.v * usableScale(m_scale.y);
    const ZvGeVector3d z = frame.plane.z() * usableScale(m_scale.z);
    const ZvGePoint3d moved = frame.plane.toWorld(m_position) - x * origin.x - y * origin.y - z * origin.z;
    ZvGeMatrix3d matrix;
    matrix.setCoordSystem(moved, x, y, z);
    return matrix;
}

Zv::ErrorStatus ZvDbBlockReference::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid())
        return Zv::eInvalidInput;
    const InsertFrame frame(m_normal, m_rotation);
    const ZvGeVector3d u = ZvGeVector3d(frame.u).transformBy(matrix);
    const ZvGeVector3d v = ZvGeVector3d(frame.v).transformBy(matrix);
    const ZvGeVector3d w = ZvGeVector3d(frame.plane.z()).transformBy(matrix);
    const double lengths[3] = {u.length(), v.length(), w.length()};
    if (!(lengths[0] > 0.0) || !(lengths[1] > 0.0) || !(lengths[2] > 0.0))
        return Zv::eInvalidInput;
    // Three scales are all a reference has: the axes must stay at right angles.
    if (std::fabs(u.dotProduct(v)) > 1e-9 * lengths[0] * lengths[1] || std::fabs(u.dotProduct(w)) > 1e-9 * lengths[0] * lengths[2]
        || std::fabs(v.dotProduct(w)) > 1e-9 * lengths[1] * lengths[2])
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    const double side = map.isMirrored() ? -1.0 : 1.0;
    m_position = map.point(m_position);
    if (!map.keepsDirections()) {
        m_normal = map.normal();
        m_rotation = Plane(m_normal).angleOf(u);
        m_scale = ZvGeVector3d(m_scale.x * lengths[0], m_scale.y * lengths[1] * side, m_scale.z * lengths[2]);
        m_columnSpacing *= lengths[0];
        m_rowSpacing *= lengths[1] * side;
    }
    forOwnAttributes(*this, ZvDb::kForWrite, [&](ZvDbAttribute &attribute) { attribute.transformBy(matrix); });
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbBlockReference::getGeomExtents(ZvGeExtents3d &extents) const
{
    const ZvGeExtents3d box = zvdbBlockExtents(m_block);
    const ZvGeMatrix3d first = blockTransform();
    extents = ZvGeExtents3d();
    if (!box.isEmpty() && isUsable(first)) {
        const InsertFrame frame(m_normal, m_rotation);
        const int columns = std::max(m_columns, 1) - 1;
        const int rows = std::max(m_rows, 1) - 1;
        const ZvGeExtents3d moved = box.transformedBy(first);
        // The far corners of an array hold all the others.
        for (int column : {0, columns}) {
            for (int row : {0, rows}) {
                const ZvGeVector3d offset = frame.u * (m_columnSpacing * column) + frame.v * (m_rowSpacing * row);
                addPoint(extents, moved.minimum + offset);
                addPoint(extents, moved.maximum + offset);
            }
        }
    }
    forOwnAttributes(*this, ZvDb::kForRead, [&](const ZvDbAttribute &attribute) {
        ZvGeExtents3d one;
        if (!attribute.isInvisible() && attribute.getGeomExtents(one) == Zv::eOk)
            extents.add(one);
    });
    return extentsStatus(extents);
}

void ZvDbBlockReference::worldDraw(ZvGiWorldDraw &draw) const
{
    const ZvGeMatrix3d first = blockTransform();
    if (!m_block.isNull() && isUsable(first)) {
        const InsertFrame frame(m_normal, m_rotation);
        const int columns = std::max(m_columns, 1);
        const int rows = std::max(m_rows, 1);
        long long left = kMostCopies;
        for (int row = 0; row < rows && left > 0; ++row) {
            for (int column = 0; column < columns && left > 0 && !draw.isAborted(); ++column, --left) {
                ZvGeMatrix3d matrix = first;
                if (row || column) {
                    const ZvGeVector3d offset = frame.u * (m_columnSpacing * column) + frame.v * (m_rowSpacing * row);
                    if (!isUsable(offset))
                        return;
                    matrix.entry[0][3] += offset.x;
                    matrix.entry[1][3] += offset.y;
                    matrix.entry[2][3] += offset.z;
                }
                draw.block(m_block, matrix);
            }
            if (draw.isAborted())
                return;
        }
    }
    if (m_attributes.empty())
        return;
    const ZvGiTraits own = draw.traits();
    forOwnAttributes(*this, ZvDb::kForRead, [&](const ZvDbAttribute &attribute) {
        if (attribute.visibility() != ZvDb::kVisible)
            return;
        draw.traits() = zvdbTraitsOf(attribute);
        attribute.worldDraw(draw);
    });
    draw.traits() = own;
}

// ---- table

ZVRX_DEFINE_MEMBERS(ZvDbTable, ZvDbBlockReference)

Zv::ErrorStatus ZvDbTable::setTableStyle(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbTableStyle::desc()))
        return Zv::eInvalidInput;
    return store(m_tableStyle, id);
}
