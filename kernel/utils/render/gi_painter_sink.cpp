// SPDX-License-Identifier: MIT
#include "gi_painter_sink.h"

#include "gi_dashes.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

// Lines up to this width lose nothing when their segments are drawn one by one; drawing them as a polyline is several
// times slower, since the joins are made as paths.
constexpr double kMaxLooseWidth = 3.0;
// Pens up to this width take the raster engine's quick way, which counts dashes in steps of pixels: along the longer
// direction, so that those of slanted lines come out up to 1.4 times as long.
constexpr double kMaxSteppedWidth = 1.0;
constexpr double kLevel = 0.5; ///< Pixels: a line that rises by less is as good as level.
constexpr std::size_t kMaxHeldPoints = 1 << 16;
constexpr std::size_t kMaxBatches = 64;

bool isThin(const GiStroke &stroke)
{
    return stroke.width <= kMaxLooseWidth && qAlpha(stroke.color) == 255;
}

bool isSlanted(const QPointF *points, int count)
{
    for (int i = 1; i < count; ++i) {
        const QPointF step = points[i] - points[i - 1];
        if (std::min(std::abs(step.x()), std::abs(step.y())) > kLevel)
            return true;
    }
    return false;
}

} // namespace

bool GiSink::strokeArc(const GiStroke &, const QPointF &, const QPointF &, const QPointF &, double, double)
{
    return false;
}

GiPainterSink::GiPainterSink(QPainter &painter, bool antialiasing, bool cosmetic)
    : m_painter(painter), m_isCosmetic(cosmetic)
{
    m_painter.save();
    m_painter.setRenderHint(QPainter::Antialiasing, antialiasing);
    m_painter.setRenderHint(QPainter::SmoothPixmapTransform, true);
    m_painter.setBrush(Qt::NoBrush);
}

GiPainterSink::~GiPainterSink()
{
    flush();
    m_painter.restore();
}

QPen GiPainterSink::penOf(const GiStroke &stroke, bool isCut) const
{
    QPen pen(QColor::fromRgba(stroke.color));
    pen.setWidthF(stroke.width);
    // Cosmetic pens of one pixel take the raster engine's quick way, with and without dashes.
    pen.setCosmetic(m_isCosmetic);
    const bool broad = stroke.width > kMaxLooseWidth;
    pen.setCapStyle(stroke.dashes ? Qt::FlatCap : broad ? Qt::RoundCap : Qt::SquareCap);
    pen.setJoinStyle(broad ? Qt::RoundJoin : Qt::BevelJoin);
    if (stroke.dashes && !isCut) {
        const double unit = stroke.width > 0.0 ? stroke.width : 1.0;
        QVector<qreal> pattern;
        pattern.reserve(int(stroke.dashes->size()));
        for (double length : *stroke.dashes)
            pattern.append(length / unit);
        pen.setDashPattern(pattern);
    }
    return pen;
}

GiPainterSink::Batch &GiPainterSink::batchOf(const GiStroke &stroke, bool isCut)
{
    const auto isOf = [&](const Batch &batch) { return batch.isCut == isCut && batch.stroke == stroke; };
    if (m_last < m_batches.size() && isOf(m_batches[m_last]))
        return m_batches[m_last];
    for (m_last = 0; m_last < m_batches.size(); ++m_last) {
        if (isOf(m_batches[m_last]))
            return m_batches[m_last];
    }
    if (m_batches.size() == kMaxBatches) {
        flush();
        m_batches.clear();
    }
    m_last = m_batches.size();
    m_batches.emplace_back();
    m_batches.back().stroke = stroke;
    m_batches.back().isCut = isCut;
    return m_batches.back();
}

void GiPainterSink::stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart)
{
    if (count < 2)
        return;
    if (stroke.dashes && m_isCosmetic && stroke.width <= kMaxSteppedWidth && isSlanted(points, count)) {
        giDash(*stroke.dashes, points, count, dashStart,
               [&](const std::vector<QPointF> &run) { draw(stroke, true, run.data(), int(run.size()), 0.0); });
        return;
    }
    draw(stroke, false, points, count, dashStart);
}

void GiPainterSink::draw(const GiStroke &stroke, bool isCut, const QPointF *points, int count, double dashStart)
{
    if (!isThin(stroke) || (stroke.dashes && dashStart != 0.0)) {
        if (!isThin(stroke))
            flush();
        QPen pen = penOf(stroke, isCut);
        if (dashStart != 0.0)
            pen.setDashOffset(dashStart / (stroke.width > 0.0 ? stroke.width : 1.0));
        m_painter.setPen(pen);
        m_painter.drawPolyline(points, count);
        return;
    }
    Batch &batch = batchOf(stroke, isCut);
    const bool loose = !stroke.dashes && stroke.width > 1.0;
    if (count == 2 || loose) {
        for (int i = 1; i < count; ++i)
            batch.lines.append(QLineF(points[i - 1], points[i]));
    } else {
        const int first = batch.points.size();
        batch.points.resize(first + count);
        std::copy(points, points + count, batch.points.begin() + first);
        batch.counts.push_back(count);
    }
    m_held += std::size_t(count);
    if (m_held > kMaxHeldPoints)
        flush();
}

void GiPainterSink::flush(Batch &batch)
{
    if (batch.lines.isEmpty() && batch.counts.empty())
        return;
    m_painter.setPen(penOf(batch.stroke, batch.isCut));
    if (!batch.lines.isEmpty())
        m_painter.drawLines(batch.lines);
    const QPointF *next = batch.points.constData();
    for (int count : batch.counts) {
        m_painter.drawPolyline(next, count);
        next += count;
    }
    batch.lines.resize(0);
    batch.points.resize(0);
    batch.counts.clear();
}

void GiPainterSink::flush()
{
    for (Batch &batch : m_batches)
        flush(batch);
    m_held = 0;
}

void GiPainterSink::fill(const QPainterPath &path, const QBrush &brush)
{
    flush();
    m_painter.setPen(Qt::NoPen);
    m_painter.fillPath(path, brush);
}

void GiPainterSink::image(const QImage &image, const QTransform &place)
{
    flush();
    m_painter.save();
    m_painter.setTransform(place, true);
    m_painter.drawImage(0, 0, image);
    m_painter.restore();
}

void GiPainterSink::pushClip(const QPainterPath &path)
{
    flush();
    m_painter.save();
    m_painter.setClipPath(path, Qt::IntersectClip);
}

void GiPainterSink::popClip()
{
    flush();
    m_painter.restore();
}
