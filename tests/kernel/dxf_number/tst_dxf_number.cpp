// SPDX-License-Identifier: MIT
#include "dxf_number.h"

#include <clocale>
#include <cstring>
#include <gtest/gtest.h>
#include <limits>
#include <random>

using namespace zvdxf;

namespace {

struct RealRow
{
    const char *text;
    bool isRead;
    double value;
};

TEST(DxfNumber, readsRealsAndRefusesJunk)
{
    const RealRow rows[] = {
        {"1234567.891", true, 1234567.891},
        {"  7.000000", true, 7},
        {"+2.5", true, 2.5},
        {" -0.25 \r", true, -0.25},
        {".5", true, 0.5},
        {"5.", true, 5},
        {"-.5", true, -0.5},
        {"1.000000000000000E+20", true, 1e20},
        {"1e-400", true, 0},
        {"0.1e-5000", true, 0},
        {"1e999", false, 0},
        {"-1e999", false, 0},
        {"", false, 0},
        {"   ", false, 0},
        {"+", false, 0},
        {"-", false, 0},
        {"abc", false, 0},
        {"1.5abc", false, 0},
        {"1,5", false, 0},
        {"1 5", false, 0},
        {"nan", false, 0},
        {"inf", false, 0},
        {"-inf", false, 0},
        {"0x10", false, 0},
    };
    for (const RealRow &row : rows) {
        double value = 99;
        EXPECT_EQ(parseReal(row.text, value), row.isRead) << row.text;
        EXPECT_EQ(value, row.value) << row.text;
    }
}

TEST(DxfNumber, writesTheShortestRealWithAPoint)
{
    EXPECT_EQ(formatReal(7), "7.0");
    EXPECT_EQ(formatReal(0), "0.0");
    EXPECT_EQ(formatReal(-0.0), "-0.0");
    EXPECT_EQ(formatReal(0.1), "0.1");
    EXPECT_EQ(formatReal(1234567.891), "1234567.891");
    EXPECT_EQ(formatReal(100000), "100000.0");
    EXPECT_EQ(formatReal(1e-20), "1e-20");
    EXPECT_EQ(formatReal(1e20), "1e+20");
    EXPECT_EQ(formatReal(std::numeric_limits<double>::infinity()), "0.0");
    EXPECT_EQ(formatReal(std::numeric_limits<double>::quiet_NaN()), "0.0");
}

TEST(DxfNumber, anyDoubleComesBackBitForBit)
{
    std::mt19937_64 random(20240501);
    for (int i = 0; i < 100000; ++i) {
        const std::uint64_t bits = random();
        double value = 0;
        std::memcpy(&value, &bits, sizeof value);
        if (!(value - value == 0))
            continue; // not finite
        double back = 0;
        ASSERT_TRUE(parseReal(formatReal(value), back)) << formatReal(value);
        ASSERT_EQ(std::memcmp(&value, &back, sizeof value), 0) << formatReal(value);
    }
}

TEST(DxfNumber, doesNotLookAtTheLocale)
{
    // Whatever of these is installed has a comma for the point.
    const bool isSet = std::setlocale(LC_ALL, "de_DE.UTF-8") || std::setlocale(LC_ALL, "fr_FR.UTF-8");
    double value = 0;
    EXPECT_TRUE(parseReal("2.5", value));
    EXPECT_EQ(value, 2.5);
    EXPECT_EQ(formatReal(2.5), "2.5");
    std::setlocale(LC_ALL, "C");
    RecordProperty("locale", isSet ? "comma" : "none installed");
}

TEST(DxfNumber, readsWholeNumbers)
{
    std::int64_t value = 99;
    EXPECT_TRUE(parseInteger("     7", value));
    EXPECT_EQ(value, 7);
    EXPECT_TRUE(parseInteger("-3", value));
    EXPECT_EQ(value, -3);
    EXPECT_TRUE(parseInteger("+3", value));
    EXPECT_EQ(value, 3);
    EXPECT_TRUE(parseInteger("4294967295", value));
    EXPECT_EQ(value, 4294967295);
    EXPECT_TRUE(parseInteger("-9223372036854775808", value));
    EXPECT_EQ(value, std::numeric_limits<std::int64_t>::min());
    EXPECT_TRUE(parseInteger("7.9", value));
    EXPECT_EQ(value, 7);
    for (const char *const junk : {"", " ", "x", "7x", "9223372036854775808", "1e300", "--1"}) {
        value = 99;
        EXPECT_FALSE(parseInteger(junk, value)) << junk;
        EXPECT_EQ(value, 0) << junk;
    }
}

TEST(DxfNumber, readsAndWritesHandles)
{
    std::uint64_t value = 99;
    EXPECT_TRUE(parseHandle(" 2a ", value));
    EXPECT_EQ(value, 0x2Au);
    EXPECT_TRUE(parseHandle("FFFFFFFFFFFFFFFF", value));
    EXPECT_EQ(value, 0xFFFFFFFFFFFFFFFFu);
    EXPECT_EQ(formatHandle(0xABC), "ABC");
    EXPECT_EQ(formatHandle(0), "0");
    EXPECT_EQ(formatHandle(0xFFFFFFFFFFFFFFFFu), "FFFFFFFFFFFFFFFF");
    for (const char *const junk : {"", "G", "2A x", "10000000000000000", "-1", "0x1"}) {
        value = 99;
        EXPECT_FALSE(parseHandle(junk, value)) << junk;
        EXPECT_EQ(value, 0u) << junk;
    }
}

TEST(DxfNumber, readsAndWritesChunks)
{
    std::string bytes;
    EXPECT_TRUE(parseChunk("00fF7F", bytes));
    EXPECT_EQ(bytes, std::string("\x00\xFF\x7F", 3));
    EXPECT_EQ(formatChunk(bytes), "00FF7F");
    EXPECT_TRUE(parseChunk("", bytes));
    EXPECT_TRUE(bytes.empty());
    EXPECT_FALSE(parseChunk("41F", bytes));
    EXPECT_EQ(bytes, "A");
    EXPECT_FALSE(parseChunk("41G0", bytes));
    EXPECT_EQ(bytes, "A");
}

} // namespace
