// Tests of the keys that hold the bass voice.
#include "engine/note_stack.h"

#include <gtest/gtest.h>

namespace {

using engine::NoteStack;

TEST(NoteStack, ReturnsToTheKeyBelowWhenTheTopIsReleased) {
    NoteStack stack;
    EXPECT_TRUE(stack.push(36, 90));
    EXPECT_FALSE(stack.push(40, 50));
    EXPECT_FALSE(stack.push(43, 60));
    stack.remove(40);
    EXPECT_EQ(stack.topKey(), 43);
    stack.remove(43);
    EXPECT_EQ(stack.topKey(), 36);
    EXPECT_EQ(stack.topVelocity(), 90);
    stack.remove(99);
    EXPECT_EQ(stack.topKey(), 36);
    stack.remove(36);
    EXPECT_TRUE(stack.empty());
    stack.remove(36);
    EXPECT_TRUE(stack.push(36, 1));
}

TEST(NoteStack, RemovesTheLowestEntryOfARepeatedKey) {
    NoteStack stack;
    stack.push(36, 10);
    stack.push(40, 20);
    stack.push(36, 30);
    stack.remove(36);
    EXPECT_EQ(stack.topVelocity(), 30);
    stack.remove(36);
    EXPECT_EQ(stack.topVelocity(), 20);
}

TEST(NoteStack, ForgetsTheOldestKeyWhenFull) {
    NoteStack stack;
    for (int i = 0; i < 1000; ++i) stack.push(i, 64);
    for (int i = 999; i >= 872; --i) {
        ASSERT_EQ(stack.topKey(), i);
        stack.remove(i);
    }
    EXPECT_TRUE(stack.empty());
}

TEST(NoteStack, ThePedalKeepsKeysUntilTheyAreTaken) {
    NoteStack stack;
    stack.push(36, 64);
    stack.push(40, 64);
    stack.setPedal(true);
    stack.remove(40);
    EXPECT_EQ(stack.topKey(), 40);
    stack.setPedal(false);
    EXPECT_EQ(stack.takeSustainedKey(), 40);
    EXPECT_EQ(stack.takeSustainedKey(), -1);
    stack.remove(40);
    EXPECT_EQ(stack.topKey(), 36);
}

}  // namespace
