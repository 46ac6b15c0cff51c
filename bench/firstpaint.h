// SPDX-License-Identifier: MIT
#ifndef FIRSTPAINT_H
#define FIRSTPAINT_H

#include <QApplication>
#include <QEvent>
#include <QWidget>

/// Notes that a widget was painted.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }
    bool painted = false;

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        painted = painted || event->type() == QEvent::Paint;
        return QObject::eventFilter(object, event);
    }
};

inline void showToFirstPaint(QWidget *widget)
{
    const PaintWatch watch(widget);
    widget->show();
    while (!watch.painted)
        QApplication::processEvents(QEventLoop::AllEvents, 1);
}

/// The window of a dialog that its adapter does not tell.
inline QWidget *shownDialog(const char *className)
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (widget->inherits(className))
            return widget;
    }
    return nullptr;
}

#endif
