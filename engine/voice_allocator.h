// Chooses a slot of the polyphonic pool for each note and finds it again for the note-off.
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

    // Slot for the key: the one that already holds it, the first idle one, or a stolen one.
    int noteOn(int key, int velocity);

    static constexpr int kSustained = -1;
    // The slot to release, kSustained while the pedal holds it, or polyphony() (one past the last
    // slot in use) for a key that no slot holds.
    int noteOff(int key);

    void setPedal(bool down) { pedalDown_ = down; }
    // Forgets that the pedal holds the slot; true if it did.
    bool takeSustained(int slot);

    int key(int slot) const { return note_[slot]; }
    // Velocity at the slot's last allocation; a repeated held key keeps its first one.
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
