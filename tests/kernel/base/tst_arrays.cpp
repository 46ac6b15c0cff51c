// SPDX-License-Identifier: MIT
#include "base/zvarray.h"
#include "base/zvstring.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace {
std::vector<std::string> s_asserts;
void rememberAssert(const char *text, const char *, int)
{
    s_asserts.emplace_back(text);
}

std::vector<int> s_destroyed;
struct Tracked
{
    Tracked(int n = 0) : number(n) { }
    Tracked(const Tracked &other) = default;
    Tracked(Tracked &&other) noexcept : number(other.number) { other.number = 0; }
    Tracked &operator=(const Tracked &) = default;
    ~Tracked()
    {
        if (number != 0)
            s_destroyed.push_back(number);
    }
    int number;
};
}

TEST(ZvArray, keepsOrderThroughInsertAndRemove)
{
    ZvArray<ZvString> names;
    names.append("b");
    names.append("d");
    names.insertAt(0, "a");
    names.insertAt(2, "c");
    ASSERT_EQ(names.length(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(names[i], ZvString(wchar_t(L'a' + i)));
    names.removeAt(1);
    names.removeFirst();
    EXPECT_EQ(names[0], L"c");
    EXPECT_TRUE(names.remove("d"));
    EXPECT_FALSE(names.remove("d"));
    EXPECT_EQ(names.find("c"), 0);
    EXPECT_EQ(names.find("x"), -1);
}

TEST(ZvArray, appendsAnElementOfItsOwn)
{
    ZvArray<ZvString> names(0, 1);
    names.append("first");
    for (int i = 0; i < 20; ++i)
        names.append(names[0]);
    EXPECT_EQ(names.last(), L"first");
}

TEST(ZvArray, growsByItsStep)
{
    ZvArray<int> numbers(0, 8);
    numbers.append(1);
    EXPECT_EQ(numbers.physicalLength(), 8);
    EXPECT_EQ(numbers.growLength(), 8);
    EXPECT_EQ(numbers.logicalLength(), 1);
}

TEST(ZvArray, reportsAnIndexOutOfRangeAndGoesOn)
{
    s_asserts.clear();
    const ZvAssertHandler before = zvSetAssertHandler(rememberAssert);
    ZvArray<int> numbers;
    EXPECT_EQ(numbers[0], 0);
    EXPECT_EQ(numbers[-1], 0);
    numbers.removeAt(3);
    zvSetAssertHandler(before);
    ASSERT_EQ(s_asserts.size(), 3u);
    EXPECT_EQ(s_asserts[0], "this->isValid(i)");
}

TEST(ZvArray, copiesAreIndependent)
{
    ZvArray<ZvString> a;
    a.append("x");
    ZvArray<ZvString> b = a;
    b[0] = "y";
    EXPECT_EQ(a[0], L"x");
    a = b;
    EXPECT_EQ(a[0], L"y");
    a.clear();
    EXPECT_TRUE(a.isEmpty());
    EXPECT_EQ(b.length(), 1);
}

TEST(ZvArrayEx, sharesItsStorageAndReleasesFromLastToFirst)
{
    s_destroyed.clear();
    {
        ZvArrayEx<Tracked> a;
        for (int i = 1; i <= 3; ++i)
            a.append(Tracked(i));
        const ZvArrayEx<Tracked> b = a;
        a.append(Tracked(4));
        EXPECT_EQ(b.length(), 4);
        s_destroyed.clear();
    }
    EXPECT_EQ(s_destroyed, (std::vector<int> {4, 3, 2, 1}));
}
