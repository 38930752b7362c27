// Plays a song on an instrument into a WAV file and measures what comes out.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "host/midi_song.h"
#include "host/plugin_host.h"
#include "render/wav_writer.h"

namespace render {

struct RenderSettings {
    double gainDb = 0.0;
    std::optional<double> tailSeconds;  // after the song; without it, until silence
};

// Levels are linear, after the gain, 1.0 being full scale, over all channels.
struct RenderStatistics {
    int64_t frames = 0;
    double peak = 0.0;
    double rms = 0.0;
    int64_t clippedSamples = 0;    // limited to fit the file
    int64_t nonFiniteSamples = 0;  // infinite or not a number, written as silence
};

// Told the share of the work that is done, 0..1; returns whether to go on.
using Progress = std::function<bool(double)>;

// The file gets one channel for an instrument with one output, else its first two.
int channelsOf(const host::PluginHost& host);

// Renders and commits the file. The result depends on neither the block size nor the progress.
// Throws Error, also when progress said no.
RenderStatistics renderSong(const host::MidiSong& song, host::PluginHost& host, WavWriter& writer,
                            const RenderSettings& settings, const Progress& progress);

}  // namespace render
