// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

#include <algorithm>

using namespace zvdbgeo;

namespace {
enum LoopFlag { kExternal = 1, kTextBox = 8, kOutermost = 16 };
enum EdgeType { kLineEdge = 1, kArcEdge = 2, kEllipseEdge = 3, kSplineEdge = 4 };
enum HatchStyle { kByTurns = 0, kOuterArea = 1, kWithoutIslands = 2 };

/// Ellipse edges tell their ends by the angle from the centre, curves run by parameter.
double parameterOfAngle(double angle, double ratio)
{
    if (!(std::fabs(ratio) > 1e-12))
        return angle;
    const double turns = std::floor((angle + kPi) / kTwoPi);
    return std::atan2(std::sin(angle) / ratio, std::cos(angle)) + turns * kTwoPi;
}

/// An edge as the part of an ellipse, in the coordinates of the hatch's plane.
struct EdgeArc
{
    ZvGePoint3d center;
    ZvGeVector3d u;
    ZvGeVector3d v;
    double start = 0.0;
    double sweep = 0.0;
};

double edgeSweep(double start, double end)
{
    const double sweep = end - start;
    return std::fabs(sweep) >= kTwoPi - 1e-9 ? kTwoPi : sweepOf(start, end);
}

template<class Edge>
bool arcOfEdge(const Edge &edge, EdgeArc &arc)
{
    double start = edge.startAngle;
    double end = edge.endAngle;
    if (!isUsable(start) || !isUsable(end) || !isUsable(edge.radius))
        return false;
    arc.center = ZvGePoint3d(edge.start.x, edge.start.y, 0.0);
    if (edge.type == kArcEdge) {
        arc.u = ZvGeVector3d(edge.radius, 0.0, 0.0);
        arc.v = ZvGeVector3d(0.0, edge.radius, 0.0);
    } else {
        arc.u = ZvGeVector3d(edge.end.x, edge.end.y, 0.0);
        arc.v = ZvGeVector3d(-edge.end.y, edge.end.x, 0.0) * edge.radius;
        const bool full = std::fabs(end - start) >= kTwoPi - 1e-9;
        if (!full) {
            start = parameterOfAngle(start, edge.radius);
            end = parameterOfAngle(end, edge.radius);
        }
    }
    // Clockwise edges count their angles clockwise.
    const double sweep = edgeSweep(start, end);
    arc.start = edge.counterClockwise ? start : -start;
    arc.sweep = edge.counterClockwise ? sweep : -sweep;
    return true;
}

template<class Edge>
void sampleEdge(const Edge &edge, double deviation, std::vector<ZvGePoint3d> &points)
{
    points.clear();
    EdgeArc arc;
    switch (edge.type) {
    case kLineEdge:
        points.push_back({edge.start.x, edge.start.y, 0.0});
        points.push_back({edge.end.x, edge.end.y, 0.0});
        break;
    case kArcEdge:
    case kEllipseEdge:
        if (arcOfEdge(edge, arc))
            sampleArc(arc.center, arc.u, arc.v, arc.start, arc.sweep, deviation, true, points);
        break;
    case kSplineEdge: {
        std::vector<ZvGePoint3d> control;
        for (const ZvGePoint2d &point : edge.points)
            control.push_back({point.x, point.y, 0.0});
        sampleSpline(edge.degree, edge.knots, edge.weights, control, deviation, points);
        break;
    }
    default:
        break;
    }
    points.erase(std::remove_if(points.begin(), points.end(), [](const ZvGePoint3d &p) { return !isUsable(p); }), points.end());
}

template<class Loop>
void samplePolylineLoop(const Loop &loop, double deviation, std::vector<ZvGePoint3d> &points)
{
    const std::size_t count = loop.vertices.size();
    for (std::size_t i = 0; i < count; ++i) {
        const ZvGePoint2d &from = loop.vertices[i];
        const ZvGePoint2d &to = loop.vertices[(i + 1) % count];
        if (!isUsable(from))
            continue;
        points.push_back({from.x, from.y, 0.0});
        BulgeArc arc;
        if (i < loop.bulges.size() && isUsable(to) && points.size() < kMostPoints && bulgeArc(from, to, loop.bulges[i], arc)) {
            sampleArc({arc.center.x, arc.center.y, 0.0}, {arc.radius, 0.0, 0.0}, {0.0, arc.radius, 0.0}, arc.start, arc.sweep,
                      deviation, false, points);
            points.pop_back(); // the end is the next vertex
        }
    }
}

/// The same corner, told by two edges.
bool isSame(const ZvGePoint3d &a, const ZvGePoint3d &b)
{
    return a.distanceTo(b) <= 1e-10 * (1.0 + std::fabs(a.x) + std::fabs(a.y));
}

/// Joins the edges into one outline. Edges may be given against the walk; each is turned the way that joins better.
template<class Loop>
void sampleEdgeLoop(const Loop &loop, double deviation, std::vector<ZvGePoint3d> &points)
{
    std::vector<ZvGePoint3d> edge;
    bool second = false; // the edge after the first decides which way the first is walked
    for (const auto &described : loop.edges) {
        if (points.size() > kMostPoints)
            return;
        sampleEdge(described, deviation, edge);
        if (edge.empty())
            continue;
        if (points.empty()) {
            points = edge;
            second = true;
            continue;
        }
        if (second) {
            const double asIs = std::min(points.back().distanceTo(edge.front()), points.back().distanceTo(edge.back()));
            const double turned = std::min(points.front().distanceTo(edge.front()), points.front().distanceTo(edge.back()));
            if (turned < asIs)
                std::reverse(points.begin(), points.end());
            second = false;
        }
        if (points.back().distanceTo(edge.back()) < points.back().distanceTo(edge.front()))
            std::reverse(edge.begin(), edge.end());
        const bool joined = isSame(points.back(), edge.front());
        points.insert(points.end(), edge.begin() + (joined ? 1 : 0), edge.end());
    }
}
}

ZVRX_DEFINE_MEMBERS(ZvDbHatch, ZvDbEntity)
ZvDbHatch::ZvDbHatch() = default;

int ZvDbHatch::numLoops() const
{
    return int(m_loops.size());
}

void ZvDbHatch::describe(ZvGiFill &fill, double deviation) const
{
    const Plane plane(m_normal);
    fill = ZvGiFill();
    fill.solid = m_solid || m_gradient;
    fill.normal = plane.z();
    fill.elevation = m_elevation;
    fill.gradient = m_gradient;
    fill.gradientColors[0] = m_gradientColors[0];
    fill.gradientColors[1] = m_gradientColors[1];
    fill.gradientAngle = isUsable(m_gradientAngle) ? m_gradientAngle : 0.0;
    if (!fill.solid) {
        for (const ZvGiFill::PatternLine &line : m_pattern) {
            const ZvGeVector2d along(std::cos(line.angle), std::sin(line.angle));
            const double apart = std::fabs(along.x * line.offset.y - along.y * line.offset.x);
            bool usable = isUsable(line.angle) && isUsable(line.base) && isUsable(apart) && apart > 1e-9;
            for (double dash : line.dashes)
                usable = usable && isUsable(dash);
            if (usable) // lines that lie on each other would never end
                fill.pattern.push_back(line);
        }
    }
    // The even-odd rule makes islands by turns; the other styles leave out what lies deeper.
    const int wanted = m_hatchStyle == kOuterArea ? kExternal | kOutermost | kTextBox : m_hatchStyle == kWithoutIslands ? kExternal : 0;
    const bool anyWanted = std::any_of(m_loops.begin(), m_loops.end(), [&](const Loop &loop) { return (loop.flags & wanted) != 0; });
    std::vector<ZvGePoint3d> points;
    for (const Loop &loop : m_loops) {
        if (anyWanted && (loop.flags & wanted) == 0)
            continue;
        points.clear();
        if (!loop.vertices.empty())
            samplePolylineLoop(loop, deviation, points);
        else
            sampleEdgeLoop(loop, deviation, points);
        if (points.size() > 1 && isSame(points.front(), points.back()))
            points.pop_back();
        if (points.size() < 2)
            continue;
        std::vector<ZvGePoint3d> world;
        world.reserve(points.size());
        for (const ZvGePoint3d &point : points) {
            const ZvGePoint3d placed = plane.toWorld(ZvGePoint3d(point.x, point.y, m_elevation));
            if (isUsable(placed))
                world.push_back(placed);
        }
        if (world.size() > 1)
            fill.loops.push_back(std::move(world));
    }
}

Zv::ErrorStatus ZvDbHatch::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid() || !map.isSimilar())
        return Zv::eInvalidInput;
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    const auto move = [&](ZvGePoint2d &point) { point = map.point(point, m_elevation); };
    for (Loop &loop : m_loops) {
        for (ZvGePoint2d &vertex : loop.vertices)
            move(vertex);
        for (double &bulge : loop.bulges)
            bulge = map.isMirrored() ? -bulge : bulge;
        for (Edge &edge : loop.edges) {
            move(edge.start);
            for (ZvGePoint2d &point : edge.points)
                move(point);
            if (edge.type == kEllipseEdge) {
                // Its angles count from the major axis, and that goes along.
                const ZvGeVector2d major = map.vector({edge.end.x, edge.end.y});
                edge.end = ZvGePoint2d(major.x, major.y);
                edge.counterClockwise = edge.counterClockwise != map.isMirrored();
            } else if (edge.type == kArcEdge) {
                const double sweep = edgeSweep(edge.startAngle, edge.endAngle);
                const double turn = edge.counterClockwise ? 1.0 : -1.0;
                edge.radius *= map.scale();
                edge.counterClockwise = edge.counterClockwise != map.isMirrored();
                if (!map.keepsDirections()) {
                    const double start = map.angle(turn * edge.startAngle);
                    edge.startAngle = normalized(edge.counterClockwise ? start : -start);
                    edge.endAngle = edge.startAngle + sweep;
                }
            } else {
                move(edge.end);
            }
        }
    }
    for (ZvGiFill::PatternLine &line : m_pattern) {
        const ZvGeVector2d offset = map.vector(line.offset);
        move(line.base);
        line.angle = map.angle(line.angle);
        line.offset = offset;
        for (double &dash : line.dashes)
            dash *= map.scale();
    }
    if (!map.keepsDirections()) {
        m_patternAngle = map.angle(m_patternAngle);
        m_patternScale *= map.scale();
        m_gradientAngle = map.angle(m_gradientAngle);
    }
    m_elevation = map.elevation(m_elevation);
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbHatch::getGeomExtents(ZvGeExtents3d &extents) const
{
    const Plane plane(m_normal);
    extents = ZvGeExtents3d();
    const auto inWorld = [&](double x, double y) { return plane.toWorld(ZvGePoint3d(x, y, m_elevation)); };
    const auto addArc = [&](const EdgeArc &arc) {
        addArcExtents(extents, inWorld(arc.center.x, arc.center.y), plane.x() * arc.u.x + plane.y() * arc.u.y,
                      plane.x() * arc.v.x + plane.y() * arc.v.y, arc.start, arc.sweep);
    };
    std::vector<ZvGePoint3d> points;
    for (const Loop &loop : m_loops) {
        const std::size_t count = loop.vertices.size();
        for (std::size_t i = 0; i < count; ++i) {
            addPoint(extents, inWorld(loop.vertices[i].x, loop.vertices[i].y));
            BulgeArc arc;
            if (i < loop.bulges.size() && bulgeArc(loop.vertices[i], loop.vertices[(i + 1) % count], loop.bulges[i], arc))
                addArc({{arc.center.x, arc.center.y, 0.0}, {arc.radius, 0.0, 0.0}, {0.0, arc.radius, 0.0}, arc.start, arc.sweep});
        }
        for (const Edge &edge : loop.edges) {
            EdgeArc arc;
            if ((edge.type == kArcEdge || edge.type == kEllipseEdge) && arcOfEdge(edge, arc)) {
                addArc(arc);
                continue;
            }
            sampleEdge(edge, 0.0, points);
            for (const ZvGePoint3d &point : points)
                addPoint(extents, inWorld(point.x, point.y));
        }
    }
    return extentsStatus(extents);
}

void ZvDbHatch::worldDraw(ZvGiWorldDraw &draw) const
{
    ZvGiFill fill;
    describe(fill, draw.deviation());
    if (!fill.loops.empty() && (fill.solid || !fill.pattern.empty()))
        draw.fill(fill);
}
