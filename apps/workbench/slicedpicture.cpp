// SPDX-License-Identifier: MIT
#include "slicedpicture.h"

#include <QPainter>
#include <QtMath>

#include <cmath>

SlicedPicture::Sheet SlicedPicture::makeSheet(const ViewCamera &camera) const
{
    Sheet sheet;
    const QSize size(qMax(1, qCeil(camera.size().width() * m_pixelRatio)),
                     qMax(1, qCeil(camera.size().height() * m_pixelRatio)));
    sheet.image = QImage(size, QImage::Format_ARGB32_Premultiplied);
    sheet.image.setDevicePixelRatio(m_pixelRatio);
    sheet.camera = camera;
    sheet.missing = QRect(QPoint(), size);
    paintGround(sheet, sheet.missing);
    return sheet;
}

void SlicedPicture::paintGround(Sheet &sheet, const QRegion &region) const
{
    QPainter painter(&sheet.image);
    painter.save();
    painter.scale(1.0 / m_pixelRatio, 1.0 / m_pixelRatio);
    painter.setClipRegion(region);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    painter.fillRect(sheet.image.rect(), Qt::transparent);
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);
    painter.scale(m_pixelRatio, m_pixelRatio);
    if (m_ground)
        m_ground(painter, sheet.camera);
    painter.restore();
}

void SlicedPicture::setCamera(const ViewCamera &camera, double pixelRatio)
{
    if (pixelRatio != m_pixelRatio) {
        m_pixelRatio = pixelRatio;
        clear();
    }
    if (m_shown.image.isNull()) {
        m_shown = makeSheet(camera);
        return;
    }
    const ViewCamera &wanted = m_coming.image.isNull() ? m_shown.camera : m_coming.camera;
    if (camera == wanted || (m_coming.image.isNull() && shift(camera)))
        return;
    m_coming = makeSheet(camera);
}

bool SlicedPicture::shift(const ViewCamera &camera)
{
    ViewCamera moved = m_shown.camera;
    ZvGiView view = moved.view();
    view.center = camera.view().center;
    moved.setView(view);
    if (moved != camera)
        return false;

    const QPointF exact = m_shown.camera.transformTo(camera).map(QPointF()) * m_pixelRatio;
    if (std::abs(exact.x()) >= m_shown.image.width() || std::abs(exact.y()) >= m_shown.image.height())
        return false;
    const QPoint delta(qRound(exact.x()), qRound(exact.y()));
    // A part of a pixel would blur the picture or gather into a visible offset.
    if (std::abs(exact.x() - delta.x()) > 1e-3 || std::abs(exact.y() - delta.y()) > 1e-3)
        return false;

    const QRect whole = m_shown.image.rect();
    QImage scrolled(m_shown.image.size(), m_shown.image.format());
    scrolled.setDevicePixelRatio(m_pixelRatio);
    {
        QPainter painter(&scrolled);
        painter.setCompositionMode(QPainter::CompositionMode_Source);
        painter.scale(1.0 / m_pixelRatio, 1.0 / m_pixelRatio);
        const QRect kept = whole.intersected(whole.translated(delta));
        painter.drawImage(QRectF(kept), m_shown.image, QRectF(kept.translated(-delta)));
    }
    m_shown.image = scrolled;
    m_shown.camera = camera;
    m_shown.missing
        = m_shown.missing.translated(delta).intersected(whole) + QRegion(whole).subtracted(whole.translated(delta));
    m_shown.next = 0;
    paintGround(m_shown, m_shown.missing);
    return true;
}

void SlicedPicture::invalidate()
{
    if (m_shown.image.isNull())
        return;
    m_coming = makeSheet(m_coming.image.isNull() ? m_shown.camera : m_coming.camera);
}

void SlicedPicture::clear()
{
    m_shown = Sheet();
    m_coming = Sheet();
}

bool SlicedPicture::isComplete() const
{
    return m_coming.image.isNull() && m_shown.missing.isEmpty();
}

void SlicedPicture::drawSheet(Sheet &sheet, int budget) const
{
    QPainter painter(&sheet.image);
    painter.scale(1.0 / m_pixelRatio, 1.0 / m_pixelRatio);
    painter.setClipRegion(sheet.missing);
    sheet.next = m_source(painter, sheet.camera, m_pixelRatio, sheet.next, budget);
    if (sheet.next >= 0)
        return;
    sheet.missing = QRegion();
    sheet.next = 0;
}

bool SlicedPicture::drawSlice(int budget)
{
    if (isComplete())
        return false;
    if (m_coming.image.isNull()) {
        drawSheet(m_shown, budget);
        return true;
    }
    drawSheet(m_coming, budget);
    if (!m_coming.missing.isEmpty())
        return false;
    m_shown = m_coming;
    m_coming = Sheet();
    return true;
}

void SlicedPicture::paint(QPainter &painter, const ViewCamera &camera) const
{
    if (m_shown.image.isNull() || !m_shown.camera.looksAlike(camera))
        return;
    if (m_shown.camera == camera) {
        painter.drawImage(QPointF(), m_shown.image);
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    painter.setTransform(m_shown.camera.transformTo(camera), true);
    painter.drawImage(QPointF(), m_shown.image);
    painter.restore();
}
