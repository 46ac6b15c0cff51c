// SPDX-License-Identifier: MIT
#ifndef ZVDBSTUB_P_H
#define ZVDBSTUB_P_H

#include "base/zvcmcolor.h"
#include "db/zvdbobject.h"

#include <cstdint>
#include <deque>
#include <memory>
#include <unordered_map>
#include <vector>

class ZvDbDatabasePrivate;

/// A chain of extended data that nobody changes any more: shared by an object, its copies and the undo history.
typedef std::shared_ptr<const ZvResBuf> ZvDbSharedChain;

/// The properties that all entities share. Equal combinations stand in a table once; an entity has a number into it.
struct ZvDbEntityProperties
{
    ZvCmColor color;
    ZvDbObjectId layer;
    ZvDbObjectId linetype; ///< Null is by layer.
    ZvDbObjectId material; ///< Null is by layer.
    ZvDbObjectId plotStyle;
    ZvDb::PlotStyleNameType plotStyleType = ZvDb::kPlotStyleByLayer;
    ZvDb::LineWeight lineWeight = ZvDb::kLnWtByLayer;
    double linetypeScale = 1.0;
    ZvCmTransparency transparency;
    ZvDb::Visibility visibility = ZvDb::kVisible;

    bool operator==(const ZvDbEntityProperties &o) const;
    std::size_t hash() const;
};

/// The record block of an object. It stays where it is for the life of the database.
struct ZvDbStub
{
    enum Flag : std::uint16_t {
        kErased = 1,
        kOpenForWrite = 2,
        kModified = 4, ///< Changed since it was opened for write.
        kNew = 8, ///< Added and not closed yet.
        kNotifying = 16, ///< Its notices are going out; isModified() answers for them.
        kEntity = 32,
        kFileChanged = 64, ///< Differs from its record in the file, or has none.
        kEraseChanged = 128, ///< Erased or un-erased since it was opened for write.
        kDetached = 256, ///< A ZvDbDetachedStub: its object belongs to no database.
        kTransient = 512, ///< Decoded for a pass over the drawing: dropped at its last close.
    };
    ZvDbObject *object = nullptr; ///< Owned; null until it is first opened (decoded from its record).
    std::uint64_t handle = 0;
    std::uint32_t owner = 0; ///< Dense position of the owner.
    std::uint32_t record = 0; ///< Number of its record in the tag store plus 1; 0 for a new object.
    std::uint16_t cls = 0; ///< Number of its class in the table of classes.
    std::uint16_t flags = 0;
    std::uint16_t readers = 0;
    std::uint16_t serial = 0; ///< While open for write: low bits of the undo level that has its state already.

    bool has(Flag flag) const { return (flags & flag) != 0; }
    void set(Flag flag, bool on) { flags = std::uint16_t(on ? flags | flag : flags & ~flag); }
    bool isErased() const { return has(kErased); }
};
static_assert(sizeof(ZvDbStub) <= 32, "half a million of them are ordinary");

/// What an object of no database keeps for itself. Made by the first setter that needs it.
struct ZvDbDetachedStub : ZvDbStub
{
    ZvDbDetachedStub() { flags = kDetached; }
    ZvDbEntityProperties properties;
    ZvDbSharedChain xdata;
    /// Of a copy: number of the drawing of its original, whose record (ZvDbStub::record) the copy's starts from.
    std::uint32_t database = 0;
};

/// The record blocks of a database, in chunks that never move. A chunk is aligned to its size and begins with a block
/// that names the database, so that a record block finds both its database and its own position without a pointer of
/// its own. Positions count from 1; those divisible by kChunkSize are not used.
class ZvDbStubTable
{
public:
    static constexpr std::uint32_t kChunkSize = 1024;

    explicit ZvDbStubTable(ZvDbDatabasePrivate *database) : m_database(database) { }
    ~ZvDbStubTable();
    ZvDbStubTable(const ZvDbStubTable &) = delete;
    ZvDbStubTable &operator=(const ZvDbStubTable &) = delete;

    /// Position of a new, zeroed block.
    std::uint32_t add();
    /// First position behind all that are in use.
    std::uint32_t end() const { return m_end; }
    bool isUsed(std::uint32_t index) const { return index < m_end && index % kChunkSize != 0; }
    ZvDbStub &operator[](std::uint32_t index) const { return m_chunks[index / kChunkSize]->stubs[index % kChunkSize]; }
    void clear();

    static ZvDbDatabasePrivate *databaseOf(const ZvDbStub *stub) { return chunkOf(stub)->head.database; }
    static std::uint32_t indexOf(const ZvDbStub *stub)
    {
        const Chunk *chunk = chunkOf(stub);
        return chunk->head.number * kChunkSize + std::uint32_t(stub - chunk->stubs);
    }

private:
    struct Head
    {
        ZvDbDatabasePrivate *database;
        std::uint32_t number;
    };
    union Chunk {
        Head head;
        ZvDbStub stubs[kChunkSize]; // the first one is the head
        Chunk() { } // NOLINT(modernize-use-equals-default): that would be deleted, the blocks are made one by one
    };
    static constexpr std::size_t kChunkBytes = sizeof(ZvDbStub) * kChunkSize;
    static const Chunk *chunkOf(const ZvDbStub *stub)
    {
        return reinterpret_cast<const Chunk *>(reinterpret_cast<std::uintptr_t>(stub)
                                               & ~std::uintptr_t(kChunkBytes - 1));
    }

    ZvDbDatabasePrivate *m_database;
    std::vector<Chunk *> m_chunks;
    std::uint32_t m_end = 1;
};

/// The distinct combinations of shared entity properties. Numbers count from 1 and stay good.
class ZvDbPropertiesTable
{
public:
    ZvDbPropertiesTable() { clear(); }
    std::uint32_t intern(const ZvDbEntityProperties &properties);
    /// 0 gives the default properties.
    const ZvDbEntityProperties &at(std::uint32_t number) const { return m_properties[number]; }
    /// One more than the highest number.
    std::uint32_t end() const { return std::uint32_t(m_properties.size()); }
    void clear();

private:
    std::deque<ZvDbEntityProperties> m_properties; // references stay good while it grows
    std::unordered_multimap<std::size_t, std::uint32_t> m_numbers;
};

/// Handles to positions: pages of 64 neighbouring handles, since handles are given out one after another.
class ZvDbHandleTable
{
public:
    /// 0 for an unknown handle.
    std::uint32_t find(std::uint64_t handle) const;
    void insert(std::uint64_t handle, std::uint32_t index);
    void clear() { m_pages.clear(); }

private:
    struct Page
    {
        std::uint32_t index[64] = {};
    };
    std::unordered_map<std::uint64_t, Page> m_pages;
};

/// A class of database objects: how its objects are made, copied, and called in a drawing file.
struct ZvDbClass
{
    ZvRxClass *descriptor = nullptr;
    const char *fileName = nullptr; ///< Record name in a file; null for classes that share one with another class.
    ZvDbObject *(*make)() = nullptr; ///< Null for classes that only their maker can make.
    void (*assign)(ZvDbObject &to, const ZvDbObject &from) = nullptr; ///< Copies the state of equal classes.
    bool isEntity = false;
    bool isSymbolTable = false;
    bool isBlockReference = false;

    template <class T> static ZvDbClass of(const char *fileName);
};

/// All classes. A number holds for the life of the process.
class ZvDbClassTable
{
public:
    static ZvDbClassTable &instance();
    const ZvDbClass &at(std::uint16_t number) const { return m_classes[number]; }
    std::uint16_t size() const { return std::uint16_t(m_classes.size()); }
    /// Number of the class, or of its nearest ancestor that is in the table.
    std::uint16_t numberOf(const ZvRxClass *descriptor) const;
    /// Number of the class behind a record name such as "LINE"; \a fallback for a name that is none's.
    std::uint16_t numberOfFileName(std::string_view fileName, std::uint16_t fallback) const;

private:
    ZvDbClassTable();
    std::vector<ZvDbClass> m_classes;
    std::unordered_map<const ZvRxClass *, std::uint16_t> m_numbers;
    std::unordered_map<std::string_view, std::uint16_t> m_fileNames;
};

/// The classes of the entities, and of everything else; each stands beside the classes it lists.
void zvdbListEntityClasses(std::deque<ZvDbClass> &classes);
void zvdbListObjectClasses(std::deque<ZvDbClass> &classes);

template <class T> ZvDbClass ZvDbClass::of(const char *fileName)
{
    ZvDbClass cls;
    cls.descriptor = T::desc();
    cls.fileName = fileName;
    cls.make = []() -> ZvDbObject * { return new T; };
    cls.assign = [](ZvDbObject &to, const ZvDbObject &from) { static_cast<T &>(to) = static_cast<const T &>(from); };
    return cls;
}

#endif
