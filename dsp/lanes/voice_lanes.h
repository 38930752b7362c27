// State of the polyphonic voices side by side: a structure of arrays for the lane kernels.
#pragma once

#include <array>

#include "dsp/biquad.h"

namespace dsp {

constexpr int kVoiceLanes = 48;  // room for all voices, in whole groups of eight
constexpr int kPhases = 12;      // that all voices share
constexpr int kPaddedPhases = 16;

constexpr int kBassLanes = 8;  // room for a whole group

using LaneFloats = std::array<float, kVoiceLanes>;
using LaneMasks = std::array<int, kVoiceLanes>;  // all bits set, or 0

// So many ModuleFMops, one a lane.
template <int kLanes>
struct alignas(32) OperatorLanesOf {
    using Floats = std::array<float, kLanes>;

    OperatorLanesOf();
    void setRate(int lane, float sampleRate);  // Hz, above 0
    void setFrequency(int lane, float hz);     // from 0 up
    void clear(int lane);

    Floats frequency{};
    Floats inverseRate{};
    // Derived from these: feedback gain, and the low-pass coefficient of either tone.
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

// As many Biquads, one a lane.
struct alignas(32) BiquadLanes {
    void setCoefficients(int lane, const BiquadCoefficients& c);
    void clear(int lane);

    LaneFloats b0{}, b1{}, b2{}, a1{}, a2{};
    LaneFloats x1{}, x2{}, y1{}, y2{};
};

struct alignas(32) VoiceLanes {
    OperatorLanes oscA;
    OperatorLanes oscB;
    BiquadLanes keyHighPass;  // behind oscA
    // The pitch: which master phase, times which power of two.
    LaneMasks semitone{};
    LaneFloats octave{};
};

// The shared phases over some frames, in turns: each moves by its step and wraps at 1.
struct PhaseRun {
    double* phases;  // kPhases: before the first frame; then after the last
    const double* steps;
    double* turns;   // kPhases a frame
    float* rounded;  // kPaddedPhases a frame; the padding stays
    int frames;
};

// The operators of the bass, run over some frames beside the voices: in the time these wait.
// Signals stand frame by frame, kBassLanes apart.
struct BassRun {
    OperatorLanesOf<kBassLanes>* operators;
    const int* on;        // as LaneMasks
    const float* phases;  // in turns
    float* out;
};

// A run of the voices over some frames. Signals of lanes stand frame by frame, kVoiceLanes apart;
// lanes whose mask is 0 keep their state, and what is written for them means nothing.
struct VoiceRun {
    VoiceLanes& voices;
    const LaneMasks& on;
    const float* masterPhases;  // kPaddedPhases a frame, in turns
    const float* phasesA;       // of each lane; null: from the master phases
    const float* phasesB;       // of each lane; null: twice those of A
    bool useA;                  // an operator that is not used stands still
    bool useB;
    float* a;
    float* b;
    const BassRun* bass;  // null: none
    int frames;
};

// Sum over the lanes whose mask is set, in their order.
struct VoiceSum {
    const float* lanes;   // as VoiceRun leaves them
    const float* levels;  // one row of levelStride a lane; null: all 1
    int levelStride;
    const LaneMasks& on;
    float* sum;  // has room for whole vectors: up to 7 frames more
    int frames;
};

// Levels moving by the same factor and step for a while: level = level x factor + step.
struct alignas(32) LevelRamps {
    LaneFloats level{};  // before the first frame; then after the last
    LaneFloats factor{};
    LaneFloats step{};
    LaneMasks on{};
    float* rows = nullptr;  // receives one row of rowStride a lane whose mask is set
    int rowStride = 0;
};

}  // namespace dsp
