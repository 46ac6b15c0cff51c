// SPDX-License-Identifier: MIT
#ifndef PAGESETUPS_H
#define PAGESETUPS_H

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QStringList>

#include <utility>
#include <vector>

/// Group codes of plot settings, with their values as they stand in a file.
using PlotSettings = QMap<int, QString>;

/// The file with named page set-ups, in the dictionary where programs look for them.
inline QByteArray withPageSetups(const QByteArray &dxf, const std::vector<std::pair<QString, PlotSettings>> &setups)
{
    constexpr int kFirstHandle = 0xF000;
    QStringList lines = QString::fromUtf8(dxf).split(QLatin1Char('\n'));
    const int entry = lines.indexOf(QStringLiteral("ACAD_PLOTSETTINGS"));
    const QString owner = lines[entry + 2].trimmed();
    QStringList entries;
    QStringList records;
    for (std::size_t i = 0; i < setups.size(); ++i) {
        const QString handle = QString::number(kFirstHandle + int(i), 16).toUpper();
        entries << QStringLiteral("  3") << setups[i].first << QStringLiteral("350") << handle;
        records << QStringLiteral("  0") << QStringLiteral("PLOTSETTINGS") << QStringLiteral("  5") << handle
                << QStringLiteral("330") << owner << QStringLiteral("100") << QStringLiteral("AcDbPlotSettings")
                << QStringLiteral("  1") << setups[i].first;
        for (auto it = setups[i].second.cbegin(); it != setups[i].second.cend(); ++it)
            records << QString::number(it.key()) << it.value();
    }
    for (int i = 0; i + 3 < lines.size(); i += 2) {
        const bool isDictionary = lines[i].trimmed() == QLatin1String("0")
            && lines[i + 1] == QLatin1String("DICTIONARY") && lines[i + 3].trimmed() == owner;
        if (!isDictionary)
            continue;
        int end = i + 2;
        while (lines[end].trimmed() != QLatin1String("0"))
            end += 2;
        return (lines.mid(0, end) + entries + records + lines.mid(end)).join(QLatin1Char('\n')).toUtf8();
    }
    return QByteArray();
}

#endif
