// SPDX-License-Identifier: MIT
// One notice of the update bus over a selection of a million entities, with all ten summaries registered, beside one raw
// read of 160 bytes an entity: what an array of such entities would cost to look at. Each repetition times both and
// reports "ratio", ours to the baseline; take the median. "allocations" counts those of one notice.
//
// A change of a drawing's variable before each notice keeps the last summary from being used again, except where that is
// what is measured.
#include "timing.h"
#include "zvmonitorglobaluisystemvarreactor.h"
#include "zvqtcontrolhelp.h"

#include "core/zvapdocument.h"
#include "core/zvsystem.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"

#include <algorithm>
#include <atomic>
#include <benchmark/benchmark.h>
#include <cstdlib>
#include <memory>
#include <new>
#include <random>
#include <vector>

using namespace ZvGlobalUIReactorHelp;

namespace {

constexpr int kEntities = 1000000;
constexpr std::size_t kBytesPerEntity = 160;
constexpr int kRepetitions = 9;

std::atomic<long> allocations {0};

/// The baseline: reads 160 bytes an entity, one after the other.
double rawRead(int entities)
{
    static const std::vector<std::uint64_t> memory(kEntities * kBytesPerEntity / sizeof(std::uint64_t), 1);
    const std::size_t words = std::size_t(entities) * kBytesPerEntity / sizeof(std::uint64_t);
    return processorSecondsOf([&] {
        std::uint64_t sum = 0;
        for (std::size_t i = 0; i < words; ++i)
            sum ^= memory[i];
        benchmark::DoNotOptimize(sum);
    });
}

class Receiver : public CZvQtControlHelp
{
public:
    explicit Receiver(SPickFirstInfo *info = nullptr) : CZvQtControlHelp(true, info) { }
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override { benchmark::DoNotOptimize(kinds += notice.kind); }
    std::uint64_t kinds = 0;
};

/// With a single class of receivers the compiler guesses it, and the baseline's virtual calls are no calls.
class OtherReceiver : public Receiver
{
public:
    using Receiver::Receiver;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override { benchmark::DoNotOptimize(kinds -= notice.kind); }
};

/// One of a class of its own: as far as the scan can know its merge() does something else.
template<class Info>
class Own : public Info
{
};

template<template<class> class Kind>
struct Summaries
{
    Kind<SColorInfo> color;
    Kind<SLineTypeInfo> lineType;
    Kind<SLineWeightInfo> lineWeight;
    Kind<SLayerInfo> layer;
    Kind<SMaterialInfo> material;
    Kind<SPlotStyleInfo> plotStyle;
    Kind<STableStyleInfo> tableStyle;
    Kind<SDimStyleInfo> dimStyle;
    Kind<STextStyleInfo> textStyle;
    Kind<SMleaderStyleInfo> mleaderStyle;
    Receiver receivers[10] {Receiver(&color),      Receiver(&lineType), Receiver(&lineWeight), Receiver(&layer),
                            Receiver(&material),   Receiver(&plotStyle), Receiver(&tableStyle), Receiver(&dimStyle),
                            Receiver(&textStyle), Receiver(&mleaderStyle)};
};

template<class Info>
using Plain = Info;

/// The core with a drawing of a million lines, and the bus.
class Session
{
public:
    static Session &instance()
    {
        static Session session;
        return session;
    }

    ZvDbDatabase &drawing() { return *zvDocManagerPtr()->currentDocument()->database(); }
    ZvEdSelectionHolder &selection() { return *zvDocManagerPtr()->currentDocument()->editingContext()->selectionHolder(); }

    /// Selects the first \a count lines.
    void select(int count, bool shuffled = false)
    {
        std::vector<ZvDbObjectId> ids(m_lines.begin(), m_lines.begin() + count);
        if (shuffled)
            std::shuffle(ids.begin(), ids.end(), std::mt19937(7));
        bus.enableUpdateUI(false);
        selection().set({});
        selection().set(ids);
        bus.enableUpdateUI(true);
    }

    /// A new weight in the drawing, so that what is remembered of it does not hold.
    void touch()
    {
        bus.enableUpdateUI(false);
        drawing().setCelweight(drawing().celweight() == ZvDb::kLnWt025 ? ZvDb::kLnWt035 : ZvDb::kLnWt025);
        drawing().clearUndo();
        bus.enableUpdateUI(true);
    }

    void notify()
    {
        CZvGlobalUIReactorHelp notice;
        notice.kind = kNoticeLayoutSwitched;
        bus.notifyUpdateUI(notice);
    }

    template<class T>
    void add(T *receivers, int count)
    {
        for (int i = 0; i < count; ++i)
            bus.addUpdateUIReceiver(&receivers[i]);
    }
    template<class T>
    void remove(T *receivers, int count)
    {
        for (int i = 0; i < count; ++i)
            bus.removeUpdateUIReceiver(&receivers[i]);
    }

    const std::vector<ZvDbObjectId> &lines() const { return m_lines; }

    ZvMonitorGlobalUISystemVarReactor bus;

private:
    Session()
    {
        zvDocManagerPtr()->newDocument();
        drawing().beginUndoStep(L"fill");
        for (int i = 0; i < kEntities; ++i) {
            ZvDbObjectId id;
            drawing().appendEntity(new ZvDbLine({double(i), 0, 0}, {double(i), 1, 0}), drawing().modelSpaceId(), id);
            m_lines.push_back(id);
        }
        drawing().endUndoStep();
        drawing().clearUndo();
    }

    std::vector<ZvDbObjectId> m_lines;
};

/// Times one notice after the other, each beside its baseline.
template<class Baseline>
void runNotices(benchmark::State &state, bool changed, Baseline baseline)
{
    Session &session = Session::instance();
    for (auto _ : state) {
        if (changed)
            session.touch();
        const double bare = baseline();
        const long before = allocations;
        const double ours = processorSecondsOf([&] { session.notify(); });
        state.counters["allocations"] = double(allocations - before);
        state.counters["ratio"] = ours / bare;
        state.SetIterationTime(ours);
    }
}

void bulkInOrder(benchmark::State &state)
{
    Session &session = Session::instance();
    session.select(int(state.range(0)));
    Summaries<Plain> summaries;
    session.add(summaries.receivers, 10);
    runNotices(state, true, [&] { return rawRead(int(state.range(0))); });
    session.remove(summaries.receivers, 10);
}
BENCHMARK(bulkInOrder)->Arg(kEntities / 10)->Arg(kEntities)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

void bulkShuffled(benchmark::State &state)
{
    Session &session = Session::instance();
    session.select(kEntities, true);
    Summaries<Plain> summaries;
    session.add(summaries.receivers, 10);
    runNotices(state, true, [] { return rawRead(kEntities); });
    session.remove(summaries.receivers, 10);
}
BENCHMARK(bulkShuffled)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

/// Every entity opened and given to each summary that is not mixed yet.
void mergesInOrder(benchmark::State &state)
{
    Session &session = Session::instance();
    session.select(int(state.range(0)));
    Summaries<Own> summaries;
    session.add(summaries.receivers, 10);
    runNotices(state, true, [&] { return rawRead(int(state.range(0))); });
    session.remove(summaries.receivers, 10);
}
BENCHMARK(mergesInOrder)->Arg(kEntities / 10)->Arg(kEntities)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

/// Nine summaries mixed after a thousand entities of a million, beside a selection of these alone.
void mixedEarly(benchmark::State &state)
{
    Session &session = Session::instance();
    constexpr int kPairs = 500;
    session.bus.enableUpdateUI(false);
    const auto give = [&](const ZvDbObjectId &id, bool other) {
        const ZvDbObjectPointer<ZvDbEntity> line(id, ZvDb::kForWrite);
        ZvCmColor color;
        if (other)
            color.setColorIndex(1);
        line->setColor(color);
        line->setLineWeight(other ? ZvDb::kLnWt100 : ZvDb::kLnWtByLayer);
        line->setLinetype(ZvString(other ? L"ByBlock" : L"ByLayer"));
        line->setPlotStyleName(other ? L"ByBlock" : L"ByLayer");
        line->setMaterial(other ? L"Global" : L"ByLayer");
    };
    Summaries<Plain> summaries;
    // all but the layer, which is one for all
    Receiver *const used[] = {&summaries.receivers[0], &summaries.receivers[1], &summaries.receivers[2],
                              &summaries.receivers[4], &summaries.receivers[5], &summaries.receivers[6],
                              &summaries.receivers[7], &summaries.receivers[8], &summaries.receivers[9]};
    for (Receiver *receiver : used)
        session.bus.addUpdateUIReceiver(receiver);
    give(session.lines()[kPairs - 1], true);
    const auto median = [&] {
        return medianOf(51, [&] {
            session.touch();
            return secondsOf([&] { session.notify(); });
        });
    };
    for (auto _ : state) {
        session.select(2 * kPairs); // the odd one stands in the last pair
        const double alone = median();
        session.select(kEntities);
        const double ours = median();
        state.counters["ratio"] = ours / alone;
        state.SetIterationTime(ours);
    }
    for (Receiver *receiver : used)
        session.bus.removeUpdateUIReceiver(receiver);
    give(session.lines()[kPairs - 1], false);
    session.drawing().clearUndo();
    session.bus.enableUpdateUI(true);
}
BENCHMARK(mixedEarly)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

/// A second notice with nothing changed, beside the same with one entity selected.
void nothingChanged(benchmark::State &state)
{
    Session &session = Session::instance();
    Summaries<Plain> summaries;
    session.add(summaries.receivers, 10);
    const auto median = [&] {
        session.notify();
        return medianOf(201, [&] { return secondsOf([&] { session.notify(); }); });
    };
    for (auto _ : state) {
        session.select(1);
        const double one = median();
        session.select(int(state.range(0)));
        const double many = median();
        state.counters["ratio"] = many / one;
        state.SetIterationTime(many);
    }
    session.remove(summaries.receivers, 10);
}
BENCHMARK(nothingChanged)->Arg(kEntities)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

/// A notice to 30 receivers with nothing selected, beside 30 direct virtual calls. With and without the ten summaries.
void fanOut(benchmark::State &state)
{
    Session &session = Session::instance();
    session.select(0);
    Summaries<Plain> summaries;
    if (state.range(0))
        session.add(summaries.receivers, 10);
    std::vector<OtherReceiver> others(state.range(0) ? 20 : 30);
    session.add(others.data(), int(others.size()));
    std::vector<CZvQtControlHelp *> all;
    for (Receiver &receiver : summaries.receivers) {
        if (state.range(0))
            all.push_back(&receiver);
    }
    for (OtherReceiver &receiver : others)
        all.push_back(&receiver);
    CZvGlobalUIReactorHelp notice;
    notice.kind = kNoticeLayoutSwitched;
    constexpr int kRounds = 200;
    const auto median = [](auto once) {
        return medianOf(101, [&] {
            return secondsOf([&] {
                for (int round = 0; round < kRounds; ++round)
                    once();
            });
        });
    };
    for (auto _ : state) {
        const double bare = median([&] {
            for (CZvQtControlHelp *receiver : all)
                receiver->acceptUpdateUI(notice);
            benchmark::ClobberMemory();
        });
        const double ours = median([&] { session.bus.notifyUpdateUI(notice); });
        state.counters["ratio"] = ours / bare;
        state.SetIterationTime(ours / kRounds);
    }
    session.remove(others.data(), int(others.size()));
    if (state.range(0))
        session.remove(summaries.receivers, 10);
}
BENCHMARK(fanOut)->ArgName("summaries")->Arg(0)->Arg(1)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

} // namespace

void *operator new(std::size_t size)
{
    ++allocations;
    if (void *memory = std::malloc(size))
        return memory;
    throw std::bad_alloc();
}

void operator delete(void *memory) noexcept
{
    std::free(memory);
}

void operator delete(void *memory, std::size_t) noexcept
{
    std::free(memory);
}

int main(int argc, char **argv)
{
    CHcSystem::start();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    return 0;
}
