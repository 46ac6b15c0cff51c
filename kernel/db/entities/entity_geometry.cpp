// SPDX-License-Identifier: MIT
#include "entity_geometry.h"

#include <algorithm>

namespace zvdbgeo {

namespace {
constexpr double kRelative = 1e-9;
constexpr int kDefaultChords = 128; // of a full circle

ZvGeVector3d mapped(const ZvGeMatrix3d &m, const ZvGeVector3d &v)
{
    return {m.entry[0][0] * v.x + m.entry[0][1] * v.y + m.entry[0][2] * v.z,
            m.entry[1][0] * v.x + m.entry[1][1] * v.y + m.entry[1][2] * v.z,
            m.entry[2][0] * v.x + m.entry[2][1] * v.y + m.entry[2][2] * v.z};
}

bool isMove(const ZvGeMatrix3d &m)
{
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            if (m.entry[row][column] != (row == column ? 1.0 : 0.0))
                return false;
        }
    }
    return true;
}
}

bool isUsable(const ZvGeMatrix3d &matrix)
{
    for (int row = 0; row < 3; ++row) {
        for (double value : matrix.entry[row]) {
            if (!isUsable(value))
                return false;
        }
    }
    return true;
}

void addPoint(ZvGeExtents3d &extents, const ZvGePoint3d &p)
{
    if (isUsable(p))
        extents.add(p);
}

double normalized(double angle)
{
    if (!isUsable(angle))
        return 0.0;
    if (angle >= 0.0 && angle < kTwoPi)
        return angle;
    const double rest = std::fmod(angle, kTwoPi);
    const double positive = rest < 0.0 ? rest + kTwoPi : rest;
    return positive < kTwoPi ? positive : 0.0;
}

double sweepOf(double start, double end)
{
    const double sweep = normalized(end - start);
    return sweep > 1e-12 ? sweep : kTwoPi;
}

Plane::Plane(const ZvGeVector3d &normal)
{
    if (normal.x == 0.0 && normal.y == 0.0 && normal.z > 0.0)
        return;
    const double length = normal.length();
    if (!isUsable(length) || length < 1e-100)
        return;
    m_z = normal / length;
    m_x = m_z.arbitraryXAxis();
    m_y = m_z.crossProduct(m_x);
    m_isWorld = false;
}

PlaneMap::PlaneMap(const ZvGeMatrix3d &matrix, const ZvGeVector3d &normal)
{
    if (!isUsable(matrix))
        return;
    const Plane from(normal);
    m_keepsDirections = isMove(matrix);
    if (m_keepsDirections) {
        m_normal = from.z(); // a plain move leaves the normal as it is, to the last bit
    } else {
        const ZvGeVector3d u = mapped(matrix, from.x());
        const ZvGeVector3d v = mapped(matrix, from.y());
        const ZvGeVector3d w = mapped(matrix, from.z());
        const ZvGeVector3d across = u.crossProduct(v);
        const double area = across.length();
        if (!(area > 1e-30) || !isUsable(area))
            return;
        // A mirrored plane keeps the side that its normal was on.
        m_normal = across * ((across.dotProduct(w) < 0.0 ? -1.0 : 1.0) / area);
    }
    const Plane to(m_normal);
    const ZvGeVector3d axes[3] = {from.x(), from.y(), from.z()};
    const ZvGeVector3d rows[3] = {to.x(), to.y(), to.z()};
    const ZvGeVector3d shift(matrix.entry[0][3], matrix.entry[1][3], matrix.entry[2][3]);
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            m_map.entry[row][column] = m_keepsDirections ? (row == column ? 1.0 : 0.0)
                                                         : rows[row].dotProduct(mapped(matrix, axes[column]));
        m_map.entry[row][3] = rows[row].dotProduct(shift);
    }
    m_xx = m_map.entry[0][0];
    m_xy = m_map.entry[0][1];
    m_yx = m_map.entry[1][0];
    m_yy = m_map.entry[1][1];
    const double det = m_xx * m_yy - m_xy * m_yx;
    m_mirrored = det < 0.0;
    m_scale = std::sqrt(std::fabs(det));
    const double x2 = m_xx * m_xx + m_yx * m_yx;
    const double y2 = m_xy * m_xy + m_yy * m_yy;
    const double xy = m_xx * m_xy + m_yx * m_yy;
    const double largest = std::max(x2, y2);
    m_similar = std::fabs(x2 - y2) <= kRelative * largest && std::fabs(xy) <= kRelative * largest;
    m_valid = m_scale > 1e-15 && isUsable(m_scale);
}

ZvGePoint3d PlaneMap::point(const ZvGePoint3d &p) const
{
    const auto &e = m_map.entry;
    return {e[0][0] * p.x + e[0][1] * p.y + e[0][2] * p.z + e[0][3], e[1][0] * p.x + e[1][1] * p.y + e[1][2] * p.z + e[1][3],
            e[2][0] * p.x + e[2][1] * p.y + e[2][2] * p.z + e[2][3]};
}

ZvGePoint2d PlaneMap::point(const ZvGePoint2d &p, double elevation) const
{
    const ZvGePoint3d q = point(ZvGePoint3d(p.x, p.y, elevation));
    return {q.x, q.y};
}

double PlaneMap::angle(double a) const
{
    if (m_keepsDirections)
        return a;
    const ZvGeVector2d image = vector({std::cos(a), std::sin(a)});
    return normalized(std::atan2(image.y, image.x));
}

int chordCount(double radius, double sweep, double deviation)
{
    sweep = std::min(std::fabs(sweep), kTwoPi);
    if (!(sweep > 0.0))
        return 1;
    double step = kTwoPi / kDefaultChords;
    if (deviation > 0.0 && radius > 0.0 && isUsable(radius))
        step = deviation >= radius ? kPi / 4.0 : std::min(kPi / 4.0, 2.0 * std::acos(1.0 - deviation / radius));
    const double count = step > 0.0 ? std::ceil(sweep / step - 1e-9) : double(kMostChords);
    return int(std::min(std::max(count, 1.0), double(kMostChords)));
}

void sampleArc(const ZvGePoint3d &center, const ZvGeVector3d &u, const ZvGeVector3d &v, double start, double sweep,
               double deviation, bool withStart, std::vector<ZvGePoint3d> &points)
{
    if (!isUsable(center) || !isUsable(u) || !isUsable(v) || !isUsable(start) || !isUsable(sweep))
        return;
    const int chords = chordCount(std::max(u.length(), v.length()), sweep, deviation);
    for (int i = withStart ? 0 : 1; i <= chords; ++i) {
        const double t = start + sweep * i / chords;
        points.push_back(center + u * std::cos(t) + v * std::sin(t));
    }
}

void addArcExtents(ZvGeExtents3d &extents, const ZvGePoint3d &center, const ZvGeVector3d &u, const ZvGeVector3d &v,
                   double start, double sweep)
{
    if (!isUsable(center) || !isUsable(u) || !isUsable(v) || !isUsable(start) || !isUsable(sweep))
        return;
    const auto at = [&](double t) { addPoint(extents, center + u * std::cos(t) + v * std::sin(t)); };
    if (sweep < 0.0) {
        start += sweep;
        sweep = -sweep;
    }
    at(start);
    at(start + sweep);
    const double extremes[3] = {std::atan2(v.x, u.x), std::atan2(v.y, u.y), std::atan2(v.z, u.z)};
    for (double extreme : extremes) {
        for (double t : {extreme, extreme + kPi}) {
            if (sweep >= kTwoPi || normalized(t - start) <= sweep)
                at(t);
        }
    }
}

bool bulgeArc(const ZvGePoint2d &from, const ZvGePoint2d &to, double bulge, BulgeArc &arc)
{
    // The sagitta is half the chord times the bulge; below this no picture shows it.
    if (!(std::fabs(bulge) > 1e-10) || !(std::fabs(bulge) < 1e6))
        return false;
    const ZvGeVector2d chord = to - from;
    const double length = chord.length();
    if (!(length > 0.0) || !isUsable(length))
        return false;
    const double ahead = (1.0 - bulge * bulge) / (4.0 * bulge); // distance of the centre left of the chord, in chords
    const ZvGePoint2d middle = from + chord * 0.5;
    arc.center = ZvGePoint2d(middle.x - chord.y * ahead, middle.y + chord.x * ahead);
    arc.radius = length * (1.0 + bulge * bulge) / (4.0 * std::fabs(bulge));
    arc.start = std::atan2(from.y - arc.center.y, from.x - arc.center.x);
    arc.sweep = 4.0 * std::atan(bulge);
    return isUsable(arc.center) && isUsable(arc.radius);
}

namespace {

constexpr int kHighestDegree = 25;

struct Weighted
{
    double x = 0.0, y = 0.0, z = 0.0, w = 1.0;
};

/// A curve that has been made fit for evaluation.
class SplineCurve
{
public:
    SplineCurve(int degree, const std::vector<double> &knots, const std::vector<double> &weights,
                const std::vector<ZvGePoint3d> &points)
        : m_points(points), m_weights(weights)
    {
        const int count = int(points.size());
        m_degree = std::min({std::max(degree, 1), kHighestDegree, count - 1});
        m_weighted = int(weights.size()) == count;
        m_knots = knots;
        if (m_degree != degree || !knotsFit())
            makeEvenKnots();
    }

    int firstSpan() const { return m_degree; }
    int endSpan() const { return int(m_points.size()); }
    double knot(int i) const { return m_knots[std::size_t(i)]; }
    int degree() const { return m_degree; }

    ZvGePoint3d at(int span, double t) const
    {
        Weighted d[kHighestDegree + 1];
        for (int j = 0; j <= m_degree; ++j) {
            const std::size_t i = std::size_t(span - m_degree + j);
            const double w = m_weighted ? m_weights[i] : 1.0;
            d[j] = {m_points[i].x * w, m_points[i].y * w, m_points[i].z * w, w};
        }
        for (int r = 1; r <= m_degree; ++r) {
            for (int j = m_degree; j >= r; --j) {
                const int i = span - m_degree + j;
                const double from = knot(i);
                const double width = knot(i + m_degree - r + 1) - from;
                const double a = width > 0.0 ? (t - from) / width : 0.0;
                d[j].x += (d[j - 1].x - d[j].x) * (1.0 - a);
                d[j].y += (d[j - 1].y - d[j].y) * (1.0 - a);
                d[j].z += (d[j - 1].z - d[j].z) * (1.0 - a);
                d[j].w += (d[j - 1].w - d[j].w) * (1.0 - a);
            }
        }
        const Weighted &result = d[m_degree];
        const double w = std::fabs(result.w) > 1e-300 ? result.w : 1.0;
        return {result.x / w, result.y / w, result.z / w};
    }

private:
    bool knotsFit() const
    {
        if (m_knots.size() != m_points.size() + std::size_t(m_degree) + 1)
            return false;
        for (std::size_t i = 0; i < m_knots.size(); ++i) {
            if (!isUsable(m_knots[i]) || (i && m_knots[i] < m_knots[i - 1]))
                return false;
        }
        return m_knots[std::size_t(endSpan())] > m_knots[std::size_t(m_degree)];
    }
    void makeEvenKnots()
    {
        const int count = int(m_points.size());
        m_knots.resize(std::size_t(count + m_degree + 1));
        for (int i = 0; i < int(m_knots.size()); ++i)
            m_knots[std::size_t(i)] = std::min(std::max(i - m_degree, 0), count - m_degree);
    }

    const std::vector<ZvGePoint3d> &m_points;
    const std::vector<double> &m_weights;
    std::vector<double> m_knots;
    int m_degree = 1;
    bool m_weighted = false;
};

double distanceToChord(const ZvGePoint3d &p, const ZvGePoint3d &a, const ZvGePoint3d &b)
{
    const ZvGeVector3d chord = b - a;
    const double length2 = chord.dotProduct(chord);
    if (!(length2 > 0.0))
        return p.distanceTo(a);
    const double along = std::min(std::max((p - a).dotProduct(chord) / length2, 0.0), 1.0);
    return p.distanceTo(a + chord * along);
}

/// Points behind \a from up to \a to, halving where a quarter, the middle or three quarters leave the chord.
template<class Curve>
void bisect(const Curve &curve, double t0, const ZvGePoint3d &from, double t1, const ZvGePoint3d &to, double deviation,
            int depth, std::vector<ZvGePoint3d> &points)
{
    const double middle = 0.5 * (t0 + t1);
    const ZvGePoint3d p = curve(middle);
    const bool far = distanceToChord(p, from, to) > deviation
        || distanceToChord(curve(0.5 * (t0 + middle)), from, to) > deviation
        || distanceToChord(curve(0.5 * (middle + t1)), from, to) > deviation;
    if (far && depth > 0 && points.size() < kMostPoints && middle > t0 && middle < t1) {
        bisect(curve, t0, from, middle, p, deviation, depth - 1, points);
        bisect(curve, middle, p, t1, to, deviation, depth - 1, points);
        return;
    }
    points.push_back(to);
}

constexpr int kDeepest = 10;

/// Where no deviation is given a box is wanted: a hundred-thousandth of the size of the curve.
double usableDeviation(double deviation, const std::vector<ZvGePoint3d> &points)
{
    if (deviation > 0.0 && isUsable(deviation))
        return deviation;
    ZvGeExtents3d box;
    for (const ZvGePoint3d &p : points)
        addPoint(box, p);
    return box.isEmpty() ? 1.0 : std::max(box.minimum.distanceTo(box.maximum) / 1e5, 1e-12);
}

void dropUnusable(std::vector<ZvGePoint3d> &points)
{
    points.erase(std::remove_if(points.begin(), points.end(), [](const ZvGePoint3d &p) { return !isUsable(p); }), points.end());
}
}

void sampleSpline(int degree, const std::vector<double> &knots, const std::vector<double> &weights,
                  const std::vector<ZvGePoint3d> &controlPoints, double deviation, std::vector<ZvGePoint3d> &points)
{
    points.clear();
    if (controlPoints.size() < 2) {
        points = controlPoints;
        dropUnusable(points);
        return;
    }
    deviation = usableDeviation(deviation, controlPoints);
    const SplineCurve spline(degree, knots, weights, controlPoints);
    points.push_back(spline.at(spline.firstSpan(), spline.knot(spline.firstSpan())));
    for (int span = spline.firstSpan(); span < spline.endSpan() && points.size() < kMostPoints; ++span) {
        const double t0 = spline.knot(span);
        const double t1 = spline.knot(span + 1);
        if (!(t1 > t0))
            continue;
        const auto curve = [&](double t) { return spline.at(span, t); };
        // Two halves first: an S lies on its chord at the middle.
        const double middle = 0.5 * (t0 + t1);
        const ZvGePoint3d p0 = points.back();
        const ZvGePoint3d p1 = curve(t1);
        if (spline.degree() == 1) {
            points.push_back(p1);
            continue;
        }
        const ZvGePoint3d p = curve(middle);
        bisect(curve, t0, p0, middle, p, deviation, kDeepest, points);
        bisect(curve, middle, p, t1, p1, deviation, kDeepest, points);
    }
    dropUnusable(points);
}

void sampleThrough(const std::vector<ZvGePoint3d> &through, bool closed, double deviation, std::vector<ZvGePoint3d> &points)
{
    points.clear();
    std::vector<ZvGePoint3d> p;
    for (const ZvGePoint3d &point : through) {
        if (isUsable(point) && (p.empty() || point.distanceTo(p.back()) > 0.0))
            p.push_back(point);
    }
    if (closed && p.size() > 2 && !(p.front().distanceTo(p.back()) > 0.0))
        p.pop_back();
    if (p.size() < 3) {
        points = p;
        if (closed && p.size() == 2)
            points.push_back(p.front());
        return;
    }
    deviation = usableDeviation(deviation, p);
    const int count = int(p.size());
    const auto at = [&](int i) -> const ZvGePoint3d & { return p[std::size_t((i + count) % count)]; };
    // Tangents from the parabola through three neighbours, by chord lengths; at open ends the outer parabola goes on.
    const auto velocity = [&](int i) {
        const int middle = closed ? i : std::min(std::max(i, 1), count - 2);
        const double before = at(middle).distanceTo(at(middle - 1));
        const double after = at(middle + 1).distanceTo(at(middle));
        const ZvGeVector3d a = (at(middle) - at(middle - 1)) / before;
        const ZvGeVector3d b = (at(middle + 1) - at(middle)) / after;
        if (i < middle)
            return a * ((2.0 * before + after) / (before + after)) - b * (before / (before + after));
        if (i > middle)
            return b * ((2.0 * after + before) / (before + after)) - a * (after / (before + after));
        return (a * after + b * before) / (before + after);
    };
    points.push_back(p.front());
    for (int i = 0; i < (closed ? count : count - 1) && points.size() < kMostPoints; ++i) {
        const ZvGePoint3d from = at(i);
        const ZvGePoint3d to = at(i + 1);
        const double length = from.distanceTo(to);
        const ZvGeVector3d leave = velocity(i) * length;
        const ZvGeVector3d arrive = velocity((i + 1) % count) * length;
        const auto curve = [&](double t) {
            const double s = 1.0 - t;
            return from + (to - from) * (t * t * (3.0 - 2.0 * t)) + leave * (t * s * s) - arrive * (t * t * s);
        };
        const ZvGePoint3d middle = curve(0.5);
        bisect(curve, 0.0, from, 0.5, middle, deviation, kDeepest, points);
        bisect(curve, 0.5, middle, 1.0, to, deviation, kDeepest, points);
    }
    dropUnusable(points);
}

std::vector<ZvGePoint3d> &pointBuffer()
{
    static thread_local std::vector<ZvGePoint3d> buffer;
    buffer.clear();
    return buffer;
}
}
