// SPDX-License-Identifier: MIT
#include "controlswindow.h"

#include "textforms.h"
#include "zvcolorbutton.h"
#include "zvcolorcombobox.h"
#include "zvqtcolorlabel.h"

#include <QFormLayout>
#include <QLabel>
#include <QTabWidget>
#include <QVBoxLayout>

namespace {

struct ColorComboSpec
{
    const char *id;
    const char *label;
    unsigned style;
};

constexpr ColorComboSpec kColorCombos[] = {
    {"colorComboAll", QT_TRANSLATE_NOOP("ControlsWindow", "Colour list"),
     ZvColorComboBox::kColorViewByLayerBlock | ZvColorComboBox::kColorViewSelect},
    {"colorComboPlain", QT_TRANSLATE_NOOP("ControlsWindow", "Without ByLayer and ByBlock"),
     ZvColorComboBox::kColorViewSelect},
    {"colorComboCurrent", QT_TRANSLATE_NOOP("ControlsWindow", "With none and the current one"),
     ZvColorComboBox::kColorViewUseCurrent | ZvColorComboBox::kColorViewNone | ZvColorComboBox::kColorViewByLayerBlock
         | ZvColorComboBox::kColorViewSelect},
    {"colorComboBasic", QT_TRANSLATE_NOOP("ControlsWindow", "Basic colours only"), 0},
};

} // namespace

ControlsWindow::ControlsWindow(QWidget *parent) : QDialog(parent), m_last(new QLabel)
{
    setObjectName(QStringLiteral("controlsWindow"));
    setWindowTitle(tr("Controls"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto *pages = new QTabWidget;
    pages->setAccessibleName(tr("Families of controls"));
    pages->addTab(makeColorPage(), tr("Colour"));
    m_last->setObjectName(QStringLiteral("lastSignal"));
    m_last->setAccessibleName(tr("Last signal"));
    m_last->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *column = new QVBoxLayout(this);
    column->addWidget(pages, 1);
    column->addWidget(m_last);
    tell(tr("Nothing was picked yet."));
    resize(460, sizeHint().height());
}

void ControlsWindow::tell(const QString &line)
{
    m_last->setText(line);
}

QWidget *ControlsWindow::makeColorPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    auto *label = new ZvQtColorLabel;
    label->setObjectName(QStringLiteral("colorLabel"));
    for (const ColorComboSpec &spec : kColorCombos) {
        auto *combo = new ZvColorComboBox(page);
        combo->setObjectName(QLatin1String(spec.id));
        combo->setAccessibleName(tr(spec.label));
        combo->setViewStyle(spec.style);
        connect(combo, &ZvColorComboBox::ColorItemChanged, this, [this, combo, label](QColor color) {
            tell(tr("ColorItemChanged: %1, %2").arg(combo->currentText(), color.name()));
            label->SetColor(color);
        });
        form->addRow(tr(spec.label), combo);
    }
    auto *button = new ZvColorButtonWidget(page);
    button->setObjectName(QStringLiteral("colorButton"));
    button->setAccessibleName(tr("Colour button"));
    ZvCmColor start;
    start.setRGB(24, 118, 210);
    button->setColor(start);
    label->SetColor(start);
    connect(button, &ZvColorButtonWidget::colorChanged, this, [this, button, label] {
        tell(tr("colorChanged: %1").arg(colorText(button->color())));
        label->SetColor(button->color());
    });
    form->addRow(tr("Colour button"), button);
    form->addRow(tr("Colour label"), label);
    return page;
}
