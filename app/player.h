// What the audio thread does: events in, sound out, and how hard that is.
#pragma once

#include <atomic>
#include <cstdint>
#include <optional>
#include <vector>

#include "app/midi_inbox.h"
#include "host/plugin_host.h"
#include "host/song_playback.h"

namespace app {

class Player {
  public:
    // song may be null; all of them outlive the player.
    Player(host::PluginHost& host, MidiInbox& inbox, const host::MidiSong* song);

    // The first before blocks are rendered in the host's format, the second after the last one. A
    // song goes on where it was; keys that were held or pressed in between are forgotten.
    void start();
    void stop();

    // Audio thread. frames is at most the host's block size; late says that the block before was
    // not ready in time.
    void render(float* left, float* right, int frames, bool late);

    // Any thread. The sound fades out within 20 ms and stays away.
    void fadeOut() { fading_ = true; }
    bool isFaded() const { return faded_; }
    bool songHasEnded() const { return songHasEnded_; }  // its tail included
    double load() const { return load_; }  // share of the time there is, 0..1 and above
    int lateBlocks() const { return lateBlocks_; }

  private:
    void collectEvents(const BlockWindow& window);
    void putOut(float* left, float* right, int frames);
    void followSong(const float* left, const float* right, int frames);

    host::PluginHost& host_;
    MidiInbox& inbox_;
    const host::MidiSong* song_;

    // Audio thread, while it renders.
    std::optional<host::SongFeed> feed_;
    std::optional<host::SongEnding> ending_;
    int64_t songFrame_ = 0;
    int songRate_ = 0;  // that songFrame_ counts in
    std::vector<host::BlockEvent> events_;
    Clock::time_point lastBlock_;
    bool wasStopped_ = false;
    float gain_ = 1.0f;

    std::atomic<bool> fading_{false};
    std::atomic<bool> faded_{false};
    std::atomic<bool> songHasEnded_{false};
    std::atomic<double> load_{0.0};
    std::atomic<int> lateBlocks_{0};
};

}  // namespace app
