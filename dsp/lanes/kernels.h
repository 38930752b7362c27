// The inner loops that run in lanes, and the choice of their instruction set.
#pragma once

#include "dsp/lanes/chorus_runs.h"
#include "dsp/lanes/comb_lanes.h"
#include "dsp/lanes/delay_taps.h"
#include "dsp/lanes/limiter_runs.h"
#include "dsp/lanes/mix_run.h"
#include "dsp/lanes/room_runs.h"
#include "dsp/lanes/tone_runs.h"
#include "dsp/lanes/voice_lanes.h"

namespace dsp {

// Longest run of a kernel, in frames.
constexpr int kMostFrames = 128;

// One table per instruction set; all give the same bits.
struct Kernels {
    // The shared phases, and the phases of voices at a distance from them.
    void (*runPhases)(const PhaseRun& run);
    void (*offsetPhases)(const PhaseOffset& run);
    // Operators and key high-passes of the voices; see VoiceRun.
    void (*runFeedback)(const VoiceRun& run);
    void (*runSquared)(const VoiceRun& run);
    void (*runTables)(const TableRun& run);
    // Adds up the voices in the order of their lanes; see VoiceSum.
    void (*sumVoices)(const VoiceSum& sum);
    // Envelope levels on a ramp; see LevelRamps. sumRamps writes no rows but adds the levels of all
    // lanes, in their order; `sum` needs room for whole vectors. Lanes whose mask is 0 stand.
    void (*runRamps)(LevelRamps& ramps, int frames);
    void (*sumRamps)(LevelRamps& ramps, float* sum, int frames);
    // The tone path and the phaser; see SectionRun, MixRun, ToneRun and PhaserRun. mixSections
    // returns the state of the Random after the last frame.
    void (*runSections)(const SectionRun& run);
    std::uint32_t (*mixSections)(const MixRun& run);
    void (*runTone)(const ToneRun& run);
    void (*runPhaser)(const PhaserRun& run);
    // Both in one loop, for a phaser of four stages: left and right hold what the chorus' taps
    // give, to which the tone, scaled by -dryGain / 2, is added.
    void (*runToneAndPhaser)(const ToneRun& tone, const PhaserRun& phaser, float dryGain);
    // A delay line: writes and reads a part without a wrap; places taps that sweep, then reads
    // them. All but placeTaps tell whether any sample is below kInsensitive or NaN.
    bool (*writeLine)(const float* in, int frames, float* line);
    bool (*readLine)(const float* line, float fraction, int frames, float* out);
    TapPlaces (*placeTaps)(const DelayTaps& taps);
    bool (*readTaps)(const float* line, const int* index, const float* fraction, int frames,
                     float* out);
    // The ensemble chorus: how each tap is delayed and scaled, and the mix of the taps.
    void (*modulateTaps)(const ChorusModulation& run);
    void (*mixTaps)(const ChorusMix& run);
    // The spring before the room, the room, what follows it, and the input of its combs; see
    // SpringEntry, RoomRun, RoomExit and CombRun. runRoom tells whether any frame is above
    // kSilentInput or kSilentOutput.
    void (*enterSpring)(const SpringEntry& run);
    bool (*runRoom)(const RoomRun& run);
    float (*leaveRoom)(const RoomExit& run);
    void (*runCombs)(const CombRun& run);
    // The limiter around its follower, and its gain for one follower; see LimiterEntry and
    // LimiterExit. enterLimiter tells whether all levels are finite.
    bool (*enterLimiter)(const LimiterEntry& run);
    int (*leaveLimiter)(const LimiterExit& run);
    double (*limiterGain)(double follower);
    // The bits of the largest magnitude. The samples need no room.
    int (*peakBits)(const float* samples, int count);
};

enum class InstructionSet { kBaseline, kAvx2, kAvx512 };

// The widest set that this processor supports.
InstructionSet widestInstructionSet();

// The kernels that new engines use. Tests may call useInstructionSet before they create an engine;
// without it the widest set applies. A set that the processor lacks is narrowed.
const Kernels& kernels();
void useInstructionSet(InstructionSet set);

}  // namespace dsp
