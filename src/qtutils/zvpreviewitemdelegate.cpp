// SPDX-License-Identifier: MIT
#include "zvpreviewitemdelegate.h"

#include "zvqtlinetypetableview.h"

#include <QLineEdit>
#include <QPainter>
#include <QSortFilterProxyModel>

ZvPreviewItemDelegate::ZvPreviewItemDelegate(ZvQtLinetypeTableView *view) : QStyledItemDelegate(view), m_view(view) { }

ZvPreviewItemDelegate::~ZvPreviewItemDelegate() = default;

void ZvPreviewItemDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option, const QModelIndex &index) const
{
    QStyleOptionViewItem plain(option);
    plain.state &= ~QStyle::State_HasFocus;
    QStyledItemDelegate::paint(painter, plain, index);
    if (index.column() != ZvQtLinetypeTableView::kPictureColumn)
        return;
    const auto data = index.data(Qt::UserRole).value<LtypeData>();
    const QPixmap picture = m_view->createLineTypeImage(data.name, option.rect.width(), option.rect.height());
    painter->drawPixmap(QRectF(option.rect), picture, QRectF());
}

void ZvPreviewItemDelegate::setModelData(QWidget *editor, QAbstractItemModel *model, const QModelIndex &index) const
{
    const auto *edit = qobject_cast<QLineEdit *>(editor);
    const auto *sorted = qobject_cast<QSortFilterProxyModel *>(model);
    if (!edit || !sorted || edit->text() == index.data(Qt::DisplayRole).toString())
        return;
    QString text = edit->text();
    // A host that renames the row itself has the table sorted anew meanwhile.
    const QPersistentModelIndex cell(index);
    if (Q_EMIT m_view->ltypeRename(text, sorted->mapToSource(index)))
        model->setData(cell, text, Qt::EditRole);
}
