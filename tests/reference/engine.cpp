// Settings, notes and the render loop, sample by sample.
#include "tests/reference/engine.h"

#include <algorithm>
#include <cmath>

#include "dsp/bow_noise.h"

namespace reference {

namespace {
constexpr double kSemitoneRatio = 1.0594630943593;
constexpr float kSleepSeconds = 4.0f;
constexpr double kAudible = 1e-07;  // limiter follower
constexpr double kExpressionSeconds = 0.005;
}  // namespace

Engine::Engine(double sampleRate) : random_(dsp::kStateAfterTable), reverb_(kHighestRate) {
    setSampleRate(isAcceptedRate(sampleRate) ? sampleRate : sampleRate_);
}

void Engine::setSampleRate(double sampleRate) {
    if (!isAcceptedRate(sampleRate)) return;
    sampleRate_ = sampleRate;
    upper_.setRate(sampleRate);
    bass_.setRate(sampleRate);
    tone_.setRate(sampleRate);
    chorus_.setRate(sampleRate);
    phaser_.setRate(sampleRate);
    reverb_.setRate(sampleRate);
}

void Engine::reset() {
    upper_.reset();
    bass_.reset();
    tone_.clear();
    phaser_.clear();
    reverb_.clear();
}

void Engine::noteOn(int key, int velocity) {
    heldNotes_.store(heldNotes() + 1, std::memory_order_relaxed);
    if (!isPlayableKey(key)) return;
    upper_.noteOn(key, velocity);
    lastKey_.store(key, std::memory_order_relaxed);
    if (key < splitKey_ && (sections_.on[kContrabass] || sections_.on[kCello])) {
        bass_.noteOn(key, velocity);
    }
}

void Engine::noteOff(int key) {
    heldNotes_.store(std::max(heldNotes() - 1, 0), std::memory_order_relaxed);
    if (!isPlayableKey(key)) return;
    upper_.noteOff(key);
    if (key < splitKey_) bass_.noteOff(key);
}

void Engine::allNotesOff() {
    forgetHeldNotes();
    upper_.allNotesOff();
    bass_.allNotesOff();
}

void Engine::allSoundOff() {
    forgetHeldNotes();
    silence();
}

void Engine::resetControllers() {
    setExpression(1.0f);
    setPedal(false);
    bend(pitchOffset_);
}

void Engine::setPedal(bool down) {
    upper_.setPedal(down);
    bass_.setPedal(down);
}

void Engine::setPitchBend(int value) {
    bend(static_cast<float>(value) / 127.0f * 2.0f - 1.0f + pitchOffset_);
}

void Engine::setPitchOffset(float semitones) {
    pitchOffset_ = semitones;
    bend(semitones);
}

void Engine::bend(float semitones) {
    bendRatio_ = std::pow(kSemitoneRatio, semitones);
}

void Engine::setExpression(float gain) {
    if (gain == expressionTarget_) return;  // the ramp continues
    expressionTarget_ = gain;
    expressionStep_ = static_cast<float>((gain - expression_) / (kExpressionSeconds * sampleRate_));
}

void Engine::wake() {
    asleep_ = false;
    silentSamples_ = 0.0f;
}

void Engine::setPolyphony(int voices) {
    upper_.setPolyphony(voices);
}

void Engine::setHighPass(float control) {
    smoothedHighPass_ = 0.5f * smoothedHighPass_ + 0.5f * control;
    tone_.setHighPass(control, smoothedHighPass_);
    phaser_.setHighPass(control, smoothedHighPass_);
}

void Engine::setWaveform(Waveform waveform) {
    upper_.setWaveform(waveform);
    upper_.silence();
    bass_.silence();
    tone_.clearFormants();
    chorus_.clearModulators();
}

template <typename Change>
void Engine::changeNoteEnvelopes(Change change) {
    upper_.forEachEnvelope(change);
    change(bass_.envelope());
}

void Engine::setVelocityAmount(float amount) {
    changeNoteEnvelopes([amount](dsp::VoiceEnvelope& envelope) {
        envelope.setVelocityAmount(amount);
        envelope.computeRates();
    });
}

void Engine::setAttackTime(float seconds) {
    changeNoteEnvelopes([seconds](dsp::VoiceEnvelope& envelope) {
        envelope.setAttackTime(seconds);
        envelope.computeRates();
    });
}

void Engine::setDecayTime(float seconds) {
    changeNoteEnvelopes([seconds](dsp::VoiceEnvelope& envelope) {
        envelope.setDecayTime(seconds);
        envelope.computeRates();
    });
}

// Without computeRates: sounding notes keep their sustain level.
void Engine::setSustain(float level) {
    changeNoteEnvelopes([level](dsp::VoiceEnvelope& envelope) { envelope.setSustain(level); });
}

void Engine::setRelease(const ReleaseTime& release) {
    upper_.setRelease(release);
    bass_.setRelease(release);
}

void Engine::setKeySplit(float ratio) {
    splitKey_ = static_cast<int>(ratio * 44.0f + 24.0f);
    bass_.allNotesOff();
}

void Engine::beginBlock() {
    tone_.beginBlock();
    shared_ = isOn(sharedEnvelope_);
    envelopeSum_ = 0.0f;
    finite_ = true;
}

int Engine::render(float* left, float* right, int frames) {
    for (int i = 0; i < frames; ++i) {
        const float random = static_cast<float>(random_.next());
        StereoSample out{0.0f, 0.0f};
        if (!asleep_) out = renderAwake(random);
        limiter_.process(out.left, out.right);
        if (limiter_.follower() < kAudible) countSilence();
        left[i] = out.left;
        right[i] = out.right;
        finite_ = finite_ && std::isfinite(out.left) && std::isfinite(out.right);
    }
    return frames;
}

void Engine::endBlock(float* left, float* right, int frames) {
    if (!finite_) {
        clearFault();
        std::fill_n(left, frames, 0.0f);
        std::fill_n(right, frames, 0.0f);
    }
    outputLevel_.store(limiter_.level(), std::memory_order_relaxed);
}

StereoSample Engine::renderAwake(float random) {
    bool sounding = false;
    const float mono = renderMono(random, sounding);
    // Passes a non-finite sample straight to endBlock, before a clamp can hide it.
    if (!std::isfinite(mono)) return {mono, mono};
    StereoSample out = reverb_.tick(phaser_.tick(chorus_.tick(mono)));
    // intentional: the volume does not scale the tails after the last voice
    const float gain = (sounding ? volume_ : 1.0f) * tickExpression();
    out.left = out.left * 4.0f * gain;
    out.right = out.right * 4.0f * gain;
    if (!sounding) countSilence();
    return out;
}

float Engine::renderMono(float random, bool& sounding) {
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

float Engine::tickExpression() {
    if (expression_ == expressionTarget_) return expression_;
    expression_ += expressionStep_;
    const bool arrived = expressionStep_ > 0.0f ? expression_ >= expressionTarget_
                                                : expression_ <= expressionTarget_;
    if (arrived) expression_ = expressionTarget_;
    return expression_;
}

void Engine::countSilence() {
    silentSamples_ += 1.0f;
    if (silentSamples_ > kSleepSeconds * static_cast<float>(sampleRate_)) {
        silentSamples_ = 0.0f;
        asleep_ = true;
    }
}

void Engine::silence() {
    reset();
    tone_.clearShelf();
    chorus_.setRate(sampleRate_);
    reverb_.clearFault();
}

void Engine::clearFault() {
    silence();
    limiter_.clear();
}

}  // namespace reference
