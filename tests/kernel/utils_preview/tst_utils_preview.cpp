// SPDX-License-Identifier: MIT
#include "previewfiles.h"

#include "utils/zvpreview.h"

#include <QDir>
#include <QFile>
#include <QImage>
#include <QTest>

namespace {

ZvThumbnailImage read(QByteArray file)
{
    ZvThumbnailImage thumbnail;
    thumbnail.png.append(1); // left over from before
    const ZvStreamBufPtr stream = ZvFlatMemStream::createNew(file.data(), std::size_t(file.size()), 0);
    zvDbGetPreviewBitmap(stream.get(), &thumbnail);
    return thumbnail;
}

QByteArray bytesOf(const ZvArray<unsigned char> &array)
{
    return QByteArray(reinterpret_cast<const char *>(array.asArrayPtr()), array.length());
}

/// The picture as the file dialog puts it together.
QImage fromBitmap(const QByteArray &bytes)
{
    const quint32 tableSize = uchar(bytes[14]) <= 8 ? 4u << uchar(bytes[14]) : 0;
    const QByteArray header = QByteArray("BM") + littleEndian(quint32(bytes.size()) + 14) + littleEndian(0)
        + littleEndian(40 + 14 + tableSize);
    return QImage::fromData(header + bytes);
}

} // namespace

class UtilsPreviewTest : public QObject
{
    Q_OBJECT

private slots:
    void picturesAreReadInAnyCombination_data();
    void picturesAreReadInAnyCombination();
    void everyDepthIsRead_data();
    void everyDepthIsRead();
    void theFirstOfTwoBitmapsCounts();
    void everyVersionIsReadAlike_data();
    void everyVersionIsReadAlike();
    void brokenFilesGiveNothing_data();
    void brokenFilesGiveNothing();
    void aFileCutAnywhereIsSurvived();
    void nullIsSurvived();
    void realDrawingsShowTheirPictures_data();
    void realDrawingsShowTheirPictures();
};

void UtilsPreviewTest::picturesAreReadInAnyCombination_data()
{
    QTest::addColumn<bool>("hasBitmap");
    QTest::addColumn<bool>("hasPng");
    QTest::newRow("none") << false << false;
    QTest::newRow("bitmap only") << true << false;
    QTest::newRow("png only") << false << true;
    QTest::newRow("both") << true << true;
}

void UtilsPreviewTest::picturesAreReadInAnyCombination()
{
    QFETCH(bool, hasBitmap);
    QFETCH(bool, hasPng);
    QVector<PreviewPart> parts{{1, QByteArray(80, '\x01')}};
    if (hasBitmap)
        parts.append({2, bitmap(30, 20)});
    if (hasPng)
        parts.append({6, png(30, 20)});
    const ZvThumbnailImage thumbnail = read(drawing(parts));
    QCOMPARE(bytesOf(thumbnail.header), QByteArray(80, '\x01'));
    QCOMPARE(bytesOf(thumbnail.bmp), hasBitmap ? bitmap(30, 20) : QByteArray());
    QCOMPARE(bytesOf(thumbnail.png), hasPng ? png(30, 20) : QByteArray());
    if (hasBitmap)
        QCOMPARE(fromBitmap(bytesOf(thumbnail.bmp)).size(), QSize(30, 20));
}

void UtilsPreviewTest::everyDepthIsRead_data()
{
    QTest::addColumn<int>("bits");
    for (const int bits : {1, 4, 8, 16, 24, 32})
        QTest::addRow("%d bits", bits) << bits;
}

void UtilsPreviewTest::everyDepthIsRead()
{
    QFETCH(int, bits);
    const QColor color(0x88, 0x40, 0x10); // which 5 bits each can hold
    const ZvThumbnailImage thumbnail = read(drawing({{2, bitmap(31, 20, bits, color)}}));
    QCOMPARE(bytesOf(thumbnail.bmp), bitmap(31, 20, bits, color));
    const QImage image = fromBitmap(bytesOf(thumbnail.bmp));
    QCOMPARE(image.size(), QSize(31, 20));
    QVERIFY(qAbs(image.pixelColor(30, 19).red() - color.red()) < 8);
    QVERIFY(qAbs(image.pixelColor(30, 19).blue() - color.blue()) < 8);
}

void UtilsPreviewTest::theFirstOfTwoBitmapsCounts()
{
    const ZvThumbnailImage thumbnail = read(drawing({{2, bitmap(30, 20)}, {2, bitmap(10, 10)}}));
    QCOMPARE(bytesOf(thumbnail.bmp), bitmap(30, 20));
    // A broken one is none.
    QCOMPARE(bytesOf(read(drawing({{2, QByteArray(60, '\x7F')}, {2, bitmap(10, 10)}})).bmp), bitmap(10, 10));
}

void UtilsPreviewTest::everyVersionIsReadAlike_data()
{
    QTest::addColumn<QByteArray>("version");
    for (const char *version : {"AC1012", "AC1014", "AC1015", "AC1018", "AC1021", "AC1024", "AC1027", "AC1032"})
        QTest::newRow(version) << QByteArray(version);
}

void UtilsPreviewTest::everyVersionIsReadAlike()
{
    QFETCH(QByteArray, version);
    const ZvThumbnailImage thumbnail = read(drawing({{2, bitmap(8, 8)}}, version));
    QCOMPARE(bytesOf(thumbnail.bmp), bitmap(8, 8));
}

void UtilsPreviewTest::brokenFilesGiveNothing_data()
{
    QTest::addColumn<QByteArray>("file");
    const QByteArray good = drawing({{2, bitmap(30, 20)}, {6, png(30, 20)}});
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("text") << QByteArray("  0\nSECTION\n").repeated(100);
    QByteArray file = good;
    file[0x100] = 0;
    QTest::newRow("no sentinel") << file;
    QTest::newRow("seeker behind the end") << QByteArray(good).replace(0x0D, 4, littleEndian(0x7FFFFFFF));
    QTest::newRow("seeker at the end") << QByteArray(good).replace(0x0D, 4, littleEndian(quint32(good.size())));
    QTest::newRow("2 GB bitmap claimed") << drawing({{2, bitmap(30, 20), 0x80000000u}});
    QTest::newRow("4 GB png claimed") << drawing({{6, png(30, 20), 0xFFFFFFFFu}});
    QTest::newRow("start behind the end") << drawing({{2, bitmap(30, 20), 0, 0xFFFFFF00u}});
    QTest::newRow("bitmap speaks of more pixels than it has")
        << drawing({{2, bitmap(30, 20).replace(4, 4, littleEndian(30000)).replace(8, 4, littleEndian(20000))}});
    QTest::newRow("bitmap 2 GB wide") << drawing({{2, bitmap(30, 20).replace(4, 4, littleEndian(0x7FFFFFFF))}});
    QTest::newRow("bitmap without rows") << drawing({{2, bitmap(30, 20).replace(8, 4, littleEndian(0))}});
    QTest::newRow("bitmap with the smallest height")
        << drawing({{2, bitmap(30, 20).replace(8, 4, littleEndian(0x80000000u))}});
    QTest::newRow("bitmap of 7 bits") << drawing({{2, bitmap(30, 20).replace(14, 1, "\x07")}});
    QTest::newRow("png without signature") << drawing({{6, png(30, 20).replace(0, 1, "\x88")}});
    QTest::newRow("png 2 GB wide") << drawing({{6, png(30, 20).replace(16, 4, QByteArray("\x7F\xFF\xFF\xFF", 4))}});
    QTest::newRow("metafile") << drawing({{3, QByteArray(500, '\x01')}});
    QTest::newRow("empty pictures") << drawing({{2, QByteArray()}, {6, QByteArray()}});
}

void UtilsPreviewTest::brokenFilesGiveNothing()
{
    QFETCH(QByteArray, file);
    const ZvThumbnailImage thumbnail = read(file);
    QVERIFY(thumbnail.bmp.isEmpty());
    QVERIFY(thumbnail.png.isEmpty());
}

void UtilsPreviewTest::aFileCutAnywhereIsSurvived()
{
    const QByteArray good = drawing({{2, bitmap(10, 10)}, {6, png(10, 10)}});
    for (int size = 0; size < good.size(); size += 7) {
        const ZvThumbnailImage thumbnail = read(good.left(size));
        QVERIFY(thumbnail.png.isEmpty()); // it comes last, so it is never whole
        QVERIFY(thumbnail.bmp.isEmpty() || bytesOf(thumbnail.bmp) == bitmap(10, 10));
    }
}

void UtilsPreviewTest::nullIsSurvived()
{
    ZvThumbnailImage thumbnail;
    thumbnail.bmp.append(1);
    zvDbGetPreviewBitmap(nullptr, &thumbnail);
    QVERIFY(thumbnail.bmp.isEmpty());
    QByteArray file = drawing({{2, bitmap(10, 10)}});
    const ZvStreamBufPtr stream = ZvFlatMemStream::createNew(file.data(), std::size_t(file.size()), 0);
    zvDbGetPreviewBitmap(stream.get(), nullptr);
}

void UtilsPreviewTest::realDrawingsShowTheirPictures_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(QStringLiteral(ZEVA_DRAWINGS_DIR "/dwg"));
    const QStringList files = folder.entryList({"*.dwg"}, QDir::Files);
    for (const QString &file : files)
        QTest::newRow(qPrintable(file)) << folder.filePath(file);
    if (files.isEmpty())
        QTest::newRow("no drawings here") << QString();
}

void UtilsPreviewTest::realDrawingsShowTheirPictures()
{
    QFETCH(QString, path);
    if (path.isEmpty())
        QSKIP("the folder of real drawings is absent");
    QFile file(path);
    QVERIFY(file.open(QIODevice::ReadOnly));
    const ZvThumbnailImage thumbnail = read(file.readAll());
    const QImage image
        = thumbnail.png.isEmpty() ? fromBitmap(bytesOf(thumbnail.bmp)) : QImage::fromData(bytesOf(thumbnail.png));
    QVERIFY(!image.isNull());
    QVERIFY(image.width() >= 100 && image.height() >= 60);
    // A picture of something: not all pixels are alike.
    const QRgb first = image.pixel(0, 0);
    bool differs = false;
    for (int y = 0; y < image.height() && !differs; ++y) {
        for (int x = 0; x < image.width() && !differs; ++x)
            differs = image.pixel(x, y) != first;
    }
    QVERIFY(differs);
}

QTEST_MAIN(UtilsPreviewTest)
#include "tst_utils_preview.moc"
