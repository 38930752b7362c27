// How many times faster than the literal engine the shipped one is, on every instruction set. All
// of them take turns, so that other work on the machine slows them alike.
//
// Usage: quarzel_ratios [TURNS]
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <memory>
#include <vector>

#include "bench/bench_support.h"
#include "bench/player.h"
#include "dsp/lanes/kernels.h"
#include "engine/engine.h"
#include "tests/reference/engine.h"

namespace bench {
namespace {

constexpr int kBlocksPerTurn = 96;
constexpr int kBlocksBefore = 24;
constexpr int kBlocksToTail = 400;  // until the last voice has ended

struct Work {
    const char* name;
    int voices;
    bool released;
    float release;  // value of the parameter
    int before;     // blocks between the keys and the measurement
};

constexpr Work kWorks[] = {
    {"44 voices", 44, false, 1.0f, kBlocksBefore},  {"10 voices", 10, false, 1.0f, kBlocksBefore},
    {"1 voice", 1, false, 1.0f, kBlocksBefore},     {"44 released", 44, true, 1.0f, kBlocksBefore},
    {"10 released", 10, true, 1.0f, kBlocksBefore}, {"tail", 1, true, 0.0f, kBlocksToTail}};

struct Path {
    const char* name;
    dsp::InstructionSet set;
};

constexpr Path kPaths[] = {{"baseline", dsp::InstructionSet::kBaseline},
                           {"avx2", dsp::InstructionSet::kAvx2},
                           {"avx512", dsp::InstructionSet::kAvx512}};

double median(std::vector<double> values, double share = 0.5) {
    std::sort(values.begin(), values.end());
    return values[static_cast<std::size_t>(share * static_cast<double>(values.size() - 1))];
}

class Runner {
  public:
    Runner(std::unique_ptr<engine::SoundEngine> engine, const Work& work)
        : player_(std::move(engine)), work_(work) {
        player_.useEverything();
        player_.set(state::kEnvRelease, work.release);
    }

    // The median time of a block, in ns per sample. Strikes the keys anew, so that no release or
    // tail ends meanwhile.
    double turn() {
        player_.press(work_.voices);
        for (int block = 0; block < kBlocksBefore; ++block) render();
        if (work_.released) player_.release(work_.voices);
        for (int block = 0; block < work_.before; ++block) render();
        std::vector<double> times;
        for (int block = 0; block < kBlocksPerTurn; ++block) {
            const auto start = std::chrono::steady_clock::now();
            render();
            const std::chrono::duration<double, std::nano> took =
                std::chrono::steady_clock::now() - start;
            times.push_back(took.count() / kBlock);
        }
        player_.release(work_.voices);
        return median(times);
    }

  private:
    void render() { player_.render(left_, right_, kBlock); }

    Player player_;
    const Work& work_;
    float left_[kBlock], right_[kBlock];
};

void measure(const Work& work, int turns) {
    std::vector<std::unique_ptr<Runner>> runners;
    std::vector<const Path*> paths;
    for (const Path& path : kPaths) {
        if (path.set > dsp::widestInstructionSet()) break;
        dsp::useInstructionSet(path.set);
        runners.push_back(std::make_unique<Runner>(std::make_unique<engine::Engine>(kRate), work));
        paths.push_back(&path);
    }
    Runner literal(std::make_unique<reference::Engine>(kRate), work);
    std::vector<double> literalTimes;
    std::vector<std::vector<double>> times(runners.size()), ratios(runners.size());
    for (int turn = 0; turn < turns; ++turn) {
        literalTimes.push_back(literal.turn());
        for (std::size_t i = 0; i < runners.size(); ++i) {
            times[i].push_back(runners[i]->turn());
            ratios[i].push_back(literalTimes.back() / times[i].back());
        }
    }
    std::printf("%-12s literal %6.1f ns", work.name, median(literalTimes));
    for (std::size_t i = 0; i < runners.size(); ++i) {
        std::printf(" | %s %5.1f ns %5.2f x (%.2f to %.2f)", paths[i]->name, median(times[i]),
                    median(ratios[i]), median(ratios[i], 0.25), median(ratios[i], 0.75));
    }
    std::printf("\n");
}

}  // namespace
}  // namespace bench

int main(int argc, char** argv) {
    const int turns = argc > 1 ? std::max(std::atoi(argv[1]), 1) : 100;
    for (const bench::Work& work : bench::kWorks) bench::measure(work, turns);
}
