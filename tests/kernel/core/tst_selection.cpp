// SPDX-License-Identifier: MIT
#include "corefixture.h"

TEST_F(CoreTest, theZeroNameHasNoMembers)
{
    const long none[2] = {0, 0};
    long length = -1;
    EXPECT_EQ(zvedSSLength(none, length), ZvRes::kNormal);
    EXPECT_EQ(length, 0);
    const long unknown[2] = {12345, 1};
    EXPECT_NE(zvedSSLength(unknown, length), ZvRes::kNormal);
    long name[2] = {1, 1};
    selection().pickFirst(name);
    EXPECT_EQ(name[0], 0);
    EXPECT_EQ(name[1], 0);
}

TEST_F(CoreTest, thePickFirstSetKeepsTheOrderOfSelection)
{
    run("_.LINE 0,0 1,0 2,0 3,0 ;");
    log.lines.clear();
    selection().set({entity(2), entity(0), entity(2)});
    EXPECT_EQ(log.lines, (std::vector<std::string> {"pickfirst"}));
    long name[2];
    selection().pickFirst(name);
    long length = 0;
    EXPECT_EQ(zvedSSLength(name, length), ZvRes::kNormal);
    ASSERT_EQ(length, 2);
    long entityName[2];
    EXPECT_EQ(zvedSSName(name, 0, entityName), ZvRes::kNormal);
    ZvDbObjectId id;
    EXPECT_EQ(zvdbGetObjectId(id, entityName), Zv::eOk);
    EXPECT_EQ(id, entity(2));
    EXPECT_NE(zvedSSName(name, 2, entityName), ZvRes::kNormal);
    EXPECT_NE(zvedSSFree(name), ZvRes::kNormal);
}

TEST_F(CoreTest, onlyAChangeOfTheSetIsToldOf)
{
    run("_.LINE 0,0 1,0 2,0 ;");
    log.lines.clear();
    selection().clear();
    EXPECT_TRUE(log.lines.empty());
    selection().set({entity(0)});
    selection().set({entity(0)});
    selection().add({entity(0)});
    selection().remove({entity(1)});
    EXPECT_EQ(log.lines.size(), 1u);
    selection().add({entity(1)});
    selection().remove({entity(0)});
    EXPECT_EQ(log.lines.size(), 3u);
    EXPECT_EQ(selection().ids(), (std::vector<ZvDbObjectId> {entity(1)}));
    selection().clear();
    EXPECT_EQ(log.lines.size(), 4u);
}

TEST_F(CoreTest, everyDocumentHasAPickFirstSetOfItsOwn)
{
    run("_.LINE 0,0 1,0 ;");
    const ZvDbObjectId line = entity(0);
    selection().set({line});
    ZvApDocument *other = zvDocManagerPtr()->newDocument();
    ZvEdSelectionHolder &set = *other->editingContext()->selectionHolder();
    EXPECT_TRUE(set.ids().empty());
    run("_.CIRCLE 0,0 5");
    EXPECT_EQ(document->editingContext()->selectionHolder()->ids(), (std::vector<ZvDbObjectId> {line}))
        << "a command in the other drawing leaves it alone";
    set.set({other->database()->layerZero()});
    EXPECT_TRUE(set.ids().empty()) << "a layer is no entity";
    zvDocManagerPtr()->closeDocument(other);
    EXPECT_EQ(zvDocManagerPtr()->currentDocument(), document);
    EXPECT_EQ(selection().ids(), (std::vector<ZvDbObjectId> {line}));
}

TEST_F(CoreTest, erasedEntitiesLeaveTheSetWithTheCommand)
{
    run("_.LINE 0,0 1,0 2,0 ;");
    const ZvDbObjectId first = entity(0);
    selection().set({first, entity(1)});
    run("_.UNDO");
    EXPECT_TRUE(first.isErased());
    EXPECT_TRUE(selection().ids().empty());
}

TEST_F(CoreTest, whatIsOnAClosedLayerCannotBeSelected)
{
    run("-LAYER New hidden;");
    run("-LAYER Set hidden;");
    run("_.LINE 0,0 1,0 ;");
    run("-LAYER Set 0;");
    run("_.LINE 5,5 6,6 ;");
    run("-LAYER OFF hidden;");
    run("SELECT ALL");
    EXPECT_EQ(selection().ids(), (std::vector<ZvDbObjectId> {entity(1)}));
}

TEST_F(CoreTest, setsOfProgramsAreFreed)
{
    run("_.LINE 0,0 1,0 ;");
    ZvArray<ZvDbObjectId> ids;
    ids.append(entity(0));
    ids.append(entity(0));
    long name[2];
    EXPECT_EQ(zvedSSNew(ids, name), ZvRes::kNormal);
    EXPECT_EQ(zvedSSIds(name).size(), 1u);
    EXPECT_EQ(zvedSSFree(name), ZvRes::kNormal);
    EXPECT_EQ(name[0], 0);
}
