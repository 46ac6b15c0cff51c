// SPDX-License-Identifier: MIT
// Every kind of named object that drop-downs list, in the samples and in real drawings: renamed and changed, written,
// read again, and put back.
#include "db/zvdbdictionary.h"
#include "file_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <memory>
#include <set>

namespace {

std::vector<ZvDbObjectId> entriesOf(ZvDbObjectId dictionaryId)
{
    std::vector<ZvDbObjectId> ids;
    const ZvDbObjectPointer<ZvDbDictionary> dictionary(dictionaryId, ZvDb::kForRead);
    const std::unique_ptr<ZvDbDictionaryIterator> iterator(dictionary ? dictionary->newIterator() : nullptr);
    for (; iterator && !iterator->done(); iterator->next())
        ids.push_back(iterator->objectId());
    return ids;
}

struct Kind
{
    const char *name;
    ZvRxClass *(*cls)();
    std::vector<ZvDbObjectId> (*list)(const ZvDbDatabase &database);
    /// Changes a number of the object, and reads it.
    void (*change)(ZvDbObject &object, double value);
    double (*value)(const ZvDbObject &object);
};

template <class T> T &as(ZvDbObject &object)
{
    return static_cast<T &>(object);
}

template <class T> const T &as(const ZvDbObject &object)
{
    return static_cast<const T &>(object);
}

const Kind kKinds[] = {
    {"textStyles", ZvDbTextStyleTableRecord::desc,
     [](const ZvDbDatabase &database) { return recordsOf(database.textStyleTableId()); },
     [](ZvDbObject &o, double value) { as<ZvDbTextStyleTableRecord>(o).setXScale(value); },
     [](const ZvDbObject &o) { return as<ZvDbTextStyleTableRecord>(o).xScale(); }},
    {"dimensionStyles", ZvDbDimStyleTableRecord::desc,
     [](const ZvDbDatabase &database) { return recordsOf(database.dimStyleTableId()); },
     [](ZvDbObject &o, double value) { as<ZvDbDimStyleTableRecord>(o).setReal("DIMTXT", value); },
     [](const ZvDbObject &o) { return as<ZvDbDimStyleTableRecord>(o).real("DIMTXT"); }},
    {"multileaderStyles", ZvDbMLeaderStyle::desc,
     [](const ZvDbDatabase &database) { return entriesOf(database.mleaderStyleDictionaryId()); },
     [](ZvDbObject &o, double value) { as<ZvDbMLeaderStyle>(o).setTextHeight(value); },
     [](const ZvDbObject &o) { return as<ZvDbMLeaderStyle>(o).textHeight(); }},
    {"tableStyles", ZvDbTableStyle::desc,
     [](const ZvDbDatabase &database) { return entriesOf(database.tableStyleDictionaryId()); }, nullptr, nullptr},
    {"materials", ZvDbMaterial::desc,
     [](const ZvDbDatabase &database) { return entriesOf(database.materialDictionaryId()); }, nullptr, nullptr},
    {"plotStyleNames", ZvDbPlaceHolder::desc,
     [](const ZvDbDatabase &database) { return entriesOf(database.plotStyleDictionaryId()); }, nullptr, nullptr},
    {"blocks", ZvDbBlockTableRecord::desc,
     [](const ZvDbDatabase &database) { return recordsOf(database.blockTableId()); },
     [](ZvDbObject &o, double value) {
         as<ZvDbBlockTableRecord>(o).setOrigin({value, 0, 0});
     },
     [](const ZvDbObject &o) { return as<ZvDbBlockTableRecord>(o).origin().x; }},
    {"coordinateSystems", ZvDbUCSTableRecord::desc,
     [](const ZvDbDatabase &database) { return recordsOf(database.UCSTableId()); },
     [](ZvDbObject &o, double value) {
         as<ZvDbUCSTableRecord>(o).setOrigin({value, 2, 3});
     },
     [](const ZvDbObject &o) { return as<ZvDbUCSTableRecord>(o).origin().x; }},
    {"views", ZvDbViewTableRecord::desc, [](const ZvDbDatabase &database) { return recordsOf(database.viewTableId()); },
     [](ZvDbObject &o, double value) { as<ZvDbViewTableRecord>(o).setHeight(value); },
     [](const ZvDbObject &o) { return as<ZvDbViewTableRecord>(o).height(); }},
};

const char *const kNewName = "Renamed by the test";

/// Dictionaries of some files hold objects of other kinds as well.
bool isOfKind(const Kind &kind, ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForRead);
    return object && object->isKindOf(kind.cls());
}

/// The name where it may be given another one; empty otherwise.
std::string nameToChange(const Kind &kind, ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForRead);
    std::string name;
    if (const auto *record = zvrxCast<ZvDbSymbolTableRecord>(object.get()))
        name = record->isDependent() ? std::string() : record->name().toStdString();
    else if (const auto *named = zvrxCast<ZvDbNamedObject>(object.get()))
        name = named->name().toStdString();
    if (const auto *block = zvrxCast<ZvDbBlockTableRecord>(object.get());
        block && (block->isLayout() || block->isAnonymous()))
        return std::string();
    if (std::string(kind.name) == "materials" && (name == "ByLayer" || name == "ByBlock" || name == "Global"))
        return std::string(); // entities have these by name
    const bool isPlain = std::all_of(name.begin(), name.end(), [](unsigned char c) { return c > 32 && c < 127; });
    return isPlain ? name : std::string(); // others are spelt in several ways, by the version of the file
}

void renameObject(ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForWrite);
    Zv::ErrorStatus status = Zv::eNotThatKindOfClass;
    if (auto *record = zvrxCast<ZvDbSymbolTableRecord>(object.get()))
        status = record->setName(ZvString(kNewName));
    else if (auto *named = zvrxCast<ZvDbNamedObject>(object.get()))
        status = named->setName(ZvString(kNewName));
    EXPECT_EQ(status, Zv::eOk);
}

/// What the database has made itself is no record of the file yet.
class FileRecords
{
public:
    explicit FileRecords(const std::string &original)
    {
        for (const FileTag &tag : tagsOf(original)) {
            if (tag.code == 5 || tag.code == 105)
                m_handles.insert(std::strtoull(tag.value.c_str(), nullptr, 16));
        }
    }
    /// In the oldest drawings without handles all are taken for the file's.
    bool has(ZvDbObjectId id) const { return m_handles.size() < 2 || m_handles.count(id.handle()) > 0; }

private:
    std::set<unsigned long long> m_handles;
};

std::string nameOf(ZvDbObjectId id)
{
    const ZvDbObjectPointer<ZvDbObject> object(id, ZvDb::kForRead);
    if (const auto *record = zvrxCast<ZvDbSymbolTableRecord>(object.get()))
        return record->name().toStdString();
    const auto *named = zvrxCast<ZvDbNamedObject>(object.get());
    return named ? named->name().toStdString() : std::string();
}

/// A change undone before it was saved leaves the file as it was.
template <class Change> void expectPutBack(const Kind &kind, std::size_t at, const std::string &original, Change change)
{
    const ZvDbDatabasePtr database = readDrawing(original);
    change(kind.list(*database)[at]);
    while (database->canUndo())
        database->undo();
    const std::string saved = saveDrawing(*database);
    EXPECT_TRUE(saved == original) << describe(difference(original, saved));
}

bool isAll(const std::vector<FileTag> &tags, const std::string &value)
{
    return std::all_of(tags.begin(), tags.end(), [&](const FileTag &tag) { return tag.value == value; });
}

class NamedInFile : public testing::TestWithParam<std::string>
{
protected:
    /// Runs \a act for the first object of each kind that \a isFor takes, each in a drawing read anew.
    template <class IsFor, class Act> void forEachKind(IsFor isFor, Act act)
    {
        const std::string original = readAll(drawingPath(GetParam()));
        const FileRecords records(original);
        for (const Kind &kind : kKinds) {
            const ZvDbDatabasePtr database = readDrawing(original);
            ASSERT_TRUE(database.get());
            const std::vector<ZvDbObjectId> ids = kind.list(*database);
            const auto found = std::find_if(ids.begin(), ids.end(), [&](ZvDbObjectId id) {
                return isOfKind(kind, id) && records.has(id) && isFor(kind, id);
            });
            if (found == ids.end())
                continue;
            SCOPED_TRACE(std::string(kind.name) + " " + nameOf(*found));
            act(kind, *database, *found, std::size_t(found - ids.begin()), original);
        }
    }
};

} // namespace

TEST_P(NamedInFile, renamedObjectChangesItsNameAndNothingElse)
{
    const auto isFor = [](const Kind &kind, ZvDbObjectId id) { return !nameToChange(kind, id).empty(); };
    forEachKind(
        isFor,
        [](const Kind &kind, ZvDbDatabase &database, ZvDbObjectId id, std::size_t at, const std::string &original) {
            const std::string before = nameToChange(kind, id);
            renameObject(id);
            const std::string saved = saveDrawing(database);
            const TagDifference found = difference(original, saved);
            EXPECT_EQ(found.removed.size(), found.added.size()) << describe(found);
            EXPECT_GE(found.added.size(), 1u);
            EXPECT_TRUE(isAll(found.added, kNewName)) << describe(found);
            for (const FileTag &tag : found.removed) // however it is spelt there
                EXPECT_EQ(ZvString(tag.value.c_str()).compareNoCase(ZvString(before.c_str())), 0) << describe(found);
            const ZvDbDatabasePtr again = readDrawing(saved);
            ASSERT_TRUE(again.get());
            const std::vector<ZvDbObjectId> ids = kind.list(*again);
            ASSERT_GT(ids.size(), at);
            EXPECT_EQ(nameOf(ids[at]), kNewName);
            expectPutBack(kind, at, original, renameObject);
        });
}

TEST_P(NamedInFile, changedObjectChangesItsNumberAndNothingElse)
{
    const auto isFor = [](const Kind &kind, ZvDbObjectId) { return kind.change != nullptr; };
    forEachKind(
        isFor,
        [](const Kind &kind, ZvDbDatabase &database, ZvDbObjectId id, std::size_t at, const std::string &original) {
            const auto changeIt = [&kind](ZvDbObjectId which) {
                const ZvDbObjectPointer<ZvDbObject> object(which, ZvDb::kForWrite);
                kind.change(*object, 12.375);
            };
            changeIt(id);
            const std::string saved = saveDrawing(database);
            const TagDifference found = difference(original, saved);
            EXPECT_LE(found.removed.size(), 3u) << describe(found); // a point is three
            EXPECT_LE(found.added.size(), 3u) << describe(found);
            EXPECT_GE(found.added.size(), 1u);
            const ZvDbDatabasePtr again = readDrawing(saved);
            ASSERT_TRUE(again.get());
            {
                const ZvDbObjectPointer<ZvDbObject> object(kind.list(*again)[at], ZvDb::kForRead);
                EXPECT_EQ(kind.value(*object), 12.375);
            }
            expectPutBack(kind, at, original, changeIt);
        });
}

TEST_P(NamedInFile, referencesOfABlockAreTheSameWhenReadAgain)
{
    const ZvDbDatabasePtr database = readDrawing(readAll(drawingPath(GetParam())));
    const ZvDbDatabasePtr again = readDrawing(saveDrawing(*database));
    const std::vector<ZvDbObjectId> blocks = recordsOf(database->blockTableId());
    const std::vector<ZvDbObjectId> blocksAgain = recordsOf(again->blockTableId());
    ASSERT_EQ(blocks.size(), blocksAgain.size());
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        ZvArray<ZvDbObjectId> references;
        ZvArray<ZvDbObjectId> referencesAgain;
        ZvDbObjectPointer<ZvDbBlockTableRecord>(blocks[i], ZvDb::kForRead)->getBlockReferenceIds(references);
        ZvDbObjectPointer<ZvDbBlockTableRecord>(blocksAgain[i], ZvDb::kForRead)->getBlockReferenceIds(referencesAgain);
        EXPECT_EQ(references.length(), referencesAgain.length()) << nameOf(blocks[i]);
    }
}

INSTANTIATE_TEST_SUITE_P(Drawings, NamedInFile, testing::ValuesIn(drawingNames()), [](const auto &info) {
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](unsigned char c) { return !std::isalnum(c); }, '_');
    return name;
});

TEST(MadeLayouts, areNotNamedInVersionsThatKnowNone)
{
    const std::string original = text({{0, "SECTION"},
                                       {2, "HEADER"},
                                       {9, "$ACADVER"},
                                       {1, "AC1014"},
                                       {9, "$HANDSEED"},
                                       {5, "100"},
                                       {0, "ENDSEC"},
                                       {0, "SECTION"},
                                       {2, "TABLES"},
                                       {0, "TABLE"},
                                       {2, "DIMSTYLE"},
                                       {5, "A"},
                                       {100, "AcDbSymbolTable"},
                                       {70, "1"},
                                       {0, "DIMSTYLE"},
                                       {105, "27"},
                                       {100, "AcDbSymbolTableRecord"},
                                       {100, "AcDbDimStyleTableRecord"},
                                       {2, "Ours"},
                                       {70, "0"},
                                       {0, "ENDTAB"},
                                       {0, "ENDSEC"},
                                       {0, "SECTION"},
                                       {2, "OBJECTS"},
                                       {0, "DICTIONARY"},
                                       {5, "C"},
                                       {100, "AcDbDictionary"},
                                       {3, "ACAD_GROUP"},
                                       {350, "D"},
                                       {0, "DICTIONARY"},
                                       {5, "D"},
                                       {330, "C"},
                                       {100, "AcDbDictionary"},
                                       {0, "ENDSEC"},
                                       {0, "EOF"}});
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    for (const ZvDbObjectId id : recordsOf(database->dimStyleTableId())) {
        if (nameOf(id) == "Ours")
            renameObject(id);
    }
    const std::string saved = saveDrawing(*database);
    EXPECT_NE(saved.find(kNewName), std::string::npos);
    EXPECT_EQ(saved.find("ACAD_LAYOUT"), std::string::npos);
    EXPECT_EQ(saved.find("Layout1"), std::string::npos);
    EXPECT_TRUE(readDrawing(saved).get());
}
