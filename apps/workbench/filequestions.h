// SPDX-License-Identifier: MIT
#ifndef FILEQUESTIONS_H
#define FILEQUESTIONS_H

#include <QString>

class ZvApDocument;

/// \file
/// The workbench's own questions for a file, asked by the dialog "FileDialogBox" of the service "Dialog/Common".
/// Answers are full paths, empty when the user cancels.

/// \a dir is the folder to begin with.
QString askFileToOpen(const QString &caption, const QString &dir, const QString &filter);
/// \a dir is the path to begin with, its file name included. The answer has the extension of the chosen filter, and the
/// user has agreed to replace what is there.
QString askFileToSave(const QString &caption, const QString &dir, const QString &filter);
/// A path to begin with for a file made from a drawing, without an ending: beside the drawing, and named after it.
QString pathBeside(const ZvApDocument &document);

#endif
