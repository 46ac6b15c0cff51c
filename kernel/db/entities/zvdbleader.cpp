// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

namespace {
/// Arrow size of a dimension style, ready for use.
double arrowSizeOf(ZvDbObjectId style)
{
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> record(style, ZvDb::kForRead);
    if (!record)
        return 2.5;
    const double size = record->real("DIMASZ");
    const double scale = record->real("DIMSCALE");
    return (size >= 0.0 && isUsable(size) ? size : 2.5) * (scale > 0.0 && isUsable(scale) ? scale : 1.0);
}

void drawPath(ZvGiWorldDraw &draw, const std::vector<ZvGePoint3d> &path)
{
    std::vector<ZvGePoint3d> &points = pointBuffer();
    for (const ZvGePoint3d &point : path) {
        if (isUsable(point))
            points.push_back(point);
    }
    if (points.size() > 1)
        draw.polyline(points.data(), int(points.size()), false);
}

/// An arrow at the first point; none on a first piece that is too short for it.
void drawArrowOnPath(ZvGiWorldDraw &draw, const std::vector<ZvGePoint3d> &path, double size, const ZvGeVector3d &normal)
{
    if (path.size() > 1 && path[0].distanceTo(path[1]) >= size)
        zvdbDrawArrow(draw, path[0], path[1], size, normal);
}
}

// ---- leader

ZVRX_DEFINE_MEMBERS(ZvDbLeader, ZvDbEntity)
ZvDbLeader::ZvDbLeader() = default;

Zv::ErrorStatus ZvDbLeader::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (ZvGePoint3d &vertex : m_vertices)
        vertex.transformBy(matrix);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbLeader::getGeomExtents(ZvGeExtents3d &extents) const
{
    return zvdbExtentsOfPicture(*this, extents);
}

void ZvDbLeader::worldDraw(ZvGiWorldDraw &draw) const
{
    if (m_pathType == 1 && m_vertices.size() > 2) {
        std::vector<ZvGePoint3d> curve;
        sampleThrough(m_vertices, false, draw.deviation(), curve);
        drawPath(draw, curve);
    } else {
        drawPath(draw, m_vertices);
    }
    if (m_arrow)
        drawArrowOnPath(draw, m_vertices, arrowSizeOf(m_style), ZvGeVector3d::kZAxis);
}

// ---- multileader

ZVRX_DEFINE_MEMBERS(ZvDbMLeader, ZvDbEntity)
ZvDbMLeader::ZvDbMLeader() = default;

Zv::ErrorStatus ZvDbMLeader::setMLeaderStyle(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbMLeaderStyle::desc()))
        return Zv::eInvalidInput;
    return store(m_style, id);
}

ZvDbObjectId ZvDbMLeader::textStyleId() const
{
    if (!m_textStyle.isNull())
        return m_textStyle;
    ZvDbObjectPointer<ZvDbMLeaderStyle> style(m_style, ZvDb::kForRead);
    return style ? style->textStyleId() : ZvDbObjectId();
}

Zv::ErrorStatus ZvDbMLeader::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid() || !map.isSimilar())
        return Zv::eInvalidInput;
    const ZvGeVector3d direction = ZvGeVector3d(m_textDirection).transformBy(matrix).normal();
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (std::vector<ZvGePoint3d> &line : m_lines) {
        for (ZvGePoint3d &point : line)
            point.transformBy(matrix);
    }
    m_textLocation.transformBy(matrix);
    if (direction.length() > 0.0) {
        // Mirrored text stays readable, as that of a text block does.
        const bool backward = map.isMirrored() && direction.dotProduct(m_textDirection) < -1e-9;
        m_textDirection = backward ? -direction : direction;
    }
    m_textHeight *= map.scale();
    m_textWidth *= map.scale();
    m_arrowSize *= map.scale();
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbMLeader::getGeomExtents(ZvGeExtents3d &extents) const
{
    return zvdbExtentsOfPicture(*this, extents);
}

void ZvDbMLeader::worldDraw(ZvGiWorldDraw &draw) const
{
    const Plane plane(m_normal);
    const ZvGiTraits own = draw.traits();
    if (!m_lineColor.isByBlock()) // the leader's own colour is what by block means here
        draw.traits().color = m_lineColor;
    for (const std::vector<ZvGePoint3d> &line : m_lines) {
        drawPath(draw, line);
        drawArrowOnPath(draw, line, m_arrowSize, plane.z());
    }
    draw.traits() = own;
    if (!isUsable(m_textLocation))
        return;
    if (!m_block.isNull()) {
        const double scale = m_scale > 0.0 && isUsable(m_scale) ? m_scale : 1.0;
        ZvGeMatrix3d matrix;
        matrix.setCoordSystem(m_textLocation, plane.x() * scale, plane.y() * scale, plane.z() * scale);
        draw.block(m_block, matrix);
    }
    if (m_contents.isEmpty() || !(m_textHeight > 0.0) || !isUsable(m_textHeight))
        return;
    ZvGiMText text;
    text.contents = m_contents;
    text.position = m_textLocation;
    text.normal = plane.z();
    text.direction = isUsable(m_textDirection) && m_textDirection.length() > 0.0 ? m_textDirection.normal() : plane.x();
    text.height = m_textHeight;
    text.width = m_textWidth > 0.0 && isUsable(m_textWidth) ? m_textWidth : 0.0;
    text.attachment = m_attachment >= 1 && m_attachment <= 9 ? m_attachment : 1;
    text.style = textStyleId();
    if (!m_textColor.isByBlock())
        draw.traits().color = m_textColor;
    draw.mtext(text);
    draw.traits() = own;
}
