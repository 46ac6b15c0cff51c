// SPDX-License-Identifier: MIT
#include "updatebushost.h"

#include "base/zvregistry.h"
#include "textforms.h"
#include "zvmonitorglobaluisystemvarreactor.h"
#include "zvqtcontrolhelp.h"
#include "zvqtupdatebusservice.h"

#include <QMetaObject>
#include <QVariant>

#include <algorithm>
#include <chrono>

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

/// A callback of the kernel that is under way, and the delivery that it may turn into.
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
        if (!m_isOn)
            return;
        const double receiversTime = microsecondsSince(m_host.m_frames.back().begin);
        Frame frame = std::move(m_host.m_frames.back());
        m_host.m_frames.pop_back();
        if (!frame.isDelivering) {
            ++m_host.m_dropped;
            return;
        }
        frame.delivery.microseconds += receiversTime;
        for (const Frame::Before &before : frame.before) {
            const auto &receivers = m_host.m_receivers;
            if (std::find(receivers.begin(), receivers.end(), before.receiver) == receivers.end())
                continue; // it left the bus meanwhile, and may be gone
            const QString after = shownText(before.receiver);
            if (after != before.text)
                frame.delivery.changes.append({receiverName(before.receiver), before.text, after});
        }
        Q_EMIT m_host.delivered(frame.delivery);
    }
    Q_DISABLE_COPY(Bracket)

private:
    UpdateBusHost &m_host;
    const bool m_isOn;
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
        if (document->database())
            enableUpdateUI(true);
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

UpdateBusHost::UpdateBusHost()
    : m_reactor(new Reactor(*this)), m_service(new Service(*this)), m_first(new FirstReceiver(*this))
{
    qRegisterMetaType<BusDelivery>();
    m_reactor->addUpdateUIReceiver(m_first.get());
    zv_arbitDict_regservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)), ZvRxObjectPtr(m_service.get()));
}

UpdateBusHost::~UpdateBusHost()
{
    zv_arbitDict_clearservice(ZvString(wchar_t(ZvQtUpdateBusService::kKey)));
    m_reactor->removeUpdateUIReceiver(m_first.get());
}

void UpdateBusHost::addReceiver(CZvQtControlHelp *receiver)
{
    if (std::find(m_receivers.begin(), m_receivers.end(), receiver) == m_receivers.end())
        m_receivers.push_back(receiver);
    m_reactor->addUpdateUIReceiver(receiver);
}

void UpdateBusHost::removeReceiver(CZvQtControlHelp *receiver)
{
    m_receivers.erase(std::remove(m_receivers.begin(), m_receivers.end(), receiver), m_receivers.end());
    m_reactor->removeUpdateUIReceiver(receiver);
}

void UpdateBusHost::notify(const CZvGlobalUIReactorHelp &notice)
{
    const Bracket bracket(*this);
    m_reactor->notifyUpdateUI(notice);
}

void UpdateBusHost::setRecording(bool on)
{
    m_recording = on;
}

void UpdateBusHost::deliveryBegins(const CZvGlobalUIReactorHelp &notice)
{
    // No frame: notes were switched on inside this delivery.
    if (m_frames.empty() || m_frames.back().isDelivering)
        return;
    Frame &frame = m_frames.back();
    frame.isDelivering = true;
    BusDelivery &delivery = frame.delivery;
    delivery.microseconds = microsecondsSince(frame.begin);
    delivery.openings = openings() - frame.openingsBefore;
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
