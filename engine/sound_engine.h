// What notes, parameters and a renderer ask of a sound engine, however it computes its samples.
#pragma once

#include <limits>

#include "engine/envelope_settings.h"
#include "engine/sections.h"

namespace engine {

// Rates outside are refused; all memory is sized for the highest.
constexpr double kLowestRate = 1000.0;
constexpr double kHighestRate = 768000.0;
constexpr bool isAcceptedRate(double rate) {
    return rate >= kLowestRate && rate <= kHighestRate;
}

// Changes of other threads may wait for so many frames, not longer.
constexpr int kLongestSegment = 64;

// What is due before each frame of a block; the renderer asks it, and renders on in one piece up
// to the frame that it answers.
class EventSource {
  public:
    static constexpr int kNothingDue = std::numeric_limits<int>::max();

    virtual ~EventSource() = default;
    // Delivers everything due up to the frame, counted from 1. Returns the later frame at which
    // something is due next, or kNothingDue.
    virtual int dispatchUpTo(int frame) = 0;
};

enum class Waveform { kFeedback, kTable, kSquaredFeedback };

class ChorusControl {
  public:
    virtual ~ChorusControl() = default;
    virtual void setOn(bool on) = 0;
    virtual void setSlowDepth(float depth) = 0;
    virtual void setFastDepth(float depth) = 0;
    virtual void setWide(float wide) = 0;      // scales the range of the delays: 1..2
    virtual void setStereo(float amount) = 0;  // 0..1: how far apart the outer taps stand
    virtual void setDryAdd(float amount) = 0;
};

class PhaserControl {
  public:
    virtual ~PhaserControl() = default;
    // Settings and sweep as in a new engine: those that a program leaves alone, and the sweep that
    // runs until the next sample, are then nobody else's.
    virtual void setDefaults() = 0;
    virtual void setOn(bool on) = 0;
    virtual void setRateControl(float control) = 0;
    virtual void setDepthControl(float control) = 0;
    virtual void setFeedback(float amount) = 0;  // 0..0.9; other values are refused
    // 0..1: from a quarter on four stages, from a half on also the low-pass ahead.
    virtual void setStages(float control) = 0;
};

struct ReverbSettings {
    float mix = 0.0f;
    float size = 0.0f;
    float brite = 0.0f;
    float spring = 0.0f;  // how much of the side signal enters the spring; out at 0.1 and below
};

// Levels, damping and room each follow from several settings.
class ReverbControl {
  public:
    virtual ~ReverbControl() = default;
    // Switches the stage and empties the reverb, also when nothing changes.
    virtual void setOn(bool on) = 0;
    // All at once: nothing is left of earlier settings.
    virtual void set(const ReverbSettings& settings) = 0;
    // One of them, beside the others as they are.
    virtual void setMix(float mix) = 0;
    virtual void setSize(float size) = 0;
    virtual void setBrite(float brite) = 0;
    // A weak spring leaves the room alone, also one that a strong spring has opened: kept.
    virtual void setSpring(float amount) = 0;
};

// One thread at a time calls anything but the queries; settings take effect with the next sample.
// Controls are normalised (0..1, finite), other quantities as named. Nothing allocates.
class SoundEngine {
  public:
    virtual ~SoundEngine() = default;

    // Rebuilds all that depends on the rate: releases the upper voices, empties every delay line.
    // A rate that is not usable is ignored.
    virtual void setSampleRate(double sampleRate) = 0;
    virtual double sampleRate() const = 0;

    // Writes `frames` samples to both buffers; a sample that is not finite silences the block and
    // clears the signal state.
    virtual void render(float* left, float* right, int frames, EventSource& events) = 0;

    // Everything silent, no note held, filters and effects cleared: what precedes a new program.
    // Goes with a rate change, which empties the chorus and the spring's line. The master phases,
    // the limiter and the random state go on.
    virtual void reset() = 0;

    // Notes; keys that are not playable are ignored. `velocity` is 1..127.
    virtual void noteOn(int key, int velocity) = 0;
    virtual void noteOff(int key) = 0;
    virtual void allNotesOff() = 0;
    virtual void setPedal(bool down) = 0;
    virtual void setPitchBend(int value) = 0;    // 0..127
    virtual void setExpression(float gain) = 0;  // 0..1, reached within 5 ms
    virtual void wake() = 0;                     // any event does this
    virtual bool asleep() const = 0;

    virtual void setPolyphony(int voices) = 0;
    virtual int polyphony() const = 0;

    virtual void setVolume(float gain) = 0;
    virtual void setPitchOffset(float semitones) = 0;  // drops the bend in force
    virtual void setHighPass(float control) = 0;       // moves half way to the control
    virtual void setBrightness(float control) = 0;
    virtual void setWaveform(Waveform waveform) = 0;    // silences, also when nothing changes
    virtual void setSharedEnvelope(float control) = 0;  // "Configs"
    virtual void setViolinPhase(float turns) = 0;

    virtual void setVelocityAmount(float amount) = 0;
    virtual void setAttackTime(float seconds) = 0;
    virtual void setDecayTime(float seconds) = 0;
    virtual void setSustain(float level) = 0;
    virtual void setRelease(const ReleaseTime& release) = 0;

    virtual void setSectionLevel(Section section, float gain) = 0;
    virtual void setSectionSwitch(Section section, float control) = 0;
    // Split as a ratio; the split key is ratio x 44 + 24. Releases the bass.
    virtual void setKeySplit(float ratio) = 0;

    virtual ChorusControl& chorus() = 0;
    virtual PhaserControl& phaser() = 0;
    virtual ReverbControl& reverb() = 0;

    // Queries for any thread.
    virtual int heldNotes() const = 0;
    virtual int lastKey() const = 0;  // -1 before the first
    virtual float outputLevel() const = 0;
    // Of a chorus tap (0..2), as the last block left it: 0..1 spans the range of its delay.
    virtual float chorusTap(int tap) const = 0;
    virtual void forgetHeldNotes() = 0;
};

}  // namespace engine
