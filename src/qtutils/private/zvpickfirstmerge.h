// SPDX-License-Identifier: MIT
#ifndef ZVPICKFIRSTMERGE_H
#define ZVPICKFIRSTMERGE_H

#include "zvglobaluireactorhelp.h"

#include "db/zvdbentity.h"

// What the selection's summaries and its single-property queries share: how a property is read from an entity, and the
// rule by which the values of one pass are taken in.

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
