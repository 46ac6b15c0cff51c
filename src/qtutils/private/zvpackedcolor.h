// SPDX-License-Identifier: MIT
#ifndef ZVPACKEDCOLOR_H
#define ZVPACKEDCOLOR_H

#include <cstdint>

// Packed colours as the palettes hold them and the property bags carry them: red in bits 0 to 7, green in 8 to 15, blue
// in 16 to 23. An entity colour's word and a QRgb hold red and blue the other way round.

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

#endif
