// SPDX-License-Identifier: MIT
//
// The colour controls beside plain Qt ones, in one run:
//
//   - the colour combo's refill, done at each opening, beside clear() and addItem() with ready icons on a QComboBox of
//     as many rows; aimed at 1.2 times its time. A fill of other rows than before, as a change of the style brings, is
//     shown beside it;
//   - the colour dialog from the call to its first paint, beside a QColorDialog; aimed at 1.3 times its time;
//   - a mouse move over a grid of the dialog, painting included; aimed at a tenth of a frame of 60 Hz.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "firstpaint.h"
#include "withmodule.h"
#include "zvcolorcombobox.h"

#include "base/zvregistry.h"
#include "core/zvapdocument.h"
#include "core/zvui.h"

#include <benchmark/benchmark.h>

#include <QApplication>
#include <QColorDialog>
#include <QMouseEvent>
#include <QStyleFactory>

namespace {

constexpr double kFrame = 1.0 / 60.0;

struct Row
{
    QIcon icon;
    QString text;
};

void plainRefill(benchmark::State &state)
{
    const ZvColorComboBox model(nullptr);
    QVector<Row> rows;
    for (int i = 0; i < model.count(); ++i)
        rows << Row{model.itemIcon(i), model.itemText(i)};
    QComboBox combo;
    for (auto _ : state) {
        combo.clear();
        for (const Row &row : qAsConst(rows))
            combo.addItem(row.icon, row.text);
    }
    state.counters["rows"] = combo.count();
}
BENCHMARK(plainRefill)->Unit(benchmark::kMicrosecond);

void colorComboRefill(benchmark::State &state)
{
    ZvColorComboBox combo(true, nullptr);
    for (auto _ : state)
        combo.init(ZvCmColor(), false, ZvDbObjectId());
    state.counters["rows"] = combo.count();
}
BENCHMARK(colorComboRefill)->Unit(benchmark::kMicrosecond);

/// A row more at the top each other time: none stands where it stood.
void colorComboRefillOfOtherRows(benchmark::State &state)
{
    constexpr unsigned kOneMore = 7 | ZvColorComboBox::kColorViewNone;
    ZvColorComboBox combo(true, nullptr);
    unsigned style = kOneMore;
    for (auto _ : state) {
        combo.setViewStyle(style);
        style ^= ZvColorComboBox::kColorViewNone;
    }
    state.counters["rows"] = combo.count();
}
BENCHMARK(colorComboRefillOfOtherRows)->Unit(benchmark::kMicrosecond);

void plainColorDialog(benchmark::State &state)
{
    for (auto _ : state) {
        QColorDialog dialog;
        dialog.setOption(QColorDialog::DontUseNativeDialog);
        showToFirstPaint(&dialog);
    }
}
BENCHMARK(plainColorDialog)->Unit(benchmark::kMillisecond);

ZvUiDialogBasePtr makeDialog(int method, int color)
{
    const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataI("clrMethod", method);
    params->SetDataI("selectClr", color);
    const ZvUiDialogBasePtr dialog
        = zvrxCast<ZvUiService>(grUISvr(L"Dialog/Common"))->createDialog(L"ColorDialog", nullptr);
    dialog->onInit(params, nullptr);
    return dialog;
}

void colorDialog(benchmark::State &state)
{
    for (auto _ : state) {
        const ZvUiDialogBasePtr dialog = makeDialog(int(state.range(0)), 5);
        showToFirstPaint(shownDialog("ZvColorDialog"));
    }
}
BENCHMARK(colorDialog)->Arg(195)->Arg(194)->ArgName("method")->Unit(benchmark::kMillisecond);

void moveOverGrid(benchmark::State &state)
{
    const ZvUiDialogBasePtr dialog = makeDialog(195, 5);
    showToFirstPaint(shownDialog("ZvColorDialog"));
    QWidget *grid = nullptr;
    for (QWidget *widget : shownDialog("ZvColorDialog")->findChildren<QWidget *>()) {
        if (!grid && widget->inherits("ZvPaleteWnd"))
            grid = widget;
    }
    const QPointF places[] = {{20, 20}, {160, 40}};
    int turn = 0;
    for (auto _ : state) {
        turn = 1 - turn;
        QMouseEvent move(QEvent::MouseMove, places[turn], Qt::NoButton, Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(grid, &move);
    }
    // of the time that a frame of 60 Hz has
    state.counters["frame"] = benchmark::Counter(kFrame * double(state.iterations()),
                                                 benchmark::Counter::kIsRate | benchmark::Counter::kInvert);
}
BENCHMARK(moveOverGrid)->Unit(benchmark::kMicrosecond);

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    QApplication::setStyle(QStyleFactory::create(QStringLiteral("Fusion")));
    return runBenchmarksWithModule(argc, argv, [] { zvDocManagerPtr()->newDocument(); });
}
