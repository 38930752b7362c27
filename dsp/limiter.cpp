// Follower and gain of the peak limiter.
#include "dsp/limiter.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace dsp {
namespace {

// A follower above this stays normal for a whole run.
constexpr double kSurelyNormal = 1e-290;

float levelOf(float left, float right) {
    return std::fabs(left + right) * 0.5f;
}

}  // namespace

void PeakLimiter::process(float& left, float& right) {
    const double follower = followWithCare(levelOf(left, right));
    const double gain = follower < kLimiterThreshold ? 1.0 : kernels_.limiterGain(follower);
    left = static_cast<float>(left * gain * kLimiterMakeUp);
    right = static_cast<float>(right * gain * kLimiterMakeUp);
}

void PeakLimiter::begin(Run& run, const LimiterGain& gain, float* left, float* right,
                        int frames) const {
    const bool finite = kernels_.enterLimiter({gain, left, right, run.levels.data(), frames});
    run.follower = follower_;
    run.plain = finite && follower_.value > kSurelyNormal;
}

int PeakLimiter::finish(Run& run, const float* left, const float* right, int frames, double quiet,
                        float* outLeft, float* outRight) {
    if (run.plain) {
        follower_ = run.follower;
    } else {
        for (int t = 0; t < frames; ++t) run.levels[t] = followWithCare(levelOf(left[t], right[t]));
    }
    return kernels_.leaveLimiter(
        {run.levels.data(), quiet, left, right, outLeft, outRight, frames});
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
