// State of the reverb's combs side by side, and what their lane kernel is asked for.
#pragma once

#include <array>

namespace dsp {

struct alignas(32) CombLanes {
    static constexpr int kCount = 16;  // eight on the left, eight on the right

    std::array<float, kCount> filterStore{};
    std::array<float, kCount> offset{};  // what the high-pass takes off
    float damp1 = 0.0f;
    float damp2 = 1.0f;
    float feedback = 0.0f;
};

// One row of delayed samples a comb, each replaced by what enters the comb. All rows and sums have
// room for whole vectors: up to 7 frames more.
struct CombRun {
    CombLanes& combs;
    const float* in;
    float* const* rows;
    float* left;  // sums of what the combs give
    float* right;
    int frames;
};

}  // namespace dsp
