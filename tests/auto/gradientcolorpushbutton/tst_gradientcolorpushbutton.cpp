// SPDX-License-Identifier: MIT
#include "pictures.h"
#include "zevatest.h"
#include "zvutilsgradientcolorpushbutton.h"

#include <QSignalSpy>

#include <cmath>
#include <vector>

namespace {

constexpr double kPi = 3.141592653589793;
constexpr int kTolerance = 3; // a gradient is painted in steps

struct Stop
{
    double at;
    QRgb color;
};

QRgb colorAt(const std::vector<Stop> &stops, double t)
{
    if (t <= stops.front().at)
        return stops.front().color;
    for (std::size_t i = 1; i < stops.size(); ++i) {
        const Stop &a = stops[i - 1];
        const Stop &b = stops[i];
        if (t <= b.at)
            return mixed(a.color, b.color, (t - a.at) / (b.at - a.at));
    }
    return stops.back().color;
}

/// What the swatch has to be, pixel for pixel, reckoned without a painter.
struct Swatch
{
    int width;
    int height;
    int pattern;
    bool centered;
    int degrees;
    QRgb c1;
    QRgb c2;

    double w() const { return width - 8; }
    double h() const { return height - 8; }

    std::vector<Stop> stops() const
    {
        if (pattern == 1)
            return {{0.0, c1}, {centered ? 0.3 : 0.1, c1}, {1.0, c2}};
        if (pattern == 2 || pattern == 3) {
            const QRgb outer = pattern == 2 ? c1 : c2;
            const QRgb inner = pattern == 2 ? c2 : c1;
            return {{0.0, outer}, {centered ? 0.45 : 0.3, inner}, {centered ? 0.55 : 0.4, inner}, {1.0, outer}};
        }
        if (pattern >= 7 && pattern <= 9)
            return {{0.0, c1}, {1.0, c2}};
        return {{0.0, c2}, {1.0, c1}};
    }

    double linearPlace(double x, double y) const
    {
        const double a = degrees * kPi / 180;
        const double s = std::sin(a);
        const double c = std::cos(a);
        double x1 = 0, y1 = 0, x2 = 0, y2 = 0;
        if (degrees < 91) {
            x1 = 4 - h() * s * c, y1 = 4 + h() * s * s;
            x2 = w() + 4 - w() * s * s, y2 = 4 - w() * s * c;
        } else if (degrees <= 180) {
            x1 = w() + 4 - w() * s * s, y1 = h() + 4 - w() * s * c;
            x2 = 4 + h() * s * c, y2 = h() + 4 - h() * s * s;
        } else if (degrees > 270) {
            x1 = 4 + w() * s * s, y1 = 4 + w() * s * c;
            x2 = w() + 4 - h() * s * c, y2 = 4 + h() * s * s;
        } else {
            x1 = w() + 4 + h() * s * c, y1 = h() + 4 - h() * s * s;
            x2 = 4 + w() * s * s, y2 = h() + 4 + w() * s * c;
        }
        const double dx = x2 - x1;
        const double dy = y2 - y1;
        return ((x - x1) * dx + (y - y1) * dy) / (dx * dx + dy * dy);
    }

    double radialPlace(double x, double y) const
    {
        const double a = degrees * kPi / 180;
        const double m = std::min(width, height);
        const double d = std::sqrt(w() * w() + h() * h());
        double distance = 0, direction = 0, radius = 1, focal = 0;
        if (pattern == 4 || pattern == 7) {
            focal = m / 6;
            if (centered) {
                radius = 0.5 * w() * 1.4142;
            } else {
                distance = m / 2;
                direction = -a - 2.356194490192345;
                radius = std::sqrt(std::pow(w() - m / 6 - 4, 2) + std::pow(h() - m / 6 - 4, 2));
            }
        } else if (pattern == 5 || pattern == 8) {
            distance = d / 2;
            direction = centered ? kPi / 2 - a : kPi / 4 - a + kPi / 2;
            radius = centered ? m : d;
            focal = m / 2;
        } else if (pattern == 6 || pattern == 9) {
            distance = 0.6 * d;
            direction = centered ? kPi / 2 - a : kPi / 4 - a + kPi / 2;
            radius = centered ? m + std::max(w() / 3, h() / 3) : d;
            focal = m / 2;
        } else {
            return 2; // the defaults: a circle of one pixel around the corner of the button
        }
        const double cx = width / 2.0 + distance * std::cos(direction);
        const double cy = height / 2.0 + distance * std::sin(direction);
        return (std::hypot(x - cx, y - cy) - focal) / (radius - focal);
    }

    void paint(QImage &image) const
    {
        const std::vector<Stop> table = stops();
        for (int y = 4; y <= height - 5; ++y) {
            for (int x = 4; x <= width - 5; ++x) {
                const bool isLinear = pattern >= 1 && pattern <= 3;
                const double t = isLinear ? linearPlace(x + 0.5, y + 0.5) : radialPlace(x + 0.5, y + 0.5);
                image.setPixel(x, y, colorAt(table, t));
            }
        }
    }
};

constexpr QRgb kBlue = qRgb(0, 0, 255);
constexpr QRgb kYellow = qRgb(255, 255, 0);

/// The swatch with the frame around it as \a actual has it.
QString swatchDifference(const QImage &actual, const Swatch &swatch)
{
    QImage expected = actual;
    swatch.paint(expected);
    return firstDifference(actual, expected, kTolerance);
}

} // namespace

class TestGradientColorPushButton : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void startValues();
    void linearPatterns_data();
    void linearPatterns();
    void radialPatterns_data();
    void radialPatterns();
    void otherPatternsFillWithTheFirstColour_data();
    void otherPatternsFillWithTheFirstColour();
    void shadeMakesTheSecondColour_data();
    void shadeMakesTheSecondColour();
    void frameIsPainted_data();
    void frameIsPainted();
    void tooSmallForASwatch_data();
    void tooSmallForASwatch();
    void clicksLikeAButton();
};

void TestGradientColorPushButton::startValues()
{
    const ZvUtilsGradientColorPushButton button(nullptr);
    QCOMPARE(button.m_firstColor, QColor(Qt::blue));
    QCOMPARE(button.m_secondColor, QColor(Qt::yellow));
    QCOMPARE(button.m_firstColor.alpha(), 255);
    QVERIFY(!button.m_centered && !button.m_twoColors && !button.m_selected);
    QCOMPARE(button.m_angle, 0);
    QCOMPARE(button.m_shade, 99);
    QCOMPARE(button.m_pattern, 0);
    QCOMPARE(button.objectName(), QStringLiteral("normal"));
}

static void addPatternRows(const std::vector<int> &patterns, const std::vector<int> &angles)
{
    QTest::addColumn<int>("pattern");
    QTest::addColumn<bool>("centered");
    QTest::addColumn<int>("angle");
    QTest::addColumn<QSize>("size");
    for (const int pattern : patterns) {
        for (const bool centered : {false, true}) {
            for (const int angle : angles) {
                for (const QSize size : {QSize(68, 68), QSize(108, 48), QSize(40, 90)})
                    QTest::addRow("pattern %d, %s, %d degrees, %dx%d", pattern, centered ? "centered" : "aside", angle,
                                  size.width(), size.height())
                        << pattern << centered << angle << size;
            }
        }
    }
}

static void comparePattern()
{
    QFETCH(int, pattern);
    QFETCH(bool, centered);
    QFETCH(int, angle);
    QFETCH(QSize, size);
    ZvUtilsGradientColorPushButton button(nullptr);
    button.resize(size);
    button.m_twoColors = true;
    button.m_pattern = pattern;
    button.m_centered = centered;
    button.m_angle = angle;
    const Swatch swatch{size.width(), size.height(), pattern, centered, angle, kBlue, kYellow};
    QCOMPARE(swatchDifference(pictureOf(&button), swatch), QString());
}

void TestGradientColorPushButton::linearPatterns_data()
{
    // Around 90, 180 and 270 degrees the line is told by another row of the table; below 0 and above 360 by the first
    // and the last.
    addPatternRows({1, 2, 3}, {-30, 0, 30, 90, 91, 135, 180, 181, 225, 270, 271, 315, 360, 400});
}

void TestGradientColorPushButton::linearPatterns()
{
    comparePattern();
}

void TestGradientColorPushButton::radialPatterns_data()
{
    addPatternRows({4, 5, 6, 7, 8, 9}, {0, 45, 135, 270});
}

void TestGradientColorPushButton::radialPatterns()
{
    comparePattern();
}

void TestGradientColorPushButton::otherPatternsFillWithTheFirstColour_data()
{
    QTest::addColumn<int>("pattern");
    QTest::newRow("none") << 0;
    QTest::newRow("negative") << -1;
    QTest::newRow("beyond the last") << 10;
    QTest::newRow("far beyond") << 2147483647;
}

void TestGradientColorPushButton::otherPatternsFillWithTheFirstColour()
{
    QFETCH(int, pattern);
    ZvUtilsGradientColorPushButton button(nullptr);
    button.resize(50, 40);
    button.m_pattern = pattern;
    QImage expected = pictureOf(&button);
    const QImage actual = expected;
    setPixels(expected, 4, 4, 45, 35, kBlue);
    COMPARE_PICTURES(actual, expected);
}

void TestGradientColorPushButton::shadeMakesTheSecondColour_data()
{
    QTest::addColumn<QColor>("first");
    QTest::addColumn<int>("shade");
    QTest::addColumn<bool>("twoColors");
    QTest::addColumn<QColor>("second");
    const QColor blue(0, 0, 255);
    QTest::newRow("99 is white") << blue << 99 << false << QColor(255, 255, 255);
    QTest::newRow("-99 is black") << blue << -99 << false << QColor(0, 0, 0);
    QTest::newRow("0 is half light") << blue << 0 << false << QColor(0, 0, 255);
    QTest::newRow("33 is two thirds light") << blue << 33 << false << QColor(85, 85, 255);
    QTest::newRow("-33 is one third light") << blue << -33 << false << QColor(0, 0, 170);
    QTest::newRow("beyond 99 is white") << blue << 1000 << false << QColor(255, 255, 255);
    QTest::newRow("beyond -99 is black") << blue << -1000 << false << QColor(0, 0, 0);
    QTest::newRow("a dull colour stays as dull") << QColor(96, 64, 64) << 0 << false << QColor(153, 102, 102);
    QTest::newRow("grey has no hue") << QColor(20, 20, 20) << 0 << false << QColor(128, 128, 128);
    QTest::newRow("half transparent becomes opaque") << QColor(0, 0, 255, 128) << 0 << false << QColor(0, 0, 255);
    QTest::newRow("not with two colours") << blue << 99 << true << QColor(255, 255, 0);
}

void TestGradientColorPushButton::shadeMakesTheSecondColour()
{
    QFETCH(QColor, first);
    QFETCH(int, shade);
    QFETCH(bool, twoColors);
    QFETCH(QColor, second);
    ZvUtilsGradientColorPushButton button(nullptr);
    button.resize(108, 40);
    button.m_firstColor = first;
    button.m_shade = shade;
    button.m_twoColors = twoColors;
    button.m_pattern = 2; // the second colour fills the middle
    button.m_centered = true;
    const QImage actual = pictureOf(&button);
    const QRgb middle = actual.pixel(54, 20);
    QVERIFY2(isNear(middle, second.rgb(), 1), qPrintable(QColor(middle).name()));
    QCOMPARE(button.m_firstColor, first);
    QCOMPARE(button.m_secondColor, QColor(255, 255, 0));
}

void TestGradientColorPushButton::frameIsPainted_data()
{
    QTest::addColumn<bool>("selected");
    QTest::addColumn<bool>("over");
    QTest::addColumn<QRgb>("edge"); // of the pixels 0, 1 and 2 from each side
    QTest::addColumn<QRgb>("second");
    QTest::addColumn<QRgb>("fill");
    const QRgb grey = qRgb(191, 191, 191);
    const QRgb greyFill = qRgb(240, 240, 240);
    const QRgb blue = qRgb(0, 120, 215);
    const QRgb blueFill = qRgb(229, 241, 251);
    QTest::newRow("plain") << false << false << mixed(greyFill, grey, 0.5) << greyFill << greyFill;
    QTest::newRow("under the pointer") << false << true << mixed(blueFill, blue, 0.5) << blueFill << blueFill;
    // Three pixels wide: one and a half of them inside.
    QTest::newRow("selected") << true << false << blue << mixed(blueFill, blue, 0.5) << blueFill;
    QTest::newRow("selected under the pointer") << true << true << blue << mixed(blueFill, blue, 0.5) << blueFill;
}

void TestGradientColorPushButton::frameIsPainted()
{
    QFETCH(bool, selected);
    QFETCH(bool, over);
    QFETCH(QRgb, edge);
    QFETCH(QRgb, second);
    QFETCH(QRgb, fill);
    ZvUtilsGradientColorPushButton button(nullptr);
    button.resize(50, 40);
    button.m_selected = selected;
    QEvent event(over ? QEvent::Enter : QEvent::Leave);
    QApplication::sendEvent(&button, &event);
    const QImage actual = pictureOf(&button);
    QImage expected(50, 40, QImage::Format_RGB32);
    expected.fill(fill);
    setOutline(expected, 1, 1, 48, 38, second);
    setOutline(expected, 0, 0, 49, 39, edge);
    setPixels(expected, 4, 4, 45, 35, kBlue);
    // In the corners both sides of the frame count.
    for (const int x : {0, 1, 48, 49}) {
        for (const int y : {0, 1, 38, 39})
            expected.setPixel(x, y, actual.pixel(x, y));
    }
    COMPARE_PICTURES_WITHIN(actual, expected, 2);
    const QRgb corner = actual.pixel(0, 0);
    QVERIFY(isNear(corner, selected ? edge : mixed(fill, over ? qRgb(0, 120, 215) : qRgb(191, 191, 191), 0.75), 2));
}

void TestGradientColorPushButton::tooSmallForASwatch_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("hasSwatch");
    QTest::newRow("9x9 has one pixel") << QSize(9, 9) << true;
    QTest::newRow("8x8") << QSize(8, 8) << false;
    QTest::newRow("3x3") << QSize(3, 3) << false;
    QTest::newRow("wide and flat") << QSize(60, 8) << false;
    QTest::newRow("narrow and high") << QSize(8, 60) << false;
}

void TestGradientColorPushButton::tooSmallForASwatch()
{
    QFETCH(QSize, size);
    QFETCH(bool, hasSwatch);
    for (int pattern = 0; pattern <= 3; ++pattern) { // the circles of the others have no room in one pixel
        ZvUtilsGradientColorPushButton button(nullptr);
        button.resize(size);
        button.m_firstColor = Qt::red;
        button.m_pattern = pattern;
        button.m_twoColors = true;
        button.m_secondColor = Qt::red;
        const QImage actual = pictureOf(&button);
        bool isRed = false;
        for (int y = 0; y < actual.height(); ++y) {
            for (int x = 0; x < actual.width(); ++x)
                isRed = isRed || actual.pixel(x, y) == qRgb(255, 0, 0);
        }
        QCOMPARE(isRed, hasSwatch);
    }
}

void TestGradientColorPushButton::clicksLikeAButton()
{
    ZvUtilsGradientColorPushButton button(nullptr);
    button.show();
    QVERIFY(zevaWaitForActive(&button));
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(clicked.size(), 2);
}

ZEVA_TEST_MAIN(TestGradientColorPushButton)
#include "tst_gradientcolorpushbutton.moc"
