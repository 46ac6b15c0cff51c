// SPDX-License-Identifier: MIT
#include "zvdbdatabase_p.h"

#include <cmath>
#include <cstdio>
#include <limits>

namespace {

bool isId(const ZvDbVariable &variable)
{
    return variable.type == ZvDbVariable::kNameId || variable.type == ZvDbVariable::kHandleId
        || variable.type == ZvDbVariable::kObjectId;
}

ZvString colorText(const ZvCmColor &color)
{
    if (color.isByLayer())
        return L"BYLAYER";
    if (color.isByBlock())
        return L"BYBLOCK";
    if (!color.bookName().isEmpty())
        return color.bookName();
    char text[32];
    if (color.isByColor())
        std::snprintf(text, sizeof(text), "RGB:%d,%d,%d", color.red(), color.green(), color.blue());
    else
        std::snprintf(text, sizeof(text), "%d", color.colorIndex());
    return text;
}

bool parseColor(const ZvString &text, ZvCmColor &color)
{
    if (text.compareNoCase(L"BYLAYER") == 0) {
        color.setColorIndex(ZvCm::kACIbyLayer);
        return true;
    }
    if (text.compareNoCase(L"BYBLOCK") == 0) {
        color.setColorIndex(ZvCm::kACIbyBlock);
        return true;
    }
    const std::string plain = text.toUpper().toStdString();
    int red = 0;
    int green = 0;
    int blue = 0;
    char rest = 0;
    if (std::sscanf(plain.c_str(), "RGB:%d,%d,%d%c", &red, &green, &blue, &rest) == 3) {
        for (int part : {red, green, blue}) {
            if (part < 0 || part > 255)
                return false;
        }
        color.setRGB(std::uint8_t(red), std::uint8_t(green), std::uint8_t(blue));
        return true;
    }
    int index = 0;
    if (std::sscanf(plain.c_str(), "%d%c", &index, &rest) != 1 || index < 0 || index > 256)
        return false;
    color.setColorIndex(std::uint16_t(index));
    return true;
}

bool isText(const ZvResBuf &value)
{
    return value.restype == ZvRes::kText;
}

bool isNumber(const ZvResBuf &value)
{
    return value.restype == ZvRes::kReal || value.restype == ZvRes::kShort || value.restype == ZvRes::kLong;
}

bool isPoint(const ZvResBuf &value)
{
    return value.restype == ZvRes::kPoint2d || value.restype == ZvRes::kPoint3d;
}

void setText(ZvResBuf &value, const ZvString &text)
{
    value.restype = ZvRes::kText;
    value.resval.rstring = zvutNewString(text.wstr());
}

/// A number for an integer variable; false where it does not fit.
bool toInteger(const ZvDbVariable &variable, const ZvResBuf &value, long long &result)
{
    if (!isNumber(value))
        return false;
    const double number = value.number();
    const bool isShort = variable.type == ZvDbVariable::kShort;
    const double low = isShort ? double(std::numeric_limits<short>::min()) : double(std::numeric_limits<int>::min());
    const double high = isShort ? double(std::numeric_limits<short>::max()) : double(std::numeric_limits<int>::max());
    if (!(number >= low && number <= high) || number != std::floor(number))
        return false;
    // A switch is on or off.
    if (variable.code == 290 && number != 0.0 && number != 1.0)
        return false;
    result = static_cast<long long>(number);
    return true;
}

} // namespace

// ---- the values

void ZvDbDatabasePrivate::setDefaultVariables(bool metric)
{
    variables.assign(std::size_t(zvdbVariableCount()), ZvDbVariableValue());
    variableInFile.assign(variables.size(), false);
    for (int i = 0; i < zvdbVariableCount(); ++i) {
        const ZvDbVariable &variable = zvdbVariable(i);
        ZvDbVariableValue &value = variables[std::size_t(i)];
        const double number = metric ? variable.metric : variable.imperial;
        value.integer = static_cast<long long>(std::fabs(number) < 1e15 ? number : 0.0);
        for (double &coordinate : value.real)
            coordinate = number;
        if (variable.type == ZvDbVariable::kText && variable.text)
            value.text = variable.text;
    }
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    for (int space = 0; space < 2; ++space) {
        variables[std::size_t(n.ucsxdir[space])].real[0] = 1.0;
        variables[std::size_t(n.ucsydir[space])].real[1] = 1.0;
        double *limits = variables[std::size_t(n.limmax[space])].real;
        limits[0] = metric ? 420.0 : 12.0;
        limits[1] = metric ? 297.0 : 9.0;
    }
}

bool ZvDbDatabasePrivate::storeVariable(int number, const ZvDbVariableValue &value)
{
    ZvDbVariableValue &now = variables[std::size_t(number)];
    if (now == value)
        return false;
    auto payload = std::make_unique<ZvDbVariablePayload>();
    payload->value = now;
    payload->isInFile = variableInFile[std::size_t(number)];
    ZvDbChange change;
    change.kind = ZvDbChange::kVariable;
    change.index = std::uint32_t(number);
    change.payload = std::move(payload);
    undo.note(std::move(change));
    now = value;
    variableInFile[std::size_t(number)] = true;
    touchDatabase();
    return true;
}

void ZvDbDatabasePrivate::setVariable(int number, const ZvDbVariableValue &value)
{
    if (!storeVariable(number, value))
        return;
    const ZvDbDatabasePtr hold(&q);
    undo.endImplicitStep();
    notifyVariable(zvdbVariableNotice(number));
}

ZvDbObjectId ZvDbDatabasePrivate::idOfVariable(int number, const ZvString &name)
{
    const ZvDbVariable &variable = zvdbVariable(number);
    if (variable.type == ZvDbVariable::kNameId)
        return recordId(variable.text, name);
    const ZvDbObjectId id = dictionaryId(variable.text, false);
    const ZvDbDictionary *names = id.isNull() ? nullptr : zvrxCast<ZvDbDictionary>(objectAt(id.index()));
    return names ? names->getIdAt(name) : ZvDbObjectId();
}

// ---- by name, for everybody

Zv::ErrorStatus ZvDbDatabase::getVariable(const ZvString &name, ZvResBuf &value) const
{
    const int number = zvdbVariableNumber(name);
    if (number < 0)
        return Zv::eKeyNotFound;
    const ZvDbVariable &variable = zvdbVariable(number);
    const ZvDbVariableValue &kept = d->variable(number);
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    if (number == n.cplotstyle) {
        setText(value, cplotstyle());
        return Zv::eOk;
    }
    if (number == n.ctab) {
        setText(value, currentLayoutName());
        return Zv::eOk;
    }
    if (number == n.handseed) {
        char text[32];
        std::snprintf(text, sizeof(text), "%llX", static_cast<unsigned long long>(d->handleSeed()));
        setText(value, text);
        return Zv::eOk;
    }
    // Callers ask for the orthographic numbers as 32-bit integers, although files have 16 bits for them.
    const bool isLong
        = variable.type == ZvDbVariable::kLong || number == n.ucsorthoview[0] || number == n.ucsorthoview[1];
    switch (variable.type) {
    case ZvDbVariable::kShort:
    case ZvDbVariable::kLong:
        value.restype = isLong ? ZvRes::kLong : ZvRes::kShort;
        if (isLong)
            value.resval.rlong = int(kept.integer);
        else
            value.resval.rint = short(kept.integer);
        break;
    case ZvDbVariable::kReal:
        value.restype = ZvRes::kReal;
        value.resval.rreal = kept.real[0];
        break;
    case ZvDbVariable::kText:
        setText(value, kept.text);
        break;
    case ZvDbVariable::kPoint2d:
    case ZvDbVariable::kPoint3d:
        value.restype = variable.type == ZvDbVariable::kPoint2d ? ZvRes::kPoint2d : ZvRes::kPoint3d;
        for (int i = 0; i < 3; ++i)
            value.resval.rpoint[i] = kept.real[i];
        if (variable.type == ZvDbVariable::kPoint2d)
            value.resval.rpoint[2] = 0.0;
        break;
    case ZvDbVariable::kColor:
        setText(value, colorText(kept.color));
        break;
    case ZvDbVariable::kNameId:
    case ZvDbVariable::kHandleId:
        setText(value, d->nameOf(kept.id));
        break;
    case ZvDbVariable::kObjectId:
        value.restype = ZvRes::kObjectId;
        value.resval.rid = kept.id.asInt64();
        break;
    }
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDatabase::setVariable(const ZvString &name, const ZvResBuf &value)
{
    const int number = zvdbVariableNumber(name);
    if (number < 0)
        return Zv::eKeyNotFound;
    const ZvDbVariable &variable = zvdbVariable(number);
    if (variable.readOnly)
        return Zv::eInvalidInput;
    ZvDbVariableValue changed = d->variable(number);
    if (isId(variable)) {
        changed.id = isText(value) ? d->idOfVariable(number, value.text()) : value.getObjectId();
        return setIdVariable(number, changed.id);
    }
    const ZvDbVariableNumbers &n = zvdbVariableNumbers();
    if (number == n.cplotstyle)
        return isText(value) ? setCplotstyle(value.text()) : Zv::eInvalidInput;
    if (number == n.ctab)
        return isText(value) ? setCurrentLayout(value.text()) : Zv::eInvalidInput;
    if (number == n.cvport)
        return Zv::eInvalidInput; // viewports become current by setCurrentViewport()

    switch (variable.type) {
    case ZvDbVariable::kShort:
    case ZvDbVariable::kLong:
        if (!toInteger(variable, value, changed.integer))
            return Zv::eInvalidInput;
        break;
    case ZvDbVariable::kReal:
        if (!isNumber(value) || !std::isfinite(value.number()))
            return Zv::eInvalidInput;
        changed.real[0] = value.number();
        break;
    case ZvDbVariable::kPoint2d:
    case ZvDbVariable::kPoint3d:
        if (!isPoint(value))
            return Zv::eInvalidInput;
        for (int i = 0; i < (variable.type == ZvDbVariable::kPoint2d ? 2 : 3); ++i)
            changed.real[i] = value.resval.rpoint[i];
        break;
    case ZvDbVariable::kColor:
        if (!isText(value) || !parseColor(value.text(), changed.color))
            return Zv::eInvalidInput;
        break;
    default:
        if (!isText(value))
            return Zv::eInvalidInput;
        changed.text = value.text();
        break;
    }
    if (number == n.tilemode)
        return changed.integer == 0 || changed.integer == 1 ? setTilemode(changed.integer == 1) : Zv::eInvalidInput;
    if ((number == n.celtscale || number == n.ltscale) && !(changed.real[0] > 0.0))
        return Zv::eInvalidInput;
    d->setVariable(number, changed);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDatabase::setIdVariable(int number, ZvDbObjectId id)
{
    static const struct
    {
        const char *names; // as ZvDbVariable::text
        const ZvRxClass *cls;
    } kinds[] = {
        {"LAYER", ZvDbLayerTableRecord::desc()},
        {"LTYPE", ZvDbLinetypeTableRecord::desc()},
        {"STYLE", ZvDbTextStyleTableRecord::desc()},
        {"DIMSTYLE", ZvDbDimStyleTableRecord::desc()},
        {"UCS", ZvDbUCSTableRecord::desc()},
        {"ACAD_MATERIAL", ZvDbMaterial::desc()},
        {"ACAD_MLEADERSTYLE", ZvDbMLeaderStyle::desc()},
        {"ACAD_TABLESTYLE", ZvDbTableStyle::desc()},
        {"ACAD_PLOTSTYLENAME", ZvDbPlaceHolder::desc()},
    };
    if (id.isNull())
        return Zv::eNullObjectId;
    for (const auto &kind : kinds) {
        if (std::string_view(kind.names) != zvdbVariable(number).text)
            continue;
        if (!d->isUsable(id, kind.cls))
            return Zv::eInvalidInput;
        ZvDbVariableValue value = d->variable(number);
        value.id = id;
        d->setVariable(number, value);
        return Zv::eOk;
    }
    return Zv::eInvalidInput;
}

void ZvDbDatabase::variableNames(ZvArray<ZvString> &names) const
{
    names.clear();
    for (int i = 0; i < zvdbVariableCount(); ++i)
        names.append(zvdbVariable(i).name);
}

// ---- variables that stand in a dictionary

namespace {

const char variableDictionary[] = "AcDbVariableDictionary";

} // namespace

void ZvDbDatabasePrivate::readDictionaryVariables()
{
    const ZvDbObjectId id = dictionaryId(variableDictionary, false);
    const ZvDbDictionary *dictionary = id.isNull() ? nullptr : zvrxCast<ZvDbDictionary>(objectAt(id.index()));
    if (!dictionary)
        return;
    for (int i = 0; i < zvdbVariableCount(); ++i) {
        const ZvDbVariable &variable = zvdbVariable(i);
        if (variable.place != ZvDbVariable::kDictionary)
            continue;
        const ZvDbObjectId entry = dictionary->getIdAt(variable.name);
        const ZvDbDictionaryVar *kept = entry.isNull() ? nullptr : zvrxCast<ZvDbDictionaryVar>(objectAt(entry.index()));
        if (!kept)
            continue;
        ZvDbVariableValue &value = variables[std::size_t(i)];
        if (variable.type == ZvDbVariable::kObjectId)
            value.id = idOfVariable(i, kept->value());
        else
            value.text = kept->value();
        // What names nothing stays as it is until the variable is set.
        variableInFile[std::size_t(i)] = variable.type != ZvDbVariable::kObjectId || !value.id.isNull();
    }
}

void ZvDbDatabasePrivate::writeDictionaryVariables()
{
    ++undo.suspended;
    for (int i = 0; i < zvdbVariableCount(); ++i) {
        if (zvdbVariable(i).place != ZvDbVariable::kDictionary)
            continue;
        if (variableInFile[std::size_t(i)])
            writeDictionaryVariable(i);
        else
            dropDictionaryVariable(i);
    }
    --undo.suspended;
}

void ZvDbDatabasePrivate::writeDictionaryVariable(int number)
{
    const ZvDbVariable &variable = zvdbVariable(number);
    const ZvDbVariableValue &value = variables[std::size_t(number)];
    const bool isId = variable.type == ZvDbVariable::kObjectId;
    const ZvString text = isId ? nameOf(value.id) : value.text;
    const ZvDbObjectId id = dictionaryId(variableDictionary, true);
    ZvDbObjectPointer<ZvDbDictionary> dictionary(id, ZvDb::kForRead);
    const ZvDbObjectId entry = dictionary ? dictionary->getIdAt(variable.name) : ZvDbObjectId();
    dictionary.close();
    ZvDbObjectPointer<ZvDbDictionaryVar> kept(entry, ZvDb::kForWrite);
    if (kept) {
        // Another spelling of the name it has is no change.
        const bool same = isId ? idOfVariable(number, kept->value()) == value.id : kept->value() == text;
        if (!same)
            kept->setValue(text);
    } else if (ZvDbObjectPointer<ZvDbDictionary> writer{id, ZvDb::kForWrite}) {
        ZvDbDictionaryVar *added = new ZvDbDictionaryVar;
        added->setValue(text);
        ZvDbObjectId ignored;
        if (writer->setAt(variable.name, added, ignored) == Zv::eOk)
            added->close();
        else
            delete added;
    }
}

void ZvDbDatabasePrivate::dropDictionaryVariable(int number)
{
    const auto dropIfAdded = [this](ZvDbObjectId id) {
        if (id.isNull() || stubs[id.index()].record != 0)
            return; // the file's own stays
        ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForWrite);
        if (object)
            object->erase();
    };
    const ZvDbObjectId id = dictionaryId(variableDictionary, false);
    const ZvDbDictionary *dictionary = id.isNull() ? nullptr : static_cast<ZvDbDictionary *>(objectAt(id.index()));
    if (!dictionary)
        return;
    dropIfAdded(dictionary->getIdAt(zvdbVariable(number).name));
    bool isEmpty = true;
    const std::unique_ptr<ZvDbDictionaryIterator> entries(dictionary->newIterator());
    for (; !entries->done(); entries->next())
        isEmpty = isEmpty && entries->objectId().isErased();
    if (isEmpty)
        dropIfAdded(id);
}
