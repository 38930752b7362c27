// The delay lines of the reverb: combs in lanes, and an allpass.
#pragma once

#include <algorithm>
#include <array>

#include "dsp/lanes/kernels.h"

namespace dsp {

// Ring of a fixed number of samples. Runs must be shorter than the ring.
template <int kCapacity>
class ReverbRing {
  public:
    void setSize(int samples) { size_ = std::clamp(samples, kMostFrames, kCapacity); }
    void clear() { std::fill_n(buffer_.begin(), size_, 0.0f); }

    // The oldest samples, for replacing in place: `count` of them, at most `most`, up to where the
    // memory wraps. Call advance(count) afterwards.
    float* run(int most, int& count) {
        count = std::min(most, size_ - index_);
        return &buffer_[index_];
    }
    void advance(int count) {
        index_ += count;
        if (index_ == size_) index_ = 0;
    }

    // The oldest `count` samples through a copy, across the wrap. write replaces them and advances.
    void read(float* out, int count) const;
    void write(const float* in, int count);

  private:
    int size_ = kCapacity;
    int index_ = 0;
    std::array<float, kCapacity> buffer_{};
};

// Sixteen combs, eight for the left and then eight for the right. A low-pass (damping) and a 21 Hz
// high-pass sit in each feedback loop:
//
//     y       = ring.read()
//     low     = y (1 - damp) + store x damp
//     offset += (low - offset) x 21 x 2 pi / 44100
//     store   = low - offset
//     ring.write(in + store x feedback)
class ReverbCombs {
  public:
    static constexpr int kPerSide = CombLanes::kCount / 2;
    static constexpr int kLongest = 1640;

    void setSize(int comb, int samples) { rings_[comb].setSize(samples); }  // up to kLongest
    void setFeedback(float feedback) { lanes_.feedback = feedback; }
    void setDamp(float damp);  // 0..1
    void mute();               // rings only; the loops' filters keep their state
    void clear();

    // A run takes two steps, because no output depends on an input of the same run: sum writes the
    // sum of each side, up to kMostFrames at a time; feed gives `in` to all combs and
    // does other work meanwhile, for which their waits leave room.
    struct Run {
        static constexpr int kStride = kMostFrames + kMostLanes;
        alignas(kVectorBytes) std::array<float, CombLanes::kCount * kStride> copies;
        std::array<float*, CombLanes::kCount> rows;
        std::array<bool, CombLanes::kCount> copied;
        int frames;
    };
    void sum(Run& run, int frames, float* left, float* right);
    void feed(Run& run, const float* in, const BesideCombs& beside);

  private:
    const Kernels& kernels_ = kernels();
    CombLanes lanes_;
    std::array<ReverbRing<kLongest>, CombLanes::kCount> rings_;
};

// d = ring.read(), out = d - gain x in, ring.write(in + gain x d)
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
