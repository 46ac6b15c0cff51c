// SPDX-License-Identifier: MIT
#ifndef VIEWCAMERA_H
#define VIEWCAMERA_H

#include "utils/zvrenderer.h"

#include <QPointF>
#include <QRectF>
#include <QSizeF>
#include <QTransform>

/// How a drawing view looks at its drawing: a view of the renderer together with the widget's size, and the maths
/// between them. A plain value that knows no window.
///
/// Widget coordinates are logical pixels, y downwards. Display coordinates are drawing units across the direction of
/// view, y upwards. World coordinates are the drawing's own.
class ViewCamera
{
public:
    ViewCamera() = default;
    ViewCamera(const ZvGiView &view, const QSizeF &size) : m_view(view), m_size(size) { }

    const ZvGiView &view() const { return m_view; }
    void setView(const ZvGiView &view) { m_view = view; }
    QSizeF size() const { return m_size; }
    /// Keeps the scale and the point in the middle.
    void resize(const QSizeF &size);

    /// Logical pixels for a drawing unit.
    double scale() const;
    QPointF toWidget(const ZvGePoint2d &display) const;
    QPointF toWidget(const ZvGePoint3d &world) const;
    /// Of a rectangle on the display plane, where y grows upwards.
    QRectF toWidget(const QRectF &display) const;
    ZvGePoint2d toDisplay(const QPointF &widget) const;
    /// The part of the display plane that is seen.
    ZvGeExtents2d visible() const;
    /// Where the line of sight through a widget's point meets the XY plane of \a plane. A plane seen edge on has no
    /// such point: the one on the plane through the target across the view is given then.
    ZvGePoint3d onPlane(const QPointF &widget, const ZvGeMatrix3d &plane) const;

    /// Above 1 nearer. The drawing's point under \a widget stays under it.
    void zoomAt(const QPointF &widget, double factor);
    /// Moves the picture by so many pixels.
    void pan(const QPointF &delta);
    /// Shows the whole box with \a margin, a part of the size, at each side. A box without size keeps the scale.
    void fit(const ZvGeExtents2d &display, double margin = 0.04);
    void centerOn(const ZvGePoint3d &world);

    bool looksAlike(const ViewCamera &other) const;
    bool operator==(const ViewCamera &other) const;
    bool operator!=(const ViewCamera &other) const { return !(*this == other); }
    /// From the widget's points in this camera to those in \a other, for cameras that look alike.
    QTransform transformTo(const ViewCamera &other) const;

    /// Heights of what is seen stay within these, in drawing units.
    static constexpr double kSmallest = 1e-9;
    static constexpr double kLargest = 1e15;

private:
    ZvGiView m_view;
    QSizeF m_size{1.0, 1.0};
};

#endif
