// SPDX-License-Identifier: MIT
#ifndef ZVODASETTING_H
#define ZVODASETTING_H

#include "base/zvarray.h"
#include "base/zvcmcolor.h"
#include "base/zverror.h"
#include "base/zvexport.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"
#include "utils/zvraster.h"
#include "zvglobaluireactorhelp.h"

#include <functional>

class ZvDbDatabase;
class ZvDbEntity;
class ZvDbTextStyleTableRecord;

/// The controls' one door to the drawing: current values, the pick-first selection, and what tables and dictionaries
/// hold. Static operations only, no state of its own, main thread only.
///
/// Failures are silent: what cannot be opened or found reads as absent or empty and is not written. The one exception
/// that is thrown is ZvError_NotThatKindOfClass, where an operation says so. No object is left open.
class ZV_EXPORT ZevaUISetting
{
public:
    ZevaUISetting() = delete;

    // ---- current values ------------------------------------------------------------------------------
    //
    // A setter changes the selected entities when there is a pick-first selection, and the drawing's current value when
    // there is none. It does not write by itself: it leaves the request in the mailbox of the service "Dialog/Common",
    // where a newer one overwrites it, and issues the command "GLOBAL_UI_UPDATEDB", which may run later; while a command
    // runs the write is done at once and belongs to that command. Without the service the request is lost.

    /// Properties, as in ZvUiPendingUpdate::kind.
    enum Entity_Property {
        kColor = 0,
        kLineWeight = 1,
        kLineType = 2,
        kLayer = 3,
        kMaterial = 4,
        kDimStyle = 5,
        kTextStyle = 6,
        kTableStyle = 7,
        kMLeaderStyle = 8,
        kPlotStyle = 9,
    };

    /// The value of a property; which member counts depends on the property.
    struct EntityValue
    {
        ZvCmColor color; ///< For kColor.
        /// For kLineWeight, in hundredths of a millimetre; the negative values refer.
        ZvDb::LineWeight lineWeight = ZvDb::kLnWt000;
        ZvDbObjectId objectId; ///< Of a record: valid, it comes before the name.
        ZvString name; ///< Of a record.
    };

    /// The colour: by layer, by block, an index or a true colour.
    static void setCeColor(const ZvCmColor &color);
    /// The line weight: hundredths of a millimetre, or -1 by layer, -2 by block, -3 the default.
    static void setCeWeight(ZvDb::LineWeight weight);

    // By id or by name: a valid id comes first. An unknown name writes nothing. With a selection, line type, layer,
    // material and plot style go by the name alone, and an empty name writes nothing.

    /// The line type \a id or, where that is not valid, the one of that name; with a selection by name alone.
    static void setCeLType(const ZvDbObjectId &id, const ZvString &name);
    /// The material \a id or, where that is not valid, the one of that name; with a selection by name alone.
    static void setCMaterial(const ZvDbObjectId &id, const ZvString &name);
    /// The dimension style \a id or, where that is not valid, the one of that name.
    static void setCDimStyle(const ZvDbObjectId &id, const ZvString &name);
    /// The text style \a id or, where that is not valid, the one of that name.
    static void setCTextStyle(const ZvDbObjectId &id, const ZvString &name);
    /// The plot style of that name, with a selection or without; \a id does not count.
    static void setCPlotStyle(const ZvDbObjectId &id, const ZvString &name);
    /// The table style \a id or, where that is not valid, the one of that name.
    static void setCTableStyle(const ZvDbObjectId &id, const ZvString &name);
    /// The multileader style \a id or, where that is not valid, the one of that name.
    static void setCMLeaderStyle(const ZvDbObjectId &id, const ZvString &name);

    /// False when the request was refused: for an unknown or erased layer, and, with a message, for a frozen layer and
    /// one of an external reference. With a selection only an empty name is refused.
    static bool setCLayer(const ZvDbObjectId &id, const ZvString &name);

    /// The state of a layer that changeLayerStatus() changes.
    enum Layer_Info_Type {
        kLayerOnOff = 0,
        kLayerFreeze = 1,
        kLayerLock = 2,
        kLayerColor = 3,
    };

    /// Flips the state of a layer and returns the new one (off, frozen, locked are true); for the colour sets \a color
    /// and returns false. Writes to the record directly, without a command.
    ///
    /// The current layer is not frozen (a message tells so) and is switched off only after a question. False then, and
    /// for a layer that cannot be opened for write.
    static bool changeLayerStatus(Layer_Info_Type type, const ZvString &layerName, ZvCmColor color);

    /// Index of the current colour; 256, by layer, without a drawing.
    static unsigned short getCeColor();
    /// Colour of the layer that "ByLayer" stands for: that of the first selected entity, or the current one when nothing
    /// is selected. The default colour where it cannot be read.
    static ZvCmColor getCLayerColor();
    /// Colour of the current layer, whatever is selected. Zv::eOk, or Zv::eFailed with \a color left alone.
    static Zv::ErrorStatus getCurrentLayerColor(ZvCmColor &color);
    /// The application's default line weight in hundredths of a millimetre, 0 without an application.
    static int getLWDefault();
    /// Label of a line weight in UTF-8, in millimetres or inches. Never null, empty for a value that is no line weight.
    /// Static memory.
    static const char *getLineName(bool inches, ZvDb::LineWeight weight);
    /// Name of the current line type of the current document's drawing, empty on failure.
    static ZvString getLineTypeName();
    /// Does nothing; kept because other modules link it.
    static void getLWeight();
    /// Does nothing; kept because other modules link it.
    static void getLType();

    /// The block in which a new object would be placed: model space, or the paper of the layout when the work is on the
    /// paper itself. Null where there is no layout object.
    /// \throws ZvError_NotThatKindOfClass for a layout object that is no ZvDbLayout.
    static ZvDbObjectId getWorkBlockRecId(const ZvDbDatabase *database);
    /// Gives the keyboard back to the drawing view, where there is one.
    static void restoreFocus2MainView();

    // ---- pick-first selection ------------------------------------------------------------------------

    /// Name of the pick-first set of the current document in two words; they are zero, and the result is false, where
    /// there is none.
    static bool pickFirstSS(long *selectionName);
    /// Whether the pick-first set of the current document has a member.
    static bool hasSelected();
    /// The shared scan: brings the summaries up to date, reading each selected entity at most once. Null entries are
    /// passed over. Callers reset the summaries before.
    static void getPickFirstInfos(const ZvArray<ZvGlobalUIReactorHelp::SPickFirstInfo *> &infos);
    /// Whether the entity's layer is locked; false where that cannot be read.
    static bool isLocked(ZvDbEntity *entity);

    // One property of the selection. The result is a ZvGlobalUIReactorHelp::PickFirstStatus; the value is the common one,
    // empty without document or selection. Names are compared with case.

    /// The selection's colour, by layer and by block not resolved; a PickFirstStatus.
    static int getPickFirstEntitiesColor(ZvCmColor &color);
    /// The selection's layer; a PickFirstStatus.
    static int getPickFirstEntitiesLayer(ZvDbObjectId &layer);
    /// Name of the selection's line type; a PickFirstStatus.
    static int getPickFirstEntitiesLType(ZvString &name);
    /// The selection's line weight in hundredths of a millimetre, or a negative value, by layer not resolved; -1 without
    /// a value. A PickFirstStatus.
    static int getPickFirstEntitiesLWeight(ZvDb::LineWeight &weight);
    /// Name of the selection's material; a PickFirstStatus.
    static int getPickFirstEntitiesMaterial(ZvString &name);
    /// Name of the selection's plot style; a PickFirstStatus.
    static int getPickFirstEntitiesCPlotStyle(ZvString &name);

    // Unlike the summaries, these pass over entities of other kinds: a table and a line have the table's style. With no
    // entity that fits the result is 2 and the id null. Text styles are those of texts and multiline texts.

    /// Style of the selected tables, others passed over; a PickFirstStatus.
    static int getPickFirstTablesStyle(ZvDbObjectId &style);
    /// Style of the selected dimensions, others passed over; a PickFirstStatus.
    static int getPickFirstDimsStyle(ZvDbObjectId &style);
    /// Style of the selected texts and multiline texts, others passed over; a PickFirstStatus.
    static int getPickFirstTextsStyle(ZvDbObjectId &style);
    /// Style of the selected multileaders, others passed over; a PickFirstStatus.
    static int getPickFirstMLeadersStyle(ZvDbObjectId &style);

    // ---- writing to entities -------------------------------------------------------------------------

    /// Sets one property of an entity that is open for write; names are compared without case. True when it changed:
    /// false for null, an entity that lacks the property, and one that has the value already.
    static bool setProperty(ZvDbEntity *entity, Entity_Property property, const EntityValue &value);
    /// Sets one property of all selected entities in one edit frame. Entities on locked layers are left out, and a
    /// message tells their number. An exception aborts the frame and goes on to the caller.
    static void setSelectedProperty(Entity_Property property, const EntityValue &value);
    /// Takes out the entities that are on locked layers or cannot be opened; null ids stay. The number taken out.
    static int removeLockedEntity(ZvArray<ZvDbObjectId> &ids);

    // ---- tables and dictionaries ---------------------------------------------------------------------
    //
    // The arrays are emptied first. A null database is the current one; without any, arrays stay empty and ids null.
    // Rows keep the drawing's order unless said otherwise, and hold plain values.

    /// A layer as a control shows it.
    struct SigleLayerData
    {
        ZvString name; ///< Empty where the record could not be opened.
        ZvCmColor color; ///< Of the layer, whether it is on or off.
        bool isFrozen = false; ///< Not shown, and left out of the work of the drawing.
        bool isHidden = false; ///< A helper layer, which lists leave out.
        bool isOff = false; ///< Not shown.
        bool isLocked = false; ///< Its entities cannot be changed.
    };

    /// A style, by name and record.
    struct ZvsiStyleInfoItem
    {
        ZvString name; ///< What the user sees.
        ZvDbObjectId objectId; ///< Its record.
    };

    /// A named view.
    struct ZvsiViewInfoItem
    {
        ZvString name; ///< What the user sees.
        ZvDbObjectId objectId; ///< Its record.
    };

    /// Rows of getUcses().
    enum UcsItemType : int {
        kUcsUnnamed = 0, ///< The current one, when it has no name.
        kUcsTop = 1,
        kUcsBottom = 2,
        kUcsFront = 3,
        kUcsBack = 4,
        kUcsLeft = 5,
        kUcsRight = 6,
        kUcsWorld = 7,
        kUcsNamed = 8,
        kUcsPrevious = 9,
    };

    /// A coordinate system to choose from.
    struct ZvsiUcsInfoItem
    {
        ZvString name; ///< What the user sees.
        ZvDbObjectId objectId; ///< Null unless the row is a stored one.
        int type = kUcsUnnamed; ///< A UcsItemType.
    };

    /// A text style.
    struct ZvsiTextStyleInfoItem
    {
        ZvString name; ///< What the user sees.
        ZvDbObjectId objectId; ///< Its record.
        bool isAnnotative = false; ///< By getAnnotationAndMatch().
        bool isMatchOrientation = false; ///< By getAnnotationAndMatch().
        double textSize = 0.0; ///< Drawing units, 0 when it is asked for.
        double xScale = 0.0; ///< Width of a character as a part of its natural width.
        double obliquingAngle = 0.0; ///< Radians.
        bool firstFlag = false; ///< The host service's first answer on the record; stored only.
        bool secondFlag = false; ///< Its second answer.
        bool isVertical = false; ///< Written downwards.
    };

    /// Layers but those with "*" in their names, sorted by name. The null database is that of the current document.
    static void getLayerInfos(ZvArray<SigleLayerData> &layers, ZvDbDatabase *database);
    /// The record's state; a row without a name where it cannot be opened.
    static SigleLayerData getLayInfo(ZvDbObjectId id);
    /// Finds every layer of the current drawing, those with "*" in their names too.
    static SigleLayerData getLayInfo(const ZvString &name);
    /// Order of names, with case.
    static bool compareLayerInfo(SigleLayerData &a, SigleLayerData &b);
    /// Order of names, with case.
    static bool compareTextStyleInfo(ZvsiTextStyleInfoItem &a, ZvsiTextStyleInfoItem &b);
    /// The first of each name, those of external references too. In table order, or \a sorted by name.
    static void getTextStyleTableRecords(ZvArray<ZvsiTextStyleInfoItem> &styles, ZvDbDatabase *database, bool sorted);
    /// The first of each name, without those of external references.
    static void getDimStyleTableRecords(ZvArray<ZvsiStyleInfoItem> &styles, ZvDbDatabase *database);
    /// Those of the drawing's dictionary.
    static void getMleaderStyleTableRecords(ZvArray<ZvsiStyleInfoItem> &styles, ZvDbDatabase *database);
    /// Those of the drawing's dictionary.
    static void getTableStyleTableRecords(ZvArray<ZvsiStyleInfoItem> &styles, ZvDbDatabase *database);
    /// Names of the cell styles, the predefined ones translated, in falling order, case ignored.
    static void getTableCellStyleNames(ZvArray<ZvString> &names, const ZvDbObjectId &tableStyle);
    /// Blocks that a user can insert, sorted by name; with \a usedOnly those that are referenced.
    static void getBlockNames(ZvArray<ZvString> &names, ZvDbDatabase *database, bool usedOnly);
    /// Hatch patterns used in the space that is shown, in order of first use.
    static void getHatchNames(ZvArray<ZvString> &names, ZvDbDatabase *database);
    /// Two parallel arrays.
    static void getMaterials(ZvArray<ZvString> &names, ZvArray<ZvDbObjectId> &ids, ZvDbDatabase *database);
    /// Entries of the drawing's plot style dictionary.
    static void getPlotStyleNames(ZvArray<ZvString> &names, ZvDbDatabase *database);
    /// The unnamed current one where it is such, world, previous where there is one, the six sides, then the stored ones.
    /// \throws ZvError_NotThatKindOfClass for a current viewport without viewport data.
    static void getUcses(ZvArray<ZvsiUcsInfoItem> &items, ZvDbDatabase *database);
    /// Named views of the space that is worked in.
    static void getCustomViews(ZvArray<ZvsiViewInfoItem> &items, ZvDbDatabase *database);
    /// Reads both from the record's extended data; false and false where it has none, and for null.
    static void getAnnotationAndMatch(const ZvDbTextStyleTableRecord *record, bool &annotative, bool &matchOrientation);

    // By name, case ignored; the null id for an empty or unknown name.

    /// The text style of that name; the null id for an empty or unknown one.
    static ZvDbObjectId findTextStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database);
    /// An unknown name gives the last style of the table.
    static ZvDbObjectId findDimStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database);
    /// The multileader style of that name; the null id for an empty or unknown one.
    static ZvDbObjectId findMleaderStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database);
    /// The table style of that name; the null id for an empty or unknown one.
    static ZvDbObjectId findTableStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database);
    /// The line type of that name; the null id for an empty or unknown one.
    static ZvDbObjectId findLineStyleTableRecordByName(const ZvString &name, ZvDbDatabase *database);
    /// The material of that name; the null id for an empty or unknown one.
    static ZvDbObjectId findMaterialByName(const ZvString &name, ZvDbDatabase *database);
    /// The layer of that name; the null id for an empty or unknown one.
    static ZvDbObjectId findLayerTableRecordByName(const ZvString &name, ZvDbDatabase *database);

    // By id; empty for an id that is not valid or not in the dictionary.

    /// Name of a multileader style.
    static ZvString findMleaderStyleTableRecordById(const ZvDbObjectId &id, ZvDbDatabase *database);
    /// Name of a table style.
    static ZvString findTableStyleTableRecordById(const ZvDbObjectId &id, ZvDbDatabase *database);

    // ---- line type pictures --------------------------------------------------------------------------
    //
    // Pictures of a straight line, width and height in pixels, on which a pattern repeats a fixed number of times however
    // long it is. Line types of external references have none. The renderer is asked at each call, and the callers hold
    // what they get; a picture that it cannot make is null. Widths lie above 10, where the line has its scale from.

    /// Calls \a callback once for each line type of the current drawing that can be opened, in table order, with its
    /// picture in opaque black, its name and its id. No record is open during the call.
    static void getLineTypeInfo(int width, int height,
                                std::function<void(ZvSmartPtr<ZvGiRasterImage> &, ZvString &, ZvDbObjectId &)> &&callback);
    /// Puts the picture of one line type into \a image, in the renderer's standard colour; case ignored. The id of its
    /// record, or the null id for an empty or unknown name and a size below 1: \a image is left alone then.
    static ZvDbObjectId getLineTypeRasterImage(const ZvString &name, int width, int height,
                                               ZvSmartPtr<ZvGiRasterImage> &image);
};

#endif
