// The audio thread's work: feeds events to the instrument, outputs its sound and measures the load.
#pragma once

#include <array>
#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/ceiling.h"
#include "app/midi_inbox.h"
#include "app/spsc_ring.h"
#include "host/plugin_host.h"
#include "host/song_playback.h"

namespace app {

class Player {
  public:
    // song may be null. All arguments must outlive the player.
    Player(host::PluginHost& host, MidiInbox& inbox, const host::MidiSong* song, bool hasCeiling);

    // Call start() before the first block and stop() after the last. A song continues where it was.
    // Keys held before or pressed in between are forgotten.
    void start();
    void stop();
    // Call after stop(). If the song was cut short, brings back the program from before it.
    void leaveSong();

    // The song's transport, for the thread that calls start(). The song plays from the first block
    // on. playSong() goes on where it was, or from the beginning at the end. Positions are in
    // seconds and limited to the song; at each, controllers and program are those of the song
    // there.
    void playSong();
    void pauseSong() { paused_ = true; }
    void moveSongTo(double seconds);
    bool songPlays() const { return !paused_ && !songHasEnded_; }
    double songPosition() const;
    double songLength() const;  // 0 without a song

    // Audio thread. frames is at most the host's block size. late means that the previous block was
    // not ready in time.
    void render(float* left, float* right, int frames, bool late);

    // Any thread. Fades out within 20 ms; the output stays silent from then on.
    void fadeOut() { fading_ = true; }
    bool isFaded() const { return faded_; }
    bool songHasEnded() const { return songHasEnded_; }  // including its tail
    double load() const { return load_; }  // share of the available time; 1 and above is too slow
    int lateBlocks() const { return lateBlocks_; }  // since start()

  private:
    static constexpr int kNoProgram = -1;

    // Where the song goes on, and what it has set before: its last program and controllers.
    struct Jump {
        static constexpr std::size_t kMostMessages = 131;
        int64_t frame;
        int programBefore;
        std::size_t messageCount;
        std::array<host::MidiMessage, kMostMessages> messages;
    };

    void beginSong();
    void jumpTo(int64_t frame);
    void takeJumps();
    void addSong(int frames);
    void release();
    void collectEvents(const BlockWindow& window);
    void putOut(float* left, float* right, int frames);
    void followSong(const float* left, const float* right, int frames);

    host::PluginHost& host_;
    MidiInbox& inbox_;
    const host::MidiSong* song_;
    const bool hasCeiling_;
    bool hasBegun_ = false;
    bool isRunning_ = false;
    int firstProgram_ = kNoProgram;  // the song's before its first change; none if it has no change
    SpscRing<Jump, 16> jumps_;

    // Audio thread, while rendering.
    std::optional<host::SongFeed> feed_;
    std::optional<host::SongEnding> ending_;
    int64_t songFrame_ = 0;
    int songRate_ = 0;                // sample rate of songFrame_
    int programBefore_ = kNoProgram;  // the song; none if it changes no program or is left
    bool songIsOver_ = false;         // its controllers and its program are still to be reset
    Jump jump_ = {};
    bool jumped_ = false;  // the messages of jump_ are still to be sent
    std::optional<Ceiling> ceiling_;
    std::vector<host::BlockEvent> events_;
    Clock::time_point lastBlock_;
    bool wasStopped_ = false;
    bool wasPaused_ = false;
    float gain_ = 1.0f;

    std::atomic<bool> fading_{false};
    std::atomic<bool> faded_{false};
    std::atomic<bool> paused_{false};
    std::atomic<int64_t> position_{0};  // songFrame_
    std::atomic<bool> songHasEnded_{false};
    std::atomic<double> load_{0.0};
    std::atomic<int> lateBlocks_{0};
};

}  // namespace app
