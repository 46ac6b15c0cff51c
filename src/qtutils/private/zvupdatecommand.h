// SPDX-License-Identifier: MIT
#ifndef ZVUPDATECOMMAND_H
#define ZVUPDATECOMMAND_H

class ZvQtCommonUISvr;

/// The service "Dialog/Common" with the mailbox of the controls' requests. Null without the service, and for one of
/// another maker, which has no mailbox.
/// \throws ZvError_NotThatKindOfClass where another object than a dialog service has that name.
ZvQtCommonUISvr *zvUpdateMailbox();

/// Handler of the command "GLOBAL_UI_UPDATEDB": writes the pending update of the service "Dialog/Common". Nothing
/// without the service, and for a kind that no property has. The request stays where it is.
/// \throws ZvError_NotThatKindOfClass where another object than a dialog service has that name.
void zvWritePendingUpdate();

#endif
