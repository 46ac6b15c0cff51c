// SPDX-License-Identifier: MIT
#include "colordialogdemo.h"
#include "commandline.h"
#include "db/zvdbrecords.h"
#include "modaldriver.h"
#include "statereport.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvcolorbutton.h"
#include "zvcolorcombobox.h"
#include "zvqtcolorlabel.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QDialog>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QTemporaryDir>
#include <QToolBar>

#include <memory>

namespace {

void pressOk(QDialog *dialog)
{
    const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
    for (QAbstractButton *button : buttons) {
        if (button->text().startsWith(QStringLiteral("确定")))
            QTest::mouseClick(button, Qt::LeftButton);
    }
}

/// Types an index into the index tab and accepts.
ModalDriver::Action choose(const QString &index)
{
    return [index](QDialog *dialog) {
        const QList<QLineEdit *> edits = dialog->findChildren<QLineEdit *>();
        for (QLineEdit *edit : edits) {
            if (!edit->isVisible())
                continue;
            edit->selectAll();
            QTest::keyClicks(edit, index);
        }
        pressOk(dialog);
    };
}

} // namespace

/// Colour in the workbench: tool bar, command, menu and the window of unhooked controls.
class tst_workbench_color : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theToolBarFollowsTheDrawing();
    void withoutADrawingTheToolBarIsDisabled();
    void pickingChangesTheSelectionInOneStep();
    void aMixedSelectionShowsNothing();
    void theStateReportListsTheCombo();
    void colorOpensTheDialog();
    void cancellingColorLeavesTheColour();
    void colorWithAValueAsksNothing();
    void thereIsOneColorCommand();
    void everyDialogOfTheMenu_data();
    void everyDialogOfTheMenu();
    void theControlsWindowTellsWhatIsPicked();

private:
    MainWindow &window() { return m_session->window(); }
    QToolBar &bar() { return *window().findChild<QToolBar *>(QStringLiteral("propertiesBar")); }
    ZvColorComboBox &combo() { return *bar().findChild<ZvColorComboBox *>(); }
    QString currentColor() { return colorText(m_session->database().cecolor()); }
    QString colorOf(ZvDbObjectId id)
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        return colorText(entity->color());
    }
    void select(const std::vector<ZvDbObjectId> &ids)
    {
        m_session->document()->editingContext()->selectionHolder()->set(ids);
    }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    /// Opens the list and takes a row by keyboard.
    void pick(QComboBox &box, const QString &text);

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_color::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_color::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_color::pick(QComboBox &box, const QString &text)
{
    box.showPopup();
    const int row = box.findText(text);
    QVERIFY2(row >= 0, qPrintable(text));
    QTRY_VERIFY(box.view()->isVisible());
    box.view()->setCurrentIndex(box.model()->index(row, 0));
    QTest::keyClick(box.view(), Qt::Key_Return);
    waitForIdle();
}

void tst_workbench_color::theToolBarFollowsTheDrawing()
{
    m_session->newDrawing();
    QCOMPARE(combo().currentText(), QStringLiteral("ByLayer"));
    zvedCommandLine("_-COLOR 1");
    waitForIdle();
    QCOMPARE(combo().currentText(), QStringLiteral("红"));
    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(combo().currentText(), colorText(m_session->database().cecolor()));
}

void tst_workbench_color::withoutADrawingTheToolBarIsDisabled()
{
    QVERIFY(!combo().isEnabled());
    m_session->newDrawing();
    QVERIFY(combo().isEnabled());
    zvDocManagerPtr()->closeDocument(m_session->document());
    QVERIFY(!combo().isEnabled());
    QCOMPARE(combo().currentText(), QString());
}

void tst_workbench_color::pickingChangesTheSelectionInOneStep()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("coloured.dxf"));
    m_session->newDrawing();
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    m_session->database().clearUndo();
    select({line});
    pick(combo(), QStringLiteral("青"));
    QCOMPARE(colorOf(line), QStringLiteral("4"));
    QCOMPARE(currentColor(), QStringLiteral("ByLayer"));
    QCOMPARE(window().focusWidget(), static_cast<QWidget *>(&m_session->view()));

    ZvDbFileReport report;
    QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), toZvString(path), report), Zv::eOk);
    const ZvDbDatabasePtr reread = ZvDbDatabase::create();
    QCOMPARE(reread->readFile(toZvString(path), report), Zv::eOk);
    QCOMPARE(colorOf(reread->idOfHandle(line.handle())), QStringLiteral("4"));

    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(colorOf(line), QStringLiteral("ByLayer"));
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_color::aMixedSelectionShowsNothing()
{
    m_session->newDrawing();
    const ZvDbObjectId first = m_session->addLine({0, 0, 0}, {10, 0, 0});
    const ZvDbObjectId second = m_session->addLine({0, 5, 0}, {10, 5, 0});
    select({first});
    pick(combo(), QStringLiteral("红"));
    select({first, second});
    QCOMPARE(combo().currentText(), QString());
    QVERIFY(combo().isEnabled());
    select({second});
    QCOMPARE(combo().currentText(), QStringLiteral("ByLayer"));
}

void tst_workbench_color::theStateReportListsTheCombo()
{
    m_session->newDrawing();
    const QJsonArray controls = stateReport(window())[QStringLiteral("controls")].toArray();
    QCOMPARE(controls.size(), 1);
    const QJsonObject control = controls.first().toObject();
    QCOMPARE(control[QStringLiteral("class")].toString(), QStringLiteral("ZvColorComboBox"));
    QCOMPARE(control[QStringLiteral("text")].toString(), QStringLiteral("ByLayer"));
    QVERIFY(control[QStringLiteral("enabled")].toBool());
}

void tst_workbench_color::colorOpensTheDialog()
{
    m_session->newDrawing();
    ModalDriver driver;
    driver.next(choose(QStringLiteral("30")));
    m_session->type(QStringLiteral("color"));
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QCOMPARE(currentColor(), QStringLiteral("30"));
    QCOMPARE(combo().currentText(), QStringLiteral("颜色 30"));
    m_session->action("undo")->trigger();
    waitForIdle();
    QCOMPARE(currentColor(), QStringLiteral("ByLayer"));
}

void tst_workbench_color::cancellingColorLeavesTheColour()
{
    m_session->newDrawing();
    ModalDriver driver;
    driver.next([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
    m_session->type(QStringLiteral("color"));
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QCOMPARE(currentColor(), QStringLiteral("ByLayer"));
    QVERIFY(!m_session->database().canUndo());
}

void tst_workbench_color::colorWithAValueAsksNothing()
{
    m_session->newDrawing();
    ModalDriver driver;
    zvedMenuMacro("_.COLOR 5;", false);
    QTRY_COMPARE(currentColor(), QStringLiteral("5"));
    waitForIdle();
    QVERIFY(driver.finished());
}

void tst_workbench_color::thereIsOneColorCommand()
{
    QCOMPARE(toQString(zvedCommandStack()->lookUp("COLOR")->group), QStringLiteral("WORKBENCH"));
    std::vector<const ZvEdCommand *> commands;
    zvedCommandStack()->commands(commands);
    int count = 0;
    for (const ZvEdCommand *command : commands)
        count += command->globalName == "COLOR" ? 1 : 0;
    QCOMPARE(count, 1);
}

void tst_workbench_color::everyDialogOfTheMenu_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("line");
    const char *const lines[] = {
        "clrMethod=195 selectClr=30", "clrMethod=194 selectClr=13792792", "clrMethod=192 selectClr=256",
        "clrMethod=193 selectClr=0",  "clrMethod=195 selectClr=1",        "clrMethod=195 selectClr=3",
        "clrMethod=195 selectClr=7",
    };
    int i = 0;
    for (const DialogDemo &demo : colorDialogDemos())
        QTest::newRow(qPrintable(demo.id)) << demo.id << QString::fromLatin1(lines[i++]);
    QCOMPARE(i, int(std::size(lines)));
}

void tst_workbench_color::everyDialogOfTheMenu()
{
    QFETCH(QString, action);
    QFETCH(QString, line);
    m_session->newDrawing();
    const QMenu *menu = window().findChild<QMenu *>(QStringLiteral("colorDialogMenu"));
    QVERIFY(menu && menu->actions().contains(m_session->action(action.toUtf8().constData())));
    ModalDriver driver;
    driver.next(pressOk);
    m_session->action(action.toUtf8().constData())->trigger();
    QVERIFY(driver.finished());
    QCOMPARE(window().commandLine()->history().split(QLatin1Char('\n')).last(),
             QStringLiteral("ColorDialog: {\"result\": 1} ") + line);
}

void tst_workbench_color::theControlsWindowTellsWhatIsPicked()
{
    m_session->newDrawing();
    m_session->action("controls")->trigger();
    auto *controls = window().findChild<QDialog *>(QStringLiteral("controlsWindow"));
    QVERIFY(controls && controls->isVisible());
    const auto *last = controls->findChild<QLabel *>(QStringLiteral("lastSignal"));
    auto *label = controls->findChild<ZvQtColorLabel *>();
    auto *list = controls->findChild<ZvColorComboBox *>(QStringLiteral("colorComboBasic"));
    QCOMPARE(list->count(), 7);
    pick(*list, QStringLiteral("蓝"));
    QCOMPARE(last->text(), QStringLiteral("ColorItemChanged: 蓝, #0000ff"));
    QCOMPARE(label->grab().toImage().pixelColor(2, 2), QColor(0, 0, 255));
    QCOMPARE(currentColor(), QStringLiteral("ByLayer")); // unhooked: the drawing keeps its own

    auto *button = controls->findChild<ZvColorButtonWidget *>();
    ModalDriver driver;
    driver.next(pressOk);
    QTest::mouseDClick(button, Qt::LeftButton);
    QVERIFY(driver.finished());
    QCOMPARE(last->text(), QStringLiteral("colorChanged: 24,118,210"));
    controls->close();
    QTRY_VERIFY(!window().findChild<QDialog *>(QStringLiteral("controlsWindow")));
}

ZEVA_TEST_MAIN(tst_workbench_color)
#include "tst_workbench_color.moc"
