// SPDX-License-Identifier: MIT
#ifndef GI_BLOCKS_H
#define GI_BLOCKS_H

#include "db/zvdbentity.h"
#include "gi_index.h"
#include "gi_styles.h"

#include <memory>
#include <unordered_map>
#include <vector>

/// The entities of blocks: where they are, and, during a drawing, open for read. A block that is referenced a thousand
/// times has its entities opened once.
class GiBlocks
{
public:
    GiBlocks(ZvDbDatabase *database, GiStyles &styles);
    ~GiBlocks();

    /// The index of a block, made when it is first asked for. Good until the next call of changed() or of index() for
    /// another block.
    const GiIndex &index(ZvDbObjectId block);
    /// Positions of the entries that meet the question. The last answer is kept: a picture that is drawn in slices asks
    /// the same again and again.
    std::shared_ptr<const std::vector<std::uint32_t>> find(ZvDbObjectId block, const GiBoxQuery &query);
    /// Entities of a block in the order of its index, open for read until closeAll(). Null where one cannot be opened.
    const std::vector<const ZvDbEntity *> &entities(ZvDbObjectId block);
    void closeAll();

    /// To be told of every change. Nothing is opened before the index is next asked for.
    void appended(ZvDbObjectId entity);
    void changed(ZvDbObjectId entity);
    void changedAll();

private:
    struct Block
    {
        std::unique_ptr<GiIndex> index;
        std::vector<ZvDbObjectId> news;
        std::vector<ZvDbObjectId> changes;
        std::vector<const ZvDbEntity *> open;
        bool isOpen = false;
    };
    GiIndex::Entry entryOf(const ZvDbEntity &entity);
    void build(ZvDbObjectId block, Block &into);
    void catchUp(Block &block);
    ZvDbObjectId idOf(std::uint32_t index) const;
    Block *blockOf(ZvDbObjectId entity);

    ZvDbDatabase *m_database;
    GiStyles &m_styles;
    std::unordered_map<std::uint32_t, Block> m_blocks;
    std::shared_ptr<const std::vector<std::uint32_t>> m_found;
    GiBoxQuery m_foundQuery;
    ZvDbObjectId m_foundBlock;
    std::uint64_t m_foundStamp = 0;
};

/// Box of an entity in the coordinates of its block; that of texts by the fonts they are drawn with. False for none.
bool giExtents(const ZvDbEntity &entity, GiStyles &styles, ZvGeExtents3d &extents);

#endif
