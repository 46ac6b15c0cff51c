// SPDX-License-Identifier: MIT
#include "qt_utils.h"
#include "x11client.h"
#include "zevatest.h"

#include <QScreen>
#include <QWidget>
#include <QWindow>

/// The density helpers on two screens of different density: 96 dots per inch, and 144.
class TestScreenDensity : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void widgetWithoutAWindowTakesThePrimaryScreen();
    void widgetTakesTheScreenOfItsWindow();
    void scaleIsOneOnEveryScreenUnderUse96Dpi();
};

void TestScreenDensity::initTestCase()
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    QCOMPARE(screens.size(), 2);
    QCOMPARE(screens.at(0), QGuiApplication::primaryScreen());
    QCOMPARE(qRound(screens.at(0)->logicalDotsPerInch()), 96);
    QCOMPARE(qRound(screens.at(1)->logicalDotsPerInch()), 144);
}

void TestScreenDensity::widgetWithoutAWindowTakesThePrimaryScreen()
{
    QWidget widget;
    QVERIFY(!widget.windowHandle());
    QCOMPARE(zvqt_getWindowDPI(&widget), 96);
    QCOMPARE(zvqt_getWindowDPI(nullptr), 96);
}

void TestScreenDensity::widgetTakesTheScreenOfItsWindow()
{
    QWidget window;
    QWidget child(&window);
    window.winId();
    window.windowHandle()->setScreen(QGuiApplication::screens().at(1));
    QCOMPARE(zvqt_getWindowDPI(&window), 144);
    QCOMPARE(zvqt_getWindowDPI(&child), 144);
    QCOMPARE(zvqt_dpiScaled(10, &child), 15);
    QCOMPARE(zvqt_dpiScaledF(1.0, &child), 1.5);

    window.windowHandle()->setScreen(QGuiApplication::screens().at(0));
    QCOMPARE(zvqt_getWindowDPI(&child), 96);
    QCOMPARE(zvqt_dpiScaled(10, &child), 10);
}

void TestScreenDensity::scaleIsOneOnEveryScreenUnderUse96Dpi()
{
    QWidget window;
    window.winId();
    window.windowHandle()->setScreen(QGuiApplication::screens().at(1));
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, true);
    const int density = zvqt_getWindowDPI(&window);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, false);
    QCOMPARE(density, 96);
}

int main(int argc, char *argv[])
{
    zevaPinEnvironment();
    qunsetenv("QT_FONT_DPI");
    {
        X11Client client;
        client.setResources(0, "Xft.dpi:\t96\n");
        client.setResources(1, "Xft.dpi:\t144\n");
    }
    QApplication application(argc, argv);
    zevaPinApplication();
    TestScreenDensity test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_screen_density.moc"
