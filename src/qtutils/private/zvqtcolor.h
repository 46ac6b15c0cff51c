// SPDX-License-Identifier: MIT
#ifndef ZVQTCOLOR_H
#define ZVQTCOLOR_H

#include "base/zvcmcolor.h"

#include <QColor>

// The kernel's colours and Qt's. A packed colour, as dialogs and palettes hold it, has red in bits 0 to 7, green in 8 to
// 15 and blue in 16 to 23: the other way round than a QRgb and the kernel's colour word.

inline QColor zvPackedToQColor(std::uint32_t packed)
{
    return QColor(int(packed & 0xFF), int((packed >> 8) & 0xFF), int((packed >> 16) & 0xFF));
}

/// Red, green and blue of the colour; of an index colour those of the palette.
template<class Color>
std::uint32_t zvToPacked(const Color &color)
{
    return std::uint32_t(color.red()) | std::uint32_t(color.green()) << 8 | std::uint32_t(color.blue()) << 16;
}

inline QColor zvToQColor(const ZvCmColor &color)
{
    return QColor(color.red(), color.green(), color.blue());
}

inline QColor zvToQColor(const ZvCmEntityColor &color)
{
    return QColor(color.red(), color.green(), color.blue());
}

#endif
