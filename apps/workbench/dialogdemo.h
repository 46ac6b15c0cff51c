// SPDX-License-Identifier: MIT
#ifndef DIALOGDEMO_H
#define DIALOGDEMO_H

#include "base/zvjson.h"

#include <QStringList>
#include <QVector>

#include <initializer_list>

/// A use of a common dialog, to be looked at from the menu.
struct DialogDemo
{
    QString id; ///< For object names.
    QString menuText;
    /// Runs the dialog; one line that says what it gave back.
    QString (*run)();
};

/// An array of texts.
ZvJsonPtr bagOfTexts(const QStringList &texts);

/// Runs a dialog of "Dialog/Common" over the main window. One line with its result tree and, of the keys in \a answers,
/// those that stand in \a params afterwards.
QString runCommonDialog(const char *name, const ZvJsonPtr &params, std::initializer_list<const char *> answers);

#endif
