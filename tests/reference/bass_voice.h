// The monophonic bass voice below the keyboard split: "Contrabass" and "Cello" with legato
// glide-in.
#pragma once

#include "dsp/dc_blocker.h"
#include "tests/reference/delay_b.h"
#include "dsp/module_fm_op.h"
#include "dsp/state_variable_filter.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "engine/note_stack.h"
#include "tests/reference/master_phases.h"
#include "engine/sections.h"
#include "tests/reference/names.h"

namespace reference {

class BassVoice {
  public:
    BassVoice();

    void setRate(double sampleRate);

    dsp::VoiceEnvelope& envelope() { return envelope_; }
    void setRelease(const ReleaseTime& release) { release.applyTo(envelope_, sampleRate_); }

    // `key` is a playable MIDI key (see isPlayableKey). Taken as semitones above C0 it sounds an
    // octave above the upper voices, before the sections halve it.
    void noteOn(int key, int velocity);
    void noteOff(int key);
    void setPedal(bool down);
    // Releases the envelope and forgets all held keys.
    void allNotesOff();

    // Idles the envelope at level 0 and clears the operators; held keys stay.
    void silence();
    // silence(), and also clears the filters, forgets held keys and ends the glide.
    void reset();

    bool sounding() const { return envelope_.stage() != dsp::VoiceEnvelope::kIdle; }
    // Adds one sample of the enabled sections to `mix`. Call it only while sounding.
    void tick(const MasterPhases& phases, const Sections& sections, float& mix);

  private:
    struct Source {
        dsp::ModuleFMop oscillator;
        dsp::StateVariableFilter filter;
        dsp::DcBlocker dcBlocker;
        float tick(float phase, float gain);
    };
    void setPitch(int key);
    float tickFade();

    dsp::VoiceEnvelope envelope_;
    NoteStack stack_;
    Pitch pitch_;
    Source contrabass_;
    Source cello_;
    DelayB phaseRing_;
    float fade_ = 1.0f;
    bool glideIn_ = false;
    double sampleRate_ = 44100.0;
};

}  // namespace reference
