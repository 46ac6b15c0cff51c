// SPDX-License-Identifier: MIT
//
// The print preview. Each benchmark runs its baseline beside the measured code and reports "ratio", ours to the
// baseline; take the median. Aimed at:
//
//   - dialog: one call of the preview over a sheet of 100 lines, from the service to the last release, beside the
//     preview dialog of Qt over the same sheet: at most 1.3;
//   - panLayout: a move of the sheet with 100,000 lines on it, painting included, beside drawing it: next to nothing.
//     "drawnWhilePanning" counts how often the sheet was drawn for all the moves: 0.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.

#include "timing.h"
#include "withmodule.h"
#include "zvqtcanvas.h"

#include "core/zvui.h"
#include "db/zvdbentities.h"
#include "utils/zvpage.h"

#include <QApplication>
#include <QMainWindow>
#include <QMouseEvent>
#include <QPainter>
#include <QPrintPreviewDialog>
#include <QPrinter>
#include <QTimer>

namespace {

constexpr int kRepetitions = 5;
constexpr int kRuns = 5;
constexpr int kMoves = 100;
constexpr int kDotsPerInch = 600;

/// Counts what another render object does.
class Counted : public ZvRxObjectImpl<ZvsiRenderObject>
{
public:
    explicit Counted(ZvSmartPtr<ZvsiRenderObject> drawer) : m_drawer(std::move(drawer)) { }
    void draw(ZvRxObjectPtr canvas) override
    {
        ++calls;
        m_drawer->draw(canvas);
    }
    int calls = 0;

private:
    ZvSmartPtr<ZvsiRenderObject> m_drawer;
};

/// A sheet with so many lines, and what draws it.
struct Sheet
{
    explicit Sheet(int lines) : database(ZvDbDatabase::create())
    {
        ZvArray<ZvString> layouts;
        database->layoutNames(layouts);
        database->setCurrentLayout(layouts[1]);
        page = zvgiReadPage(database, database->currentLayoutId());
        for (int i = 0; i < lines; ++i) {
            const double x = (i % 400) * page.printableWidth() / 400;
            const double y = (i / 400 % 250) * page.printableHeight() / 250;
            auto *line = new ZvDbLine(ZvGePoint3d(x, y, 0), ZvGePoint3d(x + 0.7, y + 0.5, 0));
            line->setDatabaseDefaults(database);
            ZvDbObjectId id;
            database->appendEntity(line, page.block, id, false);
        }
        drawer = ZvSmartPtr<Counted>::adopt(new Counted(zvgiMakePageRenderer(database, page, kDotsPerInch / 25.4)));
    }
    ZvUiDialogBasePtr dialog() const
    {
        const ZvJsonPtr params = ElementValue::createObject(IElementValueBase::kObject);
        params->SetDataJ("paper", zvgiPaperTree(page));
        params->SetDataO("refDC", zvsiMakeReferenceDevice(kDotsPerInch));
        params->SetDataO("intHelper", drawer);
        params->SetDataB("enable_print", true);
        auto *service = zvrxCast<ZvUiService>(grUISvr(L"Dialog/Common"));
        const ZvUiDialogBasePtr dialog = service->createDialog(L"CADPreviewDialog", nullptr);
        dialog->onInit(params, nullptr);
        return dialog;
    }

    ZvDbDatabasePtr database;
    ZvGiPage page;
    ZvSmartPtr<Counted> drawer;
};

/// Ends the dialog as soon as it is idle and painted.
void closeWhenIdle()
{
    QTimer::singleShot(0, qApp, [] {
        QWidget *window = QApplication::activeModalWidget();
        window->grab();
        window->close();
    });
}

void runOurs(const Sheet &sheet)
{
    const ZvUiDialogBasePtr dialog = sheet.dialog();
    closeWhenIdle();
    dialog->doModal();
}

void runQts(const Sheet &sheet)
{
    QPrinter printer(QPrinter::HighResolution);
    printer.setOutputFormat(QPrinter::PdfFormat); // the only kind that is everywhere
    printer.setResolution(kDotsPerInch);
    printer.setFullPage(true);
    printer.setPageSize(QPageSize(QSizeF(sheet.page.width, sheet.page.height), QPageSize::Millimeter));
    QPrintPreviewDialog dialog(&printer);
    dialog.setWindowState(Qt::WindowFullScreen);
    QObject::connect(&dialog, &QPrintPreviewDialog::paintRequested, [&sheet](QPrinter *paper) {
        QPainter painter(paper);
        const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
        canvas->attachPainter(&painter);
        sheet.drawer->draw(canvas);
    });
    closeWhenIdle();
    dialog.exec();
}

void dialog(benchmark::State &state)
{
    const Sheet sheet(100);
    runOurs(sheet);
    runQts(sheet);
    for (auto _ : state) {
        const double ours = medianOf(kRuns, [&] { return processorSecondsOf([&] { runOurs(sheet); }); });
        const double qts = medianOf(kRuns, [&] { return processorSecondsOf([&] { runQts(sheet); }); });
        state.SetIterationTime(ours);
        state.counters["ratio"] = ours / qts;
        const int before = sheet.drawer->calls;
        runOurs(sheet);
        state.counters["drawnPerCall"] = sheet.drawer->calls - before;
    }
}

void panLayout(benchmark::State &state)
{
    const Sheet sheet(100000);
    const ZvUiDialogBasePtr adapter = sheet.dialog();
    auto *window = static_cast<QDialog *>(adapter->getDlg());
    window->show();
    QWidget *view = window->findChild<QMainWindow *>()->centralWidget();
    const auto send = [view](QEvent::Type type, const QPointF &pos) {
        QMouseEvent event(type, pos, Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
        QCoreApplication::sendEvent(view, &event);
    };
    for (auto _ : state) {
        const double drawing = medianOf(3, [&] {
            view->hide();
            view->show(); // forgets the picture
            return processorSecondsOf([view] { view->grab(); });
        });
        const int before = sheet.drawer->calls;
        send(QEvent::MouseButtonPress, {300, 300});
        const double panning = processorSecondsOf([&] {
            for (int i = 0; i < kMoves; ++i) {
                send(QEvent::MouseMove, {300.0 + i, 300.0 - i});
                view->grab();
            }
        });
        send(QEvent::MouseButtonRelease, {300, 300});
        view->grab();
        state.SetIterationTime(panning / kMoves);
        state.counters["ratio"] = panning / kMoves / drawing;
        state.counters["drawnWhilePanning"] = sheet.drawer->calls - before;
    }
}

BENCHMARK(dialog)->UseManualTime()->Iterations(3)->Repetitions(kRepetitions)->Unit(benchmark::kMillisecond);
BENCHMARK(panLayout)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->Unit(benchmark::kMillisecond);

} // namespace

int main(int argc, char *argv[])
{
    QApplication application(argc, argv);
    return runBenchmarksWithModule(argc, argv);
}
