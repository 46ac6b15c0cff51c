// SPDX-License-Identifier: MIT
#include "db/zvdbdictionary.h"
#include "db/zvdbrecords.h"
#include "drawing_file.h"
#include "dxf_tag.h"
#include "file_fields.h"
#include "zvdbdatabase_p.h"
#include "zvdbfiler.h"

#include <algorithm>
#include <array>
#include <memory>

void ZvDbSymbolTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbObject::fileFields(filer);
    filer.subclass("AcDbSymbolTableRecord");
}

void ZvDbSymbolTable::fileFields(ZvDbFiler &filer)
{
    ZvDbObject::fileFields(filer);
    filer.subclass("AcDbSymbolTable");
}

void ZvDbLayerTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbLayerTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    ZvCmColor white;
    white.setColorIndex(7);
    filer.color(62, 420, 430, m_color, white, true, &m_off);
    filer.nameIn(ZvDbFiler::kLinetypes, 6, m_linetype, true);
    filer.since(ZvDb::kR2000);
    filer.boolean(290, m_plottable, true);
    int weight = m_lineWeight;
    if (filer.isNewRecord())
        filer.integer(370, weight);
    else
        filer.integer(370, weight, ZvDb::kLnWtByLwDefault);
    m_lineWeight = ZvDb::LineWeight(weight);
    filer.handle(390, m_plotStyle);
    filer.since(ZvDb::kR2007);
    filer.handle(347, m_material);
}

void ZvDbLinetypeTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbLinetypeTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    filer.text(3, m_comments);
    filer.constant(72, 65); // alignment "A", the only one there is
    filer.count(73, m_dashes.size());
    filer.real(40, m_patternLength);

    ZvDbFiler::Groups groups;
    if (!filer.isReading()) {
        const bool hasFlags = filer.isNewRecord() && filer.version() >= ZvDb::kR13;
        for (const Dash &dash : m_dashes) {
            groups.emplace_back(49, dash.length);
            groups.emplace_back(74, dash.flags, dash.flags == 0 && !hasFlags);
            if (dash.flags == 0)
                continue;
            groups.emplace_back(75, dash.shapeNumber);
            groups.emplace_back(340, dash.styleId);
            groups.emplace_back(46, dash.scale);
            groups.push_back(ZvDbFiler::Group::ofAngle(50, dash.rotation));
            groups.emplace_back(44, dash.offsetX);
            groups.emplace_back(45, dash.offsetY);
            if (dash.flags & 2)
                groups.emplace_back(9, dash.text);
        }
    }
    filer.sequence(49, {}, groups);
    if (!filer.isReading())
        return;
    m_dashes.clear();
    for (const ZvDbFiler::Group &group : groups) {
        if (group.code == 49) {
            m_dashes.emplace_back();
            m_dashes.back().length = group.real;
            continue;
        }
        Dash &dash = m_dashes.back(); // the sequence begins with a 49
        switch (group.code) {
        case 74:
            dash.flags = int(group.integer);
            break;
        case 75:
            dash.shapeNumber = int(group.integer);
            break;
        case 340:
            dash.styleId = group.id;
            break;
        case 46:
            dash.scale = group.real;
            break;
        case 50:
            dash.rotation = zvdbRadians(group.real);
            break;
        case 44:
            dash.offsetX = group.real;
            break;
        case 45:
            dash.offsetY = group.real;
            break;
        case 9:
            dash.text = group.text;
            break;
        default:
            break;
        }
    }
}

void ZvDbTextStyleTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbTextStyleTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    filer.real(40, m_textSize);
    if (filer.isNewRecord())
        filer.real(41, m_xScale);
    else
        filer.real(41, m_xScale, 1.0);
    filer.angle(50, m_obliquing);
    filer.integer(71, m_generation);
    if (filer.isNewRecord())
        filer.real(42, m_lastHeight);
    else
        filer.real(42, m_lastHeight, 2.5);
    filer.text(3, m_fontFile);
    filer.text(4, m_bigFontFile);
}

namespace {

/// Group codes of the dimension variables in the order in which records hold them. Older files name arrow blocks by 5
/// to 7, newer ones refer to them by handle.
constexpr std::array<int, 84> kDimensionCodes{
    3,   4,   5,   6,   7,   40,  41,  42,  43,  44,  45,  46,  47,  48,  49,  50,  69,  140, 141, 142, 143,
    144, 145, 146, 147, 148, 71,  72,  73,  74,  75,  76,  77,  78,  79,  90,  170, 171, 172, 173, 174, 175,
    176, 177, 178, 179, 270, 271, 272, 273, 274, 275, 276, 277, 278, 279, 280, 281, 282, 283, 284, 285, 286,
    287, 288, 289, 290, 292, 294, 295, 296, 340, 341, 342, 343, 344, 345, 346, 347, 371, 372, 373, 374, 375};

ZvDb::FileVersion dimensionCodeSince(int code)
{
    if (code == 49 || code == 50 || code == 69 || code == 90 || (code >= 290 && code <= 296)
        || (code >= 345 && code <= 347))
        return ZvDb::kR2007;
    if ((code >= 275 && code <= 279) || code == 148 || code == 179 || code == 289 || code >= 340)
        return ZvDb::kR2000;
    if (code >= 270 || code == 147)
        return ZvDb::kR13;
    return ZvDb::kR12;
}

} // namespace

void ZvDbDimStyleTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbDimStyleTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    if (filer.isReading()) {
        m_numbers.clear();
        m_texts.clear();
        m_ids.clear();
        // The first tag of a code counts. Handles of nothing that is known stay in the file.
        for (const ZvDbFiler::Group &group : filer.rest()) {
            if (group.code == 70 || group.code == 2 || group.code >= 1000)
                continue;
            switch (zvdxf::valueKind(group.code)) {
            case zvdxf::ValueKind::Text:
                m_texts.emplace(group.code, group.text);
                break;
            case zvdxf::ValueKind::Handle:
                if (!group.id.isNull())
                    m_ids.emplace(group.code, group.id);
                break;
            case zvdxf::ValueKind::Chunk:
                break;
            default:
                m_numbers.emplace(group.code, group.real);
            }
        }
        return;
    }
    for (const int code : kDimensionCodes) {
        filer.since(dimensionCodeSince(code));
        if (const auto number = m_numbers.find(code); number != m_numbers.end()) {
            if (zvdxf::valueKind(code) == zvdxf::ValueKind::Real) {
                filer.real(code, number->second);
            } else {
                int whole = int(number->second);
                filer.integer(code, whole);
            }
        } else if (const auto text = m_texts.find(code); text != m_texts.end()) {
            filer.text(code, text->second);
        } else if (const auto id = m_ids.find(code); id != m_ids.end()) {
            filer.handle(code, id->second);
        }
    }
}

void ZvDbUCSTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbUCSTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    filer.point(10, m_origin);
    filer.vector(11, m_xAxis);
    filer.vector(12, m_yAxis);
    filer.since(ZvDb::kR2000);
    filer.constant(79, 0);
    filer.constant(146, 0.0);
}

void ZvDbViewTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbViewTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    filer.real(40, m_height, 1.0);
    filer.point2d(10, m_center);
    filer.real(41, m_width, 1.0);
    filer.vector(11, m_direction);
    filer.point(12, m_target);
    filer.constant(42, 50.0);
    filer.constants({43, 44}, 0.0);
    filer.angle(50, m_twist);
    filer.constant(71, 0);
    filer.since(ZvDb::kR2000);
    filer.constant(281, 0);
    filer.constant(72, 0);
}

void ZvDbViewportTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbViewportTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
    filer.point2d(10, m_lowerLeft);
    filer.point2d(11, m_upperRight);
    filer.point2d(12, m_center);
    for (const int code : {13, 14, 15}) { // snap base, snap distance, grid distance
        ZvGePoint2d spacing(code == 13 ? 0.0 : 10.0, code == 13 ? 0.0 : 10.0);
        if (filer.isNewRecord())
            filer.point2d(code, spacing);
    }
    filer.vector(16, m_direction);
    filer.point(17, m_target);
    filer.real(40, m_height, 1.0);
    // The file holds the ratio. It stays as it is while it still gives the width.
    double ratio = m_height != 0.0 ? m_width / m_height : 1.0;
    const ZvDbFiler::Groups before = filer.existing(41, {42});
    if (!before.empty() && before.front().real * m_height == m_width)
        ratio = before.front().real;
    filer.real(41, ratio);
    if (filer.isReading())
        m_width = ratio * m_height;
    filer.constant(42, 50.0);
    filer.constants({43, 44}, 0.0);
    filer.constant(50, 0.0);
    filer.angle(51, m_twist);
    filer.constant(71, 0);
    filer.constant(72, 1000);
    filer.constant(73, 1);
    filer.constant(74, 3);
    filer.constants({75, 76, 77, 78}, 0);
    filer.since(ZvDb::kR2000);
    filer.constant(281, 0);
    filer.constant(65, 1);
}

void ZvDbRegAppTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbRegAppTableRecord");
    filer.text(2, m_name);
    filer.integer(70, m_flags);
}

void ZvDbBlockTableRecord::fileFields(ZvDbFiler &filer)
{
    ZvDbSymbolTableRecord::fileFields(filer);
    filer.subclass("AcDbBlockTableRecord");
    filer.text(2, m_name);
    filer.since(ZvDb::kR2000);
    filer.handle(340, m_layout, true);
    filer.since(ZvDb::kR2007);
    filer.integer(70, m_units, 0);
    filer.constant(280, 1);
    filer.constant(281, 0);
}

void ZvDbObjectAccess::blockBeginFields(ZvDbBlockTableRecord &block, ZvDbFiler &filer, ZvDbObjectId layer)
{
    filer.subclass("AcDbEntity");
    if (filer.isNewRecord())
        filer.nameIn(ZvDbFiler::kLayers, 8, layer, true);
    filer.subclass("AcDbBlockBegin");
    // The oldest files begin the names of the spaces in another way.
    ZvString name = block.m_name;
    const ZvDbFiler::Groups before = filer.existing(2, {70});
    if (!filer.isReading() && !before.empty() && zvdbSpaceOfBlock(name) >= 0
        && before.front().text.mid(1).compareNoCase(name.mid(1)) == 0)
        name = before.front().text;
    filer.text(2, name);
    if (filer.isReading())
        block.m_name = name;
    int flags = block.m_blockFlags | block.m_flags | (filer.isNewRecord() && block.isAnonymous() ? 1 : 0);
    filer.integer(70, flags);
    if (filer.isReading()) {
        block.m_blockFlags = flags & 0xF;
        block.m_flags = flags & ~0xF;
    }
    filer.point(10, block.m_origin);
    if (filer.isNewRecord() || (!filer.isReading() && !before.empty() && before.front().text != name))
        filer.text(3, name);
    filer.text(1, block.m_pathName);
    filer.text(4, block.m_comments, ZvString());
}

/// Versions that know no layouts get none of those that the database has made, nor their names, nor the dictionary that it
/// has made for them.
static bool isLeftOut(ZvDbObjectId id, ZvDb::FileVersion version)
{
    const ZvDbDatabasePrivate *d = version < ZvDb::kR2000 && !id.isNull() ? ZvDbDatabasePrivate::of(id) : nullptr;
    if (!d || d->stubs[id.index()].record != 0)
        return false;
    const ZvDbObject *object = d->objectAt(id.index());
    if (zvrxCast<ZvDbLayout>(object))
        return true;
    const auto *dictionary = zvrxCast<ZvDbDictionary>(object);
    if (!dictionary || dictionary->numEntries() == 0)
        return false;
    const std::unique_ptr<ZvDbDictionaryIterator> entries(dictionary->newIterator());
    while (!entries->done() && isLeftOut(entries->objectId(), version))
        entries->next();
    return entries->done();
}

void ZvDbDictionary::fileFields(ZvDbFiler &filer)
{
    ZvDbObject::fileFields(filer);
    filer.subclass("AcDbDictionary");
    filer.since(ZvDb::kR2000);
    filer.boolean(280, m_hardOwner, false);
    filer.integer(281, m_cloning, filer.isNewRecord() ? -1 : 1);
    filer.since(ZvDb::kR12);

    ZvDbFiler::Groups groups;
    if (!filer.isReading()) {
        for (const Entry &entry : m_entries) {
            if ((!entry.id.isNull() && entry.id.isErased()) || isLeftOut(entry.id, filer.version()))
                continue;
            groups.emplace_back(3, entry.name);
            groups.emplace_back(m_hardOwner ? 360 : 350, entry.id);
        }
    }
    filer.run({3, 350, 360}, groups);
    if (filer.isReading()) {
        std::vector<std::pair<ZvString, ZvDbObjectId>> entries;
        for (const ZvDbFiler::Group &group : groups) {
            if (group.code == 3)
                entries.emplace_back(group.text, ZvDbObjectId());
            else
                entries.back().second = group.id;
        }
        ZvDbObjectAccess::setEntries(*this, std::move(entries));
        m_withDefault = filer.hasSubclass("AcDbDictionaryWithDefault");
    }
    if (m_withDefault) {
        filer.subclass("AcDbDictionaryWithDefault");
        filer.handle(340, m_default);
    }
}
