// SPDX-License-Identifier: MIT
#ifndef UITRUECOLORTAB_H
#define UITRUECOLORTAB_H

#include "base/zvexport.h"
#include "base/zvjson.h"

#include <QPoint>
#include <QWidget>

#include <cstdint>

QT_BEGIN_NAMESPACE
class QAction;
class QComboBox;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QSpinBox;
class QVBoxLayout;
QT_END_NAMESPACE
class ZvColorDialog;
class ZvColorLabel;

/// Red, green and blue 0 to 255; hue 0 to 360 degrees, saturation and lightness 0 to 100 per cent, rounded. Red and
/// grey have hue 0; 360 is the result where the rounding gives it alone.
ZV_EXPORT void rgbToHsl(short r, short g, short b, short &h, short &s, short &l);
/// The inverse, to within the rounding.
ZV_EXPORT void hslToRgb(short h, short s, short l, short &r, short &g, short &b);

/// The field of hue (to the right, 0 to 360) and saturation (upwards, 0 to 100), with a cross at the colour.
class ZV_EXPORT ZvHSLPallete : public QWidget
{
    Q_OBJECT
public:
    /// At hue 0 and saturation 0. Owned by \a parent.
    explicit ZvHSLPallete(QWidget *parent = nullptr);

    /// Clamps both and moves the cross. Tells nobody.
    void setHS(int h, int s);

Q_SIGNALS:
    /// The user pressed or dragged in the field.
    void hsValueChanged(int h, int s);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void pickAt(const QMouseEvent *event);

    int m_nWidth = 186; // of the picture
    int m_nHeight = 170;
    int m_nHue = 0;
    int m_nSaturation = 0;
    QPoint m_cross{0, 169};
    bool m_bPressed = false;
};

/// The strip of lightness, 100 at the top, 0 at the bottom, in one hue and saturation.
class ZV_EXPORT ZvColorLightWnd : public QWidget
{
    Q_OBJECT
public:
    /// Black to white until a hue is set. Owned by \a parent.
    explicit ZvColorLightWnd(QWidget *parent = nullptr);

    /// Repaints in this hue and saturation.
    void setHueAndSaturation(int h, int s);

public Q_SLOTS:
    /// Moves the marker to a lightness. Tells nobody.
    void setPos(int value);

Q_SIGNALS:
    /// The user pressed or dragged on the strip: the lightness, 0 to 100.
    void sliderPosChanged(int value);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void pickAt(const QMouseEvent *event);

    int m_nWidth = 30;
    int m_nHeight = 170;
    int m_nPosX = 0;
    int m_nPosY = 0;
    int m_nValue = 0;
    int m_nHue = 0;
    int m_nSaturation = 0;
};

/// A slider of one channel, painted as the run of colours that its values give with the two other channels as they are.
class ZV_EXPORT ZvRGBSlider : public QWidget
{
    Q_OBJECT
public:
    /// The channel that a slider moves.
    enum CUR_COLOR {
        kRed = 0,
        kGreen = 1,
        kBlue = 2,
    };
    Q_ENUM(CUR_COLOR)

    /// \a width and \a height are what is drawn and clicked on, in pixels, whatever size the widget gets.
    ZvRGBSlider(CUR_COLOR channel, short red, short green, short blue, int width, int height,
                QWidget *parent = nullptr);

public Q_SLOTS:
    /// The colour behind the run, 0 to 255: repaints.
    void setRed(int value);
    void setGreen(int value);
    void setBlue(int value);
    /// Moves the marker to a value of the slider's channel; nothing for 256 and more. Tells nobody.
    void setPos(int value);

Q_SIGNALS:
    /// The user pressed or dragged on the slider: the value, 0 to 255.
    void sliderPosChanged(ZvRGBSlider::CUR_COLOR channel, int value);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    void pickAt(const QMouseEvent *event);

    short m_nRed;
    short m_nGreen;
    short m_nBlue;
    CUR_COLOR m_eChannel;
    int m_nPosX = 0;
    int m_nPosY = 0;
    int m_nValue = 0;
    int m_nWidth;
    int m_nHeight;
};

/// The panel of hue, saturation and lightness.
class ZV_EXPORT ZvHSLWnd : public QWidget
{
    Q_OBJECT
public:
    /// Follows the user from the first setHSL() on. Owned by \a parent.
    explicit ZvHSLWnd(QWidget *parent = nullptr);

    /// Shows a colour and starts to follow the user. Each further call repeats the connections, so that a change is
    /// told as many times as this was called; the values are the same each time.
    void setHSL(short h, short s, short l);

Q_SIGNALS:
    /// The colour that the user made of the three values, channel by channel, each 0 to 255.
    void redColorChanged(int value);
    void greenColorChanged(int value);
    void blueColorChanged(int value);

public Q_SLOTS:
    /// The user moved the cross: hue 0 to 360, saturation 0 to 100. At the lightness of black and white the colour gets
    /// one of 50.
    void slot_hsValueChanged(int h, int s);
    /// The user moved the lightness, 0 to 100.
    void slot_lightChanged(int value);
    /// The user changed hue or saturation by its spin box.
    void slot_hsSpinboxValueChanged();
    /// Gives the entry of the hue the keyboard.
    void slot_KeyU_clicked();
    /// Gives the entry of the saturation the keyboard.
    void slot_KeyS_clicked();
    /// Gives the entry of the lightness the keyboard.
    void slot_KeyL_clicked();

private:
    void tellColor();

    QSpinBox *m_pHueSpin = nullptr;
    QSpinBox *m_pSaturationSpin = nullptr;
    QSpinBox *m_pLightSpin = nullptr;
    ZvHSLPallete *m_pField = nullptr;
    ZvColorLightWnd *m_pStrip = nullptr;
    QAction *m_pActionU = nullptr;
    QAction *m_pActionS = nullptr;
    QAction *m_pActionL = nullptr;
};

/// The panel of red, green and blue.
class ZV_EXPORT ZvRGBWnd : public QWidget
{
    Q_OBJECT
public:
    /// Owned by \a parent.
    explicit ZvRGBWnd(QWidget *parent = nullptr);

    /// Shows a colour, components 0 to 255. In a new panel the sliders are not told of components of 0.
    void setRGB(int r, int g, int b);

Q_SIGNALS:
    /// A channel has a new value, 0 to 255; told twice where it comes from a slider.
    void redColorChanged(int value);
    void greenColorChanged(int value);
    void blueColorChanged(int value);

public Q_SLOTS:
    /// The user moved the slider of \a channel.
    void slot_RGBSliderChanged(ZvRGBSlider::CUR_COLOR channel, int value);
    /// Gives the entry of red the keyboard.
    void slot_keyR_triggered();
    /// Gives the entry of green the keyboard.
    void slot_keyG_triggered();
    /// Gives the entry of blue the keyboard.
    void slot_keyB_triggered();

private:
    ZvRGBSlider *m_pRedSlider = nullptr;
    ZvRGBSlider *m_pGreenSlider = nullptr;
    ZvRGBSlider *m_pBlueSlider = nullptr;
    QSpinBox *m_pRedSpin = nullptr;
    QSpinBox *m_pGreenSpin = nullptr;
    QSpinBox *m_pBlueSpin = nullptr;
    QAction *m_pActionR = nullptr;
    QAction *m_pActionG = nullptr;
    QAction *m_pActionB = nullptr;
};

/// The true colour tab of the colour dialog: one of the two panels, a text entry for the three components, and the
/// colour in figures and as a swatch. The choice of the panel is remembered for the process.
///
/// What is typed into the text entry counts when readRgb() is called.
class ZV_EXPORT ZvTrueColorWnd : public QWidget
{
    Q_OBJECT
public:
    /// Owned by \a dialog, which a double click on the swatch accepts. Not null.
    explicit ZvTrueColorWnd(ZvColorDialog *dialog);
    ~ZvTrueColorWnd() override;

    /// Shows "selectClr", taken as a packed colour whatever "clrMethod" says; black when absent. Can be called again.
    /// \a params must not be null.
    void onInit(ZvJsonPtr params, ZvRxObjectPtr helper);
    /// Takes the colour from the text entry. False: a message was shown, and the outputs hold the colour before.
    bool readRgb(unsigned &r, unsigned &g, unsigned &b);

public Q_SLOTS:
    /// Shows the panel of the mode: 0 hue, saturation and lightness, 1 red, green and blue; remembered for the process.
    void slot_switchColorMode(int mode);
    /// A component has a new value, 0 to 255: shown in figures, in the text entry and as a swatch.
    void slot_redColorChanged(int value);
    void slot_greenColorChanged(int value);
    void slot_blueColorChanged(int value);
    /// Gives the text entry the keyboard, its text selected.
    void slot_KeyC_clicked();
    /// Gives the choice of the panel the keyboard.
    void slot_KeyM_clicked();

private:
    template <class Panel> void connectPanel(const Panel *panel);
    void showRgb(std::uint32_t packedColor);
    void showHsl();
    void replacePanel(QWidget *from, QWidget *to);
    void refresh();

    ZvJsonPtr m_pParams;
    ZvRxObject *m_pHelper = nullptr; // not owned, no reference
    ZvHSLWnd *m_pHSLWnd = nullptr; // null in RGB mode
    ZvRGBWnd *m_pRGBWnd = nullptr; // null in HSL mode
    QLineEdit *m_pTextEdit = nullptr;
    QComboBox *m_pModeCombo = nullptr;
    ZvColorLabel *m_pSwatch = nullptr;
    QHBoxLayout *m_pOuterLayout = nullptr;
    QVBoxLayout *m_pLeftLayout = nullptr;
    QLabel *m_pRedLabel = nullptr;
    QLabel *m_pGreenLabel = nullptr;
    QLabel *m_pBlueLabel = nullptr;
    QAction *m_pActionC = nullptr;
    ZvColorDialog *m_pDialog; // not owned
    QAction *m_pActionM = nullptr;
    int m_nRed = 255;
    int m_nGreen = 255;
    int m_nBlue = 255;
};

#endif
