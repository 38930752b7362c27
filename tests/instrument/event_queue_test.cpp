// Events of blocks: their frames, and what becomes of them when a block is not played.
#include "instrument/event_queue.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using instrument::EventQueue;
using instrument::TimedEvent;

constexpr int kLast = 100000;

void add(EventQueue& queue, int frame, char key) {
    const std::uint8_t message[] = {0x90, static_cast<std::uint8_t>(key), 100};
    queue.add(frame, message);
}

// The keys that are due at the frame.
std::string keysUpTo(EventQueue& queue, int frame) {
    std::string keys;
    while (const auto* message = queue.next(frame)) keys += static_cast<char>(message->bytes[1]);
    return keys;
}

TEST(EventQueue, GivesAMessageOneFrameBeforeItsOwnAndNeverBeforeItsPredecessor) {
    EventQueue queue;
    add(queue, 1, 'a');
    add(queue, 5, 'b');
    add(queue, 3, 'c');
    add(queue, 9, 'd');
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, 0), "a");
    EXPECT_EQ(queue.nextFrame(64), 4);
    EXPECT_EQ(keysUpTo(queue, 3), "");
    EXPECT_EQ(keysUpTo(queue, 4), "bc");
    EXPECT_EQ(queue.nextIndex(), 3);
    EXPECT_EQ(queue.nextFrame(6), 6);
    queue.endBlock();
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, kLast), "");
    EXPECT_EQ(queue.nextIndex(), -1);
}

TEST(EventQueue, GivesPostponedMessagesBeforeAllOthers) {
    EventQueue queue;
    add(queue, 30, 'a');
    add(queue, 40, 'b');
    queue.beginBlock();
    queue.postpone();
    add(queue, 0, 'c');
    queue.beginBlock();
    queue.postpone();
    add(queue, 7, 'x');
    queue.discard();  // the next messages replace the last list
    add(queue, 0, 'y');
    add(queue, 50, 'z');
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, 0), "abcy");
    EXPECT_EQ(keysUpTo(queue, 49), "z");
}

TEST(EventQueue, PutsInsertedEventsInTheOrderOfFramesAndOfArrival) {
    EventQueue queue;
    add(queue, 30, 'p');
    queue.beginBlock();
    queue.postpone();
    for (const auto& [frame, key] : {std::pair{9, 'd'}, {2, 'b'}, {9, 'e'}, {-4, 'a'}, {2, 'c'}}) {
        queue.insert({frame, TimedEvent::kMessage, {0x90, static_cast<std::uint8_t>(key), 1}});
    }
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, 0), "pa");
    EXPECT_EQ(keysUpTo(queue, 1), "bc");
    EXPECT_EQ(keysUpTo(queue, 7), "");
    EXPECT_EQ(keysUpTo(queue, 8), "de");
}

TEST(EventQueue, ForgetsABlockThatDoesNotCome) {
    EventQueue queue;
    add(queue, 0, 'a');
    queue.forget();
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, kLast), "");
    queue.endBlock();
    add(queue, 9, 'a');
    queue.forget();
    add(queue, 0, 'b');
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, kLast), "b");
}

TEST(EventQueue, EndsInAllNotesOffWhenThereIsNoRoomLeft) {
    EventQueue queue;
    for (int i = 0; i <= EventQueue::kCapacity; ++i) add(queue, i, 'a');
    queue.beginBlock();
    const TimedEvent* last = nullptr;
    int count = 0;
    for (; const auto* message = queue.next(kLast); ++count) last = message;
    EXPECT_EQ(count, EventQueue::kCapacity);
    EXPECT_EQ(last->bytes, (std::array<std::uint8_t, 3>{0xB0, 123, 0}));
}

}  // namespace
