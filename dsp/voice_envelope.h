// Amplitude envelope of one voice: a state machine that gives one level a sample.
#pragma once

#include "dsp/one_pole.h"

namespace dsp {

// Levels are linear, times in seconds. Setters of times, sustain, velocity and key tracking, and
// setRate, take effect at the next computeRates (which every note-on runs). Non-finite settings
// are ignored; others are limited to the ranges given.
class VoiceEnvelope {
  public:
    enum Stage { kAttack, kDecay, kSustain, kRelease, kIdle, kQuickFade };

    VoiceEnvelope();

    void setRate(double sampleRate);
    void setAttackTime(float seconds);  // 0 or less: the peak in one sample
    void setDecayTime(float seconds);
    void setReleaseFactor(float factor);   // multiplier a sample of the release, 0..1
    void setSustain(float fraction);       // of the peak; below 0.001 stored as 0, see below
    void setVelocityAmount(float amount);  // 0..1: how much the velocity sets the peak
    void setPeakScale(float scale);        // 0..100: multiplies the top of the attack

    // Key tracking, amounts -1..1: the peak and the times are scaled by the square of
    // 1 - |amount| x distance / range, the distance being the note's from the low end of the
    // range, or with a negative amount from the high end. An empty range is ignored.
    void setLevelKeyTrack(float amount);
    void setTimeKeyTrack(float amount);
    void setKeyRange(int low, int high);  // MIDI keys

    void setHoldToSustain(bool on) { holdToSustain_ = on; }    // releases wait for the sustain
    void setSustainForever(bool on) { sustainForever_ = on; }  // releases are refused
    // Decay to a sustain of exactly 0 attacks again; setSustain then stores small values as given.
    void setLoopOnZeroSustain(bool on) { loopOnZeroSustain_ = on; }
    // The sustain level goes through a one-pole with its corner for 44100 Hz (initially 20 Hz),
    // and the release ends without going idle: the caller decides when the voice is free.
    void setGlide(bool on) { glideOn_ = on; }
    void setGlideHz(float hz) { glide_.setFrequency(hz); }

    void computeRates();

    // Attacks from the present level, whatever it is.
    void noteOn(int velocity, int note);         // velocity 0..127 sets the peak
    void trigger(float velocityPeak, int note);  // the same with the peak given
    void quickFade() { stage_ = kQuickFade; }    // down by 0.01 a sample, then attacks
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

    // So many ticks.
    void render(float* levels, int samples);

    // The level of the samples to come as level x factor + step, sample by sample.
    struct Ramp {
        float factor = 1.0f;
        float step = 0.0f;
        bool stands() const { return factor == 1.0f && step == 0.0f; }
    };
    // True, and the ramp, when no stage ends within so many samples; false also when one might.
    bool movesEvenly(int samples, Ramp& ramp) const;
    // Takes the level over that such a ramp has reached.
    void moveTo(float level) { level_ = level; }

    Stage stage() const { return stage_; }
    float level() const { return level_; }
    float velocityAmount() const { return velocityAmount_; }
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

    // An ended release keeps its last level.
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
    bool releasePending_ = false;  // a release came before the sustain
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

}  // namespace dsp
