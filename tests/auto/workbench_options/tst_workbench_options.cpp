// SPDX-License-Identifier: MIT
#include "programoptions.h"
#include "zevatest.h"

namespace {

ProgramOptions parse(const QStringList &arguments)
{
    return ProgramOptions::parse(QStringList(QStringLiteral("zvworkbench")) + arguments);
}

} // namespace

class tst_workbench_options : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void withoutArgumentsNothingIsAskedFor();
    void filesAreThePositionalArguments();
    void macrosAndScriptsKeepTheirCommonOrder();
    void singleValues();
    void wrongArgumentsAreAnError_data();
    void wrongArgumentsAreAnError();
    void helpNamesEveryOption();
};

void tst_workbench_options::withoutArgumentsNothingIsAskedFor()
{
    const ProgramOptions options = parse({});
    QVERIFY(options.error.isEmpty());
    QVERIFY(options.files.isEmpty());
    QVERIFY(options.steps.isEmpty());
    QVERIFY(!options.quit);
    QVERIFY(!options.showHelp);
    QVERIFY(!options.showVersion);
}

void tst_workbench_options::filesAreThePositionalArguments()
{
    const ProgramOptions options = parse({"a.dxf", "--quit", "图 b.dxf"});
    QCOMPARE(options.files, QStringList({"a.dxf", "图 b.dxf"}));
    QVERIFY(options.quit);
}

void tst_workbench_options::macrosAndScriptsKeepTheirCommonOrder()
{
    const ProgramOptions options
        = parse({"--macro", "_.LINE 0,0 1,1;;", "--script", "a.scr", "--macro", "_.UNDO", "--script=b.scr"});
    QCOMPARE(options.steps.size(), 4);
    const QStringList texts = {"_.LINE 0,0 1,1;;", "a.scr", "_.UNDO", "b.scr"};
    for (int i = 0; i < 4; ++i) {
        QCOMPARE(options.steps[i].text, texts[i]);
        QCOMPARE(options.steps[i].isScript, i % 2 == 1);
    }
}

void tst_workbench_options::singleValues()
{
    const ProgramOptions options
        = parse({"--select", "layer=A-WALL", "--state", "s.json", "--grab", "g.png", "--export", "e.pdf"});
    QCOMPARE(options.select, QStringLiteral("layer=A-WALL"));
    QCOMPARE(options.stateFile, QStringLiteral("s.json"));
    QCOMPARE(options.grabFile, QStringLiteral("g.png"));
    QCOMPARE(options.exportFile, QStringLiteral("e.pdf"));
    QCOMPARE(parse({"--lang", "en"}).language, QStringLiteral("en"));
    QVERIFY(parse({"--dark"}).isDark);
    QVERIFY(!parse({}).isDark);
    QVERIFY(parse({"--help"}).showHelp);
    QVERIFY(parse({"-h"}).showHelp);
    QVERIFY(parse({"--version"}).showVersion);
}

void tst_workbench_options::wrongArgumentsAreAnError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList({"--frobnicate"});
    QTest::newRow("missing value") << QStringList({"--state"});
    QTest::newRow("empty value") << QStringList({"--grab", ""});
    QTest::newRow("empty language") << QStringList({"--lang", ""});
    QTest::newRow("value for a switch") << QStringList({"--quit=yes"});
}

void tst_workbench_options::wrongArgumentsAreAnError()
{
    QFETCH(QStringList, arguments);
    const QString error = parse(arguments).error;
    QVERIFY(!error.isEmpty());
    QVERIFY(!error.contains(QLatin1Char('\n')));
}

void tst_workbench_options::helpNamesEveryOption()
{
    const QString help = ProgramOptions::helpText();
    for (const char *option :
         {"--select EXPR", "--macro TEXT", "--script FILE", "--state FILE", "--grab FILE.png", "--export FILE",
          "--lang LANGUAGE", "--dark", "--quit", "--help", "--version", "[FILE...]"})
        QVERIFY2(help.contains(QLatin1String(option)), option);
}

QTEST_GUILESS_MAIN(tst_workbench_options)
#include "tst_workbench_options.moc"
