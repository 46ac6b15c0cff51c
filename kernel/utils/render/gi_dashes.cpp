// SPDX-License-Identifier: MIT
#include "gi_dashes.h"

#include <QLineF>

#include <algorithm>
#include <cmath>

void giDash(const std::vector<double> &dashes, const QPointF *points, int count, double start,
            const std::function<void(const std::vector<QPointF> &)> &draw)
{
    double total = 0.0;
    for (const double length : dashes)
        total += length;
    if (!(total > 0.0) || !std::isfinite(total)) {
        draw(std::vector<QPointF>(points, points + count));
        return;
    }
    std::size_t number = 0;
    double left = dashes[0]; // of the dash or gap at hand
    const auto pass = [&](double length) {
        left -= length;
        if (left > 0.0)
            return false;
        number = (number + 1) % dashes.size();
        left = dashes[number];
        return true;
    };
    for (double skip = std::fmod(std::max(start, 0.0), total); skip > 0.0;) {
        const double step = std::min(skip, left);
        skip -= step;
        pass(step);
    }
    std::vector<QPointF> run;
    for (int i = 1; i < count; ++i) {
        const QLineF segment(points[i - 1], points[i]);
        const double length = segment.length();
        double done = 0.0;
        while (length > 0.0 && done < length) {
            const bool ends = done + left <= length;
            const double next = ends ? done + left : length;
            if (number % 2 == 0) {
                if (run.empty())
                    run.push_back(segment.pointAt(done / length));
                run.push_back(segment.pointAt(next / length));
            }
            const double step = ends ? left : next - done;
            done = next;
            if (!pass(step))
                continue;
            if (!run.empty())
                draw(run);
            run.clear();
        }
    }
    if (!run.empty())
        draw(run);
}
