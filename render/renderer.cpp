// The offline render loop: feeds events, measures frames and decides where to stop.
#include "render/renderer.h"

#include <algorithm>
#include <cmath>
#include <vector>

#include "host/error.h"
#include "host/song_playback.h"

namespace render {

int channelsOf(const host::PluginHost& host) {
    return std::min(host.outputCount(), 2);
}

RenderStatistics renderSong(const host::MidiSong& song, host::PluginHost& host, SampleSink& sink,
                            const RenderSettings& settings, const Progress& progress) {
    host::SongEnding ending(song, host.sampleRate(), settings.tailSeconds);
    host::SongFeed feed(song, host.sampleRate());
    LevelMeter meter(sink.channels(), host.sampleRate());
    const double gain = std::pow(10.0, settings.gainDb / 20.0);
    RenderStatistics statistics;
    std::vector<float> interleaved;

    host.resume();
    while (statistics.frames < ending.end()) {
        const int64_t begin = statistics.frames;
        const int64_t end = std::min(begin + host.blockSize(), ending.limit());
        host.process(feed.eventsBetween(begin, end), static_cast<int>(end - begin));

        interleaved.clear();
        int frames = 0;
        for (; begin + frames < end && begin + frames < ending.end(); ++frames) {
            for (int channel = 0; channel < sink.channels(); ++channel) {
                const auto sample = static_cast<float>(host.output(channel)[frames] * gain);
                interleaved.push_back(sample);
                const bool counts = !settings.tailSeconds && std::isfinite(sample);
                if (counts) ending.hear(begin + frames, sample);
            }
        }
        statistics.frames += frames;
        meter.hear(interleaved.data(), static_cast<std::size_t>(frames));
        sink.write(interleaved);

        const double songShare =
            static_cast<double>(statistics.frames) / std::max<int64_t>(ending.songFrames(), 1);
        if (!progress(std::min(songShare, 1.0))) throw host::Error("The render was interrupted.");
    }
    host.suspend();
    statistics.levels = meter.levels();
    return statistics;
}

}  // namespace render
