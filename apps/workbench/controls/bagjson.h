// SPDX-License-Identifier: MIT
#ifndef BAGJSON_H
#define BAGJSON_H

#include "base/zvjson.h"

class QJsonValue;

/// A property bag as JSON. What JSON does not have, such as a reference to an object, becomes null.
QJsonValue jsonOfBag(const ZvJsonPtr &bag);
/// The bag that such a value stands for; whole numbers are integers.
ZvJsonPtr bagOfJson(const QJsonValue &value);

#endif
