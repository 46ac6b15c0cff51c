// SPDX-License-Identifier: MIT
#ifndef GI_IMAGES_H
#define GI_IMAGES_H

#include "base/zvstring.h"

#include <QHash>
#include <QImage>
#include <QString>

/// Picture files that drawings refer to, kept within a bound of memory.
class GiImages
{
public:
    /// Null where the file cannot be read. \a maxSide is the number of pixels that is worth having on the longer side.
    QImage image(const ZvString &path, int maxSide);

private:
    struct Kept
    {
        QImage image;
        QSize fullSize;
    };
    QHash<QString, Kept> m_images;
    qint64 m_bytes = 0;
};

#endif
