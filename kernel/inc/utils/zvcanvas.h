// SPDX-License-Identifier: MIT
#ifndef ZVCANVAS_H
#define ZVCANVAS_H

#include "base/zvarray.h"
#include "base/zvge2d.h"
#include "base/zvsmartptr.h"
#include "base/zvstring.h"
#include "utils/zvraster.h"

/// A clip region: a closed boundary in the coordinates at hand. No points: the clip stays as it is.
class ZV_EXPORT HdiClipRgn : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(HdiClipRgn)
public:
    /// Points in order; the last is joined with the first.
    const ZvArray<ZvGePoint2d> &boundary() const { return m_boundary; }
    void setBoundary(const ZvArray<ZvGePoint2d> &points) { m_boundary = points; }

private:
    ZvArray<ZvGePoint2d> m_boundary;
};

/// A shape of a shape file; a type only.
class ZvShape;

/// A drawing surface in two dimensions. The order of the operations is binding. Colours are packed with red in bits 0
/// to 7, green in 8 to 15, blue in 16 to 23, alpha in 24 to 31.
class ZV_EXPORT ZvsiCanvas : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvsiCanvas)
public:
    // Callers hand other values over too, which have their replacements.
    /// How areas are filled.
    enum Hatch_Pattern : int {
        kHatchSolid = 0,
        kHatchDiagonalCross = 1,
        kHatchCross = 2,
        kHatchSolidFill = 3,
        kHatchHorizontal = 4,
        kHatchVertical = 5,
        kHatchBackwardDiagonal = 6,
        kHatchForwardDiagonal = 7,
        kHatchKept = 8,
    };
    /// What pen widths are measured in.
    enum PenWidthAdapt : int {
        kWidthPlain = 0,
        kWidthByMatrix = 1, ///< The width is multiplied by the matrix's scale.
    };

    /// The pen: \a width in units of the device or of the canvas, \a style, \a cap and \a join by the implementation's
    /// codes.
    virtual void setLineStyle(int width, int style, unsigned color, short cap, short join) = 0;
    /// A pen of \a count dashes and gaps by turns; false where that is not offered.
    virtual bool customPenStyle(double *dashes, int count) = 0;
    /// The brush.
    virtual void setFillStyle(Hatch_Pattern pattern, unsigned color) = 0;
    /// What the width of the next pen is measured in.
    virtual void setPenWidthAdapt(PenWidthAdapt adapt) = 0;
    /// 1 xor, 2 difference, others plain. The mode before.
    virtual short setRop(short mode) = 0;
    /// A line with the pen.
    virtual void drawLine(const ZvGePoint2d &from, const ZvGePoint2d &to) = 0;
    /// Lines through \a count points with the pen; \a closed joins the last with the first.
    virtual void drawPolyline(const ZvGePoint2d *points, int count, bool closed) = 0;
    /// Where a text lies about its point.
    virtual void setTextAlign(unsigned align) = 0;
    /// A text of \a height at \a at, turned by \a angle in radians.
    virtual void drawText(const ZvGePoint2d &at, const ZvString &text, double height, double angle) = 0;
    /// The box that a text would take.
    virtual ZvGeExtents2d measureText(const ZvString &text, double height) = 0;
    /// From the coordinates of the canvas to the device.
    virtual void setMatrix(const ZvGeMatrix2d &matrix) = 0;
    /// Joins a map with the one at hand: before it with \a post, else after it.
    virtual void mutiMatrix(const ZvGeMatrix2d &matrix, bool post) = 0;
    /// Endless from \a from by way of \a to.
    virtual void drawRay(const ZvGePoint2d &from, const ZvGePoint2d &to) = 0;
    /// Endless both ways.
    virtual void drawXLine(const ZvGePoint2d &from, const ZvGePoint2d &to) = 0;
    /// A circle with the pen.
    virtual void drawCircle(const ZvGePoint2d &center, double radius) = 0;
    /// An arc from \a start to \a end, in radians, with the pen.
    virtual void drawArc(const ZvGePoint2d &center, double radius, double start, double end) = 0;
    /// A picture with its corner at \a origin and pixels of \a u by \a v; \a clip keeps it inside \a boundary.
    virtual void drawRasterImage(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v,
                                 ZvSmartPtr<ZvGiRasterImage> image, const ZvArray<ZvGePoint2d> &boundary, bool clip) = 0;
    /// Narrows the clip; null leaves it as it is.
    virtual void setClipRgn(ZvSmartPtr<HdiClipRgn> region) = 0;
    /// A picture file at \a at, of this size.
    virtual void drawPng(const ZvGePoint2d &at, const ZvGeVector2d &size, const ZvUtf8String &file) = 0;
    /// Paths: codes in \a operations take their points from \a coordinates, x and y by turns. \a mode strokes and
    /// fills.
    virtual void drawPaths(unsigned char mode, const ZvArray<float> &coordinates, const ZvArray<int> &operations) = 0;
    /// A shape of a shape file.
    virtual void drawShape(const ZvGePoint2d &at, const ZvShape *shape, const double &scale, const double &angle) = 0;
    /// A triangle with a colour at each corner.
    virtual void drawGouraudTriangle(const ZvGePoint2d &p1, const ZvGePoint2d &p2, const ZvGePoint2d &p3, unsigned c1,
                                     unsigned c2, unsigned c3) = 0;
    /// Draws into \a bits from now on: \a height rows of \a stride bytes. Not owned.
    virtual void attachBitmap(unsigned *bits, int width, int height, int stride) = 0;
    /// Ends that.
    virtual void deattachBitmap() = 0;
};

/// What draws a sheet on a canvas, for the print preview.
class ZV_EXPORT ZvsiRenderObject : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvsiRenderObject)
public:
    /// Draws on \a canvas, a ZvsiCanvas.
    virtual void draw(ZvRxObjectPtr canvas) = 0;
};

/// A device whose properties a picture refers to. 88 is the resolution in dots per inch.
class ZV_EXPORT ZvsiReferenceDevice : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvsiReferenceDevice)
public:
    /// The property \a number; 0 for an unknown one.
    virtual int capability(int number) = 0;
};

#endif
