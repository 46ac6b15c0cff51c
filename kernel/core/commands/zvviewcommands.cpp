// SPDX-License-Identifier: MIT
#include "core/zvedviews.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "zvcommands_p.h"

#include <charconv>
#include <memory>

namespace {

void change(const ZvEdHost::ViewRequest &request)
{
    if (ZvEdHost *host = zvedHost())
        host->changeView(request);
}

ZvEdHost::ViewRequest request(ZvEdHost::ViewRequest::Kind kind)
{
    ZvEdHost::ViewRequest result;
    result.kind = kind;
    return result;
}

/// "2" and "2x": a factor on what is seen now.
bool parseFactor(const ZvString &text, double &factor)
{
    const std::string plain = text.toStdString();
    const char *end = plain.data() + plain.size();
    const auto result = std::from_chars(plain.data(), end, factor);
    const bool suffix = end - result.ptr == 1 && (*result.ptr == 'x' || *result.ptr == 'X');
    return result.ec == std::errc() && (result.ptr == end || suffix) && factor > 0.0;
}

void zoomWindow(const ZvGePoint3d &first)
{
    auto window = request(ZvEdHost::ViewRequest::kWindow);
    window.first = first;
    if (zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kCorner, L"Opposite corner:", first), window.second) == ZvEdInput::kNormal)
        change(window);
}

void zoomScale()
{
    ZvString text;
    auto scale = request(ZvEdHost::ViewRequest::kScale);
    if (zvedGetString(zvcorePrompt(ZvEdPrompt::kString, L"Scale factor:"), text) != ZvEdInput::kNormal)
        return;
    if (parseFactor(text, scale.value))
        change(scale);
    else
        zvedFailCommand(L"The scale factor must be a number above 0.");
}

void zoomCenter()
{
    auto center = request(ZvEdHost::ViewRequest::kCenter);
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Centre point:"), center.first) != ZvEdInput::kNormal
        || zvedGetDistance(zvcorePromptFrom(ZvEdPrompt::kDistance, L"Height:", center.first), center.value) != ZvEdInput::kNormal)
        return;
    if (center.value > 0.0)
        change(center);
    else
        zvedFailCommand(L"The height must be above 0.");
}

void zoom()
{
    ZvEdPrompt prompt = zvcorePrompt(ZvEdPrompt::kPoint,
                                     L"First corner, scale factor (nX) or [All/Center/Extents/Previous/Scale/Window] <Extents>:",
                                     L"All Center Extents Previous Scale Window");
    prompt.allowNone = true;
    prompt.allowOther = true;
    ZvGePoint3d first;
    ZvString keyword;
    switch (zvedGetPoint(prompt, first, &keyword)) {
    case ZvEdInput::kNormal:
        zoomWindow(first);
        return;
    case ZvEdInput::kCancel:
        return;
    case ZvEdInput::kNone:
        keyword = L"Extents";
        break;
    case ZvEdInput::kKeyword:
        break;
    }
    auto scale = request(ZvEdHost::ViewRequest::kScale);
    if (keyword == L"All" || keyword == L"Extents") {
        change(request(ZvEdHost::ViewRequest::kExtents));
    } else if (keyword == L"Previous") {
        change(request(ZvEdHost::ViewRequest::kPrevious));
    } else if (keyword == L"Scale") {
        zoomScale();
    } else if (keyword == L"Center") {
        zoomCenter();
    } else if (keyword == L"Window") {
        if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"First corner:"), first) == ZvEdInput::kNormal)
            zoomWindow(first);
    } else if (parseFactor(keyword, scale.value)) {
        change(scale);
    } else {
        zvedFailCommand(ZvString(L"Not a valid answer: ") + keyword);
    }
}

void pan()
{
    auto shift = request(ZvEdHost::ViewRequest::kPan);
    if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"Base point:"), shift.first) == ZvEdInput::kNormal
        && zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kPoint, L"Second point:", shift.first), shift.second) == ZvEdInput::kNormal)
        change(shift);
}

void regenerate()
{
    change(request(ZvEdHost::ViewRequest::kRegen));
}

/// The directions from which the preset views look, by their keywords.
struct PresetView
{
    const wchar_t *keyword;
    ZvGeVector3d direction;
};
const PresetView kPresets[] = {
    {L"TOP", {0, 0, 1}},      {L"BOTTOM", {0, 0, -1}}, {L"LEFT", {-1, 0, 0}},   {L"RIGHT", {1, 0, 0}},  {L"FRONT", {0, -1, 0}},
    {L"BACK", {0, 1, 0}},     {L"SWISO", {-1, -1, 1}}, {L"SEISO", {1, -1, 1}},  {L"NEISO", {1, 1, 1}},  {L"NWISO", {-1, 1, 1}},
};

ZvDbObjectId findView(ZvDbDatabase &database, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbViewTable> table(database.viewTableId(), ZvDb::kForRead);
    return table ? table->getIdAt(name) : ZvDbObjectId();
}

void restoreView(ZvDbDatabase &database, const ZvString &name)
{
    if (zvedRestoreView(database, findView(database, name)) != Zv::eOk)
        zvedFailCommand(ZvString(L"There is no view named ") + name);
}

void saveView(ZvDbDatabase &database, const ZvString &name)
{
    ZvDbObjectId id;
    const Zv::ErrorStatus status = zvedSaveView(database, name, id);
    if (status == Zv::eInvalidInput)
        zvedFailCommand(ZvString(L"Not a valid name: ") + name);
    else if (status != Zv::eOk)
        zvedFailCommand(L"There is no view to save.");
}

void listViews(const ZvDbDatabase &database)
{
    ZvDbSymbolTableIterator *made = nullptr;
    if (const ZvDbObjectPointer<ZvDbViewTable> table(database.viewTableId(), ZvDb::kForRead); table)
        table->newIterator(made);
    const std::unique_ptr<ZvDbSymbolTableIterator> iterator(made);
    bool isFirst = true;
    for (; iterator && !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbViewTableRecord> record(iterator->getRecordId(), ZvDb::kForRead);
        if (!record)
            continue;
        if (isFirst)
            zvedPrint(L"Saved views (M model space, P paper space):");
        isFirst = false;
        zvedPrint(ZvString(record->isPaperspaceView() ? L"  P  " : L"  M  ") + record->name());
    }
    if (isFirst)
        zvedPrint(L"The drawing has no named views.");
}

void deleteView(ZvDbDatabase &database, const ZvString &name)
{
    ZvDbObjectPointer<ZvDbViewTableRecord> record(findView(database, name), ZvDb::kForWrite);
    if (record)
        record->erase();
    else
        zvedFailCommand(ZvString(L"There is no view named ") + name);
}

void view()
{
    ZvDbDatabase &database = *zvcoreCurrentDatabase();
    ZvString keyword;
    if (zvedGetKeyword(zvcorePrompt(ZvEdPrompt::kKeyword,
                                    L"View [?/Restore/Save/Delete/TOP/BOTTOM/LEFT/RIGHT/FRONT/BACK/SWISO/SEISO/NEISO/NWISO]:",
                                    L"? Restore Save Delete TOP BOTTOM LEFT RIGHT FRONT BACK SWISO SEISO NEISO NWISO"),
                       keyword)
        != ZvEdInput::kKeyword)
        return;
    for (const PresetView &preset : kPresets) {
        if (keyword == preset.keyword) {
            auto direction = request(ZvEdHost::ViewRequest::kDirection);
            direction.direction = preset.direction;
            change(direction);
            return;
        }
    }
    if (keyword == L"?") {
        listViews(database);
        return;
    }
    ZvString name;
    if (!zvcoreAskName(L"View name:", name))
        return;
    if (keyword == L"Restore")
        restoreView(database, name);
    else if (keyword == L"Save")
        saveView(database, name);
    else
        deleteView(database, name);
}

/// Model space, a layout by name, and work on the paper or in a viewport.
void layout()
{
    ZvDbDatabase &database = *zvcoreCurrentDatabase();
    ZvString name;
    if (zvcoreAskName(L"Layout name:", name) && database.setCurrentLayout(name) != Zv::eOk)
        zvedFailCommand(ZvString(L"There is no layout named ") + name);
}

constexpr int kView = ZvEdCommand::kNoUndoMark | ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet | ZvEdCommand::kTransparent;
constexpr int kChange = ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
const ZvBuiltInCommand kCommands[] = {
    {"ZOOM", kView, zoom}, {"PAN", kView, pan},   {"REGEN", kView, regenerate},
    {"-VIEW", kChange, view}, {"VIEW", kChange, view}, {"LAYOUT", ZvEdCommand::kModal, layout},
};

}

ZvBuiltInCommands zvcoreViewCommands()
{
    return kCommands;
}

// ---- named views, also for the host's dialogs

/// What is seen where work goes on: through the viewport of a layout that is worked in, else what the host shows.
static bool viewAtWork(const ZvDbDatabase &database, ZvEdHost::ViewState &state)
{
    if (database.tilemode() || database.currentSpaceId() != database.modelSpaceId())
        return zvedHost() && zvedHost()->currentView(state);
    const ZvDbObjectPointer<ZvDbViewport> viewport(database.currentViewportId(), ZvDb::kForRead);
    if (!viewport)
        return false;
    state.center = viewport->viewCenter();
    state.height = viewport->viewHeight();
    state.width = viewport->height() > 0.0 ? state.height * viewport->width() / viewport->height() : state.height;
    state.target = viewport->viewTarget();
    state.direction = viewport->viewDirection();
    state.twist = viewport->twistAngle();
    return true;
}

Zv::ErrorStatus zvedSaveView(ZvDbDatabase &database, const ZvString &name, ZvDbObjectId &id)
{
    ZvEdHost::ViewState state;
    if (!viewAtWork(database, state))
        return Zv::eNoDatabase;
    id = findView(database, name);
    if (id.isNull()) {
        auto *record = new ZvDbViewTableRecord;
        ZvDbObjectPointer<ZvDbViewTable> table(database.viewTableId(), ZvDb::kForWrite);
        if (!table || record->setName(name) != Zv::eOk || table->add(record, id) != Zv::eOk) {
            delete record;
            return Zv::eInvalidInput;
        }
        record->close();
    }
    const ZvDbObjectPointer<ZvDbViewTableRecord> record(id, ZvDb::kForWrite);
    if (!record)
        return Zv::eInvalidInput;
    record->setCenterPoint(state.center);
    record->setWidth(state.width);
    record->setHeight(state.height);
    record->setTarget(state.target);
    record->setViewDirection(state.direction);
    record->setViewTwist(state.twist);
    record->setIsPaperspaceView(database.currentSpaceId() != database.modelSpaceId());
    return Zv::eOk;
}

Zv::ErrorStatus zvedRestoreView(ZvDbDatabase &database, ZvDbObjectId id)
{
    bool isOnPaper = false;
    {
        const ZvDbObjectPointer<ZvDbViewTableRecord> record(id, ZvDb::kForRead);
        if (!record)
            return Zv::eKeyNotFound;
        isOnPaper = record->isPaperspaceView();
    }
    if (database.tilemode() == isOnPaper)
        database.setTilemode(!isOnPaper);
    auto named = request(ZvEdHost::ViewRequest::kNamed);
    named.view = id;
    change(named);
    return Zv::eOk;
}
