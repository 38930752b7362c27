// Sine operator with phase feedback on itself and a built-in high-pass.
#pragma once

#include <algorithm>
#include <cmath>

namespace dsp {

// The caller keeps the phase (in cycles) and passes it once a sample. Non-finite or negative
// frequencies and rates of 0 or less are ignored.
class ModuleFMop {
  public:
    virtual ~ModuleFMop() = default;

    void setRate(float sampleRate);  // Hz
    void setFrequency(float hz);     // sets the feedback gain and the high-pass corner
    float frequency() const { return frequency_; }
    void clear();  // feedback and filter states; frequency and rate stay

    float process(float phase) {
        const float y = sine(feedbackGain(frequency_) * previousOut_ * kTurnsPerRadian +
                             (phase - kPhaseOffset));
        lowState_ = lowState_ + (y - lowState_) * std::min(increment_, kMaxIncrement) * kTwoPole;
        highState_ = highState_ + (lowState_ - highState_) * kSecondPole;
        previousOut_ = y;
        return (y - lowState_) * 0.9f + (y - highState_) * 0.1f;
    }

    // The other tone: feedback by the square of the previous output and a one-pole high-pass.
    float processSquared(float phase) {
        const float y =
            sine(previousOut_ * previousOut_ * kTurnsPerRadian + (phase - kPhaseOffset));
        lowState_ =
            lowState_ + std::min(increment_, kMaxIncrementSquared) * (y - lowState_) * kOnePole;
        previousOut_ = y;
        return y - lowState_;
    }

    // What the operator shares with its twin in lanes.
    static constexpr float kInitialInverseRate = 2.2675736e-05f;  // s
    static constexpr float feedbackGain(float hz) { return hz >= 2100.0f ? 0.8963f : 1.11f; }
    static constexpr float kTurnsPerRadian = 0.15915507f;
    static constexpr float kPhaseOffset = 0.001f;
    static constexpr float kTwoPole = 12.56636f;  // low-pass coefficient per cycle a sample
    static constexpr float kOnePole = 9.42477f;
    // Both coefficients stay at or below 1.9; from 2 on low rates would blow up for good.
    static constexpr float kMaxIncrement = 1.9f / kTwoPole;
    static constexpr float kMaxIncrementSquared = 1.9f / kOnePole;
    static constexpr float kSecondPole = 1.0053087f;  // above 1 on purpose

  private:
    // sin(2 pi turns) as a polynomial on one period, to within 0.012. The wrap truncates toward
    // zero, so below -0.5 up to one cycle too many is left: part of the sound. A phase too large
    // to hold a fraction, or no number, reads as 0.
    static float sine(float turns) {
        const float p = std::fabs(turns) < 8388608.0f
                            ? turns - static_cast<float>(static_cast<int>(turns + 0.5f))
                            : 0.0f;
        const float a = std::fabs(p);
        return (a - 0.5f) * (a - 0.732963f) * (a + 0.232963f) * (p * 68.5949f);
    }

    float frequency_ = 0.0f;  // Hz
    float inverseRate_ = kInitialInverseRate;
    float increment_ = 0.0f;  // frequency x inverse rate
    float previousOut_ = 0.0f;
    float lowState_ = 0.0f;
    float highState_ = 0.0f;
};

}  // namespace dsp
