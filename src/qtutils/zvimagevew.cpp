// SPDX-License-Identifier: MIT
#include "zvimagevew.h"

#include "zvimageitem.h"

#include <QKeyEvent>
#include <QListWidget>

namespace {

constexpr int kRowHeight = 23;
constexpr int kHighest = 180;
constexpr int kColorCount = 256;

} // namespace

ZvImageVew::ZvImageVew(QWidget *parent) : QDialog(parent), list(new QListWidget(this)), itemWidth(width())
{
    list->setGeometry(0, 0, width(), 0);
    list->setViewMode(QListView::ListMode);
    list->setSpacing(1);
    list->setResizeMode(QListView::Adjust);
    setFocusProxy(list);
    connect(list, &QListWidget::itemPressed, this,
            [this](QListWidgetItem *item) { Q_EMIT colorItemSelected(list->itemWidget(item)); });
}

void ZvImageVew::addItem(ZvImageItem *item)
{
    if (!item)
        return;
    auto *row = new QListWidgetItem(list);
    row->setData(Qt::UserRole, 0);
    row->setData(Qt::SizeHintRole, QSize(itemWidth, kRowHeight));
    row->setData(Qt::AccessibleTextRole, item->objectName());
    list->setItemWidget(row, item);
}

ZvImageItem *ZvImageVew::itemAt(int row) const
{
    return qobject_cast<ZvImageItem *>(list->itemWidget(list->item(row)));
}

void ZvImageVew::setWidth(int width)
{
    resize(width, qMin(list->count() * kRowHeight, kHighest));
}

void ZvImageVew::keyPressEvent(QKeyEvent *event)
{
    const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
    if (isReturn && list->currentItem())
        Q_EMIT colorItemSelected(list->itemWidget(list->currentItem()));
    else
        QDialog::keyPressEvent(event);
}

void ZvImageVew::resizeEvent(QResizeEvent *event)
{
    QDialog::resizeEvent(event);
    list->resize(size());
    itemWidth = width();
}

int ZvImageVew::metric(PaintDeviceMetric metric) const
{
    // The combo asks for it at each press. A widget gives the same number, with a warning.
    return metric == PdmNumColors ? kColorCount : QDialog::metric(metric);
}
