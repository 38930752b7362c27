// Executes a command line: lists an instrument or renders a song, and reports.
#include "render/program.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>
#include <vector>

#include "render/command_line.h"
#include "host/error.h"
#include "host/files.h"
#include "host/instrument_names.h"
#include "host/numbers.h"
#include "host/patches.h"
#include "render/progress_bar.h"
#include "host/song_playback.h"

namespace render {
namespace {

void applySettings(const CommandLine& line, host::PluginHost& host) {
    if (line.bank) host::loadBank(host, *line.bank);
    if (line.program) {
        host.setProgram(host::indexOf(*line.program, host::distinctProgramNames(host), "program"));
    }
    if (line.preset) host::loadPreset(host, *line.preset);
    if (line.settings.empty()) return;
    const auto names = host::distinctParameterNames(host);
    for (const auto& setting : line.settings) {
        host.setParameter(host::indexOf(setting.parameter, names, "parameter"), setting.value);
    }
}

std::string padded(const std::string& text, std::size_t width) {
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

std::string indexText(std::size_t index) {
    const std::string digits = std::to_string(index);
    return std::string(digits.size() < 5 ? 5 - digits.size() : 0, ' ') + digits;
}

void list(host::PluginHost& host, std::ostream& out) {
    const int current = host.program();
    out << host.name() << "\n\nPrograms (* is playing):\n";
    const auto programs = host::distinctProgramNames(host);
    for (std::size_t i = 0; i < programs.size(); ++i) {
        const bool isCurrent = static_cast<int>(i) == current;
        out << indexText(i) << (isCurrent ? " * " : "   ") << programs[i] << '\n';
    }
    out << "\nParameters:\n";
    const auto parameters = host::distinctParameterNames(host);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const int index = static_cast<int>(i);
        out << indexText(i) << "   " << padded(parameters[i], 20) << "  "
            << host::fixedText(host.parameter(index), 6) << "  " << host.parameterDisplay(index)
            << '\n';
    }
}

std::string dbfs(double level) {
    return level > 0.0 ? host::fixedText(20.0 * std::log10(level), 2) + " dBFS" : "-inf dBFS";
}

void report(const CommandLine& line, const RenderStatistics& statistics, double secondsTaken,
            std::ostream& out) {
    const double length = static_cast<double>(statistics.frames) / line.sampleRate;
    out << line.output << '\n'
        << "  length    " << host::fixedText(length, 3) << " s\n"
        << "  peak      " << dbfs(statistics.peak) << '\n'
        << "  RMS       " << dbfs(statistics.rms) << '\n';
    if (statistics.clippedSamples > 0) {
        out << "  clipped   " << std::to_string(statistics.clippedSamples) << " samples\n";
    }
    if (statistics.nonFiniteSamples > 0) {
        out << "  silenced  " << std::to_string(statistics.nonFiniteSamples)
            << " samples that were no number\n";
    }
    out << "  took      " << host::fixedText(secondsTaken, 3) << " s, "
        << host::fixedText(length / std::max(secondsTaken, 1e-6), 1) << " times real time\n";
}

void renderFile(const CommandLine& line, host::PluginHost& host, const host::MidiSong& song,
                const Surroundings& surroundings) {
    const auto begin = std::chrono::steady_clock::now();
    WavWriter writer(line.output,
                     {line.sampleRate, channelsOf(host), line.format,
                      host::maxFramesOf(song, line.sampleRate, line.render.tailSeconds)});
    RenderStatistics statistics;
    {
        ProgressBar bar(surroundings.err, surroundings.errIsTerminal && !line.quiet);
        statistics = renderSong(song, host, writer, line.render, [&](double done) {
            bar.update(done);
            return !surroundings.interrupted;
        });
    }
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    if (!line.quiet) report(line, statistics, taken.count(), surroundings.out);
}

// An output file must not be the song, the instrument or another output file.
void checkWrittenFiles(const CommandLine& line) {
    const std::string instrument = host::instrumentPath(line.plugin);
    std::vector<std::string> written;
    const auto check = [&](const std::string& path) {
        const bool isSong = !line.song.empty() && host::isSameFile(path, line.song);
        if (isSong) throw host::Error(path + " is the song itself.");
        if (host::isSameFile(path, instrument))
            throw host::Error(path + " is the instrument itself.");
        for (const auto& other : written) {
            if (host::isSameFile(path, other)) throw host::Error(path + " would be written twice.");
        }
        written.push_back(path);
    };
    if (!line.output.empty()) check(line.output);
    if (line.savedBank) check(*line.savedBank);
    if (line.savedPreset) check(*line.savedPreset);
}

void saveState(const CommandLine& line, host::PluginHost& host, std::ostream& out) {
    std::string saved;
    if (line.savedBank) {
        host::saveBank(host, *line.savedBank);
        saved += *line.savedBank + "\n  bank      " + std::to_string(host.programCount()) +
                 " programs\n";
    }
    if (line.savedPreset) {
        host::savePreset(host, *line.savedPreset);
        saved += *line.savedPreset + "\n  preset    " + host.programName(host.program()) + '\n';
    }
    if (!line.quiet) out << saved;
}

void carryOut(const CommandLine& line, const Surroundings& surroundings) {
    if (!line.answer.empty()) {
        surroundings.out << line.answer;
        return;
    }
    checkWrittenFiles(line);
    const bool renders = !line.song.empty();
    host::MidiSong song = {};
    if (renders) {
        song = host::readMidiSong(line.song);
        host::keep(song, line.selection);
    }
    host::PluginHost host(host::instrumentPath(line.plugin), line.sampleRate, line.blockSize);
    applySettings(line, host);
    saveState(line, host, surroundings.out);
    if (line.list) list(host, surroundings.out);
    if (renders) renderFile(line, host, song, surroundings);
}

}  // namespace

int run(int argc, const char* const* argv, const Surroundings& surroundings) {
    return host::exitCodeOf("quarzel-render", surroundings.err,
                            [&] { carryOut(parseCommandLine(argc, argv), surroundings); });
}

}  // namespace render
