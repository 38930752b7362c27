// Constant levels fill their row once, ramps run in lanes, and only stage changes tick one by one.
#include "engine/voice_levels.h"

#include <algorithm>
#include <limits>

namespace engine {

namespace {
constexpr float kNotHeld = std::numeric_limits<float>::quiet_NaN();
}

VoiceLevels::VoiceLevels() {
    ramps_.rows = rows_[0].data();
    ramps_.rowStride = kRowStride;
}

void VoiceLevels::hold(int slot, float level) {
    if (held_[slot] == level) return;
    held_[slot] = level;
    summed_ = false;
    rows_[slot].fill(level);
}

void VoiceLevels::tick(int slot, dsp::VoiceEnvelope& envelope, int frames) {
    held_[slot] = kNotHeld;
    summed_ = false;
    Signal& row = rows_[slot];
    int t = 0;
    while (t < frames && envelope.stage() != dsp::VoiceEnvelope::kIdle) row[t++] = envelope.tick();
    frames_[slot] = t;
    std::fill(row.begin() + t, row.end(), envelope.level());
}

void VoiceLevels::render(VoiceEnvelopes& envelopes, SlotSet touched, int frames, bool onlySum) {
    const SlotSet visited = moving_ | touched;
    standing_ &= ~visited;
    moving_ = 0;
    ending_ = 0;
    longest_ = standing_ != 0 ? frames : 0;
    ramps_.on.fill(0);
    bool anyRamp = false;
    bool anyTicked = false;
    forEachSlot(visited, [&](int slot) {
        dsp::VoiceEnvelope& envelope = envelopes[slot];
        dsp::VoiceEnvelope::Ramp ramp;
        if (envelope.stage() == dsp::VoiceEnvelope::kIdle) {
            frames_[slot] = 0;
            hold(slot, envelope.level());
            return;
        }
        frames_[slot] = kLongestSegment;
        if (envelope.stands()) {
            standing_ |= onlySlot(slot);
            hold(slot, envelope.level());
            longest_ = frames;
            return;
        }
        moving_ |= onlySlot(slot);
        if (!envelope.movesEvenly(frames, ramp)) {
            tick(slot, envelope, frames);
            anyTicked = true;
            if (frames_[slot] < frames) ending_ |= onlySlot(slot);
        } else {
            held_[slot] = kNotHeld;
            ramps_.level[slot] = envelope.level();
            ramps_.factor[slot] = ramp.factor;
            ramps_.step[slot] = ramp.step;
            ramps_.on[slot] = -1;
            anyRamp = true;
        }
        longest_ = std::max(longest_, std::min(frames_[slot], frames));
    });
    if (!anyRamp) return;
    summed_ = onlySum && !anyTicked;
    if (summed_) {
        for (int slot = 0; slot < kMaxVoices; ++slot) {
            if (!ramps_.on[slot]) ramps_.level[slot] = held_[slot];
        }
        kernels_.sumRamps(ramps_, sum_.data(), frames);
    } else {
        kernels_.runRamps(ramps_, frames);
    }
    forEachSlot(moving_, [&](int slot) {
        if (ramps_.on[slot]) envelopes[slot].moveTo(ramps_.level[slot]);
    });
}

// Adds whole rows, so that the sum stays in registers.
void VoiceLevels::sum(float* out, int frames) {
    if (!summed_) {
        Signal total{};
        for (const Signal& levels : rows_) {
            for (int t = 0; t < kLongestSegment; ++t) total[t] += levels[t];
        }
        sum_ = total;
        summed_ = true;
    }
    std::copy_n(sum_.data(), frames, out);
}

}  // namespace engine
