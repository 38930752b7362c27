// The command line of quarzel.
#pragma once

#include <optional>
#include <string>

#include "app/audio_output.h"
#include "host/song_selection.h"

namespace app {

struct CommandLine {
    std::string song;  // empty: none
    host::SongSelection selection;
    std::string plugin;  // empty: search for it
    AudioWish audio;
    std::string midiApi;                 // RtMidi's name; empty: the first that works
    std::string midiPort;                // part of its name; empty: all
    std::optional<std::string> bank;     // path
    std::optional<std::string> program;  // name or index
    bool isFactoryFresh = false;         // put the bank of the last run aside
    bool hasCeiling = true;
    bool listsDevices = false;
    bool hasWindow = true;
    std::string answer;  // if not empty, print it and do nothing else
};

// argv[0] is the program. Throws host::UsageError if the line makes no sense and host::Error if a
// value is out of range.
CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace app
