// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"
#include "file_fields.h"
#include "zvdbfiler.h"

namespace {

typedef ZvDbFiler::Group Group;
typedef ZvDbFiler::Groups Groups;

enum LoopFlag { kPolylineLoop = 2 };
enum EdgeType { kLine = 1, kArc = 2, kEllipse = 3, kSpline = 4 };

bool isSame(const ZvGePoint2d &a, const ZvGePoint2d &b)
{
    return a.x == b.x && a.y == b.y;
}

bool isSame(const std::vector<ZvGePoint2d> &a, const std::vector<ZvGePoint2d> &b)
{
    return a.size() == b.size()
        && std::equal(a.begin(), a.end(), b.begin(),
                      [](const ZvGePoint2d &p, const ZvGePoint2d &q) { return isSame(p, q); });
}

template <class Edge> bool isSameEdge(const Edge &a, const Edge &b)
{
    return a.type == b.type && isSame(a.start, b.start) && isSame(a.end, b.end) && a.radius == b.radius
        && a.startAngle == b.startAngle && a.endAngle == b.endAngle && a.counterClockwise == b.counterClockwise
        && a.degree == b.degree && a.knots == b.knots && a.weights == b.weights && isSame(a.points, b.points);
}

template <class Loop> bool areSame(const std::vector<Loop> &a, const std::vector<Loop> &b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](const Loop &p, const Loop &q) {
               return p.flags == q.flags && p.closed == q.closed && isSame(p.vertices, q.vertices)
                   && p.bulges == q.bulges && p.edges.size() == q.edges.size()
                   && std::equal(p.edges.begin(), p.edges.end(), q.edges.begin(),
                                 [](const auto &e, const auto &f) { return isSameEdge(e, f); });
           });
}

template <class Edge> void readEdge(const Group &group, Edge &edge)
{
    const bool isSpline = edge.type == kSpline;
    switch (group.code) {
    case 73:
        if (!isSpline)
            edge.counterClockwise = group.integer != 0;
        break;
    case 94:
        edge.degree = int(group.integer);
        break;
    case 10:
        if (isSpline)
            edge.points.emplace_back(group.real, 0.0);
        else
            edge.start.x = group.real;
        break;
    case 20:
        if (!isSpline)
            edge.start.y = group.real;
        else if (!edge.points.empty())
            edge.points.back().y = group.real;
        break;
    case 11:
        if (!isSpline)
            edge.end.x = group.real;
        break;
    case 21:
        if (!isSpline)
            edge.end.y = group.real;
        break;
    case 40:
        if (isSpline)
            edge.knots.push_back(group.real);
        else
            edge.radius = group.real;
        break;
    case 42:
        edge.weights.push_back(group.real);
        break;
    case 50:
        edge.startAngle = zvdbRadians(group.real);
        break;
    case 51:
        edge.endAngle = zvdbRadians(group.real);
        break;
    default:
        break;
    }
}

template <class Loop> void readLoops(const Groups &groups, std::vector<Loop> &loops)
{
    loops.clear();
    bool hasBulges = false;
    for (const Group &group : groups) {
        if (group.code == 92) {
            loops.emplace_back();
            loops.back().flags = int(group.integer);
            hasBulges = false;
            continue;
        }
        if (loops.empty())
            continue;
        Loop &loop = loops.back();
        if ((loop.flags & kPolylineLoop) == 0) {
            if (group.code == 72) {
                loop.edges.emplace_back();
                loop.edges.back().type = int(group.integer);
            } else if (!loop.edges.empty()) {
                readEdge(group, loop.edges.back());
            }
            continue;
        }
        switch (group.code) {
        case 72:
            hasBulges = group.integer != 0;
            break;
        case 73:
            loop.closed = group.integer != 0;
            break;
        case 10:
            loop.vertices.emplace_back(group.real, 0.0);
            if (hasBulges)
                loop.bulges.push_back(0.0);
            break;
        case 20:
            if (!loop.vertices.empty())
                loop.vertices.back().y = group.real;
            break;
        case 42:
            if (!loop.bulges.empty())
                loop.bulges.back() = group.real;
            break;
        default:
            break;
        }
    }
}

template <class Edge> void writeEdge(const Edge &edge, bool tellsFitPoints, Groups &groups)
{
    groups.emplace_back(72, edge.type);
    const auto point = [&groups](int code, const ZvGePoint2d &p) {
        groups.emplace_back(code, p.x);
        groups.emplace_back(code + 10, p.y);
    };
    if (edge.type == kSpline) {
        groups.emplace_back(94, edge.degree);
        groups.emplace_back(73, edge.weights.empty() ? 0 : 1);
        groups.emplace_back(74, 0);
        groups.emplace_back(95, int(edge.knots.size()));
        groups.emplace_back(96, int(edge.points.size()));
        for (const double knot : edge.knots)
            groups.emplace_back(40, knot);
        for (std::size_t i = 0; i < edge.points.size(); ++i) {
            point(10, edge.points[i]);
            if (i < edge.weights.size())
                groups.emplace_back(42, edge.weights[i]);
        }
        if (tellsFitPoints)
            groups.emplace_back(97, 0);
        return;
    }
    point(10, edge.start);
    if (edge.type == kLine || edge.type == kEllipse)
        point(11, edge.end);
    if (edge.type == kLine)
        return;
    groups.emplace_back(40, edge.radius);
    groups.push_back(Group::ofAngle(50, edge.startAngle));
    groups.push_back(Group::ofAngle(51, edge.endAngle));
    groups.emplace_back(73, edge.counterClockwise ? 1 : 0);
}

/// The objects that loops were made of, by loop: a handle for each, as the record has them.
std::vector<Groups> readSources(const Groups &groups)
{
    std::vector<Groups> sources;
    for (const Group &group : groups) {
        if (group.code == 92)
            sources.emplace_back();
        else if (group.code == 330 && !sources.empty())
            sources.back().push_back(group);
    }
    return sources;
}

template <class Loop>
Groups writeLoops(const std::vector<Loop> &loops, const std::vector<Groups> &sources, bool tellsFitPoints)
{
    Groups groups;
    groups.emplace_back(91, int(loops.size()));
    for (std::size_t k = 0; k < loops.size(); ++k) {
        const Loop &loop = loops[k];
        groups.emplace_back(92, loop.flags);
        if (loop.flags & kPolylineLoop) {
            groups.emplace_back(72, loop.bulges.empty() ? 0 : 1);
            groups.emplace_back(73, loop.closed ? 1 : 0);
            groups.emplace_back(93, int(loop.vertices.size()));
            for (std::size_t i = 0; i < loop.vertices.size(); ++i) {
                groups.emplace_back(10, loop.vertices[i].x);
                groups.emplace_back(20, loop.vertices[i].y);
                if (i < loop.bulges.size())
                    groups.emplace_back(42, loop.bulges[i]);
            }
        } else {
            groups.emplace_back(93, int(loop.edges.size()));
            for (const auto &edge : loop.edges)
                writeEdge(edge, tellsFitPoints, groups);
        }
        const Groups none;
        const Groups &own = k < sources.size() ? sources[k] : none;
        groups.emplace_back(97, int(own.size()));
        groups.insert(groups.end(), own.begin(), own.end());
    }
    return groups;
}

void readPattern(const Groups &groups, std::vector<ZvGiFill::PatternLine> &lines)
{
    lines.clear();
    for (const Group &group : groups) {
        if (group.code == 53) {
            lines.emplace_back();
            lines.back().angle = zvdbRadians(group.real);
            continue;
        }
        if (lines.empty())
            continue;
        ZvGiFill::PatternLine &line = lines.back();
        if (group.code == 43)
            line.base.x = group.real;
        else if (group.code == 44)
            line.base.y = group.real;
        else if (group.code == 45)
            line.offset.x = group.real;
        else if (group.code == 46)
            line.offset.y = group.real;
        else if (group.code == 49)
            line.dashes.push_back(group.real);
    }
}

Groups writePattern(const std::vector<ZvGiFill::PatternLine> &lines)
{
    Groups groups;
    groups.emplace_back(78, int(lines.size()));
    for (const ZvGiFill::PatternLine &line : lines) {
        groups.push_back(Group::ofAngle(53, line.angle));
        groups.emplace_back(43, line.base.x);
        groups.emplace_back(44, line.base.y);
        groups.emplace_back(45, line.offset.x);
        groups.emplace_back(46, line.offset.y);
        groups.emplace_back(79, int(line.dashes.size()));
        for (const double dash : line.dashes)
            groups.emplace_back(49, dash);
    }
    return groups;
}

} // namespace

void ZvDbHatch::fileFields(ZvDbFiler &filer)
{
    ZvDbEntity::fileFields(filer);
    filer.subclass("AcDbHatch");
    filer.elevation(10, m_elevation);
    filer.vector(210, m_normal, filer.isNewRecord() ? ZvGeVector3d() : ZvGeVector3d(0, 0, 1));
    filer.text(2, m_patternName);
    int solid = m_solid ? 1 : 0;
    filer.integer(70, solid);
    m_solid = solid != 0;
    filer.constant(71, 0);

    // What the class does not know of loops (fit points, sources) stays as long as the loops are what they were.
    Groups groups = filer.existing(91, {75});
    if (filer.isReading()) {
        filer.sequence(91, {75}, groups);
        readLoops(groups, m_loops);
    } else {
        std::vector<Loop> before;
        readLoops(groups, before);
        if (filer.isNewRecord() || !areSame(before, m_loops))
            groups = writeLoops(m_loops, readSources(groups), filer.version() >= ZvDb::kR2010);
        filer.sequence(91, {75}, groups);
    }
    filer.integer(75, m_hatchStyle);
    filer.constant(76, 1);
    if (!m_solid) {
        filer.angle(52, m_patternAngle);
        filer.real(41, m_patternScale);
        filer.constant(77, 0);
    }
    groups = filer.existing(78, {47, 98, 450});
    if (filer.isReading()) {
        filer.sequence(78, {47, 98, 450}, groups);
        readPattern(groups, m_pattern);
    } else if (!groups.empty() || !m_solid) {
        std::vector<ZvGiFill::PatternLine> before;
        readPattern(groups, before);
        const bool same = before.size() == m_pattern.size()
            && std::equal(before.begin(), before.end(), m_pattern.begin(), [](const auto &a, const auto &b) {
                              return a.angle == b.angle && isSame(a.base, b.base) && a.offset.x == b.offset.x
                                  && a.offset.y == b.offset.y && a.dashes == b.dashes;
                          });
        if (filer.isNewRecord() || !same)
            groups = writePattern(m_pattern);
        filer.sequence(78, {47, 98, 450}, groups);
    }
    filer.constant(98, 0);

    filer.since(ZvDb::kR2004);
    filer.boolean(450, m_gradient, false);
    if (!filer.isReading() && !m_gradient)
        return;
    filer.constant(451, 0);
    filer.real(460, m_gradientAngle, 0.0); // in radians, unlike all other angles
    filer.constant(461, 0.0);
    filer.constant(452, 0);
    filer.constant(462, 0.0);
    groups = filer.existing(453, {470});
    if (filer.isReading()) {
        int number = -1;
        for (const Group &group : groups) {
            if (group.code == 463)
                ++number;
            if (number < 0 || number > 1)
                continue;
            ZvCmColor &color = m_gradientColors[number];
            if (group.code == 63)
                color.setColorIndex(std::uint16_t(group.integer & 0x1FF));
            else if (group.code == 421)
                color.setRGB(std::uint8_t(group.integer >> 16), std::uint8_t(group.integer >> 8),
                             std::uint8_t(group.integer));
        }
    } else if (filer.isNewRecord()) {
        groups.emplace_back(453, 2);
        for (int i = 0; i < 2; ++i) {
            groups.emplace_back(463, double(i));
            const ZvCmColor &color = m_gradientColors[i];
            groups.emplace_back(63, color.isByColor() ? 7 : int(color.colorIndex()));
            groups.emplace_back(421, color.red() << 16 | color.green() << 8 | color.blue());
        }
        filer.sequence(453, {470}, groups);
        filer.constant(470, "LINEAR");
    }
}
