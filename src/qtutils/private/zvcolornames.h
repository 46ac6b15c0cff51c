// SPDX-License-Identifier: MIT
#ifndef ZVCOLORNAMES_H
#define ZVCOLORNAMES_H

#include <QString>

// Names of colour indices in the language of the host, as the user reads and types them.

/// Empty for an index that has no name.
QString zvColorName(int index);
/// The index, 1 to 7; 0 for a text that is no name. Case counts. The names that stand in the source are names in every
/// language: callers have them in their parameters.
int zvColorOfName(const QString &name);

/// Of the colour 7 where it is black.
QString zvBlackName();
/// Of an index without a name of its own: a word and the index.
QString zvNumberedColorName(int index);
/// What stands in the index's place; null for a text of another form.
QString zvNumberOfColorName(const QString &name);

#endif
