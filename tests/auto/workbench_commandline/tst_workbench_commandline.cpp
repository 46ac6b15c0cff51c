// SPDX-License-Identifier: MIT
#include "commandline.h"
#include "zevatest.h"

#include <QKeyEvent>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QSignalSpy>

class tst_workbench_commandline : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void enterAndSpaceSend_data();
    void enterAndSpaceSend();
    void spaceIsABlankWhereThePromptTakesBlanks();
    void anEmptyLineIsSentToo();
    void escapeEmptiesTheLineThenCancels();
    void upAndDownBringBackLines();
    void tabCompletesCommandsOnly();
    void promptIsShown();
    void historyIsReadOnlyAndLimited();
    void keysTypedElsewhereArriveHere();

private:
    QLineEdit *edit() { return m_line->findChild<QLineEdit *>(QStringLiteral("commandEdit")); }

    std::unique_ptr<CommandLine> m_line;
};

void tst_workbench_commandline::init()
{
    ZevaTest::init();
    m_line = std::make_unique<CommandLine>();
    m_line->setCommandNames({"ARC", "CIRCLE", "CLOSE", "LINE"});
}

void tst_workbench_commandline::cleanup()
{
    m_line.reset();
    ZevaTest::cleanup();
}

void tst_workbench_commandline::enterAndSpaceSend_data()
{
    QTest::addColumn<int>("key");
    QTest::newRow("Enter") << int(Qt::Key_Enter);
    QTest::newRow("Return") << int(Qt::Key_Return);
    QTest::newRow("Space") << int(Qt::Key_Space);
}

void tst_workbench_commandline::enterAndSpaceSend()
{
    QFETCH(int, key);
    QSignalSpy sent(m_line.get(), &CommandLine::lineEntered);
    QTest::keyClicks(edit(), QStringLiteral("10,20"));
    QTest::keyClick(edit(), Qt::Key(key));
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent.first().first().toString(), QStringLiteral("10,20"));
    QCOMPARE(m_line->text(), QString());
}

void tst_workbench_commandline::spaceIsABlankWhereThePromptTakesBlanks()
{
    QSignalSpy sent(m_line.get(), &CommandLine::lineEntered);
    m_line->setPrompt(QStringLiteral("Text:"), true);
    QTest::keyClicks(edit(), QStringLiteral("two words"));
    QCOMPARE(sent.size(), 0);
    QTest::keyClick(edit(), Qt::Key_Return);
    QCOMPARE(sent.value(0).value(0).toString(), QStringLiteral("two words"));
}

void tst_workbench_commandline::anEmptyLineIsSentToo()
{
    QSignalSpy sent(m_line.get(), &CommandLine::lineEntered);
    QTest::keyClick(edit(), Qt::Key_Space);
    QCOMPARE(sent.size(), 1);
    QCOMPARE(sent.first().first().toString(), QString());
}

void tst_workbench_commandline::escapeEmptiesTheLineThenCancels()
{
    QSignalSpy cancelled(m_line.get(), &CommandLine::cancelled);
    QTest::keyClicks(edit(), QStringLiteral("LI"));
    QTest::keyClick(edit(), Qt::Key_Escape);
    QCOMPARE(m_line->text(), QString());
    QCOMPARE(cancelled.size(), 0);
    QTest::keyClick(edit(), Qt::Key_Escape);
    QCOMPARE(cancelled.size(), 1);
}

void tst_workbench_commandline::upAndDownBringBackLines()
{
    for (const char *line : {"first", "second", "second", "third"}) {
        QTest::keyClicks(edit(), QLatin1String(line));
        QTest::keyClick(edit(), Qt::Key_Return);
    }
    QStringList seen;
    for (const Qt::Key key :
         {Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Up, Qt::Key_Down, Qt::Key_Down, Qt::Key_Down}) {
        QTest::keyClick(edit(), key);
        seen << m_line->text();
    }
    QCOMPARE(seen, QStringList({"third", "second", "first", "first", "second", "third", ""}));
}

void tst_workbench_commandline::tabCompletesCommandsOnly()
{
    QTest::keyClicks(edit(), QStringLiteral("ci"));
    QTest::keyClick(edit(), Qt::Key_Tab);
    QCOMPARE(m_line->text(), QStringLiteral("CIRCLE"));
    QTest::keyClick(edit(), Qt::Key_Escape);

    m_line->setPrompt(QStringLiteral("Centre:"), false);
    QTest::keyClicks(edit(), QStringLiteral("ci"));
    QTest::keyClick(edit(), Qt::Key_Tab);
    QCOMPARE(m_line->text(), QStringLiteral("ci"));
}

void tst_workbench_commandline::promptIsShown()
{
    QCOMPARE(m_line->prompt(), QStringLiteral("Command:"));
    m_line->setPrompt(QStringLiteral("First point:"), false);
    QCOMPARE(m_line->prompt(), QStringLiteral("First point:"));
    m_line->clearPrompt();
    QCOMPARE(m_line->prompt(), QStringLiteral("Command:"));
}

void tst_workbench_commandline::historyIsReadOnlyAndLimited()
{
    for (int i = 0; i < CommandLine::kHistoryLines + 100; ++i)
        m_line->print(QString::number(i));
    const QStringList lines = m_line->history().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), CommandLine::kHistoryLines);
    QCOMPARE(lines.last(), QString::number(CommandLine::kHistoryLines + 99));
    QVERIFY(m_line->findChild<QPlainTextEdit *>(QStringLiteral("history"))->isReadOnly());
}

void tst_workbench_commandline::keysTypedElsewhereArriveHere()
{
    QSignalSpy sent(m_line.get(), &CommandLine::lineEntered);
    QKeyEvent letter(QEvent::KeyPress, Qt::Key_L, Qt::NoModifier, QStringLiteral("l"));
    QKeyEvent enter(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier);
    m_line->typeKey(&letter);
    m_line->typeKey(&enter);
    QCOMPARE(sent.value(0).value(0).toString(), QStringLiteral("l"));
}

ZEVA_TEST_MAIN(tst_workbench_commandline)
#include "tst_workbench_commandline.moc"
