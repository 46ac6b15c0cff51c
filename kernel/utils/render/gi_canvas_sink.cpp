// SPDX-License-Identifier: MIT
#include "gi_canvas_sink.h"

#include "gi_dashes.h"
#include "gi_pick_sink.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace {

enum PathWord : unsigned { kMoveTo = 0x80000000, kLineTo = 0x10000000, kCubicTo = 0x30000000 };
enum PathMode : unsigned char { kOddEven = 2, kWinding = 4 };
constexpr short kFlatCap = 0;
constexpr short kRoundCap = 2;
constexpr short kRoundJoin = 2;
constexpr int kBands = 64; ///< Of a gradient.

unsigned packed(const QColor &color)
{
    return unsigned(color.red()) | unsigned(color.green()) << 8 | unsigned(color.blue()) << 16
        | unsigned(color.alpha()) << 24;
}

bool isBox(const QPainterPath &path)
{
    if (path.elementCount() != 5)
        return false;
    for (int i = 1; i < 5; ++i) {
        const QPainterPath::Element from = path.elementAt(i - 1);
        const QPainterPath::Element to = path.elementAt(i);
        if (to.type != QPainterPath::LineToElement || (from.x != to.x && from.y != to.y))
            return false;
    }
    const QPainterPath::Element first = path.elementAt(0);
    const QPainterPath::Element last = path.elementAt(4);
    return first.x == last.x && first.y == last.y;
}

/// Where two segments meet, as a parameter of the first; below 0 where they do not.
double meeting(const QPointF &a, const QPointF &b, const QLineF &edge)
{
    const QPointF along = b - a;
    const QPointF other = edge.p2() - edge.p1();
    const double cross = along.x() * other.y() - along.y() * other.x();
    if (cross == 0.0)
        return -1.0;
    const QPointF between = edge.p1() - a;
    const double onEdge = (between.x() * along.y() - between.y() * along.x()) / cross;
    return onEdge >= 0.0 && onEdge <= 1.0 ? (between.x() * other.y() - between.y() * other.x()) / cross : -1.0;
}

} // namespace

void GiCanvasSink::stroke(const GiStroke &stroke, const QPointF *points, int count, double dashStart)
{
    if (count < 2)
        return;
    m_canvas.setLineStyle(int(std::lround(stroke.width)), 0, packed(QColor::fromRgba(stroke.color)),
                          stroke.dashes ? kFlatCap : kRoundCap, kRoundJoin);
    if (stroke.dashes)
        giDash(*stroke.dashes, points, count, dashStart, [this](const std::vector<QPointF> &run) { drawInClips(run); });
    else
        drawInClips(std::vector<QPointF>(points, points + count));
}

void GiCanvasSink::cut(const Clip &clip, const QPointF &a, const QPointF &b, std::vector<Part> &parts)
{
    if (clip.isBox) {
        QPointF from = a;
        QPointF to = b;
        double first = 0.0;
        double last = 1.0;
        if (!giClipSegment(clip.box, from, to, first, last)) {
            parts.clear();
            return;
        }
        for (Part &part : parts)
            part = {std::max(part.from, first), std::min(part.to, last)};
        parts.erase(std::remove_if(parts.begin(), parts.end(), [](const Part &part) { return part.from > part.to; }),
                    parts.end());
        return;
    }
    std::vector<double> meetings;
    for (const QLineF &edge : clip.edges)
        meetings.push_back(meeting(a, b, edge));
    std::sort(meetings.begin(), meetings.end());
    std::vector<Part> inside;
    for (const Part &part : parts) {
        double from = part.from;
        const auto add = [&](double to) {
            if (clip.path.contains(a + (b - a) * ((from + to) / 2)))
                inside.push_back({from, to});
            from = to;
        };
        for (const double at : meetings) {
            if (at > from && at < part.to)
                add(at);
        }
        add(part.to);
    }
    parts = inside;
}

void GiCanvasSink::drawInClips(const std::vector<QPointF> &points)
{
    if (m_clips.empty()) {
        draw(points);
        return;
    }
    std::vector<QPointF> run;
    for (std::size_t i = 1; i < points.size(); ++i) {
        const QPointF &a = points[i - 1];
        const QPointF &b = points[i];
        std::vector<Part> parts{{0.0, 1.0}};
        for (const Clip &clip : m_clips)
            cut(clip, a, b, parts);
        for (const Part &part : parts) {
            const QPointF from = part.from == 0.0 ? a : a + (b - a) * part.from;
            if (run.empty() || run.back() != from) {
                draw(run);
                run.assign(1, from);
            }
            run.push_back(part.to == 1.0 ? b : a + (b - a) * part.to);
        }
    }
    draw(run);
}

void GiCanvasSink::draw(const std::vector<QPointF> &points)
{
    if (points.size() < 2)
        return;
    std::vector<ZvGePoint2d> onCanvas;
    onCanvas.reserve(points.size());
    for (const QPointF &point : points)
        onCanvas.emplace_back(point.x(), point.y());
    m_canvas.drawPolyline(onCanvas.data(), int(onCanvas.size()), false);
}

bool GiCanvasSink::cutToClips(QPainterPath &path) const
{
    for (const Clip &clip : m_clips) {
        const QRectF box = path.controlPointRect();
        if (!box.intersects(clip.box) && !clip.box.contains(box))
            return false;
        if (!clip.isBox || !clip.box.contains(box))
            path = path.intersected(clip.path);
    }
    return !path.isEmpty();
}

void GiCanvasSink::fill(const QPainterPath &path, const QBrush &brush)
{
    QPainterPath area = path;
    if (!cutToClips(area))
        return;
    if (!brush.gradient() || brush.gradient()->type() != QGradient::LinearGradient) {
        fillArea(area, brush.color());
        return;
    }
    // Bands across the gradient, each over all that is left of the area, so that no seam shows between them.
    const auto *gradient = static_cast<const QLinearGradient *>(brush.gradient());
    const QColor from = gradient->stops().first().second;
    const QColor to = gradient->stops().last().second;
    const QLineF axis(gradient->start(), gradient->finalStop());
    fillArea(area, from);
    if (axis.length() <= 0.0)
        return;
    const QRectF box = area.controlPointRect();
    const double reach = QLineF(box.topLeft(), box.bottomRight()).length() + axis.length()
        + QLineF(box.center(), axis.center()).length();
    const QPointF along = (axis.p2() - axis.p1()) / axis.length();
    const QPointF across(-along.y(), along.x());
    for (int i = 1; i < kBands; ++i) {
        const double part = double(i) / kBands;
        const QPointF at = axis.pointAt(part);
        QPainterPath rest;
        rest.addPolygon(QPolygonF({at - across * reach, at + across * reach, at + (across + along) * reach,
                                   at + (along - across) * reach, at - across * reach}));
        const double shade = double(i) / (kBands - 1);
        const auto mix = [shade](int a, int b) { return int(std::lround(a + shade * (b - a))); };
        const QPainterPath band = area.intersected(rest);
        if (!band.isEmpty())
            fillArea(band,
                     QColor(mix(from.red(), to.red()), mix(from.green(), to.green()), mix(from.blue(), to.blue()),
                            from.alpha()));
    }
}

void GiCanvasSink::fillArea(const QPainterPath &path, const QColor &color)
{
    ZvArray<float> coordinates(2 * path.elementCount());
    ZvArray<int> words(2 * path.elementCount());
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        coordinates.append(float(element.x));
        coordinates.append(float(element.y));
        switch (element.type) {
        case QPainterPath::MoveToElement:
            words.append(int(kMoveTo));
            break;
        case QPainterPath::LineToElement:
            words.append(int(kLineTo));
            break;
        case QPainterPath::CurveToElement:
            words.append(int(kCubicTo));
            break;
        case QPainterPath::CurveToDataElement:
            break; // one more point of the curve
        }
        words.append(i);
    }
    m_canvas.setFillStyle(ZvsiCanvas::kHatchSolidFill, packed(color));
    m_canvas.drawPaths(path.fillRule() == Qt::OddEvenFill ? kOddEven : kWinding, coordinates, words);
}

void GiCanvasSink::image(const QImage &image, const QTransform &place)
{
    if (image.isNull() || !place.isInvertible())
        return;
    QPainterPath shown;
    shown.addPolygon(place.map(QPolygonF(QRectF(image.rect()))));
    const QRectF box = shown.boundingRect();
    if (!cutToClips(shown))
        return;
    QImage pixels = image.convertToFormat(QImage::Format_RGBA8888);
    const bool isCut = std::any_of(m_clips.begin(), m_clips.end(),
                                   [&box](const Clip &clip) { return !clip.isBox || !clip.box.contains(box); });
    if (isCut) {
        pixels.fill(Qt::transparent);
        QPainter painter(&pixels);
        painter.setClipPath(place.inverted().map(shown));
        painter.drawImage(0, 0, image);
    }
    const ZvSmartPtr<ZvGiRasterImage> raster
        = zvutImageWrap(pixels.constBits(), std::uint32_t(pixels.width()), std::uint32_t(pixels.height()), 32);
    // A canvas shows the last row first.
    const QPointF origin = place.map(QPointF(0, pixels.height()));
    const QPointF right = place.map(QPointF(1, pixels.height())) - origin;
    const QPointF up = (place.map(QPointF(0, 0)) - origin) / pixels.height();
    m_canvas.drawRasterImage(ZvGePoint2d(origin.x(), origin.y()), ZvGeVector2d(right.x(), right.y()),
                             ZvGeVector2d(up.x(), up.y()), raster, ZvArray<ZvGePoint2d>(), false);
}

void GiCanvasSink::pushClip(const QPainterPath &path)
{
    Clip clip;
    clip.path = path;
    clip.box = path.boundingRect();
    clip.isBox = isBox(path);
    if (!clip.isBox) {
        for (const QPolygonF &polygon : path.toSubpathPolygons()) {
            for (int i = 1; i < polygon.size(); ++i)
                clip.edges.emplace_back(polygon[i - 1], polygon[i]);
            if (!polygon.isEmpty() && !polygon.isClosed())
                clip.edges.emplace_back(polygon.last(), polygon.first());
        }
    }
    m_clips.push_back(clip);
}

void GiCanvasSink::popClip()
{
    m_clips.pop_back();
}
