// SPDX-License-Identifier: MIT
#ifndef ZVROWMODEL_H
#define ZVROWMODEL_H

#include <QAbstractListModel>
#include <QIcon>
#include <QMap>
#include <QVariant>

#include <vector>

/// A row of a drop-down.
struct ZvRow
{
    QIcon icon;
    QString text;
    QVariant data; ///< Under Qt::UserRole.
};

/// The rows of a drop-down that may have thousands: filled and emptied in a small part of the time that an item object
/// for each row takes. What callers do with a plain drop-down they do here as well: insert, remove, sort, separators,
/// data under any role, and rows switched off by flags under Qt::UserRole - 1.
class ZvRowModel : public QAbstractListModel
{
public:
    using QAbstractListModel::QAbstractListModel;

    /// At the end, all at once: combo and view hear of one change and not of one a row.
    void append(std::vector<ZvRow> &&rows);

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    bool setData(const QModelIndex &index, const QVariant &value, int role = Qt::EditRole) override;
    QMap<int, QVariant> itemData(const QModelIndex &index) const override;
    Qt::ItemFlags flags(const QModelIndex &index) const override;
    bool insertRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    bool removeRows(int row, int count, const QModelIndex &parent = QModelIndex()) override;
    /// By the texts.
    void sort(int column, Qt::SortOrder order = Qt::AscendingOrder) override;

private:
    struct Row : ZvRow
    {
        QMap<int, QVariant> others; ///< By role.
    };

    bool holds(const QModelIndex &index) const;

    std::vector<Row> m_rows;
};

#endif
