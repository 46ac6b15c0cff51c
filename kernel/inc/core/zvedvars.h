// SPDX-License-Identifier: MIT
#ifndef ZVEDVARS_H
#define ZVEDVARS_H

#include "base/zvstring.h"
#include "db/zvresbuf.h"

#include <vector>

// System variables: per application or per drawing. Names are compared without case. The drawing's own are kept in it
// and saved with it. Every change, by whatever route, raises sysVarChanged() of the editor's reactors.

/// ZvRes::kNormal on success, with type and value set; a text is newly made and freed by the caller. Fails for an
/// unknown name, and for a variable of the drawing while there is none.
/// "CMDACTIVE" is a set of bits (5003): 1 an ordinary command, 2 a transparent one, 4 a script, 8 a dialog.
ZV_EXPORT int zvedGetVar(const ZvString &name, ZvResBuf *value);
/// Fails for an unknown name, a read-only variable, a value of the wrong type or out of range. Numbers convert.
ZV_EXPORT int zvedSetVar(const ZvString &name, const ZvResBuf *value);

/// Makes a variable of the application unreadable, or readable again: a state that callers survive. Other names:
/// nothing.
ZV_EXPORT void zvedSetVarReadable(const ZvString &name, bool readable);
/// Told by a host that has a block editor: "BLOCKEDITOR" is 1 while it is open. Raises the change of the variable.
ZV_EXPORT void zvedSetBlockEditorOpen(bool open);

/// What SETVAR and programs may know of a variable.
struct ZV_EXPORT ZvEdVarInfo
{
    ZvString name; ///< Without "$".
    int type = 0; ///< A type of ZvRes.
    bool readOnly = false; ///< SETVAR and programs cannot change it.
    bool ofDrawing = false; ///< Kept in the drawing and saved with it.
};
/// All variables, sorted by name.
ZV_EXPORT void zvedVarList(std::vector<ZvEdVarInfo> &variables);
/// A variable as the command line shows it; empty when it cannot be read.
ZV_EXPORT ZvString zvedVarText(const ZvString &name);
/// Sets from the form that the command line takes.
ZV_EXPORT int zvedSetVarText(const ZvString &name, const ZvString &text);

/// Counts modal dialogs for bit 8 of "CMDACTIVE".
ZV_EXPORT void zvedDialogStarted();
/// To be called once for each zvedDialogStarted().
ZV_EXPORT void zvedDialogEnded();

#endif
