// SPDX-License-Identifier: MIT
#ifndef COLORCOMMAND_H
#define COLORCOMMAND_H

#include "dialogcommand.h"

/// While it lives, COLOR sets the current colour by the colour dialog.
class ColorCommand : public DialogCommand
{
public:
    ColorCommand();
};

#endif
