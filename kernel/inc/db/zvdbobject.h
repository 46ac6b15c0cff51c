// SPDX-License-Identifier: MIT
#ifndef ZVDBOBJECT_H
#define ZVDBOBJECT_H

#include "base/zvarray.h"
#include "base/zvrxobject.h"
#include "base/zvsmartptr.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"
#include "db/zvresbuf.h"

#include <utility>

class ZvDbFiler;
struct ZvDbStub;

/// Base of all database objects.
///
/// Objects belong to their database and are reached by id: zvdbOpenObject() hands one out, close() gives it back. Any
/// number of readers may hold an object at once; a writer holds it alone. Objects made by `new` belong to no database
/// until they are added to one; their setters work, raise nothing and enter no undo.
///
/// A setter on an object that is not open for write changes nothing and is reported through ZvAssert.
class ZV_EXPORT ZvDbObject : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbObject)
public:
    ZvDbObject(const ZvDbObject &) = delete;
    ~ZvDbObject() override;

    /// Null for an object of no database.
    ZvDbObjectId objectId() const;
    /// Null for an object of no database.
    ZvDbDatabase *database() const;
    /// Handle in the drawing file; 0 for an object of no database.
    std::uint64_t handle() const;
    /// The object that holds this one: a table, a dictionary, a block. May be null.
    ZvDbObjectId ownerId() const;

    /// Gives the object back. The end of a write raises the notices and enters the undo record; a write that changed
    /// nothing leaves no trace.
    Zv::ErrorStatus close();
    /// Open for read or for write.
    bool isReadEnabled() const;
    /// Open for write.
    bool isWriteEnabled() const;
    /// Changed since it was opened for write. True inside objectModified() of this object.
    bool isModified() const;
    /// Whether the object is erased; false for an object of no database.
    bool isErased() const;
    /// Erases, or un-erases with false. The object must be open for write; it stays in its place and keeps its id.
    Zv::ErrorStatus erase(bool erasing = true);
    /// From the only reader to the writer. eWasOpenForRead with other readers, eWasOpenForWrite where it is a writer
    /// already.
    Zv::ErrorStatus upgradeOpen();
    /// From the writer to a reader: ends the write as close() does. eNotOpenForWrite for a reader.
    Zv::ErrorStatus downgradeOpen();

    /// Extended data of an application as a chain that starts with its name (type 1001), or null. The caller frees it
    /// with zvutRelRb(). An empty name gives the data of all applications.
    ZvResBuf *xData(const ZvString &applicationName) const;
    /// Replaces the data of each application named in the chain; a chain of the bare name removes it. Not taken over.
    Zv::ErrorStatus setXData(const ZvResBuf *chain);
    /// Id of the object's extension dictionary, null when it has none.
    ZvDbObjectId extensionDictionary() const;
    /// Gives the object an extension dictionary, if it has none yet. The object must be open for write.
    /// eNoDatabase, eNotOpenForWrite.
    Zv::ErrorStatus createExtensionDictionary(ZvDbObjectId &id);

    /// A copy that belongs to no database. Owned by the caller; null for classes that are not copied.
    ZvRxObject *clone() const override;
    /// Takes over the state of \a other, which must be of the same class.
    bool copyFrom(const ZvRxObject *other) override;

    /// Reads or writes the object's own data; see ZvDbFiler. A class calls its base first. Used by the kernel.
    virtual void fileFields(ZvDbFiler &filer);
    /// The class name of the record in a drawing file, such as "LINE". Never null.
    virtual const char *fileName() const = 0;

protected:
    ZvDbObject();
    /// The object keeps its identity: which database it belongs to and its place in it. Derived classes copy their own
    /// data; only clone() and copyFrom() use it.
    ZvDbObject &operator=(const ZvDbObject &) { return *this; } // NOLINT(bugprone-unhandled-self-assignment)
    /// To be called by every setter before its first change: true when the change may go on. It notes the undo state.
    bool assertWriteEnabled();

private:
    friend class ZvDbDatabase;
    friend struct ZvDbStub;
    friend class ZvDbObjectAccess;

    ZvDbStub *m_stub = nullptr;
};

/// Opens an object. Fails for the null id, an erased object (unless \a openErased), an object that is open for write
/// elsewhere and, for write, one that is open at all. On failure \a object is null.
ZV_EXPORT Zv::ErrorStatus zvdbOpenObject(ZvDbObject *&object, ZvDbObjectId id, ZvDb::OpenMode mode, bool openErased = false);

/// The same with a class filter: eNotThatKindOfClass for an object of another class.
ZV_EXPORT Zv::ErrorStatus zvdbOpenObjectOfClass(ZvDbObject *&object, ZvDbObjectId id, ZvDb::OpenMode mode,
                                                const ZvRxClass *cls, bool openErased = false);

/// The same, with the class of the pointer as the filter.
template<class T>
Zv::ErrorStatus zvdbOpenObject(T *&object, ZvDbObjectId id, ZvDb::OpenMode mode, bool openErased = false)
{
    ZvDbObject *plain = nullptr;
    const Zv::ErrorStatus status = zvdbOpenObjectOfClass(plain, id, mode, T::desc(), openErased);
    object = static_cast<T *>(plain);
    return status;
}

/// Holds an object open for the time of a scope.
template<class T>
class ZvDbObjectPointer
{
public:
    /// As zvdbOpenObject(): check the pointer before use.
    ZvDbObjectPointer(ZvDbObjectId id, ZvDb::OpenMode mode, bool openErased = false)
    {
        m_status = zvdbOpenObject(m_object, id, mode, openErased);
    }
    ZvDbObjectPointer(const ZvDbObjectPointer &) = delete;
    ZvDbObjectPointer &operator=(const ZvDbObjectPointer &) = delete;
    ~ZvDbObjectPointer() { close(); }
    /// What opening gave.
    Zv::ErrorStatus openStatus() const { return m_status; }
    /// Whether the object is open.
    explicit operator bool() const { return m_object != nullptr; }
    /// The object; null where it could not be opened, and after close().
    T *get() const { return m_object; }
    /// Not to be used without an object.
    T *operator->() const { return m_object; }
    T &operator*() const { return *m_object; }
    /// Closes early; a second call is nothing.
    void close()
    {
        // Forgotten first: a reactor may throw in the close, and the destructor must not close once more.
        if (T *object = std::exchange(m_object, nullptr))
            object->close();
    }

private:
    T *m_object = nullptr;
    Zv::ErrorStatus m_status;
};

/// Id behind an entity name of two words, as zvedSSName() gives it.
ZV_EXPORT Zv::ErrorStatus zvdbGetObjectId(ZvDbObjectId &id, const long entityName[2]);
/// Entity name of an id; never fails, the null id gives two zero words.
ZV_EXPORT void zvdbGetEntityName(long entityName[2], ZvDbObjectId id);

#endif
