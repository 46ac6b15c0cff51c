// SPDX-License-Identifier: MIT
#ifndef ZVCOLORTEXT_H
#define ZVCOLORTEXT_H

#include "base/zvcmcolor.h"

#include <QString>

/// Reads a colour text of the kernel: "BYLAYER" or "BYBLOCK" in any case, an index, "RGB:1,2,3", or a word, a blank and
/// an index, as well as the name of a numbered colour in the language of the host. False for anything else: \a color is
/// left alone then.
bool zvReadColorText(const QString &text, ZvCmEntityColor &color);

#endif
