// SPDX-License-Identifier: MIT
#include "private/zvcolornames.h"

#include <QCoreApplication>

namespace {

constexpr int kFirst = 1;
constexpr int kCount = 7;

constexpr char kContext[] = "ZvColorNames";
constexpr const char *kNames[kCount] = {
    QT_TRANSLATE_NOOP("ZvColorNames", "红"), QT_TRANSLATE_NOOP("ZvColorNames", "黄"),
    QT_TRANSLATE_NOOP("ZvColorNames", "绿"), QT_TRANSLATE_NOOP("ZvColorNames", "青"),
    QT_TRANSLATE_NOOP("ZvColorNames", "蓝"), QT_TRANSLATE_NOOP("ZvColorNames", "洋红"),
    QT_TRANSLATE_NOOP("ZvColorNames", "白"),
};

/// With the index in the place of "%1".
QString numberedPattern()
{
    return QCoreApplication::translate("ZvColorNames", "颜色 %1");
}

} // namespace

QString zvColorName(int index)
{
    const bool hasName = index >= kFirst && index < kFirst + kCount;
    return hasName ? QCoreApplication::translate(kContext, kNames[index - kFirst]) : QString();
}

int zvColorOfName(const QString &name)
{
    for (int index = kFirst; index < kFirst + kCount; ++index) {
        if (name == zvColorName(index) || name == QString::fromUtf8(kNames[index - kFirst]))
            return index;
    }
    return 0;
}

QString zvBlackName()
{
    return QCoreApplication::translate("ZvColorNames", "黑");
}

QString zvNumberedColorName(int index)
{
    return numberedPattern().arg(index);
}

QString zvNumberOfColorName(const QString &name)
{
    const QString pattern = numberedPattern();
    const QString place = QStringLiteral("%1");
    const int before = pattern.indexOf(place);
    if (before < 0)
        return QString();
    const QString after = pattern.mid(before + place.size());
    const bool fits = name.size() > pattern.size() - place.size() && name.startsWith(pattern.leftRef(before))
        && name.endsWith(after);
    return fits ? name.mid(before, name.size() - before - after.size()) : QString();
}
