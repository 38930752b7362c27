// What a command line of quarzel-render asks for.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "render/renderer.h"
#include "render/wav_writer.h"

namespace render {

struct ParameterSetting {
    std::string parameter;  // name or index
    float value;            // 0..1
};

struct CommandLine {
    std::string song;
    std::string output;
    std::string plugin;  // empty: the instrument beside the program
    int sampleRate = 44100;
    int blockSize = 512;
    SampleFormat format = SampleFormat::kInt24;
    RenderSettings render;
    std::optional<std::string> program;  // name or index
    std::vector<ParameterSetting> settings;
    bool list = false;
    bool quiet = false;
    std::string answer;  // when not empty, all there is to do is to print it
};

// argv[0] is the program. Throws UsageError when the line means nothing, and Error when one of its
// values is out of range.
CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace render
