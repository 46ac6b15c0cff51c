// SPDX-License-Identifier: MIT
#ifndef ZVUTILSBLOCKCOMBOBOX_H
#define ZVUTILSBLOCKCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// Lists the blocks that a user can insert, sorted by name. It neither follows the drawing nor writes to it.
class ZV_EXPORT ZvUtilsBlockComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// \a usedOnly: only blocks that are referenced.
    ZvUtilsBlockComboBox(QWidget *parent, bool usedOnly);
    /// \a hook puts it on the update bus, where it hears nothing.
    ZvUtilsBlockComboBox(bool hook, QWidget *parent, bool usedOnly);
    /// What a form makes: all blocks.
    explicit ZvUtilsBlockComboBox(QWidget *parent) : ZvUtilsBlockComboBox(parent, false) { }
    ~ZvUtilsBlockComboBox() override;

    /// Fills the list anew.
    void init();
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

Q_SIGNALS:
    /// Another row is current.
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: itemChanged().
    void curIndexChanged(int index);

private:
    const bool m_usedOnly;
};

#endif
