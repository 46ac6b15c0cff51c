// SPDX-License-Identifier: MIT
#ifndef ZVUTILMATERIALCOMBOBOX_H
#define ZVUTILMATERIALCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// The drop-down of materials.
///
/// Hooked it follows the drawing, showing the current material or that of the selected entities, and writes what is
/// picked. Its list is filled anew each time it opens, also during a command. Unhooked it only tells what is picked. A
/// material that is not listed and current all the same is shown by a last row of its own, until the next refill.
class ZV_EXPORT ZvUtilsMaterialComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked.
    explicit ZvUtilsMaterialComboBox(QWidget *parent);
    /// With \a hook it follows the drawing and writes to it.
    ZvUtilsMaterialComboBox(bool hook, QWidget *parent);
    ~ZvUtilsMaterialComboBox() override;

    /// Fills the list; signals are not blocked.
    void init();
    /// The name that is shown; empty for a blank box.
    QString getCurrentMaterialName() const;
    /// Null when nothing is shown and where the drawing has no such material.
    ZvDbObjectId getCurrentMaterialId();
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked a material.
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's name, and itemChanged() is emitted.
    void curIndexChanged(int index);

private:
    ZvGlobalUIReactorHelp::SMaterialInfo m_info;
};

#endif
