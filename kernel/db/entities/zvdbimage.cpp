// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

namespace {
enum DisplayFlag { kShowImage = 1, kUseClip = 4 };

/// The clip boundary in fractions of the width and height, y up; empty where there is none.
std::vector<ZvGePoint2d> clipOf(const ZvDbRasterImage &image)
{
    const ZvGePoint2d size = image.imageSize();
    std::vector<ZvGePoint2d> pixels = image.clipBoundary();
    if (pixels.size() < 2 || !(size.x > 0.0) || !(size.y > 0.0))
        return {};
    if (pixels.size() == 2) // opposite corners
        pixels = {pixels[0], {pixels[1].x, pixels[0].y}, pixels[1], {pixels[0].x, pixels[1].y}};
    for (ZvGePoint2d &pixel : pixels)
        pixel = ZvGePoint2d((pixel.x + 0.5) / size.x, 1.0 - (pixel.y + 0.5) / size.y);
    return pixels;
}

/// Outline of what is shown: the clip boundary where there is one, the whole picture otherwise.
std::vector<ZvGePoint3d> outlineOf(const ZvDbRasterImage &image, bool clipped)
{
    std::vector<ZvGePoint2d> fractions;
    if (clipped)
        fractions = clipOf(image);
    if (fractions.empty())
        fractions = {{0.0, 0.0}, {1.0, 0.0}, {1.0, 1.0}, {0.0, 1.0}};
    const ZvGeVector3d width = image.pixelU() * image.imageSize().x;
    const ZvGeVector3d height = image.pixelV() * image.imageSize().y;
    std::vector<ZvGePoint3d> outline;
    for (const ZvGePoint2d &fraction : fractions) {
        const ZvGePoint3d point = image.position() + width * fraction.x + height * fraction.y;
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
        draw.image(imagePath(), m_position, width, height, clipped ? clipOf(*this) : std::vector<ZvGePoint2d>());
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
