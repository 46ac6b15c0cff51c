// SPDX-License-Identifier: MIT
#ifndef ZVCOLORSWATCH_H
#define ZVCOLORSWATCH_H

#include <QIcon>
#include <QPixmap>

class QColor;

// Swatches of the colour lists. Drawn once and shared: lists are filled anew each time they open.

/// A square of \a size by \a size pixels: the colour in a black frame of one pixel. An invalid colour is black.
QIcon zvColorSwatch(const QColor &color, int size);
/// The picture of the row that opens the colour dialog: a run of colours from left to right, framed in the same way.
QIcon zvColorDialogSwatch(int size);
/// The swatch of the colour button and of the layer lists, \a w by \a h pixels: a thin black border on the colour, which
/// leaves one pixel free on the right and below. An invalid colour is black. Drawn anew each time.
QPixmap zvColorPixmapWithBorder(int w, int h, const QColor &color);

#endif
