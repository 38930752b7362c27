// Notes, legato glide and sound of the bass voice.
#include "tests/reference/bass_voice.h"

#include <algorithm>

namespace reference {

namespace {
constexpr int kEnvelopeKey = 60;
constexpr int kPhaseRingLength = 100;
constexpr float kFadeStep = 0.01f;  // per sample
constexpr float kFadeFloor = 0.0001f;
}  // namespace

BassVoice::BassVoice() {
    phaseRing_.setLength(kPhaseRingLength);
}

void BassVoice::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    envelope_.setRate(sampleRate);
    envelope_.computeRates();
    for (Source* source : {&contrabass_, &cello_}) {
        source->oscillator.clear();
        source->oscillator.setRate(static_cast<float>(sampleRate));
        source->dcBlocker.clear();
        source->dcBlocker.setRate(sampleRate);
    }
    phaseRing_.clear();
}

void BassVoice::noteOn(int key, int velocity) {
    if (stack_.push(key, velocity)) {
        envelope_.noteOn(stack_.topVelocity(), kEnvelopeKey);
    }
    setPitch(key);
}

void BassVoice::noteOff(int key) {
    stack_.remove(key);
    if (stack_.pedalDown()) return;
    if (stack_.empty()) {
        envelope_.noteOff();
        glideIn_ = false;
    } else {
        setPitch(stack_.topKey());
    }
}

void BassVoice::setPedal(bool down) {
    stack_.setPedal(down);
    if (down) return;
    for (int key = stack_.takeSustainedKey(); key >= 0; key = stack_.takeSustainedKey()) {
        noteOff(key);
    }
}

void BassVoice::allNotesOff() {
    envelope_.noteOff();
    stack_.reset();
}

void BassVoice::setPitch(int key) {
    pitch_ = pitchFromIndex(key);
    const float celloHertz = static_cast<float>(pitch_.hertz() * 0.5);
    cello_.oscillator.setFrequency(celloHertz);
    contrabass_.oscillator.setFrequency(celloHertz * 0.5f);
    glideIn_ = true;
}

void BassVoice::silence() {
    envelope_.noteOff();
    envelope_.kill();
    contrabass_.oscillator.clear();
    cello_.oscillator.clear();
}

void BassVoice::reset() {
    silence();
    stack_.reset();
    for (Source* source : {&contrabass_, &cello_}) {
        source->filter.clear();
        source->dcBlocker.clear();
    }
    glideIn_ = false;
    fade_ = 1.0f;
}

float BassVoice::tickFade() {
    if (glideIn_) {
        fade_ -= kFadeStep;
        if (fade_ <= kFadeFloor) {
            fade_ = kFadeFloor;
            glideIn_ = false;
        }
    } else {
        fade_ = std::min(fade_ + kFadeStep, 1.0f);
    }
    return fade_;
}

float BassVoice::Source::tick(float phase, float gain) {
    return dcBlocker.tick(filter.process(oscillator.process(phase + 0.001f) * gain));
}

void BassVoice::tick(const MasterPhases& phases, const Sections& sections, float& mix) {
    const double phase = phases[pitch_.semitone] * 0.5 * pitch_.octaveFactor;
    const float delayed = phaseRing_.writeThenRead(static_cast<float>(phase));
    const float fade = tickFade();
    const float amp = envelope_.tick() * 1.5f * fade;
    if (sections.on[kContrabass]) {
        mix += contrabass_.tick(delayed * 0.5f, amp * sections.level[kContrabass] * 0.4f);
    }
    if (sections.on[kCello]) mix += cello_.tick(delayed, amp * sections.level[kCello] * 0.4f);
}

}  // namespace reference
