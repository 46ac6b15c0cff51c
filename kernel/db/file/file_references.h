// SPDX-License-Identifier: MIT
#ifndef FILE_REFERENCES_H
#define FILE_REFERENCES_H

#include "zvdbfiler.h"

#include <string>
#include <string_view>

class ZvDbDatabase;

/// How records refer to objects: by handle, and by name in a table.
class ZvDbFileReferences
{
public:
    explicit ZvDbFileReferences(ZvDbDatabase &database) : m_database(database) { }
    virtual ~ZvDbFileReferences() = default;

    /// Null for 0 and for a handle that no object has.
    ZvDbObjectId ofHandle(std::uint64_t handle) const;
    /// \a name in UTF-8, case ignored. Null for an unknown one.
    ZvDbObjectId ofName(ZvDbFiler::Table table, std::string_view name) const;
    /// Whether the record has another name now than in the file, by which ofName() still finds it.
    bool isRenamed(ZvDbObjectId id) const;
    /// Whether the drawing needs the object, the file lacks it, and nobody changed it: no reason to touch a record.
    bool isImplied(ZvDbObjectId id) const;
    /// Whether records that name no record of this table mean this one.
    bool isStandard(ZvDbFiler::Table table, ZvDbObjectId id) const;
    /// Number of the object's record in the file; -1 when it has none.
    std::int64_t recordOf(ZvDbObjectId id) const;
    /// Whether this is the line type that stands for the layer's.
    bool isByLayer(ZvDbObjectId id) const;
    /// 0 for the null id. Saving learns here which objects have to be in the file.
    virtual std::uint64_t handleOf(ZvDbObjectId id);
    /// In UTF-8. The null id gives "ByLayer" among line types, "Standard" among styles.
    virtual std::string nameOf(ZvDbFiler::Table table, ZvDbObjectId id);

protected:
    ZvDbDatabase &m_database;
};

#endif
