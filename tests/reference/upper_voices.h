// The polyphonic pool, one voice after the other: up to 44 voices for the four upper sections.
#pragma once

#include <algorithm>
#include <array>

#include "dsp/biquad.h"
#include "dsp/module_fm_op.h"
#include "dsp/pitched_oscillator.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "engine/sections.h"
#include "engine/sound_engine.h"
#include "engine/voice_allocator.h"
#include "engine/wrapped_to_unit.h"
#include "tests/reference/master_phases.h"

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
    UpperVoices() {
        sectionEnvelope_.setVelocityAmount(1.0f);
        for (Voice& voice : voices_) voice.keyHighPass.setCoefficients(keyHighPass());
    }

    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        forEachEnvelope([&](dsp::VoiceEnvelope& envelope) {
            envelope.noteOff();
            envelope.setRate(sampleRate);
            envelope.computeRates();
            envelope.setReleaseFactor(release_.factor(sampleRate));
        });
        for (Voice& voice : voices_) {
            voice.tableOscA.setRate(sampleRate);
            voice.tableOscB.setRate(sampleRate);
            voice.clear();
            voice.oscA.setRate(static_cast<float>(sampleRate));
            voice.oscB.setRate(static_cast<float>(sampleRate));
            voice.keyHighPass.setCoefficients(keyHighPass());
        }
        sectionEnvelope_.setRate(sampleRate);
        sectionEnvelope_.computeRates();
    }
    void setPolyphony(int count) {
        if (count == polyphony()) return;
        allocator_.setPolyphony(count);
        releaseAll();
        for (int slot = polyphony(); slot < engine::kMaxVoices; ++slot) envelopes_[slot].kill();
    }
    int polyphony() const { return allocator_.polyphony(); }
    void setWaveform(engine::Waveform waveform) { waveform_ = waveform; }
    void setViolinPhase(float turns) { violinPhase_ = turns; }
    template <typename Change>
    void forEachEnvelope(Change change) {
        for (dsp::VoiceEnvelope& envelope : envelopes_) change(envelope);
    }
    void setRelease(const engine::ReleaseTime& release) {
        release_ = release;
        for (dsp::VoiceEnvelope& envelope : envelopes_) release.applyTo(envelope, sampleRate_);
        release.applyTo(sectionEnvelope_, sampleRate_);
    }

    void noteOn(int key, int velocity) {
        const int slot = allocator_.noteOn(key, velocity);
        // intentional: the envelope takes the stored velocity for its key
        envelopes_[slot].noteOn(velocity, allocator_.velocity(slot));
        sectionEnvelope_.trigger(kSectionPeak, kSectionKey);
        const int index = engine::upperKeyIndex(key);
        Voice& voice = voices_[slot];
        voice.held = true;
        // Table oscillators take MIDI notes; an index counts from C0, which is note 12.
        voice.tableOscA.setNote(index + 12);
        voice.tableOscB.setNote(index + 24);
        voice.pitch = engine::pitchFromIndex(index);
        voice.oscA.setFrequency(static_cast<float>(voice.pitch.hertz()));
        voice.oscB.setFrequency(static_cast<float>(2.0 * voice.pitch.hertz()));
        lastNoteHertz_ = engine::keyHighPassHertz(index);
        voice.keyHighPass.setCoefficients(keyHighPass());
    }
    void noteOff(int key) {
        const int slot = allocator_.noteOff(key);
        if (slot == engine::VoiceAllocator::kSustained || slot >= engine::kMaxVoices) return;
        voices_[slot].held = false;
        if (std::none_of(voices_.begin(), voices_.end(), [](auto& voice) { return voice.held; })) {
            sectionEnvelope_.noteOff();
        }
        envelopes_[slot].noteOff();
    }
    void setPedal(bool down) {
        allocator_.setPedal(down);
        for (int slot = 0; slot < polyphony() && !down; ++slot) {
            if (allocator_.takeSustained(slot) && voices_[slot].held) noteOff(allocator_.key(slot));
        }
    }
    void allNotesOff() {
        releaseAll();
        allocator_.reset();
    }
    // Notes stay allocated.
    void silence() {
        releaseAll(true);
        for (Voice& voice : voices_) voice.clear();
    }
    void reset() {
        silence();
        for (Voice& voice : voices_) voice.held = false;
        allocator_.reset();
    }

    // With `shared` the voices are added without their levels; scale the sums by envelopeSum().
    SectionSums tick(const MasterPhases& phases, double bendRatio, const engine::Sections& sections,
                     bool shared) {
        SectionSums sums;
        const bool brassOrHorn = sections.on[engine::kBrass] || sections.on[engine::kHorn];
        for (int slot = 0; slot < polyphony(); ++slot) {
            dsp::VoiceEnvelope& envelope = envelopes_[slot];
            if (envelope.stage() == dsp::VoiceEnvelope::kIdle) continue;
            sums.sounding = true;
            const Sources source = tickSources(voices_[slot], phases, bendRatio, sections);
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
    float tickSectionEnvelope() { return sectionEnvelope_.tick(); }

  private:
    static constexpr int kSectionKey = 60;
    static constexpr float kSectionPeak = 0.6200012f;  // 100^2 / 127^2: as velocity 100

    struct Voice {
        dsp::ModuleFMop oscA;
        dsp::ModuleFMop oscB;
        dsp::PitchedOscillator tableOscA;
        dsp::PitchedOscillator tableOscB;
        dsp::Biquad keyHighPass;
        engine::Pitch pitch;
        bool held = false;

        void clear() {
            oscA.clear();
            oscB.clear();
            keyHighPass.clear();
        }
    };
    struct Sources {
        float a;
        float b;
    };

    Sources tickSources(Voice& voice, const MasterPhases& phases, double bendRatio,
                        const engine::Sections& sections) {
        const double phase = phases[voice.pitch.semitone] * voice.pitch.octaveFactor;
        if (waveform_ == engine::Waveform::kTable) {
            return {voice.tableOscA.tick(bendRatio), voice.tableOscB.tick(bendRatio)};
        }
        if (waveform_ == engine::Waveform::kSquaredFeedback) {
            return {voice.oscA.processSquared(static_cast<float>(phase - 0.5)),
                    voice.oscB.processSquared(static_cast<float>(2.0 * phase - 0.5))};
        }
        Sources out{0.0f, 0.0f};
        if (sections.on[engine::kViola] || sections.on[engine::kBrass] ||
            sections.on[engine::kHorn]) {
            const float a = voice.oscA.process(static_cast<float>(phase));
            out.a = voice.keyHighPass.tick(engine::wrappedToUnit(a));
        }
        if (sections.on[engine::kViolin]) {
            const float offset = violinPhase_ * 0.5f;
            out.b = voice.oscB.process(static_cast<float>(2.0 * phase + offset));
        }
        return out;
    }
    void releaseAll(bool atOnce = false) {
        const auto release = [atOnce](dsp::VoiceEnvelope& envelope) {
            envelope.noteOff();
            if (atOnce) envelope.kill();
        };
        forEachEnvelope(release);
        release(sectionEnvelope_);
        for (Voice& voice : voices_) voice.held = voice.held && atOnce;
    }
    dsp::BiquadCoefficients keyHighPass() const {  // of the last note
        return dsp::designHighPass(lastNoteHertz_, dsp::kKeyHighPassQ, sampleRate_);
    }

    std::array<dsp::VoiceEnvelope, engine::kMaxVoices> envelopes_;
    std::array<Voice, engine::kMaxVoices> voices_;
    dsp::VoiceEnvelope sectionEnvelope_;
    engine::VoiceAllocator allocator_{envelopes_.data()};
    engine::Waveform waveform_ = engine::Waveform::kFeedback;
    float violinPhase_ = 0.0f;
    float lastNoteHertz_ = engine::kLowestKeyHighPassHertz;
    engine::ReleaseTime release_;
    double sampleRate_ = 44100.0;
};

}  // namespace reference
