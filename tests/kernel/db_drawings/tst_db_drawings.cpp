// SPDX-License-Identifier: MIT
// What is done to a real drawing and undone leaves no trace in it.
#include "file_support.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace {

class Edited : public testing::TestWithParam<std::string>
{
protected:
    std::string original = readAll(drawingPath(GetParam()));
    ZvDbDatabasePtr database = readDrawing(original);

    std::vector<ZvDbObjectId> allEntities()
    {
        std::vector<ZvDbObjectId> all;
        for (const ZvDbObjectId block : recordsOf(database->blockTableId())) {
            const std::vector<ZvDbObjectId> entities = entitiesOf(block);
            all.insert(all.end(), entities.begin(), entities.end());
        }
        return all;
    }

    void undoAndCompare()
    {
        while (database->undo()) { }
        EXPECT_TRUE(database->canRedo());
        EXPECT_TRUE(saveDrawing(*database) == original) << describe(difference(original, saveDrawing(*database)));
        EXPECT_EQ(zvdbOpenObjectCount(), 0);
    }
};

} // namespace

TEST_P(Edited, everythingErasedComesBack)
{
    ASSERT_TRUE(database.get());
    database->beginUndoStep(L"ERASE");
    ZvDbObjectId line;
    ASSERT_EQ(database->appendEntity(new ZvDbLine, database->modelSpaceId(), line), Zv::eOk);
    for (const ZvDbObjectId id : allEntities())
        EXPECT_TRUE(change<ZvDbEntity>(id, [](ZvDbEntity &entity) { EXPECT_EQ(entity.erase(), Zv::eOk); }));
    database->endUndoStep();
    EXPECT_TRUE(allEntities().empty());
    undoAndCompare();
}

TEST_P(Edited, entitiesMovedAndPaintedComeBack)
{
    ASSERT_TRUE(database.get());
    const ZvGeMatrix3d shift = ZvGeMatrix3d::translation(ZvGeVector3d(10.0, -3.0, 0.0));
    database->setLtscale(database->ltscale() * 2.0); // also where there is no entity
    database->beginUndoStep(L"MOVE");
    for (const ZvDbObjectId id : allEntities())
        change<ZvDbEntity>(id, [&](ZvDbEntity &entity) { entity.transformBy(shift); });
    database->endUndoStep();
    database->beginUndoStep(L"PAINT");
    for (const ZvDbObjectId id : allEntities()) {
        change<ZvDbEntity>(id, [&](ZvDbEntity &entity) {
            ZvCmColor color;
            color.setRGB(1, 2, 3);
            entity.setColor(color);
            entity.setLayer(database->layerZero());
            entity.setLineWeight(ZvDb::kLnWt211);
            entity.setLinetypeScale(entity.linetypeScale() * 2.0);
        });
    }
    database->endUndoStep();
    undoAndCompare();
}

TEST_P(Edited, tablesAndSettingsComeBack)
{
    ASSERT_TRUE(database.get());
    const ZvDbObjectId tables[] = {database->layerTableId(), database->textStyleTableId(), database->dimStyleTableId()};
    for (const ZvDbObjectId table : tables) {
        for (const ZvDbObjectId id : recordsOf(table)) {
            change<ZvDbSymbolTableRecord>(id, [](ZvDbSymbolTableRecord &record) {
                record.setName(record.name() + L" renamed");
                if (ZvDbLayerTableRecord *layer = zvrxCast<ZvDbLayerTableRecord>(&record)) {
                    layer->setIsLocked(!layer->isLocked());
                    layer->setDescription(L"described");
                    ZvCmTransparency half;
                    half.setAlpha(127);
                    layer->setTransparency(half);
                }
            });
        }
    }
    database->beginFrame();
    change<ZvDbLayerTable>(database->layerTableId(), [](ZvDbLayerTable &table) {
        ZvDbLayerTableRecord *layer = new ZvDbLayerTableRecord;
        layer->setName(L"a layer that no drawing has");
        ZvDbObjectId id;
        ASSERT_EQ(table.add(layer, id), Zv::eOk);
        layer->close();
    });
    database->endFrame();
    const std::vector<ZvDbObjectId> layers = recordsOf(database->layerTableId());
    EXPECT_EQ(database->setClayer(layers.back()), Zv::eOk);
    ZvCmColor red;
    red.setColorIndex(1);
    database->setCecolor(red);
    database->setLtscale(database->ltscale() * 3.0);
    database->setCelweight(ZvDb::kLnWt106);
    database->setUcs(ZvGePoint3d(1, 2, 3), ZvGeVector3d(0, 1, 0), ZvGeVector3d(-1, 0, 0), ZvDbObjectId(), 0);
    database->setTilemode(!database->tilemode());
    undoAndCompare();
}

static std::string testName(const testing::TestParamInfo<std::string> &info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(Edited);
INSTANTIATE_TEST_SUITE_P(Drawings, Edited, testing::ValuesIn(drawingNames()), testName);
