// SPDX-License-Identifier: MIT
#ifndef ZVENTITYIMAGE_H
#define ZVENTITYIMAGE_H

#include "base/zvarray.h"
#include "base/zvjson.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentity.h"
#include "utils/zvraster.h"

/// A picture of these entities, fitted to its size: 32 bits a pixel, red first. The entities may belong to no database.
/// Null for a size below 1 or above 16384; without entities or extents the plain background. Entities and records are
/// only read, and may be open for read. Options, all optional: "width" and "height" in pixels (default 100), "background"
/// as a signed 32-bit packed colour (default -1: opaque white). Other keys are ignored; the tree is not changed.
ZV_EXPORT ZvSmartPtr<ZvGiRasterImage> zvsiutCreateEntityImage(ZvDbDatabasePtr database,
                                                              ZvArrayEx<ZvSmartPtr<ZvDbEntity>> &entities,
                                                              ZvJsonPtr options);

/// Number of pictures drawn by zvsiutCreateEntityImage() so far: a picture that was kept is not counted.
ZV_EXPORT std::uint64_t zvsiutEntityImagesDrawn();

/// The palette in force for the display, packed like zvcmAcadPalette(); by the background set below. Never null.
ZV_EXPORT const std::uint32_t *zvsiutCurPalette();
/// Background of the drawing views, packed 0x00BBGGRR.
ZV_EXPORT void zvsiutSetDisplayBackground(unsigned background);
/// What was set last.
ZV_EXPORT unsigned zvsiutDisplayBackground();

#endif
