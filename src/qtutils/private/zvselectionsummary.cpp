// SPDX-License-Identifier: MIT
#include "private/zvselectionsummary.h"

#include "private/zvcurrentdrawing.h"
#include "private/zvpickfirstmerge.h"

#include "db/zvdbsummary.h"

#include <typeinfo>

using namespace ZvGlobalUIReactorHelp;

namespace {

typedef ZvDbEntitySummary Summary;

template <class Info> bool isFresh(const SPickFirstInfo &info)
{
    return info.status != kInfoMixed && !SPickFirstInfoAccess::scratch(static_cast<const Info &>(info)).seen;
}

/// What the merges of a whole scan leave behind.
template <class Info, class T> void take(SPickFirstInfo &info, const T &value, bool found, bool mixed)
{
    auto &typed = static_cast<Info &>(info);
    auto &scratch = SPickFirstInfoAccess::scratch(typed);
    if (mixed)
        typed.status = kInfoMixed;
    if (found) {
        scratch.value = value;
        scratch.seen = true;
    }
    typed.value = scratch.value;
}

struct SummaryRow
{
    const std::type_info *type;
    Summary::Property property;
    bool (*isFresh)(const SPickFirstInfo &info);
    void (*take)(SPickFirstInfo &info, const Summary &summary);
};

template<class Info, Summary::Property property, auto member>
SummaryRow rowOf()
{
    return {&typeid(Info), property, isFresh<Info>, [](SPickFirstInfo &info, const Summary &summary) {
                take<Info>(info, summary.*member, summary.found & property, summary.mixed & property);
            }};
}

/// The exact class decides: one derived from any of these has a merge() of its own.
const SummaryRow *rowOf(const SPickFirstInfo &info)
{
    static const SummaryRow rows[] = {
        rowOf<SColorInfo, Summary::kColor, &Summary::color>(),
        rowOf<SLineTypeInfo, Summary::kLinetype, &Summary::linetype>(),
        rowOf<SLineWeightInfo, Summary::kLineWeight, &Summary::lineWeight>(),
        rowOf<SLayerInfo, Summary::kLayer, &Summary::layer>(),
        rowOf<SMaterialInfo, Summary::kMaterial, &Summary::material>(),
        rowOf<SPlotStyleInfo, Summary::kPlotStyle, &Summary::plotStyle>(),
        rowOf<STableStyleInfo, Summary::kTableStyle, &Summary::tableStyle>(),
        rowOf<SDimStyleInfo, Summary::kDimStyle, &Summary::dimStyle>(),
        rowOf<STextStyleInfo, Summary::kTextStyle, &Summary::textStyle>(),
        rowOf<SMleaderStyleInfo, Summary::kMLeaderStyle, &Summary::mleaderStyle>(),
    };
    const std::type_info *type = &typeid(info);
    for (const SummaryRow &row : rows) {
        if (row.type == type)
            return &row;
    }
    return nullptr;
}

const SummaryRow *servableRow(const SPickFirstInfo &info)
{
    const SummaryRow *row = rowOf(info);
    return row && row->isFresh(info) ? row : nullptr;
}

/// A selection at one moment. Equal values: nothing in it, and nothing in its drawing, has changed.
struct SelectionStamp
{
    long set = 0;
    std::uint64_t selection = 0;
    std::uint32_t database = 0;
    std::uint64_t drawing = 0;

    bool operator==(const SelectionStamp &o) const
    {
        return set == o.set && selection == o.selection && database == o.database && drawing == o.drawing;
    }
};

/// The last summary. It answers for as long as its stamp holds, for the properties that it was asked for.
struct LastSummary
{
    SelectionStamp stamp;
    unsigned properties = 0; // none: nothing is remembered
    Summary summary;
};

LastSummary &lastSummary()
{
    static LastSummary last;
    return last;
}

/// What the kernel says of a selection. Null where it cannot say it; where it has not said it before, and \a mayOpen is
/// false, it is not asked, since it may open entities to find out. Good until the next call.
const Summary *summaryOf(const long selectionName[2], unsigned properties, bool mayOpen)
{
    LastSummary &last = lastSummary();
    const std::vector<ZvDbObjectId> &ids = zvedSSIds(selectionName);
    const ZvEdSelectionHolder *holder = zvSelectionHolder();
    const ZvDbDatabase *database = ids.empty() ? nullptr : ids.front().database();
    if (!holder || !database)
        return nullptr;
    // What is open at this moment may count as absent, without a change that a stamp would show.
    const bool isLasting = database->openObjectCount() == 0;
    const SelectionStamp stamp {selectionName[0], holder->changeStamp(), database->number(), database->changeStamp()};
    if (isLasting && (last.properties & properties) == properties && last.stamp == stamp)
        return &last.summary;
    if (!mayOpen)
        return nullptr;

    last.properties = 0;
    if (!zvdbSummarizeEntities(ids, properties, last.summary))
        return nullptr;
    last.stamp = stamp;
    if (isLasting)
        last.properties = properties;
    return &last.summary;
}

} // namespace

void zvSummarizeSelection(const long selectionName[2], const ZvArray<SPickFirstInfo *> &infos,
                          ZvArray<SPickFirstInfo *> &leftover)
{
    unsigned properties = 0;
    bool hasNull = false;
    bool opensAnyway = false; // for a summary that the kernel's cannot serve
    for (const SPickFirstInfo *info : infos) {
        hasNull = hasNull || !info;
        const SummaryRow *row = info ? servableRow(*info) : nullptr;
        opensAnyway = opensAnyway || !row;
        if (row)
            properties |= row->property;
    }
    const Summary *summary = properties && !hasNull ? summaryOf(selectionName, properties, !opensAnyway) : nullptr;
    for (SPickFirstInfo *info : infos) {
        const SummaryRow *row = summary ? servableRow(*info) : nullptr;
        if (row)
            row->take(*info, *summary);
        else
            leftover.append(info);
    }
}
