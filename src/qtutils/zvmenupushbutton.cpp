// SPDX-License-Identifier: MIT
#include "zvmenupushbutton.h"

#include "private/zvaccessibility.h"

#include <QMenu>
#include <QMouseEvent>

ZvMenuPushButton::ZvMenuPushButton(QWidget *parent) : QPushButton(parent)
{
    zvNameForReaders(this);
}

void ZvMenuPushButton::addMenu(QAction *action)
{
    if (!action)
        return;
    if (!m_rightMenu) {
        m_rightMenu = new QMenu(this);
        m_leftMenu = new QMenu(this);
        setMenu(m_leftMenu);
    }
    m_rightMenu->addAction(action);
}

void ZvMenuPushButton::mousePressEvent(QMouseEvent *event)
{
    if (m_splitX == 0.0f)
        m_splitX = float(width()) * 2.0f / 3.0f;
    if (m_rightMenu) {
        m_rightPart = float(event->pos().x()) >= m_splitX;
        setMenu(m_rightPart ? m_rightMenu : m_leftMenu);
    }
    QPushButton::mousePressEvent(event);
}
