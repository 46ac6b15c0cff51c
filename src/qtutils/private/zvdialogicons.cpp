// SPDX-License-Identifier: MIT
#include "private/zvdialogicons.h"

#include "private/zvdensepixmap.h"
#include "private/zvqtstring.h"

#include "utils/zvfiles.h"

#include <QLabel>
#include <QPixmap>

namespace {

struct IconFile
{
    int dlgtype;
    const char *file;
};

constexpr IconFile kIconFiles[] = {
    {32, "question.png"},
    {48, "information.png"},
    {64, "warning.png"},
    {80, "error.png"},
};

constexpr int kIconSize = 32;

} // namespace

QString zvDialogIconPath(int dlgtype)
{
    for (const IconFile &icon : kIconFiles) {
        if (icon.dlgtype == dlgtype)
            return zvToQString(zvutCombinePath(zvsiutGetExePath(), "ico_zeva/")) + QLatin1String(icon.file);
    }
    return QString();
}

QLabel *zvMakeDialogIcon(const QString &path, QWidget *parent)
{
    auto *icon = new QLabel(parent);
    const QSize size(kIconSize, kIconSize);
    const QPixmap dense = zvDensePixmap(path, size, Qt::KeepAspectRatio);
    icon->setPixmap(dense.isNull() ? QPixmap(path).scaled(size, Qt::KeepAspectRatio, Qt::FastTransformation) : dense);
    icon->setScaledContents(true);
    icon->setFixedSize(kIconSize, kIconSize);
    return icon;
}
