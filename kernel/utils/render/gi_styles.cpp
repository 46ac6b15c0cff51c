// SPDX-License-Identifier: MIT
#include "gi_styles.h"

#include <algorithm>
#include <cmath>

namespace {

// A pattern that repeats within this many of the shortest visible lengths looks like a grey line at best.
constexpr double kMinPatternLength = 3.0;
// So does one whose longest element is shorter.
constexpr double kMinElementLength = 1.5;
constexpr std::size_t kMaxKeptDashes = 4096;

GiDashes makeDashes(const GiLinetype &linetype, double scale, double dot, double finest)
{
    GiDashes made;
    double total = 0.0;
    double longest = 0.0;
    for (const auto &dash : linetype.dashes) {
        total += std::abs(dash.length);
        longest = std::max(longest, std::abs(dash.length));
    }
    if (!(total * scale >= kMinPatternLength * finest) || longest * scale < kMinElementLength * finest
        || !std::isfinite(total * scale))
        return made;

    // Neighbours of one kind grow together; a dot takes its length from the gap behind it.
    std::vector<double> runs; // above 0 a dash, below 0 a gap
    double debt = 0.0;
    for (const auto &dash : linetype.dashes) {
        double length = dash.length * scale;
        if (length == 0.0) {
            length = dot;
            debt += dot;
        } else if (length < 0.0 && debt > 0.0) {
            const double paid = std::min(debt, -length * 0.5);
            length += paid;
            debt -= paid;
        }
        if (!runs.empty() && (runs.back() > 0.0) == (length > 0.0))
            runs.back() += length;
        else
            runs.push_back(length);
    }
    double start = 0.0;
    if (runs.size() > 1 && runs.front() < 0.0) {
        // A pen's pattern begins with a dash: turn ours, and begin late in it.
        start = -runs.front();
        std::rotate(runs.begin(), runs.begin() + 1, runs.end());
    }
    if (runs.size() > 1 && (runs.size() % 2) == 1) {
        // First and last element are of one kind. They meet at each repeat.
        const double last = runs.back();
        runs.pop_back();
        if (last > 0.0) {
            runs.front() += last;
            start = start > 0.0 ? start : -last;
        } else {
            runs.back() += last;
        }
    }
    if (runs.size() < 2 || runs.front() < 0.0)
        return made; // nothing but dashes, or nothing but gaps
    for (double run : runs) {
        made.lengths.push_back(std::abs(run));
        made.total += std::abs(run);
    }
    // Above, a start above 0 counts back from the end of the turned pattern, one below 0 on from its start.
    made.start = start > 0.0 ? made.total - start : -start;
    return made;
}

} // namespace

GiStyles::GiStyles(ZvDbDatabase *database) : m_database(database) { }

void GiStyles::refresh()
{
    const std::uint64_t layers = m_database->changeStamp(m_database->layerTableId());
    const std::uint64_t linetypes = m_database->changeStamp(m_database->linetypeTableId());
    const std::uint64_t textStyles = m_database->changeStamp(m_database->textStyleTableId());
    if (layers != m_layerStamp)
        m_layers.clear();
    if (linetypes != m_linetypeStamp) {
        m_linetypes.clear();
        m_dashes.clear();
    }
    if (textStyles != m_textStyleStamp)
        m_textStyles.clear();
    m_shapeFiles.clear(); // what is on the disk may have changed, and the drawing's place
    if (m_dashes.size() > kMaxKeptDashes)
        m_dashes.clear();
    m_layerStamp = layers;
    m_linetypeStamp = linetypes;
    m_textStyleStamp = textStyles;
}

const GiLayer &GiStyles::layer(ZvDbObjectId id)
{
    const auto [found, isNew] = m_layers.try_emplace(id.index());
    GiLayer &layer = found->second;
    if (!isNew)
        return layer;
    layer.color.setColorIndex(7);
    ZvDbObjectPointer<ZvDbLayerTableRecord> record(id, ZvDb::kForRead);
    if (!record)
        return layer; // a layer that is missing or busy hides nothing
    layer.color = record->color();
    layer.linetype = record->linetypeObjectId();
    layer.lineWeight = record->lineWeight();
    const ZvCmTransparency transparency = record->transparency();
    if (transparency.method() == ZvCmTransparency::kByAlpha)
        layer.alpha = transparency.alpha();
    layer.isOff = record->isOff();
    layer.isFrozen = record->isFrozen();
    // The layer of the points that dimensions are made from is for the screen only.
    layer.isPlottable = record->isPlottable() && record->name().compareNoCase("Defpoints") != 0;
    return layer;
}

const GiLinetype &GiStyles::linetype(ZvDbObjectId id)
{
    const auto [found, isNew] = m_linetypes.try_emplace(id.index());
    GiLinetype &linetype = found->second;
    if (!isNew)
        return linetype;
    ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
    if (!record)
        return linetype;
    for (int i = 0; i < record->numDashes(); ++i) {
        const ZvDbLinetypeTableRecord::Dash &dash = record->dashAt(i);
        linetype.dashes.push_back(dash);
        linetype.length += std::abs(dash.length);
        linetype.isComplex = linetype.isComplex || ((dash.flags & 2) != 0 && !dash.text.isEmpty())
            || ((dash.flags & 4) != 0 && dash.shapeNumber != 0);
    }
    if (!(linetype.length > 0.0))
        linetype.dashes.clear();
    return linetype;
}

const GiTextStyle &GiStyles::textStyle(ZvDbObjectId id)
{
    const auto [found, isNew] = m_textStyles.try_emplace(id.index());
    GiTextStyle &style = found->second;
    if (!isNew)
        return style;
    ZvDbObjectPointer<ZvDbTextStyleTableRecord> record(id, ZvDb::kForRead);
    if (!record)
        return style;
    style.typeface = record->typeface();
    style.fontFile = record->fontFileName();
    style.bigFontFile = record->bigFontFileName();
    style.bold = record->isBold();
    style.italic = record->isItalic();
    style.vertical = record->isVertical();
    style.widthFactor = record->xScale() > 0.0 ? record->xScale() : 1.0;
    style.oblique = record->obliquingAngle();
    style.fixedHeight = record->textSize();
    return style;
}

const GiShape *GiStyles::shape(ZvDbObjectId id, int number)
{
    const ZvString &name = textStyle(id).fontFile;
    const auto [found, isNew] = m_shapeFiles.try_emplace(id.index());
    if (isNew)
        found->second = GiShapeFiles::instance().read(giFindShapeFile(*m_database, name));
    return found->second ? found->second->shape(number) : giUsualShape(name, number);
}

const GiDashes *GiStyles::dashes(ZvDbObjectId id, double scale, double dot, double finest)
{
    const GiLinetype &type = linetype(id);
    if (type.dashes.empty())
        return nullptr;
    const auto [found, isNew] = m_dashes.try_emplace(DashesKey{id.index(), float(scale), float(dot)});
    if (isNew)
        found->second = makeDashes(type, scale, dot, finest);
    return found->second.lengths.empty() ? nullptr : &found->second;
}
