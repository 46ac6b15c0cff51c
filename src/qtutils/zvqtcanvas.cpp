// SPDX-License-Identifier: MIT
#include "zvqtcanvas.h"

#include "private/zvcanvaspath.h"
#include "private/zvrastercopy.h"

#include <QPainter>
#include <QPainterPath>
#include <QVarLengthArray>

#include <algorithm>
#include <cmath>
#include <iterator>

ZVRX_DEFINE_MEMBERS(ZvQtCanvas, ZvsiCanvas)

namespace {

enum PathMode : unsigned char { kStroke = 1, kFillOddEven = 2, kFillWinding = 4 };
constexpr int kUsualPoints = 256; ///< Polylines of more take memory of their own.
constexpr double kNoLength = 1e-300;
constexpr double kSmallestLength = 1e-6;

QColor toQColor(unsigned packed)
{
    const auto channel = [packed](int shift) { return quint16((packed >> shift & 0xFF) * 257); };
    return QColor::fromRgba64(channel(0), channel(8), channel(16), channel(24));
}

QBrush makeBrush(unsigned color, ZvsiCanvas::Hatch_Pattern pattern)
{
    QBrush brush(toQColor(color), Qt::SolidPattern);
    const Qt::BrushStyle style = ZvQtCanvas::canvas_brushStyle_To_Qt_brushStyle(pattern);
    if (style != Qt::RadialGradientPattern) // which QBrush would refuse as a plain style, with a warning
        brush.setStyle(style);
    return brush;
}

QTransform toQTransform(const ZvGeMatrix2d &m)
{
    return QTransform(m(0, 0), m(1, 0), m(0, 1), m(1, 1), m(0, 2), m(1, 2));
}

} // namespace

ZvQtCanvas::~ZvQtCanvas() = default;

void ZvQtCanvas::setLineStyle(int width, int style, unsigned color, short cap, short join)
{
    m_penWidth = std::fabs(m_widthAdapt == kWidthByMatrix ? m_matrix.scale() * width : double(width));
    m_penStyle = style;
    m_penColor = color;
    m_capStyle = cap;
    m_joinStyle = join;
    updadeProperty(true);
}

bool ZvQtCanvas::customPenStyle(double *, int)
{
    return true;
}

void ZvQtCanvas::setFillStyle(Hatch_Pattern pattern, unsigned color)
{
    m_fillPattern = pattern;
    m_fillColor = color;
    updadeProperty(false);
}

void ZvQtCanvas::setPenWidthAdapt(PenWidthAdapt adapt)
{
    m_widthAdapt = adapt;
}

short ZvQtCanvas::setRop(short mode)
{
    const short before = m_rop;
    m_rop = mode;
    if (!m_painter)
        return before;
    switch (mode) {
    case 1:
        m_painter->setCompositionMode(QPainter::RasterOp_SourceXorDestination);
        break;
    case 2:
        m_painter->setCompositionMode(QPainter::CompositionMode_Difference);
        break;
    default:
        m_painter->setCompositionMode(QPainter::CompositionMode_SourceOver);
    }
    return before;
}

void ZvQtCanvas::setMatrix(const ZvGeMatrix2d &matrix)
{
    m_matrix = matrix;
}

void ZvQtCanvas::mutiMatrix(const ZvGeMatrix2d &matrix, bool post)
{
    if (post)
        m_matrix.postMultBy(matrix);
    else
        m_matrix *= matrix;
}

void ZvQtCanvas::setClipRgn(ZvSmartPtr<HdiClipRgn> region)
{
    if (!m_painter || !region || region->boundary().isEmpty())
        return;
    QPainterPath path;
    const ZvArray<ZvGePoint2d> &boundary = region->boundary();
    path.moveTo(pointToQt(boundary[0]));
    for (int i = 1; i < boundary.length(); ++i)
        path.lineTo(pointToQt(boundary[i]));
    path.closeSubpath();
    m_painter->setClipPath(path, Qt::IntersectClip);
}

void ZvQtCanvas::drawLine(const ZvGePoint2d &from, const ZvGePoint2d &to)
{
    if (!m_painter)
        return;
    const QLineF line(pointToQt(from), pointToQt(to));
    m_painter->drawLines(&line, 1);
}

void ZvQtCanvas::drawPolyline(const ZvGePoint2d *points, int count, bool closed)
{
    if (!m_painter || count < 2)
        return;
    if (!closed) {
        QVarLengthArray<QPointF, kUsualPoints> onDevice(count);
        for (int i = 0; i < count; ++i)
            onDevice[i] = pointToQt(points[i]);
        m_painter->drawPolyline(onDevice.constData(), count);
        return;
    }
    QPainterPath path;
    path.reserve(count + 1);
    path.moveTo(pointToQt(points[0]));
    for (int i = 1; i < count; ++i)
        path.lineTo(pointToQt(points[i]));
    path.closeSubpath();
    QPen pen(toQColor(m_penColor));
    pen.setWidthF(m_penWidth);
    pen.setStyle(canvas_penStyle_To_Qt_penStyle(m_penStyle));
    m_painter->strokePath(path, pen);
}

void ZvQtCanvas::drawPaths(unsigned char mode, const ZvArray<float> &coordinates, const ZvArray<int> &operations)
{
    QPainterPath path = zvCanvasPath(m_matrix, coordinates, operations);
    if (!m_painter)
        return;
    if (mode & kStroke)
        m_painter->strokePath(path, m_painter->pen());
    if (mode & kFillOddEven) {
        path.setFillRule(Qt::OddEvenFill);
        m_painter->fillPath(path, makeBrush(m_fillColor, m_fillPattern));
    }
    if (mode & kFillWinding) {
        path.setFillRule(Qt::WindingFill);
        m_painter->fillPath(path, makeBrush(m_fillColor, m_fillPattern));
    }
}

void ZvQtCanvas::drawGouraudTriangle(const ZvGePoint2d &p1, const ZvGePoint2d &p2, const ZvGePoint2d &p3, unsigned c1,
                                     unsigned c2, unsigned c3)
{
    if (!m_painter)
        return;
    struct Corner
    {
        ZvGePoint2d point;
        QColor color;
    };
    const Corner corners[] = {{p1, toQColor(c1)}, {p2, toQColor(c2)}, {p3, toQColor(c3)}};
    const ZvGePoint2d low(std::min({p1.x, p2.x, p3.x}), std::min({p1.y, p2.y, p3.y}));
    const ZvGePoint2d high(std::max({p1.x, p2.x, p3.x}), std::max({p1.y, p2.y, p3.y}));
    const double length = (high - low).length();
    if (!(length > kNoLength) || length < kSmallestLength || !std::isfinite(length))
        return;
    const ZvGeVector2d direction = (high - low) / length;
    QLinearGradient gradient(pointToQt(low), pointToQt(high));
    gradient.setColorAt(0.0, corners[0].color);
    gradient.setColorAt(1.0, corners[2].color);
    QPainterPath path;
    for (const Corner &corner : corners) {
        // Rounding must not carry a corner of the box out of it.
        gradient.setColorAt(qBound(0.0, (corner.point - low).dotProduct(direction) / length, 1.0), corner.color);
        if (path.elementCount() == 0)
            path.moveTo(pointToQt(corner.point));
        else
            path.lineTo(pointToQt(corner.point));
    }
    path.closeSubpath();
    const QBrush brush(gradient);
    m_painter->setBrush(brush);
    m_painter->setPen(Qt::transparent);
    m_painter->fillPath(path, brush);
}

void ZvQtCanvas::drawRasterImage(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v,
                                 ZvSmartPtr<ZvGiRasterImage> image, const ZvArray<ZvGePoint2d> &, bool)
{
    if (!m_painter || !image)
        return;
    const QImage picture = zvRasterCopyUpsideDown(*image);
    if (picture.isNull())
        return;
    ZvGeMatrix2d pixelsToCanvas;
    pixelsToCanvas.setCoordSystem(origin, u, v);
    m_painter->save();
    // The painter's own transform comes first, to pixels: callers give a painter without one, or expect just this.
    m_painter->setTransform(m_painter->transform() * toQTransform(m_matrix * pixelsToCanvas), false);
    m_painter->setRenderHint(QPainter::Antialiasing);
    m_painter->drawImage(QRectF(0, 0, image->pixelWidth(), image->pixelHeight()), picture,
                         QRectF(0, 0, picture.width(), picture.height()));
    m_painter->restore();
}

void ZvQtCanvas::setTextAlign(unsigned) { }

void ZvQtCanvas::drawText(const ZvGePoint2d &, const ZvString &, double, double) { }

ZvGeExtents2d ZvQtCanvas::measureText(const ZvString &, double)
{
    return ZvGeExtents2d();
}

void ZvQtCanvas::drawRay(const ZvGePoint2d &, const ZvGePoint2d &) { }

void ZvQtCanvas::drawXLine(const ZvGePoint2d &from, const ZvGePoint2d &to)
{
    drawRay(from, to);
}

void ZvQtCanvas::drawCircle(const ZvGePoint2d &, double) { }

void ZvQtCanvas::drawArc(const ZvGePoint2d &, double, double, double) { }

void ZvQtCanvas::drawPng(const ZvGePoint2d &, const ZvGeVector2d &, const ZvUtf8String &) { }

void ZvQtCanvas::drawShape(const ZvGePoint2d &, const ZvShape *, const double &, const double &) { }

void ZvQtCanvas::attachBitmap(unsigned *, int, int, int) { }

void ZvQtCanvas::deattachBitmap() { }

void ZvQtCanvas::attachPainter(QPainter *painter)
{
    m_painter = painter;
    updadeProperty(true);
    updadeProperty(false);
    setRop(m_rop);
}

QPointF ZvQtCanvas::pointToQt(const ZvGePoint2d &point) const
{
    const ZvGePoint2d onDevice = pointToQt2(point);
    return QPointF(onDevice.x, onDevice.y);
}

ZvGePoint2d ZvQtCanvas::pointToQt2(const ZvGePoint2d &point) const
{
    ZvGePoint2d onDevice = point;
    return onDevice.transformBy(m_matrix);
}

void ZvQtCanvas::updadeProperty(bool pen)
{
    if (!m_painter)
        return;
    if (!pen) {
        m_painter->setBrush(makeBrush(m_fillColor, m_fillPattern));
        return;
    }
    QPen made(toQColor(m_penColor));
    made.setWidthF(m_penWidth);
    made.setStyle(canvas_penStyle_To_Qt_penStyle(m_penStyle));
    made.setJoinStyle(canvas_penJoinStyle_To_Qt_penJoinStyle(m_joinStyle));
    made.setCapStyle(canvas_penCapStyle_To_Qt_penCapStyle(m_capStyle));
    m_painter->setPen(made);
}

Qt::PenStyle ZvQtCanvas::canvas_penStyle_To_Qt_penStyle(int style)
{
    switch (style) {
    case -1:
        return Qt::NoPen;
    case 1:
        return Qt::DashLine;
    case 2:
        return Qt::DotLine;
    case 3:
        return Qt::DashDotLine;
    default:
        return Qt::SolidLine;
    }
}

Qt::PenJoinStyle ZvQtCanvas::canvas_penJoinStyle_To_Qt_penJoinStyle(short join)
{
    switch (join) {
    case 0:
        return Qt::MiterJoin;
    case 1:
        return Qt::BevelJoin;
    default:
        return Qt::RoundJoin;
    }
}

Qt::PenCapStyle ZvQtCanvas::canvas_penCapStyle_To_Qt_penCapStyle(short cap)
{
    switch (cap) {
    case 0:
        return Qt::FlatCap;
    case 1:
        return Qt::SquareCap;
    default:
        return Qt::RoundCap;
    }
}

Qt::BrushStyle ZvQtCanvas::canvas_brushStyle_To_Qt_brushStyle(Hatch_Pattern pattern)
{
    static constexpr Qt::BrushStyle kStyles[] = {
        Qt::SolidPattern, Qt::DiagCrossPattern, Qt::CrossPattern, Qt::SolidPattern,          Qt::HorPattern,
        Qt::VerPattern,   Qt::BDiagPattern,     Qt::FDiagPattern, Qt::RadialGradientPattern, // kept: callers compare
                                                                                             // with it
    };
    const int code = int(pattern);
    return code >= 0 && code < int(std::size(kStyles)) ? kStyles[code] : Qt::SolidPattern;
}
