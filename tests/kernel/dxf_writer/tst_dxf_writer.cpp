// SPDX-License-Identifier: MIT
#include "dxf_edit.h"
#include "dxf_number.h"
#include "dxf_testing.h"

#include <gtest/gtest.h>

using namespace zvdxf;
using namespace dxf_testing;

namespace {

/*! Takes a given number of bytes, then fails. */
class FullOutput : public Output
{
public:
    explicit FullOutput(std::size_t room) : m_room(room) { }
    bool write(std::string_view bytes) override
    {
        ++calls;
        if (bytes.size() > m_room)
            return false;
        m_room -= bytes.size();
        return true;
    }
    std::string error() const override { return "no room"; }
    int calls = 0;

private:
    std::size_t m_room;
};

std::string replaced(std::string text, const std::string &from, const std::string &to)
{
    const std::size_t at = text.find(from);
    EXPECT_NE(at, std::string::npos) << from;
    return text.replace(at, from.size(), to);
}

TEST(DxfWriter, anUntouchedFileComesOutByteForByte)
{
    const std::string plain = ascii(Pairs{{999, "comment in front"}} + plainDrawing());
    const std::string rows[] = {
        plain,
        ascii(plainDrawing(), "\r\n"),
        ascii(plainDrawing(), "\r"),
        "\xEF\xBB\xBF" + plain,
        plain + "\n\n\x1A",
        replaced(plain, " 62\n", "62  \n"),
        replaced(plain, "  0\nLINE\n", "stray\n  0\nLINE\n"),
        plain.substr(0, plain.size() / 2),
        plain.substr(0, plain.size() - 1),
    };
    for (const std::string &bytes : rows) {
        Store store;
        ASSERT_TRUE(load(store, bytes));
        EXPECT_EQ(rewritten(store), bytes);
    }
    Store source;
    ASSERT_TRUE(load(source, plain));
    for (const bool wide : {true, false}) {
        const std::string bytes = converted(source, binaryStyle(wide));
        Store store;
        ASSERT_TRUE(load(store, bytes));
        EXPECT_EQ(rewritten(store), bytes);
    }
}

TEST(DxfWriter, aChangedRecordChangesItsLineOnly)
{
    for (const char *const lineEnd : {"\n", "\r\n", "\r"}) {
        const std::string bytes = ascii(plainDrawing(), lineEnd);
        Store store;
        ASSERT_TRUE(load(store, bytes));
        const std::uint32_t layer = findRecord(store, "LAYER", 2, "Walls");
        RecordEdit edit(store, layer);
        edit.setInteger("AcDbLayerTableRecord", 62, -3);
        MemoryOutput output;
        Writer writer(store, output);
        EXPECT_TRUE(writer.keepPreamble());
        EXPECT_TRUE(writer.keep(0, layer));
        EXPECT_TRUE(writer.record(edit.tags()));
        EXPECT_TRUE(writer.keep(layer + 1, std::uint32_t(store.records().size()) - layer - 1));
        EXPECT_TRUE(writer.finish()) << writer.error();
        EXPECT_EQ(output.bytes(), replaced(bytes, "     3", "    -3"));
    }
}

TEST(DxfWriter, aChangedRecordKeepsTheHandOfItsOtherLines)
{
    std::string bytes = replaced(ascii(plainDrawing()), "  8\nWalls\n", "8\nWalls  \n");
    Store store;
    ASSERT_TRUE(load(store, bytes));
    const std::uint32_t line = findRecord(store, "LINE", 5, "2A");
    RecordEdit edit(store, line);
    edit.setReal("AcDbLine", 20, 1.0 / 3.0);
    MemoryOutput output;
    Writer writer(store, output);
    writer.keepPreamble();
    writer.keep(0, line);
    writer.record(edit.tags());
    writer.keep(line + 1, std::uint32_t(store.records().size()) - line - 1);
    ASSERT_TRUE(writer.finish());
    EXPECT_EQ(output.bytes(), replaced(bytes, "-0.5", "0.3333333333333333"));
}

TEST(DxfWriter, aChangedBinaryRecordChangesItsValueOnly)
{
    Store source;
    ASSERT_TRUE(load(source, ascii(plainDrawing())));
    for (const bool wide : {true, false}) {
        Store store;
        const std::string bytes = converted(source, binaryStyle(wide));
        ASSERT_TRUE(load(store, bytes));
        const std::uint32_t text = findRecord(store, "TEXT", 5, "2B");
        RecordEdit edit(store, text);
        edit.setInteger("AcDbText", 40, 2);
        edit.apply({"AcDbText", 1, "First floor"});
        MemoryOutput output;
        Writer writer(store, output);
        writer.keepPreamble();
        writer.keep(0, text);
        writer.record(edit.tags());
        writer.keep(text + 1, std::uint32_t(store.records().size()) - text - 1);
        ASSERT_TRUE(writer.finish());
        Store again;
        ASSERT_TRUE(load(again, output.bytes()));
        Pairs expected = allTags(store);
        for (Pair &pair : expected) {
            if (pair == Pair(40, "2.5"))
                pair.second = "2.0";
            if (pair == Pair(1, "Ground floor"))
                pair.second = "First floor";
        }
        EXPECT_EQ(allTags(again), expected);
        EXPECT_EQ(output.bytes().size(), bytes.size() - 1); // the new text is shorter by one letter
    }
}

TEST(DxfWriter, coordinatesSurviveBitForBit)
{
    Store store;
    ASSERT_TRUE(load(store, ascii(plainDrawing())));
    std::string bytes = ascii(plainDrawing());
    for (const FileStyle &style : {binaryStyle(true), FileStyle(), binaryStyle(false), FileStyle()}) {
        bytes = converted(store, style);
        ASSERT_TRUE(load(store, bytes));
    }
    std::vector<Tag> tags;
    const RecordView line = store.view(findRecord(store, "LINE", 5, "2A"), tags);
    EXPECT_EQ(line.real(*findTag(line, 10)), 1234567.891);
    EXPECT_EQ(line.raw(*findTag(line, 10)), "1234567.891");
    EXPECT_EQ(line.real(*findTag(line, 11)), 1e-20);
}

// ---- HEADER variables
// -------------------------------------------------------------------------------------------------

std::string withHeader(const Store &store, void (*change)(Writer &))
{
    MemoryOutput output;
    Writer writer(store, output);
    change(writer);
    writer.keepAll();
    EXPECT_TRUE(writer.finish()) << writer.error();
    return output.bytes();
}

TEST(DxfWriter, headerVariablesAreReplacedInPlace)
{
    const std::string bytes = ascii(plainDrawing());
    Store store;
    ASSERT_TRUE(load(store, bytes));
    EXPECT_EQ(withHeader(store,
                         [](Writer &writer) {
                             writer.setHeaderVariable("$CLAYER", {{8, "Walls"}});
                         }),
              replaced(bytes, "$CLAYER\n  8\n0\n", "$CLAYER\n  8\nWalls\n"));
    EXPECT_EQ(withHeader(store, [](Writer &writer) { writer.setHeaderVariable("$CLAYER", {{8, "0"}}); }), bytes);
    EXPECT_EQ(
        withHeader(store,
                   [](Writer &writer) {
                       writer.setHeaderVariable("$EXTMAX", {{10, formatReal(1234567.891)}, {20, "9.25"}, {30, "0"}});
                   }),
        replaced(bytes, "9.5", "9.25"));
    EXPECT_EQ(withHeader(store,
                         [](Writer &writer) {
                             writer.removeHeaderVariable("$CLAYER");
                             writer.removeHeaderVariable("$NOTHING");
                         }),
              replaced(bytes, "  9\n$CLAYER\n  8\n0\n", ""));
}

TEST(DxfWriter, newHeaderVariablesGoToTheEndOfTheSection)
{
    const std::string bytes = ascii(plainDrawing());
    Store store;
    ASSERT_TRUE(load(store, bytes));
    EXPECT_EQ(withHeader(store,
                         [](Writer &writer) {
                             writer.setHeaderVariable("$LTSCALE", {{40, "1.0"}});
                             writer.setHeaderVariable("$LTSCALE", {{40, "2.0"}});
                         }),
              replaced(bytes, "$CLAYER\n  8\n0\n", "$CLAYER\n  8\n0\n  9\n$LTSCALE\n 40\n2.0\n"));
}

TEST(DxfWriter, aFileWithoutHeaderGetsOne)
{
    const std::string entities = ascii(section("ENTITIES", lineAndText()) + Pairs{{0, "EOF"}});
    Store store;
    ASSERT_TRUE(load(store, entities));
    const std::string expected = ascii(section("HEADER", {{9, "$CLAYER"}, {8, "Walls"}})) + entities;
    EXPECT_EQ(withHeader(store, [](Writer &writer) { writer.setHeaderVariable("$CLAYER", {{8, "Walls"}}); }), expected);
    EXPECT_EQ(withHeader(store, [](Writer &writer) { writer.removeHeaderVariable("$CLAYER"); }), entities);
}

TEST(DxfWriter, headerVariablesAreReplacedInBinaryAndWhenConverting)
{
    Store source;
    ASSERT_TRUE(load(source, ascii(plainDrawing())));
    Store store;
    ASSERT_TRUE(load(store, converted(source, binaryStyle(true))));
    for (const FileStyle &style : {store.style(), FileStyle(), binaryStyle(false)}) {
        MemoryOutput output;
        Writer writer(store, output, style);
        writer.setHeaderVariable("$CLAYER", {{8, "Walls"}});
        writer.keepAll();
        ASSERT_TRUE(writer.finish());
        Store again;
        ASSERT_TRUE(load(again, output.bytes()));
        const RecordView values = again.headerValues(*again.headerVariable("$CLAYER"));
        EXPECT_EQ(values.text(values[0]), "Walls");
        EXPECT_EQ(again.headerVariables().size(), store.headerVariables().size());
        EXPECT_EQ(again.records().size(), store.records().size());
    }
}

// ---- New and converted files
// ------------------------------------------------------------------------------------------

TEST(DxfWriter, writesAWholeNewFileInAnyStyle)
{
    const Pairs pairs = plainDrawing();
    FileStyle crlf;
    crlf.lineEnd = LineEnd::CrLf;
    for (const FileStyle &style : {FileStyle(), crlf, binaryStyle(true), binaryStyle(false)}) {
        MemoryOutput output;
        Writer writer(output, style);
        for (std::size_t i = 0; i + 1 < pairs.size(); ++i)
            writer.tag(pairs[i].first, pairs[i].second);
        EXPECT_TRUE(writer.end());
        EXPECT_TRUE(writer.end()) << "ending twice does nothing";
        ASSERT_TRUE(writer.finish());
        Store store;
        const LoadResult result = load(store, output.bytes());
        ASSERT_TRUE(result) << result.error;
        EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
        Pairs got = allTags(store);
        for (Pair &pair : got)
            pair.second = std::string(trimmed(pair.second));
        Pairs expected = pairs;
        for (Pair &pair : expected)
            pair.second = std::string(trimmed(pair.second));
        EXPECT_EQ(got, expected);
        EXPECT_EQ(store.style().lineEnd, style.lineEnd);
    }
}

TEST(DxfWriter, aLongChunkIsSplitInBinaryFiles)
{
    const std::string bytes(300, '\xAB');
    MemoryOutput output;
    Writer writer(output, binaryStyle(true));
    writer.record({{0, "SECTION"}, {2, "OBJECTS"}, {0, "XRECORD"}, {310, formatChunk(bytes)}});
    writer.end();
    ASSERT_TRUE(writer.finish());
    Store store;
    ASSERT_TRUE(load(store, output.bytes()));
    std::vector<Tag> tags;
    const RecordView record = store.view(1, tags);
    std::string joined;
    for (std::size_t i = 1; i < record.size(); ++i)
        joined += record.chunk(record[i]);
    EXPECT_EQ(joined, bytes);
}

TEST(DxfWriter, aValueNeverBreaksItsLine)
{
    MemoryOutput output;
    Writer writer(output, FileStyle());
    writer.record({{0, "SECTION"}, {2, "ENTITIES"}, {0, "TEXT"}, {1, "two\r\nlines"}});
    writer.end();
    ASSERT_TRUE(writer.finish());
    Store store;
    const LoadResult result = load(store, output.bytes());
    ASSERT_TRUE(result);
    EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
    std::vector<Tag> tags;
    const RecordView text = store.view(1, tags);
    EXPECT_EQ(text.raw(text[1]), "two^M^Jlines");
    EXPECT_EQ(text.text(text[1]), "two\r\nlines");
}

TEST(DxfWriter, aCutFileIsCompletedWithoutItsHalfRecord)
{
    const std::string whole = ascii(plainDrawing());
    const std::string cut = whole.substr(0, whole.find(" 40\n2.5") + 5);
    Store store;
    ASSERT_TRUE(load(store, cut));
    MemoryOutput output;
    Writer writer(store, output);
    writer.keepPreamble();
    writer.keep(0, store.wholeRecords());
    writer.end();
    ASSERT_TRUE(writer.finish());
    EXPECT_EQ(output.bytes(), whole.substr(0, whole.find("  0\nTEXT")) + "  0\nENDSEC\n  0\nEOF\n");
}

TEST(DxfWriter, endKnowsTheRecordsItIsBehind)
{
    const std::string bytes = ascii(plainDrawing());
    Store store;
    ASSERT_TRUE(load(store, bytes));
    const std::uint32_t count = std::uint32_t(store.records().size());
    // Kept or handed over one by one, whole or without its last records: it ends as it should.
    for (const bool isKept : {true, false}) {
        for (const std::uint32_t missing : {0u, 1u, 2u}) {
            MemoryOutput output;
            Writer writer(store, output);
            writer.keepPreamble();
            for (std::uint32_t i = 0; i < count - missing; ++i)
                EXPECT_TRUE(isKept ? writer.keep(i, 1) : writer.record(RecordEdit(store, i).tags()));
            writer.end();
            ASSERT_TRUE(writer.finish());
            EXPECT_EQ(output.bytes(), bytes) << isKept << missing;
        }
    }
}

TEST(DxfWriter, tagsBehindAnUnfinishedLineBeginOnTheirOwn)
{
    const std::string whole = ascii(section("ENTITIES", lineAndText()));
    Store store;
    ASSERT_TRUE(load(store, whole.substr(0, whole.size() - 1)));
    MemoryOutput output;
    Writer writer(store, output);
    writer.keepAll();
    writer.end();
    ASSERT_TRUE(writer.finish());
    EXPECT_EQ(output.bytes(), whole + "  0\nEOF\n");
}

// ---- Failing
// ----------------------------------------------------------------------------------------------------------

TEST(DxfWriter, stopsAtTheFirstFailureAndKeepsItsReason)
{
    Store store;
    ASSERT_TRUE(load(store, ascii(plainDrawing())));
    FullOutput output(10);
    Writer writer(store, output);
    writer.keepAll();
    EXPECT_FALSE(writer.finish());
    EXPECT_EQ(writer.error(), "no room");
    EXPECT_FALSE(writer.isCancelled());
    const int calls = output.calls;
    EXPECT_FALSE(writer.tag(0, "LINE"));
    EXPECT_FALSE(writer.keepAll());
    EXPECT_FALSE(writer.end());
    EXPECT_FALSE(writer.finish());
    EXPECT_EQ(output.calls, calls);
}

TEST(DxfWriter, progressRisesAndCancels)
{
    std::string bytes = ascii(plainDrawing());
    std::string many;
    while (many.size() < 5u * 1024 * 1024)
        many += ascii(lineAndText());
    bytes.insert(bytes.find("  0\nLINE"), many);
    Store store;
    ASSERT_TRUE(load(store, bytes));

    MemoryOutput output;
    Writer writer(store, output);
    std::uint64_t last = 0;
    int calls = 0;
    writer.setProgress([&](std::uint64_t done, std::uint64_t total) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, total);
        last = done;
        ++calls;
        return true;
    });
    writer.keepAll();
    ASSERT_TRUE(writer.finish());
    EXPECT_EQ(last, bytes.size());
    EXPECT_GE(calls, 5);

    MemoryOutput cut;
    Writer cancelled(store, cut);
    cancelled.setProgress([](std::uint64_t, std::uint64_t) { return false; });
    cancelled.keepAll();
    EXPECT_FALSE(cancelled.finish());
    EXPECT_TRUE(cancelled.isCancelled());
    EXPECT_EQ(cancelled.error(), "cancelled");
    EXPECT_LT(cut.bytes().size(), bytes.size() / 2);
}

} // namespace
