// Stereo phaser: 2 or 4 first-order allpasses per channel, swept by a triangle over a table.
#pragma once

#include <algorithm>
#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <mutex>

#include "dsp/stereo.h"

namespace dsp {

// How often a second the sweep crosses half its width, for a rate of 0..1; one turn crosses it four
// times.
constexpr double phaserSpeed(float rate) {
    return rate * 9.99 + 0.1;
}
constexpr double phaserSweepHz(float rate) {
    return phaserSpeed(rate) / 4.0;
}

// Per sample and side, with allpass coefficient a:
//
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

    int stageCount() const { return stageCount_; }

    // The allpasses as a value for inner loops. Tick a Run for at most steadySamples() samples,
    // then hand it back to advance(). `kStages` must equal stageCount().
    template <int kStages>
    class Run;
    int steadySamples(int wanted) const {
        return sweepPending_.load(std::memory_order_relaxed) ? 1 : wanted;
    }
    template <int kStages>
    void advance(const Run<kStages>& run) {
        for (int k = 0; k < kStages; ++k) {
            stages_[k] = {k == 0 ? run.previousIn_ : run.outs_[k - 1], run.outs_[k]};
        }
        lastOut_ = run.lastOut_;
        sweep_ = run.sweep_;
        sweepPosition_ = run.position_;
        // A pending sweep takes over after the run that saw it.
        if (run.pending_) takePendingSweep();
    }

    void process(float inL, float inR, float* outL, float* outR) {
        const StereoFloat in = stereo(inL, inR);
        const StereoFloat out = stageCount_ == 2 ? processStages<2>(in) : processStages<4>(in);
        *outL = out[0];
        *outR = out[1];
    }

  private:
    // 11 octaves upward from 20 Hz in steps of 1/256 octave.
    static constexpr int kStepsPerOctave = 256;
    static constexpr int kTableSize = 11 * kStepsPerOctave;
    static constexpr int kMaxStages = 4;
    static constexpr int kUpperOffset = 233;  // table steps from stages 1, 2 up to stages 3, 4
    static constexpr float kAntiDenormal = 1e-18f;

    struct Allpass {
        StereoFloat previousIn{};
        StereoFloat previousOut{};
    };

    // Table steps in 32.32 fixed point; the sign of the increment is the direction.
    struct Sweep {
        std::int64_t low = 0;
        std::int64_t high = 0;
        std::int64_t increment = 0;
    };

    // The sweep never leaves the table; see computeSweep.
    float coefficientAt(std::ptrdiff_t step) const {
        return table_[static_cast<std::size_t>(step)];
    }

    // The position holds for one sample when the sweep turns.
    static void move(Sweep& sweep, std::int64_t& position) {
        const std::int64_t next = position + sweep.increment;
        const bool turns = sweep.increment > 0 ? next >= sweep.high : next <= sweep.low;
        if (turns) {
            sweep.increment = -sweep.increment;
        } else {
            position = next;
        }
    }

    template <int kStages>
    StereoFloat processStages(StereoFloat in);
    void takePendingSweep();
    bool setSweepParam(float& param, float value);
    Sweep computeSweep() const;
    void buildTable(double sampleRate);

    std::array<float, kTableSize> table_{};
    double tableRate_ = 0.0;
    Sweep sweep_;
    std::int64_t sweepPosition_ = 0;
    std::array<Allpass, kMaxStages> stages_;
    int stageCount_ = 0;
    std::atomic<float> feedback_{0.0f};
    StereoFloat lastOut_{};

    // The constructor takes both once, because on Windows the first lock allocates.
    std::recursive_mutex setupLock_;  // table and stages
    std::recursive_mutex sweepLock_;  // the fields below
    float sampleRate_ = 44100.0f;
    float depth_ = 0.5f;
    float rate_ = 0.1f;
    Sweep pendingSweep_;
    std::atomic<bool> sweepPending_{false};
};

template <int kStages>
class StereoPhaser::Run {
  public:
    explicit Run(const StereoPhaser& phaser)
        : phaser_(phaser),
          pending_(phaser.sweepPending_.load(std::memory_order_relaxed)),
          feedback_(phaser.feedback_.load(std::memory_order_relaxed)),
          previousIn_(phaser.stages_[0].previousIn),
          lastOut_(phaser.lastOut_),
          sweep_(phaser.sweep_),
          position_(phaser.sweepPosition_) {
        for (int k = 0; k < kStages; ++k) outs_[k] = phaser.stages_[k].previousOut;
    }

    StereoFloat tick(StereoFloat in) {
        const std::ptrdiff_t step = static_cast<std::ptrdiff_t>(position_ >> 32);
        const float coefficients[] = {phaser_.coefficientAt(step),
                                      phaser_.coefficientAt(step + kUpperOffset)};
        StereoFloat x = feedback_ * lastOut_ + in + kAntiDenormal;
        StereoFloat before = previousIn_;  // the stage's input one sample ago
        previousIn_ = x;
        for (int k = 0; k < kStages; ++k) {
            const StereoFloat y = (x + outs_[k]) * coefficients[k / 2] - before;
            before = outs_[k];
            x = outs_[k] = y;
        }
        lastOut_ = x;
        move(sweep_, position_);
        return x + in;
    }

  private:
    friend class StereoPhaser;

    const StereoPhaser& phaser_;
    const bool pending_;
    const float feedback_;
    StereoFloat previousIn_;     // of the first stage
    StereoFloat outs_[kStages];  // also the next stage's previous input
    StereoFloat lastOut_;
    Sweep sweep_;
    std::int64_t position_;
};

template <int kStages>
StereoFloat StereoPhaser::processStages(StereoFloat in) {
    Run<kStages> run(*this);
    const StereoFloat out = run.tick(in);
    advance(run);
    return out;
}

}  // namespace dsp
