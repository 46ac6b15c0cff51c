// SPDX-License-Identifier: MIT
#include "base/zvos.h"

#include <chrono>

std::uint64_t zvutTickCount()
{
    using namespace std::chrono;
    return std::uint64_t(duration_cast<milliseconds>(steady_clock::now().time_since_epoch()).count());
}
