#pragma once

#include <benchmark/benchmark.h>

namespace tessara::bench {

// Runs the benchmarks named on the command line (all by default) once the program's own set-up,
// such as its application object, is in place; returns the exit status.
inline int runBenchmarks(int& argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}

} // namespace tessara::bench
