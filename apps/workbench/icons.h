// SPDX-License-Identifier: MIT
#ifndef ICONS_H
#define ICONS_H

#include <QIcon>
#include <QString>
#include <QStringList>

/// Icons that the workbench draws at run time, sharp at every size and density.
namespace Icons {
/// An empty icon for an unknown name.
QIcon icon(const QString &name);
QStringList names();
/// The program's own icon.
QIcon application();
} // namespace Icons

#endif
