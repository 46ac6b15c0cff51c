// SPDX-License-Identifier: MIT
#include "db/zvdblinetypes.h"
#include "db/zvdbrecords.h"
#include "zvcommands_p.h"

#include <memory>

// Line types at the command line. Names, descriptions and patterns run to the end of the line.

namespace {

void setCurrent()
{
    ZvDbObjectId id;
    if (zvcoreAskRecord<ZvDbLinetypeTable>(L"Line type name:", L"line type", id))
        zvcoreCurrentDatabase()->setCeltype(id);
}

void create()
{
    ZvDbLinetypeDefinition definition;
    if (!zvcoreAskName(L"Name of the new line type:", definition.name))
        return;
    ZvEdPrompt asksDescription = zvcorePrompt(ZvEdPrompt::kStringWithBlanks, L"Description <none>:");
    asksDescription.allowNone = true;
    if (zvedGetString(asksDescription, definition.comments) == ZvEdInput::kCancel)
        return;
    ZvString pattern;
    if (!zvcoreAskName(L"Pattern, as in A,12.7,-6.35:", pattern))
        return;
    ZvString why;
    ZvDbObjectId id;
    if (!ZvDbLinetypeFile::parsePattern(pattern, definition.elements, why)
        || zvdbAddLinetype(*zvcoreCurrentDatabase(), definition, ZvString(), false, id, why) != Zv::eOk)
        zvedFailCommand(definition.name + ZvString(L": ") + why);
}

/// Whether a list of names with commas, or "*", holds the name.
bool isWanted(const ZvString &list, const ZvString &name)
{
    if (list == L"*")
        return true;
    for (int from = 0; from <= list.length();) {
        const int comma = list.find(L',', from);
        const int to = comma < 0 ? list.length() : comma;
        if (list.mid(from, to - from).trimmed().compareNoCase(name) == 0)
            return true;
        from = to + 1;
    }
    return false;
}

void load()
{
    ZvString wanted;
    ZvString path;
    if (!zvcoreAskName(L"Line types to load, with commas, or * for all:", wanted)
        || !zvcoreAskName(L"Line type file:", path))
        return;
    ZvDbDatabase &database = *zvcoreCurrentDatabase();
    ZvDbLinetypeFile file;
    if (file.read(path, database) != Zv::eOk) {
        zvedFailCommand(path + ZvString(L": ") + file.problemText());
        return;
    }
    if (!file.problems().empty())
        zvedPrint(file.problemText());
    int loaded = 0;
    int found = 0;
    for (const ZvDbLinetypeDefinition &definition : file.definitions()) {
        if (!isWanted(wanted, definition.name))
            continue;
        ++found;
        ZvString why;
        ZvDbObjectId id;
        const Zv::ErrorStatus status = zvdbAddLinetype(database, definition, path, false, id, why);
        if (status == Zv::eOk)
            ++loaded;
        else
            zvedPrint(definition.name + ZvString(L" was not loaded: ") + why);
    }
    if (found == 0)
        zvedFailCommand(ZvString(L"The file has no line type ") + wanted);
    else
        zvedPrint(zvcoreNumber(loaded) + ZvString(L" line types loaded."));
}

void list()
{
    const ZvDbDatabase &database = *zvcoreCurrentDatabase();
    ZvDbSymbolTableIterator *walk = nullptr;
    if (const ZvDbObjectPointer<ZvDbLinetypeTable> table(database.linetypeTableId(), ZvDb::kForRead); table)
        table->newIterator(walk);
    const std::unique_ptr<ZvDbSymbolTableIterator> owner(walk);
    for (; walk && !walk->done(); walk->step()) {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(walk->getRecordId(), ZvDb::kForRead);
        if (record)
            zvedPrint(record->name() + ZvString(L"  ") + record->comments());
    }
}

void rename()
{
    ZvDbObjectId id;
    ZvString name;
    if (!zvcoreAskRecord<ZvDbLinetypeTable>(L"Line type name:", L"line type", id) || !zvcoreAskName(L"New name:", name))
        return;
    switch (zvdbRenameLinetype(id, name)) {
    case Zv::eOk:
        return;
    case Zv::eDuplicateKey:
        zvedFailCommand(ZvString(L"There is a line type already named ") + name);
        return;
    default:
        zvedFailCommand(ZvString(L"Not a valid name, or a line type that keeps its name: ") + name);
    }
}

void erase()
{
    ZvDbObjectId id;
    if (!zvcoreAskRecord<ZvDbLinetypeTable>(L"Line type name:", L"line type", id))
        return;
    switch (zvdbEraseLinetype(id)) {
    case Zv::eOk:
        return;
    case Zv::eObjectReferenced:
        zvedFailCommand(L"The line type is in use.");
        return;
    default:
        zvedFailCommand(L"The line type cannot be deleted.");
    }
}

/// One option with its name: "-LINETYPE Set DASHED".
void lineType()
{
    const struct
    {
        const wchar_t *keyword;
        void (*run)();
    } kOptions[] = {{L"?", list},         {L"Create", create}, {L"Load", load},
                    {L"Set", setCurrent}, {L"Rename", rename}, {L"Delete", erase}};
    ZvEdPrompt prompt = zvcorePrompt(ZvEdPrompt::kKeyword, L"Line type [?/Create/Load/Set/Rename/Delete]:",
                                     L"? Create Load Set Rename Delete");
    prompt.allowNone = true;
    ZvString option;
    if (zvedGetKeyword(prompt, option) != ZvEdInput::kKeyword)
        return;
    for (const auto &row : kOptions) {
        if (option == row.keyword)
            row.run();
    }
}

constexpr int kFlags = ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
const ZvBuiltInCommand kCommands[] = {{"-LINETYPE", kFlags, lineType}, {"LINETYPE", kFlags, lineType}};

} // namespace

ZvBuiltInCommands zvcoreLinetypeCommands()
{
    return kCommands;
}
