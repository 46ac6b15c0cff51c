// SPDX-License-Identifier: MIT
#include "zevatest.h"

#include "zvlastimageinfomanagersvr.h"
#include "zvqtrasterimage.h"

#include <QPixmap>

#include <cerrno>
#include <cstring>
#include <functional>
#include <vector>

namespace {

using Format = ZvGiRasterImage::tagPixelFormatInfo;

/// A raster whose every byte is known, in any format there is.
ZvGiRasterImagePtr makeRaster(std::uint32_t width, std::uint32_t height, const Format &format)
{
    std::vector<std::uint8_t> bytes(ZvGiRasterImage::calcBMPScanLineSize(width, format.bitsPerPixel) * height);
    for (std::size_t i = 0; i < bytes.size(); ++i)
        bytes[i] = std::uint8_t(i * 7 + 1);
    return zvutImageWrap(bytes.data(), width, height, format.bitsPerPixel, nullptr, 0, &format);
}

/// A raster that answers by rows only.
class RowsOnlyRaster : public ZvGiRasterImage
{
public:
    std::uint32_t pixelWidth() const override { return 2; }
    std::uint32_t pixelHeight() const override { return 2; }
    std::uint32_t colorDepth() const override { return 32; }
    std::uint32_t numColors() const override { return 0; }
    std::uint32_t color(std::uint32_t) const override { return 0; }
    std::uint32_t scanLineSize() const override { return 8; }
    void getScanLine(std::uint32_t, std::uint8_t *) const override { }
    const std::uint8_t *scanLines() const override { return nullptr; }
    tagPixelFormatInfo pixelFormat() const override { return rgba32(); }
};

/// What the kernel does with the list: it fills it.
class FilledManager : public ZvLastImageInfoManagerSvr
{
public:
    FilledManager(const std::vector<ZvSmartPtr<ZvLastImageInfo>> &infos, const ZvRxObjectPtr &kept)
    {
        for (const ZvSmartPtr<ZvLastImageInfo> &info : infos)
            m_infos.append(info);
        m_keptObject = kept;
    }
    int growLength() const { return m_infos.growLength(); }
    pthread_mutex_t *mutex() { return &m_mutex; }
    bool hasMembersInOrder() const
    {
        const std::less<const void *> before;
        return before(&m_infos, &m_keptObject) && before(&m_keptObject, &m_mutex);
    }
    /// Writes the number of pictures as a spoilt memory would: it stands behind the pointer to them.
    void spoilLength(int length)
    {
        std::memcpy(reinterpret_cast<char *>(&m_infos) + sizeof(void *), &length, sizeof length);
        QCOMPARE(m_infos.logicalLength(), length);
    }
};

/// Tells when it is let go.
class WatchedInfo : public ZvLastImageInfo
{
public:
    explicit WatchedInfo(std::function<void()> whenGone) : m_whenGone(std::move(whenGone)) { }
    ~WatchedInfo() override { m_whenGone(); }

private:
    std::function<void()> m_whenGone;
};

ZvSmartPtr<ZvLastImageInfo> makeInfo(const std::function<void()> &whenGone)
{
    return ZvSmartPtr<ZvLastImageInfo>::adopt(new ZvRxObjectImpl<WatchedInfo>(whenGone));
}

/// Notes its number in \a gone when it is let go.
ZvSmartPtr<ZvLastImageInfo> makeInfo(int number, std::vector<int> &gone)
{
    return makeInfo([number, &gone] { gone.push_back(number); });
}

} // namespace

Q_DECLARE_METATYPE(Format)
Q_DECLARE_METATYPE(QImage::Format)

class TestRasterImage : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void formatFollowsThePixels_data();
    void formatFollowsThePixels();
    void pixelsAreNotCopied();
    void rowsStayTopFirst();
    void coloursOfEachFormat_data();
    void coloursOfEachFormat();
    void tooFewBytesAreFilledUpWithBlack_data();
    void tooFewBytesAreFilledUpWithBlack();
    void noRasterIsANullImage();
    void rasterWithoutBlockIsANullImage();
    void imageLivesOnItsRaster();

    void imageBecomesARaster_data();
    void imageBecomesARaster();
    void noImageIsNoRaster_data();
    void noImageIsNoRaster();
    void rowsOfAnotherLengthArePadded();
    void rasterHasPixelsOfItsOwn();
    void thereAndBack_data();
    void thereAndBack();

    void managerLetsGoOfAllItHolds();
    void managerLetsGoOfTheKeptObjectLast();
    void managerLetsGoUnderItsMutex();
    void managerOfALengthBelowNoneIsLetGo_data();
    void managerOfALengthBelowNoneIsLetGo();
    void managerGrowsByTheArraysOwnStep();
    void managersMembersStandInOrder();
};

void TestRasterImage::formatFollowsThePixels_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<QImage::Format>("expected");
    QTest::newRow("24 bits, blue first") << Format{16, 8, 8, 8, 0, 8, 0, 0, 24} << QImage::Format_BGR888;
    QTest::newRow("24 bits, red first") << Format{0, 8, 8, 8, 16, 8, 0, 0, 24} << QImage::Format_RGB888;
    QTest::newRow("32 bits, red first, alpha") << Format{0, 8, 8, 8, 16, 8, 24, 8, 32} << QImage::Format_RGBX8888;
    QTest::newRow("32 bits, blue first, alpha") << Format{16, 8, 8, 8, 0, 8, 24, 8, 32} << QImage::Format_RGBX8888;
    QTest::newRow("32 bits, red first, no alpha") << Format{0, 8, 8, 8, 16, 8, 0, 0, 32} << QImage::Format_RGB888;
    QTest::newRow("32 bits, alpha of 7 bits") << Format{0, 8, 8, 8, 16, 8, 24, 7, 32} << QImage::Format_RGB888;
    QTest::newRow("32 bits, alpha first") << Format{8, 8, 16, 8, 24, 8, 0, 8, 32} << QImage::Format_RGB888;
    QTest::newRow("32 bits, red first, alpha at 0") << Format{0, 8, 8, 8, 16, 8, 0, 8, 32} << QImage::Format_RGB888;
    QTest::newRow("32 bits, green of 7 bits") << Format{0, 8, 8, 7, 16, 8, 24, 8, 32} << QImage::Format_RGB888;
    QTest::newRow("24 bits, blue first, red of 7 bits") << Format{16, 7, 8, 8, 0, 8, 0, 0, 24} << QImage::Format_RGB888;
    QTest::newRow("16 bits") << Format{10, 5, 5, 5, 0, 5, 0, 0, 16} << QImage::Format_RGB888;
    QTest::newRow("8 bits") << Format{0, 0, 0, 0, 0, 0, 0, 0, 8} << QImage::Format_RGB888;
    QTest::newRow("4 bits") << Format{0, 0, 0, 0, 0, 0, 0, 0, 4} << QImage::Format_RGB888;
    QTest::newRow("1 bit") << Format{0, 0, 0, 0, 0, 0, 0, 0, 1} << QImage::Format_RGB888;
}

void TestRasterImage::formatFollowsThePixels()
{
    QFETCH(Format, format);
    const ZvGiRasterImagePtr raster = makeRaster(13, 5, format);
    const QImage image = zvutZvGiRasterImage2QImage(raster);
    QTEST(image.format(), "expected");
    QCOMPARE(image.size(), QSize(13, 5));
}

void TestRasterImage::pixelsAreNotCopied()
{
    const ZvGiRasterImagePtr raster = makeRaster(13, 5, ZvGiRasterImage::rgba32());
    const QImage image = zvutZvGiRasterImage2QImage(raster);
    QCOMPARE(static_cast<const void *>(image.constBits()), static_cast<const void *>(raster->scanLines()));
    QCOMPARE(image.bytesPerLine(), 52);
    const ZvGiRasterImagePtr padded = makeRaster(13, 5, ZvGiRasterImage::bgr24());
    const QImage view = zvutZvGiRasterImage2QImage(padded);
    QCOMPARE(static_cast<const void *>(view.constBits()), static_cast<const void *>(padded->scanLines()));
    QCOMPARE(view.bytesPerLine(), 40);
}

void TestRasterImage::rowsStayTopFirst()
{
    const std::uint32_t pixels[2] = {0xFF0000FFu, 0xFFFF0000u};
    const ZvGiRasterImagePtr raster = zvutImageWrap(pixels, 1, 2, 32);
    const QImage image = zvutZvGiRasterImage2QImage(raster);
    QCOMPARE(image.pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(image.pixelColor(0, 1), QColor(Qt::blue));
}

void TestRasterImage::coloursOfEachFormat_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<QColor>("shown");
    // The pixel's bytes are 10, 20, 30 and, where it has four, 255.
    QTest::newRow("24 bits, red first") << ZvGiRasterImage::rgb24() << QColor(10, 20, 30);
    QTest::newRow("24 bits, blue first") << ZvGiRasterImage::bgr24() << QColor(30, 20, 10);
    QTest::newRow("32 bits, red first") << ZvGiRasterImage::rgba32() << QColor(10, 20, 30);
    QTest::newRow("32 bits, blue first, red and blue exchanged") << ZvGiRasterImage::bgra32() << QColor(10, 20, 30);
}

void TestRasterImage::coloursOfEachFormat()
{
    QFETCH(Format, format);
    const std::uint8_t bytes[4] = {10, 20, 30, 255};
    const ZvGiRasterImagePtr raster = zvutImageWrap(bytes, 1, 1, format.bitsPerPixel, nullptr, 0, &format);
    QTEST(zvutZvGiRasterImage2QImage(raster).pixelColor(0, 0), "shown");
}

void TestRasterImage::tooFewBytesAreFilledUpWithBlack_data()
{
    QTest::addColumn<int>("depth");
    QTest::newRow("1 bit") << 1;
    QTest::newRow("4 bits") << 4;
    QTest::newRow("8 bits") << 8;
    QTest::newRow("16 bits") << 16;
}

void TestRasterImage::tooFewBytesAreFilledUpWithBlack()
{
    QFETCH(int, depth);
    const ZvGiRasterImagePtr raster = makeRaster(64, 6, ZvGiRasterImage::formatOfDepth(depth));
    const QImage image = zvutZvGiRasterImage2QImage(raster);
    const int bytes = int(raster->scanLineSize()) * 6;
    for (int i = 0; i < bytes; ++i)
        QCOMPARE(int(image.constBits()[i]), int(raster->scanLines()[i]));
    for (int i = bytes; i < image.sizeInBytes(); ++i)
        QCOMPARE(int(image.constBits()[i]), 0);
}

void TestRasterImage::noRasterIsANullImage()
{
    QVERIFY(zvutZvGiRasterImage2QImage(nullptr).isNull());
}

void TestRasterImage::rasterWithoutBlockIsANullImage()
{
    const auto raster = ZvGiRasterImagePtr::adopt(new ZvRxObjectImpl<RowsOnlyRaster>);
    QVERIFY(zvutZvGiRasterImage2QImage(raster).isNull());
}

void TestRasterImage::imageLivesOnItsRaster()
{
    const ZvGiRasterImagePtr raster = makeRaster(4, 4, ZvGiRasterImage::rgba32());
    {
        const QImage image = zvutZvGiRasterImage2QImage(raster);
        QCOMPARE(zvrxNumRefs(raster), 1); // the image holds no reference
        QImage changed = image;
        changed.fill(Qt::green); // the raster's own pixels are not written
    }
    QCOMPARE(int(raster->scanLines()[0]), 1);
}

void TestRasterImage::imageBecomesARaster_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<int>("depth");
    QTest::newRow("mono") << QImage::Format_Mono << 1;
    QTest::newRow("indexed") << QImage::Format_Indexed8 << 8;
    QTest::newRow("grey") << QImage::Format_Grayscale8 << 8;
    QTest::newRow("16 bits") << QImage::Format_RGB555 << 16;
    QTest::newRow("24 bits") << QImage::Format_RGB888 << 24;
    QTest::newRow("24 bits, blue first") << QImage::Format_BGR888 << 24;
    QTest::newRow("32 bits") << QImage::Format_RGB32 << 32;
    QTest::newRow("32 bits with alpha") << QImage::Format_ARGB32 << 32;
    QTest::newRow("32 bits, red first") << QImage::Format_RGBA8888 << 32;
}

void TestRasterImage::imageBecomesARaster()
{
    QFETCH(QImage::Format, format);
    QFETCH(int, depth);
    QImage image(13, 5, format);
    for (int i = 0; i < image.sizeInBytes(); ++i)
        image.bits()[i] = uchar(i * 3 + 2);
    const ZvSmartPtr<ZvGiRasterImage> raster = zvutQImage2ZvGiRasterImage(image);
    QVERIFY(raster);
    QCOMPARE(raster->pixelWidth(), 13u);
    QCOMPARE(raster->pixelHeight(), 5u);
    QCOMPARE(raster->colorDepth(), unsigned(depth));
    QCOMPARE(int(raster->scanLineSize()), image.bytesPerLine());
    QCOMPARE(memcmp(raster->scanLines(), image.constBits(), std::size_t(image.sizeInBytes())), 0);
    if (depth >= 24) {
        QCOMPARE(int(raster->pixelFormat().redOffset), 0); // whatever the image's own order
        QCOMPARE(int(raster->pixelFormat().blueOffset), 16);
        QCOMPARE(raster->numColors(), 0u);
    }
}

void TestRasterImage::noImageIsNoRaster_data()
{
    QTest::addColumn<QImage>("image");
    QTest::newRow("null") << QImage();
    QTest::newRow("no width") << QImage(0, 4, QImage::Format_RGB32);
    QTest::newRow("64 bits") << QImage(4, 4, QImage::Format_RGBA64);
}

void TestRasterImage::noImageIsNoRaster()
{
    QFETCH(QImage, image);
    QVERIFY(!zvutQImage2ZvGiRasterImage(image));
}

void TestRasterImage::rowsOfAnotherLengthArePadded()
{
    // Two rows of three bytes, right behind one another and nothing after them.
    const std::vector<uchar> bytes{1, 2, 3, 4, 5, 6};
    const QImage tight(bytes.data(), 1, 2, 3, QImage::Format_RGB888);
    const ZvSmartPtr<ZvGiRasterImage> raster = zvutQImage2ZvGiRasterImage(tight);
    QVERIFY(raster);
    QCOMPARE(raster->scanLineSize(), 4u);
    QCOMPARE(int(raster->scanLines()[0]), 1);
    QCOMPARE(int(raster->scanLines()[4]), 4);
    QCOMPARE(int(raster->scanLines()[6]), 6);
    // Rows longer than needed, as those of a part of a larger picture.
    const QImage large(8, 2, QImage::Format_RGB888);
    const QImage part(large.constBits() + 3, 2, 2, int(large.bytesPerLine()), QImage::Format_RGB888);
    QCOMPARE(zvutQImage2ZvGiRasterImage(part)->scanLineSize(), 8u);
}

void TestRasterImage::rasterHasPixelsOfItsOwn()
{
    QImage image(2, 2, QImage::Format_RGBA8888);
    image.fill(Qt::red);
    const ZvSmartPtr<ZvGiRasterImage> raster = zvutQImage2ZvGiRasterImage(image);
    image = QImage();
    QCOMPARE(zvutZvGiRasterImage2QImage(raster).pixelColor(1, 1), QColor(Qt::red));
}

void TestRasterImage::thereAndBack_data()
{
    QTest::addColumn<QImage::Format>("format");
    QTest::addColumn<QColor>("shown");
    const QColor color(200, 100, 50);
    QTest::newRow("24 bits, red first") << QImage::Format_RGB888 << color;
    QTest::newRow("32 bits, red first") << QImage::Format_RGBA8888 << color;
    QTest::newRow("32 bits, red first, no alpha") << QImage::Format_RGBX8888 << color;
    QTest::newRow("32 bits of a QRgb, red and blue exchanged") << QImage::Format_ARGB32 << QColor(50, 100, 200);
    QTest::newRow("24 bits, blue first, exchanged") << QImage::Format_BGR888 << QColor(50, 100, 200);
}

void TestRasterImage::thereAndBack()
{
    QFETCH(QImage::Format, format);
    QImage image(3, 3, format);
    image.fill(QColor(200, 100, 50));
    const ZvSmartPtr<ZvGiRasterImage> raster = zvutQImage2ZvGiRasterImage(image);
    QTEST(zvutZvGiRasterImage2QImage(raster).pixelColor(2, 2), "shown");
}

void TestRasterImage::managerLetsGoOfAllItHolds()
{
    std::vector<int> gone;
    const auto kept = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvLastImageInfo>);
    const ZvSmartPtr<ZvLastImageInfo> shared = makeInfo(3, gone);
    std::vector<ZvSmartPtr<ZvLastImageInfo>> infos;
    for (int number : {1, 2})
        infos.push_back(makeInfo(number, gone));
    infos.push_back(shared);
    {
        const auto manager = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<FilledManager>(infos, kept));
        infos.clear();
        QVERIFY(manager->isKindOf(ZvLastImageInfoManagerSvr::desc()));
        QCOMPARE(zvrxNumRefs(kept), 2);
        QCOMPARE(gone.size(), std::size_t(0));
    }
    QCOMPARE(gone, (std::vector<int>{2, 1})); // the third is still ours
    QCOMPARE(zvrxNumRefs(shared), 1);
    QCOMPARE(zvrxNumRefs(kept), 1);
}

void TestRasterImage::managerLetsGoOfTheKeptObjectLast()
{
    std::vector<int> gone;
    {
        const FilledManager manager({makeInfo(1, gone), makeInfo(2, gone)}, makeInfo(3, gone));
    }
    QCOMPARE(gone, (std::vector<int>{2, 1, 3}));
}

void TestRasterImage::managerLetsGoUnderItsMutex()
{
    pthread_mutex_t *mutex = nullptr;
    int result = 0;
    {
        FilledManager manager({makeInfo([&] { result = pthread_mutex_trylock(mutex); })}, nullptr);
        mutex = manager.mutex();
    }
    QCOMPARE(result, EBUSY);
}

void TestRasterImage::managerOfALengthBelowNoneIsLetGo_data()
{
    QTest::addColumn<int>("length");
    QTest::newRow("one below") << -1;
    QTest::newRow("some below") << -3;
    QTest::newRow("further below than it grows") << -100000;
}

void TestRasterImage::managerOfALengthBelowNoneIsLetGo()
{
    QFETCH(int, length);
    std::vector<int> gone;
    {
        FilledManager manager({}, makeInfo(1, gone));
        manager.spoilLength(length);
    }
    QCOMPARE(gone, (std::vector<int>{1})); // and nothing before the list's memory was written
}

void TestRasterImage::managerGrowsByTheArraysOwnStep()
{
    const FilledManager manager({}, nullptr);
    QCOMPARE(manager.growLength(), ZvArray<ZvSmartPtr<ZvLastImageInfo>>().growLength());
}

void TestRasterImage::managersMembersStandInOrder()
{
    QVERIFY(FilledManager({}, nullptr).hasMembersInOrder());
}

ZEVA_TEST_MAIN(TestRasterImage)
#include "tst_rasterimage.moc"
