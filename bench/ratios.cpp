// How many times faster than the literal engine the shipped one is, on every instruction set. All
// of them take turns, so that other work on the machine slows them alike.
//
// Usage: quarzel_ratios [TURNS [FRAMES_PER_BLOCK]]
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

constexpr int kFramesPerTurn = 6144;
constexpr int kFramesBefore = 1536;
constexpr int kFramesToTail = 25600;  // until the last voice has ended

struct Work {
    const char* name;
    int voices;
    bool released;
    int before;  // frames between the keys and the measurement
    // Values of the parameters.
    float release;
    float waveform = 0.0f;
    float violinPhase = 0.0f;
};

constexpr Work kWorks[] = {
    {"44 voices", 44, false, kFramesBefore, 1.0f},
    {"10 voices", 10, false, kFramesBefore, 1.0f},
    {"1 voice", 1, false, kFramesBefore, 1.0f},
    {"44 released", 44, true, kFramesBefore, 1.0f},
    {"10 released", 10, true, kFramesBefore, 1.0f},
    {"tail", 1, true, kFramesToTail, 0.0f},
    {"44 with phase", 44, false, kFramesBefore, 1.0f, 0.0f, 0.3f},
    {"44 Bowed", 44, false, kFramesBefore, 1.0f, 0.5f},
    {"44 Hollow", 44, false, kFramesBefore, 1.0f, 1.0f},
};

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
    Runner(std::unique_ptr<engine::SoundEngine> engine, const Work& work, int block)
        : player_(std::move(engine)), work_(work), left_(block), right_(block) {
        player_.useEverything();
        player_.set(state::kEnvRelease, work.release);
        player_.set(state::kWaveform, work.waveform);
        player_.set(state::kVlphs, work.violinPhase);
    }

    // Strikes the keys anew, so that no release or tail ends meanwhile.
    double turn() {
        player_.press(work_.voices);
        render(kFramesBefore);
        if (work_.released) player_.release(work_.voices);
        render(work_.before);
        const double timed = render(kFramesPerTurn);
        player_.release(work_.voices);
        return timed;
    }

  private:
    // The median time of a block, in ns per sample.
    double render(int frames) {
        std::vector<double> times;
        const int block = static_cast<int>(left_.size());
        for (int from = 0; from < frames; from += block) {
            const auto start = std::chrono::steady_clock::now();
            player_.render(left_.data(), right_.data(), block);
            const std::chrono::duration<double, std::nano> took =
                std::chrono::steady_clock::now() - start;
            times.push_back(took.count() / block);
        }
        return median(times);
    }

    Player player_;
    const Work& work_;
    std::vector<float> left_, right_;
};

void measure(const Work& work, int turns, int block) {
    std::vector<std::unique_ptr<Runner>> runners;
    std::vector<const Path*> paths;
    for (const Path& path : kPaths) {
        if (path.set > dsp::widestInstructionSet()) break;
        dsp::useInstructionSet(path.set);
        runners.push_back(
            std::make_unique<Runner>(std::make_unique<engine::Engine>(kRate), work, block));
        paths.push_back(&path);
    }
    Runner literal(std::make_unique<reference::Engine>(kRate), work, block);
    std::vector<double> literalTimes;
    std::vector<std::vector<double>> times(runners.size()), ratios(runners.size());
    for (int turn = 0; turn < turns; ++turn) {
        literalTimes.push_back(literal.turn());
        for (std::size_t i = 0; i < runners.size(); ++i) {
            times[i].push_back(runners[i]->turn());
            ratios[i].push_back(literalTimes.back() / times[i].back());
        }
    }
    std::printf("%-13s literal %6.1f ns", work.name, median(literalTimes));
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
    const int block = argc > 2 ? std::max(std::atoi(argv[2]), 1) : bench::kBlock;
    for (const bench::Work& work : bench::kWorks) bench::measure(work, turns, block);
}
