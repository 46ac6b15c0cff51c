// SPDX-License-Identifier: MIT
#ifndef QT_FILEDIALOG_FILTERS_H
#define QT_FILEDIALOG_FILTERS_H

#include <QString>

// Extensions as the file dialog reads them from the texts of its filters. All of them begin with the "." and are empty
// where there is none.

/// From the last "." to the last ")": ".abc" of "Drawings (*.dwg *.abc)". Empty when the ")" is missing or comes first.
QString zvFilterSuffix(const QString &filter);
/// From the last "." to the last character, which is taken for the parenthesis whatever it is.
QString zvFilterSuffixToEnd(const QString &filter);
/// From the last "." of a file name.
QString zvNameSuffix(const QString &name);

#endif
