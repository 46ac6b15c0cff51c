// SPDX-License-Identifier: MIT
#include "base/zvconfig.h"
#include "utils/zvfiles.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <cstddef>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <thread>
#include <unistd.h>

class UtilsFilesTest : public QObject
{
    Q_OBJECT

private slots:
    void theExecutableLiesInItsFolder();
    void pathsAreJoinedWithOneSlash_data();
    void pathsAreJoinedWithOneSlash();
    void namesAreTakenFromPaths_data();
    void namesAreTakenFromPaths();
    void aFileExistsAndAFolderDoesNot();
    void accessAnswersYesWithNonZero();
    void onlyPathsThatTheSystemCannotStoreAreRefused_data();
    void onlyPathsThatTheSystemCannotStoreAreRefused();
    void theSizeOfAMissingFileIsZero();
    void homeEndsWithoutASlash();
    void aCommandGivesWhatItPrints();
    void aFailedCommandGivesNothing_data();
    void aFailedCommandGivesNothing();
    void aCommandThatPrintsWithoutEndIsEnded();
    void aChildThatKeepsThePipeIsNotWaitedFor();
    void outputClosedBeforeTheEndStillCounts();
    void aCommandThatNeverEndsIsEndedWithItsChildren();
    void aCommandThatCannotBeEndedIsNotWaitedFor();
    void plotStylesAreListedByKindAndName();
};

static void touch(const QString &path, const QByteArray &content = QByteArray())
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

static QString toQString(const ZvString &text)
{
    return QString::fromWCharArray(text.wstr(), text.length());
}

void UtilsFilesTest::theExecutableLiesInItsFolder()
{
    QCOMPARE(QString::fromUtf8(zvsiutGetExePath().c_str()), QCoreApplication::applicationDirPath());
}

void UtilsFilesTest::pathsAreJoinedWithOneSlash_data()
{
    QTest::addColumn<QByteArray>("a");
    QTest::addColumn<QByteArray>("b");
    QTest::addColumn<QByteArray>("joined");
    QTest::newRow("plain") << QByteArray("/a") << QByteArray("b") << QByteArray("/a/b");
    QTest::newRow("slash at the end of the second stays")
        << QByteArray("/a") << QByteArray("ico_zeva/") << QByteArray("/a/ico_zeva/");
    QTest::newRow("slash at both") << QByteArray("/a/") << QByteArray("/b") << QByteArray("/a/b");
    QTest::newRow("root") << QByteArray("/") << QByteArray("b") << QByteArray("/b");
    QTest::newRow("first empty") << QByteArray() << QByteArray("b/c") << QByteArray("b/c");
    QTest::newRow("second empty") << QByteArray("/a") << QByteArray() << QByteArray("/a");
}

void UtilsFilesTest::pathsAreJoinedWithOneSlash()
{
    QFETCH(QByteArray, a);
    QFETCH(QByteArray, b);
    QFETCH(QByteArray, joined);
    QCOMPARE(QByteArray(zvutCombinePath(a.constData(), b.constData()).c_str()), joined);
}

void UtilsFilesTest::namesAreTakenFromPaths_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("noExtension");
    QTest::addColumn<QString>("anySeparator");
    QTest::newRow("plain") << "/a/plan.dxf"
                           << "plan.dxf"
                           << "plan"
                           << "plan.dxf";
    QTest::newRow("two extensions") << "/a/plan.tar.gz"
                                    << "plan.tar.gz"
                                    << "plan.tar"
                                    << "plan.tar.gz";
    QTest::newRow("no extension") << "plan"
                                  << "plan"
                                  << "plan"
                                  << "plan";
    QTest::newRow("point in the folder only") << "/a.b/plan"
                                              << "plan"
                                              << "plan"
                                              << "plan";
    QTest::newRow("hidden file") << "/a/.config"
                                 << ".config"
                                 << ".config"
                                 << ".config";
    QTest::newRow("folder") << "/a/b/"
                            << ""
                            << ""
                            << "";
    QTest::newRow("backslashes") << "C:\\a\\plan.dxf"
                                 << "C:\\a\\plan.dxf"
                                 << "C:\\a\\plan"
                                 << "plan.dxf";
    QTest::newRow("Chinese") << QStringLiteral("/图/平面图.dxf") << QStringLiteral("平面图.dxf")
                             << QStringLiteral("平面图") << QStringLiteral("平面图.dxf");
}

void UtilsFilesTest::namesAreTakenFromPaths()
{
    QFETCH(QString, path);
    QFETCH(QString, name);
    QFETCH(QString, noExtension);
    QFETCH(QString, anySeparator);
    const ZvString wide(path.toUtf8().constData());
    QCOMPARE(toQString(zvutGetFileName(wide)), name);
    QCOMPARE(QString::fromUtf8(zvutGetFileName(ZvUtf8String(path.toUtf8().constData())).c_str()), name);
    QCOMPARE(toQString(zvutGetFileNoExtName(wide)), noExtension);
    QCOMPARE(toQString(zvutGetLastFileNameInPath(wide)), anySeparator);
}

void UtilsFilesTest::aFileExistsAndAFolderDoesNot()
{
    QTemporaryDir folder;
    const QByteArray file = folder.filePath("a").toUtf8();
    QVERIFY(!zvutIsExistFile(file.constData()));
    touch(folder.filePath("a"));
    QVERIFY(zvutIsExistFile(file.constData()));
    QVERIFY(!isDir(file.constData()));
    QVERIFY(isDir(folder.path().toUtf8().constData()));
    QVERIFY(!zvutIsExistFile(folder.path().toUtf8().constData()));
}

void UtilsFilesTest::accessAnswersYesWithNonZero()
{
    QTemporaryDir folder;
    const ZvString file(folder.filePath("a").toUtf8().constData());
    QCOMPARE(zvutAccessFile(file, 0), 0);
    QCOMPARE(zvutAccessFile(file, 4), 0);
    QVERIFY(zvutAccessFile(file, 2) != 0); // may be made: its folder can be written
    touch(folder.filePath("a"));
    QVERIFY(zvutAccessFile(file, 0) != 0);
    QVERIFY(zvutAccessFile(file, 4) != 0);
    QVERIFY(zvutAccessFile(file, 2) != 0);
    QCOMPARE(zvutAccessFile(ZvString("/no/such/folder/a"), 2), 0);
    QCOMPARE(zvutAccessFile(ZvString(), 0), 0);
    if (geteuid() == 0)
        return; // root may write anything
    QFile::setPermissions(folder.filePath("a"), QFileDevice::ReadOwner);
    QCOMPARE(zvutAccessFile(file, 2), 0);
    QVERIFY(zvutAccessFile(file, 4) != 0);
}

void UtilsFilesTest::onlyPathsThatTheSystemCannotStoreAreRefused_data()
{
    QTest::addColumn<QByteArray>("path");
    QTest::addColumn<bool>("isValid");
    QTest::newRow("plain") << QByteArray("/tmp/a b:*?.dxf") << true;
    QTest::newRow("255 bytes") << "/tmp/" + QByteArray(255, 'a') << true;
    QTest::newRow("256 bytes") << "/tmp/" + QByteArray(256, 'a') << false;
    QTest::newRow("256 bytes of Chinese") << "/tmp/" + QString(86, QChar(0x56FE)).toUtf8() << false;
    QTest::newRow("empty") << QByteArray() << false;
    QTest::newRow("a folder") << QByteArray("/tmp/") << false;
    QTest::newRow("4095 bytes") << QByteArray("/aaaaaaa").repeated(511) + "/aaaaaa" << true;
    QTest::newRow("4096 bytes") << QByteArray("/aaaaaaa").repeated(512) << false;
}

void UtilsFilesTest::onlyPathsThatTheSystemCannotStoreAreRefused()
{
    QFETCH(QByteArray, path);
    QFETCH(bool, isValid);
    QCOMPARE(zvutIsValidFilePathName(ZvUtf8String(path.constData(), path.size())), isValid);
}

void UtilsFilesTest::theSizeOfAMissingFileIsZero()
{
    QTemporaryDir folder;
    const QByteArray file = folder.filePath("a").toUtf8();
    QCOMPARE(zvutGetFileSize(file.constData()), 0LL);
    touch(folder.filePath("a"), QByteArray(2097152, 'x'));
    QCOMPARE(zvutGetFileSize(file.constData()), 2097152LL);
}

void UtilsFilesTest::homeEndsWithoutASlash()
{
    const QByteArray before = qgetenv("HOME");
    qputenv("HOME", "/some/home//");
    QCOMPARE(QByteArray(zvutGetHomeDir().c_str()), QByteArray("/some/home"));
    qputenv("HOME", before);
    QVERIFY(!zvutGetUserName().isEmpty());
}

void UtilsFilesTest::aCommandGivesWhatItPrints()
{
    ZvUtf8String output("before");
    QVERIFY(zvutPipeCmd("printf 'MOUNTPOINT\\n/\\n/media/usb\\n'", output));
    QCOMPARE(QByteArray(output.c_str()), QByteArray("MOUNTPOINT\n/\n/media/usb\n"));
    QVERIFY(zvutPipeCmd("true", output));
    QVERIFY(output.isEmpty());
    QVERIFY(zvutPipeCmd("cat; echo done", output)); // nothing comes from the standard input
    QCOMPARE(QByteArray(output.c_str()), QByteArray("done\n"));
}

void UtilsFilesTest::aFailedCommandGivesNothing_data()
{
    QTest::addColumn<QByteArray>("command");
    QTest::newRow("no such program") << QByteArray("no-such-program-anywhere");
    QTest::newRow("exit status") << QByteArray("echo text; exit 3");
    QTest::newRow("killed by a signal") << QByteArray("echo text; kill -9 $$");
    QTest::newRow("empty") << QByteArray();
}

void UtilsFilesTest::aFailedCommandGivesNothing()
{
    QFETCH(QByteArray, command);
    ZvUtf8String output("before");
    QVERIFY(!zvutPipeCmd(command.constData(), output));
    QVERIFY(output.isEmpty());
}

void UtilsFilesTest::aCommandThatPrintsWithoutEndIsEnded()
{
    ZvUtf8String output;
    QVERIFY(!zvutPipeCmd("yes", output));
    QVERIFY(output.isEmpty());
}

void UtilsFilesTest::aChildThatKeepsThePipeIsNotWaitedFor()
{
    ZvUtf8String output;
    QVERIFY(zvutPipeCmd("sleep 100 & echo $!", output));
    const int child = QByteArray(output.c_str()).trimmed().toInt();
    QVERIFY(child > 1);
    QCOMPARE(kill(child, 0), 0); // it had not ended: the call did not wait for it
    kill(child, SIGKILL);
}

void UtilsFilesTest::outputClosedBeforeTheEndStillCounts()
{
    ZvUtf8String output;
    QVERIFY(zvutPipeCmd("echo text; exec >&-; true", output));
    QCOMPARE(QByteArray(output.c_str()), QByteArray("text\n"));
    QVERIFY(!zvutPipeCmd("echo text; exec >&-; exit 1", output));
}

void UtilsFilesTest::aCommandThatNeverEndsIsEndedWithItsChildren()
{
    QTemporaryDir folder;
    const QString pidFile = folder.filePath("pid");
    ZvUtf8String output;
    const QByteArray command = "sleep 1000 & echo $! > '" + pidFile.toUtf8() + "'; wait";
    QVERIFY(!zvutPipeCmd(command.constData(), output));
    QFile file(pidFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const int child = file.readAll().trimmed().toInt();
    QVERIFY(child > 1);
    // It is nobody's child any more; the system takes a moment to bury it.
    QTRY_VERIFY(kill(child, 0) != 0 || QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(child)).isEmpty());
}

/// Takes the right to send signals from the calling thread, for good.
static bool giveUpKill()
{
    sock_filter program[] = {
        BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offsetof(seccomp_data, nr)),
        BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, __NR_kill, 0, 1),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ERRNO | EPERM),
        BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW),
    };
    const sock_fprog filter{4, program};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 && prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &filter) == 0;
}

void UtilsFilesTest::aCommandThatCannotBeEndedIsNotWaitedFor()
{
    QTemporaryDir folder;
    const QString pidFile = folder.filePath("pid");
    const QByteArray command = "echo $$ > '" + pidFile.toUtf8() + "'; exec sleep 30";
    bool isRefused = false;
    bool isDone = true;
    std::thread caller([&] {
        isRefused = giveUpKill();
        ZvUtf8String output;
        isDone = !isRefused || zvutPipeCmd(command.constData(), output);
    });
    caller.join();
    if (!isRefused)
        QSKIP("the system does not let a thread give up a right");
    QVERIFY(!isDone);
    QFile file(pidFile);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const int child = file.readAll().trimmed().toInt();
    QVERIFY(child > 1);
    QVERIFY(!QFile::symLinkTarget(QStringLiteral("/proc/%1/exe").arg(child)).isEmpty()); // it still runs
    kill(child, SIGKILL);
    // A later call buries it.
    ZvUtf8String output;
    const auto isBuried = [&] { return zvutPipeCmd("true", output) && kill(child, 0) != 0; };
    QTRY_VERIFY(isBuried());
}

void UtilsFilesTest::plotStylesAreListedByKindAndName()
{
    QTemporaryDir first;
    QTemporaryDir second;
    touch(first.filePath("b.ctb"));
    touch(first.filePath("c.stb"));
    touch(first.filePath("d.txt"));
    touch(second.filePath("A.CTB"));
    QVERIFY(QDir(second.path()).mkdir("folder.ctb"));
    const ZvJsonPtr paths = ElementValue::createObject(IElementValueBase::kArray);
    paths->append(ElementValue::createString(first.path().toUtf8().constData()));
    paths->append(ElementValue::createString((second.path() + "/").toUtf8().constData()));
    paths->append(ElementValue::createString("/no/such/folder"));
    const ZvJsonPtr settings = ElementValue::createObject(IElementValueBase::kObject);
    settings->SetDataJ("plotStylePaths", paths);
    zv_runtime_settings()->SetDataJ("paths", settings);

    ZvArray<ZvString> files;
    files.append("left over");
    zvsiutGetAllPlotStyleFiles(files, true, nullptr);
    QCOMPARE(files.length(), 2);
    QCOMPARE(toQString(files[0]), second.filePath("A.CTB"));
    QCOMPARE(toQString(files[1]), first.filePath("b.ctb"));
    zvsiutGetAllPlotStyleFiles(files, false, nullptr);
    QCOMPARE(files.length(), 1);
    QCOMPARE(toQString(files[0]), first.filePath("c.stb"));
    zv_runtime_settings()->SetDataJ("paths", nullptr);
    zvsiutGetAllPlotStyleFiles(files, true, nullptr);
    QCOMPARE(files.length(), 0);
}

QTEST_MAIN(UtilsFilesTest)
#include "tst_utils_files.moc"
