// SPDX-License-Identifier: MIT
#ifndef GI_INDEX_H
#define GI_INDEX_H

#include "base/zvge3d.h"

#include <cstdint>
#include <vector>

/// A box in space, in single precision and rounded outwards.
struct GiBox
{
    float minimum[3] = {1e30f, 1e30f, 1e30f};
    float maximum[3] = {-1e30f, -1e30f, -1e30f};

    GiBox() = default;
    explicit GiBox(const ZvGeExtents3d &extents);
    bool isEmpty() const { return minimum[0] > maximum[0]; }
    void add(const GiBox &other);
};

/// A rectangle of the display plane as a question to boxes in space: does their image meet it?
struct GiBoxQuery
{
    double rows[2][4] = {}; ///< From space to the plane: x and y.
    double minimum[2] = {};
    double maximum[2] = {};

    bool operator==(const GiBoxQuery &o) const;
    /// Box of a box's image.
    void image(const GiBox &box, double low[2], double high[2]) const;
    bool meets(const GiBox &box) const;
    /// Whether the image of the box lies in the rectangle as a whole.
    bool holds(const GiBox &box) const;
};

/// Entities of a block with their boxes, found by place. A packed R-tree, built at once; what is added later is kept in
/// a list beside it until the list has grown too long.
class GiIndex
{
public:
    struct Entry
    {
        GiBox box;
        std::uint32_t entity = 0; ///< Dense position in the database.
        std::uint32_t layer = 0; ///< The same of its layer; 0 when it is invisible by itself.
    };

    void build(std::vector<Entry> entries);
    /// Positions of the entries that meet the question, in order of the entries. Entries without a box always do.
    void find(const GiBoxQuery &query, std::vector<std::uint32_t> &positions) const;
    const std::vector<Entry> &entries() const { return m_entries; }
    /// Around all boxes there have been; empty when there was none.
    const GiBox &bounds() const { return m_bounds; }
    /// Position of an entity's entry, -1 when it has none.
    int positionOf(std::uint32_t entity) const;
    void change(int position, const Entry &entry);
    void append(const Entry &entry);
    /// True when so much has been added that building anew pays.
    bool isStale() const { return m_entries.size() - m_treeSize > 1000 + m_treeSize / 8; }

private:
    void findIn(std::size_t level, std::size_t node, bool inside, const GiBoxQuery &query,
                std::vector<std::uint32_t> &positions) const;

    std::vector<Entry> m_entries; ///< In drawing order.
    std::vector<std::uint32_t> m_byPlace; ///< Positions of the entries in the tree, neighbours side by side.
    std::vector<std::uint32_t> m_placeOf; ///< The inverse.
    std::vector<std::vector<GiBox>>
        m_levels; ///< Boxes around each kFanOut of the level below; the first is the lowest.
    std::vector<std::uint32_t> m_boundless; ///< Positions of the entries without a box.
    std::vector<std::uint64_t> m_byEntity; ///< Sorted: entity in the upper half, position in the lower.
    GiBox m_bounds;
    std::size_t m_treeSize = 0;
};

#endif
