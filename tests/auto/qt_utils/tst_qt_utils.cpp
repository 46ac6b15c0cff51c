// SPDX-License-Identifier: MIT
#include "qt_utils.h"
#include "zevatest.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QImage>
#include <QPixmap>
#include <QSignalSpy>
#include <QTemporaryDir>
#include <QWidget>

#include <sys/stat.h>

namespace {

// What main() finds before it makes the application object.
void *s_displayBeforeTheApplication = &s_displayBeforeTheApplication;
int s_densityBeforeTheApplication = 0;

int modeOf(const QString &path)
{
    struct stat info = {};
    return ::stat(QFile::encodeName(path).constData(), &info) == 0 ? int(info.st_mode & 07777) : -1;
}

bool makeFile(const QString &path, int mode = 0600)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    file.close();
    return ::chmod(QFile::encodeName(path).constData(), mode_t(mode)) == 0;
}

} // namespace

class TestQtUtils : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void displayIsNullWithoutAnApplication();
    void displayIsNullOffX11();
    void densityIs96OnAPlainScreen();
    void qtNeverScalesByItself();
    void windowHandleIsTheWidget();

    void nativeDragAlwaysReturnsTrue_data();
    void nativeDragAlwaysReturnsTrue();

    void keyNumber_data();
    void keyNumber();
    void everyKeyHasTheNumberOfItsStretch();

    void chmodRefusesWhatIsNoFolder_data();
    void chmodRefusesWhatIsNoFolder();
    void chmodOfAnEmptyFolderFailsAfterChangingIt();
    void chmodReachesAllFilesAndFolders();
    void chmodSucceedsThoughAFolderInsideIsEmpty();
    void chmodPassesOverHiddenFiles();
    void chmodComesToAnEndWhereLinksFormARing();

    void iconOfAnEmptyPathIsNull();
    void iconOfAFileThatDoesNotLoadIsNull_data();
    void iconOfAFileThatDoesNotLoadIsNull();
    void iconIsStretchedWithoutSmoothing();
    void blankIconIsTransparentAndOfTheAskedSize();

    void signalsAreBlockedForTheScope();
    void signalsAreUnblockedWhateverTheyWereBefore();
    void guardOfNullDoesNothing();
};

void TestQtUtils::displayIsNullWithoutAnApplication()
{
    QCOMPARE(s_displayBeforeTheApplication, nullptr);
    QCOMPARE(s_densityBeforeTheApplication, 96);
}

void TestQtUtils::displayIsNullOffX11()
{
    QCOMPARE(zvqt_get_display(), nullptr);
}

void TestQtUtils::densityIs96OnAPlainScreen()
{
    QCOMPARE(zvqt_getWindowDPI(nullptr), 96);
    QWidget shown;
    shown.show();
    QCOMPARE(zvqt_getWindowDPI(&shown), 96);
    QCOMPARE(zvqt_dpiScaled(10, &shown), 10);
    QCOMPARE(zvqt_dpiScaledF(0.5, &shown), 0.5);
}

void TestQtUtils::qtNeverScalesByItself()
{
    QCOMPARE(zvqt_isDPIScalingActive(), false);
}

void TestQtUtils::windowHandleIsTheWidget()
{
    QWidget widget;
    QCOMPARE(qt_windowHandle_to_widget(&widget), &widget);
    QCOMPARE(qt_windowHandle_to_widget(nullptr), nullptr);
}

void TestQtUtils::nativeDragAlwaysReturnsTrue_data()
{
    QTest::addColumn<int>("section");
    QTest::newRow("no section") << int(Qt::NoSection);
    QTest::newRow("title bar, off X11") << int(Qt::TitleBarArea);
    QTest::newRow("left edge, off X11") << int(Qt::LeftSection);
    QTest::newRow("below all sections") << -1;
    QTest::newRow("above all sections") << 10;
}

void TestQtUtils::nativeDragAlwaysReturnsTrue()
{
    QFETCH(int, section);
    QWidget widget;
    widget.show();
    QVERIFY(zvqt_window_start_native_drag_linux(&widget, QPoint(10, 10), Qt::WindowFrameSection(section)));
}

void TestQtUtils::keyNumber_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("number");
    QTest::newRow("below the plain keys") << 31 << 65535;
    QTest::newRow("space is itself") << int(Qt::Key_Space) << 32;
    QTest::newRow("0 is itself") << int(Qt::Key_0) << 48;
    QTest::newRow("A is itself") << int(Qt::Key_A) << 65;
    QTest::newRow("Z is itself") << int(Qt::Key_Z) << 90;
    QTest::newRow("behind Z") << 91 << 65535;
    QTest::newRow("lower-case a is no Qt key") << 97 << 65535;
    QTest::newRow("none") << 0 << 65535;
    QTest::newRow("negative") << -1 << 65535;
    QTest::newRow("Escape") << int(Qt::Key_Escape) << 256;
    QTest::newRow("Clear, last of its stretch") << int(Qt::Key_Clear) << 267;
    QTest::newRow("gap behind Clear has no number") << 0x100000C << 0;
    QTest::newRow("Home") << int(Qt::Key_Home) << 272;
    QTest::newRow("Shift") << int(Qt::Key_Shift) << 288;
    QTest::newRow("F1") << int(Qt::Key_F1) << 304;
    QTest::newRow("F35 lies in the stretch of F1") << int(Qt::Key_F35) << 338;
    QTest::newRow("last of the first band") << 0x100012F << 0;
    QTest::newRow("between the first band and the sixth") << 0x1000130 << 65535;
    QTest::newRow("before the sixth band") << 0x1001102 << 65535;
    QTest::newRow("AltGr, first of the sixth band") << int(Qt::Key_AltGr) << 718;
    QTest::newRow("hole behind AltGr") << 0x1001104 << 0;
    QTest::newRow("Multi_key") << int(Qt::Key_Multi_key) << 747;
    QTest::newRow("last with a number of its own") << 0x100113F << 778;
    QTest::newRow("hole before the run into the first band") << 0x1001142 << 0;
    QTest::newRow("runs on into the first band: as Escape") << 0x1001143 << 256;
    QTest::newRow("runs on into the first band: as F1") << 0x1001173 << 304;
    QTest::newRow("last before the second band") << 0x100124F << 524;
    QTest::newRow("dead grave: the second band comes before the sixth") << int(Qt::Key_Dead_Grave) << 560;
    QTest::newRow("dead keys, last of the long stretch") << 0x100126F << 591;
    QTest::newRow("dead a, of a pair") << int(Qt::Key_Dead_a) << 609;
    QTest::newRow("dead A, the other of the pair") << int(Qt::Key_Dead_A) << 609;
    QTest::newRow("dead O, last of the pairs") << int(Qt::Key_Dead_O) << 615;
    QTest::newRow("dead u") << int(Qt::Key_Dead_u) << 617;
    QTest::newRow("dead U, the same number") << int(Qt::Key_Dead_U) << 617;
    QTest::newRow("0x100128C") << 0x100128C << 620;
    QTest::newRow("0x1001293") << 0x1001293 << 627;
    QTest::newRow("behind the second band, past the table's end") << 0x10012A0 << 0;
    QTest::newRow("before the third band, past the table's end") << 0x100FFFF << 0;
    QTest::newRow("third band") << 0x1010002 << 642;
    QTest::newRow("third band, last key") << 0x101000E << 0;
    QTest::newRow("behind the third band: the sixth, past the table's end") << 0x101000F << 0;
    QTest::newRow("last of the sixth band") << 0x101003F << 0;
    QTest::newRow("behind the sixth band") << 0x1010040 << 65535;
    QTest::newRow("before the fourth band") << 0x1020000 << 65535;
    QTest::newRow("fourth band") << 0x1020001 << 655;
    QTest::newRow("fourth band, lone key") << 0x102000A << 664;
    QTest::newRow("behind the fourth band") << 0x1020010 << 65535;
    QTest::newRow("Context1, fifth band") << int(Qt::Key_Context1) << 670;
    QTest::newRow("Camera") << int(Qt::Key_Camera) << 702;
    QTest::newRow("CameraFocus") << int(Qt::Key_CameraFocus) << 703;
    QTest::newRow("last of the fifth band") << 0x110002F << 0;
    QTest::newRow("behind the fifth band") << 0x1100030 << 65535;
    QTest::newRow("Key_unknown") << int(Qt::Key_unknown) << 65535;
}

void TestQtUtils::keyNumber()
{
    QFETCH(int, key);
    QFETCH(int, number);
    QCOMPARE(qt_key_to_ansi_vk(key), number);
}

// The expectation is put together from both ends of each stretch as two plain lists, so that it shares neither the
// table's layout nor its arithmetic with the library.
void TestQtUtils::everyKeyHasTheNumberOfItsStretch()
{
    struct Ends
    {
        int firstKey, lastKey, firstNumber, lastNumber;
    };
    const QVector<Ends> rising = {
        {0x1000000, 0x100000B, 256, 267}, {0x1000010, 0x1000017, 272, 279}, {0x1000020, 0x1000026, 288, 294},
        {0x1000030, 0x1000059, 304, 345}, {0x1000060, 0x1000064, 352, 356}, {0x1000070, 0x1000077, 368, 375},
        {0x1000080, 0x1000086, 384, 390}, {0x1000090, 0x1000094, 400, 404}, {0x10000A0, 0x100011E, 416, 542},
        {0x1000120, 0x1000124, 544, 548}, {0x1001250, 0x100126F, 560, 591}, {0x1001289, 0x100128C, 617, 620},
        {0x1001290, 0x1001293, 624, 627}, {0x1010000, 0x1010002, 640, 642}, {0x1020001, 0x1020005, 655, 659},
        {0x102000A, 0x102000A, 664, 664}, {0x1100000, 0x1100009, 670, 679}, {0x1100020, 0x1100021, 702, 703},
        {0x1001103, 0x1001103, 718, 718}, {0x1001120, 0x100113F, 747, 778},
    };
    QHash<int, int> expected = {
        {0x1001280, 609}, {0x1001281, 609}, {0x1001282, 611}, {0x1001283, 611}, {0x1001284, 613},
        {0x1001285, 613}, {0x1001286, 615}, {0x1001287, 615}, {0x1001288, 617},
    };
    for (const Ends &ends : rising) {
        QCOMPARE(ends.lastKey - ends.firstKey, ends.lastNumber - ends.firstNumber);
        for (int key = ends.firstKey, number = ends.firstNumber; key <= ends.lastKey; ++key, ++number)
            expected.insert(key, number);
    }
    // The sixth band repeats the first one behind its own keys, as far as the second band leaves it room.
    for (int key = 0x1001143; key < 0x1001250; ++key)
        expected.insert(key, expected.value(key - 0x1143));

    const auto isKnown = [](int key) {
        return (key >= 0x1000000 && key <= 0x100012F) || (key >= 0x1001103 && key <= 0x101003F)
            || (key >= 0x1020001 && key <= 0x102000F) || (key >= 0x1100000 && key <= 0x110002F);
    };
    for (int key = 0xFFFF00; key < 0x1110000; ++key) {
        const int number = qt_key_to_ansi_vk(key);
        const int wanted = isKnown(key) ? expected.value(key, 0) : 65535;
        if (number != wanted)
            QFAIL(qPrintable(QStringLiteral("key 0x%1 gives %2, not %3").arg(key, 0, 16).arg(number).arg(wanted)));
    }
    for (int key = 0; key < 0x10000; ++key)
        QCOMPARE(qt_key_to_ansi_vk(key), key >= 32 && key <= 90 ? key : 65535);
}

void TestQtUtils::chmodRefusesWhatIsNoFolder_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("missing") << QStringLiteral("missing");
    QTest::newRow("a file") << QStringLiteral("file");
}

void TestQtUtils::chmodRefusesWhatIsNoFolder()
{
    QFETCH(QString, name);
    QTemporaryDir dir;
    QVERIFY(makeFile(dir.filePath(QStringLiteral("file"))));
    QCOMPARE(zvutRecursiveChmod(dir.filePath(name), 0755), -1);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral("file"))), 0600);
}

void TestQtUtils::chmodOfAnEmptyFolderFailsAfterChangingIt()
{
    QTemporaryDir dir;
    QCOMPARE(modeOf(dir.path()), 0700);
    QCOMPARE(zvutRecursiveChmod(dir.path(), 0750), -1);
    QCOMPARE(modeOf(dir.path()), 0750);
}

void TestQtUtils::chmodReachesAllFilesAndFolders()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkpath(QStringLiteral("outer/图纸")));
    const QStringList files = {dir.filePath(QStringLiteral("a")), dir.filePath(QStringLiteral("outer/b")),
                               dir.filePath(QStringLiteral("outer/图纸/c"))};
    for (const QString &file : files)
        QVERIFY(makeFile(file));
    QCOMPARE(zvutRecursiveChmod(dir.path(), 0754), 0);
    for (const QString &file : files)
        QCOMPARE(modeOf(file), 0754);
    QCOMPARE(modeOf(dir.path()), 0754);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral("outer"))), 0754);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral("outer/图纸"))), 0754);
}

void TestQtUtils::chmodSucceedsThoughAFolderInsideIsEmpty()
{
    QTemporaryDir dir;
    QVERIFY(QDir(dir.path()).mkdir(QStringLiteral("empty")));
    QCOMPARE(zvutRecursiveChmod(dir.path(), 0755), 0);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral("empty"))), 0755);
}

void TestQtUtils::chmodPassesOverHiddenFiles()
{
    QTemporaryDir dir;
    QVERIFY(makeFile(dir.filePath(QStringLiteral(".hidden"))));
    QVERIFY(makeFile(dir.filePath(QStringLiteral("seen"))));
    QCOMPARE(zvutRecursiveChmod(dir.path(), 0755), 0);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral(".hidden"))), 0600);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral("seen"))), 0755);
}

void TestQtUtils::chmodComesToAnEndWhereLinksFormARing()
{
    QTemporaryDir dir;
    for (int i = 0; i < 3; ++i) {
        const QString folder = dir.filePath(QString::number(i));
        QVERIFY(QDir().mkdir(folder));
        for (int j = 0; j < 3; ++j)
            QVERIFY(QFile::link(dir.path(), folder + QStringLiteral("/back%1").arg(j)));
    }
    QCOMPARE(zvutRecursiveChmod(dir.path(), 0755), 0);
    QCOMPARE(modeOf(dir.filePath(QStringLiteral("2"))), 0755);
}

void TestQtUtils::iconOfAnEmptyPathIsNull()
{
    QVERIFY(zvsiQtCreateIcon(QString(), false, 16, 16).isNull());
    QVERIFY(zvsiQtCreateIcon(QString(), true, 16, 16).isNull());
}

void TestQtUtils::iconOfAFileThatDoesNotLoadIsNull_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("blank");
    QTest::newRow("missing") << QStringLiteral("missing.png") << false;
    QTest::newRow("missing, blank") << QStringLiteral("missing.png") << true;
    QTest::newRow("no picture") << QStringLiteral("text.png") << false;
    QTest::newRow("no picture, blank") << QStringLiteral("text.png") << true;
}

void TestQtUtils::iconOfAFileThatDoesNotLoadIsNull()
{
    QFETCH(QString, name);
    QFETCH(bool, blank);
    QTemporaryDir dir;
    QVERIFY(makeFile(dir.filePath(QStringLiteral("text.png"))));
    QVERIFY(zvsiQtCreateIcon(dir.filePath(name), blank, 16, 16).isNull());
}

void TestQtUtils::iconIsStretchedWithoutSmoothing()
{
    QTemporaryDir dir;
    QImage halves(2, 1, QImage::Format_RGB32);
    halves.setPixelColor(0, 0, Qt::red);
    halves.setPixelColor(1, 0, Qt::blue);
    const QString path = dir.filePath(QStringLiteral("halves.png"));
    QVERIFY(halves.save(path));

    const QIcon icon = zvsiQtCreateIcon(path, false, 8, 12);
    QCOMPARE(icon.availableSizes(), QList<QSize>() << QSize(8, 12));
    const QImage picture = icon.pixmap(8, 12).toImage();
    QCOMPARE(picture.size(), QSize(8, 12));
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 8; ++x)
            QCOMPARE(picture.pixelColor(x, y), QColor(x < 4 ? Qt::red : Qt::blue));
    }
}

void TestQtUtils::blankIconIsTransparentAndOfTheAskedSize()
{
    QTemporaryDir dir;
    QImage full(5, 5, QImage::Format_RGB32);
    full.fill(Qt::green);
    const QString path = dir.filePath(QStringLiteral("full.bmp"));
    QVERIFY(full.save(path));

    const QIcon icon = zvsiQtCreateIcon(path, true, 20, 10);
    QCOMPARE(icon.availableSizes(), QList<QSize>() << QSize(20, 10));
    const QImage picture = icon.pixmap(20, 10).toImage();
    QCOMPARE(picture.size(), QSize(20, 10));
    for (int y = 0; y < 10; ++y) {
        for (int x = 0; x < 20; ++x)
            QCOMPARE(picture.pixelColor(x, y).alpha(), 0);
    }
}

void TestQtUtils::signalsAreBlockedForTheScope()
{
    QObject object;
    QSignalSpy renamed(&object, &QObject::objectNameChanged);
    {
        const ZvQtBlockSignalUtil guard(&object);
        QVERIFY(object.signalsBlocked());
        object.setObjectName(QStringLiteral("silent"));
    }
    QVERIFY(!object.signalsBlocked());
    QCOMPARE(renamed.count(), 0);
    object.setObjectName(QStringLiteral("heard"));
    QCOMPARE(renamed.count(), 1);
}

void TestQtUtils::signalsAreUnblockedWhateverTheyWereBefore()
{
    QObject object;
    object.blockSignals(true);
    {
        const ZvQtBlockSignalUtil guard(&object);
    }
    QVERIFY(!object.signalsBlocked());

    const ZvQtBlockSignalUtil outer(&object);
    {
        const ZvQtBlockSignalUtil inner(&object);
    }
    QVERIFY(!object.signalsBlocked());
}

void TestQtUtils::guardOfNullDoesNothing()
{
    const ZvQtBlockSignalUtil guard(nullptr);
}

int main(int argc, char *argv[])
{
    zevaPinEnvironment();
    s_displayBeforeTheApplication = zvqt_get_display();
    s_densityBeforeTheApplication = zvqt_getWindowDPI(nullptr);
    QApplication application(argc, argv);
    zevaPinApplication();
    TestQtUtils test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qt_utils.moc"
