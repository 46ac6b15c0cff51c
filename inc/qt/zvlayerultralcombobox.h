// SPDX-License-Identifier: MIT
#ifndef ZVLAYERULTRALCOMBOBOX_H
#define ZVLAYERULTRALCOMBOBOX_H

#include "zvodasetting.h"
#include "zvqtcontrolhelp.h"

#include "base/zvarray.h"
#include "base/zvexport.h"
#include "base/zvstring.h"

#include <QComboBox>
#include <QFont>
#include <QHash>
#include <QIcon>
#include <QPointer>
#include <QRect>
#include <QString>
#include <QVector>

#include <array>
#include <cstdint>
#include <map>
#include <unordered_map>
#include <vector>

QT_BEGIN_NAMESPACE
class QColor;
class QLabel;
QT_END_NAMESPACE

class ZvLayerTable;

/// The layer drop-down. The closed box is a picture of a layer: on or off, frozen, locked, its colour and its name. The
/// list is a table; each row has four push buttons, which switch, freeze, lock and recolour the layer while the list
/// stays open, and a press on the name makes the layer current and closes the list.
///
/// Hooked it follows the drawing: it shows the current layer, or the layer that the selected entities share, is blank
/// when they differ and disabled without a drawing. A press on a name is passed to ZevaUISetting::setCLayer(), which
/// moves the selected entities when there are some. Its list is read anew each time it opens, and does not open while
/// an ordinary command runs.
///
/// Not hooked it keeps the list of its construction, and a press on a name changes the picture only. The row buttons
/// write to the drawing all the same.
///
/// What the row buttons write in one opening of the list is one step of undo.
///
/// The six pictures of the states are expected in "ico_zeva" beside the executable; a missing one leaves its place
/// empty. Up to 2,000 layers every cell of the columns 0 to 3 has its button, as QTableWidget::cellWidget() tells, from
/// the time the list is filled; of a longer list a row has its buttons once it was in view. No signal tells of picks:
/// the current index of the base class is only the row that the list opens at.
class ZV_EXPORT ZvLayerUltralComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked.
    explicit ZvLayerUltralComboBox(QWidget *parent);
    /// \throws ZvError_NotThatKindOfClass where the update bus's key holds what is no bus.
    ZvLayerUltralComboBox(bool hooked, QWidget *parent);
    ~ZvLayerUltralComboBox() override;

    // ---- setting up

    /// Makes label, table and icons. Done by the constructors.
    void initializeData();
    /// Fills the list with the layers of the current document's drawing. The picture stays.
    void init();
    /// The same with a palette of 256 words 0x00BBGGRR by colour index. An error of the kernel gets out, and leaves
    /// signals blocked and hooked cleared.
    void readLayerData(const unsigned int *palette);
    /// Adds a row at the end of the list. It stands for no layer: its buttons change nothing, and a press on its name
    /// makes the box blank.
    void addItemLayerInfo(bool off, bool frozen, bool locked, const QColor &colour, const QString &name);

    // ---- the closed box

    /// Paints the picture, whatever row is current.
    void drawSectionView(bool off, bool frozen, bool locked, const QColor &colour, const QString &name);
    /// Shows the layer of a row, with its state of this moment; a row without a layer, such as -1, is shown as a blank
    /// box. With \a applyToDrawing it goes to ZevaUISetting::setCLayer() first, and nothing changes where that refuses.
    void setCurrentIndexEx(int index, bool applyToDrawing);
    /// Blank.
    void SetNullItem();
    /// Shows what the drawing has now. The argument is not used.
    void updateData(bool);

    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

    /// \a rel, which begins with "/", below the folder of the executable.
    QString toFullPath(QString rel);

    void showPopup() override;
    void hidePopup() override;

protected:
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;
    /// Keeps the list open while a row button writes, although the control is disabled then.
    void changeEvent(QEvent *event) override;

private:
    class RowWrite;
    typedef ZevaUISetting::SigleLayerData LayerData;

    /// What the list was filled from.
    struct Source
    {
        std::uint32_t database = 0; // its number, 0 without a drawing
        std::uint64_t stamp = 0; // of the layer table
        std::array<unsigned int, 256> palette = {};
        bool isReusable = false;

        bool operator==(const Source &other) const;
    };
    struct NoCaseHash
    {
        std::size_t operator()(const ZvString &name) const { return name.hashNoCase(); }
    };
    struct NoCaseEqual
    {
        bool operator()(const ZvString &a, const ZvString &b) const { return a.compareNoCase(b) == 0; }
    };

    /// What decides where the open list lies.
    struct ListSetting
    {
        QRect box; // on the desktop
        QRect screen;
        QRect available;
        QSize iconSize;
        int column = 0;
        int leastWidth = 0;
        int rowsHeight = 0;
        bool needsScrollBar = false; // the horizontal one
        int row = -1; // that lies over the box
        int scrolled = 0;

        bool operator==(const ListSetting &other) const;
    };

    Source sourceNow(const unsigned int *palette) const;
    ListSetting listSetting() const;
    void openList();
    void openListAgain();
    void rowButtonClicked(int row, int column);
    void switchState(int row, int column);
    void recolour(int row);
    void showLayer(const ZvDbObjectId &id);
    int widestName();

    QPointer<ZvLayerTable> m_table;
    QPointer<QLabel> m_label;
    std::map<int, LayerData> m_rows; // a row of the table that stands for a layer
    std::unordered_map<ZvString, int, NoCaseHash, NoCaseEqual> m_rowsByName; // the first of each name
    QHash<QString, int> m_rowsByExactName; // the last of each name
    int m_currentRow = -1; // last made current by setCurrentIndexEx()
    QString m_currentName; // of the layer in the closed box, where the drawing told it
    unsigned int m_paletteWord = 0; // first of the palette at the last init()
    ZvArray<QIcon> m_icons;
    ZvGlobalUIReactorHelp::SLayerInfo m_layerInfo;

    Source m_source;
    bool m_joinedBus = false;
    int m_writes = 0; // row buttons that are writing
    ZvString m_undoKey; // of this opening of the list
    QFont m_measuredFont; // of the widths
    std::vector<int> m_nameWidths; // pixels by row, -1 while not measured
    QVector<QString> m_names; // of the rows as they were read
    ListSetting m_listSetting; // when the list was last opened by the base
    QRect m_listPlace; // which it got then; null when it has to be found anew
    bool m_isInMouseEvent = false;
};

#endif
