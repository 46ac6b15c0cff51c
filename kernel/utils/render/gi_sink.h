// SPDX-License-Identifier: MIT
#ifndef GI_SINK_H
#define GI_SINK_H

#include <QBrush>
#include <QColor>
#include <QImage>
#include <QPainterPath>
#include <QPointF>
#include <QTransform>

#include <vector>

/// How a line is stroked, in device units.
struct GiStroke
{
    QRgb color = 0; ///< With alpha.
    double width = 1.0;
    /// Lengths of dashes and gaps in turn, a dash first; null for a continuous line. It stays where it is for the time
    /// of the drawing, so that equal pointers are equal patterns.
    const std::vector<double> *dashes = nullptr;

    bool operator==(const GiStroke &o) const { return color == o.color && width == o.width && dashes == o.dashes; }
    bool operator!=(const GiStroke &o) const { return !(*this == o); }
};

/// Where what is drawn ends up, in device coordinates: x to the right, y down.
class GiSink
{
public:
    virtual ~GiSink() = default;

    /// Connected segments. \a dashStart is how far into the pattern the first point lies.
    virtual void stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart) = 0;
    /// center + u cos t + v sin t for t from \a start on; false asks for a stroke of short segments instead.
    virtual bool strokeArc(const GiStroke &stroke, const QPointF &center, const QPointF &u, const QPointF &v,
                           double start, double sweep);
    virtual void fill(const QPainterPath &path, const QBrush &brush) = 0;
    /// \a place takes the image's pixels, top row first, to the device.
    virtual void image(const QImage &image, const QTransform &place) = 0;
    /// Narrows the clip until the matching popClip().
    virtual void pushClip(const QPainterPath &path) = 0;
    virtual void popClip() = 0;
    /// Brings out what is still held back.
    virtual void flush() { }
};

#endif
