// SPDX-License-Identifier: MIT
#ifndef PAPERSPACE_H
#define PAPERSPACE_H

#include "db/zvdbdatabase.h"

#include <QRectF>

/// The sheet of a layout, in the layout's drawing units; the origin is the lower left corner of the printable area.
struct LayoutPaper
{
    QRectF sheet; ///< Empty for model space and where the layout names no paper.
    QRectF printable;
};

/// Of the current layout.
LayoutPaper layoutPaper(const ZvDbDatabase &database);

bool isViewport(ZvDbObjectId id);

/// Border of a viewport in paper units; empty for the one that stands for the paper itself.
QRectF viewportBorder(ZvDbObjectId id);

/// A viewport is taken by its border: what is seen through it belongs to another space.
bool takesViewport(ZvDbObjectId id, const QRectF &window, bool crossing);

#endif
