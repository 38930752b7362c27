// Frames of messages, and messages of blocks that are not played.
#include "instrument/message_queue.h"

#include <string>

#include <gtest/gtest.h>

namespace {

using instrument::MessageQueue;

constexpr int kLast = 100000;

void add(MessageQueue& queue, int frame, char key) {
    const std::uint8_t message[] = {0x90, static_cast<std::uint8_t>(key), 100};
    queue.add(frame, message);
}

// The keys that are due at the frame.
std::string keysUpTo(MessageQueue& queue, int frame) {
    std::string keys;
    while (const auto* message = queue.next(frame)) keys += static_cast<char>(message->bytes[1]);
    return keys;
}

TEST(MessageQueue, GivesAMessageOneFrameBeforeItsOwnAndNeverBeforeItsPredecessor) {
    MessageQueue queue;
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

TEST(MessageQueue, GivesPostponedMessagesBeforeAllOthers) {
    MessageQueue queue;
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

TEST(MessageQueue, ForgetsABlockThatDoesNotCome) {
    MessageQueue queue;
    add(queue, 0, 'a');
    queue.forget();
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, kLast), "");
    queue.endBlock();
    queue.forget();
    add(queue, 0, 'b');
    queue.beginBlock();
    EXPECT_EQ(keysUpTo(queue, kLast), "b");
}

TEST(MessageQueue, EndsInAllNotesOffWhenThereIsNoRoomLeft) {
    MessageQueue queue;
    for (int i = 0; i <= MessageQueue::kCapacity; ++i) add(queue, i, 'a');
    queue.beginBlock();
    const instrument::TimedMessage* last = nullptr;
    int count = 0;
    for (; const auto* message = queue.next(kLast); ++count) last = message;
    EXPECT_EQ(count, MessageQueue::kCapacity);
    EXPECT_EQ(last->bytes, (std::array<std::uint8_t, 3>{0xB0, 123, 0}));
}

}  // namespace
