// SPDX-License-Identifier: MIT
#ifndef ZEVATEST_H
#define ZEVATEST_H

#include <QApplication>
#include <QObject>
#include <QTest>

/// Base of the test classes: checks after every test function that the test left the world as it found it.
///
/// A test fails that leaves a top-level widget or an open drawing object behind, that lets out a warning or raises a
/// kernel assertion nobody announced, or in which an announced one never came. A class with an init() or cleanup() of
/// its own calls these.
class ZevaTest : public QObject
{
    Q_OBJECT
public:
    /// Announces one message of level warning or above, with exactly this \a text, in the running test function.
    static void expectWarning(const QString &text);
    /// The same for one assertion of the kernel (ZvAssert).
    static void expectAssertion(const QString &text);

protected Q_SLOTS:
    void init();
    void cleanup();
};

/// Fixes what a picture or a size depends on: Fusion style and its palette, font DejaVu Sans 9, 96 dots
/// per inch (or as many as the variable ZEVA_TEST_DPI tells), locale C, no effects. To be called before the application
/// object is made.
void zevaPinEnvironment();
/// The rest of it, to be called when the application object is made.
void zevaPinApplication();

/// Waits until \a window itself is the active one; false when that takes longer than five seconds. To
/// QTest::qWaitForWindowActive() a dialog is active as soon as its parent is, before it has the keyboard.
bool zevaWaitForActive(const QWidget *window);

#define ZEVA_TEST_MAIN(TestClass)                                                                                      \
    int main(int argc, char *argv[])                                                                                   \
    {                                                                                                                  \
        zevaPinEnvironment();                                                                                          \
        QApplication application(argc, argv);                                                                          \
        zevaPinApplication();                                                                                          \
        TestClass test;                                                                                                \
        QTEST_SET_MAIN_SOURCE_PATH                                                                                     \
        return QTest::qExec(&test, argc, argv);                                                                        \
    }

#endif
