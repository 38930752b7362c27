// Notes, legato glide and controls of the bass voice.
#include "engine/bass_voice.h"

#include <algorithm>

namespace engine {

namespace {
constexpr int kEnvelopeKey = 60;
constexpr float kPhaseOffset = 0.001f;  // the operators subtract it again
constexpr float kFadeStep = 0.01f;      // per sample
constexpr float kFadeFloor = 0.0001f;
}  // namespace

void BassVoice::setRate(double sampleRate) {
    sampleRate_ = sampleRate;
    envelope_.setRate(sampleRate);
    envelope_.computeRates();
    for (const int lane : {kContrabassLane, kCelloLane}) {
        operators_.clear(lane);
        operators_.setRate(lane, static_cast<float>(sampleRate));
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
    operators_.setFrequency(kCelloLane, celloHertz);
    operators_.setFrequency(kContrabassLane, celloHertz * 0.5f);
    glideIn_ = true;
}

void BassVoice::silence() {
    envelope_.noteOff();
    envelope_.kill();
    operators_.clear(kContrabassLane);
    operators_.clear(kCelloLane);
}

void BassVoice::reset() {
    silence();
    stack_.reset();
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

int BassVoice::renderAmplitude(int frames, Signal& amplitude) {
    dsp::VoiceEnvelope::Ramp ramp;
    int sounding = 0;
    if (envelope_.movesEvenly(frames, ramp)) {
        envelope_.render(amplitude.data(), frames);
        sounding = frames;
    }
    while (sounding < frames && envelope_.stage() != dsp::VoiceEnvelope::kIdle) {
        amplitude[sounding++] = envelope_.tick();
    }
    for (int t = 0; t < sounding; ++t) amplitude[t] = amplitude[t] * 1.5f * tickFade();
    return sounding;
}

void BassVoice::render(const PhaseRows& phases, const Sections& sections, int frames,
                       BassRows& rows) {
    rows.sounding = renderAmplitude(frames, rows.amplitude);
    rows.operators = &operators_;
    rows.on[kContrabassLane] = sections.on[kContrabass] ? -1 : 0;
    rows.on[kCelloLane] = sections.on[kCello] ? -1 : 0;
    Signal delayed;
    for (int t = 0; t < rows.sounding; ++t) {
        const double phase = phases.turns[t][pitch_.semitone] * 0.5 * pitch_.octaveFactor;
        delayed[t] = static_cast<float>(phase);
    }
    phaseRing_.exchange(delayed.data(), rows.sounding);
    for (int t = 0; t < rows.sounding; ++t) {
        float* const lanes = &rows.phases[t * dsp::kBassLanes];
        lanes[kContrabassLane] = delayed[t] * 0.5f + kPhaseOffset;
        lanes[kCelloLane] = delayed[t] + kPhaseOffset;
    }
}

}  // namespace engine
