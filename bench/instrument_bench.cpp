// The whole instrument, with the shipped engine and with the literal one.
#include <fstream>
#include <memory>
#include <sstream>

#include "banks/bank_source.h"
#include "bench/bench_support.h"
#include "bench/player.h"
#include "dsp/lanes/kernels.h"
#include "engine/engine.h"
#include "tests/reference/engine.h"

namespace bench {
namespace {

template <typename Engine>
void held(benchmark::State& state) {
    Player player(std::make_unique<Engine>(kRate));
    player.useEverything();
    player.press(static_cast<int>(state.range(0)));
    timeBlocks(state, [&](float* l, float* r, int n) { player.render(l, r, n); });
}

// Measures the baseline kernels, as used on a processor without AVX2.
void heldOnBaseline(benchmark::State& state) {
    dsp::useInstructionSet(dsp::InstructionSet::kBaseline);
    held<engine::Engine>(state);
    dsp::useInstructionSet(dsp::widestInstructionSet());
}

// All voices in a release that lasts 40 s.
template <typename Engine>
void decaying(benchmark::State& state) {
    Player player(std::make_unique<Engine>(kRate));
    player.useEverything();
    player.set(state::kEnvRelease, 1.0f);
    player.press(static_cast<int>(state.range(0)));
    player.release(static_cast<int>(state.range(0)));
    int blocks = 0;
    timeBlocks(state, [&](float* l, float* r, int n) {
        // Restrikes the voices before the first release ends.
        if (++blocks % 4096 == 0) {
            player.press(static_cast<int>(state.range(0)));
            player.release(static_cast<int>(state.range(0)));
        }
        player.render(l, r, n);
    });
}

// The effect tails after the last voice.
template <typename Engine>
void tail(benchmark::State& state) {
    Player player(std::make_unique<Engine>(kRate));
    player.useEverything();
    player.set(state::kEnvRelease, 0.0f);
    int blocks = 0;
    timeBlocks(state, [&](float* l, float* r, int n) {
        if (blocks++ % 1024 == 0) {
            player.noteOn(60);
            player.noteOff(60);
        }
        player.render(l, r, n);
    });
}

template <typename Engine>
void asleep(benchmark::State& state) {
    Player player(std::make_unique<Engine>(kRate));
    float left[kBlock], right[kBlock];
    for (int frame = 0; frame < 20 * kRate; frame += kBlock) player.render(left, right, kBlock);
    timeBlocks(state, [&](float* l, float* r, int n) { player.render(l, r, n); });
}

banks::BankSource factoryBank() {
    std::ifstream file(QUARZEL_FACTORY_BANK);
    std::stringstream text;
    text << file.rdbuf();
    return banks::parseBankSource(text.str());
}

// Every factory program in turn, with a chord of eight keys that reaches into the bass.
void programs(benchmark::State& state) {
    const banks::BankSource source = factoryBank();
    Player player(std::make_unique<engine::Engine>(kRate));
    int blocks = 0;
    timeBlocks(state, [&](float* l, float* r, int n) {
        if (blocks % 64 == 0) {
            const int program = blocks / 64 % source.programs;
            for (int i = 0; i < 8; ++i) player.noteOff(38 + 5 * i);
            for (int index = 0; index < state::kNumParams; ++index) {
                player.set(index, source.bank.value(program, index));
            }
            for (int i = 0; i < 8; ++i) player.noteOn(38 + 5 * i);
        }
        ++blocks;
        player.render(l, r, n);
    });
}

using Fast = engine::Engine;
using Literal = reference::Engine;
BENCHMARK(held<Fast>)->Name("instrument/held")->Arg(44)->Arg(10)->Arg(1)->UseManualTime();
BENCHMARK(decaying<Fast>)->Name("instrument/release")->Arg(44)->Arg(10)->UseManualTime();
BENCHMARK(tail<Fast>)->Name("instrument/tail")->UseManualTime();
BENCHMARK(programs)->Name("instrument/programs")->UseManualTime();
BENCHMARK(asleep<Fast>)->Name("instrument/asleep")->UseManualTime();
BENCHMARK(heldOnBaseline)->Name("baseline/held")->Arg(44)->Arg(10)->Arg(1)->UseManualTime();
BENCHMARK(held<Literal>)->Name("literal/held")->Arg(44)->Arg(10)->Arg(1)->UseManualTime();
BENCHMARK(asleep<Literal>)->Name("literal/asleep")->UseManualTime();

}  // namespace
}  // namespace bench
