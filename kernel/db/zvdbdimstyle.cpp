// SPDX-License-Identifier: MIT
#include "db/zvdbrecords.h"

#include "zvdbdatabase_p.h"
#include "zvdbdimvars_p.h"

#include <limits>

ZVRX_DEFINE_MEMBERS(ZvDbDimStyleTableRecord, ZvDbSymbolTableRecord)

namespace {

const ZvDbDimVariable dimVariables[] = {
    {"DIMPOST", ZvDbDimVariable::kText, 3, 0, 0},
    {"DIMAPOST", ZvDbDimVariable::kText, 4, 0, 0},
    {"DIMSCALE", ZvDbDimVariable::kReal, 40, 1, 1},
    {"DIMASZ", ZvDbDimVariable::kReal, 41, 0.18, 2.5},
    {"DIMEXO", ZvDbDimVariable::kReal, 42, 0.0625, 0.625},
    {"DIMDLI", ZvDbDimVariable::kReal, 43, 0.38, 3.75},
    {"DIMEXE", ZvDbDimVariable::kReal, 44, 0.18, 1.25},
    {"DIMRND", ZvDbDimVariable::kReal, 45, 0, 0},
    {"DIMDLE", ZvDbDimVariable::kReal, 46, 0, 0},
    {"DIMTP", ZvDbDimVariable::kReal, 47, 0, 0},
    {"DIMTM", ZvDbDimVariable::kReal, 48, 0, 0},
    {"DIMFXL", ZvDbDimVariable::kReal, 49, 1, 1},
    {"DIMJOGANG", ZvDbDimVariable::kReal, 50, 0.785398163397448, 0.785398163397448},
    {"DIMTFILL", ZvDbDimVariable::kInteger, 69, 0, 0},
    {"DIMTFILLCLR", ZvDbDimVariable::kInteger, 70, 0, 0},
    {"DIMTOL", ZvDbDimVariable::kInteger, 71, 0, 0},
    {"DIMLIM", ZvDbDimVariable::kInteger, 72, 0, 0},
    {"DIMTIH", ZvDbDimVariable::kInteger, 73, 1, 0},
    {"DIMTOH", ZvDbDimVariable::kInteger, 74, 1, 0},
    {"DIMSE1", ZvDbDimVariable::kInteger, 75, 0, 0},
    {"DIMSE2", ZvDbDimVariable::kInteger, 76, 0, 0},
    {"DIMTAD", ZvDbDimVariable::kInteger, 77, 0, 1},
    {"DIMZIN", ZvDbDimVariable::kInteger, 78, 0, 8},
    {"DIMAZIN", ZvDbDimVariable::kInteger, 79, 0, 0},
    {"DIMARCSYM", ZvDbDimVariable::kInteger, 90, 0, 0},
    {"DIMTXT", ZvDbDimVariable::kReal, 140, 0.18, 2.5},
    {"DIMCEN", ZvDbDimVariable::kReal, 141, 0.09, 2.5},
    {"DIMTSZ", ZvDbDimVariable::kReal, 142, 0, 0},
    {"DIMALTF", ZvDbDimVariable::kReal, 143, 25.4, 0.03937007874016},
    {"DIMLFAC", ZvDbDimVariable::kReal, 144, 1, 1},
    {"DIMTVP", ZvDbDimVariable::kReal, 145, 0, 0},
    {"DIMTFAC", ZvDbDimVariable::kReal, 146, 1, 1},
    {"DIMGAP", ZvDbDimVariable::kReal, 147, 0.09, 0.625},
    {"DIMALTRND", ZvDbDimVariable::kReal, 148, 0, 0},
    {"DIMALT", ZvDbDimVariable::kInteger, 170, 0, 0},
    {"DIMALTD", ZvDbDimVariable::kInteger, 171, 2, 3},
    {"DIMTOFL", ZvDbDimVariable::kInteger, 172, 0, 1},
    {"DIMSAH", ZvDbDimVariable::kInteger, 173, 0, 0},
    {"DIMTIX", ZvDbDimVariable::kInteger, 174, 0, 0},
    {"DIMSOXD", ZvDbDimVariable::kInteger, 175, 0, 0},
    {"DIMCLRD", ZvDbDimVariable::kInteger, 176, 0, 0},
    {"DIMCLRE", ZvDbDimVariable::kInteger, 177, 0, 0},
    {"DIMCLRT", ZvDbDimVariable::kInteger, 178, 0, 0},
    {"DIMADEC", ZvDbDimVariable::kInteger, 179, 0, 0},
    {"DIMDEC", ZvDbDimVariable::kInteger, 271, 4, 2},
    {"DIMTDEC", ZvDbDimVariable::kInteger, 272, 4, 2},
    {"DIMALTU", ZvDbDimVariable::kInteger, 273, 2, 2},
    {"DIMALTTD", ZvDbDimVariable::kInteger, 274, 2, 3},
    {"DIMAUNIT", ZvDbDimVariable::kInteger, 275, 0, 0},
    {"DIMFRAC", ZvDbDimVariable::kInteger, 276, 0, 0},
    {"DIMLUNIT", ZvDbDimVariable::kInteger, 277, 2, 2},
    {"DIMDSEP", ZvDbDimVariable::kInteger, 278, 46, 44},
    {"DIMTMOVE", ZvDbDimVariable::kInteger, 279, 0, 0},
    {"DIMJUST", ZvDbDimVariable::kInteger, 280, 0, 0},
    {"DIMSD1", ZvDbDimVariable::kInteger, 281, 0, 0},
    {"DIMSD2", ZvDbDimVariable::kInteger, 282, 0, 0},
    {"DIMTOLJ", ZvDbDimVariable::kInteger, 283, 1, 0},
    {"DIMTZIN", ZvDbDimVariable::kInteger, 284, 0, 8},
    {"DIMALTZ", ZvDbDimVariable::kInteger, 285, 0, 0},
    {"DIMALTTZ", ZvDbDimVariable::kInteger, 286, 0, 0},
    {"DIMUPT", ZvDbDimVariable::kInteger, 288, 0, 0},
    {"DIMATFIT", ZvDbDimVariable::kInteger, 289, 3, 3},
    {"DIMFXLON", ZvDbDimVariable::kInteger, 290, 0, 0},
    {"DIMTXTDIRECTION", ZvDbDimVariable::kInteger, 294, 0, 0},
    {"DIMTXSTY", ZvDbDimVariable::kId, 340, 0, 0},
    {"DIMLDRBLK", ZvDbDimVariable::kId, 341, 0, 0},
    {"DIMBLK", ZvDbDimVariable::kId, 342, 0, 0},
    {"DIMBLK1", ZvDbDimVariable::kId, 343, 0, 0},
    {"DIMBLK2", ZvDbDimVariable::kId, 344, 0, 0},
    {"DIMLTYPE", ZvDbDimVariable::kId, 345, 0, 0},
    {"DIMLTEX1", ZvDbDimVariable::kId, 346, 0, 0},
    {"DIMLTEX2", ZvDbDimVariable::kId, 347, 0, 0},
    {"DIMLWD", ZvDbDimVariable::kInteger, 371, -2, -2},
    {"DIMLWE", ZvDbDimVariable::kInteger, 372, -2, -2},
};

/// Without regard to case. Each value of each style is asked for by name: no strings are made for it.
bool isName(const char *name, const char *upperCase)
{
    for (; *upperCase; ++name, ++upperCase) {
        if (*name != *upperCase && !(*name >= 'a' && *name <= 'z' && *name - 'a' + 'A' == *upperCase))
            return false;
    }
    return *name == '\0';
}

const ZvDbDimVariable *variableOfType(const char *name, ZvDbDimVariable::Type type)
{
    const ZvDbDimVariable *variable = zvdbDimVariable(name);
    return variable && variable->type == type ? variable : nullptr;
}

} // namespace

const ZvDbDimVariable *zvdbDimVariables(int &count)
{
    count = int(std::size(dimVariables));
    return dimVariables;
}

const ZvDbDimVariable *zvdbDimVariable(const char *name)
{
    if (!name)
        return nullptr;
    for (const ZvDbDimVariable &variable : dimVariables) {
        if (isName(name, variable.name))
            return &variable;
    }
    return nullptr;
}

ZvDbDimStyleTableRecord::ZvDbDimStyleTableRecord() = default;

double ZvDbDimStyleTableRecord::real(const char *name) const
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kReal);
    if (!variable)
        return std::numeric_limits<double>::quiet_NaN();
    const auto it = m_numbers.find(variable->code);
    return it == m_numbers.end() ? variable->standard : it->second;
}

int ZvDbDimStyleTableRecord::integer(const char *name) const
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kInteger);
    if (!variable)
        return 0;
    const auto it = m_numbers.find(variable->code);
    return int(it == m_numbers.end() ? variable->standard : it->second);
}

ZvString ZvDbDimStyleTableRecord::textValue(const char *name) const
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kText);
    const auto it = variable ? m_texts.find(variable->code) : m_texts.end();
    return it == m_texts.end() ? ZvString() : it->second;
}

ZvDbObjectId ZvDbDimStyleTableRecord::idValue(const char *name) const
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kId);
    const auto it = variable ? m_ids.find(variable->code) : m_ids.end();
    return it == m_ids.end() ? ZvDbObjectId() : it->second;
}

Zv::ErrorStatus ZvDbDimStyleTableRecord::setReal(const char *name, double value)
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kReal);
    if (!variable)
        return Zv::eKeyNotFound;
    if (real(name) == value)
        return Zv::eOk;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_numbers[variable->code] = value;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDimStyleTableRecord::setInteger(const char *name, int value)
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kInteger);
    if (!variable)
        return Zv::eKeyNotFound;
    if (integer(name) == value)
        return Zv::eOk;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_numbers[variable->code] = value;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDimStyleTableRecord::setTextValue(const char *name, const ZvString &value)
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kText);
    if (!variable)
        return Zv::eKeyNotFound;
    if (textValue(name) == value)
        return Zv::eOk;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_texts[variable->code] = value;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDimStyleTableRecord::setIdValue(const char *name, ZvDbObjectId value)
{
    const ZvDbDimVariable *variable = variableOfType(name, ZvDbDimVariable::kId);
    if (!variable)
        return Zv::eKeyNotFound;
    if (idValue(name) == value)
        return Zv::eOk;
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (d && !value.isNull() && !d->owns(value))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_ids[variable->code] = value;
    return Zv::eOk;
}
