// SPDX-License-Identifier: MIT
#ifndef ZVDBDATABASE_H
#define ZVDBDATABASE_H

#include "base/zvarray.h"
#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "db/zvdbobject.h"
#include "db/zvdbreactor.h"

class ZvDbBlockTable;
class ZvDbBlockTableRecord;
class ZvDbDictionary;
class ZvDbDimStyleTable;
class ZvDbEntity;
class ZvDbLayerTable;
class ZvDbLinetypeTable;
class ZvDbRegAppTable;
class ZvDbSymbolTable;
class ZvDbTextStyleTable;
class ZvDbUCSTable;
class ZvDbViewTable;
class ZvDbViewportTable;
class ZvDbDatabasePrivate;

/// What reading or saving a drawing file has to tell.
struct ZV_EXPORT ZvDbFileReport
{
    /// What a file holds that was passed over, mended or not understood.
    struct Warning
    {
        ZvString text; ///< What was found, in plain words.
        int count = 0; ///< How often it was found.
        long long firstLine = 0; ///< Line of a text file, byte offset of a binary one; 0 when unknown.
    };
    Zv::ErrorStatus status = Zv::eOk; ///< eOk also with warnings.
    ZvString message; ///< What failed and where; empty on success.
    ZvArray<Warning> warnings; ///< In the order in which they were first met.
};

/// Told of long work. The callback runs on the calling thread and may process events.
class ZV_EXPORT ZvDbProgress
{
public:
    virtual ~ZvDbProgress();
    /// \a fraction runs from 0 to 1. False cancels the work, which then ends with eCancelled and changes nothing.
    virtual bool progress(double fraction) = 0;
};

/// A drawing. Counted; made empty by create(), with the tables, dictionaries, the layer "0", the line types ByBlock,
/// ByLayer and Continuous, the text style, dimension style and layouts that every drawing has.
///
/// Everything runs on the main thread.
class ZV_EXPORT ZvDbDatabase : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbDatabase)
public:
    /// Holds the one reference of the new drawing. Metric sets millimetres and the metric defaults.
    static ZvSmartPtr<ZvDbDatabase> create(bool metric = true);
    ~ZvDbDatabase() override;

    // ---- files
    /// Replaces the content of a newly created database by that of a file: DXF, text or binary, R12 to 2018. On failure
    /// and on cancel the database is empty and must be dropped. The report names every warning.
    Zv::ErrorStatus readFile(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress = nullptr);
    /// The same from \a size bytes in memory.
    Zv::ErrorStatus readStream(const void *bytes, std::size_t size, ZvDbFileReport &report, ZvDbProgress *progress = nullptr);
    /// Writes beside the file and renames over it: whatever fails, the old file stays whole. A drawing that was read
    /// keeps its form (version, text or binary, line ends) and every tag that was not changed.
    Zv::ErrorStatus saveAs(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress = nullptr);
    /// The same without counting as a save: what was not saved before is still not saved.
    Zv::ErrorStatus writeCopy(const ZvString &path, ZvDbFileReport &report, ZvDbProgress *progress = nullptr);
    /// Path of the file that it was read from or saved to last; empty for a drawing that is in no file.
    ZvString fileName() const;
    /// Of the file that was read; of what saveAs() would write for a new drawing.
    ZvDb::FileVersion fileVersion() const;
    /// Whether the file that was read, or would be written, is a binary one.
    bool isFileBinary() const;
    /// Changed since it was read, made or saved.
    bool isModified() const;
    void setModified(bool modified);

    // ---- reactors
    /// Adding one twice keeps one; removing an absent one is nothing. Not owned.
    void addReactor(ZvDbDatabaseReactor *reactor);
    /// Removing an absent one is nothing.
    void removeReactor(ZvDbDatabaseReactor *reactor);

    // ---- objects
    /// Adds an object that belongs to no database and takes it over. It stays open for write: the caller closes it.
    Zv::ErrorStatus addObject(ZvDbObject *object, ZvDbObjectId &id, ZvDbObjectId owner);
    /// Null id for an unknown handle.
    ZvDbObjectId idOfHandle(std::uint64_t handle) const;
    /// Number of objects that are open now: 0 between operations.
    int openObjectCount() const;
    /// Number of openings since the database was made.
    std::uint64_t openingsCount() const;
    /// Rises with every change of any entity, table record, dictionary or variable: equal stamps, nothing changed.
    std::uint64_t changeStamp() const;
    /// Stamp of one table or dictionary: its own entries and their data.
    std::uint64_t changeStamp(ZvDbObjectId table) const;
    /// While any is held, objects opened for read only are not kept decoded after their close: for one pass over a
    /// large drawing.
    class ZV_EXPORT TransientReads
    {
    public:
        /// Until the end of the scope.
        explicit TransientReads(ZvDbDatabase &database);
        ~TransientReads();
        TransientReads(const TransientReads &) = delete;
        TransientReads &operator=(const TransientReads &) = delete;

    private:
        ZvDbDatabase &m_database;
    };

    // ---- undo
    /// Opens the undo step of a command; steps nest, and the outermost makes the entry. A write outside any step makes
    /// a step of its own. A step in which nothing was changed leaves none.
    void beginUndoStep(const ZvString &name);
    /// Ends the step that the matching beginUndoStep() opened.
    void endUndoStep();
    /// The next step adds itself to the last one, as long as \a key is the one that made it. Empty ends it.
    void setUndoMergeKey(const ZvString &key);
    /// Sets the merge key for the life of the object and puts back the one before: steps that others make in between keep
    /// their own. Steps of an empty key never merge. The database must outlive it.
    class ZV_EXPORT UndoMerge
    {
    public:
        /// Of an empty \a key: no merging.
        UndoMerge(ZvDbDatabase &database, const ZvString &key);
        ~UndoMerge();
        UndoMerge(const UndoMerge &) = delete;
        UndoMerge &operator=(const UndoMerge &) = delete;

    private:
        ZvDbDatabase &m_database;
        ZvString m_before;
    };
    /// Whether there is a step to take, and none is open.
    bool canUndo() const;
    bool canRedo() const;
    /// Name of the step that undo() or redo() would take; empty when there is none.
    ZvString undoName() const;
    ZvString redoName() const;
    /// Raise the notices of what they change. False when there is no step, or one is open.
    bool undo();
    bool redo();
    /// Forgets all steps, undone ones included.
    void clearUndo();
    /// The edit frame: nests; abort puts back everything written since the matching begin.
    void beginFrame();
    void endFrame();
    void abortFrame();
    /// How many frames are open.
    int frameDepth() const;

    // ---- current settings; setters raise headerVariableChanged() for their variable when the value differs
    /// Colour of new entities.
    ZvCmColor cecolor() const;
    Zv::ErrorStatus setCecolor(const ZvCmColor &color);
    /// Line type of new entities.
    ZvDbObjectId celtype() const;
    Zv::ErrorStatus setCeltype(ZvDbObjectId id);
    /// Line weight of new entities, in hundredths of a millimetre or below zero.
    ZvDb::LineWeight celweight() const;
    Zv::ErrorStatus setCelweight(ZvDb::LineWeight weight);
    /// Layer of new entities. eInvalidInput for an id that is no layer of this drawing.
    ZvDbObjectId clayer() const;
    Zv::ErrorStatus setClayer(ZvDbObjectId id);
    /// Material of new entities.
    ZvDbObjectId cmaterial() const;
    Zv::ErrorStatus setCmaterial(ZvDbObjectId id);
    /// Style of new texts.
    ZvDbObjectId textstyle() const;
    Zv::ErrorStatus setTextstyle(ZvDbObjectId id);
    /// Style of new dimensions.
    ZvDbObjectId dimstyle() const;
    Zv::ErrorStatus setDimstyle(ZvDbObjectId id);
    /// Makes the dimension variables of the drawing those of the style.
    Zv::ErrorStatus setDimstyleData(ZvDbObjectId id);
    /// Style of new multileaders.
    ZvDbObjectId mleaderstyle() const;
    Zv::ErrorStatus setMleaderstyle(ZvDbObjectId id);
    /// Style of new tables.
    ZvDbObjectId tablestyle() const;
    Zv::ErrorStatus setTablestyle(ZvDbObjectId id);
    /// "ByLayer", "ByBlock", "Normal" or the name of a plot style.
    ZvString cplotstyle() const;
    Zv::ErrorStatus setCplotstyle(const ZvString &name);
    /// Line type scale of new entities; above 0.
    double celtscale() const;
    Zv::ErrorStatus setCeltscale(double scale);
    /// Line type scale of the drawing; above 0.
    double ltscale() const;
    Zv::ErrorStatus setLtscale(double scale);
    /// Whether weights are shown in the drawing view.
    bool lineWeightDisplay() const;
    Zv::ErrorStatus setLineWeightDisplay(bool on);
    /// True: plot styles by colour, false: by name.
    bool plotStyleMode() const;
    /// True when model space is shown. Changing it switches to the last paper layout or back.
    bool tilemode() const;
    Zv::ErrorStatus setTilemode(bool on);
    /// Any variable of the drawing by name without "$", case ignored; eKeyNotFound where it keeps none of that name.
    /// The type is that of the variable; a text is newly made.
    Zv::ErrorStatus getVariable(const ZvString &name, ZvResBuf &value) const;
    /// eKeyNotFound as in getVariable(); eInvalidInput for a value of another type or out of range.
    Zv::ErrorStatus setVariable(const ZvString &name, const ZvResBuf &value);
    /// Names of all variables that getVariable() answers, in file order.
    void variableNames(ZvArray<ZvString> &names) const;

    // ---- coordinate systems: of model space, and of paper space
    /// The stored system in force in model space; null for one without a name.
    ZvDbObjectId ucsname() const;
    /// Its origin, in world coordinates.
    ZvGePoint3d ucsorg() const;
    /// Its X axis, of length 1, in world coordinates.
    ZvGeVector3d ucsxdir() const;
    /// Its Y axis, of length 1, in world coordinates.
    ZvGeVector3d ucsydir() const;
    /// The stored system in force in paper space; null for one without a name.
    ZvDbObjectId pucsname() const;
    /// Its origin, in coordinates of the paper.
    ZvGePoint3d pucsorg() const;
    /// Its X axis, of length 1.
    ZvGeVector3d pucsxdir() const;
    /// Its Y axis, of length 1.
    ZvGeVector3d pucsydir() const;
    /// Sets the system of the space at hand (paper space on the paper itself, model space also inside a viewport of a
    /// layout) with its orthographic number, 0 when it is none, 1 top, 2 bottom,
    /// 3 front, 4 back, 5 left, 6 right; remembers the one before. Raises "UCSNAME", "UCSORTHOVIEW" or their paper
    /// space forms, and "UCS" or "PUCS".
    Zv::ErrorStatus setUcs(const ZvGePoint3d &origin, const ZvGeVector3d &x, const ZvGeVector3d &y, ZvDbObjectId name, int orthographic);
    /// Systems before this one in the space at hand. False when there is none.
    bool hasPreviousUcs() const;
    /// Goes back to it. eKeyNotFound when there is none.
    Zv::ErrorStatus restorePreviousUcs();
    /// The current system as a map from its coordinates to the world's.
    ZvGeMatrix3d ucsMatrix() const;

    // ---- tables, dictionaries, blocks
    /// Table of the layers. Never null.
    ZvDbObjectId layerTableId() const;
    /// Table of the text styles. Never null.
    ZvDbObjectId textStyleTableId() const;
    /// Table of the dimension styles. Never null.
    ZvDbObjectId dimStyleTableId() const;
    /// Table of the line types. Never null.
    ZvDbObjectId linetypeTableId() const;
    /// Table of the blocks. Never null.
    ZvDbObjectId blockTableId() const;
    /// Table of the stored coordinate systems. Never null.
    ZvDbObjectId UCSTableId() const;
    /// Table of the named views. Never null.
    ZvDbObjectId viewTableId() const;
    /// Table of the viewports of model space. Never null.
    ZvDbObjectId viewportTableId() const;
    /// Table of the applications with extended data. Never null.
    ZvDbObjectId regAppTableId() const;
    /// Opens the table of that class; the caller closes it.
    Zv::ErrorStatus getSymbolTable(ZvDbLayerTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbLinetypeTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbTextStyleTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbDimStyleTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbBlockTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbUCSTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbViewTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbViewportTable *&table, ZvDb::OpenMode mode) const;
    Zv::ErrorStatus getSymbolTable(ZvDbRegAppTable *&table, ZvDb::OpenMode mode) const;

    /// The dictionary that all others stand in. Never null.
    ZvDbObjectId rootDictionaryId() const;
    /// Dictionaries of the root by their names in the file; null when the drawing has none and \a create is false.
    ZvDbObjectId materialDictionaryId(bool create = false) const;
    /// Names of plot styles; see above.
    ZvDbObjectId plotStyleDictionaryId(bool create = false) const;
    /// Multileader styles.
    ZvDbObjectId mleaderStyleDictionaryId(bool create = false) const;
    /// Table styles.
    ZvDbObjectId tableStyleDictionaryId(bool create = false) const;
    /// Layouts.
    ZvDbObjectId layoutDictionaryId(bool create = false) const;
    /// Groups.
    ZvDbObjectId groupDictionaryId(bool create = false) const;
    /// Stored layer states; in the extension dictionary of the layer table.
    ZvDbObjectId layerStateDictionaryId(bool create = false) const;

    /// The layer "0", which every drawing has.
    ZvDbObjectId layerZero() const;
    /// The line type "ByLayer".
    ZvDbObjectId byLayerLinetype() const;
    /// The line type "ByBlock".
    ZvDbObjectId byBlockLinetype() const;
    /// The line type "Continuous".
    ZvDbObjectId continuousLinetype() const;

    /// Block of model space. Never null.
    ZvDbObjectId modelSpaceId() const;
    /// Block of the current paper layout, or of the first one while model space is shown.
    ZvDbObjectId paperSpaceId() const;
    /// Block that is shown and drawn into.
    ZvDbObjectId currentSpaceId() const;
    /// Layout that is shown.
    ZvDbObjectId currentLayoutId() const;
    /// Name of a layout, "Model" for model space. Sets tilemode with it.
    Zv::ErrorStatus setCurrentLayout(const ZvString &name);
    /// Its name, "Model" for model space.
    ZvString currentLayoutName() const;
    /// All layouts in tab order, model space first.
    void layoutNames(ZvArray<ZvString> &names) const;
    /// The viewport at work: the active record of the viewport table in model space, the active viewport entity or the
    /// paper's own in a layout. May be null.
    ZvDbObjectId currentViewportId() const;
    /// In a layout: work inside a viewport instead of on the paper; null goes back to the paper. Raises "CVPORT".
    Zv::ErrorStatus setCurrentViewport(ZvDbObjectId viewport);

    /// Adds an entity that belongs to no database to a block, with the current settings if \a currentSettings, and takes
    /// it over. The entity is closed.
    Zv::ErrorStatus appendEntity(ZvDbEntity *entity, ZvDbObjectId block, ZvDbObjectId &id, bool currentSettings = true);
    /// Entities of the drawing's space at hand, erased ones left out.
    int entityCount() const;
    /// Box around the drawable entities of a block; empty when there are none.
    ZvGeExtents3d extents(ZvDbObjectId block) const;

    /// Number of this database, from 1 on, never used twice in a process.
    std::uint32_t number() const;
    /// For the kernel's own units.
    ZvDbDatabasePrivate *priv() const { return d; }

protected:
    /// See create().
    explicit ZvDbDatabase(bool metric);

private:
    Zv::ErrorStatus setIdVariable(int number, ZvDbObjectId id);
    Zv::ErrorStatus setScaleVariable(int number, double scale);
    Zv::ErrorStatus switchLayout(bool model, ZvDbObjectId paper);

    ZvDbDatabasePrivate *d;
};

/// Counted pointer to a drawing; may be null.
typedef ZvSmartPtr<ZvDbDatabase> ZvDbDatabasePtr;

/// Database of the current document, or null.
ZV_EXPORT ZvDbDatabase *curDatabase();
/// Set by the document manager. Not owned.
ZV_EXPORT void zvdbSetCurDatabase(ZvDbDatabase *database);

/// Objects open in all databases: 0 between operations.
ZV_EXPORT int zvdbOpenObjectCount();

#endif
