// SPDX-License-Identifier: MIT
#ifndef DIALOGDEMO_H
#define DIALOGDEMO_H

#include "base/zvjson.h"

#include <QStringList>
#include <QVector>

#include <memory>

/// A use of a common dialog, to be looked at from the menu, and the start of one's own on the dialog's page.
struct DialogDemo
{
    QString id; ///< For object names.
    QString menuText;
    const char *dialog; ///< The dialog's name in "Dialog/Common".
    /// What the dialog is given; null where that needs a drawing and none is open.
    ZvJsonPtr (*parameters)();
    /// What has to be there while the dialog is shown; null for a use that needs nothing.
    std::shared_ptr<void> (*surroundings)() = nullptr;
};

/// An array of texts.
ZvJsonPtr bagOfTexts(const QStringList &texts);

/// Runs a dialog of "Dialog/Common" over the main window; its result tree. The dialog may write into \a params.
ZvJsonPtr runCommonDialog(const char *name, const ZvJsonPtr &params);

/// Shows the use. One line with the dialog's result tree and, of the keys that the dialog answers in its parameters,
/// those that stand there afterwards.
QString runDemo(const DialogDemo &demo);

#endif
