// SPDX-License-Identifier: MIT
#ifndef ZVSORTFILTERPROXYMODEL_H
#define ZVSORTFILTERPROXYMODEL_H

#include "base/zvexport.h"

#include <QSortFilterProxyModel>

/// Sorts by what is shown, but keeps the first two rows of the source on top, whatever the column and the order: the
/// places of the line types that stand for "as the layer has it" and "as the block has it".
class ZV_EXPORT ZvSortFilterProxyModel : public QSortFilterProxyModel
{
    Q_OBJECT
public:
    /// Without a source model. Owned by \a parent.
    explicit ZvSortFilterProxyModel(QObject *parent = nullptr);
    ~ZvSortFilterProxyModel() override;

protected:
    bool filterAcceptsRow(int sourceRow, const QModelIndex &sourceParent) const override;
    /// False for an index that is none.
    bool lessThan(const QModelIndex &left, const QModelIndex &right) const override;
};

#endif
