// SPDX-License-Identifier: MIT
#include "db/zvdbstyles.h"
#include "zvdbfiler.h"

void ZvDbMaterial::fileFields(ZvDbFiler &filer)
{
    ZvDbNamedObject::fileFields(filer);
    filer.subclass("AcDbMaterial");
    filer.text(1, m_name);
    filer.text(2, m_description, ZvString());
    // A colour of its own stands behind the switch; without it the material takes the object's.
    int own = m_diffuse.isByColor() ? 1 : 0;
    ZvCmColor color = m_diffuse;
    if (filer.isReading() || filer.isNewRecord()) {
        filer.integer(71, own, 0);
        if (filer.isReading() || own)
            filer.colorWord(91, color);
    }
    if (filer.isReading()) {
        m_diffuse.setRGB(255, 255, 255);
        if (own == 1 && color.isByColor())
            m_diffuse = color;
    }
}

void ZvDbMLeaderStyle::fileFields(ZvDbFiler &filer)
{
    ZvDbNamedObject::fileFields(filer);
    filer.subclass("AcDbMLeaderStyle");
    filer.since(ZvDb::kR2010);
    filer.constant(179, 2);
    filer.since(ZvDb::kR12);
    filer.constant(170, 2); // text
    filer.constant(171, 1);
    filer.constant(172, 0);
    filer.constant(90, 2);
    filer.constants({40, 41}, 0.0);
    filer.constant(173, 1);
    filer.colorWord(91, m_leaderColor);
    filer.constant(92, -2);
    filer.constant(290, 1);
    filer.constant(42, 2.0);
    filer.constant(291, 1);
    filer.constant(43, 8.0);
    filer.constant(3, "Standard");
    filer.real(44, m_arrowSize, filer.isNewRecord() ? -1.0 : 4.0);
    filer.constant(300, "");
    filer.handle(342, m_textStyle);
    filer.constants({174, 178, 175}, 1);
    filer.constant(176, 0);
    ZvCmColor textColor;
    textColor.setColorMethod(ZvCm::kByBlock);
    if (filer.isNewRecord())
        filer.colorWord(93, textColor);
    filer.real(45, m_textHeight, filer.isNewRecord() ? -1.0 : 4.0);
    filer.constants({292, 297}, 0);
    filer.constant(46, 4.0);
    if (filer.isNewRecord())
        filer.colorWord(94, textColor);
    filer.constants({47, 49, 140}, 1.0);
    filer.constant(293, 1);
    filer.constant(141, 0.0);
    filer.constant(294, 1);
    filer.constant(177, 0);
    filer.real(142, m_scale, filer.isNewRecord() ? -1.0 : 1.0);
    filer.constant(295, 0);
    filer.constant(296, 0);
    filer.constant(143, 3.75);
    filer.since(ZvDb::kR2010);
    filer.constant(271, 0);
    filer.constants({272, 273}, 9);
}

namespace {

/// Names of the cell styles that newer files keep beside the style, in its extension dictionary.
void readCellStyles(ZvDbFiler &filer, ZvDbObjectId extension, ZvArray<ZvString> &names)
{
    bool isMap = false;
    ZvDbObjectId map;
    for (const ZvDbFiler::Group &group : filer.groupsOf(extension, "AcDbDictionary")) {
        if (group.code == 3)
            isMap = group.text == "ACAD_ROUNDTRIP_2008_TABLESTYLE_CELLSTYLEMAP";
        else if (isMap && !group.id.isNull())
            map = group.id;
    }
    bool isStyle = false;
    for (const ZvDbFiler::Group &group : filer.groupsOf(map, "AcDbCellStyleMap")) {
        if (group.code == 1) {
            isStyle = group.text == "CELLSTYLE_BEGIN";
        } else if (isStyle && group.code == 300) {
            if (!names.contains(group.text))
                names.append(group.text);
            isStyle = false; // the next style begins with the same code
        }
    }
}

} // namespace

void ZvDbTableStyle::fileFields(ZvDbFiler &filer)
{
    ZvDbNamedObject::fileFields(filer);
    filer.subclass("AcDbTableStyle");
    filer.since(ZvDb::kR2010);
    filer.constant(280, 0);
    filer.since(ZvDb::kR12);
    filer.text(3, m_description);
    filer.constants({70, 71}, 0);
    filer.constants({40, 41}, 1.5);
    filer.constants({280, 281}, 0);
    filer.nameIn(ZvDbFiler::kTextStyles, 7, m_textStyle, true);
    if (filer.isNewRecord()) {
        // Data, title and header cells, each with the lines around them.
        const double heights[] = {4.5, 6.0, 4.5};
        const int alignments[] = {2, 5, 5};
        for (int row = 0; row < 3; ++row) {
            if (row > 0)
                filer.nameIn(ZvDbFiler::kTextStyles, 7, m_textStyle, true);
            filer.constant(140, heights[row]);
            filer.constant(170, alignments[row]);
            filer.constant(62, 0);
            filer.constant(63, 7);
            filer.constant(283, 0);
            filer.constant(90, 512);
            filer.constant(91, 0);
            filer.constant(1, "");
            for (int line = 0; line < 6; ++line) {
                filer.constant(274 + line, -2);
                filer.constant(284 + line, 1);
                filer.constant(64 + line, 0);
            }
        }
    }
    if (!filer.isReading())
        return;
    m_cellStyles.clear();
    for (const wchar_t *name : {L"_TITLE", L"_HEADER", L"_DATA"})
        m_cellStyles.append(name);
    readCellStyles(filer, extensionDictionary(), m_cellStyles);
}

void ZvDbDictionaryVar::fileFields(ZvDbFiler &filer)
{
    ZvDbNamedObject::fileFields(filer);
    filer.subclass("DictionaryVariables");
    filer.constant(280, 0);
    filer.text(1, m_value);
}

void ZvDbPlotSettings::fileFields(ZvDbFiler &filer)
{
    ZvDbNamedObject::fileFields(filer);
    filer.subclass("AcDbPlotSettings");
    filer.text(1, m_settingsName);
    filer.text(2, m_plotter);
    filer.text(4, m_paperName);
    filer.text(6, m_plotView);
    filer.real(40, m_marginsMin.x);
    filer.real(41, m_marginsMin.y);
    filer.real(42, m_marginsMax.x);
    filer.real(43, m_marginsMax.y);
    filer.real(44, m_paperSize.x);
    filer.real(45, m_paperSize.y);
    filer.real(46, m_plotOrigin.x);
    filer.real(47, m_plotOrigin.y);
    filer.real(48, m_windowMin.x);
    filer.real(49, m_windowMin.y);
    filer.real(140, m_windowMax.x);
    filer.real(141, m_windowMax.y);
    filer.real(142, m_scaleNumerator);
    filer.real(143, m_scaleDenominator);
    filer.integer(70, m_plotFlags);
    filer.integer(72, m_paperUnits);
    filer.integer(73, m_rotation);
    filer.integer(74, m_plotType);
    filer.text(7, m_styleSheet);
    filer.integer(75, m_scaleType);
    filer.constant(147, 1.0);
    filer.constants({148, 149}, 0.0);
    if (filer.isReading() && m_scaleNumerator == 0.0)
        m_scaleNumerator = 1.0;
    if (filer.isReading() && m_scaleDenominator == 0.0)
        m_scaleDenominator = 1.0;
}

void ZvDbLayout::fileFields(ZvDbFiler &filer)
{
    ZvDbPlotSettings::fileFields(filer);
    filer.subclass("AcDbLayout");
    filer.text(1, m_name);
    filer.integer(70, m_layoutFlags);
    filer.integer(71, m_tabOrder);
    if (filer.isNewRecord()) {
        ZvGePoint2d low;
        ZvGePoint2d high(m_paperSize.x, m_paperSize.y);
        filer.point2d(10, low);
        filer.point2d(11, high);
    }
    filer.constantPoint(12, 0.0, 0.0, 0.0);
    filer.constantPoint(14, 1e20, 1e20, 1e20); // no extents yet
    filer.constantPoint(15, -1e20, -1e20, -1e20);
    filer.constant(146, 0.0);
    filer.constantPoint(13, 0.0, 0.0, 0.0);
    filer.constantPoint(16, 1.0, 0.0, 0.0);
    filer.constantPoint(17, 0.0, 1.0, 0.0);
    filer.constant(76, 0);
    filer.handle(330, m_block, true);
    filer.handle(331, m_lastViewport);
}
