// A further instance of the instrument: creation time and memory.
#include <array>
#include <cstdio>
#include <memory>

#include "bench/bench_support.h"
#include "instrument/instrument.h"

namespace bench {
namespace {

constexpr int kInstances = 16;
constexpr double kPageBytes = 4096.0;

// Resident memory of this process, in bytes. Linux only.
double residentBytes() {
    long total = 0, resident = 0;
    std::FILE* const file = std::fopen("/proc/self/statm", "r");
    if (!file) return 0.0;
    if (std::fscanf(file, "%ld %ld", &total, &resident) != 2) resident = 0;
    std::fclose(file);
    return static_cast<double>(resident) * kPageBytes;
}

std::unique_ptr<instrument::Instrument> makeInstrument() {
    static instrument::Host host;
    auto made = std::make_unique<instrument::Instrument>(host);
    made->start(kRate);
    return made;
}

void create(benchmark::State& state) {
    const auto first = makeInstrument();
    for (auto _ : state) {
        const auto made = makeInstrument();
        benchmark::DoNotOptimize(made.get());
    }
}

// Memory of an instance after a second of sound.
void occupy(benchmark::State& state) {
    const auto first = makeInstrument();
    std::array<std::unique_ptr<instrument::Instrument>, kInstances> made;
    std::array<float, kBlock> left, right;
    const double before = residentBytes();
    for (auto _ : state) {
        for (auto& instrument : made) {
            instrument = makeInstrument();
            for (int frame = 0; frame < kRate; frame += kBlock) {
                instrument->render(left.data(), right.data(), kBlock);
            }
        }
    }
    state.counters["MB/instance"] = (residentBytes() - before) / kInstances / 1e6;
}

BENCHMARK(create)->Name("instance/create")->Unit(benchmark::kMicrosecond);
BENCHMARK(occupy)->Name("instance/memory")->Iterations(1);

}  // namespace
}  // namespace bench
