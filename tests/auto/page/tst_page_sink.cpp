// SPDX-License-Identifier: MIT
#include "canvastest.h"

#include "gi_canvas_sink.h"
#include "gi_painter_sink.h"

#include <QLinearGradient>

#include <algorithm>

namespace {

constexpr QRgb kInk = qRgb(200, 0, 0);

QImage bySink(const std::function<void(GiSink &)> &draw)
{
    return canvasSheet([&](ZvQtCanvas &canvas) {
        GiCanvasSink sink(canvas);
        draw(sink);
    });
}

QImage byPainterSink(const std::function<void(GiSink &)> &draw)
{
    return paintedSheet([&](QPainter &painter) {
        GiPainterSink sink(painter, false);
        draw(sink);
    });
}

/// The part of the pixels that differ.
double difference(const QImage &a, const QImage &b)
{
    int count = 0;
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const QColor p = a.pixelColor(x, y);
            const QColor q = b.pixelColor(x, y);
            const int most = std::max(
                {std::abs(p.red() - q.red()), std::abs(p.green() - q.green()), std::abs(p.blue() - q.blue())});
            count += most > 24 ? 1 : 0;
        }
    }
    return double(count) / (a.width() * a.height());
}

QPainterPath boxPath(double x, double y, double width, double height)
{
    QPainterPath path;
    path.addRect(x, y, width, height);
    return path;
}

QPainterPath roundPath()
{
    QPainterPath path;
    path.addEllipse(QPointF(45, 35), 30, 25);
    return path;
}

QPainterPath notchedPath()
{
    QPainterPath path;
    path.addPolygon(QPolygonF({{10, 10}, {80, 10}, {80, 60}, {45, 25}, {10, 60}}));
    path.closeSubpath();
    return path;
}

void manyLines(GiSink &sink)
{
    for (int i = 0; i < 14; ++i) {
        const QPointF points[] = {{-20.0, i * 5.0 + 0.5}, {45.0, 70.0 - i * 5.0 + 0.5}, {110.0, i * 5.0 + 0.5}};
        sink.stroke({kInk, 1.0, nullptr}, points, 3, 0.0);
    }
}

} // namespace

Q_DECLARE_METATYPE(QPainterPath)

/// The canvas as the goal of the renderer, beside the painter as its goal.
class TestPageSink : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void linesAreCutByClips_data();
    void linesAreCutByClips();
    void areasAreCutByClips_data();
    void areasAreCutByClips();
    void clipsWithinClips();
    void dashesBeginWhereTheyAreTold_data();
    void dashesBeginWhereTheyAreTold();
    void dashesGoAroundCorners();
    void areasKeepTheirRule_data();
    void areasKeepTheirRule();
    void gradientsAreBands();
    void imagesArePlaced_data();
    void imagesArePlaced();
    void imagesAreCutByClips();
};

void TestPageSink::linesAreCutByClips_data()
{
    QTest::addColumn<QPainterPath>("clip");
    QTest::newRow("box") << boxPath(20, 15, 40, 30);
    QTest::newRow("round") << roundPath();
    QTest::newRow("notched") << notchedPath();
    QTest::newRow("all of it") << boxPath(-50, -50, 300, 300);
    QTest::newRow("elsewhere") << boxPath(200, 200, 10, 10);
}

void TestPageSink::linesAreCutByClips()
{
    QFETCH(QPainterPath, clip);
    const auto draw = [&clip](GiSink &sink) {
        sink.pushClip(clip);
        manyLines(sink);
        sink.popClip();
    };
    const QImage sheet = bySink(draw);
    const QImage expected = byPainterSink(draw);
    QVERIFY2(difference(sheet, expected) < 0.02, qPrintable(QString::number(difference(sheet, expected))));
    QCOMPARE(isBlank(sheet), isBlank(expected));
}

void TestPageSink::areasAreCutByClips_data()
{
    linesAreCutByClips_data();
}

void TestPageSink::areasAreCutByClips()
{
    QFETCH(QPainterPath, clip);
    QPainterPath area;
    area.addEllipse(QPointF(60, 30), 30, 30);
    const auto draw = [&](GiSink &sink) {
        sink.pushClip(clip);
        sink.fill(area, QColor(kInk));
        sink.popClip();
        sink.fill(boxPath(2, 2, 5, 5), QColor(Qt::blue)); // free again
    };
    const QImage sheet = bySink(draw);
    QVERIFY(difference(sheet, byPainterSink(draw)) < 0.02);
    QCOMPARE(sheet.pixelColor(4, 4), QColor(Qt::blue));
}

void TestPageSink::clipsWithinClips()
{
    const auto draw = [](GiSink &sink) {
        sink.pushClip(boxPath(10, 10, 50, 50));
        sink.pushClip(roundPath());
        sink.pushClip(boxPath(30, 0, 100, 40));
        manyLines(sink);
        sink.popClip();
        sink.popClip();
        manyLines(sink);
        sink.popClip();
    };
    QVERIFY(difference(bySink(draw), byPainterSink(draw)) < 0.03);
}

void TestPageSink::dashesBeginWhereTheyAreTold_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<QString>("shown"); // of the first twenty pixels
    QTest::newRow("at a dash") << 0.0 << QStringLiteral("xxxxxx....xx..xxxxxx");
    QTest::newRow("within a dash") << 2.0 << QStringLiteral("xxxx....xx..xxxxxx..");
    QTest::newRow("at a gap") << 6.0 << QStringLiteral("....xx..xxxxxx....xx");
    QTest::newRow("within a gap") << 9.0 << QStringLiteral(".xx..xxxxxx....xx..x");
    QTest::newRow("within the last gap") << 13.0 << QStringLiteral(".xxxxxx....xx..xxxxx");
    QTest::newRow("a whole pattern on") << 14.0 << QStringLiteral("xxxxxx....xx..xxxxxx");
    QTest::newRow("patterns on") << 30.0 << QStringLiteral("xxxx....xx..xxxxxx..");
}

void TestPageSink::dashesBeginWhereTheyAreTold()
{
    QFETCH(double, start);
    const std::vector<double> dashes{6, 4, 2, 2};
    const QPointF points[] = {{10, 20.5}, {80, 20.5}};
    const QImage sheet = bySink([&](GiSink &sink) { sink.stroke({kInk, 3.0, &dashes}, points, 2, start); });
    QString shown;
    for (int x = 10; x < 30; ++x)
        shown += sheet.pixelColor(x, 20) == QColor(Qt::white) ? QLatin1Char('.') : QLatin1Char('x');
    QTEST(shown, "shown");
}

void TestPageSink::dashesGoAroundCorners()
{
    const std::vector<double> dashes{20, 10};
    const QPointF points[] = {{10, 60.5}, {20, 60.5}, {20, 10.5}};
    const QImage sheet = bySink([&](GiSink &sink) { sink.stroke({kInk, 3.0, &dashes}, points, 3, 0.0); });
    QCOMPARE(sheet.pixelColor(15, 60), QColor(kInk));
    QCOMPARE(sheet.pixelColor(20, 55), QColor(kInk)); // ten of the dash are left behind the corner
    QCOMPARE(sheet.pixelColor(20, 45), QColor(Qt::white));
    QCOMPARE(sheet.pixelColor(20, 30), QColor(kInk));
}

void TestPageSink::areasKeepTheirRule_data()
{
    QTest::addColumn<int>("rule");
    QTest::addColumn<bool>("isHole");
    QTest::newRow("odd-even") << int(Qt::OddEvenFill) << true;
    QTest::newRow("winding") << int(Qt::WindingFill) << false;
}

void TestPageSink::areasKeepTheirRule()
{
    QFETCH(int, rule);
    QPainterPath path;
    path.addRect(10, 10, 60, 50);
    path.addRect(30, 20, 20, 20);
    path.cubicTo(QPointF(32, 25), QPointF(38, 28), QPointF(30, 20)); // a curve passes through too
    path.setFillRule(Qt::FillRule(rule));
    const auto draw = [&path](GiSink &sink) { sink.fill(path, QColor(kInk)); };
    const QImage sheet = bySink(draw);
    QCOMPARE(sheet, byPainterSink(draw));
    QTEST(sheet.pixelColor(45, 35) == QColor(Qt::white), "isHole");
}

void TestPageSink::gradientsAreBands()
{
    QLinearGradient gradient(15, 10, 75, 55);
    gradient.setColorAt(0, Qt::red);
    gradient.setColorAt(1, Qt::blue);
    const auto draw = [&gradient](GiSink &sink) { sink.fill(roundPath(), gradient); };
    QVERIFY(difference(bySink(draw), byPainterSink(draw)) < 0.01);
    // Without a length there is one colour.
    QLinearGradient flat(20, 20, 20, 20);
    flat.setColorAt(0, Qt::green);
    flat.setColorAt(1, Qt::blue);
    const QImage sheet = bySink([&flat](GiSink &sink) { sink.fill(roundPath(), flat); });
    QCOMPARE(sheet.pixelColor(45, 35), QColor(Qt::green));
}

namespace {

/// Four colours in its quarters.
QImage quarters()
{
    QImage image(20, 10, QImage::Format_ARGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    painter.fillRect(10, 0, 10, 5, Qt::green);
    painter.fillRect(0, 5, 10, 5, Qt::blue);
    painter.fillRect(10, 5, 10, 5, Qt::black);
    return image;
}

} // namespace

void TestPageSink::imagesArePlaced_data()
{
    QTest::addColumn<QTransform>("place");
    QTest::newRow("as it is") << QTransform::fromTranslate(20, 20);
    QTest::newRow("enlarged") << QTransform(3, 0, 0, 4, 10, 10);
    QTest::newRow("upside down") << QTransform(3, 0, 0, -4, 10, 60);
    QTest::newRow("turned") << QTransform(2, 2, -2, 2, 40, 5);
}

void TestPageSink::imagesArePlaced()
{
    QFETCH(QTransform, place);
    const auto draw = [&place](GiSink &sink) { sink.image(quarters(), place); };
    const QImage sheet = bySink(draw);
    // Canvases do not smooth.
    const QImage expected = paintedSheet([&place](QPainter &painter) {
        painter.setTransform(place);
        painter.drawImage(0, 0, quarters());
    });
    QVERIFY2(difference(sheet, expected) < 0.03, qPrintable(QString::number(difference(sheet, expected))));
    QCOMPARE(sheet.pixel(place.map(QPointF(5, 2.5)).toPoint()), qRgb(255, 0, 0));
    QCOMPARE(sheet.pixel(place.map(QPointF(15, 7.5)).toPoint()), qRgb(0, 0, 0));
}

void TestPageSink::imagesAreCutByClips()
{
    for (const QPainterPath &clip : {boxPath(25, 20, 20, 20), roundPath(), notchedPath()}) {
        const auto draw = [&clip](GiSink &sink) {
            sink.pushClip(clip);
            sink.image(quarters(), QTransform(4, 0, 0, 6, 5, 5));
            sink.popClip();
        };
        // The picture's own pixels are cut, which are larger than those of the sheet.
        QVERIFY2(difference(bySink(draw), byPainterSink(draw)) < 0.15,
                 qPrintable(QString::number(difference(bySink(draw), byPainterSink(draw)))));
        QVERIFY(!isBlank(bySink(draw)));
    }
}

ZEVA_TEST_MAIN(TestPageSink)
#include "tst_page_sink.moc"
