// SPDX-License-Identifier: MIT
#ifndef GI_PICK_SINK_H
#define GI_PICK_SINK_H

#include "gi_sink.h"

#include <QRectF>

/// Draws nothing, and finds out how what is drawn lies to a rectangle.
class GiPickSink : public GiSink
{
public:
    explicit GiPickSink(const QRectF &box) : m_box(box) { }

    void reset();
    /// Something of it lies in the box.
    bool touches() const { return m_touches; }
    /// There is something, and nothing of it lies outside.
    bool isInside() const { return m_touches && !m_leaves; }

    void stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart) override;
    void fill(const QPainterPath &path, const QBrush &brush) override;
    void image(const QImage &image, const QTransform &place) override;
    void pushClip(const QPainterPath &path) override;
    void popClip() override;

private:
    QRectF m_box;
    std::vector<QRectF> m_clips; ///< Boxes of the clips in force.
    bool m_touches = false;
    bool m_leaves = false;
};

/// Whether a segment has a point in the rectangle; if so, its ends are cut back to it, and \a from and \a to give the
/// parts of the segment, from 0 to 1, that remain.
bool giClipSegment(const QRectF &box, QPointF &a, QPointF &b, double &from, double &to);

#endif
