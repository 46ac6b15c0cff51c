// SPDX-License-Identifier: MIT
#include "picture.h"

#include "utils/zventityimage.h"

#include <QTest>
#include <QtMath>

#include <cmath>

// What the lists of line types and the image widget ask of the renderer.

class UtilsEntityImageTest : public QObject
{
    Q_OBJECT

private slots:
    void aRasterIsRedFirstAndTopFirst();
    void sizesOutOfRangeGiveNull_data();
    void sizesOutOfRangeGiveNull();
    void withoutOptionsItIsAHundredSquareAndWhite();
    void nothingToDrawGivesTheBackground_data();
    void nothingToDrawGivesTheBackground();
    void entitiesAreFittedToThePicture();
    void optionsStayAsTheyAre();
    void anUnboundLineShowsItsPattern();
    void theScaleForNewEntitiesCounts();
    void theDrawingsOwnScaleDoesNotCountForUnboundLines();
    void recordsMayBeOpenForRead();
    void patternTextsAreDrawn_data();
    void patternTextsAreDrawn();
    void dashesAreAsLongInEveryDirection_data();
    void dashesAreAsLongInEveryDirection();
    void patternTextsFollowTheLine_data();
    void patternTextsFollowTheLine();
    void shapesOfNoFileLeaveTheirPlaceEmpty();
    void picturesOfLinesAreKept();
    void anInvisibleLineHasNoKeptPicture_data();
    void anInvisibleLineHasNoKeptPicture();
    void anEditDropsThePictureOfItsLineTypeAlone();
    void aRecordInWorkIsReadWhenItIsClosed();
    void theTextStyleOfAPatternCounts();
    void keptPicturesHaveABound();
    void thePaletteFollowsTheBackground();
    void everyLayerOfAPictureIsOpaque();

private:
    typedef ZvSmartPtr<ZvDbEntity> EntityPtr;
    typedef ZvArrayEx<EntityPtr> Entities;

    static ZvJsonPtr makeOptions(int width, int height, int background = -1)
    {
        const ZvJsonPtr options = ElementValue::createObject(2);
        options->SetDataI("width", width);
        options->SetDataI("height", height);
        options->SetDataI("background", background);
        return options;
    }
    /// The line as the lists of line types make it, black and opaque.
    static ZvSmartPtr<ZvDbLine> makeLine(ZvDbObjectId linetype, double scale)
    {
        auto line = ZvSmartPtr<ZvDbLine>::adopt(new ZvRxObjectImpl<ZvDbLine, ZvDbLine>());
        line->setLinetype(linetype, true);
        line->setStartPoint(ZvGePoint3d(10, 10, 0));
        line->setEndPoint(ZvGePoint3d(100, 10, 0));
        line->setLinetypeScale(scale, true);
        ZvCmColor black;
        black.setRGB(0, 0, 0);
        line->setColor(black);
        ZvCmTransparency opaque;
        opaque.setMethod(2);
        opaque.setAlphaPercent(1.0);
        line->setTransparency(opaque, true);
        return line;
    }
    static Entities listOf(const EntityPtr &entity)
    {
        Entities entities;
        entities.append(entity);
        return entities;
    }
    static QImage toImage(const ZvGiRasterImagePtr &raster)
    {
        return QImage(raster->scanLines(), int(raster->pixelWidth()), int(raster->pixelHeight()),
                      int(raster->scanLineSize()), QImage::Format_RGBA8888)
            .convertToFormat(QImage::Format_RGB32);
    }
    /// Lengths of the dark and light runs along the row that the line is in; light ones below 0.
    static std::vector<int> darkRuns(const QImage &image, int y)
    {
        std::vector<int> lengths;
        for (int x = 0; x < image.width(); ++x) {
            const bool isDark = qGray(image.pixel(x, y)) < 128;
            if (lengths.empty() || (lengths.back() > 0) != isDark)
                lengths.push_back(0);
            lengths.back() += isDark ? 1 : -1;
        }
        return lengths;
    }
};

void UtilsEntityImageTest::aRasterIsRedFirstAndTopFirst()
{
    Picture picture;
    auto solid = EntityPtr::adopt(new ZvRxObjectImpl<ZvDbSolid, ZvDbSolid>());
    // The upper half of what is fitted is red, the lower blue.
    auto *upper = static_cast<ZvDbSolid *>(solid.get());
    upper->setPointAt(0, ZvGePoint3d(0, 5, 0));
    upper->setPointAt(1, ZvGePoint3d(10, 5, 0));
    upper->setPointAt(2, ZvGePoint3d(0, 10, 0));
    upper->setPointAt(3, ZvGePoint3d(10, 10, 0));
    ZvCmColor color;
    color.setRGB(200, 10, 20);
    upper->setColor(color);
    auto lowerSolid = EntityPtr::adopt(new ZvRxObjectImpl<ZvDbSolid, ZvDbSolid>());
    auto *lower = static_cast<ZvDbSolid *>(lowerSolid.get());
    lower->setPointAt(0, ZvGePoint3d(0, 0, 0));
    lower->setPointAt(1, ZvGePoint3d(10, 0, 0));
    lower->setPointAt(2, ZvGePoint3d(0, 5, 0));
    lower->setPointAt(3, ZvGePoint3d(10, 5, 0));
    color.setRGB(1, 2, 250);
    lower->setColor(color);
    Entities entities = listOf(solid);
    entities.append(lowerSolid);
    const ZvGiRasterImagePtr raster = zvsiutCreateEntityImage(picture.database, entities, makeOptions(40, 40));
    QVERIFY(raster);
    const ZvGiRasterImage::tagPixelFormatInfo format = raster->pixelFormat();
    QCOMPARE(int(format.bitsPerPixel), 32);
    QCOMPARE(int(format.redOffset), 0);
    QCOMPARE(int(format.alphaOffset), 24);
    const std::uint8_t *top = raster->scanLines() + 10 * raster->scanLineSize() + 20 * 4;
    QCOMPARE(int(top[0]), 200);
    QCOMPARE(int(top[1]), 10);
    QCOMPARE(int(top[2]), 20);
    QCOMPARE(int(top[3]), 255);
    const std::uint8_t *bottom = raster->scanLines() + 30 * raster->scanLineSize() + 20 * 4;
    QCOMPARE(int(bottom[2]), 250);
}

void UtilsEntityImageTest::sizesOutOfRangeGiveNull_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("height");
    QTest::addColumn<bool>("isNull");
    QTest::newRow("1 by 1") << 1 << 1 << false;
    QTest::newRow("no width") << 0 << 10 << true;
    QTest::newRow("no height") << 10 << 0 << true;
    QTest::newRow("below") << -1 << 10 << true;
    QTest::newRow("largest") << 16384 << 1 << false;
    QTest::newRow("too large") << 16385 << 1 << true;
}

void UtilsEntityImageTest::sizesOutOfRangeGiveNull()
{
    QFETCH(int, width);
    QFETCH(int, height);
    QFETCH(bool, isNull);
    Picture picture;
    Entities entities = listOf(makeLine(picture.database->continuousLinetype(), 1.0));
    QCOMPARE(zvsiutCreateEntityImage(picture.database, entities, makeOptions(width, height)).isNull(), isNull);
}

void UtilsEntityImageTest::withoutOptionsItIsAHundredSquareAndWhite()
{
    Picture picture;
    Entities none;
    const ZvGiRasterImagePtr raster = zvsiutCreateEntityImage(picture.database, none, nullptr);
    QVERIFY(raster);
    QCOMPARE(raster->pixelWidth(), 100u);
    QCOMPARE(raster->pixelHeight(), 100u);
    QCOMPARE(inked(toImage(raster), 0xFFFFFFFF), 0);
}

void UtilsEntityImageTest::nothingToDrawGivesTheBackground_data()
{
    QTest::addColumn<int>("background");
    QTest::addColumn<unsigned>("shown");
    QTest::newRow("-1 is white") << -1 << 0xFFFFFFFFu;
    QTest::newRow("black") << int(0xFF000000) << 0xFF000000u;
    QTest::newRow("red is in the lowest bits") << int(0xFF3264C8) << 0xFFC86432u;
}

void UtilsEntityImageTest::nothingToDrawGivesTheBackground()
{
    QFETCH(int, background);
    QFETCH(unsigned, shown);
    Entities none;
    Entities nulls = listOf(nullptr);
    for (Entities *entities : {&none, &nulls}) {
        const ZvGiRasterImagePtr raster = zvsiutCreateEntityImage(nullptr, *entities, makeOptions(8, 8, background));
        QVERIFY(raster);
        QCOMPARE(inked(toImage(raster), shown), 0);
    }
    Picture picture;
    QCOMPARE(inked(toImage(zvsiutCreateEntityImage(picture.database, nulls, makeOptions(8, 8, background))), shown), 0);
}

void UtilsEntityImageTest::entitiesAreFittedToThePicture()
{
    Picture picture;
    const ZvDbObjectId id = picture.addSolid({{1000, 1000, 0}, {1400, 1000, 0}, {1400, 1200, 0}, {1000, 1200, 0}}, 1);
    ZvDbObjectPointer<ZvDbEntity> solid(id, ZvDb::kForRead);
    Entities entities = listOf(EntityPtr(solid.get()));
    const QRect rect
        = inkedRect(toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(200, 200))), 0xFFFFFFFF);
    QVERIFY(rect.width() >= 170 && rect.width() <= 200);
    QVERIFY(std::abs(rect.height() * 2 - rect.width()) <= 2); // the shape stays
    QVERIFY(std::abs(rect.center().x() - 100) <= 1 && std::abs(rect.center().y() - 100) <= 1);
}

void UtilsEntityImageTest::optionsStayAsTheyAre()
{
    Picture picture;
    Entities entities = listOf(makeLine(picture.database->continuousLinetype(), 1.0));
    const ZvJsonPtr options = makeOptions(20, 10);
    options->SetDataI("padding_size", 5);
    QVERIFY(zvsiutCreateEntityImage(picture.database, entities, options));
    QCOMPARE(options->elementCount(), 4);
    int size = 0;
    QVERIFY(options->GetDataI("padding_size", size));
    QCOMPARE(size, 5);
}

void UtilsEntityImageTest::anUnboundLineShowsItsPattern()
{
    Picture picture;
    // Two dashes of a quarter and two gaps of a quarter of the line.
    const ZvDbObjectId type = picture.addLinetype("half", std::vector<double>{22.5, -22.5});
    Entities entities = listOf(makeLine(type, 1.0));
    const QImage image = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(100, 15)));
    const QRect rect = inkedRect(image, 0xFFFFFFFF);
    QCOMPARE(rect.height(), 1); // sharp, in the middle row
    QCOMPARE(rect.top(), 7);
    const std::vector<int> row = darkRuns(image, 7);
    QCOMPARE(row.size(), std::size_t(5)); // margin, dash, gap, dash, gap with the margin
    QVERIFY(std::abs(row[1] + row[2]) <= 1 && std::abs(row[1] - row[3]) <= 1);
    QVERIFY(row[1] >= 20);
    // In a picture of even height too.
    const QImage even = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(100, 14)));
    QCOMPARE(inkedRect(even, 0xFFFFFFFF).height(), 1);
}

void UtilsEntityImageTest::theScaleForNewEntitiesCounts()
{
    // The lists divide by it, so that the picture is the same whatever it is.
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("dashed", std::vector<double>{10.0, -5.0});
    Entities before = listOf(makeLine(type, 2.0));
    const QImage first = toImage(zvsiutCreateEntityImage(picture.database, before, makeOptions(96, 14)));
    picture.database->setCeltscale(2.0);
    Entities after = listOf(makeLine(type, 1.0));
    QCOMPARE(toImage(zvsiutCreateEntityImage(picture.database, after, makeOptions(96, 14))), first);
    QVERIFY(toImage(zvsiutCreateEntityImage(picture.database, before, makeOptions(96, 14))) != first);
}

void UtilsEntityImageTest::theDrawingsOwnScaleDoesNotCountForUnboundLines()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("dashed", std::vector<double>{10.0, -5.0});
    Entities entities = listOf(makeLine(type, 1.0));
    const QImage first = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(96, 14)));
    picture.database->setLtscale(50.0);
    Entities again = listOf(makeLine(type, 1.0001)); // another one: no kept picture
    const std::vector<int> runsBefore = darkRuns(first, inkedRect(first, 0xFFFFFFFF).top());
    const QImage second = toImage(zvsiutCreateEntityImage(picture.database, again, makeOptions(96, 14)));
    QCOMPARE(darkRuns(second, inkedRect(second, 0xFFFFFFFF).top()).size(), runsBefore.size());
}

void UtilsEntityImageTest::recordsMayBeOpenForRead()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("dashed", std::vector<double>{22.5, -22.5});
    ZvDbLinetypeTableRecord *record = nullptr;
    QCOMPARE(zvdbOpenObject(record, type, ZvDb::kForRead), Zv::eOk);
    Entities entities = listOf(makeLine(type, 1.0));
    const QImage image = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(100, 15)));
    QVERIFY(darkRuns(image, 7).size() > 3); // the pattern is there
    record->close();
    QCOMPARE(picture.database->openObjectCount(), 0);
}

void UtilsEntityImageTest::patternTextsAreDrawn_data()
{
    QTest::addColumn<double>("second"); // element of the pattern, which carries the text
    QTest::addColumn<double>("height");
    QTest::addColumn<double>("rotation");
    QTest::addColumn<double>("offsetY");
    QTest::addColumn<int>("place"); // of the ink beside the line: 0 none, 1 above, 2 below, 3 on both sides
    QTest::newRow("above the line") << -10.0 << 6.0 << 0.0 << 1.0 << 1;
    QTest::newRow("on the line") << -10.0 << 6.0 << 0.0 << -3.0 << 3;
    QTest::newRow("below the line") << -10.0 << 6.0 << 0.0 << -8.0 << 2;
    QTest::newRow("upside down around its own place") << -10.0 << 6.0 << 3.14159265358979 << -1.0 << 2;
    QTest::newRow("in a pattern without gaps") << 10.0 << 6.0 << 0.0 << 1.0 << 1;
    QTest::newRow("small, as in lists") << -10.0 << 2.8 << 0.0 << 1.0 << 1;
    QTest::newRow("too small to be seen") << -10.0 << 0.8 << 0.0 << 1.0 << 0;
}

void UtilsEntityImageTest::patternTextsAreDrawn()
{
    QFETCH(double, second);
    QFETCH(double, height);
    QFETCH(double, rotation);
    QFETCH(double, offsetY);
    QFETCH(int, place);
    Picture picture;
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
    dashes[0].length = 20.0;
    dashes[1].length = second;
    dashes[1].flags = 2;
    dashes[1].text = "HH";
    dashes[1].scale = height;
    dashes[1].rotation = rotation;
    dashes[1].offsetX = rotation == 0.0 ? -9.0 : 0.0;
    dashes[1].offsetY = offsetY;
    Entities entities = listOf(makeLine(picture.addLinetype("with text", dashes), 1.0));
    const QImage image = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(100, 41)));
    int above = 0;
    int below = 0;
    for (int x = 0; x < image.width(); ++x) {
        for (int y = 0; y < image.height(); ++y) {
            const bool isInk = qGray(image.pixel(x, y)) < 200;
            above += isInk && y < 20;
            below += isInk && y > 20;
        }
    }
    QCOMPARE((above > 0 ? 1 : 0) | (below > 0 ? 2 : 0), place);
}

void UtilsEntityImageTest::dashesAreAsLongInEveryDirection_data()
{
    QTest::addColumn<double>("lineAngle"); // degrees
    QTest::addColumn<int>("transparency"); // percent of opacity
    for (const int angle : {0, 10, 30, 45, 60, 80, 90, 135, 200, 300})
        QTest::addRow("%d degrees", angle) << double(angle) << 100;
    QTest::newRow("45 degrees, translucent") << 45.0 << 60;
}

void UtilsEntityImageTest::dashesAreAsLongInEveryDirection()
{
    QFETCH(double, lineAngle);
    QFETCH(int, transparency);
    constexpr int kSize = 300;
    constexpr double kLength = 100.0;
    Picture picture;
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
    dashes[0].length = 5.0;
    dashes[1].length = -5.0;
    const ZvSmartPtr<ZvDbLine> line = makeLine(picture.addLinetype("dashed", dashes), 1.0);
    const double along = qDegreesToRadians(lineAngle);
    line->setEndPoint(ZvGePoint3d(10 + kLength * std::cos(along), 10 + kLength * std::sin(along), 0));
    ZvCmTransparency transparent;
    transparent.setMethod(2);
    transparent.setAlphaPercent(transparency / 100.0);
    line->setTransparency(transparent, true);
    Entities entities = listOf(line);
    const QImage image = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(kSize, kSize)));
    const double unit = 0.9 * kSize / (kLength * std::max(std::abs(std::cos(along)), std::abs(std::sin(along))));
    const QPointF direction(std::cos(along), -std::sin(along));
    const QPointF start = QPointF(kSize / 2.0, kSize / 2.0) - direction * kLength / 2 * unit;
    for (double place = 2.5; place < kLength; place += 5.0) { // the middle of a dash and of a gap in turn
        const QPoint pixel = (start + direction * place * unit - QPointF(0.5, 0.5)).toPoint();
        int darkest = 255;
        for (int y = -1; y <= 1; ++y) {
            for (int x = -1; x <= 1; ++x)
                darkest = std::min(darkest, qGray(image.pixel(pixel + QPoint(x, y))));
        }
        const bool isDash = int(place / 5.0) % 2 == 0;
        QVERIFY2((darkest < 200) == isDash, qPrintable(QString::number(place)));
    }
}

void UtilsEntityImageTest::patternTextsFollowTheLine_data()
{
    QTest::addColumn<double>("lineAngle"); // degrees
    QTest::addColumn<bool>("absolute"); // the rotation counts from the X axis and not from the line
    QTest::addColumn<double>("rotation"); // degrees
    QTest::addColumn<double>("height");
    QTest::addColumn<QPointF>("offset");
    const auto row
        = [](const char *name, double lineAngle, bool absolute, double rotation, double height, QPointF offset) {
              QTest::newRow(name) << lineAngle << absolute << rotation << height << offset;
          };
    row("level", 0, false, 0, 20, {0, 0});
    row("level, turned", 0, false, 45, 20, {0, 0});
    row("slanted, with the line", 30, false, 0, 20, {0, 0});
    row("slanted, turned against the line", 30, false, 60, 20, {0, 0});
    row("slanted, upright", 30, true, 0, 20, {0, 0});
    row("slanted, turned from the X axis", 30, true, 45, 20, {0, 0});
    row("falling, with the line", -40, false, 0, 20, {0, 0});
    row("falling, upright", -40, true, 0, 20, {0, 0});
    row("plumb, with the line", 90, false, 0, 20, {0, 0});
    row("plumb, upright", 90, true, 0, 20, {0, 0});
    row("to the left, not upside down", 160, false, 0, 20, {0, 0});
    row("to the left, upright", 160, true, 0, 20, {0, 0});
    row("small", 30, false, 0, 10, {0, 0});
    row("moved along and across", 30, false, 0, 20, {-6, -10});
    row("moved along and across, upright", 30, true, 0, 20, {-6, -10});
    row("moved, to the left", 200, false, 0, 20, {-6, -10});
}

void UtilsEntityImageTest::patternTextsFollowTheLine()
{
    QFETCH(double, lineAngle);
    QFETCH(bool, absolute);
    QFETCH(double, rotation);
    QFETCH(double, height);
    QFETCH(QPointF, offset);
    constexpr int kSize = 300;
    constexpr double kLength = 100.0;
    constexpr double kPlace = 50.0; // of the text, from the line's start: the middle of the picture
    Picture picture;
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(3);
    dashes[0].length = 1.0;
    dashes[1].length = 1.0 - kPlace;
    dashes[1].flags = absolute ? 3 : 2;
    dashes[1].text = "I"; // one upright bar
    dashes[1].scale = height;
    dashes[1].rotation = qDegreesToRadians(rotation);
    dashes[1].offsetX = offset.x();
    dashes[1].offsetY = offset.y();
    dashes[2].length = -kLength;
    const ZvSmartPtr<ZvDbLine> line = makeLine(picture.addLinetype("with text", dashes), 1.0);
    const double along = qDegreesToRadians(lineAngle);
    line->setStartPoint(ZvGePoint3d(10, 10, 0));
    line->setEndPoint(ZvGePoint3d(10 + kLength * std::cos(along), 10 + kLength * std::sin(along), 0));
    Entities entities = listOf(line);
    const QImage image = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(kSize, kSize)));
    const double unit = 0.9 * kSize / (kLength * std::max(std::abs(std::cos(along)), std::abs(std::sin(along))));

    const QPointF direction(std::cos(along), -std::sin(along));
    const QPointF middle(kSize / 2.0, kSize / 2.0);
    QVector<QPointF> ink;
    QPointF centre;
    for (int y = 0; y < kSize; ++y) {
        for (int x = 0; x < kSize; ++x) {
            const QPointF point(x + 0.5, y + 0.5);
            const bool isDash = QPointF::dotProduct(point - middle, direction) < (3.0 - kPlace) * unit;
            if (isDash || qGray(image.pixel(x, y)) >= 128)
                continue;
            ink << point;
            centre += point;
        }
    }
    QVERIFY(!ink.isEmpty());
    centre /= ink.size();

    // Up the letter, as it has to stand; mirrored in a picture, where y runs down.
    const double angle = qDegreesToRadians(rotation) + (absolute ? 0.0 : along);
    const QPointF right(std::cos(angle), -std::sin(angle));
    const QPointF up(-std::sin(angle), -std::cos(angle));
    double least = 1e9;
    double most = -1e9;
    double widest = 0.0;
    for (const QPointF &point : qAsConst(ink)) {
        const double position = QPointF::dotProduct(point - centre, up);
        least = std::min(least, position);
        most = std::max(most, position);
        widest = std::max(widest, std::abs(QPointF::dotProduct(point - centre, right)));
    }
    QVERIFY2(std::abs(most - least - height * unit) < 3.0, qPrintable(QString::number(most - least)));
    QVERIFY2(widest < 0.15 * height * unit, qPrintable(QString::number(widest)));
    const QPointF across(-std::sin(along), -std::cos(along));
    const QPointF corner = middle + direction * offset.x() * unit + across * offset.y() * unit;
    const QPointF fromCorner = centre - corner;
    QVERIFY2(std::abs(QPointF::dotProduct(fromCorner, up) - height * unit / 2) < 2.0,
             qPrintable(QString::number(QPointF::dotProduct(fromCorner, up))));
    const double inside = QPointF::dotProduct(fromCorner, right) / (height * unit);
    QVERIFY2(inside > 0.05 && inside < 0.35, qPrintable(QString::number(inside)));
}

void UtilsEntityImageTest::shapesOfNoFileLeaveTheirPlaceEmpty()
{
    Picture picture;
    const auto imageWith = [&picture](const char *name, int flags) {
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(3);
        dashes[0].length = 10.0;
        dashes[1].length = -5.0;
        dashes[1].flags = flags;
        dashes[1].shapeNumber = flags != 0 ? 130 : 0;
        dashes[1].scale = 5.0;
        dashes[2].length = -5.0;
        Entities entities = listOf(makeLine(picture.addLinetype(name, dashes), 1.0));
        return toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(100, 41)));
    };
    QCOMPARE(imageWith("with a shape", 4), imageWith("without", 0));
}

void UtilsEntityImageTest::picturesOfLinesAreKept()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("kept", std::vector<double>{22.5, -22.5});
    const auto draw = [&](int width, double scale, int background = -1) {
        Entities entities = listOf(makeLine(type, scale));
        return zvsiutCreateEntityImage(picture.database, entities, makeOptions(width, 14, background));
    };
    const std::uint64_t before = zvsiutEntityImagesDrawn();
    const ZvGiRasterImagePtr first = draw(96, 1.0);
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(1));
    QCOMPARE(draw(96, 1.0).get(), first.get());
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(1));
    // Whatever decides the picture makes a new one.
    draw(97, 1.0);
    draw(96, 1.5);
    draw(96, 1.0, int(0xFF000000));
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(4));
    change<ZvDbLinetypeTableRecord>(type, [](ZvDbLinetypeTableRecord &record) {
        std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
        dashes[0].length = 5.0;
        dashes[1].length = -5.0;
        record.setDashes(dashes);
    });
    const ZvGiRasterImagePtr changed = draw(96, 1.0);
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(5));
    QVERIFY(toImage(changed) != toImage(first));
    // The same name in another drawing is another line type.
    Picture other;
    Entities entities = listOf(makeLine(other.addLinetype("kept", std::vector<double>{7.0, -7.0}), 1.0));
    zvsiutCreateEntityImage(other.database, entities, makeOptions(96, 14));
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(6));
    // Where it is drawn alike it has the same picture.
    entities = listOf(makeLine(other.addLinetype("alike", std::vector<double>{5.0, -5.0}), 1.0));
    QCOMPARE(zvsiutCreateEntityImage(other.database, entities, makeOptions(96, 14)).get(), changed.get());
}

void UtilsEntityImageTest::anInvisibleLineHasNoKeptPicture_data()
{
    QTest::addColumn<bool>("shownFirst");
    QTest::addColumn<int>("width");
    QTest::newRow("shown, then hidden") << true << 61;
    QTest::newRow("hidden, then shown") << false << 62;
}

void UtilsEntityImageTest::anInvisibleLineHasNoKeptPicture()
{
    QFETCH(bool, shownFirst);
    QFETCH(int, width);
    Picture picture;
    const auto isBlank = [&](bool shown) {
        const ZvSmartPtr<ZvDbLine> line = makeLine(picture.database->continuousLinetype(), 1.0);
        line->setVisibility(shown ? ZvDb::kVisible : ZvDb::kInvisible);
        Entities entities = listOf(line);
        const QImage image = toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(width, 15)));
        return darkRuns(image, 7) == std::vector<int>{-width};
    };
    for (const bool shown : {shownFirst, !shownFirst})
        QCOMPARE(isBlank(shown), !shown);
}

void UtilsEntityImageTest::anEditDropsThePictureOfItsLineTypeAlone()
{
    Picture picture;
    const ZvDbObjectId edited = picture.addLinetype("edited", std::vector<double>{11.0, -22.0});
    const ZvDbObjectId other = picture.addLinetype("other", std::vector<double>{33.0, -11.0});
    const auto draw = [&](ZvDbObjectId type) {
        Entities entities = listOf(makeLine(type, 1.0));
        return zvsiutCreateEntityImage(picture.database, entities, makeOptions(96, 14));
    };
    const auto setFirst = [&](double length) {
        change<ZvDbLinetypeTableRecord>(edited, [length](ZvDbLinetypeTableRecord &record) {
            std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
            dashes[0].length = length;
            dashes[1].length = -22.0;
            record.setDashes(dashes);
        });
    };
    const ZvGiRasterImagePtr first = draw(edited);
    draw(other);
    const std::uint64_t before = zvsiutEntityImagesDrawn();
    setFirst(15.0);
    draw(other);
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(0));
    draw(edited);
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(1));
    setFirst(11.0); // taken back
    QCOMPARE(draw(edited).get(), first.get());
    change<ZvDbLinetypeTableRecord>(edited, [](ZvDbLinetypeTableRecord &record) {
        record.setComments("says nothing of the picture");
        record.setName("renamed");
    });
    QCOMPARE(draw(edited).get(), first.get());
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(1));
}

void UtilsEntityImageTest::aRecordInWorkIsReadWhenItIsClosed()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("in work", std::vector<double>{21.5, -23.5});
    const auto draw = [&] {
        Entities entities = listOf(makeLine(type, 1.0));
        return toImage(zvsiutCreateEntityImage(picture.database, entities, makeOptions(95, 15)));
    };
    {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> held(type, ZvDb::kForWrite);
        QCOMPARE(darkRuns(draw(), 7).size(), std::size_t(3)); // a line, and what is beside it
    }
    QVERIFY(darkRuns(draw(), 7).size() > 3);
}

void UtilsEntityImageTest::theTextStyleOfAPatternCounts()
{
    Picture picture;
    std::vector<ZvDbLinetypeTableRecord::Dash> dashes(2);
    dashes[0].length = 20.0;
    dashes[1].length = -10.0;
    dashes[1].flags = 2;
    dashes[1].text = "HH";
    dashes[1].scale = 6.0;
    dashes[1].styleId = picture.database->textstyle();
    const ZvDbObjectId type = picture.addLinetype("with a style", dashes);
    const auto draw = [&] {
        Entities entities = listOf(makeLine(type, 1.0));
        return zvsiutCreateEntityImage(picture.database, entities, makeOptions(100, 43));
    };
    const ZvGiRasterImagePtr narrow = draw();
    QCOMPARE(draw().get(), narrow.get());
    change<ZvDbTextStyleTableRecord>(dashes[1].styleId, [](ZvDbTextStyleTableRecord &style) { style.setXScale(2.0); });
    const ZvGiRasterImagePtr wide = draw();
    QVERIFY(toImage(wide) != toImage(narrow));
    QVERIFY(picture.database->undo());
    QCOMPARE(draw().get(), narrow.get());
}

void UtilsEntityImageTest::keptPicturesHaveABound()
{
    Picture picture;
    const ZvDbObjectId type = picture.addLinetype("kept", std::vector<double>{22.5, -22.5});
    const auto draw = [&](int width, int height) {
        Entities entities = listOf(makeLine(type, 1.0));
        return zvsiutCreateEntityImage(picture.database, entities, makeOptions(width, height));
    };
    draw(50, 14);
    const ZvGiRasterImagePtr largest = draw(4096, 4096); // 64 megabytes: not kept, nor is what was there
    std::uint64_t before = zvsiutEntityImagesDrawn();
    QVERIFY(draw(4096, 4096).get() != largest.get());
    draw(50, 14);
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(2));
    // A thousand pictures of the lists' size stay, though.
    for (int i = 0; i < 1000; ++i)
        draw(80 + i % 40, 25 + i / 40);
    before = zvsiutEntityImagesDrawn();
    for (int i = 0; i < 1000; ++i)
        draw(80 + i % 40, 25 + i / 40);
    QCOMPARE(zvsiutEntityImagesDrawn() - before, std::uint64_t(0));
}

void UtilsEntityImageTest::thePaletteFollowsTheBackground()
{
    const unsigned before = zvsiutDisplayBackground();
    zvsiutSetDisplayBackground(0x000000);
    QCOMPARE(zvsiutCurPalette()[7], 0xFFFFFFu);
    zvsiutSetDisplayBackground(0xFFFFFF);
    QCOMPARE(zvsiutCurPalette()[7], 0x000000u);
    QCOMPARE(zvsiutCurPalette()[1], 0x0000FFu); // red in the lowest bits
    zvcmSetPaletteAvailable(false);
    QVERIFY(zvsiutCurPalette());
    zvcmSetPaletteAvailable(true);
    zvsiutSetDisplayBackground(before);
}

void UtilsEntityImageTest::everyLayerOfAPictureIsOpaque()
{
    Picture picture;
    Entities entities = listOf(makeLine(picture.database->continuousLinetype(), 1.0));
    const ZvGiRasterImagePtr raster = zvsiutCreateEntityImage(picture.database, entities, makeOptions(50, 11));
    for (std::uint32_t i = 3; i < raster->scanLineSize() * raster->pixelHeight(); i += 4)
        QCOMPARE(int(raster->scanLines()[i]), 255);
}

QTEST_MAIN(UtilsEntityImageTest)
#include "tst_utils_entityimage.moc"
