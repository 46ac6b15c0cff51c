// SPDX-License-Identifier: MIT
#include "qt_utils.h"
#include "zevatest.h"

#include <QWidget>

/// The density helpers on a primary screen of 144 dots per inch.
class TestQtUtils144Dpi : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void densityIsThePrimaryScreens();
    void sizesAreScaledAndRounded_data();
    void sizesAreScaledAndRounded();
    void doublesAreScaledWithoutRounding();
    void scaleIsOneUnderUse96Dpi();
};

void TestQtUtils144Dpi::densityIsThePrimaryScreens()
{
    QCOMPARE(zvqt_getWindowDPI(nullptr), 144);
    QWidget neverShown;
    QCOMPARE(zvqt_getWindowDPI(&neverShown), 144);
    QWidget child(&neverShown);
    QCOMPARE(zvqt_getWindowDPI(&child), 144);
}

void TestQtUtils144Dpi::sizesAreScaledAndRounded_data()
{
    QTest::addColumn<int>("value");
    QTest::addColumn<int>("scaled");
    QTest::newRow("10 gives 15") << 10 << 15;
    QTest::newRow("0 gives 0") << 0 << 0;
    QTest::newRow("1.5 rounds up to 2") << 1 << 2;
    QTest::newRow("4.5 rounds up to 5") << 3 << 5;
    QTest::newRow("-1.5 rounds up to -1") << -1 << -1;
    QTest::newRow("-4.5 rounds up to -4") << -3 << -4;
    QTest::newRow("-3 is exact") << -2 << -3;
}

void TestQtUtils144Dpi::sizesAreScaledAndRounded()
{
    QFETCH(int, value);
    QFETCH(int, scaled);
    QCOMPARE(zvqt_dpiScaled(value, nullptr), scaled);
    QWidget widget;
    QCOMPARE(zvqt_dpiScaled(value, &widget), scaled);
}

void TestQtUtils144Dpi::doublesAreScaledWithoutRounding()
{
    QCOMPARE(zvqt_dpiScaledF(1.0, nullptr), 1.5);
    QCOMPARE(zvqt_dpiScaledF(-0.25, nullptr), -0.375);
}

void TestQtUtils144Dpi::scaleIsOneUnderUse96Dpi()
{
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, true);
    const int density = zvqt_getWindowDPI(nullptr);
    const int scaled = zvqt_dpiScaled(10, nullptr);
    const double scaledF = zvqt_dpiScaledF(0.7, nullptr);
    QCoreApplication::setAttribute(Qt::AA_Use96Dpi, false);
    QCOMPARE(density, 96);
    QCOMPARE(scaled, 10);
    QCOMPARE(scaledF, 0.7);
}

int main(int argc, char *argv[])
{
    zevaPinEnvironment();
    qputenv("QT_FONT_DPI", "144");
    QApplication application(argc, argv);
    zevaPinApplication();
    TestQtUtils144Dpi test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_qt_utils_144dpi.moc"
