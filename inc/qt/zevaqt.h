// SPDX-License-Identifier: MIT
#ifndef ZEVAQT_H
#define ZEVAQT_H

#include "base/zverror.h"
#include "base/zvexport.h"
#include "base/zvjson.h"
#include "base/zvrxobject.h"
#include "base/zvsmartptr.h"
#include "base/zvstring.h"
#include "core/zvui.h"

#include <QDialog>
#include <QPointer>
#include <QWidget>

/// \file
/// The frame of a common dialog: what joins the kernel's abstract, counted dialog to a QDialog.
///
/// A dialog is two objects. The adapter (ZvQtModeDialog<T>) is what the caller holds; the concrete dialog T derives
/// from ZvQtModeDialogImpl<T, QDialog> and is what the user sees. The adapter owns the dialog. Callers do not make
/// either: they ask the service "Dialog/Common" for a dialog by name and then
///
/// 1. call onInit(params, helper), and give up when it returns false;
/// 2. call doModal(), which runs the dialog and returns its code;
/// 3. read the answers: the code, also under "result" of getResult(), and the dialog's own keys, which most dialogs
///    write into the very tree that they were given;
/// 4. drop the reference. Adapter and dialog die together.
///
/// A new dialog is a class like this, and a row in the service's table:
///
/// \code
/// class HatchDialog : public ZvQtModeDialogImpl<HatchDialog, QDialog>
/// {
///     Q_OBJECT
/// public:
///     HatchDialog(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags)
///         : ZvQtModeDialogImpl(owner, parent, flags) { }
///     bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override; // build the widgets from the parameters
///     bool exchangeData(bool save) override;                        // keep the values over a visit to the drawing
/// };
/// \endcode
///
/// A running dialog may vanish to let the user work in the drawing: beginEditorCommand() hides it, the work is done in
/// a nested event loop, and completeEditorCommand() or cancelEditorCommand(), called before control returns to the
/// dialog's own loop, brings it back or ends it.
///
/// Everything runs on the main thread.

/// Result codes under the key "result". Any other value is what a caller gave endDialog().
enum ZvQtDialogResult {
    kDialogUndecided = -1,
    kDialogAccepted = 1,
    kDialogCancelled = 2,
};

/// \a object as \a T without a reference.
/// \throws ZvError_NotThatKindOfClass where it is not one, also for null.
template <class T> T *zvqt_queryRequired(const ZvRxObject *object)
{
    T *result = zvrxCast<T>(object);
    if (!result)
        throw ZvError_NotThatKindOfClass(object ? object->isA() : nullptr, T::desc());
    return result;
}

/// Counting mixin of the adapters: the kernel's scheme, the count starts at 1.
template <class T, class Base = T> class ZvQtRxObjectImpl : public ZvRxObjectImpl<T, Base>
{
public:
    using ZvRxObjectImpl<T, Base>::ZvRxObjectImpl;
};

/// Base of the adapters: the protocol of a modal dialog over any QWidget. Runs it when it is a QDialog.
class ZV_EXPORT ZvQtUIModeDialogBase : public ZvUiModeDialogBase
{
public:
    ZvQtUIModeDialogBase();
    /// Deletes the dialog, then lets go of helper and trees.
    ~ZvQtUIModeDialogBase() override;
    ZvQtUIModeDialogBase(const ZvQtUIModeDialogBase &) = delete;
    ZvQtUIModeDialogBase &operator=(const ZvQtUIModeDialogBase &) = delete;

    // The protocol, in the kernel's order.

    /// Keeps both. Always true; a dialog that refuses its parameters overrides it.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override;
    /// Does nothing, true.
    bool freshAndActive(ZvJsonPtr params) override;
    /// Null here; the dialog in the derived classes.
    void *getDlg() override;
    /// The adapter's own tree with the key "result", which is missing until the dialog was run or ended. Never null.
    ZvJsonPtr getResult() override;
    /// Runs the dialog until it ends and returns "result". A code given to endDialog() stands; otherwise QDialog's
    /// accepted becomes 1, rejected 2, and any other value -1. Without a QDialog nothing is shown.
    int doModal() override;
    /// Writes "result" and closes the widget.
    void endDialog(int code) override;
    /// The user leaves for the drawing: exchangeData(true), hide().
    void beginEditorCommand() override;
    /// The user gives up in the drawing: the dialog ends by onCancel() without being seen again.
    void cancelEditorCommand() override;
    /// The user is done in the drawing. With \a restore the dialog comes back: show(), exchangeData(false), and
    /// doModal() runs it on; without, it ends by onOk() without being seen again.
    void completeEditorCommand(bool restore) override;
    /// Does nothing, true.
    bool exchangeData(bool save) override;
    /// Does nothing.
    void onFinalDeconstruct() override;
    /// Hides the widget if it is visible.
    void hide() override;
    /// Shows the widget if it is hidden.
    void show() override;
    /// endDialog(2).
    void onCancel() override;
    /// endDialog(1).
    void onOk() override;

protected:
    ZvJsonPtr m_pParams; ///< What onInit() was given, null until then.
    ZvRxObjectPtr m_pHelper; ///< What onInit() was given, null until then.
    ZvJsonPtr m_pResult; ///< The adapter's tree with the key "result"; never null.
    /// The dialog, owned whatever its Qt parent. Guarded, since the parent may take it along when it dies.
    QPointer<QWidget> m_pWidget;
    bool m_bReEnter = false; ///< doModal() has to run exec() once more.
};

/// Adapter of the concrete dialog \a T, a ZvQtModeDialogImpl<T, QDialog>.
template <class T> class ZvQtModeDialog : public ZvQtUIModeDialogBase
{
public:
    ZvQtModeDialog() = default;
    ~ZvQtModeDialog() override { deleteDialog(); }

    /// Keeps both and gives them to the dialog, whose answer it is. False without a dialog.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override
    {
        ZvQtUIModeDialogBase::onInit(params, helper);
        return m_pDialog && m_pDialog->onInit(params, helper);
    }
    /// The T; null before createDialog().
    void *getDlg() override { return m_pDialog.data(); }
    /// Passed on to the dialog. True whatever it says.
    bool exchangeData(bool save) override
    {
        if (m_pDialog)
            m_pDialog->exchangeData(save);
        return true;
    }
    /// Deletes the dialog early.
    void onFinalDeconstruct() override { deleteDialog(); }
    /// Hides the dialog, whether visible or not.
    void hide() override
    {
        if (m_pDialog)
            m_pDialog->hide();
    }
    /// Shows the dialog, whether hidden or not.
    void show() override
    {
        if (m_pDialog)
            m_pDialog->show();
    }

    /// Makes the dialog, names it (a null \a name leaves it without one), makes it modal and returns what its
    /// onCreate() says. With a dialog already made: true, and nothing happens.
    virtual bool createDialog(QWidget *parent, Qt::WindowFlags flags, const char *name)
    {
        if (m_pDialog)
            return true;
        m_pDialog = new T(this, parent, flags);
        m_pWidget = m_pDialog.data();
        if (name)
            m_pDialog->setName(name);
        m_pDialog->setModal(true);
        return m_pDialog->onCreate();
    }

private:
    void deleteDialog()
    {
        delete m_pDialog.data();
        m_pDialog.clear();
        m_pWidget.clear();
    }

    QPointer<T> m_pDialog; // the same object as m_pWidget, typed
};

/// What a component inside a dialog keeps to call back, without knowing the dialog: each operation goes to the one of
/// the same name there. Counted.
class ZV_EXPORT ZvUiDialogInvoker : public ZvRxObject
{
    ZVRX_DECLARE_MEMBERS(ZvUiDialogInvoker)
public:
    /// Ends the dialog with \a code; see ZvQtDialogResult.
    virtual void endDialog(int code) = 0;
    /// The user leaves the dialog for the drawing.
    virtual void beginEditorCommand() = 0;
    /// The user gave up in the drawing.
    virtual void cancelEditorCommand() = 0;
    /// The user is done in the drawing; with \a restore the dialog comes back.
    virtual void completeEditorCommand(bool restore) = 0;
    /// Keeps the dialog's values, or puts them back. False where the dialog is gone.
    virtual bool exchangeData(bool save) = 0;
    /// \a what and \a data mean what the dialog and its component agree on.
    virtual ZvJsonPtr notify(int what, ZvJsonPtr data) = 0;
};

/// Mixin of the concrete dialog \a T on top of \a Base, QDialog or a class derived from it.
template <class T, class Base = QDialog> class ZvQtModeDialogImpl : public Base
{
public:
    /// \a owner is the adapter, which outlives the dialog. No reference is taken: it owns the dialog.
    ZvQtModeDialogImpl(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags)
        : Base(parent, flags), m_pOwner(owner)
    {
    }
    ~ZvQtModeDialogImpl() override
    {
        // A component may keep the invoker longer than the dialog lives.
        if (m_pInvoker)
            static_cast<ZvInvoker *>(m_pInvoker.get())->m_dialog = nullptr;
    }

    /// The name that createDialog() was given, else empty.
    virtual ZvUtf8String name() { return m_name; }
    /// For the dialog to show what may have changed around it. Does nothing.
    virtual void refresh() { }
    /// Called by onInit() with the extra tree, null unless the dialog has put one there. Does nothing.
    virtual void setExtraData(ZvJsonPtr /*extra*/) { }
    /// A text by its id: \a id itself, or \a fallback where it is null.
    virtual ZvUtf8String text(const char *id, const char *fallback) { return ZvUtf8String(id ? id : fallback); }
    /// Made on the first call. Its calls have no effect once the dialog is gone.
    virtual ZvRxObjectPtr invoker()
    {
        if (!m_pInvoker)
            m_pInvoker = ZvRxObjectPtr::adopt(new ZvRxObjectImpl<ZvInvoker, ZvInvoker>(this));
        return ZvRxObjectPtr(zvqt_queryRequired<ZvRxObject>(m_pInvoker.get()));
    }
    /// The helper where it is a ZvUiHelper, else null.
    virtual ZvUiHelperPtr helper()
    {
        if (!m_pHelper || !m_pHelper->isKindOf(ZvUiHelper::desc()))
            return ZvUiHelperPtr();
        return ZvUiHelperPtr(zvqt_queryRequired<ZvUiHelper>(m_pHelper.get()));
    }
    /// Ends the dialog with \a code, by its adapter.
    virtual void endDialog(int code) { m_pOwner->endDialog(code); }
    /// Keeps both, calls setExtraData(), returns true. False from an override: the dialog must not be run.
    virtual bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper)
    {
        m_pParams = params;
        m_pHelper = helper;
        setExtraData(m_pExtra);
        return true;
    }
    /// Called once by createDialog(). False: the dialog could not be made.
    virtual bool onCreate() { return true; }
    /// Hides the dialog for a visit to the drawing; see ZvQtUIModeDialogBase.
    virtual void beginEditorCommand() { m_pOwner->beginEditorCommand(); }
    /// Ends the dialog by its onCancel(), still hidden.
    virtual void cancelEditorCommand() { m_pOwner->cancelEditorCommand(); }
    /// Comes back from the drawing, or without \a restore ends the dialog by its onOk().
    virtual void completeEditorCommand(bool restore) { m_pOwner->completeEditorCommand(restore); }
    /// Saves the controls' values before a visit to the drawing, puts them back after it.
    virtual bool exchangeData(bool /*save*/) { return true; }
    /// Told by a component through the invoker. Gives null.
    virtual ZvJsonPtr notify(int /*what*/, ZvJsonPtr /*data*/) { return ZvJsonPtr(); }

    /// What name() gives; createDialog() sets it.
    void setName(const ZvUtf8String &name) { m_name = name; }

protected:
    /// The adapter. Never null; it outlives the dialog.
    ZvQtUIModeDialogBase *owner() const { return m_pOwner; }
    /// The caller's tree: a dialog reads its input here and writes its answers back. Null before onInit().
    const ZvJsonPtr &params() const { return m_pParams; }

private:
    class ZvInvoker : public ZvUiDialogInvoker
    {
    public:
        explicit ZvInvoker(ZvQtModeDialogImpl *dialog) : m_dialog(dialog) { }
        void endDialog(int code) override
        {
            if (m_dialog)
                m_dialog->endDialog(code);
        }
        void beginEditorCommand() override
        {
            if (m_dialog)
                m_dialog->beginEditorCommand();
        }
        void cancelEditorCommand() override
        {
            if (m_dialog)
                m_dialog->cancelEditorCommand();
        }
        void completeEditorCommand(bool restore) override
        {
            if (m_dialog)
                m_dialog->completeEditorCommand(restore);
        }
        bool exchangeData(bool save) override { return m_dialog && m_dialog->exchangeData(save); }
        ZvJsonPtr notify(int what, ZvJsonPtr data) override
        {
            return m_dialog ? m_dialog->notify(what, data) : ZvJsonPtr();
        }

        ZvQtModeDialogImpl *m_dialog; // not owned; cleared by the dialog's destructor
    };

    ZvQtUIModeDialogBase *m_pOwner; // not owned
    ZvUtf8String m_name;
    ZvJsonPtr m_pExtra; // nothing in the library fills it
    ZvRxObjectPtr m_pInvoker;
    ZvRxObjectPtr m_pHelper;
    ZvJsonPtr m_pParams;
};

#endif
