// SPDX-License-Identifier: MIT
#include "base/zvregistry.h"
#include "db/zvdbrecords.h"
#include "linetypeforms.h"
#include "linetypemanager.h"
#include "modaldriver.h"
#include "textforms.h"
#include "undostep.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvqtlinetypeservice.h"

#include <QAbstractButton>
#include <QCheckBox>
#include <QDialogButtonBox>
#include <QFile>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>

#include <memory>

namespace {

ZvQtLinetypeTableView *tableOf(QDialog *dialog)
{
    return dialog->findChild<ZvQtLinetypeTableView *>(QStringLiteral("linetypeTable"));
}

QString messageOf(QDialog *dialog)
{
    return dialog->findChild<QLabel *>(QStringLiteral("message"))->text();
}

void press(QDialog *dialog, const char *button)
{
    QTest::mouseClick(dialog->findChild<QPushButton *>(QLatin1String(button)), Qt::LeftButton);
}

void pressStandard(QDialog *dialog, QDialogButtonBox::StandardButton which)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox *>()->button(which), Qt::LeftButton);
}

void close(QDialog *dialog)
{
    pressStandard(dialog, QDialogButtonBox::Close);
}

QStringList namesOf(QDialog *dialog)
{
    QStringList names;
    const QAbstractItemModel *model = tableOf(dialog)->model();
    for (int row = 0; row < model->rowCount(); ++row)
        names.append(model->index(row, 0).data().toString());
    return names;
}

void clickRow(QDialog *dialog, const QString &name, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    ZvQtLinetypeTableView *table = tableOf(dialog);
    const int row = namesOf(dialog).indexOf(name);
    if (row < 0)
        qWarning("no row %s", qPrintable(name));
    table->scrollTo(table->model()->index(row, 0));
    QTest::mouseClick(table->viewport(), Qt::LeftButton, modifiers,
                      table->visualRect(table->model()->index(row, 0)).center());
}

void replaceText(QDialog *dialog, const char *edit, const QString &text)
{
    auto *line = dialog->findChild<QLineEdit *>(QLatin1String(edit));
    line->setFocus();
    line->selectAll();
    QTest::keyClick(line, Qt::Key_Delete);
    QTest::keyClicks(line, text);
}

/// Types a name over that of the current row and commits it.
void typeName(QDialog *dialog, const QString &name)
{
    auto *editor = tableOf(dialog)->viewport()->findChild<QLineEdit *>();
    if (!editor) {
        qWarning("no editor");
        return;
    }
    editor->selectAll();
    editor->insert(name); // as an input method does: not every name is on the keyboard
    QTest::keyClick(editor, Qt::Key_Return);
    // The delegate takes the key over when the editor has had it.
    QCoreApplication::sendPostedEvents(tableOf(dialog)->itemDelegate());
}

} // namespace

/// The line type manager: its command, its menu entry, its service, and each of its actions with undo and the file.
class tst_workbench_linetypemanager : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void theCommandAndTheMenuOpenIt_data();
    void theCommandAndTheMenuOpenIt();
    void thereIsOneCommand();
    void aScriptRunsTheLineForm();
    void theLineFormIsOneStep();
    void rowsAreThoseOfTheDrawing();
    void loading();
    void loadingTellsWhatIsThere();
    void loadingAgainMayChangePatterns();
    void loadingFromAFile_data();
    void loadingFromAFile();
    void loadingByBrowsing();
    void makingANewOne();
    void aNewOneIsCheckedWhileItIsTyped_data();
    void aNewOneIsCheckedWhileItIsTyped();
    void aNewOneOfANameInUse();
    void renaming();
    void renamingIsRefused_data();
    void renamingIsRefused();
    void aRenamedOneShowsItsPicture();
    void deleting();
    void deletingSeveral();
    void deletingTheUnused();
    void settingTheCurrentOne();
    void aDoubleClickSetsTheCurrentOne();
    void aRecordThatIsOpenElsewhere();
    void anErasedRecord();
    void keysWorkTheTable();
    void enterCommitsTheEditorAndNoMore();
    void enterInTheTable();
    void escapeGivesUpTheEditorFirst();
    void theServiceGivesTheAnswer();
    void theServiceWhenTheUserGivesUp();
    void theServiceRefusesABlankPress();
    void theServiceTakesADoubleClick();
    void theServiceInsideAnotherStep();
    void theServiceWithoutDrawingOrBag();
    void theServiceIsGoneWithTheProgram();
    void allIsSavedAndReadBack();

private:
    /// Runs LINETYPE; each action is one run of the dialog's loop, and the last one has to close it.
    void run(std::vector<ModalDriver::Action> actions)
    {
        ModalDriver driver;
        for (ModalDriver::Action &action : actions)
            driver.next(std::move(action));
        m_session->type(QStringLiteral("linetype"));
        QTRY_VERIFY(driver.finished());
        waitForIdle();
    }
    void waitForIdle() { QTRY_VERIFY(!m_session->window().host()->isBusy() && !zvedQueueHasInput()); }
    void undo()
    {
        m_session->action("undo")->trigger();
        waitForIdle();
    }
    ZvDbDatabase &database() { return m_session->database(); }
    ZvDbObjectId find(const char *name)
    {
        const ZvDbObjectPointer<ZvDbLinetypeTable> table(database().linetypeTableId(), ZvDb::kForRead);
        return table->getIdAt(ZvString(name));
    }
    ZvDbObjectId add(const char *name, const wchar_t *pattern = L"A,12,-6")
    {
        ZvDbLinetypeDefinition definition;
        definition.name = ZvString(name);
        ZvString why;
        ZvDbObjectId id;
        ZvDbLinetypeFile::parsePattern(pattern, definition.elements, why);
        zvdbAddLinetype(database(), definition, ZvString(), false, id, why);
        database().clearUndo();
        return id;
    }
    QString currentName() { return nameOf(database().celtype()); }
    static ZvQtLinetypeService *service()
    {
        return zvrxCast<ZvQtLinetypeService>(zv_arbitDict_getservice(ZvString(wchar_t(19))));
    }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_linetypemanager::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    m_session->newDrawing();
}

void tst_workbench_linetypemanager::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

// ---- how it is opened

void tst_workbench_linetypemanager::theCommandAndTheMenuOpenIt_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("typed") << "type";
    QTest::newRow("menu") << "menu";
    QTest::newRow("macro of the line type list") << "macro";
}

void tst_workbench_linetypemanager::theCommandAndTheMenuOpenIt()
{
    QFETCH(QString, way);
    QString title;
    QString current;
    QStringList names;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        title = dialog->windowTitle();
        names = namesOf(dialog);
        current = dialog->findChild<QLabel *>(QStringLiteral("currentLinetype"))->text();
        close(dialog);
    });
    if (way == QStringLiteral("type"))
        m_session->type(QStringLiteral("linetype"));
    else if (way == QStringLiteral("menu"))
        m_session->action("linetypes")->trigger();
    else
        zvedMenuMacro("_LINETYPE\n", true);
    QTRY_VERIFY(driver.finished());
    waitForIdle();
    QCOMPARE(title, QStringLiteral("Line Types"));
    QCOMPARE(current, QStringLiteral("Current line type: ByLayer"));
    QCOMPARE(names, (QStringList{"ByLayer", "ByBlock", "Continuous"}));
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::thereIsOneCommand()
{
    std::vector<const ZvEdCommand *> commands;
    zvedCommandStack()->commands(commands);
    QStringList groups;
    for (const ZvEdCommand *command : commands) {
        if (command->globalName == "LINETYPE")
            groups.append(toQString(command->group));
    }
    QCOMPARE(groups, QStringList{"WORKBENCH"});
}

void tst_workbench_linetypemanager::aScriptRunsTheLineForm()
{
    ModalDriver driver;
    zvedMenuMacro("_.LINETYPE _Set ByBlock;", false);
    QTRY_COMPARE(currentName(), QStringLiteral("ByBlock"));
    waitForIdle();
    QVERIFY(driver.finished());
}

void tst_workbench_linetypemanager::theLineFormIsOneStep()
{
    zvedMenuMacro("_.LINETYPE _Create DASHED;;A,1,-1;", false);
    QTRY_VERIFY(!find("DASHED").isNull());
    waitForIdle();
    undo();
    QVERIFY(find("DASHED").isNull());
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::rowsAreThoseOfTheDrawing()
{
    const ZvDbObjectId id = add("DASHED");
    QString selected;
    LtypeData data;
    run({[&](QDialog *dialog) {
        selected = tableOf(dialog)->getCurrLtypeData().name;
        clickRow(dialog, QStringLiteral("DASHED"));
        data = tableOf(dialog)->getCurrLtypeData();
        close(dialog);
    }});
    QCOMPARE(selected, QStringLiteral("ByLayer")); // the current one
    QCOMPARE(data.idx, 3);
    QCOMPARE(data.ltypeId, id);
    QCOMPARE(data.xref, 0);
}

// ---- load

void tst_workbench_linetypemanager::loading()
{
    QStringList listed;
    QStringList names;
    QString message;
    QString selected;
    bool okBefore = true;
    run({[](QDialog *dialog) { press(dialog, "loadButton"); },
         [&](QDialog *dialog) {
             auto *list = dialog->findChild<QListWidget *>(QStringLiteral("definitionList"));
             okBefore = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled();
             for (int row = 0; row < list->count(); ++row)
                 listed.append(list->item(row)->text());
             for (const char *name : {"CENTER:", "GAS:"}) {
                 QListWidgetItem *item = list->findItems(QLatin1String(name), Qt::MatchStartsWith).value(0);
                 list->scrollToItem(item);
                 QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::ControlModifier,
                                   list->visualItemRect(item).center());
             }
             pressStandard(dialog, QDialogButtonBox::Ok);
         },
         [&](QDialog *dialog) {
             names = namesOf(dialog);
             message = messageOf(dialog);
             selected = tableOf(dialog)->getCurrLtypeData().name;
             close(dialog);
         }});
    QVERIFY(!okBefore);
    QCOMPARE(listed.size(), 33);
    QVERIFY(listed.contains(QStringLiteral("ISO_DASH: 02 dashed  ___ ___ ___ ___ ___")));
    QCOMPARE(names, (QStringList{"ByLayer", "ByBlock", "CENTER", "Continuous", "GAS"}));
    QCOMPARE(message, QStringLiteral("2 line types were loaded."));
    QCOMPARE(selected, QStringLiteral("GAS"));
    undo();
    QVERIFY(find("GAS").isNull() && find("CENTER").isNull());
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::loadingTellsWhatIsThere()
{
    add("DOT");
    QString message;
    run({[](QDialog *dialog) { press(dialog, "loadButton"); },
         [](QDialog *dialog) {
             dialog->findChild<QListWidget *>()->selectAll();
             pressStandard(dialog, QDialogButtonBox::Ok);
         },
         [&](QDialog *dialog) {
             message = messageOf(dialog);
             close(dialog);
         }});
    QCOMPARE(message,
             QStringLiteral("32 line types were loaded.\nDOT was not loaded: the drawing has one of that name."));
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> dot(find("DOT"), ZvDb::kForRead);
    QCOMPARE(dot->patternLength(), 18.0);
}

void tst_workbench_linetypemanager::loadingAgainMayChangePatterns()
{
    const ZvDbObjectId id = add("DOT");
    QImage before;
    QImage after;
    const auto picture = [](QDialog *dialog) {
        return tableOf(dialog)->createLineTypeImage(QStringLiteral("DOT"), 250, 30).toImage();
    };
    run({[&](QDialog *dialog) {
             before = picture(dialog);
             press(dialog, "loadButton");
         },
         [](QDialog *dialog) {
             auto *list = dialog->findChild<QListWidget *>();
             list->setCurrentItem(list->findItems(QStringLiteral("DOT:"), Qt::MatchStartsWith).value(0));
             dialog->findChild<QCheckBox *>(QStringLiteral("redefineBox"))->click();
             pressStandard(dialog, QDialogButtonBox::Ok);
         },
         [&](QDialog *dialog) {
             after = picture(dialog);
             close(dialog);
         }});
    QCOMPARE(find("DOT"), id);
    QVERIFY(!after.isNull() && after != before);
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> dot(id, ZvDb::kForRead);
        QCOMPARE(dot->patternLength(), 3.0);
    }
    undo();
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> dot(id, ZvDb::kForRead);
    QCOMPARE(dot->patternLength(), 18.0);
}

void tst_workbench_linetypemanager::loadingFromAFile_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<int>("rows");
    QTest::addColumn<QString>("message");
    QTest::newRow("good") << QByteArray("*MINE,my own\nA,1,-1\n") << 1 << "";
    QTest::newRow("missing") << QByteArray() << 0 << "types.lin";
    QTest::newRow("one bad line") << QByteArray("*MINE,my own\nA,1,-1\n*BAD\nA,x\n") << 1
                                  << "line 4: \"BAD\": \"x\" is not a number";
    QTest::newRow("none good") << QByteArray("hello\n") << 0 << "line 1: there is no name before \"hello\"";
    QTest::newRow("many bad lines") << QByteArray("x\n").repeated(20) << 0 << "and 13 more";
}

void tst_workbench_linetypemanager::loadingFromAFile()
{
    QFETCH(QByteArray, content);
    QFETCH(int, rows);
    QFETCH(QString, message);
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("types.lin"));
    if (!content.isEmpty()) {
        QFile file(path);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write(content);
    }
    int listed = -1;
    QString told;
    bool ok = true;
    run({[](QDialog *dialog) { press(dialog, "loadButton"); },
         [&](QDialog *dialog) {
             replaceText(dialog, "pathEdit", path);
             listed = dialog->findChild<QListWidget *>()->count();
             told = messageOf(dialog);
             dialog->findChild<QListWidget *>()->selectAll();
             ok = dialog->findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled();
             pressStandard(dialog, ok ? QDialogButtonBox::Ok : QDialogButtonBox::Cancel);
         },
         [](QDialog *dialog) { close(dialog); }});
    QCOMPARE(listed, rows);
    if (message.isEmpty())
        QCOMPARE(told, QString());
    QVERIFY2(told.contains(message), qPrintable(told));
    QCOMPARE(ok, rows > 0);
    QCOMPARE(find("MINE").isNull(), rows == 0);
    QCOMPARE(database().canUndo(), rows > 0);
}

void tst_workbench_linetypemanager::loadingByBrowsing()
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("types.lin"));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("*MINE,my own\nA,1,-1\n");
    file.close();
    QString shown;
    run({[](QDialog *dialog) { press(dialog, "loadButton"); }, [](QDialog *dialog) { press(dialog, "browseButton"); },
         [&](QDialog *dialog) {
             auto *name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
             name->setText(path);
             QTest::keyClick(name, Qt::Key_Return);
         },
         [&](QDialog *dialog) {
             shown = dialog->findChild<QLineEdit *>(QStringLiteral("pathEdit"))->text();
             auto *list = dialog->findChild<QListWidget *>();
             QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                               list->visualItemRect(list->item(0)).center());
             QTest::mouseDClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                                list->visualItemRect(list->item(0)).center());
         },
         [](QDialog *dialog) { close(dialog); }});
    QCOMPARE(shown, path);
    QVERIFY(!find("MINE").isNull());
}

// ---- new

void tst_workbench_linetypemanager::makingANewOne()
{
    QString selected;
    run({[](QDialog *dialog) { press(dialog, "newButton"); },
         [](QDialog *dialog) {
             replaceText(dialog, "nameEdit", QStringLiteral(" Garden fence "));
             replaceText(dialog, "commentsEdit", QStringLiteral("posts and wire"));
             replaceText(dialog, "patternEdit", QStringLiteral("A,10,-2,[\"x\",STANDARD,S=2],-2"));
             QTest::keyClick(dialog, Qt::Key_Return);
         },
         [&](QDialog *dialog) {
             selected = tableOf(dialog)->getCurrLtypeData().name;
             close(dialog);
         }});
    QCOMPARE(selected, QStringLiteral("Garden fence"));
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(find("Garden fence"), ZvDb::kForRead);
        QVERIFY(record);
        QCOMPARE(toQString(record->comments()), QStringLiteral("posts and wire"));
        QCOMPARE(record->patternLength(), 14.0);
        QCOMPARE(toQString(record->dashAt(1).text), QStringLiteral("x"));
    }
    undo();
    QVERIFY(find("Garden fence").isNull());
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::aNewOneIsCheckedWhileItIsTyped_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("pattern");
    QTest::addColumn<bool>("isGood");
    QTest::addColumn<QString>("message");
    const QString badName = QStringLiteral("a name must not hold < > / \\ \" : ; ? * = ` |");
    QTest::newRow("good") << "X"
                          << "A,1,-1" << true << "";
    QTest::newRow("no name") << ""
                             << "A,1,-1" << false << "";
    QTest::newRow("a star") << "a*b"
                            << "A,1,-1" << false << badName;
    QTest::newRow("a bar") << "a|b"
                           << "A,1,-1" << false << badName;
    QTest::newRow("no number") << "X"
                               << "A,one" << false << "\"one\" is not a number";
    QTest::newRow("no pattern") << "X"
                                << "" << false << "the alignment is \"\" and not \"A\"";
}

void tst_workbench_linetypemanager::aNewOneIsCheckedWhileItIsTyped()
{
    QFETCH(QString, name);
    QFETCH(QString, pattern);
    QFETCH(bool, isGood);
    QFETCH(QString, message);
    NewLinetypeDialog dialog;
    QVERIFY(!dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled());
    replaceText(&dialog, "nameEdit", name);
    replaceText(&dialog, "patternEdit", pattern);
    QCOMPARE(dialog.findChild<QDialogButtonBox *>()->button(QDialogButtonBox::Ok)->isEnabled(), isGood);
    QCOMPARE(messageOf(&dialog), message);
}

void tst_workbench_linetypemanager::aNewOneOfANameInUse()
{
    QString told;
    run({[](QDialog *dialog) { press(dialog, "newButton"); },
         [](QDialog *dialog) {
             replaceText(dialog, "nameEdit", QStringLiteral("continuous"));
             pressStandard(dialog, QDialogButtonBox::Ok);
         },
         [&](QDialog *dialog) {
             told = messageOf(dialog);
             QTest::keyClick(dialog, Qt::Key_Escape);
         },
         [](QDialog *dialog) { close(dialog); }});
    QCOMPARE(told, QStringLiteral("the drawing has one of that name"));
    QVERIFY(!database().canUndo());
}

// ---- rename

void tst_workbench_linetypemanager::renaming()
{
    const ZvDbObjectId id = add("DASHED");
    add("ZIGZAG");
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForWrite);
        entity->setLinetype(id, true);
    }
    database().setCeltype(id);
    database().clearUndo();
    QStringList names;
    QString message = QStringLiteral("?");
    QString current;
    LtypeData data;
    run({[](QDialog *dialog) {
             clickRow(dialog, QStringLiteral("DASHED"));
             press(dialog, "renameButton");
             typeName(dialog, QStringLiteral(" zz wall line "));
         },
         [&](QDialog *dialog) {
             names = namesOf(dialog);
             message = messageOf(dialog);
             data = tableOf(dialog)->getCurrLtypeData();
             current = dialog->findChild<QLabel *>(QStringLiteral("currentLinetype"))->text();
             close(dialog);
         }});
    // The row has gone to its new place, and the record with it.
    QCOMPARE(names, (QStringList{"ByLayer", "ByBlock", "Continuous", "ZIGZAG", "zz wall line"}));
    QCOMPARE(data.name, QStringLiteral("zz wall line"));
    QCOMPARE(data.ltypeId, id);
    QCOMPARE(message, QString());
    QCOMPARE(current, QStringLiteral("Current line type: zz wall line"));
    QCOMPARE(nameOf(id), QStringLiteral("zz wall line"));
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForRead);
        QCOMPARE(toQString(entity->linetype()), QStringLiteral("zz wall line"));
    }
    undo();
    QCOMPARE(nameOf(id), QStringLiteral("DASHED"));
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::renamingIsRefused_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("message");
    const QString badName
        = QStringLiteral("\"%1\" is not a valid name: it must not be empty or hold < > / \\ \" : ; ? * = ` |");
    QTest::newRow("a name in use") << "DASHED"
                                   << "zigzag"
                                   << "There is a line type already named zigzag.";
    QTest::newRow("a name that every drawing has") << "DASHED"
                                                   << "BYLAYER"
                                                   << "There is a line type already named BYLAYER.";
    QTest::newRow("a star") << "DASHED"
                            << "a*b" << badName.arg(QStringLiteral("a*b"));
    QTest::newRow("a bar") << "DASHED"
                           << "a|b" << badName.arg(QStringLiteral("a|b"));
    QTest::newRow("blanks") << "DASHED"
                            << "  " << badName.arg(QString());
    QTest::newRow("ByLayer") << "ByLayer"
                             << "X"
                             << "ByLayer keeps its name.";
    QTest::newRow("ByBlock") << "ByBlock"
                             << "X"
                             << "ByBlock keeps its name.";
    QTest::newRow("Continuous") << "Continuous"
                                << "X"
                                << "Continuous keeps its name.";
}

void tst_workbench_linetypemanager::renamingIsRefused()
{
    QFETCH(QString, row);
    QFETCH(QString, typed);
    QFETCH(QString, message);
    add("DASHED");
    add("ZIGZAG");
    QStringList names;
    QString told;
    run({[&](QDialog *dialog) {
             clickRow(dialog, row);
             QTest::keyClick(tableOf(dialog), Qt::Key_F2);
             typeName(dialog, typed);
         },
         [&](QDialog *dialog) {
             names = namesOf(dialog);
             told = messageOf(dialog);
             close(dialog);
         }});
    QCOMPARE(names, (QStringList{"ByLayer", "ByBlock", "Continuous", "DASHED", "ZIGZAG"}));
    QCOMPARE(told, message);
    QVERIFY(!find("DASHED").isNull());
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::aRenamedOneShowsItsPicture()
{
    add("DASHED");
    QImage before;
    QImage after;
    run({[&](QDialog *dialog) {
             before = tableOf(dialog)->createLineTypeImage(QStringLiteral("DASHED"), 250, 30).toImage();
             clickRow(dialog, QStringLiteral("DASHED"));
             press(dialog, "renameButton");
             typeName(dialog, QStringLiteral("NEW"));
         },
         [&](QDialog *dialog) {
             after = tableOf(dialog)->createLineTypeImage(QStringLiteral("NEW"), 250, 30).toImage();
             close(dialog);
         }});
    QVERIFY(!before.isNull());
    QCOMPARE(after, before);
}

// ---- delete

void tst_workbench_linetypemanager::deleting()
{
    const ZvDbObjectId id = add("DASHED");
    QStringList names;
    QString message;
    run({[&](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("DASHED"));
        press(dialog, "deleteButton");
        names = namesOf(dialog);
        message = messageOf(dialog);
        close(dialog);
    }});
    QCOMPARE(names, (QStringList{"ByLayer", "ByBlock", "Continuous"}));
    QCOMPARE(message, QStringLiteral("1 line types were deleted."));
    QVERIFY(id.isErased());
    undo();
    QVERIFY(!id.isErased());
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::deletingSeveral()
{
    const ZvDbObjectId used = add("USED");
    const ZvDbObjectId free = add("FREE");
    database().setCeltype(used);
    database().clearUndo();
    QString message;
    run({[&](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("Continuous"));
        clickRow(dialog, QStringLiteral("FREE"), Qt::ControlModifier);
        clickRow(dialog, QStringLiteral("USED"), Qt::ControlModifier);
        QTest::keyClick(tableOf(dialog), Qt::Key_Delete);
        message = messageOf(dialog);
        close(dialog);
    }});
    QCOMPARE(message, QStringLiteral("1 line types were deleted.\nContinuous cannot be deleted.\nUSED is in use."));
    QVERIFY(free.isErased());
    QVERIFY(!used.isErased());
}

void tst_workbench_linetypemanager::deletingTheUnused()
{
    const ZvDbObjectId used = add("USED");
    const ZvDbObjectId first = add("FIRST");
    const ZvDbObjectId second = add("SECOND");
    database().setCeltype(used);
    database().clearUndo();
    QStringList names;
    QString message;
    run({[&](QDialog *dialog) {
        press(dialog, "unusedButton");
        names = namesOf(dialog);
        message = messageOf(dialog);
        press(dialog, "unusedButton"); // nothing is left, and no step either
        close(dialog);
    }});
    QCOMPARE(names, (QStringList{"ByLayer", "ByBlock", "Continuous", "USED"}));
    QCOMPARE(message, QStringLiteral("2 line types were deleted."));
    undo();
    QVERIFY(!first.isErased() && !second.isErased());
    QVERIFY(!database().canUndo());
}

// ---- current

void tst_workbench_linetypemanager::settingTheCurrentOne()
{
    add("DASHED");
    QString shown;
    run({[&](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("DASHED"));
        press(dialog, "currentButton");
        shown = dialog->findChild<QLabel *>(QStringLiteral("currentLinetype"))->text();
        close(dialog);
    }});
    QCOMPARE(shown, QStringLiteral("Current line type: DASHED"));
    QCOMPARE(currentName(), QStringLiteral("DASHED"));
    undo();
    QCOMPARE(currentName(), QStringLiteral("ByLayer"));
}

void tst_workbench_linetypemanager::aDoubleClickSetsTheCurrentOne()
{
    add("DASHED");
    bool stillOpen = false;
    run({[&](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("DASHED"));
        ZvQtLinetypeTableView *table = tableOf(dialog);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                           table->visualRect(table->currentIndex()).center());
        stillOpen = dialog->isVisible();
        close(dialog);
    }});
    QVERIFY(stillOpen);
    QCOMPARE(currentName(), QStringLiteral("DASHED"));
}

// ---- records at odds with the table

void tst_workbench_linetypemanager::aRecordThatIsOpenElsewhere()
{
    const ZvDbObjectId id = add("DASHED");
    QString renamed;
    QString deleted;
    run({[&](QDialog *dialog) {
             clickRow(dialog, QStringLiteral("DASHED"));
             press(dialog, "renameButton");
             const ZvDbObjectPointer<ZvDbLinetypeTableRecord> held(id, ZvDb::kForRead);
             typeName(dialog, QStringLiteral("NEW"));
             renamed = messageOf(dialog);
             press(dialog, "deleteButton");
             deleted = messageOf(dialog);
         },
         [](QDialog *dialog) { close(dialog); }});
    QCOMPARE(renamed, QStringLiteral("DASHED cannot be changed now."));
    QCOMPARE(deleted, QStringLiteral("0 line types were deleted.\nDASHED cannot be deleted."));
    QCOMPARE(nameOf(id), QStringLiteral("DASHED"));
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::anErasedRecord()
{
    const ZvDbObjectId id = add("DASHED");
    QString renamed;
    QString deleted;
    run({[&](QDialog *dialog) {
             {
                 const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForWrite);
                 record->erase();
             }
             clickRow(dialog, QStringLiteral("DASHED"));
             press(dialog, "renameButton");
             typeName(dialog, QStringLiteral("NEW"));
             renamed = messageOf(dialog);
             press(dialog, "deleteButton");
             deleted = messageOf(dialog);
             press(dialog, "currentButton");
         },
         [](QDialog *dialog) { close(dialog); }});
    QCOMPARE(renamed, QStringLiteral("DASHED cannot be changed now."));
    QCOMPARE(deleted, QStringLiteral("0 line types were deleted.\nDASHED cannot be deleted."));
    QCOMPARE(currentName(), QStringLiteral("ByLayer"));
}

// ---- keys

void tst_workbench_linetypemanager::keysWorkTheTable()
{
    for (const char *name : {"A", "B", "C"})
        add(name);
    QStringList visited;
    bool hasEditor = false;
    run({[&](QDialog *dialog) {
             ZvQtLinetypeTableView *table = tableOf(dialog);
             for (const Qt::Key key : {Qt::Key_Home, Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_End, Qt::Key_Down,
                                       Qt::Key_Up, Qt::Key_PageUp, Qt::Key_PageDown}) {
                 QTest::keyClick(table, key);
                 visited.append(table->getCurrLtypeData().name);
             }
             QTest::keyClick(table, Qt::Key_F2);
             hasEditor = table->viewport()->findChild<QLineEdit *>() != nullptr;
             typeName(dialog, QStringLiteral("D"));
             QTest::keyClick(table, Qt::Key_Delete);
         },
         [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }});
    QCOMPARE(
        visited,
        (QStringList{"ByLayer", "ByLayer", "ByBlock", "A", "Continuous", "Continuous", "C", "ByLayer", "Continuous"}));
    QVERIFY(hasEditor);
}

void tst_workbench_linetypemanager::enterCommitsTheEditorAndNoMore()
{
    add("DASHED");
    bool stillOpen = false;
    run({[&](QDialog *dialog) {
             clickRow(dialog, QStringLiteral("DASHED"));
             press(dialog, "renameButton");
             typeName(dialog, QStringLiteral("NEW"));
         },
         [&](QDialog *dialog) {
             stillOpen = dialog->isVisible();
             close(dialog);
         }});
    QVERIFY(stillOpen);
    QVERIFY(!find("NEW").isNull());
    QCOMPARE(currentName(), QStringLiteral("ByLayer"));
}

void tst_workbench_linetypemanager::enterInTheTable()
{
    add("DASHED");
    bool stillOpen = false;
    run({[&](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("DASHED"));
        QTest::keyClick(tableOf(dialog), Qt::Key_Return);
        stillOpen = dialog->isVisible();
        close(dialog);
    }});
    QVERIFY(stillOpen);
    QCOMPARE(currentName(), QStringLiteral("DASHED"));
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    bag->SetDataS("curSelName", "DASHED");
    ModalDriver driver;
    driver.next([](QDialog *dialog) { QTest::keyClick(tableOf(dialog), Qt::Key_Enter); });
    service()->manageLinetypes(&database(), bag);
    QVERIFY(driver.finished());
    QVERIFY(bag->hasKey("ltypeId"));
}

void tst_workbench_linetypemanager::escapeGivesUpTheEditorFirst()
{
    add("DASHED");
    bool stillOpen = false;
    run({[&](QDialog *dialog) {
             clickRow(dialog, QStringLiteral("DASHED"));
             press(dialog, "renameButton");
             auto *editor = tableOf(dialog)->viewport()->findChild<QLineEdit *>();
             QTest::keyClicks(editor, QStringLiteral("NEW"));
             QTest::keyClick(editor, Qt::Key_Escape);
             stillOpen = dialog->isVisible();
         },
         [](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); }});
    QVERIFY(stillOpen);
    QVERIFY(!find("DASHED").isNull());
}

// ---- the service

void tst_workbench_linetypemanager::theServiceGivesTheAnswer()
{
    const ZvDbObjectId id = add("DASHED");
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    bag->SetDataS("curSelName", "continuous");
    QString selected;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        selected = tableOf(dialog)->getCurrLtypeData().name;
        clickRow(dialog, QStringLiteral("DASHED"));
        pressStandard(dialog, QDialogButtonBox::Ok);
    });
    service()->manageLinetypes(&database(), bag);
    QVERIFY(driver.finished());
    QCOMPARE(selected, QStringLiteral("Continuous"));
    int idx = -1;
    ZvString name;
    std::uint64_t chosen = 0;
    QVERIFY(bag->GetDataI("idx", idx));
    QVERIFY(bag->GetDataSW("ltypeName", name));
    QVERIFY(bag->GetDataId("ltypeId", chosen));
    QCOMPARE(idx, 3);
    QCOMPARE(toQString(name), QStringLiteral("DASHED"));
    QCOMPARE(chosen, id.asInt64());
    QCOMPARE(currentName(), QStringLiteral("ByLayer")); // choosing is not setting
}

void tst_workbench_linetypemanager::theServiceWhenTheUserGivesUp()
{
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    bag->SetDataS("curSelName", "no such name");
    QString selected;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        selected = tableOf(dialog)->getCurrLtypeData().name;
        pressStandard(dialog, QDialogButtonBox::Cancel);
    });
    service()->manageLinetypes(&database(), bag);
    QVERIFY(driver.finished());
    QCOMPARE(selected, QStringLiteral("ByLayer"));
    QCOMPARE(bag->elementCount(), 1);
}

void tst_workbench_linetypemanager::theServiceRefusesABlankPress()
{
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    QStringList texts;
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        ZvQtLinetypeTableView *table = tableOf(dialog);
        QTest::mouseClick(table->viewport(), Qt::LeftButton, Qt::NoModifier, {20, table->viewport()->height() - 5});
        pressStandard(dialog, QDialogButtonBox::Ok);
    });
    driver.next([&](QDialog *dialog) {
        const QList<QLabel *> labels = dialog->findChildren<QLabel *>();
        for (const QLabel *label : labels)
            texts.append(label->text());
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    driver.next([](QDialog *dialog) { pressStandard(dialog, QDialogButtonBox::Cancel); });
    service()->manageLinetypes(&database(), bag);
    QVERIFY(driver.finished());
    QVERIFY(texts.contains(QStringLiteral("请选择单个线型。")));
    QCOMPARE(bag->elementCount(), 0);
}

void tst_workbench_linetypemanager::theServiceTakesADoubleClick()
{
    add("DASHED");
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("DASHED"));
        ZvQtLinetypeTableView *table = tableOf(dialog);
        QTest::mouseDClick(table->viewport(), Qt::LeftButton, Qt::NoModifier,
                           table->visualRect(table->currentIndex()).center());
    });
    service()->manageLinetypes(&database(), bag);
    QVERIFY(driver.finished());
    ZvString name;
    bag->GetDataSW("ltypeName", name);
    QCOMPARE(toQString(name), QStringLiteral("DASHED"));
}

void tst_workbench_linetypemanager::theServiceInsideAnotherStep()
{
    const ZvDbObjectId id = add("DASHED");
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        clickRow(dialog, QStringLiteral("DASHED"));
        press(dialog, "currentButton");
        press(dialog, "renameButton");
        typeName(dialog, QStringLiteral("NEW"));
    });
    driver.next([](QDialog *dialog) { pressStandard(dialog, QDialogButtonBox::Ok); });
    {
        const UndoStep step(database(), "OTHER");
        service()->manageLinetypes(&database(), bag);
    }
    QVERIFY(driver.finished());
    QCOMPARE(currentName(), QStringLiteral("NEW"));
    undo();
    QCOMPARE(nameOf(id), QStringLiteral("DASHED"));
    QCOMPARE(currentName(), QStringLiteral("ByLayer"));
    QVERIFY(!database().canUndo());
}

void tst_workbench_linetypemanager::theServiceWithoutDrawingOrBag()
{
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    ModalDriver driver;
    service()->manageLinetypes(nullptr, bag);
    service()->manageLinetypes(&database(), nullptr);
    QVERIFY(driver.finished());
    QCOMPARE(bag->elementCount(), 0);
}

void tst_workbench_linetypemanager::theServiceIsGoneWithTheProgram()
{
    QVERIFY(service());
    m_session.reset();
    QVERIFY(!service());
}

// ---- the file

void tst_workbench_linetypemanager::allIsSavedAndReadBack()
{
    add("GOING");
    run({[](QDialog *dialog) { press(dialog, "loadButton"); },
         [](QDialog *dialog) {
             auto *list = dialog->findChild<QListWidget *>();
             list->setCurrentItem(list->findItems(QStringLiteral("WATER:"), Qt::MatchStartsWith).value(0));
             pressStandard(dialog, QDialogButtonBox::Ok);
         },
         [](QDialog *dialog) {
             press(dialog, "renameButton"); // of what was loaded
             typeName(dialog, QStringLiteral("冷水"));
         },
         [](QDialog *dialog) {
             press(dialog, "currentButton");
             press(dialog, "unusedButton");
             close(dialog);
         }});
    const QTemporaryDir folder;
    const ZvString path = toZvString(folder.filePath(QStringLiteral("saved.dxf")));
    ZvDbFileReport report;
    QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), path, report), Zv::eOk);
    const ZvDbDatabasePtr reread = ZvDbDatabase::create();
    QCOMPARE(reread->readFile(path, report), Zv::eOk);
    QCOMPARE(nameOf(reread->celtype()), QStringLiteral("冷水"));
    const ZvDbObjectPointer<ZvDbLinetypeTable> table(reread->linetypeTableId(), ZvDb::kForRead);
    QVERIFY(table->getIdAt("GOING").isNull());
    QVERIFY(table->getIdAt("WATER").isNull());
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> water(reread->celtype(), ZvDb::kForRead);
    QCOMPARE(toQString(water->comments()), QStringLiteral("Water  ----W----W----W----"));
    QCOMPARE(water->numDashes(), 3);
    QCOMPARE(toQString(water->dashAt(1).text), QStringLiteral("W"));
}

ZEVA_TEST_MAIN(tst_workbench_linetypemanager)
#include "tst_workbench_linetypemanager.moc"
