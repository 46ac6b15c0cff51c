// SPDX-License-Identifier: MIT
// The renderer beside what it rests on. Each repetition times both and reports "ratio", ours to the baseline; take the
// median.
//
//   Canvas     100,000 polylines with a million segments on a 1920 by 1080 picture: the renderer, which opens, resolves
//              and maps every entity, beside a bare loop over QPainter::drawPolyline() with ready points
//   Patterns   lines with patterns beside the same lines continuous, on a picture (0) and in a PDF (1)
//   Pan        a hundredth of the drawing in view beside the whole of it
//   Pdf        so many plain entities to PDF; "us_each" and "growth", the exponent against a fifth of them
#include "db/zvdbentities.h"
#include "db/zvdbrecords.h"
#include "utils/zvrenderer.h"

#include <QImage>
#include <QPainter>
#include <QPolygonF>

#include <benchmark/benchmark.h>

#include <chrono>
#include <cmath>
#include <cstdio>
#include <ctime>
#include <string>
#include <unistd.h>
#include <vector>

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;

/// Processor time of this process: the machine may have others at work.
double processorSeconds()
{
    timespec time;
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
}

template <class Work> double timed(Work &&work)
{
    const double start = processorSeconds();
    work();
    return processorSeconds() - start;
}

/// Even numbers from 0 to 1, the same on every run.
class Random
{
public:
    double next()
    {
        m_state = m_state * 6364136223846793005ull + 1442695040888963407ull;
        return double(m_state >> 11) * 0x1.0p-53;
    }

private:
    std::uint64_t m_state = 1;
};

void add(ZvDbDatabase &database, ZvDbEntity *entity)
{
    ZvDbObjectId id;
    entity->setLayer(database.layerZero());
    database.appendEntity(entity, database.modelSpaceId(), id, false);
}

constexpr int kPolylines = 100000;
constexpr int kPointsEach = 11;

/// Wandering polylines, as survey lines are.
std::vector<QPolygonF> wanderings()
{
    Random random;
    std::vector<QPolygonF> all;
    for (int i = 0; i < kPolylines; ++i) {
        QPolygonF points;
        QPointF at(random.next() * kWidth, random.next() * kHeight);
        for (int k = 0; k < kPointsEach; ++k) {
            points << at;
            at += QPointF(random.next() * 16 - 8, random.next() * 16 - 8);
        }
        all.push_back(points);
    }
    return all;
}

ZvGiView wholeView()
{
    ZvGiView view;
    view.center = ZvGePoint2d(kWidth / 2.0, kHeight / 2.0);
    view.height = kHeight;
    return view;
}

ZvDbDatabasePtr wanderingDrawing(const std::vector<QPolygonF> &all)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    for (const QPolygonF &points : all) {
        auto *polyline = new ZvDbPolyline();
        std::vector<ZvDbPolyline::Vertex> vertices;
        for (const QPointF &point : points) {
            vertices.emplace_back();
            vertices.back().point = ZvGePoint2d(point.x(), kHeight - point.y());
        }
        polyline->setVertices(vertices);
        add(*database, polyline);
    }
    database->clearUndo();
    return database;
}

ZvDbDatabasePtr lineDrawing(int count, bool typed, bool circles)
{
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbObjectId type;
    if (typed) {
        ZvDbLinetypeTable *table = nullptr;
        database->getSymbolTable(table, ZvDb::kForWrite);
        auto *record = new ZvDbLinetypeTableRecord();
        record->setName("dashdot");
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(4);
        const double lengths[4] = {12, -3, 3, -3};
        for (int i = 0; i < 4; ++i)
            dashes[std::size_t(i)].length = lengths[i];
        record->setDashes(dashes);
        table->add(record, type);
        record->close();
        table->close();
    }
    Random random;
    for (int i = 0; i < count; ++i) {
        const ZvGePoint3d from(random.next() * kWidth, random.next() * kHeight, 0);
        if (circles && i % 10 >= 6 && i % 10 < 9) {
            add(*database, new ZvDbCircle(from, ZvGeVector3d(0, 0, 1), 2 + random.next() * 8));
            continue;
        }
        auto *line
            = new ZvDbLine(from, ZvGePoint3d(from.x + random.next() * 100 - 50, from.y + random.next() * 100 - 50, 0));
        if (typed)
            line->setLinetype(type);
        add(*database, line);
    }
    database->clearUndo();
    return database;
}

void drawWith(ZvGiRenderer &renderer, ZvDbDatabase &database, QImage &image, const ZvGiView &view, bool antialiasing)
{
    image.fill(Qt::black);
    QPainter painter(&image);
    ZvGiRenderer::Options options;
    options.background = 0xFF000000;
    options.antialiasing = antialiasing;
    renderer.draw(painter, options, database.modelSpaceId(), view, kWidth, kHeight);
}

std::string temporaryPdf()
{
    return "/tmp/bench_render_" + std::to_string(getpid()) + ".pdf";
}

double timedPdf(ZvDbDatabase &database)
{
    const std::string path = temporaryPdf();
    const double seconds = timed([&] {
        ZvString message;
        zvgiExport(&database, ZvString(path.c_str()), message);
    });
    std::remove(path.c_str());
    return seconds;
}

void report(benchmark::State &state, double ours, double baseline)
{
    state.SetIterationTime(ours);
    state.counters["baseline_ms"] = baseline * 1000;
    state.counters["ratio"] = ours / baseline;
}

void Canvas(benchmark::State &state)
{
    const bool antialiasing = state.range(0) != 0;
    const std::vector<QPolygonF> all = wanderings();
    const ZvDbDatabasePtr database = wanderingDrawing(all);
    ZvGiRenderer renderer(database);
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    drawWith(renderer, *database, image, wholeView(), antialiasing); // makes the index
    for (auto _ : state) {
        const double ours = timed([&] { drawWith(renderer, *database, image, wholeView(), antialiasing); });
        const double bare = timed([&] {
            image.fill(Qt::black);
            QPainter painter(&image);
            painter.setRenderHint(QPainter::Antialiasing, antialiasing);
            painter.setPen(QPen(Qt::white, 0));
            for (const QPolygonF &points : all)
                painter.drawPolyline(points);
        });
        report(state, ours, bare);
    }
}
BENCHMARK(Canvas)
    ->ArgName("antialiasing")
    ->Arg(0)
    ->Arg(1)
    ->UseManualTime()
    ->Unit(benchmark::kMillisecond)
    ->Iterations(5);

void Patterns(benchmark::State &state)
{
    constexpr int kLines = 50000;
    const bool toPdf = state.range(0) != 0;
    const ZvDbDatabasePtr typed = lineDrawing(kLines, true, false);
    const ZvDbDatabasePtr continuous = lineDrawing(kLines, false, false);
    ZvGiRenderer typedRenderer(typed);
    ZvGiRenderer continuousRenderer(continuous);
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    if (!toPdf) {
        drawWith(typedRenderer, *typed, image, wholeView(), true);
        drawWith(continuousRenderer, *continuous, image, wholeView(), true);
    }
    for (auto _ : state) {
        const double ours
            = toPdf ? timedPdf(*typed) : timed([&] { drawWith(typedRenderer, *typed, image, wholeView(), true); });
        const double bare = toPdf ? timedPdf(*continuous)
                                  : timed([&] { drawWith(continuousRenderer, *continuous, image, wholeView(), true); });
        report(state, ours, bare);
    }
}
BENCHMARK(Patterns)->ArgName("pdf")->Arg(0)->Arg(1)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(5);

void Pan(benchmark::State &state)
{
    const ZvDbDatabasePtr database = lineDrawing(500000, false, true);
    ZvGiRenderer renderer(database);
    QImage image(kWidth, kHeight, QImage::Format_RGB32);
    drawWith(renderer, *database, image, wholeView(), true);
    ZvGiView part = wholeView();
    part.height /= 10;
    for (auto _ : state) {
        const double ours = timed([&] { drawWith(renderer, *database, image, part, true); });
        const int visited = renderer.lastVisited();
        const double whole = timed([&] { drawWith(renderer, *database, image, wholeView(), true); });
        report(state, ours, whole);
        state.counters["visited"] = visited;
    }
}
BENCHMARK(Pan)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

void Pdf(benchmark::State &state)
{
    const int count = int(state.range(0));
    const ZvDbDatabasePtr all = lineDrawing(count, false, true);
    const ZvDbDatabasePtr fifth = lineDrawing(count / 5, false, true);
    for (auto _ : state) {
        const double ours = timedPdf(*all);
        const double few = timedPdf(*fifth);
        state.SetIterationTime(ours);
        state.counters["us_each"] = ours / count * 1e6;
        state.counters["growth"] = std::log(ours / few) / std::log(5.0);
    }
}
BENCHMARK(Pdf)->Arg(100000)->Arg(500000)->UseManualTime()->Unit(benchmark::kMillisecond)->Iterations(3);

} // namespace
