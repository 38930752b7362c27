// The files that a command line asks for, rendered side by side.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "host/midi_song.h"
#include "host/plugin_host.h"
#include "render/command_line.h"
#include "render/program.h"

namespace render {

struct Job {
    std::shared_ptr<const host::MidiSong> song;
    std::string output;
    std::optional<std::string> section;  // the only one that plays
};

using Songs = std::vector<std::shared_ptr<const host::MidiSong>>;

// Reads the songs of the line. Throws host::Error.
Songs readSongs(const CommandLine& line);

// host has the bank, the program and the settings of the line.
std::vector<Job> jobsOf(const CommandLine& line, const Songs& songs, const host::PluginHost& host);

// Applies the bank, the program, the preset and the settings of the line. Throws host::Error.
void applySettings(const CommandLine& line, host::PluginHost& host);

// Renders all files and reports each. If some fail, renders the others and throws host::Error with
// all reasons.
void renderAll(const std::vector<Job>& jobs, const CommandLine& line,
               const Surroundings& surroundings);

}  // namespace render
