// SPDX-License-Identifier: MIT
#ifndef MODALDRIVER_H
#define MODALDRIVER_H

#include <QDialog>
#include <QObject>
#include <QTimer>

#include <functional>
#include <queue>

/// Works a modal dialog from inside its own exec(), as a user would.
///
/// Actions are queued before the call that runs the dialog. Each waits until a dialog is the active modal window, is
/// exposed, and its event loop is idle; then it is called with the dialog from that loop. One action is one run of the
/// event loop: to press two buttons of which the first opens another dialog, queue two.
///
/// \code
/// ModalDriver driver;
/// driver.next([](QDialog *dialog) { QTest::keyClick(dialog, Qt::Key_Escape); });
/// QCOMPARE(adapter->doModal(), 2);
/// QVERIFY(driver.finished());
/// \endcode
///
/// A dialog that is still open when the time is up, or that no action was queued for, is hidden, and finished() is
/// false: a failing test does not hang. Take values out of the action and compare them after the dialog has ended.
class ModalDriver : public QObject
{
    Q_OBJECT
public:
    typedef std::function<void(QDialog *)> Action;

    explicit ModalDriver(int timeoutMs = 10000);
    ~ModalDriver() override;

    void next(Action action) { m_actions.push(std::move(action)); }
    /// All actions were called and no dialog had to be ended by force.
    bool finished() const { return m_actions.empty() && !m_usedForce; }

private:
    /// The dialog an action is due for; null while there is none.
    QDialog *nextDialog() const;
    void schedule();
    void act();
    void endByForce();

    std::queue<Action> m_actions;
    QDialog *m_inAction = nullptr; // only compared
    QTimer m_watchdog;
    bool m_isScheduled = false;
    bool m_isTimeUp = false;
    bool m_usedForce = false;
};

#endif
