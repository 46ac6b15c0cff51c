// SPDX-License-Identifier: MIT
#ifndef PLOTCOMMAND_H
#define PLOTCOMMAND_H

#include "base/zvjson.h"
#include "db/zvdbdatabase.h"

#include <QString>

/// The parameters of the print preview for a layout's page.
ZvJsonPtr previewParameters(ZvDbDatabase &database, ZvDbObjectId layout);

/// Prints the current layout's page as the preview shows it: into a PDF file, or for an empty \a path on the default
/// printer. False with the reason.
bool plotPage(ZvDbDatabase &database, const QString &path, QString &error);

/// Adds the command PLOT, which previews the page of the current layout and prints it from there. In a script, and
/// without a window, it asks for the name of a PDF file instead.
void addPlotCommand();
void removePlotCommand();

#endif
