// SPDX-License-Identifier: MIT
#include "modaldriver.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QWindow>

#include <utility>

ModalDriver::ModalDriver(int timeoutMs)
{
    // The dispatcher is about to block in a loop that runs, never in one that is on its way out: an action therefore
    // belongs to the exec() that shows the dialog now, also when a dialog was hidden and shown again.
    connect(QAbstractEventDispatcher::instance(), &QAbstractEventDispatcher::aboutToBlock, this,
            &ModalDriver::schedule);
    m_watchdog.setSingleShot(true);
    connect(&m_watchdog, &QTimer::timeout, this, [this] {
        m_isTimeUp = true;
        endByForce();
    });
    m_watchdog.start(timeoutMs);
}

ModalDriver::~ModalDriver() = default;

QDialog *ModalDriver::nextDialog() const
{
    auto *dialog = qobject_cast<QDialog *>(QApplication::activeModalWidget());
    if (!dialog || dialog == m_inAction) // an action may run the event loop itself
        return nullptr;
    const QWindow *window = dialog->windowHandle();
    return window && window->isExposed() ? dialog : nullptr;
}

void ModalDriver::schedule()
{
    const bool isWanted = m_isTimeUp ? QApplication::activeModalWidget() != nullptr : nextDialog() != nullptr;
    if (m_isScheduled || !isWanted)
        return;
    m_isScheduled = true;
    QMetaObject::invokeMethod(this, &ModalDriver::act, Qt::QueuedConnection);
}

void ModalDriver::act()
{
    m_isScheduled = false;
    if (m_isTimeUp) {
        endByForce();
        return;
    }
    QDialog *dialog = nextDialog();
    if (!dialog)
        return;
    if (m_actions.empty()) {
        endByForce();
        return;
    }
    const Action action = std::move(m_actions.front());
    m_actions.pop();
    QDialog *const outer = std::exchange(m_inAction, dialog);
    action(dialog);
    m_inAction = outer;
}

void ModalDriver::endByForce()
{
    m_usedForce = true;
    if (QWidget *window = QApplication::activeModalWidget())
        window->hide(); // which ends its loop, whatever the dialog makes of being rejected
}
