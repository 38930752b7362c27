// One-pole low-pass with a high-pass output, guarded against denormals by an offset.
#pragma once

#include "dsp/denormal.h"

namespace dsp {

// Coefficient of a one-pole or Chamberlin filter: 2 pi hz / sampleRate, with 2 pi rounded to
// 6.28319. Computed in double, stored as float.
float cornerCoefficient(double hz, double sampleRate);

// low += (x - low) x coefficient;  the high-pass is x minus the previous low
//
// The coefficient is limited to 0..1.9: from 2 on the state would grow without end.
// Non-finite settings and rates of 0 or less are ignored.
class OnePole {
  public:
    enum Mode { kLowPass, kHighPass };

    void reset();                    // state 0, coefficient 1, 44100 Hz; the mode stays
    void clear() { state_ = 0.0f; }  // state only; settings stay
    void setRate(float sampleRate);  // Hz; takes effect with the next setFrequency
    void setFrequency(float hz);
    void setCoefficient(float coefficient);
    void setMode(Mode mode) { mode_ = mode; }

    float coefficient() const { return coefficient_; }
    float state() const { return state_; }

    // One sample through the output that the mode selects.
    float tick(float x) {
        const float before = state_;
        const float low = tickLowPass(x);
        return mode_ == kHighPass ? x - before + kSmallestNormal : low;
    }

    float tickLowPass(float x) {
        state_ = state_ + (x - kSmallestNormal - state_) * coefficient_;
        return state_ + kSmallestNormal;
    }

  private:
    float state_ = 0.0f;
    float coefficient_ = 1.0f;
    float sampleRate_ = 44100.0f;
    Mode mode_ = kLowPass;
};

}  // namespace dsp
