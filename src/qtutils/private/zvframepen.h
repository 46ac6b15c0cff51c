// SPDX-License-Identifier: MIT
#ifndef ZVFRAMEPEN_H
#define ZVFRAMEPEN_H

#include <QColor>
#include <QPen>

// The look of the frames of buttons that paint themselves.

constexpr QRgb kZvFrameColor = qRgb(191, 191, 191);
constexpr QRgb kZvActiveFrameColor = qRgb(0, 120, 215); ///< under the pointer, or selected
constexpr QRgb kZvFrameFill = qRgb(240, 240, 240);
constexpr QRgb kZvActiveFrameFill = qRgb(229, 241, 251);

/// A solid line \a width pixels wide.
inline QPen zvFramePen(const QColor &color, qreal width)
{
    return QPen(color, width, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin);
}

#endif
