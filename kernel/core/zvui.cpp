// SPDX-License-Identifier: MIT
#include "core/zvui.h"

#include "core/zvedvars.h"

ZVRX_DEFINE_MEMBERS(ZvUiDialogBase, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvUiModeDialogBase, ZvUiDialogBase)
ZVRX_DEFINE_MEMBERS(ZvUiService, ZvRxObject)
ZVRX_DEFINE_MEMBERS(ZvUiHelper, ZvRxObject)

namespace {

ZvUiHost *s_host = nullptr;
ZvUiMessageBoxHook s_messageBoxHook = nullptr;

/// Counts a running dialog for "CMDACTIVE".
struct DialogGuard
{
    DialogGuard() { zvedDialogStarted(); }
    ~DialogGuard() { zvedDialogEnded(); }
};

}

ZvJsonPtr ZvUiHelper::onNotify(ZvJsonPtr)
{
    return nullptr;
}

ZvUiHost::~ZvUiHost() = default;

void zvuiSetHost(ZvUiHost *host)
{
    s_host = host;
}

void *zvuiMainWindow()
{
    return s_host ? s_host->mainWindow() : nullptr;
}

int zvuiSetCursor(void *window, int cursor)
{
    return s_host ? s_host->setCursor(window, cursor) : cursor;
}

ZvJsonPtr zvuiShowModelDialogEx(const ZvString &serviceName, const ZvString &dialogName, ZvJsonPtr params,
                                ZvRxObjectPtr helper, void *parent)
{
    const ZvJsonPtr nothing = ElementValue::createObject(IElementValueBase::kObject);
    auto *service = zvrxCast<ZvUiService>(grUISvr(serviceName));
    if (!service)
        return nothing;
    const ZvUiDialogBasePtr dialog = service->createDialog(dialogName, parent);
    if (dialog.isNull() || !dialog->onInit(params, helper))
        return nothing;
    const DialogGuard running;
    dialog->doModal();
    return dialog->getResult();
}

ZvJsonPtr zvuiMessageBoxEx(const ZvString &title, const ZvString &message, ZvJsonPtr params, int flag, int contentFlag,
                           int dlgtype)
{
    if (params.isNull())
        params = ElementValue::createObject(IElementValueBase::kObject);
    params->SetDataSW("title", title);
    params->SetDataSW("msg", message);
    params->SetDataI("flag", flag);
    params->SetDataI("contentFlag", contentFlag);
    params->SetDataI("dlgtype", dlgtype);
    zvuiShowModelDialogEx("Dialog/Common", "MessageBox", params, nullptr, nullptr);
    return params;
}

int ZvUiMessageBox(const ZvString &text, const ZvString &caption, unsigned flags)
{
    if (s_messageBoxHook) {
        const int answer = s_messageBoxHook(text, caption, flags);
        if (answer >= 0)
            return answer;
    }
    // Two tables of codes meet here: 64 is "with the information icon" in these flags, 48 that icon in the dialog's.
    constexpr unsigned kYesNo = 4;
    constexpr unsigned kInformation = 64;
    const bool asks = (flags & kYesNo) != 0;
    const int icon = (flags & kInformation) == 0 ? 0 : asks ? 32 : 48;
    constexpr int kMessageRow = 1;
    const ZvJsonPtr answers = zvuiMessageBoxEx(caption, text, nullptr, asks ? 4 : 0, kMessageRow, icon);
    int button = -1;
    answers->GetDataI("ControlBtn", button);
    if (button < 0)
        return 0;
    return asks ? button : 1;
}

ZvUiMessageBoxHook zvuiSetMessageBoxHook(ZvUiMessageBoxHook hook)
{
    const ZvUiMessageBoxHook before = s_messageBoxHook;
    s_messageBoxHook = hook;
    return before;
}
