// SPDX-License-Identifier: MIT
#ifndef MESSAGEBOXDEMO_H
#define MESSAGEBOXDEMO_H

#include <QString>
#include <QVector>

/// The uses of the message box, to be looked at from the menu.
struct MessageBoxDemo
{
    QString id; ///< For object names.
    QString menuText;
    /// Runs the box; one line that says what it gave back.
    QString (*run)();
};

const QVector<MessageBoxDemo> &messageBoxDemos();

#endif
