// Arguments of the limiter's kernels. Rows need room for whole vectors, the outputs do not.
#pragma once

namespace dsp {

// Above -1 dB the limiter compresses by 100 to 1. Its gain is
// 10^((20 log10(follower) + 1) x -0.0495) = kLimiterHeld x follower^-0.99.
constexpr double kLimiterThreshold = 0.8912509381337456;  // -1 dB
constexpr double kLimiterHeld = 0.8922776195878269;       // 10^-0.0495
constexpr float kLimiterMakeUp = 4.0f;  // a power of two: exact in either precision

// What scales both sides before the limiter, in this order.
struct LimiterGain {
    float always;
    float first;  // in the first frames only
    int firstFrames;
    const float* further;  // per frame; null: none
};

// Scales both sides in place and measures the level of each frame. Frames that only fill the last
// vector get kNoLevel.
struct LimiterEntry {
    const LimiterGain& gain;
    float* left;
    float* right;
    double* levels;
    int frames;
};
constexpr double kNoLevel = 0.5;  // neither quiet nor above the threshold

// Scales both sides by the limiter's gain, and counts the frames whose follower is below `quiet`.
// The followers must be finite, also those that fill the last vector.
struct LimiterExit {
    const double* followers;
    double quiet;
    const float* left;
    const float* right;
    float* outLeft;
    float* outRight;
    int frames;
};

}  // namespace dsp
