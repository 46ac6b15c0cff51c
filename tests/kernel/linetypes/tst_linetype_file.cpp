// SPDX-License-Identifier: MIT
#include "db_testing.h"
#include "file_support.h"

#include "db/zvdblinetypes.h"

#include <cmath>

namespace {

typedef ZvDbLinetypeDefinition::Element Element;
constexpr double kPi = 3.14159265358979323846;

std::string u16(const std::u16string &text, bool bigEndian)
{
    std::string bytes = bigEndian ? "\xFE\xFF" : "\xFF\xFE";
    for (const char16_t c : text) {
        const char low = char(c & 0xFF);
        const char high = char(c >> 8);
        bytes += bigEndian ? high : low;
        bytes += bigEndian ? low : high;
    }
    return bytes;
}

std::vector<double> lengths(const ZvDbLinetypeDefinition &definition)
{
    std::vector<double> list;
    for (const Element &element : definition.elements)
        list.push_back(element.length);
    return list;
}

} // namespace

TEST(LinetypeFile, readsNamesDescriptionsAndPatterns)
{
    ZvDbLinetypeFile file;
    ASSERT_EQ(file.parse(";; a comment\n\n*DASHED,Dashed  __ __, twice\nA,12.5,-6\n"
                         "  *Dots\n; between name and pattern\n a , 0 , -.5 , +1e1\n"),
              Zv::eOk);
    EXPECT_TRUE(file.problems().empty());
    ASSERT_EQ(file.definitions().size(), 2u);
    const ZvDbLinetypeDefinition &dashed = file.definitions()[0];
    EXPECT_EQ(dashed.name, ZvString(L"DASHED"));
    EXPECT_EQ(dashed.comments, ZvString(L"Dashed  __ __, twice"));
    EXPECT_EQ(dashed.line, 3);
    EXPECT_EQ(lengths(dashed), (std::vector<double>{12.5, -6}));
    const ZvDbLinetypeDefinition &dots = file.definitions()[1];
    EXPECT_EQ(dots.name, ZvString(L"Dots"));
    EXPECT_TRUE(dots.comments.isEmpty());
    EXPECT_EQ(lengths(dots), (std::vector<double>{0, -0.5, 10}));
    EXPECT_EQ(file.find(L"dots"), &dots);
    EXPECT_EQ(file.find(L"no such"), nullptr);
}

TEST(LinetypeFile, lineEndsOfEveryKind)
{
    for (const char *end : {"\n", "\r\n", "\r"}) {
        ZvDbLinetypeFile file;
        const std::string text = std::string(";") + end + "*A,b" + end + "A,1,-1" + end + "*C" + end + "A,x";
        EXPECT_EQ(file.parse(text), Zv::eOk);
        ASSERT_EQ(file.definitions().size(), 1u);
        EXPECT_EQ(file.definitions()[0].comments, ZvString(L"b"));
        ASSERT_EQ(file.problems().size(), 1u);
        EXPECT_EQ(file.problems()[0].line, 5);
    }
}

TEST(LinetypeFile, textsAndShapesStandBehindALength)
{
    ZvDbLinetypeFile file;
    ASSERT_EQ(file.parse("*GAS,Gas\nA,20,-3,[\"G,;S\",Standard,S=4,R=90,X=-1.5,Y=-2],-3 ; a comment\n"
                         "*RAIL,Rail\nA,.15,[TRACK, rails.shx ,s=.25,a=0.5r],.15,\n"
                         "*UP,Up\nA,1,-1,[\"U\",Standard,U=100g]\n*PLAIN\nA,1,[X,y.shx]\n"),
              Zv::eOk)
        << file.problemText().toStdString();
    ASSERT_EQ(file.definitions().size(), 4u);
    const Element text = file.definitions()[0].elements[1];
    EXPECT_EQ(text.kind, Element::kText);
    EXPECT_EQ(text.length, -3.0);
    EXPECT_EQ(text.content, ZvString(L"G,;S"));
    EXPECT_EQ(text.style, ZvString(L"Standard"));
    EXPECT_EQ(text.scale, 4.0);
    EXPECT_DOUBLE_EQ(text.rotation, kPi / 2);
    EXPECT_FALSE(text.isAbsolute);
    EXPECT_EQ(text.offsetX, -1.5);
    EXPECT_EQ(text.offsetY, -2.0);
    EXPECT_EQ(lengths(file.definitions()[0]), (std::vector<double>{20, -3, -3}));
    const Element shape = file.definitions()[1].elements[0];
    EXPECT_EQ(shape.kind, Element::kShape);
    EXPECT_EQ(shape.content, ZvString(L"TRACK"));
    EXPECT_EQ(shape.style, ZvString(L"rails.shx"));
    EXPECT_EQ(shape.scale, 0.25);
    EXPECT_TRUE(shape.isAbsolute);
    EXPECT_EQ(shape.rotation, 0.5);
    EXPECT_DOUBLE_EQ(file.definitions()[2].elements[1].rotation, kPi / 2);
    EXPECT_EQ(file.definitions()[3].elements[0].scale, 1.0);
}

TEST(LinetypeFile, whatIsWrongIsToldWithItsLine)
{
    const struct
    {
        const char *name;
        std::string text;
        std::string problem;
    } rows[] = {
        {"a pattern without a name", "A,1,-1", "line 1: there is no name before \"A,1,-1\""},
        {"words that are neither", "*A\nA,1\nhello", "line 3: there is no name before \"hello\""},
        {"a name at the end", ";\n*X,y", "line 2: \"X\" has no pattern"},
        {"a name before a name", "*X,y\n*Z\nA,1,-1", "line 1: \"X\" has no pattern"},
        {"no name", "*,y\nA,1,-1", "line 1: \"\" is not a valid name"},
        {"a bar in the name", "*X|Y\nA,1,-1", "line 1: \"X|Y\" is not a valid name"},
        {"a star in the name", "**X\nA,1,-1", "line 1: \"*X\" is not a valid name"},
        {"a name twice", "*X\nA,1,-1\n*x\nA,2", "line 3: \"x\" is there already; the first one counts"},
        {"another alignment", "*X\nB,1,-1", "line 2: \"X\": the alignment is \"B\" and not \"A\""},
        {"no alignment", "*X\n1,-1", "line 2: \"X\": the alignment is \"1\" and not \"A\""},
        {"a word for a number", "*X\nA,1,-one", "line 2: \"X\": \"-one\" is not a number"},
        {"nothing between commas", "*X\nA,1,,-1", "line 2: \"X\": \"\" is not a number"},
        {"no finite number", "*X\nA,inf", "line 2: \"X\": \"inf\" is not a number"},
        {"a number too large", "*X\nA,1e999", "line 2: \"X\": \"1e999\" is not a number"},
        {"nothing but the alignment", "*X\nA", "line 2: \"X\": the pattern has no length"},
        {"only a dot", "*X\nA,0", "line 2: \"X\": the pattern has no length"},
        {"an open bracket", "*X\nA,1,[\"G\",S,S=1", "line 2: \"X\": a \"[\" has no \"]\""},
        {"a bracket that was not opened", "*X\nA,1,G]", "line 2: \"X\": a \"]\" has no \"[\""},
        {"an open quote", "*X\nA,1,[\"G,S]", "line 2: \"X\": a text has no closing quote"},
        {"something behind a bracket", "*X\nA,1,[a,b]c", "line 2: \"X\": there is something behind a \"]\""},
        {"a bracket first", "*X\nA,[\"G\",S],1", "line 2: \"X\": there is no length before [\"G\",S]"},
        {"two brackets in a row", "*X\nA,1,[a,b],[c,d]", "line 2: \"X\": there is no length before [c,d]"},
        {"an empty text", "*X\nA,1,[\"\",S]", "line 2: \"X\": in [\"\",S] the text or shape, or its style, is missing"},
        {"no style", "*X\nA,1,[\"G\"]", "line 2: \"X\": in [\"G\"] the text or shape, or its style, is missing"},
        {"an unknown option", "*X\nA,1,[a,b,Q=1]", "line 2: \"X\": \"Q=1\" is none of S=, R=, A=, U=, X=, Y="},
        {"an option without a number", "*X\nA,1,[a,b,S=]", "line 2: \"X\": there is no usable number in \"S=\""},
        {"an option without a sign", "*X\nA,1,[a,b,S]", "line 2: \"X\": there is no usable number in \"S\""},
        {"no size", "*X\nA,1,[a,b,S=0]", "line 2: \"X\": there is no usable number in \"S=0\""},
        {"an empty file", "", "line 1: there is no line type in the file"},
        {"nothing but comments", ";x\n", "line 1: there is no line type in the file"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        ZvDbLinetypeFile file;
        file.parse(row.text);
        ASSERT_EQ(file.problems().size(), 1u);
        EXPECT_EQ(file.problemText().toStdString(), row.problem);
    }
}

TEST(LinetypeFile, goodDefinitionsStayBesideBadOnes)
{
    ZvDbLinetypeFile file;
    EXPECT_EQ(file.parse("*BAD\nA,x\n*GOOD\nA,1,-1\n*WORSE\nB,1\n"), Zv::eOk);
    ASSERT_EQ(file.definitions().size(), 1u);
    EXPECT_EQ(file.definitions()[0].name, ZvString(L"GOOD"));
    EXPECT_EQ(file.problemText().toStdString(),
              "line 2: \"BAD\": \"x\" is not a number\nline 6: \"WORSE\": the alignment is \"B\" and not \"A\"");
    EXPECT_EQ(file.parse("*BAD\nA,x\n"), Zv::eFileDamaged);
    EXPECT_TRUE(file.definitions().empty());
    EXPECT_EQ(file.problems().size(), 1u);
}

TEST(LinetypeFile, encodings)
{
    const std::string utf8 = "*虚线,说明 - -\nA,1,-1\n";
    const std::string gbk = "*\xD0\xE9\xCF\xDF,\xCB\xB5\xC3\xF7 - -\nA,1,-1\n";
    const struct
    {
        const char *name;
        std::string bytes;
        const wchar_t *codePage;
    } rows[] = {
        {"UTF-8", utf8, L""},
        {"UTF-8 although a code page is told", utf8, L"ANSI_936"},
        {"UTF-8 with a mark", "\xEF\xBB\xBF" + utf8, L""},
        {"UTF-16, lower byte first", u16(u"*虚线,说明 - -\r\nA,1,-1\r\n", false), L""},
        {"UTF-16, upper byte first", u16(u"*虚线,说明 - -\nA,1,-1\n", true), L""},
        {"the code page", gbk, L"ANSI_936"},
    };
    for (const auto &row : rows) {
        SCOPED_TRACE(row.name);
        ZvDbLinetypeFile file;
        ASSERT_EQ(file.parse(row.bytes, row.codePage), Zv::eOk) << file.problemText().toStdString();
        EXPECT_EQ(file.definitions()[0].name, ZvString(L"虚线"));
        EXPECT_EQ(file.definitions()[0].comments, ZvString(L"说明 - -"));
        EXPECT_EQ(file.definitions()[0].line, 1);
    }
    ZvDbLinetypeFile western;
    ASSERT_EQ(western.parse("*Gestrichelt,gro\xDF\nA,1,-1\n"), Zv::eOk);
    EXPECT_EQ(western.definitions()[0].comments, ZvString(L"groß"));
    ZvDbLinetypeFile beyond;
    ASSERT_EQ(beyond.parse(u16(u"*X,\xD83D\xDE00 \xD83D\nA,1,-1", false)), Zv::eOk);
    EXPECT_EQ(beyond.definitions()[0].comments, ZvString("\xF0\x9F\x98\x80 \xEF\xBF\xBD"));
}

TEST(LinetypeFile, filesThatCannotBeRead)
{
    for (const char *path : {"/no/such/file.lin", "/"}) {
        ZvDbLinetypeFile file;
        EXPECT_EQ(file.read(path), Zv::eFileAccess);
        ASSERT_EQ(file.problems().size(), 1u);
        EXPECT_EQ(file.problems()[0].line, 0);
        EXPECT_NE(file.problemText().toStdString().find(path), std::string::npos);
        EXPECT_TRUE(file.definitions().empty());
    }
}

TEST(LinetypeFile, theDrawingTellsTheCodePage)
{
    const Folder folder;
    writeAll(folder.file("x.lin"), "*\xD0\xE9\xCF\xDF\nA,1,-1\n");
    const ZvDbDatabasePtr database = readDrawing("  0\nSECTION\n  2\nHEADER\n  9\n$ACADVER\n  1\nAC1015\n"
                                                 "  9\n$DWGCODEPAGE\n  3\nANSI_936\n  0\nENDSEC\n  0\nEOF\n");
    ASSERT_TRUE(database);
    ZvDbLinetypeFile file;
    ASSERT_EQ(file.read(folder.file("x.lin").c_str(), *database), Zv::eOk);
    EXPECT_EQ(file.definitions()[0].name, ZvString(L"虚线"));
}

TEST(LinetypeFile, theSampleIsWithoutAProblem)
{
    ZvDbLinetypeFile file;
    ASSERT_EQ(file.read(ZEVA_SAMPLES_DIR "/linetypes.lin"), Zv::eOk);
    EXPECT_EQ(file.problemText().toStdString(), "");
    EXPECT_EQ(file.definitions().size(), 33u);
    for (const ZvDbLinetypeDefinition &definition : file.definitions())
        EXPECT_FALSE(definition.comments.isEmpty()) << definition.name.toStdString();
}

TEST(LinetypeFile, aFailedPatternLeavesTheElements)
{
    std::vector<Element> elements(3);
    ZvString why;
    EXPECT_FALSE(ZvDbLinetypeFile::parsePattern(L"A,1,-x", elements, why));
    EXPECT_EQ(elements.size(), 3u);
    EXPECT_EQ(why, ZvString(L"\"-x\" is not a number"));
    EXPECT_TRUE(ZvDbLinetypeFile::parsePattern(L"A,1,-2", elements, why));
    EXPECT_EQ(elements.size(), 2u);
}
