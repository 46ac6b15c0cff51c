// SPDX-License-Identifier: MIT
#ifndef ZVCONFIG_H
#define ZVCONFIG_H

#include "base/zvarray.h"
#include "base/zvjson.h"

/// Node of the application's settings by path, such as "paths/templatePaths"; null when it is missing.
/// The settings are one property bag that the application fills (zv_runtime_settings).
ZV_EXPORT ZvJsonPtr zv_runtime_config(const ZvUtf8String &path);
/// The whole settings tree, for the application to fill. Never null.
ZV_EXPORT ZvJsonPtr zv_runtime_settings();

/// The paths in a settings node: a string, or an array of strings. None for null. Taken as they stand, with or without
/// a "/" at the end.
ZV_EXPORT void zvutEnumPaths(const ZvJsonPtr &node, ZvArray<ZvUtf8String> &paths);

#endif
