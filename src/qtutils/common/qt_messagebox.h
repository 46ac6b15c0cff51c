// SPDX-License-Identifier: MIT
#ifndef QT_MESSAGEBOX_H
#define QT_MESSAGEBOX_H

#include "zevaqt.h"

#include <QPointer>

#include <cstdint>

QT_BEGIN_NAMESPACE
class QBoxLayout;
class QButtonGroup;
QT_END_NAMESPACE

/// The general message dialog, "MessageBox" of the service "Dialog/Common". One dialog for four uses: a message with a
/// fixed set of buttons, a message with the caller's buttons, a choice among buttons that close the dialog at once, and
/// a list of independent check boxes. The parameter tree decides all of it, once, in onInit().
///
/// Reads "title", "msg", "dlgtype", "contentFlag", "flag", "selBtnText", "selCheckText", "btnText" and
/// "WindowMaximizeButtonHint"; writes "ControlBtn", "selectedBtn" and "selectedCheck" into the same tree.
class ZvQtMessageBox : public ZvQtModeDialogImpl<ZvQtMessageBox, QDialog>
{
    Q_OBJECT
public:
    ZvQtMessageBox(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags);

    /// False where \a params is null: the dialog must not be run.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override;
    /// Answers with the last of the ordinary buttons. The window frame and Escape come here too.
    void reject() override;

private:
    bool onCreateInner();
    void addMessage(QBoxLayout *row);
    void addSelectors(QBoxLayout *column);
    void addChecks(QBoxLayout *column);
    void addButtons(QBoxLayout *row);
    void onButtonClicked(int id);
    void onSelectorClicked(int id);
    void onCheckToggled(int id, bool checked);

    QPointer<QButtonGroup> m_pButtonGroup; // the ordinary buttons; none where selector buttons take their place
    std::uint8_t m_checkMask = 0; // bit n: check box n is on
    bool m_hideMaximize = false;
};

#endif
