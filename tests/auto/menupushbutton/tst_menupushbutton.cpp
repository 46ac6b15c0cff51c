// SPDX-License-Identifier: MIT
#include "menudriver.h"
#include "zevatest.h"
#include "zvmenupushbutton.h"

#include <QAction>
#include <QSignalSpy>

#include <memory>

class TestMenuPushButton : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void withoutActionsItIsAPlainButton();
    void firstActionMakesBothMenus();
    void pressOpensTheMenuOfItsPart_data();
    void pressOpensTheMenuOfItsPart();
    void splitStaysWhereTheFirstPressPutIt_data();
    void splitStaysWhereTheFirstPressPutIt();
    void pickedActionIsTriggered();
    void keyboardOpensTheMenuOfTheLastPress();
    void pressOfAnyButtonChoosesThePart();
    void oneMenuOnlyIsTheButtons();
    void nullActionIsIgnored();
    void deletedActionLeavesTheMenu();

private:
    /// Presses at \a x and returns the entries of the menu that came; "none" where none did.
    QStringList entriesAt(int x)
    {
        MenuDriver driver{QString()};
        QTest::mousePress(m_button.get(), Qt::LeftButton, Qt::NoModifier, QPoint(x, 10));
        const bool finished = driver.finished();
        QTest::mouseRelease(m_button.get(), Qt::LeftButton, Qt::NoModifier, QPoint(x, 10));
        return finished ? driver.entries() : QStringList{QStringLiteral("none")};
    }
    /// The same with the key that presses a button.
    QStringList entriesByKey()
    {
        MenuDriver driver{QString()};
        QTest::keyPress(m_button.get(), Qt::Key_Space);
        const bool finished = driver.finished();
        QTest::keyRelease(m_button.get(), Qt::Key_Space);
        return finished ? driver.entries() : QStringList{QStringLiteral("none")};
    }
    void show(int width)
    {
        m_button->resize(width, 25);
        m_button->show();
        QVERIFY(QTest::qWaitForWindowExposed(m_button.get()));
    }
    void addActions()
    {
        m_button->addMenu(&m_first);
        m_button->addMenu(&m_second);
    }

    std::unique_ptr<ZvMenuPushButton> m_button;
    QAction m_first{QStringLiteral("First")};
    QAction m_second{QStringLiteral("Second")};
};

static const QStringList kBoth = {QStringLiteral("First"), QStringLiteral("Second")};

void TestMenuPushButton::init()
{
    ZevaTest::init();
    m_button = std::make_unique<ZvMenuPushButton>(nullptr);
}

void TestMenuPushButton::cleanup()
{
    m_button.reset();
    ZevaTest::cleanup();
}

void TestMenuPushButton::withoutActionsItIsAPlainButton()
{
    show(90);
    const QSignalSpy clicked(m_button.get(), &QPushButton::clicked);
    for (const int x : {5, 85}) {
        QTest::mouseClick(m_button.get(), Qt::LeftButton, Qt::NoModifier, QPoint(x, 10));
        QVERIFY(!m_button->menu());
    }
    QCOMPARE(clicked.size(), 2);
    QVERIFY(m_button->findChildren<QMenu *>().isEmpty());
}

void TestMenuPushButton::firstActionMakesBothMenus()
{
    m_button->addMenu(&m_first);
    QCOMPARE(m_button->findChildren<QMenu *>(QString(), Qt::FindDirectChildrenOnly).size(), 2);
    QVERIFY(m_button->menu());
    QVERIFY(m_button->menu()->isEmpty());
    m_button->addMenu(&m_second);
    QCOMPARE(m_button->findChildren<QMenu *>().size(), 2);
    QVERIFY(m_button->menu()->isEmpty());
}

void TestMenuPushButton::pressOpensTheMenuOfItsPart_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("x");
    QTest::addColumn<QStringList>("entries");
    QTest::newRow("left edge") << 90 << 0 << QStringList();
    QTest::newRow("last pixel before two thirds") << 90 << 59 << QStringList();
    QTest::newRow("at two thirds") << 90 << 60 << kBoth;
    QTest::newRow("right edge") << 90 << 89 << kBoth;
    QTest::newRow("before two thirds in fractions") << 100 << 66 << QStringList();
    QTest::newRow("behind two thirds in fractions") << 100 << 67 << kBoth;
}

void TestMenuPushButton::pressOpensTheMenuOfItsPart()
{
    QFETCH(int, width);
    QFETCH(int, x);
    QFETCH(QStringList, entries);
    addActions();
    show(width);
    QCOMPARE(entriesAt(x), entries);
    // There and back.
    QCOMPARE(entriesAt(width - 1), kBoth);
    QCOMPARE(entriesAt(0), QStringList());
    QCOMPARE(entriesAt(x), entries);
}

void TestMenuPushButton::splitStaysWhereTheFirstPressPutIt_data()
{
    QTest::addColumn<bool>("actionsFirst");
    QTest::newRow("pressed with actions") << true;
    QTest::newRow("pressed before there are any") << false;
}

void TestMenuPushButton::splitStaysWhereTheFirstPressPutIt()
{
    QFETCH(bool, actionsFirst);
    show(90);
    if (actionsFirst) {
        addActions();
        QCOMPARE(entriesAt(0), QStringList());
    } else {
        QTest::mouseClick(m_button.get(), Qt::LeftButton, Qt::NoModifier, QPoint(5, 10));
        addActions();
    }
    m_button->resize(300, 25);
    QCOMPARE(entriesAt(59), QStringList());
    QCOMPARE(entriesAt(60), kBoth);
}

void TestMenuPushButton::pickedActionIsTriggered()
{
    addActions();
    show(90);
    const QSignalSpy first(&m_first, &QAction::triggered);
    const QSignalSpy second(&m_second, &QAction::triggered);
    MenuDriver driver(QStringLiteral("Second"));
    QTest::mousePress(m_button.get(), Qt::LeftButton, Qt::NoModifier, QPoint(80, 10));
    QVERIFY(driver.finished());
    QCOMPARE(first.size(), 0);
    QCOMPARE(second.size(), 1);
}

void TestMenuPushButton::keyboardOpensTheMenuOfTheLastPress()
{
    addActions();
    show(90);
    m_button->setFocus();
    QCOMPARE(entriesByKey(), QStringList());
    QCOMPARE(entriesAt(80), kBoth);
    QCOMPARE(entriesByKey(), kBoth);
    QCOMPARE(entriesAt(10), QStringList());
    QCOMPARE(entriesByKey(), QStringList());
}

void TestMenuPushButton::pressOfAnyButtonChoosesThePart()
{
    addActions();
    show(90);
    m_button->setFocus();
    // It opens none, and is seen by what the keyboard opens.
    QTest::mouseClick(m_button.get(), Qt::RightButton, Qt::NoModifier, QPoint(60, 10));
    QCOMPARE(entriesByKey(), kBoth);
    QTest::mouseClick(m_button.get(), Qt::RightButton, Qt::NoModifier, QPoint(59, 10));
    QCOMPARE(entriesByKey(), QStringList());
}

void TestMenuPushButton::oneMenuOnlyIsTheButtons()
{
    addActions();
    show(90);
    for (const int x : {80, 10, 10, 80, 80, 10}) {
        entriesAt(x);
        QCOMPARE(m_button->actions().size(), 1);
        QCOMPARE(m_button->actions().constFirst(), m_button->menu()->menuAction());
    }
}

void TestMenuPushButton::nullActionIsIgnored()
{
    m_button->addMenu(nullptr);
    QVERIFY(!m_button->menu());
    addActions();
    m_button->addMenu(nullptr);
    show(90);
    QCOMPARE(entriesAt(80), kBoth);
}

void TestMenuPushButton::deletedActionLeavesTheMenu()
{
    auto *action = new QAction(QStringLiteral("Gone"));
    addActions();
    m_button->addMenu(action);
    delete action;
    show(90);
    QCOMPARE(entriesAt(80), kBoth);
}

ZEVA_TEST_MAIN(TestMenuPushButton)
#include "tst_menupushbutton.moc"
