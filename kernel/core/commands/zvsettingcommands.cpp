// SPDX-License-Identifier: MIT
#include "core/zvedvars.h"
#include "db/zvdbrecords.h"
#include "db/zvdbreferences.h"
#include "zvcommands_p.h"

#include <charconv>
#include <cmath>
#include <string>

// The command-line forms of the drawing's settings. Names run to the end of the line, since they may hold blanks.

namespace {

bool parseWhole(std::string_view text, int &value)
{
    const auto result = std::from_chars(text.data(), text.data() + text.size(), value);
    return result.ec == std::errc() && result.ptr == text.data() + text.size();
}

/// "ByLayer", "ByBlock", an index from 1 to 255, the names of the first seven, "r,g,b".
bool parseColor(const ZvString &text, ZvCmColor &color)
{
    static const wchar_t *const kNames[] = {L"ByBlock", L"Red", L"Yellow", L"Green", L"Cyan", L"Blue", L"Magenta", L"White"};
    ZvString word = text.trimmed();
    if (!word.isEmpty() && word.at(0) == L'_')
        word = word.mid(1);
    if (word.compareNoCase(L"ByLayer") == 0) {
        color.setColorIndex(ZvCm::kACIbyLayer);
        return true;
    }
    for (int i = 0; i < 8; ++i) {
        if (word.compareNoCase(kNames[i]) == 0) {
            color.setColorIndex(std::uint16_t(i));
            return true;
        }
    }
    const std::string plain = word.toStdString();
    int number = 0;
    if (parseWhole(plain, number)) {
        if (number < 1 || number > 255)
            return false;
        color.setColorIndex(std::uint16_t(number));
        return true;
    }
    int components[3] = {};
    std::size_t from = 0;
    for (int i = 0; i < 3; ++i) {
        const std::size_t comma = i < 2 ? plain.find(',', from) : plain.size();
        if (comma == std::string::npos || !parseWhole(std::string_view(plain).substr(from, comma - from), components[i])
            || components[i] < 0 || components[i] > 255)
            return false;
        from = comma + 1;
    }
    color.setRGB(std::uint8_t(components[0]), std::uint8_t(components[1]), std::uint8_t(components[2]));
    return true;
}

/// Asks until a colour comes that can be read; false when cancelled.
bool askColor(const ZvString &text, ZvCmColor &color)
{
    ZvString answer;
    if (zvedGetString(zvcorePrompt(ZvEdPrompt::kString, text), answer) != ZvEdInput::kNormal)
        return false;
    if (parseColor(answer, color))
        return true;
    zvedFailCommand(ZvString(L"Not a valid colour: ") + answer);
    return false;
}

/// "ByLayer", "ByBlock", "Default", or millimetres.
bool parseLineWeight(const ZvString &text, ZvDb::LineWeight &weight)
{
    const struct
    {
        const wchar_t *name;
        ZvDb::LineWeight weight;
    } kNames[] = {{L"ByLayer", ZvDb::kLnWtByLayer}, {L"ByBlock", ZvDb::kLnWtByBlock}, {L"Default", ZvDb::kLnWtByLwDefault}};
    for (const auto &row : kNames) {
        if (text.compareNoCase(row.name) == 0) {
            weight = row.weight;
            return true;
        }
    }
    static const int kWeights[] = {0,  5,  9,  13, 15, 18, 20,  25,  30,  35,  40,  50, 53,
                                   60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
    const std::string plain = text.toStdString();
    double millimetres = 0.0;
    const auto result = std::from_chars(plain.data(), plain.data() + plain.size(), millimetres);
    if (result.ec != std::errc() || result.ptr != plain.data() + plain.size())
        return false;
    for (const int known : kWeights) {
        if (std::fabs(millimetres * 100.0 - known) < 0.5) {
            weight = ZvDb::LineWeight(known);
            return true;
        }
    }
    return false;
}

bool askLineWeight(const ZvString &text, ZvDb::LineWeight &weight)
{
    ZvString answer;
    if (zvedGetString(zvcorePrompt(ZvEdPrompt::kString, text), answer) != ZvEdInput::kNormal)
        return false;
    if (parseLineWeight(answer, weight))
        return true;
    zvedFailCommand(ZvString(L"Not a valid line weight: ") + answer);
    return false;
}

template<class Table, class Record>
bool makeRecord(const ZvString &name, ZvDbObjectId &id)
{
    Table *table = nullptr;
    if (zvcoreCurrentDatabase()->getSymbolTable(table, ZvDb::kForWrite) != Zv::eOk)
        return false;
    auto *record = new Record;
    const bool added = record->setName(name) == Zv::eOk && table->add(record, id) == Zv::eOk;
    if (added)
        record->close();
    else
        delete record;
    table->close();
    if (!added)
        zvedFailCommand(ZvString(L"Not a valid name, or one in use: ") + name);
    return added;
}

template <class Table, class Record> void renameRecord(const ZvString &prompt, const ZvString &kind)
{
    ZvDbObjectId id;
    ZvString name;
    if (!zvcoreAskRecord<Table>(prompt, kind, id) || !zvcoreAskName(L"New name:", name))
        return;
    const ZvDbObjectPointer<Record> record(id, ZvDb::kForWrite);
    if (record && record->setName(name) != Zv::eOk)
        zvedFailCommand(ZvString(L"Not a valid name, or one in use: ") + name);
}

/// Only what nothing refers to: the drawing would be left with references to nothing.
template <class Table, class Record> void deleteRecord(const ZvString &prompt, const ZvString &kind)
{
    ZvDbObjectId id;
    if (!zvcoreAskRecord<Table>(prompt, kind, id))
        return;
    const bool isInUse = zvdbIsReferenced(id);
    const ZvDbObjectPointer<Record> record(id, ZvDb::kForWrite);
    if (record && (isInUse || record->erase() != Zv::eOk))
        zvedFailCommand(ZvString(L"The ") + kind + ZvString(L" is in use: ") + record->name());
}

// ---- layers

/// Changes the layer of a name that is asked for.
template<class Change>
void changeLayer(Change change)
{
    ZvDbObjectId id;
    if (!zvcoreAskRecord<ZvDbLayerTable>(L"Layer name:", L"layer", id))
        return;
    if (ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForWrite); layer)
        change(*layer);
}

void setCurrentLayer(ZvDbDatabase &database, ZvDbObjectId id)
{
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
    const bool refused = layer && (layer->isFrozen() || layer->isDependent());
    layer.close();
    if (refused)
        zvedFailCommand(L"A frozen layer, or one of an external reference, cannot be made current.");
    else
        database.setClayer(id);
}

void layerOption(ZvDbDatabase &database, const ZvString &option)
{
    if (option == L"Set") {
        ZvDbObjectId id;
        if (zvcoreAskRecord<ZvDbLayerTable>(L"Layer name:", L"layer", id))
            setCurrentLayer(database, id);
    } else if (option == L"New" || option == L"Make") {
        ZvString name;
        ZvDbObjectId id;
        if (!zvcoreAskName(L"Name of the new layer:", name))
            return;
        if (option == L"Make")
            id = zvcoreFindRecord<ZvDbLayerTable>(name);
        if (id.isNull() && !makeRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(name, id))
            return;
        if (option == L"Make")
            setCurrentLayer(database, id);
    } else if (option == L"ON" || option == L"OFF") {
        changeLayer([&](ZvDbLayerTableRecord &layer) { layer.setIsOff(option == L"OFF"); });
    } else if (option == L"Freeze" || option == L"Thaw") {
        changeLayer([&](ZvDbLayerTableRecord &layer) {
            if (option == L"Freeze" && layer.objectId() == database.clayer())
                zvedFailCommand(L"The current layer cannot be frozen.");
            else
                layer.setIsFrozen(option == L"Freeze");
        });
    } else if (option == L"LOck" || option == L"Unlock") {
        changeLayer([&](ZvDbLayerTableRecord &layer) { layer.setIsLocked(option == L"LOck"); });
    } else if (option == L"Color") {
        ZvCmColor color;
        if (askColor(L"Colour:", color))
            changeLayer([&](ZvDbLayerTableRecord &layer) { layer.setColor(color); });
    } else if (option == L"Ltype") {
        ZvString name;
        if (zvedGetString(zvcorePrompt(ZvEdPrompt::kString, L"Line type:"), name) != ZvEdInput::kNormal)
            return;
        const ZvDbObjectId linetype = zvcoreFindRecord<ZvDbLinetypeTable>(name);
        if (linetype.isNull())
            zvedFailCommand(ZvString(L"There is no line type named ") + name);
        else
            changeLayer([&](ZvDbLayerTableRecord &layer) { layer.setLinetypeObjectId(linetype); });
    } else if (option == L"LWeight") {
        ZvDb::LineWeight weight = ZvDb::kLnWtByLwDefault;
        if (askLineWeight(L"Line weight:", weight))
            changeLayer([&](ZvDbLayerTableRecord &layer) { layer.setLineWeight(weight); });
    } else if (option == L"Rename") {
        renameRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(L"Layer name:", L"layer");
    }
}

/// One option with its name, which runs to the end of the line: "-LAYER OFF walls".
void layer()
{
    ZvEdPrompt prompt = zvcorePrompt(
        ZvEdPrompt::kKeyword, L"Layer [Make/Set/New/Rename/ON/OFF/Color/Ltype/LWeight/Freeze/Thaw/LOck/Unlock]:",
        L"Make Set New Rename ON OFF Color Ltype LWeight Freeze Thaw LOck Unlock");
    prompt.allowNone = true;
    ZvString option;
    if (zvedGetKeyword(prompt, option) == ZvEdInput::kKeyword)
        layerOption(*zvcoreCurrentDatabase(), option);
}

// ---- current values

void color()
{
    ZvCmColor value;
    if (askColor(L"Colour (ByLayer, ByBlock, 1-255, name, or r,g,b):", value))
        zvcoreCurrentDatabase()->setCecolor(value);
}

void lineWeight()
{
    ZvDb::LineWeight weight = ZvDb::kLnWtByLayer;
    if (askLineWeight(L"Line weight (ByLayer, ByBlock, Default, or millimetres):", weight))
        zvcoreCurrentDatabase()->setCelweight(weight);
}

/// Sets the current text style, makes one, and looks after the others.
void textStyle()
{
    ZvEdPrompt prompt
        = zvcorePrompt(ZvEdPrompt::kKeyword, L"Text style [Set/New/Rename/Delete]:", L"Set New Rename Delete");
    ZvString option;
    if (zvedGetKeyword(prompt, option) != ZvEdInput::kKeyword)
        return;
    ZvDbDatabase *database = zvcoreCurrentDatabase();
    ZvDbObjectId id;
    if (option == L"Set") {
        if (zvcoreAskRecord<ZvDbTextStyleTable>(L"Style name:", L"text style", id))
            database->setTextstyle(id);
        return;
    }
    if (option == L"Rename") {
        renameRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(L"Style name:", L"text style");
        return;
    }
    if (option == L"Delete") {
        deleteRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(L"Style name:", L"text style");
        return;
    }
    ZvString name;
    if (zvcoreAskName(L"Name of the new style:", name) && makeRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(name, id))
        database->setTextstyle(id);
}

void dimensionStyle()
{
    ZvString option;
    if (zvedGetKeyword(
            zvcorePrompt(ZvEdPrompt::kKeyword, L"Dimension style [Set/Rename/Delete]:", L"Set Rename Delete"), option)
        != ZvEdInput::kKeyword)
        return;
    if (option == L"Rename") {
        renameRecord<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>(L"Style name:", L"dimension style");
        return;
    }
    if (option == L"Delete") {
        deleteRecord<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>(L"Style name:", L"dimension style");
        return;
    }
    ZvDbObjectId id;
    if (!zvcoreAskRecord<ZvDbDimStyleTable>(L"Style name:", L"dimension style", id))
        return;
    zvcoreCurrentDatabase()->setDimstyle(id);
    zvcoreCurrentDatabase()->setDimstyleData(id);
}

// ---- variables

void setVariable()
{
    ZvString name;
    if (zvedGetString(zvcorePrompt(ZvEdPrompt::kString, L"Variable name or ?:"), name) != ZvEdInput::kNormal)
        return;
    if (name == L"?") {
        std::vector<ZvEdVarInfo> variables;
        zvedVarList(variables);
        for (const ZvEdVarInfo &variable : variables)
            zvedPrint(variable.name + ZvString(L" = ") + zvedVarText(variable.name)
                      + ZvString(variable.readOnly ? L" (read only)" : L""));
        return;
    }
    ZvResBuf *value = zvutNewRb(ZvRes::kNone);
    const bool known = zvedGetVar(name, value) == ZvRes::kNormal;
    zvutRelRb(value);
    if (!known) {
        zvedFailCommand(ZvString(L"There is no variable named ") + name);
        return;
    }
    ZvEdPrompt prompt = zvcorePrompt(ZvEdPrompt::kStringWithBlanks,
                                     ZvString(L"New value of ") + name + ZvString(L" <") + zvedVarText(name) + ZvString(L">:"));
    prompt.allowNone = true;
    ZvString text;
    if (zvedGetString(prompt, text) == ZvEdInput::kNormal && zvedSetVarText(name, text.trimmed()) != ZvRes::kNormal)
        zvedFailCommand(ZvString(L"Not a valid value, or a variable that cannot be set: ") + text);
}

constexpr int kFlags = ZvEdCommand::kUsePickSet | ZvEdCommand::kKeepPickSet;
const ZvBuiltInCommand kCommands[] = {
    {"-LAYER", kFlags, layer},       {"LAYER", kFlags, layer},
    {"-COLOR", kFlags, color},       {"COLOR", kFlags, color},
    {"-LWEIGHT", kFlags, lineWeight}, {"LWEIGHT", kFlags, lineWeight},
    {"-STYLE", kFlags, textStyle},   {"STYLE", kFlags, textStyle},
    {"-DIMSTYLE", kFlags, dimensionStyle}, {"DIMSTYLE", kFlags, dimensionStyle},
    {"SETVAR", kFlags | ZvEdCommand::kTransparent, setVariable},
};

}

ZvBuiltInCommands zvcoreSettingCommands()
{
    return kCommands;
}
