// The options of quarzel-render.
#include "render/command_line.h"

#include <algorithm>
#include <cstring>
#include <tuple>

#include "host/error.h"
#include "host/instrument_names.h"
#include "host/option_parser.h"
#include "host/song_options.h"

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
        if (of == Normalization::Of::kLoudness && !canMeasureLoudness())
            throw host::UsageError("--normalize: this build measures no loudness, only PEAK");
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

void declare(host::OptionParser& parser, CommandLine& line, Typed& typed) {
    parser.addArguments(
        "SONG.mid OUT.wav", typed.files,
        "Standard MIDI file of type 0 or 1, and the file to write; with --to, any number of songs");
    parser.addText("--to", line.folder, "FOLDER",
                   "Write into this folder, under the songs' names; several songs at once");
    parser.addText(
        "--plugin", line.plugin, "FILE",
        "VST 2.4 instrument (default: " + host::instrumentFile() + " beside this program)");
    parser.addText("--rate", typed.rate, "HZ", "Sample rate, 8000 to 768000 (default: 44100)");
    parser.addText("--block", typed.block, "FRAMES", "Frames a block, 1 to 65536 (default: 512)");
    parser.addText("--bits", typed.bits, "FORMAT", "Sample format: 16, 24 or 32f (default: 24)");
    parser.addText(
        "--format", typed.format, "NAME",
        canCompress()
            ? "Container: wav, flac, ogg or opus (default: by the name of the file, else wav)"
            : "Container: wav, the only one of this build");
    parser.addFlag("--stem", line.hasStems,
                   "Write a file for each section that is on, with its name; leaves out the "
                   "program changes of songs");
    parser.addText("--normalize", typed.normalize, "LEVEL",
                   canMeasureLoudness()
                       ? "Bring each file to a loudness (LUFS, -16LUFS, ...) or a peak (PEAK, "
                         "-3PEAK, ...)"
                       : "Bring each file to a peak (PEAK, -3PEAK, ...)");
    parser.addText("--gain", typed.gain, "DB", "Gain, -60 to 60 (default: 0)");
    parser.addText("--bank", line.bank, "FILE.fxb", "Load a bank before all else");
    parser.addText("--program", line.program, "N|NAME", "Program to play, after --bank");
    parser.addText("--preset", line.preset, "FILE.fxp",
                   "Load a preset into that program, after --program");
    parser.addTexts("--set", typed.settings, "NAME|INDEX=VALUE",
                    "Set a parameter, 0 to 1, after --preset; repeatable; the second of two equal "
                    "names is NAME#2");
    parser.addText("--save-bank", line.savedBank, "FILE.fxb",
                   "Save the bank with all of that applied, before the song is played; needs no "
                   "song");
    parser.addText("--save-preset", line.savedPreset, "FILE.fxp",
                   "Save the current program, likewise");
    parser.addText("--tail", typed.tail, "SECONDS",
                   "Length after the song, 0 to 600 (default: until silent, at most 30)");
    typed.song.declare(parser);
    parser.addFlag("--list", line.list, "Print programs and parameters with their values");
    parser.addFlag("--quiet", line.quiet, "Print nothing but errors");
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
    if (line.container != Container::kWav && !canCompress())
        throw host::UsageError("--format: this build writes wav alone");
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
    host::OptionParser parser("quarzel-render",
                              "Renders MIDI files through a VST 2.4 instrument into sound files.");
    declare(parser, line, typed);
    line.answer = parser.parse(argc, argv);
    if (!line.answer.empty()) return line;
    readFiles(typed, line);
    readTyped(typed, line);
    readFormat(typed, line);
    return line;
}

}  // namespace render
