// SPDX-License-Identifier: MIT
#ifndef READABLE_H
#define READABLE_H

#include <QAccessible>
#include <QSet>
#include <QStringList>
#include <QToolButton>
#include <QWidget>

// What a screen reader and a keyboard find in a window.

/// Roles of what a user can do something with.
inline bool isInteractive(QAccessible::Role role)
{
    switch (role) {
    case QAccessible::PushButton:
    case QAccessible::ButtonDropDown:
    case QAccessible::ButtonMenu:
    case QAccessible::CheckBox:
    case QAccessible::RadioButton:
    case QAccessible::ComboBox:
    case QAccessible::EditableText:
    case QAccessible::SpinBox:
    case QAccessible::Slider:
    case QAccessible::Dial:
    case QAccessible::ColorChooser:
    case QAccessible::List:
    case QAccessible::Table:
    case QAccessible::Tree:
        return true;
    default:
        return false;
    }
}

/// "Role ClassName objectName" of everything below, visible and interactive, that \a isMissing holds for. What Qt's own
/// controls consist of is Qt's.
template <class IsMissing> QStringList findMissing(QWidget *window, IsMissing isMissing)
{
    QStringList found;
    QList<QWidget *> widgets = window->findChildren<QWidget *>();
    widgets.prepend(window);
    for (QWidget *widget : qAsConst(widgets)) {
        if (!widget->isVisibleTo(window) || widget->objectName().startsWith(QLatin1String("qt_"))
            || widget->inherits("QComboBoxPrivateContainer") || widget->inherits("QHeaderView"))
            continue;
        const QWidget *parent = widget->parentWidget();
        const bool isPart = parent
            && (parent->inherits("QAbstractSpinBox") || parent->inherits("QComboBox")
                || parent->inherits("QComboBoxPrivateContainer") || parent->inherits("QTabBar")
                || parent->inherits("QAbstractScrollArea") || parent->inherits("QMenuBar"));
        if (isPart && widget != window)
            continue;
        QAccessibleInterface *reader = QAccessible::queryAccessibleInterface(widget);
        if (reader && isInteractive(reader->role()) && isMissing(widget, *reader))
            found << QStringLiteral("%1 %2 %3")
                         .arg(reader->role())
                         .arg(QLatin1String(widget->metaObject()->className()), widget->objectName());
    }
    return found;
}

inline QStringList withoutName(QWidget *window)
{
    return findMissing(window, [](QWidget *, const QAccessibleInterface &reader) {
        return reader.text(QAccessible::Name).trimmed().isEmpty();
    });
}

/// What the Tab key comes to, all round.
inline QSet<QWidget *> tabChain(QWidget *window)
{
    QSet<QWidget *> reached;
    for (QWidget *widget = window->nextInFocusChain(); widget && widget != window;
         widget = widget->nextInFocusChain()) {
        QWidget *target = widget;
        while (target->focusProxy())
            target = target->focusProxy();
        if ((widget->focusPolicy() & Qt::TabFocus) == Qt::TabFocus && widget->isVisibleTo(window)
            && widget->isEnabled())
            reached << widget << target;
    }
    return reached;
}

inline QStringList outOfReach(QWidget *window)
{
    const QSet<QWidget *> reached = tabChain(window);
    return findMissing(window, [&](QWidget *widget, const QAccessibleInterface &) {
        return widget->isEnabledTo(window) && !reached.contains(widget);
    });
}

#endif
