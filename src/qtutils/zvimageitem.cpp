// SPDX-License-Identifier: MIT
#include "zvimageitem.h"

#include <QPainter>
#include <QStyle>
#include <QStyleOption>

namespace {

constexpr double kGap = 4.0; // between graphic and text
constexpr QPoint kGraphicCorner{2, 1};

} // namespace

ZvImageItem::ZvImageItem(int width, int height, QWidget *parent)
    : QWidget(parent), itemWidth(width), itemHeight(height), pixmap(qMax(width, 0), qMax(height, 0))
{
    pixmap.fill(Qt::transparent);
}

void ZvImageItem::paintEvent(QPaintEvent *)
{
    {
        QStyleOption option;
        option.initFrom(this);
        QPainter painter(this);
        style()->drawPrimitive(QStyle::PE_Widget, &option, &painter, this);
    }
    if (pixmap.isNull())
        return;
    // The picture is not wiped: the item in the closed box draws nothing of its own and shows what it was given.
    QPainter painter(&pixmap);
    QString text;
    const float split = float(itemWidth) * ratio;
    drawGraphic(&painter, QRect(kGraphicCorner, QSize(int(split - kGap), itemHeight - 2)), text);
    painter.drawText(QRect(int(kGap + split), 0, int(float(itemWidth) - split - kGap), itemHeight),
                     Qt::AlignLeft | Qt::AlignVCenter, text);
    painter.end();
    painter.begin(this);
    painter.drawPixmap(QPointF(0.0, 1.0), pixmap);
}

void ZvImageItem::drawGraphic(QPainter *painter, const QRect &rect, QString &text)
{
    Q_EMIT drawLocalGraphic(painter, rect, text);
}
