// SPDX-License-Identifier: MIT
#include "private/zvbagreader.h"
#include "private/zvqtstring.h"
#include "zevatest.h"

namespace {

ZvJsonPtr makeTree()
{
    return ElementValue::createObject(2);
}

} // namespace

class TestZvBagReader : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void fallbackIsGivenWhereThereIsNoValue_data();
    void fallbackIsGivenWhereThereIsNoValue();
    void valueIsGivenWhereThereIsOne();
    void numbersAndBoolsConvert();
    void wideAndUtf8StringsReadAlike();
    void textsAreThoseOfTheArrayInOrder();
    void missingOrEmptyArrayHasNoTexts();
    void nullElementIsAnEmptyText();
    void subTreeIsTheCallersTree();
    void presenceOfAKey();
    void stringsConvertWithoutLoss_data();
    void stringsConvertWithoutLoss();
};

void TestZvBagReader::fallbackIsGivenWhereThereIsNoValue_data()
{
    QTest::addColumn<int>("kind");
    QTest::newRow("null node") << 0;
    QTest::newRow("missing member") << 1;
    QTest::newRow("null-flagged member") << 2;
}

void TestZvBagReader::fallbackIsGivenWhereThereIsNoValue()
{
    QFETCH(int, kind);
    const ZvJsonPtr node = kind == 0 ? ZvJsonPtr() : makeTree();
    if (kind == 2) {
        node->SetDataJ("key", nullptr);
        QVERIFY(node->hasKey("key"));
        QVERIFY(node->member("key")->typeFlags() & 0x1000);
    }
    QCOMPARE(zvBagInt(node, "key", -7), -7);
    QCOMPARE(zvBagLong(node, "key", 1LL << 40), 1LL << 40);
    QCOMPARE(zvBagBool(node, "key", true), true);
    QCOMPARE(zvBagBool(node, "key", false), false);
    QCOMPARE(zvBagDouble(node, "key", 2.5), 2.5);
    QCOMPARE(zvBagString(node, "key", QStringLiteral("缺省")), QStringLiteral("缺省"));
    QCOMPARE(zvBagString(node, "key"), QString());
    QVERIFY(zvBagId(node, "key").isNull());
    QVERIFY(!zvBagTree(node, "key"));
    QCOMPARE(zvBagTexts(node, "key"), QStringList());
}

void TestZvBagReader::valueIsGivenWhereThereIsOne()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataI("int", 48);
    node->SetDataL("long", 5LL << 33);
    node->SetDataB("bool", false);
    node->SetDataD("double", 210.5);
    node->SetDataS("text", "标题");
    QCOMPARE(zvBagInt(node, "int", 0), 48);
    QCOMPARE(zvBagLong(node, "long", 0), 5LL << 33);
    QCOMPARE(zvBagBool(node, "bool", true), false);
    QCOMPARE(zvBagDouble(node, "double", 0), 210.5);
    QCOMPARE(zvBagString(node, "text"), QStringLiteral("标题"));
    node->SetDataId("id", (7ULL << 32) + 5);
    QCOMPARE(zvBagId(node, "id").asInt64(), std::uint64_t((7ULL << 32) + 5));
}

void TestZvBagReader::numbersAndBoolsConvert()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataI("zero", 0);
    node->SetDataI("one", 1);
    node->SetDataB("true", true);
    QCOMPARE(zvBagBool(node, "zero", true), false);
    QCOMPARE(zvBagBool(node, "one", false), true);
    QCOMPARE(zvBagInt(node, "true", 0), 1);
    QCOMPARE(zvBagDouble(node, "one", 0), 1.0);
    QCOMPARE(zvBagLong(node, "one", 0), 1LL);
}

void TestZvBagReader::wideAndUtf8StringsReadAlike()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataSW("wide", ZvString(L"图层 1"));
    node->SetDataS("utf8", "图层 1");
    QCOMPARE(zvBagString(node, "wide"), QStringLiteral("图层 1"));
    QCOMPARE(zvBagString(node, "utf8"), QStringLiteral("图层 1"));
}

void TestZvBagReader::textsAreThoseOfTheArrayInOrder()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataS("btnText/0", "关闭(&C)");
    node->SetDataSW("btnText/1", ZvString(L"second"));
    QCOMPARE(zvBagTexts(node, "btnText"), (QStringList{QStringLiteral("关闭(&C)"), QStringLiteral("second")}));
}

void TestZvBagReader::missingOrEmptyArrayHasNoTexts()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataJ("empty", ElementValue::createObject(1));
    QCOMPARE(zvBagTexts(node, "empty"), QStringList());
    QCOMPARE(zvBagTexts(node, "missing"), QStringList());
}

void TestZvBagReader::nullElementIsAnEmptyText()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataS("texts/0", "a");
    node->SetDataJ("texts/1", nullptr);
    node->SetDataS("texts/2", "c");
    QCOMPARE(zvBagTexts(node, "texts"), (QStringList{QStringLiteral("a"), QString(), QStringLiteral("c")}));
}

void TestZvBagReader::subTreeIsTheCallersTree()
{
    const ZvJsonPtr node = makeTree();
    const ZvJsonPtr paper = makeTree();
    node->SetDataJ("paper", paper);
    const ZvJsonPtr read = zvBagTree(node, "paper");
    QVERIFY(read);
    read->SetDataI("paper_unit", 2);
    QCOMPARE(zvBagInt(paper, "paper_unit", 0), 2);
}

void TestZvBagReader::presenceOfAKey()
{
    const ZvJsonPtr node = makeTree();
    node->SetDataI("key", 0);
    node->SetDataJ("null", nullptr);
    QVERIFY(zvBagHasKey(node, "key"));
    QVERIFY(zvBagHasKey(node, "null"));
    QVERIFY(!zvBagHasKey(node, "other"));
    QVERIFY(!zvBagHasKey(ZvJsonPtr(), "key"));
}

void TestZvBagReader::stringsConvertWithoutLoss_data()
{
    QTest::addColumn<QString>("text");
    QTest::newRow("empty") << QString();
    QTest::newRow("Latin") << QStringLiteral("Layer 0");
    QTest::newRow("accents") << QStringLiteral("Größe é");
    QTest::newRow("Chinese") << QStringLiteral("尺寸标注");
    QTest::newRow("beyond 16 bits") << QStringLiteral("𠮷野家 😀");
}

void TestZvBagReader::stringsConvertWithoutLoss()
{
    QFETCH(QString, text);
    QCOMPARE(zvToQString(zvToZvString(text)), text);
    QCOMPARE(zvToQString(zvToZvUtf8String(text)), text);
    QCOMPARE(zvToZvString(text).length(), text.toUcs4().size());
}

ZEVA_TEST_MAIN(TestZvBagReader)
#include "tst_zvbagreader.moc"
