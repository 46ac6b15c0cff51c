// SPDX-License-Identifier: MIT
#ifndef PLOTCOMMAND_H
#define PLOTCOMMAND_H

#include "base/zvjson.h"
#include "db/zvdbdatabase.h"
#include "utils/zvpage.h"

#include <QString>

/// The page of the current layout, by its own settings or by a named page set-up. The display is what its view shows.
ZvGiPage pageToPlot(ZvDbDatabase &database, const ZvString &setup = ZvString());

/// The parameters of the print preview for a page.
ZvJsonPtr previewParameters(ZvDbDatabase &database, const ZvGiPage &page);

/// Prints a page as the preview shows it: into a PDF file, or for an empty \a path on the default printer. False with
/// the reason.
bool plotPage(ZvDbDatabase &database, const ZvGiPage &page, const QString &path, QString &error);

/// Adds the command PLOT, which previews the page of the current layout and prints it from there. Where the drawing has
/// named page set-ups for such a layout it asks first which one to take. In a script, and without a window, it asks for
/// the name of a PDF file instead of showing a preview.
void addPlotCommand();
void removePlotCommand();

#endif
