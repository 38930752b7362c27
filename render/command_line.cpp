// Parses the command line with CLI11.
#include "render/command_line.h"

#include <algorithm>
#include <cstring>
#include <tuple>

#include <CLI/CLI.hpp>

#include "host/error.h"
#include "host/option_values.h"
#include "platform/product.h"

namespace render {
namespace {

constexpr double kUsualLoudness = -16.0;  // LUFS
constexpr double kUsualPeak = -1.0;       // dBFS

// The options as typed.
struct Typed {
    std::vector<std::string> files;
    std::optional<std::string> rate, block, bits, gain, tail, format, normalize;
    std::vector<std::string> settings;
    host::SongOptions song;
};

SampleFormat formatOf(const std::string& bits) {
    if (bits == "16") return SampleFormat::kInt16;
    if (bits == "24") return SampleFormat::kInt24;
    if (bits == "32f") return SampleFormat::kFloat32;
    throw host::UsageError("--bits: " + bits + " is none of 16, 24 and 32f");
}

Container containerOf(const std::string& format) {
    if (format == "wav") return Container::kWav;
    if (format == "flac") return Container::kFlac;
    if (format == "ogg") return Container::kOgg;
    if (format == "opus") return Container::kOpus;
    throw host::UsageError("--format: " + format + " is none of wav, flac, ogg and opus");
}

bool isOpusRate(int rate) {
    return rate == 8000 || rate == 12000 || rate == 16000 || rate == 24000 || rate == 48000;
}

// "LUFS" and "PEAK", with a level in front or without.
Normalization normalizationOf(const std::string& text) {
    for (const auto& [unit, of, usual] :
         {std::tuple("LUFS", Normalization::Of::kLoudness, kUsualLoudness),
          std::tuple("PEAK", Normalization::Of::kPeak, kUsualPeak)}) {
        const std::size_t length = text.size() - std::min(text.size(), std::strlen(unit));
        if (text.substr(length) != unit) continue;
        if (length == 0) return {of, usual};
        return {of, host::readDouble("--normalize", text.substr(0, length), -60.0, 0.0)};
    }
    throw host::UsageError("--normalize: " + text + " does not end in LUFS or PEAK");
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
    app.add_option(
           "SONG.mid OUT.wav", typed.files,
           "Standard MIDI file of type 0 or 1, and the file to write; with --to, any number "
           "of songs")
        ->type_name("");
    app.add_option("--to", line.folder,
                   "Write into this folder, under the songs' names; several songs at once")
        ->type_name("FOLDER");
    app.add_option("--plugin", line.plugin,
                   "VST 2.4 instrument (default: QuarzelStrings.so beside this program)")
        ->type_name("FILE");
    app.add_option("--rate", typed.rate, "Sample rate, 8000 to 768000 (default: 44100)")
        ->type_name("HZ");
    app.add_option("--block", typed.block, "Frames a block, 1 to 65536 (default: 512)")
        ->type_name("FRAMES");
    app.add_option("--bits", typed.bits, "Sample format: 16, 24 or 32f (default: 24)")
        ->type_name("FORMAT");
    app.add_option("--format", typed.format,
                   "Container: wav, flac, ogg or opus (default: by the name of the file, else wav)")
        ->type_name("NAME");
    app.add_flag("--stem", line.hasStems,
                 "Write a file for each section that is on, with its name; leaves out the program "
                 "changes of songs");
    app.add_option(
           "--normalize", typed.normalize,
           "Bring each file to a loudness (LUFS, -16LUFS, ...) or a peak (PEAK, -3PEAK, ...)")
        ->type_name("LEVEL");
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
    if (typed.normalize && typed.gain) {
        throw host::UsageError("--gain has no effect with --normalize");
    }
    if (typed.normalize) line.normalization = normalizationOf(*typed.normalize);
    if (typed.gain) line.render.gainDb = host::readDouble("--gain", *typed.gain, -60.0, 60.0);
    if (typed.tail) line.render.tailSeconds = host::readDouble("--tail", *typed.tail, 0.0, 600.0);
    line.selection = typed.song.selection();
    // A program would bring the other sections back.
    if (line.hasStems) line.selection.programs = false;
    for (const auto& text : typed.settings) line.settings.push_back(settingOf(text));
}

// FLAC has no floating-point samples, Vorbis and Opus no sample format at all.
void readFormat(const Typed& typed, CommandLine& line) {
    if (typed.bits) line.format = formatOf(*typed.bits);
    const std::size_t dot = line.output.rfind('.');
    const std::string extension = dot == std::string::npos ? "" : line.output.substr(dot + 1);
    if (typed.format) {
        line.container = containerOf(*typed.format);
    } else if (extension == "flac" || extension == "ogg" || extension == "opus") {
        line.container = containerOf(extension);
    }
    if (isLossy(line.container) && typed.bits)
        throw host::UsageError("--bits: an Ogg file has no sample format");
    if (line.container == Container::kOpus && !isOpusRate(line.sampleRate))
        throw host::UsageError("--rate: an Opus file has 8000, 12000, 16000, 24000 or 48000 Hz");
    if (line.container == Container::kFlac && line.format == SampleFormat::kFloat32)
        throw host::UsageError("--bits: a FLAC file holds 16 or 24 bits");
}

void readFiles(const Typed& typed, CommandLine& line) {
    if (line.list && !typed.files.empty()) throw host::UsageError("--list takes no files");
    for (const auto& file : typed.files) {
        if (file.empty()) throw host::UsageError("a file needs a name");
    }
    const bool hasOtherWork = line.list || line.savedBank || line.savedPreset;
    if (typed.files.empty() && line.folder.empty() && hasOtherWork) return;
    line.songs = typed.files;
    if (!line.folder.empty()) {
        if (line.songs.empty()) throw host::UsageError("SONG.mid is needed");
        return;
    }
    if (line.songs.size() != 2) throw host::UsageError("SONG.mid and OUT.wav are needed");
    line.output = line.songs.back();
    line.songs.pop_back();
}

}  // namespace

CommandLine parseCommandLine(int argc, const char* const* argv) {
    CommandLine line;
    Typed typed;
    CLI::App app("Renders MIDI files through a VST 2.4 instrument into sound files.",
                 "quarzel-render");
    declare(app, line, typed);
    line.answer = host::parseWords(app, argc, argv);
    if (!line.answer.empty()) return line;
    readFiles(typed, line);
    readTyped(typed, line);
    readFormat(typed, line);
    return line;
}

}  // namespace render
