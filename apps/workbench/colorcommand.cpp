// SPDX-License-Identifier: MIT
#include "colorcommand.h"

#include "base/zvcmcolor.h"
#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvui.h"
#include "zvodasetting.h"

#include <QWidget>

namespace {

const char *const kName = "COLOR";
constexpr int kAccepted = 1;

int packed(const ZvCmColor &color)
{
    return color.red() | color.green() << 8 | color.blue() << 16;
}

bool askColor(ZvCmColor &color, QWidget *parent)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataI("clrMethod", color.colorMethod());
    params->SetDataI("selectClr", color.isByColor() ? packed(color) : color.colorIndex());
    ZvCmColor layerColor;
    if (ZevaUISetting::getCurrentLayerColor(layerColor) == Zv::eOk)
        params->SetDataI("layerClr", packed(layerColor));
    const ZvJsonPtr answer = zvuiShowModelDialogEx("Dialog/Common", "ColorDialog", params, nullptr, parent);
    int result = 0;
    int method = 0;
    int value = 0;
    if (answer.isNull() || !answer->GetDataI("result", result) || result != kAccepted
        || !params->GetDataI("clrMethod", method) || !params->GetDataI("selectClr", value))
        return false;
    if (method == ZvCm::kByColor)
        color.setRGB(std::uint8_t(value), std::uint8_t(value >> 8), std::uint8_t(value >> 16));
    else if (method == ZvCm::kByACI)
        color.setColorIndex(std::uint16_t(value));
    else
        color.setColorMethod(ZvCm::ColorMethod(method));
    return true;
}

void runColor()
{
    if (!DialogCommand::isForPerson()) {
        DialogCommand::runLineForm(kName);
        return;
    }
    ZvDbDatabase *database = curDatabase();
    ZvCmColor color = database->cecolor();
    if (askColor(color, static_cast<QWidget *>(zvuiMainWindow())))
        database->setCecolor(color);
}

} // namespace

ColorCommand::ColorCommand() : DialogCommand(kName, 0, runColor) { }
