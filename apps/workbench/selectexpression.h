// SPDX-License-Identifier: MIT
#ifndef SELECTEXPRESSION_H
#define SELECTEXPRESSION_H

#include "db/zvdbobjectid.h"

#include <QString>

#include <vector>

class ZvDbDatabase;

/// Entities of the space at hand that an expression names: "all", "none", "layer=NAME", "type=NAME" (the name of the
/// record in the file, such as LINE; case is ignored), or handles in hexadecimal digits, separated by commas or blanks.
/// False, with the reason, for an expression that is none, an unknown layer or an unknown handle.
bool evaluateSelectExpression(const ZvDbDatabase &database, const QString &expression, std::vector<ZvDbObjectId> &ids,
                              QString &error);

#endif
