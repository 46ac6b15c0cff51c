// SPDX-License-Identifier: MIT
#include "core/zveditor.h"
#include "db/zvdbrecords.h"
#include "viewcolors.h"
#include "workbenchtest.h"
#include "zevatest.h"

#include <QLabel>
#include <QSet>
#include <QTabBar>
#include <QWheelEvent>

#include <algorithm>
#include <cmath>

namespace {
typedef std::vector<ZvDbObjectId> Ids;
}

/// What the pointer does in a drawing view.
class tst_workbench_view : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void clickSelectsTheTopmost();
    void clicksAddAndShiftTakesAway();
    void windowToTheRightTakesWhatLiesInside();
    void windowToTheLeftTakesWhatItCuts();
    void windowByTwoClicks();
    void escapeLeavesAWindowThenTheSelection();
    void hoveredEntityIsShown();
    void selectedEntityIsShown();
    void wheelKeepsThePointUnderThePointer();
    void middleButtonPans();
    void spaceAndLeftButtonPan();
    void spaceAloneIsEnter();
    void doubleMiddleClickShowsTheExtents();
    void previousTakesBackAPanAsOneStep();
    void entitiesShowInTheirColour();
    void layoutsKeepTheirCameras();
    void viewportsAreTakenByTheirBorder();
    void coordinatesFollowThePointer();
    void aDrawingWithoutEntitiesCanBeZoomedToItsExtents();

private:
    QColor shownAt(const QPoint &pos) { return m_session->view().grab().toImage().pixelColor(pos); }
    /// A piece of the view around a place: wherever between two pixels a line lies, and whatever gap of the pattern of
    /// highlighted lines comes to lie there.
    QImage pieceAt(const QPoint &pos)
    {
        return m_session->view().grab(QRect(pos - QPoint(0, 2), QSize(12, 5))).toImage();
    }
    void waitUntilDrawn() { QTRY_VERIFY(m_session->view().isComplete()); }

    std::unique_ptr<WorkbenchSession> m_session;
    ZvDbObjectId m_lower; // from 100,50 to 300,50
    ZvDbObjectId m_upper; // from 100,150 to 300,150
};

void tst_workbench_view::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    m_session->newDrawing();
    m_lower = m_session->addLine({100, 50, 0}, {300, 50, 0});
    m_upper = m_session->addLine({100, 150, 0}, {300, 150, 0});
    QCoreApplication::processEvents();
    waitUntilDrawn();
}

void tst_workbench_view::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_view::clickSelectsTheTopmost()
{
    const ZvDbObjectId over = m_session->addLine({100, 50, 0}, {300, 50, 0});
    m_session->click(m_session->pixel(200, 50));
    QCOMPARE(m_session->selection(), Ids({over}));
}

void tst_workbench_view::clicksAddAndShiftTakesAway()
{
    m_session->click(m_session->pixel(200, 50));
    m_session->click(m_session->pixel(200, 150));
    QCOMPARE(m_session->selection(), Ids({m_lower, m_upper}));
    m_session->click(m_session->pixel(250, 50), Qt::LeftButton, Qt::ShiftModifier);
    QCOMPARE(m_session->selection(), Ids({m_upper}));
}

void tst_workbench_view::windowToTheRightTakesWhatLiesInside()
{
    m_session->drag(m_session->pixel(90, 40), m_session->pixel(310, 60));
    QCOMPARE(m_session->selection(), Ids({m_lower}));
    QTest::keyClick(&m_session->view(), Qt::Key_Escape);
    m_session->drag(m_session->pixel(90, 160), m_session->pixel(200, 40));
    QCOMPARE(m_session->selection(), Ids());
}

void tst_workbench_view::windowToTheLeftTakesWhatItCuts()
{
    m_session->drag(m_session->pixel(200, 160), m_session->pixel(90, 40));
    QCOMPARE(QSet<quint64>({m_session->selection()[0].asInt64(), m_session->selection()[1].asInt64()}),
             QSet<quint64>({m_lower.asInt64(), m_upper.asInt64()}));
}

void tst_workbench_view::windowByTwoClicks()
{
    m_session->click(m_session->pixel(90, 160));
    QCOMPARE(m_session->selection(), Ids());
    m_session->click(m_session->pixel(310, 140));
    QCOMPARE(m_session->selection(), Ids({m_upper}));
}

void tst_workbench_view::escapeLeavesAWindowThenTheSelection()
{
    m_session->click(m_session->pixel(200, 50));
    m_session->click(m_session->pixel(20, 20)); // beside everything
    QTest::keyClick(&m_session->view(), Qt::Key_Escape);
    QCOMPARE(m_session->selection(), Ids({m_lower}));
    QTest::keyClick(&m_session->view(), Qt::Key_Escape);
    QCOMPARE(m_session->selection(), Ids());
}

void tst_workbench_view::hoveredEntityIsShown()
{
    // The pick box and the crosshair cover the pointer's own place, the hover reaches to the line's ends.
    const QPoint beside = m_session->pixel(280, 50);
    const QImage before = pieceAt(beside);
    m_session->moveTo(m_session->pixel(150, 50));
    QTRY_VERIFY(pieceAt(beside) != before);
    m_session->moveTo(m_session->pixel(150, 100));
    QTRY_COMPARE(pieceAt(beside), before);
}

void tst_workbench_view::selectedEntityIsShown()
{
    const QPoint beside = m_session->pixel(280, 50);
    const QImage before = pieceAt(beside);
    m_session->document()->editingContext()->selectionHolder()->set({m_lower});
    QTRY_VERIFY(pieceAt(beside) != before);
    m_session->document()->editingContext()->selectionHolder()->clear();
    QTRY_COMPARE(pieceAt(beside), before);
}

void tst_workbench_view::wheelKeepsThePointUnderThePointer()
{
    DrawingView &view = m_session->view();
    const QPoint pos = m_session->pixel(120, 140);
    const ZvGePoint2d before = view.camera().toDisplay(pos);
    const double scale = view.camera().scale();
    QWheelEvent event(pos, view.mapToGlobal(pos), QPoint(), QPoint(0, 240), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&view, &event);
    const ZvGePoint2d after = view.camera().toDisplay(pos);
    QVERIFY(view.camera().scale() > scale);
    QVERIFY(std::abs(before.x - after.x) < 1e-9);
    QVERIFY(std::abs(before.y - after.y) < 1e-9);
    waitUntilDrawn();
}

void tst_workbench_view::middleButtonPans()
{
    const QPoint from = m_session->pixel(50, 100);
    const QPoint delta(37, -21);
    m_session->drag(from, from + delta, Qt::MiddleButton);
    QCOMPARE(m_session->pixel(50, 100), from + delta);
    QCOMPARE(m_session->selection(), Ids());
}

void tst_workbench_view::spaceAndLeftButtonPan()
{
    const QPoint from = m_session->pixel(200, 50);
    const QPoint delta(-15, 40);
    m_session->moveTo(from);
    int typed = 0;
    connect(&m_session->view(), &DrawingView::keyTyped, this, [&typed] { ++typed; });
    QTest::keyPress(&m_session->view(), Qt::Key_Space);
    m_session->drag(from, from + delta);
    QTest::keyRelease(&m_session->view(), Qt::Key_Space);
    QCOMPARE(m_session->pixel(200, 50), from + delta);
    QCOMPARE(m_session->selection(), Ids());
    QCOMPARE(typed, 0);
}

void tst_workbench_view::spaceAloneIsEnter()
{
    m_session->moveTo(m_session->pixel(200, 100));
    int typed = 0;
    connect(&m_session->view(), &DrawingView::keyTyped, this, [&typed] { ++typed; });
    QTest::keyClick(&m_session->view(), Qt::Key_Space);
    QCOMPARE(typed, 1);
}

void tst_workbench_view::doubleMiddleClickShowsTheExtents()
{
    DrawingView &view = m_session->view();
    ViewCamera away = view.camera();
    away.pan({5000, 5000});
    view.setCamera(away);
    QTest::mouseDClick(&view, Qt::MiddleButton, Qt::NoModifier, view.rect().center());
    for (const QPoint &corner : {m_session->pixel(100, 50), m_session->pixel(300, 150)})
        QVERIFY(view.rect().contains(corner));
}

void tst_workbench_view::previousTakesBackAPanAsOneStep()
{
    DrawingView &view = m_session->view();
    const ViewCamera before = view.camera();
    m_session->drag(QPoint(100, 100), QPoint(160, 140), Qt::MiddleButton);
    QVERIFY(view.camera() != before);
    view.zoomPrevious();
    QVERIFY(view.camera() == before);
}

void tst_workbench_view::entitiesShowInTheirColour()
{
    {
        const ZvDbObjectPointer<ZvDbLine> line(m_lower, ZvDb::kForWrite);
        ZvCmColor red;
        red.setRGB(255, 0, 0);
        line->setColor(red);
    }
    const QPoint onLine = m_session->pixel(200, 50);
    QTRY_VERIFY(shownAt(onLine).red() > 2 * shownAt(onLine).green()
                || shownAt(onLine - QPoint(0, 1)).red() > 2 * shownAt(onLine - QPoint(0, 1)).green());
    QCOMPARE(shownAt(m_session->pixel(200, 100)), ViewColors::kModelGround);
}

void tst_workbench_view::layoutsKeepTheirCameras()
{
    DrawingView &view = m_session->view();
    const ViewCamera model = view.camera();
    ZvArray<ZvString> names;
    m_session->database().layoutNames(names);
    QVERIFY(names.length() >= 2);
    QCOMPARE(m_session->window().currentPage()->layoutTabs()->count(), names.length());

    m_session->window().currentPage()->layoutTabs()->setCurrentIndex(1);
    QTRY_VERIFY(!m_session->database().tilemode());
    waitUntilDrawn();
    QCOMPARE(shownAt({3, 3}), ViewColors::kDesk);
    ViewCamera paper = view.camera();
    paper.zoomAt({10, 10}, 2.0);
    view.setCamera(paper);

    m_session->window().currentPage()->layoutTabs()->setCurrentIndex(0);
    QTRY_VERIFY(m_session->database().tilemode());
    QTRY_VERIFY(view.camera() == model);
    m_session->window().currentPage()->layoutTabs()->setCurrentIndex(1);
    QTRY_VERIFY(view.camera() == paper);
}

void tst_workbench_view::viewportsAreTakenByTheirBorder()
{
    QVERIFY(m_session->window().host()->openDocument(QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf")));
    ZvArray<ZvString> names;
    m_session->database().layoutNames(names);
    QCOMPARE(m_session->database().setCurrentLayout(names[1]), Zv::eOk);
    QCoreApplication::processEvents();
    waitUntilDrawn();
    DrawingView &view = m_session->view();

    const ZvDbObjectPointer<ZvDbBlockTableRecord> paper(m_session->database().currentSpaceId(), ZvDb::kForRead);
    int viewports = 0;
    for (const std::uint32_t index : paper->entityIndices()) {
        const auto id = ZvDbObjectId::fromInt64(quint64(m_session->database().number()) << 32 | index);
        const ZvDbObjectPointer<ZvDbViewport> viewport(id, ZvDb::kForRead);
        if (!viewport)
            continue;
        const ZvGePoint3d middle = viewport->centerPoint();
        const ZvGePoint3d edge(middle.x - viewport->width() / 2, middle.y, 0);
        const Ids inside = view.entitiesAt(view.camera().toWidget(middle));
        const Ids onEdge = view.entitiesAt(view.camera().toWidget(edge));
        QVERIFY(std::find(inside.begin(), inside.end(), id) == inside.end());
        // The one that stands for the paper itself is never taken.
        QCOMPARE(std::find(onEdge.begin(), onEdge.end(), id) != onEdge.end(), viewport->number() != 1);
        viewports += viewport->number() != 1;
    }
    QVERIFY(viewports > 0);
}

void tst_workbench_view::coordinatesFollowThePointer()
{
    const QPoint pos = m_session->pixel(123, 45);
    m_session->moveTo(pos);
    auto *field = m_session->window().findChild<QLabel *>(QStringLiteral("coordinates"));
    const QStringList parts = field->text().split(QStringLiteral(", "));
    const double unit = 1.0 / m_session->view().camera().scale();
    QVERIFY(std::abs(parts.value(0).toDouble() - 123) < unit);
    QVERIFY(std::abs(parts.value(1).toDouble() - 45) < unit);
}

void tst_workbench_view::aDrawingWithoutEntitiesCanBeZoomedToItsExtents()
{
    zvDocManagerPtr()->newDocument();
    m_session->view().zoomExtents();
    QVERIFY(std::isfinite(m_session->view().camera().view().height));
    QVERIFY(m_session->view().camera().view().height > 0.0);
    waitUntilDrawn();
}

ZEVA_TEST_MAIN(tst_workbench_view)
#include "tst_workbench_view.moc"
