// SPDX-License-Identifier: MIT
#include "private/zvdensepixmap.h"

#include <QFileInfo>
#include <QGuiApplication>

QPixmap zvDensePixmap(const QString &path, const QSize &size, Qt::AspectRatioMode aspect)
{
    constexpr int kRatio = 2;
    if (!qGuiApp || !(qGuiApp->devicePixelRatio() > 1.0))
        return QPixmap();
    QString dense = path;
    const int ending = QFileInfo(path).suffix().size();
    dense.insert(path.size() - (ending > 0 ? ending + 1 : 0), QStringLiteral("@2x"));
    QPixmap pixmap(dense);
    if (pixmap.isNull())
        return pixmap;
    pixmap = pixmap.scaled(size * kRatio, aspect, Qt::FastTransformation);
    pixmap.setDevicePixelRatio(kRatio);
    return pixmap;
}
