// SPDX-License-Identifier: MIT
#ifndef GI_CANVAS_SINK_H
#define GI_CANVAS_SINK_H

#include "gi_sink.h"

#include "utils/zvcanvas.h"

#include <QLineF>
#include <QRectF>

/// Draws on a canvas. What canvases have no operation for is worked out here: dashes become lines, gradients bands, and
/// since a canvas's clip cannot be widened again, what is in a clip is cut.
class GiCanvasSink : public GiSink
{
public:
    explicit GiCanvasSink(ZvsiCanvas &canvas) : m_canvas(canvas) { }

    void stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart) override;
    void fill(const QPainterPath &path, const QBrush &brush) override;
    void image(const QImage &image, const QTransform &place) override;
    void pushClip(const QPainterPath &path) override;
    void popClip() override;

private:
    struct Clip
    {
        QPainterPath path;
        QRectF box;
        bool isBox = false; ///< The path is no more than its box.
        std::vector<QLineF> edges; ///< Otherwise.
    };
    /// Part of a segment, as parameters of it.
    struct Part
    {
        double from;
        double to;
    };
    static void cut(const Clip &clip, const QPointF &a, const QPointF &b, std::vector<Part> &parts);

    void drawInClips(const std::vector<QPointF> &points);
    void draw(const std::vector<QPointF> &points);
    void fillArea(const QPainterPath &path, const QColor &color);
    /// False when nothing is left.
    bool cutToClips(QPainterPath &path) const;

    ZvsiCanvas &m_canvas;
    std::vector<Clip> m_clips;
};

#endif
