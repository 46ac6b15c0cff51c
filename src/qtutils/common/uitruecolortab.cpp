// SPDX-License-Identifier: MIT
#include "uitruecolortab.h"

#include "private/zvaccelerator.h"
#include "private/zvaccessibility.h"
#include "private/zvbagreader.h"
#include "private/zvcolorkeys.h"
#include "private/zvqtcolor.h"
#include "private/zvqtstring.h"
#include "uicolorindextab.h"
#include "zvcolordialog.h"

#include "base/zvcmcolor.h"
#include "core/zvui.h"

#include <QAction>
#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPixmap>
#include <QSpinBox>
#include <QVBoxLayout>

#include <algorithm>
#include <cstdint>
#include <memory>

namespace {

enum ColorMode {
    kHslMode = 0,
    kRgbMode = 1,
};
int s_colorMode = kHslMode; // outlives the dialog: the next one opens in the mode of the last

constexpr int kMaxHue = 360;
constexpr int kMaxPercent = 100;
constexpr int kMaxComponent = 255;

constexpr QSize kFieldSize(186, 170);
constexpr QSize kStripSize(30, 170);
constexpr QSize kSliderSize(240, 23);
constexpr int kStep = 3; // strip and sliders are painted in steps of three pixels
constexpr int kRim = 2; // and leave this much around the colours for the marker
constexpr int kCrossArm = 10;
constexpr int kPercentSpinWidth = 45;
constexpr int kComponentSpinHeight = 18;
constexpr int kMiddleLightness = 50;

constexpr double kRounding = 0.5001; // not one half: components that stand at a half come out the same on both ways

short rounded(double value)
{
    return short(value + kRounding);
}

void showMessage()
{
    ZvUiMessageBox(zvToZvString(ZvTrueColorWnd::tr("不是有效的真彩色值。")), L"Zevara", 0);
}

/// A component of 256 or more makes the colour invalid.
QColor toQColor(short red, short green, short blue)
{
    return QColor(red, green, blue);
}

/// The outline through these pixels, corners included.
QRect outline(int left, int top, int right, int bottom)
{
    return QRect(left, top, right - left, bottom - top);
}

QSpinBox *makeSpinBox(int maximum)
{
    auto *spin = new QSpinBox;
    spin->setRange(0, maximum);
    return spin;
}

QLabel *makeLabel(const QString &text, QWidget *buddy)
{
    auto *label = new QLabel(text);
    label->setBuddy(buddy);
    return label;
}

QVBoxLayout *makePercentColumn(const QString &text, QSpinBox *spin)
{
    spin->setFixedWidth(kPercentSpinWidth);
    auto *column = new QVBoxLayout;
    column->setSpacing(0);
    column->addWidget(makeLabel(text, spin));
    column->addWidget(spin);
    return column;
}

} // namespace

void rgbToHsl(short r, short g, short b, short &h, short &s, short &l)
{
    ZvGeVector3d hsl;
    zvdbConvertRgbToHsl(ZvGeVector3d(r / 255.0, g / 255.0, b / 255.0), hsl);
    h = rounded(hsl.x);
    s = rounded(hsl.y * 100.0);
    l = rounded(hsl.z * 100.0);
}

void hslToRgb(short h, short s, short l, short &r, short &g, short &b)
{
    ZvGeVector3d rgb;
    zvdbConvertHslToRgb(ZvGeVector3d(h, s / 100.0, l / 100.0), rgb);
    r = rounded(rgb.x * 255.0);
    g = rounded(rgb.y * 255.0);
    b = rounded(rgb.z * 255.0);
}

// ---- the field of hue and saturation --------------------------------------------------------------------------------

ZvHSLPallete::ZvHSLPallete(QWidget *parent) : QWidget(parent) { }

void ZvHSLPallete::setHS(int h, int s)
{
    m_nHue = std::clamp(h, 0, kMaxHue);
    m_nSaturation = std::clamp(s, 0, kMaxPercent);
    m_cross = QPoint(int(m_nHue * width() / 360.0), int(height() * (100.0 - m_nSaturation) / 100.0));
    repaint();
}

void ZvHSLPallete::pickAt(const QMouseEvent *event)
{
    m_cross = event->localPos().toPoint();
    // Beyond the right and the lower edge the last values stay; to the left and above, the nearest count.
    if (m_cross.x() <= m_nWidth && m_cross.y() <= m_nHeight) {
        const double hue = double(m_cross.x()) / m_nWidth * 360.0;
        const double saturation = 100.0 - m_cross.y() * 100.0 / m_nHeight;
        m_nHue = std::clamp(int(hue), 0, kMaxHue);
        m_nSaturation = std::clamp(int(saturation), 0, kMaxPercent);
    }
    Q_EMIT hsValueChanged(m_nHue, m_nSaturation);
    repaint();
}

void ZvHSLPallete::mousePressEvent(QMouseEvent *event)
{
    m_bPressed = true;
    pickAt(event);
}

void ZvHSLPallete::mouseReleaseEvent(QMouseEvent *)
{
    m_bPressed = false;
}

void ZvHSLPallete::mouseMoveEvent(QMouseEvent *event)
{
    if (m_bPressed)
        pickAt(event);
}

void ZvHSLPallete::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const QRect picture(0, 0, m_nWidth, m_nHeight);
    painter.drawPixmap(picture, QPixmap(QStringLiteral(":/res/TColor.bmp")), picture);
    const int x = std::clamp(m_cross.x(), 0, m_nWidth);
    const int y = std::clamp(m_cross.y(), 0, m_nHeight);
    painter.drawLine(x - kCrossArm, y, x + kCrossArm, y);
    painter.drawLine(x, y - kCrossArm, x, y + kCrossArm);
}

// ---- the strip of lightness -----------------------------------------------------------------------------------------

ZvColorLightWnd::ZvColorLightWnd(QWidget *parent) : QWidget(parent) { }

void ZvColorLightWnd::setHueAndSaturation(int h, int s)
{
    m_nHue = h;
    m_nSaturation = s;
    repaint();
}

void ZvColorLightWnd::setPos(int value)
{
    m_nPosY = int((1.0f - float(value) / 100.0f) * float(height() - 1 - 3) + 2.0f);
    repaint();
}

void ZvColorLightWnd::pickAt(const QMouseEvent *event)
{
    const QPoint position = event->localPos().toPoint();
    m_nPosX = position.x();
    m_nPosY = position.y();
    const double value = 100.0 - double(m_nPosY - kRim) / (m_nHeight - 2 * kRim) * 100.0;
    m_nValue = std::clamp(int(value), 0, kMaxPercent);
    Q_EMIT sliderPosChanged(m_nValue);
    repaint();
}

void ZvColorLightWnd::mousePressEvent(QMouseEvent *event)
{
    pickAt(event);
}

void ZvColorLightWnd::mouseMoveEvent(QMouseEvent *event)
{
    pickAt(event);
}

void ZvColorLightWnd::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    const int right = width() - 1 - kRim;
    const int bottom = height() - 1 - kRim;
    if (bottom > kRim) {
        const double scale = 100.0 / (height() - 1 - 2 * kRim);
        for (int y = kRim; y < bottom; y += kStep) {
            short red = 0;
            short green = 0;
            short blue = 0;
            hslToRgb(short(m_nHue), short(m_nSaturation), short((bottom - y) * scale), red, green, blue);
            painter.fillRect(kRim, y, right - kRim, kStep, toQColor(red, green, blue));
        }
    }
    int top = m_nPosY - 2;
    int end = m_nPosY + 2;
    if (m_nPosY < 2) {
        top = 1;
        end = 5;
    } else if (m_nPosY > m_nHeight - 2) {
        top = m_nHeight - 5;
        end = m_nHeight - 1;
    }
    painter.drawRect(outline(0, top, m_nWidth - 1, end));
}

// ---- a slider of one channel ----------------------------------------------------------------------------------------

ZvRGBSlider::ZvRGBSlider(CUR_COLOR channel, short red, short green, short blue, int width, int height, QWidget *parent)
    : QWidget(parent), m_nRed(red), m_nGreen(green), m_nBlue(blue), m_eChannel(channel), m_nWidth(width),
      m_nHeight(height)
{
    qRegisterMetaType<CUR_COLOR>(); // travels in a signal
}

void ZvRGBSlider::setRed(int value)
{
    m_nRed = short(value);
    repaint();
}

void ZvRGBSlider::setGreen(int value)
{
    m_nGreen = short(value);
    repaint();
}

void ZvRGBSlider::setBlue(int value)
{
    m_nBlue = short(value);
    repaint();
}

void ZvRGBSlider::setPos(int value)
{
    if (value > kMaxComponent)
        return;
    m_nPosX = int(value / 255.0 * (m_nWidth - 2 * kRim) + kRim);
    repaint();
}

void ZvRGBSlider::pickAt(const QMouseEvent *event)
{
    const QPoint position = event->localPos().toPoint();
    m_nPosX = position.x();
    m_nPosY = position.y();
    const float value = float(m_nPosX - kRim) / float(m_nWidth - 2 * kRim) * 255.0f;
    m_nValue = std::clamp(int(std::int16_t(int(value))), 0, kMaxComponent);
    Q_EMIT sliderPosChanged(m_eChannel, m_nValue);
    repaint();
}

void ZvRGBSlider::mousePressEvent(QMouseEvent *event)
{
    pickAt(event);
}

void ZvRGBSlider::mouseMoveEvent(QMouseEvent *event)
{
    pickAt(event);
}

void ZvRGBSlider::paintEvent(QPaintEvent *)
{
    QPainter painter(this);
    short &own = m_eChannel == kRed ? m_nRed : m_eChannel == kGreen ? m_nGreen : m_nBlue;
    int x = kRim;
    for (;;) {
        own = short((x - 2.0) * 255.0 / (m_nWidth - 2 * kRim));
        painter.fillRect(x, kRim, kStep, m_nHeight - 2 * kRim, toQColor(m_nRed, m_nGreen, m_nBlue));
        if (m_nWidth - kRim <= x + kStep)
            break;
        x += kStep;
    }
    int left = std::max(m_nPosX - 1, 0);
    if (left >= m_nWidth - 2)
        left = m_nWidth - 3;
    int right = m_nPosX + 1;
    if (right >= m_nWidth)
        right = m_nWidth - 1;
    painter.drawRect(outline(left, 1, right, m_nHeight - 1));
}

// ---- the panel of hue, saturation and lightness ---------------------------------------------------------------------

ZvHSLWnd::ZvHSLWnd(QWidget *parent) : QWidget(parent)
{
    m_pHueSpin = makeSpinBox(kMaxHue);
    m_pSaturationSpin = makeSpinBox(kMaxPercent);
    m_pLightSpin = makeSpinBox(kMaxPercent);
    m_pLightSpin->setValue(kMaxPercent);
    m_pField = new ZvHSLPallete;
    m_pField->setFixedSize(kFieldSize);
    m_pStrip = new ZvColorLightWnd;
    m_pStrip->setFixedSize(kStripSize);

    auto *grid = new QGridLayout(this);
    grid->setContentsMargins(1, 1, 1, 1);
    grid->setVerticalSpacing(20);
    grid->setColumnStretch(0, 1);
    grid->setColumnStretch(1, 2);
    auto *row = new QHBoxLayout;
    row->addLayout(makePercentColumn(tr("色调(&U)"), m_pHueSpin));
    row->addStretch(1);
    row->addLayout(makePercentColumn(tr("饱和度(&S)"), m_pSaturationSpin));
    row->addStretch(2);
    grid->addLayout(row, 0, 0);
    grid->addLayout(makePercentColumn(tr("亮度(&L)"), m_pLightSpin), 0, 1);
    grid->addWidget(m_pField, 1, 0);
    grid->addWidget(m_pStrip, 1, 1, Qt::AlignLeft);

    // By the keyboard field and strip do what a press there does.
    zvMakePicker(m_pField,
                 {QAccessible::ColorChooser, QT_TRANSLATE_NOOP("ZvAccessibility", "Field of hue and saturation"),
                  [this] { return QStringLiteral("%1, %2").arg(m_pHueSpin->value()).arg(m_pSaturationSpin->value()); },
                  [this](int right, int up) {
                      const int hue = qBound(0, m_pHueSpin->value() + right, kMaxHue);
                      const int saturation = qBound(0, m_pSaturationSpin->value() + up, kMaxPercent);
                      m_pField->setHS(hue, saturation);
                      Q_EMIT m_pField->hsValueChanged(hue, saturation);
                  }});
    zvMakePicker(m_pStrip, {QAccessible::Slider, QT_TRANSLATE_NOOP("ZvAccessibility", "Strip of lightness"),
                            [this] { return QString::number(m_pLightSpin->value()); },
                            [this](int right, int up) {
                                const int lightness = qBound(0, m_pLightSpin->value() + right + up, kMaxPercent);
                                m_pStrip->setPos(lightness);
                                Q_EMIT m_pStrip->sliderPosChanged(lightness);
                            }});

    m_pActionU = zvAddAccelerator(this, Qt::Key_U, ZvAcceleratorKeys::kPlainAndAlt);
    m_pActionS = zvAddAccelerator(this, Qt::Key_S, ZvAcceleratorKeys::kPlainAndAlt);
    m_pActionL = zvAddAccelerator(this, Qt::Key_L, ZvAcceleratorKeys::kPlainAndAlt);
}

void ZvHSLWnd::setHSL(short h, short s, short l)
{
    m_pLightSpin->setValue(l);
    m_pHueSpin->setValue(h);
    m_pSaturationSpin->setValue(s);
    m_pStrip->setHueAndSaturation(h, s);
    m_pStrip->setPos(l);
    m_pField->setHS(h, s);

    // Made once more by each call and never undone: a colour is then told several times over with the same values,
    // which whoever listens to a panel has to bear.
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    connect(m_pField, &ZvHSLPallete::hsValueChanged, this, &ZvHSLWnd::slot_hsValueChanged);
    connect(m_pStrip, &ZvColorLightWnd::sliderPosChanged, this, &ZvHSLWnd::slot_lightChanged);
    connect(m_pHueSpin, valueChanged, this, &ZvHSLWnd::slot_hsSpinboxValueChanged);
    connect(m_pSaturationSpin, valueChanged, this, &ZvHSLWnd::slot_hsSpinboxValueChanged);
    connect(m_pLightSpin, valueChanged, m_pStrip, &ZvColorLightWnd::setPos);
    connect(m_pLightSpin, valueChanged, this, &ZvHSLWnd::slot_lightChanged);
    connect(m_pActionU, &QAction::triggered, this, &ZvHSLWnd::slot_KeyU_clicked);
    connect(m_pActionS, &QAction::triggered, this, &ZvHSLWnd::slot_KeyS_clicked);
    connect(m_pActionL, &QAction::triggered, this, &ZvHSLWnd::slot_KeyL_clicked);
}

void ZvHSLWnd::slot_hsValueChanged(int h, int s)
{
    m_pHueSpin->setValue(h);
    m_pSaturationSpin->setValue(s);
    m_pStrip->setHueAndSaturation(h, s);
    // White and black have no hue to see.
    if (m_pLightSpin->value() == kMaxPercent || m_pLightSpin->value() == 0)
        m_pLightSpin->setValue(kMiddleLightness);
    tellColor();
}

void ZvHSLWnd::slot_hsSpinboxValueChanged()
{
    m_pField->setHS(m_pHueSpin->value(), m_pSaturationSpin->value());
    m_pStrip->setHueAndSaturation(m_pHueSpin->value(), m_pSaturationSpin->value());
    tellColor();
}

void ZvHSLWnd::slot_lightChanged(int value)
{
    m_pLightSpin->setValue(value);
    tellColor();
}

void ZvHSLWnd::tellColor()
{
    short red = 0;
    short green = 0;
    short blue = 0;
    hslToRgb(short(m_pHueSpin->value()), short(m_pSaturationSpin->value()), short(m_pLightSpin->value()), red, green,
             blue);
    Q_EMIT redColorChanged(red);
    Q_EMIT blueColorChanged(blue);
    Q_EMIT greenColorChanged(green);
}

void ZvHSLWnd::slot_KeyU_clicked()
{
    m_pHueSpin->setFocus();
}

void ZvHSLWnd::slot_KeyS_clicked()
{
    m_pSaturationSpin->setFocus();
}

void ZvHSLWnd::slot_KeyL_clicked()
{
    m_pLightSpin->setFocus();
}

// ---- the panel of red, green and blue -------------------------------------------------------------------------------

ZvRGBWnd::ZvRGBWnd(QWidget *parent) : QWidget(parent)
{
    const auto makeSlider = [](ZvRGBSlider::CUR_COLOR channel, short red, short green, short blue) {
        return new ZvRGBSlider(channel, red, green, blue, kSliderSize.width(), kSliderSize.height());
    };
    m_pRedSlider = makeSlider(ZvRGBSlider::kRed, 50, 23, 56);
    m_pGreenSlider = makeSlider(ZvRGBSlider::kGreen, 50, 90, 56);
    m_pBlueSlider = makeSlider(ZvRGBSlider::kBlue, 50, 23, 120);
    m_pRedSpin = makeSpinBox(kMaxComponent);
    m_pGreenSpin = makeSpinBox(kMaxComponent);
    m_pBlueSpin = makeSpinBox(kMaxComponent);

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    const auto giveKeys = [](ZvRGBSlider *slider, ZvRGBSlider::CUR_COLOR channel, QSpinBox *spin, const char *name) {
        zvMakePicker(slider, {QAccessible::Slider, name, [spin] { return QString::number(spin->value()); },
                              [slider, channel, spin](int right, int up) {
                                  const int value = qBound(0, spin->value() + right + up, kMaxComponent);
                                  slider->setPos(value);
                                  Q_EMIT slider->sliderPosChanged(channel, value);
                              }});
    };
    giveKeys(m_pRedSlider, ZvRGBSlider::kRed, m_pRedSpin, QT_TRANSLATE_NOOP("ZvAccessibility", "Red"));
    giveKeys(m_pGreenSlider, ZvRGBSlider::kGreen, m_pGreenSpin, QT_TRANSLATE_NOOP("ZvAccessibility", "Green"));
    giveKeys(m_pBlueSlider, ZvRGBSlider::kBlue, m_pBlueSpin, QT_TRANSLATE_NOOP("ZvAccessibility", "Blue"));
    const auto addChannel = [column](const QString &text, QSpinBox *spin, ZvRGBSlider *slider) {
        spin->setFixedHeight(kComponentSpinHeight);
        column->addWidget(makeLabel(text, spin), 0, Qt::AlignLeft);
        column->addWidget(spin, 0, Qt::AlignLeft);
        column->addWidget(slider);
    };
    addChannel(tr("红(&R):"), m_pRedSpin, m_pRedSlider);
    addChannel(tr("绿(&G):"), m_pGreenSpin, m_pGreenSlider);
    addChannel(tr("蓝(&B):"), m_pBlueSpin, m_pBlueSlider);

    m_pActionR = zvAddAccelerator(this, Qt::Key_R, ZvAcceleratorKeys::kPlainAndAlt);
    m_pActionG = zvAddAccelerator(this, Qt::Key_G, ZvAcceleratorKeys::kPlainAndAlt);
    m_pActionB = zvAddAccelerator(this, Qt::Key_B, ZvAcceleratorKeys::kPlainAndAlt);
    connect(m_pActionR, &QAction::triggered, this, &ZvRGBWnd::slot_keyR_triggered);
    connect(m_pActionG, &QAction::triggered, this, &ZvRGBWnd::slot_keyG_triggered);
    connect(m_pActionB, &QAction::triggered, this, &ZvRGBWnd::slot_keyB_triggered);

    // A channel moves its own slider and recolours all three before it is told.
    const auto valueChanged = QOverload<int>::of(&QSpinBox::valueChanged);
    for (ZvRGBSlider *slider : {m_pRedSlider, m_pGreenSlider, m_pBlueSlider}) {
        connect(slider, &ZvRGBSlider::sliderPosChanged, this, &ZvRGBWnd::slot_RGBSliderChanged);
        connect(m_pRedSpin, valueChanged, slider, &ZvRGBSlider::setRed);
        connect(m_pGreenSpin, valueChanged, slider, &ZvRGBSlider::setGreen);
        connect(m_pBlueSpin, valueChanged, slider, &ZvRGBSlider::setBlue);
    }
    connect(m_pRedSpin, valueChanged, m_pRedSlider, &ZvRGBSlider::setPos);
    connect(m_pGreenSpin, valueChanged, m_pGreenSlider, &ZvRGBSlider::setPos);
    connect(m_pBlueSpin, valueChanged, m_pBlueSlider, &ZvRGBSlider::setPos);
    connect(m_pRedSpin, valueChanged, this, &ZvRGBWnd::redColorChanged);
    connect(m_pGreenSpin, valueChanged, this, &ZvRGBWnd::greenColorChanged);
    connect(m_pBlueSpin, valueChanged, this, &ZvRGBWnd::blueColorChanged);
}

void ZvRGBWnd::setRGB(int r, int g, int b)
{
    // A component of 0 is where a new spin box stands already: the sliders are not told of it and keep, for that
    // component, the colour they were made with, until the user moves it.
    m_pRedSpin->setValue(r);
    m_pGreenSpin->setValue(g);
    m_pBlueSpin->setValue(b);
}

void ZvRGBWnd::slot_RGBSliderChanged(ZvRGBSlider::CUR_COLOR channel, int value)
{
    // Told by the spin box already where the value is a new one; a second time does no harm.
    switch (channel) {
    case ZvRGBSlider::kRed:
        m_pRedSpin->setValue(value);
        Q_EMIT redColorChanged(value);
        break;
    case ZvRGBSlider::kGreen:
        m_pGreenSpin->setValue(value);
        Q_EMIT greenColorChanged(value);
        break;
    case ZvRGBSlider::kBlue:
        m_pBlueSpin->setValue(value);
        Q_EMIT blueColorChanged(value);
        break;
    }
}

void ZvRGBWnd::slot_keyR_triggered()
{
    m_pRedSpin->setFocus();
}

void ZvRGBWnd::slot_keyG_triggered()
{
    m_pGreenSpin->setFocus();
}

void ZvRGBWnd::slot_keyB_triggered()
{
    m_pBlueSpin->setFocus();
}

// ---- the tab --------------------------------------------------------------------------------------------------------

ZvTrueColorWnd::ZvTrueColorWnd(ZvColorDialog *dialog) : QWidget(dialog), m_pDialog(dialog)
{
    m_pOuterLayout = new QHBoxLayout(this);
    m_pLeftLayout = new QVBoxLayout;
    m_pLeftLayout->setSpacing(20);
    if (s_colorMode == kHslMode) {
        m_pHSLWnd = new ZvHSLWnd(this);
        connectPanel(m_pHSLWnd);
        m_pLeftLayout->addWidget(m_pHSLWnd);
    } else {
        m_pRGBWnd = new ZvRGBWnd(this);
        connectPanel(m_pRGBWnd);
        m_pLeftLayout->addWidget(m_pRGBWnd);
    }
    m_pTextEdit = new QLineEdit;
    QLabel *textLabel = makeLabel(tr("颜色(&C):"), m_pTextEdit);
    auto *textRow = new QHBoxLayout;
    textRow->addWidget(textLabel);
    textRow->addWidget(m_pTextEdit);
    textRow->addStretch(0);
    m_pLeftLayout->addLayout(textRow);

    m_pModeCombo = new QComboBox;
    m_pModeCombo->addItems({QStringLiteral("HSL"), QStringLiteral("RGB")});
    m_pModeCombo->setCurrentIndex(s_colorMode);
    m_pRedLabel = new QLabel(tr("  红:   %1").arg(m_nRed));
    m_pGreenLabel = new QLabel(tr("  绿:   %1").arg(m_nGreen));
    m_pBlueLabel = new QLabel(tr("  蓝:   %1").arg(m_nBlue));
    m_pSwatch = new ZvColorLabel;
    auto *rightLayout = new QVBoxLayout;
    rightLayout->addWidget(makeLabel(tr("颜色模式(&M):"), m_pModeCombo));
    rightLayout->addWidget(m_pModeCombo);
    rightLayout->addWidget(new QLabel(tr("真彩色保存为\r\nRGB:")));
    rightLayout->addWidget(m_pRedLabel);
    rightLayout->addWidget(m_pGreenLabel);
    rightLayout->addWidget(m_pBlueLabel);
    rightLayout->addWidget(m_pSwatch, 0, Qt::AlignRight);

    m_pOuterLayout->addLayout(m_pLeftLayout);
    m_pOuterLayout->addLayout(rightLayout);

    m_pActionC = zvAddAccelerator(this, Qt::Key_C, ZvAcceleratorKeys::kPlainAndAlt, textLabel);
    m_pActionM = zvAddAccelerator(this, Qt::Key_M, ZvAcceleratorKeys::kPlainAndAlt);
    connect(m_pModeCombo, QOverload<int>::of(&QComboBox::currentIndexChanged), this,
            &ZvTrueColorWnd::slot_switchColorMode);
    connect(m_pActionC, &QAction::triggered, this, &ZvTrueColorWnd::slot_KeyC_clicked);
    connect(m_pActionM, &QAction::triggered, this, &ZvTrueColorWnd::slot_KeyM_clicked);
    connect(m_pSwatch, &ZvColorLabel::doubleClicked, this, [this] {
        m_pDialog->accept();
        m_pDialog->close(); // where the text was refused and the dialog is still open, this cancels it
    });
}

ZvTrueColorWnd::~ZvTrueColorWnd() = default;

template <class Panel> void ZvTrueColorWnd::connectPanel(const Panel *panel)
{
    connect(panel, &Panel::redColorChanged, this, &ZvTrueColorWnd::slot_redColorChanged);
    connect(panel, &Panel::greenColorChanged, this, &ZvTrueColorWnd::slot_greenColorChanged);
    connect(panel, &Panel::blueColorChanged, this, &ZvTrueColorWnd::slot_blueColorChanged);
}

void ZvTrueColorWnd::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    m_pParams = params;
    m_pHelper = helper.get();
    const auto color = std::uint32_t(zvBagInt(m_pParams, kSelectClrKey, 0));
    showRgb(color);
    if (m_pHSLWnd) {
        showHsl();
        // From its second time on the panel has told its rounding of the colour; what was asked for stands.
        showRgb(color);
    } else {
        m_pRGBWnd->setRGB(m_nRed, m_nGreen, m_nBlue);
    }
}

void ZvTrueColorWnd::showRgb(std::uint32_t packedColor)
{
    slot_redColorChanged(zvPackedRed(packedColor));
    slot_greenColorChanged(zvPackedGreen(packedColor));
    slot_blueColorChanged(zvPackedBlue(packedColor));
}

void ZvTrueColorWnd::showHsl()
{
    short hue = 0;
    short saturation = 0;
    short lightness = 0;
    rgbToHsl(short(m_nRed), short(m_nGreen), short(m_nBlue), hue, saturation, lightness);
    m_pHSLWnd->setHSL(hue, saturation, lightness);
}

bool ZvTrueColorWnd::readRgb(unsigned &r, unsigned &g, unsigned &b)
{
    r = unsigned(m_nRed);
    g = unsigned(m_nGreen);
    b = unsigned(m_nBlue);

    const QStringList components = m_pTextEdit->text().split(QLatin1Char(','));
    bool isValid = components.size() == 3;
    unsigned values[3] = {};
    for (int i = 0; isValid && i < 3; ++i) {
        values[i] = components.at(i).toUInt(&isValid);
        isValid = isValid && values[i] <= unsigned(kMaxComponent);
    }
    if (!isValid) {
        showMessage();
        return false;
    }
    r = values[0];
    g = values[1];
    b = values[2];
    m_nRed = int(r);
    m_nGreen = int(g);
    m_nBlue = int(b);
    return true;
}

void ZvTrueColorWnd::slot_switchColorMode(int mode)
{
    m_pModeCombo->clearFocus();
    if (mode == kHslMode) {
        s_colorMode = kHslMode;
        if (!m_pHSLWnd) {
            m_pHSLWnd = new ZvHSLWnd(this);
            showHsl();
            connectPanel(m_pHSLWnd);
        }
        replacePanel(m_pRGBWnd, m_pHSLWnd);
        m_pRGBWnd = nullptr;
    } else if (mode == kRgbMode) {
        s_colorMode = kRgbMode;
        if (!m_pRGBWnd) {
            m_pRGBWnd = new ZvRGBWnd(this);
            m_pRGBWnd->setRGB(m_nRed, m_nGreen, m_nBlue);
            connectPanel(m_pRGBWnd);
        }
        replacePanel(m_pHSLWnd, m_pRGBWnd);
        m_pHSLWnd = nullptr;
    }
}

/// Deletes \a from, which may be null.
void ZvTrueColorWnd::replacePanel(QWidget *from, QWidget *to)
{
    if (!from)
        return;
    const std::unique_ptr<QLayoutItem> item(m_pLeftLayout->replaceWidget(from, to, Qt::FindChildrenRecursively));
    delete from;
}

void ZvTrueColorWnd::slot_redColorChanged(int value)
{
    m_nRed = value;
    m_pRedLabel->setText(tr("  红:   %1").arg(value));
    refresh();
}

void ZvTrueColorWnd::slot_greenColorChanged(int value)
{
    m_nGreen = value;
    m_pGreenLabel->setText(tr("  绿:   %1").arg(value));
    refresh();
}

void ZvTrueColorWnd::slot_blueColorChanged(int value)
{
    m_nBlue = value;
    m_pBlueLabel->setText(tr("  蓝:   %1").arg(value));
    refresh();
}

void ZvTrueColorWnd::refresh()
{
    m_pTextEdit->setText(QStringLiteral("%1,%2,%3").arg(m_nRed).arg(m_nGreen).arg(m_nBlue));
    m_pSwatch->showColor(m_nRed, m_nGreen, m_nBlue);
}

void ZvTrueColorWnd::slot_KeyC_clicked()
{
    m_pTextEdit->setFocus();
    m_pTextEdit->selectAll();
}

void ZvTrueColorWnd::slot_KeyM_clicked()
{
    m_pModeCombo->setFocus();
}
