// SPDX-License-Identifier: MIT
#include "addrecord.h"
#include "drawingtest.h"
#include "zvcolorcombobox.h"
#include "zvqtcontrolhelp.h"
#include "zvupdateuievent.h"

#include "base/zvregistry.h"
#include "core/zvsystem.h"

#include <QComboBox>
#include <QHash>
#include <QSignalSpy>

#include <algorithm>
#include <functional>
#include <iterator>
#include <stdexcept>
#include <type_traits>

using namespace ZvGlobalUIReactorHelp;

namespace {

/// Notes every notice, and does what the test wants done inside it.
class Recorder : public CZvQtControlHelp
{
public:
    explicit Recorder(ZvMonitorGlobalUISystemVarReactor &bus, SPickFirstInfo *info = nullptr)
        : CZvQtControlHelp(true, info), m_bus(bus)
    {
        m_bus.addUpdateUIReceiver(this);
    }
    ~Recorder() override { m_bus.removeUpdateUIReceiver(this); }
    Q_DISABLE_COPY(Recorder)

    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override
    {
        notices.push_back(notice);
        if (pickFirstInfo)
            statuses.push_back(pickFirstInfo->status);
        if (react)
            react(notice);
    }

    std::vector<std::uint64_t> kinds() const
    {
        std::vector<std::uint64_t> result;
        for (const CZvGlobalUIReactorHelp &notice : notices)
            result.push_back(notice.kind);
        return result;
    }

    std::vector<CZvGlobalUIReactorHelp> notices;
    std::vector<int> statuses; // of the summary, at each notice
    std::function<void(const CZvGlobalUIReactorHelp &)> react;

private:
    ZvMonitorGlobalUISystemVarReactor &m_bus;
};

/// A summary of a class of its own.
class CountingInfo : public SPickFirstInfo
{
public:
    void merge(const ZvDbEntity *, const ZvDbEntity *) override
    {
        if (++merges == mixedAfter)
            status = kInfoMixed;
    }
    void reset() override
    {
        status = kInfoUniform;
        ++resets;
    }
    int merges = 0;
    int resets = 0;
    int mixedAfter = 0; // merges; 0 for never
};

class FollowingBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &) override { }
};

CZvGlobalUIReactorHelp noticeOfKind(std::uint64_t kind)
{
    CZvGlobalUIReactorHelp notice;
    notice.kind = kind;
    return notice;
}

typedef std::vector<std::uint64_t> Kinds;

/// Records of classes that derive from those that the bus knows.
class SpecialLayer : public ZvDbLayerTableRecord
{
    ZVRX_DECLARE_MEMBERS(SpecialLayer)
};
ZVRX_DEFINE_MEMBERS(SpecialLayer, ZvDbLayerTableRecord)

class SpecialViewport : public ZvDbViewportTableRecord
{
    ZVRX_DECLARE_MEMBERS(SpecialViewport)
};
ZVRX_DEFINE_MEMBERS(SpecialViewport, ZvDbViewportTableRecord)

} // namespace

class TestUpdateBus : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    // what each event becomes
    void eachEventBecomesItsNotice_data();
    void eachEventBecomesItsNotice();
    void interfaceStandsInItsOrder();
    void documentBecomingCurrentIsTold();
    void layoutSwitchIsToldWithoutItsName();
    void systemVariableIsToldByName();
    void successOfASystemVariableMakesNoDifference();
    void newObjectIsTold();
    void changedObjectIsTold();
    void erasedAndUnerasedObjectsAreToldAlike();
    void selectionIsTold();
    void endOfACommandIsToldByName();
    void startAndCancelOfACommandAreNotTold();
    void changeAffectsTheSelection_data();
    void changeAffectsTheSelection();
    void noticeLivesOnAsAnEvent();
    void layoutManagerNoticesAreEmpty();

    // what is dropped
    void eventIsDroppedOrNot_data();
    void eventIsDroppedOrNot();
    void switchingInsideTheEndOfACommandDoesNotLast();
    void commandThatFailsKeepsVariablesOut();
    void nothingIsDeliveredWithoutAnOpenDocument();
    void nothingIsDeliveredWithoutThePartsOfTheKernel_data();
    void nothingIsDeliveredWithoutThePartsOfTheKernel();
    void newDocumentSwitchesTheBusOff();
    void switchingOnMakesUpForNothing();
    void switchedOffOnlyTheEndOfACommandGetsThrough();
    void runningCommandKeepsVariablesAndObjectsOut();
    void activeDialogKeepsVariablesAndObjectsOut();
    void unreadableCommandStateCountsAsNone();
    void cancelledCommandLetsVariablesThroughAgain();
    void failedCommandKeepsVariablesOutUntilTheNextEnd();
    void firstEndOfNestedCommandsLetsVariablesThrough();
    void deliveryOfAnObjectKeepsOtherNoticesOut();
    void deliveryOfTheSelectionKeepsOtherNoticesOut();
    void innerDeliveryEndsTheOuterOnesSilence();
    void deliveryOfACommandsEndLetsNestedNoticesThrough();
    void unmodifiedObjectIsNotTold();
    void nullObjectIsNotTold();
    void viewportRecordIsToldOnlyWithoutASelection_data();
    void viewportRecordIsToldOnlyWithoutASelection();
    void variableNobodySetIsNotTold();

    // the summaries
    void stepsOfADeliveryAreInOrder_data();
    void stepsOfADeliveryAreInOrder();
    void noticeCostsOneScanOrNone_data();
    void noticeCostsOneScanOrNone();
    void summariesAreFreshInEveryOrdinaryNotice();
    void hostsNoticesLeaveTheSummariesAlone_data();
    void hostsNoticesLeaveTheSummariesAlone();
    void summariesStayWithoutADocument();
    void receiverWithoutSummaryAddsNone();
    void summaryIsResetOnceANotice();
    void sharedSummaryIsKeptOnce();
    void sharedSummaryGoesWithTheFirstThatLeaves();
    void leavingKeepsTheOrderOfTheOtherSummaries();
    void joiningAgainBringsASummaryThatWasMissing();
    void scanOpensEachEntityOnceForAllSummaries_data();
    void scanOpensEachEntityOnceForAllSummaries();
    void foreignSummaryBesideUnchangedOnesOpensEachEntityOnce();

    // receivers
    void receiversAreToldInTheOrderOfJoining();
    void joiningTwiceKeepsOne();
    void leavingKeepsTheOrderOfTheOthers();
    void leavingAbsentIsNothing();
    void joiningInADeliveryTakesPartInIt();
    void leavingInADeliveryMakesTheNextOneMissIt();
    void receiverMayDieInItsOwnNotice();
    void noticeMayBeRaisedInsideANotice();
    void documentMayCloseInsideANotice_data();
    void documentMayCloseInsideANotice();
    void receiversExceptionLeavesTheBusUsable();
    void receiverIsFoundFromAnObject();

    // joining the kernel
    void busLeavesTheKernelWhenItDies();
    void unloadedBusHearsOnlyTheDrawingsItJoined();
    void busWorksWithoutEditorAndManagers();
    void busSurvivesAnEditorOfAnotherClass();
    void documentOpenBeforeTheBusIsNotHeardOf();
    void newDocumentJoinsTheCurrentDrawing();
    void documentsWithoutACurrentDrawingJoinAndLeaveNothing();
    void documentDestroyedWhileAnotherIsCurrentIsHarmless();

    // the whole way
    void commandThatChangesTheColorIsToldOnceAtItsEnd();
    void undoIsToldOnceAtItsEnd();
    void controlShowsACommandsChangeAtItsEnd();
    void undoAfterAPickBringsDrawingAndControlsBack();
    void pickInARunningCommandFallsIntoIt();

private:
    enum Event {
        kDocumentCurrent,
        kLayout,
        kVariable,
        kAppended,
        kModified,
        kErased,
        kSelection,
        kEnded,
        kWillStart,
        kCancelled,
        kFromHost,
        kEventCount
    };
    void raise(Event event, ZvDbObjectId line);
};

/// As the kernel does, through its reactors.
void TestUpdateBus::raise(Event event, ZvDbObjectId line)
{
    switch (event) {
    case kDocumentCurrent:
        bus().documentBecameCurrent(document());
        break;
    case kLayout:
        bus().layoutSwitched(L"Layout1");
        break;
    case kVariable:
        bus().sysVarChanged(L"CECOLOR", true);
        break;
    case kAppended:
    case kErased:
        read<ZvDbEntity>(line, [&](const ZvDbEntity &entity) {
            event == kAppended ? bus().objectAppended(entity.database(), &entity)
                               : bus().objectErased(entity.database(), &entity, true);
        });
        break;
    case kModified:
        change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setLinetypeScale(entity.linetypeScale() + 1.0); });
        break;
    case kSelection:
        bus().pickfirstModified();
        break;
    case kEnded:
        bus().commandEnded(L"LINE");
        break;
    case kWillStart:
        bus().commandWillStart(L"LINE");
        break;
    case kCancelled:
        bus().commandCancelled(L"LINE");
        break;
    default:
        bus().notifyUpdateUI(noticeOfKind(1024));
        break;
    }
}

void TestUpdateBus::eachEventBecomesItsNotice_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<bool>("hasSelection");
    QTest::addColumn<quint64>("kind"); // 0 for none
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("hasObject");
    QTest::addColumn<bool>("affects");
    const auto row = [](const char *tag, Event event, bool hasSelection, quint64 kind, const char *name, bool hasObject,
                        bool affects) {
        QTest::newRow(tag) << int(event) << hasSelection << kind << QString::fromLatin1(name) << hasObject << affects;
    };
    row("document became current", kDocumentCurrent, false, 1, "", false, false);
    row("layout switched", kLayout, false, 2, "", false, false);
    row("system variable", kVariable, false, 4, "CECOLOR", false, false);
    row("object appended", kAppended, false, 16, "", true, false);
    row("object appended, something selected", kAppended, true, 16, "", true, false);
    row("object modified", kModified, false, 16, "", true, false);
    row("object modified, something selected", kModified, true, 16, "", true, true);
    row("object erased", kErased, false, 16, "", true, false);
    row("object erased, something selected", kErased, true, 16, "", true, false);
    row("selection", kSelection, false, 64, "", false, false);
    row("command ended", kEnded, false, 2048, "LINE", false, false);
    row("command will start", kWillStart, false, 0, "", false, false);
    row("command cancelled", kCancelled, false, 0, "", false, false);
    row("the host's own", kFromHost, false, 1024, "", false, false);
}

void TestUpdateBus::eachEventBecomesItsNotice()
{
    QFETCH(int, event);
    QFETCH(bool, hasSelection);
    QFETCH(quint64, kind);
    QFETCH(QString, name);
    QFETCH(bool, hasObject);
    QFETCH(bool, affects);
    const ZvDbObjectId line = addLine();
    if (hasSelection)
        select({line});
    Recorder recorder(bus());
    recorder.react = [=](const CZvGlobalUIReactorHelp &notice) {
        QCOMPARE(notice.object ? notice.object->objectId() : ZvDbObjectId(), hasObject ? line : ZvDbObjectId());
    };
    raise(Event(event), line);
    QCOMPARE(recorder.kinds(), kind ? Kinds{kind} : Kinds());
    if (!kind)
        return;
    const CZvGlobalUIReactorHelp &notice = recorder.notices[0];
    QCOMPARE(notice.name, ZvString(name.toUtf8().constData()));
    QCOMPARE(notice.database, hasObject ? &drawing() : nullptr);
    QCOMPARE(notice.affectsSelection, affects);
}

void TestUpdateBus::interfaceStandsInItsOrder()
{
    // Other modules are compiled against the places of fields and virtual operations.
    const CZvGlobalUIReactorHelp notice{kNoticeSysVar, L"CLAYER", nullptr, &drawing(), true};
    QCOMPARE(notice.kind, std::uint64_t(4));
    QVERIFY(notice.affectsSelection);
    QCOMPARE(notice.database, &drawing());
    const std::uint64_t kinds[] = {kNoticeHostFirst, kNoticeHostSecond};
    QCOMPARE(kinds[0], std::uint64_t(512));
    QCOMPARE(kinds[1], std::uint64_t(1024));
    const int statuses[] = {kInfoNoDocument, kInfoNoSelection, kInfoUniform, kInfoMixed};
    for (int i = 0; i < 4; ++i)
        QCOMPARE(statuses[i], i);

    const auto slotOf = [](void *object, int number) { return (*static_cast<void ***>(object))[number]; };
    CountingInfo info;
    Recorder recorder(bus(), &info);
    reinterpret_cast<void (*)(CZvQtControlHelp *, const CZvGlobalUIReactorHelp &)>(
        slotOf(static_cast<CZvQtControlHelp *>(&recorder), 2))(&recorder, notice);
    QCOMPARE(recorder.kinds(), Kinds{4});
    reinterpret_cast<void (*)(SPickFirstInfo *, const ZvDbEntity *, const ZvDbEntity *)>(
        slotOf(static_cast<SPickFirstInfo *>(&info), 2))(&info, nullptr, nullptr);
    QCOMPARE(info.merges, 1);
    reinterpret_cast<void (*)(SPickFirstInfo *)>(slotOf(static_cast<SPickFirstInfo *>(&info), 3))(&info);
    QCOMPARE(info.resets, 1);
    // Behind the pointer to the operations: hooked, then the summary.
    const char *bytes = reinterpret_cast<const char *>(static_cast<CZvQtControlHelp *>(&recorder));
    QCOMPARE(reinterpret_cast<const char *>(&recorder.hooked) - bytes, std::ptrdiff_t(sizeof(void *)));
    QCOMPARE(reinterpret_cast<const char *>(&recorder.pickFirstInfo) - bytes, std::ptrdiff_t(2 * sizeof(void *)));
    // The service that controls find the bus by: its two operations stand behind the eight of every object.
    ZvRxObject *service = zv_arbitDict_getservice(ZvString(wchar_t(14)));
    QVERIFY(service);
    FollowingBox box;
    CountingInfo lent;
    box.pickFirstInfo = &lent;
    typedef void (*ServiceOperation)(ZvRxObject *, CZvQtControlHelp *);
    reinterpret_cast<ServiceOperation>(slotOf(service, 8))(service, &box);
    bus().commandEnded(L"LINE");
    QCOMPARE(lent.resets, 1);
    reinterpret_cast<ServiceOperation>(slotOf(service, 9))(service, &box);
    bus().commandEnded(L"LINE");
    QCOMPARE(lent.resets, 1);

    // The four sides of the reactor, one behind the other.
    const auto placeOf = [](const ZvRxObject *side) { return reinterpret_cast<const char *>(side); };
    const ZvMonitorGlobalUISystemVarReactor &reactor = bus();
    const char *const places[] = {placeOf(static_cast<const ZvEditorReactor *>(&reactor)),
                                  placeOf(static_cast<const ZvApDocManagerReactor *>(&reactor)),
                                  placeOf(static_cast<const ZvDbDatabaseReactor *>(&reactor)),
                                  placeOf(static_cast<const ZvDbLayoutManagerReactor *>(&reactor))};
    QVERIFY(std::is_sorted(std::begin(places), std::end(places)));
    QCOMPARE(places[0], reinterpret_cast<const char *>(&reactor));
    // The reactor is nobody's to count or delete.
    static_assert(std::is_base_of_v<ZvStaticRxObject<ZvEditorReactor>, ZvMonitorGlobalUISystemVarReactor>, "");
    static_assert(std::is_base_of_v<ZvStaticRxObject<ZvApDocManagerReactor>, ZvMonitorGlobalUISystemVarReactor>, "");
    static_assert(std::is_base_of_v<ZvStaticRxObject<ZvDbDatabaseReactor>, ZvMonitorGlobalUISystemVarReactor>, "");
    static_assert(std::is_base_of_v<ZvStaticRxObject<ZvDbLayoutManagerReactor>, ZvMonitorGlobalUISystemVarReactor>, "");
}

void TestUpdateBus::documentBecomingCurrentIsTold()
{
    ZvApDocument *first = document();
    openAnother();
    Recorder recorder(bus());
    zvDocManagerPtr()->setCurrentDocument(first);
    QCOMPARE(recorder.kinds(), Kinds {kNoticeDocumentCurrent});
    QVERIFY(recorder.notices[0].name.isEmpty());
    QVERIFY(!recorder.notices[0].object);
    QVERIFY(!recorder.notices[0].database);
    QVERIFY(!recorder.notices[0].affectsSelection);
}

void TestUpdateBus::layoutSwitchIsToldWithoutItsName()
{
    Recorder recorder(bus());
    bus().layoutSwitched(L"Layout1");
    QCOMPARE(recorder.kinds(), Kinds {kNoticeLayoutSwitched});
    QVERIFY(recorder.notices[0].name.isEmpty());
    QVERIFY(!recorder.notices[0].object);

    // The kernel raises it too.
    recorder.notices.clear();
    drawing().setTilemode(false);
    const Kinds kinds = recorder.kinds();
    QCOMPARE(std::count(kinds.begin(), kinds.end(), std::uint64_t(kNoticeLayoutSwitched)), 1);
}

void TestUpdateBus::systemVariableIsToldByName()
{
    Recorder recorder(bus());
    drawing().setCelweight(ZvDb::kLnWt050);
    QCOMPARE(recorder.kinds(), Kinds {kNoticeSysVar});
    QCOMPARE(recorder.notices[0].name, ZvString(L"CELWEIGHT"));
    QVERIFY(!recorder.notices[0].object);
    QVERIFY(!recorder.notices[0].database);
    QVERIFY(!recorder.notices[0].affectsSelection);
}

void TestUpdateBus::successOfASystemVariableMakesNoDifference()
{
    Recorder recorder(bus());
    bus().sysVarChanged(L"CECOLOR", false);
    bus().sysVarChanged(L"CECOLOR", true);
    QCOMPARE(recorder.kinds(), (Kinds {kNoticeSysVar, kNoticeSysVar}));
}

void TestUpdateBus::newObjectIsTold()
{
    Recorder recorder(bus());
    recorder.react = [](const CZvGlobalUIReactorHelp &notice) {
        QCOMPARE(notice.database, &drawing());
        QVERIFY(notice.object->isKindOf(ZvDbLine::desc()));
    };
    addLine();
    QCOMPARE(recorder.kinds(), Kinds {kNoticeObject});
    QVERIFY(recorder.notices[0].name.isEmpty());
    QVERIFY(!recorder.notices[0].affectsSelection);
}

void TestUpdateBus::changedObjectIsTold()
{
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    const ZvDbObject *told = nullptr;
    recorder.react = [&](const CZvGlobalUIReactorHelp &notice) {
        told = notice.object;
        QVERIFY(notice.object->isModified());
        // It may be read in here.
        QCOMPARE(read<ZvDbEntity>(line, [](const ZvDbEntity &entity) { return entity.lineWeight(); }), ZvDb::kLnWt100);
    };
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setLineWeight(ZvDb::kLnWt100); });
    QCOMPARE(recorder.kinds(), Kinds {kNoticeObject});
    QCOMPARE(recorder.notices[0].database, &drawing());
    QVERIFY(told);
    QVERIFY(!recorder.notices[0].affectsSelection);
}

void TestUpdateBus::erasedAndUnerasedObjectsAreToldAlike()
{
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.erase(); });
    ZvDbEntity *entity = nullptr;
    QCOMPARE(zvdbOpenObject(entity, line, ZvDb::kForWrite, true), Zv::eOk);
    entity->erase(false);
    entity->close();
    QCOMPARE(recorder.kinds(), (Kinds {kNoticeObject, kNoticeObject}));
    QCOMPARE(recorder.notices[0].object, recorder.notices[1].object);
    QVERIFY(!recorder.notices[0].affectsSelection);
    QVERIFY(!recorder.notices[1].affectsSelection);
}

void TestUpdateBus::selectionIsTold()
{
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    select({line});
    select({});
    QCOMPARE(recorder.kinds(), (Kinds {kNoticePickFirst, kNoticePickFirst}));
    QVERIFY(recorder.notices[0].name.isEmpty());
    QVERIFY(!recorder.notices[0].object);
    QVERIFY(!recorder.notices[0].affectsSelection);
}

void TestUpdateBus::endOfACommandIsToldByName()
{
    Recorder recorder(bus());
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});
    QCOMPARE(recorder.notices[0].name, ZvString(L"LINE"));
    QVERIFY(!recorder.notices[0].object);
    QVERIFY(!recorder.notices[0].affectsSelection);
}

void TestUpdateBus::startAndCancelOfACommandAreNotTold()
{
    Recorder recorder(bus());
    bus().commandWillStart(L"LINE");
    bus().commandCancelled(L"LINE");
    bus().documentDestroyed(L"a.dxf");
    bus().documentToBeActivated(document());
    QVERIFY(recorder.notices.empty());
}

void TestUpdateBus::changeAffectsTheSelection_data()
{
    QTest::addColumn<bool>("hasSelection");
    QTest::addColumn<QString>("object");
    QTest::addColumn<bool>("affects");
    QTest::newRow("entity, something selected") << true << "entity" << true;
    QTest::newRow("entity, nothing selected") << false << "entity" << false;
    QTest::newRow("layer, something selected") << true << "layer" << true;
    QTest::newRow("layer, nothing selected") << false << "layer" << false;
    QTest::newRow("text style, something selected") << true << "style" << false;
    QTest::newRow("of a class derived from the layer's, something selected") << true << "special layer" << false;
}

void TestUpdateBus::changeAffectsTheSelection()
{
    QFETCH(bool, hasSelection);
    QFETCH(QString, object);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId layer = object.startsWith(QLatin1String("special"))
        ? addRecord<ZvDbLayerTable, SpecialLayer>(drawing(), L"Walls")
        : addLayer(L"Walls");
    const ZvDbObjectId style = addTextStyle(L"Small");
    if (hasSelection)
        select({line});
    Recorder recorder(bus());
    if (object == QLatin1String("entity"))
        change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setLineWeight(ZvDb::kLnWt100); });
    else if (object.endsWith(QLatin1String("layer")))
        change<ZvDbLayerTableRecord>(layer, [](ZvDbLayerTableRecord &record) { record.setIsLocked(true); });
    else
        change<ZvDbTextStyleTableRecord>(style, [](ZvDbTextStyleTableRecord &record) { record.setXScale(2.0); });
    QCOMPARE(recorder.kinds(), Kinds {kNoticeObject});
    QTEST(recorder.notices[0].affectsSelection, "affects");
}

void TestUpdateBus::noticeLivesOnAsAnEvent()
{
    const auto type = QEvent::Type(QEvent::registerEventType());
    const ZvDbLine line;
    CZvGlobalUIReactorHelp notice = noticeOfKind(kNoticeObject);
    notice.name = L"CECOLOR";
    notice.object = &line;
    notice.database = &drawing();
    notice.affectsSelection = true;
    const ZvUpdateUiEvent event(notice, type);
    notice = CZvGlobalUIReactorHelp();
    QCOMPARE(event.type(), type);
    QCOMPARE(event.kind, std::uint64_t(kNoticeObject));
    QCOMPARE(event.name, ZvString(L"CECOLOR"));
    QCOMPARE(event.object, static_cast<const ZvDbObject *>(&line));
    QCOMPARE(event.database, &drawing());
    QVERIFY(event.affectsSelection);
    const ZvUpdateUiEvent other(notice, QEvent::User);
    QCOMPARE(other.type(), QEvent::User);
    QVERIFY(!other.affectsSelection);
    // The fields stand in this order behind those of every event.
    const void *const fields[]
        = {&event, &event.kind, &event.name, &event.object, &event.database, &event.affectsSelection};
    QVERIFY(std::is_sorted(std::begin(fields), std::end(fields)));
}

void TestUpdateBus::layoutManagerNoticesAreEmpty()
{
    Recorder recorder(bus());
    static_cast<ZvDbLayoutManagerReactor &>(bus()).layoutBecameCurrent(&drawing(), L"Layout1");
    QVERIFY(recorder.notices.empty());
}

// ---- what is dropped

void TestUpdateBus::eventIsDroppedOrNot_data()
{
    QTest::addColumn<QString>("state");
    QTest::addColumn<int>("event");
    QTest::addColumn<bool>("delivered");
    const char *const events[kEventCount]
        = {"document current", "layout",        "variable",           "appended",          "modified", "erased",
           "selection",        "command ended", "command will start", "command cancelled", "host's"};
    struct State
    {
        const char *name;
        bool ordinary; // selection, layout, document and the host's notices get through
        bool changes; // variables and objects do
        bool ended; // the end of a command does
    };
    const State states[] = {
        {"idle", true, true, true},
        {"command running", true, false, true},
        {"dialog active", true, false, true},
        {"in a notice of an object", true, false, true},
        {"in a notice of a new object", true, false, true},
        {"in a notice of an erased object", true, false, true},
        {"in a notice of the selection", true, false, true},
        {"in a notice of a variable", true, true, true},
        {"in a notice of a command's end", true, true, true},
        {"in a notice of a layout", true, true, true},
        {"in a notice of a document", true, true, true},
        {"in a notice of the host's", true, true, true},
        {"switched off", false, false, true},
        {"switched off, command running", false, false, true},
    };
    for (const State &state : states) {
        for (int event = 0; event < kEventCount; ++event) {
            const bool isChange = event >= kVariable && event <= kErased;
            const bool isSilent = event == kWillStart || event == kCancelled;
            const bool delivered = isSilent ? false
                : event == kEnded           ? state.ended
                : isChange                  ? state.changes
                                            : state.ordinary;
            QTest::newRow(
                qPrintable(QStringLiteral("%1: %2").arg(QLatin1String(state.name), QLatin1String(events[event]))))
                << QString::fromLatin1(state.name) << event << delivered;
        }
    }
}

void TestUpdateBus::eventIsDroppedOrNot()
{
    QFETCH(QString, state);
    QFETCH(int, event);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId other = addLine();
    if (state.contains(QLatin1String("command running")))
        bus().commandWillStart(L"CIRCLE");
    if (state == QLatin1String("dialog active"))
        zvedDialogStarted();
    if (state.startsWith(QLatin1String("switched off")))
        bus().enableUpdateUI(false);

    Recorder recorder(bus());
    std::size_t count = 0;
    if (state.startsWith(QLatin1String("in a notice"))) {
        bool isInside = false;
        recorder.react = [&](const CZvGlobalUIReactorHelp &) {
            if (isInside)
                return;
            isInside = true;
            const std::size_t before = recorder.notices.size();
            raise(Event(event), line);
            count = recorder.notices.size() - before;
        };
        const QHash<QString, Event> outer = {
            {QStringLiteral("an object"), kModified},      {QStringLiteral("a new object"), kAppended},
            {QStringLiteral("an erased object"), kErased}, {QStringLiteral("the selection"), kSelection},
            {QStringLiteral("a variable"), kVariable},     {QStringLiteral("a command's end"), kEnded},
            {QStringLiteral("a layout"), kLayout},         {QStringLiteral("a document"), kDocumentCurrent},
            {QStringLiteral("the host's"), kFromHost},
        };
        const QString of = state.mid(int(qstrlen("in a notice of ")));
        QVERIFY(outer.contains(of));
        raise(outer.value(of), other);
        QVERIFY(isInside);
    } else {
        raise(Event(event), line);
        count = recorder.notices.size();
    }
    if (state == QLatin1String("dialog active"))
        zvedDialogEnded();
    QTEST(count == 1, "delivered");
    QVERIFY(count < 2);
}

void TestUpdateBus::switchingInsideTheEndOfACommandDoesNotLast()
{
    Recorder recorder(bus());
    bus().enableUpdateUI(false);
    recorder.react = [this](const CZvGlobalUIReactorHelp &) { bus().enableUpdateUI(true); };
    bus().commandEnded(L"LINE");
    bus().layoutSwitched(L"");
    QCOMPARE(recorder.kinds(), Kinds{kNoticeCommandEnded}); // what was before is put back
}

void TestUpdateBus::commandThatFailsKeepsVariablesOut()
{
    const WorkCommand command([] { throw std::runtime_error("no"); });
    Recorder recorder(bus());
    QVERIFY(!runMacro(L"TESTWORK"));
    QVERIFY(recorder.notices.empty());
    drawing().setCelweight(ZvDb::kLnWt050);
    addLine();
    QVERIFY(recorder.notices.empty());
    select({addLine()});
    QCOMPARE(recorder.kinds(), Kinds{kNoticePickFirst});
    QVERIFY(runMacro(L"_.SETVAR CECOLOR 1"));
    drawing().setCelweight(ZvDb::kLnWt100);
    QCOMPARE(recorder.kinds(), (Kinds{kNoticePickFirst, kNoticeCommandEnded, kNoticeSysVar}));
}

void TestUpdateBus::nothingIsDeliveredWithoutAnOpenDocument()
{
    zvDocManagerPtr()->closeDocument(document());
    QCOMPARE(zvDocManagerPtr()->documentCount(), 0);
    Recorder recorder(bus());
    bus().enableUpdateUI(true);
    bus().commandEnded(L"LINE");
    bus().sysVarChanged(L"CECOLOR", true);
    bus().pickfirstModified();
    bus().notifyUpdateUI(noticeOfKind(kNoticeHostFirst));
    QVERIFY(recorder.notices.empty());
}

void TestUpdateBus::nothingIsDeliveredWithoutThePartsOfTheKernel_data()
{
    QTest::addColumn<bool>("isSystem");
    QTest::newRow("no system object") << true;
    QTest::newRow("no document manager") << false;
}

void TestUpdateBus::nothingIsDeliveredWithoutThePartsOfTheKernel()
{
    QFETCH(bool, isSystem);
    Recorder recorder(bus());
    CHcSystem *system = CHcSystem::instance();
    isSystem ? CHcSystem::setInstanceAvailable(false) : system->setDocManagerAvailable(false);
    bus().commandEnded(L"LINE");
    isSystem ? CHcSystem::setInstanceAvailable(true) : system->setDocManagerAvailable(true);
    QVERIFY(recorder.notices.empty());
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.notices.size(), std::size_t(1));
}

void TestUpdateBus::newDocumentSwitchesTheBusOff()
{
    Recorder recorder(bus());
    zvDocManagerPtr()->newDocument();
    recorder.notices.clear();
    drawing().setCelweight(ZvDb::kLnWt050);
    select({addLine()});
    bus().layoutSwitched(L"Layout1");
    QVERIFY(recorder.notices.empty());

    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});
    // and it is off again
    drawing().setCelweight(ZvDb::kLnWt100);
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});

    bus().enableUpdateUI(true);
    drawing().setCelweight(ZvDb::kLnWt120);
    QCOMPARE(recorder.kinds(), (Kinds {kNoticeCommandEnded, kNoticeSysVar}));
}

void TestUpdateBus::switchingOnMakesUpForNothing()
{
    Recorder recorder(bus());
    bus().enableUpdateUI(false);
    drawing().setCelweight(ZvDb::kLnWt050);
    bus().enableUpdateUI(true);
    QVERIFY(recorder.notices.empty());
}

void TestUpdateBus::switchedOffOnlyTheEndOfACommandGetsThrough()
{
    Recorder recorder(bus());
    bus().enableUpdateUI(false);
    bus().sysVarChanged(L"CECOLOR", true);
    bus().pickfirstModified();
    bus().layoutSwitched(L"");
    bus().documentBecameCurrent(document());
    addLine();
    bus().notifyUpdateUI(noticeOfKind(kNoticeHostFirst));
    QVERIFY(recorder.notices.empty());
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});
}

void TestUpdateBus::runningCommandKeepsVariablesAndObjectsOut()
{
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    bus().commandWillStart(L"LINE");
    drawing().setCelweight(ZvDb::kLnWt050);
    addLine();
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.setLineWeight(ZvDb::kLnWt100); });
    change<ZvDbEntity>(line, [](ZvDbEntity &entity) { entity.erase(); });
    QVERIFY(recorder.notices.empty());
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});
}

void TestUpdateBus::activeDialogKeepsVariablesAndObjectsOut()
{
    Recorder recorder(bus());
    zvedDialogStarted();
    QCOMPARE(variable(L"CMDACTIVE"), 8.0);
    drawing().setCelweight(ZvDb::kLnWt050);
    addLine();
    zvedDialogEnded();
    QVERIFY(recorder.notices.empty());
    drawing().setCelweight(ZvDb::kLnWt100);
    QCOMPARE(recorder.kinds(), Kinds {kNoticeSysVar});
}

void TestUpdateBus::unreadableCommandStateCountsAsNone()
{
    Recorder recorder(bus());
    zvedDialogStarted();
    zvedSetVarReadable(L"CMDACTIVE", false);
    drawing().setCelweight(ZvDb::kLnWt050);
    addLine();
    zvedSetVarReadable(L"CMDACTIVE", true);
    drawing().setCelweight(ZvDb::kLnWt100); // the dialog is still there
    zvedDialogEnded();
    QCOMPARE(recorder.kinds(), (Kinds{kNoticeSysVar, kNoticeObject}));
}

void TestUpdateBus::cancelledCommandLetsVariablesThroughAgain()
{
    Recorder recorder(bus());
    bus().commandWillStart(L"LINE");
    bus().commandCancelled(L"LINE");
    QVERIFY(recorder.notices.empty());
    drawing().setCelweight(ZvDb::kLnWt050);
    QCOMPARE(recorder.kinds(), Kinds {kNoticeSysVar});
}

void TestUpdateBus::failedCommandKeepsVariablesOutUntilTheNextEnd()
{
    Recorder recorder(bus());
    bus().commandWillStart(L"LINE");
    static_cast<ZvEditorReactor &>(bus()).commandFailed(L"LINE");
    drawing().setCelweight(ZvDb::kLnWt050);
    addLine();
    QVERIFY(recorder.notices.empty());
    bus().commandEnded(L"CIRCLE");
    drawing().setCelweight(ZvDb::kLnWt100);
    QCOMPARE(recorder.kinds(), (Kinds {kNoticeCommandEnded, kNoticeSysVar}));
}

void TestUpdateBus::firstEndOfNestedCommandsLetsVariablesThrough()
{
    Recorder recorder(bus());
    bus().commandWillStart(L"LINE");
    bus().commandWillStart(L"ZOOM");
    bus().commandEnded(L"ZOOM");
    drawing().setCelweight(ZvDb::kLnWt050);
    QCOMPARE(recorder.kinds(), (Kinds {kNoticeCommandEnded, kNoticeSysVar}));
}

void TestUpdateBus::deliveryOfAnObjectKeepsOtherNoticesOut()
{
    Recorder recorder(bus());
    recorder.react = [this](const CZvGlobalUIReactorHelp &notice) {
        if (notice.kind == kNoticeObject) {
            drawing().setCelweight(ZvDb::kLnWt050);
            addLayer(L"Made by a control");
        }
    };
    addLine();
    QCOMPARE(recorder.kinds(), Kinds {kNoticeObject});
}

void TestUpdateBus::deliveryOfTheSelectionKeepsOtherNoticesOut()
{
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    recorder.react = [this](const CZvGlobalUIReactorHelp &) {
        drawing().setCelweight(ZvDb::kLnWt050);
        addLayer(L"Made by a control");
    };
    select({line});
    QCOMPARE(recorder.kinds(), Kinds {kNoticePickFirst});
    recorder.react = nullptr;
    drawing().setCelweight(ZvDb::kLnWt100);
    QCOMPARE(recorder.kinds(), (Kinds {kNoticePickFirst, kNoticeSysVar}));
}

void TestUpdateBus::innerDeliveryEndsTheOuterOnesSilence()
{
    Recorder recorder(bus());
    recorder.react = [this](const CZvGlobalUIReactorHelp &notice) {
        if (notice.kind != kNoticeObject)
            return;
        drawing().setCelweight(ZvDb::kLnWt050);
        bus().pickfirstModified();
        drawing().setCelweight(ZvDb::kLnWt100);
    };
    addLine();
    QCOMPARE(recorder.kinds(), (Kinds{kNoticeObject, kNoticePickFirst, kNoticeSysVar}));
}

void TestUpdateBus::deliveryOfACommandsEndLetsNestedNoticesThrough()
{
    Recorder recorder(bus());
    recorder.react = [this](const CZvGlobalUIReactorHelp &notice) {
        if (notice.kind == kNoticeCommandEnded)
            drawing().setCelweight(ZvDb::kLnWt050);
    };
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.kinds(), (Kinds {kNoticeCommandEnded, kNoticeSysVar}));
}

void TestUpdateBus::unmodifiedObjectIsNotTold()
{
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    read<ZvDbEntity>(line, [this](const ZvDbEntity &entity) {
        QVERIFY(!entity.isModified());
        bus().objectModified(&drawing(), &entity);
    });
    change<ZvDbEntity>(line, [](ZvDbEntity &) {}); // opened for write and left as it is
    QVERIFY(recorder.notices.empty());
}

void TestUpdateBus::nullObjectIsNotTold()
{
    Recorder recorder(bus());
    bus().objectModified(&drawing(), nullptr);
    QVERIFY(recorder.notices.empty());
}

void TestUpdateBus::viewportRecordIsToldOnlyWithoutASelection_data()
{
    QTest::addColumn<bool>("isDerived");
    QTest::newRow("a viewport's record") << false;
    QTest::newRow("of a class derived from it") << true;
}

void TestUpdateBus::viewportRecordIsToldOnlyWithoutASelection()
{
    QFETCH(bool, isDerived);
    const ZvDbObjectId line = addLine();
    const ZvDbObjectId viewport = isDerived ? addRecord<ZvDbViewportTable, SpecialViewport>(drawing(), L"Special")
                                            : drawing().currentViewportId();
    Recorder recorder(bus());
    const auto touch = [&](double height) {
        change<ZvDbViewportTableRecord>(viewport, [=](ZvDbViewportTableRecord &record) { record.setHeight(height); });
    };
    touch(10.0);
    QCOMPARE(recorder.kinds(), Kinds {kNoticeObject});
    QVERIFY(!recorder.notices[0].affectsSelection);
    select({line});
    recorder.notices.clear();
    touch(20.0);
    QVERIFY(recorder.notices.empty());
}

void TestUpdateBus::variableNobodySetIsNotTold()
{
    Recorder recorder(bus());
    drawing().setCelweight(drawing().celweight());
    QVERIFY(recorder.notices.empty());
}

// ---- the summaries

namespace {

/// Tells when it is called.
class CalledInfo : public SPickFirstInfo
{
public:
    CalledInfo(QString name, QStringList &calls) : m_name(std::move(name)), m_calls(calls) { }
    void merge(const ZvDbEntity *, const ZvDbEntity *) override { m_calls << QStringLiteral("merge ") + m_name; }
    void reset() override
    {
        status = kInfoUniform;
        m_calls << QStringLiteral("reset ") + m_name;
    }

private:
    const QString m_name;
    QStringList &m_calls;
};

} // namespace

void TestUpdateBus::stepsOfADeliveryAreInOrder_data()
{
    QTest::addColumn<quint64>("kind");
    QTest::addColumn<int>("selected");
    QTest::addColumn<QStringList>("calls");
    const QStringList accept = QStringLiteral("accept a,accept b,accept none").split(QLatin1Char(','));
    const QStringList reset = QStringLiteral("reset a,reset b").split(QLatin1Char(','));
    const QStringList merge = QStringLiteral("merge a,merge b").split(QLatin1Char(','));
    QTest::newRow("nothing selected") << quint64(kNoticeCommandEnded) << 0 << reset + accept;
    QTest::newRow("one selected") << quint64(kNoticeCommandEnded) << 1 << reset + merge + accept;
    QTest::newRow("three selected") << quint64(kNoticePickFirst) << 3 << reset + merge + merge + accept;
    QTest::newRow("the host's first kind") << quint64(kNoticeHostFirst) << 3 << accept;
    QTest::newRow("the host's second kind") << quint64(kNoticeHostSecond) << 3 << accept;
}

void TestUpdateBus::stepsOfADeliveryAreInOrder()
{
    QFETCH(quint64, kind);
    QFETCH(int, selected);
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < selected; ++i)
        ids.push_back(addLine());
    select(ids);
    QStringList calls;
    CalledInfo a(QStringLiteral("a"), calls);
    CalledInfo b(QStringLiteral("b"), calls);
    Recorder first(bus(), &a);
    Recorder second(bus(), &b);
    Recorder third(bus());
    first.react = [&](const CZvGlobalUIReactorHelp &) { calls << QStringLiteral("accept a"); };
    second.react = [&](const CZvGlobalUIReactorHelp &) { calls << QStringLiteral("accept b"); };
    third.react = [&](const CZvGlobalUIReactorHelp &) { calls << QStringLiteral("accept none"); };
    bus().notifyUpdateUI(noticeOfKind(kind));
    QTEST(calls, "calls");
}

void TestUpdateBus::noticeCostsOneScanOrNone_data()
{
    QTest::addColumn<bool>("foreign");
    QTest::addColumn<bool>("changed");
    QTest::addColumn<int>("scans");
    QTest::newRow("the library's summaries, drawing changed") << false << true << 1;
    QTest::newRow("the library's summaries, nothing changed") << false << false << 0;
    QTest::newRow("and a host's, drawing changed") << true << true << 1;
    QTest::newRow("and a host's, nothing changed")
        << true << false << 1; // its merge() may say something else each time
}

void TestUpdateBus::noticeCostsOneScanOrNone()
{
    QFETCH(bool, foreign);
    QFETCH(bool, changed);
    QFETCH(int, scans);
    constexpr int kReceivers = 20;
    constexpr int kEntities = 15;
    const ZvDbObjectId style = addDimStyle(L"Fine");
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < kEntities; ++i) {
        auto *dimension = new ZvDbDimension; // the style is read from each
        dimension->setDimensionStyle(style);
        ids.push_back(add(dimension));
    }
    std::vector<std::unique_ptr<SPickFirstInfo>> infos;
    std::vector<std::unique_ptr<Recorder>> receivers;
    for (int i = 0; i < kReceivers; ++i) {
        if (foreign && i % 5 == 0)
            infos.push_back(std::make_unique<CountingInfo>());
        else if (i % 2)
            infos.push_back(std::make_unique<SDimStyleInfo>());
        else
            infos.push_back(std::make_unique<SColorInfo>());
        receivers.push_back(std::make_unique<Recorder>(bus(), infos.back().get()));
    }
    select(ids); // scans too
    if (changed) {
        bus().enableUpdateUI(false);
        drawing().setCelweight(ZvDb::kLnWt050);
        bus().enableUpdateUI(true);
    }
    const std::uint64_t before = drawing().openingsCount();
    bus().layoutSwitched(L"");
    QCOMPARE(drawing().openingsCount() - before, std::uint64_t(scans * kEntities));
    for (const auto &receiver : receivers)
        QCOMPARE(receiver->statuses.back(), int(kInfoUniform));
}

void TestUpdateBus::summariesAreFreshInEveryOrdinaryNotice()
{
    SColorInfo info;
    Recorder recorder(bus(), &info);
    bus().commandEnded(L"LINE");
    const ZvDbObjectId first = addLine();
    const ZvDbObjectId second = addLine();
    change<ZvDbEntity>(second, [](ZvDbEntity &entity) {
        ZvCmColor red;
        red.setColorIndex(1);
        entity.setColor(red);
    });
    recorder.statuses.clear();
    bus().commandEnded(L"LINE");
    select({first});
    bus().layoutSwitched(L"");
    select({first, second});
    bus().sysVarChanged(L"CECOLOR", true);
    QCOMPARE(recorder.statuses, (std::vector<int> {kInfoNoSelection, kInfoUniform, kInfoUniform, kInfoMixed, kInfoMixed}));
}

void TestUpdateBus::hostsNoticesLeaveTheSummariesAlone_data()
{
    QTest::addColumn<quint64>("kind");
    QTest::addColumn<int>("status");
    QTest::newRow("first") << quint64(kNoticeHostFirst) << int(kInfoNoDocument);
    QTest::newRow("second") << quint64(kNoticeHostSecond) << int(kInfoNoDocument);
    QTest::newRow("an ordinary kind") << quint64(kNoticeLayoutSwitched) << int(kInfoNoSelection);
    QTest::newRow("a kind of nobody's") << quint64(4096) << int(kInfoNoSelection);
}

void TestUpdateBus::hostsNoticesLeaveTheSummariesAlone()
{
    QFETCH(quint64, kind);
    QFETCH(int, status);
    CountingInfo info;
    Recorder recorder(bus(), &info);
    Recorder another(bus());
    bus().notifyUpdateUI(noticeOfKind(kind));
    QCOMPARE(recorder.statuses, std::vector<int> {status});
    QCOMPARE(another.kinds(), Kinds {kind});
    QCOMPARE(info.resets, status == kInfoNoDocument ? 0 : 1);
}

void TestUpdateBus::summariesStayWithoutADocument()
{
    SColorInfo color;
    CountingInfo counting;
    Recorder recorder(bus(), &color);
    Recorder another(bus(), &counting);
    bus().commandEnded(L"LINE");
    QCOMPARE(color.status, int(kInfoNoSelection));
    const int resets = counting.resets;
    zvDocManagerPtr()->closeDocument(document());
    bus().commandEnded(L"LINE");
    QCOMPARE(color.status, int(kInfoNoSelection));
    QCOMPARE(counting.resets, resets);
}

void TestUpdateBus::receiverWithoutSummaryAddsNone()
{
    select({addLine()});
    CountingInfo info;
    Recorder without(bus());
    bus().commandEnded(L"LINE");
    QCOMPARE(without.notices.size(), std::size_t(1));
    QCOMPARE(info.resets, 0);
    Recorder with(bus(), &info);
    bus().commandEnded(L"LINE");
    QCOMPARE(info.resets, 1);
    QCOMPARE(info.merges, 1);
}

void TestUpdateBus::summaryIsResetOnceANotice()
{
    select({addLine(), addLine(), addLine()});
    CountingInfo info;
    Recorder first(bus(), &info);
    bus().pickfirstModified();
    QCOMPARE(info.resets, 1);
    QCOMPARE(info.merges, 2);
}

void TestUpdateBus::sharedSummaryIsKeptOnce()
{
    CountingInfo info;
    Recorder first(bus(), &info);
    Recorder second(bus(), &info);
    bus().pickfirstModified();
    QCOMPARE(info.resets, 1);
}

void TestUpdateBus::sharedSummaryGoesWithTheFirstThatLeaves()
{
    CountingInfo info;
    Recorder stays(bus(), &info);
    {
        const Recorder leaves(bus(), &info);
    }
    bus().pickfirstModified();
    QCOMPARE(stays.notices.size(), std::size_t(1));
    QCOMPARE(info.resets, 0);
}

void TestUpdateBus::leavingKeepsTheOrderOfTheOtherSummaries()
{
    QStringList calls;
    CalledInfo a(QStringLiteral("a"), calls);
    CalledInfo b(QStringLiteral("b"), calls);
    CalledInfo c(QStringLiteral("c"), calls);
    CalledInfo d(QStringLiteral("d"), calls);
    Recorder first(bus(), &a);
    auto second = std::make_unique<Recorder>(bus(), &b);
    Recorder third(bus(), &c);
    Recorder fourth(bus(), &d);
    second.reset();
    bus().commandEnded(L"LINE");
    QCOMPARE(calls, QStringLiteral("reset a,reset c,reset d").split(QLatin1Char(',')));
}

void TestUpdateBus::joiningAgainBringsASummaryThatWasMissing()
{
    CountingInfo info;
    Recorder recorder(bus());
    recorder.pickFirstInfo = &info;
    bus().commandEnded(L"LINE");
    QCOMPARE(info.resets, 0);
    bus().addUpdateUIReceiver(&recorder);
    bus().commandEnded(L"LINE");
    QCOMPARE(info.resets, 1);
    QCOMPARE(recorder.notices.size(), std::size_t(2)); // it is on the bus once
}

void TestUpdateBus::scanOpensEachEntityOnceForAllSummaries_data()
{
    QTest::addColumn<QString>("entities");
    QTest::addColumn<int>("known");
    QTest::addColumn<int>("foreign");
    QTest::addColumn<int>("foreignMixedAfter"); // passes, 0 for never
    const char *const kinds[] = {"alike", "of many properties", "of many classes"};
    for (const char *kind : kinds) {
        const QString entities = QString::fromLatin1(kind);
        const auto row = [&](const char *summaries) -> QTestData & {
            return QTest::newRow(qPrintable(entities + QStringLiteral(", ") + QLatin1String(summaries))) << entities;
        };
        row("the library's summaries alone") << 10 << 0 << 0;
        row("foreign summaries alone") << 0 << 2 << 0;
        row("both") << 10 << 2 << 0;
        row("both, the foreign ones mixed early") << 10 << 2 << 3;
        row("one of each") << 1 << 1 << 0;
    }
}

void TestUpdateBus::scanOpensEachEntityOnceForAllSummaries()
{
    QFETCH(QString, entities);
    QFETCH(int, known);
    QFETCH(int, foreign);
    QFETCH(int, foreignMixedAfter);
    constexpr int kEntities = 25;
    const ZvDbObjectId style = addDimStyle(L"Fine");
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < kEntities; ++i) {
        if (entities == QLatin1String("of many classes") && i % 2 == 1) {
            auto *dimension = new ZvDbDimension;
            dimension->setDimensionStyle(style);
            ids.push_back(add(dimension));
            continue;
        }
        ids.push_back(addLine());
        if (entities == QLatin1String("of many properties")) {
            change<ZvDbEntity>(ids.back(), [i](ZvDbEntity &entity) {
                entity.setLinetypeScale(1.0 + i); // no summary's
                entity.setColor(colorOfIndex(1 + i % 2));
            });
        }
    }
    select(ids);
    CountingInfo own[2];
    SLayerInfo layer;
    SColorInfo color;
    SLineTypeInfo lineType;
    SLineWeightInfo lineWeight;
    SMaterialInfo material;
    SPlotStyleInfo plotStyle;
    STableStyleInfo tableStyle;
    SDimStyleInfo dimStyle;
    STextStyleInfo textStyle;
    SMleaderStyleInfo mleaderStyle;
    SPickFirstInfo *const infos[] = {&layer,     &color,      &lineType, &lineWeight, &material,
                                     &plotStyle, &tableStyle, &dimStyle, &textStyle,  &mleaderStyle};
    std::vector<std::unique_ptr<Recorder>> recorders;
    for (int i = 0; i < known; ++i)
        recorders.push_back(std::make_unique<Recorder>(bus(), infos[i]));
    for (int i = 0; i < foreign; ++i) {
        own[i].mixedAfter = foreignMixedAfter;
        recorders.insert(recorders.begin() + i, std::make_unique<Recorder>(bus(), &own[i]));
    }
    const std::uint64_t before = drawing().openingsCount();
    bus().layoutSwitched(L"");
    const std::uint64_t opened = drawing().openingsCount() - before;
    QVERIFY2(opened <= kEntities, qPrintable(QString::number(opened)));
    const int passes = (kEntities + 1) / 2;
    if (foreign)
        QCOMPARE(own[foreign - 1].merges, foreignMixedAfter ? foreignMixedAfter : passes);
    if (foreign && !foreignMixedAfter)
        QCOMPARE(opened, std::uint64_t(kEntities));
    if (known)
        QCOMPARE(layer.status, int(kInfoUniform));
    if (known > 1) {
        QCOMPARE(color.status, int(entities == QLatin1String("of many properties") ? kInfoMixed : kInfoUniform));
        QCOMPARE(tableStyle.status, int(kInfoMixed));
    }
}

void TestUpdateBus::foreignSummaryBesideUnchangedOnesOpensEachEntityOnce()
{
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 25; ++i)
        ids.push_back(addLine());
    SColorInfo color;
    CountingInfo own;
    Recorder known(bus(), &color);
    select(ids); // the library's summary is at hand from here
    Recorder foreign(bus(), &own);
    const std::uint64_t before = drawing().openingsCount();
    bus().layoutSwitched(L"");
    QCOMPARE(drawing().openingsCount() - before, std::uint64_t(25));
    QCOMPARE(own.merges, 13);
    QCOMPARE(color.status, int(kInfoUniform));
}

// ---- receivers

void TestUpdateBus::receiversAreToldInTheOrderOfJoining()
{
    QStringList order;
    Recorder first(bus());
    Recorder second(bus());
    Recorder third(bus());
    first.react = [&](const CZvGlobalUIReactorHelp &) { order << QStringLiteral("first"); };
    second.react = [&](const CZvGlobalUIReactorHelp &) { order << QStringLiteral("second"); };
    third.react = [&](const CZvGlobalUIReactorHelp &) { order << QStringLiteral("third"); };
    bus().commandEnded(L"LINE");
    QCOMPARE(order, (QStringList {QStringLiteral("first"), QStringLiteral("second"), QStringLiteral("third")}));
}

void TestUpdateBus::joiningTwiceKeepsOne()
{
    CountingInfo info;
    Recorder recorder(bus(), &info);
    bus().addUpdateUIReceiver(&recorder);
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.notices.size(), std::size_t(1));
    QCOMPARE(info.resets, 1);
}

void TestUpdateBus::leavingKeepsTheOrderOfTheOthers()
{
    QStringList order;
    Recorder first(bus());
    auto second = std::make_unique<Recorder>(bus());
    Recorder third(bus());
    Recorder fourth(bus());
    first.react = [&](const CZvGlobalUIReactorHelp &) { order << QStringLiteral("first"); };
    third.react = [&](const CZvGlobalUIReactorHelp &) { order << QStringLiteral("third"); };
    fourth.react = [&](const CZvGlobalUIReactorHelp &) { order << QStringLiteral("fourth"); };
    second.reset();
    bus().commandEnded(L"LINE");
    QCOMPARE(order, (QStringList {QStringLiteral("first"), QStringLiteral("third"), QStringLiteral("fourth")}));
}

void TestUpdateBus::leavingAbsentIsNothing()
{
    CountingInfo info;
    Recorder recorder(bus(), &info);
    bus().removeUpdateUIReceiver(&recorder);
    bus().removeUpdateUIReceiver(&recorder);
    bus().commandEnded(L"LINE");
    QVERIFY(recorder.notices.empty());
    QCOMPARE(info.resets, 0);
}

void TestUpdateBus::joiningInADeliveryTakesPartInIt()
{
    Recorder first(bus());
    std::unique_ptr<Recorder> late;
    first.react = [&](const CZvGlobalUIReactorHelp &) {
        if (!late)
            late = std::make_unique<Recorder>(bus());
    };
    bus().commandEnded(L"LINE");
    QCOMPARE(late->notices.size(), std::size_t(1));
}

void TestUpdateBus::leavingInADeliveryMakesTheNextOneMissIt()
{
    Recorder first(bus());
    Recorder second(bus());
    Recorder third(bus());
    first.react = [&](const CZvGlobalUIReactorHelp &) { bus().removeUpdateUIReceiver(&first); };
    bus().commandEnded(L"LINE");
    QCOMPARE(first.notices.size(), std::size_t(1));
    QCOMPARE(second.notices.size(), std::size_t(0));
    QCOMPARE(third.notices.size(), std::size_t(1));
    bus().commandEnded(L"LINE");
    QCOMPARE(first.notices.size(), std::size_t(1));
    QCOMPARE(second.notices.size(), std::size_t(1));
    QCOMPARE(third.notices.size(), std::size_t(2));
}

void TestUpdateBus::receiverMayDieInItsOwnNotice()
{
    SColorInfo shared;
    auto *mortal = new Recorder(bus(), &shared);
    Recorder next(bus());
    Recorder last(bus());
    mortal->react = [mortal](const CZvGlobalUIReactorHelp &) {
        const auto alive = mortal->react; // the callable outlives its owner
        delete mortal;
    };
    bus().commandEnded(L"LINE");
    bus().commandEnded(L"LINE");
    QCOMPARE(next.notices.size(), std::size_t(1));
    QCOMPARE(last.notices.size(), std::size_t(2));
}

void TestUpdateBus::noticeMayBeRaisedInsideANotice()
{
    Recorder first(bus());
    Recorder second(bus());
    first.react = [this](const CZvGlobalUIReactorHelp &notice) {
        if (notice.kind == kNoticeCommandEnded)
            bus().notifyUpdateUI(noticeOfKind(kNoticeHostFirst));
    };
    bus().commandEnded(L"LINE");
    QCOMPARE(first.kinds(), (Kinds {kNoticeCommandEnded, kNoticeHostFirst}));
    QCOMPARE(second.kinds(), (Kinds {kNoticeHostFirst, kNoticeCommandEnded}));
}

void TestUpdateBus::documentMayCloseInsideANotice_data()
{
    QTest::addColumn<int>("event");
    QTest::addColumn<bool>("isLast");
    const char *const events[]
        = {"document current", "layout", "variable", "appended", "modified", "erased", "selection", "command ended"};
    for (int event = 0; event <= kEnded; ++event) {
        // The object of a notice is open; its drawing must not go.
        if (event == kAppended || event == kErased)
            continue;
        QTest::newRow(qPrintable(QStringLiteral("the last one, %1").arg(QLatin1String(events[event]))))
            << event << true;
        QTest::newRow(qPrintable(QStringLiteral("one of two, %1").arg(QLatin1String(events[event])))) << event << false;
    }
}

void TestUpdateBus::documentMayCloseInsideANotice()
{
    QFETCH(int, event);
    QFETCH(bool, isLast);
    if (!isLast)
        openAnother();
    SColorInfo info;
    Recorder first(bus(), &info);
    Recorder second(bus(), &info);
    const ZvDbObjectId line = addLine();
    select({line});
    bool isClosed = false;
    std::uint64_t outer = 0;
    first.react = [&](const CZvGlobalUIReactorHelp &notice) {
        if (isClosed)
            return;
        isClosed = true;
        outer = notice.kind;
        zvDocManagerPtr()->closeDocument(document());
    };
    raise(Event(event), line);
    QVERIFY(isClosed);
    QCOMPARE(second.kinds().back(), outer);
    QCOMPARE(zvDocManagerPtr()->documentCount(), isLast ? 0 : 1);
    const std::size_t notices = second.notices.size();
    bus().commandEnded(L"LINE");
    QCOMPARE(second.notices.size(), isLast ? notices : notices + 1);
}

void TestUpdateBus::receiversExceptionLeavesTheBusUsable()
{
    struct Refusal { };
    const ZvDbObjectId line = addLine();
    Recorder recorder(bus());
    recorder.react = [](const CZvGlobalUIReactorHelp &) { throw Refusal(); };
    bus().enableUpdateUI(false);
    QVERIFY_EXCEPTION_THROWN(bus().commandEnded(L"LINE"), Refusal);
    recorder.react = nullptr;
    recorder.notices.clear();
    bus().layoutSwitched(L"");
    QVERIFY(recorder.notices.empty()); // still off
    bus().enableUpdateUI(true);

    recorder.react = [](const CZvGlobalUIReactorHelp &) { throw Refusal(); };
    QVERIFY_EXCEPTION_THROWN(select({line}), Refusal);
    recorder.react = nullptr;
    recorder.notices.clear();
    drawing().setCelweight(ZvDb::kLnWt050); // no delivery is thought to go on
    QCOMPARE(recorder.kinds(), Kinds {kNoticeSysVar});
}

void TestUpdateBus::receiverIsFoundFromAnObject()
{
    FollowingBox box;
    QObject *object = &box;
    QCOMPARE(qobject_cast<CZvQtControlHelp *>(object), static_cast<CZvQtControlHelp *>(&box));
    QCOMPARE(object->qt_metacast("CZvQtControlHelp"), static_cast<void *>(static_cast<CZvQtControlHelp *>(&box)));
    QVERIFY(!box.hooked);
    QVERIFY(!box.pickFirstInfo);
}

// ---- joining the kernel

void TestUpdateBus::busLeavesTheKernelWhenItDies()
{
    {
        ZvMonitorGlobalUISystemVarReactor shortLived;
        openAnother();
    }
    // Neither editor nor documents nor the layout manager may tell the dead one.
    bus().enableUpdateUI(true);
    runMacro(L"_.LINE 0,0 1,1 ;");
    drawing().setTilemode(false);
    openAnother();
    QCOMPARE(zvDocManagerPtr()->documentCount(), 3);
}

void TestUpdateBus::unloadedBusHearsOnlyTheDrawingsItJoined()
{
    Recorder recorder(bus());
    bus().unloadReactor();
    drawing().setCelweight(ZvDb::kLnWt050);
    select({addLine()});
    drawing().setTilemode(false);
    zvDocManagerPtr()->newDocument();
    for (const std::uint64_t kind : recorder.kinds())
        QCOMPARE(kind, std::uint64_t(kNoticeObject)); // drawings stay joined
    QVERIFY(!recorder.notices.empty());
    recorder.notices.clear();
    addLine(); // of a drawing that was made meanwhile
    QVERIFY(recorder.notices.empty());

    bus().loadReactor();
    bus().loadReactor(); // once more is harmless
    drawing().setCelweight(ZvDb::kLnWt050);
    QCOMPARE(recorder.kinds(), Kinds{kNoticeSysVar});
}

void TestUpdateBus::busWorksWithoutEditorAndManagers()
{
    ZvRxDictionary &registry = *zvrxSysRegistry();
    ZvRxObject *editor = registry.at(L"ZvEditor");
    registry.remove(L"ZvEditor");
    CHcSystem::instance()->setApplicationAvailable(false);
    CHcSystem::instance()->setDocManagerAvailable(false);
    {
        ZvMonitorGlobalUISystemVarReactor unhooked;
        CHcSystem::setInstanceAvailable(false);
    }
    CHcSystem::setInstanceAvailable(true);
    CHcSystem::instance()->setDocManagerAvailable(true);
    CHcSystem::instance()->setApplicationAvailable(true);
    CHcSystem::instance()->application()->setLayoutManagerAvailable(false);
    registry.atPut(L"ZvEditor", editor);
    {
        ZvMonitorGlobalUISystemVarReactor partly;
        Recorder recorder(partly);
        runMacro(L"_.LINE 0,0 1,1 ;");
        QVERIFY(!recorder.notices.empty());
    }
    CHcSystem::instance()->application()->setLayoutManagerAvailable(true);
}

void TestUpdateBus::busSurvivesAnEditorOfAnotherClass()
{
    ZvRxDictionary &registry = *zvrxSysRegistry();
    ZvRxObject *editor = registry.at(L"ZvEditor");
    registry.atPut(L"ZvEditor", ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvRxDictionary>));
    {
        ZvMonitorGlobalUISystemVarReactor unhooked;
    }
    registry.atPut(L"ZvEditor", editor);
}

void TestUpdateBus::documentOpenBeforeTheBusIsNotHeardOf()
{
    ZvMonitorGlobalUISystemVarReactor late;
    Recorder recorder(late);
    addLine();
    QVERIFY(recorder.notices.empty());
    zvDocManagerPtr()->newDocument();
    late.enableUpdateUI(true);
    recorder.notices.clear();
    addLine();
    QCOMPARE(recorder.kinds(), Kinds {kNoticeObject});
}

void TestUpdateBus::newDocumentJoinsTheCurrentDrawing()
{
    ZvDbDatabase *first = &drawing();
    openAnother();
    ZvMonitorGlobalUISystemVarReactor late;
    Recorder recorder(late);
    zvdbSetCurDatabase(first);
    late.documentCreated(document()); // whose drawing is not the current one
    zvdbSetCurDatabase(document()->database());
    late.enableUpdateUI(true);
    addLine();
    QVERIFY(recorder.notices.empty());
    ZvDbObjectId line;
    QCOMPARE(first->appendEntity(new ZvDbLine({0, 0, 0}, {1, 1, 0}), first->modelSpaceId(), line), Zv::eOk);
    QCOMPARE(recorder.kinds(), Kinds{kNoticeObject});
    QCOMPARE(recorder.notices[0].database, first);
}

void TestUpdateBus::documentsWithoutACurrentDrawingJoinAndLeaveNothing()
{
    ZvMonitorGlobalUISystemVarReactor late;
    Recorder recorder(late);
    zvdbSetCurDatabase(nullptr);
    late.documentCreated(document());
    zvdbSetCurDatabase(document()->database());
    late.enableUpdateUI(true);
    addLine();
    QVERIFY(recorder.notices.empty());

    late.documentCreated(document());
    zvdbSetCurDatabase(nullptr);
    late.documentToBeDestroyed(document());
    zvdbSetCurDatabase(document()->database());
    late.enableUpdateUI(true);
    addLine();
    QCOMPARE(recorder.kinds(), Kinds{kNoticeObject}); // still joined
}

void TestUpdateBus::documentDestroyedWhileAnotherIsCurrentIsHarmless()
{
    ZvApDocument *first = document();
    openAnother();
    Recorder recorder(bus());
    zvDocManagerPtr()->closeDocument(first);
    // The current drawing is the one that was let go of.
    recorder.notices.clear();
    addLine();
    QVERIFY(recorder.notices.empty());
    bus().commandEnded(L"LINE");
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});
}

// ---- the whole way

void TestUpdateBus::commandThatChangesTheColorIsToldOnceAtItsEnd()
{
    Recorder recorder(bus());
    QVERIFY(runMacro(L"_.SETVAR CECOLOR 1"));
    QCOMPARE(drawing().cecolor().colorIndex(), std::uint16_t(1));
    QCOMPARE(recorder.kinds(), Kinds {kNoticeCommandEnded});
    QCOMPARE(recorder.notices[0].name, ZvString(L"SETVAR"));
}

void TestUpdateBus::undoIsToldOnceAtItsEnd()
{
    QVERIFY(runMacro(L"_.LINE 0,0 1,1 ;"));
    const int entities = drawing().entityCount();
    Recorder recorder(bus());
    QVERIFY(runMacro(L"_.UNDO 1"));
    QCOMPARE(drawing().entityCount(), entities - 1);
    const Kinds kinds = recorder.kinds();
    QCOMPARE(std::count(kinds.begin(), kinds.end(), std::uint64_t(kNoticeCommandEnded)), 1);
    QCOMPARE(std::count(kinds.begin(), kinds.end(), std::uint64_t(kNoticeObject)), 0);
}

namespace {

const QString kRed = QStringLiteral("红");
const QString kByLayer = QStringLiteral("ByLayer");

} // namespace

void TestUpdateBus::controlShowsACommandsChangeAtItsEnd()
{
    ZvColorComboBox combo(true, nullptr);
    bus().commandEnded(L"LINE");
    QCOMPARE(combo.currentText(), kByLayer);
    const QSignalSpy changed(&combo, qOverload<int>(&QComboBox::currentIndexChanged));
    QString meanwhile;
    const WorkCommand command([&] {
        drawing().setCecolor(colorOfIndex(1));
        meanwhile = combo.currentText();
    });
    QVERIFY(runMacro(L"TESTWORK"));
    QCOMPARE(meanwhile, kByLayer);
    QCOMPARE(combo.currentText(), kRed);
    QCOMPARE(changed.count(), 0); // showing never writes
    QVERIFY(!zvedQueueHasInput());
}

void TestUpdateBus::undoAfterAPickBringsDrawingAndControlsBack()
{
    ZvColorComboBox picked(true, nullptr);
    ZvColorComboBox other(true, nullptr);
    const ZvDbObjectId first = addLine();
    const ZvDbObjectId second = addLine();
    const auto isRed = [](ZvDbObjectId id) {
        return read<ZvDbEntity>(id, [](const ZvDbEntity &entity) { return entity.color() == colorOfIndex(1); });
    };
    // the current colour
    picked.setCurrentIndex(picked.findText(kRed));
    QVERIFY(runCommands());
    QCOMPARE(drawing().cecolor(), colorOfIndex(1));
    QCOMPARE(other.currentText(), kRed);
    QVERIFY(runMacro(L"_.UNDO 1"));
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    QCOMPARE(picked.currentText(), kByLayer);
    QCOMPARE(other.currentText(), kByLayer);
    // the selection
    select({first, second});
    picked.setCurrentIndex(picked.findText(kRed));
    QVERIFY(runCommands());
    QVERIFY(isRed(first) && isRed(second));
    QCOMPARE(other.currentText(), kRed);
    QVERIFY(runMacro(L"_.UNDO 1"));
    QVERIFY(!isRed(first) && !isRed(second));
    select({first, second});
    QCOMPARE(picked.currentText(), kByLayer);
    QCOMPARE(other.currentText(), kByLayer);
}

void TestUpdateBus::pickInARunningCommandFallsIntoIt()
{
    ZvColorComboBox picked(true, nullptr);
    ZvColorComboBox other(true, nullptr);
    const int entities = drawing().entityCount();
    Recorder recorder(bus());
    const WorkCommand command([&] {
        addLine();
        picked.setCurrentIndex(picked.findText(kRed));
        QCOMPARE(drawing().cecolor(), colorOfIndex(1)); // at once
        QVERIFY(!zvedQueueHasInput()); // no command of its own
    });
    QVERIFY(runMacro(L"TESTWORK"));
    QCOMPARE(recorder.kinds(), Kinds{kNoticeCommandEnded});
    QCOMPARE(recorder.notices[0].name, ZvString(L"TESTWORK"));
    QCOMPARE(other.currentText(), kRed);
    QVERIFY(runMacro(L"_.UNDO 1"));
    QCOMPARE(drawing().entityCount(), entities); // one step
    QCOMPARE(drawing().cecolor(), ZvCmColor());
    QCOMPARE(picked.currentText(), kByLayer);
    QCOMPARE(other.currentText(), kByLayer);
}

ZEVA_TEST_MAIN(TestUpdateBus)
#include "tst_updatebus.moc"
