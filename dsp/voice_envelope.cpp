// Notes, settings and rates of the voice envelope.
#include "dsp/voice_envelope.h"

#include <algorithm>
#include <cstdlib>

#include "dsp/finite.h"

namespace dsp {

VoiceEnvelope::VoiceEnvelope() {
    setGlideHz(20.0f);
}

void VoiceEnvelope::setRate(double sampleRate) {
    if (isUsableRate(sampleRate)) sampleRate_ = sampleRate;
}

void VoiceEnvelope::setAttackTime(float seconds) {
    assignFinite(attackTime_, seconds);
}

void VoiceEnvelope::setDecayTime(float seconds) {
    assignFinite(decayTime_, seconds);
}

void VoiceEnvelope::setReleaseFactor(float factor) {
    assignLimited(releaseFactor_, factor, 0.0f, 1.0f);
}

void VoiceEnvelope::setSustain(float fraction) {
    assignLimited(sustain_, fraction, 0.0f, 1.0f);
    if (!loopOnZeroSustain_ && sustain_ < 0.001f) sustain_ = 0.0f;
}

void VoiceEnvelope::setVelocityAmount(float amount) {
    assignLimited(velocityAmount_, amount, 0.0f, 1.0f);
}

void VoiceEnvelope::setPeakScale(float scale) {
    assignLimited(peakScale_, scale, 0.0f, 100.0f);
}

void VoiceEnvelope::setLevelKeyTrack(float amount) {
    assignLimited(levelKeyTrack_, amount, -1.0f, 1.0f);
}

void VoiceEnvelope::setTimeKeyTrack(float amount) {
    assignLimited(timeKeyTrack_, amount, -1.0f, 1.0f);
}

void VoiceEnvelope::setKeyRange(int low, int high) {
    if (low == high) return;
    keyLow_ = low;
    keyHigh_ = high;
}

float VoiceEnvelope::keyTrackScale(float amount) const {
    const float range = static_cast<float>(std::abs(keyHigh_ - keyLow_));
    const int fromLow = std::abs(note_ - keyLow_);
    const int distance =
        amount >= 0.0f ? fromLow : static_cast<int>(range - static_cast<float>(fromLow));
    return 1.0f - std::fabs(amount) / range * static_cast<float>(distance);
}

float VoiceEnvelope::step(float seconds) const {
    return seconds > 0.0f ? static_cast<float>(peak_ / (seconds * sampleRate_)) : 1.0f;
}

void VoiceEnvelope::computeRates() {
    peak_ = velocityPeak_;
    float attackTime = attackTime_;
    float decayTime = decayTime_;
    if (levelKeyTrack_ != 0.0f) {
        const float f = keyTrackScale(levelKeyTrack_);
        peak_ = f * f * velocityPeak_;
    }
    if (timeKeyTrack_ != 0.0f) {
        const float f = keyTrackScale(timeKeyTrack_);
        attackTime = f * f * attackTime_;
        decayTime = f * f * decayTime_;
    }
    attackStep_ = step(attackTime);
    decayStep_ = step(decayTime);
    sustainLevel_ = peak_ * sustain_;
}

void VoiceEnvelope::noteOn(int velocity, int note) {
    // 1 / 127^2 rounded to seven digits: velocity 127 peaks just below 1.
    constexpr float kVelocityScale = 6.200012e-5f;
    const float v = static_cast<float>(std::clamp(velocity, 0, 127));
    trigger(v * v * velocityAmount_ * kVelocityScale + (1.0f - velocityAmount_), note);
}

void VoiceEnvelope::trigger(float velocityPeak, int note) {
    stage_ = kAttack;
    releasePending_ = false;
    note_ = note;
    assignFinite(velocityPeak_, velocityPeak);
    computeRates();
}

void VoiceEnvelope::noteOff() {
    if (sustainForever_) return;
    if (holdToSustain_) {
        if (stage_ == kSustain) {
            stage_ = kRelease;
        } else {
            releasePending_ = true;
        }
        return;
    }
    if (level_ > 0.0f) {
        stage_ = kRelease;
    } else {
        kill();
    }
    releasePending_ = false;
}

void VoiceEnvelope::render(float* levels, int samples) {
    Ramp ramp;
    if (stage_ == kIdle) {
        std::fill_n(levels, samples, level_);
    } else if (!movesEvenly(samples, ramp)) {
        for (int i = 0; i < samples; ++i) levels[i] = tick();
    } else if (ramp.stands()) {
        std::fill_n(levels, samples, level_);
    } else {
        // A ramp either scales or adds, so each level waits for one operation.
        float level = level_;
        for (int i = 0; i < samples && ramp.step == 0.0f; ++i) levels[i] = level *= ramp.factor;
        for (int i = 0; i < samples && ramp.step != 0.0f; ++i) levels[i] = level += ramp.step;
        level_ = level;
    }
}

void VoiceEnvelope::kill() {
    stage_ = kIdle;
    level_ = 0.0f;
}

}  // namespace dsp
