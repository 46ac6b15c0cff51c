// SPDX-License-Identifier: MIT
#include "private/zvaccelerator.h"

#include <QAction>
#include <QEvent>
#include <QKeySequence>
#include <QLabel>
#include <QWidget>

namespace {

class Accelerator : public QAction
{
public:
    using QAction::QAction;

protected:
    bool event(QEvent *event) override
    {
        if (event->type() != QEvent::Shortcut)
            return QAction::event(event);
        trigger();
        return true;
    }
    bool eventFilter(QObject *label, QEvent *event) override
    {
        if (event->type() != QEvent::Shortcut)
            return QAction::eventFilter(label, event);
        trigger();
        return true;
    }
};

} // namespace

QAction *zvAddAccelerator(QWidget *widget, Qt::Key letter, ZvAcceleratorKeys keys, QLabel *label)
{
    auto *action = new Accelerator(widget);
    QList<QKeySequence> shortcuts{QKeySequence(letter)};
    if (keys == ZvAcceleratorKeys::kPlainAndAlt)
        shortcuts << QKeySequence(int(Qt::ALT) + int(letter));
    action->setShortcuts(shortcuts);
    widget->addAction(action);
    if (label)
        label->installEventFilter(action);
    return action;
}
