// SPDX-License-Identifier: MIT
#include "utils/zvrenderer.h"

#include "db/zvdbentities.h"
#include "render/gi_drawer.h"
#include "render/gi_painter_sink.h"
#include "render/gi_pick_sink.h"

#include <QElapsedTimer>
#include <QPainter>

#include <cmath>

namespace {

/// Tells the boxes of the entities what changes.
class BlockWatcher : public ZvDbDatabaseReactor
{
public:
    explicit BlockWatcher(ZvDbDatabase *database) : m_database(database) { }

    void setBlocks(GiBlocks *blocks) { m_blocks = blocks; }
    bool isDatabaseAlive() const { return m_database != nullptr; }

    void objectAppended(const ZvDbDatabase *, const ZvDbObject *object) override
    {
        if (object && object->isKindOf(ZvDbEntity::desc()) && isOnSheet(*object))
            m_blocks->appended(object->objectId());
    }
    void objectModified(const ZvDbDatabase *, const ZvDbObject *object) override
    {
        if (!object)
            return;
        if (object->isKindOf(ZvDbTextStyleTableRecord::desc()))
            m_blocks->changedAll(); // every text may have another size
        else if (object->isKindOf(ZvDbAttribute::desc()))
            noteChange(object->ownerId()); // its box is part of its reference's
        else if (object->isKindOf(ZvDbEntity::desc()) && isOnSheet(*object))
            noteChange(object->objectId());
    }
    void objectErased(const ZvDbDatabase *, const ZvDbObject *object, bool) override
    {
        if (object && object->isKindOf(ZvDbEntity::desc()) && isOnSheet(*object))
            noteChange(object->objectId());
    }
    void databaseToBeDestroyed(const ZvDbDatabase *) override
    {
        m_blocks->changedAll();
        m_database = nullptr;
    }

private:
    /// Whether the entity lies in model space or on a layout. A change inside a block changes the boxes of all that
    /// refer to it: then everything is measured anew.
    bool isOnSheet(const ZvDbObject &entity)
    {
        const ZvDbObjectId owner = entity.ownerId();
        if (owner == m_database->modelSpaceId() || owner == m_database->paperSpaceId())
            return true;
        bool isSheet = false;
        {
            ZvDbObjectPointer<ZvDbBlockTableRecord> block(owner, ZvDb::kForRead);
            isSheet = block && block->isLayout();
        }
        if (!isSheet)
            m_blocks->changedAll();
        return isSheet;
    }
    void noteChange(ZvDbObjectId entity) { m_blocks->changed(entity); }

    ZvDbDatabase *m_database;
    GiBlocks *m_blocks = nullptr;
};

/// The part of the picture that the painter lets through, in the picture's own coordinates.
QRectF visiblePart(const QPainter &painter, double width, double height)
{
    const QRectF whole(0.0, 0.0, width, height);
    return painter.hasClipping() ? painter.clipBoundingRect().intersected(whole) : whole;
}

} // namespace

ZvGeMatrix3d ZvGiView::worldToDisplay() const
{
    const ZvGeVector3d z = direction.length() > 0.0 ? direction.normal() : ZvGeVector3d::kZAxis;
    // The display's x axis lies in the world's xy plane; looking straight down it is the world's own.
    const bool isPlan = z.x == 0.0 && z.y == 0.0;
    ZvGeVector3d x = isPlan ? ZvGeVector3d::kXAxis : ZvGeVector3d::kZAxis.crossProduct(z).normal();
    ZvGeVector3d y = z.crossProduct(x);
    if (twist != 0.0) {
        const double c = std::cos(twist);
        const double s = std::sin(twist);
        // The picture turns by the twist: the axes turn the other way.
        const ZvGeVector3d turnedX = x * c - y * s;
        y = x * s + y * c;
        x = turnedX;
    }
    ZvGeMatrix3d matrix;
    const ZvGeVector3d axes[3] = {x, y, z};
    for (int row = 0; row < 3; ++row) {
        matrix.entry[row][0] = axes[row].x;
        matrix.entry[row][1] = axes[row].y;
        matrix.entry[row][2] = axes[row].z;
        matrix.entry[row][3] = -axes[row].dotProduct(target.asVector());
    }
    return matrix;
}

struct ZvGiRenderer::Private
{
    explicit Private(ZvDbDatabase *db) : database(db), watcher(db), styles(db), blocks(db, styles)
    {
        watcher.setBlocks(&blocks);
        database->addReactor(&watcher);
    }
    ~Private()
    {
        if (!watcher.isDatabaseAlive())
            return;
        blocks.closeAll();
        database->removeReactor(&watcher);
    }
    bool isAlive() const { return watcher.isDatabaseAlive(); }

    GiTarget targetFor(GiSink &sink, const QRectF &clip, const Options &options) const
    {
        GiTarget target;
        target.sink = &sink;
        target.clip = clip;
        target.unitsPerMillimetre = options.pixelsPerMillimetre;
        return target;
    }

    ZvDbDatabase *database;
    BlockWatcher watcher;
    GiStyles styles;
    GiBlocks blocks;
    GiImages images;
    int lastVisited = 0;
};

ZvGiRenderer::ZvGiRenderer(ZvDbDatabase *database) : d(std::make_unique<Private>(database)) { }

ZvGiRenderer::~ZvGiRenderer() = default;

bool ZvGiRenderer::draw(QPainter &painter, const Options &options, ZvDbObjectId block, const ZvGiView &view,
                        double width, double height, const std::function<bool()> &keepGoing)
{
    d->lastVisited = 0;
    const QRectF clip = visiblePart(painter, width, height);
    if (!d->isAlive() || clip.isEmpty())
        return true;
    d->styles.refresh();
    GiPainterSink sink(painter, options.antialiasing);
    GiDrawer drawer(d->database, d->styles, d->blocks, d->images, options, d->targetFor(sink, clip, options));
    drawer.setView(view, width, height);
    drawer.setKeepGoingInside(keepGoing);
    const int next = drawer.drawBlock(block, 0, keepGoing);
    d->blocks.closeAll();
    d->lastVisited = drawer.visited();
    return next < 0;
}

bool ZvGiRenderer::drawEntities(QPainter &painter, const Options &options, const std::vector<ZvDbObjectId> &entities,
                                const ZvGiView &view, double width, double height,
                                const std::function<bool()> &keepGoing)
{
    d->lastVisited = 0;
    const QRectF clip = visiblePart(painter, width, height);
    if (!d->isAlive() || clip.isEmpty())
        return true;
    d->styles.refresh();
    GiPainterSink sink(painter, options.antialiasing);
    GiDrawer drawer(d->database, d->styles, d->blocks, d->images, options, d->targetFor(sink, clip, options));
    drawer.setView(view, width, height);
    drawer.setKeepGoingInside(keepGoing);
    constexpr int kInterval = 64;
    bool isWhole = true;
    int count = 0;
    for (ZvDbObjectId id : entities) {
        if (keepGoing && ++count % kInterval == 0) {
            d->blocks.closeAll();
            if (!keepGoing()) {
                isWhole = false;
                break;
            }
        }
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (!entity || entity->database() != d->database)
            continue;
        ++d->lastVisited;
        drawer.drawEntity(*entity);
        if (drawer.isAborted()) {
            isWhole = false;
            break;
        }
    }
    d->blocks.closeAll();
    return isWhole;
}

int ZvGiRenderer::drawSlice(QPainter &painter, const Options &options, ZvDbObjectId block, const ZvGiView &view,
                            double width, double height, int first, int budget)
{
    d->lastVisited = 0;
    const QRectF clip = visiblePart(painter, width, height);
    if (!d->isAlive() || clip.isEmpty())
        return -1;
    d->styles.refresh();
    QElapsedTimer timer;
    timer.start();
    GiPainterSink sink(painter, options.antialiasing);
    GiDrawer drawer(d->database, d->styles, d->blocks, d->images, options, d->targetFor(sink, clip, options));
    drawer.setView(view, width, height);
    const int next = drawer.drawBlock(block, first, [&] { return timer.elapsed() < budget; });
    d->blocks.closeAll();
    d->lastVisited = drawer.visited();
    return next;
}

void ZvGiRenderer::pick(ZvDbObjectId block, const ZvGiView &view, const ZvGePoint2d &displayMinimum,
                        const ZvGePoint2d &displayMaximum, bool inside, std::vector<ZvDbObjectId> &ids)
{
    ids.clear();
    if (!d->isAlive())
        return;
    d->styles.refresh();
    // As a picture of some thousand pixels around the box, so that curves are as smooth as anybody can see.
    constexpr double kPixels = 1000.0;
    const double width = displayMaximum.x - displayMinimum.x;
    const double height = displayMaximum.y - displayMinimum.y;
    const double longer = std::max(std::abs(width), std::abs(height));
    if (!(longer > 0.0))
        return;
    const double scale = kPixels / longer;
    ZvGiView picked = view;
    picked.center = ZvGePoint2d((displayMinimum.x + displayMaximum.x) / 2, (displayMinimum.y + displayMaximum.y) / 2);
    const QRectF box(kPixels - std::abs(width) * scale / 2, kPixels - std::abs(height) * scale / 2,
                     std::abs(width) * scale, std::abs(height) * scale);
    const double side = 2.0 * kPixels;
    picked.height = side / scale;

    GiPickSink sink(box);
    Options options;
    options.antialiasing = false;
    // What leaves the box does so within the picture around it.
    GiDrawer drawer(d->database, d->styles, d->blocks, d->images, options,
                    d->targetFor(sink, QRectF(0, 0, side, side), options));
    drawer.setView(picked, side, side);
    // Patterns and letters have gaps, but can be picked anywhere.
    drawer.setPlain(true);

    const ZvGeMatrix3d toDisplay = view.worldToDisplay();
    GiBoxQuery query;
    for (int row = 0; row < 2; ++row)
        std::copy(toDisplay.entry[row], toDisplay.entry[row] + 4, query.rows[row]);
    query.minimum[0] = std::min(displayMinimum.x, displayMaximum.x);
    query.minimum[1] = std::min(displayMinimum.y, displayMaximum.y);
    query.maximum[0] = std::max(displayMinimum.x, displayMaximum.x);
    query.maximum[1] = std::max(displayMinimum.y, displayMaximum.y);
    const GiIndex &index = d->blocks.index(block);
    std::vector<std::uint32_t> positions;
    index.find(query, positions);
    const std::uint64_t high = std::uint64_t(d->database->number()) << 32;
    for (auto position = positions.rbegin(); position != positions.rend(); ++position) {
        const GiIndex::Entry &entry = index.entries()[*position];
        if (entry.layer == 0 || (inside && (entry.box.isEmpty() || !query.holds(entry.box))))
            continue;
        const ZvDbObjectId id = ZvDbObjectId::fromInt64(high | entry.entity);
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (!entity)
            continue;
        sink.reset();
        drawer.drawEntity(*entity);
        if (inside ? sink.isInside() : sink.touches())
            ids.push_back(id);
    }
    d->blocks.closeAll();
}

ZvGeExtents2d ZvGiRenderer::displayExtents(ZvDbObjectId block, const ZvGiView &view)
{
    ZvGeExtents2d extents;
    if (!d->isAlive())
        return extents;
    d->styles.refresh();
    const ZvGeMatrix3d toDisplay = view.worldToDisplay();
    const std::uint64_t high = std::uint64_t(d->database->number()) << 32;
    for (const GiIndex::Entry &entry : d->blocks.index(block).entries()) {
        if (entry.layer == 0 || entry.box.isEmpty())
            continue;
        const ZvDbObjectId id = ZvDbObjectId::fromInt64(high | entry.entity);
        const GiLayer &layer = d->styles.layer(ZvDbObjectId::fromInt64(high | entry.layer));
        if (layer.isOff || layer.isFrozen || id.isErased())
            continue;
        ZvGeExtents3d box;
        box.minimum
            = ZvGePoint3d(double(entry.box.minimum[0]), double(entry.box.minimum[1]), double(entry.box.minimum[2]));
        box.maximum
            = ZvGePoint3d(double(entry.box.maximum[0]), double(entry.box.maximum[1]), double(entry.box.maximum[2]));
        box = box.transformedBy(toDisplay);
        extents.add(ZvGePoint2d(box.minimum.x, box.minimum.y));
        extents.add(ZvGePoint2d(box.maximum.x, box.maximum.y));
    }
    return extents;
}

int ZvGiRenderer::lastVisited() const
{
    return d->lastVisited;
}
