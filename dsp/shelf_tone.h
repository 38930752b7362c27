// High shelf at 2300 Hz in 25 steps of 1 dB, walking one step at a time to its target.
#pragma once

#include <array>
#include <mutex>

namespace dsp {

// A biquad normalised by a0.
struct ShelfCoefficients {
    float b0, b1, b2, a1, a2;
};

// Threads: `process` on the audio thread; setControl on any thread at any time; setSampleRate
// not during `process`.
class ShelfTone {
  public:
    static constexpr int kSteps = 25;  // -12..+12 dB

    ShelfTone();

    // 8000..384000 Hz, else ignored. Jumps to the target and clears the filter.
    void setSampleRate(float sampleRate);
    void setControl(float value);  // limited to 0..1; a non-finite value is ignored

    // The step in force as a filter to be run on its own, for no more than steadySamples() samples;
    // it is then handed back.
    struct Filter {
        ShelfCoefficients c;
        float w1 = 0.0f;
        float w2 = 0.0f;

        float tick(float x) {
            const float w = x - c.a1 * w1 - c.a2 * w2;
            const float y = c.b0 * w + c.b1 * w1 + c.b2 * w2;
            w2 = w1;
            w1 = w;
            return y;
        }
    };
    Filter filter() const { return {table_[current_], w1_, w2_}; }
    int steadySamples() const { return countdown_; }
    void advance(const Filter& filter, int samples) {
        w1_ = filter.w1;
        w2_ = filter.w2;
        countdown_ -= samples;
        if (countdown_ == 0) walk();
    }

    void process(float x, float* outPair) {
        Filter one = filter();
        outPair[0] = outPair[1] = one.tick(x);
        advance(one, 1);
    }

    void clear() { w1_ = w2_ = 0.0f; }  // filter state only

    int current() const { return current_; }  // step 0..24 in force
    int target() const { return target_; }

    // RBJ high shelf, slope 1, corner 2300 Hz.
    static void shelfCoefficients(ShelfCoefficients& out, float sampleRate, float gainDb);

  private:
    void walk();

    std::array<ShelfCoefficients, kSteps> table_{};
    float tableRate_ = 0.0f;
    float w1_ = 0.0f;
    float w2_ = 0.0f;
    int countdown_ = 0;  // samples to the next walk
    int interval_ = 0;

    // Both are first taken in the constructor: on Windows the first lock takes memory.
    std::recursive_mutex tableLock_;  // control and table
    float control_ = 0.5f;

    std::recursive_mutex stepLock_;  // the hand-over to `process`
    int current_ = 12;
    int target_ = 12;
    bool walking_ = false;
};

}  // namespace dsp
