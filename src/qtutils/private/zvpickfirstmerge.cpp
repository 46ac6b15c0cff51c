// SPDX-License-Identifier: MIT
#include "private/zvpickfirstmerge.h"

#include "db/zvdbentities.h"

bool zvReadTableStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    const auto *table = zvrxCast<ZvDbTable>(&entity);
    if (!table)
        return false;
    style = table->tableStyle();
    return true;
}

bool zvReadDimStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    const auto *dimension = zvrxCast<ZvDbDimension>(&entity);
    if (!dimension)
        return false;
    style = dimension->dimensionStyle();
    return true;
}

bool zvReadMLeaderStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    const auto *leader = zvrxCast<ZvDbMLeader>(&entity);
    if (!leader)
        return false;
    style = leader->MLeaderStyle();
    return true;
}

bool zvReadPlainTextStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    if (const auto *text = zvrxCast<ZvDbText>(&entity)) {
        style = text->textStyle();
        return true;
    }
    if (const auto *text = zvrxCast<ZvDbMText>(&entity)) {
        style = text->textStyle();
        return true;
    }
    return false;
}

bool zvReadTextStyle(const ZvDbEntity &entity, ZvDbObjectId &style)
{
    if (zvReadPlainTextStyle(entity, style))
        return true;
    if (const auto *dimension = zvrxCast<ZvDbDimension>(&entity)) {
        style = dimension->textStyleId();
        return true;
    }
    if (const auto *leader = zvrxCast<ZvDbMLeader>(&entity)) {
        style = leader->textStyleId();
        return true;
    }
    return false;
}
