// SPDX-License-Identifier: MIT
#ifndef ZVUTILSBLOCKUNITCOMBOBOX_H
#define ZVUTILSBLOCKUNITCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// Lists the units that a block can be drawn in, in the order of their codes in drawing files: 0 is no unit, 1 inch, 4
/// millimetre, 6 metre, 20 parsec. Rows hold no code; callers go by text or index. It neither follows the drawing nor
/// writes to it.
class ZV_EXPORT ZvUtilsBlockUnitComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked. Owned by \a parent.
    explicit ZvUtilsBlockUnitComboBox(QWidget *parent);
    /// \a hook puts it on the update bus, where it hears nothing.
    ZvUtilsBlockUnitComboBox(bool hook, QWidget *parent);
    ~ZvUtilsBlockUnitComboBox() override;

    /// Done by the constructors, once: a second call doubles the rows.
    void init();
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

Q_SIGNALS:
    /// Another row is current.
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: itemChanged().
    void curIndexChanged(int index);
};

#endif
