// The delay lines of the reverb: combs in lanes, and an allpass.
#pragma once

#include <algorithm>
#include <array>

#include "dsp/lanes/kernels.h"

namespace dsp {

// Ring of a fixed number of samples, whose oldest ones are replaced in place.
template <int kCapacity>
class ReverbRing {
  public:
    void setSize(int samples) { size_ = std::clamp(samples, kMostFrames, kCapacity); }
    void clear() { std::fill_n(buffer_.begin(), size_, 0.0f); }

    // Gives the oldest `count` samples, at most kMostFrames, in a row with room for whole vectors.
    // Replace them, then call end with the same count.
    float* begin(int count) {
        const int beyond = index_ + count - size_;
        if (beyond > 0) std::copy_n(buffer_.data(), beyond, &buffer_[size_]);
        float* const row = &buffer_[index_];
        if (count % kMostLanes != 0) std::copy_n(row + count, kMostLanes, following_.data());
        return row;
    }
    void end(int count) {
        if (count % kMostLanes != 0) {
            std::copy_n(following_.data(), kMostLanes, &buffer_[index_ + count]);
        }
        index_ += count;
        if (index_ < size_) return;
        index_ -= size_;
        std::copy_n(&buffer_[size_], index_, buffer_.data());
    }

  private:
    int size_ = kCapacity;
    int index_ = 0;
    // A run that wraps goes on in the margin, which holds a copy of the beginning meanwhile.
    std::array<float, kCapacity + kMostFrames + kMostLanes> buffer_{};
    std::array<float, kMostLanes> following_{};  // what whole vectors may overwrite after a run
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

    // A run takes two steps, because no output depends on an input of the same run: begin gives the
    // outputs, up to kMostFrames at a time; feed gives `in` to all combs and does other work
    // meanwhile, for which their waits leave room.
    struct Run {
        std::array<float*, CombLanes::kCount> rows;
        int frames;
    };
    void begin(Run& run, int frames);
    void feed(Run& run, const float* in, const BesideCombs& beside);

  private:
    const Kernels& kernels_ = kernels();
    CombLanes lanes_;
    std::array<ReverbRing<kLongest>, CombLanes::kCount> rings_;
};

// d = ring.read(), out = d - gain x in, ring.write(in + gain x d)
using ReverbAllpass = ReverbRing<580>;

}  // namespace dsp
