// SPDX-License-Identifier: MIT
#include "file_support.h"

#include <gtest/gtest.h>

#include <algorithm>

class RealDrawing : public testing::TestWithParam<std::string>
{
};

TEST_P(RealDrawing, comesBackByteForByteWhenNothingChanged)
{
    const std::string original = readAll(drawingPath(GetParam()));
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(original, &report);
    ASSERT_TRUE(database.get()) << report.message.toStdString();
    EXPECT_FALSE(database->isModified());
    const std::string saved = saveDrawing(*database);
    EXPECT_TRUE(saved == original);
    EXPECT_EQ(zvdbOpenObjectCount(), 0);
}

TEST_P(RealDrawing, comesBackByteForByteWhenEveryObjectWasOpened)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    for (const ZvDbObjectId block : recordsOf(database->blockTableId())) {
        for (const ZvDbObjectId id : entitiesOf(block)) {
            ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
            ASSERT_TRUE(entity);
            ZvGeExtents3d extents;
            entity->getGeomExtents(extents);
        }
    }
    EXPECT_TRUE(saveDrawing(*database) == original);
}

/// Every object is encoded again, from what was decoded: nothing may differ.
TEST_P(RealDrawing, saysTheSameWhenEveryObjectIsWrittenAnew)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    database->beginUndoStep("touch");
    const auto touch = [](ZvDbObjectId id) {
        // There and back again: the object counts as changed.
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForWrite);
        ASSERT_TRUE(entity);
        const ZvDb::LineWeight weight = entity->lineWeight();
        entity->setLineWeight(ZvDb::kLnWt211, false);
        entity->setLineWeight(weight, false);
    };
    for (const ZvDbObjectId block : recordsOf(database->blockTableId())) {
        for (const ZvDbObjectId id : entitiesOf(block))
            touch(id);
    }
    for (const ZvDbObjectId table : {database->layerTableId(), database->linetypeTableId()}) {
        for (const ZvDbObjectId id : recordsOf(table)) {
            ZvDbObjectPointer<ZvDbObject> record(id, ZvDb::kForWrite);
            ASSERT_TRUE(record);
            record->erase();
            record->erase(false);
        }
    }
    database->endUndoStep();
    const std::string saved = saveDrawing(*database);
    const TagDifference found = difference(original, saved);
    EXPECT_TRUE(found.removed.empty() && found.added.empty()) << describe(found);
}

TEST_P(RealDrawing, oneLayerColourChangesOneTag)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const std::vector<ZvDbObjectId> layers = recordsOf(readDrawing(original)->layerTableId());
    for (std::size_t i = 0; i < layers.size(); ++i) {
        const ZvDbDatabasePtr database = readDrawing(original);
        const ZvDbObjectId id = recordsOf(database->layerTableId())[i];
        bool isByIndex = false;
        ASSERT_TRUE(change<ZvDbLayerTableRecord>(id, [&](ZvDbLayerTableRecord &layer) {
            ZvCmColor color = layer.color();
            isByIndex = color.isByACI();
            color.setColorIndex(color.colorIndex() == 42 ? 43 : 42);
            layer.setColor(color);
        }));
        const TagDifference found = difference(original, saveDrawing(*database));
        if (!isByIndex)
            continue;
        EXPECT_EQ(found.removed.size(), 1u) << describe(found);
        EXPECT_EQ(found.added.size(), 1u) << describe(found);
        if (i > 3)
            break;
    }
}

std::string testName(const testing::TestParamInfo<std::string> &info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(RealDrawing);
INSTANTIATE_TEST_SUITE_P(Drawings, RealDrawing, testing::ValuesIn(drawingNames()), testName);
