// The monophonic bass voice below the keyboard split: "Contrabass" and "Cello" with legato
// glide-in. Their filters follow in ToneStages.
#pragma once

#include <array>

#include "dsp/lanes/voice_lanes.h"
#include "engine/bass_voice_controls.h"
#include "engine/pitch.h"
#include "engine/sections.h"

namespace engine {

// One segment of the bass operators, before gain and filters.
struct BassRows {
    // With a frame in front; see dsp::BassRun.
    using Lanes = std::array<float, (1 + kLongestSegment) * dsp::kBassLanes>;
    static constexpr int at(int frame) { return (1 + frame) * dsp::kBassLanes; }
    // Per frame: contrabass, cello, idle lanes; phases in turns, less the operators' offset.
    alignas(dsp::kVectorBytes) Lanes phases{};
    alignas(dsp::kVectorBytes) Lanes tone{};
    Signal amplitude;
    int sounding = 0;  // number of leading frames that sound

    dsp::OperatorLanesOf<dsp::kBassLanes>* operators = nullptr;
    std::array<int, dsp::kBassLanes> on{};  // masks, as in dsp::LaneMasks

    // Arguments that make the voice kernels fill `tone` from a frame on.
    dsp::BassRun run(int from) {
        return {operators, on.data(), &phases[at(from)], &tone[at(from)]};
    }
};

class BassVoice : public BassVoiceControls<dsp::OperatorLanesOf<dsp::kBassLanes>> {
  public:
    // Fills in a segment except for `tone`. Once the envelope is idle, nothing advances.
    void render(const PhaseRows& phases, const Sections& sections, int frames, BassRows& rows);

  private:
    float tickFade();
    // Returns the number of leading frames that sound.
    int renderAmplitude(int frames, Signal& amplitude);
};

}  // namespace engine
