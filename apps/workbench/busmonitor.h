// SPDX-License-Identifier: MIT
#ifndef BUSMONITOR_H
#define BUSMONITOR_H

#include "updatebushost.h"

#include <QAbstractTableModel>
#include <QWidget>

#include <deque>

class QAction;
class QLabel;
class QLineEdit;
class QSortFilterProxyModel;
class QTableView;

/// The last notices of the update bus, oldest first.
class BusNoticeModel : public QAbstractTableModel
{
    Q_OBJECT
public:
    enum Column { kNumber, kKind, kName, kObject, kSelection, kTime, kOpenings, kChanges, kColumnCount };
    /// When there are more, the oldest go.
    static constexpr int kMost = 2000;

    using QAbstractTableModel::QAbstractTableModel;
    void add(const BusDelivery &delivery);
    void clear();
    const BusDelivery &at(int row) const { return m_deliveries[std::size_t(row)]; }

    int rowCount(const QModelIndex &parent = QModelIndex()) const override;
    int columnCount(const QModelIndex &parent = QModelIndex()) const override;
    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role = Qt::DisplayRole) const override;

private:
    std::deque<BusDelivery> m_deliveries;
};

/// Shows what the update bus does, so that the developer of a host can see why a control shows what it shows. Takes
/// notes only while it is visible and not paused.
class BusMonitor : public QWidget
{
    Q_OBJECT
public:
    /// \a bus must outlive the monitor.
    explicit BusMonitor(UpdateBusHost &bus, QWidget *parent = nullptr);
    ~BusMonitor() override;

    BusNoticeModel &notices() const { return *m_model; }
    /// The selected rows, else all that the filter lets through: a line each, columns separated by tabs, with a header.
    QString text() const;

protected:
    void showEvent(QShowEvent *event) override;
    void hideEvent(QHideEvent *event) override;

private:
    void updateRecording();
    void updateSummary();

    UpdateBusHost &m_bus;
    BusNoticeModel *m_model;
    QSortFilterProxyModel *m_filtered;
    QTableView *m_table;
    QLineEdit *m_filter;
    QLabel *m_summary;
    QAction *m_pause;
};

#endif
