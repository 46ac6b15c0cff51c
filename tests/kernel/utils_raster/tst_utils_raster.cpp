// SPDX-License-Identifier: MIT
#include "utils/zvcanvas.h"
#include "utils/zvraster.h"

#include <QTest>

Q_DECLARE_METATYPE(ZvGiRasterImage::tagPixelFormatInfo)

class UtilsRasterTest : public QObject
{
    Q_OBJECT

private slots:
    void rowsArePaddedToFourBytes_data();
    void rowsArePaddedToFourBytes();
    void theFormatFollowsTheDepth_data();
    void theFormatFollowsTheDepth();
    void pixelsAreCopied();
    void rowsComeTopFirst();
    void thePaletteAnswersWithinItsRange();
    void anIndexedPictureWithoutPaletteIsGrey();
    void whatIsNoPictureGivesNull();
    void aClipRegionStartsWithoutPoints();
};

void UtilsRasterTest::rowsArePaddedToFourBytes_data()
{
    QTest::addColumn<unsigned>("width");
    QTest::addColumn<int>("bits");
    QTest::addColumn<unsigned>("bytes");
    QTest::newRow("1 bit, 1 pixel") << 1u << 1 << 4u;
    QTest::newRow("1 bit, 33 pixels") << 33u << 1 << 8u;
    QTest::newRow("4 bits, 9 pixels") << 9u << 4 << 8u;
    QTest::newRow("8 bits, 4 pixels") << 4u << 8 << 4u;
    QTest::newRow("24 bits, 1 pixel") << 1u << 24 << 4u;
    QTest::newRow("24 bits, 3 pixels") << 3u << 24 << 12u;
    QTest::newRow("32 bits, 3 pixels") << 3u << 32 << 12u;
    QTest::newRow("no pixel") << 0u << 32 << 0u;
}

void UtilsRasterTest::rowsArePaddedToFourBytes()
{
    QFETCH(unsigned, width);
    QFETCH(int, bits);
    QFETCH(unsigned, bytes);
    QCOMPARE(ZvGiRasterImage::calcBMPScanLineSize(width, bits), std::uint32_t(bytes));
}

void UtilsRasterTest::theFormatFollowsTheDepth_data()
{
    QTest::addColumn<int>("depth");
    QTest::addColumn<int>("red");
    QTest::addColumn<int>("green");
    QTest::addColumn<int>("blue");
    QTest::addColumn<int>("alphaBits");
    QTest::newRow("16") << 16 << 10 << 5 << 0 << 0;
    QTest::newRow("24") << 24 << 0 << 8 << 16 << 0;
    QTest::newRow("32") << 32 << 0 << 8 << 16 << 8;
}

void UtilsRasterTest::theFormatFollowsTheDepth()
{
    QFETCH(int, depth);
    const std::uint32_t bits[4] = {};
    const ZvGiRasterImagePtr image = zvutImageWrap(bits, 2, 2, depth);
    QVERIFY(image);
    const ZvGiRasterImage::tagPixelFormatInfo format = image->pixelFormat();
    QCOMPARE(int(format.bitsPerPixel), depth);
    QTEST(int(format.redOffset), "red");
    QTEST(int(format.greenOffset), "green");
    QTEST(int(format.blueOffset), "blue");
    QTEST(int(format.alphaBits), "alphaBits");
    QCOMPARE(image->colorDepth(), std::uint32_t(depth));
    QCOMPARE(image->numColors(), 0u);
}

void UtilsRasterTest::pixelsAreCopied()
{
    std::uint32_t bits[2] = {0xFF0000FFu, 0xFF00FF00u};
    const ZvGiRasterImage::tagPixelFormatInfo format = ZvGiRasterImage::bgra32();
    const ZvGiRasterImagePtr image = zvutImageWrap(bits, 2, 1, 32, nullptr, 0, &format);
    bits[0] = 0;
    std::uint32_t row[2] = {};
    image->getScanLine(0, reinterpret_cast<std::uint8_t *>(row));
    QCOMPARE(row[0], 0xFF0000FFu);
    QCOMPARE(row[1], 0xFF00FF00u);
    QCOMPARE(int(image->pixelFormat().redOffset), 16);
    QCOMPARE(zvrxNumRefs(image.get()), 1);
}

void UtilsRasterTest::rowsComeTopFirst()
{
    // Three pixels of 24 bits take nine bytes, and three of padding, a row.
    std::uint8_t bits[24];
    for (int i = 0; i < 24; ++i)
        bits[i] = std::uint8_t(i);
    const ZvGiRasterImagePtr image = zvutImageWrap(bits, 3, 2, 24);
    QCOMPARE(image->scanLineSize(), 12u);
    QCOMPARE(int(image->scanLines()[0]), 0);
    QCOMPARE(int(image->scanLines()[12]), 12);
    std::uint8_t row[12];
    image->getScanLine(1, row);
    QCOMPARE(int(row[8]), 20);
    std::fill(row, row + 12, std::uint8_t(77));
    image->getScanLine(2, row);
    QCOMPARE(int(row[0]), 77); // nothing out of range
}

void UtilsRasterTest::thePaletteAnswersWithinItsRange()
{
    const std::uint8_t bits[4] = {};
    const std::uint32_t palette[3] = {0x0000FF, 0x00FF00, 0xFF0000};
    const ZvGiRasterImagePtr image = zvutImageWrap(bits, 4, 1, 8, palette, 3);
    QCOMPARE(image->numColors(), 3u);
    QCOMPARE(image->color(2), 0xFF0000u);
    QCOMPARE(image->color(3), 0u);
    QCOMPARE(zvutImageWrap(bits, 4, 1, 1, palette, 3)->numColors(), 2u); // one bit has no use for three
}

void UtilsRasterTest::anIndexedPictureWithoutPaletteIsGrey()
{
    const std::uint8_t bits[4] = {};
    const ZvGiRasterImagePtr image = zvutImageWrap(bits, 4, 1, 4);
    QCOMPARE(image->numColors(), 16u);
    QCOMPARE(image->color(0), 0x000000u);
    QCOMPARE(image->color(15), 0xFFFFFFu);
}

void UtilsRasterTest::whatIsNoPictureGivesNull()
{
    const std::uint32_t bits[4] = {};
    QVERIFY(!zvutImageWrap(nullptr, 2, 2, 32));
    QVERIFY(!zvutImageWrap(bits, 0, 2, 32));
    QVERIFY(!zvutImageWrap(bits, 2, 0, 32));
    QVERIFY(!zvutImageWrap(bits, 2, 2, 0));
    QVERIFY(!zvutImageWrap(bits, 2, 2, 2));
    QVERIFY(!zvutImageWrap(bits, 2, 2, 48));
    QVERIFY(!zvutImageWrap(bits, 0xFFFFFFFFu, 1, 32));
}

void UtilsRasterTest::aClipRegionStartsWithoutPoints()
{
    const auto region = ZvSmartPtr<HdiClipRgn>::adopt(new ZvRxObjectImpl<HdiClipRgn>);
    QVERIFY(region->boundary().isEmpty());
    ZvArray<ZvGePoint2d> points;
    points.append(ZvGePoint2d(1, 2));
    region->setBoundary(points);
    QCOMPARE(region->boundary().length(), 1);
    QVERIFY(region->isKindOf(ZvRxObject::desc()));
    QCOMPARE(QByteArray(ZvsiCanvas::desc()->name()), QByteArray("ZvsiCanvas"));
}

QTEST_MAIN(UtilsRasterTest)
#include "tst_utils_raster.moc"
