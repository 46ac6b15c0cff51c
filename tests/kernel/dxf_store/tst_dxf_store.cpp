// SPDX-License-Identifier: MIT
#include "dxf_scanner.h"
#include "dxf_testing.h"

#include <cmath>
#include <cstring>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <unistd.h>

using namespace zvdxf;
using namespace dxf_testing;

namespace {

std::string scratchPath(const char *name)
{
    return testing::TempDir() + "dxf_store_" + name;
}

TEST(DxfStore, tellsSectionsVariablesAndRecordsInFileOrder)
{
    Store store;
    ReadingVisitor visitor;
    const LoadResult result = load(store, ascii(plainDrawing()), &visitor);
    ASSERT_TRUE(result) << result.error;
    EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
    const std::vector<SectionKind> sections{SectionKind::Header, SectionKind::Tables, SectionKind::Entities};
    EXPECT_EQ(visitor.begun, sections);
    EXPECT_EQ(visitor.ended, sections);
    ASSERT_EQ(visitor.variables.size(), 4u);
    EXPECT_EQ(visitor.variables[0], (Pairs{{9, "$ACADVER"}, {1, "AC1015"}}));
    EXPECT_EQ(visitor.variables[2], (Pairs{{9, "$EXTMAX"}, {10, "1234567.891"}, {20, "9.5"}, {30, "0.0"}}));
    ASSERT_EQ(visitor.records.size(), 6u);
    EXPECT_EQ(visitor.records[0].tags[0], Pair(0, "TABLE"));
    EXPECT_EQ(visitor.records[3].tags[0], Pair(0, "ENDTAB"));
    EXPECT_EQ(visitor.records[4].section, SectionKind::Entities);
    EXPECT_EQ(visitor.records[4].tags.size(), 12u);
}

TEST(DxfStore, knowsVersionCodePageAndVariablesByName)
{
    Store store;
    ASSERT_TRUE(load(store, ascii(plainDrawing())));
    EXPECT_EQ(store.version(), "AC1015");
    EXPECT_EQ(store.codec().codePage(), "ANSI_1252");
    const HeaderVariable *const extents = store.headerVariable("$EXTMAX");
    ASSERT_TRUE(extents);
    const RecordView values = store.headerValues(*extents);
    ASSERT_EQ(values.size(), 3u);
    EXPECT_EQ(values.real(values[0]), 1234567.891);
    EXPECT_EQ(values.type(), "");
    EXPECT_FALSE(store.headerVariable("$NOTHING"));
    EXPECT_FALSE(store.section(SectionKind::Blocks));
    ASSERT_TRUE(store.section(SectionKind::Entities));
    EXPECT_EQ(store.section(SectionKind::Entities)->name, "ENTITIES");
    EXPECT_TRUE(store.section(SectionKind::Entities)->closed);
}

TEST(DxfStore, encodingIsKnownFromTheFirstVariableOn)
{
    struct Reader : Visitor
    {
        void headerVariable(std::string_view, const RecordView &values) override
        {
            if (values[0].code == 1)
                first += values.text(values[0]);
        }
        void record(SectionKind, const RecordView &record) override
        {
            for (const Tag &tag : record) {
                if (tag.code == 1)
                    text = record.text(tag);
            }
        }
        std::string first;
        std::string text;
    };
    const Pairs title{{9, "$TITLE"}, {1, "\xC7\xBD"},     {9, "$ACADVER"},
                      {1, "AC1015"}, {9, "$DWGCODEPAGE"}, {3, "ANSI_936"}};
    const Pairs text{{0, "TEXT"}, {1, "\xC7\xBD\\U+00D8^J"}};
    Store store;
    Reader reader;
    ASSERT_TRUE(load(store, ascii(section("HEADER", title) + section("ENTITIES", text) + Pairs{{0, "EOF"}}), &reader));
    EXPECT_EQ(reader.first.substr(0, 3), "墙");
    EXPECT_EQ(reader.text, "墙Ø\n");
}

TEST(DxfStore, utf8InAnOldFileIsSeenWhateverIsDeclared)
{
    for (const char *const page : {"ANSI_936", "ANSI_1252", "ANSI_932", ""}) {
        Store store;
        ASSERT_TRUE(load(store, ascii(drawing("AC1015", page, {{0, "TEXT"}, {8, "墙体"}, {1, "标注"}}))));
        EXPECT_EQ(store.codec().decode("墙体"), "墙体") << page;
    }
}

TEST(DxfStore, theHeaderMayStandBehindOtherSections)
{
    const Pairs header{{9, "$ACADVER"}, {1, "AC1015"}, {9, "$DWGCODEPAGE"}, {3, "ANSI_936"}};
    const Pairs line{{0, "LINE"}, {8, "0"}};
    Store store;
    ASSERT_TRUE(load(store, ascii(section("ENTITIES", line) + section("HEADER", header) + Pairs{{0, "EOF"}})));
    EXPECT_EQ(store.version(), "AC1015");
    EXPECT_EQ(store.codec().codePage(), "ANSI_936");
}

TEST(DxfStore, tagsReadAgainAreTheSame)
{
    for (const FileStyle &style : {FileStyle(), binaryStyle(true), binaryStyle(false)}) {
        Store source;
        ASSERT_TRUE(load(source, ascii(plainDrawing())));
        Store store;
        ReadingVisitor visitor;
        ASSERT_TRUE(load(store, converted(source, style), &visitor));
        std::vector<Tag> tags;
        for (const ReadingVisitor::Told &told : visitor.records) {
            const RecordView view = store.view(told.index, tags);
            Pairs again;
            for (const Tag &tag : view)
                again.emplace_back(tag.code, store.asciiValue(tag));
            EXPECT_EQ(again, told.tags);
            EXPECT_EQ(view.type(), told.tags[0].second);
            EXPECT_EQ(store.type(told.index), told.tags[0].second);
        }
    }
}

TEST(DxfStore, everyByteBelongsToThePreambleOrARecord)
{
    const std::string bytes = ascii(Pairs{{999, "made by hand"}} + plainDrawing());
    Store store;
    ASSERT_TRUE(load(store, bytes));
    EXPECT_EQ(store.preambleLength(), ascii({{999, "made by hand"}}).size());
    std::uint64_t position = store.preambleLength();
    for (const Record &record : store.records()) {
        EXPECT_EQ(record.offset, position);
        position += record.length;
    }
    EXPECT_EQ(position, bytes.size());
    EXPECT_EQ(store.wholeRecords(), store.records().size());
}

TEST(DxfStore, lineEndsPaddingAndByteOrderMarkAreRecognised)
{
    for (const auto &[text, end] :
         {std::pair(std::string("\n"), LineEnd::Lf), std::pair(std::string("\r\n"), LineEnd::CrLf),
          std::pair(std::string("\r"), LineEnd::Cr)}) {
        Store store;
        const LoadResult result = load(store, ascii(plainDrawing(), text));
        ASSERT_TRUE(result);
        EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
        EXPECT_EQ(store.style().lineEnd, end);
        EXPECT_EQ(store.style().codeWidth, 3);
        EXPECT_EQ(allTags(store), plainDrawing());
    }
    Store store;
    const LoadResult result = load(store,
                                   "\xEF\xBB\xBF"
                                   "0\nSECTION\n2\nENTITIES\n0\nENDSEC\n0\nEOF\n");
    ASSERT_TRUE(result) << result.error;
    EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
    EXPECT_EQ(store.style().codeWidth, 1);
    EXPECT_EQ(store.preambleLength(), 3u);
}

TEST(DxfStore, codesMayBePaddedInAnyWay)
{
    Store store;
    ASSERT_TRUE(load(store, "0\nSECTION\n\t2 \nENTITIES\n     0  \r\nPOINT\r\n 10\n1.5\n0\nENDSEC\n  0\nEOF"));
    EXPECT_EQ(allTags(store),
              (Pairs{{0, "SECTION"}, {2, "ENTITIES"}, {0, "POINT"}, {10, "1.5"}, {0, "ENDSEC"}, {0, "EOF"}}));
}

TEST(DxfStore, emptyValuesAndBlanksAreKept)
{
    const Pairs pairs = drawing("AC1015", "", {{0, "TEXT"}, {1, ""}, {3, "  two blanks  "}});
    Store store;
    ASSERT_TRUE(load(store, ascii(pairs)));
    EXPECT_EQ(allTags(store), pairs);
}

TEST(DxfStore, valuesConvertByTheKindAskedFor)
{
    struct Reader : Visitor
    {
        void record(SectionKind, const RecordView &record) override
        {
            for (const Tag &tag : record) {
                if (tag.code == 1070) {
                    EXPECT_EQ(record.integer(tag), 5);
                    EXPECT_EQ(record.real(tag), 5.0);
                } else if (tag.code == 1040) {
                    EXPECT_EQ(record.real(tag), 0.1);
                    EXPECT_EQ(record.integer(tag), 0);
                } else if (tag.code == 1004) {
                    EXPECT_EQ(record.chunk(tag), std::string("\x00\xFF\x7F\x80", 4));
                } else if (tag.code == 5) {
                    handles.push_back(record.handle(tag));
                } else if (tag.code == 8) {
                    EXPECT_EQ(record.name(tag), record.text(tag));
                }
            }
        }
        std::vector<std::uint64_t> handles;
    };
    Store source;
    ASSERT_TRUE(load(source, ascii(plainDrawing())));
    for (const FileStyle &style : {FileStyle(), binaryStyle(true), binaryStyle(false)}) {
        Store store;
        Reader reader;
        const LoadResult result = load(store, converted(source, style), &reader);
        ASSERT_TRUE(result) << result.error;
        EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
        EXPECT_EQ(reader.handles, (std::vector<std::uint64_t>{0x2, 0x10, 0x11, 0x2A, 0x2B}));
    }
}

// ---- Damage
// -----------------------------------------------------------------------------------------------------------

TEST(DxfStore, aLineOutOfStepIsDroppedAndCountedWithItsLine)
{
    Pairs pairs = plainDrawing();
    std::string bytes = ascii(pairs);
    const std::size_t at = bytes.find("  0\nLINE\n");
    const std::size_t line = 1 + std::size_t(std::count(bytes.begin(), bytes.begin() + std::ptrdiff_t(at), '\n'));
    bytes.insert(at, "stray line\n");
    bytes.insert(bytes.find("  0\nTEXT\n"), "2000\n");
    Store store;
    const LoadResult result = load(store, bytes);
    ASSERT_TRUE(result);
    EXPECT_EQ(result.warning(WarningKind::OutOfStep).count, 2u);
    EXPECT_EQ(result.warning(WarningKind::OutOfStep).firstLine, line);
    EXPECT_NE(result.warningReport().find("first at line " + std::to_string(line)), std::string::npos)
        << result.warningReport();
    EXPECT_EQ(allTags(store), pairs);
    EXPECT_EQ(rewritten(store), bytes);
}

TEST(DxfStore, badNumbersCountAsZeroAndAreCounted)
{
    struct Reader : Visitor
    {
        void record(SectionKind, const RecordView &record) override
        {
            for (const Tag &tag : record) {
                if (tag.code == 10)
                    sum += record.real(tag);
            }
        }
        double sum = 0;
    };
    Store store;
    Reader reader;
    const LoadResult result = load(
        store,
        ascii(drawing(
            "AC1015", "",
            {{0, "POINT"}, {10, "1e999"}, {0, "POINT"}, {10, ""}, {0, "POINT"}, {10, "x"}, {0, "POINT"}, {10, "4"}})),
        &reader);
    ASSERT_TRUE(result);
    EXPECT_EQ(reader.sum, 4);
    EXPECT_EQ(result.warning(WarningKind::BadNumber).count, 3u);
    // Reading again counts nothing, there is nobody to tell.
    std::vector<Tag> tags;
    const RecordView view = store.view(findRecord(store, "POINT", 10, "x"), tags);
    EXPECT_EQ(view.real(view[1]), 0);
}

TEST(DxfStore, bytesThatAreNoNumberCountAsZeroInABinaryFileToo)
{
    const auto bytesOf
        = [](double value) { return std::string(reinterpret_cast<const char *>(&value), sizeof(value)); };
    Store source;
    ASSERT_TRUE(load(source, ascii(drawing("AC1015", "", {{0, "POINT"}, {10, "4711.25"}, {20, "4"}}))));
    for (const double bad : {std::nan(""), -HUGE_VAL}) {
        std::string bytes = converted(source, binaryStyle(true));
        bytes.replace(bytes.find(bytesOf(4711.25)), sizeof(double), bytesOf(bad));
        Store store;
        ASSERT_TRUE(load(store, bytes));
        std::vector<Tag> tags;
        const RecordView view = store.view(findRecord(store, "POINT", 20, bytesOf(4)), tags);
        EXPECT_EQ(view.real(view[1]), 0);
        EXPECT_EQ(view.real(view[2]), 4);
    }
}

TEST(DxfStore, badTextIsCounted)
{
    Store store;
    ReadingVisitor visitor;
    const LoadResult result = load(store,
                                   ascii(drawing("AC1015", "ANSI_932",
                                                 {{0, "TEXT"},
                                                  {1,
                                                   "A\xFF"
                                                   "B"}})),
                                   &visitor);
    ASSERT_TRUE(result);
    EXPECT_EQ(result.warning(WarningKind::BadText).count, 1u);
}

struct WarningRow
{
    const char *name;
    std::string bytes;
    WarningKind kind;
};

TEST(DxfStore, whatIsOddIsNamed)
{
    const Pairs line{{0, "LINE"}, {8, "0"}};
    const Pairs open{{0, "SECTION"}, {2, "ENTITIES"}};
    const Pairs eof{{0, "EOF"}};
    const WarningRow rows[] = {
        {"no end of file", ascii(section("ENTITIES", line)), WarningKind::MissingEndOfFile},
        {"section without end", ascii(open + line + eof), WarningKind::MissingEndOfSection},
        {"section within a section", ascii(open + line + section("OBJECTS", line) + eof),
         WarningKind::MissingEndOfSection},
        {"unknown section", ascii(section("FUTURE", line) + eof), WarningKind::UnknownSection},
        {"section without name", ascii(Pairs{{0, "SECTION"}, {0, "LINE"}, {0, "ENDSEC"}} + eof),
         WarningKind::UnknownSection},
        {"record between sections", ascii(section("ENTITIES", line) + line + eof), WarningKind::OutsideSection},
        {"end of no section", ascii(section("ENTITIES", line) + Pairs{{0, "ENDSEC"}} + eof),
         WarningKind::OutsideSection},
        {"something behind the end", ascii(section("ENTITIES", line) + eof + line), WarningKind::AfterEndOfFile},
        {"value before the first variable", ascii(section("HEADER", {{40, "1.0"}, {9, "$A"}, {40, "2.0"}}) + eof),
         WarningKind::BadHeader},
        {"cut within a value", ascii(section("ENTITIES", line) + open + line) + "  8\nWal",
         WarningKind::TruncatedValue},
        {"cut within a code", ascii(section("ENTITIES", line) + open + line) + "  ", WarningKind::MissingEndOfFile},
        {"cut within a record", ascii(open + line), WarningKind::TruncatedRecord},
    };
    for (const WarningRow &row : rows) {
        Store store;
        const LoadResult result = load(store, row.bytes);
        EXPECT_TRUE(result) << row.name << ": " << result.error;
        EXPECT_GT(result.warning(row.kind).count, 0u) << row.name << "\n" << result.warningReport();
        EXPECT_NE(result.warningReport().find(warningText(row.kind)), std::string::npos) << row.name;
        EXPECT_EQ(rewritten(store), row.bytes) << row.name;
    }
}

TEST(DxfStore, blanksBehindTheEndMarkAreNothing)
{
    Store store;
    const LoadResult result = load(store, ascii(plainDrawing()) + "\r\n \n\x1A");
    ASSERT_TRUE(result);
    EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
    EXPECT_EQ(allTags(store), plainDrawing());
}

TEST(DxfStore, whatStandsBehindTheEndMarkIsKeptButNoTag)
{
    const std::string bytes = ascii(plainDrawing() + Pairs{{8, "0"}, {0, "LINE"}, {8, "0"}});
    Store store;
    ASSERT_TRUE(load(store, bytes));
    EXPECT_EQ(allTags(store), plainDrawing());
    EXPECT_EQ(rewritten(store), bytes);
}

TEST(DxfStore, recordsOutsideOfSectionsAreNotTold)
{
    Store store;
    ReadingVisitor visitor;
    ASSERT_TRUE(load(store, ascii(Pairs{{0, "LINE"}, {8, "0"}} + plainDrawing()), &visitor));
    EXPECT_EQ(visitor.records.size(), 6u);
    EXPECT_EQ(visitor.records.front().tags[0], Pair(0, "TABLE"));
}

TEST(DxfStore, theRecordAFileIsCutOffInIsNotTold)
{
    const std::string whole = ascii(plainDrawing());
    const std::string cut = whole.substr(0, whole.find(" 40\n2.5"));
    Store store;
    ReadingVisitor visitor;
    const LoadResult result = load(store, cut, &visitor);
    ASSERT_TRUE(result);
    EXPECT_EQ(visitor.records.back().tags[0], Pair(0, "LINE"));
    EXPECT_EQ(result.warning(WarningKind::TruncatedRecord).count, 1u);
    EXPECT_EQ(store.wholeRecords(), store.records().size() - 1);
    EXPECT_EQ(visitor.ended.size(), visitor.begun.size()) << "ends are told also where they are missing";
}

// ---- What cannot be read
// ----------------------------------------------------------------------------------------------

TEST(DxfStore, whatIsNoDrawingGivesItsOwnError)
{
    const std::tuple<const char *, std::string, LoadStatus, const char *> rows[] = {
        {"no bytes", "", LoadStatus::Empty, "empty"},
        {"blanks", " \r\n\n", LoadStatus::Empty, "empty"},
        {"zeros", std::string(10000, '\0'), LoadStatus::Empty, "empty"},
        {"drawing of the other kind", "AC1027" + std::string(200, '\1'), LoadStatus::IsDwg, "AC1027"},
        {"an old one of them", "AC2.10" + std::string(200, '\1'), LoadStatus::IsDwg, "AC2.10"},
        {"text", "Dear reader,\nthis is a letter.\n", LoadStatus::NotDxf, "line 1 is no group code"},
        {"picture", std::string("\x89PNG\r\n\x1A\n\0\0\0\rIHDR", 16), LoadStatus::NotDxf, "not a DXF file"},
        {"only an end mark", "0\nEOF\n", LoadStatus::NotDxf, "not a DXF file"},
        {"numbers", "1\n2\n3\n4\n", LoadStatus::NotDxf, "not a DXF file"},
        {"binary sentinel alone", std::string(binarySentinel()), LoadStatus::NotDxf, "not a DXF file"},
    };
    for (const auto &[name, bytes, status, words] : rows) {
        Store store;
        ReadingVisitor visitor;
        const LoadResult result = load(store, bytes, &visitor);
        EXPECT_EQ(result.status, status) << name;
        EXPECT_NE(result.error.find(words), std::string::npos) << name << ": " << result.error;
        EXPECT_TRUE(store.records().empty()) << name;
        EXPECT_EQ(store.buffer().size(), 0u) << name;
        EXPECT_TRUE(visitor.records.empty()) << name;
    }
}

TEST(DxfStore, filesThatCannotBeReadSayWhy)
{
    Store store;
    LoadResult result = store.load("/no/such/folder/plan.dxf");
    EXPECT_EQ(result.status, LoadStatus::CannotRead);
    EXPECT_EQ(result.error, "cannot open /no/such/folder/plan.dxf: No such file or directory");
    result = store.load(testing::TempDir());
    EXPECT_EQ(result.status, LoadStatus::CannotRead);
    EXPECT_NE(result.error.find("not a regular file"), std::string::npos) << result.error;

    const std::string pipe = scratchPath("pipe");
    ::unlink(pipe.c_str());
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    EXPECT_EQ(store.load(pipe).status, LoadStatus::CannotRead) << "must not wait for a writer";
    ::unlink(pipe.c_str());
}

TEST(DxfStore, filesOfFourGibibytesAreRefused)
{
    const std::string path = scratchPath("huge.dxf");
    writeFile(path, "");
    ASSERT_EQ(::truncate(path.c_str(), off_t(1) << 32), 0); // takes no room on the disk
    Store store;
    const LoadResult result = store.load(path);
    EXPECT_EQ(result.status, LoadStatus::TooLarge);
    EXPECT_NE(result.error.find("4 GiB"), std::string::npos);
    ::unlink(path.c_str());
}

TEST(DxfStore, progressRisesToTheEndAndCanCancel)
{
    const std::string path = scratchPath("progress.dxf");
    std::string bytes = ascii(plainDrawing());
    const std::string entity = ascii(lineAndText());
    const std::size_t at = bytes.find("  0\nLINE");
    std::string many;
    while (many.size() < 3u * 1024 * 1024)
        many += entity;
    bytes.insert(at, many);
    writeFile(path, bytes);

    Store store;
    std::uint64_t last = 0;
    std::uint64_t all = 0;
    int calls = 0;
    ASSERT_TRUE(store.load(path, nullptr, [&](std::uint64_t done, std::uint64_t total) {
        EXPECT_GE(done, last);
        EXPECT_LE(done, total);
        last = done;
        all = total;
        ++calls;
        return true;
    }));
    EXPECT_EQ(last, all);
    EXPECT_EQ(all, bytes.size() * 2);
    EXPECT_GE(calls, 6);

    for (int stopAt = 0; stopAt < calls; ++stopAt) {
        int call = 0;
        const LoadResult result
            = store.load(path, nullptr, [&](std::uint64_t, std::uint64_t) { return call++ != stopAt; });
        EXPECT_EQ(result.status, LoadStatus::Cancelled) << stopAt;
        EXPECT_TRUE(store.records().empty());
        EXPECT_EQ(call, stopAt + 1) << "nothing is told after a cancel";
    }
    ::unlink(path.c_str());
}

TEST(DxfStore, aStoreCanBeMovedAndUsedAgain)
{
    Store store;
    ASSERT_TRUE(load(store, ascii(plainDrawing())));
    Store moved = std::move(store);
    EXPECT_EQ(allTags(moved), plainDrawing());
    EXPECT_EQ(moved.headerVariable("$CLAYER")->name, "$CLAYER");
    ASSERT_FALSE(load(moved, ""));
    EXPECT_TRUE(moved.headerVariables().empty());
}

// ---- Binary files
// -----------------------------------------------------------------------------------------------------

TEST(DxfStore, binaryFilesHoldAllWidthsOfValues)
{
    const Pairs values{{0, "XRECORD"},       {5, "ABC"},        {10, "1234567.891"}, {70, "-7"},    {90, "-70000"},
                       {160, "-5000000000"}, {290, "1"},        {310, "00FF80"},     {330, "1F"},   {140, "-0.0"},
                       {210, "1e-300"},      {440, "33554687"}, {460, "0.1"},        {281, "3"},    {370, "-3"},
                       {420, "16711680"},    {1000, "text"},    {1004, "DEAD"},      {1010, "2.5"}, {1070, "-1"},
                       {1071, "-100000"}};
    const Pairs pairs = section("OBJECTS", values) + Pairs{{0, "EOF"}};
    Store source;
    ASSERT_TRUE(load(source, ascii(pairs)));
    for (const bool wide : {true, false}) {
        Store store;
        const LoadResult result = load(store, converted(source, binaryStyle(wide)));
        ASSERT_TRUE(result) << result.error;
        EXPECT_FALSE(result.hasWarnings()) << result.warningReport();
        EXPECT_TRUE(store.style().binary);
        EXPECT_EQ(store.style().wideCodes, wide);
        EXPECT_EQ(allTags(store), pairs);
    }
}

TEST(DxfStore, wordsWithAnEndOfLineInABinaryFileAreWordsInATextFileToo)
{
    Store source;
    ASSERT_TRUE(load(source, ascii(plainDrawing())));
    const std::string clean = converted(source, binaryStyle(true));
    std::string bytes = clean;
    for (const char *word : {"SECTION", "LINE"}) {
        const std::size_t at = bytes.rfind(std::string("\0\0", 2) + word + '\0');
        ASSERT_NE(at, std::string::npos) << word;
        bytes.insert(at + 2 + std::strlen(word), "\r");
    }
    Store store;
    ASSERT_TRUE(load(store, bytes));
    EXPECT_EQ(store.sections().size(), source.sections().size());
    Store same;
    ASSERT_TRUE(load(same, clean));
    EXPECT_EQ(converted(store, FileStyle()), converted(same, FileStyle()));
}

TEST(DxfStore, binaryFilesGetBackInStepAtTheNextRecord)
{
    Store source;
    ASSERT_TRUE(load(source, ascii(plainDrawing())));
    std::string bytes = converted(source, binaryStyle(true));
    const std::size_t line = bytes.find(std::string("\0\0LINE\0", 7));
    ASSERT_NE(line, std::string::npos);
    bytes.insert(line + 7, "\xFF\x7F\xFF\x7F"); // a code that cannot be, in front of the line's first value
    Store store;
    ReadingVisitor visitor;
    const LoadResult result = load(store, bytes, &visitor);
    ASSERT_TRUE(result);
    EXPECT_EQ(result.warning(WarningKind::OutOfStep).count, 1u);
    EXPECT_EQ(result.warning(WarningKind::OutOfStep).firstOffset, line + 7);
    EXPECT_EQ(result.warning(WarningKind::OutOfStep).firstLine, 0u);
    EXPECT_NE(result.warningReport().find("byte"), std::string::npos);
    EXPECT_EQ(visitor.records.back().tags[0], Pair(0, "TEXT"));
    EXPECT_EQ(rewritten(store), bytes);
}

} // namespace
