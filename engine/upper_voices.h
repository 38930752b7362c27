// The polyphonic pool: up to 44 voices that read the shared master phases, for the four upper
// sections.
#pragma once

#include <array>

#include "dsp/lanes/kernels.h"
#include "dsp/pitched_oscillator.h"
#include "dsp/voice_envelope.h"
#include "engine/bass_voice.h"
#include "engine/envelope_settings.h"
#include "engine/pitch.h"
#include "engine/sections.h"
#include "engine/sound_engine.h"
#include "engine/voice_allocator.h"
#include "engine/voice_levels.h"

namespace engine {

// The voices of one segment, added up.
struct SectionSums {
    Signal viola;
    Signal violin;
    int sounding;  // number of leading frames in which a voice sounds
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

    // Renders one segment, together with the bass operators. With `shared` the voices are added
    // without their levels; scale the sums by envelopeSum().
    void render(const PhaseRows& phases, double bendRatio, const Sections& sections, bool shared,
                int frames, BassRows& bass, SectionSums& sums);
    // Sum of the levels of all 44 envelopes, idle ones included, for each frame of the segment.
    void envelopeSum(float* sum, int frames) { levels_.sum(sum, frames); }
    // Scales the bow noise. It also runs while no voice sounds.
    dsp::VoiceEnvelope& sectionEnvelope() { return sectionEnvelope_; }

  private:
    struct TableVoice {
        dsp::PitchedOscillator oscA;
        dsp::PitchedOscillator oscB;
    };
    void renderOperators(const PhaseRows& phases, const Sections& sections, bool shared,
                         BassRows& bass, SectionSums& sums);
    void renderTables(double bendRatio, bool shared, SectionSums& sums);
    // Writes `octaves` x phase + `offset` turns for every lane.
    void lanePhases(const PhaseRows& phases, double octaves, double offset, float* out) const;
    void clearLane(int slot);
    void releaseSlot(int slot);
    dsp::BiquadCoefficients keyHighPass() const;  // of the last note

    const dsp::Kernels& kernels_ = dsp::kernels();
    VoiceEnvelopes envelopes_;
    VoiceLevels levels_;
    dsp::VoiceLanes lanes_;
    // Signals of all lanes over one segment, with room for whole vectors.
    struct alignas(dsp::kVectorBytes) Scratch {
        using Rows = std::array<float, kRowStride * dsp::kVoiceLanes>;
        Rows a, b, phasesA, phasesB;
    };
    Scratch scratch_{};
    std::array<TableVoice, kMaxVoices> tables_;
    std::array<int, kMaxVoices> noteState_{};  // 1 while the key is held, -1 after its note-off
    dsp::VoiceEnvelope sectionEnvelope_;
    VoiceAllocator allocator_{envelopes_.data()};
    Waveform waveform_ = Waveform::kFeedback;
    float violinPhase_ = 0.0f;
    float lastNoteHertz_ = kLowestKeyHighPassHertz;
    ReleaseTime release_;
    double sampleRate_ = 44100.0;
};

}  // namespace engine
