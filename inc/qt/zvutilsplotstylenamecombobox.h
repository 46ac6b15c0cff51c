// SPDX-License-Identifier: MIT
#ifndef ZVUTILSPLOTSTYLENAMECOMBOBOX_H
#define ZVUTILSPLOTSTYLENAMECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// The drop-down of named plot styles: "ByLayer", "ByBlock" and those of the drawing.
///
/// Hooked it follows the drawing, showing the current plot style or that of the selected entities, and writes what is
/// picked. Its list is filled anew each time it opens, also during a command. Unhooked it only tells what is picked.
/// The drawing's "Normal" is shown as "普通".
class ZV_EXPORT ZvUtilsPlotStyleNameComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked.
    explicit ZvUtilsPlotStyleNameComboBox(QWidget *parent);
    /// With \a hook it follows the drawing and writes to it.
    ZvUtilsPlotStyleNameComboBox(bool hook, QWidget *parent);
    ~ZvUtilsPlotStyleNameComboBox() override;

    /// Fills the list; signals are not blocked.
    void init();
    /// As it is shown.
    QString getCurrentPlotStyleName() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked a plot style, named as it is shown.
    void plotStyleTableItemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's name, and plotStyleTableItemChanged()
    /// is emitted.
    void curIndexChanged(int index);

private:
    ZvGlobalUIReactorHelp::SPlotStyleInfo m_info;
};

#endif
