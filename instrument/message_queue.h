// The MIDI messages of one block, in the order of their frames.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace instrument {

struct TimedMessage {
    int frame;
    std::array<std::uint8_t, 3> bytes;  // status, data 1, data 2
};

// Audio thread, but for forget.
class MessageQueue {
  public:
    static constexpr int kCapacity = 4096;

    // Appends a message for the block that comes next. A frame below the last one's is raised to
    // it. When the queue is full the last message becomes "all notes off": no note may hang.
    void add(int frame, const std::uint8_t* bytes);
    // Drops the messages added since the last block, but none that was postponed.
    void discard() { count_ = postponed_; }
    // Any thread: discard before the next block, which is not the one the messages were for.
    void forget() { forgotten_.store(true, std::memory_order_relaxed); }

    // A block: beginBlock, then next until it answers null, then endBlock or postpone.
    void beginBlock();
    // The next message if it is due at the frame, else null. A message is due one frame before its
    // own; frames are counted from 0.
    const TimedMessage* next(int frame);
    // Frame at which the next message is due, as counted for next(), or `none` without one.
    int nextFrame(int none) const;
    // Number of the next message in the block, -1 when none is left.
    int nextIndex() const { return next_ < count_ ? next_ : -1; }
    // The block is over; messages beyond its end are dropped.
    void endBlock();
    // The block could not be played: its messages come first in the next one.
    void postpone();

  private:
    std::array<TimedMessage, kCapacity> messages_{};
    int count_ = 0;
    int next_ = 0;
    int postponed_ = 0;  // how many of the first messages are left from earlier blocks
    std::atomic<bool> forgotten_{false};
};

}  // namespace instrument
