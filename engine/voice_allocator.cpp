// Finding, stealing and sustaining slots.
#include "engine/voice_allocator.h"

#include <algorithm>

namespace engine {

void VoiceAllocator::reset() {
    ageStamp_.fill(0);
    note_.fill(0);
    velocity_.fill(0);
    sustained_.fill(false);
    serial_ = -1;
    activeCount_ = 0;
}

void VoiceAllocator::setPolyphony(int count) {
    reset();
    polyphony_ = std::clamp(count, kMinVoices, kMaxVoices);
}

int VoiceAllocator::noteOn(int key, int velocity) {
    for (int slot = 0; slot < polyphony_; ++slot) {
        if (note_[slot] == key) {
            sustained_[slot] = false;
            return slot;
        }
    }
    activeCount_ = std::min(activeCount_ + 1, polyphony_);
    int slot = 0;
    while (slot < polyphony_ && envelopes_[slot].stage() != dsp::VoiceEnvelope::kIdle) ++slot;
    if (slot == polyphony_) slot = slotToSteal();

    note_[slot] = key;
    velocity_[slot] = velocity;
    ageStamp_[slot] = serial_++;
    sustained_[slot] = false;
    return slot;
}

// intentional: `candidate` starts as an age stamp and then takes slot indices. That mix decides the
// order in which a full pool gives up its voices.
int VoiceAllocator::slotToSteal() const {
    int candidate = ageStamp_[0];
    for (int slot = 0; slot < polyphony_; ++slot) {
        if (activeCount_ < polyphony_) {
            if (note_[slot] == 0) candidate = slot;
        } else if (ageStamp_[slot] < candidate) {
            candidate = slot;
        }
    }
    return candidate < 0 || candidate >= polyphony_ ? 0 : candidate;
}

int VoiceAllocator::noteOff(int key) {
    if (pedalDown_) {
        for (int slot = 0; slot < polyphony_; ++slot) {
            if (note_[slot] == key) sustained_[slot] = true;
        }
        return kSustained;
    }
    for (int slot = 0; slot < polyphony_; ++slot) {
        if (note_[slot] != key) continue;
        if (envelopes_[slot].stage() == dsp::VoiceEnvelope::kIdle) note_[slot] = 0;
        sustained_[slot] = false;
        activeCount_ = std::max(activeCount_ - 1, 0);
        return slot;
    }
    return polyphony_;
}

bool VoiceAllocator::takeSustained(int slot) {
    const bool was = sustained_[slot];
    sustained_[slot] = false;
    return was;
}

}  // namespace engine
