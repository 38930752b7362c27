// The host's events of one block, given out frame by frame.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>
#include <limits>

#include "plugin/vst2.h"

namespace plugin {

// Audio thread, but for forget. Keeps the host's list by pointer, as the host guarantees it for the
// block; events of a block that could not be played are copied and come first in the next one.
class EventQueue {
  public:
    void receive(const VstEvents* events);
    // To be called before a block is rendered or postponed.
    void beginBlock();
    // Calls handle(const std::uint8_t message[3]) for every event due before the frame-th sample,
    // counted from 1: one sample before its nominal place.
    template <typename Handle>
    void dispatchUpTo(VstInt32 frame, Handle handle);
    // Index of the next event, or -1 when there is none.
    VstInt32 nextIndex() const { return next_; }
    // Frame of the next event of the list, which dispatchUpTo has just refused.
    VstInt32 nextFrame() const {
        return pending() ? nextEvent()->deltaFrames : std::numeric_limits<VstInt32>::max();
    }
    // Drops what is left of the block's list.
    void finishBlock();
    // Any thread: the list given last is not valid any more, because its block will not come.
    void forget() { forgotten_.store(true, std::memory_order_relaxed); }
    // Keeps the MIDI messages of the block's list for the next one, as many as there is room for.
    void postpone();

  private:
    template <typename Handle>
    void dispatchList(VstInt32 frame, Handle handle);
    bool pending() const { return next_ >= 0 && next_ < events_->numEvents; }
    // The list goes on behind the two events that its record declares.
    const VstEvent* nextEvent() const {
        const VstEvent* const* const list = events_->events;
        return list[next_];
    }

    static constexpr int kCapacity = 1024;
    using Message = std::array<std::uint8_t, 3>;

    std::atomic<bool> forgotten_{false};
    const VstEvents* events_ = nullptr;
    VstInt32 next_ = -1;
    std::array<Message, kCapacity> kept_{};
    int keptCount_ = 0;
};

template <typename Handle>
void EventQueue::dispatchUpTo(VstInt32 frame, Handle handle) {
    for (int i = 0; i < keptCount_; ++i) handle(kept_[i].data());
    keptCount_ = 0;
    dispatchList(frame, handle);
}

template <typename Handle>
void EventQueue::dispatchList(VstInt32 frame, Handle handle) {
    while (pending()) {
        const VstEvent* const event = nextEvent();
        if (event && event->deltaFrames != 0 && event->deltaFrames > frame) return;
        const bool midi = event && event->type == kVstMidiType;
        if (midi) {
            const auto& message = reinterpret_cast<const VstMidiEvent*>(event)->midiData;
            handle(reinterpret_cast<const std::uint8_t*>(message));
        }
        // An event of another type takes its successor with it: kept.
        next_ += midi ? 1 : 2;
    }
}

}  // namespace plugin
