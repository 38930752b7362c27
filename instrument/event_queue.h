// What one block is to play: MIDI messages and changes by the host, in the order of their frames.
#pragma once

#include <array>
#include <atomic>
#include <cstdint>

namespace instrument {

struct TimedEvent {
    enum Kind : std::uint8_t {
        kMessage,
        kParameter,  // `index` has the value; nothing happens if it has it already
        kProgram,    // `index` is current; nothing happens if it is already
        kSilence,    // all notes and tails end
    };

    int frame = 0;
    Kind kind = kMessage;
    std::array<std::uint8_t, 3> bytes{};  // of a message: status, data 1, data 2
    int index = 0;
    float value = 0.0f;
};

// Audio thread, but for forget.
class EventQueue {
  public:
    static constexpr int kCapacity = 2048;

    // Appends a message for the block that comes next. A frame below the last one's is raised to
    // it. When the queue is full the last message becomes "all notes off": no note may hang.
    void add(int frame, const std::uint8_t* bytes);
    // Adds an event wherever it belongs by its frame, behind those of the same frame.
    void insert(const TimedEvent& event);
    // Drops the events added since the last block, but none that was postponed.
    void discard() { count_ = postponed_; }
    // Any thread: discards before the next event or block, which is not one of those that were
    // meant.
    void forget() { forgotten_.store(true, std::memory_order_relaxed); }

    // A block: beginBlock, then next until it answers null, then endBlock or postpone.
    void beginBlock();
    // The next event if it is due at the frame, else null. An event is due one frame before its
    // own; frames are counted from 0.
    const TimedEvent* next(int frame);
    // Frame at which the next event is due, as counted for next(), or `none` without one.
    int nextFrame(int none) const;
    // Number of the next event in the block, -1 when none is left.
    int nextIndex() const { return next_ < count_ ? next_ : -1; }
    // The block is over; events beyond its end are dropped.
    void endBlock();
    // The block could not be played: its events come first in the next one.
    void postpone();

  private:
    struct Entry {
        TimedEvent event;
        int number;  // in the order of arrival
    };

    void discardForgotten();
    void append(int frame, const TimedEvent& event);

    std::array<Entry, kCapacity> entries_{};
    int count_ = 0;
    int next_ = 0;
    int postponed_ = 0;  // how many of the first events are left from earlier blocks
    bool ordered_ = true;
    std::atomic<bool> forgotten_{false};
};

}  // namespace instrument
