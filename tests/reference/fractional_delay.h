// Delay line with a fractional, linearly interpolated read position.
#pragma once

#include <cmath>
#include <vector>

namespace reference {

// y[n] = (1 - f) x[n-d] + f x[n-d+1],  delay = d - f,  0 <= f < 1
//
// Only the constructor allocates.
class FractionalDelay {
  public:
    // Both arguments are in samples; `capacity` (0 or more) is the longest delay.
    FractionalDelay(float delaySamples, int capacity);

    // Changes the longest delay, up to the constructor's capacity, and empties the line. The delay
    // is shortened only if it no longer fits.
    void setCapacity(int samples);

    // Outside 0..capacity + 1, and for NaN, the call is ignored. Delays above capacity count as
    // capacity.
    void setDelay(float delaySamples);
    float delay() const { return delay_; }  // samples

    void clear();  // contents only; positions stay
    void reset();  // contents and positions; the delay stays

    // The input gains an offset of 1e-38 against denormals and the output loses it again, so a
    // silent line gives -1e-38.
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
