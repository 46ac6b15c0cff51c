// SPDX-License-Identifier: MIT
#ifndef ZVCOLORCHOICE_H
#define ZVCOLORCHOICE_H

#include "base/zvcmcolor.h"
#include "base/zvjson.h"

#include <cstdint>

class QWidget;

// What the controls that open the colour dialog share.

/// A colour in the dialog's terms: method, and index or packed colour.
struct ZvColorChoice
{
    int method = ZvCm::kByLayer;
    std::uint32_t value = 0;
};

/// By layer, by block and by index as an index, everything else as a packed colour: by its red, green and blue, or by
/// the bytes of the word.
template <class Color> ZvColorChoice zvColorChoiceOf(const Color &color);

/// Parameters of a dialog that shows this colour.
ZvJsonPtr zvColorDialogParams(const ZvColorChoice &shown);
/// Forbids by layer and by block.
void zvForbidByLayerAndBlock(const ZvJsonPtr &params);

/// Runs the dialog before \a parent. False when it was cancelled or could not be made: \a chosen is left alone then.
bool zvRunColorDialog(const ZvJsonPtr &params, QWidget *parent, ZvColorChoice &chosen);

#endif
