// SPDX-License-Identifier: MIT
#include "db/zvdbdatabase.h"

#include "db/zvdbdictionary.h"
#include "zvdbdatabase_p.h"

ZVRX_DEFINE_MEMBERS(ZvDbDatabase, ZvRxObject)

namespace {

ZvDbDatabase *current = nullptr;

const char kLayerStates[] = "ACAD_LAYERSTATES";

} // namespace

ZvDbProgress::~ZvDbProgress() = default;

ZvDbDatabase *curDatabase()
{
    return current;
}

void zvdbSetCurDatabase(ZvDbDatabase *database)
{
    current = database;
}

ZvDbDatabase::ZvDbDatabase(bool metric) : d(new ZvDbDatabasePrivate(*this, metric)) { }

ZvDbDatabase::~ZvDbDatabase()
{
    d->notifyDying();
    if (current == this)
        current = nullptr;
    delete d;
}

std::uint32_t ZvDbDatabase::number() const
{
    return d->number;
}

ZvDb::FileVersion ZvDbDatabase::fileVersion() const
{
    return d->version;
}

bool ZvDbDatabase::isFileBinary() const
{
    return d->binary;
}

bool ZvDbDatabase::isModified() const
{
    return d->modified;
}

void ZvDbDatabase::setModified(bool modified)
{
    d->modified = modified;
    d->undo.setSaved(!modified);
}

void ZvDbDatabase::addReactor(ZvDbDatabaseReactor *reactor)
{
    d->addReactor(reactor);
}

void ZvDbDatabase::removeReactor(ZvDbDatabaseReactor *reactor)
{
    d->removeReactor(reactor);
}

// ---- objects

Zv::ErrorStatus ZvDbDatabase::addObject(ZvDbObject *object, ZvDbObjectId &id, ZvDbObjectId owner)
{
    id = ZvDbObjectId();
    if (!object || ZvDbDatabasePrivate::of(object) || (!owner.isNull() && !d->owns(owner)))
        return Zv::eInvalidInput;
    // Counted objects made for use without a database are somebody else's: the database could not own them.
    if (zvrxNumRefs(object) > 0)
        return Zv::eInvalidInput;
    const std::uint32_t index = d->adopt(object, owner.index());
    ZvDbStub &stub = d->stubs[index];
    stub.set(ZvDbStub::kNew, true);
    stub.set(ZvDbStub::kOpenForWrite, true);
    d->countOpened(true);
    ZvDbChange change;
    change.kind = ZvDbChange::kCreated;
    change.index = index;
    d->undo.note(std::move(change));
    d->touch(index);
    id = d->idAt(index);
    if (d->classAt(index).isBlockReference)
        d->copyAttributes(static_cast<ZvDbBlockReference &>(*object));
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbDatabase::appendEntity(ZvDbEntity *entity, ZvDbObjectId block, ZvDbObjectId &id,
                                           bool currentSettings)
{
    id = ZvDbObjectId();
    if (!d->isUsable(block, ZvDbBlockTableRecord::desc()))
        return Zv::eInvalidInput;
    ZvDbObject *record = d->objectAt(block.index());
    if (!record)
        return Zv::eFileDamaged;
    if (entity && currentSettings && !ZvDbDatabasePrivate::of(entity))
        entity->setDatabaseDefaults(this);
    const Zv::ErrorStatus status = addObject(entity, id, block);
    if (status != Zv::eOk)
        return status;
    ZvDbObjectAccess::entitiesOf(static_cast<ZvDbBlockTableRecord &>(*record)).push_back(id.index());
    return entity->close();
}

ZvDbObjectId ZvDbDatabase::idOfHandle(std::uint64_t handle) const
{
    return d->idAt(d->handles.find(handle));
}

int ZvDbDatabase::openObjectCount() const
{
    return d->openCount;
}

std::uint64_t ZvDbDatabase::openingsCount() const
{
    return d->openings;
}

std::uint64_t ZvDbDatabase::changeStamp() const
{
    return d->stamp;
}

std::uint64_t ZvDbDatabase::changeStamp(ZvDbObjectId table) const
{
    if (!d->owns(table))
        return 0;
    const auto it = d->stamps.find(table.index());
    return it == d->stamps.end() ? 0 : it->second;
}

ZvDbDatabase::TransientReads::TransientReads(ZvDbDatabase &database) : m_database(database)
{
    ++m_database.d->transientReads;
}

ZvDbDatabase::TransientReads::~TransientReads()
{
    --m_database.d->transientReads;
}

int ZvDbDatabase::entityCount() const
{
    const ZvDbObjectId block = currentSpaceId();
    const ZvDbObject *record = block.isNull() ? nullptr : d->objectAt(block.index());
    return record ? static_cast<const ZvDbBlockTableRecord *>(record)->entityCount() : 0;
}

ZvGeExtents3d ZvDbDatabase::extents(ZvDbObjectId block) const
{
    ZvGeExtents3d result;
    ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
    if (!record || record->database() != this)
        return result;
    for (std::uint32_t index : record->entityIndices()) {
        ZvDbObjectPointer<ZvDbEntity> entity(d->idAt(index), ZvDb::kForRead);
        ZvGeExtents3d box;
        if (entity && entity->getGeomExtents(box) == Zv::eOk)
            result.add(box);
    }
    return result;
}

// ---- undo

void ZvDbDatabase::beginUndoStep(const ZvString &name)
{
    d->undo.beginStep(name);
}

void ZvDbDatabase::endUndoStep()
{
    d->undo.endStep();
}

void ZvDbDatabase::setUndoMergeKey(const ZvString &key)
{
    d->undo.setMergeKey(key);
}

ZvDbDatabase::UndoMerge::UndoMerge(ZvDbDatabase &database, const ZvString &key)
    : m_database(database), m_before(database.d->undo.exchangeMergeKey(key))
{
}

ZvDbDatabase::UndoMerge::~UndoMerge()
{
    m_database.d->undo.exchangeMergeKey(m_before);
}

bool ZvDbDatabase::canUndo() const
{
    return d->undo.canUndo();
}

bool ZvDbDatabase::canRedo() const
{
    return d->undo.canRedo();
}

ZvString ZvDbDatabase::undoName() const
{
    return d->undo.undoName();
}

ZvString ZvDbDatabase::redoName() const
{
    return d->undo.redoName();
}

bool ZvDbDatabase::undo()
{
    return d->undo.undo();
}

bool ZvDbDatabase::redo()
{
    return d->undo.redo();
}

void ZvDbDatabase::clearUndo()
{
    d->undo.clear();
}

void ZvDbDatabase::beginFrame()
{
    d->undo.beginFrame();
}

void ZvDbDatabase::endFrame()
{
    d->undo.endFrame();
}

void ZvDbDatabase::abortFrame()
{
    d->undo.abortFrame();
}

int ZvDbDatabase::frameDepth() const
{
    return d->undo.frameDepth();
}

// ---- tables

ZvDbObjectId ZvDbDatabase::layerTableId() const
{
    return d->tableId(kLayerTable);
}

ZvDbObjectId ZvDbDatabase::textStyleTableId() const
{
    return d->tableId(kTextStyleTable);
}

ZvDbObjectId ZvDbDatabase::dimStyleTableId() const
{
    return d->tableId(kDimStyleTable);
}

ZvDbObjectId ZvDbDatabase::linetypeTableId() const
{
    return d->tableId(kLinetypeTable);
}

ZvDbObjectId ZvDbDatabase::blockTableId() const
{
    return d->tableId(kBlockTable);
}

ZvDbObjectId ZvDbDatabase::UCSTableId() const
{
    return d->tableId(kUcsTable);
}

ZvDbObjectId ZvDbDatabase::viewTableId() const
{
    return d->tableId(kViewTable);
}

ZvDbObjectId ZvDbDatabase::viewportTableId() const
{
    return d->tableId(kViewportTable);
}

ZvDbObjectId ZvDbDatabase::regAppTableId() const
{
    return d->tableId(kRegAppTable);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbLayerTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, layerTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbLinetypeTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, linetypeTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbTextStyleTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, textStyleTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbDimStyleTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, dimStyleTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbBlockTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, blockTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbUCSTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, UCSTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbViewTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, viewTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbViewportTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, viewportTableId(), mode);
}

Zv::ErrorStatus ZvDbDatabase::getSymbolTable(ZvDbRegAppTable *&table, ZvDb::OpenMode mode) const
{
    return zvdbOpenObject(table, regAppTableId(), mode);
}

// ---- dictionaries and standard entries

ZvDbObjectId ZvDbDatabase::rootDictionaryId() const
{
    return d->idAt(d->rootDictionary);
}

ZvDbObjectId ZvDbDatabase::materialDictionaryId(bool create) const
{
    return d->dictionaryId("ACAD_MATERIAL", create);
}

ZvDbObjectId ZvDbDatabase::plotStyleDictionaryId(bool create) const
{
    return d->dictionaryId("ACAD_PLOTSTYLENAME", create);
}

ZvDbObjectId ZvDbDatabase::mleaderStyleDictionaryId(bool create) const
{
    return d->dictionaryId("ACAD_MLEADERSTYLE", create);
}

ZvDbObjectId ZvDbDatabase::tableStyleDictionaryId(bool create) const
{
    return d->dictionaryId("ACAD_TABLESTYLE", create);
}

ZvDbObjectId ZvDbDatabase::layoutDictionaryId(bool create) const
{
    return d->dictionaryId("ACAD_LAYOUT", create);
}

ZvDbObjectId ZvDbDatabase::groupDictionaryId(bool create) const
{
    return d->dictionaryId("ACAD_GROUP", create);
}

ZvDbObjectId ZvDbDatabase::layerStateDictionaryId(bool create) const
{
    // Unlike the others it hangs on the table of layers.
    const ZvDbObject *table = d->table(kLayerTable);
    const ZvDbObjectId found
        = d->dictionaryIn(table ? table->extensionDictionary() : ZvDbObjectId(), kLayerStates, false);
    if (!found.isNull() || !create)
        return found;
    d->undo.beginFrame(); // both in one step
    ZvDbObjectId extension;
    {
        ZvDbObjectPointer<ZvDbLayerTable> writer(layerTableId(), ZvDb::kForWrite);
        if (writer)
            writer->createExtensionDictionary(extension);
    }
    const ZvDbObjectId made = d->dictionaryIn(extension, kLayerStates, true);
    d->undo.endFrame();
    return made;
}

ZvDbObjectId ZvDbDatabase::layerZero() const
{
    return d->idAt(d->layerZero);
}

ZvDbObjectId ZvDbDatabase::byLayerLinetype() const
{
    return d->idAt(d->byLayer);
}

ZvDbObjectId ZvDbDatabase::byBlockLinetype() const
{
    return d->idAt(d->byBlock);
}

ZvDbObjectId ZvDbDatabase::continuousLinetype() const
{
    return d->idAt(d->continuous);
}
