// SPDX-License-Identifier: MIT
#ifndef DIALOGDEMO_H
#define DIALOGDEMO_H

#include <QString>
#include <QVector>

/// A use of a common dialog, to be looked at from the menu.
struct DialogDemo
{
    QString id; ///< For object names.
    QString menuText;
    /// Runs the dialog; one line that says what it gave back.
    QString (*run)();
};

#endif
