// Assigns a slot of the polyphonic pool to each note, and finds it for the note-off.
#pragma once

#include <array>

#include "dsp/voice_envelope.h"

namespace engine {

constexpr int kMaxVoices = 44;
constexpr int kMinVoices = 6;
constexpr int kInitialVoices = 43;

class VoiceAllocator {
  public:
    // Reads `envelopes` (kMaxVoices of them) to see which slots are idle.
    explicit VoiceAllocator(const dsp::VoiceEnvelope* envelopes) : envelopes_(envelopes) {}

    // Forgets all notes; polyphony and pedal stay.
    void reset();
    // Forgets all notes; `count` is limited to kMinVoices..kMaxVoices.
    void setPolyphony(int count);
    int polyphony() const { return polyphony_; }

    // Returns the slot that already holds the key, else the first idle one, else a stolen one.
    int noteOn(int key, int velocity);

    static constexpr int kSustained = -1;
    // Returns the slot to release, kSustained while the pedal is down, or polyphony() for a key
    // that no slot holds.
    int noteOff(int key);

    void setPedal(bool down) { pedalDown_ = down; }
    // Clears the slot's sustain mark; returns true if it was set.
    bool takeSustained(int slot);

    int key(int slot) const { return note_[slot]; }
    // Velocity at the slot's last allocation. Repeating a held key does not change it.
    int velocity(int slot) const { return velocity_[slot]; }

  private:
    int slotToSteal() const;

    const dsp::VoiceEnvelope* envelopes_;
    std::array<int, kMaxVoices> ageStamp_{};
    std::array<int, kMaxVoices> note_{};  // 0 = none
    std::array<int, kMaxVoices> velocity_{};
    std::array<bool, kMaxVoices> sustained_{};
    int serial_ = -1;
    int activeCount_ = 0;
    int polyphony_ = kInitialVoices;
    bool pedalDown_ = false;
};

}  // namespace engine
