// What a command line of quarzel asks for.
#pragma once

#include <optional>
#include <string>

#include "app/audio_output.h"

namespace app {

struct CommandLine {
    std::string song;    // empty: none is played
    std::string plugin;  // empty: the instrument that is found
    AudioWish audio;
    std::string midiApi;                 // as RtMidi names it; empty: the first one that works
    std::string midiPort;                // a part of its name; empty: all
    std::optional<std::string> bank;     // path
    std::optional<std::string> program;  // name or index
    bool listsDevices = false;
    bool hasWindow = true;
    std::string answer;  // when not empty, all there is to do is to print it
};

// argv[0] is the program. Throws host::UsageError when the line means nothing, and host::Error
// when one of its values is out of range.
CommandLine parseCommandLine(int argc, const char* const* argv);

}  // namespace app
