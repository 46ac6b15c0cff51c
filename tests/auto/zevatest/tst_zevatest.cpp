// SPDX-License-Identifier: MIT
// The fixture and the driver of modal dialogs: what they must notice, they notice.
#include "modaldriver.h"
#include "zevatest.h"

#include "base/zvlog.h"

#include <QFontInfo>
#include <QProcess>
#include <QStyle>

/// Each function is a fault that the fixture has to find. Run as a program of its own by the test below.
class Faults : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void nothing() { }
    void warning() { qWarning("not announced"); }
    void missingWarning() { expectWarning(QStringLiteral("never comes")); }
    void announcedWarning()
    {
        expectWarning(QStringLiteral("announced"));
        qWarning("announced");
    }
    void assertion() { ZvAssert("not announced", __FILE__, __LINE__); }
    void announcedAssertion()
    {
        expectAssertion(QStringLiteral("false"));
        ZvAssert("false", __FILE__, __LINE__);
    }
    void widgetLeft() { (new QWidget)->show(); }
};

class TestZevaTest : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void surroundingsAreFixed();
    void faultIsFound_data();
    void faultIsFound();
    void driverActsOnceForEachDialog();
    void driverReachesADialogOpenedByADialog();
    void driverEndsADialogNobodyAskedFor();
    void driverEndsADialogWhenTimeIsUp();
    void driverIsNotFinishedWhenNoDialogCame();
};

void TestZevaTest::surroundingsAreFixed()
{
    QCOMPARE(QApplication::style()->objectName().toLower(), QStringLiteral("fusion"));
    QCOMPARE(QFontInfo(QApplication::font()).family(), QStringLiteral("DejaVu Sans"));
    QCOMPARE(QLocale().language(), QLocale::C);
    QCOMPARE(QApplication::palette().color(QPalette::Window),
             QApplication::style()->standardPalette().color(QPalette::Window));
}

void TestZevaTest::faultIsFound_data()
{
    QTest::addColumn<QString>("function");
    QTest::addColumn<int>("failures");
    QTest::newRow("a clean test passes") << QStringLiteral("nothing") << 0;
    QTest::newRow("a warning") << QStringLiteral("warning") << 1;
    QTest::newRow("an announced warning that never came") << QStringLiteral("missingWarning") << 1;
    QTest::newRow("an announced warning passes") << QStringLiteral("announcedWarning") << 0;
    QTest::newRow("an assertion") << QStringLiteral("assertion") << 1;
    QTest::newRow("an announced assertion passes") << QStringLiteral("announcedAssertion") << 0;
    QTest::newRow("a top-level widget left") << QStringLiteral("widgetLeft") << 1;
}

void TestZevaTest::faultIsFound()
{
    QFETCH(QString, function);
    QFETCH(int, failures);
    QCOMPARE(QProcess::execute(QCoreApplication::applicationFilePath(), {QStringLiteral("--faults"), function}),
             failures);
}

void TestZevaTest::driverActsOnceForEachDialog()
{
    QStringList calls;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        calls << dialog->objectName();
        dialog->accept();
    });
    driver.next([&](QDialog *dialog) {
        calls << dialog->objectName();
        dialog->done(5);
    });
    for (const char *name : {"first", "second"}) {
        QDialog dialog;
        dialog.setObjectName(QLatin1String(name));
        QVERIFY(!driver.finished());
        QCOMPARE(dialog.exec(), qstrcmp(name, "first") == 0 ? 1 : 5);
    }
    QVERIFY(driver.finished());
    QCOMPARE(calls, QStringList({QStringLiteral("first"), QStringLiteral("second")}));
}

void TestZevaTest::driverReachesADialogOpenedByADialog()
{
    QDialog outer;
    int innerCode = 0;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QDialog inner(dialog);
        innerCode = inner.exec();
        dialog->done(7);
    });
    driver.next([](QDialog *dialog) { dialog->done(8); });
    QCOMPARE(outer.exec(), 7);
    QCOMPARE(innerCode, 8);
    QVERIFY(driver.finished());
}

void TestZevaTest::driverEndsADialogNobodyAskedFor()
{
    QDialog dialog;
    ModalDriver driver;
    QCOMPARE(dialog.exec(), 0);
    QVERIFY(!driver.finished());
}

void TestZevaTest::driverEndsADialogWhenTimeIsUp()
{
    QDialog first;
    QDialog second;
    ModalDriver driver(1);
    driver.next([](QDialog *) {
        QEventLoop forEver;
        QObject::connect(qApp, &QGuiApplication::lastWindowClosed, &forEver, &QEventLoop::quit);
        QTimer::singleShot(50, &forEver, &QEventLoop::quit);
        forEver.exec();
    });
    QCOMPARE(first.exec(), 0);
    QCOMPARE(second.exec(), 0);
    QVERIFY(!driver.finished());
}

void TestZevaTest::driverIsNotFinishedWhenNoDialogCame()
{
    ModalDriver driver;
    driver.next([](QDialog *) {});
    QVERIFY(!driver.finished());
}

int main(int argc, char *argv[])
{
    zevaPinEnvironment();
    QApplication application(argc, argv);
    zevaPinApplication();
    QStringList arguments = application.arguments();
    if (arguments.removeOne(QStringLiteral("--faults"))) {
        Faults faults;
        return QTest::qExec(&faults, arguments);
    }
    TestZevaTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_zevatest.moc"
