// SPDX-License-Identifier: MIT
#ifndef UPDATEBUSHOST_H
#define UPDATEBUSHOST_H

#include "zvglobaluireactorhelp.h"

#include <QMetaType>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QVector>
#include <QWidget>

#include <memory>
#include <vector>

class CZvQtControlHelp;
class ZvMonitorGlobalUISystemVarReactor;

/// What one notice of the update bus did, told after its last receiver.
struct BusDelivery
{
    /// A receiver that shows something else than before.
    struct Change
    {
        QString receiver;
        QString before;
        QString after;
    };

    quint64 number = 0; ///< From 1 on, in the order in which the deliveries began.
    int depth = 0; ///< 0, or how many other deliveries this one happened in.
    std::uint64_t kind = 0; ///< A ZvNoticeKind.
    QString name; ///< Of the variable or the command.
    QString objectClass;
    quint64 handle = 0; ///< Of the object; 0 without one.
    bool affectsSelection = false;
    double microseconds = 0.0; ///< The scan of the selection and all receivers; taking notes is left out.
    quint64 openings = 0; ///< Objects that the scan of the selection opened.
    /// False for a notice that somebody gave the reactor directly: it is heard of when its scan is over, so that time
    /// and openings are without the scan.
    bool hasScan = true;
    int receivers = 0; ///< How many were on the bus when it began.
    QVector<Change> changes;
};
Q_DECLARE_METATYPE(BusDelivery)

/// The host's side of the update bus: makes the one reactor of the library, offers it to the controls as the service
/// they look for, and switches it on again whenever a new drawing is ready. To be made after the library's load and
/// before the first control, and to be deleted after the last control and before the unload.
///
/// The bus is silent while there is no drawing, and so is no help to the controls when the last one goes: the host
/// disables and blanks all hooked controls then, wherever they are, and gives them back to the bus with the next
/// drawing. A control that joins while a drawing is open is filled as soon as the event loop is reached, and does not
/// wait for the next notice.
///
/// It can take notes of what the bus does. Notes need no hook in the library: the reactor's callbacks are bracketed by
/// overriding them, and the first receiver of all tells the end of the scan from the begin of the delivery. Notices
/// that somebody hands to the reactor itself lie between the first receiver and the last.
class UpdateBusHost : public QObject
{
    Q_OBJECT
public:
    UpdateBusHost();
    ~UpdateBusHost() override;

    /// What the service does. The receiver must not be null.
    void addReceiver(CZvQtControlHelp *receiver);
    void removeReceiver(CZvQtControlHelp *receiver);
    /// Raises a notice of the host's own.
    void notify(const CZvGlobalUIReactorHelp &notice);
    /// Lets a control show no value; nothing is written. Other widgets than drop-downs stay as they are.
    static void showNothing(QWidget &control);
    /// The bus itself.
    ZvMonitorGlobalUISystemVarReactor &reactor();

    /// Whether notes are taken; off at the start, when a notice costs nothing extra.
    void setRecording(bool on);
    bool isRecording() const { return m_recording; }
    /// Callbacks of the kernel that became no notice, as far as notes were taken: during a command, for instance.
    quint64 droppedCount() const { return m_dropped; }

Q_SIGNALS:
    /// After the last receiver. An inner delivery ends before the one that it happened in.
    void delivered(const BusDelivery &delivery);

private:
    class Reactor;
    class Service;
    class FirstReceiver;
    class LastReceiver;
    class Bracket;
    struct Frame;

    void blankControls();
    void enableControls();
    void fillControls();

    void deliveryBegins(const CZvGlobalUIReactorHelp &notice);
    void deliveryEnds();
    void beginDirectDelivery();
    void finish(Frame frame);
    void addLast();

    std::unique_ptr<Reactor> m_reactor;
    std::unique_ptr<Service> m_service;
    std::unique_ptr<FirstReceiver> m_first;
    std::vector<std::unique_ptr<LastReceiver>> m_last; // at the end of the bus; see removeReceiver()
    std::vector<CZvQtControlHelp *> m_receivers; // in the order in which they joined; not owned
    std::vector<QPointer<QWidget>> m_blanked; // by blankControls()
    std::vector<Frame> m_frames; // callbacks and direct deliveries that are under way
    quint64 m_lastDirect = 0;
    quint64 m_lastNumber = 0;
    quint64 m_dropped = 0;
    bool m_recording = false;
    std::vector<CZvQtControlHelp *> m_unfilled; // joined a moment ago, and may be gone
};

#endif
