// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "modaldriver.h"
#include "workbenchtest.h"
#include "xdotool.h"
#include "zevatest.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>

/// The workbench on a real display with a window manager.
class tst_workbench_x11 : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void cleanup();
    void theViewHasTheKeyboard();
    void pointerSelects();
    void theKeyboardGoesBackToTheViewAfterADialog();
    void fromStartToExit();

private:
    void start()
    {
        m_session = std::make_unique<WorkbenchSession>();
        QVERIFY(m_session->isExposed());
        m_session->window().activateWindow();
        QVERIFY(waitForKeyboard(&m_session->window()));
        m_session->newDrawing();
        QTRY_VERIFY(m_session->view().hasFocus());
    }

    std::unique_ptr<WorkbenchSession> m_session;
};

void tst_workbench_x11::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_x11::theViewHasTheKeyboard()
{
    start();
    QVERIFY(typeText(QStringLiteral("CIRC")));
    QTRY_COMPARE(m_session->window().commandLine()->text(), QStringLiteral("CIRC"));
    QVERIFY(m_session->view().hasFocus());
    QVERIFY(pressKey(QStringLiteral("Escape")));
    QTRY_COMPARE(m_session->window().commandLine()->text(), QString());
}

void tst_workbench_x11::pointerSelects()
{
    start();
    const ZvDbObjectId line = m_session->addLine({100, 50, 0}, {300, 50, 0});
    QTRY_VERIFY(m_session->view().isComplete());
    const QPoint at = m_session->view().mapToGlobal(m_session->pixel(200, 50));
    QVERIFY(clickAt(at));
    QTRY_COMPARE(m_session->selection(), std::vector<ZvDbObjectId>({line}));

    const double scale = m_session->view().camera().scale();
    QVERIFY(xdotool({QStringLiteral("click"), QStringLiteral("4")})); // the wheel, upwards
    QTRY_VERIFY(m_session->view().camera().scale() > scale);
    const QPoint after = m_session->view().mapToGlobal(m_session->pixel(200, 50));
    QVERIFY((after - at).manhattanLength() <= 2);
}

void tst_workbench_x11::theKeyboardGoesBackToTheViewAfterADialog()
{
    start();
    ModalDriver driver;
    driver.next([](QDialog *dialog) {
        // Closed the moment it appears, it is gone before the window manager gives it the keyboard.
        QVERIFY(waitForKeyboard(dialog));
        QVERIFY(pressKey(QStringLiteral("Escape")));
        QTRY_VERIFY(!dialog->isVisible());
    });
    m_session->action("messageBoxPlain")->trigger();
    QVERIFY(driver.finished());
    QTRY_VERIFY(m_session->view().hasFocus());
    QVERIFY(typeText(QStringLiteral("X")));
    QTRY_COMPARE(m_session->window().commandLine()->text(), QStringLiteral("X"));
}

void tst_workbench_x11::fromStartToExit()
{
    QTemporaryDir folder;
    const QString drawing = folder.filePath(QStringLiteral("start to exit.dxf"));
    QVERIFY(QFile::copy(QStringLiteral(ZEVA_SAMPLES_DIR "/part.dxf"), drawing));
    QFile(drawing).setPermissions(QFile::ReadOwner | QFile::WriteOwner);
    const qint64 before = QFile(drawing).size();

    QProcess program;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("HOME"), folder.path());
    environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
    program.setProcessEnvironment(environment);
    program.start(QStringLiteral(WORKBENCH_PROGRAM), {drawing});
    QVERIFY(program.waitForStarted());
    QVERIFY(xdotool({QStringLiteral("search"), QStringLiteral("--sync"), QStringLiteral("--onlyvisible"),
                     QStringLiteral("--name"), QStringLiteral("start to exit.dxf.* - Workbench"),
                     QStringLiteral("windowactivate"), QStringLiteral("--sync")}));
    for (const char *line : {"LINE", "10,10", "60,40", "", "SAVE", "QUIT"}) {
        if (*line)
            QVERIFY(typeText(QLatin1String(line)));
        QVERIFY(pressKey(QStringLiteral("Return")));
    }
    const bool ended = program.waitForFinished(60000);
    if (!ended) {
        program.kill();
        program.waitForFinished();
    }
    QVERIFY(ended);
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    QCOMPARE(program.readAllStandardError(), QByteArray());
    QVERIFY(QFile(drawing).size() > before);
    QVERIFY(QFile::exists(folder.filePath(QStringLiteral(".config/zeva/zvworkbench.conf"))));
}

ZEVA_TEST_MAIN(tst_workbench_x11)
#include "tst_workbench_x11.moc"
