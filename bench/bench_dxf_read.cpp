// SPDX-License-Identifier: MIT
// Reading a drawing file of 100 MB through the tag store, beside the least that any reader must do: find the line ends
// and read the group codes. Each repetition times both and reports "ratio", ours to the bare scan; take the median.
// "memory" is the highest use of memory while loading, in file sizes.
#include "line_pair_scan.h"

#include "dxf_number.h"
#include "dxf_store.h"
#include "dxf_writer.h"

#include <benchmark/benchmark.h>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <string>
#include <unistd.h>

using namespace zvdxf;

namespace {

constexpr std::size_t fileSize = 100u * 1024 * 1024;
constexpr int repetitions = 7;

/*! A drawing of lines, circles and polylines in the proportion 6 : 3 : 1. */
void writeDrawing(Output &output)
{
    Writer writer(output, FileStyle());
    auto entity = [&writer, handle = 0x100u](const char *type, const char *marker) mutable {
        writer.tag(0, type);
        writer.tag(5, formatHandle(handle++));
        writer.tag(330, "1F");
        writer.tag(100, "AcDbEntity");
        writer.tag(8, "Layer" + std::to_string(handle % 50));
        writer.tag(100, marker);
    };
    auto number = [&writer, state = 12345u](int code) mutable {
        state = state * 1664525u + 1013904223u;
        writer.tag(code, formatReal(state / 65536 / 7.0));
    };
    std::size_t written = 0;
    writer.setProgress([&written](std::uint64_t done, std::uint64_t) {
        written = std::size_t(done);
        return true;
    });

    writer.tag(0, "SECTION");
    writer.tag(2, "HEADER");
    writer.tag(9, "$ACADVER");
    writer.tag(1, "AC1015");
    writer.tag(0, "ENDSEC");
    writer.tag(0, "SECTION");
    writer.tag(2, "ENTITIES");
    for (int i = 0; written < fileSize; ++i) {
        const int kind = i % 10;
        if (kind < 6) {
            entity("LINE", "AcDbLine");
            for (const int code : {10, 20, 30, 11, 21, 31})
                number(code);
        } else if (kind < 9) {
            entity("CIRCLE", "AcDbCircle");
            for (const int code : {10, 20, 30, 40})
                number(code);
        } else {
            entity("LWPOLYLINE", "AcDbPolyline");
            writer.tag(90, "8");
            writer.tag(70, "0");
            for (int vertex = 0; vertex < 8; ++vertex) {
                number(10);
                number(20);
            }
        }
    }
    writer.end();
    writer.finish();
}

const std::string &drawing()
{
    static const std::string bytes = [] {
        MemoryOutput output;
        writeDrawing(output);
        return output.bytes();
    }();
    return bytes;
}

class Silent : public Visitor
{
public:
    void record(SectionKind, const RecordView &record) override { tags += record.size(); }
    std::size_t tags = 0;
};

template <class Work> double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/*! Highest memory use in bytes since the last call of resetPeak(). */
double peakMemory()
{
    std::ifstream status("/proc/self/status");
    for (std::string line; std::getline(status, line);) {
        if (line.compare(0, 6, "VmHWM:") == 0)
            return std::atof(line.c_str() + 6) * 1024;
    }
    return 0;
}

void resetPeak()
{
    std::ofstream("/proc/self/clear_refs") << "5";
}

void loadFromMemory(benchmark::State &state)
{
    const std::string &bytes = drawing();
    for (auto _ : state) {
        const double bare = secondsOf([&] { benchmark::DoNotOptimize(scanLinePairs(bytes.data(), bytes.size())); });
        Buffer buffer(bytes);
        Store store;
        Silent visitor;
        const double ours = secondsOf([&] { store.load(std::move(buffer), &visitor); });
        benchmark::DoNotOptimize(visitor.tags);
        state.SetIterationTime(ours);
        state.counters["bare_ms"] = bare * 1000;
        state.counters["ratio"] = ours / bare;
    }
}

void loadFromFile(benchmark::State &state)
{
    char path[] = "/tmp/bench_dxf_XXXXXX";
    const int file = ::mkstemp(path);
    std::size_t size = 0;
    {
        // Not kept, so that it does not count as the reader's memory.
        MemoryOutput output;
        writeDrawing(output);
        size = output.bytes().size();
        if (file < 0 || ::write(file, output.bytes().data(), size) != ssize_t(size)) {
            state.SkipWithError("cannot write the file");
            return;
        }
    }
    ::close(file);

    for (auto _ : state) {
        const double bare = secondsOf([&] {
            const std::unique_ptr<char[]> bytes(new char[size]);
            std::FILE *const stream = std::fopen(path, "rb");
            if (std::fread(bytes.get(), 1, size, stream) != size)
                state.SkipWithError("cannot read the file");
            std::fclose(stream);
            benchmark::DoNotOptimize(scanLinePairs(bytes.get(), size));
        });
        resetPeak();
        const double before = peakMemory();
        Store store;
        Silent visitor;
        const double ours = secondsOf([&] { store.load(path, &visitor); });
        state.SetIterationTime(ours);
        state.counters["bare_ms"] = bare * 1000;
        state.counters["ratio"] = ours / bare;
        state.counters["memory"] = (peakMemory() - before) / double(size);
    }
    ::unlink(path);
}

void writeUnchanged(benchmark::State &state)
{
    const std::string &bytes = drawing();
    Store store;
    store.load(Buffer(bytes));
    for (auto _ : state) {
        std::string copy;
        const double bare = secondsOf([&] { copy = bytes; });
        copy = std::string();
        MemoryOutput output;
        const double ours = secondsOf([&] {
            Writer writer(store, output);
            writer.keepAll();
            writer.finish();
        });
        state.SetIterationTime(ours);
        state.counters["bare_ms"] = bare * 1000;
        state.counters["ratio"] = ours / bare;
    }
}

void configure(benchmark::internal::Benchmark *bench)
{
    bench->Iterations(1)
        ->Repetitions(repetitions)
        ->UseManualTime()
        ->Unit(benchmark::kMillisecond)
        ->ReportAggregatesOnly();
}

} // namespace

BENCHMARK(loadFromFile)->Apply(configure);
BENCHMARK(loadFromMemory)->Apply(configure);
BENCHMARK(writeUnchanged)->Apply(configure);
