// SPDX-License-Identifier: MIT
#include "base/zvconfig.h"
#include "base/zvjson.h"

#include <gtest/gtest.h>

namespace {
ZvJsonPtr object()
{
    return ElementValue::createObject(2);
}
}

TEST(PropertyBag, twoReferencesSeeOneTree)
{
    const ZvJsonPtr params = object();
    const ZvJsonPtr same = params;
    same->SetDataI("ControlBtn", 6);
    int button = -1;
    EXPECT_TRUE(params->GetDataI("ControlBtn", button));
    EXPECT_EQ(button, 6);
}

TEST(PropertyBag, aMissingKeyLeavesTheValueAlone)
{
    const ZvJsonPtr bag = object();
    int integer = 42;
    bool boolean = true;
    long long wide = 43;
    ZvUtf8String text("kept");
    ZvString wideText("kept");
    ZvJsonPtr tree;
    EXPECT_FALSE(bag->GetDataI("x", integer));
    EXPECT_FALSE(bag->GetDataB("x", boolean));
    EXPECT_FALSE(bag->GetDataL("x", wide));
    EXPECT_FALSE(bag->GetDataS("x", text));
    EXPECT_FALSE(bag->GetDataSW("x", wideText));
    EXPECT_FALSE(bag->GetDataJ("x", tree));
    EXPECT_EQ(integer, 42);
    EXPECT_TRUE(boolean);
    EXPECT_EQ(wide, 43);
    EXPECT_EQ(text, ZvUtf8String("kept"));
    EXPECT_EQ(wideText, ZvString("kept"));
    EXPECT_TRUE(tree.isNull());
    EXPECT_TRUE(bag->member("x").isNull());
    EXPECT_FALSE(bag->hasKey("x"));
}

TEST(PropertyBag, keysArePaths)
{
    const ZvJsonPtr bag = object();
    bag->SetDataSW("btnText/0", "关闭(&C)");
    const ZvJsonPtr texts = bag->member("btnText");
    ASSERT_FALSE(texts.isNull());
    EXPECT_TRUE(texts->isArray());
    EXPECT_EQ(texts->elementCount(), 1);
    EXPECT_EQ(texts->element(0)->asString(), ZvUtf8String("关闭(&C)"));
    EXPECT_TRUE(texts->element(1).isNull());
    bag->SetDataD("paper/paper_w", 297.0);
    double width = 0;
    EXPECT_TRUE(bag->GetDataD("paper/paper_w", width));
    EXPECT_EQ(width, 297.0);
    bag->SetDataI("list/2", 7);
    EXPECT_EQ(bag->member("list")->elementCount(), 3);
    EXPECT_TRUE(bag->member("list")->element(0)->isNullNode());
}

TEST(PropertyBag, numbersAndBooleansConvert)
{
    const ZvJsonPtr bag = object();
    bag->SetDataI("isByLayerEnable", 0);
    bool enabled = true;
    EXPECT_TRUE(bag->GetDataB("isByLayerEnable", enabled));
    EXPECT_FALSE(enabled);
    bag->SetDataB("flag", true);
    int number = 0;
    EXPECT_TRUE(bag->GetDataI("flag", number));
    EXPECT_EQ(number, 1);
    bag->SetDataI("w", 210);
    EXPECT_EQ(bag->member("w")->asDouble(), 210.0);
    bag->SetDataI("tabs", 3);
    long long tabs = 0;
    EXPECT_TRUE(bag->GetDataL("tabs", tabs));
    EXPECT_EQ(tabs, 3);
}

TEST(PropertyBag, wordsAboveTheSignBitAreKeptAsSigned)
{
    const ZvJsonPtr bag = object();
    bag->SetDataI("backgroundColor", int(0xFF30281Eu));
    EXPECT_EQ(unsigned(bag->member("backgroundColor")->asInteger()), 0xFF30281Eu);
    bag->SetDataI("background", -1);
    EXPECT_EQ(bag->member("background")->asInteger(), -1);
}

TEST(PropertyBag, textsConvertBetweenTheirForms)
{
    const ZvJsonPtr bag = object();
    bag->SetDataSW("title", "线型");
    ZvUtf8String narrow;
    EXPECT_TRUE(bag->GetDataS("title", narrow));
    EXPECT_EQ(narrow, ZvUtf8String("线型"));
    bag->SetDataS("title", "layer");
    ZvString wide;
    EXPECT_TRUE(bag->GetDataSW("title", wide));
    EXPECT_EQ(wide, L"layer");
    int number = 5;
    EXPECT_FALSE(bag->GetDataI("title", number));
    EXPECT_EQ(number, 5);
}

TEST(PropertyBag, nullNodesAreFlaggedAndReadAsMissing)
{
    const ZvJsonPtr bag = object();
    bag->SetDataJ("defFilter", nullptr);
    EXPECT_TRUE(bag->hasKey("defFilter"));
    EXPECT_NE(bag->member("defFilter")->typeFlags() & 0x1000u, 0u);
    ZvJsonPtr tree;
    EXPECT_FALSE(bag->GetDataJ("defFilter", tree));
}

TEST(PropertyBag, elementsByPositionServeObjectsToo)
{
    const ZvJsonPtr bag = object();
    bag->SetDataS("name", "A4");
    bag->SetDataI("code", 9);
    EXPECT_EQ(bag->element(0, "")->asString(), ZvUtf8String("A4"));
    EXPECT_EQ(bag->element(0, "code")->asInteger(), 9);
    EXPECT_EQ(bag->keyAt(1), ZvUtf8String("code"));
    EXPECT_EQ(bag->elementCount(), 2);
    EXPECT_TRUE(bag->element(-1, "").isNull());
}

TEST(PropertyBag, arraysTakeObjectsInOrder)
{
    const ZvJsonPtr paths = ElementValue::createObject(1);
    for (const char *name : {"a.dxf", "b.dxf"}) {
        const ZvJsonPtr file = object();
        file->SetDataS("name", name);
        paths->append(file);
    }
    const ZvJsonPtr bag = object();
    bag->SetDataJ("filePaths", paths);
    ZvUtf8String name;
    EXPECT_TRUE(bag->GetDataS("filePaths/1/name", name));
    EXPECT_EQ(name, ZvUtf8String("b.dxf"));
    EXPECT_FALSE(bag->isArray());
    EXPECT_TRUE(bag->member("filePaths")->isArray());
}

TEST(PropertyBag, holdsReferencesAndIds)
{
    const ZvJsonPtr bag = object();
    const ZvJsonPtr held = object();
    bag->SetDataO("refDC", ZvRxObjectPtr(held.get()));
    EXPECT_EQ(zvrxNumRefs(held), 2);
    ZvRxObjectPtr got;
    EXPECT_TRUE(bag->GetDataO("refDC", got));
    EXPECT_EQ(got.get(), held.get());
    bag->SetDataId("ltypeId", 0x100000001ull);
    std::uint64_t id = 0;
    EXPECT_TRUE(bag->GetDataId("ltypeId", id));
    EXPECT_EQ(id, 0x100000001ull);
    bag->SetDataO("refDC", nullptr);
    got = nullptr;
    EXPECT_EQ(zvrxNumRefs(held), 1);
}

TEST(PropertyBag, setIntegerGivesTheMember)
{
    const ZvJsonPtr bag = object();
    const ZvJsonPtr member = bag->setInteger("result", -1, 0);
    EXPECT_EQ(member->asInteger(), -1);
    EXPECT_EQ(bag->member("result").get(), member.get());
}

TEST(Settings, pathsAreEnumeratedAsTheyStand)
{
    EXPECT_TRUE(zv_runtime_config("paths/templatePaths of this test").isNull());
    zv_runtime_settings()->SetDataS("paths/testPaths/0", "/usr/share/templates/");
    zv_runtime_settings()->SetDataS("paths/testPaths/1", "/home/templates");
    ZvArray<ZvUtf8String> paths;
    zvutEnumPaths(zv_runtime_config("paths/testPaths"), paths);
    ASSERT_EQ(paths.length(), 2);
    EXPECT_EQ(paths[0], ZvUtf8String("/usr/share/templates/"));
    EXPECT_EQ(paths[1], ZvUtf8String("/home/templates"));
    zvutEnumPaths(nullptr, paths);
    EXPECT_EQ(paths.length(), 2);
}
