// SPDX-License-Identifier: MIT
#include "entity_draw.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "entity_geometry.h"
#include "zvdbdatabase_p.h"

#include <algorithm>
#include <cwchar>
#include <unordered_map>

using namespace zvdbgeo;

ZvGiWorldDraw::~ZvGiWorldDraw() = default;

// ---- text sizes

namespace {
// Advances in units of the height of capitals, on the large side of common fonts.
constexpr double kNarrow = 0.9;
constexpr double kWide = 1.4;
constexpr double kDescent = 0.35;
constexpr double kLineDistance = 5.0 / 3.0;

double advanceOf(wchar_t character)
{
    return std::uint32_t(character) >= 0x1100 ? kWide : kNarrow;
}

bool isDigit(wchar_t character)
{
    return character >= L'0' && character <= L'9';
}
}

double zvdbTextLength(const ZvString &text)
{
    const wchar_t *c = text.wstr();
    const int count = text.length();
    double length = 0.0;
    for (int i = 0; i < count; ++i) {
        if (c[i] != L'%' || c[i + 1] != L'%' || c[i + 2] == 0) {
            length += advanceOf(c[i]);
            continue;
        }
        const wchar_t code = c[i + 2] | 0x20;
        if (code == L'u' || code == L'o' || code == L'k') { // underline, overline, strike through
            i += 2;
            continue;
        }
        length += kNarrow;
        i += 2;
        if (isDigit(c[i])) {
            for (int digits = 1; digits < 3 && isDigit(c[i + 1]); ++digits)
                ++i;
        }
    }
    return length;
}

namespace {

/// Walks formatted text and adds up its lines.
class TextBlockMeasure
{
public:
    TextBlockMeasure(const ZvGiMText &text) : m_text(text), m_height(text.height), m_width(text.width / std::max(text.height, 1e-300)) { }

    void run(double &width, double &height)
    {
        const wchar_t *c = m_text.contents.wstr();
        const int count = m_text.contents.length();
        std::vector<double> scales;
        for (int i = 0; i < count; ++i) {
            if (c[i] == L'{') {
                scales.push_back(m_scale);
            } else if (c[i] == L'}') {
                if (!scales.empty()) {
                    m_scale = scales.back();
                    scales.pop_back();
                }
            } else if (c[i] == L'\n') {
                newLine();
            } else if (c[i] == L'\\' && i + 1 < count) {
                i = code(c, i + 1, count);
            } else if (c[i] == L'%' && c[i + 1] == L'%' && c[i + 2] != 0) {
                add(c[i + 2]);
                i += 2;
            } else {
                add(c[i]);
            }
        }
        newLine();
        width = m_longest * m_height;
        height = std::max(0.0, m_below - (kLineDistance * m_text.lineSpacing - 1.0 - kDescent) * m_lastScale) * m_height;
    }

private:
    void add(wchar_t character)
    {
        const double advance = advanceOf(character) * m_scale;
        // A word that does not fit goes to the next line; counted by characters, that is a line more at the most.
        if (m_width > 0.0 && m_line + advance > m_width && m_line > 0.0)
            newLine();
        m_line += advance;
        m_lineScale = std::max(m_lineScale, m_scale);
    }
    void newLine()
    {
        const double scale = m_lineScale > 0.0 ? m_lineScale : m_scale;
        m_longest = std::max(m_longest, m_line);
        m_below += kLineDistance * m_text.lineSpacing * scale;
        m_lastScale = scale;
        m_line = 0.0;
        m_lineScale = 0.0;
    }
    /// A code that starts at \a i, behind its backslash; the position of its last character.
    int code(const wchar_t *c, int i, int count)
    {
        switch (c[i]) {
        case L'P':
        case L'X':
        case L'N':
            newLine();
            return i;
        case L'~':
        case L'\\':
        case L'{':
        case L'}':
            add(c[i]);
            return i;
        case L'L':
        case L'l':
        case L'O':
        case L'o':
        case L'K':
        case L'k':
            return i;
        case L'U': // \U+XXXX
            if (c[i + 1] == L'+') {
                add(0x4E00);
                return std::min(i + 5, count - 1);
            }
            return i;
        default:
            break;
        }
        int end = i;
        while (end < count && c[end] != L';')
            ++end;
        if (end == count)
            return i; // a code without an end shows nothing itself
        if (c[i] == L'H') {
            wchar_t *rest = nullptr;
            const double value = std::wcstod(c + i + 1, &rest);
            if (value > 0.0 && isUsable(value))
                m_scale = std::min((rest && (*rest | 0x20) == L'x') ? m_scale * value : value / m_height, 1e6);
        } else if (c[i] == L'S') {
            for (int k = i + 1; k < end; ++k)
                add(c[k]);
        }
        return end;
    }

    const ZvGiMText &m_text;
    double m_height;
    double m_width; // in units of the height
    double m_scale = 1.0;
    double m_line = 0.0;
    double m_lineScale = 0.0;
    double m_longest = 0.0;
    double m_below = 0.0;
    double m_lastScale = 1.0;
};
}

void zvdbTextBlockSize(const ZvGiMText &text, double &width, double &height)
{
    TextBlockMeasure(text).run(width, height);
    if (text.width > 0.0)
        width = std::min(width, text.width);
}

// ---- boxes

void ZvDbExtentsDraw::polyline(const ZvGePoint3d *points, int count, bool)
{
    for (int i = 0; i < count; ++i)
        addPoint(m_extents, points[i]);
}

void ZvDbExtentsDraw::widePolyline(const ZvGePoint3d *points, const double *startWidths, const double *endWidths, int count,
                                   bool closed, const ZvGeVector3d &normal)
{
    const ZvGeVector3d up = Plane(normal).z();
    for (int i = 0; i < count; ++i) {
        addPoint(m_extents, points[i]);
        if (i + 1 == count && !closed)
            break;
        const ZvGePoint3d &to = points[(i + 1) % count];
        const ZvGeVector3d across = up.crossProduct(to - points[i]).normal();
        for (double side : {-0.5, 0.5}) {
            addPoint(m_extents, points[i] + across * (side * startWidths[i]));
            addPoint(m_extents, to + across * (side * endWidths[i]));
        }
    }
}

void ZvDbExtentsDraw::arc(const ZvGePoint3d &center, double radius, const ZvGeVector3d &normal, double start, double sweep)
{
    const Plane plane(normal);
    addArcExtents(m_extents, center, plane.x() * radius, plane.y() * radius, start, sweep);
}

void ZvDbExtentsDraw::ellipse(const ZvGePoint3d &center, const ZvGeVector3d &majorAxis, const ZvGeVector3d &minorAxis,
                              double start, double sweep)
{
    addArcExtents(m_extents, center, majorAxis, minorAxis, start, sweep);
}

void ZvDbExtentsDraw::point(const ZvGePoint3d &position)
{
    addPoint(m_extents, position);
}

void ZvDbExtentsDraw::ray(const ZvGePoint3d &, const ZvGeVector3d &, bool) { }

void ZvDbExtentsDraw::fill(const ZvGiFill &fill)
{
    for (const std::vector<ZvGePoint3d> &loop : fill.loops)
        polyline(loop.data(), int(loop.size()), true);
}

void ZvDbExtentsDraw::text(const ZvGiText &text)
{
    if (!isUsable(text.height) || text.text.isEmpty())
        return;
    const ZvGeVector3d along = text.direction.normal();
    const ZvGeVector3d up = Plane(text.normal).z().crossProduct(along);
    double length = zvdbTextLength(text.text) * text.height * std::fabs(text.widthFactor);
    double height = text.height;
    ZvGePoint3d start = text.position;
    if (text.horizontal == ZvGiText::kAligned || text.horizontal == ZvGiText::kFit) {
        const double distance = text.position.distanceTo(text.secondPosition);
        if (text.horizontal == ZvGiText::kAligned && length > 0.0)
            height *= distance / length;
        length = distance;
    } else if (text.horizontal == ZvGiText::kCenter || text.horizontal == ZvGiText::kMiddle) {
        start = start - along * (0.5 * length);
    } else if (text.horizontal == ZvGiText::kRight) {
        start = start - along * length;
    }
    double base = 0.0;
    if (text.vertical == ZvGiText::kTop)
        base = -height;
    else if (text.vertical == ZvGiText::kVMiddle || text.horizontal == ZvGiText::kMiddle)
        base = -0.5 * height;
    else if (text.vertical == ZvGiText::kBottom)
        base = kDescent * height;
    const double lean = std::tan(std::min(std::max(text.oblique, -1.4), 1.4));
    for (double y : {base - kDescent * height, base + height}) {
        addPoint(m_extents, start + up * y + along * (lean * (y - base)));
        addPoint(m_extents, start + up * y + along * (lean * (y - base) + length));
    }
}

void ZvDbExtentsDraw::mtext(const ZvGiMText &text)
{
    if (!(text.height > 0.0) || !isUsable(text.height) || text.contents.isEmpty())
        return;
    double width = 0.0;
    double height = 0.0;
    zvdbTextBlockSize(text, width, height);
    const ZvGeVector3d along = text.direction.normal();
    const ZvGeVector3d up = Plane(text.normal).z().crossProduct(along);
    const int cell = std::min(std::max(text.attachment, 1), 9) - 1;
    const double left = -0.5 * width * (cell % 3);
    const double top = 0.5 * height * (cell / 3);
    const double margin = text.backgroundFill ? std::max(text.backgroundScale - 1.0, 0.0) * text.height : 0.0;
    for (double x : {left - margin, left + width + margin}) {
        for (double y : {top + margin, top - height - margin})
            addPoint(m_extents, text.position + along * x + up * y);
    }
}

void ZvDbExtentsDraw::image(const ZvString &, const ZvGePoint3d &origin, const ZvGeVector3d &u, const ZvGeVector3d &v,
                            const std::vector<ZvGePoint2d> &)
{
    for (const ZvGePoint3d &p : {origin, origin + u, origin + v, origin + u + v})
        addPoint(m_extents, p);
}

void ZvDbExtentsDraw::block(ZvDbObjectId block, const ZvGeMatrix3d &blockToWorld)
{
    const ZvGeExtents3d box = zvdbBlockExtents(block);
    if (box.isEmpty() || !isUsable(blockToWorld))
        return;
    const ZvGeExtents3d moved = box.transformedBy(blockToWorld);
    addPoint(m_extents, moved.minimum);
    addPoint(m_extents, moved.maximum);
}

void ZvDbExtentsDraw::viewport(ZvDbObjectId) { }

Zv::ErrorStatus zvdbExtentsOfPicture(const ZvDbEntity &entity, ZvGeExtents3d &extents)
{
    ZvDbExtentsDraw measure;
    entity.worldDraw(measure);
    extents = measure.extents();
    return extentsStatus(extents);
}

namespace {
constexpr int kDeepestNesting = 32;

/// Boxes of blocks, good for one state of one drawing each.
struct BlockBoxes
{
    std::uint64_t stamp = 0;
    std::unordered_map<std::uint32_t, ZvGeExtents3d> boxes;
};
thread_local std::unordered_map<std::uint32_t, BlockBoxes> s_boxes; // by number of the drawing
thread_local std::vector<ZvDbObjectId> s_open; // blocks that are being measured, outermost first
}

ZvGeExtents3d zvdbBlockExtents(ZvDbObjectId block)
{
    ZvGeExtents3d box;
    ZvDbDatabase *database = block.database();
    if (!database || int(s_open.size()) >= kDeepestNesting || std::find(s_open.begin(), s_open.end(), block) != s_open.end())
        return box;
    BlockBoxes &known = s_boxes[database->number()];
    if (s_open.empty() && known.stamp != database->changeStamp()) {
        known.boxes.clear();
        known.stamp = database->changeStamp();
    }
    const auto at = known.boxes.find(block.index());
    if (at != known.boxes.end())
        return at->second;

    ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
    if (!record)
        return box;
    s_open.push_back(block);
    const std::uint64_t high = block.asInt64() & ~std::uint64_t(0xFFFFFFFF);
    for (std::uint32_t index : record->entityIndices()) {
        ZvDbObjectPointer<ZvDbEntity> entity(ZvDbObjectId::fromInt64(high | index), ZvDb::kForRead);
        if (!entity || entity->visibility() != ZvDb::kVisible)
            continue;
        // References show their attributes in the place of the definitions.
        const auto *definition = zvrxCast<ZvDbAttributeDefinition>(entity.get());
        ZvGeExtents3d one;
        if ((!definition || definition->isConstant()) && entity->getGeomExtents(one) == Zv::eOk)
            box.add(one);
    }
    s_open.pop_back();
    s_boxes[database->number()].boxes[block.index()] = box;
    return box;
}

// ---- pieces of pictures

ZvGiTraits zvdbTraitsOf(const ZvDbEntity &entity)
{
    const ZvDbEntityProperties &properties = zvdbProperties(entity);
    ZvGiTraits traits;
    traits.color = properties.color;
    traits.layer = properties.layer;
    traits.linetype = properties.linetype;
    traits.lineWeight = properties.lineWeight;
    traits.linetypeScale = properties.linetypeScale;
    traits.transparency = properties.transparency;
    return traits;
}

void zvdbDrawArrow(ZvGiWorldDraw &draw, const ZvGePoint3d &tip, const ZvGePoint3d &from, double size, const ZvGeVector3d &normal)
{
    if (!isUsable(tip) || !isUsable(from) || !(size > 0.0) || !isUsable(size))
        return;
    const ZvGeVector3d back = (from - tip).normal();
    const ZvGeVector3d up = Plane(normal).z();
    const ZvGeVector3d side = up.crossProduct(back).normal();
    if (!(side.length() > 0.0))
        return;
    ZvGiFill head;
    head.normal = up;
    const ZvGePoint3d foot = tip + back * size;
    head.loops.push_back({tip, foot + side * (size / 6.0), foot - side * (size / 6.0)});
    head.elevation = tip.asVector().dotProduct(up);
    draw.fill(head);
}

void zvdbDrawLine(ZvGiWorldDraw &draw, const ZvGePoint3d &from, const ZvGePoint3d &to)
{
    if (!isUsable(from) || !isUsable(to))
        return;
    const ZvGePoint3d points[2] = {from, to};
    draw.polyline(points, 2, false);
}
