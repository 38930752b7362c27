// Shared by all benchmarks: times block by block and hashes the output.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include <benchmark/benchmark.h>

namespace bench {

constexpr int kBlock = 64;  // frames; one segment of the engine
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

// Times blocks of kBlock frames. Reports ns per sample, the realtime factor, and the 99th
// percentile of the block time over its median. The hash covers a first second rendered before the
// timing.
void timeBlocks(benchmark::State& state, const Render& render);

}  // namespace bench
