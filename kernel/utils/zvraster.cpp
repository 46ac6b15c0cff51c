// SPDX-License-Identifier: MIT
#include "utils/zvraster.h"

#include <algorithm>
#include <cstring>
#include <new>

ZVRX_DEFINE_MEMBERS(ZvGiRasterImage, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvLastImageInfo, ZvRxObject)

namespace {

bool isDepth(int depth)
{
    return depth == 1 || depth == 4 || depth == 8 || depth == 16 || depth == 24 || depth == 32;
}

/// A picture that owns its pixels.
class MemoryRaster : public ZvGiRasterImage
{
public:
    MemoryRaster(const void *bits, std::uint32_t width, std::uint32_t height, const tagPixelFormatInfo &format,
                 int depth, std::vector<std::uint32_t> palette)
        : m_width(width), m_height(height), m_depth(std::uint32_t(depth)),
          m_scanLineSize(calcBMPScanLineSize(width, depth)), m_format(format), m_palette(std::move(palette))
    {
        const auto *first = static_cast<const std::uint8_t *>(bits);
        m_pixels.assign(first, first + std::size_t(m_scanLineSize) * height);
    }

    std::uint32_t pixelWidth() const override { return m_width; }
    std::uint32_t pixelHeight() const override { return m_height; }
    std::uint32_t colorDepth() const override { return m_depth; }
    std::uint32_t numColors() const override { return std::uint32_t(m_palette.size()); }
    std::uint32_t color(std::uint32_t index) const override { return index < m_palette.size() ? m_palette[index] : 0; }
    std::uint32_t scanLineSize() const override { return m_scanLineSize; }
    void getScanLine(std::uint32_t row, std::uint8_t *to) const override
    {
        if (row < m_height && to)
            std::memcpy(to, m_pixels.data() + std::size_t(row) * m_scanLineSize, m_scanLineSize);
    }
    const std::uint8_t *scanLines() const override { return m_pixels.data(); }
    tagPixelFormatInfo pixelFormat() const override { return m_format; }

private:
    std::uint32_t m_width;
    std::uint32_t m_height;
    std::uint32_t m_depth;
    std::uint32_t m_scanLineSize;
    tagPixelFormatInfo m_format;
    std::vector<std::uint32_t> m_palette;
    std::vector<std::uint8_t> m_pixels;
};

/// The palette that is given; greys from black to white where a picture that needs one comes without.
std::vector<std::uint32_t> paletteFor(int depth, const std::uint32_t *palette, int count)
{
    std::vector<std::uint32_t> colors;
    if (depth > 8)
        return colors;
    const int room = 1 << depth;
    if (palette && count > 0) {
        colors.assign(palette, palette + std::min(count, room));
        return colors;
    }
    for (int i = 0; i < room; ++i)
        colors.push_back(std::uint32_t(i * 255 / (room - 1)) * 0x010101u);
    return colors;
}

} // namespace

std::uint32_t ZvGiRasterImage::calcBMPScanLineSize(std::uint32_t width, int bitsPerPixel)
{
    return std::uint32_t((std::uint64_t(width) * std::uint32_t(bitsPerPixel) + 31) / 32 * 4);
}

ZvGiRasterImage::tagPixelFormatInfo ZvGiRasterImage::rgb24()
{
    return {0, 8, 8, 8, 16, 8, 0, 0, 24};
}

ZvGiRasterImage::tagPixelFormatInfo ZvGiRasterImage::bgr24()
{
    return {16, 8, 8, 8, 0, 8, 0, 0, 24};
}

ZvGiRasterImage::tagPixelFormatInfo ZvGiRasterImage::rgba32()
{
    return {0, 8, 8, 8, 16, 8, 24, 8, 32};
}

ZvGiRasterImage::tagPixelFormatInfo ZvGiRasterImage::bgra32()
{
    return {16, 8, 8, 8, 0, 8, 24, 8, 32};
}

ZvGiRasterImage::tagPixelFormatInfo ZvGiRasterImage::rgb555()
{
    return {10, 5, 5, 5, 0, 5, 0, 0, 16};
}

ZvGiRasterImage::tagPixelFormatInfo ZvGiRasterImage::formatOfDepth(int bitsPerPixel)
{
    switch (bitsPerPixel) {
    case 16:
        return rgb555();
    case 24:
        return rgb24();
    case 32:
        return rgba32();
    }
    tagPixelFormatInfo indexed;
    indexed.bitsPerPixel = std::uint8_t(bitsPerPixel);
    return indexed;
}

ZvGiRasterImagePtr zvutImageWrap(const void *bits, std::uint32_t width, std::uint32_t height, int depth,
                                 const std::uint32_t *palette, int paletteCount,
                                 const ZvGiRasterImage::tagPixelFormatInfo *format)
{
    if (!bits || width == 0 || height == 0 || !isDepth(depth))
        return nullptr;
    // A row of more bytes than its size field can tell is no picture.
    if (std::uint64_t(width) * std::uint32_t(depth) / 8 >= 0xFFFFFFFCu)
        return nullptr;
    try {
        return ZvGiRasterImagePtr::adopt(new ZvRxObjectImpl<MemoryRaster>(
            bits, width, height, format ? *format : ZvGiRasterImage::formatOfDepth(depth), depth,
            paletteFor(depth, palette, paletteCount)));
    } catch (const std::bad_alloc &) {
        return nullptr;
    }
}
