// SPDX-License-Identifier: MIT
#include "drawingtest.h"
#include "pagesetups.h"

#include "zvqtcanvas.h"

#include "db/zvdbdictionary.h"
#include "utils/zvpage.h"
#include "utils/zvrenderer.h"

#include <QFile>
#include <QImage>
#include <QPainter>
#include <QTemporaryDir>

#include <cmath>

Q_DECLARE_METATYPE(ZvGePoint3d)
Q_DECLARE_METATYPE(ZvGeVector3d)

namespace {

using Settings = PlotSettings;

/// A page of 120 by 100 mm with margins of 10 on the left, 20 at the bottom, 30 on the right, 40 at the top.
const Settings kPaper{{44, QStringLiteral("120")}, {45, QStringLiteral("100")}, {40, QStringLiteral("10")},
                      {41, QStringLiteral("20")},  {42, QStringLiteral("30")},  {43, QStringLiteral("40")}};

Settings with(Settings settings, const Settings &others)
{
    for (auto it = others.cbegin(); it != others.cend(); ++it)
        settings[it.key()] = it.value();
    return settings;
}

/// The file with these settings in the layout of that name.
QByteArray edited(const QByteArray &dxf, const QString &layout, const Settings &settings)
{
    QStringList lines = QString::fromUtf8(dxf).split(QLatin1Char('\n'));
    int plotSettings = -1;
    for (int i = 0; i + 1 < lines.size(); i += 2) {
        if (lines[i].trimmed() == QLatin1String("100") && lines[i + 1].trimmed() == QLatin1String("AcDbPlotSettings"))
            plotSettings = i;
        if (plotSettings < 0 || lines[i].trimmed() != QLatin1String("1") || lines[i + 1].trimmed() != layout)
            continue;
        for (int k = plotSettings + 2; lines[k].trimmed() != QLatin1String("100"); k += 2) {
            const auto setting = settings.find(lines[k].trimmed().toInt());
            if (setting != settings.end())
                lines[k + 1] = setting.value();
        }
        break;
    }
    return lines.join(QLatin1Char('\n')).toUtf8();
}

QByteArray savedAs(ZvDbDatabase &database)
{
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("page.dxf"));
    ZvDbFileReport report;
    if (database.saveAs(path.toUtf8().constData(), report) != Zv::eOk)
        return QByteArray();
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

ZvDbObjectId layoutNamed(ZvDbDatabase &database, const ZvString &name)
{
    const ZvDbObjectPointer<ZvDbDictionary> layouts(database.layoutDictionaryId(), ZvDb::kForRead);
    ZvDbObjectId id;
    layouts->getAt(name, id);
    return id;
}

void addTo(ZvDbDatabase &database, ZvDbObjectId block, double x1, double y1, double x2, double y2,
           ZvDb::LineWeight weight = ZvDb::kLnWt100, ZvDbObjectId lineType = ZvDbObjectId())
{
    auto *line = new ZvDbLine(ZvGePoint3d(x1, y1, 0), ZvGePoint3d(x2, y2, 0));
    line->setDatabaseDefaults(&database);
    line->setLineWeight(weight);
    if (!lineType.isNull())
        line->setLinetype(lineType);
    ZvDbObjectId id;
    if (database.appendEntity(line, block, id, false) != Zv::eOk)
        delete line;
}

/// A drawing with a frame in model space and one on paper, with these settings in its "Layout1".
ZvDbDatabasePtr makeDrawing(const Settings &settings, const char *layout = "Layout1")
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    addTo(*database, database->modelSpaceId(), 100, 200, 140, 220);
    addTo(*database, database->paperSpaceId(), 0, 0, 40, 20);
    const QByteArray dxf = edited(savedAs(*database), QString::fromUtf8(layout), settings);
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    ZvDbFileReport report;
    read->readStream(dxf.constData(), std::size_t(dxf.size()), report);
    return read;
}

ZvGiPage pageOf(const ZvDbDatabasePtr &database, const ZvString &layout = L"Layout1")
{
    return zvgiReadPage(database, layoutNamed(*database, layout));
}

QString numbers(std::initializer_list<double> values)
{
    QStringList texts;
    for (const double value : values)
        texts << QString::number(value, 'g', 8);
    return texts.join(QLatin1Char(' '));
}

/// Empty for none.
QString areaOf(const ZvGiPage &page)
{
    return page.area.isEmpty()
        ? QString()
        : numbers({page.area.minimum.x, page.area.minimum.y, page.area.maximum.x, page.area.maximum.y});
}

ZvDbDatabasePtr readBytes(const QByteArray &dxf)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    database->readStream(dxf.constData(), std::size_t(dxf.size()), report);
    return database;
}

QStringList setupNames(const ZvDbDatabasePtr &database, const ZvString &layout)
{
    ZvArray<ZvString> names;
    zvgiPageSetupNames(database, layoutNamed(*database, layout), names);
    QStringList list;
    for (const ZvString &name : names)
        list << QString::fromStdString(name.toStdString());
    return list;
}

constexpr int kPixels = 10; // to a millimetre

/// The printable area on grey, of which there are two millimetres more all around.
QImage drawn(const ZvDbDatabasePtr &database, const ZvGiPage &page, bool *isWhole = nullptr)
{
    const int width = int(std::lround(page.printableWidth() + 4)) * kPixels;
    const int height = int(std::lround(page.printableHeight() + 4)) * kPixels;
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::lightGray);
    QPainter painter(&image);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->attachPainter(&painter);
    canvas->setMatrix(ZvGeMatrix2d::translation({2.0 * kPixels, 2.0 * kPixels}));
    const bool result = zvgiDrawPage(database, page, *canvas, kPixels);
    if (isWhole)
        *isWhole = result;
    return image;
}

/// The colour at a place of the printable area, in millimetres from its lower left corner.
QColor at(const QImage &image, double x, double y)
{
    return image.pixelColor(int(std::floor((x + 2) * kPixels)), int(std::floor(image.height() - (y + 2) * kPixels)));
}

} // namespace

class TestPage : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void paperIsReadAsItIsHeld_data();
    void paperIsReadAsItIsHeld();
    void scaleIsReadInMillimetres_data();
    void scaleIsReadInMillimetres();
    void whatIsPlotted_data();
    void whatIsPlotted();
    void viewIsPlotted();
    void viewIsPlottedFromAbove_data();
    void viewIsPlottedFromAbove();
    void modelSpaceHasAPage();
    void modelSpaceIsPlotted_data();
    void modelSpaceIsPlotted();
    void displayIsWhatTheCallerShows();
    void newDrawingFitsWhatIsSeenToThePaper();
    void namedSetupReplacesTheLayoutsOwn_data();
    void namedSetupReplacesTheLayoutsOwn();
    void setupsAreListedByTheKindOfLayout();
    void drawingWithoutSetupsListsNone_data();
    void drawingWithoutSetupsListsNone();
    void setupsSurviveSaving();
    void noLayoutGivesTheDefaultPage();
    void settingsSurviveSaving();
    void paperTreeIsWhatThePreviewReads();

    void linesComeWhereTheyShould();
    void linesHaveTheirWeight_data();
    void linesHaveTheirWeight();
    void patternsAreDrawnAsDashes();
    void nothingLeavesThePrintableArea();
    void windowCutsWhatIsDrawn();
    void textsAndAreasAreDrawn();
    void pageOfNothingIsEmpty();
    void drawingCanBeEnded();
    void whatCannotBeDrawn();
    void matrixIsLeftAsItWas();
    void rendererDrawsOnItsCanvas();
    void referenceDeviceTellsItsResolution();
    void sampleLooksLikeItsExport();
};

void TestPage::paperIsReadAsItIsHeld_data()
{
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<QString>("expected"); // width, height, margins left, bottom, right, top
    const QString a3 = numbers({420, 297, 10, 10, 10, 10});
    const QString bare = numbers({120, 100, 0, 0, 0, 0});
    const auto turned = [](const char *turns) { return with(kPaper, {{73, QLatin1String(turns)}}); };
    const auto sized = [](int code, const char *value) { return with(kPaper, {{code, QLatin1String(value)}}); };
    QTest::newRow("not turned") << turned("0") << numbers({120, 100, 10, 20, 30, 40});
    QTest::newRow("a quarter") << turned("1") << numbers({100, 120, 20, 30, 40, 10});
    QTest::newRow("upside down") << turned("2") << numbers({120, 100, 30, 40, 10, 20});
    QTest::newRow("three quarters") << turned("3") << numbers({100, 120, 40, 10, 20, 30});
    QTest::newRow("no width") << sized(44, "0") << a3;
    QTest::newRow("height below 0") << sized(45, "-5") << a3;
    QTest::newRow("larger than five metres") << sized(44, "5001") << a3;
    QTest::newRow("margin below 0") << sized(40, "-1") << bare;
    QTest::newRow("margins wider than the paper") << sized(42, "110") << bare;
    QTest::newRow("margins higher than the paper") << sized(43, "80") << bare;
}

void TestPage::paperIsReadAsItIsHeld()
{
    QFETCH(Settings, settings);
    const ZvGiPage page = pageOf(makeDrawing(settings));
    QTEST(numbers({page.width, page.height, page.marginLeft, page.marginBottom, page.marginRight, page.marginTop}),
          "expected");
}

void TestPage::scaleIsReadInMillimetres_data()
{
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<double>("unit");
    const auto row = [](const char *numerator, const char *denominator, const char *units) {
        return with(kPaper,
                    {{142, QLatin1String(numerator)}, {143, QLatin1String(denominator)}, {72, QLatin1String(units)}});
    };
    QTest::newRow("1 to 1 in millimetres") << row("1", "1", "1") << 1.0;
    QTest::newRow("1 to 2") << row("1", "2", "1") << 0.5;
    QTest::newRow("5 to 1") << row("5", "1", "1") << 5.0;
    QTest::newRow("1 to 1 in inches") << row("1", "1", "0") << 25.4;
    QTest::newRow("nothing to 1") << row("0", "1", "1") << 1.0;
    QTest::newRow("1 to nothing") << row("1", "0", "1") << 1.0;
    QTest::newRow("below 0") << row("-3", "1", "1") << 1.0;
}

void TestPage::scaleIsReadInMillimetres()
{
    QFETCH(Settings, settings);
    QTEST(pageOf(makeDrawing(settings)).unit, "unit");
}

void TestPage::whatIsPlotted_data()
{
    QTest::addColumn<Settings>("settings");
    QTest::addColumn<QString>("expected"); // unit, corner, area (none: "")
    const auto row
        = [](const char *name, const Settings &others, double unit, double x, double y, const QString &area) {
              QTest::newRow(name) << with(kPaper, others) << numbers({unit, x, y}) + QLatin1Char('|') + area;
          };
    const auto text = [](const char *value) { return QString::fromLatin1(value); };
    const QString none;
    const QString extents = numbers({0, 0, 40, 20}); // of the line on paper
    const QString window = numbers({5, 6, 25, 16});
    const Settings windowSettings{
        {74, text("4")}, {48, text("5")}, {49, text("6")}, {140, text("25")}, {141, text("16")}};
    // The printable area is 80 by 40 mm.
    row("layout", {{74, text("5")}}, 1, 0, 0, none);
    row("layout, moved", {{74, text("5")}, {46, text("4")}, {47, text("-3")}}, 1, -4, 3, none);
    row("layout, moved, 1 to 2", {{74, text("5")}, {46, text("4")}, {47, text("-3")}, {143, text("2")}}, 0.5, -8, 6,
        none);
    row("layout is not fitted", {{74, text("5")}, {75, text("0")}, {70, text("20")}}, 1, 0, 0, none);
    row("extents", {{74, text("1")}}, 1, 0, 0, extents);
    row("extents to fit", {{74, text("1")}, {75, text("0")}}, 2, 0, 0, extents);
    row("fitting needs the flag of a standard scale", {{74, text("1")}, {75, text("0")}, {70, text("0")}}, 1, 0, 0,
        extents);
    row("extents, centred", {{74, text("1")}, {70, text("692")}}, 1, -20, -10, extents);
    row("extents, centred whatever the origin", {{74, text("1")}, {70, text("692")}, {46, text("9")}}, 1, -20, -10,
        extents);
    row("extents, moved", {{74, text("1")}, {46, text("4")}, {47, text("2")}}, 1, -4, -2, extents);
    row("display: the last view of the paper", {{74, text("0")}}, 1, 0, 0, numbers({0, 0, 420, 297}));
    row("the limits of a sheet are the sheet", {{74, text("2")}, {46, text("4")}}, 1, -4, 0, none);
    row("an unknown kind stands for the extents", {{74, text("9")}}, 1, 0, 0, extents);
    row("a view that is not there stands for the extents", {{74, text("3")}, {6, text("nowhere")}}, 1, 0, 0, extents);
    row("window", windowSettings, 1, 5, 6, window);
    row("window to fit", with(windowSettings, {{75, text("0")}}), 4, 5, 6, window);
    row("window, corners exchanged", with(windowSettings, {{48, text("25")}, {140, text("5")}}), 1, 5, 6, window);
    row("empty window stands for the extents", with(windowSettings, {{140, text("5")}}), 1, 0, 0, extents);
    // Without paper the visible is fitted to A3 across, 400 by 277 mm, in the middle.
    row("no paper", {{74, text("5")}, {44, text("0")}}, 10, 0, -3.85, extents);
}

void TestPage::whatIsPlotted()
{
    QFETCH(Settings, settings);
    const ZvGiPage page = pageOf(makeDrawing(settings));
    const QString read = numbers({page.unit, page.corner.x, page.corner.y}) + QLatin1Char('|') + areaOf(page);
    QTEST(read, "expected");
}

void TestPage::viewIsPlotted()
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> table(database->viewTableId(), ZvDb::kForWrite);
        auto *view = new ZvDbViewTableRecord;
        view->setName(L"corner");
        view->setCenterPoint(ZvGePoint2d(30, 12));
        view->setWidth(20);
        view->setHeight(10);
        ZvDbObjectId id;
        QCOMPARE(table->add(view, id), Zv::eOk);
        view->close();
    }
    const QByteArray dxf = edited(savedAs(*database), QStringLiteral("Layout1"),
                                  with(kPaper, {{74, QStringLiteral("3")}, {6, QStringLiteral("corner")}}));
    ZvDbFileReport report;
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    QCOMPARE(read->readStream(dxf.constData(), std::size_t(dxf.size()), report), Zv::eOk);
    const ZvGiPage page = pageOf(read);
    QCOMPARE(areaOf(page), numbers({20, 7, 40, 17}));
    QCOMPARE(numbers({page.corner.x, page.corner.y}), numbers({20, 7}));
}

void TestPage::viewIsPlottedFromAbove_data()
{
    QTest::addColumn<ZvGePoint3d>("target");
    QTest::addColumn<ZvGeVector3d>("direction");
    QTest::addColumn<double>("twist");
    QTest::addColumn<QString>("area");
    const QString extents = numbers({0, 0, 40, 20});
    const ZvGeVector3d down(0, 0, 1);
    QTest::newRow("from above") << ZvGePoint3d() << down << 0.0 << numbers({20, 7, 40, 17});
    QTest::newRow("from far above") << ZvGePoint3d() << down * 500.0 << 0.0 << numbers({20, 7, 40, 17});
    QTest::newRow("at a target") << ZvGePoint3d(100, -50, 3) << down << 0.0 << numbers({120, -43, 140, -33});
    QTest::newRow("from below") << ZvGePoint3d() << ZvGeVector3d(0, 0, -1) << 0.0 << extents;
    QTest::newRow("from a side") << ZvGePoint3d() << ZvGeVector3d(1, 0, 1) << 0.0 << extents;
    QTest::newRow("turned") << ZvGePoint3d() << down << 0.5 << extents;
}

void TestPage::viewIsPlottedFromAbove()
{
    QFETCH(ZvGePoint3d, target);
    QFETCH(ZvGeVector3d, direction);
    QFETCH(double, twist);
    const ZvDbDatabasePtr database
        = makeDrawing(with(kPaper, {{74, QStringLiteral("3")}, {6, QStringLiteral("corner")}}));
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> table(database->viewTableId(), ZvDb::kForWrite);
        auto *view = new ZvDbViewTableRecord;
        view->setName(L"corner");
        view->setCenterPoint(ZvGePoint2d(30, 12));
        view->setWidth(20);
        view->setHeight(10);
        view->setTarget(target);
        view->setViewDirection(direction);
        view->setViewTwist(twist);
        ZvDbObjectId id;
        QCOMPARE(table->add(view, id), Zv::eOk);
        view->close();
    }
    QTEST(areaOf(pageOf(database)), "area");
}

void TestPage::modelSpaceHasAPage()
{
    const ZvDbDatabasePtr database
        = makeDrawing(with(kPaper, {{74, QStringLiteral("1")}, {75, QStringLiteral("0")}}), "Model");
    const ZvGiPage page = pageOf(database, L"Model");
    QCOMPARE(page.block, database->modelSpaceId());
    QCOMPARE(numbers({page.width, page.height, page.unit, page.corner.x, page.corner.y}),
             numbers({120, 100, 2, 100, 200}));
}

void TestPage::modelSpaceIsPlotted_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<QString>("area");
    const QString limits = numbers({-10, -20, 300, 200});
    QTest::newRow("display: the last view") << "0" << numbers({100, 195, 120, 205});
    QTest::newRow("extents") << "1" << numbers({100, 200, 140, 220});
    QTest::newRow("limits") << "2" << limits;
    QTest::newRow("layout: there is none, but limits") << "5" << limits;
}

void TestPage::modelSpaceIsPlotted()
{
    QFETCH(QString, type);
    const ZvDbDatabasePtr database = makeDrawing(with(kPaper, {{74, type}}), "Model");
    for (const auto &[name, x, y] : {std::tuple(L"LIMMIN", -10.0, -20.0), std::tuple(L"LIMMAX", 300.0, 200.0)}) {
        ZvResBuf value;
        QCOMPARE(database->getVariable(name, value), Zv::eOk);
        value.resval.rpoint[0] = x;
        value.resval.rpoint[1] = y;
        QCOMPARE(database->setVariable(name, value), Zv::eOk);
    }
    {
        const ZvDbObjectPointer<ZvDbViewportTableRecord> view(database->currentViewportId(), ZvDb::kForWrite);
        QVERIFY(view);
        view->setCenterPoint(ZvGePoint2d(110, 200));
        view->setWidth(20);
        view->setHeight(10);
    }
    QTEST(areaOf(pageOf(database, L"Model")), "area");
}

void TestPage::displayIsWhatTheCallerShows()
{
    ZvGeExtents2d shown;
    shown.add(ZvGePoint2d(1, 2));
    shown.add(ZvGePoint2d(31, 22));
    const ZvDbDatabasePtr database
        = makeDrawing(with(kPaper, {{74, QStringLiteral("0")}, {75, QStringLiteral("0")}}), "Model");
    const ZvGiPage page = zvgiReadPage(database, layoutNamed(*database, L"Model"), ZvString(), shown);
    QCOMPARE(areaOf(page), numbers({1, 2, 31, 22}));
    QCOMPARE(page.unit, 2.0); // 40 mm for 20
    // Nothing else asks for it.
    const ZvDbDatabasePtr other = makeDrawing(with(kPaper, {{74, QStringLiteral("1")}}), "Model");
    QCOMPARE(areaOf(zvgiReadPage(other, layoutNamed(*other, L"Model"), ZvString(), shown)),
             numbers({100, 200, 140, 220}));
}

void TestPage::newDrawingFitsWhatIsSeenToThePaper()
{
    ZvGeExtents2d shown;
    shown.add(ZvGePoint2d(5000, 2000));
    shown.add(ZvGePoint2d(25000, 6000));
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    for (const ZvDbDatabasePtr &drawing : {database, readBytes(savedAs(*database))}) {
        const ZvGiPage page = zvgiReadPage(drawing, layoutNamed(*drawing, L"Model"), ZvString(), shown);
        QCOMPARE(areaOf(page), numbers({5000, 2000, 25000, 6000}));
        QCOMPARE(page.unit * 20000, page.printableWidth());
        QCOMPARE(page.corner.x, 5000.0);
        QCOMPARE(page.corner.y + page.printableHeight() / 2 / page.unit, 4000.0); // in the middle
    }
}

/// A page set-up of 200 by 100 mm at 1 to 2, and a window.
const Settings kSetup{{44, QStringLiteral("200")}, {45, QStringLiteral("100")}, {40, QStringLiteral("5")},
                      {41, QStringLiteral("5")},   {42, QStringLiteral("5")},   {43, QStringLiteral("5")},
                      {142, QStringLiteral("1")},  {143, QStringLiteral("2")},  {70, QStringLiteral("672")},
                      {72, QStringLiteral("1")},   {73, QStringLiteral("0")},   {74, QStringLiteral("4")},
                      {75, QStringLiteral("17")},  {48, QStringLiteral("5")},   {49, QStringLiteral("6")},
                      {140, QStringLiteral("25")}, {141, QStringLiteral("16")}, {4, QStringLiteral("Strip")}};

void TestPage::namedSetupReplacesTheLayoutsOwn_data()
{
    QTest::addColumn<QString>("setup");
    QTest::addColumn<QString>("expected"); // size, unit, corner, area
    const QString own = numbers({120, 100, 1, 0, 0}) + QLatin1Char('|');
    const QString strip = numbers({200, 100, 0.5, 5, 6}) + QLatin1Char('|') + numbers({5, 6, 25, 16});
    QTest::newRow("none") << "" << own;
    QTest::newRow("by its name") << "A strip" << strip;
    QTest::newRow("in another case") << "a STRIP" << strip;
    QTest::newRow("Chinese, to fit and in the middle")
        << QStringLiteral("全图")
        << numbers({200, 100, 4.5, -1.1111111, 0}) + QLatin1Char('|') + numbers({0, 0, 40, 20});
    QTest::newRow("a name that is none") << "nowhere" << own;
}

void TestPage::namedSetupReplacesTheLayoutsOwn()
{
    QFETCH(QString, setup);
    const Settings whole
        = with(kSetup, {{74, QStringLiteral("1")}, {70, QStringLiteral("692")}, {75, QStringLiteral("0")}});
    const ZvDbDatabasePtr database = readBytes(withPageSetups(
        savedAs(*makeDrawing(kPaper)), {{QStringLiteral("A strip"), kSetup}, {QStringLiteral("全图"), whole}}));
    const ZvGiPage page
        = zvgiReadPage(database, layoutNamed(*database, L"Layout1"), ZvString(setup.toUtf8().constData()));
    QCOMPARE(page.block, pageOf(database).block);
    const QString read
        = numbers({page.width, page.height, page.unit, page.corner.x, page.corner.y}) + QLatin1Char('|') + areaOf(page);
    QTEST(read, "expected");
}

void TestPage::setupsAreListedByTheKindOfLayout()
{
    const Settings forModel = with(kSetup, {{70, QStringLiteral("1696")}});
    const ZvDbDatabasePtr database = readBytes(withPageSetups(savedAs(*makeDrawing(kPaper)),
                                                              {{QStringLiteral("A strip"), kSetup},
                                                               {QStringLiteral("Of model space"), forModel},
                                                               {QStringLiteral("全图"), kSetup}}));
    QCOMPARE(setupNames(database, L"Layout1"), (QStringList{QStringLiteral("A strip"), QStringLiteral("全图")}));
    QCOMPARE(setupNames(database, L"Model"), QStringList{QStringLiteral("Of model space")});
    ZvArray<ZvString> names;
    names.append(L"left over");
    zvgiPageSetupNames(database, database->modelSpaceId(), names); // no layout
    QVERIFY(names.isEmpty());
}

void TestPage::drawingWithoutSetupsListsNone_data()
{
    QTest::addColumn<bool>("hasDictionary");
    QTest::newRow("an empty dictionary") << true;
    QTest::newRow("no dictionary") << false;
}

void TestPage::drawingWithoutSetupsListsNone()
{
    QFETCH(bool, hasDictionary);
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    if (!hasDictionary) {
        const ZvDbObjectPointer<ZvDbDictionary> root(database->rootDictionaryId(), ZvDb::kForWrite);
        QCOMPARE(root->remove(L"ACAD_PLOTSETTINGS"), Zv::eOk);
    }
    QCOMPARE(setupNames(database, L"Layout1"), QStringList());
    QCOMPARE(zvgiReadPage(database, layoutNamed(*database, L"Layout1"), L"nowhere").width, 120.0);
    ZvArray<ZvString> names;
    zvgiPageSetupNames(nullptr, ZvDbObjectId(), names);
    QVERIFY(names.isEmpty());
}

void TestPage::setupsSurviveSaving()
{
    const QByteArray dxf = withPageSetups(savedAs(*makeDrawing(kPaper)), {{QStringLiteral("全图"), kSetup}});
    const ZvDbDatabasePtr database = readBytes(dxf);
    QCOMPARE(savedAs(*database), dxf);
    addTo(*database, database->paperSpaceId(), 1, 1, 2, 2); // now the file is made anew around it
    const ZvDbDatabasePtr again = readBytes(savedAs(*database));
    QCOMPARE(setupNames(again, L"Layout1"), QStringList{QStringLiteral("全图")});
    QCOMPARE(zvgiReadPage(again, layoutNamed(*again, L"Layout1"), ZvString(QStringLiteral("全图").toUtf8().constData()))
                 .width,
             200.0);
}

void TestPage::noLayoutGivesTheDefaultPage()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    for (const ZvDbObjectId &id : {ZvDbObjectId(), database->modelSpaceId()}) {
        const ZvGiPage page = zvgiReadPage(database, id);
        QVERIFY(page.block.isNull());
        QCOMPARE(page.width, 420.0);
        QCOMPARE(page.printableHeight(), 277.0);
    }
    QVERIFY(zvgiReadPage(nullptr, ZvDbObjectId()).block.isNull());
}

void TestPage::settingsSurviveSaving()
{
    const Settings settings = with(kPaper,
                                   {{74, QStringLiteral("4")},
                                    {48, QStringLiteral("5")},
                                    {49, QStringLiteral("6")},
                                    {140, QStringLiteral("25")},
                                    {141, QStringLiteral("16")},
                                    {46, QStringLiteral("1.5")},
                                    {75, QStringLiteral("0")},
                                    {70, QStringLiteral("20")}});
    const ZvDbDatabasePtr database = makeDrawing(settings);
    const QByteArray again = savedAs(*database);
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(read->readStream(again.constData(), std::size_t(again.size()), report), Zv::eOk);
    const ZvGiPage first = pageOf(database);
    const ZvGiPage second = pageOf(read);
    QCOMPARE(first.unit, 4.0);
    QCOMPARE(second.unit, first.unit);
    QCOMPARE(second.corner.x, first.corner.x);
    QCOMPARE(second.area.maximum.y, first.area.maximum.y);
    QVERIFY(!second.lineWeights);
}

void TestPage::paperTreeIsWhatThePreviewReads()
{
    const ZvGiPage page = pageOf(makeDrawing(with(kPaper, {{4, QStringLiteral("My paper")}})));
    const ZvJsonPtr tree = zvgiPaperTree(page);
    const QMap<QString, double> expected{
        {QStringLiteral("paper_w"), 120},           {QStringLiteral("paper_h"), 100},
        {QStringLiteral("paper_margin_left"), 10},  {QStringLiteral("paper_margin_bottom"), 20},
        {QStringLiteral("paper_margin_right"), 30}, {QStringLiteral("paper_margin_top"), 40}};
    for (auto it = expected.cbegin(); it != expected.cend(); ++it) {
        double value = -1;
        QVERIFY2(tree->GetDataD(qPrintable(it.key()), value), qPrintable(it.key()));
        QCOMPARE(value, it.value());
    }
    ZvString name;
    QVERIFY(tree->GetDataSW("name", name));
    QCOMPARE(name, ZvString(L"My paper"));
    int unit = 0;
    QVERIFY(tree->GetDataI("paper_unit", unit) && unit != 2); // which would make device units of millimetres
}

void TestPage::linesComeWhereTheyShould()
{
    // From the corner of the printable area to (40, 20), a millimetre wide.
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    bool isWhole = false;
    const QImage image = drawn(database, pageOf(database), &isWhole);
    QVERIFY(isWhole);
    for (const double x : {1.0, 10.0, 20.0, 39.0})
        QCOMPARE(at(image, x, x / 2), QColor(Qt::black));
    QCOMPARE(at(image, 20, 12), QColor(Qt::lightGray));
    QCOMPARE(at(image, 20, 8), QColor(Qt::lightGray));
    QCOMPARE(at(image, 43, 21.5), QColor(Qt::lightGray));
}

void TestPage::linesHaveTheirWeight_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<bool>("plotsWeights");
    QTest::addColumn<double>("width"); // in millimetres
    QTest::newRow("two millimetres") << 200 << true << 2.0;
    QTest::newRow("half a millimetre") << 50 << true << 0.5;
    QTest::newRow("the finest") << 0 << true << 0.1; // as thin as this picture shows
    QTest::newRow("weights are not plotted") << 200 << false << 0.1;
}

void TestPage::linesHaveTheirWeight()
{
    QFETCH(int, weight);
    QFETCH(bool, plotsWeights);
    QFETCH(double, width);
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    addTo(*database, database->paperSpaceId(), 50, 10, 70, 10, ZvDb::LineWeight(weight));
    ZvGiPage page = pageOf(database);
    page.lineWeights = plotsWeights;
    const QImage image = drawn(database, page);
    int dark = 0;
    for (int i = -30; i < 30; ++i)
        dark += at(image, 60, 10 + i / double(kPixels) + 0.05) == QColor(Qt::black) ? 1 : 0;
    QVERIFY2(std::abs(dark - width * kPixels) <= 1, qPrintable(QString::number(dark)));
}

void TestPage::patternsAreDrawnAsDashes()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    ZvDbObjectId id;
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> table(database->linetypeTableId(), ZvDb::kForWrite);
        auto *pattern = new ZvDbLinetypeTableRecord;
        pattern->setName(L"dashes");
        ZvDbLinetypeTableRecord::Dash dash;
        dash.length = 6.0;
        ZvDbLinetypeTableRecord::Dash gap;
        gap.length = -4.0;
        pattern->setDashes({dash, gap});
        QCOMPARE(table->add(pattern, id), Zv::eOk);
        pattern->close();
    }
    addTo(*database, database->paperSpaceId(), 5, 30, 75, 30, ZvDb::kLnWt100, id);
    const QImage image = drawn(database, pageOf(database));
    int dark = 0;
    int runs = 0;
    bool wasDark = false;
    for (double x = 5; x < 75; x += 0.1) {
        const bool isDark = at(image, x + 0.05, 30) == QColor(Qt::black);
        dark += isDark ? 1 : 0;
        runs += isDark && !wasDark ? 1 : 0;
        wasDark = isDark;
    }
    QVERIFY2(runs == 7 || runs == 8, qPrintable(QString::number(runs)));
    QVERIFY2(std::abs(dark - 430) < 30, qPrintable(QString::number(dark))); // six tenths, and a bit at the ends
}

void TestPage::nothingLeavesThePrintableArea()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    for (const double y : {-1.5, 0.0, 20.0, 40.0, 41.5})
        addTo(*database, database->paperSpaceId(), -500, y, 500, y);
    const QImage image = drawn(database, pageOf(database));
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const bool isMargin = x < 20 || y < 20 || x >= image.width() - 20 || y >= image.height() - 20;
            if (isMargin)
                QCOMPARE(image.pixelColor(x, y), QColor(Qt::lightGray));
        }
    }
    QCOMPARE(at(image, 79.8, 20), QColor(Qt::black));
}

void TestPage::windowCutsWhatIsDrawn()
{
    const ZvDbDatabasePtr database = makeDrawing(with(kPaper,
                                                      {{74, QStringLiteral("4")},
                                                       {48, QStringLiteral("10")},
                                                       {49, QStringLiteral("0")},
                                                       {140, QStringLiteral("20")},
                                                       {141, QStringLiteral("10")}}));
    addTo(*database, database->paperSpaceId(), 0, 5, 40, 5);
    // (10, 0) of the drawing is the corner; ten millimetres of it are shown.
    const QImage image = drawn(database, pageOf(database));
    QCOMPARE(at(image, 1, 5), QColor(Qt::black));
    QCOMPARE(at(image, 9, 5), QColor(Qt::black));
    QCOMPARE(at(image, 12, 5), QColor(Qt::lightGray));
    QCOMPARE(at(image, 20, 15), QColor(Qt::lightGray)); // the line on paper goes on there
}

void TestPage::textsAndAreasAreDrawn()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    auto *solid = new ZvDbSolid;
    solid->setDatabaseDefaults(database);
    const ZvGePoint3d corners[] = {{50, 5, 0}, {70, 5, 0}, {50, 15, 0}, {70, 15, 0}};
    for (int i = 0; i < 4; ++i)
        solid->setPointAt(i, corners[i]);
    ZvCmColor red;
    red.setRGB(255, 0, 0);
    solid->setColor(red);
    ZvDbObjectId id;
    QCOMPARE(database->appendEntity(solid, database->paperSpaceId(), id, false), Zv::eOk);
    auto *text = new ZvDbText(ZvGePoint3d(5, 28, 0), L"HILL", ZvDbObjectId(), 8.0, 0.0);
    text->setDatabaseDefaults(database);
    QCOMPARE(database->appendEntity(text, database->paperSpaceId(), id, false), Zv::eOk);
    const QImage image = drawn(database, pageOf(database));
    QCOMPARE(at(image, 60, 10), QColor(Qt::red));
    QCOMPARE(at(image, 69.5, 14.5), QColor(Qt::red));
    QCOMPARE(at(image, 60, 16), QColor(Qt::lightGray));
    int dark = 0;
    for (double x = 5; x < 45; x += 0.1) {
        for (double y = 28; y < 36; y += 0.1)
            dark += at(image, x, y).lightness() < 100 ? 1 : 0;
    }
    QVERIFY2(dark > 500, qPrintable(QString::number(dark)));
    QCOMPARE(at(image, 25, 38), QColor(Qt::lightGray));
}

void TestPage::pageOfNothingIsEmpty()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    const QImage image = drawn(database, ZvGiPage());
    QImage empty = image;
    empty.fill(Qt::lightGray);
    QCOMPARE(image, empty);
}

void TestPage::drawingCanBeEnded()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    for (int i = 0; i < 5000; ++i)
        addTo(*database, database->paperSpaceId(), i * 0.004, 0, i * 0.004, 20);
    QImage image(100, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->attachPainter(&painter);
    int asked = 0;
    const auto never = [&asked] {
        ++asked;
        return false;
    };
    QVERIFY(!zvgiDrawPage(database, pageOf(database), *canvas, 1.0, never));
    QCOMPARE(asked, 1);
}

void TestPage::whatCannotBeDrawn()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    QVERIFY(!zvgiDrawPage(nullptr, ZvGiPage(), *canvas, 1.0));
    QVERIFY(!zvgiDrawPage(database, pageOf(database), *canvas, 0.0));
    QVERIFY(!zvgiDrawPage(database, pageOf(database), *canvas, -1.0));
    QVERIFY(!zvgiDrawPage(database, pageOf(database), *canvas, std::nan("")));
    QVERIFY(zvgiDrawPage(database, pageOf(database), *canvas, 1.0)); // without a painter, to nowhere
}

void TestPage::matrixIsLeftAsItWas()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->setMatrix(ZvGeMatrix2d::translation({3, 4}));
    zvgiDrawPage(database, pageOf(database), *canvas, 11.0);
    QVERIFY(canvas->pointToQt2({5, 7}).isEqualTo({8, 11}));
}

void TestPage::rendererDrawsOnItsCanvas()
{
    const ZvDbDatabasePtr database = makeDrawing(kPaper);
    const ZvGiPage page = pageOf(database);
    const ZvSmartPtr<ZvsiRenderObject> renderer = zvgiMakePageRenderer(database, page, kPixels);
    const int references = zvrxNumRefs(database);
    QImage image(840, 440, QImage::Format_RGB32);
    image.fill(Qt::lightGray);
    QPainter painter(&image);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->attachPainter(&painter);
    canvas->setMatrix(ZvGeMatrix2d::translation({2.0 * kPixels, 2.0 * kPixels}));
    renderer->draw(ZvRxObjectPtr(canvas.get()));
    QCOMPARE(image, drawn(database, page));
    QCOMPARE(zvrxNumRefs(database), references);
    renderer->draw(nullptr);
    renderer->draw(ZvRxObjectPtr(renderer.get())); // no canvas: nothing happens
}

void TestPage::referenceDeviceTellsItsResolution()
{
    const ZvSmartPtr<ZvsiReferenceDevice> device = zvsiMakeReferenceDevice(600);
    QCOMPARE(device->capability(88), 600);
    QCOMPARE(device->capability(90), 0);
}

void TestPage::sampleLooksLikeItsExport()
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(database->readFile(ZEVA_SAMPLES_DIR "/part.dxf", report), Zv::eOk);
    database->setTilemode(false);
    const ZvGiPage page = zvgiReadPage(database, database->currentLayoutId());
    // The same number of pixels for the whole sheet, by the export and by the canvas.
    const int width = int(std::lround(page.width * 4));
    const int height = int(std::lround(page.height * 4));
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("sheet.png"));
    ZvString message;
    QCOMPARE(zvgiExport(database, path.toUtf8().constData(), message, width, height), Zv::eOk);
    const QImage exported = QImage(path).convertToFormat(QImage::Format_RGB32);
    QImage image(width, height, QImage::Format_RGB32);
    image.fill(Qt::white);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->attachPainter(&painter);
    canvas->setMatrix(ZvGeMatrix2d::translation({page.marginLeft * 4, page.marginTop * 4}));
    QVERIFY(zvgiDrawPage(database, page, *canvas, 4.0));
    painter.end();
    // Widths differ by a pixel; where there is ink in one there is ink near in the other. The export shows what cannot
    // be printed too.
    const QRectF printable(page.marginLeft * 4, page.marginTop * 4, page.printableWidth() * 4,
                           page.printableHeight() * 4);
    const auto inked = [](const QImage &picture, int cellX, int cellY) {
        for (int y = cellY * 16; y < std::min(cellY * 16 + 16, picture.height()); ++y) {
            for (int x = cellX * 16; x < std::min(cellX * 16 + 16, picture.width()); ++x) {
                if (picture.pixelColor(x, y).lightness() < 240)
                    return true;
            }
        }
        return false;
    };
    int both = 0;
    int different = 0;
    for (int y = 0; y < height / 16; ++y) {
        for (int x = 0; x < width / 16; ++x) {
            if (!printable.contains(QRectF(x * 16, y * 16, 16, 16)))
                continue;
            const bool here = inked(image, x, y);
            const bool there = inked(exported, x, y);
            both += here && there ? 1 : 0;
            different += here != there ? 1 : 0;
        }
    }
    QVERIFY2(both > 500, qPrintable(QString::number(both)));
    QVERIFY2(different < both / 20, qPrintable(QStringLiteral("%1 of %2").arg(different).arg(both)));
}

ZEVA_TEST_MAIN(TestPage)
#include "tst_page.moc"
