// Two-stage double-precision high-pass with a saturated low band, after the mix and the phaser.
#pragma once

#include "dsp/stereo.h"

namespace dsp {

// Corner of the first stage in Hz for the high-pass amount x (0 .. 1), 98 .. 8198.
constexpr float highPassHz(float x) {
    return x * x * x * 8100.0f + 98.0f;
}

// Two Chamberlin state-variable filters in series. The first stage's low-pass is saturated and
// mixed with its high-pass and the input to feed the second stage, whose high-pass is the output.
// Value is double, or StereoDouble for two sides.
template <typename Value>
class OutputFilterOf {
  public:
    // Sets both corners for the high-pass amount x (0 .. 1) at the rate. States stay. Both setters
    // ignore what is not finite and rates of 0 or less.
    void setHighPass(float x, double sampleRate);

    // The set-up of a rate change: clears the states and sets both corners with coefficients
    // that are rounded to float at every step. The sound differs in the last bits only, but it
    // is what an instrument has until the high-pass amount is set again.
    void setRate(double sampleRate, float x);

    void clear() { band1_ = low1_ = band2_ = low2_ = Value{}; }

    Value tick(Value x) { return tickSecond(joined(tickFirst(x))); }
    // The same in three steps, of which each may lag behind the one before.
    struct Between {
        Value sum;
        Value low;
    };
    Between tickFirst(Value x) {
        const Value high = x - low1_ - kDamping1 * band1_;
        band1_ += frequency1_ * high;
        low1_ += frequency1_ * band1_;
        return {0.5 * high + 0.5 * x, low1_};
    }
    static Value joined(const Between& between) {
        return between.sum + saturated(between.low * 0.25);
    }
    Value tickSecond(Value x) {
        const Value high = x - low2_ - kDamping2 * band2_;
        band2_ += frequency2_ * high;
        low2_ += frequency2_ * band2_;
        return high;
    }

    // Odd-symmetric, within -1 .. 1, slope 1 at 0.
    static Value saturated(Value u) {
        const Value a = magnitude(u);
        const Value square = a * a;
        const Value sum =
            1.0 + a + square + 0.66422415 * (square * a) + 0.36483285 * (square * square);
        return withSign(1.0 - 1.0 / sum, u);
    }

  private:
    static constexpr double kDamping1 = 0.3949155109067489;
    static constexpr double kDamping2 = 0.6284230349905618;

    double frequency1_ = 3725.78 / 44100.0;
    double frequency2_ = 534.92 / 44100.0;
    Value band1_{};
    Value low1_{};
    Value band2_{};
    Value low2_{};
};

using OutputFilter = OutputFilterOf<double>;
using StereoOutputFilter = OutputFilterOf<StereoDouble>;

}  // namespace dsp
