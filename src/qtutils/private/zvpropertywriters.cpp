// SPDX-License-Identifier: MIT
#include "private/zvpropertywriters.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvresbufptr.h"
#include "zvodasetting.h"
#include "zvqtcommonuisvr.h"

#include "core/zvedvars.h"
#include "db/zvdbrecords.h"

namespace {

ZevaUISetting::EntityValue valueOf(const ZvUiPendingUpdate &update)
{
    ZevaUISetting::EntityValue value;
    value.color = update.color;
    value.lineWeight = ZvDb::LineWeight(update.firstWord);
    value.objectId = ZvDbObjectId::fromInt64(update.secondWord);
    value.name = update.name;
    return value;
}

void writeSelected(const ZvUiPendingUpdate &update)
{
    if (zvCurrentDocumentDatabase())
        ZevaUISetting::setSelectedProperty(ZevaUISetting::Entity_Property(update.kind), valueOf(update));
}

void writeSelectedByName(const ZvUiPendingUpdate &update)
{
    if (!update.name.isEmpty())
        writeSelected(update);
}

typedef ZvDbObjectId (*Finder)(const ZvString &name, ZvDbDatabase *database);

/// The id of the request, or the record of its name.
ZvDbObjectId idOf(const ZvUiPendingUpdate &update, Finder find)
{
    const ZvDbObjectId id = ZvDbObjectId::fromInt64(update.secondWord);
    return id.isValid() ? id : find(update.name, nullptr);
}

/// Entities take a style by its id.
void writeSelectedById(const ZvUiPendingUpdate &update, Finder find)
{
    if (!zvCurrentDocumentDatabase())
        return;
    ZevaUISetting::EntityValue value = valueOf(update);
    if (!value.objectId.isValid() && value.name.isEmpty())
        return;
    value.objectId = idOf(update, find);
    if (value.objectId.isValid())
        ZevaUISetting::setSelectedProperty(ZevaUISetting::Entity_Property(update.kind), value);
}

/// A current style that the drawing keeps as a named variable.
void writeStyleVariable(const ZvUiPendingUpdate &update, Finder find, const wchar_t *variable, bool replaceInvalid)
{
    const ZvDbObjectId id = idOf(update, find);
    ZvDbDatabase *database = curDatabase();
    if (!id.isValid() || !database)
        return;
    ZvDbHostService *service = zvHostService();
    const ZvResBufPtr value(service->readVariable(variable, database));
    if (!value)
        return;
    const ZvDbObjectId current = value->getObjectId();
    if (current == id || (!replaceInvalid && !current.isValid()))
        return;
    value->setObjectId(id);
    service->writeVariable(variable, value.get(), database);
}

} // namespace

void zvWriteColor(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelected(update);
        return;
    }
    ZvDbDatabase *database = curDatabase();
    if (database && database->cecolor() != update.color)
        database->setCecolor(update.color);
}

void zvWriteLineWeight(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelected(update);
        return;
    }
    const auto weight = ZvDb::LineWeight(update.firstWord);
    ZvDbDatabase *database = curDatabase();
    if (database && database->celweight() != weight)
        database->setCelweight(weight);
}

void zvWriteLineType(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelectedByName(update);
        return;
    }
    const ZvDbObjectId id = idOf(update, ZevaUISetting::findLineStyleTableRecordByName);
    ZvDbDatabase *database = curDatabase();
    if (id.isValid() && database && database->celtype() != id)
        database->setCeltype(id);
}

void zvWriteLayer(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelectedByName(update);
        return;
    }
    const ZvDbObjectId id = idOf(update, ZevaUISetting::findLayerTableRecordByName);
    ZvDbDatabase *database = curDatabase();
    if (!id.isValid() || id.isErased() || !database || database->clayer() == id)
        return;
    // The frozen state is written back as it is: a layer becomes current through a write of its record, which kernels that
    // keep the state of its viewports with it rely on.
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForWrite);
    if (layer)
        layer->setIsFrozen(layer->isFrozen());
    layer.close();
    database->setClayer(id);
}

void zvWriteMaterial(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelectedByName(update);
        return;
    }
    const ZvDbObjectId id = idOf(update, ZevaUISetting::findMaterialByName);
    ZvDbDatabase *database = curDatabase();
    if (id.isValid() && database && database->cmaterial() != id)
        database->setCmaterial(id);
}

void zvWriteDimStyle(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelectedById(update, ZevaUISetting::findDimStyleTableRecordByName);
        return;
    }
    const ZvDbObjectId id = idOf(update, ZevaUISetting::findDimStyleTableRecordByName);
    ZvDbDatabase *database = curDatabase();
    if (!id.isValid() || !database || database->dimstyle() == id)
        return;
    database->setDimstyle(id);
    database->setDimstyleData(id);
}

void zvWriteTextStyle(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected()) {
        writeSelectedById(update, ZevaUISetting::findTextStyleTableRecordByName);
        return;
    }
    const ZvDbObjectId id = idOf(update, ZevaUISetting::findTextStyleTableRecordByName);
    ZvDbDatabase *database = curDatabase();
    if (id.isValid() && database && database->textstyle() != id)
        database->setTextstyle(id);
}

void zvWriteTableStyle(const ZvUiPendingUpdate &update)
{
    if (ZevaUISetting::hasSelected())
        writeSelectedById(update, ZevaUISetting::findTableStyleTableRecordByName);
    else
        writeStyleVariable(update, ZevaUISetting::findTableStyleTableRecordByName, L"CTABLESTYLE", false);
}

void zvWriteMLeaderStyle(const ZvUiPendingUpdate &update)
{
    // Unlike a table style, a current multileader style that is gone is replaced: it is how such a drawing is mended.
    if (ZevaUISetting::hasSelected())
        writeSelectedById(update, ZevaUISetting::findMleaderStyleTableRecordByName);
    else
        writeStyleVariable(update, ZevaUISetting::findMleaderStyleTableRecordByName, L"CMLEADERSTYLE", true);
}

void zvWritePlotStyle(const ZvUiPendingUpdate &update)
{
    if (update.name.isEmpty())
        return;
    if (ZevaUISetting::hasSelected()) {
        writeSelected(update);
        return;
    }
    if (!curDatabase())
        return;
    const ZvResBufPtr value(zvutNewRb(ZvRes::kText));
    if (zvedGetVar(L"CPLOTSTYLE", value.get()) != ZvRes::kNormal || value->restype != ZvRes::kText)
        return;
    if (update.name.compareNoCase(value->text()) == 0)
        return;
    ZvResBuf written; // points at the request's own text, which nobody frees
    written.restype = ZvRes::kText;
    written.resval.rstring = const_cast<wchar_t *>(update.name.wstr());
    zvedSetVar(L"CPLOTSTYLE", &written);
}
