// The monophonic bass voice below the keyboard split: "Contrabass" and "Cello" with legato
// glide-in.
#pragma once

#include "dsp/dc_blocker.h"
#include "dsp/delay_b.h"
#include "dsp/module_fm_op.h"
#include "dsp/state_variable_filter.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "engine/note_stack.h"
#include "engine/pitch.h"
#include "engine/sections.h"

namespace engine {

// The bass over a segment. A section that is off gives nothing.
struct BassRows {
    Signal contrabass;
    Signal cello;
    bool contrabassOn;
    bool celloOn;
    int sounding;  // frames, from the first on
};

class BassVoice {
  public:
    void setRate(double sampleRate);

    dsp::VoiceEnvelope& envelope() { return envelope_; }
    void setRelease(const ReleaseTime& release) { release.applyTo(envelope_, sampleRate_); }

    // `key` is a playable raw MIDI key, sounding an octave above the upper reading before the
    // sections halve it.
    void noteOn(int key, int velocity);
    void noteOff(int key);
    void setPedal(bool down);
    // Releases the envelope; no key is held any more.
    void allNotesOff();

    // Envelope idle at level 0, operators cleared; held keys stay.
    void silence();
    // The same, nothing held, filters cleared, no glide under way.
    void reset();

    // A segment; stands still once its envelope is idle.
    void render(const PhaseRows& phases, const Sections& sections, int frames, BassRows& out);

  private:
    static constexpr int kPhaseRingLength = 100;

    struct Source {
        dsp::ModuleFMop oscillator;
        dsp::StateVariableFilter filter;
        dsp::DcBlocker dcBlocker;
        float tickTone(float phase) { return oscillator.process(phase + 0.001f); }
        float tickFilters(float x) { return dcBlocker.tick(filter.process(x)); }
    };
    void setPitch(int key);
    float tickFade();
    // Fills the rows of delayed phases and of amplitudes; returns how many frames sound.
    int renderControls(const PhaseRows& phases, int frames, Signal& delayed, Signal& amplitude);

    dsp::VoiceEnvelope envelope_;
    NoteStack stack_;
    Pitch pitch_;
    Source contrabass_;
    Source cello_;
    dsp::DelayB phaseRing_{kPhaseRingLength};
    float fade_ = 1.0f;
    bool glideIn_ = false;
    double sampleRate_ = 44100.0;
};

}  // namespace engine
