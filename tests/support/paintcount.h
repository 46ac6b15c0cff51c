// SPDX-License-Identifier: MIT
#ifndef PAINTCOUNT_H
#define PAINTCOUNT_H

#include <QEvent>
#include <QObject>
#include <QWidget>

/// Counts the paint events of a widget from its making on.
class PaintCount : public QObject
{
public:
    explicit PaintCount(QWidget *widget) { widget->installEventFilter(this); }
    int count = 0;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        count += event->type() == QEvent::Paint ? 1 : 0;
        return QObject::eventFilter(object, event);
    }
};

#endif
