// The two delay lines of the reverb: a damped feedback comb and an allpass.
#pragma once

#include <array>

#include "dsp/denormal.h"
#include "dsp/smoother.h"
#include "tests/reference/names.h"

namespace reference {

constexpr int kReverbCapacity = 4000;  // samples a line can hold

// Ring of `size` samples that flushes denormals as it is read.
class ReverbRing {
  public:
    void setSize(int samples);  // limited to 1..kReverbCapacity
    void clear();               // the samples in use

    float read() const { return flushed(buffer_[index_]); }
    void write(float x) {
        buffer_[index_] = x;
        if (++index_ == size_) index_ = 0;
    }

  private:
    int size_ = 1;
    int index_ = 0;
    std::array<float, kReverbCapacity> buffer_{};
};

// Comb with a low-pass (damping) and a 21 Hz high-pass in its feedback loop; see
// dsp/reverb_lines.h.
class ReverbComb {
  public:
    ReverbComb();

    void setSize(int samples) { ring_.setSize(samples); }
    void setFeedback(float feedback) { feedback_ = feedback; }
    void setDamp(float damp);       // 0..1
    void mute() { ring_.clear(); }  // ring only; the loop's filters keep their state
    void clear();

    float tick(float x) {
        const float y = ring_.read();
        filterStore_ = flushed(y * damp2_ + filterStore_ * damp1_);
        filterStore_ = dcBlocker_.highPass(filterStore_);
        ring_.write(x + filterStore_ * feedback_);
        return y;
    }

  private:
    float feedback_ = 0.0f;
    float filterStore_ = 0.0f;
    float damp1_ = 0.0f;
    float damp2_ = 1.0f;
    Smoother dcBlocker_;
    ReverbRing ring_;
};

class ReverbAllpass {
  public:
    void setSize(int samples) { ring_.setSize(samples); }
    void clear() { ring_.clear(); }

    float tick(float x) {
        const float delayed = ring_.read();
        ring_.write(kGain * delayed + x);
        return delayed - kGain * x;
    }

  private:
    static constexpr float kGain = 0.5f;

    ReverbRing ring_;
};

}  // namespace reference
