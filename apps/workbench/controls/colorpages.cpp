// SPDX-License-Identifier: MIT
#include "controlpages.h"

#include "uicolorindextab.h"
#include "uitruecolortab.h"
#include "zvcolorbutton.h"
#include "zvqtcolorlabel.h"

namespace {

QColor start()
{
    return QColor(24, 118, 210);
}

void setColor(QWidget &control, const QColor &color)
{
    ZvCmColor value;
    value.setRGB(std::uint8_t(color.red()), std::uint8_t(color.green()), std::uint8_t(color.blue()));
    if (auto *button = qobject_cast<ZvColorButtonWidget *>(&control))
        button->setColor(value);
    else if (auto *label = qobject_cast<ZvQtColorLabel *>(&control))
        label->SetColor(value);
}

template <class Control> QWidget *make(bool, QWidget *parent)
{
    auto *control = new Control(parent);
    setColor(*control, start());
    return control;
}

ControlSetting colorSetting()
{
    return {"color", PAGE_TEXT("Colour"), {start()}, [](QWidget &control, const QVariant &value) {
                setColor(control, value.value<QColor>());
            }};
}

/// A part of the colour dialog, which has no value of its own until it is given one.
template <class Part, class Show>
ControlPageData part(const char *className, const char *id, const char *purpose, const QSize &size, Show show)
{
    ControlPageData page{className, id, purpose, ControlPageData::kPlain,
                         [size, show](bool, QWidget *parent) -> QWidget * {
                             auto *control = new Part(parent);
                             control->setFixedSize(size);
                             show(*control);
                             return control;
                         }};
    page.columns = 2;
    return page;
}

QVector<ControlPageData> dialogParts()
{
    const QColor color = start();
    return {
        part<ZvColorLabel>("ZvColorLabel", "colorSwatch",
                           PAGE_TEXT("The swatch of the colour dialog, which tells of a double click."), {60, 40},
                           [color](ZvColorLabel &label) { label.showColor(color.red(), color.green(), color.blue()); }),
        part<ZvHSLPallete>("ZvHSLPallete", "colorField",
                           PAGE_TEXT("The field of hue and saturation of the colour dialog."), {190, 174},
                           [](ZvHSLPallete &field) { field.setHS(210, 80); }),
        part<ZvColorLightWnd>("ZvColorLightWnd", "lightStrip",
                              PAGE_TEXT("The strip of lightness of the colour dialog."), {40, 174},
                              [](ZvColorLightWnd &strip) {
                                  strip.setHueAndSaturation(210, 80);
                                  strip.setPos(46);
                              }),
    };
}

} // namespace

QVector<ControlPageData> colorPages()
{
    ControlPageData button{"ZvColorButtonWidget", "colorButton",
                           PAGE_TEXT("A swatch whose button, or a double click, opens the colour dialog."),
                           ControlPageData::kPlain, make<ZvColorButtonWidget>};
    button.settings = {colorSetting()};
    ControlPageData label{"ZvQtColorLabel", "colorLabel",
                          PAGE_TEXT("A square of one colour, as high as a line of text."), ControlPageData::kPlain,
                          make<ZvQtColorLabel>};
    label.settings = {colorSetting()};
    return QVector<ControlPageData>{button, label} + dialogParts();
}
