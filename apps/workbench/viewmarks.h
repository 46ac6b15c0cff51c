// SPDX-License-Identifier: MIT
#ifndef VIEWMARKS_H
#define VIEWMARKS_H

#include "base/zvge3d.h"
#include "paperspace.h"
#include "viewcamera.h"

#include <QPainter>
#include <QRegion>

/// What a drawing view paints below and above the drawing. All lengths are logical pixels.

enum class ViewGround { Model, Paper };

/// What the crosshair promises of a click.
enum class Crosshair {
    Plain, ///< A point.
    PickBox, ///< The pick box alone: an entity.
    Both, ///< An entity or the beginning of a window.
};

/// The desk, and on it the sheet with its shadow and the border of what can be printed.
void paintPaperGround(QPainter &painter, const ViewCamera &camera, const LayoutPaper &paper);

/// From the last point of a running command to the pointer.
void paintRubberBand(QPainter &painter, const QPointF &base, const QPointF &pointer, bool asRectangle);

/// To the right for what lies inside, to the left for what is cut as well.
void paintSelectionWindow(QPainter &painter, const QPointF &start, const QPointF &pointer);

/// The axes of the current coordinate system, in the lower left corner.
void paintAxes(QPainter &painter, const ViewCamera &camera, const ZvGeMatrix3d &ucs, ViewGround ground);

void paintCrosshair(QPainter &painter, const QPoint &middle, Crosshair crosshair, int pickBox, ViewGround ground);

/// All that any crosshair at this place covers.
QRegion crosshairRegion(const QPointF &pos, int pickBox);

#endif
