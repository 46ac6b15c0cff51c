// SPDX-License-Identifier: MIT
#ifndef DIALOGCOMMAND_H
#define DIALOGCOMMAND_H

#include "core/zveditor.h"

/// While it lives, a built-in command works by a dialog. In a script or macro that goes on behind the command, and
/// without a window, it stays the command-line form.
class DialogCommand
{
public:
    /// Needs the core started. \a name is that of a command; of the same name with "-" before it is the command-line
    /// form. \a extraFlags are added to the built-in command's.
    DialogCommand(const char *name, int extraFlags, ZvEdCommandFunction function);
    ~DialogCommand();
    DialogCommand(const DialogCommand &) = delete;
    DialogCommand &operator=(const DialogCommand &) = delete;

    /// Whether the running command is to ask a person; otherwise it has to run its command-line form.
    static bool isForPerson();
    static void runLineForm(const char *name);

private:
    const char *m_name;
    ZvEdCommand m_builtIn; // whose place the command takes
};

#endif
