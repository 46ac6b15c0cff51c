// SPDX-License-Identifier: MIT
// The facade's pictures of line types.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvlinetypepicture.h"
#include "private/zvtablewalk.h"

#include "db/zvdbrecords.h"
#include "utils/zventityimage.h"

namespace {
constexpr double kLineEnd = 100.0;
constexpr double kRepeat = 2.5;
} // namespace

void ZevaUISetting::getLineTypeInfo(
    int width, int height, std::function<void(ZvSmartPtr<ZvGiRasterImage> &, ZvString &, ZvDbObjectId &)> &&callback)
{
    const ZvDbDatabasePtr database(curDatabase());
    if (!database)
        return;
    // The renderer leaves options and line as they are, and the line fits every line type but for type and scale.
    const ZvJsonPtr options = zvLinetypePictureOptions(width, height);
    const ZvSmartPtr<ZvDbLine> line = zvMakeLinetypeLine(database->byLayerLinetype(), kLineEnd, 1.0);
    zvSetOpaqueBlack(*line);
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> content = zvLinetypePictureContent(line);
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
        line->setLinetype(id, true);
        const double scale = zvLinetypePictureScale(patternLength, kRepeat, width, database->celtscale());
        if (line->setLinetypeScale(scale, true) != Zv::eOk)
            line->setLinetypeScale(1.0, true); // as a line of its own would have it, not that of the line type before
        ZvSmartPtr<ZvGiRasterImage> image = zvsiutCreateEntityImage(database, content, options);
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
        const double scale = zvLinetypePictureScale(record.patternLength(), kRepeat, width, database->celtscale());
        image = zvDrawLinetypeLine(database, zvMakeLinetypeLine(found, kLineEnd, scale),
                                   zvLinetypePictureOptions(width, height));
        return false;
    });
    return found;
}
