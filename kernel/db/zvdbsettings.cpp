// SPDX-License-Identifier: MIT
#include "db/zvdbdatabase.h"

#include "zvdbdatabase_p.h"
#include "zvdbdimvars_p.h"

namespace {

const ZvDbVariableNumbers &numbers()
{
    return zvdbVariableNumbers();
}

} // namespace

ZvCmColor ZvDbDatabase::cecolor() const
{
    return d->variable(numbers().cecolor).color;
}

Zv::ErrorStatus ZvDbDatabase::setCecolor(const ZvCmColor &color)
{
    ZvDbVariableValue value = d->variable(numbers().cecolor);
    value.color = color;
    d->setVariable(numbers().cecolor, value);
    return Zv::eOk;
}

ZvDbObjectId ZvDbDatabase::celtype() const
{
    return d->variable(numbers().celtype).id;
}

Zv::ErrorStatus ZvDbDatabase::setCeltype(ZvDbObjectId id)
{
    return setIdVariable(numbers().celtype, id);
}

ZvDb::LineWeight ZvDbDatabase::celweight() const
{
    return ZvDb::LineWeight(d->variable(numbers().celweight).integer);
}

Zv::ErrorStatus ZvDbDatabase::setCelweight(ZvDb::LineWeight weight)
{
    ZvDbVariableValue value = d->variable(numbers().celweight);
    value.integer = weight;
    d->setVariable(numbers().celweight, value);
    return Zv::eOk;
}

ZvDbObjectId ZvDbDatabase::clayer() const
{
    return d->variable(numbers().clayer).id;
}

Zv::ErrorStatus ZvDbDatabase::setClayer(ZvDbObjectId id)
{
    return setIdVariable(numbers().clayer, id);
}

ZvDbObjectId ZvDbDatabase::cmaterial() const
{
    return d->variable(numbers().cmaterial).id;
}

Zv::ErrorStatus ZvDbDatabase::setCmaterial(ZvDbObjectId id)
{
    return setIdVariable(numbers().cmaterial, id);
}

ZvDbObjectId ZvDbDatabase::textstyle() const
{
    return d->variable(numbers().textstyle).id;
}

Zv::ErrorStatus ZvDbDatabase::setTextstyle(ZvDbObjectId id)
{
    return setIdVariable(numbers().textstyle, id);
}

ZvDbObjectId ZvDbDatabase::dimstyle() const
{
    return d->variable(numbers().dimstyle).id;
}

Zv::ErrorStatus ZvDbDatabase::setDimstyle(ZvDbObjectId id)
{
    return setIdVariable(numbers().dimstyle, id);
}

Zv::ErrorStatus ZvDbDatabase::setDimstyleData(ZvDbObjectId id)
{
    if (!d->isUsable(id, ZvDbDimStyleTableRecord::desc()))
        return Zv::eInvalidInput;
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> style(id, ZvDb::kForRead);
    if (!style)
        return style.openStatus();
    // All in one step, told variable by variable once all are set.
    const ZvDbDatabasePtr hold(this);
    std::vector<int> changed;
    int count = 0;
    const ZvDbDimVariable *variables = zvdbDimVariables(count);
    for (int i = 0; i < count; ++i) {
        const ZvDbDimVariable &variable = variables[i];
        const int number = zvdbVariableNumber(variable.name);
        if (number < 0)
            continue;
        ZvDbVariableValue value = d->variable(number);
        switch (variable.type) {
        case ZvDbDimVariable::kReal:
            value.real[0] = style->real(variable.name);
            break;
        case ZvDbDimVariable::kInteger:
            value.integer = style->integer(variable.name);
            break;
        case ZvDbDimVariable::kText:
            value.text = style->textValue(variable.name);
            break;
        case ZvDbDimVariable::kId:
            // The text style is kept as an id, arrow blocks and line types by name.
            if (zvdbVariable(number).type == ZvDbVariable::kNameId) {
                if (!style->idValue(variable.name).isNull())
                    value.id = style->idValue(variable.name);
            } else {
                value.text = d->nameOf(style->idValue(variable.name));
            }
            break;
        }
        if (d->storeVariable(number, value))
            changed.push_back(number);
    }
    style.close();
    d->undo.endImplicitStep();
    for (int number : changed)
        d->notifyVariable(zvdbVariableNotice(number));
    return Zv::eOk;
}

ZvDbObjectId ZvDbDatabase::mleaderstyle() const
{
    return d->variable(numbers().cmleaderstyle).id;
}

Zv::ErrorStatus ZvDbDatabase::setMleaderstyle(ZvDbObjectId id)
{
    return setIdVariable(numbers().cmleaderstyle, id);
}

ZvDbObjectId ZvDbDatabase::tablestyle() const
{
    return d->variable(numbers().ctablestyle).id;
}

Zv::ErrorStatus ZvDbDatabase::setTablestyle(ZvDbObjectId id)
{
    return setIdVariable(numbers().ctablestyle, id);
}

ZvString ZvDbDatabase::cplotstyle() const
{
    switch (d->variable(numbers().cpsntype).integer) {
    case ZvDb::kPlotStyleByLayer:
        return L"ByLayer";
    case ZvDb::kPlotStyleByBlock:
        return L"ByBlock";
    case ZvDb::kPlotStyleById:
        return d->nameOf(d->variable(numbers().cpsnid).id);
    default:
        return L"Normal";
    }
}

Zv::ErrorStatus ZvDbDatabase::setCplotstyle(const ZvString &name)
{
    ZvDbVariableValue type = d->variable(numbers().cpsntype);
    ZvDbVariableValue id = d->variable(numbers().cpsnid);
    id.id = ZvDbObjectId();
    if (name.compareNoCase(L"ByLayer") == 0) {
        type.integer = ZvDb::kPlotStyleByLayer;
    } else if (name.compareNoCase(L"ByBlock") == 0) {
        type.integer = ZvDb::kPlotStyleByBlock;
    } else if (name.compareNoCase(L"Normal") == 0) {
        type.integer = ZvDb::kPlotStyleNormal;
    } else {
        id.id = d->idOfVariable(numbers().cpsnid, name);
        if (id.id.isNull())
            return Zv::eKeyNotFound;
        type.integer = ZvDb::kPlotStyleById;
    }
    const ZvDbDatabasePtr hold(this);
    const bool typeChanged = d->storeVariable(numbers().cpsntype, type);
    const bool idChanged = d->storeVariable(numbers().cpsnid, id);
    d->undo.endImplicitStep();
    if (typeChanged || idChanged)
        d->notifyVariable("CPLOTSTYLE");
    return Zv::eOk;
}

double ZvDbDatabase::celtscale() const
{
    return d->variable(numbers().celtscale).real[0];
}

Zv::ErrorStatus ZvDbDatabase::setCeltscale(double scale)
{
    return setScaleVariable(numbers().celtscale, scale);
}

double ZvDbDatabase::ltscale() const
{
    return d->variable(numbers().ltscale).real[0];
}

Zv::ErrorStatus ZvDbDatabase::setLtscale(double scale)
{
    return setScaleVariable(numbers().ltscale, scale);
}

Zv::ErrorStatus ZvDbDatabase::setScaleVariable(int number, double scale)
{
    if (!(scale > 0.0) || scale > 1e100)
        return Zv::eInvalidInput;
    ZvDbVariableValue value = d->variable(number);
    value.real[0] = scale;
    d->setVariable(number, value);
    return Zv::eOk;
}

bool ZvDbDatabase::lineWeightDisplay() const
{
    return d->variable(numbers().lwdisplay).integer != 0;
}

Zv::ErrorStatus ZvDbDatabase::setLineWeightDisplay(bool on)
{
    ZvDbVariableValue value = d->variable(numbers().lwdisplay);
    value.integer = on;
    d->setVariable(numbers().lwdisplay, value);
    return Zv::eOk;
}

bool ZvDbDatabase::plotStyleMode() const
{
    return d->variable(numbers().pstylemode).integer != 0;
}

bool ZvDbDatabase::tilemode() const
{
    return d->variable(numbers().tilemode).integer != 0;
}

void ZvDbDatabasePrivate::settleSettings()
{
    const ZvDbVariableNumbers &n = numbers();
    // The variable, the entry it falls back on, and whether any entry is better than none.
    const struct
    {
        int number;
        const wchar_t *standard;
        ZvDbTableKind table;
    } inTables[] = {
        {n.clayer, L"0", kLayerTable},
        {n.celtype, L"ByLayer", kLinetypeTable},
        {n.textstyle, L"Standard", kTextStyleTable},
        {n.dimstyle, L"Standard", kDimStyleTable},
    };
    for (const auto &row : inTables) {
        ZvDbObjectId &id = variables[std::size_t(row.number)].id;
        if (owns(id) && !id.isErased())
            continue;
        id = idOfVariable(row.number, row.standard);
        const ZvDbSymbolTable *records = table(row.table);
        if (id.isNull() && records && records->count() > 0) {
            ZvDbSymbolTableIterator *iterator = nullptr;
            records->newIterator(iterator);
            id = iterator->getRecordId();
            delete iterator;
        }
    }
    const int inDictionaries[][2] = {{n.cmaterial, 0}, {n.cmleaderstyle, 1}, {n.ctablestyle, 1}};
    for (const auto &row : inDictionaries) {
        ZvDbObjectId &id = variables[std::size_t(row[0])].id;
        if (owns(id) && !id.isErased())
            continue;
        id = idOfVariable(row[0], row[1] ? L"Standard" : L"ByLayer");
        if (!id.isNull() || !row[1])
            continue;
        const ZvDbObjectId names = dictionaryId(zvdbVariable(row[0]).text, false);
        const ZvDbDictionary *dictionary
            = names.isNull() ? nullptr : static_cast<ZvDbDictionary *>(objectAt(names.index()));
        if (dictionary) {
            const std::unique_ptr<ZvDbDictionaryIterator> first(dictionary->newIterator());
            id = first->objectId();
        }
    }
    variables[std::size_t(n.ctab)].id = paperLayoutAtHand();
}
