// SPDX-License-Identifier: MIT
#include "private/zvlinetypepicture.h"

#include "zevaqt.h"

#include "utils/zventityimage.h"

namespace {
constexpr double kLineStart = 10.0;
constexpr double kLineHeight = 10.0;
constexpr double kMargin = 10.0; // pixels of the width that the pattern's scale leaves out
constexpr double kNoPattern = 1e-10; // lengths up to here
} // namespace

double zvLinetypePictureScale(double patternLength, double repeat, int width, double celtscale)
{
    const double span = double(width) - kMargin;
    double wanted = repeat * patternLength;
    if (wanted >= -kNoPattern && wanted <= kNoPattern)
        wanted = span;
    return 1.0 / (wanted / span * celtscale);
}

ZvSmartPtr<ZvDbLine> zvMakeLinetypeLine(ZvDbObjectId linetype, double endX, double scale)
{
    const auto line = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
    line->setLinetype(linetype, true);
    line->setStartPoint(ZvGePoint3d(kLineStart, kLineHeight, 0.0));
    line->setEndPoint(ZvGePoint3d(endX, kLineHeight, 0.0));
    line->setLinetypeScale(scale, true);
    return line;
}

void zvSetOpaqueBlack(ZvDbLine &line)
{
    ZvCmColor black;
    black.setRGB(0, 0, 0);
    line.setColor(black);
    ZvCmTransparency opaque;
    opaque.setMethod(ZvCmTransparency::kByAlpha);
    opaque.setAlphaPercent(1.0);
    line.setTransparency(opaque, true);
}

ZvJsonPtr zvLinetypePictureOptions(int width, int height)
{
    const ZvJsonPtr options = ElementValue::createObject(2);
    options->SetDataI("width", width);
    options->SetDataI("height", height);
    options->SetDataI("background", -1); // none
    return options;
}

ZvArrayEx<ZvSmartPtr<ZvDbEntity>> zvLinetypePictureContent(const ZvSmartPtr<ZvDbLine> &line)
{
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> entities;
    entities.append(ZvSmartPtr<ZvDbEntity>(zvqt_queryRequired<ZvDbEntity>(line.get())));
    return entities;
}

ZvSmartPtr<ZvGiRasterImage> zvDrawLinetypeLine(const ZvDbDatabasePtr &database, const ZvSmartPtr<ZvDbLine> &line,
                                               const ZvJsonPtr &options)
{
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> entities = zvLinetypePictureContent(line);
    return zvsiutCreateEntityImage(database, entities, options);
}
