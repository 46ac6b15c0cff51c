// SPDX-License-Identifier: MIT
#include "base/zvcmcolor.h"

#include <gtest/gtest.h>

#include <cmath>

TEST(ZvCmEntityColor, startsAsTrueColourBlack)
{
    const ZvCmEntityColor color;
    EXPECT_EQ(color.colorMethod(), 194);
    EXPECT_EQ(color.color(), 0xC2000000u);
}

TEST(ZvCmEntityColor, keepsTheIndexAsItIs)
{
    ZvCmEntityColor color;
    color.setColorIndex(0);
    EXPECT_EQ(color.colorMethod(), 195);
    EXPECT_EQ(color.colorIndex(), 0);
    color.setColorIndex(256);
    EXPECT_EQ(color.colorMethod(), 195);
    EXPECT_EQ(color.colorIndex(), 256);
}

TEST(ZvCmEntityColor, answersTheIndexByMethod)
{
    EXPECT_EQ(ZvCmEntityColor(0xC0000000u).colorIndex(), 256);
    EXPECT_EQ(ZvCmEntityColor(0xC1000000u).colorIndex(), 0);
    EXPECT_EQ(ZvCmEntityColor(0xC1000007u).colorIndex(), 0);
    EXPECT_EQ(ZvCmEntityColor(0xC3000007u).colorIndex(), 7);
    EXPECT_EQ(ZvCmEntityColor(0xC8000000u).colorIndex(), 257);
}

TEST(ZvCmEntityColor, packsRedAboveBlue)
{
    ZvCmEntityColor color;
    color.setRGB(0x12, 0x34, 0x56);
    EXPECT_EQ(color.color(), 0xC2123456u);
    EXPECT_EQ(color.red(), 0x12);
    EXPECT_EQ(color.green(), 0x34);
    EXPECT_EQ(color.blue(), 0x56);
}

TEST(ZvCmColor, startsByLayer)
{
    const ZvCmColor color;
    EXPECT_EQ(color.colorMethod(), 192);
    EXPECT_EQ(color.colorIndex(), 256);
    EXPECT_TRUE(color.isByLayer());
}

TEST(ZvCmColor, everyRouteGivesOneWordPerColour)
{
    ZvCmColor index;
    index.setColorIndex(256);
    EXPECT_EQ(index, ZvCmColor());
    ZvCmColor word;
    word.setColor(0xC3000100u); // index 256 under method 195, as the dialog hands it
    EXPECT_EQ(word, ZvCmColor());
    ZvCmColor method;
    method.setColorIndex(5);
    method.setColorMethod(ZvCm::kByLayer);
    EXPECT_EQ(method, ZvCmColor());
    ZvCmColor block;
    block.setColorIndex(0);
    EXPECT_EQ(block.colorMethod(), 193);
    EXPECT_EQ(block.colorIndex(), 0);
}

TEST(ZvCmColor, noneKeepsItsIndex)
{
    ZvCmColor color;
    color.setColorIndex(257);
    color.setColorMethod(ZvCm::kNone);
    EXPECT_EQ(color.colorMethod(), 200);
    EXPECT_EQ(color.colorIndex(), 257);
}

TEST(ZvCmColor, indexColoursAnswerThePalette)
{
    ZvCmColor color;
    color.setColorIndex(30);
    EXPECT_TRUE(color.isByACI());
    EXPECT_EQ(color.red(), 255);
    EXPECT_EQ(color.green(), 127);
    EXPECT_EQ(color.blue(), 0);
}

TEST(ZvCmColor, aChangeForgetsTheBook)
{
    ZvCmColor color;
    color.setRGB(1, 2, 3);
    color.setBookName("Book$Tone 3");
    ZvCmColor plain;
    plain.setRGB(1, 2, 3);
    EXPECT_NE(color, plain);
    color.setRGB(1, 2, 3);
    EXPECT_EQ(color, plain);
}

TEST(ZvCmTransparency, byAlphaIsOpaqueAtOne)
{
    ZvCmTransparency transparency;
    transparency.setMethod(2);
    transparency.setAlphaPercent(1.0);
    EXPECT_EQ(transparency.alpha(), 255);
    transparency.setAlphaPercent(0.5);
    EXPECT_EQ(transparency.alpha(), 128);
}

TEST(Palette, entriesOfTheSharedTable)
{
    struct Row
    {
        int index;
        std::uint32_t word; // blue, green, red
    };
    const Row rows[] = {{1, 0x0000FF}, {2, 0x00FFFF}, {3, 0x00FF00}, {5, 0xFF0000}, {8, 0x808080},
                        {11, 0x7F7FFF}, {13, 0x5252A5}, {19, 0x131326}, {22, 0x0029A5}, {23, 0x5267A5},
                        {50, 0x00FFFF}, {90, 0x00FF00}, {130, 0xFFFF00}, {170, 0xFF0000}, {210, 0xFF00FF},
                        {249, 0x171326}, {250, 0x333333}, {255, 0xFFFFFF}};
    const std::uint32_t *palette = zvcmAcadPalette(0);
    ASSERT_NE(palette, nullptr);
    for (const Row &row : rows)
        EXPECT_EQ(palette[row.index], row.word) << "index " << row.index;
}

TEST(Palette, entrySevenFollowsTheBackground)
{
    EXPECT_EQ(zvcmAcadPalette(0)[7], 0xFFFFFFu);
    EXPECT_EQ(zvcmAcadPalette(0xFF30281Eu)[7], 0xFFFFFFu);
    EXPECT_EQ(zvcmAcadPalette(0x00FFFFFFu)[7], 0u);
    EXPECT_EQ(zvcmAcadPalette(0), zvcmAcadPalette(0));
}

TEST(Palette, mayBeTakenAway)
{
    zvcmSetPaletteAvailable(false);
    EXPECT_EQ(zvcmAcadPalette(0), nullptr);
    zvcmSetPaletteAvailable(true);
    EXPECT_NE(zvcmAcadPalette(0), nullptr);
}

TEST(Hsl, knownColours)
{
    struct Row
    {
        ZvGeVector3d rgb;
        ZvGeVector3d hsl;
    };
    const Row rows[] = {{{1, 0, 0}, {0, 1, 0.5}}, {{0, 1, 0}, {120, 1, 0.5}}, {{0, 0, 1}, {240, 1, 0.5}},
                        {{1, 1, 0}, {60, 1, 0.5}}, {{0.5, 0.5, 0.5}, {0, 0, 0.5}}, {{0, 0, 0}, {0, 0, 0}},
                        {{1, 1, 1}, {0, 0, 1}}, {{1, 0, 1}, {300, 1, 0.5}}};
    for (const Row &row : rows) {
        ZvGeVector3d hsl;
        zvdbConvertRgbToHsl(row.rgb, hsl);
        EXPECT_TRUE(hsl.isEqualTo(row.hsl)) << hsl.x << ' ' << hsl.y << ' ' << hsl.z;
        ZvGeVector3d rgb;
        zvdbConvertHslToRgb(row.hsl, rgb);
        EXPECT_TRUE(rgb.isEqualTo(row.rgb)) << rgb.x << ' ' << rgb.y << ' ' << rgb.z;
    }
    ZvGeVector3d red;
    zvdbConvertHslToRgb({360, 1, 0.5}, red);
    EXPECT_TRUE(red.isEqualTo({1, 0, 0}));
}

TEST(Hsl, everyByteColourComesBack)
{
    for (int r = 0; r < 256; r += 15) {
        for (int g = 0; g < 256; g += 15) {
            for (int b = 0; b < 256; b += 15) {
                const ZvGeVector3d rgb(r / 255.0, g / 255.0, b / 255.0);
                ZvGeVector3d hsl;
                ZvGeVector3d back;
                zvdbConvertRgbToHsl(rgb, hsl);
                zvdbConvertHslToRgb(hsl, back);
                ASSERT_GE(hsl.x, 0.0);
                ASSERT_LT(hsl.x, 360.0);
                ASSERT_EQ(int(back.x * 255.0 + 0.5001), r);
                ASSERT_EQ(int(back.y * 255.0 + 0.5001), g);
                ASSERT_EQ(int(back.z * 255.0 + 0.5001), b);
            }
        }
    }
}
