// Keeping and dropping a block's events.
#include "plugin/event_queue.h"

#include <algorithm>

namespace plugin {

void EventQueue::receive(const VstEvents* events) {
    forgotten_.store(false, std::memory_order_relaxed);
    const bool any = events && events->numEvents > 0;
    events_ = any ? events : nullptr;
    next_ = any ? 0 : -1;
}

void EventQueue::beginBlock() {
    if (forgotten_.exchange(false, std::memory_order_relaxed)) finishBlock();
}

void EventQueue::finishBlock() {
    receive(nullptr);
}

void EventQueue::postpone() {
    dispatchList(std::numeric_limits<VstInt32>::max(), [this](const std::uint8_t* message) {
        if (keptCount_ == kCapacity) return;
        std::copy_n(message, 3, kept_[keptCount_++].begin());
    });
    finishBlock();
}

}  // namespace plugin
