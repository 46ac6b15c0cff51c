// SPDX-License-Identifier: MIT
#include "private/zvlayerkeys.h"

#include "private/zvlayertable.h"

#include <QKeyEvent>
#include <QRubberBand>

#include <algorithm>

namespace {

class LayerKeys : public QObject
{
public:
    explicit LayerKeys(ZvLayerTable *table)
        : QObject(table), m_table(table), m_frame(new QRubberBand(QRubberBand::Rectangle, table->viewport()))
    {
        m_frame->setObjectName(QStringLiteral("zv_frameOfButton"));
        table->installEventFilter(this);
        connect(table, &QTableWidget::currentCellChanged, this, &LayerKeys::keepColumn);
    }
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        switch (event->type()) {
        case QEvent::Show:
            m_table->installEventFilter(this); // to the front: the list's window closes it with Return
            m_column = ZvLayerTable::kName;
            keepColumn();
            return false;
        case QEvent::ShortcutOverride: // the window takes this for the key
            if (!isOurs(static_cast<QKeyEvent *>(event)->key()))
                return false;
            event->accept();
            return true;
        case QEvent::KeyPress:
            if (!isOurs(static_cast<QKeyEvent *>(event)->key()))
                return false;
            press(static_cast<QKeyEvent *>(event)->key());
            return true;
        default:
            return QObject::eventFilter(watched, event);
        }
    }

private:
    bool isOurs(int key) const
    {
        return m_table->currentRow() >= 0
            && (key == Qt::Key_Left || key == Qt::Key_Right || key == Qt::Key_Space || key == Qt::Key_Return
                || key == Qt::Key_Enter);
    }
    void press(int key)
    {
        if (key == Qt::Key_Left || key == Qt::Key_Right) {
            const int column = m_column + (key == Qt::Key_Left ? -1 : 1);
            m_column = std::clamp(column, int(ZvLayerTable::kSwitch), int(ZvLayerTable::kName));
            keepColumn();
        } else if (auto *button = qobject_cast<QPushButton *>(m_table->cellWidget(m_table->currentRow(), m_column))) {
            button->click();
        } else {
            Q_EMIT m_table->cellPressed(m_table->currentRow(), m_column);
        }
    }
    /// Whatever made another row current, the column is the one that Left and Right have come to.
    void keepColumn()
    {
        const int row = m_table->currentRow();
        if (row >= 0 && m_table->currentColumn() != m_column)
            m_table->setCurrentCell(row, m_column, QItemSelectionModel::NoUpdate);
        const bool isOnButton = row >= 0 && m_column < ZvLayerTable::kName;
        if (isOnButton) {
            m_frame->setGeometry(m_table->visualRect(m_table->currentIndex()));
            m_frame->raise();
        }
        m_frame->setVisible(isOnButton);
    }

    ZvLayerTable *const m_table;
    QRubberBand *const m_frame;
    int m_column = ZvLayerTable::kName;
};

} // namespace

void zvGiveKeys(ZvLayerTable *table)
{
    new LayerKeys(table);
}
