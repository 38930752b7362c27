// Notes and settings of the monophonic bass voice, whatever renders its operators.
#pragma once

#include "dsp/delay_b.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "engine/note_stack.h"
#include "engine/pitch.h"
#include "engine/sound_engine.h"

namespace engine {

// `Operators` holds two lanes, as dsp::OperatorLanesOf does.
template <typename Operators>
class BassVoiceControls {
  public:
    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        envelope_.setRate(sampleRate);
        envelope_.computeRates();
        for (const int lane : {kContrabassLane, kCelloLane}) {
            operators_.clear(lane);
            operators_.setRate(lane, static_cast<float>(sampleRate));
        }
        phaseRing_.clear();
    }

    dsp::VoiceEnvelope& envelope() { return envelope_; }
    void setRelease(const ReleaseTime& release) { release.applyTo(envelope_, sampleRate_); }

    // `key` is a playable MIDI key (see isPlayableKey). Taken as semitones above C0 it sounds an
    // octave above the upper voices, before the sections halve it.
    void noteOn(int key, int velocity) {
        if (stack_.push(key, velocity)) {
            envelope_.noteOn(stack_.topVelocity(), kEnvelopeKey);
        }
        setPitch(key);
    }
    void noteOff(int key) {
        stack_.remove(key);
        if (stack_.pedalDown()) return;
        if (stack_.empty()) {
            envelope_.noteOff();
            glideIn_ = false;
        } else {
            setPitch(stack_.topKey());
        }
    }
    void setPedal(bool down) {
        stack_.setPedal(down);
        if (down) return;
        for (int key = stack_.takeSustainedKey(); key >= 0; key = stack_.takeSustainedKey()) {
            noteOff(key);
        }
    }
    // Releases the envelope and forgets all held keys.
    void allNotesOff() {
        envelope_.noteOff();
        stack_.reset();
    }

    // Idles the envelope at level 0 and clears the operators; held keys stay.
    void silence() {
        envelope_.noteOff();
        envelope_.kill();
        operators_.clear(kContrabassLane);
        operators_.clear(kCelloLane);
    }
    // silence(), and also forgets held keys and ends the glide.
    void reset() {
        silence();
        stack_.reset();
        glideIn_ = false;
        fade_ = 1.0f;
    }

  protected:
    enum Lane { kContrabassLane, kCelloLane };

    dsp::VoiceEnvelope envelope_;
    Operators operators_;
    Pitch pitch_;
    dsp::DelayB phaseRing_{kPhaseDelay};
    float fade_ = 1.0f;
    bool glideIn_ = false;

  private:
    static constexpr int kEnvelopeKey = 60;
    static constexpr int kPhaseDelay = 99;  // samples

    void setPitch(int key) {
        pitch_ = pitchFromIndex(key);
        const float celloHertz = static_cast<float>(pitch_.hertz() * 0.5);
        operators_.setFrequency(kCelloLane, celloHertz);
        operators_.setFrequency(kContrabassLane, celloHertz * 0.5f);
        glideIn_ = true;
    }

    NoteStack stack_;
    double sampleRate_ = kInitialRate;
};

}  // namespace engine
