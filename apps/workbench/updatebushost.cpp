// SPDX-License-Identifier: MIT
#include "updatebushost.h"

#include "base/zvregistry.h"
#include "textforms.h"
#include "zvlayerultralcombobox.h"
#include "zvmonitorglobaluisystemvarreactor.h"
#include "zvqtcontrolhelp.h"
#include "zvqtupdatebusservice.h"

#include <QComboBox>
#include <QMetaObject>
#include <QSignalBlocker>
#include <QTimer>
#include <QVariant>

#include <algorithm>
#include <chrono>
#include <utility>

namespace {

typedef std::chrono::steady_clock Clock;

double microsecondsSince(Clock::time_point begin)
{
    return std::chrono::duration<double, std::micro>(Clock::now() - begin).count();
}

quint64 openings()
{
    const ZvDbDatabase *database = curDatabase();
    return database ? database->openingsCount() : 0;
}

bool hasDocument()
{
    const ZvApDocManager *documents = zvDocManagerPtr();
    return documents && documents->documentCount() > 0;
}

/// What a person sees of a receiver, as far as its properties tell it.
QString shownText(const CZvQtControlHelp *receiver)
{
    const auto *object = dynamic_cast<const QObject *>(receiver);
    if (!object)
        return QString();
    const QVariant current = object->property("currentText"); // of a drop-down
    const QString text = current.isValid() ? current.toString() : object->property("text").toString();
    const QVariant enabled = object->property("enabled");
    if (enabled.isValid() && !enabled.toBool())
        return text.isEmpty() ? QStringLiteral("(disabled)") : text + QStringLiteral(" (disabled)");
    return text;
}

QString receiverName(const CZvQtControlHelp *receiver)
{
    const auto *object = dynamic_cast<const QObject *>(receiver);
    if (!object)
        return QStringLiteral("(no QObject)");
    return object->objectName().isEmpty() ? QLatin1String(object->metaObject()->className()) : object->objectName();
}

} // namespace

/// A callback of the kernel that is under way, and the delivery that it may turn into; or the delivery of a notice that
/// came without a callback.
struct UpdateBusHost::Frame
{
    struct Before
    {
        const CZvQtControlHelp *receiver;
        QString text;
    };

    Clock::time_point begin;
    quint64 openingsBefore = 0;
    bool isDelivering = false;
    quint64 direct = 0; // number of a delivery without a callback; 0 for a callback
    BusDelivery delivery;
    std::vector<Before> before;
};

class UpdateBusHost::Bracket
{
public:
    explicit Bracket(UpdateBusHost &host) : m_host(host), m_isOn(host.m_recording)
    {
        if (!m_isOn)
            return;
        Frame frame;
        frame.openingsBefore = openings();
        frame.begin = Clock::now();
        m_host.m_frames.push_back(std::move(frame));
    }
    ~Bracket()
    {
        // Not there any more where the end of a direct delivery around it was given up.
        if (!m_isOn || m_host.m_frames.size() <= m_depth)
            return;
        Frame frame = std::move(m_host.m_frames[m_depth]);
        m_host.m_frames.resize(m_depth); // with what a receiver's exception left of inner ones
        if (frame.isDelivering)
            m_host.finish(std::move(frame));
        else
            ++m_host.m_dropped;
    }
    Q_DISABLE_COPY(Bracket)

private:
    UpdateBusHost &m_host;
    const bool m_isOn;
    const std::size_t m_depth = m_host.m_frames.size();
};

class UpdateBusHost::Reactor : public ZvMonitorGlobalUISystemVarReactor
{
public:
    explicit Reactor(UpdateBusHost &host) : m_host(host) { }

    void commandEnded(const ZvString &name) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::commandEnded(name);
    }
    void sysVarChanged(const ZvString &name, bool success) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::sysVarChanged(name, success);
    }
    void pickfirstModified() override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::pickfirstModified();
    }
    void layoutSwitched(const ZvString &layoutName) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::layoutSwitched(layoutName);
    }
    void documentCreated(ZvApDocument *document) override
    {
        ZvMonitorGlobalUISystemVarReactor::documentCreated(document);
        // A document is created around a drawing that has been read to its end. One without any stays quiet.
        if (document->database()) {
            enableUpdateUI(true);
            m_host.enableControls();
        }
    }
    void documentDestroyed(const ZvString &fileName) override
    {
        ZvMonitorGlobalUISystemVarReactor::documentDestroyed(fileName);
        if (!hasDocument())
            m_host.blankControls();
    }
    void documentBecameCurrent(ZvApDocument *document) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::documentBecameCurrent(document);
    }
    void objectAppended(const ZvDbDatabase *database, const ZvDbObject *object) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::objectAppended(database, object);
    }
    void objectModified(const ZvDbDatabase *database, const ZvDbObject *object) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::objectModified(database, object);
    }
    void objectErased(const ZvDbDatabase *database, const ZvDbObject *object, bool erased) override
    {
        const Bracket bracket(m_host);
        ZvMonitorGlobalUISystemVarReactor::objectErased(database, object, erased);
    }

private:
    UpdateBusHost &m_host;
};

class UpdateBusHost::Service : public ZvStaticRxObject<ZvQtUpdateBusService>
{
public:
    explicit Service(UpdateBusHost &host) : m_host(host) { }
    void addReceiver(CZvQtControlHelp *receiver) override { m_host.addReceiver(receiver); }
    void removeReceiver(CZvQtControlHelp *receiver) override { m_host.removeReceiver(receiver); }

private:
    UpdateBusHost &m_host;
};

class UpdateBusHost::FirstReceiver : public CZvQtControlHelp
{
public:
    explicit FirstReceiver(UpdateBusHost &host) : m_host(host) { }
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override { m_host.deliveryBegins(notice); }

private:
    UpdateBusHost &m_host;
};

class UpdateBusHost::LastReceiver : public CZvQtControlHelp
{
public:
    explicit LastReceiver(UpdateBusHost &host) : m_host(host) { }
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &) override { m_host.deliveryEnds(); }

private:
    UpdateBusHost &m_host;
};

UpdateBusHost::UpdateBusHost()
    : m_reactor(new Reactor(*this)), m_service(new Service(*this)), m_first(new FirstReceiver(*this))
{
    qRegisterMetaType<BusDelivery>();
    m_reactor->addUpdateUIReceiver(m_first.get());
    addLast();
    zv_arbitDict_regservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)), ZvRxObjectPtr(m_service.get()));
}

UpdateBusHost::~UpdateBusHost()
{
    zv_arbitDict_clearservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)));
    m_reactor->removeUpdateUIReceiver(m_first.get());
    for (const auto &last : m_last)
        m_reactor->removeUpdateUIReceiver(last.get());
}

ZvMonitorGlobalUISystemVarReactor &UpdateBusHost::reactor()
{
    return *m_reactor;
}

void UpdateBusHost::addLast()
{
    m_last.push_back(std::make_unique<LastReceiver>(*this));
    m_reactor->addUpdateUIReceiver(m_last.back().get());
}

void UpdateBusHost::addReceiver(CZvQtControlHelp *receiver)
{
    if (std::find(m_receivers.begin(), m_receivers.end(), receiver) == m_receivers.end())
        m_receivers.push_back(receiver);
    // The last ones stay the last.
    for (const auto &last : m_last)
        m_reactor->removeUpdateUIReceiver(last.get());
    m_reactor->addUpdateUIReceiver(receiver);
    for (const auto &last : m_last)
        m_reactor->addUpdateUIReceiver(last.get());
    // It joins from its constructor, which may set up more afterwards.
    if (!hasDocument()) {
        QTimer::singleShot(0, this, &UpdateBusHost::blankControls);
        return;
    }
    if (m_unfilled.empty())
        QTimer::singleShot(0, this, &UpdateBusHost::fillControls);
    m_unfilled.push_back(receiver);
}

void UpdateBusHost::removeReceiver(CZvQtControlHelp *receiver)
{
    m_receivers.erase(std::remove(m_receivers.begin(), m_receivers.end(), receiver), m_receivers.end());
    m_reactor->removeUpdateUIReceiver(receiver);
    // A receiver that leaves in a delivery makes the bus pass over one behind it. One more at the end, and the delivery
    // comes to a last one all the same.
    const auto isDirect = [](const Frame &frame) { return frame.direct != 0; };
    if (std::any_of(m_frames.begin(), m_frames.end(), isDirect))
        addLast();
}

void UpdateBusHost::notify(const CZvGlobalUIReactorHelp &notice)
{
    const Bracket bracket(*this);
    m_reactor->notifyUpdateUI(notice);
}

void UpdateBusHost::blankControls()
{
    if (hasDocument())
        return;
    for (CZvQtControlHelp *receiver : m_receivers) {
        auto *widget = dynamic_cast<QWidget *>(receiver);
        if (!widget || !receiver->hooked || !widget->isEnabledTo(widget->parentWidget()))
            continue;
        widget->setEnabled(false);
        m_blanked.emplace_back(widget);
        showNothing(*widget);
    }
}

void UpdateBusHost::showNothing(QWidget &control)
{
    if (auto *combo = qobject_cast<QComboBox *>(&control)) {
        const QSignalBlocker quiet(combo); // showing never writes
        combo->setCurrentIndex(-1);
    }
    if (auto *layer = qobject_cast<ZvLayerUltralComboBox *>(&control))
        layer->SetNullItem(); // its index is not what it shows
}

void UpdateBusHost::enableControls()
{
    for (const QPointer<QWidget> &widget : std::exchange(m_blanked, {})) {
        if (widget)
            widget->setEnabled(true);
    }
}

void UpdateBusHost::fillControls()
{
    const std::vector<CZvQtControlHelp *> joined = std::exchange(m_unfilled, {});
    const bool isWanted = std::any_of(joined.begin(), joined.end(), [this](CZvQtControlHelp *receiver) {
        return std::find(m_receivers.begin(), m_receivers.end(), receiver) != m_receivers.end() && receiver->hooked
            && dynamic_cast<QWidget *>(receiver);
    });
    if (!isWanted || !hasDocument()) // without a document they are blank
        return;
    // The one notice that no control passes over.
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticeCommandEnded;
    notify(notice);
}

void UpdateBusHost::setRecording(bool on)
{
    m_recording = on;
}

void UpdateBusHost::deliveryBegins(const CZvGlobalUIReactorHelp &notice)
{
    if (!m_recording)
        return;
    if (m_frames.empty() || m_frames.back().isDelivering)
        beginDirectDelivery();
    Frame &frame = m_frames.back();
    frame.isDelivering = true;
    BusDelivery &delivery = frame.delivery;
    delivery.microseconds = microsecondsSince(frame.begin);
    delivery.openings = openings() - frame.openingsBefore;
    delivery.hasScan = frame.direct == 0;
    delivery.number = ++m_lastNumber;
    delivery.depth = int(m_frames.size()) - 1;
    delivery.kind = notice.kind;
    delivery.name = toQString(notice.name);
    if (notice.object) {
        delivery.objectClass = QString::fromUtf8(notice.object->isA()->name());
        delivery.handle = notice.object->objectId().handle();
    }
    delivery.affectsSelection = notice.affectsSelection;
    delivery.receivers = int(m_receivers.size());
    frame.before.reserve(m_receivers.size());
    for (const CZvQtControlHelp *receiver : m_receivers)
        frame.before.push_back({receiver, shownText(receiver)});
    frame.begin = Clock::now();
}

void UpdateBusHost::beginDirectDelivery()
{
    Frame frame;
    frame.direct = ++m_lastDirect;
    frame.openingsBefore = openings();
    frame.begin = Clock::now();
    m_frames.push_back(std::move(frame));
    // For the case that a receiver's exception keeps the delivery from coming to its end.
    QTimer::singleShot(0, this, [this, direct = m_lastDirect] {
        const auto isThis = [direct](const Frame &frame) { return frame.direct == direct; };
        const auto at = std::find_if(m_frames.begin(), m_frames.end(), isThis);
        if (at == m_frames.end())
            return;
        Frame frame = std::move(*at);
        m_frames.erase(at, m_frames.end());
        finish(std::move(frame));
    });
}

void UpdateBusHost::deliveryEnds()
{
    if (m_frames.empty() || !m_frames.back().direct)
        return;
    Frame frame = std::move(m_frames.back());
    m_frames.pop_back();
    finish(std::move(frame));
}

void UpdateBusHost::finish(Frame frame)
{
    frame.delivery.microseconds += microsecondsSince(frame.begin);
    for (const Frame::Before &before : frame.before) {
        if (std::find(m_receivers.begin(), m_receivers.end(), before.receiver) == m_receivers.end())
            continue; // it left the bus meanwhile, and may be gone
        const QString after = shownText(before.receiver);
        if (after != before.text)
            frame.delivery.changes.append({receiverName(before.receiver), before.text, after});
    }
    if (m_frames.empty()) {
        for (; m_last.size() > 1; m_last.pop_back())
            m_reactor->removeUpdateUIReceiver(m_last.back().get());
    }
    Q_EMIT delivered(frame.delivery);
}
