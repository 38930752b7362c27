// The monophonic bass voice below the keyboard split, with its filters.
#pragma once

#include <algorithm>

#include "dsp/dc_blocker.h"
#include "dsp/state_variable_filter.h"
#include "engine/bass_voice_controls.h"
#include "tests/reference/upper_voices.h"

namespace reference {

class BassVoice : public engine::BassVoiceControls<BlocksOf<dsp::ModuleFMop, 2>> {
  public:
    void setRate(double sampleRate) {
        BassVoiceControls::setRate(sampleRate);
        for (dsp::DcBlocker& blocker : dcBlockers_) {
            blocker.clear();
            blocker.setRate(sampleRate);
        }
    }
    void reset() {
        BassVoiceControls::reset();
        for (dsp::StateVariableFilter& filter : filters_) filter.clear();
        for (dsp::DcBlocker& blocker : dcBlockers_) blocker.clear();
    }

    bool sounding() const { return envelope_.stage() != dsp::VoiceEnvelope::kIdle; }
    // Adds one sample of the enabled sections to `mix`. Call it only while sounding.
    void tick(const MasterPhases& phases, const engine::Sections& sections, float& mix) {
        const double phase = phases[pitch_.semitone] * 0.5 * pitch_.octaveFactor;
        const float delayed = phaseRing_.readThenWrite(static_cast<float>(phase));
        const float fade = tickFade();
        const float amp = envelope_.tick() * 1.5f * fade;
        const auto add = [&](engine::Section section, Lane lane, float turns) {
            if (!sections.on[section]) return;
            const float tone = operators_[lane].process(turns + 0.001f);
            const float y = filters_[lane].process(tone * (amp * sections.level[section] * 0.4f));
            mix += dcBlockers_[lane].tick(y);
        };
        add(engine::kContrabass, kContrabassLane, delayed * 0.5f);
        add(engine::kCello, kCelloLane, delayed);
    }

  private:
    static constexpr float kFadeStep = 0.01f;  // per sample
    static constexpr float kFadeFloor = 0.0001f;

    float tickFade() {
        if (!glideIn_) return fade_ = std::min(fade_ + kFadeStep, 1.0f);
        fade_ = std::max(fade_ - kFadeStep, kFadeFloor);
        glideIn_ = fade_ > kFadeFloor;
        return fade_;
    }

    std::array<dsp::StateVariableFilter, 2> filters_;
    std::array<dsp::DcBlocker, 2> dcBlockers_;
};

}  // namespace reference
