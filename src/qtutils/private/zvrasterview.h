// SPDX-License-Identifier: MIT
#ifndef ZVRASTERVIEW_H
#define ZVRASTERVIEW_H

#include "utils/zvraster.h"

#include <QImage>

/// Three components of 8 bits each at these bits.
bool zvHasRgbAt(const ZvGiRasterImage::tagPixelFormatInfo &format, int red, int green, int blue);
/// 32 bits with alpha in the highest byte, and red, green and blue below it from either end.
bool zvIs32BitsWithAlpha(const ZvGiRasterImage::tagPixelFormatInfo &format);

/// An image of \a format, of 24 or 32 bits, on the pixels of \a raster, which must outlive it. Where the pixels are too
/// few for the format, a copy of them filled up with black. Null where the raster does not show its pixels.
QImage zvRasterView(const ZvGiRasterImage &raster, QImage::Format format);

#endif
