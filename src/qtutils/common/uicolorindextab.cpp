// SPDX-License-Identifier: MIT
#include "uicolorindextab.h"

#include "private/zvaccelerator.h"
#include "private/zvaccessibility.h"
#include "private/zvbagreader.h"
#include "private/zvcolorkeys.h"
#include "private/zvcolornames.h"
#include "private/zvqtcolor.h"
#include "private/zvqtstring.h"
#include "zvcolordialog.h"

#include "base/zvcmcolor.h"
#include "core/zvui.h"

#include <QAction>
#include <QCoreApplication>
#include <QFrame>
#include <QHBoxLayout>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QVBoxLayout>

namespace {

constexpr int kGap = 2; // between the cells, and before the first
constexpr qreal kOutlineWidth = 0.3;
constexpr qreal kFrameWidth = 2.0;

struct Grid
{
    unsigned mode;
    unsigned rows;
    unsigned cols;
    unsigned cell;
    const char *name; ///< For screen readers.
};

constexpr Grid kGrids[] = {
    {ZvPaleteWnd::kEvenColors, 5, 24, 12, QT_TRANSLATE_NOOP("ZvAccessibility", "Even index colours from 10 to 248")},
    {ZvPaleteWnd::kOddColors, 5, 24, 12, QT_TRANSLATE_NOOP("ZvAccessibility", "Odd index colours from 11 to 249")},
    {ZvPaleteWnd::kStandardColors, 1, 9, 17, QT_TRANSLATE_NOOP("ZvAccessibility", "Index colours from 1 to 9")},
    {ZvPaleteWnd::kGreys, 1, 6, 17, QT_TRANSLATE_NOOP("ZvAccessibility", "Greys from 250 to 255")},
};

constexpr int kLabelHeight = 20;
constexpr int kStandardGridHeight = 25;
constexpr int kButtonWidth = 75;
constexpr QSize kGreyFrameSize(120, 35);
constexpr int kGreyFrameStyle = 32; // raised, without a shape: the frame is not seen
constexpr int kTextWidth = 170;
constexpr QSize kSwatchSize(50, 50);

constexpr QLatin1String kByLayerText("BYLAYER");
constexpr QLatin1String kByBlockText("BYBLOCK");

void showMessage()
{
    ZvUiMessageBox(zvToZvString(ZvIndexColorWnd::tr("不是有效的颜色名或值。")), L"Zevara", 0);
}

QString rgbText(int red, int green, int blue)
{
    return QStringLiteral("%1,%2,%3").arg(red).arg(green).arg(blue);
}

/// "Index colour 1, Red", as a screen reader says it.
QString spokenColor(int index)
{
    const QString text = QCoreApplication::translate("ZvAccessibility", "Index colour %1").arg(index);
    const QString name = zvColorName(index);
    return name.isEmpty() ? text : text + QStringLiteral(", ") + name;
}

bool belongsToGrid(int index, unsigned mode)
{
    switch (mode) {
    case ZvPaleteWnd::kEvenColors:
        return index >= 0 && index < 256 && index % 2 == 0;
    case ZvPaleteWnd::kOddColors:
        return index >= 0 && index < 256 && index % 2 == 1;
    case ZvPaleteWnd::kStandardColors:
        return index >= 1 && index <= 9;
    case ZvPaleteWnd::kGreys:
        return index >= 250 && index <= 255;
    default:
        return false;
    }
}

/// By the keyboard a grid does what a move and a click do.
void giveKeys(ZvPaleteWnd *grid, const Grid &spec)
{
    ZvPicker picker;
    picker.role = QAccessible::ColorChooser;
    picker.name = spec.name;
    picker.value = [grid, mode = spec.mode] {
        unsigned row = 0;
        unsigned col = 0;
        return ZvPaleteWnd::cellOf(grid->selected(), mode, row, col) ? spokenColor(grid->selected()) : QString();
    };
    picker.step = [grid, spec](int right, int up) {
        unsigned row = 0;
        unsigned col = 0;
        if (ZvPaleteWnd::cellOf(grid->selected(), spec.mode, row, col)) {
            col = unsigned(qBound(0, int(col) + right, int(spec.cols) - 1));
            row = unsigned(qBound(0, int(row) - up, int(spec.rows) - 1));
        }
        const auto index = Zevos::UInt32(grid->indexAt(row, col));
        Q_EMIT grid->selColorChanged(index);
        Q_EMIT grid->colorSelected(index, int(spec.mode));
    };
    zvMakePicker(grid, picker);
}

} // namespace

// ---- the swatch -----------------------------------------------------------------------------------------------------

ZvColorLabel::ZvColorLabel(QWidget *parent) : QLabel(parent)
{
    setFrameShape(QFrame::Box);
    setFixedSize(kSwatchSize);
    setStyleSheet(QStringLiteral("QLabel { background-color : white; color : gray; }"));
}

void ZvColorLabel::showColor(int red, int green, int blue)
{
    setStyleSheet(
        QStringLiteral("QLabel{ background-color:rgb(%1,%2,%3);  color : gray; }").arg(red).arg(green).arg(blue));
}

void ZvColorLabel::mouseDoubleClickEvent(QMouseEvent *)
{
    Q_EMIT doubleClicked();
}

// ---- a grid ---------------------------------------------------------------------------------------------------------

ZvPaleteWnd::ZvPaleteWnd(unsigned mode, unsigned rows, unsigned cols, unsigned cell, QWidget *dialog)
    : QWidget(dialog), m_pDialog(dialog), m_nMode(mode), m_nRows(rows), m_nCols(cols), m_nCell(cell)
{
    setAttribute(Qt::WA_MouseTracking);
    qRegisterMetaType<Zevos::UInt32>("Zevos::UInt32"); // as it stands in the text of the signals
}

ZvPaleteWnd::~ZvPaleteWnd() = default;

int ZvPaleteWnd::indexAt(unsigned row, unsigned col) const
{
    if (row >= m_nRows || col >= m_nCols)
        return -1;
    const int r = int(row);
    const int c = int(col);
    switch (m_nMode) {
    case kEvenColors:
        return (c * 5 + 5 - r) * 2 + 8;
    case kOddColors:
        return (r + c * 5 + 5) * 2 + 1;
    case kStandardColors:
        return c + 1;
    case kGreys:
        return c + 250;
    default:
        return -1;
    }
}

bool ZvPaleteWnd::cellOf(int index, unsigned mode, unsigned &row, unsigned &col)
{
    if ((mode == kEvenColors || mode == kOddColors) && (index < 10 || index > 249))
        return false;
    if (!belongsToGrid(index, mode))
        return false;
    const int hue = index / 10;
    switch (mode) {
    case kEvenColors:
        row = unsigned(hue * 10 - index + 8) / 2;
        col = unsigned(hue - 1);
        break;
    case kOddColors:
        row = unsigned(index % 10 - 1) / 2;
        col = unsigned(hue - 1);
        break;
    case kStandardColors:
        row = 0;
        col = unsigned(index - 1);
        break;
    default:
        row = 0;
        col = unsigned(index - 250);
        break;
    }
    return true;
}

QSize ZvPaleteWnd::gridSize() const
{
    return QSize(int(m_nCols) * pitch() + kGap, int(m_nRows) * pitch() + kGap);
}

int ZvPaleteWnd::hitIndex(const QMouseEvent *event) const
{
    const QPoint position = event->localPos().toPoint();
    if (position.x() < 0 || position.y() < 0)
        return -1;
    return indexAt(unsigned(position.y() / pitch()), unsigned(position.x() / pitch()));
}

void ZvPaleteWnd::mouseReleaseEvent(QMouseEvent *event)
{
    const int index = hitIndex(event);
    if (belongsToGrid(index, m_nMode)) {
        m_nSelected = index;
        Q_EMIT colorSelected(Zevos::UInt32(index), int(m_nMode));
    }
    repaint();
}

void ZvPaleteWnd::mouseDoubleClickEvent(QMouseEvent *event)
{
    if (!belongsToGrid(hitIndex(event), m_nMode))
        return;
    Q_EMIT colorSelected(Zevos::UInt32(m_nSelected), int(m_nMode)); // which the release before has set
    if (auto *dialog = qobject_cast<QDialog *>(m_pDialog))
        dialog->accept();
}

void ZvPaleteWnd::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint position = event->localPos().toPoint();
    m_nHoverX = position.x();
    m_nHoverY = position.y();
    const int index = hitIndex(event);
    if (index > 0 && index < 256)
        Q_EMIT selColorChanged(Zevos::UInt32(index));
    repaint();
}

void ZvPaleteWnd::leaveEvent(QEvent *)
{
    m_nHoverX = -1;
    m_nHoverY = -1;
    repaint();
    Q_EMIT leaveWidget();
}

QRect ZvPaleteWnd::frameOf(int row, int col) const
{
    return QRect(col * pitch() + 1, row * pitch() + 1, int(m_nCell) + 3, int(m_nCell) + 3);
}

void ZvPaleteWnd::paintEvent(QPaintEvent *)
{
    const ZvIndexColorWnd *tab = nullptr;
    for (const QWidget *widget = parentWidget(); widget && !tab; widget = widget->parentWidget())
        tab = qobject_cast<const ZvIndexColorWnd *>(widget);

    QPainter painter(this);
    QPen outline;
    outline.setWidthF(kOutlineWidth);
    painter.setPen(outline);
    const int side = int(m_nCell);
    for (unsigned row = 0; row < m_nRows; ++row) {
        for (unsigned col = 0; col < m_nCols; ++col) {
            const QRect cell(int(col) * pitch() + kGap, int(row) * pitch() + kGap, side, side);
            const unsigned color = tab ? tab->paletteColor(unsigned(indexAt(row, col))) : 0;
            painter.fillRect(cell, zvPackedToQColor(color));
            painter.drawRect(cell);
        }
    }

    if (m_nHoverX > 0 && m_nHoverY > 0) {
        const int row = m_nHoverY / pitch();
        const int col = m_nHoverX / pitch();
        if (row < int(m_nRows) && col < int(m_nCols)) {
            painter.setPen(QPen(Qt::black, kFrameWidth, Qt::SolidLine, Qt::SquareCap, Qt::BevelJoin));
            painter.drawRect(frameOf(row, col));
        }
    }

    unsigned row = 0;
    unsigned col = 0;
    if (cellOf(m_nSelected, m_nMode, row, col) && row < m_nRows && col < m_nCols) {
        QPen frame;
        frame.setWidthF(kFrameWidth);
        painter.setPen(frame);
        painter.drawRect(frameOf(int(row), int(col)));
    }
}

// ---- the tab --------------------------------------------------------------------------------------------------------

ZvIndexColorWnd::ZvIndexColorWnd(ZvColorDialog *dialog) : QWidget(dialog), m_pDialog(dialog)
{
    auto *layout = new QVBoxLayout(this);
    layout->setSpacing(2);
    layout->setContentsMargins(2, 2, 2, 2);

    auto *captionRow = new QHBoxLayout;
    auto *caption = new QLabel(tr("Zevara 颜色索引(ACI):"));
    caption->setFixedHeight(kLabelHeight);
    captionRow->addWidget(caption);
    layout->addLayout(captionRow);

    for (std::size_t i = 0; i < m_pGrids.size(); ++i)
        m_pGrids[i] = new ZvPaleteWnd(kGrids[i].mode, kGrids[i].rows, kGrids[i].cols, kGrids[i].cell, dialog);
    for (std::size_t i = 0; i < m_pGrids.size(); ++i)
        giveKeys(m_pGrids[i], kGrids[i]);
    layout->addWidget(m_pGrids[0]);
    layout->addWidget(m_pGrids[1]);

    auto *hoverRow = new QHBoxLayout;
    m_pIndexLabel = new QLabel;
    m_pRgbLabel = new QLabel;
    for (QLabel *label : {m_pIndexLabel, m_pRgbLabel}) {
        label->setFixedHeight(kLabelHeight);
        hoverRow->addWidget(label);
    }
    layout->addLayout(hoverRow);

    auto *standardRow = new QHBoxLayout;
    m_pGrids[2]->setFixedHeight(kStandardGridHeight);
    standardRow->addWidget(m_pGrids[2]);
    m_pByLayerBtn = new QPushButton(tr("ByLayer(&L)"));
    m_pByBlockBtn = new QPushButton(tr("ByBlock(&K)"));
    for (QPushButton *button : {m_pByLayerBtn, m_pByBlockBtn}) {
        button->setFixedWidth(kButtonWidth);
        button->setStyleSheet(QStringLiteral("color:#666666"));
        standardRow->addWidget(button);
    }
    layout->addLayout(standardRow);

    auto *greyFrame = new QFrame;
    greyFrame->setFixedSize(kGreyFrameSize);
    greyFrame->setFrameStyle(kGreyFrameStyle);
    auto *greyLayout = new QVBoxLayout(greyFrame);
    greyLayout->setContentsMargins(0, 0, 0, 0);
    greyLayout->setSpacing(0);
    greyLayout->addWidget(m_pGrids[3]);

    auto *textRow = new QHBoxLayout;
    auto *textLabel = new QLabel(tr("颜色(&C):"));
    m_pTextEdit = new QLineEdit;
    m_pTextEdit->setFixedWidth(kTextWidth);
    textLabel->setBuddy(m_pTextEdit);
    textRow->addWidget(textLabel);
    textRow->addWidget(m_pTextEdit);
    textRow->addStretch(2);

    auto *column = new QVBoxLayout;
    column->addWidget(greyFrame, 0, Qt::AlignTop);
    column->addLayout(textRow);

    m_pSwatch = new ZvColorLabel;
    auto *lastRow = new QHBoxLayout;
    lastRow->addLayout(column);
    lastRow->addStretch(6);
    lastRow->addWidget(m_pSwatch);
    lastRow->addStretch(4);
    layout->addLayout(lastRow);

    m_pActionL = zvAddAccelerator(this, Qt::Key_L, ZvAcceleratorKeys::kPlain);
    m_pActionK = zvAddAccelerator(this, Qt::Key_K, ZvAcceleratorKeys::kPlain);
    m_pActionC = zvAddAccelerator(this, Qt::Key_C, ZvAcceleratorKeys::kPlainAndAlt, textLabel);
    connectAll();
}

ZvIndexColorWnd::~ZvIndexColorWnd() = default;

void ZvIndexColorWnd::connectAll()
{
    for (const ZvPaleteWnd *grid : m_pGrids) {
        connect(grid, &ZvPaleteWnd::selColorChanged, this, &ZvIndexColorWnd::slot_colorChange);
        connect(grid, &ZvPaleteWnd::colorSelected, this, &ZvIndexColorWnd::slot_colorSelected);
        connect(grid, &ZvPaleteWnd::leaveWidget, this, &ZvIndexColorWnd::slot_leave_widget);
    }
    connect(m_pByBlockBtn, &QPushButton::clicked, this, &ZvIndexColorWnd::slot_btnByBlockClicked);
    connect(m_pByLayerBtn, &QPushButton::clicked, this, &ZvIndexColorWnd::slot_btnByLayerClicked);
    connect(m_pActionL, &QAction::triggered, this, &ZvIndexColorWnd::slot_btnByLayerClicked);
    connect(m_pActionK, &QAction::triggered, this, &ZvIndexColorWnd::slot_btnByBlockClicked);
    connect(m_pActionC, &QAction::triggered, this, &ZvIndexColorWnd::slot_KeyC_clicked);
    connect(m_pSwatch, &ZvColorLabel::doubleClicked, this, &ZvIndexColorWnd::slot_color_label_double_clicked);
}

void ZvIndexColorWnd::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    m_pParams = params;
    m_pHelper = helper.get();

    if (zvBagHasKey(m_pParams, kLayerClrKey)) {
        const auto layerColor = std::uint32_t(zvBagInt(m_pParams, kLayerClrKey, 0));
        m_pSwatch->showColor(zvPackedRed(layerColor), zvPackedGreen(layerColor), zvPackedBlue(layerColor));
    }
    applyEnableKey(kIsByLayerEnableKey, m_pByLayerBtn, m_pActionL, &ZvIndexColorWnd::slot_btnByLayerClicked);
    applyEnableKey(kIsByBlockEnableKey, m_pByBlockBtn, m_pActionK, &ZvIndexColorWnd::slot_btnByBlockClicked);

    const auto color = std::uint32_t(zvBagInt(m_pParams, kSelectClrKey, 0));
    switch (zvBagInt(m_pParams, kClrMethodKey, ZvCm::kByACI)) {
    case ZvCm::kByLayer:
    case ZvCm::kByBlock:
    case ZvCm::kByACI:
        m_nCurColor = color;
        if (m_nCurColor == ZvCm::kACIbyBlock) {
            m_pTextEdit->setText(kByBlockText);
        } else if (m_nCurColor > 255) {
            // A caller who says anything of the by layer button wants no by layer, and reads white for it.
            m_pTextEdit->setText(zvBagHasKey(m_pParams, kIsByLayerEnableKey) ? zvColorName(7) : QString(kByLayerText));
        } else {
            slot_colorSelected(m_nCurColor);
        }
        setSelectedOfGrids(int(m_nCurColor));
        break;
    default:
        // Red stands in blue's place. Kept: callers see a true colour here only until they have been to the other tab,
        // whose way back shows it right.
        showTrueColor(zvPackedRed(color), zvPackedGreen(color), zvPackedRed(color));
        break;
    }

    // Read last: the swatch of an index colour above was not looked up with it.
    if (zvBagHasKey(m_pParams, kBackgroundColorKey))
        m_nBackgroundColor = std::uint32_t(zvBagInt(m_pParams, kBackgroundColorKey, 0));
}

void ZvIndexColorWnd::applyEnableKey(const char *key, QPushButton *button, QAction *action,
                                     void (ZvIndexColorWnd::*slot)())
{
    if (!zvBagHasKey(m_pParams, key))
        return;
    button->setEnabled(zvBagBool(m_pParams, key, true));
    disconnect(action, &QAction::triggered, this, slot);
}

bool ZvIndexColorWnd::selectedIndex(unsigned &index)
{
    const QString text = m_pTextEdit->text();
    if (text == kByLayerText || text == kByBlockText) {
        index = m_nCurColor;
        return true;
    }

    if (const int named = zvColorOfName(text)) {
        m_nCurColor = unsigned(named);
        index = m_nCurColor;
        return true; // without writing it: a name that was typed leaves the caller's colour as it was
    }

    bool isNumber = false;
    const unsigned number = text.toUInt(&isNumber);
    if (isNumber) {
        if (number > ZvCm::kACIbyLayer) {
            showMessage();
            return false;
        }
        m_nCurColor = number;
        index = number;
        m_pParams->SetDataI(kSelectClrKey, int(number));
        m_pParams->SetDataI(kClrMethodKey, ZvCm::kByACI);
        return true;
    }

    if (acceptText(text.split(QLatin1Char(','))))
        return true;
    showMessage();
    return false;
}

/// Three components are taken if they are the true colour that the parameters hold already: this tab keeps a true
/// colour but takes no new one. Parts that are no numbers are let through as well, and nothing comes of them.
bool ZvIndexColorWnd::acceptText(const QStringList &components)
{
    if (components.size() != 3)
        return false;
    unsigned values[3] = {};
    for (int i = 0; i < 3; ++i) {
        bool isNumber = false;
        values[i] = components.at(i).toUInt(&isNumber);
        if (!isNumber)
            return true;
    }
    const int method = zvBagInt(m_pParams, kClrMethodKey, 0);
    const int color = zvBagInt(m_pParams, kSelectClrKey, 0);
    if (method != ZvCm::kByColor || std::uint32_t(color) != zvPackRgb(values[0], values[1], values[2]))
        return false;
    m_pParams->SetDataI(kClrMethodKey, method);
    m_pParams->SetDataI(kSelectClrKey, color);
    return true;
}

void ZvIndexColorWnd::showTrueColor(int r, int g, int b)
{
    m_pTextEdit->setText(rgbText(r, g, b));
    m_pSwatch->showColor(r, g, b);
    setSelectedOfGrids(-1);
    repaint();
}

unsigned ZvIndexColorWnd::paletteColor(unsigned index) const
{
    const std::uint32_t *palette = zvcmAcadPalette(m_nBackgroundColor);
    return palette && index < 256 ? palette[index] : 0;
}

void ZvIndexColorWnd::setSelectedOfGrids(int index)
{
    for (ZvPaleteWnd *grid : m_pGrids)
        grid->setSelected(index);
}

void ZvIndexColorWnd::slot_colorChange(Zevos::UInt32 index)
{
    const unsigned color = paletteColor(index);
    m_pIndexLabel->setText(tr("索引颜色: %1").arg(index));
    m_pRgbLabel->setText(
        tr("RGB: %1, %2, %3").arg(zvPackedRed(color)).arg(zvPackedGreen(color)).arg(zvPackedBlue(color)));
}

void ZvIndexColorWnd::slot_leave_widget()
{
    m_pIndexLabel->clear();
    m_pRgbLabel->clear();
}

void ZvIndexColorWnd::slot_colorSelected(Zevos::UInt32 index)
{
    m_nCurColor = index;
    const unsigned color = paletteColor(index);
    m_pSwatch->showColor(zvPackedRed(color), zvPackedGreen(color), zvPackedBlue(color));
    const QString name = zvColorName(int(index));
    m_pTextEdit->setText(name.isEmpty() ? QString::number(index) : name);
    setSelectedOfGrids(int(index));
    m_pParams->SetDataI(kClrMethodKey, ZvCm::kByACI);
    m_pParams->SetDataI(kSelectClrKey, int(index));
    repaint();
}

void ZvIndexColorWnd::slot_btnByBlockClicked()
{
    m_pByBlockBtn->setFocus();
    m_nCurColor = ZvCm::kACIbyBlock;
    m_pTextEdit->setText(kByBlockText);
    m_pParams->SetDataI(kClrMethodKey, ZvCm::kByBlock);
    m_pParams->SetDataI(kSelectClrKey, ZvCm::kACIbyBlock);
    m_pSwatch->showColor(255, 255, 255);
}

void ZvIndexColorWnd::slot_btnByLayerClicked()
{
    m_pByLayerBtn->setFocus();
    m_nCurColor = ZvCm::kACIbyLayer;
    m_pTextEdit->setText(kByLayerText);
    m_pParams->SetDataI(kClrMethodKey, ZvCm::kByLayer);
    m_pParams->SetDataI(kSelectClrKey, ZvCm::kACIbyLayer);
    if (!zvBagHasKey(m_pParams, kLayerClrKey))
        return;
    const auto layerColor = std::uint32_t(zvBagInt(m_pParams, kLayerClrKey, 0));
    m_pSwatch->showColor(zvPackedRed(layerColor), zvPackedGreen(layerColor), zvPackedBlue(layerColor));
}

void ZvIndexColorWnd::slot_KeyC_clicked()
{
    m_pTextEdit->setFocus();
    m_pTextEdit->selectAll();
}

void ZvIndexColorWnd::slot_color_label_double_clicked()
{
    m_pDialog->accept();
    m_pDialog->close(); // where the text was refused and the dialog is still open, this cancels it
}
