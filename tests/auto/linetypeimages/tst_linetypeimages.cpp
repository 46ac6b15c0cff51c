// SPDX-License-Identifier: MIT
#include "drawingtest.h"

#include "core/zvsystem.h"
#include "utils/zventityimage.h"

#include <QStringList>

#include <cmath>

// The pictures of line types, as the lists of line types ask for them.

namespace {

// What programs cannot make: line types of an external reference, and a name with a star.
const char kReferences[] = "0\nSECTION\n2\nTABLES\n"
                           "0\nTABLE\n2\nLTYPE\n70\n4\n"
                           "0\nLTYPE\n2\nCONTINUOUS\n70\n0\n3\nSolid line\n72\n65\n73\n0\n40\n0.0\n"
                           "0\nLTYPE\n2\nHouse|Dashed\n70\n48\n3\n\n72\n65\n73\n2\n40\n3.0\n49\n2.0\n49\n-1.0\n"
                           "0\nLTYPE\n2\nOdd|Own\n70\n0\n3\n\n72\n65\n73\n2\n40\n3.0\n49\n2.0\n49\n-1.0\n"
                           "0\nLTYPE\n2\n*Star\n70\n0\n3\n\n72\n65\n73\n2\n40\n3.0\n49\n2.0\n49\n-1.0\n"
                           "0\nENDTAB\n0\nENDSEC\n0\nEOF\n";

const char kNameless[] = "0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLTYPE\n70\n1\n"
                         "0\nLTYPE\n2\n\n70\n0\n3\n\n72\n65\n73\n0\n40\n0.0\n"
                         "0\nENDTAB\n0\nENDSEC\n0\nEOF\n";

constexpr int kWidth = 80;
constexpr int kHeight = 25;

struct Row
{
    ZvGiRasterImagePtr image;
    ZvString name;
    ZvDbObjectId id;
};

std::vector<Row> readAll(int width = kWidth, int height = kHeight)
{
    std::vector<Row> rows;
    ZevaUISetting::getLineTypeInfo(width, height, [&rows](ZvGiRasterImagePtr &image, ZvString &name, ZvDbObjectId &id) {
        rows.push_back({image, name, id});
    });
    return rows;
}

QStringList namesOf(const std::vector<Row> &rows)
{
    QStringList names;
    for (const Row &row : rows)
        names << QString::fromUtf8(row.name.toUtf8().c_str());
    return names;
}

const Row *find(const std::vector<Row> &rows, const ZvString &name)
{
    for (const Row &row : rows) {
        if (row.name == name)
            return &row;
    }
    return nullptr;
}

ZvGiRasterImagePtr single(const ZvString &name, int width = kWidth, int height = kHeight)
{
    ZvGiRasterImagePtr image;
    ZevaUISetting::getLineTypeRasterImage(name, width, height, image);
    return image;
}

enum class Ink { kBlack, kStandard };

/// The renderer's picture of the line that has just these properties. The renderer keeps pictures by all that decides
/// them: getting the same one once more proves that the facade's line was this.
ZvGiRasterImagePtr expected(ZvDbDatabase &drawing, ZvDbObjectId linetype, double scale, Ink ink, int width = kWidth,
                            int height = kHeight)
{
    const auto line = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
    line->setLinetype(linetype, true);
    line->setStartPoint(ZvGePoint3d(10, 10, 0));
    line->setEndPoint(ZvGePoint3d(100, 10, 0));
    line->setLinetypeScale(scale, true);
    if (ink == Ink::kBlack) {
        ZvCmColor black;
        black.setRGB(0, 0, 0);
        line->setColor(black);
        ZvCmTransparency opaque;
        opaque.setMethod(2);
        opaque.setAlphaPercent(1.0);
        line->setTransparency(opaque, true);
    }
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> entities;
    entities.append(ZvSmartPtr<ZvDbEntity>(line.get()));
    const ZvJsonPtr options = ElementValue::createObject(2);
    options->SetDataI("width", width);
    options->SetDataI("height", height);
    options->SetDataI("background", -1);
    return zvsiutCreateEntityImage(&drawing, entities, options);
}

bool isDark(const ZvGiRasterImage &image, int x, int y)
{
    return image.scanLines()[std::uint32_t(y) * image.scanLineSize() + std::uint32_t(x) * 4] < 128;
}

int darkPixels(const ZvGiRasterImage &image)
{
    int count = 0;
    for (int y = 0; y < int(image.pixelHeight()); ++y) {
        for (int x = 0; x < int(image.pixelWidth()); ++x)
            count += isDark(image, x, y);
    }
    return count;
}

/// Dashes that begin in the row of the line.
int dashCount(const ZvGiRasterImage &image)
{
    const int y = int(image.pixelHeight()) / 2;
    int count = 0;
    for (int x = 1; x < int(image.pixelWidth()); ++x)
        count += isDark(image, x, y) && !isDark(image, x - 1, y);
    return count;
}

} // namespace

class TestLineTypeImages : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // all of them
    void eachLineTypeOnceInTableOrder();
    void dependentOnesAreNeverListedNorFound();
    void namesWithStarAndBarAreListed();
    void erasedAndHeldOnesAreLeftOut();
    void recordsAreClosedDuringTheCall();
    void callbackMayChangeTheTable();
    void callbackMayChangeTheScaleForNewEntities();
    void withoutCallbackNothingHappens();
    void currentDrawingCounts();
    void withoutDrawingNothingHappens();
    void withoutTableNothingHappens();
    void callbackMayCloseTheDocument();

    // one of them
    void singleIsFoundWithoutRegardToCase_data();
    void singleIsFoundWithoutRegardToCase();
    void singleLeavesTheImageAlone_data();
    void singleLeavesTheImageAlone();
    void emptyNameIsNotFoundWhereOneIsNameless();
    void singleReplacesTheImage();
    void singleOfAnErasedOrHeldOne();
    void firstOfTwoNamesIsFound();

    // what is drawn
    void lineIsScaledByThePattern_data();
    void lineIsScaledByThePattern();
    void colourIsBlackInTheListAndStandardAlone();
    void repeatsHangOnTheWidthAlone();
    void lineWithoutPatternIsWhole();
    void rendererThatGivesNothingIsHandedOn_data();
    void rendererThatGivesNothingIsHandedOn();
    void widthOfTheMarginIsSurvived();

    // the renderer is asked each time, and keeps its pictures
    void unchangedPicturesAreNotDrawnAgain();
    void pictureIsDrawnAgainWhenWhatDecidesItChanges_data();
    void pictureIsDrawnAgainWhenWhatDecidesItChanges();
    void anEditedPatternDropsOnePicture();

private:
    void openReferences()
    {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbFileReport report;
        QCOMPARE(database->readStream(kReferences, sizeof kReferences - 1, report), Zv::eOk);
        zvDocManagerPtr()->addDocument(database, L"");
    }
};

// ---- all of them

void TestLineTypeImages::eachLineTypeOnceInTableOrder()
{
    const ZvDbObjectId zebra = addLineType(L"Zebra", {4.0, -2.0});
    const ZvDbObjectId apple = addLineType(L"apple", {1.0, -1.0});
    const std::vector<Row> rows = readAll();
    QCOMPARE(namesOf(rows), (QStringList{"ByBlock", "ByLayer", "Continuous", "Zebra", "apple"}));
    QCOMPARE(rows[3].id, zebra);
    QCOMPARE(rows[4].id, apple);
    for (const Row &row : rows) {
        QVERIFY(row.image);
        QCOMPARE(int(row.image->pixelWidth()), kWidth);
        QCOMPARE(int(row.image->pixelHeight()), kHeight);
    }
    QCOMPARE(drawing().openObjectCount(), 0);
}

void TestLineTypeImages::dependentOnesAreNeverListedNorFound()
{
    openReferences();
    QVERIFY(!namesOf(readAll()).contains("House|Dashed"));
    QVERIFY(!ZevaUISetting::findLineStyleTableRecordByName(L"House|Dashed", nullptr).isNull()); // it is there
    QVERIFY(!single(L"House|Dashed"));
}

void TestLineTypeImages::namesWithStarAndBarAreListed()
{
    openReferences();
    const std::vector<Row> rows = readAll();
    for (const wchar_t *name : {L"*Star", L"Odd|Own"}) {
        const Row *row = find(rows, name);
        QVERIFY(row);
        QVERIFY(row->image);
        QVERIFY(single(name));
    }
}

void TestLineTypeImages::erasedAndHeldOnesAreLeftOut()
{
    const ZvDbObjectId erased = addLineType(L"Erased", {4.0, -2.0});
    const ZvDbObjectId held = addLineType(L"Held", {4.0, -2.0});
    addLineType(L"Other", {4.0, -2.0});
    change<ZvDbLinetypeTableRecord>(erased, [](ZvDbLinetypeTableRecord &record) { record.erase(); });
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> holder(held, ZvDb::kForWrite);
    QCOMPARE(namesOf(readAll()), (QStringList{"ByBlock", "ByLayer", "Continuous", "Other"}));
}

void TestLineTypeImages::recordsAreClosedDuringTheCall()
{
    addLineType(L"Dashed", {4.0, -2.0});
    int calls = 0;
    ZevaUISetting::getLineTypeInfo(kWidth, kHeight, [&](ZvGiRasterImagePtr &, ZvString &, ZvDbObjectId &id) {
        ++calls;
        QCOMPARE(drawing().openObjectCount(), 0);
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForWrite);
        QVERIFY(record);
    });
    QCOMPARE(calls, 4);
}

void TestLineTypeImages::callbackMayChangeTheTable()
{
    addLineType(L"Dashed", {4.0, -2.0});
    const ZvDbObjectId last = addLineType(L"Last", {4.0, -2.0});
    QStringList names;
    ZevaUISetting::getLineTypeInfo(kWidth, kHeight, [&](ZvGiRasterImagePtr &, ZvString &name, ZvDbObjectId &) {
        names << QString::fromUtf8(name.toUtf8().c_str());
        if (name == ZvString(L"Dashed")) {
            change<ZvDbLinetypeTableRecord>(last, [](ZvDbLinetypeTableRecord &record) { record.erase(); });
            addLineType(L"New", {4.0, -2.0});
        }
        name = L"changed"; // the caller's to do with as it likes
    });
    QCOMPARE(names, (QStringList{"ByBlock", "ByLayer", "Continuous", "Dashed"}));
    QCOMPARE(namesOf(readAll()), (QStringList{"ByBlock", "ByLayer", "Continuous", "Dashed", "New"}));
}

void TestLineTypeImages::callbackMayChangeTheScaleForNewEntities()
{
    addLineType(L"Dashed", {4.0, -2.0});
    const ZvDbObjectId last = addLineType(L"Last", {4.0, -2.0});
    ZvGiRasterImagePtr shown;
    ZevaUISetting::getLineTypeInfo(kWidth, kHeight, [&](ZvGiRasterImagePtr &image, ZvString &name, ZvDbObjectId &id) {
        if (name == ZvString(L"Dashed"))
            drawing().setCeltscale(2.0);
        if (id == last)
            shown = image;
    });
    QCOMPARE(shown.get(), expected(drawing(), last, 70.0 / (2.5 * 6.0) / 2.0, Ink::kBlack).get());
}

void TestLineTypeImages::withoutCallbackNothingHappens()
{
    addLineType(L"Dashed", {4.0, -2.0});
    ZevaUISetting::getLineTypeInfo(kWidth, kHeight, nullptr);
    QCOMPARE(drawing().openObjectCount(), 0);
}

void TestLineTypeImages::currentDrawingCounts()
{
    const ZvDbObjectId first = addLineType(L"First", {4.0, -2.0});
    openAnother();
    const ZvDbObjectId second = addLineType(L"Second", {4.0, -2.0});
    QVERIFY(!find(readAll(), L"First"));
    QVERIFY(find(readAll(), L"Second"));
    ZvGiRasterImagePtr image;
    QVERIFY(ZevaUISetting::getLineTypeRasterImage(L"First", kWidth, kHeight, image).isNull());
    QCOMPARE(ZevaUISetting::getLineTypeRasterImage(L"Second", kWidth, kHeight, image), second);
    QVERIFY(first != second);
}

void TestLineTypeImages::withoutDrawingNothingHappens()
{
    zvDocManagerPtr()->closeDocument(document());
    QVERIFY(readAll().empty());
    const ZvGiRasterImagePtr before = zvutImageWrap("\0\0\0", 1, 1, 24);
    ZvGiRasterImagePtr image = before;
    QVERIFY(ZevaUISetting::getLineTypeRasterImage(L"Continuous", kWidth, kHeight, image).isNull());
    QCOMPARE(image.get(), before.get());
    CHcSystem::setInstanceAvailable(false);
    QVERIFY(readAll().empty());
    QVERIFY(ZevaUISetting::getLineTypeRasterImage(L"Continuous", kWidth, kHeight, image).isNull());
}

void TestLineTypeImages::withoutTableNothingHappens()
{
    const ZvGiRasterImagePtr before = zvutImageWrap("\0\0\0", 1, 1, 24);
    ZvGiRasterImagePtr image = before;
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> writer(drawing().linetypeTableId(), ZvDb::kForWrite);
        QVERIFY(writer);
        QVERIFY(readAll().empty());
        QVERIFY(ZevaUISetting::getLineTypeRasterImage(L"Continuous", kWidth, kHeight, image).isNull());
        QCOMPARE(image.get(), before.get());
    }
    QCOMPARE(int(readAll().size()), 3);
}

void TestLineTypeImages::callbackMayCloseTheDocument()
{
    int calls = 0;
    ZevaUISetting::getLineTypeInfo(kWidth, kHeight, [&](ZvGiRasterImagePtr &, ZvString &, ZvDbObjectId &) {
        if (++calls == 1)
            zvDocManagerPtr()->closeDocument(document());
    });
    QVERIFY(calls >= 1);
}

// ---- one of them

void TestLineTypeImages::singleIsFoundWithoutRegardToCase_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("as it stands") << "Dashed";
    QTest::newRow("small") << "dashed";
    QTest::newRow("capitals") << "DASHED";
}

void TestLineTypeImages::singleIsFoundWithoutRegardToCase()
{
    QFETCH(QString, name);
    const ZvDbObjectId id = addLineType(L"Dashed", {4.0, -2.0});
    ZvGiRasterImagePtr image;
    QCOMPARE(ZevaUISetting::getLineTypeRasterImage(ZvString(name.toUtf8().constData()), 96, 14, image), id);
    QVERIFY(image);
    QCOMPARE(int(image->pixelWidth()), 96);
    QCOMPARE(int(image->pixelHeight()), 14);
}

void TestLineTypeImages::singleLeavesTheImageAlone_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("empty name") << "" << 80 << 25;
    QTest::newRow("unknown name") << "Dotted" << 80 << 25;
    QTest::newRow("part of a name") << "Dash" << 80 << 25;
    QTest::newRow("width 0") << "Dashed" << 0 << 25;
    QTest::newRow("height 0") << "Dashed" << 80 << 0;
    QTest::newRow("width below 0") << "Dashed" << -80 << 25;
    QTest::newRow("height below 0") << "Dashed" << 80 << -25;
}

void TestLineTypeImages::singleLeavesTheImageAlone()
{
    QFETCH(QString, name);
    QFETCH(int, width);
    QFETCH(int, height);
    addLineType(L"Dashed", {4.0, -2.0});
    const ZvGiRasterImagePtr before = zvutImageWrap("\0\0\0", 1, 1, 24);
    ZvGiRasterImagePtr image = before;
    const ZvString wanted = ZvString(name.toUtf8().constData());
    QVERIFY(ZevaUISetting::getLineTypeRasterImage(wanted, width, height, image).isNull());
    QCOMPARE(image.get(), before.get());
}

void TestLineTypeImages::emptyNameIsNotFoundWhereOneIsNameless()
{
    openDrawing(kNameless);
    QVERIFY(namesOf(readAll()).contains(QString()));
    ZvGiRasterImagePtr image;
    QVERIFY(ZevaUISetting::getLineTypeRasterImage(L"", kWidth, kHeight, image).isNull());
    QVERIFY(!image);
}

void TestLineTypeImages::singleReplacesTheImage()
{
    addLineType(L"Dashed", {4.0, -2.0});
    ZvGiRasterImagePtr image = zvutImageWrap("\0\0\0", 1, 1, 24);
    ZevaUISetting::getLineTypeRasterImage(L"Dashed", kWidth, kHeight, image);
    QCOMPARE(int(image->pixelWidth()), kWidth);
    // Also by the nothing that the renderer gives for a size beyond its means.
    QVERIFY(!ZevaUISetting::getLineTypeRasterImage(L"Dashed", 20000, kHeight, image).isNull());
    QVERIFY(!image);
}

void TestLineTypeImages::singleOfAnErasedOrHeldOne()
{
    const ZvDbObjectId erased = addLineType(L"Erased", {4.0, -2.0});
    const ZvDbObjectId held = addLineType(L"Held", {4.0, -2.0});
    change<ZvDbLinetypeTableRecord>(erased, [](ZvDbLinetypeTableRecord &record) { record.erase(); });
    QVERIFY(!single(L"Erased"));
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> writer(held, ZvDb::kForWrite);
        QVERIFY(!single(L"Held"));
    }
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> reader(held, ZvDb::kForRead);
    QVERIFY(single(L"Held")); // readers share it
}

void TestLineTypeImages::firstOfTwoNamesIsFound()
{
    // The erased one comes first in the table and counts no more.
    const ZvDbObjectId erased = addLineType(L"Twice", {4.0, -2.0});
    change<ZvDbLinetypeTableRecord>(erased, [](ZvDbLinetypeTableRecord &record) { record.erase(); });
    const ZvDbObjectId second = addLineType(L"TWICE", {4.0, -2.0});
    ZvGiRasterImagePtr image;
    QCOMPARE(ZevaUISetting::getLineTypeRasterImage(L"twice", kWidth, kHeight, image), second);
}

// ---- what is drawn

void TestLineTypeImages::lineIsScaledByThePattern_data()
{
    QTest::addColumn<double>("length");
    QTest::addColumn<double>("celtscale");
    QTest::addColumn<int>("width");
    QTest::addColumn<double>("scale");
    // 1 / (2.5 length / (width - 10) * celtscale)
    QTest::newRow("a pattern of 7") << 7.0 << 1.0 << 80 << 4.0;
    QTest::newRow("half as long") << 3.5 << 1.0 << 80 << 8.0;
    QTest::newRow("twice the width") << 7.0 << 1.0 << 150 << 8.0;
    QTest::newRow("scale for new entities 2 halves it") << 7.0 << 2.0 << 80 << 2.0;
    QTest::newRow("no pattern") << 0.0 << 1.0 << 80 << 1.0;
    QTest::newRow("no pattern, scale for new entities 2") << 0.0 << 2.0 << 80 << 0.5;
    QTest::newRow("no pattern, scale for new entities 0.25") << 0.0 << 0.25 << 150 << 4.0;
    QTest::newRow("as good as no pattern") << 4e-11 << 1.0 << 80 << 1.0;
    QTest::newRow("as good as no pattern, below 0") << -4e-11 << 1.0 << 80 << 1.0;
    QTest::newRow("hardly a pattern") << 8e-11 << 1.0 << 80 << 1.0 / (2.5 * 8e-11 / 70.0);
    QTest::newRow("length below 0") << -7.0 << 1.0 << 80 << -4.0;
    QTest::newRow("length below 0, scale for new entities 2") << -7.0 << 2.0 << 80 << -2.0;
}

void TestLineTypeImages::lineIsScaledByThePattern()
{
    QFETCH(double, length);
    QFETCH(double, celtscale);
    QFETCH(int, width);
    QFETCH(double, scale);
    drawing().setCeltscale(celtscale);
    const ZvDbObjectId id = addLineType(L"Dashed", {1.0, -1.0});
    change<ZvDbLinetypeTableRecord>(id, [length](ZvDbLinetypeTableRecord &record) { record.setPatternLength(length); });
    const std::vector<Row> rows = readAll(width);
    const Row *row = find(rows, L"Dashed");
    QVERIFY(row);
    QCOMPARE(row->image.get(), expected(drawing(), id, scale, Ink::kBlack, width).get());
    QCOMPARE(single(L"Dashed", width).get(), expected(drawing(), id, scale, Ink::kStandard, width).get());
    if (scale > 0.0) // a line takes no other, and keeps the 1 that it is made with
        QVERIFY(row->image.get() != expected(drawing(), id, scale * 1.001, Ink::kBlack, width).get());
}

void TestLineTypeImages::colourIsBlackInTheListAndStandardAlone()
{
    const ZvDbObjectId id = addLineType(L"Dashed", {4.0, -2.0});
    const std::vector<Row> rows = readAll();
    const double scale = 70.0 / (2.5 * 6.0);
    QCOMPARE(find(rows, L"Dashed")->image.get(), expected(drawing(), id, scale, Ink::kBlack).get());
    QCOMPARE(single(L"Dashed").get(), expected(drawing(), id, scale, Ink::kStandard).get());
    QVERIFY(find(rows, L"Dashed")->image.get() != single(L"Dashed").get());
    QVERIFY(darkPixels(*single(L"Dashed")) > 0); // on white, the standard colour is dark too
}

void TestLineTypeImages::repeatsHangOnTheWidthAlone()
{
    addLineType(L"Short", {0.2, -0.1});
    addLineType(L"Long", {2000.0, -1000.0});
    const std::vector<Row> rows = readAll();
    const ZvGiRasterImagePtr shorter = find(rows, L"Short")->image;
    const ZvGiRasterImagePtr longer = find(rows, L"Long")->image;
    // 90 units of the line hold 90 * 2.5 / 70 = 3.2 repeats.
    QCOMPARE(dashCount(*shorter), 4);
    QCOMPARE(dashCount(*longer), 4);
    QVERIFY(std::abs(darkPixels(*shorter) - darkPixels(*longer)) <= 1);
    // Wider pictures have fewer: 90 * 2.5 / 150 = 1.5.
    QCOMPARE(dashCount(*find(readAll(160), L"Long")->image), 2);
}

void TestLineTypeImages::lineWithoutPatternIsWhole()
{
    const std::vector<Row> rows = readAll();
    const ZvGiRasterImagePtr image = find(rows, L"Continuous")->image;
    QCOMPARE(dashCount(*image), 1);
    QVERIFY(darkPixels(*image) >= 70);
}

void TestLineTypeImages::rendererThatGivesNothingIsHandedOn_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::newRow("width 0") << 0 << 25;
    QTest::newRow("height 0") << 80 << 0;
    QTest::newRow("below 0") << -1 << -1;
    QTest::newRow("beyond its means") << 100000 << 25;
}

void TestLineTypeImages::rendererThatGivesNothingIsHandedOn()
{
    QFETCH(int, width);
    QFETCH(int, height);
    const std::vector<Row> rows = readAll(width, height);
    QCOMPARE(namesOf(rows), (QStringList{"ByBlock", "ByLayer", "Continuous"}));
    for (const Row &row : rows) {
        QVERIFY(!row.image);
        QVERIFY(!row.id.isNull());
    }
}

void TestLineTypeImages::widthOfTheMarginIsSurvived()
{
    addLineType(L"Dashed", {4.0, -2.0});
    QCOMPARE(int(readAll(10).size()), 4); // what it shows is not told
    single(L"Dashed", 10);
    single(L"Dashed", 1, 1);
    QCOMPARE(drawing().openObjectCount(), 0);
}

// ---- the renderer's kept pictures

void TestLineTypeImages::unchangedPicturesAreNotDrawnAgain()
{
    for (int i = 0; i < 20; ++i)
        addLineType(ZvString(L"Type ") + ZvString(wchar_t(L'A' + i)), {double(i + 1), -1.0});
    readAll();
    single(L"Type A");
    const std::uint64_t drawn = zvsiutEntityImagesDrawn();
    readAll();
    single(L"Type A");
    QCOMPARE(zvsiutEntityImagesDrawn() - drawn, std::uint64_t(0));
}

void TestLineTypeImages::pictureIsDrawnAgainWhenWhatDecidesItChanges_data()
{
    QTest::addColumn<int>("change");
    QTest::addColumn<int>("drawn");
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("width") << 1 << 1;
    QTest::newRow("height") << 2 << 1;
    QTest::newRow("scale for new entities: the line's own makes up for it") << 3 << 0;
    QTest::newRow("the drawing's scale does not count") << 4 << 0;
    QTest::newRow("pattern") << 5 << 1;
    QTest::newRow("name") << 6 << 0;
    QTest::newRow("another line type added") << 7 << 0;
    QTest::newRow("another line type edited") << 8 << 0;
    QTest::newRow("weights shown") << 9 << 1;
    QTest::newRow("another drawing, another pattern") << 10 << 1;
    QTest::newRow("current line type") << 11 << 0;
    QTest::newRow("an entity") << 12 << 0;
    QTest::newRow("a layer") << 13 << 0;
}

void TestLineTypeImages::pictureIsDrawnAgainWhenWhatDecidesItChanges()
{
    QFETCH(int, change);
    QFETCH(int, drawn);
    const ZvDbObjectId id = addLineType(L"Dashed", {4.0, -2.0});
    const ZvDbObjectId other = addLineType(L"Other", {4.0, -2.0});
    single(L"Dashed");
    int width = kWidth;
    int height = kHeight;
    ZvString name = L"Dashed";
    switch (change) {
    case 1:
        ++width;
        break;
    case 2:
        ++height;
        break;
    case 3:
        drawing().setCeltscale(2.0);
        break;
    case 4:
        drawing().setLtscale(50.0);
        break;
    case 5:
        setPattern(id, {1.0, -1.25});
        break;
    case 6:
        name = L"Renamed";
        DrawingTest::change<ZvDbLinetypeTableRecord>(
            id, [&name](ZvDbLinetypeTableRecord &record) { record.setName(name); });
        break;
    case 7:
        addLineType(L"Third", {4.0, -2.0});
        break;
    case 8:
        setPattern(other, {1.0, -1.0});
        break;
    case 9:
        drawing().setLineWeightDisplay(!drawing().lineWeightDisplay());
        break;
    case 10:
        openAnother();
        addLineType(L"Dashed", {4.0, -3.0});
        break;
    case 11:
        drawing().setCeltype(id);
        break;
    case 12:
        addLine();
        break;
    case 13:
        addLayer(L"Walls");
        break;
    default:
        break;
    }
    const std::uint64_t before = zvsiutEntityImagesDrawn();
    QVERIFY(single(name, width, height));
    QCOMPARE(int(zvsiutEntityImagesDrawn() - before), drawn);
}

void TestLineTypeImages::anEditedPatternDropsOnePicture()
{
    ZvDbObjectId ids[20];
    for (int i = 0; i < 20; ++i)
        ids[i] = addLineType(ZvString(L"Type ") + ZvString(wchar_t(L'A' + i)), {double(i + 1), -1.0});
    const std::vector<Row> before = readAll();
    setPattern(ids[7], {1.0, -1.0, 0.0, -1.0});
    const std::uint64_t drawn = zvsiutEntityImagesDrawn();
    const std::vector<Row> after = readAll();
    QCOMPARE(zvsiutEntityImagesDrawn() - drawn, std::uint64_t(1));
    for (std::size_t i = 0; i < before.size(); ++i)
        QCOMPARE(before[i].image.get() == after[i].image.get(), before[i].id != ids[7]);
}

ZEVA_TEST_MAIN(TestLineTypeImages)
#include "tst_linetypeimages.moc"
