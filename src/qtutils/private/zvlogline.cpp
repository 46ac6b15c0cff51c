// SPDX-License-Identifier: MIT
#include "private/zvlogline.h"

#include "base/zvlog.h"

#include <cstdio>

void zvLogLine(int level, int line, const char *file, const char *function, const char *text)
{
    if (zeva_log_level() >= level + 1)
        return;
    constexpr int kMaxLength = 2044;
    char buffer[2048] = {};
    std::snprintf(buffer, kMaxLength + 1, "%s", text);
    zv_Log(level, line, file, function, buffer);
}
