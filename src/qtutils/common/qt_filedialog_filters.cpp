// SPDX-License-Identifier: MIT
#include "common/qt_filedialog_filters.h"

QString zvFilterSuffix(const QString &filter)
{
    const int dot = filter.lastIndexOf(QLatin1Char('.'));
    const int parenthesis = filter.lastIndexOf(QLatin1Char(')'));
    return dot >= 0 && dot < parenthesis ? filter.mid(dot, parenthesis - dot) : QString();
}

QString zvFilterSuffixToEnd(const QString &filter)
{
    const int dot = filter.lastIndexOf(QLatin1Char('.'));
    return dot >= 0 ? filter.mid(dot, filter.size() - 1 - dot) : QString();
}

QString zvNameSuffix(const QString &name)
{
    const int dot = name.lastIndexOf(QLatin1Char('.'));
    return dot >= 0 ? name.mid(dot) : QString();
}
