// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "drawingtest.h"
#include "noticecases.h"

#include "zvlinewidthcombobox.h"

#include "base/zvlog.h"
#include "base/zvregistry.h"

#include <QSignalSpy>
#include <QTemporaryDir>

#include <limits>

using namespace ZvGlobalUIReactorHelp;

namespace {

const QString kUseObjects = QStringLiteral("使用对象线宽");

constexpr int kWeights[]
    = {0, 5, 9, 13, 15, 18, 20, 25, 30, 35, 40, 50, 53, 60, 70, 80, 90, 100, 106, 120, 140, 158, 200, 211};
constexpr int kWeightCount = int(std::size(kWeights));

QStringList millimetreRows()
{
    return {"0.00 mm", "0.05 mm", "0.09 mm", "0.13 mm", "0.15 mm", "0.18 mm", "0.20 mm", "0.25 mm",
            "0.30 mm", "0.35 mm", "0.40 mm", "0.50 mm", "0.53 mm", "0.60 mm", "0.70 mm", "0.80 mm",
            "0.90 mm", "1.00 mm", "1.06 mm", "1.20 mm", "1.40 mm", "1.58 mm", "2.00 mm", "2.11 mm"};
}

QStringList inchRows()
{
    return {"0.000\"", "0.002\"", "0.004\"", "0.005\"", "0.006\"", "0.007\"", "0.008\"", "0.010\"",
            "0.012\"", "0.014\"", "0.016\"", "0.020\"", "0.021\"", "0.024\"", "0.028\"", "0.031\"",
            "0.035\"", "0.039\"", "0.042\"", "0.047\"", "0.055\"", "0.062\"", "0.079\"", "0.083\""};
}

QImage pictureOf(const QComboBox &combo, int row)
{
    const QList<QSize> sizes = combo.itemIcon(row).availableSizes();
    return sizes.isEmpty() ? QImage()
                           : combo.itemIcon(row).pixmap(sizes.first()).toImage().convertToFormat(QImage::Format_ARGB32);
}

/// Pixels of the sample across its line, which must be one run of black in each column of the picture.
int penWidth(const QComboBox &combo, int row)
{
    const QImage picture = pictureOf(combo, row);
    int width = -1;
    for (int x = 0; x < picture.width(); ++x) {
        int count = 0;
        for (int y = 0; y < picture.height(); ++y)
            count += picture.pixel(x, y) == qRgb(0, 0, 0);
        if (width >= 0 && count != width)
            return -1;
        width = count;
    }
    return width;
}

std::vector<int> penWidths(const ZvLineWidthComboBox &combo)
{
    std::vector<int> widths;
    for (const int weight : kWeights)
        widths.push_back(penWidth(combo, combo.getLineWidget(ZvDb::LineWeight(weight))));
    return widths;
}

QStringList s_assertions;

} // namespace

Q_DECLARE_METATYPE(std::vector<int>)

class TestLineWeightComboBox : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // rows
    void maskDecidesTheRows_data();
    void maskDecidesTheRows();
    void rowsCarryTheirWeights();
    void labelsInInches();
    void rowOfTheObjectsWeightCarriesNothing();
    void fillTellsNothing();
    void refillGivesTheSameList();

    // samples
    void samplesGrowByOnePixelARow_data();
    void samplesGrowByOnePixelARow();
    void scaleWidensTheSamples_data();
    void scaleWidensTheSamples();
    void scaleActsOnRowsAddedAfterwards();
    void samplesAreAtMostHalfAsWideAsHigh();
    void samplesLieInTheMiddle();
    void plainSamples_data();
    void plainSamples();
    void runningWidthGoesOnFromRowToRow();

    // size
    void firstSizeFitsThePictures_data();
    void firstSizeFitsThePictures();
    void fittedSizeServesAddedRowsUntilTheRefill();

    // value
    void weightOfARow_data();
    void weightOfARow();
    void weightOutOfRangeAsserts_data();
    void weightOutOfRangeAsserts();
    void currentWeight();
    void weightIsFound_data();
    void weightIsFound();
    void anotherRowForTheCurrentWeight_data();
    void anotherRowForTheCurrentWeight();

    // following the drawing
    void hookedOneIsOnTheBus();
    void missingBusIsNoError();
    void currentWeightIsShown_data();
    void currentWeightIsShown();
    void statusDecidesWhatIsShown_data();
    void statusDecidesWhatIsShown();
    void selectionIsFollowed();
    void listInInchesGathersRows();
    void weightOutsideTheTableGetsARowWithoutName();
    void maskedOutWeightGetsARow();
    void noticesAreFiltered_data();
    void noticesAreFiltered();
    void withoutDocumentNothingHappens();
    void showingTellsNothing();

    // picking
    void pickIsToldHookedOrNot_data();
    void pickIsToldHookedOrNot();
    void pickWritesTheCurrentWeight();
    void pickWritesTheSelection();
    void pickMakesAMixedSelectionUniform();
    void pickIsOneUndoStep();
    void rowOfTheObjectsWeightWritesNothing();
    void lockedEntitiesAreLeftOut();
    void keyboardGoesBackToTheDrawing();
    void wheelWritesEachStep();

    // opening
    void listOpens_data();
    void listOpens();
    void openingRefillsTheHookedOne_data();
    void openingRefillsTheHookedOne();
    void openingIsAlwaysInMillimetres();
    void openingKeepsTheRowWithoutWriting();
    void blankStaysBlankOverOpening();
    void blankWithoutASelectionShowsWhatAFilledListDoes();

    // days at work
    void journeyFromPickToUndo();
    void pickedWeightIsInTheSavedFile();

private:
    static int weightOf(ZvDbObjectId entity)
    {
        return read<ZvDbEntity>(entity, [](const ZvDbEntity &opened) { return int(opened.lineWeight()); });
    }
    static ZvDbObjectId lineWith(int weight)
    {
        const ZvDbObjectId id = addLine();
        change<ZvDbEntity>(id, [weight](ZvDbEntity &entity) { entity.setLineWeight(ZvDb::LineWeight(weight), true); });
        return id;
    }
};

// ---- rows -----------------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::maskDecidesTheRows_data()
{
    QTest::addColumn<int>("mask");
    QTest::addColumn<QStringList>("special");
    const QStringList names = {"ByLayer", "ByBlock", QStringLiteral("默认"), kUseObjects};
    for (int mask = 0; mask < 16; ++mask) {
        QStringList special;
        for (int bit = 0; bit < 4; ++bit) {
            if (mask & 1 << bit)
                special << names[bit];
        }
        QTest::addRow("mask %d: %d rows", mask, int(special.size()) + kWeightCount) << mask << special;
    }
    QTest::newRow("further bits mean nothing") << 0xFF0 << QStringList();
}

void TestLineWeightComboBox::maskDecidesTheRows()
{
    QFETCH(int, mask);
    QFETCH(QStringList, special);
    for (const bool hook : {true, false}) {
        const ZvLineWidthComboBox combo(hook, mask, nullptr);
        QCOMPARE(combo.hooked, hook);
        QCOMPARE(rowsOf(combo), special + millimetreRows());
        QCOMPARE(combo.currentIndex(), 0);
    }
    if (mask == 7)
        QCOMPARE(rowsOf(ZvLineWidthComboBox(nullptr)), special + millimetreRows());
}

void TestLineWeightComboBox::rowsCarryTheirWeights()
{
    const ZvLineWidthComboBox combo(nullptr);
    std::vector<int> expected = {-1, -2, -3};
    expected.insert(expected.end(), std::begin(kWeights), std::end(kWeights));
    for (int row = 0; row < combo.count(); ++row) {
        QCOMPARE(int(combo.itemData(row).type()), int(QVariant::Int));
        QCOMPARE(combo.itemData(row).toInt(), expected[std::size_t(row)]);
    }
}

void TestLineWeightComboBox::labelsInInches()
{
    ZvLineWidthComboBox combo(nullptr);
    combo.init(true);
    QCOMPARE(rowsOf(combo), (QStringList{"ByLayer", "ByBlock", QStringLiteral("默认")} + inchRows()));
    combo.init(false);
    QCOMPARE(rowsOf(combo), (QStringList{"ByLayer", "ByBlock", QStringLiteral("默认")} + millimetreRows()));
}

void TestLineWeightComboBox::rowOfTheObjectsWeightCarriesNothing()
{
    const ZvLineWidthComboBox combo(false, 15, nullptr);
    QCOMPARE(combo.count(), 28);
    QCOMPARE(combo.itemText(3), kUseObjects); // the fourth
    QVERIFY(!combo.itemData(3).isValid());
    QVERIFY(combo.itemIcon(3).isNull());
    QCOMPARE(combo.itemText(4), QString("0.00 mm"));
}

void TestLineWeightComboBox::fillTellsNothing()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy told(&combo, &ZvLineWidthComboBox::lineWeightItemChanged);
    combo.init(false);
    combo.init(true);
    QCOMPARE(index.size(), 0);
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo.signalsBlocked());
    QVERIFY(combo.hooked);
}

void TestLineWeightComboBox::refillGivesTheSameList()
{
    ZvLineWidthComboBox combo(nullptr);
    const std::vector<int> first = penWidths(combo);
    for (int i = 0; i < 3; ++i) {
        combo.init(false);
        QVERIFY(penWidths(combo) == first);
        for (int row = 0; row < 3; ++row)
            QCOMPARE(penWidth(combo, row), 1);
    }
}

// ---- samples --------------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::samplesGrowByOnePixelARow_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<int>("width");
    const struct
    {
        int weight;
        int width;
    } rows[] = {{-1, 1}, {-2, 1}, {-3, 1},  {0, 1},   {5, 1},   {9, 1},    {13, 1},   {15, 2},   {18, 2},
                {20, 2}, {25, 2}, {30, 3},  {35, 3},  {40, 3},  {50, 4},   {53, 4},   {60, 5},   {70, 5},
                {80, 6}, {90, 7}, {100, 7}, {106, 8}, {120, 9}, {140, 10}, {158, 11}, {200, 12}, {211, 12}};
    for (const auto &row : rows)
        QTest::addRow("%d", row.weight) << row.weight << row.width;
}

void TestLineWeightComboBox::samplesGrowByOnePixelARow()
{
    QFETCH(int, weight);
    QFETCH(int, width);
    const ZvLineWidthComboBox combo(nullptr);
    QCOMPARE(penWidth(combo, combo.getLineWidget(ZvDb::LineWeight(weight))), width);
}

void TestLineWeightComboBox::scaleWidensTheSamples_data()
{
    QTest::addColumn<double>("scale");
    QTest::addColumn<std::vector<int>>("widths");
    QTest::newRow("0") << 0.0
                       << std::vector<int>{1, 1, 1, 1, 2, 2, 2, 2, 3, 3, 3, 4, 4, 5, 5, 6, 7, 7, 8, 9, 10, 11, 12, 12};
    // Truncated: 2 * 1.5 is 3, which is one more than the row before.
    QTest::newRow("0.5") << 0.5 << std::vector<int>{1, 1, 1, 1, 2, 3,  3,  3,  4,  4,  4,  5,
                                                    6, 7, 7, 8, 9, 10, 11, 12, 12, 12, 12, 12};
    // Each row may be one wider than the one before, up to half the picture's height.
    QTest::newRow("1 wants twice as much")
        << 1.0 << std::vector<int>{2, 2, 2, 2, 3, 4, 4, 4, 5, 6, 6, 7, 8, 9, 10, 11, 12, 12, 12, 12, 12, 12, 12, 12};
    QTest::newRow("100 wants far too much")
        << 100.0
        << std::vector<int>{5, 6, 7, 8, 9, 10, 11, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12, 12};
    // Nothing is as thin as lines get.
    QTest::newRow("-1") << -1.0 << std::vector<int>(kWeightCount, 1);
    QTest::newRow("-3") << -3.0 << std::vector<int>(kWeightCount, 1);
}

void TestLineWeightComboBox::scaleWidensTheSamples()
{
    QFETCH(double, scale);
    QFETCH(std::vector<int>, widths);
    ZvLineWidthComboBox combo(nullptr);
    // A list of its own, since the one before ends on a wide row.
    combo.initializeData();
    combo.drawLine(QStringLiteral("thin"), ZvDb::kLnWt000);
    combo.setLineweightScale(scale);
    combo.init(false);
    const std::vector<int> drawn = penWidths(combo);
    for (std::size_t i = 0; i < widths.size(); ++i)
        QVERIFY2(drawn[i] == widths[i],
                 qPrintable(QStringLiteral("%1: %2, not %3").arg(kWeights[i]).arg(drawn[i]).arg(widths[i])));
}

void TestLineWeightComboBox::scaleActsOnRowsAddedAfterwards()
{
    ZvLineWidthComboBox combo(nullptr);
    const std::vector<int> before = penWidths(combo);
    combo.setLineweightScale(1.0);
    QVERIFY(penWidths(combo) == before);
    combo.setLineweightScale(std::numeric_limits<double>::quiet_NaN());
    combo.init(false); // as a scale that is far too large
    QCOMPARE(penWidth(combo, combo.count() - 1), 12);
    combo.setLineweightScale(std::numeric_limits<double>::infinity());
    combo.init(false);
    QCOMPARE(penWidth(combo, combo.count() - 1), 12);
    combo.setLineweightScale(0.0);
    combo.init(false);
    QVERIFY(penWidths(combo) == before);
}

void TestLineWeightComboBox::samplesAreAtMostHalfAsWideAsHigh()
{
    const ZvLineWidthComboBox combo(nullptr);
    const int last = combo.getLineWidget(ZvDb::LineWeight(211)); // wants 15
    QCOMPARE(pictureOf(combo, last).size(), QSize(80, 25));
    QCOMPARE(penWidth(combo, last), 12);
}

void TestLineWeightComboBox::samplesLieInTheMiddle()
{
    const ZvLineWidthComboBox combo(nullptr);
    const QImage thin = pictureOf(combo, combo.getLineWidget(ZvDb::kLnWt000));
    for (int y = 0; y < 25; ++y)
        QCOMPARE(qAlpha(thin.pixel(40, y)), y == 12 ? 255 : 0);
    const QImage wide = pictureOf(combo, combo.getLineWidget(ZvDb::LineWeight(211)));
    for (int y = 0; y < 25; ++y)
        QCOMPARE(qAlpha(wide.pixel(40, y)), y >= 6 && y < 18 ? 255 : 0);
}

void TestLineWeightComboBox::plainSamples_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<int>("width");
    QTest::newRow("a weight") << 200 << 1;
    QTest::newRow("by layer") << -1 << 1;
    QTest::newRow("the default: its own weight of 25 over 10, and 1") << -3 << 3;
}

void TestLineWeightComboBox::plainSamples()
{
    QFETCH(int, weight);
    QFETCH(int, width);
    QCOMPARE(ZevaUISetting::getLWDefault(), 25);
    ZvLineWidthComboBox combo(nullptr);
    QString name = QStringLiteral("mine");
    combo.drawLine(name, ZvDb::LineWeight(weight));
    const int row = combo.count() - 1;
    QCOMPARE(combo.itemText(row), QString("mine"));
    QCOMPARE(combo.itemData(row).toInt(), weight);
    QCOMPARE(penWidth(combo, row), width);
    QCOMPARE(name, QString("mine"));
}

void TestLineWeightComboBox::runningWidthGoesOnFromRowToRow()
{
    ZvLineWidthComboBox combo(nullptr);
    combo.clear();
    combo.drawLine(QStringLiteral("thin"), ZvDb::kLnWt000);
    QString plain = QStringLiteral("plain");
    for (int i = 0; i < 3; ++i) {
        combo.drawLine(QStringLiteral("wide"), ZvDb::LineWeight(211));
        combo.drawLine(plain, ZvDb::LineWeight(211)); // does not touch it
    }
    QCOMPARE(penWidth(combo, 1), 2);
    QCOMPARE(penWidth(combo, 2), 1);
    QCOMPARE(penWidth(combo, 3), 3);
    QCOMPARE(penWidth(combo, 5), 4);
}

// ---- size -----------------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::firstSizeFitsThePictures_data()
{
    QTest::addColumn<QSize>("control");
    QTest::addColumn<QSize>("picture");
    QTest::newRow("narrower than 80: half of it is less than 80") << QSize(60, 30) << QSize(80, 30);
    QTest::newRow("wide") << QSize(300, 30) << QSize(80, 30);
    QTest::newRow("low") << QSize(300, 20) << QSize(80, 25);
    QTest::newRow("high") << QSize(300, 100) << QSize(80, 100);
}

void TestLineWeightComboBox::firstSizeFitsThePictures()
{
    QFETCH(QSize, control);
    QFETCH(QSize, picture);
    QWidget window;
    ZvLineWidthComboBox combo(true, 7, &window);
    combo.resize(control);
    window.show();
    QCOMPARE(combo.iconSize(), picture);
    combo.resize(control + QSize(10, 20)); // once only
    QCOMPARE(combo.iconSize(), picture);
    QVERIFY(!combo.signalsBlocked());
}

void TestLineWeightComboBox::fittedSizeServesAddedRowsUntilTheRefill()
{
    QWidget window;
    ZvLineWidthComboBox combo(false, 7, &window);
    combo.resize(300, 40);
    window.show();
    QCOMPARE(pictureOf(combo, 0).size(), QSize(80, 25));
    QString name = QStringLiteral("mine");
    combo.drawLine(name, ZvDb::kLnWt000);
    QCOMPARE(pictureOf(combo, combo.count() - 1).size(), QSize(80, 40));
    combo.init(false);
    QCOMPARE(combo.iconSize(), QSize(80, 25));
}

// ---- value ----------------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::weightOfARow_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("weight");
    QTest::newRow("by layer") << 0 << -1;
    QTest::newRow("by block") << 1 << -2;
    QTest::newRow("default") << 2 << -3;
    QTest::newRow("the objects' own: none, so 0") << 3 << 0;
    QTest::newRow("0.00 mm") << 4 << 0;
    QTest::newRow("2.11 mm") << 27 << 211;
}

void TestLineWeightComboBox::weightOfARow()
{
    QFETCH(int, row);
    QFETCH(int, weight);
    ZvLineWidthComboBox combo(false, 15, nullptr);
    QCOMPARE(int(combo.GetLineWeight(row)), weight);
    combo.setCurrentIndex(row);
    QCOMPARE(int(combo.GetCurrentLineWeight()), weight);
}

void TestLineWeightComboBox::weightOutOfRangeAsserts_data()
{
    QTest::addColumn<int>("row");
    QTest::newRow("-1") << -1;
    QTest::newRow("behind the last") << 27;
    QTest::newRow("far away") << 1000000;
}

void TestLineWeightComboBox::weightOutOfRangeAsserts()
{
    QFETCH(int, row);
    const ZvLineWidthComboBox combo(nullptr);
    s_assertions.clear();
    const ZvAssertHandler before = zvSetAssertHandler([](const char *text, const char *file, int line) {
        s_assertions << QStringLiteral("%1, %2, %3").arg(QLatin1String(text), QLatin1String(file)).arg(line);
    });
    const int weight = combo.GetLineWeight(row);
    zvSetAssertHandler(before);
    QCOMPARE(weight, -3);
    QCOMPARE(s_assertions, QStringList{"false, zvlinewidthcombobox, 218"});
}

void TestLineWeightComboBox::currentWeight()
{
    ZvLineWidthComboBox combo(nullptr);
    combo.SetNullItem();
    QCOMPARE(combo.currentIndex(), -1);
    QCOMPARE(int(combo.GetCurrentLineWeight()), 0); // no assertion: the fixture would tell
}

void TestLineWeightComboBox::weightIsFound_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<int>("row");
    QTest::newRow("by layer") << -1 << 0;
    QTest::newRow("default") << -3 << 2;
    QTest::newRow("0, not the row without a weight") << 0 << 4;
    QTest::newRow("211") << 211 << 27;
    QTest::newRow("no such weight") << 7 << -1;
}

void TestLineWeightComboBox::weightIsFound()
{
    QFETCH(int, weight);
    QFETCH(int, row);
    ZvLineWidthComboBox combo(false, 15, nullptr);
    combo.drawLine(QStringLiteral("once more"), ZvDb::LineWeight(211)); // the first one counts
    QCOMPARE(combo.getLineWidget(ZvDb::LineWeight(weight)), row);
    QCOMPARE(combo.findItemByLineWeight(ZvDb::LineWeight(weight)), row);
}

void TestLineWeightComboBox::anotherRowForTheCurrentWeight_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<bool>("inch");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("weight");
    QTest::newRow("in millimetres") << 7 << false << "0.15 mm" << 15;
    QTest::newRow("in inches") << 7 << true << "0.006\"" << 15;
    QTest::newRow("by layer") << 0 << true << "ByLayer" << -1;
    QTest::newRow("no current row: weight 0") << -1 << false << "0.00 mm" << 0;
}

void TestLineWeightComboBox::anotherRowForTheCurrentWeight()
{
    QFETCH(int, current);
    QFETCH(bool, inch);
    QFETCH(QString, text);
    QFETCH(int, weight);
    ZvLineWidthComboBox combo(nullptr);
    combo.setCurrentIndex(current);
    const QSignalSpy spy(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QStringList before = rowsOf(combo);
    combo.updateListWidthCurlayout(inch);
    QCOMPARE(rowsOf(combo), before + QStringList{text});
    QCOMPARE(combo.itemData(combo.count() - 1).toInt(), weight);
    QCOMPARE(combo.currentIndex(), current);
    QCOMPARE(spy.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

// ---- following the drawing ------------------------------------------------------------------------------------------

void TestLineWeightComboBox::hookedOneIsOnTheBus()
{
    {
        ZvLineWidthComboBox hooked(true, 7, nullptr);
        ZvLineWidthComboBox plain(false, 7, nullptr);
        drawing().setCelweight(ZvDb::LineWeight(50));
        QVERIFY(runMacro(L"_.REGEN "));
        QCOMPARE(hooked.currentText(), QString("0.50 mm"));
        QCOMPARE(plain.currentText(), QString("ByLayer"));
        QCOMPARE(qobject_cast<CZvQtControlHelp *>(static_cast<QObject *>(&hooked)),
                 static_cast<CZvQtControlHelp *>(&hooked));
    }
    QVERIFY(runMacro(L"_.REGEN "));
}

void TestLineWeightComboBox::missingBusIsNoError()
{
    zv_arbitDict_clearservice(ZvString(wchar_t(14)));
    const ZvLineWidthComboBox combo(true, 7, nullptr);
    QCOMPARE(combo.count(), 27);
}

void TestLineWeightComboBox::currentWeightIsShown_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<QString>("text");
    QTest::newRow("by layer") << -1 << "ByLayer";
    QTest::newRow("by block") << -2 << "ByBlock";
    QTest::newRow("default") << -3 << QStringLiteral("默认");
    const QStringList rows = millimetreRows();
    for (int i = 0; i < kWeightCount; ++i)
        QTest::addRow("%d", kWeights[i]) << kWeights[i] << rows[i];
}

void TestLineWeightComboBox::currentWeightIsShown()
{
    QFETCH(int, weight);
    QFETCH(QString, text);
    ZvLineWidthComboBox combo(true, 7, nullptr);
    combo.setEnabled(false);
    drawing().setCelweight(ZvDb::LineWeight(weight));
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentText(), text);
    QCOMPARE(int(combo.GetCurrentLineWeight()), weight);
    QVERIFY(combo.isEnabled());
    QCOMPARE(combo.count(), 27);
}

void TestLineWeightComboBox::statusDecidesWhatIsShown_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("enabled");
    QTest::newRow("no document known: blank") << int(kInfoNoDocument) << "" << false;
    QTest::newRow("no selection: the drawing's weight") << int(kInfoNoSelection) << "0.30 mm" << true;
    QTest::newRow("uniform: the summary's weight") << int(kInfoUniform) << "0.50 mm" << true;
    QTest::newRow("mixed: blank") << int(kInfoMixed) << "" << true;
}

void TestLineWeightComboBox::statusDecidesWhatIsShown()
{
    QFETCH(int, status);
    QFETCH(QString, text);
    QFETCH(bool, enabled);
    drawing().setCelweight(ZvDb::LineWeight(30));
    ZvLineWidthComboBox combo(false, 7, nullptr);
    auto *info = static_cast<SLineWeightInfo *>(combo.pickFirstInfo);
    info->status = status;
    info->value = ZvDb::LineWeight(50);
    combo.setEnabled(!enabled);
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticePickFirst;
    combo.acceptUpdateUI(notice);
    QCOMPARE(combo.currentText(), text);
    QCOMPARE(combo.isEnabled(), enabled);
    QVERIFY(!combo.signalsBlocked());
}

void TestLineWeightComboBox::selectionIsFollowed()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const ZvDbObjectId first = lineWith(30);
    const ZvDbObjectId second = lineWith(211);
    select({first});
    QCOMPARE(combo.currentText(), QString("0.30 mm"));
    select({second});
    QCOMPARE(combo.currentText(), QString("2.11 mm"));
    select({first, second});
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(combo.isEnabled());
    select({});
    QCOMPARE(combo.currentText(), QString("ByLayer"));
}

void TestLineWeightComboBox::listInInchesGathersRows()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    combo.init(true);
    QStringList expected = rowsOf(combo);
    for (const int weight : {30, 50, 30}) {
        drawing().setCelweight(ZvDb::LineWeight(weight));
        QVERIFY(runMacro(L"_.REGEN "));
    }
    expected << "0.30 mm"
             << "0.50 mm"; // one for each weight that it had to show
    QCOMPARE(rowsOf(combo), expected);
    QCOMPARE(combo.currentText(), QString("0.30 mm"));
    for (const int row : {27, 28}) {
        QVERIFY(combo.itemIcon(row).isNull());
        QVERIFY(!combo.itemData(row).isValid());
    }
    drawing().setCelweight(ZvDb::kLnWtByLayer); // the same text in both units
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentIndex(), 0);
    QVERIFY(combo.hooked);
}

void TestLineWeightComboBox::weightOutsideTheTableGetsARowWithoutName()
{
    ZvLineWidthComboBox combo(false, 7, nullptr);
    auto *info = static_cast<SLineWeightInfo *>(combo.pickFirstInfo);
    info->status = kInfoUniform;
    info->value = ZvDb::LineWeight(7);
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticePickFirst;
    for (int i = 0; i < 2; ++i) { // found the second time
        combo.acceptUpdateUI(notice);
        QCOMPARE(combo.count(), 28);
        QCOMPARE(combo.currentIndex(), 27);
        QCOMPARE(combo.currentText(), QString());
    }
    QVERIFY(!combo.itemData(27).isValid());
}

void TestLineWeightComboBox::maskedOutWeightGetsARow()
{
    ZvLineWidthComboBox combo(true, 0, nullptr);
    QVERIFY(runMacro(L"_.REGEN "));
    QCOMPARE(combo.currentText(), QString("ByLayer"));
    QCOMPARE(combo.count(), 25);
    QVERIFY(!combo.itemData(24).isValid());
}

void TestLineWeightComboBox::noticesAreFiltered_data()
{
    addNoticeRows({"CLAYER", "CELWEIGHT", "celweight", "CECOLOR"});
    addObjectNotice("a line type", "line type", false, false);
}

void TestLineWeightComboBox::noticesAreFiltered()
{
    QFETCH(QString, object);
    QFETCH(bool, passes);
    drawing().setCelweight(ZvDb::LineWeight(30));
    ZvLineWidthComboBox combo(false, 7, nullptr);
    combo.pickFirstInfo->status = kInfoNoSelection;
    const ZvDbObjectId id = object == "line" ? addLine()
        : object == "layer"                  ? drawing().clayer()
                                             : drawing().continuousLinetype();
    tellNotice(combo, drawing(), id);
    QCOMPARE(combo.currentText(), passes ? QString("0.30 mm") : QString("ByLayer"));
}

void TestLineWeightComboBox::withoutDocumentNothingHappens()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    combo.setCurrentIndex(5);
    QVERIFY(runCommands());
    zvDocManagerPtr()->closeDocument(document());
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticeCommandEnded;
    combo.acceptUpdateUI(notice);
    QCOMPARE(combo.currentIndex(), 5);
    QVERIFY(combo.isEnabled());
    combo.show();
    combo.showPopup(); // the list does not hang on the drawing
    combo.hidePopup();
    QCOMPARE(combo.count(), 27);
    QCOMPARE(ZvLineWidthComboBox(nullptr).count(), 27);
}

void TestLineWeightComboBox::showingTellsNothing()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const QSignalSpy told(&combo, &ZvLineWidthComboBox::lineWeightItemChanged);
    drawing().setCelweight(ZvDb::LineWeight(50));
    QVERIFY(runMacro(L"_.REGEN "));
    select({lineWith(30)});
    select({});
    QCOMPARE(index.size(), 0);
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

// ---- picking --------------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::pickIsToldHookedOrNot_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked") << true;
    QTest::newRow("not hooked") << false;
}

void TestLineWeightComboBox::pickIsToldHookedOrNot()
{
    QFETCH(bool, hooked);
    ZvLineWidthComboBox combo(hooked, 7, nullptr);
    const QSignalSpy told(&combo, &ZvLineWidthComboBox::lineWeightItemChanged);
    combo.setCurrentIndex(11);
    QVERIFY(runCommands());
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), 11);
    QCOMPARE(int(drawing().celweight()), hooked ? 30 : -1);
    combo.setCurrentIndex(-1);
    QCOMPARE(told.size(), 1);
}

void TestLineWeightComboBox::pickWritesTheCurrentWeight()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    for (int row = combo.count() - 1; row >= 0; --row) {
        combo.setCurrentIndex(row);
        QVERIFY(runCommands());
        QCOMPARE(int(drawing().celweight()), combo.itemData(row).toInt());
        QCOMPARE(combo.currentIndex(), row);
    }
}

void TestLineWeightComboBox::pickWritesTheSelection()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId other = addLine();
    select({line});
    combo.setCurrentIndex(11);
    QVERIFY(runCommands());
    QCOMPARE(weightOf(line), 30);
    QCOMPARE(weightOf(other), -1);
    QCOMPARE(int(drawing().celweight()), -1);
    QCOMPARE(combo.currentText(), QString("0.30 mm"));
}

void TestLineWeightComboBox::pickMakesAMixedSelectionUniform()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const ZvDbObjectId first = lineWith(30);
    const ZvDbObjectId second = lineWith(211);
    select({first, second});
    combo.setCurrentIndex(0);
    QVERIFY(runCommands());
    QCOMPARE(weightOf(first), -1);
    QCOMPARE(weightOf(second), -1);
    QCOMPARE(combo.currentText(), QString("ByLayer"));
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(weightOf(first), 30);
    QCOMPARE(weightOf(second), 211);
}

void TestLineWeightComboBox::pickIsOneUndoStep()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    combo.setCurrentIndex(11);
    QVERIFY(runCommands());
    combo.setCurrentIndex(12);
    QVERIFY(runCommands());
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(int(drawing().celweight()), 30);
    QCOMPARE(combo.currentText(), QString("0.30 mm"));
}

void TestLineWeightComboBox::rowOfTheObjectsWeightWritesNothing()
{
    ZvLineWidthComboBox combo(true, 15, nullptr);
    const ZvDbObjectId line = lineWith(30);
    select({line});
    const QSignalSpy told(&combo, &ZvLineWidthComboBox::lineWeightItemChanged);
    const StartedCommands commands;
    combo.setCurrentIndex(3);
    QVERIFY(runCommands());
    QCOMPARE(told.size(), 1);
    QCOMPARE(told.at(0).at(0).toInt(), 3);
    QCOMPARE(weightOf(line), 30);
    QCOMPARE(commands.names, QStringList());
}

void TestLineWeightComboBox::lockedEntitiesAreLeftOut()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId locked = addLine();
    change<ZvDbEntity>(locked, [&](ZvDbEntity &entity) { entity.setLayer(layer); });
    change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const MessageBoxes boxes;
    select({line, locked});
    combo.setCurrentIndex(11);
    QVERIFY(runCommands());
    QCOMPARE(weightOf(line), 30);
    QCOMPARE(weightOf(locked), -1);
    QCOMPARE(boxes.shown().size(), std::size_t(1));
    QCOMPARE(combo.currentIndex(), -1);
}

void TestLineWeightComboBox::keyboardGoesBackToTheDrawing()
{
    QWidget window;
    QWidget view(&window);
    view.setFocusPolicy(Qt::StrongFocus);
    ZvLineWidthComboBox combo(true, 7, &window);
    const FocusView focus(&view);
    window.show();
    QApplication::setActiveWindow(&window);
    QVERIFY(zevaWaitForActive(&window));
    combo.setFocus();
    QTest::keyClick(&combo, Qt::Key_Down);
    QCOMPARE(combo.currentIndex(), 1);
    QVERIFY(view.hasFocus());
    QVERIFY(runCommands());
}

void TestLineWeightComboBox::wheelWritesEachStep()
{
    QWidget window;
    ZvLineWidthComboBox combo(true, 7, &window);
    window.show();
    const QSignalSpy told(&combo, &ZvLineWidthComboBox::lineWeightItemChanged);
    turnWheel(combo, 5);
    QVERIFY(runCommands());
    QCOMPARE(told.size(), 5);
    QCOMPARE(combo.currentIndex(), 5);
    QCOMPARE(int(drawing().celweight()), 9);
    turnWheel(combo, 50); // to the end and no further
    QVERIFY(runCommands());
    QCOMPARE(int(drawing().celweight()), 211);
}

// ---- opening --------------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::listOpens_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<int>("state");
    for (const bool hooked : {true, false}) {
        for (int i = 0; i < int(std::size(kCommandStates)); ++i)
            QTest::addRow("%s, %s", hooked ? "hooked" : "not hooked", kCommandStates[i].name) << hooked << i;
    }
}

void TestLineWeightComboBox::listOpens()
{
    QFETCH(bool, hooked);
    QFETCH(int, state);
    ZvLineWidthComboBox combo(hooked, 7, nullptr);
    combo.show();
    ListOpener opener(combo);
    opener.run(kCommandStates[state]);
    QCOMPARE(opener.active(), kCommandStates[state].active);
    QCOMPARE(opener.wasOpen(), !hooked || kCommandStates[state].opens);
}

void TestLineWeightComboBox::openingRefillsTheHookedOne_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked: filled anew") << true;
    QTest::newRow("not hooked: opened as it is") << false;
}

void TestLineWeightComboBox::openingRefillsTheHookedOne()
{
    QFETCH(bool, hooked);
    ZvLineWidthComboBox combo(hooked, 7, nullptr);
    combo.show();
    combo.removeItem(5);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.count(), hooked ? 27 : 26);
}

void TestLineWeightComboBox::openingIsAlwaysInMillimetres()
{
    ZvLineWidthComboBox combo(true, 0, nullptr);
    combo.show();
    combo.init(true);
    QCOMPARE(rowsOf(combo), inchRows());
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), millimetreRows());
}

void TestLineWeightComboBox::openingKeepsTheRowWithoutWriting()
{
    drawing().setCelweight(ZvDb::LineWeight(50));
    ZvLineWidthComboBox combo(true, 7, nullptr);
    combo.show();
    QVERIFY(runMacro(L"_.REGEN "));
    const QSignalSpy index(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    const StartedCommands commands;
    combo.showPopup();
    QCOMPARE(combo.currentText(), QString("0.50 mm"));
    combo.hidePopup();
    QVERIFY(!combo.signalsBlocked());
    QCOMPARE(index.size(), 0);
    QVERIFY(runCommands());
    QCOMPARE(commands.names, QStringList());
}

void TestLineWeightComboBox::blankStaysBlankOverOpening()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    combo.show();
    select({lineWith(30), lineWith(50)});
    combo.showPopup();
    QCOMPARE(combo.currentIndex(), -1);
    combo.hidePopup();
}

void TestLineWeightComboBox::blankWithoutASelectionShowsWhatAFilledListDoes()
{
    ZvLineWidthComboBox combo(true, 7, nullptr);
    const QString filled = combo.currentText();
    QVERIFY(!filled.isEmpty());
    combo.show();
    {
        const QSignalBlocker block(&combo);
        combo.clear();
    }
    combo.showPopup();
    QCOMPARE(combo.currentText(), filled);
    combo.hidePopup();
    QVERIFY(!zvedQueueHasInput()); // and writes nothing
}

// ---- days at work ---------------------------------------------------------------------------------------------------

void TestLineWeightComboBox::journeyFromPickToUndo()
{
    QWidget window;
    ZvLineWidthComboBox combo(true, 7, &window);
    combo.resize(200, 30);
    window.resize(260, 60);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    const ZvDbObjectId line = addLine();
    select({line});
    pickByMouse(combo, 20);
    QVERIFY(runCommands());
    QCOMPARE(weightOf(line), 100);
    QCOMPARE(combo.currentText(), QString("1.00 mm"));
    pickByKeys(combo, 2);
    QVERIFY(runCommands());
    QCOMPARE(weightOf(line), 120);
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(weightOf(line), 100);
    QCOMPARE(combo.currentText(), QString("1.00 mm"));
    QVERIFY(runMacro(L"_.U "));
    QCOMPARE(combo.currentText(), QString("ByLayer"));
}

void TestLineWeightComboBox::pickedWeightIsInTheSavedFile()
{
    const QTemporaryDir folder;
    const ZvString path((folder.path() + "/weights.dxf").toUtf8().constData());
    {
        ZvLineWidthComboBox combo(true, 7, nullptr);
        const ZvDbObjectId line = addLine();
        select({line});
        combo.setCurrentIndex(26);
        QVERIFY(runCommands());
        select({});
        combo.setCurrentIndex(11);
        QVERIFY(runCommands());
        ZvDbFileReport report;
        QCOMPARE(zvDocManagerPtr()->saveDocument(document(), path, report), Zv::eOk);
    }
    zvDocManagerPtr()->closeDocument(document());
    ZvDbFileReport report;
    QVERIFY(zvDocManagerPtr()->openDocument(path, report));
    bus().enableUpdateUI(true);
    QCOMPARE(int(drawing().celweight()), 30);
    ZvLineWidthComboBox combo(true, 7, nullptr);
    QVERIFY(runMacro(L"_.SELECT _ALL "));
    QTRY_COMPARE(combo.currentText(), QString("2.11 mm"));
}

ZEVA_TEST_MAIN(TestLineWeightComboBox)
#include "tst_lineweightcombobox.moc"
