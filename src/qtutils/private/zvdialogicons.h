// SPDX-License-Identifier: MIT
#ifndef ZVDIALOGICONS_H
#define ZVDIALOGICONS_H

#include <QString>

class QLabel;
class QWidget;

/// The picture beside a message, by the value of "dlgtype": a path in the folder "ico_zeva/" beside the executable.
/// Empty for a value without a picture. The file may be missing.
QString zvDialogIconPath(int dlgtype);

/// Shows the picture of a file, 32 by 32 with its own proportions.
QLabel *zvMakeDialogIcon(const QString &path, QWidget *parent);

#endif
