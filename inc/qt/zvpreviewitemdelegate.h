// SPDX-License-Identifier: MIT
#ifndef ZVPREVIEWITEMDELEGATE_H
#define ZVPREVIEWITEMDELEGATE_H

#include "base/zvexport.h"

#include <QStyledItemDelegate>

class ZvQtLinetypeTableView;

/// Paints the pictures of a table of line types, without a focus frame on any cell, and asks the table's host before a
/// new name is taken over. Belongs to the view, which must outlive it.
class ZV_EXPORT ZvPreviewItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT
public:
    /// For \a view, which owns it.
    explicit ZvPreviewItemDelegate(ZvQtLinetypeTableView *view);
    ~ZvPreviewItemDelegate() override;

    void paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const override;
    /// Of a line edit only, and only where its text differs from what is shown.
    void setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const override;

private:
    ZvQtLinetypeTableView *m_view;
};

#endif
