// SPDX-License-Identifier: MIT
// Real drawings from many programs, where they are at hand.
#include "dxf_edit.h"
#include "dxf_testing.h"

#include <gtest/gtest.h>

using namespace zvdxf;
using namespace dxf_testing;

namespace {

class DxfDrawings : public testing::Test
{
protected:
    void SetUp() override
    {
        m_paths = drawingsIn(ZEVA_SAMPLES_DIR);
        const std::vector<std::string> collected = drawingsIn(std::string(ZEVA_DRAWINGS_DIR) + "/dxf");
        m_paths.insert(m_paths.end(), collected.begin(), collected.end());
        if (m_paths.empty())
            GTEST_SKIP() << "no drawings at hand";
    }

    std::vector<std::string> m_paths;
};

/*! Lines that differ between two texts of as many lines. */
std::size_t differingLines(const std::string &a, const std::string &b)
{
    std::size_t count = 0;
    std::size_t i = 0;
    std::size_t j = 0;
    while (i < a.size() && j < b.size()) {
        const std::size_t endA = std::min(a.find('\n', i), a.size());
        const std::size_t endB = std::min(b.find('\n', j), b.size());
        count += a.compare(i, endA - i, b, j, endB - j) != 0;
        i = endA + 1;
        j = endB + 1;
    }
    return count + (i < a.size()) + (j < b.size());
}

TEST_F(DxfDrawings, comeBackByteForByte)
{
    for (const std::string &path : m_paths) {
        SCOPED_TRACE(path);
        Store store;
        ReadingVisitor visitor;
        const LoadResult result = store.load(path, &visitor);
        ASSERT_TRUE(result) << result.error;
        EXPECT_FALSE(visitor.records.empty());
        EXPECT_TRUE(rewritten(store) == fileContent(path));
        EXPECT_EQ(result.warning(WarningKind::OutOfStep).count, 0u);
        EXPECT_EQ(result.warning(WarningKind::BadText).count, 0u);
        EXPECT_FALSE(store.version().empty());
    }
}

TEST_F(DxfDrawings, oneChangedLayerColourIsOneChangedTag)
{
    for (const std::string &path : m_paths) {
        SCOPED_TRACE(path);
        Store store;
        ASSERT_TRUE(store.load(path));
        std::uint32_t layer = 0;
        while (layer < store.records().size() && store.type(layer) != "LAYER")
            ++layer;
        ASSERT_LT(layer, store.records().size());
        RecordEdit edit(store, layer);
        edit.setInteger("AcDbLayerTableRecord", 62, 211, {70});
        ASSERT_TRUE(edit.isChanged());

        MemoryOutput output;
        Writer writer(store, output);
        writer.keepPreamble();
        writer.keep(0, layer);
        writer.record(edit.tags());
        writer.keep(layer + 1, std::uint32_t(store.records().size()) - layer - 1);
        ASSERT_TRUE(writer.finish());

        Store changed;
        ASSERT_TRUE(load(changed, output.bytes()));
        const Pairs before = allTags(store);
        const Pairs after = allTags(changed);
        ASSERT_EQ(before.size(), after.size());
        std::size_t different = 0;
        for (std::size_t i = 0; i < before.size(); ++i)
            different += before[i] != after[i];
        EXPECT_EQ(different, 1u);
        if (!store.style().binary) {
            EXPECT_EQ(differingLines(fileContent(path), output.bytes()), 1u);
        }
    }
}

TEST_F(DxfDrawings, haveTheSameValuesInAnotherStyle)
{
    for (const std::string &path : m_paths) {
        SCOPED_TRACE(path);
        Store store;
        ASSERT_TRUE(store.load(path));
        FileStyle style = binaryStyle(true);
        style.binary = !store.style().binary;
        Store other;
        const LoadResult result = load(other, converted(store, style));
        ASSERT_TRUE(result) << result.error;
        ASSERT_EQ(other.style().binary, style.binary);
        const Pairs before = allTags(store);
        const Pairs after = allTags(other);
        ASSERT_EQ(before.size(), after.size());
        for (std::size_t i = 0; i < before.size(); ++i) {
            ASSERT_EQ(before[i].first, after[i].first);
            ASSERT_TRUE(sameValue(before[i].first, before[i].second, after[i].second))
                << before[i].first << ": " << before[i].second << " / " << after[i].second;
        }
    }
}

} // namespace
