// SPDX-License-Identifier: MIT
#ifndef ZVUTILSTABLESTYLECOMBOBOX_H
#define ZVUTILSTABLESTYLECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// The drop-down of table styles.
///
/// Hooked it follows the drawing, showing the current style or that of the selected tables, and writes what is picked.
/// Its list is filled anew each time it opens, also during a command. Unhooked it only tells what is picked. A style
/// that is not listed and current all the same is shown by a row of its own, until the next refill.
class ZV_EXPORT ZvUtilsTableStyleComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked.
    explicit ZvUtilsTableStyleComboBox(QWidget *parent);
    /// With \a hook it follows the drawing and writes to it.
    ZvUtilsTableStyleComboBox(bool hook, QWidget *parent);
    ~ZvUtilsTableStyleComboBox() override;

    /// Fills the list; signals are not blocked.
    void init();
    /// The name that is shown; empty for a blank box.
    QString getCurrentStyleName() const;
    /// Null when nothing is shown and where the drawing has no such style.
    ZvDbObjectId getCurrentStyleId() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked a style.
    void styleItemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's name, and styleItemChanged() is
    /// emitted.
    void curIndexChanged(int index);

protected:
    bool event(QEvent *event) override;

private:
    ZvGlobalUIReactorHelp::STableStyleInfo m_info;
};

#endif
