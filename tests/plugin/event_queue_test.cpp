// Events of blocks that could not be played.
#include "plugin/event_queue.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace vst2 {
namespace {

// A host's list of note-ons, one key a frame, and what it takes to read it.
struct List {
    explicit List(const std::string& keys) : midi(keys.size()) {
        events = reinterpret_cast<VstEvents*>(bytes.data());
        events->numEvents = static_cast<VstInt32>(keys.size());
        for (std::size_t i = 0; i < keys.size(); ++i) {
            midi[i].type = kVstMidiType;
            midi[i].deltaFrames = static_cast<VstInt32>(i);
            midi[i].midiData[1] = keys[i];
            events->events[i] = reinterpret_cast<VstEvent*>(&midi[i]);
        }
    }
    std::vector<VstMidiEvent> midi;
    std::vector<VstIntPtr> bytes = std::vector<VstIntPtr>(2 + 2000);
    VstEvents* events = nullptr;
};

std::string keysUpTo(EventQueue& queue, VstInt32 frame) {
    std::string keys;
    queue.dispatchUpTo(frame,
                       [&](const std::uint8_t* message) { keys += static_cast<char>(message[1]); });
    return keys;
}

TEST(EventQueue, GivesPostponedEventsBeforeAllOthers) {
    EventQueue queue;
    for (const char* const keys : {"abc", "d"}) {
        const List list(keys);
        queue.receive(list.events);
        queue.beginBlock();
        queue.postpone();
    }
    const List list("xyz");
    queue.receive(list.events);
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, 1), "abcdxy");
    EXPECT_EQ(keysUpTo(queue, 64), "z");
    queue.finishBlock();
    EXPECT_EQ(keysUpTo(queue, 64), "");
}

TEST(EventQueue, PostponesAsManyAsThereIsRoomFor) {
    EventQueue queue;
    const List list(std::string(1500, 'a'));
    queue.receive(list.events);
    queue.postpone();
    EXPECT_EQ(keysUpTo(queue, 64), std::string(1024, 'a'));
}

TEST(EventQueue, ForgetsAListWhoseBlockDoesNotCome) {
    EventQueue queue;
    const List list("abc");
    queue.receive(list.events);
    queue.forget();
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, 64), "");
}

}  // namespace
}  // namespace vst2
