// SPDX-License-Identifier: MIT
// Opening a drawing of 100 MB, beside the least that any reader must do: read the file, find the line ends, read the
// group codes. Each repetition times both and reports "ratio", ours to the bare scan; take the median. "memory" is the
// highest use of memory while opening, in file sizes; "us_per_entity" is what an entity costs beside the bare scan of
// its lines; "decode_us" is what the first opening of an entity costs.
#include "line_pair_scan.h"

#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"

#include <benchmark/benchmark.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

namespace {

constexpr int repetitions = 5;

template <class Work> double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

double memory(const char *key)
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, std::strlen(key), key) == 0)
            return std::atof(line.c_str() + std::strlen(key)) * 1024;
    }
    return 0;
}

/// A drawing made by generate_drawing, removed at the end.
class Drawing
{
public:
    explicit Drawing(const std::string &options)
    {
        const int file = ::mkstemp(m_path);
        ::close(file);
        const std::string command = std::string(GENERATE_DRAWING) + " " + m_path + " " + options;
        if (std::system(command.c_str()) != 0)
            return;
        std::ifstream stream(m_path, std::ios::ate | std::ios::binary);
        size = std::size_t(stream.tellg());
    }
    ~Drawing() { ::unlink(m_path); }
    const char *path() const { return m_path; }
    std::size_t size = 0;

private:
    char m_path[32] = "/tmp/bench_drawing_XXXXXX";
};

void open(benchmark::State &state, const std::string &options)
{
    const Drawing drawing(options);
    if (drawing.size == 0) {
        state.SkipWithError("cannot make the drawing");
        return;
    }
    for (auto _ : state) {
        const double bare = secondsOf([&] {
            const std::unique_ptr<char[]> bytes(new char[drawing.size]);
            std::FILE *const stream = std::fopen(drawing.path(), "rb");
            if (std::fread(bytes.get(), 1, drawing.size, stream) != drawing.size)
                state.SkipWithError("cannot read the file");
            std::fclose(stream);
            benchmark::DoNotOptimize(scanLinePairs(bytes.get(), drawing.size));
        });
        std::ofstream("/proc/self/clear_refs") << "5";
        const double before = memory("VmRSS:");
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        ZvDbFileReport report;
        const double ours = secondsOf([&] { database->readFile(drawing.path(), report); });
        if (report.status != Zv::eOk)
            state.SkipWithError("cannot read the drawing");
        const double peak = memory("VmHWM:") - before;
        int count = 0;
        const double decoding = secondsOf([&] {
            const ZvDbDatabase::TransientReads transient(*database);
            ZvDbObjectPointer<ZvDbBlockTableRecord> block(database->modelSpaceId(), ZvDb::kForRead);
            ZvDbBlockTableRecordIterator *iterator = nullptr;
            block->newIterator(iterator);
            for (; !iterator->done(); iterator->step()) {
                ZvDbEntity *entity = nullptr;
                if (iterator->getEntity(entity, ZvDb::kForRead) == Zv::eOk)
                    entity->close();
                ++count;
            }
            delete iterator;
        });
        state.SetIterationTime(ours);
        state.counters["bare_ms"] = bare * 1000;
        state.counters["ratio"] = ours / bare;
        state.counters["memory"] = peak / double(drawing.size);
        state.counters["entities"] = count;
        state.counters["us_per_entity"] = (ours - bare) / count * 1e6;
        state.counters["decode_us"] = decoding / count * 1e6;
    }
}

BENCHMARK_CAPTURE(open, plain_100MB, "--size-mb 100 --plain")
    ->Iterations(1)
    ->Repetitions(repetitions)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, typed_100MB, "--size-mb 100 --typed")
    ->Iterations(1)
    ->Repetitions(repetitions)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, plain_500k, "--entities 500000 --plain")
    ->Iterations(1)
    ->Repetitions(repetitions)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);
BENCHMARK_CAPTURE(open, plain_50k, "--entities 50000 --plain")
    ->Iterations(1)
    ->Repetitions(repetitions)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond);

} // namespace
