// SPDX-License-Identifier: MIT
#include "colorcommand.h"

#include "base/zvcmcolor.h"
#include "core/zvapdocument.h"
#include "core/zvui.h"
#include "zvodasetting.h"

#include <QWidget>

namespace {

const char *const kGroup = "WORKBENCH";
const char *const kName = "COLOR";
const char *const kLineForm = "_-COLOR";
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
    auto *window = static_cast<QWidget *>(zvuiMainWindow());
    ZvDbDatabase *database = curDatabase();
    if (zvedQueueHasInput() || !window || !window->isVisible()) {
        const ZvEdCommandStack *stack = zvedCommandStack();
        if (const ZvEdCommand *command = stack->lookUp(kLineForm))
            command->function();
        return;
    }
    ZvCmColor color = database->cecolor();
    if (askColor(color, window))
        database->setCecolor(color);
}

} // namespace

ColorCommand::ColorCommand()
{
    ZvEdCommandStack *stack = zvedCommandStack();
    const ZvEdCommand *builtIn = stack->lookUp(kName);
    if (builtIn) {
        m_builtIn = *builtIn;
        stack->removeCmd(m_builtIn.group, m_builtIn.globalName);
    }
    stack->addCommand(kGroup, kName, kName, m_builtIn.flags, runColor, nullptr, -1, ZvRxResourceInstance(nullptr), 0);
}

ColorCommand::~ColorCommand()
{
    ZvEdCommandStack *stack = zvedCommandStack();
    stack->removeCmd(kGroup, kName);
    if (m_builtIn.function)
        stack->addCommand(m_builtIn.group, m_builtIn.globalName, m_builtIn.localName, m_builtIn.flags,
                          m_builtIn.function, m_builtIn.context, m_builtIn.code, ZvRxResourceInstance(nullptr), 0);
}
