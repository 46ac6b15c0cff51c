// SPDX-License-Identifier: MIT
#include "base/zvregistry.h"
#include "busmonitor.h"
#include "db/zvdbrecords.h"
#include "textforms.h"
#include "updatebushost.h"
#include "workbenchtest.h"
#include "zevatest.h"
#include "zvcolorcombobox.h"
#include "zvmonitorglobaluisystemvarreactor.h"
#include "zvqtcontrolhelp.h"
#include "zvqtupdatebusservice.h"

#include <QAction>
#include <QClipboard>
#include <QDockWidget>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPushButton>
#include <QSignalSpy>
#include <QSortFilterProxyModel>
#include <QTableView>

#include <functional>
#include <memory>

namespace {

ZvQtUpdateBusService *service()
{
    return static_cast<ZvQtUpdateBusService *>(zv_arbitDict_getservice(ZvString(wchar_t(14))));
}

/// A control of an application: it reaches the bus through the service, as the library's own do.
class Control : public QPushButton, public CZvQtControlHelp
{
public:
    explicit Control(const char *name) : CZvQtControlHelp(true)
    {
        setObjectName(QLatin1String(name));
        service()->addReceiver(this);
    }
    ~Control() override
    {
        if (service())
            service()->removeReceiver(this);
    }
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override
    {
        kinds << int(notice.kind);
        if (react)
            react(notice);
    }
    QList<int> kinds;
    std::function<void(const CZvGlobalUIReactorHelp &)> react;
};

CZvGlobalUIReactorHelp hostNotice(std::uint64_t kind)
{
    CZvGlobalUIReactorHelp notice;
    notice.kind = kind;
    return notice;
}

} // namespace

/// The workbench as host of the update bus, and the panel that shows what the bus does.
class tst_workbench_busmonitor : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void theBusIsAService();
    void theServiceEndsWithTheWorkbench();
    void aNewDrawingSwitchesTheBusOn();
    void anOpenedDrawingSwitchesTheBusOn();
    void withoutADrawingHookedControlsAreBlank();
    void aControlThatJoinsWithoutADrawingIsBlank();
    void withoutMonitorNothingIsRecorded();
    void listsEachKind_data();
    void listsEachKind();
    void tellsTheObject();
    void tellsWhoShowsSomethingElse();
    void aReceiverThatLeavesDuringTheDeliveryIsPassedOver();
    void anInnerDeliveryStandsBelow();
    void aNoticeGivenToTheReactorIsListed();
    void aNoticeGivenToTheReactorInADeliveryStandsBelow();
    void aNoticeGivenToTheReactorEndsThoughReceiversLeave_data();
    void aNoticeGivenToTheReactorEndsThoughReceiversLeave();
    void aControlThatJoinsIsFilled_data();
    void aControlThatJoinsIsFilled();
    void aNoticeGivenToTheReactorEndsThoughAReceiverThrows();
    void aReceiverThatJoinsInADeliveryTakesPartInIt();
    void countsTheOpeningsOfTheScan();
    void countsWhatIsDropped();
    void pauseAndClear();
    void filterByAnyColumn();
    void copyAsText();
    void theOldestGo();

private:
    MainWindow &window() { return m_session->window(); }
    BusMonitor &monitor() { return *window().findChild<BusMonitor *>(); }
    BusNoticeModel &notices() { return monitor().notices(); }
    UpdateBusHost &bus() { return *m_bus; }
    const BusDelivery &last() { return notices().at(notices().rowCount() - 1); }
    QAction *action(const char *name) { return monitor().findChild<QAction *>(QLatin1String(name)); }
    void select(const std::vector<ZvDbObjectId> &ids)
    {
        m_session->document()->editingContext()->selectionHolder()->set(ids);
    }
    void waitForIdle() { QTRY_VERIFY(!window().host()->isBusy() && !zvedQueueHasInput()); }
    void open();

    std::unique_ptr<WorkbenchSession> m_session;
    UpdateBusHost *m_bus = nullptr;
};

void tst_workbench_busmonitor::init()
{
    ZevaTest::init();
    m_session = std::make_unique<WorkbenchSession>();
    QVERIFY(m_session->isExposed());
    m_bus = &m_session->bus();
    m_session->newDrawing();
}

void tst_workbench_busmonitor::cleanup()
{
    m_session.reset();
    QCOMPARE(zvdbOpenObjectCount(), 0);
    ZevaTest::cleanup();
}

void tst_workbench_busmonitor::open()
{
    window().findChild<QDockWidget *>(QStringLiteral("busMonitorDock"))->show();
    QTRY_VERIFY(monitor().isVisible());
}

void tst_workbench_busmonitor::theBusIsAService()
{
    QVERIFY(service());
    QVERIFY(service()->queryX(ZvRxObject::desc()));
    Control control("one");
    select({m_session->addLine({0, 0, 0}, {10, 0, 0})});
    QVERIFY(control.kinds.contains(kNoticePickFirst));
    control.kinds.clear();
    service()->removeReceiver(&control);
    select({});
    QVERIFY(control.kinds.isEmpty());
}

void tst_workbench_busmonitor::theServiceEndsWithTheWorkbench()
{
    auto control = std::make_unique<Control>("survivor");
    control.reset();
    m_session.reset();
    QVERIFY(!service());
}

void tst_workbench_busmonitor::aNewDrawingSwitchesTheBusOn()
{
    Control control("one");
    zvDocManagerPtr()->newDocument();
    QVERIFY(control.kinds.contains(kNoticeDocumentCurrent));
    control.kinds.clear();
    m_session->addLine({0, 0, 0}, {10, 0, 0});
    QVERIFY(control.kinds.contains(kNoticeObject));
}

void tst_workbench_busmonitor::anOpenedDrawingSwitchesTheBusOn()
{
    Control control("one");
    QVERIFY(window().host()->openDocument(QStringLiteral(ZEVA_SAMPLES_DIR "/part.dxf")));
    control.kinds.clear();
    select({m_session->addLine({0, 0, 0}, {10, 0, 0})});
    QVERIFY(control.kinds.contains(kNoticePickFirst));
}

void tst_workbench_busmonitor::withoutADrawingHookedControlsAreBlank()
{
    // Anywhere: here in windows of their own.
    ZvColorComboBox combo(true, nullptr);
    ZvColorComboBox unhooked(false, nullptr);
    Control button("button");
    Control off("off");
    off.setEnabled(false);
    QWidget panel;
    auto *inner = new ZvColorComboBox(true, &panel);
    panel.setEnabled(false); // for reasons of its own
    select({m_session->addLine({0, 0, 0}, {10, 0, 0})});
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
    const QSignalSpy changed(&combo, qOverload<int>(&QComboBox::currentIndexChanged));

    m_session->newDrawing();
    zvDocManagerPtr()->closeDocument(m_session->document());
    QVERIFY(combo.isEnabled()); // one is left
    zvDocManagerPtr()->closeDocument(m_session->document());
    QVERIFY(!m_session->document());
    QVERIFY(!combo.isEnabled());
    QCOMPARE(combo.currentIndex(), -1);
    QVERIFY(!inner->isEnabledTo(&panel));
    QCOMPARE(inner->currentIndex(), -1);
    QVERIFY(!button.isEnabled());
    QVERIFY(unhooked.isEnabled());
    QCOMPARE(changed.count(), 0);
    QVERIFY(!zvedQueueHasInput());

    m_session->newDrawing();
    QVERIFY(combo.isEnabled());
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
    QVERIFY(inner->isEnabledTo(&panel));
    QVERIFY(button.isEnabled());
    QVERIFY(!off.isEnabled());
}

void tst_workbench_busmonitor::aControlThatJoinsWithoutADrawingIsBlank()
{
    zvDocManagerPtr()->closeDocument(m_session->document());
    ZvColorComboBox combo(true, nullptr);
    QTRY_VERIFY(!combo.isEnabled());
    QCOMPARE(combo.currentIndex(), -1);
    m_session->newDrawing();
    QVERIFY(combo.isEnabled());
    QCOMPARE(combo.currentText(), QStringLiteral("ByLayer"));
}

void tst_workbench_busmonitor::withoutMonitorNothingIsRecorded()
{
    QVERIFY(!bus().isRecording());
    QSignalSpy delivered(&bus(), &UpdateBusHost::delivered);
    m_session->addLine({0, 0, 0}, {10, 0, 0});
    QCOMPARE(delivered.count(), 0);
    open();
    QVERIFY(bus().isRecording());
    m_session->addLine({0, 0, 0}, {10, 0, 0});
    QCOMPARE(delivered.count(), 1);
    window().findChild<QDockWidget *>(QStringLiteral("busMonitorDock"))->hide();
    QVERIFY(!bus().isRecording());
}

void tst_workbench_busmonitor::listsEachKind_data()
{
    QTest::addColumn<quint64>("kind");
    QTest::addColumn<QString>("kindName");
    QTest::addColumn<QString>("name");
    QTest::newRow("document") << quint64(kNoticeDocumentCurrent) << "document current"
                              << "";
    QTest::newRow("layout") << quint64(kNoticeLayoutSwitched) << "layout switched"
                            << "";
    QTest::newRow("variable") << quint64(kNoticeSysVar) << "system variable"
                              << "CECOLOR";
    QTest::newRow("object") << quint64(kNoticeObject) << "object"
                            << "";
    QTest::newRow("selection") << quint64(kNoticePickFirst) << "selection"
                               << "";
    QTest::newRow("host, first") << quint64(kNoticeHostFirst) << "host, first"
                                 << "";
    QTest::newRow("host, second") << quint64(kNoticeHostSecond) << "host, second"
                                  << "";
    QTest::newRow("command") << quint64(kNoticeCommandEnded) << "command ended"
                             << "REGEN";
}

void tst_workbench_busmonitor::listsEachKind()
{
    QFETCH(quint64, kind);
    QFETCH(QString, kindName);
    QFETCH(QString, name);
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    ZvApDocument *first = m_session->document();
    if (kind == kNoticeDocumentCurrent)
        m_session->newDrawing();
    open();
    switch (kind) {
    case kNoticeDocumentCurrent:
        zvDocManagerPtr()->setCurrentDocument(first);
        break;
    case kNoticeLayoutSwitched: {
        ZvArray<ZvString> layouts;
        m_session->database().layoutNames(layouts);
        m_session->database().setCurrentLayout(layouts[1]);
        break;
    }
    case kNoticeSysVar: {
        ZvCmColor red;
        red.setColorIndex(1);
        m_session->database().setCecolor(red);
        break;
    }
    case kNoticeObject:
        m_session->addLine({0, 0, 0}, {20, 0, 0});
        break;
    case kNoticePickFirst:
        select({line});
        break;
    case kNoticeCommandEnded:
        zvedCommandLine("_.REGEN");
        waitForIdle();
        break;
    default:
        bus().notify(hostNotice(kind));
        break;
    }
    int row = 0;
    while (row < notices().rowCount() && notices().at(row).kind != kind)
        ++row;
    QVERIFY(row < notices().rowCount());
    QCOMPARE(notices().index(row, BusNoticeModel::kKind).data().toString(), kindName);
    QCOMPARE(notices().index(row, BusNoticeModel::kName).data().toString(), name);
    QVERIFY(notices().at(row).microseconds > 0.0);
}

void tst_workbench_busmonitor::tellsTheObject()
{
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    select({line});
    open();
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForWrite);
        ZvCmColor red;
        red.setColorIndex(1);
        entity->setColor(red);
    }
    QCOMPARE(notices().rowCount(), 1);
    QCOMPARE(last().objectClass, QStringLiteral("ZvDbLine"));
    QCOMPARE(last().handle, quint64(line.handle()));
    QVERIFY(last().affectsSelection);
    const QString object = notices().index(0, BusNoticeModel::kObject).data().toString();
    QCOMPARE(object, QStringLiteral("ZvDbLine %1").arg(QString::number(line.handle(), 16).toUpper()));
    QCOMPARE(notices().index(0, BusNoticeModel::kSelection).data().toString(), QStringLiteral("yes"));
}

void tst_workbench_busmonitor::tellsWhoShowsSomethingElse()
{
    Control text("text");
    Control state("state");
    Control same("same");
    text.setText(QStringLiteral("before"));
    text.react = [&text](const CZvGlobalUIReactorHelp &) { text.setText(QStringLiteral("after")); };
    state.setText(QStringLiteral("value"));
    state.react = [&state](const CZvGlobalUIReactorHelp &) { state.setEnabled(false); };
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(last().changes.size(), 2);
    QCOMPARE(last().changes[0].receiver, QStringLiteral("text"));
    QCOMPARE(last().changes[0].before, QStringLiteral("before"));
    QCOMPARE(last().changes[0].after, QStringLiteral("after"));
    QCOMPARE(last().changes[1].receiver, QStringLiteral("state"));
    QCOMPARE(last().changes[1].after, QStringLiteral("value (disabled)"));
    QCOMPARE(notices().index(0, BusNoticeModel::kChanges).data().toString(),
             QStringLiteral("text: before \u2192 after; state: value \u2192 value (disabled)"));
    bus().notify(hostNotice(kNoticeHostFirst));
    QVERIFY(last().changes.isEmpty());
}

void tst_workbench_busmonitor::aReceiverThatLeavesDuringTheDeliveryIsPassedOver()
{
    auto leaver = std::make_unique<Control>("leaver");
    Control killer("killer");
    leaver->setText(QStringLiteral("x"));
    killer.react = [&leaver](const CZvGlobalUIReactorHelp &) { leaver.reset(); };
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    QVERIFY(!leaver);
    QVERIFY(last().changes.isEmpty());
}

void tst_workbench_busmonitor::anInnerDeliveryStandsBelow()
{
    Control outer("outer");
    outer.react = [this](const CZvGlobalUIReactorHelp &notice) {
        if (notice.kind == kNoticeHostFirst)
            bus().notify(hostNotice(kNoticeHostSecond));
    };
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), 2);
    QCOMPARE(notices().at(0).kind, std::uint64_t(kNoticeHostFirst));
    QCOMPARE(notices().at(1).kind, std::uint64_t(kNoticeHostSecond));
    QCOMPARE(notices().at(1).depth, 1);
    QVERIFY(notices().at(0).number < notices().at(1).number);
    QCOMPARE(notices().index(1, BusNoticeModel::kKind).data().toString(), QStringLiteral("  host, second"));
}

void tst_workbench_busmonitor::aNoticeGivenToTheReactorIsListed()
{
    Control text("text");
    const ZvDbObjectId line = m_session->addLine({0, 0, 0}, {10, 0, 0});
    text.react = [&text](const CZvGlobalUIReactorHelp &) { text.setText(QStringLiteral("after")); };
    open();
    CZvGlobalUIReactorHelp notice = hostNotice(kNoticeHostSecond);
    notice.name = L"PLUGIN";
    notice.affectsSelection = true;
    {
        const ZvDbObjectPointer<ZvDbEntity> entity(line, ZvDb::kForRead);
        notice.object = entity.get();
        bus().reactor().notifyUpdateUI(notice);
    }
    QCOMPARE(notices().rowCount(), 1);
    QCOMPARE(last().kind, std::uint64_t(kNoticeHostSecond));
    QCOMPARE(last().name, QStringLiteral("PLUGIN"));
    QCOMPARE(last().objectClass, QStringLiteral("ZvDbLine"));
    QCOMPARE(last().handle, quint64(line.handle()));
    QCOMPARE(last().depth, 0);
    QVERIFY(last().affectsSelection);
    QVERIFY(last().microseconds > 0.0);
    QCOMPARE(last().changes.size(), 1);
    QCOMPARE(last().changes[0].after, QStringLiteral("after"));
    QCOMPARE(notices().index(0, BusNoticeModel::kOpenings).data().toString(), QString()); // not known
    bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), 2);
    QCOMPARE(notices().index(1, BusNoticeModel::kOpenings).data().toString(), QStringLiteral("0"));
}

void tst_workbench_busmonitor::aNoticeGivenToTheReactorInADeliveryStandsBelow()
{
    Control outer("outer");
    outer.react = [this](const CZvGlobalUIReactorHelp &notice) {
        if (notice.kind == kNoticeHostFirst)
            bus().reactor().notifyUpdateUI(hostNotice(kNoticeHostSecond));
        else if (notice.kind == kNoticeHostSecond)
            bus().notify(hostNotice(4096));
    };
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), 3);
    const std::uint64_t kinds[] = {kNoticeHostFirst, kNoticeHostSecond, 4096};
    for (int row = 0; row < 3; ++row) {
        QCOMPARE(notices().at(row).kind, kinds[row]);
        QCOMPARE(notices().at(row).depth, row);
    }
}

void tst_workbench_busmonitor::aNoticeGivenToTheReactorEndsThoughReceiversLeave_data()
{
    QTest::addColumn<int>("leaving"); // of three, the last ones
    QTest::newRow("none") << 0;
    QTest::newRow("the last one itself") << 1;
    QTest::newRow("the last one and the one before") << 2;
    QTest::newRow("all") << 3;
}

void tst_workbench_busmonitor::aNoticeGivenToTheReactorEndsThoughReceiversLeave()
{
    QFETCH(int, leaving);
    std::vector<std::unique_ptr<Control>> controls;
    for (const char *name : {"first", "second", "third"})
        controls.push_back(std::make_unique<Control>(name));
    controls[2]->react = [&](const CZvGlobalUIReactorHelp &) {
        for (int i = 3 - leaving; i < 3; ++i)
            service()->removeReceiver(controls[std::size_t(i)].get());
    };
    open();
    bus().reactor().notifyUpdateUI(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), 1);
    controls[2]->react = nullptr;
    bus().reactor().notifyUpdateUI(hostNotice(kNoticeHostFirst));
    bus().notify(hostNotice(kNoticeHostSecond));
    QCOMPARE(notices().rowCount(), 3);
    QCOMPARE(last().depth, 0);
    QCOMPARE(controls[0]->kinds.size(), leaving == 3 ? 1 : 3);
    QCOMPARE(controls[2]->kinds.size(), leaving ? 1 : 3);
}

void tst_workbench_busmonitor::aControlThatJoinsIsFilled_data()
{
    QTest::addColumn<bool>("hooked");
    QTest::addColumn<bool>("stays");
    QTest::addColumn<int>("notices");
    QTest::newRow("one that follows the drawing") << true << true << 1;
    QTest::newRow("one that does not") << false << true << 0;
    QTest::newRow("one that is gone at once") << true << false << 0;
}

void tst_workbench_busmonitor::aControlThatJoinsIsFilled()
{
    QFETCH(bool, hooked);
    QFETCH(bool, stays);
    QFETCH(int, notices);
    Control other("other");
    QCoreApplication::processEvents();
    QCOMPARE(other.kinds, QList<int>{kNoticeCommandEnded});
    auto control = std::make_unique<Control>("control");
    control->hooked = hooked;
    QCOMPARE(control->kinds.size(), 0); // its constructor may not be over
    if (!stays)
        control.reset();
    QCoreApplication::processEvents();
    QCOMPARE(other.kinds.size(), 1 + notices);
    if (control)
        QCOMPARE(control->kinds.size(), notices);
}

void tst_workbench_busmonitor::aNoticeGivenToTheReactorEndsThoughAReceiverThrows()
{
    struct Refusal
    {
    };
    Control control("control");
    QCoreApplication::processEvents(); // what has joined is filled
    control.react = [](const CZvGlobalUIReactorHelp &) { throw Refusal(); };
    open();
    QVERIFY_EXCEPTION_THROWN(bus().reactor().notifyUpdateUI(hostNotice(kNoticeHostFirst)), Refusal);
    control.react = nullptr;
    QTRY_COMPARE(notices().rowCount(), 1);
    bus().notify(hostNotice(kNoticeHostSecond));
    QCOMPARE(notices().rowCount(), 2);
    QCOMPARE(last().depth, 0);
}

void tst_workbench_busmonitor::aReceiverThatJoinsInADeliveryTakesPartInIt()
{
    Control first("first");
    std::unique_ptr<Control> late;
    first.react = [&late](const CZvGlobalUIReactorHelp &) {
        if (!late)
            late = std::make_unique<Control>("late");
    };
    bus().notify(hostNotice(kNoticeHostFirst));
    QVERIFY(late);
    QCOMPARE(late->kinds, QList<int>{kNoticeHostFirst});
}

void tst_workbench_busmonitor::countsTheOpeningsOfTheScan()
{
    /// For an unknown summary the scan opens each entity.
    class OwnInfo : public ZvGlobalUIReactorHelp::SPickFirstInfo
    {
    public:
        void merge(const ZvDbEntity *, const ZvDbEntity *) override { }
        void reset() override { status = ZvGlobalUIReactorHelp::kInfoUniform; }
    };
    // The count is to be that of the one summary below.
    const QList<QWidget *> widgets = window().findChildren<QWidget *>();
    for (QWidget *widget : widgets) {
        if (auto *control = qobject_cast<CZvQtControlHelp *>(widget))
            service()->removeReceiver(control);
    }
    OwnInfo info;
    class Summing : public CZvQtControlHelp
    {
    public:
        using CZvQtControlHelp::CZvQtControlHelp;
        void acceptUpdateUI(const CZvGlobalUIReactorHelp &) override { }
    };
    Summing receiver(true, &info);
    service()->addReceiver(&receiver);
    std::vector<ZvDbObjectId> ids;
    for (int i = 0; i < 7; ++i)
        ids.push_back(m_session->addLine({0, double(i), 0}, {10, double(i), 0}));
    open();
    select(ids);
    service()->removeReceiver(&receiver);
    QCOMPARE(last().kind, std::uint64_t(kNoticePickFirst));
    QCOMPARE(last().openings, quint64(7));
}

void tst_workbench_busmonitor::countsWhatIsDropped()
{
    open();
    const quint64 before = bus().droppedCount();
    zvedMenuMacro("_.LINE 0,0 100,100;;", false);
    QTRY_COMPARE(m_session->database().entityCount(), 1);
    waitForIdle();
    QVERIFY(bus().droppedCount() > before); // the object was appended while the command ran
    QCOMPARE(last().kind, std::uint64_t(kNoticeCommandEnded));
    QCOMPARE(last().name, QStringLiteral("LINE"));
    const QString summary = monitor().findChild<QLabel *>(QStringLiteral("busSummary"))->text();
    QVERIFY2(summary.endsWith(QStringLiteral("%1 dropped").arg(bus().droppedCount())), qPrintable(summary));
}

void tst_workbench_busmonitor::pauseAndClear()
{
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    action("busPause")->trigger();
    QVERIFY(!bus().isRecording());
    bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), 1);
    action("busPause")->trigger();
    bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), 2);
    action("busClear")->trigger();
    QCOMPARE(notices().rowCount(), 0);
    QVERIFY(
        monitor().findChild<QLabel *>(QStringLiteral("busSummary"))->text().startsWith(QStringLiteral("0 notices")));
}

void tst_workbench_busmonitor::filterByAnyColumn()
{
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    CZvGlobalUIReactorHelp variable = hostNotice(kNoticeSysVar);
    variable.name = L"CLAYER";
    bus().notify(variable);
    const QAbstractItemModel *shown = monitor().findChild<QTableView *>()->model();
    QCOMPARE(shown->rowCount(), 2);
    auto *filter = monitor().findChild<QLineEdit *>(QStringLiteral("busFilter"));
    QTest::keyClicks(filter, QStringLiteral("clay"));
    QCOMPARE(shown->rowCount(), 1);
    QVERIFY(monitor()
                .findChild<QLabel *>(QStringLiteral("busSummary"))
                ->text()
                .startsWith(QStringLiteral("1 of 2 notices")));
    filter->setText(QStringLiteral("host"));
    QCOMPARE(shown->rowCount(), 1);
    filter->clear();
    QCOMPARE(shown->rowCount(), 2);
}

void tst_workbench_busmonitor::copyAsText()
{
    open();
    bus().notify(hostNotice(kNoticeHostFirst));
    CZvGlobalUIReactorHelp variable = hostNotice(kNoticeSysVar);
    variable.name = L"CLAYER";
    bus().notify(variable);
    action("busCopy")->trigger();
    const QStringList lines = QGuiApplication::clipboard()->text().split(QLatin1Char('\n'));
    QCOMPARE(lines.size(), 4); // with the header, and the end of the last line
    QVERIFY(lines[0].startsWith(QStringLiteral("No.\tNotice\tName\tObject\t")));
    QCOMPARE(lines[2].split(QLatin1Char('\t')).mid(1, 2), QStringList({"system variable", "CLAYER"}));
    monitor().findChild<QTableView *>()->selectRow(1);
    QCOMPARE(monitor().text().split(QLatin1Char('\n')).size(), 3);
    QVERIFY(monitor().text().contains(QStringLiteral("CLAYER")));
    QVERIFY(!monitor().text().contains(QStringLiteral("host, first")));
}

void tst_workbench_busmonitor::theOldestGo()
{
    open();
    for (int i = 0; i < BusNoticeModel::kMost + 5; ++i)
        bus().notify(hostNotice(kNoticeHostFirst));
    QCOMPARE(notices().rowCount(), int(BusNoticeModel::kMost));
    QCOMPARE(last().number - notices().at(0).number, quint64(BusNoticeModel::kMost - 1));
}

ZEVA_TEST_MAIN(tst_workbench_busmonitor)
#include "tst_workbench_busmonitor.moc"
