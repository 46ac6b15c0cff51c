// SPDX-License-Identifier: MIT
#ifndef ZVUTILSPLOTSTYLETABLECOMBOBOX_H
#define ZVUTILSPLOTSTYLETABLECOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// Lists the plot style table files that fit the drawing, below "无", none. It neither follows the drawing nor writes
/// to it.
class ZV_EXPORT ZvUtilsPlotStyleTableComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// Not hooked. Owned by \a parent.
    explicit ZvUtilsPlotStyleTableComboBox(QWidget *parent);
    /// \a hook puts it on the update bus, where it hears nothing.
    ZvUtilsPlotStyleTableComboBox(bool hook, QWidget *parent);
    ~ZvUtilsPlotStyleTableComboBox() override;

    /// Fills the list anew: files of colours or of names, by the variable "PSTYLEMODE".
    void init();
    /// The name that is shown; empty for a blank box.
    QString getCurrentPlotStyleName() const;
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;

Q_SIGNALS:
    /// Never heard: it is sent while signals are blocked. Callers follow currentIndexChanged().
    void plotStyleTableItemChanged(const QString &name);

public Q_SLOTS:
    /// What a change of the current row does: plotStyleTableItemChanged(), while signals are blocked.
    void curIndexChanged(int index);
};

#endif
