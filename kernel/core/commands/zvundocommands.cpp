// SPDX-License-Identifier: MIT
#include "zvcommands_p.h"

namespace {

/// Takes back the last step, or as many as the same line goes on to say ("UNDO 3"). It does not ask: the plain word in a
/// macro means one step.
void undo()
{
    ZvDbDatabase *database = zvcoreCurrentDatabase();
    int count = 1;
    if (zvcoreLineHasMore()
        && zvedGetInteger(zvcorePrompt(ZvEdPrompt::kInteger, L"Number of steps:"), count) != ZvEdInput::kNormal)
        return;
    for (int i = 0; i < count; ++i) {
        if (!database->canUndo()) {
            zvedPrint(L"Nothing more to undo.");
            return;
        }
        zvedPrint(ZvString(L"Undone: ") + database->undoName());
        database->undo();
    }
}

void redo()
{
    ZvDbDatabase *database = zvcoreCurrentDatabase();
    int count = 1;
    if (zvcoreLineHasMore()
        && zvedGetInteger(zvcorePrompt(ZvEdPrompt::kInteger, L"Number of steps:"), count) != ZvEdInput::kNormal)
        return;
    for (int i = 0; i < count; ++i) {
        if (!database->canRedo()) {
            zvedPrint(L"Nothing to redo.");
            return;
        }
        zvedPrint(ZvString(L"Redone: ") + database->redoName());
        database->redo();
    }
}

constexpr int kFlags = ZvEdCommand::kNoUndoMark | ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
const ZvBuiltInCommand kCommands[] = {{"UNDO", kFlags, undo}, {"U", kFlags, undo}, {"REDO", kFlags, redo}};

}

ZvBuiltInCommands zvcoreUndoCommands()
{
    return kCommands;
}
