// SPDX-License-Identifier: MIT
//
// The table of line types beside a plain QTableView with ready pixmaps, in one run, 500 line types each:
//
//   - one step of scrolling, painting included; aimed at 1.5 times the plain table's time. The counter "rendered" tells
//     how many pictures the kernel drew meanwhile, and has to be 0;
//   - filling the table, without pictures.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "withmodule.h"
#include "zvqtlinetypetableview.h"

#include "core/zvapdocument.h"
#include "db/zvdbrecords.h"
#include "utils/zventityimage.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QHeaderView>
#include <QPainter>
#include <QScrollBar>
#include <QStandardItemModel>
#include <QStyleFactory>
#include <QStyledItemDelegate>

#include <memory>
#include <string>
#include <vector>

namespace {

constexpr int kRows = 500;
constexpr int kPictureWidth = 250;

std::string nameOf(int row)
{
    return "TYPE" + std::to_string(row);
}

void addLineTypes(ZvDbDatabase &database)
{
    ZvDbLinetypeTable *table = nullptr;
    database.getSymbolTable(table, ZvDb::kForWrite);
    for (int i = 0; i < kRows; ++i) {
        auto *record = new ZvDbLinetypeTableRecord;
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(4);
        const double lengths[] = {1.0 + i, -1.0, 0.0, -1.0};
        for (std::size_t k = 0; k < dashes.size(); ++k)
            dashes[k].length = lengths[k];
        record->setName(ZvString(nameOf(i).c_str()));
        record->setDashes(dashes);
        ZvDbObjectId id;
        table->add(record, id);
        record->close();
    }
    table->close();
}

ZvJsonPtr makeBag()
{
    const ZvJsonPtr elements = ElementValue::createObject(IElementValueBase::kArray);
    for (int i = 0; i < kRows; ++i) {
        const ZvJsonPtr element = ElementValue::createObject(IElementValueBase::kObject);
        element->SetDataI("idx", i);
        element->SetDataS("name", nameOf(i));
        element->SetDataS("comments", "__ . __ . __");
        elements->append(element);
    }
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    bag->SetDataJ("elements", elements);
    return bag;
}

/// Puts ready pixmaps on the screen, and nothing else.
class PixmapDelegate : public QStyledItemDelegate
{
public:
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        if (index.column() == 1)
            painter->drawPixmap(option.rect.topLeft(), index.data(Qt::UserRole).value<QPixmap>());
    }
};

void paintNow(QTableView &view)
{
    view.viewport()->repaint();
}

/// Down to the end and up again, three rows a step as the wheel goes.
void scroll(benchmark::State &state, QTableView &view)
{
    QScrollBar *bar = view.verticalScrollBar();
    int step = 3;
    for (auto _ : state) {
        if (bar->value() + step > bar->maximum() || bar->value() + step < 0)
            step = -step;
        bar->setValue(bar->value() + step);
        paintNow(view);
    }
}

void show(QTableView &view)
{
    view.resize(700, 500);
    view.show();
    QApplication::processEvents();
}

std::unique_ptr<ZvQtLinetypeTableView> makeTable()
{
    auto view = std::make_unique<ZvQtLinetypeTableView>(ZvQtLinetypeTableView::kInteractive, nullptr);
    view->loadLtypeData(makeBag());
    show(*view);
    return view;
}

void plainTableScroll(benchmark::State &state)
{
    const auto pictures = makeTable();
    QStandardItemModel model(kRows, 3);
    for (int i = 0; i < kRows; ++i) {
        const QString name = QString::fromStdString(nameOf(i));
        model.setItem(i, 0, new QStandardItem(name));
        auto *picture = new QStandardItem;
        picture->setData(pictures->createLineTypeImage(name, kPictureWidth, pictures->rowHeight(0)), Qt::UserRole);
        model.setItem(i, 1, picture);
        model.setItem(i, 2, new QStandardItem(QStringLiteral("__ . __ . __")));
    }
    PixmapDelegate delegate;
    QTableView view;
    view.verticalHeader()->hide();
    view.setModel(&model);
    view.setItemDelegate(&delegate);
    view.setColumnWidth(1, kPictureWidth);
    show(view);
    scroll(state, view);
}
BENCHMARK(plainTableScroll)->Unit(benchmark::kMicrosecond);

void linetypeTableScroll(benchmark::State &state)
{
    const auto view = makeTable();
    QScrollBar *bar = view->verticalScrollBar();
    for (int value = 0; value <= bar->maximum(); ++value) {
        bar->setValue(value);
        paintNow(*view);
    }
    const std::uint64_t before = zvsiutEntityImagesDrawn();
    scroll(state, *view);
    state.counters["rendered"] = double(zvsiutEntityImagesDrawn() - before);
}
BENCHMARK(linetypeTableScroll)->Unit(benchmark::kMicrosecond);

void plainTableFill(benchmark::State &state)
{
    QStandardItemModel model;
    QTableView view;
    view.setModel(&model);
    for (auto _ : state) {
        model.removeRows(0, model.rowCount());
        for (int i = 0; i < kRows; ++i) {
            const QString name = QString::fromStdString(nameOf(i));
            model.appendRow(
                {new QStandardItem(name), new QStandardItem, new QStandardItem(QStringLiteral("__ . __ . __"))});
        }
        model.sort(0);
    }
}
BENCHMARK(plainTableFill)->Unit(benchmark::kMillisecond);

void linetypeTableFill(benchmark::State &state)
{
    ZvQtLinetypeTableView view(ZvQtLinetypeTableView::kInteractive, nullptr);
    const ZvJsonPtr bag = makeBag();
    for (auto _ : state)
        view.loadLtypeData(bag);
}
BENCHMARK(linetypeTableFill)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return runBenchmarksWithModule(argc, argv, [] { addLineTypes(*zvDocManagerPtr()->newDocument()->database()); });
}
