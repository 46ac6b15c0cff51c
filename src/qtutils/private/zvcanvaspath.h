// SPDX-License-Identifier: MIT
#ifndef ZVCANVASPATH_H
#define ZVCANVASPATH_H

#include "base/zvarray.h"

#include <QtGlobal>

QT_BEGIN_NAMESPACE
class QPainterPath;
QT_END_NAMESPACE

class ZvGeMatrix2d;

/// The path that a stream of operations and point numbers tells (ZvsiCanvas::drawPaths()), carried through \a matrix.
QPainterPath zvCanvasPath(const ZvGeMatrix2d &matrix, const ZvArray<float> &coordinates,
                          const ZvArray<int> &operations);

#endif
