// SPDX-License-Identifier: MIT
// Drawings that are cut off, garbled, or say what cannot be: a clear error, or a drawing with a warning that names what
// was found. Whatever comes of it can be walked through and saved.
#include "file_support.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace {

std::string sample()
{
    static const std::string bytes = [] {
        const std::filesystem::path folder(ZEVA_SAMPLES_DIR);
        for (const char *name : {"part.dxf", "plan.dxf"}) {
            if (std::filesystem::exists(folder / name))
                return readAll((folder / name).string());
        }
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbObjectId id;
        for (int i = 0; i < 40; ++i)
            database->appendEntity(new ZvDbLine(ZvGePoint3d(i, 0, 0), ZvGePoint3d(1, i, 0)), database->modelSpaceId(),
                                   id);
        return saveDrawing(*database);
    }();
    return bytes;
}

/// A repeatable sequence of numbers.
class Numbers
{
public:
    explicit Numbers(std::uint64_t seed) : m_state(seed * 0x9E3779B97F4A7C15ull + 1) { }
    std::uint64_t next()
    {
        m_state ^= m_state << 13;
        m_state ^= m_state >> 7;
        m_state ^= m_state << 17;
        return m_state;
    }
    std::size_t below(std::size_t limit) { return limit ? std::size_t(next() % limit) : 0; }

private:
    std::uint64_t m_state;
};

/// Opens everything, changes something, saves, and reads what was saved. Returns false where reading gave an error.
bool survives(const std::string &bytes, ZvDbFileReport &report, bool saves = true)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    if (database->readStream(bytes.data(), bytes.size(), report) != Zv::eOk) {
        EXPECT_FALSE(report.message.isEmpty());
        EXPECT_TRUE(entitiesOf(database->modelSpaceId()).empty());
        return false;
    }
    for (const ZvDbFileReport::Warning &warning : report.warnings) {
        EXPECT_GT(warning.count, 0);
        EXPECT_FALSE(warning.text.isEmpty());
    }
    int number = 0;
    for (const ZvDbObjectId block : recordsOf(database->blockTableId())) {
        for (const ZvDbObjectId id : entitiesOf(block)) {
            ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
            EXPECT_TRUE(entity);
            if (!entity)
                continue;
            ZvGeExtents3d box;
            entity->getGeomExtents(box);
            entity->layer();
            entity.close();
            if (++number % 7 == 0)
                change<ZvDbEntity>(id, [](ZvDbEntity &e) { e.setLineWeight(ZvDb::kLnWt050); });
            if (number % 11 == 0)
                change<ZvDbEntity>(id, [](ZvDbEntity &e) { e.erase(); });
        }
    }
    for (const ZvDbObjectId table :
         {database->layerTableId(), database->linetypeTableId(), database->textStyleTableId(),
          database->dimStyleTableId(), database->viewTableId(), database->UCSTableId()}) {
        for (const ZvDbObjectId id : recordsOf(table)) {
            ZvDbObjectPointer<ZvDbSymbolTableRecord> record(id, ZvDb::kForRead);
            EXPECT_TRUE(record);
        }
    }
    if (saves) {
        const std::string saved = saveDrawing(*database);
        EXPECT_FALSE(saved.empty());
        EXPECT_TRUE(readDrawing(saved).get());
    }
    EXPECT_EQ(zvdbOpenObjectCount(), 0);
    return true;
}

} // namespace

TEST(Truncated, everyPlaceGivesAnErrorOrANamedWarning)
{
    const std::string whole = sample();
    for (std::size_t i = 0; i < 500; ++i) {
        const std::size_t length = whole.size() * i / 500;
        ZvDbFileReport report;
        if (!survives(whole.substr(0, length), report, i % 4 == 0))
            continue;
        bool isNamed = false;
        for (const ZvDbFileReport::Warning &warning : report.warnings)
            isNamed |= warning.text.find(L"cut off") >= 0;
        EXPECT_TRUE(isNamed) << length;
    }
}

TEST(Mutated, twoThousandMutationsDoNoHarm)
{
    const std::string whole = sample();
    for (std::uint64_t seed = 1; seed <= 2000; ++seed) {
        Numbers numbers(seed);
        std::string bytes = whole;
        const std::size_t changes = 1 + numbers.below(20);
        for (std::size_t i = 0; i < changes && !bytes.empty(); ++i) {
            const std::size_t at = numbers.below(bytes.size());
            switch (numbers.below(6)) {
            case 0:
                bytes[at] = char(numbers.next());
                break;
            case 1:
                bytes.erase(at, numbers.below(40));
                break;
            case 2:
                bytes.insert(at, bytes.substr(numbers.below(bytes.size()), numbers.below(200)));
                break;
            case 3: // a digit for another
                if (bytes[at] >= '0' && bytes[at] <= '9')
                    bytes[at] = char('0' + numbers.below(10));
                break;
            case 4: { // a line is lost
                const std::size_t end = bytes.find('\n', at);
                if (end != std::string::npos)
                    bytes.erase(at, end - at + 1);
                break;
            }
            default: // a number out of all ranges
                bytes.insert(at, "99999999999999999999");
                break;
            }
        }
        ZvDbFileReport report;
        survives(bytes, report, seed % 4 == 0);
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}

TEST(Mutated, binaryDrawingsDoNoHarm)
{
    const std::string path = drawingPath("bin-r14.dxf");
    if (!std::filesystem::exists(path))
        GTEST_SKIP() << "no real drawings";
    const std::string whole = readAll(path);
    for (std::uint64_t seed = 1; seed <= 300; ++seed) {
        Numbers numbers(seed);
        std::string bytes = whole.substr(0, seed % 3 ? whole.size() : numbers.below(whole.size()));
        for (std::size_t i = numbers.below(6); i > 0 && !bytes.empty(); --i)
            bytes[numbers.below(bytes.size())] = char(numbers.next());
        ZvDbFileReport report;
        survives(bytes, report);
        ASSERT_FALSE(HasFailure()) << "seed " << seed;
    }
}

// ---- what files say that cannot be

namespace {

std::string entitiesSection(const std::string &entities)
{
    return text({{0, "SECTION"}, {2, "ENTITIES"}}) + entities + text({{0, "ENDSEC"}});
}

std::string header(const char *version)
{
    return text({{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, version}, {0, "ENDSEC"}});
}

std::string layers(const std::string &records)
{
    return text({{0, "SECTION"}, {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}, {70, "1"}}) + records
        + text({{0, "ENDTAB"}, {0, "ENDSEC"}});
}

std::string eof()
{
    return text({{0, "EOF"}});
}

bool hasWarning(const ZvDbFileReport &report, const wchar_t *words, int count = 0)
{
    for (const ZvDbFileReport::Warning &warning : report.warnings) {
        if (warning.text.find(words) >= 0 && (count == 0 || warning.count == count))
            return true;
    }
    return false;
}

} // namespace

TEST(Odd, aMissingLayerIsMadeAndTheFileStaysAsItIs)
{
    const std::string line = text({{0, "LINE"}, {8, "Nowhere"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}});
    const std::string bytes = header("AC1009") + layers("") + entitiesSection(line + line) + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"the layer was made", 1));
    ZvDbObjectPointer<ZvDbEntity> entity(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    EXPECT_EQ(entity->layer().toStdString(), "Nowhere");
    entity.close();
    EXPECT_TRUE(saveDrawing(*database) == bytes);
    // Once it is changed it has to be in the file.
    for (const ZvDbObjectId id : recordsOf(database->layerTableId())) {
        change<ZvDbLayerTableRecord>(id, [](ZvDbLayerTableRecord &layer) {
            if (layer.name() == "Nowhere")
                layer.setIsFrozen(true);
        });
    }
    const ZvDbDatabasePtr again = readDrawing(saveDrawing(*database), &report);
    ASSERT_TRUE(again.get());
    EXPECT_FALSE(hasWarning(report, L"the layer was made"));
}

TEST(Odd, anUnknownLinetypeStaysInTheFileWhenTheEntityIsRecoloured)
{
    const std::string line
        = text({{0, "LINE"}, {8, "0"}, {6, "Phantom9"}, {62, "1"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}});
    const std::string bytes = header("AC1009") + layers("") + entitiesSection(line) + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"line type", 1));
    ASSERT_TRUE(change<ZvDbEntity>(entitiesOf(database->modelSpaceId())[0], [](ZvDbEntity &entity) {
        ZvCmColor color;
        color.setColorIndex(5);
        entity.setColor(color);
    }));
    EXPECT_EQ(describe(difference(bytes, saveDrawing(*database))), "- 62 1\n+ 62 5\n");
}

TEST(Odd, whatIsMadeInAdvanceTakesNoHandleOfTheFile)
{
    // The layer of the line is made when the line is read, and the dictionary that stands behind has the next handle.
    const std::string bytes = header("AC1015")
        + text({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {5, "11"}, {100, "AcDbEntity"}, {8, "Nowhere"},
                {100, "AcDbLine"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}, {0, "ENDSEC"}, {0, "SECTION"},
                {2, "OBJECTS"}, {0, "DICTIONARY"}, {5, "12"}, {330, "0"}, {100, "AcDbDictionary"}, {3, "ACAD_MATERIAL"},
                {350, "13"}, {0, "DICTIONARY"}, {5, "13"}, {330, "12"}, {100, "AcDbDictionary"}, {3, "Brick"},
                {350, "14"}, {0, "MATERIAL"}, {5, "14"}, {330, "13"}, {100, "AcDbMaterial"}, {1, "Brick"},
                {0, "ENDSEC"}, {0, "EOF"}});
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_FALSE(hasWarning(report, L"same handle"));
    EXPECT_EQ(database->rootDictionaryId(), database->idOfHandle(0x12));
    ZvDbObjectPointer<ZvDbDictionary> materials(database->materialDictionaryId(), ZvDb::kForRead);
    ASSERT_TRUE(materials);
    EXPECT_EQ(materials->getIdAt(L"Brick"), database->idOfHandle(0x14));
    materials.close();
    ZvDbObjectPointer<ZvDbEntity> line(database->idOfHandle(0x11), ZvDb::kForRead);
    const ZvDbObjectId layer = line->layerId();
    line.close();
    EXPECT_NE(layer.handle(), 0u);
    EXPECT_EQ(database->idOfHandle(layer.handle()), layer) << "it has a handle of its own all the same";
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, aTableBehindItsUsersHasTheHandleOfTheFile)
{
    const std::string bytes = header("AC1015")
        + text({{0, "SECTION"}, {2, "ENTITIES"}, {0, "LINE"}, {5, "11"}, {100, "AcDbEntity"}, {8, "Walls"},
                {100, "AcDbLine"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}, {0, "ENDSEC"}, {0, "SECTION"},
                {2, "TABLES"}, {0, "TABLE"}, {2, "LAYER"}, {5, "2A"}, {330, "0"}, {100, "AcDbSymbolTable"}, {70, "1"},
                {0, "LAYER"}, {5, "2B"}, {330, "2A"}, {100, "AcDbSymbolTableRecord"}, {100, "AcDbLayerTableRecord"},
                {2, "Walls"}, {70, "0"}, {62, "3"}, {6, "Continuous"}, {0, "ENDTAB"}, {0, "ENDSEC"}, {0, "EOF"}});
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    EXPECT_EQ(database->idOfHandle(0x2A), database->layerTableId());
    ZvDbObjectPointer<ZvDbEntity> line(database->idOfHandle(0x11), ZvDb::kForRead);
    EXPECT_EQ(line->layerId(), database->idOfHandle(0x2B));
    line.close();
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, twoObjectsOfOneHandleAreBothThere)
{
    const std::string line = text({{0, "LINE"}, {5, "2A"}, {8, "0"}, {10, "0"}, {20, "0"}, {11, "1"}, {21, "1"}});
    const std::string bytes = header("AC1009") + entitiesSection(line + line) + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"same handle", 1));
    const std::vector<ZvDbObjectId> ids = entitiesOf(database->modelSpaceId());
    ASSERT_EQ(ids.size(), 2u);
    EXPECT_NE(ids[0].handle(), ids[1].handle());
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, twoLayersOfOneNameAreBothKept)
{
    const std::string layer = text({{0, "LAYER"}, {2, "A"}, {70, "0"}, {62, "1"}, {6, "CONTINUOUS"}});
    const std::string bytes = header("AC1009") + layers(layer + layer) + entitiesSection("") + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"same name", 1));
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, aWrongOwnerIsNamedAndTheEntityIsWhereItStands)
{
    const std::string line = text({{0, "LINE"},
                                   {5, "2A"},
                                   {330, "FFFF"},
                                   {100, "AcDbEntity"},
                                   {8, "0"},
                                   {100, "AcDbLine"},
                                   {10, "0"},
                                   {20, "0"},
                                   {11, "1"},
                                   {21, "1"}});
    const std::string bytes = header("AC1015") + layers("") + entitiesSection(line) + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"names an owner", 1));
    EXPECT_EQ(entitiesOf(database->modelSpaceId()).size(), 1u);
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, unknownThingsAreKeptWhole)
{
    const std::string unknown = text({{0, "MYSTERY"},
                                      {5, "2B"},
                                      {100, "AcDbEntity"},
                                      {8, "A"},
                                      {62, "3"},
                                      {100, "AcDbMystery"},
                                      {10, "1.50"},
                                      {20, "2"},
                                      {1, "text"},
                                      {999, "a comment"},
                                      {310, "00FF"},
                                      {102, "{GROUP"},
                                      {330, "1"},
                                      {102, "}"},
                                      {1001, "APP"},
                                      {1000, "data"},
                                      {1040, "1.0"}});
    const std::string bytes = text({{999, "made by hand"}}) + header("AC1015") + layers("") + entitiesSection(unknown)
        + text({{0, "SECTION"}, {2, "STRANGE"}, {0, "THING"}, {1, "x"}, {0, "ENDSEC"}}) + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"section of an unknown name", 1));
    EXPECT_TRUE(saveDrawing(*database) == bytes);
    const ZvDbObjectId id = entitiesOf(database->modelSpaceId())[0];
    EXPECT_EQ(id.objectClass(), ZvDbProxyEntity::desc());
    {
        ZvDbObjectPointer<ZvDbProxyEntity> proxy(id, ZvDb::kForRead);
        ASSERT_TRUE(proxy);
        EXPECT_EQ(proxy->originalFileName().toStdString(), "MYSTERY");
        EXPECT_EQ(proxy->layer().toStdString(), "A");
        EXPECT_EQ(proxy->color().colorIndex(), 3);
        ZvResBuf *chain = proxy->xData(L"APP");
        ASSERT_TRUE(chain);
        EXPECT_EQ(chain->rbnext->text().toStdString(), "data");
        zvutRelRb(chain);
    }
    ASSERT_TRUE(change<ZvDbEntity>(id, [](ZvDbEntity &entity) {
        ZvCmColor color;
        color.setColorIndex(5);
        entity.setColor(color);
    }));
    EXPECT_EQ(describe(difference(bytes, saveDrawing(*database))), "- 62 3\n+ 62 5\n");
}

TEST(Odd, strayVerticesAndAttributesAreKept)
{
    const std::string bytes = header("AC1009") + layers("")
        + entitiesSection(text({{0, "VERTEX"}, {8, "0"}, {10, "1"}, {0, "ATTRIB"}, {8, "0"}, {1, "x"}, {0, "SEQEND"}}))
        + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(hasWarning(report, L"belongs to nothing", 3));
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, numbersOutOfAllRangesAreReadAndKept)
{
    const std::string line = text({{0, "LINE"},
                                   {8, "0"},
                                   {62, "99999999999"},
                                   {48, "1e999"},
                                   {10, "junk"},
                                   {20, ""},
                                   {11, "1234567.891"},
                                   {21, "-1e308"}});
    const std::string bytes = header("AC1009") + layers("") + entitiesSection(line) + eof();
    ZvDbFileReport report;
    const ZvDbDatabasePtr database = readDrawing(bytes, &report);
    ASSERT_TRUE(database.get());
    ZvDbObjectPointer<ZvDbLine> read(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->startPoint().x, 0.0);
    EXPECT_EQ(read->endPoint().x, 1234567.891);
    read.close();
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, aMultileaderMaySayWhatBeginsALine)
{
    const std::string leader = text({{0, "MULTILEADER"},
                                     {5, "78"},
                                     {100, "AcDbEntity"},
                                     {8, "0"},
                                     {100, "AcDbMLeader"},
                                     {300, "CONTEXT_DATA{"},
                                     {40, "1.0"},
                                     {305, "}"}, // the end of a line that never began
                                     {304, "LEADER_LINE{"},
                                     {12, "7.0"},
                                     {22, "8.0"},
                                     {302, "LEADER{"},
                                     {10, "5.0"},
                                     {20, "6.0"},
                                     {304, "LEADER_LINE{"},
                                     {10, "1.0"},
                                     {20, "2.0"},
                                     {305, "}"},
                                     {303, "}"},
                                     {301, "}"}});
    const std::string bytes = header("AC1027") + layers("") + entitiesSection(leader) + eof();
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    ZvDbObjectPointer<ZvDbMLeader> read(entitiesOf(database->modelSpaceId())[0], ZvDb::kForRead);
    ASSERT_TRUE(read);
    EXPECT_EQ(read->contents(), ZvString("LEADER_LINE{"));
    ZvGeExtents3d box; // with the line from (1, 2)
    EXPECT_EQ(read->getGeomExtents(box), Zv::eOk);
    EXPECT_EQ(box.minimum.x, 1.0);
    EXPECT_EQ(box.minimum.y, 2.0);
    read.close();
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

TEST(Odd, piecesOfATextInAnyOrderGiveWayToNewOnes)
{
    const std::string mtext = text({{0, "MTEXT"},
                                    {5, "78"},
                                    {100, "AcDbEntity"},
                                    {8, "0"},
                                    {100, "AcDbMText"},
                                    {1, "end"}, // belongs behind the others
                                    {10, "5.0"},
                                    {20, "6.0"},
                                    {40, "3.0"},
                                    {3, "beginning "},
                                    {3, "middle "},
                                    {7, "Standard"}});
    const std::string bytes = header("AC1027") + layers("") + entitiesSection(mtext) + eof();
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    const auto contents = [](ZvDbDatabase &drawing, const wchar_t *changed) {
        ZvDbObjectPointer<ZvDbMText> read(entitiesOf(drawing.modelSpaceId())[0], ZvDb::kForWrite);
        const ZvString before = read->contents();
        if (changed)
            read->setContents(changed);
        return before;
    };
    EXPECT_EQ(contents(*database, L"other").toStdString(), "beginning middle end");
    const std::string saved = saveDrawing(*database);
    const ZvDbDatabasePtr again = readDrawing(saved);
    ASSERT_TRUE(again.get());
    EXPECT_EQ(contents(*again, nullptr).toStdString(), "other");
    EXPECT_EQ(describe(difference(bytes, saved)), "- 1 end\n- 3 beginning \n- 3 middle \n+ 1 other\n");
}

TEST(Odd, whatIsNoDrawingGivesAnErrorThatSaysSo)
{
    const std::vector<std::pair<std::string, const wchar_t *>> rows = {
        {"", L"empty"},
        {"\n\n  \n", L"empty"},
        {std::string("AC1032") + std::string(500, '\0'), L"DWG"},
        {"<html></html>\n", L"not a DXF"},
        {"0\nLINE\n8\n0\n", L"not a DXF"},
    };
    for (const auto &[bytes, words] : rows) {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbFileReport report;
        EXPECT_EQ(database->readStream(bytes.data(), bytes.size(), report), Zv::eFileDamaged);
        EXPECT_EQ(report.status, Zv::eFileDamaged);
        EXPECT_GE(report.message.find(words), 0) << report.message.toStdString();
    }
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    EXPECT_EQ(database->readFile(L"/nowhere/at/all.dxf", report), Zv::eFileAccess);
    EXPECT_GE(report.message.find(L"all.dxf"), 0);
}

TEST(Odd, ringsOfOwnersAndDictionariesEnd)
{
    const std::string bytes = header("AC1015") + layers("") + entitiesSection("")
        + text({{0, "SECTION"},
                {2, "OBJECTS"},
                {0, "DICTIONARY"},
                {5, "C"},
                {330, "D"},
                {100, "AcDbDictionary"},
                {3, "ACAD_LAYOUT"},
                {350, "C"},
                {0, "DICTIONARY"},
                {5, "D"},
                {330, "C"},
                {100, "AcDbDictionary"},
                {3, "A"},
                {350, "C"},
                {0, "ENDSEC"}})
        + eof();
    ZvDbFileReport report;
    survives(bytes, report);
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}
