// Tests of voice allocation.
#include "engine/voice_allocator.h"

#include <gtest/gtest.h>

#include <array>

#include "dsp/random.h"

namespace {

using engine::VoiceAllocator;

// A pool whose envelopes sound from the note-on until they are killed.
class VoiceAllocation : public testing::Test {
  protected:
    int noteOn(int key, int velocity = 100) {
        const int slot = allocator_.noteOn(key, velocity);
        envelopes_.at(static_cast<std::size_t>(slot)).trigger(1.0f, key);
        return slot;
    }
    void endSound(int slot) { envelopes_.at(static_cast<std::size_t>(slot)).kill(); }
    void fill(int polyphony) {
        allocator_.setPolyphony(polyphony);
        for (int slot = 0; slot < polyphony; ++slot) EXPECT_EQ(noteOn(20 + slot), slot);
    }

    std::array<dsp::VoiceEnvelope, engine::kMaxVoices> envelopes_;
    VoiceAllocator allocator_{envelopes_.data()};
};

TEST_F(VoiceAllocation, TakesTheFirstIdleSlot) {
    EXPECT_EQ(allocator_.polyphony(), 43);
    for (int i = 0; i < 5; ++i) EXPECT_EQ(noteOn(60 + i), i);
    EXPECT_EQ(allocator_.noteOff(62), 2);
    EXPECT_EQ(noteOn(70), 5);  // slot 2 still sounds
    endSound(2);
    EXPECT_EQ(noteOn(71), 2);
}

TEST_F(VoiceAllocation, ARepeatedKeyKeepsItsSlotAndFirstVelocity) {
    noteOn(60, 30);
    EXPECT_EQ(noteOn(64, 40), 1);
    EXPECT_EQ(noteOn(60, 90), 0);
    EXPECT_EQ(allocator_.velocity(0), 30);
    EXPECT_EQ(allocator_.key(0), 60);
}

// The candidate starts as an age stamp and then takes slot indices. Once every slot has been
// stolen, the stamp of slot 0 keeps naming the same slot.
TEST_F(VoiceAllocation, AFullPoolStealsOnceAroundAndThenOneSlot) {
    fill(6);
    const int stolen[] = {0, 1, 2, 3, 4, 5, 5, 5};
    for (std::size_t i = 0; i < std::size(stolen); ++i) {
        SCOPED_TRACE(i);
        EXPECT_EQ(noteOn(80 + static_cast<int>(i)), stolen[i]);
    }
}

TEST_F(VoiceAllocation, AfterReleasesTheStampOfSlotZeroNamesTheSlot) {
    fill(6);                   // stamps -1 .. 4
    EXPECT_EQ(noteOn(80), 0);  // stamp 5
    allocator_.noteOff(21);    // two slots released, but still sounding
    allocator_.noteOff(22);
    EXPECT_EQ(noteOn(81), 5);
}

TEST_F(VoiceAllocation, AnUnheldKeyGoesPastTheLastSlot) {
    for (const int polyphony : {6, 43, 44}) {
        fill(polyphony);
        EXPECT_EQ(allocator_.noteOff(100), polyphony);
        EXPECT_EQ(allocator_.noteOff(20), 0);
        endSound(0);
        EXPECT_EQ(allocator_.noteOff(20), 0);  // forgets the key
        EXPECT_EQ(allocator_.noteOff(20), polyphony);
        for (int slot = 1; slot < polyphony; ++slot) endSound(slot);
    }
}

TEST_F(VoiceAllocation, ThePedalMarksReleasedSlots) {
    noteOn(60);
    noteOn(64);
    allocator_.setPedal(true);
    EXPECT_EQ(allocator_.noteOff(60), VoiceAllocator::kSustained);
    EXPECT_EQ(allocator_.noteOff(99), VoiceAllocator::kSustained);
    EXPECT_TRUE(allocator_.takeSustained(0));
    EXPECT_FALSE(allocator_.takeSustained(0));
    EXPECT_FALSE(allocator_.takeSustained(1));
    allocator_.noteOff(64);
    noteOn(64);  // held again
    EXPECT_FALSE(allocator_.takeSustained(1));
}

TEST_F(VoiceAllocation, PolyphonyIsBounded) {
    const std::pair<int, int> cases[] = {{-1, 6}, {6, 6}, {25, 25}, {44, 44}, {1000, 44}};
    for (const auto& [asked, given] : cases) {
        allocator_.setPolyphony(asked);
        EXPECT_EQ(allocator_.polyphony(), given);
    }
}

TEST_F(VoiceAllocation, EverySlotItNamesIsInUse) {
    dsp::Random random;
    for (const int polyphony : {6, 43, 44}) {
        allocator_.setPolyphony(polyphony);
        for (int i = 0; i < 5000; ++i) {
            const int key = 12 + random.next() % 104;
            if (random.next() % 3 == 0) {
                const int slot = allocator_.noteOff(key);
                ASSERT_TRUE(slot >= 0 && slot <= polyphony);
                if (slot < polyphony && i % 2 == 0) endSound(slot);
            } else {
                ASSERT_LT(noteOn(key), polyphony);
            }
        }
    }
}

}  // namespace
