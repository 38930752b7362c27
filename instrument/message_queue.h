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

// Audio thread only, except for forget().
class MessageQueue {
  public:
    static constexpr int kCapacity = 4096;

    // Appends a message to the next block. A frame below that of the previous message is raised to
    // it. When the queue is full, the last message becomes "all notes off", so that no note hangs.
    void add(int frame, const std::uint8_t* bytes);
    // Drops the messages added since the last block; postponed ones stay.
    void discard() { count_ = postponed_; }
    // Any thread. The next block discards messages added before this call.
    void forget() { forgotten_.store(true, std::memory_order_relaxed); }

    // For each block, call beginBlock, then next until it returns null, then endBlock or postpone.
    void beginBlock();
    // The next message if it is due at `frame` (counted from 0), else null. intentional: a message
    // is due one frame before its own.
    const TimedMessage* next(int frame);
    // The frame at which the next message is due, limited to `none`; `none` if there is no message.
    int nextFrame(int none) const;
    // Index of the next message in the block, or -1 if none is left.
    int nextIndex() const { return next_ < count_ ? next_ : -1; }
    // Ends the block; drops messages beyond its end.
    void endBlock();
    // Moves all messages to the start of the next block.
    void postpone();

  private:
    std::array<TimedMessage, kCapacity> messages_;  // memory is touched only as far as it is used
    int count_ = 0;
    int next_ = 0;
    int postponed_ = 0;  // number of leading messages from earlier blocks
    std::atomic<bool> forgotten_{false};
};

}  // namespace instrument
