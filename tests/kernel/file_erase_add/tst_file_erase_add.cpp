// SPDX-License-Identifier: MIT
#include "file_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <set>

namespace {

/// Handles of all records of a file, the kind of each with it.
std::multiset<std::string> recordTypes(const std::string &bytes)
{
    std::multiset<std::string> types;
    zvdxf::Store store;
    if (store.load(zvdxf::Buffer(bytes))) {
        for (std::uint32_t record = 0; record < store.records().size(); ++record)
            types.insert(std::string(store.type(record)));
    }
    return types;
}

std::set<std::uint64_t> handles(const std::string &bytes)
{
    std::set<std::uint64_t> found;
    zvdxf::Store store;
    std::vector<zvdxf::Tag> tags;
    if (!store.load(zvdxf::Buffer(bytes)))
        return found;
    for (std::uint32_t record = 0; record < store.records().size(); ++record) {
        const zvdxf::RecordView view = store.view(record, tags);
        if (view.type() == "SECTION")
            continue; // the header has the next handle under the same code
        for (const zvdxf::Tag &tag : view) {
            if (tag.code == 5 || tag.code == 105)
                found.insert(view.handle(tag));
            if (tag.code == 100)
                break;
        }
    }
    return found;
}

class RealErase : public testing::TestWithParam<std::string>
{
};

std::string name(const testing::TestParamInfo<std::string> &info)
{
    std::string text = info.param;
    std::replace_if(
        text.begin(), text.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return text;
}

} // namespace

TEST_P(RealErase, everythingErasedAndUndoneIsBackExactly)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    database->beginUndoStep("erase");
    for (const ZvDbObjectId block : recordsOf(database->blockTableId())) {
        for (const ZvDbObjectId id : entitiesOf(block))
            change<ZvDbEntity>(id, [](ZvDbEntity &entity) { entity.erase(); });
    }
    database->endUndoStep();
    if (!database->canUndo())
        return; // a drawing without entities
    const std::string erased = saveDrawing(*database);
    const ZvDbDatabasePtr empty = readDrawing(erased);
    ASSERT_TRUE(empty.get());
    for (const ZvDbObjectId block : recordsOf(empty->blockTableId()))
        EXPECT_TRUE(entitiesOf(block).empty());
    if (GetParam() != "recover02-broken.dxf") {
        const std::multiset<std::string> types = recordTypes(erased);
        for (const char *type : {"VERTEX", "SEQEND", "ATTRIB", "LINE", "INSERT", "POLYLINE", "HATCH"})
            EXPECT_EQ(types.count(type), 0u) << type;
    }
    ASSERT_TRUE(database->undo());
    EXPECT_TRUE(saveDrawing(*database) == original);
    ASSERT_TRUE(database->redo());
    EXPECT_TRUE(saveDrawing(*database) == erased);
}

/// What is copied and undone leaves nothing; what is copied and saved is there, and nothing else has changed.
TEST_P(RealErase, copiesAreAddedBesideTheirOriginals)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    const std::vector<ZvDbObjectId> before = entitiesOf(database->modelSpaceId());
    database->beginUndoStep("copy");
    std::size_t copied = 0;
    for (const ZvDbObjectId id : before) {
        if (copied >= 40)
            break;
        ZvDbObjectId copy;
        const ZvGeMatrix3d move = ZvGeMatrix3d::translation(ZvGeVector3d(64, 0, 0));
        copied += zvdbCopyEntity(id, database->modelSpaceId(), move, copy) == Zv::eOk;
    }
    database->endUndoStep();
    if (copied == 0)
        return;
    ZvDbFileReport report;
    const std::string saved = saveDrawing(*database, &report);
    const ZvDbDatabasePtr again = readDrawing(saved);
    ASSERT_TRUE(again.get());
    // Some kinds of entities cannot be made in old versions.
    int left = 0;
    for (const ZvDbFileReport::Warning &warning : report.warnings)
        left += warning.count;
    EXPECT_EQ(entitiesOf(again->modelSpaceId()).size() + std::size_t(left), before.size() + copied);
    // All that was there is there, in its order; but for the next handle.
    const std::vector<FileTag> old = tagsOf(original);
    std::size_t kept = 0;
    for (const FileTag &tag : tagsOf(saved)) {
        const bool isSeed = kept > 0 && kept < old.size() && old[kept - 1].value == "$HANDSEED";
        if (kept < old.size() && (isSeed || tag == old[kept]))
            ++kept;
    }
    EXPECT_EQ(kept, old.size()) << (kept < old.size() ? old[kept] : FileTag());
    ASSERT_TRUE(database->undo());
    const std::string undone = saveDrawing(*database);
    EXPECT_TRUE(undone == original) << describe(difference(original, undone));
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealErase);
INSTANTIATE_TEST_SUITE_P(Drawings, RealErase, testing::ValuesIn(drawingNames()), name);

namespace {

std::string madeDrawing()
{
    static const std::string bytes = [] {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbObjectId id;
        database->appendEntity(new ZvDbLine(ZvGePoint3d(0, 0, 0), ZvGePoint3d(1, 1, 0)), database->modelSpaceId(), id);
        return saveDrawing(*database);
    }();
    return bytes;
}

} // namespace

TEST(Added, recordsOfEveryTableAreReadAgain)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    const ZvDbObjectId linetype = addRecord<ZvDbLinetypeTable, ZvDbLinetypeTableRecord>(
        *database, L"Hidden", [](ZvDbLinetypeTableRecord &record) {
            record.setComments(L"__ __");
            ZvDbLinetypeTableRecord::Dash dash;
            dash.length = 3.5;
            ZvDbLinetypeTableRecord::Dash gap;
            gap.length = -1.25;
            ZvDbLinetypeTableRecord::Dash text;
            text.length = -2;
            text.flags = 2;
            text.text = L"GAS";
            text.rotation = 0.5;
            text.scale = 2;
            text.offsetX = -0.5;
            record.setDashes({dash, gap, text});
        });
    addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(*database, L"W\u00e4nde \u5899", [&](ZvDbLayerTableRecord &record) {
        record.setLinetypeObjectId(linetype);
        record.setLineWeight(ZvDb::kLnWt050);
        record.setIsFrozen(true);
        ZvCmColor color;
        color.setRGB(10, 20, 30);
        record.setColor(color);
    });
    addRecord<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(*database, L"Notes", [](ZvDbTextStyleTableRecord &record) {
        record.setTextSize(3.5);
        record.setXScale(0.8);
        record.setObliquingAngle(0.25);
        record.setFontFileName(L"simplex.shx");
        record.setBigFontFileName(L"gbcbig.shx");
        record.setIsVertical(true);
    });
    addRecord<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>(*database, L"Large", [](ZvDbDimStyleTableRecord &record) {
        record.setReal("DIMSCALE", 2.0);
        record.setInteger("DIMDEC", 3);
        record.setTextValue("DIMPOST", L"<> mm");
    });
    addRecord<ZvDbUCSTable, ZvDbUCSTableRecord>(*database, L"Roof", [](ZvDbUCSTableRecord &record) {
        record.setOrigin(ZvGePoint3d(1234567.891, 2, 3));
        record.setXAxis(ZvGeVector3d(0, 1, 0));
    });
    addRecord<ZvDbViewTable, ZvDbViewTableRecord>(*database, L"North", [](ZvDbViewTableRecord &record) {
        record.setHeight(12);
        record.setViewTwist(0.5);
        record.setCenterPoint(ZvGePoint2d(3, 4));
    });
    const std::string saved = saveDrawing(*database);
    const ZvDbDatabasePtr again = readDrawing(saved);
    ASSERT_TRUE(again.get());

    ZvDbLinetypeTable *linetypes = nullptr;
    ASSERT_EQ(again->getSymbolTable(linetypes, ZvDb::kForRead), Zv::eOk);
    const ZvDbObjectId hidden = linetypes->getIdAt(L"Hidden");
    linetypes->close();
    ZvDbObjectPointer<ZvDbLinetypeTableRecord> pattern(hidden, ZvDb::kForRead);
    ASSERT_TRUE(pattern);
    ASSERT_EQ(pattern->numDashes(), 3);
    EXPECT_EQ(pattern->patternLength(), 6.75);
    EXPECT_EQ(pattern->dashAt(1).length, -1.25);
    EXPECT_EQ(pattern->dashAt(2).text.toStdString(), "GAS");
    EXPECT_EQ(pattern->dashAt(2).rotation, 0.5);

    ZvDbLayerTable *layers = nullptr;
    ASSERT_EQ(again->getSymbolTable(layers, ZvDb::kForRead), Zv::eOk);
    const ZvDbObjectId walls = layers->getIdAt(L"W\u00e4nde \u5899");
    layers->close();
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(walls, ZvDb::kForRead);
    ASSERT_TRUE(layer);
    EXPECT_TRUE(layer->isFrozen());
    EXPECT_EQ(layer->color().red(), 10);
    EXPECT_TRUE(layer->color().isByColor());
    EXPECT_EQ(layer->linetypeObjectId(), hidden);
    EXPECT_EQ(layer->lineWeight(), ZvDb::kLnWt050);

    ZvDbTextStyleTable *styles = nullptr;
    ASSERT_EQ(again->getSymbolTable(styles, ZvDb::kForRead), Zv::eOk);
    ZvDbObjectPointer<ZvDbTextStyleTableRecord> style(styles->getIdAt(L"Notes"), ZvDb::kForRead);
    styles->close();
    ASSERT_TRUE(style);
    EXPECT_EQ(style->textSize(), 3.5);
    EXPECT_EQ(style->obliquingAngle(), 0.25);
    EXPECT_TRUE(style->isVertical());
    EXPECT_EQ(style->bigFontFileName().toStdString(), "gbcbig.shx");

    ZvDbDimStyleTable *dimStyles = nullptr;
    ASSERT_EQ(again->getSymbolTable(dimStyles, ZvDb::kForRead), Zv::eOk);
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> dimStyle(dimStyles->getIdAt(L"Large"), ZvDb::kForRead);
    dimStyles->close();
    ASSERT_TRUE(dimStyle);
    EXPECT_EQ(dimStyle->real("DIMSCALE"), 2.0);
    EXPECT_EQ(dimStyle->integer("DIMDEC"), 3);
    EXPECT_EQ(dimStyle->textValue("DIMPOST").toStdString(), "<> mm");

    ZvDbUCSTable *systems = nullptr;
    ASSERT_EQ(again->getSymbolTable(systems, ZvDb::kForRead), Zv::eOk);
    ZvDbObjectPointer<ZvDbUCSTableRecord> system(systems->getIdAt(L"Roof"), ZvDb::kForRead);
    systems->close();
    ASSERT_TRUE(system);
    EXPECT_EQ(system->origin().x, 1234567.891);
    EXPECT_EQ(system->xAxis().y, 1.0);

    ZvDbViewTable *views = nullptr;
    ASSERT_EQ(again->getSymbolTable(views, ZvDb::kForRead), Zv::eOk);
    ZvDbObjectPointer<ZvDbViewTableRecord> view(views->getIdAt(L"North"), ZvDb::kForRead);
    views->close();
    ASSERT_TRUE(view);
    EXPECT_EQ(view->height(), 12);
    EXPECT_EQ(view->viewTwist(), 0.5);
    EXPECT_EQ(view->centerPoint().y, 4);
}

TEST(Added, aBlockMadeByAProgramIsMarkedAsSuch)
{
    const ZvDbDatabasePtr database = readDrawing(madeDrawing());
    addRecord<ZvDbBlockTable, ZvDbBlockTableRecord>(*database, L"*U");
    const std::string saved = saveDrawing(*database);
    const std::vector<FileTag> tags = tagsOf(saved);
    const std::vector<FileTag> wanted {{100, "AcDbBlockBegin"}, {2, "*U1"}, {70, "1"}};
    EXPECT_NE(std::search(tags.begin(), tags.end(), wanted.begin(), wanted.end()), tags.end());
    const ZvDbDatabasePtr again = readDrawing(saved);
    for (const ZvDbObjectId id : recordsOf(again->blockTableId())) {
        ZvDbObjectPointer<ZvDbBlockTableRecord> block(id, ZvDb::kForRead);
        EXPECT_TRUE(!block || block->isAnonymous() == (block->name() == "*U1"));
    }
}

TEST(Added, aTableCountsItsRecords)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(*database, L"A");
    addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(*database, L"B");
    const TagDifference found = difference(before, saveDrawing(*database));
    ASSERT_EQ(found.removed.size(), 2u) << describe(found); // the count, and the next handle
    EXPECT_EQ(found.removed[1], (FileTag{70, "1"}));
    EXPECT_EQ(std::count(found.added.begin(), found.added.end(), FileTag{70, "3"}), 1);
}

TEST(Erased, aLayerGoesWithItsRecordAndItsCount)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    const std::string before = saveDrawing(*database);
    addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(*database, L"A");
    const std::string with = saveDrawing(*database);
    database = readDrawing(with);
    ZvDbLayerTable *layers = nullptr;
    ASSERT_EQ(database->getSymbolTable(layers, ZvDb::kForRead), Zv::eOk);
    const ZvDbObjectId id = layers->getIdAt(L"A");
    layers->close();
    ASSERT_TRUE(change<ZvDbLayerTableRecord>(id, [](ZvDbLayerTableRecord &layer) { layer.erase(); }));
    const TagDifference found = difference(before, saveDrawing(*database));
    // What is left of it is the next handle, which is never taken back.
    ASSERT_EQ(found.removed.size(), 1u) << describe(found);
    EXPECT_EQ(found.removed[0].code, 5);
}

TEST(Erased, aDictionaryLosesTheEntry)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    ZvDbObjectId style;
    {
        ZvDbObjectPointer<ZvDbDictionary> styles(database->mleaderStyleDictionaryId(true), ZvDb::kForWrite);
        auto *object = new ZvDbMLeaderStyle;
        ASSERT_EQ(styles->setAt(L"Notes", object, style), Zv::eOk);
        object->close();
    }
    const std::string with = saveDrawing(*database);
    database = readDrawing(with);
    {
        ZvDbObjectPointer<ZvDbDictionary> styles(database->mleaderStyleDictionaryId(), ZvDb::kForRead);
        style = styles->getIdAt(L"Notes");
    }
    ASSERT_TRUE(change<ZvDbMLeaderStyle>(style, [](ZvDbMLeaderStyle &object) { object.erase(); }));
    const std::string without = saveDrawing(*database);
    EXPECT_EQ(without.find("\nNotes\n"), std::string::npos);
    const TagDifference found = difference(with, without);
    EXPECT_TRUE(found.added.empty()) << describe(found);
    database->undo();
    EXPECT_TRUE(saveDrawing(*database) == with);
}

TEST(Erased, aBlockGoesWithEverythingInIt)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    const std::string before = saveDrawing(*database);
    addRecord<ZvDbBlockTable, ZvDbBlockTableRecord>(*database, L"Door", [](ZvDbBlockTableRecord &block) {
        for (int i = 0; i < 3; ++i) {
            ZvDbObjectId id;
            auto *line = new ZvDbLine(ZvGePoint3d(i, 0, 0), ZvGePoint3d(1, 1, 0));
            ASSERT_EQ(block.appendEntity(line, id), Zv::eOk);
            line->close();
        }
    });
    const std::string with = saveDrawing(*database);
    EXPECT_EQ(recordTypes(with).count("LINE"), 4u);
    database = readDrawing(with);
    for (const ZvDbObjectId id : recordsOf(database->blockTableId())) {
        change<ZvDbBlockTableRecord>(id, [](ZvDbBlockTableRecord &block) {
            if (block.name() == "Door") {
                EXPECT_EQ(block.erase(), Zv::eOk);
            }
        });
    }
    const TagDifference found = difference(before, saveDrawing(*database));
    ASSERT_EQ(found.removed.size(), 1u) << describe(found);
    EXPECT_EQ(found.removed[0].code, 5);
}

TEST(Added, handlesAreNewAndBelowTheNextOne)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    for (int i = 0; i < 20; ++i) {
        ZvDbObjectId id;
        database->appendEntity(new ZvDbPoint(ZvGePoint3d(i, 0, 0)), database->modelSpaceId(), id);
    }
    const std::string saved = saveDrawing(*database);
    const std::set<std::uint64_t> old = handles(before);
    const std::set<std::uint64_t> all = handles(saved);
    EXPECT_EQ(all.size(), old.size() + 20);
    zvdxf::Store store;
    ASSERT_TRUE(store.load(zvdxf::Buffer(saved)));
    const zvdxf::HeaderVariable *seed = store.headerVariable("$HANDSEED");
    ASSERT_TRUE(seed);
    const zvdxf::RecordView view = store.headerValues(*seed);
    EXPECT_GT(view.handle(view[0]), *all.rbegin());
}

TEST(Added, sectionsAndTablesThatAreMissingAreMade)
{
    // Nothing but entities, as small programs write them.
    const std::string before = text({{0, "SECTION"},
                                     {2, "ENTITIES"},
                                     {0, "LINE"},
                                     {8, "A"},
                                     {10, "0"},
                                     {20, "0"},
                                     {11, "1"},
                                     {21, "1"},
                                     {0, "ENDSEC"},
                                     {0, "EOF"}});
    ZvDbFileReport report;
    ZvDbDatabasePtr database = readDrawing(before, &report);
    ASSERT_TRUE(database.get());
    EXPECT_FALSE(report.warnings.isEmpty());
    EXPECT_TRUE(saveDrawing(*database) == before);
    addRecord<ZvDbLayerTable, ZvDbLayerTableRecord>(*database, L"B");
    const ZvDbObjectId line = entitiesOf(database->modelSpaceId())[0];
    ASSERT_TRUE(change<ZvDbEntity>(line, [](ZvDbEntity &entity) { EXPECT_EQ(entity.setLayer(L"B"), Zv::eOk); }));
    const std::string after = saveDrawing(*database);
    EXPECT_EQ(recordTypes(after).count("SECTION"), 2u);
    EXPECT_LT(after.find("\nTABLES\n"), after.find("\nENTITIES\n"));
    EXPECT_EQ(after.find("\n5\n"), std::string::npos); // no handles where there were none
    database = readDrawing(after);
    ZvDbObjectPointer<ZvDbEntity> entity(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    EXPECT_EQ(entity->layer().toStdString(), "B");
}

TEST(Added, oldVersionsGetThePolylinesTheyKnow)
{
    const std::string before = text({{0, "SECTION"},
                                     {2, "HEADER"},
                                     {9, "$ACADVER"},
                                     {1, "AC1009"},
                                     {0, "ENDSEC"},
                                     {0, "SECTION"},
                                     {2, "ENTITIES"},
                                     {0, "ENDSEC"},
                                     {0, "EOF"}});
    ZvDbDatabasePtr database = readDrawing(before);
    ASSERT_TRUE(database.get());
    auto *polyline = new ZvDbPolyline;
    polyline->addVertex(ZvGePoint2d(0, 0), 1.0);
    polyline->addVertex(ZvGePoint2d(5, 0));
    polyline->setClosed(true);
    ZvDbObjectId id;
    ASSERT_EQ(database->appendEntity(polyline, database->modelSpaceId(), id), Zv::eOk);
    const std::string after = saveDrawing(*database);
    const std::multiset<std::string> types = recordTypes(after);
    EXPECT_EQ(types.count("POLYLINE"), 1u);
    EXPECT_EQ(types.count("VERTEX"), 2u);
    EXPECT_EQ(types.count("SEQEND"), 1u);
    EXPECT_EQ(after.find("\n100\n"), std::string::npos);
    database = readDrawing(after);
    ZvDbObjectPointer<ZvDb2dPolyline> read(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    ASSERT_TRUE(read);
    ASSERT_EQ(read->vertices().size(), 2u);
    EXPECT_EQ(read->vertices()[0].bulge, 1.0);
    EXPECT_EQ(read->polylineFlags(), 1);
}
