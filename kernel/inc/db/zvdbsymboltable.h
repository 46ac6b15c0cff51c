// SPDX-License-Identifier: MIT
#ifndef ZVDBSYMBOLTABLE_H
#define ZVDBSYMBOLTABLE_H

#include "db/zvdbobject.h"

#include <memory>

/// A named entry of a symbol table.
class ZV_EXPORT ZvDbSymbolTableRecord : public ZvDbObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbSymbolTableRecord)
public:
    /// The same as name(); always eOk.
    Zv::ErrorStatus getName(ZvString &name) const;
    /// Unlike every other of the table, case ignored.
    ZvString name() const { return m_name; }
    /// Names are 1 to 255 characters, without < > / \ " : ; ? * = ` and |, and unlike every other of the table, case
    /// ignored. eInvalidInput, eDuplicateKey.
    Zv::ErrorStatus setName(const ZvString &name);
    /// The record came with an external reference.
    bool isDependent() const { return (m_flags & 16) != 0; }
    /// Standard flag bits of the record in the drawing file (70).
    int flags() const { return m_flags; }
    void fileFields(ZvDbFiler &filer) override;

    /// Whether \a name may be given to a record.
    static bool isValidName(const ZvString &name);

protected:
    ZvDbSymbolTableRecord() = default;
    /// Sets or clears a bit of flags().
    void setFlag(int bit, bool on);

    friend class ZvDbObjectAccess;
    ZvString m_name;
    int m_flags = 0;
};

/// Walks the records of a table, in the order in which they were added. Deleted by the caller.
class ZV_EXPORT ZvDbSymbolTableIterator
{
public:
    ~ZvDbSymbolTableIterator();
    /// Goes back to the first record.
    void start();
    /// Whether the walk is at its end.
    bool done() const;
    /// Goes on.
    void step();
    /// The record at hand; null, or eFailed, at the end.
    ZvDbObjectId getRecordId() const;
    Zv::ErrorStatus getRecordId(ZvDbObjectId &id) const;

private:
    friend class ZvDbSymbolTable;
    ZvDbSymbolTableIterator() = default;
    ZvArray<ZvDbObjectId> m_ids {0, 64};
    int m_position = 0;
    bool m_skipErased = true;
};

/// A table of named records, in the order in which they were added.
class ZV_EXPORT ZvDbSymbolTable : public ZvDbObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbSymbolTable)
public:
    ~ZvDbSymbolTable() override;
    /// Case ignored; the null id for an unknown name. Erased records are not found unless asked for.
    ZvDbObjectId getIdAt(const ZvString &name, bool erasedToo = false) const;
    /// The same with a status: eKeyNotFound for an unknown name.
    Zv::ErrorStatus getAt(const ZvString &name, ZvDbObjectId &id, bool erasedToo = false) const;
    /// Whether there is a record of that name, case ignored, that is not erased.
    bool has(const ZvString &name) const { return !getIdAt(name).isNull(); }
    /// An iterator that the caller deletes. It holds what it needs: the table may be closed before the walk. Records
    /// erased during the walk are passed over with \a skipErased.
    Zv::ErrorStatus newIterator(ZvDbSymbolTableIterator *&iterator, bool atBeginning = true, bool skipErased = true) const;
    /// Adds a record of no database and takes it over; it stays open for write, and the caller closes it. The table
    /// must be open for write. eDuplicateKey, eInvalidInput as for names.
    Zv::ErrorStatus add(ZvDbSymbolTableRecord *record, ZvDbObjectId &id);
    /// Number of records that are not erased.
    int count() const;
    const char *fileName() const override;
    /// Name of the table in the drawing file, such as "LAYER".
    virtual const char *tableName() const = 0;
    void fileFields(ZvDbFiler &filer) override;

protected:
    ZvDbSymbolTable();
    /// Copies what the table says of itself; the records stay each table's own.
    ZvDbSymbolTable &operator=(const ZvDbSymbolTable &other);

private:
    friend class ZvDbObjectAccess;
    struct Private;
    std::unique_ptr<Private> d;
};

/// A table whose class adds nothing but its name.
#define ZVDB_DECLARE_TABLE(ClassName)                      \
    class ZV_EXPORT ClassName : public ZvDbSymbolTable     \
    {                                                      \
        ZVRX_DECLARE_MEMBERS(ClassName)                    \
    public:                                                \
        ClassName() = default;                             \
        const char *tableName() const override;            \
    };

ZVDB_DECLARE_TABLE(ZvDbLinetypeTable)
ZVDB_DECLARE_TABLE(ZvDbTextStyleTable)
ZVDB_DECLARE_TABLE(ZvDbDimStyleTable)
ZVDB_DECLARE_TABLE(ZvDbUCSTable)
ZVDB_DECLARE_TABLE(ZvDbViewTable)
ZVDB_DECLARE_TABLE(ZvDbViewportTable)
ZVDB_DECLARE_TABLE(ZvDbRegAppTable)
ZVDB_DECLARE_TABLE(ZvDbBlockTable)

/// The layers of a drawing.
class ZV_EXPORT ZvDbLayerTable : public ZvDbSymbolTable
{
    ZVRX_DECLARE_MEMBERS(ZvDbLayerTable)
public:
    ZvDbLayerTable() = default;
    const char *tableName() const override;
    /// Finds out which layers are used, for ZvDbLayerTableRecord::isInUse().
    void generateUsageData();
};

#endif
