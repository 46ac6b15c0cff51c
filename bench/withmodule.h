// SPDX-License-Identifier: MIT
#ifndef WITHMODULE_H
#define WITHMODULE_H

#include "zvqtentrypoint.h"

#include "core/zvsystem.h"

#include <benchmark/benchmark.h>

/// Runs the benchmarks with the system started and the library loaded as an application module; \a setUp runs in it
/// first.
template <class SetUp> int runBenchmarksWithModule(int argc, char *argv[], SetUp setUp)
{
    CHcSystem::start();
    zvrxEntryPoint(kZvRxLoadModule);
    setUp();
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    zvrxEntryPoint(kZvRxUnloadModule);
    CHcSystem::stop();
    return 0;
}
inline int runBenchmarksWithModule(int argc, char *argv[])
{
    return runBenchmarksWithModule(argc, argv, [] {});
}

#endif
