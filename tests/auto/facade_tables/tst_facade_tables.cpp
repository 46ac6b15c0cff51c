// SPDX-License-Identifier: MIT
#include "addrecord.h"
#include "drawingtest.h"
#include "drawingtexts.h"
#include "viewportdata.h"

#include "base/zverror.h"
#include "core/zvsystem.h"
#include "db/zvdbhostservice.h"

#include <QStringList>

#include <algorithm>
#include <functional>
#include <initializer_list>

namespace {

QString toQ(const ZvString &text)
{
    return QString::fromUtf8(text.toUtf8().c_str());
}

QStringList listOf(const ZvArray<ZvString> &names)
{
    QStringList list;
    for (const ZvString &name : names)
        list << toQ(name);
    return list;
}

template <class Row> QStringList namesOf(const ZvArray<Row> &rows)
{
    QStringList list;
    for (const Row &row : rows)
        list << toQ(row.name);
    return list;
}

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/// Every reader of a table or dictionary, and how many rows it gives.
struct Reader
{
    const char *name;
    int (*rows)(ZvDbDatabase *database);
    ZvDbObjectId (ZvDbDatabase::*table)() const; ///< What it cannot do without; null for a dictionary.
};

template <class Row, void (*Read)(ZvArray<Row> &, ZvDbDatabase *)> int rowsOf(ZvDbDatabase *database)
{
    ZvArray<Row> rows;
    rows.setLogicalLength(2); // left over
    Read(rows, database);
    return rows.length();
}

typedef ZevaUISetting S;

constexpr Reader kReaders[] = {
    {"layers", rowsOf<S::SigleLayerData, S::getLayerInfos>, &ZvDbDatabase::layerTableId},
    {"text styles",
     [](ZvDbDatabase *database) {
         ZvArray<S::ZvsiTextStyleInfoItem> rows;
         rows.setLogicalLength(2);
         S::getTextStyleTableRecords(rows, database, true);
         return rows.length();
     },
     &ZvDbDatabase::textStyleTableId},
    {"dimension styles", rowsOf<S::ZvsiStyleInfoItem, S::getDimStyleTableRecords>, &ZvDbDatabase::dimStyleTableId},
    {"multileader styles", rowsOf<S::ZvsiStyleInfoItem, S::getMleaderStyleTableRecords>, nullptr},
    {"table styles", rowsOf<S::ZvsiStyleInfoItem, S::getTableStyleTableRecords>, nullptr},
    {"blocks",
     [](ZvDbDatabase *database) {
         ZvArray<ZvString> rows;
         rows.append(L"left over");
         S::getBlockNames(rows, database, false);
         return rows.length();
     },
     &ZvDbDatabase::blockTableId},
    {"hatch patterns", rowsOf<ZvString, S::getHatchNames>, &ZvDbDatabase::modelSpaceId},
    {"materials",
     [](ZvDbDatabase *database) {
         ZvArray<ZvString> names;
         ZvArray<ZvDbObjectId> ids;
         names.append(L"left over");
         ids.append(ZvDbObjectId());
         S::getMaterials(names, ids, database);
         return names.length() == ids.length() ? names.length() : -1;
     },
     nullptr},
    {"plot styles", rowsOf<ZvString, S::getPlotStyleNames>, nullptr},
    {"coordinate systems", rowsOf<S::ZvsiUcsInfoItem, S::getUcses>, nullptr},
    {"views", rowsOf<S::ZvsiViewInfoItem, S::getCustomViews>, &ZvDbDatabase::viewTableId},
};

/// Rows of each reader in kDrawing.
constexpr int kRowsOfDrawing[] = {4, 4, 2, 2, 2, 2, 0, 3, 2, 8, 1};

void readerRows()
{
    QTest::addColumn<int>("reader");
    for (const Reader &reader : kReaders)
        QTest::newRow(reader.name) << int(&reader - kReaders);
}

} // namespace

class TestFacadeTables : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void fieldsOfTheRowsStandInTheirOrder();

    // which drawing
    void nullDatabaseIsTheCurrentOne();
    void layersAreThoseOfTheDocument();
    void readersTakeTheGivenDrawing_data();
    void readersTakeTheGivenDrawing();
    void findersTakeTheGivenDrawing_data();
    void findersTakeTheGivenDrawing();
    void noDatabaseGivesNothing_data();
    void noDatabaseGivesNothing();
    void noDatabaseHasNoRecords();
    void arraysAreEmptiedFirst_data();
    void arraysAreEmptiedFirst();
    void tableThatCannotBeOpenedGivesNothing_data();
    void tableThatCannotBeOpenedGivesNothing();

    // layers
    void layersAreSortedAndHiddenOnesLeftOut();
    void layerWithAStarInItsNameIsLeftOut();
    void namesAreSortedByCodePoint();
    void layerRowTellsItsState();
    void layerIsFoundByNameThoughHidden();
    void unopenableLayerGivesAnEmptyRow();
    void unopenableLayerKeepsItsRowInTheList();
    void layersCompareByTheirNames();

    // styles
    void textStylesKeepReferencesAndTableOrder();
    void textStylesAreSortedOnRequest();
    void textStyleRowTellsItsState();
    void annotationIsReadFromExtendedData_data();
    void annotationIsReadFromExtendedData();
    void annotationChainIsReadStrictly_data();
    void annotationChainIsReadStrictly();
    void textStyleRowHasTheAnswersOfTheService();
    void dimensionStylesLeaveReferencesOut();
    void dictionaryStylesComeInDictionaryOrder();
    void entriesOfDamagedDictionariesAreLeftOut();
    void cellStylesAreTranslatedAndInFallingOrder();
    void cellStylesOfTheUserStandAmongThem();
    void cellStylesOfNoStyleAreNone();
    void recordHeldForWriteIsLeftOut_data();
    void recordHeldForWriteIsLeftOut();
    void recordsWithoutANameAreLeftOut();

    // other names
    void blocksThatUsersInsertAreSorted();
    void usedBlocksOnly();
    void blockInsideAnUnusedOneIsUnused();
    void spacesAreNoBlocks_data();
    void spacesAreNoBlocks();
    void unopenableBlockIsLeftOut();
    void blockReadingLeavesNoUndoStep();
    void hatchPatternsInOrderOfFirstUse();
    void materialsRunInParallelWithIds();
    void plotStyleNamesOfTheDictionary();

    // coordinate systems and views
    void worldHasNoUnnamedRow();
    void unnamedSystemHasItsRow();
    void orthographicSystemHasNoUnnamedRow();
    void namedSystemHasNoUnnamedRow();
    void nearlyTheWorldHasNoUnnamedRow();
    void previousSystemHasItsRow();
    void previousSystemIsAskedOfTheDocumentsDrawing();
    void viewportWithoutViewportDataThrows();
    void fixedRowsComeInOrder();
    void namedSystemsFollow();
    void paperSystemCountsOnTheLayout();
    void modelSystemCountsInsideAViewport();
    void orthographicPaperSystemHasNoUnnamedRow();
    void viewsOfTheSpaceAtWork();
    void modelViewsInsideAViewport();

    // finders
    void findersIgnoreCase_data();
    void findersIgnoreCase();
    void findersOfUnknownAndEmptyNames_data();
    void findersOfUnknownAndEmptyNames();
    void unknownDimensionStyleIsTheLast();
    void namesAreFoundById();
    void nothingIsLeftOpen();

private:
    static QStringList ucsRows()
    {
        ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
        ZevaUISetting::getUcses(items, nullptr);
        return namesOf(items);
    }
    static ZvDbObjectId find(int finder, const ZvString &name, ZvDbDatabase *database = nullptr)
    {
        typedef ZvDbObjectId (*Finder)(const ZvString &, ZvDbDatabase *);
        constexpr Finder finders[]
            = {ZevaUISetting::findTextStyleTableRecordByName,    ZevaUISetting::findDimStyleTableRecordByName,
               ZevaUISetting::findMleaderStyleTableRecordByName, ZevaUISetting::findTableStyleTableRecordByName,
               ZevaUISetting::findLineStyleTableRecordByName,    ZevaUISetting::findMaterialByName,
               ZevaUISetting::findLayerTableRecordByName};
        return finders[finder](name, database);
    }
    static void finderRows()
    {
        QTest::addColumn<int>("finder");
        const char *names[]
            = {"text style", "dimension style", "multileader style", "table style", "line type", "material", "layer"};
        for (int i = 0; i < 7; ++i)
            QTest::newRow(names[i]) << i;
    }
    /// Gives a text style the extended data of one application.
    static void setData(ZvDbObjectId style, std::vector<std::pair<int, std::wstring>> chain)
    {
        std::vector<ZvResBuf> buffers(chain.size());
        for (std::size_t i = 0; i < chain.size(); ++i) {
            buffers[i].restype = chain[i].first;
            buffers[i].rbnext = i + 1 < chain.size() ? &buffers[i + 1] : nullptr;
            if (chain[i].first == 1070)
                buffers[i].resval.rint = short(std::stoi(chain[i].second));
            else if (chain[i].first == 1071)
                buffers[i].resval.rlong = std::stoi(chain[i].second);
            else
                buffers[i].resval.rstring = chain[i].second.data();
        }
        change<ZvDbTextStyleTableRecord>(style,
                                         [&](ZvDbTextStyleTableRecord &record) { record.setXData(buffers.data()); });
    }
    void addFineRecords()
    {
        addTextStyle(L"Fine");
        addDimStyle(L"Fine");
        addMLeaderStyle(L"Fine");
        addTableStyle(L"Fine");
        addLineType(L"Fine");
        addMaterial(L"Fine");
        addLayer(L"Fine");
    }
};

void TestFacadeTables::fieldsOfTheRowsStandInTheirOrder()
{
    // Other modules are compiled against their places.
    const auto stand = [](std::initializer_list<const void *> fields) {
        return std::is_sorted(fields.begin(), fields.end(), std::less<const void *>());
    };
    const S::SigleLayerData layer;
    QVERIFY(stand({&layer.name, &layer.color, &layer.isFrozen, &layer.isHidden, &layer.isOff, &layer.isLocked}));
    const S::ZvsiStyleInfoItem style;
    QVERIFY(stand({&style.name, &style.objectId}));
    const S::ZvsiViewInfoItem view;
    QVERIFY(stand({&view.name, &view.objectId}));
    const S::ZvsiUcsInfoItem ucs;
    QVERIFY(stand({&ucs.name, &ucs.objectId, &ucs.type}));
    const S::ZvsiTextStyleInfoItem text;
    QVERIFY(stand({&text.name, &text.objectId, &text.isAnnotative, &text.isMatchOrientation, &text.textSize,
                   &text.xScale, &text.obliquingAngle, &text.firstFlag, &text.secondFlag, &text.isVertical}));
    const S::EntityValue value;
    QVERIFY(stand({&value.color, &value.lineWeight, &value.objectId, &value.name}));
}

// ---- which drawing

void TestFacadeTables::nullDatabaseIsTheCurrentOne()
{
    ZvDbDatabase *first = &drawing();
    addLayer(L"Only in the first");
    openAnother();
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    QCOMPARE(namesOf(layers), QStringList{s("0")});
    ZevaUISetting::getLayerInfos(layers, first);
    QCOMPARE(layers.length(), 2);
    QVERIFY(ZevaUISetting::findLayerTableRecordByName(L"Only in the first", nullptr).isNull());
    QVERIFY(!ZevaUISetting::findLayerTableRecordByName(L"Only in the first", first).isNull());
}

void TestFacadeTables::layersAreThoseOfTheDocument()
{
    addLayer(L"Of the document");
    const ZvDbDatabasePtr other = readDrawing(kDrawing);
    zvdbSetCurDatabase(other);
    ZvArray<S::SigleLayerData> layers;
    S::getLayerInfos(layers, nullptr);
    ZvArray<S::ZvsiStyleInfoItem> styles;
    S::getDimStyleTableRecords(styles, nullptr);
    zvdbSetCurDatabase(document()->database());
    QCOMPARE(namesOf(layers), (QStringList{s("0"), s("Of the document")}));
    QVERIFY(namesOf(styles).contains(s("Zulu"))); // all other readers take the current database
}

void TestFacadeTables::readersTakeTheGivenDrawing_data()
{
    readerRows();
}

void TestFacadeTables::readersTakeTheGivenDrawing()
{
    QFETCH(int, reader);
    openDrawing(drawingOf(QByteArray(), hatch("ANSI31")));
    addFineRecords();
    addPlotStyle(L"Fine");
    for (const wchar_t *name : {L"Finer", L"Finest"}) {
        addDimStyle(name);
        addMLeaderStyle(name);
        addTableStyle(name);
        addPlotStyle(name);
    }
    QVERIFY(kReaders[reader].rows(nullptr) != kRowsOfDrawing[reader]);
    const ZvDbDatabasePtr other = readDrawing(kDrawing);
    QCOMPARE(kReaders[reader].rows(other), kRowsOfDrawing[reader]);
}

void TestFacadeTables::findersTakeTheGivenDrawing_data()
{
    finderRows();
}

void TestFacadeTables::findersTakeTheGivenDrawing()
{
    QFETCH(int, finder);
    const ZvDbDatabasePtr other = readDrawing(kDrawing);
    const wchar_t *const names[] = {L"tall", L"standard", L"RED", L"STRIPED", L"continuous", L"WOOD", L"DOORS"};
    const ZvDbObjectId id = find(finder, names[finder], other);
    QVERIFY(id.isValid());
    QCOMPARE(id.database(), static_cast<ZvDbDatabase *>(other));
    // Of several that have the name it is the first.
    const std::uint64_t handles[] = {0, 0, 0xE1, 0xD1, 0, 0xB1, 0};
    if (handles[finder])
        QCOMPARE(id, other->idOfHandle(handles[finder]));
    if (finder == 0)
        read<ZvDbTextStyleTableRecord>(id, [](const auto &style) { QCOMPARE(style.textSize(), 3.5); });
    if (finder == 2)
        QCOMPARE(S::findMleaderStyleTableRecordById(id, other), ZvString(L"red"));
    if (finder == 3)
        QCOMPARE(S::findTableStyleTableRecordById(id, other), ZvString(L"striped"));
}

void TestFacadeTables::noDatabaseGivesNothing_data()
{
    readerRows();
}

void TestFacadeTables::noDatabaseGivesNothing()
{
    QFETCH(int, reader);
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(kReaders[reader].rows(nullptr), 0);
}

void TestFacadeTables::noDatabaseHasNoRecords()
{
    zvDocManagerPtr()->closeDocument(document());
    for (int finder = 0; finder < 7; ++finder)
        QVERIFY(find(finder, L"Standard").isNull());
    QVERIFY(S::findMleaderStyleTableRecordById(ZvDbObjectId(), nullptr).isEmpty());
    QVERIFY(S::findTableStyleTableRecordById(ZvDbObjectId(), nullptr).isEmpty());
}

void TestFacadeTables::arraysAreEmptiedFirst_data()
{
    readerRows();
}

void TestFacadeTables::arraysAreEmptiedFirst()
{
    QFETCH(int, reader);
    openDrawing(kDrawing);
    // The left-over rows would show as two more.
    QCOMPARE(kReaders[reader].rows(nullptr), kRowsOfDrawing[reader]);
}

void TestFacadeTables::tableThatCannotBeOpenedGivesNothing_data()
{
    QTest::addColumn<int>("reader");
    for (const Reader &reader : kReaders) {
        if (reader.table)
            QTest::newRow(reader.name) << int(&reader - kReaders);
    }
}

void TestFacadeTables::tableThatCannotBeOpenedGivesNothing()
{
    QFETCH(int, reader);
    openDrawing(kDrawing);
    const Reader &row = kReaders[reader];
    const ZvDbObjectId table = std::invoke(row.table, drawing());
    const ZvDbObjectPointer<ZvDbObject> held(table, ZvDb::kForWrite);
    QVERIFY(held);
    QCOMPARE(row.rows(nullptr), 0);
    QCOMPARE(drawing().frameDepth(), 0);
}

// ---- layers

void TestFacadeTables::layersAreSortedAndHiddenOnesLeftOut()
{
    openDrawing(kDrawing);
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    // capitals come before small letters
    QCOMPARE(namesOf(layers), (QStringList{s("0"), s("Doors"), s("House|Walls"), s("walls")}));
}

void TestFacadeTables::layerWithAStarInItsNameIsLeftOut()
{
    // Wherever it stands. Programs cannot make such names.
    openDrawing("0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n3\n"
                "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
                "0\nLAYER\n2\nWalls*\n70\n0\n62\n3\n6\nCONTINUOUS\n"
                "0\nLAYER\n2\nA*B\n70\n0\n62\n4\n6\nCONTINUOUS\n"
                "0\nENDTAB\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    ZvArray<S::SigleLayerData> layers;
    S::getLayerInfos(layers, nullptr);
    QCOMPARE(namesOf(layers), QStringList{s("0")});
    QCOMPARE(int(S::getLayInfo(ZvString(L"walls*")).color.colorIndex()), 3);
    QCOMPARE(int(S::getLayInfo(ZvString(L"a*b")).color.colorIndex()), 4);
}

/// Names that a quick comparison could take for equal, or for the wrong order.
static const QStringList kNamesInOrder = {
    s("Name"),      s("Name "),     s("Name 1"),         s("Name 10"),        s("Name 100"),        s("Name 1000"),
    s("Name 10000"), s("Name 1001"), s("Name 2"),         s("Name A"),         s("Name b"),          s("Name 一"),
    s("Name 一二三四"), s("Name 一二三四五"), s("Name 一二三四六"), s("Name \uFF21"), s("Name \uFFFF a"), s("Name \U0001F3E0 a"),
    s("Name \U0001F3E0 b"), s("Name \U0001F3E1"), s("Named")};

void TestFacadeTables::namesAreSortedByCodePoint()
{
    for (int i = 0; i < kNamesInOrder.size(); ++i) { // in an order of their own
        const ZvString name = ZvUtf8String(kNamesInOrder[i * 8 % kNamesInOrder.size()].toUtf8().constData()).toWide();
        QVERIFY(!addLayer(name).isNull());
        QVERIFY(!addTextStyle(name).isNull());
        QVERIFY((!addRecord<ZvDbBlockTable, ZvDbBlockTableRecord>(drawing(), name).isNull()));
    }
    ZvArray<S::SigleLayerData> layers;
    S::getLayerInfos(layers, nullptr);
    QCOMPARE(namesOf(layers).mid(1), kNamesInOrder); // behind "0"
    ZvArray<S::ZvsiTextStyleInfoItem> styles;
    S::getTextStyleTableRecords(styles, nullptr, true);
    QCOMPARE(namesOf(styles).mid(1, kNamesInOrder.size()), kNamesInOrder); // behind "Annotative"
    ZvArray<ZvString> blocks;
    S::getBlockNames(blocks, nullptr, false);
    QCOMPARE(listOf(blocks), kNamesInOrder);
    for (int i = 1; i < layers.length(); ++i)
        QVERIFY(S::compareLayerInfo(layers[i - 1], layers[i]));
}

void TestFacadeTables::layerRowTellsItsState()
{
    openDrawing(kDrawing);
    const ZevaUISetting::SigleLayerData row = ZevaUISetting::getLayInfo(ZvString(L"WALLS"));
    QCOMPARE(row.name, ZvString(L"walls"));
    QCOMPARE(int(row.color.colorIndex()), 3);
    QVERIFY(row.isFrozen);
    QVERIFY(row.isOff);
    QVERIFY(row.isLocked);
    QVERIFY(!row.isHidden);
    const ZevaUISetting::SigleLayerData plain = ZevaUISetting::getLayInfo(layerNamed(L"Doors"));
    QVERIFY(!plain.isFrozen && !plain.isOff && !plain.isLocked);
}

void TestFacadeTables::layerIsFoundByNameThoughHidden()
{
    openDrawing(kDrawing);
    const ZevaUISetting::SigleLayerData row = ZevaUISetting::getLayInfo(ZvString(L"*helper"));
    QCOMPARE(row.name, ZvString(L"*Helper"));
    QVERIFY(row.isHidden);
}

void TestFacadeTables::unopenableLayerGivesAnEmptyRow()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layer, ZvDb::kForWrite);
    QVERIFY(ZevaUISetting::getLayInfo(layer).name.isEmpty());
    QVERIFY(ZevaUISetting::getLayInfo(ZvDbObjectId()).name.isEmpty());
    QVERIFY(ZevaUISetting::getLayInfo(ZvString(L"no such layer")).name.isEmpty());
}

void TestFacadeTables::unopenableLayerKeepsItsRowInTheList()
{
    const ZvDbObjectId layer = addLayer(L"Walls");
    const ZvDbObjectPointer<ZvDbLayerTableRecord> held(layer, ZvDb::kForWrite);
    ZvArray<S::SigleLayerData> layers;
    S::getLayerInfos(layers, nullptr);
    QCOMPARE(namesOf(layers), (QStringList{QString(), s("0")}));
}

void TestFacadeTables::layersCompareByTheirNames()
{
    S::SigleLayerData a;
    S::SigleLayerData b;
    a.name = L"Walls";
    b.name = L"walls"; // capitals come first
    QVERIFY(S::compareLayerInfo(a, b));
    QVERIFY(!S::compareLayerInfo(b, a));
    QVERIFY(!S::compareLayerInfo(a, a));
}

// ---- styles

void TestFacadeTables::textStylesKeepReferencesAndTableOrder()
{
    openDrawing(kDrawing);
    ZvArray<S::ZvsiTextStyleInfoItem> styles;
    S::getTextStyleTableRecords(styles, nullptr, false);
    // "Tall" stands there twice: the first counts. An empty name is listed too.
    QCOMPARE(namesOf(styles), (QStringList{s("STANDARD"), s("Tall"), QString(), s("House|Tall")}));
    QCOMPARE(styles[1].textSize, 3.5);
}

void TestFacadeTables::textStylesAreSortedOnRequest()
{
    addTextStyle(L"b");
    addTextStyle(L"A");
    addTextStyle(L"C");
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> styles;
    ZevaUISetting::getTextStyleTableRecords(styles, nullptr, true);
    QCOMPARE(namesOf(styles), (QStringList{s("A"), s("Annotative"), s("C"), s("Standard"), s("b")}));
    QVERIFY(ZevaUISetting::compareTextStyleInfo(styles[0], styles[1]));
    QVERIFY(!ZevaUISetting::compareTextStyleInfo(styles[1], styles[0]));
    QVERIFY(!ZevaUISetting::compareTextStyleInfo(styles[0], styles[0]));
}

void TestFacadeTables::textStyleRowTellsItsState()
{
    openDrawing(kDrawing);
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> styles;
    ZevaUISetting::getTextStyleTableRecords(styles, nullptr, false);
    const auto &row = styles[namesOf(styles).indexOf(s("Tall"))];
    QCOMPARE(row.objectId, find(0, L"Tall"));
    QCOMPARE(row.textSize, 3.5);
    QCOMPARE(row.xScale, 0.8);
    QVERIFY(qFuzzyCompare(row.obliquingAngle, 15.0 * 3.14159265358979323846 / 180.0));
    QVERIFY(row.isVertical);
    QVERIFY(!row.isAnnotative && !row.isMatchOrientation && !row.firstFlag && !row.secondFlag);
}

void TestFacadeTables::annotationIsReadFromExtendedData_data()
{
    QTest::addColumn<bool>("isWhole");
    QTest::addColumn<int>("number");
    QTest::addColumn<int>("orientation"); // -1: no such data
    QTest::addColumn<bool>("annotative");
    QTest::addColumn<bool>("matches");
    QTest::newRow("none") << false << -1 << -1 << false << false;
    QTest::newRow("annotative") << true << 1 << -1 << true << false;
    QTest::newRow("annotative and matching") << true << 1 << 1 << true << true;
    QTest::newRow("switched off") << true << 0 << 0 << false << false;
    QTest::newRow("chain breaks off") << false << 1 << 1 << false << true;
    QTest::newRow("matching alone") << true << -1 << 1 << false << true;
    QTest::newRow("orientation of another number") << true << 1 << 2 << true << false;
    QTest::newRow("annotative of another number") << true << 2 << -1 << false << false;
}

void TestFacadeTables::annotationIsReadFromExtendedData()
{
    QFETCH(bool, isWhole);
    QFETCH(int, number);
    QFETCH(int, orientation);
    const ZvDbObjectId style = addTextStyle(L"Fine");
    if (number >= 0) {
        std::vector<std::pair<int, std::wstring>> chain{{1001, L"AcadAnnotative"},
                                                        {1000, L"AnnotativeData"},
                                                        {1002, L"{"},
                                                        {1070, L"1"},
                                                        {1070, std::to_wstring(number)},
                                                        {1002, L"}"}};
        if (!isWhole)
            chain.erase(chain.begin() + 3); // one number only
        setData(style, chain);
    }
    if (orientation >= 0)
        setData(style, {{1001, L"AcadAnnoPO"}, {1070, std::to_wstring(orientation)}});
    bool annotative = true;
    bool matches = true;
    read<ZvDbTextStyleTableRecord>(style, [&](const ZvDbTextStyleTableRecord &record) {
        ZevaUISetting::getAnnotationAndMatch(&record, annotative, matches);
    });
    QTEST(annotative, "annotative");
    QTEST(matches, "matches");
    annotative = matches = true;
    ZevaUISetting::getAnnotationAndMatch(nullptr, annotative, matches);
    QVERIFY(!annotative && !matches);
}

void TestFacadeTables::annotationChainIsReadStrictly_data()
{
    QTest::addColumn<int>("position"); // of the buffer that is another one
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("text");
    QTest::newRow("another text") << 1 << 1000 << s("annotativedata");
    QTest::newRow("no opening brace") << 2 << 1002 << s("}");
    QTest::newRow("text in place of the brace") << 2 << 1000 << s("{");
    QTest::newRow("first number 0") << 3 << 1070 << s("0");
    QTest::newRow("number of another type") << 4 << 1071 << s("1");
    QTest::newRow("no closing brace") << 5 << 1002 << s("{");
    QTest::newRow("nothing behind the application") << 1 << -1 << QString();
}

void TestFacadeTables::annotationChainIsReadStrictly()
{
    QFETCH(int, position);
    QFETCH(int, type);
    QFETCH(QString, text);
    const ZvDbObjectId style = addTextStyle(L"Fine");
    std::vector<std::pair<int, std::wstring>> chain{
        {1001, L"AcadAnnotative"}, {1000, L"AnnotativeData"}, {1002, L"{"}, {1070, L"1"}, {1070, L"1"}, {1002, L"}"}};
    if (type < 0)
        chain.resize(2, {}), chain[1] = {1000, L""};
    else
        chain[std::size_t(position)] = {type, text.toStdWString()};
    setData(style, chain);
    bool annotative = true;
    bool matches = true;
    read<ZvDbTextStyleTableRecord>(
        style, [&](const ZvDbTextStyleTableRecord &record) { S::getAnnotationAndMatch(&record, annotative, matches); });
    QVERIFY(!annotative);
    QVERIFY(!matches);
}

void TestFacadeTables::textStyleRowHasTheAnswersOfTheService()
{
    const ZvDbObjectId style = addTextStyle(L"Fine");
    const auto row = [] {
        ZvArray<S::ZvsiTextStyleInfoItem> styles;
        S::getTextStyleTableRecords(styles, nullptr, false);
        return styles[namesOf(styles).indexOf(s("Fine"))];
    };
    QVERIFY(!row().firstFlag && !row().secondFlag);
    setData(
        style,
        {{1001, L"AcadAnnotative"}, {1000, L"AnnotativeData"}, {1002, L"{"}, {1070, L"1"}, {1070, L"1"}, {1002, L"}"}});
    QVERIFY(row().isAnnotative && row().firstFlag && !row().isMatchOrientation && !row().secondFlag);
    setData(style, {{1001, L"AcadAnnoPO"}, {1070, L"1"}});
    QVERIFY(row().isMatchOrientation && row().secondFlag);
}

void TestFacadeTables::dimensionStylesLeaveReferencesOut()
{
    openDrawing(kDrawing);
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZevaUISetting::getDimStyleTableRecords(styles, nullptr);
    QCOMPARE(namesOf(styles), (QStringList{s("STANDARD"), s("Zulu")}));
    QCOMPARE(styles[1].objectId, find(1, L"Zulu"));
}

void TestFacadeTables::dictionaryStylesComeInDictionaryOrder()
{
    addMLeaderStyle(L"b");
    addMLeaderStyle(L"A");
    addTableStyle(L"b");
    addTableStyle(L"A");
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> leaders;
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> tables;
    ZevaUISetting::getMleaderStyleTableRecords(leaders, nullptr);
    ZevaUISetting::getTableStyleTableRecords(tables, nullptr);
    QStringList dictionary;
    {
        const ZvDbObjectPointer<ZvDbDictionary> styles(drawing().mleaderStyleDictionaryId(), ZvDb::kForRead);
        const std::unique_ptr<ZvDbDictionaryIterator> iterator(styles->newIterator());
        for (; !iterator->done(); iterator->next())
            dictionary << toQ(iterator->name());
    }
    QCOMPARE(namesOf(leaders), dictionary);
    QCOMPARE(leaders.length(), 3);
    QCOMPARE(tables.length(), 3);
    QCOMPARE(tables[namesOf(tables).indexOf(s("b"))].objectId, find(3, L"b"));
}

void TestFacadeTables::entriesOfDamagedDictionariesAreLeftOut()
{
    openDrawing(kDrawing);
    ZvArray<S::ZvsiStyleInfoItem> styles;
    S::getTableStyleTableRecords(styles, nullptr);
    QCOMPARE(namesOf(styles), (QStringList{s("striped"), s("Plain")}));
    QCOMPARE(styles[0].objectId, drawing().idOfHandle(0xD1)); // the first of its name
    S::getMleaderStyleTableRecords(styles, nullptr);
    QCOMPARE(namesOf(styles), (QStringList{s("red"), s("Blue")}));
    QCOMPARE(styles[0].objectId, drawing().idOfHandle(0xE1));
    ZvArray<ZvString> names;
    S::getPlotStyleNames(names, nullptr);
    QCOMPARE(listOf(names), (QStringList{s("thick"), s("Normal")}));
    // Materials of one name are all listed, each with its own id.
    ZvArray<ZvDbObjectId> ids;
    S::getMaterials(names, ids, nullptr);
    QCOMPARE(listOf(names), (QStringList{s("wood"), s("Brick"), s("wood")}));
    QCOMPARE(ids[0], drawing().idOfHandle(0xB1));
    QCOMPARE(ids[2], drawing().idOfHandle(0xB4));
}

void TestFacadeTables::cellStylesOfTheUserStandAmongThem()
{
    openDrawing(kDrawing);
    ZvArray<ZvString> names;
    S::getTableCellStyleNames(names, find(3, L"striped"));
    // Falling, case ignored; of two that differ in case only the later comes first.
    QCOMPARE(listOf(names), (QStringList{s("表头"), s("标题"), s("数据"), s("Beta"), s("ALPHA"), s("alpha")}));
}

void TestFacadeTables::cellStylesAreTranslatedAndInFallingOrder()
{
    ZvArray<ZvString> names;
    names.append(L"left over");
    ZevaUISetting::getTableCellStyleNames(names, find(3, L"Standard"));
    // by their bytes: 表头, 标题, 数据
    QCOMPARE(listOf(names), (QStringList{s("表头"), s("标题"), s("数据")}));
}

void TestFacadeTables::cellStylesOfNoStyleAreNone()
{
    ZvArray<ZvString> names;
    names.append(L"left over");
    ZevaUISetting::getTableCellStyleNames(names, ZvDbObjectId());
    QVERIFY(names.isEmpty());
    names.append(L"left over");
    ZevaUISetting::getTableCellStyleNames(names, layerNamed(L"0"));
    QVERIFY(names.isEmpty());
}

void TestFacadeTables::recordHeldForWriteIsLeftOut_data()
{
    QTest::addColumn<int>("reader");
    QTest::addColumn<QString>("record");
    QTest::newRow("text style") << 1 << s("Tall");
    QTest::newRow("dimension style") << 2 << s("Zulu");
    QTest::newRow("coordinate system") << 9 << s("Slope");
    QTest::newRow("view") << 10 << s("GARDEN");
}

void TestFacadeTables::recordHeldForWriteIsLeftOut()
{
    QFETCH(int, reader);
    QFETCH(QString, record);
    openDrawing(kDrawing);
    ZvDbObjectId (ZvDbDatabase::*const table)() const
        = reader == 9 ? &ZvDbDatabase::UCSTableId : kReaders[reader].table;
    ZvDbObjectId id;
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> opened(std::invoke(table, drawing()), ZvDb::kForRead);
        id = opened->getIdAt(ZvString(record.toUtf8().constData()));
    }
    const ZvDbObjectPointer<ZvDbObject> held(id, ZvDb::kForWrite);
    QVERIFY(held);
    // Of two that have the name the other one steps in.
    const int expected = kRowsOfDrawing[reader] - (reader == 9 || reader == 10 ? 1 : 0);
    QCOMPARE(kReaders[reader].rows(nullptr), expected);
    if (reader == 1) {
        ZvArray<S::ZvsiTextStyleInfoItem> styles;
        S::getTextStyleTableRecords(styles, nullptr, false);
        QCOMPARE(styles[1].textSize, 9.5);
    }
    if (reader == 2) {
        ZvArray<S::ZvsiStyleInfoItem> styles;
        S::getDimStyleTableRecords(styles, nullptr);
        QVERIFY(styles[1].objectId != id);
    }
}

void TestFacadeTables::recordsWithoutANameAreLeftOut()
{
    openDrawing("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
                "0\nSECTION\n2\nTABLES\n"
                "0\nTABLE\n2\nUCS\n70\n2\n"
                "0\nUCS\n2\n\n70\n0\n10\n1.0\n20\n2.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n12\n0.0\n22\n0.0\n"
                "32\n1.0\n"
                "0\nUCS\n2\nSlope\n70\n0\n10\n1.0\n20\n2.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n12\n0.0\n22\n0.0\n"
                "32\n1.0\n"
                "0\nENDTAB\n"
                "0\nTABLE\n2\nVIEW\n70\n2\n"
                "0\nVIEW\n2\n\n70\n0\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n"
                "0\nVIEW\n2\nGARDEN\n70\n0\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n"
                "0\nENDTAB\n0\nENDSEC\n"
                "0\nSECTION\n2\nBLOCKS\n"
                "0\nBLOCK\n8\n0\n2\n\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\n\n0\nENDBLK\n8\n0\n"
                "0\nBLOCK\n8\n0\n2\nDoor\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\nDoor\n0\nENDBLK\n8\n0\n"
                "0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    const auto recordCount = [](ZvDbObjectId table) {
        return read<ZvDbSymbolTable>(table, [](const ZvDbSymbolTable &opened) { return opened.count(); });
    };
    QCOMPARE(recordCount(drawing().UCSTableId()), 2); // they are there
    QCOMPARE(recordCount(drawing().viewTableId()), 2);
    QCOMPARE(recordCount(drawing().blockTableId()), 4); // with the two spaces
    QCOMPARE(ucsRows().mid(7), QStringList{s("Slope")});
    ZvArray<S::ZvsiViewInfoItem> views;
    S::getCustomViews(views, nullptr);
    QCOMPARE(namesOf(views), QStringList{s("GARDEN")});
    ZvArray<ZvString> blocks;
    S::getBlockNames(blocks, nullptr, false);
    QCOMPARE(listOf(blocks), QStringList{s("Door")});
}

// ---- other names

void TestFacadeTables::blocksThatUsersInsertAreSorted()
{
    openDrawing(kDrawing);
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, nullptr, false);
    QCOMPARE(listOf(names), (QStringList{s("Door"), s("WINDOW")}));
}

void TestFacadeTables::usedBlocksOnly()
{
    openDrawing(kDrawing);
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, nullptr, true);
    QCOMPARE(listOf(names), QStringList{s("Door")});
}

void TestFacadeTables::blockInsideAnUnusedOneIsUnused()
{
    const auto block = [](const QByteArray &name, const QByteArray &inside) -> QByteArray {
        return QByteArrayLiteral("0\nBLOCK\n8\n0\n2\n") + name + "\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\n" + name + "\n"
            + inside + "0\nENDBLK\n8\n0\n";
    };
    const auto insert = [](const QByteArray &name) -> QByteArray {
        return QByteArrayLiteral("0\nINSERT\n8\n0\n2\n") + name + "\n10\n0.0\n20\n0.0\n30\n0.0\n";
    };
    const ZvDbDatabasePtr database = readDrawing(drawingOf(
        block("Hinge", "") + block("Handle", "") + block("Window", insert("Hinge")) + block("Door", insert("Handle")),
        insert("Door")));
    ZvArray<ZvString> names;
    S::getBlockNames(names, database, true);
    QCOMPARE(listOf(names), (QStringList{s("Door"), s("Handle")}));
    S::getBlockNames(names, database, false);
    QCOMPARE(listOf(names), (QStringList{s("Door"), s("Handle"), s("Hinge"), s("Window")}));
}

void TestFacadeTables::spacesAreNoBlocks_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("paper space with a number") << QByteArray("*PAPER_SPACE7") << false;
    QTest::newRow("in small letters") << QByteArray("*paper_space8") << false;
    QTest::newRow("an ordinary name") << QByteArray("MODEL_SPACE") << true;
    QTest::newRow("eleven characters without the star") << QByteArray("PAPER_SPACE") << true;
    QTest::newRow("eleven characters that begin like a paper's") << QByteArray("*PAPER_SPAC") << true;
    QTest::newRow("eleven characters that begin like model space") << QByteArray("*MODEL_SPAC") << true;
    QTest::newRow("model space with a number") << QByteArray("*Model_Space1") << false;
    QTest::newRow("model space in mixed case") << QByteArray("*mOdEl_sPaCe") << false;
}

void TestFacadeTables::spacesAreNoBlocks()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isListed);
    const ZvDbDatabasePtr database
        = readDrawing(drawingOf(QByteArrayLiteral("0\nBLOCK\n8\n0\n2\n") + name
                                    + "\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\n" + name + "\n0\nENDBLK\n8\n0\n",
                                QByteArray()));
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, database, false);
    QCOMPARE(listOf(names).contains(QString::fromUtf8(name)), isListed);
    for (const QString &listed : listOf(names))
        QVERIFY(!listed.startsWith(QLatin1String("*Model_Space"), Qt::CaseInsensitive));
}

void TestFacadeTables::unopenableBlockIsLeftOut()
{
    openDrawing(kDrawing);
    ZvDbObjectId door;
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> blocks(drawing().blockTableId(), ZvDb::kForRead);
        door = blocks->getIdAt(L"Door");
    }
    const ZvDbObjectPointer<ZvDbBlockTableRecord> held(door, ZvDb::kForWrite);
    ZvArray<ZvString> names;
    S::getBlockNames(names, nullptr, false);
    QCOMPARE(listOf(names), QStringList{s("WINDOW")});
}

void TestFacadeTables::blockReadingLeavesNoUndoStep()
{
    openDrawing(kDrawing);
    drawing().clearUndo();
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, nullptr, true);
    QVERIFY(!drawing().canUndo());
    QCOMPARE(drawing().frameDepth(), 0);
    {
        const ZvDbObjectPointer<ZvDbObject> held(drawing().blockTableId(), ZvDb::kForWrite);
        ZevaUISetting::getBlockNames(names, nullptr, true);
    }
    QVERIFY(names.isEmpty());
    QCOMPARE(drawing().frameDepth(), 0);
}

void TestFacadeTables::hatchPatternsInOrderOfFirstUse()
{
    const ZvDbDatabasePtr database = readDrawing(
        drawingOf(QByteArray(),
                  hatch("ANSI31") + hatch("SOLID") + hatch("") + hatch("ansi31") + hatch("ANSI31") + hatch("EARTH")
                      + hatch("BRICK", true) + hatch("GRATE", true) + hatch("BRICK", true)));
    ZvArray<ZvString> names;
    ZevaUISetting::getHatchNames(names, database);
    QCOMPARE(listOf(names), (QStringList{s("ANSI31"), s("SOLID"), s("ansi31"), s("EARTH")}));
    database->setTilemode(false);
    ZevaUISetting::getHatchNames(names, database);
    QCOMPARE(listOf(names), (QStringList{s("BRICK"), s("GRATE")}));
}

void TestFacadeTables::materialsRunInParallelWithIds()
{
    addMaterial(L"Brick");
    ZvArray<ZvString> names;
    ZvArray<ZvDbObjectId> ids;
    ZevaUISetting::getMaterials(names, ids, nullptr);
    QCOMPARE(names.length(), ids.length());
    QVERIFY(listOf(names).contains(s("Brick")));
    for (int i = 0; i < names.length(); ++i)
        QCOMPARE(ids[i], find(5, names[i]));
}

void TestFacadeTables::plotStyleNamesOfTheDictionary()
{
    addPlotStyle(L"Thin");
    ZvArray<ZvString> names;
    ZevaUISetting::getPlotStyleNames(names, nullptr);
    QCOMPARE(listOf(names), (QStringList{s("Normal"), s("Thin")}));
}

// ---- coordinate systems and views

void TestFacadeTables::worldHasNoUnnamedRow()
{
    QCOMPARE(ucsRows().first(), s("世界"));
}

void TestFacadeTables::unnamedSystemHasItsRow()
{
    drawing().setUcs({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZevaUISetting::getUcses(items, nullptr);
    QCOMPARE(items[0].name, ZvString(L"未命名"));
    QCOMPARE(items[0].type, 0);
    QVERIFY(items[0].objectId.isNull());
}

void TestFacadeTables::orthographicSystemHasNoUnnamedRow()
{
    drawing().setUcs({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, ZvDbObjectId(), 3);
    QCOMPARE(ucsRows().first(), s("世界"));
}

void TestFacadeTables::namedSystemHasNoUnnamedRow()
{
    openDrawing(kDrawing);
    ZvDbObjectId slope;
    {
        const ZvDbObjectPointer<ZvDbSymbolTable> systems(drawing().UCSTableId(), ZvDb::kForRead);
        slope = systems->getIdAt(L"Slope");
    }
    QCOMPARE(drawing().setUcs({1, 2, 0}, {1, 0, 0}, {0, 0, 1}, slope, 0), Zv::eOk);
    QCOMPARE(ucsRows().first(), s("世界"));
}

void TestFacadeTables::nearlyTheWorldHasNoUnnamedRow()
{
    drawing().setUcs({1e-12, 0, 0}, {1, 1e-12, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    QCOMPARE(ucsRows().first(), s("世界"));
    drawing().setUcs({1e-3, 0, 0}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    QCOMPARE(ucsRows().first(), s("未命名"));
}

void TestFacadeTables::previousSystemIsAskedOfTheDocumentsDrawing()
{
    // Whatever drawing the rows are read of.
    const ZvDbDatabasePtr other = readDrawing(kDrawing);
    other->setUcs({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    ZvArray<S::ZvsiUcsInfoItem> items;
    S::getUcses(items, other);
    QCOMPARE(namesOf(items).mid(0, 3), (QStringList{s("未命名"), s("世界"), s("俯视")}));
    drawing().setUcs({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    S::getUcses(items, other);
    QCOMPARE(namesOf(items).mid(0, 3), (QStringList{s("未命名"), s("世界"), s("上一个")}));
}

void TestFacadeTables::viewportWithoutViewportDataThrows()
{
    const NoViewportData none;
    ZvArray<S::ZvsiUcsInfoItem> items;
    QVERIFY_EXCEPTION_THROWN(S::getUcses(items, nullptr), ZvError_NotThatKindOfClass);
    QCOMPARE(drawing().openObjectCount(), 0);
}

void TestFacadeTables::previousSystemHasItsRow()
{
    QVERIFY(!drawing().hasPreviousUcs());
    QCOMPARE(ucsRows().mid(0, 2), (QStringList{s("世界"), s("俯视")}));
    drawing().setUcs({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, ZvDbObjectId(), 3);
    QCOMPARE(ucsRows().mid(0, 3), (QStringList{s("世界"), s("上一个"), s("俯视")}));
    ZvArray<S::ZvsiUcsInfoItem> items;
    S::getUcses(items, nullptr);
    QCOMPARE(items[1].type, 9);
    QVERIFY(items[1].objectId.isNull());
}

void TestFacadeTables::fixedRowsComeInOrder()
{
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZevaUISetting::getUcses(items, nullptr);
    QCOMPARE(namesOf(items),
             (QStringList{s("世界"), s("俯视"), s("仰视"), s("左视"), s("右视"), s("前视"), s("后视")}));
    const int types[] = {7, 1, 2, 5, 6, 3, 4};
    for (int i = 0; i < 7; ++i) {
        QCOMPARE(items[i].type, types[i]);
        QVERIFY(items[i].objectId.isNull());
    }
}

void TestFacadeTables::namedSystemsFollow()
{
    openDrawing(kDrawing);
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZevaUISetting::getUcses(items, nullptr);
    QCOMPARE(items[items.length() - 1].name, ZvString(L"Slope"));
    QCOMPARE(items[items.length() - 1].type, 8);
    QVERIFY(!items[items.length() - 1].objectId.isNull());
    QVERIFY(!namesOf(items).contains(s("House|Roof")));
}

void TestFacadeTables::paperSystemCountsOnTheLayout()
{
    drawing().setUcs({1, 2, 3}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    drawing().setTilemode(false);
    QCOMPARE(ucsRows().first(), s("世界"));
    drawing().setUcs({4, 5, 6}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    QCOMPARE(ucsRows().first(), s("未命名"));
}

void TestFacadeTables::modelSystemCountsInsideAViewport()
{
    drawing().setTilemode(false);
    drawing().setUcs({4, 5, 6}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    QCOMPARE(ucsRows().mid(0, 3), (QStringList{s("未命名"), s("世界"), s("上一个")}));
    workInAViewport(drawing());
    QCOMPARE(ucsRows().mid(0, 2), (QStringList{s("世界"), s("俯视")}));
    // What is set there is the model's.
    drawing().setUcs({7, 8, 9}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0);
    QCOMPARE(ucsRows().mid(0, 3), (QStringList{s("未命名"), s("世界"), s("上一个")}));
    QCOMPARE(drawing().ucsorg().x, 7.0);
    QCOMPARE(drawing().pucsorg().x, 4.0);
}

void TestFacadeTables::orthographicPaperSystemHasNoUnnamedRow()
{
    drawing().setTilemode(false);
    drawing().setUcs({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, ZvDbObjectId(), 3);
    QCOMPARE(ucsRows().first(), s("世界"));
}

void TestFacadeTables::modelViewsInsideAViewport()
{
    openDrawing(kDrawing);
    drawing().setTilemode(false);
    workInAViewport(drawing());
    ZvArray<S::ZvsiViewInfoItem> views;
    S::getCustomViews(views, nullptr);
    QCOMPARE(namesOf(views), QStringList{s("GARDEN")});
}

void TestFacadeTables::viewsOfTheSpaceAtWork()
{
    openDrawing(kDrawing);
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> views;
    ZevaUISetting::getCustomViews(views, nullptr);
    QCOMPARE(namesOf(views), QStringList{s("GARDEN")});
    QVERIFY(!views[0].objectId.isNull());
    drawing().setTilemode(false);
    ZevaUISetting::getCustomViews(views, nullptr);
    QCOMPARE(namesOf(views), QStringList{s("SHEET")});
}

// ---- finders

void TestFacadeTables::findersIgnoreCase_data()
{
    finderRows();
}

void TestFacadeTables::findersIgnoreCase()
{
    QFETCH(int, finder);
    addFineRecords();
    addDimStyle(L"Later"); // the last one is the answer for an unknown name
    const ZvDbObjectId id = find(finder, L"Fine");
    QVERIFY(id.isValid());
    QCOMPARE(find(finder, L"fINE"), id);
}

void TestFacadeTables::findersOfUnknownAndEmptyNames_data()
{
    finderRows();
}

void TestFacadeTables::findersOfUnknownAndEmptyNames()
{
    QFETCH(int, finder);
    QVERIFY(find(finder, L"").isNull());
    if (finder != 1)
        QVERIFY(find(finder, L"no such name").isNull());
}

void TestFacadeTables::unknownDimensionStyleIsTheLast()
{
    const ZvDbObjectId last = addDimStyle(L"Last");
    QCOMPARE(find(1, L"no such name"), last);
    QCOMPARE(find(1, L"Standard") == last, false);
    addTextStyle(L"Last");
    QVERIFY(find(0, L"no such name").isNull());
    // The last that was read: one that cannot be opened was not.
    const ZvDbObjectId held = addDimStyle(L"Held");
    const ZvDbObjectPointer<ZvDbDimStyleTableRecord> holder(held, ZvDb::kForWrite);
    QCOMPARE(find(1, L"no such name"), last);
}

void TestFacadeTables::namesAreFoundById()
{
    addFineRecords();
    QCOMPARE(ZevaUISetting::findMleaderStyleTableRecordById(find(2, L"Fine"), nullptr), ZvString(L"Fine"));
    QCOMPARE(ZevaUISetting::findTableStyleTableRecordById(find(3, L"Fine"), nullptr), ZvString(L"Fine"));
    QVERIFY(ZevaUISetting::findMleaderStyleTableRecordById(find(3, L"Fine"), nullptr).isEmpty());
    QVERIFY(ZevaUISetting::findTableStyleTableRecordById(ZvDbObjectId(), nullptr).isEmpty());
    QVERIFY(ZevaUISetting::findTableStyleTableRecordById(ZvDbObjectId::fromInt64(77), nullptr).isEmpty());
}

void TestFacadeTables::nothingIsLeftOpen()
{
    openDrawing(kDrawing);
    for (const Reader &reader : kReaders) {
        reader.rows(nullptr);
        QCOMPARE(zvdbOpenObjectCount(), 0);
    }
    for (int finder = 0; finder < 7; ++finder) {
        find(finder, L"Standard");
        QCOMPARE(zvdbOpenObjectCount(), 0);
    }
}

ZEVA_TEST_MAIN(TestFacadeTables)
#include "tst_facade_tables.moc"
