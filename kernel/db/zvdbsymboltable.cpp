// SPDX-License-Identifier: MIT
#include "db/zvdbsymboltable.h"

#include "db/zvdbrecords.h"
#include "zvdbdatabase_p.h"

#include <memory>
#include <unordered_map>
#include <vector>

ZVRX_DEFINE_MEMBERS(ZvDbSymbolTableRecord, ZvDbObject)
ZVRX_DEFINE_MEMBERS(ZvDbSymbolTable, ZvDbObject)
ZVRX_DEFINE_MEMBERS(ZvDbLinetypeTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbTextStyleTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbDimStyleTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbUCSTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbViewTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbViewportTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbRegAppTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbBlockTable, ZvDbSymbolTable)
ZVRX_DEFINE_MEMBERS(ZvDbLayerTable, ZvDbSymbolTable)

const char *ZvDbLinetypeTable::tableName() const
{
    return "LTYPE";
}

const char *ZvDbTextStyleTable::tableName() const
{
    return "STYLE";
}

const char *ZvDbDimStyleTable::tableName() const
{
    return "DIMSTYLE";
}

const char *ZvDbUCSTable::tableName() const
{
    return "UCS";
}

const char *ZvDbViewTable::tableName() const
{
    return "VIEW";
}

const char *ZvDbViewportTable::tableName() const
{
    return "VPORT";
}

const char *ZvDbRegAppTable::tableName() const
{
    return "APPID";
}

const char *ZvDbBlockTable::tableName() const
{
    return "BLOCK_RECORD";
}

const char *ZvDbLayerTable::tableName() const
{
    return "LAYER";
}

namespace {

/// The records that a table takes.
const ZvRxClass *recordClass(const ZvDbSymbolTable &table)
{
    struct Row
    {
        const ZvRxClass *table;
        const ZvRxClass *record;
    };
    static const Row rows[] = {
        {ZvDbLayerTable::desc(), ZvDbLayerTableRecord::desc()},
        {ZvDbLinetypeTable::desc(), ZvDbLinetypeTableRecord::desc()},
        {ZvDbTextStyleTable::desc(), ZvDbTextStyleTableRecord::desc()},
        {ZvDbDimStyleTable::desc(), ZvDbDimStyleTableRecord::desc()},
        {ZvDbUCSTable::desc(), ZvDbUCSTableRecord::desc()},
        {ZvDbViewTable::desc(), ZvDbViewTableRecord::desc()},
        {ZvDbViewportTable::desc(), ZvDbViewportTableRecord::desc()},
        {ZvDbRegAppTable::desc(), ZvDbRegAppTableRecord::desc()},
        {ZvDbBlockTable::desc(), ZvDbBlockTableRecord::desc()},
    };
    for (const Row &row : rows) {
        if (table.isKindOf(row.table))
            return row.record;
    }
    return ZvDbSymbolTableRecord::desc();
}

/// The kernel's own records have names of their own: "*Active", "*U12", helper layers.
bool isRecordName(const ZvDbSymbolTableRecord &record, const ZvString &name)
{
    const bool mayBeginWithStar = record.isKindOf(ZvDbBlockTableRecord::desc())
        || record.isKindOf(ZvDbViewportTableRecord::desc()) || record.isKindOf(ZvDbLayerTableRecord::desc());
    const auto *style = zvrxCast<ZvDbTextStyleTableRecord>(&record);
    if (style && style->isShapeFile() && name.isEmpty())
        return true; // it goes by the name of its file
    if (mayBeginWithStar && name.length() > 1 && name.at(0) == L'*')
        return ZvDbSymbolTableRecord::isValidName(name.mid(1));
    return ZvDbSymbolTableRecord::isValidName(name);
}

/// A name that stands for "the next free one of this kind": "*U", "*D".
bool isNameToBeNumbered(const ZvDbSymbolTableRecord &record)
{
    const ZvString name = record.name();
    return record.isKindOf(ZvDbBlockTableRecord::desc()) && name.length() == 2 && name.at(0) == L'*';
}

} // namespace

// ---- ZvDbSymbolTableRecord

Zv::ErrorStatus ZvDbSymbolTableRecord::getName(ZvString &name) const
{
    name = m_name;
    return Zv::eOk;
}

bool ZvDbSymbolTableRecord::isValidName(const ZvString &name)
{
    static const ZvString forbidden(L"<>/\\\":;?*=`|");
    if (name.isEmpty() || name.length() > 255)
        return false;
    for (int i = 0; i < name.length(); ++i) {
        if (name.at(i) < L' ' || forbidden.contains(name.at(i)))
            return false;
    }
    return true;
}

Zv::ErrorStatus ZvDbSymbolTableRecord::setName(const ZvString &name)
{
    if (name == m_name)
        return Zv::eOk;
    if (!isRecordName(*this, name))
        return Zv::eInvalidInput;
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (!d) {
        m_name = name;
        return Zv::eOk;
    }
    if (d->isIndispensable(objectId().index()))
        return Zv::eInvalidInput;
    const ZvDbSymbolTable *table = zvrxCast<ZvDbSymbolTable>(d->objectAt(ownerId().index()));
    const ZvDbObjectId other = table ? table->getIdAt(name) : ZvDbObjectId();
    if (!other.isNull() && other != objectId())
        return Zv::eDuplicateKey;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    d->renameRecord(*this, name);
    return Zv::eOk;
}

void ZvDbSymbolTableRecord::setFlag(int bit, bool on)
{
    const int flags = on ? m_flags | bit : m_flags & ~bit;
    if (flags != m_flags && assertWriteEnabled())
        m_flags = flags;
}

// ---- ZvDbSymbolTable

struct ZvDbSymbolTable::Private
{
    struct Entry
    {
        ZvString name;
        std::uint32_t index;
    };
    std::vector<Entry> entries; // grows only: an erased record keeps its place
    std::unordered_multimap<std::size_t, std::uint32_t> byName; // folded hash to position
    std::unordered_map<std::uint32_t, std::uint32_t> byIndex;

    void add(const ZvString &name, std::uint32_t index)
    {
        const std::uint32_t position = std::uint32_t(entries.size());
        entries.push_back({name, index});
        byName.emplace(name.hashNoCase(), position);
        byIndex.emplace(index, position);
    }

    void rename(std::uint32_t index, const ZvString &name)
    {
        const auto at = byIndex.find(index);
        if (at == byIndex.end())
            return;
        Entry &entry = entries[at->second];
        const auto range = byName.equal_range(entry.name.hashNoCase());
        for (auto it = range.first; it != range.second; ++it) {
            if (it->second == at->second) {
                byName.erase(it);
                break;
            }
        }
        entry.name = name;
        byName.emplace(name.hashNoCase(), at->second);
    }
};

ZvDbSymbolTable::ZvDbSymbolTable() : d(std::make_unique<Private>()) { }

ZvDbSymbolTable::~ZvDbSymbolTable() = default;

// A table has no state of its own beside its records.
ZvDbSymbolTable &ZvDbSymbolTable::operator=(const ZvDbSymbolTable &)
{
    return *this;
}

const char *ZvDbSymbolTable::fileName() const
{
    return "TABLE";
}

ZvDbObjectId ZvDbSymbolTable::getIdAt(const ZvString &name, bool erasedToo) const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this);
    if (!database)
        return ZvDbObjectId();
    // The first of several of a name counts, and one that is there before one that is erased.
    std::uint32_t best = 0;
    std::uint32_t bestPosition = 0;
    bool bestErased = true;
    const auto range = d->byName.equal_range(name.hashNoCase());
    for (auto it = range.first; it != range.second; ++it) {
        const Private::Entry &entry = d->entries[it->second];
        const bool erased = database->stubs[entry.index].isErased();
        if ((erased && !erasedToo) || entry.name.compareNoCase(name) != 0)
            continue;
        if (best == 0 || erased < bestErased || (erased == bestErased && it->second < bestPosition)) {
            best = entry.index;
            bestPosition = it->second;
            bestErased = erased;
        }
    }
    return database->idAt(best);
}

Zv::ErrorStatus ZvDbSymbolTable::getAt(const ZvString &name, ZvDbObjectId &id, bool erasedToo) const
{
    id = getIdAt(name, erasedToo);
    return id.isNull() ? Zv::eKeyNotFound : Zv::eOk;
}

Zv::ErrorStatus ZvDbSymbolTable::newIterator(ZvDbSymbolTableIterator *&iterator, bool atBeginning,
                                             bool skipErased) const
{
    iterator = new ZvDbSymbolTableIterator;
    iterator->m_skipErased = skipErased;
    if (const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this)) {
        iterator->m_ids.setPhysicalLength(int(d->entries.size()));
        for (const Private::Entry &entry : d->entries)
            iterator->m_ids.append(database->idAt(entry.index));
    }
    if (atBeginning)
        iterator->start();
    else
        iterator->m_position = iterator->m_ids.length();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbSymbolTable::add(ZvDbSymbolTableRecord *record, ZvDbObjectId &id)
{
    id = ZvDbObjectId();
    ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this);
    if (!database)
        return Zv::eNoDatabase;
    if (!isWriteEnabled())
        return Zv::eNotOpenForWrite;
    if (!record || ZvDbDatabasePrivate::of(record))
        return Zv::eInvalidInput;
    if (!record->isKindOf(recordClass(*this)))
        return Zv::eNotThatKindOfClass;
    ZvString name = record->name();
    if (isNameToBeNumbered(*record)) {
        const ZvString prefix = name;
        for (int i = 1; i == 1 || has(name); ++i)
            name = prefix + ZvString(std::to_string(i).c_str());
        ZvDbObjectAccess::setName(*record, name);
    }
    if (!isRecordName(*record, name))
        return Zv::eInvalidInput;
    // The tiles of model space are so many records of one name.
    if (!record->isKindOf(ZvDbViewportTableRecord::desc()) && !name.isEmpty() && has(name))
        return Zv::eDuplicateKey;
    if (ZvDbLayerTableRecord *layer = zvrxCast<ZvDbLayerTableRecord>(record)) {
        if (!database->owns(layer->linetypeObjectId()))
            layer->setLinetypeObjectId(database->idAt(database->continuous));
    }
    const Zv::ErrorStatus status = database->q.addObject(record, id, objectId());
    if (status != Zv::eOk)
        return status;
    d->add(name, id.index());
    assertWriteEnabled();
    return Zv::eOk;
}

int ZvDbSymbolTable::count() const
{
    const ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this);
    int result = 0;
    for (const Private::Entry &entry : d->entries)
        result += !database->stubs[entry.index].isErased();
    return result;
}

// ---- ZvDbObjectAccess

void ZvDbObjectAccess::addToTable(ZvDbSymbolTable &table, const ZvString &name, std::uint32_t index)
{
    table.d->add(name, index);
}

std::vector<std::uint32_t> ZvDbObjectAccess::recordsOf(const ZvDbSymbolTable &table)
{
    std::vector<std::uint32_t> records;
    records.reserve(table.d->entries.size());
    for (const auto &entry : table.d->entries)
        records.push_back(entry.index);
    return records;
}

ZvString ZvDbObjectAccess::nameInTable(const ZvDbSymbolTable &table, std::uint32_t index)
{
    const auto at = table.d->byIndex.find(index);
    return at == table.d->byIndex.end() ? ZvString() : table.d->entries[at->second].name;
}

void ZvDbObjectAccess::renameInTable(ZvDbSymbolTable &table, std::uint32_t index, const ZvString &name)
{
    table.d->rename(index, name);
}

// ---- ZvDbSymbolTableIterator

ZvDbSymbolTableIterator::~ZvDbSymbolTableIterator() = default;

void ZvDbSymbolTableIterator::start()
{
    m_position = -1;
    step();
}

bool ZvDbSymbolTableIterator::done() const
{
    return m_position >= m_ids.length();
}

void ZvDbSymbolTableIterator::step()
{
    if (done())
        return;
    ++m_position;
    while (m_skipErased && !done() && m_ids[m_position].isErased())
        ++m_position;
}

ZvDbObjectId ZvDbSymbolTableIterator::getRecordId() const
{
    return done() ? ZvDbObjectId() : m_ids[m_position];
}

Zv::ErrorStatus ZvDbSymbolTableIterator::getRecordId(ZvDbObjectId &id) const
{
    id = getRecordId();
    return id.isNull() ? Zv::eKeyNotFound : Zv::eOk;
}

// ---- ZvDbLayerTable

void ZvDbLayerTable::generateUsageData()
{
    ZvDbDatabasePrivate *database = ZvDbDatabasePrivate::of(this);
    if (!database)
        return;
    const std::vector<bool> usedCombinations = database->usedProperties();
    std::vector<bool> usedLayers(database->stubs.end());
    for (std::uint32_t number = 1; number < database->propertiesTable.end(); ++number) {
        if (usedCombinations[number])
            usedLayers[database->propertiesTable.at(number).layer.index()] = true;
    }
    for (std::uint32_t index : ZvDbObjectAccess::recordsOf(*this)) {
        if (ZvDbObject *layer = database->objectAt(index))
            static_cast<ZvDbLayerTableRecord *>(layer)->m_inUse = usedLayers[index];
    }
}
