// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"
#include "zvdbfiler.h"

#include <algorithm>

namespace {

typedef ZvDbFiler::Group Group;
typedef ZvDbFiler::Groups Groups;

/// What follows the common part of a dimension, by its type.
const char *const kDimensionMarkers[]
    = {"AcDbAlignedDimension", "AcDbAlignedDimension",       "AcDb2LineAngularDimension", "AcDbDiametricDimension",
       "AcDbRadialDimension",  "AcDb3PointAngularDimension", "AcDbOrdinateDimension",     "AcDbAlignedDimension"};

} // namespace

void ZvDbDimension::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    const auto points = [&](std::initializer_list<int> codes) {
        for (const int code : codes) {
            ZvGePoint3d point;
            if (filer.isReading()) {
                if (filer.has(code)) {
                    filer.point(code, point);
                    m_points.emplace_back(code, point);
                }
                continue;
            }
            for (auto &entry : m_points) {
                if (entry.first == code)
                    filer.point(code, entry.second);
            }
        }
    };
    if (filer.isReading())
        m_points.clear();
    filer.subclass("AcDbDimension");
    filer.since(ZvDb::kR2010);
    filer.constant(280, 0);
    filer.since(ZvDb::kR12);
    filer.nameIn(ZvDbFiler::kBlocks, 2, m_block);
    points({10, 11, 12});
    filer.integer(70, m_type);
    filer.since(ZvDb::kR2000);
    filer.constant(71, 5);
    filer.real(42, m_measurement, 0.0);
    filer.since(ZvDb::kR12);
    filer.text(1, m_text, ZvString());
    filer.nameIn(ZvDbFiler::kDimStyles, 3, m_style);
    filer.vector(210, m_normal, ZvGeVector3d(0, 0, 1));

    const char *marker = kDimensionMarkers[m_type & 7];
    if (!filer.isNewRecord()) {
        for (const char *candidate : kDimensionMarkers) {
            if (filer.hasSubclass(candidate))
                marker = candidate;
        }
    }
    filer.subclass(marker);
    points({13, 14, 15, 16});
    filer.angle(50, m_rotation, 0.0);
    if (filer.isNewRecord() && (m_type & 7) == 0)
        filer.subclass("AcDbRotatedDimension");
}

// ---- multileaders

namespace {

/// Where a tag of a multileader's context stands.
enum class Depth { Context, Leader, Line };

/// Walks the tags of a context and calls \a visit(depth, group) for each. The brackets are texts; outside a leader the
/// one that begins a line is the contents of the multileader, whatever they say.
template <class Tags, class Visit> void walkContext(Tags &groups, Visit visit)
{
    Depth depth = Depth::Context;
    for (auto &group : groups) {
        if (group.code == 302 && group.text == "LEADER{")
            depth = Depth::Leader;
        else if (depth == Depth::Leader && group.code == 304 && group.text == "LEADER_LINE{")
            depth = Depth::Line;
        else if (depth == Depth::Line && group.code == 305)
            depth = Depth::Leader;
        else if (group.code == 303)
            depth = Depth::Context;
        visit(depth, group);
    }
}

/// One coordinate of a point whose codes are n, n + 10, n + 20; null where the code is none of them.
double *coordinate(ZvGePoint3d &point, int code, int first)
{
    return code == first ? &point.x : code == first + 10 ? &point.y : code == first + 20 ? &point.z : nullptr;
}

double *coordinate(ZvGeVector3d &vector, int code, int first)
{
    return code == first ? &vector.x : code == first + 10 ? &vector.y : code == first + 20 ? &vector.z : nullptr;
}

struct Context
{
    ZvGePoint3d base;
    ZvGePoint3d location;
    ZvGePoint3d blockPosition;
    ZvGePoint3d planeOrigin;
    ZvGeVector3d direction{1, 0, 0};
    ZvGeVector3d normal{0, 0, 1};
    ZvString contents;
    ZvDbObjectId textStyle;
    ZvDbObjectId block;
    double scale = 1.0;
    double textHeight = 4.0;
    double textWidth = 0.0;
    double arrowSize = 4.0;
    int attachment = 1;
    bool hasBlock = false;
    ZvCmColor textColor;
    std::vector<std::vector<ZvGePoint3d>> lines;
};

Context readContext(const Groups &groups)
{
    Context context;
    ZvGePoint3d landing;
    std::size_t firstOfLeader = 0;
    bool isRead = false; // points of lines: whether the last one's codes are complete
    Depth before = Depth::Context;
    walkContext(groups, [&](Depth depth, const Group &group) {
        if (depth == Depth::Leader && before == Depth::Context) {
            landing = ZvGePoint3d();
            firstOfLeader = context.lines.size();
        }
        if (depth == Depth::Line && before == Depth::Leader)
            context.lines.emplace_back();
        if (depth == Depth::Context && before == Depth::Leader) {
            for (std::size_t i = firstOfLeader; i < context.lines.size(); ++i)
                context.lines[i].push_back(landing);
        }
        before = depth;
        if (depth == Depth::Line) {
            std::vector<ZvGePoint3d> &line = context.lines.back();
            if (group.code == 10)
                line.emplace_back(group.real, 0.0, 0.0);
            else if (!line.empty() && coordinate(line.back(), group.code, 10))
                *coordinate(line.back(), group.code, 10) = group.real;
            return;
        }
        if (depth == Depth::Leader) {
            if (double *value = coordinate(landing, group.code, 10))
                *value = group.real;
            return;
        }
        for (auto [first, point] : {std::pair(10, &context.base), std::pair(12, &context.location),
                                    std::pair(15, &context.blockPosition), std::pair(110, &context.planeOrigin)}) {
            if (double *value = coordinate(*point, group.code, first))
                *value = group.real;
        }
        for (auto [first, vector] : {std::pair(11, &context.normal), std::pair(13, &context.direction)}) {
            if (double *value = coordinate(*vector, group.code, first))
                *value = group.real;
        }
        switch (group.code) {
        case 40:
            context.scale = group.real;
            break;
        case 41:
            context.textHeight = group.real;
            break;
        case 43:
            context.textWidth = group.real;
            break;
        case 140:
            context.arrowSize = group.real;
            break;
        case 171:
            context.attachment = int(group.integer);
            break;
        case 304:
            context.contents = group.text;
            break;
        case 340:
            context.textStyle = group.id;
            break;
        case 341:
            context.block = group.id;
            break;
        case 296:
            context.hasBlock = group.integer != 0;
            break;
        case 90:
            if (!isRead)
                context.textColor.setColor(std::uint32_t(group.integer));
            isRead = true;
            break;
        default:
            break;
        }
    });
    return context;
}

/// Puts the values into the tags that hold them.
void changeContext(Groups &groups, const Context &context)
{
    std::size_t line = 0;
    std::size_t vertex = 0;
    Depth before = Depth::Context;
    walkContext(groups, [&](Depth depth, Group &group) {
        const bool entersLine = depth == Depth::Line && before == Depth::Leader;
        if (depth == Depth::Leader && before == Depth::Line)
            ++line;
        before = depth;
        if (entersLine)
            vertex = 0;
        if (depth != Depth::Context) {
            if (line >= context.lines.size())
                return;
            const std::vector<ZvGePoint3d> &points = context.lines[line];
            if (depth == Depth::Line && group.code == 10)
                ++vertex;
            if (points.empty() || (depth == Depth::Line && (vertex == 0 || vertex > points.size() - 1)))
                return;
            ZvGePoint3d point = depth == Depth::Line ? points[vertex - 1] : points.back();
            if (const double *value = coordinate(point, group.code, 10))
                group.real = *value;
            return;
        }
        for (auto [first, point] : {std::pair(10, &context.base), std::pair(12, &context.location),
                                    std::pair(15, &context.blockPosition), std::pair(110, &context.planeOrigin)}) {
            if (const double *value = coordinate(const_cast<ZvGePoint3d &>(*point), group.code, first))
                group.real = *value;
        }
        for (auto [first, vector] : {std::pair(11, &context.normal), std::pair(13, &context.direction)}) {
            if (const double *value = coordinate(const_cast<ZvGeVector3d &>(*vector), group.code, first))
                group.real = *value;
        }
        if (group.code == 40)
            group.real = context.scale;
        else if (group.code == 41)
            group.real = context.textHeight;
        else if (group.code == 43)
            group.real = context.textWidth;
        else if (group.code == 140)
            group.real = context.arrowSize;
        else if (group.code == 304)
            group.text = context.contents;
        else if (group.code == 171)
            group.integer = context.attachment;
    });
}

/// The context of a multileader that was made here.
Groups newContext(const Context &context, const ZvGePoint3d &place)
{
    Groups groups;
    const auto point = [&groups](int code, double x, double y, double z) {
        groups.emplace_back(code, x);
        groups.emplace_back(code + 10, y);
        groups.emplace_back(code + 20, z);
    };
    groups.emplace_back(300, ZvString("CONTEXT_DATA{"));
    groups.emplace_back(40, context.scale);
    point(10, place.x, place.y, place.z);
    groups.emplace_back(41, context.textHeight);
    groups.emplace_back(140, context.arrowSize);
    groups.emplace_back(145, 0.0);
    for (const int code : {174, 175})
        groups.emplace_back(code, 1);
    for (const int code : {176, 177})
        groups.emplace_back(code, 0);
    groups.emplace_back(290, context.block.isNull() ? 1 : 0);
    if (context.block.isNull()) {
        groups.emplace_back(304, context.contents);
        point(11, context.normal.x, context.normal.y, context.normal.z);
        groups.emplace_back(340, context.textStyle);
        point(12, place.x, place.y, place.z);
        point(13, context.direction.x, context.direction.y, context.direction.z);
        groups.emplace_back(42, 0.0);
        groups.emplace_back(43, context.textWidth);
        groups.emplace_back(44, 0.0);
        groups.emplace_back(45, 1.0);
        groups.emplace_back(170, 1);
        groups.emplace_back(90, int(context.textColor.color()));
        groups.emplace_back(171, context.attachment);
        groups.emplace_back(172, 5);
        groups.emplace_back(296, 0);
    } else {
        groups.emplace_back(296, 1);
        groups.emplace_back(341, context.block);
        point(14, context.normal.x, context.normal.y, context.normal.z);
        point(15, place.x, place.y, place.z);
        point(16, context.scale, context.scale, context.scale);
        groups.emplace_back(46, 0.0);
        groups.emplace_back(93, int(context.textColor.color()));
    }
    point(110, place.x, place.y, place.z);
    point(111, 1.0, 0.0, 0.0);
    point(112, 0.0, 1.0, 0.0);
    groups.emplace_back(297, 0);
    for (std::size_t k = 0; k < context.lines.size(); ++k) {
        const std::vector<ZvGePoint3d> &line = context.lines[k];
        if (line.empty())
            continue;
        groups.emplace_back(302, ZvString("LEADER{"));
        groups.emplace_back(290, 1);
        groups.emplace_back(291, 1);
        point(10, line.back().x, line.back().y, line.back().z);
        point(11, 1.0, 0.0, 0.0);
        groups.emplace_back(90, int(k));
        groups.emplace_back(40, 0.0);
        groups.emplace_back(304, ZvString("LEADER_LINE{"));
        for (std::size_t i = 0; i + 1 < line.size(); ++i)
            point(10, line[i].x, line[i].y, line[i].z);
        groups.emplace_back(91, 0);
        groups.emplace_back(305, ZvString("}"));
        groups.emplace_back(303, ZvString("}"));
    }
    return groups;
}

} // namespace

void ZvDbMLeader::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbMLeader");
    Groups groups = filer.existing(300, {301});
    if (filer.isReading()) {
        const Context context = readContext(groups);
        m_contents = context.contents;
        m_textLocation = context.hasBlock ? context.blockPosition : context.location;
        m_textDirection = context.direction;
        m_normal = context.normal;
        m_textHeight = context.textHeight;
        m_textWidth = context.textWidth;
        m_arrowSize = context.arrowSize;
        m_scale = context.scale;
        m_attachment = context.attachment;
        m_textStyle = context.textStyle;
        m_block = context.hasBlock ? context.block : ZvDbObjectId();
        m_textColor = context.textColor;
        m_lines = context.lines;
    } else {
        Context context = readContext(groups);
        ZvGePoint3d &place = context.hasBlock ? context.blockPosition : context.location;
        // What is not modelled of the place goes along with it.
        const ZvGeVector3d shift = m_textLocation - place;
        if (shift.x != 0.0 || shift.y != 0.0 || shift.z != 0.0) {
            context.base = context.base + shift;
            context.planeOrigin = context.planeOrigin + shift;
            context.location = context.location + shift;
            place = m_textLocation;
        }
        context.contents = m_contents;
        context.direction = m_textDirection;
        context.normal = m_normal;
        context.textHeight = m_textHeight;
        context.textWidth = m_textWidth;
        context.arrowSize = m_arrowSize;
        context.scale = m_scale;
        context.attachment = m_attachment;
        context.lines = m_lines;
        if (groups.empty()) {
            context.block = m_block;
            context.textStyle = m_textStyle;
            context.textColor = m_textColor;
            groups = newContext(context, m_textLocation);
        } else {
            changeContext(groups, context);
        }
    }
    filer.sequence(300, {301}, groups);
    filer.constant(301, "}");
    filer.handle(340, m_style, true);
    filer.constant(90, 0);
    filer.constant(170, 1);
    filer.colorWord(91, m_lineColor);
    filer.constant(171, -2);
    filer.constants({290, 291}, 1);
    filer.constant(41, 8.0);
    filer.constant(42, m_arrowSize);
    filer.constant(172, m_block.isNull() ? 2 : 1);
    if (filer.isReading() && m_textStyle.isNull())
        filer.handle(343, m_textStyle);
    else if (filer.isNewRecord())
        filer.handle(343, m_textStyle);
    if (!filer.isNewRecord())
        return;
    filer.constants({173, 95, 174}, 1);
    filer.constant(175, 0);
    filer.colorWord(92, m_textColor);
    filer.constant(292, 0);
    filer.colorWord(93, m_textColor);
    filer.constantPoint(10, 1.0, 1.0, 1.0);
    filer.constant(43, 0.0);
    filer.constants({176, 293, 294}, 0);
    filer.constants({178, 179}, 1);
    filer.constant(45, m_scale);
}
