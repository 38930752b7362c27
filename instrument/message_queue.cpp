// Filling and emptying the queue.
#include "instrument/message_queue.h"

#include <algorithm>

namespace instrument {

namespace {
constexpr std::array<std::uint8_t, 3> kAllNotesOff = {0xB0, 123, 0};
}

void MessageQueue::add(int frame, const std::uint8_t* bytes) {
    // A message after forget() belongs to a later block.
    forgotten_.store(false, std::memory_order_relaxed);
    if (count_ == kCapacity) {
        messages_[kCapacity - 1].bytes = kAllNotesOff;
        return;
    }
    const int earliest = count_ > 0 ? messages_[count_ - 1].frame : 0;
    messages_[count_++] = {std::max(frame, earliest), {bytes[0], bytes[1], bytes[2]}};
}

void MessageQueue::beginBlock() {
    if (forgotten_.exchange(false, std::memory_order_relaxed)) discard();
    next_ = 0;
}

const TimedMessage* MessageQueue::next(int frame) {
    return next_ < count_ && messages_[next_].frame - 1 <= frame ? &messages_[next_++] : nullptr;
}

int MessageQueue::nextFrame(int none) const {
    return next_ < count_ ? std::min(messages_[next_].frame - 1, none) : none;
}

void MessageQueue::endBlock() {
    count_ = next_ = postponed_ = 0;
}

void MessageQueue::postpone() {
    for (int i = 0; i < count_; ++i) messages_[i].frame = 0;
    postponed_ = count_;
}

}  // namespace instrument
