// SPDX-License-Identifier: MIT
#ifndef ZVMENUPUSHBUTTON_H
#define ZVMENUPUSHBUTTON_H

#include "base/zvexport.h"

#include <QPushButton>

QT_BEGIN_NAMESPACE
class QAction;
class QMenu;
QT_END_NAMESPACE

/// A push button in two parts: a press on the right third opens the menu of the actions, a press on the rest an empty
/// menu. Without any action it is an ordinary push button in one part.
///
/// Where the button is split is settled by its first press and stays there, whatever its width becomes later. The
/// keyboard opens the menu that the last press opened, the empty one before any press.
class ZV_EXPORT ZvMenuPushButton : public QPushButton
{
    Q_OBJECT
public:
    /// Without actions. Owned by \a parent.
    explicit ZvMenuPushButton(QWidget *parent = nullptr);

    /// Adds \a action at the end of the menu. It stays its owner's; a deleted one leaves the menu. Null is ignored.
    void addMenu(QAction *action);

protected:
    void mousePressEvent(QMouseEvent *event) override;

private:
    QMenu *m_rightMenu = nullptr; // the actions'; both are children of the button
    QMenu *m_leftMenu = nullptr; // empty
    bool m_rightPart = false; // the last press was on the right part
    float m_splitX = 0; // pixels from the left; 0 before the first press
};

#endif
