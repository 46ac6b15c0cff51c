// SPDX-License-Identifier: MIT
#include "gi_blocks.h"

#include "db/zvdbentities.h"
#include "gi_text.h"

#include <QLineF>

namespace {

/// The box of a layout on its place in the drawing.
void placeBox(const QRectF &box, const ZvGePoint3d &position, const ZvGeVector3d &direction, const ZvGeVector3d &normal,
              double margin, ZvGeExtents3d &extents)
{
    const ZvGeVector3d x = direction.normal();
    const ZvGeVector3d y = normal.crossProduct(direction).normal();
    const QRectF grown = box.adjusted(-margin, -margin, margin, margin);
    for (const QPointF &corner : {grown.topLeft(), grown.topRight(), grown.bottomLeft(), grown.bottomRight()})
        extents.add(position + x * corner.x() + y * corner.y());
}

} // namespace

bool giExtents(const ZvDbEntity &entity, GiStyles &styles, ZvGeExtents3d &extents)
{
    extents = ZvGeExtents3d();
    // Attributes in particular: their boxes are those of their values, as drawn.
    if (entity.isKindOf(ZvDbText::desc()) && !entity.isKindOf(ZvDbAttributeDefinition::desc())) {
        ZvGiText text;
        static_cast<const ZvDbText &>(entity).describe(text);
        GiTextLayout layout;
        giLayoutText(text, styles.textStyle(text.style), layout);
        placeBox(layout.box, text.position, text.direction, text.normal, 0.0, extents);
        return !text.text.isEmpty();
    }
    if (entity.isKindOf(ZvDbMText::desc())) {
        ZvGiMText text;
        static_cast<const ZvDbMText &>(entity).describe(text);
        GiTextLayout layout;
        giLayoutMText(text, styles.textStyle(text.style), layout);
        const double margin = text.backgroundFill ? (text.backgroundScale - 1.0) * text.height : 0.0;
        placeBox(layout.box, text.position, text.direction, text.normal, margin, extents);
        return !layout.pieces.empty() || !layout.lines.empty();
    }
    return entity.getGeomExtents(extents) == Zv::eOk && !extents.isEmpty();
}

GiBlocks::GiBlocks(ZvDbDatabase *database, GiStyles &styles) : m_database(database), m_styles(styles) { }

GiBlocks::~GiBlocks()
{
    closeAll();
}

ZvDbObjectId GiBlocks::idOf(std::uint32_t index) const
{
    return ZvDbObjectId::fromInt64(std::uint64_t(m_database->number()) << 32 | index);
}

GiIndex::Entry GiBlocks::entryOf(const ZvDbEntity &entity)
{
    GiIndex::Entry entry;
    entry.entity = entity.objectId().index();
    ZvGeExtents3d extents;
    if (giExtents(entity, m_styles, extents))
        entry.box = GiBox(extents);
    entry.layer = entity.visibility() == ZvDb::kVisible ? entity.layerId().index() : 0;
    return entry;
}

void GiBlocks::build(ZvDbObjectId block, Block &into)
{
    into.news.clear();
    into.changes.clear();
    std::vector<GiIndex::Entry> entries;
    ZvDbObjectPointer<ZvDbBlockTableRecord> record(block, ZvDb::kForRead);
    if (record) {
        entries.reserve(record->entityIndices().size());
        for (std::uint32_t index : record->entityIndices()) {
            ZvDbObjectPointer<ZvDbEntity> entity(idOf(index), ZvDb::kForRead);
            if (entity)
                entries.push_back(entryOf(*entity));
        }
    }
    into.index = std::make_unique<GiIndex>();
    into.index->build(std::move(entries));
}

void GiBlocks::catchUp(Block &block)
{
    std::vector<ZvDbObjectId> changes;
    std::vector<ZvDbObjectId> news;
    changes.swap(block.changes);
    news.swap(block.news);
    for (ZvDbObjectId id : changes) {
        const int position = block.index->positionOf(id.index());
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (entity && position >= 0)
            block.index->change(position, entryOf(*entity));
        else if (entity)
            block.index->append(entryOf(*entity)); // un-erased: it was not there when the index was built
    }
    for (ZvDbObjectId id : news) {
        ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        if (entity && block.index->positionOf(id.index()) < 0)
            block.index->append(entryOf(*entity));
    }
}

const GiIndex &GiBlocks::index(ZvDbObjectId id)
{
    Block &block = m_blocks[id.index()];
    constexpr std::size_t kMaxSingly = 1000;
    const bool isOutdated
        = block.index && (block.index->isStale() || block.changes.size() + block.news.size() > kMaxSingly);
    if (!block.index || isOutdated)
        build(id, block);
    else
        catchUp(block);
    return *block.index;
}

std::shared_ptr<const std::vector<std::uint32_t>> GiBlocks::find(ZvDbObjectId block, const GiBoxQuery &query)
{
    const GiIndex &known = index(block);
    const std::uint64_t stamp = m_database->changeStamp();
    if (m_found && m_foundBlock == block && m_foundStamp == stamp && m_foundQuery == query)
        return m_found;
    auto positions = std::make_shared<std::vector<std::uint32_t>>();
    known.find(query, *positions);
    m_found = std::move(positions);
    m_foundQuery = query;
    m_foundBlock = block;
    m_foundStamp = stamp;
    return m_found;
}

const std::vector<const ZvDbEntity *> &GiBlocks::entities(ZvDbObjectId id)
{
    const GiIndex &known = index(id);
    Block &block = m_blocks[id.index()];
    if (!block.isOpen) {
        block.isOpen = true;
        block.open.reserve(known.entries().size());
        for (const GiIndex::Entry &entry : known.entries()) {
            ZvDbEntity *entity = nullptr;
            zvdbOpenObject(entity, idOf(entry.entity), ZvDb::kForRead);
            block.open.push_back(entity);
        }
    }
    return block.open;
}

void GiBlocks::closeAll()
{
    for (auto &[number, block] : m_blocks) {
        for (const ZvDbEntity *entity : block.open) {
            if (entity)
                const_cast<ZvDbEntity *>(entity)->close();
        }
        block.open.clear();
        block.isOpen = false;
    }
}

GiBlocks::Block *GiBlocks::blockOf(ZvDbObjectId entity)
{
    ZvDbObjectPointer<ZvDbEntity> open(entity, ZvDb::kForRead, true);
    if (!open)
        return nullptr;
    const auto found = m_blocks.find(open->blockId().index());
    return found != m_blocks.end() && found->second.index ? &found->second : nullptr;
}

void GiBlocks::appended(ZvDbObjectId entity)
{
    if (Block *block = blockOf(entity))
        block->news.push_back(entity);
}

void GiBlocks::changed(ZvDbObjectId entity)
{
    if (Block *block = blockOf(entity))
        block->changes.push_back(entity);
}

void GiBlocks::changedAll()
{
    closeAll();
    m_blocks.clear();
    m_found.reset();
}
