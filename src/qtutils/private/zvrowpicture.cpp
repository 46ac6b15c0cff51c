// SPDX-License-Identifier: MIT
#include "private/zvrowpicture.h"

#include "qt_utils.h"

#include <QComboBox>
#include <QResizeEvent>

#include <algorithm>

void zvResetRowPictures(QComboBox &combo, int &width, int &height)
{
    width = kZvRowPictureSize.width();
    height = kZvRowPictureSize.height();
    combo.setIconSize(kZvRowPictureSize);
}

void zvFitRowPictures(QComboBox &combo, const QResizeEvent &event, bool &sized, int &width, int &height)
{
    if (sized || event.size() == event.oldSize())
        return;
    sized = true;
    const ZvQtBlockSignalUtil block(&combo);
    if (combo.width() >= 1 && combo.width() < width)
        width = int(combo.width() * 0.5);
    if (combo.height() > 0)
        height = combo.height();
    width = std::max(width, kZvRowPictureSize.width());
    height = std::max(height, kZvRowPictureSize.height());
    combo.setIconSize(QSize(width, height));
}
