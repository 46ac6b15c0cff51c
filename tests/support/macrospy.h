// SPDX-License-Identifier: MIT
#ifndef MACROSPY_H
#define MACROSPY_H

#include "core/zveditor.h"

#include <QStringList>

#include <dlfcn.h>

// What the library sends to the command processor, to the letter. The program's own zvedMenuMacro() and
// zvedRestorePreviousUCS() stand before the kernel's, note the call and pass it on. To be included by one source of a
// program.

namespace MacroSpy {

/// Macros as "text|argument", "previous" for a call of zvedRestorePreviousUCS().
inline QStringList &calls()
{
    static QStringList calls;
    return calls;
}

inline QStringList take()
{
    QStringList taken;
    taken.swap(calls());
    return taken;
}

/// What the kernel sends on its own is none of the library's calls.
inline bool isInKernel = false;

template <class Function> Function next(const char *symbol)
{
    void *found = dlsym(RTLD_NEXT, symbol);
    Q_ASSERT_X(found, "MacroSpy", symbol);
    return reinterpret_cast<Function>(found);
}

} // namespace MacroSpy

int zvedMenuMacro(const ZvString &macro, bool resume)
{
    if (!MacroSpy::isInKernel)
        MacroSpy::calls() << QString::fromUtf8(macro.toUtf8().c_str()) + QLatin1String(resume ? "|true" : "|false");
    return MacroSpy::next<int (*)(const ZvString &, bool)>("_Z13zvedMenuMacroRK8ZvStringb")(macro, resume);
}

void zvedRestorePreviousUCS()
{
    MacroSpy::calls() << QStringLiteral("previous");
    MacroSpy::isInKernel = true;
    MacroSpy::next<void (*)()>("_Z22zvedRestorePreviousUCSv")();
    MacroSpy::isInKernel = false;
}

#endif
