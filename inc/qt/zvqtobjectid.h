// SPDX-License-Identifier: MIT
#ifndef ZVQTOBJECTID_H
#define ZVQTOBJECTID_H

#include "db/zvdbobjectid.h"

#include <QMetaType>

/// \file
/// Ids of drawing objects as values of Qt's meta type system, under the name "ZvDbObjectId": what rows of the controls
/// carry.

Q_DECLARE_METATYPE(ZvDbObjectId)

#endif
