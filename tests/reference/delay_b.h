// Ring buffer for whole-sample delays, with a working length that can change.
#pragma once

#include <array>

namespace reference {

class DelayB {
  public:
    static constexpr int kCapacity = 192000;

    virtual ~DelayB() = default;

    void setLength(int samples);  // limited to 1..kCapacity
    int length() const { return length_; }
    void clear();  // contents and position; the length stays

    // Delays by exactly `length` samples.
    float readThenWrite(float x) {
        const float y = buffer_[index_];
        buffer_[index_] = x;
        advance();
        return y;
    }

    // Delays by `length` - 1 samples: reads the oldest remaining entry.
    float writeThenRead(float x) {
        buffer_[index_] = x;
        advance();
        return buffer_[index_];
    }

  private:
    void advance() {
        if (++index_ == length_) index_ = 0;
    }

    int index_ = 0;
    int length_ = 512;
    std::array<float, kCapacity> buffer_{};
};

}  // namespace reference
