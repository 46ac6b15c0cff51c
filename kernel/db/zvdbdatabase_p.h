// SPDX-License-Identifier: MIT
#ifndef ZVDBDATABASE_P_H
#define ZVDBDATABASE_P_H

#include "base/zvcmcolor.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentity.h"

#include <cstdint>
#include <memory>
#include <unordered_map>
#include <vector>

/// The properties that all entities share. Equal combinations stand in a table once; an entity has a number into it.
/// Ids are dense positions in the database (0 none): the layer, line type, ... of the same drawing.
struct ZvDbEntityProperties
{
    ZvCmColor color;
    ZvDbObjectId layer;
    ZvDbObjectId linetype;
    ZvDbObjectId material; ///< Null is by layer.
    ZvDbObjectId plotStyle;
    ZvDb::PlotStyleNameType plotStyleType = ZvDb::kPlotStyleByLayer;
    ZvDb::LineWeight lineWeight = ZvDb::kLnWtByLayer;
    double linetypeScale = 1.0;
    ZvCmTransparency transparency;
    ZvDb::Visibility visibility = ZvDb::kVisible;

    bool operator==(const ZvDbEntityProperties &o) const;
    std::size_t hash() const;
};

/// The record block of an object. It stays where it is for the life of the database.
struct ZvDbStub
{
    enum Flag : std::uint16_t {
        kErased = 1,
        kOpenForWrite = 2,
        kModified = 4, ///< Changed since it was opened for write.
        kNew = 8, ///< Added and not closed yet.
        kNotifying = 16, ///< Its notices are going out; isModified() answers for them.
        kEntity = 32,
        kFileChanged = 64, ///< Differs from its record in the file, or has none.
    };
    ZvDbObject *object = nullptr; ///< Owned; null until it is first opened (decoded from its record).
    std::uint64_t handle = 0;
    std::uint32_t owner = 0; ///< Dense position of the owner.
    std::uint32_t record = 0; ///< Number of its record in the tag store plus 1; 0 for a new object.
    std::uint16_t cls = 0; ///< Number of its class in the table of classes.
    std::uint16_t flags = 0;
    std::uint16_t readers = 0;
    std::uint16_t spare = 0;
};
static_assert(sizeof(ZvDbStub) <= 32, "half a million of them are ordinary");

#endif
