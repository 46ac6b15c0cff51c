// SPDX-License-Identifier: MIT
#include "zvqtrasterimage.h"

#include "private/zvrasterview.h"

QImage zvutZvGiRasterImage2QImage(ZvSmartPtr<ZvGiRasterImage> raster)
{
    if (!raster)
        return QImage();
    const ZvGiRasterImage::tagPixelFormatInfo format = raster->pixelFormat();
    if (format.bitsPerPixel == 24 && zvHasRgbAt(format, 16, 8, 0))
        return zvRasterView(*raster, QImage::Format_BGR888);
    return zvRasterView(*raster, zvIs32BitsWithAlpha(format) ? QImage::Format_RGBX8888 : QImage::Format_RGB888);
}

ZvSmartPtr<ZvGiRasterImage> zvutQImage2ZvGiRasterImage(const QImage &image)
{
    if (image.isNull())
        return nullptr;
    // The kernel takes rows padded to four bytes; an image on somebody else's pixels may have other rows.
    const auto rowSize = ZvGiRasterImage::calcBMPScanLineSize(std::uint32_t(image.width()), image.depth());
    const QImage padded = image.bytesPerLine() == int(rowSize) ? image : image.copy();
    return zvutImageWrap(padded.constBits(), std::uint32_t(padded.width()), std::uint32_t(padded.height()),
                         padded.depth());
}
