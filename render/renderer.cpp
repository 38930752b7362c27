// The offline render loop: feeds events, measures frames and decides where to stop.
#include "render/renderer.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/error.h"
#include "host/song_playback.h"

namespace render {
namespace {

// Applies the gain and measures the result.
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

int channelsOf(const host::PluginHost& host) {
    return std::min(host.outputCount(), 2);
}

RenderStatistics renderSong(const host::MidiSong& song, host::PluginHost& host, WavWriter& writer,
                            const RenderSettings& settings, const Progress& progress) {
    host::SongEnding ending(song, host.sampleRate(), settings.tailSeconds);
    host::SongFeed feed(song, host.sampleRate());
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
                if (!settings.tailSeconds) ending.hear(statistics.frames, sample);
            }
        }
        writer.write(interleaved);

        const double songShare =
            static_cast<double>(statistics.frames) / std::max<int64_t>(ending.songFrames(), 1);
        if (!progress(std::min(songShare, 1.0))) throw host::Error("The render was interrupted.");
    }
    host.suspend();
    writer.commit();

    meter.fill(statistics);
    statistics.clippedSamples = writer.clippedSamples();
    return statistics;
}

}  // namespace render
