// SPDX-License-Identifier: MIT
#ifndef ZVCOMMANDS_P_H
#define ZVCOMMANDS_P_H

#include "core/zveditor.h"
#include "db/zvdbsymboltable.h"
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
ZvBuiltInCommands zvcoreLinetypeCommands();
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
/// Record of the current drawing; null for an unknown name.
template<class Table>
ZvDbObjectId zvcoreFindRecord(const ZvString &name)
{
    Table *table = nullptr;
    ZvDbObjectId id;
    if (zvcoreCurrentDatabase()->getSymbolTable(table, ZvDb::kForRead) == Zv::eOk) {
        id = table->getIdAt(name);
        table->close();
    }
    return id;
}
/// The record of a name that is asked for; the command fails when there is none.
template<class Table>
bool zvcoreAskRecord(const ZvString &prompt, const ZvString &kind, ZvDbObjectId &id)
{
    ZvString name;
    if (!zvcoreAskName(prompt, name))
        return false;
    id = zvcoreFindRecord<Table>(name);
    if (!id.isNull())
        return true;
    zvedFailCommand(ZvString(L"There is no ") + kind + ZvString(L" named ") + name);
    return false;
}
/// Shows a number as short as it can be.
ZvString zvcoreNumber(double value);

#endif
