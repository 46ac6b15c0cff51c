// SPDX-License-Identifier: MIT
#include "paintcount.h"
#include "pictures.h"
#include "zevatest.h"
#include "zvutilsiconpushbutton.h"

#include <QSignalSpy>
#include <QTemporaryDir>

namespace {

constexpr QRgb kGrey = qRgb(191, 191, 191);
constexpr QRgb kGreyFill = qRgb(240, 240, 240);
constexpr QRgb kBlue = qRgb(0, 120, 215);
constexpr QRgb kBlueFill = qRgb(229, 241, 251);
constexpr QRgb kRed = qRgb(200, 10, 20);
constexpr QRgb kGreen = qRgb(10, 200, 20);

/// Soft edges are reckoned in 255ths.
constexpr int kTolerance = 2;

/// A pen of one pixel around 0,0 to w,h: it covers half of the pixels inside, and three quarters of the corners.
void setSoftFrame(QImage &image, int w, int h, QRgb pen, QRgb fill)
{
    setPixels(image, 0, 0, w - 1, h - 1, fill);
    for (int y = 0; y < h; ++y) {
        for (int x = 0; x < w; ++x) {
            const bool onColumn = x == 0 || x == w - 1;
            const bool onRow = y == 0 || y == h - 1;
            if (onColumn || onRow)
                image.setPixel(x, y, mixed(fill, pen, onColumn && onRow ? 0.75 : 0.5));
        }
    }
}

void hover(QWidget &widget, bool over)
{
    QEvent event(over ? QEvent::Enter : QEvent::Leave);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

class TestIconPushButton : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase();
    void init() { ZevaTest::init(); }
    void startsAsNormal();
    void frameWithoutPictures_data();
    void frameWithoutPictures();
    void pictureOfTheState_data();
    void pictureOfTheState();
    void stateWithoutPicture_data();
    void stateWithoutPicture();
    void sizeFollowsThePicture();
    void aChangedStateIsPainted();
    void thePointerAsksForNoPainting();
    void clicksLikeAButton();

private:
    QString pathOf(const char *name) const { return m_folder.filePath(QLatin1String(name)); }

    QTemporaryDir m_folder;
};

void TestIconPushButton::initTestCase()
{
    const struct
    {
        const char *name;
        QSize size;
        QRgb color;
    } pictures[] = {{"red.png", {16, 12}, kRed}, {"green.png", {10, 20}, kGreen}};
    for (const auto &picture : pictures) {
        QImage image(picture.size, QImage::Format_RGB32);
        image.fill(picture.color);
        QVERIFY(image.save(pathOf(picture.name)));
    }
    QFile text(pathOf("text.png"));
    QVERIFY(text.open(QIODevice::WriteOnly));
    text.write("no picture");
}

void TestIconPushButton::startsAsNormal()
{
    const ZvUtilsIconPushButton button(QString(), QString(), true, nullptr);
    QCOMPARE(button.objectName(), QStringLiteral("normal"));
}

void TestIconPushButton::frameWithoutPictures_data()
{
    QTest::addColumn<bool>("framed");
    QTest::addColumn<bool>("over");
    QTest::addColumn<QRgb>("pen");
    QTest::addColumn<QRgb>("fill");
    const QRgb text = QApplication::palette("QPushButton").color(QPalette::ButtonText).rgb();
    const QRgb background = qRgb(255, 255, 255);
    QTest::newRow("framed") << true << false << kGrey << kGreyFill;
    QTest::newRow("framed under the pointer") << true << true << kBlue << kBlueFill;
    QTest::newRow("plain") << false << false << text << background;
    QTest::newRow("plain under the pointer") << false << true << text << background;
}

void TestIconPushButton::frameWithoutPictures()
{
    QFETCH(bool, framed);
    QFETCH(bool, over);
    QFETCH(QRgb, pen);
    QFETCH(QRgb, fill);
    ZvUtilsIconPushButton button(QString(), QStringLiteral("normal"), framed, nullptr);
    button.resize(40, 30);
    hover(button, true);
    if (!over)
        hover(button, false);
    QImage expected(40, 30, QImage::Format_RGB32);
    setSoftFrame(expected, 40, 30, pen, fill);
    COMPARE_PICTURES_WITHIN(pictureOf(&button), expected, kTolerance);
    QCOMPARE(button.size(), QSize(40, 30));
}

void TestIconPushButton::pictureOfTheState_data()
{
    QTest::addColumn<QString>("images");
    QTest::addColumn<QString>("states");
    QTest::addColumn<QString>("state");
    QTest::addColumn<bool>("over");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRgb>("color");
    const QString red = pathOf("red.png");
    const QString green = pathOf("green.png");
    const QString both = red + QLatin1Char('$') + green;
    const QSize redSize(16, 12);
    const QSize greenSize(10, 20);
    QTest::newRow("one picture") << red << "normal"
                                 << "normal" << false << redSize << kRed;
    QTest::newRow("first of two") << both << "normal$down"
                                  << "normal" << false << redSize << kRed;
    QTest::newRow("second of two") << both << "normal$down"
                                   << "down" << false << greenSize << kGreen;
    QTest::newRow("second under the pointer") << both << "normal$down"
                                              << "down" << true << greenSize << kGreen;
    QTest::newRow("first of a state named twice") << both << "normal$normal"
                                                  << "normal" << false << redSize << kRed;
    QTest::newRow("more pictures than states") << both << "normal"
                                               << "normal" << false << redSize << kRed;
    QTest::newRow("more states than pictures") << red << "normal$down"
                                               << "normal" << false << redSize << kRed;
    QTest::newRow("a state without a name") << both << "normal$"
                                            << "" << false << greenSize << kGreen;
}

void TestIconPushButton::pictureOfTheState()
{
    QFETCH(QString, images);
    QFETCH(QString, states);
    QFETCH(QString, state);
    QFETCH(bool, over);
    QFETCH(QSize, size);
    QFETCH(QRgb, color);
    ZvUtilsIconPushButton button(images, states, true, nullptr);
    button.setObjectName(state);
    hover(button, over);
    pictureOf(&button);
    const QSize whole = size + QSize(4, 4);
    QCOMPARE(button.size(), whole);
    // The frame lies around 0,0 to the size and 3: the pixels at the right and below are covered by half as well.
    const QRgb pen = over ? kBlue : kGrey;
    const QRgb fill = over ? kBlueFill : kGreyFill;
    QImage expected(whole, QImage::Format_RGB32);
    const int right = size.width() + 3;
    const int bottom = size.height() + 3;
    const QRgb white = qRgb(255, 255, 255);
    setSoftFrame(expected, right, bottom, pen, fill);
    for (int x = 0; x < right; ++x) {
        expected.setPixel(x, bottom, mixed(white, pen, 0.5));
        expected.setPixel(x, bottom - 1, mixed(fill, pen, x == 0 ? 0.75 : 0.5));
    }
    for (int y = 0; y < bottom; ++y) {
        expected.setPixel(right, y, mixed(white, pen, 0.5));
        expected.setPixel(right - 1, y, mixed(fill, pen, y == 0 || y == bottom - 1 ? 0.75 : 0.5));
    }
    // A bevel cuts the corners: see below.
    setPixels(expected, 2, 2, size.width() + 1, size.height() + 1, color);
    QImage actual = pictureOf(&button);
    for (const QPoint &corner : {QPoint(0, 0), QPoint(right, 0), QPoint(0, bottom), QPoint(right, bottom)})
        expected.setPixel(corner, actual.pixel(corner));
    COMPARE_PICTURES_WITHIN(actual, expected, kTolerance);
}

void TestIconPushButton::stateWithoutPicture_data()
{
    QTest::addColumn<QString>("images");
    QTest::addColumn<QString>("states");
    QTest::addColumn<QSize>("frame"); // empty for none
    QTest::addColumn<QSize>("size");
    const QSize usual(40, 30);
    const QString red = pathOf("red.png");
    QTest::newRow("no matching state draws only the frame") << red << "down" << usual << usual;
    QTest::newRow("no state at all") << red << "" << usual << usual;
    QTest::newRow("another case of letters") << red << "Normal" << usual << usual;
    QTest::newRow("a part of the name") << red << "normal2$norm" << usual << usual;
    QTest::newRow("a state without a path") << red << "down$normal" << usual << usual;
    QTest::newRow("an empty path") << "$" + red << "normal$down" << usual << usual;
    QTest::newRow("a path without a file draws nothing") << pathOf("none.png") << "normal" << QSize() << usual;
    QTest::newRow("a file that is no picture has no size")
        << pathOf("text.png") << "normal" << QSize(3, 3) << QSize(4, 4);
}

void TestIconPushButton::stateWithoutPicture()
{
    QFETCH(QString, images);
    QFETCH(QString, states);
    QFETCH(QSize, frame);
    QFETCH(QSize, size);
    ZvUtilsIconPushButton button(images, states, true, nullptr);
    button.resize(40, 30);
    QImage actual = pictureOf(&button);
    QCOMPARE(button.size(), size);
    QImage expected(40, 30, QImage::Format_RGB32);
    expected.fill(Qt::white);
    if (frame == size) {
        setSoftFrame(expected, 40, 30, kGrey, kGreyFill);
        COMPARE_PICTURES_WITHIN(actual, expected, kTolerance);
    } else if (frame.isEmpty()) {
        COMPARE_PICTURES_WITHIN(actual, expected, 0);
    } else {
        QVERIFY(actual.pixel(1, 1) != qRgb(255, 255, 255));
        QCOMPARE(actual.pixel(5, 5), qRgb(255, 255, 255));
    }
}

void TestIconPushButton::sizeFollowsThePicture()
{
    ZvUtilsIconPushButton button(pathOf("red.png"), QStringLiteral("normal"), true, nullptr);
    button.resize(100, 100);
    button.show();
    QTRY_COMPARE(button.size(), QSize(20, 16));
    button.resize(100, 100);
    QCOMPARE(button.size(), QSize(20, 16));
}

void TestIconPushButton::aChangedStateIsPainted()
{
    ZvUtilsIconPushButton button(pathOf("red.png") + QLatin1Char('$') + pathOf("green.png"),
                                 QStringLiteral("normal$down"), true, nullptr);
    button.show();
    QTRY_COMPARE(button.size(), QSize(20, 16));
    button.setObjectName(QStringLiteral("down"));
    button.update();
    QTRY_COMPARE(button.size(), QSize(14, 24));
    button.setObjectName(QStringLiteral("other"));
    button.update();
    QCoreApplication::processEvents();
    QCOMPARE(button.size(), QSize(14, 24));
}

void TestIconPushButton::thePointerAsksForNoPainting()
{
    ZvUtilsIconPushButton button(QString(), QStringLiteral("normal"), true, nullptr);
    button.resize(40, 30);
    const PaintCount painted(&button);
    button.show();
    QTRY_VERIFY(painted.count > 0);
    QCoreApplication::processEvents();
    const int before = painted.count;
    for (const bool over : {true, false}) {
        hover(button, over);
        QCoreApplication::processEvents();
        QCOMPARE(painted.count, before);
    }
    button.update(); // the count counts
    QTRY_VERIFY(painted.count > before);
}

void TestIconPushButton::clicksLikeAButton()
{
    ZvUtilsIconPushButton button(pathOf("red.png"), QStringLiteral("normal"), true, nullptr);
    button.show();
    QVERIFY(zevaWaitForActive(&button));
    const QSignalSpy clicked(&button, &QPushButton::clicked);
    QTest::mouseClick(&button, Qt::LeftButton);
    button.setFocus();
    QTest::keyClick(&button, Qt::Key_Space);
    QCOMPARE(clicked.size(), 2);
    button.setEnabled(false);
    QTest::mouseClick(&button, Qt::LeftButton);
    QCOMPARE(clicked.size(), 2);
}

ZEVA_TEST_MAIN(TestIconPushButton)
#include "tst_iconpushbutton.moc"
