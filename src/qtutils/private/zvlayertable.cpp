// SPDX-License-Identifier: MIT
#include "private/zvlayertable.h"

#include "private/zvcolorswatch.h"

#include <QCoreApplication>
#include <QHeaderView>
#include <QPaintEvent>
#include <QStyleOptionButton>
#include <QStylePainter>
#include <QStyledItemDelegate>

#include <cmath>
#include <utility>

namespace {

constexpr int kRowHeight = 24; // pixels, as all sizes here
constexpr int kButtonWidth = 16;
constexpr int kLeastSection = 18; // which the buttons' columns are widened to
constexpr int kIconSize = 16;
constexpr int kSwatchSize = 24; // scaled down to the icon size
constexpr int kBesideTheName = 67;
constexpr int kMostSwatches = 512;
constexpr int kMostPictures = 1024;

const QString &buttonStyleSheet()
{
    static const QString text = QStringLiteral("QPushButton{border: 0px solid;}");
    return text;
}

struct ButtonSpec
{
    QString name;
    const char *toolTip;
};

const ButtonSpec &buttonSpec(int column)
{
    static const ButtonSpec specs[ZvLayerTable::kButtons] = {
        {QStringLiteral("pSwitch"), QT_TRANSLATE_NOOP("ZvLayerUltralComboBox", "开/关图层")},
        {QStringLiteral("pFreeze"), QT_TRANSLATE_NOOP("ZvLayerUltralComboBox", "在所有视口中冻结/解冻")},
        {QStringLiteral("pLocked"), QT_TRANSLATE_NOOP("ZvLayerUltralComboBox", "锁定/解锁图层")},
        {QStringLiteral("pClr"), QT_TRANSLATE_NOOP("ZvLayerUltralComboBox", "图层颜色")},
    };
    return specs[column];
}

/// A button that waits for its place. A view shows each cell widget as it takes it, and what is shown, or has come to
/// the event loop once, is styled: for buttons that nobody may ever see that is most of their cost.
///
/// Of the buttons in view nearly all are at rest, and those with the same icon look the same: the style, which goes
/// through its style sheets for each, paints one, and its picture serves the others. The block paints these pictures
/// for its buttons, since a painter for each costs more than the picture.
class RowButton : public QPushButton
{
public:
    /// Without a parent at first: a child asks its parent's style sheets at once how large its icon is, which takes as
    /// long as all else of its making.
    explicit RowButton(ZvLayerButtonPictures *pictures) : m_pictures(pictures) { }
    void setVisible(bool visible) override
    {
        if (m_isPlaced || !visible)
            QPushButton::setVisible(visible);
    }
    void place()
    {
        m_isPlaced = true;
        setAccessibleName(toolTip());
        show();
    }
    /// Under the button, which is painted right afterwards.
    void paintOnBlock(QPainter &painter) { m_isPainted = drawPicture(painter, pos()); }

protected:
    bool event(QEvent *event) override
    {
        // Style sheets can ask for properties; "_q_" are those that Qt itself sets.
        if (event->type() == QEvent::DynamicPropertyChange
            && !static_cast<QDynamicPropertyChangeEvent *>(event)->propertyName().startsWith("_q_"))
            m_isPlain = false;
        // Both have the style go through its sheets. The latter is about margins in layouts.
        const bool canWait = event->type() == QEvent::PolishRequest || event->type() == QEvent::StyleChange;
        return (canWait && !m_isPlaced) || QPushButton::event(event);
    }
    void paintEvent(QPaintEvent *event) override
    {
        if (std::exchange(m_isPainted, false))
            return;
        QPainter painter(this);
        if (drawPicture(painter, QPoint()))
            return;
        painter.end();
        QPushButton::paintEvent(event);
    }

private:
    bool drawPicture(QPainter &painter, const QPoint &at) const
    {
        if (!m_isPlain || !fallsOnPixels(painter) || styleSheet() != buttonStyleSheet())
            return false;
        QStyleOptionButton option;
        initStyleOption(&option);
        if (!isAtRest(option))
            return false;
        painter.drawPixmap(at, picture(option));
        return true;
    }
    /// Elsewhere, as at 150 percent, a picture would be rounded to other pixels than the icon on it.
    bool fallsOnPixels(const QPainter &painter) const
    {
        const qreal ratio = devicePixelRatioF();
        const QTransform &onDevice = painter.deviceTransform();
        return ratio == std::floor(ratio) && onDevice.type() <= QTransform::TxScale && onDevice.m11() == ratio
            && onDevice.m22() == ratio;
    }
    static bool isAtRest(const QStyleOptionButton &option)
    {
        constexpr QStyle::State kMoved
            = QStyle::State_MouseOver | QStyle::State_Sunken | QStyle::State_On | QStyle::State_HasFocus;
        return (option.state & QStyle::State_Enabled) && !(option.state & kMoved) && option.text.isEmpty()
            && option.features == QStyleOptionButton::None;
    }
    const QPixmap &picture(const QStyleOptionButton &option) const
    {
        const qreal ratio = devicePixelRatioF();
        ZvLayerButtonPictures &pictures = *m_pictures;
        if (pictures.size() > kMostPictures)
            pictures.clear();
        ZvLayerButtonPicture &kept = pictures[{objectName(), option.icon.cacheKey()}];
        if (kept.pixmap.size() == size() * ratio && kept.pixmap.devicePixelRatio() == ratio
            && kept.state == option.state && kept.iconSize == option.iconSize && kept.direction == option.direction)
            return kept.pixmap;
        kept = {QPixmap(size() * ratio), option.state, option.iconSize, option.direction};
        kept.pixmap.setDevicePixelRatio(ratio);
        kept.pixmap.fill(Qt::transparent);
        QStylePainter(&kept.pixmap, const_cast<RowButton *>(this)).drawControl(QStyle::CE_PushButton, option);
        return kept.pixmap;
    }

    ZvLayerButtonPictures *const m_pictures; // of the table, which lives longer
    bool m_isPlaced = false;
    bool m_isPlain = true;
    bool m_isPainted = false; // by the block
};

/// The buttons of some rows.
class RowsBlock : public QWidget
{
public:
    using QWidget::QWidget;

protected:
    void paintEvent(QPaintEvent *event) override
    {
        QPainter painter(this);
        const QRegion dirty = event->region();
        for (QObject *child : children()) {
            auto *button = dynamic_cast<RowButton *>(child);
            if (button && !button->isHidden() && dirty.intersects(button->geometry()))
                button->paintOnBlock(painter);
        }
    }
};

/// Four of five cells lie under buttons and hold nothing. A style paints nothing there either as a rule, but takes as
/// long for it as for a name.
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;
    void forgetStyle() { m_isKnown = false; }
    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (!isBlank(option, index))
            QStyledItemDelegate::paint(painter, option, index);
    }

private:
    bool isBlank(const QStyleOptionViewItem &option, const QModelIndex &index) const
    {
        constexpr QStyle::State kMarked = QStyle::State_Selected | QStyle::State_MouseOver | QStyle::State_HasFocus;
        const auto *table = static_cast<const ZvLayerTable *>(parent());
        if ((option.state & kMarked) || (option.features & QStyleOptionViewItem::Alternate)
            || index.column() >= ZvLayerTable::kButtons || table->item(index.row(), index.column()))
            return false;
        if (!m_isKnown) {
            QImage image(option.rect.size(), QImage::Format_ARGB32_Premultiplied);
            image.fill(Qt::transparent);
            const QImage untouched = image.copy();
            QStyleOptionViewItem probe = option;
            probe.rect = image.rect();
            QPainter onImage(&image);
            QStyledItemDelegate::paint(&onImage, probe, index);
            onImage.end();
            m_isNothingPainted = image == untouched;
            m_isKnown = true;
        }
        return m_isNothingPainted;
    }

    mutable bool m_isKnown = false;
    mutable bool m_isNothingPainted = false;
};

/// A hidden block has nothing to update; so marked, its buttons are passed over whenever the list opens.
void setShown(QWidget *block, bool shown)
{
    block->setAttribute(Qt::WA_ForceUpdatesDisabled, !shown);
    block->setVisible(shown);
}

bool isSame(const ZvLayerTable::Layer &a, const ZvLayerTable::Layer &b)
{
    return a.off == b.off && a.frozen == b.frozen && a.locked == b.locked && a.color == b.color && a.name == b.name;
}

} // namespace

void ZvLayerTable::Cell::setIcon(const QIcon &icon) const
{
    if (!m_table || !m_button || m_row >= m_table->m_rows.size() || m_table->m_rows.at(m_row).serial != m_serial)
        return;
    m_button->setIcon(icon);
    m_table->m_rows[m_row].isStale = true;
}

ZvLayerTable::ZvLayerTable(const ZvArray<QIcon> *icons, QWidget *parent) : QTableWidget(parent), m_icons(icons)
{
    verticalHeader()->setSectionResizeMode(QHeaderView::Interactive);
    horizontalHeader()->setSectionResizeMode(QHeaderView::Fixed);
    setSelectionBehavior(QAbstractItemView::SelectRows);
    setEditTriggers(QAbstractItemView::NoEditTriggers);
    horizontalHeader()->setStretchLastSection(true);
    horizontalHeader()->hide();
    verticalHeader()->hide();
    m_delegate = new RowDelegate(this);
    setItemDelegate(m_delegate);
    setShowGrid(false);
    setFrameShape(QFrame::NoFrame);
    QPalette colours = palette();
    colours.setColor(QPalette::HighlightedText, Qt::black); // the usual white cannot be read on light blue
    setPalette(colours);
    setStyleSheet(QStringLiteral("selection-background-color:lightblue;"));
    verticalHeader()->setMinimumSectionSize(kLeastSection); // a large font would widen the rows
    verticalHeader()->setDefaultSectionSize(kRowHeight);
    setColumnCount(kColumns);
    horizontalHeader()->setMinimumSectionSize(kLeastSection);
    for (int column = 0; column < kButtons; ++column)
        setColumnWidth(column, kButtonWidth);
    if (parent)
        setColumnWidth(kName, parent->width() - kBesideTheName);
}

ZvLayerTable::~ZvLayerTable() = default;

int ZvLayerTable::iconIndex(Column column, bool state)
{
    switch (column) {
    case kSwitch:
        return state ? 1 : 0;
    case kFreeze:
        return state ? 2 : 3;
    default:
        return state ? 4 : 5;
    }
}

// ---- rows

void ZvLayerTable::setLayers(const QVector<Layer> &layers)
{
    // At once: each insertion and removal goes through all that the view keeps of its cells.
    setRowCount(layers.size());
    for (int row = 0; row < layers.size(); ++row)
        showLayer(row, layers.at(row));
    if (layers.size() <= kAllBuilt) {
        for (int row = 0; row < layers.size(); ++row)
            buildRow(row);
    }
    if (isVisible())
        placeRowsInView();
}

void ZvLayerTable::appendLayer(const Layer &layer)
{
    const int row = rowCount();
    insertRow(row);
    showLayer(row, layer);
    if (row < kAllBuilt)
        buildRow(row);
    if (isVisible())
        placeRowsInView();
}

void ZvLayerTable::showLayer(int row, const Layer &layer)
{
    Row &shown = m_rows[row];
    if (shown.isLayer && !shown.isStale && isSame(shown.layer, layer))
        return;
    if (!shown.isLayer || shown.layer.name != layer.name || !item(row, kName)) {
        ++shown.serial;
        if (QTableWidgetItem *name = item(row, kName)) {
            name->setData(Qt::DisplayRole, layer.name);
            name->setData(Qt::ToolTipRole, layer.name);
        } else {
            name = new QTableWidgetItem(0);
            name->setData(Qt::DisplayRole, layer.name);
            name->setData(Qt::ToolTipRole, layer.name);
            setItem(row, kName, name);
        }
    }
    shown.isLayer = true;
    shown.isStale = false;
    shown.layer = layer;
    updateIcons(shown);
}

QIcon ZvLayerTable::iconOf(const Layer &layer, int column) const
{
    switch (column) {
    case kSwitch:
        return (*m_icons)[iconIndex(kSwitch, layer.off)];
    case kFreeze:
        return (*m_icons)[iconIndex(kFreeze, layer.frozen)];
    case kLock:
        return (*m_icons)[iconIndex(kLock, layer.locked)];
    default:
        break;
    }
    // Shared: a drawing of thousands of layers has a few colours.
    const QRgb key = layer.color.rgba();
    const auto found = m_swatches.constFind(key);
    if (found != m_swatches.constEnd())
        return *found;
    if (m_swatches.size() >= kMostSwatches)
        m_swatches.clear();
    return *m_swatches.insert(key, QIcon(zvColorPixmapWithBorder(kSwatchSize, kSwatchSize, layer.color)));
}

void ZvLayerTable::updateIcons(const Row &row) const
{
    if (row.block < 0)
        return;
    for (int column = 0; column < kButtons; ++column) {
        const QIcon icon = iconOf(row.layer, column);
        QPushButton *button = row.buttons[std::size_t(column)];
        if (button->icon().cacheKey() != icon.cacheKey())
            button->setIcon(icon);
    }
}

// ---- buttons

void ZvLayerTable::buildRow(int row)
{
    if (!m_rows.at(row).isLayer || m_rows.at(row).block >= 0)
        return;
    const bool wasPlacing = m_isPlacing;
    m_isPlacing = true; // the view asks for a new layout with each button
    m_rows[row].block = blockFor(row);
    QWidget *block = m_blocks.at(m_rows.at(row).block).widget;
    for (int column = 0; column < kButtons; ++column) {
        const ButtonSpec &spec = buttonSpec(column);
        auto *button = new RowButton(&m_pictures);
        m_rows[row].buttons[std::size_t(column)] = button;
        button->setObjectName(spec.name);
        button->setIconSize(QSize(kIconSize, kIconSize));
        button->setIcon(iconOf(m_rows[row].layer, column));
        button->setToolTip(QCoreApplication::translate("ZvLayerUltralComboBox", spec.toolTip));
        setCellWidget(row, column, button);
        button->setParent(block);
        button->hide(); // or it would be shown with its block, over another row's, before it has its place
        // The second call takes the place of the first, so no button has a white background. Kept: the result is what
        // callers find. The swatch is asked for in one.
        if (column != kColor)
            button->setStyleSheet(QStringLiteral("background-color:#FFFFFF"));
        button->setStyleSheet(buttonStyleSheet());
        connect(button, &QPushButton::clicked, this, [this, row, column] { Q_EMIT buttonClicked(row, column); });
    }
    m_isPlacing = wasPlacing;
}

ZvLayerTable::Cell ZvLayerTable::cellAt(int row, int column) const
{
    Cell cell;
    if (row < 0 || row >= m_rows.size() || m_rows.at(row).block < 0)
        return cell;
    cell.m_table = const_cast<ZvLayerTable *>(this);
    cell.m_button = m_rows.at(row).buttons[std::size_t(column)];
    cell.m_row = row;
    cell.m_serial = m_rows.at(row).serial;
    cell.m_layer = m_rows.at(row).layer;
    return cell;
}

int ZvLayerTable::blockFor(int row)
{
    // Rows are built in order, but for those of a long list; there too neighbours share a block.
    const int wanted = row - row % kBlockRows;
    for (int neighbour = wanted; neighbour < qMin(wanted + kBlockRows, m_rows.size()); ++neighbour) {
        const int block = m_rows.at(neighbour).block;
        if (block < 0 || m_blocks.at(block).last - m_blocks.at(block).first >= kBlockRows)
            continue;
        m_blocks[block].first = qMin(m_blocks.at(block).first, row);
        m_blocks[block].last = qMax(m_blocks.at(block).last, row);
        return block;
    }
    auto *widget = new RowsBlock(viewport());
    setShown(widget, false);
    m_blocks.append({widget, row, row});
    return m_blocks.size() - 1;
}

void ZvLayerTable::forget(Row &row)
{
    for (QPushButton *&button : row.buttons) {
        if (button) {
            button->hide();
            button->deleteLater(); // it may be in its click right now
        }
        button = nullptr;
    }
    row.block = -1;
}

void ZvLayerTable::changeEvent(QEvent *event)
{
    QTableWidget::changeEvent(event);
    if (event->type() != QEvent::StyleChange && event->type() != QEvent::PaletteChange
        && event->type() != QEvent::FontChange)
        return;
    m_pictures.clear();
    if (m_delegate)
        static_cast<RowDelegate *>(m_delegate.data())->forgetStyle();
    Q_EMIT lookChanged();
}

// ---- what is in view

void ZvLayerTable::placeRowsInView()
{
    if (m_isPlacing)
        return;
    m_isPlacing = true;
    const int first = m_rows.isEmpty() ? -1 : rowAt(0);
    int last = first < 0 ? -1 : rowAt(viewport()->height() - 1);
    if (first >= 0 && last < 0)
        last = m_rows.size() - 1;
    QVector<int> blocks;
    for (int row = first; row >= 0 && row <= last; ++row) {
        buildRow(row);
        const int block = m_rows.at(row).block;
        if (block >= 0 && !blocks.contains(block))
            blocks << block;
    }
    for (const int block : qAsConst(m_shownBlocks)) {
        if (blocks.contains(block))
            continue;
        QWidget *hidden = m_blocks.at(block).widget;
        if (hidden->isAncestorOf(window()->focusWidget()))
            setFocus(); // it would go to some other button, and that one's row be scrolled to
        setShown(hidden, false);
    }
    m_shownBlocks = blocks;
    for (const int block : qAsConst(blocks)) {
        const Block &shown = m_blocks.at(block);
        const QRect area = visualRect(model()->index(shown.first, kSwitch))
            | visualRect(model()->index(shown.last, kSwitch + kButtons - 1));
        shown.widget->setGeometry(area);
        for (int row = shown.first; row <= shown.last; ++row) {
            const bool isInView = row >= first && row <= last;
            if (m_rows.at(row).block == block && (isInView || m_rows.at(row).wasSeen))
                placeRow(row, area);
        }
        setShown(shown.widget, true);
    }
    m_isPlacing = false;
}

void ZvLayerTable::placeRow(int row, const QRect &block)
{
    Row &placed = m_rows[row];
    for (int column = 0; column < kButtons; ++column) {
        auto *button = static_cast<RowButton *>(placed.buttons[std::size_t(column)]);
        button->setGeometry(visualRect(model()->index(row, column)).translated(-block.topLeft()));
        if (!placed.wasSeen)
            button->place();
    }
    placed.wasSeen = true;
}

void ZvLayerTable::updateEditorGeometries()
{
    // The base walks all cell widgets, in view or not.
    if (isVisible())
        placeRowsInView();
}

void ZvLayerTable::scrollContentsBy(int dx, int dy)
{
    QTableWidget::scrollContentsBy(dx, dy);
    if (isVisible())
        placeRowsInView();
}

void ZvLayerTable::showEvent(QShowEvent *event)
{
    QTableWidget::showEvent(event);
    placeRowsInView();
}

bool ZvLayerTable::eventFilter(QObject *object, QEvent *event)
{
    if (event->type() == QEvent::FocusIn) {
        if (const auto *button = qobject_cast<QPushButton *>(object)) {
            // The base takes the place on the block for one in the viewport, and another row would become current.
            setCurrentIndex(indexAt(button->mapTo(viewport(), button->rect().center())));
            return false;
        }
    }
    return QTableWidget::eventFilter(object, event);
}

// ---- whoever changes the rows

void ZvLayerTable::reset()
{
    for (Row &row : m_rows)
        forget(row);
    m_rows.clear();
    m_rows.resize(rowCount());
    findRowsOfBlocks();
    QTableWidget::reset();
}

void ZvLayerTable::rowsInserted(const QModelIndex &parent, int first, int last)
{
    const bool isAtTheEnd = first == m_rows.size();
    m_rows.insert(first, last - first + 1, Row());
    if (!isAtTheEnd)
        findRowsOfBlocks();
    QTableWidget::rowsInserted(parent, first, last);
}

void ZvLayerTable::rowsAboutToBeRemoved(const QModelIndex &parent, int first, int last)
{
    QTableWidget::rowsAboutToBeRemoved(parent, first, last);
    for (int row = first; row <= last; ++row)
        forget(m_rows[row]);
    m_rows.remove(first, last - first + 1);
    findRowsOfBlocks();
}

/// After rows have moved: which rows each block has now. Blocks without rows go.
void ZvLayerTable::findRowsOfBlocks()
{
    const QVector<Block> before = m_blocks;
    QVector<int> numbers(before.size(), -1);
    m_blocks.clear();
    m_shownBlocks.clear();
    for (int row = 0; row < m_rows.size(); ++row) {
        int &block = m_rows[row].block;
        if (block < 0)
            continue;
        int &number = numbers[block];
        if (number < 0) {
            number = m_blocks.size();
            m_blocks.append({before.at(block).widget, row, row});
            if (!m_blocks.last().widget->isHidden())
                m_shownBlocks << number;
        }
        m_blocks[number].last = row;
        block = number;
    }
    for (int block = 0; block < before.size(); ++block) {
        if (numbers.at(block) < 0) {
            before.at(block).widget->hide();
            before.at(block).widget->deleteLater();
        }
    }
}
