// SPDX-License-Identifier: MIT
#include "base/zvcmcolor.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace {

typedef std::array<std::uint32_t, 256> Palette;

std::uint32_t packed(int red, int green, int blue)
{
    return std::uint32_t(red) | std::uint32_t(green) << 8 | std::uint32_t(blue) << 16;
}

/// The colour index table that drawing programs share: nine fixed colours, then 24 hues in steps of 15 degrees, each in
/// five values and each value full and half saturated, components cut off to whole numbers; six greys at the end. The
/// rule reproduces the table published with the ezdxf package (MIT licence) from 1 to 249; the greys are the even
/// steps from 51 to 255, since a black 250 would not be seen on a black display.
Palette makePalette(bool lightBackground)
{
    Palette table = {};
    table[1] = packed(255, 0, 0);
    table[2] = packed(255, 255, 0);
    table[3] = packed(0, 255, 0);
    table[4] = packed(0, 255, 255);
    table[5] = packed(0, 0, 255);
    table[6] = packed(255, 0, 255);
    table[7] = lightBackground ? packed(0, 0, 0) : packed(255, 255, 255);
    table[8] = packed(128, 128, 128);
    table[9] = packed(192, 192, 192);
    static const int kValues[] = {255, 165, 127, 76, 38};
    for (int i = 10; i < 250; ++i) {
        const int quarter = i / 10 - 1; // hue in quarters of 60 degrees
        const double rest = (quarter % 4) / 4.0;
        const double rising[3][3] = {{1.0, rest, 0.0}, {0.0, 1.0, rest}, {rest, 0.0, 1.0}};
        const double falling[3][3] = {{1.0 - rest, 1.0, 0.0}, {0.0, 1.0 - rest, 1.0}, {1.0, 0.0, 1.0 - rest}};
        const int sextant = quarter / 4;
        const double *share = sextant % 2 == 0 ? rising[sextant / 2] : falling[sextant / 2];
        int components[3];
        for (int c = 0; c < 3; ++c) {
            const double full = i % 2 == 0 ? share[c] : share[c] * 0.5 + 0.5;
            components[c] = int(kValues[(i % 10) / 2] * full);
        }
        table[std::size_t(i)] = packed(components[0], components[1], components[2]);
    }
    static const int kGreys[] = {51, 91, 132, 173, 214, 255};
    for (int i = 0; i < 6; ++i)
        table[std::size_t(250 + i)] = packed(kGreys[i], kGreys[i], kGreys[i]);
    return table;
}

const Palette &darkPalette()
{
    static const Palette palette = makePalette(false);
    return palette;
}

const Palette &lightPalette()
{
    static const Palette palette = makePalette(true);
    return palette;
}

bool s_paletteAvailable = true;

/// Of a packed word: by the weights of luma.
bool isLight(unsigned background)
{
    const unsigned red = background & 0xFF;
    const unsigned green = (background >> 8) & 0xFF;
    const unsigned blue = (background >> 16) & 0xFF;
    return red * 299 + green * 587 + blue * 114 > 127500;
}

std::uint8_t component(const ZvCmEntityColor &color, int shiftOfWord, int shiftOfPacked)
{
    if (color.colorMethod() == ZvCm::kByACI)
        return std::uint8_t(darkPalette()[color.colorIndex() & 0xFF] >> shiftOfPacked);
    return color.colorMethod() == ZvCm::kByColor ? std::uint8_t(color.color() >> shiftOfWord) : 0;
}

}

std::uint16_t ZvCmEntityColor::colorIndex() const
{
    switch (colorMethod()) {
    case ZvCm::kByLayer:
        return ZvCm::kACIbyLayer;
    case ZvCm::kByBlock:
        return ZvCm::kACIbyBlock;
    case ZvCm::kNone:
        return ZvCm::kACInone;
    default:
        return std::uint16_t(m_word);
    }
}

void ZvCmEntityColor::setColorIndex(std::uint16_t index)
{
    m_word = std::uint32_t(ZvCm::kByACI) << 24 | index;
}

void ZvCmEntityColor::setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    m_word = std::uint32_t(ZvCm::kByColor) << 24 | std::uint32_t(red) << 16 | std::uint32_t(green) << 8 | blue;
}

std::uint8_t ZvCmEntityColor::red() const
{
    return component(*this, 16, 0);
}

std::uint8_t ZvCmEntityColor::green() const
{
    return component(*this, 8, 8);
}

std::uint8_t ZvCmEntityColor::blue() const
{
    return component(*this, 0, 16);
}

void ZvCmColor::setColorMethod(ZvCm::ColorMethod method)
{
    setColor((m_word.color() & 0x00FFFFFFu) | std::uint32_t(method) << 24);
}

void ZvCmColor::setColorIndex(std::uint16_t index)
{
    switch (index) {
    case ZvCm::kACIbyBlock:
        setColorMethod(ZvCm::kByBlock);
        break;
    case ZvCm::kACIbyLayer:
        setColorMethod(ZvCm::kByLayer);
        break;
    case ZvCm::kACInone:
        setColorMethod(ZvCm::kNone);
        break;
    default:
        m_bookName = ZvString();
        m_word.setColorIndex(index);
    }
}

void ZvCmColor::setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue)
{
    m_bookName = ZvString();
    m_word.setRGB(red, green, blue);
}

void ZvCmColor::setColor(std::uint32_t word)
{
    m_bookName = ZvString();
    m_word.setColor(word);
    // One canonical word per colour: what refers to something else has no value of its own, an index is 8 bits wide.
    switch (m_word.colorMethod()) {
    case ZvCm::kByLayer:
    case ZvCm::kByBlock:
    case ZvCm::kNone:
        m_word.setColor(word & 0xFF000000u);
        break;
    case ZvCm::kByACI:
        if (const std::uint16_t index = m_word.colorIndex(); index == ZvCm::kACIbyLayer)
            m_word.setColor(std::uint32_t(ZvCm::kByLayer) << 24);
        else if (index == ZvCm::kACIbyBlock)
            m_word.setColor(std::uint32_t(ZvCm::kByBlock) << 24);
        else if (index == ZvCm::kACInone)
            m_word.setColor(std::uint32_t(ZvCm::kNone) << 24);
        break;
    default:
        break;
    }
}

void ZvCmTransparency::setAlphaPercent(double alpha)
{
    setAlpha(std::uint8_t(std::lround(std::clamp(alpha, 0.0, 1.0) * 255.0)));
}

void ZvCmTransparency::setAlpha(std::uint8_t alpha)
{
    m_method = kByAlpha;
    m_alpha = alpha;
}

const std::uint32_t *zvcmAcadPalette(unsigned background)
{
    if (!s_paletteAvailable)
        return nullptr;
    return isLight(background) ? lightPalette().data() : darkPalette().data();
}

void zvcmSetPaletteAvailable(bool available)
{
    s_paletteAvailable = available;
}

void zvdbConvertRgbToHsl(const ZvGeVector3d &rgb, ZvGeVector3d &hsl)
{
    const double most = std::max({rgb.x, rgb.y, rgb.z});
    const double least = std::min({rgb.x, rgb.y, rgb.z});
    const double range = most - least;
    const double lightness = (most + least) / 2.0;
    double hue = 0.0;
    double saturation = 0.0;
    if (range > 0.0) {
        saturation = lightness <= 0.5 ? range / (most + least) : range / (2.0 - most - least);
        if (most == rgb.x)
            hue = (rgb.y - rgb.z) / range;
        else if (most == rgb.y)
            hue = 2.0 + (rgb.z - rgb.x) / range;
        else
            hue = 4.0 + (rgb.x - rgb.y) / range;
        hue *= 60.0;
        if (hue < 0.0)
            hue += 360.0;
        if (hue >= 360.0)
            hue = 0.0;
    }
    hsl = {hue, saturation, lightness};
}

void zvdbConvertHslToRgb(const ZvGeVector3d &hsl, ZvGeVector3d &rgb)
{
    double hue = std::fmod(hsl.x, 360.0);
    if (hue < 0.0)
        hue += 360.0;
    const double chroma = (1.0 - std::fabs(2.0 * hsl.z - 1.0)) * hsl.y;
    const double sextant = hue / 60.0;
    const double second = chroma * (1.0 - std::fabs(std::fmod(sextant, 2.0) - 1.0));
    const double least = hsl.z - chroma / 2.0;
    const ZvGeVector3d shares[6] = {{chroma, second, 0}, {second, chroma, 0}, {0, chroma, second},
                                    {0, second, chroma}, {second, 0, chroma}, {chroma, 0, second}};
    rgb = shares[std::min(int(sextant), 5)] + ZvGeVector3d(least, least, least);
}
