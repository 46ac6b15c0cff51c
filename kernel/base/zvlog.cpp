// SPDX-License-Identifier: MIT
#include "base/zvlog.h"

#include <cstdio>
#include <cstdlib>

namespace {

constexpr int kLogNothing = 6;

int levelOfEnvironment()
{
    const char *text = std::getenv("ZEVA_LOG_LEVEL");
    return text ? std::atoi(text) : kLogNothing;
}

int &logLevel()
{
    static int level = levelOfEnvironment();
    return level;
}

void logToStderr(int level, int line, const char *file, const char *function, const char *text)
{
    std::fprintf(stderr, "[%d] %s:%d %s: %.2044s\n", level, file, line, function, text);
}

void assertToStderr(const char *text, const char *file, int line)
{
    std::fprintf(stderr, "assertion failed: %s (%s:%d)\n", text, file, line);
}

ZvLogHandler s_logHandler = logToStderr;
ZvAssertHandler s_assertHandler = assertToStderr;

}

int zeva_log_level()
{
    return logLevel();
}

void zeva_set_log_level(int level)
{
    logLevel() = level;
}

void zv_Log(int level, int line, const char *file, const char *function, const char *text)
{
    s_logHandler(level, line, file, function, text);
}

ZvLogHandler zvSetLogHandler(ZvLogHandler handler)
{
    const ZvLogHandler before = s_logHandler;
    s_logHandler = handler ? handler : logToStderr;
    return before;
}

void ZvAssert(const char *text, const char *file, int line)
{
    s_assertHandler(text, file, line);
}

ZvAssertHandler zvSetAssertHandler(ZvAssertHandler handler)
{
    const ZvAssertHandler before = s_assertHandler;
    s_assertHandler = handler ? handler : assertToStderr;
    return before;
}
