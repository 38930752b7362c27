// Arguments of the ensemble chorus' kernels. All rows need room for whole vectors.
#pragma once

#include <array>

namespace dsp {

constexpr int kChorusTaps = 3;

// See engine::EnsembleChorus for the formulas. The scaled modulators replace the delayed ones.
struct ChorusModulation {
    const float* slow;
    const float* fast;
    float scale;  // of both; then each has its depth
    float slowDepth;
    float fastDepth;
    float* slowDelayed;
    float* fastDelayed;
    float shortest;  // delays in samples
    float longest;
    std::array<float*, kChorusTaps> delays;
    std::array<float*, kChorusTaps> gains;
    int frames;
};

struct ChorusMix {
    const float* in;  // null: the dry signal is added later
    float dryGain;
    std::array<const float*, kChorusTaps> taps;
    std::array<const float*, kChorusTaps> gains;
    std::array<float, kChorusTaps> rightWeights;
    float* left;
    float* right;
    int frames;
};

}  // namespace dsp
