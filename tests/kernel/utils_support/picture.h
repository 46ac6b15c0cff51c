// SPDX-License-Identifier: MIT
#ifndef PICTURE_H
#define PICTURE_H

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "utils/zvrenderer.h"

#include <QImage>
#include <QPainter>
#include <QRect>

#include <vector>

/// A drawing in memory and a picture of it: 100 by 100 pixels, a drawing unit each, the lower left corner at (0, 0),
/// without antialiasing, on black. So a point (x, y) of the drawing is in the pixel (x, 99 - y) when both end in .5.
class Picture
{
public:
    Picture() : database(ZvDbDatabase::create())
    {
        options.background = 0xFF000000;
        options.antialiasing = false;
        view.center = ZvGePoint2d(50, 50);
        view.height = 100;
    }

    /// Gives the entity over to the drawing, with the properties it has.
    ZvDbObjectId add(ZvDbEntity *entity, ZvDbObjectId block = ZvDbObjectId())
    {
        ZvDbObjectId id;
        database->appendEntity(entity, block.isNull() ? database->modelSpaceId() : block, id, false);
        return id;
    }
    ZvDbObjectId addLine(double x1, double y1, double x2, double y2, int color = 7, ZvDbObjectId layer = ZvDbObjectId(),
                         ZvDbObjectId block = ZvDbObjectId())
    {
        auto *line = new ZvDbLine(ZvGePoint3d(x1, y1, 0), ZvGePoint3d(x2, y2, 0));
        line->setLayer(layer.isNull() ? database->layerZero() : layer);
        line->setLinetype(database->byLayerLinetype());
        line->setColor(aci(color));
        return add(line, block);
    }
    /// A solid with these corners in circular order.
    ZvDbObjectId addSolid(const std::vector<ZvGePoint3d> &corners, int color = 7)
    {
        auto *solid = new ZvDbSolid();
        const int zigzag[4] = {0, 1, 3, 2};
        for (int i = 0; i < 4; ++i)
            solid->setPointAt(zigzag[i], corners[std::size_t(i)]);
        solid->setColor(aci(color));
        solid->setLayer(database->layerZero());
        return add(solid);
    }
    ZvDbObjectId addBlock(const char *name)
    {
        ZvDbBlockTable *table = nullptr;
        database->getSymbolTable(table, ZvDb::kForWrite);
        auto *record = new ZvDbBlockTableRecord();
        record->setName(name);
        ZvDbObjectId id;
        table->add(record, id);
        record->close();
        table->close();
        return id;
    }
    ZvDbObjectId addReference(ZvDbObjectId block, const ZvGePoint3d &at, int color = 256,
                              ZvDbObjectId layer = ZvDbObjectId(), ZvDbObjectId into = ZvDbObjectId())
    {
        auto *reference = new ZvDbBlockReference();
        reference->setBlockTableRecord(block);
        reference->setPosition(at);
        reference->setLayer(layer.isNull() ? database->layerZero() : layer);
        reference->setColor(aci(color));
        return add(reference, into);
    }
    ZvDbObjectId addLayer(const char *name, int color)
    {
        ZvDbLayerTable *table = nullptr;
        database->getSymbolTable(table, ZvDb::kForWrite);
        auto *record = new ZvDbLayerTableRecord();
        record->setName(name);
        record->setColor(aci(color));
        record->setLinetypeObjectId(database->continuousLinetype());
        ZvDbObjectId id;
        table->add(record, id);
        record->close();
        table->close();
        return id;
    }
    ZvDbObjectId addLinetype(const char *name, const std::vector<ZvDbLinetypeTableRecord::Dash> &dashes)
    {
        ZvDbLinetypeTable *table = nullptr;
        database->getSymbolTable(table, ZvDb::kForWrite);
        auto *record = new ZvDbLinetypeTableRecord();
        record->setName(name);
        record->setDashes(dashes);
        ZvDbObjectId id;
        table->add(record, id);
        record->close();
        table->close();
        return id;
    }
    ZvDbObjectId addLinetype(const char *name, const std::vector<double> &lengths)
    {
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(lengths.size());
        for (std::size_t i = 0; i < lengths.size(); ++i)
            dashes[i].length = lengths[i];
        return addLinetype(name, dashes);
    }
    static ZvCmColor aci(int index)
    {
        ZvCmColor color;
        color.setColorIndex(std::uint16_t(index));
        return color;
    }

    QImage draw(ZvGiRenderer &renderer, const QRect &clip = QRect())
    {
        QImage image(100, 100, QImage::Format_RGB32);
        const unsigned b = options.background;
        image.fill(QColor(int(b & 0xFF), int((b >> 8) & 0xFF), int((b >> 16) & 0xFF)));
        QPainter painter(&image);
        if (clip.isValid())
            painter.setClipRect(clip);
        renderer.draw(painter, options, database->modelSpaceId(), view, 100, 100);
        return image;
    }
    QImage draw()
    {
        ZvGiRenderer renderer(database);
        return draw(renderer);
    }

    ZvDbDatabasePtr database;
    ZvGiRenderer::Options options;
    ZvGiView view;
};

/// Changes an object of the drawing.
template <class T, class Change> void change(ZvDbObjectId id, Change &&how)
{
    ZvDbObjectPointer<T> object(id, ZvDb::kForWrite);
    Q_ASSERT(object);
    how(*object);
}

/// Pixels of the picture that are not of this colour.
inline int inked(const QImage &image, QRgb background = 0xFF000000)
{
    int count = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x)
            count += image.pixel(x, y) != background;
    }
    return count;
}

/// The smallest rectangle around them; not valid when there are none.
inline QRect inkedRect(const QImage &image, QRgb background = 0xFF000000)
{
    QRect rect;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            if (image.pixel(x, y) != background)
                rect = rect.isValid() ? rect.united(QRect(x, y, 1, 1)) : QRect(x, y, 1, 1);
        }
    }
    return rect;
}

/// Lengths of the runs of ink and of background along a row, from \a x on; ink first, background below 0.
inline std::vector<int> runs(const QImage &image, int y, int from, int end)
{
    std::vector<int> lengths;
    for (int x = from; x < end; ++x) {
        const bool isInk = image.pixel(x, y) != 0xFF000000;
        if (lengths.empty() || (lengths.back() > 0) != isInk)
            lengths.push_back(0);
        lengths.back() += isInk ? 1 : -1;
    }
    return lengths;
}

#endif
