// SPDX-License-Identifier: MIT
#include "gi_hatch.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace {

constexpr std::size_t kMaxLines = 200000;
constexpr double kMinCoverage = 0.25;

struct Crossing
{
    std::int64_t line;
    double at;
    bool operator<(const Crossing &o) const { return line != o.line ? line < o.line : at < o.at; }
};

/// One family of parallel lines in its own frame: u along the lines, v across, the base at the origin.
class Family
{
public:
    Family(const ZvGiFill::PatternLine &line, double finest)
        : m_line(line), m_cos(std::cos(line.angle)), m_sin(std::sin(line.angle)), m_finest(finest)
    {
        m_shift = line.offset.x * m_cos + line.offset.y * m_sin;
        m_spacing = -line.offset.x * m_sin + line.offset.y * m_cos;
        if (m_spacing < 0.0) {
            m_spacing = -m_spacing;
            m_shift = -m_shift;
        }
        for (double dash : line.dashes)
            m_period += std::abs(dash);
        // A pattern along the line that nobody could see is a plain line.
        if (!(m_period > 2.0 * finest))
            m_period = 0.0;
    }

    bool isUsable() const { return m_spacing > 0.0 && std::isfinite(m_spacing) && std::isfinite(m_shift); }
    bool isTooFine() const { return m_spacing < 2.0 * m_finest; }
    double coverage() const
    {
        const double drawn = m_period > 0.0 ? dashShare() : 1.0;
        return drawn * std::min(1.0, m_finest / m_spacing);
    }

    /// False when there are too many.
    bool lines(const std::vector<std::vector<QPointF>> &loops, const QRectF &visible, std::vector<QPointF> &ends) const
    {
        double uMin = std::numeric_limits<double>::max();
        double uMax = -uMin;
        double vMin = uMin;
        double vMax = uMax;
        const QPointF corners[] = {visible.topLeft(), visible.topRight(), visible.bottomLeft(), visible.bottomRight()};
        for (const QPointF &corner : corners) {
            const QPointF p = toFrame(corner);
            uMin = std::min(uMin, p.x());
            uMax = std::max(uMax, p.x());
            vMin = std::min(vMin, p.y());
            vMax = std::max(vMax, p.y());
        }
        std::vector<Crossing> crossings;
        for (const auto &loop : loops) {
            for (std::size_t i = 0; i < loop.size(); ++i) {
                if (!addCrossings(toFrame(loop[i]), toFrame(loop[(i + 1) % loop.size()]), vMin, vMax, crossings))
                    return false;
            }
        }
        std::sort(crossings.begin(), crossings.end());
        for (std::size_t i = 0; i + 1 < crossings.size(); i += 2) {
            if (crossings[i].line != crossings[i + 1].line) {
                --i; // an odd one, by rounding: leave it out
                continue;
            }
            const double from = std::max(crossings[i].at, uMin);
            const double to = std::min(crossings[i + 1].at, uMax);
            if (from < to && !addLine(crossings[i].line, from, to, ends))
                return false;
        }
        return true;
    }

private:
    QPointF toFrame(const QPointF &p) const
    {
        const double x = p.x() - m_line.base.x;
        const double y = p.y() - m_line.base.y;
        return {x * m_cos + y * m_sin, -x * m_sin + y * m_cos};
    }

    QPointF fromFrame(double u, double v) const
    {
        return {m_line.base.x + u * m_cos - v * m_sin, m_line.base.y + u * m_sin + v * m_cos};
    }

    bool addCrossings(const QPointF &a, const QPointF &b, double vMin, double vMax,
                      std::vector<Crossing> &crossings) const
    {
        const QPointF &low = a.y() <= b.y() ? a : b;
        const QPointF &high = a.y() <= b.y() ? b : a;
        // Half open, so that a corner counts once.
        const double first = std::ceil(std::max(low.y(), vMin) / m_spacing);
        const double end = std::ceil(std::min(high.y(), std::nextafter(vMax, 1e300)) / m_spacing);
        if (!(first < end))
            return true;
        if (!(end - first <= double(kMaxLines)) || std::abs(first) > 1e15)
            return false;
        const double slope = (high.x() - low.x()) / (high.y() - low.y());
        for (auto line = std::int64_t(first); line < std::int64_t(end); ++line)
            crossings.push_back({line, low.x() + (double(line) * m_spacing - low.y()) * slope});
        return crossings.size() <= 2 * kMaxLines;
    }

    bool addLine(std::int64_t line, double from, double to, std::vector<QPointF> &ends) const
    {
        const double v = double(line) * m_spacing;
        if (m_period == 0.0) {
            ends.push_back(fromFrame(from, v));
            ends.push_back(fromFrame(to, v));
            return ends.size() <= 2 * kMaxLines;
        }
        if ((to - from) / m_period * double(m_line.dashes.size()) > double(kMaxLines))
            return false;
        const double origin = double(line) * m_shift;
        double u = origin + std::floor((from - origin) / m_period) * m_period;
        while (u < to) {
            for (double dash : m_line.dashes) {
                const double next = u + std::abs(dash);
                if (dash > 0.0)
                    addDash(std::max(u, from), std::min(next, to), v, ends);
                else if (dash == 0.0 && u >= from && u <= to)
                    addDash(u - m_finest / 2, u + m_finest / 2, v, ends);
                u = next;
            }
        }
        return ends.size() <= 2 * kMaxLines;
    }

    void addDash(double from, double to, double v, std::vector<QPointF> &ends) const
    {
        if (!(from < to))
            return;
        ends.push_back(fromFrame(from, v));
        ends.push_back(fromFrame(to, v));
    }

    double dashShare() const
    {
        double drawn = 0.0;
        for (double dash : m_line.dashes)
            drawn += std::max(dash, 0.0);
        return drawn / m_period;
    }

    const ZvGiFill::PatternLine &m_line;
    double m_cos;
    double m_sin;
    double m_finest;
    double m_spacing = 0.0;
    double m_shift = 0.0;
    double m_period = 0.0;
};

} // namespace

GiHatchLines giHatchLines(const std::vector<std::vector<QPointF>> &loops,
                          const std::vector<ZvGiFill::PatternLine> &pattern, const QRectF &visible, double finest)
{
    GiHatchLines made;
    double coverage = 0.0;
    bool tooMuch = false;
    for (const ZvGiFill::PatternLine &line : pattern) {
        const Family family(line, finest);
        if (!family.isUsable())
            continue;
        coverage += family.coverage();
        tooMuch = tooMuch || family.isTooFine() || !family.lines(loops, visible, made.ends);
    }
    if (tooMuch) {
        made.ends.clear();
        made.coverage = std::clamp(coverage, kMinCoverage, 1.0);
    }
    return made;
}
