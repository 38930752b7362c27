// The levels of all upper voices over a segment, one row a slot.
#pragma once

#include <array>

#include "dsp/lanes/kernels.h"
#include "dsp/voice_envelope.h"
#include "engine/segment.h"
#include "engine/voice_allocator.h"

namespace engine {

using VoiceEnvelopes = std::array<dsp::VoiceEnvelope, kMaxVoices>;

class VoiceLevels {
  public:
    VoiceLevels();

    // Moves the envelopes of the first `count` slots on by so many frames. The other slots are
    // idle.
    void render(VoiceEnvelopes& envelopes, int count, int frames);

    // In how many frames of the segment the slot sounds; once it is idle it stays so.
    int framesOf(int slot) const { return frames_[slot]; }
    int longest() const { return longest_; }
    const float* row(int slot) const { return rows_[slot].data(); }

    // Of all slots, idle ones included, in their order.
    void sum(float* out, int frames);

  private:
    void hold(int slot, float level);
    void tick(int slot, dsp::VoiceEnvelope& envelope, int frames);

    const dsp::Kernels& kernels_ = dsp::kernels();
    std::array<Signal, dsp::kVoiceLanes> rows_{};
    std::array<float, dsp::kVoiceLanes> held_{};  // the level that fills the row, or NaN
    std::array<int, dsp::kVoiceLanes> frames_{};
    int longest_ = 0;
    Signal sum_{};
    bool summed_ = false;  // whether `sum_` is that of the rows as they are
    dsp::LevelRamps ramps_;
};

}  // namespace engine
