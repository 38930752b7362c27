// Notes, settings and queries of a sound engine, whatever renders its stages.
#pragma once

#include <algorithm>
#include <atomic>
#include <cmath>

#include "dsp/bow_noise.h"
#include "dsp/limiter.h"
#include "dsp/random.h"
#include "engine/pitch.h"
#include "engine/sections.h"
#include "engine/sound_engine.h"

namespace engine {

// Comments marked "intentional" in this folder name oddities that saved sessions depend on.
//
// `Stages` holds the stages in the order of the sound: upper, bass, tone, chorus, phaser, reverb.
template <typename Stages>
class EngineControls : public SoundEngine {
  public:
    explicit EngineControls(double sampleRate) {
        setSampleRate(isAcceptedRate(sampleRate) ? sampleRate : sampleRate_);
    }

    void setSampleRate(double sampleRate) override {
        if (!isAcceptedRate(sampleRate)) return;
        sampleRate_ = sampleRate;
        stages_.upper.setRate(sampleRate);
        stages_.bass.setRate(sampleRate);
        stages_.tone.setRate(sampleRate);
        stages_.chorus.setRate(sampleRate);
        stages_.phaser.setRate(sampleRate);
        stages_.reverb.setRate(sampleRate);
    }
    double sampleRate() const override { return sampleRate_; }

    void reset() override {
        stages_.upper.reset();
        stages_.bass.reset();
        stages_.tone.clear();
        stages_.phaser.clear();
        stages_.reverb.clear();
    }

    void noteOn(int key, int velocity) override {
        heldNotes_.store(heldNotes() + 1, std::memory_order_relaxed);
        if (!isPlayableKey(key)) return;
        heldKeys_.hold(key);
        stages_.upper.noteOn(key, velocity);
        lastKey_.store(key, std::memory_order_relaxed);
        if (key < splitKey_ && (sections_.on[kContrabass] || sections_.on[kCello])) {
            stages_.bass.noteOn(key, velocity);
        }
    }
    void noteOff(int key) override {
        heldNotes_.store(std::max(heldNotes() - 1, 0), std::memory_order_relaxed);
        if (!isPlayableKey(key)) return;
        heldKeys_.release(key);
        stages_.upper.noteOff(key);
        if (key < splitKey_) stages_.bass.noteOff(key);
    }
    void allNotesOff() override {
        forgetHeldNotes();
        stages_.upper.allNotesOff();
        stages_.bass.allNotesOff();
    }
    void allSoundOff() override {
        forgetHeldNotes();
        silence();
    }
    void resetControllers() override {
        setExpression(1.0f);
        setPedal(false);
        bend(pitchOffset_);
    }
    void setPedal(bool down) override {
        stages_.upper.setPedal(down);
        stages_.bass.setPedal(down);
    }
    void setPitchBend(int value) override {
        bend(static_cast<float>(value) / 127.0f * 2.0f - 1.0f + pitchOffset_);
    }
    void setExpression(float gain) override {
        constexpr double kSeconds = 0.005;
        if (gain == expressionTarget_) return;  // the ramp continues
        expressionTarget_ = gain;
        expressionStep_ = static_cast<float>((gain - expression_) / (kSeconds * sampleRate_));
    }
    void wake() override {
        asleep_ = false;
        silentSamples_ = 0.0f;
    }
    bool asleep() const override { return asleep_; }

    void setPolyphony(int voices) override { stages_.upper.setPolyphony(voices); }
    int polyphony() const override { return stages_.upper.polyphony(); }

    void setVolume(float gain) override { volume_ = gain; }
    void setPitchOffset(float semitones) override {
        pitchOffset_ = semitones;
        bend(semitones);
    }
    void setHighPass(float control) override {
        const float smoothed = 0.5f * smoothedHighPass() + 0.5f * control;
        smoothedHighPass_.store(smoothed, std::memory_order_relaxed);
        stages_.tone.setHighPass(control, smoothed);
        stages_.phaser.setHighPass(control, smoothed);
    }
    void setBrightness(float control) override { stages_.tone.setBrightness(control); }
    void setWaveform(Waveform waveform) override {
        stages_.upper.setWaveform(waveform);
        stages_.upper.silence();
        stages_.bass.silence();
        stages_.tone.clearFormants();
        stages_.chorus.clearModulators();
    }
    void setSharedEnvelope(float control) override { sharedEnvelope_ = control; }
    void setViolinPhase(float turns) override { stages_.upper.setViolinPhase(turns); }

    void setVelocityAmount(float amount) override {
        changeNoteEnvelopes([amount](dsp::VoiceEnvelope& envelope) {
            envelope.setVelocityAmount(amount);
            envelope.computeRates();
        });
    }
    void setAttackTime(float seconds) override {
        changeNoteEnvelopes([seconds](dsp::VoiceEnvelope& envelope) {
            envelope.setAttackTime(seconds);
            envelope.computeRates();
        });
    }
    void setDecayTime(float seconds) override {
        changeNoteEnvelopes([seconds](dsp::VoiceEnvelope& envelope) {
            envelope.setDecayTime(seconds);
            envelope.computeRates();
        });
    }
    // Without computeRates: sounding notes keep their sustain level.
    void setSustain(float level) override {
        changeNoteEnvelopes([level](dsp::VoiceEnvelope& envelope) { envelope.setSustain(level); });
    }
    void setRelease(const ReleaseTime& release) override {
        stages_.upper.setRelease(release);
        stages_.bass.setRelease(release);
    }

    void setSectionLevel(Section section, float gain) override { sections_.level[section] = gain; }
    void setSectionSwitch(Section section, float control) override {
        sections_.on[section] = isOn(control);
    }
    void setKeySplit(float ratio) override {
        splitKey_ = splitKey(ratio);
        stages_.bass.allNotesOff();
    }

    decltype(Stages::chorus)& chorus() override { return stages_.chorus; }
    decltype(Stages::phaser)& phaser() override { return stages_.phaser; }
    decltype(Stages::reverb)& reverb() override { return stages_.reverb; }

    int heldNotes() const override { return heldNotes_.load(std::memory_order_relaxed); }
    int lastKey() const override { return lastKey_.load(std::memory_order_relaxed); }
    KeySet heldKeys() const override { return heldKeys_.get(); }
    float smoothedHighPass() const override {
        return smoothedHighPass_.load(std::memory_order_relaxed);
    }
    void forgetHeldNotes() override {
        heldNotes_.store(0, std::memory_order_relaxed);
        heldKeys_.releaseAll();
    }

  protected:
    static constexpr float kSleepSeconds = 4.0f;

    void beginStages() {
        stages_.tone.beginBlock();
        shared_ = isOn(sharedEnvelope_);
        envelopeSum_ = 0.0f;
    }
    float tickExpression() {
        if (expression_ == expressionTarget_) return expression_;
        expression_ += expressionStep_;
        const bool arrived = expressionStep_ > 0.0f ? expression_ >= expressionTarget_
                                                    : expression_ <= expressionTarget_;
        if (arrived) expression_ = expressionTarget_;
        return expression_;
    }
    bool expressionIsFull() const {
        return expression_ == expressionTarget_ && expression_ == 1.0f;
    }
    void countSilence(int frames) {
        silentSamples_ += static_cast<float>(frames);
        if (silentSamples_ > kSleepSeconds * static_cast<float>(sampleRate_)) {
            silentSamples_ = 0.0f;
            asleep_ = true;
        }
    }
    void clearFault() {
        silence();
        limiter_.clear();
    }

    Stages stages_;
    Sections sections_;
    double sampleRate_ = kInitialRate;
    dsp::Random random_{dsp::kStateAfterTable};
    dsp::PeakLimiter limiter_;
    double bendRatio_ = 1.0;
    float volume_ = 0.0f;
    bool shared_ = false;       // latched at the start of the block
    float envelopeSum_ = 0.0f;  // last value in this block
    bool asleep_ = false;
    float silentSamples_ = 0.0f;

  private:
    void bend(float semitones) {
        constexpr double kSemitoneRatio = 1.0594630943593;
        bendRatio_ = std::pow(kSemitoneRatio, semitones);
    }
    void silence() {
        reset();
        stages_.tone.clearShelf();
        stages_.chorus.setRate(sampleRate_);
        stages_.reverb.clearFault();
    }
    // Calls change(dsp::VoiceEnvelope&) for every note envelope, upper and bass.
    template <typename Change>
    void changeNoteEnvelopes(Change change) {
        stages_.upper.forEachEnvelope(change);
        change(stages_.bass.envelope());
    }

    float pitchOffset_ = 0.0f;  // semitones
    int splitKey_ = 48;
    float sharedEnvelope_ = 0.0f;
    float expression_ = 1.0f;
    float expressionTarget_ = 1.0f;
    float expressionStep_ = 0.0f;

    std::atomic<float> smoothedHighPass_{0.0f};
    HeldKeys heldKeys_;
    std::atomic<int> heldNotes_{0};
    std::atomic<int> lastKey_{-1};
};

}  // namespace engine
