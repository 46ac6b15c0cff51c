// SPDX-License-Identifier: MIT
#ifndef TIMING_H
#define TIMING_H

#include <chrono>

template<class Work>
double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

#endif
