// SPDX-License-Identifier: MIT
#include "picture.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

// What only a file can say: hatches, viewports, images, point figures; and the collected drawings.

class UtilsFileDrawingTest : public QObject
{
    Q_OBJECT

private slots:
    void hatchLinesStayInsideTheirLoops();
    void islandsStayEmpty();
    void hatchesTooFineAreTinted();
    void solidHatchesFill();
    void viewportsShowTheModelInTheirFrame();
    void aViewportHidesTheLayersItFreezes();
    void drawingStopsInsideAViewportWhenTold();
    void imagesStandUprightAndAreClipped();
    void missingImagesAreFrames();
    void verticesAreAsWideAsTheirPolyline();
    void pointsHaveTheFigureOfTheDrawing_data();
    void pointsHaveTheFigureOfTheDrawing();
    void collectedDrawingsShowSomething_data();
    void collectedDrawingsShowSomething();

private:
    static bool read(Picture &picture, const QByteArray &dxf)
    {
        picture.database = ZvDbDatabase::create();
        ZvDbFileReport report;
        const bool done = picture.database->readStream(dxf.constData(), std::size_t(dxf.size()), report) == Zv::eOk;
        if (!done)
            qWarning("%s", report.message.toStdString().c_str());
        return done;
    }
    static QByteArray entities(const QByteArray &tags)
    {
        return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n" + tags
            + "0\nENDSEC\n0\nEOF\n";
    }
    static QByteArray square(double low, double high)
    {
        const QByteArray a = QByteArray::number(low);
        const QByteArray b = QByteArray::number(high);
        return "92\n3\n72\n0\n73\n1\n93\n4\n10\n" + a + "\n20\n" + a + "\n10\n" + b + "\n20\n" + a + "\n10\n" + b
            + "\n20\n" + b + "\n10\n" + a + "\n20\n" + b + "\n97\n0\n";
    }
    /// A hatch of level lines, \a spacing apart, in these loops.
    static QByteArray hatch(const QByteArray &loops, int count, double spacing, bool solid = false)
    {
        return "0\nHATCH\n100\nAcDbEntity\n8\n0\n62\n1\n100\nAcDbHatch\n10\n0\n20\n0\n30\n0\n210\n0\n220\n0\n230\n1\n2"
               "\nLINE\n70\n"
            + QByteArray::number(solid ? 1 : 0) + "\n71\n0\n91\n" + QByteArray::number(count) + "\n" + loops
            + "75\n0\n76\n1\n"
            + (solid ? QByteArray()
                     : "52\n0\n41\n1\n77\n0\n78\n1\n53\n0\n43\n0\n44\n0.5\n45\n0\n46\n" + QByteArray::number(spacing)
                       + "\n79\n0\n")
            + "98\n0\n";
    }
};

void UtilsFileDrawingTest::hatchLinesStayInsideTheirLoops()
{
    Picture picture;
    QVERIFY(read(picture, entities(hatch(square(20, 80), 1, 10))));
    const QImage image = picture.draw();
    const QRect rect = inkedRect(image);
    QVERIFY(rect.left() >= 19 && rect.right() <= 80 && rect.top() >= 19 && rect.bottom() <= 80);
    int lines = 0;
    for (int y = 0; y < 100; ++y) {
        const bool isLine = image.pixel(50, y) != 0xFF000000;
        lines += isLine;
        // A line is in every tenth row, from the base at half a unit up, and as long as the square is wide.
        QCOMPARE(isLine, y > 19 && y < 80 && (99 - y) % 10 == 0);
        if (isLine) {
            QCOMPARE(image.pixel(21, y), qRgb(255, 0, 0));
            QCOMPARE(image.pixel(78, y), qRgb(255, 0, 0));
        }
    }
    QCOMPARE(lines, 6);
}

void UtilsFileDrawingTest::islandsStayEmpty()
{
    Picture picture;
    QVERIFY(read(picture, entities(hatch(square(10, 90) + square(40, 60), 2, 10))));
    const QImage image = picture.draw();
    for (int y = 41; y < 59; ++y) {
        for (int x = 41; x < 59; ++x)
            QCOMPARE(image.pixel(x, y), QRgb(0xFF000000));
    }
    QCOMPARE(image.pixel(20, 49), qRgb(255, 0, 0)); // left of the island, in a row that crosses it
    QCOMPARE(image.pixel(80, 49), qRgb(255, 0, 0));
}

void UtilsFileDrawingTest::hatchesTooFineAreTinted()
{
    Picture picture;
    QVERIFY(read(picture, entities(hatch(square(20, 80), 1, 0.001))));
    QRgb tint = picture.draw().pixel(50, 50);
    QVERIFY(qRed(tint) > 40);
    QCOMPARE(qGreen(tint), 0);
    QCOMPARE(inkedRect(picture.draw()), QRect(20, 20, 60, 60));
    // Far too many to count are no trouble.
    QVERIFY(read(picture, entities(hatch(square(-1e6, 1e6), 1, 1e-6))));
    tint = picture.draw().pixel(50, 50);
    QVERIFY(qRed(tint) > 40);
}

void UtilsFileDrawingTest::solidHatchesFill()
{
    Picture picture;
    QVERIFY(read(picture, entities(hatch(square(20, 80) + square(40, 60), 2, 0, true))));
    const QImage image = picture.draw();
    QCOMPARE(inkedRect(image), QRect(20, 20, 60, 60));
    QCOMPARE(image.pixel(30, 30), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(50, 50), QRgb(0xFF000000));
}

namespace {

/// Two lines in model space, the upper on a layer of its own, and a viewport on the paper that shows them at half size.
QByteArray viewportDrawing(const QByteArray &extra)
{
    return "0\nSECTION\n2\nHEADER\n9\n$"
           "ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nTABLES\n0\nTABLE\n2\nLAYER\n70\n1\n0\nLAYER\n5\nF1\n"
           "100\nAcDbSymbolTableRecord\n100\nAcDbLayerTableRecord\n2\nupper\n70\n0\n62\n3\n6\nCONTINUOUS\n0\nENDTAB\n0"
           "\nENDSEC\n"
           "0\nSECTION\n2\nENTITIES\n"
           "0\nLINE\n8\n0\n62\n1\n10\n-1000\n20\n1.0\n30\n0\n11\n1000\n21\n1.0\n31\n0\n"
           "0\nLINE\n8\nupper\n10\n-1000\n20\n21.0\n30\n0\n11\n1000\n21\n21.0\n31\n0\n"
           "0\nVIEWPORT\n5\nF0\n100\nAcDbEntity\n67\n1\n8\n0\n62\n5\n100\nAcDbViewport\n10\n50\n20\n50\n30\n0\n40\n40\n"
           "41\n30\n68\n2\n69\n2\n"
           "12\n0\n22\n0\n16\n0\n26\n0\n36\n1\n17\n0\n27\n0\n37\n0\n45\n60\n51\n0\n"
        + extra + "0\nENDSEC\n0\nEOF\n";
}

QImage drawPaper(Picture &picture)
{
    ZvGiRenderer renderer(picture.database);
    QImage image(100, 100, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    renderer.draw(painter, picture.options, picture.database->paperSpaceId(), picture.view, 100, 100);
    return image;
}

} // namespace

void UtilsFileDrawingTest::viewportsShowTheModelInTheirFrame()
{
    Picture picture;
    QVERIFY(read(picture, viewportDrawing(QByteArray())));
    const QImage image = drawPaper(picture);
    // The frame: 40 by 30 around the middle.
    const QRect rect = inkedRect(image);
    QVERIFY(std::abs(rect.left() - 30) <= 1 && std::abs(rect.right() - 70) <= 1);
    QVERIFY(std::abs(rect.top() - 35) <= 1 && std::abs(rect.bottom() - 65) <= 1);
    // Half a unit above the middle the red line, ten above that the green one; endless both, and cut by the frame.
    QCOMPARE(image.pixel(50, 49), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(50, 39), qRgb(0, 255, 0));
    QCOMPARE(image.pixel(33, 49), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(20, 49), QRgb(0xFF000000));
}

void UtilsFileDrawingTest::aViewportHidesTheLayersItFreezes()
{
    Picture picture;
    QVERIFY(read(picture, viewportDrawing("331\nF1\n")));
    const QImage image = drawPaper(picture);
    QCOMPARE(image.pixel(50, 49), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(50, 39), QRgb(0xFF000000));
    // In model space itself the layer is there.
    picture.view.center = ZvGePoint2d(0, 0);
    QVERIFY(inkedRect(picture.draw()).height() > 5);
}

void UtilsFileDrawingTest::drawingStopsInsideAViewportWhenTold()
{
    QByteArray dxf = viewportDrawing(QByteArray());
    QByteArray lines;
    for (int i = 0; i < 1000; ++i)
        lines += "0\nLINE\n8\n0\n10\n0\n20\n" + QByteArray::number(i % 20) + "\n30\n0\n11\n9\n21\n"
            + QByteArray::number(i % 20) + "\n31\n0\n";
    dxf.replace("0\nSECTION\n2\nENTITIES\n", "0\nSECTION\n2\nENTITIES\n" + lines);
    Picture picture;
    QVERIFY(read(picture, dxf));
    ZvGiRenderer renderer(picture.database);
    QImage image(100, 100, QImage::Format_RGB32);
    QPainter painter(&image);
    const ZvDbObjectId paper = picture.database->paperSpaceId();
    int asked = 0;
    QVERIFY(!renderer.draw(painter, picture.options, paper, picture.view, 100, 100, [&] { return ++asked < 3; }));
    QCOMPARE(asked, 3);
    QVERIFY(renderer.draw(painter, picture.options, paper, picture.view, 100, 100, [] { return true; }));
    QCOMPARE(picture.database->openObjectCount(), 0);
}

namespace {

QByteArray imageDrawing(const QByteArray &path, const QByteArray &clip)
{
    return "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n"
           "0\nIMAGE\n5\nE0\n100\nAcDbEntity\n8\n0\n100\nAcDbRasterImage\n90\n0\n10\n20\n20\n20\n30\n0\n11\n6\n21\n0\n3"
           "1\n0\n12\n0\n22\n6\n"
           "32\n0\n13\n10\n23\n10\n340\nE1\n70\n7\n"
        + clip
        + "0\nENDSEC\n0\nSECTION\n2\nOBJECTS\n0\nDICTIONARY\n5\nC\n330\n0\n100\nAcDbDictionary\n"
          "0\nIMAGEDEF\n5\nE1\n330\n0\n100\nAcDbRasterImageDef\n90\n0\n1\n"
        + path + "\n10\n10\n20\n10\n11\n1\n21\n1\n280\n1\n0\nENDSEC\n0\nEOF\n";
}

} // namespace

void UtilsFileDrawingTest::imagesStandUprightAndAreClipped()
{
    QTemporaryDir folder;
    QImage source(10, 10, QImage::Format_RGB32);
    source.fill(Qt::blue);
    for (int y = 0; y < 5; ++y) {
        for (int x = 0; x < 5; ++x)
            source.setPixel(x, y, qRgb(255, 0, 0)); // the upper left quarter
    }
    const QString path = folder.filePath("picture.png");
    QVERIFY(source.save(path));
    Picture picture;
    QVERIFY(read(picture, imageDrawing(path.toUtf8(), "280\n0\n")));
    QImage image = picture.draw();
    QCOMPARE(inkedRect(image), QRect(20, 20, 60, 60));
    QCOMPARE(image.pixel(30, 30), qRgb(255, 0, 0));
    QCOMPARE(image.pixel(70, 30), qRgb(0, 0, 255));
    QCOMPARE(image.pixel(30, 70), qRgb(0, 0, 255));
    // Clipped to its upper half; the file counts from the middle of the first pixel.
    QVERIFY(read(picture, imageDrawing(path.toUtf8(), "280\n1\n71\n1\n91\n2\n14\n-0.5\n24\n-0.5\n14\n9.5\n24\n4.5\n")));
    image = picture.draw();
    QCOMPARE(inkedRect(image), QRect(20, 20, 60, 30));
    QCOMPARE(image.pixel(30, 30), qRgb(255, 0, 0));
}

void UtilsFileDrawingTest::missingImagesAreFrames()
{
    Picture picture;
    QVERIFY(read(picture, imageDrawing("/no/such/picture.png", "280\n0\n")));
    const QImage image = picture.draw();
    const QRect rect = inkedRect(image);
    QVERIFY(std::abs(rect.left() - 20) <= 1 && std::abs(rect.right() - 80) <= 1);
    QCOMPARE(image.pixel(30, 50), QRgb(0xFF000000)); // between frame and diagonals
}

void UtilsFileDrawingTest::verticesAreAsWideAsTheirPolyline()
{
    const QByteArray start = "0\nPOLYLINE\n8\n0\n66\n1\n10\n0\n20\n0\n30\n0\n40\n10\n41\n10\n";
    const QByteArray first = "0\nVERTEX\n8\n0\n10\n20\n20\n50\n30\n0\n";
    const QByteArray last = "0\nVERTEX\n8\n0\n10\n80\n20\n50\n30\n0\n0\nSEQEND\n8\n0\n";
    Picture picture;
    QVERIFY(read(picture, "0\nSECTION\n2\nENTITIES\n" + start + first + last + "0\nENDSEC\n0\nEOF\n"));
    QCOMPARE(inkedRect(picture.draw()), QRect(20, 45, 60, 10));
    // One that says so itself is not.
    QVERIFY(
        read(picture, "0\nSECTION\n2\nENTITIES\n" + start + first + "40\n4\n41\n4\n" + last + "0\nENDSEC\n0\nEOF\n"));
    QCOMPARE(inkedRect(picture.draw()), QRect(20, 48, 60, 4));
}

void UtilsFileDrawingTest::pointsHaveTheFigureOfTheDrawing_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("width"); // of what is drawn, where the size is 20 units
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("hasMiddle");
    QTest::newRow("dot") << 0 << 1 << 1 << true;
    QTest::newRow("nothing") << 1 << 0 << 0 << false;
    QTest::newRow("plus") << 2 << 40 << 40 << true;
    QTest::newRow("cross") << 3 << 40 << 40 << true;
    QTest::newRow("tick") << 4 << 1 << 10 << true;
    QTest::newRow("circle") << 33 << 20 << 20 << false;
    QTest::newRow("square") << 65 << 20 << 20 << false;
    QTest::newRow("square around a circle around a plus") << 98 << 40 << 40 << true;
}

void UtilsFileDrawingTest::pointsHaveTheFigureOfTheDrawing()
{
    QFETCH(int, mode);
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, hasMiddle);
    Picture picture;
    QVERIFY(read(picture,
                 "0\nSECTION\n2\nHEADER\n9\n$ACADVER\n1\nAC1015\n9\n$PDMODE\n70\n" + QByteArray::number(mode)
                     + "\n9\n$PDSIZE\n40\n20\n0\nENDSEC\n0\nSECTION\n2\nENTITIES\n0\nPOINT\n8\n0\n10\n50.5\n20\n50."
                       "5\n30\n0\n0\nENDSEC\n0\nEOF\n"));
    const QImage image = picture.draw();
    const QRect rect = inkedRect(image);
    QVERIFY2(std::abs(rect.width() - width) <= 2 && std::abs(rect.height() - height) <= 2,
             qPrintable(QStringLiteral("%1 by %2").arg(rect.width()).arg(rect.height())));
    if (mode != 4)
        QCOMPARE(image.pixel(50, 49) != 0xFF000000 || image.pixel(51, 49) != 0xFF000000, hasMiddle);
}

void UtilsFileDrawingTest::collectedDrawingsShowSomething_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &folderName : {QStringLiteral(ZEVA_SAMPLES_DIR), QStringLiteral(ZEVA_DRAWINGS_DIR "/dxf")}) {
        const QDir folder(folderName);
        for (const QString &file : folder.entryList({"*.dxf"}, QDir::Files))
            QTest::newRow(qPrintable(file)) << folder.filePath(file);
    }
}

void UtilsFileDrawingTest::collectedDrawingsShowSomething()
{
    QFETCH(QString, path);
    Picture picture;
    ZvDbFileReport report;
    picture.database = ZvDbDatabase::create();
    QCOMPARE(picture.database->readFile(path.toUtf8().constData(), report), Zv::eOk);
    if (picture.database->entityCount() == 0)
        QSKIP("nothing in the space at hand");
    ZvGiRenderer renderer(picture.database);
    const ZvDbObjectId space = picture.database->currentSpaceId();
    const ZvGeExtents2d extents = renderer.displayExtents(space, ZvGiView());
    QVERIFY(!extents.isEmpty());
    picture.view.center
        = ZvGePoint2d((extents.minimum.x + extents.maximum.x) / 2, (extents.minimum.y + extents.maximum.y) / 2);
    picture.view.height = 1.05 * std::max(extents.maximum.y - extents.minimum.y, extents.maximum.x - extents.minimum.x);
    QImage image(400, 400, QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    QVERIFY(renderer.draw(painter, picture.options, space, picture.view, 400, 400));
    painter.end();
    QVERIFY(inked(image) > 50);
    QCOMPARE(picture.database->openObjectCount(), 0);
    QVERIFY(!picture.database->isModified());
}

QTEST_MAIN(UtilsFileDrawingTest)
#include "tst_utils_filedrawing.moc"
