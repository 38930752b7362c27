// Parses the command line with CLI11.
#include "render/command_line.h"

#include <CLI/CLI.hpp>

#include "host/error.h"
#include "host/option_values.h"
#include "platform/product.h"

namespace render {
namespace {

// The options as typed.
struct Typed {
    std::optional<std::string> rate, block, bits, gain, tail;
    std::vector<std::string> settings;
    host::SongOptions song;
};

SampleFormat formatOf(const std::string& bits) {
    if (bits == "16") return SampleFormat::kInt16;
    if (bits == "24") return SampleFormat::kInt24;
    if (bits == "32f") return SampleFormat::kFloat32;
    throw host::UsageError("--bits: " + bits + " is none of 16, 24 and 32f");
}

ParameterSetting settingOf(const std::string& text) {
    const auto equals = text.rfind('=');  // a name may contain '=', a value cannot
    if (equals == std::string::npos || equals == 0) {
        throw host::UsageError("--set: " + text + " is not NAME=VALUE or INDEX=VALUE");
    }
    const double value = host::readDouble("--set " + text, text.substr(equals + 1), 0.0, 1.0);
    return {text.substr(0, equals), static_cast<float>(value)};
}

void declare(CLI::App& app, CommandLine& line, Typed& typed) {
    app.set_version_flag("--version", std::string("quarzel-render ") + platform::productVersion(),
                         "Print the version and leave");
    app.add_option("SONG.mid", line.song, "Standard MIDI file of type 0 or 1")->type_name("");
    app.add_option("OUT.wav", line.output, "File to write")->type_name("");
    app.add_option("--plugin", line.plugin,
                   "VST 2.4 instrument (default: QuarzelStrings.so beside this program)")
        ->type_name("FILE");
    app.add_option("--rate", typed.rate, "Sample rate, 8000 to 768000 (default: 44100)")
        ->type_name("HZ");
    app.add_option("--block", typed.block, "Frames a block, 1 to 65536 (default: 512)")
        ->type_name("FRAMES");
    app.add_option("--bits", typed.bits, "Sample format: 16, 24 or 32f (default: 24)")
        ->type_name("FORMAT");
    app.add_option("--gain", typed.gain, "Gain, -60 to 60 (default: 0)")->type_name("DB");
    app.add_option("--bank", line.bank, "Load a bank before all else")->type_name("FILE.fxb");
    app.add_option("--program", line.program, "Program to play, after --bank")->type_name("N|NAME");
    app.add_option("--preset", line.preset, "Load a preset into that program, after --program")
        ->type_name("FILE.fxp");
    app.add_option("--set", typed.settings,
                   "Set a parameter, 0 to 1, after --preset; repeatable; the second of two equal "
                   "names is NAME#2")
        ->type_name("NAME|INDEX=VALUE")
        ->allow_extra_args(false);
    app.add_option(
           "--save-bank", line.savedBank,
           "Save the bank with all of that applied, before the song is played; needs no song")
        ->type_name("FILE.fxb");
    app.add_option("--save-preset", line.savedPreset, "Save the current program, likewise")
        ->type_name("FILE.fxp");
    app.add_option("--tail", typed.tail,
                   "Length after the song, 0 to 600 (default: until silent, at most 30)")
        ->type_name("SECONDS");
    typed.song.declare(app);
    app.add_flag("--list", line.list, "Print programs and parameters with their values");
    app.add_flag("--quiet", line.quiet, "Print nothing but errors");
}

void readTyped(const Typed& typed, CommandLine& line) {
    if (typed.rate) line.sampleRate = host::readInteger("--rate", *typed.rate, 8000, 768000);
    if (typed.block) line.blockSize = host::readInteger("--block", *typed.block, 1, 65536);
    if (typed.bits) line.format = formatOf(*typed.bits);
    if (typed.gain) line.render.gainDb = host::readDouble("--gain", *typed.gain, -60.0, 60.0);
    if (typed.tail) line.render.tailSeconds = host::readDouble("--tail", *typed.tail, 0.0, 600.0);
    line.selection = typed.song.selection();
    for (const auto& text : typed.settings) line.settings.push_back(settingOf(text));
}

void checkFiles(const CommandLine& line) {
    if (line.list && !line.song.empty()) throw host::UsageError("--list takes no files");
    const bool hasOtherWork = line.list || line.savedBank || line.savedPreset;
    if (hasOtherWork && line.song.empty() && line.output.empty()) return;
    if (line.song.empty() || line.output.empty()) {
        throw host::UsageError("SONG.mid and OUT.wav are needed");
    }
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    Typed typed;
    CLI::App app("Renders a MIDI file through a VST 2.4 instrument into a WAV file.",
                 "quarzel-render");
    declare(app, line, typed);
    line.answer = host::parseWords(app, argc, argv);
    if (!line.answer.empty()) return line;
    readTyped(typed, line);
    checkFiles(line);
    return line;
}

}  // namespace render
