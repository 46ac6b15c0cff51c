// SPDX-License-Identifier: MIT
// Files in the workbench: opening, saving and exporting by the library's file dialog, and the dialog in the menu.
#include "commandline.h"
#include "filedialogdemo.h"
#include "filedialogrun.h"
#include "smalldisk.h"
#include "textforms.h"
#include "workbenchtest.h"
#include "zevatest.h"

#include <QMenu>

#include <memory>

namespace {

bool isTheLibrarys(const QDialog *dialog)
{
    return dialog->inherits("ZvQtFileDialogImpl");
}

} // namespace

class tst_workbench_files : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void openAsksByTheDialog();
    void openGivenUpOpensNothing();
    void saveAsTakesTheTypedName_data();
    void saveAsTakesTheTypedName();
    void saveAsBeginsWithTheDrawingsName();
    void saveAsAsksBeforeItReplaces();
    void saveAsOnAFullDiskLosesNothing();
    void exportTakesTheKindFromTheFilter_data();
    void exportTakesTheKindFromTheFilter();
    void exportBeginsBesideTheDrawing();
    void exportGivenUpWritesNothing();
    void everyDialogOfTheMenu_data();
    void everyDialogOfTheMenu();

private:
    MainWindow &window() { return m_session->window(); }
    QString lastLine() { return window().commandLine()->history().split(QLatin1Char('\n')).last(); }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    /// Goes to the test's folder, types and accepts.
    ModalDriver::Action answer(const QString &name)
    {
        return [this, name](QDialog *dialog) {
            QVERIFY(isTheLibrarys(dialog));
            static_cast<QFileDialog *>(dialog)->setDirectory(m_tree->addFolder("out"));
            typeName(dialog, name);
            pressReturn(dialog);
        };
    }
    /// Runs a command of the menu whose dialogs the driver works.
    void run(const char *action, const ModalDriver &driver)
    {
        m_session->action(action)->trigger();
        QTRY_VERIFY(driver.finished());
        waitForIdle();
    }
    void saveDrawing(const QString &path)
    {
        ZvDbFileReport report;
        QCOMPARE(zvDocManagerPtr()->saveDocument(m_session->document(), toZvString(path), report), Zv::eOk);
    }

    std::unique_ptr<FileTree> m_tree;
    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_files::init()
{
    ZevaTest::init();
    m_tree = std::make_unique<FileTree>();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
}

void tst_workbench_files::cleanup()
{
    m_session.reset();
    m_tree.reset();
    ZevaTest::cleanup();
}

void tst_workbench_files::openAsksByTheDialog()
{
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    saveDrawing(m_tree->addFolder("out") + QStringLiteral("/图.dxf"));
    zvDocManagerPtr()->closeDocument(m_session->document());
    ModalDriver driver;
    driver.next(answer(QStringLiteral("图.dxf")));
    run("open", driver);
    QCOMPARE(zvDocManagerPtr()->documentCount(), 1);
    QCOMPARE(toQString(m_session->document()->fileName()), m_tree->path(QStringLiteral("out/图.dxf")));
}

void tst_workbench_files::openGivenUpOpensNothing()
{
    ModalDriver driver;
    driver.next(pressEscape);
    run("open", driver);
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
}

void tst_workbench_files::saveAsTakesTheTypedName_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("saved");
    QTest::newRow("without extension") << "named" << 0 << "named.dxf";
    QTest::newRow("with extension") << "named.dxf" << 0 << "named.dxf";
    QTest::newRow("Chinese") << QStringLiteral("平面图") << 0 << QStringLiteral("平面图.dxf");
    QTest::newRow("all files: without extension") << "named" << 1 << "named.dxf";
    QTest::newRow("all files: another extension") << "named.drawing" << 1 << "named.drawing";
}

void tst_workbench_files::saveAsTakesTheTypedName()
{
    QFETCH(QString, typed);
    QFETCH(int, filter);
    QFETCH(QString, saved);
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        pickFilter(dialog, filter);
        answer(typed)(dialog);
    });
    run("saveas", driver);
    QVERIFY(QFile::exists(m_tree->path("out/" + saved)));
    QCOMPARE(toQString(m_session->document()->fileName()), m_tree->path("out/" + saved));
    QVERIFY(!m_session->document()->isModified());
}

void tst_workbench_files::saveAsBeginsWithTheDrawingsName()
{
    m_session->newDrawing();
    const QString title = toQString(m_session->document()->title());
    QStringList shown;
    const auto look = [&](QDialog *dialog) {
        const auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        shown << static_cast<QFileDialog *>(dialog)->directory().filePath(edit->text());
        pressEscape(dialog);
    };
    {
        ModalDriver driver;
        driver.next(look);
        run("saveas", driver);
    }
    saveDrawing(m_tree->addFolder("out") + "/mine.dxf");
    ModalDriver driver;
    driver.next(look);
    run("saveas", driver);
    QCOMPARE(shown.size(), 2);
    QCOMPARE(shown.last(), m_tree->path("out/mine.dxf"));
    QCOMPARE(QFileInfo(shown.first()).fileName(), title + ".dxf");
}

void tst_workbench_files::saveAsAsksBeforeItReplaces()
{
    m_session->newDrawing();
    m_tree->addFile("out/there.dxf", "old");
    SeenBox seen;
    ModalDriver driver;
    driver.next(answer("there"));
    driver.next(answerBox(seen, QStringLiteral("取消")));
    driver.next(answer("there"));
    driver.next(answerBox(seen, QStringLiteral("确定")));
    run("saveas", driver);
    QVERIFY(seen.text.contains(m_tree->path("out/there.dxf")));
    QFile file(m_tree->path("out/there.dxf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QVERIFY(file.readAll() != "old");
}

void tst_workbench_files::saveAsOnAFullDiskLosesNothing()
{
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    m_tree->addFile("out/there.dxf", "old");
    SeenBox replace;
    SeenBox told;
    ModalDriver driver;
    driver.next(answer("there"));
    driver.next(answerBox(replace, QStringLiteral("确定")));
    driver.next(answerBox(told, QStringLiteral("确定")));
    {
        const SmallDisk disk(100);
        m_session->action("saveas")->trigger();
        QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput());
    }
    QVERIFY(m_session->document()->isModified());
    QVERIFY(toQString(m_session->document()->fileName()).isEmpty());
    QFile file(m_tree->path("out/there.dxf"));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), QByteArray("old"));
    QCOMPARE(QDir(m_tree->path("out")).entryList(QDir::Files), QStringList{"there.dxf"});
    QVERIFY(!told.text.isEmpty() || window().commandLine()->history().contains("there.dxf"));
}

void tst_workbench_files::exportTakesTheKindFromTheFilter_data()
{
    QTest::addColumn<int>("filter");
    QTest::addColumn<QString>("written");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("PNG") << 0 << "picture of it.png" << QByteArray("\x89PNG");
    QTest::newRow("PDF") << 1 << "picture of it.pdf" << QByteArray("%PDF");
    QTest::newRow("SVG") << 2 << "picture of it.svg" << QByteArray("<?xml");
    QTest::newRow("DXF") << 3 << "picture of it.dxf" << QByteArray("  0");
}

void tst_workbench_files::exportTakesTheKindFromTheFilter()
{
    QFETCH(int, filter);
    QFETCH(QString, written);
    QFETCH(QByteArray, start);
    m_session->newDrawing();
    m_session->addLine({0, 0, 0}, {10, 10, 0});
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        pickFilter(dialog, filter);
        answer("picture of it")(dialog);
    });
    run("export", driver);
    QFile file(m_tree->path("out/" + written));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.read(start.size()), start);
    QVERIFY(window().commandLine()->history().contains(QStringLiteral("Written: ") + file.fileName()));
    QVERIFY(!m_session->database().canUndo() || m_session->database().undoName() != ZvString(L"EXPORT"));
}

void tst_workbench_files::exportBeginsBesideTheDrawing()
{
    m_session->newDrawing();
    saveDrawing(m_tree->addFolder("out") + "/mine.dxf");
    QString shown;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(isTheLibrarys(dialog));
        const auto *edit = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"));
        pickFilter(dialog, 1);
        shown = static_cast<QFileDialog *>(dialog)->directory().filePath(edit->text());
        pressEscape(dialog);
    });
    run("export", driver);
    QCOMPARE(shown, m_tree->path("out/mine.pdf"));
}

void tst_workbench_files::exportGivenUpWritesNothing()
{
    m_session->newDrawing();
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        static_cast<QFileDialog *>(dialog)->setDirectory(m_tree->addFolder("out"));
        pressEscape(dialog);
    });
    run("export", driver);
    QVERIFY(QDir(m_tree->path("out")).isEmpty());
}

void tst_workbench_files::everyDialogOfTheMenu_data()
{
    QTest::addColumn<QString>("action");
    QTest::addColumn<QString>("line");
    const char *const names[] = {"FileDialogBox",    "FileNavDialogBox", "FileDialogBox", "FileDialogBox",
                                 "FileNavDialogBox", "FileDialogBox",    "FileDialogBox"};
    int i = 0;
    for (const DialogDemo &demo : fileDialogDemos())
        QTest::newRow(qPrintable(demo.id)) << demo.id << QLatin1String(names[i++]) + QStringLiteral(": {\"result\": ");
    QCOMPARE(i, int(std::size(names)));
}

void tst_workbench_files::everyDialogOfTheMenu()
{
    QFETCH(QString, action);
    QFETCH(QString, line);
    m_session->newDrawing();
    const QMenu *menu = window().findChild<QMenu *>(QStringLiteral("fileDialogMenu"));
    QVERIFY(menu && menu->actions().contains(m_session->action(action.toUtf8().constData())));

    {
        ModalDriver driver;
        driver.next(pressEscape);
        m_session->action(action.toUtf8().constData())->trigger();
        QVERIFY(driver.finished());
        QCOMPARE(lastLine(), line + "2}");
    }

    m_tree->addFile("out/plan.dwg");
    m_tree->addFile("out/plan.dxf");
    m_tree->addFile("out/plan.pdf");
    const bool saves = action.contains("Save");
    SeenBox seen;
    ModalDriver driver;
    driver.next(answer("plan" + QString(saves ? "" : ".dxf")));
    if (action == "fileDialogSave" || action == "fileDialogSaveByIndex")
        driver.next(answerBox(seen, QStringLiteral("确定")));
    m_session->action(action.toUtf8().constData())->trigger();
    QVERIFY(driver.finished());
    QVERIFY2(lastLine().startsWith(line + "1, "), qPrintable(lastLine()));
    QVERIFY2(lastLine().contains(m_tree->path("out/plan.")), qPrintable(lastLine()));
}

ZEVA_TEST_MAIN(tst_workbench_files)
#include "tst_workbench_files.moc"
