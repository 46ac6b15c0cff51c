// SPDX-License-Identifier: MIT
#include "drawingtest.h"
#include "paintcount.h"

#include "zvqtimagewidget.h"
#include "zvqtrasterimage.h"

#include "utils/zventityimage.h"

#include <QPainter>
#include <QSignalSpy>

namespace {

constexpr int kWhite = -1;
constexpr int kBlack = int(0xFF000000);
const QColor kBorder(105, 105, 105);

ZvJsonPtr makeOptions()
{
    return ElementValue::createObject(IElementValueBase::kObject);
}

int numberOf(const ZvJsonPtr &options, const char *key)
{
    int value = -12345;
    options->GetDataI(key, value);
    return value;
}

/// One red line of no drawing, level, as wide as the picture.
ZvQtImageWidget::Entities redLine()
{
    auto *line = new ZvRxObjectImpl<ZvDbLine>(ZvGePoint3d(0, 0, 0), ZvGePoint3d(10, 0, 0));
    ZvCmColor red;
    red.setRGB(255, 0, 0);
    line->setColor(red);
    ZvQtImageWidget::Entities entities;
    entities.append(ZvSmartPtr<ZvDbEntity>::adopt(line));
    return entities;
}

/// What the widget paints itself, on green instead of its background.
QImage paintedBy(ZvQtImageWidget &widget)
{
    QImage picture(widget.size(), QImage::Format_RGB32);
    picture.fill(Qt::green);
    widget.render(&picture, QPoint(), QRegion(), QWidget::RenderFlags());
    return picture;
}

int pixelsOf(const QImage &picture, const QColor &color)
{
    int count = 0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            count += picture.pixelColor(x, y) == color ? 1 : 0;
    }
    return count;
}

} // namespace

class TestImageWidget : public DrawingTest
{
    Q_OBJECT
private Q_SLOTS:
    void startsSmallAndEmpty();
    void attachingFillsInWhatIsMissing_data();
    void attachingFillsInWhatIsMissing();
    void attachingKeepsWhatTheCallerSet();
    void backgroundFollowsTheSpace_data();
    void backgroundFollowsTheSpace();
    void nullOptionsBecomeATree();
    void nullDatabaseIsTheCurrentOne();
    void entitiesAreSharedAndLetGo();
    void entitiesAreLetGoFromLastToFirst();
    void attachingRepaintsWhatIsShown();
    void hiddenWidgetIsNotRepainted();
    void resizingOverwritesTheSize();
    void resizingUnattachedMakesTheTree();
    void entitiesAreDrawn();
    void everyPaintDrawsAnew();
    void entitiesOfTheDrawingAreDrawnClosed();
    void pictureIsScaledToTheWidget();
    void optionsReachTheKernelAsTheyStand();
    void frame_data();
    void frame();
    void frameKeepsTheBorder();
    void borderIsDrawnAroundAll_data();
    void borderIsDrawnAroundAll();
    void noRasterLeavesThePixelsAlone_data();
    void noRasterLeavesThePixelsAlone();
    void unattachedWidgetShowsThePlainBackground();
    void factoryMakesAndAttaches();
};

void TestImageWidget::startsSmallAndEmpty()
{
    QWidget parent;
    const ZvQtImageWidget widget(&parent);
    QCOMPARE(widget.minimumSize(), QSize(10, 10));
    QCOMPARE(widget.parentWidget(), &parent);
    QVERIFY(widget.findChildren<QWidget *>().isEmpty());
}

void TestImageWidget::attachingFillsInWhatIsMissing_data()
{
    QTest::addColumn<QStringList>("given");
    QTest::addColumn<QSize>("expected");
    QTest::newRow("nothing given") << QStringList() << QSize(80, 60);
    QTest::newRow("width alone is overwritten") << QStringList{QStringLiteral("width")} << QSize(80, 60);
    QTest::newRow("height alone is overwritten") << QStringList{QStringLiteral("height")} << QSize(80, 60);
    QTest::newRow("both given") << QStringList{QStringLiteral("width"), QStringLiteral("height")} << QSize(33, 33);
}

void TestImageWidget::attachingFillsInWhatIsMissing()
{
    QFETCH(QStringList, given);
    ZvQtImageWidget widget(nullptr);
    widget.resize(80, 60);
    const ZvJsonPtr options = makeOptions();
    for (const QString &key : qAsConst(given))
        options->SetDataI(qPrintable(key), 33);
    widget.attachDbEntities(redLine(), &drawing(), options);
    QTEST(QSize(numberOf(options, "width"), numberOf(options, "height")), "expected");
}

void TestImageWidget::attachingKeepsWhatTheCallerSet()
{
    ZvQtImageWidget widget(nullptr);
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("background", 0x123456);
    options->SetDataI("padding_size", 4);
    options->SetDataSW("something", L"else");
    widget.attachDbEntities(redLine(), &drawing(), options);
    QCOMPARE(numberOf(options, "background"), 0x123456);
    QCOMPARE(numberOf(options, "padding_size"), 4);
    QVERIFY(options->hasKey("something"));
    QVERIFY(!options->hasKey("padding_clr"));
}

void TestImageWidget::backgroundFollowsTheSpace_data()
{
    QTest::addColumn<bool>("hasDrawing");
    QTest::addColumn<bool>("inPaper");
    QTest::addColumn<int>("background");
    QTest::newRow("model space is black") << true << false << kBlack;
    QTest::newRow("paper is white") << true << true << kWhite;
    QTest::newRow("no drawing is black") << false << false << kBlack;
}

void TestImageWidget::backgroundFollowsTheSpace()
{
    QFETCH(bool, hasDrawing);
    QFETCH(bool, inPaper);
    if (inPaper)
        setVariable(L"TILEMODE", 0);
    if (!hasDrawing)
        zvDocManagerPtr()->closeDocument(document());
    {
        ZvQtImageWidget widget(nullptr);
        const ZvJsonPtr attached = makeOptions();
        widget.attachDbEntities(redLine(), nullptr, attached);
        QTEST(numberOf(attached, "background"), "background");
        // A size leaves it alone.
        const ZvJsonPtr given = makeOptions();
        given->SetDataI("background", 5);
        widget.attachDbEntities(redLine(), nullptr, given);
        widget.show();
        given->SetDataI("background", 7);
        widget.resize(77, 55);
        QTRY_COMPARE(numberOf(given, "width"), 77);
        QCOMPARE(numberOf(given, "background"), 7);
    }
    if (!hasDrawing)
        openAnother();
}

void TestImageWidget::nullOptionsBecomeATree()
{
    ZvQtImageWidget widget(nullptr);
    widget.resize(50, 40);
    widget.attachDbEntities(redLine(), &drawing(), nullptr);
    const QImage picture = paintedBy(widget);
    QCOMPARE(picture.pixelColor(10, 10), QColor(Qt::black));
    QVERIFY(pixelsOf(picture, Qt::red) > 20);
}

void TestImageWidget::nullDatabaseIsTheCurrentOne()
{
    setVariable(L"TILEMODE", 0);
    ZvQtImageWidget widget(nullptr);
    const ZvJsonPtr options = makeOptions();
    widget.attachDbEntities(redLine(), nullptr, options);
    QCOMPARE(numberOf(options, "background"), kWhite);
    // Without a drawing the kernel draws no line.
    QVERIFY(pixelsOf(paintedBy(widget), Qt::red) > 20);
}

void TestImageWidget::entitiesAreSharedAndLetGo()
{
    ZvQtImageWidget::Entities entities = redLine();
    const ZvSmartPtr<ZvDbEntity> line = entities[0];
    {
        ZvQtImageWidget widget(nullptr);
        widget.attachDbEntities(entities, &drawing(), nullptr);
        QCOMPARE(zvrxNumRefs(line), 2); // ours and the one array's
        entities = ZvQtImageWidget::Entities();
        QCOMPARE(zvrxNumRefs(line), 2); // the widget still has the array
        widget.attachDbEntities(ZvQtImageWidget::Entities(), &drawing(), nullptr);
        QCOMPARE(zvrxNumRefs(line), 1);
    }
    const int databaseRefs = zvrxNumRefs(&drawing());
    {
        ZvQtImageWidget widget(nullptr);
        widget.attachDbEntities(entities, &drawing(), nullptr);
        QCOMPARE(zvrxNumRefs(&drawing()), databaseRefs + 1);
    }
    QCOMPARE(zvrxNumRefs(&drawing()), databaseRefs);
}

void TestImageWidget::entitiesAreLetGoFromLastToFirst()
{
    class WatchedLine : public ZvDbLine
    {
    public:
        WatchedLine(int number, QList<int> &gone)
            : ZvDbLine(ZvGePoint3d(0, 0, 0), ZvGePoint3d(10, 0, 0)), m_number(number), m_gone(gone)
        {
        }
        ~WatchedLine() override { m_gone << m_number; }

    private:
        int m_number;
        QList<int> &m_gone;
    };
    QList<int> gone;
    const auto makeLines = [&gone](int first) {
        ZvQtImageWidget::Entities lines;
        for (int number = first; number < first + 3; ++number)
            lines.append(ZvSmartPtr<ZvDbEntity>::adopt(new ZvRxObjectImpl<WatchedLine>(number, gone)));
        return lines;
    };
    {
        ZvQtImageWidget widget(nullptr);
        widget.attachDbEntities(makeLines(1), &drawing(), nullptr);
        QCOMPARE(gone, QList<int>());
        widget.attachDbEntities(makeLines(11), &drawing(), nullptr);
        QCOMPARE(gone, (QList<int>{3, 2, 1}));
        gone.clear();
    }
    QCOMPARE(gone, (QList<int>{13, 12, 11}));
}

void TestImageWidget::attachingRepaintsWhatIsShown()
{
    ZvQtImageWidget widget(nullptr);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    const PaintCount paints(&widget);
    widget.attachDbEntities(redLine(), &drawing(), nullptr);
    QTRY_COMPARE(paints.count, 1);
}

void TestImageWidget::hiddenWidgetIsNotRepainted()
{
    ZvQtImageWidget widget(nullptr);
    const PaintCount paints(&widget);
    widget.attachDbEntities(redLine(), &drawing(), nullptr);
    widget.resize(90, 90);
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, 0);
}

void TestImageWidget::resizingOverwritesTheSize()
{
    ZvQtImageWidget widget(nullptr);
    widget.show();
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("width", 33);
    options->SetDataI("height", 44);
    widget.attachDbEntities(redLine(), &drawing(), options);
    QCOMPARE(numberOf(options, "width"), 33);
    widget.resize(120, 70);
    QCOMPARE(numberOf(options, "width"), 120);
    QCOMPARE(numberOf(options, "height"), 70);
}

void TestImageWidget::resizingUnattachedMakesTheTree()
{
    ZvQtImageWidget widget(nullptr);
    widget.show();
    widget.resize(64, 32);
    // The kernel's own background is white: black comes of the tree.
    const QImage picture = paintedBy(widget);
    QCOMPARE(picture.pixelColor(32, 16), QColor(Qt::black));
}

void TestImageWidget::entitiesAreDrawn()
{
    ZvQtImageWidget widget(nullptr);
    widget.resize(120, 60);
    const ZvJsonPtr options = makeOptions();
    widget.attachDbEntities(redLine(), &drawing(), options);
    const QImage picture = paintedBy(widget);
    ZvQtImageWidget::Entities entities = redLine();
    const ZvSmartPtr<ZvGiRasterImage> raster = zvsiutCreateEntityImage(&drawing(), entities, options);
    const QImage expected = zvutZvGiRasterImage2QImage(raster);
    for (int y = 2; y < 58; ++y) { // the border lies on the outermost two
        for (int x = 2; x < 118; ++x)
            QCOMPARE(picture.pixelColor(x, y), expected.pixelColor(x, y));
    }
}

void TestImageWidget::everyPaintDrawsAnew()
{
    ZvQtImageWidget widget(nullptr);
    widget.resize(60, 60);
    const ZvQtImageWidget::Entities entities = redLine();
    widget.attachDbEntities(entities, &drawing(), nullptr);
    QVERIFY(pixelsOf(paintedBy(widget), Qt::red) > 20);
    ZvCmColor blue;
    blue.setRGB(0, 0, 255);
    entities[0].get()->setColor(blue);
    QVERIFY(pixelsOf(paintedBy(widget), Qt::blue) > 20);
}

void TestImageWidget::entitiesOfTheDrawingAreDrawnClosed()
{
    const ZvDbObjectId id = addLine();
    ZvCmColor red;
    red.setRGB(255, 0, 0);
    change<ZvDbEntity>(id, [&red](ZvDbEntity &entity) { entity.setColor(red); });
    ZvQtImageWidget::Entities entities;
    entities.append(ZvSmartPtr<ZvDbEntity>(read<ZvDbEntity>(id, [](ZvDbEntity &entity) { return &entity; })));
    ZvQtImageWidget widget(nullptr);
    widget.resize(60, 60);
    widget.attachDbEntities(entities, &drawing(), nullptr);
    const QImage picture = paintedBy(widget);
    QVERIFY(picture.pixelColor(30, 29).red() > 100 || picture.pixelColor(30, 30).red() > 100);
}

void TestImageWidget::pictureIsScaledToTheWidget()
{
    ZvQtImageWidget widget(nullptr);
    widget.resize(100, 100);
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("width", 20);
    options->SetDataI("height", 20);
    widget.attachDbEntities(redLine(), &drawing(), options);
    widget.show();
    options->SetDataI("width", 20);
    options->SetDataI("height", 20);
    // Each pixel of the picture is five wide and high.
    const QImage picture = paintedBy(widget);
    QVERIFY(pixelsOf(picture, Qt::red) >= 5 * 5 * 15);
}

void TestImageWidget::optionsReachTheKernelAsTheyStand()
{
    ZvQtImageWidget widget(nullptr);
    widget.resize(40, 40);
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("background", 0x00FF8040); // red 64, green 128, blue 255
    widget.attachDbEntities(ZvQtImageWidget::Entities(), &drawing(), options);
    QCOMPARE(paintedBy(widget).pixelColor(20, 20), QColor(64, 128, 255));
}

void TestImageWidget::frame_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QVariant>("color");
    QTest::addColumn<QColor>("at4");
    QTest::addColumn<QColor>("at8");
    const QVariant yellow = int(0xFFFFFF00);
    const QColor inside(Qt::black);
    QTest::newRow("none") << 0 << yellow << inside << inside;
    QTest::newRow("below none") << -5 << yellow << inside << inside;
    QTest::newRow("5 wide") << 5 << yellow << QColor(Qt::yellow) << inside;
    QTest::newRow("6 wide") << 6 << yellow << QColor(Qt::yellow) << inside;
    QTest::newRow("9 wide") << 9 << yellow << QColor(Qt::yellow) << QColor(Qt::yellow);
    QTest::newRow("no colour is transparent") << 6 << QVariant() << QColor(Qt::green) << inside;
    QTest::newRow("half transparent over the green") << 6 << QVariant(int(0x80FF0000)) << QColor(128, 127, 0) << inside;
    QTest::newRow("no room for the picture") << 100 << yellow << QColor(Qt::yellow) << QColor(Qt::yellow);
    QTest::newRow("as wide as a number can be") << 0x7FFFFFFF << yellow << QColor(Qt::yellow) << QColor(Qt::yellow);
}

void TestImageWidget::frame()
{
    QFETCH(int, size);
    QFETCH(QVariant, color);
    ZvQtImageWidget widget(nullptr);
    widget.resize(60, 60);
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("padding_size", size);
    if (color.isValid())
        options->SetDataI("padding_clr", color.toInt());
    widget.attachDbEntities(redLine(), &drawing(), options);
    const QImage picture = paintedBy(widget);
    QTEST(picture.pixelColor(4, 20), "at4");
    QTEST(picture.pixelColor(8, 20), "at8");
    QTEST(picture.pixelColor(55, 20), "at4");
    QTEST(picture.pixelColor(51, 20), "at8");
    QTEST(picture.pixelColor(20, 4), "at4");
    QTEST(picture.pixelColor(20, 55), "at4");
}

void TestImageWidget::frameKeepsTheBorder()
{
    ZvQtImageWidget widget(nullptr);
    widget.resize(60, 60);
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("padding_size", 6);
    options->SetDataI("padding_clr", int(0xFFFFFF00));
    widget.attachDbEntities(redLine(), &drawing(), options);
    const QImage picture = paintedBy(widget);
    QCOMPARE(picture.pixelColor(0, 20), kBorder);
    QCOMPARE(picture.pixelColor(30, 0), kBorder);
}

void TestImageWidget::borderIsDrawnAroundAll_data()
{
    QTest::addColumn<QPoint>("at");
    QTest::newRow("left") << QPoint(0, 30);
    QTest::newRow("top") << QPoint(30, 0);
    QTest::newRow("right") << QPoint(59, 30);
    QTest::newRow("bottom") << QPoint(30, 59);
}

void TestImageWidget::borderIsDrawnAroundAll()
{
    QFETCH(QPoint, at);
    ZvQtImageWidget widget(nullptr);
    widget.resize(60, 60);
    widget.attachDbEntities(ZvQtImageWidget::Entities(), &drawing(), nullptr);
    const QImage picture = paintedBy(widget);
    QCOMPARE(picture.pixelColor(at), kBorder);
    // The same as a pen of width 3 along the rectangle, antialiased.
    QImage expected(60, 60, QImage::Format_RGB32);
    expected.fill(Qt::black);
    QPainter painter(&expected);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(kBorder, 3));
    painter.drawRect(QRect(0, 0, 60, 60));
    painter.end();
    QCOMPARE(picture, expected);
}

void TestImageWidget::noRasterLeavesThePixelsAlone_data()
{
    QTest::addColumn<QString>("key");
    QTest::addColumn<int>("value");
    QTest::newRow("width 0") << QStringLiteral("width") << 0;
    QTest::newRow("height below 0") << QStringLiteral("height") << -7;
    QTest::newRow("too wide") << QStringLiteral("width") << 1000000;
}

void TestImageWidget::noRasterLeavesThePixelsAlone()
{
    QFETCH(QString, key);
    QFETCH(int, value);
    ZvQtImageWidget widget(nullptr);
    widget.resize(40, 40);
    const ZvJsonPtr options = makeOptions();
    options->SetDataI("padding_size", 5);
    options->SetDataI("padding_clr", int(0xFFFFFF00));
    widget.attachDbEntities(redLine(), &drawing(), options);
    widget.show();
    options->SetDataI(qPrintable(key), value);
    QCOMPARE(pixelsOf(paintedBy(widget), Qt::green), 40 * 40); // neither frame nor border
}

void TestImageWidget::unattachedWidgetShowsThePlainBackground()
{
    ZvQtImageWidget widget(nullptr);
    const QImage picture = paintedBy(widget); // never sized, never attached
    QVERIFY(!picture.isNull());
    QCOMPARE(picture.pixelColor(picture.width() / 2, 0), kBorder);
    QCOMPARE(pixelsOf(picture.copy(picture.rect().adjusted(2, 2, -2, -2)), Qt::black),
             (picture.width() - 4) * (picture.height() - 4));
}

void TestImageWidget::factoryMakesAndAttaches()
{
    QWidget parent;
    const ZvQtImageWidget::Entities entities = redLine();
    const ZvJsonPtr options = makeOptions();
    ZvQtImageWidget *widget = zvqt_createImageWidget(&parent, &drawing(), entities, options);
    QCOMPARE(widget->parentWidget(), &parent);
    QVERIFY(options->hasKey("width"));
    QVERIFY(options->hasKey("background"));
    QVERIFY(pixelsOf(paintedBy(*widget), Qt::red) > 20);
}

ZEVA_TEST_MAIN(TestImageWidget)
#include "tst_imagewidget.moc"
