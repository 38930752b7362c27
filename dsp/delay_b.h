// Ring buffer for whole-sample delays, with a working length that can change.
#pragma once

#include <algorithm>
#include <utility>

#include "dsp/lanes/width.h"
#include "dsp/zeroed_samples.h"

namespace dsp {

class DelayB {
  public:
    static constexpr int kCapacity = 192000;

    // `capacity` is in samples, 1..kCapacity. Only the constructor allocates.
    explicit DelayB(int capacity = kCapacity);
    virtual ~DelayB() = default;

    void setLength(int samples);  // limited to 1..capacity
    int length() const { return length_; }
    void clear();  // contents and position; the length stays

    // Delays by exactly `length` samples.
    float readThenWrite(float x) {
        const float y = buffer_[index_];
        buffer_[index_] = x;
        advance();
        return y;
    }

    // Calls act(t, sample) for t = 0 .. count - 1: `sample` holds what leaves the ring, which `act`
    // replaces by what enters.
    template <typename Act>
    void replace(int count, const Act& act) {
        for (int t = 0; t < count;) {
            const int until = std::min(count, t + length_ - index_);
            float* sample = &buffer_[index_];
            index_ += until - t;
            for (; t < until; ++t) act(t, *sample++);
            if (index_ == length_) index_ = 0;
        }
    }
    // readThenWrite for `count` samples in place.
    void exchange(float* signal, int count) {
        replace(count, [&](int t, float& sample) { std::swap(signal[t], sample); });
    }
    // The same without a copy: gives the oldest `count` samples for replacing by whole vectors, or
    // null if they do not lie in a row; then call skip.
    float* row(int count) {
        const bool fits = count % kMostLanes == 0 && index_ + count <= length_;
        return fits ? &buffer_[index_] : nullptr;
    }
    void skip(int count) {
        index_ += count;
        if (index_ == length_) index_ = 0;
    }

  private:
    void advance() {
        if (++index_ == length_) index_ = 0;
    }

    int index_ = 0;
    int length_;
    int used_;  // the longest length since the last clear: what clear has to empty
    ZeroedSamples buffer_;
};

}  // namespace dsp
