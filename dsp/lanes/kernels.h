// The inner loops that run on many lanes at once, and the choice of instruction set they run on.
#pragma once

#include "dsp/lanes/comb_lanes.h"
#include "dsp/lanes/delay_taps.h"
#include "dsp/lanes/tone_runs.h"
#include "dsp/lanes/voice_lanes.h"

namespace dsp {

// Longest run of frames that a kernel is asked for.
constexpr int kMostFrames = 64;

// From a follower of -1 dB on the limiter holds the level by a ratio of 100 to 1: its gain is
// 10^((20 log10(follower) + 1) x -0.0495), which is kLimiterHeld x follower^-0.99.
constexpr double kLimiterThreshold = 0.8912509381337456;
constexpr double kLimiterHeld = 0.8922776195878269;  // 10^-0.0495

// One set a processor family; all give the same bits.
struct Kernels {
    void (*runPhases)(const PhaseRun& run);
    // Operators and key high-passes of the voices whose mask is set; see VoiceRun.
    void (*runFeedback)(const VoiceRun& run);
    void (*runSquared)(const VoiceRun& run);
    // Adds up the voices in the order of their lanes; see VoiceSum.
    void (*sumVoices)(const VoiceSum& sum);
    // Levels that move evenly; see LevelRamps.
    void (*runRamps)(LevelRamps& ramps, int frames);
    // The tone path and the phaser, at most kMostFrames; see their runs.
    void (*runSections)(const SectionRun& run);
    void (*runTone)(const ToneRun& run);
    void (*runPhaser)(const PhaserRun& run);
    // Places the taps; false when a delay is not from 0 to the size.
    bool (*placeTaps)(const DelayTaps& taps);
    // The reverb: all combs, and a run of an allpass on its line and signal in place.
    void (*runCombs)(const CombRun& run);
    void (*runAllpass)(float* line, float* signal, int frames, float gain);
    // Followers of the limiter, in whole vectors of finite numbers, become its gains.
    void (*holdPeaks)(double* followers, int frames);
};

enum class InstructionSet { kBaseline, kAvx2 };

// The widest set that this processor has.
InstructionSet widestInstructionSet();

// What new engines take: the widest set, or after a call of useInstructionSet (for tests, and
// before the engines are made) another that the processor has.
const Kernels& kernels();
void useInstructionSet(InstructionSet set);

}  // namespace dsp
