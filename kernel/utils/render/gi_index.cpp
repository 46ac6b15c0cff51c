// SPDX-License-Identifier: MIT
#include "gi_index.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <numeric>

namespace {

constexpr std::size_t kFanOut = 16;

float roundedDown(double value)
{
    const float rounded = float(value);
    return double(rounded) > value ? std::nextafter(rounded, -std::numeric_limits<float>::infinity()) : rounded;
}

float roundedUp(double value)
{
    const float rounded = float(value);
    return double(rounded) < value ? std::nextafter(rounded, std::numeric_limits<float>::infinity()) : rounded;
}

/// Position along a Hilbert curve through a grid of 65536 by 65536.
std::uint32_t hilbert(std::uint32_t x, std::uint32_t y)
{
    std::uint32_t d = 0;
    for (std::uint32_t s = 1u << 15; s > 0; s >>= 1) {
        const std::uint32_t rx = (x & s) ? 1 : 0;
        const std::uint32_t ry = (y & s) ? 1 : 0;
        d = d * 4 + ((3 * rx) ^ ry);
        if (ry == 0) {
            if (rx == 1) {
                x = 65535 - x;
                y = 65535 - y;
            }
            std::swap(x, y);
        }
    }
    return d;
}

} // namespace

GiBox::GiBox(const ZvGeExtents3d &extents)
{
    if (extents.isEmpty())
        return;
    const ZvGePoint3d &a = extents.minimum;
    const ZvGePoint3d &b = extents.maximum;
    const double low[3] = {a.x, a.y, a.z};
    const double high[3] = {b.x, b.y, b.z};
    for (int i = 0; i < 3; ++i) {
        minimum[i] = roundedDown(low[i]);
        maximum[i] = roundedUp(high[i]);
    }
}

void GiBox::add(const GiBox &other)
{
    for (int i = 0; i < 3; ++i) {
        minimum[i] = std::min(minimum[i], other.minimum[i]);
        maximum[i] = std::max(maximum[i], other.maximum[i]);
    }
}

bool GiBoxQuery::operator==(const GiBoxQuery &o) const
{
    return std::equal(&rows[0][0], &rows[0][0] + 8, &o.rows[0][0]) && std::equal(minimum, minimum + 2, o.minimum)
        && std::equal(maximum, maximum + 2, o.maximum);
}

void GiBoxQuery::image(const GiBox &box, double low[2], double high[2]) const
{
    for (int row = 0; row < 2; ++row) {
        double center = rows[row][3];
        double reach = 0.0;
        for (int i = 0; i < 3; ++i) {
            center += rows[row][i] * 0.5 * (double(box.minimum[i]) + double(box.maximum[i]));
            reach += std::abs(rows[row][i]) * 0.5 * (double(box.maximum[i]) - double(box.minimum[i]));
        }
        low[row] = center - reach;
        high[row] = center + reach;
    }
}

bool GiBoxQuery::meets(const GiBox &box) const
{
    double low[2];
    double high[2];
    image(box, low, high);
    return high[0] >= minimum[0] && low[0] <= maximum[0] && high[1] >= minimum[1] && low[1] <= maximum[1];
}

bool GiBoxQuery::holds(const GiBox &box) const
{
    double low[2];
    double high[2];
    image(box, low, high);
    return low[0] >= minimum[0] && high[0] <= maximum[0] && low[1] >= minimum[1] && high[1] <= maximum[1];
}

void GiIndex::build(std::vector<Entry> entries)
{
    m_entries = std::move(entries);
    m_treeSize = m_entries.size();
    m_byPlace.clear();
    m_levels.clear();
    m_boundless.clear();

    m_bounds = GiBox();
    for (const Entry &entry : m_entries) {
        if (!entry.box.isEmpty())
            m_bounds.add(entry.box);
    }
    const GiBox &all = m_bounds;
    const auto cell = [&all](const GiBox &box, int i) {
        const double size = double(all.maximum[i]) - double(all.minimum[i]);
        if (!(size > 0.0))
            return std::uint32_t(0);
        const double middle = 0.5 * (double(box.minimum[i]) + double(box.maximum[i]));
        return std::uint32_t(std::clamp((middle - double(all.minimum[i])) / size, 0.0, 1.0) * 65535.0);
    };
    std::vector<std::uint64_t> order;
    order.reserve(m_entries.size());
    for (std::size_t i = 0; i < m_entries.size(); ++i) {
        const GiBox &box = m_entries[i].box;
        if (box.isEmpty())
            m_boundless.push_back(std::uint32_t(i));
        else
            order.push_back(std::uint64_t(hilbert(cell(box, 0), cell(box, 1))) << 32 | i);
    }
    std::sort(order.begin(), order.end());
    m_placeOf.assign(m_entries.size(), 0);
    m_byPlace.reserve(order.size());
    for (std::uint64_t key : order) {
        m_placeOf[std::uint32_t(key)] = std::uint32_t(m_byPlace.size());
        m_byPlace.push_back(std::uint32_t(key));
    }

    std::size_t below = m_byPlace.size();
    while (below > kFanOut) {
        const bool lowest = m_levels.empty();
        std::vector<GiBox> level((below + kFanOut - 1) / kFanOut);
        for (std::size_t i = 0; i < below; ++i)
            level[i / kFanOut].add(lowest ? m_entries[m_byPlace[i]].box : m_levels.back()[i]);
        below = level.size();
        m_levels.push_back(std::move(level));
    }

    m_byEntity.clear();
    m_byEntity.reserve(m_entries.size());
    for (std::size_t i = 0; i < m_entries.size(); ++i)
        m_byEntity.push_back(std::uint64_t(m_entries[i].entity) << 32 | i);
    std::sort(m_byEntity.begin(), m_byEntity.end());
}

void GiIndex::findIn(std::size_t level, std::size_t node, bool inside, const GiBoxQuery &query,
                     std::vector<std::uint32_t> &positions) const
{
    const bool lowest = level == 0;
    const std::size_t count = lowest ? m_byPlace.size() : m_levels[level - 1].size();
    const std::size_t first = node * kFanOut;
    const std::size_t end = std::min(first + kFanOut, count);
    for (std::size_t i = first; i < end; ++i) {
        const GiBox &box = lowest ? m_entries[m_byPlace[i]].box : m_levels[level - 1][i];
        if (!inside && !query.meets(box))
            continue;
        if (lowest)
            positions.push_back(m_byPlace[i]);
        else
            findIn(level - 1, i, inside || query.holds(box), query, positions);
    }
}

void GiIndex::find(const GiBoxQuery &query, std::vector<std::uint32_t> &positions) const
{
    if (m_bounds.isEmpty() || query.holds(m_bounds)) {
        positions.resize(m_entries.size());
        std::iota(positions.begin(), positions.end(), std::uint32_t(0));
        return;
    }
    positions.assign(m_boundless.begin(), m_boundless.end());
    findIn(m_levels.size(), 0, false, query, positions);
    for (std::size_t i = m_treeSize; i < m_entries.size(); ++i) {
        if (m_entries[i].box.isEmpty() || query.meets(m_entries[i].box))
            positions.push_back(std::uint32_t(i));
    }
    std::sort(positions.begin(), positions.end());
    positions.erase(std::unique(positions.begin(), positions.end()), positions.end());
}

int GiIndex::positionOf(std::uint32_t entity) const
{
    const auto found = std::lower_bound(m_byEntity.begin(), m_byEntity.end(), std::uint64_t(entity) << 32);
    if (found != m_byEntity.end() && std::uint32_t(*found >> 32) == entity)
        return int(std::uint32_t(*found));
    for (std::size_t i = m_treeSize; i < m_entries.size(); ++i) {
        if (m_entries[i].entity == entity)
            return int(i);
    }
    return -1;
}

void GiIndex::change(int position, const Entry &entry)
{
    const bool isBoundless
        = std::find(m_boundless.begin(), m_boundless.end(), std::uint32_t(position)) != m_boundless.end();
    m_entries[std::size_t(position)] = entry;
    if (!entry.box.isEmpty())
        m_bounds.add(entry.box);
    if (std::size_t(position) >= m_treeSize || isBoundless)
        return;
    if (entry.box.isEmpty()) {
        m_boundless.push_back(std::uint32_t(position));
        return;
    }
    std::size_t place = m_placeOf[std::size_t(position)];
    for (std::vector<GiBox> &level : m_levels) {
        place /= kFanOut;
        level[place].add(entry.box);
    }
}

void GiIndex::append(const Entry &entry)
{
    m_entries.push_back(entry);
    if (!entry.box.isEmpty())
        m_bounds.add(entry.box);
}
