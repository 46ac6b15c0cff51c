// SPDX-License-Identifier: MIT
#include "gi_sheet.h"

#include "db/zvdbrecords.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr unsigned kPaperColor = 0xFFFFFFFF;

ZvGiView viewOf(const GiSheet &sheet)
{
    ZvGiView view;
    view.center = sheet.center;
    view.height = sheet.height / sheet.unit;
    return view;
}

} // namespace

ZvGeExtents3d giVisibleExtents(ZvDbDatabase *database, ZvDbObjectId block)
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

void giFit(const ZvGeExtents3d &extents, double margin, GiSheet &sheet)
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

ZvGiRenderer::Options giPaperOptions(bool plotting)
{
    ZvGiRenderer::Options options;
    options.background = kPaperColor;
    options.lineWeights = true;
    options.plotting = plotting;
    return options;
}

bool GiSheetDrawing::draw(const ZvGiRenderer::Options &options, GiTarget target, double scale, const Progress &progress)
{
    const double width = m_sheet.width * scale;
    const double height = m_sheet.height * scale;
    target.clip = QRectF(0.0, 0.0, width, height);
    target.unitsPerMillimetre = scale;
    GiDrawer drawer(m_database, m_styles, m_blocks, m_images, options, target);
    drawer.setView(viewOf(m_sheet), width, height);
    double fraction = 0.0;
    const auto report = [&] { return !progress || progress(fraction); };
    drawer.setKeepGoingInside(report);
    const bool isWhole = drawer.drawWhole(m_sheet.block, [&](std::size_t done, std::size_t all) {
        fraction = double(done) / double(all);
        return report();
    });
    m_blocks.closeAll();
    target.sink->flush();
    return isWhole;
}
