// Direct form I biquad and two RBJ designs for it, high-pass and low-pass.
#pragma once

#include <algorithm>
#include <cmath>

#include "dsp/stereo.h"

namespace dsp {

// y = b0 x + b1 x1 + b2 x2 - a1 y1 - a2 y2
struct BiquadCoefficients {
    float b0 = 1.0f;
    float b1 = 0.0f;
    float b2 = 0.0f;
    float a1 = 0.0f;
    float a2 = 0.0f;
};

// The frequency in radians per sample, limited to 0.49 of the rate at the top. The lower limit is
// the lowest corner at which float coefficients still make a stable filter (1.86 Hz at 44.1 kHz).
// NaN gives the lower limit.
inline double biquadRadians(double hz, double sampleRate) {
    constexpr double kTwoPi = 6.283185307179586;
    constexpr double kLowest = 2.65e-4;
    const double w = kTwoPi * std::min(hz, 0.49 * sampleRate) / sampleRate;
    return w > kLowest ? w : kLowest;
}

// Both designs compute in double and store float; `q` must be above 0. With w = biquadRadians and
// alpha = sin(w) / (2 q), the RBJ high-pass is
//
//     b0 = b2 = (1 + cos w) / 2    a0 = 1 + alpha
//     b1 = -(1 + cos w)            a1 = -2 cos w
//                                  a2 = 1 - alpha
//
// with all coefficients divided by a0.
inline BiquadCoefficients designHighPass(double hz, double q, double sampleRate) {
    const double w = biquadRadians(hz, sampleRate);
    const double alpha = std::sin(w) * (0.5 / q);
    const double cosine = std::cos(w);
    BiquadCoefficients c;
    c.b0 = static_cast<float>((1.0 + cosine) / 2.0 / (1.0 + alpha));
    c.b1 = static_cast<float>(-(1.0 + cosine) / (1.0 + alpha));
    c.b2 = c.b0;
    c.a1 = static_cast<float>(-2.0 * cosine / (1.0 + alpha));
    c.a2 = static_cast<float>((1.0 - alpha) / (1.0 + alpha));
    return c;
}

// RBJ low-pass: the same with b0 = b2 = (1 - cos w) / 2 and b1 = 1 - cos w.
inline BiquadCoefficients designLowPass(double hz, double q, double sampleRate) {
    const double w = biquadRadians(hz, sampleRate);
    const double alpha = std::sin(w) * (0.5 / q);
    const double cosine = std::cos(w);
    BiquadCoefficients c;
    c.b0 = static_cast<float>((1.0 - cosine) / 2.0 / (1.0 + alpha));
    c.b1 = static_cast<float>((1.0 - cosine) / (1.0 + alpha));
    c.b2 = c.b0;
    c.a1 = static_cast<float>(-2.0 * cosine / (1.0 + alpha));
    c.a2 = static_cast<float>((1.0 - alpha) / (1.0 + alpha));
    return c;
}

// Q of a voice's key-tracking high-pass and of the low-pass before the phaser.
constexpr double kKeyHighPassQ = 0.3;
constexpr double kPhaserPreFilterQ = 0.8;

// One filter. New coefficients leave the states alone, so they can change while the filter sounds.
// Value is float, or StereoFloat for two sides.
template <typename Value>
class BiquadOf {
  public:
    void setCoefficients(const BiquadCoefficients& coefficients) { c_ = coefficients; }
    const BiquadCoefficients& coefficients() const { return c_; }
    void clear() { x1_ = x2_ = y1_ = y2_ = Value{}; }

    Value tick(Value x) {
        const Value y = respond(x);
        push(x, y);
        return y;
    }

  protected:
    Value respond(Value x) const {
        return c_.b0 * x + c_.b1 * x1_ + c_.b2 * x2_ - c_.a1 * y1_ - c_.a2 * y2_;
    }
    void push(Value x, Value y) {
        x2_ = x1_;
        x1_ = x;
        y2_ = y1_;
        y1_ = y;
    }

  private:
    BiquadCoefficients c_;
    Value x1_{};
    Value x2_{};
    Value y1_{};
    Value y2_{};
};

using Biquad = BiquadOf<float>;

// The low-pass before the phaser. It doubles its input, bounds it to 1 and bounds its output to 4.
template <typename Value>
class PhaserPreFilterOf : private BiquadOf<Value> {
  public:
    using BiquadOf<Value>::clear;
    using BiquadOf<Value>::setCoefficients;

    Value tick(Value x) {
        const Value doubled = 2.0f * x;
        // intentional: both ends map to +1, and so does NaN. In this folder "intentional" marks an
        // oddity that saved sessions depend on.
        const Value in = magnitude(doubled) < 1.0f ? doubled : Value{} + 1.0f;
        const Value y = flushed(bounded(this->respond(in), kCeiling));
        this->push(in, y);
        return y;
    }

  private:
    static constexpr float kCeiling = 4.0f;
};

using PhaserPreFilter = PhaserPreFilterOf<float>;
using StereoPhaserPreFilter = PhaserPreFilterOf<StereoFloat>;

}  // namespace dsp
