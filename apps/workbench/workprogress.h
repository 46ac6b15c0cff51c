// SPDX-License-Identifier: MIT
#ifndef WORKPROGRESS_H
#define WORKPROGRESS_H

#include "db/zvdbdatabase.h"

#include <QElapsedTimer>
#include <QWidget>

class QLabel;
class QProgressBar;
class QToolButton;

/// Shows in the status bar how far long work has come, and lets the user cancel it by its button or by Escape.
///
/// The window goes on painting meanwhile, but all other input is held back: the drawing is not whole until the work
/// ends.
class WorkProgress : public QWidget, public ZvDbProgress
{
    Q_OBJECT
public:
    explicit WorkProgress(QWidget *parent = nullptr);

    /// \a interactive: whether anybody is there to watch and cancel.
    void begin(const QString &title, bool interactive);
    void end();
    bool isRunning() const { return m_running; }
    void cancel();
    bool progress(double fraction) override;

Q_SIGNALS:
    void runningChanged(bool running);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    QLabel *m_title;
    QProgressBar *m_bar;
    QToolButton *m_cancel;
    QElapsedTimer m_lastLook;
    bool m_running = false;
    bool m_interactive = false;
    bool m_cancelled = false;
};

#endif
