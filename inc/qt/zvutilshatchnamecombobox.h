// SPDX-License-Identifier: MIT
#ifndef ZVUTILSHATCHNAMECOMBOBOX_H
#define ZVUTILSHATCHNAMECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// Lists the hatch patterns used in the space that is shown, in order of first use. It neither follows the drawing nor
/// writes to it.
class ZV_EXPORT ZvUtilsHatchNameComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked. Owned by \a parent.
    explicit ZvUtilsHatchNameComboBox(QWidget *parent);
    /// \a hook puts it on the update bus, where it hears nothing.
    ZvUtilsHatchNameComboBox(bool hook, QWidget *parent);
    ~ZvUtilsHatchNameComboBox() override;

    /// Done by the constructors, once: a second call doubles the rows.
    void init();
    /// The name that is shown; empty for a blank box.
    QString getCurrentStyleName() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

Q_SIGNALS:
    /// Another row is current.
    void styleTableItemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: styleTableItemChanged().
    void curIndexChanged(int index);
};

#endif
