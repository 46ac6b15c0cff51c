// SPDX-License-Identifier: MIT
#include "utils/zvpage.h"

#include "base/zvregistry.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbhostservice.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "render/gi_canvas_sink.h"
#include "render/gi_sheet.h"

#include <algorithm>
#include <cmath>
#include <initializer_list>
#include <memory>

namespace {

enum PlotType { kDisplay = 0, kLimits = 2, kView = 3, kWindow = 4, kLayout = 5 };
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
bool readPaper(const ZvDbPlotSettings &settings, ZvGiPage &page)
{
    const ZvGePoint2d size = settings.paperSize();
    if (!isPositive(size.x) || !isPositive(size.y) || size.x > kMaxPaper || size.y > kMaxPaper)
        return false;
    page.paperName = settings.paperName();
    page.width = size.x;
    page.height = size.y;
    page.marginLeft = settings.marginsMinimum().x;
    page.marginBottom = settings.marginsMinimum().y;
    page.marginRight = settings.marginsMaximum().x;
    page.marginTop = settings.marginsMaximum().y;
    bool areMargins = true;
    for (const double margin : {page.marginLeft, page.marginBottom, page.marginRight, page.marginTop})
        areMargins = areMargins && isLength(margin);
    if (!areMargins || !(page.printableWidth() > 0.0) || !(page.printableHeight() > 0.0))
        page.marginLeft = page.marginBottom = page.marginRight = page.marginTop = 0.0;
    // The plot is turned counter-clockwise on the paper: whoever reads it turns the paper clockwise.
    for (int turn = 0; turn < (settings.plotRotation() & 3); ++turn) {
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

/// What a view shows that looks straight down; empty for any other.
ZvGeExtents2d seenBox(const ZvGePoint3d &target, const ZvGeVector3d &direction, double twist, const ZvGePoint2d &center,
                      double width, double height)
{
    const bool isFromAbove = direction.z > 0.0 && std::hypot(direction.x, direction.y) <= 1e-9 * direction.z;
    if (!isFromAbove || twist != 0.0)
        return ZvGeExtents2d();
    const ZvGePoint2d middle(target.x + center.x, target.y + center.y);
    const ZvGeVector2d half(width / 2, height / 2);
    return boxOf(middle - half, middle + half);
}

ZvGeExtents2d seenBox(const ZvDbAbstractViewTableRecord &view)
{
    return seenBox(view.target(), view.viewDirection(), view.viewTwist(), view.centerPoint(), view.width(),
                   view.height());
}

ZvGeExtents2d viewBox(ZvDbDatabase *database, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbSymbolTable> table(database->viewTableId(), ZvDb::kForRead);
    ZvDbObjectId id;
    if (!table || table->getAt(name, id) != Zv::eOk)
        return ZvGeExtents2d();
    const ZvDbObjectPointer<ZvDbViewTableRecord> view(id, ZvDb::kForRead);
    return view ? seenBox(*view) : ZvGeExtents2d();
}

/// What the drawing remembers of the layout's last view.
ZvGeExtents2d lastDisplay(const ZvDbLayout &layout)
{
    ZvDbObjectId active;
    ZvDbObjectId overall;
    zvrxCast<ZvDbHostService>(zvrxGetService(3))->layoutIds(&layout, active, overall);
    const ZvDbObjectPointer<ZvDbAbstractViewTableRecord> view(overall, ZvDb::kForRead);
    if (view)
        return seenBox(*view);
    const ZvDbObjectPointer<ZvDbViewport> paper(overall, ZvDb::kForRead);
    if (!paper || !(paper->height() > 0.0))
        return ZvGeExtents2d();
    return seenBox(paper->viewTarget(), paper->viewDirection(), paper->twistAngle(), paper->viewCenter(),
                   paper->viewHeight() * paper->width() / paper->height(), paper->viewHeight());
}

ZvGeExtents2d modelLimits(ZvDbDatabase *database)
{
    ZvResBuf low;
    ZvResBuf high;
    if (database->getVariable(L"LIMMIN", low) != Zv::eOk || database->getVariable(L"LIMMAX", high) != Zv::eOk)
        return ZvGeExtents2d();
    return boxOf(ZvGePoint2d(low.resval.rpoint[0], low.resval.rpoint[1]),
                 ZvGePoint2d(high.resval.rpoint[0], high.resval.rpoint[1]));
}

/// What is plotted, where it is not the paper itself.
ZvGeExtents2d plottedArea(ZvDbDatabase *database, const ZvDbLayout &layout, const ZvDbPlotSettings &settings,
                          const ZvGeExtents2d &display)
{
    ZvGeExtents2d area;
    switch (settings.plotType()) {
    case kDisplay:
        area = display.isEmpty() ? lastDisplay(layout) : display;
        break;
    case kLimits:
    case kLayout:
        if (layout.isModelType())
            area = modelLimits(database);
        break;
    case kView:
        area = viewBox(database, settings.plotViewName());
        break;
    case kWindow:
        area = boxOf(settings.plotWindowMinimum(), settings.plotWindowMaximum());
        break;
    default:
        break;
    }
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

void placeArea(const ZvDbPlotSettings &settings, bool fits, bool isCentered, ZvGiPage &page)
{
    const double unit = fits ? fittingUnit(page) : page.unit;
    if (isPositive(unit))
        page.unit = unit;
    const ZvGePoint2d offset = settings.plotOrigin();
    page.corner = page.area.minimum - ZvGeVector2d(offset.x, offset.y) / page.unit;
    if (isCentered) {
        const ZvGeVector2d free = ZvGeVector2d(page.printableWidth(), page.printableHeight()) / page.unit
            - (page.area.maximum - page.area.minimum);
        page.corner = page.area.minimum - free / 2.0;
    }
}

ZvDbObjectId setupDictionary(ZvDbDatabase *database)
{
    const ZvDbObjectPointer<ZvDbDictionary> root(database ? database->rootDictionaryId() : ZvDbObjectId(),
                                                 ZvDb::kForRead);
    return root ? root->getIdAt(L"ACAD_PLOTSETTINGS") : ZvDbObjectId();
}

/// Null for a name that is none.
ZvDbObjectId setupNamed(ZvDbDatabase *database, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbDictionary> setups(name.isEmpty() ? ZvDbObjectId() : setupDictionary(database),
                                                   ZvDb::kForRead);
    return setups ? setups->getIdAt(name) : ZvDbObjectId();
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

ZvGiPage zvgiReadPage(ZvDbDatabase *database, ZvDbObjectId id, const ZvString &setup, const ZvGeExtents2d &display)
{
    ZvGiPage page;
    const ZvDbObjectPointer<ZvDbLayout> layout(id, ZvDb::kForRead);
    if (!database || !layout)
        return page;
    const ZvDbObjectPointer<ZvDbPlotSettings> named(setupNamed(database, setup), ZvDb::kForRead);
    const ZvDbPlotSettings &settings = named ? *named : static_cast<const ZvDbPlotSettings &>(*layout);
    page.block = layout->getBlockTableRecordId();
    page.lineWeights = settings.plotsLineWeights();
    const bool hasPaper = readPaper(settings, page);
    const double scale = settings.plotScale() * (settings.paperUnits() == 0 ? kMillimetresPerInch : 1.0);
    if (isPositive(scale))
        page.unit = scale;
    const bool isOfLayout = settings.plotType() == kLayout || settings.plotType() == kLimits;
    if (hasPaper && isOfLayout && !layout->isModelType()) {
        // The origin of paper space is the corner of what the device can print, moved by the plot's own.
        const ZvGePoint2d origin = settings.plotOrigin();
        page.corner = ZvGePoint2d(-origin.x / page.unit, -origin.y / page.unit);
        return page;
    }
    page.area = plottedArea(database, *layout, settings, display);
    if (!page.area.isEmpty())
        placeArea(settings, settings.isScaledToFit() || !hasPaper, settings.isPlotCentered() || !hasPaper, page);
    return page;
}

void zvgiPageSetupNames(ZvDbDatabase *database, ZvDbObjectId id, ZvArray<ZvString> &names)
{
    names.clear();
    const ZvDbObjectPointer<ZvDbLayout> layout(id, ZvDb::kForRead);
    const ZvDbObjectPointer<ZvDbDictionary> setups(setupDictionary(database), ZvDb::kForRead);
    if (!layout || !setups)
        return;
    const std::unique_ptr<ZvDbDictionaryIterator> it(setups->newIterator());
    for (; !it->done(); it->next()) {
        const ZvDbObjectPointer<ZvDbPlotSettings> setup(it->objectId(), ZvDb::kForRead);
        if (setup && setup->isForModel() == layout->isModelType())
            names.append(it->name());
    }
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
