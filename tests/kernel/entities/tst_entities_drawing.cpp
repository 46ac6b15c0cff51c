// SPDX-License-Identifier: MIT
// Entities in a drawing: shared properties, references, copies.
#include "db/zvdbdatabase.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"
#include "recording_draw.h"

#include <cmath>

namespace {
const double kPi = 3.14159265358979323846;

class DrawnEntities : public testing::Test
{
protected:
    ZvDbObjectId add(ZvDbEntity *entity, ZvDbObjectId block = {})
    {
        ZvDbObjectId id;
        EXPECT_EQ(database->appendEntity(entity, block.isNull() ? database->modelSpaceId() : block, id), Zv::eOk);
        return id;
    }
    ZvDbObjectId addLayer(const char *name)
    {
        ZvDbLayerTable *table = nullptr;
        EXPECT_EQ(database->getSymbolTable(table, ZvDb::kForWrite), Zv::eOk);
        auto *layer = new ZvDbLayerTableRecord;
        EXPECT_EQ(layer->setName(name), Zv::eOk);
        ZvDbObjectId id;
        EXPECT_EQ(table->add(layer, id), Zv::eOk);
        layer->close();
        table->close();
        return id;
    }
    ZvDbObjectId addBlock(const char *name, const ZvGePoint3d &origin = {})
    {
        ZvDbBlockTable *table = nullptr;
        EXPECT_EQ(database->getSymbolTable(table, ZvDb::kForWrite), Zv::eOk);
        auto *block = new ZvDbBlockTableRecord;
        EXPECT_EQ(block->setName(name), Zv::eOk);
        block->setOrigin(origin);
        ZvDbObjectId id;
        EXPECT_EQ(table->add(block, id), Zv::eOk);
        block->close();
        table->close();
        return id;
    }
    ZvDbObjectId addInsert(ZvDbObjectId block, const ZvGePoint3d &position, ZvDbObjectId into = {})
    {
        auto *insert = new ZvDbBlockReference;
        EXPECT_EQ(insert->setBlockTableRecord(block), Zv::eOk);
        EXPECT_EQ(insert->setPosition(position), Zv::eOk);
        return add(insert, into);
    }
    void TearDown() override { EXPECT_EQ(database->openObjectCount(), 0); }

    ZvDbDatabasePtr database = ZvDbDatabase::create();
};

}

TEST_F(DrawnEntities, layersBySharedName)
{
    const ZvDbObjectId walls = addLayer("Walls");
    const ZvDbObjectId id = add(new ZvDbLine({0, 0, 0}, {1, 0, 0}));
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->layer(), "0");
    EXPECT_EQ(line->setLayer("wALLS", true, false), Zv::eOk);
    EXPECT_EQ(line->layerId(), walls);
    EXPECT_EQ(line->layer(), "Walls"); // as the record spells it
    EXPECT_TRUE(line->layer().sharesWith(line->layer()));
}

TEST_F(DrawnEntities, anUnknownNameIsRefusedWithoutAMessage)
{
    const ZvDbObjectId id = add(new ZvDbLine);
    const AssertWatch watch;
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
    EXPECT_EQ(line->setLayer("no such layer"), Zv::eKeyNotFound);
    EXPECT_EQ(line->setLinetype("no such type"), Zv::eKeyNotFound);
    EXPECT_EQ(line->setMaterial("no such material"), Zv::eKeyNotFound);
    EXPECT_EQ(line->setPlotStyleName("no such style"), Zv::eKeyNotFound);
    EXPECT_EQ(line->setLayer(database->continuousLinetype()), Zv::eInvalidInput);
    EXPECT_EQ(line->setLinetype(database->layerZero()), Zv::eInvalidInput);
    EXPECT_FALSE(line->isModified());
    EXPECT_EQ(line->layer(), "0");
    EXPECT_TRUE(AssertWatch::texts().empty());
}

TEST_F(DrawnEntities, hiddenLayersAreForThoseWhoAsk)
{
    const ZvDbObjectId id = add(new ZvDbLine);
    const ZvDbObjectId hidden = addLayer("*helper");
    if (hidden.isNull())
        GTEST_SKIP() << "this table takes no such name";
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
    EXPECT_EQ(line->setLayer(hidden, true, false), Zv::eInvalidInput);
    EXPECT_EQ(line->setLayer(hidden, true, true), Zv::eOk);
}

TEST_F(DrawnEntities, lineTypesByNameAndById)
{
    const ZvDbObjectId id = add(new ZvDbLine);
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
    EXPECT_EQ(line->linetype(), "ByLayer");
    EXPECT_EQ(line->linetypeId(), database->byLayerLinetype());
    EXPECT_EQ(line->setLinetype("continuous"), Zv::eOk);
    EXPECT_EQ(line->linetype(), "Continuous");
    EXPECT_EQ(line->setLinetype(database->byBlockLinetype()), Zv::eOk);
    EXPECT_EQ(line->linetype(), "ByBlock");
    EXPECT_EQ(line->setLinetype(database->byLayerLinetype()), Zv::eOk);
    EXPECT_EQ(line->linetype(), "ByLayer");
}

TEST_F(DrawnEntities, equalPropertiesHaveEqualNumbers)
{
    const ZvDbObjectId first = add(new ZvDbLine);
    const ZvDbObjectId second = add(new ZvDbCircle);
    ZvDbObjectPointer<ZvDbEntity> a(first, ZvDb::kForWrite);
    ZvDbObjectPointer<ZvDbEntity> b(second, ZvDb::kForWrite);
    const std::uint32_t number = a->propertiesNumber();
    EXPECT_NE(number, 0u);
    EXPECT_EQ(number, b->propertiesNumber());
    ZvCmColor red;
    red.setColorIndex(1);
    a->setColor(red);
    EXPECT_NE(a->propertiesNumber(), b->propertiesNumber());
    b->setPropertiesFrom(a.get());
    EXPECT_EQ(a->propertiesNumber(), b->propertiesNumber());
    EXPECT_EQ(b->color(), red);
    // By layer is one value, however it was set.
    a->setColor(ZvCmColor());
    a->setLinetype("ByLayer");
    a->setMaterial("ByLayer");
    a->setPlotStyleName("ByLayer");
    EXPECT_EQ(a->propertiesNumber(), number);
}

TEST_F(DrawnEntities, aSetterNeedsAnEntityOpenForWrite)
{
    const ZvDbObjectId id = add(new ZvDbLine({0, 0, 0}, {1, 0, 0}));
    const AssertWatch watch;
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
    EXPECT_EQ(line->setLineWeight(ZvDb::kLnWt050), Zv::eNotOpenForWrite);
    EXPECT_EQ(line->setEndPoint({5, 5, 5}), Zv::eNotOpenForWrite);
    EXPECT_EQ(line->transformBy(ZvGeMatrix3d::translation({1, 0, 0})), Zv::eNotOpenForWrite);
    EXPECT_EQ(line->lineWeight(), ZvDb::kLnWtByLayer);
    expectPoint(line->endPoint(), 1, 0);
    EXPECT_FALSE(AssertWatch::texts().empty());
}

TEST_F(DrawnEntities, anEqualValueIsNoChange)
{
    const ZvDbObjectId id = add(new ZvDbLine);
    database->clearUndo();
    {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
        EXPECT_EQ(line->setColor(line->color()), Zv::eOk);
        EXPECT_EQ(line->setLayer(line->layer()), Zv::eOk);
        EXPECT_FALSE(line->isModified());
    }
    EXPECT_FALSE(database->canUndo());
}

TEST_F(DrawnEntities, undoPutsBackPropertiesAndGeometry)
{
    const ZvDbObjectId id = add(new ZvDbLine({0, 0, 0}, {1, 0, 0}));
    database->beginUndoStep("MOVE");
    {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
        line->setLineWeight(ZvDb::kLnWt050);
        line->transformBy(ZvGeMatrix3d::translation({3, 4, 0}));
    }
    database->endUndoStep();
    ASSERT_TRUE(database->undo());
    {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
        EXPECT_EQ(line->lineWeight(), ZvDb::kLnWtByLayer);
        expectPoint(line->startPoint(), 0, 0);
    }
    ASSERT_TRUE(database->redo());
    ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForRead);
    EXPECT_EQ(line->lineWeight(), ZvDb::kLnWt050);
    expectPoint(line->startPoint(), 3, 4);
}

TEST_F(DrawnEntities, newEntitiesTakeTheCurrentSettings)
{
    const ZvDbObjectId walls = addLayer("Walls");
    ZvCmColor green;
    green.setColorIndex(3);
    database->setClayer(walls);
    database->setCecolor(green);
    database->setCeltype(database->continuousLinetype());
    database->setCelweight(ZvDb::kLnWt070);
    database->setCeltscale(2.5);
    ZvDbLine line;
    line.setDatabaseDefaults(database);
    EXPECT_EQ(line.layerId(), walls);
    EXPECT_EQ(line.color(), green);
    EXPECT_EQ(line.linetype(), "Continuous");
    EXPECT_EQ(line.lineWeight(), ZvDb::kLnWt070);
    EXPECT_EQ(line.linetypeScale(), 2.5);
    EXPECT_EQ(line.plotStyleName(), "ByLayer");
}

TEST_F(DrawnEntities, aLineTypeByIdServesAnEntityOfNoDrawing)
{
    ZvDbLine line;
    EXPECT_EQ(line.setLinetype(database->continuousLinetype()), Zv::eOk);
    EXPECT_EQ(line.linetype(), "Continuous");
    database = ZvDbDatabasePtr();
    EXPECT_TRUE(line.linetype().isEmpty()); // its drawing is gone
    database = ZvDbDatabase::create();
}

TEST_F(DrawnEntities, aReferenceMapsItsBlock)
{
    const ZvDbObjectId block = addBlock("Door", {1, 1, 0});
    add(new ZvDbLine({1, 1, 0}, {3, 2, 0}), block);
    const ZvDbObjectId id = addInsert(block, {10, 20, 0});
    ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForWrite);
    expectPoint(ZvGePoint3d(1, 1, 0).transformBy(insert->blockTransform()), 10, 20);
    expectBox(*insert, 10, 20, 12, 21);
    const RecordingDraw draw(*insert);
    ASSERT_EQ(draw.blocks.size(), 1u);
    EXPECT_EQ(draw.blocks[0].id, block);
    expectPoint(ZvGePoint3d(3, 2, 0).transformBy(draw.blocks[0].matrix), 12, 21);
}

TEST_F(DrawnEntities, aReferenceFollowsTurnsScalesAndMirrors)
{
    const ZvDbObjectId block = addBlock("Door", {1, 1, 0});
    add(new ZvDbLine({1, 1, 0}, {3, 2, 0}), block);
    const ZvDbObjectId id = addInsert(block, {10, 20, 0});
    ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForWrite);
    const ZvGeMatrix3d maps[] = {
        ZvGeMatrix3d::rotation(0.7, ZvGeVector3d::kZAxis, {5, 5, 0}), ZvGeMatrix3d::mirroring({0, 0, 0}, {1, 0, 0}),
        ZvGeMatrix3d::scaling(3, {1, 2, 0}), ZvGeMatrix3d::rotation(1.0, ZvGeVector3d(1, 1, 0).normal()),
        ZvGeMatrix3d::mirroring({0, 0, 0}, ZvGeVector3d(1, 2, 3).normal())};
    for (const ZvGeMatrix3d &map : maps) {
        const ZvGeMatrix3d expected = map * insert->blockTransform();
        ASSERT_EQ(insert->transformBy(map), Zv::eOk);
        for (const ZvGePoint3d &p : {ZvGePoint3d(0, 0, 0), ZvGePoint3d(5, 0, 0), ZvGePoint3d(0, 5, 0), ZvGePoint3d(0, 0, 5)}) {
            const ZvGePoint3d at = ZvGePoint3d(p).transformBy(expected);
            expectPoint(ZvGePoint3d(p).transformBy(insert->blockTransform()), at.x, at.y, at.z);
        }
    }
    // Stretched across its axes it would be no three scales any more.
    const ZvGeMatrix3d before = insert->blockTransform();
    EXPECT_EQ(insert->transformBy(ZvGeMatrix3d::scaling(2, 1, 1)), Zv::eInvalidInput);
    EXPECT_TRUE(insert->blockTransform().isEqualTo(before));
}

TEST_F(DrawnEntities, theBoxOfAReferenceFollowsItsBlock)
{
    const ZvDbObjectId block = addBlock("Door");
    const ZvDbObjectId line = add(new ZvDbLine({0, 0, 0}, {3, 2, 0}), block);
    const ZvDbObjectId id = addInsert(block, {10, 20, 0});
    {
        ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForRead);
        expectBox(*insert, 10, 20, 13, 22);
    }
    {
        ZvDbObjectPointer<ZvDbLine> changed(line, ZvDb::kForWrite);
        changed->setEndPoint({7, 2, 0});
    }
    ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForRead);
    expectBox(*insert, 10, 20, 17, 22);
}

TEST_F(DrawnEntities, definitionsOfAttributesAreNoPartOfAReference)
{
    const ZvDbObjectId block = addBlock("Door");
    add(new ZvDbLine({0, 0, 0}, {3, 2, 0}), block);
    auto *definition = new ZvDbAttributeDefinition;
    definition->setTextString("standard");
    definition->transformBy(ZvGeMatrix3d::translation({100, 100, 0}));
    add(definition, block);
    const ZvDbObjectId id = addInsert(block, {10, 20, 0});
    ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForRead);
    expectBox(*insert, 10, 20, 13, 22);
}

TEST_F(DrawnEntities, aBlockThatHoldsItselfHasTheBoxOfTheRest)
{
    const ZvDbObjectId block = addBlock("Loop");
    add(new ZvDbLine({0, 0, 0}, {3, 2, 0}), block);
    addInsert(block, {1, 1, 0}, block);
    const ZvDbObjectId id = addInsert(block, {10, 0, 0});
    ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForRead);
    expectBox(*insert, 10, 0, 13, 2);
}

TEST_F(DrawnEntities, deepNestingEnds)
{
    ZvDbObjectId inner = addBlock("Level0");
    add(new ZvDbLine({0, 0, 0}, {1, 1, 0}), inner);
    // Twice the inner block each time: walked without memory this would be 2 to the 40th.
    for (int level = 1; level <= 40; ++level) {
        const ZvDbObjectId outer = addBlock(("Level" + std::to_string(level)).c_str());
        addInsert(inner, {0, 0, 0}, outer);
        addInsert(inner, {1, 0, 0}, outer);
        inner = outer;
    }
    const ZvDbObjectId id = addInsert(inner, {0, 0, 0});
    ZvDbObjectPointer<ZvDbBlockReference> insert(id, ZvDb::kForRead);
    ZvGeExtents3d box;
    insert->getGeomExtents(box); // what is deeper than 32 is left out; that it comes back at all is the point
    SUCCEED();
}

TEST_F(DrawnEntities, copiesGoIntoTheBlockWithTheirProperties)
{
    const ZvDbObjectId walls = addLayer("Walls");
    const ZvDbObjectId id = add(new ZvDbLine({0, 0, 0}, {1, 0, 0}));
    {
        ZvDbObjectPointer<ZvDbLine> line(id, ZvDb::kForWrite);
        line->setLayer(walls);
    }
    const int before = database->entityCount();
    ZvDbObjectId copy;
    ASSERT_EQ(zvdbCopyEntity(id, database->modelSpaceId(), ZvGeMatrix3d::translation({5, 6, 0}), copy), Zv::eOk);
    EXPECT_EQ(database->entityCount(), before + 1);
    ZvDbObjectPointer<ZvDbLine> line(copy, ZvDb::kForRead);
    ASSERT_TRUE(line);
    expectPoint(line->startPoint(), 5, 6);
    EXPECT_EQ(line->layerId(), walls);
    EXPECT_NE(copy, id);
}

TEST_F(DrawnEntities, aCopyThatCannotBeMappedIsNotMade)
{
    const ZvDbObjectId id = add(new ZvDbCircle({0, 0, 0}, ZvGeVector3d::kZAxis, 1));
    const int before = database->entityCount();
    ZvDbObjectId copy;
    EXPECT_EQ(zvdbCopyEntity(id, database->modelSpaceId(), ZvGeMatrix3d::scaling(2, 1, 1), copy), Zv::eInvalidInput);
    EXPECT_TRUE(copy.isNull());
    EXPECT_EQ(database->entityCount(), before);
    EXPECT_NE(zvdbCopyEntity(ZvDbObjectId(), database->modelSpaceId(), ZvGeMatrix3d(), copy), Zv::eOk);
}

TEST_F(DrawnEntities, stylesOfTextsAndDimensions)
{
    auto *text = new ZvDbText({0, 0, 0}, "abc", ZvDbObjectId(), 2.5, 0.0);
    const ZvDbObjectId textId = add(text);
    const ZvDbObjectId dimensionId = add(new ZvDbDimension);
    ZvDbObjectPointer<ZvDbText> opened(textId, ZvDb::kForWrite);
    EXPECT_EQ(opened->textStyle(), database->textstyle());
    EXPECT_EQ(opened->setTextStyle(database->textstyle()), Zv::eOk);
    EXPECT_EQ(opened->setTextStyle(database->dimstyle()), Zv::eInvalidInput);
    EXPECT_EQ(opened->setTextStyle(ZvDbObjectId()), Zv::eInvalidInput);
    EXPECT_EQ(opened->setTextStyle(ZvDbDatabase::create()->textstyle()), Zv::eInvalidInput); // of another drawing
    ZvDbObjectPointer<ZvDbDimension> dimension(dimensionId, ZvDb::kForWrite);
    EXPECT_EQ(dimension->dimensionStyle(), database->dimstyle());
    EXPECT_EQ(dimension->setDimensionStyle(database->textstyle()), Zv::eInvalidInput);
    EXPECT_EQ(dimension->setDimensionStyle(database->dimstyle()), Zv::eOk);
    EXPECT_EQ(dimension->setDimstyleData(database->dimstyle()), Zv::eOk);
    ZvDbMLeader leader;
    EXPECT_EQ(leader.setMLeaderStyle(database->dimstyle()), Zv::eInvalidInput);
    EXPECT_EQ(leader.setMLeaderStyle(database->mleaderstyle()), Zv::eOk);
    EXPECT_EQ(leader.MLeaderStyle(), database->mleaderstyle());
}

TEST_F(DrawnEntities, setDimstyleDataDropsTheOverridesAlone)
{
    const ZvDbObjectId id = add(new ZvDbDimension);
    ZvDbObjectPointer<ZvDbDimension> dimension(id, ZvDb::kForWrite);
    const auto text = [](int type, const wchar_t *value) {
        ZvResBuf *one = zvutNewRb(type);
        one->resval.rstring = zvutNewString(value);
        return one;
    };
    const auto number = [](int value) {
        ZvResBuf *one = zvutNewRb(1070);
        one->resval.rint = short(value);
        return one;
    };
    ZvResBuf *parts[] = {text(1001, L"ACAD"), text(1000, L"BEFORE"), text(1000, L"DSTYLE"), text(1002, L"{"), number(40),
                         number(2),          text(1002, L"}"),      text(1000, L"AFTER")};
    for (std::size_t i = 1; i < sizeof parts / sizeof *parts; ++i)
        parts[i - 1]->rbnext = parts[i];
    ASSERT_EQ(dimension->setXData(parts[0]), Zv::eOk);
    zvutRelRb(parts[0]);
    ASSERT_EQ(dimension->setDimstyleData(database->dimstyle()), Zv::eOk);
    ZvResBuf *left = dimension->xData("ACAD");
    std::vector<ZvString> texts;
    for (const ZvResBuf *one = left; one; one = one->rbnext)
        texts.push_back(one->text());
    zvutRelRb(left);
    ASSERT_EQ(texts.size(), 3u);
    EXPECT_EQ(texts[1], "BEFORE");
    EXPECT_EQ(texts[2], "AFTER");
}

TEST_F(DrawnEntities, layersFrozenInAViewport)
{
    const ZvDbObjectId walls = addLayer("Walls");
    const ZvDbObjectId id = add(new ZvDbViewport, database->paperSpaceId());
    ZvDbObjectPointer<ZvDbViewport> viewport(id, ZvDb::kForWrite);
    EXPECT_FALSE(viewport->isLayerFrozen(walls));
    EXPECT_EQ(viewport->freezeLayer(walls, true), Zv::eOk);
    EXPECT_EQ(viewport->freezeLayer(walls, true), Zv::eOk);
    EXPECT_EQ(viewport->frozenLayers().size(), 1u);
    EXPECT_TRUE(viewport->isLayerFrozen(walls));
    EXPECT_EQ(viewport->freezeLayer(walls, false), Zv::eOk);
    EXPECT_TRUE(viewport->frozenLayers().empty());
    EXPECT_EQ(viewport->freezeLayer(ZvDbObjectId(), true), Zv::eInvalidInput);
}
