// Notes, legato glide and sound of the bass voice.
#include "engine/bass_voice.h"

#include <algorithm>

namespace engine {

namespace {
constexpr int kEnvelopeKey = 60;
constexpr float kFadeStep = 0.01f;
constexpr float kFadeFloor = 0.0001f;
}  // namespace

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
        envelope_.trigger(velocityPeak(stack_.topVelocity(), envelope_.velocityAmount()),
                          kEnvelopeKey);
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

// The phase travels through a ring of 99 samples.
int BassVoice::renderControls(const PhaseRows& phases, int frames, Signal& delayed,
                              Signal& amplitude) {
    int t = 0;
    for (; t < frames && envelope_.stage() != dsp::VoiceEnvelope::kIdle; ++t) {
        const double phase = phases.turns[t][pitch_.semitone] * 0.5 * pitch_.octaveFactor;
        delayed[t] = phaseRing_.writeThenRead(static_cast<float>(phase));
        const float fade = tickFade();
        amplitude[t] = envelope_.tick() * 1.5f * fade;
    }
    return t;
}

void BassVoice::render(const PhaseRows& phases, const Sections& sections, int frames,
                       BassRows& out) {
    Signal delayed;
    Signal amplitude;
    out.sounding = renderControls(phases, frames, delayed, amplitude);
    out.contrabassOn = sections.on[kContrabass];
    out.celloOn = sections.on[kCello];
    if (out.sounding == 0) return;
    // Both sections in one loop, tone and filters in two: each waits for its own last sample, and
    // the processor fills the wait with what it sees ahead.
    Source contrabass = contrabass_;
    Source cello = cello_;
    for (int t = 0; t < out.sounding; ++t) {
        out.contrabass[t] = contrabass.tickTone(delayed[t] * 0.5f);
        out.cello[t] = cello.tickTone(delayed[t]);
    }
    const float contrabassLevel = sections.level[kContrabass];
    const float celloLevel = sections.level[kCello];
    for (int t = 0; t < out.sounding; ++t) {
        const float contrabassGain = amplitude[t] * contrabassLevel * 0.4f;
        const float celloGain = amplitude[t] * celloLevel * 0.4f;
        out.contrabass[t] = contrabass.tickFilters(out.contrabass[t] * contrabassGain);
        out.cello[t] = cello.tickFilters(out.cello[t] * celloGain);
    }
    if (out.contrabassOn) contrabass_ = contrabass;
    if (out.celloOn) cello_ = cello;
}

}  // namespace engine
