// SPDX-License-Identifier: MIT
#ifndef TIMING_H
#define TIMING_H

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <ctime>
#include <vector>

// What benchmarks share that time a baseline and our code themselves.

/// By the clock: for what is over long before the system gives the processor to somebody else.
template <class Work> double secondsOf(Work work)
{
    const auto start = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
}

/// The processor's time for it: other programs do not count, however long it takes.
template <class Work> double processorSecondsOf(Work work)
{
    const auto now = [] {
        timespec time{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
        return double(time.tv_sec) + double(time.tv_nsec) * 1e-9;
    };
    const double start = now();
    work();
    return now() - start;
}

/// Of an odd number of timings: one that was interrupted does not count.
template <class TimeOnce> double medianOf(int count, TimeOnce timeOnce)
{
    std::vector<double> times;
    for (int i = 0; i < count; ++i)
        times.push_back(timeOnce());
    std::nth_element(times.begin(), times.begin() + count / 2, times.end());
    return times[std::size_t(count / 2)];
}

#endif
