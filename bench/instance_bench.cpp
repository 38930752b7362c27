// A further instance of the plug-in: the time to make one, and the memory it occupies.
#include <array>
#include <cstdio>
#include <memory>

#include "bench/bench_support.h"
#include "plugin/vst_synth.h"

namespace bench {
namespace {

constexpr int kInstances = 16;
constexpr double kPageBytes = 4096.0;

// Resident memory of this process, in bytes; Linux only.
double residentBytes() {
    long total = 0, resident = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (!file) return 0.0;
    if (std::fscanf(file, "%ld %ld", &total, &resident) != 2) resident = 0;
    std::fclose(file);
    return static_cast<double>(resident) * kPageBytes;
}

void create(benchmark::State& state) {
    const plugin::VstSynth first(nullptr);
    for (auto _ : state) {
        const auto made = std::make_unique<plugin::VstSynth>(nullptr);
        benchmark::DoNotOptimize(made.get());
    }
}

// Memory of an instance after a second of sound.
void occupy(benchmark::State& state) {
    const plugin::VstSynth first(nullptr);
    std::array<std::unique_ptr<plugin::VstSynth>, kInstances> made;
    std::array<float, kBlock> left, right;
    float* outputs[] = {left.data(), right.data()};
    const double before = residentBytes();
    for (auto _ : state) {
        for (auto& synth : made) {
            synth = std::make_unique<plugin::VstSynth>(nullptr);
            for (int frame = 0; frame < kRate; frame += kBlock) {
                synth->processReplacing(nullptr, outputs, kBlock);
            }
        }
    }
    state.counters["MB/instance"] = (residentBytes() - before) / kInstances / 1e6;
}

BENCHMARK(create)->Name("instance/create")->Unit(benchmark::kMicrosecond);
BENCHMARK(occupy)->Name("instance/memory")->Iterations(1);

}  // namespace
}  // namespace bench
