// SPDX-License-Identifier: MIT
#include "zvutilsgradientcolorpushbutton.h"

#include "private/zvframepen.h"

#include <QLineF>
#include <QLinearGradient>
#include <QPainter>
#include <QRadialGradient>

#include <cmath>

namespace {

constexpr int kSwatchMargin = 4;
constexpr double kPi = 3.14159265358979323846;
constexpr double kRadiansPerDegree = 0.017453292519943295;
constexpr int kShadeLimit = 99;

/// \a color in the lightness that \a shade tells.
QColor shaded(const QColor &color, int shade)
{
    const double lightness = (qBound(-kShadeLimit, shade, kShadeLimit) + kShadeLimit) / (2.0 * kShadeLimit);
    return QColor::fromHslF(color.hslHueF(), color.hslSaturationF(), lightness, 1.0);
}

/// The stops of a linear gradient: where the inner colour begins and ends, the outer one standing at both ends.
struct LinearStops
{
    double innerFrom;
    double innerTo;
};
constexpr LinearStops kStopsAside = {0.3, 0.4};
constexpr LinearStops kStopsCentered = {0.45, 0.55};

/// The line along which a linear gradient over a rectangle of \a w by \a h pixels runs, so that a whole gradient fits
/// in at any angle.
QLineF gradientLine(double w, double h, int degrees)
{
    const double s = std::sin(degrees * kRadiansPerDegree);
    const double c = std::cos(degrees * kRadiansPerDegree);
    const double left = kSwatchMargin;
    const double top = kSwatchMargin;
    const double right = w + kSwatchMargin;
    const double bottom = h + kSwatchMargin;
    if (degrees < 91)
        return {left - h * s * c, top + h * s * s, right - w * s * s, top - w * s * c};
    if (degrees <= 180)
        return {right - w * s * s, bottom - w * s * c, left + h * s * c, bottom - h * s * s};
    if (degrees > 270)
        return {left + w * s * s, top + w * s * c, right - h * s * c, top + h * s * s};
    return {right + h * s * c, bottom - h * s * s, left + w * s * s, bottom + w * s * c};
}

QLinearGradient linearGradient(int pattern, bool centered, const QLineF &line, const QColor &first,
                               const QColor &second)
{
    QLinearGradient gradient(line.p1(), line.p2());
    if (pattern == 1) {
        gradient.setColorAt(0.0, first);
        gradient.setColorAt(centered ? 0.3 : 0.1, first);
        gradient.setColorAt(1.0, second);
        return gradient;
    }
    const LinearStops &stops = centered ? kStopsCentered : kStopsAside;
    const QColor &outer = pattern == 2 ? first : second;
    const QColor &inner = pattern == 2 ? second : first;
    gradient.setColorAt(0.0, outer);
    gradient.setColorAt(stops.innerFrom, inner);
    gradient.setColorAt(stops.innerTo, inner);
    gradient.setColorAt(1.0, outer);
    return gradient;
}

/// A circle around a point that lies off the middle of the button.
struct Circle
{
    double distance;
    double direction; // radians, clockwise from the right
    double radius;
    double focalRadius;
};

/// False for a pattern that has none. \a w and \a h are the swatch's size, \a smaller is the button's smaller side.
bool findCircle(int pattern, bool centered, double w, double h, double smaller, double angle, Circle &circle)
{
    const double diagonal = std::hypot(w, h);
    const double ahead = centered ? kPi / 2 - angle : kPi / 4 - angle + kPi / 2;
    switch (pattern) {
    case 4:
    case 7:
        if (centered)
            circle = {0, 0, 0.5 * w * 1.4142, smaller / 6};
        else
            circle = {smaller / 2, -angle - 3 * kPi / 4, std::hypot(w - smaller / 6 - 4, h - smaller / 6 - 4),
                      smaller / 6};
        return true;
    case 5:
    case 8:
        circle = {diagonal / 2, ahead, centered ? smaller : diagonal, smaller / 2};
        return true;
    case 6:
    case 9:
        circle = {0.6 * diagonal, ahead, centered ? smaller + qMax(w / 3, h / 3) : diagonal, smaller / 2};
        return true;
    default:
        return false;
    }
}

} // namespace

ZvUtilsGradientColorPushButton::ZvUtilsGradientColorPushButton(QWidget *parent)
    : ZvUtilsIconPushButton(QString(), QString(), true, parent)
{
}

void ZvUtilsGradientColorPushButton::paintEvent(QPaintEvent *event)
{
    ZvUtilsIconPushButton::paintEvent(event);
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor first = m_firstColor;
    const QColor second = m_twoColors ? m_secondColor : shaded(m_firstColor, m_shade);
    if (m_selected) {
        painter.setPen(zvFramePen(QColor(kZvActiveFrameColor), 3.0));
        painter.setBrush(QColor(kZvActiveFrameFill));
        painter.drawRect(rect());
    }
    const int w = width() - 2 * kSwatchMargin;
    const int h = height() - 2 * kSwatchMargin;
    if (w <= 0 || h <= 0)
        return;
    painter.setPen(zvFramePen(QColor(255, 255, 255, 0), 1.0));
    if (m_pattern >= 1 && m_pattern <= 3) {
        painter.setBrush(linearGradient(m_pattern, m_centered, gradientLine(w, h, m_angle), first, second));
    } else {
        QRadialGradient gradient;
        const bool isExchanged = m_pattern >= 7 && m_pattern <= 9;
        gradient.setColorAt(0.0, isExchanged ? first : second);
        gradient.setColorAt(1.0, isExchanged ? second : first);
        Circle circle;
        if (findCircle(m_pattern, m_centered, w, h, qMin(width(), height()), m_angle * kRadiansPerDegree, circle)) {
            const QPointF centre(width() / 2.0 + circle.distance * std::cos(circle.direction),
                                 height() / 2.0 + circle.distance * std::sin(circle.direction));
            gradient.setCenter(centre);
            gradient.setCenterRadius(circle.radius);
            gradient.setFocalPoint(centre);
            gradient.setFocalRadius(circle.focalRadius);
        }
        painter.setBrush(gradient);
    }
    painter.drawRect(kSwatchMargin, kSwatchMargin, w, h);
}
