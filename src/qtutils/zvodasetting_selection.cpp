// SPDX-License-Identifier: MIT
// The facade's view of the pick-first selection.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvpickfirstmerge.h"
#include "private/zvselectionsummary.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

using namespace ZvGlobalUIReactorHelp;

namespace {

/// The pick-first set, to be visited from both ends at once: a selection whose ends differ is known at the first pass.
class TwoEndedScan
{
public:
    TwoEndedScan()
    {
        ZevaUISetting::pickFirstSS(m_name);
        zvedSSLength(m_name, m_length);
    }

    const long *name() const { return m_name; }
    bool isEmpty() const { return m_length < 1; }
    int passes() const { return int((m_length + 1) / 2); }
    ZvDbObjectId first(int pass) const { return idAt(pass); }
    /// Null in the middle of an odd number.
    ZvDbObjectId second(int pass) const
    {
        const long number = m_length - 1 - pass;
        return number == pass || number < 1 ? ZvDbObjectId() : idAt(number);
    }

private:
    ZvDbObjectId idAt(long number) const
    {
        long entityName[2] = {};
        ZvDbObjectId id;
        if (zvedSSName(m_name, number, entityName) == ZvRes::kNormal)
            zvdbGetObjectId(id, entityName);
        return id;
    }

    long m_name[2] = {};
    long m_length = 0;
};

void setStatus(const ZvArray<SPickFirstInfo *> &infos, PickFirstStatus status)
{
    for (SPickFirstInfo *info : infos) {
        if (info)
            info->status = status;
    }
}

/// Opens the entities of a pass, and lets every summary take them in that is not mixed yet.
void mergeEntities(const TwoEndedScan &scan, const ZvArray<SPickFirstInfo *> &infos)
{
    // Null entries count and never become mixed: with one of them the scan runs to its end.
    int remaining = infos.length();
    for (int pass = 0; pass < scan.passes() && remaining >= 1; ++pass) {
        const ZvDbObjectPointer<ZvDbEntity> first(scan.first(pass), ZvDb::kForRead);
        const ZvDbObjectPointer<ZvDbEntity> second(scan.second(pass), ZvDb::kForRead);
        for (SPickFirstInfo *info : infos) {
            if (!info || info->status == kInfoMixed)
                continue;
            info->merge(first.get(), second.get());
            if (info->status == kInfoMixed)
                --remaining;
        }
    }
}

/// One property of the selection, by the same passes and the same rule as the summaries. \a read is false for an entity
/// that has no such property, which is passed over.
template<class T, class Read>
int queryProperty(T &value, const T &empty, Read read)
{
    value = empty;
    if (!zvCurrentDocument())
        return kInfoNoDocument;
    const TwoEndedScan scan;
    if (scan.isEmpty())
        return kInfoNoSelection;
    const auto readId = [&read](ZvDbObjectId id, T &result) {
        const ZvDbObjectPointer<ZvDbEntity> entity(id, ZvDb::kForRead);
        return entity && read(*entity, result);
    };
    std::int32_t status = kInfoUniform;
    bool seen = false;
    for (int pass = 0; pass < scan.passes() && status != kInfoMixed; ++pass) {
        T first = empty;
        T second = empty;
        const bool hasFirst = readId(scan.first(pass), first);
        const bool hasSecond = readId(scan.second(pass), second);
        if (hasFirst && hasSecond)
            zvMergePair(status, value, seen, first, second);
        else if (hasFirst || hasSecond)
            zvMergeOne(status, value, seen, hasFirst ? first : second);
    }
    return status;
}

template<class T>
int queryCommon(T &value, const T &empty, T (*read)(const ZvDbEntity &))
{
    return queryProperty(value, empty, [read](const ZvDbEntity &entity, T &result) {
        result = read(entity);
        return true;
    });
}

int queryStyle(ZvDbObjectId &style, ZvStyleReader read)
{
    return queryProperty(style, ZvDbObjectId(), read);
}

} // namespace

bool ZevaUISetting::pickFirstSS(long *selectionName)
{
    selectionName[0] = 0;
    selectionName[1] = 0;
    const ZvEdSelectionHolder *holder = zvSelectionHolder();
    if (!holder)
        return false;
    holder->pickFirst(selectionName);
    return true;
}

bool ZevaUISetting::hasSelected()
{
    long name[2];
    pickFirstSS(name);
    long length = 0;
    zvedSSLength(name, length);
    return length >= 1;
}

void ZevaUISetting::getPickFirstInfos(const ZvArray<SPickFirstInfo *> &infos)
{
    if (infos.isEmpty())
        return;
    if (!zvCurrentDocument()) {
        setStatus(infos, kInfoNoDocument);
        return;
    }
    const TwoEndedScan scan;
    if (scan.isEmpty()) {
        setStatus(infos, kInfoNoSelection);
        return;
    }
    ZvArray<SPickFirstInfo *> leftover;
    zvSummarizeSelection(scan.name(), infos, leftover);
    if (!leftover.isEmpty())
        mergeEntities(scan, leftover);
}

bool ZevaUISetting::isLocked(ZvDbEntity *entity)
{
    if (!entity)
        return false;
    const ZvDbObjectPointer<ZvDbLayerTableRecord> layer(entity->layerId(), ZvDb::kForRead);
    return layer && layer->isLocked();
}

int ZevaUISetting::getPickFirstEntitiesColor(ZvCmColor &color)
{
    return queryCommon(color, ZvCmColor(), zvReadColor);
}

int ZevaUISetting::getPickFirstEntitiesLayer(ZvDbObjectId &layer)
{
    return queryCommon(layer, ZvDbObjectId(), zvReadLayer);
}

int ZevaUISetting::getPickFirstEntitiesLType(ZvString &name)
{
    return queryCommon(name, ZvString(), zvReadLineType);
}

int ZevaUISetting::getPickFirstEntitiesLWeight(ZvDb::LineWeight &weight)
{
    return queryCommon(weight, ZvDb::kLnWtByLayer, zvReadLineWeight);
}

int ZevaUISetting::getPickFirstEntitiesMaterial(ZvString &name)
{
    return queryCommon(name, ZvString(), zvReadMaterial);
}

int ZevaUISetting::getPickFirstEntitiesCPlotStyle(ZvString &name)
{
    return queryCommon(name, ZvString(), zvReadPlotStyle);
}

int ZevaUISetting::getPickFirstTablesStyle(ZvDbObjectId &style)
{
    return queryStyle(style, zvReadTableStyle);
}

int ZevaUISetting::getPickFirstDimsStyle(ZvDbObjectId &style)
{
    return queryStyle(style, zvReadDimStyle);
}

int ZevaUISetting::getPickFirstTextsStyle(ZvDbObjectId &style)
{
    return queryStyle(style, zvReadPlainTextStyle);
}

int ZevaUISetting::getPickFirstMLeadersStyle(ZvDbObjectId &style)
{
    return queryStyle(style, zvReadMLeaderStyle);
}
