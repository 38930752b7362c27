// The command line of quarzel-render.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "host/song_selection.h"
#include "render/normalization.h"
#include "render/renderer.h"
#include "render/sound_writer.h"

namespace render {

struct ParameterSetting {
    std::string parameter;  // name or index
    float value;            // 0..1
};

struct CommandLine {
    std::vector<std::string> songs;  // empty: render nothing
    std::string output;              // of the only song
    std::string folder;              // of all outputs, if not empty; their names are the songs'
    Container container = Container::kWav;
    bool hasStems = false;  // one file a section
    std::optional<Normalization> normalization;
    host::SongSelection selection;
    std::string plugin;  // empty: the instrument beside the program
    int sampleRate = 44100;
    int blockSize = 512;
    SampleFormat format = SampleFormat::kInt24;
    RenderSettings render;
    // Applied in this order; bank and preset are paths.
    std::optional<std::string> bank;
    std::optional<std::string> program;  // name or index
    std::optional<std::string> preset;
    std::vector<ParameterSetting> settings;
    // Paths, written after the above are applied and before the song is played.
    std::optional<std::string> savedBank;
    std::optional<std::string> savedPreset;
    bool list = false;
    bool quiet = false;
    std::string answer;  // if not empty, print it and do nothing else
};

// argv[0] is the program. Throws UsageError if the line makes no sense and Error if a value is out
// of range.
CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace render
