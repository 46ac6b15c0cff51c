// SPDX-License-Identifier: MIT
#include "private/zvdialogparent.h"
#include "zevatest.h"

#include "core/zvsystem.h"
#include "core/zvui.h"

#include <QWidget>

namespace {

class Host : public ZvUiHost
{
public:
    explicit Host(QWidget *window) : m_window(window) { zvuiSetHost(this); }
    ~Host() override { zvuiSetHost(nullptr); }
    void *mainWindow() override { return m_window; }
    int setCursor(void *, int cursor) override { return cursor; }

private:
    QWidget *m_window;
};

class SystemWindow : public ZvApWindow
{
public:
    explicit SystemWindow(QWidget *window) : m_window(window) { }
    void *handle() const override { return m_window; }
    ZvApView *mainView() const override { return nullptr; }

private:
    QWidget *m_window;
};

constexpr ZvDialogParent kRules[]
    = {ZvDialogParent::kGiven, ZvDialogParent::kMainWindow, ZvDialogParent::kGivenOrSystem};

} // namespace

Q_DECLARE_METATYPE(ZvDialogParent)

class TestZvDialogParent : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void firstWindowThereIs_data();
    void firstWindowThereIs();
    void systemObjectMayBeAbsent();
    void applicationObjectMayBeAbsent();
    void systemWindowMayBeAbsent();
};

void TestZvDialogParent::firstWindowThereIs_data()
{
    QTest::addColumn<ZvDialogParent>("rule");
    QTest::addColumn<bool>("hasGiven");
    QTest::addColumn<bool>("hasMain");
    QTest::addColumn<QString>("parent");
    const auto given = ZvDialogParent::kGiven;
    const auto mainWindow = ZvDialogParent::kMainWindow;
    const auto system = ZvDialogParent::kGivenOrSystem;
    QTest::newRow("given comes first") << given << true << true << "given";
    QTest::newRow("given, else main") << given << false << true << "main";
    QTest::newRow("given, no main") << given << true << false << "given";
    QTest::newRow("given, never the system's") << given << false << false << "none";
    QTest::newRow("main, the given is ignored") << mainWindow << true << true << "main";
    QTest::newRow("main, without one none") << mainWindow << true << false << "none";
    QTest::newRow("system: given comes first") << system << true << true << "given";
    QTest::newRow("system: main comes second") << system << false << true << "main";
    QTest::newRow("system: the last resort") << system << false << false << "system";
}

void TestZvDialogParent::firstWindowThereIs()
{
    QFETCH(ZvDialogParent, rule);
    QFETCH(bool, hasGiven);
    QFETCH(bool, hasMain);
    QFETCH(QString, parent);
    QWidget given;
    QWidget mainWindow;
    QWidget systemWidget;
    given.setObjectName(QStringLiteral("given"));
    mainWindow.setObjectName(QStringLiteral("main"));
    systemWidget.setObjectName(QStringLiteral("system"));
    const Host host(hasMain ? &mainWindow : nullptr);
    SystemWindow systemWindow(&systemWidget);
    CHcSystem::start();
    CHcSystem::instance()->application()->setWindow(&systemWindow);

    const QWidget *found = zvDialogParent(rule, hasGiven ? &given : nullptr);
    CHcSystem::instance()->application()->setWindow(nullptr);
    CHcSystem::stop();
    QCOMPARE(found ? found->objectName() : QStringLiteral("none"), parent);
}

void TestZvDialogParent::systemObjectMayBeAbsent()
{
    QVERIFY(!CHcSystem::instance());
    for (const ZvDialogParent rule : kRules)
        QCOMPARE(zvDialogParent(rule, nullptr), nullptr);
}

void TestZvDialogParent::applicationObjectMayBeAbsent()
{
    CHcSystem::start();
    CHcSystem::instance()->setApplicationAvailable(false);
    for (const ZvDialogParent rule : kRules)
        QCOMPARE(zvDialogParent(rule, nullptr), nullptr);
    CHcSystem::stop();
}

void TestZvDialogParent::systemWindowMayBeAbsent()
{
    CHcSystem::start();
    for (const ZvDialogParent rule : kRules)
        QCOMPARE(zvDialogParent(rule, nullptr), nullptr);
    CHcSystem::stop();
}

ZEVA_TEST_MAIN(TestZvDialogParent)
#include "tst_zvdialogparent.moc"
