// State of the reverb's combs in lanes, and the arguments of their kernel.
#pragma once

#include <array>

#include "dsp/lanes/width.h"

namespace dsp {

struct alignas(kVectorBytes) CombLanes {
    static constexpr int kCount = 16;  // eight on the left, eight on the right

    std::array<float, kCount> filterStore{};
    std::array<float, kCount> offset{};  // the low-pass that the high-pass subtracts
    float damp1 = 0.0f;
    float damp2 = 1.0f;
    float feedback = 0.0f;
};

// `rows` holds the delayed samples of each comb; the kernel replaces them by the comb's next input.
// All rows and sums need room for whole vectors.
struct CombRun {
    CombLanes& combs;
    const float* in;
    float* const* rows;
    float* left;  // receives the sum of the combs
    float* right;
    int frames;
};

}  // namespace dsp
