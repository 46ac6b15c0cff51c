// SPDX-License-Identifier: MIT
#include "private/zvrastercopy.h"

#include "private/zvqtcolor.h"
#include "private/zvrasterview.h"

#include <QVector>

#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>

namespace {

using PixelFormat = ZvGiRasterImage::tagPixelFormatInfo;
/// Writes one row of the image from one of the raster.
using RowConversion = void (*)(uchar *to, const uchar *from, std::size_t width);
constexpr RowConversion kCopied = nullptr; ///< The raster writes its rows into the image itself.

void spreadNibbles(uchar *to, const uchar *from, std::size_t width)
{
    for (std::size_t x = 0; x < width; ++x)
        to[x] = x % 2 == 0 ? from[x / 2] >> 4 : from[x / 2] & 0x0F;
}

void swapRedAndBlue(uchar *to, const uchar *from, std::size_t width)
{
    for (std::size_t x = 0; x < width; ++x, to += 4, from += 4) {
        to[0] = from[2];
        to[1] = from[1];
        to[2] = from[0];
        to[3] = from[3];
    }
}

/// Callers' pictures of 16 bits come out right by these masks, which take the components of 5 bits from the upper end
/// of the pixel and lay them out in reverse; what the raster's format says about its bits would give other colours.
void rearrange16Bits(uchar *to, const uchar *from, std::size_t width)
{
    for (std::size_t x = 0; x < width; ++x) {
        quint16 pixel;
        std::memcpy(&pixel, from + 2 * x, sizeof pixel);
        pixel = quint16(((pixel & 0x7C0) >> 1) | ((pixel & 0x3E) << 9) | (pixel >> 11));
        std::memcpy(to + 2 * x, &pixel, sizeof pixel);
    }
}

bool hasOffsets(const PixelFormat &format, int red, int green, int blue)
{
    return format.redOffset == red && format.greenOffset == green && format.blueOffset == blue;
}

bool is24RedFirst(const PixelFormat &format)
{
    return hasOffsets(format, 0, 8, 16);
}

bool is24BlueFirst(const PixelFormat &format)
{
    return hasOffsets(format, 16, 8, 0);
}

bool is32RedFirst(const PixelFormat &format)
{
    return zvIs32BitsWithAlpha(format) && format.redOffset == 0;
}

bool is32BlueFirst(const PixelFormat &format)
{
    return zvIs32BitsWithAlpha(format) && format.redOffset == 16;
}

bool is555(const PixelFormat &format)
{
    return hasOffsets(format, 10, 5, 0) && format.redBits == 5 && format.greenBits == 5 && format.blueBits == 5;
}

bool isIndexed(const PixelFormat &)
{
    return true;
}

struct Conversion
{
    unsigned depth;
    bool (*fits)(const PixelFormat &format);
    QImage::Format format;
    int bitsPerPixel; ///< Of the image; 0: its rows are as long as the raster's.
    RowConversion convert;
};

constexpr Conversion kConversions[] = {
    {1, isIndexed, QImage::Format_Mono, 0, kCopied},
    {8, isIndexed, QImage::Format_Indexed8, 0, kCopied},
    {4, isIndexed, QImage::Format_Indexed8, 8, spreadNibbles},
    {24, is24BlueFirst, QImage::Format_BGR888, 0, kCopied},
    {24, is24RedFirst, QImage::Format_RGB888, 0, kCopied},
    {32, is32RedFirst, QImage::Format_RGBA8888, 0, kCopied},
    {32, is32BlueFirst, QImage::Format_RGBA8888, 32, swapRedAndBlue},
    {16, is555, QImage::Format_RGB555, 16, rearrange16Bits},
};

const Conversion *conversionOf(const ZvGiRasterImage &raster)
{
    const auto *found
        = std::find_if(std::begin(kConversions), std::end(kConversions), [&raster](const Conversion &conversion) {
              return conversion.depth == raster.colorDepth() && conversion.fits(raster.pixelFormat());
          });
    return found == std::end(kConversions) ? nullptr : found;
}

/// Padded with black: a pixel may name more colours than the palette has.
QVector<QRgb> colorTable(const ZvGiRasterImage &raster, QImage::Format format)
{
    QVector<QRgb> colors(format == QImage::Format_Mono ? 2 : 256, 0xFF000000);
    const auto count = std::min(raster.numColors(), std::uint32_t(colors.size()));
    for (std::uint32_t i = 0; i < count; ++i)
        colors[int(i)] = zvPackedToQColor(raster.color(i)).rgb();
    return colors;
}

} // namespace

QImage zvRasterCopyUpsideDown(const ZvGiRasterImage &raster)
{
    const std::size_t width = raster.pixelWidth();
    const std::size_t height = raster.pixelHeight();
    const std::size_t rowSize = raster.scanLineSize();
    const Conversion *conversion = conversionOf(raster);
    constexpr std::size_t kMost = std::numeric_limits<int>::max();
    if (!conversion || width > kMost || height > kMost || rowSize > kMost
        || rowSize < (width * conversion->depth + 7) / 8)
        return QImage();
    const std::size_t stride = conversion->bitsPerPixel == 0
        ? rowSize
        : ZvGiRasterImage::calcBMPScanLineSize(std::uint32_t(width), conversion->bitsPerPixel);
    if (stride * height > kMost)
        return QImage();
    using Buffer = std::unique_ptr<uchar, decltype(&std::free)>;
    Buffer pixels(static_cast<uchar *>(std::malloc(stride * height)), std::free);
    const Buffer row(static_cast<uchar *>(std::malloc(rowSize)), std::free);
    if (!pixels || !row)
        return QImage();
    uchar *to = pixels.get();
    for (std::size_t y = height; y-- > 0; to += stride) {
        raster.getScanLine(std::uint32_t(y), conversion->convert ? row.get() : to);
        if (conversion->convert)
            conversion->convert(to, row.get(), width);
    }
    QImage image(pixels.get(), int(width), int(height), int(stride), conversion->format, std::free, pixels.get());
    if (image.isNull())
        return image;
    pixels.release(); // the image's now
    if (image.depth() <= 8)
        image.setColorTable(colorTable(raster, conversion->format));
    return image;
}
