// SPDX-License-Identifier: MIT
#ifndef GI_DASHES_H
#define GI_DASHES_H

#include <QPointF>

#include <functional>
#include <vector>

/// Cuts a line into its dashes and calls \a draw with each, around corners too. \a dashes are the lengths of dash and
/// gap in turn, a dash first; \a start is how far into them the line begins. Without a length to go by the line is one
/// dash.
void giDash(const std::vector<double> &dashes, const QPointF *points, int count, double start,
            const std::function<void(const std::vector<QPointF> &)> &draw);

#endif
