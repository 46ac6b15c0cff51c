// SPDX-License-Identifier: MIT
#ifndef PICTURES_H
#define PICTURES_H

#include <QImage>
#include <QRegion>
#include <QString>
#include <QWidget>

#include <algorithm>

// What a widget paints, and pictures to compare it with.

/// The widget alone, over white.
inline QImage pictureOf(QWidget *widget)
{
    QImage image(widget->size(), QImage::Format_RGB32);
    image.fill(Qt::white);
    widget->render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/// Whether two colours differ in no component by more than \a tolerance.
inline bool isNear(QRgb actual, QRgb expected, int tolerance)
{
    return qAbs(qRed(actual) - qRed(expected)) <= tolerance && qAbs(qGreen(actual) - qGreen(expected)) <= tolerance
        && qAbs(qBlue(actual) - qBlue(expected)) <= tolerance && qAbs(qAlpha(actual) - qAlpha(expected)) <= tolerance;
}

/// A colour on the way from \a from, at \a part 0, to \a to, at 1.
inline QRgb mixed(QRgb from, QRgb to, double part)
{
    const auto mix = [part](int a, int b) { return qRound(a + (b - a) * part); };
    return qRgb(mix(qRed(from), qRed(to)), mix(qGreen(from), qGreen(to)), mix(qBlue(from), qBlue(to)));
}

/// Where two pictures differ first, for the message of a failing test; empty when they are equal. \a tolerance is for
/// what is reckoned in fractions: soft edges and gradients.
inline QString firstDifference(const QImage &actual, const QImage &expected, int tolerance = 0)
{
    if (actual.size() != expected.size())
        return QStringLiteral("%1x%2 and %3x%4")
            .arg(actual.width())
            .arg(actual.height())
            .arg(expected.width())
            .arg(expected.height());
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            if (!isNear(actual.pixel(x, y), expected.pixel(x, y), tolerance))
                return QStringLiteral("(%1, %2): %3, expected %4")
                    .arg(x)
                    .arg(y)
                    .arg(actual.pixel(x, y), 0, 16)
                    .arg(expected.pixel(x, y), 0, 16);
        }
    }
    return QString();
}
#define COMPARE_PICTURES(actual, expected) QCOMPARE(firstDifference(actual, expected), QString())
#define COMPARE_PICTURES_WITHIN(actual, expected, tolerance)                                                           \
    QCOMPARE(firstDifference(actual, expected, tolerance), QString())

/// Sets the pixels of a rectangle that lie in the picture: what painters are compared with is not painted by one.
inline void setPixels(QImage &image, int left, int top, int right, int bottom, QRgb color)
{
    for (int y = std::max(top, 0); y <= std::min(bottom, image.height() - 1); ++y) {
        for (int x = std::max(left, 0); x <= std::min(right, image.width() - 1); ++x)
            image.setPixel(x, y, color);
    }
}

/// The outline of one pixel through these four sides.
inline void setOutline(QImage &image, int left, int top, int right, int bottom, QRgb color)
{
    setPixels(image, left, top, right, top, color);
    setPixels(image, left, bottom, right, bottom, color);
    setPixels(image, left, top, left, bottom, color);
    setPixels(image, right, top, right, bottom, color);
}

/// The outline of a black pen of 0.3 pixels: it covers that share of each pixel once, which is 75 of 255 steps.
inline void setThinOutline(QImage &image, int left, int top, int right, int bottom)
{
    const auto cover = [&image](int x, int y) {
        const QRgb under = image.pixel(x, y);
        const auto part = [](int component) { return (component * (255 - 75) + 127) / 255; };
        image.setPixel(x, y, qRgb(part(qRed(under)), part(qGreen(under)), part(qBlue(under))));
    };
    for (int x = left; x <= right; ++x) {
        cover(x, top);
        cover(x, bottom);
    }
    for (int y = top + 1; y < bottom; ++y) {
        cover(left, y);
        cover(right, y);
    }
}

/// The outline of a black pen of two pixels with bevelled corners: the pixel before and the pixel at each side. The
/// bevel goes through the middle of the outermost pixels; those on the right are taken as inside it.
inline void setBevelledFrame(QImage &image, int left, int top, int right, int bottom)
{
    const QRgb black = qRgb(0, 0, 0);
    setPixels(image, left, top - 1, right, top - 1, black);
    setPixels(image, left, bottom, right, bottom, black);
    setPixels(image, left - 1, top, left - 1, bottom - 1, black);
    setPixels(image, right, top, right, bottom - 1, black);
    setOutline(image, left, top, right - 1, bottom - 1, black);
}

#endif
