// Two-stage double-precision high-pass with a saturated low band; follows the mix and the phaser.
#pragma once

#include "dsp/stereo.h"

namespace dsp {

// Corner of the first stage in Hz for the high-pass amount x (0 .. 1), 98 .. 8198.
constexpr float highPassHz(float x) {
    return x * x * x * 8100.0f + 98.0f;
}

// Two Chamberlin state-variable filters in series. Each stage computes
//
//     high  = x - low - damping x band
//     band += f x high
//     low  += f x band
//
// The second stage takes (high + x) / 2 + saturated(low / 4) of the first; its high is the output.
// Value is double, or StereoDouble for two sides.
template <typename Value>
class OutputFilterOf {
  public:
    // Sets both corners for the high-pass amount x (0..1); states stay. Both setters ignore
    // non-finite values and rates of 0 or less.
    void setHighPass(float x, double sampleRate);

    // Clears the states and sets both corners for a new rate. intentional: the coefficients are
    // rounded to float at every step. They differ from setHighPass in the last bits and hold until
    // its next call.
    void setRate(double sampleRate, float x);

    void clear() { band1_ = low1_ = band2_ = low2_ = Value{}; }

    Value tick(Value x) { return tickSecond(joined(tickFirst(x))); }
    // tick in three steps. Each may run a frame later than the one before it.
    struct Between {
        Value sum;
        Value low;
    };
    Between tickFirst(Value x) {
        const Value high = x - low1_ - kDamping1 * band1_;
        band1_ += frequency1_ * high;
        low1_ += frequency1_ * band1_;
        return {0.5 * (high + x), low1_};
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

    // sign(u) (1 - 1 / (1 + a + a^2 + 0.664 a^3 + 0.365 a^4)) with a = |u|: a soft clip to -1..1 of
    // slope 1 at 0.
    static Value saturated(Value u) {
        const Value a = magnitude(u);
        const Value square = a * a;
        const Value sum =
            1.0 + a + square + 0.66422415 * (square * a) + 0.36483285 * (square * square);
        return withSign(1.0 - 1.0 / sum, u);
    }

    static constexpr double kDamping1 = 0.3949155109067489;
    static constexpr double kDamping2 = 0.6284230349905618;
    struct State {
        Value band1, low1, band2, low2;
    };
    State state() const { return {band1_, low1_, band2_, low2_}; }
    void setState(const State& state) {
        band1_ = state.band1;
        low1_ = state.low1;
        band2_ = state.band2;
        low2_ = state.low2;
    }
    double frequency1() const { return frequency1_; }
    double frequency2() const { return frequency2_; }

  private:
    double frequency1_ = 3725.78 / 44100.0;  // 6.22 x 599 Hz
    double frequency2_ = 534.92 / 44100.0;   // 6.22 x 86 Hz
    Value band1_{};
    Value low1_{};
    Value band2_{};
    Value low2_{};
};

using OutputFilter = OutputFilterOf<double>;
using StereoOutputFilter = OutputFilterOf<StereoDouble>;

}  // namespace dsp
