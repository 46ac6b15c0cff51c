// SPDX-License-Identifier: MIT
#include "private/zvcolornames.h"

namespace {

constexpr int kFirst = 1;
constexpr int kCount = 7;
constexpr const char *kNames[kCount] = {"红", "黄", "绿", "青", "蓝", "洋红", "白"};

} // namespace

QString zvColorName(int index)
{
    const bool hasName = index >= kFirst && index < kFirst + kCount;
    return hasName ? QString::fromUtf8(kNames[index - kFirst]) : QString();
}

int zvColorOfName(const QString &name)
{
    for (int index = kFirst; index < kFirst + kCount; ++index) {
        if (name == zvColorName(index))
            return index;
    }
    return 0;
}
