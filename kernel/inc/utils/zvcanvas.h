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
    const ZvArray<ZvGePoint2d> &boundary() const { return m_boundary; }
    void setBoundary(const ZvArray<ZvGePoint2d> &points) { m_boundary = points; }

private:
    ZvArray<ZvGePoint2d> m_boundary;
};

/// A shape of a shape file; a type only.
class ZvShape;

/// A drawing surface in two dimensions. The order of the operations is binding. Colours are packed with red in bits 0
/// to 7, green in 8 to 15, blue in 16 to 23, alpha in 24 to 31. What an implementation ignores has the base's version.
class ZV_EXPORT ZvsiCanvas : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvsiCanvas)
public:
    // Callers hand other values over too, which have their replacements.
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
    enum PenWidthAdapt : int {
        kWidthPlain = 0,
        kWidthByMatrix = 1, ///< The width is multiplied by the matrix's scale.
    };

    virtual void setLineStyle(int width, int style, unsigned color, short cap, short join) = 0;
    virtual bool customPenStyle(double *dashes, int count) = 0;
    virtual void setFillStyle(Hatch_Pattern pattern, unsigned color) = 0;
    virtual void setPenWidthAdapt(PenWidthAdapt adapt) = 0;
    /// 1 xor, 2 difference, others plain. The mode before.
    virtual short setRop(short mode) = 0;
    virtual void drawLine(const ZvGePoint2d &from, const ZvGePoint2d &to) = 0;
    virtual void drawPolyline(const ZvGePoint2d *points, int count, bool closed) = 0;
    virtual void setTextAlign(unsigned align) = 0;
    virtual void drawText(const ZvGePoint2d &at, const ZvString &text, double height, double angle) = 0;
    virtual ZvGeExtents2d measureText(const ZvString &text, double height) = 0;
    virtual void setMatrix(const ZvGeMatrix2d &matrix) = 0;
    virtual void mutiMatrix(const ZvGeMatrix2d &matrix, bool post) = 0;
    virtual void drawRay(const ZvGePoint2d &from, const ZvGePoint2d &to) = 0;
    virtual void drawXLine(const ZvGePoint2d &from, const ZvGePoint2d &to) = 0;
    virtual void drawCircle(const ZvGePoint2d &center, double radius) = 0;
    virtual void drawArc(const ZvGePoint2d &center, double radius, double start, double end) = 0;
    virtual void drawRasterImage(const ZvGePoint2d &origin, const ZvGeVector2d &u, const ZvGeVector2d &v,
                                 ZvSmartPtr<ZvGiRasterImage> image, const ZvArray<ZvGePoint2d> &boundary, bool clip) = 0;
    virtual void setClipRgn(ZvSmartPtr<HdiClipRgn> region) = 0;
    virtual void drawPng(const ZvGePoint2d &at, const ZvGeVector2d &size, const ZvUtf8String &file) = 0;
    virtual void drawPaths(unsigned char mode, const ZvArray<float> &coordinates, const ZvArray<int> &operations) = 0;
    virtual void drawShape(const ZvGePoint2d &at, const ZvShape *shape, const double &scale, const double &angle) = 0;
    virtual void drawGouraudTriangle(const ZvGePoint2d &p1, const ZvGePoint2d &p2, const ZvGePoint2d &p3, unsigned c1,
                                     unsigned c2, unsigned c3) = 0;
    virtual void attachBitmap(unsigned *bits, int width, int height, int stride) = 0;
    virtual void deattachBitmap() = 0;
};

/// What draws a sheet on a canvas, for the print preview.
class ZV_EXPORT ZvsiRenderObject : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvsiRenderObject)
public:
    virtual void draw(ZvRxObjectPtr canvas) = 0;
};

/// A device whose properties a picture refers to. 88 is the resolution in dots per inch.
class ZV_EXPORT ZvsiReferenceDevice : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvsiReferenceDevice)
public:
    virtual int capability(int number) = 0;
};

#endif
