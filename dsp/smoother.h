// One-pole set by a -60 dB time, with a fixed 21 Hz high-pass (the reverb's DC blocker).
#pragma once

namespace dsp {

class Smoother {
  public:
    virtual ~Smoother() = default;

    // Time in which a step has settled to -60 dB, in milliseconds at 44100 Hz, from 0 up
    // (0: at once, coefficient 1). Other values are ignored. Also switches the high-pass on,
    // which passes everything until then.
    void setTime(float milliseconds);
    float coefficient() const { return coefficient_; }

    void clear() { state_ = 0.0f; }

    static constexpr float kHighPassCoefficient = 0.00014247595f;  // 2 pi / 44100
    static constexpr float kHighPassHertz = 21.0f;

    // The corner is 21 Hz at 44100 Hz and moves with the actual rate.
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
