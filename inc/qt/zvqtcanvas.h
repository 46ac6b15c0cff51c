// SPDX-License-Identifier: MIT
#ifndef ZVQTCANVAS_H
#define ZVQTCANVAS_H

#include "utils/zvcanvas.h"

#include <Qt>

QT_BEGIN_NAMESPACE
class QPainter;
class QPainterPath;
class QPointF;
QT_END_NAMESPACE

/// The kernel's drawing surface on a QPainter: what draws a sheet on a ZvsiCanvas comes out in a widget, a picture or
/// on a printer.
///
/// \code
/// const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
/// canvas->setMatrix(sheetToDevice);
/// canvas->attachPainter(&painter); // begun
/// renderObject->draw(canvas);
/// \endcode
///
/// Every point is carried through the matrix and given to the painter as it comes out, unrounded. Pen, brush,
/// composition mode and clip are the painter's own: they stay on it, and each attachPainter() sets the first three
/// anew.
///
/// The painter is not owned. Between its end and the next attachPainter() only state may be set. Without a painter
/// state is kept for the next one, and nothing is drawn. Use it on the painter's thread only.
///
/// Colours are packed: red in bits 0 to 7, green in 8 to 15, blue in 16 to 23, alpha in 24 to 31. Codes out of range
/// have the replacements that the four tables below tell.
class ZV_EXPORT ZvQtCanvas : public ZvsiCanvas
{
    ZVRX_DECLARE_MEMBERS(ZvQtCanvas)
public:
    ZvQtCanvas() = default;
    ~ZvQtCanvas() override;

    // state

    /// \a width in the units of the device, or of the canvas under kWidthByMatrix; its sign does not count, 0 is the
    /// painter's thinnest line.
    void setLineStyle(int width, int style, unsigned color, short cap, short join) override;
    /// Not supported: the arguments are ignored. True.
    bool customPenStyle(double *dashes, int count) override;
    /// \a color packed; see canvas_brushStyle_To_Qt_brushStyle() for \a pattern.
    void setFillStyle(Hatch_Pattern pattern, unsigned color) override;
    /// Takes effect at the next setLineStyle().
    void setPenWidthAdapt(PenWidthAdapt adapt) override;
    /// 1 exclusive or, 2 difference, anything else plain. The mode before.
    short setRop(short mode) override;
    /// From the canvas's coordinates to the painter's device.
    void setMatrix(const ZvGeMatrix2d &matrix) override;
    /// With \a post, \a matrix is applied before the one at hand, otherwise after it.
    void mutiMatrix(const ZvGeMatrix2d &matrix, bool post) override;
    /// Narrows the clip to the closed boundary of \a region. Only the painter's own save() and restore() widen it
    /// again. Null, and a region without points, leave it as it is.
    void setClipRgn(ZvSmartPtr<HdiClipRgn> region) override;

    // drawing

    /// A line with the pen at hand.
    void drawLine(const ZvGePoint2d &from, const ZvGePoint2d &to) override;
    /// Fewer than two points draw nothing. A closed one has the painter's standard cap and join, not those set here,
    /// and of two points is a line there and back.
    void drawPolyline(const ZvGePoint2d *points, int count, bool closed) override;
    /// A path of points of \a coordinates, x and y alternating. \a operations holds operation codes and, in words whose
    /// top four bits are 0, the points that these take, by number:
    ///
    /// | code       | points |                                                                          |
    /// |------------|--------|--------------------------------------------------------------------------|
    /// | 0x80000000 | 1      | begins a figure; what a stream without a code at its start does          |
    /// | 0x10000000 | 1      | line                                                                     |
    /// | 0x20000000 | 2      | circular arc by a point on it and its end                                |
    /// | 0x30000000 | 3      | cubic curve                                                              |
    /// | 0x40000000 | 2      | quadratic curve                                                          |
    /// | 0x90000000 | 0      | closes the figure                                                        |
    ///
    /// An arc to its own start is the full circle on the diameter from there to the first point.
    /// A code holds for all points up to the next one. \a mode is a set of bits, done in this order: 1 strokes the path
    /// with the painter's pen, 2 fills it by the odd-even rule, 4 by the winding rule.
    ///
    /// A point or word that is not there is reported as "this->isValid(i)" and counts as 0. Points behind a code that
    /// takes none, or that is none, are passed over. Arcs through points on a line are two lines.
    void drawPaths(unsigned char mode, const ZvArray<float> &coordinates, const ZvArray<int> &operations) override;
    /// A triangle with a colour at each corner, by one gradient across its box from the lower left to the upper right:
    /// the colours of corners that lie level across that diagonal run into one. Leaves the gradient and no pen on the
    /// painter until the next setLineStyle() and setFillStyle(). Nothing for a box smaller than 1e-6.
    void drawGouraudTriangle(const ZvGePoint2d &p1, const ZvGePoint2d &p2, const ZvGePoint2d &p3, unsigned c1,
                             unsigned c2, unsigned c3) override;
    /// \a image with a pixel of \a u by \a v at \a origin, its last row first. \a boundary and \a clip have no effect.
    /// Shown are 1, 4 and 8 bits with palette, 24 bits in both orders, 32 bits in both orders with alpha, and 16 bits
    /// of 5-5-5; any other format draws nothing, and neither do 2 GB and more. The painter should have no transform of
    /// its own: it would apply before the canvas's, to pixels.
    void drawRasterImage(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v,
                         ZvSmartPtr<ZvGiRasterImage> image, const ZvArray<ZvGePoint2d> &boundary, bool clip) override;

    // The drawing side sends none of these. They do nothing, and no text has an extent.

    /// Does nothing.
    void setTextAlign(unsigned align) override;
    /// Does nothing.
    void drawText(const ZvGePoint2d &at, const ZvString &text, double height, double angle) override;
    /// Empty extents, whatever the text.
    ZvGeExtents2d measureText(const ZvString &text, double height) override;
    /// Does nothing.
    void drawRay(const ZvGePoint2d &from, const ZvGePoint2d &to) override;
    /// Does nothing.
    void drawXLine(const ZvGePoint2d &from, const ZvGePoint2d &to) override;
    /// Does nothing.
    void drawCircle(const ZvGePoint2d &center, double radius) override;
    /// Does nothing.
    void drawArc(const ZvGePoint2d &center, double radius, double start, double end) override;
    /// Does nothing.
    void drawPng(const ZvGePoint2d &at, const ZvGeVector2d &size, const ZvUtf8String &file) override;
    /// Does nothing.
    void drawShape(const ZvGePoint2d &at, const ZvShape *shape, const double &scale, const double &angle) override;
    /// Does nothing.
    void attachBitmap(unsigned *bits, int width, int height, int stride) override;
    /// Does nothing.
    void deattachBitmap() override;

    // the painter's side

    /// Draws with \a painter from now on: a begun one, or null. Pen, brush and composition mode are set on it.
    void attachPainter(QPainter *painter);
    /// \a point on the device.
    QPointF pointToQt(const ZvGePoint2d &point) const;
    /// The same as the kernel's point.
    ZvGePoint2d pointToQt2(const ZvGePoint2d &point) const;
    /// Sets the pen, or otherwise the brush, on the painter.
    void updadeProperty(bool pen);

    /// -1 none, 0 solid, 1 dashes, 2 dots, 3 dashes and dots, anything else solid.
    static Qt::PenStyle canvas_penStyle_To_Qt_penStyle(int style);
    /// 0 mitre, 1 bevel, anything else round.
    static Qt::PenJoinStyle canvas_penJoinStyle_To_Qt_penJoinStyle(short join);
    /// 0 flat, 1 square, anything else round.
    static Qt::PenCapStyle canvas_penCapStyle_To_Qt_penCapStyle(short cap);
    /// 1 to 7 by their names, 8 the gradient that no plain brush can have and that fills solid, anything else solid.
    static Qt::BrushStyle canvas_brushStyle_To_Qt_brushStyle(Hatch_Pattern pattern);

private:
    QPainter *m_painter = nullptr; // not owned
    ZvGeMatrix2d m_matrix;
    unsigned m_penColor = 0xFFFFFFFF;
    double m_penWidth = 0.0;
    short m_capStyle = 0;
    short m_joinStyle = 2;
    int m_penStyle = 0;
    unsigned m_fillColor = 0xFFFFFFFF;
    Hatch_Pattern m_fillPattern = kHatchSolid;
    PenWidthAdapt m_widthAdapt = kWidthPlain;
    short m_rop = 0;
};

#endif
