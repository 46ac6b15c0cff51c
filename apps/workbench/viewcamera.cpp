// SPDX-License-Identifier: MIT
#include "viewcamera.h"

#include <algorithm>
#include <cmath>

void ViewCamera::resize(const QSizeF &size)
{
    if (size.isEmpty())
        return;
    m_view.height *= size.height() / m_size.height();
    m_size = size;
}

double ViewCamera::scale() const
{
    return m_size.height() / m_view.height;
}

QPointF ViewCamera::toWidget(const ZvGePoint2d &display) const
{
    const double pixels = scale();
    return {m_size.width() / 2 + (display.x - m_view.center.x) * pixels,
            m_size.height() / 2 - (display.y - m_view.center.y) * pixels};
}

QPointF ViewCamera::toWidget(const ZvGePoint3d &world) const
{
    ZvGePoint3d point = world;
    point.transformBy(m_view.worldToDisplay());
    return toWidget(ZvGePoint2d(point.x, point.y));
}

QRectF ViewCamera::toWidget(const QRectF &display) const
{
    return QRectF(toWidget(ZvGePoint2d(display.left(), display.bottom())),
                  toWidget(ZvGePoint2d(display.right(), display.top())));
}

ZvGePoint2d ViewCamera::toDisplay(const QPointF &widget) const
{
    const double pixels = scale();
    return {m_view.center.x + (widget.x() - m_size.width() / 2) / pixels,
            m_view.center.y - (widget.y() - m_size.height() / 2) / pixels};
}

ZvGeExtents2d ViewCamera::visible() const
{
    ZvGeExtents2d box;
    box.add(toDisplay({0.0, 0.0}));
    box.add(toDisplay({m_size.width(), m_size.height()}));
    return box;
}

ZvGePoint3d ViewCamera::onPlane(const QPointF &widget, const ZvGeMatrix3d &plane) const
{
    const ZvGeMatrix3d toWorld = m_view.worldToDisplay().inverse();
    const ZvGePoint2d display = toDisplay(widget);
    ZvGePoint3d start(display.x, display.y, 0.0);
    start.transformBy(toWorld);
    const ZvGeVector3d sight = m_view.direction.normal();

    const ZvGeVector3d normal = ZvGeVector3d(plane(0, 2), plane(1, 2), plane(2, 2)).normal();
    const ZvGePoint3d origin(plane(0, 3), plane(1, 3), plane(2, 3));
    const double steepness = sight.dotProduct(normal);
    if (std::abs(steepness) < 1e-6)
        return start;
    return start + sight * ((origin - start).dotProduct(normal) / steepness);
}

void ViewCamera::zoomAt(const QPointF &widget, double factor)
{
    const double height = std::clamp(m_view.height / factor, kSmallest, kLargest);
    const ZvGePoint2d fixed = toDisplay(widget);
    m_view.height = height;
    const ZvGePoint2d moved = toDisplay(widget);
    m_view.center.x += fixed.x - moved.x;
    m_view.center.y += fixed.y - moved.y;
}

void ViewCamera::pan(const QPointF &delta)
{
    m_view.center.x -= delta.x() / scale();
    m_view.center.y += delta.y() / scale();
}

void ViewCamera::fit(const ZvGeExtents2d &display, double margin)
{
    if (display.isEmpty())
        return;
    m_view.center
        = ZvGePoint2d((display.minimum.x + display.maximum.x) / 2, (display.minimum.y + display.maximum.y) / 2);
    const double width = display.maximum.x - display.minimum.x;
    const double height = display.maximum.y - display.minimum.y;
    const double needed = std::max(height, width * m_size.height() / m_size.width()) / (1.0 - 2 * margin);
    if (needed > 0.0)
        m_view.height = std::clamp(needed, kSmallest, kLargest);
}

void ViewCamera::centerOn(const ZvGePoint3d &world)
{
    ZvGePoint3d point = world;
    point.transformBy(m_view.worldToDisplay());
    m_view.center = ZvGePoint2d(point.x, point.y);
}

bool ViewCamera::looksAlike(const ViewCamera &other) const
{
    return m_view.direction.isEqualTo(other.m_view.direction) && m_view.twist == other.m_view.twist
        && m_view.target.isEqualTo(other.m_view.target);
}

bool ViewCamera::operator==(const ViewCamera &other) const
{
    return looksAlike(other) && m_size == other.m_size && m_view.height == other.m_view.height
        && m_view.center.x == other.m_view.center.x && m_view.center.y == other.m_view.center.y;
}

QTransform ViewCamera::transformTo(const ViewCamera &other) const
{
    const double factor = other.scale() / scale();
    const QPointF origin = other.toWidget(toDisplay({0.0, 0.0}));
    return QTransform(factor, 0.0, 0.0, factor, origin.x(), origin.y());
}
