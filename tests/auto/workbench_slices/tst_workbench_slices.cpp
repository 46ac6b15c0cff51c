// SPDX-License-Identifier: MIT
#include "slicedpicture.h"
#include "zevatest.h"

#include <QPainter>

namespace {

const QSizeF kSize(200, 100);
const QColor kGround(10, 20, 30);

/// A drawing of three entities: a red bar over x 0 to 50, a green one over 50 to 100, a blue one over 100 to 150, each
/// from y 0 to 50. It draws one entity a slice.
class Drawing
{
public:
    Drawing()
        : picture([this](QPainter &painter, const ViewCamera &camera, double ratio, int first,
                         int) { return draw(painter, camera, ratio, first); },
                  [](QPainter &painter, const ViewCamera &camera) {
                      painter.fillRect(QRectF(QPointF(), camera.size()), kGround);
                  })
    {
    }

    void finish()
    {
        for (int i = 0; !picture.isComplete() && i < 100; ++i)
            picture.drawSlice(8);
    }
    QColor shownAt(const QPoint &pos, const ViewCamera &camera, double ratio = 1.0) const
    {
        QImage image((camera.size() * ratio).toSize(), QImage::Format_ARGB32_Premultiplied);
        image.setDevicePixelRatio(ratio);
        image.fill(Qt::white);
        QPainter painter(&image);
        picture.paint(painter, camera);
        painter.end();
        return image.pixelColor(pos * ratio);
    }

    SlicedPicture picture;
    QVector<QRegion> drawnRegions; // the clip of each slice, in device pixels

private:
    int draw(QPainter &painter, const ViewCamera &camera, double ratio, int first)
    {
        drawnRegions << painter.clipRegion();
        const QColor colors[] = {Qt::red, Qt::green, Qt::blue};
        painter.scale(ratio, ratio);
        painter.fillRect(
            QRectF(camera.toWidget(ZvGePoint3d(first * 50, 50)), camera.toWidget(ZvGePoint3d(first * 50 + 50, 0))),
            colors[first]);
        return first == 2 ? -1 : first + 1;
    }
};

/// Shows 0,0 to 200,100 at one pixel for a unit.
ViewCamera plan()
{
    ZvGiView view;
    view.center = ZvGePoint2d(100, 50);
    view.height = 100;
    return ViewCamera(view, kSize);
}

ViewCamera panned(const QPointF &delta)
{
    ViewCamera camera = plan();
    camera.pan(delta);
    return camera;
}

} // namespace

class tst_workbench_slices : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void theFirstPictureGrowsInSight();
    void aPanKeepsThePictureAndDrawsTheStripsOnly_data();
    void aPanKeepsThePictureAndDrawsTheStripsOnly();
    void aPanInTheMiddleOfDrawingLosesNothing();
    void aPanByAPartOfAPixelIsDrawnAnew();
    void aZoomShowsTheOldPictureScaledUntilTheNewIsReady();
    void aChangeOfContentKeepsTheOldPictureUntilTheNewIsReady();
    void anotherDirectionShowsNothingOld();
    void clearShowsNothing();
    void deviceRatioIsHonoured();
};

void tst_workbench_slices::theFirstPictureGrowsInSight()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    QVERIFY(!drawing.picture.isComplete());
    QVERIFY(drawing.picture.drawSlice(8));
    QCOMPARE(drawing.shownAt({25, 75}, plan()), QColor(Qt::red));
    QCOMPARE(drawing.shownAt({75, 75}, plan()), kGround);
    QVERIFY(drawing.picture.drawSlice(8));
    QVERIFY(drawing.picture.drawSlice(8));
    QVERIFY(drawing.picture.isComplete());
    QCOMPARE(drawing.shownAt({125, 75}, plan()), QColor(Qt::blue));
    QVERIFY(!drawing.picture.drawSlice(8));
    QCOMPARE(drawing.drawnRegions.size(), 3);
}

void tst_workbench_slices::aPanKeepsThePictureAndDrawsTheStripsOnly_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<QRegion>("exposed");
    const QRect all(0, 0, 200, 100);
    for (const QPoint &delta : {QPoint(20, 0), QPoint(-20, 0), QPoint(0, 15), QPoint(0, -15), QPoint(12, -7)})
        QTest::addRow("by %d,%d", delta.x(), delta.y()) << delta << QRegion(all).subtracted(all.translated(delta));
}

void tst_workbench_slices::aPanKeepsThePictureAndDrawsTheStripsOnly()
{
    QFETCH(QPoint, delta);
    QFETCH(QRegion, exposed);
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.finish();
    drawing.drawnRegions.clear();

    const ViewCamera camera = panned(delta);
    drawing.picture.setCamera(camera, 1.0);
    QCOMPARE(drawing.shownAt(QPoint(75, 75) + delta, camera), QColor(Qt::green));
    drawing.finish();
    QCOMPARE(drawing.drawnRegions.size(), 3);
    for (const QRegion &region : qAsConst(drawing.drawnRegions))
        QCOMPARE(region, exposed);

    Drawing fresh;
    fresh.picture.setCamera(camera, 1.0);
    fresh.finish();
    for (int x = 0; x < 200; x += 3) {
        for (int y = 0; y < 100; y += 3)
            QCOMPARE(drawing.shownAt({x, y}, camera), fresh.shownAt({x, y}, camera));
    }
}

void tst_workbench_slices::aPanInTheMiddleOfDrawingLosesNothing()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.picture.drawSlice(8);
    const ViewCamera camera = panned({30, 10});
    drawing.picture.setCamera(camera, 1.0);
    drawing.finish();
    QCOMPARE(drawing.shownAt({55, 85}, camera), QColor(Qt::red));
    QCOMPARE(drawing.shownAt({105, 85}, camera), QColor(Qt::green));
    QCOMPARE(drawing.shownAt({155, 85}, camera), QColor(Qt::blue));
    QCOMPARE(drawing.shownAt({10, 85}, camera), kGround);
}

void tst_workbench_slices::aPanByAPartOfAPixelIsDrawnAnew()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.finish();
    drawing.drawnRegions.clear();
    drawing.picture.setCamera(panned({3.5, 0}), 1.0);
    drawing.finish();
    QCOMPARE(drawing.drawnRegions.first(), QRegion(0, 0, 200, 100));
}

void tst_workbench_slices::aZoomShowsTheOldPictureScaledUntilTheNewIsReady()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.finish();
    ViewCamera camera = plan();
    camera.zoomAt({0, 100}, 2.0);
    drawing.picture.setCamera(camera, 1.0);
    QCOMPARE(drawing.shownAt({150, 50}, camera), QColor(Qt::green)); // the old one, twice as large
    QVERIFY(!drawing.picture.drawSlice(8)); // not ready, nothing new to be seen
    QCOMPARE(drawing.shownAt({150, 50}, camera), QColor(Qt::green));
    drawing.finish();
    QCOMPARE(drawing.shownAt({150, 50}, camera), QColor(Qt::green));
    QVERIFY(drawing.picture.isComplete());
}

void tst_workbench_slices::aChangeOfContentKeepsTheOldPictureUntilTheNewIsReady()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.finish();
    drawing.picture.invalidate();
    QVERIFY(!drawing.picture.isComplete());
    QCOMPARE(drawing.shownAt({125, 75}, plan()), QColor(Qt::blue));
    QVERIFY(!drawing.picture.drawSlice(8));
    QCOMPARE(drawing.shownAt({125, 75}, plan()), QColor(Qt::blue));
    QVERIFY(!drawing.picture.drawSlice(8));
    QVERIFY(drawing.picture.drawSlice(8));
    QVERIFY(drawing.picture.isComplete());
}

void tst_workbench_slices::anotherDirectionShowsNothingOld()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.finish();
    ViewCamera camera = plan();
    ZvGiView view = camera.view();
    view.direction = ZvGeVector3d(0, -1, 0);
    camera.setView(view);
    drawing.picture.setCamera(camera, 1.0);
    QCOMPARE(drawing.shownAt({75, 75}, camera), QColor(Qt::white));
}

void tst_workbench_slices::clearShowsNothing()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 1.0);
    drawing.finish();
    drawing.picture.clear();
    QCOMPARE(drawing.shownAt({75, 75}, plan()), QColor(Qt::white));
}

void tst_workbench_slices::deviceRatioIsHonoured()
{
    Drawing drawing;
    drawing.picture.setCamera(plan(), 2.0);
    drawing.finish();
    QCOMPARE(drawing.drawnRegions.first(), QRegion(0, 0, 400, 200));
    QCOMPARE(drawing.shownAt({75, 75}, plan(), 2.0), QColor(Qt::green));
    const ViewCamera camera = panned({10.5, 0}); // 21 device pixels
    drawing.drawnRegions.clear();
    drawing.picture.setCamera(camera, 2.0);
    drawing.finish();
    QCOMPARE(drawing.drawnRegions.first(), QRegion(0, 0, 21, 200));
    QCOMPARE(drawing.shownAt({70, 75}, camera, 2.0), QColor(Qt::green));
}

ZEVA_TEST_MAIN(tst_workbench_slices)
#include "tst_workbench_slices.moc"
