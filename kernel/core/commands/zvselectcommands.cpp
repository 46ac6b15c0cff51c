// SPDX-License-Identifier: MIT
#include "core/zvapdocument.h"
#include "zvcommands_p.h"

namespace {

ZvEdSelectionHolder *holder()
{
    ZvEdContext *context = zvDocManagerPtr()->currentDocument()->editingContext();
    return context ? context->selectionHolder() : nullptr;
}

/// Makes what is selected the pick-first set; "NONE" empties it.
void select()
{
    ZvEdSelectionHolder *selection = holder();
    if (!selection)
        return;
    ZvEdPrompt prompt = zvcorePrompt(ZvEdPrompt::kKeyword, L"Select [ALL/NONE/Window/Crossing/LAyer/Objects] <Objects>:",
                                     L"ALL NONE Window Crossing LAyer Objects");
    prompt.allowNone = true;
    ZvString keyword(L"Objects");
    if (zvedGetKeyword(prompt, keyword) == ZvEdInput::kCancel)
        return;
    std::vector<ZvDbObjectId> ids;
    if (keyword == L"ALL") {
        zvcoreSelectableEntities(ids);
    } else if (keyword == L"LAyer") {
        ZvString layer;
        if (!zvcoreAskName(L"Layer name:", layer))
            return;
        zvcoreEntitiesOnLayer(layer, ids);
    } else if (keyword == L"Window" || keyword == L"Crossing") {
        ZvGePoint3d first;
        ZvGePoint3d second;
        if (zvedGetPoint(zvcorePrompt(ZvEdPrompt::kPoint, L"First corner:"), first) != ZvEdInput::kNormal
            || zvedGetPoint(zvcorePromptFrom(ZvEdPrompt::kCorner, L"Opposite corner:", first), second) != ZvEdInput::kNormal)
            return;
        zvcoreEntitiesInWindow(first, second, keyword == L"Crossing", ids);
    } else if (keyword == L"Objects") {
        selection->clear(); // the request takes the set at hand otherwise
        if (zvedGetSelection(zvcorePrompt(ZvEdPrompt::kSelection, L"Select objects:"), ids) == ZvEdInput::kCancel)
            return;
    }
    selection->set(ids);
}

const ZvBuiltInCommand kCommands[] = {
    {"SELECT", ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet | ZvEdCommand::kNoUndoMark, select}};

}

ZvBuiltInCommands zvcoreSelectCommands()
{
    return kCommands;
}
