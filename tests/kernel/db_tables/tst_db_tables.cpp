// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include <cmath>
#include <memory>

using namespace db_testing;

namespace {

class Tables : public DatabaseTest
{
protected:
    std::vector<std::string> names(ZvDbObjectId tableId, bool skipErased = true)
    {
        ZvDbSymbolTable *table = nullptr;
        EXPECT_EQ(zvdbOpenObject(table, tableId, ZvDb::kForRead), Zv::eOk);
        ZvDbSymbolTableIterator *walk = nullptr;
        table->newIterator(walk, true, skipErased);
        table->close(); // the iterator outlives it
        const std::unique_ptr<ZvDbSymbolTableIterator> iterator(walk);
        std::vector<std::string> result;
        for (iterator->start(); !iterator->done(); iterator->step()) {
            ZvDbObjectPointer<ZvDbSymbolTableRecord> record(iterator->getRecordId(), ZvDb::kForRead, true);
            ZvString name;
            EXPECT_EQ(record->getName(name), Zv::eOk);
            result.push_back(name.toStdString());
        }
        return result;
    }

    Zv::ErrorStatus tryToAdd(const ZvString &name)
    {
        ZvDbObjectPointer<ZvDbLayerTable> table(db.layerTableId(), ZvDb::kForWrite);
        auto record = std::make_unique<ZvDbLayerTableRecord>();
        record->setName(name);
        ZvDbObjectId id;
        const Zv::ErrorStatus status = table->add(record.get(), id);
        EXPECT_EQ(status == Zv::eOk, !id.isNull());
        if (status == Zv::eOk)
            record.release()->close();
        return status;
    }
};

ZvDbObjectId find(ZvDbDatabase &db, const wchar_t *name, bool erasedToo = false)
{
    ZvDbObjectPointer<ZvDbLayerTable> table(db.layerTableId(), ZvDb::kForRead);
    return table->getIdAt(name, erasedToo);
}

} // namespace

TEST_F(Tables, namesAreFoundWhateverTheirCase)
{
    const ZvDbObjectId id = addLayer(db, L"Wände");
    EXPECT_EQ(find(db, L"WÄNDE"), id);
    EXPECT_EQ(find(db, L"wände"), id);
    EXPECT_TRUE(find(db, L"Wande").isNull());
    EXPECT_TRUE(find(db, L"").isNull());
    const ZvDbObjectId chinese = addLayer(db, L"墙体");
    EXPECT_EQ(find(db, L"墙体"), chinese);
}

TEST_F(Tables, twoRecordsOfOneNameAreRefused)
{
    EXPECT_EQ(tryToAdd(L"Walls"), Zv::eOk);
    EXPECT_EQ(tryToAdd(L"WALLS"), Zv::eDuplicateKey);
    EXPECT_EQ(names(db.layerTableId()), (std::vector<std::string>{"0", "Walls"}));
}

class BadNames : public Tables, public testing::WithParamInterface<const wchar_t *>
{
};

TEST_P(BadNames, areRefused)
{
    const ZvString name(GetParam());
    EXPECT_FALSE(ZvDbSymbolTableRecord::isValidName(name));
    ZvDbLayerTableRecord record;
    EXPECT_EQ(record.setName(name), name.isEmpty() ? Zv::eOk : Zv::eInvalidInput);
    EXPECT_EQ(tryToAdd(name), Zv::eInvalidInput);
}

INSTANTIATE_TEST_SUITE_P(Characters, BadNames,
                         testing::Values(L"", L"a<b", L"a>b", L"a/b", L"a\\b", L"a\"b", L"a:b", L"a;b", L"a?b", L"a*b",
                                         L"a=b", L"a`b", L"a|b", L"a\nb"));

TEST_F(Tables, namesMayBe255CharactersLong)
{
    const std::string longest(255, 'x');
    EXPECT_EQ(tryToAdd(longest.c_str()), Zv::eOk);
    EXPECT_FALSE(ZvDbSymbolTableRecord::isValidName((longest + "x").c_str()));
    EXPECT_EQ(tryToAdd(L"with blanks and $igns_-1"), Zv::eOk);
}

TEST_F(Tables, anErasedNameIsFreeAgain)
{
    const ZvDbObjectId first = addLayer(db, L"Walls");
    erase(first);
    EXPECT_TRUE(find(db, L"Walls").isNull());
    EXPECT_EQ(find(db, L"Walls", true), first);
    const ZvDbObjectId second = addLayer(db, L"walls");
    ASSERT_FALSE(second.isNull());
    EXPECT_NE(second, first);
    EXPECT_EQ(find(db, L"Walls"), second);
    EXPECT_EQ(find(db, L"Walls", true), second) << "one that is there comes first";
    EXPECT_EQ(names(db.layerTableId(), false), (std::vector<std::string>{"0", "Walls", "walls"}));
}

TEST_F(Tables, recordsErasedDuringTheWalkArePassedOver)
{
    const ZvDbObjectId a = addLayer(db, L"A");
    const ZvDbObjectId b = addLayer(db, L"B");
    const ZvDbObjectId c = addLayer(db, L"C");
    ZvDbObjectPointer<ZvDbLayerTable> table(db.layerTableId(), ZvDb::kForRead);
    ZvDbSymbolTableIterator *walk = nullptr;
    table->newIterator(walk);
    table.close();
    const std::unique_ptr<ZvDbSymbolTableIterator> iterator(walk);
    iterator->step();
    EXPECT_EQ(iterator->getRecordId(), a);
    erase(b);
    addLayer(db, L"D");
    iterator->step();
    EXPECT_EQ(iterator->getRecordId(), c);
    iterator->step();
    EXPECT_TRUE(iterator->done());
    EXPECT_TRUE(iterator->getRecordId().isNull());
    ZvDbObjectId id;
    EXPECT_EQ(iterator->getRecordId(id), Zv::eKeyNotFound);
    iterator->step();
    EXPECT_TRUE(iterator->done());
}

TEST_F(Tables, renamingKeepsTheIdAndWhatRefersToIt)
{
    const ZvDbObjectId layer = addLayer(db, L"Walls");
    const ZvDbObjectId line = addLine(db);
    edit<ZvDbLine>(line, [&](ZvDbLine &entity) { entity.setLayer(layer); });
    db.setClayer(layer);
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) {
        EXPECT_EQ(record.setName(L"0"), Zv::eDuplicateKey);
        EXPECT_EQ(record.setName(L"a|b"), Zv::eInvalidInput);
        EXPECT_EQ(record.setName(L"WALLS"), Zv::eOk) << "its own name in other letters";
        EXPECT_EQ(record.setName(L"Mauern"), Zv::eOk);
    });
    EXPECT_EQ(find(db, L"Mauern"), layer);
    EXPECT_TRUE(find(db, L"Walls").isNull());
    EXPECT_EQ(db.clayer(), layer);
    ZvDbObjectPointer<ZvDbLine> entity(line, ZvDb::kForRead);
    EXPECT_EQ(entity->layer(), L"Mauern");
    edit<ZvDbLayerTableRecord>(
        db.layerZero(), [](ZvDbLayerTableRecord &record) { EXPECT_EQ(record.setName(L"Zero"), Zv::eInvalidInput); });
}

TEST_F(Tables, aTableTakesItsOwnKindOfRecordsOnly)
{
    ZvDbObjectPointer<ZvDbLayerTable> layers(db.layerTableId(), ZvDb::kForWrite);
    ZvDbTextStyleTableRecord style;
    style.setName(L"Notes");
    ZvDbObjectId id;
    EXPECT_EQ(layers->add(&style, id), Zv::eNotThatKindOfClass);
    EXPECT_EQ(layers->add(nullptr, id), Zv::eInvalidInput);
    layers.close();
    ZvDbObjectPointer<ZvDbTextStyleTable> reader(db.textStyleTableId(), ZvDb::kForRead);
    EXPECT_EQ(reader->add(&style, id), Zv::eNotOpenForWrite);
}

TEST_F(Tables, typedTablesOpenByTheDatabase)
{
    ZvDbLayerTable *layers = nullptr;
    ASSERT_EQ(db.getSymbolTable(layers, ZvDb::kForRead), Zv::eOk);
    EXPECT_EQ(layers->count(), 1);
    layers->close();
    ZvDbBlockTable *blocks = nullptr;
    ASSERT_EQ(db.getSymbolTable(blocks, ZvDb::kForWrite), Zv::eOk);
    ZvDbBlockTable *again = nullptr;
    EXPECT_EQ(db.getSymbolTable(again, ZvDb::kForRead), Zv::eWasOpenForWrite);
    EXPECT_EQ(again, nullptr);
    blocks->close();
}

TEST_F(Tables, aNewLayerIsWhiteAndContinuous)
{
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(addLayer(db, L"Walls"), ZvDb::kForRead);
    EXPECT_EQ(layer->color(), index(7));
    EXPECT_EQ(layer->linetypeObjectId(), db.continuousLinetype());
    EXPECT_EQ(layer->lineWeight(), ZvDb::kLnWtByLwDefault);
    EXPECT_TRUE(layer->isPlottable());
    EXPECT_FALSE(layer->isOff() || layer->isFrozen() || layer->isLocked() || layer->isHidden() || layer->isDependent());
    ZvDbObjectPointer<ZvDbLayerTableRecord> helper(addLayer(db, L"*Helper"), ZvDb::kForRead);
    EXPECT_TRUE(helper->isHidden());
}

TEST_F(Tables, usageOfLayers)
{
    const ZvDbObjectId used = addLayer(db, L"Used");
    const ZvDbObjectId unused = addLayer(db, L"Unused");
    const ZvDbObjectId line = addLine(db);
    edit<ZvDbLine>(line, [&](ZvDbLine &entity) { entity.setLayer(used); });
    const auto isUsed = [&](ZvDbObjectId id) {
        edit<ZvDbLayerTable>(db.layerTableId(), [](ZvDbLayerTable &table) { table.generateUsageData(); });
        ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
        return layer->isInUse();
    };
    EXPECT_TRUE(isUsed(used));
    EXPECT_FALSE(isUsed(unused));
    erase(line);
    EXPECT_FALSE(isUsed(used));
}

TEST_F(Tables, aLinetypeHasTheLengthOfItsDashes)
{
    ZvDbLinetypeTableRecord record;
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
    dashes[0].length = 12.0;
    dashes[1].length = -6.0;
    record.setDashes(dashes);
    EXPECT_EQ(record.patternLength(), 18.0);
    EXPECT_EQ(record.numDashes(), 2);
    EXPECT_EQ(record.dashAt(1).length, -6.0);
}

TEST_F(Tables, fontsOfTextStyles)
{
    const ZvDbObjectId id = db.textstyle();
    edit<ZvDbTextStyleTableRecord>(id, [](ZvDbTextStyleTableRecord &style) {
        EXPECT_EQ(style.typeface(), ZvString());
        EXPECT_EQ(style.setFont(L"Noto Sans CJK SC", true, false), Zv::eOk);
    });
    ZvDbObjectPointer<ZvDbTextStyleTableRecord> style(id, ZvDb::kForRead);
    EXPECT_EQ(style->typeface(), L"Noto Sans CJK SC");
    EXPECT_TRUE(style->isBold());
    EXPECT_FALSE(style->isItalic());
}

TEST_F(Tables, dimensionStylesKnowTheVariablesByName)
{
    ZvDbDimStyleTableRecord style;
    EXPECT_EQ(style.real("DIMSCALE"), 1.0);
    EXPECT_EQ(style.setReal("dimscale", 2.0), Zv::eOk);
    EXPECT_EQ(style.real("DIMSCALE"), 2.0);
    EXPECT_EQ(style.integer("DIMDEC"), 4);
    EXPECT_EQ(style.setInteger("DIMDEC", 2), Zv::eOk);
    EXPECT_EQ(style.integer("DIMDEC"), 2);
    EXPECT_EQ(style.setTextValue("DIMPOST", L"<> mm"), Zv::eOk);
    EXPECT_EQ(style.textValue("DIMPOST"), L"<> mm");
    EXPECT_TRUE(std::isnan(style.real("NOSUCH")));
    EXPECT_TRUE(std::isnan(style.real("DIMDEC"))) << "is no real";
    EXPECT_EQ(style.setReal("NOSUCH", 1.0), Zv::eKeyNotFound);
    EXPECT_TRUE(style.idValue("DIMTXSTY").isNull());
}

// ---- blocks

namespace {

class Blocks : public Tables
{
protected:
    ZvDbObjectId addBlock(const ZvString &name)
    {
        ZvDbObjectPointer<ZvDbBlockTable> table(db.blockTableId(), ZvDb::kForWrite);
        ZvDbBlockTableRecord *block = new ZvDbBlockTableRecord;
        EXPECT_EQ(block->setName(name), Zv::eOk);
        ZvDbObjectId id;
        EXPECT_EQ(table->add(block, id), Zv::eOk);
        block->close();
        return id;
    }

    ZvDbObjectId insert(ZvDbObjectId block, ZvDbObjectId into)
    {
        ZvDbBlockReference *reference = new ZvDbBlockReference;
        reference->setBlockTableRecord(block);
        ZvDbObjectId id;
        EXPECT_EQ(db.appendEntity(reference, into, id), Zv::eOk);
        return id;
    }

    std::vector<ZvDbObjectId> references(ZvDbObjectId block, bool directOnly = true)
    {
        ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
        ZvArray<ZvDbObjectId> ids;
        EXPECT_EQ(record->getBlockReferenceIds(ids, directOnly, false), Zv::eOk);
        return std::vector<ZvDbObjectId>(ids.begin(), ids.end());
    }
};

using Ids = std::vector<ZvDbObjectId>;

} // namespace

TEST_F(Blocks, anonymousBlocksAreNumbered)
{
    const ZvDbObjectId first = addBlock(L"*U");
    const ZvDbObjectId second = addBlock(L"*U");
    ZvDbObjectPointer<ZvDbBlockTableRecord> a(first, ZvDb::kForRead);
    ZvDbObjectPointer<ZvDbBlockTableRecord> b(second, ZvDb::kForRead);
    EXPECT_EQ(a->name(), L"*U1");
    EXPECT_EQ(b->name(), L"*U2");
    EXPECT_TRUE(a->isAnonymous());
    EXPECT_FALSE(a->isLayout());
    ZvDbObjectPointer<ZvDbBlockTableRecord> model(db.modelSpaceId(), ZvDb::kForRead);
    EXPECT_FALSE(model->isAnonymous());
    EXPECT_TRUE(model->isLayout());
}

TEST_F(Blocks, referencesFollowWhatIsInsertedErasedAndUndone)
{
    const ZvDbObjectId block = addBlock(L"Door");
    EXPECT_TRUE(references(block).empty());
    const ZvDbObjectId a = insert(block, db.modelSpaceId());
    const ZvDbObjectId b = insert(block, db.modelSpaceId());
    EXPECT_EQ(references(block), (Ids{a, b}));
    erase(a);
    EXPECT_EQ(references(block), Ids{b});
    db.undo();
    EXPECT_EQ(references(block), (Ids{a, b}));
    const ZvDbObjectId other = addBlock(L"Window");
    edit<ZvDbBlockReference>(b, [&](ZvDbBlockReference &reference) { reference.setBlockTableRecord(other); });
    EXPECT_EQ(references(block), Ids{a});
    EXPECT_EQ(references(other), Ids{b});
}

TEST_F(Blocks, referencesInBlocksThatNobodyShowsAreNotDirect)
{
    const ZvDbObjectId inner = addBlock(L"Handle");
    const ZvDbObjectId outer = addBlock(L"Door");
    const ZvDbObjectId nested = insert(inner, outer);
    EXPECT_TRUE(references(inner).empty());
    EXPECT_EQ(references(inner, false), Ids{nested});
    insert(outer, db.modelSpaceId());
    EXPECT_EQ(references(inner), Ids{nested});
    // A block inside itself is a fault in files that must not hang.
    insert(outer, inner);
    EXPECT_EQ(references(inner), Ids{nested});
}

TEST_F(Blocks, entitiesAreWalkedInTheirOrder)
{
    Ids lines;
    for (int i = 0; i < 5; ++i)
        lines.push_back(addLine(db, i));
    erase(lines[0]);
    erase(lines[2]);
    ZvDbObjectPointer<ZvDbBlockTableRecord> block(db.modelSpaceId(), ZvDb::kForRead);
    ZvDbBlockTableRecordIterator *walk = nullptr;
    ASSERT_EQ(block->newIterator(walk), Zv::eOk);
    EXPECT_EQ(block->entityCount(), 3);
    block.close();
    const std::unique_ptr<ZvDbBlockTableRecordIterator> iterator(walk);
    Ids found;
    for (iterator->start(); !iterator->done(); iterator->step()) {
        ZvDbEntity *entity = nullptr;
        ASSERT_EQ(iterator->getEntity(entity, ZvDb::kForRead), Zv::eOk);
        found.push_back(entity->objectId());
        entity->close();
    }
    EXPECT_EQ(found, (Ids{lines[1], lines[3], lines[4]}));
}

TEST_F(Blocks, extentsOfABlock)
{
    EXPECT_TRUE(db.extents(db.modelSpaceId()).isEmpty());
    addLine(db, 3.0);
    addLine(db, 8.0);
    const ZvGeExtents3d box = db.extents(db.modelSpaceId());
    EXPECT_EQ(box.minimum.x, 3.0);
    EXPECT_EQ(box.maximum.x, 8.0);
    EXPECT_EQ(box.maximum.y, 10.0);
    EXPECT_TRUE(db.extents(ZvDbObjectId()).isEmpty());
}

// ---- growth

TEST_F(Tables, addingLayersCostsTheSameHoweverManyThereAre)
{
    // Counted in work, not in time: changes kept for undo, notices and openings are the same for every layer.
    Listener listener;
    db.addReactor(&listener);
    std::size_t events = 0;
    for (int i = 0; i < 10000; ++i) {
        const std::uint64_t openings = db.openingsCount();
        const ZvDbObjectId id = addLayer(db, ("Layer " + std::to_string(i)).c_str());
        ASSERT_FALSE(id.isNull());
        EXPECT_EQ(db.openingsCount() - openings, 2u);
        events += listener.take().size();
    }
    EXPECT_EQ(events, 20000u);
    db.removeReactor(&listener);
    EXPECT_EQ(find(db, L"LAYER 9999").isNull(), false);
    int undone = 0;
    while (db.undo())
        ++undone;
    EXPECT_EQ(undone, 10000);
    EXPECT_EQ(names(db.layerTableId()), std::vector<std::string>{"0"});
}
