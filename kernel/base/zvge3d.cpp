// SPDX-License-Identifier: MIT
#include "base/zvge3d.h"

#include <algorithm>
#include <cmath>

const ZvGeVector3d ZvGeVector3d::kXAxis(1, 0, 0);
const ZvGeVector3d ZvGeVector3d::kYAxis(0, 1, 0);
const ZvGeVector3d ZvGeVector3d::kZAxis(0, 0, 1);
const ZvGePoint3d ZvGePoint3d::kOrigin;
const ZvGeMatrix3d ZvGeMatrix3d::kIdentity;

double ZvGeVector3d::length() const
{
    return std::sqrt(x * x + y * y + z * z);
}

ZvGeVector3d ZvGeVector3d::crossProduct(const ZvGeVector3d &v) const
{
    return {y * v.z - z * v.y, z * v.x - x * v.z, x * v.y - y * v.x};
}

ZvGeVector3d ZvGeVector3d::normal() const
{
    const double l = length();
    return l > 0.0 ? *this / l : *this;
}

ZvGeVector3d ZvGeVector3d::arbitraryXAxis() const
{
    // Near the Z axis the Y axis serves as the helper; drawing files fix the limit at 1/64.
    const ZvGeVector3d n = normal();
    const bool nearZ = std::fabs(n.x) < 1.0 / 64.0 && std::fabs(n.y) < 1.0 / 64.0;
    return (nearZ ? kYAxis : kZAxis).crossProduct(n).normal();
}

bool ZvGeVector3d::isEqualTo(const ZvGeVector3d &other, const ZvGeTol &tol) const
{
    return (*this - other).length() <= tol.equalVector;
}

ZvGeVector3d &ZvGeVector3d::transformBy(const ZvGeMatrix3d &m)
{
    const double in[3] = {x, y, z};
    double out[3];
    for (int row = 0; row < 3; ++row)
        out[row] = m.entry[row][0] * in[0] + m.entry[row][1] * in[1] + m.entry[row][2] * in[2];
    x = out[0];
    y = out[1];
    z = out[2];
    return *this;
}

double ZvGePoint3d::distanceTo(const ZvGePoint3d &other) const
{
    return (*this - other).length();
}

bool ZvGePoint3d::isEqualTo(const ZvGePoint3d &other, const ZvGeTol &tol) const
{
    return distanceTo(other) <= tol.equalPoint;
}

ZvGePoint3d &ZvGePoint3d::transformBy(const ZvGeMatrix3d &m)
{
    ZvGeVector3d v = asVector();
    v.transformBy(m);
    x = v.x + m.entry[0][3];
    y = v.y + m.entry[1][3];
    z = v.z + m.entry[2][3];
    return *this;
}

ZvGeMatrix3d ZvGeMatrix3d::operator*(const ZvGeMatrix3d &m) const
{
    ZvGeMatrix3d product;
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            double sum = 0.0;
            for (int k = 0; k < 4; ++k)
                sum += entry[row][k] * m.entry[k][column];
            product.entry[row][column] = sum;
        }
    }
    return product;
}

ZvGeMatrix3d &ZvGeMatrix3d::postMultBy(const ZvGeMatrix3d &m)
{
    return *this = *this * m;
}

ZvGeMatrix3d &ZvGeMatrix3d::preMultBy(const ZvGeMatrix3d &m)
{
    return *this = m * *this;
}

static ZvGeVector3d columnOf(const ZvGeMatrix3d &m, int column)
{
    return {m.entry[0][column], m.entry[1][column], m.entry[2][column]};
}

double ZvGeMatrix3d::det() const
{
    return columnOf(*this, 0).dotProduct(columnOf(*this, 1).crossProduct(columnOf(*this, 2)));
}

ZvGeMatrix3d ZvGeMatrix3d::inverse(bool *ok) const
{
    const ZvGeVector3d a = columnOf(*this, 0);
    const ZvGeVector3d b = columnOf(*this, 1);
    const ZvGeVector3d c = columnOf(*this, 2);
    const double d = det();
    const bool regular = d != 0.0 && std::isfinite(d);
    if (ok)
        *ok = regular;
    ZvGeMatrix3d result;
    if (!regular)
        return result;
    const ZvGeVector3d rows[3] = {b.crossProduct(c) / d, c.crossProduct(a) / d, a.crossProduct(b) / d};
    const ZvGeVector3d origin = columnOf(*this, 3);
    for (int row = 0; row < 3; ++row) {
        result.entry[row][0] = rows[row].x;
        result.entry[row][1] = rows[row].y;
        result.entry[row][2] = rows[row].z;
        result.entry[row][3] = -rows[row].dotProduct(origin);
    }
    return result;
}

double ZvGeMatrix3d::scale() const
{
    return std::max({columnOf(*this, 0).length(), columnOf(*this, 1).length(), columnOf(*this, 2).length()});
}

bool ZvGeMatrix3d::isEqualTo(const ZvGeMatrix3d &other, const ZvGeTol &tol) const
{
    for (int row = 0; row < 4; ++row) {
        for (int column = 0; column < 4; ++column) {
            if (std::fabs(entry[row][column] - other.entry[row][column]) > tol.equalVector)
                return false;
        }
    }
    return true;
}

ZvGeMatrix3d &ZvGeMatrix3d::setCoordSystem(const ZvGePoint3d &origin, const ZvGeVector3d &x, const ZvGeVector3d &y,
                                           const ZvGeVector3d &z)
{
    *this = ZvGeMatrix3d();
    const ZvGeVector3d columns[4] = {x, y, z, origin.asVector()};
    for (int column = 0; column < 4; ++column) {
        entry[0][column] = columns[column].x;
        entry[1][column] = columns[column].y;
        entry[2][column] = columns[column].z;
    }
    return *this;
}

ZvGeMatrix3d ZvGeMatrix3d::translation(const ZvGeVector3d &v)
{
    ZvGeMatrix3d m;
    m.entry[0][3] = v.x;
    m.entry[1][3] = v.y;
    m.entry[2][3] = v.z;
    return m;
}

/// The map around \a center instead of the origin.
static ZvGeMatrix3d aroundPoint(const ZvGeMatrix3d &m, const ZvGePoint3d &center)
{
    return ZvGeMatrix3d::translation(center.asVector()) * m * ZvGeMatrix3d::translation(-center.asVector());
}

ZvGeMatrix3d ZvGeMatrix3d::scaling(double factor, const ZvGePoint3d &center)
{
    return aroundPoint(scaling(factor, factor, factor), center);
}

ZvGeMatrix3d ZvGeMatrix3d::scaling(double sx, double sy, double sz)
{
    ZvGeMatrix3d m;
    m.entry[0][0] = sx;
    m.entry[1][1] = sy;
    m.entry[2][2] = sz;
    return m;
}

ZvGeMatrix3d ZvGeMatrix3d::rotation(double angle, const ZvGeVector3d &axis, const ZvGePoint3d &center)
{
    const ZvGeVector3d n = axis.normal();
    const double c = std::cos(angle);
    const double s = std::sin(angle);
    const double t = 1.0 - c;
    ZvGeMatrix3d m;
    m.entry[0][0] = t * n.x * n.x + c;
    m.entry[0][1] = t * n.x * n.y - s * n.z;
    m.entry[0][2] = t * n.x * n.z + s * n.y;
    m.entry[1][0] = t * n.x * n.y + s * n.z;
    m.entry[1][1] = t * n.y * n.y + c;
    m.entry[1][2] = t * n.y * n.z - s * n.x;
    m.entry[2][0] = t * n.x * n.z - s * n.y;
    m.entry[2][1] = t * n.y * n.z + s * n.x;
    m.entry[2][2] = t * n.z * n.z + c;
    return aroundPoint(m, center);
}

ZvGeMatrix3d ZvGeMatrix3d::mirroring(const ZvGePoint3d &point, const ZvGeVector3d &normal)
{
    const ZvGeVector3d n = normal.normal();
    ZvGeMatrix3d m;
    const double c[3] = {n.x, n.y, n.z};
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 3; ++column)
            m.entry[row][column] -= 2.0 * c[row] * c[column];
    }
    return aroundPoint(m, point);
}

ZvGeMatrix3d ZvGeMatrix3d::planeToWorld(const ZvGeVector3d &normal)
{
    const ZvGeVector3d z = normal.normal();
    if (z.lengthSqrd() == 0.0)
        return kIdentity;
    const ZvGeVector3d x = z.arbitraryXAxis();
    ZvGeMatrix3d m;
    return m.setCoordSystem(ZvGePoint3d::kOrigin, x, z.crossProduct(x), z);
}

void ZvGeExtents3d::add(const ZvGePoint3d &p)
{
    minimum = {std::min(minimum.x, p.x), std::min(minimum.y, p.y), std::min(minimum.z, p.z)};
    maximum = {std::max(maximum.x, p.x), std::max(maximum.y, p.y), std::max(maximum.z, p.z)};
}

void ZvGeExtents3d::add(const ZvGeExtents3d &other)
{
    if (other.isEmpty())
        return;
    add(other.minimum);
    add(other.maximum);
}

ZvGeExtents3d ZvGeExtents3d::transformedBy(const ZvGeMatrix3d &m) const
{
    ZvGeExtents3d box;
    if (isEmpty())
        return box;
    for (int corner = 0; corner < 8; ++corner) {
        ZvGePoint3d p(corner & 1 ? maximum.x : minimum.x, corner & 2 ? maximum.y : minimum.y,
                      corner & 4 ? maximum.z : minimum.z);
        box.add(p.transformBy(m));
    }
    return box;
}
