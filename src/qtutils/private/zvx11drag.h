// SPDX-License-Identifier: MIT
#ifndef ZVX11DRAG_H
#define ZVX11DRAG_H

class QPoint;
class QWidget;

// The X11 half of native window dragging. It stands in a unit of its own because the macros of the X11 headers collide
// with Qt's names. Both calls do nothing where the application runs on another platform.

/// Sends \a widget the release of its mouse button at \a globalPos (pixels of the root window).
void zvqt_X11EmulateButtonRelease(QWidget *widget, const QPoint &globalPos);

/// Asks the window manager to move or resize \a widget's top-level window from the root position \a x, \a y on.
/// \a direction is that of `_NET_WM_MOVERESIZE`: 0 to 7 the corners and edges clockwise from the top left, 8 a move.
void zvqt_X11WMMoveResizeWindow(QWidget *widget, int x, int y, int direction);

#endif
