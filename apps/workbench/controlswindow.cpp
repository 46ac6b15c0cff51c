// SPDX-License-Identifier: MIT
#include "controlswindow.h"

#include "textforms.h"
#include "zvcolorbutton.h"
#include "zvcolorcombobox.h"
#include "zvqtcolorlabel.h"
#include "zvqtimagewidget.h"

#include "db/zvdbentities.h"

#include <QFormLayout>
#include <QLabel>
#include <QSpinBox>
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

template<class Entity, class... Args>
void add(ZvQtImageWidget::Entities &entities, int colorIndex, Args... args)
{
    auto *entity = new ZvRxObjectImpl<Entity>(args...);
    ZvCmColor color;
    color.setColorIndex(std::uint16_t(colorIndex));
    entity->setColor(color);
    entities.append(ZvSmartPtr<ZvDbEntity>::adopt(entity));
}

/// A few entities that belong to no drawing.
ZvQtImageWidget::Entities sampleEntities()
{
    ZvQtImageWidget::Entities entities;
    add<ZvDbCircle>(entities, 3, ZvGePoint3d(0, 0, 0), ZvGeVector3d(0, 0, 1), 30.0);
    add<ZvDbCircle>(entities, 1, ZvGePoint3d(0, 0, 0), ZvGeVector3d(0, 0, 1), 10.0);
    add<ZvDbLine>(entities, 5, ZvGePoint3d(-45, 0, 0), ZvGePoint3d(45, 0, 0));
    add<ZvDbLine>(entities, 5, ZvGePoint3d(0, -35, 0), ZvGePoint3d(0, 35, 0));
    return entities;
}

} // namespace

ControlsWindow::ControlsWindow(QWidget *parent) : QDialog(parent), m_last(new QLabel)
{
    setObjectName(QStringLiteral("controlsWindow"));
    setWindowTitle(tr("Controls"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);
    auto *pages = new QTabWidget;
    pages->setAccessibleName(tr("Families of controls"));
    pages->addTab(makeColorPage(), tr("Colour"));
    pages->addTab(makePicturePage(), tr("Pictures"));
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

QWidget *ControlsWindow::makePicturePage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    auto *picture = new ZvQtImageWidget(page);
    picture->setObjectName(QStringLiteral("imageWidget"));
    picture->setAccessibleName(tr("Picture of entities"));
    picture->setMinimumHeight(140);
    auto *frame = new QSpinBox;
    frame->setObjectName(QStringLiteral("imageFrame"));
    frame->setAccessibleName(tr("Frame"));
    frame->setMaximum(40);
    frame->setSuffix(tr(" pixels"));
    frame->setValue(10);
    auto *color = new ZvColorButtonWidget(page);
    color->setObjectName(QStringLiteral("imageFrameColor"));
    color->setAccessibleName(tr("Colour of the frame"));
    ZvCmColor start;
    start.setRGB(255, 196, 64);
    color->setColor(start);
    const auto show = [picture, frame, color, entities = sampleEntities()] {
        const ZvCmColor shown = color->color();
        const ZvJsonPtr options = ElementValue::createObject(IElementValueBase::kObject);
        options->SetDataI("padding_size", frame->value());
        options->SetDataI("padding_clr", int(qRgb(shown.red(), shown.green(), shown.blue())));
        // Without a drawing the kernel draws the background alone.
        picture->attachDbEntities(entities, nullptr, options);
    };
    connect(frame, QOverload<int>::of(&QSpinBox::valueChanged), picture, show);
    connect(color, &ZvColorButtonWidget::colorChanged, picture, show);
    show();
    form->addRow(picture);
    form->addRow(tr("Frame"), frame);
    form->addRow(tr("Colour of the frame"), color);
    return page;
}
