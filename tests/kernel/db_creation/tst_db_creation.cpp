// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include <memory>
#include <set>

using namespace db_testing;

namespace {

std::vector<std::string> recordNames(ZvDbObjectId tableId)
{
    ZvDbObjectPointer<ZvDbSymbolTable> table(tableId, ZvDb::kForRead);
    ZvDbSymbolTableIterator *walk = nullptr;
    table->newIterator(walk);
    const std::unique_ptr<ZvDbSymbolTableIterator> iterator(walk);
    std::vector<std::string> names;
    for (; !iterator->done(); iterator->step()) {
        ZvDbObjectPointer<ZvDbSymbolTableRecord> record(iterator->getRecordId(), ZvDb::kForRead);
        names.push_back(record->name().toStdString());
        EXPECT_NE(record->handle(), 0u);
        EXPECT_EQ(record->ownerId(), tableId);
    }
    return names;
}

std::vector<std::string> entryNames(ZvDbObjectId id)
{
    ZvDbObjectPointer<ZvDbDictionary> dictionary(id, ZvDb::kForRead);
    if (!dictionary)
        return {};
    const std::unique_ptr<ZvDbDictionaryIterator> iterator(dictionary->newIterator());
    std::vector<std::string> names;
    for (; !iterator->done(); iterator->next())
        names.push_back(iterator->name().toStdString());
    return names;
}

using Names = std::vector<std::string>;

class Creation : public DatabaseTest
{
};

} // namespace

TEST_F(Creation, theTablesHoldWhatEveryDrawingHas)
{
    EXPECT_EQ(recordNames(db.layerTableId()), Names{"0"});
    EXPECT_EQ(recordNames(db.linetypeTableId()), (Names{"ByBlock", "ByLayer", "Continuous"}));
    EXPECT_EQ(recordNames(db.textStyleTableId()), (Names{"Standard", "Annotative"}));
    EXPECT_EQ(recordNames(db.dimStyleTableId()), (Names{"Standard", "ISO-25"}));
    EXPECT_EQ(recordNames(db.blockTableId()), (Names{"*Model_Space", "*Paper_Space"}));
    EXPECT_EQ(recordNames(db.viewportTableId()), Names{"*Active"});
    EXPECT_EQ(recordNames(db.regAppTableId()), (Names{"ACAD", "AcadAnnotative"}));
    EXPECT_TRUE(recordNames(db.UCSTableId()).empty());
    EXPECT_TRUE(recordNames(db.viewTableId()).empty());
}

TEST_F(Creation, theDictionariesHoldWhatEveryDrawingHas)
{
    EXPECT_EQ(entryNames(db.materialDictionaryId()), (Names{"ByBlock", "ByLayer", "Global"}));
    EXPECT_EQ(entryNames(db.plotStyleDictionaryId()), Names{"Normal"});
    EXPECT_EQ(entryNames(db.mleaderStyleDictionaryId()), Names{"Standard"});
    EXPECT_EQ(entryNames(db.tableStyleDictionaryId()), Names{"Standard"});
    EXPECT_EQ(entryNames(db.layoutDictionaryId()), (Names{"Model", "Layout1"}));
    EXPECT_TRUE(entryNames(db.groupDictionaryId()).empty());
    EXPECT_FALSE(db.groupDictionaryId().isNull());
    ZvDbObjectPointer<ZvDbDictionary> plotStyles(db.plotStyleDictionaryId(), ZvDb::kForRead);
    EXPECT_EQ(plotStyles->defaultId(), plotStyles->getIdAt(L"Normal"));
}

TEST_F(Creation, settingsNameWhatIsThere)
{
    EXPECT_TRUE(db.cecolor().isByLayer());
    EXPECT_EQ(db.clayer(), db.layerZero());
    EXPECT_EQ(db.celtype(), db.byLayerLinetype());
    EXPECT_EQ(db.celweight(), ZvDb::kLnWtByLayer);
    EXPECT_EQ(db.celtscale(), 1.0);
    EXPECT_TRUE(db.textstyle().isValid());
    EXPECT_TRUE(db.dimstyle().isValid());
    EXPECT_TRUE(db.mleaderstyle().isValid());
    EXPECT_TRUE(db.tablestyle().isValid());
    EXPECT_TRUE(db.cmaterial().isValid());
    EXPECT_EQ(db.cplotstyle(), L"ByLayer");
    EXPECT_TRUE(db.plotStyleMode());
    EXPECT_TRUE(db.tilemode());
    EXPECT_EQ(db.fileVersion(), ZvDb::kR2018);
    EXPECT_FALSE(db.isFileBinary());
}

TEST_F(Creation, nothingIsToBeUndoneOrSaved)
{
    EXPECT_FALSE(db.canUndo());
    EXPECT_FALSE(db.canRedo());
    EXPECT_FALSE(db.isModified());
    EXPECT_EQ(db.entityCount(), 0);
}

TEST_F(Creation, metricAndImperial)
{
    const ZvDbDatabasePtr imperial = ZvDbDatabase::create(false);
    const auto number = [](ZvDbDatabase &database, const wchar_t *name) {
        ZvResBuf value;
        EXPECT_EQ(database.getVariable(name, value), Zv::eOk);
        return value.number();
    };
    EXPECT_EQ(number(db, L"INSUNITS"), 4);
    EXPECT_EQ(number(*imperial, L"INSUNITS"), 1);
    EXPECT_EQ(number(db, L"MEASUREMENT"), 1);
    EXPECT_EQ(number(*imperial, L"MEASUREMENT"), 0);
    EXPECT_EQ(number(db, L"DIMTXT"), 2.5);
    EXPECT_EQ(recordNames(imperial->dimStyleTableId()), Names{"Standard"});
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> iso(db.dimstyle(), ZvDb::kForRead);
    EXPECT_EQ(iso->name(), L"ISO-25");
    EXPECT_EQ(iso->real("DIMASZ"), 2.5);
    EXPECT_EQ(iso->integer("DIMTAD"), 1);
    EXPECT_EQ(iso->idValue("DIMTXSTY"), db.textstyle());
}

TEST_F(Creation, theSheetIsAnA3)
{
    db.setTilemode(false);
    ZvDbObjectPointer<ZvDbLayout> layout(db.currentLayoutId(), ZvDb::kForRead);
    EXPECT_EQ(layout->layoutName(), L"Layout1");
    EXPECT_EQ(layout->paperSize().x, 420.0);
    EXPECT_EQ(layout->paperSize().y, 297.0);
    EXPECT_EQ(layout->plotScale(), 1.0);
    EXPECT_FALSE(layout->isModelType());
    EXPECT_EQ(layout->tabOrder(), 1);
    ZvDbObjectPointer<ZvDbBlockTableRecord> block(layout->getBlockTableRecordId(), ZvDb::kForRead);
    EXPECT_EQ(block->layoutId(), layout->objectId());
    EXPECT_FALSE(db.currentViewportId().isNull()) << "the paper has a viewport of its own";
}

TEST_F(Creation, handlesAreAllDifferent)
{
    std::set<std::uint64_t> handles;
    int objects = 0;
    for (std::uint32_t i = 1; i < 200; ++i) {
        const ZvDbObjectId id = ZvDbObjectId::fromInt64((std::uint64_t(db.number()) << 32) | i);
        if (!id.isValid())
            continue;
        ++objects;
        handles.insert(id.handle());
        EXPECT_EQ(db.idOfHandle(id.handle()), id);
    }
    EXPECT_GT(objects, 30);
    EXPECT_EQ(int(handles.size()), objects);
    EXPECT_EQ(handles.count(0), 0u);
}

TEST_F(Creation, newEntitiesTakeTheCurrentSettings)
{
    const ZvDbObjectId layer = addLayer(db, L"Walls");
    db.setClayer(layer);
    db.setCecolor(index(1));
    db.setCelweight(ZvDb::kLnWt030);
    db.setCeltscale(3.0);
    ZvDbObjectPointer<ZvDbEntity> line(addLine(db), ZvDb::kForRead);
    EXPECT_EQ(line->layer(), L"Walls");
    EXPECT_EQ(line->color(), index(1));
    EXPECT_EQ(line->lineWeight(), ZvDb::kLnWt030);
    EXPECT_EQ(line->linetypeScale(), 3.0);
}

TEST_F(Creation, theCurrentDatabaseIsForgottenWhenItDies)
{
    zvdbSetCurDatabase(database);
    EXPECT_EQ(curDatabase(), database.get());
    database = ZvDbDatabasePtr();
    EXPECT_EQ(curDatabase(), nullptr);
}
