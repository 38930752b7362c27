// Carries out a command line: lists an instrument or renders a song, and reports.
#include "render/program.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <string>
#include <vector>

#include "render/command_line.h"
#include "render/error.h"
#include "render/files.h"
#include "render/instrument.h"
#include "render/numbers.h"
#include "render/patches.h"
#include "render/progress_bar.h"
#include "render/song_playback.h"

namespace render {
namespace {

void applySettings(const CommandLine& line, PluginHost& host) {
    if (line.bank) loadBank(host, *line.bank);
    if (line.program) {
        host.setProgram(indexOf(*line.program, distinctProgramNames(host), "program"));
    }
    if (line.preset) loadPreset(host, *line.preset);
    if (line.settings.empty()) return;
    const auto names = distinctParameterNames(host);
    for (const auto& setting : line.settings) {
        host.setParameter(indexOf(setting.parameter, names, "parameter"), setting.value);
    }
}

std::string padded(const std::string& text, std::size_t width) {
    return text.size() < width ? text + std::string(width - text.size(), ' ') : text;
}

std::string indexText(std::size_t index) {
    const std::string digits = std::to_string(index);
    return std::string(digits.size() < 5 ? 5 - digits.size() : 0, ' ') + digits;
}

void list(PluginHost& host, std::ostream& out) {
    const int current = host.program();
    out << host.name() << "\n\nPrograms (* is playing):\n";
    const auto programs = distinctProgramNames(host);
    for (std::size_t i = 0; i < programs.size(); ++i) {
        const bool isCurrent = static_cast<int>(i) == current;
        out << indexText(i) << (isCurrent ? " * " : "   ") << programs[i] << '\n';
    }
    out << "\nParameters:\n";
    const auto parameters = distinctParameterNames(host);
    for (std::size_t i = 0; i < parameters.size(); ++i) {
        const int index = static_cast<int>(i);
        out << indexText(i) << "   " << padded(parameters[i], 20) << "  "
            << fixedText(host.parameter(index), 6) << "  " << host.parameterDisplay(index) << '\n';
    }
}

std::string dbfs(double level) {
    return level > 0.0 ? fixedText(20.0 * std::log10(level), 2) + " dBFS" : "-inf dBFS";
}

void report(const CommandLine& line, const RenderStatistics& statistics, double secondsTaken,
            std::ostream& out) {
    const double length = static_cast<double>(statistics.frames) / line.sampleRate;
    out << line.output << '\n'
        << "  length    " << fixedText(length, 3) << " s\n"
        << "  peak      " << dbfs(statistics.peak) << '\n'
        << "  RMS       " << dbfs(statistics.rms) << '\n';
    if (statistics.clippedSamples > 0) {
        out << "  clipped   " << std::to_string(statistics.clippedSamples) << " samples\n";
    }
    if (statistics.nonFiniteSamples > 0) {
        out << "  silenced  " << std::to_string(statistics.nonFiniteSamples)
            << " samples that were no number\n";
    }
    out << "  took      " << fixedText(secondsTaken, 3) << " s, "
        << fixedText(length / std::max(secondsTaken, 1e-6), 1) << " times real time\n";
}

void renderFile(const CommandLine& line, PluginHost& host, const MidiSong& song,
                const Surroundings& surroundings) {
    const auto begin = std::chrono::steady_clock::now();
    WavWriter writer(line.output, {line.sampleRate, channelsOf(host), line.format,
                                   maxFramesOf(song, line.sampleRate, line.render.tailSeconds)});
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

// A file that is written must not be the song, the instrument or another written file.
void checkWrittenFiles(const CommandLine& line) {
    const std::string instrument = instrumentPath(line.plugin);
    std::vector<std::string> written;
    const auto check = [&](const std::string& path) {
        const bool isSong = !line.song.empty() && isSameFile(path, line.song);
        if (isSong) throw Error(path + " is the song itself.");
        if (isSameFile(path, instrument)) throw Error(path + " is the instrument itself.");
        for (const auto& other : written) {
            if (isSameFile(path, other)) throw Error(path + " would be written twice.");
        }
        written.push_back(path);
    };
    if (!line.output.empty()) check(line.output);
    if (line.savedBank) check(*line.savedBank);
    if (line.savedPreset) check(*line.savedPreset);
}

void saveState(const CommandLine& line, PluginHost& host, std::ostream& out) {
    std::string saved;
    if (line.savedBank) {
        saveBank(host, *line.savedBank);
        saved += *line.savedBank + "\n  bank      " + std::to_string(host.programCount()) +
                 " programs\n";
    }
    if (line.savedPreset) {
        savePreset(host, *line.savedPreset);
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
    MidiSong song = {};
    if (renders) song = readMidiSong(line.song);
    PluginHost host(instrumentPath(line.plugin), line.sampleRate, line.blockSize);
    applySettings(line, host);
    saveState(line, host, surroundings.out);
    if (line.list) list(host, surroundings.out);
    if (renders) renderFile(line, host, song, surroundings);
}

}  // namespace

int run(int argc, const char* const* argv, const Surroundings& surroundings) {
    try {
        carryOut(parseCommandLine(argc, argv), surroundings);
        return 0;
    } catch (const UsageError& error) {
        surroundings.err << "quarzel-render: " << error.what() << " (see --help)\n";
        return 2;
    } catch (const std::exception& error) {
        surroundings.err << "quarzel-render: " << error.what() << '\n';
        return 1;
    }
}

}  // namespace render
