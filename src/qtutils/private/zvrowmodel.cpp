// SPDX-License-Identifier: MIT
#include "private/zvrowmodel.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace {

constexpr int kFlagsRole = Qt::UserRole - 1; // where the items of a standard model keep theirs

} // namespace

void ZvRowModel::append(std::vector<ZvRow> &&rows)
{
    if (rows.empty())
        return;
    const int first = rowCount();
    beginInsertRows(QModelIndex(), first, first + int(rows.size()) - 1);
    m_rows.reserve(m_rows.size() + rows.size());
    for (ZvRow &row : rows)
        m_rows.push_back({std::move(row), {}});
    endInsertRows();
}

bool ZvRowModel::holds(const QModelIndex &index) const
{
    // Callers ask for rows that are not there, as they may of a plain drop-down.
    return index.model() == this && index.row() < rowCount();
}

int ZvRowModel::rowCount(const QModelIndex &parent) const
{
    return parent.isValid() ? 0 : int(m_rows.size());
}

QVariant ZvRowModel::data(const QModelIndex &index, int role) const
{
    if (!holds(index))
        return QVariant();
    const Row &row = m_rows[std::size_t(index.row())];
    switch (role) {
    case Qt::DisplayRole:
    case Qt::EditRole:
        return row.text;
    case Qt::UserRole:
        return row.data;
    case Qt::DecorationRole:
        if (!row.icon.isNull())
            return row.icon;
        break; // a picture of another kind, or none
    default:
        break;
    }
    return row.others.isEmpty() ? QVariant() : row.others.value(role);
}

bool ZvRowModel::setData(const QModelIndex &index, const QVariant &value, int role)
{
    if (!holds(index))
        return false;
    Row &row = m_rows[std::size_t(index.row())];
    if (role == Qt::DisplayRole || role == Qt::EditRole) {
        row.text = value.toString();
    } else if (role == Qt::UserRole) {
        row.data = value;
    } else {
        const bool isIcon = role == Qt::DecorationRole && value.userType() == QMetaType::QIcon;
        if (role == Qt::DecorationRole)
            row.icon = isIcon ? value.value<QIcon>() : QIcon();
        if (isIcon || !value.isValid())
            row.others.remove(role);
        else
            row.others.insert(role, value);
    }
    const bool isText = role == Qt::DisplayRole || role == Qt::EditRole;
    Q_EMIT dataChanged(index, index, isText ? QVector<int>{Qt::DisplayRole, Qt::EditRole} : QVector<int>{role});
    return true;
}

QMap<int, QVariant> ZvRowModel::itemData(const QModelIndex &index) const
{
    if (!holds(index))
        return {};
    QMap<int, QVariant> values = m_rows[std::size_t(index.row())].others;
    for (const int role : {Qt::DisplayRole, Qt::DecorationRole, Qt::UserRole}) {
        const QVariant value = data(index, role);
        if (value.isValid())
            values.insert(role, value);
    }
    return values;
}

Qt::ItemFlags ZvRowModel::flags(const QModelIndex &index) const
{
    const QVariant own = data(index, kFlagsRole);
    if (own.isValid())
        return Qt::ItemFlags(own.toInt()) | Qt::ItemNeverHasChildren;
    if (data(index, Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator"))
        return Qt::ItemNeverHasChildren;
    return QAbstractListModel::flags(index);
}

bool ZvRowModel::insertRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || row > rowCount() || count <= 0)
        return false;
    beginInsertRows(QModelIndex(), row, row + count - 1);
    m_rows.insert(m_rows.begin() + row, std::size_t(count), Row());
    endInsertRows();
    return true;
}

bool ZvRowModel::removeRows(int row, int count, const QModelIndex &parent)
{
    if (parent.isValid() || row < 0 || count <= 0 || row + count > rowCount())
        return false;
    beginRemoveRows(QModelIndex(), row, row + count - 1);
    m_rows.erase(m_rows.begin() + row, m_rows.begin() + row + count);
    endRemoveRows();
    return true;
}

void ZvRowModel::sort(int column, Qt::SortOrder order)
{
    if (column != 0)
        return;
    Q_EMIT layoutAboutToBeChanged({}, VerticalSortHint);
    std::vector<int> from(m_rows.size()); // where a row was
    std::iota(from.begin(), from.end(), 0);
    std::stable_sort(from.begin(), from.end(), [&](int a, int b) {
        const int difference = m_rows[std::size_t(a)].text.compare(m_rows[std::size_t(b)].text);
        return order == Qt::AscendingOrder ? difference < 0 : difference > 0;
    });
    std::vector<Row> sorted;
    sorted.reserve(m_rows.size());
    std::vector<int> to(m_rows.size());
    for (std::size_t i = 0; i < from.size(); ++i) {
        sorted.push_back(std::move(m_rows[std::size_t(from[i])]));
        to[std::size_t(from[i])] = int(i);
    }
    m_rows = std::move(sorted);
    const QModelIndexList before = persistentIndexList();
    QModelIndexList after;
    for (const QModelIndex &index : before)
        after << this->index(to[std::size_t(index.row())]);
    changePersistentIndexList(before, after);
    Q_EMIT layoutChanged({}, VerticalSortHint);
}
