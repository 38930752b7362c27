// One-pole set by its -60 dB time, with a fixed 21 Hz high-pass (the reverb's DC blocker).
#pragma once

namespace dsp {

// coefficient = 1 - 0.001^(1 / (time x 44100 Hz))
// high-pass: state += (x - state) x 21 x 2 pi / 44100,  y = x - state
class Smoother {
  public:
    virtual ~Smoother() = default;

    // Time for a step to settle to -60 dB, in milliseconds at 44100 Hz; 0 settles at once. Negative
    // and non-finite values are ignored. Also switches the high-pass on: until the first call it
    // passes everything.
    void setTime(float milliseconds);
    float coefficient() const { return coefficient_; }

    void clear() { state_ = 0.0f; }

    static constexpr float kHighPassCoefficient = 0.00014247595f;  // 2 pi / 44100
    static constexpr float kHighPassHertz = 21.0f;

    // The corner is 21 Hz at 44100 Hz and scales with the actual rate.
    float highPass(float x) {
        state_ = state_ + (x - state_) * highPassCoefficient_ * kHighPassHertz;
        return x - state_;
    }

  private:
    float state_ = 0.0f;
    float coefficient_ = 1.0f;
    float highPassCoefficient_ = 0.0f;
};

}  // namespace dsp
