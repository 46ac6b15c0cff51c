// SPDX-License-Identifier: MIT
#ifndef ZVCOLORCOMBOBOX_H
#define ZVCOLORCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvarray.h"
#include "base/zvcmcolor.h"
#include "base/zvexport.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"

#include <QColor>
#include <QComboBox>
#include <QMetaType>
#include <QString>
#include <QVector>

#include <cstdint>

class ZvApDocument;

/// What a row of the colour list is.
enum ZvColorItemType : std::int32_t {
    kColorItemPlain = 0, ///< an index colour, a true colour, or none
    kColorItemByBlock = 1,
    kColorItemByLayer = 2,
    kColorItemForeign = 3, ///< a caller's own; searches pass over it
    kColorItemSelect = 4, ///< opens the colour dialog
};

/// The record of a row, under Qt::UserRole.
struct ColorData
{
    QColor color; ///< Of the swatch; invalid where it could not be found.
    QString name; ///< What the user sees, and the key by which rows are found.
    std::int32_t type = kColorItemPlain; ///< A ZvColorItemType.
    ZvCmEntityColor entityColor; ///< What is written to the drawing.
};
Q_DECLARE_TYPEINFO(ColorData, Q_MOVABLE_TYPE);
Q_DECLARE_METATYPE(ColorData)

/// The record that shows an entity's colour. \a palette holds 256 words 0x00BBGGRR by colour index; null is taken as
/// black throughout. By layer has the colour of the layer \a layerId or, with a null or erased id, of the layer that
/// ZevaUISetting::getCLayerColor() means. A layer that cannot be read leaves the swatch invalid.
ZV_EXPORT ColorData formatColor(const ZvCmEntityColor &entityColor, const unsigned int *palette, ZvDbObjectId layerId);

/// Reads a colour text of the kernel: "BYLAYER" or "BYBLOCK" in any case, an index, "RGB:1,2,3", or a word, a blank and
/// an index, as formatColor() names the indices. False for anything else: \a data is left alone then.
ZV_EXPORT bool convertColorStrToColorData(const ZvString &text, ColorData &data);

/// The colour drop-down.
///
/// Unhooked it is a plain chooser: it lists colours and tells by ColorItemChanged() what the user picks. Hooked it
/// follows the drawing, showing the current colour or that of the selected entities, and writes what the user picks to
/// the drawing. Its last row opens the colour dialog; a colour that was chosen there becomes a row of its own, and the
/// last ten of these stay over refills.
///
/// Without an open document the list is empty. A hooked list is filled anew each time it opens, and does not open while
/// an ordinary command runs.
class ZV_EXPORT ZvColorComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
    /// What the list holds, for forms.
    Q_PROPERTY(ViewStyles viewStyle READ viewStyle WRITE setViewStyle)
public:
    /// What the list holds besides the seven basic colours: bits to be combined. Bit 4 of the default 7 means nothing.
    enum ViewStyle : unsigned int {
        kColorViewByLayerBlock = 1, ///< ByLayer and ByBlock, which the colour dialog offers as well then
        kColorViewSelect = 2, ///< the row that opens the colour dialog
        kColorViewNone = 8, ///< no colour
        kColorViewUseCurrent = 16, ///< first of all, a row for the current colour, whatever that is
    };
    Q_DECLARE_FLAGS(ViewStyles, ViewStyle)
    Q_FLAG(ViewStyles)

    /// Not hooked.
    explicit ZvColorComboBox(QWidget *parent);
    /// With \a hook it follows the drawing and writes to it.
    ZvColorComboBox(bool hook, QWidget *parent);
    /// Adds \a color to the list and shows it, where colours are shown by the palette in force.
    ZvColorComboBox(bool hook, const ZvCmColor &color, QWidget *parent);
    ~ZvColorComboBox() override;

    // ---- setting up

    /// Done by the constructors.
    void Initialize();
    /// Fills the list anew. With \a addColor, \a color becomes a row and is shown. \a layerId is the layer that ByLayer
    /// stands for.
    void init(const ZvCmColor &color, bool addColor, ZvDbObjectId layerId);
    /// Bits of ViewStyle; fills the list anew.
    void setViewStyle(unsigned int style);
    /// The layer that ByLayer stands for; null for that of the selection or the current one. Shows from the next
    /// refill.
    void setLayerId(ZvDbObjectId layerId);

    // ---- rows

    // A row is found by its text. Adding a text once more makes a second row, and the result is still the first. Rows
    // go to the end as long as there is no row for the colour dialog, whatever place is asked for.

    /// The first row with that text.
    int AddColorItem(int index, ColorData data);
    /// A row before the last one, as AddColorItem(). Its place is -1 with an empty list.
    int AppendColorItem(const QColor &color, const QString &name);
    int AppendColorItem(const ZvCmColor &color);
    int AppendColorItem(const ColorData &data);
    /// A row of this colour with a text of the caller's, as AddColorItem().
    int insertColorItem(int index, const QString &text, const ZvCmColor &color);
    /// A first row for no colour.
    void SetUseColorNone();
    /// The row that opens the colour dialog.
    void AppendFinish();
    /// Blank: no row is current.
    void SetNullItem();

    /// First plain row of this colour, -1 when there is none.
    int FindColor(const QColor &color);
    /// First row of this colour; of true colours, the row of the colour dialog counts as black. -1 when there is none.
    int FindColor(const ZvCmColor &color);
    /// First row of this index; one is added when there is none. The result is then the last row, which is the row of
    /// the colour dialog if there is one.
    int FindColor(int colorIndex);
    /// Colour of a plain row; false for others and out of range.
    bool FindColor(int index, QColor &out);

    // ---- value

    /// Invalid when no row is current.
    QColor GetCurrentColor() const;
    /// True colour black when no row is current.
    ZvCmEntityColor GetCurrentColorEx() const;
    /// Asserts for an index out of range, and gives true colour black.
    ZvCmEntityColor GetColor(int index) const;
    /// Writes to the drawing; nothing when not hooked.
    void setCeColor(const ZvCmEntityColor &color);
    /// Shows what the drawing has now. The argument is not used.
    void updateData(bool);

    /// Adds the user's own rows.
    virtual void subInit();
    /// Keeps a row over refills; the oldest of ten makes room.
    virtual void appendCustomInfo(const ColorData &data);
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

    void showPopup() override;

Q_SIGNALS:
    /// The user picked a colour; invalid where it could not be found.
    void ColorItemChanged(QColor color);

public Q_SLOTS:
    /// What a change of the current row does: the last row opens the colour dialog, any other is a pick.
    void currentColorIndexChanged(int index);
    /// Gives the keyboard back to the drawing.
    void on_activated(int index);

protected:
    bool event(QEvent *event) override;

private:
    enum class Found { kNo, kByValue, kByIndex };

    ViewStyles viewStyle() const { return ViewStyles(int(m_viewStyle)); }
    void setUp();
    QVector<ColorData> fixedRows(const ZvApDocument &document, const unsigned int *palette,
                                 const ZvDbObjectId &layerId) const;
    void showRows(const QVector<ColorData> &rows);
    void addRow(int index, const ColorData &data);
    ColorData rowAt(int index) const;
    void takePick(const ColorData &data);
    void pickFromDialog();
    Found findChosen(int method, std::uint32_t value, const ZvCmEntityColor &chosen, int &row) const;
    ColorData addChosen(const ZvCmEntityColor &chosen);

    std::int32_t m_previousIndex = 0; // what a cancelled dialog goes back to
    std::int32_t m_swatchSize = 0; // pixels
    std::uint32_t m_viewStyle = 7;
    std::uint32_t m_paletteStamp = 0; // first word of the palette at the last fill
    ZvArray<ColorData> m_customColors;
    bool m_hasSelectItem = false; // rows go before it
    QColor m_shownColor; // of the row last shown by updateData()
    ZvDbObjectId m_layerId;
    ZvGlobalUIReactorHelp::SColorInfo m_colorInfo;
};

#endif
