// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include <memory>

using namespace db_testing;

namespace {

class Dictionaries : public DatabaseTest
{
protected:
    ZvDbObjectId materials = db.materialDictionaryId();

    ZvDbObjectId addMaterial(const wchar_t *name)
    {
        ZvDbObjectPointer<ZvDbDictionary> dictionary(materials, ZvDb::kForWrite);
        ZvDbMaterial *material = new ZvDbMaterial;
        ZvDbObjectId id;
        EXPECT_EQ(dictionary->setAt(name, material, id), Zv::eOk);
        EXPECT_EQ(material->close(), Zv::eOk) << "it stays open for write";
        return id;
    }

    std::vector<std::string> names(ZvDbObjectId id)
    {
        ZvDbObjectPointer<ZvDbDictionary> dictionary(id, ZvDb::kForRead);
        const std::unique_ptr<ZvDbDictionaryIterator> iterator(dictionary->newIterator());
        dictionary.close();
        std::vector<std::string> result;
        for (; !iterator->done(); iterator->next()) {
            EXPECT_TRUE(iterator->objectId().isValid());
            result.push_back(iterator->name().toStdString());
        }
        EXPECT_FALSE(iterator->next());
        EXPECT_TRUE(iterator->name().isEmpty());
        return result;
    }
};

} // namespace

TEST_F(Dictionaries, entriesStandInTheirOrder)
{
    addMaterial(L"Steel");
    addMaterial(L"Brass");
    EXPECT_EQ(names(materials), (std::vector<std::string>{"ByBlock", "ByLayer", "Global", "Steel", "Brass"}));
    ZvDbObjectPointer<ZvDbDictionary> dictionary(materials, ZvDb::kForRead);
    EXPECT_EQ(dictionary->numEntries(), 5);
}

TEST_F(Dictionaries, namesAreFoundWhateverTheirCase)
{
    const ZvDbObjectId steel = addMaterial(L"Steel");
    ZvDbObjectPointer<ZvDbDictionary> dictionary(materials, ZvDb::kForRead);
    EXPECT_EQ(dictionary->getIdAt(L"STEEL"), steel);
    EXPECT_TRUE(dictionary->has(L"steel"));
    EXPECT_EQ(dictionary->nameAt(steel), L"Steel");
    ZvDbObjectId id;
    EXPECT_EQ(dictionary->getAt(L"Wood", id), Zv::eKeyNotFound);
    EXPECT_TRUE(id.isNull());
    EXPECT_TRUE(dictionary->nameAt(db.layerZero()).isEmpty());
}

TEST_F(Dictionaries, setAtReplacesAndRemoveLeavesTheObject)
{
    const ZvDbObjectId first = addMaterial(L"Steel");
    const ZvDbObjectId second = addMaterial(L"STEEL");
    EXPECT_NE(first, second);
    EXPECT_EQ(names(materials).size(), 4u);
    edit<ZvDbDictionary>(materials, [&](ZvDbDictionary &dictionary) {
        EXPECT_EQ(dictionary.getIdAt(L"Steel"), second);
        EXPECT_EQ(dictionary.remove(L"steel"), Zv::eOk);
        EXPECT_EQ(dictionary.remove(L"steel"), Zv::eKeyNotFound);
        EXPECT_FALSE(dictionary.has(L"Steel"));
    });
    EXPECT_FALSE(second.isErased());
    db.undo();
    EXPECT_EQ(names(materials).back(), "Steel");
}

TEST_F(Dictionaries, renaming)
{
    const ZvDbObjectId steel = addMaterial(L"Steel");
    edit<ZvDbDictionary>(materials, [&](ZvDbDictionary &dictionary) {
        EXPECT_EQ(dictionary.rename(L"Steel", L"Global"), Zv::eDuplicateKey);
        EXPECT_EQ(dictionary.rename(L"Wood", L"Oak"), Zv::eKeyNotFound);
        EXPECT_EQ(dictionary.rename(L"Steel", L"a*b"), Zv::eInvalidInput);
        EXPECT_EQ(dictionary.rename(L"Steel", L"STEEL"), Zv::eOk);
        EXPECT_EQ(dictionary.rename(L"Steel", L"Iron"), Zv::eOk);
        EXPECT_EQ(dictionary.getIdAt(L"iron"), steel);
    });
}

TEST_F(Dictionaries, aNamedObjectIsKnownByItsEntry)
{
    const ZvDbObjectId steel = addMaterial(L"Steel");
    db.setCmaterial(steel);
    edit<ZvDbMaterial>(steel, [](ZvDbMaterial &material) {
        EXPECT_EQ(material.name(), L"Steel");
        EXPECT_EQ(material.setName(L"Global"), Zv::eDuplicateKey);
        EXPECT_EQ(material.setName(L""), Zv::eInvalidInput);
        EXPECT_EQ(material.setName(L"Iron"), Zv::eOk);
        EXPECT_EQ(material.name(), L"Iron");
    });
    EXPECT_EQ(names(materials).back(), "Iron");
    EXPECT_EQ(db.cmaterial(), steel);
    db.undo();
    EXPECT_EQ(names(materials).back(), "Steel");
    ZvDbMaterial alone;
    EXPECT_EQ(alone.setName(L"Loose"), Zv::eOk);
    EXPECT_EQ(alone.name(), L"Loose");
}

TEST_F(Dictionaries, anErasedObjectIsNotFoundByName)
{
    const ZvDbObjectId steel = addMaterial(L"Steel");
    erase(steel);
    ZvDbObjectPointer<ZvDbDictionary> dictionary(materials, ZvDb::kForRead);
    EXPECT_FALSE(dictionary->has(L"Steel"));
}

TEST_F(Dictionaries, thoseUnderTheRootAreMadeOnRequest)
{
    EXPECT_TRUE(db.layerStateDictionaryId().isNull());
    EXPECT_TRUE(ZvDbLayerState::dictionaryId(&db, false).isNull());
    EXPECT_TRUE(ZvDbLayerState::dictionaryId(nullptr, true).isNull());
    const ZvDbObjectId states = ZvDbLayerState::dictionaryId(&db, true);
    EXPECT_FALSE(states.isNull());
    EXPECT_EQ(db.layerStateDictionaryId(), states);
    EXPECT_EQ(db.layerStateDictionaryId(true), states);
    db.undo();
    EXPECT_TRUE(db.layerStateDictionaryId().isNull());
}

TEST_F(Dictionaries, cellStylesBeginWithThePredefinedOnes)
{
    ZvDbObjectPointer<ZvDbTableStyle> style(db.tablestyle(), ZvDb::kForRead);
    ASSERT_TRUE(bool(style));
    ZvArray<ZvString> cells;
    cells.append(L"old");
    EXPECT_EQ(style->getCellStyles(cells), Zv::eOk);
    ASSERT_EQ(cells.length(), 3);
    EXPECT_EQ(cells[0], L"_TITLE");
    EXPECT_EQ(cells[1], L"_HEADER");
    EXPECT_EQ(cells[2], L"_DATA");
}

TEST_F(Dictionaries, aMultileaderStyleRefusesWhatIsNoTextStyle)
{
    edit<ZvDbMLeaderStyle>(db.mleaderstyle(), [&](ZvDbMLeaderStyle &style) {
        EXPECT_EQ(style.name(), L"Standard");
        EXPECT_EQ(style.textStyleId(), db.textstyle());
        EXPECT_EQ(style.setTextStyleId(db.layerZero()), Zv::eInvalidInput);
        EXPECT_EQ(style.setTextHeight(-1.0), Zv::eInvalidInput);
        EXPECT_EQ(style.setTextHeight(2.5), Zv::eOk);
        EXPECT_EQ(style.textHeight(), 2.5);
    });
}
