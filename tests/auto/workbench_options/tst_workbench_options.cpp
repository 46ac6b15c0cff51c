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
    void controlsTakeAPageThatThereIs_data();
    void controlsTakeAPageThatThereIs();
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
    QVERIFY(!options.showControls);
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
        = parse({"--select", "layer=A-WALL", "--state", "s.json", "--grab", "g.png", "--export", "e.pdf", "--grab-controls", "c"});
    QCOMPARE(options.select, QStringLiteral("layer=A-WALL"));
    QCOMPARE(options.stateFile, QStringLiteral("s.json"));
    QCOMPARE(options.grabFile, QStringLiteral("g.png"));
    QCOMPARE(options.exportFile, QStringLiteral("e.pdf"));
    QCOMPARE(options.grabControlsFolder, QStringLiteral("c"));
    QCOMPARE(parse({"--lang", "en"}).language, QStringLiteral("en"));
    QVERIFY(parse({"--dark"}).isDark);
    QVERIFY(!parse({}).isDark);
    QVERIFY(parse({"--help"}).showHelp);
    QVERIFY(parse({"-h"}).showHelp);
    QVERIFY(parse({"--version"}).showVersion);
}

void tst_workbench_options::controlsTakeAPageThatThereIs_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("page");
    QTest::addColumn<QStringList>("files");
    QTest::newRow("alone") << QStringList{"--controls"} << "" << QStringList();
    QTest::newRow("a class") << QStringList{"--controls", "ZvTextEdit"} << "ZvTextEdit" << QStringList();
    QTest::newRow("a dialog, in one word") << QStringList{"--controls=MessageBox"} << "MessageBox" << QStringList();
    QTest::newRow("a file behind it") << QStringList{"--controls", "a.dxf"} << "" << QStringList{"a.dxf"};
    QTest::newRow("a page and files") << QStringList{"b.dxf", "--controls", "ZvQtCanvas", "a.dxf"} << "ZvQtCanvas"
                                      << QStringList{"b.dxf", "a.dxf"};
    QTest::newRow("an option behind it") << QStringList{"--controls", "--quit"} << "" << QStringList();
}

void tst_workbench_options::controlsTakeAPageThatThereIs()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, page);
    QFETCH(QStringList, files);
    const ProgramOptions options = parse(arguments);
    QCOMPARE(options.error, QString());
    QVERIFY(options.showControls);
    QCOMPARE(options.controlsPage, page);
    QCOMPARE(options.files, files);
    QCOMPARE(options.quit, arguments.contains("--quit"));
}

void tst_workbench_options::wrongArgumentsAreAnError_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::newRow("unknown option") << QStringList({"--frobnicate"});
    QTest::newRow("missing value") << QStringList({"--state"});
    QTest::newRow("empty value") << QStringList({"--grab", ""});
    QTest::newRow("empty language") << QStringList({"--lang", ""});
    QTest::newRow("no such page") << QStringList({"--controls=ZvNothing"});
    QTest::newRow("pictures without a folder") << QStringList({"--grab-controls="});
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
