// SPDX-License-Identifier: MIT
#include "private/zvrasterview.h"

#include <QPixelFormat>

#include <cstring>

bool zvHasRgbAt(const ZvGiRasterImage::tagPixelFormatInfo &format, int red, int green, int blue)
{
    return format.redBits == 8 && format.greenBits == 8 && format.blueBits == 8 && format.redOffset == red
        && format.greenOffset == green && format.blueOffset == blue;
}

bool zvIs32BitsWithAlpha(const ZvGiRasterImage::tagPixelFormatInfo &format)
{
    return format.bitsPerPixel == 32 && format.alphaBits == 8 && format.alphaOffset == 24
        && (zvHasRgbAt(format, 0, 8, 16) || zvHasRgbAt(format, 16, 8, 0));
}

QImage zvRasterView(const ZvGiRasterImage &raster, QImage::Format format)
{
    const std::uint8_t *pixels = raster.scanLines();
    if (!pixels)
        return QImage();
    const int width = int(raster.pixelWidth());
    const int height = int(raster.pixelHeight());
    const quint64 rowSize = raster.scanLineSize();
    const quint64 bitsPerPixel = QImage::toPixelFormat(format).bitsPerPixel();
    if (rowSize >= (raster.pixelWidth() * bitsPerPixel + 7) / 8)
        return QImage(
            pixels, width, height, int(rowSize), format, [](void *) {}, nullptr);
    QImage copy(width, height, format);
    if (copy.isNull())
        return copy;
    copy.fill(0);
    std::memcpy(copy.bits(), pixels, std::size_t(rowSize * raster.pixelHeight()));
    return copy;
}
