// Delay line with a fractional, linearly interpolated read position.
#pragma once

#include <cmath>
#include <vector>

namespace reference {

// Allocates in the constructor only.
class FractionalDelay {
  public:
    // Delay in samples; capacity in samples (from 0) is the longest delay.
    FractionalDelay(float delaySamples, int capacity);

    // Works with less of the memory from now on, at most the constructor's capacity; empties the
    // line. The delay keeps its value if it still fits.
    void setCapacity(int samples);

    // Refused outside 0..capacity + 1 and for NaN: the line then keeps its read position.
    // Above capacity it is taken as capacity.
    void setDelay(float delaySamples);
    float delay() const { return delay_; }  // samples, as last accepted

    void clear();  // memory only; positions stay
    void reset();  // memory and write position; the accepted delay is derived anew

    // The delay stays fixed between calls of setDelay. An offset of 1e-38 is added on the way
    // in and removed on the way out, so a silent line gives -1e-38.
    float tick(float x) {
        buffer_[writeIndex_] = static_cast<float>(x + kOffset);
        if (++writeIndex_ == size_) writeIndex_ = 0;

        const int next = readIndex_ + 1 == size_ ? 0 : readIndex_ + 1;
        const float output = buffer_[readIndex_] * oneMinusFrac_ + buffer_[next] * frac_;
        readIndex_ = next;
        const double kept = std::fabs(output) >= kOffset ? output : 0.0;
        return static_cast<float>(kept - kOffset);
    }

  private:
    static constexpr double kOffset = 1e-38;

    int size_;  // slots in use: capacity + 1
    std::vector<float> buffer_;
    int writeIndex_ = 0;
    int readIndex_ = 0;
    float frac_ = 0.0f;
    float oneMinusFrac_ = 1.0f;
    float delay_ = 0.0f;
};

}  // namespace reference
