// SPDX-License-Identifier: MIT
#include "base/zvge2d.h"

#include <algorithm>
#include <cmath>

ZvGeTol ZvGeContext::gTol;
const ZvGePoint2d ZvGePoint2d::kOrigin;

namespace {
constexpr double kTwoPi = 6.283185307179586;
/// Below this a radius counts as none, and three points as lying on a line.
constexpr double kNoRadius = 1e-10;
}

double ZvGeVector2d::length() const
{
    return std::hypot(x, y);
}

ZvGeVector2d ZvGeVector2d::normal() const
{
    const double l = length();
    return l > 0.0 ? *this / l : *this;
}

double ZvGeVector2d::angle() const
{
    return x == 0.0 && y == 0.0 ? 0.0 : std::atan2(y, x);
}

bool ZvGeVector2d::isEqualTo(const ZvGeVector2d &other, const ZvGeTol &tol) const
{
    return (*this - other).length() <= tol.equalVector;
}

double ZvGePoint2d::distanceTo(const ZvGePoint2d &other) const
{
    return (*this - other).length();
}

bool ZvGePoint2d::isEqualTo(const ZvGePoint2d &other, const ZvGeTol &tol) const
{
    return distanceTo(other) <= tol.equalPoint;
}

ZvGePoint2d &ZvGePoint2d::transformBy(const ZvGeMatrix2d &m)
{
    const double xx = m.entry[0][0] * x + m.entry[0][1] * y + m.entry[0][2];
    const double yy = m.entry[1][0] * x + m.entry[1][1] * y + m.entry[1][2];
    x = xx;
    y = yy;
    return *this;
}

ZvGeMatrix2d ZvGeMatrix2d::operator*(const ZvGeMatrix2d &m) const
{
    ZvGeMatrix2d product;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column) {
            double sum = 0.0;
            for (int k = 0; k < 3; ++k)
                sum += entry[row][k] * m.entry[k][column];
            product.entry[row][column] = sum;
        }
    }
    return product;
}

ZvGeMatrix2d &ZvGeMatrix2d::operator*=(const ZvGeMatrix2d &m)
{
    return preMultBy(m);
}

ZvGeMatrix2d &ZvGeMatrix2d::postMultBy(const ZvGeMatrix2d &m)
{
    return *this = *this * m;
}

ZvGeMatrix2d &ZvGeMatrix2d::preMultBy(const ZvGeMatrix2d &m)
{
    return *this = m * *this;
}

double ZvGeMatrix2d::scale() const
{
    return std::max(std::hypot(entry[0][0], entry[1][0]), std::hypot(entry[0][1], entry[1][1]));
}

double ZvGeMatrix2d::det() const
{
    return entry[0][0] * entry[1][1] - entry[0][1] * entry[1][0];
}

ZvGeMatrix2d ZvGeMatrix2d::inverse(bool *ok) const
{
    const double d = det();
    const bool regular = d != 0.0 && std::isfinite(d);
    if (ok)
        *ok = regular;
    ZvGeMatrix2d result;
    if (!regular)
        return result;
    result.entry[0][0] = entry[1][1] / d;
    result.entry[0][1] = -entry[0][1] / d;
    result.entry[1][0] = -entry[1][0] / d;
    result.entry[1][1] = entry[0][0] / d;
    result.entry[0][2] = -(result.entry[0][0] * entry[0][2] + result.entry[0][1] * entry[1][2]);
    result.entry[1][2] = -(result.entry[1][0] * entry[0][2] + result.entry[1][1] * entry[1][2]);
    return result;
}

ZvGeMatrix2d &ZvGeMatrix2d::setCoordSystem(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v)
{
    *this = ZvGeMatrix2d();
    entry[0][0] = u.x;
    entry[1][0] = u.y;
    entry[0][1] = v.x;
    entry[1][1] = v.y;
    entry[0][2] = origin.x;
    entry[1][2] = origin.y;
    return *this;
}

ZvGeMatrix2d ZvGeMatrix2d::alignCoordSys(const ZvGePoint2d &fromOrigin, const ZvGeVector2d &fromX, const ZvGeVector2d &fromY,
                                         const ZvGePoint2d &toOrigin, const ZvGeVector2d &toX, const ZvGeVector2d &toY)
{
    ZvGeMatrix2d from;
    from.setCoordSystem(fromOrigin, fromX, fromY);
    ZvGeMatrix2d to;
    to.setCoordSystem(toOrigin, toX, toY);
    return to * from.inverse();
}

ZvGeMatrix2d ZvGeMatrix2d::translation(const ZvGeVector2d &v)
{
    ZvGeMatrix2d m;
    m.entry[0][2] = v.x;
    m.entry[1][2] = v.y;
    return m;
}

ZvGeMatrix2d ZvGeMatrix2d::scaling(double factor, const ZvGePoint2d &center)
{
    ZvGeMatrix2d m;
    m.entry[0][0] = m.entry[1][1] = factor;
    m.entry[0][2] = center.x * (1.0 - factor);
    m.entry[1][2] = center.y * (1.0 - factor);
    return m;
}

ZvGeMatrix2d ZvGeMatrix2d::rotation(double angle, const ZvGePoint2d &center)
{
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    ZvGeMatrix2d m;
    m.entry[0][0] = c;
    m.entry[0][1] = -s;
    m.entry[1][0] = s;
    m.entry[1][1] = c;
    m.entry[0][2] = center.x - c * center.x + s * center.y;
    m.entry[1][2] = center.y - s * center.x - c * center.y;
    return m;
}

void ZvGeExtents2d::add(const ZvGePoint2d &p)
{
    minimum.x = std::min(minimum.x, p.x);
    minimum.y = std::min(minimum.y, p.y);
    maximum.x = std::max(maximum.x, p.x);
    maximum.y = std::max(maximum.y, p.y);
}

ZvGeCurve2d::~ZvGeCurve2d() = default;

ZvGeCircArc2d &ZvGeCircArc2d::set(const ZvGePoint2d &p1, const ZvGePoint2d &p2, const ZvGePoint2d &p3)
{
    const ZvGeVector2d a = p2 - p1;
    const ZvGeVector2d b = p3 - p1;
    const double cross = a.x * b.y - a.y * b.x;
    const double reach = std::max(a.length(), b.length());
    m_refVec = {1.0, 0.0};
    m_startAngle = 0.0;
    m_endAngle = kTwoPi;
    m_clockWise = false;
    m_center = p1;
    m_radius = 0.0;
    if (std::fabs(cross) <= kNoRadius * std::max(1.0, reach * reach))
        return *this; // on a line: no arc
    const double aa = a.lengthSqrd();
    const double bb = b.lengthSqrd();
    const ZvGeVector2d toCenter((b.y * aa - a.y * bb) / (2.0 * cross), (a.x * bb - b.x * aa) / (2.0 * cross));
    m_center = p1 + toCenter;
    m_radius = toCenter.length();
    m_clockWise = cross < 0.0;
    // Angles run in the arc's direction from the reference vector, which is the start point's.
    m_refVec = (p1 - m_center).normal();
    double sweep = (p3 - m_center).angle() - m_refVec.angle();
    if (m_clockWise)
        sweep = -sweep;
    if (sweep <= 0.0)
        sweep += kTwoPi;
    m_endAngle = sweep;
    return *this;
}

ZvGeCircArc2d &ZvGeCircArc2d::set(const ZvGePoint2d &center, double radius)
{
    m_center = center;
    m_radius = radius;
    m_refVec = {1.0, 0.0};
    m_startAngle = 0.0;
    m_endAngle = kTwoPi;
    m_clockWise = false;
    return *this;
}

ZvGeCircArc2d &ZvGeCircArc2d::setRefVec(const ZvGeVector2d &vector)
{
    if (vector.lengthSqrd() > 0.0)
        m_refVec = vector.normal();
    return *this;
}

ZvGePoint2d ZvGeCircArc2d::pointAt(double angle) const
{
    const double a = m_refVec.angle() + (m_clockWise ? -angle : angle);
    return {m_center.x + m_radius * std::cos(a), m_center.y + m_radius * std::sin(a)};
}

void ZvGeCircArc2d::getSamplePoints(int count, ZvArray<ZvGePoint2d> &points) const
{
    points.clear();
    if (count <= 0)
        return;
    points.setPhysicalLength(count);
    for (int i = 0; i < count; ++i) {
        const double t = count == 1 ? 0.0 : double(i) / (count - 1);
        points.append(pointAt(m_startAngle + t * (m_endAngle - m_startAngle)));
    }
}

bool ZvGeCircArc2d::isClosed(const ZvGeTol &tol) const
{
    return std::fabs(std::fabs(m_endAngle - m_startAngle) - kTwoPi) <= tol.equalVector;
}
