// Measures the sounds of a bank's source, and settles their levels in it.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "banks/bank_source.h"
#include "banks/sound_check.h"
#include "host/midi_song.h"
#include "host/song_selection.h"
#include "platform/folders.h"

namespace {

constexpr const char* kUsage =
    "Usage: measure_bank [--settle] SOURCE [PROGRAM...]\n"
    "       measure_bank --song SONG.mid SOURCE [PROGRAM...]\n"
    "--settle first writes the levels and volumes of the programs (all when none is named) to the\n"
    "source. --song plays at most a minute of a song with each program, without the drums on\n"
    "channel 10, and compares the families of eight programs.\n"
    "The exit status is 1 if a sound is out of its bounds or two are alike.\n";

template <typename Work>
void onTwoThreads(int count, Work work) {
    std::atomic<int> next{0};
    const auto worker = [&] {
        for (int i = next++; i < count; i = next++) work(i);
    };
    std::thread second(worker);
    worker();
    second.join();
}

// Writes a value over the one that a program's text states for a parameter.
void state(std::string& text, std::size_t program, const std::string& name, float value) {
    const std::size_t end = text.find("\nprogram ", program + 1);
    char number[16];
    std::snprintf(number, sizeof number, "%.3f", value);
    std::string digits = number;
    digits.erase(digits.find_last_not_of('0') + 1);
    if (digits.back() == '.') digits.pop_back();
    for (const char* before : {" ", "\n"}) {
        const std::size_t at = text.find(before + name + ' ', text.find('\n', program + 1));
        if (at >= end) continue;
        const std::size_t from = at + name.size() + 2;
        text.replace(from, text.find_first_of(",\n", from) - from, digits);
        return;
    }
}

void writeSettled(std::string& text, const state::Bank& bank, int count) {
    std::size_t at = text.find("\nprogram ");
    for (int program = 0; program < count; ++program) {
        state(text, at, "Volume", bank.value(program, state::kVolume));
        for (const auto& [level, onOff] : banks::kLevels) {
            if (bank.value(program, onOff) <= 0.5f) continue;
            state(text, at, state::parameter(level).name, bank.value(program, level));
        }
        at = text.find("\nprogram ", at + 1);
    }
}

void printFigures(const state::Bank& bank, const std::vector<int>& programs,
                  const std::vector<banks::Figures>& figures) {
    std::printf(
        "%-28s   note  chord passage hiss   full keys step   low touch before late   rest lean "
        "edge volume\n",
        "");
    for (std::size_t i = 0; i < programs.size(); ++i) {
        const banks::Figures& f = figures[i];
        std::printf(
            "%3d %-24s %6.1f %6.1f %6.1f %5.1f %6.1f %4.1f %4.1f %5.1f %5.1f %5.1f %5.1f %6.1f "
            "%4.1f %4.1f %6.3f",
            programs[i], bank.programName(programs[i]).c_str(), f.note, f.chord, f.passage, f.hiss,
            f.full, f.keys, f.steepest, f.low, f.touch, f.before, f.late, f.rest, f.lean, f.edge.db,
            bank.value(programs[i], state::kVolume));
        for (const std::string& fault : banks::faults(f)) std::printf("  %s;", fault.c_str());
        std::printf("\n");
    }
}

// Returns the number of pairs that are too near.
std::size_t printNearest(const state::Bank& bank, const std::vector<int>& programs,
                         const std::vector<banks::Picture>& pictures) {
    struct Pair {
        double distance;
        int a, b;
    };
    std::vector<Pair> pairs;
    for (std::size_t b = 0; b < programs.size(); ++b) {
        for (std::size_t a = 0; a < b; ++a) {
            pairs.push_back(
                {banks::distanceDb(pictures[a], pictures[b]), programs[a], programs[b]});
        }
    }
    std::sort(pairs.begin(), pairs.end(),
              [](const Pair& a, const Pair& b) { return a.distance < b.distance; });
    std::size_t close = 0;
    while (close < pairs.size() && pairs[close].distance < banks::kLeastDistance) ++close;
    std::printf("%zu pairs nearer than %.1f dB\n", close, banks::kLeastDistance);
    for (std::size_t i = 0; i < std::min(std::max<std::size_t>(20, close), pairs.size()); ++i) {
        std::printf("%5.2f dB  %d %s / %d %s\n", pairs[i].distance, pairs[i].a,
                    bank.programName(pairs[i].a).c_str(), pairs[i].b,
                    bank.programName(pairs[i].b).c_str());
    }
    return close;
}

std::vector<banks::Note> notesOf(const host::MidiSong& song, double seconds) {
    std::vector<banks::Note> notes;
    for (const host::SongEvent& event : song.events) {
        const double time = static_cast<double>(event.time) / song.unitsPerSecond;
        const auto [status, key, velocity] = event.message;
        const int kind = status & 0xF0;
        if (time >= seconds || (kind != 0x80 && kind != 0x90)) continue;
        if (kind == 0x90 && velocity > 0) {
            notes.push_back({time, seconds, key, velocity});
            continue;
        }
        const auto held = std::find_if(notes.rbegin(), notes.rend(), [&](const banks::Note& note) {
            return note.key == key && note.off == seconds;
        });
        if (held != notes.rend()) held->off = time;
    }
    return notes;
}

struct Played {
    int program;
    double loudness, peak;
};

// A family is as loud as its sounds are on average.
void printFamilies(std::vector<Played> played) {
    constexpr int kFamilySize = 8;
    std::printf("\nfamily        mean  softest         loudest         peak\n");
    double softest = 0.0, loudest = -200.0;
    for (auto first = played.begin(); first != played.end();) {
        const int family = first->program / kFamilySize;
        const auto end = std::stable_partition(first, played.end(), [family](const Played& p) {
            return p.program / kFamilySize == family;
        });
        const auto softer = [](const Played& a, const Played& b) {
            return a.loudness < b.loudness;
        };
        const auto [low, high] = std::minmax_element(first, end, softer);
        double mean = 0.0, peak = -200.0;
        for (auto p = first; p != end; ++p) {
            mean += p->loudness / static_cast<double>(end - first);
            peak = std::max(peak, p->peak);
        }
        softest = std::min(softest, mean);
        loudest = std::max(loudest, mean);
        std::printf("%3d to %3d  %7.1f  %7.1f (%3d)  %7.1f (%3d)  %7.1f\n", family * kFamilySize,
                    (family + 1) * kFamilySize - 1, mean, low->loudness, low->program,
                    high->loudness, high->program, peak);
        first = end;
    }
    const auto highest =
        std::max_element(played.begin(), played.end(),
                         [](const Played& a, const Played& b) { return a.peak < b.peak; });
    std::printf("families within %.1f dB, highest peak %.1f dB (%d)\n", loudest - softest,
                highest->peak, highest->program);
}

void printSong(const state::Bank& bank, const std::vector<int>& programs, const char* path) {
    host::MidiSong song = host::readMidiSong(path);
    host::keep(song, {});
    const double seconds = std::min(60.0, static_cast<double>(song.endTime) / song.unitsPerSecond);
    const std::vector<banks::Note> notes = notesOf(song, seconds);
    std::vector<Played> played(programs.size());
    onTwoThreads(static_cast<int>(programs.size()), [&](int i) {
        const auto instrument = banks::instrumentWith(bank);
        banks::choose(*instrument, programs[i]);
        const banks::Take take = banks::play(*instrument, notes, seconds);
        played[i] = {programs[i], banks::integratedLoudness(take), banks::peakDb(take)};
    });
    for (const Played& p : played) {
        std::printf("%3d %-24s %6.1f LUFS, peak %6.1f dB\n", p.program,
                    bank.programName(p.program).c_str(), p.loudness, p.peak);
    }
    printFamilies(played);
}

int run(int argc, char** argv) {
    const bool settles = argc > 1 && std::strcmp(argv[1], "--settle") == 0;
    const char* const song = argc > 2 && std::strcmp(argv[1], "--song") == 0 ? argv[2] : nullptr;
    const int first = song ? 3 : settles ? 2 : 1;
    if (argc <= first) {
        std::fputs(kUsage, stderr);
        return 2;
    }
    // Instruments load and save a controller map: none of the user's.
    const auto folder = std::filesystem::temp_directory_path() / "measure_bank";
    std::filesystem::create_directories(folder);
    const platform::ScopedFolders folders(folder.string() + '/', folder.string());
    std::stringstream read;
    read << std::ifstream(argv[first]).rdbuf();
    std::string text = read.str();
    banks::BankSource source = banks::parseBankSource(text);
    std::vector<int> programs;
    for (int i = first + 1; i < argc; ++i) programs.push_back(std::stoi(argv[i]));
    if (programs.empty()) {
        for (int i = 0; i < source.programs; ++i) programs.push_back(i);
    }
    const int count = static_cast<int>(programs.size());

    if (song) {
        printSong(source.bank, programs, song);
        return 0;
    }
    if (settles) {
        const state::Bank before = source.bank;
        std::vector<state::Bank> settled(count, before);
        onTwoThreads(count, [&](int i) { banks::settle(settled[i], programs[i]); });
        for (int i = 0; i < count; ++i) {
            for (int index = 0; index < state::kNumParams; ++index) {
                source.bank.setValue(programs[i], index, settled[i].value(programs[i], index));
            }
        }
        writeSettled(text, source.bank, source.programs);
        std::ofstream(argv[first]) << text;
    }

    std::vector<banks::Figures> figures(count);
    std::vector<banks::Picture> pictures(count);
    onTwoThreads(count, [&](int i) {
        figures[i] = banks::measure(source.bank, programs[i]);
        pictures[i] = banks::phrasePicture(source.bank, programs[i]);
    });
    printFigures(source.bank, programs, figures);
    const bool apart = printNearest(source.bank, programs, pictures) == 0;
    const bool bounded = std::all_of(figures.begin(), figures.end(), [](const auto& figure) {
        return banks::faults(figure).empty();
    });
    return apart && bounded ? 0 : 1;
}

}  // namespace

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "measure_bank: %s\n", error.what());
        return 1;
    }
}
