// Follower and gain of the peak limiter.
#include "tests/reference/limiter.h"

#include <cfloat>
#include <cmath>

namespace reference {
namespace {

constexpr double kAttackShare = 0.202885692337;
constexpr double kReleaseShare = 0.01085387128;
constexpr double kMakeUp = 4.0;
constexpr double kThresholdDb = -1.0;
// Safely below the threshold: the gain is 1, so skip the logarithm.
constexpr double kSurelyBelowThreshold = 0.89;

double gainFor(double follower) {
    if (follower < kSurelyBelowThreshold) return 1.0;
    const double decibels = 20.0 * std::log10(follower);
    if (decibels < kThresholdDb) return 1.0;
    // 0.05 turns decibels into powers of ten; 99 % of it compresses by 100 to 1.
    return std::pow(10.0, (decibels + 1.0) * -0.0495);
}

}  // namespace

void PeakLimiter::process(float& left, float& right) {
    level_ = std::fabs(left + right) * 0.5f;
    if (level_ > follower_) {
        // Keeps an infinite level out of the follower.
        if (level_ <= FLT_MAX) follower_ += (level_ - follower_) * kAttackShare;
    } else {
        follower_ -= follower_ * kReleaseShare;
        if (follower_ < DBL_MIN) follower_ = 0.0;
    }
    const double gain = gainFor(follower_);
    left = static_cast<float>(left * gain * kMakeUp);
    right = static_cast<float>(right * gain * kMakeUp);
}

}  // namespace reference
