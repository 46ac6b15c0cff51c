// SPDX-License-Identifier: MIT
// The file dialog without its panes: parameters, filters, the checks on a name, the results.
#include "dialogbag.h"
#include "filedialogrun.h"
#include "zevatest.h"

#include "base/zvconfig.h"

#include <QAbstractItemView>
#include <QLayout>
#include <QSplitter>
#include <QStandardPaths>
#include <QTreeView>

#include <cerrno>
#include <memory>

namespace {

const QString kDrawings = QStringLiteral("Drawings (*.abc)");
const QString kPictures = QStringLiteral("Pictures (*.xyz)");
const QString kTemplates = QStringLiteral("Templates (*.dwt)");
const QString kAll = QStringLiteral("All (*.*)");
const QString kTwo = kDrawings + ";;" + kPictures;
const QString kOk = QStringLiteral("确定");
const QString kCancel = QStringLiteral("取消");
const QString kYes = QStringLiteral("是");
const QString kNo = QStringLiteral("否");
const QString kClose = QStringLiteral("关闭");

void setTemplatePaths(const QStringList &paths)
{
    const ZvJsonPtr settings = ElementValue::createObject(IElementValueBase::kObject);
    if (!paths.isEmpty())
        setTexts(settings, "templatePaths", paths);
    zv_runtime_settings()->SetDataJ("paths", settings);
}

/// The names in the list that the user sees.
QStringList listedNames(const QFileDialog *dialog)
{
    const auto *tree = dialog->findChild<QTreeView *>(QStringLiteral("treeView"));
    QStringList names;
    for (int row = 0; row < tree->model()->rowCount(tree->rootIndex()); ++row)
        names << tree->model()->index(row, 0, tree->rootIndex()).data().toString();
    return names;
}

void pressOpen(QDialog *dialog)
{
    const auto *buttons = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    QTest::mouseClick(buttons->button(QDialogButtonBox::Open), Qt::LeftButton);
}

} // namespace

class TestQtFileDialog : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void cleanupTestCase();
    void init();
    void cleanup();

    void bothNamesGiveTheSameDialog_data();
    void bothNamesGiveTheSameDialog();
    void formIsQtsOwnDressedUp();
    void sizesLeaveRoomForThePanes();
    void modesFollowTheKeys_data();
    void modesFollowTheKeys();
    void oddParametersAreTakenAsDefaults_data();
    void oddParametersAreTakenAsDefaults();
    void aFileDialogNeedsItsDialog();

    void filterIsPreselected_data();
    void filterIsPreselected();
    void listShowsTheFilesOfThePreselectedFilter();
    void startFolderComesFromDir_data();
    void startFolderComesFromDir();
    void proposedNameTakesTheFiltersExtension_data();
    void proposedNameTakesTheFiltersExtension();
    void proposedNameAmongOtherKeys_data();
    void proposedNameAmongOtherKeys();
    void pickedFilterChangesTheExtension_data();
    void pickedFilterChangesTheExtension();
    void templateFilterGoesToTheTemplates_data();
    void templateFilterGoesToTheTemplates();
    void anotherFilterDoesNotGoBack();

    void missingFileIsRefused();
    void openedFilesAreTold_data();
    void openedFilesAreTold();
    void ofSeveralFilesOnlyTheFirstIsTested_data();
    void ofSeveralFilesOnlyTheFirstIsTested();
    void aFolderIsEntered();

    void aNameWithoutTextDoesNothing_data();
    void aNameWithoutTextDoesNothing();
    void refusedCharacters_data();
    void refusedCharacters();
    void nameLength_data();
    void nameLength();
    void savedNameTakesTheExtension_data();
    void savedNameTakesTheExtension();
    void existingFileIsAskedFor_data();
    void existingFileIsAskedFor();
    void theCheckedNameIsTheTrimmedOne();
    void aFolderWithoutRightsNeverClosesTheDialog_data();
    void aFolderWithoutRightsNeverClosesTheDialog();
    void aRefusedPathShowsTheDialogAgain();
    void aFullDiskIsNoMatterOfTheDialog();

    void cancelWritesOnlyTheCode_data();
    void cancelWritesOnlyTheCode();
    void acceptedRunsWriteTheirKeys();
    void lastFilterComesBackByItsIndex();
    void endDialogBeatsTheButtons();
    void nothingIsKeptBetweenRuns();
    void theUsersNotesOfQtStay();
    void notesOfOtherProgramsStay();

    void namesOfTheWorldAreListedAndTaken();
    void tenThousandFilesAreListed();
    void anUnreadableFolderIsEmpty();
    void linksThatGoRoundAreSurvived();

private:
    std::unique_ptr<ModuleSession> m_session;
    std::unique_ptr<FileTree> m_tree;
    std::unique_ptr<DialogPictures> m_pictures; // of the messages
};

void TestQtFileDialog::initTestCase()
{
    m_pictures = std::make_unique<DialogPictures>();
    QVERIFY(m_pictures->isReady);
}

void TestQtFileDialog::cleanupTestCase()
{
    m_pictures.reset();
}

void TestQtFileDialog::init()
{
    ZevaTest::init();
    m_session = std::make_unique<ModuleSession>();
    m_tree = std::make_unique<FileTree>();
    // No test waits for the tool that lists mount points, and none depends on this machine's.
    m_tree->addFile("bin/lsblk", "#!/bin/sh\necho MOUNTPOINT\n");
    QFile::setPermissions(m_tree->path("bin/lsblk"), QFileDevice::Permissions(0x7755));
    qputenv("PATH", m_tree->path("bin").toUtf8() + ":/usr/bin:/bin");
}

void TestQtFileDialog::cleanup()
{
    m_tree.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void TestQtFileDialog::bothNamesGiveTheSameDialog_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("FileDialogBox") << QByteArray("FileDialogBox");
    QTest::newRow("FileNavDialogBox") << QByteArray("FileNavDialogBox");
    QTest::newRow("lower case") << QByteArray("filenavdialogbox");
}

void TestQtFileDialog::bothNamesGiveTheSameDialog()
{
    QFETCH(QByteArray, name);
    const FileDialog box({{"caption", "Save"}, {"filter", kTwo}, {"dir", m_tree->addFolder("out")}}, name);
    QVERIFY(box.isReady);
    QCOMPARE(zvrxNumRefs(box.adapter), 1);
    QCOMPARE(box.adapter->isA(), ZvUiModeDialogBase::desc());
    QCOMPARE(box.adapter->getDlg(), nullptr);
    QCOMPARE(box.dialog->metaObject()->className(), "ZvQtFileDialogImpl");
    QVERIFY(box.dialog->isModal());
    QVERIFY(box.places());
    ModalDriver driver;
    driver.next(typeAndAccept("plan"));
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(textOf(box.result(), "filePath"), m_tree->path("out/plan.abc"));
}

void TestQtFileDialog::formIsQtsOwnDressedUp()
{
    FileDialog box({{"caption", QStringLiteral("打开图形")}, {"Open", true}});
    box.show();
    QCOMPARE(box.dialog->windowTitle(), QStringLiteral("打开图形"));
    QVERIFY(box.dialog->testOption(QFileDialog::DontUseNativeDialog));
    QCOMPARE(box.dialog->viewMode(), QFileDialog::Detail);
    QCOMPARE(box.dialog->minimumSize(), QSize(820, 485));
    const auto *buttons = box.dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
    QCOMPARE(buttons->button(QDialogButtonBox::Cancel)->text(), kCancel);
    QList<QUrl> places;
    for (const auto place :
         {QStandardPaths::DesktopLocation, QStandardPaths::DocumentsLocation, QStandardPaths::ApplicationsLocation})
        places << QUrl::fromLocalFile(QStandardPaths::writableLocation(place));
    QCOMPARE(box.dialog->sidebarUrls(), places);
}

void TestQtFileDialog::sizesLeaveRoomForThePanes()
{
    FileDialog box(BagKeys{});
    box.show();
    const auto *splitter = box.dialog->findChild<QSplitter *>(QStringLiteral("splitter"));
    int end = 0;
    for (int i = 0; i < splitter->count(); ++i) {
        const QWidget *pane = splitter->widget(i);
        if (pane->isHidden())
            continue;
        QVERIFY2(pane->x() >= end, pane->metaObject()->className());
        end = pane->x() + pane->width();
        QVERIFY(pane->height() <= splitter->height());
    }
    QVERIFY(end <= splitter->width());
}

void TestQtFileDialog::modesFollowTheKeys_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<bool>("several");
    QTest::addColumn<int>("fileMode");
    QTest::newRow("open one: any name may be typed") << true << false << int(QFileDialog::AnyFile);
    QTest::newRow("open several") << true << true << int(QFileDialog::ExistingFiles);
    QTest::newRow("save") << false << false << int(QFileDialog::AnyFile);
    QTest::newRow("save, asked for several") << false << true << int(QFileDialog::AnyFile);
}

void TestQtFileDialog::modesFollowTheKeys()
{
    QFETCH(bool, opens);
    QFETCH(bool, several);
    QFETCH(int, fileMode);
    const FileDialog box({{"Open", opens}, {"MutiFile", several}, {"defFilter", kDrawings}, {"filter", kTwo}});
    QCOMPARE(box.dialog->acceptMode(), opens ? QFileDialog::AcceptOpen : QFileDialog::AcceptSave);
    QCOMPARE(int(box.dialog->fileMode()), fileMode);
    QCOMPARE(box.dialog->defaultSuffix(), opens ? QString() : kDrawings); // the whole text, as it stands
}

void TestQtFileDialog::oddParametersAreTakenAsDefaults_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("null tree") << 0;
    QTest::newRow("empty tree") << 1;
    QTest::newRow("null nodes") << 2;
    QTest::newRow("arrays where strings are expected") << 3;
    QTest::newRow("trees where values are expected") << 4;
    QTest::newRow("an array as the tree") << 5;
}

void TestQtFileDialog::oddParametersAreTakenAsDefaults()
{
    QFETCH(int, kind);
    ZvJsonPtr params = kind > 0 ? ElementValue::createObject(kind == 5 ? 1 : 2) : ZvJsonPtr();
    if (kind > 1 && kind < 5) {
        for (const char *key : {"caption", "dir", "filter", "Open", "MutiFile", "defFilter", "HideExtend", "BoxHide",
                                "saveDefName", "useFilterIdx"}) {
            params->SetDataJ(key, kind == 2 ? ZvJsonPtr() : ElementValue::createObject(kind == 3 ? 1 : 2));
            if (kind == 3)
                setTexts(params, key, {"one", "two (*.abc)"});
        }
    }
    const FileDialog box(params);
    QVERIFY(box.isReady);
    QCOMPARE(box.dialog->windowTitle(), QString());
    QCOMPARE(box.dialog->acceptMode(), QFileDialog::AcceptSave);
    QCOMPARE(box.dialog->directory().path(), QDir::currentPath());
    QCOMPARE(box.edit()->text(), QString());
    QVERIFY(box.places());
    ModalDriver driver;
    driver.next(pressEscape);
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
}

void TestQtFileDialog::aFileDialogNeedsItsDialog()
{
    // The parent takes the dialog along while the adapter lives on.
    auto parent = std::make_unique<QWidget>();
    const ZvUiDialogBasePtr adapter = ModuleSession::createDialog(L"FileDialogBox", parent.get());
    QVERIFY(adapter->onInit(makeBag({}), nullptr));
    parent.reset();
    QVERIFY(!adapter->onInit(makeBag({}), nullptr));
    QCOMPARE(adapter->doModal(), -1);
    adapter->endDialog(1);
    QCOMPARE(adapter->doModal(), 1); // nothing to run: the code that was given
    QCOMPARE(keysOf(adapter->getResult()), QStringList{"result"});
}

void TestQtFileDialog::filterIsPreselected_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QString>("defFilter");
    QTest::addColumn<int>("useFilterIdx");
    QTest::addColumn<int>("index");
    const QString repeated = kDrawings + ";;" + kPictures + ";;" + kPictures;
    QTest::newRow("open, by its text") << true << kTwo << kPictures << 0 << 1;
    QTest::newRow("open, the index is not asked") << true << kTwo << kDrawings << 1 << 0;
    QTest::newRow("open, unknown text") << true << kTwo << "Plans (*.pln)" << 1 << 0;
    QTest::newRow("open, text in another case") << true << kTwo << "pictures (*.xyz)" << 0 << 0;
    QTest::newRow("open, part of the text") << true << kTwo << "Pictures" << 0 << 0;
    QTest::newRow("open, no text") << true << kTwo << "" << 0 << 0;
    QTest::newRow("save, by its index") << false << kTwo << "" << 1 << 1;
    QTest::newRow("save, the index beats the text") << false << kTwo << kPictures << 0 << 0;
    QTest::newRow("save, second of two alike") << false << repeated << "" << 2 << 2;
    QTest::newRow("save, index out of range") << false << kTwo << "" << 7 << -1;
    QTest::newRow("save, index below zero") << false << kTwo << "" << -1 << -1;
    QTest::newRow("save, filter without parentheses") << false << "*.abc;;*.xyz"
                                                      << "" << 1 << 1;
    QTest::newRow("no filter at all") << true << ""
                                      << "" << 0 << 0;
}

void TestQtFileDialog::filterIsPreselected()
{
    QFETCH(bool, opens);
    QFETCH(QString, filter);
    QFETCH(QString, defFilter);
    QFETCH(int, useFilterIdx);
    QFETCH(int, index);
    const FileDialog box(
        {{"Open", opens}, {"filter", filter}, {"defFilter", defFilter}, {"useFilterIdx", useFilterIdx}});
    QCOMPARE(box.filters()->currentIndex(), filter.isEmpty() ? -1 : index);
    QCOMPARE(box.filters()->count(), filter.isEmpty() ? 0 : filter.split(";;").size());
}

void TestQtFileDialog::listShowsTheFilesOfThePreselectedFilter()
{
    m_tree->addFile("d/one.abc");
    m_tree->addFile("d/two.xyz");
    FileDialog box({{"filter", kTwo}, {"useFilterIdx", 1}, {"dir", m_tree->path("d/three.abc")}});
    QCOMPARE(box.edit()->text(), QStringLiteral("three.abc")); // nobody has changed the filter yet
    box.show();
    QTRY_COMPARE(listedNames(box.dialog), QStringList{"two.xyz"});
}

void TestQtFileDialog::startFolderComesFromDir_data()
{
    QTest::addColumn<QString>("dir"); // "%1" is the tree
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("name");
    QTest::newRow("empty: the current one") << ""
                                            << ""
                                            << "";
    QTest::newRow("folder") << "%1/out"
                            << "%1/out"
                            << "";
    QTest::newRow("folder with a slash") << "%1/out/"
                                         << "%1/out"
                                         << "";
    QTest::newRow("backslashes") << "%1\\out"
                                 << "%1/out"
                                 << "";
    QTest::newRow("file that is there") << "%1/out/a.abc"
                                        << "%1/out"
                                        << "a.abc";
    QTest::newRow("file that is not there") << "%1/out/new.abc"
                                            << "%1/out"
                                            << "new.abc";
    QTest::newRow("file with backslashes") << "%1\\out\\a.abc"
                                           << "%1/out"
                                           << "a.abc";
    QTest::newRow("Chinese") << QStringLiteral("%1/图纸/平面图.abc") << QStringLiteral("%1/图纸")
                             << QStringLiteral("平面图.abc");
    QTest::newRow("name alone") << "lonely.abc"
                                << "(any)"
                                << "lonely.abc";
    QTest::newRow("folder that is not there") << "%1/none/"
                                              << "(any)"
                                              << "";
}

void TestQtFileDialog::startFolderComesFromDir()
{
    QFETCH(QString, dir);
    QFETCH(QString, folder);
    QFETCH(QString, name);
    m_tree->addFile("out/a.abc");
    m_tree->addFile(QStringLiteral("图纸/平面图.abc"));
    FileDialog box({{"dir", dir.replace("%1", m_tree->path())}, {"filter", kTwo}});
    box.show();
    if (folder != QLatin1String("(any)"))
        QCOMPARE(box.dialog->directory().path(),
                 folder.isEmpty() ? QDir::currentPath() : folder.replace("%1", m_tree->path()));
    QCOMPARE(box.edit()->text(), name);
}

void TestQtFileDialog::proposedNameTakesTheFiltersExtension_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<bool>("opens");
    QTest::addColumn<QString>("shown");
    QTest::newRow("extension is dropped") << "plan.old" << kTwo << false << "plan.abc";
    QTest::newRow("no extension") << "plan" << kTwo << false << "plan.abc";
    QTest::newRow("only the last extension") << "plan.tar.gz" << kTwo << false << "plan.tar.abc";
    QTest::newRow("folder is dropped") << "/x/y/plan.old" << kTwo << false << "plan.abc";
    QTest::newRow("Chinese") << QStringLiteral("平面图.dwg") << kTwo << false << QStringLiteral("平面图.abc");
    QTest::newRow("several patterns: the last") << "plan"
                                                << "All kinds (*.abc *.def)" << false << "plan.def";
    QTest::newRow("filter without extension") << "plan"
                                              << "All (*)" << false << "";
    QTest::newRow("filter without parentheses") << "plan"
                                                << "*.abc" << false << "";
    QTest::newRow("dot behind the parenthesis") << "plan"
                                                << "All (*) etc." << false << "";
    QTest::newRow("empty name") << "" << kTwo << false << "";
    QTest::newRow("open dialog") << "plan" << kTwo << true << "";
}

void TestQtFileDialog::proposedNameTakesTheFiltersExtension()
{
    QFETCH(QString, name);
    QFETCH(QString, filter);
    QFETCH(bool, opens);
    QFETCH(QString, shown);
    const FileDialog box(
        {{"saveDefName", name}, {"filter", filter}, {"Open", opens}, {"dir", m_tree->addFolder("out")}});
    QCOMPARE(box.edit()->text(), shown);
    QCOMPARE(box.dialog->directory().path(), m_tree->path("out"));
}

void TestQtFileDialog::proposedNameAmongOtherKeys_data()
{
    QTest::addColumn<BagKeys>("keys");
    QTest::addColumn<QString>("shown");
    QTest::newRow("the extension is that of \"defFilter\"") << BagKeys{{"defFilter", kPictures}} << "plan.xyz";
    QTest::newRow("\"useFilterIdx\" comes too late for it") << BagKeys{{"useFilterIdx", 1}} << "plan.abc";
    QTest::newRow("a file in \"dir\" takes its place")
        << BagKeys{{"dir", QDir::tempPath() + "/other.xyz"}} << "other.xyz";
}

void TestQtFileDialog::proposedNameAmongOtherKeys()
{
    QFETCH(BagKeys, keys);
    QFETCH(QString, shown);
    keys << BagKey("saveDefName", "plan.old") << BagKey("filter", kTwo);
    const FileDialog box(keys);
    QCOMPARE(box.edit()->text(), shown);
}

void TestQtFileDialog::pickedFilterChangesTheExtension_data()
{
    QTest::addColumn<BagKeys>("keys");
    QTest::addColumn<int>("pick");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("shown");
    const QString three = QStringLiteral("Any (*);;") + kTwo;
    const QString withAll = kTwo + ";;" + kAll;
    const BagKeys two{{"filter", kTwo}};
    QTest::newRow("exchanged") << two << 1 << "plan.abc"
                               << "plan.xyz";
    QTest::newRow("added") << two << 1 << "plan"
                           << "plan.xyz";
    QTest::newRow("Chinese name") << two << 1 << QStringLiteral("平面图.abc") << QStringLiteral("平面图.xyz");
    QTest::newRow("only the last one") << two << 1 << "plan.v2.abc"
                                       << "plan.v2.xyz";
    QTest::newRow("empty name") << two << 1 << ""
                                << "";
    QTest::newRow("open dialog") << BagKeys{{"filter", kTwo}, {"Open", true}} << 1 << "plan"
                                 << "plan";
    QTest::newRow("several wanted") << BagKeys{{"filter", kTwo}, {"MutiFile", true}} << 1 << "plan"
                                    << "plan";
    QTest::newRow("without extension: the next entry's")
        << BagKeys{{"filter", three}, {"useFilterIdx", 1}} << 0 << "plan"
        << "plan.abc";
    QTest::newRow("without extension, the last entry")
        << BagKeys{{"filter", kDrawings + ";;Any (*)"}} << 1 << "plan.abc"
        << "plan.abc";
    QTest::newRow("all files, no filter to fall back on") << BagKeys{{"filter", withAll}} << 2 << "plan.abc"
                                                          << "plan.*";
    QTest::newRow("all files, fall back") << BagKeys{{"filter", withAll}, {"defFilter", kPictures}} << 2 << "plan.abc"
                                          << "plan.xyz";
    QTest::newRow("without extension, the next entry's is all files: fall back")
        << BagKeys{{"filter", "Any (*);;" + kAll}, {"defFilter", kPictures}, {"useFilterIdx", 1}} << 0 << "plan"
        << "plan.xyz";
    QTest::newRow("that of the templates") << BagKeys{{"filter", kDrawings + ";;" + kTemplates}} << 1 << "plan"
                                           << "plan.dwt";
    QTest::newRow("several patterns: the last")
        << BagKeys{{"filter", kDrawings + ";;Both (*.abc *.def)"}} << 1 << "plan"
        << "plan.def";
    QTest::newRow("last character goes, parenthesis or not")
        << BagKeys{{"filter", kDrawings + ";;*.xyz"}} << 1 << "plan"
        << "plan.xy";
}

void TestQtFileDialog::pickedFilterChangesTheExtension()
{
    QFETCH(BagKeys, keys);
    QFETCH(int, pick);
    QFETCH(QString, typed);
    QFETCH(QString, shown);
    keys.append({"dir", m_tree->addFolder("out")});
    const FileDialog box(keys);
    QString after;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        typeName(dialog, typed);
        pickFilter(dialog, pick);
        after = box.edit()->text();
        pressEscape(dialog);
    });
    box.adapter->doModal();
    QVERIFY(driver.finished());
    QCOMPARE(after, shown);
}

void TestQtFileDialog::templateFilterGoesToTheTemplates_data()
{
    QTest::addColumn<bool>("opens");
    QTest::addColumn<QString>("filter");
    QTest::addColumn<QStringList>("paths"); // "%1" is the tree
    QTest::addColumn<bool>("goes");
    const QStringList one{"%1/templates"};
    QTest::newRow("open") << true << kTemplates << one << true;
    QTest::newRow("save") << false << kTemplates << one << true;
    QTest::newRow("path with a slash") << true << kTemplates << QStringList{"%1/templates/"} << true;
    QTest::newRow("the first of two paths") << true << kTemplates << QStringList{"%1/templates", "%1/out"} << true;
    QTest::newRow("among other patterns") << true << "Both (*.dwg *.dwt)" << one << true;
    QTest::newRow("upper case is another filter") << true << "Templates (*.DWT)" << one << false;
    QTest::newRow("no paths") << true << kTemplates << QStringList() << false;
}

void TestQtFileDialog::templateFilterGoesToTheTemplates()
{
    QFETCH(bool, opens);
    QFETCH(QString, filter);
    QFETCH(QStringList, paths);
    QFETCH(bool, goes);
    m_tree->addFolder("templates");
    setTemplatePaths(paths.replaceInStrings("%1", m_tree->path()));
    const FileDialog box({{"Open", opens}, {"filter", kDrawings + ";;" + filter}, {"dir", m_tree->addFolder("out")}});
    QString folder;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        pickFilter(dialog, 1);
        folder = box.dialog->directory().path();
        pressEscape(dialog);
    });
    box.adapter->doModal();
    setTemplatePaths({});
    QVERIFY(driver.finished());
    QCOMPARE(folder, m_tree->path(goes ? "templates" : "out"));
}

void TestQtFileDialog::anotherFilterDoesNotGoBack()
{
    m_tree->addFolder("templates");
    setTemplatePaths({m_tree->path("templates")});
    const FileDialog box({{"filter", kDrawings + ";;" + kTemplates}, {"dir", m_tree->addFolder("out")}});
    QString folder;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        pickFilter(dialog, 1);
        pickFilter(dialog, 0);
        folder = box.dialog->directory().path();
        pressEscape(dialog);
    });
    box.adapter->doModal();
    setTemplatePaths({});
    QVERIFY(driver.finished());
    QCOMPARE(folder, m_tree->path("templates"));
}

void TestQtFileDialog::missingFileIsRefused()
{
    const FileDialog box(
        {{"caption", QStringLiteral("打开")}, {"Open", true}, {"filter", kTwo}, {"dir", m_tree->addFolder("out")}});
    SeenBox seen;
    bool staysOpen = false;
    ModalDriver driver;
    driver.next(typeAndAccept("missing.abc"));
    driver.next(answerBox(seen, kClose));
    driver.next([&](QDialog *dialog) {
        staysOpen = dialog == box.dialog && box.edit()->text() == QLatin1String("missing.abc");
        pressEscape(dialog);
    });
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QVERIFY(staysOpen);
    QVERIFY(!seen.icon.isValid());
    QCOMPARE(seen.title, QStringLiteral("打开未找到文件"));
    QCOMPARE(seen.text, QStringLiteral("missing.abc\n文件名无效"));
    QCOMPARE(seen.buttons, QStringList{QStringLiteral("关闭(&C)")});
}

void TestQtFileDialog::openedFilesAreTold_data()
{
    QTest::addColumn<bool>("several");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QStringList>("files");
    QTest::addColumn<int>("filter");
    QTest::newRow("one") << false << "a.abc" << QStringList{"a.abc"} << 0;
    QTest::newRow("Chinese") << false << QStringLiteral("平面图.abc") << QStringList{QStringLiteral("平面图.abc")} << 0;
    QTest::newRow("blanks in the name") << false << "two words.abc" << QStringList{"two words.abc"} << 0;
    QTest::newRow("several wanted, one taken") << true << "a.abc" << QStringList{"a.abc"} << 0;
    QTest::newRow("several") << true << "\"b.abc\" \"a.abc\"" << QStringList{"b.abc", "a.abc"} << 0;
    QTest::newRow("of the filter that was picked") << false << "a.xyz" << QStringList{"a.xyz"} << 1;
}

void TestQtFileDialog::openedFilesAreTold()
{
    QFETCH(bool, several);
    QFETCH(QString, typed);
    QFETCH(QStringList, files);
    QFETCH(int, filter);
    QStringList told;
    for (const QString &file : files)
        told << file + QLatin1Char('|') + m_tree->addFile("in/" + file);
    const FileDialog box({{"Open", true}, {"MutiFile", several}, {"filter", kTwo}, {"dir", m_tree->path("in")}});
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        pickFilter(dialog, filter);
        typeName(dialog, typed);
        pressReturn(dialog);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(filesOf(box.result()), told);
    QCOMPARE(textOf(box.result(), "useFilter"), filter == 0 ? kDrawings : kPictures);
    QCOMPARE(keysOf(box.result()), (QStringList{"filePaths", "result", "useFilter"}));
}

void TestQtFileDialog::ofSeveralFilesOnlyTheFirstIsTested_data()
{
    QTest::addColumn<QString>("vanished");
    QTest::addColumn<bool>("isOurs");
    QTest::newRow("the first one is gone") << "a.abc" << true;
    QTest::newRow("the second one is gone: Qt's to refuse") << "b.abc" << false;
}

void TestQtFileDialog::ofSeveralFilesOnlyTheFirstIsTested()
{
    QFETCH(QString, vanished);
    QFETCH(bool, isOurs);
    m_tree->addFile("in/a.abc");
    m_tree->addFile("in/b.abc");
    const FileDialog box({{"Open", true}, {"MutiFile", true}, {"filter", kTwo}, {"dir", m_tree->path("in")}});
    SeenBox seen;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        clickRow(dialog, "a.abc");
        clickRow(dialog, "b.abc", Qt::ControlModifier);
        QFile::remove(m_tree->path("in/" + vanished)); // before the list can tell
        pressOpen(dialog);
    });
    driver.next(answerBox(seen, isOurs ? kClose : QStringLiteral("OK")));
    driver.next(pressEscape);
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(seen.text.contains(QStringLiteral("文件名无效")), isOurs);
    QVERIFY(seen.text.contains(vanished));
}

void TestQtFileDialog::aFolderIsEntered()
{
    m_tree->addFile("in/sub/a.abc");
    const FileDialog box({{"Open", true}, {"filter", kTwo}, {"dir", m_tree->path("in")}});
    ModalDriver driver;
    driver.next(typeAndAccept("sub"));
    driver.next(typeAndAccept("a.abc"));
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(filesOf(box.result()), QStringList{"a.abc|" + m_tree->path("in/sub/a.abc")});
}

void TestQtFileDialog::aNameWithoutTextDoesNothing_data()
{
    QTest::addColumn<QString>("typed");
    QTest::newRow("empty") << "";
    QTest::newRow("blanks") << "   ";
    QTest::newRow("wide blank") << QStringLiteral("　");
}

void TestQtFileDialog::aNameWithoutTextDoesNothing()
{
    QFETCH(QString, typed);
    const FileDialog box({{"filter", kTwo}, {"dir", m_tree->addFolder("out")}});
    ModalDriver driver;
    driver.next(typeAndAccept(typed));
    driver.next([&](QDialog *dialog) { // the dialog itself, no message
        QCOMPARE(dialog, box.dialog);
        pressEscape(dialog);
    });
    // The first action leaves the dialog as it was: only another turn of the loop brings the second.
    QTimer nudge;
    connect(&nudge, &QTimer::timeout, [] {});
    nudge.start(1);
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
}

void TestQtFileDialog::refusedCharacters_data()
{
    QTest::addColumn<QString>("name");
    for (const char c : {'<', '>', '/', '\\', '"', ';', ':', '?', '*', ',', '=', '`'}) {
        QTest::addRow("%c", c) << QStringLiteral("plan%1").arg(QLatin1Char(c));
        QTest::addRow("%c at the start", c) << QStringLiteral("%1plan.abc").arg(QLatin1Char(c));
    }
    QTest::newRow("before the length is looked at") << QString(300, 'a') + '=';
}

void TestQtFileDialog::refusedCharacters()
{
    QFETCH(QString, name);
    const FileDialog box({{"caption", QStringLiteral("另存为")}, {"filter", kTwo}, {"dir", m_tree->addFolder("out")}});
    SeenBox seen;
    bool staysOpen = false;
    ModalDriver driver;
    driver.next(typeAndAccept(QLatin1Char(' ') + name));
    driver.next(answerBox(seen, kOk));
    driver.next([&](QDialog *dialog) {
        staysOpen = dialog == box.dialog && box.edit()->text() == QLatin1Char(' ') + name;
        pressEscape(dialog);
    });
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QVERIFY(staysOpen);
    QCOMPARE(seen.title, QStringLiteral("另存为"));
    QCOMPARE(seen.text, QStringLiteral(" %1 \n文件名无效。").arg(name));
    QCOMPARE(seen.icon, DialogPictures::warning());
    QCOMPARE(seen.buttons, QStringList{QStringLiteral("确定(&O)")});
}

void TestQtFileDialog::nameLength_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("passes");
    QTest::newRow("254 characters") << QString(250, 'a') + ".abc" << true;
    QTest::newRow("254 characters between blanks") << ' ' + QString(250, 'a') + ".abc" << true;
    QTest::newRow("255 characters") << QString(251, 'a') + ".abc" << false;
    QTest::newRow("300 characters") << QString(300, 'a') << false;
}

void TestQtFileDialog::nameLength()
{
    QFETCH(QString, name);
    QFETCH(bool, passes);
    const FileDialog box({{"caption", "Save"}, {"filter", kTwo}, {"dir", m_tree->addFolder("out")}});
    SeenBox seen;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        box.edit()->setText(name);
        pressReturn(dialog);
    });
    if (!passes) {
        driver.next(answerBox(seen, kOk));
        driver.next(pressEscape);
    }
    QCOMPARE(box.adapter->doModal(), passes ? 1 : 2);
    QVERIFY(driver.finished());
    if (passes) {
        QCOMPARE(textOf(box.result(), "fileName"), name);
        return;
    }
    QCOMPARE(seen.title, QStringLiteral("文件名 - 文字长度"));
    QCOMPARE(seen.text, QStringLiteral(" 文件全名 不能多于 255 个字符。"));
    QCOMPARE(seen.icon, DialogPictures::warning());
    QCOMPARE(seen.buttons, QStringList{QStringLiteral("确定(&O)")});
}

void TestQtFileDialog::savedNameTakesTheExtension_data()
{
    QTest::addColumn<BagKeys>("keys");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("saved");
    QTest::addColumn<QString>("useFilter");
    QTest::addColumn<int>("index");
    const BagKeys two{{"filter", kTwo}};
    const QString withAll = kTwo + ";;" + kAll;
    QTest::newRow("added") << two << "plan"
                           << "plan.abc" << kDrawings << 0;
    QTest::newRow("already there") << two << "plan.abc"
                                   << "plan.abc" << kDrawings << 0;
    QTest::newRow("another one is kept before it") << two << "a.txt"
                                                   << "a.txt.abc" << kDrawings << 0;
    QTest::newRow("case counts") << two << "a.ABC"
                                 << "a.ABC.abc" << kDrawings << 0;
    QTest::newRow("second filter") << BagKeys{{"filter", kTwo}, {"useFilterIdx", 1}} << "plan"
                                   << "plan.xyz" << kPictures << 1;
    QTest::newRow("several patterns: the last") << BagKeys{{"filter", "Both (*.abc *.def)"}} << "plan.abc"
                                                << "plan.abc.def"
                                                << "Both (*.abc *.def)" << 0;
    QTest::newRow("filter without extension") << BagKeys{{"filter", "Any (*)"}} << "plan"
                                              << "plan"
                                              << "Any (*)" << 0;
    QTest::newRow("filter without parentheses") << BagKeys{{"filter", "*.abc"}} << "plan"
                                                << "plan"
                                                << "*.abc" << 0;
    QTest::newRow("no filter") << BagKeys() << "plan"
                               << "plan"
                               << "" << -1;
    QTest::newRow("all files, no filter to fall back on") << BagKeys{{"filter", withAll}, {"useFilterIdx", 2}} << "plan"
                                                          << "plan.*" << kAll << 2;
    QTest::newRow("all files, fall back")
        << BagKeys{{"filter", withAll}, {"useFilterIdx", 2}, {"defFilter", kPictures}} << "plan"
        << "plan.xyz" << kPictures << 1;
    QTest::newRow("all files, fall back on what is not in the list")
        << BagKeys{{"filter", withAll}, {"useFilterIdx", 2}, {"defFilter", "Plans (*.pln)"}} << "plan"
        << "plan.pln"
        << "Plans (*.pln)" << -1;
    QTest::newRow("all files, fall back on an empty text")
        << BagKeys{{"filter", withAll}, {"useFilterIdx", 2}, {"defFilter", ""}} << "plan"
        << "plan"
        << "" << -1;
    QTest::newRow("Chinese") << BagKeys{{"filter", QStringLiteral("图形 (*.dwg)")}} << QStringLiteral("平面图")
                             << QStringLiteral("平面图.dwg") << QStringLiteral("图形 (*.dwg)") << 0;
    QTest::newRow("blanks at the end are typed") << two << "plan "
                                                 << "plan .abc" << kDrawings << 0;
    QTest::newRow("percent signs") << two << "100%s %1"
                                   << "100%s %1.abc" << kDrawings << 0;
}

void TestQtFileDialog::savedNameTakesTheExtension()
{
    QFETCH(BagKeys, keys);
    QFETCH(QString, typed);
    QFETCH(QString, saved);
    QFETCH(QString, useFilter);
    QFETCH(int, index);
    keys.append({"dir", m_tree->addFolder("out")});
    const FileDialog box(keys);
    ModalDriver driver;
    driver.next(typeAndAccept(typed));
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(textOf(box.result(), "filePath"), m_tree->path("out/" + saved));
    QCOMPARE(textOf(box.result(), "fileName"), saved);
    QCOMPARE(textOf(box.result(), "useFilter"), useFilter);
    QCOMPARE(intOf(box.result(), "useFilterIdx"), index);
    QVERIFY(!QFile::exists(m_tree->path("out/" + saved))); // the dialog writes nothing
}

void TestQtFileDialog::existingFileIsAskedFor_data()
{
    QTest::addColumn<BagKeys>("keys");
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("answer"); // empty: no question comes
    QTest::addColumn<QString>("asked");
    QTest::addColumn<bool>("closes");
    const QString withAll = kTwo + ";;" + kAll;
    const BagKeys two{{"filter", kTwo}};
    const BagKeys all{{"filter", withAll}, {"useFilterIdx", 2}};
    const BagKeys allElsePictures{{"filter", withAll}, {"useFilterIdx", 2}, {"defFilter", kPictures}};
    QTest::newRow("replace") << two << "a.abc" << kOk << "a.abc" << true;
    QTest::newRow("keep") << two << "a.abc" << kCancel << "a.abc" << false;
    QTest::newRow("without its extension") << two << "a" << kOk << "a.abc" << true;
    QTest::newRow("between blanks") << two << " a.abc" << kOk << "a.abc" << true;
    QTest::newRow("behind another extension") << two << "a.txt" << kOk << "a.txt.abc" << true;
    QTest::newRow("behind its own in another case") << two << "a.ABC" << kOk << "a.ABC.abc" << true;
    QTest::newRow("no question wanted") << BagKeys{{"filter", kTwo}, {"BoxHide", true}} << "a.abc"
                                        << "" << QString() << true;
    QTest::newRow("another name") << two << "b.abc"
                                  << "" << QString() << true;
    QTest::newRow("the typed name is there without the extension") << two << "c"
                                                                   << "" << QString() << true;
    QTest::newRow("all files: the name as it is") << all << "c" << kOk << "c" << true;
    QTest::newRow("all files: no extension is added") << all << "a"
                                                      << "" << QString() << true;
    QTest::newRow("all files, fall back on a filter") << allElsePictures << "d" << kOk << "d.xyz" << true;
    QTest::newRow("all files, fall back: not the name as it is") << allElsePictures << "c"
                                                                 << "" << QString() << true;
}

void TestQtFileDialog::existingFileIsAskedFor()
{
    QFETCH(BagKeys, keys);
    QFETCH(QString, typed);
    QFETCH(QString, answer);
    QFETCH(QString, asked);
    QFETCH(bool, closes);
    for (const char *name : {"a.abc", "a.txt.abc", "a.ABC.abc", "c", "d.xyz"})
        m_tree->addFile(QStringLiteral("out/") + QLatin1String(name));
    keys << BagKey("caption", "Save") << BagKey("dir", m_tree->path("out"));
    const FileDialog box(keys);
    SeenBox seen;
    ModalDriver driver;
    driver.next(typeAndAccept(typed));
    if (!answer.isEmpty())
        driver.next(answerBox(seen, answer));
    if (!closes)
        driver.next(pressEscape);
    QCOMPARE(box.adapter->doModal(), closes ? 1 : 2);
    QVERIFY(driver.finished());
    if (answer.isEmpty())
        return;
    QCOMPARE(seen.title, QStringLiteral("输出数据"));
    QCOMPARE(seen.text, QStringLiteral(" %1 已经存在。\n是否替换它？").arg(m_tree->path("out/" + asked)));
    QCOMPARE(seen.icon, DialogPictures::warning());
    QCOMPARE(seen.buttons, (QStringList{QStringLiteral("确定(&O)"), QStringLiteral("取消(&C)")}));
}

void TestQtFileDialog::theCheckedNameIsTheTrimmedOne()
{
    m_tree->addFile("out/a.abc");
    const FileDialog box({{"filter", kTwo}, {"dir", m_tree->path("out")}});
    SeenBox seen;
    ModalDriver driver;
    driver.next(typeAndAccept("a.abc "));
    driver.next(answerBox(seen, kOk));
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QVERIFY(seen.text.contains("/out/a.abc "));
    QCOMPARE(textOf(box.result(), "fileName"), QStringLiteral("a.abc .abc")); // worked out anew from what was typed
}

void TestQtFileDialog::aFolderWithoutRightsNeverClosesTheDialog_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<bool>("boxHide");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<bool>("goesHome");
    QTest::newRow("yes goes home") << "plan" << false << kYes << true;
    QTest::newRow("no stays") << "plan" << false << kNo << false;
    QTest::newRow("a file that is there: the rights come first") << "old" << false << kNo << false;
    QTest::newRow("a file to be replaced without a question") << "old" << true << kYes << true;
}

void TestQtFileDialog::aFolderWithoutRightsNeverClosesTheDialog()
{
    QFETCH(QString, typed);
    QFETCH(bool, boxHide);
    QFETCH(QString, answer);
    QFETCH(bool, goesHome);
    const QString locked = m_tree->addFolder("locked");
    m_tree->addFile("locked/old.abc");
    const QString home = m_tree->addFolder("home");
    // The folder of the test is open to everybody, what is in it is not.
    QFile::setPermissions(m_tree->path(), QFileDevice::Permissions(0x7777));
    QFile::setPermissions(home, QFileDevice::Permissions(0x7777));
    QFile::setPermissions(locked, QFileDevice::Permissions(0x5555));
    const QByteArray homeBefore = qgetenv("HOME");
    qputenv("HOME", home.toUtf8());
    const FileDialog box(
        {{"caption", QStringLiteral("另存为")}, {"filter", kTwo}, {"dir", locked}, {"BoxHide", boxHide}});
    SeenBox seen;
    QString folder;
    QString user;
    bool staysOpen = false;
    ModalDriver driver;
    driver.next(typeAndAccept(typed));
    driver.next(answerBox(seen, answer));
    driver.next([&](QDialog *dialog) {
        staysOpen = dialog == box.dialog;
        folder = box.dialog->directory().path();
        pressEscape(dialog);
    });
    {
        const OrdinaryUser rights;
        QVERIFY(rights.isOrdinary());
        user = QString::fromUtf8(zvutGetUserName().c_str());
        QCOMPARE(box.adapter->doModal(), 2);
    }
    qputenv("HOME", homeBefore);
    QFile::setPermissions(locked, QFileDevice::Permissions(0x7777));
    QVERIFY(driver.finished());
    QVERIFY(staysOpen);
    QCOMPARE(folder, goesHome ? home : locked);
    QCOMPARE(seen.title, QStringLiteral("另存为"));
    QCOMPARE(seen.text,
             QStringLiteral(" %1 \n您没有权限在此位置中保存文件。 \n请与管理员联系以获得相应权限。\n\n"
                            "您想改为保存到 %2 的文档文件夹中吗?")
                 .arg(locked + QLatin1Char('/') + typed + ".abc", user));
    QCOMPARE(seen.icon, DialogPictures::warning());
    QCOMPARE(seen.buttons, (QStringList{QStringLiteral("是(&Y)"), QStringLiteral("否(&N)")}));
}

void TestQtFileDialog::aRefusedPathShowsTheDialogAgain()
{
    const FileDialog box({{"filter", kTwo}, {"dir", m_tree->addFolder("out")}});
    const QString longName = QString(90, QChar(0x56FE)); // 270 bytes, and the system stores 255
    QString kept;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        box.edit()->setText(longName);
        pressReturn(dialog);
    });
    driver.next([&](QDialog *dialog) {
        kept = box.edit()->text();
        typeName(dialog, QStringLiteral("图"));
        pressReturn(dialog);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(kept, longName);
    QCOMPARE(textOf(box.result(), "fileName"), QStringLiteral("图.abc"));
}

void TestQtFileDialog::aFullDiskIsNoMatterOfTheDialog()
{
    if (!QFileInfo(QStringLiteral("/dev/full")).exists())
        QSKIP("no device that is always full");
    m_tree->addFolder("out");
    QVERIFY(QFile::link(QStringLiteral("/dev/full"), m_tree->path("out/full.abc")));
    QFile full(m_tree->path("out/full.abc"));
    QVERIFY(!full.open(QIODevice::WriteOnly | QIODevice::Unbuffered) || full.write("x") < 0);
    const FileDialog box({{"filter", kTwo}, {"dir", m_tree->path("out")}});
    SeenBox seen;
    ModalDriver driver;
    driver.next(typeAndAccept("full"));
    driver.next(answerBox(seen, kOk));
    QCOMPARE(box.adapter->doModal(), 1); // there is a right to write; whether it succeeds is the caller's to find out
    QVERIFY(driver.finished());
    QCOMPARE(textOf(box.result(), "filePath"), m_tree->path("out/full.abc"));
}

void TestQtFileDialog::cancelWritesOnlyTheCode_data()
{
    QTest::addColumn<bool>("opens");
    QTest::newRow("open") << true;
    QTest::newRow("save") << false;
}

void TestQtFileDialog::cancelWritesOnlyTheCode()
{
    QFETCH(bool, opens);
    const FileDialog box({{"Open", opens}, {"filter", kTwo}, {"dir", m_tree->path()}});
    const QStringList before = keysOf(box.params);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        typeName(dialog, "plan.abc");
        const auto *buttons = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        QTest::mouseClick(buttons->button(QDialogButtonBox::Cancel), Qt::LeftButton);
    });
    QCOMPARE(box.adapter->doModal(), 2);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(box.result(), "result"), 2);
    QCOMPARE(keysOf(box.result()), QStringList{"result"});
    QCOMPARE(keysOf(box.params), before); // nothing goes to the parameters
}

void TestQtFileDialog::acceptedRunsWriteTheirKeys()
{
    const FileDialog box({{"filter", kTwo}, {"dir", m_tree->addFolder("out")}});
    const QStringList before = keysOf(box.params);
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        typeName(dialog, "plan");
        const auto *buttons = dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"));
        QTest::mouseClick(buttons->button(QDialogButtonBox::Save), Qt::LeftButton);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(intOf(box.result(), "result"), 1);
    QCOMPARE(keysOf(box.result()), (QStringList{"fileName", "filePath", "result", "useFilter", "useFilterIdx"}));
    QCOMPARE(keysOf(box.params), before);
}

void TestQtFileDialog::lastFilterComesBackByItsIndex()
{
    int index = 0;
    for (int run = 0; run < 2; ++run) {
        const FileDialog box({{"filter", kTwo}, {"dir", m_tree->addFolder("out")}, {"useFilterIdx", index}});
        QCOMPARE(box.filters()->currentIndex(), run);
        ModalDriver driver;
        driver.next([](QDialog *dialog) {
            pickFilter(dialog, 1);
            typeName(dialog, "plan");
            pressReturn(dialog);
        });
        QCOMPARE(box.adapter->doModal(), 1);
        QVERIFY(driver.finished());
        index = intOf(box.result(), "useFilterIdx");
    }
    QCOMPARE(index, 1);
}

void TestQtFileDialog::endDialogBeatsTheButtons()
{
    const FileDialog box({{"filter", kTwo}});
    ModalDriver driver;
    driver.next([&](QDialog *) { box.adapter->endDialog(7); });
    QCOMPARE(box.adapter->doModal(), 7);
    QVERIFY(driver.finished());
    QCOMPARE(keysOf(box.result()), QStringList{"result"});
}

void TestQtFileDialog::nothingIsKeptBetweenRuns()
{
    for (int run = 0; run < 2; ++run) {
        FileDialog box(BagKeys{{"filter", kTwo}});
        QCOMPARE(box.dialog->directory().path(), QDir::currentPath());
        QCOMPARE(box.dialog->history().size(), 1); // where it stands
        ModalDriver driver;
        driver.next([&](QDialog *dialog) {
            box.dialog->setDirectory(m_tree->addFolder("elsewhere"));
            typeName(dialog, "plan");
            pressReturn(dialog);
        });
        QCOMPARE(box.adapter->doModal(), 1);
        QVERIFY(driver.finished());
        QCOMPARE(textOf(box.result(), "filePath"), m_tree->path("elsewhere/plan.abc"));
    }
    QVERIFY(!m_tree->settings().contains("lastVisited"));
}

void TestQtFileDialog::theUsersNotesOfQtStay()
{
    {
        QSettings settings(QSettings::UserScope, QStringLiteral("QtProject"));
        settings.setValue("FileDialog/shortcuts", QStringList{"file:", "file:///usr"});
        settings.setValue("FileDialog/sidebarWidth", 77);
        settings.setValue("Other/key", 1);
    }
    {
        const FileDialog box({{"filter", kTwo}, {"dir", m_tree->path()}});
        ModalDriver driver;
        driver.next(pressEscape);
        box.adapter->doModal();
        QVERIFY(driver.finished());
    }
    const QSettings settings(QSettings::UserScope, QStringLiteral("QtProject"));
    QCOMPARE(settings.value("FileDialog/shortcuts").toStringList(), (QStringList{"file:", "file:///usr"}));
    QCOMPARE(settings.value("FileDialog/sidebarWidth").toInt(), 77);
    QCOMPARE(settings.allKeys().size(), 3);
}

void TestQtFileDialog::notesOfOtherProgramsStay()
{
    const QString file = QSettings(QSettings::UserScope, QStringLiteral("QtProject")).fileName();
    {
        const FileDialog box({{"filter", kTwo}, {"dir", m_tree->path()}});
        ModalDriver driver;
        driver.next([](QDialog *dialog) {
            // Another program's dialog has just been closed.
            QSettings(QSettings::UserScope, QStringLiteral("QtProject")).setValue("FileDialog/sidebarWidth", 88);
            pressEscape(dialog);
        });
        box.adapter->doModal();
        QVERIFY(driver.finished());
    }
    QSettings settings(QSettings::UserScope, QStringLiteral("QtProject"));
    QCOMPARE(settings.allKeys(), QStringList{QStringLiteral("FileDialog/sidebarWidth")});
    QCOMPARE(settings.value("FileDialog/sidebarWidth").toInt(), 88);
    // The application's own settings go where they went before.
    QCOMPARE(settings.fileName(), file);
    settings.setValue(QStringLiteral("Other/key"), 1);
    settings.sync();
    QCOMPARE(int(settings.status()), int(QSettings::NoError));
    QVERIFY(m_tree->settings().contains("key=1"));
}

void TestQtFileDialog::namesOfTheWorldAreListedAndTaken()
{
    const QStringList names{QStringLiteral("平面图 第一层.abc"), QStringLiteral("план.abc"), QStringLiteral("%s%d.abc"),
                            QStringLiteral("&mnemonic.abc"), QStringLiteral("𠀀.abc")};
    for (const QString &name : names)
        m_tree->addFile("in/" + name);
    for (const QString &name : names) {
        const FileDialog box({{"Open", true}, {"filter", kTwo}, {"dir", m_tree->path("in")}});
        ModalDriver driver;
        driver.next([&](QDialog *dialog) {
            clickRow(dialog, name);
            pressOpen(dialog);
        });
        QCOMPARE(box.adapter->doModal(), 1);
        QVERIFY(driver.finished());
        QCOMPARE(filesOf(box.result()), QStringList{name + '|' + m_tree->path("in/" + name)});
    }
}

void TestQtFileDialog::tenThousandFilesAreListed()
{
    QDir().mkpath(m_tree->path("many"));
    for (int i = 0; i < 10000; ++i) {
        const QString name = i % 2 ? QStringLiteral("many/drawing %1.abc") : QStringLiteral("many/图纸 第%1张.abc");
        QFile file(m_tree->path(name.arg(i, 5, 10, QLatin1Char('0'))));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }
    const FileDialog box({{"Open", true}, {"filter", kTwo}, {"dir", m_tree->path("many")}});
    ModalDriver driver(200000); // sanitizers take their time over so many files
    driver.next([&](QDialog *dialog) {
        const auto *tree = dialog->findChild<QTreeView *>(QStringLiteral("treeView"));
        QTRY_COMPARE_WITH_TIMEOUT(tree->model()->rowCount(tree->rootIndex()), 10000, 150000);
        typeName(dialog, "drawing 09999.abc");
        pressReturn(dialog);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(filesOf(box.result()), QStringList{"drawing 09999.abc|" + m_tree->path("many/drawing 09999.abc")});
}

void TestQtFileDialog::anUnreadableFolderIsEmpty()
{
    m_tree->addFile("in/secret/a.abc");
    QFile::setPermissions(m_tree->path(), QFileDevice::Permissions(0x7777));
    QFile::setPermissions(m_tree->path("in"), QFileDevice::Permissions(0x7777));
    QFile::setPermissions(m_tree->path("in/secret"), QFileDevice::Permissions());
    {
        const OrdinaryUser user;
        QVERIFY(user.isOrdinary());
        expectWarning(
            QStringLiteral("inotify_add_watch(%1) failed: (Permission denied)").arg(m_tree->path("in/secret")));
        const FileDialog box({{"Open", true}, {"filter", kTwo}, {"dir", m_tree->path("in/secret")}});
        SeenBox seen;
        ModalDriver driver;
        driver.next(typeAndAccept("a.abc"));
        driver.next(answerBox(seen, kClose)); // it cannot be seen, so it is not there
        QStringList listed;
        driver.next([&](QDialog *dialog) {
            listed = listedNames(box.dialog);
            pressEscape(dialog);
        });
        QCOMPARE(box.adapter->doModal(), 2);
        QCOMPARE(listed, QStringList());
        QVERIFY(driver.finished());
    }
    QFile::setPermissions(m_tree->path("in/secret"), QFileDevice::Permissions(0x7777));
}

void TestQtFileDialog::linksThatGoRoundAreSurvived()
{
    m_tree->addFile("in/a.abc");
    QVERIFY(QFile::link(m_tree->path("in/self.abc"), m_tree->path("in/self.abc")));
    QVERIFY(QFile::link(m_tree->path("in/two.abc"), m_tree->path("in/one.abc")));
    QVERIFY(QFile::link(m_tree->path("in/one.abc"), m_tree->path("in/two.abc")));
    QVERIFY(QFile::link(m_tree->path("in"), m_tree->path("in/round")));
    const FileDialog box({{"Open", true}, {"filter", kTwo}, {"dir", m_tree->path("in/round/round")}});
    SeenBox seen;
    ModalDriver driver;
    driver.next(typeAndAccept("self.abc"));
    driver.next(answerBox(seen, kClose));
    driver.next(typeAndAccept("round"));
    driver.next(typeAndAccept("a.abc"));
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(seen.text, QStringLiteral("self.abc\n文件名无效"));
    const QStringList files = filesOf(box.result());
    QCOMPARE(files.size(), 1);
    QVERIFY2(files.first().endsWith("in/round/round/round/a.abc"), qPrintable(files.first()));
}

ZEVA_TEST_MAIN(TestQtFileDialog)
#include "tst_qt_filedialog.moc"
