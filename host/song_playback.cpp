// Computes the frames of a song's events and of its end.
#include "host/song_playback.h"

#include <algorithm>
#include <cmath>

namespace host {
namespace {

constexpr float kSilence = 1e-5f;        // -100 dBFS
constexpr double kSilenceSeconds = 0.5;  // silence this long ends the sound

int64_t framesIn(double seconds, int sampleRate) {
    return std::llround(seconds * sampleRate);
}

}  // namespace

int64_t maxFramesOf(const MidiSong& song, int sampleRate, std::optional<double> tailSeconds) {
    return song.frameAt(song.endTime, sampleRate) +
           framesIn(tailSeconds.value_or(kMaxAutomaticTailSeconds), sampleRate);
}

SongFeed::SongFeed(const MidiSong& song, int sampleRate) : song_(song), sampleRate_(sampleRate) {
    block_.reserve(std::min(song.events.size(), kMaxEventsPerBlock));
}

const std::vector<BlockEvent>& SongFeed::eventsBetween(int64_t begin, int64_t end) {
    block_.clear();
    for (; next_ < song_.events.size() && block_.size() < kMaxEventsPerBlock; ++next_) {
        const SongEvent& event = song_.events[next_];
        const int64_t frame = song_.frameAt(event.time, sampleRate_);
        if (frame >= end) break;
        block_.push_back({static_cast<int>(std::max(frame - begin, int64_t{0})), event.message});
    }
    return block_;
}

SongEnding::SongEnding(const MidiSong& song, int sampleRate, std::optional<double> tailSeconds)
    : songFrames_(song.frameAt(song.endTime, sampleRate)),
      silenceFrames_(framesIn(kSilenceSeconds, sampleRate)),
      limit_(maxFramesOf(song, sampleRate, tailSeconds)),
      end_(tailSeconds ? limit_ : songFrames_ + silenceFrames_) {}

int64_t SongEnding::end() const {
    return std::min(end_, limit_);
}

void SongEnding::hear(int64_t frame, float sample) {
    if (std::fabs(sample) > kSilence) end_ = std::max(end_, frame + 1 + silenceFrames_);
}

}  // namespace host
