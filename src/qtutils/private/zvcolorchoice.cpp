// SPDX-License-Identifier: MIT
#include "private/zvcolorchoice.h"

#include "private/zvbagreader.h"
#include "private/zvcolorkeys.h"
#include "private/zvqtcolor.h"
#include "zevaqt.h"

#include "core/zvui.h"

namespace {

std::uint32_t packed(const ZvCmColor &color)
{
    return zvToPacked(color);
}

/// Of a word the bytes as they stand: one by pen, which says nothing of a colour, is shown by them in the lists too.
std::uint32_t packed(const ZvCmEntityColor &color)
{
    const QRgb word = color.color();
    return zvPackRgb(qRed(word), qGreen(word), qBlue(word));
}

} // namespace

template <class Color> ZvColorChoice zvColorChoiceOf(const Color &color)
{
    switch (color.colorMethod()) {
    case ZvCm::kByLayer:
    case ZvCm::kByBlock:
    case ZvCm::kByACI:
        return {color.colorMethod(), color.colorIndex()};
    default:
        return {color.colorMethod(), packed(color)};
    }
}

template ZvColorChoice zvColorChoiceOf(const ZvCmColor &color);
template ZvColorChoice zvColorChoiceOf(const ZvCmEntityColor &color);

ZvJsonPtr zvColorDialogParams(const ZvColorChoice &shown)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataI(kClrMethodKey, shown.method);
    params->SetDataI(kSelectClrKey, int(shown.value));
    return params;
}

void zvForbidByLayerAndBlock(const ZvJsonPtr &params)
{
    params->SetDataB(kIsByLayerEnableKey, false);
    params->SetDataB(kIsByBlockEnableKey, false);
}

bool zvRunColorDialog(const ZvJsonPtr &params, QWidget *parent, ZvColorChoice &chosen)
{
    const ZvJsonPtr result = zvuiShowModelDialogEx(L"Dialog/Common", L"ColorDialog", params, nullptr, parent);
    if (zvBagInt(result, "result", 0) != kDialogAccepted)
        return false;
    chosen.method = zvBagInt(params, kClrMethodKey, ZvCm::kByLayer);
    chosen.value = std::uint32_t(zvBagInt(params, kSelectClrKey, 0));
    return true;
}
