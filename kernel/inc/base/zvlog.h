// SPDX-License-Identifier: MIT
#ifndef ZVLOG_H
#define ZVLOG_H

#include "base/zvexport.h"

/// A line of level n is written when the log level is below n + 1. 6 (nothing) unless ZEVA_LOG_LEVEL says otherwise.
ZV_EXPORT int zeva_log_level();
/// 6 for nothing, 0 for everything.
ZV_EXPORT void zeva_set_log_level(int level);

/// Writes one line. \a text holds at most 2044 bytes of UTF-8. Callers test the level themselves.
ZV_EXPORT void zv_Log(int level, int line, const char *file, const char *function, const char *text);

/// Receives what zv_Log is given. Null restores the default, which writes to stderr.
typedef void (*ZvLogHandler)(int level, int line, const char *file, const char *function, const char *text);
/// Null restores the default. Returns the handler before.
ZV_EXPORT ZvLogHandler zvSetLogHandler(ZvLogHandler handler);

/// Reports a broken assumption and returns: callers go on and give a default.
ZV_EXPORT void ZvAssert(const char *text, const char *file, int line);

/// Receives what ZvAssert is given. Null restores the default, which writes to stderr. Returns the handler before.
typedef void (*ZvAssertHandler)(const char *text, const char *file, int line);
/// Null restores the default. Returns the handler before.
ZV_EXPORT ZvAssertHandler zvSetAssertHandler(ZvAssertHandler handler);

#endif
