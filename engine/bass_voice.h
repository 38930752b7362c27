// The monophonic bass voice below the keyboard split: "Contrabass" and "Cello" with legato
// glide-in. Their filters follow in ToneStages.
#pragma once

#include <array>

#include "dsp/delay_b.h"
#include "dsp/voice_envelope.h"
#include "dsp/lanes/voice_lanes.h"
#include "engine/envelope_settings.h"
#include "engine/note_stack.h"
#include "engine/pitch.h"
#include "engine/sections.h"

namespace engine {

// One segment of the bass operators, before gain and filters.
struct BassRows {
    using Lanes = std::array<float, kLongestSegment * dsp::kBassLanes>;
    // Per frame: contrabass, cello, idle lanes; phases in turns.
    alignas(dsp::kVectorBytes) Lanes phases{};
    alignas(dsp::kVectorBytes) Lanes tone{};
    Signal amplitude;
    int sounding = 0;  // number of leading frames that sound

    dsp::OperatorLanesOf<dsp::kBassLanes>* operators = nullptr;
    std::array<int, dsp::kBassLanes> on{};  // masks, as in dsp::LaneMasks

    // Arguments that make the voice kernels fill `tone` from a frame on.
    dsp::BassRun run(int from) {
        const int at = from * dsp::kBassLanes;
        return {operators, on.data(), &phases[at], &tone[at]};
    }
};

class BassVoice {
  public:
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
    // silence(), and also forgets held keys and ends the glide.
    void reset();

    // Fills in a segment except for `tone`. Once the envelope is idle, nothing advances.
    void render(const PhaseRows& phases, const Sections& sections, int frames, BassRows& rows);

  private:
    static constexpr int kPhaseDelay = 99;  // samples
    enum Lane { kContrabassLane, kCelloLane };

    void setPitch(int key);
    float tickFade();
    // Returns the number of leading frames that sound.
    int renderAmplitude(int frames, Signal& amplitude);

    dsp::VoiceEnvelope envelope_;
    NoteStack stack_;
    Pitch pitch_;
    dsp::OperatorLanesOf<dsp::kBassLanes> operators_;
    dsp::DelayB phaseRing_{kPhaseDelay};
    float fade_ = 1.0f;
    bool glideIn_ = false;
    double sampleRate_ = 44100.0;
};

}  // namespace engine
