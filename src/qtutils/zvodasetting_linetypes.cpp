// SPDX-License-Identifier: MIT
// The facade's pictures of line types.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvtablewalk.h"
#include "zevaqt.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "utils/zventityimage.h"

namespace {

constexpr double kLineStart = 10.0;
constexpr double kLineEnd = 100.0;
constexpr double kLineHeight = 10.0;
constexpr double kSpanMargin = 10.0; // pixels of the width that the pattern's scale leaves out
constexpr double kPatternSpan = 2.5; // of the pattern's length
constexpr double kNoPattern = 1e-10; // lengths up to here

/// Scale at which the number of repeats hangs on the picture's width alone; the ratio is 1 without a pattern.
double linetypeScale(double patternLength, int width, double celtscale)
{
    const double span = double(width) - kSpanMargin;
    double wanted = kPatternSpan * patternLength;
    if (wanted >= -kNoPattern && wanted <= kNoPattern)
        wanted = span;
    return 1.0 / (wanted / span * celtscale);
}

/// A line of no drawing.
ZvSmartPtr<ZvDbLine> makeLine(ZvDbObjectId linetype, double scale)
{
    const auto line = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
    line->setLinetype(linetype, true);
    line->setStartPoint(ZvGePoint3d(kLineStart, kLineHeight, 0.0));
    line->setEndPoint(ZvGePoint3d(kLineEnd, kLineHeight, 0.0));
    line->setLinetypeScale(scale, true);
    return line;
}

void setOpaqueBlack(ZvDbLine &line)
{
    ZvCmColor black;
    black.setRGB(0, 0, 0);
    line.setColor(black);
    ZvCmTransparency opaque;
    opaque.setMethod(ZvCmTransparency::kByAlpha);
    opaque.setAlphaPercent(1.0);
    line.setTransparency(opaque, true);
}

ZvSmartPtr<ZvGiRasterImage> drawLine(const ZvDbDatabasePtr &database, const ZvSmartPtr<ZvDbLine> &line, int width,
                                     int height)
{
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> entities;
    entities.append(ZvSmartPtr<ZvDbEntity>(zvqt_queryRequired<ZvDbEntity>(line.get())));
    const ZvJsonPtr options = ElementValue::createObject(2);
    options->SetDataI("width", width);
    options->SetDataI("height", height);
    options->SetDataI("background", -1); // none
    return zvsiutCreateEntityImage(database, entities, options);
}

} // namespace

void ZevaUISetting::getLineTypeInfo(
    int width, int height, std::function<void(ZvSmartPtr<ZvGiRasterImage> &, ZvString &, ZvDbObjectId &)> &&callback)
{
    const ZvDbDatabasePtr database(curDatabase());
    if (!database)
        return;
    zvWalkTable(database->linetypeTableId(), [&](ZvDbObjectId id) {
        ZvString name;
        double patternLength = 0.0;
        {
            const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
            if (!record || record->isDependent())
                return true;
            name = record->name();
            patternLength = record->patternLength();
        }
        const ZvSmartPtr<ZvDbLine> line = makeLine(id, linetypeScale(patternLength, width, database->celtscale()));
        setOpaqueBlack(*line);
        ZvSmartPtr<ZvGiRasterImage> image = drawLine(database, line, width, height);
        if (callback)
            callback(image, name, id);
        return true;
    });
}

ZvDbObjectId ZevaUISetting::getLineTypeRasterImage(const ZvString &name, int width, int height,
                                                   ZvSmartPtr<ZvGiRasterImage> &image)
{
    const ZvDbDatabasePtr database(zvCurrentDocumentDatabase());
    if (!database || name.isEmpty() || width < 1 || height < 1)
        return ZvDbObjectId();
    ZvDbObjectId found;
    zvWalkRecords<ZvDbLinetypeTableRecord>(database->linetypeTableId(), [&](const ZvDbLinetypeTableRecord &record) {
        if (record.isDependent() || record.name().compareNoCase(name) != 0)
            return true;
        found = record.objectId();
        // No colour, unlike the list of all: a single picture has the renderer's standard one.
        image = drawLine(database, makeLine(found, linetypeScale(record.patternLength(), width, database->celtscale())),
                         width, height);
        return false;
    });
    return found;
}
