// SPDX-License-Identifier: MIT
#include "dxf_text.h"

#include <gtest/gtest.h>

using namespace zvdxf;

namespace {

struct PageRow
{
    const char *codePage;
    const char *bytes;
    const char *text;
};

// Each way back as well.
const PageRow pageRows[] = {
    {"ANSI_936", "\xC7\xBD\xCC\xE5", "墙体"},
    {"ANSI_936", "\xD2\xBB", "一"}, // these two bytes are valid UTF-8, too
    {"gb2312", "\xC7\xBD", "墙"},
    {"ANSI_932", "\x95\x5C\x96\xCA", "表面"}, // the first character's second byte is a backslash
    {"ANSI_932", "C:\\\x95\x5C", "C:\\表"},
    {"dos932", "\x95\xC7", "壁"},
    {"ANSI_949", "\xBA\xAE", "벽"},
    {"ANSI_950", "\xC0\xF0", "牆"},
    {"ANSI_1361", "\xA5\x62\\P", "벽\\P"}, // no won sign for the backslash
    {"ANSI_1252",
     "Stra\xDF"
     "e \xD8"
     "12",
     "Straße Ø12"},
    {"ANSI_1251", "\xD1\xF2\xE5\xED\xE0", "Стена"},
    {"DOS850", "\x81\x9B", "üø"},
    {"dos437", "\xF8", "°"},
    {"ISO8859-2", "\xB1", "ą"},
    {"ANSI_1258", "\xF4", "ô"},
    {"", "\xE9", "é"},
    {"UNDEFINED", "\xE9", "é"},
    {"ASCII", "\xE9", "é"},
    {"no such page", "\xE9", "é"},
};

TEST(DxfText, codePagesAreReadAndWritten)
{
    for (const PageRow &row : pageRows) {
        const TextCodec codec("AC1015", row.codePage);
        bool bad = false;
        EXPECT_EQ(codec.decode(row.bytes, &bad), row.text) << row.codePage;
        EXPECT_FALSE(bad) << row.codePage;
        EXPECT_EQ(codec.encode(row.text), row.bytes) << row.codePage;
        EXPECT_FALSE(codec.isUtf8()) << row.codePage;
    }
}

TEST(DxfText, fromVersion1021OnTextIsUtf8)
{
    const TextCodec codec("AC1021", "ANSI_936");
    EXPECT_TRUE(codec.isUtf8());
    EXPECT_EQ(codec.decode("墙体"), "墙体");
    EXPECT_EQ(codec.encode("墙体 😀"), "墙体 😀");
    EXPECT_FALSE(TextCodec("AC1018", "ANSI_936").isUtf8());
    EXPECT_FALSE(TextCodec("", "ANSI_936").isUtf8());
}

TEST(DxfText, inNewFilesTheCodePageServesBytesThatAreNoUtf8)
{
    bool bad = false;
    EXPECT_EQ(TextCodec("AC1027", "DOS850").decode("\x81", &bad), "ü");
    EXPECT_EQ(TextCodec("AC1027", "ANSI_936").decode("\xC7\xBD\xCC\xE5", &bad), "墙体");
    EXPECT_FALSE(bad);
}

TEST(DxfText, bytesOfNoEncodingBecomeTheReplacementCharacter)
{
    bool bad = false;
    EXPECT_EQ(TextCodec("AC1015", "ANSI_932")
                  .decode("A\xFF"
                          "B",
                          &bad),
              "A\uFFFDB");
    EXPECT_TRUE(bad);
}

TEST(DxfText, utf8WinsOverADeclaredCodePage)
{
    EXPECT_EQ(TextCodec("AC1015", "ANSI_1252").decode("墙"), "墙");
    EXPECT_TRUE(looksLikeUtf8("Layer 墙", "ANSI_1252"));
    EXPECT_TRUE(looksLikeUtf8("Layer 墙", "ANSI_936"));
    EXPECT_TRUE(looksLikeUtf8("é", "ANSI_1252"));
    EXPECT_FALSE(looksLikeUtf8("\xD2\xBB", "ANSI_936")) << "two bytes are too often a character of the page";
    EXPECT_FALSE(looksLikeUtf8("\xC7\xBD\xCC\xE5", "ANSI_936"));
    EXPECT_FALSE(looksLikeUtf8("plain", "ANSI_1252"));
    EXPECT_FALSE(looksLikeUtf8("caf\xE9", "ANSI_1252"));
    EXPECT_TRUE(TextCodec("AC1015", "ANSI_936", true).isUtf8());
    EXPECT_EQ(TextCodec("AC1015", "ANSI_936", true).encode("墙"), "墙");
}

TEST(DxfText, textThatWouldBeTakenForUtf8IsEscaped)
{
    const TextCodec codec("AC1015", "ANSI_1252");
    const std::string text = "Ã©"; // its two bytes in the page are an e with an accent in UTF-8
    EXPECT_EQ(codec.encode(text), "\\U+00C3\\U+00A9");
    EXPECT_EQ(codec.decode(codec.encode(text)), text);
}

TEST(DxfText, escapesAreResolved)
{
    const TextCodec codec("AC1015", "ANSI_1252");
    const std::pair<const char *, const char *> rows[] = {
        {"\\U+4E2D\\U+56FD", "中国"},
        {"\\U+4e2d", "中"},
        {"a\\U+00D8b", "aØb"},
        {"\\U+D83D\\U+DE00", "😀"},
        {"\\U+12", "\\U+12"},
        {"\\U+12G4", "\\U+12G4"},
        {"\\U+-123", "\\U+-123"},
        {"\\U+0000", "\\U+0000"},
        {"\\u+4E2D", "\\u+4E2D"},
        {"\\P\\L", "\\P\\L"},
        {"ends with \\", "ends with \\"},
        {"\\M+1955C", "表"},
        {"\\M+5C7BD", "墙"},
        {"\\M+5c7bd", "墙"},
        {"\\M+9C7BD", "\\M+9C7BD"},
        {"\\M+5C7", "\\M+5C7"},
    };
    for (const auto &row : rows) {
        bool bad = false;
        EXPECT_EQ(codec.decode(row.first, &bad), row.second);
        EXPECT_FALSE(bad) << row.first;
    }
    bool bad = false;
    EXPECT_EQ(codec.decode("\\U+D83Dx", &bad), "\uFFFDx");
    EXPECT_TRUE(bad);
}

TEST(DxfText, charactersOutsideThePageAreEscaped)
{
    EXPECT_EQ(TextCodec("AC1015", "ANSI_936").encode("Ø12 墙"), "\\U+00D812 \xC7\xBD");
    EXPECT_EQ(TextCodec("AC1015", "ANSI_1252").encode("墙é"), "\\U+5899\xE9");
    EXPECT_EQ(TextCodec("AC1009", "").encode("😀"), "\\U+D83D\\U+DE00");
}

TEST(DxfText, whateverIsWrittenIsReadBack)
{
    const char *const texts[] = {"plain",
                                 "",
                                 "Ø12 ± 5°",
                                 "墙体 表 벽 牆",
                                 "😀 mixed é",
                                 "x^2",
                                 "two\nlines\tand\rmore",
                                 "back\\slash",
                                 "vertical\vtab",
                                 "caret at end^",
                                 "一"};
    const char *const pages[] = {"ANSI_1252", "ANSI_932",  "ANSI_936", "ANSI_949", "ANSI_950",
                                 "ANSI_1361", "ANSI_1251", "DOS850",   "ANSI_874", "ANSI_1258"};
    for (const char *const version : {"AC1009", "AC1015", "AC1032"}) {
        for (const char *const page : pages) {
            const TextCodec codec(version, page);
            for (const char *const text : texts) {
                const std::string bytes = codec.encode(text);
                EXPECT_EQ(bytes.find_first_of("\r\n"), std::string::npos);
                EXPECT_EQ(codec.decode(bytes), text) << version << " " << page;
            }
        }
    }
}

TEST(DxfText, aCopiedCodecIsIndependent)
{
    TextCodec codec("AC1015", "ANSI_936");
    EXPECT_EQ(codec.decode("\xC7\xBD"), "墙");
    const TextCodec copy = codec;
    codec = TextCodec();
    EXPECT_EQ(copy.decode("\xC7\xBD"), "墙");
    EXPECT_EQ(copy.codePage(), "ANSI_936");
    EXPECT_TRUE(codec.isUtf8());
}

TEST(DxfText, piecesEndBetweenCharacters)
{
    const TextCodec codec("AC1015", "ANSI_936");
    const std::string text = "墙墙墙墙墙墙墙墙墙Ø墙\n墙墙墙";
    const std::vector<std::string> pieces = codec.encodePieces(text, 16);
    EXPECT_GT(pieces.size(), 1u);
    std::string joined;
    for (const std::string &piece : pieces) {
        EXPECT_LE(piece.size(), 16u);
        joined += codec.decode(piece); // fails if a character or an escape were cut
    }
    EXPECT_EQ(joined, text);
    EXPECT_EQ(codec.encodePieces("", 250), std::vector<std::string>(1));
}

TEST(DxfText, controlCodes)
{
    EXPECT_EQ(decodeControls("a^Jb^Mc^Id^ e"), "a\nb\rc\td^e");
    EXPECT_EQ(decodeControls("H7^G6 x^2 ^"), "H7^G6 x^2 ^");
    EXPECT_EQ(encodeControls("a\nb\rc\td^e"), "a^Jb^Mc^Id^ e");
}

std::string described(const std::vector<TextRun> &runs)
{
    std::string text;
    for (const TextRun &run : runs)
        text += "[" + std::string(run.underline ? "u" : "") + (run.overline ? "o" : "") + (run.strike ? "k" : "") + ":"
            + run.text + "]";
    return text;
}

TEST(DxfText, textCodes)
{
    const std::pair<const char *, const char *> rows[] = {
        {"", ""},
        {"plain", "[:plain]"},
        {"%%c12 %%D %%p", "[:Ø12 ° ±]"},
        {"a%%uunder%%u b", "[:a][u:under][: b]"},
        {"%%u%%oboth", "[uo:both]"},
        {"%%kgone", "[k:gone]"},
        {"a%%u%%ub", "[:ab]"},
        {"%%065%%176", "[:A°]"},
        {"50%%%", "[:50%]"},
        {"%%x", "[:%%x]"},
        {"%%12", "[:%%12]"},
        {"ends %%", "[:ends %%]"},
        {"%%007", ""},
        {"墙%%c", "[:墙Ø]"},
    };
    for (const auto &row : rows)
        EXPECT_EQ(described(decodeTextCodes(row.first)), row.second) << row.first;
    EXPECT_EQ(plainText("%%uA%%u%%cB"), "AØB");
}

} // namespace
