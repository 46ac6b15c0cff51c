// SPDX-License-Identifier: MIT
// What each drop-down of styles has of its own; what they share is tested by namedcombos.
#include "combodriver.h"
#include "drawingtest.h"
#include "drawingtexts.h"
#include "notices.h"

#include "zvutilsdimstylecombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilstablecellcolstylecombobox.h"
#include "zvutilstablecellrowstylecombobox.h"
#include "zvutilstablecellstylecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"

#include "base/zverror.h"
#include "db/zvdbhostservice.h"

#include <QSignalSpy>

namespace {

typedef std::unique_ptr<QComboBox> Combo;
typedef ZevaUISetting S;

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

Combo makeText()
{
    return std::make_unique<ZvUtilsTextStyleComboBox>(true, nullptr, false);
}

template <class T> Combo make()
{
    return std::make_unique<T>(true, nullptr);
}

/// A dimension of a class that derives from the one that the rule names.
class SpecialDimension : public ZvDbDimension
{
    ZVRX_DECLARE_MEMBERS(SpecialDimension)
};
ZVRX_DEFINE_MEMBERS(SpecialDimension, ZvDbDimension)

class SpecialMLeader : public ZvDbMLeader
{
    ZVRX_DECLARE_MEMBERS(SpecialMLeader)
};
ZVRX_DEFINE_MEMBERS(SpecialMLeader, ZvDbMLeader)

class SpecialTable : public ZvDbTable
{
    ZVRX_DECLARE_MEMBERS(SpecialTable)
};
ZVRX_DEFINE_MEMBERS(SpecialTable, ZvDbTable)

const ObjectRow kRules[] = {
    {"text style: text", makeText, isFollowedOfClass<ZvDbText>, true, false},
    {"text style: text with paragraphs", makeText, isFollowedOfClass<ZvDbMText>, true, false},
    {"text style: its record", makeText, isFollowedOfClass<ZvDbTextStyleTableRecord>, true, true},
    {"text style: attribute, derived from text", makeText, isFollowedOfClass<ZvDbAttribute>, false, false},
    {"text style: line", makeText, isFollowedOfClass<ZvDbLine>, false, false},
    {"text style: record of another style", makeText, isFollowedOfClass<ZvDbDimStyleTableRecord>, false, false},
    {"text style: no object", makeText, isFollowedOfNothing, false, false},
    {"dimension style: dimension", make<ZvUtilsDimStyleComboBox>, isFollowedOfClass<ZvDbDimension>, true, false},
    {"dimension style: derived from dimension", make<ZvUtilsDimStyleComboBox>, isFollowedOfClass<SpecialDimension>,
     true, false},
    {"dimension style: its record", make<ZvUtilsDimStyleComboBox>, isFollowedOfClass<ZvDbDimStyleTableRecord>, true,
     true},
    {"dimension style: leader", make<ZvUtilsDimStyleComboBox>, isFollowedOfClass<ZvDbLeader>, false, false},
    {"dimension style: no object", make<ZvUtilsDimStyleComboBox>, isFollowedOfNothing, false, false},
    {"multileader style: multileader", make<ZvUtilsMleaderStyleComboBox>, isFollowedOfClass<ZvDbMLeader>, true, false},
    {"multileader style: derived from multileader", make<ZvUtilsMleaderStyleComboBox>,
     isFollowedOfClass<SpecialMLeader>, true, false},
    {"multileader style: the style", make<ZvUtilsMleaderStyleComboBox>, isFollowedOfClass<ZvDbMLeaderStyle>, true,
     true},
    {"multileader style: its dictionary", make<ZvUtilsMleaderStyleComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::mleaderStyleDictionaryId>, true, true},
    {"multileader style: another dictionary", make<ZvUtilsMleaderStyleComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::tableStyleDictionaryId>, false, false},
    {"multileader style: leader", make<ZvUtilsMleaderStyleComboBox>, isFollowedOfClass<ZvDbLeader>, false, false},
    {"multileader style: no object", make<ZvUtilsMleaderStyleComboBox>, isFollowedOfNothing, false, false},
    {"table style: table", make<ZvUtilsTableStyleComboBox>, isFollowedOfClass<ZvDbTable>, true, false},
    {"table style: derived from table", make<ZvUtilsTableStyleComboBox>, isFollowedOfClass<SpecialTable>, true, false},
    {"table style: the style", make<ZvUtilsTableStyleComboBox>, isFollowedOfClass<ZvDbTableStyle>, true, true},
    {"table style: block reference, of which a table derives", make<ZvUtilsTableStyleComboBox>,
     isFollowedOfClass<ZvDbBlockReference>, false, false},
    {"table style: its dictionary", make<ZvUtilsTableStyleComboBox>,
     isFollowedOfDictionary<&ZvDbDatabase::tableStyleDictionaryId>, false, false},
    {"table style: no object", make<ZvUtilsTableStyleComboBox>, isFollowedOfNothing, false, false},
};

/// The members that list the cell styles of one table style.
struct Cells
{
    const char *name;
    const char *first; ///< The fixed first row, empty for none.
    Combo (*make)(bool hook, const ZvDbObjectId &style);
    Combo (*makePlain)(const ZvDbObjectId &style);
    void (*fill)(QComboBox &combo, const ZvDbObjectId &style);
};

template <class T> Cells cells(const char *name, const char *first)
{
    return {name, first,
            [](bool hook, const ZvDbObjectId &style) -> Combo { return std::make_unique<T>(hook, style, nullptr); },
            [](const ZvDbObjectId &style) -> Combo { return std::make_unique<T>(style, nullptr); },
            [](QComboBox &combo, const ZvDbObjectId &style) { static_cast<T &>(combo).init(style); }};
}

const Cells kCells[] = {
    cells<ZvUtilsTableCellStyleComboBox>("by row or column", "按行/列"),
    cells<ZvUtilsTableCellRowStyleComboBox>("of a row", ""),
    cells<ZvUtilsTableCellColStyleComboBox>("of a column", "(无)"),
};

QStringList withFirst(const Cells &member, const QStringList &rows)
{
    return *member.first ? QStringList{s(member.first)} + rows : rows;
}

} // namespace

class TestStyleCombos : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void objectsAreFollowedByTheirClass_data();
    void objectsAreFollowedByTheirClass();

    // text styles
    void textStylesLeaveReferencesAndUnnamedOnesOut_data();
    void textStylesLeaveReferencesAndUnnamedOnesOut();
    void currentStyleOfAReferenceHasARowWithoutData();
    void selectedStyleOfAReferenceHasARowWithoutData();
    void recordOfARow_data();
    void recordOfARow();
    void recordTellsTheStyle();
    void rowIsFoundByExactlyItsName_data();
    void rowIsFoundByExactlyItsName();
    void currentStyleIsToldByNameAndId();
    void styleIsShownById();
    void lastRowOfAnIdIsShown();
    void editedStylesAreListedAnew();
    void fillingIsHeard();
    void unreadableCurrentStyleMovesNothing();
    void styleWithoutANameMovesNothing();
    void openingReadsTheRecordsAnew();

    // the other drawing styles
    void dimensionStylesLeaveReferencesOut();
    void dimensionStyleWithoutANameIsListed();
    void dictionaryStylesAreAllListed();
    void unknownDimensionStyleIsTheLast();
    void currentStyleIdIsThatOfTheName();

    // errors
    void errorIsSwallowedWithAnAssertion_data();
    void errorIsSwallowedWithAnAssertion();
    void errorPassesWhereNothingSwallowsIt_data();
    void errorPassesWhereNothingSwallowsIt();

    // cell styles
    void cellStylesInFallingOrderBehindTheFirstRow_data() { cellRows(); }
    void cellStylesInFallingOrderBehindTheFirstRow();
    void otherTableStyleFillsTheList_data() { cellRows(); }
    void otherTableStyleFillsTheList();
    void noTableStyleLeavesTheFirstRow_data() { cellRows(); }
    void noTableStyleLeavesTheFirstRow();
    void cellSignalIsNeverHeard_data() { cellRows(); }
    void cellSignalIsNeverHeard();
    void cellPickWritesNothing_data() { cellRows(); }
    void cellPickWritesNothing();
    void cellListHearsNoNotice_data() { cellRows(); }
    void cellListHearsNoNotice();

private:
    static void cellRows()
    {
        QTest::addColumn<int>("member");
        for (const Cells &member : kCells)
            QTest::newRow(member.name) << int(&member - kCells);
    }
    void endCommand() { bus().commandEnded(L"LINE"); }
    static ZvDbObjectId textStyleNamed(const ZvString &name)
    {
        return ZevaUISetting::findTextStyleTableRecordByName(name, nullptr);
    }
    static ZvDbObjectId tableStyleNamed(const ZvString &name)
    {
        return ZevaUISetting::findTableStyleTableRecordByName(name, nullptr);
    }
};

void TestStyleCombos::objectsAreFollowedByTheirClass_data()
{
    QTest::addColumn<int>("rule");
    for (const ObjectRow &rule : kRules)
        QTest::newRow(rule.name) << int(&rule - kRules);
}

void TestStyleCombos::objectsAreFollowedByTheirClass()
{
    QFETCH(int, rule);
    addMLeaderStyle(L"Standard");
    addTableStyle(L"Standard");
    const Combo combo = kRules[rule].make();
    endCommand();
    QVERIFY(isFollowed(*combo, noticeOf(kNoticeLayoutSwitched)));
    QCOMPARE(kRules[rule].isFollowed(*combo, drawing(), true), kRules[rule].whenAffecting);
    QCOMPARE(kRules[rule].isFollowed(*combo, drawing(), false), kRules[rule].otherwise);
}

// ---- text styles

void TestStyleCombos::textStylesLeaveReferencesAndUnnamedOnesOut_data()
{
    QTest::addColumn<bool>("sorted");
    QTest::addColumn<QStringList>("rows");
    QTest::newRow("in the drawing's order") << false << QStringList{s("STANDARD"), s("Tall"), s("Arch")};
    QTest::newRow("sorted") << true << QStringList{s("Arch"), s("STANDARD"), s("Tall")};
}

void TestStyleCombos::textStylesLeaveReferencesAndUnnamedOnesOut()
{
    QFETCH(bool, sorted);
    openDrawing(kDrawing);
    addTextStyle(L"Arch");
    QVERIFY(!textStyleNamed(L"House|Tall").isNull());
    const ZvUtilsTextStyleComboBox combo(nullptr, sorted);
    QTEST(rowsOf(combo), "rows");
}

void TestStyleCombos::currentStyleOfAReferenceHasARowWithoutData()
{
    openDrawing(kDrawing);
    ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    QCOMPARE(drawing().setTextstyle(textStyleNamed(L"House|Tall")), Zv::eOk);
    endCommand();
    QCOMPARE(rowsOf(combo), (QStringList{s("STANDARD"), s("Tall"), s("House|Tall")}));
    QCOMPARE(combo.currentIndex(), 2);
    QVERIFY(!combo.itemData(2).isValid());
    QVERIFY(combo.itemIcon(2).isNull());
    S::ZvsiTextStyleInfoItem item;
    item.name = L"as it was";
    QVERIFY(!combo.getTextStyleInfo(item, 2));
    QVERIFY(!combo.getTextStyleInfo(item, -1));
    QCOMPARE(item.name, ZvString(L"as it was"));
    combo.showPopup(); // fills the list anew, without it
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), (QStringList{s("STANDARD"), s("Tall")}));
}

void TestStyleCombos::selectedStyleOfAReferenceHasARowWithoutData()
{
    openDrawing(kDrawing);
    const ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    select({add(new ZvDbText({0, 0, 0}, L"text", textStyleNamed(L"House|Tall"), 2.5, 0.0))});
    QCOMPARE(combo.currentText(), s("House|Tall"));
    QVERIFY(!combo.currentData().isValid());
}

void TestStyleCombos::recordOfARow_data()
{
    QTest::addColumn<int>("current");
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("name"); // null for none
    QTest::newRow("the first") << 1 << 0 << s("Standard");
    QTest::newRow("the last") << 0 << 1 << s("Alpha");
    QTest::newRow("-1 is the current one") << 1 << -1 << s("Alpha");
    QTest::newRow("-1 with none current") << -1 << -1 << QString();
    QTest::newRow("at the count") << 0 << 3 << QString();
    QTest::newRow("past the count") << 0 << 1000 << QString();
    QTest::newRow("below -1") << 0 << -2 << QString();
    QTest::newRow("a row with data of another kind") << 0 << 2 << QString();
}

void TestStyleCombos::recordOfARow()
{
    QFETCH(int, current);
    QFETCH(int, index);
    QFETCH(QString, name);
    addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(nullptr, false);
    combo.removeItem(combo.findText(s("Annotative"))); // new drawings have it
    QCOMPARE(combo.count(), 2);
    combo.addItem(s("of somebody else"), 5);
    combo.setCurrentIndex(current);
    S::ZvsiTextStyleInfoItem item;
    QCOMPARE(combo.getTextStyleInfo(item, index), !name.isNull());
    QCOMPARE(s(item.name.toUtf8().c_str()), name.isNull() ? s("") : name);
}

void TestStyleCombos::recordTellsTheStyle()
{
    openDrawing(kDrawing);
    ZvUtilsTextStyleComboBox combo(nullptr, false);
    S::ZvsiTextStyleInfoItem item;
    QVERIFY(combo.getTextStyleInfo(item, combo.findItemByTextStyle(s("Tall"))));
    QCOMPARE(item.objectId, textStyleNamed(L"Tall"));
    QCOMPARE(item.textSize, 3.5);
    QCOMPARE(item.xScale, 0.8);
    QVERIFY(item.isVertical);
    QVERIFY(!item.isAnnotative);
    QCOMPARE(combo.itemData(0).typeName(), "ZevaUISetting::ZvsiTextStyleInfoItem");
}

void TestStyleCombos::rowIsFoundByExactlyItsName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<int>("row");
    QTest::newRow("its name") << s("Alpha") << 2;
    QTest::newRow("another case") << s("ALPHA") << -1;
    QTest::newRow("the beginning of it") << s("Alp") << -1;
    QTest::newRow("more than it") << s("Alpha ") << -1;
    QTest::newRow("empty") << s("") << -1;
    QTest::newRow("the first of two") << s("Twice") << 3;
}

void TestStyleCombos::rowIsFoundByExactlyItsName()
{
    QFETCH(QString, name);
    addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(nullptr, false);
    combo.addItems({s("Twice"), s("Twice")});
    QTEST(combo.findItemByTextStyle(name), "row");
}

void TestStyleCombos::currentStyleIsToldByNameAndId()
{
    const ZvDbObjectId alpha = addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(nullptr, false);
    combo.setCurrentText(s("Alpha"));
    QCOMPARE(combo.getCurrentTextStyleName(), s("Alpha"));
    QCOMPARE(combo.getCurrentTextStyleId(), alpha);
    combo.setCurrentIndex(-1);
    QCOMPARE(combo.getCurrentTextStyleName(), s(""));
    QVERIFY(combo.getCurrentTextStyleId().isNull());
    combo.addItem(s("of somebody else"));
    combo.setCurrentIndex(combo.count() - 1);
    QVERIFY(combo.getCurrentTextStyleId().isNull());
}

void TestStyleCombos::styleIsShownById()
{
    const ZvDbObjectId alpha = addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(nullptr, false);
    combo.setCurrentTextStyle(alpha);
    QCOMPARE(combo.currentText(), s("Alpha"));
    combo.setCurrentTextStyle(addTextStyle(L"Not listed"));
    QCOMPARE(combo.currentText(), s("Alpha"));
    combo.addItem(s("without a record"));
    combo.setCurrentTextStyle(ZvDbObjectId());
    QCOMPARE(combo.currentText(), s("Alpha"));
}

void TestStyleCombos::lastRowOfAnIdIsShown()
{
    const ZvDbObjectId alpha = addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(nullptr, false);
    combo.addItem(s("the same once more"), combo.itemData(combo.findText(s("Alpha"))));
    combo.setCurrentTextStyle(alpha);
    QCOMPARE(combo.currentText(), s("the same once more"));
}

void TestStyleCombos::editedStylesAreListedAnew()
{
    addTextStyle(L"Alpha");
    const ZvDbObjectId beta = addTextStyle(L"Beta");
    ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    change<ZvDbTextStyleTableRecord>(beta, [](ZvDbTextStyleTableRecord &record) {
        record.setName(L"Gamma");
        record.setTextSize(7.0);
    });
    combo.blockSignals(true);
    combo.setCurrentText(s("Alpha"));
    combo.blockSignals(false);
    QSignalSpy told(&combo, &ZvUtilsTextStyleComboBox::textStyleTableItemChanged);
    combo.updateTextStyle();
    QCOMPARE(rowsOf(combo), (QStringList{s("Standard"), s("Annotative"), s("Alpha"), s("Gamma")}));
    QCOMPARE(combo.currentText(), s("Alpha"));
    S::ZvsiTextStyleInfoItem item;
    QVERIFY(combo.getTextStyleInfo(item, 3));
    QCOMPARE(item.textSize, 7.0);
    QCOMPARE(told.size(), 0);
    QVERIFY(!combo.signalsBlocked());
    QVERIFY(combo.hooked);
    QVERIFY(!zvedQueueHasInput());
}

void TestStyleCombos::fillingIsHeard()
{
    addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    combo.setCurrentIndex(-1);
    runCommands();
    QSignalSpy told(&combo, &ZvUtilsTextStyleComboBox::textStyleTableItemChanged);
    combo.init();
    QCOMPARE(told.size(), 1); // of the row that a filled list shows by itself
    QCOMPARE(combo.currentIndex(), 0);
    QVERIFY(!zvedQueueHasInput()); // and nothing was written
}

void TestStyleCombos::unreadableCurrentStyleMovesNothing()
{
    const ZvDbObjectId alpha = addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    drawing().setTextstyle(alpha);
    endCommand();
    QCOMPARE(combo.currentText(), s("Alpha"));
    blankQuietly(combo);
    combo.setEnabled(false);
    {
        const ZvDbObjectPointer<ZvDbTextStyleTableRecord> held(alpha, ZvDb::kForWrite);
        endCommand();
    }
    QCOMPARE(combo.currentIndex(), -1);
    QCOMPARE(combo.count(), 3);
    QVERIFY(combo.isEnabled()); // there is one
    QVERIFY(!combo.signalsBlocked());
}

void TestStyleCombos::styleWithoutANameMovesNothing()
{
    openDrawing(kDrawing);
    ZvDbObjectId nameless;
    {
        ZvDbTextStyleTable *table = nullptr;
        QCOMPARE(drawing().getSymbolTable(table, ZvDb::kForRead), Zv::eOk);
        ZvDbSymbolTableIterator *made = nullptr;
        QCOMPARE(table->newIterator(made), Zv::eOk);
        table->close();
        const std::unique_ptr<ZvDbSymbolTableIterator> walk(made);
        for (; !walk->done(); walk->step()) {
            const ZvDbObjectPointer<ZvDbTextStyleTableRecord> record(walk->getRecordId(), ZvDb::kForRead);
            if (record && record->name().isEmpty())
                nameless = walk->getRecordId();
        }
    }
    QVERIFY(!nameless.isNull());
    ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    endCommand();
    blankQuietly(combo);
    combo.setEnabled(false);
    select({add(new ZvDbText({0, 0, 0}, L"text", nameless, 2.5, 0.0))});
    QCOMPARE(rowsOf(combo), (QStringList{s("STANDARD"), s("Tall")}));
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(combo.isEnabled());
}

void TestStyleCombos::openingReadsTheRecordsAnew()
{
    const ZvDbObjectId alpha = addTextStyle(L"Alpha");
    ZvUtilsTextStyleComboBox combo(true, nullptr, false);
    S::ZvsiTextStyleInfoItem item;
    for (const double size : {7.0, 9.0}) {
        change<ZvDbTextStyleTableRecord>(alpha, [size](ZvDbTextStyleTableRecord &record) { record.setTextSize(size); });
        combo.showPopup();
        combo.hidePopup();
        QVERIFY(combo.getTextStyleInfo(item, combo.findItemByTextStyle(s("Alpha"))));
        QCOMPARE(item.textSize, size);
    }
}

// ---- the other drawing styles

void TestStyleCombos::dimensionStylesLeaveReferencesOut()
{
    openDrawing(kDrawing);
    ZvUtilsDimStyleComboBox combo(true, nullptr);
    QCOMPARE(rowsOf(combo), (QStringList{s("STANDARD"), s("Zulu")}));
    const ZvDbObjectId fine = ZevaUISetting::findDimStyleTableRecordByName(L"House|Fine", nullptr);
    QCOMPARE(drawing().setDimstyle(fine), Zv::eOk);
    endCommand();
    QCOMPARE(combo.currentText(), s("House|Fine"));
    QCOMPARE(combo.count(), 3);
}

void TestStyleCombos::dimensionStyleWithoutANameIsListed()
{
    openDrawing(drawingOfTable("DIMSTYLE",
                               "0\nDIMSTYLE\n2\nSTANDARD\n70\n0\n0\nDIMSTYLE\n2\n\n70\n0\n"
                               "0\nDIMSTYLE\n2\nZulu\n70\n0\n"));
    QCOMPARE(rowsOf(ZvUtilsDimStyleComboBox(nullptr)), (QStringList{s("STANDARD"), s(""), s("Zulu")}));
}

void TestStyleCombos::dictionaryStylesAreAllListed()
{
    openDrawing(kDrawing);
    QCOMPARE(rowsOf(ZvUtilsMleaderStyleComboBox(nullptr)), (QStringList{s("red"), s("Blue")}));
    QCOMPARE(rowsOf(ZvUtilsTableStyleComboBox(nullptr)), (QStringList{s("striped"), s("Plain")}));
}

void TestStyleCombos::unknownDimensionStyleIsTheLast()
{
    const ZvDbObjectId last = addDimStyle(L"Last");
    ZvUtilsDimStyleComboBox combo(nullptr);
    combo.addItem(s("of somebody else"));
    combo.setCurrentIndex(combo.count() - 1);
    QCOMPARE(combo.getCurrentStyleId(), last);
    combo.setCurrentIndex(-1);
    QVERIFY(combo.getCurrentStyleId().isNull());
}

void TestStyleCombos::currentStyleIdIsThatOfTheName()
{
    const ZvDbObjectId dimension = addDimStyle(L"Alpha");
    const ZvDbObjectId leader = addMLeaderStyle(L"Alpha");
    const ZvDbObjectId table = addTableStyle(L"Alpha");
    ZvUtilsDimStyleComboBox dimensions(nullptr);
    ZvUtilsMleaderStyleComboBox leaders(nullptr);
    ZvUtilsTableStyleComboBox tables(nullptr);
    for (QComboBox *combo :
         {static_cast<QComboBox *>(&dimensions), static_cast<QComboBox *>(&leaders), static_cast<QComboBox *>(&tables)})
        combo->setCurrentText(s("Alpha"));
    QCOMPARE(dimensions.getCurrentStyleName(), s("Alpha"));
    QCOMPARE(leaders.getCurrentStyleName(), s("Alpha"));
    QCOMPARE(tables.getCurrentStyleName(), s("Alpha"));
    QCOMPARE(dimensions.getCurrentStyleId(), dimension);
    QCOMPARE(leaders.getCurrentStyleId(), leader);
    QCOMPARE(tables.getCurrentStyleId(), table);
    for (QComboBox *combo : {static_cast<QComboBox *>(&leaders), static_cast<QComboBox *>(&tables)}) {
        combo->addItem(s("of somebody else"));
        combo->setCurrentIndex(combo->count() - 1);
    }
    QVERIFY(leaders.getCurrentStyleId().isNull());
    QVERIFY(tables.getCurrentStyleId().isNull());
    leaders.setCurrentIndex(-1);
    tables.setCurrentIndex(-1);
    QVERIFY(leaders.getCurrentStyleId().isNull());
    QVERIFY(tables.getCurrentStyleId().isNull());
}

// ---- errors

void TestStyleCombos::errorIsSwallowedWithAnAssertion_data()
{
    QTest::addColumn<bool>("isText");
    QTest::addColumn<QString>("assertion");
    QTest::newRow("text style") << true << s("false, zvutilstextstylecombobox, 299");
    QTest::newRow("dimension style") << false << s("false, zvutilsdimstylecombobox, 225");
}

void TestStyleCombos::errorIsSwallowedWithAnAssertion()
{
    QFETCH(bool, isText);
    QFETCH(QString, assertion);
    const Combo combo = isText ? makeText() : make<ZvUtilsDimStyleComboBox>();
    const FailingControl failing(*combo);
    const Assertions assertions;
    if (isText) // the variable's notice makes the row
        drawing().setTextstyle(addTextStyle(L"Late"));
    else
        drawing().setDimstyle(addDimStyle(L"Late"));
    QCOMPARE(assertions.list(), QStringList{assertion});
    QVERIFY(!combo->signalsBlocked());
    QVERIFY(qobject_cast<CZvQtControlHelp *>(combo.get())->hooked);
}

void TestStyleCombos::errorPassesWhereNothingSwallowsIt_data()
{
    QTest::addColumn<bool>("isTable");
    QTest::newRow("multileader style") << false;
    QTest::newRow("table style") << true;
}

void TestStyleCombos::errorPassesWhereNothingSwallowsIt()
{
    QFETCH(bool, isTable);
    addMLeaderStyle(L"Standard");
    addTableStyle(L"Standard");
    const Combo combo = isTable ? make<ZvUtilsTableStyleComboBox>() : make<ZvUtilsMleaderStyleComboBox>();
    endCommand();
    ZvDbHostService &service = *zvrxCast<ZvDbHostService>(zvrxGetService(3));
    const wchar_t *variable = isTable ? L"CTABLESTYLE" : L"CMLEADERSTYLE";
    ZvResBuf *current = service.readVariable(variable, &drawing());
    current->setObjectId(isTable ? addTableStyle(L"Late") : addMLeaderStyle(L"Late"));
    bus().enableUpdateUI(false); // the variable's own notice would be the kernel's to catch
    service.writeVariable(variable, current, &drawing());
    bus().enableUpdateUI(true);
    zvutRelRb(current);
    const FailingControl failing(*combo);
    auto &receiver = *qobject_cast<CZvQtControlHelp *>(combo.get());
    QVERIFY_EXCEPTION_THROWN(receiver.acceptUpdateUI(noticeOf(kNoticeCommandEnded)), ZvError);
    QVERIFY(!combo->signalsBlocked());
    QVERIFY(receiver.hooked);
}

// ---- cell styles

void TestStyleCombos::cellStylesInFallingOrderBehindTheFirstRow()
{
    QFETCH(int, member);
    openDrawing(kDrawing);
    const QStringList rows
        = withFirst(kCells[member], {s("表头"), s("标题"), s("数据"), s("Beta"), s("ALPHA"), s("alpha")});
    const Combo combo = kCells[member].makePlain(tableStyleNamed(L"striped"));
    QStringList shown = rowsOf(*combo);
    // Two names that differ in case only may stand either way.
    const int first = shown.indexOf(s("alpha"));
    const int second = shown.indexOf(s("ALPHA"));
    QCOMPARE(qAbs(first - second), 1);
    if (first < second)
        shown.swapItemsAt(first, second);
    QCOMPARE(shown, rows);
    for (int row = 0; row < combo->count(); ++row) {
        QVERIFY(combo->itemIcon(row).isNull());
        QVERIFY(!combo->itemData(row).isValid());
    }
}

void TestStyleCombos::otherTableStyleFillsTheList()
{
    QFETCH(int, member);
    openDrawing(kDrawing);
    const QStringList fixed = withFirst(kCells[member], {s("表头"), s("标题"), s("数据")});
    const Combo combo = kCells[member].make(true, tableStyleNamed(L"striped"));
    QCOMPARE(combo->count(), fixed.size() + 3);
    kCells[member].fill(*combo, tableStyleNamed(L"Plain"));
    QCOMPARE(rowsOf(*combo), fixed);
    QCOMPARE(combo->currentIndex(), 0);
}

void TestStyleCombos::noTableStyleLeavesTheFirstRow()
{
    QFETCH(int, member);
    QCOMPARE(rowsOf(*kCells[member].make(false, ZvDbObjectId())), withFirst(kCells[member], {}));
}

void TestStyleCombos::cellSignalIsNeverHeard()
{
    QFETCH(int, member);
    openDrawing(kDrawing);
    const Combo combo = kCells[member].make(false, tableStyleNamed(L"striped"));
    QSignalSpy told(combo.get(), SIGNAL(itemChanged(QString)));
    QVERIFY(told.isValid());
    QSignalSpy changed(combo.get(), qOverload<int>(&QComboBox::currentIndexChanged));
    combo->setCurrentIndex(2);
    combo->setCurrentIndex(-1);
    QCOMPARE(told.size(), 0);
    QCOMPARE(changed.size(), 2); // what callers follow
    QVERIFY(!combo->signalsBlocked());
}

void TestStyleCombos::cellPickWritesNothing()
{
    QFETCH(int, member);
    openDrawing(kDrawing);
    const std::uint64_t before = drawing().changeStamp();
    const Combo combo = kCells[member].make(true, tableStyleNamed(L"striped"));
    combo->setCurrentIndex(2);
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(drawing().changeStamp(), before);
}

void TestStyleCombos::cellListHearsNoNotice()
{
    QFETCH(int, member);
    openDrawing(kDrawing);
    const Combo combo = kCells[member].make(true, tableStyleNamed(L"striped"));
    QVERIFY(!qobject_cast<CZvQtControlHelp *>(combo.get())->pickFirstInfo);
    const QStringList rows = rowsOf(*combo);
    endCommand();
    for (const std::uint64_t kind : {kNoticeDocumentCurrent, kNoticeLayoutSwitched, kNoticeSysVar, kNoticePickFirst})
        QVERIFY(!isFollowed(*combo, noticeOf(kind, L"CTABLESTYLE")));
    QVERIFY(!isFollowedOfClass<ZvDbTableStyle>(*combo, drawing(), true));
    QCOMPARE(rowsOf(*combo), rows);
}

ZEVA_TEST_MAIN(TestStyleCombos)
#include "tst_stylecombos.moc"
