// SPDX-License-Identifier: MIT
// Adding layers with all of the library's controls on the bus, in a window that is shown: in one command, and one by
// one as a user or a plug-in adds them, with the event loop run after each. Both have to be linear. "exponent" is that
// of the growth from 500 to 4,000 layers, aimed at 1.1 at most; "ratio" holds 2,000 layers beside the same without
// controls.
//
// A new control joins by one line in the table below. Run it with QT_QPA_PLATFORM=offscreen where there is no display.
#include "timing.h"
#include "zvcolorcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"
#include "zvmonitorglobaluisystemvarreactor.h"
#include "zvqtentrypoint.h"
#include "zvqtupdatebusservice.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsdimstylecombobox.h"
#include "zvutilslayercombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilsplotstylenamecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"
#include "zvutilsucscombobox.h"
#include "zvutilsviewcombobox.h"

#include "base/zvregistry.h"
#include "core/zvapdocument.h"
#include "core/zveditor.h"
#include "core/zvsystem.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbrecords.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QVBoxLayout>

#include <algorithm>
#include <cmath>
#include <memory>
#include <string>
#include <vector>

namespace {

template <class Control> QWidget *hooked(QWidget *parent)
{
    return new Control(true, parent);
}

typedef QWidget *(*MakeControl)(QWidget *parent);
constexpr MakeControl kControls[] = {
    hooked<ZvColorComboBox>,
    hooked<ZvLineTypeComboBox>,
    [](QWidget *parent) -> QWidget * {
        return new ZvLineWidthComboBox(true, ZvLineWidthComboBox::kItemByLayer, parent);
    },
    [](QWidget *parent) -> QWidget * { return new ZvUtilsLayerComboBox(true, 0, parent); },
    [](QWidget *parent) -> QWidget * { return new ZvUtilsTextStyleComboBox(true, parent, true); },
    hooked<ZvUtilsDimStyleComboBox>,
    hooked<ZvUtilsTableStyleComboBox>,
    hooked<ZvUtilsMleaderStyleComboBox>,
    hooked<ZvUtilsMaterialComboBox>,
    hooked<ZvUtilsPlotStyleNameComboBox>,
    hooked<ZvUtilsUcsComboBox>,
    hooked<ZvUtilsViewComboBox>,
};

constexpr int kSizes[] = {500, 1000, 2000, 4000};
constexpr int kComparedSize = 2000;
constexpr int kTimings = 5; // of each size; the median counts

class BusService : public ZvQtUpdateBusService
{
public:
    explicit BusService(ZvMonitorGlobalUISystemVarReactor &bus) : m_bus(bus) { }
    void addReceiver(CZvQtControlHelp *receiver) override { m_bus.addUpdateUIReceiver(receiver); }
    void removeReceiver(CZvQtControlHelp *receiver) override { m_bus.removeUpdateUIReceiver(receiver); }

private:
    ZvMonitorGlobalUISystemVarReactor &m_bus;
};

/// The bus with its service, for the time of one benchmark.
struct BusHost
{
    BusHost() { zv_arbitDict_regservice(key(), ZvRxObjectPtr(&service)); }
    ~BusHost() { zv_arbitDict_clearservice(key()); }
    BusHost(const BusHost &) = delete;
    BusHost &operator=(const BusHost &) = delete;
    static ZvString key() { return ZvString(wchar_t(ZvQtUpdateBusService::kKey)); }

    ZvMonitorGlobalUISystemVarReactor bus;
    ZvStaticRxObject<BusService> service{bus};
};

void addLayer(int number)
{
    ZvDbLayerTable *table = nullptr;
    if (curDatabase()->getSymbolTable(table, ZvDb::kForWrite) != Zv::eOk)
        return;
    auto *layer = new ZvDbLayerTableRecord;
    layer->setName(("Layer " + std::to_string(number)).c_str());
    ZvDbObjectId id;
    if (table->add(layer, id) == Zv::eOk)
        layer->close();
    else
        delete layer;
    table->close();
}

int layersToAdd = 0; // a command takes no arguments

void addThem()
{
    for (int i = 0; i < layersToAdd; ++i)
        addLayer(i);
}

void addInOneCommand(int count)
{
    layersToAdd = count;
    zvedMenuMacro(L"BENCHLAYERS", false);
    zvedRunQueue();
    QCoreApplication::processEvents();
}

void addOneByOne(int count)
{
    for (int i = 0; i < count; ++i) {
        addLayer(i);
        QCoreApplication::processEvents();
    }
}

typedef void (*Add)(int count);

/// Seconds for \a count layers in a new drawing.
double timeOnce(ZvMonitorGlobalUISystemVarReactor &bus, Add add, int count)
{
    ZvApDocument *document = zvDocManagerPtr()->newDocument();
    bus.enableUpdateUI(true);
    QCoreApplication::processEvents();
    const double seconds = processorSecondsOf([&] { add(count); });
    zvDocManagerPtr()->closeDocument(document);
    return seconds;
}

double timeOf(ZvMonitorGlobalUISystemVarReactor &bus, Add add, int count)
{
    return medianOf(kTimings, [&] { return timeOnce(bus, add, count); });
}

/// Slope of the times over the sizes, both as logarithms.
double growthExponent(const std::vector<double> &times)
{
    double sumX = 0.0;
    double sumY = 0.0;
    double sumXX = 0.0;
    double sumXY = 0.0;
    for (std::size_t i = 0; i < times.size(); ++i) {
        const double x = std::log(kSizes[i]);
        const double y = std::log(times[i]);
        sumX += x;
        sumY += y;
        sumXX += x * x;
        sumXY += x * y;
    }
    const double n = double(times.size());
    return (n * sumXY - sumX * sumY) / (n * sumXX - sumX * sumX);
}

void layersWithControls(benchmark::State &state, Add add)
{
    BusHost host;
    for (auto _ : state) {
        const double bare = timeOf(host.bus, add, kComparedSize);
        QWidget window;
        auto *column = new QVBoxLayout(&window);
        for (const MakeControl make : kControls)
            column->addWidget(make(&window));
        window.show();
        QCoreApplication::processEvents();
        std::vector<double> times;
        for (const int size : kSizes)
            times.push_back(timeOf(host.bus, add, size));
        const double compared
            = times[std::size_t(std::find(std::begin(kSizes), std::end(kSizes), kComparedSize) - std::begin(kSizes))];
        for (std::size_t i = 0; i < times.size(); ++i)
            state.counters["us_per_layer_of_" + std::to_string(kSizes[i])] = times[i] / kSizes[i] * 1e6;
        state.counters["controls"] = double(std::size(kControls));
        state.counters["exponent"] = growthExponent(times);
        state.counters["ratio"] = compared / bare;
        state.SetIterationTime(compared);
    }
}
BENCHMARK_CAPTURE(layersWithControls, in_one_command, addInOneCommand)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly();
BENCHMARK_CAPTURE(layersWithControls, one_by_one, addOneByOne)
    ->UseManualTime()
    ->Iterations(1)
    ->Repetitions(5)
    ->ReportAggregatesOnly();

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    CHcSystem::start();
    zvrxEntryPoint(kZvRxLoadModule);
    zvedCommandStack()->addCommand(L"BENCH", L"BENCHLAYERS", L"BENCHLAYERS", 0, addThem, nullptr, -1,
                                   ZvRxResourceInstance(nullptr), 0);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    zvedCommandStack()->removeCmd(L"BENCH", L"BENCHLAYERS");
    zvrxEntryPoint(kZvRxUnloadModule);
    CHcSystem::stop();
    return 0;
}
