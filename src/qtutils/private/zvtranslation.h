// SPDX-License-Identifier: MIT
#ifndef ZVTRANSLATION_H
#define ZVTRANSLATION_H

#include "base/zvstring.h"

#include <QCoreApplication>
#include <QString>

#include <functional>
#include <vector>

class QComboBox;
class QWidget;

// The texts of the library in the language of the host. A text stands in the source as users read it while no
// translator is installed, and that text is its key in the catalogues; the context is the class that shows it. Texts
// that stand in tables are marked by QT_TRANSLATE_NOOP.
//
// Not translated are texts that drawings, callers or bags hold or compare: "ByLayer" and "ByBlock", "BYLAYER" and
// "BYBLOCK" of the colour tab, "RGB:1,2,3", object names, keys of places, macros, names of line weights as the facade
// hands them out, and all that a caller gives to a dialog. "Zevara", the caption of message boxes, is a name.

/// As the kernel takes it.
ZvString zvTranslated(const char *context, const char *source);

/// Calls \a retranslate each time the language changes while \a widget lives.
void zvOnLanguageChange(QWidget *widget, std::function<void()> retranslate);

/// Rows of \a combo that show one of these texts follow the language. Rows with names of the drawing stay.
void zvTranslateRows(QComboBox *combo, const char *context, std::vector<const char *> sources);

#endif
