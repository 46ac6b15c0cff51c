// SPDX-License-Identifier: MIT
#include "colordialogdemo.h"

#include "base/zvcmcolor.h"
#include "core/zvui.h"
#include "textforms.h"

#include <QCoreApplication>

namespace {

constexpr int kIndexTabOnly = 1;
constexpr int kLightBackground = int(0xFFFFFFFF);

QString text(const char *english)
{
    return QCoreApplication::translate("ColorDialogDemo", english);
}

constexpr int packed(int red, int green, int blue)
{
    return red | green << 8 | blue << 16;
}

ZvJsonPtr parameters(int method, int value)
{
    ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataI("clrMethod", method);
    params->SetDataI("selectClr", value);
    return params;
}

/// Shows the dialog and tells result code and colour.
QString show(const ZvJsonPtr &params)
{
    const ZvJsonPtr result = zvuiShowModelDialogEx("Dialog/Common", "ColorDialog", params, nullptr, zvuiMainWindow());
    int method = 0;
    int value = 0;
    params->GetDataI("clrMethod", method);
    params->GetDataI("selectClr", value);
    return QStringLiteral("ColorDialog: %1 clrMethod=%2 selectClr=%3").arg(bagText(result)).arg(method).arg(value);
}

QString index()
{
    return show(parameters(ZvCm::kByACI, 30));
}

QString trueColor()
{
    return show(parameters(ZvCm::kByColor, packed(24, 118, 210)));
}

QString byLayer()
{
    const ZvJsonPtr params = parameters(ZvCm::kByLayer, ZvCm::kACIbyLayer);
    params->SetDataI("layerClr", packed(0, 160, 80));
    return show(params);
}

QString byBlock()
{
    return show(parameters(ZvCm::kByBlock, ZvCm::kACIbyBlock));
}

QString indexTabOnly()
{
    const ZvJsonPtr params = parameters(ZvCm::kByACI, 1);
    params->SetDataI("tabs", kIndexTabOnly);
    return show(params);
}

QString withoutReferences()
{
    const ZvJsonPtr params = parameters(ZvCm::kByACI, 3);
    params->SetDataB("isByLayerEnable", false);
    params->SetDataB("isByBLockEnable", false);
    return show(params);
}

QString lightBackground()
{
    const ZvJsonPtr params = parameters(ZvCm::kByACI, 7);
    params->SetDataI("backgroundColor", kLightBackground);
    return show(params);
}

} // namespace

const QVector<DialogDemo> &colorDialogDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("colorDialogIndex"), text("&Index Colour"), index},
        {QStringLiteral("colorDialogTrueColor"), text("&True Colour"), trueColor},
        {QStringLiteral("colorDialogByLayer"), text("By &Layer"), byLayer},
        {QStringLiteral("colorDialogByBlock"), text("By &Block"), byBlock},
        {QStringLiteral("colorDialogIndexTab"), text("Index Tab &Only"), indexTabOnly},
        {QStringLiteral("colorDialogWithoutReferences"), text("&Without By Layer and By Block"), withoutReferences},
        {QStringLiteral("colorDialogLight"), text("On a Light &Ground"), lightBackground},
    };
    return demos;
}
