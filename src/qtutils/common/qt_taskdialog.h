// SPDX-License-Identifier: MIT
#ifndef QT_TASKDIALOG_H
#define QT_TASKDIALOG_H

#include "zevaqt.h"

QT_BEGIN_NAMESPACE
class QButtonGroup;
class QHBoxLayout;
class QPushButton;
class QVBoxLayout;
QT_END_NAMESPACE

/// The richer sibling of the message box, "TaskDialog" of the service "Dialog/Common": a main message with further
/// texts below it, a column of wide command buttons, a check box, and a row of standard or custom buttons. The
/// parameter tree decides all of it, once, in onInit().
///
/// Some keys look like those of the message box and mean something else: "flag" is a bit set, "selBtnText" holds
/// objects, "selectedCheck" is a bool.
///
/// Reads "title", "msg", "content", "expandedInformation", "mainicon", "dlgtype", "contentFlag", "flag",
/// "focusFlagBtnId", "options", "selBtnText", "defaultBtnId", "checkboxText", "checkboxChecked", "btnText" and
/// "nDisabledButtonMask"; writes "ControlBtn" and "selectedCheck" into the same tree.
class ZvQtTaskDialog : public ZvQtModeDialogImpl<ZvQtTaskDialog, QDialog>
{
    Q_OBJECT
public:
    using ZvQtModeDialogImpl::ZvQtModeDialogImpl;

    /// \a params must not be null. Always true.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override;
    /// Answers with the last of the footer buttons. The window frame and Escape come here too.
    void reject() override;

private:
    void setUpWindow();
    void createTopBlock();
    void createTexts();
    void createCommandBtns();
    void createFooter();
    void createCheckBox(QVBoxLayout *column);
    void createFooterButtons(QVBoxLayout *column);
    void addStandardButtons(QHBoxLayout *row, int disabledMask);
    void addCustomButtons(QHBoxLayout *row, int disabledMask);
    QPushButton *addFooterButton(QHBoxLayout *row, const QString &text, int id);
    void onCommandClicked(int id);
    void onFooterClicked(int id);
    void onCheckStateChanged(int state);

    QButtonGroup *m_pGroupSelectors = nullptr; // the command buttons
    QButtonGroup *m_pGroupButtons = nullptr; // the footer buttons; null where there is no row of them
    QVBoxLayout *m_pMainLayout = nullptr;
    QVBoxLayout *m_pContentLayout = nullptr; // the column right of the icon
    QVBoxLayout *m_pFooterLayout = nullptr;
    QString m_title;
    QString m_message;
    QString m_content;
    QString m_expandedInformation;
    QString m_mainIcon; // a path, once the window is set up
    int m_dlgtype = -1;
    int m_contentFlag = -1;
    int m_flag = -1;
    int m_focusFlagBtnId = -1;
    int m_options = -1;
};

#endif
