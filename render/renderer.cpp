// The offline render loop: blocks of events in, measured frames out, and where to stop.
#include "render/renderer.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "render/error.h"

namespace render {
namespace {

constexpr double kSilence = 1e-5;        // -100 dBFS
constexpr double kSilenceSeconds = 0.5;  // how long silence lasts to be believed

int64_t framesIn(double seconds, int sampleRate) {
    return std::llround(seconds * sampleRate);
}

// Knows the frame where the render ends.
class Ending {
  public:
    Ending(const MidiSong& song, int sampleRate, const RenderSettings& settings)
        : songFrames_(song.frameAt(song.endTime, sampleRate)),
          silenceFrames_(framesIn(kSilenceSeconds, sampleRate)),
          limit_(maxFramesOf(song, sampleRate, settings)),
          end_(settings.tailSeconds ? limit_ : songFrames_ + silenceFrames_) {}

    int64_t songFrames() const { return songFrames_; }
    int64_t end() const { return std::min(end_, limit_); }
    int64_t limit() const { return limit_; }

    // The frame can be heard: silence begins after it at the earliest.
    void hear(int64_t frame) { end_ = std::max(end_, frame + 1 + silenceFrames_); }

  private:
    int64_t songFrames_;
    int64_t silenceFrames_;
    int64_t limit_;
    int64_t end_;
};

// Hands out the events of a song block by block.
class EventFeed {
  public:
    EventFeed(const MidiSong& song, int sampleRate) : song_(song), sampleRate_(sampleRate) {}

    // The events of the frames from begin on, up to end.
    const std::vector<BlockEvent>& eventsBetween(int64_t begin, int64_t end) {
        block_.clear();
        for (; next_ < song_.events.size(); ++next_) {
            const SongEvent& event = song_.events[next_];
            const int64_t frame = song_.frameAt(event.time, sampleRate_);
            if (frame >= end) break;
            block_.push_back({static_cast<int>(frame - begin), event.message});
        }
        return block_;
    }

  private:
    const MidiSong& song_;
    int sampleRate_;
    std::size_t next_ = 0;
    std::vector<BlockEvent> block_;
};

// Applies the gain, and measures.
class Meter {
  public:
    explicit Meter(double gainDb) : gain_(std::pow(10.0, gainDb / 20.0)) {}

    float level(float raw) {
        const auto sample = static_cast<float>(raw * gain_);
        ++samples_;
        if (!std::isfinite(sample)) {
            ++nonFiniteSamples_;
            return 0.0f;
        }
        peak_ = std::max(peak_, std::fabs(sample));
        squares_ += static_cast<double>(sample) * sample;
        return sample;
    }

    void fill(RenderStatistics& statistics) const {
        statistics.peak = peak_;
        statistics.rms = samples_ == 0 ? 0.0 : std::sqrt(squares_ / samples_);
        statistics.nonFiniteSamples = nonFiniteSamples_;
    }

  private:
    double gain_;
    int64_t samples_ = 0;
    float peak_ = 0.0f;
    double squares_ = 0.0;
    int64_t nonFiniteSamples_ = 0;
};

}  // namespace

int64_t maxFramesOf(const MidiSong& song, int sampleRate, const RenderSettings& settings) {
    const double tailSeconds = settings.tailSeconds.value_or(kMaxAutomaticTailSeconds);
    return song.frameAt(song.endTime, sampleRate) + framesIn(tailSeconds, sampleRate);
}

int channelsOf(const PluginHost& host) {
    return std::min(host.outputCount(), 2);
}

RenderStatistics renderSong(const MidiSong& song, PluginHost& host, WavWriter& writer,
                            const RenderSettings& settings, const Progress& progress) {
    Ending ending(song, host.sampleRate(), settings);
    EventFeed feed(song, host.sampleRate());
    Meter meter(settings.gainDb);
    RenderStatistics statistics;
    std::vector<float> interleaved;

    host.resume();
    while (statistics.frames < ending.end()) {
        const int64_t begin = statistics.frames;
        const int64_t end = std::min(begin + host.blockSize(), ending.limit());
        host.process(feed.eventsBetween(begin, end), static_cast<int>(end - begin));

        interleaved.clear();
        for (; statistics.frames < end && statistics.frames < ending.end(); ++statistics.frames) {
            for (int channel = 0; channel < writer.channels(); ++channel) {
                const float sample = meter.level(host.output(channel)[statistics.frames - begin]);
                interleaved.push_back(sample);
                if (!settings.tailSeconds && std::fabs(sample) > kSilence)
                    ending.hear(statistics.frames);
            }
        }
        writer.write(interleaved);

        const double songShare =
            static_cast<double>(statistics.frames) / std::max<int64_t>(ending.songFrames(), 1);
        if (!progress(std::min(songShare, 1.0))) throw Error("The render was interrupted.");
    }
    host.suspend();
    writer.commit();

    meter.fill(statistics);
    statistics.clippedSamples = writer.clippedSamples();
    return statistics;
}

}  // namespace render
