// SPDX-License-Identifier: MIT
#include "controlswindow.h"

#include "linetypemanager.h"
#include "namespage.h"
#include "textforms.h"
#include "zvcolorbutton.h"
#include "zvcolorcombobox.h"
#include "zvlayerultralcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"
#include "zvqtcolorlabel.h"
#include "zvqtimagewidget.h"
#include "zvqtlinetypetableview.h"

#include "db/zvdbentities.h"

#include <QFormLayout>
#include <QLabel>
#include <QPushButton>
#include <QSpinBox>
#include <QTabWidget>
#include <QTableWidget>
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

template <class Entity, class... Args> void add(ZvQtImageWidget::Entities &entities, int colorIndex, Args... args)
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

struct LineTypeComboSpec
{
    const char *id;
    const char *label;
    bool hooked;
    bool noPendingRow; // of an unhooked one
    bool enabled;
};

constexpr LineTypeComboSpec kLineTypeCombos[] = {
    {"lineTypeCombo", QT_TRANSLATE_NOOP("ControlsWindow", "Line type list"), false, false, true},
    {"lineTypeComboPlain", QT_TRANSLATE_NOOP("ControlsWindow", "Without the line type manager"), false, true, true},
    {"lineTypeComboHooked", QT_TRANSLATE_NOOP("ControlsWindow", "Line type of the drawing"), true, false, true},
    {"lineTypeComboDisabled", QT_TRANSLATE_NOOP("ControlsWindow", "Line type list, disabled"), false, false, false},
};

struct LineWeightComboSpec
{
    const char *id;
    const char *label;
    bool hooked;
    int mask;
    bool inch;
    double scale;
    bool enabled;
};

constexpr int kUsualWeights
    = ZvLineWidthComboBox::kItemByLayer | ZvLineWidthComboBox::kItemByBlock | ZvLineWidthComboBox::kItemDefault;

constexpr LineWeightComboSpec kLineWeightCombos[] = {
    {"lineWeightCombo", QT_TRANSLATE_NOOP("ControlsWindow", "Line weight list"), false, kUsualWeights, false, 0.0,
     true},
    {"lineWeightComboObject", QT_TRANSLATE_NOOP("ControlsWindow", "With the object's own weight"), false,
     kUsualWeights | ZvLineWidthComboBox::kItemUseObjects, false, 0.0, true},
    {"lineWeightComboInch", QT_TRANSLATE_NOOP("ControlsWindow", "Weights only, in inches, drawn twice as wide"), false,
     0, true, 1.0, true},
    {"lineWeightComboHooked", QT_TRANSLATE_NOOP("ControlsWindow", "Line weight of the drawing"), true, kUsualWeights,
     false, 0.0, true},
    {"lineWeightComboDisabled", QT_TRANSLATE_NOOP("ControlsWindow", "Line weight list, disabled"), false, kUsualWeights,
     false, 0.0, false},
};

struct LayerComboSpec
{
    const char *id;
    const char *label;
    bool hooked;
    bool enabled;
};

constexpr LayerComboSpec kLayerCombos[] = {
    {"layerCombo", QT_TRANSLATE_NOOP("ControlsWindow", "Layer list"), false, true},
    {"layerComboHooked", QT_TRANSLATE_NOOP("ControlsWindow", "Layer of the drawing"), true, true},
    {"layerComboDisabled", QT_TRANSLATE_NOOP("ControlsWindow", "Layer list, disabled"), false, false},
    {"layerComboLong", QT_TRANSLATE_NOOP("ControlsWindow", "With rows that stand for no layers"), false, true},
};

constexpr int kLongList = 2500;

/// More rows than have their buttons from the start; their buttons change nothing.
void fillLongList(ZvLayerUltralComboBox &combo)
{
    for (int i = 0; i < kLongList; ++i) {
        const QColor color = QColor::fromHsv(i * 7 % 360, 200, 230);
        combo.addItemLayerInfo(i % 3 == 1, i % 4 == 1, i % 5 == 1, color,
                               ControlsWindow::tr("Row %1").arg(i + 1, 4, 10, QLatin1Char('0')));
    }
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
    pages->addTab(makeLayerPage(), tr("Layer"));
    pages->addTab(makePicturePage(), tr("Pictures"));
    pages->addTab(makeLineTypePage(), tr("Line type"));
    pages->addTab(makeLineWeightPage(), tr("Line weight"));
    pages->addTab(makeLinetypeTablePage(), tr("Line type table"));
    pages->addTab(makeNamesPage([this](const QString &line) { tell(line); }), tr("Names"));
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

QWidget *ControlsWindow::makeLayerPage()
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("layerPage"));
    auto *form = new QFormLayout(page);
    for (const LayerComboSpec &spec : kLayerCombos) {
        auto *combo = new ZvLayerUltralComboBox(spec.hooked, page);
        combo->setObjectName(QLatin1String(spec.id));
        combo->setAccessibleName(tr(spec.label));
        combo->setEnabled(spec.enabled);
        combo->setMinimumHeight(combo->fontMetrics().height() + 10);
        auto *table = static_cast<QTableWidget *>(combo->view());
        connect(table, &QTableWidget::cellPressed, this, [this, table](int row, int) {
            tell(tr("cellPressed: %1, %2").arg(row).arg(table->item(row, table->columnCount() - 1)->text()));
        });
        form->addRow(tr(spec.label), combo);
    }
    auto *combo = page->findChild<ZvLayerUltralComboBox *>(QStringLiteral("layerComboLong"));
    auto *fill = new QPushButton(tr("Add %1 rows").arg(kLongList));
    fill->setObjectName(QStringLiteral("fillLongList"));
    connect(fill, &QPushButton::clicked, combo, [fill, combo] {
        fill->setEnabled(false);
        fillLongList(*combo);
    });
    form->addRow(QString(), fill);
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

QWidget *ControlsWindow::makeLineTypePage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    for (const LineTypeComboSpec &spec : kLineTypeCombos) {
        auto *combo
            = spec.hooked ? new ZvLineTypeComboBox(true, page) : new ZvLineTypeComboBox(page, spec.noPendingRow, false);
        combo->setObjectName(QLatin1String(spec.id));
        combo->setAccessibleName(tr(spec.label));
        combo->setEnabled(spec.enabled);
        connect(combo, &ZvLineTypeComboBox::lineTypeItemChanged, this, [this, combo](int index) {
            tell(tr("lineTypeItemChanged: %1, %2").arg(index).arg(combo->getLineTypeString(index)));
        });
        form->addRow(tr(spec.label), combo);
    }
    return page;
}

QWidget *ControlsWindow::makeLineWeightPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    for (const LineWeightComboSpec &spec : kLineWeightCombos) {
        auto *combo = new ZvLineWidthComboBox(spec.hooked, spec.mask, page);
        combo->setObjectName(QLatin1String(spec.id));
        combo->setAccessibleName(tr(spec.label));
        combo->setEnabled(spec.enabled);
        if (spec.inch || spec.scale != 0.0) {
            combo->setLineweightScale(spec.scale);
            combo->init(spec.inch);
        }
        connect(combo, &ZvLineWidthComboBox::lineWeightItemChanged, this, [this, combo](int index) {
            tell(tr("lineWeightItemChanged: %1, %2").arg(index).arg(combo->itemText(index)));
        });
        form->addRow(tr(spec.label), combo);
    }
    return page;
}

QWidget *ControlsWindow::makeLinetypeTablePage()
{
    auto *page = new QWidget;
    auto *column = new QVBoxLayout(page);
    const struct
    {
        const char *id;
        const char *label;
        int mode;
    } tables[] = {
        {"interactiveTable", QT_TR_NOOP("Interactive"), ZvQtLinetypeTableView::kInteractive},
        {"plainTable", QT_TR_NOOP("Plain"), ZvQtLinetypeTableView::kPlain},
    };
    for (const auto &row : tables) {
        auto *table = new ZvQtLinetypeTableView(row.mode, page);
        table->setObjectName(QLatin1String(row.id));
        table->setAccessibleName(tr(row.label));
        if (const ZvDbDatabase *database = curDatabase())
            table->loadLtypeData(LinetypeManager::tableBag(*database));
        connect(table, &ZvQtLinetypeTableView::ltypeItemSelect, this,
                [this, table] { tell(tr("ltypeItemSelect: %1").arg(table->getCurrLtypeData().name)); });
        connect(table, &ZvQtLinetypeTableView::ltypeItemDoubleClicked, this,
                [this](const QModelIndex &index, const QModelIndex &sorted) {
                    tell(tr("ltypeItemDoubleClicked: row %1, shown as %2").arg(index.row()).arg(sorted.row()));
                });
        connect(table, &ZvQtLinetypeTableView::clickBlankArea, this, [this] { tell(tr("clickBlankArea")); });
        connect(table, &ZvQtLinetypeTableView::clearSignals, this, [this] { tell(tr("clearSignals")); });
        column->addWidget(new QLabel(tr(row.label)));
        column->addWidget(table);
    }
    return page;
}
