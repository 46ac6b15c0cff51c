// SPDX-License-Identifier: MIT
#include "db/zvdbentities.h"

#include "entity_draw.h"
#include "entity_geometry.h"

#include <algorithm>
#include <cstdlib>

using namespace zvdbgeo;

namespace {

/// A flat polyline in the coordinates of its plane, as both kinds of polyline describe it to what follows.
struct FlatSegment
{
    ZvGePoint2d from;
    ZvGePoint2d to;
    double bulge;
    double startWidth;
    double endWidth;
};

/// Calls \a visit with every segment of the vertices that \a use accepts.
template<class Vertex, class Use, class Visit>
void forEachSegment(const std::vector<Vertex> &vertices, bool closed, Use use, Visit visit)
{
    const Vertex *first = nullptr;
    const Vertex *before = nullptr;
    const auto segment = [&](const Vertex &a, const Vertex &b) {
        visit(FlatSegment {{a.point.x, a.point.y}, {b.point.x, b.point.y}, a.bulge, a.startWidth, a.endWidth});
    };
    for (const Vertex &vertex : vertices) {
        if (!isUsable(ZvGePoint2d(vertex.point.x, vertex.point.y)) || !use(vertex))
            continue;
        if (before)
            segment(*before, vertex);
        else
            first = &vertex;
        before = &vertex;
    }
    if (closed && first && first != before)
        segment(*before, *first);
    else if (first && first == before)
        segment(*first, *first); // a single vertex shows as a dot
}

void addSegmentExtents(ZvGeExtents3d &extents, const Plane &plane, double elevation, const FlatSegment &segment, double width)
{
    BulgeArc arc;
    const bool curved = bulgeArc(segment.from, segment.to, segment.bulge, arc);
    const double half = 0.5 * width;
    if (curved) {
        const double outer = arc.radius + half;
        addArcExtents(extents, plane.toWorld(arc.center, elevation), plane.x() * outer, plane.y() * outer, arc.start, arc.sweep);
        if (!(half > 0.0))
            return;
        const double inner = arc.radius - half;
        addArcExtents(extents, plane.toWorld(arc.center, elevation), plane.x() * inner, plane.y() * inner, arc.start, arc.sweep);
        return;
    }
    addPoint(extents, plane.toWorld(segment.from, elevation));
    addPoint(extents, plane.toWorld(segment.to, elevation));
    if (!(half > 0.0))
        return;
    const ZvGeVector2d along = (segment.to - segment.from).normal();
    for (double side : {-1.0, 1.0}) {
        const ZvGeVector2d atStart = ZvGeVector2d(-along.y, along.x) * (side * 0.5 * segment.startWidth);
        const ZvGeVector2d atEnd = ZvGeVector2d(-along.y, along.x) * (side * 0.5 * segment.endWidth);
        addPoint(extents, plane.toWorld(segment.from + atStart, elevation));
        addPoint(extents, plane.toWorld(segment.to + atEnd, elevation));
    }
}

template<class ForEach>
Zv::ErrorStatus flatExtents(ZvGeExtents3d &extents, const ZvGeVector3d &normal, double elevation, ForEach segments)
{
    const Plane plane(normal);
    extents = ZvGeExtents3d();
    segments([&](const FlatSegment &segment) {
        addSegmentExtents(extents, plane, elevation, segment, std::max(segment.startWidth, segment.endWidth));
    });
    return extentsStatus(extents);
}

template<class ForEach>
void drawFlat(ZvGiWorldDraw &draw, const ZvGeVector3d &normal, double elevation, bool closed, ForEach segments)
{
    static thread_local std::vector<double> startWidths;
    static thread_local std::vector<double> endWidths;
    const Plane plane(normal);
    std::vector<ZvGePoint3d> &points = pointBuffer();
    startWidths.clear();
    endWidths.clear();
    bool wide = false;
    segments([&](const FlatSegment &segment) {
        if (points.empty())
            points.push_back(plane.toWorld(segment.from, elevation));
        const std::size_t before = points.size();
        BulgeArc arc;
        if (points.size() < kMostPoints && bulgeArc(segment.from, segment.to, segment.bulge, arc)) {
            sampleArc(plane.toWorld(arc.center, elevation), plane.x() * arc.radius, plane.y() * arc.radius, arc.start, arc.sweep,
                      draw.deviation(), false, points);
            points.back() = plane.toWorld(segment.to, elevation);
        } else {
            points.push_back(plane.toWorld(segment.to, elevation));
        }
        const std::size_t chords = points.size() - before;
        const double growth = (segment.endWidth - segment.startWidth) / double(chords);
        for (std::size_t i = 0; i < chords; ++i) {
            startWidths.push_back(segment.startWidth + growth * double(i));
            endWidths.push_back(segment.startWidth + growth * double(i + 1));
        }
        wide = wide || segment.startWidth > 0.0 || segment.endWidth > 0.0;
    });
    if (points.empty())
        return;
    // The segment back to the start is told by "closed", not by a point.
    const bool loop = closed && points.size() > 2;
    const int count = int(points.size()) - (loop ? 1 : 0);
    if (!wide) {
        draw.polyline(points.data(), count, loop);
        return;
    }
    draw.widePolyline(points.data(), startWidths.data(), endWidths.data(), count, loop, plane.z());
}

bool everyVertex(const ZvDbPolyline::Vertex &)
{
    return true;
}

double usableWidth(double width)
{
    return width > 0.0 && isUsable(width) ? width : 0.0;
}
}

// ---- flat polyline

ZVRX_DEFINE_MEMBERS(ZvDbPolyline, ZvDbEntity)
ZvDbPolyline::ZvDbPolyline() = default;

Zv::ErrorStatus ZvDbPolyline::addVertex(const ZvGePoint2d &point, double bulge, double startWidth, double endWidth)
{
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    Vertex vertex;
    vertex.point = point;
    vertex.bulge = bulge;
    vertex.startWidth = startWidth;
    vertex.endWidth = endWidth;
    m_vertices.push_back(vertex);
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbPolyline::setVertices(const std::vector<Vertex> &vertices)
{
    return store(m_vertices, vertices);
}

Zv::ErrorStatus ZvDbPolyline::setClosed(bool closed)
{
    return store(m_flags, closed ? m_flags | 1 : m_flags & ~1);
}

Zv::ErrorStatus ZvDbPolyline::transformBy(const ZvGeMatrix3d &matrix)
{
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid())
        return Zv::eInvalidInput;
    if (!map.isSimilar()) {
        if (m_constantWidth > 0.0)
            return Zv::eInvalidInput;
        for (const Vertex &vertex : m_vertices) {
            if (vertex.bulge != 0.0 || vertex.startWidth > 0.0 || vertex.endWidth > 0.0)
                return Zv::eInvalidInput;
        }
    }
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (Vertex &vertex : m_vertices) {
        vertex.point = map.point(vertex.point, m_elevation);
        vertex.bulge = map.isMirrored() ? -vertex.bulge : vertex.bulge;
        vertex.startWidth *= map.scale();
        vertex.endWidth *= map.scale();
    }
    m_constantWidth *= map.scale();
    m_elevation = map.elevation(m_elevation);
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDbPolyline::getGeomExtents(ZvGeExtents3d &extents) const
{
    const double constant = usableWidth(m_constantWidth);
    return flatExtents(extents, m_normal, m_elevation, [&](auto visit) {
        forEachSegment(m_vertices, isClosed(), everyVertex, [&](FlatSegment segment) {
            segment.startWidth = constant > 0.0 ? constant : usableWidth(segment.startWidth);
            segment.endWidth = constant > 0.0 ? constant : usableWidth(segment.endWidth);
            visit(segment);
        });
    });
}

void ZvDbPolyline::worldDraw(ZvGiWorldDraw &draw) const
{
    if (!isUsable(m_elevation))
        return;
    const double constant = usableWidth(m_constantWidth);
    drawFlat(draw, m_normal, m_elevation, isClosed(), [&](auto visit) {
        forEachSegment(m_vertices, isClosed(), everyVertex, [&](FlatSegment segment) {
            segment.startWidth = constant > 0.0 ? constant : usableWidth(segment.startWidth);
            segment.endWidth = constant > 0.0 ? constant : usableWidth(segment.endWidth);
            visit(segment);
        });
    });
}

// ---- polyline with vertex records

namespace {
enum PolylineFlag { kClosed = 1, kInSpace = 8, kMesh = 16, kMeshClosedN = 32, kPolyface = 64 };
enum VertexFlag { kFrameControl = 16, kMeshVertex = 64, kFaceRecord = 128 };

/// The usable ones of the points, joined.
void drawThrough(ZvGiWorldDraw &draw, const std::vector<ZvGePoint3d> &points, bool closed)
{
    std::vector<ZvGePoint3d> &usable = pointBuffer();
    for (const ZvGePoint3d &point : points) {
        if (isUsable(point))
            usable.push_back(point);
    }
    if (!usable.empty())
        draw.polyline(usable.data(), int(usable.size()), closed && usable.size() > 2);
}
}

ZVRX_DEFINE_MEMBERS(ZvDb2dPolyline, ZvDbEntity)
ZvDb2dPolyline::ZvDb2dPolyline() = default;

Zv::ErrorStatus ZvDb2dPolyline::transformBy(const ZvGeMatrix3d &matrix)
{
    if (!isUsable(matrix))
        return Zv::eInvalidInput;
    if (m_flags & (kInSpace | kMesh | kPolyface)) {
        if (!assertWriteEnabled())
            return Zv::eNotOpenForWrite;
        for (Vertex &vertex : m_vertices)
            vertex.point.transformBy(matrix);
        return Zv::eOk;
    }
    const PlaneMap map(matrix, m_normal);
    if (!map.isValid())
        return Zv::eInvalidInput;
    if (!map.isSimilar()) {
        for (const Vertex &vertex : m_vertices) {
            if (vertex.bulge != 0.0 || vertex.startWidth > 0.0 || vertex.endWidth > 0.0)
                return Zv::eInvalidInput;
        }
    }
    if (!assertWriteEnabled())
        return Zv::eNotOpenForWrite;
    for (Vertex &vertex : m_vertices) {
        vertex.point = map.point(ZvGePoint3d(vertex.point.x, vertex.point.y, m_elevation));
        vertex.bulge = map.isMirrored() ? -vertex.bulge : vertex.bulge;
        vertex.startWidth *= map.scale();
        vertex.endWidth *= map.scale();
    }
    m_startWidth *= map.scale();
    m_endWidth *= map.scale();
    m_elevation = map.elevation(m_elevation);
    m_normal = map.normal();
    return Zv::eOk;
}

Zv::ErrorStatus ZvDb2dPolyline::getGeomExtents(ZvGeExtents3d &extents) const
{
    if (m_flags & (kInSpace | kMesh | kPolyface))
        return zvdbExtentsOfPicture(*this, extents);
    return flatExtents(extents, m_normal, m_elevation, [&](auto visit) {
        forEachSegment(m_vertices, (m_flags & kClosed) != 0,
                       [](const Vertex &vertex) { return (vertex.flags & kFrameControl) == 0; },
                       [&](FlatSegment segment) {
                           segment.startWidth = usableWidth(segment.startWidth);
                           segment.endWidth = usableWidth(segment.endWidth);
                           visit(segment);
                       });
    });
}

void ZvDb2dPolyline::worldDraw(ZvGiWorldDraw &draw) const
{
    if (m_flags & kPolyface) {
        std::vector<ZvGePoint3d> corners;
        for (const Vertex &vertex : m_vertices) {
            if (vertex.flags & kMeshVertex)
                corners.push_back(vertex.point);
        }
        const int count = int(corners.size());
        for (const Vertex &face : m_vertices) {
            if (draw.isAborted())
                return;
            if ((face.flags & kFaceRecord) == 0 || (face.flags & kMeshVertex) != 0)
                continue;
            int used = 0;
            while (used < 4 && face.faces[used] != 0 && face.faces[used] >= -count && face.faces[used] <= count)
                ++used;
            for (int i = 0; i < used; ++i) {
                const int to = std::abs(face.faces[(i + 1) % used]);
                if (face.faces[i] > 0 && used > 1)
                    zvdbDrawLine(draw, corners[std::size_t(face.faces[i] - 1)], corners[std::size_t(to - 1)]);
            }
        }
        return;
    }
    if (m_flags & kMesh) {
        // A smoothed mesh holds its frame too; the grid is that of the vertices which the counts fit.
        std::vector<ZvGePoint3d> grid;
        const long long wanted = static_cast<long long>(m_meshM) * m_meshN;
        for (bool frame : {false, true}) {
            grid.clear();
            for (const Vertex &vertex : m_vertices) {
                if (((vertex.flags & kFrameControl) != 0) == frame)
                    grid.push_back(vertex.point);
            }
            if (static_cast<long long>(grid.size()) >= wanted)
                break;
        }
        if (m_meshM < 1 || m_meshN < 1 || static_cast<long long>(grid.size()) < wanted) {
            drawThrough(draw, grid, false); // counts that do not fit: at least the points are seen
            return;
        }
        std::vector<ZvGePoint3d> row;
        const auto drawRow = [&](int first, int step, int count, bool closed) {
            row.clear();
            for (int i = 0; i < count; ++i)
                row.push_back(grid[std::size_t(first + i * step)]);
            drawThrough(draw, row, closed);
        };
        for (int m = 0; m < m_meshM && !draw.isAborted(); ++m)
            drawRow(m * m_meshN, 1, m_meshN, (m_flags & kMeshClosedN) != 0);
        for (int n = 0; n < m_meshN && !draw.isAborted(); ++n)
            drawRow(n, m_meshN, m_meshM, (m_flags & kClosed) != 0);
        return;
    }
    const auto shown = [](const Vertex &vertex) { return (vertex.flags & kFrameControl) == 0; };
    if (m_flags & kInSpace) {
        std::vector<ZvGePoint3d> points;
        for (const Vertex &vertex : m_vertices) {
            if (shown(vertex))
                points.push_back(vertex.point);
        }
        drawThrough(draw, points, (m_flags & kClosed) != 0);
        return;
    }
    if (!isUsable(m_elevation))
        return;
    drawFlat(draw, m_normal, m_elevation, (m_flags & kClosed) != 0, [&](auto visit) {
        forEachSegment(m_vertices, (m_flags & kClosed) != 0, shown, [&](FlatSegment segment) {
            segment.startWidth = usableWidth(segment.startWidth);
            segment.endWidth = usableWidth(segment.endWidth);
            visit(segment);
        });
    });
}
