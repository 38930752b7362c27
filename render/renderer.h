// Renders a song through an instrument and measures the result.
#pragma once

#include <cstdint>
#include <functional>
#include <optional>

#include "host/midi_song.h"
#include "host/plugin_host.h"
#include "render/levels.h"
#include "render/sample_sink.h"

namespace render {

struct RenderSettings {
    double gainDb = 0.0;
    std::optional<double> tailSeconds;  // after the song; if not set, until silence
};

struct RenderStatistics {
    int64_t frames = 0;
    Levels levels;  // after the gain
};

// Receives the progress, 0..1. Returns whether to continue.
using Progress = std::function<bool(double)>;

// The number of channels to render: one for an instrument with one output, else two.
int channelsOf(const host::PluginHost& host);

// Samples that are no number become silence. The block size does not affect the result. Throws
// Error, also if progress returns false.
RenderStatistics renderSong(const host::MidiSong& song, host::PluginHost& host, SampleSink& sink,
                            const RenderSettings& settings, const Progress& progress);

}  // namespace render
