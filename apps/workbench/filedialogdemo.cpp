// SPDX-License-Identifier: MIT
#include "filedialogdemo.h"

#include "base/zvconfig.h"
#include "textforms.h"

#include <QCoreApplication>
#include <QDir>

namespace {

QString text(const char *english)
{
    return QCoreApplication::translate("FileDialogDemo", english);
}

QString drawings()
{
    return text("Drawings (*.dwg *.dxf)");
}

QString templates()
{
    return text("Templates (*.dwt)");
}

QString allFiles()
{
    return text("All files (*.*)");
}

ZvJsonPtr parameters(bool opens, const QString &caption, const QStringList &filters)
{
    ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataB("Open", opens);
    params->SetDataSW("caption", toZvString(caption));
    params->SetDataSW("dir", toZvString(QDir::currentPath()));
    params->SetDataSW("filter", toZvString(filters.join(QStringLiteral(";;"))));
    return params;
}

/// Shows the dialog and tells what it gave back.
QString show(const ZvJsonPtr &params, const char *name = "FileDialogBox")
{
    return runCommonDialog(name, params, {});
}

QString openOne()
{
    return show(parameters(true, text("Open a file"),
                           {drawings(), text("Pictures (*.png *.jpg *.bmp *.gif *.tif)"), allFiles()}));
}

QString openSeveral()
{
    const ZvJsonPtr params = parameters(true, text("Open several files"), {drawings(), allFiles()});
    params->SetDataB("MutiFile", true);
    params->SetDataSW("defFilter", toZvString(allFiles()));
    return show(params, "FileNavDialogBox");
}

QString openTemplate()
{
    // Without templates in the settings there would be nowhere to go to.
    const bool hasTemplates = !zv_runtime_config("paths/templatePaths").isNull();
    if (!hasTemplates)
        zv_runtime_settings()->SetDataSW("paths/templatePaths", toZvString(QDir::homePath()));
    const QString line = show(parameters(true, text("Open a template"), {drawings(), templates()}));
    if (!hasTemplates)
        zv_runtime_settings()->SetDataJ("paths/templatePaths", nullptr);
    return line;
}

QString withoutPanes()
{
    const ZvJsonPtr params = parameters(true, text("Open a file"), {drawings(), allFiles()});
    params->SetDataB("HideExtend", true);
    return show(params);
}

QString save()
{
    const ZvJsonPtr params = parameters(false, text("Save a file"),
                                        {text("Drawing exchange (*.dxf)"), text("Drawings (*.dwg)"), allFiles()});
    params->SetDataSW("saveDefName", toZvString(text("plan.old")));
    params->SetDataSW("defFilter", toZvString(text("Drawing exchange (*.dxf)")));
    return show(params, "FileNavDialogBox");
}

QString saveByIndex()
{
    const ZvJsonPtr params
        = parameters(false, text("Save a picture"), {text("PNG pictures (*.png)"), text("PDF documents (*.pdf)")});
    params->SetDataSW("dir", toZvString(QDir::current().filePath(text("plan.pdf"))));
    params->SetDataI("useFilterIdx", 1);
    return show(params);
}

QString saveWithoutQuestion()
{
    const ZvJsonPtr params = parameters(false, text("Save over a file"), {drawings()});
    params->SetDataB("BoxHide", true);
    return show(params);
}

} // namespace

const QVector<DialogDemo> &fileDialogDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("fileDialogOpen"), text("&Open a File"), openOne},
        {QStringLiteral("fileDialogOpenSeveral"), text("Open S&everal Files"), openSeveral},
        {QStringLiteral("fileDialogOpenTemplate"), text("Open a &Template"), openTemplate},
        {QStringLiteral("fileDialogWithoutPanes"), text("Without &Places and Preview"), withoutPanes},
        {QStringLiteral("fileDialogSave"), text("&Save a File"), save},
        {QStringLiteral("fileDialogSaveByIndex"), text("Save with the Second &Filter"), saveByIndex},
        {QStringLiteral("fileDialogSaveWithoutQuestion"), text("Save &Without a Question"), saveWithoutQuestion},
    };
    return demos;
}
