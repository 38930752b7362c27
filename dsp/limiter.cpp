// Peak limiter of the stereo output.
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
constexpr double kMakeUp = 4.0;
// -1 dB, from where on the level is held by a ratio of 100 to 1: the gain is
// 10^((20 log10(follower) + 1) x -0.0495), which is kHeld x follower^-0.99.
constexpr double kThreshold = 0.8912509381337456;
constexpr double kHeld = 0.8922776195878269;  // 10^-0.0495
// Far enough above DBL_MIN for a run of frames.
constexpr double kSurelyNormal = 1e-290;

// Natural logarithm to within 3e-8; x is normal and positive.
double logarithm(double x) {
    constexpr std::int64_t kRootHalf = 0x3FE6A09E667F3BCD;  // bits of sqrt(1/2)
    std::int64_t bits;
    std::memcpy(&bits, &x, sizeof bits);
    const std::int64_t exponent = (bits - kRootHalf) >> 52;
    bits -= exponent * (std::int64_t{1} << 52);
    double mantissa;  // sqrt(1/2) .. sqrt(2)
    std::memcpy(&mantissa, &bits, sizeof mantissa);
    const double s = (mantissa - 1.0) / (mantissa + 1.0);
    const double q = s * s;
    return static_cast<double>(static_cast<int>(exponent)) * 0.6931471805599453 +
           2.0 * s * (1.0 + q * (1.0 / 3.0 + q * (1.0 / 5.0 + q * (1.0 / 7.0))));
}

// follower^-0.99 as follower^0.01 / follower; the exponential is that of a small number, so that
// gains are right to 1e-9 for all followers up to 1e4.
double gainFor(double follower) {
    const double x = 0.01 * logarithm(follower);
    const double power =
        1.0 + x * (1.0 + x * (1.0 / 2.0 + x * (1.0 / 6.0 + x * (1.0 / 24.0 + x * (1.0 / 120.0)))));
    return kHeld * power / follower;
}

}  // namespace

// The follower after one more frame; `level` is finite.
double PeakLimiter::followed(double follower, float level) {
    typedef double Two __attribute__((vector_size(16)));
    typedef long long Bits __attribute__((vector_size(16)));
    const Two f = {follower, 0.0};
    const Two l = {level, 0.0};
    const Two rising = f + (l - f) * kAttackShare;
    const Two falling = f - f * kReleaseShare;
    // A branch here would be guessed wrong half of the time.
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
    bool plain = follower_ > kSurelyNormal;
    double highest = 0.0;
    for (int t = 0; t < frames; ++t) {
        const float level = std::fabs(left[t] + right[t]) * 0.5f;
        followers[t] = level;
        plain &= level <= FLT_MAX;
    }
    level_ = static_cast<float>(followers[frames - 1]);
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
    const bool holds = highest >= kThreshold;
    for (int t = 0; t < frames; ++t) {
        const double gain = holds && followers[t] >= kThreshold ? gainFor(followers[t]) : 1.0;
        left[t] = static_cast<float>(left[t] * gain * kMakeUp);
        right[t] = static_cast<float>(right[t] * gain * kMakeUp);
    }
    return quietFrames;
}

// An infinite level must not stick in the follower, nor one that is no number.
double PeakLimiter::followedWithCare(double follower, float level) {
    if (!(level <= FLT_MAX)) {
        return level > follower ? follower : follower - follower * kReleaseShare;
    }
    const double next = followed(follower, level);
    return next < DBL_MIN ? 0.0 : next;
}

void PeakLimiter::renderSilence(float* left, float* right, int frames) {
    level_ = 0.0f;
    for (int t = 0; t < frames && follower_ != 0.0; ++t) {
        follower_ = followedWithCare(follower_, 0.0f);
    }
    std::fill_n(left, frames, 0.0f);
    std::fill_n(right, frames, 0.0f);
}

}  // namespace dsp
