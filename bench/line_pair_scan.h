// SPDX-License-Identifier: MIT
#ifndef LINE_PAIR_SCAN_H
#define LINE_PAIR_SCAN_H

#include <cstddef>
#include <cstring>

/// The baseline of reading a text drawing: pairs of lines, the first of each a number. Returns something that depends on
/// all of it.
inline std::size_t scanLinePairs(const char *bytes, std::size_t size)
{
    const char *p = bytes;
    const char *const end = bytes + size;
    std::size_t sum = 0;
    while (p < end) {
        const char *const codeEnd = static_cast<const char *>(std::memchr(p, '\n', std::size_t(end - p)));
        if (!codeEnd)
            break;
        int code = 0;
        for (; p < codeEnd; ++p) {
            if (*p >= '0' && *p <= '9')
                code = code * 10 + (*p - '0');
        }
        const char *const value = codeEnd + 1;
        const char *const valueEnd = static_cast<const char *>(std::memchr(value, '\n', std::size_t(end - value)));
        if (!valueEnd)
            break;
        sum += std::size_t(code) + std::size_t(valueEnd - value);
        p = valueEnd + 1;
    }
    return sum;
}

#endif
