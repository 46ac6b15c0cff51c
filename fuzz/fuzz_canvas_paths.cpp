// SPDX-License-Identifier: MIT
// Reads the input as a path of ZvsiCanvas::drawPaths() and paints it as the canvas does.
//
//   byte 0        the mode; 0x10 smooth, 0x20 coordinates of one byte instead of four, 0x40 flattened by the matrix
//   byte 1        number of coordinates, which follow
//   each further  a word: an operation in the upper four bits, or a point in the lower four; 0x0F takes the word from
//                 the next four bytes
#include "private/zvcanvaspath.h"

#include "base/zvge2d.h"
#include "base/zvlog.h"

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <cstdint>
#include <cstdlib>
#include <cstring>

namespace {

struct Input
{
    const std::uint8_t *at;
    const std::uint8_t *end;

    bool isEmpty() const { return at == end; }
    std::uint8_t byte() { return isEmpty() ? std::uint8_t(0) : *at++; }
    template <class T> T raw()
    {
        std::uint8_t bytes[sizeof(T)];
        for (std::uint8_t &one : bytes)
            one = byte();
        T value;
        std::memcpy(&value, bytes, sizeof value);
        return value;
    }
};

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    zvSetAssertHandler([](const char *, const char *, int) {}); // what is not there is reported, and expected here
    Input input{data, data + size};
    const unsigned flags = input.byte();
    ZvArray<float> coordinates;
    for (int i = input.byte(); i > 0; --i)
        coordinates.append((flags & 0x20) != 0 ? float(std::int8_t(input.byte())) : input.raw<float>());
    ZvArray<int> words;
    while (!input.isEmpty()) {
        const unsigned code = input.byte();
        words.append(code == 0x0F ? input.raw<int>() : int((code & 0xF0) != 0 ? (code & 0xF0) << 24 : code));
    }
    ZvGeMatrix2d matrix;
    if ((flags & 0x40) != 0)
        matrix.setCoordSystem(ZvGePoint2d(7.5, -3.0), ZvGeVector2d(0.5, 0.0), ZvGeVector2d(0.0, 1e-9));

    QPainterPath path = zvCanvasPath(matrix, coordinates, words);
    // A word makes one element, a curve's two or three points one each, an arc a thousand at most.
    if (path.elementCount() > 1100 * (words.length() + 1))
        std::abort();
    for (int i = 0; i < path.elementCount(); ++i) {
        if (!qIsFinite(path.elementAt(i).x) || !qIsFinite(path.elementAt(i).y))
            std::abort();
    }

    // What lies far off the sheet the painter cuts by boolean operations of its own: correct, and slow beyond measure.
    constexpr qreal kFar = 20000.0;
    if (!QRectF(-kFar, -kFar, 2 * kFar, 2 * kFar).contains(path.controlPointRect()))
        return 0;
    static QImage sheet(64, 64, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&sheet);
    painter.setRenderHint(QPainter::Antialiasing, (flags & 0x10) != 0);
    if ((flags & 1) != 0)
        painter.strokePath(path, painter.pen());
    for (const Qt::FillRule rule : {Qt::OddEvenFill, Qt::WindingFill}) {
        if ((flags & (rule == Qt::OddEvenFill ? 2u : 4u)) == 0)
            continue;
        path.setFillRule(rule);
        painter.fillPath(path, Qt::red);
    }
    return 0;
}
