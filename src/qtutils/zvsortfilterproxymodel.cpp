// SPDX-License-Identifier: MIT
#include "zvsortfilterproxymodel.h"

namespace {
constexpr int kRowsOnTop = 2;
}

ZvSortFilterProxyModel::ZvSortFilterProxyModel(QObject *parent) : QSortFilterProxyModel(parent) { }

ZvSortFilterProxyModel::~ZvSortFilterProxyModel() = default;

bool ZvSortFilterProxyModel::filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const
{
    return QSortFilterProxyModel::filterAcceptsRow(sourceRow, sourceParent);
}

bool ZvSortFilterProxyModel::lessThan(const QModelIndex &left, const QModelIndex &right) const
{
    if (!left.isValid() || !right.isValid())
        return false;
    // A falling order asks the other way round.
    const bool isAscending = sortOrder() == Qt::AscendingOrder;
    for (int row = 0; row < kRowsOnTop; ++row) {
        if (left.row() == row)
            return isAscending;
        if (right.row() == row)
            return !isAscending;
    }
    return QSortFilterProxyModel::lessThan(left, right);
}
