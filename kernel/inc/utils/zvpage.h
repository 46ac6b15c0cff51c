// SPDX-License-Identifier: MIT
#ifndef ZVPAGE_H
#define ZVPAGE_H

#include "base/zvge2d.h"
#include "base/zvjson.h"
#include "db/zvdbdatabase.h"
#include "utils/zvcanvas.h"

#include <functional>

/// A sheet of paper and what a layout plots on it: the layout's page set-up made whole, as the sheet is held for
/// reading. Lengths on the paper are millimetres, y up.
struct ZV_EXPORT ZvGiPage
{
    ZvDbObjectId block; ///< Whose entities are plotted; null for a page of nothing.
    ZvString paperName; ///< As the plotter calls it.
    /// Of the sheet.
    double width = 420.0;
    double height = 297.0;
    // What the device cannot print along the edges.
    /// What the device cannot print along this edge.
    double marginLeft = 10.0;
    double marginRight = 10.0;
    double marginTop = 10.0;
    double marginBottom = 10.0;
    double unit = 1.0; ///< Millimetres of a drawing unit.
    ZvGePoint2d corner; ///< The point of the drawing that comes to lie on the lower left corner of the printable area.
    ZvGeExtents2d area; ///< What is plotted, in drawing units; empty: whatever is in the printable area.
    bool lineWeights = true; ///< Else every line is a hairline.

    /// Of the sheet without its margins.
    double printableWidth() const { return width - marginLeft - marginRight; }
    double printableHeight() const { return height - marginTop - marginBottom; }
};

/// The page of a layout: by its own settings, or by those of the named page set-up \a setup, where there is one of that
/// name. Paper that is none (no size, or more than 5 metres) becomes A3 across with margins of 10 mm, margins that
/// leave nothing become none, and a scale that is none becomes 1.
///
/// What is plotted:
/// - the layout: its paper; in model space, which has none, the limits;
/// - the limits: those of model space; of a layout on paper, the layout;
/// - the display: \a display, in drawing units; where it is empty, what the drawing remembers of its last view;
/// - a view, a window, the extents.
///
/// Pages are seen from above. Whatever is empty or not there stands for the extents, and so does a view that is turned
/// or from another side.
///
/// The default page, without a block, for null and for what is no layout.
ZV_EXPORT ZvGiPage zvgiReadPage(ZvDbDatabase *database, ZvDbObjectId layout, const ZvString &setup = ZvString(),
                                const ZvGeExtents2d &display = ZvGeExtents2d());

/// The drawing's named page set-ups for a layout of this kind: those for model space, or those for paper.
ZV_EXPORT void zvgiPageSetupNames(ZvDbDatabase *database, ZvDbObjectId layout, ZvArray<ZvString> &names);

/// The paper as the print preview takes it under "paper".
ZV_EXPORT ZvJsonPtr zvgiPaperTree(const ZvGiPage &page);

/// Draws the page on a canvas whose origin is the upper left corner of the printable area, x to the right, y down, with
/// \a unitsPerMillimetre. Nothing outside the printable area is drawn: the canvas is clipped to it, and stays so.
///
/// The canvas needs lines, paths, rasters and its matrix; the pen width adaption is left at kWidthByMatrix. Patterns of
/// lines, texts and gradients come as lines and areas. \a keepGoing is asked now and then; false ends it, and gives
/// false back. False too without a database, and for a resolution of 0 and below.
ZV_EXPORT bool zvgiDrawPage(ZvDbDatabase *database, const ZvGiPage &page, ZvsiCanvas &canvas, double unitsPerMillimetre,
                            const std::function<bool()> &keepGoing = {});

/// What a print preview takes under "intHelper": draws the page on the canvas that it is given. It holds a reference to
/// the drawing. Never null.
ZV_EXPORT ZvSmartPtr<ZvsiRenderObject> zvgiMakePageRenderer(ZvDbDatabasePtr database, const ZvGiPage &page,
                                                            double unitsPerMillimetre);

/// What a print preview takes under "refDC": a device of this resolution.
ZV_EXPORT ZvSmartPtr<ZvsiReferenceDevice> zvsiMakeReferenceDevice(int dotsPerInch);

#endif
