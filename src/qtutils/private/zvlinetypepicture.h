// SPDX-License-Identifier: MIT
#ifndef ZVLINETYPEPICTURE_H
#define ZVLINETYPEPICTURE_H

#include "base/zvjson.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "utils/zvraster.h"

// The parts of which pictures of line types are made: a line of no drawing, from (10, 10) on, that has the line type.

/// Scale at which the pattern repeats as often in a picture of this width whatever its length: \a repeat pattern
/// lengths are the width but for a margin of 10 pixels. One repeat without a pattern.
double zvLinetypePictureScale(double patternLength, double repeat, int width, double celtscale);
/// A line to \a endX, in drawing units.
ZvSmartPtr<ZvDbLine> zvMakeLinetypeLine(ZvDbObjectId linetype, double endX, double scale);
void zvSetOpaqueBlack(ZvDbLine &line);
/// What the renderer is told of a picture: its size, and no background.
ZvJsonPtr zvLinetypePictureOptions(int width, int height);
/// What the renderer draws of it.
ZvArrayEx<ZvSmartPtr<ZvDbEntity>> zvLinetypePictureContent(const ZvSmartPtr<ZvDbLine> &line);
/// May be null.
ZvSmartPtr<ZvGiRasterImage> zvDrawLinetypeLine(const ZvDbDatabasePtr &database, const ZvSmartPtr<ZvDbLine> &line,
                                               const ZvJsonPtr &options);

#endif
