#include <benchmark/benchmark.h>

#include <unistd.h>

#include <cstdio>
#include <fstream>
#include <string>

/// Runs the benchmarks with results on standard output, but without what the measured code prints
/// there.
int main(int argc, char** argv)
{
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) {
        return 1;
    }
    std::ofstream results("/dev/fd/" + std::to_string(dup(STDOUT_FILENO)), std::ios::app);
    if (!results || std::freopen("/dev/null", "w", stdout) == nullptr) {
        std::perror("standard output");
        return 1;
    }
    benchmark::ConsoleReporter reporter(benchmark::ConsoleReporter::OO_Tabular);
    reporter.SetOutputStream(&results);
    reporter.SetErrorStream(&results);
    benchmark::RunSpecifiedBenchmarks(&reporter);
    return 0;
}
