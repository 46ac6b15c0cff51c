// SPDX-License-Identifier: MIT
#include "filequestions.h"

#include "core/zvapdocument.h"
#include "core/zvui.h"
#include "mainwindow.h"
#include "textforms.h"

#include <QDir>
#include <QFileInfo>

namespace {

ZvJsonPtr ask(bool opens, const QString &caption, const QString &dir, const QString &filter)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataB("Open", opens);
    params->SetDataSW("caption", toZvString(caption));
    params->SetDataSW("dir", toZvString(dir));
    params->SetDataSW("filter", toZvString(filter));
    return zvuiShowModelDialogEx("Dialog/Common", "FileDialogBox", params, nullptr, zvuiMainWindow());
}

} // namespace

QString askFileToOpen(const QString &caption, const QString &dir, const QString &filter)
{
    const ZvJsonPtr result = ask(true, caption, dir, filter);
    ZvString path;
    if (result)
        result->GetDataSW("filePaths/0/path", path);
    return toQString(path);
}

QString askFileToSave(const QString &caption, const QString &dir, const QString &filter)
{
    const ZvJsonPtr result = ask(false, caption, dir, filter);
    ZvString path;
    if (result)
        result->GetDataSW("filePath", path);
    return toQString(path);
}

QString pathBeside(const ZvApDocument &document)
{
    const QFileInfo file(toQString(document.fileName()));
    if (!file.fileName().isEmpty())
        return file.path() + QLatin1Char('/') + file.completeBaseName();
    const auto *window = qobject_cast<MainWindow *>(static_cast<QWidget *>(zvuiMainWindow()));
    return QDir(window ? window->lastFolder() : QString()).filePath(toQString(document.title()));
}
