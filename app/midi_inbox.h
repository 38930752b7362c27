// Where MIDI messages wait for the audio thread.
#pragma once

#include <array>
#include <chrono>
#include <vector>

#include "app/spsc_ring.h"
#include "host/midi_song.h"
#include "host/plugin_host.h"

namespace app {

using Clock = std::chrono::steady_clock;

// The time in which the messages of a block have arrived, and the block's length.
struct BlockWindow {
    Clock::time_point begin;
    Clock::time_point end;
    int frames;
};

// Every source has a lane of its own and fills it from one thread; the audio thread empties all.
class MidiInbox {
  public:
    static constexpr int kLanes = 32;
    static constexpr int kPlayerLane = 0;  // of the user-interface thread
    static constexpr int kMaxMessagesPerBlock = 1024;

    // False when the lane is full: the message is lost.
    bool post(int lane, const host::MidiMessage& message,
              Clock::time_point arrival = Clock::now()) {
        return lanes_[lane].push({arrival, message});
    }

    // Audio thread: adds what has arrived to events, sorted by frame, each message as late in the
    // block as it came in the window. What events has no room for stays for the next block.
    void takeInto(std::vector<host::BlockEvent>& events, const BlockWindow& window);
    // While no audio thread runs: forgets what has arrived.
    void clear();

  private:
    struct Letter {
        Clock::time_point arrival;
        host::MidiMessage message;
    };
    std::array<SpscRing<Letter, 512>, kLanes> lanes_;
};

}  // namespace app
