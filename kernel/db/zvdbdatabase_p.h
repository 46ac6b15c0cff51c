// SPDX-License-Identifier: MIT
#ifndef ZVDBDATABASE_P_H
#define ZVDBDATABASE_P_H

#include "base/zvcmcolor.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "zvdbstub_p.h"
#include "zvdbundo_p.h"
#include "zvdbvariables_p.h"

#include <memory>
#include <string_view>
#include <unordered_map>
#include <vector>

class ZvDb2dPolyline;
class ZvDbBlockReference;
class ZvDbFiler;

/// The drawing file behind a database: whoever read it decodes its objects when they are first opened. Owned by the
/// database.
class ZvDbFileSource
{
public:
    virtual ~ZvDbFileSource();
    /// Makes the object of this position (ZvDbObjectAccess::make()) and reads its own data. The shared properties of an
    /// entity are in the database already. Null where the record cannot be read.
    virtual ZvDbObject *decode(std::uint32_t index) = 0;
    /// Extended data of all applications as the record has it; null for none.
    virtual ZvResBuf *readXData(std::uint32_t index) = 0;
    /// The extension dictionary that the record names.
    virtual ZvDbObjectId extensionDictionary(std::uint32_t index) = 0;
    /// Class name of the record.
    virtual ZvString recordName(std::uint32_t index) = 0;
    /// Adds what the record of this object refers to by handle, and line types that it names, whether or not a class
    /// knows what the reference is for.
    virtual void addReferences(std::uint32_t index, std::vector<ZvDbObjectId> &ids) = 0;
};

/// The tables of a drawing, in file order.
enum ZvDbTableKind {
    kViewportTable,
    kLinetypeTable,
    kLayerTable,
    kTextStyleTable,
    kViewTable,
    kUcsTable,
    kRegAppTable,
    kDimStyleTable,
    kBlockTable,
    kTableCount
};

class ZvDbDatabasePrivate
{
public:
    ZvDbDatabasePrivate(ZvDbDatabase &database, bool metric);
    ~ZvDbDatabasePrivate();

    /// The living database of this number, or null.
    static ZvDbDatabasePrivate *ofNumber(std::uint32_t number);
    /// The database that the id belongs to, null where that is gone or the id is none.
    static ZvDbDatabasePrivate *of(ZvDbObjectId id);
    static ZvDbDatabasePrivate *of(const ZvDbObject *object);

    ZvDbObjectId idAt(std::uint32_t index) const
    {
        return index ? ZvDbObjectId::fromInt64((std::uint64_t(number) << 32) | index) : ZvDbObjectId();
    }
    /// True for an id of this database, of whatever state.
    bool owns(ZvDbObjectId id) const { return of(id) == this; }
    /// Records that no drawing may be without: erase() refuses them.
    bool isIndispensable(std::uint32_t index) const;
    /// True for an id of this database whose object is not erased and of the class.
    bool isUsable(ZvDbObjectId id, const ZvRxClass *cls) const;
    const ZvDbClass &classAt(std::uint32_t index) const { return ZvDbClassTable::instance().at(stubs[index].cls); }

    // ---- making and reading objects, without notices and undo
    /// A new record block. The handle is given out when it is 0 or taken already.
    std::uint32_t addStub(std::uint16_t cls, std::uint64_t handle, std::uint32_t owner, std::uint32_t record);
    /// Puts a new object of no database into a new block, as it stands when a file is read or a drawing is made.
    std::uint32_t adopt(ZvDbObject *object, std::uint32_t owner, std::uint64_t handle = 0);
    /// Makes the block the object's own, with what the object kept for itself.
    void attach(ZvDbObject *object, std::uint32_t index);
    /// A copied reference comes with the ids of its original's attributes: gives it copies of its own.
    void copyAttributes(ZvDbBlockReference &reference);
    /// The object, decoded if need be; null where its record cannot be read. It is not open.
    ZvDbObject *objectAt(std::uint32_t index) const;
    /// Number plus 1 of the record that the object's own starts from when it is written: its own one, or, for a copy,
    /// its original's, with all that the classes do not model. 0 for none.
    std::uint32_t recordToStartFrom(std::uint32_t index) const;
    /// Gives an object another handle, one that is free.
    void giveHandle(std::uint32_t index);
    /// The next handle to be given out.
    std::uint64_t handleSeed() const { return m_handleSeed; }
    void raiseHandleSeed(std::uint64_t seed) { m_handleSeed = std::max(m_handleSeed, seed); }
    /// Empties the database before a file is read into it. No notices.
    void clear();
    /// To be called when a file was read or a drawing was made: finds the standard entries and what hangs on them.
    void contentLoaded();

    void countOpened(bool write);
    void countClosed(bool write);
    /// What is open when the database dies counts no more.
    void forgetOpenObjects();

    // ---- shared properties
    const ZvDbEntityProperties &propertiesOf(std::uint32_t index) const
    {
        return propertiesTable.at(propertyNumbers[index]);
    }
    void setProperties(std::uint32_t index, const ZvDbEntityProperties &value)
    {
        propertyNumbers[index] = propertiesTable.intern(value);
    }

    /// By number, the combinations that some entity has that is not erased.
    std::vector<bool> usedProperties() const;

    // ---- erased objects
    /// The one way in which a block's mark of being erased changes.
    void setErased(ZvDbStub &stub, bool erased)
    {
        stub.set(ZvDbStub::kErased, erased);
        const std::uint32_t index = ZvDbStubTable::indexOf(&stub);
        if (index >= erasedBits.size())
            erasedBits.resize(index + 1);
        erasedBits[index] = erased;
    }
    /// As the block says, without reading it: a scan over many entities stays in the processor's caches.
    bool isErasedAt(std::uint32_t index) const { return index < erasedBits.size() && erasedBits[index]; }

    // ---- changes
    /// Raises the stamps of the object, of the table, dictionary or block that owns it, and of the drawing.
    void touch(std::uint32_t index);
    void touchDatabase();
    void notifyAppended(std::uint32_t index);
    void notifyModified(std::uint32_t index);
    void notifyErased(std::uint32_t index, bool erased);
    void notifyVariable(const char *name);
    void notifyDying();
    void addReactor(ZvDbDatabaseReactor *reactor);
    void removeReactor(ZvDbDatabaseReactor *reactor);

    // ---- variables
    const ZvDbVariableValue &variable(int number) const { return variables[std::size_t(number)]; }
    /// Undoable, with the notice where the value differs.
    void setVariable(int number, const ZvDbVariableValue &value);
    /// The same without the notice; true where the value differed. The caller ends with undo.endImplicitStep().
    bool storeVariable(int number, const ZvDbVariableValue &value);
    /// Id behind a name, or name behind an id, in the table or dictionary that the variable refers to.
    ZvDbObjectId idOfVariable(int number, const ZvString &name);
    /// As a file has it: no undo, no notice.
    void loadVariable(int number, const ZvDbVariableValue &value) { variables[std::size_t(number)] = value; }
    void setDefaultVariables(bool metric);
    /// Gives every setting that names an object one that is there: the standard entries, the first layout.
    void settleSettings();
    /// Between the variables that a drawing keeps in its dictionary of variables and that dictionary: to be called
    /// after a file was read, and before one is written. Writing changes only what differs; it raises no notice and
    /// enters no undo.
    void readDictionaryVariables();
    void writeDictionaryVariables();
    void writeDictionaryVariable(int number);
    /// Takes back what an earlier saving added for a setting that has been undone since.
    void dropDictionaryVariable(int number);
    /// Whether the file that was read had the variable, or it was set since: variables that are neither are not added
    /// to a file that has none of them.
    std::vector<bool> variableInFile;

    // ---- tables and dictionaries
    std::uint32_t tables[kTableCount] = {};
    std::uint32_t rootDictionary = 0;
    ZvDbObjectId tableId(ZvDbTableKind kind) const { return idAt(tables[kind]); }
    /// Record of a table by the table's name in a file ("LAYER", "LTYPE", ...) and its own; the null id where there is
    /// none.
    ZvDbObjectId recordId(std::string_view table, const ZvString &name) const;
    ZvDbSymbolTable *table(ZvDbTableKind kind) const;
    /// Files name in a table of their own every application that keeps extended data. Goes with the step that needs it.
    void registerApplication(const ZvString &name);
    /// Gives a record its name and tells its table.
    void renameRecord(ZvDbSymbolTableRecord &record, const ZvString &name);
    /// Name of a table record or of an object in a dictionary, without opening it; empty where it has none.
    ZvString nameOf(ZvDbObjectId id) const;
    /// Dictionary under the root.
    ZvDbObjectId dictionaryId(const char *name, bool create);
    /// Dictionary that another one holds.
    ZvDbObjectId dictionaryIn(ZvDbObjectId holder, const char *name, bool create);

    // ---- layouts
    /// The layouts in tab order, model space first.
    std::vector<ZvDbLayout *> layouts();
    /// The paper layout that is or was current, the first one where there was none yet; null without any.
    ZvDbObjectId paperLayoutAtHand();
    /// The viewport that stands for the paper itself of a layout's block; null where it has none.
    ZvDbObjectId overallViewport(ZvDbObjectId block);
    /// The viewport entity worked in; null for the paper, and in model space.
    ZvDbObjectId viewportWorkedIn() const;
    /// Between the viewport worked in and the layout that keeps it in a file: to be called after a file was read, and
    /// before one is written. Writing changes only what differs; it raises no notice and enters no undo.
    void readViewportWorkedIn();
    void writeViewportWorkedIn();

    // ---- references to blocks, by position of the block
    const std::vector<std::uint32_t> &blockReferences(std::uint32_t block);

    ZvDbDatabase &q;
    const std::uint32_t number;
    ZvDbStubTable stubs;
    /// By position; 0 for what is no entity. Beside the blocks, so that a scan over many entities reads nothing else.
    std::vector<std::uint32_t> propertyNumbers;
    /// By position, for isErasedAt(); no longer than to the last object that was ever erased.
    std::vector<bool> erasedBits;
    ZvDbPropertiesTable propertiesTable;
    ZvDbHandleTable handles;
    std::unique_ptr<ZvDbFileSource> source;
    ZvString fileName;
    ZvDb::FileVersion version = ZvDb::kR2018;
    bool binary = false;
    bool modified = false;

    /// Extended data set since the file was read, by position; a null chain for none.
    std::unordered_map<std::uint32_t, ZvDbSharedChain> xdata;
    /// Extension dictionaries made since the file was read, by position of their objects. A step that is undone erases
    /// the dictionary, and leaves it here.
    std::unordered_map<std::uint32_t, std::uint32_t> extensions;
    std::unordered_map<std::uint32_t, std::uint32_t> copiedRecords; ///< Of copies, by position; see recordToStartFrom().
    std::unordered_map<std::uint32_t, std::uint64_t> stamps;
    std::uint64_t stamp = 1;
    std::uint64_t openings = 0;
    int openCount = 0;
    int writeCount = 0; ///< Of them, those open for write.
    int transientReads = 0;

    std::vector<ZvDbVariableValue> variables;
    std::vector<ZvDbUcs> ucsHistory[2]; ///< Model space and paper space, the latest last.
    ZvDbUndo undo;

    std::uint32_t layerZero = 0;
    std::uint32_t byLayer = 0;
    std::uint32_t byBlock = 0;
    std::uint32_t continuous = 0;
    std::uint32_t modelSpace = 0;

private:
    template <class F> void deliver(F call);
    std::uint64_t freeHandle();

    std::vector<ZvDbDatabaseReactor *> m_reactors; // null: removed during a delivery
    int m_delivering = 0;
    std::uint64_t m_handleSeed = 1;
    std::unordered_map<std::uint32_t, std::vector<std::uint32_t>> m_blockReferences;
    bool m_blockReferencesValid = false;
};

/// The way to what objects keep to themselves, for the units that read, make and restore them.
class ZvDbObjectAccess
{
public:
    // ---- parts of records that have no class of their own
    /// The BLOCK record of a block. A new one is put on \a layer.
    static void blockBeginFields(ZvDbBlockTableRecord &block, ZvDbFiler &filer, ZvDbObjectId layer);
    /// The VERTEX record of a polyline's vertex.
    static void vertexFields(ZvDb2dPolyline &polyline, std::size_t number, ZvDbFiler &filer);
    /// Reads one more vertex.
    static void addVertex(ZvDb2dPolyline &polyline, ZvDbFiler &filer);
    static void setAttributes(ZvDbBlockReference &reference, std::vector<ZvDbObjectId> attributes);
    static void setLinetype(ZvDbLayerTableRecord &layer, ZvDbObjectId id) { layer.m_linetype = id; }

    static ZvDbStub *stub(const ZvDbObject *object) { return object->m_stub; }
    static void setStub(ZvDbObject *object, ZvDbStub *stub) { object->m_stub = stub; }
    /// An object of the class, of no database.
    static ZvDbObject *make(std::uint16_t cls);
    /// The same and put into its block: what ZvDbFileSource::decode() begins with.
    static ZvDbObject *make(ZvDbDatabasePrivate &database, std::uint32_t index);
    /// Copies an object's own data, without the shared properties of entities.
    static std::unique_ptr<ZvDbObject> copyState(const ZvDbObject &object);
    static void restoreState(ZvDbObject &object, const ZvDbObject &state);

    /// Extended data of all applications as it is now; null for none.
    static ZvDbSharedChain xData(const ZvDbObject &object);
    static void setName(ZvDbSymbolTableRecord &record, const ZvString &name) { record.m_name = name; }
    /// Puts an entry into a table without a check of any kind: files may hold two of a name.
    static void addToTable(ZvDbSymbolTable &table, const ZvString &name, std::uint32_t index);
    /// Positions of all records in table order, erased ones included.
    static std::vector<std::uint32_t> recordsOf(const ZvDbSymbolTable &table);
    /// Empty for a position that is no record of the table.
    static ZvString nameInTable(const ZvDbSymbolTable &table, std::uint32_t index);
    static void renameInTable(ZvDbSymbolTable &table, std::uint32_t index, const ZvString &name);

    static std::vector<std::uint32_t> &entitiesOf(ZvDbBlockTableRecord &block) { return block.m_entities; }
    static void setLayout(ZvDbBlockTableRecord &block, ZvDbObjectId layout) { block.m_layout = layout; }
    /// Puts an entry into a dictionary without a check.
    static void addToDictionary(ZvDbDictionary &dictionary, const ZvString &name, ZvDbObjectId id);
    /// Replaces all entries: what reading a dictionary's record ends with.
    static void setEntries(ZvDbDictionary &dictionary, std::vector<std::pair<ZvString, ZvDbObjectId>> entries);
    static void makeHardOwner(ZvDbDictionary &dictionary) { dictionary.m_hardOwner = true; }
    static void makeDictionaryWithDefault(ZvDbDictionary &dictionary, ZvDbObjectId id);
    static void setName(ZvDbNamedObject &object, const ZvString &name) { object.m_name = name; }
    static void setBlock(ZvDbLayout &layout, ZvDbObjectId block) { layout.m_block = block; }
    /// Tab and page of a new drawing's layout: a sheet of A3.
    static void setPage(ZvDbLayout &layout, int tabOrder);
    /// The viewport of the paper itself, which shows the whole sheet.
    static void setSheet(ZvDbViewport &viewport, double width, double height);
    static void setTextStyle(ZvDbMLeaderStyle &style, ZvDbObjectId id) { style.m_textStyle = id; }
    static void setTextStyle(ZvDbTableStyle &style, ZvDbObjectId id) { style.m_textStyle = id; }
    static void makeAnnotative(ZvDbTextStyleTableRecord &style);
    static void setLastViewport(ZvDbLayout &layout, ZvDbObjectId viewport) { layout.m_lastViewport = viewport; }
};

/// The shared properties of an entity, wherever it keeps them.
const ZvDbEntityProperties &zvdbProperties(const ZvDbEntity &entity);
/// What every setter of a shared property ends with: checks that the entity may be written, enters the undo record.
/// Equal properties change nothing. eNotOpenForWrite.
Zv::ErrorStatus zvdbSetProperties(ZvDbEntity &entity, const ZvDbEntityProperties &properties);
/// Reads or writes the shared properties of an entity's record; stands beside ZvDbEntity. The record's "AcDbEntity"
/// part is at hand when it is called.
void zvdbPropertyFields(ZvDbFiler &filer, ZvDbEntityProperties &properties);

#endif
