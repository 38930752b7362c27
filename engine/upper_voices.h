// The polyphonic pool: up to 44 voices reading the shared master phases for the four upper
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

// What the pool adds up over a segment.
struct SectionSums {
    Signal viola;
    Signal violin;
    int sounding;  // frames, from the first on, in which some voice sounds
};

class UpperVoices {
  public:
    UpperVoices();

    // Releases all voices and clears their oscillators and filters; release factors are rebuilt.
    void setRate(double sampleRate);

    void setPolyphony(int count);
    int polyphony() const { return allocator_.polyphony(); }
    void setWaveform(Waveform waveform) { waveform_ = waveform; }
    // Turns added to the violin operators, as the parameter stores it (0..0.5).
    void setViolinPhase(float turns) { violinPhase_ = turns; }

    // Calls change(dsp::VoiceEnvelope&) for every slot, in order.
    template <typename Change>
    void forEachEnvelope(Change change) {
        for (dsp::VoiceEnvelope& envelope : envelopes_) change(envelope);
    }
    // Also reaches the section envelope.
    void setRelease(const ReleaseTime& release);

    // `key` is playable (isPlayableKey), `velocity` 1..127.
    void noteOn(int key, int velocity);
    void noteOff(int key);
    void setPedal(bool down);
    // Releases every voice and the section envelope; the allocator forgets its notes.
    void allNotesOff();

    // All envelopes idle at level 0, oscillators and key high-passes cleared; notes stay allocated.
    void silence();
    // The same, and no note is held.
    void reset();

    // A segment, in which the operators of the bass run along. With `shared` the voices are summed
    // bare, to be scaled by envelopeSum() later.
    void render(const PhaseRows& phases, double bendRatio, const Sections& sections, bool shared,
                int frames, BassRows& bass, SectionSums& sums);
    // Sum of the levels of all 44 envelopes over the segment, idle ones included.
    void envelopeSum(float* sum, int frames) { levels_.sum(sum, frames); }
    // Scales the bow noise; runs also while no voice sounds.
    dsp::VoiceEnvelope& sectionEnvelope() { return sectionEnvelope_; }

  private:
    struct TableVoice {
        dsp::PitchedOscillator oscA;
        dsp::PitchedOscillator oscB;
    };
    void renderOperators(const PhaseRows& phases, const Sections& sections, bool shared,
                         BassRows& bass, SectionSums& sums);
    void renderTables(double bendRatio, bool shared, SectionSums& sums);
    // Phases of all lanes that sound: the pitch's own times `octaves`, plus `offset` turns.
    void lanePhases(const PhaseRows& phases, double octaves, double offset, float* out) const;
    void clearLane(int slot);
    void releaseSlot(int slot);
    dsp::BiquadCoefficients keyHighPass() const;  // for the last note

    const dsp::Kernels& kernels_ = dsp::kernels();
    VoiceEnvelopes envelopes_;
    VoiceLevels levels_;
    dsp::VoiceLanes lanes_;
    // Signals of all lanes over a segment, frame by frame, with room for whole vectors.
    struct alignas(32) Scratch {
        using Rows = std::array<float, (kLongestSegment + 8) * dsp::kVoiceLanes>;
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
