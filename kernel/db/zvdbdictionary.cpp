// SPDX-License-Identifier: MIT
#include "db/zvdbdictionary.h"

#include "zvdbdatabase_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbDictionary, ZvDbObject)

// ---- finding entries

std::size_t ZvDbDictionary::find(const ZvString &name) const
{
    const auto range = m_positions.equal_range(name.hashNoCase());
    std::size_t best = m_entries.size();
    for (auto it = range.first; it != range.second; ++it) {
        if (it->second < best && m_entries[it->second].name.compareNoCase(name) == 0)
            best = it->second;
    }
    return best;
}

void ZvDbDictionary::append(const ZvString &name, ZvDbObjectId id)
{
    m_positions.emplace(name.hashNoCase(), std::uint32_t(m_entries.size()));
    m_entries.push_back({name, id});
}

void ZvDbDictionary::reindex()
{
    m_positions.clear();
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        m_positions.emplace(m_entries[i].name.hashNoCase(), std::uint32_t(i));
}

ZvDbObjectId ZvDbDictionary::getIdAt(const ZvString &name) const
{
    const std::size_t position = find(name);
    if (position == m_entries.size() || m_entries[position].id.isErased())
        return ZvDbObjectId();
    return m_entries[position].id;
}

Zv::ErrorStatus ZvDbDictionary::getAt(const ZvString &name, ZvDbObjectId &id) const
{
    id = getIdAt(name);
    return id.isNull() ? Zv::eKeyNotFound : Zv::eOk;
}

ZvString ZvDbDictionary::nameAt(ZvDbObjectId id) const
{
    for (const Entry &entry : m_entries) {
        if (entry.id == id)
            return entry.name;
    }
    return ZvString();
}

bool ZvDbDictionary::hasEntry(ZvDbObjectId id) const
{
    for (const Entry &entry : m_entries) {
        if (entry.id == id)
            return true;
    }
    return false;
}

int ZvDbDictionary::numEntries() const
{
    return int(m_entries.size());
}

const char *ZvDbDictionary::fileName() const
{
    return m_withDefault ? "ACDBDICTIONARYWDFLT" : "DICTIONARY";
}

// ---- changes

Zv::ErrorStatus ZvDbDictionary::setAt(const ZvString &name, ZvDbObject *object, ZvDbObjectId &id)
{
    id = ZvDbObjectId();
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(this);
    if (!d)
        return Zv::eNoDatabase;
    if (!object || name.isEmpty())
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    if (ZvDbDatabasePrivate *owner = ZvDbDatabasePrivate::of(object)) {
        if (owner != d)
            return Zv::eInvalidInput;
        id = object->objectId();
    } else {
        if (ZvDbNamedObject *named = zvrxCast<ZvDbNamedObject>(object))
            ZvDbObjectAccess::setName(*named, name);
        const Zv::ErrorStatus status = d->q.addObject(object, id, objectId());
        if (status != Zv::eOk)
            return status;
    }
    const std::size_t position = find(name);
    if (position < m_entries.size())
        m_entries[position].id = id;
    else
        append(name, id);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDictionary::remove(const ZvString &name)
{
    const std::size_t position = find(name);
    if (position == m_entries.size())
        return Zv::eKeyNotFound;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_entries.erase(m_entries.begin() + std::ptrdiff_t(position));
    reindex();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDictionary::rename(const ZvString &oldName, const ZvString &newName)
{
    const std::size_t position = find(oldName);
    if (position == m_entries.size())
        return Zv::eKeyNotFound;
    if (m_entries[position].name == newName)
        return Zv::eOk;
    if (!ZvDbSymbolTableRecord::isValidName(newName))
        return Zv::eInvalidInput;
    const std::size_t other = find(newName);
    if (other < m_entries.size() && other != position && !m_entries[other].id.isErased())
        return Zv::eDuplicateKey;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_entries[position].name = newName;
    if (other < m_entries.size() && other != position)
        m_entries.erase(m_entries.begin() + std::ptrdiff_t(other)); // what was erased gives the name up
    reindex();
    return Zv::eOk;
}

void ZvDbObjectAccess::addToDictionary(ZvDbDictionary &dictionary, const ZvString &name, ZvDbObjectId id)
{
    dictionary.append(name, id);
}

void ZvDbObjectAccess::setEntries(ZvDbDictionary &dictionary, std::vector<std::pair<ZvString, ZvDbObjectId>> entries)
{
    dictionary.m_entries.clear();
    for (auto &entry : entries)
        dictionary.m_entries.push_back({std::move(entry.first), entry.second});
    dictionary.reindex();
}

void ZvDbObjectAccess::makeDictionaryWithDefault(ZvDbDictionary &dictionary, ZvDbObjectId id)
{
    dictionary.m_withDefault = true;
    dictionary.m_default = id;
}

// ---- ZvDbDictionaryIterator

ZvDbDictionaryIterator *ZvDbDictionary::newIterator() const
{
    ZvDbDictionaryIterator *iterator = new ZvDbDictionaryIterator;
    iterator->m_entries.reserve(m_entries.size());
    for (const Entry &entry : m_entries) {
        if (!entry.id.isValid() || !entry.id.isErased())
            iterator->m_entries.emplace_back(entry.name, entry.id);
    }
    return iterator;
}

bool ZvDbDictionaryIterator::done() const
{
    return m_position >= m_entries.size();
}

ZvString ZvDbDictionaryIterator::name() const
{
    return done() ? ZvString() : m_entries[m_position].first;
}

ZvDbObjectId ZvDbDictionaryIterator::objectId() const
{
    return done() ? ZvDbObjectId() : m_entries[m_position].second;
}

bool ZvDbDictionaryIterator::next()
{
    if (!done())
        ++m_position;
    return !done();
}
