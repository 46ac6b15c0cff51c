// SPDX-License-Identifier: MIT
#include "metamethods.h"
#include "pictures.h"
#include "zevatest.h"
#include "zvimagecombobox.h"
#include "zvimageitem.h"
#include "zvimagevew.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QPainter>
#include <QScrollBar>
#include <QSignalSpy>
#include <QWheelEvent>

#include <memory>

Q_DECLARE_METATYPE(ZvImageComboBox::ItemModeEx)
Q_DECLARE_METATYPE(Qt::MouseButton)

namespace {

constexpr QRgb kWhite = qRgb(255, 255, 255);
constexpr QRgb kGrey = qRgb(205, 205, 205);
constexpr QRgb kBlue = qRgb(13, 124, 211);
constexpr QRgb kLightBlue = qRgb(204, 228, 247);

const QRect kPlace(10, 10, 180, 25);

/// A window with a combo in it, whose rows are filled with colours.
class Form : public QWidget
{
public:
    Form() : combo(new ZvImageComboBox(this))
    {
        resize(320, 320);
        combo->setGeometry(kPlace);
        connect(combo, &ZvImageComboBox::onDraw, combo,
                [](QWidget *item, QPainter *painter, const QRect &rect, QString &) {
                    painter->fillRect(rect, QColor(item->objectName()));
                });
    }
    bool isShown()
    {
        show();
        return zevaWaitForActive(this);
    }
    void addRows(const QStringList &colors, ZvImageComboBox::ItemModeEx mode = ZvImageComboBox::kItemShown)
    {
        for (const QString &color : colors)
            combo->createCustomItem(color, mode);
    }
    ZvImageVew &view() { return *findChild<ZvImageVew *>(); }
    QListWidget &list() { return *view().findChild<QListWidget *>(); }
    /// Opens the list and waits till its rows are drawn.
    void open()
    {
        press();
        QTRY_VERIFY(view().itemAt(0)->pixmap.toImage().pixelColor(10, 10).alpha() == 255);
    }
    void press(Qt::MouseButton button = Qt::LeftButton)
    {
        QTest::mouseClick(combo, button, Qt::NoModifier, QPoint(170, 12));
    }
    void pressRow(int row, Qt::MouseButton button = Qt::LeftButton)
    {
        list().scrollToItem(list().item(row));
        // Onto the row's widget, as it lies above the list.
        QTest::mouseClick(list().itemWidget(list().item(row)), button);
    }

    ZvImageComboBox *combo;
};

ZvImageItem *headerOf(ZvImageComboBox &combo)
{
    return combo.findChild<ZvImageItem *>();
}

/// A combo of a host's that looks at its own state and chooses another share for the graphic.
class HostCombo : public ZvImageComboBox
{
public:
    using ZvImageComboBox::arrowRect;
    using ZvImageComboBox::frameColor;
    using ZvImageComboBox::ratio;
    using ZvImageComboBox::ZvImageComboBox;
};

/// A row that draws its graphic itself.
class HostItem : public ZvImageItem
{
public:
    using ZvImageItem::ZvImageItem;

protected:
    void drawGraphic(QPainter *painter, const QRect &rect, QString &) override { painter->fillRect(rect, Qt::cyan); }
};

/// The colour of the picture in the closed box; invalid for none.
QColor headerColor(ZvImageComboBox &combo)
{
    ZvImageItem *header = headerOf(combo);
    return header ? header->pixmap.toImage().pixelColor(10, 10) : QColor();
}

void hover(QWidget &widget, bool over)
{
    QEvent event(over ? QEvent::Enter : QEvent::Leave);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

class TestImageComboBox : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void signalsAndSlotsAreFoundByName_data();
    void signalsAndSlotsAreFoundByName();
    void closedBoxIsLaidOut();
    void listIsTheParentsAndGoesWithTheCombo();
    void comboWithoutParent();
    void comboOutlivesItsList();
    void looksAreTheseStyleSheets_data();
    void looksAreTheseStyleSheets();
    void closedBoxIsPainted_data();
    void closedBoxIsPainted();
    void arrowPlaceFollowsTheSize();
    void arrowStaysVisibleBesideThePicture();
    void itemTellsItsRectangle_data();
    void itemTellsItsRectangle();
    void itemIsPainted_data();
    void itemIsPainted();
    void itemIsNotWipedBetweenPaintings();
    void itemIsPaintedOverItsStyle();
    void itemMayDrawItsGraphicItself();
    void itemWithoutRoom_data();
    void itemWithoutRoom();
    void rowsAreMadeInTheCombosSize();
    void rowsTakeTheCombosRatio();
    void onDrawTellsTheRow();
    void solidLine();
    void gradientColor();
    void gradientColorHasThePaintersOutline();
    void colorGrid();
    void listIsSetUp();
    void pressOpensAndCloses_data();
    void pressOpensAndCloses();
    void listIsAsHighAsItsRows_data();
    void listIsAsHighAsItsRows();
    void listLiesBelowTheComboAndAboveTheRest();
    void rowPressShowsThePicture_data();
    void rowPressShowsThePicture();
    void headerDrawsNothingOfItsOwn();
    void onePictureInTheProcess();
    void setCurrentItemShowsRows_data();
    void setCurrentItemShowsRows();
    void rowsFrom256OnCannotBeSet();
    void cloneOfTheHeaderItself();
    void badItemsAreIgnored();
    void rowDeletedFromOutside();
    void wheelScrollsTheList();
    void escapeClosesTheList();
    void keyboardOpensPicksAndCloses_data();
    void keyboardOpensPicksAndCloses();
    void otherKeysGoOn();
    void keyboardIsSeen();
    void rowsAreReadByTheirNames();
};

void TestImageComboBox::signalsAndSlotsAreFoundByName_data()
{
    QTest::addColumn<MetaType>("type");
    QTest::addColumn<QStringList>("methods");
    QTest::newRow("the combo") << MetaType(&ZvImageComboBox::staticMetaObject)
                               << signaturesOf({"onDraw(QWidget*,QPainter*,QRect,QString&)", "itemChanged(QWidget*)",
                                                "colorItemSelected(QWidget*)"});
    QTest::newRow("a row") << MetaType(&ZvImageItem::staticMetaObject)
                           << signaturesOf({"drawLocalGraphic(QPainter*,QRect,QString&)"});
    QTest::newRow("the list") << MetaType(&ZvImageVew::staticMetaObject)
                              << signaturesOf({"colorItemSelected(QWidget*)"});
}

void TestImageComboBox::signalsAndSlotsAreFoundByName()
{
    QFETCH(MetaType, type);
    QFETCH(QStringList, methods);
    QCOMPARE(ownMethods(*type), methods);
}

void TestImageComboBox::closedBoxIsLaidOut()
{
    Form form;
    auto *whole = qobject_cast<QHBoxLayout *>(form.combo->layout());
    QVERIFY(whole);
    QCOMPARE(whole->objectName(), QStringLiteral("m_phorizontalLayout"));
    const QStringList names = {QStringLiteral("m_pItemErea"), QStringLiteral("m_pBtnErea")};
    const int stretches[] = {3, 1};
    QCOMPARE(whole->count(), 2);
    for (int i = 0; i < 2; ++i) {
        auto *part = qobject_cast<QHBoxLayout *>(whole->itemAt(i)->layout());
        QVERIFY(part);
        QCOMPARE(part->objectName(), names[i]);
        QCOMPARE(whole->stretch(i), stretches[i]);
        QCOMPARE(part->contentsMargins(), QMargins());
        QCOMPARE(part->parentWidget(), form.combo);
    }
    QCOMPARE(whole->contentsMargins(), QMargins());
}

void TestImageComboBox::listIsTheParentsAndGoesWithTheCombo()
{
    Form form;
    QCOMPARE(form.view().parentWidget(), &form);
    QVERIFY(!form.view().isVisible());
    QVERIFY(form.view().windowFlags() & Qt::FramelessWindowHint);
    QVERIFY(!form.view().isWindow());
    QCOMPARE(form.view().geometry(), QRect(0, 0, 100, 100));
    form.addRows({"red"});
    delete form.combo;
    QVERIFY(!form.findChild<ZvImageVew *>());
}

void TestImageComboBox::comboWithoutParent()
{
    ZvImageComboBox combo(nullptr);
    combo.setGeometry(40, 50, 120, 25);
    combo.createCustomItem(QStringLiteral("row"), ZvImageComboBox::kItemShown);
    combo.show();
    QVERIFY(QTest::qWaitForWindowExposed(&combo));
    QTest::mouseClick(&combo, Qt::LeftButton);
    ZvImageVew *view = nullptr;
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        if (auto *candidate = qobject_cast<ZvImageVew *>(widget))
            view = candidate;
    }
    QVERIFY(view && view->isVisible());
    QCOMPARE(view->pos(), combo.pos() + QPoint(0, 25));
    // The fixture looks whether the list goes with the combo.
}

void TestImageComboBox::comboOutlivesItsList()
{
    auto form = std::make_unique<Form>();
    const std::unique_ptr<ZvImageComboBox> combo(form->combo);
    form->addRows({"red"});
    combo->setParent(nullptr);
    form.reset();
    combo->createCustomItem(QStringLiteral("blue"), ZvImageComboBox::kItemShown);
    combo->setCurrentItem(0);
    combo->show();
    QTest::mouseClick(combo.get(), Qt::LeftButton);
    QVERIFY(!headerOf(*combo));
}

enum Look { kPlain, kUnderThePointer, kPressed, kPressedAndLeft };
Q_DECLARE_METATYPE(Look)

static void takeOn(Look look, ZvImageComboBox &combo)
{
    if (look != kPlain)
        hover(combo, true);
    if (look == kPressed || look == kPressedAndLeft)
        QTest::mousePress(&combo, Qt::LeftButton);
    if (look == kPressedAndLeft)
        hover(combo, false);
    // The pressed look stays when the button goes up.
    QTest::mouseRelease(&combo, Qt::LeftButton);
}

void TestImageComboBox::looksAreTheseStyleSheets_data()
{
    QTest::addColumn<Look>("look");
    QTest::addColumn<QString>("styleSheet");
    QTest::addColumn<QRgb>("frame");
    const QString plain
        = QStringLiteral("border-style:solid; border-width:1px;border-color:rgb(205, 205, 205); border-radius:1px;");
    QTest::newRow("plain") << kPlain << plain << kGrey;
    QTest::newRow("under the pointer")
        << kUnderThePointer << "border-style:solid; border-width:1px;border-color:rgb(13, 124, 211); border-radius:1px;"
        << kBlue;
    QTest::newRow("pressed") << kPressed
                             << "background-color:rgb(204, 228, 247);border-style:solid; "
                                "border-width:1px;border-color:rgb(13, 124, 211); border-radius:1px;"
                             << kBlue;
    QTest::newRow("pressed and left") << kPressedAndLeft << plain << kGrey;
}

void TestImageComboBox::looksAreTheseStyleSheets()
{
    QFETCH(Look, look);
    QFETCH(QString, styleSheet);
    QFETCH(QRgb, frame);
    QWidget window;
    auto *combo = new HostCombo(&window);
    takeOn(look, *combo);
    QCOMPARE(combo->styleSheet(), styleSheet);
    QCOMPARE(combo->frameColor.rgb(), frame);
}

void TestImageComboBox::closedBoxIsPainted_data()
{
    QTest::addColumn<Look>("look");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRgb>("frame");
    QTest::addColumn<QRgb>("background");
    for (const QSize size : {QSize(180, 25), QSize(60, 40), QSize(22, 12)}) {
        QTest::addRow("plain, %dx%d", size.width(), size.height()) << kPlain << size << kGrey << kWhite;
        QTest::addRow("under the pointer, %dx%d", size.width(), size.height())
            << kUnderThePointer << size << kBlue << kWhite;
        QTest::addRow("pressed, %dx%d", size.width(), size.height()) << kPressed << size << kBlue << kLightBlue;
        QTest::addRow("pressed and left, %dx%d", size.width(), size.height())
            << kPressedAndLeft << size << kGrey << kWhite;
    }
}

void TestImageComboBox::closedBoxIsPainted()
{
    QFETCH(Look, look);
    QFETCH(QSize, size);
    QFETCH(QRgb, frame);
    QFETCH(QRgb, background);
    QWidget window;
    auto *combo = new ZvImageComboBox(&window);
    combo->resize(size);
    takeOn(look, *combo);

    const QImage actual = pictureOf(combo);
    QImage expected(size, QImage::Format_RGB32);
    expected.fill(background);
    // The arrow, through the same painter as text has to be.
    {
        QPainter painter(&expected);
        painter.setFont(combo->font());
        painter.setPen(QColor(frame));
        const QRect arrow(QPoint(size.width() - 21, 0), QPoint(size.width(), size.height()));
        painter.drawText(QRectF(arrow), QString::fromLatin1("\xD0\xB4\xD1\x83"),
                         QTextOption(Qt::AlignHCenter | Qt::AlignVCenter));
    }
    // Rows and columns inside the border: the style cuts its corners.
    const int line = size.width() - 21;
    for (int y = 2; y < size.height() - 2; ++y) {
        expected.setPixel(0, y, frame);
        if (line > 0)
            expected.setPixel(line, y, frame);
    }
    for (int x = 2; x < size.width() - 2; ++x) {
        if (!QRect(line, 0, 22, size.height() + 1).contains(x, 0)) {
            expected.setPixel(x, 0, frame);
            expected.setPixel(x, size.height() - 1, frame);
        }
    }
    // The arrow's letters may reach over the border of a small box.
    const QRect compared = QRect(QPoint(0, 0), size).adjusted(2, 2, -2, -2);
    COMPARE_PICTURES(actual.copy(compared), expected.copy(compared));
    const QRect left(0, 2, 2, size.height() - 4);
    COMPARE_PICTURES(actual.copy(left), expected.copy(left));
    const QRect top(2, 0, line - 2, 1);
    if (top.isValid())
        COMPARE_PICTURES(actual.copy(top), expected.copy(top));
}

void TestImageComboBox::arrowPlaceFollowsTheSize()
{
    HostCombo combo(nullptr);
    combo.resize(180, 25);
    pictureOf(&combo); // so that it hears of its size
    QCOMPARE(combo.arrowRect, QRect(QPoint(159, 0), QPoint(180, 25)));
    combo.resize(60, 40);
    pictureOf(&combo);
    QCOMPARE(combo.arrowRect, QRect(QPoint(39, 0), QPoint(60, 40)));
}

void TestImageComboBox::arrowStaysVisibleBesideThePicture()
{
    Form form;
    form.addRows({"red"});
    QVERIFY(form.isShown());
    form.combo->createCustomItem(QStringLiteral("red"), ZvImageComboBox::kItemShown);
    form.open();
    const QImage before = form.combo->grab().toImage();
    form.pressRow(0);
    QTRY_VERIFY(headerOf(*form.combo)->isVisible());
    const QImage after = form.combo->grab().toImage();
    const QRect arrow(160, 1, 18, 23);
    COMPARE_PICTURES(after.copy(arrow), before.copy(arrow));
    QVERIFY(after.pixelColor(10, 12) == QColor(Qt::red));
}

void TestImageComboBox::itemTellsItsRectangle_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<float>("ratio");
    QTest::addColumn<QRect>("graphic");
    QTest::newRow("100 by 23") << QSize(100, 23) << 0.4f << QRect(QPoint(2, 1), QPoint(37, 21));
    QTest::newRow("158 by 23, cut to whole pixels") << QSize(158, 23) << 0.4f << QRect(QPoint(2, 1), QPoint(60, 21));
    QTest::newRow("half") << QSize(100, 20) << 0.5f << QRect(QPoint(2, 1), QPoint(47, 18));
    QTest::newRow("all") << QSize(100, 20) << 1.0f << QRect(QPoint(2, 1), QPoint(97, 18));
    QTest::newRow("nothing") << QSize(100, 20) << 0.0f << QRect(QPoint(2, 1), QPoint(-3, 18));
    QTest::newRow("one pixel") << QSize(1, 1) << 0.4f << QRect(QPoint(2, 1), QPoint(-2, -1));
}

void TestImageComboBox::itemTellsItsRectangle()
{
    QFETCH(QSize, size);
    QFETCH(float, ratio);
    QFETCH(QRect, graphic);
    ZvImageItem item(size.width(), size.height(), nullptr);
    item.ratio = ratio;
    QRect told;
    QString text = QStringLiteral("before");
    int calls = 0;
    connect(&item, &ZvImageItem::drawLocalGraphic, &item, [&](QPainter *painter, const QRect &rect, QString &slotText) {
        told = rect;
        text = slotText;
        ++calls;
        QCOMPARE(painter->device(), static_cast<QPaintDevice *>(&item.pixmap));
    });
    item.resize(size);
    pictureOf(&item);
    QCOMPARE(calls, 1);
    QCOMPARE(told, graphic);
    QCOMPARE(text, QString());
}

void TestImageComboBox::itemIsPainted_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<QRect>("textPlace");
    QTest::addColumn<QString>("text");
    QTest::newRow("graphic and text") << QSize(100, 23) << QRect(QPoint(44, 0), QPoint(99, 22)) << "Wall";
    QTest::newRow("text cut at the end") << QSize(100, 23) << QRect(QPoint(44, 0), QPoint(99, 22))
                                         << "A rather long name of something";
    QTest::newRow("158 wide") << QSize(158, 23) << QRect(QPoint(67, 0), QPoint(156, 22)) << "Wall";
    QTest::newRow("no text") << QSize(158, 23) << QRect(QPoint(67, 0), QPoint(156, 22)) << "";
}

void TestImageComboBox::itemIsPainted()
{
    QFETCH(QSize, size);
    QFETCH(QRect, textPlace);
    QFETCH(QString, text);
    ZvImageItem item(size.width(), size.height(), nullptr);
    connect(&item, &ZvImageItem::drawLocalGraphic, &item, [&](QPainter *painter, const QRect &rect, QString &slotText) {
        painter->fillRect(rect, Qt::green);
        painter->setPen(Qt::darkRed); // the text's too
        slotText = text;
    });
    item.resize(size);
    const QImage actual = pictureOf(&item);

    QPixmap words(size);
    words.fill(Qt::transparent);
    {
        QPainter painter(&words);
        painter.setPen(Qt::darkRed);
        painter.drawText(textPlace, 129, text);
    }
    QImage expected(size, QImage::Format_RGB32);
    expected.fill(Qt::white);
    {
        QPainter painter(&expected);
        painter.drawPixmap(0, 1, words);
    }
    // One pixel lower than drawn; 2 to the graphic's right end.
    setPixels(expected, 2, 2, int(size.width() * 0.4 - 4) + 1, size.height() - 1, qRgb(0, 255, 0));
    COMPARE_PICTURES(actual, expected);
    QCOMPARE(QImage(words.toImage()).isNull(), false);
}

void TestImageComboBox::itemIsNotWipedBetweenPaintings()
{
    ZvImageItem item(100, 23, nullptr);
    QVector<QColor> colors = {Qt::red, Qt::blue};
    connect(&item, &ZvImageItem::drawLocalGraphic, &item, [&](QPainter *painter, const QRect &rect, QString &) {
        // The second time only the left half.
        const QRect part = colors.size() == 2 ? rect : QRect(rect.topLeft(), QSize(10, rect.height()));
        painter->fillRect(part, colors.takeFirst());
    });
    item.resize(100, 23);
    pictureOf(&item);
    const QImage second = pictureOf(&item);
    QCOMPARE(second.pixelColor(5, 10), QColor(Qt::blue));
    QCOMPARE(second.pixelColor(30, 10), QColor(Qt::red));
}

void TestImageComboBox::itemIsPaintedOverItsStyle()
{
    ZvImageItem item(100, 23, nullptr);
    item.setStyleSheet(QStringLiteral("background-color:rgb(10, 200, 20);"));
    connect(&item, &ZvImageItem::drawLocalGraphic, &item,
            [](QPainter *painter, const QRect &rect, QString &) { painter->fillRect(rect, Qt::red); });
    item.resize(100, 23);
    QImage expected(100, 23, QImage::Format_RGB32);
    expected.fill(qRgb(10, 200, 20));
    setPixels(expected, 2, 2, 37, 22, qRgb(255, 0, 0));
    COMPARE_PICTURES(pictureOf(&item), expected);
}

void TestImageComboBox::itemMayDrawItsGraphicItself()
{
    HostItem item(100, 23, nullptr);
    int asked = 0;
    connect(&item, &ZvImageItem::drawLocalGraphic, &item, [&asked] { ++asked; });
    item.resize(100, 23);
    QImage expected(100, 23, QImage::Format_RGB32);
    expected.fill(Qt::white);
    setPixels(expected, 2, 2, 37, 22, qRgb(0, 255, 255));
    COMPARE_PICTURES(pictureOf(&item), expected);
    QCOMPARE(asked, 0);
}

void TestImageComboBox::itemWithoutRoom_data()
{
    QTest::addColumn<QSize>("size");
    QTest::newRow("no width") << QSize(0, 20);
    QTest::newRow("no height") << QSize(20, 0);
    QTest::newRow("negative") << QSize(-22, -2);
}

void TestImageComboBox::itemWithoutRoom()
{
    QFETCH(QSize, size);
    ZvImageItem item(size.width(), size.height(), nullptr);
    int drawn = 0;
    connect(&item, &ZvImageItem::drawLocalGraphic, &item, [&drawn] { ++drawn; });
    item.resize(30, 20);
    QImage expected(30, 20, QImage::Format_RGB32);
    expected.fill(Qt::white);
    COMPARE_PICTURES(pictureOf(&item), expected);
    QCOMPARE(drawn, 0);
}

void TestImageComboBox::rowsAreMadeInTheCombosSize()
{
    Form form;
    form.addRows({"red"});
    form.combo->resize(240, 40);
    form.combo->createCustomItem(QStringLiteral("blue"), ZvImageComboBox::kItemPickedOnly);
    const ZvImageItem *first = form.view().itemAt(0);
    const ZvImageItem *second = form.view().itemAt(1);
    QCOMPARE(QSize(first->itemWidth, first->itemHeight), QSize(158, 23));
    QCOMPARE(first->pixmap.size(), QSize(158, 23));
    QCOMPARE(QSize(second->itemWidth, second->itemHeight), QSize(218, 38));
    QCOMPARE(first->objectName(), QStringLiteral("red"));
    QCOMPARE(first->ratio, 0.4f);
    QCOMPARE(first->mode, ZvImageComboBox::kItemShown);
    QCOMPARE(second->mode, ZvImageComboBox::kItemPickedOnly);
    QCOMPARE(form.list().item(0)->data(Qt::UserRole).toInt(), 0);
    QCOMPARE(form.list().item(0)->data(Qt::SizeHintRole).toSize(), QSize(100, 23));
    // The list's width counts for the rows that come after.
    QTest::mouseClick(form.combo, Qt::LeftButton);
    QTest::mouseClick(form.combo, Qt::LeftButton);
    form.show();
    form.press();
    form.combo->createCustomItem(QStringLiteral("green"), ZvImageComboBox::kItemShown);
    QCOMPARE(form.list().item(2)->data(Qt::SizeHintRole).toSize(), QSize(240, 23));
}

void TestImageComboBox::rowsTakeTheCombosRatio()
{
    QWidget window;
    auto *combo = new HostCombo(&window);
    const auto *view = window.findChild<ZvImageVew *>();
    QCOMPARE(combo->ratio, 0.4f);
    combo->createCustomItem(QStringLiteral("first"), ZvImageComboBox::kItemShown);
    combo->ratio = 0.7f;
    combo->createCustomItem(QStringLiteral("second"), ZvImageComboBox::kItemShown);
    QCOMPARE(view->itemAt(0)->ratio, 0.4f);
    QCOMPARE(view->itemAt(1)->ratio, 0.7f);
}

void TestImageComboBox::onDrawTellsTheRow()
{
    Form form;
    form.addRows({"red", "blue"});
    QWidget *told = nullptr;
    connect(form.combo, &ZvImageComboBox::onDraw, form.combo, [&](QWidget *item) { told = item; });
    pictureOf(form.view().itemAt(1));
    QCOMPARE(told, form.view().itemAt(1));
    QCOMPARE(form.view().itemAt(1)->pixmap.toImage().pixelColor(10, 10), QColor(Qt::blue));
}

void TestImageComboBox::solidLine()
{
    Form form;
    QImage actual(60, 20, QImage::Format_RGB32);
    actual.fill(Qt::white);
    QImage expected = actual;
    QString text = QStringLiteral("kept");
    {
        QPainter painter(&actual);
        painter.setPen(Qt::red);
        form.combo->drawSolidLine(&painter, QRect(5, 3, 40, 12), text);
    }
    setPixels(expected, 5, 8, 44, 8, qRgb(255, 0, 0)); // (3 + 14) / 2
    COMPARE_PICTURES(actual, expected);
    QCOMPARE(text, QStringLiteral("kept"));
}

void TestImageComboBox::gradientColor()
{
    Form form;
    QImage actual(120, 20, QImage::Format_RGB32);
    actual.fill(Qt::white);
    QImage expected = actual;
    QString text;
    const QRect rect(5, 3, 101, 12);
    {
        QPainter painter(&actual);
        painter.setPen(Qt::NoPen);
        form.combo->drawGradientColor(&painter, rect, text);
        QCOMPARE(painter.brush().style(), Qt::LinearGradientPattern);
    }
    const struct
    {
        double at;
        QRgb color;
    } stops[] = {{0.2, qRgb(160, 160, 164)},
                 {0.4, qRgb(0, 255, 0)},
                 {0.6, qRgb(255, 0, 0)},
                 {0.8, qRgb(255, 0, 255)},
                 {1.0, qRgb(0, 0, 0)}};
    for (int x = rect.left(); x <= rect.right(); ++x) {
        const double t = (x + 0.5 - rect.left()) / (rect.right() - rect.left());
        QRgb color = t <= 0.2 ? stops[0].color : stops[4].color;
        for (int i = 1; i < 5; ++i) {
            if (t > stops[i - 1].at && t <= stops[i].at)
                color = mixed(stops[i - 1].color, stops[i].color, (t - stops[i - 1].at) / 0.2);
        }
        setPixels(expected, x, rect.top(), x, rect.bottom(), color);
    }
    COMPARE_PICTURES_WITHIN(actual, expected, 3);
}

void TestImageComboBox::gradientColorHasThePaintersOutline()
{
    Form form;
    QImage actual(60, 20, QImage::Format_RGB32);
    actual.fill(Qt::white);
    QString text;
    {
        QPainter painter(&actual);
        painter.setPen(QColor(1, 2, 3));
        form.combo->drawGradientColor(&painter, QRect(5, 3, 40, 12), text);
    }
    QImage expected = actual;
    setOutline(expected, 5, 3, 45, 15, qRgb(1, 2, 3)); // one pixel beyond at the right and below
    COMPARE_PICTURES(actual, expected);
    QCOMPARE(QColor(actual.pixel(46, 8)), QColor(Qt::white));
}

void TestImageComboBox::colorGrid()
{
    Form form;
    QImage actual(60, 20, QImage::Format_RGB32);
    actual.fill(Qt::white);
    QImage expected = actual;
    QString text;
    QColor color(10, 20, 30);
    {
        QPainter painter(&actual);
        form.combo->drawColorGrid(&painter, QRect(5, 3, 40, 12), color, text);
    }
    setPixels(expected, 5, 3, 44, 14, qRgb(10, 20, 30));
    COMPARE_PICTURES(actual, expected);
}

void TestImageComboBox::listIsSetUp()
{
    QWidget window;
    const ZvImageVew view(&window);
    const auto *list = view.findChild<QListWidget *>();
    QVERIFY(list && list->parent() == &view);
    QCOMPARE(list->geometry(), QRect(QPoint(0, 0), QPoint(view.width() - 1, -1)));
    QCOMPARE(list->viewMode(), QListView::ListMode);
    QCOMPARE(list->spacing(), 1);
    QCOMPARE(list->resizeMode(), QListView::Adjust);
}

void TestImageComboBox::pressOpensAndCloses_data()
{
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::newRow("left button") << Qt::LeftButton;
    QTest::newRow("right button") << Qt::RightButton;
    QTest::newRow("middle button") << Qt::MiddleButton;
}

void TestImageComboBox::pressOpensAndCloses()
{
    QFETCH(Qt::MouseButton, button);
    Form form;
    form.addRows({"red"});
    QVERIFY(form.isShown());
    for (int i = 0; i < 3; ++i) {
        form.press(button);
        QVERIFY(form.view().isVisible());
        form.press(button);
        QVERIFY(!form.view().isVisible());
    }
}

void TestImageComboBox::listIsAsHighAsItsRows_data()
{
    QTest::addColumn<int>("rows");
    QTest::addColumn<int>("height");
    QTest::newRow("an empty list opens with height 0") << 0 << 0;
    QTest::newRow("1 row") << 1 << 23;
    QTest::newRow("7 rows") << 7 << 161;
    QTest::newRow("8 rows are 180 high, not 184") << 8 << 180;
    QTest::newRow("50 rows") << 50 << 180;
}

void TestImageComboBox::listIsAsHighAsItsRows()
{
    QFETCH(int, rows);
    QFETCH(int, height);
    Form form;
    for (int i = 0; i < rows; ++i)
        form.addRows({"red"});
    QVERIFY(form.isShown());
    form.press();
    QVERIFY(form.view().isVisible());
    QCOMPARE(form.view().geometry(), QRect(10, 35, 180, height));
    QCOMPARE(form.list().size(), form.view().size());
}

void TestImageComboBox::listLiesBelowTheComboAndAboveTheRest()
{
    Form form;
    form.addRows({"red", "red"});
    QWidget cover(&form);
    cover.setGeometry(0, 35, 320, 200);
    QVERIFY(form.isShown());
    form.press();
    QVERIFY(form.view().isAncestorOf(form.childAt(30, 45)));
    form.press();
    form.combo->move(50, 100);
    form.combo->resize(120, 30);
    form.press();
    QCOMPARE(form.view().geometry(), QRect(50, 130, 120, 46));
}

void TestImageComboBox::rowPressShowsThePicture_data()
{
    QTest::addColumn<ZvImageComboBox::ItemModeEx>("mode");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<bool>("shows");
    QTest::newRow("mode 0") << ZvImageComboBox::kItemShown << Qt::LeftButton << true;
    QTest::newRow("mode 0, right button") << ZvImageComboBox::kItemShown << Qt::RightButton << true;
    QTest::newRow("mode 1 leaves the closed box") << ZvImageComboBox::kItemPickedOnly << Qt::LeftButton << false;
    QTest::newRow("another mode") << ZvImageComboBox::ItemModeEx(7) << Qt::LeftButton << false;
}

void TestImageComboBox::rowPressShowsThePicture()
{
    QFETCH(ZvImageComboBox::ItemModeEx, mode);
    QFETCH(Qt::MouseButton, button);
    QFETCH(bool, shows);
    Form form;
    form.addRows({"red"});
    form.addRows({"blue"}, mode);
    QVERIFY(form.isShown());
    form.open();
    form.pressRow(0);
    QCOMPARE(headerColor(*form.combo), QColor(Qt::red));
    const QSignalSpy changed(form.combo, &ZvImageComboBox::itemChanged);
    form.pressRow(1, button);
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).value<QWidget *>(), form.view().itemAt(1));
    QCOMPARE(headerColor(*form.combo), QColor(shows ? Qt::blue : Qt::red));
    QVERIFY(form.view().isVisible()); // till the next press on the combo
    form.pressRow(1, button);
    QCOMPARE(changed.size(), 2);
}

void TestImageComboBox::headerDrawsNothingOfItsOwn()
{
    Form form;
    form.addRows({"red"});
    QVERIFY(form.isShown());
    form.open();
    form.pressRow(0);
    ZvImageItem *header = headerOf(*form.combo);
    QTRY_VERIFY(header->isVisible());
    int drawn = 0;
    connect(form.combo, &ZvImageComboBox::onDraw, form.combo, [&drawn] { ++drawn; });
    const QImage before = header->pixmap.toImage();
    COMPARE_PICTURES(before, form.view().itemAt(0)->pixmap.toImage());
    pictureOf(header);
    COMPARE_PICTURES(header->pixmap.toImage(), before);
    QCOMPARE(QSize(header->itemWidth, header->itemHeight), QSize(158, 23));
    QCOMPARE(drawn, 0);
    // A press on the picture is one on the combo.
    QTest::mouseClick(header, Qt::LeftButton);
    QVERIFY(!form.view().isVisible());
}

void TestImageComboBox::onePictureInTheProcess()
{
    Form first;
    Form second;
    first.addRows({"red"});
    second.addRows({"blue"});
    QVERIFY(first.isShown());
    first.open();
    first.pressRow(0);
    QCOMPARE(headerColor(*first.combo), QColor(Qt::red));
    QVERIFY(second.isShown());
    second.open();
    second.pressRow(0);
    QVERIFY(!headerOf(*first.combo));
    QCOMPARE(headerColor(*second.combo), QColor(Qt::blue));
    first.combo->setCurrentItem(0);
    QVERIFY(headerOf(*first.combo));
    QVERIFY(!headerOf(*second.combo));
    // The one with the picture may go.
    delete first.combo;
    second.combo->setCurrentItem(0);
    QVERIFY(headerOf(*second.combo));
}

void TestImageComboBox::setCurrentItemShowsRows_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QString>("shown");
    QTest::newRow("first") << 0 << "#00ff00";
    QTest::newRow("last that can be shown") << 1 << "#0000ff";
    QTest::newRow("mode 1 is ignored") << 2 << "#ff0000";
    QTest::newRow("negative") << -1 << "#ff0000";
    QTest::newRow("past the last row") << 3 << "#ff0000";
    QTest::newRow("the number of colours") << 256 << "#ff0000";
    QTest::newRow("far away") << 2147483647 << "#ff0000";
}

void TestImageComboBox::setCurrentItemShowsRows()
{
    QFETCH(int, index);
    QFETCH(QString, shown);
    Form form;
    form.addRows({"#00ff00", "#0000ff"});
    form.addRows({"#123456"}, ZvImageComboBox::kItemPickedOnly);
    QVERIFY(form.isShown());
    form.press(); // so that the rows are drawn
    QTRY_COMPARE(form.view().itemAt(1)->pixmap.toImage().pixelColor(10, 10), QColor(Qt::blue));
    ZvImageItem red(158, 23, nullptr);
    red.pixmap.fill(Qt::red);
    form.combo->cloneItem2Header(&red);
    const QSignalSpy changed(form.combo, &ZvImageComboBox::itemChanged);
    form.combo->setCurrentItem(index);
    QCOMPARE(headerColor(*form.combo), QColor(shown));
    QCOMPARE(changed.size(), 0);
}

void TestImageComboBox::rowsFrom256OnCannotBeSet()
{
    Form form;
    for (int i = 0; i < 258; ++i)
        form.addRows({"red"});
    form.combo->setCurrentItem(256);
    QVERIFY(!headerOf(*form.combo));
    form.combo->setCurrentItem(255);
    QVERIFY(headerOf(*form.combo));
}

void TestImageComboBox::cloneOfTheHeaderItself()
{
    Form form;
    ZvImageItem red(158, 23, nullptr);
    red.pixmap.fill(Qt::red);
    form.combo->cloneItem2Header(&red);
    form.combo->cloneItem2Header(headerOf(*form.combo));
    QCOMPARE(headerColor(*form.combo), QColor(Qt::red));
}

void TestImageComboBox::badItemsAreIgnored()
{
    Form form;
    form.combo->cloneItem2Header(nullptr);
    QVERIFY(!headerOf(*form.combo));
    form.view().addItem(nullptr);
    QCOMPARE(form.list().count(), 0);
    QVERIFY(!form.view().itemAt(0) && !form.view().itemAt(-1));
    // What is no item is told all the same.
    const QSignalSpy changed(form.combo, &ZvImageComboBox::itemChanged);
    QWidget other;
    form.combo->colorItemSelected(&other);
    form.combo->colorItemSelected(nullptr);
    QCOMPARE(changed.size(), 2);
    QVERIFY(!headerOf(*form.combo));
}

void TestImageComboBox::rowDeletedFromOutside()
{
    Form form;
    form.addRows({"red", "blue"});
    delete form.view().itemAt(0);
    form.combo->setCurrentItem(0);
    QVERIFY(!headerOf(*form.combo));
    form.combo->setCurrentItem(1);
    QVERIFY(headerOf(*form.combo));
}

void TestImageComboBox::wheelScrollsTheList()
{
    Form form;
    for (int i = 0; i < 30; ++i)
        form.addRows({"red"});
    QVERIFY(form.isShown());
    form.press();
    const QSignalSpy changed(form.combo, &ZvImageComboBox::itemChanged);
    QTRY_VERIFY(form.list().verticalScrollBar()->maximum() > 0);
    const QPointF place(10, 10);
    const auto turn = [&](QWidget *widget) {
        QWheelEvent event(place, widget->mapToGlobal(place.toPoint()), QPoint(), QPoint(0, -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(widget, &event);
    };
    turn(form.list().viewport());
    QVERIFY(form.list().verticalScrollBar()->value() > 0);
    // Over the closed box it turns nothing.
    form.press();
    turn(form.combo);
    QVERIFY(!form.view().isVisible());
    QCOMPARE(changed.size(), 0);
}

void TestImageComboBox::escapeClosesTheList()
{
    Form form;
    form.addRows({"red"});
    QVERIFY(form.isShown());
    form.press();
    QVERIFY(form.view().isVisible());
    QVERIFY(QApplication::focusWidget()
            && (form.view().hasFocus() || form.view().isAncestorOf(QApplication::focusWidget())));
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!form.view().isVisible());
    form.press();
    QVERIFY(form.view().isVisible());
}

void TestImageComboBox::keyboardOpensPicksAndCloses_data()
{
    QTest::addColumn<int>("opening");
    QTest::addColumn<int>("picking");
    QTest::newRow("Space, Return") << int(Qt::Key_Space) << int(Qt::Key_Return);
    QTest::newRow("Down, Return") << int(Qt::Key_Down) << int(Qt::Key_Return);
    QTest::newRow("F4, Enter") << int(Qt::Key_F4) << int(Qt::Key_Enter);
}

void TestImageComboBox::keyboardOpensPicksAndCloses()
{
    QFETCH(int, opening);
    QFETCH(int, picking);
    Form form;
    form.addRows({"red", "blue"});
    auto *before = new QLineEdit(&form);
    form.setTabOrder(before, form.combo);
    QVERIFY(form.isShown());
    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    QVERIFY(form.combo->hasFocus());
    QTest::keyClick(form.combo, Qt::Key(opening));
    QVERIFY(form.view().isVisible());
    QTRY_VERIFY(form.view().itemAt(1)->pixmap.toImage().pixelColor(10, 10).alpha() == 255);
    const QSignalSpy changed(form.combo, &ZvImageComboBox::itemChanged);
    QCOMPARE(form.list().currentRow(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Down);
    QCOMPARE(changed.size(), 0);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key(picking));
    QCOMPARE(changed.size(), 1);
    QCOMPARE(changed.at(0).at(0).value<QWidget *>(), form.view().itemAt(1));
    QCOMPARE(headerColor(*form.combo), QColor(Qt::blue));
    QVERIFY(form.view().isVisible());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Escape);
    QVERIFY(!form.view().isVisible());
    QVERIFY(form.combo->hasFocus());
}

void TestImageComboBox::otherKeysGoOn()
{
    Form form;
    form.addRows({"red"});
    QVERIFY(form.isShown());
    for (const int key : {Qt::Key_A, Qt::Key_Return, Qt::Key_Escape}) {
        QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
        event.accept();
        QApplication::sendEvent(form.combo, &event);
        QVERIFY(!event.isAccepted());
        QVERIFY(!form.view().isVisible());
    }
}

void TestImageComboBox::keyboardIsSeen()
{
    Form form;
    auto *before = new QLineEdit(&form);
    form.setTabOrder(before, form.combo);
    QVERIFY(form.isShown());
    const QImage without = pictureOf(form.combo);
    before->setFocus();
    QTest::keyClick(before, Qt::Key_Tab);
    QVERIFY(form.combo->hasFocus());
    const QImage with = pictureOf(form.combo);
    QVERIFY(!firstDifference(with, without).isEmpty());
    // The arrow's part is left alone.
    const QRect arrow(159, 0, 21, 25);
    COMPARE_PICTURES(with.copy(arrow), without.copy(arrow));
}

void TestImageComboBox::rowsAreReadByTheirNames()
{
    Form form;
    form.addRows({"red", "blue"});
    QVERIFY(form.isShown());
    form.open();
    QAccessibleInterface *list = QAccessible::queryAccessibleInterface(&form.list());
    QVERIFY(list);
    QStringList names;
    for (int i = 0; i < list->childCount(); ++i) {
        if (list->child(i) && list->child(i)->role() == QAccessible::ListItem)
            names << list->child(i)->text(QAccessible::Name);
    }
    QCOMPARE(names, QStringList({"red", "blue"}));
}

ZEVA_TEST_MAIN(TestImageComboBox)
#include "tst_imagecombobox.moc"
