// The keys that a player presses in the editor, on their way to the audio thread.
#pragma once

#include <atomic>
#include <cstdint>

#include "instrument/event_queue.h"
#include "platform/spsc_ring.h"

namespace instrument {

class KeyPresses {
  public:
    // User-interface thread. A velocity of 0 releases the key; other values are 1..127.
    void add(int key, int velocity) {
        const Press press{static_cast<std::uint8_t>(key), static_cast<std::uint8_t>(velocity)};
        const bool lost = !presses_.push(press) && velocity == 0;
        if (lost) releaseLost_.store(true, std::memory_order_relaxed);
    }
    // Any thread: keys pressed before the next block do not sound.
    void forget() { forgotten_.store(true, std::memory_order_relaxed); }
    // Audio thread: adds them to the block that comes next. No note may hang.
    void moveTo(EventQueue& events) {
        const bool forgotten = forgotten_.exchange(false, std::memory_order_relaxed);
        for (Press press; presses_.pop(press);) {
            if (forgotten && press.velocity > 0) continue;
            insert(events, {kNoteOn, press.key, press.velocity});
        }
        if (releaseLost_.exchange(false, std::memory_order_relaxed)) {
            insert(events, {kControlChange, kAllNotesOff, 0});
        }
    }

  private:
    struct Press {
        std::uint8_t key;
        std::uint8_t velocity;
    };
    static constexpr std::uint8_t kNoteOn = 0x90, kControlChange = 0xB0, kAllNotesOff = 123;

    static void insert(EventQueue& events, const std::array<std::uint8_t, 3>& bytes) {
        TimedEvent event;
        event.bytes = bytes;
        events.insert(event);
    }

    platform::SpscRing<Press, 256> presses_;
    std::atomic<bool> forgotten_{false};
    std::atomic<bool> releaseLost_{false};
};

}  // namespace instrument
