// SPDX-License-Identifier: MIT
#ifndef ZVDBDICTIONARY_H
#define ZVDBDICTIONARY_H

#include "db/zvdbobject.h"

#include <unordered_map>
#include <vector>

/// Walks a dictionary in its order, without the entries of erased objects. Entries may have empty names and ids that are not valid. Deleted by the caller.
class ZV_EXPORT ZvDbDictionaryIterator
{
public:
    /// Whether the walk is at its end.
    bool done() const;
    /// Name of the entry at hand; empty at the end.
    ZvString name() const;
    /// Id of the entry at hand; null at the end.
    ZvDbObjectId objectId() const;
    /// Goes on; false at the end.
    bool next();

private:
    friend class ZvDbDictionary;
    ZvDbDictionaryIterator() = default;
    std::vector<std::pair<ZvString, ZvDbObjectId>> m_entries;
    std::size_t m_position = 0;
};

/// Objects by name, in an order of their own. It may own them or only know them.
class ZV_EXPORT ZvDbDictionary : public ZvDbObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbDictionary)
public:
    ZvDbDictionary() = default;
    /// Case ignored; the null id for an unknown name.
    ZvDbObjectId getIdAt(const ZvString &name) const;
    /// The same with a status: eKeyNotFound for an unknown name.
    Zv::ErrorStatus getAt(const ZvString &name, ZvDbObjectId &id) const;
    /// Whether there is an entry of that name, case ignored.
    bool has(const ZvString &name) const { return !getIdAt(name).isNull(); }
    /// Name of an entry; empty for an id that is none.
    ZvString nameAt(ZvDbObjectId id) const;
    /// Whether there is an entry for that object.
    bool hasEntry(ZvDbObjectId id) const;
    /// Number of entries, those of erased objects included.
    int numEntries() const;
    /// An iterator that the caller deletes. It holds what it needs: the dictionary may be closed before the walk.
    ZvDbDictionaryIterator *newIterator() const;
    /// Adds or replaces. An object of no database is taken over and stays open for write.
    Zv::ErrorStatus setAt(const ZvString &name, ZvDbObject *object, ZvDbObjectId &id);
    /// The entry goes; the object is not erased.
    Zv::ErrorStatus remove(const ZvString &name);
    /// eKeyNotFound for an unknown name, eDuplicateKey for one in use, eInvalidInput for one that tables refuse.
    Zv::ErrorStatus rename(const ZvString &oldName, const ZvString &newName);
    /// Entry that stands for unknown names in a dictionary with default; null otherwise.
    ZvDbObjectId defaultId() const { return m_default; }
    const char *fileName() const override;
    void fileFields(ZvDbFiler &filer) override;

private:
    friend class ZvDbObjectAccess;
    struct Entry
    {
        ZvString name;
        ZvDbObjectId id;
    };
    /// Position of an entry, the number of entries for an unknown name.
    std::size_t find(const ZvString &name) const;
    void append(const ZvString &name, ZvDbObjectId id);
    void reindex();

    std::vector<Entry> m_entries;
    std::unordered_multimap<std::size_t, std::uint32_t> m_positions; // by folded hash of the name
    ZvDbObjectId m_default;
    bool m_withDefault = false;
    bool m_hardOwner = false;
    int m_cloning = 1;
};

#endif
