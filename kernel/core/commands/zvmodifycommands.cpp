// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "zvcommands_p.h"

#include <string>

namespace {

bool isOnLockedLayer(ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
    if (!entity)
        return false;
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(entity->layerId(), ZvDb::kForRead);
    return layer && layer->isLocked();
}

/// What was selected, without entities on locked layers, which are told of.
bool selectForChange(std::vector<ZvDbObjectId> &ids)
{
    std::vector<ZvDbObjectId> selected;
    if (zvedGetSelection(zvcorePrompt(ZvEdPrompt::kSelection, L"Select objects:"), selected) != ZvEdInput::kNormal)
        return false;
    for (const ZvDbObjectId &id : selected) {
        if (!isOnLockedLayer(id))
            ids.push_back(id);
    }
    if (const std::size_t locked = selected.size() - ids.size())
        zvedPrint(ZvString(std::to_string(locked).c_str()) + ZvString(L" on a locked layer, left alone."));
    return !ids.empty();
}

/// The shift between two points, or of one point that counts as the shift.
bool askDisplacement(ZvGeVector3d &shift)
{
    ZvGePoint3d base;
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Base point:"), base) != ZvEdInput::kNormal)
        return false;
    ZvEdPrompt prompt = zvcorePromptFrom(ZvEdPrompt::kPoint, L"Second point <base point is the displacement>:", base);
    prompt.allowNone = true;
    ZvGePoint3d target;
    switch (zvedGetPoint(prompt, target)) {
    case ZvEdInput::kNormal:
        shift = target - base;
        return true;
    case ZvEdInput::kNone:
        shift = base.asVector();
        return true;
    default:
        return false;
    }
}

void move()
{
    std::vector<ZvDbObjectId> ids;
    ZvGeVector3d shift;
    if (!selectForChange(ids) || !askDisplacement(shift))
        return;
    const ZvGeMatrix3d matrix = ZvGeMatrix3d::translation(shift);
    for (const ZvDbObjectId &id : ids) {
        if (ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite); entity)
            entity->transformBy(matrix);
    }
}

void copy()
{
    std::vector<ZvDbObjectId> ids;
    ZvGeVector3d shift;
    if (!selectForChange(ids) || !askDisplacement(shift))
        return;
    const ZvGeMatrix3d matrix = ZvGeMatrix3d::translation(shift);
    int refused = 0;
    for (const ZvDbObjectId &id : ids) {
        ZvDbObjectId owner;
        if (const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead); entity)
            owner = entity->ownerId();
        ZvDbObjectId copied;
        if (zvdbCopyEntity(id, owner, matrix, copied) != Zv::eOk)
            ++refused;
    }
    if (refused > 0)
        zvedPrint(ZvString(std::to_string(refused).c_str()) + ZvString(L" could not be copied."));
}

void erase()
{
    std::vector<ZvDbObjectId> ids;
    if (!selectForChange(ids))
        return;
    for (const ZvDbObjectId &id : ids) {
        if (ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite); entity)
            entity->erase();
    }
}

const ZvBuiltInCommand kCommands[] = {{"MOVE", ZvEdCommand::kUsePickSet, move},
                                      {"COPY", ZvEdCommand::kUsePickSet, copy},
                                      {"ERASE", ZvEdCommand::kUsePickSet, erase}};

}

ZvBuiltInCommands zvcoreModifyCommands()
{
    return kCommands;
}
