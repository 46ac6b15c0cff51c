// SPDX-License-Identifier: MIT
// The drop-downs of names with 5,000 rows, beside a plain QComboBox that is emptied and given as many rows with
// addItem(), their texts and data ready. "ratio" holds the two of one run beside each other, the median of seven each,
// by the processor's time; 1 at most is wanted. "fill" is a refill, which reads the drawing as well: the plain list
// does not. "open" is what a user waits for when the drawing is as it was at the last opening, "changed" when a name
// has changed since (a plain list is filled before it opens).
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.
#include "timing.h"
#include "withmodule.h"
#include "zvutilmaterialcombobox.h"
#include "zvutilsblockcombobox.h"
#include "zvutilsdimstylecombobox.h"
#include "zvutilslayercombobox.h"
#include "zvutilsmleaderstylecombobox.h"
#include "zvutilsplotstylenamecombobox.h"
#include "zvutilstablestylecombobox.h"
#include "zvutilstextstylecombobox.h"
#include "zvutilsucscombobox.h"
#include "zvutilsviewcombobox.h"

#include "core/zvapdocument.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbdictionary.h"
#include "db/zvdbrecords.h"
#include "db/zvdbstyles.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QSignalBlocker>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kNames = 5000;
constexpr int kTimings = 7; // the median counts

ZvString nameOf(int number)
{
    return ZvString(("Name " + std::to_string(number)).c_str());
}

template <class Table, class Record> void addRecords(ZvDbDatabase &drawing)
{
    Table *table = nullptr;
    if (drawing.getSymbolTable(table, ZvDb::kForWrite) != Zv::eOk)
        return;
    for (int i = 0; i < kNames; ++i) {
        auto *record = new Record;
        record->setName(nameOf(i));
        ZvDbObjectId id;
        if (table->add(record, id) == Zv::eOk)
            record->close();
        else
            delete record;
    }
    table->close();
}

template <class Object> void addEntries(ZvDbObjectId dictionaryId)
{
    const ZvDbObjectPointer<ZvDbDictionary> dictionary(dictionaryId, ZvDb::kForWrite);
    for (int i = 0; i < kNames; ++i) {
        auto *object = new Object;
        ZvDbObjectId id;
        if (dictionary->setAt(nameOf(i), object, id) == Zv::eOk)
            object->close();
        else
            delete object;
    }
}

struct Subject
{
    const char *name;
    void (*add)(ZvDbDatabase &drawing);
    std::unique_ptr<QComboBox> (*make)();
    void (*fill)(QComboBox &combo);
};

template <class Combo, class... Arguments> std::unique_ptr<QComboBox> made(Arguments... arguments)
{
    return std::make_unique<Combo>(true, arguments...);
}

template <class Combo> void fill(QComboBox &combo)
{
    static_cast<Combo &>(combo).init();
}

template <class Combo> std::unique_ptr<QComboBox> make()
{
    return made<Combo>(static_cast<QWidget *>(nullptr));
}

const Subject kSubjects[] = {
    {"text styles", addRecords<ZvDbTextStyleTable, ZvDbTextStyleTableRecord>,
     [] { return made<ZvUtilsTextStyleComboBox>(static_cast<QWidget *>(nullptr), false); },
     fill<ZvUtilsTextStyleComboBox>},
    {"dimension styles", addRecords<ZvDbDimStyleTable, ZvDbDimStyleTableRecord>, make<ZvUtilsDimStyleComboBox>,
     fill<ZvUtilsDimStyleComboBox>},
    {"multileader styles",
     [](ZvDbDatabase &drawing) { addEntries<ZvDbMLeaderStyle>(drawing.mleaderStyleDictionaryId(true)); },
     make<ZvUtilsMleaderStyleComboBox>, fill<ZvUtilsMleaderStyleComboBox>},
    {"table styles", [](ZvDbDatabase &drawing) { addEntries<ZvDbTableStyle>(drawing.tableStyleDictionaryId(true)); },
     make<ZvUtilsTableStyleComboBox>, fill<ZvUtilsTableStyleComboBox>},
    {"layers", addRecords<ZvDbLayerTable, ZvDbLayerTableRecord>,
     [] { return made<ZvUtilsLayerComboBox>(0, static_cast<QWidget *>(nullptr)); }, fill<ZvUtilsLayerComboBox>},
    {"materials", [](ZvDbDatabase &drawing) { addEntries<ZvDbMaterial>(drawing.materialDictionaryId(true)); },
     make<ZvUtilsMaterialComboBox>, fill<ZvUtilsMaterialComboBox>},
    {"plot styles", [](ZvDbDatabase &drawing) { addEntries<ZvDbPlaceHolder>(drawing.plotStyleDictionaryId(true)); },
     make<ZvUtilsPlotStyleNameComboBox>, fill<ZvUtilsPlotStyleNameComboBox>},
    {"blocks", addRecords<ZvDbBlockTable, ZvDbBlockTableRecord>,
     [] { return made<ZvUtilsBlockComboBox>(static_cast<QWidget *>(nullptr), false); }, fill<ZvUtilsBlockComboBox>},
    {"coordinate systems", addRecords<ZvDbUCSTable, ZvDbUCSTableRecord>, make<ZvUtilsUcsComboBox>,
     fill<ZvUtilsUcsComboBox>},
    {"views", addRecords<ZvDbViewTable, ZvDbViewTableRecord>, make<ZvUtilsViewComboBox>, fill<ZvUtilsViewComboBox>},
};

struct PlainRow
{
    QString text;
    QVariant data;
};

void fillPlain(QComboBox &combo, const std::vector<PlainRow> &rows)
{
    combo.clear();
    for (const PlainRow &row : rows)
        combo.addItem(row.text, row.data);
}

double openingSeconds(QComboBox &combo)
{
    return processorSecondsOf([&combo] {
        combo.showPopup();
        combo.hidePopup();
    });
}

void report(benchmark::State &state, double ours, double plain)
{
    state.SetIterationTime(ours);
    state.counters["plain_ms"] = plain * 1e3;
    state.counters["ratio"] = ours / plain;
}

enum class Measured { kFill, kOpen, kChanged };

/// A row that is not the drawing's is a change as good as any other: the whole list is read again.
void spoil(QComboBox &combo)
{
    combo.setItemData(0, combo.itemData(0));
}

void namedCombo(benchmark::State &state, const Subject &subject, Measured measured)
{
    zvDocManagerPtr()->newDocument();
    ZvDbDatabase &drawing = *curDatabase();
    subject.add(drawing);
    const std::unique_ptr<QComboBox> combo = subject.make();
    if (combo->count() < kNames)
        state.SkipWithError("the list is short of rows");
    std::vector<PlainRow> rows;
    for (int row = 0; row < combo->count(); ++row)
        rows.push_back({combo->itemText(row), combo->itemData(row)});
    QComboBox plain;
    fillPlain(plain, rows);
    const bool opening = measured != Measured::kFill;
    const QSignalBlocker ourBlocker(opening ? nullptr : combo.get());
    for ([[maybe_unused]] auto round : state) {
        const double ours = medianOf(kTimings, [&] {
            if (measured == Measured::kChanged)
                spoil(*combo);
            return opening ? openingSeconds(*combo) : processorSecondsOf([&] { subject.fill(*combo); });
        });
        const double base = medianOf(kTimings, [&] {
            double seconds = processorSecondsOf([&] { fillPlain(plain, rows); });
            return opening ? seconds + openingSeconds(plain) : seconds;
        });
        report(state, ours, base);
    }
    zvDocManagerPtr()->closeDocument(zvDocManagerPtr()->currentDocument());
}

void registerAll()
{
    const struct
    {
        Measured measured;
        const char *prefix;
    } kinds[] = {{Measured::kFill, "fill/"}, {Measured::kOpen, "open/"}, {Measured::kChanged, "changed/"}};
    for (const auto &kind : kinds) {
        for (const Subject &subject : kSubjects) {
            benchmark::RegisterBenchmark(
                (std::string(kind.prefix) + subject.name).c_str(),
                [&subject, kind](benchmark::State &state) { namedCombo(state, subject, kind.measured); })
                ->UseManualTime()
                ->Iterations(1)
                ->Unit(benchmark::kMillisecond);
        }
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return runBenchmarksWithModule(argc, argv, registerAll);
}
