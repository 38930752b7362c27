// Amplitude envelope of one voice: a state machine that gives one level per sample.
#pragma once

#include "dsp/one_pole.h"

namespace dsp {

// Levels are linear, times in seconds. Times, sustain, velocity amount, key tracking and the rate
// take effect at the next computeRates; every note-on calls it. Non-finite settings are ignored;
// others are limited to the ranges given.
//
//     peak    = velocity^2 x amount / 127^2 + (1 - amount)
//     attack  : level += peak / (attackSeconds x sampleRate), up to peak x peakScale
//     decay   : level -= peak / (decaySeconds x sampleRate), down to peak x sustain
//     release : level *= releaseFactor
class VoiceEnvelope {
  public:
    enum Stage { kAttack, kDecay, kSustain, kRelease, kIdle, kQuickFade };

    VoiceEnvelope();

    void setRate(double sampleRate);
    void setAttackTime(float seconds);  // 0 or less: the peak in one sample
    void setDecayTime(float seconds);
    void setReleaseFactor(float factor);   // per-sample multiplier, 0..1
    void setSustain(float fraction);       // of the peak; below 0.001 it is stored as 0
    void setVelocityAmount(float amount);  // 0..1: how far velocity sets the peak
    void setPeakScale(float scale);        // 0..100: multiplies the top of the attack

    // Key tracking scales the peak or the times by (1 - |amount| x distance / range)^2. `distance`
    // is measured from the low end of the key range, or from the high end when the amount (-1..1)
    // is negative. An empty range is ignored.
    void setLevelKeyTrack(float amount);
    void setTimeKeyTrack(float amount);
    void setKeyRange(int low, int high);  // MIDI keys

    void setHoldToSustain(bool on) { holdToSustain_ = on; }    // a release waits for the sustain
    void setSustainForever(bool on) { sustainForever_ = on; }  // note-offs are ignored
    // A decay to a sustain of exactly 0 attacks again. While this is on, setSustain stores values
    // below 0.001 as given.
    void setLoopOnZeroSustain(bool on) { loopOnZeroSustain_ = on; }
    // Smooths the sustain level with a one-pole designed for 44100 Hz (initially 20 Hz). The
    // release then ends without going idle: the caller decides when the voice is free.
    void setGlide(bool on) { glideOn_ = on; }
    void setGlideHz(float hz) { glide_.setFrequency(hz); }

    void computeRates();

    // Attack starts from the current level.
    void noteOn(int velocity, int note);         // velocity is limited to 0..127
    void trigger(float velocityPeak, int note);  // sets the peak directly
    void quickFade() { stage_ = kQuickFade; }    // falls 0.01 per sample, then attacks
    void noteOff();
    void kill();  // idle at level 0

    float tick() {
        switch (stage_) {
            case kAttack:
                return tickAttack();
            case kDecay:
                return tickDecay();
            case kSustain:
                return glideOn_ ? glide_.tickLowPass(level_) : level_;
            case kRelease:
                return tickRelease();
            case kQuickFade:
                return tickQuickFade();
            case kIdle:
                break;
        }
        return level_;
    }

    // Writes the next `samples` levels.
    void render(float* levels, int samples);

    // The coming samples obey level[n] = level[n-1] x factor + step.
    struct Ramp {
        float factor = 1.0f;
        float step = 0.0f;
        bool stands() const { return factor == 1.0f && step == 0.0f; }
    };
    // Fills in `ramp` and returns true if no stage can end within the next `samples`. May return
    // false when none would.
    bool movesEvenly(int samples, Ramp& ramp) const;
    // Whether a level that sounds stays as it is until the next note or setting.
    bool stands() const { return stage_ == kSustain && !glideOn_; }
    // Sets the level that a ramp has reached.
    void moveTo(float level) { level_ = level; }

    Stage stage() const { return stage_; }
    float level() const { return level_; }
    double sampleRate() const { return sampleRate_; }

  private:
    static constexpr float kFloor = 0.001f;  // a release ends here

    float tickAttack() {
        level_ += attackStep_;
        const float top = peakScale_ * peak_;
        if (level_ >= top) {
            level_ = top;
            stage_ = kDecay;
        }
        return level_;
    }

    float tickDecay() {
        level_ -= decayStep_;
        if (level_ > sustainLevel_) return level_;
        level_ = sustainLevel_;
        stage_ = releasePending_ && !sustainForever_ ? kRelease : kSustain;
        if (loopOnZeroSustain_ && sustain_ == 0.0f) stage_ = kAttack;
        return level_;
    }

    // A release that ends keeps its last level.
    float tickRelease() {
        if (level_ > kFloor) {
            level_ *= releaseFactor_;
            if (level_ > kFloor) return level_;
        } else {
            level_ = 0.0f;
        }
        if (!glideOn_) stage_ = kIdle;
        return level_;
    }

    float tickQuickFade() {
        level_ -= 0.01f;
        if (level_ > kFloor) return level_;
        level_ = 0.0f;
        stage_ = kAttack;
        return level_;
    }

    float keyTrackScale(float amount) const;
    float step(float seconds) const;

    Stage stage_ = kIdle;
    float level_ = 0.0f;
    float attackStep_ = 0.01f;
    float decayStep_ = 0.01f;
    float releaseFactor_ = 0.999f;
    float peak_ = 1.0f;  // key-tracked
    float peakScale_ = 1.0f;
    float sustain_ = 1.0f;
    float sustainLevel_ = 1.0f;
    bool releasePending_ = false;  // a note-off came before the sustain
    bool holdToSustain_ = false;
    bool sustainForever_ = false;
    bool loopOnZeroSustain_ = false;
    bool glideOn_ = false;
    OnePole glide_;

    double sampleRate_ = 44100.0;
    float attackTime_ = 0.001f;
    float decayTime_ = 0.001f;
    float velocityPeak_ = 1.27f;
    float velocityAmount_ = 1.0f;
    float levelKeyTrack_ = 0.0f;
    float timeKeyTrack_ = 0.0f;
    int keyLow_ = 0;
    int keyHigh_ = 127;
    int note_ = 60;
};

inline bool VoiceEnvelope::movesEvenly(int samples, Ramp& ramp) const {
    // Exceeds the rounding error that a run of steps can build up within a block.
    constexpr float kMargin = 0.001f;
    const float n = static_cast<float>(samples);
    switch (stage_) {
        case kAttack: {
            ramp = {1.0f, attackStep_};
            const float top = peakScale_ * peak_;
            return level_ + n * attackStep_ < top * (1.0f - kMargin);
        }
        case kDecay:
            ramp = {1.0f, -decayStep_};
            return level_ - n * decayStep_ > sustainLevel_ + level_ * kMargin;
        case kSustain:
            ramp = {};
            return stands();
        case kRelease:
            ramp = {releaseFactor_, 0.0f};
            // Bernoulli: factor^n >= 1 - n (1 - factor).
            return level_ * (1.0f - n * (1.0f - releaseFactor_)) > kFloor * (1.0f + kMargin);
        case kIdle:
        case kQuickFade:
            break;
    }
    return false;
}

}  // namespace dsp
