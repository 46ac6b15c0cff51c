// SPDX-License-Identifier: MIT
#include "utils/zvrenderer.h"

#include "db/zvdbentities.h"
#include "db/zvdbstyles.h"
#include "render/gi_drawer.h"
#include "render/gi_painter_sink.h"
#include "render/gi_pdf_sink.h"
#include "utils/zventityimage.h"

#include <QImage>
#include <QPainter>
#include <QSaveFile>
#include <QSvgGenerator>

#include <algorithm>
#include <cmath>

namespace {

constexpr double kPointsPerMillimetre = 72.0 / 25.4;
constexpr double kMillimetresPerInch = 25.4;
// A3 across: the sheet of model space, and of layouts that have none of their own.
constexpr double kSheetWidth = 420.0;
constexpr double kSheetHeight = 297.0;
constexpr double kSheetMargin = 10.0;
constexpr double kMaxPaper = 5000.0; ///< Millimetres; whatever is larger is damaged.
constexpr int kPictureSide = 1920; ///< Longer side of a picture whose size nobody asked for.
constexpr int kMaxPictureSide = 16384;
constexpr double kPictureMargin = 0.02; ///< Of the drawing's size.
constexpr unsigned kPaperColor = 0xFFFFFFFF;
constexpr double kFinestPrinted = 72.0 / 600.0; ///< Points.
constexpr double kHairline = 0.05; ///< Millimetres.

/// What is seen of a space, and how large.
struct Sheet
{
    ZvDbObjectId block;
    ZvGePoint2d center; ///< In drawing units.
    double width = kSheetWidth; ///< Millimetres.
    double height = kSheetHeight;
    double unit = 1.0; ///< Millimetres of a drawing unit.
    bool isPaper = false;
};

/// Box around what is visible in a block, without an index: one pass over a drawing that may be large.
ZvGeExtents3d visibleExtents(ZvDbDatabase *database, ZvDbObjectId block)
{
    ZvGeExtents3d all;
    GiStyles styles(database);
    ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
    if (!record)
        return all;
    const std::uint64_t high = std::uint64_t(database->number()) << 32;
    for (std::uint32_t index : record->entityIndices()) {
        ZvDbObjectPointer<ZvDbEntity> entity(ZvDbObjectId::fromInt64(high | index), ZvDb::kForRead);
        if (!entity || entity->visibility() != ZvDb::kVisible)
            continue;
        const GiLayer &layer = styles.layer(entity->layerId());
        ZvGeExtents3d one;
        if (!layer.isOff && !layer.isFrozen && giExtents(*entity, styles, one))
            all.add(one);
    }
    return all;
}

/// Fits the drawing to the sheet.
void fit(const ZvGeExtents3d &extents, double margin, Sheet &sheet)
{
    if (extents.isEmpty())
        return;
    sheet.center
        = ZvGePoint2d((extents.minimum.x + extents.maximum.x) / 2, (extents.minimum.y + extents.maximum.y) / 2);
    const double width = extents.maximum.x - extents.minimum.x;
    const double height = extents.maximum.y - extents.minimum.y;
    const double unitX = width > 0.0 ? (sheet.width - 2 * margin) / width : 0.0;
    const double unitY = height > 0.0 ? (sheet.height - 2 * margin) / height : 0.0;
    const double unit = unitX > 0.0 && unitY > 0.0 ? std::min(unitX, unitY) : std::max(unitX, unitY);
    if (unit > 0.0 && std::isfinite(unit))
        sheet.unit = unit;
}

Sheet sheetOf(ZvDbDatabase *database)
{
    Sheet sheet;
    sheet.block = database->currentSpaceId();
    if (database->tilemode()) {
        fit(visibleExtents(database, sheet.block), kSheetMargin, sheet);
        return sheet;
    }
    sheet.isPaper = true;
    sheet.block = database->paperSpaceId();
    ZvDbObjectPointer<ZvDbLayout> layout(database->currentLayoutId(), ZvDb::kForRead);
    ZvGePoint2d size = layout ? layout->paperSize() : ZvGePoint2d();
    if (!(size.x > 0.0) || !(size.y > 0.0) || size.x > kMaxPaper || size.y > kMaxPaper) {
        fit(visibleExtents(database, sheet.block), kSheetMargin, sheet);
        return sheet;
    }
    ZvGePoint2d origin = layout->marginsMinimum();
    if (layout->plotRotation() % 2 != 0) {
        std::swap(size.x, size.y);
        std::swap(origin.x, origin.y);
    }
    sheet.width = size.x;
    sheet.height = size.y;
    const double scale = layout->plotScale();
    sheet.unit
        = (scale > 0.0 && std::isfinite(scale) ? scale : 1.0) * (layout->paperUnits() == 0 ? kMillimetresPerInch : 1.0);
    // The origin of paper space is the corner of what the device can print.
    sheet.center = ZvGePoint2d((size.x / 2 - origin.x) / sheet.unit, (size.y / 2 - origin.y) / sheet.unit);
    return sheet;
}

ZvGiView viewOf(const Sheet &sheet)
{
    ZvGiView view;
    view.center = sheet.center;
    view.height = sheet.height / sheet.unit;
    return view;
}

/// Draws the sheet on whatever it is; device units are \a scale to a millimetre.
class SheetDrawing
{
public:
    SheetDrawing(ZvDbDatabase *database, const Sheet &sheet, ZvDbProgress *progress)
        : m_database(database), m_sheet(sheet), m_progress(progress), m_styles(database), m_blocks(database, m_styles)
    {
    }

    /// False when it was cancelled.
    bool draw(const ZvGiRenderer::Options &options, GiTarget target, double scale)
    {
        const double width = m_sheet.width * scale;
        const double height = m_sheet.height * scale;
        target.clip = QRectF(0.0, 0.0, width, height);
        target.unitsPerMillimetre = scale;
        GiDrawer drawer(m_database, m_styles, m_blocks, m_images, options, target);
        drawer.setView(viewOf(m_sheet), width, height);
        double fraction = 0.0;
        const auto report = [&] { return !m_progress || m_progress->progress(fraction); };
        drawer.setKeepGoingInside(report);
        const bool isWhole = drawer.drawWhole(m_sheet.block, [&](std::size_t done, std::size_t all) {
            fraction = double(done) / double(all);
            return report();
        });
        m_blocks.closeAll();
        target.sink->flush();
        return isWhole;
    }

private:
    ZvDbDatabase *m_database;
    const Sheet &m_sheet;
    ZvDbProgress *m_progress;
    GiStyles m_styles;
    GiBlocks m_blocks;
    GiImages m_images;
};

ZvGiRenderer::Options plotOptions(bool plotting)
{
    ZvGiRenderer::Options options;
    options.background = kPaperColor;
    options.lineWeights = true;
    options.plotting = plotting;
    return options;
}

Zv::ErrorStatus exportPdf(QIODevice &file, ZvDbDatabase *database, const Sheet &sheet, ZvDbProgress *progress)
{
    GiPdfSink sink(file, QSizeF(sheet.width, sheet.height) * kPointsPerMillimetre);
    GiTarget target;
    target.sink = &sink;
    target.resolution = kFinestPrinted;
    target.minimumWidth = kHairline * kPointsPerMillimetre;
    target.nativeArcs = true;
    if (!SheetDrawing(database, sheet, progress).draw(plotOptions(true), target, kPointsPerMillimetre))
        return Zv::eCancelled;
    return sink.finish() ? Zv::eOk : Zv::eFileAccess;
}

Zv::ErrorStatus exportSvg(QIODevice &file, ZvDbDatabase *database, const Sheet &sheet, ZvDbProgress *progress)
{
    // Tenths of a millimetre: the generator writes few digits behind the point.
    constexpr double kScale = 10.0;
    QSvgGenerator generator;
    generator.setOutputDevice(&file);
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
        isWhole = SheetDrawing(database, sheet, progress).draw(plotOptions(true), target, kScale);
    }
    painter.end();
    return isWhole ? Zv::eOk : Zv::eCancelled;
}

Zv::ErrorStatus exportPng(QIODevice &file, ZvDbDatabase *database, Sheet sheet, int width, int height,
                          ZvDbProgress *progress)
{
    if (width < 1 || height < 1) {
        double wide = sheet.width;
        double high = sheet.height;
        if (!sheet.isPaper) {
            const ZvGeExtents3d extents = visibleExtents(database, sheet.block);
            wide = extents.isEmpty() ? kSheetWidth : extents.maximum.x - extents.minimum.x;
            high = extents.isEmpty() ? kSheetHeight : extents.maximum.y - extents.minimum.y;
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
    const ZvGeExtents3d extents = sheet.isPaper ? ZvGeExtents3d() : visibleExtents(database, sheet.block);
    const double shape = double(width) / height;
    if (sheet.width / sheet.height < shape)
        sheet.width = sheet.height * shape;
    else
        sheet.height = sheet.width / shape;
    if (!sheet.isPaper)
        fit(extents, kPictureMargin * std::min(sheet.width, sheet.height), sheet);

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
        isWhole = SheetDrawing(database, sheet, progress).draw(options, target, height / sheet.height);
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
    const Sheet sheet = sheetOf(database);
    Zv::ErrorStatus status = isPng ? exportPng(file, database, sheet, width, height, progress)
        : isPdf                    ? exportPdf(file, database, sheet, progress)
                                   : exportSvg(file, database, sheet, progress);
    if (status == Zv::eOk && !file.commit())
        status = Zv::eFileAccess;
    if (status == Zv::eCancelled)
        message = "The export was cancelled.";
    else if (status == Zv::eInvalidInput)
        message = "The picture would be too large.";
    else if (status != Zv::eOk)
        message = path + ZvString(": ") + ZvString(file.errorString().toUtf8().constData());
    return status;
}
