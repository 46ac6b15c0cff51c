// SPDX-License-Identifier: MIT
#include "colordialogrun.h"
#include "metamethods.h"
#include "paintcount.h"
#include "zevatest.h"

#include "base/zvcmcolor.h"

#include <QGridLayout>
#include <QLabel>
#include <QSignalSpy>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>

namespace {

enum Mode { kHsl = 0, kRgb = 1 };

/// The conversion of the formulas, written out once more.
QRgb hsl(int h, int s, int l)
{
    ZvGeVector3d rgb;
    zvdbConvertHslToRgb(ZvGeVector3d(h, s / 100.0, l / 100.0), rgb);
    const auto part = [](double component) { return int(component * 255.0 + 0.5001); };
    return qRgb(part(rgb.x), part(rgb.y), part(rgb.z));
}

int hueAt(int x)
{
    return std::clamp(int(x / 186.0 * 360.0), 0, 360);
}

int saturationAt(int y)
{
    return std::clamp(int(100.0 - y * 100.0 / 170.0), 0, 100);
}

QImage expectedField(int crossX, int crossY)
{
    QImage image = QImage(QStringLiteral(":/res/TColor.bmp")).convertToFormat(QImage::Format_RGB32);
    const QRgb black = qRgb(0, 0, 0);
    setPixels(image, crossX - 10, crossY, crossX + 10, crossY, black);
    setPixels(image, crossX, crossY - 10, crossX, crossY + 10, black);
    return image;
}

QImage expectedStrip(int h, int s, int markerTop, int markerBottom)
{
    QImage image(30, 170, QImage::Format_RGB32);
    image.fill(Qt::white);
    const double scale = 100.0 / (169 - 4);
    for (int y = 2; y < 167; y += 3)
        setPixels(image, 2, y, 26, y + 2, hsl(h, s, int((167 - y) * scale)));
    setOutline(image, 0, markerTop, 29, markerBottom, qRgb(0, 0, 0));
    return image;
}

QImage expectedSlider(const QSize &size, int channel, int red, int green, int blue, int markerLeft, int markerRight)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::white);
    for (int x = 2; x <= 236; x += 3) {
        int part[3] = {red, green, blue};
        part[channel] = int((x - 2.0) * 255.0 / 236);
        setPixels(image, x, 2, x + 2, 20, qRgb(part[0], part[1], part[2]));
    }
    setOutline(image, markerLeft, 1, markerRight, 22, qRgb(0, 0, 0));
    return image;
}

/// A dialog opened on a true colour, in the mode asked for.
class Tab : public ColorDialogRun
{
public:
    Tab(Mode mode, int red, int green, int blue)
        : ColorDialogRun({{"clrMethod", 194}, {"selectClr", packed(red, green, blue)}})
    {
        modeCombo()->setCurrentIndex(mode);
    }
    ZvHSLWnd *hslPanel() const { return dialog->findChild<ZvHSLWnd *>(); }
    ZvRGBWnd *rgbPanel() const { return dialog->findChild<ZvRGBWnd *>(); }
    ZvHSLPallete *field() const { return dialog->findChild<ZvHSLPallete *>(); }
    ZvColorLightWnd *strip() const { return dialog->findChild<ZvColorLightWnd *>(); }
    ZvRGBSlider *slider(int channel) const { return dialog->findChildren<ZvRGBSlider *>().at(channel); }
    /// The box that is the buddy of the label with this text.
    QSpinBox *spin(const QString &label) const
    {
        for (QLabel *candidate : trueColorTab()->findChildren<QLabel *>()) {
            if (candidate->text() == label)
                return qobject_cast<QSpinBox *>(candidate->buddy());
        }
        return nullptr;
    }
    QSpinBox *hue() const { return spin(QStringLiteral("色调(&U)")); }
    QSpinBox *saturation() const { return spin(QStringLiteral("饱和度(&S)")); }
    QSpinBox *lightness() const { return spin(QStringLiteral("亮度(&L)")); }
    QSpinBox *component(int channel) const
    {
        const QString labels[] = {QStringLiteral("红(&R):"), QStringLiteral("绿(&G):"), QStringLiteral("蓝(&B):")};
        return spin(labels[channel]);
    }
    QString text() const { return trueColorText()->text(); }
    ZvColorLabel *swatch() const { return trueColorTab()->findChild<ZvColorLabel *>(); }
    QList<int> hslValues() const { return {hue()->value(), saturation()->value(), lightness()->value()}; }
    QList<int> rgbValues() const { return {component(0)->value(), component(1)->value(), component(2)->value()}; }
};

QString rgbText(QRgb color)
{
    return QStringLiteral("%1,%2,%3").arg(qRed(color)).arg(qGreen(color)).arg(qBlue(color));
}

} // namespace

class TestTrueColorTab : public ZevaTest
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();

    void methodsAreAsTold_data();
    void methodsAreAsTold();

    // conversions
    void rgbTurnsIntoHsl_data();
    void rgbTurnsIntoHsl();
    void hslTurnsIntoRgb_data();
    void hslTurnsIntoRgb();
    void conversionsRoundAlike();
    void coloursSurviveHslWithinTheRounding();

    // how it is built
    void layoutIsAsTold();
    void hslPanelIsAsTold();
    void rgbPanelIsAsTold();
    void pictureOfTheFieldIsAsTold();
    void newTabIsWhite();
    void newSlidersHaveColoursOfTheirOwn();

    // showing a colour
    void openingShowsTheColour_data();
    void openingShowsTheColour();
    void colourIsReadWhateverTheMethod();
    void swatchAndLabelsShowTheColour();
    void showingAgainKeepsTheExactColour();

    // the text entry
    void textIsValidated_data();
    void textIsValidated();

    void pickersRepaintAtOnce_data();
    void pickersRepaintAtOnce();

    // the field
    void pressInTheField_data();
    void pressInTheField();
    void dragInTheField_data();
    void dragInTheField();
    void moveWithoutAPressDoesNothing();
    void whiteAndBlackGetAVisibleLightness_data();
    void whiteAndBlackGetAVisibleLightness();
    void fieldClampsWhatItShows_data();
    void fieldClampsWhatItShows();
    void fieldIsPainted_data();
    void fieldIsPainted();

    // the strip
    void pressOnTheStrip_data();
    void pressOnTheStrip();
    void stripIsPainted_data();
    void stripIsPainted();
    void lowStripPaintsTheMarkerOnly();

    // the sliders
    void pressOnASlider_data();
    void pressOnASlider();
    void sliderIsPainted_data();
    void sliderIsPainted();
    void sliderIgnoresPositionsBeyond255();
    void componentsRecolourAllSliders();

    // the spin boxes
    void hslSpinBoxesChangeTheColour_data();
    void hslSpinBoxesChangeTheColour();
    void rgbSpinBoxesChangeTheColour_data();
    void rgbSpinBoxesChangeTheColour();
    void hslTellsRedBlueGreen();
    void newColourIsToldRedGreenBlue();
    void sliderTellsItsChannelTwice();
    void repeatedShowingRepeatsTheTelling();
    void hueMovesTheCross();
    void greyLosesItsHue();

    // the mode
    void modeSwitchReplacesThePanel();
    void modeSwitchKeepsTheColour();
    void rgbModeConvertsNothing();
    void modeIsRememberedForTheProcess();
    void comboLosesTheFocus();

    // keys
    void acceleratorsWork_data();
    void acceleratorsWork();

private:
    QScopedPointer<ModuleSession> m_session;
    QScopedPointer<MessageBoxes> m_messages;
};

void TestTrueColorTab::init()
{
    ZevaTest::init();
    m_session.reset(new ModuleSession);
    m_messages.reset(new MessageBoxes);
}

void TestTrueColorTab::cleanup()
{
    {
        const Tab tab(kHsl, 0, 0, 0); // the mode outlives the dialogs
    }
    m_messages.reset();
    m_session.reset();
    ZevaTest::cleanup();
}

void TestTrueColorTab::methodsAreAsTold_data()
{
    QTest::addColumn<MetaType>("type");
    QTest::addColumn<QStringList>("methods");
    QTest::newRow("the field") << &ZvHSLPallete::staticMetaObject << signaturesOf({"hsValueChanged(int,int)"});
    QTest::newRow("the strip") << &ZvColorLightWnd::staticMetaObject
                               << signaturesOf({"sliderPosChanged(int)", "setPos(int)"});
    QTest::newRow("a slider") << &ZvRGBSlider::staticMetaObject
                              << signaturesOf({"sliderPosChanged(ZvRGBSlider::CUR_COLOR,int)", "setRed(int)",
                                               "setGreen(int)", "setBlue(int)", "setPos(int)"});
    QTest::newRow("the HSL panel") << &ZvHSLWnd::staticMetaObject
                                   << signaturesOf({"redColorChanged(int)", "greenColorChanged(int)",
                                                    "blueColorChanged(int)", "slot_hsValueChanged(int,int)",
                                                    "slot_lightChanged(int)", "slot_hsSpinboxValueChanged()",
                                                    "slot_KeyU_clicked()", "slot_KeyS_clicked()",
                                                    "slot_KeyL_clicked()"});
    QTest::newRow("the RGB panel") << &ZvRGBWnd::staticMetaObject
                                   << signaturesOf(
                                          {"redColorChanged(int)", "greenColorChanged(int)", "blueColorChanged(int)",
                                           "slot_RGBSliderChanged(ZvRGBSlider::CUR_COLOR,int)", "slot_keyR_triggered()",
                                           "slot_keyG_triggered()", "slot_keyB_triggered()"});
    QTest::newRow("the tab") << &ZvTrueColorWnd::staticMetaObject
                             << signaturesOf({"slot_switchColorMode(int)", "slot_redColorChanged(int)",
                                              "slot_greenColorChanged(int)", "slot_blueColorChanged(int)",
                                              "slot_KeyC_clicked()", "slot_KeyM_clicked()"});
}

void TestTrueColorTab::methodsAreAsTold()
{
    QFETCH(MetaType, type);
    QFETCH(QStringList, methods);
    QCOMPARE(ownMethods(*type), methods);
}

// ---- conversions ----------------------------------------------------------------------------------------------------

void TestTrueColorTab::rgbTurnsIntoHsl_data()
{
    QTest::addColumn<QList<int>>("rgb");
    QTest::addColumn<QList<int>>("hsl");
    QTest::newRow("black") << QList<int>{0, 0, 0} << QList<int>{0, 0, 0};
    QTest::newRow("white") << QList<int>{255, 255, 255} << QList<int>{0, 0, 100};
    QTest::newRow("red") << QList<int>{255, 0, 0} << QList<int>{0, 100, 50};
    QTest::newRow("yellow") << QList<int>{255, 255, 0} << QList<int>{60, 100, 50};
    QTest::newRow("green") << QList<int>{0, 255, 0} << QList<int>{120, 100, 50};
    QTest::newRow("cyan") << QList<int>{0, 255, 255} << QList<int>{180, 100, 50};
    QTest::newRow("blue") << QList<int>{0, 0, 255} << QList<int>{240, 100, 50};
    QTest::newRow("magenta") << QList<int>{255, 0, 255} << QList<int>{300, 100, 50};
    QTest::newRow("grey") << QList<int>{128, 128, 128} << QList<int>{0, 0, 50};
    QTest::newRow("0,0,7") << QList<int>{0, 0, 7} << QList<int>{240, 100, 1};
    QTest::newRow("just below the red end") << QList<int>{255, 0, 2} << QList<int>{360, 100, 50};
}

void TestTrueColorTab::rgbTurnsIntoHsl()
{
    QFETCH(QList<int>, rgb);
    QFETCH(QList<int>, hsl);
    short h = -1;
    short s = -1;
    short l = -1;
    rgbToHsl(short(rgb[0]), short(rgb[1]), short(rgb[2]), h, s, l);
    QCOMPARE((QList<int>{h, s, l}), hsl);
}

void TestTrueColorTab::hslTurnsIntoRgb_data()
{
    QTest::addColumn<QList<int>>("hsl");
    QTest::addColumn<QList<int>>("rgb");
    QTest::newRow("red") << QList<int>{0, 100, 50} << QList<int>{255, 0, 0};
    QTest::newRow("red again at 360") << QList<int>{360, 100, 50} << QList<int>{255, 0, 0};
    QTest::newRow("blue") << QList<int>{240, 100, 50} << QList<int>{0, 0, 255};
    QTest::newRow("a half is rounded up") << QList<int>{0, 0, 50} << QList<int>{128, 128, 128};
    QTest::newRow("dark blue") << QList<int>{240, 100, 1} << QList<int>{0, 0, 5};
}

void TestTrueColorTab::hslTurnsIntoRgb()
{
    QFETCH(QList<int>, hsl);
    QFETCH(QList<int>, rgb);
    short r = -1;
    short g = -1;
    short b = -1;
    hslToRgb(short(hsl[0]), short(hsl[1]), short(hsl[2]), r, g, b);
    QCOMPARE((QList<int>{r, g, b}), rgb);
}

void TestTrueColorTab::conversionsRoundAlike()
{
    for (int h = 0; h <= 360; h += 13) {
        for (int s = 0; s <= 100; s += 9) {
            for (int l = 0; l <= 100; l += 7) {
                short r = -1;
                short g = -1;
                short b = -1;
                hslToRgb(short(h), short(s), short(l), r, g, b);
                QCOMPARE(qRgb(r, g, b), hsl(h, s, l));
            }
        }
    }
}

void TestTrueColorTab::coloursSurviveHslWithinTheRounding()
{
    // Half a degree and half a per cent of saturation and of lightness: five steps of a component together.
    int farthest = 0;
    for (int red = 0; red <= 255; red += 15) {
        for (int green = 0; green <= 255; green += 15) {
            for (int blue = 0; blue <= 255; blue += 15) {
                short h = -1;
                short s = -1;
                short l = -1;
                rgbToHsl(short(red), short(green), short(blue), h, s, l);
                short r = -1;
                short g = -1;
                short b = -1;
                hslToRgb(h, s, l, r, g, b);
                farthest = std::max({farthest, qAbs(r - red), qAbs(g - green), qAbs(b - blue)});
            }
        }
    }
    QVERIFY2(farthest > 0 && farthest <= 5, qPrintable(QString::number(farthest)));
}

// ---- how it is built ------------------------------------------------------------------------------------------------

void TestTrueColorTab::layoutIsAsTold()
{
    Tab tab(kHsl, 10, 20, 30);
    QVERIFY(tab.show());
    auto *outer = qobject_cast<QHBoxLayout *>(tab.trueColorTab()->layout());
    QVERIFY(outer);
    QCOMPARE(outer->count(), 2);
    auto *left = qobject_cast<QVBoxLayout *>(outer->itemAt(0)->layout());
    QVERIFY(left);
    QCOMPARE(left->spacing(), 20);
    QCOMPARE(left->itemAt(0)->widget(), tab.hslPanel());
    QLayout *row = left->itemAt(1)->layout();
    auto *label = qobject_cast<QLabel *>(row->itemAt(0)->widget());
    QCOMPARE(label->text(), QStringLiteral("颜色(&C):"));
    QCOMPARE(label->buddy(), tab.trueColorText());
    QCOMPARE(row->itemAt(1)->widget(), tab.trueColorText());

    auto *right = qobject_cast<QVBoxLayout *>(outer->itemAt(1)->layout());
    QVERIFY(right);
    const auto labelAt = [right](int i) { return qobject_cast<QLabel *>(right->itemAt(i)->widget()); };
    QCOMPARE(labelAt(0)->text(), QStringLiteral("颜色模式(&M):"));
    QCOMPARE(labelAt(0)->buddy(), tab.modeCombo());
    QCOMPARE(right->itemAt(1)->widget(), tab.modeCombo());
    QCOMPARE(tab.modeCombo()->count(), 2);
    QCOMPARE(tab.modeCombo()->itemText(0), QStringLiteral("HSL"));
    QCOMPARE(tab.modeCombo()->itemText(1), QStringLiteral("RGB"));
    QCOMPARE(labelAt(2)->text(), QStringLiteral("真彩色保存为\r\nRGB:"));
    QCOMPARE(labelAt(3)->text(), QStringLiteral("  红:   10"));
    QCOMPARE(labelAt(4)->text(), QStringLiteral("  绿:   20"));
    QCOMPARE(labelAt(5)->text(), QStringLiteral("  蓝:   30"));
    QCOMPARE(right->itemAt(6)->widget(), tab.swatch());
    QCOMPARE(right->itemAt(6)->alignment(), Qt::AlignRight);
    QCOMPARE(tab.swatch()->size(), QSize(50, 50));
    QCOMPARE(tab.swatch()->frameShape(), QFrame::Box);
}

void TestTrueColorTab::hslPanelIsAsTold()
{
    Tab tab(kHsl, 10, 20, 30);
    QVERIFY(tab.show());
    auto *grid = qobject_cast<QGridLayout *>(tab.hslPanel()->layout());
    QVERIFY(grid);
    QCOMPARE(grid->contentsMargins(), QMargins(1, 1, 1, 1));
    QCOMPARE(grid->verticalSpacing(), 20);
    QCOMPARE(grid->columnStretch(0), 1);
    QCOMPARE(grid->columnStretch(1), 2);
    QCOMPARE(grid->itemAtPosition(1, 0)->widget(), tab.field());
    QCOMPARE(grid->itemAtPosition(1, 1)->widget(), tab.strip());
    QCOMPARE(grid->itemAtPosition(1, 1)->alignment(), Qt::AlignLeft);
    QCOMPARE(tab.field()->size(), QSize(186, 170));
    QCOMPARE(tab.strip()->size(), QSize(30, 170));
    auto *row = qobject_cast<QHBoxLayout *>(grid->itemAtPosition(0, 0)->layout());
    QCOMPARE(row->stretch(1), 1);
    QCOMPARE(row->stretch(3), 2);
    QCOMPARE(row->itemAt(0)->layout()->spacing(), 0);
    QCOMPARE(grid->itemAtPosition(0, 1)->layout()->spacing(), 0);
    for (QSpinBox *spin : {tab.hue(), tab.saturation(), tab.lightness()}) {
        QCOMPARE(spin->width(), 45);
        QCOMPARE(spin->minimum(), 0);
    }
    QCOMPARE(tab.hue()->maximum(), 360);
    QCOMPARE(tab.saturation()->maximum(), 100);
    QCOMPARE(tab.lightness()->maximum(), 100);
    const ZvHSLWnd fresh;
    QCOMPARE(fresh.findChildren<QSpinBox *>().at(2)->value(), 100);
}

void TestTrueColorTab::rgbPanelIsAsTold()
{
    Tab tab(kRgb, 10, 20, 30);
    QVERIFY(tab.show());
    QTRY_VERIFY(tab.rgbPanel()->isVisible());
    auto *column = qobject_cast<QVBoxLayout *>(tab.rgbPanel()->layout());
    QVERIFY(column);
    QCOMPARE(column->contentsMargins(), QMargins());
    QCOMPARE(column->count(), 9);
    const QString labels[] = {QStringLiteral("红(&R):"), QStringLiteral("绿(&G):"), QStringLiteral("蓝(&B):")};
    for (int i = 0; i < 3; ++i) {
        QCOMPARE(qobject_cast<QLabel *>(column->itemAt(3 * i)->widget())->text(), labels[i]);
        QCOMPARE(column->itemAt(3 * i)->alignment(), Qt::AlignLeft);
        QCOMPARE(column->itemAt(3 * i + 1)->widget(), tab.component(i));
        QCOMPARE(column->itemAt(3 * i + 1)->alignment(), Qt::AlignLeft);
        QCOMPARE(column->itemAt(3 * i + 2)->widget(), tab.slider(i));
        QCOMPARE(tab.component(i)->minimum(), 0);
        QCOMPARE(tab.component(i)->maximum(), 255);
        QCOMPARE(tab.component(i)->height(), 18);
        QVERIFY(tab.slider(i)->width() >= 240 && tab.slider(i)->height() >= 23);
        QCOMPARE(tab.slider(i)->minimumSize(), QSize(0, 0)); // no fixed size
        QCOMPARE(tab.slider(i)->maximumSize(), QSize(QWIDGETSIZE_MAX, QWIDGETSIZE_MAX));
    }
}

void TestTrueColorTab::pictureOfTheFieldIsAsTold()
{
    const QImage picture(QStringLiteral(":/res/TColor.bmp"));
    QCOMPARE(picture.size(), QSize(186, 170));
    // hue to the right, saturation upwards, at half lightness: every pixel within what sampling it anywhere may give
    for (int y = 0; y < 170; y += 13) {
        for (int x = 0; x < 186; x += 11) {
            const QRgb color = picture.pixel(x, y);
            const QRgb ends[]
                = {hsl(int(x / 186.0 * 360), int(100 - y / 170.0 * 100), 50),
                   hsl(int((x + 1) / 186.0 * 360) + 1, std::max(int(100 - (y + 1) / 170.0 * 100) - 1, 0), 50)};
            for (const QRgb end : ends) {
                QVERIFY(qAbs(qRed(color) - qRed(end)) <= 14);
                QVERIFY(qAbs(qGreen(color) - qGreen(end)) <= 14);
                QVERIFY(qAbs(qBlue(color) - qBlue(end)) <= 14);
            }
        }
    }
}

void TestTrueColorTab::newTabIsWhite()
{
    const ColorDialogRun run(ColorKeys{});
    for (const Mode mode : {kHsl, kRgb}) {
        run.modeCombo()->setCurrentIndex(mode);
        const ZvTrueColorWnd fresh(run.dialog);
        QStringList texts;
        for (const QLabel *label : fresh.findChildren<QLabel *>())
            texts << label->text();
        for (const char *text : {"  红:   255", "  绿:   255", "  蓝:   255"})
            QVERIFY(texts.contains(QString::fromUtf8(text)));
        QCOMPARE(fresh.findChild<ZvColorLabel *>()->styleSheet(),
                 QStringLiteral("QLabel { background-color : white; color : gray; }"));
        QCOMPARE(fresh.findChild<QComboBox *>()->currentIndex(), int(mode));
        QCOMPARE(fresh.findChild<ZvHSLWnd *>() != nullptr, mode == kHsl);
        QCOMPARE(fresh.findChild<ZvRGBWnd *>() != nullptr, mode == kRgb);
    }
}

void TestTrueColorTab::newSlidersHaveColoursOfTheirOwn()
{
    ZvRGBWnd panel;
    panel.setRGB(0, 0, 0); // where the spin boxes stand already: the sliders are not told
    panel.show();
    QVERIFY(QTest::qWaitForWindowExposed(&panel));
    const int made[3][3] = {{50, 23, 56}, {50, 90, 56}, {50, 23, 120}};
    for (int channel = 0; channel < 3; ++channel) {
        ZvRGBSlider *slider = panel.findChildren<ZvRGBSlider *>().at(channel);
        slider->resize(240, 23);
        COMPARE_PICTURES(
            pictureOf(slider),
            expectedSlider(slider->size(), channel, made[channel][0], made[channel][1], made[channel][2], 0, 1));
    }
}

// ---- showing a colour -----------------------------------------------------------------------------------------------

void TestTrueColorTab::openingShowsTheColour_data()
{
    QTest::addColumn<int>("color"); // kMissing: no key
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("hsl");
    QTest::newRow("absent is black") << kMissing << "0,0,0" << QList<int>{0, 0, 0};
    QTest::newRow("a colour") << packed(255, 128, 0) << "255,128,0" << QList<int>{30, 100, 50};
    QTest::newRow("grey has no hue") << packed(100, 100, 100) << "100,100,100" << QList<int>{0, 0, 39};
    QTest::newRow("bits above the colour are cut") << int(0xFF00FF00) << "0,255,0" << QList<int>{120, 100, 50};
}

void TestTrueColorTab::openingShowsTheColour()
{
    QFETCH(int, color);
    QFETCH(QString, text);
    QFETCH(QList<int>, hsl);
    Tab tab(kHsl, 0, 0, 0);
    const ZvJsonPtr params = color == kMissing ? colorParams({}) : colorParams({{"selectClr", color}});
    ZvTrueColorWnd fresh(tab.dialog);
    fresh.onInit(params, nullptr);
    QCOMPARE(fresh.findChild<QLineEdit *>(QString(), Qt::FindDirectChildrenOnly)->text(), text);
    const auto spins = fresh.findChildren<QSpinBox *>();
    QCOMPARE((QList<int>{spins.at(0)->value(), spins.at(1)->value(), spins.at(2)->value()}), hsl);
}

void TestTrueColorTab::colourIsReadWhateverTheMethod()
{
    for (const int method : {192, 193, 194, 195, 200}) {
        const ColorDialogRun run({{"clrMethod", method}, {"selectClr", 0x010203}});
        const int color = run.color(); // the index tab may have written one
        QCOMPARE(run.trueColorText()->text(),
                 QStringLiteral("%1,%2,%3").arg(color & 0xFF).arg(color >> 8 & 0xFF).arg(color >> 16 & 0xFF));
    }
}

void TestTrueColorTab::swatchAndLabelsShowTheColour()
{
    for (const Mode mode : {kHsl, kRgb}) {
        Tab tab(mode, 12, 200, 99);
        QVERIFY(tab.show());
        QCOMPARE(tab.swatch()->styleSheet(),
                 QStringLiteral("QLabel{ background-color:rgb(12,200,99);  color : gray; }"));
        QCOMPARE(pictureOf(tab.swatch()).pixel(25, 25), qRgb(12, 200, 99));
        QCOMPARE(tab.text(), QStringLiteral("12,200,99"));
    }
}

void TestTrueColorTab::showingAgainKeepsTheExactColour()
{
    for (const Mode mode : {kHsl, kRgb}) {
        const Tab tab(mode, 255, 255, 255);
        for (const QRgb color : {qRgb(0, 0, 7), qRgb(13, 77, 201), qRgb(0, 0, 7)}) {
            const ZvJsonPtr params = colorParams({{"selectClr", packed(qRed(color), qGreen(color), qBlue(color))}});
            tab.trueColorTab()->onInit(params, nullptr);
            QCOMPARE(tab.text(), rgbText(color));
        }
    }
}

// ---- the text entry -------------------------------------------------------------------------------------------------

void TestTrueColorTab::textIsValidated_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<bool>("accepted");
    QTest::newRow("three numbers") << "1,22,255" << true;
    QTest::newRow("blanks around the numbers") << " 1, 22 ,255" << true;
    QTest::newRow("empty") << "" << false;
    QTest::newRow("one number") << "7" << false;
    QTest::newRow("two parts") << "1,2" << false;
    QTest::newRow("four parts") << "1,2,3,4" << false;
    QTest::newRow("an empty part") << "1,,3" << false;
    QTest::newRow("a word") << "1,x,3" << false;
    QTest::newRow("below zero") << "1,-2,3" << false;
    QTest::newRow("a fraction") << "1,2.5,3" << false;
    QTest::newRow("red out of range") << "256,0,0" << false;
    QTest::newRow("green out of range") << "0,256,0" << false;
    QTest::newRow("blue out of range") << "255,255,256" << false;
    QTest::newRow("far out of range") << "0,0,99999999999" << false;
}

void TestTrueColorTab::textIsValidated()
{
    QFETCH(QString, text);
    QFETCH(bool, accepted);
    const Tab tab(kHsl, 10, 20, 30);
    const QList<int> before = tab.hslValues();
    tab.trueColorText()->setText(text);
    unsigned r = 1000;
    unsigned g = 1000;
    unsigned b = 1000;
    QCOMPARE(tab.trueColorTab()->readRgb(r, g, b), accepted);
    QCOMPARE((QList<unsigned>{r, g, b}), accepted ? (QList<unsigned>{1, 22, 255}) : (QList<unsigned>{10, 20, 30}));
    QCOMPARE(m_messages->lines(), accepted ? QStringList() : QStringList{badTrueColorText()});
    // nothing else follows: the text is as typed, panel and labels show the colour before
    QCOMPARE(tab.text(), text);
    QCOMPARE(tab.hslValues(), before);
    QCOMPARE(tab.swatch()->styleSheet(), QStringLiteral("QLabel{ background-color:rgb(10,20,30);  color : gray; }"));
    // but the tab has it from now on
    tab.modeCombo()->setCurrentIndex(kRgb);
    QCOMPARE(tab.rgbValues(), accepted ? (QList<int>{1, 22, 255}) : (QList<int>{10, 20, 30}));
}

namespace {

typedef QWidget *(*MakePicker)();
typedef void (*UsePicker)(QWidget *picker);

QWidget *makeField()
{
    return new ZvHSLPallete;
}

QWidget *makeStrip()
{
    return new ZvColorLightWnd;
}

QWidget *makeSlider()
{
    return new ZvRGBSlider(ZvRGBSlider::kRed, 1, 2, 3, 240, 23);
}

} // namespace

Q_DECLARE_METATYPE(MakePicker)
Q_DECLARE_METATYPE(UsePicker)

void TestTrueColorTab::pickersRepaintAtOnce_data()
{
    QTest::addColumn<MakePicker>("make");
    QTest::addColumn<UsePicker>("use");
    QTest::addColumn<int>("paints");
    const UsePicker press = [](QWidget *picker) { sendMouse(picker, QEvent::MouseButtonPress, QPointF(9, 9)); };
    const UsePicker move = [](QWidget *picker) { sendMouse(picker, QEvent::MouseMove, QPointF(9, 9)); };
    const struct
    {
        const char *name;
        MakePicker make;
        UsePicker use;
        int paints;
    } rows[] = {
        {"field, press", makeField, press, 1},
        {"field, a move without a press", makeField, move, 0},
        {"field, a colour to show", makeField,
         [](QWidget *picker) { static_cast<ZvHSLPallete *>(picker)->setHS(7, 7); }, 1},
        {"strip, press", makeStrip, press, 1},
        {"strip, move", makeStrip, move, 1},
        {"strip, a lightness to show", makeStrip,
         [](QWidget *picker) { static_cast<ZvColorLightWnd *>(picker)->setPos(7); }, 1},
        {"strip, a hue to show", makeStrip,
         [](QWidget *picker) { static_cast<ZvColorLightWnd *>(picker)->setHueAndSaturation(7, 7); }, 1},
        {"slider, press", makeSlider, press, 1},
        {"slider, move", makeSlider, move, 1},
        {"slider, red", makeSlider, [](QWidget *picker) { static_cast<ZvRGBSlider *>(picker)->setRed(7); }, 1},
        {"slider, green", makeSlider, [](QWidget *picker) { static_cast<ZvRGBSlider *>(picker)->setGreen(7); }, 1},
        {"slider, blue", makeSlider, [](QWidget *picker) { static_cast<ZvRGBSlider *>(picker)->setBlue(7); }, 1},
        {"slider, a value to show", makeSlider,
         [](QWidget *picker) { static_cast<ZvRGBSlider *>(picker)->setPos(255); }, 1},
        {"slider, a value beyond all", makeSlider,
         [](QWidget *picker) { static_cast<ZvRGBSlider *>(picker)->setPos(256); }, 0},
    };
    for (const auto &row : rows)
        QTest::newRow(row.name) << row.make << row.use << row.paints;
}

void TestTrueColorTab::pickersRepaintAtOnce()
{
    QFETCH(MakePicker, make);
    QFETCH(UsePicker, use);
    QFETCH(int, paints);
    const QScopedPointer<QWidget> picker(make());
    picker->resize(240, 170);
    picker->show();
    QVERIFY(QTest::qWaitForWindowExposed(picker.data()));
    QCoreApplication::processEvents();
    const PaintCount count(picker.data());
    use(picker.data());
    QCOMPARE(count.count, paints);
}

// ---- the field ------------------------------------------------------------------------------------------------------

void TestTrueColorTab::pressInTheField_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("s");
    QTest::newRow("upper left corner") << QPointF(0, 0) << 0 << 100;
    QTest::newRow("middle") << QPointF(93, 85) << 180 << 50;
    QTest::newRow("truncated, not rounded") << QPointF(100, 85) << 193 << 50;
    QTest::newRow("rounded to the next pixel") << QPointF(99.5, 84.5) << 193 << 50;
    QTest::newRow("right edge is 360") << QPointF(186, 0) << 360 << 100;
    QTest::newRow("bottom edge is 0") << QPointF(93, 170) << 180 << 0;
    QTest::newRow("last pixel right and below") << QPointF(185, 169) << hueAt(185) << saturationAt(169);
}

void TestTrueColorTab::pressInTheField()
{
    QFETCH(QPointF, position);
    QFETCH(int, h);
    QFETCH(int, s);
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    const int l = tab.lightness()->value();
    const QSignalSpy spy(tab.field(), &ZvHSLPallete::hsValueChanged);
    sendMouse(tab.field(), QEvent::MouseButtonPress, position);
    sendMouse(tab.field(), QEvent::MouseButtonRelease, position);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.at(0).at(0).toInt(), h);
    QCOMPARE(spy.at(0).at(1).toInt(), s);
    QCOMPARE(tab.hslValues(), (QList<int>{h, s, l}));
    QCOMPARE(tab.text(), rgbText(hsl(h, s, l)));
}

void TestTrueColorTab::dragInTheField_data()
{
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("s");
    QTest::newRow("inside") << QPointF(50, 40) << hueAt(50) << saturationAt(40);
    QTest::newRow("beyond the left edge is 0") << QPointF(-30, 40) << 0 << saturationAt(40);
    QTest::newRow("above the upper edge is 100") << QPointF(50, -20) << hueAt(50) << 100;
    QTest::newRow("beyond the right edge keeps the last") << QPointF(187, 40) << 180 << 50;
    QTest::newRow("below the lower edge keeps the last") << QPointF(50, 171) << 180 << 50;
}

void TestTrueColorTab::dragInTheField()
{
    QFETCH(QPointF, to);
    QFETCH(int, h);
    QFETCH(int, s);
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    sendMouse(tab.field(), QEvent::MouseButtonPress, QPointF(93, 85));
    sendMouse(tab.field(), QEvent::MouseMove, to);
    QCOMPARE(tab.hue()->value(), h);
    QCOMPARE(tab.saturation()->value(), s);
}

void TestTrueColorTab::moveWithoutAPressDoesNothing()
{
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    const QSignalSpy spy(tab.field(), &ZvHSLPallete::hsValueChanged);
    sendMouse(tab.field(), QEvent::MouseMove, QPointF(50, 40));
    sendMouse(tab.field(), QEvent::MouseButtonPress, QPointF(93, 85));
    sendMouse(tab.field(), QEvent::MouseButtonRelease, QPointF(93, 85));
    sendMouse(tab.field(), QEvent::MouseMove, QPointF(50, 40));
    QCOMPARE(spy.size(), 1);
}

void TestTrueColorTab::whiteAndBlackGetAVisibleLightness_data()
{
    QTest::addColumn<int>("before");
    QTest::addColumn<int>("after");
    QTest::newRow("100 becomes 50") << 100 << 50;
    QTest::newRow("0 becomes 50") << 0 << 50;
    QTest::newRow("99 stays") << 99 << 99;
    QTest::newRow("1 stays") << 1 << 1;
}

void TestTrueColorTab::whiteAndBlackGetAVisibleLightness()
{
    QFETCH(int, before);
    QFETCH(int, after);
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    tab.lightness()->setValue(before);
    sendMouse(tab.field(), QEvent::MouseButtonPress, QPointF(93, 85));
    QCOMPARE(tab.lightness()->value(), after);
    QCOMPARE(tab.text(), rgbText(hsl(180, 50, after)));
}

void TestTrueColorTab::fieldClampsWhatItShows_data()
{
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("s");
    QTest::addColumn<QPoint>("cross");
    QTest::newRow("below both ranges") << -5 << -5 << QPoint(0, 170);
    QTest::newRow("above both ranges") << 400 << 120 << QPoint(186, 0);
    QTest::newRow("inside") << 193 << 33 << QPoint(99, 113);
}

void TestTrueColorTab::fieldClampsWhatItShows()
{
    QFETCH(int, h);
    QFETCH(int, s);
    QFETCH(QPoint, cross);
    ZvHSLPallete field;
    field.setFixedSize(186, 170);
    field.setHS(h, s);
    COMPARE_PICTURES(pictureOf(&field), expectedField(cross.x(), cross.y()));
}

void TestTrueColorTab::fieldIsPainted_data()
{
    QTest::addColumn<QPointF>("drag");
    QTest::addColumn<QPoint>("cross");
    QTest::newRow("inside") << QPointF(60, 50) << QPoint(60, 50);
    QTest::newRow("beyond the left and upper edge") << QPointF(-30, -30) << QPoint(0, 0);
    QTest::newRow("beyond the right and lower edge") << QPointF(300, 300) << QPoint(186, 170);
}

void TestTrueColorTab::fieldIsPainted()
{
    QFETCH(QPointF, drag);
    QFETCH(QPoint, cross);
    ZvHSLPallete field; // by itself: in its panel the spin boxes move the cross on
    field.setFixedSize(186, 170);
    COMPARE_PICTURES(pictureOf(&field), expectedField(0, 169));
    sendMouse(&field, QEvent::MouseButtonPress, QPointF(93, 85));
    sendMouse(&field, QEvent::MouseMove, drag);
    COMPARE_PICTURES(pictureOf(&field), expectedField(cross.x(), cross.y()));
}

// ---- the strip ------------------------------------------------------------------------------------------------------

void TestTrueColorTab::pressOnTheStrip_data()
{
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("l");
    QTest::newRow("top") << QPointF(10, 2) << 100;
    QTest::newRow("above the strip") << QPointF(10, -40) << 100;
    QTest::newRow("middle") << QPointF(10, 85) << 50;
    QTest::newRow("truncated") << QPointF(10, 84) << int(100.0 - 82.0 / 166 * 100.0);
    QTest::newRow("bottom") << QPointF(10, 168) << 0;
    QTest::newRow("below the strip") << QPointF(10, 400) << 0;
    QTest::newRow("rounded to the next pixel") << QPointF(10, 84.5) << 50;
}

void TestTrueColorTab::pressOnTheStrip()
{
    QFETCH(QPointF, position);
    QFETCH(int, l);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove}) {
        Tab tab(kHsl, 200, 40, 40);
        QVERIFY(tab.show());
        const QList<int> before = tab.hslValues();
        const QSignalSpy spy(tab.strip(), &ZvColorLightWnd::sliderPosChanged);
        sendMouse(tab.strip(), type, position);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).toInt(), l);
        QCOMPARE(tab.lightness()->value(), l);
        QCOMPARE(tab.text(), rgbText(hsl(before[0], before[1], l)));
    }
}

void TestTrueColorTab::stripIsPainted_data()
{
    QTest::addColumn<int>("h");
    QTest::addColumn<int>("s");
    QTest::addColumn<int>("l");
    for (const int l : {0, 1, 37, 50, 99, 100}) {
        QTest::addRow("red at lightness %d", l) << 0 << 100 << l;
        QTest::addRow("pale blue at lightness %d", l) << 221 << 33 << l;
    }
}

void TestTrueColorTab::stripIsPainted()
{
    QFETCH(int, h);
    QFETCH(int, s);
    QFETCH(int, l);
    ZvColorLightWnd strip;
    strip.setFixedSize(30, 170);
    strip.setHueAndSaturation(h, s);
    strip.setPos(l);
    const int p = int((1.0f - float(l) / 100.0f) * 166.0f + 2.0f);
    const int top = p < 2 ? 1 : p > 168 ? 165 : p - 2;
    COMPARE_PICTURES(pictureOf(&strip), expectedStrip(h, s, top, p > 168 ? 169 : top + 4));

    // dragged out of the strip, the marker stays at its ends
    sendMouse(&strip, QEvent::MouseMove, QPointF(3, -9));
    COMPARE_PICTURES(pictureOf(&strip), expectedStrip(h, s, 1, 5));
    sendMouse(&strip, QEvent::MouseMove, QPointF(3, 999));
    COMPARE_PICTURES(pictureOf(&strip), expectedStrip(h, s, 165, 169));
}

void TestTrueColorTab::lowStripPaintsTheMarkerOnly()
{
    ZvColorLightWnd strip;
    strip.setFixedSize(30, 5);
    QImage expected(30, 5, QImage::Format_RGB32);
    expected.fill(Qt::white);
    setOutline(expected, 0, 1, 29, 5, qRgb(0, 0, 0)); // its lower side lies outside
    COMPARE_PICTURES(pictureOf(&strip), expected);
}

// ---- the sliders ----------------------------------------------------------------------------------------------------

void TestTrueColorTab::pressOnASlider_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<QPointF>("position");
    QTest::addColumn<int>("value");
    for (int channel = 0; channel < 3; ++channel) {
        QTest::addRow("channel %d, left end", channel) << channel << QPointF(2, 10) << 0;
        QTest::addRow("channel %d, left of it", channel) << channel << QPointF(-50, 10) << 0;
        QTest::addRow("channel %d, middle", channel) << channel << QPointF(120, 10) << 127;
        QTest::addRow("channel %d, rounded to the next pixel", channel) << channel << QPointF(119.5, 10) << 127;
        QTest::addRow("channel %d, right end", channel) << channel << QPointF(238, 10) << 255;
        QTest::addRow("channel %d, right of it", channel) << channel << QPointF(400, 10) << 255;
        QTest::addRow("channel %d, beyond 16 bits", channel)
            << channel << QPointF(31000, 10) << std::clamp(int(short(int(30998.0f / 236.0f * 255.0f))), 0, 255);
    }
}

void TestTrueColorTab::pressOnASlider()
{
    QFETCH(int, channel);
    QFETCH(QPointF, position);
    QFETCH(int, value);
    for (const QEvent::Type type : {QEvent::MouseButtonPress, QEvent::MouseMove}) {
        Tab tab(kRgb, 100, 110, 120);
        QVERIFY(tab.show());
        QList<int> expected = {100, 110, 120};
        expected[channel] = value;
        const QSignalSpy spy(tab.slider(channel), &ZvRGBSlider::sliderPosChanged);
        sendMouse(tab.slider(channel), type, position);
        QCOMPARE(spy.size(), 1);
        QCOMPARE(spy.at(0).at(0).value<ZvRGBSlider::CUR_COLOR>(), ZvRGBSlider::CUR_COLOR(channel));
        QCOMPARE(spy.at(0).at(1).toInt(), value);
        QCOMPARE(tab.rgbValues(), expected);
        QCOMPARE(tab.text(), rgbText(qRgb(expected[0], expected[1], expected[2])));
    }
}

void TestTrueColorTab::sliderIsPainted_data()
{
    QTest::addColumn<int>("channel");
    QTest::addColumn<int>("value"); // -1: as made
    for (int channel = 0; channel < 3; ++channel) {
        for (const int value : {-1, 0, 1, 128, 254, 255})
            QTest::addRow("channel %d at %d", channel, value) << channel << value;
    }
}

void TestTrueColorTab::sliderIsPainted()
{
    QFETCH(int, channel);
    QFETCH(int, value);
    ZvRGBSlider slider(ZvRGBSlider::CUR_COLOR(channel), 50, 90, 120, 240, 23);
    slider.resize(253, 25); // the size of the widget does not count
    int p = 0;
    if (value >= 0) {
        slider.setPos(value);
        p = int(value / 255.0 * 236 + 2.0);
    }
    COMPARE_PICTURES(pictureOf(&slider),
                     expectedSlider(slider.size(), channel, 50, 90, 120, std::max(p - 1, 0), p + 1));

    // dragged out of the slider, the marker stays at its ends
    sendMouse(&slider, QEvent::MouseMove, QPointF(-20, 3));
    COMPARE_PICTURES(pictureOf(&slider), expectedSlider(slider.size(), channel, 50, 90, 120, 0, -19));
    sendMouse(&slider, QEvent::MouseMove, QPointF(500, 3));
    COMPARE_PICTURES(pictureOf(&slider), expectedSlider(slider.size(), channel, 50, 90, 120, 237, 239));
}

void TestTrueColorTab::sliderIgnoresPositionsBeyond255()
{
    ZvRGBSlider slider(ZvRGBSlider::kRed, 50, 90, 120, 240, 23);
    slider.resize(240, 23);
    slider.setPos(128);
    const QImage before = pictureOf(&slider);
    slider.setPos(256);
    COMPARE_PICTURES(pictureOf(&slider), before);
}

void TestTrueColorTab::componentsRecolourAllSliders()
{
    Tab tab(kRgb, 100, 110, 120);
    QVERIFY(tab.show());
    QTRY_VERIFY(tab.rgbPanel()->isVisible());
    tab.component(1)->setValue(7);
    for (int channel = 0; channel < 3; ++channel) {
        const int values[] = {100, 7, 120};
        const int p = int(values[channel] / 255.0 * 236 + 2.0);
        COMPARE_PICTURES(pictureOf(tab.slider(channel)),
                         expectedSlider(tab.slider(channel)->size(), channel, 100, 7, 120, p - 1, p + 1));
    }
}

// ---- the spin boxes -------------------------------------------------------------------------------------------------

void TestTrueColorTab::hslSpinBoxesChangeTheColour_data()
{
    QTest::addColumn<int>("which");
    QTest::addColumn<int>("value");
    QTest::newRow("hue") << 0 << 200;
    QTest::newRow("hue 360") << 0 << 360;
    QTest::newRow("saturation") << 1 << 20;
    QTest::newRow("lightness") << 2 << 90;
}

void TestTrueColorTab::hslSpinBoxesChangeTheColour()
{
    QFETCH(int, which);
    QFETCH(int, value);
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    QList<int> expected = tab.hslValues();
    expected[which] = value;
    QSpinBox *spin = which == 0 ? tab.hue() : which == 1 ? tab.saturation() : tab.lightness();
    spin->setFocus();
    spin->selectAll();
    QTest::keyClicks(spin, QString::number(value));
    QTest::keyClick(spin, Qt::Key_Tab);
    QCOMPARE(tab.hslValues(), expected);
    QCOMPARE(tab.text(), rgbText(hsl(expected[0], expected[1], expected[2])));
    const int x = int(expected[0] * 186 / 360.0);
    const int y = int(170 * (100.0 - expected[1]) / 100.0);
    COMPARE_PICTURES(pictureOf(tab.field()), expectedField(x, y));
    const int p = int((1.0f - float(expected[2]) / 100.0f) * 166.0f + 2.0f);
    COMPARE_PICTURES(pictureOf(tab.strip()), expectedStrip(expected[0], expected[1], p - 2, p + 2));
}

void TestTrueColorTab::rgbSpinBoxesChangeTheColour_data()
{
    QTest::addColumn<int>("channel");
    QTest::newRow("red") << 0;
    QTest::newRow("green") << 1;
    QTest::newRow("blue") << 2;
}

void TestTrueColorTab::rgbSpinBoxesChangeTheColour()
{
    QFETCH(int, channel);
    Tab tab(kRgb, 100, 110, 120);
    QVERIFY(tab.show());
    QTRY_VERIFY(tab.rgbPanel()->isVisible());
    QList<int> expected = {100, 110, 120};
    expected[channel] += 1;
    QTest::keyClick(tab.component(channel), Qt::Key_Up);
    QCOMPARE(tab.text(), rgbText(qRgb(expected[0], expected[1], expected[2])));
    QCOMPARE(tab.swatch()->styleSheet(),
             QStringLiteral("QLabel{ background-color:rgb(%1);  color : gray; }").arg(tab.text()));
}

void TestTrueColorTab::hslTellsRedBlueGreen()
{
    ZvHSLWnd panel;
    panel.setHSL(0, 100, 50);
    QStringList told;
    connect(&panel, &ZvHSLWnd::redColorChanged, this, [&](int value) { told << QStringLiteral("r%1").arg(value); });
    connect(&panel, &ZvHSLWnd::greenColorChanged, this, [&](int value) { told << QStringLiteral("g%1").arg(value); });
    connect(&panel, &ZvHSLWnd::blueColorChanged, this, [&](int value) { told << QStringLiteral("b%1").arg(value); });
    panel.findChildren<QSpinBox *>().at(0)->setValue(120);
    QCOMPARE(told, (QStringList{QStringLiteral("r0"), QStringLiteral("b0"), QStringLiteral("g255")}));
}

void TestTrueColorTab::newColourIsToldRedGreenBlue()
{
    ZvRGBWnd panel;
    QStringList told;
    connect(&panel, &ZvRGBWnd::redColorChanged, this, [&](int value) { told << QStringLiteral("r%1").arg(value); });
    connect(&panel, &ZvRGBWnd::greenColorChanged, this, [&](int value) { told << QStringLiteral("g%1").arg(value); });
    connect(&panel, &ZvRGBWnd::blueColorChanged, this, [&](int value) { told << QStringLiteral("b%1").arg(value); });
    panel.setRGB(1, 2, 3);
    QCOMPARE(told, (QStringList{QStringLiteral("r1"), QStringLiteral("g2"), QStringLiteral("b3")}));
}

void TestTrueColorTab::sliderTellsItsChannelTwice()
{
    ZvRGBWnd panel;
    panel.setRGB(1, 2, 3);
    QSignalSpy red(&panel, &ZvRGBWnd::redColorChanged);
    const QSignalSpy green(&panel, &ZvRGBWnd::greenColorChanged);
    auto *slider = panel.findChildren<ZvRGBSlider *>().at(0);
    sendMouse(slider, QEvent::MouseButtonPress, QPointF(120, 10)); // the spin box tells it, then the slider
    QCOMPARE(red.size(), 2);
    QCOMPARE(green.size(), 0);
    red.clear();
    sendMouse(slider, QEvent::MouseMove, QPointF(120, 10)); // no new value for the spin box
    QCOMPARE(red.size(), 1);
}

void TestTrueColorTab::repeatedShowingRepeatsTheTelling()
{
    ZvHSLWnd panel;
    panel.setHSL(0, 100, 50);
    panel.setHSL(0, 100, 50);
    panel.setHSL(0, 100, 50);
    const QSignalSpy red(&panel, &ZvHSLWnd::redColorChanged);
    panel.findChildren<QSpinBox *>().at(0)->setValue(120);
    QCOMPARE(red.size(), 3);
    for (const QList<QVariant> &call : red)
        QCOMPARE(call.at(0).toInt(), 0);
}

void TestTrueColorTab::hueMovesTheCross()
{
    // the spin box takes the field's hue and moves the cross to where that hue begins
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    sendMouse(tab.field(), QEvent::MouseButtonPress, QPointF(100, 85));
    QCOMPARE(tab.hue()->value(), 193);
    COMPARE_PICTURES(pictureOf(tab.field()), expectedField(99, 85));
}

void TestTrueColorTab::greyLosesItsHue()
{
    Tab tab(kHsl, 200, 40, 40);
    QVERIFY(tab.show());
    tab.hue()->setValue(200);
    tab.saturation()->setValue(0);
    QCOMPARE(tab.hue()->value(), 200);
    tab.modeCombo()->setCurrentIndex(kRgb);
    tab.modeCombo()->setCurrentIndex(kHsl);
    QCOMPARE(tab.hue()->value(), 0);
    COMPARE_PICTURES(pictureOf(tab.field()), expectedField(0, 170));
}

// ---- the mode -------------------------------------------------------------------------------------------------------

void TestTrueColorTab::modeSwitchReplacesThePanel()
{
    Tab tab(kHsl, 10, 20, 30);
    QVERIFY(tab.show());
    QVERIFY(tab.hslPanel() && !tab.rgbPanel());
    tab.modeCombo()->setFocus();
    QTest::keyClick(tab.modeCombo(), Qt::Key_Down);
    QVERIFY(!tab.hslPanel() && tab.rgbPanel());
    QLayout *left = tab.trueColorTab()->layout()->itemAt(0)->layout();
    QCOMPARE(left->itemAt(0)->widget(), tab.rgbPanel());
    QTRY_VERIFY(tab.rgbPanel()->isVisible());
    QTest::keyClick(tab.modeCombo(), Qt::Key_Up);
    QVERIFY(tab.hslPanel() && !tab.rgbPanel());
    QCOMPARE(left->itemAt(0)->widget(), tab.hslPanel());
    tab.trueColorTab()->slot_switchColorMode(kHsl); // again: the panel stays
    QVERIFY(tab.hslPanel() && !tab.rgbPanel());
}

void TestTrueColorTab::modeSwitchKeepsTheColour()
{
    Tab tab(kHsl, 10, 20, 30);
    QVERIFY(tab.show());
    for (const Mode mode : {kRgb, kHsl, kRgb}) {
        tab.modeCombo()->setCurrentIndex(mode);
        QCOMPARE(tab.text(), QStringLiteral("10,20,30"));
    }
    QCOMPARE(tab.rgbValues(), (QList<int>{10, 20, 30}));
    tab.component(0)->setValue(99); // the new panel is listened to
    QCOMPARE(tab.text(), QStringLiteral("99,20,30"));
    tab.modeCombo()->setCurrentIndex(kHsl);
    tab.lightness()->setValue(100);
    QCOMPARE(tab.text(), QStringLiteral("255,255,255"));
}

void TestTrueColorTab::rgbModeConvertsNothing()
{
    // There and back again: by its components the colour is the same, by lightness it has become what its hue,
    // saturation and lightness make.
    Tab tab(kRgb, 13, 77, 201);
    QVERIFY(tab.show());
    tab.component(0)->stepUp();
    tab.component(0)->stepDown();
    QCOMPARE(tab.text(), QStringLiteral("13,77,201"));
    tab.modeCombo()->setCurrentIndex(kHsl);
    QCOMPARE(tab.text(), QStringLiteral("13,77,201"));
    const QList<int> shown = tab.hslValues();
    tab.lightness()->stepUp();
    tab.lightness()->stepDown();
    QCOMPARE(tab.hslValues(), shown);
    QCOMPARE(tab.text(), rgbText(hsl(shown[0], shown[1], shown[2])));
    QVERIFY(tab.text() != QStringLiteral("13,77,201"));
}

void TestTrueColorTab::modeIsRememberedForTheProcess()
{
    for (const Mode mode : {kRgb, kHsl}) {
        {
            const Tab tab(mode, 10, 20, 30);
        }
        const ColorDialogRun next({{"clrMethod", 194}, {"selectClr", packed(1, 2, 3)}});
        QCOMPARE(next.modeCombo()->currentIndex(), int(mode));
        QCOMPARE(next.dialog->findChild<ZvRGBWnd *>() != nullptr, mode == kRgb);
        QCOMPARE(next.dialog->findChild<ZvHSLWnd *>() != nullptr, mode == kHsl);
        QCOMPARE(next.trueColorText()->text(), QStringLiteral("1,2,3"));
    }
}

void TestTrueColorTab::comboLosesTheFocus()
{
    Tab tab(kHsl, 10, 20, 30);
    QVERIFY(tab.show());
    tab.modeCombo()->setFocus();
    tab.modeCombo()->setCurrentIndex(kRgb);
    QVERIFY(tab.dialog->focusWidget() != tab.modeCombo());
}

// ---- keys -----------------------------------------------------------------------------------------------------------

void TestTrueColorTab::acceleratorsWork_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("label"); // the buddy of it gets the focus
    struct Key
    {
        int mode;
        Qt::Key key;
        const char *label;
    };
    for (const Key &key :
         {Key{kHsl, Qt::Key_C, "颜色(&C):"}, Key{kRgb, Qt::Key_C, "颜色(&C):"}, Key{kHsl, Qt::Key_M, "颜色模式(&M):"},
          Key{kHsl, Qt::Key_U, "色调(&U)"}, Key{kHsl, Qt::Key_S, "饱和度(&S)"}, Key{kHsl, Qt::Key_L, "亮度(&L)"},
          Key{kRgb, Qt::Key_R, "红(&R):"}, Key{kRgb, Qt::Key_G, "绿(&G):"}, Key{kRgb, Qt::Key_B, "蓝(&B):"}})
        QTest::addRow("%c in %s", char(key.key), key.mode == kHsl ? "HSL" : "RGB")
            << key.mode << int(key.key) << QString::fromUtf8(key.label);
}

void TestTrueColorTab::acceleratorsWork()
{
    QFETCH(int, mode);
    QFETCH(int, key);
    QFETCH(QString, label);
    const Tab tab(Mode(mode), 10, 20, 30);
    QWidget *wanted = nullptr;
    for (QLabel *candidate : tab.trueColorTab()->findChildren<QLabel *>()) {
        if (candidate->text() == label)
            wanted = candidate->buddy();
    }
    QVERIFY(wanted);
    QList<QWidget *> focused;
    QStringList selected;
    ModalDriver driver;
    driver.next([&](QDialog *dialog) {
        const auto press = [&](QWidget *from, Qt::KeyboardModifier modifier) {
            from->setFocus();
            tab.trueColorText()->deselect();
            QTest::keyClick(dialog, Qt::Key(key), modifier);
            focused << dialog->focusWidget();
            selected << tab.trueColorText()->selectedText();
        };
        press(tab.button(0), Qt::NoModifier);
        for (QWidget *from : {static_cast<QWidget *>(tab.button(0)), wanted}) {
            press(from, Qt::AltModifier); // twice: the label and the action take turns
            press(from, Qt::AltModifier);
        }
        dialog->reject();
    });
    tab.adapter->doModal();
    QVERIFY(driver.finished());
    const QString text = key == Qt::Key_C ? QStringLiteral("10,20,30") : QString();
    QCOMPARE(focused, (QList<QWidget *>{wanted, wanted, wanted, wanted, wanted}));
    QCOMPARE(selected, (QStringList{text, text, text, text, text}));
}

ZEVA_TEST_MAIN(TestTrueColorTab)
#include "tst_truecolortab.moc"
