// SPDX-License-Identifier: MIT
#include "base/zvstring.h"

#include <gtest/gtest.h>

TEST(ZvString, emptyStringsAreEqualHoweverMade)
{
    EXPECT_TRUE(ZvString().isEmpty());
    EXPECT_TRUE(ZvString(L"").isEmpty());
    EXPECT_TRUE(ZvString("").isEmpty());
    EXPECT_TRUE(ZvString(static_cast<const char *>(nullptr)).isEmpty());
    EXPECT_EQ(ZvString(), ZvString(L""));
    EXPECT_EQ(ZvString().length(), 0);
    EXPECT_STREQ(ZvString().wstr(), L"");
}

TEST(ZvString, oneCharacterMakesAKey)
{
    const ZvString key(wchar_t(14));
    EXPECT_EQ(key.length(), 1);
    EXPECT_EQ(key.at(0), wchar_t(14));
}

TEST(ZvString, copiesShareTheirText)
{
    const ZvString name(L"Continuous");
    const ZvString copy = name;
    EXPECT_TRUE(copy.sharesWith(name));
    EXPECT_EQ(copy.wstr(), name.wstr());
    EXPECT_FALSE(ZvString(L"Continuous").sharesWith(name));
    EXPECT_EQ(ZvString(L"Continuous"), name);
}

TEST(ZvString, aChangeLeavesTheCopyAlone)
{
    ZvString a(L"layer");
    const ZvString b = a;
    a += L'1';
    EXPECT_EQ(a, L"layer1");
    EXPECT_EQ(b, L"layer");
}

TEST(ZvString, utf8GoesBothWaysWithoutLoss)
{
    for (const char *text : {"wall", "墙体-外墙", "Ø 12 ± 0.05", "𝄞 clef", "a\tb"}) {
        EXPECT_STREQ(ZvString(text).toUtf8().c_str(), text);
    }
    EXPECT_EQ(ZvString("墙").length(), 1);
    EXPECT_EQ(ZvString("𝄞").length(), 1);
}

TEST(ZvString, bytesThatAreNoUtf8BecomeReplacements)
{
    const wchar_t replacement = 0xFFFD;
    EXPECT_EQ(ZvString("\xFF"), ZvString(replacement));
    EXPECT_EQ(ZvString("\xC0\x80").length(), 2); // overlong
    EXPECT_EQ(ZvString("\xED\xA0\x80").length(), 3); // half of a pair
    EXPECT_EQ(ZvString("a\xE5\xA2").length(), 3); // cut short
    EXPECT_EQ(ZvString("a\xE5\xA2").at(1), replacement);
}

TEST(ZvString, compareMindsCase)
{
    EXPECT_EQ(ZvString("wall").compare(ZvString("wall")), 0);
    EXPECT_LT(ZvString("WALL").compare(ZvString("wall")), 0);
    EXPECT_LT(ZvString("a").compare(ZvString("aa")), 0);
    EXPECT_GT(ZvString("墙").compare(ZvString("z")), 0);
}

TEST(ZvString, compareNoCaseFoldsLettersOfSeveralAlphabets)
{
    EXPECT_EQ(ZvString("MessageBox").compareNoCase("mESSAGEbOX"), 0);
    EXPECT_EQ(ZvString("ÄÖÜ").compareNoCase(ZvString("äöü")), 0);
    EXPECT_EQ(ZvString("ОСИ").compareNoCase(ZvString("оси")), 0);
    EXPECT_NE(ZvString("a").compareNoCase(ZvString("b")), 0);
    EXPECT_LT(ZvString("A1").compareNoCase(ZvString("a2")), 0);
    EXPECT_EQ(ZvString("ČŽ").compareNoCase(ZvString("čž")), 0);
}

TEST(ZvString, hashNoCaseAgreesWithCompareNoCase)
{
    EXPECT_EQ(ZvString("Wall-Ä").hashNoCase(), ZvString("wALL-ä").hashNoCase());
    EXPECT_NE(ZvString("Wall").hash(), ZvString("wall").hash());
}

TEST(ZvString, searches)
{
    const ZvString text(L"xref|layer*");
    EXPECT_EQ(text.find(L'|'), 4);
    EXPECT_EQ(text.find(L'?'), -1);
    EXPECT_EQ(text.find(ZvString("layer")), 5);
    EXPECT_EQ(text.find(ZvString("layer"), 6), -1);
    EXPECT_TRUE(text.contains(L'*'));
    EXPECT_TRUE(ZvString("*Model_Space3").startsWithNoCase("*MODEL_SPACE"));
    EXPECT_FALSE(ZvString("*Model").startsWithNoCase("*MODEL_SPACE"));
}

TEST(ZvString, cutsTrimsAndChangesCase)
{
    const ZvString text(L"  _.UCS \t");
    EXPECT_EQ(text.trimmed(), L"_.UCS");
    EXPECT_EQ(text.trimmed().mid(2), L"UCS");
    EXPECT_EQ(text.trimmed().left(1), L"_");
    EXPECT_EQ(text.mid(100), L"");
    EXPECT_EQ(ZvString("Straße é").toUpper(), ZvString("STRAßE É"));
    EXPECT_EQ(ZvString("ABC").toLower(), L"abc");
}

TEST(ZvUtf8String, convertsAndCompares)
{
    const ZvUtf8String text("线型");
    EXPECT_EQ(text.length(), 6);
    EXPECT_EQ(text.toWide(), ZvString("线型"));
    EXPECT_EQ(ZvUtf8String(ZvString("线型")), text);
    EXPECT_EQ(ZvUtf8String("Title").compareNoCase("tITLE"), 0);
    EXPECT_LT(ZvUtf8String("a").compare("b"), 0);
    EXPECT_EQ(ZvUtf8String("a") + ZvUtf8String("b"), ZvUtf8String("ab"));
    EXPECT_TRUE(ZvUtf8String("").isEmpty());
}
