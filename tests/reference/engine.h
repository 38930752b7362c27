// The literal engine: one sample at a time, one voice after the other, with the scalar blocks of
// dsp/. It shows that lanes, segments and their order change no bit of the sound.
//
// Comments marked "intentional" name oddities that saved sessions depend on.
#pragma once

#include <algorithm>
#include <atomic>
#include <cmath>

#include "dsp/limiter.h"
#include "dsp/random.h"
#include "tests/reference/bass_voice.h"
#include "tests/reference/phaser_stage.h"
#include "tests/reference/spring_reverb.h"
#include "tests/reference/tone_stages.h"

namespace reference {

class Engine final : public engine::SoundEngine {
  public:
    explicit Engine(double sampleRate) : random_(dsp::kStateAfterTable) {
        setSampleRate(engine::isAcceptedRate(sampleRate) ? sampleRate : sampleRate_);
    }

    void setSampleRate(double sampleRate) override {
        if (!engine::isAcceptedRate(sampleRate)) return;
        sampleRate_ = sampleRate;
        upper_.setRate(sampleRate);
        bass_.setRate(sampleRate);
        tone_.setRate(sampleRate);
        chorus_.setRate(sampleRate);
        phaser_.setRate(sampleRate);
        reverb_.setRate(sampleRate);
    }
    double sampleRate() const override { return sampleRate_; }

    void beginBlock() override {
        tone_.beginBlock();
        shared_ = engine::isOn(sharedEnvelope_);
        envelopeSum_ = 0.0f;
        finite_ = true;
    }
    int render(float* left, float* right, int frames) override {
        for (int i = 0; i < frames; ++i) {
            const float random = static_cast<float>(random_.next());
            StereoSample out{0.0f, 0.0f};
            if (!asleep_) out = renderAwake(random);
            limiter_.process(out.left, out.right);
            if (limiter_.follower() < 1e-07) countSilence();
            left[i] = out.left;
            right[i] = out.right;
            finite_ = finite_ && std::isfinite(out.left) && std::isfinite(out.right);
        }
        return frames;
    }
    void endBlock(float* left, float* right, int frames) override {
        if (!finite_) {
            silence();
            limiter_.clear();
            std::fill_n(left, frames, 0.0f);
            std::fill_n(right, frames, 0.0f);
        }
    }
    void reset() override {
        upper_.reset();
        bass_.reset();
        tone_.clear();
        phaser_.clear();
        reverb_.clear();
    }

    void noteOn(int key, int velocity) override {
        ++heldNotes_;
        if (!engine::isPlayableKey(key)) return;
        upper_.noteOn(key, velocity);
        lastKey_ = key;
        const bool bassIsOn = sections_.on[engine::kContrabass] || sections_.on[engine::kCello];
        if (key < splitKey_ && bassIsOn) bass_.noteOn(key, velocity);
    }
    void noteOff(int key) override {
        heldNotes_ = std::max(heldNotes_ - 1, 0);
        if (!engine::isPlayableKey(key)) return;
        upper_.noteOff(key);
        if (key < splitKey_) bass_.noteOff(key);
    }
    void allNotesOff() override {
        heldNotes_ = 0;
        upper_.allNotesOff();
        bass_.allNotesOff();
    }
    void allSoundOff() override {
        heldNotes_ = 0;
        silence();
    }
    void resetControllers() override {
        setExpression(1.0f);
        setPedal(false);
        bend(pitchOffset_);
    }
    void setPedal(bool down) override {
        upper_.setPedal(down);
        bass_.setPedal(down);
    }
    void setPitchBend(int value) override {
        bend(static_cast<float>(value) / 127.0f * 2.0f - 1.0f + pitchOffset_);
    }
    void setExpression(float gain) override {
        if (gain == expressionTarget_) return;  // the ramp continues
        expressionTarget_ = gain;
        expressionStep_ = static_cast<float>((gain - expression_) / (0.005 * sampleRate_));
    }
    void wake() override {
        asleep_ = false;
        silentSamples_ = 0.0f;
    }
    bool asleep() const override { return asleep_; }

    void setPolyphony(int voices) override { upper_.setPolyphony(voices); }
    int polyphony() const override { return upper_.polyphony(); }
    void setVolume(float gain) override { volume_ = gain; }
    void setPitchOffset(float semitones) override {
        pitchOffset_ = semitones;
        bend(semitones);
    }
    void setHighPass(float control) override {
        smoothedHighPass_ = 0.5f * smoothedHighPass_ + 0.5f * control;
        tone_.setHighPass(control, smoothedHighPass_);
        phaser_.setHighPass(control, smoothedHighPass_);
    }
    void setBrightness(float control) override { tone_.setBrightness(control); }
    void setWaveform(engine::Waveform waveform) override {
        upper_.setWaveform(waveform);
        upper_.silence();
        bass_.silence();
        tone_.clearFormants();
        chorus_.clearModulators();
    }
    void setSharedEnvelope(float control) override { sharedEnvelope_ = control; }
    void setViolinPhase(float turns) override { upper_.setViolinPhase(turns); }
    void setVelocityAmount(float amount) override {
        changeNoteEnvelopes([=](auto& envelope) { envelope.setVelocityAmount(amount); });
    }
    void setAttackTime(float seconds) override {
        changeNoteEnvelopes([=](auto& envelope) { envelope.setAttackTime(seconds); });
    }
    void setDecayTime(float seconds) override {
        changeNoteEnvelopes([=](auto& envelope) { envelope.setDecayTime(seconds); });
    }
    // Without computeRates: sounding notes keep their sustain level.
    void setSustain(float level) override {
        upper_.forEachEnvelope([=](auto& envelope) { envelope.setSustain(level); });
        bass_.envelope().setSustain(level);
    }
    void setRelease(const engine::ReleaseTime& release) override {
        upper_.setRelease(release);
        bass_.setRelease(release);
    }
    void setSectionLevel(engine::Section section, float gain) override {
        sections_.level[section] = gain;
    }
    void setSectionSwitch(engine::Section section, float control) override {
        sections_.on[section] = engine::isOn(control);
    }
    void setKeySplit(float ratio) override {
        splitKey_ = static_cast<int>(ratio * 44.0f + 24.0f);
        bass_.allNotesOff();
    }
    EnsembleChorus& chorus() override { return chorus_; }
    PhaserStage& phaser() override { return phaser_; }
    SpringReverb& reverb() override { return reverb_; }

    int heldNotes() const override { return heldNotes_; }
    int lastKey() const override { return lastKey_; }
    // Nobody reads the taps of the literal engine.
    float chorusTap(int) const override { return 0.0f; }
    void forgetHeldNotes() override { heldNotes_ = 0; }

  private:
    StereoSample renderAwake(float random) {
        bool sounding = false;
        const float mono = renderMono(random, sounding);
        // Passes a non-finite sample straight to endBlock, before a clamp can hide it.
        if (!std::isfinite(mono)) return {mono, mono};
        const StereoSample out = reverb_.tick(phaser_.tick(chorus_.tick(mono)));
        // intentional: the volume does not scale the tails after the last voice
        const float gain = (sounding ? volume_ : 1.0f) * tickExpression();
        if (!sounding) countSilence();
        return {out.left * 4.0f * gain, out.right * 4.0f * gain};
    }
    float renderMono(float random, bool& sounding) {
        const float dither = random * 3.0517579e-15f - 5e-11f;
        tone_.advanceNoise();
        phases_.advance(bendRatio_, sampleRate_);
        const SectionSums sums = upper_.tick(phases_, bendRatio_, sections_, shared_);
        sounding = sums.sounding;
        float mix = tone_.mixSections(sums, sections_);
        if (shared_) {
            if (sums.sounding) envelopeSum_ = upper_.envelopeSum();
            const float gain = 2.5f / static_cast<float>(upper_.polyphony()) * envelopeSum_;
            mix = gain < 1e-10f ? 0.0f : mix * std::min(gain, 1.0f);
        } else {
            mix *= 0.23f;
        }
        mix = tone_.addBowNoise(mix, upper_.tickSectionEnvelope(), dither);
        mix = tone_.shape(mix);
        if (bass_.sounding()) {
            sounding = true;
            bass_.tick(phases_, sections_, mix);
        }
        return tone_.finish(mix, dither);
    }
    float tickExpression() {
        if (expression_ == expressionTarget_) return expression_;
        expression_ += expressionStep_;
        const bool arrived = expressionStep_ > 0.0f ? expression_ >= expressionTarget_
                                                    : expression_ <= expressionTarget_;
        if (arrived) expression_ = expressionTarget_;
        return expression_;
    }
    void countSilence() {
        silentSamples_ += 1.0f;
        if (silentSamples_ > 4.0f * static_cast<float>(sampleRate_)) {
            silentSamples_ = 0.0f;
            asleep_ = true;
        }
    }
    void bend(float semitones) { bendRatio_ = std::pow(1.0594630943593, semitones); }
    void silence() {
        reset();
        tone_.clearShelf();
        chorus_.setRate(sampleRate_);
        reverb_.clearFault();
    }
    template <typename Change>
    void changeNoteEnvelopes(Change change) {
        const auto changeAndCompute = [&](dsp::VoiceEnvelope& envelope) {
            change(envelope);
            envelope.computeRates();
        };
        upper_.forEachEnvelope(changeAndCompute);
        changeAndCompute(bass_.envelope());
    }

    double sampleRate_ = engine::kInitialRate;
    dsp::Random random_;
    MasterPhases phases_;
    double bendRatio_ = 1.0;
    float pitchOffset_ = 0.0f;  // semitones

    UpperVoices upper_;
    BassVoice bass_;
    engine::Sections sections_;
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
    float expression_ = 1.0f;
    float expressionTarget_ = 1.0f;
    float expressionStep_ = 0.0f;
    bool asleep_ = false;
    bool finite_ = true;  // all samples of this block so far
    float silentSamples_ = 0.0f;

    std::atomic<int> heldNotes_{0};
    std::atomic<int> lastKey_{-1};
};

}  // namespace reference
