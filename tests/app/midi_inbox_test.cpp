// Messages on their way to the audio thread: frames, order and overflow.
#include "app/midi_inbox.h"

#include <gtest/gtest.h>

#include <thread>

namespace {

using namespace std::chrono_literals;

const app::Clock::time_point kBegin{10s};
const app::BlockWindow kWindow = {kBegin, kBegin + 100ms, 100};

std::vector<host::BlockEvent> roomFor(std::size_t count) {
    std::vector<host::BlockEvent> events;
    events.reserve(count);
    return events;
}

TEST(MidiInbox, PutsMessagesWhereTheyCameAndSortsTheLanes) {
    app::MidiInbox inbox;
    inbox.post(2, {0x90, 1, 1}, kBegin + 30ms);
    inbox.post(2, {0x90, 2, 1}, kBegin + 20ms);  // the clock went back, the order stays
    inbox.post(0, {0x90, 3, 1}, kBegin - 1s);
    inbox.post(31, {0x90, 4, 1}, kBegin + 1s);
    auto events = roomFor(8);
    events.push_back({30, {0x90, 0, 1}});  // from a song
    inbox.takeInto(events, kWindow);
    std::vector<std::pair<int, int>> found;
    for (const auto& event : events) found.push_back({event.frame, event.message[1]});
    EXPECT_EQ(found,
              (std::vector<std::pair<int, int>>{{0, 3}, {30, 0}, {30, 1}, {30, 2}, {99, 4}}));

    events.clear();
    inbox.post(0, {0x90, 5, 1}, kBegin + 50ms);
    inbox.takeInto(events, {kBegin, kBegin, 100});  // no time has passed
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(events[0].frame, 0);
}

TEST(MidiInbox, KeepsWhatABlockHasNoRoomForAndRefusesMoreThanItHolds) {
    app::MidiInbox inbox;
    int posted = 0;
    while (inbox.post(5, {0x90, static_cast<unsigned char>(posted % 128), 1}, kBegin)) ++posted;
    EXPECT_EQ(posted, 512);
    int taken = 0;
    for (auto events = roomFor(100); taken < posted; events.clear()) {
        inbox.takeInto(events, kWindow);
        ASSERT_FALSE(events.empty());
        ASSERT_EQ(events.capacity(), 100u);
        for (const auto& event : events) EXPECT_EQ(event.message[1], taken++ % 128);
    }
}

TEST(MidiInbox, LosesNothingBetweenThreads) {
    app::MidiInbox inbox;
    constexpr int kCount = 20000;
    std::thread source([&] {
        for (int i = 0; i < kCount;) {
            const auto low = static_cast<unsigned char>(i & 0x7f);
            const auto high = static_cast<unsigned char>(i >> 7 & 0x7f);
            if (inbox.post(3, {0x90, low, high})) ++i;
        }
    });
    auto events = roomFor(256);
    for (int next = 0; next < kCount; events.clear()) {
        inbox.takeInto(events, kWindow);
        for (const auto& event : events) {
            EXPECT_EQ(event.message[1] | event.message[2] << 7, next & 0x3fff);
            ++next;
        }
    }
    source.join();
}

}  // namespace
