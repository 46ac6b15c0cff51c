// SPDX-License-Identifier: MIT
#ifndef ZVIMAGEVEW_H
#define ZVIMAGEVEW_H

#include "base/zvexport.h"

#include <QDialog>

QT_BEGIN_NAMESPACE
class QListWidget;
QT_END_NAMESPACE
class ZvImageItem;

/// The list of a ZvImageComboBox. Each row counts 23 pixels, and the list grows up to 180.
class ZV_EXPORT ZvImageVew : public QDialog
{
    Q_OBJECT
public:
    /// An empty list. Owned by \a parent.
    explicit ZvImageVew(QWidget *parent);

    /// Takes \a item as the last row and owns it. Its object name is what a screen reader reads. Null is ignored.
    void addItem(ZvImageItem *item);
    /// Null for a row that does not exist.
    ZvImageItem *itemAt(int row) const;
    /// Makes the list \a width pixels wide and as high as its rows.
    void setWidth(int width);

Q_SIGNALS:
    /// The user pressed a mouse button on the row \a item, or Return with that row current.
    void colorItemSelected(QWidget *item);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    int metric(PaintDeviceMetric metric) const override;

private:
    QListWidget *list;
    int itemWidth; // of the rows added from now on
};

#endif
