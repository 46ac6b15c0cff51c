// SPDX-License-Identifier: MIT
//
// Lists of 500 line types of different patterns. Each benchmark runs its baseline beside the measured code and reports
// "ratio", ours to the baseline; take the median. Aimed at:
//
//   - fillUnchanged: the line type combo filled anew where no line type has changed, beside clear() and insertItem()
//   with
//     ready icons, texts and ids on a QComboBox, in the same order: at most 1.2;
//   - fillOneEdited: the same where one pattern was edited in between;
//   - keptPicture: a picture that the renderer has kept, beside one that it draws: a hundredth;
//   - facadeKept: the same through the facade, with all that it makes around the call.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "withmodule.h"
#include "zvlinetypecombobox.h"
#include "zvodasetting.h"

#include "core/zvapdocument.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "utils/zventityimage.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QStyleFactory>

#include <chrono>

namespace {

constexpr int kLineTypes = 500;
constexpr int kRepetitions = 5;
constexpr int kFills = 20;

ZvDbDatabase &drawing()
{
    return *zvDocManagerPtr()->currentDocument()->database();
}

void setPattern(ZvDbLinetypeTableRecord &record, double first)
{
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(4);
    dashes[0].length = first;
    dashes[1].length = -2.0;
    dashes[2].length = 1.0;
    dashes[3].length = -2.0;
    record.setDashes(dashes);
}

void addLineTypes()
{
    ZvDbLinetypeTable *table = nullptr;
    drawing().getSymbolTable(table, ZvDb::kForWrite);
    for (int i = 0; i < kLineTypes; ++i) {
        auto *record = new ZvDbLinetypeTableRecord;
        record->setName(QStringLiteral("Line type %1").arg(i).toUtf8().constData());
        setPattern(*record, 1.0 + i * 0.1);
        ZvDbObjectId id;
        table->add(record, id);
        record->close();
    }
    table->close();
}

/// Seconds for one of \a count runs.
template <class Act> double secondsFor(int count, Act act)
{
    const auto start = std::chrono::steady_clock::now();
    for (int i = 0; i < count; ++i)
        act(i);
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count() / count;
}

void report(benchmark::State &state, double ours, double baseline)
{
    state.counters["ratio"] = ours / baseline;
    state.counters["baseline_us"] = baseline * 1e6;
    state.SetIterationTime(ours);
}

struct Row
{
    QIcon icon;
    QString text;
    QVariant data;
};

/// The same list with ready icons.
double plainFill(const ZvLineTypeComboBox &model)
{
    QVector<Row> rows;
    for (int i = 0; i < model.count(); ++i)
        rows << Row{model.itemIcon(i), model.itemText(i), model.itemData(i)};
    QComboBox combo;
    combo.setIconSize(model.iconSize());
    const auto fill = [&](int) {
        combo.clear();
        for (const Row &row : qAsConst(rows))
            combo.insertItem(combo.count(), row.icon, row.text, row.data);
    };
    fill(0);
    return secondsFor(kFills, fill);
}

void fillUnchanged(benchmark::State &state)
{
    ZvLineTypeComboBox combo(true, nullptr);
    for (auto _ : state) {
        const double baseline = plainFill(combo);
        report(state, secondsFor(kFills, [&](int) { combo.init(); }), baseline);
    }
    state.counters["rows"] = combo.count();
}
// clang-format off
BENCHMARK(fillUnchanged)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();
// clang-format on

void fillOneEdited(benchmark::State &state)
{
    ZvLineTypeComboBox combo(true, nullptr);
    const ZvDbObjectId edited = combo.getLineType(kLineTypes / 2);
    static double first = 100.0;
    for (auto _ : state) {
        const double baseline = plainFill(combo);
        report(state,
               secondsFor(kFills,
                          [&](int) {
                              {
                                  const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(edited, ZvDb::kForWrite);
                                  setPattern(*record, first += 0.01);
                              }
                              combo.init();
                          }),
               baseline);
    }
}
// clang-format off
BENCHMARK(fillOneEdited)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();
// clang-format on

ZvArrayEx<ZvSmartPtr<ZvDbEntity>> lineOf(ZvDbObjectId lineType)
{
    auto line = ZvSmartPtr<ZvDbEntity>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
    static_cast<ZvDbLine *>(line.get())->setStartPoint(ZvGePoint3d(10, 10, 0));
    static_cast<ZvDbLine *>(line.get())->setEndPoint(ZvGePoint3d(100, 10, 0));
    line->setLinetype(lineType, true);
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> entities;
    entities.append(line);
    return entities;
}

void keptPicture(benchmark::State &state)
{
    auto entities = lineOf(ZevaUISetting::findLineStyleTableRecordByName("Line type 7", nullptr));
    const ZvJsonPtr options = ElementValue::createObject(IElementValueBase::kObject);
    options->SetDataI("width", 80);
    options->SetDataI("height", 25);
    static double scale = 1.0;
    for (auto _ : state) {
        const double drawn = secondsFor(1000, [&](int) {
            entities[0]->setLinetypeScale(scale += 1e-6, true); // a picture of its own each time
            benchmark::DoNotOptimize(zvsiutCreateEntityImage(&drawing(), entities, options));
        });
        const std::uint64_t before = zvsiutEntityImagesDrawn();
        const double kept = secondsFor(
            10000, [&](int) { benchmark::DoNotOptimize(zvsiutCreateEntityImage(&drawing(), entities, options)); });
        if (zvsiutEntityImagesDrawn() != before)
            state.SkipWithError("the picture was not kept");
        report(state, kept, drawn);
    }
}
// clang-format off
BENCHMARK(keptPicture)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();
// clang-format on

void facadeKept(benchmark::State &state)
{
    const auto readAll = [](int width) {
        ZevaUISetting::getLineTypeInfo(width, 25, [](ZvSmartPtr<ZvGiRasterImage> &image, ZvString &, ZvDbObjectId &) {
            benchmark::DoNotOptimize(image.get());
        });
    };
    static int width = 100;
    for (auto _ : state) {
        const double drawn = secondsFor(1, [&](int) { readAll(++width); });
        report(state, secondsFor(kFills, [&](int) { readAll(width); }), drawn);
    }
}
// clang-format off
BENCHMARK(facadeKept)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();
// clang-format on

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return runBenchmarksWithModule(argc, argv, [] {
        zvDocManagerPtr()->newDocument();
        addLineTypes();
    });
}
