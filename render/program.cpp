// Executes a command line: lists an instrument, saves its state, renders songs.
#include "render/program.h"

#include <string>
#include <vector>

#include "render/command_line.h"
#include "host/error.h"
#include "host/files.h"
#include "host/instrument_names.h"
#include "host/numbers.h"
#include "host/patches.h"
#include "render/jobs.h"

namespace render {
namespace {

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

// An output file must not be a song, the instrument or another output file.
void checkWrittenFiles(const CommandLine& line, const std::vector<Job>& jobs) {
    const std::string instrument = host::instrumentPath(line.plugin);
    std::vector<std::string> written;
    const auto check = [&](const std::string& path) {
        for (const auto& song : line.songs) {
            if (host::isSameFile(path, song)) throw host::Error(path + " is the song itself.");
        }
        if (host::isSameFile(path, instrument))
            throw host::Error(path + " is the instrument itself.");
        for (const auto& other : written) {
            if (host::isSameFile(path, other)) throw host::Error(path + " would be written twice.");
        }
        written.push_back(path);
    };
    for (const Job& job : jobs) check(job.output);
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
    const Songs songs = readSongs(line);
    host::PluginHost host(host::instrumentPath(line.plugin), line.sampleRate, line.blockSize);
    applySettings(line, host);
    const std::vector<Job> jobs = jobsOf(line, songs, host);
    checkWrittenFiles(line, jobs);
    saveState(line, host, surroundings.out);
    if (line.list) list(host, surroundings.out);
    if (!jobs.empty()) renderAll(jobs, line, surroundings);
}

}  // namespace

int run(int argc, const char* const* argv, const Surroundings& surroundings) {
    return host::exitCodeOf("quarzel-render", surroundings.err,
                            [&] { carryOut(parseCommandLine(argc, argv), surroundings); });
}

}  // namespace render
