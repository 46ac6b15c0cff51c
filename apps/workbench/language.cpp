// SPDX-License-Identifier: MIT
#include "language.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace {

/// Owned by the application once it is installed.
bool installCatalogue(QCoreApplication &application, const QLocale &locale, const QString &name, const QString &folder)
{
    auto *translator = new QTranslator(&application);
    if (translator->load(locale, name, QStringLiteral("_"), folder) && QCoreApplication::installTranslator(translator))
        return true;
    delete translator;
    return false;
}

} // namespace

QString useLanguage(QCoreApplication &application, const QString &language)
{
    if (language.isEmpty())
        return QString();
    const QLocale locale(language);
    const QString folder = QCoreApplication::applicationDirPath() + QLatin1String("/translations");
    const bool isKnown = locale.language() != QLocale::C; // which stands for what is no language
    const bool isSource = locale.language() == QLocale::Chinese;
    if (!isKnown || (!isSource && !installCatalogue(application, locale, QStringLiteral("zevaqt"), folder)))
        return QStringLiteral("There are no texts in the language \"%1\".").arg(language);
    installCatalogue(application, locale, QStringLiteral("qtbase"),
                     QLibraryInfo::location(QLibraryInfo::TranslationsPath));
    return QString();
}
