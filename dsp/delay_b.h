// Ring of samples with a fixed memory and a working length, for whole-sample delays.
#pragma once

#include "dsp/zeroed_samples.h"

namespace dsp {

class DelayB {
  public:
    static constexpr int kCapacity = 192000;

    // Capacity in samples, 1..kCapacity. Allocates here only.
    explicit DelayB(int capacity = kCapacity);
    virtual ~DelayB() = default;

    void setLength(int samples);  // limited to 1..capacity
    int length() const { return length_; }
    void clear();  // all that was in use, and the index; the length stays

    // Delays by exactly `length` samples.
    float readThenWrite(float x) {
        const float y = buffer_[index_];
        buffer_[index_] = x;
        advance();
        return y;
    }

    // The same for many in place.
    void exchange(float* signal, int count);

  private:
    void advance() {
        if (++index_ == length_) index_ = 0;
    }

    int index_ = 0;
    int length_;
    int used_;  // the longest length since the last clear
    ZeroedSamples buffer_;
};

}  // namespace dsp
