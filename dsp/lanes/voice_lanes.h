// State of the polyphonic voices as a structure of arrays, and the arguments of their kernels.
#pragma once

#include <array>
#include <utility>

#include "dsp/biquad.h"
#include "dsp/lanes/width.h"
#include "dsp/pitched_oscillator.h"
#include "dsp/square_lfo.h"

namespace dsp {

constexpr int kVoiceLanes = 48;  // 44 voices in whole vectors
constexpr int kPhases = 12;      // shared by all voices: one per semitone
constexpr int kPaddedPhases = 16;

constexpr int kBassLanes = kMostLanes;  // two operators in a whole vector

using LaneFloats = std::array<float, kVoiceLanes>;
using LaneMasks = std::array<int, kVoiceLanes>;  // all bits set, or 0

// kLanes operators (see ModuleFMop) as a structure of arrays.
template <int kLanes>
struct alignas(kVectorBytes) OperatorLanesOf {
    using Floats = std::array<float, kLanes>;

    OperatorLanesOf();
    void setRate(int lane, float sampleRate);  // Hz, above 0
    void setFrequency(int lane, float hz);     // from 0 up
    void clear(int lane);
    // Operators change places, but for their frequency and rate.
    template <typename Others>
    void exchange(int lane, Others& others, int other) {
        std::swap(gain[lane], others.gain[other]);
        std::swap(increment[lane], others.increment[other]);
        std::swap(previous[lane], others.previous[other]);
        std::swap(low[lane], others.low[other]);
        std::swap(high[lane], others.high[other]);
    }

    Floats frequency{};
    Floats inverseRate{};
    // Derived from these: the feedback gain, and the limited increment of each tone.
    Floats gain{};
    Floats increment{};
    Floats squaredIncrement{};

    Floats previous{};
    Floats low{};
    Floats high{};

  private:
    void update(int lane);
};

using OperatorLanes = OperatorLanesOf<kVoiceLanes>;

// kVoiceLanes biquads as a structure of arrays.
struct alignas(kVectorBytes) BiquadLanes {
    void setCoefficients(int lane, const BiquadCoefficients& c);
    void clear(int lane);

    LaneFloats b0{}, b1{}, b2{}, a1{}, a2{};
    LaneFloats x1{}, x2{}, y1{}, y2{};
};

struct alignas(kVectorBytes) VoiceLanes {
    OperatorLanes oscA;
    OperatorLanes oscB;
    BiquadLanes keyHighPass;  // follows oscA
    // The pitch: the index of a master phase, and the power of two that multiplies it.
    LaneMasks semitone{};
    LaneFloats octave{};
};

// Work that has nothing to do with the phases, but waits for its own previous sample as they do:
// two modulators, whose squares hold for the run. Their counters stand still; see SquareLfo::skip.
struct BesidePhases {
    SquareLfo& slow;
    SquareLfo& fast;
    float* slowRow;
    float* fastRow;
};

// The shared phases, in turns: each advances by its step per frame and wraps at 1.
struct PhaseRun {
    double* phases;  // kPhases; in: before the first frame, out: after the last
    const double* steps;
    double* turns;               // kPhases per frame; null: not wanted
    float* rounded;              // kPaddedPhases per frame; the padding is left alone
    const BesidePhases* beside;  // null: none
    int frames;
};

// Phases of voices at a distance from the shared ones: `octaves` times the voice's phase, plus
// `offset`, rounded once. Lanes whose mask is 0 may be left alone.
struct PhaseOffset {
    const VoiceLanes& voices;
    const LaneMasks& on;
    const double* turns;  // PhaseRun::turns
    double octaves;       // a power of two
    double offset;        // turns
    float* out;           // turns, kVoiceLanes per frame
    int frames;
};

// The bass operators. They run together with the voices, in idle lanes or in their waits. Signals
// have kBassLanes values per frame, of which the first two count, and room for a frame in front.
struct BassRun {
    OperatorLanesOf<kBassLanes>* operators;
    const int* on;        // masks, as in LaneMasks
    const float* phases;  // turns, less ModuleFMop::kPhaseOffset
    float* out;
};

// The operators and key high-passes of the voices. Signals have kVoiceLanes values per frame. Lanes
// whose mask is 0 keep their state; their output is meaningless.
struct VoiceRun {
    VoiceLanes& voices;
    const LaneMasks& on;
    const float* masterPhases;  // turns, kPaddedPhases per frame
    const float* phasesA;       // turns; null: derived from the master phases
    const float* phasesB;       // turns; null: twice those of A
    bool useA;                  // an unused operator keeps its state
    bool useB;
    float* a;
    float* b;
    const BassRun* bass;  // null: none
    int frames;
};

// The wavetable oscillators of the voices. Lanes whose mask is 0 keep their state; their output may
// be left alone.
struct TableRun {
    PitchedOscillator* oscillatorsA;  // one for each lane that is ever on
    PitchedOscillator* oscillatorsB;
    const LaneMasks& on;
    double bendRatio;
    float* a;  // kVoiceLanes per frame
    float* b;
    int frames;
};

// Adds up the lanes whose mask is set, in their order.
struct VoiceSum {
    const float* lanes;   // VoiceRun::a or b
    const float* levels;  // one row per lane, levelStride apart; null: all 1
    int levelStride;
    const LaneMasks& on;
    float* sum;  // needs room for whole vectors
    int frames;
};

// Levels on a ramp: level[n] = level[n-1] x factor + step.
struct alignas(kVectorBytes) LevelRamps {
    LaneFloats level{};  // in: before the first frame, out: after the last
    LaneFloats factor{};
    LaneFloats step{};
    LaneMasks on{};
    float* rows = nullptr;  // receives one row per lane whose mask is set, rowStride apart
    int rowStride = 0;
};

}  // namespace dsp
