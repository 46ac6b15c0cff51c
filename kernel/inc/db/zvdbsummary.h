// SPDX-License-Identifier: MIT
#ifndef ZVDBSUMMARY_H
#define ZVDBSUMMARY_H

#include "base/zvcmcolor.h"
#include "base/zvstring.h"
#include "db/zvdbobjectid.h"
#include "db/zvdbtypes.h"

#include <vector>

/// What many entities have in common, property by property; see zvdbSummarizeEntities().
struct ZV_EXPORT ZvDbEntitySummary
{
    /// Properties of entities: bits to be combined.
    enum Property : unsigned {
        kColor = 0x1,
        kLinetype = 0x2,
        kLineWeight = 0x4,
        kLayer = 0x8,
        kMaterial = 0x10,
        kPlotStyle = 0x20,
        kTableStyle = 0x40, ///< Of ZvDbTable.
        kDimStyle = 0x80, ///< Of ZvDbDimension.
        kTextStyle = 0x100, ///< Of ZvDbText, ZvDbMText, ZvDbDimension and ZvDbMLeader.
        kMLeaderStyle = 0x200, ///< Of ZvDbMLeader.
    };
    static constexpr unsigned kCommonProperties = 0x3F; ///< Those that every entity has.
    static constexpr unsigned kAllProperties = 0x3FF; ///< Every one of Property.

    unsigned found = 0; ///< Properties with a value below.
    unsigned mixed = 0; ///< Properties in which the entities differ, or that one of them lacks.

    ZvCmColor color; ///< By layer and by block not resolved.
    ZvString linetype; ///< Name.
    ZvDb::LineWeight lineWeight = ZvDb::kLnWtByLayer; ///< Hundredths of a millimetre or a negative value.
    ZvDbObjectId layer; ///< Its record.
    ZvString material; ///< Name.
    ZvString plotStyle; ///< Name.
    ZvDbObjectId tableStyle; ///< Its record.
    ZvDbObjectId dimStyle; ///< Its record.
    ZvDbObjectId textStyle; ///< Its record.
    ZvDbObjectId mleaderStyle; ///< Its record.
};

/// Summarises entities of one database, each read at most once, as if all were opened and compared: the common
/// properties come from the table of distinct combinations, so that a million of them cost a million numbers.
///
/// The entities are visited from both ends at once, in pairs of number i and number n - 1 - i; the middle one of an odd
/// number stands alone. The visit ends as soon as all \a wanted properties are mixed. An entity that cannot be opened for
/// read counts as absent. A property's value is that of the first pair with an entity in it; it has none where the two
/// differ. By layer and by block are not resolved, and names are compared with case.
///
/// An entity of another class makes a style mixed. The styles of one class (table, dimension, multileader) are mixed too
/// by a pair of which the first is absent and the second is not.
///
/// False, with nothing summarised, where the ids belong to more than one database: callers open and compare then.
ZV_EXPORT bool zvdbSummarizeEntities(const std::vector<ZvDbObjectId> &ids, unsigned wanted, ZvDbEntitySummary &summary);

#endif
