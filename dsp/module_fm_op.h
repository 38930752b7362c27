// Sine operator with phase feedback on itself and a built-in high-pass.
#pragma once

#include <algorithm>
#include <cmath>

namespace dsp {

// With s[n] = sine(feedback gain x s[n-1] / (2 pi) + phase - 0.001) and two low-passes in series,
//
//     low  += (s - low) x 4 pi f / sampleRate
//     high += (low - high) x 1.0053
//     out   = 0.9 (s - low) + 0.1 (s - high)
//
// The caller keeps the phase (in turns) and passes it once per sample. Non-finite or negative
// frequencies are ignored, and so are rates of 0 or less.
class ModuleFMop {
  public:
    virtual ~ModuleFMop() = default;

    void setRate(float sampleRate);  // Hz
    void setFrequency(float hz);     // also sets feedback gain and high-pass corner
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

    // The other tone: the square of the previous output feeds back, and the high-pass is a
    // one-pole.
    float processSquared(float phase) {
        const float y =
            sine(previousOut_ * previousOut_ * kTurnsPerRadian + (phase - kPhaseOffset));
        lowState_ =
            lowState_ + std::min(increment_, kMaxIncrementSquared) * (y - lowState_) * kOnePole;
        previousOut_ = y;
        return y - lowState_;
    }

    // Shared with the operator's lane kernel (dsp/lanes/voice_kernel.inc).
    static constexpr float kInitialInverseRate = 2.2675736e-05f;  // seconds: 1 / 44100
    static constexpr float feedbackGain(float hz) { return hz >= 2100.0f ? 0.8963f : 1.11f; }
    static constexpr float kTurnsPerRadian = 0.15915507f;  // 1 / 6.28318
    static constexpr float kPhaseOffset = 0.001f;
    // Low-pass coefficient over (frequency / sampleRate).
    static constexpr float kTwoPole = 12.56636f;  // 2 x 6.28318
    static constexpr float kOnePole = 9.42477f;   // 1.5 x 6.28318
    // Limits both coefficients to 1.9. At 2 and above, which low rates would reach, the state grows
    // without end.
    static constexpr float kMaxIncrement = 1.9f / kTwoPole;
    static constexpr float kMaxIncrementSquared = 1.9f / kOnePole;
    static constexpr float kSecondPole = 1.0053087f;  // 0.16 x 6.28318; intentional: above 1

  private:
    // sin(2 pi turns) to within 0.012, as a polynomial on one period. intentional: the wrap
    // truncates toward zero, so phases below -0.5 keep up to one turn too many. A phase from 2^23
    // on has no fraction and reads as 0, and so does NaN.
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
