// SPDX-License-Identifier: MIT
#ifndef GI_PDF_SINK_H
#define GI_PDF_SINK_H

#include "gi_sink.h"

#include <QByteArray>
#include <QSizeF>

class QIODevice;

/// Writes a page of PDF. Device units are points, from the upper left corner.
///
/// Lines of one look are one path: half a million of them cost little more than their coordinates. As with the painter,
/// areas, images and broad lines first bring out what was gathered.
class GiPdfSink : public GiSink
{
public:
    /// \a device is open for writing.
    GiPdfSink(QIODevice &device, const QSizeF &pageSize);
    /// Ends the page and the file; false when something could not be written.
    bool finish();

    void stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart) override;
    bool strokeArc(const GiStroke &stroke, const QPointF &center, const QPointF &u, const QPointF &v, double start,
                   double sweep) override;
    void fill(const QPainterPath &path, const QBrush &brush) override;
    void image(const QImage &image, const QTransform &place) override;
    void pushClip(const QPainterPath &path) override;
    void popClip() override;
    void flush() override;

private:
    struct Batch
    {
        GiStroke stroke;
        double dashStart = 0.0;
        QByteArray path;
    };
    QByteArray &batchFor(const GiStroke &stroke, double dashStart);
    void release(QByteArray &path);
    void flush(Batch &batch);
    void setStroke(const GiStroke &stroke, double dashStart);
    void setFillColor(QRgb color);
    void setAlpha(int alpha);
    void appendPath(const QPainterPath &path);
    void write(const QByteArray &text);
    void endChunk();
    int newObject();
    void beginObject(int number);
    void writeStream(int number, const QByteArray &dictionary, const QByteArray &content);
    void out(const QByteArray &bytes);

    QIODevice &m_device;
    QSizeF m_pageSize;
    std::vector<Batch> m_batches;
    std::size_t m_last = 0;
    std::size_t m_held = 0; ///< Bytes in all batches.
    QByteArray m_content; ///< Of the page, up to the next chunk.
    std::vector<int> m_chunks;
    std::vector<qint64> m_offsets; ///< By object number less 1.
    std::vector<int> m_images;
    std::vector<QByteArray> m_shadings;
    std::vector<int> m_alphas;
    qint64 m_position = 0;
    bool m_failed = false;
    // What is in force in the content so far.
    GiStroke m_stroke;
    double m_dashStart = 0.0;
    QRgb m_fillColor = 0;
    int m_alpha = 255;
    bool m_isStrokeKnown = false;
    bool m_isFillKnown = false;
};

#endif
