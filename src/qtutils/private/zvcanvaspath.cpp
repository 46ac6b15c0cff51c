// SPDX-License-Identifier: MIT
#include "private/zvcanvaspath.h"

#include "base/zvge2d.h"

#include <QPainterPath>

#include <cmath>
#include <limits>

namespace {

enum Operation : unsigned {
    kMoveTo = 0x80000000,
    kLineTo = 0x10000000,
    kArcTo = 0x20000000,
    kCubicTo = 0x30000000,
    kQuadTo = 0x40000000,
    kClose = 0x90000000,
};
constexpr unsigned kOperationBits = 0xF0000000;
constexpr double kSmallestRadius = 1e-10;
constexpr float kSamplesPerRadian = 160.0f;

QPointF toQt(const ZvGePoint2d &point)
{
    return QPointF(point.x, point.y);
}

class PathReader
{
public:
    PathReader(const ZvGeMatrix2d &matrix, const ZvArray<float> &coordinates, const ZvArray<int> &operations)
        : m_matrix(matrix), m_coordinates(coordinates), m_words(operations)
    {
    }

    QPainterPath read();

private:
    bool isAtOperand() const { return m_at < m_words.length() && (unsigned(m_words[m_at]) & kOperationBits) == 0; }
    ZvGePoint2d takePoint();
    QPointF takeQtPoint() { return toQt(takePoint().transformBy(m_matrix)); }
    bool apply(unsigned operation);
    void arcTo(ZvGePoint2d start, ZvGePoint2d middle, ZvGePoint2d end);

    const ZvGeMatrix2d &m_matrix;
    const ZvArray<float> &m_coordinates;
    const ZvArray<int> &m_words;
    int m_at = 0;
    ZvGePoint2d m_last; ///< Before the matrix.
    QPainterPath m_path;
};

QPainterPath PathReader::read()
{
    m_path.reserve(m_words.length());
    unsigned operation = kMoveTo;
    while (m_at < m_words.length()) {
        if (!isAtOperand())
            operation = unsigned(m_words[m_at++]);
        do {
            if (!apply(operation) && isAtOperand())
                ++m_at; // a point that the operation has no use for
        } while (isAtOperand());
    }
    return m_path;
}

/// The arrays report what is not there.
ZvGePoint2d PathReader::takePoint()
{
    const qint64 x = qint64(m_words[m_at++]) * 2;
    const bool isIndex = x >= 0 && x < std::numeric_limits<int>::max();
    const int at = isIndex ? int(x) : -1;
    m_last = ZvGePoint2d(double(m_coordinates[at]), double(m_coordinates[isIndex ? at + 1 : -1]));
    return m_last;
}

/// False when the operation takes no points.
bool PathReader::apply(unsigned operation)
{
    switch (operation) {
    case kMoveTo:
        m_path.moveTo(takeQtPoint());
        return true;
    case kLineTo:
        m_path.lineTo(takeQtPoint());
        return true;
    case kArcTo: {
        const ZvGePoint2d start = m_last;
        const ZvGePoint2d middle = takePoint();
        arcTo(start, middle, takePoint());
        return true;
    }
    case kCubicTo: {
        const QPointF first = takeQtPoint();
        const QPointF second = takeQtPoint();
        m_path.cubicTo(first, second, takeQtPoint());
        return true;
    }
    case kQuadTo: {
        const QPointF control = takeQtPoint();
        m_path.quadTo(control, takeQtPoint());
        return true;
    }
    case kClose:
        m_path.closeSubpath();
        return false;
    }
    return false;
}

void PathReader::arcTo(ZvGePoint2d start, ZvGePoint2d middle, ZvGePoint2d end)
{
    const bool isCircle = start.isEqualTo(end, ZvGeContext::gTol);
    start.transformBy(m_matrix);
    middle.transformBy(m_matrix);
    end.transformBy(m_matrix);
    ZvGeCircArc2d arc;
    if (!isCircle) {
        arc.set(start, middle, end);
    } else {
        const ZvGePoint2d center((start.x + middle.x) / 2.0, (start.y + middle.y) / 2.0);
        arc.set(center, start.distanceTo(middle) / 2.0);
        if (!start.isEqualTo(middle, ZvGeContext::gTol))
            arc.setRefVec(start - center);
    }
    if (!(arc.radius() > kSmallestRadius) || !std::isfinite(arc.radius())) {
        m_path.lineTo(toQt(middle));
        m_path.lineTo(toQt(end));
        return;
    }
    ZvArray<ZvGePoint2d> samples;
    arc.getSamplePoints(int(kSamplesPerRadian * std::fabs(float(arc.endAng() - arc.startAng()))), samples);
    if (arc.isClosed(ZvGeContext::gTol) && !samples.isEmpty()
        && !samples.last().isEqualTo(arc.startPoint(), ZvGeContext::gTol))
        samples.append(arc.startPoint());
    for (const ZvGePoint2d &sample : samples)
        m_path.lineTo(toQt(sample));
}

} // namespace

QPainterPath zvCanvasPath(const ZvGeMatrix2d &matrix, const ZvArray<float> &coordinates, const ZvArray<int> &operations)
{
    return PathReader(matrix, coordinates, operations).read();
}
