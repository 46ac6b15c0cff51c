// SPDX-License-Identifier: MIT
#ifndef ZVUI_H
#define ZVUI_H

#include "base/zvjson.h"
#include "base/zvregistry.h"
#include "base/zvrxobject.h"
#include "base/zvsmartptr.h"

/// Base of all dialogs. With ZvUiModeDialogBase it spans fifteen operations; their order is binding.
class ZV_EXPORT ZvUiDialogBase : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvUiDialogBase)
public:
    /// Gives the dialog its parameters. False: it must not be run.
    virtual bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) = 0;
    /// New parameters for a dialog that lives.
    virtual bool freshAndActive(ZvJsonPtr params) = 0;
    /// The toolkit's dialog; may be null.
    virtual void *getDlg() = 0;
    /// The tree with the key "result".
    virtual ZvJsonPtr getResult() = 0;
    /// Runs the dialog; the code: 1 accepted, 2 cancelled, -1 undecided, or any that endDialog() was given.
    virtual int doModal() = 0;
    /// Ends the dialog; doModal() returns \a code.
    virtual void endDialog(int code) = 0;
    /// The user leaves the dialog for the drawing, gives up, or comes back.
    virtual void beginEditorCommand() = 0;
    /// The user gave up in the drawing.
    virtual void cancelEditorCommand() = 0;
    /// The user is done in the drawing; with \a restore the dialog comes back.
    virtual void completeEditorCommand(bool restore) = 0;
    /// Saves the controls' values, or puts them back.
    virtual bool exchangeData(bool save) = 0;
    /// Called before the dialog dies.
    virtual void onFinalDeconstruct() = 0;
    /// Hides the dialog.
    virtual void hide() = 0;
    /// Shows the dialog.
    virtual void show() = 0;
    /// What the user's "cancel" does.
    virtual void onCancel() = 0;
    /// What the user's "OK" does.
    virtual void onOk() = 0;
};
/// Counted pointer to a dialog.
typedef ZvSmartPtr<ZvUiDialogBase> ZvUiDialogBasePtr;

/// Base of the modal dialogs. The caller's last release deletes the dialog.
class ZV_EXPORT ZvUiModeDialogBase : public ZvUiDialogBase
{
    ZVRX_DECLARE_MEMBERS(ZvUiModeDialogBase)
};

/// Makes dialogs by name. Registered under a name such as "Dialog/Common".
class ZV_EXPORT ZvUiService : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvUiService)
public:
    /// The caller gets the only reference; null for an unknown name or a failed creation. \a parent is a window handle.
    virtual ZvUiDialogBasePtr createDialog(const ZvString &name, void *parent) = 0;
};

/// What a caller may hand a dialog to be told of its work.
class ZV_EXPORT ZvUiHelper : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvUiHelper)
public:
    /// The default does nothing and gives null.
    virtual ZvJsonPtr onNotify(ZvJsonPtr params);
};
/// Counted pointer to a helper.
typedef ZvSmartPtr<ZvUiHelper> ZvUiHelperPtr;

/// The toolkit behind the kernel's calls. Without one there is no main window and cursors are not set.
class ZV_EXPORT ZvUiHost
{
public:
    virtual ~ZvUiHost();
    /// A window handle (a QWidget*); may be null.
    virtual void *mainWindow() = 0;
    /// Sets the cursor of a window; the cursor before. 256 is the plain arrow.
    virtual int setCursor(void *window, int cursor) = 0;
};
/// Not owned. Null takes it away.
ZV_EXPORT void zvuiSetHost(ZvUiHost *host);

/// Handle of the application's main window, null when there is none.
ZV_EXPORT void *zvuiMainWindow();
/// The cursor before; \a cursor itself without a host.
ZV_EXPORT int zvuiSetCursor(void *window, int cursor);

/// Runs a dialog: service, factory, onInit, doModal. Gives the result tree with the key "result"; an empty tree if no
/// dialog could be made or it refused its parameters. The dialog's other answers stand in \a params.
ZV_EXPORT ZvJsonPtr zvuiShowModelDialogEx(const ZvString &serviceName, const ZvString &dialogName, ZvJsonPtr params,
                                          ZvRxObjectPtr helper, void *parent);
/// Runs "MessageBox" of "Dialog/Common" and gives the PARAMETER tree, where the answer "ControlBtn" is written.
/// \a params may be null. Without service or dialog the tree has no "ControlBtn".
ZV_EXPORT ZvJsonPtr zvuiMessageBoxEx(const ZvString &title, const ZvString &message, ZvJsonPtr params, int flag,
                                     int contentFlag, int dlgtype);
/// Flags: 4 asks yes or no (6 is yes, 7 no), otherwise OK alone (1); 64 shows the information icon. Without service: 0.
ZV_EXPORT int ZvUiMessageBox(const ZvString &text, const ZvString &caption, unsigned flags);
/// Answers message boxes in place of a person: called before each, it returns the button, or -1 to show the box.
typedef int (*ZvUiMessageBoxHook)(const ZvString &text, const ZvString &caption, unsigned flags);
/// Null takes it away. Returns the hook before.
ZV_EXPORT ZvUiMessageBoxHook zvuiSetMessageBoxHook(ZvUiMessageBoxHook hook);

#endif
