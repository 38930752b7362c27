// The sound engine: notes and settings in, stereo samples out. Knows no host, file or window.
#pragma once

#include <array>
#include <atomic>

#include "dsp/limiter.h"
#include "dsp/random.h"
#include "engine/bass_voice.h"
#include "engine/ensemble_chorus.h"
#include "engine/phaser_stage.h"
#include "engine/sections.h"
#include "engine/spring_reverb.h"
#include "engine/tone_stages.h"
#include "engine/upper_voices.h"

namespace engine {

// Rates outside are refused; all memory is sized for the highest.
constexpr double kLowestRate = 1000.0;
constexpr double kHighestRate = 768000.0;
constexpr bool isAcceptedRate(double rate) {
    return rate >= kLowestRate && rate <= kHighestRate;
}

// What is due before each frame of a block; the renderer asks it.
class EventSource {
  public:
    virtual ~EventSource() = default;
    // Delivers everything due up to the frame, counted from 1.
    virtual void dispatchUpTo(int frame) = 0;
};

// One thread at a time calls anything but the queries; settings take effect with the next sample.
// Controls are normalised (0..1, finite), other quantities as named. Allocates in the constructor
// only.
class Engine {
  public:
    explicit Engine(double sampleRate);

    // Rebuilds all that depends on the rate: releases the upper voices, empties every delay line.
    // A rate that is not usable is ignored.
    void setSampleRate(double sampleRate);
    double sampleRate() const { return sampleRate_; }

    // Writes `frames` samples to both buffers; a sample that is not finite silences the block and
    // clears the signal state.
    void render(float* left, float* right, int frames, EventSource& events);

    // Everything silent, no note held, filters and effects cleared: what precedes a new program.
    // Goes with a rate change, which empties the chorus and the spring's line. The master phases,
    // the limiter and the random state go on.
    void reset();

    // Notes; keys that are not playable are ignored. `velocity` is 1..127.
    void noteOn(int key, int velocity);
    void noteOff(int key);
    void allNotesOff();
    void setPedal(bool down);
    void setPitchBend(int value);    // 0..127
    void setExpression(float gain);  // 0..1, reached within 5 ms
    void wake();                     // any event does this
    bool asleep() const { return asleep_; }

    void setPolyphony(int voices);
    int polyphony() const { return upper_.polyphony(); }

    void setVolume(float gain) { volume_ = gain; }
    void setPitchOffset(float semitones);  // drops the bend in force
    void setHighPass(float control);       // moves half way to the control
    void setBrightness(float control) { tone_.setBrightness(control); }
    void setWaveform(Waveform waveform);  // silences the instrument, also when nothing changes
    void setSharedEnvelope(float control) { sharedEnvelope_ = control; }  // "Configs"
    void setViolinPhase(float turns) { upper_.setViolinPhase(turns); }

    void setVelocityAmount(float amount);
    void setAttackTime(float seconds);
    void setDecayTime(float seconds);
    void setSustain(float level);
    void setRelease(const ReleaseTime& release);

    void setSectionLevel(Section section, float gain) { sections_.level[section] = gain; }
    void setSectionSwitch(Section section, float control) { sections_.on[section] = isOn(control); }
    // Split as a ratio; the split key is ratio x 44 + 24. Releases the bass.
    void setKeySplit(float ratio);

    EnsembleChorus& chorus() { return chorus_; }
    PhaserStage& phaser() { return phaser_; }
    SpringReverb& reverb() { return reverb_; }

    // Queries for any thread.
    int heldNotes() const { return heldNotes_.load(std::memory_order_relaxed); }
    int lastKey() const { return lastKey_.load(std::memory_order_relaxed); }  // -1 before the first
    float outputLevel() const { return outputLevel_.load(std::memory_order_relaxed); }
    // Of a chorus tap, as the last block left it: 0..1 spans the range of its delay.
    float chorusTap(int tap) const { return chorusTaps_[tap].load(std::memory_order_relaxed); }
    void forgetHeldNotes() { heldNotes_.store(0, std::memory_order_relaxed); }

  private:
    StereoSample renderAwake(float random);
    float renderMono(float random, bool& sounding);
    float tickExpression();
    void countSilence();
    void bend(float semitones);
    void clearFault();
    // Calls change(dsp::VoiceEnvelope&) for the envelopes of all notes, upper and bass.
    template <typename Change>
    void changeNoteEnvelopes(Change change);

    double sampleRate_ = 44100.0;
    dsp::Random random_;
    MasterPhases phases_;
    double bendRatio_ = 1.0;
    float pitchOffset_ = 0.0f;  // semitones

    UpperVoices upper_;
    BassVoice bass_;
    Sections sections_;
    int splitKey_ = 48;
    ToneStages tone_;
    EnsembleChorus chorus_;
    PhaserStage phaser_;
    SpringReverb reverb_;
    dsp::PeakLimiter limiter_;

    float smoothedHighPass_ = 0.0f;
    float volume_ = 0.0f;
    float sharedEnvelope_ = 0.0f;
    bool shared_ = false;       // as latched at the start of the block
    float envelopeSum_ = 0.0f;  // last value computed in this block

    float expression_ = 1.0f;
    float expressionTarget_ = 1.0f;
    float expressionStep_ = 0.0f;

    bool asleep_ = false;
    float silentSamples_ = 0.0f;

    std::atomic<int> heldNotes_{0};
    std::atomic<int> lastKey_{-1};
    std::atomic<float> outputLevel_{0.0f};
    std::array<std::atomic<float>, EnsembleChorus::kTaps> chorusTaps_{};
};

}  // namespace engine
