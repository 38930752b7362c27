// A song during playback: the events of each block, and the end of the sound.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "host/midi_song.h"
#include "host/plugin_host.h"

namespace host {

constexpr double kMaxAutomaticTailSeconds = 30.0;

// The largest number of frames that a song can last. tailSeconds is the length after the song;
// without it, the tail lasts until silence.
int64_t maxFramesOf(const MidiSong& song, int sampleRate, std::optional<double> tailSeconds);

// Hands out the events of a song block by block. Nothing is allocated after construction.
class SongFeed {
  public:
    // Limit for hostile songs. Further events move to the next blocks.
    static constexpr std::size_t kMaxEventsPerBlock = 1 << 20;

    SongFeed(const MidiSong& song, int sampleRate);

    // The events from this frame on come next.
    void goTo(int64_t frame) { next_ = song_.firstEventFrom(frame, sampleRate_); }
    // The events of the frames from begin up to, but not including, end.
    const std::vector<BlockEvent>& eventsBetween(int64_t begin, int64_t end);

  private:
    const MidiSong& song_;
    int sampleRate_;
    std::size_t next_ = 0;
    std::vector<BlockEvent> block_;
};

// Finds the frame where the sound ends: after the given tail, or after half a second below -100
// dBFS.
class SongEnding {
  public:
    SongEnding(const MidiSong& song, int sampleRate, std::optional<double> tailSeconds);

    int64_t songFrames() const { return songFrames_; }
    int64_t end() const;
    int64_t limit() const { return limit_; }

    // An audible sample restarts the silence countdown.
    void hear(int64_t frame, float sample);

  private:
    int64_t songFrames_;
    int64_t silenceFrames_;
    int64_t limit_;
    int64_t end_;
};

}  // namespace host
