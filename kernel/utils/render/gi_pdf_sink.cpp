// SPDX-License-Identifier: MIT
#include "gi_pdf_sink.h"

#include <QIODevice>
#include <QLinearGradient>

#include <algorithm>
#include <cmath>
#include <cstring>

namespace {

// Coordinates are whole numbers of thousandths of a point: short to write, and exact enough for any printer.
constexpr double kUnits = 1000.0;
constexpr double kMaxCoordinate = 1e9;
constexpr double kMaxGatheredWidth = 1.5; ///< Points; the crossings of broader lines show which is on top.
constexpr std::size_t kMaxBatches = 64;
constexpr int kMaxBatchBytes = 1 << 16;
constexpr std::size_t kMaxHeldBytes = 1 << 20;
constexpr int kChunkBytes = 1 << 19;
constexpr int kCompression = 1; ///< Numbers pack well at any level; this one takes a third of the time of the usual.
constexpr double kPi = 3.14159265358979323846;

/// Writes a whole number and a blank; the position behind them.
char *writeInteger(char *to, long long value)
{
    if (value < 0) {
        *to++ = '-';
        value = -value;
    }
    char digits[20];
    int count = 0;
    do {
        digits[count++] = char('0' + value % 10);
        value /= 10;
    } while (value > 0);
    while (count > 0)
        *to++ = digits[--count];
    *to++ = ' ';
    return to;
}

char *writeCoordinate(char *to, double value)
{
    return writeInteger(to, std::llrint(std::clamp(value * kUnits, -kMaxCoordinate, kMaxCoordinate)));
}

char *writePoint(char *to, const QPointF &point)
{
    return writeCoordinate(writeCoordinate(to, point.x()), point.y());
}

/// Room for the longest coordinate pair with an operator.
constexpr int kMaxPointBytes = 32;

QByteArray number(double value)
{
    return QByteArray::number(value, 'f', 4);
}

QByteArray colorOf(QRgb color)
{
    return number(qRed(color) / 255.0) + ' ' + number(qGreen(color) / 255.0) + ' ' + number(qBlue(color) / 255.0);
}

/// What a stream of PDF calls deflated.
QByteArray deflated(const QByteArray &bytes)
{
    constexpr int kLengthPrefix = 4;
    return qCompress(bytes, kCompression).mid(kLengthPrefix);
}

} // namespace

GiPdfSink::GiPdfSink(QIODevice &device, const QSizeF &pageSize) : m_device(device), m_pageSize(pageSize)
{
    out("%PDF-1.4\n%\xE2\xE3\xCF\xD3\n");
    // From here on in thousandths of a point, y down.
    write(number(1.0 / kUnits) + " 0 0 -" + number(1.0 / kUnits) + " 0 " + number(pageSize.height())
          + " cm\n1 J 1 j\n");
}

void GiPdfSink::out(const QByteArray &bytes)
{
    m_failed = m_failed || m_device.write(bytes) != bytes.size();
    m_position += bytes.size();
}

int GiPdfSink::newObject()
{
    m_offsets.push_back(0);
    return int(m_offsets.size());
}

void GiPdfSink::beginObject(int number)
{
    m_offsets[std::size_t(number - 1)] = m_position;
    out(QByteArray::number(number) + " 0 obj\n");
}

void GiPdfSink::writeStream(int number, const QByteArray &dictionary, const QByteArray &content)
{
    const QByteArray packed = deflated(content);
    beginObject(number);
    out("<<" + dictionary + "/Filter/FlateDecode/Length " + QByteArray::number(packed.size()) + ">>\nstream\n");
    out(packed);
    out("\nendstream\nendobj\n");
}

void GiPdfSink::write(const QByteArray &text)
{
    m_content += text;
    if (m_content.size() >= kChunkBytes)
        endChunk();
}

void GiPdfSink::endChunk()
{
    if (m_content.isEmpty())
        return;
    m_chunks.push_back(newObject());
    writeStream(m_chunks.back(), QByteArray(), m_content);
    m_content.resize(0);
}

// ---- state

void GiPdfSink::setAlpha(int alpha)
{
    if (alpha == m_alpha)
        return;
    m_alpha = alpha;
    if (std::find(m_alphas.begin(), m_alphas.end(), alpha) == m_alphas.end())
        m_alphas.push_back(alpha);
    m_content += "/A" + QByteArray::number(alpha) + " gs\n";
}

void GiPdfSink::setFillColor(QRgb color)
{
    setAlpha(qAlpha(color));
    if (m_isFillKnown && (color & 0xFFFFFF) == (m_fillColor & 0xFFFFFF))
        return;
    m_isFillKnown = true;
    m_fillColor = color;
    m_content += colorOf(color) + " rg\n";
}

void GiPdfSink::setStroke(const GiStroke &stroke, double dashStart)
{
    setAlpha(qAlpha(stroke.color));
    if (!m_isStrokeKnown || stroke.color != m_stroke.color)
        m_content += colorOf(stroke.color) + " RG\n";
    char text[kMaxPointBytes];
    if (!m_isStrokeKnown || stroke.width != m_stroke.width)
        m_content += QByteArray(text, int(writeCoordinate(text, stroke.width) - text)) + "w\n";
    if (!m_isStrokeKnown || stroke.dashes != m_stroke.dashes || dashStart != m_dashStart) {
        QByteArray dashes = "[";
        if (stroke.dashes) {
            for (double length : *stroke.dashes)
                dashes += QByteArray(text, int(writeCoordinate(text, length) - text));
        }
        dashes += ']';
        dashes += QByteArray(text, int(writeCoordinate(text, dashStart) - text));
        // Round ends would close the gaps of a pattern.
        m_content += dashes + (stroke.dashes ? "d 0 J\n" : "d 1 J\n");
    }
    m_stroke = stroke;
    m_dashStart = dashStart;
    m_isStrokeKnown = true;
}

// ---- strokes

QByteArray &GiPdfSink::batchFor(const GiStroke &stroke, double dashStart)
{
    const auto fits = [&](const Batch &batch) { return batch.stroke == stroke && batch.dashStart == dashStart; };
    if (stroke.width > kMaxGatheredWidth || qAlpha(stroke.color) != 255) {
        flush();
        m_batches.clear();
    }
    if (m_last >= m_batches.size() || !fits(m_batches[m_last])) {
        m_last = std::size_t(std::find_if(m_batches.begin(), m_batches.end(), fits) - m_batches.begin());
        if (m_last == m_batches.size()) {
            if (m_batches.size() >= kMaxBatches) {
                flush();
                m_batches.clear();
                m_last = 0;
            }
            m_batches.emplace_back();
            m_batches.back().stroke = stroke;
            m_batches.back().dashStart = dashStart;
        }
    }
    return m_batches[m_last].path;
}

void GiPdfSink::release(QByteArray &path)
{
    const Batch &batch = m_batches[m_last];
    if (path.size() > kMaxBatchBytes || qAlpha(batch.stroke.color) != 255 || batch.stroke.width > kMaxGatheredWidth)
        flush(m_batches[m_last]);
    else if (m_held > kMaxHeldBytes)
        flush();
}

void GiPdfSink::stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart)
{
    if (count < 2)
        return;
    QByteArray &path = batchFor(stroke, dashStart);
    const int before = path.size();
    path.resize(before + count * kMaxPointBytes);
    char *to = path.data() + before;
    for (int i = 0; i < count; ++i) {
        to = writePoint(to, points[i]);
        *to++ = i == 0 ? 'm' : 'l';
        *to++ = '\n';
    }
    path.resize(int(to - path.constData()));
    m_held += std::size_t(path.size() - before);
    release(path);
}

bool GiPdfSink::strokeArc(const GiStroke &stroke, const QPointF &center, const QPointF &u, const QPointF &v,
                          double start, double sweep)
{
    QByteArray &path = batchFor(stroke, 0.0);
    const int before = path.size();
    const int curves = std::clamp(int(std::ceil(std::abs(sweep) / (kPi / 2) - 1e-9)), 1, 4);
    path.resize(before + (3 * curves + 2) * kMaxPointBytes);
    char *to = path.data() + before;
    const double step = sweep / curves;
    const double reach = 4.0 / 3.0 * std::tan(step / 4.0);
    double c = std::cos(start);
    double s = std::sin(start);
    to = writePoint(to, center + u * c + v * s);
    *to++ = 'm';
    *to++ = '\n';
    for (int i = 1; i <= curves; ++i) {
        const double c1 = std::cos(start + step * i);
        const double s1 = std::sin(start + step * i);
        to = writePoint(to, center + u * (c - reach * s) + v * (s + reach * c));
        to = writePoint(to, center + u * (c1 + reach * s1) + v * (s1 - reach * c1));
        to = writePoint(to, center + u * c1 + v * s1);
        *to++ = 'c';
        *to++ = '\n';
        c = c1;
        s = s1;
    }
    if (std::abs(sweep) > 2 * kPi - 1e-9) {
        *to++ = 'h';
        *to++ = '\n';
    }
    path.resize(int(to - path.constData()));
    m_held += std::size_t(path.size() - before);
    release(path);
    return true;
}

void GiPdfSink::flush(Batch &batch)
{
    if (batch.path.isEmpty())
        return;
    setStroke(batch.stroke, batch.dashStart);
    m_held -= std::size_t(batch.path.size());
    m_content += batch.path;
    write("S\n");
    batch.path.resize(0);
}

void GiPdfSink::flush()
{
    for (Batch &batch : m_batches)
        flush(batch);
}

// ---- areas

void GiPdfSink::appendPath(const QPainterPath &path)
{
    const int count = path.elementCount();
    const int before = m_content.size();
    m_content.resize(before + (count + 1) * kMaxPointBytes);
    char *to = m_content.data() + before;
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        to = writePoint(to, element);
        if (element.isMoveTo()) {
            *to++ = 'm';
        } else if (element.isLineTo()) {
            *to++ = 'l';
        } else if (element.isCurveTo() && i + 2 < count) {
            to = writePoint(to, path.elementAt(i + 1));
            to = writePoint(to, path.elementAt(i + 2));
            *to++ = 'c';
            i += 2;
        }
        *to++ = '\n';
    }
    m_content.resize(int(to - m_content.constData()));
}

void GiPdfSink::fill(const QPainterPath &path, const QBrush &brush)
{
    if (path.isEmpty())
        return;
    flush();
    const bool isEvenOdd = path.fillRule() == Qt::OddEvenFill;
    if (brush.gradient() && brush.gradient()->type() == QGradient::LinearGradient) {
        const auto *gradient = static_cast<const QLinearGradient *>(brush.gradient());
        const QColor from = gradient->stops().first().second;
        const QColor to = gradient->stops().last().second;
        setAlpha(from.alpha());
        const auto coordinate = [](double value) { return QByteArray::number(std::llrint(value * kUnits)); };
        m_shadings.push_back("<</ShadingType 2/ColorSpace/DeviceRGB/Extend[true true]/Coords["
                             + coordinate(gradient->start().x()) + ' ' + coordinate(gradient->start().y()) + ' '
                             + coordinate(gradient->finalStop().x()) + ' ' + coordinate(gradient->finalStop().y())
                             + "]/Function<</FunctionType 2/Domain[0 1]/N 1/C0[" + colorOf(from.rgb()) + "]/C1["
                             + colorOf(to.rgb()) + "]>>>>");
        m_content += "q\n";
        appendPath(path);
        m_content += isEvenOdd ? "W* n\n" : "W n\n";
        write("/S" + QByteArray::number(int(m_shadings.size()) - 1) + " sh\nQ\n");
        return;
    }
    setFillColor(brush.color().rgba());
    appendPath(path);
    write(isEvenOdd ? "f*\n" : "f\n");
}

void GiPdfSink::image(const QImage &image, const QTransform &place)
{
    if (image.isNull())
        return;
    flush();
    endChunk(); // the image's own object comes between
    setAlpha(255);
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32);
    QByteArray colors;
    QByteArray mask;
    colors.reserve(pixels.width() * pixels.height() * 3);
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            colors.append(char(qRed(row[x]))).append(char(qGreen(row[x]))).append(char(qBlue(row[x])));
            if (image.hasAlphaChannel())
                mask.append(char(qAlpha(row[x])));
        }
    }
    const QByteArray size = "/Type/XObject/Subtype/Image/BitsPerComponent 8/Width " + QByteArray::number(pixels.width())
        + "/Height " + QByteArray::number(pixels.height());
    QByteArray maskReference;
    if (!mask.isEmpty()) {
        const int maskObject = newObject();
        writeStream(maskObject, size + "/ColorSpace/DeviceGray", mask);
        maskReference = "/SMask " + QByteArray::number(maskObject) + " 0 R";
    }
    m_images.push_back(newObject());
    writeStream(m_images.back(), size + "/ColorSpace/DeviceRGB" + maskReference, colors);

    // PDF draws an image into the unit square, its top at y = 1.
    const QTransform square = QTransform(image.width(), 0, 0, -image.height(), 0, image.height()) * place;
    const auto scaled = [](double value) -> QByteArray { return number(value * kUnits) + ' '; };
    write("q\n" + scaled(square.m11()) + scaled(square.m12()) + scaled(square.m21()) + scaled(square.m22())
          + scaled(square.dx()) + scaled(square.dy()) + "cm\n/I" + QByteArray::number(int(m_images.size()) - 1)
          + " Do\nQ\n");
}

void GiPdfSink::pushClip(const QPainterPath &path)
{
    flush();
    m_content += "q\n";
    appendPath(path);
    write(path.fillRule() == Qt::OddEvenFill ? "W* n\n" : "W n\n");
}

void GiPdfSink::popClip()
{
    flush();
    write("Q\n");
    // What was in force before the clip is so again, and nobody has noted it.
    m_isStrokeKnown = false;
    m_isFillKnown = false;
    m_alpha = -1;
}

bool GiPdfSink::finish()
{
    flush();
    endChunk();
    QByteArray contents;
    for (int chunk : m_chunks)
        contents += QByteArray::number(chunk) + " 0 R ";
    QByteArray resources = "<</ProcSet[/PDF/ImageC/ImageB]";
    const auto list = [&resources](const char *kind, const char *prefix, const std::vector<int> &objects) {
        if (objects.empty())
            return;
        resources += QByteArray(kind) + "<<";
        for (std::size_t i = 0; i < objects.size(); ++i)
            resources += prefix + QByteArray::number(int(i)) + ' ' + QByteArray::number(objects[i]) + " 0 R";
        resources += ">>";
    };
    list("/XObject", "/I", m_images);
    if (!m_shadings.empty()) {
        resources += "/Shading<<";
        for (std::size_t i = 0; i < m_shadings.size(); ++i)
            resources += "/S" + QByteArray::number(int(i)) + m_shadings[i];
        resources += ">>";
    }
    m_alphas.push_back(255);
    std::sort(m_alphas.begin(), m_alphas.end());
    m_alphas.erase(std::unique(m_alphas.begin(), m_alphas.end()), m_alphas.end());
    resources += "/ExtGState<<";
    for (int alpha : m_alphas) {
        const QByteArray share = number(alpha / 255.0);
        resources += "/A" + QByteArray::number(alpha) + "<</CA " + share + "/ca " + share + ">>";
    }
    resources += ">>>>";

    const int pages = newObject();
    const int page = newObject();
    const int catalog = newObject();
    beginObject(page);
    out("<</Type/Page/Parent " + QByteArray::number(pages) + " 0 R/MediaBox[0 0 " + number(m_pageSize.width()) + ' '
        + number(m_pageSize.height()) + "]/Resources" + resources + "/Contents[" + contents + "]>>\nendobj\n");
    beginObject(pages);
    out("<</Type/Pages/Count 1/Kids[" + QByteArray::number(page) + " 0 R]>>\nendobj\n");
    beginObject(catalog);
    out("<</Type/Catalog/Pages " + QByteArray::number(pages) + " 0 R>>\nendobj\n");

    const qint64 table = m_position;
    const QByteArray size = QByteArray::number(int(m_offsets.size()) + 1);
    out("xref\n0 " + size + "\n0000000000 65535 f \n");
    for (qint64 offset : m_offsets)
        out(QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n");
    out("trailer\n<</Size " + size + "/Root " + QByteArray::number(catalog) + " 0 R>>\nstartxref\n"
        + QByteArray::number(table) + "\n%%EOF\n");
    return !m_failed;
}
