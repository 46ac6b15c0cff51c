// SPDX-License-Identifier: MIT
#ifndef ZVCMCOLOR_H
#define ZVCMCOLOR_H

#include "base/zvge3d.h"
#include "base/zvstring.h"

#include <cstdint>

/// Codes of the colour methods. They are the values of "clrMethod" in every colour exchange.
namespace ZvCm {
/// What a colour goes by.
enum ColorMethod {
    kByLayer = 192,
    kByBlock = 193,
    kByColor = 194, ///< true colour
    kByACI = 195, ///< by index
    kByPen = 196,
    kNone = 200,
};
/// Colour indices beside the palette's 1 to 255.
enum { kACIbyBlock = 0, kACIbyLayer = 256, kACInone = 257 };
}

/// Colour in one 32-bit word: blue in bits 0 to 7, green in 8 to 15, red in 16 to 23, method in 24 to 31. Words are
/// compared for equality. The default is true colour black.
class ZV_EXPORT ZvCmEntityColor
{
public:
    ZvCmEntityColor() = default;
    /// \a word as laid out above, method included.
    explicit ZvCmEntityColor(std::uint32_t word) : m_word(word) { }
    /// The method, as it stands in the word: any of 256 numbers.
    ZvCm::ColorMethod colorMethod() const { return ZvCm::ColorMethod(m_word >> 24); }
    /// Keeps the value bits.
    void setColorMethod(ZvCm::ColorMethod method) { m_word = (m_word & 0x00FFFFFFu) | (std::uint32_t(method) << 24); }
    /// By layer 256, by block 0, none 257, whatever the value bits hold; otherwise the low 16 bits.
    std::uint16_t colorIndex() const;
    /// Gives method 195 and keeps the index as it is, 0 and 256 included.
    void setColorIndex(std::uint16_t index);
    /// Gives method 194.
    void setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    /// Of an index colour: the palette's colour. By layer, by block and none: 0.
    std::uint8_t red() const;
    std::uint8_t green() const;
    std::uint8_t blue() const;
    /// The whole word, method included.
    std::uint32_t color() const { return m_word; }
    void setColor(std::uint32_t word) { m_word = word; }
    /// Equal words.
    bool operator==(const ZvCmEntityColor &o) const { return m_word == o.m_word; }
    bool operator!=(const ZvCmEntityColor &o) const { return m_word != o.m_word; }

private:
    std::uint32_t m_word = std::uint32_t(ZvCm::kByColor) << 24;
};

/// A colour as entities, layers and settings hold it. The default is by layer. Every colour has one canonical word, so
/// equality is equality of words (and of the book's names, where there are any).
class ZV_EXPORT ZvCmColor
{
public:
    ZvCmColor() = default;
    /// What the colour goes by.
    ZvCm::ColorMethod colorMethod() const { return m_word.colorMethod(); }
    /// By layer, by block and none make the word canonical; the other methods keep the value bits. Setting "none"
    /// after index 257 leaves the index reading 257.
    void setColorMethod(ZvCm::ColorMethod method);
    /// By layer 256, by block 0, none 257; otherwise the low 16 bits of the word.
    std::uint16_t colorIndex() const { return m_word.colorIndex(); }
    /// 1 to 255 give method 195, 0 by block, 256 by layer, 257 none.
    void setColorIndex(std::uint16_t index);
    /// Of an index colour: the palette's colour. By layer, by block and none: 0.
    std::uint8_t red() const { return m_word.red(); }
    std::uint8_t green() const { return m_word.green(); }
    std::uint8_t blue() const { return m_word.blue(); }
    /// Method 194.
    void setRGB(std::uint8_t red, std::uint8_t green, std::uint8_t blue);
    /// The colour without the book's name.
    ZvCmEntityColor entityColor() const { return m_word; }
    /// The whole word, method included.
    void setColor(std::uint32_t word);
    /// The whole word, method included.
    std::uint32_t color() const { return m_word.color(); }
    /// By index.
    bool isByACI() const { return colorMethod() == ZvCm::kByACI; }
    /// A true colour.
    bool isByColor() const { return colorMethod() == ZvCm::kByColor; }
    /// As the layer has it.
    bool isByLayer() const { return colorMethod() == ZvCm::kByLayer; }
    /// As the block reference has it.
    bool isByBlock() const { return colorMethod() == ZvCm::kByBlock; }
    /// "book$colour" of a colour book, empty otherwise. A change of the colour clears it.
    ZvString bookName() const { return m_bookName; }
    void setBookName(const ZvString &name) { m_bookName = name; }
    /// Equal words and equal names of the book.
    bool operator==(const ZvCmColor &o) const { return m_word == o.m_word && m_bookName == o.m_bookName; }
    bool operator!=(const ZvCmColor &o) const { return !(*this == o); }

private:
    ZvCmEntityColor m_word {std::uint32_t(ZvCm::kByLayer) << 24};
    ZvString m_bookName;
};

/// Transparency as entities and layers hold it. The default is by layer.
class ZV_EXPORT ZvCmTransparency
{
public:
    /// What the transparency goes by.
    enum Method { kByLayer = 0, kByBlock = 1, kByAlpha = 2 };
    /// What the transparency goes by.
    Method method() const { return Method(m_method); }
    /// By alpha starts opaque.
    void setMethod(int method) { m_method = std::uint8_t(method); }
    /// 0 is invisible, 1.0 opaque. Gives method 2.
    void setAlphaPercent(double alpha);
    /// 0 is invisible, 1.0 opaque.
    double alphaPercent() const { return m_alpha / 255.0; }
    /// 0 is invisible, 255 opaque. Setting it gives method 2.
    std::uint8_t alpha() const { return m_alpha; }
    void setAlpha(std::uint8_t alpha);
    /// Equal methods and equal values.
    bool operator==(const ZvCmTransparency &o) const { return m_method == o.m_method && m_alpha == o.m_alpha; }
    bool operator!=(const ZvCmTransparency &o) const { return !(*this == o); }

private:
    std::uint8_t m_method = kByLayer;
    std::uint8_t m_alpha = 255;
};

/// Palette of 256 words 0x00BBGGRR by colour index for a display background (same packing). Entry 0 is never shown;
/// entry 7 is white on a dark background and black on a light one. The table lives as long as the process.
/// Null only after zvcmSetPaletteAvailable(false), a state that some callers survive.
ZV_EXPORT const std::uint32_t *zvcmAcadPalette(unsigned background);
/// False takes the palette away, for tests of what lives without one.
ZV_EXPORT void zvcmSetPaletteAvailable(bool available);

/// \a rgb components 0 to 1; hue in degrees from 0 up to but not 360, saturation and lightness 0 to 1. Grey has hue 0.
ZV_EXPORT void zvdbConvertRgbToHsl(const ZvGeVector3d &rgb, ZvGeVector3d &hsl);
/// The inverse; hue 360 counts as 0.
ZV_EXPORT void zvdbConvertHslToRgb(const ZvGeVector3d &hsl, ZvGeVector3d &rgb);

#endif
