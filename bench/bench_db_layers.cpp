// SPDX-License-Identifier: MIT
// Adding layers must cost the same for the ten-thousandth as for the first. The baseline beside it does what any
// database has to: a record, its name in a hash, an entry in a list.
#include "db/zvdbdatabase.h"
#include "db/zvdbrecords.h"

#include <benchmark/benchmark.h>

#include <memory>
#include <string>
#include <unordered_map>
#include <vector>

namespace {

class Counter : public ZvStaticRxObject<ZvDbDatabaseReactor>
{
public:
    void objectAppended(const ZvDbDatabase *, const ZvDbObject *) override { ++appended; }
    long long appended = 0;
};

ZvString layerName(int number)
{
    return ("Layer " + std::to_string(number)).c_str();
}

/// Every layer by itself, as a user adds them: its own undo step, its own notices, the table closed each time.
void layersAdded(benchmark::State &state)
{
    const int count = int(state.range(0));
    Counter counter;
    for (auto _ : state) {
        const ZvDbDatabasePtr database = ZvDbDatabase::create();
        database->addReactor(&counter);
        for (int i = 0; i < count; ++i) {
            ZvDbLayerTable *table = nullptr;
            database->getSymbolTable(table, ZvDb::kForWrite);
            ZvDbLayerTableRecord *layer = new ZvDbLayerTableRecord;
            layer->setName(layerName(i));
            ZvDbObjectId id;
            table->add(layer, id);
            layer->close();
            table->close();
        }
        database->removeReactor(&counter);
    }
    if (counter.appended != (long long)(state.iterations()) * count)
        state.SkipWithError("a layer was not added");
    state.SetComplexityN(count);
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(layersAdded)->Arg(500)->Arg(2000)->Arg(10000)->Complexity(benchmark::oN);

void baseline(benchmark::State &state)
{
    const int count = int(state.range(0));
    for (auto _ : state) {
        std::vector<std::unique_ptr<ZvDbLayerTableRecord>> records;
        std::unordered_map<ZvString, int> names;
        for (int i = 0; i < count; ++i) {
            auto layer = std::make_unique<ZvDbLayerTableRecord>();
            layer->setName(layerName(i));
            names.emplace(layer->name().toUpper(), i);
            records.push_back(std::move(layer));
        }
        benchmark::DoNotOptimize(records.data());
    }
    state.SetComplexityN(count);
    state.SetItemsProcessed(state.iterations() * count);
}
BENCHMARK(baseline)->Arg(500)->Arg(2000)->Arg(10000)->Complexity(benchmark::oN);

} // namespace
