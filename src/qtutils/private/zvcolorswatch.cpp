// SPDX-License-Identifier: MIT
#include "private/zvcolorswatch.h"

#include <QCoreApplication>
#include <QHash>
#include <QLinearGradient>
#include <QPainter>
#include <QPixmap>

namespace {

constexpr int kMostKept = 512; // true colours come without end

typedef QHash<quint64, QIcon> Swatches;

void forgetSwatches();

/// Emptied with the application: pictures do not outlive it.
Swatches &swatches()
{
    static Swatches kept;
    static const bool registered = (qAddPostRoutine(forgetSwatches), true);
    Q_UNUSED(registered)
    return kept;
}

void forgetSwatches()
{
    swatches().clear();
}

template <class Draw> QIcon keptSwatch(quint64 key, Draw draw)
{
    Swatches &kept = swatches();
    const auto found = kept.constFind(key);
    if (found != kept.constEnd())
        return *found;
    if (kept.size() >= kMostKept)
        kept.clear();
    const QIcon icon(draw());
    kept.insert(key, icon);
    return icon;
}

quint64 keyOf(quint32 color, int size)
{
    return quint64(size) << 32 | color;
}

} // namespace

QIcon zvColorSwatch(const QColor &color, int size)
{
    return keptSwatch(keyOf(color.rgb(), size), [&color, size] {
        QPixmap pixmap(size, size);
        pixmap.fill(Qt::black);
        QPainter painter(&pixmap);
        painter.fillRect(1, 1, size - 2, size - 2, color);
        painter.end();
        return pixmap;
    });
}

QIcon zvColorDialogSwatch(int size)
{
    return keptSwatch(keyOf(0, size), [size] { // no colour has alpha 0 as well
        QLinearGradient gradient(0, 0, size, 0);
        gradient.setColorAt(0.2, Qt::gray);
        gradient.setColorAt(0.4, Qt::green);
        gradient.setColorAt(0.6, Qt::red);
        gradient.setColorAt(0.8, Qt::magenta);
        gradient.setColorAt(1.0, Qt::black);
        QPixmap pixmap(size, size);
        QPainter painter(&pixmap);
        painter.setBrush(gradient);
        painter.drawRect(0, 0, size - 1, size - 1);
        painter.end();
        return pixmap;
    });
}

QPixmap zvColorPixmapWithBorder(int w, int h, const QColor &color)
{
    constexpr qreal kBorderWidth = 0.5;
    QPixmap pixmap(w, h);
    pixmap.fill(color);
    QPainter painter(&pixmap);
    painter.setPen(QPen(Qt::black, kBorderWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
    painter.drawRect(0, 0, w - 2, h - 2);
    return pixmap;
}
