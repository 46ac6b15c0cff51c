// SPDX-License-Identifier: MIT
#include "busmonitor.h"

#include <QAction>
#include <QClipboard>
#include <QGuiApplication>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QScrollBar>
#include <QSortFilterProxyModel>
#include <QTableView>
#include <QToolBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

constexpr int kFewestRows = 7; // to be seen at once, the header included
constexpr int kFewestChanges = 32; // average characters of the last column

struct ColumnSpec
{
    const char *title;
    const char *tip;
    int width; // in average characters; the last column takes what is left
    bool isNumber;
};

const ColumnSpec kColumns[BusNoticeModel::kColumnCount] = {
    {QT_TRANSLATE_NOOP("BusNoticeModel", "No."),
     QT_TRANSLATE_NOOP("BusNoticeModel", "Order in which the deliveries began"), 5, true},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Notice"), QT_TRANSLATE_NOOP("BusNoticeModel", "Kind of the notice"), 17,
     false},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Name"), QT_TRANSLATE_NOOP("BusNoticeModel", "System variable or command"), 21,
     false},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Object"),
     QT_TRANSLATE_NOOP("BusNoticeModel", "Class and handle of the object that changed"), 18, false},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Sel."),
     QT_TRANSLATE_NOOP("BusNoticeModel", "Whether the notice affects what is selected"), 5, false},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Time"),
     QT_TRANSLATE_NOOP("BusNoticeModel", "How long scan and delivery took, in microseconds"), 10, true},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Opened"),
     QT_TRANSLATE_NOOP("BusNoticeModel", "Objects that the scan of the selection opened"), 8, true},
    {QT_TRANSLATE_NOOP("BusNoticeModel", "Changed receivers"),
     QT_TRANSLATE_NOOP("BusNoticeModel", "Receivers of which text or state changed"), 0, false},
};

QString kindName(std::uint64_t kind)
{
    switch (kind) {
    case kNoticeDocumentCurrent:
        return BusNoticeModel::tr("document current");
    case kNoticeLayoutSwitched:
        return BusNoticeModel::tr("layout switched");
    case kNoticeSysVar:
        return BusNoticeModel::tr("system variable");
    case kNoticeObject:
        return BusNoticeModel::tr("object");
    case kNoticePickFirst:
        return BusNoticeModel::tr("selection");
    case kNoticeHostFirst:
        return BusNoticeModel::tr("host, first");
    case kNoticeHostSecond:
        return BusNoticeModel::tr("host, second");
    case kNoticeCommandEnded:
        return BusNoticeModel::tr("command ended");
    default:
        return BusNoticeModel::tr("kind %1").arg(kind);
    }
}

/// What a receiver shows, on one line.
QString quoted(QString text)
{
    text.replace(QLatin1Char('\n'), QLatin1Char(' '));
    return text.isEmpty() ? BusNoticeModel::tr("(blank)") : text;
}

QString changesText(const BusDelivery &delivery, const QString &separator)
{
    QStringList parts;
    for (const BusDelivery::Change &change : delivery.changes)
        parts
            << BusNoticeModel::tr("%1: %2 \u2192 %3").arg(change.receiver, quoted(change.before), quoted(change.after));
    return parts.join(separator);
}

QString cellText(const BusDelivery &delivery, int column)
{
    switch (column) {
    case BusNoticeModel::kNumber:
        return QString::number(delivery.number);
    case BusNoticeModel::kKind:
        // An inner delivery stands under the one that it happened in.
        return QString(2 * delivery.depth, QLatin1Char(' ')) + kindName(delivery.kind);
    case BusNoticeModel::kName:
        return delivery.name;
    case BusNoticeModel::kObject:
        return delivery.handle
            ? QStringLiteral("%1 %2").arg(delivery.objectClass, QString::number(delivery.handle, 16).toUpper())
            : delivery.objectClass;
    case BusNoticeModel::kSelection:
        return delivery.affectsSelection ? BusNoticeModel::tr("yes") : QString();
    case BusNoticeModel::kTime:
        return BusNoticeModel::tr("%1 \u00b5s")
            .arg(delivery.microseconds, 0, 'f', delivery.microseconds < 100.0 ? 1 : 0);
    case BusNoticeModel::kOpenings:
        return delivery.hasScan ? QString::number(delivery.openings) : QString();
    default:
        return changesText(delivery, QStringLiteral("; "));
    }
}

} // namespace

// ---- the model ----------------------------------------------------------------------------------

void BusNoticeModel::add(const BusDelivery &delivery)
{
    if (int(m_deliveries.size()) >= kMost) {
        beginRemoveRows(QModelIndex(), 0, 0);
        m_deliveries.pop_front();
        endRemoveRows();
    }
    // An inner delivery ends first but has begun later.
    int row = int(m_deliveries.size());
    while (row > 0 && at(row - 1).number > delivery.number)
        --row;
    beginInsertRows(QModelIndex(), row, row);
    m_deliveries.insert(m_deliveries.begin() + row, delivery);
    endInsertRows();
}

void BusNoticeModel::clear()
{
    beginResetModel();
    m_deliveries.clear();
    endResetModel();
}

int BusNoticeModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_deliveries.size());
}

int BusNoticeModel::columnCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(kColumnCount);
}

QVariant BusNoticeModel::data(const QModelIndex &index, int role) const
{
    if (!index.isValid())
        return QVariant();
    const BusDelivery &delivery = at(index.row());
    switch (role) {
    case Qt::DisplayRole:
        return cellText(delivery, index.column());
    case Qt::ToolTipRole:
        return index.column() == kChanges ? changesText(delivery, QStringLiteral("\n")) : QString();
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (kColumns[index.column()].isNumber ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return QVariant();
    }
}

QVariant BusNoticeModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || section < 0 || section >= kColumnCount)
        return QVariant();
    switch (role) {
    case Qt::DisplayRole:
        return tr(kColumns[section].title);
    case Qt::ToolTipRole:
        return tr(kColumns[section].tip);
    case Qt::TextAlignmentRole:
        return int(Qt::AlignVCenter | (kColumns[section].isNumber ? Qt::AlignRight : Qt::AlignLeft));
    default:
        return QVariant();
    }
}

// ---- the panel ----------------------------------------------------------------------------------

BusMonitor::BusMonitor(UpdateBusHost &bus, QWidget *parent)
    : QWidget(parent), m_bus(bus), m_model(new BusNoticeModel(this)), m_filtered(new QSortFilterProxyModel(this)),
      m_table(new QTableView), m_filter(new QLineEdit), m_summary(new QLabel)
{
    setObjectName(QStringLiteral("busMonitor"));
    setAccessibleName(tr("Bus monitor"));
    m_filtered->setSourceModel(m_model);
    m_filtered->setFilterKeyColumn(-1);
    m_filtered->setFilterCaseSensitivity(Qt::CaseInsensitive);

    m_table->setObjectName(QStringLiteral("busNotices"));
    m_table->setAccessibleName(tr("Notices of the update bus"));
    m_table->setModel(m_filtered);
    m_table->setSelectionBehavior(QAbstractItemView::SelectRows);
    m_table->setAlternatingRowColors(true);
    m_table->setShowGrid(false);
    m_table->setWordWrap(false);
    m_table->setTabKeyNavigation(false);
    m_table->setFrameShape(QFrame::NoFrame);
    m_table->verticalHeader()->hide();
    const int rowHeight = fontMetrics().height() + 6;
    m_table->verticalHeader()->setDefaultSectionSize(rowHeight);
    m_table->setMinimumHeight(kFewestRows * rowHeight);
    QHeaderView *header = m_table->horizontalHeader();
    header->setHighlightSections(false);
    header->setStretchLastSection(true);
    const int character = fontMetrics().averageCharWidth();
    for (int column = 0; column < BusNoticeModel::kChanges; ++column)
        header->resizeSection(column, kColumns[column].width * character + 8);
    // A dock beside others gets no more than it insists on.
    m_table->setMinimumWidth(header->sectionPosition(BusNoticeModel::kChanges) + kFewestChanges * character);

    auto *bar = new QToolBar;
    bar->setToolButtonStyle(Qt::ToolButtonTextOnly);
    m_pause = bar->addAction(tr("Pause"));
    m_pause->setObjectName(QStringLiteral("busPause"));
    m_pause->setCheckable(true);
    m_pause->setToolTip(tr("Take no notes for a while"));
    QAction *clear = bar->addAction(tr("Clear"), m_model, &BusNoticeModel::clear);
    clear->setObjectName(QStringLiteral("busClear"));
    clear->setToolTip(tr("Forget all notices"));
    QAction *copy = bar->addAction(tr("Copy"), this, [this] { QGuiApplication::clipboard()->setText(text()); });
    copy->setObjectName(QStringLiteral("busCopy"));
    copy->setToolTip(tr("Copy the selected notices, or all, as text"));
    copy->setShortcut(QKeySequence::Copy);
    copy->setShortcutContext(Qt::WidgetWithChildrenShortcut);
    addAction(copy);
    for (QAction *action : {m_pause, clear, copy}) // a tool bar keeps the keyboard from its buttons
        bar->widgetForAction(action)->setFocusPolicy(Qt::TabFocus);

    m_filter->setObjectName(QStringLiteral("busFilter"));
    m_filter->setAccessibleName(tr("Filter of the notices"));
    m_filter->setPlaceholderText(tr("Filter"));
    m_filter->setClearButtonEnabled(true);
    m_filter->setMaximumWidth(40 * character);
    m_summary->setObjectName(QStringLiteral("busSummary"));
    m_summary->setAccessibleName(tr("Summary"));

    auto *top = new QHBoxLayout;
    top->setContentsMargins(2, 0, 8, 0);
    top->addWidget(bar);
    top->addWidget(m_filter, 1);
    top->addStretch();
    top->addSpacing(character);
    top->addWidget(m_summary);
    auto *column = new QVBoxLayout(this);
    column->setContentsMargins(0, 0, 0, 0);
    column->setSpacing(0);
    column->addLayout(top);
    column->addWidget(m_table, 1);

    connect(m_filter, &QLineEdit::textChanged, m_filtered, &QSortFilterProxyModel::setFilterFixedString);
    connect(m_pause, &QAction::toggled, this, &BusMonitor::updateRecording);
    connect(&m_bus, &UpdateBusHost::delivered, this, [this](const BusDelivery &delivery) {
        const QScrollBar *scroll = m_table->verticalScrollBar();
        const bool atEnd = scroll->value() == scroll->maximum();
        m_model->add(delivery);
        if (atEnd)
            m_table->scrollToBottom();
    });
    for (const auto signal : {&QAbstractItemModel::rowsInserted, &QAbstractItemModel::rowsRemoved})
        connect(m_filtered, signal, this, &BusMonitor::updateSummary);
    connect(m_filtered, &QAbstractItemModel::modelReset, this, &BusMonitor::updateSummary);
    connect(m_filter, &QLineEdit::textChanged, this, &BusMonitor::updateSummary);
    updateSummary();
}

BusMonitor::~BusMonitor()
{
    m_bus.setRecording(false);
}

QString BusMonitor::text() const
{
    QModelIndexList rows = m_table->selectionModel()->selectedRows();
    std::sort(rows.begin(), rows.end());
    if (rows.isEmpty()) {
        for (int row = 0; row < m_filtered->rowCount(); ++row)
            rows << m_filtered->index(row, 0);
    }
    QStringList cells;
    for (int column = 0; column < BusNoticeModel::kColumnCount; ++column)
        cells << m_model->headerData(column, Qt::Horizontal).toString();
    QString all = cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    for (const QModelIndex &row : qAsConst(rows)) {
        cells.clear();
        for (int column = 0; column < BusNoticeModel::kColumnCount; ++column)
            cells << row.sibling(row.row(), column).data().toString();
        all += cells.join(QLatin1Char('\t')) + QLatin1Char('\n');
    }
    return all;
}

void BusMonitor::showEvent(QShowEvent *event)
{
    QWidget::showEvent(event);
    updateRecording();
}

void BusMonitor::hideEvent(QHideEvent *event)
{
    QWidget::hideEvent(event);
    updateRecording();
}

void BusMonitor::updateRecording()
{
    m_bus.setRecording(isVisible() && !m_pause->isChecked());
}

void BusMonitor::updateSummary()
{
    const int all = m_model->rowCount();
    const int shown = m_filtered->rowCount();
    const QString count = shown == all ? tr("%1 notices").arg(all) : tr("%1 of %2 notices").arg(shown).arg(all);
    m_summary->setText(tr("%1, %2 dropped").arg(count).arg(m_bus.droppedCount()));
    m_summary->setToolTip(
        tr("Dropped: what the kernel told while a command ran, while the bus was off or while a notice of an "
           "object or of the selection was on its way. The end of the command makes up for it."));
}
