// Interface of a sound engine for notes, parameters and the renderer.
#pragma once

#include "engine/envelope_settings.h"
#include "engine/held_keys.h"
#include "engine/sections.h"

namespace engine {

// In Hz. Other rates are ignored; all memory is sized for the highest.
constexpr double kLowestRate = 1000.0;
constexpr double kHighestRate = 768000.0;
constexpr double kInitialRate = 44100.0;
constexpr bool isAcceptedRate(double rate) {
    return rate >= kLowestRate && rate <= kHighestRate;
}

// Longest wait, in frames, for a change from another thread while something sounds.
constexpr int kLongestSegment = 128;

enum class Waveform { kFeedback, kTable, kSquaredFeedback };

class ChorusControl {
  public:
    virtual ~ChorusControl() = default;
    virtual void setOn(bool on) = 0;
    virtual void setSlowDepth(float depth) = 0;
    virtual void setFastDepth(float depth) = 0;
    virtual void setWide(float wide) = 0;      // 1..2, scales the range of the delays
    virtual void setStereo(float amount) = 0;  // 0..1: how far the first two taps are panned apart
    virtual void setDryAdd(float amount) = 0;
};

class PhaserControl {
  public:
    virtual ~PhaserControl() = default;
    // Resets settings and sweep to those of a new engine. Call it before a program, so that nothing
    // of the previous one carries over.
    virtual void setDefaults() = 0;
    virtual void setOn(bool on) = 0;
    virtual void setRateControl(float control) = 0;
    virtual void setDepthControl(float control) = 0;
    virtual void setFeedback(float amount) = 0;  // 0..0.9; other values are ignored
    // 0..1: four stages from a quarter on, and the input low-pass from a half on.
    virtual void setStages(float control) = 0;
};

struct ReverbSettings {
    float mix = 0.0f;
    float size = 0.0f;
    float brite = 0.0f;
    float spring = 0.0f;  // share of the side signal that enters the spring; off at 0.1 and below
};

struct StereoPeaks {
    float left = 0.0f;
    float right = 0.0f;
};

// Values are 0..1. Levels, damping and room each depend on several settings.
class ReverbControl {
  public:
    virtual ~ReverbControl() = default;
    // Also empties the reverb, even if the switch does not change.
    virtual void setOn(bool on) = 0;
    // Sets everything; nothing of the previous settings carries over.
    virtual void set(const ReverbSettings& settings) = 0;
    // Each of these sets one value.
    virtual void setMix(float mix) = 0;
    virtual void setSize(float size) = 0;
    virtual void setBrite(float brite) = 0;
    // intentional: a weak spring leaves the room alone, even if a strong one has enlarged it
    virtual void setSpring(float amount) = 0;
};

// Only one thread at a time may be inside, except for the queries, which any thread may call.
// Settings take effect with the next sample. `control` arguments are 0..1 and finite. Nothing
// allocates.
class SoundEngine {
  public:
    virtual ~SoundEngine() = default;

    // In Hz. Releases the upper voices and empties every delay line. Rates that isAcceptedRate
    // refuses are ignored.
    virtual void setSampleRate(double sampleRate) = 0;
    virtual double sampleRate() const = 0;

    // For each block, call beginBlock, then render until the block is full, then endBlock. A note
    // or setting between two render calls takes effect between their frames.
    virtual void beginBlock() = 0;
    // Writes at least 1 and at most `frames` frames; returns the number written.
    virtual int render(float* left, float* right, int frames) = 0;
    // If a sample of the block is not finite, silences the block and clears the signal state.
    virtual void endBlock(float* left, float* right, int frames) = 0;

    // Silences everything before a new program: releases all notes, clears filters and effects.
    // Call setSampleRate first; it empties the chorus and the spring's line. The master phases, the
    // limiter and the random state continue.
    virtual void reset() = 0;

    // Unplayable keys are ignored. `velocity` is 1..127.
    virtual void noteOn(int key, int velocity) = 0;
    virtual void noteOff(int key) = 0;
    virtual void allNotesOff() = 0;
    virtual void allSoundOff() = 0;  // cuts voices and tails; controllers stay
    virtual void resetControllers() = 0;
    virtual void setPedal(bool down) = 0;
    virtual void setPitchBend(int value) = 0;    // 0..127
    virtual void setExpression(float gain) = 0;  // 0..1, reached within 5 ms
    virtual void wake() = 0;                     // call it for every event
    virtual bool asleep() const = 0;

    virtual void setPolyphony(int voices) = 0;
    virtual int polyphony() const = 0;

    virtual void setVolume(float gain) = 0;
    virtual void setPitchOffset(float semitones) = 0;  // cancels the current bend
    virtual void setHighPass(float control) = 0;       // moves halfway to the control
    virtual void setBrightness(float control) = 0;
    virtual void setWaveform(Waveform waveform) = 0;    // also silences all voices
    virtual void setSharedEnvelope(float control) = 0;  // "Configs"
    virtual void setViolinPhase(float turns) = 0;

    virtual void setVelocityAmount(float amount) = 0;
    virtual void setAttackTime(float seconds) = 0;
    virtual void setDecayTime(float seconds) = 0;
    virtual void setSustain(float level) = 0;
    virtual void setRelease(const ReleaseTime& release) = 0;

    virtual void setSectionLevel(Section section, float gain) = 0;
    virtual void setSectionSwitch(Section section, float control) = 0;
    // The split key is ratio x 44 + 24. Releases the bass.
    virtual void setKeySplit(float ratio) = 0;

    virtual ChorusControl& chorus() = 0;
    virtual PhaserControl& phaser() = 0;
    virtual ReverbControl& reverb() = 0;

    // Queries, from any thread.
    virtual int heldNotes() const = 0;
    virtual int lastKey() const = 0;  // -1 before the first
    virtual KeySet heldKeys() const { return {}; }
    virtual float smoothedHighPass() const { return 0.0f; }  // where setHighPass has moved to
    // The largest magnitudes of the output since the last call.
    virtual StereoPeaks takePeaks() { return {}; }
    // Position of a chorus tap (0..2) after the last block; 0..1 spans the range of its delay.
    virtual float chorusTap(int tap) const = 0;
    virtual void forgetHeldNotes() = 0;
};

}  // namespace engine
