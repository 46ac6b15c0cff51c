// SPDX-License-Identifier: MIT
// What the controls show and change of a drawing, through its file: current values, styles in dictionaries, layouts,
// coordinate systems, layer states, extended data. And what hangs on an entity and has a record of its own.
#include "file_support.h"

#include "db/zvdbhostservice.h"
#include "db/zvresbuf.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <memory>

namespace {

ZvCmColor index(int number)
{
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(number));
    return color;
}

template <class Table> ZvDbObjectId recordOf(ZvDbDatabase &database, const ZvString &name)
{
    Table *table = nullptr;
    EXPECT_EQ(database.getSymbolTable(table, ZvDb::kForRead), Zv::eOk);
    const ZvDbObjectId id = table->getIdAt(name);
    table->close();
    return id;
}

ZvDbObjectId entryOf(ZvDbObjectId dictionary, const ZvString &name)
{
    ZvDbObjectPointer<ZvDbDictionary> entries(dictionary, ZvDb::kForRead);
    return entries ? entries->getIdAt(name) : ZvDbObjectId();
}

std::string nameOf(const ZvDbDatabase &database, const char *variable)
{
    ZvResBuf value;
    EXPECT_EQ(database.getVariable(variable, value), Zv::eOk) << variable;
    const std::string text = value.text().toStdString();
    if (value.restype == ZvRes::kText)
        zvutDelString(value.resval.rstring);
    return text;
}

void expectSettings(ZvDbDatabase &database)
{
    const ZvDb::FileVersion version = database.fileVersion();
    EXPECT_EQ(database.cecolor(), index(3));
    EXPECT_EQ(nameOf(database, "CELTYPE"), "Picked dashes");
    EXPECT_EQ(nameOf(database, "CLAYER"), "Picked layer");
    EXPECT_EQ(nameOf(database, "TEXTSTYLE"), "Picked texts");
    EXPECT_EQ(nameOf(database, "DIMSTYLE"), "Picked dimensions");
    ZvResBuf scale;
    EXPECT_EQ(database.getVariable("DIMSCALE", scale), Zv::eOk);
    EXPECT_EQ(scale.number(), 12.5);
    EXPECT_TRUE(database.tilemode());
    EXPECT_EQ(nameOf(database, "UCSNAME"), "Picked system");
    EXPECT_TRUE(database.ucsorg().isEqualTo({1, 2, 3}));
    EXPECT_TRUE(database.ucsxdir().isEqualTo({0, 1, 0}));
    if (version >= ZvDb::kR13) {
        ZvDbObjectPointer<ZvDbTextStyleTableRecord> style(database.textstyle(), ZvDb::kForRead);
        ASSERT_TRUE(style);
        EXPECT_EQ(style->typeface().toStdString(), "Liberation Sans");
        EXPECT_TRUE(style->isBold() && style->isItalic());
    }
    if (version >= ZvDb::kR2000) {
        EXPECT_EQ(database.celweight(), ZvDb::kLnWt070);
        EXPECT_EQ(database.cplotstyle().toStdString(), "Picked plot style");
        EXPECT_EQ(database.tablestyle(), entryOf(database.tableStyleDictionaryId(), L"Picked tables"));
        EXPECT_TRUE(database.tablestyle().isValid());
        EXPECT_EQ(database.mleaderstyle(), entryOf(database.mleaderStyleDictionaryId(), L"Picked leaders"));
        EXPECT_TRUE(database.mleaderstyle().isValid());
        EXPECT_TRUE(entryOf(database.layerStateDictionaryId(), L"Picked state").isValid());
    }
    if (version >= ZvDb::kR2007) {
        EXPECT_EQ(nameOf(database, "CMATERIAL"), "Picked material");
    }
    EXPECT_EQ(zvdbOpenObjectCount(), 0);
}

class DrawingSettings : public testing::TestWithParam<std::string>
{
};

std::string testName(const testing::TestParamInfo<std::string> &info)
{
    std::string name = info.param;
    std::replace_if(
        name.begin(), name.end(), [](char c) { return !std::isalnum(static_cast<unsigned char>(c)); }, '_');
    return name;
}

} // namespace

TEST_P(DrawingSettings, areFoundAgainInTheFile)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    changeSettings(*database);
    expectSettings(*database);
    const std::string saved = saveDrawing(*database);
    const ZvDbDatabasePtr again = readDrawing(saved);
    ASSERT_TRUE(again.get());
    expectSettings(*again);
    EXPECT_TRUE(saveDrawing(*again) == saved);
}

TEST_P(DrawingSettings, leaveTheFileAsItIsWhenTheyAreUndone)
{
    const std::string original = readAll(drawingPath(GetParam()));
    const ZvDbDatabasePtr database = readDrawing(original);
    ASSERT_TRUE(database.get());
    changeSettings(*database);
    ASSERT_TRUE(database->undo());
    EXPECT_TRUE(saveDrawing(*database) == original) << describe(difference(original, saveDrawing(*database)));
    ASSERT_TRUE(database->redo());
    expectSettings(*database);
    expectSettings(*readDrawing(saveDrawing(*database)));
    // Also when they have been saved meanwhile.
    ASSERT_TRUE(database->undo());
    const ZvDbDatabasePtr before = readDrawing(original);
    const std::string undone = saveDrawing(*database);
    const ZvDbDatabasePtr after = readDrawing(undone);
    EXPECT_EQ(undone.find("Picked"), std::string::npos);
    for (const char *name : {"CTABLESTYLE", "CMLEADERSTYLE", "CMATERIAL"}) {
        const std::string variable = "\n" + std::string(name) + "\n";
        EXPECT_EQ(undone.find(variable) == std::string::npos, original.find(variable) == std::string::npos) << name;
    }
    EXPECT_EQ(before->tablestyle().handle(), after->tablestyle().handle());
    EXPECT_EQ(before->mleaderstyle().handle(), after->mleaderstyle().handle());
}

GTEST_ALLOW_UNINSTANTIATED_PARAMETERIZED_TEST(DrawingSettings);
INSTANTIATE_TEST_SUITE_P(Drawings, DrawingSettings, testing::ValuesIn(drawingNames()), testName);

TEST(Settings, ofANewDrawingAreFoundAgain)
{
    for (const bool metric : {true, false}) {
        const ZvDbDatabasePtr database = ZvDbDatabase::create(metric);
        changeSettings(*database);
        expectSettings(*readDrawing(saveDrawing(*database)));
    }
}

// ---- layer states

namespace {

const std::pair<int, const char *> kHead[]
    = {{0, "SECTION"}, {2, "HEADER"}, {9, "$ACADVER"}, {1, "AC1015"}, {0, "ENDSEC"}};

std::string head()
{
    std::string result;
    for (const auto &[code, value] : kHead)
        result += std::to_string(code) + "\n" + value + "\n";
    return result;
}

/// A drawing whose table of layers has stored states.
std::string drawingWithStates()
{
    return head()
        + text({{0, "SECTION"},
                {2, "TABLES"},
                {0, "TABLE"},
                {2, "LAYER"},
                {5, "2"},
                {102, "{ACAD_XDICTIONARY"},
                {360, "20"},
                {102, "}"},
                {330, "0"},
                {100, "AcDbSymbolTable"},
                {70, "1"},
                {0, "LAYER"},
                {5, "10"},
                {330, "2"},
                {100, "AcDbSymbolTableRecord"},
                {100, "AcDbLayerTableRecord"},
                {2, "0"},
                {70, "0"},
                {62, "7"},
                {6, "Continuous"},
                {0, "ENDTAB"},
                {0, "ENDSEC"}})
        + text({{0, "SECTION"},
                {2, "ENTITIES"},
                {0, "ENDSEC"},
                {0, "SECTION"},
                {2, "OBJECTS"},
                {0, "DICTIONARY"},
                {5, "C"},
                {330, "0"},
                {100, "AcDbDictionary"},
                {281, "1"},
                {0, "DICTIONARY"},
                {5, "20"},
                {330, "2"},
                {100, "AcDbDictionary"},
                {280, "1"},
                {281, "1"},
                {3, "ACAD_LAYERSTATES"},
                {360, "21"},
                {0, "DICTIONARY"},
                {5, "21"},
                {330, "20"},
                {100, "AcDbDictionary"},
                {280, "1"},
                {281, "1"},
                {3, "Night"},
                {360, "22"},
                {0, "XRECORD"},
                {5, "22"},
                {330, "21"},
                {100, "AcDbXrecord"},
                {280, "1"},
                {91, "2047"},
                {301, "all dark"},
                {290, "1"},
                {302, "0"},
                {8, "0"},
                {90, "0"},
                {62, "7"},
                {370, "-3"},
                {6, "Continuous"},
                {0, "ENDSEC"},
                {0, "EOF"}});
}

} // namespace

TEST(LayerStates, standInTheExtensionDictionaryOfTheTable)
{
    const std::string bytes = drawingWithStates();
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    const ZvDbObjectId states = ZvDbLayerState::dictionaryId(database, false);
    EXPECT_EQ(states, database->idOfHandle(0x21));
    EXPECT_EQ(entryOf(states, L"night"), database->idOfHandle(0x22));
    EXPECT_TRUE(saveDrawing(*database) == bytes);
    // Another state beside it, and one gone.
    addEntry<ZvDbDictionaryVar>(states, L"Day");
    const ZvDbDatabasePtr more = readDrawing(saveDrawing(*database));
    EXPECT_TRUE(entryOf(more->layerStateDictionaryId(), L"Night").isValid());
    EXPECT_TRUE(entryOf(more->layerStateDictionaryId(), L"Day").isValid());
    ASSERT_TRUE(change<ZvDbObject>(entryOf(more->layerStateDictionaryId(), L"Night"),
                                   [](ZvDbObject &state) { state.erase(); }));
    const std::string without = saveDrawing(*more);
    EXPECT_EQ(without.find("all dark"), std::string::npos);
    EXPECT_EQ(without.find("Night"), std::string::npos);
}

TEST(LayerStates, givenToATableThatHasNone)
{
    const ZvDbDatabasePtr database = readDrawing(saveDrawing(*ZvDbDatabase::create()));
    const std::string before = saveDrawing(*database);
    const ZvDbObjectId states = database->layerStateDictionaryId(true);
    ASSERT_FALSE(states.isNull());
    const std::vector<FileTag> tags = tagsOf(saveDrawing(*database));
    const auto group = std::find(tags.begin(), tags.end(), FileTag{102, "{ACAD_XDICTIONARY"});
    ASSERT_NE(group, tags.end());
    EXPECT_EQ(group[-2], (FileTag{2, "LAYER"})) << "in the table's own record, behind its handle";
    EXPECT_EQ(group[1].code, 360);
    ASSERT_TRUE(database->undo());
    EXPECT_FALSE(database->canUndo()) << "one step";
    EXPECT_TRUE(database->layerStateDictionaryId().isNull());
    const TagDifference left = difference(before, saveDrawing(*database));
    EXPECT_TRUE(left.added.empty() && left.removed.empty()) << describe(left);
    ASSERT_TRUE(database->redo());
    EXPECT_EQ(database->layerStateDictionaryId(), states);
}

TEST(LayerStates, ofRealDrawingsAreFound)
{
    int found = 0;
    for (const std::string &name : drawingNames()) {
        const std::string bytes = readAll(drawingPath(name));
        if (bytes.find("ACAD_LAYERSTATES") == std::string::npos)
            continue;
        const ZvDbDatabasePtr database = readDrawing(bytes);
        ASSERT_TRUE(database.get()) << name;
        EXPECT_FALSE(database->layerStateDictionaryId().isNull()) << name;
        ++found;
    }
    if (!found)
        GTEST_SKIP() << "no drawing with layer states";
}

// ---- the viewport worked in

namespace {

ZvDbObjectId addViewport(ZvDbDatabase &database)
{
    ZvDbObjectId id;
    EXPECT_EQ(database.appendEntity(new ZvDbViewport, database.paperSpaceId(), id), Zv::eOk);
    return id;
}

ZvDbDatabasePtr drawingInAViewport()
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    database->setTilemode(false);
    EXPECT_EQ(database->setUcs({4, 5, 6}, {1, 0, 0}, {0, 1, 0}, ZvDbObjectId(), 0), Zv::eOk);
    EXPECT_EQ(database->setCurrentViewport(addViewport(*database)), Zv::eOk);
    return database;
}

} // namespace

TEST(Viewports, theOneWorkedInIsKeptByTheLayout)
{
    const ZvDbDatabasePtr made = drawingInAViewport();
    const std::uint64_t handle = made->currentViewportId().handle();
    const std::string saved = saveDrawing(*made);
    const ZvDbDatabasePtr database = readDrawing(saved);
    ASSERT_TRUE(database.get());
    EXPECT_FALSE(database->tilemode());
    EXPECT_EQ(database->currentViewportId().handle(), handle);
    EXPECT_EQ(database->currentSpaceId(), database->modelSpaceId());
    EXPECT_TRUE(database->pucsorg().isEqualTo({4, 5, 6}));
    EXPECT_TRUE(saveDrawing(*database) == saved);
    // Back on the paper.
    EXPECT_EQ(database->setCurrentViewport(ZvDbObjectId()), Zv::eOk);
    const ZvDbDatabasePtr again = readDrawing(saveDrawing(*database));
    EXPECT_EQ(again->currentSpaceId(), again->paperSpaceId());
    EXPECT_NE(again->currentViewportId().handle(), handle);
    ZvResBuf number;
    EXPECT_EQ(again->getVariable("CVPORT", number), Zv::eOk);
    EXPECT_EQ(number.number(), 1.0);
    ASSERT_TRUE(database->undo());
    EXPECT_TRUE(saveDrawing(*database) == saved);
}

TEST(Viewports, workInModelSpaceLeavesTheLayoutsAlone)
{
    const ZvDbDatabasePtr database = readDrawing(saveDrawing(*drawingInAViewport()));
    database->setTilemode(true);
    const std::string before = saveDrawing(*database);
    const ZvDbDatabasePtr again = readDrawing(before);
    EXPECT_TRUE(again->tilemode());
    again->setTilemode(false);
    EXPECT_EQ(again->currentSpaceId(), again->paperSpaceId()) << "a layout is entered on its paper";
}

TEST(Viewports, aLayoutThatNamesWhatIsNoneIsLeftAsItIs)
{
    std::string bytes = saveDrawing(*drawingInAViewport());
    // The last viewport of the paper's layout becomes a layer.
    const std::size_t at = bytes.rfind("\n331\n");
    ASSERT_NE(at, std::string::npos);
    const std::size_t end = bytes.find('\n', at + 5);
    const ZvDbDatabasePtr made = readDrawing(bytes);
    char handle[32];
    std::snprintf(handle, sizeof handle, "%llX", (unsigned long long)made->layerZero().handle());
    bytes.replace(at + 5, end - at - 5, handle);
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    EXPECT_EQ(database->currentSpaceId(), database->paperSpaceId());
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

// ---- records that belong to an entity

namespace {

/// A polyline of old, the second vertex of which has a colour of its own, and a reference with an attribute.
std::string drawingWithSubentities(const char *version)
{
    return text(
        {{0, "SECTION"},    {2, "HEADER"},     {9, "$ACADVER"},   {1, version},   {0, "ENDSEC"},  {0, "SECTION"},
         {2, "TABLES"},     {0, "TABLE"},      {2, "LAYER"},      {70, "3"},      {0, "LAYER"},   {2, "0"},
         {70, "0"},         {62, "7"},         {6, "CONTINUOUS"}, {0, "LAYER"},   {2, "Walls"},   {70, "0"},
         {62, "7"},         {6, "CONTINUOUS"}, {0, "LAYER"},      {2, "Doors"},   {70, "0"},      {62, "7"},
         {6, "CONTINUOUS"}, {0, "ENDTAB"},     {0, "ENDSEC"},     {0, "SECTION"}, {2, "BLOCKS"},  {0, "BLOCK"},
         {8, "Walls"},      {2, "Door"},       {70, "2"},         {10, "0.0"},    {20, "0.0"},    {30, "0.0"},
         {3, "Door"},       {0, "ENDBLK"},     {8, "Walls"},      {0, "ENDSEC"},  {0, "SECTION"}, {2, "ENTITIES"},
         {0, "POLYLINE"},   {8, "Walls"},      {62, "1"},         {66, "1"},      {10, "0.0"},    {20, "0.0"},
         {30, "0.0"},       {0, "VERTEX"},     {8, "Walls"},      {62, "1"},      {10, "1.0"},    {20, "0.0"},
         {30, "0.0"},       {0, "VERTEX"},     {8, "Walls"},      {62, "5"},      {10, "2.0"},    {20, "0.0"},
         {30, "0.0"},       {0, "SEQEND"},     {8, "Walls"},      {62, "1"},      {0, "INSERT"},  {8, "Walls"},
         {66, "1"},         {2, "Door"},       {10, "0.0"},       {20, "0.0"},    {30, "0.0"},    {0, "ATTRIB"},
         {8, "Doors"},      {10, "0.0"},       {20, "0.0"},       {30, "0.0"},    {40, "2.5"},    {1, "D1"},
         {2, "MARK"},       {70, "0"},         {0, "SEQEND"},     {8, "Walls"},   {0, "ENDSEC"},  {0, "EOF"}});
}

ZvDbObjectId firstOf(ZvDbDatabase &database, const ZvRxClass *cls)
{
    for (const ZvDbObjectId id : entitiesOf(database.modelSpaceId())) {
        if (id.objectClass()->isDerivedFrom(cls))
            return id;
    }
    return ZvDbObjectId();
}

} // namespace

TEST(Subentities, followThePropertyThatChanged)
{
    const std::string bytes = drawingWithSubentities("AC1009");
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    ASSERT_TRUE(change<ZvDbEntity>(firstOf(*database, ZvDb2dPolyline::desc()),
                                   [](ZvDbEntity &entity) { entity.setLayer(L"Doors", true, false); }));
    // Polyline, both vertices, their end; the colour of the second vertex stays its own.
    EXPECT_EQ(describe(difference(bytes, saveDrawing(*database))),
              "- 8 Walls\n- 8 Walls\n- 8 Walls\n- 8 Walls\n+ 8 Doors\n+ 8 Doors\n+ 8 Doors\n+ 8 Doors\n");
    ASSERT_TRUE(database->undo());
    EXPECT_TRUE(saveDrawing(*database) == bytes);
    ASSERT_TRUE(change<ZvDbEntity>(firstOf(*database, ZvDb2dPolyline::desc()),
                                   [](ZvDbEntity &entity) { entity.setColor(index(3), true); }));
    EXPECT_EQ(describe(difference(bytes, saveDrawing(*database))),
              "- 62 1\n- 62 1\n- 62 5\n- 62 1\n+ 62 3\n+ 62 3\n+ 62 3\n+ 62 3\n");
}

TEST(Subentities, stayAsTheyAreWhenTheShapeChanges)
{
    const std::string bytes = drawingWithSubentities("AC1009");
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(change<ZvDbEntity>(firstOf(*database, ZvDb2dPolyline::desc()), [](ZvDbEntity &entity) {
        entity.transformBy(ZvGeMatrix3d::translation(ZvGeVector3d(64, 0, 0)));
    }));
    const TagDifference found = difference(bytes, saveDrawing(*database));
    EXPECT_TRUE(std::all_of(found.removed.begin(), found.removed.end(), [](const FileTag &tag) {
        return tag.code == 10;
    })) << describe(found);
}

TEST(Subentities, theEndBehindAttributesFollowsTheReference)
{
    const std::string bytes = drawingWithSubentities("AC1009");
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(change<ZvDbEntity>(firstOf(*database, ZvDbBlockReference::desc()),
                                   [](ZvDbEntity &entity) { entity.setLayer(L"Doors", false, false); }));
    EXPECT_EQ(describe(difference(bytes, saveDrawing(*database))), "- 8 Walls\n- 8 Walls\n+ 8 Doors\n+ 8 Doors\n");
}

TEST(Subentities, knowTheNewNameOfALayer)
{
    const std::string bytes = drawingWithSubentities("AC1009");
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(change<ZvDbLayerTableRecord>(recordOf<ZvDbLayerTable>(*database, L"Walls"),
                                             [](ZvDbLayerTableRecord &layer) { layer.setName(L"W\u00e4nde"); }));
    const std::string saved = saveDrawing(*database);
    EXPECT_EQ(saved.find("Walls"), std::string::npos) << describe(difference(bytes, saved));
    ZvDbFileReport report;
    ASSERT_TRUE(readDrawing(saved, &report).get());
    for (const ZvDbFileReport::Warning &warning : report.warnings)
        EXPECT_LT(warning.text.find(L"the layer was made"), 0);
    ASSERT_TRUE(database->undo());
    EXPECT_TRUE(saveDrawing(*database) == bytes);
}

// ---- extended data

namespace {

std::string drawingWithData()
{
    return head()
        + text({{0, "SECTION"},
                {2, "TABLES"},
                {0, "TABLE"},
                {2, "STYLE"},
                {5, "3"},
                {330, "0"},
                {100, "AcDbSymbolTable"},
                {70, "1"},
                {0, "STYLE"},
                {5, "11"},
                {330, "3"},
                {100, "AcDbSymbolTableRecord"},
                {100, "AcDbTextStyleTableRecord"},
                {2, "Standard"},
                {70, "0"},
                {40, "0.0"},
                {41, "1.0"},
                {50, "0.0"},
                {71, "0"},
                {42, "2.5"},
                {3, "arial.ttf"},
                {4, ""},
                {1001, "ACAD"},
                {1000, "Arial"},
                {1071, "     34"},
                {1001, "OTHERS"},
                {1002, "{"},
                {1040, "1.50"},
                {1010, "1.00"},
                {1020, "2.0"},
                {1030, "3.000"},
                {1070, "     7"},
                {1005, "0A"},
                {1004, "00ff"},
                {1002, "}"},
                {0, "ENDTAB"},
                {0, "ENDSEC"}})
        + text({{0, "SECTION"}, {2, "ENTITIES"}, {0, "ENDSEC"}, {0, "EOF"}});
}

} // namespace

TEST(ExtendedData, aFontChangesItsOwnTagsOnly)
{
    const std::string bytes = drawingWithData();
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(database.get());
    const ZvDbObjectId style = database->textstyle();
    ASSERT_TRUE(change<ZvDbTextStyleTableRecord>(style, [](ZvDbTextStyleTableRecord &record) {
        EXPECT_EQ(record.typeface().toStdString(), "Arial");
        EXPECT_EQ(record.setFont(L"Liberation Sans", false, false), Zv::eOk);
    }));
    const std::string saved = saveDrawing(*database);
    const std::size_t others = bytes.find("1001\nOTHERS");
    EXPECT_NE(saved.find(bytes.substr(others, bytes.find("0\nENDTAB") - others)), std::string::npos)
        << "byte for byte:\n"
        << saved;
    EXPECT_EQ(saved.find("Arial"), std::string::npos);
    const ZvDbDatabasePtr again = readDrawing(saved);
    ZvDbObjectPointer<ZvDbTextStyleTableRecord> record(again->textstyle(), ZvDb::kForRead);
    EXPECT_EQ(record->typeface().toStdString(), "Liberation Sans");
    EXPECT_FALSE(record->isBold());
}

TEST(ExtendedData, theSameDataAgainIsNoChange)
{
    const std::string bytes = drawingWithData();
    const ZvDbDatabasePtr database = readDrawing(bytes);
    ASSERT_TRUE(change<ZvDbTextStyleTableRecord>(database->textstyle(), [](ZvDbTextStyleTableRecord &record) {
        ZvResBuf *chain = record.xData(L"OTHERS");
        EXPECT_EQ(record.setXData(chain), Zv::eOk);
        zvutRelRb(chain);
    }));
    const std::string saved = saveDrawing(*database);
    EXPECT_NE(saved.find("1.50\n"), std::string::npos);
    EXPECT_NE(saved.find("3.000\n"), std::string::npos);
}

TEST(ExtendedDictionaries, areGivenToAnyObject)
{
    const ZvDbDatabasePtr database = readDrawing(drawingWithStates());
    ZvDbObjectId extension;
    ASSERT_TRUE(change<ZvDbLayerTableRecord>(database->layerZero(), [&](ZvDbLayerTableRecord &layer) {
        EXPECT_EQ(layer.createExtensionDictionary(extension), Zv::eOk);
        ZvDbObjectId same;
        EXPECT_EQ(layer.createExtensionDictionary(same), Zv::eOk);
        EXPECT_EQ(same, extension);
    }));
    addEntry<ZvDbDictionaryVar>(extension, L"NOTE");
    const ZvDbDatabasePtr again = readDrawing(saveDrawing(*database));
    ZvDbObjectPointer<ZvDbLayerTableRecord> layer(again->layerZero(), ZvDb::kForRead);
    EXPECT_TRUE(entryOf(layer->extensionDictionary(), L"NOTE").isValid());
    EXPECT_EQ(layer->createExtensionDictionary(extension), Zv::eOk) << "it has one";
    ZvDbLayerTableRecord alone;
    EXPECT_EQ(alone.createExtensionDictionary(extension), Zv::eNoDatabase);
    EXPECT_TRUE(extension.isNull());
}
