// SPDX-License-Identifier: MIT
#include "picture.h"

#include <QTest>

#include <cmath>

// A pixel is a drawing unit, so heights are pixels. Letters of one solid stem, such as H, fill their box.

class UtilsTextTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void capitalsAreAsHighAsTheTextSays_data();
    void capitalsAreAsHighAsTheTextSays();
    void textAlignsAtItsPoint_data();
    void textAlignsAtItsPoint();
    void theWidthFactorStretches();
    void rotatedTextRuns();
    void controlCodesBecomeCharacters();
    void underlinesRunBelow();
    void ideographsComeFromAnotherFont();
    void smallTextIsALine();
    void linesOfABlockAreFiveThirdsApart();
    void blocksBreakAtTheirWidth();
    void ideographsBreakAnywhere();
    void blocksHangOnTheirAttachmentPoint_data();
    void blocksHangOnTheirAttachmentPoint();
    void formatsOfBlocks_data();
    void formatsOfBlocks();
    void coloursOfBlocks();
    void fractionsStandOnBothSidesOfTheirBar();
    void brokenCodesAreSurvived_data();
    void brokenCodesAreSurvived();

private:
    static QRect textRect(const char *contents, double height = 20)
    {
        Picture picture;
        auto *text = new ZvDbText(ZvGePoint3d(20.5, 40.5, 0), contents, picture.database->textstyle(), height, 0.0);
        text->setLayer(picture.database->layerZero());
        picture.add(text);
        return inkedRect(picture.draw());
    }
    static QImage blockImage(const ZvString &contents, double height = 10, double width = 0, int attachment = 1,
                             double x = 10, double y = 90)
    {
        Picture picture;
        // The attachment comes from a file; so does the width. A text style of the drawing's own serves the rest.
        const QByteArray dxf = "0\nSECTION\n2\nENTITIES\n0\nMTEXT\n8\n0\n10\n" + QByteArray::number(x) + "\n20\n"
            + QByteArray::number(y) + "\n30\n0\n40\n" + QByteArray::number(height) + "\n41\n"
            + QByteArray::number(width) + "\n71\n" + QByteArray::number(attachment) + "\n1\n"
            + QByteArray(contents.toUtf8().c_str()) + "\n0\nENDSEC\n0\nEOF\n";
        ZvDbFileReport report;
        picture.database = ZvDbDatabase::create();
        if (picture.database->readStream(dxf.constData(), std::size_t(dxf.size()), report) != Zv::eOk)
            qWarning("%s", report.message.toStdString().c_str());
        return picture.draw();
    }
    static bool isNear(double a, double b, double tolerance = 1.01) { return std::abs(a - b) <= tolerance; }
};

void UtilsTextTest::initTestCase()
{
    QVERIFY2(inked(blockImage("H")) > 0, "a block of text can be read and drawn");
}

void UtilsTextTest::capitalsAreAsHighAsTheTextSays_data()
{
    QTest::addColumn<int>("height");
    for (int height : {5, 10, 20, 40})
        QTest::addRow("%d", height) << height;
}

void UtilsTextTest::capitalsAreAsHighAsTheTextSays()
{
    QFETCH(int, height);
    const QRect rect = textRect("HHH", height);
    QVERIFY2(isNear(rect.height(), height), qPrintable(QString::number(rect.height())));
    QVERIFY(isNear(rect.bottom(), 59));
}

void UtilsTextTest::textAlignsAtItsPoint_data()
{
    QTest::addColumn<int>("horizontal");
    QTest::addColumn<int>("vertical");
    QTest::addColumn<double>("across"); // part of the text's width left of the point
    QTest::addColumn<int>("below"); // pixels of the text's height below the point
    QTest::newRow("left") << 0 << 0 << 0.0 << 0;
    QTest::newRow("centre") << 1 << 0 << 0.5 << 0;
    QTest::newRow("right") << 2 << 0 << 1.0 << 0;
    QTest::newRow("middle") << 4 << 0 << 0.5 << 10;
    QTest::newRow("top left") << 0 << 3 << 0.0 << 20;
    QTest::newRow("middle left") << 0 << 2 << 0.0 << 10;
    QTest::newRow("bottom left") << 0 << 1 << 0.0 << -7;
    QTest::newRow("top right") << 2 << 3 << 1.0 << 20;
}

void UtilsTextTest::textAlignsAtItsPoint()
{
    QFETCH(int, horizontal);
    QFETCH(int, vertical);
    QFETCH(double, across);
    QFETCH(int, below);
    const QByteArray dxf
        = "0\nSECTION\n2\nENTITIES\n0\nTEXT\n8\n0\n10\n50\n20\n50\n30\n0\n11\n50\n21\n50\n31\n0\n40\n20\n72\n"
        + QByteArray::number(horizontal) + "\n73\n" + QByteArray::number(vertical) + "\n1\nHH\n0\nENDSEC\n0\nEOF\n";
    Picture picture;
    ZvDbFileReport report;
    QCOMPARE(picture.database->readStream(dxf.constData(), std::size_t(dxf.size()), report), Zv::eOk);
    const QRect rect = inkedRect(picture.draw());
    QVERIFY(rect.isValid());
    QVERIFY(isNear(rect.height(), 20));
    // Letters have a little air on both sides.
    QVERIFY2(isNear(rect.left(), 50 - across * rect.width(), 3.5), qPrintable(QString::number(rect.left())));
    QVERIFY2(isNear(rect.bottom() + 1, 50 + below, 1.5), qPrintable(QString::number(rect.bottom())));
}

void UtilsTextTest::theWidthFactorStretches()
{
    QRect rects[2];
    for (int i = 0; i < 2; ++i) {
        const QByteArray dxf = "0\nSECTION\n2\nENTITIES\n0\nTEXT\n8\n0\n10\n10\n20\n50\n30\n0\n40\n10\n41\n"
            + QByteArray::number(i + 1) + "\n1\nHHH\n0\nENDSEC\n0\nEOF\n";
        Picture picture;
        ZvDbFileReport report;
        QCOMPARE(picture.database->readStream(dxf.constData(), std::size_t(dxf.size()), report), Zv::eOk);
        rects[i] = inkedRect(picture.draw());
    }
    QVERIFY(isNear(rects[1].width(), 2 * rects[0].width(), 2));
    QCOMPARE(rects[1].height(), rects[0].height());
}

void UtilsTextTest::rotatedTextRuns()
{
    Picture picture;
    auto *text
        = new ZvDbText(ZvGePoint3d(50.5, 20.5, 0), "HHHH", picture.database->textstyle(), 10.0, 1.5707963267948966);
    text->setLayer(picture.database->layerZero());
    picture.add(text);
    const QRect rect = inkedRect(picture.draw());
    QVERIFY(isNear(rect.width(), 10));
    QVERIFY(rect.height() > 25);
    QVERIFY(isNear(rect.right(), 50)); // capitals point to the left
}

void UtilsTextTest::controlCodesBecomeCharacters()
{
    QCOMPARE(textRect("%%65%%072"), textRect("%%65H")); // a code needs three figures; the first is none
    QCOMPARE(textRect("%%072"), textRect("H"));
    QCOMPARE(textRect("%%D"), textRect("°"));
    QCOMPARE(textRect("%%p"), textRect("±"));
    QCOMPARE(textRect("%%c"), textRect("Ø"));
    QCOMPARE(textRect("%%%"), textRect("%"));
    QVERIFY(textRect("%%d") != textRect("%%p"));
}

void UtilsTextTest::underlinesRunBelow()
{
    const QRect plain = textRect("HH");
    const QRect under = textRect("%%uHH");
    QVERIFY(under.bottom() >= plain.bottom() + 3);
    QCOMPARE(under.top(), plain.top());
    QVERIFY(textRect("%%oHH").top() <= plain.top() - 3);
    // Switched off again: it is as long as what lies between.
    Picture picture;
    auto *text = new ZvDbText(ZvGePoint3d(10.5, 40.5, 0), "%%uH%%uHH", picture.database->textstyle(), 20.0, 0.0);
    text->setLayer(picture.database->layerZero());
    picture.add(text);
    const QImage image = picture.draw();
    QVERIFY(inkedRect(image.copy(0, 61, 100, 30)).width() < inkedRect(image).width() / 2);
}

void UtilsTextTest::ideographsComeFromAnotherFont()
{
    const QRect rect = textRect("图");
    QVERIFY(rect.height() > 12 && rect.height() < 30);
    QVERIFY(rect.width() > 12 && rect.width() < 30);
    QVERIFY(textRect("图") != textRect("口"));
}

void UtilsTextTest::smallTextIsALine()
{
    Picture picture;
    for (int i = 0; i < 5; ++i) {
        auto *text
            = new ZvDbText(ZvGePoint3d(20.5, 20.5 + 10 * i, 0), "HHHHHHHHHH", picture.database->textstyle(), 2.0, 0.0);
        text->setLayer(picture.database->layerZero());
        picture.add(text);
    }
    const QImage image = picture.draw();
    const QRect line = inkedRect(image.copy(0, 75, 100, 10));
    QCOMPARE(line.height(), 1);
    QVERIFY(line.width() > 12);
}

void UtilsTextTest::linesOfABlockAreFiveThirdsApart()
{
    const QRect one = inkedRect(blockImage("H", 12));
    const QRect three = inkedRect(blockImage("H\\PH\\PH", 12));
    QVERIFY(isNear(one.height(), 12));
    QVERIFY(isNear(one.top(), 10));
    QVERIFY2(isNear(three.height(), 12 + 2 * 20), qPrintable(QString::number(three.height())));
}

void UtilsTextTest::blocksBreakAtTheirWidth()
{
    QVERIFY(isNear(inkedRect(blockImage("HH HH HH", 6, 80)).height(), 6));
    const QRect broken = inkedRect(blockImage("HHHH HHHH HHHH", 6, 30));
    QVERIFY(isNear(broken.height(), 6 + 2 * 10));
    QVERIFY(broken.right() <= 41);
    // A word longer than the line stays whole.
    QVERIFY(isNear(inkedRect(blockImage("HHHHHHHH", 6, 10)).height(), 6));
    // A hard blank keeps its words together.
    QVERIFY(isNear(inkedRect(blockImage("HHHH\\~HHHH", 6, 30)).height(), 6));
}

void UtilsTextTest::ideographsBreakAnywhere()
{
    const QRect broken = inkedRect(blockImage("图图图图图图图图", 6, 30));
    QVERIFY(broken.height() > 12);
    QVERIFY(broken.right() <= 41);
}

void UtilsTextTest::blocksHangOnTheirAttachmentPoint_data()
{
    QTest::addColumn<int>("attachment");
    for (int i = 1; i <= 9; ++i)
        QTest::addRow("%d", i) << i;
}

void UtilsTextTest::blocksHangOnTheirAttachmentPoint()
{
    QFETCH(int, attachment);
    const QRect rect = inkedRect(blockImage("HHH\\PHHH", 9, 0, attachment, 50, 50));
    const double height = 9 + 15;
    const int row = (attachment - 1) / 3;
    const int column = (attachment - 1) % 3;
    QVERIFY(isNear(rect.height(), height));
    QVERIFY(isNear(rect.top(), 50 - height * row / 2.0));
    QVERIFY(isNear(rect.left() + rect.width() * column / 2.0, 50, 2.5));
}

void UtilsTextTest::formatsOfBlocks_data()
{
    QTest::addColumn<QString>("contents");
    QTest::addColumn<QString>("like");
    QTest::newRow("braces end a format") << "{\\H20;H}H"
                                         << "{\\H2x;H}H";
    QTest::newRow("braces alone") << "{H}"
                                  << "H";
    QTest::newRow("escaped braces and backslash are characters") << "\\{\\}\\\\"
                                                                 << "%%123%%125%%092";
    QTest::newRow("control codes") << "%%d%%p%%c" << QStringLiteral("°±Ø");
    QTest::newRow("unicode code") << "\\U+00B0" << QStringLiteral("°");
    QTest::newRow("font of the same kind") << "{\\fDejaVu Sans|b0|i0|c0|p34;H}"
                                           << "{\\FDejaVu Sans;H}";
    QTest::newRow("caret as a blank says") << "^ "
                                           << "\\U+005E";
    QTest::newRow("alignment is no character") << "\\A1;H"
                                               << "H";
    QTest::newRow("paragraph codes are no characters") << "\\pi0,l0,t4;H"
                                                       << "H";
    QTest::newRow("line ends at the end") << "H\\P\\P"
                                          << "H";
}

void UtilsTextTest::formatsOfBlocks()
{
    QFETCH(QString, contents);
    QFETCH(QString, like);
    const QImage image = blockImage(contents.toUtf8().constData());
    QVERIFY(inked(image) > 0);
    QCOMPARE(image, blockImage(like.toUtf8().constData()));
}

void UtilsTextTest::coloursOfBlocks()
{
    const QImage image = blockImage("{\\C1;H}H", 20);
    int red = 0;
    int white = 0;
    for (int y = 0; y < 100; ++y) {
        for (int x = 0; x < 100; ++x) {
            red += image.pixel(x, y) == qRgb(255, 0, 0);
            white += image.pixel(x, y) == qRgb(255, 255, 255);
        }
    }
    QVERIFY(red > 20);
    QVERIFY2(isNear(red, white, red / 4), qPrintable(QStringLiteral("%1 red, %2 white").arg(red).arg(white)));
    // Bar and letters of a marked text are of its colour.
    const QImage marked = blockImage("{\\L\\c255;HH}", 20);
    QVERIFY(inked(marked) > 0);
    QCOMPARE(inkedRect(marked).bottom() > inkedRect(blockImage("HH", 20)).bottom(), true);
}

void UtilsTextTest::fractionsStandOnBothSidesOfTheirBar()
{
    const QRect plain = inkedRect(blockImage("H", 20));
    const QRect fraction = inkedRect(blockImage("\\S1/2;", 20));
    QVERIFY(fraction.height() > plain.height() * 1.4);
    const QRect tolerance = inkedRect(blockImage("\\S+0.1^-0.2;", 20));
    QVERIFY(tolerance.height() > plain.height());
    // The bar spans the wider part, in the middle of the capitals.
    const QImage image = blockImage("\\S1/288;", 20);
    bool hasBar = false;
    for (int y = 10; y < 40; ++y) {
        const std::vector<int> row = runs(image, y, 10, 60);
        for (int run : row)
            hasBar = hasBar || run >= inkedRect(image).width() - 6;
    }
    QVERIFY(hasBar);
}

void UtilsTextTest::brokenCodesAreSurvived_data()
{
    QTest::addColumn<QString>("contents");
    const QStringList all{"\\",       "H\\",        "{{{{{{{{H",   "}}}}H",  "\\H;H",
                          "\\H-5;H",  "\\H1e999;H", "\\Hnan;H",    "\\W0;H", "\\S",
                          "\\S/",     "\\S;",       "\\S1#",       "\\C;H",  "\\C99999999999;H",
                          "\\f;H",    "\\fArial",   "\\f|b1|i1;H", "\\U+",   "\\U+12",
                          "\\U+ZZZZ", "%%",         "%",           "^",      "\\Q9999;H",
                          "\\T0;H",   "\\A;H",      "\\pxq;H",     "\\p"};
    for (const QString &contents : all)
        QTest::newRow(qPrintable(contents)) << contents;
}

void UtilsTextTest::brokenCodesAreSurvived()
{
    QFETCH(QString, contents);
    QCOMPARE(blockImage(contents.toUtf8().constData()).size(), QSize(100, 100));
}

QTEST_MAIN(UtilsTextTest)
#include "tst_utils_text.moc"
