// SPDX-License-Identifier: MIT
#ifndef ZVCURRENTDRAWING_H
#define ZVCURRENTDRAWING_H

#include "core/zvapdocument.h"
#include "db/zvdbhostservice.h"

// Where the controls' drawing, its service and the command state are found.

/// Null without an open document.
ZvApDocument *zvCurrentDocument();
/// Drawing of the current document; null without a document, and for a document without a drawing.
ZvDbDatabase *zvCurrentDocumentDatabase();

/// Display states of the current document's editing context where it has one, else of the context of the time without
/// documents. Null without the core.
ZvEdDisplayContext *zvDisplayContext();

/// The pick-first selection of the current document; null where one of the parts on the way to it is.
ZvEdSelectionHolder *zvSelectionHolder();

/// The host database service.
/// \throws ZvError_NotThatKindOfClass where it is missing or something else.
ZvDbHostService *zvHostService();

/// Whether the sheet of a layout is worked on, and not the model.
bool zvIsPaperWorkedOn(const ZvDbDatabase &drawing);

/// The bits of "CMDACTIVE", 0 where it cannot be read.
int zvActiveCommandBits();
/// Some command runs: writes belong to it.
inline bool zvIsCommandActive()
{
    return zvActiveCommandBits() > 0;
}
/// An ordinary command runs: lists of values to pick stay closed.
inline bool zvIsOrdinaryCommandActive()
{
    return (zvActiveCommandBits() & 1) != 0;
}

#endif
