// SPDX-License-Identifier: MIT
#include "corefixture.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbstyles.h"

#include <cmath>

namespace {
typedef std::vector<std::string> Texts;
}

TEST_F(CoreTest, lineDrawsSegmentsUntilEnter)
{
    EXPECT_EQ(run("_.LINE 0,0 10,0 @0,5 @5<180 ;"), "");
    ASSERT_EQ(entityCount(), 3);
    const ZvDbObjectPointer<ZvDbLine> last(entity(2), ZvDb::kForRead);
    ASSERT_TRUE(last);
    EXPECT_TRUE(last->startPoint().isEqualTo({10, 5, 0}));
    EXPECT_TRUE(last->endPoint().isEqualTo({5, 5, 0}));
}

TEST_F(CoreTest, lineClosesAndTakesBack)
{
    run("_.LINE 0,0 10,0 20,0 _Undo 10,10 _Close");
    ASSERT_EQ(entityCount(), 3);
    const ZvDbObjectPointer<ZvDbLine> last(entity(2), ZvDb::kForRead);
    EXPECT_TRUE(last->endPoint().isEqualTo({0, 0, 0}));
    EXPECT_EQ(log.lines.back(), "end LINE");
}

TEST_F(CoreTest, oneCommandIsOneStepOfUndo)
{
    run("_.LINE 0,0 10,0 20,0 30,0 ;");
    EXPECT_EQ(entityCount(), 3);
    EXPECT_EQ(database->undoName(), L"LINE");
    run("_.UNDO");
    EXPECT_EQ(entityCount(), 0);
    EXPECT_EQ(database->redoName(), L"LINE");
    run("_.REDO");
    EXPECT_EQ(entityCount(), 3);
}

TEST_F(CoreTest, undoTakesANumberOnItsLine)
{
    run("_.CIRCLE 0,0 5");
    run("_.CIRCLE 0,0 6");
    run("_.CIRCLE 0,0 7");
    EXPECT_EQ(entityCount(), 3);
    run("_.UNDO 2");
    EXPECT_EQ(entityCount(), 1);
    EXPECT_EQ(run("_.UNDO 5"), "");
    EXPECT_EQ(entityCount(), 0);
}

TEST_F(CoreTest, circleByRadiusAndDiameter)
{
    run("_.CIRCLE 1,2 5");
    run("_.CIRCLE 1,2 _Diameter 5");
    ASSERT_EQ(entityCount(), 2);
    EXPECT_EQ((ZvDbObjectPointer<ZvDbCircle>(entity(0), ZvDb::kForRead)->radius()), 5.0);
    EXPECT_EQ((ZvDbObjectPointer<ZvDbCircle>(entity(1), ZvDb::kForRead)->radius()), 2.5);
    EXPECT_NE(run("_.CIRCLE 1,2 0"), "");
    EXPECT_EQ(entityCount(), 2);
}

TEST_F(CoreTest, arcThroughThreePointsEitherWayRound)
{
    run("_.ARC 1,0 0,1 -1,0");
    run("_.ARC -1,0 0,1 1,0");
    ASSERT_EQ(entityCount(), 2);
    for (int i = 0; i < 2; ++i) {
        const ZvDbObjectPointer<ZvDbArc> arc(entity(i), ZvDb::kForRead);
        EXPECT_NEAR(arc->radius(), 1.0, 1e-12);
        EXPECT_NEAR(std::cos(arc->startAngle()), 1.0, 1e-9);
        EXPECT_NEAR(std::cos(arc->endAngle()), -1.0, 1e-9);
    }
    EXPECT_NE(run("_.ARC 0,0 1,1 2,2"), "");
}

TEST_F(CoreTest, plineMakesOneEntity)
{
    run("_.PLINE 0,0 10,0 10,10 _Close");
    ASSERT_EQ(entityCount(), 1);
    const ZvDbObjectPointer<ZvDbPolyline> line(entity(0), ZvDb::kForRead);
    ASSERT_TRUE(line);
    EXPECT_EQ(line->numVerts(), 3);
    EXPECT_TRUE(line->isClosed());
}

TEST_F(CoreTest, textTakesBlanksAndChinese)
{
    run("_.TEXT 1,2 3.5 90 客厅 living room;");
    ASSERT_EQ(entityCount(), 1);
    const ZvDbObjectPointer<ZvDbText> text(entity(0), ZvDb::kForRead);
    ASSERT_TRUE(text);
    EXPECT_EQ(text->textString(), ZvString("客厅 living room"));
    EXPECT_EQ(text->height(), 3.5);
    EXPECT_NEAR(text->rotation(), std::acos(0.0), 1e-12);
}

TEST_F(CoreTest, newEntitiesTakeTheCurrentSettings)
{
    run("-LAYER New walls;");
    run("-LAYER Set walls;");
    run("-COLOR 1");
    run("-LWEIGHT 0.5");
    run("_.LINE 0,0 1,1 ;");
    const ZvDbObjectPointer<ZvDbEntity> line(entity(0), ZvDb::kForRead);
    EXPECT_EQ(line->layer(), L"walls");
    EXPECT_EQ(line->color().colorIndex(), 1);
    EXPECT_EQ(line->lineWeight(), ZvDb::kLnWt050);
}

TEST_F(CoreTest, moveAndCopyTakeThePickFirstSet)
{
    run("_.LINE 0,0 1,0 ;");
    selection().set({entity(0)});
    run("_.MOVE 0,0 5,5");
    EXPECT_TRUE((ZvDbObjectPointer<ZvDbLine>(entity(0), ZvDb::kForRead)->startPoint().isEqualTo({5, 5, 0})));
    EXPECT_TRUE(selection().ids().empty());
    selection().set({entity(0)});
    run("_.COPY 0,0 1,0");
    ASSERT_EQ(entityCount(), 2);
    EXPECT_TRUE((ZvDbObjectPointer<ZvDbLine>(entity(1), ZvDb::kForRead)->startPoint().isEqualTo({6, 5, 0})));
    run("_.UNDO 2");
    EXPECT_EQ(entityCount(), 1);
    EXPECT_TRUE((ZvDbObjectPointer<ZvDbLine>(entity(0), ZvDb::kForRead)->startPoint().isEqualTo({0, 0, 0})));
}

TEST_F(CoreTest, eraseAsksForASelection)
{
    run("_.LINE 0,0 1,0 2,0 ;");
    run("_.ERASE _ALL ;");
    EXPECT_EQ(entityCount(), 0);
    run("_.UNDO");
    EXPECT_EQ(entityCount(), 2);
    run("_.ERASE _Last ;");
    EXPECT_EQ(entityCount(), 1);
}

TEST_F(CoreTest, entitiesOnLockedLayersAreLeftAlone)
{
    run("_.LINE 0,0 1,0 ;");
    run("-LAYER LOck 0;");
    run("_.ERASE _ALL ;");
    EXPECT_EQ(entityCount(), 1);
    run("-LAYER Unlock 0;");
    run("_.ERASE _ALL ;");
    EXPECT_EQ(entityCount(), 0);
}

TEST_F(CoreTest, selectMakesThePickFirstSet)
{
    run("_.LINE 0,0 1,0 ;");
    run("-LAYER New walls;");
    run("-LAYER Set walls;");
    run("_.LINE 50,50 51,50 ;");
    run("SELECT ALL");
    EXPECT_EQ(selection().ids().size(), 2u);
    run("SELECT NONE");
    EXPECT_TRUE(selection().ids().empty());
    run("SELECT LAyer walls;");
    EXPECT_EQ(selection().ids(), (std::vector<ZvDbObjectId> {entity(1)}));
    run("SELECT Window -1,-1 10,10");
    EXPECT_EQ(selection().ids(), (std::vector<ZvDbObjectId> {entity(0)}));
    run("_.LINE 0,0 9,9 ;"); // a command that does not use the set drops it
    EXPECT_TRUE(selection().ids().empty());
}

TEST_F(CoreTest, layerCommandChangesOneLayer)
{
    run("-LAYER New first floor;");
    const ZvDbObjectId id = layer("First Floor");
    ASSERT_FALSE(id.isNull());
    run("-LAYER Color 30 first floor;");
    run("-LAYER OFF first floor;");
    run("-LAYER Freeze first floor;");
    run("-LAYER LWeight 0.35 first floor;");
    run("-LAYER Ltype Continuous first floor;");
    {
        const ZvDbObjectPointer<ZvDbLayerTableRecord> record(id, ZvDb::kForRead);
        EXPECT_EQ(record->color().colorIndex(), 30);
        EXPECT_TRUE(record->isOff());
        EXPECT_TRUE(record->isFrozen());
        EXPECT_EQ(record->lineWeight(), ZvDb::kLnWt035);
    }
    EXPECT_NE(run("-LAYER Set first floor;"), ""); // frozen
    EXPECT_NE(run("-LAYER Freeze 0;"), ""); // the current one
    EXPECT_NE(run("-LAYER ON no such layer;"), "");
    EXPECT_NE(run("-LAYER New bad/name;"), "");
    EXPECT_EQ(run("-LAYER Make new one;"), "");
    EXPECT_EQ(database->clayer(), layer("new one"));
}

TEST_F(CoreTest, colorCommandTakesIndexNameAndComponents)
{
    const struct
    {
        const char *text;
        int method;
        int index;
    } rows[] = {{"7", 195, 7}, {"red", 195, 1}, {"ByLayer", 192, 256}, {"BYBLOCK", 193, 0}, {"10,20,30", 194, 0x141E}};
    for (const auto &row : rows) {
        EXPECT_EQ(run((std::string("-COLOR ") + row.text).c_str()), "") << row.text;
        EXPECT_EQ(database->cecolor().colorMethod(), row.method) << row.text;
        EXPECT_EQ(database->cecolor().colorIndex(), row.index) << row.text;
    }
    for (const char *bad : {"0", "256", "pink", "1,2", "1,2,256", "1,2,3,4"})
        EXPECT_NE(run((std::string("-COLOR ") + bad).c_str()), "") << bad;
}

TEST_F(CoreTest, linetypeWeightAndStylesAreSetByName)
{
    EXPECT_EQ(run("-LINETYPE Set ByBlock;"), "");
    EXPECT_EQ(database->celtype(), database->byBlockLinetype());
    EXPECT_NE(run("-LINETYPE Set no such type;"), "");
    EXPECT_EQ(run("-LWEIGHT Default"), "");
    EXPECT_EQ(database->celweight(), ZvDb::kLnWtByLwDefault);
    EXPECT_NE(run("-LWEIGHT 0.33"), "");
    EXPECT_EQ(run("-STYLE New Notes;"), "");
    EXPECT_EQ(run("-STYLE Set Standard;"), "");
    EXPECT_NE(run("-DIMSTYLE Set no such style;"), "");
}

TEST_F(CoreTest, stylesAreRenamed)
{
    EXPECT_EQ(run("-STYLE New Notes;"), "");
    const ZvDbObjectId style = database->textstyle();
    EXPECT_EQ(run("-STYLE Rename Notes;General notes;"), "");
    EXPECT_EQ((ZvDbObjectPointer<ZvDbTextStyleTableRecord>(style, ZvDb::kForRead)->name()), L"General notes");
    EXPECT_NE(run("-STYLE Rename General notes;STANDARD;"), ""); // in use
    EXPECT_NE(run("-STYLE Rename General notes;a|b;"), ""); // not valid
    EXPECT_NE(run("-STYLE Rename Notes;Other;"), ""); // unknown
    EXPECT_EQ((ZvDbObjectPointer<ZvDbTextStyleTableRecord>(style, ZvDb::kForRead)->name()), L"General notes");
    EXPECT_EQ(run("_.U"), ""); // failed commands left no step
    EXPECT_EQ((ZvDbObjectPointer<ZvDbTextStyleTableRecord>(style, ZvDb::kForRead)->name()), L"Notes");
    EXPECT_EQ(run("-DIMSTYLE Set Standard;"), "");
    EXPECT_EQ(run("-DIMSTYLE Rename Standard;Ours;"), "");
    EXPECT_EQ((ZvDbObjectPointer<ZvDbDimStyleTableRecord>(database->dimstyle(), ZvDb::kForRead)->name()), L"Ours");
}

namespace {

/// Something that refers to a style.
struct StyleUser
{
    const char *name;
    void (*use)(ZvDbDatabase &database, ZvDbObjectId style);
};

template <class Entity> void addTo(ZvDbDatabase &database, Entity *entity)
{
    ZvDbObjectId id;
    ASSERT_EQ(database.appendEntity(entity, database.modelSpaceId(), id), Zv::eOk);
}

template <class Text> void addTextOf(ZvDbDatabase &database, ZvDbObjectId style)
{
    auto *text = new Text;
    text->setTextStyle(style);
    addTo(database, text);
}

template <class Object> void addStyleWith(ZvDbObjectId dictionaryId, ZvDbObjectId textStyle)
{
    const ZvDbObjectPointer<ZvDbDictionary> dictionary(dictionaryId, ZvDb::kForWrite);
    auto *object = new Object;
    object->setTextStyleId(textStyle);
    ZvDbObjectId id;
    ASSERT_EQ(dictionary->setAt(L"With it", object, id), Zv::eOk);
    object->close();
}

const StyleUser kTextStyleUsers[] = {
    {"a text", addTextOf<ZvDbText>},
    {"an attribute", addTextOf<ZvDbAttribute>},
    {"a text of several lines", addTextOf<ZvDbMText>},
    {"the current style", [](ZvDbDatabase &database, ZvDbObjectId style) { database.setTextstyle(style); }},
    {"a dimension style",
     [](ZvDbDatabase &database, ZvDbObjectId style) {
         ZvDbObjectPointer<ZvDbDimStyleTableRecord>(database.dimstyle(), ZvDb::kForWrite)->setIdValue("DIMTXSTY", style);
     }},
    {"a multileader style",
     [](ZvDbDatabase &database, ZvDbObjectId style) {
         addStyleWith<ZvDbMLeaderStyle>(database.mleaderStyleDictionaryId(true), style);
     }},
    {"nothing", nullptr},
};

const StyleUser kDimensionStyleUsers[] = {
    {"a dimension",
     [](ZvDbDatabase &database, ZvDbObjectId style) {
         auto *dimension = new ZvDbDimension;
         dimension->setDimensionStyle(style);
         addTo(database, dimension);
     }},
    {"the current style", [](ZvDbDatabase &database, ZvDbObjectId style) { database.setDimstyle(style); }},
    {"nothing", nullptr},
};

template <class Table, class Record>
void tryToDelete(ZvDbDatabase &database, const StyleUser &user, const std::string &command)
{
    SCOPED_TRACE(command + user.name);
    ZvDbObjectId style;
    {
        Table *table = nullptr;
        ASSERT_EQ(database.getSymbolTable(table, ZvDb::kForWrite), Zv::eOk);
        auto *record = new Record;
        record->setName(L"To go");
        ASSERT_EQ(table->add(record, style), Zv::eOk);
        record->close();
        table->close();
    }
    if (user.use)
        user.use(database, style);
    const std::string failure = runMacro((command + " Delete to GO;").c_str());
    EXPECT_EQ(failure.empty(), user.use == nullptr) << failure;
    EXPECT_EQ(failure.find("in use: To go") != std::string::npos, user.use != nullptr);
    EXPECT_EQ(style.isErased(), user.use == nullptr);
}

}

TEST_F(CoreTest, stylesAreDeletedWhenNothingRefersToThem)
{
    for (const StyleUser &user : kTextStyleUsers) {
        tryToDelete<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>(*zvDocManagerPtr()->newDocument()->database(), user,
                                                                  "-STYLE");
    }
    for (const StyleUser &user : kDimensionStyleUsers) {
        tryToDelete<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>(*zvDocManagerPtr()->newDocument()->database(), user,
                                                                "-DIMSTYLE");
    }
    EXPECT_EQ(run("_.U"), ""); // the last one comes back
    EXPECT_NE(run("-DIMSTYLE Delete no such style;"), "");
}

TEST_F(CoreTest, styleOfAnErasedTextIsDeleted)
{
    run("-STYLE New Notes;");
    const ZvDbObjectId style = database->textstyle();
    addTextOf<ZvDbText>(*database, style);
    run("-STYLE Set Standard;");
    EXPECT_NE(run("-STYLE Delete Notes;"), "");
    ZvDbObjectPointer<ZvDbEntity>(entity(0), ZvDb::kForWrite)->erase();
    EXPECT_EQ(run("-STYLE Delete Notes;"), "");
    EXPECT_TRUE(style.isErased());
    EXPECT_EQ(run("_.U"), "");
    EXPECT_FALSE(style.isErased());
}

TEST_F(CoreTest, viewInsideAViewportIsOneOfTheModel)
{
    TestHost host;
    zvedSetHost(&host);
    database->setTilemode(false);
    EXPECT_EQ(run("_.-VIEW _Save sheet;"), "");
    ZvDbObjectId viewport;
    {
        auto *made = new ZvDbViewport;
        ASSERT_EQ(database->appendEntity(made, database->paperSpaceId(), viewport), Zv::eOk);
    }
    ASSERT_EQ(database->setCurrentViewport(viewport), Zv::eOk);
    EXPECT_EQ(run("_.-VIEW _Save through it;"), "");
    const ZvDbObjectPointer<ZvDbViewTable> table(database->viewTableId(), ZvDb::kForRead);
    const ZvDbObjectPointer<ZvDbViewTableRecord> sheet(table->getIdAt(L"sheet"), ZvDb::kForRead);
    const ZvDbObjectPointer<ZvDbViewTableRecord> through(table->getIdAt(L"through it"), ZvDb::kForRead);
    ASSERT_TRUE(sheet && through);
    EXPECT_TRUE(sheet->isPaperspaceView());
    EXPECT_EQ(sheet->height(), 10.0);
    EXPECT_FALSE(through->isPaperspaceView());
    const ZvDbObjectPointer<ZvDbViewport> seen(viewport, ZvDb::kForRead);
    EXPECT_EQ(through->height(), seen->viewHeight()); // and not what the host shows of the sheet
    EXPECT_TRUE(through->centerPoint().isEqualTo(seen->viewCenter()));
}

TEST_F(CoreTest, namesOfSystemsAndViewsMayHoldACaret)
{
    TestHost host;
    zvedSetHost(&host);
    EXPECT_EQ(run("_.UCS _Named _Save ^C^C_.ERASE;"), "");
    EXPECT_EQ(run("_.UCS _World"), "");
    EXPECT_EQ(run("_.UCS _Named _Restore ^C^C_.ERASE;"), "");
    EXPECT_FALSE(database->ucsname().isNull());
    EXPECT_EQ(run("_.-VIEW _Save ^Cabove;"), "");
    EXPECT_EQ(run("^C^C_-VIEW R ^Cabove"), "");
    ASSERT_EQ(host.views.size(), 1u);
    EXPECT_EQ((ZvDbObjectPointer<ZvDbViewTableRecord>(host.views[0].view, ZvDb::kForRead)->name()), L"^Cabove");
}

TEST_F(CoreTest, ucsPresetsAsTheMacrosSendThem)
{
    const struct
    {
        const char *macro;
        int orthographic;
        ZvGeVector3d x;
        ZvGeVector3d y;
    } rows[] = {
        {"_.UCS _Bottom", 2, {-1, 0, 0}, {0, 1, 0}}, {"_.UCS _Front", 3, {1, 0, 0}, {0, 0, 1}},
        {"_.UCS _Back", 4, {-1, 0, 0}, {0, 0, 1}},   {"_.UCS _Left", 5, {0, -1, 0}, {0, 0, 1}},
        {"_.UCS _Right", 6, {0, 1, 0}, {0, 0, 1}},   {"_.UCS _Top", 1, {1, 0, 0}, {0, 1, 0}},
        {"_.UCS _World", 0, {1, 0, 0}, {0, 1, 0}},
    };
    for (const auto &row : rows) {
        EXPECT_EQ(run(row.macro), "") << row.macro;
        EXPECT_TRUE(database->ucsxdir().isEqualTo(row.x)) << row.macro;
        EXPECT_TRUE(database->ucsydir().isEqualTo(row.y)) << row.macro;
        EXPECT_EQ(zvedVarText("UCSORTHOVIEW"), ZvString(std::to_string(row.orthographic).c_str())) << row.macro;
    }
}

TEST_F(CoreTest, namedUcsWithBlanksIsRestored)
{
    run("_.UCS 10,20,0 ;");
    EXPECT_EQ(run("_.UCS _Named _Save site grid 1;"), "");
    run("_.UCS _World");
    EXPECT_TRUE(database->ucsorg().isEqualTo({0, 0, 0}));
    EXPECT_EQ(run("_.UCS _Named _Restore site grid 1;"), "");
    EXPECT_TRUE(database->ucsorg().isEqualTo({10, 20, 0}));
    EXPECT_FALSE(database->ucsname().isNull());
    EXPECT_NE(run("_.UCS _Named _Restore no such;"), "");
    run("_.LINE 0,0 1,0 ;"); // points are those of the system
    EXPECT_TRUE((ZvDbObjectPointer<ZvDbLine>(entity(0), ZvDb::kForRead)->startPoint().isEqualTo({10, 20, 0})));
    run("_.LINE *0,0 *1,0 ;"); // and of the world with a star
    EXPECT_TRUE((ZvDbObjectPointer<ZvDbLine>(entity(1), ZvDb::kForRead)->startPoint().isEqualTo({0, 0, 0})));
}

TEST_F(CoreTest, thePreviousUcsComesBack)
{
    run("_.UCS 10,20,0 ;");
    run("_.UCS _World");
    zvedRestorePreviousUCS();
    zvedRunQueue();
    EXPECT_TRUE(database->ucsorg().isEqualTo({10, 20, 0}));
    run("_.UNDO");
    EXPECT_TRUE(database->ucsorg().isEqualTo({0, 0, 0}));
}

TEST_F(CoreTest, presetViewsAsTheMacrosSendThem)
{
    TestHost host;
    zvedSetHost(&host);
    const struct
    {
        const char *macro;
        ZvGeVector3d direction;
    } rows[] = {{"^C^C_-VIEW _TOP", {0, 0, 1}},    {"^C^C_-VIEW _BOTTOM", {0, 0, -1}}, {"^C^C_-VIEW _LEFT", {-1, 0, 0}},
                {"^C^C_-VIEW _RIGHT", {1, 0, 0}},  {"^C^C_-VIEW _FRONT", {0, -1, 0}},  {"^C^C_-VIEW _BACK", {0, 1, 0}},
                {"^C^C_-VIEW _SWISO", {-1, -1, 1}}, {"^C^C_-VIEW _SEISO", {1, -1, 1}},  {"^C^C_-VIEW _NEISO", {1, 1, 1}},
                {"^C^C_-VIEW _NWISO", {-1, 1, 1}}};
    for (const auto &row : rows) {
        host.views.clear();
        EXPECT_EQ(run(row.macro), "") << row.macro;
        ASSERT_EQ(host.views.size(), 1u) << row.macro;
        EXPECT_EQ(host.views[0].kind, ZvEdHost::ViewRequest::kDirection);
        EXPECT_TRUE(host.views[0].direction.isEqualTo(row.direction)) << row.macro;
    }
}

TEST_F(CoreTest, namedViewsAreSavedAndRestoredWithBlanks)
{
    TestHost host;
    zvedSetHost(&host);
    EXPECT_EQ(run("_.-VIEW _Save ground floor east;"), "");
    EXPECT_EQ(run("^C^C_-VIEW R ground floor east"), "");
    ASSERT_EQ(host.views.size(), 1u);
    EXPECT_EQ(host.views[0].kind, ZvEdHost::ViewRequest::kNamed);
    const ZvDbObjectPointer<ZvDbViewTableRecord> view(host.views[0].view, ZvDb::kForRead);
    ASSERT_TRUE(view);
    EXPECT_EQ(view->width(), 20.0);
    EXPECT_TRUE(view->centerPoint().isEqualTo({5, 6}));
    EXPECT_NE(run("^C^C_-VIEW R no such view"), "");
}

TEST_F(CoreTest, zoomAndPanAskTheHost)
{
    TestHost host;
    zvedSetHost(&host);
    run("_.ZOOM _Extents");
    run("_.ZOOM _Window 0,0 10,10");
    run("_.ZOOM 2x");
    run("_.PAN 0,0 5,0");
    run("_.REGEN");
    ASSERT_EQ(host.views.size(), 5u);
    EXPECT_EQ(host.views[0].kind, ZvEdHost::ViewRequest::kExtents);
    EXPECT_TRUE(host.views[1].second.isEqualTo({10, 10, 0}));
    EXPECT_EQ(host.views[2].value, 2.0);
    EXPECT_TRUE(host.views[3].second.isEqualTo({5, 0, 0}));
    EXPECT_EQ(host.views[4].kind, ZvEdHost::ViewRequest::kRegen);
    EXPECT_NE(run("_.ZOOM nonsense"), "");
}

TEST_F(CoreTest, setvarShowsAndSets)
{
    EXPECT_EQ(run("SETVAR LTSCALE 3"), "");
    EXPECT_EQ(database->ltscale(), 3.0);
    EXPECT_NE(run("SETVAR CMDACTIVE 1"), "");
    EXPECT_NE(run("SETVAR NOSUCH 1"), "");
}

TEST_F(CoreTest, layoutCommandSwitches)
{
    EXPECT_EQ(run("LAYOUT Layout1;"), "");
    EXPECT_FALSE(database->tilemode());
    EXPECT_EQ(run("LAYOUT model;"), "");
    EXPECT_TRUE(database->tilemode());
    EXPECT_NE(run("LAYOUT no such;"), "");
}

TEST_F(CoreTest, aPointThatIsNoneIsToldAndAskedForAgain)
{
    TestHost host;
    host.answers = {"5,5", ""};
    zvedSetHost(&host);
    EXPECT_EQ(run("_.LINE 0,0 nonsense"), "Not a valid answer: nonsense");
    EXPECT_EQ(entityCount(), 1);
}

TEST_F(CoreTest, picksFromAViewAreTakenAsTheyAre)
{
    zvedCommandLine("LINE");
    zvedFeedPoint({1.25, 2.5, 0});
    zvedFeedPoint({3, 4, 0});
    zvedFeedEnter();
    EXPECT_TRUE(zvedRunQueue());
    ASSERT_EQ(entityCount(), 1);
    zvedCommandLine("ERASE");
    zvedFeedSelection({entity(0)});
    zvedFeedEnter();
    EXPECT_TRUE(zvedRunQueue());
    EXPECT_EQ(entityCount(), 0);
}

TEST_F(CoreTest, closingAsksTheHost)
{
    TestHost host;
    host.closing = false;
    zvedSetHost(&host);
    run("_.CLOSE");
    EXPECT_EQ(zvDocManagerPtr()->documentCount(), 1);
    host.closing = true;
    run("_.CLOSE");
    EXPECT_EQ(zvDocManagerPtr()->documentCount(), 0);
    run("_.QUIT");
    EXPECT_EQ(host.quits, 1);
}

TEST_F(CoreTest, openingAWrongFileReportsAndGoesOn)
{
    TestHost host;
    zvedSetHost(&host);
    EXPECT_NE(run("_.OPEN /no such folder/plan.dxf;"), "");
    ASSERT_EQ(host.reports.size(), 1u);
    EXPECT_FALSE(host.reports[0].empty());
    EXPECT_EQ(zvDocManagerPtr()->documentCount(), 1);
}

TEST_F(CoreTest, whatIsUndoneToTheSavedStateIsNotModified)
{
    EXPECT_FALSE(document->isModified());
    run("_.LINE 0,0 1,1 ;");
    EXPECT_TRUE(document->isModified());
    run("_.UNDO");
    EXPECT_FALSE(document->isModified());
    run("_.REDO");
    EXPECT_TRUE(document->isModified());
    database->setModified(false); // saved with the line
    run("_.UNDO");
    EXPECT_TRUE(document->isModified());
    run("_.CIRCLE 0,0 5"); // the saved state can no longer be reached
    run("_.UNDO");
    EXPECT_TRUE(document->isModified());
}

TEST_F(CoreTest, aFailedCommandLeavesNoMark)
{
    EXPECT_NE(run("_.CIRCLE 1,2 0"), "");
    EXPECT_FALSE(document->isModified());
}
