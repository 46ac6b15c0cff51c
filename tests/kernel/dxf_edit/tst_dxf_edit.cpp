// SPDX-License-Identifier: MIT
#include "dxf_edit.h"
#include "dxf_testing.h"

#include <gtest/gtest.h>

using namespace zvdxf;
using namespace dxf_testing;

namespace {

const Pairs &dimension()
{
    static const Pairs pairs{{0, "DIMENSION"},    {5, "3C"},
                             {102, "{REACTORS"},  {330, "99"},
                             {102, "}"},          {330, "1F"},
                             {100, "AcDbEntity"}, {8, "Walls"},
                             {62, "     1"},      {100, "AcDbDimension"},
                             {10, "1.0"},         {20, "2.0"},
                             {30, "0.0"},         {100, "AcDbAlignedDimension"},
                             {13, "3.0"},         {100, "AcDbDimension"},
                             {70, "     5"},      {101, "Embedded Object"},
                             {70, "     9"},      {1001, "FIRST"},
                             {1070, "     1"},    {1001, "SECOND"},
                             {1000, "a"},         {1000, "b"}};
    return pairs;
}

class DxfEdit : public testing::Test
{
protected:
    void SetUp() override
    {
        const Pairs r12{{0, "LINE"}, {5, "1"}, {8, "0"}, {10, "1.0"}, {20, "2.0"}, {1001, "FIRST"}, {1070, "     1"}};
        ASSERT_TRUE(load(m_store, ascii(drawing("AC1015", "ANSI_936", dimension() + r12))));
        m_dimension = findRecord(m_store, "DIMENSION", 5, "3C");
        m_line = findRecord(m_store, "LINE", 5, "1");
    }

    RecordView view() { return m_store.view(m_dimension, m_tags); }

    static Pairs pairsOf(const RecordEdit &edit)
    {
        Pairs pairs;
        for (const OwnedTag &tag : edit.tags())
            pairs.emplace_back(tag.code, tag.value);
        return pairs;
    }

    /*! How many tags are not the file's own any more. */
    static int ownTags(const RecordEdit &edit)
    {
        return int(std::count_if(edit.tags().begin(), edit.tags().end(),
                                 [](const OwnedTag &tag) { return tag.source == OwnedTag::noSource; }));
    }

    std::string valueIn(TagRange range, int code, int occurrence = 0)
    {
        const RecordView record = view();
        const Tag *const tag = findTag(record, range, code, occurrence);
        return tag ? std::string(trimmed(record.raw(*tag))) : "absent";
    }

    Store m_store;
    std::vector<Tag> m_tags;
    std::uint32_t m_dimension = 0;
    std::uint32_t m_line = 0;
};

TEST_F(DxfEdit, partsAreFoundByTheirMarker)
{
    EXPECT_TRUE(hasSubclasses(view()));
    EXPECT_EQ(valueIn(subclassRange(view(), "AcDbEntity"), 8), "Walls");
    EXPECT_EQ(valueIn(subclassRange(view(), "AcDbEntity"), 10), "absent");
    EXPECT_EQ(valueIn(subclassRange(view(), "AcDbDimension"), 10), "1.0");
    EXPECT_EQ(valueIn(subclassRange(view(), "AcDbDimension", 1), 70), "5");
    EXPECT_EQ(subclassRange(view(), "AcDbDimension", 1).size(), 1u) << "an embedded object is a part of its own";
    EXPECT_EQ(valueIn(subclassRange(view(), "Embedded Object"), 70), "9");
    EXPECT_TRUE(subclassRange(view(), "AcDbNothing").isEmpty());
    EXPECT_TRUE(subclassRange(view(), "AcDbDimension", 2).isEmpty());
    EXPECT_EQ(bodyRange(view()).last, dimension().size() - 5);
}

TEST_F(DxfEdit, groupsAreSkippedUnlessAskedFor)
{
    EXPECT_EQ(valueIn(headRange(view()), 330), "1F");
    EXPECT_EQ(valueIn(groupRange(view(), "REACTORS"), 330), "99");
    EXPECT_TRUE(groupRange(view(), "NOTHING").isEmpty());
    const RecordView record = view();
    ASSERT_TRUE(findTag(record, 62));
    EXPECT_FALSE(findTag(record, 1070)) << "extended data is not the body";
}

TEST_F(DxfEdit, anUnclosedGroupEndsWithItsPart)
{
    Store store;
    ASSERT_TRUE(load(
        store,
        ascii(drawing("AC1015", "", {{0, "LINE"}, {102, "{OPEN"}, {330, "99"}, {100, "AcDbEntity"}, {330, "1F"}}))));
    std::vector<Tag> tags;
    const RecordView record = store.view(findRecord(store, "LINE", 330, "99"), tags);
    EXPECT_EQ(groupRange(record, "OPEN").size(), 1u);
    EXPECT_EQ(record.raw(*findTag(record, 330)), "1F");
}

TEST_F(DxfEdit, extendedDataIsFoundByItsApplication)
{
    EXPECT_EQ(xdataRange(view(), "FIRST").size(), 1u);
    EXPECT_EQ(valueIn(xdataRange(view(), "SECOND"), 1000, 1), "b");
    EXPECT_TRUE(xdataRange(view(), "THIRD").isEmpty());
}

TEST_F(DxfEdit, aRecordWithoutMarkersIsOnePart)
{
    std::vector<Tag> tags;
    const RecordView record = m_store.view(m_line, tags);
    EXPECT_FALSE(hasSubclasses(record));
    for (const TagRange range : {bodyRange(record), headRange(record), subclassRange(record, "AcDbLine")}) {
        EXPECT_EQ(range.first, 0u);
        EXPECT_EQ(range.last, 5u);
    }
}

TEST_F(DxfEdit, anUntouchedRecordIsTheFilesOwn)
{
    const RecordEdit edit(m_store, m_dimension);
    EXPECT_FALSE(edit.isChanged());
    EXPECT_EQ(pairsOf(edit), dimension());
    EXPECT_EQ(ownTags(edit), 0);
}

TEST_F(DxfEdit, settingWhatIsThereInAnotherSpellingChangesNothing)
{
    RecordEdit edit(m_store, m_dimension);
    edit.setInteger("AcDbEntity", 62, 1);
    edit.setReal("AcDbDimension", 10, 1);
    edit.setText("AcDbEntity", 8, "Walls");
    edit.setHandle("", 5, 0x3C);
    edit.remove("AcDbEntity", 6);
    edit.setXdata("SECOND", {{1000, "a"}, {1000, "b"}});
    edit.setXdata("THIRD", {});
    EXPECT_FALSE(edit.isChanged());
    EXPECT_EQ(ownTags(edit), 0);
}

TEST_F(DxfEdit, oneChangedValueIsOneChangedTag)
{
    RecordEdit edit(m_store, m_dimension);
    edit.setInteger("AcDbEntity", 62, 5);
    EXPECT_TRUE(edit.isChanged());
    Pairs expected = dimension();
    expected[8].second = "     5"; // in the columns of the old one
    EXPECT_EQ(pairsOf(edit), expected);
    EXPECT_EQ(ownTags(edit), 1);
}

TEST_F(DxfEdit, aMissingValueGoesBehindItsAnchor)
{
    RecordEdit edit(m_store, m_dimension);
    edit.setText("AcDbEntity", 6, "DASHED", {8, 67});
    edit.setInteger("AcDbEntity", 370, 25, {48});
    edit.setHandle("", 360, 0xAB, {5, 102});
    Pairs expected = dimension();
    expected.insert(expected.begin() + 9, {370, "25"}); // no anchor there: at the end of the part
    expected.insert(expected.begin() + 8, {6, "DASHED"});
    expected.insert(expected.begin() + 5, {360, "AB"});
    const Pairs got = pairsOf(edit);
    ASSERT_EQ(got.size(), expected.size());
    // An anchor that opens a group stands for the whole group.
    EXPECT_EQ(got, expected);
}

TEST_F(DxfEdit, pointsAreSetSideBySide)
{
    RecordEdit edit(m_store, m_dimension);
    edit.setPoint("AcDbDimension", 11, 5, 6, 0, {30});
    edit.setPoint("AcDbDimension", 10, 1, 2.5, 0);
    edit.setPoint("AcDbAlignedDimension", 13, 3, 4, 5);
    Pairs expected = dimension();
    expected.insert(expected.begin() + 15, {{23, "4.0"}, {33, "5.0"}});
    expected.insert(expected.begin() + 13, {{11, "5.0"}, {21, "6.0"}});
    expected[11].second = "2.5";
    EXPECT_EQ(pairsOf(edit), expected);
}

TEST_F(DxfEdit, valuesAreRemovedAndPartsAdded)
{
    RecordEdit edit(m_store, m_dimension);
    edit.remove("AcDbEntity", 62);
    edit.setReal("AcDbNew", 40, 2);
    Pairs expected = dimension();
    expected.insert(expected.end() - 5, {{100, "AcDbNew"}, {40, "2.0"}});
    expected.erase(expected.begin() + 8);
    EXPECT_EQ(pairsOf(edit), expected);

    RecordEdit line(m_store, m_line);
    line.setInteger("AcDbEntity", 62, 3, {8});
    EXPECT_EQ(pairsOf(line)[3], Pair(62, "3")) << "a record without markers gets none";
    EXPECT_EQ(pairsOf(line).size(), 8u);
}

TEST_F(DxfEdit, laterOccurrencesAreReached)
{
    RecordEdit edit(std::vector<OwnedTag>{{0, "LTYPE"}, {49, "1.0"}, {74, "0"}, {49, "-2.0"}, {74, "0"}});
    edit.apply({"", 49, "-3.0", {}, FieldEdit::Set, 1});
    edit.apply({"", 49, "4.0", {49}, FieldEdit::Set, 2});
    EXPECT_EQ(pairsOf(edit), (Pairs{{0, "LTYPE"}, {49, "1.0"}, {74, "0"}, {49, "-3.0"}, {49, "4.0"}, {74, "0"}}));
    edit.apply({"", 49, "", {}, FieldEdit::Remove, 0});
    EXPECT_EQ(pairsOf(edit)[1], Pair(74, "0"));
}

TEST_F(DxfEdit, listsKeepWhatIsEqualAtBothEnds)
{
    RecordEdit edit(m_store, m_dimension);
    const TagRange range = edit.xdata("SECOND");
    edit.replace(range, {{1000, "a"}, {1000, "new"}, {1000, "b"}});
    EXPECT_EQ(ownTags(edit), 1);
    Pairs expected = dimension();
    expected.insert(expected.end() - 1, {1000, "new"});
    EXPECT_EQ(pairsOf(edit), expected);
    edit.replace(edit.xdata("SECOND"), {{1000, "b"}});
    expected.erase(expected.end() - 3, expected.end() - 1);
    EXPECT_EQ(pairsOf(edit), expected);
    EXPECT_EQ(ownTags(edit), 0);
}

TEST_F(DxfEdit, extendedDataIsReplacedAddedAndRemoved)
{
    RecordEdit edit(m_store, m_dimension);
    edit.setXdata("FIRST", {});
    edit.setXdata("SECOND", {{1000, "c"}});
    edit.setXdata("THIRD", {{1071, "7"}});
    Pairs expected(dimension().begin(), dimension().end() - 5);
    expected = expected + Pairs{{1001, "SECOND"}, {1000, "c"}, {1001, "THIRD"}, {1071, "7"}};
    EXPECT_EQ(pairsOf(edit), expected);
}

TEST(DxfSameValue, comparesByKind)
{
    EXPECT_TRUE(sameValue(10, "7.0", "7.000000"));
    EXPECT_TRUE(sameValue(10, "1E+2", "100"));
    EXPECT_FALSE(sameValue(10, "0.0", "-0.0"));
    EXPECT_FALSE(sameValue(10, "1234567.891", "1234567.8910000003"));
    EXPECT_FALSE(sameValue(10, "x", "0.0"));
    EXPECT_TRUE(sameValue(70, "     1", "1"));
    EXPECT_FALSE(sameValue(70, "1", "2"));
    EXPECT_TRUE(sameValue(5, "02a", "2A"));
    EXPECT_TRUE(sameValue(310, "ff00", "FF00"));
    EXPECT_FALSE(sameValue(1, "a", "A"));
    EXPECT_FALSE(sameValue(1, "a ", "a"));
}

} // namespace
