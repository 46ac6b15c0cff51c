// SPDX-License-Identifier: MIT
#include "corefixture.h"

#include <cstdio>

namespace {

class LinetypeCommands : public CoreTest
{
protected:
    ZvDbObjectId find(const char *name) const
    {
        const ZvDbObjectPointer<ZvDbLinetypeTable> table(database->linetypeTableId(), ZvDb::kForRead);
        return table->getIdAt(ZvString(name));
    }
    TestHost host;
};

} // namespace

TEST_F(LinetypeCommands, setTakesANameWithBlanks)
{
    EXPECT_EQ(run("-LINETYPE Create Two words;;A,1,-1;"), "");
    EXPECT_EQ(run("-LINETYPE Set Two words;"), "");
    EXPECT_EQ(database->celtype(), find("Two words"));
    EXPECT_NE(run("-LINETYPE Set no such type;"), "");
    EXPECT_EQ(database->celtype(), find("Two words"));
}

TEST_F(LinetypeCommands, createIsOneStepOfUndo)
{
    EXPECT_EQ(run("_-LINETYPE _Create DASHED;Long dashes;A,12,-6;"), "");
    const ZvDbObjectId id = find("DASHED");
    ASSERT_FALSE(id.isNull());
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
        EXPECT_EQ(record->comments(), ZvString(L"Long dashes"));
        EXPECT_EQ(record->patternLength(), 18.0);
    }
    EXPECT_EQ(run("UNDO"), "");
    EXPECT_TRUE(find("DASHED").isNull());
}

TEST_F(LinetypeCommands, createTellsWhatIsWrong)
{
    EXPECT_NE(run("-LINETYPE Create X;;A,one;").find("\"one\" is not a number"), std::string::npos);
    EXPECT_NE(run("-LINETYPE Create Continuous;;A,1,-1;").find("the drawing has one of that name"), std::string::npos);
    EXPECT_NE(run("-LINETYPE Create a|b;;A,1,-1;").find("not a valid name"), std::string::npos);
    EXPECT_FALSE(database->canUndo());
}

TEST_F(LinetypeCommands, loadTakesNamesOrAll)
{
    zvedSetHost(&host);
    EXPECT_EQ(run("-LINETYPE Load dashed, GAS;" ZEVA_SAMPLES_DIR "/linetypes.lin;"), "");
    EXPECT_FALSE(find("DASHED").isNull());
    EXPECT_FALSE(find("GAS").isNull());
    EXPECT_TRUE(find("DOT").isNull());
    EXPECT_EQ(host.history.back(), "2 line types loaded.");
    EXPECT_EQ(run("-LINETYPE Load *;" ZEVA_SAMPLES_DIR "/linetypes.lin;"), "");
    EXPECT_FALSE(find("ISO_DASH").isNull());
    EXPECT_EQ(host.history.back(), "31 line types loaded.");
    EXPECT_NE(
        std::find(host.history.begin(), host.history.end(), "GAS was not loaded: the drawing has one of that name"),
        host.history.end());
    EXPECT_EQ(run("UNDO"), "");
    EXPECT_TRUE(find("ISO_DASH").isNull());
    EXPECT_FALSE(find("GAS").isNull());
}

TEST_F(LinetypeCommands, loadFailsWithAReason)
{
    EXPECT_NE(run("-LINETYPE Load *;/no/such/file.lin;").find("/no/such/file.lin"), std::string::npos);
    EXPECT_NE(run("-LINETYPE Load NOTHERE;" ZEVA_SAMPLES_DIR "/linetypes.lin;").find("NOTHERE"), std::string::npos);
    EXPECT_NE(run("-LINETYPE Load *;" ZEVA_SAMPLES_DIR "/README.md;").find("line 1: there is no name"),
              std::string::npos);
    EXPECT_FALSE(database->canUndo());
}

TEST_F(LinetypeCommands, questionMarkListsThem)
{
    zvedSetHost(&host);
    EXPECT_EQ(run("-LINETYPE Create DASHED;Long dashes;A,12,-6;"), "");
    EXPECT_EQ(run("-LINETYPE ?"), "");
    EXPECT_EQ(host.history.back(), "DASHED  Long dashes");
}

TEST_F(LinetypeCommands, renameAndDelete)
{
    EXPECT_EQ(run("-LINETYPE Create DASHED;;A,12,-6;"), "");
    EXPECT_EQ(run("-LINETYPE Rename DASHED;Long one;"), "");
    const ZvDbObjectId id = find("Long one");
    ASSERT_FALSE(id.isNull());
    EXPECT_NE(run("-LINETYPE Rename Long one;continuous;").find("already named"), std::string::npos);
    EXPECT_NE(run("-LINETYPE Rename Long one;a*b;"), "");
    EXPECT_NE(run("-LINETYPE Rename ByLayer;X;"), "");
    EXPECT_EQ(run("-LINETYPE Set Long one;"), "");
    EXPECT_NE(run("-LINETYPE Delete Long one;").find("in use"), std::string::npos);
    EXPECT_NE(run("-LINETYPE Delete Continuous;").find("cannot be deleted"), std::string::npos);
    EXPECT_EQ(run("-LINETYPE Set ByLayer;"), "");
    EXPECT_EQ(run("-LINETYPE Delete Long one;"), "");
    EXPECT_TRUE(find("Long one").isNull());
    EXPECT_EQ(run("UNDO"), "");
    EXPECT_EQ(find("Long one"), id);
}
