// SPDX-License-Identifier: MIT
#ifndef ZVUTILSDIMSTYLECOMBOBOX_H
#define ZVUTILSDIMSTYLECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// The drop-down of dimension styles.
///
/// Hooked it follows the drawing, showing the current style or that of the selected dimensions, and writes what is
/// picked. Its list is filled anew each time it opens, also during a command. Unhooked it only tells what is picked. A
/// style that is not listed and current all the same is shown by a row of its own, until the next refill.
class ZV_EXPORT ZvUtilsDimStyleComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked.
    explicit ZvUtilsDimStyleComboBox(QWidget *parent);
    /// With \a hook it follows the drawing and writes to it.
    ZvUtilsDimStyleComboBox(bool hook, QWidget *parent);
    ~ZvUtilsDimStyleComboBox() override;

    /// Fills the list; signals are not blocked.
    void init();
    /// The name that is shown; empty for a blank box.
    QString getCurrentStyleName() const;
    /// Null when nothing is shown; the last style of the table where the drawing has none of
    /// that name.
    ZvDbObjectId getCurrentStyleId() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked a style.
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's name, and itemChanged() is emitted.
    void curIndexChanged(int index);

protected:
    bool event(QEvent *event) override;

private:
    ZvGlobalUIReactorHelp::SDimStyleInfo m_info;
};

#endif
