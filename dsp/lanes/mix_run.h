// Arguments of the mix of the sections. All rows need room for whole vectors.
#pragma once

#include <cstdint>

namespace dsp {

// The upper sections with their gain, and the bow noise. Frames become lanes.
struct MixRun {
    std::uint32_t random;  // state of the Random before the first frame
    const float* viola;
    const float* violin;
    const float* brassBand;
    const float* hornBand;
    float violaLevel;
    float violinLevel;
    float brassLevel;
    float hornLevel;
    const float* gains;  // before scale and limits
    float gainScale;
    const float* noiseLevels;
    const float* bowNoise;
    float* dither;  // receives -5e-11 .. 5e-11
    float* noise;   // receives the bow noise, also on its own
    float* mix;
    int frames;
};

}  // namespace dsp
