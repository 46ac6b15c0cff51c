// SPDX-License-Identifier: MIT
#ifndef LANGUAGE_H
#define LANGUAGE_H

#include <QString>

class QCoreApplication;

/// Shows the texts of the library in \a language, such as "en", from the folder "translations" beside the program, and
/// Qt's own as far as Qt has them. To be called before the first dialog or control is made. What went wrong, in one
/// line; empty when all is well, as for an empty language, which leaves all as it is.
QString useLanguage(QCoreApplication &application, const QString &language);

#endif
