// SPDX-License-Identifier: MIT
#include "zvglobaluireactorhelp.h"

#include "private/zvpickfirstmerge.h"

namespace ZvGlobalUIReactorHelp {

SPickFirstInfo::SPickFirstInfo() = default;
SPickFirstInfo::~SPickFirstInfo() = default;

template <class T>
SPropertyInfo<T>::SPropertyInfo(const T &empty) : value(empty), m_scratch(new Scratch{empty}), m_empty(empty)
{
}

template<class T>
SPropertyInfo<T>::~SPropertyInfo() = default;

template<class T>
void SPropertyInfo<T>::reset()
{
    status = kInfoUniform;
    if (m_scratch->seen)
        m_scratch->value = m_empty;
    m_scratch->seen = false;
    m_scratch->combination = 0;
}

template class SPropertyInfo<ZvCmColor>;
template class SPropertyInfo<ZvString>;
template class SPropertyInfo<ZvDb::LineWeight>;
template class SPropertyInfo<ZvDbObjectId>;

namespace {

/// A property that every entity has. One that cannot be read is a missing one.
template <class T>
void mergeCommon(SPropertyInfo<T> &info, const ZvDbEntity *first, const ZvDbEntity *second,
                 T (*read)(const ZvDbEntity &))
{
    auto &scratch = SPickFirstInfoAccess::scratch(info);
    const std::uint64_t combination = zvCombinationOf(first, second);
    if (!combination || combination != scratch.combination) {
        if (first && second) {
            zvMergePair(info.status, scratch.value, scratch.seen, read(*first), read(*second));
        } else if (const ZvDbEntity *entity = first ? first : second) {
            zvMergeOne(info.status, scratch.value, scratch.seen, read(*entity));
        }
        scratch.combination = info.status == kInfoMixed ? 0 : combination;
    }
    info.value = scratch.value;
}

/// A style that some entities have: one without makes the summary mixed.
void mergeStyle(SPropertyInfo<ZvDbObjectId> &info, const ZvDbEntity *first, const ZvDbEntity *second,
                ZvStyleReader read)
{
    auto &scratch = SPickFirstInfoAccess::scratch(info);
    ZvDbObjectId a;
    ZvDbObjectId b;
    if ((first && !read(*first, a)) || (second && !read(*second, b)))
        info.status = kInfoMixed;
    else if (first && second)
        zvMergePair(info.status, scratch.value, scratch.seen, a, b);
    else if (first || second)
        zvMergeOne(info.status, scratch.value, scratch.seen, first ? a : b);
    info.value = scratch.value;
}

/// The three styles of one class. A pass whose first entity could not be opened makes them mixed, although its second
/// one may fit: controls show an empty box then, as they do for every selection they cannot answer for.
void mergeClassStyle(SPropertyInfo<ZvDbObjectId> &info, const ZvDbEntity *first, const ZvDbEntity *second,
                     ZvStyleReader read)
{
    if (!first && second) {
        info.status = kInfoMixed;
        info.value = SPickFirstInfoAccess::scratch(info).value;
        return;
    }
    mergeStyle(info, first, second, read);
}

} // namespace

SColorInfo::SColorInfo() : SPropertyInfo(ZvCmColor()) { }
SColorInfo::~SColorInfo() = default;

void SColorInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeCommon(*this, first, second, zvReadColor);
}

SLineTypeInfo::SLineTypeInfo() : SPropertyInfo(ZvString()) { }
SLineTypeInfo::~SLineTypeInfo() = default;

void SLineTypeInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeCommon(*this, first, second, zvReadLineType);
}

SLineWeightInfo::SLineWeightInfo() : SPropertyInfo(ZvDb::kLnWtByLayer) { }
SLineWeightInfo::~SLineWeightInfo() = default;

void SLineWeightInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeCommon(*this, first, second, zvReadLineWeight);
}

SLayerInfo::SLayerInfo() : SPropertyInfo(ZvDbObjectId()) { }
SLayerInfo::~SLayerInfo() = default;

void SLayerInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeCommon(*this, first, second, zvReadLayer);
}

SMaterialInfo::SMaterialInfo() : SPropertyInfo(ZvString()) { }
SMaterialInfo::~SMaterialInfo() = default;

void SMaterialInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeCommon(*this, first, second, zvReadMaterial);
}

SPlotStyleInfo::SPlotStyleInfo() : SPropertyInfo(ZvString()) { }
SPlotStyleInfo::~SPlotStyleInfo() = default;

void SPlotStyleInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeCommon(*this, first, second, zvReadPlotStyle);
}

STableStyleInfo::STableStyleInfo() : SPropertyInfo(ZvDbObjectId()) { }
STableStyleInfo::~STableStyleInfo() = default;

void STableStyleInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeClassStyle(*this, first, second, zvReadTableStyle);
}

SDimStyleInfo::SDimStyleInfo() : SPropertyInfo(ZvDbObjectId()) { }
SDimStyleInfo::~SDimStyleInfo() = default;

void SDimStyleInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeClassStyle(*this, first, second, zvReadDimStyle);
}

STextStyleInfo::STextStyleInfo() : SPropertyInfo(ZvDbObjectId()) { }
STextStyleInfo::~STextStyleInfo() = default;

void STextStyleInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeStyle(*this, first, second, zvReadTextStyle);
}

SMleaderStyleInfo::SMleaderStyleInfo() : SPropertyInfo(ZvDbObjectId()) { }
SMleaderStyleInfo::~SMleaderStyleInfo() = default;

void SMleaderStyleInfo::merge(const ZvDbEntity *first, const ZvDbEntity *second)
{
    mergeClassStyle(*this, first, second, zvReadMLeaderStyle);
}

} // namespace ZvGlobalUIReactorHelp
