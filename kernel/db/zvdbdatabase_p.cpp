// SPDX-License-Identifier: MIT
#include "zvdbdatabase_p.h"

#include "db/zvdbentities.h"

#include <algorithm>

namespace {

/// The living databases by number. Numbers are never used twice, so an id of a dead one finds null.
std::vector<ZvDbDatabasePrivate *> &databases()
{
    static std::vector<ZvDbDatabasePrivate *> table(1, nullptr);
    return table;
}

std::uint32_t enlist(ZvDbDatabasePrivate *database)
{
    databases().push_back(database);
    return std::uint32_t(databases().size() - 1);
}

} // namespace

ZvDbFileSource::~ZvDbFileSource() = default;

ZvDbDatabasePrivate::ZvDbDatabasePrivate(ZvDbDatabase &database, bool metric)
    : q(database), number(enlist(this)), stubs(this), undo(*this)
{
    propertyNumbers.resize(1);
    setDefaultVariables(metric);
}

ZvDbDatabasePrivate::~ZvDbDatabasePrivate()
{
    clear();
    forgetOpenObjects();
    databases()[number] = nullptr;
}

ZvDbDatabasePrivate *ZvDbDatabasePrivate::ofNumber(std::uint32_t number)
{
    return number < databases().size() ? databases()[number] : nullptr;
}

ZvDbDatabasePrivate *ZvDbDatabasePrivate::of(ZvDbObjectId id)
{
    ZvDbDatabasePrivate *database = ofNumber(std::uint32_t(id.asInt64() >> 32));
    return database && database->stubs.isUsed(id.index()) ? database : nullptr;
}

ZvDbDatabasePrivate *ZvDbDatabasePrivate::of(const ZvDbObject *object)
{
    const ZvDbStub *stub = object ? ZvDbObjectAccess::stub(object) : nullptr;
    return stub && !stub->has(ZvDbStub::kDetached) ? ZvDbStubTable::databaseOf(stub) : nullptr;
}

bool ZvDbDatabasePrivate::isUsable(ZvDbObjectId id, const ZvRxClass *cls) const
{
    return owns(id) && !stubs[id.index()].isErased() && classAt(id.index()).descriptor->isDerivedFrom(cls);
}

bool ZvDbDatabasePrivate::isIndispensable(std::uint32_t index) const
{
    if (index == layerZero || index == byLayer || index == byBlock || index == continuous || index == modelSpace
        || index == rootDictionary)
        return true;
    return std::find(std::begin(tables), std::end(tables), index) != std::end(tables);
}

// ---- objects

std::uint64_t ZvDbDatabasePrivate::freeHandle()
{
    while (handles.find(m_handleSeed) != 0)
        ++m_handleSeed;
    return m_handleSeed;
}

void ZvDbDatabasePrivate::giveHandle(std::uint32_t index)
{
    stubs[index].handle = freeHandle();
    handles.insert(stubs[index].handle, index);
    ++m_handleSeed;
}

std::uint32_t ZvDbDatabasePrivate::addStub(std::uint16_t cls, std::uint64_t handle, std::uint32_t owner,
                                           std::uint32_t record)
{
    if (handle == 0 || handles.find(handle) != 0)
        handle = freeHandle();
    m_handleSeed = std::max(m_handleSeed, handle + 1);
    const std::uint32_t index = stubs.add();
    ZvDbStub &stub = stubs[index];
    stub.cls = cls;
    stub.handle = handle;
    stub.owner = owner;
    stub.record = record;
    stub.set(ZvDbStub::kEntity, ZvDbClassTable::instance().at(cls).isEntity);
    stub.set(ZvDbStub::kFileChanged, record == 0);
    propertyNumbers.resize(stubs.end());
    handles.insert(handle, index);
    return index;
}

std::uint32_t ZvDbDatabasePrivate::adopt(ZvDbObject *object, std::uint32_t owner, std::uint64_t handle)
{
    const std::uint32_t index = addStub(ZvDbClassTable::instance().numberOf(object->isA()), handle, owner, 0);
    attach(object, index);
    return index;
}

void ZvDbDatabasePrivate::attach(ZvDbObject *object, std::uint32_t index)
{
    ZvDbStub &stub = stubs[index];
    if (stub.has(ZvDbStub::kEntity)) {
        // Ids of another drawing mean nothing here.
        ZvDbEntityProperties properties = zvdbProperties(static_cast<const ZvDbEntity &>(*object));
        if (!owns(properties.layer))
            properties.layer = idAt(layerZero);
        for (ZvDbObjectId *id : {&properties.linetype, &properties.material, &properties.plotStyle}) {
            if (!owns(*id))
                *id = ZvDbObjectId();
        }
        if (properties.plotStyle.isNull() && properties.plotStyleType == ZvDb::kPlotStyleById)
            properties.plotStyleType = ZvDb::kPlotStyleByLayer;
        setProperties(index, properties);
    }
    if (ZvDbStub *own = ZvDbObjectAccess::stub(object)) {
        ZvDbDetachedStub *detached = static_cast<ZvDbDetachedStub *>(own);
        if (detached->record && detached->database == number)
            copiedRecords[index] = detached->record;
        if (detached->xdata) {
            xdata[index] = detached->xdata;
            for (const ZvResBuf *data = detached->xdata.get(); data; data = data->rbnext) {
                if (data->restype == 1001)
                    registerApplication(data->text());
            }
        }
        delete detached;
    }
    stub.object = object;
    ZvDbObjectAccess::setStub(object, &stub);
}

void ZvDbDatabasePrivate::copyAttributes(ZvDbBlockReference &reference)
{
    if (reference.attributeIds().empty())
        return;
    std::vector<ZvDbObjectId> copies;
    for (ZvDbObjectId id : reference.attributeIds()) {
        if (!isUsable(id, ZvDbAttribute::desc()))
            continue;
        const ZvDbObject *attribute = objectAt(id.index());
        const ZvDbBlockReference *original = zvrxCast<ZvDbBlockReference>(objectAt(stubs[id.index()].owner));
        if (!attribute || !original)
            continue;
        // The copy may have been moved already; its attributes follow.
        ZvDbAttribute *copy = static_cast<ZvDbAttribute *>(attribute->clone());
        copy->transformBy(reference.blockTransform() * original->blockTransform().inverse());
        ZvDbObjectId copied;
        if (q.addObject(copy, copied, reference.objectId()) == Zv::eOk) {
            copy->close();
            copies.push_back(copied);
        }
    }
    ZvDbObjectAccess::setAttributes(reference, std::move(copies));
}

std::uint32_t ZvDbDatabasePrivate::recordToStartFrom(std::uint32_t index) const
{
    if (stubs[index].record)
        return stubs[index].record;
    const auto found = copiedRecords.find(index);
    return found == copiedRecords.end() ? 0 : found->second;
}

ZvDbObject *ZvDbDatabasePrivate::objectAt(std::uint32_t index) const
{
    ZvDbStub &stub = stubs[index];
    if (stub.object || !source || stub.record == 0)
        return stub.object;
    source->decode(index);
    if (stub.object && transientReads > 0 && stub.has(ZvDbStub::kEntity))
        stub.set(ZvDbStub::kTransient, true);
    return stub.object;
}

void ZvDbDatabasePrivate::clear()
{
    undo.clear();
    for (std::uint32_t index = 1; index < stubs.end(); ++index) {
        if (stubs.isUsed(index))
            delete stubs[index].object;
    }
    stubs.clear();
    propertyNumbers.assign(1, 0);
    erasedBits.clear();
    propertiesTable.clear();
    handles.clear();
    source.reset();
    xdata.clear();
    extensions.clear();
    copiedRecords.clear();
    stamps.clear();
    m_blockReferences.clear();
    m_blockReferencesValid = false;
    std::fill(std::begin(tables), std::end(tables), 0);
    rootDictionary = layerZero = byLayer = byBlock = continuous = modelSpace = 0;
    for (std::vector<ZvDbUcs> &history : ucsHistory)
        history.clear();
    m_handleSeed = 1;
}

void ZvDbDatabasePrivate::contentLoaded()
{
    layerZero = recordId("LAYER", L"0").index();
    byLayer = recordId("LTYPE", L"ByLayer").index();
    byBlock = recordId("LTYPE", L"ByBlock").index();
    continuous = recordId("LTYPE", L"Continuous").index();
    modelSpace = recordId("BLOCK_RECORD", L"*Model_Space").index();
    readDictionaryVariables();
    settleSettings();
    readViewportWorkedIn();
    touchDatabase();
    modified = false;
    undo.clear();
}

// ---- changes and notices

void ZvDbDatabasePrivate::touchDatabase()
{
    ++stamp;
    modified = true;
}

void ZvDbDatabasePrivate::touch(std::uint32_t index)
{
    touchDatabase();
    ZvDbStub &stub = stubs[index];
    stub.set(ZvDbStub::kFileChanged, true);
    if (stub.owner)
        stamps[stub.owner] = stamp;
    if (stub.has(ZvDbStub::kEntity)) {
        if (ZvDbClassTable::instance().at(stub.cls).isBlockReference)
            m_blockReferencesValid = false;
    } else {
        stamps[index] = stamp;
    }
}

/// Calls every reactor. They may be added and removed meanwhile: those added are not called for this notice any more,
/// those removed are never called again.
template <class F> void ZvDbDatabasePrivate::deliver(F call)
{
    if (m_reactors.empty() || undo.suspended > 0)
        return;
    struct Delivery
    {
        explicit Delivery(ZvDbDatabasePrivate &database) : d(database) { ++d.m_delivering; }
        ~Delivery()
        {
            if (--d.m_delivering == 0)
                d.m_reactors.erase(std::remove(d.m_reactors.begin(), d.m_reactors.end(), nullptr), d.m_reactors.end());
        }
        ZvDbDatabasePrivate &d;
    };
    const Delivery delivery(*this);
    const std::size_t count = m_reactors.size();
    for (std::size_t i = 0; i < count; ++i) {
        if (ZvDbDatabaseReactor *reactor = m_reactors[i])
            call(*reactor);
    }
}

void ZvDbDatabasePrivate::notifyAppended(std::uint32_t index)
{
    deliver([&](ZvDbDatabaseReactor &reactor) { reactor.objectAppended(&q, stubs[index].object); });
}

void ZvDbDatabasePrivate::notifyModified(std::uint32_t index)
{
    ZvDbStub &stub = stubs[index];
    const bool nested = stub.has(ZvDbStub::kNotifying); // a receiver wrote the object again
    stub.set(ZvDbStub::kNotifying, true);
    deliver([&](ZvDbDatabaseReactor &reactor) { reactor.objectModified(&q, stub.object); });
    stub.set(ZvDbStub::kNotifying, nested);
}

void ZvDbDatabasePrivate::notifyErased(std::uint32_t index, bool erased)
{
    // Undo may erase what was never decoded: a receiver gets an object all the same.
    if (m_reactors.empty() || !objectAt(index))
        return;
    deliver([&](ZvDbDatabaseReactor &reactor) { reactor.objectErased(&q, stubs[index].object, erased); });
}

void ZvDbDatabasePrivate::notifyVariable(const char *name)
{
    const ZvString text(name);
    deliver([&](ZvDbDatabaseReactor &reactor) { reactor.headerVariableChanged(&q, text); });
}

void ZvDbDatabasePrivate::notifyDying()
{
    deliver([&](ZvDbDatabaseReactor &reactor) { reactor.databaseToBeDestroyed(&q); });
}

void ZvDbDatabasePrivate::addReactor(ZvDbDatabaseReactor *reactor)
{
    if (reactor && std::find(m_reactors.begin(), m_reactors.end(), reactor) == m_reactors.end())
        m_reactors.push_back(reactor);
}

void ZvDbDatabasePrivate::removeReactor(ZvDbDatabaseReactor *reactor)
{
    const auto it = std::find(m_reactors.begin(), m_reactors.end(), reactor);
    if (!reactor || it == m_reactors.end())
        return;
    if (m_delivering > 0)
        *it = nullptr;
    else
        m_reactors.erase(it);
}

// ---- references to blocks

const std::vector<std::uint32_t> &ZvDbDatabasePrivate::blockReferences(std::uint32_t block)
{
    if (!m_blockReferencesValid) {
        m_blockReferences.clear();
        for (std::uint32_t index = 1; index < stubs.end(); ++index) {
            if (!stubs.isUsed(index) || stubs[index].isErased() || !classAt(index).isBlockReference)
                continue;
            const ZvDbObject *object = objectAt(index);
            if (object)
                m_blockReferences[static_cast<const ZvDbBlockReference *>(object)->blockTableRecord().index()]
                    .push_back(index);
        }
        m_blockReferencesValid = true;
    }
    static const std::vector<std::uint32_t> none;
    const auto it = m_blockReferences.find(block);
    return it == m_blockReferences.end() ? none : it->second;
}

// ---- tables and dictionaries

ZvDbSymbolTable *ZvDbDatabasePrivate::table(ZvDbTableKind kind) const
{
    return tables[kind] ? static_cast<ZvDbSymbolTable *>(stubs[tables[kind]].object) : nullptr;
}

ZvDbObjectId ZvDbDatabasePrivate::recordId(std::string_view name, const ZvString &record) const
{
    for (std::uint32_t index : tables) {
        const ZvDbSymbolTable *candidate = index ? static_cast<ZvDbSymbolTable *>(stubs[index].object) : nullptr;
        if (candidate && name == candidate->tableName())
            return candidate->getIdAt(record);
    }
    return ZvDbObjectId();
}

void ZvDbDatabasePrivate::registerApplication(const ZvString &name)
{
    ZvDbSymbolTable *applications = table(kRegAppTable);
    if (!applications || applications->has(name))
        return;
    ZvDbRegAppTableRecord *record = new ZvDbRegAppTableRecord;
    ZvDbObjectAccess::setName(*record, name);
    ZvDbChange change;
    change.kind = ZvDbChange::kCreated;
    change.index = adopt(record, tables[kRegAppTable]);
    ZvDbObjectAccess::addToTable(*applications, name, change.index);
    undo.note(std::move(change));
}

void ZvDbDatabasePrivate::renameRecord(ZvDbSymbolTableRecord &record, const ZvString &name)
{
    ZvDbObjectAccess::setName(record, name);
    const ZvDbStub *stub = ZvDbObjectAccess::stub(&record);
    if (!stub || stub->owner == 0)
        return;
    ZvDbSymbolTable *owner = zvrxCast<ZvDbSymbolTable>(stubs[stub->owner].object);
    if (owner)
        ZvDbObjectAccess::renameInTable(*owner, ZvDbStubTable::indexOf(stub), name);
}

std::vector<bool> ZvDbDatabasePrivate::usedProperties() const
{
    std::vector<bool> used(propertiesTable.end());
    for (std::uint32_t index = 1; index < stubs.end(); ++index) {
        const std::uint32_t number = propertyNumbers[index];
        if (number == 0)
            continue;
        // What an erased block or reference owns is gone with it.
        const ZvDbStub &stub = stubs[index];
        if (!stub.isErased() && (stub.owner == 0 || !stubs[stub.owner].isErased()))
            used[number] = true;
    }
    return used;
}

ZvString ZvDbDatabasePrivate::nameOf(ZvDbObjectId id) const
{
    if (!owns(id))
        return ZvString();
    const ZvDbStub &stub = stubs[id.index()];
    const ZvDbObject *owner = stub.owner ? objectAt(stub.owner) : nullptr;
    if (const ZvDbSymbolTable *table = zvrxCast<ZvDbSymbolTable>(owner))
        return ZvDbObjectAccess::nameInTable(*table, id.index());
    if (const ZvDbDictionary *dictionary = zvrxCast<ZvDbDictionary>(owner))
        return dictionary->nameAt(id);
    return ZvString();
}

ZvDbObjectId ZvDbDatabasePrivate::dictionaryId(const char *name, bool create)
{
    return dictionaryIn(idAt(rootDictionary), name, create);
}

ZvDbObjectId ZvDbDatabasePrivate::dictionaryIn(ZvDbObjectId holder, const char *name, bool create)
{
    const ZvDbDictionary *held
        = isUsable(holder, ZvDbDictionary::desc()) ? static_cast<ZvDbDictionary *>(objectAt(holder.index())) : nullptr;
    if (!held)
        return ZvDbObjectId();
    const ZvDbObjectId found = held->getIdAt(name);
    if (isUsable(found, ZvDbDictionary::desc()))
        return found;
    if (!create)
        return ZvDbObjectId();
    ZvDbObjectPointer<ZvDbDictionary> writer(holder, ZvDb::kForWrite);
    if (!writer)
        return ZvDbObjectId(); // somebody has it open
    ZvDbDictionary *dictionary = new ZvDbDictionary;
    ZvDbObjectId id;
    if (writer->setAt(name, dictionary, id) != Zv::eOk) {
        delete dictionary;
        return ZvDbObjectId();
    }
    dictionary->close();
    return id;
}
