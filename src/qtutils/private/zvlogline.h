// SPDX-License-Identifier: MIT
#ifndef ZVLOGLINE_H
#define ZVLOGLINE_H

/// Writes a line of \a level (3 to 5) to the kernel's log, when the log level is below \a level + 1. \a text beyond
/// 2044 bytes is cut.
void zvLogLine(int level, int line, const char *file, const char *function, const char *text);

#endif
