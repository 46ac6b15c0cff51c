// SPDX-License-Identifier: MIT
#include "private/zvboundcontrol.h"

#include "db/zvdbobject.h"

#include <QStandardItemModel>

#include <utility>

using namespace ZvGlobalUIReactorHelp;

namespace {

bool matches(const ZvObjectRule &rule, const CZvGlobalUIReactorHelp &notice)
{
    if (rule.when == ZvObjectRule::kAffectingSelection && !notice.affectsSelection)
        return false;
    const ZvRxClass *cls = notice.object->isA();
    if (rule.match == ZvObjectRule::kExact ? cls != rule.cls() : !cls->isDerivedFrom(rule.cls()))
        return false;
    return !rule.onlyId || (notice.database && notice.object->objectId() == rule.onlyId(notice.database));
}

bool variableConcerns(const ZvNoticeFilter &filter, const ZvString &name)
{
    for (const wchar_t *variable : filter.variables) {
        if (name.compareNoCase(variable) != 0)
            return false;
    }
    return true;
}

bool objectConcerns(const ZvNoticeFilter &filter, const CZvGlobalUIReactorHelp &notice)
{
    if (filter.affectingPasses && notice.affectsSelection)
        return true;
    if (!notice.object)
        return false;
    for (const ZvObjectRule &rule : filter.objects) {
        if (matches(rule, notice))
            return true;
    }
    return false;
}

} // namespace

bool zvNoticeConcerns(const ZvNoticeFilter &filter, const CZvGlobalUIReactorHelp &notice)
{
    if (!zvCurrentDocument())
        return false;
    switch (notice.kind) {
    case kNoticeSysVar:
        return variableConcerns(filter, notice.name);
    case kNoticeObject:
        return objectConcerns(filter, notice);
    default:
        return true;
    }
}

ZvShown zvWhatToShow(const SPickFirstInfo &info)
{
    if (zvCurrentDocumentDatabase()) {
        if (info.status == kInfoNoSelection)
            return ZvShown::kCurrentValue;
        if (info.status == kInfoUniform)
            return ZvShown::kSelectionValue;
    }
    return info.status == kInfoMixed ? ZvShown::kBlankEnabled : ZvShown::kBlankDisabled;
}

void zvShowBlank(QComboBox &combo, ZvShown shown)
{
    zvShowBlank(combo, shown, [&combo] { combo.setCurrentIndex(-1); });
}

int zvFindRow(const QComboBox &combo, const QString &name, ZvNameMatch match)
{
    if (match == ZvNameMatch::kExact)
        return combo.findData(name, Qt::DisplayRole, Qt::MatchCaseSensitive);
    // The kernel's idea of case decides, as in its tables.
    const ZvString wanted = zvToZvString(name);
    for (int row = 0; row < combo.count(); ++row) {
        if (zvToZvString(combo.itemText(row)).compareNoCase(wanted) == 0)
            return row;
    }
    return -1;
}

void zvAddPlainRow(QComboBox &combo, const QString &name)
{
    combo.insertItem(combo.count(), QIcon(), name, QVariant());
}

void zvAppendRows(QComboBox &combo, std::vector<ZvRow> rows)
{
    if (auto *own = dynamic_cast<ZvRowModel *>(combo.model())) {
        own->append(std::move(rows));
        return;
    }
    auto *model = qobject_cast<QStandardItemModel *>(combo.model());
    if (!model) { // a caller has set one of his own
        for (const ZvRow &row : rows)
            combo.insertItem(combo.count(), row.icon, row.text, row.data);
        return;
    }
    QList<QStandardItem *> items;
    items.reserve(int(rows.size()));
    for (const ZvRow &row : rows) {
        auto *item = new QStandardItem(row.text);
        if (!row.icon.isNull())
            item->setIcon(row.icon);
        if (row.data.isValid())
            item->setData(row.data, Qt::UserRole);
        items << item;
    }
    if (!items.isEmpty())
        model->invisibleRootItem()->appendRows(items);
}

void zvShowName(QComboBox &combo, CZvQtControlHelp &control, const QString &name, ZvNameMatch match)
{
    zvShowName(combo, control, name, match, [&combo](const QString &added) { zvAddPlainRow(combo, added); });
}
