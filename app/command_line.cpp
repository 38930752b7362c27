// The options of quarzel.
#include "app/command_line.h"

#include <algorithm>

#include "app/midi_inputs.h"
#include "host/error.h"
#include "host/option_parser.h"
#include "host/song_options.h"

namespace app {
namespace {

// The options as typed.
struct Typed {
    std::optional<std::string> rate, block;
    bool noWindow = false;
    bool noCeiling = false;
    host::SongOptions song;
};

std::string joined(const std::vector<std::string>& names) {
    std::string text;
    for (const auto& name : names) text += (text.empty() ? "" : ", ") + name;
    return text;
}

void declare(host::OptionParser& parser, CommandLine& line, Typed& typed) {
    parser.addText("SONG.mid", line.song, "", "Standard MIDI file to play");
    parser.addText("--plugin", line.plugin, "FILE",
                   "VST 2.4 instrument (default: QuarzelStrings.so beside this program, else in "
                   "../lib/vst)");
    parser.addText("--bank", line.bank, "FILE.fxb",
                   "Load a bank in place of the one of the last run");
    parser.addText("--program", line.program, "N|NAME", "Program to begin with");
    parser.addFlag("--factory", line.isFactoryFresh,
                   "Begin with the factory bank; the one of the last run is put aside");
    typed.song.declare(parser);
    parser.addText("--api", line.audio.api, "NAME", "Audio through: " + joined(audioApis()));
    parser.addText("--device", line.audio.device, "NAME", "Audio output, or a part of its name");
    parser.addText("--rate", typed.rate, "HZ",
                   "Sample rate, 8000 to 768000 (default: the device's)");
    parser.addText("--block", typed.block, "FRAMES", "Frames a block, 16 to 8192 (default: 256)");
    parser.addText("--midi-api", line.midiApi, "NAME", "MIDI through: " + joined(midiApis()));
    parser.addText("--midi-port", line.midiPort, "NAME",
                   "Listen to the ports with this in their names only (default: all)");
    parser.addFlag("--no-ceiling", typed.noCeiling,
                   "Let sound above full scale clip instead of turning it down");
    parser.addFlag("--list-devices", line.listsDevices, "Print audio outputs and MIDI ports");
    parser.addFlag("--no-window", typed.noWindow,
                   "Show no editor; with a song, leave when it has ended");
}

void checkApi(const char* option, const std::string& name, const std::vector<std::string>& known) {
    if (name.empty() || std::find(known.begin(), known.end(), name) != known.end()) return;
    throw host::UsageError(std::string(option) + ": " + name + " is none of " + joined(known));
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    Typed typed;
    host::OptionParser parser(
        "quarzel",
        "Plays the string-ensemble synthesizer from MIDI ports, the computer keyboard and files.");
    declare(parser, line, typed);
    line.answer = parser.parse(argc, argv);
    if (!line.answer.empty()) return line;
    checkApi("--api", line.audio.api, audioApis());
    checkApi("--midi-api", line.midiApi, midiApis());
    if (typed.rate) line.audio.rate = host::readInteger("--rate", *typed.rate, 8000, 768000);
    if (typed.block) line.audio.blockSize = host::readInteger("--block", *typed.block, 16, 8192);
    line.selection = typed.song.selection();
    line.hasWindow = !typed.noWindow;
    line.hasCeiling = !typed.noCeiling;
    return line;
}

}  // namespace app
