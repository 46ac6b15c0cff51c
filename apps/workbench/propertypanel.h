// SPDX-License-Identifier: MIT
#ifndef PROPERTYPANEL_H
#define PROPERTYPANEL_H

#include "kernelevents.h"
#include "propertyrow.h"

#include <QTimer>
#include <QVector>
#include <QWidget>

class QLabel;
class QTreeWidget;
class QTreeWidgetItem;
class UpdateBusHost;
class WorkbenchHost;

/// Shows the ten summaries of the selection as plain text, or the drawing's current values when nothing is selected. A
/// mixed one unfolds into its values with their counts, of which a click selects just those entities. Each can be
/// written through the facade, as a control does it.
///
/// It is on the update bus while it is visible.
class PropertyPanel : public QWidget
{
    Q_OBJECT
public:
    /// Both must outlive the panel's use; \a bus also the panel.
    PropertyPanel(UpdateBusHost &bus, WorkbenchHost &host, QWidget *parent = nullptr);
    ~PropertyPanel() override;

    const QVector<PropertyRow *> &rows() const { return m_rows; }
    QTreeWidget *tree() const { return m_tree; }

    QSize sizeHint() const override;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    struct Stamps
    {
        quint64 selection = 0;
        quint64 drawing = 0;
        bool operator==(const Stamps &o) const { return selection == o.selection && drawing == o.drawing; }
    };

    void leaveBus();
    /// Brings all rows up to date without a notice.
    void readAll();
    void showRow(int row);
    void showSummary();
    void unfold(QTreeWidgetItem *item);
    void recountUnfolded();
    void countValues(int row);
    void forgetValues(int row);
    void activate(QTreeWidgetItem *item, int column);
    void narrowTo(int row, const PropertyRow::ValueCount &value);
    Stamps stamps() const;

    UpdateBusHost &m_bus;
    WorkbenchHost &m_host;
    KernelEvents m_events;
    QVector<PropertyRow *> m_rows;
    QVector<QVector<PropertyRow::ValueCount>> m_values; // of the unfolded rows
    QVector<Stamps> m_counted; // what the values were counted in
    QLabel *m_summary;
    QTreeWidget *m_tree;
    QTimer m_recount;
    bool m_onBus = false;
};

#endif
