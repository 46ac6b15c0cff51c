// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

namespace {
enum DisplayFlag { kShowImage = 1, kUseClip = 4 };

/// Outline of what is shown: the clip boundary where it is in use, the whole picture otherwise.
std::vector<ZvGePoint3d> outlineOf(const ZvDbRasterImage &image, bool clipped)
{
    const ZvGePoint2d size = image.imageSize();
    std::vector<ZvGePoint2d> pixels;
    if (clipped && image.clipBoundary().size() == 2) { // two opposite corners
        const ZvGePoint2d a = image.clipBoundary()[0];
        const ZvGePoint2d b = image.clipBoundary()[1];
        pixels = {a, {b.x, a.y}, b, {a.x, b.y}};
    } else if (clipped && image.clipBoundary().size() > 2) {
        pixels = image.clipBoundary();
    } else {
        pixels = {{0.0, 0.0}, {size.x, 0.0}, {size.x, size.y}, {0.0, size.y}};
    }
    std::vector<ZvGePoint3d> outline;
    for (const ZvGePoint2d &pixel : pixels) {
        const ZvGePoint3d point = image.position() + image.pixelU() * pixel.x + image.pixelV() * (size.y - pixel.y);
        if (isUsable(point))
            outline.push_back(point);
    }
    return outline;
}
}

ZVRX_DEFINE_MEMBERS(ZvDbRasterImage, ZvDbEntity)
ZvDbRasterImage::ZvDbRasterImage() = default;

ZvString ZvDbRasterImage::imagePath() const
{
    return m_path;
}

Zv::ErrorStatus ZvDbRasterImage::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    const ZvGeVector3d u = ZvGeVector3d(m_u).transformBy(matrix);
    const ZvGeVector3d v = ZvGeVector3d(m_v).transformBy(matrix);
    if (!(u.crossProduct(v).length() > 0.0))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_position.transformBy(matrix);
    m_u = u;
    m_v = v;
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbRasterImage::getGeomExtents(ZvGeExtents3d &extents) const
{
    extents = ZvGeExtents3d();
    for (const ZvGePoint3d &point : outlineOf(*this, (m_displayFlags & kUseClip) != 0))
        addPoint(extents, point);
    return extentsStatus(extents);
}

void ZvDbRasterImage::worldDraw(ZvGiWorldDraw &draw) const
{
    const ZvGeVector3d width = m_u * m_size.x;
    const ZvGeVector3d height = m_v * m_size.y;
    const bool clipped = (m_displayFlags & kUseClip) != 0;
    if (!isUsable(m_position) || !isUsable(width) || !isUsable(height))
        return;
    if (m_displayFlags & kShowImage) {
        static const std::vector<ZvGePoint2d> whole;
        draw.image(imagePath(), m_position, width, height, clipped ? m_clip : whole);
        return;
    }
    const std::vector<ZvGePoint3d> outline = outlineOf(*this, clipped);
    if (outline.size() > 1)
        draw.polyline(outline.data(), int(outline.size()), true);
}

ZVRX_DEFINE_MEMBERS(ZvDbWipeout, ZvDbRasterImage)

void ZvDbWipeout::worldDraw(ZvGiWorldDraw &draw) const
{
    std::vector<ZvGePoint3d> outline = outlineOf(*this, true);
    if (outline.size() < 3)
        return;
    ZvGiFill fill;
    fill.wipeout = true;
    fill.normal = m_u.crossProduct(m_v).normal();
    if (!(fill.normal.length() > 0.0))
        fill.normal = ZvGeVector3d::kZAxis;
    fill.elevation = outline.front().asVector().dotProduct(fill.normal);
    fill.loops.push_back(std::move(outline));
    draw.fill(fill);
}
