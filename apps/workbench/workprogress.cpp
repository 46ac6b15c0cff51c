// SPDX-License-Identifier: MIT
#include "workprogress.h"

#include "icons.h"

#include <QApplication>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QProgressBar>
#include <QToolButton>

namespace {

constexpr int kSteps = 1000;
constexpr int kLookEvery = 30; // milliseconds between two looks at the events

bool isInput(QEvent::Type type)
{
    switch (type) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::KeyRelease:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::Close:
    case QEvent::TabletPress:
    case QEvent::TouchBegin:
    case QEvent::DragEnter:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

} // namespace

WorkProgress::WorkProgress(QWidget *parent)
    : QWidget(parent), m_title(new QLabel), m_bar(new QProgressBar), m_cancel(new QToolButton)
{
    setObjectName(QStringLiteral("workProgress"));
    m_title->setTextFormat(Qt::PlainText);
    m_bar->setAccessibleName(tr("Progress"));
    m_bar->setRange(0, kSteps);
    m_bar->setTextVisible(false);
    m_bar->setFixedSize(160, 12);
    m_cancel->setObjectName(QStringLiteral("cancelWork"));
    m_cancel->setAccessibleName(tr("Cancel"));
    m_cancel->setToolTip(tr("Cancel (Esc)"));
    m_cancel->setIcon(Icons::icon(QStringLiteral("close")));
    m_cancel->setAutoRaise(true);
    connect(m_cancel, &QToolButton::clicked, this, &WorkProgress::cancel);

    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->addWidget(m_title);
    row->addWidget(m_bar);
    row->addWidget(m_cancel);
    hide();
}

void WorkProgress::begin(const QString &title, bool interactive)
{
    m_title->setText(title);
    m_bar->setValue(0);
    m_cancelled = false;
    m_interactive = interactive;
    m_lastLook.start();
    m_running = true;
    show();
    if (interactive) {
        qApp->installEventFilter(this);
        QApplication::setOverrideCursor(Qt::BusyCursor);
    }
    Q_EMIT runningChanged(true);
}

void WorkProgress::end()
{
    if (!m_running)
        return;
    m_running = false;
    hide();
    if (m_interactive) {
        qApp->removeEventFilter(this);
        QApplication::restoreOverrideCursor();
    }
    Q_EMIT runningChanged(false);
}

void WorkProgress::cancel()
{
    m_cancelled = true;
}

bool WorkProgress::progress(double fraction)
{
    if (m_cancelled || !m_running)
        return !m_cancelled;
    m_bar->setValue(int(fraction * kSteps));
    if (m_interactive && m_lastLook.elapsed() >= kLookEvery) {
        QCoreApplication::processEvents();
        m_lastLook.start();
    }
    return !m_cancelled;
}

bool WorkProgress::eventFilter(QObject *watched, QEvent *event)
{
    // Shortcuts go to actions, which are no widgets.
    const bool held = event->type() == QEvent::Shortcut || (isInput(event->type()) && watched->isWidgetType());
    if (!held || (watched->isWidgetType() && isAncestorOf(static_cast<QWidget *>(watched))))
        return QWidget::eventFilter(watched, event);
    // The frame's close button cancels as well; the window itself closes when the work has ended.
    const bool escape = event->type() == QEvent::KeyPress && static_cast<QKeyEvent *>(event)->key() == Qt::Key_Escape;
    if (escape || event->type() == QEvent::Close)
        cancel();
    event->ignore();
    return true;
}
