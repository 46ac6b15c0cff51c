// SPDX-License-Identifier: MIT
#ifndef CANVASTEST_H
#define CANVASTEST_H

#include "zevatest.h"
#include "zvqtcanvas.h"

#include <QPainter>
#include <QPainterPath>

#include <functional>

// Two pictures of one drawing: by the canvas and by the painter itself.

using CanvasPtr = ZvSmartPtr<ZvQtCanvas>;

inline CanvasPtr makeCanvas()
{
    return CanvasPtr::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
}

constexpr QSize kSheet(90, 70);

/// White paper, drawn on by \a draw.
inline QImage paintedSheet(const std::function<void(QPainter &)> &draw, QSize size = kSheet)
{
    QImage sheet(size, QImage::Format_ARGB32_Premultiplied);
    sheet.fill(Qt::white);
    QPainter painter(&sheet);
    draw(painter);
    return sheet;
}

/// The same by a canvas with a painter attached. \a prepare is for the painter alone, before that.
inline QImage canvasSheet(
    const std::function<void(ZvQtCanvas &)> &draw, const ZvGeMatrix2d &matrix = ZvGeMatrix2d(),
    const std::function<void(QPainter &)> &prepare = [](QPainter &) {})
{
    return paintedSheet([&](QPainter &painter) {
        prepare(painter);
        const CanvasPtr canvas = makeCanvas();
        canvas->setMatrix(matrix);
        canvas->attachPainter(&painter);
        draw(*canvas);
    });
}

inline bool isBlank(const QImage &sheet)
{
    return sheet == paintedSheet([](QPainter &) {}, sheet.size());
}

/// Twice as large, upside down, and moved: as a sheet of paper comes onto a screen.
inline ZvGeMatrix2d upsideDown()
{
    ZvGeMatrix2d matrix;
    matrix.setCoordSystem(ZvGePoint2d(5.25, 60.5), ZvGeVector2d(2.0, 0.0), ZvGeVector2d(0.0, -2.0));
    return matrix;
}

inline QTransform transformOf(const ZvGeMatrix2d &m)
{
    return QTransform(m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 2), m(1, 2));
}

Q_DECLARE_METATYPE(ZvGeMatrix2d)

#endif
