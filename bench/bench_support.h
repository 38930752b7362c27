// What all benchmarks share: blocks that are timed one by one, and a hash of what they give out.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

constexpr int kBlock = 64;
constexpr double kRate = 44100.0;

// FNV-1a over the bits of the samples.
class Hash {
  public:
    void add(const float* samples, int count);
    std::uint64_t value() const { return value_; }

  private:
    std::uint64_t value_ = 14695981039346656037u;
};

// Renders `frames` samples to both buffers.
using Render = std::function<void(float* left, float* right, int frames)>;

// Times blocks of kBlock and reports ns a sample, the realtime factor, and the 99th percentile of
// a block's time over its median. The hash covers the first second, rendered before.
void timeBlocks(benchmark::State& state, const Render& render);

}  // namespace bench
