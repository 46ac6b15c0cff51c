// SPDX-License-Identifier: MIT
#include "controlpages.h"

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
    return {button, label};
}
