// SPDX-License-Identifier: MIT
// The facade's view of the pick-first selection.
#include "zvodasetting.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvpickfirstmerge.h"
#include "private/zvselectionsummary.h"

#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

using namespace ZvGlobalUIReactorHelp;

const ZvPickFirstPass *zvCurrentPass = nullptr;

namespace {

/// The pick-first set, to be visited from both ends at once: a selection whose ends differ is known at the first pass.
class TwoEndedScan
{
public:
    TwoEndedScan()
    {
        if (const ZvEdSelectionHolder *holder = zvSelectionHolder())
            holder->pickFirst(m_name);
        if (m_name[0] != 0 || m_name[1] != 0)
            zvedSSLength(m_name, m_length);
    }

    const long *name() const { return m_name; }
    bool isEmpty() const { return m_length < 1; }
    int passes() const { return int((m_length + 1) / 2); }
    struct Pair
    {
        ZvDbObjectId first;
        ZvDbObjectId second; // null in the middle of an odd number
    };
    Pair pair(int pass) const
    {
        // Not kept from one pass to the next: who is told of an entity may change the selection.
        const std::vector<ZvDbObjectId> &ids = zvedSSIds(m_name);
        const auto idAt
            = [&ids](long number) { return number < long(ids.size()) ? ids[std::size_t(number)] : ZvDbObjectId(); };
        const long other = m_length - 1 - pass;
        return {idAt(pass), other == pass || other < 1 ? ZvDbObjectId() : idAt(other)};
    }

private:
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

/// The passes of one scan, as its merges see them.
class ScanPasses
{
public:
    ScanPasses() { zvCurrentPass = &m_pass; }
    ~ScanPasses() { zvCurrentPass = m_outer; }
    ScanPasses(const ScanPasses &) = delete;
    ScanPasses &operator=(const ScanPasses &) = delete;

    void begin(const ZvDbEntity *first, const ZvDbEntity *second)
    {
        m_pass = {first, second, combinationOf(first, second)};
    }

private:
    std::uint64_t combinationOf(const ZvDbEntity *first, const ZvDbEntity *second)
    {
        const ZvDbEntity *entity = first ? first : second;
        if (!entity)
            return 0;
        const std::uint32_t number = entity->propertiesNumber();
        const ZvDbDatabase *database = entity->database();
        if (!number || (first && second && (second->propertiesNumber() != number || second->database() != database)))
            return 0;
        // A number tells nothing of another drawing, nor of names that were changed since.
        const std::uint64_t stamp = database->changeStamp();
        if (database != m_database || stamp != m_stamp) {
            m_database = database;
            m_stamp = stamp;
            m_epoch = ++s_lastEpoch;
        }
        return (m_epoch << 32) | number;
    }

    static inline std::uint64_t s_lastEpoch = 0;
    ZvPickFirstPass m_pass;
    const ZvPickFirstPass *const m_outer = zvCurrentPass; // of a scan in whose merge this one happens
    const ZvDbDatabase *m_database = nullptr;
    std::uint64_t m_stamp = 0;
    std::uint64_t m_epoch = 0;
};

/// Opens the entities of a pass, and lets every summary take them in that is not mixed yet.
void mergeEntities(const TwoEndedScan &scan, const ZvArray<SPickFirstInfo *> &infos)
{
    // Null entries count and never become mixed: with one of them the scan runs to its end.
    int remaining = infos.length();
    ScanPasses passes;
    for (int pass = 0; pass < scan.passes() && remaining >= 1; ++pass) {
        const TwoEndedScan::Pair ids = scan.pair(pass);
        const ZvDbObjectPointer<ZvDbEntity> first(ids.first, ZvDb::kForRead);
        const ZvDbObjectPointer<ZvDbEntity> second(ids.second, ZvDb::kForRead);
        passes.begin(first.get(), second.get());
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
        const TwoEndedScan::Pair ids = scan.pair(pass);
        const bool hasFirst = readId(ids.first, first);
        const bool hasSecond = readId(ids.second, second);
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
