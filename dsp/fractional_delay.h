// Delay line with a fractional, linearly interpolated read position.
#pragma once

#include <array>
#include <cmath>

#include "dsp/lanes/kernels.h"
#include "dsp/zeroed_samples.h"

namespace dsp {

// y[n] = (1 - f) x[n-d] + f x[n-d+1],  delay = d - f,  0 <= f < 1
//
// Only the constructor allocates.
class FractionalDelay {
  public:
    // Both arguments are in samples; `capacity` (0 or more) is the longest delay. `highestCapacity`
    // reserves memory for setCapacity to grow into.
    FractionalDelay(float delaySamples, int capacity);
    FractionalDelay(float delaySamples, int capacity, int highestCapacity);

    // Changes the longest delay, up to what the constructor reserved, and empties the line. The
    // delay is shortened only if it no longer fits.
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
        put(x);
        return take();
    }

    // tick in two halves, for runs shorter than the delay: read all outputs of a run, then write
    // its inputs.
    void read(float* out, int count);
    void write(const float* in, int count);

    // setDelay and tick for each frame. `count` is at most kMostFrames; `delays` and `out` need
    // room for whole vectors.
    void sweep(const float* delays, const float* in, float* out, int count);

    // sweep in three steps, for runs whose outputs need nothing of their inputs: placeAhead tells
    // whether that is so and changes nothing; then readPlaced and write, in any order.
    struct Places {
        std::array<int, kMostFrames + kMostLanes> index;
        std::array<float, kMostFrames + kMostLanes> fraction;
        TapPlaces kind;
    };
    bool placeAhead(const float* delays, int count, Places& places) const {
        return place(delays, static_cast<float>(count + 2), count, places);
    }
    void readPlaced(const float* delays, Places& places, float* out, int count);

  private:
    static constexpr double kOffset = 1e-38;

    void put(float x) {
        buffer_[writeIndex_] = withOffset(x);
        if (++writeIndex_ == size_) writeIndex_ = 0;
    }
    float take() { return withoutOffset(takeRaw()); }
    float takeRaw() {
        const int next = following(readIndex_);
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

    bool place(const float* delays, float shortest, int count, Places& places) const;
    static void removeOffsets(float* out, int count);
    int following(int index) const { return index + 1 == size_ ? 0 : index + 1; }

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
