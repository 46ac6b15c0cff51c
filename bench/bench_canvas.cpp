// SPDX-License-Identifier: MIT
//
// The canvas beside the painter that it draws with, on a picture of 1920 by 1080. Each repetition times both and reports
// "ratio", ours to the painter's; take the median. Aimed at:
//
//   - thin polylines, a million segments: 1.1 times a loop of drawPolyline();
//   - wide lines without antialiasing: 1.15 times one batch of drawLines(); the same lines one by one, as the canvas
//     must draw them, stand beside it;
//   - paths: 1.3 times the same QPainterPath built by hand;
//   - a kernel raster shown from where it lies: 1.05 times drawImage() of an image without a copy.
//
// Rasters through the canvas and wide polylines are there to be looked at: the canvas copies the first, upside down, and
// owes the second its joins.
//
// Run it with QT_QPA_PLATFORM=offscreen where there is no display.
#include "timing.h"
#include "zvqtcanvas.h"
#include "zvqtrasterimage.h"

#include <benchmark/benchmark.h>

#include <QImage>
#include <QPainter>
#include <QPainterPath>

#include <random>
#include <vector>

namespace {

constexpr int kPolylines = 100000;
constexpr int kPoints = 11; ///< Ten segments each.
constexpr int kRepetitions = 7;
constexpr unsigned kInk = 0xFF0000FF;

/// Zigzags all over the picture, as points of the canvas and as points of the painter.
struct Drawing
{
    Drawing()
    {
        std::mt19937 random(5);
        std::uniform_real_distribution<double> x(0, 1920);
        std::uniform_real_distribution<double> y(0, 1080);
        std::uniform_real_distribution<double> step(-20, 20);
        matrix.setCoordSystem(ZvGePoint2d(0, 1080), ZvGeVector2d(1, 0), ZvGeVector2d(0, -1));
        for (int i = 0; i < kPolylines; ++i) {
            ZvGePoint2d point(x(random), y(random));
            for (int k = 0; k < kPoints; ++k) {
                onCanvas.push_back(point);
                coordinates.append(float(point.x));
                coordinates.append(float(point.y));
                ZvGePoint2d shown = point;
                shown.transformBy(matrix);
                onDevice.push_back(QPointF(shown.x, shown.y));
                point = point + ZvGeVector2d(step(random), step(random));
            }
        }
    }
    static const Drawing &instance()
    {
        static const Drawing drawing;
        return drawing;
    }

    ZvGeMatrix2d matrix;
    std::vector<ZvGePoint2d> onCanvas;
    std::vector<QPointF> onDevice;
    ZvArray<float> coordinates;
};

/// A canvas and its painter on a picture.
struct Sheet
{
    explicit Sheet(const ZvGeMatrix2d &matrix, bool smooth = false)
        : image(1920, 1080, QImage::Format_ARGB32_Premultiplied), painter(&image)
    {
        image.fill(Qt::white);
        painter.setRenderHint(QPainter::Antialiasing, smooth);
        canvas->setMatrix(matrix);
        canvas->attachPainter(&painter);
    }
    QImage image;
    QPainter painter;
    ZvSmartPtr<ZvQtCanvas> canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
};

template<class Baseline, class Ours>
void compare(benchmark::State &state, Baseline baseline, Ours ours)
{
    for (auto _ : state) {
        const double bare = secondsOf(baseline);
        const double time = secondsOf(ours);
        state.counters["ratio"] = time / bare;
        state.SetIterationTime(time);
    }
}

void polylines(benchmark::State &state)
{
    const Drawing &drawing = Drawing::instance();
    Sheet sheet(drawing.matrix, state.range(1) != 0);
    sheet.canvas->setLineStyle(int(state.range(0)), 0, kInk, 0, 1);
    compare(
        state,
        [&] {
            for (int i = 0; i < kPolylines; ++i)
                sheet.painter.drawPolyline(&drawing.onDevice[std::size_t(i) * kPoints], kPoints);
        },
        [&] {
            for (int i = 0; i < kPolylines; ++i)
                sheet.canvas->drawPolyline(&drawing.onCanvas[std::size_t(i) * kPoints], kPoints, false);
        });
}
BENCHMARK(polylines)->Args({0, 0})->Args({0, 1})->Args({2, 0})->ArgNames({"width", "smooth"})->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

void lines(benchmark::State &state)
{
    const Drawing &drawing = Drawing::instance();
    Sheet sheet(drawing.matrix);
    sheet.canvas->setLineStyle(int(state.range(0)), 0, kInk, 0, 1);
    std::vector<QLineF> batch;
    for (std::size_t i = 0; i + 1 < drawing.onDevice.size(); ++i) {
        if ((i + 1) % kPoints != 0)
            batch.emplace_back(drawing.onDevice[i], drawing.onDevice[i + 1]);
    }
    const bool oneByOne = state.range(1) != 0;
    compare(
        state,
        [&] {
            if (!oneByOne)
                sheet.painter.drawLines(batch.data(), int(batch.size()));
            for (std::size_t i = 0; oneByOne && i < batch.size(); ++i)
                sheet.painter.drawLines(&batch[i], 1);
        },
        [&] {
            for (std::size_t i = 0; i + 1 < drawing.onCanvas.size(); ++i) {
                if ((i + 1) % kPoints != 0)
                    sheet.canvas->drawLine(drawing.onCanvas[i], drawing.onCanvas[i + 1]);
            }
        });
}
BENCHMARK(lines)->Args({0, 0})->Args({2, 0})->Args({2, 1})->ArgNames({"width", "oneByOne"})->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

void paths(benchmark::State &state)
{
    const Drawing &drawing = Drawing::instance();
    Sheet sheet(drawing.matrix);
    sheet.canvas->setLineStyle(0, 0, kInk, 0, 1);
    const int figures = int(state.range(0)); // in each path
    std::vector<ZvArray<int>> streams;
    for (int i = 0; i < kPolylines; i += figures) {
        ZvArray<int> words(figures * (kPoints + 2));
        for (int point = i * kPoints; point < (i + figures) * kPoints; ++point) {
            if (point % kPoints < 2)
                words.append(point % kPoints == 0 ? int(0x80000000) : 0x10000000);
            words.append(point);
        }
        streams.push_back(words);
    }
    compare(
        state,
        [&] {
            for (int i = 0; i < kPolylines; i += figures) {
                QPainterPath path;
                for (int k = i; k < i + figures; ++k) {
                    path.moveTo(drawing.onDevice[std::size_t(k) * kPoints]);
                    for (int point = 1; point < kPoints; ++point)
                        path.lineTo(drawing.onDevice[std::size_t(k) * kPoints + std::size_t(point)]);
                }
                sheet.painter.strokePath(path, sheet.painter.pen());
            }
        },
        [&] {
            for (const ZvArray<int> &words : streams)
                sheet.canvas->drawPaths(1, drawing.coordinates, words);
        });
}
BENCHMARK(paths)->Arg(1)->Arg(100)->Arg(kPolylines)->ArgName("figures")->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

constexpr int kRasterWidth = 3840;
constexpr int kRasterHeight = 2160;
constexpr int kDrawings = 20; ///< Of one raster, in a repetition.

ZvSmartPtr<ZvGiRasterImage> makeRaster()
{
    const std::vector<std::uint32_t> pixels(std::size_t(kRasterWidth) * kRasterHeight, 0xFF203040);
    return zvutImageWrap(pixels.data(), kRasterWidth, kRasterHeight, 32);
}

void rasterShownWhereItLies(benchmark::State &state)
{
    const ZvSmartPtr<ZvGiRasterImage> raster = makeRaster();
    QImage screen(kRasterWidth, kRasterHeight, QImage::Format_RGB32);
    QPainter painter(&screen);
    compare(
        state,
        [&] {
            for (int i = 0; i < kDrawings; ++i)
                painter.drawImage(0, 0, QImage(raster->scanLines(), kRasterWidth, kRasterHeight, QImage::Format_RGBX8888));
        },
        [&] {
            for (int i = 0; i < kDrawings; ++i)
                painter.drawImage(0, 0, zvutZvGiRasterImage2QImage(raster));
        });
}
BENCHMARK(rasterShownWhereItLies)->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

void rasterThroughTheCanvas(benchmark::State &state)
{
    const ZvSmartPtr<ZvGiRasterImage> raster = makeRaster();
    QImage screen(kRasterWidth, kRasterHeight, QImage::Format_RGB32);
    QPainter painter(&screen);
    const auto canvas = ZvSmartPtr<ZvQtCanvas>::adopt(new ZvRxObjectImpl<ZvQtCanvas, ZvQtCanvas>);
    canvas->attachPainter(&painter);
    const bool upright = state.range(0) != 0;
    const ZvGePoint2d origin(0, upright ? kRasterHeight : 0);
    const ZvGeVector2d up(0, upright ? -1 : 1);
    compare(
        state,
        [&] {
            for (int i = 0; i < kDrawings; ++i)
                painter.drawImage(0, 0, QImage(raster->scanLines(), kRasterWidth, kRasterHeight, QImage::Format_RGBA8888));
        },
        [&] {
            for (int i = 0; i < kDrawings; ++i)
                canvas->drawRasterImage(origin, ZvGeVector2d(1, 0), up, raster, ZvArray<ZvGePoint2d>(), false);
        });
}
BENCHMARK(rasterThroughTheCanvas)->Arg(0)->Arg(1)->ArgName("upright")->UseManualTime()->Iterations(1)->Repetitions(kRepetitions)->ReportAggregatesOnly();

} // namespace
