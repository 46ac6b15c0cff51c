// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "db/zvdbrecords.h"
#include "modaldriver.h"
#include "workbenchtest.h"
#include "xdotool.h"
#include "zevatest.h"
#include "zvlayerultralcombobox.h"

#include <QTableWidget>
#include <QToolBar>

/// The layer list of the workbench's tool bar on a real display with a window manager.
class tst_layer_list : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void opensStaysOpenAndGivesTheKeyboardBack();
    void opensAgainAfterTheColourDialog();
    void opensAgainAfterAMessage();
    void pressOnANameClosesIt();
    void escapeClosesIt();

private:
    QTableWidget *table() { return static_cast<QTableWidget *>(m_combo->view()); }
    QPoint middleOf(const QWidget *widget) { return widget->mapToGlobal(widget->rect().center()); }
    void open()
    {
        QVERIFY(clickAt(middleOf(m_combo)));
        QTRY_VERIFY(table()->isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(table()->window()));
        QTRY_VERIFY(table()->cellWidget(1, 0)->isVisible());
    }
    bool isState(bool (ZvDbLayerTableRecord::*state)() const)
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(m_layer, ZvDb::kForRead);
        return layer && ((*layer).*state)();
    }
    void typedTextReachesTheDrawing()
    {
        QVERIFY(typeText(QStringLiteral("CIRC")));
        QTRY_COMPARE(m_session->window().commandLine()->text(), QStringLiteral("CIRC"));
    }

    std::unique_ptr<WorkbenchSession> m_session;
    ZvLayerUltralComboBox *m_combo = nullptr;
    ZvDbObjectId m_layer;
};

void tst_layer_list::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    m_session->window().activateWindow();
    QVERIFY(waitForKeyboard(&m_session->window()));
    m_session->newDrawing();
    QTRY_VERIFY(m_session->view().hasFocus());
    m_combo = m_session->window()
                  .findChild<QToolBar *>(QStringLiteral("propertiesBar"))
                  ->findChild<ZvLayerUltralComboBox *>();
    ZvDbLayerTable *layers = nullptr;
    QCOMPARE(m_session->database().getSymbolTable(layers, ZvDb::kForWrite), Zv::eOk);
    auto *layer = new ZvDbLayerTableRecord;
    layer->setName(L"Walls");
    layers->add(layer, m_layer);
    layer->close();
    layers->close();
    m_session->database().clearUndo();
}

void tst_layer_list::cleanup()
{
    m_session.reset();
    ZevaTest::cleanup();
}

void tst_layer_list::opensStaysOpenAndGivesTheKeyboardBack()
{
    open();
    QVERIFY(clickAt(middleOf(table()->cellWidget(1, 2))));
    QTRY_VERIFY(isState(&ZvDbLayerTableRecord::isLocked));
    QVERIFY(table()->isVisible());
    QVERIFY(clickAt(middleOf(table()->cellWidget(1, 1))));
    QTRY_VERIFY(isState(&ZvDbLayerTableRecord::isFrozen));
    QVERIFY(clickAt(middleOf(table()->cellWidget(1, 0))));
    QTRY_VERIFY(isState(&ZvDbLayerTableRecord::isOff));
    QVERIFY(table()->isVisible());
    QVERIFY(clickAt(middleOf(&m_session->view()))); // beside the list
    QTRY_VERIFY(!table()->isVisible());
    QTRY_VERIFY(m_session->view().hasFocus());
    typedTextReachesTheDrawing();
    QVERIFY(m_session->database().undo());
    QVERIFY(!isState(&ZvDbLayerTableRecord::isLocked) && !isState(&ZvDbLayerTableRecord::isOff));
}

void tst_layer_list::opensAgainAfterTheColourDialog()
{
    open();
    bool wasOpen = true;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        wasOpen = table()->isVisible();
        // by the pointer of the display: a list that were open still would take the click
        QVERIFY(clickAt(dialog->mapToGlobal(QPoint(dialog->width() / 2, 4))));
        dialog->accept();
    });
    QVERIFY(clickAt(middleOf(table()->cellWidget(1, 3))));
    QTRY_VERIFY(driver.finished());
    QVERIFY(!wasOpen);
    QTRY_VERIFY(table()->isVisible());
    QVERIFY(QTest::qWaitForWindowExposed(table()->window()));
    QVERIFY(clickAt(middleOf(table()->cellWidget(1, 2))));
    QTRY_VERIFY(isState(&ZvDbLayerTableRecord::isLocked));
    QVERIFY(table()->isVisible());
}

void tst_layer_list::opensAgainAfterAMessage()
{
    open();
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    QVERIFY(clickAt(middleOf(table()->cellWidget(0, 1)))); // the current layer is not frozen
    QTRY_VERIFY(driver.finished());
    QTRY_VERIFY(table()->isVisible());
    QVERIFY(!m_session->database().canUndo());
}

void tst_layer_list::pressOnANameClosesIt()
{
    open();
    QVERIFY(clickAt(table()->viewport()->mapToGlobal(table()->visualRect(table()->model()->index(1, 4)).center())));
    QTRY_VERIFY(!table()->isVisible());
    QTRY_COMPARE(m_session->database().clayer().asInt64(), m_layer.asInt64());
    QTRY_VERIFY(m_session->view().hasFocus());
    QTRY_VERIFY(!m_session->window().host()->isBusy());
    typedTextReachesTheDrawing();
}

void tst_layer_list::escapeClosesIt()
{
    open();
    QVERIFY(clickAt(middleOf(table()->cellWidget(1, 2))));
    QTRY_VERIFY(isState(&ZvDbLayerTableRecord::isLocked));
    QVERIFY(pressKey(QStringLiteral("Escape")));
    QTRY_VERIFY(!table()->isVisible());
    QTRY_VERIFY(m_session->view().hasFocus());
    typedTextReachesTheDrawing();
}

ZEVA_TEST_MAIN(tst_layer_list)
#include "tst_layer_list.moc"
