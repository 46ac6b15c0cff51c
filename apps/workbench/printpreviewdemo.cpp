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

QString show(const ZvJsonPtr &params)
{
    return runCommonDialog("CADPreviewDialog", params, {});
}

QString currentLayout()
{
    ZvDbDatabase *database = curDatabase();
    return database ? show(previewParameters(*database, pageToPlot(*database)))
                    : text("There is no drawing to preview.");
}

QString emptySheet()
{
    ZvGiPage page;
    page.paperName = ZvString(L"A3");
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataJ("paper", zvgiPaperTree(page));
    params->SetDataO("refDC", zvsiMakeReferenceDevice(300));
    params->SetDataB("enable_print", true);
    return show(params);
}

QString deviceUnits()
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
    return show(params);
}

QString noPaper()
{
    return show(ElementValue::createObject(IElementValueBase::kObject));
}

} // namespace

const QVector<DialogDemo> &printPreviewDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("printPreviewLayout"), text("Current &Layout"), currentLayout},
        {QStringLiteral("printPreviewSheet"), text("&Empty Sheet"), emptySheet},
        {QStringLiteral("printPreviewDevice"), text("&Device Units"), deviceUnits},
        {QStringLiteral("printPreviewNoPaper"), text("&No Paper"), noPaper},
    };
    return demos;
}
