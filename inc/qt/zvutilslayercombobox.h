// SPDX-License-Identifier: MIT
#ifndef ZVUTILSLAYERCOMBOBOX_H
#define ZVUTILSLAYERCOMBOBOX_H

#include "zvqtcontrolhelp.h"

#include "base/zvexport.h"

#include <QComboBox>

/// The plain drop-down of layers: names only.
///
/// Hooked it follows the drawing, showing the current layer or that of the selected entities, and writes what is
/// picked. Its list is filled anew each time it opens, also during a command. Unhooked it only tells what is picked.
/// Hidden layers are not listed.
class ZV_EXPORT ZvUtilsLayerComboBox : public QComboBox, public CZvQtControlHelp
{
    Q_OBJECT
    Q_INTERFACES(CZvQtControlHelp)
public:
    /// In mode 1 the list begins with "使用当前项", use the current one, leaves frozen layers out, and picks write
    /// nothing.
    enum Mode : int { kPlain = 0, kWithUseCurrent = 1 };

    /// Not hooked. With nothing selected a frozen layer cannot be chosen by the user: the row goes back to the one
    /// shown when the list opened.
    ZvUtilsLayerComboBox(int mode, QWidget *parent);
    /// Without that guard.
    ZvUtilsLayerComboBox(bool hook, int mode, QWidget *parent);
    /// What a form makes: not hooked, plain.
    explicit ZvUtilsLayerComboBox(QWidget *parent) : ZvUtilsLayerComboBox(kPlain, parent) { }
    ~ZvUtilsLayerComboBox() override;

    /// Fills the list anew; signals are not blocked.
    void init();
    /// The same, under another name that callers use.
    void onInit();
    /// The row's text; empty out of range.
    QString getLayerName(int index);
    /// The name that is shown; empty for a blank box.
    QString getCurrentLayerName();
    void acceptUpdateUI(const CZvGlobalUIReactorHelp &notice) override;
    void showPopup() override;

Q_SIGNALS:
    /// The user picked the row \a index.
    void layerItemChanged(int index);

public Q_SLOTS:
    /// What a change of the current row does: a hooked control writes the row's layer unless in mode 1, and
    /// layerItemChanged() is emitted.
    void curIndexChanged(int index);
    /// Takes a pick of a frozen layer back, unless something is selected.
    void activatedIndexChanged(int index);

private:
    const int m_mode;
    int m_savedIndex = 0; // shown when the list opened
    ZvGlobalUIReactorHelp::SLayerInfo m_info;
};

#endif
