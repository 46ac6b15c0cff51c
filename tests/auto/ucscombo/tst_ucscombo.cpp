// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "drawingtest.h"
#include "drawingtexts.h"
#include "macrospy.h"
#include "notices.h"
#include "rowpicture.h"
#include "viewportdata.h"

#include "zvutilsucscombobox.h"

#include "base/zverror.h"
#include "db/zvdbhostservice.h"

#include <QSignalSpy>

namespace {

typedef ZevaUISetting S;

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

/// The rows in the order in which they stand.
struct UcsRow
{
    int type;
    const char *text;
    const char *picture; ///< Null for none.
    const char *call; ///< What a pick sends, empty for nothing.
};

const UcsRow kRows[] = {
    {S::kUcsUnnamed, "未命名", nullptr, ""},
    {S::kUcsWorld, "世界", ":/res/view_world.bmp", "_.UCS _World|false"},
    {S::kUcsPrevious, "上一个", nullptr, "previous"},
    {S::kUcsTop, "俯视", ":/res/view_top.bmp", "_.UCS _Top|false"},
    {S::kUcsBottom, "仰视", ":/res/view_bottom.bmp", "_.UCS _Bottom|false"},
    {S::kUcsLeft, "左视", ":/res/view_left.bmp", "_.UCS _Left|false"},
    {S::kUcsRight, "右视", ":/res/view_right.bmp", "_.UCS _Right|false"},
    {S::kUcsFront, "前视", ":/res/view_front.bmp", "_.UCS _Front|false"},
    {S::kUcsBack, "后视", ":/res/view_back.bmp", "_.UCS _Back|false"},
    {S::kUcsNamed, "Roof", nullptr, "_.UCS _Named _Restore Roof;|false"},
};

const ZvGeVector3d kX{1, 0, 0};
const ZvGeVector3d kY{0, 1, 0};
const ZvGeVector3d kZ{0, 0, 1};

ZvDbObjectId addUcs(ZvDbDatabase &drawing, const ZvString &name, const ZvGePoint3d &origin = {5, 5, 0})
{
    ZvDbObjectId id;
    auto *record = new ZvDbUCSTableRecord;
    record->setName(name);
    record->setOrigin(origin);
    const ZvDbObjectPointer<ZvDbUCSTable> table(drawing.UCSTableId(), ZvDb::kForWrite);
    if (table->add(record, id) == Zv::eOk)
        record->close();
    else
        delete record;
    return id;
}

ZvString wide(const QString &text)
{
    return ZvUtf8String(text.toUtf8().constData()).toWide();
}

/// What is read in place of a variable that holds the number of an orthographic system; null for the variable itself.
ZvResBuf *(*readInstead)() = nullptr;

/// An object whose class derives from that of viewport data.
class ViewportObject : public ZvDbLine
{
public:
    ZvRxClass *isA() const override
    {
        static ZvRxClass descriptor("TestViewportObject", ZvDbAbstractViewportData::desc());
        return &descriptor;
    }
};

struct ObjectCase
{
    const char *name;
    bool (*isFollowed)(QComboBox &combo, const ZvDbDatabase &drawing, bool affectsSelection);
    bool expected;
};

const ObjectCase kObjects[] = {
    {"its record", isFollowedOfClass<ZvDbUCSTableRecord>, true},
    {"derived from viewport data", isFollowedOfClass<ViewportObject>, true},
    {"view", isFollowedOfClass<ZvDbViewTableRecord>, false},
    {"line", isFollowedOfClass<ZvDbLine>, false},
    {"layer", isFollowedOfClass<ZvDbLayerTableRecord>, false},
    {"no object", isFollowedOfNothing, false},
};

} // namespace

// Stands before the kernel's: what cannot be read there can be had in no other way.
ZvResBuf *ZvDbHostService::readVariable(const ZvString &name, const ZvDbDatabase *database)
{
    if (readInstead && (name == L"UCSORTHOVIEW" || name == L"PUCSORTHOVIEW"))
        return readInstead();
    return MacroSpy::next<ZvResBuf *(*)(ZvDbHostService *, const ZvString &, const ZvDbDatabase *)>(
        "_ZN15ZvDbHostService12readVariableERK8ZvStringPK12ZvDbDatabase")(this, name, database);
}

Q_DECLARE_METATYPE(ZvGePoint3d)
Q_DECLARE_METATYPE(ZvGeVector3d)

class TestUcsCombo : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        DrawingTest::init();
        MacroSpy::take();
    }
    // rows
    void rowsInTheirOrder();
    void rowHasItsTypeAndPicture_data() { ucsRows(); }
    void rowHasItsTypeAndPicture();
    void rowsOfTheSystemInForce_data();
    void rowsOfTheSystemInForce();

    // what is in force
    void systemInForceIsRead_data();
    void systemInForceIsRead();
    void unlistedNameIsNoRow();
    void unreadableNumberIsNone_data();
    void unreadableNumberIsNone();
    void nothingIsReadWithoutADrawing();
    void paperSpaceValuesDecideOnTheLayout();
    void modelValuesDecideInModelSpace();
    void modelValuesDecideInAViewportOfTheLayout();
    void presetOfTheSameNameIsShown();
    void fillingSendsNothing();
    void viewportWithoutViewportDataThrows();

    // picks
    void pickSendsItsMacro_data() { ucsRows(); }
    void pickSendsItsMacro();
    void typeSendsItsMacroOrNothing_data();
    void typeSendsItsMacroOrNothing();
    void nameStandsInTheMacro_data();
    void nameStandsInTheMacro();
    void pickOfARowWithoutTextGoesByItsType_data();
    void pickOfARowWithoutTextGoesByItsType();
    void unhookedPickIsToldAndSendsNothing();
    void pickGoesByItsRowAndTellsWhatIsShown();
    void pickEndsTheGuardOfItsHost();
    void pickSwitchesTheSystem_data() { ucsRows(); }
    void pickSwitchesTheSystem();
    void previousSystemComesBackAndCanBeUndone();
    void pickDuringACommandIsItsInput();

    // the list opens
    void blankBoxShowsWhatIsInForceWhenItOpens_data();
    void blankBoxShowsWhatIsInForceWhenItOpens();
    void textThatIsGoneGivesWayToWhatIsInForce();
    void unhookedOpeningReadsNothing();

    // notices
    void objectsAreFollowedByTheirClass_data();
    void objectsAreFollowedByTheirClass();
    void variablesAreNotFollowed_data();
    void variablesAreNotFollowed();
    void commandEndIsFollowed_data();
    void commandEndIsFollowed();
    void unnamedSystemDoesNotMoveTheBox();
    void renamedSystemIsFoundThroughItsId();
    void addedRowHasNoTypeAndGoes();
    void noDrawingIsBlankAndDisabled();
    void noDocumentIsNotHeardOf();
    void layoutSwitchIsFollowed();
    void systemWithoutARowMovesNothing();

private:
    static void ucsRows()
    {
        QTest::addColumn<int>("row");
        for (const UcsRow &row : kRows)
            QTest::newRow(row.text) << int(&row - kRows);
    }
    void endCommand() { bus().commandEnded(L"LINE"); }
    /// All rows there can be: an unnamed system in force, another one before it, a named one in the table.
    static void makeAllRows()
    {
        addUcs(drawing(), L"Roof");
        drawing().setUcs({1, 2, 3}, kX, kY, ZvDbObjectId(), 0);
    }
    static ZvDbObjectId ucsNamed(const ZvString &name)
    {
        const ZvDbObjectPointer<ZvDbUCSTable> table(drawing().UCSTableId(), ZvDb::kForRead);
        return table->getIdAt(name);
    }
    static void showQuietly(QComboBox &combo, const char *text)
    {
        combo.blockSignals(true);
        combo.setCurrentText(s(text));
        combo.blockSignals(false);
    }
    static QString shownName(const ZvString &name) { return s(name.toUtf8().c_str()); }
};

// ---- rows

void TestUcsCombo::rowsInTheirOrder()
{
    makeAllRows();
    QStringList rows;
    for (const UcsRow &row : kRows)
        rows << s(row.text);
    QCOMPARE(rowsOf(ZvUtilsUcsComboBox(nullptr)), rows);
    const ZvUtilsUcsComboBox hooked(true, nullptr);
    QCOMPARE(rowsOf(hooked), rows);
    QVERIFY(!hooked.pickFirstInfo);
    QVERIFY(hooked.hooked);
}

void TestUcsCombo::rowHasItsTypeAndPicture()
{
    QFETCH(int, row);
    makeAllRows();
    const ZvUtilsUcsComboBox combo(nullptr);
    QCOMPARE(combo.itemData(row), QVariant(kRows[row].type));
    compareRowPicture(combo, row, kRows[row].picture);
}

void TestUcsCombo::rowsOfTheSystemInForce_data()
{
    QTest::addColumn<ZvGePoint3d>("origin");
    QTest::addColumn<int>("orthographic");
    QTest::addColumn<bool>("named");
    QTest::addColumn<QString>("first");
    QTest::newRow("world") << ZvGePoint3d(0, 0, 0) << 0 << false << s("世界");
    QTest::newRow("unnamed") << ZvGePoint3d(1, 0, 0) << 0 << false << s("未命名");
    QTest::newRow("orthographic") << ZvGePoint3d(1, 0, 0) << 3 << false << s("世界");
    QTest::newRow("named") << ZvGePoint3d(1, 0, 0) << 0 << true << s("世界");
}

void TestUcsCombo::rowsOfTheSystemInForce()
{
    QFETCH(ZvGePoint3d, origin);
    QFETCH(int, orthographic);
    QFETCH(bool, named);
    const ZvDbObjectId roof = addUcs(drawing(), L"Roof");
    drawing().setUcs(origin, kX, kY, named ? roof : ZvDbObjectId(), orthographic);
    const QStringList rows = rowsOf(ZvUtilsUcsComboBox(nullptr));
    QTEST(rows.first(), "first");
    // What was before is there for all but the world, which nothing came before.
    QCOMPARE(rows.contains(s("上一个")), !origin.isEqualTo(ZvGePoint3d::kOrigin));
}

// ---- what is in force

void TestUcsCombo::systemInForceIsRead_data()
{
    QTest::addColumn<ZvGePoint3d>("origin");
    QTest::addColumn<ZvGeVector3d>("x");
    QTest::addColumn<ZvGeVector3d>("y");
    QTest::addColumn<int>("orthographic");
    QTest::addColumn<bool>("named");
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("name");
    const ZvGePoint3d zero;
    QTest::newRow("world") << zero << kX << kY << 0 << false << 7 << s("世界");
    QTest::newRow("nearly the world") << ZvGePoint3d(1e-12, 0, 0) << kX << kY << 0 << false << 7 << s("世界");
    QTest::newRow("world by its axes, but orthographic") << zero << kX << kY << 1 << false << 1 << s("俯视");
    QTest::newRow("2") << zero << ZvGeVector3d(-1, 0, 0) << kY << 2 << false << 2 << s("仰视");
    QTest::newRow("3") << zero << kX << kZ << 3 << false << 3 << s("前视");
    QTest::newRow("4") << zero << ZvGeVector3d(-1, 0, 0) << kZ << 4 << false << 4 << s("后视");
    QTest::newRow("5") << zero << ZvGeVector3d(0, -1, 0) << kZ << 5 << false << 5 << s("左视");
    QTest::newRow("6") << zero << kY << kZ << 6 << false << 6 << s("右视");
    QTest::newRow("named") << ZvGePoint3d(5, 5, 0) << kX << kY << 0 << true << 8 << s("Roof");
    QTest::newRow("named, as the world stands") << zero << kX << kY << 0 << true << 8 << s("Roof");
    // Named and orthographic: the row that comes first wins.
    QTest::newRow("named and orthographic") << ZvGePoint3d(5, 5, 0) << kX << kY << 6 << true << 6 << s("右视");
    QTest::newRow("unnamed by its origin") << ZvGePoint3d(1, 0, 0) << kX << kY << 0 << false << 0 << s("as it came");
    QTest::newRow("unnamed by its X axis")
        << zero << kY << ZvGeVector3d(-1, 0, 0) << 0 << false << 0 << s("as it came");
    QTest::newRow("unnamed by its Y axis") << zero << kX << kZ << 0 << false << 0 << s("as it came");
}

void TestUcsCombo::systemInForceIsRead()
{
    QFETCH(ZvGePoint3d, origin);
    QFETCH(ZvGeVector3d, x);
    QFETCH(ZvGeVector3d, y);
    QFETCH(int, orthographic);
    QFETCH(bool, named);
    const ZvDbObjectId roof = addUcs(drawing(), L"Roof");
    QCOMPARE(drawing().setUcs(origin, x, y, named ? roof : ZvDbObjectId(), orthographic), Zv::eOk);
    ZvUtilsUcsComboBox combo(true, nullptr);
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name = L"as it came";
    QTEST(combo.reload(items, name), "type");
    QTEST(shownName(name), "name");
    QCOMPARE(items.length(), combo.count());
    // The list shows it as soon as it is made: the unnamed one stands first.
    QFETCH(int, type);
    QCOMPARE(combo.getCurrentName(), type == 0 ? s("未命名") : shownName(name));
}

void TestUcsCombo::unlistedNameIsNoRow()
{
    openDrawing(kDrawing); // "House|Roof" is of an external reference, and not listed
    QCOMPARE(drawing().setUcs({1, 2, 0}, kX, kZ, ucsNamed(L"House|Roof"), 0), Zv::eOk);
    ZvUtilsUcsComboBox combo(nullptr);
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name = L"as it came";
    QCOMPARE(combo.reload(items, name), -1);
    QCOMPARE(name, ZvString(L"as it came"));
    QVERIFY(items.length() > 0);
    QCOMPARE(combo.findText(s("House|Roof")), -1);
    QVERIFY(combo.findText(s("Slope")) >= 0);
    QCOMPARE(combo.getCurrentName(), s("世界")); // the first, as lists show by themselves
}

void TestUcsCombo::unreadableNumberIsNone_data()
{
    QTest::addColumn<bool>("paper");
    QTest::addColumn<bool>("text");
    for (const bool paper : {false, true}) {
        QTest::newRow(paper ? "nothing, on paper" : "nothing") << paper << false;
        QTest::newRow(paper ? "a text, on paper" : "a text") << paper << true;
    }
}

void TestUcsCombo::unreadableNumberIsNone()
{
    QFETCH(bool, paper);
    QFETCH(bool, text);
    drawing().setTilemode(!paper);
    drawing().setUcs({0, 0, 0}, kX, kY, ZvDbObjectId(), 3);
    ZvUtilsUcsComboBox combo(true, nullptr);
    QCOMPARE(combo.getCurrentName(), s("前视"));
    readInstead = text ? +[] { return zvutNewRb(ZvRes::kText); } : +[]() -> ZvResBuf * { return nullptr; };
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name;
    const int type = combo.reload(items, name);
    readInstead = nullptr;
    QCOMPARE(type, int(S::kUcsWorld));
    QCOMPARE(name, ZvString(L"世界"));
}

void TestUcsCombo::nothingIsReadWithoutADrawing()
{
    zvDocManagerPtr()->closeDocument(document());
    ZvUtilsUcsComboBox combo(true, nullptr);
    QCOMPARE(combo.count(), 0);
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name = L"as it came";
    QCOMPARE(combo.reload(items, name), -1);
    QCOMPARE(name, ZvString(L"as it came"));
}

void TestUcsCombo::paperSpaceValuesDecideOnTheLayout()
{
    drawing().setUcs({1, 2, 3}, kX, kY, ZvDbObjectId(), 0);
    drawing().setTilemode(false);
    ZvUtilsUcsComboBox combo(true, nullptr);
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name;
    QCOMPARE(combo.reload(items, name), 7);
    drawing().setUcs({0, 0, 0}, kX, kZ, ZvDbObjectId(), 3);
    QCOMPARE(combo.reload(items, name), 3);
    const ZvDbObjectId roof = addUcs(drawing(), L"Roof");
    drawing().setUcs({5, 5, 0}, kX, kY, roof, 0);
    QCOMPARE(combo.reload(items, name), 8);
    QCOMPARE(name, ZvString(L"Roof"));
    drawing().setUcs({4, 5, 6}, kX, kY, ZvDbObjectId(), 0);
    QCOMPARE(combo.reload(items, name), 0);
}

void TestUcsCombo::modelValuesDecideInModelSpace()
{
    drawing().setTilemode(false);
    drawing().setUcs({4, 5, 6}, kX, kY, ZvDbObjectId(), 0);
    drawing().setTilemode(true);
    ZvUtilsUcsComboBox combo(true, nullptr);
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name;
    QCOMPARE(combo.reload(items, name), 7);
}

void TestUcsCombo::modelValuesDecideInAViewportOfTheLayout()
{
    drawing().setTilemode(false);
    drawing().setUcs({4, 5, 6}, kX, kY, ZvDbObjectId(), 0);
    workInAViewport(drawing());
    drawing().setUcs({0, 0, 0}, kX, kZ, ZvDbObjectId(), 3);
    ZvUtilsUcsComboBox combo(true, nullptr);
    QCOMPARE(combo.getCurrentName(), s("前视"));
}

void TestUcsCombo::presetOfTheSameNameIsShown()
{
    const ZvDbObjectId world = addUcs(drawing(), L"世界");
    drawing().setUcs({5, 5, 0}, kX, kY, world, 0);
    ZvUtilsUcsComboBox combo(true, nullptr);
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name;
    QCOMPARE(combo.reload(items, name), int(S::kUcsNamed));
    QCOMPARE(combo.currentIndex(), 0); // texts decide, and the first of them
    showQuietly(combo, "前视");
    endCommand();
    QCOMPARE(combo.currentIndex(), 0);
}

void TestUcsCombo::fillingSendsNothing()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    addUcs(drawing(), L"Roof");
    drawing().setUcs({0, 0, 0}, kX, kZ, ZvDbObjectId(), 3);
    combo.init();
    QCOMPARE(combo.getCurrentName(), s("前视"));
    QVERIFY(combo.findText(s("Roof")) >= 0);
    QVERIFY(combo.hooked);
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestUcsCombo::viewportWithoutViewportDataThrows()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    combo.setEnabled(false);
    const NoViewportData none;
    QVERIFY_EXCEPTION_THROWN(combo.init(), ZvError_NotThatKindOfClass);
    QVERIFY(combo.hooked);
    QVERIFY(!combo.isEnabled());
    QVERIFY_EXCEPTION_THROWN(combo.acceptUpdateUI(noticeOf(kNoticeCommandEnded)), ZvError_NotThatKindOfClass);
    QVERIFY(!combo.signalsBlocked());
    QVERIFY(combo.isEnabled()); // there is a drawing
}

// ---- picks

void TestUcsCombo::pickSendsItsMacro()
{
    QFETCH(int, row);
    makeAllRows();
    ZvUtilsUcsComboBox combo(true, nullptr);
    showQuietly(combo, kRows[row].type == S::kUcsTop ? "前视" : "俯视"); // not the one that is picked
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QSignalSpy told(&combo, &ZvUtilsUcsComboBox::itemChanged);
    pickByMouse(combo, row);
    QCOMPARE(told, (QList<QVariantList>{{s(kRows[row].text)}}));
    QCOMPARE(MacroSpy::take().join(QLatin1Char('\n')), s(kRows[row].call));
    QVERIFY(!combo.signalsBlocked());
    QVERIFY(runCommands());
}

void TestUcsCombo::typeSendsItsMacroOrNothing_data()
{
    QTest::addColumn<int>("type");
    QTest::addColumn<QString>("call");
    for (const UcsRow &row : kRows) {
        if (row.type != S::kUcsNamed)
            QTest::addRow("%d", row.type) << row.type << s(row.call);
    }
    QTest::newRow("8 goes by the row shown") << 8 << s("_.UCS _Named _Restore shown;|false");
    QTest::newRow("-1") << -1 << s("");
    QTest::newRow("10") << 10 << s("");
}

void TestUcsCombo::typeSendsItsMacroOrNothing()
{
    QFETCH(int, type);
    ZvUtilsUcsComboBox combo(nullptr);
    combo.addItem(s("shown"));
    combo.setCurrentIndex(combo.count() - 1);
    QVERIFY(combo.selectItem(type));
    QTEST(MacroSpy::take().join(QLatin1Char('\n')), "call");
}

void TestUcsCombo::nameStandsInTheMacro_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("blanks") << s("south  side of it");
    QTest::newRow("Chinese") << s("南立面 一");
    QTest::newRow("apostrophe") << s("the owner's");
    QTest::newRow("255 characters") << QString(255, QLatin1Char('u'));
}

void TestUcsCombo::nameStandsInTheMacro()
{
    QFETCH(QString, name);
    const ZvDbObjectId id = addUcs(drawing(), wide(name));
    QVERIFY(!id.isNull());
    ZvUtilsUcsComboBox combo(true, nullptr);
    combo.setCurrentText(name);
    QCOMPARE(MacroSpy::take(), QStringList{s("_.UCS _Named _Restore %1;|false").arg(name)});
    QVERIFY(runCommands());
    QCOMPARE(drawing().ucsname(), id); // the name came whole
    QCOMPARE(combo.getCurrentName(), name);
}

void TestUcsCombo::pickOfARowWithoutTextGoesByItsType_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<QString>("call");
    QTest::newRow("a named one sends nothing") << QVariant(8) << s("");
    QTest::newRow("a preset sends its macro") << QVariant(1) << s("_.UCS _Top|false");
    QTest::newRow("a text that is a number counts as one") << QVariant(s("7")) << s("_.UCS _World|false");
    QTest::newRow("no type") << QVariant() << s("");
}

void TestUcsCombo::pickOfARowWithoutTextGoesByItsType()
{
    QFETCH(QVariant, data);
    ZvUtilsUcsComboBox combo(true, nullptr);
    combo.addItem(s(""), data);
    QSignalSpy told(&combo, &ZvUtilsUcsComboBox::itemChanged);
    combo.setCurrentIndex(combo.count() - 1);
    QTEST(MacroSpy::take().join(QLatin1Char('\n')), "call");
    QCOMPARE(told, (QList<QVariantList>{{s("")}}));
}

void TestUcsCombo::unhookedPickIsToldAndSendsNothing()
{
    ZvUtilsUcsComboBox combo(nullptr);
    QSignalSpy told(&combo, &ZvUtilsUcsComboBox::itemChanged);
    combo.setCurrentText(s("前视"));
    QCOMPARE(told, (QList<QVariantList>{{s("前视")}}));
    QCOMPARE(MacroSpy::take(), QStringList());
    combo.setCurrentIndex(-1);
    QCOMPARE(told.size(), 1);
}

void TestUcsCombo::pickGoesByItsRowAndTellsWhatIsShown()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    QSignalSpy told(&combo, &ZvUtilsUcsComboBox::itemChanged);
    combo.curIndexChanged(combo.findText(s("前视")));
    QCOMPARE(MacroSpy::take(), QStringList{s("_.UCS _Front|false")});
    QCOMPARE(told, (QList<QVariantList>{{s("世界")}}));
}

void TestUcsCombo::pickEndsTheGuardOfItsHost()
{
    ZvUtilsUcsComboBox combo(nullptr);
    QSignalSpy told(&combo, &ZvUtilsUcsComboBox::itemChanged);
    combo.blockSignals(true);
    combo.curIndexChanged(1);
    QCOMPARE(told.size(), 1);
    QVERIFY(!combo.signalsBlocked());
}

void TestUcsCombo::pickSwitchesTheSystem()
{
    QFETCH(int, row);
    makeAllRows();
    ZvUtilsUcsComboBox combo(true, nullptr);
    blankQuietly(combo);
    combo.setCurrentIndex(row);
    QVERIFY(runCommands());
    ZvArray<S::ZvsiUcsInfoItem> items;
    ZvString name;
    const int type = kRows[row].type;
    // The one before is the world here; the unnamed row sends nothing.
    QCOMPARE(combo.reload(items, name), type == S::kUcsPrevious ? int(S::kUcsWorld) : type);
    QCOMPARE(combo.getCurrentName(), type == S::kUcsPrevious ? s("世界") : s(kRows[row].text));
    if (type == S::kUcsUnnamed)
        return;
    QVERIFY(runMacro(L"_.U"));
    QCOMPARE(drawing().ucsorg().x, 1.0);
}

void TestUcsCombo::previousSystemComesBackAndCanBeUndone()
{
    const ZvDbObjectId roof = addUcs(drawing(), L"Roof");
    ZvUtilsUcsComboBox combo(true, nullptr);
    for (const char *pick : {"Roof", "前视"}) {
        combo.setCurrentText(s(pick));
        QVERIFY(runCommands());
    }
    QCOMPARE(combo.getCurrentName(), s("前视"));
    combo.showPopup();
    combo.hidePopup();
    combo.setCurrentText(s("上一个"));
    QVERIFY(runCommands());
    QCOMPARE(drawing().ucsname(), roof);
    QCOMPARE(combo.getCurrentName(), s("Roof"));
    QVERIFY(runMacro(L"_.U"));
    QCOMPARE(combo.getCurrentName(), s("前视"));
}

void TestUcsCombo::pickDuringACommandIsItsInput()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    ZvString text;
    const WorkCommand work([&] {
        combo.setCurrentText(s("前视"));
        ZvEdPrompt prompt;
        prompt.kind = ZvEdPrompt::kStringWithBlanks;
        zvedGetString(prompt, text);
    });
    QVERIFY(runMacro(L"TESTWORK "));
    QCOMPARE(text, ZvString(L"_.UCS _Front")); // the macro cancels nothing
}

// ---- the list opens

void TestUcsCombo::blankBoxShowsWhatIsInForceWhenItOpens_data()
{
    QTest::addColumn<ZvGePoint3d>("origin");
    QTest::addColumn<int>("orthographic");
    QTest::addColumn<QString>("name");
    QTest::newRow("world") << ZvGePoint3d(0, 0, 0) << 0 << s("世界");
    QTest::newRow("orthographic") << ZvGePoint3d(0, 0, 0) << 3 << s("前视");
    QTest::newRow("unnamed") << ZvGePoint3d(1, 2, 3) << 0 << s("未命名");
}

void TestUcsCombo::blankBoxShowsWhatIsInForceWhenItOpens()
{
    QFETCH(ZvGePoint3d, origin);
    QFETCH(int, orthographic);
    drawing().setUcs(origin, kX, kY, ZvDbObjectId(), orthographic);
    ZvUtilsUcsComboBox combo(true, nullptr);
    for (int opening = 0; opening < 2; ++opening) { // the second finds the list unchanged
        blankQuietly(combo);
        QSignalSpy changed(&combo, SIGNAL(currentIndexChanged(int)));
        combo.showPopup();
        combo.hidePopup();
        QTEST(combo.getCurrentName(), "name");
        QCOMPARE(changed.size(), 0);
        QVERIFY(!combo.signalsBlocked());
    }
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestUcsCombo::textThatIsGoneGivesWayToWhatIsInForce()
{
    const ZvDbObjectId roof = addUcs(drawing(), L"Roof");
    drawing().setUcs({0, 0, 0}, kX, kZ, ZvDbObjectId(), 3);
    ZvUtilsUcsComboBox combo(true, nullptr);
    showQuietly(combo, "Roof");
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.getCurrentName(), s("Roof"));
    change<ZvDbUCSTableRecord>(roof, [](ZvDbUCSTableRecord &record) { record.erase(); });
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.findText(s("Roof")), -1);
    QCOMPARE(combo.getCurrentName(), s("前视"));
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestUcsCombo::unhookedOpeningReadsNothing()
{
    ZvUtilsUcsComboBox unhooked(nullptr);
    ZvUtilsUcsComboBox hooked(true, nullptr);
    const NoViewportData none;
    unhooked.showPopup(); // what it would read throws
    unhooked.hidePopup();
    QVERIFY_EXCEPTION_THROWN(hooked.showPopup(), ZvError_NotThatKindOfClass);
    QVERIFY(!hooked.signalsBlocked());
}

// ---- notices

void TestUcsCombo::objectsAreFollowedByTheirClass_data()
{
    QTest::addColumn<int>("object");
    QTest::addColumn<bool>("affects");
    for (const ObjectCase &object : kObjects) {
        QTest::addRow("%s, affecting the selection", object.name) << int(&object - kObjects) << true;
        QTest::addRow("%s", object.name) << int(&object - kObjects) << false;
    }
}

void TestUcsCombo::objectsAreFollowedByTheirClass()
{
    QFETCH(int, object);
    QFETCH(bool, affects);
    ZvUtilsUcsComboBox combo(true, nullptr);
    QCOMPARE(kObjects[object].isFollowed(combo, drawing(), affects), kObjects[object].expected);
}

void TestUcsCombo::variablesAreNotFollowed_data()
{
    QTest::addColumn<QString>("variable");
    for (const char *variable : {"CVPORT", "UCS", "PUCS", "TILEMODE", "UCSNAME", "UCSORTHOVIEW", ""})
        QTest::newRow(variable) << s(variable);
}

void TestUcsCombo::variablesAreNotFollowed()
{
    QFETCH(QString, variable);
    ZvUtilsUcsComboBox combo(true, nullptr);
    QVERIFY(!isFollowed(combo, noticeOf(kNoticeSysVar, variable.toStdWString().c_str())));
}

void TestUcsCombo::commandEndIsFollowed_data()
{
    QTest::addColumn<quint64>("kind");
    QTest::newRow("another document") << quint64(kNoticeDocumentCurrent);
    QTest::newRow("another layout") << quint64(kNoticeLayoutSwitched);
    QTest::newRow("another selection") << quint64(kNoticePickFirst);
    QTest::newRow("end of a command") << quint64(kNoticeCommandEnded);
    QTest::newRow("the host's first") << quint64(kNoticeHostFirst);
    QTest::newRow("the host's second") << quint64(kNoticeHostSecond);
}

void TestUcsCombo::commandEndIsFollowed()
{
    QFETCH(quint64, kind);
    ZvUtilsUcsComboBox combo(true, nullptr);
    QVERIFY(isFollowed(combo, noticeOf(kind)));
    QCOMPARE(combo.getCurrentName(), s("世界"));
}

void TestUcsCombo::unnamedSystemDoesNotMoveTheBox()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    showQuietly(combo, "前视");
    drawing().setUcs({1, 2, 3}, kX, kY, ZvDbObjectId(), 0);
    combo.setEnabled(false);
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("前视"));
    QVERIFY(combo.isEnabled());
}

void TestUcsCombo::renamedSystemIsFoundThroughItsId()
{
    const ZvDbObjectId roof = addUcs(drawing(), L"Roof");
    ZvUtilsUcsComboBox combo(true, nullptr);
    drawing().setUcs({5, 5, 0}, kX, kY, roof, 0);
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("Roof"));
    const int rows = combo.count();
    change<ZvDbUCSTableRecord>(roof, [](ZvDbUCSTableRecord &record) { record.setName(L"ROOF"); });
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("Roof")); // the row's text: case makes no difference
    QCOMPARE(combo.count(), rows);
    change<ZvDbUCSTableRecord>(roof, [](ZvDbUCSTableRecord &record) { record.setName(L"Attic"); });
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("Attic"));
}

void TestUcsCombo::addedRowHasNoTypeAndGoes()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    const int rows = combo.count();
    drawing().setUcs({5, 5, 0}, kX, kY, addUcs(drawing(), L"Late"), 0);
    endCommand();
    QCOMPARE(combo.currentIndex(), rows);
    QCOMPARE(combo.getCurrentName(), s("Late"));
    QVERIFY(!combo.itemData(rows).isValid());
    QVERIFY(combo.itemIcon(rows).isNull());
    QVERIFY(combo.hooked);
    MacroSpy::take();
    combo.setCurrentIndex(0);
    MacroSpy::take();
    combo.setCurrentIndex(rows);
    QCOMPARE(MacroSpy::take(), QStringList()); // it writes nothing
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.itemData(combo.findText(s("Late"))), QVariant(8)); // with the type that it has in the list
}

void TestUcsCombo::noDrawingIsBlankAndDisabled()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    QSignalSpy changed(&combo, SIGNAL(currentIndexChanged(int)));
    ZvDbDatabasePtr none;
    ZvApDocument *first = document();
    zvDocManagerPtr()->addDocument(none, L"");
    bus().enableUpdateUI(true);
    endCommand();
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(!combo.isEnabled());
    zvDocManagerPtr()->setCurrentDocument(first);
    bus().enableUpdateUI(true);
    endCommand();
    QVERIFY(combo.isEnabled());
    QCOMPARE(combo.getCurrentName(), s("世界"));
    QCOMPARE(changed.size(), 0);
    QVERIFY(!combo.signalsBlocked());
}

void TestUcsCombo::noDocumentIsNotHeardOf()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    showQuietly(combo, "前视");
    zvDocManagerPtr()->closeDocument(document());
    combo.acceptUpdateUI(noticeOf(kNoticeCommandEnded));
    QCOMPARE(combo.getCurrentName(), s("前视"));
    QVERIFY(combo.isEnabled());
}

void TestUcsCombo::layoutSwitchIsFollowed()
{
    ZvUtilsUcsComboBox combo(true, nullptr);
    combo.setCurrentText(s("前视"));
    QVERIFY(runCommands());
    drawing().setTilemode(false);
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("世界"));
    drawing().setTilemode(true);
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("前视"));
}

void TestUcsCombo::systemWithoutARowMovesNothing()
{
    openDrawing(kDrawing);
    ZvUtilsUcsComboBox combo(true, nullptr);
    combo.addItem(s(""), 3);
    showQuietly(combo, "前视");
    combo.setEnabled(false);
    drawing().setUcs({1, 2, 0}, kX, kZ, ucsNamed(L"House|Roof"), 0);
    endCommand();
    QCOMPARE(combo.getCurrentName(), s("前视"));
    QVERIFY(combo.isEnabled());
}

ZEVA_TEST_MAIN(TestUcsCombo)
#include "tst_ucscombo.moc"
