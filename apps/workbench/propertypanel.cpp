// SPDX-License-Identifier: MIT
#include "propertypanel.h"

#include "currentselection.h"
#include "updatebushost.h"
#include "workbenchhost.h"
#include "zvodasetting.h"

#include <QComboBox>
#include <QHeaderView>
#include <QLabel>
#include <QLocale>
#include <QPainter>
#include <QShortcut>
#include <QSignalBlocker>
#include <QStyledItemDelegate>
#include <QTreeWidget>
#include <QVBoxLayout>

namespace {

enum Column { kLabel, kValue };
constexpr int kRowPadding = 8; // pixels
constexpr int kArrowSize = 12; // pixels
/// A larger selection is not counted again when it changes: its rows fold instead.
constexpr std::size_t kMostRecounted = 20000;

/// Edits a value with a drop-down that is open at once.
class ValueDelegate : public QStyledItemDelegate
{
public:
    ValueDelegate(const QVector<PropertyRow *> &rows, QObject *parent) : QStyledItemDelegate(parent), m_rows(rows) { }

    QWidget *createEditor(QWidget *parent, const QStyleOptionViewItem &, const QModelIndex &index) const override
    {
        if (!isEditable(index))
            return nullptr;
        const PropertyRow &row = *m_rows[index.row()];
        auto *combo = new QComboBox(parent);
        combo->setObjectName(QStringLiteral("propertyEditor"));
        combo->setAccessibleName(row.label());
        combo->setFrame(false);
        combo->setMaxVisibleItems(20);
        combo->setEditable(row.takesText());
        combo->setInsertPolicy(QComboBox::NoInsert);
        const QStringList choices = row.choices();
        for (const QString &choice : choices)
            combo->addItem(row.icon(choice), choice);
        auto *delegate = const_cast<ValueDelegate *>(this);
        connect(combo, QOverload<int>::of(&QComboBox::activated), delegate, [delegate, combo] {
            Q_EMIT delegate->commitData(combo);
            Q_EMIT delegate->closeEditor(combo);
        });
        QTimer::singleShot(0, combo, &QComboBox::showPopup);
        return combo;
    }

    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        auto *combo = static_cast<QComboBox *>(editor);
        const PropertyRow &row = *m_rows[index.row()];
        combo->setCurrentIndex(row.isMixed() ? -1 : combo->findText(row.text(), Qt::MatchFixedString));
        if (combo->isEditable() && combo->currentIndex() < 0)
            combo->setEditText(row.isMixed() ? QString() : row.text());
    }

    void setModelData(QWidget *editor, QAbstractItemModel *, const QModelIndex &index) const override
    {
        PropertyRow &row = *m_rows[index.row()];
        const QString value = static_cast<QComboBox *>(editor)->currentText();
        // The row is not changed here: it shows what the bus tells once the command has ended.
        if (!value.isEmpty() && (row.isMixed() || value != row.text()))
            row.write(value);
        ZevaUISetting::restoreFocus2MainView();
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        const QSize size = QStyledItemDelegate::sizeHint(option, index);
        return {size.width(), option.fontMetrics.height() + kRowPadding};
    }

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        QStyledItemDelegate::paint(painter, option, index);
        const bool isPointedAt = option.state & (QStyle::State_MouseOver | QStyle::State_Selected);
        if (!isEditable(index) || !isPointedAt || !(option.state & QStyle::State_Enabled))
            return;
        QStyleOption arrow;
        arrow.state = option.state;
        arrow.palette = option.palette;
        if (option.state & QStyle::State_Selected)
            arrow.palette.setColor(QPalette::ButtonText, option.palette.color(QPalette::HighlightedText));
        arrow.rect = QRect(option.rect.right() - kArrowSize - 2, option.rect.center().y() - kArrowSize / 2, kArrowSize,
                           kArrowSize);
        const QWidget *view = option.widget;
        view->style()->drawPrimitive(QStyle::PE_IndicatorArrowDown, &arrow, painter, view);
    }

private:
    static bool isEditable(const QModelIndex &index) { return index.column() == kValue && !index.parent().isValid(); }

    const QVector<PropertyRow *> &m_rows;
};

} // namespace

PropertyPanel::PropertyPanel(UpdateBusHost &bus, WorkbenchHost &host, QWidget *parent)
    : QWidget(parent), m_bus(bus), m_host(host), m_values(PropertyRow::count()), m_counted(PropertyRow::count()),
      m_summary(new QLabel), m_tree(new QTreeWidget)
{
    setObjectName(QStringLiteral("propertyPanel"));
    setAccessibleName(tr("Property panel"));
    m_summary->setObjectName(QStringLiteral("propertySummary"));
    m_summary->setAccessibleName(tr("What the properties are of"));
    m_summary->setMargin(6);

    m_tree->setObjectName(QStringLiteral("properties"));
    m_tree->setAccessibleName(tr("Properties"));
    m_tree->setHeaderLabels({tr("Property"), tr("Value")});
    m_tree->setFrameShape(QFrame::NoFrame);
    m_tree->setAlternatingRowColors(true);
    m_tree->setUniformRowHeights(true);
    m_tree->setMouseTracking(true);
    m_tree->setIndentation(16);
    // Whatever column is current, the value is edited: by a click on it, by Enter, by F2.
    m_tree->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_tree->setExpandsOnDoubleClick(false);
    m_tree->header()->setSectionsMovable(false);
    m_tree->header()->resizeSection(kLabel, 26 * fontMetrics().averageCharWidth());
    m_tree->setItemDelegate(new ValueDelegate(m_rows, m_tree));

    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addWidget(m_summary);
    column->addWidget(m_tree, 1);

    for (int i = 0; i < PropertyRow::count(); ++i) {
        auto *row = new PropertyRow(i, this);
        m_rows.append(row);
        auto *item = new QTreeWidgetItem(m_tree, {row->label()});
        item->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsEditable);
        connect(row, &PropertyRow::refreshed, this, [this, i] { showRow(i); });
    }

    m_recount.setSingleShot(true);
    m_recount.setInterval(0);
    connect(&m_recount, &QTimer::timeout, this, &PropertyPanel::recountUnfolded);
    connect(m_tree, &QTreeWidget::itemExpanded, this, &PropertyPanel::unfold);
    connect(m_tree, &QTreeWidget::itemClicked, this, &PropertyPanel::activate);
    connect(m_tree, &QTreeWidget::itemActivated, this, [this](QTreeWidgetItem *item) { activate(item, kValue); });
    auto *editKey = new QShortcut(Qt::Key_F2, m_tree, nullptr, nullptr, Qt::WidgetShortcut);
    connect(editKey, &QShortcut::activated, this, [this] {
        QTreeWidgetItem *item = m_tree->currentItem();
        if (item && !item->parent())
            m_tree->editItem(item, kValue);
    });
    // The bus is silent about the last document's end.
    connect(&m_events, &KernelEvents::documentDestroyed, this, [this] {
        if (m_onBus)
            readAll();
    });
    readAll();
}

PropertyPanel::~PropertyPanel()
{
    leaveBus();
}

QSize PropertyPanel::sizeHint() const
{
    return {320, 420};
}

void PropertyPanel::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    if (!m_onBus) {
        for (PropertyRow *row : qAsConst(m_rows))
            m_bus.addReceiver(row);
        m_onBus = true;
    }
    readAll();
}

void PropertyPanel::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    leaveBus();
}

void PropertyPanel::leaveBus()
{
    if (!m_onBus)
        return;
    for (PropertyRow *row : qAsConst(m_rows))
        m_bus.removeReceiver(row);
    m_onBus = false;
}

void PropertyPanel::readAll()
{
    ZvArray<ZvGlobalUIReactorHelp::SPickFirstInfo *> infos;
    for (PropertyRow *row : qAsConst(m_rows)) {
        row->pickFirstInfo->reset();
        infos.append(row->pickFirstInfo);
    }
    ZevaUISetting::getPickFirstInfos(infos);
    for (PropertyRow *row : qAsConst(m_rows))
        row->refresh();
}

void PropertyPanel::showSummary()
{
    const int count = int(selectedIds().size());
    if (!curDatabase())
        m_summary->setText(tr("No drawing is open"));
    else if (count == 0)
        m_summary->setText(tr("Nothing selected: current values"));
    else
        m_summary->setText(tr("%1 selected").arg(entityCountText(count)));
}

void PropertyPanel::showRow(int number)
{
    const PropertyRow &row = *m_rows[number];
    QTreeWidgetItem *item = m_tree->topLevelItem(number);
    if (number == 0) {
        showSummary();
        m_tree->setEnabled(row.isEnabled());
    }
    const bool isCurrent = row.isMixed() && m_counted[number] == stamps();
    if (!row.isMixed()) {
        forgetValues(number);
        item->setExpanded(false);
    } else if (!isCurrent && !m_values[number].isEmpty()) {
        m_recount.start();
    }
    item->setChildIndicatorPolicy(row.isMixed() ? QTreeWidgetItem::ShowIndicator : QTreeWidgetItem::DontShowIndicator);
    QString text = row.text();
    if (row.isMixed() && m_values[number].size() > 1)
        text = tr("mixed (%1 values)").arg(m_values[number].size());
    item->setText(kValue, text);
    item->setIcon(kValue, row.isMixed() ? QIcon() : row.icon(row.text()));
    item->setToolTip(kValue, row.isMixed() ? tr("The selected entities differ. Unfold to see their values.") : text);
    QFont font = m_tree->font();
    font.setItalic(row.isMixed());
    item->setFont(kValue, font);
}

// ---- the values of a mixed row ------------------------------------------------------------------

PropertyPanel::Stamps PropertyPanel::stamps() const
{
    const ZvApDocManager *documents = zvDocManagerPtr();
    const ZvApDocument *document = documents ? documents->currentDocument() : nullptr;
    ZvEdContext *context = document ? document->editingContext() : nullptr;
    const ZvEdSelectionHolder *holder = context ? context->selectionHolder() : nullptr;
    const ZvDbDatabase *database = curDatabase();
    return {holder ? holder->changeStamp() : 0, database ? database->changeStamp() : 0};
}

void PropertyPanel::forgetValues(int row)
{
    m_values[row].clear();
    qDeleteAll(m_tree->topLevelItem(row)->takeChildren());
}

void PropertyPanel::unfold(QTreeWidgetItem *item)
{
    const int row = m_tree->indexOfTopLevelItem(item);
    if (row >= 0)
        countValues(row);
}

void PropertyPanel::recountUnfolded()
{
    const bool isLarge = selectedIds().size() > kMostRecounted;
    for (int row = 0; row < m_rows.size(); ++row) {
        QTreeWidgetItem *item = m_tree->topLevelItem(row);
        if (!m_rows[row]->isMixed() || m_values[row].isEmpty() || m_counted[row] == stamps())
            continue;
        if (item->isExpanded() && !isLarge) {
            countValues(row);
            continue;
        }
        item->setExpanded(false);
        forgetValues(row);
        showRow(row);
    }
}

void PropertyPanel::countValues(int row)
{
    if (!m_rows[row]->isMixed() || (m_counted[row] == stamps() && !m_values[row].isEmpty()))
        return;
    forgetValues(row);
    m_values[row] = m_rows[row]->countValues(selectedIds());
    m_counted[row] = stamps();
    QTreeWidgetItem *item = m_tree->topLevelItem(row);
    for (const PropertyRow::ValueCount &value : qAsConst(m_values[row])) {
        const QString name = value.isPresent ? value.value : tr("(has none)");
        auto *child = new QTreeWidgetItem(item, {name, entityCountText(value.count)});
        child->setFlags(Qt::ItemIsEnabled | Qt::ItemIsSelectable);
        child->setIcon(kLabel, m_rows[row]->icon(value.value));
        const QString tip = tr("Select only these: %1").arg(name);
        child->setToolTip(kLabel, tip);
        child->setToolTip(kValue, tip);
    }
    showRow(row);
}

void PropertyPanel::activate(QTreeWidgetItem *item, int column)
{
    if (const QTreeWidgetItem *parent = item->parent()) {
        const int row = m_tree->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(parent));
        narrowTo(row, m_values[row].value(parent->indexOfChild(item)));
    } else if (column == kValue) {
        m_tree->editItem(item, kValue);
    }
}

void PropertyPanel::narrowTo(int row, const PropertyRow::ValueCount &value)
{
    m_host.whenIdle([this, row, value] {
        const std::vector<ZvDbObjectId> found = m_rows[row]->entitiesWith(value, selectedIds());
        // The values may be those of a selection that is gone.
        if (!found.empty())
            zvDocManagerPtr()->currentDocument()->editingContext()->selectionHolder()->set(found);
    });
}
