// SPDX-License-Identifier: MIT
#ifndef ZVACCESSIBILITY_H
#define ZVACCESSIBILITY_H

#include <QAccessible>
#include <QString>

#include <functional>

class QWidget;

/// What a screen reader says of a control of the library: its accessible name is filled in when it is first styled,
/// unless it has one or is the buddy of a label by then. A tool tip serves, and otherwise the control's own word, by
/// its class. Hosts that know better set the name themselves.
void zvNameForReaders(QWidget *widget);

/// Fields to pick a value in by the pointer, painted by themselves: what they need to be worked by the keyboard.
struct ZvPicker
{
    QAccessible::Role role = QAccessible::Slider;
    const char *name = nullptr; ///< In the context "ZvAccessibility".
    std::function<QString()> value; ///< As a screen reader says it.
    /// An arrow key: -1, 0 or 1 to the right and upwards, ten times as much with Page Up and Page Down.
    std::function<void(int right, int up)> step;
};

/// The Tab key comes to \a widget from now on, arrow keys step in it, and screen readers know it. A click leaves the
/// keyboard where it is.
void zvMakePicker(QWidget *widget, ZvPicker picker);

#endif
