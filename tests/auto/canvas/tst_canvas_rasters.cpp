// SPDX-License-Identifier: MIT
#include "canvastest.h"

#include <vector>

namespace {

using Format = ZvGiRasterImage::tagPixelFormatInfo;
using ColorAt = QColor (*)(int x, int y);

constexpr int kWidth = 7; // neither even nor a multiple of four: rows are padded
constexpr int kHeight = 5;
constexpr Format kIndexed{};

/// A raster that tells whatever it is made with, right or wrong.
class FreeRaster : public ZvGiRasterImage
{
public:
    FreeRaster(std::uint32_t width, std::uint32_t height, std::uint32_t depth, const Format &format,
               std::vector<std::uint32_t> palette, std::uint32_t rowSize, std::vector<std::uint8_t> bytes)
        : m_width(width), m_height(height), m_depth(depth), m_format(format), m_palette(std::move(palette)),
          m_rowSize(rowSize), m_bytes(std::move(bytes))
    {
    }
    std::uint32_t pixelWidth() const override { return m_width; }
    std::uint32_t pixelHeight() const override { return m_height; }
    std::uint32_t colorDepth() const override { return m_depth; }
    std::uint32_t numColors() const override { return std::uint32_t(m_palette.size()); }
    std::uint32_t color(std::uint32_t index) const override { return m_palette.at(index); }
    std::uint32_t scanLineSize() const override { return m_rowSize; }
    void getScanLine(std::uint32_t row, std::uint8_t *to) const override
    {
        for (std::size_t i = 0; i < m_rowSize; ++i)
            to[i] = m_bytes.empty() ? std::uint8_t(0) : m_bytes.at(std::size_t(row) * m_rowSize + i);
    }
    const std::uint8_t *scanLines() const override { return nullptr; } // the canvas asks for rows
    tagPixelFormatInfo pixelFormat() const override { return m_format; }

private:
    std::uint32_t m_width;
    std::uint32_t m_height;
    std::uint32_t m_depth;
    Format m_format;
    std::vector<std::uint32_t> m_palette;
    std::uint32_t m_rowSize;
    std::vector<std::uint8_t> m_bytes;
};

/// The number of a pixel, of \a depth bits: all different.
std::uint32_t pixelAt(int depth, int x, int y)
{
    const std::uint32_t number = std::uint32_t(y * kWidth + x);
    switch (depth) {
    case 1:
        return (number / 2 + std::uint32_t(y)) % 2;
    case 4:
        return number % 16;
    case 8:
        return number * 7 % 256;
    default:
        return number * 0x9E3779B1u;
    }
}

ZvGiRasterImagePtr makeRaster(int depth, const Format &format, const std::vector<std::uint32_t> &palette)
{
    const std::uint32_t rowSize = ZvGiRasterImage::calcBMPScanLineSize(kWidth, depth);
    std::vector<std::uint8_t> bytes(rowSize * kHeight);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            const std::uint32_t pixel = pixelAt(depth, x, y);
            std::uint8_t *row = &bytes[std::size_t(y) * rowSize];
            if (depth < 8) {
                const int perByte = 8 / depth;
                row[x / perByte] = std::uint8_t(row[x / perByte] | pixel << (8 - depth * (x % perByte + 1)));
                continue;
            }
            for (int i = 0; i < depth / 8; ++i)
                row[x * depth / 8 + i] = std::uint8_t(pixel >> (8 * i));
        }
    }
    return ZvGiRasterImagePtr::adopt(
        new ZvRxObjectImpl<FreeRaster>(kWidth, kHeight, std::uint32_t(depth), format, palette, rowSize, bytes));
}

std::vector<std::uint32_t> makePalette(std::size_t count)
{
    std::vector<std::uint32_t> palette;
    for (std::size_t i = 0; i < count; ++i)
        palette.push_back(std::uint32_t(i * 0x010203 + 0x102030) & 0xFFFFFF);
    return palette;
}

QColor packed(std::uint32_t value)
{
    return QColor(int(value & 0xFF), int(value >> 8 & 0xFF), int(value >> 16 & 0xFF));
}

QColor ofPalette(int depth, std::size_t count, int x, int y)
{
    const std::uint32_t index = pixelAt(depth, x, y);
    return index < count ? packed(makePalette(count)[index]) : QColor(Qt::black);
}

/// A component of five bits as a painter widens it.
int wide(std::uint32_t five)
{
    return int(five << 3 | five >> 2);
}

/// The image as it is shown: the last row of the raster on top.
QImage expectedImage(ColorAt colorAt)
{
    QImage image(kWidth, kHeight, QImage::Format_ARGB32);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x)
            image.setPixelColor(x, kHeight - 1 - y, colorAt(x, y));
    }
    return image;
}

QImage byPainter(const QImage &image, const QTransform &transform, const QTransform &before = QTransform())
{
    return paintedSheet([&](QPainter &painter) {
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setTransform(before * transform);
        painter.drawImage(QRectF(0, 0, image.width(), image.height()), image);
    });
}

struct Place
{
    ZvGePoint2d origin;
    ZvGeVector2d u;
    ZvGeVector2d v;
};

QTransform transformOf(const Place &place, const ZvGeMatrix2d &matrix)
{
    ZvGeMatrix2d system;
    system.setCoordSystem(place.origin, place.u, place.v);
    return transformOf(matrix * system);
}

QImage byCanvas(
    const ZvGiRasterImagePtr &raster, const Place &place, const ZvGeMatrix2d &matrix = ZvGeMatrix2d(),
    const std::function<void(QPainter &)> &prepare = [](QPainter &) {})
{
    return canvasSheet(
        [&](ZvQtCanvas &canvas) {
            canvas.drawRasterImage(place.origin, place.u, place.v, raster, ZvArray<ZvGePoint2d>(), false);
        },
        matrix, prepare);
}

const Place kPlain{{20, 10}, {1, 0}, {0, 1}};

} // namespace

Q_DECLARE_METATYPE(ZvGiRasterImagePtr)
Q_DECLARE_METATYPE(ColorAt)
Q_DECLARE_METATYPE(Place)
Q_DECLARE_METATYPE(Format)

class TestCanvasRasters : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void formatsAreShown_data();
    void formatsAreShown();
    void rowsAreShownLastFirst();
    void otherFormatsDrawNothing_data();
    void otherFormatsDrawNothing();
    void spoiltRastersDrawNothing_data();
    void spoiltRastersDrawNothing();
    void placeAndMatrix_data();
    void placeAndMatrix();
    void paintersTransformComesFirst();
    void boundaryAndFlagHaveNoEffect();
    void painterIsLeftAsItWas();
    void rasterIsLeftAsItWas();
    void nullRasterDrawsNothing();
    void kernelRastersAreShown_data();
    void kernelRastersAreShown();
};

void TestCanvasRasters::formatsAreShown_data()
{
    QTest::addColumn<ZvGiRasterImagePtr>("raster");
    QTest::addColumn<ColorAt>("colorAt");
    const auto row = [](const char *name, const ZvGiRasterImagePtr &raster, ColorAt colorAt) {
        QTest::newRow(name) << raster << colorAt;
    };
    row("1 bit", makeRaster(1, kIndexed, makePalette(2)), [](int x, int y) { return ofPalette(1, 2, x, y); });
    row("1 bit, one colour: the other is black", makeRaster(1, kIndexed, makePalette(1)),
        [](int x, int y) { return ofPalette(1, 1, x, y); });
    row("8 bits", makeRaster(8, kIndexed, makePalette(256)), [](int x, int y) { return ofPalette(8, 256, x, y); });
    row("8 bits, few colours: the others are black", makeRaster(8, kIndexed, makePalette(30)),
        [](int x, int y) { return ofPalette(8, 30, x, y); });
    row("8 bits, more colours than can be", makeRaster(8, kIndexed, makePalette(1000)),
        [](int x, int y) { return ofPalette(8, 256, x, y); });
    row("4 bits, the high one first", makeRaster(4, kIndexed, makePalette(16)),
        [](int x, int y) { return ofPalette(4, 16, x, y); });
    row("4 bits, few colours", makeRaster(4, kIndexed, makePalette(3)),
        [](int x, int y) { return ofPalette(4, 3, x, y); });
    row("24 bits, red at 16", makeRaster(24, ZvGiRasterImage::bgr24(), {}), [](int x, int y) {
        const QColor shown = packed(pixelAt(24, x, y));
        return QColor(shown.blue(), shown.green(), shown.red());
    });
    row("24 bits, red at 0", makeRaster(24, ZvGiRasterImage::rgb24(), {}),
        [](int x, int y) { return packed(pixelAt(24, x, y)); });
    row("32 bits, red at 0", makeRaster(32, ZvGiRasterImage::rgba32(), {}), [](int x, int y) {
        QColor shown = packed(pixelAt(32, x, y));
        shown.setAlpha(int(pixelAt(32, x, y) >> 24));
        return shown;
    });
    row("32 bits, red at 16", makeRaster(32, ZvGiRasterImage::bgra32(), {}), [](int x, int y) {
        const QColor shown = packed(pixelAt(32, x, y));
        return QColor(shown.blue(), shown.green(), shown.red(), int(pixelAt(32, x, y) >> 24));
    });
    row("16 bits", makeRaster(16, ZvGiRasterImage::rgb555(), {}), [](int x, int y) {
        const std::uint32_t p = pixelAt(16, x, y) & 0xFFFF;
        const std::uint32_t q = (p & 0x7C0) >> 1 | (p & 0x3E) << 9 | p >> 11;
        return QColor(wide(q >> 10 & 31), wide(q >> 5 & 31), wide(q & 31));
    });
}

void TestCanvasRasters::formatsAreShown()
{
    QFETCH(ZvGiRasterImagePtr, raster);
    QFETCH(ColorAt, colorAt);
    const QImage expected = expectedImage(colorAt);
    for (const Place &place : {kPlain, Place{{5, 5}, {10, 0}, {0, 9}}}) {
        const QImage sheet = byCanvas(raster, place);
        QCOMPARE(sheet, byPainter(expected, transformOf(place, ZvGeMatrix2d())));
        QVERIFY(!isBlank(sheet));
    }
}

void TestCanvasRasters::rowsAreShownLastFirst()
{
    const std::uint32_t pixels[3] = {0xFF0000FF, 0xFF00FF00, 0xFFFF0000}; // red, green, blue from the top
    const QImage sheet = byCanvas(zvutImageWrap(pixels, 1, 3, 32), {{20, 10}, {1, 0}, {0, 1}});
    QCOMPARE(sheet.pixelColor(20, 10), QColor(Qt::blue));
    QCOMPARE(sheet.pixelColor(20, 11), QColor(Qt::green));
    QCOMPARE(sheet.pixelColor(20, 12), QColor(Qt::red));
    QCOMPARE(sheet.pixelColor(20, 13), QColor(Qt::white));
    // With the v axis up, as on a sheet of paper, it stands as it was made.
    const QImage upright = byCanvas(zvutImageWrap(pixels, 1, 3, 32), {{20, 13}, {1, 0}, {0, -1}});
    QCOMPARE(upright.pixelColor(20, 10), QColor(Qt::red));
    QCOMPARE(upright.pixelColor(20, 12), QColor(Qt::blue));
}

void TestCanvasRasters::otherFormatsDrawNothing_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<Format>("format");
    QTest::newRow("24 bits, green first") << 24 << Format{8, 8, 0, 8, 16, 8, 0, 0, 24};
    QTest::newRow("24 bits, nothing told") << 24 << Format{};
    QTest::newRow("32 bits, no alpha") << 32 << Format{0, 8, 8, 8, 16, 8, 0, 0, 32};
    QTest::newRow("32 bits, alpha of 4 bits") << 32 << Format{0, 8, 8, 8, 16, 8, 24, 4, 32};
    QTest::newRow("32 bits, alpha first") << 32 << Format{8, 8, 16, 8, 24, 8, 0, 8, 32};
    QTest::newRow("32 bits, red first, alpha at 0") << 32 << Format{0, 8, 8, 8, 16, 8, 0, 8, 32};
    QTest::newRow("32 bits, red of 7 bits") << 32 << Format{0, 7, 8, 8, 16, 8, 24, 8, 32};
    QTest::newRow("16 bits, green of 6 bits") << 16 << Format{11, 5, 5, 6, 0, 5, 0, 0, 16};
    QTest::newRow("16 bits, places of 5-5-5, green of 4 bits") << 16 << Format{10, 5, 5, 4, 0, 5, 0, 0, 16};
    QTest::newRow("16 bits, blue high") << 16 << Format{0, 5, 5, 5, 10, 5, 0, 0, 16};
    QTest::newRow("2 bits") << 2 << Format{};
    QTest::newRow("48 bits") << 48 << Format{0, 16, 16, 16, 32, 16, 0, 0, 48};
}

void TestCanvasRasters::otherFormatsDrawNothing()
{
    QFETCH(int, depth);
    QFETCH(Format, format);
    const auto raster = ZvGiRasterImagePtr::adopt(new ZvRxObjectImpl<FreeRaster>(
        4u, 4u, std::uint32_t(depth), format, makePalette(4), 64u, std::vector<std::uint8_t>(256, 0x5A)));
    QVERIFY(isBlank(byCanvas(raster, kPlain)));
}

void TestCanvasRasters::spoiltRastersDrawNothing_data()
{
    QTest::addColumn<unsigned>("width");
    QTest::addColumn<unsigned>("height");
    QTest::addColumn<int>("depth");
    QTest::addColumn<unsigned>("rowSize");
    QTest::newRow("no width") << 0u << 4u << 32 << 0u;
    QTest::newRow("no height") << 4u << 0u << 32 << 16u;
    QTest::newRow("rows too short for 32 bits") << 4u << 4u << 32 << 15u;
    QTest::newRow("rows too short for 24 bits") << 4u << 4u << 24 << 11u;
    QTest::newRow("rows too short for 8 bits") << 4u << 4u << 8 << 3u;
    QTest::newRow("rows too short for 4 bits") << 5u << 4u << 4 << 2u;
    QTest::newRow("rows too short for 1 bit") << 9u << 4u << 1 << 1u;
    QTest::newRow("wider than a number") << 0x80000000u << 1u << 1 << 0x10000000u;
    QTest::newRow("higher than a number") << 1u << 0x80000000u << 1 << 1u;
    QTest::newRow("larger than memory") << 0x7FFFFFFFu << 0x7FFFFFFFu << 8 << 0x7FFFFFFFu;
}

void TestCanvasRasters::spoiltRastersDrawNothing()
{
    QFETCH(unsigned, width);
    QFETCH(unsigned, height);
    QFETCH(int, depth);
    QFETCH(unsigned, rowSize);
    const auto raster = ZvGiRasterImagePtr::adopt(
        new ZvRxObjectImpl<FreeRaster>(width, height, std::uint32_t(depth), ZvGiRasterImage::formatOfDepth(depth),
                                       makePalette(256), rowSize, std::vector<std::uint8_t>()));
    QVERIFY(isBlank(byCanvas(raster, kPlain)));
}

void TestCanvasRasters::placeAndMatrix_data()
{
    QTest::addColumn<Place>("place");
    QTest::addColumn<ZvGeMatrix2d>("matrix");
    QTest::newRow("pixel by pixel") << kPlain << ZvGeMatrix2d();
    QTest::newRow("between the pixels") << Place{{20.5, 10.25}, {1, 0}, {0, 1}} << ZvGeMatrix2d();
    QTest::newRow("enlarged") << Place{{3, 4}, {8, 0}, {0, 6.5}} << ZvGeMatrix2d();
    QTest::newRow("upright") << Place{{3, 60}, {8, 0}, {0, -6.5}} << ZvGeMatrix2d();
    QTest::newRow("turned") << Place{{40, 10}, {5, 3}, {-3, 5}} << ZvGeMatrix2d();
    QTest::newRow("slanted") << Place{{20, 10}, {5, 0}, {3, 5}} << ZvGeMatrix2d();
    QTest::newRow("mirrored by the matrix") << Place{{2, 4}, {3, 0}, {0, 3}} << upsideDown();
    QTest::newRow("turned by the matrix") << Place{{40, 4}, {3, 0}, {0, 3}} << ZvGeMatrix2d::rotation(0.3);
    QTest::newRow("reduced to less than a pixel") << Place{{20, 20}, {0.1, 0}, {0, 0.1}} << ZvGeMatrix2d();
    QTest::newRow("pressed flat") << Place{{20, 20}, {0, 0}, {0, 1}} << ZvGeMatrix2d();
}

void TestCanvasRasters::placeAndMatrix()
{
    QFETCH(Place, place);
    QFETCH(ZvGeMatrix2d, matrix);
    const ZvGiRasterImagePtr raster = makeRaster(24, ZvGiRasterImage::rgb24(), {});
    const QImage expected = expectedImage([](int x, int y) { return packed(pixelAt(24, x, y)); });
    // The painter takes another way for each format, and they differ between the pixels.
    QCOMPARE(byCanvas(raster, place, matrix),
             byPainter(expected.convertToFormat(QImage::Format_RGB888), transformOf(place, matrix)));
}

void TestCanvasRasters::paintersTransformComesFirst()
{
    const ZvGiRasterImagePtr raster = makeRaster(24, ZvGiRasterImage::rgb24(), {});
    const QImage expected = expectedImage([](int x, int y) { return packed(pixelAt(24, x, y)); });
    const Place place{{3, 4}, {4, 0}, {0, 4}};
    const QTransform own = QTransform::fromTranslate(2, 3);
    const QImage sheet
        = byCanvas(raster, place, ZvGeMatrix2d(), [&own](QPainter &painter) { painter.setTransform(own); });
    QCOMPARE(sheet, byPainter(expected, transformOf(place, ZvGeMatrix2d()), own));
    QCOMPARE(sheet.pixelColor(3 + 4 * 2, 4 + 4 * 3), expected.pixelColor(0, 0)); // two and three pixels of the raster
}

void TestCanvasRasters::boundaryAndFlagHaveNoEffect()
{
    const ZvGiRasterImagePtr raster = makeRaster(24, ZvGiRasterImage::rgb24(), {});
    ZvArray<ZvGePoint2d> boundary;
    for (const ZvGePoint2d &point : {ZvGePoint2d(20, 10), ZvGePoint2d(21, 10), ZvGePoint2d(21, 11)})
        boundary.append(point);
    for (const bool flag : {false, true}) {
        const QImage sheet = canvasSheet([&](ZvQtCanvas &canvas) {
            canvas.drawRasterImage(kPlain.origin, kPlain.u, kPlain.v, raster, boundary, flag);
        });
        QCOMPARE(sheet, byCanvas(raster, kPlain));
    }
}

void TestCanvasRasters::painterIsLeftAsItWas()
{
    paintedSheet([](QPainter &painter) {
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->setLineStyle(3, 1, 0xFF0000FF, 0, 0);
        const QPen pen = painter.pen();
        canvas->drawRasterImage(kPlain.origin, kPlain.u, kPlain.v, makeRaster(24, ZvGiRasterImage::rgb24(), {}),
                                ZvArray<ZvGePoint2d>(), false);
        QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
        QCOMPARE(painter.transform(), QTransform());
        QCOMPARE(painter.pen(), pen);
    });
}

void TestCanvasRasters::rasterIsLeftAsItWas()
{
    const std::uint32_t pixels[3] = {1, 2, 3};
    const ZvGiRasterImagePtr raster = zvutImageWrap(pixels, 1, 3, 32);
    byCanvas(raster, kPlain);
    QCOMPARE(zvrxNumRefs(raster), 1);
    QCOMPARE(memcmp(raster->scanLines(), pixels, sizeof pixels), 0);
}

void TestCanvasRasters::nullRasterDrawsNothing()
{
    QVERIFY(isBlank(byCanvas(nullptr, kPlain)));
}

void TestCanvasRasters::kernelRastersAreShown_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<QColor>("shown");
    // The kernel's own formats, of bytes 0xFF: white, and greys where the palette is its own.
    QTest::newRow("1 bit") << 1 << QColor(Qt::white);
    QTest::newRow("4 bits") << 4 << QColor(Qt::white);
    QTest::newRow("8 bits") << 8 << QColor(Qt::white);
    QTest::newRow("16 bits") << 16 << QColor(Qt::white);
    QTest::newRow("24 bits") << 24 << QColor(Qt::white);
    QTest::newRow("32 bits") << 32 << QColor(Qt::white);
}

void TestCanvasRasters::kernelRastersAreShown()
{
    QFETCH(int, depth);
    const std::vector<std::uint8_t> bytes(256, 0xFF);
    const ZvGiRasterImagePtr raster = zvutImageWrap(bytes.data(), 3, 3, depth);
    const QImage sheet = paintedSheet([&](QPainter &painter) {
        painter.fillRect(0, 0, 90, 70, Qt::darkBlue);
        const CanvasPtr canvas = makeCanvas();
        canvas->attachPainter(&painter);
        canvas->drawRasterImage({10, 10}, {5, 0}, {0, 5}, raster, ZvArray<ZvGePoint2d>(), false);
    });
    QTEST(sheet.pixelColor(17, 17), "shown");
    QCOMPARE(sheet.pixelColor(9, 17), QColor(Qt::darkBlue));
    QCOMPARE(sheet.pixelColor(26, 17), QColor(Qt::darkBlue));
}

ZEVA_TEST_MAIN(TestCanvasRasters)
#include "tst_canvas_rasters.moc"
