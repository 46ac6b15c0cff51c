// SPDX-License-Identifier: MIT
#ifndef ZVACCELERATOR_H
#define ZVACCELERATOR_H

#include <Qt>

class QAction;
class QLabel;
class QWidget;

enum class ZvAcceleratorKeys {
    kPlain, ///< the letter alone
    kPlainAndAlt, ///< the letter alone, and Alt with it
};

/// A new action of \a widget, owned by it, that the key \a letter triggers while the widget can be seen and nothing in
/// its window that takes letters has the keyboard.
///
/// Alt and the letter may also be the mnemonic of a label in the same window: Qt then calls the two in turns, and the
/// action does its work in its turn instead of warning of the ambiguity. A label gives the focus to its buddy in its own
/// turn; where the action does more than that, \a label is the one that leaves its turn to the action.
QAction *zvAddAccelerator(QWidget *widget, Qt::Key letter, ZvAcceleratorKeys keys, QLabel *label = nullptr);

#endif
