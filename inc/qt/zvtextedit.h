// SPDX-License-Identifier: MIT
#ifndef ZVTEXTEDIT_H
#define ZVTEXTEDIT_H

#include "base/zvexport.h"

#include <QTextEdit>

/// A text box without a context menu, whether asked for by the mouse or by the keyboard. A host that wants a menu of
/// its own connects to customContextMenuRequested().
class ZV_EXPORT ZvTextEdit : public QTextEdit
{
    Q_OBJECT
public:
    /// An empty box. Owned by \a parent.
    explicit ZvTextEdit(QWidget *parent = nullptr);

public Q_SLOTS:
    /// Called where a context menu was asked for, at \a pos in the box. Does nothing.
    void slot_Menu(const QPoint &pos);
};

#endif
