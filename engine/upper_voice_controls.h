// Notes and settings of the polyphonic pool, whatever renders its voices.
#pragma once

#include <algorithm>
#include <array>
#include <utility>

#include "dsp/biquad.h"
#include "dsp/pitched_oscillator.h"
#include "dsp/voice_envelope.h"
#include "engine/envelope_settings.h"
#include "engine/pitch.h"
#include "engine/sound_engine.h"
#include "engine/voice_allocator.h"
#include "engine/voice_levels.h"

namespace engine {

// `Lanes` holds the operators, key high-passes and pitches of all slots, as dsp::VoiceLanes does.
template <typename Lanes>
class UpperVoiceControls {
  public:
    UpperVoiceControls() {
        sectionEnvelope_.setVelocityAmount(1.0f);
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            lanes_.octave[slot] = 1.0f;
            lanes_.keyHighPass.setCoefficients(slot, keyHighPass());
        }
    }

    // Releases all voices, clears their oscillators and filters, recomputes the release factors.
    void setRate(double sampleRate) {
        sampleRate_ = sampleRate;
        const float releaseFactor = release_.factor(sampleRate);
        const dsp::BiquadCoefficients highPass = keyHighPass();
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            dsp::VoiceEnvelope& envelope = touch(slot);
            envelope.noteOff();
            envelope.setRate(sampleRate);
            envelope.computeRates();
            envelope.setReleaseFactor(releaseFactor);

            tables_.a[slot].setRate(sampleRate);
            tables_.b[slot].setRate(sampleRate);
            clearLane(slot);
            lanes_.oscA.setRate(slot, static_cast<float>(sampleRate));
            lanes_.oscB.setRate(slot, static_cast<float>(sampleRate));
            lanes_.keyHighPass.setCoefficients(slot, highPass);
        }
        sectionEnvelope_.setRate(sampleRate);
        sectionEnvelope_.computeRates();
    }

    void setPolyphony(int count) {
        if (count == polyphony()) return;
        allocator_.setPolyphony(count);
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            noteState_[slot] = -1;
            touch(slot).noteOff();
            if (slot >= polyphony()) touch(slot).kill();
        }
        sectionEnvelope_.noteOff();
    }
    int polyphony() const { return allocator_.polyphony(); }
    void setWaveform(Waveform waveform) { waveform_ = waveform; }
    // Phase offset of the violin operators, 0..0.5 turns.
    void setViolinPhase(float turns) { violinPhase_ = turns; }

    // Calls change(dsp::VoiceEnvelope&) for every slot, in order.
    template <typename Change>
    void forEachEnvelope(Change change) {
        for (int slot = 0; slot < kMaxVoices; ++slot) change(touch(slot));
    }
    // Also applies to the section envelope.
    void setRelease(const ReleaseTime& release) {
        release_ = release;
        forEachEnvelope(
            [&](dsp::VoiceEnvelope& envelope) { release.applyTo(envelope, sampleRate_); });
        release.applyTo(sectionEnvelope_, sampleRate_);
    }

    // `key` is playable (isPlayableKey), `velocity` 1..127.
    void noteOn(int key, int velocity) {
        const int slot = allocator_.noteOn(key, velocity);
        dsp::VoiceEnvelope& envelope = touch(slot);
        // intentional: the envelope takes the stored velocity for its key
        envelope.noteOn(velocity, allocator_.velocity(slot));
        sectionEnvelope_.trigger(kSectionPeak, kSectionKey);

        const int index = upperKeyIndex(key);
        noteState_[slot] = 1;
        tables_.a[slot].setNote(index + kNoteOfIndexZero);
        tables_.b[slot].setNote(index + kNoteOfIndexZero + kSemitones);
        const Pitch pitch = pitchFromIndex(index);
        lanes_.semitone[slot] = pitch.semitone;
        lanes_.octave[slot] = static_cast<float>(pitch.octaveFactor);
        lanes_.oscA.setFrequency(slot, static_cast<float>(pitch.hertz()));
        lanes_.oscB.setFrequency(slot, static_cast<float>(2.0 * pitch.hertz()));
        lastNoteHertz_ = keyHighPassHertz(index);
        lanes_.keyHighPass.setCoefficients(slot, keyHighPass());
    }
    void noteOff(int key) {
        const int slot = allocator_.noteOff(key);
        // For a key that no slot holds, noteOff returns the slot after the last one in use. At full
        // polyphony there is no such slot.
        if (slot != VoiceAllocator::kSustained && slot < kMaxVoices) releaseSlot(slot);
    }
    void setPedal(bool down) {
        allocator_.setPedal(down);
        if (down) return;
        for (int slot = 0; slot < polyphony(); ++slot) {
            if (allocator_.takeSustained(slot) && noteState_[slot] == 1) {
                noteOff(allocator_.key(slot));
            }
        }
    }
    // Releases every voice and the section envelope; the allocator forgets its notes.
    void allNotesOff() {
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            touch(slot).noteOff();
            noteState_[slot] = -1;
        }
        sectionEnvelope_.noteOff();
        allocator_.reset();
    }

    // Idles all envelopes at level 0, clears oscillators and key high-passes; notes stay allocated.
    void silence() {
        const auto silenced = [](dsp::VoiceEnvelope& envelope) {
            envelope.noteOff();
            envelope.kill();
        };
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            silenced(touch(slot));
            clearLane(slot);
        }
        silenced(sectionEnvelope_);
    }
    // silence(), and also forgets all notes.
    void reset() {
        silence();
        noteState_.fill(0);
        allocator_.reset();
    }

    // Scales the bow noise. It also runs while no voice sounds.
    dsp::VoiceEnvelope& sectionEnvelope() { return sectionEnvelope_; }

  protected:
    struct TableVoices {
        std::array<dsp::PitchedOscillator, kMaxVoices> a, b;
    };

    // The slots whose envelopes notes or settings have changed since the last call.
    SlotSet takeTouched() { return std::exchange(touched_, 0); }

    VoiceEnvelopes envelopes_;
    Lanes lanes_;
    TableVoices tables_;
    Waveform waveform_ = Waveform::kFeedback;
    float violinPhase_ = 0.0f;

  private:
    static constexpr int kSectionKey = 60;
    static constexpr float kSectionPeak = 0.6200012f;  // 100^2 / 127^2: as velocity 100
    // Table oscillators take MIDI notes. A key index counts from C0, which is note 12.
    static constexpr int kNoteOfIndexZero = 12;

    dsp::VoiceEnvelope& touch(int slot) {
        touched_ |= onlySlot(slot);
        return envelopes_[slot];
    }
    void clearLane(int slot) {
        lanes_.oscA.clear(slot);
        lanes_.oscB.clear(slot);
        lanes_.keyHighPass.clear(slot);
    }
    void releaseSlot(int slot) {
        noteState_[slot] = -1;
        const bool anyHeld =
            std::any_of(noteState_.begin(), noteState_.end(), [](int state) { return state == 1; });
        if (!anyHeld) sectionEnvelope_.noteOff();
        touch(slot).noteOff();
    }
    dsp::BiquadCoefficients keyHighPass() const {  // of the last note
        return dsp::designHighPass(lastNoteHertz_, dsp::kKeyHighPassQ, sampleRate_);
    }

    std::array<int, kMaxVoices> noteState_{};  // 1 while the key is held, -1 after its note-off
    SlotSet touched_ = kAllSlots;
    dsp::VoiceEnvelope sectionEnvelope_;
    VoiceAllocator allocator_{envelopes_.data()};
    float lastNoteHertz_ = kLowestKeyHighPassHertz;
    ReleaseTime release_;
    double sampleRate_ = kInitialRate;
};

}  // namespace engine
