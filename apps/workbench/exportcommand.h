// SPDX-License-Identifier: MIT
#ifndef EXPORTCOMMAND_H
#define EXPORTCOMMAND_H

#include <QString>

class QWidget;
class ZvDbDatabase;
class ZvDbProgress;

/// Writes the space at hand to a .png, .pdf or .svg, or the whole drawing to a .dxf, by the ending. False with the
/// reason.
bool exportDrawing(ZvDbDatabase &database, const QString &path, QString &error, ZvDbProgress *progress = nullptr);

/// Adds the command EXPORT, which asks for a file name: at the command line, or for an empty answer in a dialog.
void addExportCommand();
void removeExportCommand();

#endif
