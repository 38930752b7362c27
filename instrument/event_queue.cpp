// Filling and emptying the queue.
#include "instrument/event_queue.h"

#include <algorithm>

namespace instrument {

namespace {
constexpr std::array<std::uint8_t, 3> kAllNotesOff = {0xB0, 123, 0};
}

void EventQueue::discardForgotten() {
    if (forgotten_.exchange(false, std::memory_order_relaxed)) discard();
}

void EventQueue::append(int frame, const TimedEvent& event) {
    if (count_ == kCapacity) {
        TimedEvent& last = entries_[kCapacity - 1].event;
        last = {std::max(last.frame, frame), TimedEvent::kMessage, kAllNotesOff};
        return;
    }
    entries_[count_] = {event, count_};
    entries_[count_++].event.frame = frame;
}

void EventQueue::add(int frame, const std::uint8_t* bytes) {
    discardForgotten();
    const int earliest = count_ > 0 ? entries_[count_ - 1].event.frame : 0;
    append(std::max(frame, earliest), {0, TimedEvent::kMessage, {bytes[0], bytes[1], bytes[2]}});
}

void EventQueue::insert(const TimedEvent& event) {
    discardForgotten();
    append(std::max(event.frame, 0), event);
    ordered_ = false;
}

void EventQueue::beginBlock() {
    discardForgotten();
    next_ = 0;
    if (ordered_) return;
    ordered_ = true;
    // In place: a stable sort would take memory.
    std::sort(entries_.begin() + postponed_, entries_.begin() + count_,
              [](const Entry& a, const Entry& b) {
                  return a.event.frame != b.event.frame ? a.event.frame < b.event.frame
                                                        : a.number < b.number;
              });
}

const TimedEvent* EventQueue::next(int frame) {
    return next_ < count_ && entries_[next_].event.frame - 1 <= frame ? &entries_[next_++].event
                                                                      : nullptr;
}

int EventQueue::nextFrame(int none) const {
    return next_ < count_ ? std::min(entries_[next_].event.frame - 1, none) : none;
}

void EventQueue::endBlock() {
    count_ = next_ = postponed_ = 0;
}

void EventQueue::postpone() {
    for (int i = 0; i < count_; ++i) entries_[i].event.frame = 0;
    postponed_ = count_;
}

}  // namespace instrument
