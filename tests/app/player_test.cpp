// Songs and keys in the audio thread, block by block.
#include "app/player.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

constexpr int kRate = 8000;
constexpr int kBlock = 64;
constexpr host::HostIdentity kIdentity = {"test", true};

// Hosts the test instrument, which marks the frame of every note-on on the left.
struct Rig {
    explicit Rig(const host::MidiSong* song = nullptr) : player(host, inbox, song, true) {
        player.start();
    }
    // Returns the frames of the marks in the next blocks.
    std::vector<int> marks(int blocks) {
        std::vector<int> found;
        for (int block = 0; block < blocks; ++block) {
            player.render(left, right, kBlock, block == 0);
            for (int i = 0; i < kBlock; ++i) {
                if (left[i] > 0.2f) found.push_back(block * kBlock + i);
            }
        }
        return found;
    }

    host::PluginHost host{TEST_INSTRUMENT, kRate, kBlock, kIdentity};
    app::MidiInbox inbox;
    app::Player player;
    float left[2 * kBlock] = {};
    float right[2 * kBlock] = {};
};

// A song with a note-on at each frame.
host::MidiSong songOf(std::vector<uint64_t> frames, uint64_t end) {
    host::MidiSong song = {kRate, {}, end};
    for (const auto frame : frames) song.events.push_back({frame, {0x90, 60, 100}});
    return song;
}

TEST(Player, PlaysSongAndKeysTogetherAndHearsTheEnd) {
    const auto song = songOf({3, 200}, 300);
    Rig rig(&song);
    rig.inbox.post(app::MidiInbox::kPlayerLane, {0x90, 64, 100}, app::Clock::time_point{});
    EXPECT_EQ(rig.marks(4), (std::vector<int>{0, 3, 200}));
    EXPECT_FALSE(rig.player.songHasEnded());
    rig.marks((300 + kRate / 2) / kBlock - 4);  // half a second of silence
    EXPECT_FALSE(rig.player.songHasEnded());
    rig.marks(2);
    EXPECT_TRUE(rig.player.songHasEnded());
    EXPECT_EQ(rig.player.lateBlocks(), 3);
    EXPECT_GT(rig.player.load(), 0.0);
}

TEST(Player, GoesOnInTheSongAtAnotherRate) {
    const auto song = songOf({3, 100, 200}, 300);
    Rig rig(&song);
    EXPECT_EQ(rig.marks(2), (std::vector<int>{3, 100}));
    rig.player.stop();
    rig.inbox.post(app::MidiInbox::kPlayerLane, {0x90, 64, 100}, app::Clock::time_point{});
    rig.host.setFormat(2 * kRate, kBlock);
    rig.player.start();  // forgets that key
    EXPECT_EQ(rig.marks(4), (std::vector<int>{2 * (200 - 2 * kBlock)}));
}

TEST(Player, StopsMovesAndPlaysTheSongAgain) {
    host::MidiSong song = {kRate, {{3, {0x90, 60, 100}}, {100, {0xc0, 2, 0}}}, 300};
    song.events.push_back({200, {0x90, 60, 100}});
    Rig rig(&song);
    rig.host.setProgram(1);
    rig.player.stop();
    rig.player.start();  // the song has begun with program 0
    const auto seconds = [](double frame) { return frame / kRate; };
    EXPECT_EQ(rig.marks(1), (std::vector<int>{3}));
    rig.player.pauseSong();
    EXPECT_FALSE(rig.player.songPlays());
    EXPECT_TRUE(rig.marks(4).empty());
    EXPECT_EQ(rig.player.songPosition(), seconds(kBlock));
    rig.player.playSong();
    EXPECT_EQ(rig.marks(3), (std::vector<int>{200 - kBlock}));
    EXPECT_EQ(rig.host.program(), 2);

    rig.player.moveSongTo(seconds(1));
    EXPECT_EQ(rig.marks(1), (std::vector<int>{2}));
    EXPECT_EQ(rig.host.program(), 0) << "as at that place";
    rig.player.moveSongTo(seconds(150));
    EXPECT_EQ(rig.marks(1), (std::vector<int>{50}));
    EXPECT_EQ(rig.host.program(), 2) << "as at that place";

    rig.marks((300 + kRate / 2) / kBlock + 2);
    EXPECT_TRUE(rig.player.songHasEnded());
    EXPECT_EQ(rig.player.songPosition(), rig.player.songLength());
    rig.host.setProgram(1);
    rig.player.moveSongTo(99.0);
    EXPECT_TRUE(rig.marks(1).empty());
    EXPECT_FALSE(rig.player.songPlays()) << "a song that has ended does not go on by itself";
    rig.player.playSong();
    EXPECT_EQ(rig.marks(1), (std::vector<int>{3}));
    EXPECT_EQ(rig.host.program(), 1) << "the one from before this time";
}

TEST(Player, LeavesTheProgramOfBeforeTheSong) {
    const host::MidiSong song = {kRate, {{3, {0x90, 60, 100}}, {200, {0xc0, 2, 0}}}, 300};
    {
        Rig rig(&song);
        rig.host.setProgram(1);
        rig.player.stop();
        rig.player.start();  // the song has begun with program 0
        rig.marks(4);
        EXPECT_EQ(rig.host.program(), 2);
        rig.player.stop();
        rig.player.leaveSong();
        EXPECT_EQ(rig.host.program(), 0) << "cut short";
    }
    Rig rig(&song);
    rig.marks((300 + kRate / 2) / kBlock + 2);
    EXPECT_TRUE(rig.player.songHasEnded());
    EXPECT_EQ(rig.host.program(), 0) << "played to its end";
    rig.host.setProgram(1);
    rig.player.stop();
    rig.player.leaveSong();
    EXPECT_EQ(rig.host.program(), 1) << "chosen after the song";
}

TEST(Player, FadesOutToSilence) {
    Rig rig;
    EXPECT_TRUE(rig.player.songHasEnded());
    rig.host.setParameter(3, 1.0f);  // rings for ten seconds
    rig.inbox.post(app::MidiInbox::kPlayerLane, {0x90, 64, 100}, app::Clock::time_point{});
    rig.marks(1);
    rig.player.fadeOut();
    float before = 1.0f;
    for (int block = 0; block < 3; ++block) {
        EXPECT_FALSE(rig.player.isFaded());
        rig.player.render(rig.left, rig.right, kBlock, false);
        for (int i = 0; i < kBlock; ++i) {
            EXPECT_EQ(rig.right[i], rig.left[i]);
            EXPECT_LE(rig.left[i], before);
            EXPECT_LT(before - rig.left[i], i + block == 0 ? 1.0f : 0.01f);
            before = rig.left[i];
        }
    }
    EXPECT_TRUE(rig.player.isFaded());
    EXPECT_EQ(before, 0.0f);
}

TEST(Ceiling, TurnsDownWhatExceedsFullScaleAndNothingElse) {
    app::Ceiling ceiling(kRate);
    const auto held = [&](float left, float right) {
        ceiling.hold(left, right);
        return std::pair(left, right);
    };
    EXPECT_EQ(held(1.0f, -0.7f), std::pair(1.0f, -0.7f));
    EXPECT_EQ(held(2.0f, -4.0f), std::pair(0.5f, -1.0f));
    const float soonAfter = held(0.5f, 0.5f).first;
    EXPECT_GT(soonAfter, 0.125f);
    EXPECT_LT(soonAfter, 0.13f);
    for (int i = 0; i < kRate; ++i) held(0.0f, 0.0f);
    EXPECT_EQ(held(0.5f, 0.25f), std::pair(0.5f, 0.25f));
}

TEST(Player, IsSilentForABlockThatIsTooLarge) {
    Rig rig;
    rig.left[2 * kBlock - 1] = rig.right[0] = 1.0f;
    rig.player.render(rig.left, rig.right, 2 * kBlock, false);
    EXPECT_EQ(rig.left[2 * kBlock - 1], 0.0f);
    EXPECT_EQ(rig.right[0], 0.0f);
}

}  // namespace
