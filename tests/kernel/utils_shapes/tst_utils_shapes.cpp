// SPDX-License-Identifier: MIT
#include "gi_shapes.h"
#include "picture.h"

#include "base/zvconfig.h"
#include "utils/zventityimage.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cmath>

// Compiled shape files, and lines with shapes in their patterns.

typedef std::vector<std::vector<QPointF>> Strokes;
Q_DECLARE_METATYPE(Strokes)

namespace {

QByteArray word(int value)
{
    return QByteArray(1, char(value & 0xFF)) + QByteArray(1, char(value >> 8 & 0xFF));
}

QByteArray codes(std::initializer_list<int> bytes)
{
    QByteArray made;
    for (const int byte : bytes)
        made += char(byte);
    return made;
}

QByteArray body(const char *name, const QByteArray &codes)
{
    return QByteArray(name) + '\0' + codes;
}

typedef std::vector<std::pair<int, QByteArray>> Bodies;

/// A file with these shapes.
QByteArray shapesFile(const Bodies &bodies)
{
    QByteArray index;
    QByteArray data;
    for (const auto &[number, body] : bodies) {
        index += word(number) + word(body.size());
        data += body;
    }
    return "shapes 1.0\r\n\x1A" + word(bodies.front().first) + word(bodies.back().first) + word(int(bodies.size()))
        + index + data;
}

QByteArray uniFontFile(const Bodies &bodies)
{
    QByteArray made = "unifont 1.0\r\n\x1A" + word(int(bodies.size()));
    for (const auto &[number, body] : bodies)
        made += word(number) + word(body.size()) + body;
    return made;
}

QByteArray bigFontFile(const Bodies &bodies)
{
    const QByteArray title = "bigfont 1.0\r\n\x1A";
    const QByteArray head = word(8) + word(int(bodies.size())) + word(1) + word(1) + word(0xFFFF);
    int place = title.size() + head.size() + int(bodies.size()) * 8;
    QByteArray index;
    QByteArray data;
    for (const auto &[number, body] : bodies) {
        index += word(number) + word(body.size()) + word(place) + word(place >> 16);
        data += body;
        place += body.size();
    }
    return title + head + index + data;
}

std::string_view view(const QByteArray &bytes)
{
    return std::string_view(bytes.constData(), std::size_t(bytes.size()));
}

Strokes strokesOf(const QByteArray &file, int number = 130)
{
    const GiShapeFile read(view(file));
    const GiShape *shape = read.shape(number);
    return shape ? shape->strokes : Strokes();
}

bool isNear(const QPointF &a, const QPointF &b)
{
    return std::hypot(a.x() - b.x(), a.y() - b.y()) < 1e-6;
}

/// A folder of the settings for support files, for one test.
class SupportFolder
{
public:
    explicit SupportFolder(const QString &path)
    {
        zv_runtime_settings()->SetDataSW("paths/supportPaths", ZvString(path.toUtf8().constData()));
    }
    ~SupportFolder() { zv_runtime_settings()->SetDataJ("paths/supportPaths", nullptr); }
    SupportFolder(const SupportFolder &) = delete;
    SupportFolder &operator=(const SupportFolder &) = delete;
};

constexpr char kUsualFile[] = "ltypeshp.shx";

void write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

} // namespace

class UtilsShapesTest : public QObject
{
    Q_OBJECT

private slots:
    void codesDraw_data();
    void codesDraw();
    void arcsRun_data();
    void arcsRun();
    void kindsOfFiles_data();
    void kindsOfFiles();
    void partsOfBigFontsArePlaced();
    void damagedFilesEnd_data();
    void damagedFilesEnd();
    void everyBeginningOfAFileIsRead();
    void endlessShapesEnd_data();
    void endlessShapesEnd();
    void filesAreFound_data();
    void filesAreFound();
    void usualShapesStandIn_data();
    void usualShapesStandIn();
    void shapesStandOnTheirLine_data();
    void shapesStandOnTheirLine();
    void theFileComesBeforeTheUsualShape();
    void aChangedFileIsReadAnew();
    void keptPicturesFollowTheFile();
    void unknownShapesLeaveTheirGap();
    void shapesHaveTheLooksOfTheirLine();

private:
    static ZvDbObjectId addShapeFile(const ZvDbDatabasePtr &database, const char *name)
    {
        ZvDbTextStyleTable *table = nullptr;
        database->getSymbolTable(table, ZvDb::kForWrite);
        auto *record = new ZvDbTextStyleTableRecord;
        record->setIsShapeFile(true);
        record->setFontFileName(name);
        ZvDbObjectId id;
        table->add(record, id);
        record->close();
        table->close();
        return id;
    }
    /// A dash of 20, a shape at its end and a gap of 20.
    static ZvDbObjectId addType(Picture &picture, const char *file, int number, double scale = 5.0)
    {
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
        dashes[0].length = 20.0;
        dashes[0].flags = 4;
        dashes[0].shapeNumber = number;
        dashes[0].styleId = addShapeFile(picture.database, file);
        dashes[0].scale = scale;
        dashes[1].length = -20.0;
        return picture.addLinetype("with a shape", dashes);
    }
    static ZvDbObjectId addLine(Picture &picture, ZvDbObjectId type)
    {
        const ZvDbObjectId id = picture.addLine(10.5, 50.5, 90.5, 50.5);
        change<ZvDbLine>(id, [&](ZvDbLine &line) { line.setLinetype(type); });
        return id;
    }
    /// The gap after the first dash.
    static QRect inGap(const QImage &image)
    {
        const QRect ink = inkedRect(image.copy(32, 0, 18, 100));
        return ink.translated(32, 0);
    }
};

void UtilsShapesTest::codesDraw_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<Strokes>("expected");
    const auto row = [](const char *name, std::initializer_list<int> bytes, const Strokes &strokes) {
        QTest::newRow(name) << codes(bytes) << strokes;
    };
    row("a vector of each direction", {0x10, 0x21, 0x12, 0x23, 0x14, 0x25, 0x16, 0x27, 0},
        {{{0, 0}, {1, 0}, {3, 1}, {4, 2}, {5, 4}, {5, 5}, {4, 7}, {3, 8}, {1, 9}}});
    row("and the other eight", {0x18, 0x29, 0x1A, 0x2B, 0x1C, 0x2D, 0x1E, 0x2F, 0},
        {{{0, 0}, {-1, 0}, {-3, -1}, {-4, -2}, {-5, -4}, {-5, -5}, {-4, -7}, {-3, -8}, {-1, -9}}});
    row("the longest", {0xF0, 0}, {{{0, 0}, {15, 0}}});
    row("pen up and down", {0x10, 2, 0x10, 1, 0x10, 0}, {{{0, 0}, {1, 0}}, {{2, 0}, {3, 0}}});
    row("pen down twice", {0x10, 1, 0x10, 0}, {{{0, 0}, {1, 0}}, {{1, 0}, {2, 0}}});
    row("up all the time", {2, 0x10, 0x14, 0}, {});
    row("divided", {3, 4, 0x80, 0}, {{{0, 0}, {2, 0}}});
    row("multiplied", {4, 4, 0x80, 0}, {{{0, 0}, {32, 0}}});
    row("divided and multiplied back", {3, 2, 0x80, 4, 2, 0x84, 0}, {{{0, 0}, {4, 0}, {4, 8}}});
    row("divided by nothing", {3, 0, 4, 0, 0x80, 0}, {{{0, 0}, {8, 0}}});
    row("a place kept", {0x10, 5, 0x14, 6, 0x10, 0}, {{{0, 0}, {1, 0}, {1, 1}}, {{1, 0}, {2, 0}}});
    row("no place kept", {6, 0x10, 6, 0x10, 0}, {{{0, 0}, {1, 0}, {2, 0}}});
    row("a move", {8, 3, 0xFE, 0}, {{{0, 0}, {3, -2}}});
    row("the longest moves", {8, 127, 0x80, 0}, {{{0, 0}, {127, -128}}});
    row("moves", {9, 1, 2, 0xFF, 3, 0, 0, 0x10, 0}, {{{0, 0}, {1, 2}, {0, 5}, {1, 5}}});
    row("for texts that run downwards", {0xE, 8, 9, 9, 0xE, 2, 0xE, 0x4C, 0xE, 9, 5, 5, 0, 0, 0x10, 0},
        {{{0, 0}, {1, 0}}});
    row("an arc for such",
        {0xE, 0xA, 9, 0x02, 0xE, 0xB, 1, 1, 0, 9, 1, 0xE, 0xC, 1, 1, 9, 0xE, 0xD, 1, 1, 9, 0, 0, 0x10, 0},
        {{{0, 0}, {1, 0}}});
    row("a shape and a place for such", {0xE, 7, 131, 0xE, 3, 9, 0xE, 5, 0xE, 6, 0x10, 0}, {{{0, 0}, {1, 0}}});
    row("another shape", {0x10, 7, 131, 0x10, 0}, {{{0, 0}, {1, 0}, {1, 2}, {2, 2}}});
    row("a shape that is none", {0x10, 7, 99, 0x10, 0}, {{{0, 0}, {1, 0}, {2, 0}}});
    row("a code that is none", {0xF, 0x10, 0}, {{{0, 0}, {1, 0}}});
    row("without an end", {0x10}, {{{0, 0}, {1, 0}}});
    row("nothing", {0}, {});
}

void UtilsShapesTest::codesDraw()
{
    QFETCH(QByteArray, code);
    QFETCH(Strokes, expected);
    const Strokes drawn = strokesOf(shapesFile({{130, body("IT", code)}, {131, body("OTHER", codes({0x24, 0}))}}));
    QCOMPARE(drawn, expected);
}

void UtilsShapesTest::arcsRun_data()
{
    QTest::addColumn<QByteArray>("code");
    QTest::addColumn<QPointF>("middle"); // half way along
    QTest::addColumn<QPointF>("end");
    const double h = std::sqrt(0.5);
    const auto row = [](const char *name, std::initializer_list<int> bytes, QPointF middle, QPointF end) {
        QTest::newRow(name) << codes(bytes) << middle << end;
    };
    row("a circle", {0xA, 2, 0x00, 0}, {-4, 0}, {0, 0});
    row("a circle from its top", {0xA, 2, 0x20, 0}, {0, -4}, {0, 0});
    row("a quarter", {0xA, 2, 0x02, 0}, {2 * h - 2, 2 * h}, {-2, 2});
    row("a quarter clockwise", {0xA, 2, 256 - 0x02, 0}, {2 * h - 2, -2 * h}, {-2, -2});
    row("a half from below, clockwise", {0xA, 3, 256 - 0x64, 0}, {-3, 3}, {0, 6});
    row("divided", {3, 2, 0xA, 2, 0x02, 0}, {h - 1, h}, {-1, 1});
    const auto on
        = [](double degrees) { return 3.0 * QPointF(std::cos(degrees * M_PI / 180), std::sin(degrees * M_PI / 180)); };
    const double late = 45 + 56 * 45.0 / 256;
    const double last = 90 + 28 * 45.0 / 256;
    row("parts of eighths", {0xB, 56, 28, 0, 3, 0x12, 0}, on((late + last) / 2) - on(late), on(last) - on(late));
    row("whole eighths", {0xB, 0, 0, 0, 3, 0x02, 0}, on(45) - on(0), on(90) - on(0));
    row("parts, clockwise", {0xB, 128, 128, 0, 3, 256 - 0x22, 0}, on(45) - on(67.5), on(22.5) - on(67.5));
    row("a large one", {0xB, 0, 0, 1, 44, 0x04, 0}, QPointF(-300, 300), QPointF(-600, 0));
    row("a half by its height", {0xC, 4, 0, 127, 0}, {2, -2}, {4, 0});
    row("a half on the other side", {0xC, 4, 0, 256 - 127, 0}, {2, 2}, {4, 0});
    row("a flat one", {0xC, 0, 10, 64, 0}, {5 * 64 / 127.0, 5}, {0, 10});
    row("a straight one", {0xC, 4, 2, 0, 0}, {2, 1}, {4, 2});
    row("two", {0xD, 4, 0, 127, 4, 0, 256 - 127, 0, 0, 0}, {4, 0}, {8, 0});
}

void UtilsShapesTest::arcsRun()
{
    QFETCH(QByteArray, code);
    QFETCH(QPointF, middle);
    QFETCH(QPointF, end);
    const Strokes drawn = strokesOf(shapesFile({{130, body("ARC", code)}}));
    QCOMPARE(int(drawn.size()), 1);
    const std::vector<QPointF> &stroke = drawn.front();
    QVERIFY(isNear(stroke.front(), {0, 0}));
    QVERIFY2(isNear(stroke.back(), end),
             qPrintable(QStringLiteral("%1 %2").arg(stroke.back().x()).arg(stroke.back().y())));
    double total = 0;
    for (std::size_t i = 1; i < stroke.size(); ++i)
        total += std::hypot(stroke[i].x() - stroke[i - 1].x(), stroke[i].y() - stroke[i - 1].y());
    double along = 0;
    double nearest = 1e9;
    for (std::size_t i = 1; i < stroke.size(); ++i) {
        const QPointF step = stroke[i] - stroke[i - 1];
        const double size = std::hypot(step.x(), step.y());
        if (along <= total / 2 && total / 2 <= along + size) {
            const QPointF at = stroke[i - 1] + step * ((total / 2 - along) / size);
            nearest = std::min(nearest, std::hypot(at.x() - middle.x(), at.y() - middle.y()));
        }
        along += size;
    }
    QVERIFY2(nearest < 0.003 * total, qPrintable(QString::number(nearest)));
}

void UtilsShapesTest::kindsOfFiles_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::addColumn<int>("number");
    const QByteArray line = codes({0x10, 0});
    const QByteArray inner = codes({0x24, 0});
    QTest::newRow("shapes") << shapesFile({{130, body("A", codes({0x10, 7, 131, 0}))}, {131, body("B", inner)}}) << 130;
    QTest::newRow("shapes of a text font") << shapesFile(
        {{0, body("Font", codes({6, 2, 0, 0}))}, {65, body("", codes({0x10, 7, 66, 0}))}, {66, body("", inner)}})
                                           << 65;
    QTest::newRow("by characters") << uniFontFile({{0, body("Font", codes({6, 2, 0, 0}))},
                                                   {0x5C42, body("", codes({0x10, 7, 0x12, 0x34, 0}))},
                                                   {0x1234, body("", inner)}})
                                   << 0x5C42;
    QTest::newRow("of many characters") << bigFontFile({{0, body("Font", codes({8, 2, 0, 0}))},
                                                        {0xB0A1, body("", codes({0x10, 7, 0x34, 0}))},
                                                        {0x34, body("", inner)}})
                                        << 0xB0A1;
}

void UtilsShapesTest::kindsOfFiles()
{
    QFETCH(QByteArray, file);
    QFETCH(int, number);
    QCOMPARE(strokesOf(file, number), Strokes({{{0, 0}, {1, 0}, {1, 2}}}));
    QVERIFY(strokesOf(file, 0).empty()); // what a font says of itself
    QVERIFY(strokesOf(file, 999).empty());
    QVERIFY(strokesOf(file, -1).empty());
}

void UtilsShapesTest::partsOfBigFontsArePlaced()
{
    // A part in a box 4 wide and 2 high at (3, 1), of a font whose characters are 8 high.
    const QByteArray file = bigFontFile({{0, body("Font", codes({8, 0, 0, 8}))},
                                         {0x3021, body("", codes({7, 0, 0x31, 0x41, 3, 1, 4, 2, 0x10, 0}))},
                                         {0x3141, body("", codes({0x80, 0x84, 0}))}});
    QCOMPARE(strokesOf(file, 0x3021), Strokes({{{3, 1}, {7, 1}, {7, 3}}, {{0, 0}, {1, 0}}}));
}

void UtilsShapesTest::damagedFilesEnd_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("a text") << QByteArray("*130,6,TRACK\n1,2,0\n");
    QTest::newRow("a title only") << QByteArray("shapes 1.0\r\n\x1A");
    QTest::newRow("no title") << QByteArray("\x1A\x01\x02\x03", 4);
    QTest::newRow("another kind") << QByteArray("pictures 1.0\r\n\x1A") + QByteArray(100, '\1');
    QTest::newRow("the title too long") << QByteArray(100, 'x') + shapesFile({{130, body("A", codes({0x10, 0}))}});
    QTest::newRow("more shapes than bytes") << "shapes 1.0\r\n\x1A" + word(1) + word(2) + word(0xFFFF) + word(130);
    QTest::newRow("a shape longer than the file")
        << "shapes 1.0\r\n\x1A" + word(130) + word(130) + word(1) + word(130) + word(0xFFFF);
    QTest::newRow("a shape without a name") << shapesFile({{130, codes({0x10, 0x14})}});
    QTest::newRow("characters, more than bytes") << "unifont 1.0\r\n\x1A" + word(0xFFFF) + word(130) + word(9);
    QTest::newRow("a place outside the file")
        << "bigfont 1.0\r\n\x1A" + word(8) + word(1) + word(0) + word(130) + word(4) + word(0xFFFF) + word(0xFFFF);
    QTest::newRow("more ranges than bytes") << "bigfont 1.0\r\n\x1A" + word(8) + word(9) + word(0xFFFF) + word(130);
}

void UtilsShapesTest::damagedFilesEnd()
{
    QFETCH(QByteArray, file);
    QVERIFY(strokesOf(file).empty());
}

void UtilsShapesTest::everyBeginningOfAFileIsRead()
{
    const QByteArray inner = codes({0x10, 8, 1, 2,   9, 1, 1, 2, 2, 0, 0,   0xA, 2, 0x02, 0xB, 1, 1, 0,   9,    1, 0xC,
                                    1,    2, 3, 0xD, 1, 2, 3, 0, 0, 7, 131, 5,   6, 3,    2,   4, 2, 0xE, 0x10, 0});
    const Bodies bodies = {{130, body("A", inner)}, {131, body("B", codes({0x24, 0}))}};
    for (const QByteArray &file : {shapesFile(bodies), uniFontFile(bodies), bigFontFile(bodies)}) {
        QVERIFY(!strokesOf(file).empty());
        for (int size = 0; size < file.size(); ++size) {
            // In memory of its own, so that reading beyond it shows.
            const GiShapeFile read(std::string_view(std::string(file.constData(), std::size_t(size))));
            read.shape(130);
            read.shape(131);
        }
    }
}

void UtilsShapesTest::endlessShapesEnd_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("itself") << shapesFile({{130, body("A", codes({0x10, 7, 130, 0}))}});
    QTest::newRow("each other") << shapesFile(
        {{130, body("A", codes({0x10, 7, 131, 0}))}, {131, body("B", codes({0x14, 7, 130, 0}))}});
    QByteArray often;
    for (int i = 0; i < 200; ++i)
        often += codes({0x10, 7, 130});
    QTest::newRow("itself, often") << shapesFile({{130, body("A", often)}});
    QByteArray grown;
    for (int i = 0; i < 200; ++i)
        grown += codes({4, 255, 0xF0});
    QTest::newRow("ever larger") << shapesFile({{130, body("A", grown)}});
    QByteArray circles;
    for (int i = 0; i < 30000; ++i)
        circles += codes({0xA, 9, 0x00});
    QTest::newRow("circles without end") << shapesFile({{130, body("A", circles.left(60000))}});
    QByteArray pushes(60000, '\5');
    QTest::newRow("places without end") << shapesFile({{130, body("A", pushes + codes({0x10}))}});
    QTest::newRow("for vertical texts, over and over")
        << shapesFile({{130, body("A", QByteArray(60000, '\x0E') + codes({0x10}))}});
}

void UtilsShapesTest::endlessShapesEnd()
{
    QFETCH(QByteArray, file);
    const GiShapeFile read(view(file));
    std::size_t points = 0;
    if (const GiShape *shape = read.shape(130)) {
        for (const auto &stroke : shape->strokes)
            points += stroke.size();
        QVERIFY(std::abs(shape->box.width()) < 1e7 && std::abs(shape->box.height()) < 1e7);
    }
    QVERIFY(points < 50000);
}

void UtilsShapesTest::filesAreFound_data()
{
    QTest::addColumn<QString>("name"); // in the drawing
    QTest::addColumn<QString>("beside"); // the drawing, empty for nothing
    QTest::addColumn<QString>("support"); // in the folder of the settings
    QTest::addColumn<QString>("found"); // folder and name
    QTest::newRow("beside the drawing") << "my.shx"
                                        << "my.shx"
                                        << ""
                                        << "drawing/my.shx";
    QTest::newRow("in the support folder") << "my.shx"
                                           << ""
                                           << "my.shx"
                                           << "support/my.shx";
    QTest::newRow("in both") << "my.shx"
                             << "my.shx"
                             << "my.shx"
                             << "drawing/my.shx";
    QTest::newRow("nowhere") << "my.shx"
                             << "other.shx"
                             << ""
                             << "";
    QTest::newRow("in capitals in the drawing") << "MY.SHX"
                                                << "my.shx"
                                                << ""
                                                << "drawing/my.shx";
    QTest::newRow("in capitals on the disk") << "my.shx"
                                             << ""
                                             << "MY.SHX"
                                             << "support/MY.SHX";
    QTest::newRow("with a folder of another machine") << "D:\\shapes\\my.shx"
                                                      << "my.shx"
                                                      << ""
                                                      << "drawing/my.shx";
    QTest::newRow("with a folder") << "/usr/../etc/my.shx"
                                   << ""
                                   << "my.shx"
                                   << "support/my.shx";
    QTest::newRow("without an ending") << "my"
                                       << "my.shx"
                                       << ""
                                       << "drawing/my.shx";
    QTest::newRow("a folder of that name") << "."
                                           << ""
                                           << ""
                                           << "";
    QTest::newRow("no name") << ""
                             << "my.shx"
                             << "my.shx"
                             << "";
    QTest::newRow("with wild cards") << "*.shx"
                                     << "my.shx"
                                     << ""
                                     << "";
}

void UtilsShapesTest::filesAreFound()
{
    QFETCH(QString, name);
    QFETCH(QString, beside);
    QFETCH(QString, support);
    QFETCH(QString, found);
    const QTemporaryDir folder;
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("drawing")));
    QVERIFY(QDir(folder.path()).mkdir(QStringLiteral("support")));
    const QByteArray bytes = shapesFile({{130, body("A", codes({0x10, 0}))}});
    if (!beside.isEmpty())
        write(folder.filePath(QStringLiteral("drawing/") + beside), bytes);
    if (!support.isEmpty())
        write(folder.filePath(QStringLiteral("support/") + support), bytes);
    const SupportFolder settings(folder.filePath(QStringLiteral("support")));
    const ZvDbDatabasePtr database = ZvDbDatabase::create();
    ZvDbFileReport report;
    const ZvString path = folder.filePath(QStringLiteral("drawing/plan.dxf")).toUtf8().constData();
    QCOMPARE(database->saveAs(path, report), Zv::eOk);
    QCOMPARE(database->fileName(), path);
    const ZvString named = name.toUtf8().constData();
    QCOMPARE(giFindShapeFile(*database, named).path, found.isEmpty() ? QString() : folder.filePath(found));
    // One that was read knows its place too, one that is in no file has none.
    const ZvDbDatabasePtr read = ZvDbDatabase::create();
    QCOMPARE(read->readFile(path, report), Zv::eOk);
    QCOMPARE(giFindShapeFile(*read, named).path, found.isEmpty() ? QString() : folder.filePath(found));
    if (support.isEmpty())
        QVERIFY(giFindShapeFile(*ZvDbDatabase::create(), named).path.isEmpty());
}

void UtilsShapesTest::usualShapesStandIn_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QRectF>("box");
    QTest::newRow("track") << 130 << QRectF(0, -1, 0, 2);
    QTest::newRow("zig") << 131 << QRectF(0, 0, 2, 1);
    QTest::newRow("box") << 132 << QRectF(0, -1, 2, 2);
    QTest::newRow("circle") << 133 << QRectF(0, -1, 2, 2);
    QTest::newRow("bat") << 134 << QRectF(-0.2, 0, 2.4, 2.2);
}

void UtilsShapesTest::usualShapesStandIn()
{
    QFETCH(int, number);
    QFETCH(QRectF, box);
    const GiShape *shape = giUsualShape(kUsualFile, number);
    QVERIFY(shape);
    QVERIFY(std::abs(shape->box.left() - box.left()) < 0.01 && std::abs(shape->box.right() - box.right()) < 0.01);
    QVERIFY(std::abs(shape->box.top() - box.top()) < 0.01 && std::abs(shape->box.bottom() - box.bottom()) < 0.01);
    QVERIFY(isNear(shape->strokes.front().front(),
                   number == 130       ? QPointF(0, -1)
                       : number == 132 ? QPointF(0, -1)
                                       : QPointF(0, 0)));
    QCOMPARE(giUsualShape("C:\\Fonts\\LTYPESHP.SHX", number), shape);
    QCOMPARE(giUsualShape("ltypeshp", number), shape);
    QVERIFY(!giUsualShape("other.shx", number));
    QVERIFY(!giUsualShape("", number));
    QVERIFY(!giUsualShape(kUsualFile, number + 10));
}

void UtilsShapesTest::shapesStandOnTheirLine_data()
{
    QTest::addColumn<int>("number");
    QTest::addColumn<QRect>("ink"); // in the gap of a level line, pixels
    QTest::addColumn<QPoint>("inside"); // a pixel that stays empty
    QTest::newRow("zig") << 131 << QRect(32, 44, 9, 6) << QPoint(35, 49);
    QTest::newRow("box") << 132 << QRect(32, 44, 9, 11) << QPoint(35, 49);
    QTest::newRow("circle") << 133 << QRect(32, 44, 9, 11) << QPoint(35, 49);
    QTest::newRow("bat") << 134 << QRect(32, 38, 10, 12) << QPoint(35, 46);
}

void UtilsShapesTest::shapesStandOnTheirLine()
{
    QFETCH(int, number);
    QFETCH(QRect, ink);
    QFETCH(QPoint, inside);
    Picture picture;
    addLine(picture, addType(picture, kUsualFile, number));
    const QImage image = picture.draw();
    const QRect drawn = inGap(image);
    const auto close = [](int a, int b) { return std::abs(a - b) <= 1; };
    QVERIFY2(
        close(drawn.left(), ink.left()) && close(drawn.top(), ink.top()) && close(drawn.right(), ink.right())
            && close(drawn.bottom(), ink.bottom()),
        qPrintable(
            QStringLiteral("%1 %2 %3 %4").arg(drawn.left()).arg(drawn.top()).arg(drawn.width()).arg(drawn.height())));
    QCOMPARE(image.pixel(inside), QRgb(0xFF000000));
    // The next one is a pattern further on, and beyond the line's end is none.
    const QRect next = inkedRect(image.copy(72, 0, 18, 100)).translated(72, 0);
    QVERIFY(close(next.left(), drawn.left() + 40) && close(next.top(), drawn.top()));
    // On a line that goes up the shape is turned with it.
    Picture upright;
    const ZvDbObjectId id = addLine(upright, addType(upright, kUsualFile, number));
    change<ZvDbLine>(id, [](ZvDbLine &line) {
        line.setStartPoint(ZvGePoint3d(50.5, 10.5, 0));
        line.setEndPoint(ZvGePoint3d(50.5, 90.5, 0));
    });
    const QRect turned = inkedRect(upright.draw().copy(0, 50, 100, 18));
    QVERIFY(close(turned.width(), drawn.height()) && close(turned.height(), drawn.width()));
}

void UtilsShapesTest::theFileComesBeforeTheUsualShape()
{
    const QTemporaryDir folder;
    write(folder.filePath(QLatin1String(kUsualFile)), shapesFile({{133, body("MINE", codes({0x14, 0}))}}));
    const SupportFolder settings(folder.path());
    Picture picture;
    addLine(picture, addType(picture, kUsualFile, 133, 10.0));
    const QRect ink = inkedRect(picture.draw().copy(30, 0, 3, 100));
    QVERIFY(std::abs(ink.height() - 11) <= 1); // a stroke that stands on the line's end
    QVERIFY(!inGap(picture.draw()).isValid() || inGap(picture.draw()).width() <= 1);
    // What the file lacks is left out: it is another file of the same name.
    Picture without;
    addLine(without, addType(without, kUsualFile, 132));
    QVERIFY(!inkedRect(without.draw().copy(34, 0, 14, 100)).isValid());
}

void UtilsShapesTest::aChangedFileIsReadAnew()
{
    const QTemporaryDir folder;
    const SupportFolder settings(folder.path());
    Picture picture;
    addLine(picture, addType(picture, "my.shx", 1, 5.0));
    ZvGiRenderer renderer(picture.database);
    QVERIFY(!inkedRect(picture.draw(renderer).copy(34, 0, 14, 100)).isValid());
    write(folder.filePath(QStringLiteral("my.shx")), shapesFile({{1, body("A", codes({0x20, 0}))}}));
    QVERIFY(inkedRect(picture.draw(renderer).copy(34, 0, 14, 100)).isValid());
    write(folder.filePath(QStringLiteral("my.shx")), shapesFile({{1, body("A", codes({0x20, 0x24, 0}))}}));
    QVERIFY(inkedRect(picture.draw(renderer).copy(34, 0, 14, 100)).height() >= 9);
    QVERIFY(QFile::remove(folder.filePath(QStringLiteral("my.shx"))));
    QVERIFY(!inkedRect(picture.draw(renderer).copy(34, 0, 14, 100)).isValid());
}

void UtilsShapesTest::keptPicturesFollowTheFile()
{
    const QTemporaryDir folder;
    const SupportFolder settings(folder.path());
    Picture picture;
    const auto line = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
    line->setEndPoint(ZvGePoint3d(100, 0, 0));
    line->setLinetype(addType(picture, "my.shx", 1, 5.0), true);
    ZvArrayEx<ZvSmartPtr<ZvDbEntity>> entities;
    entities.append(line);
    const auto drawn = [&] {
        const std::uint64_t before = zvsiutEntityImagesDrawn();
        zvsiutCreateEntityImage(picture.database, entities, nullptr);
        return zvsiutEntityImagesDrawn() - before;
    };
    QCOMPARE(drawn(), std::uint64_t(1));
    QCOMPARE(drawn(), std::uint64_t(0));
    write(folder.filePath(QStringLiteral("my.shx")), shapesFile({{1, body("A", codes({0x20, 0}))}}));
    QCOMPARE(drawn(), std::uint64_t(1));
    QCOMPARE(drawn(), std::uint64_t(0));
}

void UtilsShapesTest::unknownShapesLeaveTheirGap()
{
    Picture picture;
    addLine(picture, addType(picture, "other.shx", 132));
    const QImage image = picture.draw();
    QVERIFY(!inkedRect(image.copy(33, 0, 16, 100)).isValid());
    QCOMPARE(inkedRect(image).height(), 1);
}

void UtilsShapesTest::shapesHaveTheLooksOfTheirLine()
{
    Picture picture;
    picture.options.lineWeights = true;
    picture.options.pixelsPerMillimetre = 1.0;
    const ZvDbObjectId id = addLine(picture, addType(picture, kUsualFile, 132));
    change<ZvDbLine>(id, [](ZvDbLine &line) {
        line.setColor(Picture::aci(1));
        line.setLineWeight(ZvDb::kLnWt200);
    });
    const QImage image = picture.draw();
    QCOMPARE(image.pixel(36, 44), QRgb(0xFFFF0000));
    QVERIFY(inGap(image).height() >= 12); // the square's, and a pixel more
    change<ZvDbLine>(id, [](ZvDbLine &line) { line.setVisibility(ZvDb::kInvisible); });
    QCOMPARE(inked(picture.draw()), 0);
}

QTEST_MAIN(UtilsShapesTest)
#include "tst_utils_shapes.moc"
