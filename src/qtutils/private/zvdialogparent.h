// SPDX-License-Identifier: MIT
#ifndef ZVDIALOGPARENT_H
#define ZVDIALOGPARENT_H

class QWidget;

/// Where a common dialog's parent comes from: the first of these windows that there is. Without any, the dialog is a
/// top-level window.
enum class ZvDialogParent {
    kGiven, ///< the caller's window, the main window
    kMainWindow, ///< the main window, whatever the caller gives
    kGivenOrSystem, ///< the caller's window, the main window, the system object's window
};

QWidget *zvDialogParent(ZvDialogParent rule, void *givenHandle);

#endif
