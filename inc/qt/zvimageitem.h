// SPDX-License-Identifier: MIT
#ifndef ZVIMAGEITEM_H
#define ZVIMAGEITEM_H

#include "zvimagecombobox.h"

#include <QPixmap>

/// A row of a ZvImageComboBox: a picture with a graphic on the left and a text on the right.
class ZV_EXPORT ZvImageItem : public QWidget
{
    Q_OBJECT
public:
    /// \a width and \a height are the picture's size in pixels; 0 and less make an item without a picture. The widget's
    /// own size is the list's matter.
    ZvImageItem(int width, int height, QWidget *parent);

Q_SIGNALS:
    /// Paint the graphic into \a rect and put the text to be drawn into \a text.
    void drawLocalGraphic(QPainter *painter, const QRect &rect, QString &text);

protected:
    void paintEvent(QPaintEvent *event) override;
    /// Called for the graphic each time the item is painted. Emits drawLocalGraphic().
    virtual void drawGraphic(QPainter *painter, const QRect &rect, QString &text);

public:
    // Written by the combo.

    ZvImageComboBox::ItemModeEx mode = ZvImageComboBox::kItemShown; ///< What a press on the row does.
    /// The picture's size in pixels.
    int itemWidth;
    int itemHeight;
    QPixmap pixmap; ///< What was drawn last; transparent before.
    float ratio = 0.4f; ///< The graphic's share of the width.
};

#endif
