// The levels of all upper voices over a segment, one row per slot.
#pragma once

#include <array>
#include <cstdint>

#include "dsp/lanes/kernels.h"
#include "dsp/voice_envelope.h"
#include "engine/segment.h"
#include "engine/voice_allocator.h"

namespace engine {

using VoiceEnvelopes = std::array<dsp::VoiceEnvelope, kMaxVoices>;

// Slots, one bit each.
using SlotSet = std::uint64_t;
constexpr SlotSet onlySlot(int slot) {
    return SlotSet{1} << slot;
}
constexpr SlotSet kAllSlots = onlySlot(kMaxVoices) - 1;

// Calls act(slot) for each slot of a set, in order.
template <typename Act>
void forEachSlot(SlotSet slots, const Act& act) {
    for (; slots != 0; slots &= slots - 1) act(__builtin_ctzll(slots));
}

class VoiceLevels {
  public:
    VoiceLevels();

    // Advances the envelopes by `frames` frames. One that was idle and is not among `touched` must
    // be as it was. With `onlySum` the rows may be left out.
    void render(VoiceEnvelopes& envelopes, SlotSet touched, int frames, bool onlySum);

    SlotSet sounding() const { return sounding_; }  // in any frame
    // Number of leading frames in which the slot sounds.
    int framesOf(int slot) const { return frames_[slot]; }
    int longest() const { return longest_; }
    const float* row(int slot) const { return rows_[slot].data(); }

    // Adds up all slots in order, idle ones included.
    void sum(float* out, int frames);

  private:
    void hold(int slot, float level);
    void tick(int slot, dsp::VoiceEnvelope& envelope, int frames);

    const dsp::Kernels& kernels_ = dsp::kernels();
    std::array<Signal, dsp::kVoiceLanes> rows_{};
    std::array<float, dsp::kVoiceLanes> held_{};  // the level that fills the whole row, or NaN
    std::array<int, dsp::kVoiceLanes> frames_{};
    int longest_ = 0;
    SlotSet sounding_ = 0;
    Signal sum_{};
    bool summed_ = false;  // whether `sum_` is up to date
    dsp::LevelRamps ramps_;
};

}  // namespace engine
