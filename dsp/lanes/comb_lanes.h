// State of the reverb's combs in lanes, and the arguments of their kernel.
#pragma once

#include <array>

#include "dsp/lanes/width.h"
#include "dsp/one_pole.h"
#include "dsp/peak_follower.h"

namespace dsp {

struct alignas(kVectorBytes) CombLanes {
    static constexpr int kCount = 16;  // eight on the left, eight on the right

    std::array<float, kCount> filterStore{};
    std::array<float, kCount> offset{};  // the low-pass that the high-pass subtracts
    float damp1 = 0.0f;
    float damp2 = 1.0f;
    float feedback = 0.0f;
};

// Work that has nothing to do with the combs, but waits for its own previous sample as they do:
// each filters its row in place.
struct BesideCombs {
    OnePole& lowPass;
    float* lowPassed;
    PeakFollower& follower;
    double* followed;
};

// `rows` holds the delayed samples of each comb, which the next input of each replaces. Rows need
// room for whole vectors.
struct CombRun {
    CombLanes& combs;
    const float* in;
    float* const* rows;
    const BesideCombs& beside;
    int frames;
};

}  // namespace dsp
