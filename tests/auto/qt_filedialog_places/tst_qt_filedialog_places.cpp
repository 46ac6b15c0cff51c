// SPDX-License-Identifier: MIT
// The list of places in the file dialog: the computer, its mount points, the user's folders.
#include "filedialogrun.h"
#include "zevatest.h"

#include <QProcess>
#include <QSplitter>
#include <QStackedWidget>

#include <memory>
#include <pwd.h>

namespace {

QByteArray s_home;
bool s_hasUser = true;

/// "text|key" of each entry.
QStringList entriesOf(const FileDialog &box)
{
    QStringList entries;
    const QListWidget *list = box.places();
    for (int i = 0; list && i < list->count(); ++i)
        entries << list->item(i)->text() + QLatin1Char('|') + list->item(i)->data(Qt::UserRole).toString();
    return entries;
}

void clickPlace(QListWidget *list, const QString &key)
{
    for (int i = 0; i < list->count(); ++i) {
        if (list->item(i)->data(Qt::UserRole).toString() != key)
            continue;
        list->scrollToItem(list->item(i));
        QTest::mouseClick(list->viewport(), Qt::LeftButton, Qt::NoModifier,
                          list->visualItemRect(list->item(i)).center());
        return;
    }
    QFAIL(qPrintable(key));
}

const QString kComputer = QStringLiteral("我的电脑|我的电脑");
const QString kHome = QStringLiteral("用户|用户");

} // namespace

/// The user record of this program: the dialog takes the home folder from it and not from the environment.
extern "C" Q_DECL_EXPORT passwd *getpwuid(uid_t)
{
    static char name[] = "tester";
    static passwd user = {};
    user.pw_name = name;
    user.pw_dir = s_home.isNull() ? nullptr : s_home.data();
    return s_hasUser ? &user : nullptr;
}

class TestQtFileDialogPlaces : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void listTakesThePlaceOfTheSideBar();
    void hiddenExtensionsLeaveQtsDialog();
    void mountPointsOfThisMachine();
    void mountPointsOfTheListing_data();
    void mountPointsOfTheListing();
    void homeFolders_data();
    void homeFolders();
    void homeComesFromTheUserRecord_data();
    void homeComesFromTheUserRecord();
    void iconsAreThoseOfTheResources();
    void clickGoesToThePlace_data();
    void clickGoesToThePlace();
    void clickKeepsTheTypedName();
    void mountThatIsGoneDoesNothing();
    void mountThatCameLaterIsNotListed();
    void listingIsAskedForMountPointsOnly();
    void dataDiskGoesToData();

private:
    void setListing(const QByteArray &script);

    std::unique_ptr<ModuleSession> m_session;
    std::unique_ptr<FileTree> m_tree;
    QByteArray m_path;
};

void TestQtFileDialogPlaces::initTestCase()
{
    m_path = qgetenv("PATH");
}

void TestQtFileDialogPlaces::init()
{
    ZevaTest::init();
    m_session = std::make_unique<ModuleSession>();
    m_tree = std::make_unique<FileTree>();
    s_home = m_tree->addFolder("home").toUtf8();
    s_hasUser = true;
    setListing("echo MOUNTPOINT");
}

void TestQtFileDialogPlaces::cleanup()
{
    qputenv("PATH", m_path);
    m_tree.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

/// A stand-in for the listing tool, by its shell script; it checks how it is called.
void TestQtFileDialogPlaces::setListing(const QByteArray &script)
{
    m_tree->addFile("bin/lsblk", "#!/bin/sh\ntest \"$*\" = '-l -o MOUNTPOINT' || exit 9\n" + script + "\n");
    QFile::setPermissions(m_tree->path("bin/lsblk"), QFileDevice::Permissions(0x7755));
    qputenv("PATH", m_tree->path("bin").toUtf8() + ":/usr/bin:/bin");
}

void TestQtFileDialogPlaces::listTakesThePlaceOfTheSideBar()
{
    FileDialog box(BagKeys{});
    box.show();
    auto *splitter = box.dialog->findChild<QSplitter *>(QStringLiteral("splitter"));
    QCOMPARE(splitter->count(), 4);
    QCOMPARE(splitter->widget(0), box.places());
    QCOMPARE(box.places()->minimumSize(), QSize(200, 377));
    QCOMPARE(box.places()->maximumSize(), QSize(200, 377));
    QVERIFY(box.places()->isVisible());
    const auto *sideBar = box.dialog->findChild<QWidget *>(QStringLiteral("sidebar"));
    QVERIFY(sideBar->isHidden());
    QCOMPARE(sideBar->minimumSize(), QSize(149, 377));
    const auto *files = box.dialog->findChild<QStackedWidget *>(QStringLiteral("stackedWidget"));
    QCOMPARE(files->minimumSize(), QSize(389, 377));
    QVERIFY(files->isVisible());
    QCOMPARE(splitter->indexOf(splitter->widget(3)), 3);
    QCOMPARE(splitter->widget(3)->minimumSize(), QSize(250, 377));
}

void TestQtFileDialogPlaces::hiddenExtensionsLeaveQtsDialog()
{
    setListing("touch '" + m_tree->path("called").toUtf8() + "'; echo MOUNTPOINT");
    FileDialog box({{"HideExtend", true}});
    box.show();
    QCOMPARE(box.places(), nullptr);
    QCOMPARE(box.dialog->findChild<QSplitter *>(QStringLiteral("splitter"))->count(), 2);
    QVERIFY(box.dialog->findChild<QWidget *>(QStringLiteral("sidebar"))->isVisible());
    QVERIFY(!QFile::exists(m_tree->path("called")));
    QCOMPARE(box.dialog->minimumSize(), QSize(820, 485));
}

void TestQtFileDialogPlaces::mountPointsOfThisMachine()
{
    qputenv("PATH", m_path);
    QProcess tool;
    tool.start(QStringLiteral("lsblk"), {"-l", "-o", "MOUNTPOINT"});
    if (!tool.waitForFinished() || tool.exitCode() != 0)
        QSKIP("this machine does not list its block devices");
    QStringList keys;
    for (const QString &line : QString::fromUtf8(tool.readAllStandardOutput()).split('\n').mid(1)) {
        if (line.startsWith('/') && line != "/" && !line.contains("/boot/efi"))
            keys << line;
    }
    const FileDialog box(BagKeys{});
    QStringList seen;
    for (int i = 1; i < box.places()->count() - 1; ++i) // between computer and home
        seen << box.places()->item(i)->data(Qt::UserRole).toString();
    QCOMPARE(seen, keys);
}

void TestQtFileDialogPlaces::mountPointsOfTheListing_data()
{
    QTest::addColumn<QByteArray>("script");
    QTest::addColumn<QStringList>("mounts");
    const QStringList none;
    QTest::newRow("backup") << QByteArray("printf 'MOUNTPOINT\\n/backup\\n'") << QStringList{"备份分区|/backup"};
    QTest::newRow("boot") << QByteArray("printf 'MOUNTPOINT\\n/boot\\n'") << QStringList{"引导分区|/boot"};
    QTest::newRow("data") << QByteArray("printf 'MOUNTPOINT\\n/data\\n'") << QStringList{"数据盘|/data"};
    QTest::newRow("a stick") << QByteArray("printf 'MOUNTPOINT\\n/media/user/My Stick\\n'")
                             << QStringList{"My Stick|/media/user/My Stick"};
    QTest::newRow("a stick with a Chinese name")
        << QByteArray("printf 'MOUNTPOINT\\n/media/user/优盘\\n'") << QStringList{"优盘|/media/user/优盘"};
    QTest::newRow("media anywhere in the path")
        << QByteArray("printf 'MOUNTPOINT\\n/srv/media/films\\n'") << QStringList{"films|/srv/media/films"};
    QTest::newRow("any other path") << QByteArray("printf 'MOUNTPOINT\\n/srv/projects\\n'")
                                    << QStringList{"/srv/projects|/srv/projects"};
    QTest::newRow("backup below another folder")
        << QByteArray("printf 'MOUNTPOINT\\n/srv/backup\\n'") << QStringList{"/srv/backup|/srv/backup"};
    QTest::newRow("root, swap, blanks and EFI are left out")
        << QByteArray("printf 'MOUNTPOINT\\n\\n/\\n[SWAP]\\n/boot/efi\\n/srv/boot/efi/x\\n/boot\\n\\n'")
        << QStringList{"引导分区|/boot"};
    QTest::newRow("order of the listing, doubles stay")
        << QByteArray("printf 'MOUNTPOINT\\n/z\\n/a\\n/z\\n'") << QStringList{"/z|/z", "/a|/a", "/z|/z"};
    QTest::newRow("the first line is a title, whatever it says")
        << QByteArray("printf '/a\\n/b\\n'") << QStringList{"/b|/b"};
    QTest::newRow("no line end behind the last") << QByteArray("printf 'MOUNTPOINT\\n/a'") << QStringList{"/a|/a"};
    QTest::newRow("title only") << QByteArray("echo MOUNTPOINT") << none;
    QTest::newRow("nothing") << QByteArray("true") << none;
    QTest::newRow("the tool fails") << QByteArray("printf 'MOUNTPOINT\\n/a\\n'; exit 1") << none;
    QTest::newRow("the tool hangs") << QByteArray("printf 'MOUNTPOINT\\n/a\\n'; exec sleep 1000") << none;
    QTest::newRow("the tool never stops printing") << QByteArray("exec yes /a") << none;
    QTest::newRow("the tool complains") << QByteArray("echo trouble >&2; printf 'MOUNTPOINT\\n/a\\n'")
                                        << QStringList{"/a|/a"};
    QTest::newRow("the tool waits for input") << QByteArray("cat; printf 'MOUNTPOINT\\n/a\\n'") << QStringList{"/a|/a"};
}

void TestQtFileDialogPlaces::mountPointsOfTheListing()
{
    QFETCH(QByteArray, script);
    QFETCH(QStringList, mounts);
    setListing(script);
    const FileDialog box(BagKeys{});
    QVERIFY(box.isReady);
    QCOMPARE(entriesOf(box), QStringList{kComputer} + mounts + QStringList{kHome});
}

void TestQtFileDialogPlaces::homeFolders_data()
{
    QTest::addColumn<QStringList>("folders");
    QTest::addColumn<QStringList>("entries");
    const QStringList chinese{"桌面", "视频", "图片", "文档", "下载", "音乐"};
    const QStringList english{"Desktop", "Videos", "Pictures", "Documents", "Downloads", "Music"};
    QTest::newRow("none") << QStringList() << QStringList();
    for (int i = 0; i < chinese.size(); ++i) {
        QTest::newRow(qPrintable(chinese[i])) << QStringList{chinese[i]} << QStringList{chinese[i] + '|' + chinese[i]};
        QTest::newRow(qPrintable(english[i])) << QStringList{english[i]} << QStringList{chinese[i] + '|' + english[i]};
    }
    QStringList all;
    for (int i = 0; i < chinese.size(); ++i)
        all << chinese[i] + '|' + chinese[i] << chinese[i] + '|' + english[i];
    QTest::newRow("all, two of a text each") << chinese + english << all;
    QTest::newRow("others") << QStringList{"desktop", "Templates"} << QStringList();
}

void TestQtFileDialogPlaces::homeFolders()
{
    QFETCH(QStringList, folders);
    QFETCH(QStringList, entries);
    for (const QString &folder : folders)
        m_tree->addFolder("home/" + folder);
    const FileDialog box(BagKeys{});
    QCOMPARE(entriesOf(box), QStringList{kComputer} + QStringList{kHome} + entries);
}

void TestQtFileDialogPlaces::homeComesFromTheUserRecord_data()
{
    QTest::addColumn<QString>("home"); // "%1" is the tree
    QTest::addColumn<bool>("hasUser");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("there") << "%1/home" << true << true;
    QTest::newRow("not there") << "%1/nowhere" << true << false;
    QTest::newRow("letters beyond Latin-1") << QStringLiteral("%1/家") << true << false;
    QTest::newRow("no such user") << "%1/home" << false << false;
}

void TestQtFileDialogPlaces::homeComesFromTheUserRecord()
{
    QFETCH(QString, home);
    QFETCH(bool, hasUser);
    QFETCH(bool, isListed);
    m_tree->addFolder(QStringLiteral("家/Desktop"));
    m_tree->addFolder("home/Desktop");
    s_home = home.replace("%1", m_tree->path()).toUtf8();
    s_hasUser = hasUser;
    const FileDialog box(BagKeys{});
    QCOMPARE(entriesOf(box),
             isListed ? (QStringList{kComputer, kHome, QStringLiteral("桌面|Desktop")}) : QStringList{kComputer});
}

void TestQtFileDialogPlaces::iconsAreThoseOfTheResources()
{
    m_tree->addFolder("home/Desktop");
    setListing("printf 'MOUNTPOINT\\n/a\\n'");
    const FileDialog box(BagKeys{});
    QCOMPARE(box.places()->count(), 4);
    for (int i = 0; i < 4; ++i) {
        const QString file = i == 0 ? QStringLiteral(":/res/computer.png") : QStringLiteral(":/res/file.png");
        const QSize size = i == 0 ? QSize(27, 27) : QSize(26, 26);
        QCOMPARE(box.places()->item(i)->icon().availableSizes(), QList<QSize>{size});
        QCOMPARE(box.places()->item(i)->icon().pixmap(size).toImage(), QPixmap(file).toImage());
    }
}

void TestQtFileDialogPlaces::clickGoesToThePlace_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("folder"); // "%1" is the tree
    QTest::newRow("computer") << "我的电脑"
                              << "/";
    QTest::newRow("home") << "用户"
                          << "%1/home";
    for (const char *name : {"桌面", "Desktop", "视频", "Videos", "图片", "Pictures", "文档", "Documents", "下载",
                             "Downloads", "音乐", "Music"})
        QTest::newRow(name) << QString::fromUtf8(name) << QString::fromUtf8("%1/home/") + QString::fromUtf8(name);
    QTest::newRow("mount point") << "%1/mnt/disk"
                                 << "%1/mnt/disk";
}

void TestQtFileDialogPlaces::clickGoesToThePlace()
{
    QFETCH(QString, key);
    QFETCH(QString, folder);
    key.replace("%1", m_tree->path());
    folder.replace("%1", m_tree->path());
    m_tree->addFolder("mnt/disk");
    setListing("printf 'MOUNTPOINT\\n" + m_tree->path("mnt/disk").toUtf8() + "\\n'");
    if (folder != "/")
        QDir().mkpath(folder);
    FileDialog box({{"dir", m_tree->addFolder("start")}});
    box.show();
    clickPlace(box.places(), key);
    QCOMPARE(box.dialog->directory().path(), folder);
    QCOMPARE(box.edit()->text(), QString());
}

void TestQtFileDialogPlaces::clickKeepsTheTypedName()
{
    const FileDialog box({{"dir", m_tree->addFolder("start")}, {"filter", "Drawings (*.abc)"}});
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        typeName(dialog, QStringLiteral("my 图"));
        clickPlace(box.places(), QStringLiteral("我的电脑"));
        clickPlace(box.places(), QStringLiteral("用户"));
        pressReturn(dialog);
    });
    QCOMPARE(box.adapter->doModal(), 1);
    QVERIFY(driver.finished());
    QCOMPARE(textOf(box.result(), "filePath"), m_tree->path(QStringLiteral("home/my 图.abc")));
}

void TestQtFileDialogPlaces::mountThatIsGoneDoesNothing()
{
    m_tree->addFolder("mnt/disk");
    setListing("printf 'MOUNTPOINT\\n" + m_tree->path("mnt/disk").toUtf8() + "\\n'");
    FileDialog box({{"dir", m_tree->addFolder("start")}});
    box.show();
    setListing("echo MOUNTPOINT");
    typeName(box.dialog, "plan");
    clickPlace(box.places(), m_tree->path("mnt/disk"));
    QCOMPARE(box.dialog->directory().path(), m_tree->path("start"));
    QCOMPARE(box.edit()->text(), QStringLiteral("plan"));
}

void TestQtFileDialogPlaces::mountThatCameLaterIsNotListed()
{
    FileDialog box(BagKeys{});
    const QStringList before = entriesOf(box);
    setListing("printf 'MOUNTPOINT\\n/a\\n'");
    box.show();
    QCOMPARE(entriesOf(box), before);
}

void TestQtFileDialogPlaces::listingIsAskedForMountPointsOnly()
{
    m_tree->addFolder("mnt/disk");
    const QString calls = m_tree->path("calls");
    setListing("echo >> '" + calls.toUtf8() + "'; printf 'MOUNTPOINT\\n" + m_tree->path("mnt/disk").toUtf8() + "\\n'");
    FileDialog box({{"dir", m_tree->addFolder("start")}});
    box.show();
    QCOMPARE(QFileInfo(calls).size(), 1); // once for all entries
    clickPlace(box.places(), QStringLiteral("我的电脑"));
    clickPlace(box.places(), QStringLiteral("用户"));
    QCOMPARE(QFileInfo(calls).size(), 1);
    clickPlace(box.places(), m_tree->path("mnt/disk"));
    QCOMPARE(QFileInfo(calls).size(), 2);
}

void TestQtFileDialogPlaces::dataDiskGoesToData()
{
    // The entry of the data disk has its path for a key and goes there while it is mounted; the text serves as a key
    // of its own to those who add entries.
    FileDialog box({{"dir", m_tree->addFolder("start")}});
    box.show();
    auto *item = new QListWidgetItem(QStringLiteral("disk"), box.places());
    item->setData(Qt::UserRole, QStringLiteral("数据盘"));
    clickPlace(box.places(), QStringLiteral("数据盘"));
    // Few machines have the folder. Qt's next dialog begins where the last one was sent to, or as near to it as there
    // is a folder.
    const bool isThere = QDir(QStringLiteral("/data")).exists();
    QCOMPARE(QFileDialog().directory().path(), isThere ? QStringLiteral("/data") : QStringLiteral("/"));
    QVERIFY(!isThere || box.dialog->directory().path() == QStringLiteral("/data"));
}

ZEVA_TEST_MAIN(TestQtFileDialogPlaces)
#include "tst_qt_filedialog_places.moc"
