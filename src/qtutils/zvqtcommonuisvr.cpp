// SPDX-License-Identifier: MIT
#include "zvqtcommonuisvr.h"

#include "common/qt_filedialog.h"
#include "common/qt_messagebox.h"
#include "common/qt_taskdialog.h"
#include "common/zvcadprintpreviewdialog.h"
#include "private/zvdialogparent.h"
#include "zevaqt.h"
#include "zvcolordialog.h"

namespace {

/// Makes a dialog with its adapter; null on failure. \a name is null for a dialog that has none.
typedef ZvRxObjectPtr (*DialogMaker)(QWidget *parent, const char *name);

template <class T> ZvRxObjectPtr makeModeDialog(QWidget *parent, const char *name)
{
    typedef ZvQtRxObjectImpl<ZvQtModeDialog<T>, ZvQtModeDialog<T>> Adapter;
    const ZvSmartPtr<Adapter> adapter = ZvSmartPtr<Adapter>::adopt(new Adapter());
    if (!adapter->createDialog(parent, Qt::WindowFlags(), name))
        return ZvRxObjectPtr();
    return adapter;
}

/// The colour dialog has no creation hook, and becomes modal when it is run.
ZvRxObjectPtr makeColorDialog(QWidget *parent, const char *)
{
    typedef ZvQtRxObjectImpl<ZvQtColorDialog> Adapter;
    return ZvRxObjectPtr::adopt(new Adapter(parent));
}

ZvRxObjectPtr makeFileDialog(QWidget *parent, const char *)
{
    return zvqt_makeFileDialog(parent, Qt::WindowFlags());
}

struct DialogRow
{
    const wchar_t *serviceName;
    ZvDialogParent parent;
    const char *dialogName;
    DialogMaker make;
};

constexpr DialogRow kDialogs[] = {
    {L"MessageBox", ZvDialogParent::kGiven, nullptr, makeModeDialog<ZvQtMessageBox>},
    {L"FileDialogBox", ZvDialogParent::kGiven, nullptr, makeFileDialog},
    {L"FileNavDialogBox", ZvDialogParent::kGiven, nullptr, makeFileDialog},
    {L"CADPreviewDialog", ZvDialogParent::kMainWindow, "CADPreviewDialog",
     makeModeDialog<ZvCadPrintPreviewDialog>},
    {L"TaskDialog", ZvDialogParent::kGiven, nullptr, makeModeDialog<ZvQtTaskDialog>},
    {L"ColorDialog", ZvDialogParent::kGivenOrSystem, nullptr, makeColorDialog},
};

const DialogRow *findDialog(const ZvString &name)
{
    for (const DialogRow &row : kDialogs) {
        if (name.compareNoCase(row.serviceName) == 0)
            return &row;
    }
    return nullptr;
}

} // namespace

ZvQtCommonUISvr::ZvQtCommonUISvr() = default;

ZvQtCommonUISvr::~ZvQtCommonUISvr() = default;

ZvUiDialogBasePtr ZvQtCommonUISvr::createDialog(const ZvString &name, void *parentHandle)
{
    const DialogRow *row = findDialog(name);
    if (!row)
        return ZvUiDialogBasePtr();
    const ZvRxObjectPtr dialog = row->make(zvDialogParent(row->parent, parentHandle), row->dialogName);
    if (!dialog)
        return ZvUiDialogBasePtr();
    return ZvUiDialogBasePtr(zvqt_queryRequired<ZvUiDialogBase>(dialog));
}
