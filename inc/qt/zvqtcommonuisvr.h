// SPDX-License-Identifier: MIT
#ifndef ZVQTCOMMONUISVR_H
#define ZVQTCOMMONUISVR_H

#include "base/zvcmcolor.h"
#include "base/zvexport.h"
#include "base/zvsmartptr.h"
#include "base/zvstring.h"
#include "core/zvui.h"

#include <cstdint>

/// A change asked for by a control and not yet written: one property of the selected entities, or one current value of
/// the drawing. What the two words hold depends on \a kind.
struct ZvUiPendingUpdate
{
    /// The property: 0 colour, 1 line weight, 2 line type, 3 layer, 4 material, 5 dimension style, 6 text style,
    /// 7 table style, 8 multileader style, 9 plot style.
    std::int32_t kind = 0;
    ZvCmColor color; ///< The colour, where \a kind is 0.
    std::int64_t firstWord = 0; ///< The line weight, in hundredths of a millimetre or below zero.
    std::uint64_t secondWord = 0; ///< The object id.
    ZvString name; ///< The record's name, used where the id is null.
};

/// The service "Dialog/Common": makes the common dialogs by name, and holds the one pending update that the command
/// "GLOBAL_UI_UPDATEDB" writes to the drawing. A newer request overwrites an older one.
///
/// Registered by the module's load message and cleared by its unload message. Dialogs do not depend on it once made.
class ZV_EXPORT ZvQtCommonUISvr : public ZvUiService
{
public:
    ZvQtCommonUISvr();
    ~ZvQtCommonUISvr() override;

    /// The dialog called \a name, whatever the case: "MessageBox", "FileDialogBox", "FileNavDialogBox",
    /// "CADPreviewDialog", "TaskDialog", "ColorDialog". The caller gets the only reference, and null for a name that no
    /// dialog has or that could not be made.
    ///
    /// \a parentHandle is the window the dialog stands before, a QWidget*; without one it is the application's main
    /// window, and without that the dialog is a top-level window. "CADPreviewDialog" always takes the main window;
    /// "ColorDialog" falls back to the system object's window.
    /// \throws ZvError_NotThatKindOfClass where what was made is no ZvUiDialogBase, a fault of the build.
    ZvUiDialogBasePtr createDialog(const ZvString &name, void *parentHandle) override;

    /// Puts a copy in place of the request that was there.
    void setPendingUpdate(const ZvUiPendingUpdate &update) { m_pendingUpdate = update; }
    /// In place; never null.
    ZvUiPendingUpdate *pendingUpdate() { return &m_pendingUpdate; }

private:
    ZvUiPendingUpdate m_pendingUpdate;
};

#endif
