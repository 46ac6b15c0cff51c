// SPDX-License-Identifier: MIT
#ifndef ZVPREVIEW_H
#define ZVPREVIEW_H

#include "base/zvarray.h"
#include "base/zvstream.h"

/// The preview embedded in a drawing file. Both pictures empty: none.
struct ZV_EXPORT ZvThumbnailImage
{
    ZvArray<unsigned char> header; ///< The first bytes of the preview's own header.
    ZvArray<unsigned char> bmp; ///< Without file header: starts with 4-byte size, width, height, 2-byte planes and bits.
    ZvArray<unsigned char> unused; ///< Kept for the layout of the record.
    ZvArray<unsigned char> png; ///< A PNG file as it stands.
};

/// Reads the preview of a DWG file of any version that carries one. A null stream and a broken file leave the arrays
/// empty and throw nothing. Sizes that the file claims and does not hold are not believed.
ZV_EXPORT void zvDbGetPreviewBitmap(ZvStreamBuf *stream, ZvThumbnailImage *thumbnail);

#endif
