// SPDX-License-Identifier: MIT
#include "gi_pick_sink.h"

#include <algorithm>

bool giClipSegment(const QRectF &box, QPointF &a, QPointF &b, double &from, double &to)
{
    from = 0.0;
    to = 1.0;
    const double dx = b.x() - a.x();
    const double dy = b.y() - a.y();
    // For each side: the line enters the half plane at q / p where p is below 0, and leaves it where p is above 0.
    const double p[4] = {-dx, dx, -dy, dy};
    const double q[4] = {a.x() - box.left(), box.right() - a.x(), a.y() - box.top(), box.bottom() - a.y()};
    for (int side = 0; side < 4; ++side) {
        if (p[side] == 0.0) {
            if (q[side] < 0.0)
                return false;
        } else if (p[side] < 0.0) {
            from = std::max(from, q[side] / p[side]);
        } else {
            to = std::min(to, q[side] / p[side]);
        }
    }
    if (!(from <= to))
        return false;
    const QPointF start = a;
    if (to < 1.0)
        b = QPointF(start.x() + dx * to, start.y() + dy * to);
    if (from > 0.0)
        a = QPointF(start.x() + dx * from, start.y() + dy * from);
    return true;
}

void GiPickSink::reset()
{
    m_touches = false;
    m_leaves = false;
}

void GiPickSink::stroke(const GiStroke &, const QPointF *points, int count, double)
{
    for (int i = 1; i < count; ++i) {
        QPointF a = points[i - 1];
        QPointF b = points[i];
        double from = 0.0;
        double to = 1.0;
        bool seen = true;
        for (const QRectF &clip : m_clips)
            seen = seen && giClipSegment(clip, a, b, from, to);
        if (!seen)
            continue;
        if (giClipSegment(m_box, a, b, from, to)) {
            m_touches = true;
            m_leaves = m_leaves || from > 0.0 || to < 1.0;
        } else {
            m_leaves = true;
        }
    }
}

void GiPickSink::fill(const QPainterPath &path, const QBrush &)
{
    QRectF box = path.boundingRect();
    QRectF target = m_box;
    for (const QRectF &clip : m_clips) {
        box = box.intersected(clip);
        target = target.intersected(clip);
    }
    if (path.isEmpty())
        return;
    if (!m_box.contains(box))
        m_leaves = true;
    // An area without height still has a place.
    const bool near = box.left() <= target.right() && box.right() >= target.left() && box.top() <= target.bottom()
        && box.bottom() >= target.top();
    if (near && (m_box.contains(box) || path.intersects(target)))
        m_touches = true;
}

void GiPickSink::image(const QImage &image, const QTransform &place)
{
    QPainterPath path;
    path.addPolygon(place.map(QPolygonF(QRectF(image.rect()))));
    path.closeSubpath();
    fill(path, QBrush());
}

void GiPickSink::pushClip(const QPainterPath &path)
{
    m_clips.push_back(path.boundingRect());
}

void GiPickSink::popClip()
{
    m_clips.pop_back();
}
