// SPDX-License-Identifier: MIT
#ifndef ZVUPDATECOMMAND_H
#define ZVUPDATECOMMAND_H

/// Handler of the command "GLOBAL_UI_UPDATEDB": writes the pending update of the service "Dialog/Common". Nothing
/// without the service, and for a kind that no property has.
/// \throws ZvError_NotThatKindOfClass where another object than a dialog service has that name.
void zvWritePendingUpdate();

#endif
