// SPDX-License-Identifier: MIT
#ifndef ZVCOLORDIALOG_H
#define ZVCOLORDIALOG_H

#include "zevaqt.h"

#include <QDialog>
#include <QPointer>
#include <QTabWidget>

class ZvIndexColorWnd;
class ZvTrueColorWnd;

/// \file
/// The colour dialog and its adapter. An application that only wants a colour asks the service "Dialog/Common" for
/// "ColorDialog"; the classes are here for one that looks for the dialog's widgets or extends them.

/// The dialog's tabs.
class ZV_EXPORT ZvColorTabWidget : public QTabWidget
{
    Q_OBJECT
public:
    /// Without tabs. Owned by \a parent.
    explicit ZvColorTabWidget(QWidget *parent = nullptr);
};

/// The colour dialog: an index colour tab and a true colour tab over OK, cancel and help.
///
/// Input and output are one tree. A colour is a method code under "clrMethod" and a value under "selectClr":
///
/// | "clrMethod" | "selectClr" |
/// |---|---|
/// | 192 by layer | 256 |
/// | 193 by block | 0 |
/// | 194 true colour | packed colour, red in the low byte |
/// | 195 by index | 0 to 256 |
///
/// Further input: "tabs", bit 0 for the index tab and bit 1 for the true colour tab, 7 when absent (2 alone is no
/// usable set); "layerClr", the packed colour that by layer stands for; "backgroundColor", handed to the palette
/// function; "isByLayerEnable" and "isByBLockEnable" (spelled so), which enable the two buttons, and by their mere
/// presence take away the buttons' accelerators.
///
/// Clicks write the answer at once: after a cancel the tree holds what was clicked last, so "result" comes first.
class ZV_EXPORT ZvColorDialog : public QDialog
{
    Q_OBJECT
public:
    /// The frame without tabs.
    explicit ZvColorDialog(QWidget *parent);
    ~ZvColorDialog() override;

    /// Builds the tabs. To be called once. A null \a params is taken as an empty tree; of \a helper no reference is
    /// kept.
    void onInit(ZvJsonPtr params, ZvRxObjectPtr helper);

    /// Validates the current tab, writes the answer, tells the helper and closes. A refused text leaves the dialog
    /// open.
    void accept() override;

public Q_SLOTS:
    /// Carries the colour into the tab that the user turns to.
    virtual void slot_currentTabChange(int index);
    /// Shows the host's help; nothing where the host offers none.
    /// \throws ZvError_NotThatKindOfClass for an object of a class that has nothing to do with the kernel's objects.
    virtual void slot_help_button_clicked();

private:
    bool applyTrueColor();

    ZvJsonPtr m_pParams;
    ZvRxObject *m_pHelper = nullptr; // not owned, no reference
    ZvColorTabWidget *m_pTabWidget = nullptr;
    ZvIndexColorWnd *m_pIndexColorWnd = nullptr; // null without that tab
    ZvTrueColorWnd *m_pTrueColorWnd = nullptr; // null without that tab
};

/// The dialog as the kernel knows it. Parameters go to the dialog first.
class ZV_EXPORT ZvQtColorDialog : public ZvQtUIModeDialogBase
{
public:
    /// Makes the dialog, of fixed size and not modal until it is run.
    explicit ZvQtColorDialog(QWidget *parent);
    ~ZvQtColorDialog() override;

    /// Always true.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override;

private:
    QPointer<ZvColorDialog> m_pDialog; // the same object as m_pWidget, typed
};

#endif
