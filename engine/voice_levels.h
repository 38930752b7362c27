// The levels of all upper voices over a segment, one row per slot.
#pragma once

#include <algorithm>
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

    // Advances the envelopes by `frames` frames. One that was idle or stood and is not among
    // `touched` must be as it was. With `onlySum` the rows may be left out.
    void render(VoiceEnvelopes& envelopes, SlotSet touched, int frames, bool onlySum);

    SlotSet sounding() const { return standing_ | moving_; }  // in any frame
    SlotSet ending() const { return ending_; }                // in the first frames only
    // Number of leading frames in which the slot sounds.
    int framesOf(int slot) const { return std::min(frames_[slot], longest_); }
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
    std::array<int, dsp::kVoiceLanes> frames_{};  // kLongestSegment also for a shorter one
    int longest_ = 0;
    SlotSet standing_ = 0;  // sound at a level that stays
    SlotSet moving_ = 0;
    SlotSet ending_ = 0;  // among the moving ones
    Signal sum_{};
    bool summed_ = false;  // whether `sum_` is up to date
    dsp::LevelRamps ramps_;
};

}  // namespace engine
