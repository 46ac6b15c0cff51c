// SPDX-License-Identifier: MIT
#include "db/zvdbobject.h"

#include "db/zvdbdictionary.h"
#include "zvdbdatabase_p.h"

#include <limits>

ZVRX_DEFINE_MEMBERS(ZvDbObject, ZvRxObject)

namespace {

int openObjects = 0; // in all databases

bool isAttached(const ZvDbStub *stub)
{
    return stub && !stub->has(ZvDbStub::kDetached);
}

/// The stub that an object of no database keeps what needs a place in.
ZvDbDetachedStub &detachedStub(ZvDbObject &object)
{
    ZvDbStub *stub = ZvDbObjectAccess::stub(&object);
    if (!stub) {
        stub = new ZvDbDetachedStub;
        ZvDbObjectAccess::setStub(&object, stub);
    }
    return static_cast<ZvDbDetachedStub &>(*stub);
}

/// What the end of a write brings with it. The object is closed, or open for read again.
void finishWrite(ZvDbDatabasePrivate &d, std::uint32_t index, std::uint16_t flags)
{
    const ZvDbDatabasePtr hold(&d.q); // a receiver may let the last other reference go
    d.undo.endImplicitStep();
    const bool erased = d.stubs[index].isErased();
    if (flags & ZvDbStub::kNew) {
        if (!erased)
            d.notifyAppended(index);
        return;
    }
    if (flags & ZvDbStub::kEraseChanged)
        d.notifyErased(index, erased);
    if ((flags & ZvDbStub::kModified) && !erased)
        d.notifyModified(index);
}

/// Ends the writing of an object and returns what it was flagged with.
std::uint16_t leaveWriting(ZvDbStub &stub)
{
    const std::uint16_t writing
        = ZvDbStub::kOpenForWrite | ZvDbStub::kModified | ZvDbStub::kNew | ZvDbStub::kEraseChanged;
    const std::uint16_t flags = stub.flags;
    stub.flags = std::uint16_t(flags & ~writing);
    return flags;
}

void dropTransient(ZvDbStub &stub)
{
    delete stub.object;
    stub.object = nullptr;
    stub.set(ZvDbStub::kTransient, false);
}

} // namespace

ZvDbObject::ZvDbObject() = default;

ZvDbObject::~ZvDbObject()
{
    if (m_stub && m_stub->has(ZvDbStub::kDetached))
        delete static_cast<ZvDbDetachedStub *>(m_stub);
}

ZvDbObjectId ZvDbObject::objectId() const
{
    if (!isAttached(m_stub))
        return ZvDbObjectId();
    return ZvDbStubTable::databaseOf(m_stub)->idAt(ZvDbStubTable::indexOf(m_stub));
}

ZvDbDatabase *ZvDbObject::database() const
{
    return isAttached(m_stub) ? &ZvDbStubTable::databaseOf(m_stub)->q : nullptr;
}

std::uint64_t ZvDbObject::handle() const
{
    return m_stub ? m_stub->handle : 0;
}

ZvDbObjectId ZvDbObject::ownerId() const
{
    return isAttached(m_stub) ? ZvDbStubTable::databaseOf(m_stub)->idAt(m_stub->owner) : ZvDbObjectId();
}

// ---- open and close

Zv::ErrorStatus zvdbOpenObject(ZvDbObject *&object, ZvDbObjectId id, ZvDb::OpenMode mode, bool openErased)
{
    return zvdbOpenObjectOfClass(object, id, mode, nullptr, openErased);
}

Zv::ErrorStatus zvdbOpenObjectOfClass(ZvDbObject *&object, ZvDbObjectId id, ZvDb::OpenMode mode, const ZvRxClass *cls,
                                      bool openErased)
{
    object = nullptr;
    if (id.isNull())
        return Zv::eNullObjectId;
    ZvDbDatabasePrivate *d = ZvDbDatabasePrivate::of(id);
    if (!d)
        return Zv::eNoDatabase;
    ZvDbStub &stub = d->stubs[id.index()];
    if (stub.isErased() && !openErased)
        return Zv::eWasErased;
    if (cls && !d->classAt(id.index()).descriptor->isDerivedFrom(cls))
        return Zv::eNotThatKindOfClass;
    if (stub.has(ZvDbStub::kOpenForWrite))
        return Zv::eWasOpenForWrite;
    const bool write = mode == ZvDb::kForWrite;
    if (write && stub.readers > 0)
        return Zv::eWasOpenForRead;
    if (stub.readers == std::numeric_limits<std::uint16_t>::max())
        return Zv::eFailed;
    if (!d->objectAt(id.index()))
        return Zv::eFileDamaged;

    if (write) {
        stub.set(ZvDbStub::kOpenForWrite, true);
        stub.set(ZvDbStub::kTransient, false);
        stub.serial = 0;
    } else {
        ++stub.readers;
    }
    d->countOpened(write);
    object = stub.object;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbObject::close()
{
    if (!isAttached(m_stub))
        return Zv::eNoDatabase;
    ZvDbStub &stub = *m_stub;
    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    if (stub.has(ZvDbStub::kOpenForWrite)) {
        const std::uint16_t flags = leaveWriting(stub);
        d.countClosed(true);
        finishWrite(d, ZvDbStubTable::indexOf(m_stub), flags);
        return Zv::eOk;
    }
    if (stub.readers == 0) {
        ZvAssert("isReadEnabled()", __FILE__, __LINE__);
        return Zv::eFailed;
    }
    --stub.readers;
    d.countClosed(false);
    if (stub.readers == 0 && stub.has(ZvDbStub::kTransient))
        dropTransient(stub);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbObject::upgradeOpen()
{
    if (!isAttached(m_stub))
        return Zv::eNoDatabase;
    if (m_stub->has(ZvDbStub::kOpenForWrite))
        return Zv::eWasOpenForWrite;
    if (m_stub->readers != 1)
        return m_stub->readers > 1 ? Zv::eWasOpenForRead : Zv::eFailed;
    m_stub->readers = 0;
    m_stub->set(ZvDbStub::kOpenForWrite, true);
    m_stub->set(ZvDbStub::kTransient, false);
    m_stub->serial = 0;
    ++ZvDbStubTable::databaseOf(m_stub)->writeCount;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbObject::downgradeOpen()
{
    if (!isAttached(m_stub))
        return Zv::eNoDatabase;
    if (!m_stub->has(ZvDbStub::kOpenForWrite))
        return Zv::eNotOpenForWrite;
    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    const std::uint16_t flags = leaveWriting(*m_stub);
    m_stub->readers = 1;
    --d.writeCount;
    finishWrite(d, ZvDbStubTable::indexOf(m_stub), flags);
    return Zv::eOk;
}

bool ZvDbObject::isReadEnabled() const
{
    return !isAttached(m_stub) || m_stub->readers > 0 || m_stub->has(ZvDbStub::kOpenForWrite);
}

bool ZvDbObject::isWriteEnabled() const
{
    return !isAttached(m_stub) || m_stub->has(ZvDbStub::kOpenForWrite);
}

bool ZvDbObject::isModified() const
{
    return m_stub && (m_stub->has(ZvDbStub::kModified) || m_stub->has(ZvDbStub::kNotifying));
}

bool ZvDbObject::isErased() const
{
    return m_stub && m_stub->isErased();
}

void ZvDbDatabasePrivate::countOpened(bool write)
{
    ++openings;
    ++openCount;
    writeCount += write;
    ++openObjects;
}

void ZvDbDatabasePrivate::countClosed(bool write)
{
    --openCount;
    writeCount -= write;
    --openObjects;
}

void ZvDbDatabasePrivate::forgetOpenObjects()
{
    openObjects -= openCount;
    openCount = 0;
}

int zvdbOpenObjectCount()
{
    return openObjects;
}

// ---- changes

bool ZvDbObject::assertWriteEnabled()
{
    if (!isAttached(m_stub))
        return true;
    if (!m_stub->has(ZvDbStub::kOpenForWrite)) {
        ZvAssert("isWriteEnabled()", __FILE__, __LINE__);
        return false;
    }
    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    d.undo.noteState(*m_stub);
    m_stub->set(ZvDbStub::kModified, true);
    d.touch(ZvDbStubTable::indexOf(m_stub));
    return true;
}

Zv::ErrorStatus ZvDbObject::erase(bool erasing)
{
    if (!isAttached(m_stub))
        return Zv::eNoDatabase;
    if (!m_stub->has(ZvDbStub::kOpenForWrite)) {
        ZvAssert("isWriteEnabled()", __FILE__, __LINE__);
        return Zv::eNotOpenForWrite;
    }
    if (m_stub->isErased() == erasing)
        return erasing ? Zv::eWasErased : Zv::eOk;
    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    const std::uint32_t index = ZvDbStubTable::indexOf(m_stub);
    if (erasing && d.isIndispensable(index))
        return Zv::eObjectReferenced;
    ZvDbChange change;
    change.kind = ZvDbChange::kErased;
    change.index = index;
    d.undo.note(std::move(change));
    d.setErased(*m_stub, erasing);
    // Erased and brought back within one opening is no change for anybody who listens.
    m_stub->set(ZvDbStub::kEraseChanged, !m_stub->has(ZvDbStub::kEraseChanged));
    d.touch(index);
    return Zv::eOk;
}

ZvRxObject *ZvDbObject::clone() const
{
    const ZvDbClassTable &classes = ZvDbClassTable::instance();
    const ZvDbClass &cls = classes.at(classes.numberOf(isA()));
    if (cls.descriptor != isA() || !cls.make)
        return nullptr;
    std::unique_ptr<ZvDbObject> copy(cls.make());
    cls.assign(*copy, *this);
    if (cls.isEntity)
        detachedStub(*copy).properties = zvdbProperties(static_cast<const ZvDbEntity &>(*this));
    if (ZvResBuf *chain = xData(ZvString()))
        detachedStub(*copy).xdata = ZvDbSharedChain(chain, zvutRelRb);
    if (isAttached(m_stub)) {
        const ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
        if (const std::uint32_t record = d.recordToStartFrom(ZvDbStubTable::indexOf(m_stub))) {
            detachedStub(*copy).record = record;
            detachedStub(*copy).database = d.number;
        }
    }
    return copy.release();
}

bool ZvDbObject::copyFrom(const ZvRxObject *other)
{
    if (!other || other->isA() != isA())
        return false;
    const ZvDbObject &source = static_cast<const ZvDbObject &>(*other);
    const ZvDbClassTable &classes = ZvDbClassTable::instance();
    const ZvDbClass &cls = classes.at(classes.numberOf(isA()));
    if (cls.descriptor != isA() || !cls.assign)
        return false;
    if (this == &source)
        return true;
    if (!assertWriteEnabled())
        return false;
    // A record keeps its name, by which its table finds it.
    const bool isRecord = isAttached(m_stub) && isKindOf(ZvDbSymbolTableRecord::desc());
    const ZvString name = isRecord ? static_cast<ZvDbSymbolTableRecord *>(this)->name() : ZvString();
    cls.assign(*this, source);
    if (isRecord)
        ZvDbObjectAccess::setName(static_cast<ZvDbSymbolTableRecord &>(*this), name);
    if (cls.isEntity)
        zvdbSetProperties(static_cast<ZvDbEntity &>(*this), zvdbProperties(static_cast<const ZvDbEntity &>(source)));
    return true;
}

void ZvDbObject::fileFields(ZvDbFiler &) { }

// ---- ZvDbObjectAccess

ZvDbObject *ZvDbObjectAccess::make(std::uint16_t cls)
{
    const ZvDbClass &entry = ZvDbClassTable::instance().at(cls);
    return entry.make ? entry.make() : nullptr;
}

ZvDbObject *ZvDbObjectAccess::make(ZvDbDatabasePrivate &database, std::uint32_t index)
{
    ZvDbStub &stub = database.stubs[index];
    ZvDbObject *object = make(stub.cls);
    if (!object)
        return nullptr;
    stub.object = object;
    object->m_stub = &stub;
    return object;
}

std::unique_ptr<ZvDbObject> ZvDbObjectAccess::copyState(const ZvDbObject &object)
{
    const ZvDbClass &cls = ZvDbClassTable::instance().at(object.m_stub->cls);
    std::unique_ptr<ZvDbObject> copy;
    if (cls.make) {
        copy.reset(cls.make());
        cls.assign(*copy, object);
    }
    return copy;
}

void ZvDbObjectAccess::restoreState(ZvDbObject &object, const ZvDbObject &state)
{
    ZvDbClassTable::instance().at(object.m_stub->cls).assign(object, state);
}

// ---- shared properties of entities

const ZvDbEntityProperties &zvdbProperties(const ZvDbEntity &entity)
{
    static const ZvDbEntityProperties defaults;
    const ZvDbStub *stub = ZvDbObjectAccess::stub(&entity);
    if (!stub)
        return defaults;
    if (stub->has(ZvDbStub::kDetached))
        return static_cast<const ZvDbDetachedStub *>(stub)->properties;
    return ZvDbStubTable::databaseOf(stub)->propertiesOf(ZvDbStubTable::indexOf(stub));
}

Zv::ErrorStatus zvdbSetProperties(ZvDbEntity &entity, const ZvDbEntityProperties &properties)
{
    ZvDbStub *stub = ZvDbObjectAccess::stub(&entity);
    if (!isAttached(stub)) {
        detachedStub(entity).properties = properties;
        return Zv::eOk;
    }
    if (!stub->has(ZvDbStub::kOpenForWrite)) {
        ZvAssert("isWriteEnabled()", __FILE__, __LINE__);
        return Zv::eNotOpenForWrite;
    }
    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(stub);
    const std::uint32_t index = ZvDbStubTable::indexOf(stub);
    const std::uint32_t before = d.propertyNumbers[index];
    const std::uint32_t after = d.propertiesTable.intern(properties);
    if (before == after)
        return Zv::eOk;
    ZvDbChange change;
    change.kind = ZvDbChange::kProperties;
    change.index = index;
    change.properties = before;
    d.undo.note(std::move(change));
    d.propertyNumbers[index] = after;
    stub->set(ZvDbStub::kModified, true);
    d.touch(index);
    return Zv::eOk;
}

// ---- extended data

namespace {

/// A copy of one buffer without the next.
ZvResBuf *copyBuffer(const ZvResBuf &buffer)
{
    ZvResBuf *copy = zvutNewRb(buffer.restype);
    copy->resval = buffer.resval;
    const ZvString text = buffer.text();
    const bool isText = buffer.restype >= 1000 && buffer.restype <= 1005;
    if (isText)
        copy->resval.rstring = zvutNewString(text.wstr());
    return copy;
}

/// Grows a chain at its end.
class ChainBuilder
{
public:
    void append(const ZvResBuf &buffer)
    {
        *m_end = copyBuffer(buffer);
        m_end = &(*m_end)->rbnext;
    }
    ZvResBuf *take() { return m_first; }

private:
    ZvResBuf *m_first = nullptr;
    ZvResBuf **m_end = &m_first;
};

bool isApplication(const ZvResBuf *buffer)
{
    return buffer->restype == 1001;
}

/// First buffer behind the application's data that begins at \a at.
const ZvResBuf *endOfApplication(const ZvResBuf *at)
{
    for (at = at->rbnext; at && !isApplication(at); at = at->rbnext) { }
    return at;
}

const ZvResBuf *findApplication(const ZvResBuf *chain, const ZvString &name)
{
    for (; chain; chain = chain->rbnext) {
        if (isApplication(chain) && chain->text().compareNoCase(name) == 0)
            return chain;
    }
    return nullptr;
}

ZvResBuf *copyRange(const ZvResBuf *from, const ZvResBuf *end)
{
    ChainBuilder copy;
    for (; from && from != end; from = from->rbnext)
        copy.append(*from);
    return copy.take();
}

} // namespace

ZvDbSharedChain ZvDbObjectAccess::xData(const ZvDbObject &object)
{
    const ZvDbStub *stub = object.m_stub;
    if (!stub)
        return nullptr;
    if (stub->has(ZvDbStub::kDetached))
        return static_cast<const ZvDbDetachedStub *>(stub)->xdata;
    const ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(stub);
    const std::uint32_t index = ZvDbStubTable::indexOf(stub);
    const auto it = d.xdata.find(index);
    if (it != d.xdata.end())
        return it->second;
    if (stub->record == 0 || !d.source)
        return nullptr;
    return ZvDbSharedChain(d.source->readXData(index), zvutRelRb);
}

ZvResBuf *ZvDbObject::xData(const ZvString &applicationName) const
{
    const ZvDbSharedChain chain = ZvDbObjectAccess::xData(*this);
    if (applicationName.isEmpty())
        return copyRange(chain.get(), nullptr);
    const ZvResBuf *data = findApplication(chain.get(), applicationName);
    return data ? copyRange(data, endOfApplication(data)) : nullptr;
}

Zv::ErrorStatus ZvDbObject::setXData(const ZvResBuf *chain)
{
    if (!chain || !isApplication(chain))
        return Zv::eInvalidInput;
    if (!isWriteEnabled()) {
        ZvAssert("isWriteEnabled()", __FILE__, __LINE__);
        return Zv::eNotOpenForWrite;
    }
    ChainBuilder result;
    const ZvDbSharedChain old = ZvDbObjectAccess::xData(*this);
    for (const ZvResBuf *data = old.get(); data;) {
        const ZvResBuf *end = endOfApplication(data);
        if (!findApplication(chain, data->text())) {
            for (; data != end; data = data->rbnext)
                result.append(*data);
        }
        data = end;
    }
    for (const ZvResBuf *data = chain; data;) {
        const ZvResBuf *end = endOfApplication(data);
        if (data->rbnext != end) { // a bare name removes
            for (; data != end; data = data->rbnext)
                result.append(*data);
        }
        data = end;
    }
    const ZvDbSharedChain value(result.take(), zvutRelRb);
    if (!isAttached(m_stub)) {
        detachedStub(*this).xdata = value;
        return Zv::eOk;
    }

    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    const std::uint32_t index = ZvDbStubTable::indexOf(m_stub);
    for (const ZvResBuf *data = value.get(); data; data = endOfApplication(data))
        d.registerApplication(data->text());
    auto payload = std::make_unique<ZvDbXDataPayload>();
    const auto it = d.xdata.find(index);
    payload->isSet = it != d.xdata.end();
    if (payload->isSet)
        payload->chain = it->second;
    ZvDbChange change;
    change.kind = ZvDbChange::kXData;
    change.index = index;
    change.payload = std::move(payload);
    d.undo.note(std::move(change));
    d.xdata[index] = value;
    m_stub->set(ZvDbStub::kModified, true);
    d.touch(index);
    return Zv::eOk;
}

ZvDbObjectId ZvDbObject::extensionDictionary() const
{
    if (!isAttached(m_stub))
        return ZvDbObjectId();
    const ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    const std::uint32_t index = ZvDbStubTable::indexOf(m_stub);
    const auto made = d.extensions.find(index);
    if (made != d.extensions.end() && !d.stubs[made->second].isErased())
        return d.idAt(made->second);
    if (m_stub->record == 0 || !d.source)
        return ZvDbObjectId();
    const ZvDbObjectId id = d.source->extensionDictionary(index);
    return d.isUsable(id, ZvDbDictionary::desc()) ? id : ZvDbObjectId();
}

Zv::ErrorStatus ZvDbObject::createExtensionDictionary(ZvDbObjectId &id)
{
    id = extensionDictionary();
    if (!id.isNull())
        return Zv::eOk;
    if (!isAttached(m_stub))
        return Zv::eNoDatabase;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    ZvDbDatabasePrivate &d = *ZvDbStubTable::databaseOf(m_stub);
    ZvDbDictionary *dictionary = new ZvDbDictionary;
    ZvDbObjectAccess::makeHardOwner(*dictionary); // nothing else holds what it holds
    const Zv::ErrorStatus status = d.q.addObject(dictionary, id, objectId());
    if (status != Zv::eOk) {
        delete dictionary;
        return status;
    }
    d.extensions[ZvDbStubTable::indexOf(m_stub)] = id.index();
    return dictionary->close();
}
