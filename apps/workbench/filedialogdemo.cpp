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

ZvJsonPtr openOne()
{
    return parameters(true, text("Open a file"),
                      {drawings(), text("Pictures (*.png *.jpg *.bmp *.gif *.tif)"), allFiles()});
}

ZvJsonPtr openSeveral()
{
    const ZvJsonPtr params = parameters(true, text("Open several files"), {drawings(), allFiles()});
    params->SetDataB("MutiFile", true);
    params->SetDataSW("defFilter", toZvString(allFiles()));
    return params;
}

/// Templates in the settings: without any there would be nowhere to go to.
std::shared_ptr<void> templateFolder()
{
    if (!zv_runtime_config("paths/templatePaths").isNull())
        return nullptr;
    zv_runtime_settings()->SetDataSW("paths/templatePaths", toZvString(QDir::homePath()));
    return std::shared_ptr<void>(nullptr,
                                 [](void *) { zv_runtime_settings()->SetDataJ("paths/templatePaths", nullptr); });
}

ZvJsonPtr openTemplate()
{
    return parameters(true, text("Open a template"), {drawings(), templates()});
}

ZvJsonPtr withoutPanes()
{
    const ZvJsonPtr params = parameters(true, text("Open a file"), {drawings(), allFiles()});
    params->SetDataB("HideExtend", true);
    return params;
}

ZvJsonPtr save()
{
    const ZvJsonPtr params = parameters(false, text("Save a file"),
                                        {text("Drawing exchange (*.dxf)"), text("Drawings (*.dwg)"), allFiles()});
    params->SetDataSW("saveDefName", toZvString(text("plan.old")));
    params->SetDataSW("defFilter", toZvString(text("Drawing exchange (*.dxf)")));
    return params;
}

ZvJsonPtr saveByIndex()
{
    const ZvJsonPtr params
        = parameters(false, text("Save a picture"), {text("PNG pictures (*.png)"), text("PDF documents (*.pdf)")});
    params->SetDataSW("dir", toZvString(QDir::current().filePath(text("plan.pdf"))));
    params->SetDataI("useFilterIdx", 1);
    return params;
}

ZvJsonPtr saveWithoutQuestion()
{
    const ZvJsonPtr params = parameters(false, text("Save over a file"), {drawings()});
    params->SetDataB("BoxHide", true);
    return params;
}

} // namespace

const QVector<DialogDemo> &fileDialogDemos()
{
    static const QVector<DialogDemo> demos = {
        {QStringLiteral("fileDialogOpen"), text("&Open a File"), "FileDialogBox", openOne},
        {QStringLiteral("fileDialogOpenSeveral"), text("Open S&everal Files"), "FileNavDialogBox", openSeveral},
        {QStringLiteral("fileDialogOpenTemplate"), text("Open a &Template"), "FileDialogBox", openTemplate,
         templateFolder},
        {QStringLiteral("fileDialogWithoutPanes"), text("Without &Places and Preview"), "FileDialogBox", withoutPanes},
        {QStringLiteral("fileDialogSave"), text("&Save a File"), "FileNavDialogBox", save},
        {QStringLiteral("fileDialogSaveByIndex"), text("Save with the Second &Filter"), "FileDialogBox", saveByIndex},
        {QStringLiteral("fileDialogSaveWithoutQuestion"), text("Save &Without a Question"), "FileDialogBox",
         saveWithoutQuestion},
    };
    return demos;
}
