// Parses the command line with CLI11.
#include "app/command_line.h"

#include <algorithm>

#include <CLI/CLI.hpp>

#include "app/midi_inputs.h"
#include "host/error.h"
#include "host/option_values.h"
#include "platform/product.h"

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

void declare(CLI::App& app, CommandLine& line, Typed& typed) {
    app.set_version_flag("--version", std::string("quarzel ") + platform::productVersion(),
                         "Print the version and leave");
    app.add_option("SONG.mid", line.song, "Standard MIDI file to play")->type_name("");
    app.add_option("--plugin", line.plugin,
                   "VST 2.4 instrument (default: QuarzelStrings.so beside this program, else in "
                   "../lib/vst)")
        ->type_name("FILE");
    app.add_option("--bank", line.bank, "Load a bank in place of the one of the last run")
        ->type_name("FILE.fxb");
    app.add_option("--program", line.program, "Program to begin with")->type_name("N|NAME");
    app.add_flag("--factory", line.isFactoryFresh,
                 "Begin with the factory bank; the one of the last run is put aside");
    typed.song.declare(app);
    app.add_option("--api", line.audio.api, "Audio through: " + joined(audioApis()))
        ->type_name("NAME");
    app.add_option("--device", line.audio.device, "Audio output, or a part of its name")
        ->type_name("NAME");
    app.add_option("--rate", typed.rate, "Sample rate, 8000 to 768000 (default: the device's)")
        ->type_name("HZ");
    app.add_option("--block", typed.block, "Frames a block, 16 to 8192 (default: 256)")
        ->type_name("FRAMES");
    app.add_option("--midi-api", line.midiApi, "MIDI through: " + joined(midiApis()))
        ->type_name("NAME");
    app.add_option("--midi-port", line.midiPort,
                   "Listen to the ports with this in their names only (default: all)")
        ->type_name("NAME");
    app.add_flag("--no-ceiling", typed.noCeiling,
                 "Let sound above full scale clip instead of turning it down");
    app.add_flag("--list-devices", line.listsDevices, "Print audio outputs and MIDI ports");
    app.add_flag("--no-window", typed.noWindow,
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
    CLI::App app(
        "Plays the string-ensemble synthesizer from MIDI ports, the computer keyboard and files.",
        "quarzel");
    declare(app, line, typed);
    line.answer = host::parseWords(app, argc, argv);
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
