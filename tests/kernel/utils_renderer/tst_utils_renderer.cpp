// SPDX-License-Identifier: MIT
#include "picture.h"

#include "db/zvresbuf.h"

#include <QTemporaryDir>
#include <QTest>

#include <cmath>

class UtilsRendererTest : public QObject
{
    Q_OBJECT

private slots:
    void aLineInksItsPixelsAndNoOthers();
    void colourSevenTurnsWithTheBackground_data();
    void colourSevenTurnsWithTheBackground();
    void trueColoursStayAsTheyAre();
    void byLayerTakesTheLayersColour();
    void whatIsOffFrozenOrInvisibleIsNotDrawn_data();
    void whatIsOffFrozenOrInvisibleIsNotDrawn();
    void byBlockTakesTheReferencesColour();
    void layerZeroInABlockIsTheReferencesLayer();
    void aFrozenReferenceHidesAndAnOffOneDoesNot();
    void blocksNest();
    void aBlockThatHoldsItselfEnds();
    void referencesSmallerThanAPixelAreADot();
    void lineWeightsShowOnlyWhenAskedFor();
    void patternsRunAlongTheWholePolyline();
    void patternsFollowAllScales();
    void patternsTooFineAreContinuous();
    void patternsThatBeginWithAGapDoSo();
    void dotsAreOnePixel();
    void textsOfLineTypesStandInTheirGaps();
    void clippedPatternsKeepTheirPlace();
    void solidsFillTheirCornersAndNoMore();
    void aWidePolylineHasItsWidth();
    void arcsLieOnTheirCircle();
    void aCloseLookAtALargeArcIsSmooth();
    void raysEndAtTheirBaseAndLinesDoNot();
    void viewsFromOtherSides_data();
    void viewsFromOtherSides();
    void theTwistTurnsThePicture();
    void solidsCoverWhatCameBefore();
    void transparencyMixes();
    void monochromeIsForegroundOnly();
    void plottingLeavesOutWhatIsNotPlotted();
    void highlightIsInItsColour();
    void onlyWhatCanBeSeenIsVisited();
    void changesAreSeen();
    void changesInBlocksAreSeen();
    void slicesMakeTheWholePicture();
    void drawingStopsWhenTold();
    void someEntitiesOnly();
    void extentsAreThoseOfVisibleEntities();
    void nothingStaysOpen();
    void aRendererOutlivesItsDatabase();
    void farCoordinatesDoNotDisturb();
};

namespace {
const QRgb kBlack = 0xFF000000;
const QRgb kRed = 0xFFFF0000;
const QRgb kWhite = 0xFFFFFFFF;
} // namespace

void UtilsRendererTest::aLineInksItsPixelsAndNoOthers()
{
    Picture picture;
    picture.addLine(10.5, 20.5, 60.5, 20.5, 1);
    const QImage image = picture.draw();
    for (int x = 11; x < 60; ++x)
        QCOMPARE(image.pixel(x, 79), kRed);
    QVERIFY(inked(image) <= 51);
    QCOMPARE(inkedRect(image).top(), 79);
    QCOMPARE(inkedRect(image).bottom(), 79);
    QVERIFY(std::abs(inkedRect(image).left() - 10) <= 1 && std::abs(inkedRect(image).right() - 60) <= 1);
}

void UtilsRendererTest::colourSevenTurnsWithTheBackground_data()
{
    QTest::addColumn<unsigned>("background");
    QTest::addColumn<unsigned>("shown");
    QTest::newRow("white on black") << 0xFF000000u << unsigned(kWhite);
    QTest::newRow("white on the usual dark") << 0xFF30281Eu << unsigned(kWhite);
    QTest::newRow("black on white") << 0xFFFFFFFFu << unsigned(kBlack);
}

void UtilsRendererTest::colourSevenTurnsWithTheBackground()
{
    QFETCH(unsigned, background);
    QFETCH(unsigned, shown);
    Picture picture;
    picture.options.background = background;
    picture.addLine(10.5, 20.5, 60.5, 20.5, 7);
    QCOMPARE(picture.draw().pixel(30, 79), QRgb(shown));
}

void UtilsRendererTest::trueColoursStayAsTheyAre()
{
    Picture picture;
    const ZvDbObjectId id = picture.addLine(10.5, 20.5, 60.5, 20.5);
    change<ZvDbLine>(id, [](ZvDbLine &line) {
        ZvCmColor color;
        color.setRGB(12, 200, 99);
        line.setColor(color);
    });
    QCOMPARE(picture.draw().pixel(30, 79), qRgb(12, 200, 99));
}

void UtilsRendererTest::byLayerTakesTheLayersColour()
{
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("walls", 3);
    picture.addLine(10.5, 20.5, 60.5, 20.5, 256, layer);
    ZvGiRenderer renderer(picture.database);
    QCOMPARE(picture.draw(renderer).pixel(30, 79), qRgb(0, 255, 0));
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setColor(Picture::aci(5)); });
    QCOMPARE(picture.draw(renderer).pixel(30, 79), qRgb(0, 0, 255));
}

void UtilsRendererTest::whatIsOffFrozenOrInvisibleIsNotDrawn_data()
{
    QTest::addColumn<QByteArray>("what");
    for (const char *what : {"off", "frozen", "invisible", "erased"})
        QTest::newRow(what) << QByteArray(what);
}

void UtilsRendererTest::whatIsOffFrozenOrInvisibleIsNotDrawn()
{
    QFETCH(QByteArray, what);
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("walls", 3);
    const ZvDbObjectId line = picture.addLine(10.5, 20.5, 60.5, 20.5, 256, layer);
    picture.addLine(10.5, 40.5, 60.5, 40.5, 1);
    ZvGiRenderer renderer(picture.database);
    QCOMPARE(inkedRect(picture.draw(renderer)).height(), 21);
    if (what == "off")
        change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsOff(true); });
    else if (what == "frozen")
        change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsFrozen(true); });
    else if (what == "invisible")
        change<ZvDbLine>(line, [](ZvDbLine &entity) { entity.setVisibility(ZvDb::kInvisible); });
    else
        change<ZvDbLine>(line, [](ZvDbLine &entity) { entity.erase(); });
    const QRect rect = inkedRect(picture.draw(renderer));
    QCOMPARE(rect.height(), 1);
    QCOMPARE(rect.top(), 59);
}

void UtilsRendererTest::byBlockTakesTheReferencesColour()
{
    Picture picture;
    const ZvDbObjectId block = picture.addBlock("bolt");
    picture.addLine(0.5, 0.5, 20.5, 0.5, 0, ZvDbObjectId(), block);
    picture.addReference(block, ZvGePoint3d(10, 10, 0), 1);
    picture.addReference(block, ZvGePoint3d(10, 50, 0), 3);
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(20, 89), kRed);
    QCOMPARE(image.pixel(20, 49), qRgb(0, 255, 0));
}

void UtilsRendererTest::layerZeroInABlockIsTheReferencesLayer()
{
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("walls", 3);
    const ZvDbObjectId block = picture.addBlock("bolt");
    picture.addLine(0.5, 0.5, 20.5, 0.5, 256, ZvDbObjectId(), block); // on layer 0
    const ZvDbObjectId own = picture.addLayer("own", 1);
    picture.addLine(0.5, 5.5, 20.5, 5.5, 256, own, block);
    picture.addReference(block, ZvGePoint3d(10, 10, 0), 256, layer);
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(20, 89), qRgb(0, 255, 0));
    QCOMPARE(image.pixel(20, 84), kRed);
}

void UtilsRendererTest::aFrozenReferenceHidesAndAnOffOneDoesNot()
{
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("walls", 3);
    const ZvDbObjectId own = picture.addLayer("own", 1);
    const ZvDbObjectId block = picture.addBlock("bolt");
    picture.addLine(0.5, 0.5, 20.5, 0.5, 256, ZvDbObjectId(), block);
    picture.addLine(0.5, 5.5, 20.5, 5.5, 256, own, block);
    picture.addReference(block, ZvGePoint3d(10, 10, 0), 256, layer);
    ZvGiRenderer renderer(picture.database);
    QCOMPARE(inkedRect(picture.draw(renderer)).height(), 6);
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsOff(true); });
    QImage image = picture.draw(renderer);
    QCOMPARE(inkedRect(image).height(), 1); // what is on a layer of its own stays
    QCOMPARE(image.pixel(20, 84), kRed);
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) {
        record.setIsOff(false);
        record.setIsFrozen(true);
    });
    QCOMPARE(inked(picture.draw(renderer)), 0);
}

void UtilsRendererTest::blocksNest()
{
    Picture picture;
    const ZvDbObjectId inner = picture.addBlock("inner");
    picture.addLine(0.5, 0.5, 20.5, 0.5, 0, ZvDbObjectId(), inner);
    const ZvDbObjectId outer = picture.addBlock("outer");
    picture.addReference(inner, ZvGePoint3d(5, 5, 0), 0, ZvDbObjectId(), outer);
    picture.addReference(outer, ZvGePoint3d(10, 10, 0), 1);
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(25, 84), kRed); // by block, twice
    QCOMPARE(inkedRect(image).height(), 1);
}

void UtilsRendererTest::aBlockThatHoldsItselfEnds()
{
    Picture picture;
    const ZvDbObjectId block = picture.addBlock("mirror");
    picture.addLine(0.5, 0.5, 20.5, 0.5, 1, ZvDbObjectId(), block);
    picture.addReference(block, ZvGePoint3d(0, 3, 0), 256, ZvDbObjectId(), block);
    picture.addReference(block, ZvGePoint3d(10, 10, 0));
    QCOMPARE(picture.draw().pixel(20, 89), kRed);
}

void UtilsRendererTest::referencesSmallerThanAPixelAreADot()
{
    Picture picture;
    const ZvDbObjectId block = picture.addBlock("bolt");
    for (int i = 0; i < 20; ++i)
        picture.addLine(0, i * 0.01, 0.2, i * 0.01, 0, ZvDbObjectId(), block);
    picture.addReference(block, ZvGePoint3d(30.3, 20.3, 0), 1);
    const QImage image = picture.draw();
    const QRect rect = inkedRect(image);
    QVERIFY(rect.isValid() && rect.width() <= 2 && rect.height() == 1);
    QVERIFY(rect.contains(30, 79));
    QCOMPARE(image.pixel(rect.topLeft()), kRed);
    // On a layer that is off there is none.
    const ZvDbObjectId off = picture.addLayer("off", 3);
    change<ZvDbLayerTableRecord>(off, [](ZvDbLayerTableRecord &record) { record.setIsOff(true); });
    picture.addReference(block, ZvGePoint3d(60.3, 60.3, 0), 1, off);
    QCOMPARE(inkedRect(picture.draw()), rect);
}

void UtilsRendererTest::lineWeightsShowOnlyWhenAskedFor()
{
    Picture picture;
    const ZvDbObjectId id = picture.addLine(10, 50, 90, 50);
    change<ZvDbLine>(id, [](ZvDbLine &line) { line.setLineWeight(ZvDb::kLnWt200); });
    QCOMPARE(inkedRect(picture.draw()).height(), 1);
    picture.options.lineWeights = true;
    picture.options.pixelsPerMillimetre = 5.0;
    const QRect rect = inkedRect(picture.draw());
    QCOMPARE(rect.height(), 10);
    QCOMPARE(rect.top(), 45);
    // By layer, by default: a quarter of a millimetre.
    change<ZvDbLine>(id, [](ZvDbLine &line) { line.setLineWeight(ZvDb::kLnWtByLayer); });
    picture.options.pixelsPerMillimetre = 20.0;
    QCOMPARE(inkedRect(picture.draw()).height(), 5);
}

void UtilsRendererTest::patternsRunAlongTheWholePolyline()
{
    Picture picture;
    const ZvDbObjectId dashed = picture.addLinetype("dashed", std::vector<double>{10.0, -5.0});
    auto *polyline = new ZvDbPolyline();
    // The corner comes in the middle of a dash: 7.5 long before it, 2.5 behind it.
    polyline->addVertex(ZvGePoint2d(10, 20.5));
    polyline->addVertex(ZvGePoint2d(47.5, 20.5));
    polyline->addVertex(ZvGePoint2d(47.5, 80.5));
    polyline->setLinetype(dashed);
    polyline->setLayer(picture.database->layerZero());
    picture.add(polyline);
    const QImage image = picture.draw();
    const std::vector<int> row = runs(image, 79, 10, 47);
    QCOMPARE(row.size(), std::size_t(5));
    for (std::size_t i = 0; i < 4; ++i)
        QVERIFY2(std::abs(std::abs(row[i]) - (i % 2 ? 5 : 10)) <= 1, qPrintable(QString::number(row[i])));
    // Up the second segment: 2.5 of the dash, a gap of 5, a dash of 10.
    QCOMPARE(image.pixel(47, 78), kWhite);
    QCOMPARE(image.pixel(47, 75), kBlack);
    QCOMPARE(image.pixel(47, 73), kBlack);
    QCOMPARE(image.pixel(47, 70), kWhite);
    QCOMPARE(image.pixel(47, 64), kWhite);
    QCOMPARE(image.pixel(47, 60), kBlack);
}

void UtilsRendererTest::patternsFollowAllScales()
{
    Picture picture;
    const ZvDbObjectId dashed = picture.addLinetype("dashed", std::vector<double>{1.0, -1.0});
    const ZvDbObjectId id = picture.addLine(10, 20.5, 90, 20.5);
    change<ZvDbLine>(id, [&](ZvDbLine &line) {
        line.setLinetype(dashed);
        line.setLinetypeScale(4.0);
    });
    picture.database->setLtscale(2.0);
    ZvGiRenderer renderer(picture.database);
    const std::vector<int> row = runs(picture.draw(renderer), 79, 10, 90);
    QCOMPARE(row.size(), std::size_t(10)); // 8 pixels each
    picture.database->setLtscale(5.0);
    QCOMPARE(runs(picture.draw(renderer), 79, 10, 90).size(), std::size_t(4));
}

void UtilsRendererTest::patternsTooFineAreContinuous()
{
    Picture picture;
    const ZvDbObjectId dashed = picture.addLinetype("dashed", std::vector<double>{1.0, -1.0});
    const ZvDbObjectId id = picture.addLine(10.5, 20.5, 90.5, 20.5);
    change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(dashed); });
    QCOMPARE(runs(picture.draw(), 79, 12, 88).size(), std::size_t(1));
    picture.database->setLtscale(1e-9);
    QCOMPARE(runs(picture.draw(), 79, 12, 88).size(), std::size_t(1));
    // And a pattern that is one long gap, as damaged files have it.
    const ZvDbObjectId gap = picture.addLinetype("gap", std::vector<double>{-10.0});
    change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(gap); });
    picture.database->setLtscale(1.0);
    QCOMPARE(runs(picture.draw(), 79, 12, 88).size(), std::size_t(1));
}

void UtilsRendererTest::patternsThatBeginWithAGapDoSo()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("late", std::vector<double>{-10.0, 20.0});
    const ZvDbObjectId id = picture.addLine(10, 20.5, 90, 20.5);
    change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(type); });
    const std::vector<int> row = runs(picture.draw(), 79, 10, 70);
    QCOMPARE(row.size(), std::size_t(4));
    QVERIFY(std::abs(row[0] + 10) <= 1);
    QVERIFY(std::abs(row[1] - 20) <= 1);
    QVERIFY(std::abs(row[2] + 10) <= 1);
}

void UtilsRendererTest::dotsAreOnePixel()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("dot", std::vector<double>{0.0, -5.0});
    const ZvDbObjectId id = picture.addLine(10, 20.5, 90, 20.5);
    change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(type); });
    const QImage image = picture.draw();
    const std::vector<int> row = runs(image, 79, 10, 90);
    QVERIFY(inked(image) >= 16 && inked(image) <= 17);
    for (int run : row)
        QVERIFY(run == 1 || run < 0);
}

void UtilsRendererTest::textsOfLineTypesStandInTheirGaps()
{
    Picture picture;
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(3);
    dashes[0].length = 10.0;
    dashes[1].length = -10.0;
    dashes[1].flags = 2;
    dashes[1].text = "H";
    dashes[1].scale = 8.0;
    dashes[1].offsetX = -4.0;
    dashes[1].offsetY = -4.0;
    dashes[2].length = -10.0;
    const ZvDbObjectId type = picture.addLinetype("heating", dashes);
    const ZvDbObjectId id = picture.addLine(10, 50.5, 90, 50.5);
    change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(type); });
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(15, 49), kWhite); // a dash: one pixel high
    QCOMPARE(image.pixel(15, 46), kBlack);
    const QRect text = inkedRect(image.copy(21, 0, 18, 100)); // the gap
    QVERIFY2(std::abs(text.height() - 8) <= 1, qPrintable(QString::number(text.height())));
    QVERIFY(std::abs(text.center().y() - 49) <= 1);
    QVERIFY(text.width() >= 4 && text.width() <= 10);
    // Along a line that goes up it is turned.
    Picture upright;
    const ZvDbObjectId other = upright.addLinetype("heating", dashes);
    const ZvDbObjectId second = upright.addLine(50, 10, 50, 90);
    change<ZvDbLine>(second, [&](ZvDbLine &line) { line.setLinetype(other); });
    const QRect turned = inkedRect(upright.draw().copy(0, 61, 100, 18));
    QVERIFY(std::abs(turned.width() - 8) <= 1);
}

void UtilsRendererTest::clippedPatternsKeepTheirPlace()
{
    Picture picture;
    const ZvDbObjectId dashed = picture.addLinetype("dashed", std::vector<double>{10.0, -10.0});
    // The line begins far outside: half a million patterns before the picture.
    const ZvDbObjectId id = picture.addLine(-1e7, 20.5, 1e7, 20.5);
    change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(dashed); });
    const QImage image = picture.draw();
    for (int x = 0; x < 100; ++x) {
        const bool expected = (x / 10) % 2 == 0;
        if (x % 10 > 1 && x % 10 < 8)
            QVERIFY2((image.pixel(x, 79) == kWhite) == expected, qPrintable(QString::number(x)));
    }
}

void UtilsRendererTest::solidsFillTheirCornersAndNoMore()
{
    Picture picture;
    picture.addSolid({{20, 20, 0}, {80, 20, 0}, {80, 80, 0}, {20, 80, 0}}, 1);
    const QImage image = picture.draw();
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            const bool inside = x >= 20 && x < 80 && y >= 20 && y < 80;
            QCOMPARE(image.pixel(x, y), inside ? kRed : kBlack);
        }
    }
}

void UtilsRendererTest::aWidePolylineHasItsWidth()
{
    Picture picture;
    auto *polyline = new ZvDbPolyline();
    polyline->addVertex(ZvGePoint2d(20, 50), 0.0, 10.0, 10.0);
    polyline->addVertex(ZvGePoint2d(80, 50), 0.0, 10.0, 10.0);
    polyline->addVertex(ZvGePoint2d(80, 90), 0.0, 10.0, 10.0);
    polyline->setColor(Picture::aci(1));
    polyline->setLayer(picture.database->layerZero());
    picture.add(polyline);
    const QImage image = picture.draw();
    QCOMPARE(inkedRect(image), QRect(20, 10, 65, 45));
    QCOMPARE(image.pixel(84, 54), kRed); // the outer corner is sharp
    QCOMPARE(image.pixel(74, 44), kBlack);
    QCOMPARE(image.pixel(40, 45), kRed);
    QCOMPARE(image.pixel(40, 44), kBlack);
}

void UtilsRendererTest::arcsLieOnTheirCircle()
{
    Picture picture;
    auto *circle = new ZvDbCircle(ZvGePoint3d(50, 50, 0), ZvGeVector3d(0, 0, 1), 30.0);
    circle->setLayer(picture.database->layerZero());
    circle->setColor(Picture::aci(1));
    picture.add(circle);
    const QImage image = picture.draw();
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            if (image.pixel(x, y) != kBlack)
                QVERIFY(std::abs(std::hypot(x + 0.5 - 50, y + 0.5 - 50) - 30) < 1.1);
        }
    }
    QVERIFY(inked(image) > 160); // all the way round
    // A quarter, counter-clockwise from the right.
    Picture quarter;
    auto *arc = new ZvDbArc(ZvGePoint3d(50, 50, 0), 30.0, 0.0, 1.5707963267948966);
    arc->setLayer(quarter.database->layerZero());
    quarter.add(arc);
    const QRect rect = inkedRect(quarter.draw());
    QVERIFY(rect.left() >= 49 && rect.right() <= 80 && rect.top() >= 19 && rect.bottom() <= 50);
    QVERIFY(rect.width() >= 29 && rect.height() >= 29);
}

void UtilsRendererTest::aCloseLookAtALargeArcIsSmooth()
{
    Picture picture;
    const double radius = 1e7;
    auto *circle = new ZvDbCircle(ZvGePoint3d(50, 50 - radius, 0), ZvGeVector3d(0, 0, 1), radius);
    circle->setLayer(picture.database->layerZero());
    picture.add(circle);
    const QImage image = picture.draw();
    // Its top runs level through the middle.
    const QRect rect = inkedRect(image);
    QVERIFY(rect.height() <= 2 && rect.width() >= 99);
    QVERIFY(std::abs(rect.top() - 49) <= 1);
}

void UtilsRendererTest::raysEndAtTheirBaseAndLinesDoNot()
{
    Picture picture;
    auto *ray = new ZvDbRay();
    ray->setBasePoint(ZvGePoint3d(30.5, 20.5, 0));
    ray->setUnitDir(ZvGeVector3d(1, 0, 0));
    ray->setLayer(picture.database->layerZero());
    picture.add(ray);
    QRect rect = inkedRect(picture.draw());
    QVERIFY(std::abs(rect.left() - 30) <= 1);
    QCOMPARE(rect.right(), 99);
    Picture both;
    auto *line = new ZvDbXline();
    line->setBasePoint(ZvGePoint3d(3000.5, 20.5, 0));
    line->setUnitDir(ZvGeVector3d(1, 0, 0));
    line->setLayer(both.database->layerZero());
    both.add(line);
    rect = inkedRect(both.draw());
    QCOMPARE(rect, QRect(0, 79, 100, 1));
}

void UtilsRendererTest::viewsFromOtherSides_data()
{
    QTest::addColumn<double>("x");
    QTest::addColumn<double>("y");
    QTest::addColumn<double>("z");
    QTest::addColumn<QRect>("rect");
    // A box's edge lines: 40 along x, 20 along y, 10 along z, all from (0, 0, 0).
    QTest::newRow("top") << 0.0 << 0.0 << 1.0 << QRect(50, 30, 40, 20);
    QTest::newRow("bottom") << 0.0 << 0.0 << -1.0 << QRect(50, 50, 40, 20);
    QTest::newRow("front") << 0.0 << -1.0 << 0.0 << QRect(50, 40, 40, 10);
    QTest::newRow("back") << 0.0 << 1.0 << 0.0 << QRect(10, 40, 40, 10);
    QTest::newRow("left") << -1.0 << 0.0 << 0.0 << QRect(30, 40, 20, 10);
    QTest::newRow("right") << 1.0 << 0.0 << 0.0 << QRect(50, 40, 20, 10);
    // From the lower left and above: x goes right and up, y left and up, z up.
    const double a = std::sqrt(0.5);
    const double b = std::sqrt(1.0 / 6.0);
    QTest::newRow("isometric from the south-west")
        << -1.0 << -1.0 << 1.0 << QRect(QPoint(int(50 - 20 * a), int(50 - 40 * b)), QPoint(int(50 + 40 * a), 50));
}

void UtilsRendererTest::viewsFromOtherSides()
{
    QFETCH(double, x);
    QFETCH(double, y);
    QFETCH(double, z);
    QFETCH(QRect, rect);
    Picture picture;
    picture.view = ZvGiView();
    picture.view.height = 100;
    picture.view.direction = ZvGeVector3d(x, y, z);
    const ZvGePoint3d ends[3] = {{40, 0, 0}, {0, 20, 0}, {0, 0, 10}};
    for (const ZvGePoint3d &end : ends) {
        auto *line = new ZvDbLine(ZvGePoint3d(), end);
        line->setLayer(picture.database->layerZero());
        picture.add(line);
    }
    const QRect found = inkedRect(picture.draw());
    const auto near = [](int p, int q) { return std::abs(p - q) <= 1; };
    QVERIFY2(
        near(found.left(), rect.left()) && near(found.right(), rect.right()) && near(found.top(), rect.top())
            && near(found.bottom(), rect.bottom()),
        qPrintable(
            QStringLiteral("%1 %2 %3 %4").arg(found.left()).arg(found.right()).arg(found.top()).arg(found.bottom())));
}

void UtilsRendererTest::theTwistTurnsThePicture()
{
    Picture picture;
    picture.view = ZvGiView();
    picture.view.height = 100;
    picture.view.twist = 1.5707963267948966;
    picture.addLine(0, 0, 40, 0);
    const QRect rect = inkedRect(picture.draw());
    QVERIFY(rect.width() <= 2 && std::abs(rect.height() - 40) <= 1);
    QVERIFY(rect.bottom() <= 50 && rect.top() >= 9); // along x is up now
}

void UtilsRendererTest::solidsCoverWhatCameBefore()
{
    Picture picture;
    picture.addLine(0, 50.5, 100, 50.5, 1);
    picture.addSolid({{20, 20, 0}, {80, 20, 0}, {80, 80, 0}, {20, 80, 0}}, 3);
    picture.addLine(0, 40.5, 100, 40.5, 1);
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(10, 49), kRed);
    QCOMPARE(image.pixel(50, 49), qRgb(0, 255, 0));
    QCOMPARE(image.pixel(50, 59), kRed);
}

void UtilsRendererTest::transparencyMixes()
{
    Picture picture;
    const ZvDbObjectId id = picture.addSolid({{20, 20, 0}, {80, 20, 0}, {80, 80, 0}, {20, 80, 0}}, 7);
    change<ZvDbSolid>(id, [](ZvDbSolid &solid) {
        ZvCmTransparency half;
        half.setMethod(ZvCmTransparency::kByAlpha);
        half.setAlpha(128);
        solid.setTransparency(half);
    });
    const int grey = qRed(picture.draw().pixel(50, 50));
    QVERIFY(std::abs(grey - 128) <= 1);
}

void UtilsRendererTest::monochromeIsForegroundOnly()
{
    Picture picture;
    picture.options.monochrome = true;
    picture.addLine(10.5, 20.5, 60.5, 20.5, 1);
    QCOMPARE(picture.draw().pixel(30, 79), kWhite);
}

void UtilsRendererTest::plottingLeavesOutWhatIsNotPlotted()
{
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("notes", 3);
    picture.addLine(10.5, 20.5, 60.5, 20.5, 256, layer);
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsPlottable(false); });
    QVERIFY(inked(picture.draw()) > 0);
    picture.options.plotting = true;
    QCOMPARE(inked(picture.draw()), 0);
}

void UtilsRendererTest::highlightIsInItsColour()
{
    Picture picture;
    picture.addLine(10.5, 20.5, 90.5, 20.5, 1);
    picture.options.highlight = true;
    picture.options.highlightColor = 0xFF00FFFF; // yellow: red is in the lowest bits
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(12, 79), qRgb(255, 255, 0));
    QVERIFY(runs(image, 79, 11, 90).size() > 5); // dashed
}

void UtilsRendererTest::onlyWhatCanBeSeenIsVisited()
{
    Picture picture;
    // A hundred by a hundred short lines, one in each square unit; ten thousand in all.
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x)
            picture.addLine(x + 0.2, y + 0.5, x + 0.8, y + 0.5, 1);
    }
    ZvGiRenderer renderer(picture.database);
    const QImage whole = picture.draw(renderer);
    QCOMPARE(renderer.lastVisited(), 10000);
    const QImage part = picture.draw(renderer, QRect(20, 30, 10, 10));
    QVERIFY2(renderer.lastVisited() >= 100 && renderer.lastVisited() <= 225,
             qPrintable(QString::number(renderer.lastVisited())));
    QCOMPARE(part.copy(20, 30, 10, 10), whole.copy(20, 30, 10, 10));
    QCOMPARE(inked(part), inked(part.copy(20, 30, 10, 10)));
    // Looking elsewhere: nothing.
    picture.view.center = ZvGePoint2d(1000, 1000);
    picture.draw(renderer);
    QCOMPARE(renderer.lastVisited(), 0);
    // Close up: few.
    picture.view.center = ZvGePoint2d(50, 50);
    picture.view.height = 5;
    picture.draw(renderer);
    QVERIFY(renderer.lastVisited() >= 25 && renderer.lastVisited() <= 49);
}

void UtilsRendererTest::changesAreSeen()
{
    Picture picture;
    const ZvDbObjectId id = picture.addLine(10.5, 20.5, 60.5, 20.5, 1);
    ZvGiRenderer renderer(picture.database);
    QCOMPARE(inkedRect(picture.draw(renderer)).top(), 79);
    // Moved out of its old box.
    change<ZvDbLine>(id, [](ZvDbLine &line) {
        line.setStartPoint(ZvGePoint3d(10.5, 70.5, 0));
        line.setEndPoint(ZvGePoint3d(60.5, 70.5, 0));
    });
    QCOMPARE(inkedRect(picture.draw(renderer, QRect(0, 20, 100, 20))).top(), 29);
    // Added.
    picture.addLine(10.5, 90.5, 60.5, 90.5, 1);
    QCOMPARE(inkedRect(picture.draw(renderer)), inkedRect(picture.draw()));
    QCOMPARE(inkedRect(picture.draw(renderer)).top(), 9);
    // Erased, and back.
    change<ZvDbLine>(id, [](ZvDbLine &line) { line.erase(); });
    QCOMPARE(inkedRect(picture.draw(renderer)).height(), 1);
    {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite, true);
        QVERIFY(line);
        line->erase(false);
    }
    QCOMPARE(inkedRect(picture.draw(renderer)).height(), 21);
    // Many at once, then looked at from near: the same as a new renderer shows.
    for (int i = 0; i < 3000; ++i)
        picture.addLine(i % 100 + 0.2, i / 100 + 0.5, i % 100 + 0.8, i / 100 + 0.5, 3);
    QCOMPARE(picture.draw(renderer), picture.draw());
    picture.view.height = 10;
    picture.view.center = ZvGePoint2d(15, 15);
    QCOMPARE(picture.draw(renderer), picture.draw());
    QVERIFY(inked(picture.draw(renderer)) > 0);
}

void UtilsRendererTest::changesInBlocksAreSeen()
{
    Picture picture;
    const ZvDbObjectId block = picture.addBlock("bolt");
    const ZvDbObjectId line = picture.addLine(0.5, 0.5, 5.5, 0.5, 1, ZvDbObjectId(), block);
    picture.addReference(block, ZvGePoint3d(10, 10, 0));
    ZvGiRenderer renderer(picture.database);
    QCOMPARE(inkedRect(picture.draw(renderer)).top(), 89);
    // The reference's box grows by what happens in its block.
    change<ZvDbLine>(line, [](ZvDbLine &entity) { entity.setEndPoint(ZvGePoint3d(0.5, 80.5, 0)); });
    QVERIFY(inked(picture.draw(renderer, QRect(0, 10, 100, 20))) > 0);
    picture.addLine(60.5, 0.5, 60.5, 80.5, 3, ZvDbObjectId(), block);
    QCOMPARE(inkedRect(picture.draw(renderer)).right(), 70);
}

void UtilsRendererTest::slicesMakeTheWholePicture()
{
    Picture picture;
    for (int i = 0; i < 2000; ++i)
        picture.addLine(i % 50 * 2 + 0.5, i / 50 * 2 + 0.5, i % 50 * 2 + 1.5, i / 50 * 2 + 1.5, i % 6 + 1);
    ZvGiRenderer renderer(picture.database);
    const QImage whole = picture.draw(renderer);
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    int next = 0;
    int slices = 0;
    while (next >= 0) {
        const int before = next;
        next = renderer.drawSlice(painter, picture.options, picture.database->modelSpaceId(), picture.view, 100, 100,
                                  next, 0);
        QVERIFY(next < 0 || next > before); // also without any time there is progress
        ++slices;
    }
    painter.end();
    QVERIFY(slices > 10);
    QCOMPARE(image, whole);
}

void UtilsRendererTest::drawingStopsWhenTold()
{
    Picture picture;
    for (int i = 0; i < 2000; ++i)
        picture.addLine(i % 100, i / 100, i % 100 + 1, i / 100);
    ZvGiRenderer renderer(picture.database);
    QImage image(100, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    int asked = 0;
    QVERIFY(!renderer.draw(painter, picture.options, picture.database->modelSpaceId(), picture.view, 100, 100,
                           [&] { return ++asked < 3; }));
    QCOMPARE(asked, 3);
    QVERIFY(renderer.lastVisited() < 2000);
    QVERIFY(renderer.draw(painter, picture.options, picture.database->modelSpaceId(), picture.view, 100, 100,
                          [] { return true; }));
}

void UtilsRendererTest::someEntitiesOnly()
{
    Picture picture;
    picture.addLine(10.5, 20.5, 60.5, 20.5, 1);
    const ZvDbObjectId second = picture.addLine(10.5, 40.5, 60.5, 40.5, 1);
    ZvGiRenderer renderer(picture.database);
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    QVERIFY(renderer.drawEntities(painter, picture.options, {second, ZvDbObjectId()}, picture.view, 100, 100));
    painter.end();
    QCOMPARE(inkedRect(image).top(), 59);
    QCOMPARE(inkedRect(image).height(), 1);
    QCOMPARE(renderer.lastVisited(), 1);
}

void UtilsRendererTest::extentsAreThoseOfVisibleEntities()
{
    Picture picture;
    ZvGiRenderer renderer(picture.database);
    QVERIFY(renderer.displayExtents(picture.database->modelSpaceId(), picture.view).isEmpty());
    const ZvDbObjectId layer = picture.addLayer("far", 3);
    picture.addLine(10, 20, 60, 30);
    picture.addLine(1000, 1000, 2000, 2000, 256, layer);
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsOff(true); });
    ZvGeExtents2d extents = renderer.displayExtents(picture.database->modelSpaceId(), picture.view);
    QVERIFY(std::abs(extents.minimum.x - 10) < 1e-4 && std::abs(extents.maximum.x - 60) < 1e-4);
    QVERIFY(std::abs(extents.minimum.y - 20) < 1e-4 && std::abs(extents.maximum.y - 30) < 1e-4);
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsOff(false); });
    extents = renderer.displayExtents(picture.database->modelSpaceId(), picture.view);
    QVERIFY(std::abs(extents.maximum.x - 2000) < 1e-3);
    ZvGiView front;
    front.direction = ZvGeVector3d(0, -1, 0);
    extents = renderer.displayExtents(picture.database->modelSpaceId(), front);
    QVERIFY(std::abs(extents.maximum.y - extents.minimum.y) < 1e-4); // all at one height
}

void UtilsRendererTest::nothingStaysOpen()
{
    Picture picture;
    const ZvDbObjectId block = picture.addBlock("bolt");
    picture.addLine(0.5, 0.5, 5.5, 0.5, 1, ZvDbObjectId(), block);
    picture.addReference(block, ZvGePoint3d(10, 10, 0));
    ZvGiRenderer renderer(picture.database);
    picture.draw(renderer);
    std::vector<ZvDbObjectId> ids;
    renderer.pick(picture.database->modelSpaceId(), picture.view, ZvGePoint2d(0, 0), ZvGePoint2d(100, 100), false, ids);
    QCOMPARE(ids.size(), std::size_t(1));
    QCOMPARE(picture.database->openObjectCount(), 0);
}

void UtilsRendererTest::aRendererOutlivesItsDatabase()
{
    auto picture = std::make_unique<Picture>();
    picture->addLine(10, 20, 60, 30);
    ZvGiRenderer renderer(picture->database);
    picture->draw(renderer);
    const ZvDbObjectId space = picture->database->modelSpaceId();
    const ZvGiView view = picture->view;
    picture.reset();
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    renderer.draw(painter, ZvGiRenderer::Options(), space, view, 100, 100);
    painter.end();
    QCOMPARE(inked(image), 0);
    QVERIFY(renderer.displayExtents(space, view).isEmpty());
}

void UtilsRendererTest::farCoordinatesDoNotDisturb()
{
    Picture picture;
    const double far = 1234567.0;
    picture.addLine(far + 10.5, far + 20.5, far + 60.5, far + 20.5, 1);
    picture.addLine(far - 1e12, far + 40.5, far + 1e12, far + 40.5, 3);
    picture.addLine(1e300, 0, -1e300, 1e300, 3);
    picture.addLine(std::nan(""), 0, 0, 0, 3);
    picture.view.center = ZvGePoint2d(far + 50, far + 50);
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(30, 79), kRed);
    QVERIFY(image.pixel(30, 59) == qRgb(0, 255, 0) || image.pixel(30, 58) == qRgb(0, 255, 0)
            || image.pixel(30, 60) == qRgb(0, 255, 0));
}

QTEST_MAIN(UtilsRendererTest)
#include "tst_utils_renderer.moc"
