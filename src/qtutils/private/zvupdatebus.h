// SPDX-License-Identifier: MIT
#ifndef ZVUPDATEBUS_H
#define ZVUPDATEBUS_H

class CZvQtControlHelp;

/// Puts a control on the update bus if it is hooked; the last thing its constructor does for the bus. Nothing where the
/// host offers no bus.
/// \throws ZvError_NotThatKindOfClass where the bus's key holds what is no ZvRxObject.
void zvJoinUpdateBus(CZvQtControlHelp &control);

/// Takes a control off the bus if it is hooked: the first thing its destructor does. Unlike joining it throws nothing,
/// since it runs in destructors.
void zvLeaveUpdateBus(CZvQtControlHelp &control) noexcept;

#endif
