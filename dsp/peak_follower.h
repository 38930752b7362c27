// The level that the limiter follows.
#pragma once

namespace dsp {

// See PeakLimiter for the formulas.
struct PeakFollower {
    double value = 0.0;

    // `level` must be finite.
    double tick(double level) {
        typedef double Two __attribute__((vector_size(16)));
        typedef long long Bits __attribute__((vector_size(16)));
        const Two f = {value, 0.0};
        const Two l = {level, 0.0};
        const Two rising = f + (l - f) * kAttackShare;
        const Two falling = f - f * kReleaseShare;
        // A branch would be mispredicted half of the time.
        const Bits rises = l > f;
        value = ((Two)(((Bits)rising & rises) | ((Bits)falling & ~rises)))[0];
        return value;
    }
    void release() { value -= value * kReleaseShare; }

  private:
    static constexpr double kAttackShare = 0.202885692337;
    static constexpr double kReleaseShare = 0.01085387128;
};

}  // namespace dsp
