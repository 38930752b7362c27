// Runs the benchmarks. By default prints medians of five repetitions, aggregates only.
#include <cstring>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

int main(int argc, char** argv) {
    std::vector<std::string> options = {argv[0], "--benchmark_repetitions=5",
                                        "--benchmark_report_aggregates_only=true",
                                        "--benchmark_counters_tabular=true"};
    options.insert(options.end(), argv + 1, argv + argc);
    std::vector<char*> pointers;
    for (std::string& option : options) pointers.push_back(option.data());
    int count = static_cast<int>(pointers.size());
    benchmark::Initialize(&count, pointers.data());
    if (benchmark::ReportUnrecognizedArguments(count, pointers.data())) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
