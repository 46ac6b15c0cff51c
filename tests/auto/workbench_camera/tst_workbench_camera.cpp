// SPDX-License-Identifier: MIT
#include "viewcamera.h"
#include "zevatest.h"

#include <cmath>

namespace {

ViewCamera plan()
{
    ZvGiView view;
    view.center = ZvGePoint2d(100, 50);
    view.height = 200;
    return ViewCamera(view, QSizeF(800, 400));
}

bool near(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y()) < 1e-6;
}

bool near(const ZvGePoint3d &a, const ZvGePoint3d &b)
{
    return a.distanceTo(b) < 1e-6;
}

const ZvGeVector3d kIsometric(-1, -1, 1);

} // namespace

class tst_workbench_camera : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void theCentreIsInTheMiddle();
    void widgetAndDisplayAreInverse();
    void largeCoordinatesKeepTheirDigits();
    void zoomKeepsThePointUnderThePointer_data();
    void zoomKeepsThePointUnderThePointer();
    void zoomStopsAtItsLimits();
    void panMovesThePictureByPixels();
    void resizeKeepsScaleAndMiddle();
    void resizeToNothingIsIgnored();
    void fitShowsTheWholeBox_data();
    void fitShowsTheWholeBox();
    void fitOfNothingChangesNothing();
    void fitOfAPointKeepsTheScale();
    void pointsOnThePlaneOfACoordinateSystem_data();
    void pointsOnThePlaneOfACoordinateSystem();
    void aPlaneSeenEdgeOnGivesThePointAcrossTheTarget();
    void transformLeadsFromOneCameraToAnother();
    void camerasThatLookElsewhereAreNotAlike();
};

void tst_workbench_camera::theCentreIsInTheMiddle()
{
    const ViewCamera camera = plan();
    QCOMPARE(camera.scale(), 2.0);
    QVERIFY(near(camera.toWidget(ZvGePoint3d(100, 50)), QPointF(400, 200)));
    QVERIFY(near(camera.toWidget(ZvGePoint3d(110, 60)), QPointF(420, 180)));
}

void tst_workbench_camera::widgetAndDisplayAreInverse()
{
    const ViewCamera camera = plan();
    for (const QPointF &point : {QPointF(0, 0), QPointF(799, 399), QPointF(-50.5, 1000.25)})
        QVERIFY(near(camera.toWidget(camera.toDisplay(point)), point));
}

void tst_workbench_camera::largeCoordinatesKeepTheirDigits()
{
    ZvGiView view;
    view.center = ZvGePoint2d(1234567.891, 7654321.987);
    view.height = 1.0;
    const ViewCamera camera(view, QSizeF(1000, 1000));
    const ZvGePoint3d world = camera.onPlane({500, 500}, ZvGeMatrix3d::kIdentity);
    QVERIFY(std::abs(world.x - 1234567.891) < 1e-8);
    QVERIFY(std::abs(world.y - 7654321.987) < 1e-8);
}

void tst_workbench_camera::zoomKeepsThePointUnderThePointer_data()
{
    QTest::addColumn<QPointF>("pointer");
    QTest::addColumn<double>("factor");
    QTest::newRow("in the middle") << QPointF(400, 200) << 2.0;
    QTest::newRow("in a corner") << QPointF(0, 0) << 1.25;
    QTest::newRow("out") << QPointF(750, 30) << 0.1;
    QTest::newRow("outside the view") << QPointF(-100, 900) << 3.0;
}

void tst_workbench_camera::zoomKeepsThePointUnderThePointer()
{
    QFETCH(QPointF, pointer);
    QFETCH(double, factor);
    ViewCamera camera = plan();
    const ZvGePoint2d before = camera.toDisplay(pointer);
    camera.zoomAt(pointer, factor);
    const ZvGePoint2d after = camera.toDisplay(pointer);
    QVERIFY(std::abs(before.x - after.x) < 1e-9);
    QVERIFY(std::abs(before.y - after.y) < 1e-9);
    QCOMPARE(camera.scale(), 2.0 * factor);
}

void tst_workbench_camera::zoomStopsAtItsLimits()
{
    ViewCamera camera = plan();
    camera.zoomAt({400, 200}, 1e40);
    QCOMPARE(camera.view().height, ViewCamera::kSmallest);
    camera.zoomAt({400, 200}, 1e-60);
    QCOMPARE(camera.view().height, ViewCamera::kLargest);
}

void tst_workbench_camera::panMovesThePictureByPixels()
{
    ViewCamera camera = plan();
    camera.pan({30, -10});
    QVERIFY(near(camera.toWidget(ZvGePoint3d(100, 50)), QPointF(430, 190)));
}

void tst_workbench_camera::resizeKeepsScaleAndMiddle()
{
    ViewCamera camera = plan();
    camera.resize({400, 800});
    QCOMPARE(camera.scale(), 2.0);
    QVERIFY(near(camera.toWidget(ZvGePoint3d(100, 50)), QPointF(200, 400)));
}

void tst_workbench_camera::resizeToNothingIsIgnored()
{
    ViewCamera camera = plan();
    camera.resize({0, 300});
    QCOMPARE(camera.size(), QSizeF(800, 400));
}

void tst_workbench_camera::fitShowsTheWholeBox_data()
{
    QTest::addColumn<double>("width");
    QTest::addColumn<double>("height");
    QTest::newRow("wide") << 1000.0 << 10.0;
    QTest::newRow("tall") << 10.0 << 1000.0;
    QTest::newRow("flat") << 1000.0 << 0.0;
}

void tst_workbench_camera::fitShowsTheWholeBox()
{
    QFETCH(double, width);
    QFETCH(double, height);
    ViewCamera camera = plan();
    ZvGeExtents2d box;
    box.add(ZvGePoint2d(5000, 6000));
    box.add(ZvGePoint2d(5000 + width, 6000 + height));
    camera.fit(box);
    const ZvGeExtents2d seen = camera.visible();
    QVERIFY(seen.minimum.x < box.minimum.x);
    QVERIFY(seen.minimum.y < box.minimum.y);
    QVERIFY(seen.maximum.x > box.maximum.x);
    QVERIFY(seen.maximum.y > box.maximum.y);
    // Not more room than the margin needs, in the direction that decides.
    const double wide = (seen.maximum.x - seen.minimum.x) / width;
    const double tall = height > 0.0 ? (seen.maximum.y - seen.minimum.y) / height : wide;
    QVERIFY(std::min(wide, tall) < 1.1);
}

void tst_workbench_camera::fitOfNothingChangesNothing()
{
    ViewCamera camera = plan();
    camera.fit(ZvGeExtents2d());
    QVERIFY(camera == plan());
}

void tst_workbench_camera::fitOfAPointKeepsTheScale()
{
    ViewCamera camera = plan();
    ZvGeExtents2d box;
    box.add(ZvGePoint2d(7, 8));
    camera.fit(box);
    QCOMPARE(camera.scale(), 2.0);
    QVERIFY(near(camera.toWidget(ZvGePoint3d(7, 8)), QPointF(400, 200)));
}

void tst_workbench_camera::pointsOnThePlaneOfACoordinateSystem_data()
{
    QTest::addColumn<bool>("isometric");
    QTest::addColumn<double>("elevation");
    QTest::newRow("plan, world") << false << 0.0;
    QTest::newRow("plan, raised") << false << 25.0;
    QTest::newRow("isometric, world") << true << 0.0;
    QTest::newRow("isometric, raised") << true << 25.0;
}

void tst_workbench_camera::pointsOnThePlaneOfACoordinateSystem()
{
    QFETCH(bool, isometric);
    QFETCH(double, elevation);
    ViewCamera camera = plan();
    ZvGiView view = camera.view();
    view.target = ZvGePoint3d(10, 20, 5);
    if (isometric)
        view.direction = kIsometric;
    view.twist = 0.3;
    camera.setView(view);
    const ZvGePoint3d world(40, 30, elevation);
    const ZvGePoint3d found = camera.onPlane(camera.toWidget(world), ZvGeMatrix3d::translation({0, 0, elevation}));
    QVERIFY(near(found, world));
}

void tst_workbench_camera::aPlaneSeenEdgeOnGivesThePointAcrossTheTarget()
{
    ViewCamera camera = plan();
    ZvGiView view = camera.view();
    view.direction = ZvGeVector3d(0, -1, 0); // from the front, along the XY plane
    view.center = ZvGePoint2d(0, 0);
    camera.setView(view);
    const ZvGePoint3d found = camera.onPlane({500, 150}, ZvGeMatrix3d::kIdentity);
    QVERIFY(near(found, ZvGePoint3d(50, 0, 25)));
}

void tst_workbench_camera::transformLeadsFromOneCameraToAnother()
{
    const ViewCamera from = plan();
    ViewCamera to = plan();
    to.zoomAt({100, 350}, 1.7);
    to.pan({11, -7});
    const ZvGePoint3d world(77, 88);
    QVERIFY(near(from.transformTo(to).map(from.toWidget(world)), to.toWidget(world)));
}

void tst_workbench_camera::camerasThatLookElsewhereAreNotAlike()
{
    const ViewCamera camera = plan();
    ViewCamera zoomed = camera;
    zoomed.zoomAt({0, 0}, 2);
    QVERIFY(zoomed.looksAlike(camera));
    QVERIFY(zoomed != camera);
    ViewCamera turned = camera;
    ZvGiView view = turned.view();
    view.twist = 0.1;
    turned.setView(view);
    QVERIFY(!turned.looksAlike(camera));
}

QTEST_GUILESS_MAIN(tst_workbench_camera)
#include "tst_workbench_camera.moc"
