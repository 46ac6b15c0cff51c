// SPDX-License-Identifier: MIT
#include "linetypemanager.h"

#include "db/zvdblinetypes.h"
#include "db/zvdbrecords.h"
#include "linetypeforms.h"
#include "managerforms.h"
#include "textforms.h"
#include "undostep.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

#include <memory>
#include <vector>

namespace {

constexpr int kNameColumnWidth = 24; // in average characters

ZvJsonPtr elementOf(const ZvDbLinetypeTableRecord &record)
{
    const ZvJsonPtr element = ElementValue::createObject(IElementValueBase::kObject);
    element->SetDataSW("name", record.name());
    element->SetDataSW("comments", record.comments());
    element->SetDataI("xref", record.isDependent() ? 1 : 0);
    element->SetDataId("ltypeId", record.objectId().asInt64());
    return element;
}

} // namespace

ZvJsonPtr LinetypeManager::tableBag(const ZvDbDatabase &database)
{
    std::vector<ZvDbObjectId> ids{database.byLayerLinetype(), database.byBlockLinetype()};
    ZvDbSymbolTableIterator *walk = nullptr;
    if (const ZvDbObjectPointer<ZvDbLinetypeTable> table(database.linetypeTableId(), ZvDb::kForRead); table)
        table->newIterator(walk);
    const std::unique_ptr<ZvDbSymbolTableIterator> owner(walk);
    for (; walk && !walk->done(); walk->step()) {
        if (walk->getRecordId() != ids[0] && walk->getRecordId() != ids[1])
            ids.push_back(walk->getRecordId());
    }
    const ZvJsonPtr elements = ElementValue::createObject(IElementValueBase::kArray);
    for (const ZvDbObjectId &id : ids) {
        const ZvDbObjectPointer<ZvDbLinetypeTableRecord> record(id, ZvDb::kForRead);
        if (!record)
            continue;
        const ZvJsonPtr element = elementOf(*record);
        element->SetDataI("idx", elements->elementCount());
        elements->append(element);
    }
    const ZvJsonPtr bag = ElementValue::createObject(IElementValueBase::kObject);
    bag->SetDataJ("elements", elements);
    return bag;
}

LinetypeManager::LinetypeManager(ZvDbDatabase &database, Purpose purpose, QWidget *parent)
    : QDialog(parent), m_database(&database), m_purpose(purpose), m_tablePlace(new QVBoxLayout), m_current(new QLabel),
      m_message(new QLabel)
{
    setObjectName(QStringLiteral("linetypeManager"));
    setWindowTitle(tr("Line Types"));
    setWindowFlag(Qt::WindowContextHelpButtonHint, false);

    const ManagerButton<LinetypeManager> buttons[] = {
        {"loadButton", QT_TR_NOOP("&Load..."), &LinetypeManager::load},
        {"newButton", QT_TR_NOOP("&New..."), &LinetypeManager::create},
        {"renameButton", QT_TR_NOOP("&Rename"), &LinetypeManager::edit},
        {"deleteButton", QT_TR_NOOP("&Delete"), &LinetypeManager::remove},
        {"unusedButton", QT_TR_NOOP("Delete &Unused"), &LinetypeManager::removeUnused},
        {"currentButton", QT_TR_NOOP("Set &Current"), &LinetypeManager::makeCurrent},
    };
    auto *actions = makeActionRow(*this, buttons);

    m_current->setObjectName(QStringLiteral("currentLinetype"));
    setUpMessage(*m_message);
    auto *ends = new QDialogButtonBox(purpose == kChoose ? QDialogButtonBox::Ok | QDialogButtonBox::Cancel
                                                         : QDialogButtonBox::StandardButtons(QDialogButtonBox::Close));
    connect(ends, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(ends, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto *column = new QVBoxLayout(this);
    column->addWidget(m_current);
    column->addLayout(m_tablePlace, 1);
    column->addWidget(m_message);
    column->addLayout(actions);
    column->addWidget(ends);

    makeTable();
    fillTable(nameOf(database.celtype()));
    showCurrent();
    resize(760, 460);
}

LinetypeManager::~LinetypeManager() = default;

/// A table keeps the pictures of the names it has shown: where a name has another pattern it takes a new table.
void LinetypeManager::makeTable()
{
    delete m_table;
    m_table = new ZvQtLinetypeTableView(ZvQtLinetypeTableView::kInteractive, this);
    m_table->setObjectName(QStringLiteral("linetypeTable"));
    m_table->setAccessibleName(tr("Line types of the drawing"));
    m_table->setSelectionMode(QAbstractItemView::ExtendedSelection);
    m_table->setColumnWidth(ZvQtLinetypeTableView::kNameColumn,
                            kNameColumnWidth * m_table->fontMetrics().averageCharWidth());
    m_table->horizontalHeader()->setStretchLastSection(true);
    m_tablePlace->addWidget(m_table);
    setTabOrder(m_table, findChild<QWidget *>(QStringLiteral("loadButton")));
    connect(m_table, &ZvQtLinetypeTableView::ltypeRename, this, &LinetypeManager::rename);
    connect(m_table, &ZvQtLinetypeTableView::ltypeItemSelect, this, [this] { tell(QString()); });
    connect(m_table, &ZvQtLinetypeTableView::ltypeItemDoubleClicked, this, &LinetypeManager::takeRow);
}

void LinetypeManager::fillTable(const QString &selected)
{
    m_table->loadLtypeData(tableBag(*m_database));
    m_table->setCurrSelLtypeName(selected);
}

void LinetypeManager::select(const QString &name)
{
    m_table->setCurrSelLtypeName(name);
}

void LinetypeManager::accept()
{
    if (m_purpose != kChoose) {
        QDialog::accept();
        return;
    }
    LtypeData data;
    if (!m_table->getLtypeData(data.idx, data.name, data.ltypeId))
        return;
    m_chosen = data;
    QDialog::accept();
}

void LinetypeManager::takeRow()
{
    if (m_purpose == kChoose)
        accept();
    else
        makeCurrent();
}

void LinetypeManager::tell(const QString &text)
{
    m_message->setText(text);
}

void LinetypeManager::showCurrent()
{
    m_current->setText(tr("Current line type: %1").arg(nameOf(m_database->celtype())));
}

// ---- what the buttons do

void LinetypeManager::load()
{
    LoadLinetypesDialog dialog(*m_database, this);
    if (dialog.exec() != QDialog::Accepted)
        return;
    QStringList problems;
    QString last;
    int loaded = 0;
    {
        const UndoStep step(*m_database, "LINETYPE");
        for (const ZvDbLinetypeDefinition &definition : dialog.chosen()) {
            ZvDbObjectId id;
            ZvString why;
            const Zv::ErrorStatus status
                = zvdbAddLinetype(*m_database, definition, toZvString(dialog.path()), dialog.isRedefining(), id, why);
            if (status == Zv::eOk) {
                ++loaded;
                last = nameOf(id);
            } else {
                problems.append(tr("%1 was not loaded: %2.").arg(toQString(definition.name), toQString(why)));
            }
        }
    }
    makeTable();
    fillTable(last.isEmpty() ? nameOf(m_database->celtype()) : last);
    problems.prepend(tr("%n line types were loaded.", nullptr, loaded));
    tell(problems.join(QLatin1Char('\n')));
}

void LinetypeManager::create()
{
    NewLinetypeDialog dialog(this);
    while (dialog.exec() == QDialog::Accepted) {
        ZvDbObjectId id;
        ZvString why;
        const UndoStep step(*m_database, "LINETYPE");
        if (zvdbAddLinetype(*m_database, dialog.definition(), ZvString(), false, id, why) == Zv::eOk) {
            makeTable();
            fillTable(nameOf(id));
            tell(QString());
            return;
        }
        dialog.tell(toQString(why));
    }
}

void LinetypeManager::edit()
{
    const QModelIndex current = m_table->currentIndex();
    if (!current.isValid())
        return;
    tell(QString());
    m_table->setFocus();
    m_table->edit(m_table->index(current.row(), ZvQtLinetypeTableView::kNameColumn, QModelIndex()));
}

bool LinetypeManager::rename(QString &name, const QModelIndex &index)
{
    name = name.trimmed();
    const LtypeData data = m_table->getLtypeDataByModelIdx(index);
    Zv::ErrorStatus status = Zv::eOk;
    {
        const UndoStep step(*m_database, "LINETYPE");
        status = zvdbRenameLinetype(data.ltypeId, toZvString(name));
    }
    switch (status) {
    case Zv::eOk:
        m_table->setLtypeNameByModelIdx(index, false, name);
        showCurrent();
        tell(QString());
        return true;
    case Zv::eDuplicateKey:
        tell(tr("There is a line type already named %1.").arg(name));
        return false;
    case Zv::eInvalidInput:
        tell(ZvDbSymbolTableRecord::isValidName(toZvString(name))
                 ? tr("%1 keeps its name.").arg(data.name)
                 : tr("\"%1\" is not a valid name: it must not be empty or hold < > / \\ \" : ; ? * = ` |").arg(name));
        return false;
    default:
        tell(tr("%1 cannot be changed now.").arg(data.name));
        return false;
    }
}

void LinetypeManager::remove()
{
    const QList<LtypeData> datas = m_table->getCurrLtypeDatas();
    QStringList refused;
    int removed = 0;
    {
        const UndoStep step(*m_database, "LINETYPE");
        for (const LtypeData &data : datas) {
            const Zv::ErrorStatus status = zvdbEraseLinetype(data.ltypeId);
            removed += status == Zv::eOk ? 1 : 0;
            if (status == Zv::eObjectReferenced)
                refused.append(tr("%1 is in use.").arg(data.name));
            else if (status != Zv::eOk)
                refused.append(tr("%1 cannot be deleted.").arg(data.name));
        }
    }
    if (removed > 0)
        fillTable(nameOf(m_database->celtype()));
    refused.prepend(tr("%n line types were deleted.", nullptr, removed));
    tell(refused.join(QLatin1Char('\n')));
}

void LinetypeManager::removeUnused()
{
    int removed = 0;
    {
        const UndoStep step(*m_database, "LINETYPE");
        ZvArray<ZvDbObjectId> ids;
        zvdbUnusedLinetypes(*m_database, ids);
        for (const ZvDbObjectId &id : ids) {
            const ZvDbObjectPointer<ZvDbObject> record(id, ZvDb::kForWrite);
            removed += record && record->erase() == Zv::eOk ? 1 : 0;
        }
    }
    fillTable(nameOf(m_database->celtype()));
    tell(tr("%n line types were deleted.", nullptr, removed));
}

void LinetypeManager::makeCurrent()
{
    LtypeData data;
    if (!m_table->getLtypeData(data.idx, data.name, data.ltypeId))
        return;
    if (m_table->getCurrLtypeData().xref == 1) {
        tell(tr("%1 belongs to an external reference and cannot be made current.").arg(data.name));
        return;
    }
    const UndoStep step(*m_database, "LINETYPE");
    m_database->setCeltype(data.ltypeId);
    showCurrent();
    tell(QString());
}

// ---- keys

bool LinetypeManager::moveBy(int key)
{
    const int last = m_table->model()->rowCount() - 1;
    const int row = m_table->currentIndex().row();
    const int page = qMax(1, m_table->viewport()->height() / qMax(1, m_table->rowHeight(0)) - 1);
    int to = 0;
    switch (key) {
    case Qt::Key_Up:
        to = row - 1;
        break;
    case Qt::Key_Down:
        to = row + 1;
        break;
    case Qt::Key_PageUp:
        to = row - page;
        break;
    case Qt::Key_PageDown:
        to = row + page;
        break;
    case Qt::Key_Home:
        to = 0;
        break;
    case Qt::Key_End:
        to = last;
        break;
    default:
        return false;
    }
    if (last >= 0)
        m_table->selectRow(qBound(0, to, last));
    return true;
}

void LinetypeManager::keyPressEvent(QKeyEvent *event)
{
    const bool isEnter = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isEnter && !m_table->hasFocus() && m_table->isAncestorOf(focusWidget()))
        return; // an editor has had it, and the default button must not have it as well
    if (m_table->hasFocus() && isEnter) {
        takeRow();
        return;
    }
    if (m_table->hasFocus() && event->modifiers() == Qt::NoModifier) {
        if (event->key() == Qt::Key_F2) {
            edit();
            return;
        }
        if (event->key() == Qt::Key_Delete) {
            remove();
            return;
        }
        if (moveBy(event->key()))
            return;
    }
    QDialog::keyPressEvent(event);
}
