// SPDX-License-Identifier: MIT
#include "zvqtcolorlabel.h"

#include "private/zvqtcolor.h"

#include <QApplication>
#include <QFontMetrics>
#include <QPixmap>

ZvQtColorLabel::ZvQtColorLabel(QWidget *parent) : QLabel(parent) { }

void ZvQtColorLabel::SetColor(QColor &color)
{
    const int side = QApplication::fontMetrics().height();
    QPixmap pixmap(side, side);
    pixmap.fill(color);
    setPixmap(pixmap);
}

QColor ZvQtColorLabel::shownColor() const
{
    const auto square = property("pixmap").value<QPixmap>();
    return square.isNull() ? QColor() : square.toImage().pixelColor(0, 0);
}

void ZvQtColorLabel::SetColor(unsigned color)
{
    QColor opaque{QRgb(color)};
    SetColor(opaque);
}

void ZvQtColorLabel::SetColor(const ZvCmColor &color)
{
    QColor rgb = zvToQColor(color);
    SetColor(rgb);
}
