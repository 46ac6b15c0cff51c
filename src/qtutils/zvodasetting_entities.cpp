// SPDX-License-Identifier: MIT
// The facade's writing to the selected entities.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zveditframe.h"
#include "private/zvqtstring.h"

#include "core/zvui.h"
#include "db/zvdbentities.h"

#include <QCoreApplication>

namespace {

typedef ZevaUISetting::EntityValue EntityValue;

// Each writes one property where the entity has it and the value differs: what is equal stays out of the undo record,
// and out of the notices.

bool writeColor(ZvDbEntity &entity, const EntityValue &value)
{
    if (entity.color() == value.color)
        return false;
    entity.setColor(value.color, true);
    return true;
}

bool writeLineWeight(ZvDbEntity &entity, const EntityValue &value)
{
    if (entity.lineWeight() == value.lineWeight)
        return false;
    entity.setLineWeight(value.lineWeight, true);
    return true;
}

bool writeLineType(ZvDbEntity &entity, const EntityValue &value)
{
    if (value.name.compareNoCase(entity.linetype()) == 0)
        return false;
    entity.setLinetype(value.name, true);
    return true;
}

bool writeLayer(ZvDbEntity &entity, const EntityValue &value)
{
    if (value.name.compareNoCase(entity.layer()) == 0)
        return false;
    entity.setLayer(value.name, true, false);
    return true;
}

bool writeMaterial(ZvDbEntity &entity, const EntityValue &value)
{
    if (value.name.compareNoCase(entity.material()) == 0)
        return false;
    entity.setMaterial(value.name, true);
    return true;
}

bool writeDimStyle(ZvDbEntity &entity, const EntityValue &value)
{
    auto *dimension = zvrxCast<ZvDbDimension>(&entity);
    if (!dimension || dimension->dimensionStyle() == value.objectId)
        return false;
    dimension->setDimensionStyle(value.objectId);
    dimension->setDimstyleData(value.objectId);
    return true;
}

/// Texts and multiline texts alone: a dimension or a multileader keeps its text style, although the summary of the
/// selection reads it from these too.
bool writeTextStyle(ZvDbEntity &entity, const EntityValue &value)
{
    const auto write = [&value](auto *text) {
        if (text->textStyle() == value.objectId)
            return false;
        text->setTextStyle(value.objectId);
        return true;
    };
    if (auto *text = zvrxCast<ZvDbText>(&entity))
        return write(text);
    if (auto *text = zvrxCast<ZvDbMText>(&entity))
        return write(text);
    return false;
}

bool writeTableStyle(ZvDbEntity &entity, const EntityValue &value)
{
    auto *table = zvrxCast<ZvDbTable>(&entity);
    if (!table || table->tableStyle() == value.objectId)
        return false;
    table->setTableStyle(value.objectId);
    return true;
}

bool writeMLeaderStyle(ZvDbEntity &entity, const EntityValue &value)
{
    auto *leader = zvrxCast<ZvDbMLeader>(&entity);
    if (!leader || leader->MLeaderStyle() == value.objectId)
        return false;
    leader->setMLeaderStyle(value.objectId);
    return true;
}

bool writePlotStyle(ZvDbEntity &entity, const EntityValue &value)
{
    if (value.name.compareNoCase(entity.plotStyleName()) == 0)
        return false;
    entity.setPlotStyleName(value.name, true);
    return true;
}

/// By ZevaUISetting::Entity_Property.
constexpr bool (*kWriters[])(ZvDbEntity &, const EntityValue &) = {
    writeColor,    writeLineWeight, writeLineType,   writeLayer,        writeMaterial,
    writeDimStyle, writeTextStyle,  writeTableStyle, writeMLeaderStyle, writePlotStyle,
};

void reportSkipped(int count)
{
    const QString text = QCoreApplication::translate("ZevaUISetting", "在锁定图层上有 %1 个对象未被更新。").arg(count);
    ZvUiMessageBox(zvToZvString(text), L"Zevara", 0);
}

} // namespace

bool ZevaUISetting::setProperty(ZvDbEntity *entity, Entity_Property property, const EntityValue &value)
{
    const auto number = unsigned(property);
    if (!entity || number >= sizeof kWriters / sizeof *kWriters)
        return false;
    return kWriters[number](*entity, value);
}

void ZevaUISetting::setSelectedProperty(Entity_Property property, const EntityValue &value)
{
    long name[2];
    pickFirstSS(name);
    long length = 0;
    zvedSSLength(name, length);
    if (length < 1)
        return;

    ZvArray<ZvDbObjectId> skipped(0, 8);
    ZvEditFrame frame(zvCurrentDocumentDatabase());
    for (long i = 0; i < length; ++i) {
        long entityName[2];
        ZvDbObjectId id;
        if (zvedSSName(name, i, entityName) != ZvRes::kNormal)
            continue;
        zvdbGetObjectId(id, entityName);
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite);
        if (!entity)
            continue; // not counted
        if (isLocked(entity.get()))
            skipped.append(id);
        else
            setProperty(entity.get(), property, value);
        entity.close(); // here, where what its notices throw gets out
    }
    frame.end();
    if (!skipped.isEmpty())
        reportSkipped(skipped.length());
}

int ZevaUISetting::removeLockedEntity(ZvArray<ZvDbObjectId> &ids)
{
    ZvArray<ZvDbObjectId> removed(0, 8);
    for (const ZvDbObjectId &id : ids) {
        if (id.isNull())
            continue;
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (!entity || isLocked(entity.get()))
            removed.append(id);
    }
    for (const ZvDbObjectId &id : removed)
        ids.remove(id);
    return removed.length();
}
