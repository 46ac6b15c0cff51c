// SPDX-License-Identifier: MIT
#ifndef ZVCOLORNAMES_H
#define ZVCOLORNAMES_H

#include <QString>

// Names of the first seven colour indices, as the user reads and types them.

/// Empty for an index that has no name.
QString zvColorName(int index);
/// The index, 1 to 7; 0 for a text that is no name. Case counts.
int zvColorOfName(const QString &name);

#endif
