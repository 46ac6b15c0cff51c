// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "controlsdriver.h"
#include "db/zvdbrecords.h"
#include "statereport.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"

#include <QDialog>
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QTemporaryDir>
#include <QToolBar>

#include <memory>

/// Line types and line weights in the workbench: tool bar and the window of controls.
class tst_workbench_lines : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theToolBarFollowsTheDrawing();
    void withoutADrawingBothAreDisabled();
    void theControlsAreAsHighAsTheirNeighbours();
    void theStateReportListsBoth();
    void everyControlOfTheWindow_data();
    void everyControlOfTheWindow();
    void journeyOnADrawing();

private:
    MainWindow &window() { return m_session->window(); }
    QToolBar &bar() { return *window().findChild<QToolBar *>(QStringLiteral("propertiesBar")); }
    ZvLineTypeComboBox &types() { return *bar().findChild<ZvLineTypeComboBox *>(); }
    ZvLineWidthComboBox &weights() { return *bar().findChild<ZvLineWidthComboBox *>(); }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    void select(const std::vector<ZvDbObjectId> &ids)
    {
        m_session->document()->editingContext()->selectionHolder()->set(ids);
    }
    static QString lineTypeOf(ZvDbObjectId id)
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        return toQString(entity->linetype());
    }
    static int weightOf(ZvDbObjectId id)
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        return int(entity->lineWeight());
    }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_lines::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_lines::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_lines::theToolBarFollowsTheDrawing()
{
    m_session->newDrawing();
    QCOMPARE(types().currentText(), QStringLiteral("ByLayer"));
    QCOMPARE(weights().currentText(), QStringLiteral("ByLayer"));
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForWrite);
        entity->setLinetype(ZvString(L"Continuous"), true);
        entity->setLineWeight(ZvDb::LineWeight(50), true);
    }
    select({line});
    QCOMPARE(types().currentText(), QStringLiteral("Continuous"));
    QCOMPARE(weights().currentText(), QStringLiteral("0.50 mm"));
}

void tst_workbench_lines::withoutADrawingBothAreDisabled()
{
    QVERIFY(!types().isEnabled() && !weights().isEnabled());
    m_session->newDrawing();
    QVERIFY(types().isEnabled() && weights().isEnabled());
    zvDocManagerPtr()->closeDocument(m_session->document());
    QVERIFY(!types().isEnabled() && !weights().isEnabled());
    QCOMPARE(types().currentText(), QString());
    QCOMPARE(weights().currentText(), QString());
}

void tst_workbench_lines::theControlsAreAsHighAsTheirNeighbours()
{
    m_session->newDrawing();
    int highest = 0;
    int lowest = INT_MAX;
    for (const QComboBox *combo : bar().findChildren<QComboBox *>()) {
        highest = qMax(highest, combo->height());
        lowest = qMin(lowest, combo->height());
    }
    QVERIFY2(highest - lowest <= 2, qPrintable(QStringLiteral("%1 to %2").arg(lowest).arg(highest)));
}

void tst_workbench_lines::theStateReportListsBoth()
{
    m_session->newDrawing();
    QStringList classes;
    for (const QJsonValue &control : stateReport(window())[QStringLiteral("controls")].toArray())
        classes << control[QStringLiteral("class")].toString();
    QVERIFY(classes.contains(QStringLiteral("ZvLineTypeComboBox")));
    QVERIFY(classes.contains(QStringLiteral("ZvLineWidthComboBox")));
}

void tst_workbench_lines::everyControlOfTheWindow_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<int>("rows");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("row1");
    QTest::newRow("line types") << "lineTypeCombo" << 4 << true << "Continuous";
    QTest::newRow("without manager") << "lineTypeComboPlain" << 3 << true << "ByLayer";
    QTest::newRow("hooked") << "lineTypeComboHooked" << 4 << true << "Continuous";
    QTest::newRow("disabled") << "lineTypeComboDisabled" << 4 << false << "";
    QTest::newRow("weights") << "lineWeightCombo" << 27 << true << "ByBlock";
    QTest::newRow("with the object's own") << "lineWeightComboObject" << 28 << true << "ByBlock";
    QTest::newRow("in inches") << "lineWeightComboInch" << 24 << true << "0.002\"";
    QTest::newRow("weights, hooked") << "lineWeightComboHooked" << 27 << true << "ByBlock";
    QTest::newRow("weights, disabled") << "lineWeightComboDisabled" << 27 << false << "";
}

void tst_workbench_lines::everyControlOfTheWindow()
{
    QFETCH(QString, id);
    QFETCH(int, rows);
    QFETCH(bool, enabled);
    QFETCH(QString, row1);
    m_session->newDrawing();
    const bool isWeight = id.startsWith(QLatin1String("lineWeight"));
    ControlsDriver controls(*m_session, isWeight ? "ZvLineWidthComboBox" : "ZvLineTypeComboBox");
    auto *combo = controls.control<QComboBox>(id.toUtf8());
    QVERIFY(combo && combo->isVisible());
    QCOMPARE(combo->count(), rows);
    QCOMPARE(combo->isEnabled(), enabled);
    const bool isHooked = dynamic_cast<CZvQtControlHelp *>(combo)->hooked;
    if (enabled) {
        pickByMouse(*combo, 1);
        waitForIdle();
        QCOMPARE(combo->currentText(), row1);
        const char *line = isWeight ? "%1: lineWeightItemChanged(1)" : "%1: lineTypeItemChanged(1)";
        QCOMPARE(controls.told().count(QString::fromLatin1(line).arg(id)), 1);
        // Only a hooked one writes.
        const bool hasWritten = m_session->database().celtype() != m_session->database().byLayerLinetype()
            || m_session->database().celweight() != ZvDb::kLnWtByLayer;
        QCOMPARE(hasWritten, isHooked);
    } else {
        QTest::mouseClick(combo, Qt::LeftButton);
        QVERIFY(!combo->view()->isVisible());
        QCOMPARE(controls.told(), QStringList());
    }
}

void tst_workbench_lines::journeyOnADrawing()
{
    ZvDbFileReport report;
    QVERIFY(zvDocManagerPtr()->openDocument(ZvString(ZEVA_SAMPLES_DIR "/plan.dxf"), report));
    waitForIdle();
    // A line by the mouse, its properties by the tool bar.
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    const ZvDbObjectId other = m_session->addLine({0, 1, 0}, {10, 1, 0});
    select({line});
    pickByMouse(types(), QStringLiteral("DASHED"));
    waitForIdle();
    QCOMPARE(lineTypeOf(line), QStringLiteral("DASHED"));
    QCOMPARE(window().focusWidget(), static_cast<QWidget *>(&m_session->view()));
    pickByMouse(weights(), QStringLiteral("0.50 mm"));
    waitForIdle();
    QCOMPARE(weightOf(line), 50);
    select({line, other});
    QCOMPARE(types().currentText(), QString());
    QCOMPARE(weights().currentText(), QString());

    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("lines.dxf"));
    QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), toZvString(path), report), Zv::eOk);
    const ZvDbDatabasePtr reread = ZvDbDatabase::create();
    QCOMPARE(reread->readFile(toZvString(path), report), Zv::eOk);
    QCOMPARE(lineTypeOf(reread->idOfHandle(line.handle())), QStringLiteral("DASHED"));
    QCOMPARE(weightOf(reread->idOfHandle(line.handle())), 50);

    select({line});
    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(weights().currentText(), QStringLiteral("ByLayer"));
    QCOMPARE(types().currentText(), QStringLiteral("DASHED"));
    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(types().currentText(), QStringLiteral("ByLayer"));
    m_session->database().setModified(false);
}

ZEVA_TEST_MAIN(tst_workbench_lines)
#include "tst_workbench_lines.moc"
