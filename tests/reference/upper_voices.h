// The polyphonic pool: up to 44 voices that read the shared master phases, for the four upper
// sections.
#pragma once

#include <array>

#include "tests/reference/biquad.h"
#include "dsp/module_fm_op.h"
#include "dsp/pitched_oscillator.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "tests/reference/master_phases.h"
#include "engine/sections.h"
#include "engine/sound_engine.h"
#include "engine/voice_allocator.h"
#include "tests/reference/names.h"

namespace reference {

// The voices of one sample, added up.
struct SectionSums {
    float viola = 0.0f;
    float violin = 0.0f;
    float brassHorn = 0.0f;
    bool sounding = false;
};

class UpperVoices {
  public:
    UpperVoices();

    // Releases all voices, clears their oscillators and filters, recomputes the release factors.
    void setRate(double sampleRate);

    void setPolyphony(int count);
    int polyphony() const { return allocator_.polyphony(); }
    void setWaveform(Waveform waveform) { waveform_ = waveform; }
    // Phase offset of the violin operators, 0..0.5 turns.
    void setViolinPhase(float turns) { violinPhase_ = turns; }

    // Calls change(dsp::VoiceEnvelope&) for every slot, in order.
    template <typename Change>
    void forEachEnvelope(Change change) {
        for (dsp::VoiceEnvelope& envelope : envelopes_) change(envelope);
    }
    // Also applies to the section envelope.
    void setRelease(const ReleaseTime& release);

    // `key` is playable (isPlayableKey), `velocity` 1..127.
    void noteOn(int key, int velocity);
    void noteOff(int key);
    void setPedal(bool down);
    // Releases every voice and the section envelope; the allocator forgets its notes.
    void allNotesOff();

    // Idles all envelopes at level 0, clears oscillators and key high-passes; notes stay allocated.
    void silence();
    // silence(), and also forgets all notes.
    void reset();

    // Renders one sample. With `shared` the voices are added without their levels; scale the sums
    // by envelopeSum().
    SectionSums tick(const MasterPhases& phases, double bendRatio, const Sections& sections,
                     bool shared);
    // Sum of the levels of all 44 envelopes, idle ones included.
    float envelopeSum() const;
    // Scales the bow noise. It also runs while no voice sounds.
    float tickSectionEnvelope() { return sectionEnvelope_.tick(); }

  private:
    struct Voice {
        dsp::ModuleFMop oscA;
        dsp::ModuleFMop oscB;
        dsp::PitchedOscillator tableOscA;
        dsp::PitchedOscillator tableOscB;
        Biquad keyHighPass;
        Pitch pitch;
        int noteState = 0;  // 1 while the key is held, -1 after its note-off
    };
    struct Sources {
        float a;
        float b;
    };
    Sources tickSources(Voice& voice, const MasterPhases& phases, double bendRatio,
                        const Sections& sections);
    void releaseSlot(int slot);
    BiquadCoefficients keyHighPass() const;  // of the last note

    std::array<dsp::VoiceEnvelope, kMaxVoices> envelopes_;
    std::array<Voice, kMaxVoices> voices_;
    dsp::VoiceEnvelope sectionEnvelope_;
    VoiceAllocator allocator_{envelopes_.data()};
    Waveform waveform_ = Waveform::kFeedback;
    float violinPhase_ = 0.0f;
    float lastNoteHertz_ = kLowestKeyHighPassHertz;
    ReleaseTime release_;
    double sampleRate_ = 44100.0;
};

}  // namespace reference
