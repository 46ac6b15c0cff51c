// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbrecords.h"
#include "entity_draw.h"
#include "entity_geometry.h"

using namespace zvdbgeo;

namespace {
enum Generation { kBackward = 2, kUpsideDown = 4 };

/// An entity of no style is written in the drawing's standard one.
ZvDbObjectId styleOr(ZvDbObjectId style, const ZvDbObject &object)
{
    if (!style.isNull() || !object.database())
        return style;
    return object.database()->textstyle();
}
}

// ---- one line of text

ZVRX_DEFINE_MEMBERS(ZvDbText, ZvDbEntity)
ZvDbText::ZvDbText() = default;

ZvDbText::ZvDbText(const ZvGePoint3d &position, const ZvString &text, ZvDbObjectId style, double height, double rotation)
    : m_text(text), m_style(style), m_position(position), m_height(height), m_rotation(rotation)
{
}

Zv::ErrorStatus ZvDbText::setTextString(const ZvString &text)
{
    return store(m_text, text);
}

ZvGePoint3d ZvDbText::position() const
{
    return Plane(m_normal).toWorld(m_position);
}

Zv::ErrorStatus ZvDbText::setHeight(double height)
{
    if (!(height > 0.0) || !isUsable(height))
        return Zv::eInvalidInput;
    return store(m_height, height);
}

ZvDbObjectId ZvDbText::textStyle() const
{
    return styleOr(m_style, *this);
}

Zv::ErrorStatus ZvDbText::setTextStyle(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbTextStyleTableRecord::desc()))
        return Zv::eInvalidInput;
    return store(m_style, id);
}

void ZvDbText::describe(ZvGiText &text) const
{
    const Plane plane(m_normal);
    text.text = m_text;
    text.normal = plane.z();
    text.direction = plane.direction(isUsable(m_rotation) ? m_rotation : 0.0);
    text.height = m_height;
    text.widthFactor = m_widthFactor;
    text.oblique = m_oblique;
    text.style = textStyle();
    text.horizontal = m_horizontal >= 0 && m_horizontal <= 5 ? ZvGiText::Horizontal(m_horizontal) : ZvGiText::kLeft;
    text.vertical = m_vertical >= 0 && m_vertical <= 3 ? ZvGiText::Vertical(m_vertical) : ZvGiText::kBaseline;
    text.backward = (m_generation & kBackward) != 0;
    text.upsideDown = (m_generation & kUpsideDown) != 0;
    const bool betweenPoints = text.horizontal == ZvGiText::kAligned || text.horizontal == ZvGiText::kFit;
    const bool plain = text.horizontal == ZvGiText::kLeft && text.vertical == ZvGiText::kBaseline;
    // Any alignment but the plain one speaks of the second point; the first is then only where the text begins.
    text.position = plane.toWorld(plain || betweenPoints ? m_position : m_alignment);
    text.secondPosition = plane.toWorld(m_alignment);
    if (betweenPoints) {
        const ZvGeVector3d along = text.secondPosition - text.position;
        if (isUsable(along) && along.length() > 0.0)
            text.direction = along.normal();
    }
}

Zv::ErrorStatus ZvDbText::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid())
        return Zv::eInvalidInput;
    // The two edges of a letter's box, as the text shows it, and their images.
    const double flipX = m_generation & kBackward ? -1.0 : 1.0;
    const double flipY = m_generation & kUpsideDown ? -1.0 : 1.0;
    const ZvGeVector2d along(std::cos(m_rotation), std::sin(m_rotation));
    const ZvGeVector2d up(-along.y, along.x);
    const ZvGeVector2d width = map.vector(along * (flipX * m_widthFactor));
    const ZvGeVector2d height = map.vector(along * (flipX * std::tan(m_oblique)) + up * flipY);
    const double length = width.length();
    if (!(length > 0.0))
        return Zv::eInvalidInput;
    const ZvGeVector2d newAlong = width * ((m_widthFactor < 0.0 ? -flipX : flipX) / length);
    const double rise = height.dotProduct({-newAlong.y, newAlong.x});
    if (!(std::fabs(rise) > 1e-12 * length))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    const bool plain = m_horizontal == 0 && m_vertical == 0;
    m_position = map.point(m_position);
    if (!plain) // otherwise it means nothing, and is not even there in most files
        m_alignment = map.point(m_alignment);
    if (map.isSimilar() && !map.isMirrored()) {
        m_height *= map.scale();
        m_rotation = map.angle(m_rotation);
    } else {
        m_height *= std::fabs(rise);
        m_widthFactor = (m_widthFactor < 0.0 ? -length : length) / std::fabs(rise);
        m_oblique = std::atan(flipX * height.dotProduct(newAlong) / std::fabs(rise));
        m_rotation = normalized(newAlong.angle());
        m_generation = rise < 0.0 ? m_generation | kUpsideDown : m_generation & ~kUpsideDown;
    }
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbText::getGeomExtents(ZvGeExtents3d &extents) const
{
    // Not by worldDraw(): an invisible attribute has a place all the same.
    ZvGiText text;
    describe(text);
    ZvDbExtentsDraw measure;
    measure.point(text.position);
    measure.text(text);
    extents = measure.extents();
    return extentsStatus(extents);
}

void ZvDbText::worldDraw(ZvGiWorldDraw &draw) const
{
    if (m_text.isEmpty() || !(m_height > 0.0) || !isUsable(m_height))
        return;
    ZvGiText text;
    describe(text);
    if (isUsable(text.position) && isUsable(text.secondPosition) && isUsable(text.widthFactor) && isUsable(text.oblique))
        draw.text(text);
}

// ---- attributes

ZVRX_DEFINE_MEMBERS(ZvDbAttribute, ZvDbText)

void ZvDbAttribute::worldDraw(ZvGiWorldDraw &draw) const
{
    if (!isInvisible())
        ZvDbText::worldDraw(draw);
}

ZVRX_DEFINE_MEMBERS(ZvDbAttributeDefinition, ZvDbAttribute)

void ZvDbAttributeDefinition::worldDraw(ZvGiWorldDraw &draw) const
{
    // A definition shows its tag; a constant one is part of the block and shows its value.
    if (isConstant()) {
        ZvDbAttribute::worldDraw(draw);
        return;
    }
    if (m_tag.isEmpty() || !(m_height > 0.0) || !isUsable(m_height))
        return;
    ZvGiText text;
    describe(text);
    text.text = m_tag;
    if (isUsable(text.position) && isUsable(text.secondPosition) && isUsable(text.widthFactor) && isUsable(text.oblique))
        draw.text(text);
}

// ---- block of text

ZVRX_DEFINE_MEMBERS(ZvDbMText, ZvDbEntity)
ZvDbMText::ZvDbMText() = default;

Zv::ErrorStatus ZvDbMText::setContents(const ZvString &contents)
{
    return store(m_contents, contents);
}

Zv::ErrorStatus ZvDbMText::setLocation(const ZvGePoint3d &location)
{
    return store(m_location, location);
}

Zv::ErrorStatus ZvDbMText::setTextHeight(double height)
{
    if (!(height > 0.0) || !isUsable(height))
        return Zv::eInvalidInput;
    return store(m_height, height);
}

ZvGeVector3d ZvDbMText::direction() const
{
    ZvGiMText text;
    describe(text);
    return text.direction;
}

Zv::ErrorStatus ZvDbMText::setDirection(const ZvGeVector3d &direction)
{
    const double length = direction.length();
    if (!(length > 0.0) || !isUsable(length))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    m_direction = direction / length;
    m_rotation = Plane(m_normal).angleOf(m_direction); // both say the same, whichever a reader takes
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbMText::setAttachment(int attachment)
{
    if (attachment < 1 || attachment > 9)
        return Zv::eInvalidInput;
    return store(m_attachment, attachment);
}

ZvDbObjectId ZvDbMText::textStyle() const
{
    return styleOr(m_style, *this);
}

Zv::ErrorStatus ZvDbMText::setTextStyle(ZvDbObjectId id)
{
    if (!zvdbMayReferTo(*this, id, ZvDbTextStyleTableRecord::desc()))
        return Zv::eInvalidInput;
    return store(m_style, id);
}

void ZvDbMText::describe(ZvGiMText &text) const
{
    const Plane plane(m_normal);
    text.contents = m_contents;
    text.position = m_location;
    text.normal = plane.z();
    // Files tell the direction as a vector or as an angle; an angle beside the vector that says nothing counts.
    const bool byAngle = m_direction.x == 1.0 && m_direction.y == 0.0 && m_direction.z == 0.0 && m_rotation != 0.0;
    const double length = m_direction.length();
    if (byAngle || !isUsable(m_direction) || !(length > 0.0))
        text.direction = plane.direction(isUsable(m_rotation) ? m_rotation : 0.0);
    else
        text.direction = m_direction / length;
    text.height = m_height;
    text.width = m_width > 0.0 && isUsable(m_width) ? m_width : 0.0;
    text.lineSpacing = m_lineSpacing > 0.0 && m_lineSpacing < 100.0 ? m_lineSpacing : 1.0;
    text.exactSpacing = m_spacingStyle == 2;
    text.attachment = m_attachment >= 1 && m_attachment <= 9 ? m_attachment : 1;
    text.style = textStyle();
    text.backgroundFill = (m_backgroundFlags & 3) != 0;
    text.backgroundColor = m_backgroundColor;
    text.backgroundScale = m_backgroundScale >= 1.0 && m_backgroundScale <= 100.0 ? m_backgroundScale : 1.5;
}

Zv::ErrorStatus ZvDbMText::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid() || !map.isSimilar())
        return Zv::eInvalidInput;
    ZvGiMText text;
    describe(text);
    ZvGeVector3d direction = ZvGeVector3d(text.direction).transformBy(matrix).normal();
    if (!(direction.length() > 0.0))
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    if (map.isMirrored()) {
        // Formatted text is not mirrored: it stays readable and hangs on the other side of its point.
        const bool backward = direction.dotProduct(text.direction) < -1e-9;
        const int row = (text.attachment - 1) / 3;
        const int column = (text.attachment - 1) % 3;
        m_attachment = backward ? 3 * row + (2 - column) + 1 : 3 * (2 - row) + column + 1;
        if (backward)
            direction = -direction;
    }
    m_location.transformBy(matrix);
    m_normal = map.normal();
    m_height *= map.scale();
    m_width *= map.scale();
    if (!map.keepsDirections()) {
        m_direction = direction;
        m_rotation = Plane(m_normal).angleOf(direction); // both say the same, whichever a reader takes
    }
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbMText::getGeomExtents(ZvGeExtents3d &extents) const
{
    ZvGiMText text;
    describe(text);
    ZvDbExtentsDraw measure;
    measure.point(text.position);
    measure.mtext(text);
    extents = measure.extents();
    return extentsStatus(extents);
}

void ZvDbMText::worldDraw(ZvGiWorldDraw &draw) const
{
    if (m_contents.isEmpty() || !(m_height > 0.0) || !isUsable(m_height) || !isUsable(m_location))
        return;
    ZvGiMText text;
    describe(text);
    draw.mtext(text);
}
