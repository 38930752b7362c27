// Renders a song through an instrument into a WAV file and measures the result.
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
    std::optional<double> tailSeconds;  // after the song; if not set, until silence
};

// Levels are linear, after the gain, over all channels. 1.0 is full scale.
struct RenderStatistics {
    int64_t frames = 0;
    double peak = 0.0;
    double rms = 0.0;
    int64_t clippedSamples = 0;    // limited to fit the format
    int64_t nonFiniteSamples = 0;  // infinite or NaN, written as silence
};

// Receives the progress, 0..1. Returns whether to continue.
using Progress = std::function<bool(double)>;

// The number of channels in the file: one for an instrument with one output, else two.
int channelsOf(const host::PluginHost& host);

// Renders and commits the file. The block size does not affect the result. Throws Error, also if
// progress returns false.
RenderStatistics renderSong(const host::MidiSong& song, host::PluginHost& host, WavWriter& writer,
                            const RenderSettings& settings, const Progress& progress);

}  // namespace render
