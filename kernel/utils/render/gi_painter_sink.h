// SPDX-License-Identifier: MIT
#ifndef GI_PAINTER_SINK_H
#define GI_PAINTER_SINK_H

#include "gi_sink.h"

#include <QLineF>
#include <QPen>
#include <QVector>

class QPainter;

/// Draws on a QPainter. Thin opaque lines are gathered by pen and drawn in batches, which the raster engine likes best;
/// areas, images and broad or translucent lines first bring out what was gathered, so that what covers stays on top.
class GiPainterSink : public GiSink
{
public:
    /// Without \a cosmetic, widths grow with what is drawn, as they should in a file of paths.
    GiPainterSink(QPainter &painter, bool antialiasing, bool cosmetic = true);
    ~GiPainterSink() override;

    void stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart) override;
    void fill(const QPainterPath &path, const QBrush &brush) override;
    void image(const QImage &image, const QTransform &place) override;
    void pushClip(const QPainterPath &path) override;
    void popClip() override;
    void flush() override;

private:
    struct Batch
    {
        GiStroke stroke;
        bool isCut = false; ///< Into its dashes: drawn without a pattern.
        QVector<QLineF> lines;
        QVector<QPointF> points; ///< Of polylines, one behind the other.
        std::vector<int> counts;
    };
    Batch &batchOf(const GiStroke &stroke, bool isCut);
    void draw(const GiStroke &stroke, bool isCut, const QPointF *points, int count, double dashStart);
    void flush(Batch &batch);
    QPen penOf(const GiStroke &stroke, bool isCut) const;

    QPainter &m_painter;
    bool m_isCosmetic;
    std::vector<Batch> m_batches;
    std::size_t m_last = 0;
    std::size_t m_held = 0; ///< Points in all batches.
};

#endif
