// SPDX-License-Identifier: MIT
#ifndef ZVDBSTYLES_H
#define ZVDBSTYLES_H

#include "base/zvcmcolor.h"
#include "base/zvge3d.h"
#include "db/zvdbdictionary.h"

/// Objects that live in a dictionary of the drawing and are known by their entry's name.
class ZV_EXPORT ZvDbNamedObject : public ZvDbObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbNamedObject)
public:
    /// Name of the entry in the owning dictionary; the object's own where it stands in none.
    ZvString name() const;
    /// The same with a status.
    Zv::ErrorStatus getName(ZvString &name) const;
    /// Renames the entry as well. eInvalidInput, eDuplicateKey.
    Zv::ErrorStatus setName(const ZvString &name);

protected:
    ZvDbNamedObject() = default;
    friend class ZvDbObjectAccess;
    ZvString m_name;
};

/// A material.
class ZV_EXPORT ZvDbMaterial : public ZvDbNamedObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbMaterial)
public:
    ZvDbMaterial() = default;
    /// A text of the user's; may be empty.
    ZvString description() const { return m_description; }
    /// Diffuse colour; white where the material says nothing.
    ZvCmColor diffuse() const { return m_diffuse; }
    const char *fileName() const override { return "MATERIAL"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    ZvString m_description;
    ZvCmColor m_diffuse;
};

/// A multileader style.
class ZV_EXPORT ZvDbMLeaderStyle : public ZvDbNamedObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbMLeaderStyle)
public:
    ZvDbMLeaderStyle() = default;
    /// Style of the text.
    ZvDbObjectId textStyleId() const { return m_textStyle; }
    Zv::ErrorStatus setTextStyleId(ZvDbObjectId id);
    /// Drawing units; above 0.
    double textHeight() const { return m_textHeight; }
    Zv::ErrorStatus setTextHeight(double height);
    /// Length of the arrow in drawing units.
    double arrowSize() const { return m_arrowSize; }
    /// Of the leader line.
    ZvCmColor leaderColor() const { return m_leaderColor; }
    /// Factor on all sizes of the style.
    double scale() const { return m_scale; }
    const char *fileName() const override { return "MLEADERSTYLE"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    friend class ZvDbObjectAccess;
    ZvDbObjectId m_textStyle;
    ZvCmColor m_leaderColor;
    double m_textHeight = 4.0;
    double m_arrowSize = 4.0;
    double m_scale = 1.0;
};

/// A table style.
class ZV_EXPORT ZvDbTableStyle : public ZvDbNamedObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbTableStyle)
public:
    ZvDbTableStyle() = default;
    /// Names of the cell styles, the predefined ones as "_TITLE", "_HEADER" and "_DATA" first. Replaces the content.
    Zv::ErrorStatus getCellStyles(ZvArray<ZvString> &names) const;
    /// A text of the user's; may be empty.
    ZvString description() const { return m_description; }
    /// Text style of the data cells.
    ZvDbObjectId textStyleId() const { return m_textStyle; }
    const char *fileName() const override { return "TABLESTYLE"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    friend class ZvDbObjectAccess;
    ZvString m_description;
    ZvDbObjectId m_textStyle;
    ZvArray<ZvString> m_cellStyles;
};

/// A plot style name: the object behind an entry of the plot style dictionary.
class ZV_EXPORT ZvDbPlaceHolder : public ZvDbNamedObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbPlaceHolder)
public:
    ZvDbPlaceHolder() = default;
    const char *fileName() const override { return "ACDBPLACEHOLDER"; }
};

/// One of the variables that drawings keep in a dictionary.
class ZV_EXPORT ZvDbDictionaryVar : public ZvDbNamedObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbDictionaryVar)
public:
    ZvDbDictionaryVar() = default;
    /// As it stands in the file.
    ZvString value() const { return m_value; }
    Zv::ErrorStatus setValue(const ZvString &value);
    const char *fileName() const override { return "DICTIONARYVAR"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    ZvString m_value;
};

/// What is plotted on which paper, and how: a named page set-up of the dictionary "ACAD_PLOTSETTINGS", or the one that
/// a layout carries with it.
class ZV_EXPORT ZvDbPlotSettings : public ZvDbNamedObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbPlotSettings)
public:
    ZvDbPlotSettings() = default;
    /// Of a layout: the page set-up that was last taken over into it; may be empty, or name none.
    ZvString plotSettingsName() const { return m_settingsName; }
    /// Made for model space; else for the layouts on paper. Of a layout, where it itself lies tells.
    bool isForModel() const { return (m_plotFlags & kForModel) != 0; }
    /// Paper size and margins in millimetres, as the sheet lies; (left, bottom) and (right, top).
    ZvGePoint2d paperSize() const { return m_paperSize; }
    /// Of the margins: what the device cannot print.
    ZvGePoint2d marginsMinimum() const { return m_marginsMin; }
    ZvGePoint2d marginsMaximum() const { return m_marginsMax; }
    /// 0 inches, 1 millimetres, 2 pixels.
    int paperUnits() const { return m_paperUnits; }
    /// As the plotter calls it.
    ZvString paperName() const { return m_paperName; }
    /// Name of the plotter, or of its configuration file; may be empty.
    ZvString plotterName() const { return m_plotter; }
    /// 0 to 3 quarter turns.
    int plotRotation() const { return m_rotation; }
    /// What is plotted: 0 display, 1 extents, 2 limits, 3 view, 4 window, 5 layout.
    int plotType() const { return m_plotType; }
    /// Paper units for a drawing unit.
    double plotScale() const;
    /// The scale is chosen so that what is plotted fills the printable area.
    bool isScaledToFit() const { return (m_plotFlags & kStandardScale) != 0 && m_scaleType == 0; }
    /// In millimetres from the corner of the printable area, as the sheet is held for reading.
    ZvGePoint2d plotOrigin() const { return m_plotOrigin; }
    /// In the middle of the printable area, whatever the origin.
    bool isPlotCentered() const { return (m_plotFlags & kCentered) != 0; }
    /// Corners of the window in drawing units, and name of the view, for the plot types that show these.
    ZvGePoint2d plotWindowMinimum() const { return m_windowMin; }
    ZvGePoint2d plotWindowMaximum() const { return m_windowMax; }
    /// For the plot type that shows a view.
    ZvString plotViewName() const { return m_plotView; }
    /// Else every line is a hairline.
    bool plotsLineWeights() const { return (m_plotFlags & kLineWeights) != 0; }
    /// Name of the plot style table file.
    ZvString styleSheet() const { return m_styleSheet; }
    const char *fileName() const override { return "PLOTSETTINGS"; }
    void fileFields(ZvDbFiler &filer) override;

protected:
    friend class ZvDbObjectAccess;
    /// Bits of the plot flags, as in the file (70).
    enum PlotFlag { kCentered = 4, kStandardScale = 16, kLineWeights = 128, kForModel = 1024 };
    ZvString m_settingsName;
    ZvString m_paperName;
    ZvString m_plotView;
    ZvString m_plotter;
    ZvString m_styleSheet;
    ZvGePoint2d m_paperSize;
    ZvGePoint2d m_marginsMin;
    ZvGePoint2d m_marginsMax;
    int m_paperUnits = 1;
    int m_rotation = 0;
    int m_plotType = 5;
    double m_scaleNumerator = 1.0;
    double m_scaleDenominator = 1.0;
    ZvGePoint2d m_plotOrigin;
    ZvGePoint2d m_windowMin;
    ZvGePoint2d m_windowMax;
    int m_plotFlags = 688; ///< Line weights, plot styles, a standard scale, viewports first.
    int m_scaleType = 16; ///< 0 to fit, 16 one to one.
};

/// A layout with its page set-up.
class ZV_EXPORT ZvDbLayout : public ZvDbPlotSettings
{
    ZVRX_DECLARE_MEMBERS(ZvDbLayout)
public:
    ZvDbLayout() = default;
    /// What its tab shows; "Model" for model space.
    ZvString layoutName() const { return name(); }
    /// The block with the layout's content.
    ZvDbObjectId getBlockTableRecordId() const { return m_block; }
    /// Place of the tab, 0 for model space.
    int tabOrder() const { return m_tabOrder; }
    /// Model space rather than paper.
    bool isModelType() const;
    /// The viewport that was last worked in; may be null.
    ZvDbObjectId lastViewportId() const { return m_lastViewport; }
    const char *fileName() const override { return "LAYOUT"; }
    void fileFields(ZvDbFiler &filer) override;

private:
    friend class ZvDbObjectAccess;
    ZvDbObjectId m_block;
    ZvDbObjectId m_lastViewport;
    int m_tabOrder = 0;
    int m_layoutFlags = 1;
};

/// An object of a kind that the database does not model. Its record is kept whole.
class ZV_EXPORT ZvDbProxyObject : public ZvDbObject
{
    ZVRX_DECLARE_MEMBERS(ZvDbProxyObject)
public:
    ZvDbProxyObject() = default;
    /// Class name of the record in the file.
    ZvString originalFileName() const;
    const char *fileName() const override;
};

/// Stored layer states.
class ZV_EXPORT ZvDbLayerState
{
public:
    /// The dictionary that holds the states; null when there is none and \a create is false, or \a database is null.
    static ZvDbObjectId dictionaryId(const ZvDbDatabase *database, bool create);
};

#endif
