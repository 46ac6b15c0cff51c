// SPDX-License-Identifier: MIT
#include "printpreviewdemo.h"

#include "core/zvapdocument.h"
#include "plotcommand.h"
#include "utils/zvpage.h"

#include <QCoreApplication>

namespace {

constexpr int kDeviceUnits = 2;

QString text(const char *english)
{
    return QCoreApplication::translate("PrintPreviewDemo", english);
}

ZvJsonPtr currentLayout()
{
    ZvDbDatabase *database = curDatabase();
    return database ? previewParameters(*database, pageToPlot(*database)) : ZvJsonPtr();
}

ZvJsonPtr emptySheet()
{
    ZvGiPage page;
    page.paperName = ZvString(L"A3");
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataJ("paper", zvgiPaperTree(page));
    params->SetDataO("refDC", zvsiMakeReferenceDevice(300));
    params->SetDataB("enable_print", true);
    return params;
}

ZvJsonPtr deviceUnits()
{
    ZvGiPage page;
    page.width = 1600;
    page.height = 1200;
    page.marginLeft = page.marginRight = page.marginTop = page.marginBottom = 50;
    const ZvJsonPtr paper = zvgiPaperTree(page);
    paper->SetDataI("paper_unit", kDeviceUnits);
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataJ("paper", paper);
    params->SetDataO("refDC", zvsiMakeReferenceDevice(96));
    return params;
}

ZvJsonPtr noPaper()
{
    return ElementValue::createObject(IElementValueBase::kObject);
}

} // namespace

const QVector<DialogDemo> &printPreviewDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("printPreviewLayout"), text("Current &Layout"), "CADPreviewDialog", currentLayout},
        {QStringLiteral("printPreviewSheet"), text("&Empty Sheet"), "CADPreviewDialog", emptySheet},
        {QStringLiteral("printPreviewDevice"), text("&Device Units"), "CADPreviewDialog", deviceUnits},
        {QStringLiteral("printPreviewNoPaper"), text("&No Paper"), "CADPreviewDialog", noPaper},
    };
    return demos;
}
