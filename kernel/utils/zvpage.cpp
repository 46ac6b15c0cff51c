// SPDX-License-Identifier: MIT
#include "utils/zvpage.h"

#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "render/gi_canvas_sink.h"
#include "render/gi_sheet.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <memory>

namespace {

enum PlotType { kExtents = 1, kView = 3, kWindow = 4, kLayout = 5 };
constexpr double kMillimetresPerInch = 25.4;
constexpr double kMaxPaper = 5000.0; ///< Millimetres; whatever is larger is damaged.
constexpr double kFinestPrinted = kMillimetresPerInch / 600.0;
constexpr double kHairline = 0.05; ///< Millimetres.
/// Units of the canvas for a millimetre while a page is drawn: those of line weights, which canvases take as whole
/// numbers.
constexpr double kHundredths = 100.0;
constexpr int kDotsPerInch = 88; ///< The number by which a device is asked for them.

bool isLength(double value)
{
    return value >= 0.0 && value <= kMaxPaper;
}

bool isPositive(double value)
{
    return value > 0.0 && std::isfinite(value);
}

/// Paper and margins, turned so that the plot can be read. False when there is no paper.
bool readPaper(const ZvDbLayout &layout, ZvGiPage &page)
{
    const ZvGePoint2d size = layout.paperSize();
    if (!isPositive(size.x) || !isPositive(size.y) || size.x > kMaxPaper || size.y > kMaxPaper)
        return false;
    page.paperName = layout.paperName();
    page.width = size.x;
    page.height = size.y;
    page.marginLeft = layout.marginsMinimum().x;
    page.marginBottom = layout.marginsMinimum().y;
    page.marginRight = layout.marginsMaximum().x;
    page.marginTop = layout.marginsMaximum().y;
    bool areMargins = true;
    for (const double margin : {page.marginLeft, page.marginBottom, page.marginRight, page.marginTop})
        areMargins = areMargins && isLength(margin);
    if (!areMargins || !(page.printableWidth() > 0.0) || !(page.printableHeight() > 0.0))
        page.marginLeft = page.marginBottom = page.marginRight = page.marginTop = 0.0;
    // The plot is turned counter-clockwise on the paper: whoever reads it turns the paper clockwise.
    for (int turn = 0; turn < (layout.plotRotation() & 3); ++turn) {
        std::swap(page.width, page.height);
        const double left = page.marginLeft;
        page.marginLeft = page.marginBottom;
        page.marginBottom = page.marginRight;
        page.marginRight = page.marginTop;
        page.marginTop = left;
    }
    return true;
}

ZvGeExtents2d boxOf(const ZvGePoint2d &a, const ZvGePoint2d &b)
{
    ZvGeExtents2d box;
    if (a.x != b.x && a.y != b.y && std::isfinite(a.x + a.y + b.x + b.y)) {
        box.add(a);
        box.add(b);
    }
    return box;
}

ZvGeExtents2d viewBox(ZvDbDatabase *database, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbSymbolTable> table(database->viewTableId(), ZvDb::kForRead);
    ZvDbObjectId id;
    if (!table || table->getAt(name, id) != Zv::eOk)
        return ZvGeExtents2d();
    const ZvDbObjectPointer<ZvDbViewTableRecord> view(id, ZvDb::kForRead);
    if (!view)
        return ZvGeExtents2d();
    const ZvGePoint2d center = view->centerPoint();
    const ZvGeVector2d half(view->width() / 2, view->height() / 2);
    return boxOf(center - half, center + half);
}

/// What is plotted, where it is not the paper itself.
ZvGeExtents2d plottedArea(ZvDbDatabase *database, const ZvDbLayout &layout)
{
    ZvGeExtents2d area;
    if (layout.plotType() == kWindow)
        area = boxOf(layout.plotWindowMinimum(), layout.plotWindowMaximum());
    else if (layout.plotType() == kView)
        area = viewBox(database, layout.plotViewName());
    if (!area.isEmpty())
        return area;
    const ZvGeExtents3d all = giVisibleExtents(database, layout.getBlockTableRecordId());
    if (!all.isEmpty()) {
        area.add(ZvGePoint2d(all.minimum.x, all.minimum.y));
        area.add(ZvGePoint2d(all.maximum.x, all.maximum.y));
    }
    return area;
}

/// The scale with which the area fills the page; 0 where there is none.
double fittingUnit(const ZvGiPage &page)
{
    const double width = page.area.maximum.x - page.area.minimum.x;
    const double height = page.area.maximum.y - page.area.minimum.y;
    const double unitX = width > 0.0 ? page.printableWidth() / width : 0.0;
    const double unitY = height > 0.0 ? page.printableHeight() / height : 0.0;
    return unitX > 0.0 && unitY > 0.0 ? std::min(unitX, unitY) : std::max(unitX, unitY);
}

void placeArea(const ZvDbLayout &layout, bool fits, bool isCentered, ZvGiPage &page)
{
    const double unit = fits ? fittingUnit(page) : page.unit;
    if (isPositive(unit))
        page.unit = unit;
    const ZvGePoint2d offset = layout.plotOrigin();
    page.corner = page.area.minimum - ZvGeVector2d(offset.x, offset.y) / page.unit;
    if (isCentered) {
        const ZvGeVector2d free = ZvGeVector2d(page.printableWidth(), page.printableHeight()) / page.unit
            - (page.area.maximum - page.area.minimum);
        page.corner = page.area.minimum - free / 2.0;
    }
}

/// On the canvas of a page: hundredths of a millimetre from the upper left corner of the printable area, y down.
QRectF onCanvas(const ZvGiPage &page, const ZvGeExtents2d &area)
{
    const ZvGeVector2d low = (area.minimum - page.corner) * (page.unit * kHundredths);
    const ZvGeVector2d high = (area.maximum - page.corner) * (page.unit * kHundredths);
    const double base = page.printableHeight() * kHundredths;
    return QRectF(QPointF(low.x, base - high.y), QPointF(high.x, base - low.y));
}

class PageRenderer : public ZvsiRenderObject
{
public:
    PageRenderer(const ZvDbDatabasePtr &database, const ZvGiPage &page, double unitsPerMillimetre)
        : m_database(database), m_page(page), m_unitsPerMillimetre(unitsPerMillimetre)
    {
    }
    void draw(ZvRxObjectPtr canvas) override
    {
        if (auto *target = zvrxCast<ZvsiCanvas>(canvas))
            zvgiDrawPage(m_database, m_page, *target, m_unitsPerMillimetre);
    }

private:
    ZvDbDatabasePtr m_database;
    ZvGiPage m_page;
    double m_unitsPerMillimetre;
};

class ReferenceDevice : public ZvsiReferenceDevice
{
public:
    explicit ReferenceDevice(int dotsPerInch) : m_dotsPerInch(dotsPerInch) { }
    int capability(int number) override { return number == kDotsPerInch ? m_dotsPerInch : 0; }

private:
    int m_dotsPerInch;
};

} // namespace

ZvGiPage zvgiReadPage(ZvDbDatabase *database, ZvDbObjectId id)
{
    ZvGiPage page;
    const ZvDbObjectPointer<ZvDbLayout> layout(id, ZvDb::kForRead);
    if (!database || !layout)
        return page;
    page.block = layout->getBlockTableRecordId();
    page.lineWeights = layout->plotsLineWeights();
    const bool hasPaper = readPaper(*layout, page);
    const double scale = layout->plotScale() * (layout->paperUnits() == 0 ? kMillimetresPerInch : 1.0);
    if (isPositive(scale))
        page.unit = scale;
    if (hasPaper && layout->plotType() == kLayout && !layout->isModelType()) {
        // The origin of paper space is the corner of what the device can print, moved by the plot's own.
        const ZvGePoint2d origin = layout->plotOrigin();
        page.corner = ZvGePoint2d(-origin.x / page.unit, -origin.y / page.unit);
        return page;
    }
    page.area = plottedArea(database, *layout);
    if (!page.area.isEmpty())
        placeArea(*layout, layout->isScaledToFit() || !hasPaper, layout->isPlotCentered() || !hasPaper, page);
    return page;
}

ZvJsonPtr zvgiPaperTree(const ZvGiPage &page)
{
    const ZvJsonPtr tree = ElementValue::createObject(IElementValueBase::kObject);
    tree->SetDataI("paper_code", 0);
    tree->SetDataSW("name", page.paperName);
    tree->SetDataI("paper_unit", 1);
    tree->SetDataD("paper_w", page.width);
    tree->SetDataD("paper_h", page.height);
    tree->SetDataD("paper_margin_left", page.marginLeft);
    tree->SetDataD("paper_margin_top", page.marginTop);
    tree->SetDataD("paper_margin_right", page.marginRight);
    tree->SetDataD("paper_margin_bottom", page.marginBottom);
    return tree;
}

bool zvgiDrawPage(ZvDbDatabase *database, const ZvGiPage &page, ZvsiCanvas &canvas, double unitsPerMillimetre,
                  const std::function<bool()> &keepGoing)
{
    if (!database || !isPositive(unitsPerMillimetre))
        return false;
    GiSheet sheet;
    sheet.block = page.block;
    sheet.width = page.printableWidth();
    sheet.height = page.printableHeight();
    sheet.unit = page.unit;
    sheet.center = page.corner + ZvGeVector2d(sheet.width, sheet.height) / (2.0 * page.unit);
    sheet.isPaper = true;
    ZvGiRenderer::Options options = giPaperOptions(true);
    options.lineWeights = page.lineWeights;

    canvas.mutiMatrix(ZvGeMatrix2d::scaling(unitsPerMillimetre / kHundredths), true);
    canvas.setPenWidthAdapt(ZvsiCanvas::kWidthByMatrix);
    ZvArray<ZvGePoint2d> corners;
    const QRectF printable(0.0, 0.0, sheet.width * kHundredths, sheet.height * kHundredths);
    for (const QPointF &corner :
         {printable.topLeft(), printable.topRight(), printable.bottomRight(), printable.bottomLeft()})
        corners.append(ZvGePoint2d(corner.x(), corner.y()));
    const auto region = ZvSmartPtr<HdiClipRgn>::adopt(new ZvRxObjectImpl<HdiClipRgn>);
    region->setBoundary(corners);
    canvas.setClipRgn(region);
    bool isWhole = false;
    {
        GiCanvasSink sink(canvas);
        if (!page.area.isEmpty()) {
            QPainterPath clip;
            clip.addRect(onCanvas(page, page.area));
            sink.pushClip(clip);
        }
        GiTarget target;
        target.sink = &sink;
        target.resolution = kFinestPrinted * kHundredths;
        target.minimumWidth = kHairline * kHundredths;
        isWhole = GiSheetDrawing(database, sheet).draw(options, target, kHundredths, [&keepGoing](double) {
            return !keepGoing || keepGoing();
        });
    }
    canvas.mutiMatrix(ZvGeMatrix2d::scaling(kHundredths / unitsPerMillimetre), true);
    return isWhole;
}

ZvSmartPtr<ZvsiRenderObject> zvgiMakePageRenderer(ZvDbDatabasePtr database, const ZvGiPage &page,
                                                  double unitsPerMillimetre)
{
    return ZvSmartPtr<ZvsiRenderObject>::adopt(new ZvRxObjectImpl<PageRenderer>(database, page, unitsPerMillimetre));
}

ZvSmartPtr<ZvsiReferenceDevice> zvsiMakeReferenceDevice(int dotsPerInch)
{
    return ZvSmartPtr<ZvsiReferenceDevice>::adopt(new ZvRxObjectImpl<ReferenceDevice>(dotsPerInch));
}
