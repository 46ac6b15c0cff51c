// SPDX-License-Identifier: MIT
#include "zevatest.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QProcess>
#include <QTemporaryDir>

namespace {

const QString kPlan = QStringLiteral(ZEVA_SAMPLES_DIR "/plan.dxf");

struct Outcome
{
    int status = -1;
    QByteArray out;
    QByteArray error;
};

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Group codes and values of a drawing file in text form, without what the end of a line looks like.
QList<QByteArray> tagsOf(const QString &path)
{
    QList<QByteArray> lines = contentOf(path).split('\n');
    for (QByteArray &line : lines)
        line = line.trimmed();
    return lines;
}

} // namespace

/// The program as it is run without hands.
class tst_workbench_program : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void versionAndHelpNeedNoDisplay();
    void eraseAndUndoGiveTheSameDrawing();
    void stateHasItsKeys();
    void stateOfANewDrawing();
    void stateWithoutADrawing();
    void colorsAndWeightsHaveTheirForms_data();
    void colorsAndWeightsHaveTheirForms();
    void selectTakes_data();
    void selectTakes();
    void selectionTellsCommonValues();
    void stepsRunInTheirOrder();
    void aCommandThatWaitsAtTheEndIsCancelled();
    void exportsByEnding_data();
    void exportsByEnding();
    void grabShowsTheDrawing();
    void controlsNeedADrawing();
    void picturesOfControlsAreWritten();
    void severalFilesAreOpenedAndTheLastIsCurrent();
    void failuresGiveOneLineAndStatusOne_data();
    void failuresGiveOneLineAndStatusOne();
    void stateIsWrittenAfterAFailure();
    void settingsOfTheUserAreLeftAlone();

private:
    Outcome run(QStringList arguments, bool quit = true)
    {
        QProcess process;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        environment.insert(QStringLiteral("HOME"), m_folder->path());
        environment.remove(QStringLiteral("XDG_CONFIG_HOME"));
        environment.remove(QStringLiteral("DISPLAY"));
        process.setProcessEnvironment(environment);
        process.setWorkingDirectory(m_folder->path());
        if (quit)
            arguments << QStringLiteral("--quit");
        process.start(QStringLiteral(WORKBENCH_PROGRAM), arguments);
        Outcome outcome;
        if (process.waitForFinished(300000) && process.exitStatus() == QProcess::NormalExit)
            outcome.status = process.exitCode();
        outcome.out = process.readAllStandardOutput();
        outcome.error = process.readAllStandardError();
        return outcome;
    }
    QString file(const char *name) const { return m_folder->filePath(QString::fromUtf8(name)); }
    QJsonObject stateAfter(const QStringList &arguments)
    {
        m_outcome = run(arguments + QStringList({QStringLiteral("--state"), file("state.json")}));
        return QJsonDocument::fromJson(contentOf(file("state.json"))).object();
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    Outcome m_outcome;
};

void tst_workbench_program::init()
{
    ZevaTest::init();
    m_folder = std::make_unique<QTemporaryDir>();
}

void tst_workbench_program::cleanup()
{
    m_folder.reset();
    ZevaTest::cleanup();
}

void tst_workbench_program::versionAndHelpNeedNoDisplay()
{
    const Outcome version = run({"--version"}, false);
    QCOMPARE(version.status, 0);
    QCOMPARE(version.out, QByteArray("zvworkbench " WORKBENCH_VERSION "\n"));
    QCOMPARE(run({"--help"}, false).status, 0);
    QVERIFY(run({"--help"}, false).out.startsWith("Usage: zvworkbench"));
}

void tst_workbench_program::eraseAndUndoGiveTheSameDrawing()
{
    const Outcome outcome
        = run({kPlan, "--select", "all", "--macro", "_.ERASE", "--macro", "_.UNDO", "--export", file("out.dxf")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.error, QByteArray());
    const QList<QByteArray> before = tagsOf(kPlan);
    const QList<QByteArray> after = tagsOf(file("out.dxf"));
    QCOMPARE(after.size(), before.size());
    for (int i = 0; i < before.size(); ++i)
        QCOMPARE(after[i], before[i]);

    // The erase did erase.
    const QJsonObject erased
        = stateAfter({kPlan, "--select", "all", "--macro", "_.ERASE", "--export", file("erased.dxf")});
    QCOMPARE(m_outcome.status, 0);
    QVERIFY(erased["documents"].toArray().first().toObject()["entities"].toInt() < 50); // those of hidden layers stay
    QVERIFY(tagsOf(file("erased.dxf")).size() < before.size() - 10000);
}

void tst_workbench_program::stateHasItsKeys()
{
    const QJsonObject state = stateAfter({kPlan});
    QCOMPARE(m_outcome.status, 0);
    QCOMPARE(QStringList(state.keys()), QStringList({"controls", "current", "documents", "selection"}));
    const QJsonArray documents = state["documents"].toArray();
    QCOMPARE(documents.size(), 1);
    const QJsonObject document = documents.first().toObject();
    QCOMPARE(QStringList(document.keys()), QStringList({"entities", "layers", "modified", "path"}));
    QCOMPARE(document["path"].toString(), QFileInfo(kPlan).canonicalFilePath());
    QCOMPARE(document["modified"].toBool(true), false);
    QVERIFY(document["entities"].toInt() > 100);
    QVERIFY(document["layers"].toInt() >= 25);

    const QStringList names = {"color",    "dimstyle",     "layer",     "layout",     "linetype",  "lineweight",
                               "material", "mleaderstyle", "plotstyle", "tablestyle", "textstyle", "ucs"};
    QCOMPARE(QStringList(state["current"].toObject().keys()), names);
    for (const QString &name : names)
        QVERIFY2(state["current"].toObject()[name].isString(), qPrintable(name));
    QStringList ofSelection = names;
    ofSelection << QStringLiteral("count");
    ofSelection.sort();
    QCOMPARE(QStringList(state["selection"].toObject().keys()), ofSelection);
    QVERIFY(state["controls"].isArray());
}

void tst_workbench_program::stateOfANewDrawing()
{
    const QJsonObject state = stateAfter({"--macro", "_.NEW", "--macro", "_.LINE 0,0 10,10;;"});
    const QJsonObject document = state["documents"].toArray().first().toObject();
    QCOMPARE(document["path"].toString(), QString());
    QCOMPARE(document["modified"].toBool(), true);
    QCOMPARE(document["entities"].toInt(), 1);
    const QJsonObject current = state["current"].toObject();
    QCOMPARE(current["layer"].toString(), QStringLiteral("0"));
    QCOMPARE(current["color"].toString(), QStringLiteral("ByLayer"));
    QCOMPARE(current["linetype"].toString(), QStringLiteral("ByLayer"));
    QCOMPARE(current["lineweight"].toString(), QStringLiteral("ByLayer"));
    QCOMPARE(current["ucs"].toString(), QStringLiteral("World"));
    QCOMPARE(current["layout"].toString(), QStringLiteral("Model"));
}

void tst_workbench_program::stateWithoutADrawing()
{
    const QJsonObject state = stateAfter({});
    QCOMPARE(m_outcome.status, 0);
    QCOMPARE(state["documents"].toArray().size(), 0);
    QVERIFY(state["current"].toObject()["layer"].isNull());
    QCOMPARE(state["selection"].toObject()["count"].toInt(-1), 0);
}

void tst_workbench_program::colorsAndWeightsHaveTheirForms_data()
{
    QTest::addColumn<QString>("macro");
    QTest::addColumn<QString>("key");
    QTest::addColumn<QString>("value");
    QTest::newRow("colour by index") << "_.COLOR 7"
                                     << "color"
                                     << "7";
    QTest::newRow("true colour") << "_.COLOR 255,128,0"
                                 << "color"
                                 << "255,128,0";
    QTest::newRow("colour by block") << "_.COLOR ByBlock"
                                     << "color"
                                     << "ByBlock";
    QTest::newRow("line weight") << "_.LWEIGHT 0.25"
                                 << "lineweight"
                                 << "0.25";
    QTest::newRow("default line weight") << "_.LWEIGHT Default"
                                         << "lineweight"
                                         << "Default";
    QTest::newRow("line weight by block") << "_.LWEIGHT ByBlock"
                                          << "lineweight"
                                          << "ByBlock";
}

void tst_workbench_program::colorsAndWeightsHaveTheirForms()
{
    QFETCH(QString, macro);
    QFETCH(QString, key);
    QFETCH(QString, value);
    const QJsonObject state = stateAfter({"--macro", "_.NEW", "--macro", macro});
    QCOMPARE(m_outcome.error, QByteArray());
    QCOMPARE(state["current"].toObject()[key].toString(), value);
}

void tst_workbench_program::selectTakes_data()
{
    QTest::addColumn<QString>("expression");
    QTest::addColumn<int>("least");
    QTest::addColumn<int>("most");
    QTest::newRow("all") << "all" << 300 << 100000;
    QTest::newRow("none") << "none" << 0 << 0;
    QTest::newRow("layer") << "layer=a-wall" << 1 << 300;
    QTest::newRow("type") << "type=hatch" << 1 << 300;
    QTest::newRow("a type that does not occur") << "type=NOSUCH" << 0 << 0;
}

void tst_workbench_program::selectTakes()
{
    QFETCH(QString, expression);
    QFETCH(int, least);
    QFETCH(int, most);
    const int count = stateAfter({kPlan, "--select", expression})["selection"].toObject()["count"].toInt(-1);
    QCOMPARE(m_outcome.error, QByteArray());
    QVERIFY(count >= least);
    QVERIFY(count <= most);
}

void tst_workbench_program::selectionTellsCommonValues()
{
    const QStringList drawing = {"--macro", "_.NEW",
                                 "--macro", "_.COLOR 3",
                                 "--macro", "_.LINE 0,0 10,10;;",
                                 "--macro", "_.LINE 0,0 20,10;;",
                                 "--macro", "_.COLOR 5",
                                 "--macro", "_.CIRCLE 0,0 5"};
    const QJsonObject lines
        = stateAfter(drawing + QStringList({"--macro", "_.SELECT _Window -1,-1 21,11"}))["selection"].toObject();
    QCOMPARE(m_outcome.error, QByteArray());
    QCOMPARE(lines["count"].toInt(), 2);
    QCOMPARE(lines["color"].toString(), QStringLiteral("3"));
    QCOMPARE(lines["layer"].toString(), QStringLiteral("0"));
    QCOMPARE(lines["layout"].toString(), QStringLiteral("Model"));
    QVERIFY(lines["textstyle"].isNull());
    const QJsonObject all = stateAfter(drawing + QStringList({"--macro", "_.SELECT _ALL"}))["selection"].toObject();
    QCOMPARE(all["count"].toInt(), 3);
    QVERIFY(all["color"].isNull());
    QCOMPARE(all["linetype"].toString(), QStringLiteral("ByLayer"));
}

void tst_workbench_program::stepsRunInTheirOrder()
{
    QFile script(file("steps.scr"));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write("; a remark\n_.LINE 0,0 10,0\n\n_.LINE 0,5 10,5\n\n");
    script.close();
    const QJsonObject state = stateAfter({"--macro", "_.NEW", "--script", script.fileName(), "--macro", "_.UNDO"});
    QCOMPARE(m_outcome.error, QByteArray());
    QCOMPARE(state["documents"].toArray().first().toObject()["entities"].toInt(), 1);
}

void tst_workbench_program::aCommandThatWaitsAtTheEndIsCancelled()
{
    const QJsonObject state = stateAfter({"--macro", "_.NEW", "--macro", "_.CIRCLE 0,0"});
    QCOMPARE(m_outcome.status, 0);
    QCOMPARE(state["documents"].toArray().first().toObject()["entities"].toInt(), 0);
}

void tst_workbench_program::exportsByEnding_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("png") << "plan.png" << QByteArray("\x89PNG");
    QTest::newRow("pdf") << "plan.PDF" << QByteArray("%PDF");
    QTest::newRow("svg") << "plan.svg" << QByteArray("<?xml");
    QTest::newRow("dxf, Chinese name") << "平面图 1.dxf" << QByteArray("  0");
}

void tst_workbench_program::exportsByEnding()
{
    QFETCH(QString, name);
    QFETCH(QByteArray, start);
    const QString path = m_folder->filePath(name);
    QCOMPARE(run({kPlan, "--export", path}).status, 0);
    QVERIFY(contentOf(path).startsWith(start));
    const QString byCommand = m_folder->filePath(QStringLiteral("by command ") + name);
    QFile script(file("export.scr"));
    QVERIFY(script.open(QIODevice::WriteOnly));
    script.write((QStringLiteral("_.EXPORT ") + byCommand + QLatin1Char('\n')).toUtf8());
    script.close();
    const Outcome outcome = run({kPlan, "--script", script.fileName()});
    QCOMPARE(outcome.error, QByteArray());
    QVERIFY(contentOf(byCommand).startsWith(start));
}

void tst_workbench_program::grabShowsTheDrawing()
{
    QCOMPARE(run({kPlan, "--grab", file("grab.png")}).status, 0);
    const QImage image(file("grab.png"));
    QCOMPARE(image.size(), QSize(1280, 800));
    QSet<QRgb> colors;
    for (int y = 150; y < 600; ++y) {
        for (int x = 100; x < 1200; ++x)
            colors << image.pixel(x, y);
    }
    QVERIFY2(colors.size() > 200, qPrintable(QString::number(colors.size())));
}

void tst_workbench_program::controlsNeedADrawing()
{
    const QJsonObject state = stateAfter({"--controls", "ZvLayerUltralComboBox"});
    QCOMPARE(m_outcome.status, 0);
    QCOMPARE(m_outcome.error, QByteArray());
    QCOMPARE(state["documents"].toArray().size(), 1); // a new one
    QCOMPARE(stateAfter({kPlan, "--controls"})["documents"].toArray().size(), 1);
}

void tst_workbench_program::picturesOfControlsAreWritten()
{
    const Outcome outcome = run({kPlan, "--grab-controls", file("pictures")});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.error, QByteArray());
    QVERIFY(!QImage(file("pictures/ZvLayerUltralComboBox.png")).isNull());
    QVERIFY(!QImage(file("pictures/CADPreviewDialog-dialog.png")).isNull()); // the last one
    QVERIFY(contentOf(file("pictures/index.md")).contains("](CADPreviewDialog.png)"));
}

void tst_workbench_program::severalFilesAreOpenedAndTheLastIsCurrent()
{
    const QString part = QStringLiteral(ZEVA_SAMPLES_DIR "/part.dxf");
    const QJsonObject state = stateAfter({kPlan, part, "--export", file("current.dxf")});
    QCOMPARE(m_outcome.status, 0);
    const QJsonArray documents = state["documents"].toArray();
    QCOMPARE(documents.size(), 2);
    QVERIFY(documents[0].toObject()["path"].toString().endsWith(QLatin1String("plan.dxf")));
    QVERIFY(documents[1].toObject()["path"].toString().endsWith(QLatin1String("part.dxf")));
    QCOMPARE(contentOf(file("current.dxf")), contentOf(part));
}

void tst_workbench_program::failuresGiveOneLineAndStatusOne_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QByteArray>("part");
    QTest::newRow("missing file") << QStringList({"no-such.dxf"}) << QByteArray("no-such.dxf");
    QTest::newRow("two missing files") << QStringList({"first.dxf", "second.dxf"}) << QByteArray("first.dxf");
    QTest::newRow("unknown command") << QStringList({"--macro", "_.FROB"}) << QByteArray("FROB");
    QTest::newRow("command without a drawing") << QStringList({"--macro", "_.LINE 0,0 1,1;;"}) << QByteArray("LINE");
    QTest::newRow("missing script") << QStringList({"--script", "no.scr"}) << QByteArray("no.scr");
    QTest::newRow("select without a drawing") << QStringList({"--select", "all"}) << QByteArray("select");
    QTest::newRow("unknown layer") << QStringList({kPlan, "--select", "layer=NOPE"}) << QByteArray("NOPE");
    QTest::newRow("unknown handle") << QStringList({kPlan, "--select", "FFFFFFF0"}) << QByteArray("FFFFFFF0");
    QTest::newRow("no expression") << QStringList({kPlan, "--select", "everything"}) << QByteArray("everything");
    QTest::newRow("export without a drawing") << QStringList({"--export", "a.pdf"}) << QByteArray("export");
    QTest::newRow("export to nowhere") << QStringList({kPlan, "--export", "no/such/folder/a.dxf"})
                                       << QByteArray("no/such/folder/a.dxf");
    QTest::newRow("export of an unknown kind") << QStringList({kPlan, "--export", "a.xyz"}) << QByteArray("a.xyz");
    QTest::newRow("grab to nowhere") << QStringList({"--grab", "no/such/folder/g.png"}) << QByteArray("g.png");
    QTest::newRow("state to nowhere") << QStringList({"--state", "no/such/folder/s.json"}) << QByteArray("s.json");
    QTest::newRow("unknown option") << QStringList({"--frobnicate"}) << QByteArray("frobnicate");
}

void tst_workbench_program::failuresGiveOneLineAndStatusOne()
{
    QFETCH(QStringList, arguments);
    QFETCH(QByteArray, part);
    const Outcome outcome = run(arguments);
    QCOMPARE(outcome.status, 1);
    QCOMPARE(outcome.error.count('\n'), 1);
    QVERIFY2(outcome.error.startsWith("zvworkbench: "), outcome.error.constData());
    QVERIFY2(outcome.error.contains(part), outcome.error.constData());
    QCOMPARE(outcome.out, QByteArray());
}

void tst_workbench_program::stateIsWrittenAfterAFailure()
{
    const QJsonObject state = stateAfter({kPlan, "no-such.dxf"});
    QCOMPARE(m_outcome.status, 1);
    QCOMPARE(state["documents"].toArray().size(), 1);
}

void tst_workbench_program::settingsOfTheUserAreLeftAlone()
{
    QCOMPARE(run({kPlan}).status, 0);
    QVERIFY(!QFile::exists(file(".config/zeva")));
}

QTEST_GUILESS_MAIN(tst_workbench_program)
#include "tst_workbench_program.moc"
