// SPDX-License-Identifier: MIT
#include "icons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QtMath>

namespace {

// All icons are drawn on a grid of 24 by 24, lines on half positions where they are to be crisp at 24 pixels.
constexpr double kGrid = 24.0;

const QColor kLine(58, 70, 86);
const QColor kAccent(24, 118, 210);
const QColor kFill(222, 232, 243);
const QColor kRed(204, 60, 52);
const QColor kGreen(44, 150, 84);
const QColor kAmber(226, 150, 24);
const QColor kPaper(255, 255, 255);

QPen line(const QColor &color = kLine, double width = 1.6)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

void dot(QPainter &p, QPointF at, const QColor &color = kAccent)
{
    p.setPen(Qt::NoPen);
    p.setBrush(color);
    p.drawRect(QRectF(at.x() - 2, at.y() - 2, 4, 4));
    p.setBrush(Qt::NoBrush);
}

void arrowHead(QPainter &p, QPointF tip, double degrees, double size = 4.5)
{
    const double angle = qDegreesToRadians(degrees);
    const QPointF along(qCos(angle), -qSin(angle));
    const QPointF across(-along.y(), along.x());
    p.drawPolyline(
        QPolygonF({tip - along * size + across * size * 0.75, tip, tip - along * size - across * size * 0.75}));
}

void sheet(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kPaper);
    p.drawPolygon(QPolygonF({{5.5, 2.5}, {14.5, 2.5}, {19.5, 7.5}, {19.5, 21.5}, {5.5, 21.5}}));
    p.setBrush(kFill);
    p.drawPolygon(QPolygonF({{14.5, 2.5}, {14.5, 7.5}, {19.5, 7.5}}));
    p.setBrush(Qt::NoBrush);
}

void drawNew(QPainter &p)
{
    sheet(p);
    p.setPen(line(kGreen, 2.2));
    p.drawLine(QPointF(12.5, 11), QPointF(12.5, 18));
    p.drawLine(QPointF(9, 14.5), QPointF(16, 14.5));
}

void drawOpen(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kAmber.lighter(150));
    p.drawPolygon(QPolygonF({{2.5, 19.5}, {2.5, 5.5}, {9, 5.5}, {11, 8}, {19.5, 8}, {19.5, 11}, {19.5, 19.5}}));
    p.setBrush(kAmber.lighter(175));
    p.drawPolygon(QPolygonF({{2.5, 19.5}, {6, 11.5}, {22.5, 11.5}, {19.5, 19.5}}));
}

void drawSave(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kAccent.lighter(165));
    p.drawPolygon(QPolygonF({{3.5, 3.5}, {17.5, 3.5}, {20.5, 6.5}, {20.5, 20.5}, {3.5, 20.5}}));
    p.setBrush(kPaper);
    p.drawRect(QRectF(7.5, 12.5, 9, 8));
    p.drawRect(QRectF(7.5, 3.5, 8, 5));
    p.setBrush(kLine);
    p.drawRect(QRectF(12.5, 4.5, 1.5, 3));
}

void drawSaveAs(QPainter &p)
{
    drawSave(p);
    p.setPen(line(kAmber, 3));
    p.drawLine(QPointF(13, 20.5), QPointF(21, 12.5));
    p.setPen(line(kLine, 1.2));
    p.drawLine(QPointF(11.6, 22), QPointF(13, 20.5));
}

void drawExport(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kPaper);
    p.drawRect(QRectF(2.5, 4.5, 16, 14));
    p.setPen(Qt::NoPen);
    p.setBrush(kGreen.lighter(140));
    p.drawPolygon(QPolygonF({{3.5, 17.5}, {8.5, 10.5}, {12, 14.5}, {14, 12.5}, {17.5, 17.5}}));
    p.setBrush(kAmber);
    p.drawEllipse(QPointF(13.5, 8.8), 1.8, 1.8);
    p.setBrush(Qt::NoBrush);
    p.setPen(line(kAccent, 2));
    p.drawLine(QPointF(15, 21), QPointF(21.5, 21));
    arrowHead(p, {22.3, 21}, 0, 3.6);
}

void drawPrint(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kPaper);
    p.drawRect(QRectF(6.5, 2.5, 11, 8));
    p.setBrush(kFill);
    p.drawRoundedRect(QRectF(2.5, 8.5, 19, 9), 2, 2);
    p.setBrush(kPaper);
    p.drawRect(QRectF(6.5, 13.5, 11, 8));
    p.setPen(line(kAccent, 1.4));
    p.drawLine(QPointF(9, 16.3), QPointF(15, 16.3));
    p.drawLine(QPointF(9, 18.8), QPointF(13, 18.8));
    dot(p, QPointF(18, 11.5), kGreen);
}

void curvedArrow(QPainter &p, bool back)
{
    p.save();
    if (!back) {
        p.translate(kGrid, 0);
        p.scale(-1, 1);
    }
    p.setPen(line(kAccent, 2.2));
    QPainterPath path(QPointF(5, 9.5));
    path.lineTo(14, 9.5);
    path.arcTo(QRectF(9.5, 9.5, 10, 10), 90, -180);
    path.lineTo(9, 19.5);
    p.drawPath(path);
    arrowHead(p, {4, 9.5}, 180, 5);
    p.restore();
}

void drawUndo(QPainter &p)
{
    curvedArrow(p, true);
}

void drawRedo(QPainter &p)
{
    curvedArrow(p, false);
}

void drawErase(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kRed.lighter(160));
    p.drawPolygon(QPolygonF({{3.5, 15}, {13, 4.5}, {20.5, 10.5}, {11.5, 20.5}, {8.5, 20.5}}));
    p.setBrush(kPaper);
    p.drawPolygon(QPolygonF({{3.5, 15}, {7.8, 10.2}, {15.4, 16.2}, {11.5, 20.5}, {8.5, 20.5}}));
    p.drawLine(QPointF(13, 20.5), QPointF(21, 20.5));
}

void drawSelectAll(QPainter &p)
{
    p.setPen(QPen(kAccent, 1.4, Qt::DashLine));
    p.setBrush(kFill);
    p.drawRect(QRectF(3.5, 3.5, 17, 17));
    p.setBrush(Qt::NoBrush);
    p.setPen(line());
    p.drawLine(QPointF(7, 16.5), QPointF(13, 7.5));
    p.drawEllipse(QPointF(14.5, 14.5), 3, 3);
}

void drawLine(QPainter &p)
{
    p.setPen(line(kLine, 1.8));
    p.drawLine(QPointF(4, 20), QPointF(20, 4));
    dot(p, {4, 20});
    dot(p, {20, 4});
}

void drawPolyline(QPainter &p)
{
    p.setPen(line(kLine, 1.8));
    QPainterPath path(QPointF(3.5, 19.5));
    path.lineTo(9, 7);
    path.lineTo(14, 13);
    path.arcTo(QRectF(11.5, 5, 9, 9), 240, 130);
    p.drawPath(path);
    dot(p, {3.5, 19.5});
    dot(p, {9, 7});
    dot(p, {14, 13});
}

void drawCircle(QPainter &p)
{
    p.setPen(line(kLine, 1.8));
    p.drawEllipse(QPointF(12, 12), 8.5, 8.5);
    p.setPen(line(kAccent, 1.2));
    p.drawLine(QPointF(12, 12), QPointF(18, 6));
    dot(p, {12, 12});
}

void drawArc(QPainter &p)
{
    p.setPen(line(kLine, 1.8));
    p.drawArc(QRectF(3.5, 5.5, 26, 26), 90 * 16, 90 * 16);
    dot(p, {3.5, 18.5});
    dot(p, {16.5, 5.5});
    dot(p, {7.4, 9.4});
}

void drawText(QPainter &p)
{
    p.setPen(line(kLine, 2.2));
    p.drawLine(QPointF(6, 19.5), QPointF(12, 4.5));
    p.drawLine(QPointF(12, 4.5), QPointF(18, 19.5));
    p.drawLine(QPointF(8.4, 14), QPointF(15.6, 14));
    p.setPen(line(kAccent, 1.4));
    p.drawLine(QPointF(3, 21.8), QPointF(21, 21.8));
}

void drawMove(QPainter &p)
{
    p.setPen(line(kAccent, 1.9));
    p.drawLine(QPointF(12, 3), QPointF(12, 21));
    p.drawLine(QPointF(3, 12), QPointF(21, 12));
    arrowHead(p, {12, 2.5}, 90, 3.6);
    arrowHead(p, {12, 21.5}, 270, 3.6);
    arrowHead(p, {2.5, 12}, 180, 3.6);
    arrowHead(p, {21.5, 12}, 0, 3.6);
}

void drawCopy(QPainter &p)
{
    p.setPen(line());
    p.setBrush(kFill);
    p.drawEllipse(QPointF(8.5, 9), 5.5, 5.5);
    p.setBrush(Qt::NoBrush);
    p.setPen(line(kAccent, 1.8));
    p.drawEllipse(QPointF(15.5, 15), 5.5, 5.5);
}

void lens(QPainter &p)
{
    p.setPen(line(kLine, 1.7));
    p.setBrush(kPaper);
    p.drawEllipse(QPointF(10, 10), 6.8, 6.8);
    p.setBrush(Qt::NoBrush);
    p.setPen(line(kLine, 2.8));
    p.drawLine(QPointF(15.4, 15.4), QPointF(20.8, 20.8));
}

void drawZoomExtents(QPainter &p)
{
    lens(p);
    p.setPen(line(kAccent, 1.6));
    for (int i = 0; i < 4; ++i) {
        p.save();
        p.translate(10, 10);
        p.rotate(90 * i);
        p.drawPolyline(QPolygonF({{1.6, -3.6}, {3.6, -3.6}, {3.6, -1.6}}));
        p.restore();
    }
}

void drawZoomWindow(QPainter &p)
{
    lens(p);
    p.setPen(QPen(kAccent, 1.4, Qt::DotLine));
    p.drawRect(QRectF(6.6, 7.4, 6.8, 5.2));
}

void drawZoomPrevious(QPainter &p)
{
    lens(p);
    p.setPen(line(kAccent, 1.7));
    p.drawLine(QPointF(7, 10), QPointF(13.2, 10));
    arrowHead(p, {6.5, 10}, 180, 3.2);
}

void drawPan(QPainter &p)
{
    p.setPen(line(kLine, 1.5));
    p.setBrush(kAmber.lighter(178));
    QPainterPath hand(QPointF(7, 13.5));
    hand.lineTo(7, 7.2);
    hand.arcTo(QRectF(7, 5.6, 3, 3), 180, -180);
    hand.lineTo(10, 4.4);
    hand.arcTo(QRectF(10, 2.8, 3, 3), 180, -180);
    hand.lineTo(13, 5.4);
    hand.arcTo(QRectF(13, 3.8, 3, 3), 180, -180);
    hand.lineTo(16, 8);
    hand.arcTo(QRectF(16, 6.4, 3, 3), 180, -180);
    hand.lineTo(19, 14.5);
    hand.cubicTo(19, 19, 17, 21.5, 13, 21.5);
    hand.cubicTo(9.5, 21.5, 8.4, 20, 3.6, 14.6);
    hand.cubicTo(2.6, 13, 4.6, 11.6, 7, 13.5);
    p.drawPath(hand);
    p.drawLine(QPointF(10, 8), QPointF(10, 12));
    p.drawLine(QPointF(13, 7), QPointF(13, 12));
    p.drawLine(QPointF(16, 9), QPointF(16, 12.5));
}

void drawRegen(QPainter &p)
{
    p.setPen(line(kGreen, 2.1));
    p.drawArc(QRectF(4.5, 4.5, 15, 15), 40 * 16, 150 * 16);
    p.drawArc(QRectF(4.5, 4.5, 15, 15), 220 * 16, 150 * 16);
    arrowHead(p, {18.6, 8.4}, 300, 4.4);
    arrowHead(p, {5.4, 15.6}, 120, 4.4);
}

void drawWarning(QPainter &p)
{
    p.setPen(line(kAmber.darker(130), 1.4));
    p.setBrush(kAmber);
    p.drawPolygon(QPolygonF({{12, 2.5}, {22.5, 20.5}, {1.5, 20.5}}));
    p.setPen(line(Qt::white, 2.2));
    p.drawLine(QPointF(12, 9), QPointF(12, 14));
    p.drawPoint(QPointF(12, 17.6));
}

void drawClose(QPainter &p)
{
    p.setPen(line(kLine, 2));
    p.drawLine(QPointF(7, 7), QPointF(17, 17));
    p.drawLine(QPointF(17, 7), QPointF(7, 17));
}

void drawApplication(QPainter &p)
{
    QLinearGradient ground(0, 0, 0, kGrid);
    ground.setColorAt(0, QColor(44, 56, 72));
    ground.setColorAt(1, QColor(24, 31, 40));
    p.setPen(Qt::NoPen);
    p.setBrush(ground);
    p.drawRoundedRect(QRectF(0.5, 0.5, 23, 23), 5, 5);
    p.setBrush(Qt::NoBrush);
    p.setPen(line(QColor(96, 178, 255), 1.8));
    p.drawArc(QRectF(-9, 5, 28, 28), 0, 90 * 16);
    p.setPen(line(QColor(240, 244, 250), 2));
    p.drawPolyline(QPolygonF({{5, 5}, {5, 19}, {19, 19}}));
    p.setPen(line(QColor(255, 176, 66), 1.6));
    p.drawLine(QPointF(5, 19), QPointF(16.4, 7.6));
    dot(p, {15.2, 8.8}, QColor(255, 176, 66));
}

struct Picture
{
    const char *name;
    void (*draw)(QPainter &);
};

const Picture kPictures[] = {
    {"new", drawNew},
    {"open", drawOpen},
    {"save", drawSave},
    {"saveas", drawSaveAs},
    {"export", drawExport},
    {"print", drawPrint},
    {"undo", drawUndo},
    {"redo", drawRedo},
    {"erase", drawErase},
    {"selectall", drawSelectAll},
    {"line", drawLine},
    {"pline", drawPolyline},
    {"circle", drawCircle},
    {"arc", drawArc},
    {"text", drawText},
    {"move", drawMove},
    {"copy", drawCopy},
    {"zoomextents", drawZoomExtents},
    {"zoomwindow", drawZoomWindow},
    {"zoomprevious", drawZoomPrevious},
    {"pan", drawPan},
    {"regen", drawRegen},
    {"warning", drawWarning},
    {"close", drawClose},
    {"application", drawApplication},
};

class PictureEngine : public QIconEngine
{
public:
    explicit PictureEngine(const Picture &picture) : m_picture(picture) { }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State) override
    {
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        if (mode == QIcon::Disabled)
            painter->setOpacity(painter->opacity() * 0.35);
        painter->translate(rect.topLeft());
        painter->scale(rect.width() / kGrid, rect.height() / kGrid);
        m_picture.draw(*painter);
        painter->restore();
    }

    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override
    {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }

    QIconEngine *clone() const override { return new PictureEngine(m_picture); }

private:
    const Picture &m_picture;
};

} // namespace

QIcon Icons::icon(const QString &name)
{
    for (const Picture &picture : kPictures) {
        if (name == QLatin1String(picture.name))
            return QIcon(new PictureEngine(picture));
    }
    return QIcon();
}

QStringList Icons::names()
{
    QStringList names;
    for (const Picture &picture : kPictures)
        names << QString::fromLatin1(picture.name);
    return names;
}

QIcon Icons::application()
{
    // Window managers take pixels, so the usual sizes are made beforehand.
    const QIcon drawn = icon(QStringLiteral("application"));
    QIcon icon;
    for (const int size : {16, 24, 32, 48, 64, 128})
        icon.addPixmap(drawn.pixmap(size, size));
    return icon;
}
