// High shelf at 2300 Hz in 25 steps of 1 dB. It walks to its target one step at a time.
#pragma once

#include <array>
#include <mutex>

namespace dsp {

// A biquad divided by a0, run in direct form II:
// w = x - a1 w1 - a2 w2,  y = b0 w + b1 w1 + b2 w2
struct ShelfCoefficients {
    float b0, b1, b2, a1, a2;
};

// Threads: `process` and the run interface belong to the audio thread. setControl may be called
// from any thread at any time; setSampleRate must not run during `process`.
class ShelfTone {
  public:
    static constexpr int kSteps = 25;  // -12..+12 dB

    ShelfTone();

    // Jumps to the target and clears the filter. Rates outside 8000..384000 Hz are ignored.
    void setSampleRate(float sampleRate);
    void setControl(float value);  // limited to 0..1; a non-finite value is ignored

    // The current step as a filter. Tick it for at most steadySamples() samples, then hand it back
    // to advance().
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

    int current() const { return current_; }  // step 0..24
    int target() const { return target_; }

    // RBJ high shelf, slope 1, corner 2300 Hz. With A = 10^(gainDb / 40), w = 2 pi x 2300 / rate
    // and beta = sin(w) sqrt(2 A), before the division by a0:
    //
    //     b0 = A ((A + 1) + (A - 1) cos w + beta)     a0 = (A + 1) - (A - 1) cos w + beta
    //     b1 = -2 A ((A - 1) + (A + 1) cos w)         a1 = 2 ((A - 1) - (A + 1) cos w)
    //     b2 = A ((A + 1) + (A - 1) cos w - beta)     a2 = (A + 1) - (A - 1) cos w - beta
    static void shelfCoefficients(ShelfCoefficients& out, float sampleRate, float gainDb);

  private:
    void walk();

    std::array<ShelfCoefficients, kSteps> table_{};
    float tableRate_ = 0.0f;
    float w1_ = 0.0f;
    float w2_ = 0.0f;
    int countdown_ = 0;  // samples until the next step
    int interval_ = 0;   // samples between steps

    // The constructor takes both once, because on Windows the first lock allocates.
    std::recursive_mutex tableLock_;  // control and table
    float control_ = 0.5f;

    std::recursive_mutex stepLock_;  // what `process` reads
    int current_ = 12;
    int target_ = 12;
    bool walking_ = false;
};

}  // namespace dsp
