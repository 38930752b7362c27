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

constexpr float kMakeUp = 4.0f;  // a power of two: exact in either precision
// A follower above this stays normal for a whole run.
constexpr double kSurelyNormal = 1e-290;

float levelOf(float left, float right) {
    return std::fabs(left + right) * 0.5f;
}

}  // namespace

void PeakLimiter::process(float& left, float& right) {
    render(&left, &right, 1, 0.0);
}

int PeakLimiter::render(float* left, float* right, int frames, double quiet) {
    int quietFrames = 0;
    for (int from = 0; from < frames; from += kMostFrames) {
        const int count = std::min(kMostFrames, frames - from);
        Run run;
        begin(run, left + from, right + from, count);
        for (int t = 0; t < count; ++t) run.levels[t] = run.follower.tick(run.levels[t]);
        quietFrames += finish(run, left + from, right + from, count, quiet);
    }
    return quietFrames;
}

void PeakLimiter::begin(Run& run, const float* left, const float* right, int frames) const {
    int others = 0;  // nonzero if a level is not finite
    for (int t = 0; t < frames; ++t) {
        const float level = levelOf(left[t], right[t]);
        run.levels[t] = level;
        others |= !(level <= FLT_MAX);
    }
    run.follower = follower_;
    run.plain = others == 0 && follower_.value > kSurelyNormal;
}

int PeakLimiter::finish(Run& run, float* left, float* right, int frames, double quiet) {
    std::array<double, kMostFrames>& followers = run.levels;
    if (run.plain) {
        follower_ = run.follower;
    } else {
        for (int t = 0; t < frames; ++t) followers[t] = followWithCare(levelOf(left[t], right[t]));
    }
    double highest = 0.0;
    int quietFrames = 0;
    for (int t = 0; t < frames; ++t) {
        highest = std::max(highest, followers[t]);
        quietFrames += followers[t] < quiet;
    }
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
double PeakLimiter::followWithCare(float level) {
    if (level <= FLT_MAX) {
        if (follower_.tick(level) < DBL_MIN) follower_ = {};
    } else if (!(level > follower_.value)) {
        follower_.release();
    }
    return follower_.value;
}

void PeakLimiter::renderSilence(float* left, float* right, int frames) {
    for (int t = 0; t < frames && follower_.value != 0.0; ++t) followWithCare(0.0f);
    std::fill_n(left, frames, 0.0f);
    std::fill_n(right, frames, 0.0f);
}

}  // namespace dsp
