// Settings, notes and the render loop, in segments between events.
#include "engine/engine.h"

#include <algorithm>
#include <cmath>

#include "dsp/bow_noise.h"

namespace engine {

namespace {
constexpr double kSemitoneRatio = 1.0594630943593;
constexpr float kSleepSeconds = 4.0f;
constexpr double kAudible = 1e-07;  // limiter follower
constexpr double kExpressionSeconds = 0.005;
constexpr float kVoiceGain = 0.23f;     // of the mix while each voice has its own envelope
constexpr float kSharedGain = 2.5f;     // of the mix with a shared envelope, over the polyphony
constexpr float kSharedFloor = 1e-10f;  // below it the shared gain counts as 0
constexpr float kOutputGain = 4.0f;

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
    splitKey_ = splitKey(ratio);
    bass_.allNotesOff();
}

void Engine::beginBlock() {
    tone_.beginBlock();
    shared_ = isOn(sharedEnvelope_);
    envelopeSum_ = 0.0f;
}

int Engine::render(float* left, float* right, int frames) {
    if (asleep_) {
        random_.skip(frames);
        limiter_.renderSilence(left, right, frames);
        return frames;
    }
    const int count = std::min({frames, kLongestSegment, framesToSleep()});
    renderAwake(left, right, count);
    return count;
}

void Engine::endBlock(float* left, float* right, int frames) {
    const std::int32_t peaks[] = {peakBits(left, frames), peakBits(right, frames)};
    if (std::max(peaks[0], peaks[1]) >= kInfinityBits) {
        clearFault();
        std::fill_n(left, frames, 0.0f);
        std::fill_n(right, frames, 0.0f);
    } else {
        for (int side = 0; side < 2; ++side) peaks_[side].add(peaks[side]);
    }
    for (int tap = 0; tap < EnsembleChorus::kTaps; ++tap) {
        chorusTaps_[tap].store(chorus_.tapPosition(tap), std::memory_order_relaxed);
    }
}

void Engine::renderAwake(float* left, float* right, int frames) {
    const int sounding = renderMono(frames);
    // Passes a non-finite sample straight to endBlock, before a clamp can hide it.
    if (peakBits(mono_.data(), frames) >= kInfinityBits) {
        std::copy_n(mono_.data(), frames, left);
        std::copy_n(mono_.data(), frames, right);
        return;
    }
    chorus_.render(mono_, frames, stereo_);
    phaser_.render(stereo_, frames);
    reverb_.render(stereo_, frames);
    applyGain(sounding, frames);
    const int quiet = limiter_.render(stereo_.left.data(), stereo_.right.data(), frames, kAudible);
    std::copy_n(stereo_.left.data(), frames, left);
    std::copy_n(stereo_.right.data(), frames, right);
    countSilence(frames - sounding + quiet);
}

int Engine::renderMono(int frames) {
    // 0..32767 becomes -5e-11..5e-11: 3.05e-15 = 1e-10 / 32768
    for (int t = 0; t < frames; ++t) {
        dither_[t] = static_cast<float>(random_.next()) * 3.0517579e-15f - 5e-11f;
    }
    phases_.render(bendRatio_, sampleRate_, frames, phaseRows_);
    bass_.render(phaseRows_, sections_, frames, bassRows_);
    upper_.render(phaseRows_, bendRatio_, sections_, shared_, frames, bassRows_, sums_);
    setVoiceGains(sums_.sounding, frames);
    upper_.sectionEnvelope().render(sectionLevels_.data(), frames);
    tone_.render({sums_, bassRows_, voiceGains_, sectionLevels_, dither_}, sections_, frames,
                 mono_);
    return std::max(sums_.sounding, bassRows_.sounding);
}

// Gain of the mix of the upper sections. With a shared envelope it follows the sum of all levels
// and holds its last value after the last voice.
void Engine::setVoiceGains(int sounding, int frames) {
    if (!shared_) {
        voiceGains_.fill(kVoiceGain);
        return;
    }
    upper_.envelopeSum(voiceGains_.data(), sounding);
    if (sounding > 0) envelopeSum_ = voiceGains_[sounding - 1];
    std::fill(voiceGains_.begin() + sounding, voiceGains_.begin() + frames, envelopeSum_);
    const float scale = kSharedGain / static_cast<float>(upper_.polyphony());
    for (int t = 0; t < frames; ++t) {
        const float gain = scale * voiceGains_[t];
        voiceGains_[t] = gain < kSharedFloor ? 0.0f : std::min(gain, 1.0f);
    }
}

void Engine::applyGain(int sounding, int frames) {
    Signal gains;
    // intentional: the volume does not scale the tails after the last voice
    std::fill_n(gains.begin(), sounding, volume_);
    std::fill(gains.begin() + sounding, gains.begin() + frames, 1.0f);
    if (expression_ != expressionTarget_ || expression_ != 1.0f) {
        for (int t = 0; t < frames; ++t) gains[t] = gains[t] * tickExpression();
    }
    for (int t = 0; t < frames; ++t) {
        stereo_.left[t] = stereo_.left[t] * kOutputGain * gains[t];
        stereo_.right[t] = stereo_.right[t] * kOutputGain * gains[t];
    }
}

float Engine::tickExpression() {
    if (expression_ == expressionTarget_) return expression_;
    expression_ += expressionStep_;
    const bool arrived = expressionStep_ > 0.0f ? expression_ >= expressionTarget_
                                                : expression_ <= expressionTarget_;
    if (arrived) expression_ = expressionTarget_;
    return expression_;
}

// A frame counts at most twice, and the engine can only fall asleep at the end of a segment. So a
// segment gets at most half of what is left.
int Engine::framesToSleep() const {
    const float left = kSleepSeconds * static_cast<float>(sampleRate_) - silentSamples_;
    return std::max(static_cast<int>(left * 0.5f), 1);
}

void Engine::countSilence(int frames) {
    silentSamples_ += static_cast<float>(frames);
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

}  // namespace engine
