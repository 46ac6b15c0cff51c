// SPDX-License-Identifier: MIT
#ifndef WITHMODULE_H
#define WITHMODULE_H

#include "zvqtentrypoint.h"

#include "core/zvsystem.h"

#include <benchmark/benchmark.h>

/// Runs the benchmarks with the system started and the library loaded as an application module.
inline int runBenchmarksWithModule(int argc, char *argv[])
{
    CHcSystem::start();
    zvrxEntryPoint(kZvRxLoadModule);
    benchmark::Initialize(&argc, argv);
    benchmark::RunSpecifiedBenchmarks();
    zvrxEntryPoint(kZvRxUnloadModule);
    CHcSystem::stop();
    return 0;
}

#endif
