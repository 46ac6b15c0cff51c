// SPDX-License-Identifier: MIT
#include "valuefield.h"

#include "zvcolorbutton.h"

#include <QCheckBox>
#include <QColor>
#include <QComboBox>
#include <QDoubleSpinBox>
#include <QLineEdit>
#include <QSpinBox>

namespace {

typedef std::function<void(const QVariant &)> Changed;

constexpr int kNarrow = 70; // pixels

ZvCmColor packedColor(const QColor &color)
{
    ZvCmColor packed;
    packed.setRGB(std::uint8_t(color.red()), std::uint8_t(color.green()), std::uint8_t(color.blue()));
    return packed;
}

/// Not as wide as the longest value.
void narrow(QWidget &field)
{
    field.setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
    field.setMinimumWidth(kNarrow);
}

ValueField choiceField(const ValueKind &kind, QWidget *parent, const Changed &changed)
{
    auto *box = new QComboBox(parent);
    box->addItems(kind.choices);
    narrow(*box);
    box->setCurrentIndex(kind.initial.toInt());
    QObject::connect(box, qOverload<int>(&QComboBox::currentIndexChanged), box, changed);
    return {box, [box] { return box->currentIndex(); },
            [box](const QVariant &value) { box->setCurrentIndex(value.toInt()); }};
}

ValueField checkField(const ValueKind &kind, QWidget *parent, const Changed &changed)
{
    auto *box = new QCheckBox(parent);
    box->setChecked(kind.initial.toBool());
    QObject::connect(box, &QCheckBox::toggled, box, changed);
    return {box, [box] { return box->isChecked(); }, [box](const QVariant &value) { box->setChecked(value.toBool()); }};
}

template <class Box, class Number>
ValueField numberField(const ValueKind &kind, QWidget *parent, const Changed &changed)
{
    auto *box = new Box(parent);
    box->setRange(Number(kind.least), Number(kind.most));
    box->setSingleStep(Number(kind.step));
    box->setSuffix(kind.unit);
    box->setValue(kind.initial.value<Number>());
    narrow(*box);
    QObject::connect(box, qOverload<Number>(&Box::valueChanged), box, changed);
    return {box, [box] { return box->value(); },
            [box](const QVariant &value) { box->setValue(value.value<Number>()); }};
}

ValueField colorField(const ValueKind &kind, QWidget *parent, const Changed &changed)
{
    auto *button = new ZvColorButtonWidget(parent);
    button->setColor(packedColor(kind.initial.value<QColor>()));
    const auto value = [button]() -> QVariant {
        const ZvCmColor color = button->color();
        return QColor(color.red(), color.green(), color.blue());
    };
    QObject::connect(button, &ZvColorButtonWidget::colorChanged, button, [changed, value] { changed(value()); });
    return {button, value, [button, changed](const QVariant &color) {
                button->setColor(packedColor(color.value<QColor>()));
                changed(color);
            }};
}

ValueField lineField(const ValueKind &kind, QWidget *parent, const Changed &changed)
{
    auto *line = new QLineEdit(kind.initial.toString(), parent);
    narrow(*line);
    line->setCursorPosition(0);
    QObject::connect(line, &QLineEdit::textChanged, line, changed);
    return {line, [line] { return line->text(); },
            [line](const QVariant &value) {
                line->setText(value.toString());
                line->setCursorPosition(0);
            }};
}

} // namespace

ValueField makeValueField(const ValueKind &kind, QWidget *parent, const Changed &changed)
{
    if (!kind.choices.isEmpty())
        return choiceField(kind, parent, changed);
    switch (int(kind.initial.type())) {
    case QMetaType::Bool:
        return checkField(kind, parent, changed);
    case QMetaType::Int:
        return numberField<QSpinBox, int>(kind, parent, changed);
    case QMetaType::Double:
        return numberField<QDoubleSpinBox, double>(kind, parent, changed);
    case QMetaType::QColor:
        return colorField(kind, parent, changed);
    case QMetaType::QString:
        return lineField(kind, parent, changed);
    default:
        return {};
    }
}
