// SPDX-License-Identifier: MIT
#ifndef PSEUDOLANGUAGE_H
#define PSEUDOLANGUAGE_H

#include <QCoreApplication>
#include <QSet>
#include <QTranslator>

/// A language in which every text of the library stands between "‹" and "›" and is longer than in the source. It is the
/// language of the program for the life of the object, and remembers which texts Qt asked for on its own account.
class PseudoLanguage : public QTranslator
{
public:
    PseudoLanguage() { QCoreApplication::installTranslator(this); }
    ~PseudoLanguage() override { QCoreApplication::removeTranslator(this); }

    static QString of(const QString &source)
    {
        return QStringLiteral("‹") + source + QStringLiteral(" ····") + QStringLiteral("›");
    }
    static bool isTranslated(const QString &text) { return text.contains(QChar(0x2039)); }

    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        const QString text = QString::fromUtf8(source);
        const QByteArray of = context;
        const bool isOurs = of.isEmpty() || of.startsWith("Zv") || of.startsWith("Zeva");
        if (!isOurs) {
            texts.insert(text);
            return QString();
        }
        // The first is an object name, the second a number and its sign, which are read back.
        if (text == QLatin1String("ZvColorComboBox") || text == QLatin1String("%1%"))
            return text;
        return PseudoLanguage::of(text);
    }

    mutable QSet<QString> texts; ///< Qt's own.
};

#endif
