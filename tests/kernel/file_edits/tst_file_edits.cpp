// SPDX-License-Identifier: MIT
#include "file_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <map>
#include <memory>

namespace {

/// A drawing with one entity of every class, made by the database itself.
class Made
{
public:
    Made()
    {
        database = ZvDbDatabase::create();
        add(new ZvDbLine(ZvGePoint3d(1, 2, 0), ZvGePoint3d(1234567.891, 4, 5)));
        auto *ray = new ZvDbRay;
        ray->setBasePoint(ZvGePoint3d(1, 1, 0));
        add(ray);
        add(new ZvDbXline);
        add(new ZvDbPoint(ZvGePoint3d(7, 8, 9)));
        add(new ZvDbCircle(ZvGePoint3d(1, 2, 3), ZvGeVector3d(0, 0, 1), 2.5));
        add(new ZvDbArc(ZvGePoint3d(1, 2, 3), 4.0, 0.25, 2.5));
        add(new ZvDbEllipse);
        auto *polyline = new ZvDbPolyline;
        for (int i = 0; i < 5; ++i)
            polyline->addVertex(ZvGePoint2d(i, i * i), i == 2 ? 0.5 : 0.0, i == 3 ? 0.25 : 0.0, 0.0);
        add(polyline);
        auto *solid = new ZvDbSolid;
        solid->setPointAt(1, ZvGePoint3d(1, 0, 0));
        solid->setPointAt(2, ZvGePoint3d(0, 1, 0));
        solid->setPointAt(3, ZvGePoint3d(1, 1, 0));
        add(solid);
        add(new ZvDbFace);
        add(new ZvDbText(ZvGePoint3d(1, 2, 0), L"Wand \u5899 ^ \u00d8", ZvDbObjectId(), 3.5, 0.5));
        auto *mtext = new ZvDbMText;
        mtext->setContents(ZvString(L"first\\Psecond ") + ZvString(std::string(700, 'x').c_str()));
        add(mtext);
        auto *reference = new ZvDbBlockReference;
        reference->setBlockTableRecord(block());
        add(reference);
    }
    ZvDbObjectId add(ZvDbEntity *entity)
    {
        ZvDbObjectId id;
        EXPECT_EQ(database->appendEntity(entity, database->modelSpaceId(), id), Zv::eOk);
        return id;
    }
    ZvDbObjectId block()
    {
        ZvDbBlockTable *table = nullptr;
        database->getSymbolTable(table, ZvDb::kForWrite);
        auto *record = new ZvDbBlockTableRecord;
        record->setName(L"Door");
        ZvDbObjectId id;
        table->add(record, id);
        ZvDbObjectId lineId;
        auto *line = new ZvDbLine(ZvGePoint3d(0, 0, 0), ZvGePoint3d(9, 0, 0));
        record->appendEntity(line, lineId);
        line->close();
        record->close();
        table->close();
        return id;
    }
    ZvDbDatabasePtr database;
};

std::string madeDrawing()
{
    static const std::string bytes = saveDrawing(*Made().database);
    return bytes;
}

/// Position of the first entity of a class in model space; -1 for none.
int find(ZvDbDatabase &database, const ZvRxClass *cls)
{
    const std::vector<ZvDbObjectId> ids = entitiesOf(database.modelSpaceId());
    for (std::size_t i = 0; i < ids.size(); ++i) {
        if (ids[i].objectClass() == cls)
            return int(i);
    }
    return -1;
}

/// What an edit has to change: the codes of the tags that go and that come, sorted.
struct Edit
{
    const char *name;
    const ZvRxClass *cls;
    std::function<void(ZvDbEntity &)> change;
    std::vector<int> removed;
    std::vector<int> added;
};

template <class T>
Edit edit(const char *name, const std::function<void(T &)> &change, std::vector<int> removed, std::vector<int> added)
{
    return {name, T::desc(), [change](ZvDbEntity &entity) { change(static_cast<T &>(entity)); }, removed, added};
}

ZvCmColor index(int number)
{
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(number));
    return color;
}

std::vector<Edit> edits()
{
    const std::vector<int> xyz{10, 20, 30};
    return {
        edit<ZvDbLine>(
            "lineStart", [](ZvDbLine &e) { e.setStartPoint(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbLine>("lineOneCoordinate", [](ZvDbLine &e) { e.setStartPoint(ZvGePoint3d(5, 2, 0)); }, {10}, {10}),
        edit<ZvDbLine>("lineEnd", [](ZvDbLine &e) { e.setEndPoint(ZvGePoint3d(5, 6, 7)); }, {11, 21, 31}, {11, 21, 31}),
        edit<ZvDbLine>("colorIndex", [](ZvDbLine &e) { e.setColor(index(3)); }, {}, {62}),
        edit<ZvDbLine>("lineWeight", [](ZvDbLine &e) { e.setLineWeight(ZvDb::kLnWt050); }, {}, {370}),
        edit<ZvDbLine>("linetypeScale", [](ZvDbLine &e) { e.setLinetypeScale(2.5); }, {}, {48}),
        edit<ZvDbLine>("linetypeByBlock", [](ZvDbLine &e) { e.setLinetype(L"ByBlock"); }, {}, {6}),
        edit<ZvDbLine>("linetypeContinuous", [](ZvDbLine &e) { e.setLinetype(L"Continuous"); }, {}, {6}),
        edit<ZvDbLine>("visibility", [](ZvDbLine &e) { e.setVisibility(ZvDb::kInvisible); }, {}, {60}),
        edit<ZvDbLine>("trueColor",
                       [](ZvDbLine &e) {
                           ZvCmColor color;
                           color.setRGB(1, 2, 3);
                           e.setColor(color);
                       },
                       {}, {62, 420}),
        edit<ZvDbLine>("transparency",
                       [](ZvDbLine &e) {
                           ZvCmTransparency transparency;
                           transparency.setAlphaPercent(0.5);
                           e.setTransparency(transparency);
                       },
                       {}, {440}),
        edit<ZvDbLine>("material", [](ZvDbLine &e) { e.setMaterial(L"Global"); }, {}, {347}),
        edit<ZvDbLine>("nothing", [](ZvDbLine &e) { e.setStartPoint(e.startPoint()); }, {}, {}),
        edit<ZvDbRay>(
            "rayBase", [](ZvDbRay &e) { e.setBasePoint(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbRay>("rayDirection", [](ZvDbRay &e) { e.setUnitDir(ZvGeVector3d(0, 1, 0)); }, {11, 21}, {11, 21}),
        edit<ZvDbXline>(
            "xlineBase", [](ZvDbXline &e) { e.setBasePoint(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbPoint>(
            "point", [](ZvDbPoint &e) { e.setPosition(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbCircle>(
            "circleCentre", [](ZvDbCircle &e) { e.setCenter(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbCircle>("circleRadius", [](ZvDbCircle &e) { e.setRadius(9); }, {40}, {40}),
        edit<ZvDbArc>("arcStart", [](ZvDbArc &e) { e.setStartAngle(1.0); }, {50}, {50}),
        edit<ZvDbArc>("arcEnd", [](ZvDbArc &e) { e.setEndAngle(1.0); }, {51}, {51}),
        edit<ZvDbArc>("arcRadius", [](ZvDbArc &e) { e.setRadius(9); }, {40}, {40}),
        edit<ZvDbPolyline>("closed", [](ZvDbPolyline &e) { e.setClosed(true); }, {70}, {70}),
        edit<ZvDbPolyline>("vertexAdded", [](ZvDbPolyline &e) { e.addVertex(ZvGePoint2d(50, 60)); }, {90},
                           {10, 20, 90}),
        edit<ZvDbPolyline>("vertexAddedWithBulge", [](ZvDbPolyline &e) { e.addVertex(ZvGePoint2d(50, 60), 0.5); }, {90},
                           {10, 20, 42, 90}),
        edit<ZvDbPolyline>("vertexTakenOut",
                           [](ZvDbPolyline &e) {
                               std::vector<ZvDbPolyline::Vertex> vertices = e.vertices();
                               vertices.erase(vertices.begin() + 1);
                               e.setVertices(vertices);
                           },
                           {10, 20, 90}, {90}),
        edit<ZvDbPolyline>("vertexMoved",
                           [](ZvDbPolyline &e) {
                               std::vector<ZvDbPolyline::Vertex> vertices = e.vertices();
                               vertices[2].point.x = 77;
                               e.setVertices(vertices);
                           },
                           {10}, {10}),
        edit<ZvDbPolyline>("bulgeTakenAway",
                           [](ZvDbPolyline &e) {
                               std::vector<ZvDbPolyline::Vertex> vertices = e.vertices();
                               vertices[2].bulge = 0;
                               e.setVertices(vertices);
                           },
                           {42}, {42}),
        edit<ZvDbSolid>("corner", [](ZvDbSolid &e) { e.setPointAt(2, ZvGePoint3d(0, 5, 0)); }, {22}, {22}),
        edit<ZvDbText>("text", [](ZvDbText &e) { e.setTextString(L"T\u00fcr"); }, {1}, {1}),
        edit<ZvDbText>("textHeight", [](ZvDbText &e) { e.setHeight(12); }, {40}, {40}),
        edit<ZvDbMText>(
            "mtextLocation", [](ZvDbMText &e) { e.setLocation(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbMText>("mtextHeight", [](ZvDbMText &e) { e.setTextHeight(12); }, {40}, {40}),
        edit<ZvDbMText>("mtextContents", [](ZvDbMText &e) { e.setContents(L"short"); }, {1, 3, 3}, {1}),
        edit<ZvDbBlockReference>(
            "insertPosition", [](ZvDbBlockReference &e) { e.setPosition(ZvGePoint3d(5, 6, 7)); }, xyz, xyz),
        edit<ZvDbLine>("moved", [](ZvDbLine &e) { e.transformBy(ZvGeMatrix3d::translation(ZvGeVector3d(1, 0, 0))); },
                       {10, 11}, {10, 11}),
    };
}

class EntityEdit : public testing::TestWithParam<Edit>
{
};

std::vector<int> codes(const std::vector<FileTag> &tags)
{
    std::vector<int> result;
    for (const FileTag &tag : tags)
        result.push_back(tag.code);
    std::sort(result.begin(), result.end());
    return result;
}

} // namespace

TEST_P(EntityEdit, changesItsTagsAndNoOthers)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    ASSERT_TRUE(database.get());
    const int position = find(*database, GetParam().cls);
    ASSERT_GE(position, 0);
    ASSERT_TRUE(change<ZvDbEntity>(entitiesOf(database->modelSpaceId())[std::size_t(position)], GetParam().change));
    const std::string after = saveDrawing(*database);
    const TagDifference found = difference(before, after);
    EXPECT_EQ(codes(found.removed), GetParam().removed) << describe(found);
    EXPECT_EQ(codes(found.added), GetParam().added) << describe(found);

    // What was written is what is read, and says it again without a change.
    const ZvDbDatabasePtr again = readDrawing(after);
    ASSERT_TRUE(again.get());
    ASSERT_TRUE(change<ZvDbEntity>(entitiesOf(again->modelSpaceId())[std::size_t(position)], GetParam().change));
    if (std::string(GetParam().name) != "moved" && std::string(GetParam().name).substr(0, 6) != "vertex") {
        EXPECT_TRUE(saveDrawing(*again) == after) << describe(difference(after, saveDrawing(*again)));
    }
}

TEST_P(EntityEdit, undoneLeavesTheFileAsItWas)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    const int position = find(*database, GetParam().cls);
    ASSERT_TRUE(change<ZvDbEntity>(entitiesOf(database->modelSpaceId())[std::size_t(position)], GetParam().change));
    while (database->canUndo())
        database->undo();
    EXPECT_TRUE(saveDrawing(*database) == before);
}

INSTANTIATE_TEST_SUITE_P(Edits, EntityEdit, testing::ValuesIn(edits()),
                         [](const testing::TestParamInfo<Edit> &info) { return std::string(info.param.name); });

// ---- real drawings

class RealEdit : public testing::TestWithParam<std::string>
{
};

/// Every entity is recoloured: each record changes by its colour tags and nothing else.
TEST_P(RealEdit, recolouredEntitiesChangeTheirColourTagsOnly)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    std::size_t count = 0;
    for (const ZvDbObjectId id : entitiesOf(database->modelSpaceId())) {
        if (++count > 300)
            break;
        ASSERT_TRUE(change<ZvDbEntity>(id, [](ZvDbEntity &entity) {
            entity.setColor(index(entity.color().colorIndex() == 77 ? 78 : 77), false);
        }));
    }
    std::vector<FileTag> before = tagsOf(original);
    std::vector<FileTag> after = tagsOf(saveDrawing(*database));
    const auto countTrue = [](const std::vector<FileTag> &tags) {
        return std::count_if(tags.begin(), tags.end(), [](const FileTag &tag) { return tag.code == 420 || tag.code == 430; });
    };
    EXPECT_LE(countTrue(after), countTrue(before)) << "only colours by number were given";
    for (std::vector<FileTag> *tags : {&before, &after}) {
        tags->erase(std::remove_if(tags->begin(), tags->end(),
                                   [](const FileTag &tag) { return tag.code == 62 || tag.code == 420 || tag.code == 430; }),
                    tags->end());
    }
    EXPECT_TRUE(before == after) << describe(difference(before, after));
}

/// Moves each entity that can be moved; the file read again has it there.
TEST_P(RealEdit, movedEntitiesAreReadWhereTheyWere)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    const ZvGeMatrix3d move = ZvGeMatrix3d::translation(ZvGeVector3d(16, 8, 0));
    std::map<std::uint64_t, ZvGeExtents3d> places;
    for (const ZvDbObjectId id : entitiesOf(database->modelSpaceId())) {
        if (places.size() > 400)
            break;
        change<ZvDbEntity>(id, [&](ZvDbEntity &entity) {
            if (entity.transformBy(move) == Zv::eOk) {
                ZvGeExtents3d box;
                if (entity.getGeomExtents(box) == Zv::eOk)
                    places[id.handle()] = box;
            }
        });
    }
    const std::string saved = saveDrawing(*database);
    const ZvDbDatabasePtr again = readDrawing(saved);
    ASSERT_TRUE(again.get());
    std::size_t found = 0;
    const std::vector<ZvDbObjectId> before = entitiesOf(database->modelSpaceId());
    const std::vector<ZvDbObjectId> after = entitiesOf(again->modelSpaceId());
    ASSERT_EQ(before.size(), after.size());
    for (std::size_t i = 0; i < after.size(); ++i) {
        const auto place = places.find(before[i].handle());
        if (place == places.end())
            continue;
        ZvDbObjectPointer<ZvDbEntity> entity(after[i], ZvDb::kForRead);
        ZvGeExtents3d box;
        ASSERT_TRUE(entity);
        ASSERT_EQ(entity->getGeomExtents(box), Zv::eOk);
        const double size = 1.0 + std::fabs(box.maximum.x) + std::fabs(box.maximum.y) + std::fabs(box.minimum.x);
        EXPECT_NEAR(box.minimum.x, place->second.minimum.x, size * 1e-9)
            << entity->fileName() << std::hex << entity->handle();
        EXPECT_NEAR(box.maximum.y, place->second.maximum.y, size * 1e-9)
            << entity->fileName() << std::hex << entity->handle();
        ++found;
    }
    EXPECT_EQ(found, places.size());
}

std::string editName(const testing::TestParamInfo<std::string> &info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealEdit);
INSTANTIATE_TEST_SUITE_P(Drawings, RealEdit, testing::ValuesIn(drawingNames()), editName);

// ---- records and variables

TEST(RecordEdit, aLayerSwitchedOffTurnsTheSignOfItsColour)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    ASSERT_TRUE(
        change<ZvDbLayerTableRecord>(database->layerZero(), [](ZvDbLayerTableRecord &layer) { layer.setIsOff(true); }));
    const TagDifference found = difference(before, saveDrawing(*database));
    ASSERT_EQ(describe(found), "- 62 7\n+ 62 -7\n");
}

TEST(RecordEdit, aFrozenLockedLayerChangesItsFlags)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    ASSERT_TRUE(change<ZvDbLayerTableRecord>(database->layerZero(), [](ZvDbLayerTableRecord &layer) {
        layer.setIsFrozen(true);
        layer.setIsLocked(true);
        layer.setLineWeight(ZvDb::kLnWt030);
        layer.setIsPlottable(false);
    }));
    const TagDifference found = difference(before, saveDrawing(*database));
    EXPECT_EQ(describe(found), "- 70 0\n- 370 -3\n+ 70 5\n+ 290 0\n+ 370 30\n");
}

TEST(RecordEdit, aCurrentSettingChangesItsVariableOnly)
{
    const std::string before = madeDrawing();
    const ZvDbDatabasePtr database = readDrawing(before);
    database->setCecolor(index(3));
    database->setLtscale(2.0);
    const TagDifference found = difference(before, saveDrawing(*database));
    EXPECT_EQ(codes(found.removed), (std::vector<int>{40, 62})) << describe(found);
    EXPECT_EQ(codes(found.added), (std::vector<int>{40, 62})) << describe(found);
}

TEST(RecordEdit, aRenamedLayerIsRenamedWhereItIsReferredTo)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    ZvDbObjectId layer;
    {
        ZvDbLayerTable *table = nullptr;
        ASSERT_EQ(database->getSymbolTable(table, ZvDb::kForWrite), Zv::eOk);
        auto *record = new ZvDbLayerTableRecord;
        record->setName(L"Walls");
        ASSERT_EQ(table->add(record, layer), Zv::eOk);
        record->close();
        table->close();
    }
    const ZvDbObjectId line = entitiesOf(database->modelSpaceId())[0];
    ASSERT_TRUE(change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setLayer(L"Walls"); }));
    database->setClayer(layer);
    const std::string before = saveDrawing(*database);
    database = readDrawing(before);
    ASSERT_TRUE(change<ZvDbLayerTableRecord>(database->clayer(),
                                             [](ZvDbLayerTableRecord &record) { record.setName(L"Doors"); }));
    const std::string after = saveDrawing(*database);
    EXPECT_EQ(describe(difference(before, after)),
              "- 8 Walls\n- 2 Walls\n- 8 Walls\n+ 8 Doors\n+ 2 Doors\n+ 8 Doors\n");
    database = readDrawing(after);
    ZvDbObjectPointer<ZvDbEntity> entity(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    EXPECT_EQ(entity->layer().toStdString(), "Doors");
}

TEST(RecordEdit, theCurrentMultileaderStyleGoesToTheDictionaryOfVariables)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    ZvDbObjectId style;
    {
        ZvDbObjectPointer<ZvDbDictionary> styles(database->mleaderStyleDictionaryId(true), ZvDb::kForWrite);
        ASSERT_TRUE(styles);
        auto *object = new ZvDbMLeaderStyle;
        ASSERT_EQ(styles->setAt(L"Notes", object, style), Zv::eOk);
        object->close();
    }
    ASSERT_EQ(database->setMleaderstyle(style), Zv::eOk);
    const std::string saved = saveDrawing(*database);
    EXPECT_NE(saved.find("\nCMLEADERSTYLE\n"), std::string::npos);
    database = readDrawing(saved);
    ZvDbObjectPointer<ZvDbMLeaderStyle> current(database->mleaderstyle(), ZvDb::kForRead);
    ASSERT_TRUE(current);
    EXPECT_EQ(current->name().toStdString(), "Notes");
}

TEST(RecordEdit, extendedDataIsReplacedByApplication)
{
    ZvDbDatabasePtr database = readDrawing(madeDrawing());
    const ZvDbObjectId line = entitiesOf(database->modelSpaceId())[0];
    ASSERT_TRUE(change<ZvDbEntity>(line, [](ZvDbEntity &entity) {
        ZvResBuf *chain = zvutNewRb(1001);
        chain->resval.rstring = zvutNewString(L"ACAD");
        chain->rbnext = zvutNewRb(1000);
        chain->rbnext->resval.rstring = zvutNewString(L"note \u5899");
        chain->rbnext->rbnext = zvutNewRb(1040);
        chain->rbnext->rbnext->resval.rreal = 1234567.891;
        EXPECT_EQ(entity.setXData(chain), Zv::eOk);
        zvutRelRb(chain);
    }));
    database = readDrawing(saveDrawing(*database));
    ZvDbObjectPointer<ZvDbEntity> entity(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    ZvResBuf *chain = entity->xData(L"ACAD");
    ASSERT_TRUE(chain && chain->rbnext && chain->rbnext->rbnext);
    EXPECT_EQ(chain->rbnext->text().toStdString(), "note \u5899");
    EXPECT_EQ(chain->rbnext->rbnext->number(), 1234567.891);
    zvutRelRb(chain);
}
