// SPDX-License-Identifier: MIT
#include "drawingtest.h"

#include "base/zverror.h"
#include "core/zvsystem.h"
#include "db/zvdbhostservice.h"

#include <QStringList>

namespace {

// What programs cannot make: records of an external reference, hidden layers, names that stand twice.
const char kDrawing[] =
    "0\nSECTION\n2\nTABLES\n"
    "0\nTABLE\n2\nLAYER\n70\n9\n"
    "0\nLAYER\n2\n0\n70\n0\n62\n7\n6\nCONTINUOUS\n"
    "0\nLAYER\n2\nwalls\n70\n5\n62\n-3\n6\nCONTINUOUS\n"
    "0\nLAYER\n2\nDoors\n70\n0\n62\n5\n6\nCONTINUOUS\n"
    "0\nLAYER\n2\n*Helper\n70\n0\n62\n1\n6\nCONTINUOUS\n"
    "0\nLAYER\n2\nHouse|Walls\n70\n48\n62\n3\n6\nCONTINUOUS\n"
    "0\nENDTAB\n"
    "0\nTABLE\n2\nSTYLE\n70\n3\n"
    "0\nSTYLE\n2\nSTANDARD\n70\n0\n40\n0.0\n41\n1.0\n50\n0.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
    "0\nSTYLE\n2\nTall\n70\n4\n40\n3.5\n41\n0.8\n50\n15.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
    "0\nSTYLE\n2\nHouse|Tall\n70\n48\n40\n0.0\n41\n1.0\n50\n0.0\n71\n0\n42\n2.5\n3\ntxt\n4\n\n"
    "0\nENDTAB\n"
    "0\nTABLE\n2\nDIMSTYLE\n70\n3\n"
    "0\nDIMSTYLE\n2\nSTANDARD\n70\n0\n"
    "0\nDIMSTYLE\n2\nHouse|Fine\n70\n48\n"
    "0\nDIMSTYLE\n2\nZulu\n70\n0\n"
    "0\nENDTAB\n"
    "0\nTABLE\n2\nUCS\n70\n2\n"
    "0\nUCS\n2\nSlope\n70\n0\n10\n1.0\n20\n2.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n12\n0.0\n22\n0.0\n32\n1.0\n"
    "0\nUCS\n2\nHouse|Roof\n70\n48\n10\n1.0\n20\n2.0\n30\n0.0\n11\n1.0\n21\n0.0\n31\n0.0\n12\n0.0\n22\n0.0\n32\n1.0\n"
    "0\nENDTAB\n"
    "0\nTABLE\n2\nVIEW\n70\n3\n"
    "0\nVIEW\n2\nGARDEN\n70\n0\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n11\n0.0\n21\n0.0\n31\n1.0\n12\n0.0\n22\n0.0\n32\n0.0\n"
    "0\nVIEW\n2\nSHEET\n70\n1\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n11\n0.0\n21\n0.0\n31\n1.0\n12\n0.0\n22\n0.0\n32\n0.0\n"
    "0\nVIEW\n2\nHouse|View\n70\n48\n40\n10.0\n10\n0.0\n20\n0.0\n41\n10.0\n11\n0.0\n21\n0.0\n31\n1.0\n12\n0.0\n22\n0.0\n32\n0.0\n"
    "0\nENDTAB\n"
    "0\nENDSEC\n"
    "0\nSECTION\n2\nBLOCKS\n"
    "0\nBLOCK\n8\n0\n2\nWINDOW\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\nWINDOW\n0\nENDBLK\n8\n0\n"
    "0\nBLOCK\n8\n0\n2\nDoor\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\nDoor\n0\nENDBLK\n8\n0\n"
    "0\nBLOCK\n8\n0\n2\n*U1\n70\n1\n10\n0.0\n20\n0.0\n30\n0.0\n3\n*U1\n0\nENDBLK\n8\n0\n"
    "0\nBLOCK\n8\n0\n2\nHouse\n70\n4\n10\n0.0\n20\n0.0\n30\n0.0\n3\nHouse\n1\nhouse.dxf\n0\nENDBLK\n8\n0\n"
    "0\nENDSEC\n"
    "0\nSECTION\n2\nENTITIES\n"
    "0\nINSERT\n8\n0\n2\nDoor\n10\n0.0\n20\n0.0\n30\n0.0\n"
    "0\nENDSEC\n0\nEOF\n";

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

template<class Row>
QStringList namesOf(const ZvArray<Row> &rows)
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

} // namespace

class TestFacadeTables : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // which drawing
    void nullDatabaseIsTheCurrentOne();
    void noDatabaseGivesNothing();
    void arraysAreEmptiedFirst();

    // layers
    void layersAreSortedAndHiddenOnesLeftOut();
    void layerRowTellsItsState();
    void layerIsFoundByNameThoughHidden();
    void unopenableLayerGivesAnEmptyRow();

    // styles
    void textStylesKeepReferencesAndTableOrder();
    void textStylesAreSortedOnRequest();
    void textStyleRowTellsItsState();
    void annotationIsReadFromExtendedData_data();
    void annotationIsReadFromExtendedData();
    void dimensionStylesLeaveReferencesOut();
    void dictionaryStylesComeInDictionaryOrder();
    void cellStylesAreTranslatedAndInFallingOrder();
    void cellStylesOfNoStyleAreNone();
    void recordHeldForWriteIsLeftOut();

    // other names
    void blocksThatUsersInsertAreSorted();
    void usedBlocksOnly();
    void spacesAreNoBlocks_data();
    void spacesAreNoBlocks();
    void blockReadingLeavesNoUndoStep();
    void hatchPatternsInOrderOfFirstUse();
    void materialsRunInParallelWithIds();
    void plotStyleNamesOfTheDictionary();

    // coordinate systems and views
    void worldHasNoUnnamedRow();
    void unnamedSystemHasItsRow();
    void orthographicSystemHasNoUnnamedRow();
    void previousSystemHasItsRow();
    void fixedRowsComeInOrder();
    void namedSystemsFollow();
    void paperSystemCountsOnTheLayout();
    void viewsOfTheSpaceAtWork();

    // finders
    void findersIgnoreCase_data();
    void findersIgnoreCase();
    void findersOfUnknownAndEmptyNames_data();
    void findersOfUnknownAndEmptyNames();
    void unknownDimensionStyleIsTheLast();
    void namesAreFoundById();
    void nothingIsLeftOpen();

private:
    void openPrepared()
    {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbFileReport report;
        QCOMPARE(database->readStream(kDrawing, sizeof kDrawing - 1, report), Zv::eOk);
        zvDocManagerPtr()->addDocument(database, L"");
        bus().enableUpdateUI(true);
    }
    static QStringList ucsRows()
    {
        ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
        ZevaUISetting::getUcses(items, nullptr);
        return namesOf(items);
    }
    static ZvDbObjectId find(int finder, const ZvString &name)
    {
        typedef ZvDbObjectId (*Finder)(const ZvString &, ZvDbDatabase *);
        constexpr Finder finders[] = {
            ZevaUISetting::findTextStyleTableRecordByName,    ZevaUISetting::findDimStyleTableRecordByName,
            ZevaUISetting::findMleaderStyleTableRecordByName, ZevaUISetting::findTableStyleTableRecordByName,
            ZevaUISetting::findLineStyleTableRecordByName,    ZevaUISetting::findMaterialByName,
            ZevaUISetting::findLayerTableRecordByName};
        return finders[finder](name, nullptr);
    }
    static void finderRows()
    {
        QTest::addColumn<int>("finder");
        const char *names[] = {"text style", "dimension style", "multileader style", "table style",
                               "line type",  "material",        "layer"};
        for (int i = 0; i < 7; ++i)
            QTest::newRow(names[i]) << i;
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

// ---- which drawing

void TestFacadeTables::nullDatabaseIsTheCurrentOne()
{
    ZvDbDatabase *first = &drawing();
    addLayer(L"Only in the first");
    openAnother();
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    QCOMPARE(namesOf(layers), QStringList {s("0")});
    ZevaUISetting::getLayerInfos(layers, first);
    QCOMPARE(layers.length(), 2);
    QVERIFY(ZevaUISetting::findLayerTableRecordByName(L"Only in the first", nullptr).isNull());
    QVERIFY(!ZevaUISetting::findLayerTableRecordByName(L"Only in the first", first).isNull());
}

void TestFacadeTables::noDatabaseGivesNothing()
{
    zvDocManagerPtr()->closeDocument(document());
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> textStyles;
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> systems;
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> views;
    ZvArray<ZvString> names;
    ZvArray<ZvDbObjectId> ids;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    ZevaUISetting::getTextStyleTableRecords(textStyles, nullptr, true);
    ZevaUISetting::getDimStyleTableRecords(styles, nullptr);
    ZevaUISetting::getMleaderStyleTableRecords(styles, nullptr);
    ZevaUISetting::getTableStyleTableRecords(styles, nullptr);
    ZevaUISetting::getBlockNames(names, nullptr, false);
    ZevaUISetting::getHatchNames(names, nullptr);
    ZevaUISetting::getMaterials(names, ids, nullptr);
    ZevaUISetting::getPlotStyleNames(names, nullptr);
    ZevaUISetting::getUcses(systems, nullptr);
    ZevaUISetting::getCustomViews(views, nullptr);
    QVERIFY(layers.isEmpty() && textStyles.isEmpty() && styles.isEmpty() && names.isEmpty() && ids.isEmpty());
    QVERIFY(systems.isEmpty() && views.isEmpty());
    for (int finder = 0; finder < 7; ++finder)
        QVERIFY(find(finder, L"Standard").isNull());
    QVERIFY(ZevaUISetting::findMleaderStyleTableRecordById(ZvDbObjectId(), nullptr).isEmpty());
}

void TestFacadeTables::arraysAreEmptiedFirst()
{
    ZvArray<ZvString> names;
    ZvArray<ZvDbObjectId> ids;
    ZevaUISetting::getMaterials(names, ids, nullptr);
    const int count = names.length();
    ZevaUISetting::getMaterials(names, ids, nullptr);
    QCOMPARE(names.length(), count);
    QCOMPARE(ids.length(), count);
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> systems;
    ZevaUISetting::getUcses(systems, nullptr);
    ZevaUISetting::getUcses(systems, nullptr);
    QCOMPARE(systems.length(), 7);
}

// ---- layers

void TestFacadeTables::layersAreSortedAndHiddenOnesLeftOut()
{
    openPrepared();
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    // capitals come before small letters
    QCOMPARE(namesOf(layers), (QStringList {s("0"), s("Doors"), s("House|Walls"), s("walls")}));
}

void TestFacadeTables::layerRowTellsItsState()
{
    openPrepared();
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
    openPrepared();
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

// ---- styles

void TestFacadeTables::textStylesKeepReferencesAndTableOrder()
{
    openPrepared();
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> styles;
    ZevaUISetting::getTextStyleTableRecords(styles, nullptr, false);
    const QStringList names = namesOf(styles);
    QVERIFY(names.indexOf(s("STANDARD")) < names.indexOf(s("Tall")));
    QVERIFY(names.contains(s("House|Tall")));
}

void TestFacadeTables::textStylesAreSortedOnRequest()
{
    addTextStyle(L"b");
    addTextStyle(L"A");
    addTextStyle(L"C");
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> styles;
    ZevaUISetting::getTextStyleTableRecords(styles, nullptr, true);
    QCOMPARE(namesOf(styles), (QStringList {s("A"), s("Annotative"), s("C"), s("Standard"), s("b")}));
    QVERIFY(ZevaUISetting::compareTextStyleInfo(styles[0], styles[1]));
    QVERIFY(!ZevaUISetting::compareTextStyleInfo(styles[1], styles[0]));
    QVERIFY(!ZevaUISetting::compareTextStyleInfo(styles[0], styles[0]));
}

void TestFacadeTables::textStyleRowTellsItsState()
{
    openPrepared();
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
}

void TestFacadeTables::annotationIsReadFromExtendedData()
{
    QFETCH(bool, isWhole);
    QFETCH(int, number);
    QFETCH(int, orientation);
    const ZvDbObjectId style = addTextStyle(L"Fine");
    const auto write = [&](std::vector<std::pair<int, std::wstring>> chain) {
        std::vector<ZvResBuf> buffers(chain.size());
        for (std::size_t i = 0; i < chain.size(); ++i) {
            buffers[i].restype = chain[i].first;
            buffers[i].rbnext = i + 1 < chain.size() ? &buffers[i + 1] : nullptr;
            if (chain[i].first == 1070)
                buffers[i].resval.rint = short(std::stoi(chain[i].second));
            else
                buffers[i].resval.rstring = chain[i].second.data();
        }
        change<ZvDbTextStyleTableRecord>(style, [&](ZvDbTextStyleTableRecord &record) { record.setXData(buffers.data()); });
    };
    if (number >= 0) {
        std::vector<std::pair<int, std::wstring>> chain {{1001, L"AcadAnnotative"}, {1000, L"AnnotativeData"}, {1002, L"{"},
                                                         {1070, L"1"}, {1070, std::to_wstring(number)}, {1002, L"}"}};
        if (!isWhole)
            chain.erase(chain.begin() + 3); // one number only
        write(chain);
    }
    if (orientation >= 0)
        write({{1001, L"AcadAnnoPO"}, {1070, std::to_wstring(orientation)}});
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

void TestFacadeTables::dimensionStylesLeaveReferencesOut()
{
    openPrepared();
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZevaUISetting::getDimStyleTableRecords(styles, nullptr);
    QCOMPARE(namesOf(styles), (QStringList {s("STANDARD"), s("Zulu")}));
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

void TestFacadeTables::cellStylesAreTranslatedAndInFallingOrder()
{
    ZvArray<ZvString> names;
    names.append(L"left over");
    ZevaUISetting::getTableCellStyleNames(names, find(3, L"Standard"));
    // by their bytes: 表头, 标题, 数据
    QCOMPARE(listOf(names), (QStringList {s("表头"), s("标题"), s("数据")}));
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

void TestFacadeTables::recordHeldForWriteIsLeftOut()
{
    const ZvDbObjectId style = addDimStyle(L"Fine");
    const ZvDbObjectPointer<ZvDbDimStyleTableRecord> held(style, ZvDb::kForWrite);
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZevaUISetting::getDimStyleTableRecords(styles, nullptr);
    QVERIFY(!namesOf(styles).contains(s("Fine")));
    QVERIFY(!styles.isEmpty());
}

// ---- other names

void TestFacadeTables::blocksThatUsersInsertAreSorted()
{
    openPrepared();
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, nullptr, false);
    QCOMPARE(listOf(names), (QStringList {s("Door"), s("WINDOW")}));
}

void TestFacadeTables::usedBlocksOnly()
{
    openPrepared();
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, nullptr, true);
    QCOMPARE(listOf(names), QStringList {s("Door")});
}

void TestFacadeTables::spacesAreNoBlocks_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<bool>("isListed");
    QTest::newRow("paper space with a number") << QByteArray("*PAPER_SPACE7") << false;
    QTest::newRow("in small letters") << QByteArray("*paper_space8") << false;
    QTest::newRow("an ordinary name") << QByteArray("MODEL_SPACE") << true;
    QTest::newRow("eleven characters") << QByteArray("PAPER_SPACE") << true;
}

void TestFacadeTables::spacesAreNoBlocks()
{
    QFETCH(QByteArray, name);
    QFETCH(bool, isListed);
    const QByteArray text = QByteArrayLiteral("0\nSECTION\n2\nBLOCKS\n0\nBLOCK\n8\n0\n2\n") + name
        + "\n70\n0\n10\n0.0\n20\n0.0\n30\n0.0\n3\n" + name
        + "\n0\nENDBLK\n8\n0\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n";
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(database->readStream(text.constData(), std::size_t(text.size()), report), Zv::eOk);
    ZvArray<ZvString> names;
    ZevaUISetting::getBlockNames(names, database, false);
    QCOMPARE(listOf(names).contains(QString::fromUtf8(name)), isListed);
    for (const QString &listed : listOf(names))
        QVERIFY(!listed.startsWith(QLatin1String("*Model_Space"), Qt::CaseInsensitive));
}

void TestFacadeTables::blockReadingLeavesNoUndoStep()
{
    openPrepared();
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
    const char *patterns[] = {"ANSI31", "SOLID", "ANSI31", "EARTH"};
    QByteArray entities;
    for (const char *pattern : patterns)
        entities += QByteArrayLiteral("0\nHATCH\n100\nAcDbEntity\n8\n0\n100\nAcDbHatch\n10\n0.0\n20\n0.0\n30\n0.0\n210\n0.0\n"
                                      "220\n0.0\n230\n1.0\n2\n")
            + pattern + "\n70\n1\n71\n0\n91\n0\n75\n0\n76\n1\n98\n0\n";
    const QByteArray text = QByteArrayLiteral("0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n"
                                              "0\nSECTION\n2\nENTITIES\n")
        + entities + "0\nENDSEC\n0\nEOF\n";
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    QCOMPARE(database->readStream(text.constData(), std::size_t(text.size()), report), Zv::eOk);
    ZvArray<ZvString> names;
    ZevaUISetting::getHatchNames(names, database);
    QCOMPARE(listOf(names), (QStringList {s("ANSI31"), s("SOLID"), s("EARTH")}));
    database->setTilemode(false);
    ZevaUISetting::getHatchNames(names, database);
    QVERIFY(names.isEmpty()); // the paper has none
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
    QCOMPARE(listOf(names), (QStringList {s("Normal"), s("Thin")}));
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

void TestFacadeTables::previousSystemHasItsRow()
{
    QVERIFY(!drawing().hasPreviousUcs());
    QCOMPARE(ucsRows().mid(0, 2), (QStringList {s("世界"), s("俯视")}));
    drawing().setUcs({0, 0, 0}, {1, 0, 0}, {0, 0, 1}, ZvDbObjectId(), 3);
    QCOMPARE(ucsRows().mid(0, 3), (QStringList {s("世界"), s("上一个"), s("俯视")}));
}

void TestFacadeTables::fixedRowsComeInOrder()
{
    ZvArray<ZevaUISetting::ZvsiUcsInfoItem> items;
    ZevaUISetting::getUcses(items, nullptr);
    QCOMPARE(namesOf(items),
             (QStringList {s("世界"), s("俯视"), s("仰视"), s("左视"), s("右视"), s("前视"), s("后视")}));
    const int types[] = {7, 1, 2, 5, 6, 3, 4};
    for (int i = 0; i < 7; ++i) {
        QCOMPARE(items[i].type, types[i]);
        QVERIFY(items[i].objectId.isNull());
    }
}

void TestFacadeTables::namedSystemsFollow()
{
    openPrepared();
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

void TestFacadeTables::viewsOfTheSpaceAtWork()
{
    openPrepared();
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> views;
    ZevaUISetting::getCustomViews(views, nullptr);
    QCOMPARE(namesOf(views), QStringList {s("GARDEN")});
    QVERIFY(!views[0].objectId.isNull());
    drawing().setTilemode(false);
    ZevaUISetting::getCustomViews(views, nullptr);
    QCOMPARE(namesOf(views), QStringList {s("SHEET")});
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
    openPrepared();
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZvArray<ZevaUISetting::ZvsiTextStyleInfoItem> textStyles;
    ZvArray<ZevaUISetting::ZvsiStyleInfoItem> styles;
    ZvArray<ZevaUISetting::ZvsiViewInfoItem> views;
    ZvArray<ZvString> names;
    ZvArray<ZvDbObjectId> ids;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    ZevaUISetting::getTextStyleTableRecords(textStyles, nullptr, true);
    ZevaUISetting::getDimStyleTableRecords(styles, nullptr);
    ZevaUISetting::getMleaderStyleTableRecords(styles, nullptr);
    ZevaUISetting::getTableStyleTableRecords(styles, nullptr);
    ZevaUISetting::getBlockNames(names, nullptr, true);
    ZevaUISetting::getHatchNames(names, nullptr);
    ZevaUISetting::getMaterials(names, ids, nullptr);
    ZevaUISetting::getPlotStyleNames(names, nullptr);
    ZevaUISetting::getCustomViews(views, nullptr);
    ucsRows();
    for (int finder = 0; finder < 7; ++finder)
        find(finder, L"Standard");
    QCOMPARE(zvdbOpenObjectCount(), 0);
}

ZEVA_TEST_MAIN(TestFacadeTables)
#include "tst_facade_tables.moc"
