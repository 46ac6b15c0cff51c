// SPDX-License-Identifier: MIT
#ifndef ZVIMAGECOMBOBOX_H
#define ZVIMAGECOMBOBOX_H

#include "base/zvexport.h"

#include <QColor>
#include <QPointer>
#include <QRect>
#include <QWidget>

QT_BEGIN_NAMESPACE
class QHBoxLayout;
QT_END_NAMESPACE
class ZvImageItem;
class ZvImageVew;

/// A drop-down whose rows are pictures that the caller draws: a graphic on the left, a text on the right. It knows no
/// drawing.
///
/// \code
/// auto *combo = new ZvImageComboBox(parent);
/// combo->resize(180, 25); // the rows take their size from the combo when they are made
/// connect(combo, &ZvImageComboBox::onDraw, combo,
///         [combo](QWidget *row, QPainter *painter, const QRect &area, QString &text) {
///             text = row->objectName();
///             combo->drawSolidLine(painter, area, text);
///         });
/// combo->createCustomItem("Line", ZvImageComboBox::kItemShown);
/// \endcode
///
/// A press opens the list below the combo and a second press closes it: a pick leaves it open. The list is a child of
/// the combo's parent, so that it can stand outside the combo; the combo deletes it. Which row was picked is not
/// stored, the picture in the closed box is all there is.
///
/// By the keyboard Space, Down and F4 open the list, Return picks its current row, and Escape closes it.
///
/// There is one such picture in the whole process: a pick in one combo takes it away from the combo that showed it.
class ZV_EXPORT ZvImageComboBox : public QWidget
{
    Q_OBJECT
public:
    /// What picking a row does. Any other value than kItemShown counts as kItemPickedOnly.
    enum ItemModeEx : int {
        kItemShown = 0, ///< the closed box shows the row
        kItemPickedOnly = 1, ///< itemChanged() only; the closed box stays as it is
    };
    Q_ENUM(ItemModeEx)

    /// Without rows. Owned by \a parent, which the list belongs to as well.
    explicit ZvImageComboBox(QWidget *parent);
    ~ZvImageComboBox() override;

    /// Adds a row at the end, with \a name as its object name. Its picture is 22 pixels narrower and 2 lower than the
    /// combo is now, and stays so; a combo without room makes rows without a picture.
    void createCustomItem(const QString &name, ItemModeEx mode);
    /// Shows row \a index, from 0, in the closed box as if it was picked, and emits nothing. Ignored for an index
    /// without a row, for a row of another mode than kItemShown, and from row 256 on.
    void setCurrentItem(int index);
    /// Shows what \a item last drew in the closed box: nothing where it was never painted, which happens first when the
    /// list opens. Ignored for null and for another mode than kItemShown.
    void cloneItem2Header(ZvImageItem *item);

    /// Emits onDraw() for \a item.
    void drawCustomGraphic(ZvImageItem *item, QPainter *painter, const QRect &rect, QString &text);

    // Painters for slots of onDraw(). They leave the text alone.

    /// A line through the middle of \a rect, with the painter's pen.
    void drawSolidLine(QPainter *painter, const QRect &rect, QString &text);
    /// The rectangle with a gradient from grey by green, red and magenta to black. The brush stays set.
    void drawGradientColor(QPainter *painter, const QRect &rect, QString &text);
    /// The rectangle filled with \a color, without an outline.
    void drawColorGrid(QPainter *painter, const QRect &rect, QColor &color, QString &text);

public Q_SLOTS:
    /// What a press on a row does; \a item is the row's widget.
    void colorItemSelected(QWidget *item);

Q_SIGNALS:
    /// Paint the row \a item (a ZvImageItem) now: the graphic into \a rect, in pixels of the row, and its text into
    /// \a text, which is empty. The text is drawn afterwards, with the painter as the slot leaves it. The picture is
    /// not wiped between two paintings.
    void onDraw(QWidget *item, QPainter *painter, const QRect &rect, QString &text);
    /// The user pressed on the row \a item, whatever its mode and whether it was picked before or not.
    void itemChanged(QWidget *item);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void enterEvent(QEvent *event) override;
    void leaveEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

    QPointer<ZvImageVew> m_view; ///< Null once the parent is gone.
    QHBoxLayout *m_phorizontalLayout; ///< Of the whole box.
    QHBoxLayout *m_pItemErea; ///< Where the picture stands.
    QHBoxLayout *m_pBtnErea; ///< Where the arrow stands.
    float ratio = 0.4f; ///< The graphic's share of a row's width. Rows copy it when they are made.
    QRect arrowRect; ///< Of the arrow in the closed box, in pixels.
    QColor frameColor{205, 205, 205}; ///< Of the closed box; another one under the pointer.

private:
    ZvImageItem *makeItem();
    void toggleList();
};

#endif
