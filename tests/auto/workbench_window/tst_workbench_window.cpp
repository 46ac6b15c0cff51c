// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "db/zvdbrecords.h"
#include "icons.h"
#include "infobar.h"
#include "modaldriver.h"
#include "recentfiles.h"
#include "startpage.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "workprogress.h"
#include "zevatest.h"

#include <QAbstractButton>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QSettings>
#include <QSignalSpy>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QToolButton>

#include <cmath>
#include <functional>

namespace {

/// Presses the button whose text has this mnemonic, as in "是(&Y)".
ModalDriver::Action press(const QString &mnemonic)
{
    return [mnemonic](QDialog *dialog) {
        const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
        for (QAbstractButton *button : buttons) {
            if (button->text().contains(QLatin1Char('&') + mnemonic))
                QTest::mouseClick(button, Qt::LeftButton);
        }
    };
}

QString messageOf(const QDialog *dialog)
{
    QStringList texts;
    const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
    for (const QLabel *label : labels)
        texts << label->text();
    return texts.join(QLatin1Char('\n'));
}

} // namespace

/// The window with its commands, prompts, questions and files.
class tst_workbench_window : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void startsWithoutADrawing();
    void everyActionSurvivesWithoutADrawing_data();
    void everyActionSurvivesWithoutADrawing();
    void lineByKeyboard();
    void lineByMouse();
    void rightButtonIsEnterInAPrompt();
    void escapeCancelsACommand();
    void aMenuActionTakesThePlaceOfARunningCommand();
    void zoomInsideACommandGoesBackToIt();
    void erasePicksInTheView();
    void eraseByAWindowInTheView();
    void eraseOfTheSelectionAsksNothing();
    void undoAndRedoNameTheStep();
    void unknownCommandIsToldInTheHistory();
    void savedViewsAreInTheMenu();
    void tabsShowTitleAndModification();
    void switchingTabsCancelsTheCommand();
    void closingAsks_data();
    void closingAsks();
    void closingAnUnchangedDrawingAsksNothing();
    void quitWhileACommandWaits();
    void quitGivenUpLeavesEverythingOpen();
    void aWrongFileIsToldOfAndTheWorkGoesOn_data();
    void aWrongFileIsToldOfAndTheWorkGoesOn();
    void warningsOfAFileStandInTheInfoBar();
    void openingCanBeCancelled();
    void recentFilesAreRemembered();
    void lineWeightSwitch();
    void dialogsFromTheMenu_data();
    void dialogsFromTheMenu();
    void aboutShowsTheVersion();
    void everyIconIsDrawn();

private:
    MainWindow &window() { return m_session->window(); }
    CommandLine &commandLine() { return *window().commandLine(); }
    /// Settings of their own for one test.
    QString file(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    int entityCount() const { return m_session->database().entityCount(); }
    ZvDbObjectId lastEntity() const;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_window::init()
{
    ZevaTest::init();
    m_folder = std::make_unique<QTemporaryDir>();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_window::cleanup()
{
    m_session.reset();
    m_folder.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

ZvDbObjectId tst_workbench_window::lastEntity() const
{
    const ZvDbObjectPointer<ZvDbBlockTableRecord> space(m_session->database().modelSpaceId(), ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *iterator = nullptr;
    ZvDbObjectId id;
    if (!space || space->newIterator(iterator) != Zv::eOk)
        return id;
    for (; !iterator->done(); iterator->step())
        id = iterator->entityId();
    delete iterator;
    return id;
}

void tst_workbench_window::startsWithoutADrawing()
{
    QVERIFY(window().startPage()->isVisible());
    QVERIFY(!window().currentView());
    QVERIFY(!m_session->action("save")->isEnabled());
    QTest::mouseClick(window().findChild<QAbstractButton *>(QStringLiteral("startNew")), Qt::LeftButton);
    QTRY_VERIFY(window().currentView());
    QVERIFY(!window().startPage()->isVisible());
    QVERIFY(m_session->action("save")->isEnabled());
}

void tst_workbench_window::everyActionSurvivesWithoutADrawing_data()
{
    QTest::addColumn<QString>("name");
    const WorkbenchSession session;
    for (const char *menu : {"fileMenu", "editMenu", "viewMenu", "drawMenu", "modifyMenu", "presetMenu"}) {
        for (const QAction *action :
             const_cast<WorkbenchSession &>(session).window().findChild<QMenu *>(QLatin1String(menu))->actions()) {
            const QString name = action->objectName();
            // What opens a dialog, and what ends the program, have tests of their own.
            if (!name.isEmpty() && name != QLatin1String("open") && name != QLatin1String("quit"))
                QTest::newRow(qPrintable(name)) << name;
        }
    }
}

void tst_workbench_window::everyActionSurvivesWithoutADrawing()
{
    QFETCH(QString, name);
    auto *action = window().findChild<QAction *>(name);
    QVERIFY(action);
    if (action->menu()) {
        Q_EMIT action->menu()->aboutToShow();
        return;
    }
    action->setEnabled(true); // as if it had been left enabled by mistake
    action->trigger();
    waitForIdle();
    QCOMPARE(zvDocManagerPtr()->documentCount(), name == QLatin1String("new") ? 1 : 0);
}

void tst_workbench_window::lineByKeyboard()
{
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("First point"), [this] { m_session->type(QStringLiteral("10,20")); });
    prompts.next(QStringLiteral("Next point"), [this] { m_session->type(QStringLiteral("110,20")); });
    prompts.next(QStringLiteral("Next point"), [this] { m_session->type(QString()); });
    m_session->type(QStringLiteral("line"));
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(commandLine().prompt(), QStringLiteral("Command:"));
    QCOMPARE(entityCount(), 1);
    const ZvDbObjectPointer<ZvDbLine> line(lastEntity(), ZvDb::kForRead);
    QVERIFY(line);
    QVERIFY(line->startPoint().isEqualTo({10, 20, 0}));
    QVERIFY(line->endPoint().isEqualTo({110, 20, 0}));
}

void tst_workbench_window::lineByMouse()
{
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("First point"), [this] { m_session->click(m_session->pixel(50, 60)); });
    prompts.next(QStringLiteral("Next point"), [this] { m_session->click(m_session->pixel(150, 80)); });
    prompts.next(QStringLiteral("Next point"), [this] { QTest::keyClick(&m_session->view(), Qt::Key_Return); });
    m_session->action("line")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(entityCount(), 1);
    const double unit = 1.0 / m_session->view().camera().scale();
    const ZvDbObjectPointer<ZvDbLine> line(lastEntity(), ZvDb::kForRead);
    QVERIFY(line);
    QVERIFY(line->startPoint().distanceTo({50, 60, 0}) < unit);
    QVERIFY(line->endPoint().distanceTo({150, 80, 0}) < unit);
    // Points of a command select nothing.
    QVERIFY(m_session->selection().empty());
}

void tst_workbench_window::rightButtonIsEnterInAPrompt()
{
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("First point"), [this] { m_session->click(m_session->pixel(50, 60)); });
    prompts.next(QStringLiteral("Next point"), [this] { m_session->click(m_session->pixel(150, 80)); });
    prompts.next(QStringLiteral("Next point"), [this] { m_session->click(m_session->pixel(10, 10), Qt::RightButton); });
    m_session->action("line")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(entityCount(), 1);
}

void tst_workbench_window::escapeCancelsACommand()
{
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("entre"), [this] { QTest::keyClick(&m_session->view(), Qt::Key_Escape); });
    m_session->action("circle")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(entityCount(), 0);
    QCOMPARE(commandLine().prompt(), QStringLiteral("Command:"));
    QVERIFY(commandLine().history().contains(QStringLiteral("*Cancel*")));
}

void tst_workbench_window::aMenuActionTakesThePlaceOfARunningCommand()
{
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    ZvString running;
    prompts.next(QStringLiteral("entre"), [this] { m_session->action("line")->trigger(); });
    prompts.next(QStringLiteral("First point"), [&] {
        running = zvedRunningCommand();
        QTest::keyClick(&m_session->view(), Qt::Key_Escape);
    });
    m_session->action("circle")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(toQString(running), QStringLiteral("LINE"));
}

void tst_workbench_window::zoomInsideACommandGoesBackToIt()
{
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {1000, 1000, 0});
    const ViewCamera before = m_session->view().camera();
    PromptDriver prompts(*m_session);
    ZvString running;
    prompts.next(QStringLiteral("First point"), [this] { m_session->action("zoomextents")->trigger(); });
    prompts.next(QStringLiteral("First point"), [&] {
        running = zvedRunningCommand();
        QTest::keyClick(&m_session->view(), Qt::Key_Escape);
    });
    m_session->action("line")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QVERIFY(m_session->view().camera() != before);
    QCOMPARE(toQString(running), QStringLiteral("LINE"));
}

void tst_workbench_window::erasePicksInTheView()
{
    m_session->newDrawing();
    const ZvDbObjectId line = m_session->addLine({100, 50, 0}, {300, 50, 0});
    m_session->addLine({100, 150, 0}, {300, 150, 0});
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("Select"), [this] { m_session->click(m_session->pixel(200, 50)); });
    prompts.next(QStringLiteral("Select"), [this] { m_session->type(QString()); });
    m_session->action("erase")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(entityCount(), 1);
    QVERIFY(line.isErased());
}

void tst_workbench_window::eraseByAWindowInTheView()
{
    m_session->newDrawing();
    m_session->addLine({100, 50, 0}, {300, 50, 0});
    m_session->addLine({100, 150, 0}, {300, 150, 0});
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("Select"),
                 [this] { m_session->drag(m_session->pixel(90, 160), m_session->pixel(310, 40)); });
    prompts.next(QStringLiteral("Select"), [this] { m_session->type(QString()); });
    m_session->action("erase")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(entityCount(), 0);
}

void tst_workbench_window::eraseOfTheSelectionAsksNothing()
{
    m_session->newDrawing();
    m_session->addLine({100, 50, 0}, {300, 50, 0});
    m_session->action("selectall")->trigger();
    QTRY_COMPARE(int(m_session->selection().size()), 1);
    m_session->action("delete")->trigger();
    QTRY_COMPARE(entityCount(), 0);
    waitForIdle();
    QVERIFY(m_session->selection().empty());
}

void tst_workbench_window::undoAndRedoNameTheStep()
{
    m_session->newDrawing();
    QAction *undo = m_session->action("undo");
    QAction *redo = m_session->action("redo");
    zvedMenuMacro("_.LINE 0,0 100,100;;", false);
    QTRY_COMPARE(entityCount(), 1);
    waitForIdle();
    QVERIFY(undo->isEnabled());
    QVERIFY(undo->text().contains(QStringLiteral("LINE")));
    undo->trigger();
    QTRY_COMPARE(entityCount(), 0);
    waitForIdle();
    QVERIFY(redo->isEnabled());
    QVERIFY(redo->text().contains(QStringLiteral("LINE")));
    redo->trigger();
    QTRY_COMPARE(entityCount(), 1);
    waitForIdle();
}

void tst_workbench_window::unknownCommandIsToldInTheHistory()
{
    m_session->newDrawing();
    m_session->type(QStringLiteral("frobnicate"));
    QTRY_VERIFY(commandLine().history().contains(QStringLiteral("frobnicate")));
    waitForIdle();
}

void tst_workbench_window::savedViewsAreInTheMenu()
{
    m_session->newDrawing();
    const ViewCamera there = m_session->view().camera();
    zvedCommandLine("_-VIEW _Save East side & more");
    waitForIdle();
    ViewCamera away = there;
    away.pan({4000, 300});
    m_session->view().setCamera(away);
    QMenu *menu = m_session->action("namedViewMenu")->menu();
    Q_EMIT menu->aboutToShow();
    QTRY_COMPARE(menu->actions().size(), 1);
    menu->actions().first()->trigger();
    QTRY_VERIFY(m_session->view().camera() != away);
    waitForIdle();
    QVERIFY(std::abs(m_session->view().camera().view().center.x - there.view().center.x) < 1e-6);
    QVERIFY(std::abs(m_session->view().camera().scale() - there.scale()) < 1e-6);
}

void tst_workbench_window::tabsShowTitleAndModification()
{
    const QString path = file("图 a&b.dxf");
    m_session->newDrawing();
    ZvDbFileReport report;
    QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), toZvString(path), report), Zv::eOk);
    m_session->addLine({0, 0, 0}, {1, 1, 0});
    QTRY_COMPARE(window().documentTabs()->tabText(0), QStringLiteral("图 a&&b.dxf*"));
    QCOMPARE(window().documentTabs()->tabToolTip(0), path);
    QVERIFY(window().isWindowModified());
    m_session->action("save")->trigger();
    QTRY_COMPARE(window().documentTabs()->tabText(0), QStringLiteral("图 a&&b.dxf"));
    waitForIdle();
}

void tst_workbench_window::switchingTabsCancelsTheCommand()
{
    m_session->newDrawing();
    ZvApDocument *first = m_session->document();
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("First point"), [this] { window().documentTabs()->setCurrentIndex(0); });
    m_session->action("line")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QCOMPARE(m_session->document(), first);
}

void tst_workbench_window::closingAsks_data()
{
    QTest::addColumn<QString>("button");
    QTest::addColumn<bool>("closed");
    QTest::addColumn<bool>("saved");
    QTest::newRow("yes saves and closes") << "Y" << true << true;
    QTest::newRow("no closes without saving") << "N" << true << false;
    QTest::newRow("cancel leaves it open") << "C" << false << false;
}

void tst_workbench_window::closingAsks()
{
    QFETCH(QString, button);
    QFETCH(bool, closed);
    QFETCH(bool, saved);
    const QString path = file("question.dxf");
    m_session->newDrawing();
    ZvDbFileReport report;
    QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), toZvString(path), report), Zv::eOk);
    QFile before(path);
    QVERIFY(before.open(QIODevice::ReadOnly));
    const QByteArray bytes = before.readAll();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    QVERIFY(m_session->document()->isModified());

    ModalDriver driver;
    QString message;
    driver.next([&](QDialog *dialog) {
        message = messageOf(dialog);
        press(button)(dialog);
    });
    m_session->action("close")->trigger();
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QVERIFY(message.contains(QStringLiteral("Save changes to question.dxf before closing?")));
    QCOMPARE(zvDocManagerPtr()->documentCount(), closed ? 0 : 1);
    QCOMPARE(window().startPage()->isVisible(), closed);
    QFile after(path);
    QVERIFY(after.open(QIODevice::ReadOnly));
    QCOMPARE(after.readAll() != bytes, saved);
}

void tst_workbench_window::closingAnUnchangedDrawingAsksNothing()
{
    m_session->newDrawing();
    QTest::mouseClick(window().findChild<QToolButton *>(QStringLiteral("closeTab")), Qt::LeftButton);
    QTRY_COMPARE(zvDocManagerPtr()->documentCount(), 0);
    QVERIFY(window().startPage()->isVisible());
}

void tst_workbench_window::quitWhileACommandWaits()
{
    m_session->newDrawing();
    PromptDriver prompts(*m_session);
    prompts.next(QStringLiteral("First point"), [this] { m_session->action("quit")->trigger(); });
    m_session->action("line")->trigger();
    QVERIFY2(prompts.finish(), prompts.failure());
    QVERIFY(!window().isVisible());
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
}

void tst_workbench_window::quitGivenUpLeavesEverythingOpen()
{
    m_session->newDrawing();
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    ModalDriver driver;
    driver.next(press(QStringLiteral("C")));
    m_session->type(QStringLiteral("quit"));
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QVERIFY(window().isVisible());
    QCOMPARE(zvDocManagerPtr()->documentCount(), 2);
}

void tst_workbench_window::aWrongFileIsToldOfAndTheWorkGoesOn_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<bool>("exists");
    QTest::newRow("missing") << QByteArray() << false;
    QTest::newRow("empty") << QByteArray() << true;
    QTest::newRow("text of another kind") << QByteArray("This is a letter.\nDear reader,\n") << true;
}

void tst_workbench_window::aWrongFileIsToldOfAndTheWorkGoesOn()
{
    QFETCH(QByteArray, content);
    QFETCH(bool, exists);
    const QString path = file("wrong.dxf");
    if (exists) {
        QFile out(path);
        QVERIFY(out.open(QIODevice::WriteOnly));
        out.write(content);
    }
    ModalDriver driver;
    QString message;
    driver.next([&message](QDialog *dialog) {
        message = messageOf(dialog);
        press(QStringLiteral("O"))(dialog);
    });
    window().openFile(path);
    QVERIFY(driver.finished());
    QVERIFY2(message.contains(QStringLiteral("wrong.dxf")), qPrintable(message));
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
    m_session->action("new")->trigger();
    QTRY_COMPARE(zvDocManagerPtr()->documentCount(), 1);
}

void tst_workbench_window::warningsOfAFileStandInTheInfoBar()
{
    ZvDbFileReport report;
    ZvDbFileReport::Warning warning;
    warning.text = L"A line that is no group code was dropped";
    warning.count = 3;
    warning.firstLine = 17;
    report.warnings.append(warning);
    window().host()->showFileReport(L"/some/where/odd.dxf", report);
    QVERIFY(window().infoBar()->isVisible());
    QVERIFY(window().infoBar()->text().contains(QStringLiteral("odd.dxf")));
    QVERIFY(window().infoBar()->details().contains(
        QStringLiteral("no group code was dropped (3 times), first at line 17")));
    QTest::mouseClick(window().findChild<QAbstractButton *>(QStringLiteral("infoDetailsButton")), Qt::LeftButton);
    QVERIFY(window().findChild<QWidget *>(QStringLiteral("infoDetails"))->isVisible());
    QTest::mouseClick(window().findChild<QAbstractButton *>(QStringLiteral("infoCloseButton")), Qt::LeftButton);
    QVERIFY(!window().infoBar()->isVisible());
}

void tst_workbench_window::openingCanBeCancelled()
{
    // The first look of the work at the events presses Escape.
    WorkProgress *progress = window().progress();
    connect(progress, &WorkProgress::runningChanged, this, [this, progress](bool running) {
        if (running)
            QTest::keyClick(&window(), Qt::Key_Escape);
        else
            disconnect(progress, nullptr, this, nullptr);
    });
    window().openFile(QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf"));
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
    QVERIFY(commandLine().history().contains(QStringLiteral("Cancelled: plan.dxf")));
    QVERIFY(!progress->isVisible());

    window().openFile(QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf"));
    QCOMPARE(zvDocManagerPtr()->documentCount(), 1);
}

void tst_workbench_window::recentFilesAreRemembered()
{
    const QString ini = file("settings.ini");
    QSettings settings(ini, QSettings::IniFormat);
    RecentFiles recent(&settings);
    for (int i = 0; i < RecentFiles::kMost + 3; ++i)
        recent.add(QStringLiteral("/drawings/%1.dxf").arg(i));
    recent.add(QStringLiteral("/drawings/7.dxf"));
    QCOMPARE(recent.paths().size(), RecentFiles::kMost);
    QCOMPARE(recent.paths().first(), QStringLiteral("/drawings/7.dxf"));
    QCOMPARE(recent.paths().count(QStringLiteral("/drawings/7.dxf")), 1);
    QCOMPARE(RecentFiles(&settings).paths(), recent.paths());

    window().startPage()->setRecentFiles(recent.paths());
    QSignalSpy wanted(window().startPage(), &StartPage::fileWanted);
    window().startPage()->disconnect(&window());
    QTest::mouseClick(window().startPage()->findChild<QToolButton *>(QStringLiteral("recentFile")), Qt::LeftButton);
    QCOMPARE(wanted.value(0).value(0).toString(), QStringLiteral("/drawings/7.dxf"));
    recent.clear();
    QVERIFY(RecentFiles(&settings).paths().isEmpty());
}

void tst_workbench_window::lineWeightSwitch()
{
    m_session->newDrawing();
    const bool before = m_session->database().lineWeightDisplay();
    auto *button = window().findChild<QToolButton *>(QStringLiteral("lineWeightSwitch"));
    QTest::mouseClick(button, Qt::LeftButton);
    QCOMPARE(m_session->database().lineWeightDisplay(), !before);
    QCOMPARE(m_session->action("lineweights")->isChecked(), !before);
    m_session->action("lineweights")->trigger();
    QCOMPARE(m_session->database().lineWeightDisplay(), before);
    QCOMPARE(button->isChecked(), before);
}

void tst_workbench_window::dialogsFromTheMenu_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("button");
    QTest::addColumn<QString>("line");
    QTest::newRow("fixed buttons") << "messageBoxPlain"
                                   << "&Y"
                                   << "MessageBox: {\"result\": 1} ControlBtn=6";
    QTest::newRow("own buttons") << "messageBoxOwnButtons"
                                 << "Keep both"
                                 << "MessageBox: {\"result\": 1} ControlBtn=1";
    QTest::newRow("choice") << "messageBoxSelectors"
                            << "The whole drawing"
                            << "MessageBox: {\"result\": 1} selectedBtn=1";
    QTest::newRow("check boxes") << "messageBoxChecks"
                                 << "Unused blocks"
                                 << "MessageBox: {\"result\": 1} ControlBtn=1 selectedCheck=2";
    QTest::newRow("task dialog, standard buttons") << "taskDialogStandard"
                                                   << "&R"
                                                   << "TaskDialog: {\"result\": 1} ControlBtn=4";
    QTest::newRow("task dialog, disabled buttons") << "taskDialogDisabled"
                                                   << "&N"
                                                   << "TaskDialog: {\"result\": 1} ControlBtn=7";
    QTest::newRow("task dialog, own buttons") << "taskDialogOwn"
                                              << "Skip"
                                              << "TaskDialog: {\"result\": 1} ControlBtn=2";
    QTest::newRow("task dialog, commands") << "taskDialogCommands"
                                           << "similar font"
                                           << "TaskDialog: {\"result\": 1} ControlBtn=102";
    QTest::newRow("task dialog, check box") << "taskDialogCheck"
                                            << "Do not show"
                                            << "TaskDialog: {\"result\": 1} ControlBtn=1 selectedCheck=false";
    QTest::newRow("task dialog, everything") << "taskDialogEverything"
                                             << "Look for them"
                                             << "TaskDialog: {\"result\": 1} ControlBtn=1 selectedCheck=false";
}

void tst_workbench_window::dialogsFromTheMenu()
{
    QFETCH(QString, action);
    QFETCH(QString, button);
    QFETCH(QString, line);
    ModalDriver driver;
    driver.next([&button](QDialog *dialog) {
        QAbstractButton *ok = nullptr;
        const QList<QAbstractButton *> buttons = dialog->findChildren<QAbstractButton *>();
        for (QAbstractButton *candidate : buttons) {
            if (candidate->text().contains(QStringLiteral("&O")))
                ok = candidate;
            if (candidate->text().contains(button))
                QTest::mouseClick(candidate, Qt::LeftButton, Qt::NoModifier, QPoint(10, candidate->height() / 2));
        }
        if (ok)
            QTest::mouseClick(ok, Qt::LeftButton);
    });
    window().findChild<QAction *>(action)->trigger();
    QVERIFY(driver.finished());
    QCOMPARE(commandLine().history().split(QLatin1Char('\n')).last(), line);
}

void tst_workbench_window::aboutShowsTheVersion()
{
    ModalDriver driver;
    QString message;
    driver.next([&message](QDialog *dialog) {
        message = messageOf(dialog);
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    m_session->action("about")->trigger();
    QVERIFY(driver.finished());
    QVERIFY(message.contains(QString::fromLatin1(qVersion())));
}

void tst_workbench_window::everyIconIsDrawn()
{
    const QStringList names = Icons::names();
    QVERIFY(!names.isEmpty());
    for (const QString &name : names) {
        const QImage image = Icons::icon(name).pixmap(24, 24).toImage();
        bool drawn = false;
        for (int i = 0; !drawn && i < 24 * 24; ++i)
            drawn = qAlpha(image.pixel(i % 24, i / 24)) > 0;
        QVERIFY2(drawn, qPrintable(name));
        QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    }
    QVERIFY(Icons::icon(QStringLiteral("no such icon")).isNull());
}

ZEVA_TEST_MAIN(tst_workbench_window)
#include "tst_workbench_window.moc"
