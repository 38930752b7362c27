// The polyphonic pool: up to 44 voices that read the shared master phases, for the four upper
// sections.
#pragma once

#include <array>

#include "dsp/lanes/kernels.h"
#include "engine/bass_voice.h"
#include "engine/pitch.h"
#include "engine/sections.h"
#include "engine/upper_voice_controls.h"

namespace engine {

// The voices of one segment, added up.
struct SectionSums {
    Signal viola;
    Signal violin;
    int sounding;  // number of leading frames in which a voice sounds
};

class UpperVoices : public UpperVoiceControls<dsp::VoiceLanes> {
  public:
    // Renders one segment, together with the bass operators. With `shared` the voices are added
    // without their levels; scale the sums by envelopeSum().
    void render(const PhaseRows& phases, double bendRatio, const Sections& sections, bool shared,
                int frames, BassRows& bass, SectionSums& sums);
    // Whether the operators need the shared phases before rounding. The others multiply them by
    // powers of two, which rounds alike before and after.
    bool readsTurns() const {
        return waveform_ == Waveform::kSquaredFeedback || violinPhase_ != 0.0f;
    }
    // Sum of the levels of all 44 envelopes, idle ones included, for each frame of the segment.
    void envelopeSum(float* sum, int frames) { levels_.sum(sum, frames); }

  private:
    void renderOscillators(const PhaseRows& phases, double bendRatio, const Sections& sections,
                           bool shared, BassRows& bass, SectionSums& sums);

    // A set of slots as masks of their lanes, of which mostly the same one is asked for.
    class SlotMasks {
      public:
        const dsp::LaneMasks& of(SlotSet slots) {
            if (slots != slots_) {
                slots_ = slots;
                for (int slot = 0; slot < kMaxVoices; ++slot)
                    masks_[slot] = slots >> slot & 1 ? -1 : 0;
            }
            return masks_;
        }

      private:
        SlotSet slots_ = 0;
        dsp::LaneMasks masks_{};
    };

    const dsp::Kernels& kernels_ = dsp::kernels();
    VoiceLevels levels_;
    SlotMasks masks_;
    // Signals of all lanes over one segment, with room for whole vectors.
    struct alignas(dsp::kVectorBytes) Scratch {
        using Rows = std::array<float, kRowStride * dsp::kVoiceLanes>;
        Rows a, b;
    };
    Scratch scratch_{};
};

}  // namespace engine
