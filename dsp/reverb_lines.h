// The delay lines of the reverb: combs side by side as lanes, and an allpass.
#pragma once

#include <algorithm>
#include <array>

#include "dsp/lanes/kernels.h"

namespace dsp {

// Ring of a fixed number of samples, worked on in runs shorter than itself.
template <int kCapacity>
class ReverbRing {
  public:
    void setSize(int samples) { size_ = std::clamp(samples, kMostFrames, kCapacity); }
    void clear() { std::fill_n(buffer_.begin(), size_, 0.0f); }

    // The oldest samples up to the end of the memory, at most `most`; they may be replaced.
    float* run(int most, int& count) {
        count = std::min(most, size_ - index_);
        return &buffer_[index_];
    }
    void advance(int count) {
        index_ += count;
        if (index_ == size_) index_ = 0;
    }

    // The same in any case, through a copy.
    void read(float* out, int count) const;
    void write(const float* in, int count);

  private:
    int size_ = kCapacity;
    int index_ = 0;
    std::array<float, kCapacity> buffer_{};
};

// Sixteen combs with a low-pass (damping) and a 21 Hz high-pass in their feedback loops: the first
// half on the left, the second on the right.
class ReverbCombs {
  public:
    static constexpr int kPerSide = CombLanes::kCount / 2;
    static constexpr int kLongest = 1640;

    void setSize(int comb, int samples) { rings_[comb].setSize(samples); }  // up to kLongest
    void setFeedback(float feedback) { lanes_.feedback = feedback; }
    void setDamp(float damp);  // 0..1
    void mute();               // memory only; the loops' filters keep their state
    void clear();

    // At most kMostFrames of the same input to all; the sums of either side.
    void render(const float* in, int frames, float* left, float* right);

  private:
    const Kernels& kernels_ = kernels();
    CombLanes lanes_;
    std::array<ReverbRing<kLongest>, CombLanes::kCount> rings_;
};

class ReverbAllpass {
  public:
    static constexpr int kLongest = 580;

    void setSize(int samples) { ring_.setSize(samples); }  // up to kLongest
    void clear() { ring_.clear(); }
    void render(float* signal, int frames);

  private:
    static constexpr float kGain = 0.5f;

    const Kernels& kernels_ = kernels();
    ReverbRing<kLongest> ring_;
};

}  // namespace dsp
