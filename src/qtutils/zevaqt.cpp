// SPDX-License-Identifier: MIT
#include "zevaqt.h"

#include "private/zvbagreader.h"

namespace {

constexpr int kObjectNode = 2;
constexpr char kResultKey[] = "result";
constexpr int kModalCursor = 256; // what it looks like is the kernel's business

} // namespace

ZVRX_DEFINE_MEMBERS(ZvUiDialogInvoker, ZvRxObject)

ZvQtUIModeDialogBase::ZvQtUIModeDialogBase() : m_pResult(ElementValue::createObject(kObjectNode)) { }

ZvQtUIModeDialogBase::~ZvQtUIModeDialogBase()
{
    delete m_pWidget.data();
}

bool ZvQtUIModeDialogBase::onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
{
    m_pParams = params;
    m_pHelper = helper;
    return true;
}

bool ZvQtUIModeDialogBase::freshAndActive(ZvJsonPtr)
{
    return true;
}

void *ZvQtUIModeDialogBase::getDlg()
{
    return nullptr;
}

ZvJsonPtr ZvQtUIModeDialogBase::getResult()
{
    return m_pResult;
}

int ZvQtUIModeDialogBase::doModal()
{
    if (const QPointer<QDialog> dialog = qobject_cast<QDialog *>(m_pWidget.data())) {
        const int cursor = zvuiSetCursor(m_pWidget.data(), kModalCursor);
        m_pResult->setInteger(kResultKey, kDialogUndecided, 0);

        int code = dialog->exec();
        while (m_bReEnter && dialog) {
            m_bReEnter = false;
            code = dialog->exec();
        }

        if (zvBagInt(m_pResult, kResultKey, kDialogUndecided) == kDialogUndecided) {
            if (code == QDialog::Rejected)
                m_pResult->setInteger(kResultKey, kDialogCancelled, 0);
            else if (code == QDialog::Accepted)
                m_pResult->setInteger(kResultKey, kDialogAccepted, 0);
        }
        if (m_pWidget)
            zvuiSetCursor(m_pWidget.data(), cursor);
    }
    return zvBagInt(m_pResult, kResultKey, kDialogUndecided);
}

void ZvQtUIModeDialogBase::endDialog(int code)
{
    m_pResult->setInteger(kResultKey, code, 0);
    if (m_pWidget)
        m_pWidget->close();
}

void ZvQtUIModeDialogBase::beginEditorCommand()
{
    exchangeData(true);
    hide(); // which ends the running exec()
}

void ZvQtUIModeDialogBase::cancelEditorCommand()
{
    m_bReEnter = false;
    onCancel();
}

void ZvQtUIModeDialogBase::completeEditorCommand(bool restore)
{
    if (restore) {
        show();
        exchangeData(false);
        m_bReEnter = true;
    } else {
        onOk();
        m_bReEnter = false;
    }
}

bool ZvQtUIModeDialogBase::exchangeData(bool)
{
    return true;
}

void ZvQtUIModeDialogBase::onFinalDeconstruct() { }

void ZvQtUIModeDialogBase::hide()
{
    if (m_pWidget && m_pWidget->isVisible())
        m_pWidget->hide();
}

void ZvQtUIModeDialogBase::show()
{
    if (m_pWidget && m_pWidget->isHidden())
        m_pWidget->show();
}

void ZvQtUIModeDialogBase::onCancel()
{
    endDialog(kDialogCancelled);
}

void ZvQtUIModeDialogBase::onOk()
{
    endDialog(kDialogAccepted);
}
