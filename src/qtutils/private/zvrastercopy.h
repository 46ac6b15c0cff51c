// SPDX-License-Identifier: MIT
#ifndef ZVRASTERCOPY_H
#define ZVRASTERCOPY_H

#include "utils/zvraster.h"

#include <QImage>

/// A copy of \a raster with its last row on top, as a canvas shows it. Null for a pixel format that canvases do not
/// know.
QImage zvRasterCopyUpsideDown(const ZvGiRasterImage &raster);

#endif
