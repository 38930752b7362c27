// The monophonic bass voice below the keyboard split, with its filters.
#pragma once

#include <algorithm>

#include "dsp/dc_blocker.h"
#include "dsp/delay_b.h"
#include "dsp/module_fm_op.h"
#include "dsp/state_variable_filter.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "engine/note_stack.h"
#include "engine/sections.h"
#include "tests/reference/master_phases.h"

namespace reference {

class BassVoice {
  public:
    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        envelope_.setRate(sampleRate);
        envelope_.computeRates();
        for (Source* source : {&contrabass_, &cello_}) {
            source->oscillator.clear();
            source->oscillator.setRate(static_cast<float>(sampleRate));
            source->dcBlocker.clear();
            source->dcBlocker.setRate(sampleRate);
        }
        phaseRing_.clear();
    }
    dsp::VoiceEnvelope& envelope() { return envelope_; }
    void setRelease(const engine::ReleaseTime& release) { release.applyTo(envelope_, sampleRate_); }

    void noteOn(int key, int velocity) {
        if (stack_.push(key, velocity)) envelope_.noteOn(stack_.topVelocity(), kEnvelopeKey);
        setPitch(key);
    }
    void noteOff(int key) {
        stack_.remove(key);
        if (stack_.pedalDown()) return;
        if (!stack_.empty()) {
            setPitch(stack_.topKey());
            return;
        }
        envelope_.noteOff();
        glideIn_ = false;
    }
    void setPedal(bool down) {
        stack_.setPedal(down);
        if (down) return;
        for (int key = stack_.takeSustainedKey(); key >= 0; key = stack_.takeSustainedKey()) {
            noteOff(key);
        }
    }
    void allNotesOff() {
        envelope_.noteOff();
        stack_.reset();
    }
    // Held keys stay.
    void silence() {
        envelope_.noteOff();
        envelope_.kill();
        contrabass_.oscillator.clear();
        cello_.oscillator.clear();
    }
    void reset() {
        silence();
        stack_.reset();
        for (Source* source : {&contrabass_, &cello_}) {
            source->filter.clear();
            source->dcBlocker.clear();
        }
        glideIn_ = false;
        fade_ = 1.0f;
    }

    bool sounding() const { return envelope_.stage() != dsp::VoiceEnvelope::kIdle; }
    // Adds one sample of the enabled sections to `mix`. Call it only while sounding.
    void tick(const MasterPhases& phases, const engine::Sections& sections, float& mix) {
        const double phase = phases[pitch_.semitone] * 0.5 * pitch_.octaveFactor;
        const float delayed = phaseRing_.readThenWrite(static_cast<float>(phase));
        const float fade = tickFade();
        const float amp = envelope_.tick() * 1.5f * fade;
        const auto add = [&](engine::Section section, Source& source, float turns) {
            if (sections.on[section])
                mix += source.tick(turns, amp * sections.level[section] * 0.4f);
        };
        add(engine::kContrabass, contrabass_, delayed * 0.5f);
        add(engine::kCello, cello_, delayed);
    }

  private:
    static constexpr int kEnvelopeKey = 60;
    static constexpr int kPhaseDelay = 99;     // samples
    static constexpr float kFadeStep = 0.01f;  // per sample
    static constexpr float kFadeFloor = 0.0001f;

    struct Source {
        dsp::ModuleFMop oscillator;
        dsp::StateVariableFilter filter;
        dsp::DcBlocker dcBlocker;

        float tick(float phase, float gain) {
            return dcBlocker.tick(filter.process(oscillator.process(phase + 0.001f) * gain));
        }
    };

    void setPitch(int key) {
        pitch_ = engine::pitchFromIndex(key);
        const float celloHertz = static_cast<float>(pitch_.hertz() * 0.5);
        cello_.oscillator.setFrequency(celloHertz);
        contrabass_.oscillator.setFrequency(celloHertz * 0.5f);
        glideIn_ = true;
    }
    float tickFade() {
        if (!glideIn_) return fade_ = std::min(fade_ + kFadeStep, 1.0f);
        fade_ = std::max(fade_ - kFadeStep, kFadeFloor);
        glideIn_ = fade_ > kFadeFloor;
        return fade_;
    }

    dsp::VoiceEnvelope envelope_;
    engine::NoteStack stack_;
    engine::Pitch pitch_;
    Source contrabass_;
    Source cello_;
    dsp::DelayB phaseRing_{kPhaseDelay};
    float fade_ = 1.0f;
    bool glideIn_ = false;
    double sampleRate_ = 44100.0;
};

}  // namespace reference
