// The polyphonic pool, one voice after the other: up to 44 voices for the four upper sections.
#pragma once

#include "dsp/module_fm_op.h"
#include "engine/sections.h"
#include "engine/upper_voice_controls.h"
#include "tests/reference/wrapped_to_unit.h"
#include "tests/reference/master_phases.h"

namespace reference {

// The voices of one sample, added up.
struct SectionSums {
    float viola = 0.0f;
    float violin = 0.0f;
    float brassHorn = 0.0f;
    bool sounding = false;
};

// Scalar blocks with the setters of the lanes.
template <typename Block, int kCount>
struct BlocksOf : std::array<Block, kCount> {
    void setRate(int i, float sampleRate) { (*this)[i].setRate(sampleRate); }
    void setFrequency(int i, float hz) { (*this)[i].setFrequency(hz); }
    void setCoefficients(int i, const dsp::BiquadCoefficients& c) { (*this)[i].setCoefficients(c); }
    void clear(int i) { (*this)[i].clear(); }
};

struct VoiceBlocks {
    BlocksOf<dsp::ModuleFMop, engine::kMaxVoices> oscA;
    BlocksOf<dsp::ModuleFMop, engine::kMaxVoices> oscB;
    BlocksOf<dsp::Biquad, engine::kMaxVoices> keyHighPass;
    std::array<int, engine::kMaxVoices> semitone{};
    std::array<double, engine::kMaxVoices> octave{};
};

class UpperVoices : public engine::UpperVoiceControls<VoiceBlocks> {
  public:
    // With `shared` the voices are added without their levels; scale the sums by envelopeSum().
    SectionSums tick(const MasterPhases& phases, double bendRatio, const engine::Sections& sections,
                     bool shared) {
        SectionSums sums;
        const bool brassOrHorn = sections.on[engine::kBrass] || sections.on[engine::kHorn];
        for (int slot = 0; slot < polyphony(); ++slot) {
            dsp::VoiceEnvelope& envelope = envelopes_[slot];
            if (envelope.stage() == dsp::VoiceEnvelope::kIdle) continue;
            sums.sounding = true;
            const Sources source = tickSources(slot, phases, bendRatio, sections);
            const float level = envelope.tick();
            const float gain = shared ? 1.0f : level;
            sums.viola += gain * source.a;
            sums.violin += gain * source.b;
            sums.brassHorn += gain * (brassOrHorn ? source.a : 0.0f);
        }
        return sums;
    }
    float envelopeSum() const {
        float sum = 0.0f;
        for (const dsp::VoiceEnvelope& envelope : envelopes_) sum += envelope.level();
        return sum;
    }
    // Scales the bow noise. It also runs while no voice sounds.
    float tickSectionEnvelope() { return sectionEnvelope().tick(); }

  private:
    struct Sources {
        float a;
        float b;
    };

    Sources tickSources(int slot, const MasterPhases& phases, double bendRatio,
                        const engine::Sections& sections) {
        const double phase = phases[lanes_.semitone[slot]] * lanes_.octave[slot];
        if (waveform_ == engine::Waveform::kTable) {
            return {tables_.a[slot].tick(bendRatio), tables_.b[slot].tick(bendRatio)};
        }
        if (waveform_ == engine::Waveform::kSquaredFeedback) {
            return {lanes_.oscA[slot].processSquared(static_cast<float>(phase - 0.5)),
                    lanes_.oscB[slot].processSquared(static_cast<float>(2.0 * phase - 0.5))};
        }
        Sources out{0.0f, 0.0f};
        if (sections.on[engine::kViola] || sections.on[engine::kBrass] ||
            sections.on[engine::kHorn]) {
            const float a = lanes_.oscA[slot].process(static_cast<float>(phase));
            out.a = lanes_.keyHighPass[slot].tick(wrappedToUnit(a));
        }
        if (sections.on[engine::kViolin]) {
            const float offset = violinPhase_ * 0.5f;
            out.b = lanes_.oscB[slot].process(static_cast<float>(2.0 * phase + offset));
        }
        return out;
    }
};

}  // namespace reference
