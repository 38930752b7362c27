// A song while it is played: which events a block gets, and where the sound has ended.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/midi_song.h"
#include "host/plugin_host.h"

namespace host {

constexpr double kMaxAutomaticTailSeconds = 30.0;

// The most frames that a song can last. tailSeconds is the length after the song; without it, the
// tail goes on until silence.
int64_t maxFramesOf(const MidiSong& song, int sampleRate, std::optional<double> tailSeconds);

// Hands out the events of a song block by block. Nothing is allocated after construction.
class SongFeed {
  public:
    // The most events of one block. What no song needs and a hostile one may ask for comes with
    // the blocks that follow.
    static constexpr std::size_t kMaxEventsPerBlock = 1 << 20;

    SongFeed(const MidiSong& song, int sampleRate);

    // Leaves out the events before that frame.
    void skipTo(int64_t frame);
    // The events of the frames from begin on, up to end.
    const std::vector<BlockEvent>& eventsBetween(int64_t begin, int64_t end);

  private:
    const MidiSong& song_;
    int sampleRate_;
    std::size_t next_ = 0;
    std::vector<BlockEvent> block_;
};

// Knows the frame where the sound ends: after the given tail, or once it has been below -100 dBFS
// for half a second.
class SongEnding {
  public:
    SongEnding(const MidiSong& song, int sampleRate, std::optional<double> tailSeconds);

    int64_t songFrames() const { return songFrames_; }
    int64_t end() const;
    int64_t limit() const { return limit_; }

    // Silence begins after a frame that can be heard at the earliest.
    void hear(int64_t frame, float sample);

  private:
    int64_t songFrames_;
    int64_t silenceFrames_;
    int64_t limit_;
    int64_t end_;
};

}  // namespace host
