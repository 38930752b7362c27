// Queues MIDI messages for the audio thread.
#pragma once

#include <array>
#include <chrono>
#include <vector>

#include "host/midi_song.h"
#include "host/plugin_host.h"
#include "platform/spsc_ring.h"

namespace app {

using Clock = std::chrono::steady_clock;

// The period in which the messages of a block arrived, and the block's length.
struct BlockWindow {
    Clock::time_point begin;
    Clock::time_point end;
    int frames;
};

// Each source fills its own lane from one thread. The audio thread empties all lanes.
class MidiInbox {
  public:
    static constexpr int kLanes = 32;
    static constexpr int kPlayerLane = 0;  // for the user-interface thread
    static constexpr int kMaxMessagesPerBlock = 1024;

    // Returns false if the lane is full; the message is lost.
    bool post(int lane, const host::MidiMessage& message,
              Clock::time_point arrival = Clock::now()) {
        return lanes_[lane].push({arrival, message});
    }

    // Audio thread. Adds the messages that have arrived to events, sorted by frame. A message's
    // position in the block matches its arrival time in the window. Messages that exceed the
    // capacity of events stay for the next block.
    void takeInto(std::vector<host::BlockEvent>& events, const BlockWindow& window);
    // Drops all messages. Call it only while no audio thread runs.
    void clear();

  private:
    struct Letter {
        Clock::time_point arrival;
        host::MidiMessage message;
    };
    std::array<platform::SpscRing<Letter, 512>, kLanes> lanes_;
};

}  // namespace app
