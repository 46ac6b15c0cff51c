// SPDX-License-Identifier: MIT
#ifndef ZVDBRECORDS_H
#define ZVDBRECORDS_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "db/zvdbsymboltable.h"

#include <map>
#include <vector>

class ZvDbEntity;

/// A layer.
class ZV_EXPORT ZvDbLayerTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbLayerTableRecord)
public:
    ZvDbLayerTableRecord();
    /// Not shown, and left out of work on the drawing.
    bool isFrozen() const { return (m_flags & 1) != 0; }
    /// Never refuses: callers ask before they freeze the current layer.
    Zv::ErrorStatus setIsFrozen(bool frozen);
    /// Not shown.
    bool isOff() const { return m_off; }
    void setIsOff(bool off);
    /// Shown, but its entities cannot be changed.
    bool isLocked() const { return (m_flags & 4) != 0; }
    void setIsLocked(bool locked);
    /// Frozen in viewports made from now on.
    bool viewportDefaultFrozen() const { return (m_flags & 2) != 0; }
    void setViewportDefaultFrozen(bool frozen);
    /// The colour of a layer that is off is its own colour all the same.
    ZvCmColor color() const { return m_color; }
    void setColor(const ZvCmColor &color);
    /// Line type of entities that have it by layer.
    ZvDbObjectId linetypeObjectId() const { return m_linetype; }
    void setLinetypeObjectId(ZvDbObjectId id);
    /// -3 is the default weight.
    ZvDb::LineWeight lineWeight() const { return m_lineWeight; }
    void setLineWeight(ZvDb::LineWeight weight);
    /// Comes out on paper.
    bool isPlottable() const { return m_plottable; }
    void setIsPlottable(bool plottable);
    /// Plot style of entities that have it by layer; null where the drawing has none by name.
    ZvDbObjectId plotStyleNameId() const { return m_plotStyle; }
    void setPlotStyleNameId(ZvDbObjectId id);
    /// Material of entities that have it by layer.
    ZvDbObjectId materialId() const { return m_material; }
    void setMaterialId(ZvDbObjectId id);
    /// Transparency of entities that have it by layer.
    ZvCmTransparency transparency() const;
    void setTransparency(const ZvCmTransparency &transparency);
    /// A text of the user's; may be empty.
    ZvString description() const;
    void setDescription(const ZvString &text);
    /// Not to be shown in lists: helper layers, whose names start with "*".
    bool isHidden() const;
    /// Some entity or record refers to it; as of the last ZvDbLayerTable::generateUsageData().
    bool isInUse() const { return m_inUse; }
    const char *fileName() const override { return "LAYER"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    friend class ZvDbLayerTable;
    friend class ZvDbObjectAccess;
    ZvCmColor m_color;
    ZvDbObjectId m_linetype;
    ZvDbObjectId m_plotStyle;
    ZvDbObjectId m_material;
    ZvDb::LineWeight m_lineWeight = ZvDb::kLnWtByLwDefault;
    bool m_off = false;
    bool m_plottable = true;
    bool m_inUse = false;
};

/// A line type: the pattern of a line, with texts and shapes in it.
class ZV_EXPORT ZvDbLinetypeTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbLinetypeTableRecord)
public:
    /// One element of the pattern.
    struct Dash
    {
        double length = 0.0; ///< Drawing units: above 0 a dash, below 0 a gap, 0 a dot.
        int flags = 0; ///< 0 nothing, 2 a text, 4 a shape; plus 1 for a rotation measured from the X axis.
        int shapeNumber = 0; ///< Number of the shape in its file.
        ZvDbObjectId styleId; ///< Text style or shape file of the text or shape.
        double scale = 1.0; ///< Of text or shape: the height of a text, a factor on a shape.
        double rotation = 0.0; ///< Radians.
        double offsetX = 0.0; ///< Drawing units, along the line.
        double offsetY = 0.0; ///< The same across the line.
        ZvString text; ///< The text, where \a flags say so.
    };
    ZvDbLinetypeTableRecord() = default;
    /// The description; may be empty.
    ZvString comments() const { return m_comments; }
    void setComments(const ZvString &text);
    /// Length of one repeat in drawing units; 0 for a continuous line.
    double patternLength() const { return m_patternLength; }
    void setPatternLength(double length);
    /// Number of elements; 0 for a continuous line.
    int numDashes() const { return int(m_dashes.size()); }
    /// The element \a i, from 0 to numDashes() - 1; not checked.
    const Dash &dashAt(int i) const { return m_dashes[std::size_t(i)]; }
    /// Sets the pattern length to the sum of the lengths as well.
    void setDashes(const std::vector<Dash> &dashes);
    const char *fileName() const override { return "LTYPE"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    ZvString m_comments;
    double m_patternLength = 0.0;
    std::vector<Dash> m_dashes;
};

/// A text style: font, slant and width of texts.
class ZV_EXPORT ZvDbTextStyleTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbTextStyleTableRecord)
public:
    ZvDbTextStyleTableRecord() = default;
    /// Fixed height in drawing units; 0 when it is asked for.
    double textSize() const { return m_textSize; }
    void setTextSize(double size);
    /// Width of a character as a part of its natural width; above 0.
    double xScale() const { return m_xScale; }
    void setXScale(double scale);
    /// Radians.
    double obliquingAngle() const { return m_obliquing; }
    void setObliquingAngle(double angle);
    /// Written downwards.
    bool isVertical() const { return (m_flags & 4) != 0; }
    void setIsVertical(bool vertical);
    /// The record stands for a shape file and is no style for texts. It has no name of its own.
    bool isShapeFile() const { return (m_flags & 1) != 0; }
    void setIsShapeFile(bool shapeFile);
    /// Name of the font file, or of the shape file.
    ZvString fontFileName() const { return m_fontFile; }
    void setFontFileName(const ZvString &name);
    /// Name of the font file for the characters that the other lacks; may be empty.
    ZvString bigFontFileName() const { return m_bigFontFile; }
    void setBigFontFileName(const ZvString &name);
    /// TrueType family; empty when the style names a font file only.
    ZvString typeface() const;
    /// Of the TrueType family.
    bool isBold() const;
    bool isItalic() const;
    /// Sets the TrueType family; an empty one takes it away.
    Zv::ErrorStatus setFont(const ZvString &typeface, bool bold, bool italic);
    /// Bits of the generation flag: 2 backward, 4 upside down.
    int generationFlags() const { return m_generation; }
    const char *fileName() const override { return "STYLE"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    double m_textSize = 0.0;
    double m_xScale = 1.0;
    double m_obliquing = 0.0;
    double m_lastHeight = 2.5;
    int m_generation = 0;
    ZvString m_fontFile;
    ZvString m_bigFontFile;
};

/// A dimension style: the dimension variables by their group codes, typed by the code.
class ZV_EXPORT ZvDbDimStyleTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbDimStyleTableRecord)
public:
    ZvDbDimStyleTableRecord();
    /// Value of a dimension variable by name without "$", such as "DIMSCALE"; the standard's default where the style
    /// says nothing. NaN, empty or null for a name that is none.
    double real(const char *name) const;
    /// The same for a whole number; 0 for a name that is none.
    int integer(const char *name) const;
    /// The same for a text.
    ZvString textValue(const char *name) const;
    /// The same for a record.
    ZvDbObjectId idValue(const char *name) const;
    /// eKeyNotFound for a name that is none of a dimension variable of this type.
    Zv::ErrorStatus setReal(const char *name, double value);
    /// The same for a whole number.
    Zv::ErrorStatus setInteger(const char *name, int value);
    /// The same for a text.
    Zv::ErrorStatus setTextValue(const char *name, const ZvString &value);
    /// The same for a record.
    Zv::ErrorStatus setIdValue(const char *name, ZvDbObjectId value);
    const char *fileName() const override { return "DIMSTYLE"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    std::map<int, double> m_numbers; // by group code
    std::map<int, ZvString> m_texts;
    std::map<int, ZvDbObjectId> m_ids;
};

/// A stored coordinate system.
class ZV_EXPORT ZvDbUCSTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbUCSTableRecord)
public:
    ZvDbUCSTableRecord() = default;
    /// In world coordinates.
    ZvGePoint3d origin() const { return m_origin; }
    void setOrigin(const ZvGePoint3d &origin);
    /// Of length 1, in world coordinates; the two are at right angles.
    ZvGeVector3d xAxis() const { return m_xAxis; }
    void setXAxis(const ZvGeVector3d &axis);
    ZvGeVector3d yAxis() const { return m_yAxis; }
    void setYAxis(const ZvGeVector3d &axis);
    const char *fileName() const override { return "UCS"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    ZvGePoint3d m_origin;
    ZvGeVector3d m_xAxis {1, 0, 0};
    ZvGeVector3d m_yAxis {0, 1, 0};
};

/// What named views and viewports share: where one looks from, at what, how much is seen.
class ZV_EXPORT ZvDbAbstractViewTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbAbstractViewTableRecord)
public:
    /// Middle of the view in display coordinates (of the plane through the target, across the view direction).
    ZvGePoint2d centerPoint() const { return m_center; }
    void setCenterPoint(const ZvGePoint2d &center);
    /// Size of what is seen, in drawing units.
    double height() const { return m_height; }
    void setHeight(double height);
    double width() const { return m_width; }
    void setWidth(double width);
    /// The point looked at, in world coordinates.
    ZvGePoint3d target() const { return m_target; }
    void setTarget(const ZvGePoint3d &target);
    /// From the target to the eye, in world coordinates.
    ZvGeVector3d viewDirection() const { return m_direction; }
    void setViewDirection(const ZvGeVector3d &direction);
    /// Radians.
    double viewTwist() const { return m_twist; }
    void setViewTwist(double angle);

protected:
    ZvDbAbstractViewTableRecord() = default;
    ZvGePoint2d m_center;
    double m_height = 1.0;
    double m_width = 1.0;
    ZvGePoint3d m_target;
    ZvGeVector3d m_direction {0, 0, 1};
    double m_twist = 0.0;
};

/// A named view.
class ZV_EXPORT ZvDbViewTableRecord : public ZvDbAbstractViewTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbViewTableRecord)
public:
    ZvDbViewTableRecord() = default;
    /// Saved in paper space.
    bool isPaperspaceView() const { return (m_flags & 1) != 0; }
    void setIsPaperspaceView(bool paper);
    const char *fileName() const override { return "VIEW"; }
    void fileFields(ZvDbFiler &filer) override;
};

/// Viewport of model space. Several may be named "*Active": the tiles on the screen.
class ZV_EXPORT ZvDbViewportTableRecord : public ZvDbAbstractViewTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbViewportTableRecord)
public:
    ZvDbViewportTableRecord() = default;
    /// In fractions of the drawing window, (0, 0) lower left.
    ZvGePoint2d lowerLeftCorner() const { return m_lowerLeft; }
    /// The same; (1, 1) is the upper right corner of the window.
    ZvGePoint2d upperRightCorner() const { return m_upperRight; }
    const char *fileName() const override { return "VPORT"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    ZvGePoint2d m_lowerLeft {0, 0};
    ZvGePoint2d m_upperRight {1, 1};
};

/// An application that keeps extended data in the drawing.
class ZV_EXPORT ZvDbRegAppTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbRegAppTableRecord)
public:
    ZvDbRegAppTableRecord() = default;
    const char *fileName() const override { return "APPID"; }
    void fileFields(ZvDbFiler &filer) override;
};

/// Walks the entities of a block in drawing order, erased ones left out. Deleted by the caller.
class ZV_EXPORT ZvDbBlockTableRecordIterator
{
public:
    /// Goes back to the first entity.
    void start();
    /// Whether the walk is at its end.
    bool done() const;
    /// Goes on.
    void step();
    /// The entity at hand. eFailed at the end.
    Zv::ErrorStatus getEntityId(ZvDbObjectId &id) const;
    /// The entity at hand; null at the end.
    ZvDbObjectId entityId() const;
    /// Opens the entity at hand.
    Zv::ErrorStatus getEntity(ZvDbEntity *&entity, ZvDb::OpenMode mode) const;

private:
    friend class ZvDbBlockTableRecord;
    ZvDbBlockTableRecordIterator() = default;
    std::uint64_t m_database = 0; // number in the upper half, as in an id
    std::vector<std::uint32_t> m_entities;
    std::size_t m_position = 0;
};

/// A block, with its entities. Model space and the papers of the layouts are blocks too.
class ZV_EXPORT ZvDbBlockTableRecord : public ZvDbSymbolTableRecord
{
    ZVRX_DECLARE_MEMBERS(ZvDbBlockTableRecord)
public:
    ZvDbBlockTableRecord() = default;
    /// Copies what the record says of itself; the entities stay each block's own.
    ZvDbBlockTableRecord &operator=(const ZvDbBlockTableRecord &other);
    /// Made by programs for a single use, as the picture of a dimension: marked so, or named by a letter and a number.
    bool isAnonymous() const;
    /// The content comes from another file.
    bool isFromExternalReference() const { return (m_blockFlags & 4) != 0; }
    /// The same, and is not passed on to drawings that refer to this one.
    bool isFromOverlayReference() const { return (m_blockFlags & 8) != 0; }
    /// Some entity defines an attribute.
    bool hasAttributeDefinitions() const { return (m_blockFlags & 2) != 0; }
    /// The block of model space or of a layout's paper.
    bool isLayout() const;
    /// The point that a reference puts at its position.
    ZvGePoint3d origin() const { return m_origin; }
    void setOrigin(const ZvGePoint3d &origin);
    /// File of an external reference.
    ZvString pathName() const { return m_pathName; }
    /// The description; may be empty.
    ZvString comments() const { return m_comments; }
    /// Code of the insertion units, 0 unitless, 4 millimetres, 6 metres.
    int insertionUnits() const { return m_units; }
    /// The layout whose content this is; null for other blocks.
    ZvDbObjectId layoutId() const { return m_layout; }
    /// Ids of the references to this block; empty when it is unused. \a directOnly leaves out those nested in other
    /// blocks that are themselves unused; \a forceValidity is accepted and has no effect here.
    Zv::ErrorStatus getBlockReferenceIds(ZvArray<ZvDbObjectId> &ids, bool directOnly = true, bool forceValidity = false) const;
    /// An iterator that the caller deletes. It holds what it needs: the block may be closed before the walk.
    Zv::ErrorStatus newIterator(ZvDbBlockTableRecordIterator *&iterator) const;
    /// Adds an entity of no database and takes it over; it stays open for write.
    Zv::ErrorStatus appendEntity(ZvDbEntity *entity, ZvDbObjectId &id);
    /// Entities that are not erased.
    int entityCount() const;
    /// All entities in drawing order as dense positions in the database, erased ones included.
    const std::vector<std::uint32_t> &entityIndices() const { return m_entities; }
    const char *fileName() const override { return "BLOCK_RECORD"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    friend class ZvDbObjectAccess;
    friend class ZvDbDatabase;
    ZvGePoint3d m_origin;
    ZvString m_pathName;
    ZvString m_comments;
    ZvDbObjectId m_layout;
    int m_blockFlags = 0;
    int m_units = 0;
    std::vector<std::uint32_t> m_entities;
};

/// Asked with queryX() of the current viewport's object (a ZvDbViewport or a ZvDbViewportTableRecord): data that both
/// kinds of viewport have. A protocol object, attached to both classes.
class ZV_EXPORT ZvDbAbstractViewportData : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbAbstractViewportData)
public:
    /// Whether the viewport remembers a coordinate system before the current one; it comes in \a previous.
    virtual bool hasPreviousUcs(const ZvDbObject *viewport, ZvGeMatrix3d &previous) const = 0;
};

#endif
