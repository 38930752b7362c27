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
        if (presses_.push(press)) {
            added_.fetch_add(1, std::memory_order_relaxed);
        } else if (velocity == 0) {
            releaseLost_.store(true, std::memory_order_relaxed);
        }
    }
    // Any thread: the keys pressed so far do not sound.
    void forget() { forgotten_.store(added_.load(std::memory_order_relaxed)); }
    // Audio thread: adds them to the block that comes next. No note may hang.
    void moveTo(EventQueue& events) {
        for (Press press; presses_.pop(press); ++moved_) {
            const bool forgotten = static_cast<std::int32_t>(moved_ - forgotten_.load()) < 0;
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
    // Counts of presses since the beginning, which may wrap around.
    std::atomic<std::uint32_t> added_{0};
    std::atomic<std::uint32_t> forgotten_{0};
    std::uint32_t moved_ = 0;
    std::atomic<bool> releaseLost_{false};
};

}  // namespace instrument
