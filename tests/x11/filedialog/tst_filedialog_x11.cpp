// SPDX-License-Identifier: MIT
#include "filedialogrun.h"
#include "mainwindowhost.h"
#include "previewfiles.h"
#include "x11client.h"
#include "xdotool.h"
#include "zevatest.h"

#include <QFileSystemModel>
#include <QGroupBox>
#include <QScreen>
#include <QWindow>

namespace {

const QString kFilter = QStringLiteral("Drawings (*.abc);;Pictures (*.png)");

QPoint middleOf(const QWidget *widget)
{
    return widget->mapToGlobal(widget->rect().center());
}

QTreeView *listOf(const QDialog *dialog)
{
    return dialog->findChild<QTreeView *>(QStringLiteral("treeView"));
}

/// The middle of a file's name on the screen; null where it is not listed, or the list is not drawn yet.
QPoint placeOfFile(const QDialog *dialog, const QString &path)
{
    const QTreeView *list = listOf(dialog);
    for (int row = 0; row < list->model()->rowCount(list->rootIndex()); ++row) {
        const QModelIndex index = list->model()->index(row, 0, list->rootIndex());
        if (index.data(QFileSystemModel::FilePathRole).toString() == path)
            return list->viewport()->mapToGlobal(list->visualRect(index).center());
    }
    return QPoint();
}

QPushButton *button(const QDialog *dialog, QDialogButtonBox::StandardButton which)
{
    return dialog->findChild<QDialogButtonBox *>(QStringLiteral("buttonBox"))->button(which);
}

QPixmap previewOf(const QDialog *dialog)
{
    return dialog->findChild<QGroupBox *>()->findChild<QLabel *>()->pixmap(Qt::ReturnByValue);
}

} // namespace

/// The file dialog as a person works it: with the pointer and the keyboard of a real display.
class tst_filedialog_x11 : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void panesAreSeenBesideOneAnother();
    void clickShowsTheFileAndTheButtonOpensIt();
    void doubleClickOpens();
    void severalFilesByControlAndShift();
    void nameIsTypedAndEnterOpens();
    void listIsWalkedByArrows();
    void placeIsClickedAndTheTypedNameStays();
    void filterIsPickedByPointer();
    void questionComesBeforeTheDialogAndGivesTheKeyboardBack();
    void missingNameIsRefusedAndCanBeMended();
    void endingsWithoutAFile_data();
    void endingsWithoutAFile();
    void panesFollowTheSizeOfTheWindow();

private:
    /// Runs the dialog with what a person does in it.
    void run(FileDialog &file, ModalDriver &driver, int expected)
    {
        const int code = file.adapter->doModal();
        QVERIFY(driver.finished());
        QCOMPARE(code, expected);
        QVERIFY(waitForKeyboard(m_window.get()));
    }
    static void waitForFile(const QDialog *dialog, const QString &path)
    {
        QVERIFY(waitForKeyboard(dialog));
        QTRY_VERIFY(!placeOfFile(dialog, path).isNull());
    }
    BagKeys keys(bool opens, bool several = false) const
    {
        return {{"Open", opens}, {"MutiFile", several}, {"dir", m_tree->path("out")}, {"filter", kFilter}};
    }

    std::unique_ptr<FileTree> m_tree;
    std::unique_ptr<ModuleSession> m_module;
    std::unique_ptr<QWidget> m_window;
    std::unique_ptr<MainWindowHost> m_host;
};

void tst_filedialog_x11::init()
{
    ZevaTest::init();
    m_tree = std::make_unique<FileTree>();
    for (const char *name : {"a.abc", "b.abc", "c.abc", "d.abc"})
        m_tree->addFile(QStringLiteral("out/") + QLatin1String(name));
    m_tree->addFile(QStringLiteral("out/picture.png"), png(80, 40));
    m_module = std::make_unique<ModuleSession>();
    m_window = std::make_unique<QWidget>();
    m_host = std::make_unique<MainWindowHost>(m_window.get());
    m_window->resize(1000, 700);
    m_window->show();
    QVERIFY(waitForKeyboard(m_window.get()));
}

void tst_filedialog_x11::cleanup()
{
    m_host.reset();
    m_window.reset();
    m_module.reset();
    m_tree.reset();
    ZevaTest::cleanup();
}

void tst_filedialog_x11::panesAreSeenBesideOneAnother()
{
    FileDialog file(keys(true));
    QRect window;
    QRect places;
    QRect files;
    QRect preview;
    QRect screen;
    bool isOverMainWindow = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        const auto onScreen = [](const QWidget *widget) {
            return QRect(widget->mapToGlobal(QPoint()), widget->visibleRegion().boundingRect().size());
        };
        window = QRect(dialog->mapToGlobal(QPoint()), dialog->size());
        places = onScreen(dialog->findChild<QListWidget *>());
        files = onScreen(listOf(dialog));
        preview = onScreen(dialog->findChild<QGroupBox *>());
        screen = dialog->screen()->geometry();
        isOverMainWindow = dialog->windowHandle()->transientParent() == m_window->windowHandle();
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 2);
    QVERIFY(isOverMainWindow);
    QVERIFY(screen.contains(window));
    QVERIFY(window.width() >= 820 && window.height() >= 485);
    QVERIFY(window.contains(places) && window.contains(files) && window.contains(preview));
    QCOMPARE(places.size(), QSize(200, 377));
    QVERIFY(places.right() < files.left() && files.right() < preview.left());
    QVERIFY(files.width() > 300 && preview.width() > 200);
}

void tst_filedialog_x11::clickShowsTheFileAndTheButtonOpensIt()
{
    BagKeys wanted = keys(true);
    wanted << BagKey("defFilter", "Pictures (*.png)");
    FileDialog file(wanted);
    const QString path = m_tree->path("out/picture.png");
    QSize shown;
    QString name;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, path);
        QVERIFY(previewOf(dialog).isNull());
        QVERIFY(clickAt(placeOfFile(dialog, path)));
        QTRY_VERIFY(!previewOf(dialog).isNull());
        shown = previewOf(dialog).size();
        name = dialog->findChild<QLineEdit *>(QStringLiteral("fileNameEdit"))->text();
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Open))));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 1);
    QCOMPARE(shown, QSize(80, 40));
    QCOMPARE(name, QStringLiteral("picture.png"));
    QCOMPARE(filesOf(file.result()), QStringList{QStringLiteral("picture.png|") + path});
}

void tst_filedialog_x11::doubleClickOpens()
{
    FileDialog file(keys(true));
    const QString path = m_tree->path("out/b.abc");
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, path);
        QVERIFY(pointAt(placeOfFile(dialog, path)));
        QVERIFY(xdotool({QStringLiteral("click"), QStringLiteral("--repeat"), QStringLiteral("2"),
                         QStringLiteral("--delay"), QStringLiteral("50"), QStringLiteral("1")}));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 1);
    QCOMPARE(filesOf(file.result()), QStringList{QStringLiteral("b.abc|") + path});
}

void tst_filedialog_x11::severalFilesByControlAndShift()
{
    FileDialog file(keys(true, true));
    const auto selected = [&file] { return file.dialog->selectedFiles().size(); };
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/d.abc"));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/d.abc"))));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("d.abc"));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/a.abc"))));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("a.abc"));
        QVERIFY(xdotool({QStringLiteral("keydown"), QStringLiteral("shift")}));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/c.abc"))));
        QTRY_COMPARE(selected(), 3);
        QVERIFY(xdotool({QStringLiteral("keyup"), QStringLiteral("shift")}));
        QVERIFY(xdotool({QStringLiteral("keydown"), QStringLiteral("ctrl")}));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/b.abc"))));
        QTRY_COMPARE(selected(), 2);
        QVERIFY(xdotool({QStringLiteral("keyup"), QStringLiteral("ctrl")}));
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Open))));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 1);
    QCOMPARE(filesOf(file.result()),
             (QStringList{QStringLiteral("a.abc|") + m_tree->path("out/a.abc"),
                          QStringLiteral("c.abc|") + m_tree->path("out/c.abc")}));
}

void tst_filedialog_x11::nameIsTypedAndEnterOpens()
{
    FileDialog file(keys(true));
    bool hadKeyboard = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        hadKeyboard = file.edit()->hasFocus(); // without a click
        QVERIFY(typeText(QStringLiteral("c.abc")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("c.abc"));
        QVERIFY(pressKey(QStringLiteral("Escape"))); // the completer's list, if there is one
        QTRY_VERIFY(!QApplication::activePopupWidget());
        if (dialog->isVisible())
            QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 1);
    QVERIFY(hadKeyboard);
    QCOMPARE(filesOf(file.result()), QStringList{QStringLiteral("c.abc|") + m_tree->path("out/c.abc")});
}

void tst_filedialog_x11::listIsWalkedByArrows()
{
    FileDialog file(keys(true));
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/a.abc"))));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("a.abc"));
        QVERIFY(pressKey(QStringLiteral("Down")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("b.abc"));
        QVERIFY(pressKey(QStringLiteral("Return")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 1);
    QCOMPARE(filesOf(file.result()), QStringList{QStringLiteral("b.abc|") + m_tree->path("out/b.abc")});
}

void tst_filedialog_x11::placeIsClickedAndTheTypedNameStays()
{
    FileDialog file(keys(false));
    QString folder;
    QString name;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QVERIFY(waitForKeyboard(dialog));
        QVERIFY(typeText(QStringLiteral("mine")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("mine"));
        const QListWidget *places = file.places(); // the first one is the computer
        QVERIFY(clickAt(places->viewport()->mapToGlobal(places->visualItemRect(places->item(0)).center())));
        QTRY_COMPARE(file.dialog->directory().path(), QStringLiteral("/"));
        folder = file.dialog->directory().path();
        name = file.edit()->text();
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 2);
    QCOMPARE(name, QStringLiteral("mine"));
}

void tst_filedialog_x11::filterIsPickedByPointer()
{
    FileDialog file(keys(false));
    QString name;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        QVERIFY(typeText(QStringLiteral("mine.abc")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("mine.abc"));
        QVERIFY(clickAt(middleOf(file.filters())));
        QTRY_VERIFY(file.filters()->view()->isVisible());
        QVERIFY(xdotool({QStringLiteral("key"), QStringLiteral("End"), QStringLiteral("Return")}));
        QTRY_COMPARE(file.filters()->currentIndex(), 1);
        QTRY_VERIFY(!placeOfFile(dialog, m_tree->path("out/picture.png")).isNull());
        name = file.edit()->text();
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Save))));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 1);
    QCOMPARE(name, QStringLiteral("mine.png"));
    QCOMPARE(textOf(file.result(), "filePath"), m_tree->path("out/mine.png"));
}

void tst_filedialog_x11::questionComesBeforeTheDialogAndGivesTheKeyboardBack()
{
    FileDialog file(keys(false));
    bool isBefore = false;
    bool isAnswered = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/a.abc"))));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("a.abc"));
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Save))));
        QTRY_VERIFY(isAnswered); // below
        // Not replaced: the dialog is there again and takes keys.
        QVERIFY(waitForKeyboard(dialog));
        QVERIFY(clickAt(middleOf(file.edit())));
        QVERIFY(pressKey(QStringLiteral("ctrl+a")));
        QVERIFY(typeText(QStringLiteral("new")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("new"));
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Save))));
        QTRY_VERIFY(!dialog->isVisible());
    });
    driver.next([&](QDialog *question) {
        QVERIFY(waitForKeyboard(question));
        isBefore = question->isModal() && question != file.dialog && file.dialog->isVisible();
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!question->isVisible());
        isAnswered = true;
    });
    run(file, driver, 1);
    QVERIFY(isBefore);
    QCOMPARE(textOf(file.result(), "filePath"), m_tree->path("out/new.abc"));
}

void tst_filedialog_x11::missingNameIsRefusedAndCanBeMended()
{
    FileDialog file(keys(true));
    bool isAnswered = false;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        QVERIFY(typeText(QStringLiteral("x.abc")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("x.abc"));
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Open))));
        QTRY_VERIFY(isAnswered); // below
        QVERIFY(waitForKeyboard(dialog));
        QVERIFY(clickAt(placeOfFile(dialog, m_tree->path("out/a.abc"))));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("a.abc"));
        QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Open))));
        QTRY_VERIFY(!dialog->isVisible());
    });
    driver.next([&](QDialog *message) {
        QVERIFY(waitForKeyboard(message));
        QVERIFY(pressKey(QStringLiteral("alt+c"))); // 关闭(&C)
        QTRY_VERIFY(!message->isVisible());
        isAnswered = true;
    });
    run(file, driver, 1);
    QCOMPARE(filesOf(file.result()), QStringList{QStringLiteral("a.abc|") + m_tree->path("out/a.abc")});
}

void tst_filedialog_x11::endingsWithoutAFile_data()
{
    QTest::addColumn<QString>("way");
    QTest::newRow("cancel button") << "button";
    QTest::newRow("Escape") << "Escape";
    QTest::newRow("close button of the frame") << "frame";
}

void tst_filedialog_x11::endingsWithoutAFile()
{
    QFETCH(QString, way);
    FileDialog file(keys(false));
    X11Client client;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, m_tree->path("out/a.abc"));
        QVERIFY(typeText(QStringLiteral("mine")));
        QTRY_COMPARE(file.edit()->text(), QStringLiteral("mine"));
        if (way == QLatin1String("button"))
            QVERIFY(clickAt(middleOf(button(dialog, QDialogButtonBox::Cancel))));
        else if (way == QLatin1String("frame"))
            client.pressCloseButton(dialog->winId());
        else
            QVERIFY(pressKey(way));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 2);
    QCOMPARE(keysOf(file.result()), QStringList{QStringLiteral("result")});
}

void tst_filedialog_x11::panesFollowTheSizeOfTheWindow()
{
    BagKeys wanted = keys(true);
    wanted << BagKey("defFilter", "Pictures (*.png)");
    FileDialog file(wanted);
    const QString path = m_tree->path("out/picture.png");
    QSize placesSize;
    QSize least;
    QRect picture;
    QSize host;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        waitForFile(dialog, path);
        QVERIFY(clickAt(placeOfFile(dialog, path)));
        QTRY_VERIFY(!previewOf(dialog).isNull());
        const QString id = QString::number(dialog->winId());
        const auto resizeTo = [&id](int width, int height) {
            return xdotool({QStringLiteral("windowsize"), id, QString::number(width), QString::number(height)});
        };
        QVERIFY(resizeTo(1100, 600));
        QTRY_COMPARE(dialog->size(), QSize(1100, 600));
        const auto *label = dialog->findChild<QGroupBox *>()->findChild<QLabel *>();
        placesSize = dialog->findChild<QListWidget *>()->size();
        picture = label->geometry();
        host = label->parentWidget()->size();
        QVERIFY(resizeTo(300, 200)); // the window manager keeps to the least size
        QTRY_VERIFY(dialog->width() < 1100 && dialog->height() < 600);
        least = dialog->size();
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    run(file, driver, 2);
    QCOMPARE(placesSize, QSize(200, 377));
    QVERIFY(picture.width() == host.width() || picture.height() == host.height());
    QVERIFY(std::abs(picture.center().x() - (host.width() - 1) / 2) <= 1);
    QVERIFY(std::abs(picture.center().y() - (host.height() - 1) / 2) <= 1);
    QVERIFY(least.width() >= 820 && least.height() >= 485);
}

ZEVA_TEST_MAIN(tst_filedialog_x11)
#include "tst_filedialog_x11.moc"
