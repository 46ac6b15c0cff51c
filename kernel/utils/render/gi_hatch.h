// SPDX-License-Identifier: MIT
#ifndef GI_HATCH_H
#define GI_HATCH_H

#include "db/zvgiworlddraw.h"

#include <QPointF>
#include <QRectF>

#include <vector>

/// The lines of a hatch pattern that lie inside its loops (even-odd), in the coordinates of the hatch's plane.
struct GiHatchLines
{
    std::vector<QPointF> ends; ///< Two for each line.
    /// How much of the area the lines would cover, where they are too fine or too many to draw: the lines are none
    /// then.
    double coverage = 0.0;
};

/// \a visible bounds what is made. \a finest is the shortest length that can be seen, in the plane's units: families
/// of lines closer than twice that are too fine.
GiHatchLines giHatchLines(const std::vector<std::vector<QPointF>> &loops,
                          const std::vector<ZvGiFill::PatternLine> &pattern, const QRectF &visible, double finest);

#endif
