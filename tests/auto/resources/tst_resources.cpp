// SPDX-License-Identifier: MIT
//
// The pictures behind ":/res" and those that stand in "ico_zeva/" beside the executable.

#include <QtCore/QDir>
#include <QtCore/QDirIterator>
#include <QtCore/QLibrary>
#include <QtCore/QResource>
#include <QtCore/QSet>
#include <QtCore/QtEndian>
#include <QtGui/QImage>
#include <QtGui/QImageReader>
#include <QtTest/QtTest>

namespace {

struct Expected
{
    const char *name;
    int width;
    int height;
    const char *format;
    int bits; // of a bitmap; 0 for a PNG
};

const Expected expectedFiles[] = {
    {"file.png", 26, 26, "png", 0},          {"computer.png", 27, 27, "png", 0},
    {"TColor.bmp", 186, 170, "bmp", 24},     {"view_top.bmp", 16, 16, "bmp", 24},
    {"view_bottom.bmp", 16, 16, "bmp", 24},  {"view_left.bmp", 16, 16, "bmp", 24},
    {"view_right.bmp", 16, 16, "bmp", 24},   {"view_front.bmp", 16, 16, "bmp", 24},
    {"view_back.bmp", 16, 16, "bmp", 24},    {"view_sw.bmp", 16, 16, "bmp", 24},
    {"view_se.bmp", 16, 16, "bmp", 24},      {"view_ne.bmp", 16, 16, "bmp", 24},
    {"view_nw.bmp", 16, 16, "bmp", 24},      {"view_world.bmp", 16, 16, "bmp", 24},
    {"view_current.bmp", 16, 16, "bmp", 24}, {"view_preset.bmp", 16, 16, "bmp", 24},
    {"view_modle.bmp", 16, 16, "bmp", 24},   {"view_layout.bmp", 16, 16, "bmp", 24},
    {"view_sel.bmp", 16, 16, "bmp", 32},
};

const Expected installedFiles[] = {
    {"question.png", 32, 32, "png", 0},     {"information.png", 32, 32, "png", 0}, {"warning.png", 32, 32, "png", 0},
    {"error.png", 32, 32, "png", 0},        {"layer_on.ico", 16, 16, "ico", 0},    {"layer_off.ico", 16, 16, "ico", 0},
    {"layer_frozed.ico", 16, 16, "ico", 0}, {"layer_thaw.ico", 16, 16, "ico", 0},  {"layer_lock.ico", 16, 16, "ico", 0},
    {"layer_unlock.ico", 16, 16, "ico", 0},
};

QString resourcePath(const QString &name)
{
    return QStringLiteral(":/res/") + name;
}

template <typename Table> void addRows(const Table &table)
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QByteArray>("format");
    QTest::addColumn<int>("bits");
    for (const Expected &file : table)
        QTest::newRow(file.name) << file.name << QSize(file.width, file.height) << QByteArray(file.format) << file.bits;
}

} // namespace

class tst_Resources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void folderHoldsExactlyTheNamedFiles();
    void fileHasSizeAndDepth_data() { addRows(expectedFiles); }
    void fileHasSizeAndDepth();
    void fileIsStoredUncompressed_data() { addRows(expectedFiles); }
    void fileIsStoredUncompressed();
    void noTwoPicturesAreAlike();
    void colourFieldRunsThroughHueAndSaturation();
    void installedImageHasSizeAndTransparentGround_data() { addRows(installedFiles); }
    void installedImageHasSizeAndTransparentGround();

private:
    static QStringList rootEntries();

    QStringList m_rootsBefore;
};

QStringList tst_Resources::rootEntries()
{
    return QDir(QStringLiteral(":/")).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
}

// The tree comes with the mapping of the library: nobody calls an initialiser.
void tst_Resources::initTestCase()
{
    QVERIFY(!QFile::exists(QStringLiteral(":/res")));
    m_rootsBefore = rootEntries();
    QLibrary library(QStringLiteral(QTUTILS_LIBRARY));
    QVERIFY2(library.load(), qPrintable(library.errorString()));
    QVERIFY(QFile::exists(QStringLiteral(":/res")));
}

void tst_Resources::folderHoldsExactlyTheNamedFiles()
{
    QStringList expected;
    for (const Expected &file : expectedFiles)
        expected << resourcePath(QLatin1String(file.name));

    // Qt's own libraries come with the library and bring a tree under their own name.
    QStringList found;
    for (const QString &root : rootEntries()) {
        if (m_rootsBefore.contains(root) || root == QLatin1String("qt-project.org"))
            continue;
        QDirIterator files(QStringLiteral(":/") + root, QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
        while (files.hasNext())
            found << files.next();
    }
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
    QVERIFY(QDir(QStringLiteral(":/res")).entryList(QDir::Dirs | QDir::NoDotAndDotDot).isEmpty());
}

void tst_Resources::fileHasSizeAndDepth()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(QByteArray, format);
    QFETCH(int, bits);

    QFile file(resourcePath(name));
    QVERIFY(file.open(QIODevice::ReadOnly));
    const QByteArray bytes = file.readAll();
    QImage image;
    QVERIFY(image.loadFromData(bytes, format.constData()));
    QCOMPARE(image.size(), size);
    if (bits != 0) {
        const int depthOffset = 28;
        QCOMPARE(int(qFromLittleEndian<quint16>(bytes.constData() + depthOffset)), bits);
    }
}

void tst_Resources::fileIsStoredUncompressed()
{
    QFETCH(QString, name);
    const QResource resource(resourcePath(name));
    QVERIFY(resource.isValid());
    QCOMPARE(resource.compressionAlgorithm(), QResource::NoCompression);
    QVERIFY(resource.lastModified().isValid()); // formats before the second carry no time
}

void tst_Resources::noTwoPicturesAreAlike()
{
    QSet<QByteArray> contents;
    for (const Expected &expected : expectedFiles) {
        QFile file(resourcePath(QLatin1String(expected.name)));
        QVERIFY(file.open(QIODevice::ReadOnly));
        contents << file.readAll();
    }
    QCOMPARE(contents.size(), int(std::size(expectedFiles)));
}

void tst_Resources::colourFieldRunsThroughHueAndSaturation()
{
    const QImage field(resourcePath(QStringLiteral("TColor.bmp")));
    QCOMPARE(field.pixelColor(0, 0), QColor(Qt::red));
    QCOMPARE(field.pixelColor(field.width() - 1, 0), QColor(Qt::red));

    const int tolerance = 2; // rounding of two ways to compute one colour
    for (int y = 0; y < field.height(); ++y) {
        for (int x = 0; x < field.width(); ++x) {
            const double hue = double(x) / (field.width() - 1);
            const double saturation = 1.0 - double(y) / (field.height() - 1);
            const QColor wanted = QColor::fromHslF(hue, saturation, 0.5).toRgb();
            const QColor found = field.pixelColor(x, y);
            const bool close = qAbs(wanted.red() - found.red()) <= tolerance
                && qAbs(wanted.green() - found.green()) <= tolerance && qAbs(wanted.blue() - found.blue()) <= tolerance;
            QVERIFY2(close,
                     qPrintable(
                         QStringLiteral("at %1, %2: %3, expected %4").arg(x).arg(y).arg(found.name(), wanted.name())));
        }
    }
}

void tst_Resources::installedImageHasSizeAndTransparentGround()
{
    QFETCH(QString, name);
    QFETCH(QSize, size);
    QFETCH(QByteArray, format);

    QImageReader reader(QCoreApplication::applicationDirPath() + QStringLiteral("/ico_zeva/") + name);
    QCOMPARE(reader.format(), format);
    const QImage image = reader.read();
    QCOMPARE(image.size(), size);
    QCOMPARE(qAlpha(image.pixel(0, 0)), 0);
    QVERIFY(qAlpha(image.pixel(size.width() / 2, size.height() / 2)) > 200);
}

QTEST_GUILESS_MAIN(tst_Resources)
#include "tst_resources.moc"
