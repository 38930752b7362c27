// Stereo phaser: 2 or 4 first-order allpasses per channel, swept by a triangle over a table.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstdint>
#include <mutex>

namespace reference {

//     x    = in + feedback x previous chain output
//     y    = a (x + y[n-1]) - x[n-1], once per stage in series
//     out  = in + chain output
//
// Threads: `process` and `clear` belong to the audio thread. setDepth, setRate and setFeedback may
// be called from any thread at any time and take effect with the next sample. setSampleRate and
// setStages must not run during `process`. A setter that returns false changed nothing.
class StereoPhaser {
  public:
    StereoPhaser();

    // 8000..384000 Hz. Restarts the sweep at its centre, rising. Unless `keepParams` is set, resets
    // the parameters to 2 stages, depth 0.5, rate 0.1 and feedback 0.
    bool setSampleRate(float sampleRate, bool keepParams);
    bool setStages(float value);       // 0..1: 2 stages below 0.5, else 4
    bool setDepth(float depth);        // 0..1: sweeps 2 x depth octaves up and down
    bool setRate(float rate);          // 0..1: sweep speed
    bool setFeedback(float feedback);  // 0..0.9
    void clear();                      // allpass states and feedback words; settings stay

    void process(float inL, float inR, float* outL, float* outR) {
        const float feedback = feedback_.load(std::memory_order_relaxed);
        float xL = feedback * lastOutL_ + inL + kAntiDenormal;
        float xR = feedback * lastOutR_ + inR + kAntiDenormal;
        for (int k = 0; k < stageCount_; ++k) {
            const float a = coefficientAt(kTableOffsets[k]);
            xL = stages_[k].left.tick(xL, a);
            xR = stages_[k].right.tick(xR, a);
        }
        lastOutL_ = xL;
        lastOutR_ = xR;
        *outL = xL + inL;
        *outR = xR + inR;
        advanceSweep();
        if (sweepPending_.load(std::memory_order_relaxed)) takePendingSweep();
    }

  private:
    // 11 octaves upward from 20 Hz in steps of 1/256 octave.
    static constexpr int kStepsPerOctave = 256;
    static constexpr int kTableSize = 11 * kStepsPerOctave;
    static constexpr int kMaxStages = 4;
    static constexpr std::array<int, kMaxStages> kTableOffsets = {0, 0, 233, 233};
    static constexpr float kAntiDenormal = 1e-18f;

    struct Allpass {
        float previousIn = 0.0f;
        float previousOut = 0.0f;

        float tick(float x, float a) {
            previousOut = (x + previousOut) * a - previousIn;
            previousIn = x;
            return previousOut;
        }
    };
    struct StereoStage {
        Allpass left;
        Allpass right;
    };

    // Table steps in 32.32 fixed point; the sign of the increment is the direction.
    struct Sweep {
        std::int64_t low = 0;
        std::int64_t high = 0;
        std::int64_t increment = 0;
    };

    float coefficientAt(int offset) const {
        const int index = static_cast<int>(sweepPosition_ >> 32) + offset;
        return table_[std::clamp(index, 0, kTableSize - 1)];
    }

    // The position holds for one sample when the sweep turns.
    void advanceSweep() {
        const std::int64_t next = sweepPosition_ + sweep_.increment;
        const bool turns = sweep_.increment > 0 ? next >= sweep_.high : next <= sweep_.low;
        if (turns) {
            sweep_.increment = -sweep_.increment;
        } else {
            sweepPosition_ = next;
        }
    }

    void takePendingSweep();
    bool setSweepParam(float& param, float value);
    Sweep computeSweep() const;
    void buildTable(double sampleRate);

    std::array<float, kTableSize> table_{};
    Sweep sweep_;
    std::int64_t sweepPosition_ = 0;
    std::array<StereoStage, kMaxStages> stages_;
    int stageCount_ = 0;
    std::atomic<float> feedback_{0.0f};
    float lastOutL_ = 0.0f;
    float lastOutR_ = 0.0f;

    std::recursive_mutex setupLock_;  // table and stages
    std::recursive_mutex sweepLock_;  // the fields below
    float sampleRate_ = 44100.0f;
    float depth_ = 0.5f;
    float rate_ = 0.1f;
    Sweep pendingSweep_;
    std::atomic<bool> sweepPending_{false};
};

}  // namespace reference
