// SPDX-License-Identifier: MIT
#ifndef ZVUTILSTABLECELLSTYLECOMBOBOX_H
#define ZVUTILSTABLECELLSTYLECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// Lists the cell styles of one table style below "按行/列", by row or column. It neither follows the drawing nor
/// writes to it.
class ZV_EXPORT ZvUtilsTableCellStyleComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked. Owned by \a parent.
    ZvUtilsTableCellStyleComboBox(const ZvDbObjectId &tableStyle, QWidget *parent);
    /// \a hook puts it on the update bus, where it hears nothing.
    ZvUtilsTableCellStyleComboBox(bool hook, const ZvDbObjectId &tableStyle, QWidget *parent);
    /// What a form makes: init() tells it the table style later.
    explicit ZvUtilsTableCellStyleComboBox(QWidget *parent) : ZvUtilsTableCellStyleComboBox(ZvDbObjectId(), parent) { }
    ~ZvUtilsTableCellStyleComboBox() override;

    /// Fills the list with those of another table style.
    void init(const ZvDbObjectId &tableStyle);
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

Q_SIGNALS:
    /// Never heard: it is sent while signals are blocked. Callers follow currentIndexChanged().
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: the signal above, while signals are blocked.
    void curIndexChanged(int index);

protected:
    bool event(QEvent *event) override;
};

#endif
