// Timing and hashing of blocks.
#include "bench/bench_support.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <cstdio>
#include <cstring>

namespace bench {

namespace {

double percentile(std::vector<double>& sorted, double share) {
    return sorted[static_cast<std::size_t>(share * static_cast<double>(sorted.size() - 1))];
}

}  // namespace

void Hash::add(const float* samples, int count) {
    for (int i = 0; i < count; ++i) {
        std::uint32_t bits;
        std::memcpy(&bits, &samples[i], sizeof bits);
        value_ = (value_ ^ bits) * 1099511628211u;
    }
}

void timeBlocks(benchmark::State& state, const Render& render) {
    using Clock = std::chrono::steady_clock;
    std::array<float, kBlock> left{};
    std::array<float, kBlock> right{};
    Hash hash;
    for (int frame = 0; frame < kRate; frame += kBlock) {
        render(left.data(), right.data(), kBlock);
        hash.add(left.data(), kBlock);
        hash.add(right.data(), kBlock);
    }
    std::vector<double> seconds;
    seconds.reserve(1 << 20);
    for (auto _ : state) {
        const auto start = Clock::now();
        render(left.data(), right.data(), kBlock);
        const std::chrono::duration<double> took = Clock::now() - start;
        benchmark::DoNotOptimize(left.data());
        state.SetIterationTime(took.count());
        seconds.push_back(took.count());
    }
    std::sort(seconds.begin(), seconds.end());
    const double median = percentile(seconds, 0.5);
    state.counters["ns/sample"] = median / kBlock * 1e9;
    state.counters["realtime"] = kBlock / kRate / median;
    state.counters["p99/median"] = percentile(seconds, 0.99) / median;
    char text[32];
    std::snprintf(text, sizeof text, "hash %016llx", static_cast<unsigned long long>(hash.value()));
    state.SetLabel(text);
}

}  // namespace bench
