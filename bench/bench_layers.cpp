// SPDX-License-Identifier: MIT
//
// The layer combo's list beside two others of as many rows, in one run. Each repetition times both and reports "ratio",
// ours to the other; take the median.
//
//   - painted: a QTableView whose delegate paints icons and names, without any widget in its cells. The first opening
//   is
//     aimed at 3 times its time, opening again and scrolling at twice.
//   - plain: a QTableWidget with four buttons in every row, all of them children of the viewport. 50 changed rows are
//     aimed at a fifth of its time.
//   - growth: our own first opening with 10,000 layers beside that with 1,000, aimed at twice.
//
// An opening ends with the first paint. Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "private/zvlayertable.h"
#include "withmodule.h"
#include "zvlayerultralcombobox.h"

#include "core/zvapdocument.h"
#include "db/zvdbdatabase.h"
#include "db/zvdbrecords.h"

#include <benchmark/benchmark.h>

#include <QAbstractTableModel>
#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStyleFactory>
#include <QStyledItemDelegate>
#include <QTableView>
#include <QVBoxLayout>

#include <cstdlib>
#include <ctime>
#include <memory>

namespace {

constexpr int kRepetitions = 7;
constexpr int kScrolls = 20;
constexpr int kScrolledRows = 3;
constexpr int kChangedRows = 50;
constexpr int kRowHeight = 24;

/// Of the processor: everything here runs on one thread, and others may be using the machine.
double processorSeconds()
{
    timespec time = {};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + 1e-9 * double(time.tv_nsec);
}

template <class Act> double secondsOf(Act act)
{
    const double start = processorSeconds();
    act();
    return processorSeconds() - start;
}

/// Notes that a widget was painted.
class PaintWatch : public QObject
{
public:
    explicit PaintWatch(QWidget *widget) { widget->installEventFilter(this); }
    void wait()
    {
        for (int turn = 0; !m_painted; ++turn) {
            if (turn > 100000)
                std::abort(); // it never comes
            QApplication::processEvents();
        }
        m_painted = false;
    }
    void clear()
    {
        QApplication::processEvents();
        m_painted = false;
    }

protected:
    bool eventFilter(QObject *object, QEvent *event) override
    {
        m_painted = m_painted || event->type() == QEvent::Paint;
        return QObject::eventFilter(object, event);
    }

private:
    bool m_painted = false;
};

ZvDbDatabase &drawing()
{
    return *zvDocManagerPtr()->currentDocument()->database();
}

/// A new current document with so many layers, "0" among them.
void openDrawing(int layers)
{
    if (ZvApDocument *before = zvDocManagerPtr()->currentDocument())
        zvDocManagerPtr()->closeDocument(before);
    zvDocManagerPtr()->newDocument();
    ZvDbLayerTable *table = nullptr;
    drawing().getSymbolTable(table, ZvDb::kForWrite);
    for (int i = 1; i < layers; ++i) {
        auto *layer = new ZvDbLayerTableRecord;
        layer->setName(("Layer " + std::to_string(100000 + i)).c_str());
        ZvCmColor color;
        color.setColorIndex(std::uint16_t(1 + i % 7));
        layer->setColor(color);
        ZvDbObjectId id;
        table->add(layer, id);
        layer->close();
    }
    table->close();
}

QVector<ZvLayerTable::Layer> rowsOfDrawing()
{
    ZvArray<ZevaUISetting::SigleLayerData> layers;
    ZevaUISetting::getLayerInfos(layers, nullptr);
    QVector<ZvLayerTable::Layer> rows;
    for (const auto &layer : layers)
        rows.append({layer.isOff, layer.isFrozen, layer.isLocked,
                     QColor(layer.color.red(), layer.color.green(), layer.color.blue()),
                     QString::fromUtf8(layer.name.toUtf8().c_str())});
    return rows;
}

const ZvArray<QIcon> &icons()
{
    static const ZvArray<QIcon> made = [] {
        ZvArray<QIcon> list;
        for (int i = 0; i < 6; ++i) {
            QPixmap pixmap(16, 16);
            pixmap.fill(QColor(40 * i, 100, 200));
            list.append(QIcon(pixmap));
        }
        return list;
    }();
    return made;
}

// ---- the painted table

class PaintedModel : public QAbstractTableModel
{
public:
    explicit PaintedModel(const QVector<ZvLayerTable::Layer> &rows) : m_rows(rows) { }
    int rowCount(const QModelIndex &parent) const override { return parent.isValid() ? 0 : m_rows.size(); }
    int columnCount(const QModelIndex &) const override { return ZvLayerTable::kColumns; }
    QVariant data(const QModelIndex &index, int role) const override
    {
        const ZvLayerTable::Layer &row = m_rows.at(index.row());
        switch (index.column()) {
        case ZvLayerTable::kName:
            return role == Qt::DisplayRole ? QVariant(row.name) : QVariant();
        case ZvLayerTable::kColor:
            return role == Qt::BackgroundRole ? QVariant(row.color) : QVariant();
        case ZvLayerTable::kSwitch:
            return role == Qt::UserRole ? ZvLayerTable::iconIndex(ZvLayerTable::kSwitch, row.off) : QVariant();
        case ZvLayerTable::kFreeze:
            return role == Qt::UserRole ? ZvLayerTable::iconIndex(ZvLayerTable::kFreeze, row.frozen) : QVariant();
        default:
            return role == Qt::UserRole ? ZvLayerTable::iconIndex(ZvLayerTable::kLock, row.locked) : QVariant();
        }
    }

private:
    const QVector<ZvLayerTable::Layer> m_rows;
};

class PaintingDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (index.column() == ZvLayerTable::kName) {
            QStyledItemDelegate::paint(painter, option, index);
        } else if (index.column() == ZvLayerTable::kColor) {
            painter->fillRect(option.rect.adjusted(1, 4, -1, -4), index.data(Qt::BackgroundRole).value<QColor>());
        } else {
            icons()[index.data(Qt::UserRole).toInt()].paint(painter, option.rect);
        }
    }
};

/// In a window like the combo's popup.
class PaintedList
{
public:
    PaintedList(const QVector<ZvLayerTable::Layer> &rows, const QSize &size)
        : m_model(rows), m_window(nullptr, Qt::Popup), view(new QTableView(&m_window))
    {
        auto *layout = new QVBoxLayout(&m_window);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->addWidget(view);
        view->setModel(&m_model);
        view->setItemDelegate(new PaintingDelegate(view));
        view->setSelectionBehavior(QAbstractItemView::SelectRows);
        view->setEditTriggers(QAbstractItemView::NoEditTriggers);
        view->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        view->setShowGrid(false);
        view->setFrameShape(QFrame::NoFrame);
        view->horizontalHeader()->hide();
        view->verticalHeader()->hide();
        view->horizontalHeader()->setStretchLastSection(true);
        view->horizontalHeader()->setMinimumSectionSize(18);
        view->verticalHeader()->setMinimumSectionSize(18);
        view->verticalHeader()->setDefaultSectionSize(kRowHeight);
        for (int column = 0; column < ZvLayerTable::kName; ++column)
            view->setColumnWidth(column, 18);
        m_window.resize(size);
    }
    void show() { m_window.show(); }
    void hide() { m_window.hide(); }

private:
    PaintedModel m_model;
    QWidget m_window;

public:
    QTableView *const view;
};

// ---- the plain table: what QTableWidget offers, filled as one would

class PlainTable : public QTableWidget
{
public:
    explicit PlainTable(const QVector<ZvLayerTable::Layer> &rows)
        : QTableWidget(rows.size(), ZvLayerTable::kColumns), m_rows(rows)
    {
        horizontalHeader()->hide();
        verticalHeader()->hide();
        for (int row = 0; row < rows.size(); ++row) {
            for (int column = 0; column < ZvLayerTable::kButtons; ++column) {
                auto *button = new QPushButton(this);
                button->setIcon(iconOf(rows.at(row), column));
                setCellWidget(row, column, button);
            }
            setItem(row, ZvLayerTable::kName, new QTableWidgetItem(rows.at(row).name));
        }
    }
    void setLayers(const QVector<ZvLayerTable::Layer> &rows)
    {
        for (int row = 0; row < rows.size(); ++row) {
            if (rows.at(row).off == m_rows.at(row).off && rows.at(row).name == m_rows.at(row).name)
                continue;
            for (int column = 0; column < ZvLayerTable::kButtons; ++column)
                static_cast<QPushButton *>(cellWidget(row, column))->setIcon(iconOf(rows.at(row), column));
        }
        m_rows = rows;
    }

private:
    static QIcon iconOf(const ZvLayerTable::Layer &layer, int column)
    {
        return icons()[ZvLayerTable::iconIndex(ZvLayerTable::Column(column),
                                               column == ZvLayerTable::kSwitch && layer.off)];
    }

    QVector<ZvLayerTable::Layer> m_rows;
};

// ---- ours

/// The combo in a window.
class OurList
{
public:
    OurList() : combo(true, &m_window), table(combo.findChild<QTableWidget *>())
    {
        combo.setGeometry(0, 0, 200, 26);
        m_window.resize(240, 40);
        m_window.show();
        PaintWatch(&combo).wait();
    }
    void show() { combo.showPopup(); }
    void hide() { combo.hidePopup(); }

private:
    QWidget m_window;

public:
    ZvLayerUltralComboBox combo;
    QTableWidget *const table;
};

QSize popupSize()
{
    static const QSize size = [] {
        OurList ours;
        PaintWatch watch(ours.table->viewport());
        ours.show();
        watch.wait();
        return ours.table->size();
    }();
    return size;
}

template <class List> double firstOpeningOf(List &list, QWidget *viewport)
{
    PaintWatch watch(viewport);
    return secondsOf([&] {
        list.show();
        watch.wait();
    });
}

double ourFirstOpening()
{
    OurList ours;
    return firstOpeningOf(ours, ours.table->viewport());
}

double paintedFirstOpening(const QVector<ZvLayerTable::Layer> &rows)
{
    const QSize size = popupSize();
    std::unique_ptr<PaintedList> painted;
    return secondsOf([&] {
        painted = std::make_unique<PaintedList>(rows, size);
        firstOpeningOf(*painted, painted->view->viewport());
    });
}

void report(benchmark::State &state, double ours, double other)
{
    state.SetIterationTime(ours);
    state.counters["ratio"] = ours / other;
    state.counters["other_ms"] = other * 1000;
}

#define LAYER_BENCH(function)                                                                                          \
    BENCHMARK(function)                                                                                                \
        ->UseManualTime()                                                                                              \
        ->Iterations(1)                                                                                                \
        ->Repetitions(kRepetitions)                                                                                    \
        ->ReportAggregatesOnly()                                                                                       \
        ->Unit(benchmark::kMillisecond)

void firstOpening(benchmark::State &state)
{
    openDrawing(int(state.range(0)));
    const QVector<ZvLayerTable::Layer> rows = rowsOfDrawing();
    for (auto _ : state) {
        const double painted = paintedFirstOpening(rows);
        report(state, ourFirstOpening(), painted);
    }
}
LAYER_BENCH(firstOpening)->Arg(1000)->Arg(10000);

/// With all layers to be read: the drawing became current after the combo was made.
void firstOpeningOfAnotherDrawing(benchmark::State &state)
{
    const int layers = int(state.range(0));
    for (auto _ : state) {
        openDrawing(1);
        OurList ours;
        openDrawing(layers);
        const double painted = paintedFirstOpening(rowsOfDrawing());
        report(state, firstOpeningOf(ours, ours.table->viewport()), painted);
    }
}
LAYER_BENCH(firstOpeningOfAnotherDrawing)->Arg(1000)->Arg(10000);

void growth(benchmark::State &state)
{
    for (auto _ : state) {
        openDrawing(1000);
        const double few = ourFirstOpening();
        openDrawing(10000);
        report(state, ourFirstOpening(), few);
    }
}
LAYER_BENCH(growth);

void openingAgain(benchmark::State &state)
{
    openDrawing(int(state.range(0)));
    PaintedList painted(rowsOfDrawing(), popupSize());
    firstOpeningOf(painted, painted.view->viewport());
    painted.hide();
    OurList ours;
    firstOpeningOf(ours, ours.table->viewport());
    ours.hide();
    for (auto _ : state) {
        const double other = firstOpeningOf(painted, painted.view->viewport());
        painted.hide();
        const double own = firstOpeningOf(ours, ours.table->viewport());
        ours.hide();
        report(state, own, other);
    }
}
LAYER_BENCH(openingAgain)->Arg(1000)->Arg(10000);

double scroll(QTableView *view, int step)
{
    PaintWatch watch(view->viewport());
    watch.clear();
    QScrollBar *bar = view->verticalScrollBar();
    return secondsOf([&] {
               for (int i = 0; i < kScrolls; ++i) {
                   bar->setValue(bar->value() + step);
                   watch.wait();
               }
           })
        / kScrolls;
}

/// Downwards into rows that were never in view, or back over those that were.
void scrolling(benchmark::State &state)
{
    const bool isBack = state.range(1) != 0;
    openDrawing(int(state.range(0)));
    PaintedList painted(rowsOfDrawing(), popupSize());
    firstOpeningOf(painted, painted.view->viewport());
    painted.hide(); // two popups cannot be open at a time
    OurList ours;
    firstOpeningOf(ours, ours.table->viewport());
    ours.hide();
    for (auto _ : state) {
        const auto measured = [isBack](auto &list, QTableView *view) {
            const int place = view->verticalScrollBar()->value();
            firstOpeningOf(list, view->viewport());
            view->verticalScrollBar()->setValue(place);
            double time = scroll(view, kScrolledRows);
            if (isBack)
                time = scroll(view, -kScrolledRows);
            list.hide();
            return time;
        };
        const double other = measured(painted, painted.view);
        report(state, measured(ours, ours.table), other);
    }
}
LAYER_BENCH(scrolling)
    ->ArgNames({"layers", "back"})
    ->Args({1000, 0})
    ->Args({10000, 0})
    ->Args({1000, 1})
    ->Args({10000, 1});

void change(QVector<ZvLayerTable::Layer> &rows)
{
    for (int i = 0; i < kChangedRows; ++i)
        rows[i * rows.size() / kChangedRows].off = !rows.at(i * rows.size() / kChangedRows).off;
}

void rowsChanged(benchmark::State &state)
{
    openDrawing(int(state.range(0)));
    QVector<ZvLayerTable::Layer> rows = rowsOfDrawing();
    PlainTable plain(rows);
    plain.resize(popupSize());
    ZvLayerTable ours(&icons(), nullptr);
    ours.resize(popupSize());
    ours.setLayers(rows);
    PaintWatch plainWatch(plain.viewport());
    PaintWatch ourWatch(ours.viewport());
    plain.show();
    plainWatch.wait();
    ours.show();
    ourWatch.wait();
    plainWatch.clear();
    for (auto _ : state) {
        change(rows);
        plainWatch.clear();
        const double other = secondsOf([&] {
            plain.setLayers(rows);
            plain.viewport()->update();
            plainWatch.wait();
        });
        ourWatch.clear();
        const double own = secondsOf([&] {
            ours.setLayers(rows);
            ours.viewport()->update();
            ourWatch.wait();
        });
        report(state, own, other);
    }
}
LAYER_BENCH(rowsChanged)->Arg(1000)->Arg(5000)->Arg(10000);

/// Filling the list, up to kAllBuilt rows with all their buttons. Beside the plain table, which was never shown.
void construction(benchmark::State &state)
{
    openDrawing(int(state.range(0)));
    const QVector<ZvLayerTable::Layer> rows = rowsOfDrawing();
    for (auto _ : state) {
        const double other = secondsOf([&] { const PlainTable plain(rows); });
        const double own = secondsOf([&] {
            ZvLayerTable ours(&icons(), nullptr);
            ours.setLayers(rows);
        });
        report(state, own, other);
    }
}
LAYER_BENCH(construction)->Arg(1000)->Arg(2000)->Arg(10000);

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return runBenchmarksWithModule(argc, argv);
}
