// SPDX-License-Identifier: MIT
#include "db/zvdbstyles.h"

#include "zvdbdatabase_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbNamedObject, ZvDbObject)
ZVRX_DEFINE_MEMBERS(ZvDbMaterial, ZvDbNamedObject)
ZVRX_DEFINE_MEMBERS(ZvDbMLeaderStyle, ZvDbNamedObject)
ZVRX_DEFINE_MEMBERS(ZvDbTableStyle, ZvDbNamedObject)
ZVRX_DEFINE_MEMBERS(ZvDbPlaceHolder, ZvDbNamedObject)
ZVRX_DEFINE_MEMBERS(ZvDbDictionaryVar, ZvDbNamedObject)
ZVRX_DEFINE_MEMBERS(ZvDbPlotSettings, ZvDbNamedObject)
ZVRX_DEFINE_MEMBERS(ZvDbLayout, ZvDbPlotSettings)
ZVRX_DEFINE_MEMBERS(ZvDbProxyObject, ZvDbObject)

// ---- ZvDbNamedObject

ZvString ZvDbNamedObject::name() const
{
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    const ZvString entry = d ? d->nameOf(objectId()) : ZvString();
    return entry.isEmpty() ? m_name : entry;
}

Zv::ErrorStatus ZvDbNamedObject::getName(ZvString &name) const
{
    name = this->name();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbNamedObject::setName(const ZvString &name)
{
    if (name == this->name())
        return Zv::eOk;
    if (!ZvDbSymbolTableRecord::isValidName(name))
        return Zv::eInvalidInput;
    if (!isWriteEnabled()) {
        assertWriteEnabled(); // reports it
        return Zv::eNotOpenForWrite;
    }
    const ZvString old = this->name();
    ZvDbObjectPointer<ZvDbDictionary> owner(ownerId(), ZvDb::kForWrite);
    if (owner && owner->nameAt(objectId()) == old) {
        const Zv::ErrorStatus status = owner->rename(old, name);
        if (status != Zv::eOk)
            return status;
    } else if (owner.openStatus() == Zv::eWasOpenForRead || owner.openStatus() == Zv::eWasOpenForWrite) {
        return owner.openStatus();
    }
    if (assertWriteEnabled())
        m_name = name;
    return Zv::eOk;
}

// ---- the styles

Zv::ErrorStatus ZvDbMLeaderStyle::setTextStyleId(ZvDbObjectId id)
{
    if (id == m_textStyle)
        return Zv::eOk;
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (d && !d->isUsable(id, ZvDbTextStyleTableRecord::desc()))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_textStyle = id;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbMLeaderStyle::setTextHeight(double height)
{
    if (!(height > 0.0))
        return Zv::eInvalidInput;
    if (height == m_textHeight)
        return Zv::eOk;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_textHeight = height;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbTableStyle::getCellStyles(ZvArray<ZvString> &names) const
{
    names.clear();
    static const wchar_t *const predefined[] = {L"_TITLE", L"_HEADER", L"_DATA"};
    for (const wchar_t *name : predefined)
        names.append(name);
    for (const ZvString &own : m_cellStyles) {
        bool known = false;
        for (const wchar_t *name : predefined)
            known = known || own.compareNoCase(name) == 0;
        if (!known)
            names.append(own);
    }
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDictionaryVar::setValue(const ZvString &value)
{
    if (value == m_value)
        return Zv::eOk;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_value = value;
    return Zv::eOk;
}

// ---- ZvDbPlotSettings, ZvDbLayout

bool ZvDbLayout::isModelType() const
{
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    return d ? m_block.index() == d->modelSpace && d->owns(m_block) : m_tabOrder == 0;
}

double ZvDbPlotSettings::plotScale() const
{
    return m_scaleDenominator != 0.0 ? m_scaleNumerator / m_scaleDenominator : 1.0;
}

// ---- ZvDbProxyObject

ZvString ZvDbProxyObject::originalFileName() const
{
    const ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (!d || !d->source || ZvDbObjectAccess::stub(this)->record == 0)
        return fileName();
    return d->source->recordName(objectId().index());
}

const char *ZvDbProxyObject::fileName() const
{
    return "ACAD_PROXY_OBJECT";
}

// ---- ZvDbLayerState

ZvDbObjectId ZvDbLayerState::dictionaryId(const ZvDbDatabase *database, bool create)
{
    return database ? database->layerStateDictionaryId(create) : ZvDbObjectId();
}

// ---- the classes of what is no entity

void zvdbListObjectClasses(std::deque<ZvDbClass> &classes)
{
    classes.push_back(ZvDbClass::of<ZvDbProxyObject>(nullptr)); // number 0: what the table does not know
    ZvDbClass tables[] = {
        ZvDbClass::of<ZvDbViewportTable>(nullptr), ZvDbClass::of<ZvDbLinetypeTable>(nullptr),
        ZvDbClass::of<ZvDbLayerTable>(nullptr),    ZvDbClass::of<ZvDbTextStyleTable>(nullptr),
        ZvDbClass::of<ZvDbViewTable>(nullptr),     ZvDbClass::of<ZvDbUCSTable>(nullptr),
        ZvDbClass::of<ZvDbRegAppTable>(nullptr),   ZvDbClass::of<ZvDbDimStyleTable>(nullptr),
        ZvDbClass::of<ZvDbBlockTable>(nullptr),
    };
    for (ZvDbClass &table : tables) {
        table.isSymbolTable = true;
        classes.push_back(table);
    }
    classes.push_back(ZvDbClass::of<ZvDbViewportTableRecord>("VPORT"));
    classes.push_back(ZvDbClass::of<ZvDbLinetypeTableRecord>("LTYPE"));
    classes.push_back(ZvDbClass::of<ZvDbLayerTableRecord>("LAYER"));
    classes.push_back(ZvDbClass::of<ZvDbTextStyleTableRecord>("STYLE"));
    classes.push_back(ZvDbClass::of<ZvDbViewTableRecord>("VIEW"));
    classes.push_back(ZvDbClass::of<ZvDbUCSTableRecord>("UCS"));
    classes.push_back(ZvDbClass::of<ZvDbRegAppTableRecord>("APPID"));
    classes.push_back(ZvDbClass::of<ZvDbDimStyleTableRecord>("DIMSTYLE"));
    classes.push_back(ZvDbClass::of<ZvDbBlockTableRecord>("BLOCK_RECORD"));
    classes.push_back(ZvDbClass::of<ZvDbDictionary>("DICTIONARY"));
    classes.push_back(ZvDbClass::of<ZvDbDictionary>("ACDBDICTIONARYWDFLT"));
    classes.push_back(ZvDbClass::of<ZvDbMaterial>("MATERIAL"));
    classes.push_back(ZvDbClass::of<ZvDbMLeaderStyle>("MLEADERSTYLE"));
    classes.push_back(ZvDbClass::of<ZvDbTableStyle>("TABLESTYLE"));
    classes.push_back(ZvDbClass::of<ZvDbPlaceHolder>("ACDBPLACEHOLDER"));
    classes.push_back(ZvDbClass::of<ZvDbDictionaryVar>("DICTIONARYVAR"));
    classes.push_back(ZvDbClass::of<ZvDbLayout>("LAYOUT"));
    classes.push_back(ZvDbClass::of<ZvDbPlotSettings>("PLOTSETTINGS"));
}
