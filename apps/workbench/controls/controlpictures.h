// SPDX-License-Identifier: MIT
#ifndef CONTROLPICTURES_H
#define CONTROLPICTURES_H

#include <QString>

class QWidget;

/// Writes a picture of each page of the window of controls into \a folder, as "<page>.png", of each dialog itself as
/// "<page>-dialog.png", and "index.md", a page for the documents that shows them all. The window is a child of
/// \a parent and is closed again. False with one line in \a error where something cannot be written.
bool writeControlPictures(const QString &folder, QWidget *parent, QString &error);

/// The page for the documents. \a pictures is the way from it to their folder, ending in "/", or empty.
QString controlsGuide(const QString &pictures);

#endif
