// SPDX-License-Identifier: MIT
#include "gi_images.h"

#include <QImageReader>

#include <algorithm>

namespace {
constexpr qint64 kMaxBytes = 256 << 20;
constexpr int kMinSide = 64;
} // namespace

QImage GiImages::image(const ZvString &path, int maxSide)
{
    const QString file = QString::fromWCharArray(path.wstr(), path.length());
    const auto side = [](const QSize &size) { return std::max(size.width(), size.height()); };
    const auto found = m_images.constFind(file);
    if (found != m_images.constEnd()) {
        const bool isEnough
            = found->image.isNull() || found->image.size() == found->fullSize || side(found->image.size()) >= maxSide;
        if (isEnough)
            return found->image;
    }
    if (m_bytes > kMaxBytes) {
        m_images.clear();
        m_bytes = 0;
    }
    QImageReader reader(file);
    Kept kept;
    kept.fullSize = reader.size();
    const int wanted = std::max(maxSide, kMinSide);
    if (kept.fullSize.isValid() && side(kept.fullSize) > wanted)
        reader.setScaledSize(kept.fullSize.scaled(wanted, wanted, Qt::KeepAspectRatio));
    kept.image = reader.read();
    m_bytes += kept.image.sizeInBytes();
    m_images.insert(file, kept);
    return kept.image;
}
