// SPDX-License-Identifier: MIT
#ifndef ZVQTCOLOR_H
#define ZVQTCOLOR_H

#include "base/zvcmcolor.h"

#include <QColor>

#include <cstdint>

// The kernel's colours and Qt's. A packed colour, as dialogs and palettes hold it, has red in bits 0 to 7, green in 8 to
// 15 and blue in 16 to 23: the other way round than a QRgb and the kernel's colour word.

inline int zvPackedRed(std::uint32_t packed)
{
    return int(packed & 0xFF);
}

inline int zvPackedGreen(std::uint32_t packed)
{
    return int(packed >> 8 & 0xFF);
}

inline int zvPackedBlue(std::uint32_t packed)
{
    return int(packed >> 16 & 0xFF);
}

/// Each component is cut to its 8 bits.
inline std::uint32_t zvPackRgb(std::uint32_t red, std::uint32_t green, std::uint32_t blue)
{
    return (red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16;
}

inline QColor zvPackedToQColor(std::uint32_t packed)
{
    return QColor(zvPackedRed(packed), zvPackedGreen(packed), zvPackedBlue(packed));
}

/// Red, green and blue of the colour; of an index colour those of the palette.
template<class Color>
std::uint32_t zvToPacked(const Color &color)
{
    return zvPackRgb(color.red(), color.green(), color.blue());
}

/// The colour that a method stands for by itself: by layer, by block, none.
inline ZvCmEntityColor zvPlainColor(ZvCm::ColorMethod method)
{
    return ZvCmEntityColor(std::uint32_t(method) << 24);
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
