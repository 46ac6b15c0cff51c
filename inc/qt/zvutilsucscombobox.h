// SPDX-License-Identifier: MIT
#ifndef ZVUTILSUCSCOMBOBOX_H
#define ZVUTILSUCSCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"
#include "zvodasetting.h"

#include <QComboBox>
#include <QIcon>

#include <map>

/// The drop-down of coordinate systems: shows which is in force in the space at hand, and switches to a preset, a
/// stored or the previous one.
///
/// Picks of a hooked control go to the command line as menu macros, so that each is an undoable command; it follows the
/// drawing, and its list is filled anew each time it opens. Unhooked it only tells what is picked. Each row holds its
/// ZevaUISetting::UcsItemType as an int under Qt::UserRole.
class ZV_EXPORT ZvUtilsUcsComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked.
    explicit ZvUtilsUcsComboBox(QWidget *parent);
    /// With \a hook it follows the drawing and writes to it.
    ZvUtilsUcsComboBox(bool hook, QWidget *parent);
    ~ZvUtilsUcsComboBox() override;

    /// Fills the list and shows the system in force.
    void init();
    /// Done by the constructors, once.
    void initIcons();
    /// Reads the rows. The type of the one in force, with its name in \a currentName; the name is left alone for the
    /// unnamed one. -1 where no row is that of the system in force, and without a drawing.
    int reload(ZvArray<ZevaUISetting::ZvsiUcsInfoItem> &items, ZvString &currentName);
    /// Switches to the row shown, of the given type. Always true.
    bool selectItem(int type);
    /// The text that is shown; empty for a blank box.
    QString getCurrentName() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked a row.
    void itemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control switches to the row's system, and itemChanged() is
    /// emitted.
    void curIndexChanged(int index);

protected:
    bool event(QEvent *event) override;

private:
    std::map<int, QIcon> m_icons; // by ZevaUISetting::UcsItemType
};

#endif
