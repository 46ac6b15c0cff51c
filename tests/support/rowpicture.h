// SPDX-License-Identifier: MIT
#ifndef ROWPICTURE_H
#define ROWPICTURE_H

#include "pictures.h"
#include "qt_utils.h"

#include <QComboBox>
#include <QIcon>
#include <QTest>

/// Compares a row's icon, 16 by 16 pixels, with the picture at this path among the resources; null for no icon.
inline void compareRowPicture(const QComboBox &combo, int row, const char *path)
{
    const QIcon icon = combo.itemIcon(row);
    QCOMPARE(icon.isNull(), !path);
    if (!path)
        return;
    QCOMPARE(icon.actualSize(QSize(64, 64)), QSize(16, 16));
    const QIcon expected = zvsiQtCreateIcon(QLatin1String(path), false, 16, 16);
    COMPARE_PICTURES(icon.pixmap(16, 16).toImage(), expected.pixmap(16, 16).toImage());
}

#endif
