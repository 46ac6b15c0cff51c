// SPDX-License-Identifier: MIT
#ifndef ZVUTILSSHADEPLOTCOMBOBOX_H
#define ZVUTILSSHADEPLOTCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// Lists the shade plot modes that the host's plot service offers for the current drawing; without the service the list
/// is empty. A row holds its text again under Qt::UserRole. It neither follows the drawing nor writes to it.
class ZV_EXPORT ZvUtilsShadePlotComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked. Owned by \a parent.
    explicit ZvUtilsShadePlotComboBox(QWidget *parent);
    /// \a hook puts it on the update bus, where it hears nothing; the list is then filled anew each
    /// time it opens.
    ZvUtilsShadePlotComboBox(bool hook, QWidget *parent);
    ~ZvUtilsShadePlotComboBox() override;

    /// \throws ZvError_NotThatKindOfClass where the key of the service holds something else.
    void init();
    /// The text that is shown; empty for a blank box.
    QString getCurrentName() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// Another row is current.
    void ItemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: ItemChanged().
    void curIndexChanged(int index);
};

#endif
