// SPDX-License-Identifier: MIT
#ifndef ZVPICKFIRSTMERGE_H
#define ZVPICKFIRSTMERGE_H

#include "zvglobaluireactorhelp.h"

#include "db/zvdbentity.h"

// What the selection's summaries and its single-property queries share: how a property is read from an entity, and the
// rule by which the values of one pass are taken in.

namespace ZvGlobalUIReactorHelp {

template <class T> struct SPropertyInfo<T>::Scratch
{
    T value;
    bool seen = false;
    std::uint64_t combination = 0; // that was taken in last and made no difference; see ZvPickFirstPass
};

/// The way to the scratch record of a summary.
struct SPickFirstInfoAccess
{
    template <class T> static auto &scratch(SPropertyInfo<T> &info) { return *info.m_scratch; }
    template <class T> static const auto &scratch(const SPropertyInfo<T> &info) { return *info.m_scratch; }
};

} // namespace ZvGlobalUIReactorHelp

/// The pass that a scan is at, for the merges that are called in it. They all get the same two entities, mostly of the
/// same common properties as the two before: that is found out once, for all of them.
struct ZvPickFirstPass
{
    const ZvDbEntity *first = nullptr;
    const ZvDbEntity *second = nullptr;
    /// Equal values stand for equal common properties, names included, of all entities in the passes. 0 where the two
    /// differ in some, and where nothing is known of them.
    std::uint64_t combination = 0;
};

/// Null outside of scans: hosts may call merge() whenever they like.
extern const ZvPickFirstPass *zvCurrentPass;

inline std::uint64_t zvCombinationOf(const ZvDbEntity *first, const ZvDbEntity *second)
{
    const ZvPickFirstPass *pass = zvCurrentPass;
    return pass && pass->first == first && pass->second == second ? pass->combination : 0;
}

inline bool zvDiffers(const ZvString &a, const ZvString &b)
{
    return !a.sharesWith(b) && a.compare(b) != 0;
}

template<class T>
bool zvDiffers(const T &a, const T &b)
{
    return a != b;
}

/// Takes in the one value of a pass.
template<class T>
void zvMergeOne(std::int32_t &status, T &running, bool &seen, const T &value)
{
    if (!seen) {
        running = value;
        seen = true;
    } else if (zvDiffers(running, value)) {
        status = ZvGlobalUIReactorHelp::kInfoMixed;
    }
}

/// Takes in both values of a pass. Values that differ leave the running value alone.
template<class T>
void zvMergePair(std::int32_t &status, T &running, bool &seen, const T &first, const T &second)
{
    if (zvDiffers(first, second))
        status = ZvGlobalUIReactorHelp::kInfoMixed;
    else
        zvMergeOne(status, running, seen, first);
}

inline ZvCmColor zvReadColor(const ZvDbEntity &entity)
{
    return entity.color();
}

inline ZvString zvReadLineType(const ZvDbEntity &entity)
{
    return entity.linetype();
}

inline ZvDb::LineWeight zvReadLineWeight(const ZvDbEntity &entity)
{
    return entity.lineWeight();
}

inline ZvDbObjectId zvReadLayer(const ZvDbEntity &entity)
{
    return entity.layerId();
}

inline ZvString zvReadMaterial(const ZvDbEntity &entity)
{
    return entity.material();
}

inline ZvString zvReadPlotStyle(const ZvDbEntity &entity)
{
    return entity.plotStyleName();
}

/// False for an entity of a class that has no such style.
typedef bool (*ZvStyleReader)(const ZvDbEntity &entity, ZvDbObjectId &style);

bool zvReadTableStyle(const ZvDbEntity &entity, ZvDbObjectId &style);
bool zvReadDimStyle(const ZvDbEntity &entity, ZvDbObjectId &style);
bool zvReadMLeaderStyle(const ZvDbEntity &entity, ZvDbObjectId &style);
/// Of the four classes that have a text style.
bool zvReadTextStyle(const ZvDbEntity &entity, ZvDbObjectId &style);
/// Of texts and multiline texts alone.
bool zvReadPlainTextStyle(const ZvDbEntity &entity, ZvDbObjectId &style);

#endif
