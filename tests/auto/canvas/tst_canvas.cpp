// SPDX-License-Identifier: MIT
#include "canvastest.h"

#include <cmath>
#include <cstddef>
#include <cstring>
#include <limits>
#include <vector>

namespace {

using Points = std::vector<ZvGePoint2d>;
constexpr unsigned kRed = 0xFF0000FF; // packed: red in the lowest byte
constexpr unsigned kGreen = 0xFF00FF00;
constexpr unsigned kBlue = 0xFFFF0000;
constexpr unsigned kPaleRed = 0x600000FF;

QPolygonF onDevice(const Points &points, const ZvGeMatrix2d &matrix)
{
    QPolygonF polygon;
    for (ZvGePoint2d point : points) {
        point.transformBy(matrix);
        polygon << QPointF(point.x, point.y);
    }
    return polygon;
}

QPainterPath closedPath(const QPolygonF &polygon)
{
    QPainterPath path;
    path.moveTo(polygon[0]);
    for (int i = 1; i < polygon.size(); ++i)
        path.lineTo(polygon[i]);
    path.closeSubpath();
    return path;
}

ZvSmartPtr<HdiClipRgn> makeRegion(const Points &points)
{
    auto region = ZvSmartPtr<HdiClipRgn>::adopt(new ZvRxObjectImpl<HdiClipRgn>);
    ZvArray<ZvGePoint2d> boundary;
    for (const ZvGePoint2d &point : points)
        boundary.append(point);
    region->setBoundary(boundary);
    return region;
}

struct LineStyle
{
    int width = 0;
    int style = 0;
    unsigned color = kRed;
    short cap = 0;
    short join = 2;
};

QPen penOf(const LineStyle &line)
{
    static const QMap<int, Qt::PenStyle> styles{
        {-1, Qt::NoPen}, {0, Qt::SolidLine}, {1, Qt::DashLine}, {2, Qt::DotLine}, {3, Qt::DashDotLine}};
    static const Qt::PenCapStyle caps[] = {Qt::FlatCap, Qt::SquareCap, Qt::RoundCap};
    static const Qt::PenJoinStyle joins[] = {Qt::MiterJoin, Qt::BevelJoin, Qt::RoundJoin};
    const QColor color(int(line.color & 0xFF), int(line.color >> 8 & 0xFF), int(line.color >> 16 & 0xFF),
                       int(line.color >> 24));
    return QPen(color, line.width, styles[line.style], caps[line.cap], joins[line.join]);
}

void setLine(ZvQtCanvas &canvas, const LineStyle &line)
{
    canvas.setLineStyle(line.width, line.style, line.color, line.cap, line.join);
}

const Points kZigzag{{3, 4}, {30.5, 25}, {12, 14.25}, {35, 3}, {20, 28}};

} // namespace

Q_DECLARE_METATYPE(Points)
Q_DECLARE_METATYPE(LineStyle)
Q_DECLARE_METATYPE(QRgba64)
Q_DECLARE_METATYPE(QPainter::CompositionMode)

class TestCanvas : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void startsAsTold();
    void operationsStandInTheirOrder_data();
    void operationsStandInTheirOrder();
    void penStyles_data();
    void penStyles();
    void joinStyles_data();
    void joinStyles();
    void capStyles_data();
    void capStyles();
    void brushStyles_data();
    void brushStyles();
    void coloursHaveFourBytes_data();
    void coloursHaveFourBytes();
    void lineStyleSetsThePen_data();
    void lineStyleSetsThePen();
    void widthAdaption_data();
    void widthAdaption();
    void widthAdaptionWaitsForTheNextLineStyle();
    void fillStyleSetsTheBrush_data();
    void fillStyleSetsTheBrush();
    void rasterOperations_data();
    void rasterOperations();
    void rasterOperationGivesTheOneBefore();
    void stateSetBeforeAttachingIsApplied();
    void attachingSetsTheRasterOperationByTheOverridableOperation();
    void attachingAppliesTheStateEachTime();
    void propertiesCanBeSetOneByOne();
    void painterBelongsToItsMaker();
    void withoutPainterNothingHappens();
    void pointsAreNotRounded_data();
    void pointsAreNotRounded();
    void matrixIsReplacedAndMultiplied_data();
    void matrixIsReplacedAndMultiplied();

    void linesAreThePaintersOwn_data();
    void linesAreThePaintersOwn();
    void openPolylinesAreThePaintersOwn_data();
    void openPolylinesAreThePaintersOwn();
    void closedPolylinesHaveAPenOfTheirOwn_data();
    void closedPolylinesHaveAPenOfTheirOwn();
    void polylinesOfTooFewPointsDrawNothing_data();
    void polylinesOfTooFewPointsDrawNothing();
    void noPenDrawsNothing_data();
    void noPenDrawsNothing();
    void clipIsThePaintersOwn_data();
    void clipIsThePaintersOwn();
    void clipIsClosed();
    void clipsNarrowEachOther();
    void clipWithoutPointsStays_data();
    void clipWithoutPointsStays();
    void clipIsLeftByThePaintersRestoreOnly();

    void triangleFollowsTheFormula_data();
    void triangleFollowsTheFormula();
    void triangleIsThePaintersGradient_data();
    void triangleIsThePaintersGradient();
    void triangleTooSmallDrawsNothing_data();
    void triangleTooSmallDrawsNothing();
    void triangleLeavesBrushAndNoPen();

    void whatIsNotSentDoesNothing();
    void textHasNoExtent_data();
    void textHasNoExtent();
};

void TestCanvas::startsAsTold()
{
    const CanvasPtr canvas = makeCanvas();
    QVERIFY(canvas->isKindOf(ZvsiCanvas::desc()));
    QVERIFY(canvas->isKindOf(ZvRxObject::desc()));
    QCOMPARE(QByteArray(canvas->isA()->name()), QByteArray("ZvQtCanvas"));
    QCOMPARE(zvrxNumRefs(canvas), 1);
    paintedSheet([&canvas](QPainter &painter) {
        canvas->attachPainter(&painter);
        QCOMPARE(painter.pen().color(), QColor(255, 255, 255, 255));
        QCOMPARE(painter.pen().widthF(), 0.0);
        QCOMPARE(painter.pen().style(), Qt::SolidLine);
        QCOMPARE(painter.pen().capStyle(), Qt::FlatCap);
        QCOMPARE(painter.pen().joinStyle(), Qt::RoundJoin);
        QCOMPARE(painter.brush().color(), QColor(255, 255, 255, 255));
        QCOMPARE(painter.brush().style(), Qt::SolidPattern);
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_SourceOver);
    });
    QCOMPARE(canvas->pointToQt(ZvGePoint2d(3, 4)), QPointF(3, 4));
    QCOMPARE(int(makeCanvas()->setRop(1)), 0);
}

/// Place of a virtual operation in the table: what a pointer to it holds, in bytes, with the lowest bit as a mark.
template <class Operation> static int slotOf(Operation operation)
{
    std::ptrdiff_t bytes = 0;
    std::memcpy(&bytes, &operation, sizeof bytes);
    return int(bytes / std::ptrdiff_t(sizeof(void *)));
}

void TestCanvas::operationsStandInTheirOrder_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<int>("expected");
    int expected = 8; // behind those of every object
    const auto row = [&expected](const char *name, int slot) { QTest::newRow(name) << slot << expected++; };
    row("setLineStyle", slotOf(&ZvsiCanvas::setLineStyle));
    row("customPenStyle", slotOf(&ZvsiCanvas::customPenStyle));
    row("setFillStyle", slotOf(&ZvsiCanvas::setFillStyle));
    row("setPenWidthAdapt", slotOf(&ZvsiCanvas::setPenWidthAdapt));
    row("setRop", slotOf(&ZvsiCanvas::setRop));
    row("drawLine", slotOf(&ZvsiCanvas::drawLine));
    row("drawPolyline", slotOf(&ZvsiCanvas::drawPolyline));
    row("setTextAlign", slotOf(&ZvsiCanvas::setTextAlign));
    row("drawText", slotOf(&ZvsiCanvas::drawText));
    row("measureText", slotOf(&ZvsiCanvas::measureText));
    row("setMatrix", slotOf(&ZvsiCanvas::setMatrix));
    row("mutiMatrix", slotOf(&ZvsiCanvas::mutiMatrix));
    row("drawRay", slotOf(&ZvsiCanvas::drawRay));
    row("drawXLine", slotOf(&ZvsiCanvas::drawXLine));
    row("drawCircle", slotOf(&ZvsiCanvas::drawCircle));
    row("drawArc", slotOf(&ZvsiCanvas::drawArc));
    row("drawRasterImage", slotOf(&ZvsiCanvas::drawRasterImage));
    row("setClipRgn", slotOf(&ZvsiCanvas::setClipRgn));
    row("drawPng", slotOf(&ZvsiCanvas::drawPng));
    row("drawPaths", slotOf(&ZvsiCanvas::drawPaths));
    row("drawShape", slotOf(&ZvsiCanvas::drawShape));
    row("drawGouraudTriangle", slotOf(&ZvsiCanvas::drawGouraudTriangle));
    row("attachBitmap", slotOf(&ZvsiCanvas::attachBitmap));
    row("deattachBitmap", slotOf(&ZvsiCanvas::deattachBitmap));
}

void TestCanvas::operationsStandInTheirOrder()
{
    QFETCH(int, slot);
    QTEST(slot, "expected");
}

void TestCanvas::penStyles_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Qt::PenStyle>("style");
    QTest::newRow("-1 none") << -1 << Qt::NoPen;
    QTest::newRow("0 solid") << 0 << Qt::SolidLine;
    QTest::newRow("1 dashes") << 1 << Qt::DashLine;
    QTest::newRow("2 dots") << 2 << Qt::DotLine;
    QTest::newRow("3 dashes and dots") << 3 << Qt::DashDotLine;
    QTest::newRow("4 is solid") << 4 << Qt::SolidLine;
    QTest::newRow("-2 is solid") << -2 << Qt::SolidLine;
    QTest::newRow("any other is solid") << 1000 << Qt::SolidLine;
}

void TestCanvas::penStyles()
{
    QFETCH(int, code);
    QTEST(ZvQtCanvas::canvas_penStyle_To_Qt_penStyle(code), "style");
}

void TestCanvas::joinStyles_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Qt::PenJoinStyle>("style");
    QTest::newRow("0 mitre") << 0 << Qt::MiterJoin;
    QTest::newRow("1 bevel") << 1 << Qt::BevelJoin;
    QTest::newRow("2 round") << 2 << Qt::RoundJoin;
    QTest::newRow("3 is round") << 3 << Qt::RoundJoin;
    QTest::newRow("-1 is round") << -1 << Qt::RoundJoin;
}

void TestCanvas::joinStyles()
{
    QFETCH(int, code);
    QTEST(ZvQtCanvas::canvas_penJoinStyle_To_Qt_penJoinStyle(short(code)), "style");
}

void TestCanvas::capStyles_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Qt::PenCapStyle>("style");
    QTest::newRow("0 flat") << 0 << Qt::FlatCap;
    QTest::newRow("1 square") << 1 << Qt::SquareCap;
    QTest::newRow("2 round") << 2 << Qt::RoundCap;
    QTest::newRow("3 is round") << 3 << Qt::RoundCap;
    QTest::newRow("-1 is round") << -1 << Qt::RoundCap;
}

void TestCanvas::capStyles()
{
    QFETCH(int, code);
    QTEST(ZvQtCanvas::canvas_penCapStyle_To_Qt_penCapStyle(short(code)), "style");
}

void TestCanvas::brushStyles_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<Qt::BrushStyle>("style");
    QTest::newRow("0 is solid") << 0 << Qt::SolidPattern;
    QTest::newRow("1 diagonal cross") << 1 << Qt::DiagCrossPattern;
    QTest::newRow("2 cross") << 2 << Qt::CrossPattern;
    QTest::newRow("3 solid") << 3 << Qt::SolidPattern;
    QTest::newRow("4 horizontal") << 4 << Qt::HorPattern;
    QTest::newRow("5 vertical") << 5 << Qt::VerPattern;
    QTest::newRow("6 backward diagonal") << 6 << Qt::BDiagPattern;
    QTest::newRow("7 forward diagonal") << 7 << Qt::FDiagPattern;
    QTest::newRow("8 is the value 16") << 8 << Qt::BrushStyle(16);
    QTest::newRow("9 is solid") << 9 << Qt::SolidPattern;
    QTest::newRow("15 is solid") << 15 << Qt::SolidPattern;
}

void TestCanvas::brushStyles()
{
    QFETCH(int, code);
    QTEST(ZvQtCanvas::canvas_brushStyle_To_Qt_brushStyle(ZvsiCanvas::Hatch_Pattern(code)), "style");
}

void TestCanvas::coloursHaveFourBytes_data()
{
    QTest::addColumn<unsigned>("packed");
    QTest::addColumn<QRgba64>("color");
    const auto wide = [](int value) { return quint16(value * 257); };
    QTest::newRow("red in the lowest byte") << 0xFF0000FFu << qRgba64(wide(255), 0, 0, wide(255));
    QTest::newRow("green in the second") << 0xFF00FF00u << qRgba64(0, wide(255), 0, wide(255));
    QTest::newRow("blue in the third") << 0xFFFF0000u << qRgba64(0, 0, wide(255), wide(255));
    QTest::newRow("alpha in the highest") << 0x40000000u << qRgba64(0, 0, 0, wide(0x40));
    QTest::newRow("each times 257") << 0x80112233u << qRgba64(0x3333, 0x2222, 0x1111, 0x8080);
    QTest::newRow("nothing at all") << 0u << qRgba64(0, 0, 0, 0);
}

void TestCanvas::coloursHaveFourBytes()
{
    QFETCH(unsigned, packed);
    QFETCH(QRgba64, color);
    paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(1, 0, packed, 0, 0);
        QCOMPARE(quint64(painter.pen().color().rgba64()), quint64(color));
        canvas->setFillStyle(ZvsiCanvas::kHatchSolid, packed);
        QCOMPARE(quint64(painter.brush().color().rgba64()), quint64(color));
    });
}

void TestCanvas::lineStyleSetsThePen_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("expected");
    QTest::newRow("width 0") << 0 << 0.0;
    QTest::newRow("width 3") << 3 << 3.0;
    QTest::newRow("width -3 is 3") << -3 << 3.0;
    QTest::newRow("the widest, below 0") << -32767 << 32767.0;
}

void TestCanvas::lineStyleSetsThePen()
{
    QFETCH(int, width);
    paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(width, 3, kGreen, 1, 0);
        const QPen pen = painter.pen();
        QTEST(pen.widthF(), "expected");
        QCOMPARE(pen.style(), Qt::DashDotLine);
        QCOMPARE(pen.color(), QColor(0, 255, 0));
        QCOMPARE(pen.capStyle(), Qt::SquareCap);
        QCOMPARE(pen.joinStyle(), Qt::MiterJoin);
    });
}

void TestCanvas::widthAdaption_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("expected");
    QTest::newRow("plain") << 0 << 3 << 3.0;
    QTest::newRow("by the matrix") << 1 << 3 << 7.5;
    QTest::newRow("by the matrix, below 0") << 1 << -3 << 7.5;
    QTest::newRow("another mode is plain") << 2 << 3 << 3.0;
}

void TestCanvas::widthAdaption()
{
    QFETCH(int, mode);
    QFETCH(int, width);
    paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setMatrix(ZvGeMatrix2d::scaling(2.5));
        canvas->setPenWidthAdapt(ZvsiCanvas::PenWidthAdapt(mode));
        canvas->setLineStyle(width, 0, kRed, 0, 0);
        QTEST(painter.pen().widthF(), "expected");
    });
}

void TestCanvas::widthAdaptionWaitsForTheNextLineStyle()
{
    paintedSheet([](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(4, 0, kRed, 0, 0);
        canvas->setMatrix(ZvGeMatrix2d::scaling(10));
        canvas->setPenWidthAdapt(ZvsiCanvas::kWidthByMatrix);
        canvas->updadeProperty(true);
        QCOMPARE(painter.pen().widthF(), 4.0);
        canvas->setLineStyle(4, 0, kRed, 0, 0);
        QCOMPARE(painter.pen().widthF(), 40.0);
        canvas->setMatrix(ZvGeMatrix2d::scaling(3)); // nor does the matrix change a pen
        canvas->updadeProperty(true);
        QCOMPARE(painter.pen().widthF(), 40.0);
    });
}

void TestCanvas::fillStyleSetsTheBrush_data()
{
    QTest::addColumn<int>("pattern");
    QTest::addColumn<Qt::BrushStyle>("style");
    QTest::newRow("0") << 0 << Qt::SolidPattern;
    QTest::newRow("1") << 1 << Qt::DiagCrossPattern;
    QTest::newRow("3") << 3 << Qt::SolidPattern;
    QTest::newRow("7") << 7 << Qt::FDiagPattern;
    QTest::newRow("8, which no plain brush can have, stays solid and silent") << 8 << Qt::SolidPattern;
}

void TestCanvas::fillStyleSetsTheBrush()
{
    QFETCH(int, pattern);
    paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setFillStyle(ZvsiCanvas::Hatch_Pattern(pattern), kBlue);
        QTEST(painter.brush().style(), "style");
        QCOMPARE(painter.brush().color(), QColor(0, 0, 255));
    });
}

void TestCanvas::rasterOperations_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QPainter::CompositionMode>("mode");
    QTest::newRow("0 plain") << 0 << QPainter::CompositionMode_SourceOver;
    QTest::newRow("1 exclusive or") << 1 << QPainter::RasterOp_SourceXorDestination;
    QTest::newRow("2 difference") << 2 << QPainter::CompositionMode_Difference;
    QTest::newRow("3 is plain") << 3 << QPainter::CompositionMode_SourceOver;
    QTest::newRow("-1 is plain") << -1 << QPainter::CompositionMode_SourceOver;
}

void TestCanvas::rasterOperations()
{
    QFETCH(int, code);
    QFETCH(QPainter::CompositionMode, mode);
    const LineStyle line{5, 0, kRed, 1, 0};
    const QImage byCanvas = canvasSheet([&](ZvQtCanvas &canvas) {
        canvas.setRop(short(code));
        setLine(canvas, line);
        canvas.drawLine({10, 10}, {60, 50});
    });
    const QImage byPainter = paintedSheet([&](QPainter &painter) {
        painter.setCompositionMode(mode);
        painter.setPen(penOf(line));
        painter.drawLine(QLineF(10, 10, 60, 50));
    });
    QCOMPARE(byCanvas, byPainter);
    QVERIFY(!isBlank(byCanvas));
}

void TestCanvas::rasterOperationGivesTheOneBefore()
{
    const CanvasPtr canvas = makeCanvas();
    QCOMPARE(int(canvas->setRop(2)), 0);
    QCOMPARE(int(canvas->setRop(77)), 2);
    QCOMPARE(int(canvas->setRop(1)), 77);
    paintedSheet([&canvas](QPainter &painter) {
        canvas->attachPainter(&painter);
        QCOMPARE(painter.compositionMode(), QPainter::RasterOp_SourceXorDestination);
        QCOMPARE(int(canvas->setRop(0)), 1); // attaching set it once more, to itself
    });
}

void TestCanvas::stateSetBeforeAttachingIsApplied()
{
    const CanvasPtr canvas = makeCanvas();
    canvas->setLineStyle(-6, 1, kGreen, 2, 1);
    canvas->setFillStyle(ZvsiCanvas::kHatchCross, kPaleRed);
    canvas->setRop(2);
    paintedSheet([&canvas](QPainter &painter) {
        canvas->attachPainter(&painter);
        QCOMPARE(painter.pen(), QPen(QColor(0, 255, 0), 6, Qt::DashLine, Qt::RoundCap, Qt::BevelJoin));
        QCOMPARE(painter.brush(), QBrush(QColor(255, 0, 0, 0x60), Qt::CrossPattern));
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_Difference);
    });
}

void TestCanvas::attachingSetsTheRasterOperationByTheOverridableOperation()
{
    class Listener : public ZvQtCanvas
    {
    public:
        short setRop(short mode) override
        {
            heard << int(mode);
            return ZvQtCanvas::setRop(mode);
        }
        QList<int> heard;
    };
    Listener canvas;
    canvas.setRop(2);
    paintedSheet([&canvas](QPainter &painter) {
        canvas.attachPainter(&painter);
        QCOMPARE(canvas.heard, (QList<int>{2, 2}));
        QCOMPARE(painter.compositionMode(), QPainter::CompositionMode_Difference);
    });
    canvas.attachPainter(nullptr);
}

void TestCanvas::attachingAppliesTheStateEachTime()
{
    const CanvasPtr canvas = makeCanvas();
    canvas->setLineStyle(2, 0, kRed, 0, 0);
    paintedSheet([&canvas](QPainter &painter) { canvas->attachPainter(&painter); });
    canvas->attachPainter(nullptr);
    paintedSheet([&canvas](QPainter &painter) {
        painter.setPen(Qt::green);
        canvas->attachPainter(&painter);
        QCOMPARE(painter.pen().color(), QColor(Qt::red));
        painter.setPen(Qt::green);
        painter.setBrush(Qt::green);
        canvas->attachPainter(&painter);
        QCOMPARE(painter.pen().color(), QColor(Qt::red));
        QCOMPARE(painter.brush().color(), QColor(Qt::white));
    });
}

void TestCanvas::propertiesCanBeSetOneByOne()
{
    const CanvasPtr canvas = makeCanvas();
    paintedSheet([&canvas](QPainter &painter) {
        canvas->attachPainter(&painter);
        painter.setPen(Qt::green);
        painter.setBrush(Qt::green);
        canvas->updadeProperty(true);
        QCOMPARE(painter.pen().color(), QColor(Qt::white));
        QCOMPARE(painter.brush().color(), QColor(Qt::green));
        painter.setPen(Qt::green);
        canvas->updadeProperty(false);
        QCOMPARE(painter.pen().color(), QColor(Qt::green));
        QCOMPARE(painter.brush().color(), QColor(Qt::white));
    });
}

void TestCanvas::painterBelongsToItsMaker()
{
    paintedSheet([](QPainter &painter) {
        {
            const CanvasPtr canvas = makeCanvas();
            canvas->attachPainter(&painter);
        }
        QVERIFY(painter.isActive());
        QVERIFY(painter.end());
    });
}

void TestCanvas::withoutPainterNothingHappens()
{
    const CanvasPtr canvas = makeCanvas();
    const ZvGePoint2d points[] = {{1, 1}, {5, 5}, {9, 1}};
    canvas->setLineStyle(1, 0, kRed, 0, 0);
    canvas->setFillStyle(ZvsiCanvas::kHatchCross, kRed);
    canvas->setPenWidthAdapt(ZvsiCanvas::kWidthByMatrix);
    canvas->setRop(1);
    canvas->setMatrix(ZvGeMatrix2d());
    canvas->mutiMatrix(ZvGeMatrix2d::scaling(2), true);
    canvas->setClipRgn(makeRegion({points, points + 3}));
    canvas->updadeProperty(true);
    canvas->updadeProperty(false);
    canvas->drawLine(points[0], points[1]);
    canvas->drawPolyline(points, 3, false);
    canvas->drawPolyline(points, 3, true);
    canvas->drawGouraudTriangle(points[0], points[1], points[2], kRed, kGreen, kBlue);
    const std::uint32_t pixel = kRed;
    canvas->drawRasterImage(points[0], {1, 0}, {0, 1}, zvutImageWrap(&pixel, 1, 1, 32), ZvArray<ZvGePoint2d>(), false);
    canvas->drawPaths(7, ZvArray<float>(), ZvArray<int>());
    canvas->attachPainter(nullptr);
    QCOMPARE(canvas->pointToQt(points[1]), QPointF(10, 10));
}

void TestCanvas::pointsAreNotRounded_data()
{
    QTest::addColumn<ZvGeMatrix2d>("matrix");
    QTest::addColumn<QPointF>("expected");
    QTest::newRow("identity") << ZvGeMatrix2d() << QPointF(1.234567890123, -4.0000001);
    QTest::newRow("upside down, twice as large")
        << upsideDown() << QPointF(5.25 + 2 * 1.234567890123, 60.5 + 2 * 4.0000001);
    QTest::newRow("moved") << ZvGeMatrix2d::translation({0.25, 0.125}) << QPointF(1.484567890123, -3.8750001);
    QTest::newRow("turned") << ZvGeMatrix2d::rotation(std::acos(-1.0) / 2) << QPointF(4.0000001, 1.234567890123);
}

void TestCanvas::pointsAreNotRounded()
{
    QFETCH(ZvGeMatrix2d, matrix);
    QFETCH(QPointF, expected);
    const CanvasPtr canvas = makeCanvas();
    canvas->setMatrix(matrix);
    const ZvGePoint2d point(1.234567890123, -4.0000001);
    const QPointF shown = canvas->pointToQt(point);
    QVERIFY(std::fabs(shown.x() - expected.x()) < 1e-12);
    QVERIFY(std::fabs(shown.y() - expected.y()) < 1e-12);
    QCOMPARE(canvas->pointToQt2(point).x, shown.x());
    QCOMPARE(canvas->pointToQt2(point).y, shown.y());
}

void TestCanvas::matrixIsReplacedAndMultiplied_data()
{
    QTest::addColumn<bool>("post");
    QTest::addColumn<QPointF>("expected");
    // At hand: moved by (10, 0). Multiplied with: twice as large. The point is (1, 1).
    QTest::newRow("before the one at hand") << true << QPointF(12, 2);
    QTest::newRow("after the one at hand") << false << QPointF(22, 2);
}

void TestCanvas::matrixIsReplacedAndMultiplied()
{
    QFETCH(bool, post);
    const CanvasPtr canvas = makeCanvas();
    canvas->setMatrix(ZvGeMatrix2d::scaling(99));
    canvas->setMatrix(ZvGeMatrix2d::translation({10, 0}));
    canvas->mutiMatrix(ZvGeMatrix2d::scaling(2), post);
    QTEST(canvas->pointToQt({1, 1}), "expected");
}

static void addLineStyles()
{
    QTest::addColumn<LineStyle>("line");
    QTest::addColumn<bool>("smooth");
    QTest::newRow("thinnest") << LineStyle{0, 0} << false;
    QTest::newRow("thinnest, smooth") << LineStyle{0, 0} << true;
    QTest::newRow("1 wide") << LineStyle{1, 0} << false;
    QTest::newRow("2 wide") << LineStyle{2, 0} << false;
    QTest::newRow("7 wide, smooth, round") << LineStyle{7, 0, kRed, 2, 2} << true;
    QTest::newRow("7 wide, square, mitred") << LineStyle{7, 0, kBlue, 1, 0} << false;
    QTest::newRow("6 wide, flat, bevelled") << LineStyle{6, 0, kGreen, 0, 1} << true;
    QTest::newRow("dashes") << LineStyle{1, 1} << false;
    QTest::newRow("wide dots") << LineStyle{3, 2} << false;
    QTest::newRow("dashes and dots, smooth") << LineStyle{2, 3} << true;
    QTest::newRow("see-through") << LineStyle{9, 0, kPaleRed, 1, 2} << true;
}

void TestCanvas::linesAreThePaintersOwn_data()
{
    addLineStyles();
}

void TestCanvas::linesAreThePaintersOwn()
{
    QFETCH(LineStyle, line);
    QFETCH(bool, smooth);
    const ZvGeMatrix2d matrix = upsideDown();
    const auto prepare = [&](QPainter &painter) { painter.setRenderHint(QPainter::Antialiasing, smooth); };
    const QImage byCanvas = canvasSheet(
        [&](ZvQtCanvas &canvas) {
            setLine(canvas, line);
            for (std::size_t i = 1; i < kZigzag.size(); ++i)
                canvas.drawLine(kZigzag[i - 1], kZigzag[i]);
        },
        matrix, prepare);
    const QImage byPainter = paintedSheet([&](QPainter &painter) {
        prepare(painter);
        painter.setPen(penOf(line));
        const QPolygonF polygon = onDevice(kZigzag, matrix);
        for (int i = 1; i < polygon.size(); ++i)
            painter.drawLine(QLineF(polygon[i - 1], polygon[i]));
    });
    QCOMPARE(byCanvas, byPainter);
    QVERIFY(!isBlank(byCanvas));
}

void TestCanvas::openPolylinesAreThePaintersOwn_data()
{
    addLineStyles();
}

void TestCanvas::openPolylinesAreThePaintersOwn()
{
    QFETCH(LineStyle, line);
    QFETCH(bool, smooth);
    const ZvGeMatrix2d matrix = upsideDown();
    const auto prepare = [&](QPainter &painter) { painter.setRenderHint(QPainter::Antialiasing, smooth); };
    Points spiral; // more than a usual polyline has
    for (int i = 0; i < 700; ++i)
        spiral.push_back({20 + i * 0.02 * std::cos(i * 0.1), 15 + i * 0.02 * std::sin(i * 0.1)});
    for (const Points &points : {kZigzag, Points(kZigzag.begin(), kZigzag.begin() + 2), spiral}) {
        const QImage byCanvas = canvasSheet(
            [&](ZvQtCanvas &canvas) {
                setLine(canvas, line);
                canvas.drawPolyline(points.data(), int(points.size()), false);
            },
            matrix, prepare);
        const QImage byPainter = paintedSheet([&](QPainter &painter) {
            prepare(painter);
            painter.setPen(penOf(line));
            painter.drawPolyline(onDevice(points, matrix));
        });
        QCOMPARE(byCanvas, byPainter);
        QVERIFY(!isBlank(byCanvas));
    }
}

void TestCanvas::closedPolylinesHaveAPenOfTheirOwn_data()
{
    addLineStyles();
}

void TestCanvas::closedPolylinesHaveAPenOfTheirOwn()
{
    QFETCH(LineStyle, line);
    QFETCH(bool, smooth);
    const ZvGeMatrix2d matrix = upsideDown();
    const auto prepare = [&](QPainter &painter) { painter.setRenderHint(QPainter::Antialiasing, smooth); };
    // Two points are stroked there and back.
    for (const Points &points : {kZigzag, Points(kZigzag.begin(), kZigzag.begin() + 2)}) {
        const QImage byCanvas = canvasSheet(
            [&](ZvQtCanvas &canvas) {
                setLine(canvas, line);
                canvas.drawPolyline(points.data(), int(points.size()), true);
            },
            matrix, prepare);
        const QImage byPainter = paintedSheet([&](QPainter &painter) {
            prepare(painter);
            QPen pen(penOf(line).color());
            pen.setWidthF(line.width);
            pen.setStyle(penOf(line).style());
            painter.strokePath(closedPath(onDevice(points, matrix)), pen);
        });
        QCOMPARE(byCanvas, byPainter);
        QVERIFY(!isBlank(byCanvas));
    }
}

void TestCanvas::polylinesOfTooFewPointsDrawNothing_data()
{
    QTest::addColumn<int>("count");
    QTest::addColumn<bool>("closed");
    QTest::newRow("one point, open") << 1 << false;
    QTest::newRow("one point, closed") << 1 << true;
    QTest::newRow("no point, open") << 0 << false;
    QTest::newRow("no point, closed") << 0 << true;
    QTest::newRow("below none, open") << -5 << false;
    QTest::newRow("below none, closed") << -5 << true;
}

void TestCanvas::polylinesOfTooFewPointsDrawNothing()
{
    QFETCH(int, count);
    QFETCH(bool, closed);
    QVERIFY(isBlank(canvasSheet([&](ZvQtCanvas &canvas) {
        setLine(canvas, {9, 0, kRed, 1, 0});
        canvas.drawPolyline(kZigzag.data(), count, closed);
    })));
}

void TestCanvas::noPenDrawsNothing_data()
{
    QTest::addColumn<QString>("operation");
    QTest::newRow("line") << QStringLiteral("line");
    QTest::newRow("open polyline") << QStringLiteral("open");
    QTest::newRow("closed polyline, through the same table") << QStringLiteral("closed");
}

void TestCanvas::noPenDrawsNothing()
{
    QFETCH(QString, operation);
    const auto sheet = [&](int style) {
        return canvasSheet([&](ZvQtCanvas &canvas) {
            setLine(canvas, {4, style, kRed, 1, 0});
            if (operation == QLatin1String("line"))
                canvas.drawLine(kZigzag[0], kZigzag[1]);
            else
                canvas.drawPolyline(kZigzag.data(), 5, operation == QLatin1String("closed"));
        });
    };
    QVERIFY(isBlank(sheet(-1)));
    QVERIFY(!isBlank(sheet(0)));
}

void TestCanvas::clipIsThePaintersOwn_data()
{
    QTest::addColumn<Points>("points");
    QTest::newRow("triangle") << Points{{2, 3}, {34, 9}, {14, 27}};
    QTest::newRow("crossing itself") << Points{{2, 3}, {34, 27}, {34, 3}, {2, 27}};
    QTest::newRow("closed by the caller") << Points{{2, 3}, {34, 9}, {14, 27}, {2, 3}};
    QTest::newRow("two points") << Points{{2, 3}, {34, 9}};
    QTest::newRow("one point") << Points{{10, 10}};
}

void TestCanvas::clipIsThePaintersOwn()
{
    QFETCH(Points, points);
    const ZvGeMatrix2d matrix = upsideDown();
    const LineStyle wide{200, 0, kRed, 1, 0};
    const QImage byCanvas = canvasSheet(
        [&](ZvQtCanvas &canvas) {
            canvas.setClipRgn(makeRegion(points));
            setLine(canvas, wide);
            canvas.drawLine({0, 0}, {40, 30});
        },
        matrix);
    const QImage byPainter = paintedSheet([&](QPainter &painter) {
        painter.setClipPath(closedPath(onDevice(points, matrix)), Qt::IntersectClip);
        painter.setPen(penOf(wide));
        const QPolygonF line = onDevice({{0, 0}, {40, 30}}, matrix);
        painter.drawLine(line[0], line[1]);
    });
    QCOMPARE(byCanvas, byPainter);
    QCOMPARE(isBlank(byCanvas), points.size() < 3);
}

void TestCanvas::clipIsClosed()
{
    const Points points{{2, 3}, {34, 9}, {14, 27}};
    paintedSheet([&points](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setClipRgn(makeRegion(points));
        QCOMPARE(painter.clipPath(), closedPath(onDevice(points, ZvGeMatrix2d())));
    });
}

void TestCanvas::clipsNarrowEachOther()
{
    const Points left{{0, 0}, {50, 0}, {50, 60}, {0, 60}};
    const Points right{{30, 10}, {80, 10}, {80, 40}, {30, 40}};
    const QImage sheet = canvasSheet([&](ZvQtCanvas &canvas) {
        canvas.setClipRgn(makeRegion(left));
        canvas.setClipRgn(makeRegion(right));
        setLine(canvas, {300, 0, kBlue, 1, 0});
        canvas.drawLine({0, 0}, {80, 60});
    });
    for (int y = 0; y < sheet.height(); ++y) {
        for (int x = 0; x < sheet.width(); ++x) {
            const bool inBoth = x >= 30 && x < 50 && y >= 10 && y < 40;
            QCOMPARE(sheet.pixelColor(x, y), inBoth ? QColor(Qt::blue) : QColor(Qt::white));
        }
    }
    // The larger one afterwards does not widen it.
    const QImage again = canvasSheet([&](ZvQtCanvas &canvas) {
        canvas.setClipRgn(makeRegion(left));
        canvas.setClipRgn(makeRegion(right));
        canvas.setClipRgn(makeRegion(left));
        setLine(canvas, {300, 0, kBlue, 1, 0});
        canvas.drawLine({0, 0}, {80, 60});
    });
    QCOMPARE(again, sheet);
}

void TestCanvas::clipWithoutPointsStays_data()
{
    QTest::addColumn<bool>("isNull");
    QTest::newRow("no points") << false;
    QTest::newRow("no region") << true;
}

void TestCanvas::clipWithoutPointsStays()
{
    QFETCH(bool, isNull);
    const auto sheet = [&](bool tries) {
        return canvasSheet([&](ZvQtCanvas &canvas) {
            canvas.setClipRgn(makeRegion({{10, 10}, {40, 10}, {40, 40}}));
            if (tries)
                canvas.setClipRgn(isNull ? ZvSmartPtr<HdiClipRgn>() : makeRegion({}));
            setLine(canvas, {300, 0, kBlue, 1, 0});
            canvas.drawLine({0, 0}, {80, 60});
        });
    };
    QCOMPARE(sheet(true), sheet(false));
    QVERIFY(!isBlank(sheet(true)));
}

void TestCanvas::clipIsLeftByThePaintersRestoreOnly()
{
    const QImage sheet = paintedSheet([](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        painter.save();
        canvas->attachPainter(&painter);
        canvas->setClipRgn(makeRegion({{0, 0}, {4, 0}, {4, 4}, {0, 4}}));
        canvas->attachPainter(&painter); // does not free it either
        QVERIFY(painter.hasClipping());
        painter.restore();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(300, 0, kBlue, 1, 0);
        canvas->drawLine({0, 0}, {80, 60});
    });
    QCOMPARE(sheet.pixelColor(70, 50), QColor(Qt::blue));
}

namespace {

struct Triangle
{
    ZvGePoint2d points[3];
    unsigned colors[3];
};

void addTriangles()
{
    QTest::addColumn<Triangle>("triangle");
    QTest::newRow("corners on the diagonal and off it")
        << Triangle{{{5, 5}, {80, 12}, {40, 62}}, {kRed, kGreen, kBlue}};
    QTest::newRow("first corner lowest, third highest")
        << Triangle{{{5, 5}, {70, 10}, {80, 60}}, {kRed, kGreen, kBlue}};
    QTest::newRow("third corner lowest: its colour gives way to that of the first stop")
        << Triangle{{{80, 60}, {70, 10}, {5, 5}}, {kRed, kGreen, kBlue}};
    QTest::newRow("two corners level across the diagonal: the later one counts")
        << Triangle{{{10, 60}, {60, 10}, {10, 10}}, {kRed, kGreen, kBlue}};
    QTest::newRow("one colour") << Triangle{{{5, 60}, {80, 12}, {40, 3}}, {kGreen, kGreen, kGreen}};
    QTest::newRow("see-through") << Triangle{{{5, 5}, {80, 12}, {40, 62}}, {0x00FFFFFF, 0x80FF0000, 0xFF00FFFF}};
    QTest::newRow("level line") << Triangle{{{5, 20}, {80, 20}, {40, 20}}, {kRed, kGreen, kBlue}};
}

QColor colorOf(unsigned packed)
{
    return QColor(int(packed & 0xFF), int(packed >> 8 & 0xFF), int(packed >> 16 & 0xFF), int(packed >> 24));
}

/// The stops by position, each set in the order told: a later one replaces an equal one.
QMap<double, QColor> stopsOf(const Triangle &triangle, ZvGePoint2d &low, ZvGePoint2d &high)
{
    low = high = triangle.points[0];
    for (const ZvGePoint2d &point : triangle.points) {
        low = ZvGePoint2d(std::min(low.x, point.x), std::min(low.y, point.y));
        high = ZvGePoint2d(std::max(high.x, point.x), std::max(high.y, point.y));
    }
    const double length = std::hypot(high.x - low.x, high.y - low.y);
    const ZvGeVector2d direction = (high - low) / length;
    QMap<double, QColor> stops{{0.0, colorOf(triangle.colors[0])}, {1.0, colorOf(triangle.colors[2])}};
    for (int i = 0; i < 3; ++i) {
        const ZvGeVector2d away = triangle.points[i] - low;
        const double along = (away.x * direction.x + away.y * direction.y) / length;
        stops[std::min(along, 1.0)] = colorOf(triangle.colors[i]);
    }
    return stops;
}

QColor mixed(const QMap<double, QColor> &stops, double at)
{
    auto after = stops.upperBound(at);
    if (after == stops.end())
        return stops.last();
    if (after == stops.begin())
        return stops.first();
    const auto before = std::prev(after);
    const double t = (at - before.key()) / (after.key() - before.key());
    const auto mix = [t](double a, double b) { return std::min(1.0, a + t * (b - a)); };
    return QColor::fromRgbF(mix(before->redF(), after->redF()), mix(before->greenF(), after->greenF()),
                            mix(before->blueF(), after->blueF()));
}

} // namespace

Q_DECLARE_METATYPE(Triangle)

void TestCanvas::triangleFollowsTheFormula_data()
{
    addTriangles();
}

void TestCanvas::triangleFollowsTheFormula()
{
    QFETCH(Triangle, triangle);
    const auto &[points, colors] = triangle;
    const QImage sheet = canvasSheet([&](ZvQtCanvas &canvas) {
        canvas.drawGouraudTriangle(points[0], points[1], points[2], colors[0], colors[1], colors[2]);
    });
    if ((colors[0] & colors[1] & colors[2]) >> 24 != 0xFF)
        return; // mixing with the paper is the painter's matter; see the next function
    ZvGePoint2d low;
    ZvGePoint2d high;
    const QMap<double, QColor> stops = stopsOf(triangle, low, high);
    const QPolygonF outline = onDevice({points, points + 3}, ZvGeMatrix2d());
    int compared = 0;
    for (int y = 0; y < sheet.height(); ++y) {
        for (int x = 0; x < sheet.width(); ++x) {
            const QPointF center(x + 0.5, y + 0.5);
            const QRectF around(center - QPointF(1, 1), QSizeF(2, 2));
            const bool inside = outline.containsPoint(around.topLeft(), Qt::OddEvenFill)
                && outline.containsPoint(around.topRight(), Qt::OddEvenFill)
                && outline.containsPoint(around.bottomLeft(), Qt::OddEvenFill)
                && outline.containsPoint(around.bottomRight(), Qt::OddEvenFill);
            const QColor shown = sheet.pixelColor(x, y);
            if (!inside) {
                if (!outline.intersects(QPolygonF(around)))
                    QCOMPARE(shown, QColor(Qt::white));
                continue;
            }
            const double length2 = std::pow(high.x - low.x, 2) + std::pow(high.y - low.y, 2);
            const QColor expected = mixed(
                stops, ((center.x() - low.x) * (high.x - low.x) + (center.y() - low.y) * (high.y - low.y)) / length2);
            ++compared;
            // The painter keeps 1024 colours along a gradient.
            const bool close = std::abs(shown.red() - expected.red()) <= 3
                && std::abs(shown.green() - expected.green()) <= 3 && std::abs(shown.blue() - expected.blue()) <= 3;
            QVERIFY2(
                close,
                qPrintable(QStringLiteral("(%1, %2): %3, not %4").arg(x).arg(y).arg(shown.name(), expected.name())));
        }
    }
    QCOMPARE(compared > 500, points[0].y != points[1].y);
}

void TestCanvas::triangleIsThePaintersGradient_data()
{
    addTriangles();
}

void TestCanvas::triangleIsThePaintersGradient()
{
    QFETCH(Triangle, triangle);
    const auto &[points, colors] = triangle;
    for (const bool smooth : {false, true}) {
        const auto prepare = [smooth](QPainter &painter) { painter.setRenderHint(QPainter::Antialiasing, smooth); };
        const ZvGeMatrix2d matrix = ZvGeMatrix2d::scaling(0.75);
        const QImage byCanvas = canvasSheet(
            [&](ZvQtCanvas &canvas) {
                canvas.drawGouraudTriangle(points[0], points[1], points[2], colors[0], colors[1], colors[2]);
            },
            matrix, prepare);
        ZvGePoint2d low;
        ZvGePoint2d high;
        const QMap<double, QColor> stops = stopsOf(triangle, low, high);
        const QImage byPainter = paintedSheet([&](QPainter &painter) {
            prepare(painter);
            const QPolygonF ends = onDevice({low, high}, matrix);
            QLinearGradient gradient(ends[0], ends[1]);
            for (auto stop = stops.cbegin(); stop != stops.cend(); ++stop)
                gradient.setColorAt(stop.key(), stop.value());
            painter.fillPath(closedPath(onDevice({points, points + 3}, matrix)), gradient);
        });
        QCOMPARE(byCanvas, byPainter);
    }
}

void TestCanvas::triangleTooSmallDrawsNothing_data()
{
    QTest::addColumn<Points>("points");
    QTest::addColumn<bool>("isDrawn");
    const auto spread = [](double by) { return Points{{0, 0}, {by, 0}, {by, by}}; };
    QTest::newRow("all corners equal") << Points{{7, 7}, {7, 7}, {7, 7}} << false;
    QTest::newRow("diagonal of 1e-7") << spread(1e-7 / std::sqrt(2.0)) << false;
    QTest::newRow("diagonal just below 1e-6") << spread(0.999e-6 / std::sqrt(2.0)) << false;
    QTest::newRow("diagonal just above 1e-6") << spread(1.001e-6 / std::sqrt(2.0)) << true;
    QTest::newRow("diagonal below 1e-300") << spread(1e-301) << false;
    QTest::newRow("no numbers") << Points(3, ZvGePoint2d(std::nan(""), 0)) << false;
    QTest::newRow("endless") << Points{{0, 0}, {std::numeric_limits<double>::infinity(), 0}, {5, 5}} << false;
}

void TestCanvas::triangleTooSmallDrawsNothing()
{
    QFETCH(Points, points);
    QFETCH(bool, isDrawn);
    paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->drawGouraudTriangle(points[0], points[1], points[2], kRed, kGreen, kBlue);
        QCOMPARE(painter.brush().style() == Qt::LinearGradientPattern, isDrawn);
    });
    // Large enough on the device is not the question.
    if (!isDrawn) {
        QVERIFY(isBlank(canvasSheet(
            [&](ZvQtCanvas &canvas) {
                canvas.drawGouraudTriangle(points[0], points[1], points[2], kRed, kGreen, kBlue);
            },
            ZvGeMatrix2d::scaling(1e8))));
    }
}

void TestCanvas::triangleLeavesBrushAndNoPen()
{
    paintedSheet([](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(3, 0, kRed, 0, 0);
        canvas->setFillStyle(ZvsiCanvas::kHatchSolid, kRed);
        canvas->drawGouraudTriangle({0, 0}, {10, 0}, {10, 10}, kRed, kGreen, kBlue);
        QCOMPARE(painter.pen().color(), QColor(Qt::transparent));
        QCOMPARE(painter.brush().style(), Qt::LinearGradientPattern);
        canvas->setLineStyle(3, 0, kRed, 0, 0);
        canvas->setFillStyle(ZvsiCanvas::kHatchSolid, kRed);
        QCOMPARE(painter.pen().color(), QColor(Qt::red));
        QCOMPARE(painter.brush(), QBrush(Qt::red));
    });
}

void TestCanvas::whatIsNotSentDoesNothing()
{
    const QImage sheet = canvasSheet([](ZvQtCanvas &canvas) {
        setLine(canvas, {3, 0, kRed, 1, 0});
        canvas.setFillStyle(ZvsiCanvas::kHatchSolid, kRed);
        double dashes[] = {1.0, 2.0};
        QVERIFY(canvas.customPenStyle(dashes, 2));
        QVERIFY(canvas.customPenStyle(nullptr, -1));
        canvas.setTextAlign(3);
        canvas.drawText({10, 10}, L"text", 12.0, 0.0);
        canvas.drawRay({10, 10}, {20, 20});
        canvas.drawXLine({10, 10}, {20, 20});
        canvas.drawCircle({20, 20}, 15);
        canvas.drawArc({20, 20}, 15, 0, 3);
        canvas.drawPng({0, 0}, {50, 50}, "picture.png");
        canvas.drawShape({10, 10}, nullptr, 1.0, 0.0);
        unsigned bits[4] = {};
        canvas.attachBitmap(bits, 2, 2, 8);
        canvas.deattachBitmap();
    });
    QVERIFY(isBlank(sheet));
    // A pattern of one's own changes no pen.
    paintedSheet([](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        const QPen before = painter.pen();
        double dashes[] = {1.0, 2.0};
        canvas->customPenStyle(dashes, 2);
        QCOMPARE(painter.pen(), before);
    });
}

void TestCanvas::textHasNoExtent_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("some") << QStringLiteral("some");
    QTest::newRow("long") << QString(5000, QLatin1Char('x'));
}

void TestCanvas::textHasNoExtent()
{
    QFETCH(QString, text);
    const ZvGeExtents2d extents = makeCanvas()->measureText(ZvString(text.toUtf8().constData()), 10.0);
    QCOMPARE(extents.minimum.x, 1e20);
    QCOMPARE(extents.minimum.y, 1e20);
    QCOMPARE(extents.maximum.x, -1e20);
    QCOMPARE(extents.maximum.y, -1e20);
}

ZEVA_TEST_MAIN(TestCanvas)
#include "tst_canvas.moc"
