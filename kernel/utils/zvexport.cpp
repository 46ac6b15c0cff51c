// SPDX-License-Identifier: MIT
#include "utils/zvrenderer.h"

#include "db/zvdbentities.h"
#include "db/zvdbstyles.h"
#include "render/gi_painter_sink.h"
#include "render/gi_pdf_sink.h"
#include "render/gi_sheet.h"
#include "utils/zventityimage.h"
#include "utils/zvpage.h"

#include <QBuffer>
#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;
constexpr double kMillimetresPerInch = 25.4;
constexpr double kSheetMargin = 10.0;
constexpr int kPictureSide = 1920; ///< Longer side of a picture whose size nobody asked for.
constexpr int kMaxPictureSide = 16384;
constexpr double kPictureMargin = 0.02; ///< Of the drawing's size.
constexpr unsigned kPaperColor = 0xFFFFFFFF;
constexpr double kFinestPrinted = 72.0 / 600.0; ///< Points.
constexpr double kHairline = 0.05; ///< Millimetres.

GiSheet sheetOf(ZvDbDatabase *database)
{
    GiSheet sheet;
    sheet.block = database->currentSpaceId();
    if (database->tilemode()) {
        giFit(giVisibleExtents(database, sheet.block), kSheetMargin, sheet);
        return sheet;
    }
    const ZvGiPage page = zvgiReadPage(database, database->currentLayoutId());
    sheet.isPaper = true;
    sheet.block = page.block.isNull() ? database->paperSpaceId() : page.block;
    sheet.width = page.width;
    sheet.height = page.height;
    sheet.unit = page.unit;
    sheet.center = ZvGePoint2d(page.corner.x + (page.width / 2 - page.marginLeft) / page.unit,
                               page.corner.y + (page.height / 2 - page.marginBottom) / page.unit);
    return sheet;
}

GiSheetDrawing::Progress progressOf(ZvDbProgress *progress)
{
    return [progress](double fraction) { return !progress || progress->progress(fraction); };
}

Zv::ErrorStatus exportPdf(QIODevice &file, ZvDbDatabase *database, const GiSheet &sheet, ZvDbProgress *progress)
{
    GiPdfSink sink(file, QSizeF(sheet.width, sheet.height) * kPointsPerMillimetre);
    GiTarget target;
    target.sink = &sink;
    target.resolution = kFinestPrinted;
    target.minimumWidth = kHairline * kPointsPerMillimetre;
    target.nativeArcs = true;
    if (!GiSheetDrawing(database, sheet).draw(giPaperOptions(true), target, kPointsPerMillimetre, progressOf(progress)))
        return Zv::eCancelled;
    return sink.finish() ? Zv::eOk : Zv::eFileAccess;
}

Zv::ErrorStatus exportSvg(QIODevice &file, ZvDbDatabase *database, const GiSheet &sheet, ZvDbProgress *progress)
{
    // Tenths of a millimetre: the generator writes few digits behind the point.
    constexpr double kScale = 10.0;
    QSvgGenerator generator;
    // The generator does not tell whether a device took all.
    QBuffer bytes;
    generator.setOutputDevice(&bytes);
    generator.setResolution(int(std::lround(kScale * kMillimetresPerInch)));
    generator.setSize(QSize(int(std::lround(sheet.width * kScale)), int(std::lround(sheet.height * kScale))));
    generator.setViewBox(QRectF(0.0, 0.0, sheet.width * kScale, sheet.height * kScale));
    QPainter painter(&generator);
    painter.fillRect(generator.viewBoxF(), Qt::white);
    bool isWhole = false;
    {
        GiPainterSink sink(painter, true, false);
        GiTarget target;
        target.sink = &sink;
        target.resolution = kFinestPrinted / kPointsPerMillimetre * kScale;
        target.minimumWidth = kHairline * kScale;
        isWhole = GiSheetDrawing(database, sheet).draw(giPaperOptions(true), target, kScale, progressOf(progress));
    }
    painter.end();
    if (!isWhole)
        return Zv::eCancelled;
    return file.write(bytes.data()) == bytes.size() ? Zv::eOk : Zv::eFileAccess;
}

Zv::ErrorStatus exportPng(QIODevice &file, ZvDbDatabase *database, GiSheet sheet, int width, int height,
                          ZvDbProgress *progress)
{
    if (width < 1 || height < 1) {
        double wide = sheet.width;
        double high = sheet.height;
        if (!sheet.isPaper) {
            const ZvGeExtents3d extents = giVisibleExtents(database, sheet.block);
            wide = extents.isEmpty() ? sheet.width : extents.maximum.x - extents.minimum.x;
            high = extents.isEmpty() ? sheet.height : extents.maximum.y - extents.minimum.y;
        }
        // Never so narrow that nothing can be seen.
        const double ratio = std::clamp(wide > 0.0 && high > 0.0 ? wide / high : 1.0, 0.25, 4.0);
        if (width < 1 && height < 1)
            (ratio >= 1.0 ? width : height) = kPictureSide;
        if (height < 1)
            height = std::max(1, int(std::lround(width / ratio)));
        else if (width < 1)
            width = std::max(1, int(std::lround(height * ratio)));
    }
    if (width > kMaxPictureSide || height > kMaxPictureSide)
        return Zv::eInvalidInput;
    QImage image(width, height, QImage::Format_RGB32);
    if (image.isNull())
        return Zv::eInvalidInput;

    // The sheet takes the picture's shape: paper is shown as a whole, model space fills the picture.
    const ZvGeExtents3d extents = sheet.isPaper ? ZvGeExtents3d() : giVisibleExtents(database, sheet.block);
    const double shape = double(width) / height;
    if (sheet.width / sheet.height < shape)
        sheet.width = sheet.height * shape;
    else
        sheet.height = sheet.width / shape;
    if (!sheet.isPaper)
        giFit(extents, kPictureMargin * std::min(sheet.width, sheet.height), sheet);

    ZvGiRenderer::Options options;
    options.background = sheet.isPaper ? kPaperColor : zvsiutDisplayBackground();
    options.lineWeights = database->lineWeightDisplay();
    image.fill(QColor(int(options.background & 0xFF), int((options.background >> 8) & 0xFF),
                      int((options.background >> 16) & 0xFF)));
    QPainter painter(&image);
    bool isWhole = false;
    {
        GiPainterSink sink(painter, true);
        GiTarget target;
        target.sink = &sink;
        isWhole = GiSheetDrawing(database, sheet).draw(options, target, height / sheet.height, progressOf(progress));
    }
    painter.end();
    if (!isWhole)
        return Zv::eCancelled;
    return image.save(&file, "PNG") ? Zv::eOk : Zv::eFileAccess;
}

} // namespace

Zv::ErrorStatus zvgiExport(ZvDbDatabase *database, const ZvString &path, ZvString &message, int width, int height,
                           ZvDbProgress *progress)
{
    message = ZvString();
    if (!database) {
        message = "There is no drawing to export.";
        return Zv::eNoDatabase;
    }
    const QString fileName = QString::fromWCharArray(path.wstr(), path.length());
    const QString ending = fileName.mid(fileName.lastIndexOf(QLatin1Char('.')) + 1).toLower();
    const bool isPng = ending == QLatin1String("png");
    const bool isPdf = ending == QLatin1String("pdf");
    if (!isPng && !isPdf && ending != QLatin1String("svg")) {
        message = ZvString("Pictures are written as .png, .pdf or .svg, not as ") + path;
        return Zv::eInvalidInput;
    }
    // The file appears under its name when it is whole.
    QSaveFile file(fileName);
    if (!file.open(QIODevice::WriteOnly)) {
        message = path + ZvString(": ") + ZvString(file.errorString().toUtf8().constData());
        return Zv::eFileAccess;
    }
    const ZvDbDatabase::TransientReads onePass(*database);
    const GiSheet sheet = sheetOf(database);
    Zv::ErrorStatus status = isPng ? exportPng(file, database, sheet, width, height, progress)
        : isPdf                    ? exportPdf(file, database, sheet, progress)
                                   : exportSvg(file, database, sheet, progress);
    // Flushed first: the file forgets a full disk that shows itself in its last bytes only.
    if (status == Zv::eOk && !(file.flush() && file.commit()))
        status = Zv::eFileAccess;
    if (status == Zv::eCancelled)
        message = "The export was cancelled.";
    else if (status == Zv::eInvalidInput)
        message = "The picture would be too large.";
    else if (status != Zv::eOk)
        message = path + ZvString(": ") + ZvString(file.errorString().toUtf8().constData());
    return status;
}
