// SPDX-License-Identifier: MIT
#ifndef ZVCOMMANDS_P_H
#define ZVCOMMANDS_P_H

#include "core/zveditor.h"
#include "zvcore_p.h"

/// A row of a unit's table of commands. Global and local names are the same.
struct ZvBuiltInCommand
{
    const char *name;
    int flags;
    ZvEdCommandFunction function;
};

/// A unit's table.
struct ZvBuiltInCommands
{
    template<int n>
    ZvBuiltInCommands(const ZvBuiltInCommand (&table)[n]) : rows(table), count(n)
    {
    }
    const ZvBuiltInCommand *rows;
    int count;
};

ZvBuiltInCommands zvcoreFileCommands();
ZvBuiltInCommands zvcoreDrawCommands();
ZvBuiltInCommands zvcoreModifyCommands();
ZvBuiltInCommands zvcoreSelectCommands();
ZvBuiltInCommands zvcoreSettingCommands();
ZvBuiltInCommands zvcoreUndoCommands();
ZvBuiltInCommands zvcoreUcsCommands();
ZvBuiltInCommands zvcoreViewCommands();

// ---- prompts that many commands make

ZvEdPrompt zvcorePrompt(ZvEdPrompt::Kind kind, const ZvString &text, const ZvString &keywords = ZvString());
/// A point with a rubber band from \a base.
ZvEdPrompt zvcorePromptFrom(ZvEdPrompt::Kind kind, const ZvString &text, const ZvGePoint3d &base,
                            const ZvString &keywords = ZvString());
/// A name, up to the end of the line. False when it was not given.
bool zvcoreAskName(const ZvString &text, ZvString &name);
/// Shows a number as short as it can be.
ZvString zvcoreNumber(double value);

#endif
