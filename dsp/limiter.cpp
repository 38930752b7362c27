// Peak limiter of the stereo output.
#include "dsp/limiter.h"

#include <algorithm>
#include <cfloat>
#include <cmath>

namespace dsp {
namespace {

constexpr double kAttackShare = 0.202885692337;
constexpr double kReleaseShare = 0.01085387128;
constexpr double kMakeUp = 4.0;
constexpr double kThresholdDb = -1.0;
// Safely below the threshold, where the gain is 1 and the logarithm can be saved.
constexpr double kSurelyBelowThreshold = 0.89;

double gainFor(double follower) {
    if (follower < kSurelyBelowThreshold) return 1.0;
    const double decibels = 20.0 * std::log10(follower);
    if (decibels < kThresholdDb) return 1.0;
    // 0.0495 of 0.05 (a decibel in powers of ten): a ratio of 100 to 1.
    return std::pow(10.0, (decibels + 1.0) * -0.0495);
}

}  // namespace

void PeakLimiter::follow() {
    if (level_ > follower_) {
        // An infinite level must not stick in the follower.
        if (level_ <= FLT_MAX) follower_ += (level_ - follower_) * kAttackShare;
    } else {
        follower_ -= follower_ * kReleaseShare;
        if (follower_ < DBL_MIN) follower_ = 0.0;
    }
}

void PeakLimiter::process(float& left, float& right) {
    render(&left, &right, 1, 0.0);
}

int PeakLimiter::render(float* left, float* right, int frames, double quiet) {
    PeakLimiter limiter = *this;
    int quietFrames = 0;
    for (int t = 0; t < frames; ++t) {
        limiter.level_ = std::fabs(left[t] + right[t]) * 0.5f;
        limiter.follow();
        const double gain = gainFor(limiter.follower_);
        left[t] = static_cast<float>(left[t] * gain * kMakeUp);
        right[t] = static_cast<float>(right[t] * gain * kMakeUp);
        quietFrames += limiter.follower_ < quiet;
    }
    *this = limiter;
    return quietFrames;
}

void PeakLimiter::renderSilence(float* left, float* right, int frames) {
    level_ = 0.0f;
    for (int t = 0; t < frames && follower_ != 0.0; ++t) follow();
    std::fill_n(left, frames, 0.0f);
    std::fill_n(right, frames, 0.0f);
}

}  // namespace dsp
