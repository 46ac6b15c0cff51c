// SPDX-License-Identifier: MIT
//
// Draws every picture of the library and of the installation:
//
//     draw_resources RES_FOLDER ICON_FOLDER
//
// RES_FOLDER receives the 19 files behind ":/res", ICON_FOLDER the images that stand in "ico_zeva/" beside the
// executable. The pictures are program and not artwork so that each pixel has a reason that can be read, reviewed and
// changed; they are drawn with QPainter alone and need neither a display nor fonts.
//
// Coordinates are pixels of the finished picture, y downwards; a line one pixel wide is crisp at half coordinates.

#include <QtCore/QByteArray>
#include <QtCore/QDir>
#include <QtCore/QFile>
#include <QtCore/QtEndian>
#include <QtCore/QtMath>
#include <QtGui/QImage>
#include <QtGui/QPainter>
#include <QtGui/QPainterPath>

#include <algorithm>
#include <cmath>
#include <cstdio>

namespace {

// ---- Colours --------------------------------------------------------------------------------------------------------

const QColor clear(0, 0, 0, 0);
const QColor white(255, 255, 255);
const QColor outline(62, 76, 94);
const QColor ghost(150, 162, 178); // an edge seen through a face
const QColor faceTop(244, 247, 250);
const QColor faceLeft(212, 220, 230);
const QColor faceRight(182, 194, 208);
const QColor accent(36, 120, 222);
const QColor accentDark(20, 82, 165);
const QColor accentPale(196, 222, 250);
const QColor orangeDark(176, 84, 0);

QPen linePen(const QColor &color, double width = 1.0)
{
    return QPen(color, width, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin);
}

QLinearGradient downwards(double top, double bottom, const QColor &from, const QColor &to)
{
    QLinearGradient gradient(0, top, 0, bottom);
    gradient.setColorAt(0, from);
    gradient.setColorAt(1, to);
    return gradient;
}

// ---- Files ----------------------------------------------------------------------------------------------------------
// Qt writes true colour bitmaps with 24 bits only and needs a plugin for icons, so both headers are written here.

template <typename Int> void appendLittleEndian(QByteArray &bytes, Int value)
{
    char raw[sizeof(Int)];
    qToLittleEndian(value, raw);
    bytes.append(raw, sizeof raw);
}

// The header of 40 bytes that a bitmap file and an icon share; an icon counts the height of picture and mask together.
QByteArray dibHeader(int width, int height, int bits, int pixelBytes)
{
    const qint32 pixelsPerMetre = 3780; // 96 dots per inch
    QByteArray header;
    appendLittleEndian<quint32>(header, 40);
    appendLittleEndian<qint32>(header, width);
    appendLittleEndian<qint32>(header, height);
    appendLittleEndian<quint16>(header, 1);
    appendLittleEndian<quint16>(header, quint16(bits));
    appendLittleEndian<quint32>(header, 0);
    appendLittleEndian<quint32>(header, quint32(pixelBytes));
    appendLittleEndian<qint32>(header, pixelsPerMetre);
    appendLittleEndian<qint32>(header, pixelsPerMetre);
    appendLittleEndian<quint32>(header, 0);
    appendLittleEndian<quint32>(header, 0);
    return header;
}

// Rows from the bottom up, blue first, each row padded to four bytes.
QByteArray dibPixels(const QImage &image, int bits)
{
    QByteArray pixels;
    for (int y = image.height() - 1; y >= 0; --y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb color = image.pixel(x, y);
            pixels.append(char(qBlue(color))).append(char(qGreen(color))).append(char(qRed(color)));
            if (bits == 32)
                pixels.append(char(qAlpha(color)));
        }
        while (pixels.size() % 4 != 0)
            pixels.append('\0');
    }
    return pixels;
}

QByteArray bitmapFile(const QImage &image, int bits)
{
    const QByteArray pixels = dibPixels(image, bits);
    const QByteArray header = dibHeader(image.width(), image.height(), bits, pixels.size());
    const quint32 offset = quint32(14 + header.size());
    QByteArray file("BM");
    appendLittleEndian<quint32>(file, offset + quint32(pixels.size()));
    appendLittleEndian<quint32>(file, 0);
    appendLittleEndian<quint32>(file, offset);
    return file + header + pixels;
}

// One image of 32 bits; the mask of one bit beside it stays empty, since the alpha channel rules.
QByteArray iconFile(const QImage &image)
{
    const QByteArray pixels = dibPixels(image, 32);
    const QByteArray mask(image.height() * ((image.width() + 31) / 32) * 4, '\0');
    const QByteArray header = dibHeader(image.width(), 2 * image.height(), 32, pixels.size() + mask.size());
    QByteArray file;
    appendLittleEndian<quint16>(file, 0);
    appendLittleEndian<quint16>(file, 1);
    appendLittleEndian<quint16>(file, 1);
    file.append(char(image.width())).append(char(image.height())).append('\0').append('\0');
    appendLittleEndian<quint16>(file, 1);
    appendLittleEndian<quint16>(file, 32);
    appendLittleEndian<quint32>(file, quint32(header.size() + pixels.size() + mask.size()));
    appendLittleEndian<quint32>(file, 6 + 16);
    return file + header + pixels + mask;
}

// ---- Cubes: the views -----------------------------------------------------------------------------------------------

enum CubeFace { Top, Bottom, Left, Right, Front, Back };

// A cube seen from above and from its front right corner: front and right side face the reader, with the top.
struct Cube
{
    QPointF apex, upperLeft, upperRight, centre, lowerLeft, lowerRight, foot;
    QPointF hidden; // the far lower corner, which falls on the centre in this projection

    // left and top are those of the hexagon's box; at half coordinates, with a width that is a multiple of four, every
    // corner falls on the middle of a pixel and the edges are crisp
    Cube(double left, double top, double width, double edge)
        : apex(left + width / 2, top), upperLeft(left, top + width / 4), upperRight(left + width, top + width / 4),
          centre(left + width / 2, top + width / 2), lowerLeft(left, top + width / 4 + edge),
          lowerRight(left + width, top + width / 4 + edge), foot(left + width / 2, top + width / 2 + edge),
          hidden(left + width / 2, top + edge)
    {
    }

    QPolygonF face(CubeFace which) const
    {
        switch (which) {
        case Top:
            return QPolygonF() << apex << upperRight << centre << upperLeft;
        case Bottom:
            return QPolygonF() << hidden << lowerRight << foot << lowerLeft;
        case Front:
            return QPolygonF() << upperLeft << centre << foot << lowerLeft;
        case Right:
            return QPolygonF() << centre << upperRight << lowerRight << foot;
        case Left:
            return QPolygonF() << apex << upperLeft << lowerLeft << hidden;
        case Back:
            return QPolygonF() << apex << upperRight << lowerRight << hidden;
        }
        return QPolygonF();
    }

    QPolygonF silhouette() const
    {
        return QPolygonF() << apex << upperRight << lowerRight << foot << lowerLeft << upperLeft;
    }
};

void drawSolidCube(QPainter &painter, const Cube &cube, const QColor &top, const QColor &front, const QColor &right)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(top);
    painter.drawPolygon(cube.face(Top));
    painter.setBrush(front);
    painter.drawPolygon(cube.face(Front));
    painter.setBrush(right);
    painter.drawPolygon(cube.face(Right));
    painter.setPen(linePen(outline));
    painter.setBrush(Qt::NoBrush);
    painter.drawPolygon(cube.silhouette());
    painter.drawPolyline(QPolygonF() << cube.upperLeft << cube.centre << cube.upperRight);
    painter.drawLine(cube.centre, cube.foot);
}

// A face turned to the reader is coloured on a solid cube, a face turned away is seen through a cube of glass.
void drawFaceView(QPainter &painter, CubeFace which)
{
    const Cube cube(1.5, 1.5, 12, 7);
    const bool visible = which == Top || which == Front || which == Right;
    if (visible) {
        drawSolidCube(painter, cube, which == Top ? accent : faceTop, which == Front ? accent : faceLeft,
                      which == Right ? accent : faceRight);
        return;
    }
    painter.setPen(Qt::NoPen);
    painter.setBrush(faceTop);
    painter.drawPolygon(cube.silhouette());
    painter.setBrush(accent);
    painter.drawPolygon(cube.face(which));
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(ghost));
    painter.drawPolyline(QPolygonF() << cube.upperLeft << cube.centre << cube.upperRight);
    painter.drawLine(cube.centre, cube.foot);
    painter.setPen(linePen(outline));
    painter.drawPolygon(cube.silhouette());
}

void drawViewTop(QPainter &painter)
{
    drawFaceView(painter, Top);
}
void drawViewBottom(QPainter &painter)
{
    drawFaceView(painter, Bottom);
}
void drawViewLeft(QPainter &painter)
{
    drawFaceView(painter, Left);
}
void drawViewRight(QPainter &painter)
{
    drawFaceView(painter, Right);
}
void drawViewFront(QPainter &painter)
{
    drawFaceView(painter, Front);
}
void drawViewBack(QPainter &painter)
{
    drawFaceView(painter, Back);
}

// An isometric view: as on a map with north up, an arrow looks from its corner of the compass at the cube opposite.
void drawIsometricView(QPainter &painter, int east, int north)
{
    drawSolidCube(painter, Cube(east < 0 ? 6.5 : 0.5, north < 0 ? 0.5 : 5.5, 8, 5), faceTop, faceLeft, faceRight);

    // The arrow is drawn for south-west and mirrored into the other quadrants.
    painter.translate(8, 8);
    painter.scale(-east, -north);
    painter.translate(-8, -8);
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    painter.drawPolygon(QPolygonF() << QPointF(7, 9) << QPointF(7, 15) << QPointF(1, 9));
    painter.setPen(QPen(accent, 2.6, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(0.7, 15.3), QPointF(5, 11));
}

void drawViewSouthWest(QPainter &painter)
{
    drawIsometricView(painter, -1, -1);
}
void drawViewSouthEast(QPainter &painter)
{
    drawIsometricView(painter, 1, -1);
}
void drawViewNorthEast(QPainter &painter)
{
    drawIsometricView(painter, 1, 1);
}
void drawViewNorthWest(QPainter &painter)
{
    drawIsometricView(painter, -1, 1);
}

void drawViewWorld(QPainter &painter)
{
    const QRectF globe(0.5, 0.5, 14, 14);
    QRadialGradient sea(QPointF(5, 4), 12);
    sea.setColorAt(0, QColor(140, 196, 255));
    sea.setColorAt(1, accent);
    painter.setPen(Qt::NoPen);
    painter.setBrush(sea);
    painter.drawEllipse(globe);
    painter.setBrush(Qt::NoBrush);
    painter.setPen(linePen(QColor(255, 255, 255, 210)));
    painter.drawLine(QPointF(1.5, 7.5), QPointF(13.5, 7.5));
    painter.drawLine(QPointF(2.5, 4.5), QPointF(12.5, 4.5));
    painter.drawLine(QPointF(2.5, 10.5), QPointF(12.5, 10.5));
    painter.drawLine(QPointF(7.5, 1.5), QPointF(7.5, 13.5));
    painter.drawEllipse(QRectF(3.5, 0.5, 8, 14));
    painter.setPen(linePen(accentDark));
    painter.drawEllipse(globe);
}

// The view that is in force: an eye.
void drawViewCurrent(QPainter &painter)
{
    QPainterPath eye(QPointF(0.8, 8));
    eye.cubicTo(4, 2.2, 12, 2.2, 15.2, 8);
    eye.cubicTo(12, 13.8, 4, 13.8, 0.8, 8);
    painter.setPen(linePen(outline, 1.2));
    painter.setBrush(faceTop);
    painter.drawPath(eye);
    painter.setPen(Qt::NoPen);
    painter.setBrush(accent);
    painter.drawEllipse(QPointF(8, 8), 3.6, 3.6);
    painter.setBrush(QColor(18, 40, 80));
    painter.drawEllipse(QPointF(8, 8), 1.8, 1.8);
    painter.setBrush(white);
    painter.drawEllipse(QPointF(6.8, 6.8), 0.9, 0.9);
}

// The preset views together: a cube with a star.
void drawViewPreset(QPainter &painter)
{
    drawSolidCube(painter, Cube(0.5, 2.5, 12, 6), faceTop, faceLeft, faceRight);
    QPolygonF star;
    for (int i = 0; i < 10; ++i) {
        const double radius = i % 2 == 0 ? 5.0 : 2.1;
        const double angle = qDegreesToRadians(36.0 * i);
        star << QPointF(11 + radius * std::sin(angle), 5.2 - radius * std::cos(angle));
    }
    painter.setPen(linePen(orangeDark, 0.8));
    painter.setBrush(QColor(255, 196, 40));
    painter.drawPolygon(star);
}

// Model space: the three axes.
void drawViewModel(QPainter &painter)
{
    const QPointF origin(8, 9);
    const struct
    {
        QPointF end;
        QColor color;
    } axes[] = {
        {{15.4, 13.6}, QColor(214, 48, 40)},
        {{0.6, 13.6}, QColor(34, 150, 60)},
        {{8, 0.2}, accent},
    };
    for (const auto &axis : axes) {
        const QPointF along = axis.end - origin;
        const QPointF unit = along / std::hypot(along.x(), along.y());
        const QPointF across(-unit.y(), unit.x());
        painter.setPen(QPen(axis.color, 2, Qt::SolidLine, Qt::FlatCap));
        painter.drawLine(origin, axis.end - unit * 2.5);
        painter.setPen(Qt::NoPen);
        painter.setBrush(axis.color);
        const QPointF base = axis.end - unit * 4.4;
        painter.drawPolygon(QPolygonF() << axis.end << base + across * 2.8 << base - across * 2.8);
    }
    painter.setBrush(outline);
    painter.drawEllipse(origin, 1.7, 1.7);
}

// A layout: a sheet with a viewport and a title block.
void drawViewLayout(QPainter &painter)
{
    painter.setPen(linePen(outline));
    painter.setBrush(white);
    painter.drawRect(QRectF(0.5, 1.5, 15, 13));
    painter.setBrush(accentPale);
    painter.setPen(linePen(accent));
    painter.drawRect(QRectF(2.5, 3.5, 11, 6));
    painter.drawPolyline(QPolygonF() << QPointF(4.5, 8.5) << QPointF(7.5, 5.5) << QPointF(9.5, 7.5)
                                     << QPointF(11.5, 5.5));
    painter.setPen(QPen(ghost, 1, Qt::SolidLine, Qt::FlatCap));
    painter.drawLine(QPointF(8, 11.5), QPointF(14, 11.5));
    painter.drawLine(QPointF(8, 13.5), QPointF(14, 13.5));
    painter.drawLine(QPointF(8.5, 11), QPointF(8.5, 14));
}

// Choosing a view: a cube and the pointer.
void drawViewSelect(QPainter &painter)
{
    drawSolidCube(painter, Cube(0.5, 0.5, 12, 7), accent, faceLeft, faceRight);
    const QPolygonF pointer = QPolygonF()
        << QPointF(8.5, 5.5) << QPointF(8.5, 14.5) << QPointF(10.6, 12.6) << QPointF(11.9, 15.5) << QPointF(13.4, 14.8)
        << QPointF(12.1, 12) << QPointF(15, 12);
    painter.setPen(linePen(white, 2.4));
    painter.setBrush(white);
    painter.drawPolygon(pointer);
    painter.setPen(linePen(QColor(20, 24, 32), 0.9));
    painter.drawPolygon(pointer);
}

// ---- The file dialog's side bar -------------------------------------------------------------------------------------

// A folder: the places of the side bar are folders.
void drawFile(QPainter &painter)
{
    const QColor edge(178, 122, 20);
    QPainterPath back;
    back.moveTo(2.5, 21.5);
    back.lineTo(2.5, 6);
    back.quadTo(2.5, 4.5, 4, 4.5);
    back.lineTo(9, 4.5);
    back.lineTo(11.5, 7.5);
    back.lineTo(21.5, 7.5);
    back.quadTo(23.5, 7.5, 23.5, 9.5);
    back.lineTo(23.5, 21.5);
    back.closeSubpath();
    painter.setPen(linePen(edge));
    painter.setBrush(QColor(226, 166, 50));
    painter.drawPath(back);

    painter.setPen(Qt::NoPen);
    painter.setBrush(white);
    painter.drawRect(QRectF(5, 9, 16, 6));

    painter.setPen(linePen(edge));
    painter.setBrush(downwards(11, 22, QColor(255, 220, 118), QColor(246, 190, 66)));
    painter.drawRoundedRect(QRectF(2.5, 11.5, 21, 10), 1.5, 1.5);
    painter.setPen(linePen(QColor(255, 240, 186)));
    painter.drawLine(QPointF(4, 12.5), QPointF(22, 12.5));
}

// A screen on its foot.
void drawComputer(QPainter &painter)
{
    painter.setPen(linePen(outline));
    painter.setBrush(faceLeft);
    painter.drawPolygon(QPolygonF() << QPointF(11.5, 19.5) << QPointF(15.5, 19.5) << QPointF(16.5, 23.5)
                                    << QPointF(10.5, 23.5));
    painter.setBrush(faceRight);
    painter.drawRoundedRect(QRectF(7.5, 22.5, 12, 2), 1, 1);

    painter.setBrush(downwards(3, 20, QColor(92, 106, 124), outline));
    painter.drawRoundedRect(QRectF(2.5, 3.5, 22, 16), 1.8, 1.8);
    painter.setPen(Qt::NoPen);
    painter.setBrush(downwards(5, 17, QColor(120, 190, 255), accentDark));
    painter.drawRect(QRectF(4, 5, 19, 12));
    painter.setBrush(QColor(255, 255, 255, 60));
    painter.drawPolygon(QPolygonF() << QPointF(4, 5) << QPointF(17, 5) << QPointF(9, 17) << QPointF(4, 17));
    painter.setBrush(QColor(120, 230, 140));
    painter.drawEllipse(QPointF(22, 18.3), 0.8, 0.8);
}

// ---- The hue and saturation field -----------------------------------------------------------------------------------

// Hue 0 to 360 from the left edge to the right, saturation 1 to 0 from the top edge to the bottom, lightness one half.
QImage hueSaturationField()
{
    QImage field(186, 170, QImage::Format_RGB32);
    for (int y = 0; y < field.height(); ++y) {
        const double saturation = 1.0 - double(y) / (field.height() - 1);
        for (int x = 0; x < field.width(); ++x) {
            const double sector = 6.0 * x / (field.width() - 1);
            const auto component = [&](double centre) {
                double distance = std::fabs(sector - centre);
                distance = std::min(distance, 6.0 - distance);
                const double pure = qBound(0.0, 2.0 - distance, 1.0);
                return int(std::lround(255.0 * (0.5 + saturation * (pure - 0.5))));
            };
            field.setPixel(x, y, qRgb(component(0), component(2), component(4)));
        }
    }
    return field;
}

// ---- The message box and the task dialog ----------------------------------------------------------------------------

void drawDisc(QPainter &painter, const QColor &light, const QColor &dark)
{
    painter.setPen(linePen(dark.darker(115), 1));
    painter.setBrush(downwards(1, 31, light, dark));
    painter.drawEllipse(QRectF(1.5, 1.5, 29, 29));
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(255, 255, 255, 34));
    painter.drawEllipse(QRectF(4, 2.5, 24, 14));
}

void drawQuestion(QPainter &painter)
{
    drawDisc(painter, QColor(96, 156, 240), QColor(30, 92, 196));
    QPainterPath mark(QPointF(11, 12.5));
    mark.cubicTo(11, 5.5, 21.5, 5.5, 21.5, 12);
    mark.cubicTo(21.5, 16, 16, 16, 16, 20);
    painter.setPen(QPen(white, 3.4, Qt::SolidLine, Qt::FlatCap, Qt::RoundJoin));
    painter.setBrush(Qt::NoBrush);
    painter.drawPath(mark);
    painter.setPen(Qt::NoPen);
    painter.setBrush(white);
    painter.drawEllipse(QPointF(16, 24), 2.1, 2.1);
}

void drawInformation(QPainter &painter)
{
    drawDisc(painter, QColor(74, 190, 196), QColor(12, 124, 140));
    painter.setPen(Qt::NoPen);
    painter.setBrush(white);
    painter.drawEllipse(QPointF(16, 9), 2.3, 2.3);
    painter.drawRoundedRect(QRectF(14, 13.5, 4, 11.5), 0.6, 0.6);
    painter.drawRoundedRect(QRectF(12, 13.5, 5, 2.5), 0.6, 0.6);
    painter.drawRoundedRect(QRectF(11.5, 22.5, 9, 2.5), 0.6, 0.6);
}

void drawWarning(QPainter &painter)
{
    const QPolygonF triangle = QPolygonF() << QPointF(16, 4) << QPointF(29, 28) << QPointF(3, 28);
    painter.setPen(linePen(QColor(190, 124, 0), 4));
    painter.setBrush(QColor(190, 124, 0));
    painter.drawPolygon(triangle);
    const QLinearGradient yellow = downwards(2, 30, QColor(255, 224, 96), QColor(250, 182, 20));
    painter.setPen(QPen(QBrush(yellow), 2, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.setBrush(yellow);
    painter.drawPolygon(triangle);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(58, 42, 8));
    painter.drawPolygon(QPolygonF() << QPointF(13.8, 10.5) << QPointF(18.2, 10.5) << QPointF(17.2, 20)
                                    << QPointF(14.8, 20));
    painter.drawEllipse(QPointF(16, 10.8), 2.2, 2);
    painter.drawEllipse(QPointF(16, 24), 2.1, 2.1);
}

void drawError(QPainter &painter)
{
    drawDisc(painter, QColor(240, 100, 92), QColor(196, 32, 36));
    painter.setPen(QPen(white, 4, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(QPointF(10.5, 10.5), QPointF(21.5, 21.5));
    painter.drawLine(QPointF(21.5, 10.5), QPointF(10.5, 21.5));
}

// ---- The layer states -----------------------------------------------------------------------------------------------

void drawBulb(QPainter &painter, const QColor &light, const QColor &dark, const QColor &edge)
{
    QPainterPath glass(QPointF(5.5, 11));
    glass.cubicTo(5.5, 9, 3, 8, 3, 5.2);
    glass.cubicTo(3, 2.4, 5.2, 0.8, 8, 0.8);
    glass.cubicTo(10.8, 0.8, 13, 2.4, 13, 5.2);
    glass.cubicTo(13, 8, 10.5, 9, 10.5, 11);
    glass.closeSubpath();
    QRadialGradient glow(QPointF(7, 4.5), 8);
    glow.setColorAt(0, light);
    glow.setColorAt(1, dark);
    painter.setPen(linePen(edge));
    painter.setBrush(glow);
    painter.drawPath(glass);
    painter.setRenderHint(QPainter::Antialiasing, false);
    painter.fillRect(QRect(6, 12, 5, 1), QColor(96, 104, 116));
    painter.fillRect(QRect(6, 13, 5, 1), QColor(160, 168, 178));
    painter.fillRect(QRect(6, 14, 5, 1), QColor(96, 104, 116));
    painter.fillRect(QRect(7, 15, 3, 1), QColor(96, 104, 116));
    painter.setRenderHint(QPainter::Antialiasing, true);
}

void drawLayerOn(QPainter &painter)
{
    drawBulb(painter, QColor(255, 252, 200), QColor(255, 204, 30), QColor(190, 130, 0));
}

void drawLayerOff(QPainter &painter)
{
    drawBulb(painter, QColor(150, 164, 190), QColor(84, 100, 132), QColor(58, 70, 98));
}

void drawLayerFrozen(QPainter &painter)
{
    painter.setPen(linePen(QColor(24, 116, 210), 1.2));
    painter.translate(7.5, 7.5);
    for (int i = 0; i < 6; ++i) {
        painter.drawLine(QPointF(0, 0), QPointF(0, -7));
        painter.drawLine(QPointF(0, -4.4), QPointF(-2, -6.4));
        painter.drawLine(QPointF(0, -4.4), QPointF(2, -6.4));
        painter.rotate(60);
    }
}

void drawLayerThawed(QPainter &painter)
{
    painter.setPen(linePen(QColor(240, 150, 10), 2));
    painter.translate(8, 8);
    for (int i = 0; i < 8; ++i) {
        painter.drawLine(QPointF(0, -6), QPointF(0, -7));
        painter.rotate(45);
    }
    QRadialGradient glow(QPointF(-1, -1), 5);
    glow.setColorAt(0, QColor(255, 246, 160));
    glow.setColorAt(1, QColor(255, 190, 20));
    painter.setPen(linePen(QColor(214, 134, 0), 1));
    painter.setBrush(glow);
    painter.drawEllipse(QPointF(0, 0), 3.6, 3.6);
}

void drawPadlock(QPainter &painter, const QPainterPath &shackle, const QColor &light, const QColor &dark,
                 const QColor &edge)
{
    painter.setBrush(Qt::NoBrush);
    painter.setPen(QPen(QColor(92, 100, 112), 2, Qt::SolidLine, Qt::FlatCap));
    painter.drawPath(shackle);
    painter.setPen(linePen(edge));
    painter.setBrush(downwards(7, 15, light, dark));
    painter.drawRoundedRect(QRectF(2.5, 7.5, 11, 7), 1, 1);
    painter.setPen(Qt::NoPen);
    painter.setBrush(edge);
    painter.drawEllipse(QPointF(8, 10.2), 1.2, 1.2);
    painter.drawRect(QRectF(7.5, 10.2, 1, 2.6));
}

void drawLayerLocked(QPainter &painter)
{
    QPainterPath shackle(QPointF(5, 8));
    shackle.lineTo(5, 5);
    shackle.cubicTo(5, 0.8, 11, 0.8, 11, 5);
    shackle.lineTo(11, 8);
    drawPadlock(painter, shackle, QColor(255, 206, 84), QColor(232, 150, 24), QColor(150, 90, 0));
}

void drawLayerUnlocked(QPainter &painter)
{
    QPainterPath shackle(QPointF(9, 8));
    shackle.lineTo(9, 4.6);
    shackle.cubicTo(9, 0.6, 15, 0.6, 15, 4.6);
    shackle.lineTo(15, 6.6);
    painter.translate(-1, 0);
    drawPadlock(painter, shackle, QColor(214, 226, 240), QColor(146, 170, 200), QColor(62, 86, 120));
}

// ---- The list of pictures -------------------------------------------------------------------------------------------

enum Format { Png, Bmp24, Bmp32, Ico };

struct Picture
{
    const char *name;
    int width;
    int height;
    Format format;
    void (*draw)(QPainter &);
};

const Picture resourcePictures[] = {
    {"file.png", 26, 26, Png, drawFile},
    {"computer.png", 27, 27, Png, drawComputer},
    {"view_top.bmp", 16, 16, Bmp24, drawViewTop},
    {"view_bottom.bmp", 16, 16, Bmp24, drawViewBottom},
    {"view_left.bmp", 16, 16, Bmp24, drawViewLeft},
    {"view_right.bmp", 16, 16, Bmp24, drawViewRight},
    {"view_front.bmp", 16, 16, Bmp24, drawViewFront},
    {"view_back.bmp", 16, 16, Bmp24, drawViewBack},
    {"view_sw.bmp", 16, 16, Bmp24, drawViewSouthWest},
    {"view_se.bmp", 16, 16, Bmp24, drawViewSouthEast},
    {"view_ne.bmp", 16, 16, Bmp24, drawViewNorthEast},
    {"view_nw.bmp", 16, 16, Bmp24, drawViewNorthWest},
    {"view_world.bmp", 16, 16, Bmp24, drawViewWorld},
    {"view_current.bmp", 16, 16, Bmp24, drawViewCurrent},
    {"view_preset.bmp", 16, 16, Bmp24, drawViewPreset},
    {"view_modle.bmp", 16, 16, Bmp24, drawViewModel}, // the name callers know it by
    {"view_layout.bmp", 16, 16, Bmp24, drawViewLayout},
    {"view_sel.bmp", 16, 16, Bmp32, drawViewSelect},
};

const Picture installedPictures[] = {
    {"question.png", 32, 32, Png, drawQuestion},
    {"information.png", 32, 32, Png, drawInformation},
    {"warning.png", 32, 32, Png, drawWarning},
    {"error.png", 32, 32, Png, drawError},
    {"layer_on.ico", 16, 16, Ico, drawLayerOn},
    {"layer_off.ico", 16, 16, Ico, drawLayerOff},
    {"layer_frozed.ico", 16, 16, Ico, drawLayerFrozen}, // the name callers know it by
    {"layer_thaw.ico", 16, 16, Ico, drawLayerThawed},
    {"layer_lock.ico", 16, 16, Ico, drawLayerLocked},
    {"layer_unlock.ico", 16, 16, Ico, drawLayerUnlocked},
};

QImage drawn(const Picture &picture, int ratio = 1)
{
    // Bitmaps have no transparency; they lie on the white of a list.
    const bool opaque = picture.format == Bmp24 || picture.format == Bmp32;
    QImage image(picture.width * ratio, picture.height * ratio, QImage::Format_ARGB32_Premultiplied);
    image.fill(opaque ? white : clear);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(ratio, ratio);
    picture.draw(painter);
    painter.end();
    return image.convertToFormat(QImage::Format_ARGB32);
}

bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.flush();
}

bool writePicture(const QString &path, const QImage &image, Format format)
{
    switch (format) {
    case Png:
        return image.save(path, "PNG");
    case Bmp24:
        return writeFile(path, bitmapFile(image, 24));
    case Bmp32:
        return writeFile(path, bitmapFile(image, 32));
    case Ico:
        return writeFile(path, iconFile(image));
    }
    return false;
}

/// With \a ratio 2 for screens with as many dots to a pixel.
template <std::size_t count> bool writeAll(const QDir &folder, const Picture (&pictures)[count], int ratio = 1)
{
    for (const Picture &picture : pictures) {
        QString name = QLatin1String(picture.name);
        if (ratio > 1)
            name.insert(name.lastIndexOf(QLatin1Char('.')), QStringLiteral("@%1x").arg(ratio));
        if (!writePicture(folder.filePath(name), drawn(picture, ratio), picture.format)) {
            std::fprintf(stderr, "draw_resources: cannot write %s\n", qPrintable(name));
            return false;
        }
    }
    return true;
}

} // namespace

int main(int argc, char **argv)
{
    if (argc != 3) {
        std::fprintf(stderr, "usage: draw_resources RES_FOLDER ICON_FOLDER\n");
        return 2;
    }
    const QDir resources(QFile::decodeName(argv[1]));
    const QDir icons(QFile::decodeName(argv[2]));
    if (!resources.mkpath(QStringLiteral(".")) || !icons.mkpath(QStringLiteral("."))) {
        std::fprintf(stderr, "draw_resources: cannot make the folders\n");
        return 1;
    }
    const bool written = writeAll(resources, resourcePictures) && writeAll(icons, installedPictures)
        && writeAll(icons, installedPictures, 2)
        && writePicture(resources.filePath(QStringLiteral("TColor.bmp")), hueSaturationField(), Bmp24);
    return written ? 0 : 1;
}
