// SPDX-License-Identifier: MIT
#include "private/zvcolornames.h"

namespace {

constexpr int kFirst = 1;
constexpr int kCount = 7;

const QString &nameAt(int position)
{
    static const QString names[kCount]
        = {QStringLiteral("红"), QStringLiteral("黄"),   QStringLiteral("绿"), QStringLiteral("青"),
           QStringLiteral("蓝"), QStringLiteral("洋红"), QStringLiteral("白")};
    return names[position];
}

} // namespace

QString zvColorName(int index)
{
    const bool hasName = index >= kFirst && index < kFirst + kCount;
    return hasName ? nameAt(index - kFirst) : QString();
}

int zvColorOfName(const QString &name)
{
    for (int index = kFirst; index < kFirst + kCount; ++index) {
        if (name == zvColorName(index))
            return index;
    }
    return 0;
}
