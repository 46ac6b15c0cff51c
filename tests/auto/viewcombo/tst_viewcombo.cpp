// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "drawingtest.h"
#include "drawingtexts.h"
#include "macrospy.h"
#include "notices.h"
#include "rowpicture.h"

#include "zvutilsviewcombobox.h"

#include <QSignalSpy>

namespace {

QString s(const char *text)
{
    return QString::fromUtf8(text);
}

struct ViewRow
{
    const char *text;
    int code;
    const char *picture; ///< Null for none.
    const char *call; ///< What a pick sends, empty for nothing.
};

const ViewRow kRows[] = {
    {"当前", 0, nullptr, ""},
    {"俯视", 1, ":/res/view_top.bmp", "^C^C_-VIEW _TOP|false"},
    {"仰视", 2, ":/res/view_bottom.bmp", "^C^C_-VIEW _BOTTOM|false"},
    {"左视", 3, ":/res/view_left.bmp", "^C^C_-VIEW _LEFT|false"},
    {"右视", 4, ":/res/view_right.bmp", "^C^C_-VIEW _RIGHT|false"},
    {"前视", 5, ":/res/view_front.bmp", "^C^C_-VIEW _FRONT|false"},
    {"后视", 6, ":/res/view_back.bmp", "^C^C_-VIEW _BACK|false"},
    {"西南等轴测", 7, ":/res/view_sw.bmp", "^C^C_-VIEW _SWISO|false"},
    {"东南等轴测", 8, ":/res/view_se.bmp", "^C^C_-VIEW _SEISO|false"},
    {"东北等轴测", 9, ":/res/view_ne.bmp", "^C^C_-VIEW _NEISO|false"},
    {"西北等轴测", 10, ":/res/view_nw.bmp", "^C^C_-VIEW _NWISO|false"},
    {"视图管理器...", 12, nullptr, "^C^C_VIEW|false"},
};
constexpr int kRowCount = 12;
constexpr int kFirstNamed = 11;

QStringList presets()
{
    QStringList rows;
    for (const ViewRow &row : kRows)
        rows << s(row.text);
    return rows;
}

ZvDbObjectId addView(ZvDbDatabase &drawing, const ZvString &name, bool paper = false)
{
    ZvDbObjectId id;
    auto *record = new ZvDbViewTableRecord;
    record->setName(name);
    record->setIsPaperspaceView(paper);
    const ZvDbObjectPointer<ZvDbViewTable> table(drawing.viewTableId(), ZvDb::kForWrite);
    if (table->add(record, id) == Zv::eOk)
        record->close();
    else
        delete record;
    return id;
}

} // namespace

class TestViewCombo : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        DrawingTest::init();
        MacroSpy::take();
    }
    void drawingWithoutNamedViewsHasTwelveRows();
    void rowHasItsCodeAndPicture_data() { viewRows(); }
    void rowHasItsCodeAndPicture();
    void pickSendsItsMacro_data() { viewRows(); }
    void pickSendsItsMacro();
    void sameRowIsPickedAgain_data() { viewRows(); }
    void sameRowIsPickedAgain();
    void namedViewsStandBeforeTheManager();
    void namedViewsOfTheSpaceAtWork_data();
    void namedViewsOfTheSpaceAtWork();
    void nameStandsInTheMacroAsItIs_data();
    void nameStandsInTheMacroAsItIs();
    void codeSendsItsMacroOrNothing_data();
    void codeSendsItsMacroOrNothing();
    void rowOfSomebodyElseGoesByItsData_data();
    void rowOfSomebodyElseGoesByItsData();
    void pickGoesByItsRowAndTellsWhatIsShown();
    void pickEndsTheGuardOfItsHostWhereItHasACode_data();
    void pickEndsTheGuardOfItsHostWhereItHasACode();
    void programmaticChangeIsNoPick();
    void unhookedControlSendsToo();
    void wheelSendsTheMacroOfTheRow();
    void pickIsKept();
    void newViewsComeAtTheNextOpening_data();
    void newViewsComeAtTheNextOpening();
    void blankBoxShowsTheFirstRowWhenItOpens();
    void viewThatIsGoneGivesWayToTheFirstRow();
    void presetsAreThereWithoutADrawing();
    void noNoticeChangesAnything();
    void pickEndsARunningCommand();

private:
    static void viewRows()
    {
        QTest::addColumn<int>("row");
        for (const ViewRow &row : kRows)
            QTest::newRow(row.text) << int(&row - kRows);
    }
};

void TestViewCombo::drawingWithoutNamedViewsHasTwelveRows()
{
    const ZvUtilsViewComboBox combo(nullptr);
    QCOMPARE(rowsOf(combo), presets());
    QCOMPARE(combo.count(), kRowCount);
    QCOMPARE(combo.getCurrentName(), s("当前"));
    QVERIFY(!combo.pickFirstInfo);
    QVERIFY(!ZvUtilsViewComboBox(true, nullptr).pickFirstInfo);
}

void TestViewCombo::rowHasItsCodeAndPicture()
{
    QFETCH(int, row);
    const ZvUtilsViewComboBox combo(nullptr);
    QCOMPARE(combo.itemData(row), QVariant(kRows[row].code));
    compareRowPicture(combo, row, kRows[row].picture);
}

void TestViewCombo::pickSendsItsMacro()
{
    QFETCH(int, row);
    ZvUtilsViewComboBox combo(true, nullptr);
    combo.setCurrentIndex(row == 5 ? 4 : 5);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    pickByMouse(combo, row);
    QCOMPARE(told, (QList<QVariantList>{{s(kRows[row].text)}}));
    QCOMPARE(MacroSpy::take().join(QLatin1Char('\n')), s(kRows[row].call));
    QVERIFY(!combo.signalsBlocked());
}

void TestViewCombo::sameRowIsPickedAgain()
{
    QFETCH(int, row);
    ZvUtilsViewComboBox combo(true, nullptr);
    combo.setCurrentIndex(row);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    pickByMouse(combo, row);
    pickByMouse(combo, row);
    QCOMPARE(told.size(), 2);
    const QString call = s(kRows[row].call);
    QCOMPARE(MacroSpy::take(), call.isEmpty() ? QStringList() : (QStringList{call, call}));
}

void TestViewCombo::namedViewsStandBeforeTheManager()
{
    addView(drawing(), L"Zulu");
    addView(drawing(), L"Alpha");
    const ZvUtilsViewComboBox combo(nullptr);
    QStringList rows = presets();
    rows.insert(kFirstNamed, s("Alpha"));
    rows.insert(kFirstNamed, s("Zulu")); // in table order
    QCOMPARE(rowsOf(combo), rows);
    for (const int row : {kFirstNamed, kFirstNamed + 1}) {
        QCOMPARE(combo.itemData(row), QVariant(11));
        QVERIFY(combo.itemIcon(row).isNull());
    }
}

void TestViewCombo::namedViewsOfTheSpaceAtWork_data()
{
    QTest::addColumn<bool>("paper");
    QTest::addColumn<QStringList>("views");
    QTest::newRow("model space") << false << QStringList{s("GARDEN")};
    QTest::newRow("paper space") << true << QStringList{s("SHEET")};
}

void TestViewCombo::namedViewsOfTheSpaceAtWork()
{
    QFETCH(bool, paper);
    QFETCH(QStringList, views);
    openDrawing(kDrawing);
    drawing().setTilemode(!paper);
    QCOMPARE(rowsOf(ZvUtilsViewComboBox(true, nullptr)).mid(kFirstNamed, 1), views);
    QCOMPARE(ZvUtilsViewComboBox(true, nullptr).count(), kRowCount + 1);
}

void TestViewCombo::nameStandsInTheMacroAsItIs_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("one word") << s("Garden");
    QTest::newRow("blanks") << s("south  side of it");
    QTest::newRow("a per cent sign") << s("100%s");
    QTest::newRow("Chinese") << s("南立面 一");
    QTest::newRow("apostrophe") << s("the owner's");
    QTest::newRow("255 characters") << QString(255, QLatin1Char('v'));
}

void TestViewCombo::nameStandsInTheMacroAsItIs()
{
    QFETCH(QString, name);
    QVERIFY(!addView(drawing(), ZvUtf8String(name.toUtf8().constData()).toWide()).isNull());
    ZvUtilsViewComboBox combo(true, nullptr);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    pickByMouse(combo, kFirstNamed);
    QCOMPARE(MacroSpy::take(), QStringList{s("^C^C_-VIEW R %1|true").arg(name)});
    QCOMPARE(told, (QList<QVariantList>{{name}}));
    QVERIFY(runCommands()); // there is such a view: the name came whole
}

void TestViewCombo::codeSendsItsMacroOrNothing_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("call");
    for (const ViewRow &row : kRows)
        QTest::addRow("%d", row.code) << row.code << s(row.call);
    for (const int code : {-1, 11, 13, 1000})
        QTest::addRow("%d", code) << code << QString::fromLatin1("");
}

void TestViewCombo::codeSendsItsMacroOrNothing()
{
    QFETCH(int, code);
    QFETCH(QString, call);
    ZvUtilsViewComboBox combo(nullptr);
    QCOMPARE(combo.setPredefinedView(code), !call.isEmpty());
    QCOMPARE(MacroSpy::take().join(QLatin1Char('\n')), call);
    QVERIFY(combo.setCustomDefinedView(L"any name"));
    QCOMPARE(MacroSpy::take(), QStringList{s("^C^C_-VIEW R any name|true")});
}

void TestViewCombo::rowOfSomebodyElseGoesByItsData_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<QString>("call");
    QTest::newRow("no code") << QVariant() << s("");
    QTest::newRow("a code that nothing has") << QVariant(500) << s("");
    QTest::newRow("a text that is no number") << QVariant(s("any")) << s("");
    QTest::newRow("a text that is a number counts as one") << QVariant(s("3")) << s("^C^C_-VIEW _LEFT|false");
    QTest::newRow("a preset") << QVariant(1) << s("^C^C_-VIEW _TOP|false");
    QTest::newRow("a named view") << QVariant(11) << s("^C^C_-VIEW R somebody's|true");
}

void TestViewCombo::rowOfSomebodyElseGoesByItsData()
{
    QFETCH(QVariant, data);
    ZvUtilsViewComboBox combo(nullptr);
    combo.addItem(s("somebody's"), data);
    combo.setCurrentIndex(kRowCount);
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    combo.activateIndex(kRowCount);
    QCOMPARE(told, (QList<QVariantList>{{s("somebody's")}}));
    QTEST(MacroSpy::take().join(QLatin1Char('\n')), "call");
}

void TestViewCombo::pickGoesByItsRowAndTellsWhatIsShown()
{
    addView(drawing(), L"Garden");
    ZvUtilsViewComboBox combo(nullptr);
    combo.setCurrentIndex(1);
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    combo.activateIndex(3);
    combo.activateIndex(kFirstNamed);
    combo.activateIndex(1000);
    QCOMPARE(MacroSpy::take(), (QStringList{s("^C^C_-VIEW _LEFT|false"), s("^C^C_-VIEW R 俯视|true")}));
    QCOMPARE(told, (QList<QVariantList>{{s("俯视")}, {s("俯视")}, {s("俯视")}}));
}

void TestViewCombo::pickEndsTheGuardOfItsHostWhereItHasACode_data()
{
    QTest::addColumn<QVariant>("data");
    QTest::addColumn<bool>("ends");
    QTest::newRow("a preset") << QVariant(1) << true;
    QTest::newRow("a code that sends nothing") << QVariant(0) << true;
    QTest::newRow("no code") << QVariant() << false;
}

void TestViewCombo::pickEndsTheGuardOfItsHostWhereItHasACode()
{
    QFETCH(QVariant, data);
    QFETCH(bool, ends);
    ZvUtilsViewComboBox combo(nullptr);
    combo.addItem(s("somebody's"), data);
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    combo.blockSignals(true);
    combo.activateIndex(kRowCount);
    QCOMPARE(combo.signalsBlocked(), !ends);
    QCOMPARE(told.size(), ends ? 1 : 0);
}

void TestViewCombo::programmaticChangeIsNoPick()
{
    ZvUtilsViewComboBox combo(true, nullptr);
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    combo.setCurrentIndex(3);
    combo.init();
    combo.setCurrentText(s("右视"));
    QCOMPARE(told.size(), 0);
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestViewCombo::unhookedControlSendsToo()
{
    ZvUtilsViewComboBox combo(nullptr);
    combo.setCurrentIndex(1);
    combo.activateIndex(1);
    QCOMPARE(MacroSpy::take(), QStringList{s("^C^C_-VIEW _TOP|false")});
}

void TestViewCombo::wheelSendsTheMacroOfTheRow()
{
    ZvUtilsViewComboBox combo(true, nullptr);
    turnWheel(combo, 2);
    QCOMPARE(MacroSpy::take(), (QStringList{s("^C^C_-VIEW _TOP|false"), s("^C^C_-VIEW _BOTTOM|false")}));
}

void TestViewCombo::pickIsKept()
{
    ZvUtilsViewComboBox combo(true, nullptr);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    pickByMouse(combo, 5);
    QVERIFY(runCommands());
    QCOMPARE(combo.getCurrentName(), s("前视"));
    QVERIFY(runMacro(L"_.-VIEW _TOP")); // a view changed by a command does not reach the box
    QCOMPARE(combo.getCurrentName(), s("前视"));
}

void TestViewCombo::newViewsComeAtTheNextOpening_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::newRow("hooked") << true;
    QTest::newRow("not hooked") << false;
}

void TestViewCombo::newViewsComeAtTheNextOpening()
{
    QFETCH(bool, hooked);
    ZvUtilsViewComboBox combo(hooked, nullptr);
    combo.setCurrentIndex(4);
    addView(drawing(), L"New");
    QCOMPARE(combo.findText(s("New")), -1);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.findText(s("New")), hooked ? kFirstNamed : -1);
    QCOMPARE(combo.currentIndex(), 4);
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestViewCombo::blankBoxShowsTheFirstRowWhenItOpens()
{
    ZvUtilsViewComboBox combo(true, nullptr);
    for (int opening = 0; opening < 2; ++opening) { // the second finds the list unchanged
        blankQuietly(combo);
        QSignalSpy changed(&combo, SIGNAL(currentIndexChanged(int)));
        combo.showPopup();
        combo.hidePopup();
        QCOMPARE(combo.getCurrentName(), s("当前"));
        QCOMPARE(changed.size(), 0);
        QVERIFY(!combo.signalsBlocked());
    }
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestViewCombo::viewThatIsGoneGivesWayToTheFirstRow()
{
    const ZvDbObjectId garden = addView(drawing(), L"Garden");
    ZvUtilsViewComboBox combo(true, nullptr);
    combo.setCurrentIndex(kFirstNamed);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(combo.getCurrentName(), s("Garden"));
    change<ZvDbViewTableRecord>(garden, [](ZvDbViewTableRecord &record) { record.erase(); });
    QSignalSpy told(&combo, &ZvUtilsViewComboBox::itemChanged);
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), presets());
    QCOMPARE(combo.getCurrentName(), s("当前"));
    QCOMPARE(told.size(), 0);
    QCOMPARE(MacroSpy::take(), QStringList());
}

void TestViewCombo::presetsAreThereWithoutADrawing()
{
    zvDocManagerPtr()->closeDocument(document());
    ZvUtilsViewComboBox combo(true, nullptr);
    QCOMPARE(rowsOf(combo), presets());
    combo.showPopup();
    combo.hidePopup();
    QCOMPARE(rowsOf(combo), presets());
    QCOMPARE(combo.getCurrentName(), s("当前"));
}

void TestViewCombo::noNoticeChangesAnything()
{
    ZvUtilsViewComboBox combo(true, nullptr);
    addView(drawing(), L"New");
    for (const std::uint64_t kind : {kNoticeDocumentCurrent, kNoticeLayoutSwitched, kNoticeSysVar, kNoticePickFirst,
                                     kNoticeHostFirst, kNoticeHostSecond, kNoticeCommandEnded})
        QVERIFY(!isFollowed(combo, noticeOf(kind, L"TILEMODE")));
    QVERIFY(!isFollowedOfClass<ZvDbViewTableRecord>(combo, drawing(), true));
    QCOMPARE(combo.count(), kRowCount);
    QVERIFY(combo.isEnabled());
}

void TestViewCombo::pickEndsARunningCommand()
{
    ZvUtilsViewComboBox combo(true, nullptr);
    const WorkCommand work([&combo] {
        combo.setCurrentIndex(1);
        combo.activateIndex(1);
        ZvEdPrompt prompt;
        prompt.kind = ZvEdPrompt::kString;
        ZvString text;
        QCOMPARE(int(zvedGetString(prompt, text)), int(ZvEdInput::kCancel));
    });
    StartedCommands started;
    QVERIFY(runMacro(L"TESTWORK "));
    QCOMPARE(started.names, (QStringList{s("TESTWORK"), s("-VIEW")}));
}

ZEVA_TEST_MAIN(TestViewCombo)
#include "tst_viewcombo.moc"
