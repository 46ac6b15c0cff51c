// SPDX-License-Identifier: MIT
#ifndef ZVBAGREADER_H
#define ZVBAGREADER_H

#include "base/zvjson.h"
#include "db/zvdbobjectid.h"

#include <QString>
#include <QStringList>
#include <QVector>

// Readers of the property bag. Each takes a node, a key and what to give where the node is null, the member is missing,
// or the member is the null value.

int zvBagInt(const ZvJsonPtr &node, const char *key, int fallback);
long long zvBagLong(const ZvJsonPtr &node, const char *key, long long fallback);
bool zvBagBool(const ZvJsonPtr &node, const char *key, bool fallback);
double zvBagDouble(const ZvJsonPtr &node, const char *key, double fallback);
/// Wide and UTF-8 strings alike.
QString zvBagString(const ZvJsonPtr &node, const char *key, const QString &fallback = QString());
/// A sub-tree; null is the fallback.
ZvJsonPtr zvBagTree(const ZvJsonPtr &node, const char *key);
/// The texts of an array, in order; a null element is an empty text. A missing array is an empty one.
QStringList zvBagTexts(const ZvJsonPtr &node, const char *key);
/// The elements of an array, in order; a null element is a null pointer. A missing array is an empty one.
QVector<ZvJsonPtr> zvBagElements(const ZvJsonPtr &node, const char *key);
/// The null id is the fallback.
ZvDbObjectId zvBagId(const ZvJsonPtr &node, const char *key);
bool zvBagHasKey(const ZvJsonPtr &node, const char *key);

#endif
