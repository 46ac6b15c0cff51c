// SPDX-License-Identifier: MIT
#include "combodriver.h"
#include "drawingtest.h"
#include "namedkinds.h"
#include "notices.h"
#include "recordedbus.h"
#include "stranger.h"

#include "zvqtcontrolhelp.h"
#include "zvqtplotservice.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsblockcombobox.h"
#include "zvutilsblockunitcombobox.h"
#include "zvutilsdimstylecombobox.h"
#include "zvutilshatchnamecombobox.h"
#include "zvutilslayercombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilsplotstylenamecombobox.h"
#include "zvutilsplotstyletablecombobox.h"
#include "zvutilsshadeplotcombobox.h"
#include "zvutilstablecellcolstylecombobox.h"
#include "zvutilstablecellrowstylecombobox.h"
#include "zvutilstablecellstylecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"
#include "zvutilsucscombobox.h"
#include "zvutilsviewcombobox.h"

#include "base/zverror.h"

#include <QSignalSpy>

#include <algorithm>
#include <iterator>

using namespace ZvGlobalUIReactorHelp;

namespace {

typedef std::unique_ptr<QComboBox> Combo;

/// What a control of the two families has in common with the others, as data. One that strays fails its row.
struct Member
{
    const char *name;
    Combo (*make)(bool hook);
    const char *signal; ///< Told of a pick, normalized.
    bool isHeard; ///< Unless it is sent with signals blocked.
    bool refills; ///< Fills its list anew when it opens.
    bool takesNone; ///< No row is a pick like others.
};

template <class T> Combo make(bool hook)
{
    return std::make_unique<T>(hook, nullptr);
}

template <class T> Combo makeCell(bool hook)
{
    const ZvDbObjectId style = styleVariable(*zvDocManagerPtr()->currentDocument()->database(), L"CTABLESTYLE");
    return std::make_unique<T>(hook, style, nullptr);
}

const Member kMembers[] = {
    {"text style", [](bool hook) -> Combo { return std::make_unique<ZvUtilsTextStyleComboBox>(hook, nullptr, false); },
     SIGNAL(textStyleTableItemChanged(QString)), true, true, false},
    {"dimension style", make<ZvUtilsDimStyleComboBox>, SIGNAL(itemChanged(QString)), true, true, false},
    {"multileader style", make<ZvUtilsMleaderStyleComboBox>, SIGNAL(itemChanged(QString)), true, true, false},
    {"table style", make<ZvUtilsTableStyleComboBox>, SIGNAL(styleItemChanged(QString)), true, true, false},
    {"cell style", makeCell<ZvUtilsTableCellStyleComboBox>, SIGNAL(itemChanged(QString)), false, false, true},
    {"cell style of a row", makeCell<ZvUtilsTableCellRowStyleComboBox>, SIGNAL(itemChanged(QString)), false, false,
     true},
    {"cell style of a column", makeCell<ZvUtilsTableCellColStyleComboBox>, SIGNAL(itemChanged(QString)), false, false,
     true},
    {"layer", [](bool hook) -> Combo { return std::make_unique<ZvUtilsLayerComboBox>(hook, 0, nullptr); },
     SIGNAL(layerItemChanged(int)), true, true, false},
    {"material", make<ZvUtilsMaterialComboBox>, SIGNAL(itemChanged(QString)), true, true, false},
    {"plot style name", make<ZvUtilsPlotStyleNameComboBox>, SIGNAL(plotStyleTableItemChanged(QString)), true, true,
     false},
    {"block", [](bool hook) -> Combo { return std::make_unique<ZvUtilsBlockComboBox>(hook, nullptr, false); },
     SIGNAL(itemChanged(QString)), true, false, true},
    {"block unit", make<ZvUtilsBlockUnitComboBox>, SIGNAL(itemChanged(QString)), true, false, true},
    {"hatch name", make<ZvUtilsHatchNameComboBox>, SIGNAL(styleTableItemChanged(QString)), true, false, true},
    {"plot style table", make<ZvUtilsPlotStyleTableComboBox>, SIGNAL(plotStyleTableItemChanged(QString)), false, false,
     true},
    {"shade plot", make<ZvUtilsShadePlotComboBox>, SIGNAL(ItemChanged(QString)), true, true, true},
    {"coordinate system", make<ZvUtilsUcsComboBox>, SIGNAL(itemChanged(QString)), true, true, false},
    {"view", make<ZvUtilsViewComboBox>, SIGNAL(itemChanged(QString)), true, true, false},
};

/// A window with the drawing's view and a control.
struct BesideTheView
{
    explicit BesideTheView(QComboBox &control) : combo(control)
    {
        view.setFocusPolicy(Qt::StrongFocus);
        combo.setParent(&window);
    }
    ~BesideTheView() { combo.setParent(nullptr); }
    Q_DISABLE_COPY(BesideTheView)
    /// To the control, in the active window.
    bool giveKeyboard()
    {
        window.show();
        QApplication::setActiveWindow(&window);
        if (!zevaWaitForActive(&window))
            return false;
        combo.setFocus();
        return combo.hasFocus();
    }

    QComboBox &combo;
    QWidget window;
    QWidget view{&window};
    const FocusView focus{&view};
};

typedef NamedKind Bound; // what a control that follows drawing and selection is bound to

/// What happens to the drawing between two openings of a list.
struct Step
{
    const char *name;
    void (*run)();
};

} // namespace

Q_DECLARE_METATYPE(const Member *)
Q_DECLARE_METATYPE(const Bound *)

class TestNamedCombos : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // every member
    void isAComboAndAReceiver_data() { members(); }
    void isAComboAndAReceiver();
    void rowsHaveNoPictureAndNoDataButTheirOwn_data() { members(); }
    void rowsHaveNoPictureAndNoDataButTheirOwn();
    void joinsTheBusWhenHookedAlone_data() { members(); }
    void joinsTheBusWhenHookedAlone();
    void leavesTheBusWhenItDies_data() { members(); }
    void leavesTheBusWhenItDies();
    void strangerForABusIsRefused_data() { members(); }
    void strangerForABusIsRefused();
    void failedConstructionLeavesTheBus_data();
    void failedConstructionLeavesTheBus();
    void constructionWritesNothing_data() { members(); }
    void constructionWritesNothing();
    void summaryIsLentByThoseThatFollowTheSelection_data() { members(); }
    void summaryIsLentByThoseThatFollowTheSelection();
    void worksWithoutTheBus_data() { members(); }
    void worksWithoutTheBus();
    void worksWithoutADocument_data() { members(); }
    void worksWithoutADocument();
    void pickIsToldAndGivesTheKeyboardBack_data() { members(); }
    void pickIsToldAndGivesTheKeyboardBack();
    void noRowIsNoPick_data();
    void noRowIsNoPick();
    void firstFillingGivesTheKeyboardBack_data() { members(); }
    void firstFillingGivesTheKeyboardBack();
    void noRowIsAPickOfPickers_data() { pickers(); }
    void noRowIsAPickOfPickers();
    void pickEndsTheGuardOfItsCaller_data();
    void pickEndsTheGuardOfItsCaller();
    void openingFillsAnewWhereItShould_data() { members(); }
    void openingFillsAnewWhereItShould();
    void openingKeepsWhatIsShown_data() { members(); }
    void openingKeepsWhatIsShown();
    void openingIsNoPick_data() { members(); }
    void openingIsNoPick();
    void listOpensInEveryCommandState_data();
    void listOpensInEveryCommandState();
    void noticeNeverMakesASignal_data() { members(); }
    void noticeNeverMakesASignal();
    void pickersHearNoNotice_data() { pickers(); }
    void pickersHearNoNotice();
    void rowsAreChangedAsInAPlainList_data();
    void rowsAreChangedAsInAPlainList();

    // those that follow drawing and selection
    void lendsItsSummaryWhenHooked_data() { bounds(); }
    void lendsItsSummaryWhenHooked();
    void listsWhatTheDrawingHas_data() { bounds(); }
    void listsWhatTheDrawingHas();
    void showsTheCurrentValueWithoutASelection_data() { bounds(); }
    void showsTheCurrentValueWithoutASelection();
    void showsTheCommonValueOfTheSelection_data() { bounds(); }
    void showsTheCommonValueOfTheSelection();
    void mixedSelectionIsBlankAndEnabled_data() { bounds(); }
    void mixedSelectionIsBlankAndEnabled();
    void noDrawingIsBlankAndDisabled_data() { bounds(); }
    void noDrawingIsBlankAndDisabled();
    void noticeWithoutADocumentIsIgnored_data() { bounds(); }
    void noticeWithoutADocumentIsIgnored();
    void otherDrawingIsFollowed_data() { bounds(); }
    void otherDrawingIsFollowed();
    void missingRowIsAddedUntilTheNextRefill_data() { bounds(); }
    void missingRowIsAddedUntilTheNextRefill();
    void emptyListStaysAsItIs_data() { bounds(); }
    void emptyListStaysAsItIs();
    void invalidIdMovesNothing_data();
    void invalidIdMovesNothing();
    void rowsMatchWithoutCase_data() { bounds(); }
    void rowsMatchWithoutCase();
    void firstOfSeveralMatchesIsShown_data() { bounds(); }
    void firstOfSeveralMatchesIsShown();
    void variableIsFollowedWhereItIsTheOnlyOne_data() { bounds(); }
    void variableIsFollowedWhereItIsTheOnlyOne();
    void pickWritesTheCurrentValue_data() { bounds(); }
    void pickWritesTheCurrentValue();
    void pickWritesTheSelectedEntities_data() { bounds(); }
    void pickWritesTheSelectedEntities();
    void undoBringsDrawingAndControlBack_data() { bounds(); }
    void undoBringsDrawingAndControlBack();
    void pickOfAnUnhookedControlWritesNothing_data() { bounds(); }
    void pickOfAnUnhookedControlWritesNothing();
    void pickOfAnEmptyTextIsToldAndWritesNothing_data() { bounds(); }
    void pickOfAnEmptyTextIsToldAndWritesNothing();
    void blankPickIsNone_data() { bounds(); }
    void blankPickIsNone();
    void namesOfAllKindsArePicked_data();
    void namesOfAllKindsArePicked();
    void renamedAndErasedObjectsFollowAtTheNextOpening_data() { bounds(); }
    void renamedAndErasedObjectsFollowAtTheNextOpening();
    void unchangedListIsLeftAloneByItsOpening_data() { bounds(); }
    void unchangedListIsLeftAloneByItsOpening();
    void changedListIsFilledAnew_data() { bounds(); }
    void changedListIsFilledAnew();

    // those of systems and views
    void everyStepOfTheDrawingIsListed_data();
    void everyStepOfTheDrawingIsListed();

private:
    static const Step kSteps[12];
    static void members();
    static void members(const QStringList &names);
    static void pickers();
    static void bounds();
    static const Member &memberOf(const char *name);
    static CZvQtControlHelp &helpOf(QComboBox &combo) { return *qobject_cast<CZvQtControlHelp *>(&combo); }
    /// A hooked control of the row with two objects of its kind in the drawing, "Alpha" and "Beta".
    Combo makeBound(const Bound &bound)
    {
        alpha = bound.add(drawing(), L"Alpha");
        beta = bound.add(drawing(), L"Beta");
        return memberOf(bound.name).make(true);
    }
    void endCommand() { bus().commandEnded(L"LINE"); }

    ZvDbObjectId alpha;
    ZvDbObjectId beta;
};

const Member &TestNamedCombos::memberOf(const char *name)
{
    for (const Member &member : kMembers) {
        if (qstrcmp(member.name, name) == 0)
            return member;
    }
    qFatal("no such member");
}

void TestNamedCombos::members()
{
    QTest::addColumn<const Member *>("member");
    for (const Member &member : kMembers)
        QTest::newRow(member.name) << &member;
}

void TestNamedCombos::members(const QStringList &names)
{
    QTest::addColumn<const Member *>("member");
    for (const QString &name : names)
        QTest::newRow(qPrintable(name)) << &memberOf(qPrintable(name));
}

void TestNamedCombos::pickers()
{
    QStringList names;
    for (const Member &member : kMembers) {
        if (member.takesNone)
            names << QString::fromLatin1(member.name);
    }
    members(names);
}

void TestNamedCombos::bounds()
{
    QTest::addColumn<const Bound *>("bound");
    for (const Bound &bound : kNamedKinds)
        QTest::newRow(bound.name) << &bound;
}

// ---- every member

void TestNamedCombos::isAComboAndAReceiver()
{
    QFETCH(const Member *, member);
    for (const bool hook : {false, true}) {
        const Combo combo = member->make(hook);
        QVERIFY(qobject_cast<CZvQtControlHelp *>(combo.get()));
        QCOMPARE(helpOf(*combo).hooked, hook);
        QCOMPARE(combo->insertPolicy(), QComboBox::InsertAfterCurrent);
        QVERIFY(!combo->isEditable());
    }
}

void TestNamedCombos::rowsHaveNoPictureAndNoDataButTheirOwn()
{
    QFETCH(const Member *, member);
    addTextStyle(L"Alpha");
    const QByteArray name = member->name;
    const Combo combo = member->make(false);
    for (int row = 0; row < combo->count(); ++row) {
        if (name != "coordinate system" && name != "view")
            QVERIFY(combo->itemIcon(row).isNull());
        const int type = combo->itemData(row).userType();
        if (name == "text style")
            QCOMPARE(type, qMetaTypeId<ZevaUISetting::ZvsiTextStyleInfoItem>());
        else if (name == "coordinate system" || name == "view")
            QCOMPARE(type, int(QMetaType::Int));
        else
            QVERIFY(!combo->itemData(row).isValid());
    }
}

void TestNamedCombos::joinsTheBusWhenHookedAlone()
{
    QFETCH(const Member *, member);
    const RecordedBus recorded;
    {
        const Combo unhooked = member->make(false);
        QCOMPARE(recorded.receivers().size(), std::size_t(0));
        const Combo hooked = member->make(true);
        QCOMPARE(recorded.receivers(), std::vector<CZvQtControlHelp *>{&helpOf(*hooked)});
    }
    QCOMPARE(recorded.receivers().size(), std::size_t(0));
}

void TestNamedCombos::leavesTheBusWhenItDies()
{
    QFETCH(const Member *, member);
    member->make(true).reset();
    endCommand(); // the sanitizers see a receiver that is gone
    const Combo unhooked = member->make(false);
    endCommand();
}

void TestNamedCombos::strangerForABusIsRefused()
{
    QFETCH(const Member *, member);
    const RecordedBus replaced; // puts the host's back
    zv_arbitDict_regservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)), Stranger::make());
    QVERIFY_EXCEPTION_THROWN(member->make(true), ZvError_NotThatKindOfClass);
    QVERIFY(!helpOf(*member->make(false)).hooked);
}

/// The services that lists are read from are of another class, for the life of the object.
class WrongServices
{
public:
    WrongServices() : m_before(zvrxGetService(3)), m_stranger(Stranger::make())
    {
        zvrxSetService(3, m_stranger.get());
        zv_arbitDict_regservice(ZvString(ZvQtPlotService::kKey), m_stranger);
    }
    ~WrongServices()
    {
        zvrxSetService(3, m_before);
        zv_arbitDict_clearservice(ZvString(ZvQtPlotService::kKey));
    }
    Q_DISABLE_COPY(WrongServices)

private:
    ZvRxObject *const m_before;
    const ZvRxObjectPtr m_stranger;
};

void TestNamedCombos::failedConstructionLeavesTheBus_data()
{
    // The others are read without a service.
    members({QStringLiteral("text style"), QStringLiteral("multileader style"), QStringLiteral("table style"),
             QStringLiteral("material"), QStringLiteral("plot style name"), QStringLiteral("block"),
             QStringLiteral("hatch name"), QStringLiteral("shade plot"), QStringLiteral("coordinate system"),
             QStringLiteral("view")});
}

void TestNamedCombos::failedConstructionLeavesTheBus()
{
    QFETCH(const Member *, member);
    const RecordedBus recorded;
    {
        const WrongServices wrong;
        QVERIFY_EXCEPTION_THROWN(member->make(true), ZvError_NotThatKindOfClass);
    }
    QCOMPARE(recorded.receivers().size(), std::size_t(0));
    const Combo combo = member->make(true);
    QCOMPARE(recorded.receivers().size(), std::size_t(1));
}

void TestNamedCombos::constructionWritesNothing()
{
    QFETCH(const Member *, member);
    for (const Bound &bound : kNamedKinds)
        bound.add(drawing(), L"Alpha");
    const std::uint64_t before = drawing().changeStamp();
    const Combo combo = member->make(true);
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(drawing().changeStamp(), before);
    QVERIFY(helpOf(*combo).hooked);
}

void TestNamedCombos::summaryIsLentByThoseThatFollowTheSelection()
{
    QFETCH(const Member *, member);
    const auto isOfMember = [member](const Bound &bound) { return qstrcmp(bound.name, member->name) == 0; };
    const bool follows = std::any_of(std::begin(kNamedKinds), std::end(kNamedKinds), isOfMember);
    QCOMPARE(bool(helpOf(*member->make(true)).pickFirstInfo), follows);
    QVERIFY(!helpOf(*member->make(false)).pickFirstInfo);
}

void TestNamedCombos::worksWithoutTheBus()
{
    QFETCH(const Member *, member);
    const ZvString key(wchar_t(ZvQtUpdateBusService::kKey));
    const ZvRxObjectPtr service = zv_arbitDict_getservice(key);
    zv_arbitDict_clearservice(key);
    {
        const Combo combo = member->make(true);
        QVERIFY(helpOf(*combo).hooked);
        combo->showPopup();
        combo->hidePopup();
    }
    zv_arbitDict_regservice(key, service);
}

void TestNamedCombos::worksWithoutADocument()
{
    QFETCH(const Member *, member);
    const Combo before = member->make(true);
    zvDocManagerPtr()->closeDocument(document());
    Combo combo;
    if (!QByteArray(member->name).startsWith("cell"))
        combo = member->make(true);
    for (QComboBox *one : {before.get(), combo.get()}) {
        if (!one)
            continue;
        endCommand();
        one->showPopup();
        one->hidePopup();
        one->setCurrentIndex(one->count() - 1);
        one->setCurrentIndex(-1);
    }
    runCommands(); // what was sent fails without a drawing, and crashes nothing
}

void TestNamedCombos::pickIsToldAndGivesTheKeyboardBack()
{
    QFETCH(const Member *, member);
    addTextStyle(L"Alpha");
    const Combo combo = member->make(false);
    if (combo->count() < 2)
        combo->addItems({QStringLiteral("one"), QStringLiteral("two")});
    combo->setCurrentIndex(0);
    BesideTheView desk(*combo);
    QVERIFY(desk.giveKeyboard());
    QSignalSpy told(combo.get(), member->signal);
    QVERIFY(told.isValid());
    QTest::keyClick(combo.get(), Qt::Key_Down);
    QCOMPARE(combo->currentIndex(), 1);
    QCOMPARE(told.size(), member->isHeard ? 1 : 0);
    if (member->isHeard) {
        const QVariant argument = told.first().first();
        QVERIFY(argument == QVariant(combo->currentText()) || argument == QVariant(1));
    }
    QVERIFY(desk.view.hasFocus());
    QVERIFY(!combo->signalsBlocked());
}

void TestNamedCombos::noRowIsNoPick_data()
{
    QTest::addColumn<const Member *>("member");
    for (const NamedKind &kind : kNamedKinds)
        QTest::newRow(kind.name) << &memberOf(kind.name);
    for (const char *name : {"coordinate system", "view"})
        QTest::newRow(name) << &memberOf(name);
}

void TestNamedCombos::noRowIsNoPick()
{
    QFETCH(const Member *, member);
    const Combo combo = member->make(true);
    BesideTheView desk(*combo);
    QVERIFY(desk.giveKeyboard());
    QSignalSpy told(combo.get(), member->signal);
    const char *slot = QByteArray(member->name) == "view" ? "activateIndex" : "curIndexChanged";
    QVERIFY(QMetaObject::invokeMethod(combo.get(), slot, Q_ARG(int, -1)));
    QVERIFY(combo->hasFocus());
    QCOMPARE(told.size(), 0);
    QVERIFY(!zvedQueueHasInput());
    QVERIFY(QMetaObject::invokeMethod(combo.get(), slot, Q_ARG(int, 0)));
    QVERIFY(desk.view.hasFocus());
    QCOMPARE(told.size(), 1);
}

void TestNamedCombos::firstFillingGivesTheKeyboardBack()
{
    // The control hears of its rows from the first on, and the row that a filled list shows by itself is a pick.
    QFETCH(const Member *, member);
    QComboBox other;
    BesideTheView desk(other);
    QVERIFY(desk.giveKeyboard());
    const Combo combo = member->make(false);
    const bool takesActivationsOnly = qstrcmp(member->name, "view") == 0;
    QCOMPARE(desk.view.hasFocus(), combo->count() > 0 && !takesActivationsOnly);
}

void TestNamedCombos::noRowIsAPickOfPickers()
{
    QFETCH(const Member *, member);
    const Combo combo = member->make(false);
    if (combo->count() == 0)
        combo->addItem(QStringLiteral("one"));
    BesideTheView desk(*combo);
    QVERIFY(desk.giveKeyboard());
    QSignalSpy told(combo.get(), member->signal);
    combo->setCurrentIndex(-1);
    QCOMPARE(told, (member->isHeard ? QList<QVariantList>{{QString()}} : QList<QVariantList>()));
    QVERIFY(desk.view.hasFocus());
    QVERIFY(!combo->signalsBlocked());
}

void TestNamedCombos::pickEndsTheGuardOfItsCaller_data()
{
    QTest::addColumn<const Member *>("member");
    QTest::addColumn<bool>("ends");
    for (const Member &member : kMembers) {
        const QByteArray name = member.name;
        if (name != "view") // takes picks in another slot
            QTest::newRow(member.name) << &member << (name != "shade plot");
    }
}

void TestNamedCombos::pickEndsTheGuardOfItsCaller()
{
    QFETCH(const Member *, member);
    QFETCH(bool, ends);
    const Combo combo = member->make(false);
    if (combo->count() < 2)
        combo->addItems({QStringLiteral("one"), QStringLiteral("two")});
    combo->setCurrentIndex(0);
    QSignalSpy told(combo.get(), member->signal);
    combo->blockSignals(true);
    QVERIFY(QMetaObject::invokeMethod(combo.get(), "curIndexChanged", Q_ARG(int, 1)));
    QCOMPARE(combo->signalsBlocked(), !ends);
    QCOMPARE(told.size(), ends && member->isHeard ? 1 : 0);
}

void TestNamedCombos::openingFillsAnewWhereItShould()
{
    QFETCH(const Member *, member);
    for (const bool hook : {false, true}) {
        const Combo combo = member->make(hook);
        const QStringList before = rowsOf(*combo);
        combo->addItem(QStringLiteral("a row of somebody else"));
        combo->showPopup();
        combo->hidePopup();
        if (hook && member->refills)
            QCOMPARE(rowsOf(*combo), before);
        else
            QCOMPARE(combo->count(), before.size() + 1);
        QCOMPARE(helpOf(*combo).hooked, hook);
    }
}

static void showNoRow(QComboBox &combo)
{
    const QSignalBlocker block(&combo);
    combo.setCurrentIndex(-1);
}

void TestNamedCombos::openingKeepsWhatIsShown()
{
    QFETCH(const Member *, member);
    addTextStyle(L"Alpha");
    addLayer(L"Alpha");
    const Combo combo = member->make(true);
    combo->blockSignals(true);
    combo->setCurrentIndex(combo->count() - 1);
    const QString shown = combo->currentText();
    combo->blockSignals(false);
    combo->showPopup();
    combo->hidePopup();
    QCOMPARE(combo->currentText(), shown);
    const auto rowOfABlankOne = [&combo] {
        showNoRow(*combo);
        combo->showPopup();
        combo->hidePopup();
        return combo->currentIndex();
    };
    // What a filled list shows; but not for entities that differ, since that row could not be picked then.
    QCOMPARE(rowOfABlankOne(), member->refills && combo->count() > 0 ? 0 : -1);
    if (ZvGlobalUIReactorHelp::SPickFirstInfo *summary = helpOf(*combo).pickFirstInfo) {
        summary->status = ZvGlobalUIReactorHelp::kInfoMixed;
        QCOMPARE(rowOfABlankOne(), -1);
    }
}

void TestNamedCombos::openingIsNoPick()
{
    QFETCH(const Member *, member);
    const Combo combo = member->make(true);
    combo->setCurrentIndex(-1);
    runCommands();
    QSignalSpy told(combo.get(), member->signal);
    QSignalSpy changed(combo.get(), SIGNAL(currentIndexChanged(int)));
    combo->showPopup();
    combo->hidePopup();
    QCOMPARE(told.size(), 0);
    QCOMPARE(changed.size(), 0);
    QVERIFY(!zvedQueueHasInput());
    QVERIFY(!combo->signalsBlocked());
}

void TestNamedCombos::listOpensInEveryCommandState_data()
{
    QTest::addColumn<const Member *>("member");
    QTest::addColumn<int>("state");
    for (const Member &member : kMembers) {
        for (int state = 0; state < int(std::size(kCommandStates)); ++state)
            QTest::addRow("%s, %s", member.name, kCommandStates[state].name) << &member << state;
    }
}

void TestNamedCombos::listOpensInEveryCommandState()
{
    QFETCH(const Member *, member);
    QFETCH(int, state);
    const Combo combo = member->make(true);
    if (combo->count() == 0)
        return; // nothing opens over an empty list
    combo->show();
    QVERIFY(QTest::qWaitForWindowExposed(combo.get()));
    ListOpener opener(*combo);
    opener.run(kCommandStates[state]);
    QCOMPARE(opener.active(), kCommandStates[state].active);
    if (combo->count() > 0)
        QVERIFY(opener.wasOpen());
}

void TestNamedCombos::noticeNeverMakesASignal()
{
    QFETCH(const Member *, member);
    addTextStyle(L"Alpha");
    const ZvDbObjectId line = addLine();
    const Combo combo = member->make(true);
    QSignalSpy told(combo.get(), member->signal);
    QSignalSpy changed(combo.get(), SIGNAL(currentIndexChanged(int)));
    endCommand();
    select({line});
    endCommand();
    select({line, add(new ZvDbText({0, 0, 0}, L"text", drawing().textstyle(), 2.5, 0.0))});
    endCommand();
    QCOMPARE(told.size(), 0);
    QCOMPARE(changed.size(), 0);
    QVERIFY(!zvedQueueHasInput());
}

void TestNamedCombos::pickersHearNoNotice()
{
    QFETCH(const Member *, member);
    const Combo combo = member->make(true);
    combo->addItems({QStringLiteral("one"), QStringLiteral("two")});
    combo->setEnabled(false);
    const QStringList rows = rowsOf(*combo);
    endCommand();
    for (const std::uint64_t kind : {kNoticeDocumentCurrent, kNoticeLayoutSwitched, kNoticeSysVar, kNoticeObject,
                                     kNoticePickFirst, kNoticeHostFirst, kNoticeHostSecond, kNoticeCommandEnded})
        QVERIFY(!isFollowed(*combo, noticeOf(kind, L"PSTYLEMODE")));
    QCOMPARE(rowsOf(*combo), rows);
    QVERIFY(!combo->isEnabled());
}

/// What callers do to the rows of a drop-down by themselves.
struct RowChange
{
    const char *name;
    void (*change)(QComboBox &combo);
};

static QIcon redIcon()
{
    QPixmap picture(8, 8);
    picture.fill(Qt::red);
    return QIcon(picture);
}

static const RowChange kRowChanges[] = {
    {"row at the top", [](QComboBox &combo) { combo.insertItem(0, QStringLiteral("top")); }},
    {"row with picture and data", [](QComboBox &combo) { combo.insertItem(1, redIcon(), QStringLiteral("in"), 5); }},
    {"several rows",
     [](QComboBox &combo) {
         combo.insertItems(1, {QStringLiteral("x"), QStringLiteral("y")});
     }},
    {"row without a text", [](QComboBox &combo) { combo.addItem(QString()); }},
    {"first row removed", [](QComboBox &combo) { combo.removeItem(0); }},
    {"current row removed", [](QComboBox &combo) { combo.removeItem(combo.currentIndex()); }},
    {"all rows removed", [](QComboBox &combo) { combo.clear(); }},
    {"rows removed that are not there",
     [](QComboBox &combo) {
         combo.removeItem(combo.count());
         combo.model()->removeRows(1, combo.count());
         combo.model()->removeRows(-1, 1);
     }},
    {"rows inserted where none can be",
     [](QComboBox &combo) {
         combo.model()->insertRows(combo.count() + 1, 1);
         combo.model()->insertRows(-1, 1);
         combo.model()->insertRows(0, 0);
     }},
    {"text", [](QComboBox &combo) { combo.setItemText(1, QStringLiteral("another")); }},
    {"text of the current row",
     [](QComboBox &combo) { combo.setItemText(combo.currentIndex(), QStringLiteral("another")); }},
    {"picture and none again",
     [](QComboBox &combo) {
         combo.setItemIcon(0, redIcon());
         combo.setItemIcon(1, redIcon());
         combo.setItemIcon(1, QIcon());
     }},
    {"picture of another kind",
     [](QComboBox &combo) { combo.setItemData(0, redIcon().pixmap(8, 8), Qt::DecorationRole); }},
    {"data", [](QComboBox &combo) { combo.setItemData(1, QStringLiteral("held")); }},
    {"data under other roles",
     [](QComboBox &combo) {
         combo.setItemData(0, QStringLiteral("hint"), Qt::ToolTipRole);
         combo.setItemData(1, QBrush(Qt::red), Qt::ForegroundRole);
         combo.setItemData(1, 7, Qt::UserRole + 3);
         combo.setItemData(0, QVariant(), Qt::ToolTipRole);
     }},
    {"row that cannot be picked", [](QComboBox &combo) { combo.setItemData(1, 0, Qt::UserRole - 1); }},
    {"separator", [](QComboBox &combo) { combo.insertSeparator(1); }},
    {"all at once of a row",
     [](QComboBox &combo) {
         const QModelIndex first = combo.model()->index(0, 0);
         combo.model()->setItemData(combo.model()->index(1, 0), combo.model()->itemData(first));
     }},
    {"rows that are not there",
     [](QComboBox &combo) {
         for (const int row : {-2, -1, combo.count(), combo.count() + 5}) {
             combo.setItemText(row, QStringLiteral("nowhere"));
             combo.setItemData(row, 5);
             combo.setItemIcon(row, redIcon());
             QVERIFY(!combo.itemData(row).isValid() && combo.itemText(row).isEmpty());
         }
     }},
    {"sorted", [](QComboBox &combo) { combo.model()->sort(0); }},
    {"sorted the other way round", [](QComboBox &combo) { combo.model()->sort(0, Qt::DescendingOrder); }},
};

void TestNamedCombos::rowsAreChangedAsInAPlainList_data()
{
    QTest::addColumn<const Member *>("member");
    QTest::addColumn<int>("change");
    for (const Member &member : kMembers) {
        for (int change = 0; change < int(std::size(kRowChanges)); ++change)
            QTest::addRow("%s, %s", member.name, kRowChanges[change].name) << &member << change;
    }
}

void TestNamedCombos::rowsAreChangedAsInAPlainList()
{
    QFETCH(const Member *, member);
    QFETCH(int, change);
    const Combo combo = member->make(false);
    QComboBox plain;
    combo->addItems({QStringLiteral("one"), QStringLiteral("two"), QStringLiteral("one")});
    for (int row = 0; row < combo->count(); ++row)
        plain.addItem(combo->itemIcon(row), combo->itemText(row), combo->itemData(row));
    combo->setCurrentIndex(combo->count() - 2);
    plain.setCurrentIndex(combo->count() - 2);
    QSignalSpy ourChanges(combo.get(), SIGNAL(currentIndexChanged(int)));
    QSignalSpy plainChanges(&plain, SIGNAL(currentIndexChanged(int)));
    kRowChanges[change].change(*combo);
    kRowChanges[change].change(plain);
    QCOMPARE(rowsOf(*combo), rowsOf(plain));
    for (int row = 0; row < plain.count(); ++row) {
        QCOMPARE(combo->itemIcon(row).isNull(), plain.itemIcon(row).isNull());
        for (const int role : {int(Qt::ToolTipRole), int(Qt::ForegroundRole), Qt::UserRole + 3})
            QCOMPARE(combo->itemData(row, role), plain.itemData(row, role));
        QCOMPARE(combo->itemData(row).userType(), plain.itemData(row).userType());
        if (combo->itemData(row).userType() != qMetaTypeId<ZevaUISetting::ZvsiTextStyleInfoItem>())
            QCOMPARE(combo->itemData(row), plain.itemData(row));
        const Qt::ItemFlags pickable = Qt::ItemIsEnabled | Qt::ItemIsSelectable;
        QCOMPARE(combo->model()->flags(combo->model()->index(row, 0)) & pickable,
                 plain.model()->flags(plain.model()->index(row, 0)) & pickable);
    }
    QCOMPARE(combo->currentIndex(), plain.currentIndex());
    QCOMPARE(combo->currentText(), plain.currentText());
    QCOMPARE(static_cast<const QList<QList<QVariant>> &>(ourChanges),
             static_cast<const QList<QList<QVariant>> &>(plainChanges));
}

// ---- those that follow drawing and selection

void TestNamedCombos::lendsItsSummaryWhenHooked()
{
    QFETCH(const Bound *, bound);
    QVERIFY(helpOf(*memberOf(bound->name).make(true)).pickFirstInfo);
    QVERIFY(!helpOf(*memberOf(bound->name).make(false)).pickFirstInfo);
}

void TestNamedCombos::listsWhatTheDrawingHas()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    QVERIFY(combo->findText(QStringLiteral("Alpha")) >= 0);
    QVERIFY(combo->findText(QStringLiteral("Beta")) > combo->findText(QStringLiteral("Alpha")));
}

void TestNamedCombos::showsTheCurrentValueWithoutASelection()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    for (const wchar_t *name : {L"Beta", L"Alpha"}) {
        bound->set(drawing(), name[0] == L'A' ? alpha : beta, name);
        endCommand();
        QCOMPARE(combo->currentText(), QString::fromWCharArray(name));
        QVERIFY(combo->isEnabled());
    }
}

void TestNamedCombos::showsTheCommonValueOfTheSelection()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    const ZvDbObjectId first = bound->addEntity(drawing(), beta, L"Beta");
    const ZvDbObjectId second = bound->addEntity(drawing(), beta, L"Beta");
    select({first, second});
    QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
    select({});
    QCOMPARE(combo->currentText(), QStringLiteral("Alpha"));
}

void TestNamedCombos::mixedSelectionIsBlankAndEnabled()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    select({bound->addEntity(drawing(), alpha, L"Alpha"), bound->addEntity(drawing(), beta, L"Beta")});
    QCOMPARE(combo->currentIndex(), -1);
    QVERIFY(combo->isEnabled());
}

void TestNamedCombos::noDrawingIsBlankAndDisabled()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    endCommand();
    QVERIFY(combo->currentIndex() >= 0);
    ZvDbDatabasePtr none;
    zvDocManagerPtr()->addDocument(none, L"");
    bus().enableUpdateUI(true);
    endCommand();
    QCOMPARE(combo->currentIndex(), -1);
    QVERIFY(!combo->isEnabled());
}

void TestNamedCombos::noticeWithoutADocumentIsIgnored()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), beta, L"Beta");
    endCommand();
    QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
    zvDocManagerPtr()->closeDocument(document());
    for (const int status : {kInfoNoDocument, kInfoNoSelection, kInfoUniform, kInfoMixed}) {
        helpOf(*combo).pickFirstInfo->status = status;
        helpOf(*combo).acceptUpdateUI(noticeOf(kNoticeCommandEnded));
        QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
        QVERIFY(combo->isEnabled());
    }
}

void TestNamedCombos::otherDrawingIsFollowed()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), beta, L"Beta");
    endCommand();
    ZvApDocument *first = document();
    openAnother();
    endCommand();
    QVERIFY(combo->currentText() != QStringLiteral("Beta"));
    zvDocManagerPtr()->setCurrentDocument(first);
    bus().enableUpdateUI(true);
    endCommand();
    QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
}

void TestNamedCombos::missingRowIsAddedUntilTheNextRefill()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    const ZvDbObjectId late = bound->add(drawing(), L"Late");
    endCommand();
    QCOMPARE(combo->findText(QStringLiteral("Late")), -1);
    const int rows = combo->count();
    bound->set(drawing(), late, L"Late");
    endCommand();
    QCOMPARE(combo->currentText(), QStringLiteral("Late"));
    QCOMPARE(combo->currentIndex(), rows);
    QVERIFY(!combo->itemData(rows).isValid());
    QVERIFY(combo->itemIcon(rows).isNull());
    QVERIFY(helpOf(*combo).hooked);
    endCommand();
    QCOMPARE(combo->count(), rows + 1); // it is there now
    combo->showPopup();
    combo->hidePopup();
    QCOMPARE(combo->count(), rows + 1);
    QCOMPARE(combo->currentText(), QStringLiteral("Late"));
}

void TestNamedCombos::emptyListStaysAsItIs()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    combo->clear();
    combo->setEnabled(false);
    bound->set(drawing(), beta, L"Beta");
    endCommand();
    // A material is known by its name alone, and gets its row.
    const bool isMaterial = QByteArray(bound->name) == "material";
    QCOMPARE(combo->count(), isMaterial ? 1 : 0);
    QCOMPARE(combo->isEnabled(), isMaterial);
}

void TestNamedCombos::invalidIdMovesNothing_data()
{
    QTest::addColumn<const Bound *>("bound");
    QTest::addColumn<bool>("isNull");
    for (const Bound &bound : kNamedKinds) {
        const QByteArray name = bound.name;
        if (name == "material" || name == "plot style name") // known by their names
            continue;
        QTest::addRow("%s, null", bound.name) << &bound << true;
        QTest::addRow("%s, of a drawing that is gone", bound.name) << &bound << false;
    }
}

void TestNamedCombos::invalidIdMovesNothing()
{
    QFETCH(const Bound *, bound);
    QFETCH(bool, isNull);
    const Combo combo = makeBound(*bound);
    const int rows = combo->count();
    auto &info = static_cast<SPropertyInfo<ZvDbObjectId> &>(*helpOf(*combo).pickFirstInfo);
    info.status = kInfoUniform;
    info.value = isNull ? ZvDbObjectId() : ZvDbDatabase::create()->clayer();
    QCOMPARE(info.value.isNull(), isNull);
    QVERIFY(!info.value.isValid());
    combo->setEnabled(false);
    QVERIFY(!isFollowed(*combo, noticeOf(kNoticeCommandEnded)));
    QCOMPARE(combo->count(), rows);
    QVERIFY(!combo->isEnabled());
    QVERIFY(!combo->signalsBlocked());
}

void TestNamedCombos::rowsMatchWithoutCase()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    combo->setItemText(combo->findText(QStringLiteral("Beta")), QStringLiteral("BETA"));
    bound->set(drawing(), beta, L"Beta");
    endCommand();
    const bool isExact = QByteArray(bound->name) == "material";
    QCOMPARE(combo->currentText(), isExact ? QStringLiteral("Beta") : QStringLiteral("BETA"));
}

void TestNamedCombos::firstOfSeveralMatchesIsShown()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    combo->blockSignals(true);
    combo->insertItem(0, QStringLiteral("BETA"));
    combo->addItem(QStringLiteral("Beta"));
    combo->blockSignals(false);
    bound->set(drawing(), beta, L"Beta");
    endCommand();
    const bool isExact = QByteArray(bound->name) == "material";
    QCOMPARE(combo->currentIndex(), isExact ? combo->findText(QStringLiteral("Beta")) : 0);
}

void TestNamedCombos::variableIsFollowedWhereItIsTheOnlyOne()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    endCommand();
    combo->blockSignals(true);
    combo->setCurrentIndex(-1);
    combo->blockSignals(false);
    for (const wchar_t *other :
         {L"CECOLOR", L"CVPORT", L"BLOCKEDITOR", L"CLAYER", L"TILEMODE", L"CPLOTSTYLE", L"PSTYLEMODE", L"LTSCALE"}) {
        bus().sysVarChanged(other, true);
        QCOMPARE(combo->currentIndex(), -1);
    }
    if (!bound->variable)
        return;
    bus().sysVarChanged(ZvString(bound->variable).toLower(), true);
    QCOMPARE(combo->currentText(), QStringLiteral("Alpha"));
}

void TestNamedCombos::pickWritesTheCurrentValue()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    endCommand();
    combo->show();
    QVERIFY(QTest::qWaitForWindowExposed(combo.get()));
    pickByMouse(*combo, combo->findText(QStringLiteral("Beta")));
    QVERIFY(runCommands());
    QCOMPARE(bound->current(drawing()), ZvString(L"Beta"));
    QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
}

void TestNamedCombos::pickWritesTheSelectedEntities()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    const std::vector<ZvDbObjectId> ids
        = {bound->addEntity(drawing(), alpha, L"Alpha"), bound->addEntity(drawing(), alpha, L"Alpha")};
    select(ids);
    combo->setCurrentIndex(combo->findText(QStringLiteral("Beta")));
    QVERIFY(runCommands());
    for (const ZvDbObjectId id : ids) {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        QCOMPARE(bound->of(*entity), ZvString(L"Beta"));
    }
    QCOMPARE(bound->current(drawing()), ZvString(L"Alpha"));
}

void TestNamedCombos::undoBringsDrawingAndControlBack()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    endCommand();
    combo->setCurrentIndex(combo->findText(QStringLiteral("Beta")));
    QVERIFY(runCommands());
    QCOMPARE(bound->current(drawing()), ZvString(L"Beta"));
    QVERIFY(runMacro(L"_.U"));
    QCOMPARE(bound->current(drawing()), ZvString(L"Alpha"));
    QCOMPARE(combo->currentText(), QStringLiteral("Alpha"));
    QVERIFY(runMacro(L"_.REDO"));
    QCOMPARE(bound->current(drawing()), ZvString(L"Beta"));
    QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
}

void TestNamedCombos::pickOfAnUnhookedControlWritesNothing()
{
    QFETCH(const Bound *, bound);
    makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    const Combo combo = memberOf(bound->name).make(false);
    QSignalSpy told(combo.get(), memberOf(bound->name).signal);
    combo->setCurrentIndex(combo->findText(QStringLiteral("Beta")));
    QCOMPARE(told.size(), 1);
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(bound->current(drawing()), ZvString(L"Alpha"));
}

void TestNamedCombos::pickOfAnEmptyTextIsToldAndWritesNothing()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), alpha, L"Alpha");
    endCommand();
    combo->addItem(QString());
    QSignalSpy told(combo.get(), memberOf(bound->name).signal);
    combo->setCurrentIndex(combo->count() - 1);
    QCOMPARE(told.size(), 1);
    QVERIFY(!zvedQueueHasInput());
    QCOMPARE(bound->current(drawing()), ZvString(L"Alpha"));
}

void TestNamedCombos::blankPickIsNone()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    QSignalSpy told(combo.get(), memberOf(bound->name).signal);
    combo->setCurrentIndex(-1);
    QCOMPARE(told.size(), 0);
    QVERIFY(!zvedQueueHasInput());
}

void TestNamedCombos::namesOfAllKindsArePicked_data()
{
    QTest::addColumn<const Bound *>("bound");
    QTest::addColumn<QString>("name");
    const struct
    {
        const char *row;
        QString name;
    } names[] = {
        {"blanks", QStringLiteral("two words here")},
        {"apostrophe", QStringLiteral("the best one's")},
        {"quotes", QStringLiteral("the \"best\" one")},
        {"semicolon", QStringLiteral("a;b")},
        {"Chinese", QStringLiteral("建筑 标准")},
        {"255 characters", QString(255, QLatin1Char('x'))},
        {"caret", QStringLiteral("^C^C")},
        {"a character in two halves", QStringLiteral("\U0001F3E0 \u4E00")},
    };
    for (const Bound &bound : kNamedKinds) {
        for (const auto &name : names)
            QTest::addRow("%s, %s", bound.name, name.row) << &bound << name.name;
    }
}

void TestNamedCombos::namesOfAllKindsArePicked()
{
    QFETCH(const Bound *, bound);
    QFETCH(QString, name);
    const ZvString wide = ZvUtf8String(name.toUtf8().constData()).toWide();
    const bool isRecord = zvrxCast<ZvDbSymbolTableRecord>(
        ZvDbObjectPointer<ZvDbObject>(bound->add(drawing(), L"Alpha"), ZvDb::kForRead).get());
    const bool isAdded = !bound->add(drawing(), wide).isNull();
    // Names of table records have neither quotes nor semicolons, names in dictionaries may.
    QCOMPARE(isAdded, !isRecord || !(name.contains(QLatin1Char('"')) || name.contains(QLatin1Char(';'))));
    if (!isAdded)
        return;
    const Combo combo = memberOf(bound->name).make(true);
    endCommand();
    combo->setCurrentIndex(combo->findText(name));
    QVERIFY(runCommands());
    QCOMPARE(bound->current(drawing()), wide);
    QCOMPARE(combo->currentText(), name);
}

void TestNamedCombos::renamedAndErasedObjectsFollowAtTheNextOpening()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    const ZvDbObjectId gamma = bound->add(drawing(), L"Gamma");
    combo->showPopup();
    combo->hidePopup();
    QVERIFY(combo->findText(QStringLiteral("Gamma")) >= 0);
    {
        const ZvDbObjectPointer<ZvDbObject> object(gamma, ZvDb::kForWrite);
        QCOMPARE(object->erase(), Zv::eOk);
    }
    QVERIFY(combo->findText(QStringLiteral("Gamma")) >= 0); // until the list is filled again
    combo->showPopup();
    QCOMPARE(combo->findText(QStringLiteral("Gamma")), -1);
    combo->hidePopup();
    if (zvrxCast<ZvDbSymbolTableRecord>(ZvDbObjectPointer<ZvDbObject>(beta, ZvDb::kForRead).get())) {
        change<ZvDbSymbolTableRecord>(beta, [](ZvDbSymbolTableRecord &record) { record.setName(L"Delta"); });
        combo->showPopup();
        combo->hidePopup();
        QCOMPARE(combo->findText(QStringLiteral("Beta")), -1);
        QVERIFY(combo->findText(QStringLiteral("Delta")) >= 0);
    }
}

/// Opens and closes the list; how often its rows were changed.
static int changesByOpening(QComboBox &combo)
{
    QSignalSpy inserted(combo.model(), &QAbstractItemModel::rowsInserted);
    QSignalSpy reset(combo.model(), &QAbstractItemModel::modelReset);
    combo.showPopup();
    combo.hidePopup();
    return inserted.size() + reset.size();
}

void TestNamedCombos::unchangedListIsLeftAloneByItsOpening()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    bound->set(drawing(), beta, L"Beta");
    endCommand();
    QVERIFY(changesByOpening(*combo) > 0); // the first
    const QStringList rows = rowsOf(*combo);
    QCOMPARE(changesByOpening(*combo), 0);
    add(new ZvDbCircle({0, 0, 0}, {0, 0, 1}, 1.0)); // elsewhere in the drawing
    endCommand();
    QCOMPARE(changesByOpening(*combo), 0);
    QCOMPARE(rowsOf(*combo), rows);
    QCOMPARE(combo->currentText(), QStringLiteral("Beta"));
    helpOf(*combo).pickFirstInfo->status = ZvGlobalUIReactorHelp::kInfoMixed;
    showNoRow(*combo);
    QCOMPARE(changesByOpening(*combo), 0);
    QCOMPARE(combo->currentIndex(), -1);
    QVERIFY(!combo->signalsBlocked());
}

void TestNamedCombos::changedListIsFilledAnew()
{
    QFETCH(const Bound *, bound);
    const Combo combo = makeBound(*bound);
    changesByOpening(*combo);
    const QStringList rows = rowsOf(*combo);
    const auto refills = [&] { return changesByOpening(*combo) > 0 && rowsOf(*combo) == rows; };
    QVERIFY(!refills());
    combo->addItem(QStringLiteral("a row of somebody else"));
    QVERIFY(refills());
    combo->removeItem(0);
    QVERIFY(refills());
    combo->setItemText(0, QStringLiteral("another text"));
    QVERIFY(refills());
    combo->setItemData(0, 5);
    QVERIFY(refills());
    combo->clear();
    QVERIFY(refills());
    // An object that cannot be read is missing while it cannot, and only then.
    {
        const ZvDbObjectPointer<ZvDbObject> held(alpha, ZvDb::kForWrite);
        changesByOpening(*combo);
    }
    QVERIFY(refills());
    bound->add(drawing(), L"Gamma");
    changesByOpening(*combo);
    QVERIFY(combo->findText(QStringLiteral("Gamma")) >= 0);
    ZvApDocument *first = document();
    openAnother();
    changesByOpening(*combo);
    QCOMPARE(combo->findText(QStringLiteral("Gamma")), -1);
    zvDocManagerPtr()->setCurrentDocument(first);
    bus().enableUpdateUI(true);
    changesByOpening(*combo);
    QVERIFY(combo->findText(QStringLiteral("Gamma")) >= 0);
    QVERIFY(runMacro(L"_.CIRCLE 0,0 1;"));
    QCOMPARE(changesByOpening(*combo), 0);
}

// ---- those of systems and views

const Step TestNamedCombos::kSteps[] = {
    {"system from the side", [] { QVERIFY(runMacro(L"_.UCS _Front")); }},
    {"system without a name", [] { QVERIFY(runMacro(L"_.UCS 3,4;;")); }},
    {"the world again", [] { QVERIFY(runMacro(L"_.UCS _World")); }},
    {"system saved", [] { QVERIFY(runMacro(L"_.UCS _Named _Save Site;")); }},
    {"view added", [] { addRecord<ZvDbViewTable, ZvDbViewTableRecord>(drawing(), L"South"); }},
    {"names changed",
     [] {
         change<ZvDbSymbolTableRecord>(recordNamed<ZvDbUCSTable>(drawing(), L"Site"),
                                       [](auto &r) { r.setName(L"Plot"); });
         change<ZvDbSymbolTableRecord>(recordNamed<ZvDbViewTable>(drawing(), L"South"),
                                       [](auto &r) { r.setName(L"North"); });
     }},
    {"to the layout", [] { drawing().setTilemode(false); }},
    {"view of the sheet",
     [] {
         const ZvDbObjectId id = addRecord<ZvDbViewTable, ZvDbViewTableRecord>(drawing(), L"Sheet");
         change<ZvDbViewTableRecord>(id, [](ZvDbViewTableRecord &view) { view.setIsPaperspaceView(true); });
     }},
    {"back to the model", [] { drawing().setTilemode(true); }},
    {"records erased",
     [] {
         change<ZvDbObject>(recordNamed<ZvDbUCSTable>(drawing(), L"Plot"), [](ZvDbObject &record) { record.erase(); });
         change<ZvDbObject>(recordNamed<ZvDbViewTable>(drawing(), L"North"),
                            [](ZvDbObject &record) { record.erase(); });
     }},
    {"undone", [] { QVERIFY(runMacro(L"_.U")); }},
    {"done again", [] { QVERIFY(runMacro(L"_.REDO")); }},
};

void TestNamedCombos::everyStepOfTheDrawingIsListed_data()
{
    QTest::addColumn<const Member *>("member");
    for (const char *name : {"coordinate system", "view"})
        QTest::newRow(name) << &memberOf(name);
}

void TestNamedCombos::everyStepOfTheDrawingIsListed()
{
    QFETCH(const Member *, member);
    const Combo combo = member->make(true);
    changesByOpening(*combo);
    QCOMPARE(changesByOpening(*combo), 0);
    QStringList known = rowsOf(*combo);
    int seen = 0;
    for (const Step &step : kSteps) {
        step.run();
        const QString shown = combo->currentText();
        changesByOpening(*combo);
        const Combo fresh = member->make(false);
        QVERIFY2(rowsOf(*combo) == rowsOf(*fresh), step.name);
        for (int row = 0; row < fresh->count(); ++row)
            QCOMPARE(combo->itemData(row), fresh->itemData(row));
        if (fresh->findText(shown) >= 0)
            QVERIFY2(combo->currentText() == shown, step.name);
        seen += rowsOf(*combo) != known ? 1 : 0;
        known = rowsOf(*combo);
        QVERIFY2(changesByOpening(*combo) == 0, step.name); // nothing has happened since
        QVERIFY2(rowsOf(*combo) == known, step.name);
    }
    QVERIFY(seen >= 4);
}

ZEVA_TEST_MAIN(TestNamedCombos)
#include "tst_namedcombos.moc"
