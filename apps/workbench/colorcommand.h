// SPDX-License-Identifier: MIT
#ifndef COLORCOMMAND_H
#define COLORCOMMAND_H

#include "core/zveditor.h"

/// While it lives, COLOR sets the current colour by the colour dialog. In a script or macro that gives the colour, and
/// without a window, it stays the command-line form, which -COLOR is in any case.
class ColorCommand
{
public:
    /// Needs the core started.
    ColorCommand();
    ~ColorCommand();
    ColorCommand(const ColorCommand &) = delete;
    ColorCommand &operator=(const ColorCommand &) = delete;

private:
    ZvEdCommand m_builtIn; // whose place the command takes
};

#endif
