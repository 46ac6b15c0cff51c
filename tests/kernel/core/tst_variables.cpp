// SPDX-License-Identifier: MIT
#include "corefixture.h"

#include "db/zvdbrecords.h"

namespace {
std::string text(const char *name)
{
    return zvedVarText(ZvString(name)).toStdString();
}
}

TEST_F(CoreTest, namesAreFoundWithoutCase)
{
    EXPECT_EQ(text("pickbox"), "5");
    EXPECT_EQ(text("CLAYER"), "0");
    ZvResBuf value;
    EXPECT_NE(zvedGetVar("NO SUCH VARIABLE", &value), ZvRes::kNormal);
    EXPECT_NE(zvedGetVar("CLAYER", nullptr), ZvRes::kNormal);
}

TEST_F(CoreTest, aChangeIsToldOfOnce)
{
    EXPECT_EQ(zvedSetVarText("PICKBOX", "8"), ZvRes::kNormal);
    EXPECT_EQ(zvedSetVarText("PICKBOX", "8"), ZvRes::kNormal);
    EXPECT_EQ(log.lines, (std::vector<std::string> {"var PICKBOX"}));
    zvedSetVarText("PICKBOX", "5");
}

TEST_F(CoreTest, readOnlyAndBadValuesAreRefused)
{
    EXPECT_NE(zvedSetVarText("CMDACTIVE", "1"), ZvRes::kNormal);
    EXPECT_NE(zvedSetVarText("PICKBOX", "many"), ZvRes::kNormal);
    EXPECT_NE(zvedSetVarText("PICKBOX", "51"), ZvRes::kNormal);
    EXPECT_NE(zvedSetVarText("PICKBOX", "1.5"), ZvRes::kNormal);
    EXPECT_EQ(text("PICKBOX"), "5");
    EXPECT_TRUE(log.lines.empty());
}

TEST_F(CoreTest, theDrawingsVariablesGoThroughTheDrawing)
{
    EXPECT_EQ(zvedSetVarText("LTSCALE", "2.5"), ZvRes::kNormal);
    EXPECT_EQ(database->ltscale(), 2.5);
    EXPECT_TRUE(log.has("var LTSCALE"));
    database->setCecolor([] { ZvCmColor c; c.setColorIndex(3); return c; }());
    EXPECT_TRUE(log.has("var CECOLOR"));
    zvDocManagerPtr()->closeDocument(document);
    ZvResBuf value;
    EXPECT_NE(zvedGetVar("LTSCALE", &value), ZvRes::kNormal);
    EXPECT_EQ(zvedGetVar("CMDACTIVE", &value), ZvRes::kNormal);
    EXPECT_EQ(value.restype, 5003);
}

TEST_F(CoreTest, variablesOfTheLibraryAreThere)
{
    for (const char *name : {"CMDACTIVE", "BLOCKEDITOR", "CPLOTSTYLE", "PSTYLEMODE", "CTABLESTYLE", "CMLEADERSTYLE",
                             "UCSORTHOVIEW", "PUCSORTHOVIEW", "CECOLOR", "CLAYER", "CELTYPE", "CELWEIGHT", "CMATERIAL",
                             "TEXTSTYLE", "DIMSTYLE", "TILEMODE", "CVPORT"}) {
        ZvResBuf *value = zvutNewRb(ZvRes::kNone);
        EXPECT_EQ(zvedGetVar(ZvString(name), value), ZvRes::kNormal) << name;
        zvutRelRb(value);
    }
    std::vector<ZvEdVarInfo> list;
    zvedVarList(list);
    EXPECT_GT(list.size(), 100u);
}

TEST_F(CoreTest, theDefaultLineWeightIsTheApplications)
{
    EXPECT_EQ(text("LWDEFAULT"), "25");
    EXPECT_EQ(zvedSetVarText("LWDEFAULT", "35"), ZvRes::kNormal);
    EXPECT_EQ(CHcSystem::instance()->application()->defaultLineWeight(), 35);
}

TEST_F(CoreTest, switchingTheLayoutIsToldToEditorAndLayoutManager)
{
    struct Listener : ZvStaticRxObject<ZvDbLayoutManagerReactor>
    {
        void layoutBecameCurrent(const ZvDbDatabase *, const ZvString &name) override { seen = name.toStdString(); }
        std::string seen;
    } listener;
    ZvDbLayoutManager *layouts = CHcSystem::instance()->application()->layoutManager();
    layouts->addReactor(&listener);
    EXPECT_EQ(database->setTilemode(false), Zv::eOk);
    EXPECT_TRUE(log.has("var TILEMODE"));
    EXPECT_TRUE(log.has("layout Layout1"));
    EXPECT_EQ(listener.seen, "Layout1");
    layouts->removeReactor(&listener);
}

TEST_F(CoreTest, aVariableMayBeUnreadable)
{
    ZvResBuf value;
    zvedSetVarReadable("cmdactive", false);
    EXPECT_EQ(zvedGetVar("CMDACTIVE", &value), ZvRes::kError);
    EXPECT_EQ(value.restype, ZvRes::kNone);
    zvedSetVarReadable("CMDACTIVE", true);
    EXPECT_EQ(zvedGetVar("CMDACTIVE", &value), ZvRes::kNormal);
    zvedSetVarReadable("NOSUCH", false);
}

TEST_F(CoreTest, theHostTellsOfItsBlockEditor)
{
    EXPECT_EQ(text("BLOCKEDITOR"), "0");
    EXPECT_NE(zvedSetVarText("BLOCKEDITOR", "1"), ZvRes::kNormal);
    zvedSetBlockEditorOpen(true);
    EXPECT_EQ(text("BLOCKEDITOR"), "1");
    EXPECT_TRUE(log.has("var BLOCKEDITOR"));
    log.lines.clear();
    zvedSetBlockEditorOpen(true);
    EXPECT_FALSE(log.has("var BLOCKEDITOR")) << "only a change is told";
    zvedSetBlockEditorOpen(false);
    EXPECT_EQ(text("BLOCKEDITOR"), "0");
}
