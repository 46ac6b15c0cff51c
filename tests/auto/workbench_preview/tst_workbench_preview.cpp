// SPDX-License-Identifier: MIT
#include "controlsdriver.h"
#include "core/zveditor.h"
#include "previewpanel.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvcolorbutton.h"
#include "zvqtimagewidget.h"

#include <QDialog>
#include <QDockWidget>
#include <QLabel>
#include <QSpinBox>

#include <cstdlib>
#include <memory>

/// The picture of the selection, and the page of the controls window with the same widget.
class tst_workbench_preview : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void panelOpensFromTheKeyboard();
    void panelShowsTheSelection();
    void panelFollowsChangesAndUndo();
    void panelSurvivesWhatItShows();
    void panelShowsTheFirstOfMany();
    void panelWithoutADrawing();
    void hiddenPanelIsBroughtUpToDateWhenShown();
    void pageShowsPictures();

private:
    MainWindow &window() { return m_session->window(); }
    QLabel *summary() { return window().findChild<QLabel *>(QStringLiteral("previewSummary")); }
    void openPanel();
    void select(const std::vector<ZvDbObjectId> &ids)
    {
        m_session->document()->editingContext()->selectionHolder()->set(ids);
        QCoreApplication::processEvents();
    }
    /// Pixels of about this colour in what the widget shows: smooth lines are paler.
    static int pixelsOf(QWidget *widget, const QColor &color)
    {
        constexpr int kClose = 110;
        const QImage picture = widget->grab().toImage();
        int count = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor here = picture.pixelColor(x, y);
                const bool isClose = std::abs(here.red() - color.red()) < kClose
                    && std::abs(here.green() - color.green()) < kClose && std::abs(here.blue() - color.blue()) < kClose;
                count += isClose ? 1 : 0;
            }
        }
        return count;
    }
    int shown(const QColor &color)
    {
        return pixelsOf(window().findChild<ZvQtImageWidget *>(QStringLiteral("preview")), color);
    }
    ZvDbObjectId addRedLine(double y)
    {
        const ZvDbObjectId id = m_session->addLine({0, y, 0}, {100, y, 0});
        const ZvDbObjectPointer<ZvDbEntity> line(id, ZvDb::kForWrite);
        ZvCmColor red;
        red.setRGB(255, 0, 0);
        line->setColor(red);
        return id;
    }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_preview::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_preview::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_preview::openPanel()
{
    auto *dock = window().findChild<QDockWidget *>(QStringLiteral("previewPanelDock"));
    QVERIFY(dock);
    dock->toggleViewAction()->trigger();
    QVERIFY(dock->isVisible());
    QCoreApplication::processEvents();
}

void tst_workbench_preview::panelOpensFromTheKeyboard()
{
    auto *dock = window().findChild<QDockWidget *>(QStringLiteral("previewPanelDock"));
    QVERIFY(!dock->isVisible());
    QTest::keyClick(&window(), Qt::Key_3, Qt::ControlModifier);
    QTRY_VERIFY(dock->isVisible());
    QCOMPARE(dock->windowTitle(), QStringLiteral("Preview"));
    QTest::keyClick(&window(), Qt::Key_3, Qt::ControlModifier);
    QTRY_VERIFY(!dock->isVisible());
}

void tst_workbench_preview::panelShowsTheSelection()
{
    m_session->newDrawing();
    openPanel();
    const ZvDbObjectId line = addRedLine(0);
    const ZvDbObjectId other = m_session->addLine({0, 10, 0}, {100, 10, 0});
    QCOMPARE(summary()->text(), QStringLiteral("Nothing selected"));
    QCOMPARE(shown(Qt::red), 0);
    select({line});
    QCOMPARE(summary()->text(), QStringLiteral("1 entity"));
    QVERIFY(shown(Qt::red) > 50);
    select({line, other});
    QCOMPARE(summary()->text(), QStringLiteral("2 entities"));
    QVERIFY(shown(Qt::red) > 50);
    select({});
    QCOMPARE(summary()->text(), QStringLiteral("Nothing selected"));
    QCOMPARE(shown(Qt::red), 0);
}

void tst_workbench_preview::panelFollowsChangesAndUndo()
{
    m_session->newDrawing();
    openPanel();
    const ZvDbObjectId line = addRedLine(0);
    m_session->database().clearUndo();
    select({line});
    QVERIFY(shown(Qt::red) > 50);
    m_session->database().beginUndoStep(L"colour");
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForWrite);
        ZvCmColor blue;
        blue.setRGB(0, 0, 255);
        entity->setColor(blue);
    }
    m_session->database().endUndoStep();
    zvedCommandLine("_REGEN ");
    zvedRunQueue();
    QCoreApplication::processEvents();
    QVERIFY(shown(Qt::blue) > 50);
    QCOMPARE(shown(Qt::red), 0);
    m_session->action("undo")->trigger();
    zvedRunQueue();
    QCoreApplication::processEvents();
    select({line});
    QVERIFY(shown(Qt::red) > 50);
}

void tst_workbench_preview::panelSurvivesWhatItShows()
{
    m_session->newDrawing();
    openPanel();
    const ZvDbObjectId line = addRedLine(0);
    select({line});
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForWrite);
        entity->erase();
    }
    QVERIFY(shown(Qt::red) > 50); // a copy, and no command has ended
    zvDocManagerPtr()->closeDocument(m_session->document());
    QCOMPARE(shown(Qt::red), 0);
}

void tst_workbench_preview::panelShowsTheFirstOfMany()
{
    m_session->newDrawing();
    openPanel();
    std::vector<ZvDbObjectId> lines;
    for (int i = 0; i < 501; ++i)
        lines.push_back(addRedLine(i));
    select(lines);
    QCOMPARE(summary()->text(), QStringLiteral("The first 500 of 501 entities"));
    QVERIFY(shown(Qt::red) > 50);
}

void tst_workbench_preview::panelWithoutADrawing()
{
    openPanel();
    QCOMPARE(summary()->text(), QStringLiteral("No drawing is open"));
    m_session->newDrawing();
    QCOMPARE(summary()->text(), QStringLiteral("Nothing selected"));
}

void tst_workbench_preview::hiddenPanelIsBroughtUpToDateWhenShown()
{
    m_session->newDrawing();
    select({addRedLine(0)});
    QCOMPARE(shown(Qt::red), 0);
    openPanel();
    QCOMPARE(summary()->text(), QStringLiteral("1 entity"));
    QVERIFY(shown(Qt::red) > 50);
}

void tst_workbench_preview::pageShowsPictures()
{
    m_session->newDrawing();
    ControlsDriver controls(*m_session, "ZvQtImageWidget");
    auto *picture = controls.control<ZvQtImageWidget>("imageWidget");
    auto *frame = controls.control<QSpinBox>("frame");
    auto *color = controls.control<ZvColorButtonWidget>("frameColor");
    QVERIFY(picture && frame && color);
    QVERIFY(pixelsOf(picture, Qt::red) > 10);
    QVERIFY(pixelsOf(picture, Qt::green) > 20);
    const QColor frameColor(255, 196, 64);
    const int ten = pixelsOf(picture, frameColor);
    QVERIFY(ten > 1000);
    frame->setFocus();
    QTest::keyClick(frame, Qt::Key_Up);
    QVERIFY(pixelsOf(picture, frameColor) > ten);
    frame->setValue(0);
    QCOMPARE(pixelsOf(picture, frameColor), 0);
}

ZEVA_TEST_MAIN(tst_workbench_preview)
#include "tst_workbench_preview.moc"
