// SPDX-License-Identifier: MIT
#ifndef ZVDENSEPIXMAP_H
#define ZVDENSEPIXMAP_H

#include <QPixmap>
#include <QString>

/// The picture for screens with more than one dot to a pixel: of the file with "@2x" before its ending, as Qt names
/// such files, scaled to twice the size, with a device pixel ratio of 2. Null without such a file and where no screen
/// needs it.
QPixmap zvDensePixmap(const QString &path, const QSize &size, Qt::AspectRatioMode aspect);

#endif
