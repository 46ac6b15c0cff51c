// SPDX-License-Identifier: MIT
#include "controlswindow.h"

#include "linetypemanager.h"
#include "namespage.h"
#include "qt_utils.h"
#include "textforms.h"
#include "zvcolorbutton.h"
#include "zvcolorcombobox.h"
#include "zvimagecombobox.h"
#include "zvlayerultralcombobox.h"
#include "zvlinetypecombobox.h"
#include "zvlinewidthcombobox.h"
#include "zvmenupushbutton.h"
#include "zvqtcolorlabel.h"
#include "zvqtimagewidget.h"
#include "zvqtlinetypetableview.h"
#include "zvtextedit.h"
#include "zvunitlineedit.h"
#include "zvutilsgradientcolorpushbutton.h"
#include "zvutilsiconpushbutton.h"

#include "db/zvdbentities.h"

#include <QAction>
#include <QCheckBox>
#include <QFormLayout>
#include <QGridLayout>
#include <QLabel>
#include <QPainter>
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

enum RowPicture { kLinePicture, kGradientPicture, kColorPicture };

struct ImageRowSpec
{
    const char *name;
    RowPicture picture;
    QRgb color;
    ZvImageComboBox::ItemModeEx mode;
};

constexpr ImageRowSpec kImageRows[] = {
    {QT_TRANSLATE_NOOP("ControlsWindow", "Solid line"), kLinePicture, qRgb(0, 0, 0), ZvImageComboBox::kItemShown},
    {QT_TRANSLATE_NOOP("ControlsWindow", "Gradient"), kGradientPicture, qRgb(0, 0, 0), ZvImageComboBox::kItemShown},
    {QT_TRANSLATE_NOOP("ControlsWindow", "Red"), kColorPicture, qRgb(214, 48, 49), ZvImageComboBox::kItemShown},
    {QT_TRANSLATE_NOOP("ControlsWindow", "Blue"), kColorPicture, qRgb(24, 118, 210), ZvImageComboBox::kItemShown},
    {QT_TRANSLATE_NOOP("ControlsWindow", "More..."), kLinePicture, qRgb(150, 150, 150),
     ZvImageComboBox::kItemPickedOnly},
};

/// Paints the row \a item as its entry of kImageRows tells.
void paintImageRow(ZvImageComboBox &combo, const QWidget &item, QPainter &painter, const QRect &area, QString &text)
{
    for (const ImageRowSpec &spec : kImageRows) {
        if (item.objectName() != QLatin1String(spec.name))
            continue;
        QColor color(spec.color);
        painter.setPen(color);
        switch (spec.picture) {
        case kLinePicture:
            combo.drawSolidLine(&painter, area, text);
            break;
        case kGradientPicture:
            combo.drawGradientColor(&painter, area.adjusted(0, 3, 0, -3), text);
            break;
        case kColorPicture:
            combo.drawColorGrid(&painter, area.adjusted(0, 3, 0, -3), color, text);
            break;
        }
        painter.setPen(Qt::black);
        text = ControlsWindow::tr(spec.name);
    }
}

struct ImageComboSpec
{
    const char *id;
    const char *label;
    int rows; // several times those of kImageRows where there are more
};

constexpr ImageComboSpec kImageCombos[] = {
    {"imageCombo", QT_TRANSLATE_NOOP("ControlsWindow", "Picture list"), int(sizeof kImageRows / sizeof *kImageRows)},
    {"imageComboLong", QT_TRANSLATE_NOOP("ControlsWindow", "With more rows than fit"), 20},
    {"imageComboEmpty", QT_TRANSLATE_NOOP("ControlsWindow", "Without rows"), 0},
};

/// A field that shows another unit than the usual, as a host's does.
class OtherUnitField : public ZvUnitLineEdit
{
public:
    explicit OtherUnitField(const QString &value) : ZvUnitLineEdit(nullptr)
    {
        m_units = kUnitOne;
        setText(value);
    }
};

struct IconButtonSpec
{
    const char *id;
    const char *label;
    const char *images;
    bool framed;
    bool enabled;
};

constexpr char kButtonImages[] = ":/res/file.png$:/res/computer.png";
constexpr char kButtonStates[] = "normal$pressed";

constexpr IconButtonSpec kIconButtons[] = {
    {"iconButton", QT_TRANSLATE_NOOP("ControlsWindow", "Framed"), kButtonImages, true, true},
    {"iconButtonPlain", QT_TRANSLATE_NOOP("ControlsWindow", "Without a frame"), kButtonImages, false, true},
    {"iconButtonEmpty", QT_TRANSLATE_NOOP("ControlsWindow", "Without a picture"), "", true, true},
    {"iconButtonDisabled", QT_TRANSLATE_NOOP("ControlsWindow", "Disabled"), kButtonImages, true, false},
};

constexpr int kGradientPatterns = 9;
constexpr QSize kGradientButton{72, 56};

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
    pages->addTab(makeImageComboPage(), tr("Picture list"));
    pages->addTab(makeFieldPage(), tr("Fields"));
    pages->addTab(makeButtonPage(), tr("Buttons"));
    pages->addTab(makeGradientPage(), tr("Gradients"));
    m_last->setObjectName(QStringLiteral("lastSignal"));
    m_last->setAccessibleName(tr("Last signal"));
    m_last->setTextInteractionFlags(Qt::TextSelectableByMouse);
    auto *column = new QVBoxLayout(this);
    column->addWidget(pages, 1);
    column->addWidget(m_last);
    tell(tr("Nothing was picked yet."));
    resize(460, sizeHint().height());
}

ControlsWindow::~ControlsWindow()
{
    hide(); // a field that loses the keyboard tells so, and what it is told to is still there
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

QWidget *ControlsWindow::makeImageComboPage()
{
    auto *page = new QWidget;
    // The lists open inside the page: no layout below the boxes, which keep the size their rows are made in.
    auto *column = new QVBoxLayout(page);
    for (const ImageComboSpec &spec : kImageCombos) {
        column->addWidget(new QLabel(tr(spec.label)));
        auto *combo = new ZvImageComboBox(page);
        combo->setObjectName(QLatin1String(spec.id));
        combo->setAccessibleName(tr(spec.label));
        // The list's rows are 23 pixels high on any screen, and so the box is no higher on any.
        combo->setFixedSize(zvqt_dpiScaled(200, combo), 25);
        connect(combo, &ZvImageComboBox::onDraw, combo,
                [combo](QWidget *item, QPainter *painter, const QRect &area, QString &text) {
                    paintImageRow(*combo, *item, *painter, area, text);
                });
        for (int i = 0; i < spec.rows; ++i) {
            const ImageRowSpec &row = kImageRows[std::size_t(i) % (sizeof kImageRows / sizeof *kImageRows)];
            combo->createCustomItem(QLatin1String(row.name), row.mode);
        }
        connect(combo, &ZvImageComboBox::itemChanged, this,
                [this](QWidget *item) { tell(tr("itemChanged: %1").arg(item->objectName())); });
        column->addWidget(combo);
    }
    column->addStretch();
    return page;
}

QWidget *ControlsWindow::makeFieldPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    const struct
    {
        const char *id;
        const char *label;
        ZvUnitLineEdit *field;
        bool enabled;
    } fields[] = {
        {"unitField", QT_TR_NOOP("Number with a unit"), new ZvUnitLineEdit(QStringLiteral("3.50"), nullptr), true},
        {"unitFieldOther", QT_TR_NOOP("In a unit that the library does not convert"),
         new OtherUnitField(QStringLiteral("3.50")), true},
        {"unitFieldDisabled", QT_TR_NOOP("Number with a unit, disabled"),
         new ZvUnitLineEdit(QStringLiteral("3.50"), nullptr), false},
    };
    for (const auto &row : fields) {
        ZvUnitLineEdit *field = row.field;
        field->setObjectName(QLatin1String(row.id));
        field->setAccessibleName(tr(row.label));
        field->setEnabled(row.enabled);
        connect(field, &QLineEdit::returnPressed, this,
                [this, field] { tell(tr("returnPressed: %1").arg(field->text())); });
        form->addRow(tr(row.label), field);
    }
    for (const bool readOnly : {false, true}) {
        auto *box = new ZvTextEdit;
        const QString label = readOnly ? tr("Text, read only") : tr("Text without a context menu");
        box->setObjectName(readOnly ? QStringLiteral("textBoxReadOnly") : QStringLiteral("textBox"));
        box->setAccessibleName(label);
        box->setReadOnly(readOnly);
        box->setTabChangesFocus(true);
        box->setPlainText(tr("Right button and menu key open nothing here."));
        connect(box, &QWidget::customContextMenuRequested, this, [this](const QPoint &pos) {
            tell(tr("customContextMenuRequested: %1, %2").arg(pos.x()).arg(pos.y()));
        });
        form->addRow(label, box);
    }
    return page;
}

QWidget *ControlsWindow::makeButtonPage()
{
    auto *page = new QWidget;
    auto *form = new QFormLayout(page);
    for (const bool hasActions : {true, false}) {
        auto *button = new ZvMenuPushButton;
        button->setObjectName(hasActions ? QStringLiteral("menuButton") : QStringLiteral("menuButtonPlain"));
        button->setText(hasActions ? tr("Actions at the right third") : tr("No actions"));
        if (hasActions) {
            for (const QString &name : {tr("Copy"), tr("Move"), tr("Turn")}) {
                auto *action = new QAction(name, button);
                connect(action, &QAction::triggered, this, [this, name] { tell(tr("triggered: %1").arg(name)); });
                button->addMenu(action);
            }
        }
        connect(button, &QPushButton::clicked, this, [this] { tell(tr("clicked: menu button")); });
        form->addRow(hasActions ? tr("Two menus") : tr("Without a menu"), button);
    }
    for (const IconButtonSpec &spec : kIconButtons) {
        auto *button
            = new ZvUtilsIconPushButton(QLatin1String(spec.images), QLatin1String(kButtonStates), spec.framed, nullptr);
        // Its object name is its state, so that the place in the window is told by another.
        button->setProperty("id", QLatin1String(spec.id));
        button->setAccessibleName(tr(spec.label));
        button->setEnabled(spec.enabled);
        button->resize(24, 24);
        connect(button, &QPushButton::clicked, this, [this, button] {
            const bool wasNormal = button->objectName() == QLatin1String("normal");
            button->setObjectName(wasNormal ? QStringLiteral("pressed") : QStringLiteral("normal"));
            button->update();
            tell(tr("clicked: now %1").arg(button->objectName()));
        });
        form->addRow(tr(spec.label), button);
    }
    return page;
}

QWidget *ControlsWindow::makeGradientPage()
{
    auto *page = new QWidget;
    page->setObjectName(QStringLiteral("gradientPage"));
    auto *column = new QVBoxLayout(page);
    auto *grid = new QGridLayout;
    column->addLayout(grid);
    QVector<ZvUtilsGradientColorPushButton *> buttons;
    for (int pattern = 0; pattern <= kGradientPatterns; ++pattern) {
        auto *button = new ZvUtilsGradientColorPushButton;
        button->m_pattern = pattern;
        button->m_selected = pattern == 1;
        button->setAccessibleName(tr("Gradient %1").arg(pattern));
        button->setFixedSize(kGradientButton);
        grid->addWidget(button, pattern / 5, pattern % 5);
        buttons << button;
    }
    for (ZvUtilsGradientColorPushButton *button : qAsConst(buttons)) {
        connect(button, &QPushButton::clicked, this, [this, buttons, button] {
            for (ZvUtilsGradientColorPushButton *other : buttons) {
                other->m_selected = other == button;
                other->update();
            }
            tell(tr("clicked: pattern %1").arg(button->m_pattern));
        });
    }
    auto *form = new QFormLayout;
    column->addLayout(form);
    column->addStretch();
    auto *centered = new QCheckBox(tr("Centered"));
    centered->setObjectName(QStringLiteral("gradientCentered"));
    auto *twoColors = new QCheckBox(tr("Two colours"));
    twoColors->setObjectName(QStringLiteral("gradientTwoColors"));
    auto *angle = new QSpinBox;
    angle->setObjectName(QStringLiteral("gradientAngle"));
    angle->setRange(0, 360);
    angle->setSingleStep(15);
    angle->setSuffix(QStringLiteral("\u00b0"));
    auto *shade = new QSpinBox;
    shade->setObjectName(QStringLiteral("gradientShade"));
    shade->setRange(-99, 99);
    shade->setValue(99);
    form->addRow(centered);
    form->addRow(twoColors);
    form->addRow(tr("Angle"), angle);
    form->addRow(tr("Shade"), shade);
    const auto show = [buttons, centered, twoColors, angle, shade] {
        for (ZvUtilsGradientColorPushButton *button : buttons) {
            button->m_centered = centered->isChecked();
            button->m_twoColors = twoColors->isChecked();
            button->m_angle = angle->value();
            button->m_shade = shade->value();
            button->update();
        }
    };
    connect(centered, &QCheckBox::toggled, page, show);
    connect(twoColors, &QCheckBox::toggled, page, show);
    connect(angle, QOverload<int>::of(&QSpinBox::valueChanged), page, show);
    connect(shade, QOverload<int>::of(&QSpinBox::valueChanged), page, show);
    return page;
}
