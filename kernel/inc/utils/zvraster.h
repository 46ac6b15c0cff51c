// SPDX-License-Identifier: MIT
#ifndef ZVRASTER_H
#define ZVRASTER_H

#include "base/zvrxobject.h"
#include "base/zvsmartptr.h"

#include <cstdint>
#include <vector>

/// A picture in memory. Rows lie top row first, each padded to a multiple of four bytes.
class ZV_EXPORT ZvGiRasterImage : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvGiRasterImage)
public:
    /// Layout of a pixel, read as a little-endian number: position and size of each component in bits.
    struct tagPixelFormatInfo
    {
        std::uint8_t redOffset = 0; ///< Position of red, from the lowest bit.
        std::uint8_t redBits = 0; ///< Number of bits of red.
        std::uint8_t greenOffset = 0; ///< Position of green.
        std::uint8_t greenBits = 0; ///< Number of bits of green.
        std::uint8_t blueOffset = 0; ///< Position of blue.
        std::uint8_t blueBits = 0; ///< Number of bits of blue.
        std::uint8_t alphaOffset = 0; ///< Position of alpha.
        std::uint8_t alphaBits = 0; ///< Number of bits of alpha; 0 without one.
        std::uint8_t bitsPerPixel = 0; ///< All in all, padding included.
    };
    /// In pixels.
    virtual std::uint32_t pixelWidth() const = 0;
    virtual std::uint32_t pixelHeight() const = 0;
    /// Bits per pixel: 1, 4, 8, 16, 24 or 32.
    virtual std::uint32_t colorDepth() const = 0;
    /// Entries of the palette, 0 for true colour.
    virtual std::uint32_t numColors() const = 0;
    /// Packed with red in bits 0 to 7, green in 8 to 15, blue in 16 to 23; 0 out of range.
    virtual std::uint32_t color(std::uint32_t index) const = 0;
    /// Bytes of a row.
    virtual std::uint32_t scanLineSize() const = 0;
    /// Copies a row, 0 being the top one. Nothing out of range.
    virtual void getScanLine(std::uint32_t row, std::uint8_t *to) const = 0;
    /// The pixel block as it lies. May be null; then only getScanLine() answers.
    virtual const std::uint8_t *scanLines() const = 0;
    /// Layout of a pixel; of no meaning with a palette.
    virtual tagPixelFormatInfo pixelFormat() const = 0;

    /// Bytes of a row of \a width pixels, padded to four.
    static std::uint32_t calcBMPScanLineSize(std::uint32_t width, int bitsPerPixel);
    /// The formats that show true colours everywhere: red first in memory.
    static tagPixelFormatInfo rgb24();
    /// 24 bits, blue first in memory.
    static tagPixelFormatInfo bgr24();
    /// 32 bits with alpha, red first in memory.
    static tagPixelFormatInfo rgba32();
    /// 32 bits with alpha, blue first in memory.
    static tagPixelFormatInfo bgra32();
    /// 16 bits, five each.
    static tagPixelFormatInfo rgb555();
    /// Format that belongs to a depth when none is told: 24 red first, 32 red first with alpha, 16 is 5-5-5.
    static tagPixelFormatInfo formatOfDepth(int bitsPerPixel);
};
/// Counted pointer to a raster image.
typedef ZvSmartPtr<ZvGiRasterImage> ZvGiRasterImagePtr;

/// A raster with a copy of these pixels. \a palette is packed as above and may be null; without a \a format it is
/// derived from the depth. Null for a size of 0, a depth that is none, or null bits.
ZV_EXPORT ZvGiRasterImagePtr zvutImageWrap(const void *bits, std::uint32_t width, std::uint32_t height, int depth,
                                           const std::uint32_t *palette = nullptr, int paletteCount = 0,
                                           const ZvGiRasterImage::tagPixelFormatInfo *format = nullptr);

/// Record of the last picture made for an entity list; part of ZvLastImageInfoManagerSvr.
class ZV_EXPORT ZvLastImageInfo : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvLastImageInfo)
public:
    ZvGiRasterImagePtr image; ///< The picture.
    /// Its size in pixels.
    int width = 0;
    int height = 0;
};

#endif
