// SPDX-License-Identifier: MIT
#include "picture.h"

#include <QTest>

#include <algorithm>

class UtilsPickTest : public QObject
{
    Q_OBJECT

private slots:
    void aBoxAcrossTakesWhatItTouches();
    void theBoxOfALineIsNotTheLine();
    void theInsideOfACircleIsEmpty();
    void aBoxAroundTakesOnlyWhatIsWhollyInIt();
    void theTopmostComesFirst();
    void patternsAreTakenInTheirGapsToo();
    void textsAreTakenBetweenTheirLetters();
    void areasAreTakenAnywhere();
    void referencesAreTakenByTheirContent();
    void whatDoesNotShowIsNotTaken();
    void raysAreTakenAcrossButNeverInside();
    void pointsAreTaken();
    void otherViewsAreTakenAsTheyLook();
    void anEmptyBoxTakesNothing();

private:
    std::vector<ZvDbObjectId> take(Picture &picture, double x1, double y1, double x2, double y2, bool inside = false)
    {
        ZvGiRenderer renderer(picture.database);
        std::vector<ZvDbObjectId> ids;
        renderer.pick(picture.database->modelSpaceId(), picture.view, ZvGePoint2d(x1, y1), ZvGePoint2d(x2, y2), inside,
                      ids);
        return ids;
    }
};

typedef std::vector<ZvDbObjectId> Ids;

void UtilsPickTest::aBoxAcrossTakesWhatItTouches()
{
    Picture picture;
    const ZvDbObjectId line = picture.addLine(10, 10, 90, 90);
    picture.addLine(10, 50, 40, 80);
    QVERIFY(take(picture, 49, 49, 51, 51) == Ids{line});
    QVERIFY(take(picture, 60, 40, 62, 42).empty());
    QVERIFY(take(picture, 40, 45, 60, 55) == Ids{line}); // passes through, no end in it
}

void UtilsPickTest::theBoxOfALineIsNotTheLine()
{
    Picture picture;
    picture.addLine(10, 10, 90, 90);
    QVERIFY(take(picture, 20, 70, 30, 80).empty());
}

void UtilsPickTest::theInsideOfACircleIsEmpty()
{
    Picture picture;
    auto *circle = new ZvDbCircle(ZvGePoint3d(50, 50, 0), ZvGeVector3d(0, 0, 1), 30.0);
    circle->setLayer(picture.database->layerZero());
    const ZvDbObjectId id = picture.add(circle);
    QVERIFY(take(picture, 45, 45, 55, 55).empty());
    QVERIFY(take(picture, 79, 49, 81, 51) == Ids{id});
    // On the curve, where a coarse polygon would miss.
    const double x = 50 + 30 * 0.923879532511287;
    const double y = 50 + 30 * 0.382683432365090;
    QVERIFY(take(picture, x - 0.01, y - 0.01, x + 0.01, y + 0.01) == Ids{id});
}

void UtilsPickTest::aBoxAroundTakesOnlyWhatIsWhollyInIt()
{
    Picture picture;
    const ZvDbObjectId inside = picture.addLine(20, 20, 40, 40);
    const ZvDbObjectId leaves = picture.addLine(30, 20, 70, 20);
    QVERIFY(take(picture, 10, 10, 50, 50, true) == Ids{inside});
    QVERIFY(take(picture, 10, 10, 50, 50, false) == (Ids{leaves, inside}));
    // The corners of the box may come in any order.
    ZvGiRenderer renderer(picture.database);
    Ids ids;
    renderer.pick(picture.database->modelSpaceId(), picture.view, ZvGePoint2d(50, 10), ZvGePoint2d(10, 50), true, ids);
    QVERIFY(ids == Ids{inside});
}

void UtilsPickTest::theTopmostComesFirst()
{
    Picture picture;
    const ZvDbObjectId first = picture.addLine(10, 50, 90, 50);
    const ZvDbObjectId second = picture.addLine(50, 10, 50, 90);
    QVERIFY(take(picture, 49, 49, 51, 51) == (Ids{second, first}));
}

void UtilsPickTest::patternsAreTakenInTheirGapsToo()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("wide gaps", std::vector<double>{10.0, -60.0});
    const ZvDbObjectId line = picture.addLine(10, 50, 90, 50);
    change<ZvDbLine>(line, [&](ZvDbLine &entity) { entity.setLinetype(type); });
    QVERIFY(take(picture, 49, 49, 51, 51) == Ids{line});
}

void UtilsPickTest::textsAreTakenBetweenTheirLetters()
{
    Picture picture;
    auto *text = new ZvDbText(ZvGePoint3d(20, 40, 0), "H   H", picture.database->textstyle(), 10.0, 0.0);
    text->setLayer(picture.database->layerZero());
    const ZvDbObjectId id = picture.add(text);
    QVERIFY(take(picture, 33, 44, 33.5, 44.5) == Ids{id});
    QVERIFY(take(picture, 20, 60, 40, 70).empty());
}

void UtilsPickTest::areasAreTakenAnywhere()
{
    Picture picture;
    const ZvDbObjectId id = picture.addSolid({{20, 20, 0}, {80, 20, 0}, {80, 80, 0}, {20, 80, 0}});
    QVERIFY(take(picture, 50, 50, 51, 51) == Ids{id});
    QVERIFY(take(picture, 0, 0, 100, 100, true) == Ids{id});
    QVERIFY(take(picture, 0, 0, 50, 50, true).empty());
}

void UtilsPickTest::referencesAreTakenByTheirContent()
{
    Picture picture;
    const ZvDbObjectId block = picture.addBlock("bolt");
    picture.addLine(0, 0, 20, 20, 1, ZvDbObjectId(), block);
    const ZvDbObjectId reference = picture.addReference(block, ZvGePoint3d(30, 30, 0));
    QVERIFY(take(picture, 39, 39, 41, 41) == Ids{reference});
    QVERIFY(take(picture, 31, 45, 33, 49).empty());
    QVERIFY(take(picture, 20, 20, 60, 60, true) == Ids{reference});
    QVERIFY(take(picture, 20, 20, 40, 40, true).empty());
}

void UtilsPickTest::whatDoesNotShowIsNotTaken()
{
    Picture picture;
    const ZvDbObjectId layer = picture.addLayer("off", 3);
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsOff(true); });
    picture.addLine(10, 50, 90, 50, 256, layer);
    const ZvDbObjectId erased = picture.addLine(50, 10, 50, 90);
    change<ZvDbLine>(erased, [](ZvDbLine &line) { line.erase(); });
    QVERIFY(take(picture, 49, 49, 51, 51).empty());
}

void UtilsPickTest::raysAreTakenAcrossButNeverInside()
{
    Picture picture;
    auto *ray = new ZvDbRay();
    ray->setBasePoint(ZvGePoint3d(30, 50, 0));
    ray->setUnitDir(ZvGeVector3d(1, 0, 0));
    ray->setLayer(picture.database->layerZero());
    const ZvDbObjectId id = picture.add(ray);
    QVERIFY(take(picture, 1000, 49, 1002, 51) == Ids{id});
    QVERIFY(take(picture, 20, 49, 22, 51).empty());
    QVERIFY(take(picture, 0, 0, 100, 100, true).empty());
}

void UtilsPickTest::pointsAreTaken()
{
    Picture picture;
    auto *point = new ZvDbPoint(ZvGePoint3d(50, 50, 0));
    point->setLayer(picture.database->layerZero());
    const ZvDbObjectId id = picture.add(point);
    QVERIFY(take(picture, 49, 49, 51, 51) == Ids{id});
    QVERIFY(take(picture, 49, 49, 51, 51, true) == Ids{id});
    QVERIFY(take(picture, 52, 52, 54, 54).empty());
}

void UtilsPickTest::otherViewsAreTakenAsTheyLook()
{
    Picture picture;
    auto *line = new ZvDbLine(ZvGePoint3d(0, 0, 0), ZvGePoint3d(0, 50, 30));
    line->setLayer(picture.database->layerZero());
    const ZvDbObjectId id = picture.add(line);
    picture.view = ZvGiView();
    picture.view.direction = ZvGeVector3d(0, -1, 0); // from the front: x stays, z is up
    QVERIFY(take(picture, -1, 14, 1, 16) == Ids{id});
    QVERIFY(take(picture, -1, 31, 1, 50).empty());
}

void UtilsPickTest::anEmptyBoxTakesNothing()
{
    Picture picture;
    picture.addLine(10, 50, 90, 50);
    QVERIFY(take(picture, 50, 50, 50, 50).empty());
}

QTEST_MAIN(UtilsPickTest)
#include "tst_utils_pick.moc"
