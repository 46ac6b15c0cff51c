// SPDX-License-Identifier: MIT
#include "colordialogdemo.h"

#include "base/zvcmcolor.h"

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

ZvJsonPtr index()
{
    return parameters(ZvCm::kByACI, 30);
}

ZvJsonPtr trueColor()
{
    return parameters(ZvCm::kByColor, packed(24, 118, 210));
}

ZvJsonPtr byLayer()
{
    const ZvJsonPtr params = parameters(ZvCm::kByLayer, ZvCm::kACIbyLayer);
    params->SetDataI("layerClr", packed(0, 160, 80));
    return params;
}

ZvJsonPtr byBlock()
{
    return parameters(ZvCm::kByBlock, ZvCm::kACIbyBlock);
}

ZvJsonPtr indexTabOnly()
{
    const ZvJsonPtr params = parameters(ZvCm::kByACI, 1);
    params->SetDataI("tabs", kIndexTabOnly);
    return params;
}

ZvJsonPtr withoutReferences()
{
    const ZvJsonPtr params = parameters(ZvCm::kByACI, 3);
    params->SetDataB("isByLayerEnable", false);
    params->SetDataB("isByBLockEnable", false);
    return params;
}

ZvJsonPtr lightBackground()
{
    const ZvJsonPtr params = parameters(ZvCm::kByACI, 7);
    params->SetDataI("backgroundColor", kLightBackground);
    return params;
}

} // namespace

const QVector<DialogDemo> &colorDialogDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("colorDialogIndex"), text("&Index Colour"), "ColorDialog", index},
        {QStringLiteral("colorDialogTrueColor"), text("&True Colour"), "ColorDialog", trueColor},
        {QStringLiteral("colorDialogByLayer"), text("By &Layer"), "ColorDialog", byLayer},
        {QStringLiteral("colorDialogByBlock"), text("By &Block"), "ColorDialog", byBlock},
        {QStringLiteral("colorDialogIndexTab"), text("Index Tab &Only"), "ColorDialog", indexTabOnly},
        {QStringLiteral("colorDialogWithoutReferences"), text("&Without By Layer and By Block"), "ColorDialog",
         withoutReferences},
        {QStringLiteral("colorDialogLight"), text("On a Light &Ground"), "ColorDialog", lightBackground},
    };
    return demos;
}
