// SPDX-License-Identifier: MIT
#include "colordialoganswer.h"
#include "colordialogrun.h"
#include "metamethods.h"
#include "paintcount.h"
#include "zevatest.h"

#include "zvcolorbutton.h"
#include "zvqtcolorlabel.h"

#include <QHBoxLayout>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>

namespace {

ZvCmColor byIndex(int index)
{
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(index)); // 0 by block, 256 by layer
    return color;
}

ZvCmColor byRgb(int red, int green, int blue)
{
    ZvCmColor color;
    color.setRGB(std::uint8_t(red), std::uint8_t(green), std::uint8_t(blue));
    return color;
}

ZvCmColor byMethod(ZvCm::ColorMethod method)
{
    ZvCmColor color;
    color.setColorMethod(method);
    return color;
}

QPushButton *innerButton(const ZvColorButtonWidget &widget)
{
    return widget.findChild<QPushButton *>();
}

/// The tabs of the dialog that a control has opened.
ZvIndexColorWnd *indexTab(QDialog *dialog)
{
    return dialog->findChild<ZvIndexColorWnd *>();
}

QPushButton *buttonOf(QDialog *dialog, const QString &text)
{
    for (QPushButton *button : dialog->findChildren<QPushButton *>()) {
        if (button->text() == text)
            return button;
    }
    return nullptr;
}

void pressOk(QDialog *dialog)
{
    QTest::mouseClick(buttonOf(dialog, QStringLiteral("确定")), Qt::LeftButton);
}

} // namespace

Q_DECLARE_METATYPE(ZvCmColor)

class TestColorButton : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void methodsAreAsTold();
    void buttonIsAsTold();
    void colourIsKeptAndTellsNothing();
    void swatchIsPainted_data();
    void swatchIsPainted();
    void whatIsShownIsRepainted_data();
    void whatIsShownIsRepainted();
    void pictureHasABorder();
    void whatOpensTheDialog_data();
    void whatOpensTheDialog();
    void dialogShowsTheColour_data();
    void dialogShowsTheColour();
    void dialogIsAskedAsTold_data();
    void dialogIsAskedAsTold();
    void answersOfAnotherDialog_data();
    void answersOfAnotherDialog();
    void byLayerAndByBlockAreForbidden();
    void acceptedColourIsTaken_data();
    void acceptedColourIsTaken();
    void pickedCellIsTaken();
    void pickedTrueColourIsTaken();
    void cancelKeepsTheColour();
    void missingServiceKeepsTheColour();
    void deletedWhileTheDialogRuns();
    void labelShowsASquare();

private:
    QScopedPointer<ModuleSession> m_session;
    QScopedPointer<MessageBoxes> m_messages;
};

void TestColorButton::init()
{
    ZevaTest::init();
    m_session.reset(new ModuleSession);
    m_messages.reset(new MessageBoxes);
}

void TestColorButton::cleanup()
{
    m_messages.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void TestColorButton::methodsAreAsTold()
{
    QCOMPARE(ownMethods(ZvColorButtonWidget::staticMetaObject),
             signaturesOf({"colorChanged()", "slot_onInnerButtonClicked(bool)"}));
}

void TestColorButton::buttonIsAsTold()
{
    ZvColorButtonWidget widget(nullptr);
    auto *layout = qobject_cast<QHBoxLayout *>(widget.layout());
    QVERIFY(layout);
    QCOMPARE(layout->contentsMargins(), QMargins());
    QCOMPARE(layout->count(), 2);
    QVERIFY(layout->itemAt(0)->spacerItem());
    QCOMPARE(layout->itemAt(1)->alignment(), Qt::AlignRight);
    QCOMPARE(layout->itemAt(1)->widget(), innerButton(widget));
    widget.resize(200, 80);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCOMPARE(widget.height(), 25);
    QPushButton *button = innerButton(widget);
    QCOMPARE(button->text(), QStringLiteral("..."));
    QCOMPARE(button->size(), QSize(button->fontMetrics().horizontalAdvance(QStringLiteral("...")) + 5, 20));
    QCOMPARE(button->geometry().right(), widget.rect().right());
    QCOMPARE(widget.color(), ZvCmColor());
}

void TestColorButton::colourIsKeptAndTellsNothing()
{
    ZvColorButtonWidget widget(nullptr);
    const QSignalSpy spy(&widget, &ZvColorButtonWidget::colorChanged);
    widget.setColor(byIndex(5));
    widget.setViewStyle(99);
    QCOMPARE(widget.color(), byIndex(5));
    QCOMPARE(spy.size(), 0);
}

void TestColorButton::swatchIsPainted_data()
{
    QTest::addColumn<ZvCmColor>("color");
    QTest::addColumn<bool>("hover");
    QTest::addColumn<QColor>("inside");
    QTest::addColumn<QColor>("border");
    const QColor grey(191, 191, 191);
    const QColor blue(0, 120, 215);
    QTest::newRow("by index") << byIndex(1) << false << QColor(255, 0, 0) << grey;
    QTest::newRow("true colour") << byRgb(10, 20, 30) << false << QColor(10, 20, 30) << grey;
    QTest::newRow("true colour under the pointer") << byRgb(10, 20, 30) << true << QColor(10, 20, 30) << blue;
    QTest::newRow("by layer has no colour of its own") << byIndex(256) << false << QColor(0, 0, 0) << grey;
}

void TestColorButton::swatchIsPainted()
{
    QFETCH(ZvCmColor, color);
    QFETCH(bool, hover);
    QFETCH(QColor, inside);
    QFETCH(QColor, border);
    ZvColorButtonWidget widget(nullptr);
    widget.resize(100, 25);
    widget.setColor(color);
    innerButton(widget)->hide();
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    QApplication::sendEvent(&widget, &enter);
    if (!hover)
        QApplication::sendEvent(&widget, &leave);
    // The pen of two pixels lies with its middle on the edges 0 and 99, 0 and 24: it covers one pixel at the left and
    // at the top, and at the right and below the pixel before the edge and the one behind it. The bevel halves the one
    // corner that is not cut off.
    QImage expected(100, 25, QImage::Format_RGB32);
    expected.fill(border);
    setPixels(expected, 1, 1, 97, 22, inside.rgb());
    const auto half = [](int component) { return (component + 255) / 2; };
    expected.setPixel(99, 24, qRgb(half(border.red()), half(border.green()), half(border.blue())));
    COMPARE_PICTURES(pictureOf(&widget), expected);
}

enum Change { kColourSet, kPointerEnters, kPointerLeaves, kDialogAccepts, kDialogCancels };
Q_DECLARE_METATYPE(Change)

void TestColorButton::whatIsShownIsRepainted_data()
{
    QTest::addColumn<Change>("change");
    QTest::addColumn<bool>("repaints");
    QTest::newRow("a colour is set") << kColourSet << true;
    QTest::newRow("the pointer enters") << kPointerEnters << true;
    QTest::newRow("the pointer leaves") << kPointerLeaves << true;
    QTest::newRow("the dialog is accepted") << kDialogAccepts << true;
    QTest::newRow("the dialog is cancelled") << kDialogCancels << false;
}

void TestColorButton::whatIsShownIsRepainted()
{
    QFETCH(Change, change);
    QFETCH(bool, repaints);
    ZvColorButtonWidget widget(nullptr);
    widget.setPalette(QPalette(Qt::lightGray)); // the same whether the window is active or not
    widget.resize(100, 25);
    innerButton(widget)->hide(); // it paints by itself as it comes and goes with the keyboard
    widget.setColor(byIndex(1));
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    const PaintCount paints(&widget);
    QEvent enter(QEvent::Enter);
    QEvent leave(QEvent::Leave);
    const ColorDialogAnswer answer(change == kDialogAccepts ? 1 : 2, 195, 5);
    switch (change) {
    case kColourSet:
        widget.setColor(byIndex(5));
        break;
    case kPointerEnters:
        QApplication::sendEvent(&widget, &enter);
        break;
    case kPointerLeaves:
        QApplication::sendEvent(&widget, &leave);
        break;
    default:
        widget.slot_onInnerButtonClicked(true);
        break;
    }
    QCOMPARE(paints.count, 0); // not before the event loop has the word
    QCoreApplication::processEvents();
    QCOMPARE(paints.count, repaints ? 1 : 0);
}

void TestColorButton::pictureHasABorder()
{
    ZvColorButtonWidget widget(nullptr);
    const QImage picture = widget.getColorPixmapWithBorder(16, 12, QColor(200, 100, 50)).toImage();
    QCOMPARE(picture.size(), QSize(16, 12));
    const QRgb color = qRgb(200, 100, 50);
    for (int y = 0; y < 12; ++y) {
        for (int x = 0; x < 16; ++x) {
            const bool isBorder = (x == 0 || x == 14 || y == 0 || y == 10) && x <= 14 && y <= 10;
            if (!isBorder) {
                QCOMPARE(picture.pixel(x, y), color);
                continue;
            }
            // a black pen of half a pixel covers half of it
            QVERIFY(qAbs(qRed(picture.pixel(x, y)) - 100) <= 1);
            QVERIFY(qAbs(qGreen(picture.pixel(x, y)) - 50) <= 1);
            QVERIFY(qAbs(qBlue(picture.pixel(x, y)) - 25) <= 1);
        }
    }
}

enum Opening { kInnerButton, kDoubleClick, kSingleClick };
Q_DECLARE_METATYPE(Opening)

void TestColorButton::whatOpensTheDialog_data()
{
    QTest::addColumn<Opening>("opening");
    QTest::addColumn<bool>("opens");
    QTest::newRow("a click on the button") << kInnerButton << true;
    QTest::newRow("a double click on the swatch") << kDoubleClick << true;
    QTest::newRow("a single click on the swatch") << kSingleClick << false;
}

void TestColorButton::whatOpensTheDialog()
{
    QFETCH(Opening, opening);
    QFETCH(bool, opens);
    ZvColorButtonWidget widget(nullptr);
    widget.resize(100, 25);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    bool opened = false;
    bool isColorDialog = false;
    QWidget *parent = nullptr;
    ModalDriver driver;
    if (opens) {
        driver.next([&](QDialog *dialog) {
            opened = true;
            isColorDialog = qobject_cast<ZvColorDialog *>(dialog);
            parent = dialog->parentWidget();
            dialog->reject();
        });
    }
    const QPoint swatch(20, 12);
    if (opening == kInnerButton)
        QTest::mouseClick(innerButton(widget), Qt::LeftButton);
    else if (opening == kDoubleClick)
        QTest::mouseDClick(&widget, Qt::LeftButton, Qt::NoModifier, swatch);
    else
        QTest::mouseClick(&widget, Qt::LeftButton, Qt::NoModifier, swatch);
    QVERIFY(driver.finished());
    QCOMPARE(opened, opens);
    QCOMPARE(isColorDialog, opens);
    QCOMPARE(parent, opens ? &widget : nullptr);
}

void TestColorButton::dialogShowsTheColour_data()
{
    QTest::addColumn<ZvCmColor>("color");
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("text"); // of the tab that is shown
    QTest::newRow("by index") << byIndex(3) << 0 << "绿";
    QTest::newRow("by index without a name") << byIndex(42) << 0 << "42";
    QTest::newRow("true colour") << byRgb(10, 20, 30) << 1 << "10,20,30";
    QTest::newRow("by layer reads white") << byIndex(256) << 0 << "白";
    QTest::newRow("by block") << byIndex(0) << 0 << "BYBLOCK";
    QTest::newRow("none is a true colour, red for blue") << byMethod(ZvCm::kNone) << 0 << "0,0,0";
    QTest::newRow("by pen is a true colour, red for blue") << byMethod(ZvCm::kByPen) << 0 << "0,0,0";
}

void TestColorButton::dialogShowsTheColour()
{
    QFETCH(ZvCmColor, color);
    QFETCH(int, tab);
    QFETCH(QString, text);
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(color);
    int shownTab = -1;
    QString shownText;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        auto *tabs = dialog->findChild<QTabWidget *>();
        shownTab = tabs->currentIndex();
        for (const QLineEdit *edit : tabs->currentWidget()->findChildren<QLineEdit *>()) {
            if (!qobject_cast<QSpinBox *>(edit->parent()))
                shownText = edit->text();
        }
        dialog->reject();
    });
    innerButton(widget)->click();
    QVERIFY(driver.finished());
    QCOMPARE(shownTab, tab);
    QCOMPARE(shownText, text);
}

void TestColorButton::dialogIsAskedAsTold_data()
{
    QTest::addColumn<ZvCmColor>("color");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    QTest::newRow("by layer") << byIndex(256) << 192 << 256;
    QTest::newRow("by block") << byIndex(0) << 193 << 0;
    QTest::newRow("by index") << byIndex(42) << 195 << 42;
    QTest::newRow("true colour, red lowest") << byRgb(10, 20, 30) << 194 << packed(10, 20, 30);
    QTest::newRow("by pen, as a true colour") << byMethod(ZvCm::kByPen) << 196 << 0;
    QTest::newRow("none, as a true colour") << byMethod(ZvCm::kNone) << 200 << 0;
}

void TestColorButton::dialogIsAskedAsTold()
{
    QFETCH(ZvCmColor, color);
    QFETCH(int, method);
    QFETCH(int, value);
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(color);
    const ColorDialogAnswer answer(2, 0, 0);
    widget.slot_onInnerButtonClicked(true);
    QCOMPARE(answer.asked.name.toUtf8().c_str(), "ColorDialog");
    QCOMPARE(answer.asked.parent, static_cast<void *>(&widget));
    QVERIFY(!answer.asked.hasHelper);
    QCOMPARE(answer.asked.params,
             (QStringList{QStringLiteral("clrMethod=%1").arg(method), QStringLiteral("selectClr=%1").arg(value),
                          QStringLiteral("isByLayerEnable=0"), QStringLiteral("isByBLockEnable=0")}));
}

void TestColorButton::answersOfAnotherDialog_data()
{
    QTest::addColumn<int>("result");
    QTest::addColumn<int>("method");
    QTest::addColumn<int>("value");
    QTest::addColumn<ZvCmColor>("after");
    QTest::addColumn<bool>("told");
    const ZvCmColor before = byIndex(3);
    QTest::newRow("an index") << 1 << 195 << 5 << byIndex(5) << true;
    QTest::newRow("an index is cut to 16 bits") << 1 << 195 << 0x10005 << byIndex(5) << true;
    QTest::newRow("index 256 is by layer") << 1 << 195 << 256 << byIndex(256) << true;
    QTest::newRow("index 0 is by block") << 1 << 195 << 0 << byIndex(0) << true;
    QTest::newRow("a true colour, red lowest") << 1 << 194 << packed(10, 20, 30) << byRgb(10, 20, 30) << true;
    QTest::newRow("bits above a true colour are cut") << 1 << 194 << 0x7F1E140A << byRgb(10, 20, 30) << true;
    QTest::newRow("by layer becomes 0,1,0") << 1 << 192 << 256 << byRgb(0, 1, 0) << true;
    QTest::newRow("by block becomes 0,0,0") << 1 << 193 << 0 << byRgb(0, 0, 0) << true;
    QTest::newRow("none is taken as a true colour") << 1 << 200 << 7 << byRgb(7, 0, 0) << true;
    QTest::newRow("cancelled with a colour") << 2 << 195 << 5 << before << false;
    QTest::newRow("undecided with a colour") << -1 << 195 << 5 << before << false;
    QTest::newRow("another code with a colour") << 6 << 195 << 5 << before << false;
    QTest::newRow("no result at all") << 0 << 195 << 5 << before << false;
}

void TestColorButton::answersOfAnotherDialog()
{
    QFETCH(int, result);
    QFETCH(int, method);
    QFETCH(int, value);
    QFETCH(ZvCmColor, after);
    QFETCH(bool, told);
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(byIndex(3));
    const QSignalSpy spy(&widget, &ZvColorButtonWidget::colorChanged);
    const ColorDialogAnswer answer(result, method, value);
    widget.slot_onInnerButtonClicked(true);
    QCOMPARE(widget.color().color(), after.color());
    QCOMPARE(spy.size(), told ? 1 : 0);
}

void TestColorButton::byLayerAndByBlockAreForbidden()
{
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(byIndex(3));
    bool layerEnabled = true;
    bool blockEnabled = true;
    QString text;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        layerEnabled = buttonOf(dialog, QStringLiteral("ByLayer(&L)"))->isEnabled();
        blockEnabled = buttonOf(dialog, QStringLiteral("ByBlock(&K)"))->isEnabled();
        QTest::keyClick(dialog, Qt::Key_L);
        QTest::keyClick(dialog, Qt::Key_K);
        text = indexTab(dialog)->findChild<QLineEdit *>()->text();
        dialog->reject();
    });
    innerButton(widget)->click();
    QVERIFY(driver.finished());
    QVERIFY(!layerEnabled);
    QVERIFY(!blockEnabled);
    QCOMPARE(text, QStringLiteral("绿"));
}

void TestColorButton::acceptedColourIsTaken_data()
{
    QTest::addColumn<ZvCmColor>("before");
    QTest::addColumn<ZvCmColor>("after");
    QTest::newRow("by index") << byIndex(42) << byIndex(42);
    QTest::newRow("true colour") << byRgb(10, 20, 30) << byRgb(10, 20, 30);
    QTest::newRow("by layer becomes 0,1,0") << byIndex(256) << byRgb(0, 1, 0);
    QTest::newRow("by block becomes 0,0,0") << byIndex(0) << byRgb(0, 0, 0);
}

void TestColorButton::acceptedColourIsTaken()
{
    QFETCH(ZvCmColor, before);
    QFETCH(ZvCmColor, after);
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(before);
    const QSignalSpy spy(&widget, &ZvColorButtonWidget::colorChanged);
    ModalDriver driver;
    driver.next(pressOk);
    innerButton(widget)->click();
    QVERIFY(driver.finished());
    QCOMPARE(widget.color().color(), after.color());
    QCOMPARE(spy.size(), 1);
}

void TestColorButton::pickedCellIsTaken()
{
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(byRgb(10, 20, 30));
    const QSignalSpy spy(&widget, &ZvColorButtonWidget::colorChanged);
    ModalDriver driver;
    driver.next([&](QDialog *dialog) { dialog->findChild<QTabWidget *>()->setCurrentIndex(0); });
    driver.next([&](QDialog *dialog) {
        ZvPaleteWnd *grid = dialog->findChildren<ZvPaleteWnd *>().at(2);
        QTest::mouseClick(grid, Qt::LeftButton, Qt::NoModifier, cellCentre(0, 4, 17));
        pressOk(dialog);
    });
    innerButton(widget)->click();
    QVERIFY(driver.finished());
    QCOMPARE(widget.color().color(), byIndex(5).color());
    QCOMPARE(spy.size(), 1);
}

void TestColorButton::pickedTrueColourIsTaken()
{
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(byIndex(1));
    ModalDriver driver;
    driver.next([&](QDialog *dialog) { dialog->findChild<QTabWidget *>()->setCurrentIndex(1); });
    driver.next([&](QDialog *dialog) {
        auto *tab = dialog->findChild<ZvTrueColorWnd *>();
        auto *text = tab->findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly);
        text->selectAll();
        QTest::keyClicks(text, QStringLiteral("12,34,56"));
        QTest::keyClick(text, Qt::Key_Return);
    });
    innerButton(widget)->click();
    QVERIFY(driver.finished());
    QCOMPARE(widget.color().color(), byRgb(12, 34, 56).color());
}

void TestColorButton::cancelKeepsTheColour()
{
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(byIndex(1));
    const QSignalSpy spy(&widget, &ZvColorButtonWidget::colorChanged);
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        QTest::mouseClick(dialog->findChildren<ZvPaleteWnd *>().at(2), Qt::LeftButton, Qt::NoModifier,
                          cellCentre(0, 4, 17));
        QTest::keyClick(dialog, Qt::Key_Escape);
    });
    innerButton(widget)->click();
    QVERIFY(driver.finished());
    QCOMPARE(widget.color().color(), byIndex(1).color());
    QCOMPARE(spy.size(), 0);
}

void TestColorButton::missingServiceKeepsTheColour()
{
    zvrxEntryPoint(kZvRxUnloadModule);
    ZvColorButtonWidget widget(nullptr);
    widget.setColor(byIndex(1));
    const QSignalSpy spy(&widget, &ZvColorButtonWidget::colorChanged);
    innerButton(widget)->click();
    QCOMPARE(widget.color().color(), byIndex(1).color());
    QCOMPARE(spy.size(), 0);
    zvrxEntryPoint(kZvRxLoadModule);
}

void TestColorButton::deletedWhileTheDialogRuns()
{
    auto *widget = new ZvColorButtonWidget(nullptr);
    widget->setColor(byIndex(1));
    ModalDriver driver;
    driver.next([&](QDialog *) { delete widget; });
    widget->slot_onInnerButtonClicked(true);
    QVERIFY(driver.finished());
}

void TestColorButton::labelShowsASquare()
{
    ZvQtColorLabel label;
    const int side = QApplication::fontMetrics().height();
    QColor color(1, 2, 3);
    label.SetColor(color);
    QCOMPARE(label.pixmap(Qt::ReturnByValue).size(), QSize(side, side));
    QImage expected(side, side, QImage::Format_RGB32);
    expected.fill(qRgb(1, 2, 3));
    COMPARE_PICTURES(label.pixmap(Qt::ReturnByValue).toImage(), expected);

    label.SetColor(0x0A141Eu); // a QRgb: red first
    expected.fill(qRgb(10, 20, 30));
    COMPARE_PICTURES(label.pixmap(Qt::ReturnByValue).toImage(), expected);

    label.SetColor(byIndex(3));
    expected.fill(qRgb(0, 255, 0));
    COMPARE_PICTURES(label.pixmap(Qt::ReturnByValue).toImage(), expected);
}

ZEVA_TEST_MAIN(TestColorButton)
#include "tst_colorbutton.moc"
