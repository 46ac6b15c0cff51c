// SPDX-License-Identifier: MIT
#ifndef CURRENTSELECTION_H
#define CURRENTSELECTION_H

#include "db/zvdbobjectid.h"

#include <QString>

#include <vector>

/// The selected entities of the current document; none without a document. Valid until the selection changes.
const std::vector<ZvDbObjectId> &selectedIds();
/// "1 entity", "12 entities".
QString entityCountText(int count);

#endif
