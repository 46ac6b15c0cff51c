// SPDX-License-Identifier: MIT
#include "drawingtest.h"
#include "stranger.h"
#include "notices.h"

#include "private/zvboundcontrol.h"
#include "private/zvqtcolor.h"

#include "base/zverror.h"
#include "base/zvregistry.h"

#include <QSignalSpy>

using namespace ZvGlobalUIReactorHelp;

/// A small drop-down of materials, made as the library's own are: one variable, opens also while a command runs.
class MaterialBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    explicit MaterialBox(bool hook, QWidget *parent = nullptr) : QComboBox(parent), CZvQtControlHelp(hook, &m_info)
    {
        const ZvUpdateBusJoin joined(*this);
        connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &MaterialBox::pick);
        init();
    }
    ~MaterialBox() override { zvLeaveUpdateBus(*this); }

    void init()
    {
        ++fills;
        clear();
        ZvArray<ZvString> names;
        ZvArray<ZvDbObjectId> ids;
        ZevaUISetting::getMaterials(names, ids, nullptr);
        const ZvHookedCleared filling(*this);
        for (const ZvString &name : names)
            zvAddPlainRow(*this, zvToQString(name));
    }
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override
    {
        static const ZvNoticeFilter filter {{L"CMATERIAL"}, true, {{ZvDbMaterial::desc}}};
        if (!zvNoticeConcerns(filter, notice))
            return;
        ++updates;
        const ZvShown shown = zvWhatToShow(m_info);
        if (zvIsBlank(shown)) {
            zvShowBlank(*this, shown);
            return;
        }
        ZvString name = m_info.value;
        if (shown == ZvShown::kCurrentValue) {
            const ZvDbObjectPointer<ZvDbMaterial> material(zvCurrentDocumentDatabase()->cmaterial(), ZvDb::kForRead);
            name = material ? material->name() : ZvString();
        }
        zvShowName(*this, *this, zvToQString(name), ZvNameMatch::kExact);
    }
    void showPopup() override
    {
        if (hooked)
            zvRefillKeepingText(*this, *this, [this] { init(); });
        ++openings;
    }

    int fills = 0;
    int updates = 0;
    int openings = 0; // the list itself needs no window here
    int picks = 0;

Q_SIGNALS:
    void itemChanged(const QString &name);

private:
    void pick(int index)
    {
        const auto write = [this](const ZvString &name) {
            ++picks;
            ZevaUISetting::setCMaterial(ZvDbObjectId(), name);
        };
        if (zvTakePick(*this, *this, index, write))
            Q_EMIT itemChanged(currentText());
    }

    SMaterialInfo m_info;
};

/// A small drop-down of layers: several variables, stays closed while a command runs, guards its filling by itself.
class LayerBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
public:
    explicit LayerBox(bool hook) : CZvQtControlHelp(hook, &m_info)
    {
        const ZvUpdateBusJoin joined(*this);
        init();
        connect(this, qOverload<int>(&QComboBox::currentIndexChanged), this, &LayerBox::pick);
    }
    ~LayerBox() override { zvLeaveUpdateBus(*this); }

    void init()
    {
        const ZvQtBlockSignalUtil block(this);
        const ZvHookedCleared filling(*this);
        clear();
        ZvArray<ZevaUISetting::SigleLayerData> layers;
        ZevaUISetting::getLayerInfos(layers, nullptr);
        for (const ZevaUISetting::SigleLayerData &layer : layers)
            zvAddPlainRow(*this, zvToQString(layer.name));
    }
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override
    {
        static const ZvNoticeFilter filter {{L"CVPORT", L"BLOCKEDITOR", L"CLAYER", L"TILEMODE"},
                                            true,
                                            {{ZvDbLayerTableRecord::desc},
                                             {ZvDbViewport::desc},
                                             {ZvDbDictionary::desc, ZvObjectRule::kExact, ZvObjectRule::kAlways,
                                              [](const ZvDbDatabase *database) {
                                                  return ZvDbLayerState::dictionaryId(database, false);
                                              }}}};
        if (!zvNoticeConcerns(filter, notice))
            return;
        ++updates;
        const ZvShown shown = zvWhatToShow(m_info);
        if (zvIsBlank(shown)) {
            zvShowBlank(*this, shown, [this] { setCurrentIndex(-1); });
            return;
        }
        const ZvDbObjectId id =
            shown == ZvShown::kCurrentValue ? zvCurrentDocumentDatabase()->clayer() : m_info.value;
        const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(id, ZvDb::kForRead);
        if (layer)
            zvShowName(*this, *this, zvToQString(layer->name()), ZvNameMatch::kIgnoreCase);
    }
    void showPopup() override
    {
        if (zvRefillForOpening(*this, *this, [this] { init(); }))
            ++openings;
    }

    int updates = 0;
    int openings = 0;
    int picks = 0;

private:
    void pick(int index)
    {
        zvTakePick(*this, *this, index, [this](const ZvString &) { ++picks; });
    }

    SLayerInfo m_info;
};

namespace {

ZvString busKey()
{
    return ZvString(wchar_t(ZvQtUpdateBusService::kKey));
}

} // namespace

class TestBoundControl : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // the bus
    void hookedControlFollowsFromItsConstruction();
    void unhookedControlHearsNothing();
    void controlLeavesTheBusWhenItDies();
    void controlWorksWithoutTheBus();
    void joiningThrowsWhereTheKeyHoldsAStranger();
    void leavingNeverThrows();

    // which notices concern it
    void oneVariablePassesOfMany();
    void chainOfVariablesLetsNoneThrough();
    void noVariablesLetAllThrough();
    void noticeWithoutADocumentIsDropped();
    void objectPassesByItsClass_data();
    void objectPassesByItsClass();
    void objectPassesByItsId();
    void otherKindsPass();

    // what it shows
    void currentValueIsShownWithoutASelection();
    void commonValueOfTheSelectionIsShown();
    void mixedSelectionShowsNothing();
    void noDrawingDisables_data();
    void noDrawingDisables();
    void missingRowIsAdded();
    void nullNameAddsNoRow();
    void showingNeverWrites();
    void layersMatchWithoutCase();

    // what the user does
    void pickWritesAndTells();
    void pickOfAnUnhookedControlOnlyTells();
    void pickOfNothingDoesNothing();
    void openingFillsAnewAndKeepsTheText();
    void openingIsNoPick();
    void openingOfAnUnhookedControlReadsNothing();
    void listStaysClosedDuringACommand_data();
    void listStaysClosedDuringACommand();
    void wholeRoundLeavesEveryControlInStep();

    // guards and conversions
    void hookedComesBackWhenFillingFails();
    void kernelErrorBecomesAnAssertion();
    void colorsConvert();
};

void TestBoundControl::hookedControlFollowsFromItsConstruction()
{
    MaterialBox box(true);
    QVERIFY(box.hooked);
    bus().commandEnded(L"LINE");
    QCOMPARE(box.updates, 1);
    QVERIFY(box.isEnabled());
}

void TestBoundControl::unhookedControlHearsNothing()
{
    MaterialBox box(false);
    bus().commandEnded(L"LINE");
    QCOMPARE(box.updates, 0);
}

void TestBoundControl::controlLeavesTheBusWhenItDies()
{
    {
        MaterialBox box(true);
    }
    bus().commandEnded(L"LINE"); // the sanitizers see a receiver that is gone
    MaterialBox other(true);
    bus().commandEnded(L"LINE");
    QCOMPARE(other.updates, 1);
}

void TestBoundControl::controlWorksWithoutTheBus()
{
    const ZvRxObjectPtr service = zv_arbitDict_getservice(busKey());
    zv_arbitDict_clearservice(busKey());
    {
        MaterialBox box(true);
        QVERIFY(box.hooked);
        bus().commandEnded(L"LINE");
        QCOMPARE(box.updates, 0);
        box.setCurrentIndex(1);
        QCOMPARE(box.picks, 1);
    }
    zv_arbitDict_regservice(busKey(), service);
}

void TestBoundControl::joiningThrowsWhereTheKeyHoldsAStranger()
{
    const ZvRxObjectPtr service = zv_arbitDict_getservice(busKey());
    zv_arbitDict_regservice(busKey(), Stranger::make());
    QVERIFY_EXCEPTION_THROWN(MaterialBox box(true), ZvError_NotThatKindOfClass);
    MaterialBox unhooked(false);
    zv_arbitDict_regservice(busKey(), service);
}

void TestBoundControl::leavingNeverThrows()
{
    const ZvRxObjectPtr service = zv_arbitDict_getservice(busKey());
    auto box = std::make_unique<MaterialBox>(true);
    MaterialBox *raw = box.get();
    zv_arbitDict_regservice(busKey(), Stranger::make());
    zvLeaveUpdateBus(*raw);
    zv_arbitDict_regservice(busKey(), service);
    box.reset();
    bus().commandEnded(L"LINE");
}

// ---- which notices concern it

void TestBoundControl::oneVariablePassesOfMany()
{
    MaterialBox box(true);
    bus().sysVarChanged(L"CECOLOR", true);
    QCOMPARE(box.updates, 0);
    bus().sysVarChanged(L"cmaterial", true);
    QCOMPARE(box.updates, 1);
}

void TestBoundControl::chainOfVariablesLetsNoneThrough()
{
    LayerBox box(true);
    for (const wchar_t *name : {L"CVPORT", L"BLOCKEDITOR", L"CLAYER", L"TILEMODE", L"CECOLOR"})
        bus().sysVarChanged(name, true);
    QCOMPARE(box.updates, 0);
    bus().commandEnded(L"LINE");
    QCOMPARE(box.updates, 1);
}

void TestBoundControl::noVariablesLetAllThrough()
{
    QVERIFY(zvNoticeConcerns(ZvNoticeFilter(), noticeOf(kNoticeSysVar, L"CECOLOR")));
}

void TestBoundControl::noticeWithoutADocumentIsDropped()
{
    QVERIFY(zvNoticeConcerns(ZvNoticeFilter(), noticeOf(kNoticeCommandEnded)));
    zvDocManagerPtr()->closeDocument(document());
    QVERIFY(!zvNoticeConcerns(ZvNoticeFilter(), noticeOf(kNoticeCommandEnded)));
}

void TestBoundControl::objectPassesByItsClass_data()
{
    QTest::addColumn<int>("rule");
    QTest::addColumn<bool>("affectingPasses");
    QTest::addColumn<bool>("affects");
    QTest::addColumn<bool>("passes");
    enum { kOfLine, kOfEntityExactly, kOfEntityDerived, kOfLineWhenAffecting, kOfLayer };
    QTest::newRow("its class") << int(kOfLine) << true << false << true;
    QTest::newRow("a base class, exactly") << int(kOfEntityExactly) << true << false << false;
    QTest::newRow("a base class, derived") << int(kOfEntityDerived) << true << false << true;
    QTest::newRow("only affecting, and it does") << int(kOfLineWhenAffecting) << false << true << true;
    QTest::newRow("only affecting, and it does not") << int(kOfLineWhenAffecting) << false << false << false;
    QTest::newRow("another class") << int(kOfLayer) << true << false << false;
    QTest::newRow("another class, but affecting") << int(kOfLayer) << true << true << true;
    QTest::newRow("another class, affecting does not count") << int(kOfLayer) << false << true << false;
}

void TestBoundControl::objectPassesByItsClass()
{
    QFETCH(int, rule);
    QFETCH(bool, affectingPasses);
    QFETCH(bool, affects);
    const ZvObjectRule rules[] = {{ZvDbLine::desc},
                                  {ZvDbEntity::desc},
                                  {ZvDbEntity::desc, ZvObjectRule::kDerived},
                                  {ZvDbLine::desc, ZvObjectRule::kExact, ZvObjectRule::kAffectingSelection},
                                  {ZvDbLayerTableRecord::desc}};
    const ZvNoticeFilter filter {{}, affectingPasses, {rules[rule]}};
    const ZvDbObjectId line = addLine();
    read<ZvDbEntity>(line, [&](const ZvDbEntity &entity) {
        CZvGlobalUIReactorHelp notice = noticeOf(kNoticeObject);
        notice.object = &entity;
        notice.database = &drawing();
        notice.affectsSelection = affects;
        QTEST(zvNoticeConcerns(filter, notice), "passes");
    });
    QVERIFY(!zvNoticeConcerns(filter, noticeOf(kNoticeObject))); // the host may send one without an object
}

void TestBoundControl::objectPassesByItsId()
{
    LayerBox box(true);
    drawing().layerStateDictionaryId(true);
    box.updates = 0;
    addMaterial(L"Brick"); // changes another dictionary
    QCOMPARE(box.updates, 0);
    ZvDbObjectId entry;
    {
        ZvDbObjectPointer<ZvDbDictionary> states(drawing().layerStateDictionaryId(true), ZvDb::kForWrite);
        auto *state = new ZvDbDictionaryVar;
        QCOMPARE(states->setAt(L"Night", state, entry), Zv::eOk);
        state->close();
    }
    QCOMPARE(box.updates, 1);

    // A host's own notice may name no database.
    const ZvDbObjectPointer<ZvDbDictionary> states(drawing().layerStateDictionaryId(), ZvDb::kForRead);
    CZvGlobalUIReactorHelp notice = noticeOf(kNoticeObject);
    notice.object = states.get();
    bus().notifyUpdateUI(notice);
    QCOMPARE(box.updates, 1);
}

void TestBoundControl::otherKindsPass()
{
    LayerBox box(true);
    for (const std::uint64_t kind : {kNoticeDocumentCurrent, kNoticeLayoutSwitched, kNoticePickFirst, kNoticeHostFirst,
                                     kNoticeHostSecond, kNoticeCommandEnded})
        bus().notifyUpdateUI(noticeOf(kind));
    QCOMPARE(box.updates, 6);
}

// ---- what it shows

void TestBoundControl::currentValueIsShownWithoutASelection()
{
    drawing().setCmaterial(addMaterial(L"Brick"));
    MaterialBox box(true);
    bus().commandEnded(L"LINE");
    QCOMPARE(box.currentText(), QStringLiteral("Brick"));
    QVERIFY(box.isEnabled());
}

void TestBoundControl::commonValueOfTheSelectionIsShown()
{
    addMaterial(L"Brick");
    MaterialBox box(true);
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setMaterial(L"Brick"); });
    select({line});
    QCOMPARE(box.currentText(), QStringLiteral("Brick"));
}

void TestBoundControl::mixedSelectionShowsNothing()
{
    addMaterial(L"Brick");
    MaterialBox box(true);
    const ZvDbObjectId line = addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setMaterial(L"Brick"); });
    select({line, addLine()});
    QCOMPARE(box.currentIndex(), -1);
    QVERIFY(box.isEnabled());
}

void TestBoundControl::noDrawingDisables_data()
{
    QTest::addColumn<int>("status");
    QTest::addColumn<int>("withDrawing");
    QTest::addColumn<int>("without");
    QTest::newRow("no document") << int(kInfoNoDocument) << int(ZvShown::kBlankDisabled) << int(ZvShown::kBlankDisabled);
    QTest::newRow("no selection") << int(kInfoNoSelection) << int(ZvShown::kCurrentValue) << int(ZvShown::kBlankDisabled);
    QTest::newRow("uniform") << int(kInfoUniform) << int(ZvShown::kSelectionValue) << int(ZvShown::kBlankDisabled);
    QTest::newRow("mixed") << int(kInfoMixed) << int(ZvShown::kBlankEnabled) << int(ZvShown::kBlankEnabled);
}

void TestBoundControl::noDrawingDisables()
{
    QFETCH(int, status);
    SColorInfo info;
    info.status = status;
    QTEST(int(zvWhatToShow(info)), "withDrawing");
    zvDocManagerPtr()->closeDocument(document());
    QTEST(int(zvWhatToShow(info)), "without");
    QComboBox combo;
    combo.addItem(QStringLiteral("row"));
    zvShowBlank(combo, zvWhatToShow(info));
    QCOMPARE(combo.currentIndex(), -1);
    QCOMPARE(combo.isEnabled(), status == kInfoMixed);
}

void TestBoundControl::missingRowIsAdded()
{
    MaterialBox box(true);
    const int rows = box.count();
    drawing().setCmaterial(addMaterial(L"Brick"));
    bus().commandEnded(L"LINE");
    QCOMPARE(box.count(), rows + 1);
    QCOMPARE(box.currentText(), QStringLiteral("Brick"));
    QCOMPARE(box.currentIndex(), rows);
    QVERIFY(!box.itemData(rows).isValid());
    QVERIFY(box.hooked);
    bus().commandEnded(L"LINE");
    QCOMPARE(box.count(), rows + 1);
}

void TestBoundControl::nullNameAddsNoRow()
{
    MaterialBox box(true);
    const int rows = box.count();
    zvShowName(box, box, QString(), ZvNameMatch::kExact);
    QCOMPARE(box.count(), rows);
    zvShowName(box, box, QStringLiteral(""), ZvNameMatch::kExact);
    QCOMPARE(box.count(), rows + 1); // an empty name is one
}

void TestBoundControl::showingNeverWrites()
{
    MaterialBox box(true);
    const QSignalSpy told(&box, &MaterialBox::itemChanged);
    drawing().setCmaterial(addMaterial(L"Brick"));
    const ZvDbObjectId line = addLine();
    bus().commandEnded(L"LINE");
    select({line});
    select({});
    QCOMPARE(box.picks, 0);
    QCOMPARE(told.count(), 0);
    QVERIFY(!zvedQueueHasInput());
}

void TestBoundControl::layersMatchWithoutCase()
{
    addLayer(L"Walls");
    LayerBox box(true);
    change<ZvDbLayerTableRecord>(layerNamed(L"Walls"), [](ZvDbLayerTableRecord &record) { record.setName(L"WALLS"); });
    drawing().setClayer(layerNamed(L"Walls"));
    const int rows = box.count();
    bus().commandEnded(L"LINE");
    QCOMPARE(box.count(), rows);
    QCOMPARE(box.currentText(), QStringLiteral("Walls"));
    QCOMPARE(zvFindRow(box, QStringLiteral("no such row"), ZvNameMatch::kIgnoreCase), -1);
    QCOMPARE(zvFindRow(box, QStringLiteral("WALLS"), ZvNameMatch::kExact), -1);
}

// ---- what the user does

void TestBoundControl::pickWritesAndTells()
{
    addMaterial(L"Brick");
    MaterialBox box(true);
    const QSignalSpy told(&box, &MaterialBox::itemChanged);
    box.setCurrentIndex(box.findText(QStringLiteral("Brick")));
    QCOMPARE(told.count(), 1);
    QCOMPARE(told.at(0).at(0).toString(), QStringLiteral("Brick"));
    QVERIFY(!box.signalsBlocked());
    QVERIFY(runCommands());
    QCOMPARE(drawing().cmaterial(), ZevaUISetting::findMaterialByName(L"Brick", nullptr));
    QCOMPARE(box.picks, 1);
}

void TestBoundControl::pickOfAnUnhookedControlOnlyTells()
{
    addMaterial(L"Brick");
    MaterialBox box(false);
    const QSignalSpy told(&box, &MaterialBox::itemChanged);
    box.setCurrentIndex(box.findText(QStringLiteral("Brick")));
    QCOMPARE(told.count(), 1);
    QCOMPARE(box.picks, 0);
    QVERIFY(!zvedQueueHasInput());
}

void TestBoundControl::pickOfNothingDoesNothing()
{
    MaterialBox box(true);
    const QSignalSpy told(&box, &MaterialBox::itemChanged);
    box.setCurrentIndex(-1);
    QCOMPARE(told.count(), 0);
    box.addItem(QString());
    box.setCurrentIndex(box.count() - 1); // a row without a text writes nothing
    QCOMPARE(told.count(), 1);
    QCOMPARE(box.picks, 0);
}

void TestBoundControl::openingFillsAnewAndKeepsTheText()
{
    MaterialBox box(true);
    drawing().setCmaterial(addMaterial(L"Brick"));
    bus().commandEnded(L"LINE");
    addMaterial(L"Air"); // before it in the dictionary, or behind
    const int fills = box.fills;
    box.showPopup();
    QCOMPARE(box.fills, fills + 1);
    QCOMPARE(box.openings, 1);
    QCOMPARE(box.currentText(), QStringLiteral("Brick"));
    QVERIFY(box.findText(QStringLiteral("Air")) >= 0);
}

void TestBoundControl::openingIsNoPick()
{
    addLayer(L"Walls");
    LayerBox box(true); // its own guard ends in the middle of the refill
    drawing().setClayer(layerNamed(L"Walls"));
    bus().commandEnded(L"LINE");
    QCOMPARE(box.currentText(), QStringLiteral("Walls"));
    box.showPopup();
    QCOMPARE(box.currentText(), QStringLiteral("Walls"));
    QCOMPARE(box.picks, 0);
    QVERIFY(!box.signalsBlocked());
}

void TestBoundControl::openingOfAnUnhookedControlReadsNothing()
{
    MaterialBox box(false);
    const int fills = box.fills;
    box.showPopup();
    QCOMPARE(box.fills, fills);
    QCOMPARE(box.openings, 1);
}

void TestBoundControl::listStaysClosedDuringACommand_data()
{
    QTest::addColumn<bool>("inCommand");
    QTest::addColumn<bool>("inDialog");
    QTest::addColumn<bool>("opens");
    QTest::newRow("idle") << false << false << true;
    QTest::newRow("a dialog alone") << false << true << true;
    QTest::newRow("an ordinary command") << true << false << false;
}

void TestBoundControl::listStaysClosedDuringACommand()
{
    QFETCH(bool, inCommand);
    QFETCH(bool, inDialog);
    static LayerBox *layers = nullptr;
    static MaterialBox *materials = nullptr;
    LayerBox box(true);
    MaterialBox other(true);
    layers = &box;
    materials = &other;
    const ZvEdCommandFunction open = [] {
        layers->showPopup();
        materials->showPopup();
    };
    if (inDialog)
        zvedDialogStarted();
    if (inCommand) {
        zvedCommandStack()->addCommand(L"TEST", L"TESTOPEN", L"TESTOPEN", 0, open, nullptr, -1,
                                       ZvRxResourceInstance(nullptr), 0);
        QVERIFY(runMacro(L"TESTOPEN"));
        zvedCommandStack()->removeCmd(L"TEST", L"TESTOPEN");
    } else {
        open();
    }
    if (inDialog)
        zvedDialogEnded();
    QTEST(box.openings == 1, "opens");
    QCOMPARE(other.openings, 1);
}

void TestBoundControl::wholeRoundLeavesEveryControlInStep()
{
    addMaterial(L"Brick");
    MaterialBox first(true);
    MaterialBox second(true);
    first.setCurrentIndex(first.findText(QStringLiteral("Brick")));
    QVERIFY(runCommands());
    QCOMPARE(second.currentText(), QStringLiteral("Brick")); // by the end of the command
    QCOMPARE(second.picks, 0);
    QVERIFY(runMacro(L"_.UNDO 1"));
    QVERIFY(first.currentText() != QStringLiteral("Brick"));
    QCOMPARE(first.currentText(), second.currentText());
}

// ---- guards and conversions

void TestBoundControl::hookedComesBackWhenFillingFails()
{
    MaterialBox box(true);
    struct Refusal { };
    const auto fail = [&box] {
        const ZvHookedCleared filling(box);
        QVERIFY(!box.hooked);
        throw Refusal();
    };
    QVERIFY_EXCEPTION_THROWN(zvRefillKeepingText(box, box, fail), Refusal);
    QVERIFY(box.hooked);
    QVERIFY(!box.signalsBlocked());
}

void TestBoundControl::kernelErrorBecomesAnAssertion()
{
    const Assertions assertions;
    zvSwallowKernelError("zvutilslayercombobox", 253, [] { throw ZvError("unreadable"); });
    QCOMPARE(assertions.list(), QStringList{QStringLiteral("false, zvutilslayercombobox, 253")});
    struct Other { };
    QVERIFY_EXCEPTION_THROWN(zvSwallowKernelError("", 1, [] { throw Other(); }), Other);
}

void TestBoundControl::colorsConvert()
{
    ZvCmColor color;
    color.setRGB(1, 2, 3);
    QCOMPARE(zvToPacked(color), 0x030201u);
    QCOMPARE(zvPackedToQColor(0x030201u), QColor(1, 2, 3));
    QCOMPARE(zvToQColor(color), QColor(1, 2, 3));
    QCOMPARE(zvToQColor(color.entityColor()), QColor(1, 2, 3));
    color.setColorIndex(1);
    QCOMPARE(zvToQColor(color), QColor(Qt::red)); // the palette's
}

ZEVA_TEST_MAIN(TestBoundControl)
#include "tst_boundcontrol.moc"
