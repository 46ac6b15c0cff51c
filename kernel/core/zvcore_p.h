// SPDX-License-Identifier: MIT
#ifndef ZVCORE_P_H
#define ZVCORE_P_H

#include "core/zvapdocument.h"
#include "core/zveditor.h"

// What the units of the core share and nobody else sees.

/// Database of the current document; null without one.
ZvDbDatabase *zvcoreCurrentDatabase();

/// Entities of the space at hand that a user could pick, in drawing order.
void zvcoreSelectableEntities(std::vector<ZvDbObjectId> &ids);
/// Of them, those on a layer, by name without case.
void zvcoreEntitiesOnLayer(const ZvString &layer, std::vector<ZvDbObjectId> &ids);
/// Of them, those in a window of the view.
void zvcoreEntitiesInWindow(const ZvGePoint3d &first, const ZvGePoint3d &second, bool crossing, std::vector<ZvDbObjectId> &ids);

/// Adds the commands of kernel/core/commands to the stack.
void zvcoreAddBuiltInCommands(ZvEdCommandStack &stack);

/// Cancels a command that waits for input, because its document loses its place. A command that opens or closes a
/// document itself does not wait: it goes on, and what is queued behind it stays.
void zvcoreCancelWaitingCommand();
/// Forgets what is queued.
void zvcoreDropQueue();
/// Bits of "CMDACTIVE".
int zvcoreCommandActive();
/// True while more input stands behind the last on the same line or macro.
bool zvcoreLineHasMore();

#endif
