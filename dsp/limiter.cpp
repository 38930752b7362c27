// Follower and gain of the peak limiter.
#include "dsp/limiter.h"

#include <algorithm>
#include <array>
#include <cfloat>
#include <cmath>
#include <cstdint>
#include <cstring>

namespace dsp {
namespace {

constexpr double kAttackShare = 0.202885692337;
constexpr double kReleaseShare = 0.01085387128;
constexpr float kMakeUp = 4.0f;  // a power of two: exact in either precision
// A follower above this stays normal for a whole run.
constexpr double kSurelyNormal = 1e-290;

}  // namespace

// The follower after one more frame. `level` must be finite.
double PeakLimiter::followed(double follower, float level) {
    typedef double Two __attribute__((vector_size(16)));
    typedef long long Bits __attribute__((vector_size(16)));
    const Two f = {follower, 0.0};
    const Two l = {level, 0.0};
    const Two rising = f + (l - f) * kAttackShare;
    const Two falling = f - f * kReleaseShare;
    // A branch would be mispredicted half of the time.
    const Bits rises = l > f;
    return ((Two)(((Bits)rising & rises) | ((Bits)falling & ~rises)))[0];
}

void PeakLimiter::process(float& left, float& right) {
    render(&left, &right, 1, 0.0);
}

int PeakLimiter::render(float* left, float* right, int frames, double quiet) {
    int quietFrames = 0;
    for (int from = 0; from < frames; from += kRun) {
        quietFrames += renderRun(left + from, right + from, std::min(kRun, frames - from), quiet);
    }
    return quietFrames;
}

int PeakLimiter::renderRun(float* left, float* right, int frames, double quiet) {
    std::array<double, kRun> followers{};
    int others = 0;  // nonzero if a level is not finite
    double highest = 0.0;
    for (int t = 0; t < frames; ++t) {
        const float level = std::fabs(left[t] + right[t]) * 0.5f;
        followers[t] = level;
        others |= !(level <= FLT_MAX);
    }
    const bool plain = others == 0 && follower_ > kSurelyNormal;
    double follower = follower_;
    int quietFrames = 0;
    for (int t = 0; t < frames; ++t) {
        const float level = static_cast<float>(followers[t]);
        follower = plain ? followed(follower, level) : followedWithCare(follower, level);
        followers[t] = follower;
        highest = std::max(highest, follower);
        quietFrames += follower < quiet;
    }
    follower_ = follower;
    if (highest < kLimiterThreshold) {
        for (int t = 0; t < frames; ++t) {
            left[t] *= kMakeUp;
            right[t] *= kMakeUp;
        }
        return quietFrames;
    }
    kernels_.holdPeaks(followers.data(), frames);
    for (int t = 0; t < frames; ++t) {
        left[t] = static_cast<float>(left[t] * followers[t] * kMakeUp);
        right[t] = static_cast<float>(right[t] * followers[t] * kMakeUp);
    }
    return quietFrames;
}

// Keeps an infinite or NaN level out of the follower, and flushes denormals.
double PeakLimiter::followedWithCare(double follower, float level) {
    if (!(level <= FLT_MAX)) {
        return level > follower ? follower : follower - follower * kReleaseShare;
    }
    const double next = followed(follower, level);
    return next < DBL_MIN ? 0.0 : next;
}

void PeakLimiter::renderSilence(float* left, float* right, int frames) {
    for (int t = 0; t < frames && follower_ != 0.0; ++t) {
        follower_ = followedWithCare(follower_, 0.0f);
    }
    std::fill_n(left, frames, 0.0f);
    std::fill_n(right, frames, 0.0f);
}

}  // namespace dsp
