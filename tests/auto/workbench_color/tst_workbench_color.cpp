// SPDX-License-Identifier: MIT
#include "colordialogdemo.h"
#include "combodriver.h"
#include "commandline.h"
#include "controlsdriver.h"
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
#include <QFile>
#include <QJsonArray>
#include <QJsonObject>
#include <QLabel>
#include <QLineEdit>
#include <QMap>
#include <QMenu>
#include <QTemporaryDir>
#include <QTabWidget>
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
    void theToolBarListsEveryColourOnce_data();
    void theToolBarListsEveryColourOnce();
    void pickingChangesTheSelectionInOneStep();
    void aMixedSelectionShowsNothing();
    void theStateReportListsTheCombo();
    void colorOpensTheDialog();
    void cancellingColorLeavesTheColour();
    void colorWithAValueAsksNothing();
    void thereIsOneColorCommand();
    void lettersOfTheDialogMenusDiffer();
    void everyDialogOfTheMenu_data();
    void everyDialogOfTheMenu();
    void theControlsWindowTellsWhatIsPicked();
    void journeyOnADrawing_data();
    void journeyOnADrawing();

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
    /// Opens the tool bar's list with the mouse and takes a row with it.
    void pickByMouse(const QString &text);
    /// Opens the colour dialog from the tool bar's list by keyboard.
    void pickFromDialog(ModalDriver &driver);
    std::vector<ZvDbObjectId> linesOfTheModel();
    ZvDbObjectId layerOf(ZvDbObjectId id)
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        return entity->layerId();
    }
    bool clickOn(ZvDbObjectId line);
    bool findThreeLines(ZvDbObjectId &first, ZvDbObjectId &second, ZvDbObjectId &elsewhere);

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

void tst_workbench_color::theToolBarListsEveryColourOnce_data()
{
    QTest::addColumn<bool>("closedBefore");
    QTest::newRow("first drawing after the start") << false;
    QTest::newRow("drawing opened after the last one was closed and the empty list looked at") << true;
}

void tst_workbench_color::theToolBarListsEveryColourOnce()
{
    QFETCH(bool, closedBefore);
    if (closedBefore) {
        m_session->newDrawing();
        zvDocManagerPtr()->closeDocument(m_session->document());
        combo().showPopup();
        combo().hidePopup();
        QCOMPARE(combo().count(), 0);
    }
    QVERIFY(window().host()->openDocument(QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf")));
    QCoreApplication::processEvents();
    waitForIdle();
    QCOMPARE(combo().currentText(), colorText(m_session->database().cecolor()));
    const QStringList rows = {"ByLayer", "ByBlock", "红", "黄", "绿", "青", "蓝", "洋红", "白", "选择颜色..."};
    QCOMPARE(rowsOf(combo()), rows);
    zvedCommandLine("_.REGEN");
    waitForIdle();
    combo().showPopup();
    QTRY_VERIFY(combo().view()->isVisible());
    QCOMPARE(rowsOf(combo()), rows);
    QCOMPARE(combo().currentText(), colorText(m_session->database().cecolor()));
    combo().hidePopup();
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
    QJsonObject control;
    for (const QJsonValue &value : controls) {
        if (value[QStringLiteral("class")].toString() == QLatin1String("ZvColorComboBox"))
            control = value.toObject();
    }
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

void tst_workbench_color::lettersOfTheDialogMenusDiffer()
{
    for (const char *name : {"dialogsMenu", "colorDialogMenu"}) {
        QMap<QKeySequence, QString> texts;
        for (const QAction *action : window().findChild<QMenu *>(QLatin1String(name))->actions()) {
            const QKeySequence letter = QKeySequence::mnemonic(action->text());
            if (letter.isEmpty())
                continue;
            QVERIFY2(!texts.contains(letter), qPrintable(texts[letter] + QLatin1String(", ") + action->text()));
            texts[letter] = action->text();
        }
        QVERIFY(!texts.isEmpty());
    }
}

void tst_workbench_color::everyDialogOfTheMenu_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("line");
    QTest::addColumn<bool>("offersReferences"); // by layer and by block
    const char *const lines[] = {
        "clrMethod=195 selectClr=30", "clrMethod=194 selectClr=13792792", "clrMethod=192 selectClr=256",
        "clrMethod=193 selectClr=0",  "clrMethod=195 selectClr=1",        "clrMethod=195 selectClr=3",
        "clrMethod=195 selectClr=7",
    };
    int i = 0;
    for (const DialogDemo &demo : colorDialogDemos())
        QTest::newRow(qPrintable(demo.id))
            << demo.id << QString::fromLatin1(lines[i++]) << (demo.id != QLatin1String("colorDialogWithoutReferences"));
    QCOMPARE(i, int(std::size(lines)));
}

void tst_workbench_color::everyDialogOfTheMenu()
{
    QFETCH(QString, action);
    QFETCH(QString, line);
    m_session->newDrawing();
    const QMenu *menu = window().findChild<QMenu *>(QStringLiteral("colorDialogMenu"));
    QVERIFY(menu && menu->actions().contains(m_session->action(action.toUtf8().constData())));
    QFETCH(bool, offersReferences);
    QMap<QString, bool> enabled;
    ModalDriver driver;
    driver.next([&enabled](QDialog *dialog) {
        for (const QAbstractButton *button : dialog->findChildren<QAbstractButton *>())
            enabled[button->text()] = button->isEnabled();
        pressOk(dialog);
    });
    m_session->action(action.toUtf8().constData())->trigger();
    QVERIFY(driver.finished());
    QVERIFY(enabled.contains(QStringLiteral("ByLayer(&L)")) && enabled.contains(QStringLiteral("ByBlock(&K)")));
    QCOMPARE(enabled[QStringLiteral("ByLayer(&L)")], offersReferences);
    QCOMPARE(enabled[QStringLiteral("ByBlock(&K)")], offersReferences);
    QCOMPARE(window().commandLine()->history().split(QLatin1Char('\n')).last(),
             QStringLiteral("ColorDialog: {\"result\": 1} ") + line);
}

void tst_workbench_color::theControlsWindowTellsWhatIsPicked()
{
    m_session->newDrawing();
    {
        ControlsDriver controls(*m_session, "ZvColorComboBox");
        auto *list = controls.control<ZvColorComboBox>("colorComboBasic");
        QCOMPARE(list->count(), 7);
        pick(*list, QStringLiteral("蓝"));
        QVERIFY(controls.told().contains(QStringLiteral("colorComboBasic: ColorItemChanged(#0000ff)")));
        QCOMPARE(currentColor(), QStringLiteral("ByLayer")); // unhooked: the drawing keeps its own
    }
    {
        ControlsDriver controls(*m_session, "ZvColorButtonWidget");
        auto *button = controls.control<ZvColorButtonWidget>("colorButton");
        ModalDriver driver;
        driver.next(pressOk);
        QTest::mouseDClick(button, Qt::LeftButton);
        QVERIFY(driver.finished());
        QCOMPARE(controls.told(), QStringList{QStringLiteral("colorButton: colorChanged()")});
        QCOMPARE(colorText(button->color()), QStringLiteral("24,118,210"));
    }
    ControlsDriver controls(*m_session, "ZvQtColorLabel");
    auto *field = controls.control<ZvColorButtonWidget>("color");
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        dialog->findChild<QTabWidget *>()->setCurrentIndex(0); // of a true colour the other one is shown
        choose(QStringLiteral("5"))(dialog);
    });
    QTest::mouseDClick(field, Qt::LeftButton);
    QVERIFY(driver.finished());
    QCOMPARE(controls.control<ZvQtColorLabel>("colorLabel")->grab().toImage().pixelColor(2, 2), QColor(0, 0, 255));
}

// ---- a day at work --------------------------------------------------------------------------------------------------

void tst_workbench_color::pickByMouse(const QString &text)
{
    QTest::mouseClick(&combo(), Qt::LeftButton);
    QTRY_VERIFY(combo().view()->isVisible());
    const int row = combo().findText(text);
    QVERIFY2(row >= 0, qPrintable(text));
    pickInOpenList(combo(), row);
    waitForIdle();
    QCOMPARE(window().focusWidget(), static_cast<QWidget *>(&m_session->view()));
}

void tst_workbench_color::pickFromDialog(ModalDriver &driver)
{
    combo().setFocus();
    QTest::keyClick(&combo(), Qt::Key_Down, Qt::AltModifier);
    QTRY_VERIFY(combo().view()->isVisible());
    QTest::keyClick(combo().view(), Qt::Key_Down); // a blank list has no row to start from
    QTest::keyClick(combo().view(), Qt::Key_End);
    QTest::keyClick(combo().view(), Qt::Key_Return);
    waitForIdle();
    QVERIFY(driver.finished());
    QCOMPARE(window().focusWidget(), static_cast<QWidget *>(&m_session->view()));
}

std::vector<ZvDbObjectId> tst_workbench_color::linesOfTheModel()
{
    std::vector<ZvDbObjectId> lines;
    const ZvDbObjectPointer<ZvDbBlockTableRecord> space(m_session->database().modelSpaceId(), ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *iterator = nullptr;
    if (!space || space->newIterator(iterator) != Zv::eOk)
        return lines;
    for (; !iterator->done(); iterator->step()) {
        const ZvDbObjectPointer<ZvDbLine> line(iterator->entityId(), ZvDb::kForRead);
        if (!line)
            continue;
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(line->layerId(), ZvDb::kForRead);
        if (layer && !layer->isOff() && !layer->isFrozen() && !layer->isLocked())
            lines.push_back(iterator->entityId());
    }
    delete iterator;
    return lines;
}

/// Goes near and clicks on the middle; false where something else is taken there.
bool tst_workbench_color::clickOn(ZvDbObjectId line)
{
    ZvGePoint3d from;
    ZvGePoint3d to;
    {
        const ZvDbObjectPointer<ZvDbLine> opened(line, ZvDb::kForRead);
        from = opened->startPoint();
        to = opened->endPoint();
    }
    ZvGeExtents2d box;
    box.add(ZvGePoint2d(from.x, from.y));
    box.add(ZvGePoint2d(to.x, to.y));
    ViewCamera camera = m_session->view().camera();
    camera.fit(box, 0.2);
    m_session->view().setCamera(camera);
    const QPoint middle = m_session->pixel((from.x + to.x) / 2, (from.y + to.y) / 2);
    const std::vector<ZvDbObjectId> there = m_session->view().entitiesAt(middle);
    if (there.empty() || there.front() != line)
        return false;
    m_session->click(middle);
    return !m_session->selection().empty() && m_session->selection().back() == line;
}

/// Two lines of one layer and one of another, each of which a click takes.
bool tst_workbench_color::findThreeLines(ZvDbObjectId &first, ZvDbObjectId &second, ZvDbObjectId &elsewhere)
{
    for (const ZvDbObjectId &line : linesOfTheModel()) {
        const bool isNeeded = first.isNull() || (layerOf(line) == layerOf(first) ? second : elsewhere).isNull();
        if (!isNeeded || !clickOn(line))
            continue;
        QTest::keyClick(&m_session->view(), Qt::Key_Escape);
        (first.isNull() ? first : layerOf(line) == layerOf(first) ? second : elsewhere) = line;
        if (!second.isNull() && !elsewhere.isNull())
            return true;
    }
    return false;
}

void tst_workbench_color::journeyOnADrawing_data()
{
    QTest::addColumn<QString>("file");
    QTest::newRow("plan") << QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf");
    QTest::newRow("a section of a house") << QStringLiteral(ZEVA_DRAWINGS_DIR "/dxf/section-f-house-r2018.dxf");
    QTest::newRow("a wall of 2007") << QStringLiteral(ZEVA_DRAWINGS_DIR "/dxf/wall-section-k1-r2007.dxf");
}

void tst_workbench_color::journeyOnADrawing()
{
    QFETCH(QString, file);
    if (!QFile::exists(file))
        QSKIP("not among the drawings of this machine");
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("journey.dxf"));
    QVERIFY(QFile::copy(file, path));
    QVERIFY(QFile(path).setPermissions(QFile::ReadOwner | QFile::WriteOwner));
    QVERIFY(window().host()->openDocument(path));
    QCoreApplication::processEvents();
    QVERIFY(m_session->database().tilemode());
    ZvDbObjectId first;
    ZvDbObjectId second;
    ZvDbObjectId elsewhere;
    QVERIFY(findThreeLines(first, second, elsewhere));
    const QString currentBefore = currentColor();
    const QString elsewhereBefore = colorOf(elsewhere);
    QMap<quint64, QString> colors;
    for (const ZvDbObjectId &line : linesOfTheModel())
        colors[line.handle()] = colorOf(line);
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        window().activateWindow(); // there is no window manager to do it after a dialog
        QTRY_VERIFY(window().isActiveWindow());
        QTest::keyClick(&m_session->view(), key, modifiers);
        waitForIdle();
    };

    // one line, from the list
    QVERIFY(clickOn(first));
    pickByMouse(QStringLiteral("红"));
    QCOMPARE(colorOf(first), QStringLiteral("1"));
    QCOMPARE(combo().currentText(), QStringLiteral("红"));

    // another, from the dialog
    press(Qt::Key_Escape);
    QVERIFY(clickOn(second));
    {
        ModalDriver driver;
        driver.next(choose(QStringLiteral("30")));
        pickFromDialog(driver);
    }
    QCOMPARE(colorOf(second), QStringLiteral("30"));
    QCOMPARE(combo().currentText(), QStringLiteral("颜色 30"));

    // the first again, back to its layer
    press(Qt::Key_Escape);
    QVERIFY(clickOn(first));
    QCOMPARE(combo().currentText(), QStringLiteral("红"));
    pick(combo(), QStringLiteral("ByLayer"));
    QCOMPARE(colorOf(first), QStringLiteral("ByLayer"));

    // both, which differ
    QVERIFY(clickOn(second));
    QCOMPARE(combo().currentText(), QString());
    QVERIFY(combo().isEnabled());
    pickByMouse(QStringLiteral("青"));
    QCOMPARE(colorOf(first), QStringLiteral("4"));
    QCOMPARE(colorOf(second), QStringLiteral("4"));
    QCOMPARE(combo().currentText(), QStringLiteral("青"));

    // with one on a locked layer, which is left out and told of
    press(Qt::Key_Escape);
    QString layerName;
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(layerOf(elsewhere), ZvDb::kForRead);
        layerName = toQString(layer->name());
    }
    m_session->type(QStringLiteral("-layer"));
    m_session->type(QStringLiteral("lock"));
    m_session->type(layerName);
    waitForIdle();
    QVERIFY(clickOn(first));
    QVERIFY(clickOn(elsewhere));
    QString told;
    {
        ModalDriver driver;
        driver.next(choose(QStringLiteral("200")));
        driver.next([&told](QDialog *dialog) {
            for (const QLabel *label : dialog->findChildren<QLabel *>())
                told += label->text();
            pressOk(dialog);
        });
        pickFromDialog(driver);
    }
    QVERIFY2(told.contains(QStringLiteral("在锁定图层上有 1 个对象未被更新。")), qPrintable(told));
    QCOMPARE(colorOf(first), QStringLiteral("200"));
    QCOMPARE(colorOf(elsewhere), elsewhereBefore);

    // taken back in one step
    press(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(colorOf(first), QStringLiteral("4"));
    QCOMPARE(currentColor(), currentBefore);

    // and all of it is in the file
    press(Qt::Key_S, Qt::ControlModifier);
    QVERIFY(!m_session->database().isModified());
    const ZvDbDatabasePtr saved = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(saved->readFile(toZvString(path), report), Zv::eOk);
    colors[first.handle()] = QStringLiteral("4");
    colors[second.handle()] = QStringLiteral("4");
    for (auto line = colors.cbegin(); line != colors.cend(); ++line)
        QCOMPARE(colorOf(saved->idOfHandle(line.key())), line.value());
}

ZEVA_TEST_MAIN(tst_workbench_color)
#include "tst_workbench_color.moc"
