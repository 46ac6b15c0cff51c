// SPDX-License-Identifier: MIT
#ifndef ZVQTCOLORLABEL_H
#define ZVQTCOLORLABEL_H

#include "base/zvcmcolor.h"
#include "base/zvexport.h"

#include <QColor>
#include <QLabel>

/// A label that shows a colour as a square, as high as the application's font.
class ZV_EXPORT ZvQtColorLabel : public QLabel
{
    Q_OBJECT
    /// For forms; invalid while no colour was set.
    Q_PROPERTY(QColor color READ shownColor WRITE showColor)
public:
    /// Empty until a colour is set. Owned by \a parent.
    explicit ZvQtColorLabel(QWidget *parent = nullptr);

    /// Shows \a color, which is only read.
    void SetColor(QColor &color);
    /// \a color is a QRgb.
    void SetColor(unsigned color);
    /// By red, green and blue of the colour, whatever palette is in force.
    void SetColor(const ZvCmColor &color);

private:
    QColor shownColor() const;
    void showColor(QColor color) { SetColor(color); }
};

#endif
