// SPDX-License-Identifier: MIT
#ifndef VIEWCOLORS_H
#define VIEWCOLORS_H

#include <QColor>

/// The colours of the drawing views, all in one place.
namespace ViewColors {
inline const QColor kModelGround(30, 36, 44);
inline const QColor kDesk(104, 110, 118); ///< Around the paper of a layout.
inline const QColor kPaper(255, 255, 255);
inline const QColor kPaperMargin(176, 182, 190);
inline const QColor kSelected(61, 158, 255);
inline const QColor kHover(255, 196, 92);
inline const QColor kCrosshairOnDark(226, 232, 240);
inline const QColor kCrosshairOnLight(24, 28, 34);
inline const QColor kInsideWindow(64, 140, 255); ///< From left to right: takes what lies inside.
inline const QColor kCrossingWindow(70, 200, 110); ///< From right to left: takes what it cuts as well.
inline const QColor kRubberBand(255, 176, 66);
inline const QColor kAxisX(235, 92, 92);
inline const QColor kAxisY(98, 205, 110);
inline const QColor kAxisZ(92, 150, 245);

/// As the kernel packs a colour: red in bits 0 to 7, green in 8 to 15, blue in 16 to 23, opaque.
inline unsigned packed(const QColor &color)
{
    return 0xFF000000u | unsigned(color.blue()) << 16 | unsigned(color.green()) << 8 | unsigned(color.red());
}
} // namespace ViewColors

#endif
