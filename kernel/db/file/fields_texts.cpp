// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"
#include "zvdbfiler.h"

void ZvDbText::textFields(ZvDbFiler &filer)
{
    filer.subclass("AcDbText");
    filer.point(10, m_position);
    filer.real(40, m_height);
    filer.text(1, m_text);
    filer.angle(50, m_rotation, 0.0);
    filer.real(41, m_widthFactor, 1.0);
    filer.angle(51, m_oblique, 0.0);
    filer.nameIn(ZvDbFiler::kTextStyles, 7, m_style);
    filer.integer(71, m_generation, 0);
    filer.integer(72, m_horizontal, 0);
    // A text that is aligned in the plain way has a second point in some files; it means nothing there.
    filer.point(11, m_alignment,
                filer.isReading() || (m_horizontal == 0 && m_vertical == 0) ? m_alignment : ZvGePoint3d(1e300, 0, 0));
    filer.vector(210, m_normal, ZvGeVector3d(0, 0, 1));
}

void ZvDbText::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    textFields(filer);
    filer.subclass("AcDbText");
    filer.integer(73, m_vertical, 0);
}

void ZvDbAttribute::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    textFields(filer);
    filer.subclass("AcDbAttribute");
    filer.text(2, m_tag);
    filer.integer(70, m_attributeFlags, filer.isNewRecord() ? -1 : 0);
    filer.integer(74, m_vertical, 0);
}

void ZvDbAttributeDefinition::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    textFields(filer);
    filer.subclass("AcDbAttributeDefinition");
    filer.text(3, m_prompt);
    filer.text(2, m_tag);
    filer.integer(70, m_attributeFlags, filer.isNewRecord() ? -1 : 0);
    filer.integer(74, m_vertical, 0);
}

void ZvDbMText::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbMText");
    const ZvDbFiler::Groups before = filer.existing(10, {40});
    filer.point(10, m_location);
    filer.real(40, m_height);
    filer.real(41, m_width, 0.0);
    filer.integer(71, m_attachment, filer.isNewRecord() ? 0 : 1);
    filer.integer(72, m_drawingDirection, filer.isNewRecord() ? 0 : 1);
    filer.longText(3, 1, m_contents);
    filer.nameIn(ZvDbFiler::kTextStyles, 7, m_style);
    filer.vector(210, m_normal, ZvGeVector3d(0, 0, 1));
    filer.vector(11, m_direction, ZvGeVector3d(1, 0, 0));
    filer.angle(50, m_rotation, 0.0);
    filer.since(ZvDb::kR2000);
    filer.integer(73, m_spacingStyle, 1);
    filer.real(44, m_lineSpacing, 1.0);
    filer.since(ZvDb::kR2004);
    filer.integer(90, m_backgroundFlags, 0);
    ZvCmColor byLayer;
    filer.color(63, 421, 431, m_backgroundColor, byLayer);
    filer.real(45, m_backgroundScale, 1.5);
    filer.since(ZvDb::kR12);

    // The newest files say the place once more, for columns.
    if (filer.isReading() || before.size() < 2 || !filer.hasSubclass("Embedded Object"))
        return;
    const double z = before.size() > 2 ? before[2].real : 0.0;
    if (before[0].real == m_location.x && before[1].real == m_location.y && z == m_location.z)
        return;
    filer.subclass("Embedded Object");
    filer.point(11, m_location);
}
