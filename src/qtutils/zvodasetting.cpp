// SPDX-License-Identifier: MIT
// The facade's current values.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvlogline.h"
#include "private/zvtranslation.h"
#include "private/zvupdatecommand.h"
#include "qt_utils.h"
#include "zevaqt.h"
#include "zvqtcommonuisvr.h"

#include "core/zveditor.h"
#include "core/zvedvars.h"
#include "core/zvsystem.h"
#include "core/zvui.h"
#include "db/zvdbentity.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

#include <QWidget>

#include <memory>

namespace {

struct LineWeightName
{
    ZvDb::LineWeight weight;
    const char *millimetres;
    const char *inches;
};

/// Also the values that the list of line weights offers, in its order.
constexpr LineWeightName kLineWeightNames[] = {
    {ZvDb::kLnWtByLwDefault, QT_TRANSLATE_NOOP("ZevaUISetting", "默认"), "默认"},
    {ZvDb::kLnWtByBlock, "ByBlock", "ByBlock"},
    {ZvDb::kLnWtByLayer, "ByLayer", "ByLayer"},
    {ZvDb::kLnWt000, "0.00 mm", "0.000\""},
    {ZvDb::kLnWt005, "0.05 mm", "0.002\""},
    {ZvDb::kLnWt009, "0.09 mm", "0.004\""},
    {ZvDb::kLnWt013, "0.13 mm", "0.005\""},
    {ZvDb::kLnWt015, "0.15 mm", "0.006\""},
    {ZvDb::kLnWt018, "0.18 mm", "0.007\""},
    {ZvDb::kLnWt020, "0.20 mm", "0.008\""},
    {ZvDb::kLnWt025, "0.25 mm", "0.010\""},
    {ZvDb::kLnWt030, "0.30 mm", "0.012\""},
    {ZvDb::kLnWt035, "0.35 mm", "0.014\""},
    {ZvDb::kLnWt040, "0.40 mm", "0.016\""},
    {ZvDb::kLnWt050, "0.50 mm", "0.020\""},
    {ZvDb::kLnWt053, "0.53 mm", "0.021\""},
    {ZvDb::kLnWt060, "0.60 mm", "0.024\""},
    {ZvDb::kLnWt070, "0.70 mm", "0.028\""},
    {ZvDb::kLnWt080, "0.80 mm", "0.031\""},
    {ZvDb::kLnWt090, "0.90 mm", "0.035\""},
    {ZvDb::kLnWt100, "1.00 mm", "0.039\""},
    {ZvDb::kLnWt106, "1.06 mm", "0.042\""},
    {ZvDb::kLnWt120, "1.20 mm", "0.047\""},
    {ZvDb::kLnWt140, "1.40 mm", "0.055\""},
    {ZvDb::kLnWt158, "1.58 mm", "0.062\""},
    {ZvDb::kLnWt200, "2.00 mm", "0.079\""},
    {ZvDb::kLnWt211, "2.11 mm", "0.083\""},
};

// The first sentence stands there twice: the text is shown as it is.
constexpr char kCannotSetCurrent[] = QT_TRANSLATE_NOOP(
    "ZevaUISetting",
    "无法将选定图层置为当前图层。\r\n\r\n无法将选定图层置为当前图层:\r\n 依赖外部参照的图层\n 冻结的图层\n");
constexpr char kCannotSetCurrentTitle[] = QT_TRANSLATE_NOOP("ZevaUISetting", "图层 - 无法置为当前");
constexpr char kKeepLayerOn[]
    = QT_TRANSLATE_NOOP("ZevaUISetting", "当前图层将被关闭。\n是否要使当前图层保持打开状态?\n");
constexpr char kCannotFreeze[] = QT_TRANSLATE_NOOP("ZevaUISetting", "不能冻结当前图层\n");
constexpr wchar_t kTitle[] = L"Zevara";
constexpr unsigned kInformation = 64;
constexpr unsigned kInformationYesNo = 68;
constexpr int kYes = 6;

ZvString shown(const char *text)
{
    return zvTranslated("ZevaUISetting", text);
}

void issueUpdateMacro()
{
    ZvEdDisplayContext *display = zvDisplayContext();
    const bool echo = display && display->commandEcho();
    // The macro takes the state at the time of the call: the command runs unseen.
    if (display)
        display->setCommandEcho(false);
    zvedMenuMacro(L"GLOBAL_UI_UPDATEDB", false);
    if (display)
        display->setCommandEcho(echo);
}

/// What every setter does with its request.
void requestUpdate(const ZvUiPendingUpdate &update)
{
    ZvQtCommonUISvr *mailbox = zvUpdateMailbox();
    if (!mailbox)
        return;
    mailbox->setPendingUpdate(update);
    if (zvIsCommandActive())
        zvWritePendingUpdate(); // the write falls into the running command
    else
        issueUpdateMacro();
}

void requestNamed(ZevaUISetting::Entity_Property property, const ZvDbObjectId &id, const ZvString &name)
{
    ZvUiPendingUpdate update;
    update.kind = property;
    update.secondWord = id.asInt64();
    update.name = name;
    requestUpdate(update);
}

/// Whether a layer may become current; one that cannot be read may.
bool mayBecomeCurrent(ZvDbObjectId layerId)
{
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(layerId, ZvDb::kForRead);
    // "|" stands in the names of layers that came with an external reference.
    return !layer || !(layer->isFrozen() || layer->name().contains(L'|'));
}

bool isBlockEditorActive()
{
    ZvResBuf value;
    return zvedGetVar(L"BLOCKEDITOR", &value) == ZvRes::kNormal && value.number() != 0.0;
}

/// Whether the work in a layout is on the paper itself, and not inside a viewport.
bool isOnPaper(const ZvDbLayout &layout)
{
    ZvDbObjectId active;
    ZvDbObjectId overall;
    zvHostService()->layoutIds(&layout, active, overall);
    return active == overall;
}

} // namespace

// ---- setters

void ZevaUISetting::setCeColor(const ZvCmColor &color)
{
    ZvUiPendingUpdate update;
    update.kind = kColor;
    update.color = color;
    requestUpdate(update);
}

void ZevaUISetting::setCeWeight(ZvDb::LineWeight weight)
{
    ZvUiPendingUpdate update;
    update.kind = kLineWeight;
    update.firstWord = weight;
    requestUpdate(update);
}

void ZevaUISetting::setCeLType(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kLineType, id, name);
}

void ZevaUISetting::setCMaterial(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kMaterial, id, name);
}

void ZevaUISetting::setCDimStyle(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kDimStyle, id, name);
}

void ZevaUISetting::setCTextStyle(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kTextStyle, id, name);
}

void ZevaUISetting::setCPlotStyle(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kPlotStyle, id, name);
}

void ZevaUISetting::setCTableStyle(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kTableStyle, id, name);
}

void ZevaUISetting::setCMLeaderStyle(const ZvDbObjectId &id, const ZvString &name)
{
    requestNamed(kMLeaderStyle, id, name);
}

bool ZevaUISetting::setCLayer(const ZvDbObjectId &id, const ZvString &name)
{
    if (hasSelected()) {
        if (name.isEmpty())
            return false;
        requestNamed(kLayer, id, name);
        return true;
    }
    const ZvDbObjectId layerId = id.isValid() ? id : findLayerTableRecordByName(name, nullptr);
    if (!layerId.isValid() || layerId.isErased())
        return false;
    const ZvDbDatabase *database = curDatabase();
    if (database && database->clayer() != layerId && !mayBecomeCurrent(layerId)) {
        ZvUiMessageBox(shown(kCannotSetCurrent), shown(kCannotSetCurrentTitle), kInformation);
        return false;
    }
    requestNamed(kLayer, id, name);
    return true;
}

bool ZevaUISetting::changeLayerStatus(Layer_Info_Type type, const ZvString &layerName, ZvCmColor color)
{
    const ZvDbDatabase *database = curDatabase();
    const ZvDbObjectId current = database ? database->clayer() : ZvDbObjectId();
    const ZvDbObjectId id = findLayerTableRecordByName(layerName, nullptr);
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForWrite);
    if (!layer)
        return false;
    bool state = false;
    switch (type) {
    case kLayerOnOff:
        if (id == current && !layer->isOff() && ZvUiMessageBox(shown(kKeepLayerOn), kTitle, kInformationYesNo) == kYes)
            return false;
        state = !layer->isOff();
        layer->setIsOff(state);
        break;
    case kLayerFreeze:
        if (id == current) {
            ZvUiMessageBox(shown(kCannotFreeze), kTitle, kInformation);
            return false;
        }
        state = !layer->isFrozen();
        layer->setIsFrozen(state);
        break;
    case kLayerLock:
        state = !layer->isLocked();
        layer->setIsLocked(state);
        break;
    case kLayerColor:
        layer->setColor(color);
        break;
    }
    layer.close(); // here, where what its notices throw gets out
    return state;
}

// ---- readers

unsigned short ZevaUISetting::getCeColor()
{
    const ZvDbDatabase *database = curDatabase();
    return database ? database->cecolor().colorIndex() : std::uint16_t(ZvCm::kACIbyLayer);
}

ZvCmColor ZevaUISetting::getCLayerColor()
{
    const auto colorOf = [](ZvDbObjectId layerId, ZvCmColor &color) {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(layerId, ZvDb::kForRead);
        if (layer)
            color = layer->color();
        return bool(layer);
    };
    ZvCmColor color;
    const ZvDbDatabase *database = curDatabase();
    if (!database)
        return color;
    if (!hasSelected()) {
        colorOf(database->clayer(), color);
        return color;
    }
    if (!zvCurrentDocument())
        return color;
    long name[2];
    pickFirstSS(name);
    for (const ZvDbObjectId &id : zvedSSIds(name)) {
        ZvDbObjectId layerId;
        {
            const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
            if (!entity)
                continue;
            layerId = entity->layerId();
        }
        if (colorOf(layerId, color))
            return color;
    }
    return color;
}

Zv::ErrorStatus ZevaUISetting::getCurrentLayerColor(ZvCmColor &color)
{
    const ZvDbDatabase *database = curDatabase();
    if (!database)
        return Zv::eFailed;
    ZvDbLayerTable *table = nullptr;
    if (database->getSymbolTable(table, ZvDb::kForRead) != Zv::eOk)
        return Zv::eFailed;
    const ZvDbObjectId current = database->clayer();
    table->generateUsageData();
    ZvDbSymbolTableIterator *made = nullptr;
    table->newIterator(made, true, true);
    const std::unique_ptr<ZvDbSymbolTableIterator> iterator(made);
    table->close();
    for (; iterator && !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(iterator->getRecordId(), ZvDb::kForRead);
        if (layer && layer->objectId() == current) {
            color = layer->color();
            return Zv::eOk;
        }
    }
    return Zv::eFailed;
}

int ZevaUISetting::getLWDefault()
{
    const CHcSystem *system = CHcSystem::instance();
    const ZvApApplication *application = system ? system->application() : nullptr;
    return application ? application->defaultLineWeight() : 0;
}

const char *ZevaUISetting::getLineName(bool inches, ZvDb::LineWeight weight)
{
    for (const LineWeightName &row : kLineWeightNames) {
        if (row.weight == weight)
            return inches ? row.inches : row.millimetres;
    }
    return "";
}

ZvString ZevaUISetting::getLineTypeName()
{
    const ZvDbDatabase *database = zvCurrentDocumentDatabase();
    if (!database)
        return ZvString();
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> lineType(database->celtype(), ZvDb::kForRead);
    return lineType ? lineType->name() : ZvString();
}

void ZevaUISetting::getLWeight() { }

void ZevaUISetting::getLType() { }

ZvDbObjectId ZevaUISetting::getWorkBlockRecId(const ZvDbDatabase *database)
{
    if (!database)
        return ZvDbObjectId();
    const ZvDbObjectId modelSpace = zvHostService()->modelSpaceId(database);
    if (isBlockEditorActive()) {
        zvLogLine(5, __LINE__, "zvodasetting", "getWorkBlockRecId", "后面要加上块在位编辑时返回的块表记录");
        return modelSpace;
    }
    if (database->tilemode())
        return modelSpace;
    const ZvGsDbRootLinkage::DatabaseExtension *extension = ZvGsDbRootLinkage::getDbBaseDatabasePE();
    const ZvRxObject *object = extension ? extension->layoutObject(database) : nullptr;
    if (!object)
        return ZvDbObjectId();
    const auto *layout = zvqt_queryRequired<ZvDbLayout>(object);
    return isOnPaper(*layout) ? layout->getBlockTableRecordId() : modelSpace;
}

void ZevaUISetting::restoreFocus2MainView()
{
    const CHcSystem *system = CHcSystem::instance();
    const ZvApApplication *application = system ? system->application() : nullptr;
    const ZvApWindow *window = application ? application->window() : nullptr;
    const ZvApView *view = window ? window->mainView() : nullptr;
    if (QWidget *widget = view ? qt_windowHandle_to_widget(view->widget()) : nullptr)
        widget->setFocus(Qt::OtherFocusReason);
}
