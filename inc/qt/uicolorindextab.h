// SPDX-License-Identifier: MIT
#ifndef UICOLORINDEXTAB_H
#define UICOLORINDEXTAB_H

#include "base/zvexport.h"
#include "base/zvjson.h"
#include "base/zvos.h"

#include <QLabel>
#include <QWidget>

#include <array>
#include <cstdint>

QT_BEGIN_NAMESPACE
class QAction;
class QLineEdit;
class QPushButton;
QT_END_NAMESPACE
class ZvColorDialog;

/// A label that tells of a double click: the swatch of both tabs.
class ZV_EXPORT ZvColorLabel : public QLabel
{
    Q_OBJECT
public:
    /// Owned by \a parent.
    explicit ZvColorLabel(QWidget *parent = nullptr);
    /// Paints the label in this colour, by its style sheet.
    void showColor(int red, int green, int blue);

Q_SIGNALS:
    /// The user double-clicked, with whatever button.
    void doubleClicked();

protected:
    void mouseDoubleClickEvent(QMouseEvent *event) override;
};

/// One grid of palette cells. A cell is a square with an outline; cells stand two pixels apart, and the two pixels
/// right of a cell and below it belong to it.
///
/// The colours come from the ZvIndexColorWnd that the grid stands in; without one all cells are black.
class ZV_EXPORT ZvPaleteWnd : public QWidget
{
    Q_OBJECT
public:
    /// The grids by their mode.
    enum Mode : unsigned {
        kEvenColors = 1, ///< the even indices from 10 to 248, the darkest of each hue at the top
        kOddColors = 2, ///< the odd indices from 11 to 249, the darkest of each hue at the bottom
        kStandardColors = 3, ///< 1 to 9
        kGreys = 4, ///< 250 to 255
    };

    /// \a cell is the side of a cell in pixels. \a dialog is the ZvColorDialog, which a double click accepts; it is the
    /// grid's first parent.
    ZvPaleteWnd(unsigned mode, unsigned rows, unsigned cols, unsigned cell, QWidget *dialog);
    ~ZvPaleteWnd() override;

    /// The colour index of a cell, row 0 at the top; -1 outside the grid.
    int indexAt(unsigned row, unsigned col) const;
    /// The cell of a colour index in the grid of \a mode. False for an index that is not of that grid: \a row and \a
    /// col stay as they are.
    static bool cellOf(int index, unsigned mode, unsigned &row, unsigned &col);

    /// The colour index that has the frame; -1 for none.
    int selected() const { return m_nSelected; }
    /// Any index: one of another grid, or -1, leaves this grid without a frame. Does not repaint.
    void setSelected(int index) { m_nSelected = index; }
    /// The size that the cells take, in pixels.
    QSize gridSize() const;

Q_SIGNALS:
    /// The pointer moved over a cell.
    void selColorChanged(Zevos::UInt32 index);
    /// A cell was clicked.
    void colorSelected(Zevos::UInt32 index, int mode);
    /// The pointer has left the grid.
    void leaveWidget();

protected:
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    int pitch() const { return int(m_nCell) + 2; }
    int hitIndex(const QMouseEvent *event) const;
    QRect frameOf(int row, int col) const;

    int m_nHoverX = 0; // the last position of the pointer, -1 after it left
    int m_nHoverY = 0;
    QWidget *m_pDialog; // not owned
    unsigned m_nMode;
    unsigned m_nRows;
    unsigned m_nCols;
    int m_nSelected = 0; // -1 for none
    unsigned m_nCell;
};

/// The index colour tab of the colour dialog: the palette in four grids, by layer and by block, and a text entry that
/// takes an index, the name of one of the first seven colours, "BYLAYER" or "BYBLOCK".
///
/// A click writes "clrMethod" and "selectClr" at once; what was typed counts only when selectedIndex() is called.
class ZV_EXPORT ZvIndexColorWnd : public QWidget
{
    Q_OBJECT
public:
    /// Owned by \a dialog, which a double click on the swatch or on a cell accepts. Not null.
    explicit ZvIndexColorWnd(ZvColorDialog *dialog);
    ~ZvIndexColorWnd() override;

    /// Reads the parameters, which must not be null, and shows their colour.
    void onInit(ZvJsonPtr params, ZvRxObjectPtr helper);
    /// Validates the text entry. False: a message was shown, and the text is not acceptable. True with \a index left
    /// alone for a true colour that was put there, and for three parts of which one is no number.
    bool selectedIndex(unsigned &index);
    /// Shows a true colour, components 0 to 255. Writes nothing.
    void showTrueColor(int r, int g, int b);
    /// The packed colour of an index; 0, black, for an index of 256 or more and without a palette.
    unsigned paletteColor(unsigned index) const;

Q_SIGNALS:
    void colorSelected(Zevos::UInt32 index); ///< Never emitted.

public Q_SLOTS:
    /// The pointer is over the cell of \a index: shows the index and its components.
    void slot_colorChange(Zevos::UInt32 index);
    /// The user picked \a index: shows it and writes "clrMethod" and "selectClr".
    void slot_colorSelected(Zevos::UInt32 index);
    /// Picks by block.
    void slot_btnByBlockClicked();
    /// Picks by layer.
    void slot_btnByLayerClicked();
    /// Gives the text entry the keyboard, its text selected.
    void slot_KeyC_clicked();
    /// Shows neither any more.
    void slot_leave_widget();
    /// Accepts the dialog.
    void slot_color_label_double_clicked();

private:
    void connectAll();
    void setSelectedOfGrids(int index);
    bool acceptText(const QStringList &components);
    /// Enables or disables a button by the key, whose presence alone takes its accelerator away.
    void applyEnableKey(const char *key, QPushButton *button, QAction *action, void (ZvIndexColorWnd::*slot)());

    ZvJsonPtr m_pParams;
    ZvRxObject *m_pHelper = nullptr; // not owned, no reference
    std::array<ZvPaleteWnd *, 4> m_pGrids{}; // by mode, from 1
    QLabel *m_pIndexLabel = nullptr;
    QLabel *m_pRgbLabel = nullptr;
    ZvColorLabel *m_pSwatch = nullptr;
    QLineEdit *m_pTextEdit = nullptr;
    QPushButton *m_pByLayerBtn = nullptr;
    QPushButton *m_pByBlockBtn = nullptr;
    QAction *m_pActionL = nullptr;
    QAction *m_pActionK = nullptr;
    QAction *m_pActionC = nullptr;
    ZvColorDialog *m_pDialog; // not owned
    unsigned m_nCurColor = unsigned(-1); // 0 by block, 256 by layer, -1 none or a true colour
    std::uint32_t m_nBackgroundColor = 0;
};

#endif
