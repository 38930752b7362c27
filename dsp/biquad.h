// Direct form I biquad and its two RBJ designs, high-pass and low-pass.
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

// The frequency in radians a sample, kept at or below 0.49 of the rate and at or above what float
// coefficients can hold in a stable filter (1.86 Hz at 44.1 kHz); NaN counts as low.
inline double biquadRadians(double hz, double sampleRate) {
    constexpr double kTwoPi = 6.283185307179586;
    constexpr double kLowest = 2.65e-4;
    const double w = kTwoPi * std::min(hz, 0.49 * sampleRate) / sampleRate;
    return w > kLowest ? w : kLowest;
}

// RBJ high-pass; computed in double, stored as float. Q above 0.
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

// RBJ low-pass; computed in double, stored as float. Q above 0.
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

// Q of the high-pass that follows a voice's key, and of the low-pass before the phaser.
constexpr double kKeyHighPassQ = 0.3;
constexpr double kPhaserPreFilterQ = 0.8;

// One filter; a new set of coefficients keeps the states, so that it can change while sounding.
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

// The low-pass before the phaser: doubles its input and bounds both ends.
template <typename Value>
class PhaserPreFilterOf : private BiquadOf<Value> {
  public:
    using BiquadOf<Value>::clear;
    using BiquadOf<Value>::setCoefficients;

    Value tick(Value x) {
        const Value doubled = 2.0f * x;
        // Both ends map to +1, kept so; NaN goes there too.
        const Value in = magnitude(doubled) < 1.0f ? doubled : Value{} + 1.0f;
        Value y = this->respond(in);
        const Value ceiling = Value{} + kCeiling;
        y = y > ceiling ? ceiling : y;
        y = y < -ceiling ? -ceiling : y;
        y = flushed(y);
        this->push(in, y);
        return y;
    }

  private:
    static constexpr float kCeiling = 4.0f;
};

using PhaserPreFilter = PhaserPreFilterOf<float>;
using StereoPhaserPreFilter = PhaserPreFilterOf<StereoFloat>;

}  // namespace dsp
