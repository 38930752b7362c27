// Delay line with a fractional, linearly interpolated read position.
#pragma once

#include <cmath>

#include "dsp/lanes/kernels.h"
#include "dsp/zeroed_samples.h"

namespace dsp {

// Allocates in the constructor only.
class FractionalDelay {
  public:
    // Delay in samples; capacity in samples (from 0) is the longest delay. With a third argument
    // there is memory for setCapacity to go further.
    FractionalDelay(float delaySamples, int capacity);
    FractionalDelay(float delaySamples, int capacity, int highestCapacity);

    // Works with another part of the memory from now on, all of it at most; empties the line. The
    // delay keeps its value if it still fits.
    void setCapacity(int samples);

    // Refused outside 0..capacity + 1 and for NaN: the line then keeps its read position.
    // Above capacity it is taken as capacity.
    void setDelay(float delaySamples);
    float delay() const { return delay_; }  // samples, as last accepted

    void clear();  // the memory in use only; positions stay
    void reset();  // memory and write position; the accepted delay is derived anew

    // The delay stays fixed between calls of setDelay. An offset of 1e-38 is added on the way
    // in and removed on the way out, so a silent line gives -1e-38.
    float tick(float x) {
        put(x);
        return take();
    }

    // The same apart, in runs that are shorter than the delay: first the outputs, then the inputs
    // that belong to them.
    void read(float* out, int count);
    void write(const float* in, int count);

    // Ticks in place, at most kMostFrames, each with a delay of its own set before; there is room
    // to read 7 delays more.
    void sweep(const float* delays, float* signal, int count);

  private:
    static constexpr double kOffset = 1e-38;
    // From here on a float does not notice the offset.
    static constexpr float kInsensitive = 1e-29f;

    void put(float x) {
        buffer_[writeIndex_] = withOffset(x);
        if (++writeIndex_ == size_) writeIndex_ = 0;
    }
    float take() { return withoutOffset(takeRaw()); }
    float takeRaw() {
        const int next = readIndex_ + 1 == size_ ? 0 : readIndex_ + 1;
        const float output = buffer_[readIndex_] * oneMinusFrac_ + buffer_[next] * frac_;
        readIndex_ = next;
        return output;
    }
    static float withOffset(float x) {
        return std::fabs(x) < kInsensitive ? static_cast<float>(x + kOffset) : x;
    }
    static float withoutOffset(float output) {
        if (std::fabs(output) >= kInsensitive) return output;
        const double kept = std::fabs(output) >= kOffset ? output : 0.0;
        return static_cast<float>(kept - kOffset);
    }

    static void removeOffsets(float* out, int count);
    bool keepsClear(const float* delays, int count) const;

    const Kernels& kernels_ = kernels();
    int size_;  // slots in use: capacity + 1
    ZeroedSamples buffer_;
    int writeIndex_ = 0;
    int readIndex_ = 0;
    float frac_ = 0.0f;
    float oneMinusFrac_ = 1.0f;
    float delay_ = 0.0f;
};

}  // namespace dsp
