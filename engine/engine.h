// The sound engine: notes and settings in, stereo samples out. It knows no host, file or window.
#pragma once

#include <array>
#include <atomic>

#include "dsp/limiter.h"
#include "dsp/random.h"
#include "engine/bass_voice.h"
#include "engine/ensemble_chorus.h"
#include "engine/peak_slot.h"
#include "engine/phaser_stage.h"
#include "engine/sections.h"
#include "engine/sound_engine.h"
#include "engine/spring_reverb.h"
#include "engine/tone_stages.h"
#include "engine/upper_voices.h"

namespace engine {

// Comments marked "intentional" in this folder name oddities that saved sessions depend on.
class Engine : public SoundEngine {
  public:
    explicit Engine(double sampleRate);

    void setSampleRate(double sampleRate) override;
    double sampleRate() const override { return sampleRate_; }

    void beginBlock() override;
    int render(float* left, float* right, int frames) override;
    void endBlock(float* left, float* right, int frames) override;

    void reset() override;

    void noteOn(int key, int velocity) override;
    void noteOff(int key) override;
    void allNotesOff() override;
    void allSoundOff() override;
    void resetControllers() override;
    void setPedal(bool down) override;
    void setPitchBend(int value) override;
    void setExpression(float gain) override;
    void wake() override;
    bool asleep() const override { return asleep_; }

    void setPolyphony(int voices) override;
    int polyphony() const override { return upper_.polyphony(); }

    void setVolume(float gain) override { volume_ = gain; }
    void setPitchOffset(float semitones) override;
    void setHighPass(float control) override;
    void setBrightness(float control) override { tone_.setBrightness(control); }
    void setWaveform(Waveform waveform) override;
    void setSharedEnvelope(float control) override { sharedEnvelope_ = control; }
    void setViolinPhase(float turns) override { upper_.setViolinPhase(turns); }

    void setVelocityAmount(float amount) override;
    void setAttackTime(float seconds) override;
    void setDecayTime(float seconds) override;
    void setSustain(float level) override;
    void setRelease(const ReleaseTime& release) override;

    void setSectionLevel(Section section, float gain) override { sections_.level[section] = gain; }
    void setSectionSwitch(Section section, float control) override {
        sections_.on[section] = isOn(control);
    }
    void setKeySplit(float ratio) override;

    EnsembleChorus& chorus() override { return chorus_; }
    PhaserStage& phaser() override { return phaser_; }
    SpringReverb& reverb() override { return reverb_; }

    int heldNotes() const override { return heldNotes_.load(std::memory_order_relaxed); }
    int lastKey() const override { return lastKey_.load(std::memory_order_relaxed); }
    StereoPeaks takePeaks() override { return {peaks_[0].take(), peaks_[1].take()}; }
    float chorusTap(int tap) const override {
        return chorusTaps_[tap].load(std::memory_order_relaxed);
    }
    void forgetHeldNotes() override { heldNotes_.store(0, std::memory_order_relaxed); }

  private:
    void renderAwake(float* left, float* right, int frames);
    // Renders the mono part of the chain; returns the number of leading frames in which a voice
    // sounds.
    int renderMono(int frames);
    void setVoiceGains(int sounding, int frames);
    void applyGain(int sounding, int frames);
    int framesToSleep() const;
    void countSilence(int frames);
    float tickExpression();
    void bend(float semitones);
    void silence();
    void clearFault();
    // Calls change(dsp::VoiceEnvelope&) for every note envelope, upper and bass.
    template <typename Change>
    void changeNoteEnvelopes(Change change);

    double sampleRate_ = kInitialRate;
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
    bool shared_ = false;       // latched at the start of the block
    float envelopeSum_ = 0.0f;  // last value in this block

    // Signals of the current segment.
    PhaseRows phaseRows_;
    SectionSums sums_{};
    Signal voiceGains_{};
    Signal sectionLevels_{};
    Signal dither_{};
    BassRows bassRows_{};
    Signal mono_{};
    StereoSignal stereo_{};

    float expression_ = 1.0f;
    float expressionTarget_ = 1.0f;
    float expressionStep_ = 0.0f;

    bool asleep_ = false;
    float silentSamples_ = 0.0f;

    std::atomic<int> heldNotes_{0};
    std::atomic<int> lastKey_{-1};
    std::array<PeakSlot, 2> peaks_;  // left, right
    std::array<std::atomic<float>, EnsembleChorus::kTaps> chorusTaps_{};
};

}  // namespace engine
