// SPDX-License-Identifier: MIT
#include "canvastest.h"
#include "private/zvcanvaspath.h"

#include <cmath>
#include <limits>
#include <vector>

namespace {

constexpr int kMove = int(0x80000000);
constexpr int kLine = 0x10000000;
constexpr int kArc = 0x20000000;
constexpr int kCubic = 0x30000000;
constexpr int kQuad = 0x40000000;
constexpr int kClose = int(0x90000000);
constexpr int kUnknown = 0x50000000;
constexpr unsigned kRed = 0xFF0000FF;
constexpr unsigned kBlue = 0xFFFF0000;
const QString kNotThere = QStringLiteral("this->isValid(i)");

using Words = std::vector<int>;
using Floats = std::vector<float>;

template <class T> ZvArray<T> arrayOf(const std::vector<T> &values)
{
    ZvArray<T> array;
    for (const T &value : values)
        array.append(value);
    return array;
}

/// Eight points on a sheet; 7 equals 0.
const Floats kPoints{10, 10, 70, 12, 66.5f, 50, 20, 60, 40, 30, 5, 35, 55, 5, 10, 10};

QPointF pointIn(const Floats &points, std::size_t number)
{
    return {double(points[2 * number]), double(points[2 * number + 1])};
}

QPointF at(int number)
{
    return pointIn(kPoints, std::size_t(number));
}

QPainterPath pathOf(const Words &words, const ZvGeMatrix2d &matrix = ZvGeMatrix2d(), const Floats &points = kPoints)
{
    return zvCanvasPath(matrix, arrayOf(points), arrayOf(words));
}

QString described(const QPainterPath &path)
{
    QString text;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        text += QStringLiteral("%1(%2,%3) ").arg(QLatin1Char("mlcd"[element.type])).arg(element.x).arg(element.y);
    }
    return text;
}

QPainterPath madeBy(const std::function<void(QPainterPath &)> &make)
{
    QPainterPath path;
    make(path);
    return path;
}

} // namespace

Q_DECLARE_METATYPE(Words)
Q_DECLARE_METATYPE(Floats)
Q_DECLARE_METATYPE(QPainterPath)

class TestCanvasPaths : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void streamsAreTheHandMadePath_data();
    void streamsAreTheHandMadePath();
    void pointsGoThroughTheMatrix();
    void malformedStreams_data();
    void malformedStreams();
    void arcsRunThroughTheirPoints_data();
    void arcsRunThroughTheirPoints();
    void arcsHaveSamplesByTheirAngle_data();
    void arcsHaveSamplesByTheirAngle();
    void arcToItsStartIsAFullCircle_data();
    void arcToItsStartIsAFullCircle();
    void arcToNearItsStart_data();
    void arcToNearItsStart();
    void smallestRadiusIsACircle();
    void arcsWithoutRadiusAreTwoLines_data();
    void arcsWithoutRadiusAreTwoLines();
    void arcsAreMadeOnTheDevice();
    void arcStartsAtTheLastPoint_data();
    void arcStartsAtTheLastPoint();
    void pathsAreDrawnByTheMode_data();
    void pathsAreDrawnByTheMode();
    void strokeTakesThePaintersPen();
    void fillTakesTheCanvassColour();
    void farPointsAreThePaintersMatter();
    void emptyStreamDrawsNothing();
};

void TestCanvasPaths::streamsAreTheHandMadePath_data()
{
    QTest::addColumn<Words>("words");
    QTest::addColumn<QPainterPath>("expected");
    const auto row = [](const char *name, const Words &words, const std::function<void(QPainterPath &)> &make) {
        QTest::newRow(name) << words << madeBy(make);
    };
    row("move and line", {kMove, 0, kLine, 1}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.lineTo(at(1));
    });
    row("begins with an operand: a move", {2, kLine, 3}, [](QPainterPath &path) {
        path.moveTo(at(2));
        path.lineTo(at(3));
    });
    row("begins with a line: from the origin", {kLine, 3}, [](QPainterPath &path) { path.lineTo(at(3)); });
    row("lines stick", {kMove, 0, kLine, 1, 2, 3, 4}, [](QPainterPath &path) {
        path.moveTo(at(0));
        for (int i : {1, 2, 3, 4})
            path.lineTo(at(i));
    });
    row("moves stick", {0, 1, 2, kLine, 3}, [](QPainterPath &path) {
        for (int i : {0, 1, 2})
            path.moveTo(at(i));
        path.lineTo(at(3));
    });
    row("cubic curves stick", {kMove, 0, kCubic, 1, 2, 3, 4, 5, 6}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.cubicTo(at(1), at(2), at(3));
        path.cubicTo(at(4), at(5), at(6));
    });
    row("quadratic curves stick", {kMove, 0, kQuad, 1, 2, 3, 4}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.quadTo(at(1), at(2));
        path.quadTo(at(3), at(4));
    });
    row("closed", {kMove, 0, kLine, 1, 2, kClose}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.lineTo(at(1));
        path.lineTo(at(2));
        path.closeSubpath();
    });
    row("two figures", {kMove, 0, kLine, 1, 2, kClose, kMove, 3, kLine, 4, 5, kClose}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.lineTo(at(1));
        path.lineTo(at(2));
        path.closeSubpath();
        path.moveTo(at(3));
        path.lineTo(at(4));
        path.lineTo(at(5));
        path.closeSubpath();
    });
    row("on from a close", {kMove, 0, kLine, 1, 2, kClose, kLine, 3}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.lineTo(at(1));
        path.lineTo(at(2));
        path.closeSubpath();
        path.lineTo(at(3));
    });
    row("the same operation named again", {kMove, 0, kLine, 1, kLine, 2}, [](QPainterPath &path) {
        path.moveTo(at(0));
        path.lineTo(at(1));
        path.lineTo(at(2));
    });
    row("a close alone: nothing but the origin", {kClose}, [](QPainterPath &path) { path.moveTo(0, 0); });
    row("nothing", {}, [](QPainterPath &) {});
}

void TestCanvasPaths::streamsAreTheHandMadePath()
{
    QFETCH(Words, words);
    QFETCH(QPainterPath, expected);
    QCOMPARE(described(pathOf(words)), described(expected));
    QCOMPARE(pathOf(words), expected);
}

void TestCanvasPaths::pointsGoThroughTheMatrix()
{
    const ZvGeMatrix2d matrix = upsideDown();
    const QTransform transform = transformOf(matrix);
    const QPainterPath path = pathOf({0, kLine, 1, kCubic, 2, 3, 4, kQuad, 5, 6, kClose}, matrix);
    QPainterPath expected(transform.map(at(0)));
    expected.lineTo(transform.map(at(1)));
    expected.cubicTo(transform.map(at(2)), transform.map(at(3)), transform.map(at(4)));
    expected.quadTo(transform.map(at(5)), transform.map(at(6)));
    expected.closeSubpath();
    QCOMPARE(described(path), described(expected));
}

void TestCanvasPaths::malformedStreams_data()
{
    QTest::addColumn<Words>("words");
    QTest::addColumn<Floats>("points");
    QTest::addColumn<int>("assertions");
    QTest::addColumn<QString>("path");
    const QString half = QStringLiteral("m(10,10) l(70,12) ");
    QTest::newRow("a point behind a close is passed over") << Words{0, kLine, 1, kClose, 2, 3, kLine, 3} << kPoints << 0
                                                           << half + QStringLiteral("l(10,10) m(10,10) l(20,60) ");
    QTest::newRow("points behind an unknown code are passed over")
        << Words{0, kUnknown, 4, 5, kLine, 1} << kPoints << 0 << half;
    QTest::newRow("an unknown code at the end") << Words{0, kLine, 1, kUnknown} << kPoints << 0 << half;
    QTest::newRow("all bits set") << Words{0, kLine, 1, -1, 2} << kPoints << 0 << half;
    QTest::newRow("a code with a low bit set is none") << Words{0, kLine, 1, kLine + 1, 2} << kPoints << 0 << half;
    QTest::newRow("no point behind a move: the word and point 0")
        << Words{kMove} << kPoints << 1 << QStringLiteral("m(10,10) ");
    QTest::newRow("no point behind a line") << Words{1, kLine} << kPoints << 1 << QStringLiteral("m(70,12) l(10,10) ");
    QTest::newRow("two points missing behind a cubic curve")
        << Words{0, kCubic, 1} << kPoints << 2 << QStringLiteral("m(10,10) c(70,12) d(10,10) d(10,10) ");
    QTest::newRow("a point past the end") << Words{0, kLine, 8} << kPoints << 2 << QStringLiteral("m(10,10) l(0,0) ");
    QTest::newRow("the highest point number")
        << Words{0, kLine, 0x0FFFFFFF} << kPoints << 2 << QStringLiteral("m(10,10) l(0,0) ");
    QTest::newRow("half a point at the end")
        << Words{0, kLine, 1} << Floats{10, 10, 70} << 1 << QStringLiteral("m(10,10) l(70,0) ");
    QTest::newRow("no coordinates at all") << Words{0} << Floats{} << 2 << QStringLiteral("m(0,0) ");
    QTest::newRow("a code in a point's place")
        << Words{0, kQuad, kMove, 1} << kPoints << 2 << described(madeBy([](QPainterPath &path) {
               path.moveTo(at(0));
               path.quadTo(QPointF(0, 0), at(1));
           }));
    QTest::newRow("no numbers are left out")
        << Words{0, kLine, 1, 2} << Floats{10, 10, std::nanf(""), 5, 70, 12} << 0 << half;
    QTest::newRow("endless coordinates are left out")
        << Words{0, kLine, 1, 2} << Floats{10, 10, HUGE_VALF, 5, 70, 12} << 0 << half;
    QTest::newRow("an arc over no number is left out")
        << Words{0, kArc, 1, 2, kLine, 3} << Floats{10, 10, std::nanf(""), 5, std::nanf(""), 7, 70, 12} << 0 << half;
    QTest::newRow("an arc to its start over an endless point")
        << Words{0, kArc, 1, 0, kLine, 2} << Floats{10, 10, -HUGE_VALF, 5, 70, 12} << 0 << half;
}

void TestCanvasPaths::malformedStreams()
{
    QFETCH(Words, words);
    QFETCH(Floats, points);
    QFETCH(int, assertions);
    for (int i = 0; i < assertions; ++i)
        expectAssertion(kNotThere);
    QTEST(described(pathOf(words, ZvGeMatrix2d(), points)), "path");
}

void TestCanvasPaths::arcsRunThroughTheirPoints_data()
{
    QTest::addColumn<Floats>("points");
    QTest::addColumn<QPointF>("center");
    QTest::addColumn<double>("radius");
    QTest::addColumn<double>("sweep"); // below 0 the other way round
    const double quarter = std::acos(0.0);
    QTest::newRow("half circle") << Floats{60, 30, 40, 50, 20, 30} << QPointF(40, 30) << 20.0 << 2 * quarter;
    QTest::newRow("the other half") << Floats{60, 30, 40, 10, 20, 30} << QPointF(40, 30) << 20.0 << -2 * quarter;
    QTest::newRow("three quarters") << Floats{60, 30, 20, 30, 40, 10} << QPointF(40, 30) << 20.0 << 3 * quarter;
    QTest::newRow("three quarters back") << Floats{60, 30, 20, 30, 40, 50} << QPointF(40, 30) << 20.0 << -3 * quarter;
}

void TestCanvasPaths::arcsRunThroughTheirPoints()
{
    QFETCH(Floats, points);
    QFETCH(QPointF, center);
    QFETCH(double, radius);
    QFETCH(double, sweep);
    const QPainterPath path = pathOf({0, kArc, 1, 2}, ZvGeMatrix2d(), points);
    const int samples = int(160.0f * float(std::fabs(sweep)));
    // The first sample is the start itself, which the path already has.
    QVERIFY(path.elementCount() == samples || path.elementCount() == samples + 1);
    const int first = path.elementCount() - samples;
    const double startAngle = std::atan2(double(points[1]) - center.y(), double(points[0]) - center.x());
    for (int i = 0; i < samples; ++i) {
        const QPointF shown = path.elementAt(first + i);
        const double angle = startAngle + sweep * i / (samples - 1);
        QVERIFY(std::fabs(shown.x() - center.x() - radius * std::cos(angle)) < 1e-6);
        QVERIFY(std::fabs(shown.y() - center.y() - radius * std::sin(angle)) < 1e-6);
    }
}

void TestCanvasPaths::arcsHaveSamplesByTheirAngle_data()
{
    QTest::addColumn<double>("sweep");
    QTest::addColumn<int>("samples");
    QTest::newRow("a quarter") << std::acos(0.0) << 251;
    QTest::newRow("one radian") << 1.00001 << 160;
    QTest::newRow("two samples, the ends") << 0.0150 << 2;
    QTest::newRow("one sample, the start") << 0.0100 << 1;
    QTest::newRow("too small for a sample: not even its end") << 0.0050 << 0;
}

void TestCanvasPaths::arcsHaveSamplesByTheirAngle()
{
    QFETCH(double, sweep);
    QFETCH(int, samples);
    Floats points;
    for (const double part : {0.0, 0.5, 1.0}) {
        points.push_back(float(30000.0 * std::cos(part * sweep)));
        points.push_back(float(30000.0 * std::sin(part * sweep)));
    }
    const QPainterPath path = pathOf({0, kArc, 1, 2}, ZvGeMatrix2d(), points);
    const int withoutStart = path.elementCount() - 1;
    QVERIFY2(withoutStart == samples || withoutStart == samples - 1, qPrintable(QString::number(withoutStart)));
    if (samples >= 2) {
        const QPointF end = path.currentPosition();
        QVERIFY(QLineF(end, pointIn(points, 2)).length() < 0.01);
    }
}

void TestCanvasPaths::arcToItsStartIsAFullCircle_data()
{
    QTest::addColumn<Floats>("points");
    QTest::addColumn<Words>("words");
    QTest::newRow("the same point") << Floats{20, 30, 60, 30} << Words{0, kArc, 1, 0};
    QTest::newRow("an equal point") << Floats{20, 30, 60, 30, 20, 30} << Words{0, kArc, 1, 2};
    QTest::newRow("across") << Floats{40, 10, 40, 50} << Words{0, kArc, 1, 0};
    QTest::newRow("aslant") << Floats{28, 14, 52, 46} << Words{0, kArc, 1, 0};
}

void TestCanvasPaths::arcToItsStartIsAFullCircle()
{
    QFETCH(Floats, points);
    QFETCH(Words, words);
    const QPainterPath path = pathOf(words, ZvGeMatrix2d(), points);
    const QPointF start = pointIn(points, 0);
    const QPointF center(40, 30);
    QVERIFY(path.elementCount() >= 1005);
    bool reachesTheOtherSide = false;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPointF shown = path.elementAt(i);
        QVERIFY(std::fabs(QLineF(center, shown).length() - 20.0) < 1e-6);
        reachesTheOtherSide = reachesTheOtherSide || QLineF(shown, 2 * center - start).length() < 0.2;
    }
    QVERIFY(reachesTheOtherSide);
    QVERIFY(QLineF(path.currentPosition(), start).length() < 1e-6);
    QVERIFY(std::fabs(path.length() - 2 * std::acos(-1.0) * 20.0) < 0.01);
}

void TestCanvasPaths::arcToNearItsStart_data()
{
    QTest::addColumn<double>("away");
    QTest::addColumn<bool>("isCircle");
    QTest::newRow("within the tolerance of points") << 5e-11 << true;
    QTest::newRow("just beyond it") << 2e-10 << false;
}

void TestCanvasPaths::arcToNearItsStart()
{
    QFETCH(double, away);
    QFETCH(bool, isCircle);
    // All on a line, so that what is no circle is two lines, there and back.
    const QPainterPath path = pathOf({0, kArc, 1, 2}, ZvGeMatrix2d(), {0, 0, 40, 0, float(away), 0});
    QVERIFY(std::fabs(path.length() - (isCircle ? std::acos(-1.0) * 40.0 : 80.0)) < 0.01);
}

void TestCanvasPaths::smallestRadiusIsACircle()
{
    QVERIFY(pathOf({0, kArc, 1, 0}, ZvGeMatrix2d(), {0, 0, 2e-9f, 0}).elementCount() > 500); // of 1e-9
}

void TestCanvasPaths::arcsWithoutRadiusAreTwoLines_data()
{
    QTest::addColumn<Floats>("points");
    QTest::addColumn<QString>("path");
    QTest::newRow("points on a line") << Floats{10, 10, 20, 20, 40, 40}
                                      << QStringLiteral("m(10,10) l(20,20) l(40,40) ");
    QTest::newRow("there and half back") << Floats{10, 10, 40, 10, 20, 10}
                                         << QStringLiteral("m(10,10) l(40,10) l(20,10) ");
    QTest::newRow("over its own start") << Floats{10, 10, 10, 10, 40, 40} << QStringLiteral("m(10,10) l(40,40) ");
    QTest::newRow("over its own end") << Floats{10, 10, 40, 40, 40, 40} << QStringLiteral("m(10,10) l(40,40) ");
    QTest::newRow("a circle of radius 5e-11")
        << Floats{0, 0, 1e-10f, 0, 0, 0} << QStringLiteral("m(0,0) l(1e-10,0) l(0,0) ");
    QTest::newRow("a circle of no size") << Floats{10, 10, 10, 10, 10, 10} << QStringLiteral("m(10,10) ");
}

void TestCanvasPaths::arcsWithoutRadiusAreTwoLines()
{
    QFETCH(Floats, points);
    QTEST(described(pathOf({0, kArc, 1, 2}, ZvGeMatrix2d(), points)), "path");
}

void TestCanvasPaths::arcsAreMadeOnTheDevice()
{
    // Pressed flat by the matrix, an arc is the circle's through the pressed points, not an ellipse's.
    ZvGeMatrix2d flat;
    flat.setCoordSystem(ZvGePoint2d(0, 0), ZvGeVector2d(1, 0), ZvGeVector2d(0, 0.5));
    const QPainterPath path = pathOf({0, kArc, 1, 2}, flat, {60, 40, 40, 80, 20, 40});
    // (60, 20), (40, 40), (20, 20): a half circle around (40, 20).
    for (int i = 0; i < path.elementCount(); ++i)
        QVERIFY(std::fabs(QLineF(QPointF(40, 20), path.elementAt(i)).length() - 20.0) < 1e-6);
    QVERIFY(path.elementCount() > 500);
    // And whether it is a full circle is told by the points before: these two are one on the device only.
    ZvGeMatrix2d upright;
    upright.setCoordSystem(ZvGePoint2d(5, 0), ZvGeVector2d(0, 0), ZvGeVector2d(0, 1));
    QCOMPARE(described(pathOf({0, kArc, 1, 2}, upright, {60, 40, 40, 80, 20, 40})),
             QStringLiteral("m(5,40) l(5,80) l(5,40) "));
    ZvGeMatrix2d dot;
    dot.setCoordSystem(ZvGePoint2d(5, 5), ZvGeVector2d(0, 0), ZvGeVector2d(0, 0));
    QCOMPARE(described(pathOf({0, kArc, 1, 2}, dot, {60, 40, 40, 80, 20, 40})), QStringLiteral("m(5,5) "));
}

void TestCanvasPaths::arcStartsAtTheLastPoint_data()
{
    QTest::addColumn<Words>("words");
    QTest::newRow("after a move") << Words{4, kArc, 5, 6};
    QTest::newRow("after a line") << Words{0, kLine, 4, kArc, 5, 6};
    QTest::newRow("after a cubic curve") << Words{0, kCubic, 1, 2, 4, kArc, 5, 6};
    QTest::newRow("after a quadratic curve") << Words{0, kQuad, 1, 4, kArc, 5, 6};
    QTest::newRow("after an arc: its end") << Words{0, kArc, 1, 4, kArc, 5, 6};
    QTest::newRow("arcs stick") << Words{0, kArc, 1, 4, 5, 6};
    QTest::newRow("after a close: the point before it") << Words{0, kLine, 1, 4, kClose, kArc, 5, 6};
}

void TestCanvasPaths::arcStartsAtTheLastPoint()
{
    QFETCH(Words, words);
    const QPainterPath path = pathOf(words);
    ZvGeCircArc2d arc;
    const auto point = [](int number) { return ZvGePoint2d(at(number).x(), at(number).y()); };
    arc.set(point(4), point(5), point(6));
    const int samples = int(160 * std::fabs(float(arc.endAng() - arc.startAng())));
    QVERIFY(samples > 50);
    for (int i = 1; i < samples; ++i) {
        const QPointF shown = path.elementAt(path.elementCount() - i);
        QVERIFY(std::fabs(QLineF(QPointF(arc.center().x, arc.center().y), shown).length() - arc.radius()) < 1e-6);
    }
    QVERIFY(QLineF(path.currentPosition(), at(6)).length() < 1e-6);
}

void TestCanvasPaths::pathsAreDrawnByTheMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<bool>("smooth");
    for (const bool smooth : {false, true}) {
        for (int mode = 0; mode < 8; ++mode) {
            static const char *const names[] = {"nothing",
                                                "stroked",
                                                "filled odd-even",
                                                "stroked, filled odd-even",
                                                "filled winding",
                                                "stroked, filled winding",
                                                "filled twice, the second time winding",
                                                "stroked and filled twice"};
            QTest::newRow(qPrintable(QLatin1String(names[mode]) + (smooth ? QLatin1String(", smooth") : QString())))
                << mode << smooth;
        }
    }
    QTest::newRow("other bits mean nothing") << 0xF8 << false;
}

void TestCanvasPaths::pathsAreDrawnByTheMode()
{
    QFETCH(int, mode);
    QFETCH(bool, smooth);
    // A star: its middle is a hole by one rule and filled by the other. The fill is see-through, so that twice is
    // darker.
    const Floats star{45, 5, 65, 62, 12, 27, 78, 27, 25, 62};
    const Words words{0, kLine, 1, 2, 3, 4, kClose};
    const unsigned paleBlue = 0x60FF0000;
    const auto prepare = [smooth](QPainter &painter) { painter.setRenderHint(QPainter::Antialiasing, smooth); };
    const QImage byCanvas = canvasSheet(
        [&](ZvQtCanvas &canvas) {
            canvas.setLineStyle(5, 0, kRed, 1, 0);
            canvas.setFillStyle(ZvsiCanvas::kHatchSolid, paleBlue);
            canvas.drawPaths(static_cast<unsigned char>(mode), arrayOf(star), arrayOf(words));
        },
        ZvGeMatrix2d(), prepare);
    const QImage byPainter = paintedSheet([&](QPainter &painter) {
        prepare(painter);
        QPainterPath path;
        for (std::size_t i = 0; i < star.size(); i += 2) {
            const QPointF point = pointIn(star, i / 2);
            if (i == 0)
                path.moveTo(point);
            else
                path.lineTo(point);
        }
        path.closeSubpath();
        const QColor blue(0, 0, 255, 0x60);
        if (mode & 1)
            painter.strokePath(path, QPen(Qt::red, 5, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin));
        if (mode & 2)
            painter.fillPath(path, blue);
        path.setFillRule(Qt::WindingFill);
        if (mode & 4)
            painter.fillPath(path, blue);
    });
    QCOMPARE(byCanvas, byPainter);
    QCOMPARE(isBlank(byCanvas), (mode & 7) == 0);
    const QColor middle = byCanvas.pixelColor(45, 36);
    QCOMPARE(middle == QColor(Qt::white), (mode & 4) == 0);
}

void TestCanvasPaths::strokeTakesThePaintersPen()
{
    const Words words{0, kLine, 1, 2, 3};
    const QImage byCanvas = paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(5, 0, kRed, 1, 0);
        painter.setPen(QPen(Qt::green, 3)); // behind the canvas's back
        canvas->drawPaths(1, arrayOf(kPoints), arrayOf(words));
    });
    const QImage byPainter
        = paintedSheet([&](QPainter &painter) { painter.strokePath(pathOf(words), QPen(Qt::green, 3)); });
    QCOMPARE(byCanvas, byPainter);
}

void TestCanvasPaths::fillTakesTheCanvassColour()
{
    const Words words{0, kLine, 1, 2, 3};
    const QImage byCanvas = paintedSheet([&](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setFillStyle(ZvsiCanvas::kHatchCross, kBlue);
        painter.setBrush(Qt::green);
        canvas->drawPaths(2, arrayOf(kPoints), arrayOf(words));
    });
    const QImage byPainter
        = paintedSheet([&](QPainter &painter) { painter.fillPath(pathOf(words), QBrush(Qt::blue, Qt::CrossPattern)); });
    QCOMPARE(byCanvas, byPainter);
}

void TestCanvasPaths::farPointsAreThePaintersMatter()
{
    const Floats far{-1e30f, 20, 50, 1e25f, 1e30f, -5e28f, 40, 30};
    const Words words{0, kLine, 1, 2, kArc, 3, 1, kClose};
    const QImage byCanvas = canvasSheet([&](ZvQtCanvas &canvas) {
        canvas.setLineStyle(1, 0, kRed, 0, 0);
        canvas.setFillStyle(ZvsiCanvas::kHatchSolid, kBlue);
        canvas.drawPaths(3, arrayOf(far), arrayOf(words));
    });
    const QImage byPainter = paintedSheet([&](QPainter &painter) {
        const QPainterPath path = pathOf(words, ZvGeMatrix2d(), far);
        painter.strokePath(path, QPen(Qt::red, 1, Qt::SolidLine, Qt::FlatCap, Qt::MiterJoin));
        painter.fillPath(path, Qt::blue);
    });
    QCOMPARE(byCanvas, byPainter);
}

void TestCanvasPaths::emptyStreamDrawsNothing()
{
    QVERIFY(isBlank(canvasSheet([](ZvQtCanvas &canvas) {
        canvas.setLineStyle(5, 0, kRed, 1, 0);
        canvas.drawPaths(7, ZvArray<float>(), ZvArray<int>());
        canvas.drawPaths(7, arrayOf(kPoints), ZvArray<int>());
    })));
}

ZEVA_TEST_MAIN(TestCanvasPaths)
#include "tst_canvas_paths.moc"
