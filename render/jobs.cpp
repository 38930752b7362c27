// A job has an instance of the instrument to itself.
#include "render/jobs.h"

#include <algorithm>
#include <chrono>
#include <cmath>
#include <filesystem>
#include <mutex>
#include <thread>

#include "host/error.h"
#include "host/instrument_names.h"
#include "host/numbers.h"
#include "host/patches.h"
#include "host/song_playback.h"
#include "platform/path_text.h"
#include "render/normalization.h"
#include "render/progress_bar.h"

namespace render {
namespace {

namespace fs = std::filesystem;

constexpr const char* kSwitchSuffix = "#2";

const char* extensionOf(Container container) {
    switch (container) {
        case Container::kFlac:
            return ".flac";
        case Container::kOgg:
            return ".ogg";
        case Container::kOpus:
            return ".opus";
        case Container::kWav:
            break;
    }
    return ".wav";
}

// Sections have a level and a switch of the same name. Gives those that are switched on.
std::vector<std::string> soundingSections(const host::PluginHost& host) {
    const auto names = host::distinctParameterNames(host);
    std::vector<std::string> sections;
    for (const auto& name : names) {
        const auto at = std::find(names.begin(), names.end(), name + kSwitchSuffix);
        if (at == names.end()) continue;
        const auto index = static_cast<int>(at - names.begin());
        if (host.parameter(index) > 0.5f) sections.push_back(name);
    }
    return sections;
}

void switchOffAllBut(const std::string& section, host::PluginHost& host) {
    const auto names = host::distinctParameterNames(host);
    for (const auto& other : soundingSections(host)) {
        if (other == section) continue;
        host.setParameter(host::indexOf(other + kSwitchSuffix, names, "parameter"), 0.0f);
    }
}

std::string withSection(const std::string& output, const std::string& section) {
    const fs::path path = platform::systemPath(output);
    const auto name = path.stem() += platform::systemPath(" - " + section);
    return platform::pathText(path.parent_path() / (fs::path(name) += path.extension()));
}

std::string dbfs(double level) {
    return level > 0.0 ? host::fixedText(20.0 * std::log10(level), 2) + " dBFS" : "-inf dBFS";
}

struct Outcome {
    RenderStatistics statistics;
    double gainDb = 0.0;  // of the normalization
    int64_t clippedSamples = 0;
    double seconds = 0.0;  // that it took
};

std::string reportOf(const Job& job, const CommandLine& line, const Outcome& outcome) {
    const Levels& levels = outcome.statistics.levels;
    const double gain = std::pow(10.0, outcome.gainDb / 20.0);
    const double length = static_cast<double>(outcome.statistics.frames) / line.sampleRate;
    std::string text = job.output + "\n  length    " + host::fixedText(length, 3) +
                       " s\n  peak      " + dbfs(levels.peak * gain) + "\n  RMS       " +
                       dbfs(levels.rms * gain) + '\n';
    if (levels.loudness) {
        const double loudness = *levels.loudness + outcome.gainDb;
        text += "  loudness  " + (std::isfinite(loudness) ? host::fixedText(loudness, 1) : "-inf") +
                " LUFS\n";
    }
    if (line.normalization) {
        text += "  gain      " + host::fixedText(outcome.gainDb, 2) + " dB\n";
    }
    if (outcome.clippedSamples > 0) {
        text += "  clipped   " + std::to_string(outcome.clippedSamples) +
                " samples; --normalize PEAK avoids that\n";
    }
    if (levels.nonFiniteSamples > 0) {
        text += "  silenced  " + std::to_string(levels.nonFiniteSamples) +
                " samples that were no number\n";
    }
    return text + "  took      " + host::fixedText(outcome.seconds, 3) + " s, " +
           host::fixedText(length / std::max(outcome.seconds, 1e-6), 1) + " times real time\n";
}

Outcome render(const Job& job, const CommandLine& line, const Progress& progress) {
    const auto begin = std::chrono::steady_clock::now();
    host::PluginHost host(host::instrumentPath(line.plugin), line.sampleRate, line.blockSize);
    applySettings(line, host);
    if (job.section) switchOffAllBut(*job.section, host);

    const int channels = channelsOf(host);
    SoundWriter writer(job.output,
                       {line.sampleRate, channels, line.format, line.container,
                        host::maxFramesOf(*job.song, line.sampleRate, line.render.tailSeconds)});
    Outcome outcome;
    if (line.normalization) {
        RawTake take(job.output, channels);
        outcome.statistics = renderSong(*job.song, host, take, line.render, progress);
        outcome.gainDb = normalizingGain(*line.normalization, outcome.statistics.levels);
        take.playBack(outcome.gainDb, writer);
    } else {
        outcome.statistics = renderSong(*job.song, host, writer, line.render, progress);
    }
    writer.commit();
    outcome.clippedSamples = writer.clippedSamples();
    const std::chrono::duration<double> taken = std::chrono::steady_clock::now() - begin;
    outcome.seconds = taken.count();
    return outcome;
}

// Hands out jobs to threads, and collects what they report.
class Workshop {
  public:
    Workshop(const std::vector<Job>& jobs, const CommandLine& line,
             const Surroundings& surroundings)
        : jobs_(jobs),
          line_(line),
          surroundings_(surroundings),
          bar_(surroundings.err, surroundings.errIsTerminal && !line.quiet),
          done_(jobs.size()),
          reports_(jobs.size()) {}

    void work() {
        for (std::size_t index = next_++; index < jobs_.size(); index = next_++) workOn(index);
    }

    const std::vector<std::string>& reports() const { return reports_; }
    const std::string& errors() const { return errors_; }

  private:
    void workOn(std::size_t index) {
        try {
            const Outcome outcome =
                render(jobs_[index], line_, [&](double done) { return goOn(index, done); });
            reports_[index] = reportOf(jobs_[index], line_, outcome);
        } catch (const std::exception& error) {  // nothing may leave a thread
            const std::lock_guard<std::mutex> lock(mutex_);
            const std::string reason = error.what();
            if (errors_.find(reason) != std::string::npos) return;  // an interruption ends them all
            errors_ += (errors_.empty() ? "" : " ") + reason;
        }
    }

    bool goOn(std::size_t index, double done) {
        const std::lock_guard<std::mutex> lock(mutex_);
        done_[index] = done;
        double sum = 0.0;
        for (const double share : done_) sum += share;
        bar_.update(sum / static_cast<double>(done_.size()));
        return !surroundings_.interrupted;
    }

    const std::vector<Job>& jobs_;
    const CommandLine& line_;
    const Surroundings& surroundings_;
    std::atomic<std::size_t> next_{0};

    std::mutex mutex_;
    ProgressBar bar_;
    std::vector<double> done_;          // shares
    std::vector<std::string> reports_;  // each written by the thread of its job
    std::string errors_;
};

}  // namespace

Songs readSongs(const CommandLine& line) {
    Songs songs;
    for (const auto& path : line.songs) {
        host::MidiSong song = host::readMidiSong(path);
        host::keep(song, line.selection);
        songs.push_back(std::make_shared<const host::MidiSong>(std::move(song)));
    }
    return songs;
}

std::vector<Job> jobsOf(const CommandLine& line, const Songs& songs, const host::PluginHost& host) {
    std::vector<Job> jobs;
    for (std::size_t i = 0; i < songs.size(); ++i) {
        const auto& song = songs[i];
        const fs::path name = platform::systemPath(line.songs[i]).stem() +=
            extensionOf(line.container);
        const std::string output =
            line.folder.empty() ? line.output
                                : platform::pathText(platform::systemPath(line.folder) / name);
        if (!line.hasStems) {
            jobs.push_back({song, output, std::nullopt});
            continue;
        }
        for (const auto& section : soundingSections(host)) {
            jobs.push_back({song, withSection(output, section), section});
        }
    }
    return jobs;
}

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

void renderAll(const std::vector<Job>& jobs, const CommandLine& line,
               const Surroundings& surroundings) {
    std::string errors;
    {
        Workshop workshop(jobs, line, surroundings);
        std::vector<std::thread> helpers;
        const std::size_t threads =
            std::min<std::size_t>(jobs.size(), std::max(1u, std::thread::hardware_concurrency()));
        for (std::size_t i = 1; i < threads; ++i) helpers.emplace_back([&] { workshop.work(); });
        workshop.work();
        for (auto& helper : helpers) helper.join();
        errors = workshop.errors();
        if (!line.quiet) {
            for (const auto& report : workshop.reports()) surroundings.out << report;
        }
    }
    if (!errors.empty()) throw host::Error(errors);
}

}  // namespace render
