// SPDX-License-Identifier: MIT
#include "db_testing.h"

#include "base/zvregistry.h"
#include "db/zvdbhostservice.h"

#include <cstdio>
#include <set>

using namespace db_testing;

namespace {

class Settings : public DatabaseTest
{
protected:
    Settings() { db.addReactor(&listener); }
    ~Settings() override { db.removeReactor(&listener); }
    void SetUp() override { listener.take(); }

    /// What a setter tells, and that it tells nothing when it is called again.
    template <class F> Events toldBy(F set)
    {
        listener.take();
        EXPECT_EQ(set(), Zv::eOk);
        const Events events = listener.take();
        EXPECT_EQ(set(), Zv::eOk);
        EXPECT_TRUE(listener.take().empty()) << "an equal value is no change";
        return events;
    }

    std::string text(const wchar_t *name)
    {
        ZvResBuf value;
        if (db.getVariable(name, value) != Zv::eOk)
            return "none";
        const std::string result = value.text().toStdString();
        if (value.restype == ZvRes::kText)
            zvutDelString(value.resval.rstring);
        return result;
    }

    Zv::ErrorStatus setText(const wchar_t *name, const wchar_t *text)
    {
        ZvString copy(text);
        ZvResBuf value;
        value.restype = ZvRes::kText;
        value.resval.rstring = const_cast<wchar_t *>(copy.wstr());
        return db.setVariable(name, value);
    }

    Zv::ErrorStatus setReal(const wchar_t *name, double number)
    {
        ZvResBuf value;
        value.restype = ZvRes::kReal;
        value.resval.rreal = number;
        return db.setVariable(name, value);
    }

    Listener listener;
    ZvDbObjectId layer = addLayer(db, L"Walls");
};

} // namespace

TEST_F(Settings, settersTellTheirVariableWhenTheValueDiffers)
{
    EXPECT_EQ(toldBy([&] { return db.setCecolor(index(3)); }), Events{"variable CECOLOR"});
    EXPECT_EQ(toldBy([&] { return db.setClayer(layer); }), Events{"variable CLAYER"});
    EXPECT_EQ(toldBy([&] { return db.setCeltype(db.continuousLinetype()); }), Events{"variable CELTYPE"});
    EXPECT_EQ(toldBy([&] { return db.setCelweight(ZvDb::kLnWt050); }), Events{"variable CELWEIGHT"});
    EXPECT_EQ(toldBy([&] { return db.setCeltscale(2.0); }), Events{"variable CELTSCALE"});
    EXPECT_EQ(toldBy([&] { return db.setLtscale(10.0); }), Events{"variable LTSCALE"});
    EXPECT_EQ(toldBy([&] { return db.setLineWeightDisplay(true); }), Events{"variable LWDISPLAY"});
    EXPECT_EQ(toldBy([&] { return db.setCplotstyle(L"ByBlock"); }), Events{"variable CPLOTSTYLE"});
    EXPECT_EQ(toldBy([&] { return db.setCplotstyle(L"Normal"); }), Events{"variable CPLOTSTYLE"});
    EXPECT_EQ(db.cecolor(), index(3));
    EXPECT_EQ(db.clayer(), layer);
    EXPECT_EQ(db.celtype(), db.continuousLinetype());
    EXPECT_EQ(db.celweight(), ZvDb::kLnWt050);
    EXPECT_EQ(db.celtscale(), 2.0);
    EXPECT_EQ(db.ltscale(), 10.0);
    EXPECT_TRUE(db.lineWeightDisplay());
    EXPECT_EQ(db.cplotstyle(), L"Normal");
}

TEST_F(Settings, stylesTellTheirVariables)
{
    ZvDbObjectPointer<ZvDbTextStyleTable> styles(db.textStyleTableId(), ZvDb::kForRead);
    const ZvDbObjectId annotative = styles->getIdAt(L"Annotative");
    styles.close();
    ZvDbObjectPointer<ZvDbDimStyleTable> dimensions(db.dimStyleTableId(), ZvDb::kForRead);
    const ZvDbObjectId standard = dimensions->getIdAt(L"Standard");
    dimensions.close();
    ZvDbObjectPointer<ZvDbDictionary> materials(db.materialDictionaryId(), ZvDb::kForRead);
    const ZvDbObjectId global = materials->getIdAt(L"Global");
    materials.close();
    EXPECT_EQ(toldBy([&] { return db.setTextstyle(annotative); }), Events{"variable TEXTSTYLE"});
    EXPECT_EQ(toldBy([&] { return db.setDimstyle(standard); }), Events{"variable DIMSTYLE"});
    EXPECT_EQ(toldBy([&] { return db.setCmaterial(global); }), Events{"variable CMATERIAL"});

    ZvDbObjectId other;
    edit<ZvDbDictionary>(db.mleaderStyleDictionaryId(), [&](ZvDbDictionary &dictionary) {
        ZvDbMLeaderStyle *style = new ZvDbMLeaderStyle;
        dictionary.setAt(L"Notes", style, other);
        style->close();
    });
    EXPECT_EQ(toldBy([&] { return db.setMleaderstyle(other); }), Events{"variable CMLEADERSTYLE"});
    EXPECT_EQ(db.mleaderstyle(), other);
    edit<ZvDbDictionary>(db.tableStyleDictionaryId(), [&](ZvDbDictionary &dictionary) {
        ZvDbTableStyle *style = new ZvDbTableStyle;
        dictionary.setAt(L"Lists", style, other);
        style->close();
    });
    EXPECT_EQ(toldBy([&] { return db.setTablestyle(other); }), Events{"variable CTABLESTYLE"});
}

TEST_F(Settings, invalidErasedAndForeignIdsAreRefused)
{
    const ZvDbDatabasePtr other = ZvDbDatabase::create();
    const ZvDbObjectId foreign = addLayer(*other, L"Elsewhere");
    const ZvDbObjectId erased = addLayer(db, L"Erased");
    erase(erased);
    listener.take();
    for (ZvDbObjectId id : {foreign, erased, db.continuousLinetype(), ZvDbObjectId::fromInt64(12345)})
        EXPECT_EQ(db.setClayer(id), Zv::eInvalidInput);
    EXPECT_EQ(db.setClayer(ZvDbObjectId()), Zv::eNullObjectId);
    EXPECT_EQ(db.setCeltype(layer), Zv::eInvalidInput);
    EXPECT_EQ(db.setTextstyle(layer), Zv::eInvalidInput);
    EXPECT_EQ(db.setDimstyle(layer), Zv::eInvalidInput);
    EXPECT_EQ(db.setDimstyleData(layer), Zv::eInvalidInput);
    EXPECT_EQ(db.setCmaterial(layer), Zv::eInvalidInput);
    EXPECT_EQ(db.setMleaderstyle(layer), Zv::eInvalidInput);
    EXPECT_EQ(db.setTablestyle(db.mleaderstyle()), Zv::eInvalidInput);
    EXPECT_EQ(db.setCplotstyle(L"No such"), Zv::eKeyNotFound);
    EXPECT_EQ(db.setCeltscale(0.0), Zv::eInvalidInput);
    EXPECT_EQ(db.setLtscale(-1.0), Zv::eInvalidInput);
    EXPECT_TRUE(listener.events.empty());
    EXPECT_EQ(db.clayer(), db.layerZero());
}

TEST_F(Settings, aFrozenLayerMayBeMadeCurrent)
{
    edit<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsFrozen(true); });
    EXPECT_EQ(db.setClayer(layer), Zv::eOk);
}

TEST_F(Settings, theDataOfADimensionStyleBecomesTheDrawings)
{
    ZvDbObjectPointer<ZvDbDimStyleTableRecord> style(db.dimstyle(), ZvDb::kForWrite);
    style->setReal("DIMSCALE", 50.0);
    style->setInteger("DIMDEC", 1);
    style->setTextValue("DIMPOST", L"<> mm");
    style.close();
    listener.take();
    db.clearUndo();
    EXPECT_EQ(db.setDimstyleData(db.dimstyle()), Zv::eOk);
    const Events events = listener.take();
    EXPECT_EQ(std::set<std::string>(events.begin(), events.end()),
              (std::set<std::string>{"variable DIMSCALE", "variable DIMDEC", "variable DIMPOST"}));
    ZvResBuf value;
    EXPECT_EQ(db.getVariable(L"DIMSCALE", value), Zv::eOk);
    EXPECT_EQ(value.number(), 50.0);
    EXPECT_EQ(text(L"DIMPOST"), "<> mm");
    EXPECT_TRUE(db.undo());
    EXPECT_FALSE(db.canUndo()) << "one step";
    EXPECT_EQ(text(L"DIMPOST"), "");
}

// ---- by name

TEST_F(Settings, everyNameAnswers)
{
    ZvArray<ZvString> names;
    db.variableNames(names);
    EXPECT_GT(names.length(), 200);
    std::set<std::string> different;
    for (const ZvString &name : names) {
        different.insert(name.toStdString());
        ZvResBuf value;
        EXPECT_EQ(db.getVariable(name.toLower(), value), Zv::eOk) << name.toStdString();
        EXPECT_NE(value.restype, int(ZvRes::kNone)) << name.toStdString();
        if (value.restype == ZvRes::kText)
            zvutDelString(value.resval.rstring);
    }
    EXPECT_EQ(int(different.size()), names.length());
    ZvResBuf value;
    EXPECT_EQ(db.getVariable(L"NOSUCH", value), Zv::eKeyNotFound);
    EXPECT_EQ(db.setVariable(L"NOSUCH", value), Zv::eKeyNotFound);
}

TEST_F(Settings, typesAreTheOnesThatCallersReadThemBy)
{
    const struct
    {
        const wchar_t *name;
        int type;
    } rows[] = {
        {L"PSTYLEMODE", ZvRes::kShort},  {L"CPLOTSTYLE", ZvRes::kText},    {L"CTABLESTYLE", ZvRes::kObjectId},
        {L"UCSORTHOVIEW", ZvRes::kLong}, {L"PUCSORTHOVIEW", ZvRes::kLong}, {L"CMLEADERSTYLE", ZvRes::kObjectId},
        {L"LTSCALE", ZvRes::kReal},      {L"LIMMIN", ZvRes::kPoint2d},     {L"INSBASE", ZvRes::kPoint3d},
        {L"CLAYER", ZvRes::kText},       {L"CECOLOR", ZvRes::kText},       {L"TILEMODE", ZvRes::kShort},
        {L"CTAB", ZvRes::kText},         {L"CELWEIGHT", ZvRes::kShort},
    };
    for (const auto &row : rows) {
        ZvResBuf value;
        ASSERT_EQ(db.getVariable(row.name, value), Zv::eOk);
        EXPECT_EQ(value.restype, row.type) << ZvString(row.name).toStdString();
        if (value.restype == ZvRes::kText)
            zvutDelString(value.resval.rstring);
    }
}

TEST_F(Settings, namesStandForIds)
{
    EXPECT_EQ(setText(L"clayer", L"WALLS"), Zv::eOk);
    EXPECT_EQ(db.clayer(), layer);
    EXPECT_EQ(text(L"CLAYER"), "Walls");
    EXPECT_EQ(listener.take(), Events{"variable CLAYER"});
    EXPECT_EQ(setText(L"CLAYER", L"No such"), Zv::eNullObjectId);
    ZvResBuf id;
    id.setObjectId(db.layerZero());
    EXPECT_EQ(db.setVariable(L"CLAYER", id), Zv::eOk);
    EXPECT_EQ(db.clayer(), db.layerZero());
    EXPECT_EQ(setText(L"CTABLESTYLE", L"standard"), Zv::eOk);
}

TEST_F(Settings, coloursInWords)
{
    const struct
    {
        const wchar_t *given;
        const char *kept;
    } rows[] = {{L"3", "3"},         {L"ByBlock", "BYBLOCK"}, {L"rgb:1,2,250", "RGB:1,2,250"},
                {L"256", "BYLAYER"}, {L"0", "BYBLOCK"},       {L"BYLAYER", "BYLAYER"}};
    for (const auto &row : rows) {
        EXPECT_EQ(setText(L"CECOLOR", row.given), Zv::eOk);
        EXPECT_EQ(text(L"CECOLOR"), row.kept);
    }
    for (const wchar_t *bad : {L"257", L"-1", L"red", L"", L"RGB:1,2", L"RGB:1,2,256", L"3x"})
        EXPECT_EQ(setText(L"CECOLOR", bad), Zv::eInvalidInput);
    EXPECT_EQ(text(L"CECOLOR"), "BYLAYER");
}

TEST_F(Settings, valuesOfAWrongKindAreRefused)
{
    EXPECT_EQ(setReal(L"LUPREC", 3.0), Zv::eOk) << "numbers convert";
    EXPECT_EQ(setReal(L"LUPREC", 3.5), Zv::eInvalidInput);
    EXPECT_EQ(setReal(L"LUPREC", 1e6), Zv::eInvalidInput);
    EXPECT_EQ(setReal(L"LWDISPLAY", 2.0), Zv::eInvalidInput);
    EXPECT_EQ(setReal(L"LTSCALE", 0.0), Zv::eInvalidInput);
    EXPECT_EQ(setReal(L"TEXTSIZE", 1.0 / 0.0), Zv::eInvalidInput);
    EXPECT_EQ(setText(L"LTSCALE", L"2"), Zv::eInvalidInput);
    EXPECT_EQ(setReal(L"DIMPOST", 2.0), Zv::eInvalidInput);
    EXPECT_EQ(setReal(L"ACADVER", 2.0), Zv::eInvalidInput) << "read only";
    EXPECT_EQ(setReal(L"PSTYLEMODE", 0.0), Zv::eInvalidInput);
    ZvResBuf point;
    point.restype = ZvRes::kPoint3d;
    point.resval.rpoint[0] = 4.0;
    EXPECT_EQ(db.setVariable(L"INSBASE", point), Zv::eOk);
    EXPECT_EQ(db.setVariable(L"LTSCALE", point), Zv::eInvalidInput);
}

TEST_F(Settings, theStylesThatDrawingsKeepInADictionaryAreSavedByName)
{
    ZvDbObjectId notes;
    edit<ZvDbDictionary>(db.mleaderStyleDictionaryId(), [&](ZvDbDictionary &dictionary) {
        ZvDbMLeaderStyle *style = new ZvDbMLeaderStyle;
        dictionary.setAt(L"Notes", style, notes);
        style->close();
    });
    db.setMleaderstyle(notes);
    edit<ZvDbMLeaderStyle>(notes, [](ZvDbMLeaderStyle &style) { style.setName(L"Remarks"); });
    listener.take();
    const ZvString undoName = db.undoName();

    const std::string path = testing::TempDir() + "db_settings_styles.dxf";
    ZvDbFileReport report;
    ASSERT_EQ(db.saveAs(path.c_str(), report), Zv::eOk) << report.message.toStdString();
    EXPECT_TRUE(listener.take().empty()) << "saving changes nothing that anybody sees";
    EXPECT_EQ(db.undoName(), undoName);
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    ASSERT_EQ(read->readFile(path.c_str(), report), Zv::eOk) << report.message.toStdString();
    std::remove(path.c_str());
    ZvDbObjectPointer<ZvDbMLeaderStyle> style(read->mleaderstyle(), ZvDb::kForRead);
    ASSERT_TRUE(bool(style));
    EXPECT_EQ(style->name(), L"Remarks");
    EXPECT_TRUE(read->tablestyle().isValid());
}

// ---- the host service

TEST_F(Settings, theHostServiceAnswersUnderItsNumber)
{
    ZvDbHostService *service = zvrxCast<ZvDbHostService>(zvrxGetService(3));
    ASSERT_NE(service, nullptr);
    EXPECT_EQ(service->applicationObject(), service);
    EXPECT_EQ(service->modelSpaceId(&db), db.modelSpaceId());
    EXPECT_EQ(service->paperSpaceId(&db), db.paperSpaceId());
    EXPECT_EQ(service->mleaderStyleDictionaryId(&db), db.mleaderStyleDictionaryId());
    EXPECT_EQ(service->tableStyleDictionaryId(&db), db.tableStyleDictionaryId());
    EXPECT_EQ(service->materialDictionaryId(&db), db.materialDictionaryId());
    EXPECT_EQ(service->plotStyleDictionaryId(&db, true), db.plotStyleDictionaryId());
    EXPECT_TRUE(service->modelSpaceId(nullptr).isNull());
    EXPECT_TRUE(service->tableStyleDictionaryId(nullptr).isNull());

    ZvResBuf *style = service->readVariable(L"CTABLESTYLE", &db);
    ASSERT_NE(style, nullptr);
    EXPECT_EQ(style->getObjectId(&db), db.tablestyle());
    EXPECT_EQ(service->writeVariable(L"CTABLESTYLE", style, &db), Zv::eOk);
    zvutRelRb(style);
    EXPECT_EQ(service->readVariable(L"NOSUCH", &db), nullptr);
    EXPECT_EQ(service->readVariable(L"CTABLESTYLE", nullptr), nullptr);

    service->beginFrame(&db);
    db.setCecolor(index(1));
    service->abortFrame(&db);
    EXPECT_TRUE(db.cecolor().isByLayer());
    service->beginFrame(nullptr);
    service->endFrame(nullptr);
    service->abortFrame(nullptr);
}

TEST_F(Settings, theHostServiceKnowsAnnotativeTextStyles)
{
    ZvDbHostService *service = static_cast<ZvDbHostService *>(zvrxGetService(3));
    ZvDbObjectPointer<ZvDbTextStyleTable> styles(db.textStyleTableId(), ZvDb::kForRead);
    ZvDbObjectPointer<ZvDbTextStyleTableRecord> standard(styles->getIdAt(L"Standard"), ZvDb::kForRead);
    ZvDbObjectPointer<ZvDbTextStyleTableRecord> annotative(styles->getIdAt(L"Annotative"), ZvDb::kForRead);
    EXPECT_FALSE(service->textStyleFirstFlag(standard.get()));
    EXPECT_TRUE(service->textStyleFirstFlag(annotative.get()));
    EXPECT_FALSE(service->textStyleSecondFlag(annotative.get()));
    EXPECT_FALSE(service->textStyleFirstFlag(nullptr));
}

TEST(ResBuf, chainsFreeTheirTexts)
{
    ZvResBuf *first = zvutNewRb(ZvRes::kText);
    EXPECT_EQ(first->text(), ZvString());
    first->resval.rstring = zvutNewString(L"first");
    first->rbnext = zvutNewRb(ZvRes::kReal);
    first->rbnext->resval.rreal = 2.5;
    EXPECT_EQ(first->text(), L"first");
    EXPECT_EQ(first->number(), 0.0);
    EXPECT_EQ(first->rbnext->number(), 2.5);
    EXPECT_TRUE(first->getObjectId().isNull());
    EXPECT_EQ(zvutRelRb(first), int(ZvRes::kNormal));
    EXPECT_EQ(zvutRelRb(nullptr), int(ZvRes::kNormal));
    EXPECT_EQ(zvutNewString(nullptr), nullptr);
}

TEST(ResBuf, idsBelongToADatabase)
{
    const ZvDbDatabasePtr one = ZvDbDatabase::create();
    const ZvDbDatabasePtr other = ZvDbDatabase::create();
    ZvResBuf value;
    value.setObjectId(one->layerZero());
    EXPECT_EQ(value.restype, int(ZvRes::kObjectId));
    EXPECT_EQ(value.getObjectId(), one->layerZero());
    EXPECT_EQ(value.getObjectId(one), one->layerZero());
    EXPECT_TRUE(value.getObjectId(other).isNull());
    EXPECT_TRUE(value.getObjectId(nullptr).isNull());
}
