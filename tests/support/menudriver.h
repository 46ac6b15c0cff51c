// SPDX-License-Identifier: MIT
#ifndef MENUDRIVER_H
#define MENUDRIVER_H

#include <QApplication>
#include <QContextMenuEvent>
#include <QCursor>
#include <QMenu>
#include <QObject>
#include <QStringList>
#include <QTest>
#include <QTimer>

/// Works the next menu that pops up, from inside its own loop: looks at its entries and presses one.
///
/// \code
/// MenuDriver menu(QStringLiteral("全部选择(&S)"));
/// MenuDriver::openContextMenu(view->viewport(), pos);
/// QVERIFY(menu.finished());
/// \endcode
class MenuDriver : public QObject
{
public:
    /// An empty \a text closes the menu with Escape.
    explicit MenuDriver(const QString &text, int patienceMs = 10000) : m_text(text)
    {
        connect(&m_poll, &QTimer::timeout, this, &MenuDriver::act);
        m_poll.start(0);
        m_watchdog.setSingleShot(true);
        connect(&m_watchdog, &QTimer::timeout, &m_poll, &QTimer::stop);
        m_watchdog.start(patienceMs);
    }

    /// A menu came, and the entry was pressed.
    bool finished() const { return m_isPressed; }
    QStringList entries() const { return m_entries; }
    /// Of the menu's top left corner, on the desktop.
    QPoint place() const { return m_place; }

    /// What the right button does to a widget.
    static void openContextMenu(QWidget *widget, const QPoint &pos)
    {
        QCursor::setPos(widget->mapToGlobal(pos));
        QContextMenuEvent event(QContextMenuEvent::Mouse, pos, widget->mapToGlobal(pos));
        QApplication::sendEvent(widget, &event);
    }

private:
    void act()
    {
        auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        m_poll.stop();
        m_place = menu->pos();
        QAction *wanted = nullptr;
        const QList<QAction *> actions = menu->actions();
        for (QAction *action : actions) {
            m_entries.append(action->text());
            if (action->text() == m_text)
                wanted = action;
        }
        m_isPressed = wanted || m_text.isEmpty();
        if (wanted)
            QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, menu->actionGeometry(wanted).center());
        else
            QTest::keyClick(menu, Qt::Key_Escape);
    }

    QString m_text;
    QStringList m_entries;
    QPoint m_place;
    QTimer m_poll;
    QTimer m_watchdog;
    bool m_isPressed = false;
};

#endif
