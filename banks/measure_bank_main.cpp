// Measures the sounds of a bank's source.
#include <algorithm>
#include <atomic>
#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include "banks/bank_source.h"
#include "banks/sound_check.h"

namespace {

// Two are left to others on most machines.
template <typename Work>
void inParallel(int count, Work work) {
    std::atomic<int> next{0};
    const auto worker = [&] {
        for (int i = next++; i < count; i = next++) work(i);
    };
    std::thread second(worker);
    worker();
    second.join();
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) {
        std::fprintf(stderr, "Usage: measure_bank SOURCE [PROGRAM...]\n");
        return 2;
    }
    std::ifstream in(argv[1]);
    std::stringstream text;
    text << in.rdbuf();
    const auto source = banks::parseBankSource(text.str());
    std::vector<int> programs;
    for (int i = 2; i < argc; ++i) programs.push_back(std::stoi(argv[i]));
    const bool all = programs.empty();
    for (int i = 0; all && i < source.programs; ++i) programs.push_back(i);

    std::vector<banks::Figures> figures(programs.size());
    std::vector<banks::Picture> pictures(programs.size());
    inParallel(static_cast<int>(programs.size()), [&](int i) {
        figures[i] = banks::measure(source.bank, programs[i]);
        pictures[i] = banks::phrasePicture(source.bank, programs[i]);
    });
    std::printf("%-28s %6s %6s %5s %6s %5s %5s %5s %5s %5s %5s %5s %5s\n", "", "note", "chord",
                "hiss", "full", "keys", "steep", "low", "touch", "befor", "late", "lean", "edge");
    for (std::size_t i = 0; i < programs.size(); ++i) {
        const banks::Figures& f = figures[i];
        const auto wrong = banks::faults(f);
        std::printf("%3d %-24s %6.1f %6.1f %5.1f %6.1f %5.1f %5.1f %5.1f %5.1f %5.1f %5.1f %5.1f %5.1f %s\n",
                    programs[i], source.bank.programName(programs[i]).c_str(), f.note, f.chord,
                    f.hiss, f.full, f.keys, f.steepest, f.low, f.touch, f.before, f.late, f.lean,
                    f.edge.db, wrong.empty() ? "" : wrong.front().c_str());
    }
    struct Pair {
        double distance;
        int a, b;
    };
    std::vector<Pair> pairs;
    for (std::size_t a = 0; a < programs.size(); ++a) {
        for (std::size_t b = 0; b < a; ++b) {
            pairs.push_back({banks::distanceDb(pictures[a], pictures[b]), programs[b], programs[a]});
        }
    }
    std::sort(pairs.begin(), pairs.end(),
              [](const Pair& a, const Pair& b) { return a.distance < b.distance; });
    for (std::size_t i = 0; i < std::min<std::size_t>(20, pairs.size()); ++i) {
        std::printf("%5.2f dB  %d %s / %d %s\n", pairs[i].distance, pairs[i].a,
                    source.bank.programName(pairs[i].a).c_str(), pairs[i].b,
                    source.bank.programName(pairs[i].b).c_str());
    }
    return 0;
}
