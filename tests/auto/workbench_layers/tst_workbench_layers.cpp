// SPDX-License-Identifier: MIT
#include "controlsdriver.h"
#include "db/zvdbrecords.h"
#include "statereport.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvlayerultralcombobox.h"

#include <QDialog>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QLabel>
#include <QPushButton>
#include <QTableWidget>
#include <QToolBar>

#include <memory>

/// Layers in the workbench: tool bar and the window of controls.
class tst_workbench_layers : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theToolBarBeginsWithTheLayer();
    void withoutADrawingItIsDisabledAndBlank();
    void switchingBetweenDrawingsShowsTheirLayers();
    void aDrawingOfTheSamplesIsListed();
    void switchedInTheListAndUndoneAtOnce();
    void pickMovesTheSelection();
    void everyControlOfTheWindow_data();
    void everyControlOfTheWindow();
    void longListOfTheWindow();

private:
    MainWindow &window() { return m_session->window(); }
    ZvLayerUltralComboBox &combo()
    {
        return *window().findChild<QToolBar *>(QStringLiteral("propertiesBar"))->findChild<ZvLayerUltralComboBox *>();
    }
    static QTableWidget *tableOf(ZvLayerUltralComboBox &box) { return static_cast<QTableWidget *>(box.view()); }
    static QLabel *labelOf(ZvLayerUltralComboBox &box)
    {
        return box.findChild<QLabel *>(QString(), Qt::FindDirectChildrenOnly);
    }
    static int rowOf(QTableWidget *table, const QString &name)
    {
        for (int row = 0; row < table->rowCount(); ++row) {
            if (table->item(row, 4)->text() == name)
                return row;
        }
        return -1;
    }
    static void pressName(QTableWidget *table, int row)
    {
        QTest::mousePress(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                          table->visualRect(table->model()->index(row, 4)).center());
    }
    static bool open(ZvLayerUltralComboBox &box)
    {
        QTest::mouseClick(&box, Qt::LeftButton);
        return QTest::qWaitFor([&box] { return box.view()->isVisible(); });
    }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    ZvDbObjectId makeLayer(const wchar_t *name)
    {
        ZvDbLayerTable *layers = nullptr;
        ZvDbObjectId id;
        if (m_session->database().getSymbolTable(layers, ZvDb::kForWrite) != Zv::eOk)
            return id;
        auto *layer = new ZvDbLayerTableRecord;
        layer->setName(name);
        if (layers->add(layer, id) == Zv::eOk)
            layer->close();
        layers->close();
        return id;
    }
    static bool isLocked(ZvDbObjectId id)
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
        return layer && layer->isLocked();
    }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_layers::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_layers::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_layers::theToolBarBeginsWithTheLayer()
{
    m_session->newDrawing();
    const auto *bar = window().findChild<QToolBar *>(QStringLiteral("propertiesBar"));
    QCOMPARE(bar->widgetForAction(bar->actions().constFirst()), static_cast<QWidget *>(&combo()));
    QVERIFY(combo().hooked);
    QVERIFY(combo().isEnabled());
    QVERIFY(labelOf(combo())->isVisible());
    QVERIFY(labelOf(combo())->pixmap());
    for (const QComboBox *other : bar->findChildren<QComboBox *>())
        QCOMPARE(combo().height(), other->height());
}

void tst_workbench_layers::withoutADrawingItIsDisabledAndBlank()
{
    QVERIFY(!combo().isEnabled());
    QVERIFY(labelOf(combo())->isHidden());
    m_session->newDrawing();
    QVERIFY(combo().isEnabled());
    QVERIFY(!labelOf(combo())->isHidden());
    zvDocManagerPtr()->closeDocument(m_session->document());
    QVERIFY(!combo().isEnabled());
    QVERIFY(labelOf(combo())->isHidden());
}

void tst_workbench_layers::switchingBetweenDrawingsShowsTheirLayers()
{
    m_session->newDrawing();
    ZvApDocument *first = m_session->document();
    m_session->database().setClayer(makeLayer(L"Walls"));
    m_session->newDrawing();
    QCOMPARE(tableOf(combo())->rowCount(), 1);
    zvDocManagerPtr()->setCurrentDocument(first);
    QCOMPARE(tableOf(combo())->rowCount(), 2);
    QTRY_COMPARE(combo().currentIndex(), rowOf(tableOf(combo()), QStringLiteral("Walls")));
    QVERIFY(!labelOf(combo())->isHidden());
}

void tst_workbench_layers::aDrawingOfTheSamplesIsListed()
{
    ZvDbFileReport report;
    QVERIFY(zvDocManagerPtr()->openDocument(ZEVA_SAMPLES_DIR "/part.dxf", report));
    QVERIFY(open(combo()));
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    QVERIFY(layers.length() > 1);
    QCOMPARE(tableOf(combo())->rowCount(), layers.length());
    combo().hidePopup();
}

void tst_workbench_layers::switchedInTheListAndUndoneAtOnce()
{
    m_session->newDrawing();
    const ZvDbObjectId walls = makeLayer(L"Walls");
    const ZvDbObjectId doors = makeLayer(L"Doors");
    QVERIFY(!walls.isNull() && !doors.isNull());
    m_session->database().clearUndo();
    QVERIFY(open(combo()));
    QTableWidget *table = tableOf(combo());
    QTest::mouseClick(table->cellWidget(rowOf(table, QStringLiteral("Walls")), 2), Qt::LeftButton);
    QTest::mouseClick(table->cellWidget(rowOf(table, QStringLiteral("Doors")), 2), Qt::LeftButton);
    QVERIFY(table->isVisible());
    QVERIFY(isLocked(walls) && isLocked(doors));
    combo().hidePopup();
    m_session->action("undo")->trigger();
    waitForIdle();
    QVERIFY(!isLocked(walls) && !isLocked(doors));
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_layers::pickMovesTheSelection()
{
    m_session->newDrawing();
    const ZvDbObjectId walls = makeLayer(L"Walls");
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    m_session->document()->editingContext()->selectionHolder()->set({line});
    QVERIFY(open(combo()));
    pressName(tableOf(combo()), rowOf(tableOf(combo()), QStringLiteral("Walls")));
    waitForIdle();
    const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForRead);
    QCOMPARE(entity->layerId().asInt64(), walls.asInt64());
    QVERIFY(m_session->database().clayer() != walls);
}

void tst_workbench_layers::everyControlOfTheWindow_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("unhooked") << "layerCombo" << false << true;
    QTest::newRow("hooked") << "layerComboHooked" << true << true;
    QTest::newRow("disabled") << "layerComboDisabled" << false << false;
}

void tst_workbench_layers::everyControlOfTheWindow()
{
    QFETCH(QString, id);
    QFETCH(bool, hooked);
    QFETCH(bool, enabled);
    m_session->newDrawing();
    const ZvDbObjectId walls = makeLayer(L"Walls");
    ControlsDriver controls(*m_session, "ZvLayerUltralComboBox");
    auto *box = controls.control<ZvLayerUltralComboBox>(id.toUtf8());
    QVERIFY(box);
    QCOMPARE(box->hooked, hooked);
    QCOMPARE(box->isEnabled(), enabled);
    QVERIFY(box->isVisible());
    if (enabled) {
        QVERIFY(open(*box));
        pressName(tableOf(*box), 1);
        waitForIdle();
        const QTableWidget &table = *tableOf(*box);
        QCOMPARE(table.item(1, table.columnCount() - 1)->text(), QStringLiteral("Walls"));
        QVERIFY(
            controls.told().contains(QStringLiteral("%1: cellPressed(1, %2)").arg(id).arg(table.columnCount() - 1)));
        QCOMPARE(m_session->database().clayer() == walls, hooked);
        QVERIFY(labelOf(*box)->pixmap());
    } else {
        QTest::mouseClick(box, Qt::LeftButton);
        QVERIFY(!box->view()->isVisible());
    }
}

void tst_workbench_layers::longListOfTheWindow()
{
    m_session->newDrawing();
    ControlsDriver controls(*m_session, "ZvLayerUltralComboBox");
    auto *box = controls.control<ZvLayerUltralComboBox>("layerComboLong");
    QVERIFY(box && box->isVisible());
    QTableWidget *table = tableOf(*box);
    QCOMPARE(table->rowCount(), 2501);
    QVERIFY(open(*box));
    table->scrollToBottom();
    QTest::mouseClick(table->cellWidget(2500, 0), Qt::LeftButton);
    QVERIFY(table->isVisible());
    QVERIFY(!m_session->database().canUndo());
    box->hidePopup();
}

ZEVA_TEST_MAIN(tst_workbench_layers)
#include "tst_workbench_layers.moc"
