// SPDX-License-Identifier: MIT
#include "private/zvlogline.h"
#include "zevatest.h"

#include "base/zvlog.h"

namespace {

QByteArray s_text;
int s_level = 0;
int s_line = 0;
int s_calls = 0;

void keepLine(int level, int line, const char *, const char *, const char *text)
{
    s_level = level;
    s_line = line;
    s_text = text;
    ++s_calls;
}

/// Catches the log at a level of its own.
class LogWatch
{
public:
    explicit LogWatch(int level) : m_level(zeva_log_level()), m_handler(zvSetLogHandler(keepLine))
    {
        zeva_set_log_level(level);
        s_calls = 0;
    }
    ~LogWatch()
    {
        zeva_set_log_level(m_level);
        zvSetLogHandler(m_handler);
    }
    Q_DISABLE_COPY(LogWatch)

private:
    int m_level;
    ZvLogHandler m_handler;
};

} // namespace

class TestZvLogLine : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void lineIsWrittenBelowTheNextLevel_data();
    void lineIsWrittenBelowTheNextLevel();
    void longTextIsCut();
    void textIsNoFormat();
};

void TestZvLogLine::lineIsWrittenBelowTheNextLevel_data()
{
    QTest::addColumn<int>("logLevel");
    QTest::addColumn<int>("level");
    QTest::addColumn<bool>("isWritten");
    QTest::newRow("3 at level 3") << 3 << 3 << true;
    QTest::newRow("3 at level 4") << 4 << 3 << false;
    QTest::newRow("4 at level 4") << 4 << 4 << true;
    QTest::newRow("4 at level 5") << 5 << 4 << false;
    QTest::newRow("5 at level 5") << 5 << 5 << true;
    QTest::newRow("5 at level 6") << 6 << 5 << false;
    QTest::newRow("5 at level 0") << 0 << 5 << true;
}

void TestZvLogLine::lineIsWrittenBelowTheNextLevel()
{
    QFETCH(int, logLevel);
    QFETCH(int, level);
    QFETCH(bool, isWritten);
    const LogWatch watch(logLevel);
    zvLogLine(level, 77, "file", "function", "text");
    QCOMPARE(s_calls, isWritten ? 1 : 0);
    if (isWritten) {
        QCOMPARE(s_level, level);
        QCOMPARE(s_line, 77);
        QCOMPARE(s_text, QByteArray("text"));
    }
}

void TestZvLogLine::longTextIsCut()
{
    const LogWatch watch(0);
    zvLogLine(3, 1, "file", "function", QByteArray(2044, 'a').constData());
    QCOMPARE(s_text, QByteArray(2044, 'a'));
    zvLogLine(3, 1, "file", "function", QByteArray(5000, 'b').constData());
    QCOMPARE(s_text, QByteArray(2044, 'b'));
}

void TestZvLogLine::textIsNoFormat()
{
    const LogWatch watch(0);
    zvLogLine(3, 1, "file", "function", "100%d %s");
    QCOMPARE(s_text, QByteArray("100%d %s"));
}

ZEVA_TEST_MAIN(TestZvLogLine)
#include "tst_zvlogline.moc"
