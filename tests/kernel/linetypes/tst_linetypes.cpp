// SPDX-License-Identifier: MIT
#include "db_testing.h"
#include "file_support.h"

#include "db/zvdblinetypes.h"

using namespace db_testing;

namespace {

typedef ZvDbLinetypeDefinition::Element Element;

class Linetypes : public DatabaseTest
{
protected:
    ZvDbLinetypeDefinition definition(const wchar_t *name, const wchar_t *pattern)
    {
        ZvDbLinetypeDefinition made;
        made.name = name;
        made.comments = L"made here";
        ZvString why;
        EXPECT_TRUE(ZvDbLinetypeFile::parsePattern(pattern, made.elements, why)) << why.toStdString();
        return made;
    }
    ZvDbObjectId add(const wchar_t *name, const wchar_t *pattern = L"A,12,-6")
    {
        ZvDbObjectId id;
        EXPECT_EQ(zvdbAddLinetype(db, definition(name, pattern), fromFile, false, id, why), Zv::eOk)
            << why.toStdString();
        return id;
    }
    ZvDbObjectId find(const wchar_t *name)
    {
        const ZvDbObjectPointer<ZvDbLinetypeTable> table(db.linetypeTableId(), ZvDb::kForRead);
        return table->getIdAt(name);
    }
    std::vector<std::string> unused(ZvDbDatabase &of)
    {
        ZvArray<ZvDbObjectId> ids;
        zvdbUnusedLinetypes(of, ids);
        std::vector<std::string> names;
        for (const ZvDbObjectId &id : ids)
            names.push_back(nameOf(id).toStdString());
        return names;
    }
    static ZvString nameOf(ZvDbObjectId id)
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
        return record ? record->name() : ZvString();
    }
    int textStyles()
    {
        const ZvDbObjectPointer<ZvDbTextStyleTable> styles(db.textStyleTableId(), ZvDb::kForRead);
        return styles->count();
    }
    Folder folder;
    const ZvString fromFile{folder.file("types.lin").c_str()};
    ZvString why;
};

} // namespace

TEST_F(Linetypes, addingMakesARecordWithThePattern)
{
    const ZvDbObjectId id = add(L"GAS", L"A,20,-3,[\"G\",STANDARD,S=4,R=0,X=-1.5,Y=-2],-3");
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
    EXPECT_EQ(record->name(), ZvString(L"GAS"));
    EXPECT_EQ(record->comments(), ZvString(L"made here"));
    EXPECT_EQ(record->patternLength(), 26.0);
    ASSERT_EQ(record->numDashes(), 3);
    EXPECT_EQ(record->dashAt(0).flags, 0);
    EXPECT_EQ(record->dashAt(1).flags, 2);
    EXPECT_EQ(record->dashAt(1).text, ZvString(L"G"));
    EXPECT_EQ(record->dashAt(1).scale, 4.0);
    EXPECT_EQ(record->dashAt(1).offsetX, -1.5);
    EXPECT_EQ(record->dashAt(1).offsetY, -2.0);
    EXPECT_FALSE(record->dashAt(1).styleId.isNull());
}

TEST_F(Linetypes, addingIsOneStepOfUndo)
{
    db.beginUndoStep(L"load");
    writeAll(folder.file("rails.shp"), "*130,6,TRACK\n1,2,0\n");
    add(L"RAIL", L"A,1,[TRACK,rails.shx,S=2],1");
    db.endUndoStep();
    EXPECT_TRUE(db.undo());
    EXPECT_TRUE(find(L"RAIL").isNull());
    EXPECT_FALSE(db.canUndo());
    EXPECT_TRUE(db.redo());
    EXPECT_FALSE(find(L"RAIL").isNull());
}

/// The file that line types name most is on few machines.
TEST_F(Linetypes, usualShapesNeedNoFile)
{
    const struct
    {
        const wchar_t *pattern;
        int number;
    } rows[] = {
        {L"A,.15,[TRACK1,ltypeshp.shx,S=.25],.15", 130},   {L"A,.0001,-.2,[zig,LTYPESHP.SHX,X=-.2,S=.2],-.2", 131},
        {L"A,.25,-.1,[BOX,ltypeshp.shx,S=.1],-.1", 132},   {L"A,.25,-.1,[CIRC1,ltypeshp.shx,S=.1],-.1", 133},
        {L"A,.0001,-.1,[BAT,ltypeshp.shx,S=.1],-.1", 134},
    };
    for (const auto &row : rows) {
        const ZvDbObjectId id = add((L"T" + std::to_wstring(row.number)).c_str(), row.pattern);
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
        bool isFound = false;
        for (int i = 0; i < record->numDashes(); ++i)
            isFound = isFound || (record->dashAt(i).flags == 4 && record->dashAt(i).shapeNumber == row.number);
        EXPECT_TRUE(isFound) << row.number;
    }
    // The file itself comes first.
    writeAll(folder.file("ltypeshp.shp"), "*77,3,BOX\n014,01C,0\n");
    const ZvDbObjectId id = add(L"OTHER", L"A,.25,-.1,[BOX,ltypeshp.shx,S=.1],-.1");
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
    EXPECT_EQ(record->dashAt(1).shapeNumber, 77);
}

TEST_F(Linetypes, refusalsChangeNothing)
{
    add(L"HERE");
    db.clearUndo();
    const struct
    {
        const wchar_t *name;
        const wchar_t *pattern;
        bool redefine;
        Zv::ErrorStatus status;
        const wchar_t *why;
    } rows[] = {
        {L"here", L"A,1,-1", false, Zv::eDuplicateKey, L"the drawing has one of that name"},
        {L"Continuous", L"A,1,-1", false, Zv::eDuplicateKey, L"the drawing has one of that name"},
        {L"Continuous", L"A,1,-1", true, Zv::eInvalidInput, L"every drawing has it as it is"},
        {L"BYLAYER", L"A,1,-1", true, Zv::eInvalidInput, L"every drawing has it as it is"},
        {L"X|Y", L"A,1,-1", false, Zv::eInvalidInput, L"not a valid name"},
        {L"*X", L"A,1,-1", false, Zv::eInvalidInput, L"not a valid name"},
        {L"", L"A,1,-1", false, Zv::eInvalidInput, L"not a valid name"},
        {L"NEW", L"A,1,[\"a\",Fancy]", false, Zv::eKeyNotFound, L"the drawing has no text style Fancy"},
        {L"NEW", L"A,1,[WAVE,none.shx]", false, Zv::eKeyNotFound, L"there is no shape WAVE in a file none.shx"},
        {L"NEW", L"A,1,[BOX,none.shx]", false, Zv::eKeyNotFound, L"there is no shape BOX in a file none.shx"},
        {L"NEW", L"A,1,[WAVE,ltypeshp.shx]", false, Zv::eKeyNotFound, L"there is no shape WAVE in a file ltypeshp.shx"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(ZvString(row.name).toStdString());
        ZvDbObjectId id = db.celtype();
        ZvString told;
        EXPECT_EQ(zvdbAddLinetype(db, definition(row.name, row.pattern), fromFile, row.redefine, id, told), row.status);
        EXPECT_EQ(told, ZvString(row.why));
        EXPECT_TRUE(id.isNull());
        EXPECT_FALSE(db.canUndo());
        EXPECT_EQ(db.openObjectCount(), 0);
    }
}

TEST_F(Linetypes, aMissingShapeTakesTheOthersBack)
{
    writeAll(folder.file("rails.shp"), "*130,6,TRACK\n1,2,0\n");
    const int before = textStyles();
    ZvDbObjectId id;
    EXPECT_EQ(zvdbAddLinetype(db, definition(L"RAIL", L"A,1,[TRACK,rails.shx],1,[WAVE,rails.shx],1"), fromFile, false,
                              id, why),
              Zv::eKeyNotFound);
    EXPECT_FALSE(db.canUndo());
    EXPECT_EQ(textStyles(), before);
}

TEST_F(Linetypes, shapesByNameFromCompiledAndSourceFiles)
{
    const std::string compiled("shapes 1.0\r\n\x1A\x82\x00\x84\x00\x02\x00\x82\x00\x08\x00\x84\x00\x07\x00"
                               "TRACK\0\x01\x00WAVE\0\x02\x00",
                               13 + 6 + 8 + 8 + 7);
    writeAll(folder.file("rails.shx"), compiled);
    writeAll(folder.file("marks.shp"), ";; marks\r\n*7,5,CROSS\r\n1,2,3,4,0\r\n*12 , 3 , Tee\r\n1,2,0\r\n");
    const ZvDbObjectId id = add(L"MIXED", L"A,1,[wave,rails.shx,S=2],1,[TRACK,rails.shx],1,[TEE,marks.shx],1");
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
    EXPECT_EQ(record->dashAt(0).shapeNumber, 0x84);
    EXPECT_EQ(record->dashAt(1).shapeNumber, 0x82);
    EXPECT_EQ(record->dashAt(2).shapeNumber, 12);
    EXPECT_EQ(record->dashAt(0).flags, 4);
    EXPECT_EQ(record->dashAt(0).styleId, record->dashAt(1).styleId);
    EXPECT_NE(record->dashAt(0).styleId, record->dashAt(2).styleId);
    const ZvDbObjectPointer<ZvDbTextStyleTableRecord> file(record->dashAt(0).styleId, ZvDb::kForRead);
    EXPECT_TRUE(file->isShapeFile());
    EXPECT_EQ(file->fontFileName(), ZvString(L"rails.shx"));
    EXPECT_TRUE(file->name().isEmpty());
}

TEST_F(Linetypes, brokenShapeFilesHaveNoShape)
{
    for (const std::string &bytes : {std::string(), std::string("x\x1A", 2),
                                     std::string("x\x1A\0\0\0\0\xFF\xFF\x01\0", 10), std::string("*x,1,TRACK\n*3")}) {
        writeAll(folder.file("rails.shx"), bytes);
        ZvDbObjectId id;
        EXPECT_EQ(zvdbAddLinetype(db, definition(L"RAIL", L"A,1,[TRACK,rails.shx],1"), fromFile, false, id, why),
                  Zv::eKeyNotFound);
    }
}

TEST_F(Linetypes, redefiningKeepsTheRecord)
{
    const ZvDbObjectId id = add(L"DASHED", L"A,1,-1");
    ZvDbObjectId again;
    ASSERT_EQ(zvdbAddLinetype(db, definition(L"dashed", L"A,5,-2"), "", true, again, why), Zv::eOk);
    EXPECT_EQ(again, id);
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
    EXPECT_EQ(record->name(), ZvString(L"DASHED"));
    EXPECT_EQ(record->patternLength(), 7.0);
}

TEST_F(Linetypes, savedAndReadBack)
{
    writeAll(folder.file("rails.shp"), "*130,6,TRACK\n");
    add(L"RAIL", L"A,1.5,[TRACK,rails.shx,S=2,A=90,Y=.5],-1.5");
    add(L"GAS", L"A,20,-3,[\"气\",STANDARD,S=4],-3");
    const ZvDbDatabasePtr reread = readDrawing(saveDrawing(db));
    ASSERT_TRUE(reread);
    const ZvDbObjectPointer<ZvDbLinetypeTable> table(reread->linetypeTableId(), ZvDb::kForRead);
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> gas(table->getIdAt(L"gas"), ZvDb::kForRead);
    ASSERT_TRUE(bool(gas));
    EXPECT_EQ(gas->comments(), ZvString(L"made here"));
    EXPECT_EQ(gas->patternLength(), 26.0);
    EXPECT_EQ(gas->dashAt(1).text, ZvString(L"气"));
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> rail(table->getIdAt(L"RAIL"), ZvDb::kForRead);
    ASSERT_TRUE(bool(rail));
    EXPECT_EQ(rail->dashAt(0).flags, 5);
    EXPECT_EQ(rail->dashAt(0).shapeNumber, 130);
    EXPECT_NEAR(rail->dashAt(0).rotation, 1.5707963267948966, 1e-12);
    const ZvDbObjectPointer<ZvDbTextStyleTableRecord> shapes(rail->dashAt(0).styleId, ZvDb::kForRead);
    ASSERT_TRUE(bool(shapes));
    EXPECT_TRUE(shapes->isShapeFile());
    EXPECT_EQ(shapes->fontFileName(), ZvString(L"rails.shx"));
}

TEST_F(Linetypes, renaming)
{
    const ZvDbObjectId dashed = add(L"DASHED");
    add(L"OTHER");
    const ZvDbObjectId gone = add(L"GONE");
    erase(gone);
    const struct
    {
        const char *what;
        ZvDbObjectId id;
        const wchar_t *name;
        Zv::ErrorStatus status;
    } rows[] = {
        {"a new name", dashed, L"墙 line", Zv::eOk},
        {"its own name in other case", dashed, L"墙 LINE", Zv::eOk},
        {"a name in use", dashed, L"other", Zv::eDuplicateKey},
        {"a name that every drawing has", dashed, L"bylayer", Zv::eDuplicateKey},
        {"no name", dashed, L"", Zv::eInvalidInput},
        {"a star", dashed, L"a*b", Zv::eInvalidInput},
        {"a bar", dashed, L"a|b", Zv::eInvalidInput},
        {"the name of an erased one", dashed, L"GONE", Zv::eOk},
        {"ByLayer", db.byLayerLinetype(), L"X", Zv::eInvalidInput},
        {"ByBlock", db.byBlockLinetype(), L"X", Zv::eInvalidInput},
        {"Continuous", db.continuousLinetype(), L"X", Zv::eInvalidInput},
        {"an erased record", gone, L"X", Zv::eWasErased},
        {"no record", ZvDbObjectId(), L"X", Zv::eNullObjectId},
        {"a layer", db.layerZero(), L"X", Zv::eNotThatKindOfClass},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.what);
        const ZvString before = nameOf(row.id);
        EXPECT_EQ(zvdbRenameLinetype(row.id, row.name), row.status);
        EXPECT_EQ(nameOf(row.id), row.status == Zv::eOk ? ZvString(row.name) : before);
        EXPECT_EQ(db.openObjectCount(), 0);
    }
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> held(dashed, ZvDb::kForRead);
    EXPECT_EQ(zvdbRenameLinetype(dashed, L"X"), Zv::eWasOpenForRead);
}

TEST_F(Linetypes, renamingReachesTheDimensionVariables)
{
    const ZvDbObjectId dashed = add(L"DASHED");
    ZvResBuf value;
    value.restype = ZvRes::kText;
    std::wstring text = L"dashed";
    value.resval.rstring = text.data();
    ASSERT_EQ(db.setVariable(L"DIMLTEX1", value), Zv::eOk);
    EXPECT_EQ(unused(db), std::vector<std::string>());
    ASSERT_EQ(zvdbRenameLinetype(dashed, L"NEW"), Zv::eOk);
    ZvResBuf *now = zvutNewRb(ZvRes::kNone);
    EXPECT_EQ(db.getVariable(L"DIMLTEX1", *now), Zv::eOk);
    EXPECT_EQ(now->text(), ZvString(L"NEW"));
    zvutRelRb(now);
    EXPECT_EQ(unused(db), std::vector<std::string>());
}

TEST_F(Linetypes, usersOfALineType)
{
    const ZvDbObjectId byEntity = add(L"BYENTITY");
    const ZvDbObjectId byLayer = add(L"BYALAYER");
    const ZvDbObjectId byStyle = add(L"BYSTYLE");
    const ZvDbObjectId current = add(L"CURRENT");
    add(L"FREE");
    EXPECT_EQ(unused(db), (std::vector<std::string>{"BYENTITY", "BYALAYER", "BYSTYLE", "CURRENT", "FREE"}));
    const ZvDbObjectId line = addLine(db);
    edit<ZvDbEntity>(line, [&](ZvDbEntity &entity) { entity.setLinetype(byEntity, true); });
    const ZvDbObjectId layer = addLayer(db, L"walls");
    edit<ZvDbLayerTableRecord>(layer, [&](ZvDbLayerTableRecord &record) { record.setLinetypeObjectId(byLayer); });
    edit<ZvDbDimStyleTableRecord>(db.dimstyle(),
                                  [&](ZvDbDimStyleTableRecord &style) { style.setIdValue("DIMLTEX2", byStyle); });
    db.setCeltype(current);
    EXPECT_EQ(unused(db), std::vector<std::string>{"FREE"});
    for (const ZvDbObjectId &id : {byEntity, byLayer, byStyle, current})
        EXPECT_EQ(zvdbEraseLinetype(id), Zv::eObjectReferenced);

    // An erased user is none, until it comes back.
    erase(line);
    erase(layer);
    EXPECT_EQ(unused(db), (std::vector<std::string>{"BYENTITY", "BYALAYER", "FREE"}));
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(unused(db), (std::vector<std::string>{"BYENTITY", "FREE"}));
}

TEST_F(Linetypes, erasing)
{
    const ZvDbObjectId id = add(L"FREE");
    db.clearUndo();
    EXPECT_EQ(zvdbEraseLinetype(id), Zv::eOk);
    EXPECT_TRUE(find(L"FREE").isNull());
    EXPECT_EQ(zvdbEraseLinetype(id), Zv::eWasErased);
    EXPECT_TRUE(db.undo());
    EXPECT_EQ(find(L"FREE"), id);
    for (const ZvDbObjectId &fixed : {db.byLayerLinetype(), db.byBlockLinetype(), db.continuousLinetype()})
        EXPECT_EQ(zvdbEraseLinetype(fixed), Zv::eInvalidInput);
    const ZvDbObjectPointer<ZvDbLinetypeTableRecord> held(id, ZvDb::kForRead);
    EXPECT_EQ(zvdbEraseLinetype(id), Zv::eWasOpenForRead);
}

TEST_F(Linetypes, whatOnlyTheFileKnowsOfIsInUse)
{
    // References of records that no class reads: a multiline style by name, another object by handle.
    add(L"BYNAME");
    add(L"BYHANDLE");
    add(L"FREE");
    std::string bytes = saveDrawing(db);
    const std::string objects = "  0\nENDSEC\n  0\nEOF\n";
    const std::size_t at = bytes.rfind(objects);
    ASSERT_NE(at, std::string::npos);
    char handle[32];
    std::snprintf(handle, sizeof handle, "%llX", static_cast<unsigned long long>(find(L"BYHANDLE").handle()));
    bytes.insert(at,
                 "  0\nMLINESTYLE\n  5\nF001\n330\n0\n100\nAcDbMlineStyle\n  2\nTWO\n 71\n1\n 49\n0.5\n  6\nBYNAME\n"
                 "  0\nSOMETHING\n  5\nF002\n330\n0\n100\nSomething\n340\n"
                     + std::string(handle) + "\n");
    const ZvDbDatabasePtr reread = readDrawing(bytes);
    ASSERT_TRUE(reread);
    EXPECT_EQ(unused(*reread), std::vector<std::string>{"FREE"});
}

TEST_F(Linetypes, thoseOfAnExternalReferenceStay)
{
    add(L"HOUSE");
    std::string bytes = saveDrawing(db);
    const std::size_t name = bytes.find("HOUSE");
    ASSERT_NE(name, std::string::npos);
    bytes.replace(name, 5, "H|LINE");
    const std::size_t flags = bytes.find(" 70\n", name);
    const std::size_t value = flags + 4;
    bytes.replace(value, bytes.find('\n', value) - value, "48");
    const ZvDbDatabasePtr reread = readDrawing(bytes);
    ASSERT_TRUE(reread);
    ZvDbObjectId id;
    {
        const ZvDbObjectPointer<ZvDbLinetypeTable> table(reread->linetypeTableId(), ZvDb::kForRead);
        id = table->getIdAt(L"H|LINE");
    }
    ASSERT_FALSE(id.isNull());
    EXPECT_EQ(unused(*reread), std::vector<std::string>());
    EXPECT_EQ(zvdbEraseLinetype(id), Zv::eInvalidInput);
    EXPECT_EQ(zvdbRenameLinetype(id, L"X"), Zv::eInvalidInput);
}
