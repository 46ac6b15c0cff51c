// SPDX-License-Identifier: MIT
#include "zvtextedit.h"

#include "private/zvaccessibility.h"

ZvTextEdit::ZvTextEdit(QWidget *parent) : QTextEdit(parent)
{
    zvNameForReaders(this);
    setContextMenuPolicy(Qt::CustomContextMenu);
    connect(this, &QWidget::customContextMenuRequested, this, &ZvTextEdit::slot_Menu);
}

void ZvTextEdit::slot_Menu(const QPoint &) { }
