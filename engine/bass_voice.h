// The monophonic bass voice below the keyboard split: "Contrabass" and "Cello" with legato
// glide-in, up to their filters.
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

// The operators of the bass over a segment, before gain and filters.
struct BassRows {
    using Lanes = std::array<float, kLongestSegment * dsp::kBassLanes>;
    alignas(32) Lanes phases{};  // frame by frame: contrabass, cello, and idle lanes; in turns
    alignas(32) Lanes tone{};
    Signal amplitude;
    int sounding = 0;  // frames, from the first on

    dsp::OperatorLanesOf<dsp::kBassLanes>* operators = nullptr;
    std::array<int, dsp::kBassLanes> on{};  // as dsp::LaneMasks

    // What fills `tone` from a frame on.
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

    // `key` is a playable raw MIDI key, sounding an octave above the upper reading before the
    // sections halve it.
    void noteOn(int key, int velocity);
    void noteOff(int key);
    void setPedal(bool down);
    // Releases the envelope; no key is held any more.
    void allNotesOff();

    // Envelope idle at level 0, operators cleared; held keys stay.
    void silence();
    // The same, nothing held, no glide under way.
    void reset();

    // A segment, all but the tone; stands still once its envelope is idle.
    void render(const PhaseRows& phases, const Sections& sections, int frames, BassRows& rows);

  private:
    static constexpr int kPhaseDelay = 99;  // samples
    enum Lane { kContrabassLane, kCelloLane };

    void setPitch(int key);
    float tickFade();
    // Returns how many frames sound.
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
