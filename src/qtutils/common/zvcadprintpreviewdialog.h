// SPDX-License-Identifier: MIT
#ifndef ZVCADPRINTPREVIEWDIALOG_H
#define ZVCADPRINTPREVIEWDIALOG_H

#include "zevaqt.h"

#include <memory>

/// "CADPreviewDialog" of the service "Dialog/Common": one sheet of paper over the whole screen, with a tool bar to
/// zoom, print and close. It draws the paper itself and has the caller's render object draw the sheet. It does not
/// print: the print action ends it with the code 6, and the caller prints.
///
/// Reads, once, in onInit():
///
/// | key            | type                | missing                                                              |
/// |----------------|---------------------|----------------------------------------------------------------------|
/// | "intHelper"    | ZvsiRenderObject    | an empty sheet                                                       |
/// | "paper"        | tree, below         | no sheet                                                             |
/// | "refDC"        | ZvsiReferenceDevice | no sheet unless "paper_unit" is 2                                    |
/// | "enable_print" | bool                | false: the print action is disabled                                  |
///
/// Under "paper" stand "paper_code", "name", "paper_unit" (2: lengths are in units of the device; else millimetres),
/// "paper_w", "paper_h", and the margins "paper_margin_left", "..._top", "..._right", "..._bottom". The render object's
/// canvas has its origin on the upper left corner of the printable area, x to the right and y down, in device units: a
/// millimetre has the device's dots per inch (its capability 88) / 25.4 of them.
class ZvCadPrintPreviewDialog : public ZvQtModeDialogImpl<ZvCadPrintPreviewDialog, QDialog>
{
    Q_OBJECT
public:
    ZvCadPrintPreviewDialog(ZvQtUIModeDialogBase *owner, QWidget *parent, Qt::WindowFlags flags);
    ~ZvCadPrintPreviewDialog() override;

    /// Shows the sheet, the whole of it. Always true.
    /// \throws ZvError_NotThatKindOfClass for an object that is no ZvRxObject.
    bool onInit(ZvJsonPtr params, ZvRxObjectPtr helper) override;

private:
    friend class ZvCadPrintPreviewDialogPrivate;
    const std::unique_ptr<class ZvCadPrintPreviewDialogPrivate> d;
};

#endif
