// SPDX-License-Identifier: MIT
#ifndef ZVQTRASTERIMAGE_H
#define ZVQTRASTERIMAGE_H

#include "utils/zvraster.h"

#include <QImage>

/// \file
/// The kernel's raster images and Qt's. Neither conversion changes a pixel: both take the bytes as they lie, top row
/// first.

/// The pixels of \a raster as an image. It is built on them without a copy, so the raster must outlive the image and
/// all that shares its pixels (QPixmap::fromImage() too): keep the raster, or take QImage::copy(). Alpha is not shown;
/// Qt wants it to be 255 all the same.
///
/// | bits per pixel | red, green, blue at bit | format                  |
/// |----------------|-------------------------|-------------------------|
/// | 24             | 16, 8, 0                | QImage::Format_BGR888   |
/// | 32, with alpha | 0, 8, 16                | QImage::Format_RGBX8888 |
/// | 32, with alpha | 16, 8, 0                | QImage::Format_RGBX8888 |
/// | anything else  |                         | QImage::Format_RGB888   |
///
/// So true colours come of 24 bits in either order and of 32 bits with red first; 32 bits with blue first show red and
/// blue exchanged, and what else there is shows as coloured noise. A raster with fewer than three bytes a pixel is the
/// one exception to "without a copy": its bytes are copied and the rest is black, since nothing is read beyond its end.
///
/// A null image for a null raster and for one that does not show its pixel block.
ZV_EXPORT QImage zvutZvGiRasterImage2QImage(ZvSmartPtr<ZvGiRasterImage> raster);

/// A raster with a copy of the pixels of \a image, of its width, height and depth. Palette and order of the colours are
/// not carried over: 8 bits become greys, 24 and 32 bits are taken for red first, 16 bits for 5-5-5. So true colours
/// come of QImage::Format_RGB888, QImage::Format_RGBX8888 and QImage::Format_RGBA8888; convert to one of these before.
///
/// Null for a null image and for one of 64 bits per pixel.
ZV_EXPORT ZvSmartPtr<ZvGiRasterImage> zvutQImage2ZvGiRasterImage(const QImage &image);

#endif
