// SPDX-License-Identifier: MIT
#include "viewmanager.h"

#include "core/zvedviews.h"
#include "core/zvui.h"
#include "db/zvdbrecords.h"
#include "managerforms.h"
#include "textforms.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>

#include <memory>

namespace {

const char *const kName = "VIEW";
enum Column { kNameColumn, kSpaceColumn };

void runView()
{
    if (!DialogCommand::isForPerson()) {
        DialogCommand::runLineForm(kName);
        return;
    }
    ViewManager manager(*curDatabase(), static_cast<QWidget *>(zvuiMainWindow()));
    manager.exec();
}

} // namespace

ViewCommand::ViewCommand() : DialogCommand(kName, 0, runView) { }

ViewManager::ViewManager(ZvDbDatabase &database, QWidget *parent)
    : QDialog(parent), m_database(&database), m_list(new QTreeWidget), m_message(new QLabel)
{
    setObjectName(QStringLiteral("viewManager"));
    setWindowTitle(tr("Named Views"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    m_list->setObjectName(QStringLiteral("viewList"));
    m_list->setAccessibleName(tr("Named views of the drawing"));
    m_list->setHeaderLabels({tr("Name"), tr("Space")});
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setEditTriggers(QAbstractItemView::EditKeyPressed);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(kNameColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(kSpaceColumn, QHeaderView::ResizeToContents);
    connect(m_list, &QTreeWidget::itemChanged, this, &ViewManager::rename);
    connect(m_list, &QTreeWidget::itemDoubleClicked, this, &ViewManager::makeCurrent);
    connect(m_list, &QTreeWidget::currentItemChanged, this, [this] { tell(QString()); });
    connect(new QShortcut(QKeySequence::Delete, m_list, nullptr, nullptr, Qt::WidgetShortcut), &QShortcut::activated,
            this, &ViewManager::remove);

    const ManagerButton<ViewManager> buttons[] = {
        {"newButton", QT_TR_NOOP("&New"), &ViewManager::create},
        {"renameButton", QT_TR_NOOP("&Rename"), &ViewManager::edit},
        {"deleteButton", QT_TR_NOOP("&Delete"), &ViewManager::remove},
        {"currentButton", QT_TR_NOOP("Set &Current"), &ViewManager::makeCurrent},
    };
    auto *actions = makeActionRow(*this, buttons);
    setUpMessage(*m_message);
    auto *ends = new QDialogButtonBox(QDialogButtonBox::Close);
    ends->button(QDialogButtonBox::Close)->setAutoDefault(false); // Enter ends the editing of a name
    connect(ends, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_list, 1);
    column->addWidget(m_message);
    column->addLayout(actions);
    column->addWidget(ends);
    fill(ZvDbObjectId());
    resize(460, 340);
}

void ViewManager::fill(ZvDbObjectId selected)
{
    const QSignalBlocker blocker(m_list);
    m_list->clear();
    m_ids.clear();
    ZvDbSymbolTableIterator *walk = nullptr;
    if (const ZvDbObjectPointer<ZvDbViewTable> table(m_database->viewTableId(), ZvDb::kForRead); table)
        table->newIterator(walk);
    const std::unique_ptr<ZvDbSymbolTableIterator> owner(walk);
    for (; walk && !walk->done(); walk->step()) {
        const ZvDbObjectPointer<ZvDbViewTableRecord> record(walk->getRecordId(), ZvDb::kForRead);
        if (!record || record->isDependent())
            continue;
        auto *item = new QTreeWidgetItem(m_list);
        item->setText(kNameColumn, toQString(record->name()));
        item->setToolTip(kNameColumn, toQString(record->name()));
        item->setText(kSpaceColumn, record->isPaperspaceView() ? tr("Paper") : tr("Model"));
        item->setFlags(item->flags() | Qt::ItemIsEditable);
        m_ids.push_back(record->objectId());
        if (record->objectId() == selected)
            m_list->setCurrentItem(item);
    }
    // What the buttons work on is seen from the beginning, too.
    if (!m_list->currentItem())
        m_list->setCurrentItem(m_list->topLevelItem(0));
    for (const char *button : {"renameButton", "deleteButton", "currentButton"})
        findChild<QPushButton *>(QLatin1String(button))->setEnabled(!m_ids.empty());
    if (m_ids.empty())
        tell(tr("The drawing has no named views."));
}

ZvDbObjectId ViewManager::idOf(const QTreeWidgetItem *item) const
{
    const int row = item ? m_list->indexOfTopLevelItem(const_cast<QTreeWidgetItem *>(item)) : -1;
    return row >= 0 ? m_ids[std::size_t(row)] : ZvDbObjectId();
}

QString ViewManager::freeName() const
{
    const ZvDbObjectPointer<ZvDbViewTable> table(m_database->viewTableId(), ZvDb::kForRead);
    QString name;
    int number = 0;
    do
        name = tr("View %1").arg(++number);
    while (table && !table->getIdAt(toZvString(name)).isNull());
    return name;
}

void ViewManager::tell(const QString &text)
{
    m_message->setText(text);
}

void ViewManager::create()
{
    ZvDbObjectId id;
    if (zvedSaveView(*m_database, toZvString(freeName()), id) != Zv::eOk) {
        tell(tr("There is no view to save."));
        return;
    }
    tell(QString());
    fill(id);
    edit();
}

void ViewManager::edit()
{
    m_list->setFocus();
    if (QTreeWidgetItem *item = m_list->currentItem())
        m_list->editItem(item, kNameColumn);
}

void ViewManager::rename(QTreeWidgetItem *item)
{
    const ZvDbObjectPointer<ZvDbViewTableRecord> record(idOf(item), ZvDb::kForWrite);
    if (!record)
        return;
    const QString name = item->text(kNameColumn).trimmed();
    const Zv::ErrorStatus status = toZvString(name) == record->name() ? Zv::eOk : record->setName(toZvString(name));
    if (status == Zv::eOk)
        tell(QString());
    else if (status == Zv::eDuplicateKey)
        tell(tr("There is a view already named %1.").arg(name));
    else
        tell(tr("\"%1\" is not a valid name: it must not be empty or hold < > / \\ \" : ; ? * = ` |").arg(name));
    const QSignalBlocker blocker(m_list);
    item->setText(kNameColumn, toQString(record->name()));
    item->setToolTip(kNameColumn, toQString(record->name()));
}

void ViewManager::remove()
{
    QTreeWidgetItem *item = m_list->currentItem();
    if (!item)
        return;
    const int row = m_list->indexOfTopLevelItem(item);
    if (const ZvDbObjectPointer<ZvDbViewTableRecord> record(idOf(item), ZvDb::kForWrite); record)
        record->erase();
    const std::size_t next = std::size_t(row) + 1 < m_ids.size() ? std::size_t(row) + 1 : std::size_t(qMax(0, row - 1));
    fill(m_ids[next]);
}

void ViewManager::makeCurrent()
{
    if (QTreeWidgetItem *item = m_list->currentItem())
        zvedRestoreView(*m_database, idOf(item));
}
